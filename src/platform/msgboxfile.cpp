#include "platform/msgboxfile.h"

#include <QFile>
#include <QTextStream>

namespace platform {

FileMessageBoxes::FileMessageBoxes(const QString& answersFile, const QString& logFile) : m_logFile(logFile)
{
    QFile file(answersFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return; // every box then goes unanswered, and the log says so
    }
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (!line.isEmpty()) {
            m_answers.append(line);
        }
    }
}

int FileMessageBoxes::show(const QString& prompt, int flags, const QString& title)
{
    log(escapeBoxText(shownTitle(title)) + QLatin1Char('\t') + QString::number(flags) + QLatin1Char('\t') +
        escapeBoxText(prompt));
    if (m_next >= m_answers.size()) {
        log(QStringLiteral("UNANSWERED"));
        return firstButtonAnswer(flags);
    }
    const QString line = m_answers.at(m_next++);
    const int answer = answerFromText(line);
    if (!buttonSetHas(flags, answer)) {
        log(QStringLiteral("BAD ANSWER\t") + line);
        return firstButtonAnswer(flags);
    }
    return answer;
}

void FileMessageBoxes::log(const QString& line) const
{
    if (m_logFile.isEmpty()) {
        return;
    }
    // Opened and closed for each line, so the log is complete even when the run
    // ends straight after the box.
    QFile file(m_logFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        return;
    }
    QTextStream out(&file);
    out << line << '\n';
}

} // namespace platform
