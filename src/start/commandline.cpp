#include "start/commandline.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/identity.h"
#include "platform/process.h"
#include "start/newusersetupseam.h"
#include "start/welcome.h"
#include "status/statuswrite.h"

#include <QStringList>

namespace {

// GetUserNameA is given room for 64 characters with the terminator; a longer
// name fails and leaves the buffer blank.
constexpr int kLoginNameBuffer = 64;

// The person's EmployeeTable rows whose column matches value (without regard to
// case, the value matching only itself).
std::unique_ptr<dao::Recordset> openEmployeeRows(const QString& column, const QString& value)
{
    const QString sql = QStringLiteral("SELECT * FROM EmployeeTable WHERE ") + column + QStringLiteral(" LIKE ") +
                        dao::quoteLike(value);
    subOpenDatabase();
    return fnOpenSQL(sql);
}

// The UID look-up of the blank and "-UID:" cases: gstrDefaultUser and the flags
// from the first row with gstrUserID.
void lookUpUserID()
{
    auto rs = openEmployeeRows(QStringLiteral("UID"), gRun.gstrUserID);
    if (rs->RecordCount() > 0) {
        rs->MoveFirst();
        gRun.gstrDefaultUser = rs->Fields(QStringLiteral("Name")).Text();
        gRun.gblnValidUserID = true;
        if (!gRun.gstrDefaultUser.isEmpty()) {
            gRun.gblnValidUserName = true;
        }
    }
    rs->Close();
    subCloseDatabase();
}

// An element of a split line, as VB's arrays hand it out: one that is not there
// is a run-time error.
QString element(const QStringList& parts, qsizetype index)
{
    if (index < 0 || index >= parts.size()) {
        Err.Raise(vbErrSubscript, QStringLiteral("Subscript out of range"));
    }
    return parts[index];
}

// VB's Split(text, ":"): an empty text gives no pieces at all.
QStringList piecesOf(const QString& token)
{
    return token.isEmpty() ? QStringList() : token.split(QLatin1Char(':'));
}

} // namespace

void subCheckCommandLine()
{
    QString login = platform::identity().loginName();
    if (login.size() >= kLoginNameBuffer) {
        login.clear();
    }
    gRun.gstrLoginName = login.trimmed().isEmpty() ? QStringLiteral("Unknown") : login;
    gRun.gstrCommandLine = gRun.gstrGivenCommandLine.trimmed();
    gRun.gblnValidUserName = false;
    gRun.gblnValidUserID = false;

    if (gRun.gstrCommandLine.isEmpty()) {
        subCommandLineIsBlank();
    } else if (gRun.gstrCommandLine.contains(QLatin1Char(':'))) {
        subCommandLineHasParameters();
    } else {
        subCommandLineIsProbablyLegacy();
    }
}

void subCommandLineIsBlank()
{
    gRun.gstrDefaultUser.clear();
    gRun.gstrUserID = gRun.gstrLoginName;
    lookUpUserID();
    if (gRun.gblnValidUserName) {
        return;
    }
    // Not known: the setup screen, waited for. Activate's last step then brings
    // frmWelcome back unless the setup was cancelled.
    showNewUserSetup(true);
    welcomeScreen().unload();
}

void subCommandLineIsProbablyLegacy()
{
    auto rs = openEmployeeRows(QStringLiteral("Name"), gRun.gstrCommandLine);
    if (rs->RecordCount() > 0) {
        rs->MoveFirst();
        gRun.gstrDefaultUser = rs->Fields(QStringLiteral("Name")).Text();
        gRun.gstrUserID = rs->Fields(QStringLiteral("UID")).Text();
        gRun.gblnValidUserName = true;
        if (!gRun.gstrUserID.isEmpty()) {
            gRun.gblnValidUserID = true;
            rs->Close();
            subCloseDatabase();
            return;
        }
    } else {
        gRun.gstrDefaultUser = gRun.gstrCommandLine;
    }
    rs->Close();
    subCloseDatabase();

    // The setup screen is not waited for: it returns at once with the flag still
    // clear, so an unknown old-style shortcut ends the run here.
    gRun.gstrUserID = gRun.gstrLoginName;
    showNewUserSetup(false);
    if (!gRun.gblnNewUserSetupDone) {
        platform::End();
    }
    welcomeScreen().unload();
}

void subCommandLineHasParameters()
{
    // The first token keeps its "-", the others lose it at the split.
    const QStringList tokens = gRun.gstrCommandLine.split(QStringLiteral(" -"));
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens[i].isEmpty()) {
            ++i; // only one empty token is stepped over
        }
        const QStringList pieces = piecesOf(element(tokens, i));
        const QString key = element(pieces, 0).toUpper();

        if (key == QLatin1String("UID") || key == QLatin1String("-UID")) {
            const QString uid = element(pieces, 1).trimmed();
            gRun.gstrUserID = uid.isEmpty() ? gRun.gstrLoginName : uid;
            lookUpUserID();
            if (!gRun.gblnValidUserName) {
                showNewUserSetup(false);
                if (!gRun.gblnValidUserName) {
                    welcomeScreen().unload();
                    platform::End();
                }
            }
        } else if (key == QLatin1String("STS") || key == QLatin1String("-STS")) {
            gRun.gstrCurrentStatus = element(pieces, 1).trimmed();
            // A copy: the write (and frmMain's Load) sets gstrCurrentStatus anew.
            const QString status = gRun.gstrCurrentStatus;
            // The write uses the board, so the board is loaded for it here, before the
            // write: its Load (active flag, AutoLogIn) comes first, the given status last.
            loadMainScreen();
            subSetStatus(status);
        }
    }
}
