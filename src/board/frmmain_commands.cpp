// The board's commands: one subCommand_ procedure each, which the menus, the
// toolbar and the keys only call; the menus themselves, the keys F1, F5 and
// Alt+Home, the Web Site entries and the help topic of the area under the mouse.
#include "board/frmmain.h"
#include "kernel/globals.h"
#include "options/frmoptions.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "reports/frmprint.h"
#include "reports/quillink.h"
#include "reports/sendmail.h"
#include "servers/frmservers.h"
#include "servers/serverconnection.h"
#include "side/frmabout.h"
#include "side/frmcompanyinfo.h"
#include "side/frmdisplayphoto.h"
#include "status/statuswrite.h"
#include "statusscreens/frmgroup.h"
#include "statusscreens/frmstatus.h"

#include <QEvent>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeWidget>

using namespace platform;

namespace {

// The maker's pages behind the Web Site menu: a setting of the build, here in one place.
struct WebPage
{
    const char* caption;
    const char* address;
};
const WebPage kWebPages[] = {
    {"VESK-OR &Home Page", "https://www.vesk-or.example/"},
    {"VESK-OR Pro &Product Page", "https://www.vesk-or.example/pro/"},
    {"Send Us Your &Feedback", "https://www.vesk-or.example/feedback/"},
    {"Product &Support", "https://www.vesk-or.example/pro/support/"},
};

// The help topic of each area of the screen; F1 opens the topic of the area the
// mouse last moved over. 0 leaves the topic as it was (the list has none of its own).
class HelpContextWatcher : public QObject
{
public:
    HelpContextWatcher(frmMain* form, QHash<QObject*, int> contexts)
        : QObject(form), m_form(form), m_contexts(std::move(contexts))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove) {
            if (const int context = m_contexts.value(watched, 2000)) {
                m_form->HelpContextID = context;
            }
        }
        return false;
    }

private:
    frmMain* m_form;
    QHash<QObject*, int> m_contexts;
};

} // namespace

void frmMain::initToolbarAndMenus()
{
    buildMenus();
    // The QUIL command is there while the sibling message program is: shown when it
    // comes onto the bus, hidden when it leaves.
    showQuilCommand(false);
    reports::quilLink().watch(this, [this](bool running) { showQuilCommand(running); });

    // The right-click menu of the list, which its hint promises: the Commands menu.
    ListViewMain->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ListViewMain, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { mnuCommands->popup(ListViewMain->viewport()->mapToGlobal(at)); });
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, &frmMain::subShowHelp);
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this,
            [this] { subRefreshUserList(QString()); });
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Home), this), &QShortcut::activated, this, [this] {
        setWindowState(Qt::WindowNoState);
        move(screen()->availableGeometry().topLeft());
    });
}

void frmMain::buildMenus()
{
    const auto entry = [this](QMenu* menu, QAction*& action, const char* name, const QString& caption,
                              void (frmMain::*command)()) {
        action = menu->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        if (command) {
            connect(action, &QAction::triggered, this, command);
        }
    };
    const auto engineEntry = [this](QMenu* menu, QAction*& action, const char* name, const QString& caption,
                                    void (*command)()) {
        action = menu->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, command);
    };

    mnuFile = menuBar()->addMenu(QStringLiteral("&File"));
    entry(mnuFile, mnuNewDesktopIcon, "mnuNewDesktopIcon", QStringLiteral("&New Icon for Selected User(s)..."),
          &frmMain::mnuNewDesktopIcon_Click);
    entry(mnuFile, mnuFile_Uninstall, "mnuFile_Uninstall", QStringLiteral("&Uninstall"),
          &frmMain::mnuFile_Uninstall_Click);
    mnuFile->addSeparator();
    entry(mnuFile, mnuFile_Exit, "mnuFile_Exit", QStringLiteral("E&xit"), &frmMain::subCommand_Exit);

    mnuCommands = menuBar()->addMenu(QStringLiteral("&Commands"));
    mnuCommands->setObjectName(QStringLiteral("mnuCommands"));
    connect(mnuCommands, &QMenu::aboutToShow, this, &frmMain::mnuCommands_Click);
    entry(mnuCommands, mnuCommand_Find, "mnuCommand_Find", QStringLiteral("&Find Item in Selected column"),
          &frmMain::subCommand_Find);
    mnuCommands->addSeparator();
    entry(mnuCommands, mnuCommand_Change, "mnuCommand_Change", QStringLiteral("&Change YOUR Status..."),
          &frmMain::subCommand_Change);
    entry(mnuCommands, mnuCommand_Group, "mnuCommand_Group", QStringLiteral("&Group Change..."),
          &frmMain::subCommand_Group);
    engineEntry(mnuCommands, mnuCommand_Out, "mnuCommand_Out", QStringLiteral("Change Status to OUT"), &subCommand_Out);
    engineEntry(mnuCommands, mnuCommand_Busy, "mnuCommand_Busy", QStringLiteral("Change Status to BUSY"),
                &subCommand_Busy);
    engineEntry(mnuCommands, mnuCommand_In, "mnuCommand_In", QStringLiteral("Change Status to IN"), &subCommand_In);
    mnuCommands->addSeparator();
    entry(mnuCommands, mnuCommand_Refresh, "mnuCommand_Refresh", QStringLiteral("&Refresh List"),
          &frmMain::subCommand_Refresh);
    entry(mnuCommands, mnuCommand_Servers, "mnuCommand_Servers", QStringLiteral("&Servers..."),
          &frmMain::subCommand_Servers);
    entry(mnuCommands, mnuCommand_Home, "mnuCommand_Home", QStringLiteral("&Home"), &frmMain::subCommand_Home);
    mnuCommands->addSeparator();
    entry(mnuCommands, mnuCommand_StatusAlert, "mnuCommand_StatusAlert", QStringLiteral("S&tatus Alert"),
          &frmMain::subCommand_StatusAlert);
    entry(mnuCommands, mnuCommand_Mail, "mnuCommand_Mail", QStringLiteral("Send &Mail"), &frmMain::subCommand_Mail);
    entry(mnuCommands, mnuCommand_QUIL, "mnuCommand_QUIL", QStringLiteral("Send &QUIL Msg"), &frmMain::subCommand_QUIL);
    mnuCommands->addSeparator();
    entry(mnuCommands, mnuCommand_DisplayPhoto, "mnuCommand_DisplayPhoto", QStringLiteral("&Display Photo..."),
          &frmMain::subCommand_DisplayPhoto);
    entry(mnuCommands, mnuCommand_CompanyInfo, "mnuCommand_CompanyInfo", QStringLiteral("&Company Info..."),
          &frmMain::subCommand_CompanyInfo);
    // The planner entry stands in the menu with no command behind it.
    entry(mnuCommands, mnuCommand_Planner, "mnuCommand_Planner", QStringLiteral("P&lanner..."), nullptr);
    mnuCommands->addSeparator();
    entry(mnuCommands, mnuCommand_Print, "mnuCommand_Print", QStringLiteral("&Print..."), &frmMain::subCommand_Print);
    entry(mnuCommands, mnuCommand_Options, "mnuCommand_Options", QStringLiteral("&Options..."),
          &frmMain::subCommand_Options);

    mnuMessagesMenu = menuBar()->addMenu(QStringLiteral("&Messages"));
    entry(mnuMessagesMenu, mnuMessagesNew, "mnuMessagesNew", QStringLiteral("&New Message..."),
          &frmMain::subCommand_NewMessage);
    entry(mnuMessagesMenu, mnuMessages, "mnuMessages", QStringLiteral("Pre&view Messages..."),
          &frmMain::mnuMessages_Click);

    mnuWebActions = menuBar()->addMenu(QStringLiteral("&Web Site"));
    mnuWebActions->setObjectName(QStringLiteral("mnuWebActions"));
    for (const WebPage& page : kWebPages) {
        const QString address = QString::fromLatin1(page.address);
        connect(mnuWebActions->addAction(QString::fromUtf8(page.caption)), &QAction::triggered, this,
                [this, address] { subWebAction(address); });
    }

    mnuHelp = menuBar()->addMenu(QStringLiteral("&Help"));
    entry(mnuHelp, mnuHelpContents, "mnuHelpContents", QStringLiteral("&Contents"), &frmMain::subCommand_Help);
    mnuHelp->addSeparator();
    entry(mnuHelp, mnuAbout, "mnuAbout", QStringLiteral("&About VESK-OR..."), &frmMain::subCommand_About);
}

// Each area's help topic, by the area the mouse moves over. The containers
// follow the mouse so that their bare surface counts as the screen itself.
void frmMain::watchHelpContexts()
{
    const QHash<QObject*, int> contexts = {
        {lblWhosTrackingMe, 2050}, {lstWhosTrackingMe, 2050}, {TreeViewMain, 2150},      {lblPreviewMsgsPane, 2250},
        {ListViewMessages, 2250},  {lblWhoAmITracking, 2300}, {lstWhoAmITracking, 2300}, {StatusBarMain, 2350},
        {ToolbarMain, 2450},       {txtFind, 2450},           {ListViewMain, 0},
    };
    auto* watcher = new HelpContextWatcher(this, contexts);
    for (QObject* area : contexts.keys()) {
        area->installEventFilter(watcher);
    }
    for (QWidget* surface : {centralWidget(), m_panes, picTrackingContainer, m_messagesPane, m_listArea}) {
        surface->setMouseTracking(true);
        surface->installEventFilter(watcher);
    }
    for (QLabel* label : {lblWhoAmITracking, lblWhosTrackingMe, lblPreviewMsgsPane}) {
        label->setMouseTracking(true);
    }
}

void frmMain::subShowHelp()
{
    shell().showHelp(gRun.gstrHelpFile, HelpContextID);
}

// The status-alert entry is for a selected row only.
void frmMain::mnuCommands_Click()
{
    mnuCommand_StatusAlert->setEnabled(false);
    if (ListViewMain->selectionModel()->hasSelection()) {
        mnuCommand_StatusAlert->setEnabled(true);
    }
}

void frmMain::subWebAction(const QString& page)
{
    if (!shell().openUrl(page)) {
        MsgBox(QStringLiteral("Browser Error - Press OK to continue."));
    }
}

void frmMain::subCommand_Find()
{
    txtFind->setFocus();
}

void frmMain::subCommand_Change()
{
    showStatusScreen();
}

// With nobody selected there is no one to change.
void frmMain::subCommand_Group()
{
    if (ListViewMain->selectedItems().isEmpty()) {
        MsgBox(QStringLiteral("Please select one or more users before pressing the Group Change button."));
        return;
    }
    showGroupScreen();
}

// A screen of its own: the tray icon goes first, the screen is modal, and after
// it the board asks for the focus back, so that its Activate brings the list up
// to date even where no window manager returns the focus.
void frmMain::showScreen(const std::function<void()>& show)
{
    subUnloadSysTrayIcon();
    show();
    activateWindow();
}

void frmMain::showStatusScreen()
{
    showScreen([this] { frmStatus::showModal(this); });
}

void frmMain::showGroupScreen()
{
    showScreen([this] { frmGroup::showModal(this); });
}

// A manual refresh leaves the countdown to the next automatic one alone.
void frmMain::subCommand_Refresh()
{
    subRefreshUserList(QString());
    subSetToolBarRights();
}

// The other sites; whatever was chosen, the board is drawn again on the database now in use.
void frmMain::subCommand_Servers()
{
    showScreen([this] {
        frmServers::showModal(this);
        subRefreshUserList(QString());
    });
}

// Back to the home server: the last seen Counter forgotten so that the board is
// rebuilt. At home already, the same steps change nothing.
void frmMain::subCommand_Home()
{
    gCounters.glngLastStatusCounter = 0;
    servers::subConnectHome();
    subSetToolBarRights();
    subResizeControls();
    subRefreshUserList(QString());
}

void frmMain::subCommand_Mail()
{
    reports::subSendMail();
    subRefreshUserList(QString());
}

void frmMain::subCommand_QUIL()
{
    reports::subSendQUILMessage(reports::quilLink(), [this](bool running) { showQuilCommand(running); });
    subRefreshUserList(QString());
}

// The QUIL button and its menu entry, as the sibling message program is found or missed.
void frmMain::showQuilCommand(bool running)
{
    QAction* button = toolbarButton(QStringLiteral("QUIL"));
    button->setVisible(running);
    button->setEnabled(running);
    mnuCommand_QUIL->setEnabled(running);
}

// The tray icon comes back, as the person now chose, with the next Activate.
void frmMain::subCommand_Options()
{
    showScreen([this] {
        frmOptions options(this);
        options.exec();
        subTaskBarSysTrayActivation();
        subRefreshUserList(QString());
    });
}

void frmMain::subCommand_Print()
{
    showScreen([this] {
        frmPrint print(this);
        print.Form_Load();
        print.exec();
        subRefreshUserList(QString());
    });
}

// The photo viewer; the board is refreshed after it.
void frmMain::subCommand_DisplayPhoto()
{
    showScreen([this] {
        frmDisplayPhoto photo(this);
        photo.Form_Load();
        photo.exec();
        subRefreshUserList(QString());
    });
}

// The site's company information; the board is refreshed after it.
void frmMain::subCommand_CompanyInfo()
{
    showScreen([this] {
        frmCompanyInfo info(this);
        info.Form_Load();
        info.exec();
        subRefreshUserList(QString());
    });
}

// The help file's contents: topic 3, as if F1 were pressed on this screen.
void frmMain::subCommand_Help()
{
    HelpContextID = 3;
    subShowHelp();
}

// The About screen (and the stress test it may open); the board is refreshed after it.
void frmMain::subCommand_About()
{
    showScreen([this] {
        frmAbout about(this);
        about.Form_Load();
        about.exec();
        subRefreshUserList(QString());
    });
}

// The window in its normal state first, so that its place and size are saved
// as such; then the ordinary end of the run.
void frmMain::subCommand_Exit()
{
    setWindowState(Qt::WindowNoState);
    requestUnload(vbFormCode);
}
