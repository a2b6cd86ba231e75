#pragma once
// Message boxes for tests: answers come from a queue the test fills, and every
// box shown is kept for the test to look at.
//
//   gw.boxes().answer(platform::vbRetry).answer(platform::vbCancel);
//   ...code under test...
//   QCOMPARE(gw.boxes().count(), 2);
//   QVERIFY(gw.boxes().last().prompt.contains("veskor.mdb"));
//
// A box with no answer queued fails the running test with the box's text, and
// takes the box's first button so the code under test can go on. So does a queued
// answer that is not one of the box's buttons.

#include "platform/msgbox.h"

#include <QList>
#include <QQueue>
#include <QString>

struct ShownBox
{
    QString prompt;
    int flags = 0;
    QString title; // as given: empty when the code left it to the application's title
    int answer = 0;

    int icon() const
    {
        return flags & 0x70;
    }
};

class ScriptedMessageBoxes : public platform::MessageBoxes
{
public:
    int show(const QString& prompt, int flags, const QString& title) override;

    // Queues the answer for the next box (or boxes) that have none yet.
    ScriptedMessageBoxes& answer(int vbAnswer, int times = 1);

    const QList<ShownBox>& shown() const;
    qsizetype count() const;
    // The last box shown; an empty box (flags 0, answer 0) when none was.
    ShownBox last() const;
    // The prompts of all boxes shown, in order.
    QStringList prompts() const;

private:
    QQueue<int> m_answers;
    QList<ShownBox> m_shown;
};
