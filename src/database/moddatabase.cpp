#include "database/moddatabase.h"

#include "dao/dao.h"
#include "database/objectref.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/clock.h"
#include "platform/msgbox.h"
#include "platform/process.h"

#include <QTimer>

using namespace platform;

namespace {

// A pause after each DoEvents, so that "let events run" waits a moment for the
// other client instead of spinning.
constexpr int kEventPauseMs = 5;
// How often a read that lost its database object (3420) opens it again, and the pause between.
constexpr int kObjectGoneTries = 5;
constexpr int kObjectGonePauseMs = 100;

void letEventsRun(int times)
{
    for (int i = 0; i < times; ++i) {
        DoEvents();
        Sleep(kEventPauseMs);
    }
}

[[noreturn]] void closeUnloadAndEnd()
{
    subCloseDatabase();
    mainScreen().unload();
    End();
}

QString databasePathText(const QString& procedure)
{
    return QStringLiteral("Database Path Error (") + QString::number(Err.Number) + QStringLiteral(" ) in ") +
           procedure + CRLF + CRLF + Err.Description + CRLF + CRLF + QStringLiteral("Possible causes: ") + CRLF +
           QStringLiteral("1) Invalid Database Path in VESKOR.INI. ") + CRLF +
           QStringLiteral("2) You do not have access permissions to the database via this path. ") + CRLF +
           QStringLiteral("3) The Network connection may have been permanently or temporarily lost.") + CRLF + CRLF +
           QStringLiteral("Select Retry to attempt to open the database again.") + CRLF +
           QStringLiteral("Select Cancel to exit.");
}

QString lockFileText(const QString& procedure)
{
    return QStringLiteral("Non-fatal Error (") + QString::number(Err.Number) + QStringLiteral(" ) in ") + procedure +
           CR + Err.Description + CR + CR + QStringLiteral("Possible Causes: ") + CR +
           QStringLiteral("                 1) The server is busy deleting the VESKOR.LDB file.") + CR +
           QStringLiteral("                 2) The network cable has been disconnected.");
}

// The answer to an open that failed three times. Returns when the open is to be
// tried again; every other answer ends the run.
void answerFailedOpen(const QString& procedure)
{
    const QString number = QString::number(Err.Number);
    switch (Err.Number) {
    case dao::errInvalidPath:
        if (MsgBox(databasePathText(procedure), vbRetryCancel + vbExclamation) == vbRetry) {
            return;
        }
        closeUnloadAndEnd();
    case dao::errFileNotFound:
    case dao::errDiskOrNetwork:
        if (MsgBox(lockFileText(procedure), vbRetryCancel + vbExclamation,
                   gRun.gstrProgramTitle + QStringLiteral(" - Error in subOpenDatabase")) == vbRetry) {
            return;
        }
        End();
    case dao::errExclusivelyLocked:
        MsgBox(QStringLiteral("Non-fatal Error (") + number + QStringLiteral(" ) in ") + procedure + CR +
                   Err.Description + CR + CR +
                   QStringLiteral("Probably cause: Administrator was repairing the database. Please wait a few "
                                  "seconds, then press OK to continue."),
               vbOKOnly + vbExclamation);
        letEventsRun(2);
        return;
    case dao::errCouldNotLockFile:
        // The words say OK where the box says Retry; they stand as they are.
        if (MsgBox(errorbox::general(procedure, errorbox::Joined) + CR + CR +
                       QStringLiteral("The database is busy. Please wait a few seconds.") + CRLF + CRLF +
                       QStringLiteral("Press OK to Try Again.") + CRLF + QStringLiteral("Press Cancel to Exit."),
                   vbRetryCancel + vbExclamation, gRun.gstrProgramTitle) == vbCancel) {
            End();
        }
        letEventsRun(10);
        return;
    case dao::errUnrecognizedFormat:
        MsgBox(Err.Description + CR + QStringLiteral("Please inform the Network Supervisor that the database is") +
                   QStringLiteral(" damaged and must be repaired."),
               vbOKOnly + vbExclamation, procedure + QStringLiteral(" - Fatal Error in ") + gRun.gstrProgramTitle);
        closeUnloadAndEnd();
    default:
        gRun.gblnDatabaseOpenFailed = true;
        MsgBox(QStringLiteral("Error (") + number + QStringLiteral(" - ") + Err.Description + QStringLiteral(" ) in ") +
               procedure + CR + Err.Description);
        closeUnloadAndEnd();
    }
}

} // namespace

QTimer& TimerCloseDatabase()
{
    // Made on first use and kept for the run; it fires only while an event loop runs.
    static QTimer* timer = [] {
        auto* t = new QTimer;
        t->setInterval(2000);
        QObject::connect(t, &QTimer::timeout, t, &TimerCloseDatabase_Timer);
        return t;
    }();
    return *timer;
}

void TimerCloseDatabase_Timer()
{
    // A tick that comes while a write waits for another client's lock, or inside
    // a unit of change, leaves the file open: closing now would lose that work.
    // The timer runs on, so the next tick closes it.
    if (gRun.gdbDatabase && gRun.gdbDatabase->isOpen() && gRun.gdbDatabase->isBusy()) {
        return;
    }
    gRun.gblnDatabaseClosed = true;
    subCloseDatabase();
}

void subOpenDatabase()
{
    if (!gRun.gblnDatabaseClosed) {
        return;
    }
    const QString strProcedure = QStringLiteral("modDatabase - subOpenDatabase event");
    gRun.gblnDatabaseOpenFailed = false;
    int intCounter = 0;
    for (;;) {
        Err.Clear();
        const bool opened = ResumeNext([] {
            gRun.gdbDatabase = dao::DBEngine::OpenDatabase(gRun.gstrCurrentDatabasePath + QStringLiteral("veskor.mdb"),
                                                           false, false, QString());
        });
        if (opened) {
            gRun.gblnDatabaseClosed = false;
            // Like a timer's Enabled := True: one that already runs keeps its interval.
            if (!TimerCloseDatabase().isActive()) {
                TimerCloseDatabase().start();
            }
            return;
        }
        mainScreen().setPanelText(2, QStringLiteral(" Opening database - try #") + QString::number(intCounter));
        ++intCounter;
        if (intCounter < 3) {
            Sleep(intCounter * 500);
            continue;
        }
        intCounter = 0;
        mainScreen().setBusyPointer(false);
        answerFailedOpen(strProcedure);
    }
}

void subCloseDatabase()
{
    if (!gRun.gblnDatabaseClosed) {
        return;
    }
    if (gRun.gdbDatabase) {
        gRun.gdbDatabase->Close();
    }
    TimerCloseDatabase().stop();
    ++gRun.glngDatabaseCloseCount;
}

bool fnRetryAfterObjectGone(int tryNumber)
{
    if (tryNumber >= kObjectGoneTries) {
        return false;
    }
    // With the flag False a closed object would never be opened again.
    gRun.gblnDatabaseClosed = true;
    Sleep(kObjectGonePauseMs);
    return true;
}

bool fnGroupExists(const QString& groupName)
{
    bool result = false;
    std::unique_ptr<dao::Recordset> rs;
    // A lost database object (3420): open again and repeat, a handful of times;
    // then it is answered as any other error.
    for (int tries = 1;; ++tries) {
        Err.Clear();
        subOpenDatabase();
        ResumeNext(
            [&] { rs = fnDatabase().OpenRecordset(QStringLiteral("GroupTable"), dao::dbOpenTable, dao::dbReadOnly); });
        if (Err.Number != dao::errObjectInvalid || !fnRetryAfterObjectGone(tries)) {
            break;
        }
    }
    if (Err.Number != 0) {
        MsgBox(QStringLiteral("Err: ") + QString::number(Err.Number) + QStringLiteral(" - ") + Err.Description);
    }
    if (rs) {
        ResumeNext([&] {
            rs->setIndex(QStringLiteral("PrimaryKey"));
            rs->Seek(QStringLiteral("="), groupName);
            result = !rs->NoMatch();
        });
        ResumeNext([&] { rs->Close(); });
    }
    subCloseDatabase();
    return result;
}
