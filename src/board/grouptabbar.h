#pragma once
// TabStripMain: the groups as tabs. A site may have hundreds of groups, and every
// client reads them again when one is added, so the tabs are put in place as a
// whole: tabs already there take their new captions, only the difference is
// added or removed, and each tab's size is measured once for its caption. A
// plain tab bar measures every tab again for each tab added.

#include <QHash>
#include <QTabBar>

class GroupTabBar : public QTabBar
{
public:
    explicit GroupTabBar(QWidget* parent = nullptr);

    // The tabs become these captions, in this order, the current caption staying
    // current (else the first); no tab change is signalled.
    void setCaptions(const QStringList& captions);
    QStringList captions() const;

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void changeEvent(QEvent* event) override;

private:
    mutable QHash<QString, QSize> m_sizes;
    mutable QHash<QString, QSize> m_minimumSizes;
};
