#pragma once
// Message boxes answered from a file and written to a log, so that end-to-end
// tests can drive the real binaries (VESKOR_MSGBOX_ANSWERS / VESKOR_MSGBOX_LOG).

#include "platform/msgbox.h"

#include <QStringList>

namespace platform {

class FileMessageBoxes : public MessageBoxes
{
public:
    // answersFile: one answer a line, blank lines skipped; read once, here.
    // logFile: appended to for every box; empty for no log.
    FileMessageBoxes(const QString& answersFile, const QString& logFile);

    // Logs "title<TAB>flags<TAB>text" and answers with the next line of the file.
    // When the answers have run out, logs "UNANSWERED"; when the next answer is no
    // answer or not one of the box's buttons, logs "BAD ANSWER<TAB>line". Both
    // then take the box's first button.
    int show(const QString& prompt, int flags, const QString& title) override;

private:
    void log(const QString& line) const;

    QStringList m_answers;
    qsizetype m_next = 0;
    QString m_logFile;
};

} // namespace platform
