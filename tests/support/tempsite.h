#pragma once
// A site in a temporary folder for a test: veskor.ini and a fresh veskor.mdb with
// the standing rows of a new site (status types In, Out, Busy..., the settings,
// the counters at 1). Builders add rows; each opens the file, writes, and closes
// it again, so the code under test finds the file free.
//
//   TempSite site;
//   site.person("Ann Lee").person("Bob Ray", "bray", "1234").group("Sales")
//       .member("Sales", "Ann Lee", true).status("Bob Ray", "Out", "Tomorrow", "Dentist");
//   gstrDatabasePath = site.path();

#include "database/site.h"

#include <QTemporaryDir>
#include <memory>

namespace dao {
class Database;
}

class TempSite
{
public:
    explicit TempSite(database::SchemaRelease release = database::SchemaRelease::Present);

    // The folder with a closing separator, as veskor.ini names it.
    QString path() const;
    QString dbPath() const;
    QString iniPath() const;
    // A connection of the test's own, shared and read-write.
    std::shared_ptr<dao::Database> openDb() const;
    // Makes this the site the program's database procedures open next.
    void makeCurrent() const;
    // The first field of the first row as text; "<no row>" when there is none.
    QString value(const QString& jetSql) const;

    TempSite& person(const QString& name, const QString& uid = {}, const QString& phone = {});
    TempSite& group(const QString& name);
    TempSite& member(const QString& group, const QString& name, bool manager = false);
    // Status, its code (that of the word in StatusTypesTable, else 4), due back, comments.
    TempSite& status(const QString& name, const QString& status, const QString& dueBack = {},
                     const QString& comments = {});
    TempSite& status(const QString& name, const database::PersonStatus& status);
    TempSite& statusType(const database::StatusTypeRow& type);
    TempSite& column(const QString& newColumn, bool readOnly = false);
    TempSite& tracking(const QString& tracker, const QString& trackee, const QString& trackeeStatus = {},
                       double lastUpdated = 0);
    TempSite& setting(const QString& field, const QString& value);
    TempSite& execute(const QString& jetSql);
    // SQLite's own statements on the file behind the engine's back (triggers,
    // renames); true when they all ran.
    bool rawExec(const QByteArray& sql) const;
    // Returns the new MessageID.
    long long message(const database::MessageRow& message);

private:
    QTemporaryDir m_dir;
};
