#include "platform/clock.h"

#include "platform/installed.h"

#include <QThread>
#include <cmath>

namespace platform {

namespace {

class SystemClock : public Clock
{
public:
    QDateTime now() override
    {
        return QDateTime::currentDateTime();
    }
    void sleep(int ms) override
    {
        if (ms > 0) {
            QThread::msleep(static_cast<unsigned long>(ms));
        }
    }
};

// Day 0 of the engine's date numbers.
const QDate dayZero(1899, 12, 30);
constexpr qint64 secondsPerDay = 24 * 60 * 60;

} // namespace

void setClock(std::unique_ptr<Clock> impl)
{
    install(std::move(impl));
}

Clock& clock()
{
    return installedOr<Clock>([] { return std::make_unique<SystemClock>(); });
}

FakeClock::FakeClock(const QDateTime& start) : m_now(start)
{
}

QDateTime FakeClock::now()
{
    return m_now;
}

void FakeClock::sleep(int ms)
{
    if (ms > 0) {
        m_slept += ms;
        m_now = m_now.addMSecs(ms);
    }
}

void FakeClock::advance(qint64 ms)
{
    m_now = m_now.addMSecs(ms);
}

qint64 FakeClock::sleptMs() const
{
    return m_slept;
}

QDateTime Now()
{
    // VB's Now has whole seconds; Timer() keeps the fractions.
    const QDateTime t = clock().now();
    return t.addMSecs(-t.time().msec());
}

void Sleep(int ms)
{
    clock().sleep(ms);
}

double Timer()
{
    return clock().now().time().msecsSinceStartOfDay() / 1000.0;
}

double DateTimeNum(const QDateTime& when)
{
    if (!when.isValid()) {
        return 0.0;
    }
    const QDateTime local = when.toLocalTime();
    const qint64 days = dayZero.daysTo(local.date());
    const double fraction = local.time().msecsSinceStartOfDay() / (secondsPerDay * 1000.0);
    // Before day 0 the whole part counts back and the fraction still counts
    // forward from midnight: -1.25 is 29 December 1899, 06:00.
    return days >= 0 ? double(days) + fraction : double(days) - fraction;
}

QDateTime dateFromDateTimeNum(double value)
{
    if (!std::isfinite(value) || std::fabs(value) > 1e8) {
        return {};
    }
    const double whole = std::trunc(value);
    qint64 days = static_cast<qint64>(whole);
    qint64 seconds = std::llround(std::fabs(value - whole) * double(secondsPerDay));
    if (seconds >= secondsPerDay) { // rounded up to the next midnight
        seconds -= secondsPerDay;
        days += 1;
    }
    return QDateTime(dayZero.addDays(days), QTime(0, 0).addSecs(int(seconds)));
}

} // namespace platform
