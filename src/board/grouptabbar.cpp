#include "board/grouptabbar.h"

#include <QEvent>
#include <QSignalBlocker>
#include <algorithm>

GroupTabBar::GroupTabBar(QWidget* parent) : QTabBar(parent)
{
    setExpanding(false);
}

void GroupTabBar::setCaptions(const QStringList& captions)
{
    const QSignalBlocker quiet(this);
    // Hidden, the bar lays its tabs out once, when it is shown again, not at every change.
    const bool shown = isVisible();
    setVisible(false);
    const QString current = currentIndex() >= 0 ? tabText(currentIndex()) : QString();
    if (count() > 0) {
        setCurrentIndex(0); // removals from the end then never move the current tab
    }
    while (count() > captions.size()) {
        removeTab(count() - 1);
    }
    for (int i = 0; i < captions.size(); ++i) {
        if (i < count()) {
            if (tabText(i) != captions.at(i)) {
                setTabText(i, captions.at(i));
            }
        } else {
            addTab(captions.at(i));
        }
    }
    setCurrentIndex(std::max(0, int(captions.indexOf(current)))); // the same group stays current
    setVisible(shown);
}

QStringList GroupTabBar::captions() const
{
    QStringList result;
    result.reserve(count());
    for (int i = 0; i < count(); ++i) {
        result << tabText(i);
    }
    return result;
}

QSize GroupTabBar::tabSizeHint(int index) const
{
    const QString caption = tabText(index);
    auto size = m_sizes.constFind(caption);
    if (size == m_sizes.cend()) {
        size = m_sizes.insert(caption, QTabBar::tabSizeHint(index));
    }
    return *size;
}

QSize GroupTabBar::minimumTabSizeHint(int index) const
{
    const QString caption = tabText(index);
    auto size = m_minimumSizes.constFind(caption);
    if (size == m_minimumSizes.cend()) {
        size = m_minimumSizes.insert(caption, QTabBar::minimumTabSizeHint(index));
    }
    return *size;
}

// A new font or style measures the captions anew.
void GroupTabBar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_sizes.clear();
        m_minimumSizes.clear();
    }
    QTabBar::changeEvent(event);
}
