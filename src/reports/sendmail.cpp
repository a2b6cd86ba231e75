// A new mail to the people selected on the board.
#include "reports/sendmail.h"

#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "platform/shell.h"

namespace reports {

int fnNameSubItem()
{
    return gBoard.gintNameColumn == 0 ? 1 : int(gBoard.gintNameColumn);
}

QString fnMailtoText(const QStringList& names)
{
    QStringList trimmed;
    for (const QString& name : names) {
        trimmed << name.trimmed();
    }
    return QStringLiteral("mailto:") + trimmed.join(QStringLiteral("; "));
}

void subSendMail()
{
    const QString mailto = fnMailtoText(mainScreen().selectedRowTexts(fnNameSubItem()));
    if (!platform::shell().openUrl(mailto)) {
        platform::MsgBox(QStringLiteral("Email Error ") +
                         QStringLiteral("No mail program is set up on this desktop to open ") + mailto +
                         QStringLiteral(" - Press OK to continue."));
    }
}

} // namespace reports
