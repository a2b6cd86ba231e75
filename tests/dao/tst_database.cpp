// Database: Execute and the Jet numbers of failing statements, the table list,
// the statement count, the statement cache across a change of schema, and text
// values with quotes and injection attempts going in and coming back unchanged.
#include "dao/jetsql.h"
#include "daotest.h"

#include <QTemporaryDir>

using namespace dao;
using daotest::jetNumber;

class TestDatabase : public QObject
{
    Q_OBJECT

private:
    long long count(const QString& where)
    {
        return m_db->OpenRecordset("SELECT * FROM People WHERE " + where)->RecordCount();
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
        m_db = DBEngine::OpenDatabase(m_file);
    }

    void cleanup()
    {
        m_db.reset();
    }

    void executeFailures_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("number");
        QTest::newRow("unknown table") << "UPDATE Nobody SET Num = 1" << int(errTableNotFound);
        QTest::newRow("unknown column") << "UPDATE People SET Nope = 1" << int(errTooFewParameters);
        QTest::newRow("insert into unknown column")
            << "INSERT INTO People (Nope) VALUES (1)" << int(errTooFewParameters);
        QTest::newRow("column already there") << "ALTER TABLE People ADD COLUMN Note TEXT(10)" << int(errFieldExists);
        QTest::newRow("INSERT syntax") << "INSERT INTO People (Name VALUES ('x')" << int(errSyntaxInsert);
        QTest::newRow("UPDATE syntax") << "UPDATE People SET Num = = 1" << int(errSyntaxUpdate);
        QTest::newRow("DELETE syntax") << "DELETE FROM People WHERE" << int(errSyntaxMissingOperator);
        QTest::newRow("duplicate key, other case")
            << "INSERT INTO People (Name) VALUES ('ANN')" << int(errDuplicateKey);
        QTest::newRow("Null in a required column")
            << "UPDATE People SET Name = Null WHERE ID = 2" << int(errFieldRequired);
        QTest::newRow("a SELECT") << "SELECT * FROM People" << int(errCannotExecuteSelect);
        QTest::newRow("text after the end")
            << "DELETE FROM People WHERE ID = 1; DROP TABLE People" << int(errCharactersAfterEnd);
    }

    void executeFailures()
    {
        QFETCH(QString, sql);
        QFETCH(int, number);
        QCOMPARE(jetNumber([&] { m_db->Execute(sql); }), number);
        // Nothing of a refused statement ran.
        QCOMPARE(sqliteValue(m_file, "SELECT count(*) FROM People"), QString("3"));
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
        const char* values[] = {"",
                                "Say \"hi\"",
                                "\"",
                                "O'Brien",
                                "'\"'\"",
                                "a; -- b",
                                "/* c */",
                                "line1\nline2\r\nback\\slash\\",
                                "tab\there & True",
                                "$a(')",
                                "x\" OR \"1\"=\"1",
                                "'); DROP TABLE People; --",
                                "\"); DROP TABLE People; --",
                                "*?#[!a]-",
                                "[*]",
                                "[",
                                "]",
                                "Ærøskøbing 東京 😀"};
        QStringList texts;
        for (const char* v : values)
            texts << QString::fromUtf8(v);
        // Control characters, NUL included, as another tool may have written them.
        texts << QStringLiteral("a\0b") << QStringLiteral("\0") << QStringLiteral("\0[*]\0\"\0")
              << QStringLiteral("\x01\x1b[0m\x7f\x1f");
        for (const QString& text : texts) {
            QString name;
            for (const QChar c : text)
                name +=
                    c.unicode() < 0x20 ? QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0')) : QString(c);
            QTest::addRow("%s", qPrintable(name)) << text;
        }
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
        QCOMPARE(m_db->OpenRecordset("People")->RecordCount(), 4LL); // nothing dropped
    }

    // Jet's own wildcards, without regard to case, through the engine's LIKE.
    void jetLikeInQueries()
    {
        m_db->Execute("INSERT INTO People (Name) VALUES ('Axyz1')");
        QCOMPARE(count("Name LIKE \"a*\""), 2LL);
        QCOMPARE(count("Name LIKE \"?XYZ#\""), 1LL);
        QCOMPARE(count("Name LIKE \"[!a]*\""), 2LL);
    }

private:
    // The names of the table the look-ups below search; U+212A is the Kelvin sign.
    const QStringList kStaff = {"Ann Lee",
                                "ann lee ",
                                QString::fromUtf8("Zoë"),
                                QString::fromUtf8("ZOË"),
                                "STRASSE",
                                QString::fromUtf8("Straße"),
                                QString::fromUtf8("Σίσυφος"),
                                QString::fromUtf8("ΣΊΣΥΦΟΣ"),
                                QString(QChar(0x212A)),
                                "k",
                                "A*B",
                                "AxB",
                                "A?B",
                                "A#B",
                                "A1B",
                                "[x]",
                                "x",
                                "a]",
                                QStringLiteral("a\0b"),
                                "a",
                                QString::fromUtf8("𐐀 Deseret"),
                                QString::fromUtf8("𐐨 deseret")};

private slots:
    void likeOfOneText_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("found");
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

    // A look-up by one name finds exactly the rows Jet's LIKE finds, whether the
    // table has an index on the fold or not.
    void likeOfOneText()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, found);
        m_db->Execute("CREATE TABLE Staff (Name TEXT(50), Other TEXT(50))");
        for (const QString& staff : kStaff)
            m_db->Execute("INSERT INTO Staff (Name, Other) VALUES (" + quote(staff) + ", " + quote(staff) + ")");
        const QString pattern = quoteLike(name).mid(1).chopped(1); // no " among these names
        QStringList oracle;
        for (const QString& staff : kStaff) {
            if (jetLike(staff, pattern))
                oracle << staff;
        }
        QCOMPARE(oracle, found);
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
