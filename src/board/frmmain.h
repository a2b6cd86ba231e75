#pragma once
// frmMain, the board: ListViewMain (the people), ToolbarMain (the commands and
// status buttons), StatusBarMain (messages, database, count-down and the two
// security levels), the groups as tabs or tree, the side panes and the board's
// timers. It is the MainScreen the logic talks to, registered while it lives.
// Its methods live in several files, one concern each (frmmain_*.cpp).

#include "board/columnlayout.h"
#include "board/grouptabbar.h"
#include "kernel/mainscreen.h"
#include "messaging/newmessagewatcher.h"
#include "status/tracking.h"

#include <QEvent>
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QStatusBar;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;
class QCloseEvent;
class QPoint;
class QWidget;
namespace rights {
struct ButtonRight;
}
namespace dao {
class Recordset;
}

// Why the window is being unloaded, as VB's QueryUnload tells it.
enum UnloadMode : int
{
    vbFormControlMenu = 0,
    vbFormCode = 1,
    vbAppWindows = 2,
    vbAppTaskManager = 3
};

class frmMain : public QMainWindow, public MainScreen
{
    Q_OBJECT

public:
    // Makes the board and runs its Load: the factory behind loadMainScreen().
    static MainScreen* load();

    frmMain();
    ~frmMain() override;
    // The object name of the filters that pass controls' events to the board.
    static constexpr const char* kEventHookName = "frmMainEventHook";
    // Passes widget's events of one type to action, through a filter of that name.
    static void hook(QWidget* widget, QEvent::Type type, std::function<void(QEvent*)> action);

    // MainScreen: the window.
    void setCaption(const QString& caption) override;
    QString caption() const override;
    bool isMinimized() const override;
    void minimize() override;
    void setBusyPointer(bool busy) override;
    void unload() override;
    bool isLoaded() const override;
    QRect normalGeometry() const override;
    void setNormalGeometry(const QRect& geometry) override;
    // MainScreen: the status bar, the toolbar, the list's font.
    void setPanelText(int panel, const QString& text) override;
    QString panelText(int panel) const override;
    void setPanelToolTip(int panel, const QString& text) override;
    QString panelToolTip(int panel) const override;
    bool groupButtonEnabled() const override;
    void applyDisplayFont() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    // The controls. All are made by the constructor; the layout places them.
    QTreeWidget* ListViewMain; // the people and items
    QToolBar* ToolbarMain;
    QStatusBar* StatusBarMain;
    GroupTabBar* TabStripMain;     // the groups as tabs, or
    QTreeWidget* TreeViewMain;     // the groups as a tree ("Groups", then one node per group)
    QLineEdit* txtFind;            // the find box, in the toolbar's first place
    QWidget* picTrackingContainer; // the status-alert pane
    QLabel* lblWhoAmITracking;
    QTreeWidget* lstWhoAmITracking; // whom this person follows: name, status, when
    QLabel* lblWhosTrackingMe;
    QTreeWidget* lstWhosTrackingMe; // who follows this person
    QLabel* lblPreviewMsgsPane;
    QTreeWidget* ListViewMessages; // new messages: from, subject, sent, sender, id
    QLabel* imgPlannerBanner;      // the clickable logo across the window

    QTimer TimerMain;                  // 1 s: the refresh count-down
    QTimer tmrCheckForNewMessages;     // 10 s once, then 60 s
    QTimer tmrCheckForStatusAlerts;    // 3 s once, then 60 s
    QTimer tmrCheckForForcedShutDown;  // 60 s: the forced-shutdown file
    QTimer tmrScreenSaver;             // 1 s
    QTimer tmrDetectLockedWorkStation; // 3 s

    // ToolbarMain's button by position (1 to 17) or by key ("Group"); nullptr when none.
    QAction* toolbarButton(int position) const;
    QAction* toolbarButton(const QString& key) const;

    void buildToolbar();
    void buildStatusBar();
    void toolbarClicked(QAction* button);
    QLabel* panel(int number) const;

    // The screen's events (frmmainload.cpp).
    void Form_Load();
    void showLogoBehindList();

    void buildControls();

    QList<QLabel*> m_panels;
    bool blnFirstActivate = true;
    bool m_inActivate = false;
    bool m_busyPointer = false;

public:
    // Ends the run in the ordinary way (QueryUnload, then the unload) for a reason
    // other than the close box: the desktop session ending, SIGTERM, the Exit command.
    void requestUnload(int unloadMode);

    // --- list and refresh, groups, find, sort, timers, end of run ---
public:
    // MainScreen: ListViewMain as the logic sees it (frmmain_list.cpp), and its refresh.
    QStringList listHeaders() const override;
    int listRowCount() const override;
    bool selectedItemIsSelected() const override;
    QString selectedItemText(int subItem) const override;
    QStringList selectedRowTexts(int subItem) const override;
    void clearList() override;
    QList<ListColumn> listColumns() const override;
    void clearSortArrows() override;
    void subRefreshUserList(const QString& group) override;
    void subClearListSelection();
    void subFindNameColumn();
    // MainScreen: the groups' tabs and tree as subReadGroups fills them (frmmain_groups.cpp).
    void subReadGroups() override;
    void clearGroups() override;
    void addGroup(const QString& group) override;
    bool selectGroup(const QString& group) override;
    void subPopulateTreeView();
    QStringList groupCaptions() const; // the tabs' captions, "Everyone" first
    // The end of a run (frmmain_unload.cpp).
    void subUnloadAllForms() override;
    static void subCloseAllAlerts();
    void Form_QueryUnload(bool& cancel, int unloadMode);

    // The events of the list, the groups and the find box (frmmain_groups.cpp).
    void TabStripMain_Click();
    void TabStripMain_MouseMove();
    void TreeViewMain_NodeClick(QTreeWidgetItem* node);
    void TreeViewMain_MouseMove();
    void ListViewMain_ColumnClick(int column);
    void ListViewMain_ItemClick();
    void ListViewMain_MouseMove(const QPoint& at);
    void StatusBarMain_MouseMove();
    void txtFind_Change();
    void txtFind_GotFocus();
    // Activate (frmmainload.cpp), Deactivate and the timers (frmmain_timers.cpp).
    void Form_Activate();
    void Form_Deactivate();
    void TimerMain_Timer();
    void tmrCheckForForcedShutDown_Timer();
    void tmrCheckForNewMessages_Timer();
    void tmrCheckForStatusAlerts_Timer();
    void tmrScreenSaver_Timer();
    void tmrDetectLockedWorkStation_Timer();
    // tmrDetectLockedWorkStation started again (when presence sensing is allowed)
    // with a request to the desktop to lock, without it, or stopped.
    void subLockWorkStation();
    void subMonitorWorkStation();
    void subStopMonitoringWorkStation();
    // The new-messages pane and its menu (frmmain_messages.cpp).
    void ListViewMessages_MouseMove();
    void ListViewMessages_Enter();
    void ListViewMessages_DblClick();
    void ListViewMessages_MouseUp(const QPoint& at); // the menu at that point of the screen
    void mnuRemoveMessages_Click();
    // The tracking pane (frmmain_tracking.cpp).
    void subAddToTrackingList();
    void lstWhoAmITracking_DragDrop();
    void mnuRemoveAlert_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void initListAndGroups();
    void initTimers();
    void startTimersOnActivate();
    // The steps of subRefreshUserList (frmmain_refresh.cpp, frmmain_columns.cpp, frmmain_panes.cpp).
    void rebuildList(const QString& strGroup);
    bool columnsMovedOrResized();
    void columnGeometry(QList<long long>& positions, QList<long long>& widths) const;
    std::unique_ptr<dao::Recordset> openSettingsRow();
    void answerNoSettingsRow();
    void createHeaders(const ColumnLayout& layout);
    void addRows(dao::Recordset& rs, const ColumnLayout& layout);
    struct OwnRowFields
    {
        int name;
        int status;
        int code;
    };
    void readOwnRow(dao::Recordset& rs, const OwnRowFields& own);
    void placeStatusColumn(dao::Recordset& rstColumnData);
    void chooseFillColumn();
    void fitFillColumn();
    long long ownWidthTwips(int column) const;
    void applyListSort();
    void takeColumnSnapshot();
    void fillTrackingLists();
    void fillMessagesPane();
    void initMessagesPane();
    void subCheckForNewMessages();
    void initTrackingPanes();
    void ListViewMain_StartDrag();
    void subCheckForStatusAlerts();
    // A watcher's look: a failure is told in a box (one at a time) and the looks go on.
    void lookOrTell(const QString& procedure, const std::function<void()>& look);
    void showRefreshedText();
    void restoreSelection();
    void selectRow(QTreeWidgetItem* row);
    void forgetRows();
    void flushGroups();
    void showScreen(const std::function<void()>& show); // a screen of its own, modal (frmmain_commands.cpp)

    QString mstrLastGroupShown;
    columns::Snapshot m_columnSnapshot; // each column's place and width after the last rebuild
    long long mintLockedRetries = 0;    // failed reads of the settings row in this run, never reset
    bool mblnLoading = true;            // from Load to the first Activate
    // The row restoreSelection found for a name, kept until the rows change.
    bool m_selectionFound = false;
    QString m_selectionName;
    long long m_selectionColumn = 0;
    QTreeWidgetItem* m_selectionRow = nullptr;
    int m_fillColumn = -1;       // the list's column that takes the spare width
    int m_fillOwnWidth = 0;      // its width as the person made it, in pixels
    bool m_fitting = false;      // the fill column is being sized by the board, not the person
    int m_treeNamesWidth = 0;    // what the group tree needs to show its longest name
    QStringList m_pendingGroups; // the groups read, until selectGroup puts them in place
    bool m_groupsPending = false;
    int m_listSortKey = 0; // ListViewMain's own SortKey (its sort column)
    bool m_unloading = false;
    bool m_activeInApp = false; // active among the program's own windows (VB's Activate/Deactivate)
    // strLastCheckedForNewMessages: the lower limit of the next look, in memory only.
    messaging::NewMessageWatcher m_newMessages;
    // gdblLastCheckedForStatusAlertAtTime: the lower limit of the next look for changes.
    tracking::StatusAlertWatcher m_statusAlerts;
    QPoint m_dragStart; // where the left button went down on the board's list

public:
    // --- commands, menus, toolbar, rights, layout ---
public:
    // The help topic F1 opens: the area the mouse last moved over.
    int HelpContextID = 2000;

    // The commands; the menus, the toolbar and the keys only call these.
    void subCommand_Find();
    void subCommand_Change();
    void subCommand_Group();
    void subCommand_Refresh();
    void subCommand_Servers();
    void subCommand_Home();
    void subCommand_NewMessage();
    void subCommand_Messages();
    void mnuMessages_Click(); // Preview Messages from the menu: no refresh after it
    void subCommand_Mail();
    void subCommand_QUIL();
    void showQuilCommand(bool running); // the QUIL button and menu entry, shown while the program runs
    void subCommand_Options();
    void subCommand_Print();
    void subCommand_DisplayPhoto();
    void subCommand_CompanyInfo();
    void subCommand_StatusAlert();
    void subCommand_Help();
    void subCommand_About();
    void subCommand_Exit();
    // The person's launchers: desktop ones for the selected people, and both of their own removed.
    void mnuNewDesktopIcon_Click();
    void mnuFile_Uninstall_Click();
    void mnuCommands_Click(); // the Commands menu opens
    void subShowHelp();       // F1: the help file at HelpContextID

    // ToolbarMain (frmmain_toolbar.cpp).
    void subLoadToolBarButtons() override;
    void BindToolBar();
    void subBindStatusButtons();

    // The rights (frmmain_rights.cpp).
    void subSetToolBarRights() override;

    // The layout (frmmain_layout.cpp).
    void subResizeControls() override;

private:
    // The menus, named as the screen knows them (frmmain_commands.cpp).
    QMenu* mnuFile = nullptr;
    QAction* mnuNewDesktopIcon = nullptr;
    QAction* mnuFile_Uninstall = nullptr;
    QAction* mnuFile_Exit = nullptr;
    QMenu* mnuCommands = nullptr;
    QAction* mnuCommand_Find = nullptr;
    QAction* mnuCommand_Change = nullptr;
    QAction* mnuCommand_Group = nullptr;
    QAction* mnuCommand_Out = nullptr;
    QAction* mnuCommand_Busy = nullptr;
    QAction* mnuCommand_In = nullptr;
    QAction* mnuCommand_Refresh = nullptr;
    QAction* mnuCommand_Servers = nullptr;
    QAction* mnuCommand_Home = nullptr;
    QAction* mnuCommand_StatusAlert = nullptr;
    QAction* mnuCommand_Mail = nullptr;
    QAction* mnuCommand_QUIL = nullptr;
    QAction* mnuCommand_DisplayPhoto = nullptr;
    QAction* mnuCommand_CompanyInfo = nullptr;
    QAction* mnuCommand_Planner = nullptr;
    QAction* mnuCommand_Print = nullptr;
    QAction* mnuCommand_Options = nullptr;
    QMenu* mnuMessagesMenu = nullptr;
    QAction* mnuMessagesNew = nullptr;
    QAction* mnuMessages = nullptr;
    QMenu* mnuRemoveMessagesMenu = nullptr; // the pane's pop-up menu
    QAction* mnuRemoveMessages = nullptr;
    QMenu* mnuRemoveAlertMenu = nullptr; // the Alert ME list's pop-up menu
    QAction* mnuRemoveAlert = nullptr;
    QMenu* mnuWebActions = nullptr;
    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpContents = nullptr;
    QAction* mnuAbout = nullptr;
    // The splitters; their positions are twips in the run-wide values.
    QSplitter* picVerticalSplitter = nullptr;   // TreeViewMain on its left, the list on its right
    QSplitter* picSplitterHorizontal = nullptr; // the panes above it, the list below

    void initToolbarAndMenus();
    void initLayout();
    void buildMenus();
    void watchHelpContexts();
    void setToolbarRight(const rights::ButtonRight& right);
    void subWebAction(const QString& page);
    void navigatorPass();
    void panePass();
    void placeSplitters();
    void fitToolbar();
    void placeFirstRun();
    void splitterMoved();

    QWidget* m_panes = nullptr;        // the strip of the tracking and messages panes
    QWidget* m_messagesPane = nullptr; // lblPreviewMsgsPane over ListViewMessages
    QWidget* m_listArea = nullptr;     // TabStripMain over ListViewMain
    bool m_inResize = false;

    // --- tray, single instance, status icons ---
public:
    // The tray object while it exists (frmmain_tray.cpp).
    class frmSysTray* m_frmSysTray = nullptr;
    // MainScreen: the tray icon.
    bool sysTrayIconExists() const override;
    void subCreateSysTrayIcon() override;
    void subUnloadSysTrayIcon() override;
    void subTaskBarSysTrayActivation() override;
    // MainScreen: the status screens, modal, with the tray icon taken down first (frmmain_commands.cpp).
    void showStatusScreen() override;
    void showGroupScreen() override;
    void setTrayTip(const QString& tip) override;
    QString trayTip() const override;
    // The tray's events.
    void m_frmSysTray_SysTrayDoubleClick(Qt::MouseButton button);
    void m_frmSysTray_SysTrayMouseDown(Qt::MouseButton button);
    void m_frmSysTray_MenuClick(int index, const QString& key);
    // At Load (frmmain_instance.cpp): true when another copy for this person
    // runs; it was raised, and this one is leaving.
    bool fnRaiseOtherCopy();

private:
    void initTray();
    void showTrayIconOfStatus();
    void bringToFront();
    class SingleInstance* m_singleInstance = nullptr;
};
