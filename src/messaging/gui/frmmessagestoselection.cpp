#include "messaging/gui/frmmessagestoselection.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "messaging/gui/messageparts.h"
#include "messaging/gui/messagescreens.h"
#include "platform/gui/screenplace.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString kRootKey = QStringLiteral("R");
const QString kEveryone = QStringLiteral("Everyone");
constexpr int kKeyRole = Qt::UserRole;

QTreeWidgetItem* addNode(QTreeWidgetItem* parent, const QString& key, const QString& text)
{
    auto* node = new QTreeWidgetItem(parent, {text});
    node->setData(0, kKeyRole, key);
    return node;
}

} // namespace

frmMessagesToSelection::frmMessagesToSelection(QWidget* caller, Deliver deliver)
    : QDialog(caller), tvAvailalbeUsers(new QTreeWidget(this)), lstIncludeOthers(new QListWidget(this)),
      lstIncludeOthersIndividualy(new QListWidget(this)),
      lblAvailableUsers(new QLabel(QStringLiteral("Select Users and Resources:"), this)),
      lblIncludeOthers(new QLabel(QStringLiteral("Include only these names:"), this)),
      cmdInclude(new QPushButton(QStringLiteral("Include  >>"), this)),
      cmdRemove(new QPushButton(QStringLiteral("<< Remove"), this)),
      cmdClearIncludeOthers(new QPushButton(QStringLiteral("Clear"), this)),
      cmdOK(new QPushButton(QStringLiteral("OK"), this)), m_deliver(std::move(deliver))
{
    setObjectName(QStringLiteral("frmMessagesToSelection"));
    setAttribute(Qt::WA_DeleteOnClose);
    const std::pair<QWidget*, const char*> named[] = {
        {tvAvailalbeUsers, "tvAvailalbeUsers"},
        {lstIncludeOthers, "lstIncludeOthers"},
        {lstIncludeOthersIndividualy, "lstIncludeOthersIndividualy"},
        {lblAvailableUsers, "lblAvailableUsers"},
        {lblIncludeOthers, "lblIncludeOthers"},
        {cmdInclude, "cmdInclude"},
        {cmdRemove, "cmdRemove"},
        {cmdClearIncludeOthers, "cmdClearIncludeOthers"},
        {cmdOK, "cmdOK"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(QLatin1String(name));
    }
    tvAvailalbeUsers->setAccessibleName(lblAvailableUsers->text());
    lstIncludeOthers->setAccessibleName(lblIncludeOthers->text());
    lstIncludeOthersIndividualy->setAccessibleName(QStringLiteral("Individual names"));
    for (QPushButton* button : {cmdInclude, cmdRemove, cmdClearIncludeOthers, cmdOK}) {
        button->setAccessibleName(button->text());
        button->setAutoDefault(false);
    }
    lblAvailableUsers->setBuddy(tvAvailalbeUsers);
    lblIncludeOthers->setBuddy(lstIncludeOthers);
    tvAvailalbeUsers->setHeaderHidden(true);
    lstIncludeOthersIndividualy->hide();

    auto* middle = new QVBoxLayout;
    middle->addStretch();
    for (QPushButton* button : {cmdInclude, cmdRemove, cmdClearIncludeOthers}) {
        middle->addWidget(button);
    }
    middle->addStretch();
    auto* grid = new QGridLayout(this);
    grid->addWidget(lblAvailableUsers, 0, 0);
    grid->addWidget(lblIncludeOthers, 0, 2);
    grid->addWidget(tvAvailalbeUsers, 1, 0);
    grid->addLayout(middle, 1, 1);
    grid->addWidget(lstIncludeOthers, 1, 2);
    grid->addWidget(cmdOK, 2, 2, Qt::AlignRight);
    resize(520, 360);

    connect(cmdInclude, &QPushButton::clicked, this, &frmMessagesToSelection::cmdInclude_Click);
    connect(cmdRemove, &QPushButton::clicked, this, &frmMessagesToSelection::cmdRemove_Click);
    connect(cmdClearIncludeOthers, &QPushButton::clicked, this, &frmMessagesToSelection::cmdClearIncludeOthers_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmMessagesToSelection::cmdOK_Click);
    connect(tvAvailalbeUsers, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* node) {
        if (node) {
            tvAvailalbeUsers_NodeClick(node);
        }
    });
    connect(tvAvailalbeUsers, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* node) {
        if (node->parent()) {
            cmdInclude_Click();
        }
    });
    connect(lstIncludeOthers, &QListWidget::itemDoubleClicked, this, &frmMessagesToSelection::cmdRemove_Click);

    // Load.
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Select Users"));
    centreOnScreen(this);
}

void frmMessagesToSelection::initialize(const QString& toLine)
{
    PopulateIncludeOthersTreeView();
    PopulateIncludeOthersListView(toLine);
    subUpdateButtons();
}

// "Everyone" with every name of the site, then each other group with its members.
void frmMessagesToSelection::PopulateIncludeOthersTreeView()
{
    auto* root = new QTreeWidgetItem(tvAvailalbeUsers, {QStringLiteral("Groups")});
    root->setData(0, kKeyRole, kRootKey);
    subOpenDatabase();
    {
        QTreeWidgetItem* everyone = addNode(root, kEveryone, kEveryone);
        const std::unique_ptr<dao::Recordset> rs =
            fnOpenSQL(QStringLiteral("SELECT Name FROM EmployeeTable ORDER BY Name "));
        for (; !rs->isEOF(); rs->MoveNext()) {
            const QString name = rs->Fields(0).Text();
            addNode(everyone, kEveryone + QLatin1Char('|') + name, name);
        }
        rs->Close();
    }
    {
        const std::unique_ptr<dao::Recordset> rs =
            fnOpenSQL(QStringLiteral("SELECT * FROM EmployeeGroupTable Where GroupName <> 'Everyone' ORDER BY "
                                     "GroupName , EmployeeName "));
        QString lastGroup;
        QTreeWidgetItem* group = nullptr;
        for (; !rs->isEOF(); rs->MoveNext()) {
            const QString groupName = rs->Fields(QStringLiteral("GroupName")).Text();
            if (!group || groupName != lastGroup) {
                group = addNode(root, groupName, groupName);
                lastGroup = groupName;
            }
            const QString name = rs->Fields(QStringLiteral("EmployeeName")).Text();
            addNode(group, groupName + QLatin1Char('|') + name, name);
        }
        rs->Close();
    }
    subCloseDatabase();
    root->setExpanded(true);
    BuildListOfIndividualNames();
}

// The names of the To line given, trimmed; empty parts add nothing.
void frmMessagesToSelection::PopulateIncludeOthersListView(const QString& toLine)
{
    for (const QString& part : toLine.split(QLatin1Char(';'))) {
        if (!part.trimmed().isEmpty()) {
            lstIncludeOthers->addItem(part.trimmed());
        }
    }
}

// Every name that stands under a group, once.
void frmMessagesToSelection::BuildListOfIndividualNames()
{
    lstIncludeOthersIndividualy->clear();
    const QTreeWidgetItem* root = tvAvailalbeUsers->topLevelItem(0);
    for (int g = 0; g < root->childCount(); ++g) {
        const QTreeWidgetItem* group = root->child(g);
        for (int m = 0; m < group->childCount(); ++m) {
            const QString name = group->child(m)->text(0);
            if (lstIncludeOthersIndividualy->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive).isEmpty()) {
                lstIncludeOthersIndividualy->addItem(name);
            }
        }
    }
}

void frmMessagesToSelection::includeName(const QString& name)
{
    for (int i = 0; i < lstIncludeOthers->count(); ++i) {
        if (lstIncludeOthers->item(i)->text() == name) {
            return;
        }
    }
    lstIncludeOthers->addItem(name);
}

void frmMessagesToSelection::cmdInclude_Click()
{
    const QTreeWidgetItem* node = tvAvailalbeUsers->currentItem();
    if (node && node->parent()) {
        if (node->parent()->parent()) {
            includeName(node->text(0));
        } else {
            for (int i = 0; i < node->childCount(); ++i) {
                includeName(node->child(i)->text(0));
            }
        }
    }
    subUpdateButtons();
}

void frmMessagesToSelection::cmdRemove_Click()
{
    if (QListWidgetItem* row = lstIncludeOthers->currentItem(); row && row->isSelected()) {
        delete row;
    }
    subUpdateButtons();
    if (lstIncludeOthers->count() == 0) {
        tvAvailalbeUsers->setFocus();
    }
}

void frmMessagesToSelection::cmdClearIncludeOthers_Click()
{
    lstIncludeOthers->clear();
    cmdOK->setDefault(false);
}

void frmMessagesToSelection::subUpdateButtons()
{
    const bool names = lstIncludeOthers->count() > 0;
    cmdOK->setDefault(names);
    cmdRemove->setEnabled(names);
}

void frmMessagesToSelection::tvAvailalbeUsers_NodeClick(QTreeWidgetItem* node)
{
    cmdInclude->setEnabled(node->text(0) != QLatin1String("Groups"));
}

// The names joined by "; ", without a "; " at either end, to the calling screen.
void frmMessagesToSelection::cmdOK_Click()
{
    QString line;
    for (int i = 0; i < lstIncludeOthers->count(); ++i) {
        line += lstIncludeOthers->item(i)->text() + QStringLiteral("; ");
    }
    if (line.startsWith(QLatin1String("; "))) {
        line.remove(0, 2);
    }
    if (line.endsWith(QLatin1String("; "))) {
        line.chop(2);
    }
    const Deliver deliver = m_deliver;
    close();
    if (deliver) {
        deliver(line);
    }
}

void MessagesToSelectionInitialize(QWidget* caller, const QString& toLine, std::function<void(const QString&)> deliver)
{
    auto* screen = new frmMessagesToSelection(caller, std::move(deliver));
    screen->initialize(toLine);
    screen->show();
}
