// Creating a site: the folder, the shared file with its standing rows, and the
// settings files beside it. The changes to an existing site are in siteedit.cpp.
#include "database/site.h"

#include "dao/dao.h"
#include "database/siterows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace database {

SiteError::SiteError(const QString& message) : std::runtime_error(message.toStdString())
{
}

QString SiteError::message() const
{
    return QString::fromUtf8(what());
}

namespace {

void fillSettings(dao::Database& db)
{
    insertRow(db, QStringLiteral("GlobalSettingsTable"),
              {{"DatabaseVersion", QStringLiteral("2005")},
               {"DatabaseReleaseVersion", QStringLiteral("2005")},
               {"TransactionLogFlag", true},
               {"SystemSecurityLevel", 1}, // MEDIUM: members change each other within their groups
               {"LogoPosition", 0},
               {"AllowMessaging", true},
               {"AllowStatusAlerts", true},
               {"AllowPresenceSensing", true},
               {"UpdateStatusOnLock", false},
               {"AllowUserToAddVeskOrToStartupFolder", true},
               {"PhotoPath", QString()},
               {"CompanyInfo", QStringLiteral("Your company's name, address and telephone numbers go here.\r\n"
                                              "Change this text with: veskor-admin settings set CompanyInfo TEXT")}});
    // Widths are in twips, as the board keeps them.
    insertRow(db, QStringLiteral("NewUserDefaultsTable"),
              {{"AutoClearComments", true},
               {"AutoLogIn", true},
               {"AutoLogOut", true},
               {"AutoMinimize", false},
               {"MinimizeOnClose", false},
               {"RefreshRate", 5},
               {"DefaultGroup", QStringLiteral("Everyone")},
               {"StatusColumnWidth", 1600},
               {"NameColumnWidth", 2000},
               {"PhoneColumnWidth", 1500},
               {"DueBackColumnWidth", 1800},
               {"CommentsColumnWidth", 3000},
               {"LastModifiedColumnWidth", 3800},
               {"SortOrder", 0},
               {"SortKey", 0},
               {"SortColumnName", QStringLiteral("Name")},
               {"ListViewPopUp", false},
               {"ChangeScreenPopUp", true},
               {"UserSecurityLevel", 0},
               {"MinimizeSetting", 0},
               {"DisplayTreeView", 1},
               {"IconSize", 0},
               {"ToolBarText", 1},
               {"SplitterPositionVertical", 1800},
               {"SplitterPositionHorizontal", 1575},
               {"FontBoldDisplay", 0},
               {"FontSizeDisplay", 8}});
    insertRow(db, QStringLiteral("StatusCounterTable"),
              {{"Counter", 1},
               {"StatusTypeCounter", 1},
               {"GroupCounter", 1},
               {"SecurityCounter", 1},
               {"ExtraColumnsCounter", 1}});
    insertRow(db, QStringLiteral("AdminSettingsTable"),
              {{"ScreenTop", QVariant()}, // a column of every release, so that the row is made in each
               {"LastSelectedNode", QStringLiteral("Users")},
               {"AdminFontBoldDisplay", 0},
               {"AdminFontSizeDisplay", 8}});
}

// Codes choose the list icon: 4 stands for a status typed by hand, 10 and 11 for
// the screen saver and the locked workstation, so the types use the others.
void fillStatusTypes(dao::Database& db)
{
    const StatusTypeRow types[] = {
        {"Out", 1, "Out", "Set your status to Out", false, true},
        {"Busy", 2, "Busy", "Set your status to Busy", false, true},
        {"In", 3, "In", "Set your status to In", false, true},
        {"At Lunch", 5, "Lunch", "Gone for lunch", false, true},
        {"In Meeting", 6, "Meeting", "In a meeting", false, true},
        {"On Holiday", 7, "Holiday", "On holiday: left alone at the end of a run", true, false},
        {"Sick", 8, "Sick", "Off sick: left alone at the end of a run", true, false},
    };
    for (const StatusTypeRow& type : types)
        addStatusType(db, type);
    for (const char* choice : {"Back in 15 minutes", "Back in 30 minutes", "Back in 1 hour", "After lunch",
                               "Later today", "Tomorrow", "Next week"})
        insertRow(db, QStringLiteral("DueBackTable"), {{"DueBack", QString::fromLatin1(choice)}});
}

void writeTextFile(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        throw SiteError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
    QTextStream(&file) << text;
    if (!file.flush())
        throw SiteError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

} // namespace

void createSite(const QString& dir, const SiteOptions& options)
{
    const QString dbFile = QDir(dir).filePath(kDatabaseFileName);
    if (QFileInfo::exists(dbFile))
        throw SiteError(QStringLiteral("%1 already exists; a site is never overwritten").arg(dbFile));
    if (!QDir().mkpath(dir))
        throw SiteError(QStringLiteral("Cannot make the folder %1").arg(dir));
    try {
        auto db = dao::DBEngine::CreateDatabase(dbFile);
        createSchema(*db, options.release);
        fillSettings(*db);
        fillStatusTypes(*db);
        db->Close();
    } catch (...) {
        // A half-made file would block the next attempt.
        QFile::remove(dbFile);
        throw;
    }
    writeSettingsFile(dir);
}

void writeSettingsFile(const QString& dir)
{
    writeTextFile(QDir(dir).filePath(kSettingsFileName),
                  QStringLiteral("[DataPath]\nDataPath=%1\n").arg(siteFolderText(dir)));
}

std::shared_ptr<dao::Database> openSite(const QString& dir)
{
    return dao::DBEngine::OpenDatabase(QDir(dir).filePath(kDatabaseFileName));
}

QString siteFolderText(const QString& dir)
{
    return QDir::toNativeSeparators(QDir(dir).absolutePath()) + QDir::separator();
}

void setForcedShutDown(const QString& dir, bool on)
{
    writeTextFile(QDir(dir).filePath(kShutDownFileName),
                  QStringLiteral("[ForceShutDown]\nForceShutDown=%1\n").arg(on ? "TRUE" : "FALSE"));
}

} // namespace database
