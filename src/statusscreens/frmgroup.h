#pragma once
// frmGroup, "Group Change": Status, Due Back, Comments and custom fields of every
// row selected on the board. "(NO CHANGE)" leaves a field alone, and a custom
// field is written only when its row is checked. Each person's change is a unit
// of change of its own; the counter is raised once at the end.

#include <QDialog>
#include <QIcon>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStatusBar;
class QTableWidget;
namespace dao {
class Recordset;
}

class frmGroup : public QDialog
{
    Q_OBJECT

public:
    explicit frmGroup(QWidget* parent = nullptr);
    ~frmGroup() override;

    // Loads the screen and shows it modally; returns when it is unloaded.
    static void showModal(QWidget* parent);

    QComboBox* comboStatusTypes;
    QComboBox* ComboDueBack;
    QLineEdit* txtComment;
    QTableWidget* msFlexGridGroupChange; // check mark, field name, value; the header is the fixed row
    QLineEdit* txtGroupChangeFieldValue; // the floating editor over a value cell
    QLabel* lblCustomFields;
    QLabel* lblWarning1;
    QLabel* lblWarning2;
    QLabel* lblSelectStatus1;
    QLabel* lblSelectComment1;
    QLabel* lblComment;
    QStatusBar* StatusBarGroupChange;
    QPushButton* cmdOk;
    QPushButton* cmdCancel;
    QPushButton* cmdHelp;
    const QIcon picChecked;
    const QIcon picUnchecked;

    static constexpr int kHelpContext = 2550;

    // False when loading stopped with the screen unloaded.
    bool Form_Load();
    void Form_Activate();
    void msFlexGridGroupChange_Click(int row, int column);
    void txtGroupChangeFieldValue_LostFocus();
    // The status box's change, click and focus show the hint; a move of the mouse over the screen empties it.
    void comboStatusTypes_Change();
    void comboStatusTypes_Click();
    void comboStatusTypes_GotFocus();
    void Form_MouseMove();
    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdHelp_Click();

    // True when the row's first cell holds picChecked.
    bool isChecked(int row) const;

protected:
    void showEvent(QShowEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fillCustomFields(dao::Recordset& rs, bool onePerson);
    void setChecked(int row, bool checked);
    void openEditor(int row);
    // One person's change; false when the person pressed Cancel on a failure.
    bool writePerson(const QString& name, const QString& strStatus, const QString& dueBackText,
                     const QString& commentText, const QList<std::pair<QString, QString>>& custom, bool& written);

    int mintCol = -1;
    int mintRow = -1;
};
