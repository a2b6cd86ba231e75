#pragma once
// Helpers shared by the engine's tests: files made with SQLite directly (so a
// test never depends on the engine to set itself up), the lock-holder helper
// process, and the Jet number a call raised.

#include "dao/dao.h"
#include "ondisk.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <functional>

namespace daotest {

// The Jet number fn raised, or 0 when it raised nothing.
inline int jetNumber(const std::function<void()>& fn)
{
    try {
        fn();
    } catch (const dao::JetError& e) {
        return e.number();
    }
    return 0;
}

// A small table of people for most tests, made with plain SQLite.
inline void makePeople(const QString& path)
{
    QVERIFY(sqliteExec(
        path, QStringLiteral(
                  "CREATE TABLE People (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50) NOT NULL COLLATE NOCASE "
                  "UNIQUE, Flag BIT, Num LONG, Amount DOUBLE, Note TEXT(250));"
                  "INSERT INTO People (Name, Flag, Num, Amount, Note) VALUES ('Ann', 1, 10, 1.5, 'first');"
                  "INSERT INTO People (Name, Flag, Num, Amount, Note) VALUES ('Bob', 0, 20, 2.0, NULL);"
                  "INSERT INTO People (Name, Flag, Num, Amount, Note) VALUES ('Cy', NULL, NULL, NULL, '');")));
}

// The helper process that holds locks for the tests (dao_helper beside the test).
class Helper
{
public:
    // Starts the helper and waits for its first line ("locked", "ready"...).
    QString start(const QStringList& arguments)
    {
        process.start(QCoreApplication::applicationDirPath() + "/dao_helper", arguments);
        if (!process.waitForStarted(5000) || !process.waitForReadyRead(10000))
            return "<no answer>";
        return QString::fromUtf8(process.readLine()).trimmed();
    }
    // Closes its stdin, which tells it to let go and end; returns its last output.
    QString finish()
    {
        process.closeWriteChannel();
        process.waitForFinished(30000);
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    ~Helper()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(5000);
        }
    }
    QProcess process;
};

} // namespace daotest
