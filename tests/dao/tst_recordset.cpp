// Recordset and Field: values by declared type, moving, editing and adding rows,
// deletes, table-type Seek, the Jet numbers of misuse, and writes under
// contention from another process.
#include "daotest.h"

#include <QTemporaryDir>
#include <QTimer>
#include <optional>

using namespace dao;
using daotest::jetNumber;
using Action = std::function<void(Recordset&, Database&)>;

Q_DECLARE_METATYPE(Action)

class TestRecordset : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Recordset> people()
    {
        return m_db->OpenRecordset("People");
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
    std::shared_ptr<Database> m_db;

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_file = m_dir->filePath("veskor.mdb");
        daotest::makePeople(m_file);
        DBEngine::setBusyTimeoutMs(2000);
        m_db = DBEngine::OpenDatabase(m_file);
    }

    void cleanup()
    {
        m_db.reset();
    }

    void valuesRoundTrip_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("Null text") << "Note" << QVariant() << "";
        QTest::newRow("Null long") << "Num" << QVariant() << "";
        QTest::newRow("Bit true") << "Flag" << QVariant(true) << "True";
        QTest::newRow("Bit false") << "Flag" << QVariant(false) << "False";
        QTest::newRow("Long past 16 bits") << "Num" << QVariant(qlonglong(5000000000LL)) << "5000000000";
        QTest::newRow("negative Long") << "Num" << QVariant(qlonglong(-40000)) << "-40000";
        QTest::newRow("Double") << "Amount" << QVariant(45678.512345) << "45678.512345";
        QTest::newRow("whole Double") << "Amount" << QVariant(3.0) << "3";
        QTest::newRow("padded Text") << "Note" << QVariant(QString("  Back at 3 ")) << "Back at 3";
        QTest::newRow("empty Text") << "Note" << QVariant(QString("")) << "";
    }

    // Written by Edit and by AddNew, read back by a fresh dynaset with its type.
    void valuesRoundTrip()
    {
        QFETCH(QString, field);
        QFETCH(QVariant, value);
        QFETCH(QString, text);
        auto rs = people();
        rs->Edit();
        rs->Fields(field) = value;
        rs->Update();
        rs->AddNew();
        rs->Fields("Name") = QString("Dee");
        rs->Fields(field) = value;
        rs->Update();

        auto check = people();
        for (bool added : {false, true}) {
            if (added)
                check->MoveLast();
            const QVariant read = check->Fields(field).Value();
            QCOMPARE(read.isNull(), value.isNull());
            if (!value.isNull()) {
                QCOMPARE(read.typeId(), value.typeId());
                QCOMPARE(read, value);
            }
            QCOMPARE(check->Fields(field).Text(), text);
        }
    }

    // As Jet converts on assignment; a value the type cannot hold is refused.
    void conversionOnAssignment()
    {
        auto rs = people();
        rs->Edit();
        rs->Fields("Num") = QString("42");
        rs->Fields("Amount") = true;
        rs->Fields("Flag") = 0;
        QCOMPARE(jetNumber([&] { rs->Fields("Num") = QString("lots"); }), int(errConversion));
        rs->Update();
        QCOMPARE(sqliteValue(m_file, "SELECT Num || '/' || Amount || '/' || Flag FROM People WHERE ID = 1"),
                 QString("42/1.0/0"));
    }

    void moving()
    {
        auto rs = people();
        QCOMPARE(rs->RecordCount(), 3LL);
        rs->MoveNext();
        rs->MoveNext();
        QCOMPARE(rs->Fields(1).Text(), QString("Cy"));
        rs->MoveNext();
        QVERIFY(rs->isEOF() && !rs->isBOF());
        QCOMPARE(jetNumber([&] { rs->MoveNext(); }), int(errNoCurrentRecord));
        rs->MovePrevious();
        QCOMPARE(rs->Fields("Name").Text(), QString("Cy"));
        rs->MoveFirst();
        rs->MovePrevious();
        QVERIFY(rs->isBOF());
        QCOMPARE(jetNumber([&] { rs->MovePrevious(); }), int(errNoCurrentRecord));

        auto none = m_db->OpenRecordset("SELECT * FROM People WHERE ID = 0");
        QVERIFY(none->isBOF() && none->isEOF());
        QCOMPARE(none->FieldCount(), 6);
        QCOMPARE(jetNumber([&] { none->MoveFirst(); }), int(errNoCurrentRecord));
    }

    void misuse_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<Action>("action");
        const auto row = [](const char* name, int number, const Action& action) {
            QTest::newRow(name) << number << action;
        };
        row("unknown field", errItemNotFound, [](Recordset& rs, Database&) { rs.Fields("Nope"); });
        row("Update without Edit", errUpdateWithoutEdit, [](Recordset& rs, Database&) { rs.Update(); });
        row("Edit at EOF", errNoCurrentRecord, [](Recordset& rs, Database&) {
            rs.MoveLast();
            rs.MoveNext();
            rs.Edit();
        });
        row("Seek on a dynaset", errNotSupported, [](Recordset& rs, Database&) { rs.Seek("=", "Ann"); });
        row("Seek without Index", errNoCurrentIndex,
            [](Recordset&, Database& db) { db.OpenRecordset("People", dbOpenTable)->Seek("=", 1); });
        row("unknown index", errNotAnIndex,
            [](Recordset&, Database& db) { db.OpenRecordset("People", dbOpenTable)->setIndex("NoSuchIndex"); });
        row("closed recordset", errObjectInvalid, [](Recordset& rs, Database&) {
            rs.Close();
            rs.RecordCount();
        });
        row("action query as a set", errInvalidOperation,
            [](Recordset&, Database& db) { db.OpenRecordset("DELETE FROM People"); });
        row("query as a table", errTableNotFound,
            [](Recordset&, Database& db) { db.OpenRecordset("SELECT * FROM People", dbOpenTable); });
        row("unknown column in query", errTooFewParameters,
            [](Recordset&, Database& db) { db.OpenRecordset("SELECT Nope FROM People"); });
    }

    void misuse()
    {
        QFETCH(int, number);
        QFETCH(Action, action);
        auto rs = people();
        QCOMPARE(jetNumber([&] { action(*rs, *m_db); }), number);
        QCOMPARE(sqliteValue(m_file, "SELECT count(*) FROM People"), QString("3"));
    }

    // A dynaset on a query of one table writes back through the row id; a column
    // under another name writes to its own column; an expression cannot be written.
    void dynasetOverSelect()
    {
        auto rs = m_db->OpenRecordset("SELECT Name AS Who, Num * 2 AS Twice FROM People WHERE Name = \"bob\"");
        QCOMPARE(rs->FieldCount(), 2); // the row id is not a field
        QCOMPARE(rs->Fields("Twice").Value(), QVariant(40LL));
        rs->Edit();
        QCOMPARE(jetNumber([&] { rs->Fields("Twice") = 1; }), int(errFieldNotUpdatable));
        rs->Fields("who") = QString("Robert");
        rs->Update();
        QCOMPARE(sqliteValue(m_file, "SELECT Name FROM People WHERE ID = 2"), QString("Robert"));
    }

    // Sets over more than one table's rows, or rows made up, cannot be written; a
    // query of one table can, under an alias, in brackets, with a sub-select.
    void readOnlyKinds()
    {
        for (const char* sql :
             {"SELECT p.Name FROM People p INNER JOIN People q ON p.ID = q.ID",
              "SELECT p.Name FROM People p, People q WHERE p.ID = q.ID", "SELECT count(*) AS n FROM People",
              "SELECT DISTINCT Name FROM People", "SELECT Name FROM People GROUP BY Name",
              "SELECT * FROM (SELECT * FROM People)", "SELECT Name FROM People UNION SELECT Note FROM People"}) {
            auto rs = m_db->OpenRecordset(sql);
            QVERIFY2(jetNumber([&] { rs->Edit(); }) == errCannotUpdate, sql);
            QCOMPARE(jetNumber([&] { rs->AddNew(); }), int(errCannotUpdate));
            QCOMPARE(jetNumber([&] { rs->Delete(); }), int(errCannotUpdate));
        }
        for (int type : {dbOpenSnapshot, dbOpenDynaset, dbOpenTable}) {
            const int options = type == dbOpenSnapshot ? 0 : dbReadOnly;
            QCOMPARE(jetNumber([&] { m_db->OpenRecordset("People", type, options)->Edit(); }), int(errCannotUpdate));
        }
        for (const char* sql : {"SELECT * FROM People AS p WHERE p.ID IN (SELECT ID FROM People WHERE Num = 20)",
                                "SELECT Num FROM [People] ORDER BY Name DESC"}) {
            auto rs = m_db->OpenRecordset(sql);
            rs->Edit();
            rs->Fields("Num") = 21;
            QVERIFY2(jetNumber([&] { rs->Update(); }) == 0, sql);
        }
        QCOMPARE(sqliteValue(m_file, "SELECT group_concat(Num) FROM People WHERE Num = 21"), QString("21,21"));
    }

    // A table made in Jet's dialect with a COUNTER key: AddNew shows the new id
    // (read back after the insert) and ids keep rising past 16 bits.
    void addNewOnCounterTable()
    {
        m_db->Execute("CREATE TABLE MessagesTable (MessageID COUNTER, Body TEXT(50), Category TEXT(10))");
        m_db->Execute("INSERT INTO MessagesTable (Body, Category) VALUES (\"first\", 'New')");
        QVERIFY(sqliteExec(m_file, "UPDATE sqlite_sequence SET seq = 32766 WHERE name = 'MessagesTable'"));
        auto rs = m_db->OpenRecordset("SELECT * FROM MessagesTable WHERE Category = 'New'");
        for (long long expected : {32767LL, 32768LL}) {
            rs->AddNew();
            rs->Fields("Body") = QString("message %1").arg(expected);
            rs->Update();
            QCOMPARE(rs->Fields("Body").Text(), QString("first")); // the current record stays
            rs->MoveLast();
            QCOMPARE(rs->Fields("MessageID").Value(), QVariant(expected));
            QVERIFY(rs->Fields("Category").IsNull()); // what the row holds, not the set's filter
            rs->MoveFirst();
        }
        QCOMPARE(rs->RecordCount(), 3LL);
    }

    // A row deleted here is skipped; one deleted by another user is 3167 on write.
    void deletes()
    {
        auto rs = people();
        rs->MoveNext();
        rs->Delete();
        QCOMPARE(jetNumber([&] { rs->Fields("Name").Value(); }), int(errRecordDeleted));
        QCOMPARE(rs->RecordCount(), 2LL);
        rs->MoveNext();
        rs->MovePrevious();
        QCOMPARE(rs->Fields("Name").Text(), QString("Ann"));

        QVERIFY(sqliteExec(m_file, "DELETE FROM People WHERE ID = 1"));
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errRecordDeleted)); // Edit reads the row again
        QCOMPARE(jetNumber([&] { rs->Delete(); }), int(errRecordDeleted));
        QCOMPARE(sqliteValue(m_file, "SELECT group_concat(Name) FROM People"), QString("Cy"));
    }

    void updateWritesOnlyChangedFields()
    {
        auto rs = people();
        QVERIFY(sqliteExec(m_file, "UPDATE People SET Note = 'theirs' WHERE ID = 1"));
        rs->Edit();
        rs->Fields("Num") = 11;
        rs->Update();
        QCOMPARE(sqliteValue(m_file, "SELECT Num || ' ' || Note FROM People WHERE ID = 1"), QString("11 theirs"));
    }

    // Seek on a table's primary key finds a whole key without regard to case.
    void seekOnPrimaryKey()
    {
        QVERIFY(sqliteExec(m_file,
                           "CREATE TABLE GroupTable (GroupName TEXT(50) PRIMARY KEY, Note TEXT(50));"
                           "INSERT INTO GroupTable VALUES ('Admin', 'a'), ('Front Desk', 'f'), ('Sales*', 's')"));
        auto rs = m_db->OpenRecordset("GroupTable", dbOpenTable, dbReadOnly);
        rs->setIndex("PrimaryKey");
        rs->Seek("=", QString("front DESK"));
        QVERIFY(!rs->NoMatch());
        QCOMPARE(rs->Fields("Note").Text(), QString("f"));
        rs->Seek("=", QString("Sales"));
        QVERIFY(rs->NoMatch());
        QCOMPARE(jetNumber([&] { rs->Fields("GroupName").Value(); }), int(errNoCurrentRecord));
    }

    // Another process holds the file locked: writes wait for the busy timeout, then
    // fail with the numbers the logic retries on; an added row survives for a retry.
    void lockedFileDuringWrites()
    {
        DBEngine::setBusyTimeoutMs(200);
        auto rs = people();
        daotest::Helper helper;
        QCOMPARE(helper.start({"hold", m_file}), QString("locked"));
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errRecordLocked));
        QCOMPARE(rs->EditMode(), int(dbEditNone));
        QCOMPARE(jetNumber([&] { m_db->BeginTrans(); }), int(errRecordLocked));
        rs->AddNew();
        rs->Fields("Name") = QString("Dee");
        QCOMPARE(jetNumber([&] { rs->Update(); }), int(errRecordLocked));
        QCOMPARE(rs->EditMode(), int(dbEditAdd));
        QCOMPARE(jetNumber([&] { m_db->Execute("UPDATE People SET Num = 1"); }), int(errLockedByUser));
        QCOMPARE(jetNumber([&] { m_db->OpenRecordset("People"); }), int(errCouldNotLockFile));
        helper.finish();
        rs->Update();
        QCOMPARE(sqliteValue(m_file, "SELECT count(*) FROM People WHERE Name = 'Dee'"), QString("1"));
    }

    // A second client's Edit waits for the first one's Update, with timers running
    // meanwhile, and then raises the value the first one wrote: both raises count.
    // CancelUpdate lets go of the lock at once.
    void editWaitsForAnotherEdit()
    {
        auto other = DBEngine::OpenDatabase(m_file);
        auto mine = people();
        auto theirs = other->OpenRecordset("People");
        mine->Edit();
        mine->Fields("Num") = mine->Fields("Num").Value().toInt() + 1;
        QTimer::singleShot(150, [&] { mine->Update(); });
        theirs->Edit();
        QCOMPARE(mine->EditMode(), int(dbEditNone)); // the timer ran during the wait
        theirs->Fields("Num") = theirs->Fields("Num").Value().toInt() + 1;
        theirs->Update();
        QCOMPARE(sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), QString("12"));
        DBEngine::setBusyTimeoutMs(200);
        theirs->Edit();
        theirs->CancelUpdate();
        QCOMPARE(jetNumber([&] { mine->Edit(); }), 0);
    }

    // Steps: "begin", "commit", "rollback", "set N" (Execute), "edit N" (Edit/Update),
    // "seen N" (what another client reads now), "close"; then Num as the file holds it.
    void transactions_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("num");
        const auto row = [](const char* name, const char* steps, const char* num) {
            QTest::newRow(name) << QString(steps).split(", ") << QString(num);
        };
        row("committed at once", "begin, set 5, edit 6, seen 10, commit, seen 6", "6");
        row("rolled back", "begin, set 5, edit 6, rollback", "10");
        row("inner level rolled back", "begin, set 5, begin, set 6, rollback, commit", "5");
        row("inner committed, outer rolled back", "begin, set 5, begin, set 6, commit, rollback", "10");
        row("closed while open", "begin, set 5, close", "10");
        row("guard not committed", "guard, set 5, end", "10");
        row("guard committed", "guard, set 5, commit guard, end", "5");
    }

    void transactions()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, num);
        auto rs = people();
        std::optional<Transaction> guard;
        for (const QString& step : steps) {
            const QString arg = step.section(' ', 1);
            if (step == "begin")
                m_db->BeginTrans();
            else if (step == "commit")
                m_db->CommitTrans();
            else if (step == "rollback")
                m_db->Rollback();
            else if (step == "close")
                m_db->Close();
            else if (step == "guard")
                guard.emplace(*m_db);
            else if (step == "commit guard")
                guard->Commit();
            else if (step == "end")
                guard.reset();
            else if (step.startsWith("set"))
                m_db->Execute("UPDATE People SET Num = " + arg + " WHERE ID = 1");
            else if (step.startsWith("edit")) {
                rs->Edit();
                rs->Fields("Num") = arg.toInt();
                rs->Update();
            } else if (step.startsWith("seen"))
                QCOMPARE(sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), arg);
        }
        QCOMPARE(sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), num);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(m_file)->CommitTrans(); }), int(errNoTransaction));
    }

    // Several processes raise one counter through Edit/Update at once: none is lost.
    void processesRaiseOneCounter()
    {
        m_db->Close();
        constexpr int kProcesses = 6;
        constexpr int kRaises = 25;
        std::vector<std::unique_ptr<daotest::Helper>> helpers;
        for (int i = 0; i < kProcesses; ++i) {
            helpers.push_back(std::make_unique<daotest::Helper>());
            helpers.back()->process.start(QCoreApplication::applicationDirPath() + "/dao_helper",
                                          {"raise", m_file, QString::number(kRaises)});
        }
        for (auto& helper : helpers)
            QCOMPARE(helper->finish(), QString("done"));
        QCOMPARE(sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"),
                 QString::number(10 + kProcesses * kRaises));
    }
};

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
