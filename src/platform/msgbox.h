#pragma once
// The one gateway for message boxes. Logic calls MsgBox() with VB's prompt,
// button/icon flags and title, and gets VB's answer code back.
//
// Behind it: a QMessageBox in the program (installed by the client), a scripted
// responder in tests, and, when the environment names them, a file of answers
// and a log file, so end-to-end tests can drive the real binaries:
//   VESKOR_MSGBOX_ANSWERS=file  one answer a line ("OK", "Cancel", "Yes", "No",
//                               "Retry", "Abort", "Ignore" or a number), used in order
//   VESKOR_MSGBOX_LOG=file      every box appended as "title<TAB>flags<TAB>text"
//                               (text with CR and LF written as \r and \n); a box
//                               past the last answer adds a line "UNANSWERED" and
//                               takes its first button (see msgboxfile.h)

#include <QList>
#include <QString>
#include <memory>

namespace platform {

enum VbMsgBoxStyle : int
{
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbRetryCancel = 5,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton2 = 256,
    vbDefaultButton3 = 512,
};

enum VbMsgBoxResult : int
{
    vbOK = 1,
    vbCancel = 2,
    vbAbort = 3,
    vbRetry = 4,
    vbIgnore = 5,
    vbYes = 6,
    vbNo = 7
};

class MessageBoxes
{
public:
    virtual ~MessageBoxes() = default;
    virtual int show(const QString& prompt, int flags, const QString& title) = 0;
};

// Installs the implementation (nullptr restores the default, which is the
// environment-driven one when VESKOR_MSGBOX_ANSWERS is set, else one that writes
// the box to standard error and answers with the box's first button).
void setMessageBoxes(std::unique_ptr<MessageBoxes> impl);
MessageBoxes& messageBoxes();

// VB's MsgBox. An empty title shows the application's title.
int MsgBox(const QString& prompt, int flags = vbOKOnly, const QString& title = QString());

// The implementation used when none is installed, chosen by the environment as
// described above.
std::unique_ptr<MessageBoxes> defaultMessageBoxes();
// True when VESKOR_MSGBOX_ANSWERS names a file of answers.
bool fileDrivenMessageBoxesRequested();

// VB's App.Title: the title of a box given none. Until set, the application's name.
void setAppTitle(const QString& title);
QString appTitle();
// The title a box shows: the one given, or appTitle() when it is empty.
QString shownTitle(const QString& title);

// The answers of the button set of flags (flags & 7), its buttons in VB's order.
QList<int> buttonAnswers(int flags);
// The answer the set's first button gives.
int firstButtonAnswer(int flags);
// Whether the button set of flags has a button that gives this answer.
bool buttonSetHas(int flags, int answer);
// "OK", "Yes"... to the answer code; 0 when not a known word or number.
int answerFromText(const QString& text);
// The answer code as its word ("Retry"), or the number when it is no answer.
QString answerName(int code);
// The text on one line: CR, LF and TAB written as \r, \n and \t.
QString escapeBoxText(const QString& text);

} // namespace platform
