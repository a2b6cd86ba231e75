// frmMsgsPreview: the toolbar, the state of its buttons by the row clicked, and
// the commands behind it.
#include "kernel/globals.h"
#include "messaging/gui/frmmsgspreview.h"
#include "messaging/gui/messageparts.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/messagestore.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "status/statuscommon.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QShortcut>
#include <QToolBar>
#include <QTreeWidget>
#include <array>

namespace {

struct Button
{
    const char* key;
    const char* toolTip;
};

const Button kButtons[] = {
    {"View", " View selected VESK-OR message "},
    {"New", "Create new message"},
    {"Reply", "Reply to selected message"},
    {"Reply All", "Reply to All"},
    {"Forward", "Forward selected message"},
    {"eMail", "Send eMail "},
    {"QUIL", "Send QUIL message "},
    {"Print", "Print selected message(s) "},
    {"Delete", "Delete selected message(s)"},
    {"Refresh", "Refresh preview screen"},
    {"Help", "Display preview message Help"},
};

// The buttons that follow the row clicked, in the order of the state table.
const char* const kFive[] = {"View", "Reply", "Delete", "Forward", "Print"};
using FiveStates = std::array<bool, 5>;

struct CategoryState
{
    const char* category;
    FiveStates state; // View, Reply, Delete, Forward, Print
};

const CategoryState kStates[] = {
    {"Deleted", {true, true, false, true, true}}, {"Read", {true, true, true, true, true}},
    {"Sent", {true, true, true, true, true}},     {"New", {true, true, true, true, true}},
    {"Forward", {true, true, true, true, true}},  {"Draft", {true, false, true, true, true}},
};

// The preview's help: the help file at its contents.
constexpr int kHelpContext = 0;

} // namespace

void frmMsgsPreview::buildToolbar()
{
    ToolbarMsgsPreview->setMovable(false);
    for (const Button& button : kButtons) {
        const QString key = QLatin1String(button.key);
        auto* action = new QAction(key, ToolbarMsgsPreview);
        action->setObjectName(key);
        action->setData(key);
        action->setToolTip(QLatin1String(button.toolTip));
        ToolbarMsgsPreview->addAction(action);
        if (QWidget* widget = ToolbarMsgsPreview->widgetForAction(action)) {
            widget->setObjectName(key);
            widget->setFocusPolicy(Qt::TabFocus); // reached by Tab, pressed by the space bar
            widget->setAccessibleName(key);
            widget->setAccessibleDescription(action->toolTip());
        }
    }
    connect(ToolbarMsgsPreview, &QToolBar::actionTriggered, this,
            [this](QAction* button) { ToolbarMsgsPreview_ButtonClick(button->data().toString()); });
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            [] { platform::shell().showHelp(gRun.gstrHelpFile, kHelpContext); });
}

// The large or the small pictures, and the keys as captions or none, by the
// person's toolbar settings.
void frmMsgsPreview::subBindMsgsPreviewToolBar()
{
    status::Trap trap([](const VbError&) {
        errorbox::showGeneral(QStringLiteral("frmMsgsPreview - subBindMsgsPreviewToolBar event"), errorbox::Joined);
        return status::Resume::Next;
    });
    const bool large = gPerson.gintIconSize == 0;
    const bool captions = gPerson.gintToolBarText != 0;
    const int side = large ? 32 : 16;
    ToolbarMsgsPreview->setIconSize(QSize(side, side));
    ToolbarMsgsPreview->setToolButtonStyle(captions ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
    for (QAction* button : ToolbarMsgsPreview->actions()) {
        trap([&] { button->setIcon(msgparts::messageIcon(button->data().toString())); });
    }
}

QAction* frmMsgsPreview::toolbarButton(const QString& key) const
{
    for (QAction* button : ToolbarMsgsPreview->actions()) {
        if (button->data().toString() == key) {
            return button;
        }
    }
    return nullptr;
}

void frmMsgsPreview::setFiveButtons(bool enabled)
{
    for (const char* key : kFive) {
        toolbarButton(QLatin1String(key))->setEnabled(enabled);
    }
}

void frmMsgsPreview::subSetButtonsFor(const QString& category, bool rowSelected)
{
    FiveStates state{};
    for (const CategoryState& known : kStates) {
        if (rowSelected && category == QLatin1String(known.category)) {
            state = known.state;
        }
    }
    for (size_t i = 0; i < state.size(); ++i) {
        toolbarButton(QLatin1String(kFive[i]))->setEnabled(state[i]);
    }
}

void frmMsgsPreview::ToolbarMsgsPreview_ButtonClick(const QString& key)
{
    if (key == QLatin1String("View")) {
        subMsgsPreview_Command_View();
    } else if (key == QLatin1String("New")) {
        subMsgsPreview_Command_New();
    } else if (key == QLatin1String("Reply")) {
        subMsgsPreview_Command_Reply();
    } else if (key == QLatin1String("Forward")) {
        subMsgsPreview_Command_Forward();
    } else if (key == QLatin1String("Delete")) {
        subMsgsPreview_Command_Delete();
    } else if (key == QLatin1String("Refresh")) {
        subMsgsPreview_Command_refresh();
    } else if (key == QLatin1String("Help")) {
        platform::shell().showHelp(gRun.gstrHelpFile, kHelpContext);
    } else {
        // "Reply All", "eMail", "QUIL" and "Print" have no routine.
        platform::MsgBox(QStringLiteral("Invalid selection!"), platform::vbCritical, QStringLiteral("Error!"));
    }
}

void frmMsgsPreview::openMessage(const QString& action, long long id)
{
    gstrMessageAction = action;
    subOpenMessage(this, id);
}

void frmMsgsPreview::subMsgsPreview_Command_View()
{
    if (const long long id = selectedMessageId()) {
        openMessage(QStringLiteral("View"), id);
        QCoreApplication::processEvents();
        subMsgsPreview_Command_refresh();
    }
}

void frmMsgsPreview::subMsgsPreview_Command_New()
{
    openMessage(QStringLiteral("New"), 0);
    subMsgsPreview_Command_refresh();
}

void frmMsgsPreview::subMsgsPreview_Command_Reply()
{
    if (const long long id = selectedMessageId()) {
        openMessage(QStringLiteral("Reply"), id);
    }
}

void frmMsgsPreview::subMsgsPreview_Command_Forward()
{
    if (const long long id = selectedMessageId()) {
        openMessage(QStringLiteral("Forward"), id);
        subMsgsPreview_Command_refresh();
    }
}

// Every row selected becomes "Deleted", after one question.
void frmMsgsPreview::subMsgsPreview_Command_Delete()
{
    QList<long long> ids;
    for (int i = 0; i < listMsgsPreview->topLevelItemCount(); ++i) {
        if (const QTreeWidgetItem* row = listMsgsPreview->topLevelItem(i); row->isSelected()) {
            ids << row->text(colMessageID).toLongLong();
        }
    }
    if (ids.isEmpty() || platform::MsgBox(QStringLiteral("Are you sure you want to delete the selected message(s)?"),
                                          platform::vbYesNo | platform::vbQuestion,
                                          QStringLiteral("Delete Confirmation Required")) != platform::vbYes) {
        return;
    }
    messaging::subMarkMessagesDeleted(ids);
    subMsgsPreview_Command_refresh();
    if (listMsgsPreview->topLevelItemCount() == 0) {
        setFiveButtons(false);
    }
}

void frmMsgsPreview::subMsgsPreview_Command_refresh()
{
    subLoad_MsgsPreview_ListView(selectedNodeKey());
}
