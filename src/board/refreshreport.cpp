#include "board/refreshreport.h"

#include "board/frmmain.h"
#include "dao/jeterror.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "platform/shell.h"

#include <QTreeWidget>

#ifndef VESKOR_ERROR_REPORT_MAILBOX
#define VESKOR_ERROR_REPORT_MAILBOX "errors@example.invalid"
#endif

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("frmMain - subRefreshUserList event");
const QString CR = QStringLiteral("\r");
const QString kLineBreak = QStringLiteral("%0D%0A"); // a line break inside the mail's text

void mailReport(const QString& progress)
{
    MsgBox(errorbox::general(kProcedure, errorbox::Joined, true) +
           QStringLiteral("We are attempting to track down the EXACT cause of this error, but we need your help... ") +
           QStringLiteral("Please press OK to generate an eMail to ") + errorReportMailbox() +
           QStringLiteral(" then hit SEND to deliver it please.") + CR + CR +
           QStringLiteral("Unfortunately, until we find the error & fix it, we are unable to recover from this "
                          "problem so VESK-OR will now shut down. (Sorry, but you will need to restart.)"));
    // Nothing is encoded beyond the line breaks: the statement goes in as it is.
    shell().openUrl(QStringLiteral("mailto:") + errorReportMailbox() +
                    QStringLiteral("?Subject=Error 91 in frmMain:subRefreshUserList event") + QStringLiteral("&Body=") +
                    gstrProgramTitle + QStringLiteral(" ") + gstrBuildName + kLineBreak +
                    QStringLiteral("SQL Query = ") + gstrSQL + kLineBreak + QStringLiteral("ListView Data ") +
                    kLineBreak + progress + kLineBreak +
                    QStringLiteral("Please explain (if possible) what VESK-OR was doing at the time of the error. "
                                   "Thanks.") +
                    kLineBreak);
}

} // namespace

QString errorReportMailbox()
{
    return QStringLiteral(VESKOR_ERROR_REPORT_MAILBOX);
}

void subRefreshUserListReport(frmMain& board, const QString& progress)
{
    board.ListViewMain->setUpdatesEnabled(true);
    switch (Err.Number) {
    case dao::errRecordDeleted:
        MsgBox(QStringLiteral("The ") + appTitle() +
               QStringLiteral(" database appears to be damaged. Please ask your Administrator to repair the database "
                              "immediately."));
        break;
    case 91:
        mailReport(progress);
        board.unload();
        break;
    case dao::errCouldNotLockFile:
    case dao::errObjectInvalid:
        DoEvents();
        break;
    default:
        MsgBox(errorbox::general(kProcedure, errorbox::Joined, true));
        break;
    }
}
