// The engine's date numbers both ways, their text in statements, and VB's date
// formats in two locales.

#include "platform/clock.h"

#include <QTest>

using namespace platform;

class TestClock : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    void init()
    {
        cleanup();
    }

    void dateTimeNum_data()
    {
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<double>("number");
        const auto at = [](int y, int mo, int d, int h = 0, int mi = 0, int s = 0) {
            return QDateTime(QDate(y, mo, d), QTime(h, mi, s));
        };
        QTest::newRow("day zero") << at(1899, 12, 30) << 0.0;
        QTest::newRow("day zero noon") << at(1899, 12, 30, 12) << 0.5;
        QTest::newRow("release day noon") << at(2006, 7, 22, 12) << 38920.5;
        QTest::newRow("first of 1900") << at(1900, 1, 1) << 2.0;
        QTest::newRow("quarter past six") << at(2026, 11, 22, 6) << 46348.25;
        QTest::newRow("last second of a day") << at(2026, 11, 22, 23, 59, 59) << 46348.0 + 86399.0 / 86400.0;
        // Before day zero the whole part counts back, the fraction still forward.
        QTest::newRow("day before zero") << at(1899, 12, 29) << -1.0;
        QTest::newRow("day before zero, 06:00") << at(1899, 12, 29, 6) << -1.25;
        QTest::newRow("1800") << at(1800, 1, 1, 18) << -36522.75;
    }
    void dateTimeNum()
    {
        QFETCH(QDateTime, when);
        QFETCH(double, number);
        QCOMPARE(DateTimeNum(when), number);
        QCOMPARE(dateFromDateTimeNum(number), when);
    }

    void dateFromDateTimeNum_roundsToTheSecond_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QDateTime>("when");
        QTest::newRow("a hair under a second")
            << 1.0 + 0.9999 / 86400.0 << QDateTime(QDate(1899, 12, 31), QTime(0, 0, 1));
        QTest::newRow("a hair under midnight") << 2.0 - 1e-9 << QDateTime(QDate(1900, 1, 1), QTime(0, 0));
        QTest::newRow("negative, a hair under midnight")
            << -1.0 - (1.0 - 1e-9) << QDateTime(QDate(1899, 12, 30), QTime(0, 0));
    }
    void dateFromDateTimeNum_roundsToTheSecond()
    {
        QFETCH(double, number);
        QFETCH(QDateTime, when);
        QCOMPARE(dateFromDateTimeNum(number), when);
    }

    void dateTimeNum_everySecondOfADayRoundTrips()
    {
        const QDateTime start(QDate(2026, 3, 1), QTime(0, 0));
        for (int s = 0; s < 86400; s += 7) {
            const QDateTime t = start.addSecs(s);
            if (dateFromDateTimeNum(DateTimeNum(t)) != t) {
                QFAIL(qPrintable(t.toString(Qt::ISODate)));
            }
        }
    }

    void dateTimeNumText_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::newRow("en_US") << "en_US";
        QTest::newRow("de_DE, decimal comma") << "de_DE";
        QTest::newRow("fr_FR, decimal comma") << "fr_FR";
    }
    void dateTimeNumText()
    {
        QFETCH(QString, locale);
        QLocale::setDefault(QLocale(locale));
        QCOMPARE(DateTimeNumText(38920.5), QStringLiteral("38920.5"));
        QCOMPARE(DateTimeNumText(-1.25), QStringLiteral("-1.25"));
        QVERIFY(!DateTimeNumText(46348.0 + 1.0 / 3.0).contains(QLatin1Char(',')));
        QCOMPARE(DateTimeNumText(46348.0 + 1.0 / 3.0).toDouble(), 46348.0 + 1.0 / 3.0);
    }

    void format_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("expected");
        const QDateTime afternoon(QDate(2026, 11, 22), QTime(14, 5, 9));
        const QDateTime morning(QDate(2026, 3, 4), QTime(7, 8, 9));
        const QDateTime midnight(QDate(2026, 11, 22), QTime(0, 0));
        const QDateTime dayZeroTime(QDate(1899, 12, 30), QTime(14, 5, 9));
        const QDateTime dayZero(QDate(1899, 12, 30), QTime(0, 0));

        QTest::newRow("stamp") << "en_US" << afternoon << "yyyy-mm-dd hh:mm:ss"
                               << "2026-11-22 14:05:09";
        QTest::newRow("stamp, padded") << "en_US" << morning << "yyyy-mm-dd hh:mm:ss"
                                       << "2026-03-04 07:08:09";
        QTest::newRow("stamp, de") << "de_DE" << afternoon << "yyyy-mm-dd hh:mm:ss"
                                   << "2026-11-22 14:05:09";
        QTest::newRow("month name") << "en_US" << afternoon << "mmm dd, yyyy hh:mm:ss"
                                    << "Nov 22, 2026 14:05:09";
        QTest::newRow("month name, padded") << "en_US" << morning << "mmm dd, yyyy hh:mm:ss"
                                            << "Mar 04, 2026 07:08:09";
        QTest::newRow("long date") << "en_US" << afternoon << "Long Date"
                                   << "Sunday, November 22, 2026";
        QTest::newRow("long date, de") << "de_DE" << afternoon << "Long Date"
                                       << "Sonntag, 22. November 2026";
        QTest::newRow("long time") << "en_US" << afternoon << "Long Time"
                                   << "2:05:09 PM";
        QTest::newRow("long time, morning") << "en_US" << morning << "Long Time"
                                            << "7:08:09 AM";
        QTest::newRow("long time, de") << "de_DE" << afternoon << "Long Time"
                                       << "14:05:09";
        QTest::newRow("short time") << "en_US" << afternoon << "Short Time"
                                    << "14:05";
        QTest::newRow("short time, morning") << "en_US" << morning << "Short Time"
                                             << "07:08";
        QTest::newRow("general") << "en_US" << afternoon << "General Date"
                                 << "11/22/2026 2:05:09 PM";
        QTest::newRow("general, de") << "de_DE" << afternoon << "General Date"
                                     << "22.11.2026 14:05:09";
        QTest::newRow("general, midnight") << "en_US" << midnight << "General Date"
                                           << "11/22/2026";
        QTest::newRow("general, day zero") << "en_US" << dayZeroTime << "General Date"
                                           << "2:05:09 PM";
        QTest::newRow("general, day zero midnight") << "en_US" << dayZero << "General Date"
                                                    << "12:00:00 AM";
        QTest::newRow("form names ignore case") << "en_US" << afternoon << "long time"
                                                << "2:05:09 PM";
        QTest::newRow("minutes before seconds") << "en_US" << afternoon << "mm:ss"
                                                << "05:09";
        QTest::newRow("12-hour pattern") << "en_US" << afternoon << "h:nn AM/PM"
                                         << "2:05 PM";
        QTest::newRow("literals") << "en_US" << afternoon << "\"on\" d\\m mmmm"
                                  << "on 22m November";
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

    void fakeClock()
    {
        FakeClock fake(QDateTime(QDate(2026, 11, 22), QTime(9, 30, 0, 250)));
        fake.sleep(1500);
        fake.advance(60 * 1000);
        fake.sleep(-5);
        QCOMPARE(fake.sleptMs(), 1500);
        QCOMPARE(fake.now(), QDateTime(QDate(2026, 11, 22), QTime(9, 31, 1, 750)));
    }

    void nowAndTimerReadTheInstalledClock()
    {
        setClock(std::make_unique<FakeClock>(QDateTime(QDate(2026, 11, 22), QTime(9, 30, 0, 250))));
        QCOMPARE(Now(), QDateTime(QDate(2026, 11, 22), QTime(9, 30, 0))); // VB's Now: whole seconds
        QCOMPARE(Timer(), 9 * 3600 + 30 * 60 + 0.25);
        Sleep(2000);
        QCOMPARE(Now(), QDateTime(QDate(2026, 11, 22), QTime(9, 30, 2)));
        setClock(nullptr);
        QVERIFY(qAbs(Now().secsTo(QDateTime::currentDateTime())) <= 2);
    }
};

QTEST_GUILESS_MAIN(TestClock)
#include "tst_clock.moc"
