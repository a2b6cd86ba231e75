// The Options screen on real site files: what OK writes and the board shows, what Cancel leaves alone.
#include "boardfixture.h"
#include "columns.h"
#include "options/frmoptions.h"
#include "status/statuscommon.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <algorithm>

namespace {

// The check boxes in the order of a test's flags text ("1" checked).
const char* const kFlags[] = {"chkAutoLogIn",     "chkAutoLogOut",      "chkAutoClearComments", "chkChangeScreenPopUp",
                              "chkListViewPopUp", "chkDisplayTreeView", "chkMinimizeOnClose",   "chkFontBoldDisplay"};

// Every control the person can set, as one value; a choice is the index of its option button.
struct Screen
{
    QString flags;
    int refresh, minimize, icon, text, fontSize;
    QString phone;

    void applyTo(frmOptions& f) const
    {
        for (int i = 0; i < 8; ++i) {
            f.findChild<QCheckBox*>(kFlags[i])->setChecked(flags[i] == '1');
        }
        f.optionRefreshRate[refresh]->setChecked(true);
        f.optSysTrayTaskBar[minimize]->setChecked(true);
        f.optIconSize[icon]->setChecked(true);
        f.optToolBarText[text]->setChecked(true);
        f.comboFontSizeDisplay->setCurrentText(QString::number(fontSize));
        f.txtPhone->setText(phone);
    }
    static Screen of(const frmOptions& f)
    {
        const auto checkedAt = [](const QList<QRadioButton*>& b) {
            return int(std::find_if(b.begin(), b.end(), [](auto* r) { return r->isChecked(); }) - b.begin());
        };
        Screen s(QString(), checkedAt(f.optionRefreshRate), checkedAt(f.optSysTrayTaskBar), checkedAt(f.optIconSize),
                 checkedAt(f.optToolBarText), f.comboFontSizeDisplay->currentText().toInt(), f.txtPhone->text());
        for (const char* flag : kFlags) {
            s.flags += f.findChild<QCheckBox*>(flag)->isChecked() ? '1' : '0';
        }
        return s;
    }
    bool operator==(const Screen&) const = default;
};

struct Options : BoardFixture
{
    Options()
    {
        site.person("Ann Lee", "alee", "1234");
        subReadUserSettings(gRun.gstrDefaultUser);
    }
    QString setting(const QString& field) const
    {
        return ofAnn(field, "EmployeeSettingsTable");
    }
    // Ann's settings row, her phone and Counter, as one text.
    QString written() const
    {
        auto rs = site.openDb()->OpenRecordset("SELECT * FROM EmployeeSettingsTable");
        QStringList texts = {ofAnn("Phone"), site.value("SELECT Counter FROM StatusCounterTable")};
        for (int i = 0; !rs->isEOF() && i < rs->FieldCount(); ++i) {
            texts << rs->Fields(i).Text();
        }
        return texts.join('|');
    }
};

} // namespace

Q_DECLARE_METATYPE(Screen)

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip_data()
    {
        addColumns<Screen, int, int>("chosen", "refreshRate", "minimizeSetting");
        QTest::newRow("all on, never, tray only") << Screen{"11111111", 1, 0, 1, 1, 15, "x 4711"} << 0 << 1;
        QTest::newRow("all off, hourly, task bar only") << Screen{"00000000", 0, 1, 0, 0, 8, ""} << 60 << 0;
        QTest::newRow("every minute, both") << Screen{"10100101", 2, 2, 1, 0, 11, "555 \"0100\""} << 1 << 2;
        QTest::newRow("5 minutes") << Screen{"01011010", 3, 0, 0, 1, 9, "7"} << 5 << 1;
        QTest::newRow("15 minutes") << Screen{"11000011", 4, 1, 1, 1, 12, "8"} << 15 << 0;
        QTest::newRow("30 minutes") << Screen{"00111100", 5, 2, 0, 0, 14, "9"} << 30 << 2;
    }
    // OK writes every control into the row and the phone into EmployeeTable, raises Counter
    // once, and the next run reads them back. A null flag shows unchecked and clears the
    // run's value, which OK then writes, also for AutoMinimize, which is not shown.
    void roundTrip()
    {
        QFETCH(Screen, chosen);
        Options o;
        const QString counter = o.site.value("SELECT Counter + 1 FROM StatusCounterTable");
        o.setForAnn("AutoClearComments = Null, AutoMinimize = Null");
        gPerson.gblnAutoClearComments = gPerson.gblnAutoMinimize = true;
        {
            frmOptions f;
            QVERIFY(f.Form_Load());
            QVERIFY(!f.chkAutoClearComments->isChecked());
            chosen.applyTo(f);
            f.cmdOkOptions->click();
            QCOMPARE(f.result(), int(QDialog::Accepted));
        }
        QTEST(o.setting("RefreshRate").toInt(), "refreshRate");
        QTEST(o.setting("MinimizeSetting").toInt(), "minimizeSetting");
        QCOMPARE(o.ofAnn("Phone"), chosen.phone);
        QVERIFY(!status::boolFromText(o.setting("AutoMinimize")));
        QCOMPARE(o.site.value("SELECT Counter FROM StatusCounterTable"), counter);

        gPerson.reset();
        subReadUserSettings(gRun.gstrDefaultUser);
        frmOptions again;
        QVERIFY(again.Form_Load());
        QCOMPARE(Screen::of(again), chosen);
    }

    void nothingWritten_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Help, F1, then Cancel") << "Cancel";
        QTest::newRow("Esc") << "Esc";
        QTest::newRow("row gone before Load") << "gone before Load";
        QTest::newRow("row gone before OK") << "gone before OK";
    }
    // Cancel and Esc write nothing; neither does a person the administrator
    // deleted, before the screen opened or while it was open: not even the phone.
    void nothingWritten()
    {
        QFETCH(QString, how);
        Options o;
        const long long treeView = gPerson.gvarDisplayTreeView;
        const QString deleteAnn = "DELETE FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\"";
        o.gw.boxes().answer(platform::vbOK);
        frmOptions f;
        if (how == "gone before Load") {
            o.site.execute(deleteAnn);
            QCOMPARE(f.exec(), int(QDialog::Rejected));
            QCOMPARE(o.gw.boxes().last().prompt, "It appears the Administrator has deleted your name. You must "
                                                 "restart  VESK-OR Pro  to fix this problem.");
        } else {
            QVERIFY(f.Form_Load());
            Screen{"00000000", 1, 2, 1, 0, 13, "999"}.applyTo(f); // the tree off: the run has it on
        }
        if (how == "gone before OK") {
            o.site.execute(deleteAnn);
        }
        const QString before = o.written();
        if (how == "Cancel") {
            f.cmdOptionsHelp->click();
            f.show();
            QVERIFY(QTest::qWaitForWindowActive(&f));
            QTest::keyClick(f.txtPhone, Qt::Key_F1);
            QCOMPARE(o.gw.shell().calls, QStringList(2, "help  2600"));
            f.cmdCancelOptions->click();
        } else if (how == "Esc") {
            QTest::keyClick(&f, Qt::Key_Escape);
        } else if (how == "gone before OK") {
            f.cmdOkOptions->click();
            QVERIFY(o.gw.boxes().last().prompt.startsWith("Error ( 3021 ) in frmOptions - cmdOkOptions_Click event"));
        }
        QCOMPARE(f.result(), int(QDialog::Rejected));
        QCOMPARE(o.written(), before);
        QCOMPARE(gPerson.gvarDisplayTreeView, treeView);
    }

    void board_data()
    {
        addColumns<Screen, int, bool>("chosen", "countDown", "tray");
        QTest::newRow("tree, text, large, bold 12, 15 min, tray only")
            << Screen{"00000111", 4, 0, 0, 1, 12, ""} << 900 << true;
        QTest::newRow("tabs, small, never, task bar only") << Screen{"00000000", 1, 1, 1, 0, 8, ""} << 0 << false;
        QTest::newRow("every minute, both") << Screen{"00000100", 2, 2, 1, 1, 10, ""} << 60 << true;
    }
    // The board's Options command: the screen modal, the tray icon down; after OK the board
    // shows the choices, and its next Activate counts down from the new rate and puts the
    // tray back or not.
    void board()
    {
        auto [chosen, countDown] = fetch<Screen, int>("chosen", "countDown");
        Options o;
        o.setForAnn("MinimizeSetting = 2");
        frmMain& board = o.open();
        o.show(1600, 700);
        board.Form_Activate();
        bool trayDuringScreen = true;
        QTimer::singleShot(0, [&] {
            trayDuringScreen = board.sysTrayIconExists();
            auto* screen = qobject_cast<frmOptions*>(QApplication::activeModalWidget());
            chosen.applyTo(*screen);
            screen->cmdOkOptions->click();
        });
        board.subCommand_Options();
        QVERIFY(!trayDuringScreen);
        QCOMPARE(o.child<QTreeWidget>("TreeViewMain")->isVisible(), chosen.flags[5] == '1');
        QCOMPARE(o.child("TabStripMain")->isVisible(), chosen.flags[5] == '0');
        QCOMPARE(o.action("Change")->text(), chosen.text ? "Change" : QString());
        QCOMPARE(o.child<QToolBar>("ToolbarMain")->iconSize().width(), chosen.icon ? 16 : 32);
        QCOMPARE(o.list()->font().bold(), chosen.flags[7] == '1');
        QCOMPARE(o.list()->font().pointSize(), chosen.fontSize);

        board.Form_Activate();
        QTEST(board.sysTrayIconExists(), "tray");
        QCOMPARE(gBoard.gintTimerMainCountDown, countDown);
        board.TimerMain_Timer();
        QCOMPARE(o.child<QTimer>("TimerMain")->isActive(), countDown != 0);
        QCOMPARE(board.panelText(3),
                 countDown ? QStringLiteral("Next refresh in %1 ").arg(countDown - 1) : " Refresh OFF ");
    }
};

QTEST_MAIN(TestOptions)
#include "tst_options.moc"
