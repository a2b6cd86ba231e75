// The photo viewer, About's hidden ways, and the stress test's bursts on a real site file.
#include "columns.h"
#include "side/frmabout.h"
#include "side/frmdisplayphoto.h"
#include "side/frmtestharness.h"
#include "statusfixture.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace {

// The board of the fixture, which presses the stress test's button (as a person
// would, between rounds) once the burst has asked for the rows stopAfter rounds long.
struct PressingBoard : FakeBoard
{
    frmTestHarness* harness = nullptr;
    int stopAfter = 0;
    mutable int asked = 0;
    mutable QString countdown; // Label1 when the button was pressed
    QStringList selectedRowTexts(int subItem) const override
    {
        if (harness && ++asked == 2 * stopAfter) {
            QTimer::singleShot(0, harness, [this] {
                countdown = harness->Label1->text();
                harness->Command1->click();
            });
        }
        return FakeBoard::selectedRowTexts(subItem);
    }
};

} // namespace

class TstSide : public QObject
{
    Q_OBJECT

private slots:
    // PhotoPath as the site holds it ("-" for a Null), Ann's file name, whether
    // that file is there; the text under the frame.
    void photo_data()
    {
        // onDisk: the file is there, and so a picture shows
        addColumns<QString, QString, bool, QString>("photoPath", "fileName", "onDisk", "shown");
        const auto row = [](const char* name, const char* path, const char* file, bool onDisk, const char* shown) {
            QTest::newRow(name) << path << file << onDisk << shown;
        };
        row("no file named", "@", "", false, "No Photo on File.");
        row("separator added", "@", "ann.png", true, "@/ann.png");
        row("separator kept", "@/", "ann.png", true, "@/ann.png");
        row("file missing", "@", "gone.png", false, "@/gone.png");
        row("Windows folder", "\\\\srv\\photos", "ann.png", false, "\\\\srv\\photos\\ann.png");
        row("no folder: the name alone", "-", "ann.png", true, "ann.png");
    }
    void photo()
    {
        auto [photoPath, fileName, onDisk] = fetch<QString, QString, bool>("photoPath", "fileName", "onDisk");
        StatusFixture f;
        QTemporaryDir photos;
        const QString folder = QDir(photos.path()).absolutePath();
        photoPath.replace(QLatin1Char('@'), folder);
        if (photoPath != QLatin1String("-")) {
            f.site.setting(QStringLiteral("PhotoPath"), photoPath);
        }
        f.site.execute("UPDATE EmployeeSettingsTable SET PictureFileName = " + dao::quote(fileName) +
                       " WHERE Name = \"Ann Lee\"");
        f.site.execute("UPDATE EmployeeSettingsTable SET PictureFileName = \"bob.png\" WHERE Name = \"Bob Ray\"");
        if (onDisk) {
            QVERIFY(QImage(40, 30, QImage::Format_RGB32).save(QDir(folder).filePath(QStringLiteral("ann.png"))));
        }
        const QString cwd = QDir::currentPath();
        QDir::setCurrent(folder); // where a bare file name is found
        frmDisplayPhoto photo;
        photo.Form_Load();
        QDir::setCurrent(cwd);
        QCOMPARE(photo.ListViewPhoto->topLevelItemCount(), 3);
        QCOMPARE(photo.ListViewPhoto->topLevelItem(1)->text(0), QStringLiteral("Bob Ray"));
        QCOMPARE(photo.ListViewPhoto->topLevelItem(1)->text(1), QStringLiteral("bob.png"));
        QCOMPARE(photo.ListViewPhoto->currentItem()->text(0), QStringLiteral("Ann Lee"));
        QTEST(photo.Label12->text().replace(folder, QStringLiteral("@")), "shown");
        QCOMPARE(!photo.Image1.isNull(), onDisk);
        QCOMPARE(photo.picPhoto->pixmap().isNull(), photo.Image1.isNull());
    }

    // Rounds of the burst, when the button is pressed again (0: never), rows
    // selected; the rounds that ran and whether the burst came to its end.
    void burst_data()
    {
        addColumns<int, int, QList<int>, int>("rounds", "stopAfter", "selected", "ran");
        QTest::newRow("to the end, two rows") << 3 << 0 << QList<int>{1, 2} << 3;
        QTest::newRow("to the end, one row") << 2 << 0 << QList<int>{0} << 2;
        QTest::newRow("stopped after the first round") << 4 << 1 << QList<int>{1, 2} << 1;
        QTest::newRow("stopped after the third round") << 4 << 3 << QList<int>{2} << 3;
    }
    void burst()
    {
        auto [rounds, stopAfter, selected, ran] =
            fetch<int, int, QList<int>, int>("rounds", "stopAfter", "selected", "ran");
        StatusFixture f;
        PressingBoard board;
        board.select(selected);
        setMainScreen(&board);
        gBoard.gintNameColumn = 1;
        gblnStressTest = true;
        const long long counter = f.counter();
        frmTestHarness harness(nullptr, rounds);
        board.harness = &harness;
        board.stopAfter = stopAfter;
        if (!stopAfter) {
            f.gw.boxes().answer(platform::vbOK);
        }
        harness.Command1_Click();

        QCOMPARE(f.counter(), counter + 2 * ran);
        QCOMPARE(f.logRows(), 2LL * ran * selected.size());
        QCOMPARE(f.site.value("SELECT COUNT(*) FROM TransactionLogTable WHERE Status = \"In\""),
                 QString::number(ran * selected.size()));
        for (int row : selected) {
            QCOMPARE(f.statusOf(board.names[row]), QStringLiteral("Busy"));
        }
        QCOMPARE(f.statusOf(QStringLiteral("Ann Lee")), selected.contains(0) ? "Busy" : "");
        QVERIFY(harness.Label1->text().isEmpty());
        QVERIFY(!harness.isFiring());
        if (stopAfter) {
            QCOMPARE(board.countdown, QStringLiteral("Firing In/Out %1 more Times").arg(rounds - stopAfter));
            QCOMPARE(harness.Command1->text(), QStringLiteral("Start firing In/Out 500 Times"));
            QVERIFY(!gblnStressTest);
        } else {
            QCOMPARE(harness.Command1->text(), QStringLiteral("Start Firing In/Out 500 Times"));
            QCOMPARE(f.gw.boxes().prompts(), QStringList{QStringLiteral("Stress Testing Completed!")});
            QCOMPARE(f.gw.boxes().last().icon(), int(platform::vbExclamation));
        }
        setMainScreen(&f.board);
    }

    // About's hidden ways: what is clicked with which keys; whether the stress
    // screen opens and whether a burst ran (no rows are selected, so it is quick).
    void hiddenWays_data()
    {
        addColumns<QString, int, bool, bool>("control", "keys", "opened", "fired");
        QTest::newRow("hot spot") << "Image1" << int(Qt::NoModifier) << true << true;
        QTest::newRow("banner with Ctrl") << "Picture1" << int(Qt::ControlModifier) << true << false;
        QTest::newRow("banner with Ctrl+Shift")
            << "Picture1" << int(Qt::ControlModifier | Qt::ShiftModifier) << false << false;
        QTest::newRow("banner alone") << "Picture1" << int(Qt::NoModifier) << false << false;
    }
    void hiddenWays()
    {
        auto [control, keys, opened, fired] = fetch<QString, int, bool, bool>("control", "keys", "opened", "fired");
        StatusFixture f;
        gblnStressTest = false;
        if (fired) {
            f.gw.boxes().answer(platform::vbOK);
        }
        frmAbout about;
        about.Form_Load();
        about.show();
        bool seen = false;
        QTimer closer; // closes the stress screen once it stands idle
        connect(&closer, &QTimer::timeout, &closer, [&] {
            for (QWidget* top : QApplication::topLevelWidgets()) {
                auto* harness = qobject_cast<frmTestHarness*>(top);
                if (harness && harness->isVisible() && !harness->isFiring()) {
                    seen = true;
                    harness->close();
                }
            }
        });
        closer.start(20);
        QTest::mouseClick(about.findChild<QWidget*>(control), Qt::LeftButton, Qt::KeyboardModifiers(keys));
        QCOMPARE(seen, opened);
        QCOMPARE(about.isVisible(), !opened);
        QCOMPARE(gblnStressTest, fired);
        QCOMPARE(f.gw.boxes().count(), fired ? 1 : 0);
    }
};

QTEST_MAIN(TstSide)
#include "tst_side.moc"
