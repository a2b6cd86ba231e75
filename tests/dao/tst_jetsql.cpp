// The Jet dialect: translation to SQLite, Jet's LIKE and the quoting helper.
// Translations that matter are also run on a real in-memory SQLite database, so
// a test fails when SQLite would read the text differently from what we meant.

#include "dao/jeterror.h"
#include "dao/jetsql.h"
#include "dao/quote.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>
#include <cmath>
#include <sqlite3.h>

using dao::StatementKind;

Q_DECLARE_METATYPE(dao::StatementKind)

namespace {

// LIKE in the test database is Jet's, as in the engine. SQLite calls like(Y, X)
// for X LIKE Y: the pattern comes first.
void jetLikeFunction(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    const auto text = [](sqlite3_value* v) {
        return QString::fromUtf16(static_cast<const char16_t*>(sqlite3_value_text16(v)), sqlite3_value_bytes16(v) / 2);
    };
    sqlite3_result_int(ctx, dao::jetLike(text(argv[1]), text(argv[0])) ? 1 : 0);
}

// An in-memory database that holds a few of the system's tables, each with a row.
class MemoryDb
{
public:
    MemoryDb()
    {
        sqlite3_open(":memory:", &m_db);
        sqlite3_create_function(m_db, "like", 2, SQLITE_UTF16 | SQLITE_DETERMINISTIC, nullptr, jetLikeFunction, nullptr,
                                nullptr);
        exec("CREATE TABLE EmployeeTable (Name TEXT COLLATE NOCASE, Status TEXT, UID TEXT);"
             "INSERT INTO EmployeeTable VALUES ('Ann', 'In', 'ann');"
             "CREATE TABLE StatusCounterTable (Counter LONG);"
             "INSERT INTO StatusCounterTable VALUES (7);"
             "CREATE TABLE MessagesTable (MessageID INTEGER PRIMARY KEY, SentToName TEXT, Category TEXT,"
             " SentDateTimeNum DOUBLE, MessageSubject TEXT, SentFromName TEXT, MessageBody TEXT);"
             "CREATE TABLE [Employee Table] (Name TEXT);");
    }
    ~MemoryDb()
    {
        sqlite3_close(m_db);
    }
    MemoryDb(const MemoryDb&) = delete;
    MemoryDb& operator=(const MemoryDb&) = delete;

    bool exec(const char* sql)
    {
        return sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    // Prepares exactly one statement: fails the test on an error or on any text
    // SQLite leaves after the first statement. Returns the statement, stepped once.
    sqlite3_stmt* prepareOne(const QString& sql)
    {
        const QByteArray utf8 = sql.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        const char* tail = nullptr;
        const int rc = sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &stmt, &tail);
        if (rc != SQLITE_OK) {
            qWarning("%s: %s", utf8.constData(), sqlite3_errmsg(m_db));
            return nullptr;
        }
        if (!QByteArray(tail).trimmed().isEmpty()) {
            qWarning("text after the statement: %s", tail);
            sqlite3_finalize(stmt);
            return nullptr;
        }
        sqlite3_step(stmt);
        return stmt;
    }

    // The first column of the first row of a one-statement query.
    QVariant scalar(const QString& sql)
    {
        sqlite3_stmt* stmt = prepareOne(sql);
        if (!stmt)
            return QStringLiteral("<failed>");
        QVariant v;
        if (sqlite3_column_type(stmt, 0) == SQLITE_TEXT)
            v = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)),
                                  sqlite3_column_bytes(stmt, 0));
        else if (sqlite3_column_type(stmt, 0) != SQLITE_NULL)
            v = sqlite3_column_int64(stmt, 0);
        sqlite3_finalize(stmt);
        return v;
    }

    QString firstColumnName(const QString& sql)
    {
        sqlite3_stmt* stmt = prepareOne(sql);
        const QString name = stmt ? QString::fromUtf8(sqlite3_column_name(stmt, 0)) : QString();
        sqlite3_finalize(stmt);
        return name;
    }

private:
    sqlite3* m_db = nullptr;
};

QVariant runJet(MemoryDb& db, const QString& jet)
{
    return db.scalar(dao::translateJet(jet).sql);
}

} // namespace

class TestJetSql : public QObject
{
    Q_OBJECT

private slots:
    void translate_data();
    void translate();
    void refused_data();
    void refused();
    void schemaUpgrade_data();
    void schemaUpgrade();
    void schemaUpgradeOnFilledTables();
    void columnTypes_data();
    void columnTypes();
    void kindAndSingleTable_data();
    void kindAndSingleTable();
    void like_data();
    void like();
    void likeNeverBacktracksExponentially();
    void quoteRoundTrip_data();
    void quoteRoundTrip();
    void sqlNumber_data();
    void sqlNumber();
    void sqlNumberReadsBack();
    void translateShortStatement();
};

void TestJetSql::translate_data()
{
    QTest::addColumn<QString>("jet");
    QTest::addColumn<QString>("sqlite");
    const auto row = [](const char* name, const QString& jet, const QString& sqlite) {
        QTest::newRow(name) << jet << sqlite;
    };
    // Literals
    row("double-quoted literal", R"(DELETE FROM T WHERE Name = "Ann")", R"(DELETE FROM T WHERE Name = 'Ann')");
    row("doubled double quote", R"(DELETE FROM T WHERE A = "say ""hi""")", R"(DELETE FROM T WHERE A = 'say "hi"')");
    row("apostrophe in double quotes", R"(DELETE FROM T WHERE A = "O'Brien")", R"(DELETE FROM T WHERE A = 'O''Brien')");
    row("single-quoted stays", R"(DELETE FROM T WHERE A = 'O''Brien')", R"(DELETE FROM T WHERE A = 'O''Brien')");
    row("double quotes in single", R"(DELETE FROM T WHERE A = 'a "b" c')", R"(DELETE FROM T WHERE A = 'a "b" c')");
    row("quotes in brackets", R"(DELETE FROM [odd "x" 'y'])", R"(DELETE FROM [odd "x" 'y'])");
    row("semicolon in literal", R"(DELETE FROM T WHERE A = "a;b")", R"(DELETE FROM T WHERE A = 'a;b')");
    row("semicolon in brackets", "DELETE FROM [a;b]", "DELETE FROM [a;b]");
    row("words in literal untouched", R"(UPDATE T SET A = "True & False")", R"(UPDATE T SET A = 'True & False')");
    row("literal touching a word", R"(DELETE FROM T WHERE Tracker = "Ann"AND Trackee = "Bob";  )",
        R"(DELETE FROM T WHERE Tracker = 'Ann'AND Trackee = 'Bob')");
    row("word touching a literal", R"(DELETE FROM T WHERE Name LIKE"Ann")", R"(DELETE FROM T WHERE Name LIKE 'Ann')");
    row("no blob literal", R"(DELETE FROM T WHERE A = x"41" OR A = X'42')",
        R"(DELETE FROM T WHERE A = x '41' OR A = X '42')");
    row("unicode literal", QString::fromUtf8("DELETE FROM T WHERE A = \"Zoë 😀\""),
        QString::fromUtf8("DELETE FROM T WHERE A = 'Zoë 😀'"));
    // Statement end
    row("trailing semicolon", "DELETE FROM T;", "DELETE FROM T");
    row("semicolon and blanks", "DELETE FROM T WHERE MessageID = 5 ; \r\n\t ", "DELETE FROM T WHERE MessageID = 5");
    // Operators and constants
    row("text join", R"(UPDATE T SET A = B & "x" & C)", R"(UPDATE T SET A = B || 'x' || C)");
    row("true and false", "UPDATE T SET A = True, B = false", "UPDATE T SET A = 1, B = 0");
    row("names holding true", "UPDATE T SET IsTrue = TrueValue WHERE [True] = T.True AND False_ = 1",
        "UPDATE T SET IsTrue = TrueValue WHERE [True] = T.True AND False_ = 1");
    row("no comment from minus minus", "UPDATE T SET A = 5--3", "UPDATE T SET A = 5- -3");
    row("no comment from slash star", "UPDATE T SET A = B /*x*/ WHERE C = 1", "UPDATE T SET A = B / *x*/ WHERE C = 1");
    // TOP and DISTINCTROW
    row("top", "SELECT top 1 * FROM EmployeeTable",
        "SELECT EmployeeTable.rowid AS __rowid, * FROM EmployeeTable LIMIT 1");
    row("top with order", "SELECT TOP 5 Name FROM T ORDER BY Name;",
        "SELECT T.rowid AS __rowid, Name FROM T ORDER BY Name LIMIT 5");
    row("distinct top", "SELECT DISTINCT TOP 3 Name FROM T", "SELECT DISTINCT Name FROM T LIMIT 3");
    row("top in a sub-select", "DELETE FROM T WHERE ID IN (SELECT TOP 2 ID FROM T ORDER BY ID)",
        "DELETE FROM T WHERE ID IN (SELECT ID FROM T ORDER BY ID LIMIT 2)");
    row("column named top", "SELECT Top FROM T", "SELECT T.rowid AS __rowid, Top FROM T");
    row("distinctrow", "SELECT DISTINCTROW Name FROM T", "SELECT DISTINCT Name FROM T");
    // UPDATE targets
    row("qualified target", "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowMessaging = True",
        "UPDATE GlobalSettingsTable SET AllowMessaging = 1");
    row("several targets", "UPDATE T SET T.A = 1, T.B = T.C + 1 WHERE T.A = 2",
        "UPDATE T SET A = 1, B = T.C + 1 WHERE T.A = 2");
    row("bracketed target", R"(UPDATE [T] SET [T].[A] = "x")", "UPDATE [T] SET [A] = 'x'");
    row("comma inside a value", "UPDATE T SET A = Mid(B, 1, 2), T.C = 3", "UPDATE T SET A = Mid(B, 1, 2), C = 3");
    // Passed through
    row("join and Jet's parentheses",
        R"(SELECT E.Name FROM EmployeeTable AS E INNER JOIN G ON E.Name = G.N WHERE (((G.GroupName) Like "S*")))",
        R"(SELECT E.Name FROM EmployeeTable AS E INNER JOIN G ON E.Name = G.N WHERE (((G.GroupName) Like 'S*')))");
    row("message watcher",
        R"(SELECT MessageSubject, Category  FROM MessagesTable  WHERE (((SentToName)="Ann")   AND ((Category)="New")   AND ((SentDateTimeNum)>45678.5));)",
        R"(SELECT MessagesTable.rowid AS __rowid, MessageSubject, Category  FROM MessagesTable  WHERE (((SentToName)='Ann')   AND ((Category)='New')   AND ((SentDateTimeNum)>45678.5)))");
    row("operators", "DELETE FROM T WHERE A <> 1 AND B BETWEEN 1 AND 2 AND C IN (1, 2) AND D IS NULL",
        "DELETE FROM T WHERE A <> 1 AND B BETWEEN 1 AND 2 AND C IN (1, 2) AND D IS NULL");
    row("empty", " ;  ", "");
}

void TestJetSql::translate()
{
    QFETCH(QString, jet);
    QFETCH(QString, sqlite);
    QCOMPARE(dao::translateJet(jet).sql, sqlite);
}

void TestJetSql::refused_data()
{
    QTest::addColumn<QString>("jet");
    QTest::addColumn<int>("number");
    QTest::newRow("second statement") << "SELECT * FROM T; DROP TABLE T" << 3142;
    QTest::newRow("two deletes") << "DELETE FROM T;DELETE FROM U" << 3142;
    QTest::newRow("double semicolon") << "SELECT 1;;" << 3142;
    QTest::newRow("comment after end") << "UPDATE T SET A = 1; --" << 3142;
    QTest::newRow("form feed after end") << "SELECT 1;\f" << 3142;
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
    QTest::newRow("control character") << QStringLiteral("SELECT 1\x01") << 3075;
    QTest::newRow("nul in literal") << QString::fromUtf16(u"DELETE FROM T WHERE A = 'a\0b'", 30) << 3075;
    QTest::newRow("top percent") << "SELECT TOP 5 PERCENT * FROM T" << 3075;
    QTest::newRow("top fraction") << "SELECT TOP 1.5 * FROM T" << 3075;
}

void TestJetSql::refused()
{
    QFETCH(QString, jet);
    QFETCH(int, number);
    try {
        const QString sql = dao::translateJet(jet).sql;
        QFAIL(qPrintable(QStringLiteral("translated to: ") + sql));
    } catch (const dao::JetError& e) {
        QCOMPARE(e.number(), number);
    }
}

namespace {

// Every ALTER and UPDATE that brings an older file up to date, in their order,
// with the text SQLite must get: pairs of Jet statement and translation.
QList<QPair<QString, QString>> upgradeStatements()
{
    const QString gs = QStringLiteral("ALTER TABLE GlobalSettingsTable ADD COLUMN ");
    const QString es = QStringLiteral("ALTER TABLE EmployeeSettingsTable ADD COLUMN ");
    const QString nu = QStringLiteral("ALTER TABLE NewUserDefaultsTable ADD COLUMN ");
    const QString as = QStringLiteral("ALTER TABLE AdminSettingsTable ADD COLUMN ");
    const QString tl = QStringLiteral("ALTER TABLE TransactionLogTable ADD COLUMN ");
    const QStringList rows = {
        gs + "DatabaseReleaseVersion TEXT(10) NOT NULL",
        gs + "DatabaseReleaseVersion TEXT(10) COLLATE NOCASE",
        "UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = 2005",
        "UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = 2005",
        gs + "AllowMessaging Bit NOT NULL",
        gs + "AllowMessaging Bit",
        "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowMessaging = True",
        "UPDATE GlobalSettingsTable SET AllowMessaging = 1",
        gs + "AllowStatusAlerts Bit NOT NULL",
        gs + "AllowStatusAlerts Bit",
        "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowStatusAlerts = True",
        "UPDATE GlobalSettingsTable SET AllowStatusAlerts = 1",
        gs + "AllowPresenceSensing Bit NOT NULL",
        gs + "AllowPresenceSensing Bit",
        "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowPresenceSensing = True",
        "UPDATE GlobalSettingsTable SET AllowPresenceSensing = 1",
        gs + "AllowUserToAddVeskOrToStartupFolder Bit NOT NULL",
        gs + "AllowUserToAddVeskOrToStartupFolder Bit",
        "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowUserToAddVeskOrToStartupFolder = True",
        "UPDATE GlobalSettingsTable SET AllowUserToAddVeskOrToStartupFolder = 1",
        gs + "UpdateStatusOnLock Bit NOT NULL",
        gs + "UpdateStatusOnLock Bit",
        "UPDATE GlobalSettingsTable SET GlobalSettingsTable.UpdateStatusOnLock = FALSE",
        "UPDATE GlobalSettingsTable SET UpdateStatusOnLock = 0",
        es + "SplitterPositionVertical Long NOT NULL",
        es + "SplitterPositionVertical Long",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.SplitterPositionVertical = 1800",
        "UPDATE EmployeeSettingsTable SET SplitterPositionVertical = 1800",
        es + "SplitterPositionHorizontal Long NOT NULL",
        es + "SplitterPositionHorizontal Long",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.SplitterPositionHorizontal = 1575",
        "UPDATE EmployeeSettingsTable SET SplitterPositionHorizontal = 1575",
        es + "DisplayTreeView Long NOT NULL",
        es + "DisplayTreeView Long",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.DisplayTreeView = 1",
        "UPDATE EmployeeSettingsTable SET DisplayTreeView = 1",
        es + "StatusAlertsOverride Bit NOT NULL",
        es + "StatusAlertsOverride Bit",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.StatusAlertsOverride = FALSE",
        "UPDATE EmployeeSettingsTable SET StatusAlertsOverride = 0",
        es + "FontBoldDisplay Long NOT NULL",
        es + "FontBoldDisplay Long",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.FontBoldDisplay = 0",
        "UPDATE EmployeeSettingsTable SET FontBoldDisplay = 0",
        es + "FontSizeDisplay Long NOT NULL",
        es + "FontSizeDisplay Long",
        "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.FontSizeDisplay = 8",
        "UPDATE EmployeeSettingsTable SET FontSizeDisplay = 8",
        nu + "SplitterPositionVertical Long  NOT NULL",
        nu + "SplitterPositionVertical Long",
        "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.SplitterPositionVertical = 1800",
        "UPDATE NewUserDefaultsTable SET SplitterPositionVertical = 1800",
        nu + "SplitterPositionHorizontal Long NOT NULL",
        nu + "SplitterPositionHorizontal Long",
        "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.SplitterPositionHorizontal = 1575",
        "UPDATE NewUserDefaultsTable SET SplitterPositionHorizontal = 1575",
        "UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = '2005.7'",
        "UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = '2005.7'",
        nu + "FontBoldDisplay Long NOT NULL",
        nu + "FontBoldDisplay Long",
        "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.FontBoldDisplay = 0",
        "UPDATE NewUserDefaultsTable SET FontBoldDisplay = 0",
        nu + "FontSizeDisplay Long NOT NULL",
        nu + "FontSizeDisplay Long",
        "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.FontSizeDisplay = 8",
        "UPDATE NewUserDefaultsTable SET FontSizeDisplay = 8",
        as + "LastSelectedNode Text(20)",
        as + "LastSelectedNode Text(20) COLLATE NOCASE",
        "UPDATE AdminSettingsTable SET AdminSettingsTable.LastSelectedNode = 'Users'",
        "UPDATE AdminSettingsTable SET LastSelectedNode = 'Users'",
        as + "AdminFontBoldDisplay Long NOT NULL",
        as + "AdminFontBoldDisplay Long",
        "UPDATE AdminSettingsTable SET AdminSettingsTable.AdminFontBoldDisplay = 0",
        "UPDATE AdminSettingsTable SET AdminFontBoldDisplay = 0",
        as + "AdminFontSizeDisplay Long NOT NULL",
        as + "AdminFontSizeDisplay Long",
        "UPDATE AdminSettingsTable SET AdminSettingsTable.AdminFontSizeDisplay = 8",
        "UPDATE AdminSettingsTable SET AdminFontSizeDisplay = 8",
        "ALTER TABLE EmployeeStatusTracking Drop COLUMN TrackeeLastUpdate",
        "ALTER TABLE EmployeeStatusTracking Drop COLUMN TrackeeLastUpdate",
        "ALTER TABLE EmployeeStatusTracking ADD COLUMN TrackeeLastUpdated DOUBLE",
        "ALTER TABLE EmployeeStatusTracking ADD COLUMN TrackeeLastUpdated DOUBLE",
        "ALTER TABLE MessagesTable Drop COLUMN TrackeeLastUpdate",
        "ALTER TABLE MessagesTable Drop COLUMN TrackeeLastUpdate",
        "ALTER TABLE MessagesTable ADD COLUMN MessageOwner Text(250)",
        "ALTER TABLE MessagesTable ADD COLUMN MessageOwner Text(250) COLLATE NOCASE",
        tl + "LogDateTime Text(250)",
        tl + "LogDateTime Text(250) COLLATE NOCASE",
        tl + "ComputerName Text(250)",
        tl + "ComputerName Text(250) COLLATE NOCASE",
        tl + "IPAddress Text(250)",
        tl + "IPAddress Text(250) COLLATE NOCASE",
        "ALTER TABLE StatusCounterTable ADD COLUMN ExtraColumnsCounter LONG NOT NULL",
        "ALTER TABLE StatusCounterTable ADD COLUMN ExtraColumnsCounter LONG",
    };
    QList<QPair<QString, QString>> pairs;
    for (qsizetype i = 0; i + 1 < rows.size(); i += 2)
        pairs.append({rows[i], rows[i + 1]});
    return pairs;
}

} // namespace

void TestJetSql::schemaUpgrade_data()
{
    QTest::addColumn<QString>("jet");
    QTest::addColumn<QString>("sqlite");
    for (const auto& [jet, sqlite] : upgradeStatements())
        QTest::addRow("%s", qPrintable(jet)) << jet << sqlite;
}

void TestJetSql::schemaUpgrade()
{
    QFETCH(QString, jet);
    QFETCH(QString, sqlite);
    QCOMPARE(dao::translateJet(jet).sql, sqlite);
}

// The same statements in order on a file of the older release whose tables
// have rows: each must run, and the new columns take the values written.
void TestJetSql::schemaUpgradeOnFilledTables()
{
    MemoryDb db;
    QVERIFY(db.exec("CREATE TABLE GlobalSettingsTable (DatabaseVersion TEXT);"
                    "INSERT INTO GlobalSettingsTable VALUES ('2005');"
                    "CREATE TABLE EmployeeSettingsTable (Name TEXT);"
                    "INSERT INTO EmployeeSettingsTable VALUES ('Ann');"
                    "CREATE TABLE NewUserDefaultsTable (AutoLogIn BIT);"
                    "INSERT INTO NewUserDefaultsTable VALUES (1);"
                    "CREATE TABLE AdminSettingsTable (X LONG);"
                    "INSERT INTO AdminSettingsTable VALUES (1);"
                    "CREATE TABLE EmployeeStatusTracking (Tracker TEXT, Trackee TEXT, TrackeeLastUpdate DOUBLE);"
                    "INSERT INTO EmployeeStatusTracking VALUES ('Ann', 'Bob', 1.5);"
                    "CREATE TABLE TransactionLogTable (Name TEXT);"
                    "INSERT INTO TransactionLogTable VALUES ('Ann');"
                    "ALTER TABLE MessagesTable ADD COLUMN TrackeeLastUpdate DOUBLE;"
                    "INSERT INTO MessagesTable (SentToName) VALUES ('Ann');"));
    for (const auto& pair : upgradeStatements()) {
        const QString sql = dao::translateJet(pair.first).sql;
        QVERIFY2(db.exec(sql.toUtf8().constData()), qPrintable(sql));
    }
    QCOMPARE(db.scalar("SELECT AllowMessaging FROM GlobalSettingsTable"), QVariant(1LL));
    QCOMPARE(db.scalar("SELECT UpdateStatusOnLock FROM GlobalSettingsTable"), QVariant(0LL));
    QCOMPARE(db.scalar("SELECT typeof(DatabaseReleaseVersion) FROM GlobalSettingsTable"), QVariant("text"));
    QCOMPARE(db.scalar("SELECT SplitterPositionVertical FROM EmployeeSettingsTable"), QVariant(1800LL));
    QCOMPARE(db.scalar("SELECT FontSizeDisplay FROM NewUserDefaultsTable"), QVariant(8LL));
    QCOMPARE(db.scalar("SELECT count(*) FROM AdminSettingsTable WHERE LastSelectedNode = 'USERS'"), QVariant(1LL));
    QCOMPARE(db.scalar("SELECT TrackeeLastUpdated FROM EmployeeStatusTracking"), QVariant());
    QCOMPARE(db.scalar("SELECT type FROM pragma_table_info('GlobalSettingsTable') "
                       "WHERE name = 'DatabaseReleaseVersion'"),
             QVariant("TEXT(10)"));
    QCOMPARE(db.scalar("SELECT count(*) FROM pragma_table_info('MessagesTable') WHERE name = 'TrackeeLastUpdate'"),
             QVariant(0LL));
}

void TestJetSql::columnTypes_data()
{
    QTest::addColumn<QString>("jet");
    QTest::addColumn<QString>("sqlite");
    QTest::newRow("create with every kind")
        << "CREATE TABLE T (ID COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Name TEXT(50) NOT NULL, Note MEMO, "
           "Flag YESNO, Ok LOGICAL, N LONG, I INTEGER, D DOUBLE, C CHAR(5), V VARCHAR, L LONGTEXT, B Bit)"
        << "CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50) COLLATE NOCASE NOT NULL, "
           "Note LONGTEXT COLLATE NOCASE, Flag BIT, Ok BIT, N LONG, I INTEGER, D DOUBLE, C CHAR(5) COLLATE NOCASE, "
           "V VARCHAR COLLATE NOCASE, L LONGTEXT COLLATE NOCASE, B Bit)";
    QTest::newRow("autoincrement primary key")
        << "CREATE TABLE T (ID AUTOINCREMENT PRIMARY KEY, G Text(50), CONSTRAINT PrimaryKey UNIQUE (G))"
        << "CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, G Text(50) COLLATE NOCASE, "
           "CONSTRAINT PrimaryKey UNIQUE (G))";
    QTest::newRow("counter with seed") << "CREATE TABLE T (ID COUNTER(1, 1), A BIT)"
                                       << "CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, A BIT)";
    QTest::newRow("type touching not null") << "CREATE TABLE T (A TEXT(5)NOT NULL)"
                                            << "CREATE TABLE T (A TEXT(5) COLLATE NOCASE NOT NULL)";
    QTest::newRow("add without COLUMN") << "ALTER TABLE T ADD Remark Memo NOT NULL"
                                        << "ALTER TABLE T ADD Remark LONGTEXT COLLATE NOCASE";
    QTest::newRow("add yes/no") << "ALTER TABLE T ADD COLUMN F YesNo"
                                << "ALTER TABLE T ADD COLUMN F BIT";
    QTest::newRow("drop without COLUMN") << "ALTER TABLE T DROP Note"
                                         << "ALTER TABLE T DROP COLUMN Note";
}

// Each translation must also run, and the text columns compare without case.
void TestJetSql::columnTypes()
{
    QFETCH(QString, jet);
    QFETCH(QString, sqlite);
    const QString sql = dao::translateJet(jet).sql;
    QCOMPARE(sql, sqlite);
    MemoryDb db;
    QVERIFY(db.exec("CREATE TABLE T (Note TEXT, X TEXT); INSERT INTO T VALUES ('Abc', 'x')"));
    if (!sql.startsWith(QLatin1String("CREATE")))
        QVERIFY2(db.exec(sql.toUtf8().constData()), qPrintable(sql));
    else
        QVERIFY2(db.exec(("DROP TABLE T; " + sql).toUtf8().constData()), qPrintable(sql));
}

void TestJetSql::kindAndSingleTable_data()
{
    QTest::addColumn<QString>("jet");
    QTest::addColumn<StatementKind>("kind");
    QTest::addColumn<QString>("table");
    const auto row = [](const char* jet, StatementKind kind, const char* table) {
        QTest::newRow(jet) << QString::fromUtf8(jet) << kind << QString::fromUtf8(table);
    };
    const auto S = StatementKind::Select;
    row(R"(SELECT Status FROM EmployeeTable WHERE Name = "x")", S, "EmployeeTable");
    row("SELECT * FROM StatusCounterTable", S, "StatusCounterTable");
    row("Select * from StatusCounterTable;", S, "StatusCounterTable");
    row("SELECT * FROM EmployeeTable AS E WHERE E.Name = 'Ann' ORDER BY E.Name", S, "EmployeeTable");
    row("SELECT Name FROM EmployeeTable E ORDER BY Name", S, "EmployeeTable");
    row("SELECT * FROM [Employee Table]", S, "Employee Table");
    row("SELECT * FROM EmployeeTable WHERE Name IN (SELECT SentToName FROM MessagesTable)", S, "EmployeeTable");
    row("SELECT Status AS First FROM EmployeeTable", S, "EmployeeTable");
    row("SELECT COUNT(*) FROM EmployeeTable", S, "");
    row("SELECT Max(Counter) FROM StatusCounterTable", S, "");
    row("SELECT DISTINCT Status FROM EmployeeTable", S, "");
    row("SELECT DISTINCTROW Status FROM EmployeeTable", S, "");
    row("SELECT Status, Count(Name) FROM EmployeeTable GROUP BY Status", S, "");
    row("SELECT EmployeeTable.Name FROM EmployeeTable, MessagesTable WHERE Name = SentToName", S, "");
    row("SELECT E.Name FROM EmployeeTable E INNER JOIN MessagesTable M ON E.Name = M.SentToName", S, "");
    row("SELECT * FROM (SELECT * FROM EmployeeTable)", S, "");
    row("SELECT Name FROM EmployeeTable UNION SELECT SentToName FROM MessagesTable", S, "");
    row("SELECT 1", S, "");
    row("INSERT INTO T (A) VALUES (1)", StatementKind::Insert, "");
    row("Update EmployeeTable SET StatusCode = 11 Where Name = 'x'", StatementKind::Update, "");
    row("Delete from MessagesTable WHERE MessageID = 1;  ", StatementKind::Delete, "");
    row("CREATE TABLE T (A Long)", StatementKind::CreateTable, "");
    row("CREATE UNIQUE INDEX PrimaryKey ON GroupTable (GroupName)", StatementKind::CreateIndex, "");
    row("CREATE INDEX ix ON T (A)", StatementKind::CreateIndex, "");
    row("ALTER TABLE T ADD COLUMN A Long", StatementKind::AlterTable, "");
    row("DROP TABLE T", StatementKind::Drop, "");
    row("PARAMETERS x Long", StatementKind::Other, "");
}

// A single-table set carries the row id first; SQLite must take the text.
void TestJetSql::kindAndSingleTable()
{
    QFETCH(QString, jet);
    QFETCH(StatementKind, kind);
    QFETCH(QString, table);
    const dao::Translation t = dao::translateJet(jet);
    QCOMPARE(t.kind, kind);
    QCOMPARE(t.singleTable, table);
    if (kind != StatementKind::Select)
        return;
    MemoryDb db;
    const QString first = db.firstColumnName(t.sql);
    QVERIFY2(!first.isEmpty(), qPrintable(t.sql));
    QCOMPARE(first == QLatin1String("__rowid"), !table.isEmpty());
}

void TestJetSql::like_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char* name, const char* text, const char* pattern, bool matches) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(pattern) << matches;
    };
    row("same", "Ann", "Ann", true);
    row("other case", "ANN", "ann", true);
    row("longer text", "Anne", "Ann", false);
    row("shorter text", "An", "Ann", false);
    row("question mark", "Ann", "A?n", true);
    row("question mark needs one", "An", "A?n", false);
    row("trailing star", "Ann", "Ann*", true);
    row("star alone", "Ann", "*", true);
    row("star on empty", "", "*", true);
    row("empty on empty", "", "", true);
    row("empty pattern", "a", "", false);
    row("question mark on empty", "", "?", false);
    row("double star", "Ann", "A**n", true);
    row("star then letter", "Ann", "*n", true);
    row("star then miss", "Ann", "*x", false);
    row("star backtracks", "abcabd", "*abd", true);
    row("two stars", "Sales team North", "S*team*th", true);
    row("hash digit", "R2D2", "R#D#", true);
    row("hash not letter", "RXD2", "R#D#", false);
    row("hash needs one", "1", "##", false);
    row("set", "b", "[abc]", true);
    row("set miss", "d", "[abc]", false);
    row("set other case", "B", "[abc]", true);
    row("range", "m", "[a-z]", true);
    row("range other case", "M", "[a-z]", true);
    row("upper range lower text", "m", "[A-Z]", true);
    row("range miss", "5", "[a-z]", false);
    row("negated set", "d", "[!abc]", true);
    row("negated set miss", "a", "[!abc]", false);
    row("negated set other case", "A", "[!abc]", false);
    row("dash last in set", "-", "[a-]", true);
    row("dash first in set", "-", "[-a]", true);
    row("bracketed star", "*", "[*]", true);
    row("bracketed star is not a star", "x", "[*]", false);
    row("bracketed question mark", "?", "[?]", true);
    row("bracketed question mark is literal", "a", "[?]", false);
    row("bracketed hash", "#", "[#]", true);
    row("bracketed hash is literal", "1", "[#]", false);
    row("bracketed bracket", "[", "[[]", true);
    row("closing bracket alone", "a]", "a]", true);
    row("empty set", "ab", "a[]b", true);
    row("negated empty set", "x", "[!]", true);
    row("malformed bracket", "a[", "a[", false);
    row("malformed bracket on its own", "[", "[", false);
    row("malformed after star", "anything", "*[", false);
    row("unclosed set", "a", "[a", false);
    row("accent other case", "Zoë", "ZOË", true);
    row("greek", "ΣΊΣΥΦΟΣ", "σίσυφος", true);
    row("final sigma", "ς", "Σ", true);
    row("cyrillic range", "Иван", "[а-я]ван", true);
    row("sharp s is one character", "ß", "?", true);
    row("outside the BMP other case", "𐐀", "𐐨", true);
    row("outside the BMP is one character", "a😀b", "a?b", true);
    row("outside the BMP not two", "a😀b", "a??b", false);
    row("outside the BMP in a set", "😀", "[😀x]", true);
    row("outside the BMP range", "𐐨", "[𐐀-𐐏]", true);
}

void TestJetSql::like()
{
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QFETCH(bool, matches);
    QCOMPARE(dao::jetLike(text, pattern), matches);
    QCOMPARE(dao::jetLike(text, pattern), matches); // the second call uses the kept pattern
}

// A naive matcher takes 2^n steps here; this one must answer at once.
void TestJetSql::likeNeverBacktracksExponentially()
{
    const QString text = QString(5000, u'a') + u'b';
    QString pattern;
    for (int i = 0; i < 40; ++i)
        pattern += QLatin1String("*a");
    pattern += QLatin1String("*c");
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!dao::jetLike(text, pattern));
    QVERIFY(dao::jetLike(text, pattern.chopped(1) + u'b'));
    QVERIFY2(timer.elapsed() < 2000, "matching took too long");
}

void TestJetSql::quoteRoundTrip_data()
{
    QTest::addColumn<QString>("value");
    const char* values[] = {
        "",
        "plain",
        "a\"b",
        "\"\"",
        "'",
        "it's",
        ";",
        "a; DROP TABLE EmployeeTable",
        "--",
        "a -- b",
        "/* c */",
        "line1\nline2\r\n",
        "back\\slash\\",
        "tab\there",
        "&",
        "True",
        "$a(')",
        "x\" OR \"1\"=\"1",
        "'); DROP TABLE EmployeeTable; --",
        "\"; DELETE FROM EmployeeTable; --",
        "*?#[]!-",
        "[*]",
        "Sales*",
        "Zoë 😀",
        "[",
        "]",
    };
    for (const char* v : values) {
        const QString value = QString::fromUtf8(v);
        QString name = value;
        name.replace(u'\n', QLatin1String("\\n"))
            .replace(u'\r', QLatin1String("\\r"))
            .replace(u'\t', QLatin1String("\\t"));
        QTest::addRow("%s", qPrintable(name)) << value;
    }
}

// Each value, quoted into a statement and run on SQLite, comes back exactly,
// the statement stays one statement, and as a LIKE pattern it matches itself.
void TestJetSql::quoteRoundTrip()
{
    QFETCH(QString, value);
    MemoryDb db;
    QCOMPARE(runJet(db, "SELECT " + dao::quote(value)), QVariant(value));
    QCOMPARE(runJet(db, "SELECT count(*) FROM EmployeeTable WHERE Name = " + dao::quote(value) + ";"), QVariant(0LL));
    QCOMPARE(runJet(db, "SELECT " + dao::quote(value) + " LIKE " + dao::quoteLike(value)), QVariant(1LL));
    QCOMPARE(runJet(db, "SELECT " + dao::quote(value.toUpper()) + " LIKE " + dao::quoteLike(value.toLower())),
             QVariant(1LL));
    QCOMPARE(runJet(db, "SELECT count(*) FROM EmployeeTable WHERE Name LIKE " + dao::quoteLike(value)),
             QVariant(value.compare(QLatin1String("Ann"), Qt::CaseInsensitive) == 0 ? 1LL : 0LL));
    QCOMPARE(runJet(db, "SELECT count(*) FROM EmployeeTable"), QVariant(1LL)); // nothing was dropped
}

void TestJetSql::sqlNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("date number") << 45678.5123 << "45678.5123";
    QTest::newRow("date and time") << 45678.999988425923 << "45678.99998842592";
    QTest::newRow("whole") << 1800.0 << "1800";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("negative") << -2.5 << "-2.5";
    QTest::newRow("tenth") << 0.1 << "0.1";
    QTest::newRow("huge") << 1e20 << "1e+20";
}

void TestJetSql::sqlNumber()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); // a decimal comma must not leak in
    QCOMPARE(dao::sqlNumber(value), text);
    QLocale::setDefault(QLocale::c());
}

// Any double goes through SQLite's own reading and comes back the same.
void TestJetSql::sqlNumberReadsBack()
{
    MemoryDb db;
    QRandomGenerator random(20050722);
    for (int i = 0; i < 200; ++i) {
        const double value = (random.generateDouble() - 0.2) * std::pow(10.0, random.bounded(12));
        const QString sql = "SELECT " + dao::sqlNumber(value) + " = " + QString::number(value, 'g', 17);
        QCOMPARE(db.scalar(sql), QVariant(1LL));
        QVERIFY(!dao::sqlNumber(value).contains(u','));
    }
}

// Reported, not asserted: the cost of translating a typical statement.
void TestJetSql::translateShortStatement()
{
    const QString jet = QStringLiteral("SELECT * FROM EmployeeTable WHERE Name LIKE \"Ann Smith\"");
    QBENCHMARK
    {
        dao::translateJet(jet);
    }
}

QTEST_GUILESS_MAIN(TestJetSql)
#include "tst_jetsql.moc"
