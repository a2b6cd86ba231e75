#pragma once
// frmMessagesToSelection, "Select Users": the To line of a message built from the
// people of the site, one by one or a whole group at a time. Each message
// screen opens its own; OK hands the finished line to that screen, Esc hands
// nothing.

#include <QDialog>
#include <functional>

class QLabel;
class QListWidget;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

class frmMessagesToSelection : public QDialog
{
    Q_OBJECT

public:
    using Deliver = std::function<void(const QString&)>;

    frmMessagesToSelection(QWidget* caller, Deliver deliver);

    QTreeWidget* tvAvailalbeUsers; // each node's key ("R", a group, group "|" name) in Qt::UserRole
    QListWidget* lstIncludeOthers;
    QListWidget* lstIncludeOthersIndividualy; // hidden: every name of the tree once
    QLabel* lblAvailableUsers;
    QLabel* lblIncludeOthers;
    QPushButton* cmdInclude;
    QPushButton* cmdRemove;
    QPushButton* cmdClearIncludeOthers;
    QPushButton* cmdOK;

    // The groups and people of the site, and the names of the To line given.
    void initialize(const QString& toLine);
    void PopulateIncludeOthersTreeView();
    void PopulateIncludeOthersListView(const QString& toLine);
    void BuildListOfIndividualNames();

    void cmdInclude_Click();
    void cmdRemove_Click();
    void cmdClearIncludeOthers_Click();
    void cmdOK_Click();
    void tvAvailalbeUsers_NodeClick(QTreeWidgetItem* node);

private:
    void includeName(const QString& name);
    // cmdOK the default while the list has names; cmdRemove only then enabled.
    void subUpdateButtons();

    Deliver m_deliver;
};
