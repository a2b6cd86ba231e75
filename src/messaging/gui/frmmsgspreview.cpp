// frmMsgsPreview: the screen, its load, the category tree and the list of copies.
#include "messaging/gui/frmmsgspreview.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "messaging/gui/messageparts.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/messagesql.h"
#include "platform/clock.h"
#include "platform/gui/screenplace.h"
#include "status/statuscommon.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString kRootKey = QStringLiteral("R");
const QString kStartNode = QStringLiteral("New");
constexpr int kBodyPreview = 30;
constexpr int kKeyRole = Qt::UserRole;

QPointer<frmMsgsPreview>& theScreen()
{
    static QPointer<frmMsgsPreview> screen;
    return screen;
}

// The person's copies under a category node; "Drafts" holds the "Draft" copies.
QString sqlForNode(const QString& key)
{
    if (key == QLatin1String("All")) {
        return messaging::fnOwnerMessagesSql(gRun.gstrDefaultUser);
    }
    const QString category = key == QLatin1String("Drafts") ? QStringLiteral("Draft") : key;
    return messaging::fnOwnerMessagesSql(gRun.gstrDefaultUser, category);
}

int fieldIndex(dao::Recordset& rs, const QString& name)
{
    for (int i = 0; i < rs.FieldCount(); ++i) {
        if (rs.Fields(i).Name().compare(name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return -1;
}

// The first 30 characters of the body on one line.
QString bodyPreview(const QString& body)
{
    return body.left(kBodyPreview).replace(QLatin1String("\r\n"), QLatin1String(" ")).trimmed();
}

// The rows of the statement as list items, in the table's own order.
QList<QTreeWidgetItem*> itemsOf(dao::Recordset& rs)
{
    const auto index = [&rs](const char* name) {
        return fieldIndex(rs, QLatin1String(name));
    };
    const int category = index("Category");
    const int from = index("MessageFrom");
    const int subject = index("MessageSubject");
    const int body = index("MessageBody");
    const int sent = index("SentDateTimeNum");
    const int sentBy = index("SentFromName");
    const int sentTo = index("SentToName");
    const int id = index("MessageID");
    const QString shortDate = QStringLiteral("Short Date");
    QList<QTreeWidgetItem*> items;
    for (; !rs.isEOF(); rs.MoveNext()) {
        const QString sender = rs.Fields(sentBy).Text();
        items << new QTreeWidgetItem(QStringList{
            rs.Fields(category).Text(),
            rs.Fields(from).IsNull() ? sender : rs.Fields(from).Text(),
            rs.Fields(subject).Text(),
            bodyPreview(rs.Fields(body).Text()),
            platform::Format(platform::dateFromDateTimeNum(rs.Fields(sent).Value().toDouble()), shortDate),
            sender,
            rs.Fields(sentTo).Text(),
            QString::number(rs.Fields(id).Value().toLongLong()),
        });
    }
    return items;
}

} // namespace

frmMsgsPreview::frmMsgsPreview(QWidget* parent)
    : QDialog(parent), TreeViewCategories(new QTreeWidget(this)), listMsgsPreview(new QTreeWidget(this)),
      ToolbarMsgsPreview(new QToolBar(this)), StatusBarMsgsPreview(new QStatusBar(this)),
      imgPreviewIcon(new QLabel(this))
{
    setObjectName(QStringLiteral("frmMsgsPreview"));
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    const std::pair<QWidget*, const char*> named[] = {
        {TreeViewCategories, "TreeViewCategories"}, {listMsgsPreview, "listMsgsPreview"},
        {ToolbarMsgsPreview, "ToolbarMsgsPreview"}, {StatusBarMsgsPreview, "StatusBarMsgsPreview"},
        {imgPreviewIcon, "imgPreviewIcon"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(QLatin1String(name));
    }

    TreeViewCategories->setToolTip(QStringLiteral(" Select Message Type "));
    TreeViewCategories->setHeaderHidden(true);
    listMsgsPreview->setToolTip(QStringLiteral(" Messages "));
    listMsgsPreview->setColumnCount(kColumns);
    listMsgsPreview->setHeaderLabels({QStringLiteral("Category"), QStringLiteral("From"), QStringLiteral("Subject"),
                                      QStringLiteral("Body"), QStringLiteral("Sent"), QStringLiteral("Sent By"),
                                      QStringLiteral("Sent To"), QStringLiteral("MessageID")});
    listMsgsPreview->setRootIsDecorated(false);
    listMsgsPreview->setUniformRowHeights(true);
    listMsgsPreview->setSortingEnabled(false);
    listMsgsPreview->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listMsgsPreview->setAllColumnsShowFocus(true);
    listMsgsPreview->header()->setStretchLastSection(false);
    const int widths[kColumns] = {70, 110, 150, 210, 90, 110, 110, 80};
    for (int column = 0; column < kColumns; ++column) {
        listMsgsPreview->setColumnWidth(column, widths[column]);
    }
    listMsgsPreview->viewport()->installEventFilter(this);
    imgPreviewIcon->setPixmap(msgparts::messageIcon(QStringLiteral("Preview")).pixmap(32, 32));
    setWindowIcon(msgparts::messageIcon(QStringLiteral("Preview")));
    StatusBarMsgsPreview->setSizeGripEnabled(true);
    const std::pair<QWidget*, const char*> spoken[] = {
        {TreeViewCategories, "Select Message Type"},
        {listMsgsPreview, "Messages"},
        {ToolbarMsgsPreview, "Preview Messages toolbar"},
        {StatusBarMsgsPreview, "Status"},
        {imgPreviewIcon, "Preview Messages"},
    };
    for (const auto& [widget, name] : spoken) {
        widget->setAccessibleName(QLatin1String(name));
    }

    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    sideLayout->addWidget(imgPreviewIcon);
    sideLayout->addWidget(TreeViewCategories);
    auto* split = new QSplitter(this);
    split->addWidget(side);
    split->addWidget(listMsgsPreview);
    split->setStretchFactor(1, 1);
    split->setSizes({150, 850});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(ToolbarMsgsPreview);
    layout->addWidget(split, 1);
    layout->addWidget(StatusBarMsgsPreview);
    resize(1000, 440);

    buildToolbar();
    buildTree();
    // A node is chosen by the keys or clicked (also when it was chosen already);
    // a mouse press that moves to a node leaves the load to the click after it.
    connect(TreeViewCategories, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* node) {
        if (node && QGuiApplication::mouseButtons() == Qt::NoButton) {
            TreeViewCategories_NodeClick(node);
        }
    });
    connect(TreeViewCategories, &QTreeWidget::itemClicked, this, &frmMsgsPreview::TreeViewCategories_NodeClick);
    connect(listMsgsPreview, &QTreeWidget::itemSelectionChanged, this, [this] {
        const QList<QTreeWidgetItem*> selected = listMsgsPreview->selectedItems();
        QTreeWidgetItem* clicked = listMsgsPreview->currentItem();
        if (selected.isEmpty()) {
            subSetButtonsFor(QString(), false);
        } else {
            subSetButtonsFor((clicked && clicked->isSelected() ? clicked : selected.first())->text(colCategory), true);
        }
    });
    connect(listMsgsPreview, &QTreeWidget::itemActivated, this, &frmMsgsPreview::listMsgsPreview_DblClick);
}

frmMsgsPreview* frmMsgsPreview::instance()
{
    if (!theScreen()) {
        theScreen() = new frmMsgsPreview;
    }
    return theScreen();
}

void frmMsgsPreview::buildTree()
{
    auto* root = new QTreeWidgetItem(TreeViewCategories, {QStringLiteral("Categories")});
    root->setData(0, kKeyRole, kRootKey);
    for (const char* key : {"All", "New", "Read", "Sent", "Deleted", "Drafts"}) {
        auto* node = new QTreeWidgetItem(root, {QLatin1String(key)});
        node->setData(0, kKeyRole, QLatin1String(key));
    }
    root->setExpanded(true);
}

QString frmMsgsPreview::selectedNodeKey() const
{
    const QTreeWidgetItem* node = TreeViewCategories->currentItem();
    return node ? node->data(0, kKeyRole).toString() : QString();
}

void frmMsgsPreview::Form_Load()
{
    status::Trap trap([](const VbError&) {
        errorbox::showGeneral(QStringLiteral("frmMsgsPreview - Load event"), errorbox::Joined);
        return status::Resume::Next;
    });
    msgparts::BusyPointer busy;
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Preview Messages"));
    centreOnScreen(this);
    trap([this] { subBindMsgsPreviewToolBar(); });
    trap([this] {
        const QTreeWidgetItem* root = TreeViewCategories->topLevelItem(0);
        for (int i = 0; i < root->childCount(); ++i) {
            QTreeWidgetItem* node = root->child(i);
            if (node->data(0, kKeyRole).toString() == kStartNode) {
                const QSignalBlocker quiet(TreeViewCategories);
                TreeViewCategories->setCurrentItem(node);
            }
        }
        subLoad_MsgsPreview_ListView(kStartNode);
    });
    setFiveButtons(listMsgsPreview->topLevelItemCount() > 0);
}

void frmMsgsPreview::subLoad_MsgsPreview_ListView(const QString& nodeKey)
{
    listMsgsPreview->clear();
    if (!nodeKey.isEmpty() && nodeKey != kRootKey) {
        mstrLastSQL = sqlForNode(nodeKey);
    }
    if (mstrLastSQL.isEmpty()) {
        return;
    }
    subOpenDatabase();
    QList<QTreeWidgetItem*> items;
    {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(mstrLastSQL);
        if (!rs->isEOF()) {
            rs->MoveFirst();
        }
        items = itemsOf(*rs);
        rs->Close();
    }
    subCloseDatabase();
    // All rows in one go: the view lays itself out once, not once a row.
    listMsgsPreview->addTopLevelItems(items);
}

void frmMsgsPreview::TreeViewCategories_NodeClick(QTreeWidgetItem* node)
{
    subLoad_MsgsPreview_ListView(node->data(0, kKeyRole).toString());
    if (listMsgsPreview->topLevelItemCount() == 1) {
        listMsgsPreview->setCurrentItem(listMsgsPreview->topLevelItem(0));
    }
    const QList<QTreeWidgetItem*> selected = listMsgsPreview->selectedItems();
    subSetButtonsFor(selected.isEmpty() ? QString() : selected.first()->text(colCategory), !selected.isEmpty());
}

void frmMsgsPreview::listMsgsPreview_DblClick()
{
    if (listMsgsPreview->topLevelItemCount() > 0) {
        subMsgsPreview_Command_View();
    }
}

long long frmMsgsPreview::selectedMessageId() const
{
    QTreeWidgetItem* row = listMsgsPreview->currentItem();
    if (!row || !row->isSelected()) {
        const QList<QTreeWidgetItem*> selected = listMsgsPreview->selectedItems();
        row = selected.isEmpty() ? nullptr : selected.first();
    }
    return row ? row->text(colMessageID).toLongLong() : 0;
}

bool frmMsgsPreview::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == listMsgsPreview->viewport() && event->type() == QEvent::Enter) {
        StatusBarMsgsPreview->showMessage(listMsgsPreview->toolTip());
    }
    return QDialog::eventFilter(watched, event);
}

void subShowMsgsPreview()
{
    frmMsgsPreview* screen = frmMsgsPreview::instance();
    if (!screen->isVisible()) {
        screen->Form_Load();
    }
    screen->show();
    screen->raise();
    screen->activateWindow();
}

void subRefreshMsgsPreviewIfVisible()
{
    if (theScreen() && theScreen()->isVisible()) {
        theScreen()->subMsgsPreview_Command_refresh();
    }
}
