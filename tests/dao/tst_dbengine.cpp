// DBEngine's opens and their Jet numbers, and the Jet dialect: translation, refusals, LIKE, numbers.
#include "columns.h"
#include "dao/jetsql.h"
#include "daotest.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <cmath>
#include <unistd.h>

using namespace dao;
using daotest::jetNumber;

namespace {

QByteArray legacyHeader(const char* kind)
{
    QByteArray bytes(2048, '\0');
    bytes[1] = 1;
    bytes.replace(4, 15, kind);
    return bytes;
}

// A database of the engine's own with a table T that has a row, where a
// translation is run the way the engine runs it.
std::shared_ptr<dao::Database> scratchDatabase(const QTemporaryDir& dir)
{
    auto db = dao::DBEngine::CreateDatabase(dir.filePath(QUuid::createUuid().toString(QUuid::Id128)));
    db->Execute("CREATE TABLE T (Note TEXT, X TEXT)");
    db->Execute("INSERT INTO T VALUES ('Abc', 'x')");
    return db;
}

} // namespace

class TestDBEngine : public QObject
{
    Q_OBJECT

    QString path(const QString& name) const
    {
        return m_dir->filePath(name);
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString file; // the small table of people, made afresh for each test

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        file = path("veskor.mdb");
        DBEngine::setBusyTimeoutMs(2000);
        daotest::makePeople(file);
    }

    void openFailures_data()
    {
        addColumns<QString, QString, int>("setup", "file", "number");
        const auto row = [](const char* name, const char* setup, const char* file, int number) {
            QTest::newRow(name) << setup << file << number;
        };
        row("empty name", "", "", errInvalidFileName);
        row("folder is a file", "plain", "plain.txt/veskor.mdb", errInvalidPath);
        row("empty file", "empty", "veskor.mdb", errUnrecognizedFormat);
        row("legacy Jet file", "jet", "veskor.mdb", errUnrecognizedFormat);
        row("legacy ACE file", "ace", "veskor.mdb", errUnrecognizedFormat);
        row("truncated file", "truncated", "veskor.mdb", errCorrupt);
        row("good header, damaged pages", "damaged", "veskor.mdb", errCorrupt);
    }

    void openFailures()
    {
        auto [setup, file, number] = fetch<QString, QString, int>("setup", "file", "number");
        const QString target = file.isEmpty() ? QString() : path(file);
        if (setup == "plain") {
            QVERIFY(writeFile(path("plain.txt"), "text"));
        } else if (setup == "empty") {
            QVERIFY(writeFile(target, QByteArray()));
        } else if (setup == "jet" || setup == "ace") {
            QVERIFY(writeFile(target, legacyHeader(setup == "jet" ? "Standard Jet DB" : "Standard ACE DB")));
        } else if (setup == "truncated" || setup == "damaged") {
            QVERIFY(sqliteExec(target, "CREATE TABLE Filler (x); INSERT INTO Filler VALUES (randomblob(20000));"));
            QFile f(target);
            if (setup == "truncated") {
                QVERIFY(f.resize(f.size() / 2));
            } else {
                QVERIFY(f.open(QIODevice::ReadWrite) && f.seek(100));
                f.write(QByteArray(3000, '\xA5'));
            }
        }
        QString description;
        try {
            DBEngine::OpenDatabase(target);
        } catch (const JetError& e) {
            QCOMPARE(e.number(), number);
            description = e.description();
        }
        QVERIFY2(!description.isEmpty(), "the open did not fail");
        if (setup == "jet" || setup == "ace")
            QVERIFY(description.contains("Access"));
    }

    void noPermission()
    {
        if (::geteuid() == 0)
            QSKIP("root reads every file");
        QFile::setPermissions(file, QFileDevice::ReadOwner);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errNoPermission));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, false, true); }), 0);
        QFile::setPermissions(file, QFileDevice::WriteOwner);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, false, true); }), int(errNoPermission));
    }

    // A new file has a real header at once, and a rollback journal, which works on
    // a network share.
    void createDatabase()
    {
        const QString created = path("new.mdb");
        DBEngine::CreateDatabase(created)->Close();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(created)->Execute("CREATE TABLE T (A LONG)"); }), 0);
        QCOMPARE(DBEngine::OpenDatabase(created)->TableNames(), QStringList{"T"});
        QCOMPARE(jetNumber([&] { DBEngine::CreateDatabase(created); }), int(errDatabaseExists));
        QCOMPARE(jetNumber([&] { DBEngine::CreateDatabase(path("no/new.mdb")); }), int(errInvalidPath));

        QCOMPARE(sqliteValue(created, "PRAGMA journal_mode"), QString("delete"));
    }

    // The maintenance open shuts out every other open with 3045, at once (without
    // the busy wait), in this process and in another; a holder that dies lets go.
    void exclusiveOpen()
    {
        DBEngine::OpenDatabase(file)->Close();
        QVERIFY(!QFile::exists(path("veskor.ldb"))); // a shared open makes no lock file

        auto shared = DBEngine::OpenDatabase(file);
        auto admin = DBEngine::OpenDatabase(file, true);
        QVERIFY(admin->isExclusive() && QFile::exists(path("veskor.ldb")));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errExclusivelyLocked));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, true); }), int(errExclusivelyLocked));
        admin->Execute("UPDATE People SET Num = 99 WHERE ID = 1");
        admin->Close();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);

        daotest::Helper helper;
        QCOMPARE(helper.start({"exclusive", file}), QString("locked"));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errExclusivelyLocked));
        QVERIFY2(timer.elapsed() < 1000, "3045 comes at once, without the busy wait");
        helper.process.kill();
        helper.process.waitForFinished(5000);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);
    }

    void busyFileAtOpen()
    {
        daotest::Helper helper;
        QCOMPARE(helper.start({"hold", file}), QString("locked"));
        DBEngine::setBusyTimeoutMs(300);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errCouldNotLockFile));
        QVERIFY2(timer.elapsed() >= 250, "the open waits for the lock before it fails");
        helper.finish();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);
    }

    // A closed database and all opened from it are invalid; a read-only open refuses writes.
    void closedOrReadOnly()
    {
        auto db = DBEngine::OpenDatabase(file);
        auto rs = db->OpenRecordset("People");
        db->Close();
        QVERIFY(!db->isOpen() && !rs->isOpen());
        QCOMPARE(jetNumber([&] { db->OpenRecordset("People"); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { db->Execute("DELETE FROM People"); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { rs->Fields("Name").Value(); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { db->Close(); }), 0); // closing twice is harmless
        db = DBEngine::OpenDatabase(file, false, true);
        QCOMPARE(jetNumber([&] { db->OpenRecordset("People")->Edit(); }), int(errCannotUpdate));
        QCOMPARE(jetNumber([&] { db->Execute("DELETE FROM People"); }), int(errCannotUpdate));
    }

    void translate_data()
    {
        addColumns<QString, QString>("jet", "sqlite");
        const auto row = [](const char* name, const QString& jet, const QString& sqlite) {
            QTest::newRow(name) << jet << sqlite;
        };
        // Literals
        row("double-quoted literal", R"(DELETE FROM T WHERE Name = "Ann")", R"(DELETE FROM T WHERE Name = 'Ann')");
        row("double quotes in single", R"(DELETE FROM T WHERE A = 'a "b" c')", R"(DELETE FROM T WHERE A = 'a "b" c')");
        row("quotes in brackets", R"(DELETE FROM [odd "x" 'y'])", R"(DELETE FROM [odd "x" 'y'])");
        row("semicolon in literal", R"(DELETE FROM T WHERE A = "a;b")", R"(DELETE FROM T WHERE A = 'a;b')");
        row("semicolon in brackets", "DELETE FROM [a;b]", "DELETE FROM [a;b]");
        row("words in literal untouched", R"(UPDATE T SET A = "True & False")", R"(UPDATE T SET A = 'True & False')");
        row("literal touching a word", R"(DELETE FROM T WHERE Tracker = "Ann"AND Trackee = "Bob";  )",
            R"(DELETE FROM T WHERE Tracker = 'Ann'AND Trackee = 'Bob')");
        row("word touching a literal", R"(DELETE FROM T WHERE Name NOT LIKE"Ann")",
            R"(DELETE FROM T WHERE Name NOT LIKE 'Ann')");
        row("NUL in a literal", QStringLiteral("UPDATE T SET A = 'a\0b' WHERE B = \"\0\""),
            "UPDATE T SET A = (CAST(X'610062' AS TEXT)) WHERE B = (CAST(X'00' AS TEXT))");
        row("no blob literal", R"(DELETE FROM T WHERE A = x"41" OR A = X'42')",
            R"(DELETE FROM T WHERE A = x '41' OR A = X '42')");
        // Statement end
        row("trailing semicolon", "DELETE FROM T;", "DELETE FROM T");
        // Operators and constants
        row("text join", R"(UPDATE T SET A = B & "x" & C)", R"(UPDATE T SET A = B || 'x' || C)");
        row("true and false", "UPDATE T SET A = True, B = false", "UPDATE T SET A = 1, B = 0");
        row("names holding true", "UPDATE T SET IsTrue = TrueValue WHERE [True] = T.True AND False_ = 1",
            "UPDATE T SET IsTrue = TrueValue WHERE [True] = T.True AND False_ = 1");
        row("no comment from minus minus", "UPDATE T SET A = 5--3", "UPDATE T SET A = 5- -3");
        row("no comment from slash star", "UPDATE T SET A = B /*x*/ WHERE C = 1",
            "UPDATE T SET A = B / *x*/ WHERE C = 1");
        // TOP and DISTINCTROW
        row("top", "SELECT top 1 * FROM EmployeeTable",
            "SELECT EmployeeTable.rowid AS __rowid, * FROM EmployeeTable LIMIT 1");
        row("distinct top", "SELECT DISTINCT TOP 3 Name FROM T", "SELECT DISTINCT Name FROM T LIMIT 3");
        row("top in a sub-select", "DELETE FROM T WHERE ID IN (SELECT TOP 2 ID FROM T ORDER BY ID)",
            "DELETE FROM T WHERE ID IN (SELECT ID FROM T ORDER BY ID LIMIT 2)");
        row("column named top", "SELECT Top FROM T", "SELECT T.rowid AS __rowid, Top FROM T");
        row("distinctrow", "SELECT DISTINCTROW Name FROM T", "SELECT DISTINCT Name FROM T");
        // UPDATE targets
        row("several targets", "UPDATE T SET T.A = 1, T.B = T.C + 1 WHERE T.A = 2",
            "UPDATE T SET A = 1, B = T.C + 1 WHERE T.A = 2");
        row("bracketed target", R"(UPDATE [T] SET [T].[A] = "x")", "UPDATE [T] SET [A] = 'x'");
        row("comma inside a value", "UPDATE T SET A = Mid(B, 1, 2), T.C = 3", "UPDATE T SET A = Mid(B, 1, 2), C = 3");
        // Passed through
        row("join and Jet's parentheses",
            R"(SELECT E.Name FROM EmployeeTable AS E INNER JOIN G ON E.Name = G.N WHERE (((G.GroupName) Like "S*")))",
            R"(SELECT E.Name FROM EmployeeTable AS E INNER JOIN G ON E.Name = G.N WHERE (((G.GroupName) Like 'S*')))");
        row("empty", " ;  ", "");
        // LIKE of one text: an equality of folds, which an index on the fold answers
        row("like of bracketed wildcards", R"(DELETE FROM T WHERE (T.UID LIKE 'A[*][?][#][[]]' AND X = 1))",
            R"(DELETE FROM T WHERE (jetfold(T.UID) = 'a*?#[]' AND X = 1))");
        row("like of a NUL", QStringLiteral("DELETE FROM T WHERE Name LIKE \"A\0\""),
            "DELETE FROM T WHERE jetfold(Name) = (CAST(X'6100' AS TEXT))");
        row("like with a wildcard", R"(DELETE FROM T WHERE Name LIKE "A*" OR Name LIKE "[a-c]" OR Name LIKE "[!]")",
            R"(DELETE FROM T WHERE Name LIKE 'A*' OR Name LIKE '[a-c]' OR Name LIKE '[!]')");
        row("like bound tighter on the left", R"(DELETE FROM T WHERE A & Name LIKE "x" OR X IS NOT Name LIKE "x")",
            R"(DELETE FROM T WHERE A || Name LIKE 'x' OR X IS NOT Name LIKE 'x')");
        row("like bound tighter on the right", R"(DELETE FROM T WHERE Name LIKE "x" & A OR Name LIKE "x" ESCAPE "!")",
            R"(DELETE FROM T WHERE Name LIKE 'x' || A OR Name LIKE 'x' ESCAPE '!')");
        row("like beside between", R"(DELETE FROM T WHERE A BETWEEN 1 AND Name LIKE "x")",
            R"(DELETE FROM T WHERE A BETWEEN 1 AND Name LIKE 'x')");
        // Table definitions: Jet's types, text compared without case, no NOT NULL on an added column.
        row("create with every kind",
            "CREATE TABLE T (ID COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Name TEXT(50) NOT NULL, Note MEMO, "
            "Flag YESNO, Ok LOGICAL, N LONG, D DOUBLE, C CHAR(5), V VARCHAR, B Bit)",
            "CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50) COLLATE NOCASE NOT NULL, "
            "Note LONGTEXT COLLATE NOCASE, Flag BIT, Ok BIT, N LONG, D DOUBLE, C CHAR(5) COLLATE NOCASE, "
            "V VARCHAR COLLATE NOCASE, B Bit)");
        row("counter with seed", "CREATE TABLE T (ID COUNTER(1, 1), A TEXT(5)NOT NULL)",
            "CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, A TEXT(5) COLLATE NOCASE NOT NULL)");
        row("add without COLUMN", "ALTER TABLE T ADD Remark Memo NOT NULL",
            "ALTER TABLE T ADD Remark LONGTEXT COLLATE NOCASE");
        row("drop without COLUMN", "ALTER TABLE T DROP Note", "ALTER TABLE T DROP COLUMN Note");
    }

    void translate()
    {
        auto [jet, sqlite] = fetch<QString, QString>("jet", "sqlite");
        QCOMPARE(dao::translateJet(jet).sql, sqlite);
        // A table definition must also run (on a table T that has a row).
        if (sqlite.startsWith(QLatin1String("CREATE")) || sqlite.startsWith(QLatin1String("ALTER"))) {
            auto db = scratchDatabase(*m_dir);
            if (sqlite.startsWith(QLatin1String("CREATE")))
                db->Execute("DROP TABLE T");
            db->Execute(jet);
        }
    }

    void refused_data()
    {
        addColumns<QString, int>("jet", "number");
        QTest::newRow("second statement") << "SELECT * FROM T; DROP TABLE T" << 3142;
        QTest::newRow("double semicolon") << "SELECT 1;;" << 3142;
        QTest::newRow("comment after end") << "UPDATE T SET A = 1; --" << 3142;
        QTest::newRow("end before a bad literal") << "DELETE FROM T; \"" << 3142;
        QTest::newRow("unclosed in select") << "SELECT * FROM T WHERE A = \"x" << 3075;
        QTest::newRow("unclosed in insert") << "INSERT INTO T (A) VALUES ('x)" << 3134;
        QTest::newRow("unclosed in update") << "UPDATE T SET A = \"x;" << 3144;
        QTest::newRow("unclosed bracket") << "DELETE FROM [T" << 3075;
        QTest::newRow("unclosed backquote") << "DELETE FROM `T" << 3075;
        QTest::newRow("doubled quote at the end") << "DELETE FROM T WHERE A = \"x\"\"" << 3075;
        QTest::newRow("parameter marker $") << "SELECT $a(') ; DROP TABLE T --') FROM T" << 3075;
        QTest::newRow("parameter marker :") << "SELECT * FROM T WHERE A = :a" << 3075;
        QTest::newRow("parameter marker @") << "SELECT * FROM T WHERE A = @a" << 3075;
        QTest::newRow("date literal") << "SELECT * FROM T WHERE A > #1/1/2005#" << 3075;
        QTest::newRow("control character") << "SELECT 1\x01" << 3075;
        QTest::newRow("nul outside a literal") << QStringLiteral("DELETE FROM T WHERE A = 1\0") << 3075;
        QTest::newRow("nul in a name") << QStringLiteral("DELETE FROM [a\0b]") << 3075;
        QTest::newRow("top percent") << "SELECT TOP 5 PERCENT * FROM T" << 3075;
    }

    void refused()
    {
        auto [jet, number] = fetch<QString, int>("jet", "number");
        try {
            const QString sql = dao::translateJet(jet).sql;
            QFAIL(qPrintable("translated to: " + sql));
        } catch (const dao::JetError& e) {
            QCOMPARE(e.number(), number);
        }
    }

    void like_data()
    {
        addColumns<QString, QStringList, QStringList>("pattern", "matching", "other");
        const auto row = [](const char* pattern, const QStringList& matching, const QStringList& other) {
            QTest::newRow(pattern) << QString::fromUtf8(pattern) << matching << other;
        };
        row("Ann", {"Ann", "aNN"}, {"Anne", "An", ""});
        row("", {""}, {"a"});
        row("A?n", {"Ann", "A😀n"}, {"An", "Axxn", "A😀😀n"});
        row("?", {"ß", "𐐀"}, {"", "ab"});
        row("*", {"", "Ann"}, {});
        row("S*team*th", {"Sales team North", "steamth"}, {"Sales team"});
        row("*abd", {"abcabd"}, {"abcab"});
        row("R#D#", {"R2D2"}, {"RXD2", "R2D"});
        row("#", {"0", "9"}, {"٣", "５", "²", "x"}); // ASCII digits only
        row("[abc]", {"b", "B"}, {"d", "ab"});
        row("[a-z]", {"m", "M"}, {"5"});
        row("[!abc]", {"d", "5"}, {"a", "A"});
        row("[a-][-a]", {"--", "a-"}, {"b-"});
        row("[*][?][#]", {"*?#"}, {"x?#", "*a#", "*?1"});
        row("[[]a]", {"[a]"}, {"a]"});
        row("a[]b", {"ab"}, {"axb"});
        row("[!]", {"x"}, {""});
        row("a[", {}, {"a[", "a"});
        row("*[", {}, {"anything", "["});
        row("[a", {}, {"a", "[a"});
        row("ZOË", {"Zoë"}, {"Zoe"});
        row("strasse", {"STRASSE"}, {"Straße"}); // one code point for one
        row("K", {"\u212A", "k"}, {});           // the Kelvin sign
        row("σίσυφος", {"ΣΊΣΥΦΟΣ"}, {});
        row("Σ", {"ς"}, {});
        row("[а-я]ван", {"Иван"}, {"Ivan"});
        row("𐐨", {"𐐀"}, {});
        row("[😀x]", {"😀", "X"}, {"y"});
        row("[𐐀-𐐏]", {"𐐨"}, {"a"});
    }

    // Each text twice: the second call uses the kept pattern.
    void like()
    {
        auto [pattern, matching, other] = fetch<QString, QStringList, QStringList>("pattern", "matching", "other");
        for (const QString& text : matching + matching)
            QVERIFY2(dao::jetLike(text, pattern), qPrintable(text));
        for (const QString& text : other + other)
            QVERIFY2(!dao::jetLike(text, pattern), qPrintable(text));
    }

    // A naive matcher takes 2^n steps here; this one must answer at once.
    void likeNeverBacktracksExponentially()
    {
        const QString text = QString(5000, u'a') + u'b';
        QString pattern;
        for (int i = 0; i < 40; ++i)
            pattern += QLatin1String("*a");
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!dao::jetLike(text, pattern + "*c"));
        QVERIFY(dao::jetLike(text, pattern + "*b"));
        QVERIFY2(timer.elapsed() < 2000, "matching took too long");
    }

    // Any double goes through SQLite's own reading and comes back the same, with a
    // point where the locale has a decimal comma, and in plain digits where shortest.
    void sqlNumber()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(dao::sqlNumber(45678.999988425923), QString("45678.99998842592"));
        QCOMPARE(dao::sqlNumber(1800.0), QString("1800"));
        QCOMPARE(dao::sqlNumber(1e20), QString("1e+20"));
        auto db = scratchDatabase(*m_dir);
        QRandomGenerator random(20050722);
        for (int i = 0; i < 200; ++i) {
            const double value = (random.generateDouble() - 0.2) * std::pow(10.0, random.bounded(12));
            auto rs = db->OpenRecordset("SELECT " + dao::sqlNumber(value) + " = " + QString::number(value, 'g', 17));
            QVERIFY2(rs->Fields(0).Value().toInt() == 1, qPrintable(dao::sqlNumber(value)));
        }
        QLocale::setDefault(QLocale::c());
    }
};

QTEST_GUILESS_MAIN(TestDBEngine)
#include "tst_dbengine.moc"
