#include "users/shortcuts.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "platform/mounts.h"
#include "platform/msgbox.h"

#include <QDir>
#include <QFile>

using namespace platform;

bool fnFirstRowText(const QString& sql, const QString& field, QString& value)
{
    bool found = false;
    ResumeNext([&] {
        subOpenDatabase();
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            value = rs->Fields(field).Text();
            found = true;
        }
        rs->Close();
    });
    return found;
}

namespace {

// The first row's UID for the statement; false when there is no row.
bool readUID(const QString& sql, QString& uid)
{
    const bool found = fnFirstRowText(sql, QStringLiteral("UID"), uid);
    subCloseDatabase();
    return found;
}

// The icon that ships beside the program.
const QString kIconFile = QStringLiteral("veskor-user.svg");

// A launcher for the UID: the program, its folder and the icon in their local
// form (the program's folder is kept in its UNC form when it lies on a share).
bool writeLink(cShellLinkA::SystemFolder folder, const QString& name, const QString& uid)
{
    const QString path = fnLinkPath(folder, name);
    const QString programFolder = nativePathOf(gRun.gstrApplicationPath);
    cShellLinkA link;
    link.ExeName = programFolder + QStringLiteral("user");
    link.ExeArgs = {QStringLiteral("-UID:") + uid};
    link.WorkingDir = programFolder;
    link.Description = gRun.gstrProgramTitle.trimmed() + QStringLiteral(" for ") + name;
    link.IconFile = programFolder + kIconFile;
    return link.CreateLink(path);
}

} // namespace

QString fnLinkFileName(const QString& name)
{
    return QStringLiteral("VESK-OR") + QStringLiteral(" [") + name + QStringLiteral("].desktop");
}

QString fnLinkPath(cShellLinkA::SystemFolder folder, const QString& name)
{
    const QString path = cShellLinkA::GetSystemFolderPath(folder);
    return path.isEmpty() ? QString() : QDir(path).filePath(fnLinkFileName(name));
}

bool fnCreatePersonLink(cShellLinkA::SystemFolder folder, const QString& name)
{
    QString uid;
    if (!readUID(QStringLiteral("SELECT * FROM EmployeeTable Where Name = ") + dao::quote(name), uid)) {
        return false;
    }
    return writeLink(folder, name, uid);
}

void subRemovePersonLink(cShellLinkA::SystemFolder folder, const QString& name)
{
    const QString path = fnLinkPath(folder, name);
    if (!path.isEmpty()) {
        QFile::remove(path);
    }
}

void subCreateDeskTopIcon()
{
    fnCreatePersonLink(cShellLinkA::Desktop, gRun.gstrDefaultUser);
}

void subNewDesktopIconsFor(const QStringList& names)
{
    if (names.isEmpty()) {
        MsgBox(QStringLiteral("Please select one or more users before continuing."));
        return;
    }
    if (MsgBox(QStringLiteral("Are you sure you want to create VESK-OR Icons on your Desktop for the selected users?"),
               vbYesNo + vbQuestion) != vbYes) {
        return;
    }
    for (const QString& name : names) {
        QString uid;
        if (!readUID(QStringLiteral("SELECT UID FROM EmployeeTable WHERE Name LIKE ") + dao::quoteLike(name), uid)) {
            MsgBox(QStringLiteral("Error finding in EmployeeTable: ") + name);
        } else if (!writeLink(cShellLinkA::Desktop, name, uid)) {
            // The code the link maker answers: 1 when the link was made, 0 when not.
            MsgBox(QStringLiteral(" Error - Return Code from fCreateShellLink: ") + QString::number(0));
        }
    }
    MsgBox(QStringLiteral("Additional VESK-OR Icons now created on your Desktop"));
}

void subUninstallIcons()
{
    if (MsgBox(QStringLiteral("Are you sure you want to Uninstall the VESK-OR Icons from your Desktop and or StartUp "
                              "Folder ?"),
               vbYesNo + vbQuestion, QStringLiteral("VESK-OR Pro Uninstall")) != vbYes) {
        return;
    }
    subRemovePersonLink(cShellLinkA::Desktop, gRun.gstrDefaultUser);
    subRemovePersonLink(cShellLinkA::StartUp, gRun.gstrDefaultUser);
}
