// frmMain: its controls, and what it answers the logic as the main screen.
#include "board/frmmain.h"

#include "status/statuswrite.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>

namespace {

struct ToolbarButton
{
    const char* key;
    const char* caption;
    const char* toolTip;
};

// ToolbarMain in its order: 14 fixed buttons, then the design's three status
// buttons, which the status types of the database replace when the toolbar is
// rebuilt.
const ToolbarButton kToolbarButtons[] = {
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
    {"Out", "Out", "Out"},
    {"Busy", "Busy", "Busy"},
    {"In", "In", "In"},
};

constexpr int kPanelCount = 3;

} // namespace

MainScreen* frmMain::load()
{
    auto* screen = new frmMain;
    screen->Form_Load();
    return screen;
}

frmMain::frmMain()
    : ListViewMain(new QTreeWidget(this)), ToolbarMain(new QToolBar(QStringLiteral("ToolbarMain"), this)),
      StatusBarMain(new QStatusBar(this)), TabStripMain(new QTabBar(this)), TreeViewMain(new QTreeWidget(this)),
      txtFind(new QLineEdit(this)), picTrackingContainer(new QWidget(this)), lblWhoAmITracking(new QLabel(this)),
      lstWhoAmITracking(new QTreeWidget(this)), lblWhosTrackingMe(new QLabel(this)),
      lstWhosTrackingMe(new QTreeWidget(this)), lblPreviewMsgsPane(new QLabel(this)),
      ListViewMessages(new QTreeWidget(this)), imgPlannerBanner(new QLabel(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setAttribute(Qt::WA_DeleteOnClose);
    ListViewMain->setObjectName(QStringLiteral("ListViewMain"));
    ListViewMain->setRootIsDecorated(false);
    ListViewMain->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Status"), QStringLiteral("Phone"),
                                   QStringLiteral("Due Back"), QStringLiteral("Comments"),
                                   QStringLiteral("Last Modified")});
    setCentralWidget(ListViewMain);
    buildControls();
    buildToolbar();
    buildStatusBar();
    initTray();

    TimerMain.setInterval(1000);
    connect(&TimerMain, &QTimer::timeout, this, &frmMain::TimerMain_Timer);
    tmrCheckForForcedShutDown.setInterval(60000);
    connect(&tmrCheckForForcedShutDown, &QTimer::timeout, this, &frmMain::tmrCheckForForcedShutDown_Timer);
    tmrCheckForForcedShutDown.start(); // enabled from the start

    setMainScreen(this);
}

frmMain::~frmMain()
{
    if (mainScreenLoaded() && &mainScreen() == this) {
        setMainScreen(nullptr);
    }
    setBusyPointer(false);
}

// Names every control as the screen knows it; the layout places them.
void frmMain::buildControls()
{
    const std::pair<QWidget*, const char*> named[] = {
        {TabStripMain, "TabStripMain"},
        {TreeViewMain, "TreeViewMain"},
        {txtFind, "txtFind"},
        {picTrackingContainer, "picTrackingContainer"},
        {lblWhoAmITracking, "lblWhoAmITracking"},
        {lstWhoAmITracking, "lstWhoAmITracking"},
        {lblWhosTrackingMe, "lblWhosTrackingMe"},
        {lstWhosTrackingMe, "lstWhosTrackingMe"},
        {lblPreviewMsgsPane, "lblPreviewMsgsPane"},
        {ListViewMessages, "ListViewMessages"},
        {imgPlannerBanner, "imgPlannerBanner"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(QString::fromLatin1(name));
        widget->hide(); // until the layout shows what the settings ask for
    }
    const std::pair<QTimer*, int> timers[] = {
        {&tmrCheckForNewMessages, 10000},
        {&tmrCheckForStatusAlerts, 3000},
        {&tmrScreenSaver, 1000},
        {&tmrDetectLockedWorkStation, 3000},
    };
    for (const auto& [timer, interval] : timers) {
        timer->setInterval(interval);
    }
}

void frmMain::buildToolbar()
{
    ToolbarMain->setObjectName(QStringLiteral("ToolbarMain"));
    ToolbarMain->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const ToolbarButton& b : kToolbarButtons) {
        QAction* button = ToolbarMain->addAction(QString::fromUtf8(b.caption));
        button->setObjectName(QString::fromUtf8(b.key));
        button->setData(QString::fromUtf8(b.key));
        button->setToolTip(QString::fromUtf8(b.toolTip));
    }
    toolbarButton(1)->setEnabled(false); // the place of the find box
    toolbarButton(3)->setEnabled(false); // the right to change others, until it is granted
    addToolBar(ToolbarMain);
    connect(ToolbarMain, &QToolBar::actionTriggered, this, &frmMain::toolbarClicked);
}

void frmMain::buildStatusBar()
{
    StatusBarMain->setObjectName(QStringLiteral("StatusBarMain"));
    for (int i = 0; i < kPanelCount; ++i) {
        auto* label = new QLabel(StatusBarMain);
        label->setFrameShape(QFrame::Panel);
        label->setFrameShadow(QFrame::Sunken);
        StatusBarMain->addWidget(label, i == 1 ? 1 : 0);
        m_panels.append(label);
    }
    setStatusBar(StatusBarMain);
}

// Only the status buttons act on this board; the commands come with the full board.
void frmMain::toolbarClicked(QAction* button)
{
    const QString key = button->data().toString();
    if (key == QLatin1String("Out")) {
        subCommand_Out();
    } else if (key == QLatin1String("Busy")) {
        subCommand_Busy();
    } else if (key == QLatin1String("In")) {
        subCommand_In();
    }
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

QLabel* frmMain::panel(int number) const
{
    return number >= 1 && number <= m_panels.size() ? m_panels[number - 1] : nullptr;
}

// --- MainScreen -------------------------------------------------------------------

void frmMain::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

QString frmMain::caption() const
{
    return windowTitle();
}

bool frmMain::isMinimized() const
{
    return QMainWindow::isMinimized();
}

void frmMain::minimize()
{
    showMinimized();
}

void frmMain::setBusyPointer(bool busy)
{
    if (busy == m_busyPointer || !qApp) {
        return;
    }
    m_busyPointer = busy;
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void frmMain::unload()
{
    setMainScreen(nullptr);
    close(); // deleted on close
}

// Until the ordinary end (QueryUnload) is in place, any reason simply unloads.
void frmMain::requestUnload(int)
{
    unload();
}

bool frmMain::isLoaded() const
{
    return true;
}

QRect frmMain::normalGeometry() const
{
    return QMainWindow::normalGeometry();
}

void frmMain::setNormalGeometry(const QRect& geometry)
{
    if (windowState() == Qt::WindowNoState) {
        setGeometry(geometry);
    }
}

void frmMain::setPanelText(int number, const QString& text)
{
    if (QLabel* label = panel(number)) {
        label->setText(text);
    }
}

QString frmMain::panelText(int number) const
{
    QLabel* label = panel(number);
    return label ? label->text() : QString();
}

void frmMain::setPanelToolTip(int number, const QString& text)
{
    if (QLabel* label = panel(number)) {
        label->setToolTip(text);
    }
}

QString frmMain::panelToolTip(int number) const
{
    QLabel* label = panel(number);
    return label ? label->toolTip() : QString();
}

bool frmMain::groupButtonEnabled() const
{
    return toolbarButton(3)->isEnabled();
}

void frmMain::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        Form_Activate();
    }
}
