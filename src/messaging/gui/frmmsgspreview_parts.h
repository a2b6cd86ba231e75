#pragma once
// What the Preview Messages screen and the Select Users screen share: the busy
// mouse pointer of a load, the place in the middle of the display, and the
// simple drawn pictures of the preview's toolbar.

#include <QIcon>
#include <QString>

class QWidget;

namespace msgspreview {

// The hourglass for as long as the object lives.
class BusyPointer
{
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

// Left is (display width - own width) / 2, top likewise.
void centreOnScreen(QWidget* screen);

// The picture of a toolbar key ("View", "Reply All"...; "Preview" is the
// screen's own), at 16 and 32 pixels, a darker ink under the mouse; the grey of
// a disabled button is the style's.
QIcon buttonIcon(const QString& key);

} // namespace msgspreview
