#include "statusscreens/frmgroup.h"

#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/clock.h"
#include "platform/gui/screenplace.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"
#include "status/translog.h"
#include "statusscreens/screenparts.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStatusBar>
#include <QStyleOptionButton>
#include <QTableWidget>

using namespace platform;
using namespace statusscreens;

namespace {

const QString kProcedure = QStringLiteral("frmGroup - cmdOK_Click event");
const QString kNoChange = QStringLiteral("(NO CHANGE)");
const QString kStatusHint = QStringLiteral(" If Status is BLANK it is assumed to be the same as NO CHANGE.");
constexpr int kCheckColumn = 0;
constexpr int kNameColumn = 1;
constexpr int kValueColumn = 2;

QComboBox* editableCombo(QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    guardQuotes(combo->lineEdit());
    return combo;
}

// A check box as the style draws it, on or off.
QIcon checkPicture(bool on)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QStyleOptionButton option;
    option.rect = pixmap.rect();
    option.state = QStyle::State_Enabled | (on ? QStyle::State_On : QStyle::State_Off);
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
    return QIcon(pixmap);
}

QString cellText(const QTableWidget* grid, int row, int column)
{
    const QTableWidgetItem* cell = grid->item(row, column);
    return cell ? cell->text() : QString();
}

void setCellText(QTableWidget* grid, int row, int column, const QString& text)
{
    if (QTableWidgetItem* cell = grid->item(row, column)) {
        cell->setText(text);
    } else {
        grid->setItem(row, column, new QTableWidgetItem(text));
    }
}

} // namespace

frmGroup::frmGroup(QWidget* parent)
    : QDialog(parent), comboStatusTypes(editableCombo(this)), ComboDueBack(editableCombo(this)),
      txtComment(new QLineEdit(this)), msFlexGridGroupChange(new QTableWidget(0, 3, this)),
      txtGroupChangeFieldValue(new QLineEdit(msFlexGridGroupChange->viewport())),
      lblCustomFields(new QLabel(QStringLiteral("Custom Fields:"), this)),
      lblWarning1(new QLabel(QStringLiteral("NOTE: Any fields (except Status) containing (NO CHANGE) will not be "
                                            "updated - allowing you to select the specific fields to update with "
                                            "new data."),
                             this)),
      lblWarning2(new QLabel(QStringLiteral("To ERASE data, simply delete the text in a field & press OK. "
                                            "(Excluding the Status field)"),
                             this)),
      lblSelectStatus1(new QLabel(QStringLiteral("Select a new Status for the selected users from the drop-down "
                                                 "list, or enter a new Status of your own."),
                                  this)),
      lblSelectComment1(new QLabel(QStringLiteral("Enter the 'Due Back' Time / Date details, or select from the "
                                                  "available drop-down list:"),
                                   this)),
      lblComment(new QLabel(QStringLiteral("Comments:"), this)), StatusBarGroupChange(new QStatusBar(this)),
      cmdOk(new QPushButton(QStringLiteral("OK"), this)), cmdCancel(new QPushButton(QStringLiteral("&Cancel"), this)),
      cmdHelp(new QPushButton(QStringLiteral("&Help"), this)), picChecked(checkPicture(true)),
      picUnchecked(checkPicture(false))
{
    setModal(true);
    setMouseTracking(true);
    guardQuotes(txtComment);
    shapeGrid(msFlexGridGroupChange);
    msFlexGridGroupChange->setHorizontalHeaderLabels({QString(), QString(), QStringLiteral("Change all To:")});
    txtGroupChangeFieldValue->hide();
    for (QLabel* label : {lblWarning1, lblWarning2, lblSelectStatus1, lblSelectComment1}) {
        label->setWordWrap(true);
    }
    lblCustomFields->hide();
    msFlexGridGroupChange->hide();
    StatusBarGroupChange->setSizeGripEnabled(false);

    const std::pair<QWidget*, QString> named[] = {
        {comboStatusTypes, "comboStatusTypes"},
        {ComboDueBack, "ComboDueBack"},
        {txtComment, "txtComment"},
        {msFlexGridGroupChange, "msFlexGridGroupChange"},
        {txtGroupChangeFieldValue, "txtGroupChangeFieldValue"},
        {lblCustomFields, "lblCustomFields"},
        {lblWarning1, "lblWarning1"},
        {lblWarning2, "lblWarning2"},
        {lblSelectStatus1, "lblSelectStatus1"},
        {lblSelectComment1, "lblSelectComment1"},
        {lblComment, "lblComment"},
        {StatusBarGroupChange, "StatusBarGroupChange"},
        {cmdOk, "cmdOk"},
        {cmdCancel, "cmdCancel"},
        {cmdHelp, "cmdHelp"},
    };
    for (const auto& [widget, name] : named) {
        widget->setObjectName(name);
    }
    setObjectName(QStringLiteral("frmGroup"));
    comboStatusTypes->setAccessibleName(lblSelectStatus1->text());
    ComboDueBack->setAccessibleName(lblSelectComment1->text());
    txtComment->setAccessibleName(lblComment->text());
    msFlexGridGroupChange->setAccessibleName(lblCustomFields->text());
    txtGroupChangeFieldValue->setAccessibleName(QStringLiteral("Change all To:"));
    lblSelectStatus1->setBuddy(comboStatusTypes);
    lblSelectComment1->setBuddy(ComboDueBack);
    lblComment->setBuddy(txtComment);

    QGridLayout* layout =
        frameScreen(this,
                    {lblSelectStatus1, comboStatusTypes, lblSelectComment1, ComboDueBack, lblComment, txtComment,
                     lblCustomFields, msFlexGridGroupChange, lblWarning1, lblWarning2},
                    {cmdOk, cmdCancel, cmdHelp, [this] { cmdOk_Click(); }, [this] { cmdCancel_Click(); },
                     [this] {
                         cmdHelp_Click();
                     }});
    layout->addWidget(StatusBarGroupChange, layout->rowCount(), 0, 1, 2);
    setMinimumWidth(480);

    connect(msFlexGridGroupChange, &QTableWidget::cellClicked, this, &frmGroup::msFlexGridGroupChange_Click);
    onCellKey(msFlexGridGroupChange, [this](int row, int column) { msFlexGridGroupChange_Click(row, column); });
    connect(msFlexGridGroupChange, &QTableWidget::currentCellChanged, this,
            [this] { txtGroupChangeFieldValue_LostFocus(); });
    onFocusOut(txtGroupChangeFieldValue, [this] { txtGroupChangeFieldValue_LostFocus(); });
    connect(comboStatusTypes, &QComboBox::editTextChanged, this, &frmGroup::comboStatusTypes_Change);
    connect(comboStatusTypes, &QComboBox::activated, this, &frmGroup::comboStatusTypes_Click);
    comboStatusTypes->installEventFilter(this);
    comboStatusTypes->lineEdit()->installEventFilter(this);
}

frmGroup::~frmGroup()
{
    hideForTeardown(this);
}

void frmGroup::showModal(QWidget* parent)
{
    frmGroup screen(parent);
    if (screen.Form_Load()) {
        screen.exec();
    }
}

bool frmGroup::Form_Load()
{
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Group Change") + QStringLiteral(" [") +
                   gRun.gstrDefaultUser + QStringLiteral("]"));
    subOpenDatabase();
    const auto fillList = [](QComboBox* combo, const QString& table, const QString& field) {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(QStringLiteral("Select * from ") + table);
        combo->addItem(kNoChange);
        if (rs->RecordCount() > 0) {
            for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
                combo->addItem(rs->Fields(field).Text());
            }
        }
        rs->Close();
    };
    fillList(comboStatusTypes, QStringLiteral("StatusTypesTable"), QStringLiteral("Status"));
    fillList(ComboDueBack, QStringLiteral("DueBackTable"), QStringLiteral("DueBack"));

    MainScreen& board = mainScreen();
    const QStringList selected = board.selectedRowTexts(int(gBoard.gintNameColumn));
    if (selected.isEmpty()) {
        MsgBox(QStringLiteral("No users or items selected for Group Change. Press OK to exit."));
        return true;
    }
    const bool onePerson = selected.size() == 1;
    std::unique_ptr<dao::Recordset> rs;
    if (onePerson) {
        rs = fnOpenSQL(status::employeeRowSql(selected.last().trimmed()));
        if (rs->RecordCount() == 0) {
            rs->Close();
            subCloseDatabase();
            MsgBox(QStringLiteral(" The Administrator has just deleted or renamed a user or item. Press OK to "
                                  "refresh the list, then try again."));
            reject();
            return false;
        }
        rs->MoveFirst();
        comboStatusTypes->setCurrentText(rs->Fields(QStringLiteral("Status")).Text());
        ComboDueBack->setCurrentText(rs->Fields(QStringLiteral("DueBack")).Text());
        txtComment->setText(rs->Fields(QStringLiteral("Comments")).Text());
        if (board.toolbarTag() == QLatin1String("Out")) {
            comboStatusTypes->setCurrentText(QStringLiteral("Out"));
            board.setToolbarTag(QString());
        }
    } else {
        // Only to learn the columns.
        rs = fnOpenSQL(QStringLiteral("SELECT top 1 * FROM EmployeeTable"));
        comboStatusTypes->setCurrentText(kNoChange);
        ComboDueBack->setCurrentText(kNoChange);
        txtComment->setText(kNoChange);
    }
    if (rs->RecordCount() > 0 && hasCustomColumns(*rs)) {
        rs->MoveFirst();
        lblCustomFields->show();
        msFlexGridGroupChange->show();
        fillCustomFields(*rs, onePerson);
    }
    rs->Close();
    subCloseDatabase();
    StatusBarGroupChange->clearMessage();
    return true;
}

// Only the fields whose read-only mark is false: a Null mark hides the field too.
void frmGroup::fillCustomFields(dao::Recordset& rs, bool onePerson)
{
    QTableWidget* grid = msFlexGridGroupChange;
    grid->setRowCount(0);
    for (const CustomField& field : customFields(rs)) {
        if (field.companion != CustomField::Companion::False) {
            continue;
        }
        const int row = grid->rowCount();
        grid->insertRow(row);
        grid->setItem(row, kNameColumn, new QTableWidgetItem(field.name));
        grid->setItem(row, kValueColumn, new QTableWidgetItem(onePerson ? field.value : kNoChange));
        setChecked(row, false);
    }
    if (grid->rowCount() == 0) {
        grid->setRowCount(1);
        grid->setItem(0, kValueColumn, new QTableWidgetItem(kNoChange));
    }
    grid->resizeColumnToContents(kCheckColumn);
    grid->resizeColumnToContents(kNameColumn);
}

void frmGroup::setChecked(int row, bool checked)
{
    auto* cell = new QTableWidgetItem(checked ? picChecked : picUnchecked, QString());
    cell->setData(Qt::UserRole, checked);
    cell->setData(Qt::AccessibleTextRole, checked ? QStringLiteral("Checked") : QStringLiteral("Unchecked"));
    msFlexGridGroupChange->setItem(row, kCheckColumn, cell);
}

bool frmGroup::isChecked(int row) const
{
    const QTableWidgetItem* cell = msFlexGridGroupChange->item(row, kCheckColumn);
    return cell && cell->data(Qt::UserRole).toBool();
}

// Centred once its contents are in place, then Activate.
void frmGroup::showEvent(QShowEvent* event)
{
    adjustSize();
    centreOnScreen(this);
    QDialog::showEvent(event);
    Form_Activate();
}

void frmGroup::Form_Activate()
{
    mainScreen().setBusyPointer(false);
}

void frmGroup::comboStatusTypes_Change()
{
    StatusBarGroupChange->showMessage(kStatusHint);
}

void frmGroup::comboStatusTypes_Click()
{
    StatusBarGroupChange->showMessage(kStatusHint);
}

void frmGroup::comboStatusTypes_GotFocus()
{
    StatusBarGroupChange->showMessage(kStatusHint);
}

void frmGroup::Form_MouseMove()
{
    StatusBarGroupChange->clearMessage();
}

void frmGroup::mouseMoveEvent(QMouseEvent* event)
{
    Form_MouseMove();
    QDialog::mouseMoveEvent(event);
}

// The status box's focus, and a click on its button, which takes no focus of its own.
bool frmGroup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        comboStatusTypes_GotFocus();
    } else if (event->type() == QEvent::MouseButtonPress) {
        comboStatusTypes_Click();
    }
    return QDialog::eventFilter(watched, event);
}

// The check column toggles the mark: checking opens the editor on the value,
// unchecking empties it. A click elsewhere checks the row and opens the editor.
void frmGroup::msFlexGridGroupChange_Click(int row, int column)
{
    if (cellText(msFlexGridGroupChange, row, kNameColumn).trimmed().isEmpty()) {
        return;
    }
    txtGroupChangeFieldValue_LostFocus();
    if (column == kCheckColumn && isChecked(row)) {
        setChecked(row, false);
        setCellText(msFlexGridGroupChange, row, kValueColumn, QString());
        return;
    }
    setChecked(row, true);
    openEditor(row);
}

void frmGroup::openEditor(int row)
{
    msFlexGridGroupChange->setCurrentCell(row, kValueColumn); // before the edit opens: a move ends an edit
    mintRow = row;
    mintCol = kValueColumn;
    layEditorOver(msFlexGridGroupChange, txtGroupChangeFieldValue, row, kValueColumn);
}

void frmGroup::txtGroupChangeFieldValue_LostFocus()
{
    if (mintRow < 0) {
        return;
    }
    const int row = mintRow;
    const int column = mintCol;
    mintRow = mintCol = -1; // first, as hiding the editor takes its focus again
    setCellText(msFlexGridGroupChange, row, column, txtGroupChangeFieldValue->text());
    txtGroupChangeFieldValue->hide();
}

void frmGroup::cmdOk_Click()
{
    txtGroupChangeFieldValue_LostFocus();
    QString status = comboStatusTypes->currentText().trimmed();
    for (const QString& word : {QStringLiteral("In"), QStringLiteral("Out"), QStringLiteral("Busy")}) {
        if (status.toUpper() == word.toUpper()) {
            status = word;
        }
    }
    comboStatusTypes->setCurrentText(status);

    MainScreen& board = mainScreen();
    const qsizetype nameAt = board.listHeaders().indexOf(QStringLiteral("Name"));
    if (nameAt >= 0) {
        gBoard.gintNameColumn = nameAt;
    }
    QList<std::pair<QString, QString>> custom; // column, value, of the checked rows
    for (int row = 0; row < msFlexGridGroupChange->rowCount(); ++row) {
        if (isChecked(row)) {
            const QString value = cellText(msFlexGridGroupChange, row, kValueColumn).trimmed();
            custom.append({QStringLiteral("New_") + cellText(msFlexGridGroupChange, row, kNameColumn).trimmed(),
                           value.isEmpty() ? QStringLiteral(" ") : value});
        }
    }
    const QString strStatus = left250(status);
    if (!strStatus.isEmpty() && strStatus != kNoChange) {
        // Looked up once, before any unit: its box never shows under the write lock.
        // The close timer may have shut the file since Load.
        subOpenDatabase();
        subSetStatusCode(strStatus);
    }
    bool anyWritten = false;
    for (const QString& listed : board.selectedRowTexts(int(gBoard.gintNameColumn))) {
        bool written = false;
        const bool goOn =
            writePerson(listed.trimmed(), strStatus, ComboDueBack->currentText(), txtComment->text(), custom, written);
        anyWritten = anyWritten || written;
        if (!goOn) {
            // Cancelled: the screen stays open; what was written is announced all the same.
            if (anyWritten) {
                subUpdateStatusCounter();
            }
            subCloseDatabase();
            return;
        }
    }
    subUpdateStatusCounter();
    subCloseDatabase();
    accept();
    if (gPerson.gblnAutoMinimize) {
        board.minimize();
        board.subTaskBarSysTrayActivation();
    }
}

// One person's row, custom fields, tracking mirror and log row, as one unit of
// change. A row the administrator deleted is announced and passed over; so is a
// person whose write fails, after its box. A failure to open that does not pass
// is put to the person: Retry runs the unit again, Cancel ends the group change.
bool frmGroup::writePerson(const QString& name, const QString& strStatus, const QString& dueBackText,
                           const QString& commentText, const QList<std::pair<QString, QString>>& custom, bool& written)
{
    const QString dueBack = left250(dueBackText);
    const QString comment = left250(commentText);
    bool missing = false;
    bool opening = true;
    bool cancelled = false;
    written = fnRunUnit(
        [&] {
            opening = true;
            missing = false;
            const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(status::employeeRowSql(name));
            if (rs->RecordCount() == 0) {
                missing = true;
                return;
            }
            opening = false;
            rs->MoveFirst();
            rs->Edit();
            if (!strStatus.isEmpty() && strStatus != kNoChange) {
                rs->Fields(QStringLiteral("StatusCode")) = QString::number(gRun.gintStatusCode);
                rs->Fields(QStringLiteral("Status")) = strStatus;
            }
            if (dueBack != kNoChange) {
                rs->Fields(QStringLiteral("DueBack")) = dueBack;
            }
            if (comment != kNoChange) {
                rs->Fields(QStringLiteral("Comments")) = comment;
            }
            rs->Fields(QStringLiteral("LastModified")) = status::stampedBy(gRun.gstrDefaultUser);
            for (const auto& [column, value] : custom) {
                rs->Fields(column) = value;
            }
            rs->Update();
            rs->Close();
            // Only the first follower's row, and the status with its quotes, as this
            // screen always wrote the mirror.
            const std::unique_ptr<dao::Recordset> tracking = fnOpenSQL(
                QStringLiteral("SELECT * FROM EmployeeStatusTracking WHERE Trackee LIKE ") + dao::quoteLike(name));
            if (tracking->RecordCount() > 0) {
                tracking->MoveFirst();
                tracking->Edit();
                tracking->Fields(QStringLiteral("TrackeeStatus")) =
                    QStringLiteral("\"") + strStatus + QStringLiteral("\"");
                tracking->Fields(QStringLiteral("TrackeeLastUpdated")) = DateTimeNum(Now());
                tracking->Update();
            }
            tracking->Close();
            subUpdateTransactionLog(comboStatusTypes->currentText().trimmed(), dueBackText.trimmed(),
                                    commentText.trimmed(), name);
        },
        [&](const auto& e, int) {
            Err.Set(e);
            if (opening) {
                if (fnDatabaseBusyResponse(e.description(), e.number(), kProcedure) == vbRetry) {
                    return true;
                }
                cancelled = true;
                return false;
            }
            MsgBox(status::errorHead(kProcedure));
            return false;
        });
    if (missing) {
        written = false;
        MsgBox(QStringLiteral("User or Item ") + name +
               QStringLiteral(" has been deleted or renamed by the Administrator. Press OK to continue"));
    }
    return !cancelled;
}

void frmGroup::cmdCancel_Click()
{
    reject();
}

void frmGroup::cmdHelp_Click()
{
    shell().showHelp(gRun.gstrHelpFile, kHelpContext);
}
