// The system's and the person's settings read into run-wide values, and the
// layout saved at the end of a run and read back at the next start.
#include "status/settings.h"
#include "statusfixture.h"

#include <QTest>
#include <tuple>

namespace {

void setPersonField(StatusFixture& f, const QString& field, const QString& value)
{
    f.site.execute("UPDATE EmployeeSettingsTable SET " + field + " = " + value + " WHERE Name = \"Ann Lee\"");
}

// Every value the end of a run writes, as the next start reads it back.
auto layoutValues()
{
    return std::tie(gPerson.gintSortOrder, gPerson.gintSortKey, gPerson.gintMinimizeSetting,
                    gPerson.gblnMinimizeOnClose, gPerson.gvarDisplayTreeView, gPerson.gintIconSize,
                    gPerson.gintToolBarText, gPerson.gblnPhotoSizeToFit, gPerson.glngSplitterVertical);
}
const auto kLayout = std::tuple(1LL, 2LL, 2LL, true, 0LL, 1LL, 1LL, true, 2222LL);

} // namespace

class TstSettings : public QObject
{
    Q_OBJECT

private slots:
    void readOptions_data()
    {
        QTest::addColumn<QStringList>("allowAndOverride");
        QTest::addColumn<bool>("alertsOn");
        QTest::addColumn<QString>("level");
        QTest::newRow("override turns alerts on") << QStringList{"False", "True"} << true << "HIGH";
        QTest::newRow("override off keeps them on") << QStringList{"True", "False"} << true << "MEDIUM";
        QTest::newRow("both off") << QStringList{"False", "False"} << false << "LOW";
    }

    // UpdateStatusOnLock is read under a name no table has, so it stays False.
    void readOptions()
    {
        QFETCH(QStringList, allowAndOverride);
        QFETCH(QString, level);
        StatusFixture f;
        const QString number = QString::number(QStringList{"LOW", "MEDIUM", "HIGH"}.indexOf(level));
        f.site.setting("AllowStatusAlerts", allowAndOverride[0])
            .setting("SystemSecurityLevel", number)
            .setting("UpdateStatusOnLock", "True")
            .setting("TransactionLogFlag", "True");
        setPersonField(f, "StatusAlertsOverride", allowAndOverride[1]);
        gSite.gblnTransactionLog = false;

        subReadOptions();

        QTEST(gSite.gblnAllowStatusAlerts, "alertsOn");
        QCOMPARE(f.board.panelToolTip(4), "System Security is " + level);
        QVERIFY(!gSite.gblnUpdateStatusOnLock);
        QVERIFY(gSite.gblnTransactionLog);
    }

    void readUserSettings_data()
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

    // A null rate is 5 minutes, a null boolean False, a group that has gone
    // "Everyone"; the screen place is read only where one was saved.
    void readUserSettings()
    {
        QFETCH(QString, refreshRate);
        QFETCH(QString, defaultGroup);
        QFETCH(QString, group);
        StatusFixture f;
        f.site.group("Sales");
        setPersonField(f, "RefreshRate", refreshRate);
        setPersonField(f, "DefaultGroup", defaultGroup);
        setPersonField(f, "AutoLogIn = Null, ScreenTop = Null, ScreenLeft = 40, UserSecurityLevel", "1");
        gPerson.gblnAutoLogIn = true;

        subReadUserSettings("Ann Lee");

        QTEST(gPerson.gintRefreshRate, "rate");
        QCOMPARE((QStringList{gRun.gstrCurrentGroup, gPerson.gstrDefaultGroup}), (QStringList{group, group}));
        QVERIFY(!gPerson.gblnAutoLogIn);
        QVERIFY(!gPerson.glngScreenTop.has_value());
        QCOMPARE(f.board.normalGeometry().left(), 40);
        QCOMPARE(f.board.panelToolTip(5), "User Security is MEDIUM");
        QCOMPARE(f.gw.boxes().count(), 0);
    }

    // Every layout value comes back from a save and a read. An extra column's layout
    // is kept under its "New_" name; the lower splitter only while messaging or
    // status alerts are on.
    void saveThenReadKeepsTheLayout()
    {
        StatusFixture f;
        f.site.column("New_Mobile").group("Sales");
        f.board.columns = {{"Status", 1, 900}, {"Name", 2, 2000}, {"Mobile", 3, 1200}};
        f.board.setNormalGeometry(QRect(30, 20, 640, 480));
        gRun.gstrCurrentGroup = "Sales";
        gPerson.gstrSortColumnName = "Phone";
        layoutValues() = kLayout;
        gPerson.glngSplitterHorizontal = 3333;
        gSite.gblnAllowMessaging = gSite.gblnAllowStatusAlerts = false;

        subSaveUserSettings("Ann Lee");

        QCOMPARE(f.row("SELECT NameColumnOrder, NameColumnWidth, New_MobileColumnOrder, New_MobileColumnWidth,"
                       " SplitterPositionHorizontal FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""),
                 (QStringList{"2", "2000", "3", "1200", "1575"}));
        resetRunWide();
        f.board.setNormalGeometry(QRect());
        gRun.gstrCurrentDatabasePath = f.site.path();
        gRun.gblnDatabaseClosed = true;
        subReadUserSettings("Ann Lee");
        QVERIFY(layoutValues() == kLayout);
        QCOMPARE(gRun.gstrCurrentGroup, "Sales");
        QCOMPARE(gPerson.gstrSortColumnName, "Phone");
        QCOMPARE(f.board.normalGeometry(), QRect(30, 20, 640, 480));
    }

    void remoteConnectionSavesNothing()
    {
        StatusFixture f;
        f.board.setNormalGeometry(QRect(30, 20, 640, 480));
        gRun.gblnRemoteConnection = true;
        const QStringList before = f.row("SELECT * FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\"");
        subSaveUserSettings("Ann Lee");
        QCOMPARE(f.row("SELECT * FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""), before);
    }
};

QTEST_GUILESS_MAIN(TstSettings)
#include "tst_settings.moc"
