// frmMessage's controls, its place on the display, the keys of the screen as a
// whole, the closing, and the To button.
#include "messaging/gui/frmmessage.h"

#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/messagestore.h"
#include "platform/gui/screenplace.h"
#include "platform/gui/spoken.h"
#include "platform/msgbox.h"
#include "platform/shell.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

QString gstrMessageAction;

frmMessage::frmMessage(QWidget* parent)
    : QMainWindow(parent), txtMsgID(new QLineEdit(this)), txtCategory(new QLineEdit(this)),
      txtOriginalSent(new QLineEdit(this)), lblTakenByCaption(new QLabel(QStringLiteral("Taken By:"))),
      lblTakenBy(new QLabel), cmdTo(new QPushButton(QStringLiteral("&To:"))), txtTo(new QLineEdit),
      lblFrom(new QLabel(QStringLiteral("&From:"))), txtFrom(new QLineEdit),
      lblSubject(new QLabel(QStringLiteral("&Subject:"))), txtSubject(new QLineEdit), txtBody(new QPlainTextEdit),
      lblLastUsed(new QLabel(QStringLiteral("Last Read:"))),
      lblTip(new QLabel(QStringLiteral("Tip: You can send the same message to multiple users by selecting them "
                                       "from the main screen first."))),
      imgTarget(new QLabel), ToolbarNewMessage(new QToolBar(this)), StatusBarNewMessage(new QStatusBar(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::Window);
    setObjectName(QStringLiteral("frmMessage"));
    for (QLineEdit* hidden : {txtMsgID, txtCategory, txtOriginalSent}) {
        hidden->hide();
    }

    lblTakenBy->setToolTip(QStringLiteral(" The name of the user sending the message "));
    txtTo->setToolTip(QStringLiteral(" Press the TO button to select users "));
    txtFrom->setToolTip(QStringLiteral(" Enter who the message is FROM "));
    txtSubject->setToolTip(QStringLiteral(" Enter the message SUBJECT "));
    txtBody->setToolTip(QStringLiteral(" Enter the message here (or paste msg into this window)"));
    cmdTo->setToolTip(QStringLiteral(" Display User Selection Screen "));
    lblTip->setWordWrap(true);
    lblFrom->setBuddy(txtFrom);
    lblSubject->setBuddy(txtSubject);

    const std::pair<QWidget*, const char*> named[] = {
        {txtMsgID, "txtMsgID"},
        {txtCategory, "txtCategory"},
        {txtOriginalSent, "txtOriginalSent"},
        {lblTakenByCaption, "lblTakenByCaption"},
        {lblTakenBy, "lblTakenBy"},
        {cmdTo, "cmdTo"},
        {txtTo, "txtTo"},
        {lblFrom, "lblFrom"},
        {txtFrom, "txtFrom"},
        {lblSubject, "lblSubject"},
        {txtSubject, "txtSubject"},
        {txtBody, "txtBody"},
        {lblLastUsed, "lblLastUsed"},
        {lblTip, "lblTip"},
        {imgTarget, "imgTarget"},
        {ToolbarNewMessage, "ToolbarNewMessage"},
        {StatusBarNewMessage, "StatusBarNewMessage"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(QString::fromLatin1(name));
    }
    txtMsgID->setAccessibleName(QStringLiteral("Message ID"));
    txtCategory->setAccessibleName(QStringLiteral("Category"));
    txtOriginalSent->setAccessibleName(QStringLiteral("Original Sent"));
    lblTakenBy->setAccessibleName(lblTakenByCaption->text());
    cmdTo->setAccessibleName(spokenCaption(cmdTo->text()));
    txtTo->setAccessibleName(spokenCaption(cmdTo->text()));
    txtFrom->setAccessibleName(spokenCaption(lblFrom->text()));
    txtSubject->setAccessibleName(spokenCaption(lblSubject->text()));
    txtBody->setAccessibleName(QStringLiteral("Message"));
    imgTarget->setAccessibleName(QStringLiteral("Message picture"));
    ToolbarNewMessage->setAccessibleName(QStringLiteral("Message commands"));
    StatusBarNewMessage->setAccessibleName(QStringLiteral("Status"));
    for (QLabel* text : {lblTakenByCaption, lblFrom, lblSubject, lblLastUsed, lblTip}) {
        text->setAccessibleName(spokenCaption(text->text()));
    }

    auto* fields = new QGridLayout;
    fields->addWidget(lblTakenByCaption, 0, 0);
    fields->addWidget(lblTakenBy, 0, 1);
    fields->addWidget(cmdTo, 1, 0);
    fields->addWidget(txtTo, 1, 1);
    fields->addWidget(lblFrom, 2, 0);
    fields->addWidget(txtFrom, 2, 1);
    fields->addWidget(lblSubject, 3, 0);
    fields->addWidget(txtSubject, 3, 1);
    fields->setColumnStretch(1, 1);
    auto* head = new QHBoxLayout;
    head->addWidget(imgTarget, 0, Qt::AlignTop);
    head->addLayout(fields, 1);
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->addLayout(head);
    column->addWidget(txtBody, 1);
    column->addWidget(lblLastUsed);
    column->addWidget(lblTip);
    setCentralWidget(central);
    setStatusBar(StatusBarNewMessage);
    buildToolbar();
    resize(560, 460);

    // The screen as a whole sees each key first; each control names itself on
    // the status bar while the mouse is over it.
    for (QWidget* control : std::initializer_list<QWidget*>{lblTakenBy, cmdTo, txtTo, txtFrom, txtSubject, txtBody}) {
        control->installEventFilter(this);
    }
    connect(cmdTo, &QPushButton::clicked, this, &frmMessage::cmdTo_Click);
}

void frmMessage::Form_Load()
{
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - ") + gstrMessageAction + QStringLiteral(" Message"));
    centreOnScreen(this);
}

bool frmMessage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter) {
        StatusBarNewMessage->showMessage(static_cast<QWidget*>(watched)->toolTip());
    } else if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape || key->key() == Qt::Key_F1) {
            keyPressEvent(key);
            return true;
        }
        // The text goes into statements between double quotes: a typed double
        // quote becomes an apostrophe. The To line keeps what is typed.
        if (key->text() == QStringLiteral("\"") && watched != txtTo) {
            QKeyEvent apostrophe(QEvent::KeyPress, Qt::Key_Apostrophe, key->modifiers(), QStringLiteral("'"));
            QCoreApplication::sendEvent(watched, &apostrophe);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMessage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close(); // no question asked
    } else if (event->key() == Qt::Key_F1) {
        showHelp();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

void frmMessage::showHelp()
{
    platform::shell().showHelp(gRun.gstrHelpFile, HelpContextID);
}

// A copy viewed is read once its screen closes; the Preview Messages list, when
// shown, is read again.
void frmMessage::closeEvent(QCloseEvent* event)
{
    if (messaging::fnMarksReadOnClose(gstrMessageAction, txtCategory->text())) {
        try {
            messaging::subMarkMessageRead(messageId());
        } catch (const VbError& error) {
            subCloseDatabase();
            reportFailure(QStringLiteral("frmMessage - Form_Unload event"), error.number(), error.description(),
                          QStringLiteral("The message is still marked as new."));
        }
    }
    subRefreshMsgsPreviewIfVisible();
    QMainWindow::closeEvent(event);
}

void frmMessage::cmdTo_Click()
{
    if (gstrMessageAction == QStringLiteral("View")) {
        return;
    }
    // The selection screen may outlive this one.
    QPointer<frmMessage> self(this);
    MessagesToSelectionInitialize(this, txtTo->text(), [self](const QString& toLine) {
        if (self) {
            self->txtTo->setText(toLine);
        }
    });
}

long long frmMessage::messageId() const
{
    return txtMsgID->text().trimmed().toLongLong();
}

void frmMessage::reportFailure(const QString& procedure, int number, const QString& description, const QString& outcome)
{
    platform::MsgBox(QStringLiteral("Error (%1 ) in %2\r%3\r\r%4").arg(number).arg(procedure, description, outcome),
                     platform::vbExclamation, gRun.gstrProgramTitle + QStringLiteral(" - Message Error"));
}

void subOpenMessage(QWidget* caller, long long messageId)
{
    auto* screen = new frmMessage;
    screen->Form_Load();
    screen->subCreateMessage(caller, messageId);
    screen->show();
    screen->activateWindow();
}

void subSaveOpenMessages()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* screen = qobject_cast<frmMessage*>(window);
        if (screen && screen->isVisible() && !screen->txtBody->isReadOnly()) {
            screen->cmdMessage_Save();
        }
    }
}
