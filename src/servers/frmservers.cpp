#include "servers/frmservers.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/upgrade.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/gui/screenplace.h"
#include "platform/gui/spoken.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "servers/serverconnection.h"

#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QTreeWidget>
#include <memory>

using namespace platform;
using servers::gstrRemoteDataPath;

namespace {

const QString kEveryone = QStringLiteral("Everyone");

// The screen has no help topic of its own: the help file opens at its start.
constexpr int kHelpContext = 0;

QPushButton* namedButton(QWidget* parent, const char* name, const QString& caption)
{
    return named(new QPushButton(caption, parent), QString::fromLatin1(name), caption);
}

} // namespace

frmServers::frmServers(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Remote Servers"));
    setMouseTracking(true);

    lblRemoteServer = new QLabel(QStringLiteral("Select a Remote Server :"), this);
    lblRemoteServer->setObjectName(QStringLiteral("lblRemoteServer"));
    ListViewServers = new QTreeWidget(this);
    ListViewServers->setObjectName(QStringLiteral("ListViewServers"));
    ListViewServers->setAccessibleName(QStringLiteral("Select a Remote Server"));
    ListViewServers->setHeaderLabels({QStringLiteral("UNC Path"), QStringLiteral("Description")});
    ListViewServers->setRootIsDecorated(false);
    ListViewServers->setAllColumnsShowFocus(true);
    ListViewServers->header()->resizeSection(0, 260);
    lblRemoteServer->setBuddy(ListViewServers);

    cmdOKServers = namedButton(this, "cmdOKServers", QStringLiteral("OK"));
    cmdOKServers->setEnabled(false);
    cmdOKServers->setDefault(true);
    cmdCancelServers = namedButton(this, "cmdCancelServers", QStringLiteral("&Cancel"));
    cmdHelpServers = namedButton(this, "cmdHelpServers", QStringLiteral("&Help"));

    Image1 = new QLabel(this);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->setPixmap(style()->standardIcon(QStyle::SP_DriveNetIcon).pixmap(48, 48));
    Image1->setAccessibleName(QStringLiteral("Remote servers"));

    StatusBarServers = new QStatusBar(this);
    StatusBarServers->setObjectName(QStringLiteral("StatusBarServers"));
    StatusBarServers->setSizeGripEnabled(false);
    m_panel = new QLabel(StatusBarServers);
    m_panel->setAccessibleName(QStringLiteral("Status"));
    StatusBarServers->addWidget(m_panel, 1);

    auto* grid = new QGridLayout(this);
    grid->addWidget(Image1, 0, 0, Qt::AlignTop);
    grid->addWidget(lblRemoteServer, 0, 1);
    grid->addWidget(ListViewServers, 1, 1, 4, 1);
    grid->addWidget(cmdOKServers, 1, 2);
    grid->addWidget(cmdCancelServers, 2, 2);
    grid->addWidget(cmdHelpServers, 3, 2);
    grid->setRowStretch(4, 1);
    grid->addWidget(StatusBarServers, 5, 0, 1, 3);
    resize(560, 300);

    connect(ListViewServers, &QTreeWidget::itemClicked, this, [this] { cmdOKServers->setEnabled(true); });
    connect(ListViewServers, &QTreeWidget::itemSelectionChanged, this, &frmServers::ListViewServers_ItemClick);
    // A double click is OK; Enter reaches OK as the default button.
    connect(ListViewServers, &QTreeWidget::itemDoubleClicked, this, [this] { cmdOKServers->click(); });
    connect(cmdOKServers, &QPushButton::clicked, this, &frmServers::cmdOKServers_Click);
    connect(cmdCancelServers, &QPushButton::clicked, this, &frmServers::cmdCancelServers_Click);
    connect(cmdHelpServers, &QPushButton::clicked, this, &frmServers::cmdHelpServers_Click);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            &frmServers::cmdHelpServers_Click);

    // The hints follow the mouse: each button and the status bar have their own,
    // the rest of the screen empties the panel.
    const QList<QWidget*> areas = {this,           lblRemoteServer,  ListViewServers->viewport(),
                                   Image1,         cmdOKServers,     cmdCancelServers,
                                   cmdHelpServers, StatusBarServers, m_panel};
    for (QWidget* area : areas) {
        area->setMouseTracking(true);
        area->installEventFilter(this);
    }
}

frmServers::~frmServers()
{
    // Torn down quietly: no hint or selection handler runs on a half-gone screen.
    for (QWidget* child : findChildren<QWidget*>()) {
        child->blockSignals(true);
    }
}

void frmServers::showModal(QWidget* parent)
{
    frmServers screen(parent);
    screen.Form_Load();
    centreOnScreen(&screen);
    screen.exec();
}

void frmServers::Form_Load()
{
    subGetRemoteServers();
}

bool frmServers::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove) {
        if (watched == cmdOKServers) {
            setStatusText(QStringLiteral(" Press OK to connect to Remote Server."));
        } else if (watched == cmdCancelServers) {
            setStatusText(QStringLiteral(" Cancel and return to Main Screen."));
        } else if (watched == cmdHelpServers) {
            setStatusText(QStringLiteral(" Display Help."));
        } else if (watched == StatusBarServers || watched == m_panel) {
            setStatusText(QStringLiteral("Current connection = ") + gRun.gstrCurrentDatabasePath);
        } else {
            setStatusText(QString());
        }
    }
    return QDialog::eventFilter(watched, event);
}

QString frmServers::statusText() const
{
    return m_panel->text();
}

void frmServers::setStatusText(const QString& text)
{
    m_panel->setText(text);
}

// ServersTable of the database in use: while connected to a remote site, that
// site's own list.
void frmServers::subGetRemoteServers()
{
    ListViewServers->clear();
    subOpenDatabase();
    std::unique_ptr<dao::Recordset> rs = fnOpenSQL(QStringLiteral("SELECT * FROM ServersTable"));
    for (; !rs->isEOF(); rs->MoveNext()) {
        new QTreeWidgetItem(ListViewServers, {rs->Fields(QStringLiteral("UNCPath")).Text(),
                                              rs->Fields(QStringLiteral("Description")).Text()});
    }
    rs->Close();
    subCloseDatabase();
}

// A selected row makes OK usable. The folder taken here is overwritten by OK with
// the row's own text.
void frmServers::ListViewServers_ItemClick()
{
    QTreeWidgetItem* row = selectedRow();
    if (ListViewServers->topLevelItemCount() > 0 && row) {
        gstrRemoteDataPath = row->text(1).trimmed();
        cmdOKServers->setEnabled(true);
    }
}

void frmServers::refuse(const QString& prompt, int flags, const QString& title)
{
    mainScreen().setBusyPointer(false);
    MsgBox(prompt, flags, title);
}

// The row chosen by a click, the keys or a screen reader: the selected one, which
// need not be the current one.
QTreeWidgetItem* frmServers::selectedRow() const
{
    const QList<QTreeWidgetItem*> rows = ListViewServers->selectedItems();
    return rows.isEmpty() ? nullptr : rows.first();
}

void frmServers::cmdOKServers_Click()
{
    QTreeWidgetItem* row = selectedRow();
    if (!row) {
        return;
    }
    gCounters.glngLastStatusCounter = 0; // the board is drawn afresh after any outcome
    gstrRemoteDataPath = row->text(0).trimmed();
    mainScreen().setBusyPointer(true);
    if (gstrRemoteDataPath.compare(gRun.gstrDatabasePath, Qt::CaseInsensitive) == 0) {
        // The home folder in the list only returns the client home.
        servers::subConnectHome();
        subCloseDatabase();
        mainScreen().setBusyPointer(false);
        accept();
        return;
    }
    if (connectTo(gstrRemoteDataPath)) {
        accept();
    }
}

bool frmServers::connectTo(const QString& folder)
{
    const QString title = gRun.gstrProgramTitle;
    // A mapped drive letter is not a path every client can reach.
    if (!folder.startsWith(QLatin1String("\\\\"))) {
        refuse(QStringLiteral("Sorry, the UNC path you selected is invalid. Please ask your ") + title +
                   QStringLiteral(" Administrator to rectify this problem."),
               vbExclamation);
        return false;
    }
    if (!servers::FileExists(folder + QStringLiteral("veskor.mdb"))) {
        refuse(QStringLiteral("Sorry, the") + title + QStringLiteral(" database does not exist at the UNC") +
                   QStringLiteral(" path you selected. Please ask your") + title +
                   QStringLiteral(" Administrator to rectify this problem."),
               vbExclamation);
        return false;
    }
    if (!fnIsValidDatabase(folder)) {
        refuse(folder + QStringLiteral("veskor.mdb") + CRLF + QStringLiteral("is not a VESK-OR Pro database."),
               vbInformation, QStringLiteral("Not a valid VESK-OR Pro database"));
        return false;
    }

    // The switch: from the next open on, everything goes to the other site.
    servers::dropDatabaseHandle();
    gRun.gstrCurrentDatabasePath = folder;
    setStatusText(QStringLiteral(" Establishing remote connection..."));
    subOpenDatabase();
    setStatusText(QStringLiteral(" Remote connection established."));
    gRun.gblnRemoteConnection = true;
    subCloseDatabase();

    // An unreadable table counts as an empty one.
    long long users = 0;
    subOpenDatabase();
    ResumeNext([&] {
        users = fnOpenSQL(QStringLiteral("SELECT COUNT(*) FROM EmployeeTable"))->Fields(0).Value().toLongLong();
    });
    if (users == 0) {
        refuse(QStringLiteral("Sorry, there are no users in the database yet.") + CRLF +
                   QStringLiteral("Please ask your") + title + QStringLiteral(" Administrator to add a user!"),
               vbExclamation, title + QStringLiteral(" - No users!"));
        servers::subConnectHome();
        gRun.gblnRemoteConnection = false;
        setStatusText(QStringLiteral(" Remote server has no users."));
        return false;
    }
    gRun.gstrSQL =
        QStringLiteral("SELECT * FROM EmployeeTable WHERE name LIKE ") + dao::quoteLike(gRun.gstrDefaultUser);
    gRun.gblnUserOnThisServer = false;
    ResumeNext([] { gRun.gblnUserOnThisServer = !fnOpenSQL(gRun.gstrSQL)->isEOF(); });

    gRun.gstrCurrentGroup = kEveryone;
    MainScreen& board = mainScreen();
    board.subReadGroups();
    board.subLoadToolBarButtons(); // repaints the board and lays it out again
    board.subResizeControls();
    board.setBusyPointer(false);

    gRun.gstrCurrentDatabasePath = folder;
    subCloseDatabase();
    return true;
}

void frmServers::cmdCancelServers_Click()
{
    reject();
}

void frmServers::cmdHelpServers_Click()
{
    shell().showHelp(gRun.gstrHelpFile, kHelpContext);
}
