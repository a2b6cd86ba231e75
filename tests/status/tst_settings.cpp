// The system's and the person's settings read into run-wide values, the layout
// saved and read back, and the groups read into the board.
#include "status/settings.h"
#include "statusfixture.h"

#include <QTest>

class TstSettings : public QObject
{
    Q_OBJECT

private slots:
    void readOptions_data();
    void readOptions();
    void readUserSettings_data();
    void readUserSettings();
    void saveThenReadKeepsTheLayout();
    void remoteConnectionSavesNothing();
    void readGroupsFallsBackToEveryone();
};

namespace {

void setPersonField(StatusFixture& f, const QString& field, const QString& value)
{
    f.site.execute("UPDATE EmployeeSettingsTable SET " + field + " = " + value + " WHERE Name = \"Ann Lee\"");
}

} // namespace

void TstSettings::readOptions_data()
{
    QTest::addColumn<QString>("allowAlerts");
    QTest::addColumn<QString>("alertsOverride");
    QTest::addColumn<QString>("level");
    QTest::addColumn<bool>("alertsOn");
    QTest::addColumn<QString>("tip");

    QTest::newRow("override turns alerts on") << "False"
                                              << "True"
                                              << "2" << true << "System Security is HIGH";
    QTest::newRow("override off keeps them on") << "True"
                                                << "False"
                                                << "1" << true << "System Security is MEDIUM";
    QTest::newRow("both off") << "False"
                              << "False"
                              << "0" << false << "System Security is LOW";
}

// UpdateStatusOnLock is read under a name no table has, so it stays False.
void TstSettings::readOptions()
{
    QFETCH(QString, allowAlerts);
    QFETCH(QString, alertsOverride);
    QFETCH(QString, level);
    QFETCH(bool, alertsOn);
    QFETCH(QString, tip);

    StatusFixture f;
    f.site.setting("AllowStatusAlerts", allowAlerts)
        .setting("SystemSecurityLevel", level)
        .setting("UpdateStatusOnLock", "True")
        .setting("TransactionLogFlag", "True");
    setPersonField(f, "StatusAlertsOverride", alertsOverride);
    gblnTransactionLog = false;

    subReadOptions();

    QCOMPARE(gblnAllowStatusAlerts, alertsOn);
    QCOMPARE(f.board.panelToolTip(2), tip);
    QVERIFY(!gblnUpdateStatusOnLock);
    QVERIFY(gblnTransactionLog);
    QCOMPARE(f.gw.boxes().count(), 0);
}

void TstSettings::readUserSettings_data()
{
    QTest::addColumn<QString>("refreshRate");
    QTest::addColumn<QString>("defaultGroup");
    QTest::addColumn<long long>("rate");
    QTest::addColumn<QString>("group");

    QTest::newRow("rate null, group exists") << "Null"
                                             << "\"Sales\"" << 5LL << "Sales";
    QTest::newRow("rate set, group deleted") << "7"
                                             << "\"Gone\"" << 7LL << "Everyone";
}

// A null rate is 5 minutes, a null boolean is False, a group that has gone is
// "Everyone", and the screen place is read only where one was saved.
void TstSettings::readUserSettings()
{
    QFETCH(QString, refreshRate);
    QFETCH(QString, defaultGroup);
    QFETCH(long long, rate);
    QFETCH(QString, group);

    StatusFixture f;
    f.site.group("Sales");
    setPersonField(f, "RefreshRate", refreshRate);
    setPersonField(f, "DefaultGroup", defaultGroup);
    setPersonField(f, "AutoLogIn", "Null");
    setPersonField(f, "ScreenTop", "Null");
    setPersonField(f, "ScreenLeft", "40");
    setPersonField(f, "UserSecurityLevel", "1");
    gblnAutoLogIn = true;
    gintRefreshRate = 0;

    subReadUserSettings(QStringLiteral("Ann Lee"));

    QCOMPARE(gintRefreshRate, rate);
    QCOMPARE(gstrCurrentGroup, group);
    QCOMPARE(gstrDefaultGroup, group);
    QVERIFY(!gblnAutoLogIn);
    QVERIFY(!glngScreenTop.has_value());
    QCOMPARE(glngScreenLeft, std::optional<long long>(40));
    QCOMPARE(f.board.normalGeometry().left(), 40);
    QCOMPARE(f.board.panelToolTip(1), QStringLiteral("User Security is MEDIUM"));
    QCOMPARE(f.gw.boxes().count(), 0);
}

// What the end of a run saves is what the next start reads, the extra column's
// layout under its "New_" name included.
void TstSettings::saveThenReadKeepsTheLayout()
{
    StatusFixture f;
    f.site.column("New_Mobile").group("Sales");
    f.board.columns = {{"Status", 1, 900}, {"Name", 2, 2000}, {"Mobile", 3, 1200}};
    f.board.setNormalGeometry(QRect(30, 20, 640, 480));
    gstrCurrentGroup = QStringLiteral("Sales");
    gintSortKey = 2;
    gintSortOrder = 1;
    gblnMinimizeOnClose = true;
    glngSplitterVertical = 2222;
    glngSplitterHorizontal = 3333;
    gblnAllowMessaging = false;
    gblnAllowStatusAlerts = false;

    subSaveUserSettings(QStringLiteral("Ann Lee"));

    QCOMPARE(f.row("SELECT NameColumnOrder, NameColumnWidth, New_MobileColumnOrder, New_MobileColumnWidth,"
                   " SortColumnName, SplitterPositionHorizontal FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""),
             (QStringList{"2", "2000", "3", "1200", "Name", "1575"}));

    resetRunWide();
    f.board.setNormalGeometry(QRect());
    gstrDatabasePath = gstrCurrentDatabasePath = f.site.path();
    gblnDatabaseClosed = true;
    subReadUserSettings(QStringLiteral("Ann Lee"));

    QCOMPARE(gstrCurrentGroup, QStringLiteral("Sales"));
    QCOMPARE((QList<long long>{gintSortKey, gintSortOrder, glngSplitterVertical}), (QList<long long>{2, 1, 2222}));
    QVERIFY(gblnMinimizeOnClose);
    QCOMPARE(f.board.normalGeometry(), QRect(30, 20, 640, 480));
}

void TstSettings::remoteConnectionSavesNothing()
{
    StatusFixture f;
    f.board.setNormalGeometry(QRect(30, 20, 640, 480));
    gblnRemoteConnection = true;
    const QStringList before = f.row("SELECT * FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\"");

    subSaveUserSettings(QStringLiteral("Ann Lee"));

    QCOMPARE(f.row("SELECT * FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""), before);
    QVERIFY(!gdbDatabase);
}

void TstSettings::readGroupsFallsBackToEveryone()
{
    StatusFixture f;
    f.site.group("Sales").group("Admin");
    gstrCurrentGroup = QStringLiteral("Gone");

    subReadGroups();

    QCOMPARE(f.board.groups, (QStringList{"Everyone", "Admin", "Sales"}));
    QCOMPARE(f.board.selectedGroup, QStringLiteral("Everyone"));
    QCOMPARE(f.gw.boxes().count(), 0);
}

QTEST_GUILESS_MAIN(TstSettings)
#include "tst_settings.moc"
