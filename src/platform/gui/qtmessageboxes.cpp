#include "platform/gui/qtmessageboxes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <memory>
#include <utility>

namespace platform {

namespace {

using Button = QMessageBox::StandardButton;

// VB's answers and the buttons that give them.
constexpr std::pair<int, Button> kButtons[] = {{vbOK, QMessageBox::Ok},         {vbCancel, QMessageBox::Cancel},
                                               {vbAbort, QMessageBox::Abort},   {vbRetry, QMessageBox::Retry},
                                               {vbIgnore, QMessageBox::Ignore}, {vbYes, QMessageBox::Yes},
                                               {vbNo, QMessageBox::No}};

Button buttonOf(int answer)
{
    for (const auto& [code, button] : kButtons) {
        if (code == answer) {
            return button;
        }
    }
    return QMessageBox::Ok;
}

int answerOf(Button button)
{
    for (const auto& [code, shown] : kButtons) {
        if (shown == button) {
            return code;
        }
    }
    return vbOK;
}

// What Escape and the close box answer: Cancel where the set has it, else its
// last button (OK, No); Abort/Retry/Ignore has no such button (0).
int escapeAnswer(const QList<int>& answers)
{
    if (answers.contains(vbCancel)) {
        return vbCancel;
    }
    return answers.size() < 3 ? answers.back() : 0;
}

QMessageBox::Icon iconOf(int flags)
{
    switch (flags & 0x70) {
    case vbCritical:
        return QMessageBox::Critical;
    case vbQuestion:
        return QMessageBox::Question;
    case vbExclamation:
        return QMessageBox::Warning;
    case vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// QMessageBox would make Abort the Escape button of Abort/Retry/Ignore; VB's box
// has none there, so Escape and closing the window are swallowed.
class NoEscape : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Close) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

QString linesOf(QString prompt)
{
    prompt.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    prompt.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return prompt;
}

} // namespace

int QtMessageBoxes::show(const QString& prompt, int flags, const QString& title)
{
    const QList<int> answers = buttonAnswers(flags); // in VB's order: the default-button flags count in it
    const int escape = escapeAnswer(answers);
    // On the heap: an end of the run while the box waits (a timer's End) deletes
    // the windows, this box with its owner among them, and never comes back here.
    const QPointer<QMessageBox> shown = new QMessageBox(QApplication::activeWindow());
    QMessageBox& box = *shown;
    box.setWindowTitle(shownTitle(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(linesOf(prompt));
    box.setIcon(iconOf(flags));
    for (const int answer : answers) {
        box.addButton(buttonOf(answer));
    }
    const qsizetype defaultIndex = (flags & (vbDefaultButton2 | vbDefaultButton3)) >> 8;
    box.setDefaultButton(buttonOf(answers.value(defaultIndex, answers.front())));
    NoEscape noEscape;
    if (escape == 0) {
        box.installEventFilter(&noEscape);
    } else {
        box.setEscapeButton(buttonOf(escape));
    }
    box.exec();
    if (!shown) {
        return firstButtonAnswer(flags); // deleted with its owner while it waited
    }
    const std::unique_ptr<QMessageBox> done(shown.data());
    if (const QAbstractButton* clicked = box.clickedButton()) {
        return answerOf(box.standardButton(const_cast<QAbstractButton*>(clicked)));
    }
    // Closed without a button (the application quitting): what Escape would give.
    return escape != 0 ? escape : answers.front();
}

} // namespace platform
