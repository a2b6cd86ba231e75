// frmOptions' controls, their frames and tabs, the place on the screen, and the
// two buttons that write nothing: Cancel and Help.
#include "options/frmoptions.h"

#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "platform/gui/spoken.h"
#include "platform/shell.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStackedLayout>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

QCheckBox* checkBox(QFrame* frame, const char* name, const QString& caption)
{
    auto* box = named(new QCheckBox(caption, frame), name, caption);
    frame->layout()->addWidget(box);
    return box;
}

QLabel* label(QFrame* frame, const char* name, const QString& text)
{
    auto* lbl = named(new QLabel(text, frame), name, text);
    lbl->setWordWrap(true);
    frame->layout()->addWidget(lbl);
    return lbl;
}

} // namespace

frmOptions::frmOptions(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmOptions"));
    setModal(true);
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Options"));
    buildControls();
    connect(cmdOkOptions, &QPushButton::clicked, this, &frmOptions::cmdOkOptions_Click);
    connect(cmdCancelOptions, &QPushButton::clicked, this, &frmOptions::cmdCancelOptions_Click);
    connect(cmdOptionsHelp, &QPushButton::clicked, this, &frmOptions::cmdOptionsHelp_Click);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            &frmOptions::cmdOptionsHelp_Click);
}

QFrame* frmOptions::addFrame(const QString& caption)
{
    auto* frame = named(new QFrame(this), "FrameOptions", caption);
    new QVBoxLayout(frame);
    FrameOptions << frame;
    TabStripOptions->addTab(caption);
    m_frames->addWidget(frame);
    return frame;
}

// A control array of option buttons, one choice at a time.
QList<QRadioButton*> frmOptions::addChoices(QFrame* frame, const char* name, const QStringList& captions)
{
    auto* group = new QButtonGroup(frame);
    auto* row = new QWidget(frame);
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(12, 4, 0, 4);
    QList<QRadioButton*> buttons;
    for (const QString& caption : captions) {
        auto* button = named(new QRadioButton(caption, row), name, caption);
        group->addButton(button);
        layout->addWidget(button);
        buttons << button;
    }
    frame->layout()->addWidget(row);
    return buttons;
}

void frmOptions::buildControls()
{
    TabStripOptions = named(new QTabBar(this), "TabStripOptions", QStringLiteral("Options"));
    m_frames = new QStackedLayout;
    connect(TabStripOptions, &QTabBar::currentChanged, m_frames, &QStackedLayout::setCurrentIndex);

    QFrame* general = addFrame(QStringLiteral("General"));
    chkAutoLogIn = checkBox(general, "chkAutoLogIn",
                            QStringLiteral("Auto Log In : When starting up, always set your Status to IN."));
    chkAutoLogOut = checkBox(general, "chkAutoLogOut",
                             QStringLiteral("Auto Log Out : When shutting down, always set your Status to OUT."));
    chkAutoClearComments =
        checkBox(general, "chkAutoClearComments",
                 QStringLiteral("Auto Clear Comments : Erase Due Back && Comments when Status is set to IN."));
    chkChangeScreenPopUp =
        checkBox(general, "chkChangeScreenPopUp",
                 QStringLiteral("Display Change Status screen when selecting the toolbar OUT button."));
    lblPhone = label(general, "lblPhone", QStringLiteral("Enter your Phone or Extension Number:"));
    txtPhone = named(new QLineEdit(general), "txtPhone", lblPhone->text());
    general->layout()->addWidget(txtPhone);

    QFrame* display = addFrame(QStringLiteral("Display"));
    chkListViewPopUp = checkBox(display, "chkListViewPopUp",
                                QStringLiteral("Display ListView (main screen) items as pop-up ToolTips."));
    chkDisplayTreeView =
        checkBox(display, "chkDisplayTreeView",
                 QStringLiteral("Display Groups in TreeView format. (Off will display Groups in Tab format)"));
    optIconSize = addChoices(display, "optIconSize", {QStringLiteral("Large Icons"), QStringLiteral("Small Icons")});
    optToolBarText = addChoices(display, "optToolBarText",
                                {QStringLiteral("No Toolbar Text"), QStringLiteral("Display Toolbar Text")});
    chkFontBoldDisplay = checkBox(display, "chkFontBoldDisplay", QStringLiteral("Bold Font"));
    lblSelectFontSize = label(display, "lblSelectFontSize", QStringLiteral("Select Font Size for main screen. (8)"));
    comboFontSizeDisplay = named(new QComboBox(display), "comboFontSizeDisplay", lblSelectFontSize->text());
    for (int size = 8; size <= 15; ++size) {
        comboFontSizeDisplay->addItem(QString::number(size));
    }
    display->layout()->addWidget(comboFontSizeDisplay);
    display->layout()->setAlignment(comboFontSizeDisplay, Qt::AlignLeft);

    QFrame* minimize = addFrame(QStringLiteral("Minimize"));
    chkMinimizeOnClose = checkBox(
        minimize, "chkMinimizeOnClose",
        QStringLiteral("Minimize on Close : Send to the SysTray or Task Bar when you select [X] (close window)."));
    lblMinimizeOnCloseWarning =
        label(minimize, "lblMinimizeOnCloseWarning",
              QStringLiteral("NOTE: With 'Minimize on Close' selected, VESK-OR will only shut down from the System "
                             "Tray or Task Bar 'close' command."));
    optSysTrayTaskBar =
        addChoices(minimize, "optSysTrayTaskBar",
                   {QStringLiteral("Display in System Tray ONLY."), QStringLiteral("Display on Task Bar ONLY."),
                    QStringLiteral("Display in System Tray AND on Task Bar.")});

    QFrame* refresh = addFrame(QStringLiteral("Refresh Rate"));
    optionRefreshRate =
        addChoices(refresh, "optionRefreshRate",
                   {QStringLiteral("Once every 60 minutes."), QStringLiteral("Never"),
                    QStringLiteral("Once per minute."), QStringLiteral("Once every 5 minutes."),
                    QStringLiteral("Once every 15 minutes."), QStringLiteral("Once every 30 minutes.")});
    for (QFrame* frame : FrameOptions) {
        static_cast<QVBoxLayout*>(frame->layout())->addStretch();
    }

    cmdOkOptions = named(new QPushButton(QStringLiteral("OK"), this), "cmdOkOptions", QStringLiteral("OK"));
    cmdOkOptions->setDefault(true);
    cmdCancelOptions =
        named(new QPushButton(QStringLiteral("&Cancel"), this), "cmdCancelOptions", QStringLiteral("&Cancel"));
    cmdOptionsHelp = named(new QPushButton(QStringLiteral("&Help"), this), "cmdOptionsHelp", QStringLiteral("&Help"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {cmdOkOptions, cmdCancelOptions, cmdOptionsHelp}) {
        buttons->addWidget(button);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(TabStripOptions);
    layout->addLayout(m_frames);
    layout->addLayout(buttons);
}

// Load, then centred on the screen and shown modally.
int frmOptions::exec()
{
    if (!Form_Load()) {
        return Rejected;
    }
    adjustSize();
    centreOnScreen(this);
    return QDialog::exec();
}

void frmOptions::cmdCancelOptions_Click()
{
    reject();
}

void frmOptions::cmdOptionsHelp_Click()
{
    platform::shell().showHelp(gRun.gstrHelpFile, kHelpContext);
}
