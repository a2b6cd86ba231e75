#include "platform/msgbox.h"

#include "platform/installed.h"
#include "platform/msgboxfile.h"

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

namespace platform {

namespace {

// Shows nothing: writes the box to standard error and takes the first button, so a
// run without a screen never waits for an answer nobody can give.
class StderrMessageBoxes : public MessageBoxes
{
public:
    int show(const QString& prompt, int flags, const QString& title) override
    {
        const int answer = firstButtonAnswer(flags);
        QTextStream err(stderr);
        err << "[" << shownTitle(title) << "] " << escapeBoxText(prompt) << " (flags " << flags << ", answered "
            << answerName(answer) << ")\n";
        err.flush();
        return answer;
    }
};

QString& titleOverride()
{
    static QString title;
    return title;
}

} // namespace

std::unique_ptr<MessageBoxes> defaultMessageBoxes()
{
    const QString answers = qEnvironmentVariable("VESKOR_MSGBOX_ANSWERS");
    if (!answers.isEmpty()) {
        return std::make_unique<FileMessageBoxes>(answers, qEnvironmentVariable("VESKOR_MSGBOX_LOG"));
    }
    return std::make_unique<StderrMessageBoxes>();
}

bool fileDrivenMessageBoxesRequested()
{
    return !qEnvironmentVariable("VESKOR_MSGBOX_ANSWERS").isEmpty();
}

void setMessageBoxes(std::unique_ptr<MessageBoxes> impl)
{
    install(std::move(impl));
}

MessageBoxes& messageBoxes()
{
    return installedOr<MessageBoxes>([] { return defaultMessageBoxes(); });
}

int MsgBox(const QString& prompt, int flags, const QString& title)
{
    return messageBoxes().show(prompt, flags, title);
}

void setAppTitle(const QString& title)
{
    titleOverride() = title;
}

QString appTitle()
{
    if (!titleOverride().isEmpty()) {
        return titleOverride();
    }
    return QCoreApplication::applicationName();
}

QString shownTitle(const QString& title)
{
    return title.isEmpty() ? appTitle() : title;
}

QList<int> buttonAnswers(int flags)
{
    switch (flags & 7) {
    case vbOKCancel:
        return {vbOK, vbCancel};
    case vbAbortRetryIgnore:
        return {vbAbort, vbRetry, vbIgnore};
    case vbYesNoCancel:
        return {vbYes, vbNo, vbCancel};
    case vbYesNo:
        return {vbYes, vbNo};
    case vbRetryCancel:
        return {vbRetry, vbCancel};
    default:
        return {vbOK};
    }
}

int firstButtonAnswer(int flags)
{
    return buttonAnswers(flags).front();
}

bool buttonSetHas(int flags, int answer)
{
    return buttonAnswers(flags).contains(answer);
}

namespace {

struct AnswerWord
{
    const char* word;
    int code;
};

constexpr AnswerWord answerWords[] = {{"OK", vbOK},       {"Cancel", vbCancel}, {"Abort", vbAbort},
                                      {"Retry", vbRetry}, {"Ignore", vbIgnore}, {"Yes", vbYes},
                                      {"No", vbNo}};

} // namespace

int answerFromText(const QString& text)
{
    const QString word = text.trimmed();
    for (const auto& a : answerWords) {
        if (word.compare(QLatin1String(a.word), Qt::CaseInsensitive) == 0) {
            return a.code;
        }
    }
    bool ok = false;
    const int number = word.toInt(&ok);
    return ok && number >= vbOK && number <= vbNo ? number : 0;
}

QString answerName(int code)
{
    for (const auto& a : answerWords) {
        if (a.code == code) {
            return QLatin1String(a.word);
        }
    }
    return QString::number(code);
}

QString escapeBoxText(const QString& text)
{
    QString out = text;
    out.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    out.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    out.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return out;
}

} // namespace platform
