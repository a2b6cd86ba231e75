// The engine's date numbers both ways, their text in statements, and VB's date
// formats in two locales.

#include "platform/clock.h"

#include <QTest>

using namespace platform;

class TestClock : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    void cleanup()
    {
        init();
    }

    // both: the date gives the number too; else the number rounds to the date.
    void dateTimeNum_data()
    {
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<double>("number");
        QTest::addColumn<bool>("both");
        const auto row = [](const char* name, QDate day, QTime time, double number, bool both = true) {
            QTest::newRow(name) << QDateTime(day, time) << number << both;
        };
        row("day zero noon", QDate(1899, 12, 30), QTime(12, 0), 0.5);
        row("release day noon", QDate(2006, 7, 22), QTime(12, 0), 38920.5);
        row("quarter past six", QDate(2026, 11, 22), QTime(6, 0), 46348.25);
        row("last second of a day", QDate(2026, 11, 22), QTime(23, 59, 59), 46348.0 + 86399.0 / 86400.0);
        // Before day zero the whole part counts back, the fraction still forward.
        row("day before zero", QDate(1899, 12, 29), QTime(0, 0), -1.0);
        row("day before zero, 06:00", QDate(1899, 12, 29), QTime(6, 0), -1.25);
        row("1800", QDate(1800, 1, 1), QTime(18, 0), -36522.75);
        row("a hair under a second", QDate(1899, 12, 31), QTime(0, 0, 1), 1.0 + 0.9999 / 86400.0, false);
        row("a hair under midnight", QDate(1900, 1, 1), QTime(0, 0), 2.0 - 1e-9, false);
        row("negative, a hair under midnight", QDate(1899, 12, 30), QTime(0, 0), -2.0 + 1e-9, false);
    }
    void dateTimeNum()
    {
        QFETCH(QDateTime, when);
        QFETCH(double, number);
        QFETCH(bool, both);
        if (both)
            QCOMPARE(DateTimeNum(when), number);
        QCOMPARE(dateFromDateTimeNum(number), when);
    }

    void format_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("expected");
        const QDateTime pm(QDate(2026, 11, 22), QTime(14, 5, 9));
        const QDateTime am(QDate(2026, 3, 4), QTime(7, 8, 9));
        const auto row = [](const char* name, const char* locale, const QDateTime& when, const char* form,
                            const char* expected) {
            QTest::newRow(name) << locale << when << form << QString::fromUtf8(expected);
        };
        row("stamp", "en_US", am, "yyyy-mm-dd hh:mm:ss", "2026-03-04 07:08:09");
        row("stamp, de", "de_DE", pm, "yyyy-mm-dd hh:mm:ss", "2026-11-22 14:05:09");
        row("month name", "en_US", am, "mmm dd, yyyy hh:mm:ss", "Mar 04, 2026 07:08:09");
        row("long date", "en_US", pm, "Long Date", "Sunday, November 22, 2026");
        row("long date, de", "de_DE", pm, "Long Date", "Sonntag, 22. November 2026");
        row("long time", "en_US", pm, "Long Time", "2:05:09 PM");
        row("long time, morning", "en_US", am, "Long Time", "7:08:09 AM");
        row("long time, de", "de_DE", pm, "Long Time", "14:05:09");
        row("short time, morning", "en_US", am, "Short Time", "07:08");
        row("general", "en_US", pm, "General Date", "11/22/2026 2:05:09 PM");
        row("general, de", "de_DE", pm, "General Date", "22.11.2026 14:05:09");
        row("general, midnight", "en_US", QDateTime(QDate(2026, 11, 22), QTime(0, 0)), "General Date", "11/22/2026");
        row("general, day zero", "en_US", QDateTime(QDate(1899, 12, 30), QTime(14, 5, 9)), "General Date",
            "2:05:09 PM");
        row("general, day zero midnight", "en_US", QDateTime(QDate(1899, 12, 30), QTime(0, 0)), "General Date",
            "12:00:00 AM");
        row("form names ignore case", "en_US", pm, "long time", "2:05:09 PM");
        row("minutes before seconds", "en_US", pm, "mm:ss", "05:09");
        row("12-hour pattern", "en_US", pm, "h:nn AM/PM", "2:05 PM");
        row("literals", "en_US", pm, "\"on\" d\\m mmmm", "on 22m November");
    }
    void format()
    {
        QFETCH(QString, locale);
        QFETCH(QDateTime, when);
        QFETCH(QString, form);
        QFETCH(QString, expected);
        QLocale::setDefault(QLocale(locale));
        QCOMPARE(Format(when, form), expected);
    }
};

QTEST_GUILESS_MAIN(TestClock)
#include "tst_clock.moc"
