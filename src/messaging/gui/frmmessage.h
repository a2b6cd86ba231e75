#pragma once
// frmMessage: the one screen on which a message is written, saved, sent, read,
// answered, forwarded and deleted. Every opening is a window of its own, not
// modal, gone when it closes; what it is for comes from gstrMessageAction. Its
// whole state is in its controls, and every command reads them back.

#include <QIcon>
#include <QMainWindow>
#include <QPixmap>

namespace messaging {
struct ComposeFields;
struct StoredMessage;
} // namespace messaging

class QAction;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QStatusBar;
class QToolBar;

class frmMessage : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMessage(QWidget* parent = nullptr);

    QLineEdit* txtMsgID;        // MessageID of the copy shown; empty for one not stored (hidden)
    QLineEdit* txtCategory;     // its Category (hidden)
    QLineEdit* txtOriginalSent; // its date of sending (hidden)
    QLabel* lblTakenByCaption;
    QLabel* lblTakenBy;
    QPushButton* cmdTo;
    QLineEdit* txtTo;
    QLabel* lblFrom;
    QLineEdit* txtFrom;
    QLabel* lblSubject;
    QLineEdit* txtSubject;
    QPlainTextEdit* txtBody;
    QLabel* lblLastUsed;
    QLabel* lblTip;
    QLabel* imgTarget; // the picture of the mode
    QToolBar* ToolbarNewMessage;
    QStatusBar* StatusBarNewMessage;

    // The help topic of the mode the screen was made for.
    int HelpContextID = 0;

    // Caption from gstrMessageAction, and the middle of the display.
    void Form_Load();
    // Fills the screen for gstrMessageAction from the copy messageId (0 for New).
    void subCreateMessage(QWidget* caller, long long messageId);

    void subBindMsgsToolBar();
    void subMessage_New(QWidget* caller);
    void subMessage_Reply(long long messageId);
    void subMessage_Forward(long long messageId);
    void subMessage_View(long long messageId);

    // A button of ToolbarNewMessage by its key, or the key "Exit" that no button has.
    void ToolbarNewMessage_ButtonClick(const QString& key);
    QAction* toolbarButton(const QString& key) const;

    void subSendMessage();
    void cmdMessage_Save();
    void subDeleteMessage();
    void subExitMessage();
    void cmdTo_Click();
    void showHelp();

    QString bodyText() const; // the body as stored
    void fillAnswer(long long id, const QString& errorTitle,
                    messaging::ComposeFields (*fields)(const messaging::StoredMessage&, const QString&));

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildToolbar();
    // Shows exactly the buttons named; the others are hidden.
    void showButtons(const QStringList& keys);
    void setFieldsLocked(bool toAndFrom, bool subjectAndBody);
    // A failure of the database on the way: the screen stays, and says what was not done.
    void reportFailure(const QString& procedure, int number, const QString& description, const QString& outcome);

    long long messageId() const;
};
