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
        gstrSQL = sql;
        ResumeNext([this] {
            m_rs = fnDatabase().OpenRecordset(gstrSQL, dao::dbOpenDynaset);
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
            gintRefreshRate = f.IsNull() ? kDefaultRefreshRate : status::wholeFromText(f.Text());
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
        gblnStatusAlertsOverride = overrideOn;
        if (overrideOn) {
            gblnAllowStatusAlerts = true;
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
    row.read(QStringLiteral("AutoClearComments"), gblnAutoClearComments);
    row.read(QStringLiteral("AutoLogIn"), gblnAutoLogIn);
    row.read(QStringLiteral("AutoLogOut"), gblnAutoLogOut);
    row.read(QStringLiteral("AutoMinimize"), gblnAutoMinimize);
    row.read(QStringLiteral("MinimizeOnClose"), gblnMinimizeOnClose);
    row.read(QStringLiteral("DisplayTreeView"), gvarDisplayTreeView);
    row.readRefreshRate();
    if (row.read(QStringLiteral("DefaultGroup"), gstrCurrentGroup)) {
        gstrDefaultGroup = gstrCurrentGroup;
    }
    row.read(QStringLiteral("SortKey"), gintSortKey);
    row.read(QStringLiteral("SortColumnName"), gstrSortColumnName);
    row.read(QStringLiteral("SortOrder"), gintSortOrder);
    row.readIfSet(QStringLiteral("ScreenTop"), glngScreenTop);
    row.readIfSet(QStringLiteral("ScreenLeft"), glngScreenLeft);
    row.readIfSet(QStringLiteral("ScreenHeight"), glngScreenHeight);
    row.readIfSet(QStringLiteral("ScreenWidth"), glngScreenWidth);
    row.read(QStringLiteral("ListViewPopUp"), gblnListViewPopUp);
    row.read(QStringLiteral("ChangeScreenPopUp"), gblnChangeScreenPopUp);
    if (row.read(QStringLiteral("UserSecurityLevel"), gintUserSecurityLevel)) {
        const QString word = levelWord(gintUserSecurityLevel);
        if (!word.isEmpty()) {
            mainScreen().setPanelToolTip(kUserSecurityPanel, QStringLiteral("User Security is ") + word);
        }
    }
    row.read(QStringLiteral("MinimizeSetting"), gintMinimizeSetting);
    row.read(QStringLiteral("IconSize"), gintIconSize);
    row.read(QStringLiteral("ToolBarText"), gintToolBarText);
    row.read(QStringLiteral("PhotoSizeToFit"), gblnPhotoSizeToFit);
    row.read(QStringLiteral("SplitterPositionVertical"), glngSplitterVertical);
    row.read(QStringLiteral("SplitterPositionHorizontal"), glngSplitterHorizontal);
    row.read(QStringLiteral("FontBoldDisplay"), gintFontBoldDisplay);
    row.read(QStringLiteral("FontSizeDisplay"), gintFontSizeDisplay);
}

// The window at its saved place and size, each value only where one was saved.
void placeWindow()
{
    QRect place = mainScreen().normalGeometry();
    if (glngScreenLeft) {
        place.moveLeft(int(*glngScreenLeft));
    }
    if (glngScreenTop) {
        place.moveTop(int(*glngScreenTop));
    }
    if (glngScreenWidth) {
        place.setWidth(int(*glngScreenWidth));
    }
    if (glngScreenHeight) {
        place.setHeight(int(*glngScreenHeight));
    }
    mainScreen().setNormalGeometry(place);
}

} // namespace

void subReadOptions()
{
    subOpenDatabase();
    {
        SettingsRow row(QStringLiteral("SELECT * FROM GlobalSettingsTable"));
        row.read(QStringLiteral("TransactionLogFlag"), gblnTransactionLog);
        row.read(QStringLiteral("SystemSecurityLevel"), gintSystemSecurityLevel);
        row.read(QStringLiteral("LogoPosition"), gintLogoPosition);
        row.read(QStringLiteral("DatabaseReleaseVersion"), gstrDatabaseReleaseVersion);
        row.read(QStringLiteral("AllowMessaging"), gblnAllowMessaging);
        row.read(QStringLiteral("AllowStatusAlerts"), gblnAllowStatusAlerts);
        row.read(QStringLiteral("AllowPresenceSensing"), gblnAllowPresenceSensing);
        // The field is read by this name, which no table has: the read always
        // fails, so a lock never changes the status, whatever the table says.
        row.read(QStringLiteral("UpdateStatusOnLocktrim"), gblnUpdateStatusOnLock);
        row.read(QStringLiteral("AllowUserToAddVeskOrToStartupFolder"), gblnAllowUserToAddVeskOrToStartupFolder);
    }
    const QString word = levelWord(gintSystemSecurityLevel);
    if (!word.isEmpty()) {
        mainScreen().setPanelToolTip(kSystemSecurityPanel, QStringLiteral("System Security is ") + word);
    }
    {
        SettingsRow row(personSettingsSql(gstrDefaultUser));
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
        if (gstrCurrentGroup != QLatin1String("Everyone") && !fnGroupExists(gstrCurrentGroup)) {
            gstrCurrentGroup = QStringLiteral("Everyone");
            gstrDefaultGroup = gstrCurrentGroup;
        }
    });
    ResumeNext([] { placeWindow(); });
    ResumeNext([] { mainScreen().applyDisplayFont(); });
    ResumeNext([] { mainScreen().subLoadToolBarButtons(); });
}
