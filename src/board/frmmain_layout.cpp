// frmMain's layout: the logo across the top, the strip of side panes (tracking
// and new messages) over the list, and the groups as a tree left of the list or
// as tabs above it. Which areas exist depends on the person's DisplayTreeView
// and on the system's AllowStatusAlerts and AllowMessaging, so every resize lays
// the screen out again. The two splitters are what a person moves; their
// positions are twips in the run-wide values, kept within limits that each
// layout pass works out from the window's size, and saved at the end of the run.
#include "board/frmmain.h"
#include "board/twips.h"
#include "kernel/err.h"
#include "kernel/globals.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const int kGap = Twips(60).pixels();       // between neighbouring areas
const int kListInset = Twips(50).pixels(); // the list ends this short of what is next to it
// The smallest each area may become by a splitter's drag; the splitters' limits follow.
constexpr int kTreeMinWidth = 80;
constexpr int kListMinWidth = 200;
constexpr int kPanesMinHeight = 60;
constexpr int kListMinHeight = 100;
constexpr int kLargeIcon = 32;
constexpr int kSmallIcon = 16;

// Lays the screen out when its client area is shown or changes size, and shows About when
// the logo is clicked.
class LayoutWatcher : public QObject
{
public:
    LayoutWatcher(frmMain* form, QWidget* logo) : QObject(form), m_form(form), m_logo(logo)
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool sized = event->type() == QEvent::Resize || event->type() == QEvent::Show;
        if (sized && watched == m_form->centralWidget()) {
            m_form->subResizeControls();
        } else if (event->type() == QEvent::MouseButtonRelease && watched == m_logo) {
            m_form->subCommand_About();
        }
        return false;
    }

private:
    frmMain* m_form;
    QWidget* m_logo;
};

QWidget* column(QWidget* parent, std::initializer_list<QWidget*> widgets, int margin)
{
    auto* area = new QWidget(parent);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(2);
    for (QWidget* widget : widgets) {
        layout->addWidget(widget);
    }
    return area;
}

QSplitter* splitter(Qt::Orientation orientation, const char* name)
{
    auto* bar = new QSplitter(orientation);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setChildrenCollapsible(false);
    bar->setHandleWidth(kGap);
    // The bar moves alone during the drag; the areas follow when it is let go.
    bar->setOpaqueResize(false);
    return bar;
}

} // namespace

void frmMain::initLayout()
{
    lblWhoAmITracking->setText(QStringLiteral(" Alert ME when the Status changes for the following users or items :"));
    lblWhosTrackingMe->setText(QStringLiteral(" Alert others :"));
    lblPreviewMsgsPane->setText(QStringLiteral("Preview New Messages :"));
    lstWhoAmITracking->setToolTip(
        QStringLiteral(" Blank Status indicates the target has not updated their Status as yet "));
    lstWhosTrackingMe->setToolTip(QStringLiteral(" List of users who will be Alerted when YOUR Status changes "));

    // The tracking pane: each list under its label, side by side.
    auto* tracking = new QHBoxLayout(picTrackingContainer);
    tracking->setContentsMargins(0, 0, 0, 0);
    tracking->setSpacing(kGap);
    tracking->addWidget(column(picTrackingContainer, {lblWhoAmITracking, lstWhoAmITracking}, 0));
    tracking->addWidget(column(picTrackingContainer, {lblWhosTrackingMe, lstWhosTrackingMe}, 0));
    m_panes = new QWidget;
    m_panes->setObjectName(QStringLiteral("picPanes"));
    m_messagesPane = column(m_panes, {lblPreviewMsgsPane, ListViewMessages}, 0);
    auto* panes = new QHBoxLayout(m_panes);
    panes->setContentsMargins(0, 0, 0, 0);
    panes->setSpacing(kGap);
    panes->addWidget(picTrackingContainer, 2);
    panes->addWidget(m_messagesPane, 1);
    m_panes->setMinimumHeight(kPanesMinHeight);

    takeCentralWidget(); // ListViewMain, which goes into its area below
    m_listArea = column(nullptr, {TabStripMain, ListViewMain}, 0);
    m_listArea->layout()->setContentsMargins(0, 0, kListInset, kListInset);
    m_listArea->setMinimumSize(kListMinWidth, kListMinHeight);
    TreeViewMain->setMinimumWidth(kTreeMinWidth);
    picVerticalSplitter = splitter(Qt::Horizontal, "picVerticalSplitter");
    picVerticalSplitter->addWidget(TreeViewMain);
    picVerticalSplitter->addWidget(m_listArea);
    picVerticalSplitter->setStretchFactor(1, 1);
    picSplitterHorizontal = splitter(Qt::Vertical, "picSplitterHorizontal");
    picSplitterHorizontal->addWidget(m_panes);
    picSplitterHorizontal->addWidget(picVerticalSplitter);
    picSplitterHorizontal->setStretchFactor(1, 1);

    // The product's banner across the top (the site's own LOGO.GIF stands behind the list).
    imgPlannerBanner->setText(QStringLiteral("<b>VESK-OR Pro</b>&nbsp;&nbsp;<i>In/Out Board</i>"));
    imgPlannerBanner->setStyleSheet(
        QStringLiteral("QLabel { color: white; font-size: 13pt; padding: 4px 10px; "
                       "background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 #1f4e79, stop:1 #6fa8dc); }"));
    imgPlannerBanner->setCursor(Qt::PointingHandCursor);

    QWidget* client = column(this, {imgPlannerBanner, picSplitterHorizontal}, kGap);
    client->setObjectName(QStringLiteral("frmMainClient"));
    setCentralWidget(client);
    connect(picVerticalSplitter, &QSplitter::splitterMoved, this, &frmMain::splitterMoved);
    connect(picSplitterHorizontal, &QSplitter::splitterMoved, this, &frmMain::splitterMoved);
    auto* watcher = new LayoutWatcher(this, imgPlannerBanner);
    client->installEventFilter(watcher);
    imgPlannerBanner->installEventFilter(watcher);
    watchHelpContexts();
    placeFirstRun();
}

// Until the person's settings give a place, the window takes most of the screen
// (all of a small one), centred on it; the saved place and size replace it.
void frmMain::placeFirstRun()
{
    const QScreen* display = screen();
    if (!display) {
        return;
    }
    const QRect area = display->availableGeometry();
    const auto fit = [](int available, int least, int most) {
        return std::min(available, std::clamp(available * 85 / 100, least, most));
    };
    const QSize size(fit(area.width(), 800, 1400), fit(area.height(), 600, 900));
    setGeometry(
        QRect(area.topLeft() + QPoint((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size));
}

// Lays the whole screen out: the navigator pass, then the pane pass, then the
// splitters at their positions. Nothing happens while minimized, and a step
// that fails is passed over.
void frmMain::subResizeControls()
{
    if (isMinimized() || m_inResize) {
        return;
    }
    m_inResize = true;
    ResumeNext([this] { fitToolbar(); });
    ResumeNext([this] { navigatorPass(); });
    ResumeNext([this] { panePass(); });
    ResumeNext([this] { placeSplitters(); });
    m_inResize = false;
}

// Every button stays on the bar at any width: when the person's captions and
// icons do not fit, the captions go (the tips and screen-reader names stay),
// and then the icons shrink. A wider window gives them back.
void frmMain::fitToolbar()
{
    const bool captions = gPerson.gintToolBarText != 0;
    const int side = gPerson.gintIconSize == 0 ? kLargeIcon : kSmallIcon;
    const std::pair<Qt::ToolButtonStyle, int> looks[] = {
        {captions ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly, side},
        {Qt::ToolButtonIconOnly, side},
        {Qt::ToolButtonIconOnly, kSmallIcon},
    };
    for (const auto& [style, icon] : looks) {
        ToolbarMain->setToolButtonStyle(style);
        ToolbarMain->setIconSize(QSize(icon, icon));
        if (ToolbarMain->sizeHint().width() <= width()) {
            return;
        }
    }
}

// The groups as a tree left of the list, or as tabs above it; the side panes
// are hidden for the pass, and the pane pass shows what the settings allow.
void frmMain::navigatorPass()
{
    picTrackingContainer->hide();
    imgPlannerBanner->setVisible(true);
    const bool tree = gPerson.gvarDisplayTreeView != 0;
    TreeViewMain->setVisible(tree);
    TabStripMain->setVisible(!tree);
}

// The side panes by AllowStatusAlerts and AllowMessaging; a feature that is off
// takes its commands away with its pane.
void frmMain::panePass()
{
    const bool alerts = gSite.gblnAllowStatusAlerts;
    const bool messaging = gSite.gblnAllowMessaging;
    const QList<QWidget*> trackingPane = {picTrackingContainer, lblWhoAmITracking, lstWhoAmITracking, lblWhosTrackingMe,
                                          lstWhosTrackingMe};
    for (QWidget* part : trackingPane) {
        part->setVisible(alerts);
    }
    const QList<QWidget*> messagesPane = {m_messagesPane, lblPreviewMsgsPane, ListViewMessages};
    for (QWidget* part : messagesPane) {
        part->setVisible(messaging);
    }
    m_panes->setVisible(alerts || messaging);
    if (!alerts) {
        mnuCommand_StatusAlert->setEnabled(false);
        mnuCommand_StatusAlert->setVisible(false);
    }
    if (!messaging) {
        toolbarButton(QStringLiteral("New Message"))->setEnabled(false);
        toolbarButton(QStringLiteral("Preview"))->setEnabled(false);
        for (QAction* entry : {mnuMessages, mnuMessagesNew}) {
            entry->setEnabled(false);
            entry->setVisible(false);
        }
    }
    // A menu whose entries are all gone goes with them.
    mnuMessagesMenu->menuAction()->setVisible(messaging);
}

// Each splitter at its position, held within the limits of this window size.
// The positions are measured from the client area's top left corner. Before the
// window has a size of its own there is nothing to measure, and the positions
// are left as the settings gave them.
void frmMain::placeSplitters()
{
    if (!isVisible()) {
        return;
    }
    const QWidget* client = centralWidget();
    const int handle = picSplitterHorizontal->handleWidth();

    const int top = picSplitterHorizontal->mapTo(client, QPoint(0, 0)).y();
    gBoard.glngSplitterHorizontalMin = Twips::fromPixels(top + kPanesMinHeight).value();
    gBoard.glngSplitterHorizontalMax =
        Twips::fromPixels(top + picSplitterHorizontal->height() - handle - kListMinHeight).value();
    gPerson.glngSplitterHorizontal =
        heldBetween(Twips(gPerson.glngSplitterHorizontal), Twips(gBoard.glngSplitterHorizontalMin),
                    Twips(gBoard.glngSplitterHorizontalMax))
            .value();
    if (m_panes->isVisibleTo(this)) {
        const int panes = Twips(gPerson.glngSplitterHorizontal).pixels() - top;
        picSplitterHorizontal->setSizes({panes, picSplitterHorizontal->height() - handle - panes});
    }

    if (gPerson.gvarDisplayTreeView != 0) {
        const int left = picVerticalSplitter->mapTo(client, QPoint(0, 0)).x();
        // The tree is at least as wide as its longest name, up to a third of the window.
        const int names = std::clamp(m_treeNamesWidth, kTreeMinWidth, std::max(kTreeMinWidth, width() / 3));
        gBoard.glngSplitterVerticalMin = Twips::fromPixels(left + names).value();
        gBoard.glngSplitterVerticalMax =
            Twips::fromPixels(left + picVerticalSplitter->width() - handle - kListMinWidth).value();
        gPerson.glngSplitterVertical =
            heldBetween(Twips(gPerson.glngSplitterVertical), Twips(gBoard.glngSplitterVerticalMin),
                        Twips(gBoard.glngSplitterVerticalMax))
                .value();
        const int tree = Twips(gPerson.glngSplitterVertical).pixels() - left;
        picVerticalSplitter->setSizes({tree, picVerticalSplitter->width() - handle - tree});
    }
}

// The end of a drag: the new positions become the run-wide values (saved with
// the person's settings at the end of the run), and the screen is laid out anew.
void frmMain::splitterMoved()
{
    const QWidget* client = centralWidget();
    if (gPerson.gvarDisplayTreeView != 0) {
        gPerson.glngSplitterVertical = Twips::fromPixels(picVerticalSplitter->mapTo(client, QPoint(0, 0)).x() +
                                                         picVerticalSplitter->sizes().value(0))
                                           .value();
    }
    if (m_panes->isVisibleTo(this)) {
        gPerson.glngSplitterHorizontal = Twips::fromPixels(picSplitterHorizontal->mapTo(client, QPoint(0, 0)).y() +
                                                           picSplitterHorizontal->sizes().value(0))
                                             .value();
    }
    subResizeControls();
}

// The window's place and size for the person's settings row, in twips: the
// normal place even while maximized.
QRect frmMain::normalGeometry() const
{
    const QRect place = isMaximized() || isFullScreen() ? QMainWindow::normalGeometry() : geometry();
    return twipsOf(place);
}

void frmMain::setNormalGeometry(const QRect& place)
{
    if (windowState() == Qt::WindowNoState) {
        setGeometry(pixelsOf(place));
    }
}
