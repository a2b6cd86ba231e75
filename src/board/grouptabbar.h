#pragma once
// TabStripMain: the groups as a strip of tabs above the list. A site may have
// hundreds of groups and every client reads them again when one is added, so
// the strip is a one-row list view, which lays out all its tabs in one pass,
// rather than a tab bar, which lays out every tab again for each tab added.
// It answers as a tab bar does: count, tabText, currentIndex, setCurrentIndex,
// and currentChanged when the tab changes.

#include <QListWidget>

class GroupTabBar : public QListWidget
{
    Q_OBJECT

public:
    explicit GroupTabBar(QWidget* parent = nullptr);

    // The tabs become these captions, in this order, the current caption staying
    // current (else the first); no tab change is signalled.
    void setCaptions(const QStringList& captions);
    QStringList captions() const;

    QString tabText(int index) const;
    int currentIndex() const;
    void setCurrentIndex(int index);

signals:
    void currentChanged(int index);

protected:
    bool event(QEvent* event) override;

private:
    void fitHeight();
};
