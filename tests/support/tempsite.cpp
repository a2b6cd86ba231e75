#include "tempsite.h"

#include "dao/dao.h"
#include "kernel/globals.h"
#include "ondisk.h"

#include <QDir>
#include <QFile>
#include <map>
#include <stdexcept>

namespace {

// Making a site writes each statement through to the disk, which takes the best
// part of a second; so each release is made once per test program and copied.
QString templateSite(database::SchemaRelease release)
{
    static QTemporaryDir folder;
    static std::map<database::SchemaRelease, QString> made;
    QString& path = made[release];
    if (path.isEmpty()) {
        const QString dir = folder.filePath(release == database::SchemaRelease::Present ? "present" : "older");
        database::createSite(dir, {release});
        path = dir;
    }
    return QDir(path).filePath(database::kDatabaseFileName);
}

} // namespace

TempSite::TempSite(database::SchemaRelease release)
{
    if (!m_dir.isValid())
        throw std::runtime_error("cannot make a temporary folder: " + m_dir.errorString().toStdString());
    if (!QFile::copy(templateSite(release), dbPath()))
        throw std::runtime_error("cannot copy the template site to " + dbPath().toStdString());
    database::writeSettingsFile(m_dir.path());
}

QString TempSite::path() const
{
    return database::siteFolderText(m_dir.path());
}

QString TempSite::dbPath() const
{
    return QDir(m_dir.path()).filePath(database::kDatabaseFileName);
}

QString TempSite::iniPath() const
{
    return QDir(m_dir.path()).filePath(database::kSettingsFileName);
}

std::shared_ptr<dao::Database> TempSite::openDb() const
{
    return database::openSite(m_dir.path());
}

void TempSite::makeCurrent() const
{
    gRun.gstrCurrentDatabasePath = path();
    gRun.gblnDatabaseClosed = true;
}

QString TempSite::value(const QString& jetSql) const
{
    auto rs = openDb()->OpenRecordset(jetSql, dao::dbOpenSnapshot);
    return rs->isEOF() ? "<no row>" : rs->Fields(0).Text();
}

TempSite& TempSite::person(const QString& name, const QString& uid, const QString& phone)
{
    database::addPerson(*openDb(), {name, uid, phone});
    return *this;
}

TempSite& TempSite::group(const QString& name)
{
    database::addGroup(*openDb(), name);
    return *this;
}

TempSite& TempSite::member(const QString& group, const QString& name, bool manager)
{
    database::addMember(*openDb(), group, name, manager);
    return *this;
}

TempSite& TempSite::status(const QString& name, const QString& status, const QString& dueBack, const QString& comments)
{
    return this->status(name, database::PersonStatus{status, dueBack, comments, {}, {}});
}

TempSite& TempSite::status(const QString& name, const database::PersonStatus& status)
{
    database::setStatus(*openDb(), name, status);
    return *this;
}

TempSite& TempSite::statusType(const database::StatusTypeRow& type)
{
    database::addStatusType(*openDb(), type);
    return *this;
}

TempSite& TempSite::column(const QString& newColumn, bool readOnly)
{
    database::addExtraColumn(*openDb(), newColumn, readOnly);
    return *this;
}

TempSite& TempSite::tracking(const QString& tracker, const QString& trackee, const QString& trackeeStatus,
                             double lastUpdated)
{
    database::addTracking(*openDb(), {tracker, trackee, trackeeStatus, lastUpdated});
    return *this;
}

TempSite& TempSite::setting(const QString& field, const QString& value)
{
    database::setSetting(*openDb(), field, value);
    return *this;
}

TempSite& TempSite::execute(const QString& jetSql)
{
    openDb()->Execute(jetSql);
    return *this;
}

long long TempSite::message(const database::MessageRow& message)
{
    return database::addMessage(*openDb(), message);
}

bool TempSite::rawExec(const QByteArray& sql) const
{
    return sqliteExec(dbPath(), QString::fromUtf8(sql));
}
