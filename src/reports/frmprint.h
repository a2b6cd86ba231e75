#pragma once
// frmPrint: the status list or the phone list of one group, to the printer chosen
// (the default one until "Printer Setup" chooses another) or to a PDF file. The
// screen stays open after each job. A modal screen of the board.

#include "reports/modprint.h"

#include <QDialog>
#include <QList>
#include <memory>

class QComboBox;
class QPrinter;
class QPushButton;
class QRadioButton;

class frmPrint : public QDialog
{
    Q_OBJECT

public:
    explicit frmPrint(QWidget* parent = nullptr);
    ~frmPrint() override;

    // Centres the screen and fills the groups, the one shown on the board selected.
    void Form_Load();

    QList<QRadioButton*> OptionPrintReportType; // 0 status list, 1 phone list
    QList<QRadioButton*> OptionSort;            // 0 by name, 1 by status
    QComboBox* ComboGroups;
    QPushButton* CommandPrintOK;
    QPushButton* CommandPrintCancel;
    QPushButton* CommandPrintSetup;
    QPushButton* cmdSaveAsPdf;
    QPushButton* cmdPrintHelp;

    static constexpr int kHelpContext = 2700;

    void CommandPrintOK_Click();
    void CommandPrintSetup_Click();
    void cmdSaveAsPdf_Click();
    // The report chosen on the screen into a PDF file; false when nothing was written.
    bool subSaveReport(const QString& pdfFile);

private:
    void buildControls();
    // The report chosen on the screen; empty (with the box shown) when there is nothing to print.
    QStringList chosenReport(const QString& procedure);
    bool printerInstalled();

    std::unique_ptr<QPrinter> m_printer; // made at the first use: it asks the print system
};
