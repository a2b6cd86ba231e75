// Database and Recordset on a small table of people.
#include "columns.h"
#include "daotest.h"

#include <QTemporaryDir>
#include <QTimer>
#include <optional>

using namespace dao;
using daotest::jetNumber;
using Action = std::function<void(Recordset&, Database&)>;

Q_DECLARE_METATYPE(Action)

class TestDatabase : public QObject
{
    Q_OBJECT

private:
    long long count(const QString& where)
    {
        return m_db->OpenRecordset("SELECT * FROM People WHERE " + where)->RecordCount();
    }
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

    void tableAndFieldNames()
    {
        QVERIFY(sqliteExec(m_file, "CREATE TABLE aTable (x); CREATE TABLE Zed (y)"));
        // sqlite_sequence (made by AUTOINCREMENT) is SQLite's own and not listed.
        QCOMPARE(m_db->TableNames(), (QStringList{"aTable", "People", "Zed"}));
        QCOMPARE(m_db->FieldNames("people"), (QStringList{"ID", "Name", "Flag", "Num", "Amount", "Note"}));
        QCOMPARE(jetNumber([&] { m_db->FieldNames("Nobody"); }), int(errTableNotFound));
        QCOMPARE(jetNumber([&] { m_db->CreateCaseBlindIndex("N", "Nobody", "Name"); }), int(errTableNotFound));
        QCOMPARE(jetNumber([&] { m_db->CreateCaseBlindIndex("N", "People", "Nope"); }), int(errTooFewParameters));
    }

    // Tests elsewhere prove how many statements a path runs; the count must be honest.
    void statementCount()
    {
        DBEngine::resetStatementCount();
        auto rs = m_db->OpenRecordset("People");
        rs->MoveNext();
        rs->Fields("Name").Value();
        QCOMPARE(DBEngine::statementCount(), 1LL);
        rs->Edit();
        rs->Fields("Num") = 7;
        rs->Update();
        QCOMPARE(DBEngine::statementCount(), 3LL); // the row read again, and written
        rs->Edit();
        rs->Update(); // nothing changed: nothing written
        m_db->Execute("UPDATE People SET Num = 1");
        QCOMPARE(DBEngine::statementCount(), 5LL);
    }

    // A kept statement follows a change of columns; far more distinct texts than the
    // cache keeps push old ones out, and all still run.
    void statementCache()
    {
        const QString sql = "SELECT * FROM People WHERE ID = 2";
        QCOMPARE(m_db->OpenRecordset(sql)->FieldCount(), 6);
        m_db->Execute("ALTER TABLE People ADD COLUMN New_Mobile TEXT(20)");
        m_db->Execute("UPDATE People SET New_Mobile = '555' WHERE ID = 2");
        QCOMPARE(m_db->OpenRecordset(sql)->Fields("new_mobile").Text(), QString("555"));
        m_db->Execute("ALTER TABLE People DROP COLUMN New_Mobile");
        QCOMPARE(m_db->OpenRecordset(sql)->FieldCount(), 6);
        for (int i = 0; i < 300; ++i) {
            QCOMPARE(m_db->OpenRecordset(QString("SELECT Num + %1 FROM People WHERE ID = 2").arg(i))->Fields(0).Value(),
                     QVariant(qlonglong(20 + i)));
            QCOMPARE(m_db->OpenRecordset(sql)->Fields("Num").Value(), QVariant(20LL));
        }
    }

    void quotedValuesRoundTrip_data()
    {
        QTest::addColumn<QString>("value");
        // '|' parts the texts; then control characters, NUL included, as another tool may have written them.
        QStringList texts =
            QString::fromUtf8("|Say \"hi\"|\"|O'Brien|'\"'\"|a; -- b|/* c */|line1\nline2\r\nback\\slash\\|"
                              "tab\there & True|$a(')|x\" OR \"1\"=\"1|'); DROP TABLE People; --|"
                              "\"); DROP TABLE People; --|*?#[!a]-|[*]|[|]|Ærøskøbing 東京 😀")
                .split(u'|');
        texts << QStringLiteral("a\0b") << QStringLiteral("\0") << QStringLiteral("\0[*]\0\"\0")
              << "\x01\x1b[0m\x7f\x1f";
        for (int i = 0; i < texts.size(); ++i)
            QTest::addRow("text %d", i) << texts[i];
    }

    // Into the file through quote() in Execute, back out through quote() in a
    // query and through a field after Edit/Update; as a LIKE pattern through
    // quoteLike() it matches itself, in any case, and nothing else.
    void quotedValuesRoundTrip()
    {
        QFETCH(QString, value);
        m_db->Execute("INSERT INTO People (Name, Note) VALUES (" + quote(value) + ", " + quote(value) + ")");
        auto rs = m_db->OpenRecordset("SELECT * FROM People WHERE Name = " + quote(value));
        QCOMPARE(rs->RecordCount(), 1LL);
        QCOMPARE(rs->Fields("Note").Value().toString(), value);
        QCOMPARE(count("Name LIKE " + quoteLike(value)), 1LL);
        QCOMPARE(count("Name LIKE " + quoteLike(value.toUpper())), 1LL);
        m_db->Execute("UPDATE People SET Note = " + quote(value + value) + " WHERE Name = " + quote(value));
        QCOMPARE(m_db->RecordsAffected(), 1LL);
        QCOMPARE(count("Note = " + quote(value + value) + " AND Name = " + quote(value)), 1LL);
        rs = m_db->OpenRecordset("SELECT * FROM People WHERE Name LIKE " + quoteLike(value));
        rs->Edit();
        rs->Fields("Note") = value + "!" + value;
        rs->Update();
        QCOMPARE(m_db->OpenRecordset("SELECT * FROM People WHERE Name = " + quote(value))->Fields("Note").Value(),
                 QVariant(value + "!" + value));
    }

    void valuesRoundTrip_data()
    {
        addColumns<QString, QVariant, QString>("field", "value", "text");
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
        auto [field, value] = fetch<QString, QVariant>("field", "value");
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
            QTEST(check->Fields(field).Text(), "text");
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
        addColumns<int, Action>("number", "action");
        const auto row = [](const char* name, int number, const Action& action) {
            QTest::newRow(name) << number << action;
        };
        const auto exec = [](const char* sql) {
            return Action([sql](Recordset&, Database& db) { db.Execute(sql); });
        };
        row("unknown table", errTableNotFound, exec("UPDATE Nobody SET Num = 1"));
        row("unknown column", errTooFewParameters, exec("UPDATE People SET Nope = 1"));
        row("insert into unknown column", errTooFewParameters, exec("INSERT INTO People (Nope) VALUES (1)"));
        row("column already there", errFieldExists, exec("ALTER TABLE People ADD COLUMN Note TEXT(10)"));
        row("INSERT syntax", errSyntaxInsert, exec("INSERT INTO People (Name VALUES ('x')"));
        row("UPDATE syntax", errSyntaxUpdate, exec("UPDATE People SET Num = = 1"));
        row("DELETE syntax", errSyntaxMissingOperator, exec("DELETE FROM People WHERE"));
        row("duplicate key, other case", errDuplicateKey, exec("INSERT INTO People (Name) VALUES ('ANN')"));
        row("Null in a required column", errFieldRequired, exec("UPDATE People SET Name = Null WHERE ID = 2"));
        row("a SELECT", errCannotExecuteSelect, exec("SELECT * FROM People"));
        row("text after the end", errCharactersAfterEnd, exec("DELETE FROM People WHERE ID = 1; DROP TABLE People"));
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
        auto [number, action] = fetch<int, Action>("number", "action");
        auto rs = people();
        QCOMPARE(jetNumber([&] { action(*rs, *m_db); }), number);
        QCOMPARE(sqliteValue(m_file, "SELECT count(*) FROM People"), QString("3")); // nothing of it ran
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
        addColumns<QStringList, QString>("steps", "num");
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
        QTEST(sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), "num");
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(m_file)->CommitTrans(); }), int(errNoTransaction));
    }

private:
    // The names of the table the look-ups below search; U+212A is the Kelvin sign.
    const QStringList kStaff =
        QString::fromUtf8(
            "Ann Lee|ann lee |Zoë|ZOË|STRASSE|Straße|Σίσυφος|ΣΊΣΥΦΟΣ|\u212A|k|A*B|AxB|A?B|A#B|A1B|[x]|x|a]|a|"
            "𐐀 Deseret|𐐨 deseret")
            .split(u'|') +
        QStringList{QStringLiteral("a\0b")};

private slots:
    void likeOfOneText_data()
    {
        addColumns<QString, QStringList>("name", "found");
        const auto row = [](const char* label, const QString& name, const QStringList& found) {
            QTest::newRow(label) << name << found;
        };
        row("case", "ANN LEE", {"Ann Lee"});
        row("unicode case", QString::fromUtf8("zoË"), {QString::fromUtf8("Zoë"), QString::fromUtf8("ZOË")});
        row("one code point for one", "strasse", {"STRASSE"});
        row("final sigma", QString::fromUtf8("σίσυφοσ"), {QString::fromUtf8("Σίσυφος"), QString::fromUtf8("ΣΊΣΥΦΟΣ")});
        row("kelvin sign", "K", {QString(QChar(0x212A)), "k"});
        row("outside the BMP", QString::fromUtf8("𐐨 DESERET"),
            {QString::fromUtf8("𐐀 Deseret"), QString::fromUtf8("𐐨 deseret")});
        row("star", "a*b", {"A*B"});
        row("question mark", "A?B", {"A?B"});
        row("hash", "A#B", {"A#B"});
        row("brackets", "[X]", {"[x]"});
        row("closing bracket", "A]", {"a]"});
        row("NUL", QStringLiteral("A\0B"), {QStringLiteral("a\0b")});
        row("nobody", "Ann", {});
    }

    // A look-up by one name finds the same rows whether the table has an index on
    // the fold or not.
    void likeOfOneText()
    {
        auto [name, found] = fetch<QString, QStringList>("name", "found");
        m_db->Execute("CREATE TABLE Staff (Name TEXT(50), Other TEXT(50))");
        for (const QString& staff : kStaff)
            m_db->Execute("INSERT INTO Staff (Name, Other) VALUES (" + quote(staff) + ", " + quote(staff) + ")");
        m_db->CreateCaseBlindIndex("Staff_FoldedName", "Staff", "Name");
        for (const char* column : {"Name", "Other"}) {
            QStringList rows;
            auto rs =
                m_db->OpenRecordset(QString("SELECT Name FROM Staff WHERE %1 LIKE ").arg(column) + quoteLike(name));
            for (; !rs->isEOF(); rs->MoveNext())
                rows << rs->Fields(0).Value().toString();
            QCOMPARE(rows, found);
        }
    }
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
