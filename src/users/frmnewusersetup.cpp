#include "users/frmnewusersetup.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/forcedshutdown.h"
#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "status/statuscommon.h"
#include "users/newuser.h"
#include "users/shortcuts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace platform;

namespace {

const QString kLegalPunctuation = QStringLiteral(" .~-,");

} // namespace

QString fnCleanIconName(const QString& name)
{
    QString kept;
    for (const QChar c : name) {
        const char16_t u = c.unicode();
        const bool letterOrDigit = (u >= u'0' && u <= u'9') || (u >= u'A' && u <= u'Z') || (u >= u'a' && u <= u'z');
        if (letterOrDigit || kLegalPunctuation.contains(c) || (u >= 128 && u <= 255)) {
            kept += c;
        }
    }
    return kept;
}

frmNewUserSetup::frmNewUserSetup(QWidget* parent)
    : QDialog(parent), ComboNewUserSetup(new QComboBox(this)), txtNewLoginID(new QLineEdit(this)),
      chkAddDesktopIcon(new QCheckBox(QStringLiteral("Add a VESK-OR Pro Icon to your &Desktop ?"), this)),
      chkAddStartUpIcon(new QCheckBox(QStringLiteral("Add a VESK-OR Pro Icon to your StartUp Folder ?"), this)),
      cmdNewUserSetupOK(new QPushButton(QStringLiteral("OK"), this)),
      cmdNewUserSetupCancel(new QPushButton(QStringLiteral("&Cancel"), this)),
      cmdNewUserSetupHelp(new QPushButton(QStringLiteral("&Help"), this))
{
    setObjectName(QStringLiteral("frmNewUserSetup"));
    for (int i = 0; i < 8; ++i) {
        lblNewUserSetup[i] = new QLabel(this);
        lblNewUserSetup[i]->setObjectName(QStringLiteral("lbl%1NewUserSetup").arg(i + 1));
        lblNewUserSetup[i]->setWordWrap(i < 5 || i == 7);
    }
    lblNewUserSetup[5]->setText(QStringLiteral("&UserName:"));
    lblNewUserSetup[5]->setBuddy(ComboNewUserSetup);
    lblNewUserSetup[6]->setText(QStringLiteral("&Login ID:"));
    lblNewUserSetup[6]->setBuddy(txtNewLoginID);
    lblNewUserSetup[7]->setText(
        QStringLiteral("NOTE: If Icons are not selected, and they already exist, they will be removed"));
    ComboNewUserSetup->setEditable(true);
    ComboNewUserSetup->setInsertPolicy(QComboBox::NoInsert);
    txtNewLoginID->setPlaceholderText(QStringLiteral("Defaults to current Windows ID"));

    const std::pair<QWidget*, const char*> named[] = {
        {ComboNewUserSetup, "ComboNewUserSetup"},     {txtNewLoginID, "txtNewLoginID"},
        {chkAddDesktopIcon, "chkAddDesktopIcon"},     {chkAddStartUpIcon, "chkAddStartUpIcon"},
        {cmdNewUserSetupOK, "cmdNewUserSetupOK"},     {cmdNewUserSetupCancel, "cmdNewUserSetupCancel"},
        {cmdNewUserSetupHelp, "cmdNewUserSetupHelp"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(QString::fromLatin1(name));
    }
    ComboNewUserSetup->setAccessibleName(QStringLiteral("UserName"));
    txtNewLoginID->setAccessibleName(QStringLiteral("Login ID"));
    txtNewLoginID->setAccessibleDescription(txtNewLoginID->placeholderText());
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{
             chkAddDesktopIcon, chkAddStartUpIcon, cmdNewUserSetupOK, cmdNewUserSetupCancel, cmdNewUserSetupHelp}) {
        button->setAccessibleName(button->text().remove(u'&'));
    }

    auto* layout = new QVBoxLayout(this);
    for (int i = 0; i < 5; ++i) {
        layout->addWidget(lblNewUserSetup[i]);
    }
    auto* form = new QFormLayout;
    form->addRow(lblNewUserSetup[5], ComboNewUserSetup);
    form->addRow(lblNewUserSetup[6], txtNewLoginID);
    layout->addLayout(form);
    layout->addWidget(chkAddDesktopIcon);
    layout->addWidget(chkAddStartUpIcon);
    layout->addWidget(lblNewUserSetup[7]);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdNewUserSetupOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdNewUserSetupCancel, QDialogButtonBox::RejectRole);
    buttons->addButton(cmdNewUserSetupHelp, QDialogButtonBox::HelpRole);
    layout->addWidget(buttons);
    cmdNewUserSetupOK->setDefault(true);
    setMinimumWidth(480);

    connect(cmdNewUserSetupOK, &QPushButton::clicked, this, &frmNewUserSetup::cmdNewUserSetupOK_Click);
    connect(cmdNewUserSetupCancel, &QPushButton::clicked, this, &frmNewUserSetup::cmdNewUserSetupCancel_Click);
    connect(cmdNewUserSetupHelp, &QPushButton::clicked, this, &frmNewUserSetup::cmdNewUserSetupHelp_Click);
    connect(ComboNewUserSetup, &QComboBox::activated, this, &frmNewUserSetup::ComboNewUserSetup_Click);
    tmrCheckForForcedShutDownFromNewUserSetup.setInterval(5000);
    connect(&tmrCheckForForcedShutDownFromNewUserSetup, &QTimer::timeout, this,
            &frmNewUserSetup::tmrCheckForForcedShutDownFromNewUserSetup_Timer);
    tmrCheckForForcedShutDownFromNewUserSetup.start();
}

void frmNewUserSetup::showScreen(bool modal)
{
    auto* screen = new frmNewUserSetup;
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->Form_Load();
    if (modal) {
        screen->exec();
    } else {
        screen->show();
    }
}

void frmNewUserSetup::Form_Load()
{
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - New User Setup"));
    lblNewUserSetup[0]->setText(QStringLiteral("Welcome to the VESK-OR Pro New User Setup utility. "));
    lblNewUserSetup[1]->setText(
        QStringLiteral("This section of the program allows you to select or enter your LoginID / UserName, "));
    lblNewUserSetup[2]->setText(
        QStringLiteral("and allows you to create, update or delete shortcuts on your desktop "));
    lblNewUserSetup[3]->setText(
        QStringLiteral("and/or StartUp folder linking you to the main VESK-OR program (user.exe) on the server."));
    lblNewUserSetup[4]->setText(
        QStringLiteral("Do NOT select the Startup Folder option if VESK-OR starts via a Network Logon Script."));
    txtNewLoginID->setText(gRun.gstrUserID);

    // With nobody in the table the list stays empty.
    ResumeNext([&] {
        subOpenDatabase();
        std::unique_ptr<dao::Recordset> rs = fnOpenSQL(QStringLiteral("SELECT COUNT(*) FROM EmployeeTable;"));
        const bool anybody = rs->RecordCount() > 0 && rs->Fields(0).Value().toLongLong() > 0;
        rs->Close();
        if (!anybody) {
            return;
        }
        rs = fnOpenSQL(QStringLiteral("SELECT Name, UID  FROM EmployeeTable ORDER BY Name"));
        for (long long row = 0; row < rs->RecordCount(); ++row) {
            row == 0 ? rs->MoveFirst() : rs->MoveNext();
            ComboNewUserSetup->addItem(rs->Fields(QStringLiteral("Name")).Text(),
                                       rs->Fields(QStringLiteral("UID")).Text());
        }
        rs->Close();
    });
    ComboNewUserSetup->setCurrentIndex(-1);
    ComboNewUserSetup->setEditText(gRun.gstrDefaultUser);

    QString allowed;
    fnFirstRowText(QStringLiteral("SELECT * FROM GlobalSettingsTable;"),
                   QStringLiteral("AllowUserToAddVeskOrToStartupFolder"), allowed);
    bool startUp = false;
    ResumeNext([&] { startUp = status::boolFromText(allowed); });
    chkAddStartUpIcon->setEnabled(startUp);
    lblNewUserSetup[4]->setEnabled(startUp);
    subCloseDatabase();

    adjustSize();
    centreOnScreen(this);
}

void frmNewUserSetup::ComboNewUserSetup_Click(int index)
{
    const QString uid = ComboNewUserSetup->itemData(index).toString();
    txtNewLoginID->setText(uid.isEmpty() ? gRun.gstrLoginName : uid);
}

void frmNewUserSetup::cmdNewUserSetupOK_Click()
{
    const QString typed = ComboNewUserSetup->currentText();
    if (typed.isEmpty()) {
        MsgBox(QStringLiteral("Please enter or select a UserName."), vbExclamation,
               QStringLiteral("UserName is Required"));
        return;
    }
    // The name becomes part of the launchers' file names.
    const QString name = fnCleanIconName(typed);
    if (name != typed) {
        ComboNewUserSetup->setEditText(name);
        MsgBox(QStringLiteral("One or more characters you entered could not be used in the Icon text.") +
                   QStringLiteral("\r\n") + QStringLiteral("These characters have been removed."),
               vbExclamation, QStringLiteral("Illegal Character."));
        return;
    }
    const QString id = txtNewLoginID->text();
    if (id.isEmpty()) {
        MsgBox(QStringLiteral("Please enter a Login ID."), vbExclamation, QStringLiteral("UserID is Required"));
        return;
    }
    if (!tieLoginToName(name, id)) {
        return;
    }
    updateLinks(name);
    gRun.gstrDefaultUser = name;
    gRun.gblnNewUserSetupDone = true;
    gRun.gblnValidUserName = true;
    gRun.gstrUserID = id;
    unload(QDialog::Accepted);
}

// The name's row and the ID's row decide: a new person is added, a person without
// this login is given it, and a login another person has is refused. False: stay.
bool frmNewUserSetup::tieLoginToName(const QString& name, const QString& id)
{
    QString uidOfName;
    QString nameOfId;
    const bool nameFound = fnFirstRowText(
        QStringLiteral("Select * from EmployeeTable WHERE Name = ") + dao::quote(name), "UID", uidOfName);
    const bool idFound =
        fnFirstRowText(QStringLiteral("Select * from EmployeeTable WHERE UID = ") + dao::quote(id), "Name", nameOfId);
    subCloseDatabase();
    gRun.gblnValidUserName = gRun.gblnValidUserName || nameFound;
    gRun.gblnValidUserID = gRun.gblnValidUserID || idFound;

    if (!nameFound) {
        if (MsgBox(QStringLiteral("Add New User: ") + name + QStringLiteral(" ?"), vbYesNo + vbQuestion,
                   QStringLiteral("Add New User?")) != vbYes) {
            return false;
        }
        if (idFound) {
            MsgBox(QStringLiteral("This Login ID already exists: ") + id + QStringLiteral("."), vbExclamation,
                   QStringLiteral("Login ID already exists."));
            txtNewLoginID->setFocus();
            return false;
        }
        return subAddNewUserToDatabase();
    }
    if (uidOfName.compare(id, Qt::CaseInsensitive) == 0) {
        return true; // they belong together already
    }
    if (idFound && nameOfId.compare(name, Qt::CaseInsensitive) != 0) {
        MsgBox(QStringLiteral("This UserID already exists: ") + id + QStringLiteral("."), vbExclamation,
               QStringLiteral("UserID already exists."));
        return false;
    }
    if (MsgBox(QStringLiteral("Would you like to associate the Windows LoginID of: ") + id + QStringLiteral("\r\n") +
                   QStringLiteral("\r\n") + QStringLiteral(" with the UserName of: ") + name + QStringLiteral("?"),
               vbYesNo + vbQuestion, QStringLiteral("Confirmation required.")) != vbYes) {
        return false;
    }
    const bool updated = ResumeNext([&] {
        subOpenDatabase();
        subExecuteSQL(QStringLiteral("Update EmployeeTable ") + QStringLiteral("set UID = ") + dao::quote(id) +
                      QStringLiteral(" Where Name = ") + dao::quote(name));
    });
    subCloseDatabase();
    if (!updated) {
        MsgBox(QStringLiteral("Error (") + QString::number(Err.Number) + QStringLiteral(" ) in ") +
                   QStringLiteral("frmNewUserSetup - cmdNewUserSetupOK_Click event") + QStringLiteral("\r") +
                   Err.Description,
               vbCritical);
    }
    return updated;
}

bool frmNewUserSetup::subAddNewUserToDatabase()
{
    return fnAddNewUserToDatabase(ComboNewUserSetup->currentText(), txtNewLoginID->text());
}

// Each launcher checked is made (replacing an old one); each not checked goes.
void frmNewUserSetup::updateLinks(const QString& name)
{
    const std::pair<QCheckBox*, platform::cShellLinkA::SystemFolder> links[] = {
        {chkAddDesktopIcon, platform::cShellLinkA::Desktop}, {chkAddStartUpIcon, platform::cShellLinkA::StartUp}};
    for (const auto& [box, folder] : links) {
        if (!box->isChecked()) {
            subRemovePersonLink(folder, name);
        } else if (!fnCreatePersonLink(folder, name)) {
            MsgBox(QStringLiteral(" Error - Return Code from fCreateShellLink: ") + QString::number(0));
        }
    }
}

void frmNewUserSetup::cmdNewUserSetupCancel_Click()
{
    DoEvents();
    gRun.gblnNewUserSetupDone = false;
    gRun.gblnNewUserSetupCancelled = true;
    unload(QDialog::Rejected);
}

void frmNewUserSetup::reject()
{
    cmdNewUserSetupCancel_Click();
}

void frmNewUserSetup::cmdNewUserSetupHelp_Click()
{
    shell().showHelp(gRun.gstrHelpFile, 0);
}

// While the screen stands alone, an administrator's forced shutdown is seen here:
// the client hands over to inicheck, which starts it again later, and ends.
void frmNewUserSetup::tmrCheckForForcedShutDownFromNewUserSetup_Timer()
{
    const QString strSavedUserID;
    const QString strArguments = QStringLiteral("-UID:") + strSavedUserID + QStringLiteral("  -STS:ForcedShutDown");
    subCheckINIForForcedShutDown();
    if (gRun.gblnForcedShutDown) {
        subStartIniCheck(gRun.gstrApplicationPath + QStringLiteral("inicheck"), strArguments);
        unload(QDialog::Rejected);
        End();
    }
}

void frmNewUserSetup::unload(int result)
{
    tmrCheckForForcedShutDownFromNewUserSetup.stop();
    QDialog::done(result);
}
