#pragma once
// frmStatus, "Change YOUR Status": the person's own Status, Due Back, Comments and
// custom fields, written in one unit of change (the row, the tracking mirror, the
// log row and the counter) when OK is pressed. Shown modally from the board.

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
namespace dao {
class Recordset;
}

class frmStatus : public QDialog
{
    Q_OBJECT

public:
    explicit frmStatus(QWidget* parent = nullptr);
    ~frmStatus() override;

    // Loads the screen and shows it modally; returns when it is unloaded.
    static void showModal(QWidget* parent);

    QComboBox* comboStatusTypes;
    QComboBox* ComboDueBack;
    QLineEdit* txtComment;
    QTableWidget* msFlexGridChange; // "Field Name" and "Value"; the header is the fixed row
    QLineEdit* txtChangeFieldValue; // the floating editor over a value cell
    QLabel* lblCustomFieldsCYS;
    QLabel* lblWarning;
    QLabel* lblSelectStatus1;
    QLabel* lblSelectStatus2;
    QLabel* lblSelectComment1;
    QLabel* lblSelectComment2;
    QLabel* lblComment;
    QPushButton* cmdOk;
    QPushButton* cmdCancel;
    QPushButton* cmdHelp;

    // The help topic of this screen.
    static constexpr int kHelpContext = 2500;

    void Form_Load();
    void Form_Activate();
    void msFlexGridChange_Click(int row, int column);
    void txtChangeFieldValue_LostFocus();
    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdHelp_Click();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fillCustomFields(dao::Recordset& rs);
    bool writeChange(const QString& status);

    // The cell under edit; -1 when none.
    int mintCol = -1;
    int mintRow = -1;
};
