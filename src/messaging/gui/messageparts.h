#pragma once
// What the message screens share: the busy mouse pointer of a load, and the
// drawn pictures of their toolbars and of frmMessage's modes.

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace msgparts {

// The hourglass for as long as the object lives.
class BusyPointer
{
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

// The picture of a toolbar key or a mode ("Send", "View", "Reply All"...;
// "Preview" is the Preview Messages screen's own), at 16 and 32 pixels.
QIcon messageIcon(const QString& key);
// The same picture at one size.
QPixmap messagePicture(const QString& key, int size);

} // namespace msgparts
