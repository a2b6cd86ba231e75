// frmMain: its controls, and what it answers the logic as the main screen.
#include "board/frmmain.h"

#include "alerts/frmnewmessagesalert.h"
#include "board/grouptabbar.h"
#include "messaging/gui/messagescreens.h"
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

constexpr int kPanelCount = 5;
constexpr int kFirstSecurityPanel = 4;

} // namespace

MainScreen* frmMain::load()
{
    auto* screen = new frmMain;
    screen->Form_Load();
    return screen;
}

frmMain::frmMain()
    : ListViewMain(new QTreeWidget(this)), ToolbarMain(new QToolBar(QStringLiteral("ToolbarMain"), this)),
      StatusBarMain(new QStatusBar(this)), TabStripMain(new GroupTabBar(this)), TreeViewMain(new QTreeWidget(this)),
      txtFind(new QLineEdit(this)), picTrackingContainer(new QWidget(this)), lblWhoAmITracking(new QLabel(this)),
      lstWhoAmITracking(new QTreeWidget(this)), lblWhosTrackingMe(new QLabel(this)),
      lstWhosTrackingMe(new QTreeWidget(this)), lblPreviewMsgsPane(new QLabel(this)),
      ListViewMessages(new QTreeWidget(this)), imgPlannerBanner(new QLabel(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setAttribute(Qt::WA_DeleteOnClose);
    ListViewMain->setObjectName(QStringLiteral("ListViewMain"));
    ListViewMain->setRootIsDecorated(false); // rows only: the headers come with the first refresh
    setCentralWidget(ListViewMain);
    buildControls();
    buildToolbar();
    buildStatusBar();
    initListAndGroups();
    initMessagesPane();
    initTrackingPanes();
    initTimers();
    initToolbarAndMenus();
    initLayout();
    initTray();
    // Preview Msg on a new-message pop-up opens the Preview Messages screen.
    setPreviewMessagesScreen(subShowMsgsPreview);

    setMainScreen(this);
}

frmMain::~frmMain()
{
    // The controls outlive this class's part of the object while QWidget takes
    // them down: none of their signals or event hooks may call back into it.
    qDeleteAll(findChildren<QObject*>(QLatin1String(kEventHookName)));
    for (QObject* child : findChildren<QObject*>()) {
        QObject::disconnect(child, nullptr, this, nullptr);
    }
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
    // What a screen reader calls each area.
    const std::pair<QWidget*, const char*> spoken[] = {
        {ListViewMain, "Users and items"},
        {TabStripMain, "Groups"},
        {TreeViewMain, "Groups"},
        {txtFind, "Find item in selected column"},
        {lstWhoAmITracking, "Alert ME when the Status changes for the following users or items"},
        {lstWhosTrackingMe, "Alert others"},
        {ListViewMessages, "Preview New Messages"},
    };
    for (const auto& [widget, name] : spoken) {
        widget->setAccessibleName(QString::fromLatin1(name));
    }
    // The timers by name, as the screen knows them; 0 leaves the interval to initTimers.
    const std::tuple<QTimer*, const char*, int> timers[] = {
        {&TimerMain, "TimerMain", 0},
        {&tmrCheckForNewMessages, "tmrCheckForNewMessages", 10000},
        {&tmrCheckForStatusAlerts, "tmrCheckForStatusAlerts", 3000},
        {&tmrCheckForForcedShutDown, "tmrCheckForForcedShutDown", 0},
        {&tmrScreenSaver, "tmrScreenSaver", 1000},
        {&tmrDetectLockedWorkStation, "tmrDetectLockedWorkStation", 3000},
    };
    for (const auto& [timer, name, interval] : timers) {
        timer->setParent(this); // a member: it leaves its parent before the parent goes
        timer->setObjectName(QString::fromLatin1(name));
        if (interval > 0) {
            timer->setInterval(interval);
        }
    }
}

void frmMain::buildStatusBar()
{
    StatusBarMain->setObjectName(QStringLiteral("StatusBarMain"));
    for (int i = 0; i < kPanelCount; ++i) {
        auto* label = new QLabel(StatusBarMain);
        label->setFrameShape(QFrame::Panel);
        label->setFrameShadow(QFrame::Sunken);
        // No accessible name of its own: a screen reader reads the panel's text,
        // and then its tool tip as the longer explanation.
        StatusBarMain->addWidget(label, i == 1 ? 1 : 0);
        m_panels.append(label);
    }
    setStatusBar(StatusBarMain);
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

bool frmMain::isLoaded() const
{
    return true;
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

// The security panels show their level as text as well as tip, so that it can
// be read without a mouse.
void frmMain::setPanelToolTip(int number, const QString& text)
{
    if (QLabel* label = panel(number)) {
        label->setToolTip(text);
        if (number >= kFirstSecurityPanel) {
            label->setText(text);
        }
        label->setAccessibleDescription(text);
    }
}

QString frmMain::panelToolTip(int number) const
{
    QLabel* label = panel(number);
    return label ? label->toolTip() : QString();
}

// Activate and Deactivate concern the program's own windows only: focus going to
// another program leaves the board as it is, counting down and refreshing.
void frmMain::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange) {
        return;
    }
    if (isActiveWindow()) {
        if (!m_activeInApp) {
            m_activeInApp = true;
            Form_Activate();
        }
    } else if (QApplication::activeWindow() && QApplication::activeWindow() != this) {
        m_activeInApp = false;
        Form_Deactivate();
    }
}
