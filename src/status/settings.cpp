// Reading the system's settings and the person's own into run-wide values. Each
// read goes on past a failure: a field that cannot be read leaves its value as
// it stood.

#include "status/settings.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "status/statuscommon.h"

#include <QRect>
#include <memory>
#include <optional>

namespace {

// The panels that tell the security levels, after the message, database and
// count-down panels, whose tips are their own.
constexpr int kSystemSecurityPanel = 4;
constexpr int kUserSecurityPanel = 5;
// Minutes between refreshes when the person's row says nothing.
constexpr long long kDefaultRefreshRate = 5;

QString levelWord(long long level)
{
    switch (level) {
    case 0:
        return QStringLiteral("LOW");
    case 1:
        return QStringLiteral("MEDIUM");
    case 2:
        return QStringLiteral("HIGH");
    default:
        return QString();
    }
}

// One settings row, read field by field with failures passed over.
class SettingsRow
{
public:
    explicit SettingsRow(const QString& sql)
    {
        ResumeNext([&] {
            m_rs = fnOpenSQL(sql);
            if (m_rs->RecordCount() > 0) {
                m_rs->MoveFirst();
            }
        });
    }
    ~SettingsRow()
    {
        if (m_rs) {
            ResumeNext([this] { m_rs->Close(); });
        }
    }
    SettingsRow(const SettingsRow&) = delete;
    SettingsRow& operator=(const SettingsRow&) = delete;

    // Each returns false when the read failed and the target was left alone.
    bool read(const QString& field, bool& target)
    {
        return ResumeNext([&] { target = status::boolFromText(field_(field).Text()); });
    }
    bool read(const QString& field, long long& target)
    {
        return ResumeNext([&] { target = status::wholeFromText(field_(field).Text()); });
    }
    bool read(const QString& field, QString& target)
    {
        return ResumeNext([&] { target = field_(field).Text(); });
    }
    // A place on the screen is read only when the row holds one.
    void readIfSet(const QString& field, std::optional<long long>& target)
    {
        ResumeNext([&] {
            const dao::Field f = field_(field);
            if (!f.IsNull()) {
                target = status::wholeFromText(f.Text());
            }
        });
    }
    void readRefreshRate()
    {
        ResumeNext([&] {
            const dao::Field f = field_(QStringLiteral("RefreshRate"));
            gPerson.gintRefreshRate = f.IsNull() ? kDefaultRefreshRate : status::wholeFromText(f.Text());
        });
    }

private:
    dao::Field field_(const QString& name)
    {
        return fnRecordset(m_rs).Fields(name);
    }

    std::unique_ptr<dao::Recordset> m_rs;
};

// StatusAlertsOverride turns status alerts on for this person; it never turns them off.
void readStatusAlertsOverride(SettingsRow& row)
{
    bool overrideOn = false;
    if (row.read(QStringLiteral("StatusAlertsOverride"), overrideOn)) {
        gPerson.gblnStatusAlertsOverride = overrideOn;
        if (overrideOn) {
            gSite.gblnAllowStatusAlerts = true;
        }
    }
}

QString personSettingsSql(const QString& name)
{
    return QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = ") + dao::quote(name);
}

void readPersonRow(SettingsRow& row)
{
    readStatusAlertsOverride(row);
    row.read(QStringLiteral("AutoClearComments"), gPerson.gblnAutoClearComments);
    row.read(QStringLiteral("AutoLogIn"), gPerson.gblnAutoLogIn);
    row.read(QStringLiteral("AutoLogOut"), gPerson.gblnAutoLogOut);
    row.read(QStringLiteral("AutoMinimize"), gPerson.gblnAutoMinimize);
    row.read(QStringLiteral("MinimizeOnClose"), gPerson.gblnMinimizeOnClose);
    row.read(QStringLiteral("DisplayTreeView"), gPerson.gvarDisplayTreeView);
    row.readRefreshRate();
    if (row.read(QStringLiteral("DefaultGroup"), gRun.gstrCurrentGroup)) {
        gPerson.gstrDefaultGroup = gRun.gstrCurrentGroup;
    }
    row.read(QStringLiteral("SortKey"), gPerson.gintSortKey);
    row.read(QStringLiteral("SortColumnName"), gPerson.gstrSortColumnName);
    row.read(QStringLiteral("SortOrder"), gPerson.gintSortOrder);
    row.readIfSet(QStringLiteral("ScreenTop"), gPerson.glngScreenTop);
    row.readIfSet(QStringLiteral("ScreenLeft"), gPerson.glngScreenLeft);
    row.readIfSet(QStringLiteral("ScreenHeight"), gPerson.glngScreenHeight);
    row.readIfSet(QStringLiteral("ScreenWidth"), gPerson.glngScreenWidth);
    row.read(QStringLiteral("ListViewPopUp"), gPerson.gblnListViewPopUp);
    row.read(QStringLiteral("ChangeScreenPopUp"), gPerson.gblnChangeScreenPopUp);
    if (row.read(QStringLiteral("UserSecurityLevel"), gPerson.gintUserSecurityLevel)) {
        const QString word = levelWord(gPerson.gintUserSecurityLevel);
        if (!word.isEmpty()) {
            mainScreen().setPanelToolTip(kUserSecurityPanel, QStringLiteral("User Security is ") + word);
        }
    }
    row.read(QStringLiteral("MinimizeSetting"), gPerson.gintMinimizeSetting);
    row.read(QStringLiteral("IconSize"), gPerson.gintIconSize);
    row.read(QStringLiteral("ToolBarText"), gPerson.gintToolBarText);
    row.read(QStringLiteral("PhotoSizeToFit"), gPerson.gblnPhotoSizeToFit);
    row.read(QStringLiteral("SplitterPositionVertical"), gPerson.glngSplitterVertical);
    row.read(QStringLiteral("SplitterPositionHorizontal"), gPerson.glngSplitterHorizontal);
    row.read(QStringLiteral("FontBoldDisplay"), gPerson.gintFontBoldDisplay);
    row.read(QStringLiteral("FontSizeDisplay"), gPerson.gintFontSizeDisplay);
}

// The window at its saved place and size, each value only where one was saved.
void placeWindow()
{
    QRect place = mainScreen().normalGeometry();
    if (gPerson.glngScreenLeft) {
        place.moveLeft(int(*gPerson.glngScreenLeft));
    }
    if (gPerson.glngScreenTop) {
        place.moveTop(int(*gPerson.glngScreenTop));
    }
    if (gPerson.glngScreenWidth) {
        place.setWidth(int(*gPerson.glngScreenWidth));
    }
    if (gPerson.glngScreenHeight) {
        place.setHeight(int(*gPerson.glngScreenHeight));
    }
    mainScreen().setNormalGeometry(place);
}

} // namespace

void subReadOptions()
{
    subOpenDatabase();
    {
        SettingsRow row(QStringLiteral("SELECT * FROM GlobalSettingsTable"));
        row.read(QStringLiteral("TransactionLogFlag"), gSite.gblnTransactionLog);
        row.read(QStringLiteral("SystemSecurityLevel"), gSite.gintSystemSecurityLevel);
        row.read(QStringLiteral("LogoPosition"), gSite.gintLogoPosition);
        row.read(QStringLiteral("DatabaseReleaseVersion"), gSite.gstrDatabaseReleaseVersion);
        row.read(QStringLiteral("AllowMessaging"), gSite.gblnAllowMessaging);
        row.read(QStringLiteral("AllowStatusAlerts"), gSite.gblnAllowStatusAlerts);
        row.read(QStringLiteral("AllowPresenceSensing"), gSite.gblnAllowPresenceSensing);
        // The field is read by this name, which no table has: the read always
        // fails, so a lock never changes the status, whatever the table says.
        row.read(QStringLiteral("UpdateStatusOnLocktrim"), gSite.gblnUpdateStatusOnLock);
        row.read(QStringLiteral("AllowUserToAddVeskOrToStartupFolder"), gSite.gblnAllowUserToAddVeskOrToStartupFolder);
    }
    const QString word = levelWord(gSite.gintSystemSecurityLevel);
    if (!word.isEmpty()) {
        mainScreen().setPanelToolTip(kSystemSecurityPanel, QStringLiteral("System Security is ") + word);
    }
    {
        SettingsRow row(personSettingsSql(gRun.gstrDefaultUser));
        readStatusAlertsOverride(row);
    }
    subCloseDatabase();
}

void subReadUserSettings(const QString& name)
{
    ResumeNext([] { mainScreen().clearSortArrows(); });
    ResumeNext([] { subOpenDatabase(); });
    {
        SettingsRow row(personSettingsSql(name));
        readPersonRow(row);
    }
    ResumeNext([] { subCloseDatabase(); });
    ResumeNext([] {
        if (gRun.gstrCurrentGroup != QLatin1String("Everyone") && !fnGroupExists(gRun.gstrCurrentGroup)) {
            gRun.gstrCurrentGroup = QStringLiteral("Everyone");
            gPerson.gstrDefaultGroup = gRun.gstrCurrentGroup;
        }
    });
    ResumeNext([] { placeWindow(); });
    ResumeNext([] { mainScreen().applyDisplayFont(); });
    ResumeNext([] { mainScreen().subLoadToolBarButtons(); });
}
