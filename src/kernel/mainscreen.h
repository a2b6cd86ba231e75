#pragma once
// What the logic asks of the main screen, so that it runs, and is tested, without
// widgets. frmMain (the board) implements it; until one is loaded, mainScreen() is a
// stand-in that remembers texts and answers "nothing there": an empty list, the
// Group button disabled, not minimized.
//
// Procedures of the board that the logic calls (subRefreshUserList and the like)
// stand here under their own names, so a call reads as it does on the screen:
//   mainScreen().subRefreshUserList("");

#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>

// One column of ListViewMain as the person left it: its header, place and width.
struct ListColumn
{
    QString name;
    long long order = 0;
    long long width = 0;
};

class MainScreen
{
public:
    virtual ~MainScreen() = default;

    // The window.
    virtual void setCaption(const QString& caption);
    virtual QString caption() const;
    virtual bool isMinimized() const;
    virtual void minimize();
    virtual void setBusyPointer(bool busy); // hourglass on, or the default pointer
    virtual void unload();                  // Unload frmMain
    virtual bool isLoaded() const;

    // StatusBarMain's panels: 1 messages, 2 the database, 3 the count-down, 4 and 5
    // the system's and the person's security level.
    virtual void setPanelText(int panel, const QString& text);
    virtual QString panelText(int panel) const;
    virtual void setPanelToolTip(int panel, const QString& text);
    virtual QString panelToolTip(int panel) const;

    // The tray icon's tip.
    virtual void setTrayTip(const QString& tip);
    virtual QString trayTip() const;

    // ListViewMain as the status writers see it.
    virtual QStringList listHeaders() const; // the column headers, in sub-item order
    virtual int listRowCount() const;
    virtual bool selectedItemIsSelected() const;             // the list's current item is also selected
    virtual QString selectedItemText(int subItem) const;     // a sub-item of the current item ("" when none)
    virtual QStringList selectedRowTexts(int subItem) const; // of each selected row, in list order
    virtual void clearList();
    virtual QList<ListColumn> listColumns() const;
    virtual void clearSortArrows(); // every header back to "ArrowClear"
    // The window's place and size when it is neither minimized nor maximized.
    virtual QRect normalGeometry() const;
    virtual void setNormalGeometry(const QRect& geometry);

    // ToolbarMain's "Group" button: the one answer to "may this person change others here".
    virtual bool groupButtonEnabled() const;
    // ToolbarMain's Tag: "Out" tells frmGroup's Load to preset that word.
    virtual void setToolbarTag(const QString& tag);
    virtual QString toolbarTag() const;

    // TabStripMain and TreeViewMain as the group reader fills them.
    virtual void clearGroups();
    virtual void addGroup(const QString& group);
    virtual bool selectGroup(const QString& group); // false when there is no such tab

    // Procedures of the board and its screens.
    virtual void subRefreshUserList(const QString& group);
    virtual void subLoadToolBarButtons();
    virtual void subReadGroups(); // GroupTable into the tabs and the tree
    virtual void subSetToolBarRights();
    virtual void subTaskBarSysTrayActivation();
    virtual void subUnloadSysTrayIcon();
    virtual bool sysTrayIconExists() const;
    virtual void subCreateSysTrayIcon(); // the tray object with its menu entries and tip
    virtual void applyDisplayFont();     // FontBoldDisplay and FontSizeDisplay on the lists
    virtual void subResizeControls();    // the screen laid out again (tree or tabs, the panes)
    virtual void subUnloadAllForms();    // every other open screen, from the last to the first
    virtual void showStatusScreen();     // frmStatus, modal
    virtual void showGroupScreen();      // frmGroup, modal

private:
    QString m_caption;
    QString m_panels[5];
    QString m_panelTips[5];
    QString m_trayTip;
    QString m_toolbarTag;
    QRect m_geometry;
};

// The board's caption and the tray icon's tip for the person and their status:
// gstrProgramTitle - [gstrDefaultUser] 'gstrCurrentStatus', and the same without the dash.
QString fnOwnStatusCaption();
QString fnOwnStatusTrayTip();

// The main screen in use: the loaded frmMain, else the stand-in. Referring to
// the board never loads it, so code on a path that refuses the start (or runs
// after the board went) cannot bring up a board by asking it for something.
MainScreen& mainScreen();
// The loaded frmMain, else one made now by the factory, else the stand-in: for
// the few places that show the board (the splash's hand-over, a status given on
// the command line).
MainScreen& loadMainScreen();
// The client installs how frmMain is made; nullptr removes it.
void setMainScreenFactory(std::function<MainScreen*()> factory);
// The screen registers itself while it lives (nullptr when it goes).
void setMainScreen(MainScreen* screen);
// True when a real frmMain is loaded (not the stand-in).
bool mainScreenLoaded();
// Tests: forget the screen and the factory, and clear the stand-in.
void resetMainScreen();
