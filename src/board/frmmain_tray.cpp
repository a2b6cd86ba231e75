// frmMain's tray icon: making it with its menu, answering its events, taking it
// down, and where the minimised window goes.
//
// MinimizeSetting: 0 the task bar only (no tray icon), 1 the tray only (the
// minimised window leaves the task bar), 2 or more both. Where the desktop has no
// tray, the minimised window always stays on the task bar: hiding it into a tray
// that isn't there would leave the person no way back to the board.
#include "board/frmmain.h"
#include "board/frmsystray.h"
#include "board/statusicons.h"
#include "kernel/globals.h"
#include "status/statuswrite.h"

#include <QEvent>
#include <QLineEdit>
#include <QSystemTrayIcon>
#include <QTimer>

namespace {

struct TrayEntry
{
    const char* caption;
    const char* key;
    bool isDefault;
};

const TrayEntry kTrayEntries[] = {
    {"&Restore VESK-OR", "Restore", true},
    {"Mi&nimize", "Minimize", true},
    {"Ma&ximize", "Maximize", true},
    {"&Close", "Close", true},
    {"-", "", false},
    {"Set YOUR Status to IN", "In", false},
    {"Set YOUR Status to OUT", "Out", false},
    {"Set YOUR Status to BUSY", "Busy", false},
};

// Takes the minimised board off the task bar when the person keeps it in the tray only.
class TrayOnlyMinimize : public QObject
{
public:
    explicit TrayOnlyMinimize(frmMain* board) : QObject(board), m_board(board)
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_board && event->type() == QEvent::WindowStateChange && m_board->isMinimized() &&
            hidesIntoTray()) {
            // Hiding inside the state change confuses some window managers; do it just after.
            QTimer::singleShot(0, m_board, [board = m_board] {
                if (board->isMinimized()) {
                    board->hide();
                }
            });
        }
        return false;
    }

private:
    bool hidesIntoTray() const
    {
        return gPerson.gintMinimizeSetting == 1 && m_board->sysTrayIconExists() &&
               QSystemTrayIcon::isSystemTrayAvailable();
    }

    frmMain* m_board;
};

} // namespace

void frmMain::initTray()
{
    installEventFilter(new TrayOnlyMinimize(this));
    // The caption follows the person's own row at each rebuild; the tray's picture follows with it.
    connect(this, &QWidget::windowTitleChanged, this, &frmMain::showTrayIconOfStatus);
}

bool frmMain::sysTrayIconExists() const
{
    return m_frmSysTray != nullptr;
}

// The tray object with the eight entries, the tip and the person's status picture.
// Whether a tray is wanted at all (MinimizeSetting) is the caller's test.
void frmMain::subCreateSysTrayIcon()
{
    if (m_frmSysTray) {
        return;
    }
    m_frmSysTray = new frmSysTray(this);
    for (const TrayEntry& entry : kTrayEntries) {
        m_frmSysTray->AddMenuItem(QString::fromUtf8(entry.caption), QString::fromUtf8(entry.key), entry.isDefault);
    }
    connect(m_frmSysTray, &frmSysTray::SysTrayDoubleClick, this, &frmMain::m_frmSysTray_SysTrayDoubleClick);
    connect(m_frmSysTray, &frmSysTray::SysTrayMouseDown, this, &frmMain::m_frmSysTray_SysTrayMouseDown);
    connect(m_frmSysTray, &frmSysTray::MenuClick, this, &frmMain::m_frmSysTray_MenuClick);
    setTrayTip(fnOwnStatusTrayTip());
}

// Unloads the tray object, so a modal screen never shares the desktop with a live tray menu.
void frmMain::subUnloadSysTrayIcon()
{
    delete m_frmSysTray;
    m_frmSysTray = nullptr;
}

// Commands call this when they end; it has nothing to do.
void frmMain::subTaskBarSysTrayActivation()
{
}

// Without a tray object the tip goes nowhere: that failure is ignored.
void frmMain::setTrayTip(const QString& tip)
{
    if (m_frmSysTray) {
        m_frmSysTray->setToolTip(tip);
        showTrayIconOfStatus();
    }
}

QString frmMain::trayTip() const
{
    return m_frmSysTray ? m_frmSysTray->ToolTip() : QString();
}

void frmMain::showTrayIconOfStatus()
{
    if (m_frmSysTray) {
        m_frmSysTray->setIconHandle(statusIcon(gRun.gintOwnStatusCode));
    }
}

void frmMain::bringToFront()
{
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    show();
    raise();
    activateWindow();
}

void frmMain::m_frmSysTray_SysTrayDoubleClick(Qt::MouseButton)
{
    setWindowState(Qt::WindowNoState);
    bringToFront();
}

void frmMain::m_frmSysTray_SysTrayMouseDown(Qt::MouseButton button)
{
    if (button == Qt::RightButton && m_frmSysTray) {
        m_frmSysTray->ShowMenu();
    }
}

// The status entries write through subUpdateDefaultUsersRecord directly: they ask
// no right, so they work with the Group button disabled.
void frmMain::m_frmSysTray_MenuClick(int, const QString& key)
{
    if (key == QLatin1String("Restore")) {
        setWindowState(Qt::WindowNoState);
        bringToFront();
        txtFind->setFocus();
    } else if (key == QLatin1String("Minimize")) {
        showMinimized();
    } else if (key == QLatin1String("Maximize")) {
        setWindowState(Qt::WindowMaximized);
        bringToFront();
    } else if (key == QLatin1String("Close")) {
        requestUnload(vbFormCode);
    } else if (key == QLatin1String("In") || key == QLatin1String("Out") || key == QLatin1String("Busy")) {
        subUpdateDefaultUsersRecord(key);
        subRefreshUserList(QString());
    }
}
