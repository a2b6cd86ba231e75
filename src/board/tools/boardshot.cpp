// veskor-boardshot: the board of a site as a picture, for the README.
//
//   veskor-boardshot SITE_DIR OUT.png [UID] [WIDTHxHEIGHT] [--status=STATUS.png] [--group=GROUP.png]
//                    [--options=OPTIONS.png] [--message=MESSAGE.png] [--preview=PREVIEW.png]
//                    [--print=PRINT.png] [--report=REPORT.png] [--photo=PHOTO.png] [--about=ABOUT.png]
//                    [--servers=SERVERS.png] [--newuser=NEWUSER.png]
//                    [--newmsgalert=NEWMSG.png] [--statusalert=STATUSALERT.png]
//
// Runs the client's real start (veskor.ini in SITE_DIR, the person by -UID:) and
// frmMain's Load and Activate offscreen, sizes the window and saves what it
// draws; --status, --group, --options and --message also draw the person's
// Change YOUR Status screen, the Group Change screen over the list's second and
// third rows, the Options screen, and a new message to those two rows; --preview
// the Preview Messages screen at its load; --print the Print Reports screen and
// --report the first page of the status list of everyone, as printed; --photo the
// photo viewer at its load (the person's own picture selected) and --about the
// About screen; --servers the remote server list;
// --newuser the New User Setup screen at its load; --newmsgalert and
// --statusalert the two pop-ups, with a message and a change made up for them. The run leaves its marks on the site
// as any start does (the person is active), so point it at a site made for the
// purpose.
#include "alerts/frmnewmessagesalert.h"
#include "alerts/frmstatuschangealert.h"
#include "board/frmmain.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "messaging/gui/frmmessage.h"
#include "messaging/gui/frmmsgspreview.h"
#include "messaging/gui/messagescreens.h"
#include "options/frmoptions.h"
#include "platform/clock.h"
#include "reports/frmprint.h"
#include "reports/modprint.h"
#include "reports/reportpage.h"
#include "servers/frmservers.h"
#include "side/frmabout.h"
#include "side/frmdisplayphoto.h"
#include "start/welcome.h"
#include "statusscreens/frmgroup.h"
#include "statusscreens/frmstatus.h"
#include "users/frmnewusersetup.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTextStream>
#include <QTreeWidget>
#include <cstdio>

namespace {

QSize sizeOf(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    return parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
}

// Lets the board draw: the refresh and the layout run on events after Activate.
void settle()
{
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
    }
}

bool saveScreen(QWidget& screen, const QString& file)
{
    screen.show();
    settle();
    const bool saved = screen.grab().save(file);
    screen.close();
    return saved;
}

// The list's second and third rows selected; false when there is no list.
bool selectSecondAndThird(frmMain* board)
{
    auto* list = board->findChild<QTreeWidget*>(QStringLiteral("ListViewMain"));
    if (!list) {
        return false;
    }
    list->clearSelection();
    for (int row = 1; row <= 2 && row < list->topLevelItemCount(); ++row) {
        list->topLevelItem(row)->setSelected(true);
    }
    return true;
}

// The Group Change screen as the board opens it over two selected rows.
bool drawGroupScreen(frmMain* board, const QString& groupFile)
{
    if (!selectSecondAndThird(board)) {
        return false;
    }
    frmGroup group(board);
    return group.Form_Load() && saveScreen(group, groupFile);
}

// A new message as the board opens it over the rows selected there.
bool drawMessageScreen(frmMain* board, const QString& messageFile)
{
    selectSecondAndThird(board);
    gstrMessageAction = QStringLiteral("New");
    auto* message = new frmMessage;
    message->Form_Load();
    message->subCreateMessage(board, 0);
    message->txtFrom->setText(QStringLiteral("Reception"));
    message->txtSubject->setText(QStringLiteral("Visitor at the front desk"));
    message->txtBody->setPlainText(QStringLiteral("Your 10:30 appointment has arrived and is waiting in the lobby."));
    return saveScreen(*message, messageFile); // closing it lets it go
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments();
    const QStringList named = args.filter(QRegularExpression(QStringLiteral("^--")));
    for (const QString& arg : named) {
        args.removeOne(arg);
    }
    if (args.size() < 3) {
        QTextStream(stderr) << "usage: veskor-boardshot SITE_DIR OUT.png [UID] [WIDTHxHEIGHT] [--status=STATUS.png] "
                               "[--group=GROUP.png] [--options=OPTIONS.png] [--message=MESSAGE.png] "
                               "[--preview=PREVIEW.png] [--print=PRINT.png] [--report=REPORT.png] "
                               "[--photo=PHOTO.png] [--about=ABOUT.png] "
                               "[--servers=SERVERS.png] [--newuser=NEWUSER.png] "
                               "[--newmsgalert=NEWMSG.png] [--statusalert=STATUSALERT.png]\n";
        return 2;
    }
    const QString site = QDir(args[1]).absolutePath();
    const QString uid = args.size() > 3 ? args[3] : QString();
    const QSize size = sizeOf(args.size() > 4 ? args[4] : QStringLiteral("1100x650"));

    gRun.gstrGivenCommandLine = uid.isEmpty() ? QString() : QStringLiteral("-UID:") + uid;
    setMainScreenFactory(&frmMain::load);
    subWelcomeActivate(site);
    // The splash's timer tick: the first use of the main screen loads frmMain.
    auto* board = gRun.gstrDefaultUser.isEmpty() ? nullptr : dynamic_cast<frmMain*>(&loadMainScreen());
    if (!board) {
        QTextStream(stderr) << "veskor-boardshot: no board for this site and person\n";
        return 1;
    }
    board->resize(size);
    board->show();
    QApplication::setActiveWindow(board);
    settle();
    if (!board->grab().save(args[2])) {
        QTextStream(stderr) << "veskor-boardshot: cannot write " << args[2] << "\n";
        return 1;
    }
    for (const QString& arg : named) {
        const QString file = arg.section(QLatin1Char('='), 1);
        bool drawn = true;
        if (arg.startsWith(QStringLiteral("--status="))) {
            frmStatus own(board);
            own.Form_Load();
            drawn = saveScreen(own, file);
        } else if (arg.startsWith(QStringLiteral("--group="))) {
            drawn = drawGroupScreen(board, file);
        } else if (arg.startsWith(QStringLiteral("--options="))) {
            frmOptions options(board);
            options.Form_Load();
            drawn = saveScreen(options, file);
        } else if (arg.startsWith(QStringLiteral("--message="))) {
            drawn = drawMessageScreen(board, file);
        } else if (arg.startsWith(QStringLiteral("--preview="))) {
            subShowMsgsPreview();
            drawn = saveScreen(*frmMsgsPreview::instance(), file);
        } else if (arg.startsWith(QStringLiteral("--print="))) {
            frmPrint print(board);
            print.Form_Load();
            drawn = saveScreen(print, file);
        } else if (arg.startsWith(QStringLiteral("--report="))) {
            const QStringList lines =
                reports::fnReportLines(reports::StatusList, reports::SortByName, QStringLiteral("Everyone"));
            drawn = reports::reportPageImage(lines).save(file);
        } else if (arg.startsWith(QStringLiteral("--photo="))) {
            frmDisplayPhoto photo(board);
            photo.Form_Load();
            photo.resize(760, 460);
            drawn = saveScreen(photo, file);
        } else if (arg.startsWith(QStringLiteral("--about="))) {
            frmAbout about(board);
            about.Form_Load();
            drawn = saveScreen(about, file);
        } else if (arg.startsWith(QStringLiteral("--servers="))) {
            frmServers servers(board);
            servers.Form_Load();
            drawn = saveScreen(servers, file);
        } else if (arg.startsWith(QStringLiteral("--newuser="))) {
            frmNewUserSetup setup;
            setup.Form_Load();
            drawn = saveScreen(setup, file);
        } else if (arg.startsWith(QStringLiteral("--newmsgalert="))) {
            drawn = saveScreen(*subPopUpForNewMessagesAlert(QStringLiteral("Lunch today?"), platform::Now(), 1,
                                                            QStringLiteral("At one, in the canteen.")),
                               file);
        } else if (arg.startsWith(QStringLiteral("--statusalert="))) {
            drawn = saveScreen(*subPopUpForStatusAlert(QStringLiteral("Bernard Quist"),
                                                       platform::DateTimeNum(platform::Now()), QStringLiteral("Busy")),
                               file);
        }
        if (!drawn) {
            QTextStream(stderr) << "veskor-boardshot: cannot draw " << file << "\n";
            return 1;
        }
    }
    QTextStream(stdout) << "Board of " << gRun.gstrDefaultUser << " written to " << args[2] << "\n";
    std::fflush(stdout);
    return 0;
}
