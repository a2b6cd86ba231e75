#include "kernel/mainscreen.h"

#include "kernel/globals.h"

#include <memory>

void MainScreen::setCaption(const QString& caption)
{
    m_caption = caption;
}

QString MainScreen::caption() const
{
    return m_caption;
}

bool MainScreen::isMinimized() const
{
    return false;
}

void MainScreen::minimize()
{
}

void MainScreen::setBusyPointer(bool)
{
}

void MainScreen::unload()
{
}

bool MainScreen::isLoaded() const
{
    return false;
}

void MainScreen::setPanelText(int panel, const QString& text)
{
    if (panel >= 1 && panel <= 5) {
        m_panels[panel - 1] = text;
    }
}

QString MainScreen::panelText(int panel) const
{
    return panel >= 1 && panel <= 5 ? m_panels[panel - 1] : QString();
}

void MainScreen::setPanelToolTip(int panel, const QString& text)
{
    if (panel >= 1 && panel <= 5) {
        m_panelTips[panel - 1] = text;
    }
}

QString MainScreen::panelToolTip(int panel) const
{
    return panel >= 1 && panel <= 5 ? m_panelTips[panel - 1] : QString();
}

void MainScreen::setTrayTip(const QString& tip)
{
    m_trayTip = tip;
}

QString MainScreen::trayTip() const
{
    return m_trayTip;
}

QStringList MainScreen::listHeaders() const
{
    return {};
}

int MainScreen::listRowCount() const
{
    return 0;
}

bool MainScreen::selectedItemIsSelected() const
{
    return false;
}

QString MainScreen::selectedItemText(int) const
{
    return {};
}

QStringList MainScreen::selectedRowTexts(int) const
{
    return {};
}

void MainScreen::clearList()
{
}

QList<ListColumn> MainScreen::listColumns() const
{
    return {};
}

void MainScreen::clearSortArrows()
{
}

QRect MainScreen::normalGeometry() const
{
    return m_geometry;
}

void MainScreen::setNormalGeometry(const QRect& geometry)
{
    m_geometry = geometry;
}

bool MainScreen::groupButtonEnabled() const
{
    return false;
}

void MainScreen::setToolbarTag(const QString& tag)
{
    m_toolbarTag = tag;
}

QString MainScreen::toolbarTag() const
{
    return m_toolbarTag;
}

void MainScreen::clearGroups()
{
}

void MainScreen::addGroup(const QString&)
{
}

bool MainScreen::selectGroup(const QString&)
{
    return false;
}

void MainScreen::subRefreshUserList(const QString&)
{
}

void MainScreen::subLoadToolBarButtons()
{
}

void MainScreen::subReadGroups()
{
}

void MainScreen::subSetToolBarRights()
{
}

void MainScreen::subTaskBarSysTrayActivation()
{
}

void MainScreen::subUnloadSysTrayIcon()
{
}

bool MainScreen::sysTrayIconExists() const
{
    return false;
}

void MainScreen::subCreateSysTrayIcon()
{
}

void MainScreen::applyDisplayFont()
{
}

void MainScreen::subResizeControls()
{
}

void MainScreen::subUnloadAllForms()
{
}

void MainScreen::showStatusScreen()
{
}

void MainScreen::showGroupScreen()
{
}

namespace {

MainScreen* g_screen = nullptr;
std::function<MainScreen*()> g_factory;
std::unique_ptr<MainScreen> g_standIn;

MainScreen& standIn()
{
    if (!g_standIn) {
        g_standIn = std::make_unique<MainScreen>();
    }
    return *g_standIn;
}

} // namespace

MainScreen& mainScreen()
{
    return g_screen ? *g_screen : standIn();
}

MainScreen& loadMainScreen()
{
    if (!g_screen && g_factory) {
        // The factory's screen registers itself through setMainScreen().
        MainScreen* made = g_factory();
        if (!g_screen) {
            g_screen = made;
        }
    }
    return g_screen ? *g_screen : standIn();
}

void setMainScreenFactory(std::function<MainScreen*()> factory)
{
    g_factory = std::move(factory);
}

void setMainScreen(MainScreen* screen)
{
    g_screen = screen;
}

bool mainScreenLoaded()
{
    return g_screen != nullptr;
}

void resetMainScreen()
{
    g_screen = nullptr;
    g_factory = nullptr;
    g_standIn.reset();
}

QString fnOwnStatusCaption()
{
    return gRun.gstrProgramTitle + QStringLiteral(" - [") + gRun.gstrDefaultUser + QStringLiteral("] '") +
           gRun.gstrCurrentStatus + QStringLiteral("'");
}

QString fnOwnStatusTrayTip()
{
    return gRun.gstrProgramTitle + QStringLiteral(" [") + gRun.gstrDefaultUser + QStringLiteral("] '") +
           gRun.gstrCurrentStatus + QStringLiteral("'");
}
