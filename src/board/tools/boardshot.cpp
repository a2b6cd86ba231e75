// veskor-boardshot: the board of a site as a picture, for the README.
//
//   veskor-boardshot SITE_DIR OUT.png [UID] [WIDTHxHEIGHT] [STATUS.png GROUP.png]
//
// With the two last names it also draws the Change YOUR Status screen, and the
// Group Change screen over the list's second and third rows.
// Runs the client's real start (veskor.ini in SITE_DIR, the person by -UID:) and
// frmMain's Load and Activate offscreen, sizes the window and saves what it
// draws. The run leaves its marks on the site as any start does (the person is
// active), so point it at a site made for the purpose.
#include "board/frmmain.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "start/welcome.h"
#include "statusscreens/frmgroup.h"
#include "statusscreens/frmstatus.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
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

bool saveScreen(QDialog& screen, const QString& file)
{
    screen.show();
    settle();
    const bool saved = screen.grab().save(file);
    screen.close();
    return saved;
}

// The two status screens as the board opens them, without waiting for a person.
bool drawStatusScreens(frmMain* board, const QString& statusFile, const QString& groupFile)
{
    frmStatus own(board);
    own.Form_Load();
    if (!saveScreen(own, statusFile)) {
        return false;
    }
    auto* list = board->findChild<QTreeWidget*>(QStringLiteral("ListViewMain"));
    if (!list) {
        return false;
    }
    list->clearSelection();
    for (int row = 1; row <= 2 && row < list->topLevelItemCount(); ++row) {
        list->topLevelItem(row)->setSelected(true);
    }
    frmGroup group(board);
    return group.Form_Load() && saveScreen(group, groupFile);
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 3) {
        QTextStream(stderr) << "usage: veskor-boardshot SITE_DIR OUT.png [UID] [WIDTHxHEIGHT] [STATUS.png GROUP.png]\n";
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
    if (args.size() > 6 && !drawStatusScreens(board, args[5], args[6])) {
        QTextStream(stderr) << "veskor-boardshot: cannot draw the status screens\n";
        return 1;
    }
    QTextStream(stdout) << "Board of " << gRun.gstrDefaultUser << " written to " << args[2] << "\n";
    std::fflush(stdout);
    return 0;
}
