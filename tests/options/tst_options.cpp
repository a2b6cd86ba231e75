// The Options screen: what OK writes and the board shows, what Cancel and a
// deleted person leave alone; on real site files, offscreen.
#include "boardfixture.h"
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

namespace {

// The check boxes and their columns, in the order of a test's flags text ("1" checked).
const std::pair<const char*, const char*> kFlags[] = {
    {"chkAutoLogIn", "AutoLogIn"},
    {"chkAutoLogOut", "AutoLogOut"},
    {"chkAutoClearComments", "AutoClearComments"},
    {"chkChangeScreenPopUp", "ChangeScreenPopUp"},
    {"chkListViewPopUp", "ListViewPopUp"},
    {"chkDisplayTreeView", "DisplayTreeView"},
    {"chkMinimizeOnClose", "MinimizeOnClose"},
    {"chkFontBoldDisplay", "FontBoldDisplay"},
};

// Every control the person can set, as one value.
struct Screen
{
    QString flags;
    int refresh, minimize, icon, text, fontSize;
    QString phone;

    void applyTo(frmOptions& f) const
    {
        for (int i = 0; i < 8; ++i) {
            f.findChild<QCheckBox*>(kFlags[i].first)->setChecked(flags[i] == '1');
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
        Screen s{{}, -1, -1, -1, -1, f.comboFontSizeDisplay->currentText().toInt(), f.txtPhone->text()};
        for (const auto& [control, field] : kFlags) {
            s.flags += f.findChild<QCheckBox*>(control)->isChecked() ? '1' : '0';
        }
        const auto checked = [](const QList<QRadioButton*>& buttons, int& at) {
            for (int i = 0; i < buttons.size(); ++i) {
                at = buttons[i]->isChecked() ? i : at;
            }
        };
        checked(f.optionRefreshRate, s.refresh);
        checked(f.optSysTrayTaskBar, s.minimize);
        checked(f.optIconSize, s.icon);
        checked(f.optToolBarText, s.text);
        return s;
    }
    bool operator==(const Screen&) const = default;
};

struct Options : BoardFixture
{
    Options()
    {
        site.person(QStringLiteral("Ann Lee"), QStringLiteral("alee"), QStringLiteral("1234"));
        subReadUserSettings(gRun.gstrDefaultUser);
    }
    // Ann's settings row, her phone and Counter, as one text.
    QString written() const
    {
        auto rs = site.openDb()->OpenRecordset(QStringLiteral("SELECT * FROM EmployeeSettingsTable"));
        QStringList texts = {ofAnn(QStringLiteral("Phone")),
                             value(QStringLiteral("SELECT Counter FROM StatusCounterTable"))};
        for (int i = 0; !rs->isEOF() && i < rs->FieldCount(); ++i) {
            texts << rs->Fields(i).Text();
        }
        return texts.join('|');
    }
    long long number(const QString& field) const
    {
        return ofAnn(field, QStringLiteral("EmployeeSettingsTable")).toLongLong();
    }
};

// Runs fn on the Options screen inside its modal loop.
void onOptionsScreen(const std::function<void(frmOptions&)>& fn)
{
    QTimer::singleShot(0, [fn] {
        if (auto* screen = qobject_cast<frmOptions*>(QApplication::activeModalWidget())) {
            fn(*screen);
        }
    });
}

} // namespace

Q_DECLARE_METATYPE(Screen)

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip_data()
    {
        QTest::addColumn<Screen>("chosen");
        QTest::addColumn<long long>("refreshRate");
        QTest::addColumn<long long>("minimizeSetting");
        QTest::newRow("all on, never, tray only") << Screen{"11111111", 1, 0, 1, 1, 15, "x 4711"} << 0LL << 1LL;
        QTest::newRow("all off, hourly, task bar only") << Screen{"00000000", 0, 1, 0, 0, 8, ""} << 60LL << 0LL;
        QTest::newRow("every minute, both") << Screen{"10100101", 2, 2, 1, 0, 11, "555 \"0100\""} << 1LL << 2LL;
        QTest::newRow("5 minutes") << Screen{"01011010", 3, 0, 0, 1, 9, "7"} << 5LL << 1LL;
        QTest::newRow("15 minutes") << Screen{"11000011", 4, 1, 1, 1, 12, "8"} << 15LL << 0LL;
        QTest::newRow("30 minutes") << Screen{"00111100", 5, 2, 0, 0, 14, "9"} << 30LL << 2LL;
    }
    // OK writes every control into the row and the phone into EmployeeTable,
    // raises Counter once, and the next run reads them back onto the screen.
    void roundTrip()
    {
        QFETCH(Screen, chosen);
        QFETCH(long long, refreshRate);
        QFETCH(long long, minimizeSetting);
        Options o;
        const long long counter = o.value(QStringLiteral("SELECT Counter FROM StatusCounterTable")).toLongLong();
        {
            frmOptions f;
            QVERIFY(f.Form_Load());
            chosen.applyTo(f);
            f.cmdOkOptions->click();
            QCOMPARE(f.result(), int(QDialog::Accepted));
        }
        for (int i = 0; i < 8; ++i) {
            const QString text = o.ofAnn(kFlags[i].second, QStringLiteral("EmployeeSettingsTable"));
            QVERIFY2(status::boolFromText(text) == (chosen.flags[i] == '1'), kFlags[i].second);
        }
        QCOMPARE(o.number(QStringLiteral("RefreshRate")), refreshRate);
        QCOMPARE(o.number(QStringLiteral("MinimizeSetting")), minimizeSetting);
        QCOMPARE(o.number(QStringLiteral("IconSize")), chosen.icon);
        QCOMPARE(o.number(QStringLiteral("ToolBarText")), chosen.text);
        QCOMPARE(o.number(QStringLiteral("FontSizeDisplay")), chosen.fontSize);
        QCOMPARE(o.ofAnn(QStringLiteral("Phone")), chosen.phone);
        QCOMPARE(o.value(QStringLiteral("SELECT Counter FROM StatusCounterTable")).toLongLong(), counter + 1);
        QCOMPARE(gPerson.gintRefreshRate, refreshRate);

        gPerson.reset();
        subReadUserSettings(gRun.gstrDefaultUser);
        frmOptions again;
        QVERIFY(again.Form_Load());
        QCOMPARE(Screen::of(again), chosen);
    }

    void nullFlag_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("control");
        QTest::newRow("AutoClearComments") << "AutoClearComments"
                                           << "chkAutoClearComments";
        QTest::newRow("AutoLogIn") << "AutoLogIn"
                                   << "chkAutoLogIn";
        QTest::newRow("MinimizeOnClose") << "MinimizeOnClose"
                                         << "chkMinimizeOnClose";
        QTest::newRow("ListViewPopUp") << "ListViewPopUp"
                                       << "chkListViewPopUp";
        QTest::newRow("AutoMinimize, not shown") << "AutoMinimize"
                                                 << "";
    }
    // A null flag in the row shows unchecked and clears the value the run holds,
    // which OK then writes as off.
    void nullFlag()
    {
        QFETCH(QString, field);
        QFETCH(QString, control);
        Options o;
        o.setForAnn(QStringLiteral("AutoClearComments = True, AutoLogIn = True, MinimizeOnClose = True, "
                                   "ListViewPopUp = True, AutoMinimize = True, ") +
                    field + QStringLiteral(" = Null"));
        frmOptions f;
        QVERIFY(f.Form_Load());
        if (!control.isEmpty()) {
            QVERIFY(!f.findChild<QCheckBox*>(control)->isChecked());
        }
        f.cmdOkOptions->click();
        for (const char* flag :
             {"AutoClearComments", "AutoLogIn", "MinimizeOnClose", "ListViewPopUp", "AutoMinimize"}) {
            const QString text = o.ofAnn(flag, QStringLiteral("EmployeeSettingsTable"));
            QVERIFY2(status::boolFromText(text) == (field != flag), flag);
        }
    }

    void nothingWritten_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Cancel") << "Cancel";
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
        frmOptions f;
        if (how == "gone before Load") {
            o.site.execute(QStringLiteral("DELETE FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""));
            o.gw.boxes().answer(platform::vbOK);
            QCOMPARE(f.exec(), int(QDialog::Rejected));
            QCOMPARE(o.gw.boxes().last().prompt, "It appears the Administrator has deleted your name. You must "
                                                 "restart  VESK-OR Pro  to fix this problem.");
        }
        if (how != "gone before Load") {
            QVERIFY(f.Form_Load());
            Screen{"00000100", 1, 2, 1, 0, 13, "999"}.applyTo(f);
            f.chkDisplayTreeView->setChecked(!f.chkDisplayTreeView->isChecked());
        }
        if (how == "gone before OK") {
            o.site.execute(QStringLiteral("DELETE FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""));
        }
        const QString before = o.written();
        if (how == "Cancel") {
            f.cmdCancelOptions->click();
        } else if (how == "Esc") {
            QTest::keyClick(&f, Qt::Key_Escape);
        } else if (how == "gone before OK") {
            o.gw.boxes().answer(platform::vbOK);
            f.cmdOkOptions->click();
            QVERIFY(o.gw.boxes().last().prompt.startsWith("Error ( 3021 ) in frmOptions - cmdOkOptions_Click event"));
            QCOMPARE(f.result(), int(QDialog::Rejected)); // still open, for Cancel
        }
        QCOMPARE(o.written(), before);
        QCOMPARE(gPerson.gvarDisplayTreeView, treeView);
    }

    void board_data()
    {
        QTest::addColumn<Screen>("chosen");
        QTest::addColumn<int>("countDown");
        QTest::addColumn<bool>("tray");
        QTest::newRow("tree, text, large, bold 12, 15 min, tray")
            << Screen{"00000111", 4, 0, 0, 1, 12, ""} << 900 << true;
        QTest::newRow("tabs, no text, small, 8, never, task bar")
            << Screen{"00000000", 1, 1, 1, 0, 8, ""} << 0 << false;
        QTest::newRow("every minute, both") << Screen{"00000100", 2, 2, 1, 1, 10, ""} << 60 << true;
    }
    // The board's Options command: the screen modal with the tray icon taken down;
    // after OK the board shows the choices at once, and its next Activate counts
    // down from the new rate ("Never": refresh off) and puts the tray back or not.
    void board()
    {
        QFETCH(Screen, chosen);
        QFETCH(int, countDown);
        QFETCH(bool, tray);
        Options o;
        o.setForAnn(QStringLiteral("MinimizeSetting = 2"));
        frmMain& board = o.open();
        o.show(1600, 700);
        board.Form_Activate();
        QVERIFY(board.sysTrayIconExists());
        bool trayDuringScreen = true;
        onOptionsScreen([&](frmOptions& f) {
            trayDuringScreen = board.sysTrayIconExists();
            chosen.applyTo(f);
            f.cmdOkOptions->click();
        });
        board.subCommand_Options();
        QVERIFY(!trayDuringScreen);
        const bool tree = chosen.flags[5] == '1';
        QCOMPARE(board.TreeViewMain->isVisible(), tree);
        QCOMPARE(board.TabStripMain->isVisible(), !tree);
        QCOMPARE(board.toolbarButton(2)->text(), chosen.text ? QStringLiteral("Change") : QString());
        QCOMPARE(board.ToolbarMain->iconSize().width(), chosen.icon ? 16 : 32);
        QCOMPARE(board.ListViewMain->font().bold(), chosen.flags[7] == '1');
        QCOMPARE(board.ListViewMain->font().pointSize(), chosen.fontSize);

        board.Form_Activate();
        QCOMPARE(board.sysTrayIconExists(), tray);
        QCOMPARE(gBoard.gintTimerMainCountDown, countDown);
        board.TimerMain_Timer();
        QCOMPARE(board.TimerMain.isActive(), countDown != 0);
        QCOMPARE(board.panelText(3), countDown ? QStringLiteral("Next refresh in %1 ").arg(countDown - 1)
                                               : QStringLiteral(" Refresh OFF "));
    }
};

QTEST_MAIN(TestOptions)
#include "tst_options.moc"
