#pragma once
// frmNewUserSetup: ties the login to a name on the board (a new person's rows
// made, or an existing row given this login), and makes or removes the person's
// launchers on the desktop and in the autostart folder. Shown by the start-up
// when it cannot tie the login to a person; OK leaves the person chosen, Cancel
// or the close box ends the run with no screen left.

#include <QDialog>
#include <QTimer>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

class frmNewUserSetup : public QDialog
{
    Q_OBJECT

public:
    explicit frmNewUserSetup(QWidget* parent = nullptr);

    // Loads the screen and shows it: modal waits until it is unloaded; otherwise
    // it stays on screen and this returns at once.
    static void showScreen(bool modal);

    QComboBox* ComboNewUserSetup; // each entry's data: its UID
    QLineEdit* txtNewLoginID;
    QCheckBox* chkAddDesktopIcon;
    QCheckBox* chkAddStartUpIcon;
    QPushButton* cmdNewUserSetupOK;
    QPushButton* cmdNewUserSetupCancel;
    QPushButton* cmdNewUserSetupHelp;
    QLabel* lblNewUserSetup[8];                       // lbl1NewUserSetup ... lbl8NewUserSetup
    QTimer tmrCheckForForcedShutDownFromNewUserSetup; // 5000 ms, on from the start

    void Form_Load();
    void ComboNewUserSetup_Click(int index);
    void cmdNewUserSetupOK_Click();
    void cmdNewUserSetupCancel_Click();
    void cmdNewUserSetupHelp_Click();
    void tmrCheckForForcedShutDownFromNewUserSetup_Timer();
    // The rows of the person named in the combo, with the ID given (see users/newuser.h).
    bool subAddNewUserToDatabase();

    // The close box and Escape act as Cancel.
    void reject() override;

private:
    bool tieLoginToName(const QString& name, const QString& id);
    void updateLinks(const QString& name);
    void unload(int result);
};

// The name as a launcher's file name may hold it: blanks, ".", "~", "-", ",",
// digits, letters A to Z and a to z, and the characters 128 to 255 stay.
QString fnCleanIconName(const QString& name);
