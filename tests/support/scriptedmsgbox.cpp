#include "scriptedmsgbox.h"

#include <QStringList>
#include <QTest>

namespace {

void failTest(const QString& why, const QString& prompt, int flags, const QString& title)
{
    const QString message =
        QStringLiteral("%1: [%2] %3 (flags %4)").arg(why, title, platform::escapeBoxText(prompt)).arg(flags);
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

} // namespace

int ScriptedMessageBoxes::show(const QString& prompt, int flags, const QString& title)
{
    int answer = platform::firstButtonAnswer(flags);
    if (m_answers.isEmpty()) {
        failTest("Unexpected message box", prompt, flags, title);
    } else if (const int queued = m_answers.dequeue(); !platform::buttonSetHas(flags, queued)) {
        failTest(QStringLiteral("Queued answer %1 is no button of the box").arg(platform::answerName(queued)), prompt,
                 flags, title);
    } else {
        answer = queued;
    }
    m_shown.append({prompt, flags, title, answer});
    return answer;
}

ScriptedMessageBoxes& ScriptedMessageBoxes::answer(int vbAnswer, int times)
{
    for (int i = 0; i < times; ++i) {
        m_answers.enqueue(vbAnswer);
    }
    return *this;
}

const QList<ShownBox>& ScriptedMessageBoxes::shown() const
{
    return m_shown;
}

qsizetype ScriptedMessageBoxes::count() const
{
    return m_shown.size();
}

ShownBox ScriptedMessageBoxes::last() const
{
    return m_shown.isEmpty() ? ShownBox{} : m_shown.constLast();
}

QStringList ScriptedMessageBoxes::prompts() const
{
    QStringList out;
    for (const ShownBox& box : m_shown) {
        out.append(box.prompt);
    }
    return out;
}
