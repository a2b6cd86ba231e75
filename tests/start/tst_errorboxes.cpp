// The standard error-box forms: each text letter for letter, with the number
// joined or through Str(), and the flags each form's box carries.
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "testgateways.h"

#include <QTest>
#include <functional>

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("modUser - subReadGroups event");

void setErr(long long number, const QString& description)
{
    Err.Number = number;
    Err.Description = description;
}

} // namespace

class TestErrorBoxes : public QObject
{
    Q_OBJECT

private slots:
    void texts_data()
    {
        QTest::addColumn<long long>("number");
        QTest::addColumn<std::function<QString()>>("build");
        QTest::addColumn<QString>("expected");

        const auto general = [](errorbox::NumberForm form, bool closingCR) {
            return std::function<QString()>([=] { return errorbox::general(kProcedure, form, closingCR); });
        };
        QTest::newRow("general, joined") << 3050LL << general(errorbox::Joined, false)
                                         << "Error (3050 ) in modUser - subReadGroups event\rCould not lock";
        QTest::newRow("general, Str") << 3050LL << general(errorbox::StrBlank, false)
                                      << "Error ( 3050 ) in modUser - subReadGroups event\rCould not lock";
        QTest::newRow("general, Str of a negative") << -5LL << general(errorbox::StrBlank, false)
                                                    << "Error (-5 ) in modUser - subReadGroups event\rCould not lock";
        QTest::newRow("general, closing CR") << 91LL << general(errorbox::Joined, true)
                                             << "Error (91 ) in modUser - subReadGroups event\rCould not lock\r";
        QTest::newRow("start-up") << 3050LL << std::function<QString()>([] { return errorbox::startup(kProcedure); })
                                  << "Error (3050 ) in modUser - subReadGroups event\rCould not lock\r"
                                     "Unable to start VESK-OR at this time. Please try again...";
        QTest::newRow("update") << 0LL
                                << std::function<QString()>([] { return errorbox::update(3022, "Duplicate key"); })
                                << "Error=3022\r\n Error message=Duplicate key. Update cancelled.";
        QTest::newRow("retry") << 0LL << std::function<QString()>([] { return errorbox::retry(3218, "Record locked"); })
                               << "Error: 3218 - Record locked\r\nWould you like to retry ?";
        QTest::newRow("log")
            << 3050LL << std::function<QString()>([] {
                   return errorbox::log(QStringLiteral("modUser - subUpdateTransactionLog event"));
               })
            << "Cannot complete the current operation due to the following error: ( 3050 ) \rCould not lock\r\r"
               "Possible causes:\rSomeone was updating their status at the exact moment you selected OK.\r"
               "Someone has the database open using MS Access.\r\r ) in modUser - subUpdateTransactionLog event";
    }

    void texts()
    {
        QFETCH(long long, number);
        QFETCH(std::function<QString()>, build);
        QFETCH(QString, expected);
        TestGateways gw;
        setErr(number, QStringLiteral("Could not lock"));
        QCOMPARE(build(), expected);
    }

    // Each shown form carries its buttons and icon, and hands back the person's answer.
    void boxes()
    {
        TestGateways gw;
        setErr(3050, QStringLiteral("Could not lock"));
        gw.boxes().answer(vbOK).answer(vbOK).answer(vbNo).answer(vbOK);
        errorbox::showGeneral(kProcedure, errorbox::Joined, vbCritical, QStringLiteral("T"));
        errorbox::showUpdate(3022, QStringLiteral("Duplicate key"));
        QCOMPARE(errorbox::showRetry(3218, QStringLiteral("Record locked"), QStringLiteral(" VESK-OR Pro ")),
                 int(vbNo));
        errorbox::showLog(QStringLiteral("p"), QStringLiteral("VESK-OR - Repair/Compacting Error"));

        const QList<ShownBox>& shown = gw.boxes().shown();
        QCOMPARE(shown.size(), 4);
        QCOMPARE(shown[0].flags, int(vbCritical));
        QCOMPARE(shown[0].title, QStringLiteral("T"));
        QCOMPARE(shown[1].flags, int(vbExclamation));
        QCOMPARE(shown[1].title, QString());
        QCOMPARE(shown[2].flags, int(vbYesNo + vbQuestion));
        QCOMPARE(shown[2].title, QStringLiteral(" VESK-OR Pro "));
        QCOMPARE(shown[3].flags, int(vbOKOnly + vbExclamation));
        QCOMPARE(shown[3].title, QStringLiteral("VESK-OR - Repair/Compacting Error"));
    }
};

QTEST_GUILESS_MAIN(TestErrorBoxes)
#include "tst_errorboxes.moc"
