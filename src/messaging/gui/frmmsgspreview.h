#pragma once
// frmMsgsPreview, "Preview Messages": the person's copies of messages by
// category. A tree of categories, the list of the copies under the chosen one,
// and a toolbar that opens a copy on a message screen, deletes the rows
// selected, or writes a new message. One screen for the whole run: closing it
// only hides it, and the next show loads it again.

#include <QDialog>
#include <QString>

class QAction;
class QLabel;
class QStatusBar;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

class frmMsgsPreview : public QDialog
{
    Q_OBJECT

public:
    explicit frmMsgsPreview(QWidget* parent = nullptr);

    // The one screen of the run; created on first use.
    static frmMsgsPreview* instance();

    QTreeWidget* TreeViewCategories;
    QTreeWidget* listMsgsPreview;
    QToolBar* ToolbarMsgsPreview;
    QStatusBar* StatusBarMsgsPreview;
    QLabel* imgPreviewIcon;

    // The list's columns; the item text is the first, MessageID the last.
    enum Column
    {
        colCategory,
        colFrom,
        colSubject,
        colBody,
        colSent,
        colSentBy,
        colSentTo,
        colMessageID,
        kColumns
    };

    void Form_Load();
    void subBindMsgsPreviewToolBar();
    // Fills the list with the person's copies under the node's key ("R" reads
    // again what the call before read).
    void subLoad_MsgsPreview_ListView(const QString& nodeKey);
    // The toolbar's click by the button's key.
    void ToolbarMsgsPreview_ButtonClick(const QString& key);
    void TreeViewCategories_NodeClick(QTreeWidgetItem* node);
    void listMsgsPreview_DblClick();
    void subMsgsPreview_Command_View();
    void subMsgsPreview_Command_New();
    void subMsgsPreview_Command_Reply();
    void subMsgsPreview_Command_Forward();
    void subMsgsPreview_Command_Delete();
    void subMsgsPreview_Command_refresh();

    // The button by its key; nullptr when there is none.
    QAction* toolbarButton(const QString& key) const;
    // The key of the node selected in the tree ("New" at load).
    QString selectedNodeKey() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildTree();
    void buildToolbar();
    // "View", "Reply", "Delete", "Forward" and "Print" by the category of the
    // row clicked; an empty category with no row selected at all.
    void subSetButtonsFor(const QString& category, bool rowSelected);
    void setFiveButtons(bool enabled);
    // The MessageID of the row last clicked, 0 when no row is selected.
    long long selectedMessageId() const;
    void openMessage(const QString& action, long long id);

    QString mstrLastSQL;
};
