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
//                               (text with CR and LF written as \r and \n)

#include <QString>
#include <memory>

namespace platform {

enum VbMsgBoxStyle : int {
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

enum VbMsgBoxResult : int { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

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

// The button set of flags (flags & 7) and the answer its first button gives.
int firstButtonAnswer(int flags);
// "OK", "Yes"... to the answer code; 0 when not a known word or number.
int answerFromText(const QString& text);

} // namespace platform
