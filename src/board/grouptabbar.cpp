#include "board/grouptabbar.h"

#include <QEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>

GroupTabBar::GroupTabBar(QWidget* parent) : QListWidget(parent)
{
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFrameShape(QFrame::NoFrame);
    setStyleSheet(
        QStringLiteral("QListWidget { background: transparent; }"
                       "QListWidget::item { padding: 3px 10px; margin-right: 2px; border: 1px solid palette(mid);"
                       " border-bottom: none; border-top-left-radius: 4px; border-top-right-radius: 4px; background: "
                       "palette(button); }"
                       "QListWidget::item:selected { background: palette(base); color: palette(text); }"));
    connect(this, &QListWidget::currentRowChanged, this, &GroupTabBar::currentChanged);
    // A screen reader selects a tab rather than moving to it: the tab selected
    // becomes the current one, as a click makes it.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = selectedItems();
        if (!chosen.isEmpty() && chosen.first() != currentItem()) {
            setCurrentItem(chosen.first());
        }
    });
    fitHeight();
}

void GroupTabBar::setCaptions(const QStringList& captions)
{
    const QSignalBlocker quiet(this);
    const QString current = tabText(currentIndex());
    clear();
    addItems(captions);
    if (count() > 0) {
        setCurrentRow(std::max(0, int(captions.indexOf(current))));
    }
}

QStringList GroupTabBar::captions() const
{
    QStringList result;
    result.reserve(count());
    for (int i = 0; i < count(); ++i) {
        result << item(i)->text();
    }
    return result;
}

QString GroupTabBar::tabText(int index) const
{
    const QListWidgetItem* tab = item(index);
    return tab ? tab->text() : QString();
}

int GroupTabBar::currentIndex() const
{
    return currentRow();
}

void GroupTabBar::setCurrentIndex(int index)
{
    setCurrentRow(index);
}

// One row of tabs and, below it, room for the scroll bar that a long row needs.
void GroupTabBar::fitHeight()
{
    const int row = fontMetrics().height() + 10;
    setFixedHeight(row + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth());
}

bool GroupTabBar::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitHeight();
    }
    return QListWidget::event(event);
}
