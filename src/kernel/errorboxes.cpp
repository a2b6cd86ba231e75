#include "kernel/errorboxes.h"

#include "kernel/constants.h"
#include "kernel/err.h"
#include "platform/msgbox.h"

namespace errorbox {

namespace {

} // namespace

QString vbStr(long long number)
{
    return number >= 0 ? QStringLiteral(" ") + QString::number(number) : QString::number(number);
}

QString numberText(long long number, NumberForm form)
{
    return form == StrBlank ? vbStr(number) : QString::number(number);
}

QString head(const QString& procedure, NumberForm form)
{
    return QStringLiteral("Error (") + numberText(Err.Number, form) + QStringLiteral(" ) in ") + procedure;
}

QString general(const QString& procedure, NumberForm form, bool closingCR)
{
    return head(procedure, form) + CR + Err.Description + (closingCR ? CR : QString());
}

QString startup(const QString& procedure)
{
    return general(procedure, Joined) + CR +
           QStringLiteral("Unable to start VESK-OR at this time. Please try again...");
}

QString update(long long number, const QString& description)
{
    return QStringLiteral("Error=") + QString::number(number) + CRLF + QStringLiteral(" Error message=") + description +
           QStringLiteral(". Update cancelled.");
}

QString retry(long long number, const QString& description)
{
    return QStringLiteral("Error: ") + QString::number(number) + QStringLiteral(" - ") + description + CRLF +
           QStringLiteral("Would you like to retry ?");
}

QString log(const QString& procedure)
{
    return QStringLiteral("Cannot complete the current operation due to the following error: (") + vbStr(Err.Number) +
           QStringLiteral(" ) ") + CR + Err.Description + CR + CR + QStringLiteral("Possible causes:") + CR +
           QStringLiteral("Someone was updating their status at the exact moment you selected OK.") + CR +
           QStringLiteral("Someone has the database open using MS Access.") + CR + CR + QStringLiteral(" ) in ") +
           procedure;
}

int showGeneral(const QString& procedure, NumberForm form, int flags, const QString& title)
{
    return platform::MsgBox(general(procedure, form), flags, title);
}

void showUpdate(long long number, const QString& description, const QString& title)
{
    platform::MsgBox(update(number, description), platform::vbExclamation, title);
}

int showRetry(long long number, const QString& description, const QString& title)
{
    return platform::MsgBox(retry(number, description), platform::vbYesNo + platform::vbQuestion, title);
}

void showLog(const QString& procedure, const QString& title)
{
    platform::MsgBox(log(procedure), platform::vbOKOnly + platform::vbExclamation, title);
}

} // namespace errorbox
