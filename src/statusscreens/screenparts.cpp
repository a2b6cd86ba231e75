#include "statusscreens/screenparts.h"

#include "dao/dao.h"
#include "platform/gui/spoken.h"

#include <QDialog>
#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

namespace statusscreens {

namespace {

constexpr int kCut = 250;
// The editor stands this much less high than its row (30 twips).
constexpr int kEditorShorter = 2;
constexpr int kGridRowsShown = 4;

class FocusOutWatcher : public QObject
{
public:
    FocusOutWatcher(QWidget* widget, std::function<void()> lostFocus)
        : QObject(widget), m_lostFocus(std::move(lostFocus))
    {
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusOut) {
            m_lostFocus();
        }
        return false;
    }

private:
    std::function<void()> m_lostFocus;
};

class CellKeyWatcher : public QObject
{
public:
    CellKeyWatcher(QTableWidget* grid, std::function<void(int, int)> click)
        : QObject(grid), m_grid(grid), m_click(std::move(click))
    {
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || m_grid->currentRow() < 0) {
            return false;
        }
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F2:
        case Qt::Key_Space:
            m_click(m_grid->currentRow(), m_grid->currentColumn());
            return true;
        default:
            return false;
        }
    }

private:
    QTableWidget* m_grid;
    std::function<void(int, int)> m_click;
};

CustomField::Companion companionOf(dao::Recordset& rs, const QString& column)
{
    const QString companion = column + QStringLiteral("ReadOnly");
    for (int i = 0; i < rs.FieldCount(); ++i) {
        dao::Field field = rs.Fields(i);
        if (field.Name().compare(companion, Qt::CaseInsensitive) == 0) {
            if (field.IsNull()) {
                return CustomField::Companion::Null;
            }
            return field.Value().toBool() ? CustomField::Companion::True : CustomField::Companion::False;
        }
    }
    return CustomField::Companion::Null;
}

} // namespace

bool hasCustomColumns(dao::Recordset& rs)
{
    for (int i = 0; i < rs.FieldCount(); ++i) {
        if (rs.Fields(i).Name().contains(QLatin1String("New_"))) {
            return true;
        }
    }
    return false;
}

QList<CustomField> customFields(dao::Recordset& rs)
{
    QList<CustomField> fields;
    for (int i = 0; i < rs.FieldCount(); ++i) {
        dao::Field field = rs.Fields(i);
        const QString column = field.Name();
        if (!column.contains(QLatin1String("New_")) || column.contains(QLatin1String("ReadOnly"))) {
            continue;
        }
        fields.append({column, column.mid(4), field.Text(), companionOf(rs, column)});
    }
    return fields;
}

QString left250(const QString& text)
{
    return text.left(kCut);
}

void shapeGrid(QTableWidget* grid)
{
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setWordWrap(false);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->setFixedHeight(grid->horizontalHeader()->sizeHint().height() +
                         kGridRowsShown * grid->verticalHeader()->defaultSectionSize() + 2 * grid->frameWidth());
}

void guardQuotes(QLineEdit* box)
{
    QObject::connect(box, &QLineEdit::textEdited, box, [box](const QString& text) {
        if (text.contains(QLatin1Char('"'))) {
            const int caret = box->cursorPosition();
            box->setText(QString(text).replace(QLatin1Char('"'), QLatin1Char('\'')));
            box->setCursorPosition(caret);
        }
    });
}

void onCellKey(QTableWidget* grid, std::function<void(int row, int column)> click)
{
    grid->installEventFilter(new CellKeyWatcher(grid, std::move(click)));
}

void onFocusOut(QWidget* widget, std::function<void()> lostFocus)
{
    widget->installEventFilter(new FocusOutWatcher(widget, std::move(lostFocus)));
}

void layEditorOver(QTableWidget* grid, QLineEdit* editor, int row, int column)
{
    const QRect cell = grid->visualRect(grid->model()->index(row, column));
    editor->setGeometry(cell.left(), cell.top(), cell.width(), std::max(cell.height() - kEditorShorter, 1));
    const QTableWidgetItem* item = grid->item(row, column);
    editor->setText(item ? item->text() : QString());
    editor->show();
    editor->raise();
    editor->setCursorPosition(int(editor->text().size()));
    editor->setFocus();
}

QGridLayout* frameScreen(QDialog* screen, std::initializer_list<QWidget*> column, const ScreenButtons& buttons)
{
    auto* layout = new QGridLayout(screen);
    int line = 0;
    for (QWidget* widget : column) {
        layout->addWidget(widget, line++, 0);
    }
    auto* stack = new QVBoxLayout;
    for (QPushButton* button : {buttons.ok, buttons.cancel, buttons.help}) {
        button->setAccessibleName(spokenCaption(button->text()));
        stack->addWidget(button);
    }
    stack->addStretch();
    layout->addLayout(stack, 0, 1, line, 1);
    buttons.ok->setDefault(true);
    QObject::connect(buttons.ok, &QPushButton::clicked, screen, buttons.onOk);
    QObject::connect(buttons.cancel, &QPushButton::clicked, screen, buttons.onCancel);
    QObject::connect(buttons.help, &QPushButton::clicked, screen, buttons.onHelp);
    QObject::connect(new QShortcut(QKeySequence(Qt::Key_F1), screen), &QShortcut::activated, screen, buttons.onHelp);
    return layout;
}

void hideForTeardown(QDialog* screen)
{
    for (QWidget* child : screen->findChildren<QWidget*>()) {
        child->blockSignals(true);
    }
    screen->hide();
}

} // namespace statusscreens
