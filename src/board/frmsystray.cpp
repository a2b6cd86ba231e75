#include "board/frmsystray.h"

#include "platform/identity.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

namespace {

constexpr int kNewLayoutTip = 128;
constexpr int kOldLayoutTip = 64;

} // namespace

frmSysTray::frmSysTray(QObject* parent) : QObject(parent), m_icon(new QSystemTrayIcon(this)), m_popup(new QMenu)
{
    setObjectName(QStringLiteral("frmSysTray"));
    m_popup->setObjectName(QStringLiteral("mnuPopup"));
    // The system's version picks the layout of the tray record: 5 or later is the new one.
    m_newLayout = platform::identity().osMajorVersion() >= 5;

    m_icon->setContextMenu(m_popup);
    connect(m_icon, &QSystemTrayIcon::activated, this, &frmSysTray::trayActivated);
    connect(m_popup, &QMenu::triggered, this, &frmSysTray::menuTriggered);
}

frmSysTray::~frmSysTray()
{
    // Take the icon down before the menu goes, so the tray never shows a dead icon.
    m_icon->hide();
    m_icon->setContextMenu(nullptr);
    delete m_popup;
}

QString frmSysTray::ToolTip() const
{
    return m_toolTip;
}

void frmSysTray::setToolTip(const QString& tip)
{
    m_toolTip = tip.left(toolTipLength());
    m_icon->setToolTip(m_toolTip);
}

QIcon frmSysTray::IconHandle() const
{
    return m_icon->icon();
}

// The icon goes into the tray with its first picture: a tray icon without one
// would show as an empty place.
void frmSysTray::setIconHandle(const QIcon& icon)
{
    m_icon->setIcon(icon);
    if (!icon.isNull()) {
        m_icon->show();
    }
}

int frmSysTray::DefaultMenuIndex() const
{
    return m_defaultIndex;
}

int frmSysTray::AddMenuItem(const QString& caption, const QString& key, bool isDefault)
{
    QAction* entry = caption == QLatin1String("-") ? m_popup->addSeparator() : m_popup->addAction(caption);
    entry->setData(key);
    m_entries.append(entry);
    const int index = int(m_entries.size()) - 1;
    if (isDefault) {
        m_defaultIndex = index;
        markDefault();
    }
    return index;
}

void frmSysTray::ShowMenu()
{
    if (!m_popup->isVisible()) {
        m_popup->popup(QCursor::pos());
    }
}

int frmSysTray::toolTipLength() const
{
    return m_newLayout ? kNewLayoutTip : kOldLayoutTip;
}

QMenu* frmSysTray::mnuPopup() const
{
    return m_popup;
}

const QList<QAction*>& frmSysTray::mnuSysTray() const
{
    return m_entries;
}

QString frmSysTray::menuKey(int index) const
{
    return index >= 0 && index < m_entries.size() ? m_entries[index]->data().toString() : QString();
}

QSystemTrayIcon& frmSysTray::icon()
{
    return *m_icon;
}

void frmSysTray::trayActivated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::DoubleClick:
        emit SysTrayDoubleClick(Qt::LeftButton);
        break;
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::Context:
    case QSystemTrayIcon::MiddleClick: {
        const Qt::MouseButton button = reason == QSystemTrayIcon::Trigger   ? Qt::LeftButton
                                       : reason == QSystemTrayIcon::Context ? Qt::RightButton
                                                                            : Qt::MiddleButton;
        emit SysTrayMouseDown(button);
        break;
    }
    case QSystemTrayIcon::Unknown:
        break;
    }
}

void frmSysTray::menuTriggered(QAction* action)
{
    const int index = int(m_entries.indexOf(action));
    if (index >= 0) {
        emit MenuClick(index, action->data().toString());
    }
}

void frmSysTray::markDefault()
{
    for (int i = 0; i < m_entries.size(); ++i) {
        QFont font = m_entries[i]->font();
        font.setBold(i == m_defaultIndex);
        m_entries[i]->setFont(font);
    }
}
