#pragma once
// frmOptions: the person's own settings (their row of EmployeeSettingsTable) and
// phone number, on frames that the tab strip TabStripOptions switches between.
// OK writes them, puts them in the run-wide values and lets the board show them
// at once; Cancel and Esc write nothing. A modal screen of the board.

#include <QDialog>
#include <QList>
#include <functional>
#include <variant>

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStackedLayout;
class QTabBar;

class frmOptions : public QDialog
{
    Q_OBJECT

public:
    explicit frmOptions(QWidget* parent = nullptr);

    // Load, then the screen modal; a person whose row has gone gets the box and no screen.
    int exec() override;
    // False when the person's settings row is gone (the box is shown): there is nothing to edit.
    bool Form_Load();

    QTabBar* TabStripOptions;
    QList<QFrame*> FrameOptions; // one per tab, in the tabs' order
    QCheckBox* chkAutoLogIn;
    QCheckBox* chkAutoLogOut;
    QCheckBox* chkAutoClearComments;
    QCheckBox* chkChangeScreenPopUp;
    QCheckBox* chkListViewPopUp;
    QCheckBox* chkDisplayTreeView;
    QCheckBox* chkMinimizeOnClose;
    QLabel* lblMinimizeOnCloseWarning;
    QList<QRadioButton*> optSysTrayTaskBar;
    QList<QRadioButton*> optionRefreshRate;
    QList<QRadioButton*> optIconSize;
    QList<QRadioButton*> optToolBarText;
    QCheckBox* chkFontBoldDisplay;
    QLabel* lblSelectFontSize;
    QComboBox* comboFontSizeDisplay;
    QLabel* lblPhone;
    QLineEdit* txtPhone;
    QPushButton* cmdOkOptions;
    QPushButton* cmdCancelOptions;
    QPushButton* cmdOptionsHelp;

    // The screen's help topic, which Help and F1 open.
    static constexpr int kHelpContext = 2600;

    void cmdOkOptions_Click();
    void cmdCancelOptions_Click();
    void cmdOptionsHelp_Click();

private:
    // One setting of the row: its field, its run-wide value, and the control that
    // shows it (none for AutoMinimize, which the screen writes but does not show).
    using Memory = std::variant<bool*, long long*>;
    struct Setting
    {
        const char* field;
        Memory memory;
        bool isFlag; // read from the row at Load (a null is off); the others show the run-wide value
        std::function<long long()> shown;
        std::function<void(long long)> show;
    };
    QList<Setting> settings();
    bool writeRows(const QList<Setting>& written, const QList<long long>& values);

    void buildControls();
    QFrame* addFrame(const QString& caption);
    QList<QRadioButton*> addChoices(QFrame* frame, const char* name, const QStringList& captions);
    Setting check(const char* field, QCheckBox* box, Memory memory);
    Setting choice(const char* field, const QList<QRadioButton*>& buttons, const QList<long long>& values,
                   long long* memory);

    QStackedLayout* m_frames = nullptr;
};
