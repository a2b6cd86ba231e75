#pragma once
// frmSysTray: the hidden screen that wraps the tray icon. It holds the icon, its
// tip and the pop-up menu mnuPopup with the entries mnuSysTray, and
// turns what the tray reports into events (signals) that its owner answers.
//
// The icon is shown from its first picture while the object lives, and removed
// when the object is destroyed ("unloaded"), so no dead icon stays in the tray.
//
// The desktop's tray reports clicks, not separate presses: a click arrives as
// SysTrayMouseDown with its button, a double click as SysTrayDoubleClick.

#include <QIcon>
#include <QList>
#include <QObject>
#include <QSystemTrayIcon>

class QAction;
class QMenu;

class frmSysTray : public QObject
{
    Q_OBJECT

public:
    explicit frmSysTray(QObject* parent = nullptr);
    ~frmSysTray() override;

    // The tip; cut to the length the layout holds. Setting it updates the shown icon at once.
    QString ToolTip() const;
    void setToolTip(const QString& tip);
    // The icon; setting it updates the shown icon at once.
    QIcon IconHandle() const;
    void setIconHandle(const QIcon& icon);
    // The entry drawn bold; -1 none.
    int DefaultMenuIndex() const;

    // Adds an entry to mnuPopup; the caption "-" adds a separator. A default entry
    // becomes DefaultMenuIndex. Returns the entry's index.
    int AddMenuItem(const QString& caption, const QString& key = QString(), bool isDefault = false);
    // Pops mnuPopup up at the mouse; nothing when it is already up (the tray may
    // have opened it itself for the same right click).
    void ShowMenu();

    // The longest tip the layout holds: 128 characters, 64 on the old layout.
    int toolTipLength() const;
    // The menu and its entries, for the owner and for tests.
    QMenu* mnuPopup() const;
    const QList<QAction*>& mnuSysTray() const;
    QString menuKey(int index) const;
    // The tray icon itself, so the owner can tell whether it is shown.
    QSystemTrayIcon& icon();

signals:
    void SysTrayMouseDown(Qt::MouseButton button);
    void SysTrayDoubleClick(Qt::MouseButton button);
    void MenuClick(int index, const QString& key);

private:
    void trayActivated(QSystemTrayIcon::ActivationReason reason);
    void menuTriggered(QAction* action);
    void markDefault();

    QSystemTrayIcon* m_icon;
    QMenu* m_popup;
    QList<QAction*> m_entries;
    QString m_toolTip;
    int m_defaultIndex = -1;
    bool m_newLayout = true;
};
