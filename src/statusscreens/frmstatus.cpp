#include "statusscreens/frmstatus.h"

#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/gui/screenplace.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"
#include "status/translog.h"
#include "statusscreens/screenparts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

using namespace platform;
using namespace statusscreens;

namespace {

const QString kProcedure = QStringLiteral("frmStatus - cmdOK_Click event");
// The grid's first column is at least 1000 twips wide; the second takes the rest.
constexpr int kNameWidth = 67;

QComboBox* editableCombo(QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    guardQuotes(combo->lineEdit());
    return combo;
}

} // namespace

frmStatus::frmStatus(QWidget* parent)
    : QDialog(parent), comboStatusTypes(editableCombo(this)), ComboDueBack(editableCombo(this)),
      txtComment(new QLineEdit(this)), msFlexGridChange(new QTableWidget(0, 2, this)),
      txtChangeFieldValue(new QLineEdit(msFlexGridChange->viewport())),
      lblCustomFieldsCYS(new QLabel(QStringLiteral("Custom Fields:"), this)),
      lblWarning(new QLabel(QStringLiteral("NOTE: You have the Auto Clear Comments option enabled. Changing the "
                                           "Status to ''In'' will erase your 'DueBack' & 'Comments'."),
                            this)),
      lblSelectStatus1(new QLabel(QStringLiteral("Select your new Status from the drop-down list,"), this)),
      lblSelectStatus2(new QLabel(QStringLiteral("or enter a new Status of your own."), this)),
      lblSelectComment1(new QLabel(QStringLiteral("Enter the Time / Date you are Due Back,"), this)),
      lblSelectComment2(new QLabel(QStringLiteral("or select from the available drop-down list:"), this)),
      lblComment(new QLabel(QStringLiteral("Enter a Comment: (Optional)"), this)),
      cmdOk(new QPushButton(QStringLiteral("OK"), this)), cmdCancel(new QPushButton(QStringLiteral("&Cancel"), this)),
      cmdHelp(new QPushButton(QStringLiteral("&Help"), this))
{
    setModal(true);
    guardQuotes(txtComment);
    shapeGrid(msFlexGridChange);
    msFlexGridChange->setHorizontalHeaderLabels({QStringLiteral("Field Name"), QStringLiteral("Value")});
    txtChangeFieldValue->hide();
    lblWarning->setWordWrap(true);
    lblWarning->hide();
    lblCustomFieldsCYS->hide();
    msFlexGridChange->hide();

    const std::pair<QWidget*, QString> named[] = {
        {comboStatusTypes, "comboStatusTypes"},
        {ComboDueBack, "ComboDueBack"},
        {txtComment, "txtComment"},
        {msFlexGridChange, "msFlexGridChange"},
        {txtChangeFieldValue, "txtChangeFieldValue"},
        {lblCustomFieldsCYS, "lblCustomFieldsCYS"},
        {lblWarning, "lblWarning"},
        {lblSelectStatus1, "lblSelectStatus1"},
        {lblSelectStatus2, "lblSelectStatus2"},
        {lblSelectComment1, "lblSelectComment1"},
        {lblSelectComment2, "lblSelectComment2"},
        {lblComment, "lblComment"},
        {cmdOk, "cmdOk"},
        {cmdCancel, "cmdCancel"},
        {cmdHelp, "cmdHelp"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(name);
    }
    setObjectName(QStringLiteral("frmStatus"));
    comboStatusTypes->setAccessibleName(lblSelectStatus1->text() + QLatin1Char(' ') + lblSelectStatus2->text());
    ComboDueBack->setAccessibleName(lblSelectComment1->text() + QLatin1Char(' ') + lblSelectComment2->text());
    txtComment->setAccessibleName(lblComment->text());
    msFlexGridChange->setAccessibleName(lblCustomFieldsCYS->text());
    txtChangeFieldValue->setAccessibleName(QStringLiteral("Value"));
    lblSelectStatus1->setBuddy(comboStatusTypes);
    lblSelectComment1->setBuddy(ComboDueBack);
    lblComment->setBuddy(txtComment);

    frameScreen(this,
                {lblSelectStatus1, lblSelectStatus2, comboStatusTypes, lblSelectComment1, lblSelectComment2,
                 ComboDueBack, lblComment, txtComment, lblCustomFieldsCYS, msFlexGridChange, lblWarning},
                {cmdOk, cmdCancel, cmdHelp, [this] { cmdOk_Click(); }, [this] { cmdCancel_Click(); },
                 [this] {
                     cmdHelp_Click();
                 }});
    setMinimumWidth(440);

    connect(msFlexGridChange, &QTableWidget::cellClicked, this, &frmStatus::msFlexGridChange_Click);
    onCellKey(msFlexGridChange, [this](int row, int column) { msFlexGridChange_Click(row, column); });
    // Moving to another cell while an edit is open ends the edit.
    connect(msFlexGridChange, &QTableWidget::currentCellChanged, this, [this] { txtChangeFieldValue_LostFocus(); });
    onFocusOut(txtChangeFieldValue, [this] { txtChangeFieldValue_LostFocus(); });
}

frmStatus::~frmStatus()
{
    hideForTeardown(this);
}

void frmStatus::showModal(QWidget* parent)
{
    frmStatus screen(parent);
    screen.Form_Load();
    screen.exec();
}

void frmStatus::Form_Load()
{
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Change YOUR Status") + QStringLiteral(" [") +
                   gRun.gstrDefaultUser + QStringLiteral("]"));

    subOpenDatabase();
    // An empty list gets one empty entry, as a row added to its table.
    const auto fillList = [](QComboBox* combo, const QString& table, const QString& field) {
        const QString sql = QStringLiteral("Select * from ") + table;
        std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        if (rs->RecordCount() == 0) {
            rs->AddNew();
            rs->Update();
            rs->Close();
            rs = fnOpenSQL(sql);
        }
        for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
            combo->addItem(rs->Fields(field).Text());
        }
        rs->Close();
    };
    fillList(comboStatusTypes, QStringLiteral("StatusTypesTable"), QStringLiteral("Status"));
    fillList(ComboDueBack, QStringLiteral("DueBackTable"), QStringLiteral("DueBack"));

    subOpenDatabase();
    const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(status::employeeRowSql(gRun.gstrDefaultUser));
    if (rs->RecordCount() == 0) {
        MsgBox(QStringLiteral("Sorry, your name is not in the database on server: ") + gRun.gstrCurrentDatabasePath,
               vbInformation);
        rs->Close();
        subCloseDatabase();
        return;
    }
    rs->MoveFirst();
    comboStatusTypes->setCurrentText(rs->Fields(QStringLiteral("Status")).Text());
    ComboDueBack->setCurrentText(rs->Fields(QStringLiteral("DueBack")).Text());
    txtComment->setText(rs->Fields(QStringLiteral("Comments")).Text());
    if (hasCustomColumns(*rs)) {
        lblCustomFieldsCYS->show();
        msFlexGridChange->show();
        fillCustomFields(*rs);
    }
    rs->Close();
    subCloseDatabase();
    lblWarning->setVisible(gPerson.gblnAutoClearComments);
}

// Every custom field but those marked read-only; one empty row when none is left.
void frmStatus::fillCustomFields(dao::Recordset& rs)
{
    msFlexGridChange->setRowCount(0);
    for (const CustomField& field : customFields(rs)) {
        if (field.companion == CustomField::Companion::True) {
            continue;
        }
        const int row = msFlexGridChange->rowCount();
        msFlexGridChange->insertRow(row);
        msFlexGridChange->setItem(row, 0, new QTableWidgetItem(field.name));
        msFlexGridChange->setItem(row, 1, new QTableWidgetItem(field.value));
    }
    if (msFlexGridChange->rowCount() == 0) {
        msFlexGridChange->setRowCount(1);
    }
    msFlexGridChange->resizeColumnToContents(0);
    msFlexGridChange->setColumnWidth(0, std::max(msFlexGridChange->columnWidth(0), kNameWidth));
}

// Centred once its contents are in place, then Activate.
void frmStatus::showEvent(QShowEvent* event)
{
    adjustSize();
    centreOnScreen(this);
    QDialog::showEvent(event);
    Form_Activate();
}

// The Out command through this screen starts from a clean form.
void frmStatus::Form_Activate()
{
    mainScreen().setBusyPointer(false);
    if (gRun.gblnOutViaStatusScreen && gPerson.gblnChangeScreenPopUp) {
        gRun.gblnOutViaStatusScreen = false;
        comboStatusTypes->setCurrentText(QStringLiteral("Out"));
        ComboDueBack->setCurrentText(QString());
        txtComment->setText(QString());
        comboStatusTypes->setFocus();
    }
}

void frmStatus::msFlexGridChange_Click(int row, int column)
{
    Q_UNUSED(column);
    const QTableWidgetItem* name = msFlexGridChange->item(row, 0);
    if (!name || name->text().trimmed().isEmpty()) {
        return;
    }
    txtChangeFieldValue_LostFocus();
    msFlexGridChange->setCurrentCell(row, 1); // before the edit opens: a move of the cell ends an edit
    mintRow = row;
    mintCol = 1; // the editor always edits the value
    layEditorOver(msFlexGridChange, txtChangeFieldValue, row, mintCol);
}

void frmStatus::txtChangeFieldValue_LostFocus()
{
    if (mintRow < 0) {
        return;
    }
    const int row = mintRow;
    const int column = mintCol;
    mintRow = mintCol = -1; // first, as hiding the editor takes its focus again
    if (QTableWidgetItem* cell = msFlexGridChange->item(row, column)) {
        cell->setText(txtChangeFieldValue->text());
    } else {
        msFlexGridChange->setItem(row, column, new QTableWidgetItem(txtChangeFieldValue->text()));
    }
    txtChangeFieldValue->hide();
}

void frmStatus::cmdOk_Click()
{
    txtChangeFieldValue_LostFocus();
    QString status = comboStatusTypes->currentText().trimmed();
    if (status.isEmpty()) {
        status = QStringLiteral("Please Set");
    }
    if (status.toUpper() == QLatin1String("IN")) {
        status = QStringLiteral("In");
    } else if (status.toUpper() == QLatin1String("OUT")) {
        status = QStringLiteral("Out");
    }
    comboStatusTypes->setCurrentText(status);
    if (status == QLatin1String("In")) {
        if (gPerson.gblnAutoClearComments) {
            txtComment->clear();
            ComboDueBack->setCurrentText(QString());
        }
        if (!ComboDueBack->currentText().trimmed().isEmpty() || !txtComment->text().trimmed().isEmpty()) {
            if (MsgBox(QStringLiteral("Would you like to clear the 'Due Back' and 'Comments' columns?"),
                       vbYesNo + vbExclamation, QStringLiteral("Clear Columns")) == vbYes) {
                txtComment->clear();
                ComboDueBack->setCurrentText(QString());
            }
        }
    }
    mainScreen().setBusyPointer(true);
    if (!writeChange(status)) {
        mainScreen().setBusyPointer(false);
        return; // given up: the screen stays open, nothing written
    }
    mainScreen().setBusyPointer(false);
    accept();
    if (gPerson.gblnAutoMinimize) {
        mainScreen().minimize();
        mainScreen().subTaskBarSysTrayActivation();
    }
}

// The row with its custom fields, the tracking mirror, the log row and the
// counter: one unit of change. A failure that does not pass is put to the
// person; Retry runs the whole unit again.
bool frmStatus::writeChange(const QString& status)
{
    const QString strStatus = left250(status);
    // The code is looked up before the unit, so that its box never shows while the
    // write lock is held. The close timer may have shut the file since Load.
    subOpenDatabase();
    subSetStatusCode(strStatus);
    ComboDueBack->setCurrentText(left250(ComboDueBack->currentText()));
    txtComment->setText(txtComment->text().trimmed());
    const QString dueBack = ComboDueBack->currentText();
    const QString comment = txtComment->text();
    QList<std::pair<QString, QString>> custom; // column, value
    for (int row = 0; row < msFlexGridChange->rowCount(); ++row) {
        const QTableWidgetItem* name = msFlexGridChange->item(row, 0);
        if (!name || name->text().trimmed().isEmpty()) {
            continue;
        }
        const QTableWidgetItem* cell = msFlexGridChange->item(row, 1);
        const QString value = cell ? cell->text().trimmed() : QString();
        // An erased field is stored as one blank, not as empty or Null.
        custom.append({QStringLiteral("New_") + name->text().trimmed(), value.isEmpty() ? QStringLiteral(" ") : value});
    }

    const QString sql = status::employeeRowSql(gRun.gstrDefaultUser);
    const bool written = fnRunUnit(
        [&] {
            const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
            rs->MoveFirst();
            rs->Edit();
            rs->Fields(QStringLiteral("StatusCode")) = QString::number(gRun.gintStatusCode);
            rs->Fields(QStringLiteral("Status")) = strStatus;
            rs->Fields(QStringLiteral("DueBack")) = dueBack.trimmed();
            rs->Fields(QStringLiteral("Comments")) = comment;
            rs->Fields(QStringLiteral("LastModified")) = status::stampedBy(gRun.gstrDefaultUser);
            for (const auto& [column, value] : custom) {
                rs->Fields(column) = value;
            }
            rs->Update();
            rs->Close();
            subExecuteSQL(status::trackingMirrorSql(strStatus, gRun.gstrDefaultUser));
            subUpdateTransactionLog(strStatus, dueBack, comment, QString());
            subUpdateStatusCounter();
        },
        [](const auto& e, int) {
            Err.Set(e);
            return fnDatabaseBusyResponse(e.description(), e.number(), kProcedure) == vbRetry;
        });
    subCloseDatabase();
    if (written) {
        gRun.gstrDueBack = dueBack;
        gRun.gstrComment = comment;
        DoEvents();
    }
    return written;
}

void frmStatus::cmdCancel_Click()
{
    reject();
}

void frmStatus::cmdHelp_Click()
{
    shell().showHelp(gRun.gstrHelpFile, kHelpContext);
}
