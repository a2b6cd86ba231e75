// frmPrint's controls and its buttons: the report to the printer, to a PDF file,
// the printer's set-up, and help.
#include "reports/frmprint.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "platform/gui/spoken.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "reports/reportpage.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace platform;

namespace {

QList<QRadioButton*> choices(QWidget* parent, const char* name, const QStringList& captions)
{
    QList<QRadioButton*> buttons;
    auto* group = new QButtonGroup(parent);
    for (const QString& caption : captions) {
        buttons << named(new QRadioButton(caption, parent), QString::fromLatin1(name), caption);
        group->addButton(buttons.last(), int(buttons.size() - 1));
        parent->layout()->addWidget(buttons.last());
    }
    buttons.first()->setChecked(true);
    return buttons;
}

} // namespace

frmPrint::frmPrint(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmPrint"));
    setModal(true);
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Print Reports"));
    buildControls();
    connect(CommandPrintOK, &QPushButton::clicked, this, &frmPrint::CommandPrintOK_Click);
    connect(CommandPrintCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(CommandPrintSetup, &QPushButton::clicked, this, &frmPrint::CommandPrintSetup_Click);
    connect(cmdSaveAsPdf, &QPushButton::clicked, this, &frmPrint::cmdSaveAsPdf_Click);
    const auto help = [] {
        shell().showHelp(gRun.gstrHelpFile, kHelpContext);
    };
    connect(cmdPrintHelp, &QPushButton::clicked, this, help);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, help);
    // The sort applies to the status list only.
    connect(OptionPrintReportType[reports::StatusList], &QRadioButton::toggled, this, [this](bool statusList) {
        for (QRadioButton* sort : std::as_const(OptionSort)) {
            sort->setEnabled(statusList);
        }
    });
}

frmPrint::~frmPrint() = default;

void frmPrint::buildControls()
{
    auto* type = named(new QGroupBox(QStringLiteral("Report"), this), QStringLiteral("FrameReportType"),
                       QStringLiteral("Report"));
    new QVBoxLayout(type);
    OptionPrintReportType = choices(type, "OptionPrintReportType",
                                    {QStringLiteral("Status List: (All information)"),
                                     QStringLiteral("Phone List: (Name and Phone / Extension Number only)")});
    auto* sort =
        named(new QGroupBox(QStringLiteral("Sort"), this), QStringLiteral("FrameSort"), QStringLiteral("Sort"));
    new QVBoxLayout(sort);
    OptionSort = choices(sort, "OptionSort", {QStringLiteral("Sort by Name"), QStringLiteral("Sort by Status")});
    auto* groupLabel = new QLabel(QStringLiteral("&Group:"), this);
    ComboGroups = named(new QComboBox(this), QStringLiteral("ComboGroups"), QStringLiteral("Group"));
    groupLabel->setBuddy(ComboGroups);

    CommandPrintOK =
        named(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("CommandPrintOK"), QStringLiteral("Print"));
    CommandPrintOK->setDefault(true);
    cmdSaveAsPdf = named(new QPushButton(QStringLiteral("Save as P&DF..."), this), QStringLiteral("cmdSaveAsPdf"),
                         QStringLiteral("Save as PDF"));
    CommandPrintSetup = named(new QPushButton(QStringLiteral("&Printer Setup"), this),
                              QStringLiteral("CommandPrintSetup"), QStringLiteral("Printer Setup"));
    CommandPrintCancel = named(new QPushButton(QStringLiteral("Cancel"), this), QStringLiteral("CommandPrintCancel"),
                               QStringLiteral("Cancel"));
    cmdPrintHelp =
        named(new QPushButton(QStringLiteral("&Help"), this), QStringLiteral("cmdPrintHelp"), QStringLiteral("Help"));

    auto* left = new QVBoxLayout;
    left->addWidget(type);
    left->addWidget(sort);
    left->addWidget(groupLabel);
    left->addWidget(ComboGroups);
    auto* right = new QVBoxLayout;
    for (QPushButton* button : {CommandPrintOK, cmdSaveAsPdf, CommandPrintSetup, CommandPrintCancel, cmdPrintHelp}) {
        right->addWidget(button);
    }
    right->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(right);
}

void frmPrint::Form_Load()
{
    adjustSize();
    centreOnScreen(this);
    ComboGroups->clear();
    ComboGroups->addItem(QStringLiteral("Everyone"));
    try {
        subOpenDatabase();
        std::unique_ptr<dao::Recordset> rs = fnOpenSQL(QStringLiteral("SELECT * FROM GroupTable"));
        for (; !rs->isEOF(); rs->MoveNext()) {
            ComboGroups->addItem(rs->Fields(QStringLiteral("GroupName")).Text());
        }
        rs->Close();
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(QStringLiteral("frmPrint - Form_Load event"), errorbox::Joined);
    }
    subCloseDatabase();
    ComboGroups->setCurrentIndex(std::max(0, ComboGroups->findText(gRun.gstrCurrentGroup)));
}

QStringList frmPrint::chosenReport(const QString& procedure)
{
    const auto type = OptionPrintReportType[reports::PhoneList]->isChecked() ? reports::PhoneList : reports::StatusList;
    const auto sort = OptionSort[reports::SortByStatus]->isChecked() ? reports::SortByStatus : reports::SortByName;
    QStringList lines;
    try {
        lines = reports::fnReportLines(type, sort, ComboGroups->currentText());
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(procedure, errorbox::Joined);
        return {};
    }
    if (lines.isEmpty()) {
        MsgBox(QStringLiteral("No members have been assigned to that Group yet."));
    }
    return lines;
}

// Told plainly rather than left to a print dialog with nowhere to send the job.
bool frmPrint::printerInstalled()
{
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        MsgBox(QStringLiteral("No printer is installed on this computer. Use \"Save as PDF\" to keep the report "
                              "as a file, or ask your administrator to set up a printer."),
               vbExclamation, gRun.gstrProgramTitle + QStringLiteral(" - No Printer"));
        return false;
    }
    if (!m_printer) {
        // The desktop's default printer; a print system with printers but no default gives its first.
        QPrinterInfo chosen = QPrinterInfo::defaultPrinter();
        if (chosen.isNull()) {
            chosen = QPrinterInfo::availablePrinters().constFirst();
        }
        m_printer = std::make_unique<QPrinter>(chosen, QPrinter::HighResolution);
    }
    return true;
}

void frmPrint::CommandPrintOK_Click()
{
    const QString procedure = QStringLiteral("frmPrint - CommandPrintOK_Click event");
    if (!printerInstalled()) {
        return;
    }
    const QStringList lines = chosenReport(procedure);
    if (lines.isEmpty()) {
        return;
    }
    m_printer->setOutputFormat(QPrinter::NativeFormat);
    m_printer->setDocName(lines.first().trimmed());
    if (!reports::paintReport(*m_printer, lines)) {
        Err.Clear();
        Err.Number = vbErrFileAccess;
        Err.Description =
            QStringLiteral("The printer ") + m_printer->printerName() + QStringLiteral(" did not start the job.");
        errorbox::showGeneral(procedure, errorbox::Joined);
    }
}

void frmPrint::CommandPrintSetup_Click()
{
    if (!printerInstalled()) {
        return;
    }
    QPrintDialog dialog(m_printer.get(), this);
    dialog.setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Printer Setup"));
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    dialog.exec();
}

void frmPrint::cmdSaveAsPdf_Click()
{
    const QString file = QFileDialog::getSaveFileName(this, gRun.gstrProgramTitle + QStringLiteral(" - Save as PDF"),
                                                      ComboGroups->currentText() + QStringLiteral(".pdf"),
                                                      QStringLiteral("PDF files (*.pdf)"));
    if (!file.isEmpty()) {
        subSaveReport(file);
    }
}

bool frmPrint::subSaveReport(const QString& pdfFile)
{
    const QString procedure = QStringLiteral("frmPrint - cmdSaveAsPdf_Click event");
    const QStringList lines = chosenReport(procedure);
    if (lines.isEmpty()) {
        return false;
    }
    QPrinter pdf(QPrinter::HighResolution);
    pdf.setOutputFormat(QPrinter::PdfFormat);
    pdf.setOutputFileName(pdfFile);
    pdf.setDocName(lines.first().trimmed());
    if (!reports::paintReport(pdf, lines)) {
        Err.Clear();
        Err.Number = vbErrFileAccess;
        Err.Description = QStringLiteral("The file ") + pdfFile + QStringLiteral(" cannot be written.");
        errorbox::showGeneral(procedure, errorbox::Joined);
        return false;
    }
    return true;
}
