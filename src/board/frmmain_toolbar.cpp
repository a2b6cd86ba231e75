// ToolbarMain: its 14 fixed buttons, one button per status type that asks for
// one, and the click that runs a command by the button's key or else sets the
// status of that word.
#include "board/frmmain.h"
#include "board/statusicons.h"
#include "board/twips.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/gui/spoken.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"

#include <QEvent>
#include <QLineEdit>
#include <QToolBar>
#include <QWidgetAction>
#include <algorithm>
#include <memory>

namespace {

constexpr int kFixedButtons = 14;
const Twips kFindBoxWidth(800);

struct FixedButton
{
    const char* key;
    const char* caption;
    const char* toolTip;
};

// The fixed buttons in their order; the picture of each is its position.
const FixedButton kFixed[kFixedButtons] = {
    {"Search", "", "Find item in selected column"},
    {"Change", "Change", "Change YOUR Status"},
    {"Group", "Group", "Change status of one or more Group members"},
    {"Refresh", "Refresh", "Update your screen with 'fresh' data"},
    {"Servers", "Servers", "Display Remote Servers List"},
    {"Home", "Home", "Return to Home Server"},
    {"New Message", "New Msg", "Create new VESK-OR message for selected users"},
    {"Preview", "Preview", "Preview VESK-OR Messages"},
    {"eMail", "eMail", "Send eMail"},
    {"QUIL", "QUIL", "Send QUIL Message"},
    {"Options", "Options", "Edit your Options"},
    {"Print", "Print", "Print Phone or Status List"},
    {"About", "About", "Display version information"},
    {"Exit", "Exit", "Exit"},
};

// The click of a button by its key; first match wins. Out, Busy and In are the
// status engine's own commands.
struct KeyedCommand
{
    const char* key;
    void (frmMain::*member)();
    void (*engine)();
};

const KeyedCommand kCommands[] = {
    {"Change", &frmMain::subCommand_Change, nullptr},
    {"Group", &frmMain::subCommand_Group, nullptr},
    {"Refresh", &frmMain::subCommand_Refresh, nullptr},
    {"Servers", &frmMain::subCommand_Servers, nullptr},
    {"Home", &frmMain::subCommand_Home, nullptr},
    {"New Message", &frmMain::subCommand_NewMessage, nullptr},
    {"Preview", &frmMain::subCommand_Messages, nullptr},
    {"eMail", &frmMain::subCommand_Mail, nullptr},
    {"QUIL", &frmMain::subCommand_QUIL, nullptr},
    {"Options", &frmMain::subCommand_Options, nullptr},
    {"Print", &frmMain::subCommand_Print, nullptr},
    {"Find", &frmMain::subCommand_Find, nullptr},
    {"Help", &frmMain::subCommand_Help, nullptr},
    {"About", &frmMain::subCommand_About, nullptr},
    {"Exit", &frmMain::subCommand_Exit, nullptr},
    {"Out", nullptr, &subCommand_Out},
    {"Busy", nullptr, &subCommand_Busy},
    {"In", nullptr, &subCommand_In},
};

// Button 1 makes room for the find box. The button itself is disabled, as a
// placeholder is, but the box in it stays usable: whatever hands the action's
// state down to its widget, the box is enabled again at once.
class FindBoxPlace : public QWidgetAction
{
public:
    using QWidgetAction::QWidgetAction;

protected:
    bool event(QEvent* event) override
    {
        const bool handled = QWidgetAction::event(event);
        if (event->type() == QEvent::ActionChanged && defaultWidget()) {
            defaultWidget()->setEnabled(true);
        }
        return handled;
    }
};

// Screen readers name a button by its caption (its key when it has none), even
// while a narrow window shows it as an icon only, and read its tool tip after it.
void nameForScreenReaders(QToolBar* bar, QAction* button)
{
    QWidget* widget = bar->widgetForAction(button);
    if (widget) {
        const QString caption = spokenCaption(button->text());
        widget->setAccessibleName(caption.isEmpty() ? button->data().toString() : caption);
        widget->setAccessibleDescription(button->toolTip());
    }
}

QAction* addButton(QToolBar* bar, QAction* button, const QString& key, const QString& caption, const QString& toolTip)
{
    button->setObjectName(key);
    button->setData(key);
    button->setText(caption);
    button->setToolTip(toolTip);
    bar->addAction(button);
    nameForScreenReaders(bar, button);
    return button;
}

} // namespace

// The fixed buttons, then the design's Out, Busy and In, which the status types
// of the database replace at the first rebuild.
void frmMain::buildToolbar()
{
    ToolbarMain->setObjectName(QStringLiteral("ToolbarMain"));
    ToolbarMain->setMovable(false);
    auto* findPlace = new FindBoxPlace(ToolbarMain);
    // The placeholder's width, or room for a dozen characters when the font needs more.
    txtFind->setFixedWidth(std::max(kFindBoxWidth.pixels(), txtFind->fontMetrics().averageCharWidth() * 12));
    findPlace->setDefaultWidget(txtFind);
    addButton(ToolbarMain, findPlace, QString::fromUtf8(kFixed[0].key), QString(),
              QString::fromUtf8(kFixed[0].toolTip));
    findPlace->setVisible(true); // the box was hidden with the other controls until now
    for (int i = 1; i < kFixedButtons; ++i) {
        addButton(ToolbarMain, new QAction(ToolbarMain), QString::fromUtf8(kFixed[i].key),
                  QString::fromUtf8(kFixed[i].caption), QString::fromUtf8(kFixed[i].toolTip));
    }
    for (const char* word : {"Out", "Busy", "In"}) {
        const QString status = QString::fromUtf8(word);
        addButton(ToolbarMain, new QAction(ToolbarMain), status, status, status);
    }
    toolbarButton(1)->setEnabled(false);
    toolbarButton(3)->setEnabled(false); // the right to change others, until it is granted
    addToolBar(ToolbarMain);
    connect(ToolbarMain, &QToolBar::actionTriggered, this, &frmMain::toolbarClicked);
}

QAction* frmMain::toolbarButton(int position) const
{
    const QList<QAction*> buttons = ToolbarMain->actions();
    return position >= 1 && position <= buttons.size() ? buttons[position - 1] : nullptr;
}

QAction* frmMain::toolbarButton(const QString& key) const
{
    for (QAction* button : ToolbarMain->actions()) {
        if (button->data().toString() == key) {
            return button;
        }
    }
    return nullptr;
}

// A key that names no command is a status word: the status is set, the board
// redrawn, and the window put away when the person likes it so.
void frmMain::toolbarClicked(QAction* button)
{
    const QString key = button->data().toString();
    for (const KeyedCommand& command : kCommands) {
        if (key == QLatin1String(command.key)) {
            if (command.member) {
                (this->*command.member)();
            } else {
                command.engine();
            }
            return;
        }
    }
    subSetStatus(key);
    subRefreshUserList(QString());
    if (gPerson.gblnAutoMinimize) {
        minimize();
        subTaskBarSysTrayActivation();
    }
}

// Re-reads the person's icon size and captions and rebuilds the toolbar. A
// failure passes in silence and the next statement runs.
void frmMain::subLoadToolBarButtons()
{
    // The handler only resumes: a person without a settings row here (a guest on
    // another site's database) keeps the icon size and captions they had.
    status::Trap trap([](const VbError&) { return status::Resume::Next; });
    std::unique_ptr<dao::Recordset> rs;
    const QString sql =
        QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = ") + dao::quote(gRun.gstrDefaultUser);
    trap([] { subOpenDatabase(); });
    trap([&] { rs = fnOpenSQL(sql); });
    trap([&] { fnRecordset(rs).MoveFirst(); });
    trap([&] {
        gPerson.gintIconSize = status::wholeFromText(fnRecordset(rs).Fields(QStringLiteral("IconSize")).Text());
    });
    trap([&] {
        gPerson.gintToolBarText = status::wholeFromText(fnRecordset(rs).Fields(QStringLiteral("ToolBarText")).Text());
    });
    trap([&] { fnRecordset(rs).Close(); });
    trap([this] { BindToolBar(); });
    trap([] { subCloseDatabase(); });
    trap([this] { subBindStatusButtons(); });
    trap([this] { repaint(); });
    trap([this] { subResizeControls(); });
}

// The fixed buttons' pictures (large or small set) and captions (or none).
void frmMain::BindToolBar()
{
    const QString strProcedure = QStringLiteral("modUser - BindToolBar event");
    status::Trap trap([&](const VbError&) {
        errorbox::showGeneral(strProcedure, errorbox::Joined);
        return status::Resume::Next;
    });
    const bool large = gPerson.gintIconSize == 0;
    const bool captions = gPerson.gintToolBarText != 0;
    // The bar's icon size and captions follow these two settings in the layout,
    // as far as the window's width allows.
    for (int position = 1; position <= kFixedButtons; ++position) {
        trap([&] {
            QAction* button = toolbarButton(position);
            button->setIcon(toolbarIcon(position, large));
            button->setText(captions ? QString::fromUtf8(kFixed[position - 1].caption) : QString());
        });
    }
    // Either way button 1 stays the disabled place of the find box.
    trap([this] { toolbarButton(1)->setEnabled(false); });
}

// One button per status type with OnToolBar set, after those of the last build
// are gone. On another site's database they stay hidden and disabled: a
// person's own status is not set there.
void frmMain::subBindStatusButtons()
{
    while (ToolbarMain->actions().size() > kFixedButtons) {
        QAction* button = toolbarButton(kFixedButtons + 1);
        ToolbarMain->removeAction(button);
        button->deleteLater(); // it may be the very button whose click led here
    }
    subOpenDatabase();
    std::unique_ptr<dao::Recordset> rs =
        fnOpenSQL(QStringLiteral("SELECT * FROM StatusTypesTable ORDER BY StatusCode, Status"));
    if (!rs->isEOF()) {
        rs->MoveFirst();
    }
    const bool captions = gPerson.gintToolBarText != 0;
    while (!rs->isEOF()) {
        if (status::boolFromText(rs->Fields(QStringLiteral("OnToolBar")).Text())) { // not 0, nor Null
            QAction* button =
                addButton(ToolbarMain, new QAction(ToolbarMain), rs->Fields(QStringLiteral("Status")).Text(),
                          captions ? rs->Fields(QStringLiteral("ButtonText")).Text() : QString(),
                          rs->Fields(QStringLiteral("ToolTipText")).Text());
            button->setIcon(statusIcon(status::wholeFromText(rs->Fields(QStringLiteral("StatusCode")).Text())));
            if (gRun.gblnRemoteConnection) {
                button->setEnabled(false);
                button->setVisible(false);
            }
        }
        rs->MoveNext();
    }
    rs->Close();
    subCloseDatabase();
}
