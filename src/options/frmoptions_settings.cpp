// frmOptions' Load and OK: the person's settings row and phone number read into
// the controls, and written back as one unit of change.
//
// The numbers the row holds for the screen's choices, as the board reads them:
//   RefreshRate      minutes between automatic refreshes; 0 is "Never", no automatic
//                    refresh. optionRefreshRate(0..5): 60, 0, 1, 5, 15, 30.
//   MinimizeSetting  0 task bar only (no tray icon), 1 tray only, 2 both.
//                    optSysTrayTaskBar(0..2): 1, 0, 2.
//   IconSize         0 large toolbar icons, 1 small. optIconSize(0..1): 0, 1.
//   ToolBarText      0 no captions on the toolbar, 1 captions. optToolBarText(0..1): 0, 1.
// The board takes any MinimizeSetting of 1 or more as a tray, any other IconSize
// than 0 as small and any other ToolBarText than 0 as captions. A number the
// screen does not offer (set by the administrator) checks no choice and is
// written back as it stood.
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "options/frmoptions.h"
#include "platform/msgbox.h"
#include "status/statuscommon.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>
#include <memory>

using namespace platform;

namespace {

const QList<long long> kRefreshRates = {60, 0, 1, 5, 15, 30};
const QList<long long> kMinimizeSettings = {1, 0, 2};
const QList<long long> kIconSizes = {0, 1};
const QList<long long> kToolBarTexts = {0, 1};

QString settingsRowSql()
{
    return QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name LIKE ") +
           dao::quoteLike(gRun.gstrDefaultUser);
}

void store(const std::variant<bool*, long long*>& memory, long long value)
{
    std::visit([value](auto* target) { *target = static_cast<std::remove_reference_t<decltype(*target)>>(value); },
               memory);
}

long long stored(const std::variant<bool*, long long*>& memory)
{
    return std::visit([](auto* target) { return static_cast<long long>(*target); }, memory);
}

// Yes/no columns take a truth value, the others a number.
QVariant fieldValue(const std::variant<bool*, long long*>& memory, long long value)
{
    return std::holds_alternative<bool*>(memory) ? QVariant(value != 0) : QVariant(value);
}

} // namespace

frmOptions::Setting frmOptions::check(const char* field, QCheckBox* box, Memory memory)
{
    if (!box) { // written as it stands in memory, never shown
        return {field, memory, true, [memory] { return stored(memory); },
                [](long long) {
                }};
    }
    return {field, memory, true, [box] { return box->isChecked() ? 1LL : 0LL; },
            [box](long long value) {
                box->setChecked(value != 0);
            }};
}

frmOptions::Setting frmOptions::choice(const char* field, const QList<QRadioButton*>& buttons,
                                       const QList<long long>& values, long long* memory)
{
    const auto shown = [buttons, values, memory] {
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            if (buttons[i]->isChecked()) {
                return values[i];
            }
        }
        return *memory;
    };
    const auto show = [buttons, values](long long value) {
        const qsizetype at = values.indexOf(value);
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            buttons[i]->setChecked(i == at);
        }
    };
    return {field, memory, false, shown, show};
}

// Every setting the screen writes, in the order it writes them. DisplayTreeView
// stands twice in that order; both writes carry the same value.
QList<frmOptions::Setting> frmOptions::settings()
{
    QComboBox* fontSize = comboFontSizeDisplay;
    return {
        check("AutoClearComments", chkAutoClearComments, &gPerson.gblnAutoClearComments),
        check("AutoLogIn", chkAutoLogIn, &gPerson.gblnAutoLogIn),
        check("AutoLogOut", chkAutoLogOut, &gPerson.gblnAutoLogOut),
        check("AutoMinimize", nullptr, &gPerson.gblnAutoMinimize),
        check("MinimizeOnClose", chkMinimizeOnClose, &gPerson.gblnMinimizeOnClose),
        check("DisplayTreeView", chkDisplayTreeView, &gPerson.gvarDisplayTreeView),
        check("ListViewPopUp", chkListViewPopUp, &gPerson.gblnListViewPopUp),
        check("ChangeScreenPopUp", chkChangeScreenPopUp, &gPerson.gblnChangeScreenPopUp),
        choice("RefreshRate", optionRefreshRate, kRefreshRates, &gPerson.gintRefreshRate),
        choice("MinimizeSetting", optSysTrayTaskBar, kMinimizeSettings, &gPerson.gintMinimizeSetting),
        choice("IconSize", optIconSize, kIconSizes, &gPerson.gintIconSize),
        choice("ToolBarText", optToolBarText, kToolBarTexts, &gPerson.gintToolBarText),
        check("DisplayTreeView", chkDisplayTreeView, &gPerson.gvarDisplayTreeView),
        check("FontBoldDisplay", chkFontBoldDisplay, &gPerson.gintFontBoldDisplay),
        {"FontSizeDisplay", &gPerson.gintFontSizeDisplay, false,
         [fontSize] { return fontSize->currentText().toLongLong(); },
         [fontSize](long long size) {
             fontSize->setCurrentText(QString::number(std::clamp(size, 8LL, 15LL)));
         }},
    };
}

bool frmOptions::Form_Load()
{
    const QString strProcedure = QStringLiteral("frmOptions - Load event");
    status::Trap trap([&](const VbError&) {
        MsgBox(status::errorHead(strProcedure), vbOKOnly);
        return status::Resume::Next;
    });
    std::unique_ptr<dao::Recordset> rs;
    trap([] { subOpenDatabase(); });
    trap([&] { rs = fnOpenSQL(settingsRowSql()); });
    // A failed open is answered by its box and then counts as no row, as a failed test enters its branch.
    if (!rs || rs->RecordCount() == 0) {
        MsgBox(QStringLiteral("It appears the Administrator has deleted your name. You must restart ") +
                   gRun.gstrProgramTitle + QStringLiteral(" to fix this problem."),
               vbOKOnly);
        if (rs) {
            trap([&] { rs->Close(); });
        }
        return false;
    }
    trap([&] { rs->MoveFirst(); });
    // A flag shows what the row holds, and the run-wide value follows it: a null is
    // off in both. The other settings show the run-wide values the board uses.
    for (const Setting& setting : settings()) {
        if (setting.isFlag) {
            trap([&] {
                const dao::Field field = rs->Fields(QString::fromLatin1(setting.field));
                store(setting.memory, field.IsNull() ? 0 : status::boolFromText(field.Text()));
            });
        }
        setting.show(stored(setting.memory));
    }
    trap([&] {
        std::unique_ptr<dao::Recordset> person = fnOpenSQL(status::employeeRowSql(gRun.gstrDefaultUser));
        if (person->RecordCount() > 0) {
            person->MoveFirst();
            txtPhone->setText(person->Fields(QStringLiteral("Phone")).Text());
        }
        person->Close();
    });
    trap([&] {
        const dao::Field level = rs->Fields(QStringLiteral("UserSecurityLevel"));
        gPerson.gintUserSecurityLevel = level.IsNull() ? 0 : status::wholeFromText(level.Text());
    });
    trap([&] { rs->Close(); });
    trap([] { subCloseDatabase(); });
    return true;
}

// The phone number, the settings row and the raised Counter (the number shows on
// other people's boards) go in as one unit: all of them or none. Another client's
// lock is waited out by the engine; what does not pass gets a box, and the screen
// stays open with nothing written.
bool frmOptions::writeRows(const QList<Setting>& written, const QList<long long>& values)
{
    const QString phone = txtPhone->text();
    const bool committed = fnRunUnit(
        [&] {
            {
                const std::unique_ptr<dao::Recordset> person = fnOpenSQL(status::employeeRowSql(gRun.gstrDefaultUser));
                if (person->RecordCount() > 0) {
                    person->MoveFirst();
                    person->Edit();
                    person->Fields(QStringLiteral("Phone")) = phone;
                    person->Update();
                }
                person->Close();
            }
            // The phone lives in EmployeeTable only: the settings row has no column for it.
            const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(settingsRowSql());
            rs->MoveFirst(); // 3021 when the row went while the screen was open
            rs->Edit();
            for (qsizetype i = 0; i < written.size(); ++i) {
                rs->Fields(QString::fromLatin1(written[i].field)) = fieldValue(written[i].memory, values[i]);
            }
            rs->Update();
            rs->Close();
            subUpdateStatusCounter();
        },
        [](const VbError& e, int) {
            Err.Set(e);
            MsgBox(status::errorHead(QStringLiteral("frmOptions - cmdOkOptions_Click event")), vbOKOnly);
            return false;
        });
    subCloseDatabase();
    return committed;
}

// Written, then the run-wide values, then the board: its toolbar rebuilt with the
// new icons and captions, the list's font, and the layout (tree or tabs).
void frmOptions::cmdOkOptions_Click()
{
    const QList<Setting> written = settings();
    QList<long long> values;
    for (const Setting& setting : written) {
        values << setting.shown();
    }
    if (!writeRows(written, values)) {
        return;
    }
    for (qsizetype i = 0; i < written.size(); ++i) {
        store(written[i].memory, values[i]);
    }
    MainScreen& board = mainScreen();
    board.subLoadToolBarButtons();
    board.applyDisplayFont();
    board.subResizeControls();
    accept();
}
