#pragma once
// The one gateway for time: Now, the DateTimeNum (the engine's date number),
// and the VB date formats the system writes.

#include <QDateTime>
#include <QString>
#include <memory>

namespace platform {

class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() = 0;    // local time
    virtual void sleep(int ms) = 0; // the Windows Sleep: blocks the thread
};

// nullptr restores the system clock.
void setClock(std::unique_ptr<Clock> impl);
Clock& clock();

// A clock for tests: starts at a given time, moves only when told or slept on.
class FakeClock : public Clock
{
public:
    explicit FakeClock(const QDateTime& start);
    QDateTime now() override;
    void sleep(int ms) override;
    void advance(qint64 ms);
    qint64 sleptMs() const;

private:
    QDateTime m_now;
    qint64 m_slept = 0;
};

QDateTime Now();
void Sleep(int ms);
// VB's Timer: seconds since midnight, with fractions.
double Timer();

// Whole days since 30 December 1899 with the time of day as the fraction (local time).
double DateTimeNum(const QDateTime& when);
QDateTime dateFromDateTimeNum(double value);

// VB's Format for the forms the system uses: "yyyy-mm-dd hh:mm:ss",
// "mmm dd, yyyy hh:mm:ss", "Long Date", "Long Time", "Short Time", "General Date"
// (and "Short Date"), in the default QLocale. Other patterns are read with VB's
// date letters: y m d h n s, "AM/PM", "A/P", "quoted" and \-escaped literals;
// "m"/"mm" are minutes straight after an hour or before seconds. Hours are
// 24-hour unless the pattern has AM/PM.
QString Format(const QDateTime& when, const QString& vbFormat);

} // namespace platform
