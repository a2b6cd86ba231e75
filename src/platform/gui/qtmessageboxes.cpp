#include "platform/gui/qtmessageboxes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <memory>

namespace platform {

namespace {

using Button = QMessageBox::StandardButton;

struct ButtonSet
{
    QList<Button> buttons; // in VB's order: the default-button flags count in it
    Button escape;         // NoButton: Escape and the close box do nothing
};

ButtonSet buttonSetOf(int flags)
{
    switch (flags & 7) {
    case vbOKCancel:
        return {{QMessageBox::Ok, QMessageBox::Cancel}, QMessageBox::Cancel};
    case vbAbortRetryIgnore:
        return {{QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore}, QMessageBox::NoButton};
    case vbYesNoCancel:
        return {{QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}, QMessageBox::Cancel};
    case vbYesNo:
        return {{QMessageBox::Yes, QMessageBox::No}, QMessageBox::No};
    case vbRetryCancel:
        return {{QMessageBox::Retry, QMessageBox::Cancel}, QMessageBox::Cancel};
    default:
        return {{QMessageBox::Ok}, QMessageBox::Ok};
    }
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

int answerOf(Button button)
{
    switch (button) {
    case QMessageBox::Cancel:
        return vbCancel;
    case QMessageBox::Abort:
        return vbAbort;
    case QMessageBox::Retry:
        return vbRetry;
    case QMessageBox::Ignore:
        return vbIgnore;
    case QMessageBox::Yes:
        return vbYes;
    case QMessageBox::No:
        return vbNo;
    default:
        return vbOK;
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
    const ButtonSet set = buttonSetOf(flags);
    // On the heap: an end of the run while the box waits (a timer's End) deletes
    // the windows, this box with its owner among them, and never comes back here.
    const QPointer<QMessageBox> shown = new QMessageBox(QApplication::activeWindow());
    QMessageBox& box = *shown;
    box.setWindowTitle(shownTitle(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(linesOf(prompt));
    box.setIcon(iconOf(flags));
    for (const Button b : set.buttons) {
        box.addButton(b);
    }
    const qsizetype defaultIndex = (flags & (vbDefaultButton2 | vbDefaultButton3)) >> 8;
    box.setDefaultButton(set.buttons.value(defaultIndex, set.buttons.front()));
    NoEscape noEscape;
    if (set.escape == QMessageBox::NoButton) {
        box.installEventFilter(&noEscape);
    } else {
        box.setEscapeButton(set.escape);
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
    return set.escape != QMessageBox::NoButton ? answerOf(set.escape) : firstButtonAnswer(flags);
}

} // namespace platform
