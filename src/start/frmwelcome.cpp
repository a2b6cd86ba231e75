#include "start/frmwelcome.h"

#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/gui/screenplace.h"
#include "platform/process.h"

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>

frmWelcome::frmWelcome() : m_release(new QLabel(this)), m_progress(new QLabel(this))
{
    setObjectName(QStringLiteral("frmWelcome"));
    setWindowFlags(Qt::SplashScreen);
    setFrameStyle(QFrame::Box | QFrame::Raised);
    setLineWidth(2);

    auto* name = new QLabel(QStringLiteral("VESK-OR Pro"), this);
    QFont big = name->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    name->setFont(big);
    name->setAlignment(Qt::AlignCenter);
    m_release->setAlignment(Qt::AlignCenter);
    m_progress->setAlignment(Qt::AlignCenter);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 16);
    layout->addWidget(name);
    layout->addWidget(m_release);
    layout->addSpacing(16);
    layout->addWidget(m_progress);

    TimerWelcome.setInterval(2000);
    connect(&TimerWelcome, &QTimer::timeout, this, &frmWelcome::TimerWelcome_Timer);
    setWelcomeScreen(this);
    Form_Load();
}

frmWelcome::~frmWelcome()
{
    if (&welcomeScreen() == this) {
        setWelcomeScreen(nullptr);
    }
}

// Centred on the screen, in the normal window state.
void frmWelcome::Form_Load()
{
    m_release->setText(QStringLiteral("Release 2006-07-22"));
    m_progress->setText(QStringLiteral("Starting..."));
    setFixedSize(sizeHint().expandedTo(QSize(360, 160)));
    centreOnScreen(this);
    setWindowState(Qt::WindowNoState);
}

// Activate comes once the splash is on screen; it runs a single time.
void frmWelcome::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    if (!m_activated) {
        m_activated = true;
        QTimer::singleShot(0, this, &frmWelcome::Form_Activate);
    }
}

void frmWelcome::Form_Activate()
{
    subWelcomeActivate(QCoreApplication::applicationDirPath());
    // No screen left to carry the run on: it ends, as when the last screen unloads.
    if (m_unloaded && !TimerWelcome.isActive() && !mainScreenLoaded()) {
        platform::End();
    }
}

// The hand-over: frmMain (loaded here unless a status on the command line loaded it) is shown,
// and the splash goes.
void frmWelcome::TimerWelcome_Timer()
{
    TimerWelcome.stop();
    if (auto* board = dynamic_cast<QWidget*>(&loadMainScreen())) {
        board->show();
        board->activateWindow();
    }
    setWelcomeScreen(nullptr);
    close();
    deleteLater();
}

void frmWelcome::unload()
{
    m_unloaded = true;
    hide();
}

bool frmWelcome::isUnloaded() const
{
    return m_unloaded;
}

void frmWelcome::setTimerWelcomeEnabled(bool on)
{
    if (on) {
        TimerWelcome.start();
    } else {
        TimerWelcome.stop();
    }
}

bool frmWelcome::timerWelcomeEnabled() const
{
    return TimerWelcome.isActive();
}

void frmWelcome::showProgress(const QString& text)
{
    m_progress->setText(text);
}

QString frmWelcome::progress() const
{
    return m_progress->text();
}
