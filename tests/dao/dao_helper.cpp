// Holds locks on a database for the engine's tests, from a process of its own.
//   dao_helper hold PATH               SQLite's own exclusive lock (BEGIN EXCLUSIVE)
//   dao_helper exclusive PATH          the engine's exclusive (maintenance) open
// "hold" and "exclusive" print "locked" and keep the lock until stdin closes.
#include "dao/dao.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>
#include <iostream>
#include <sqlite3.h>
#include <string>

namespace {

void waitForStdinToClose()
{
    std::string line;
    while (std::getline(std::cin, line)) {
    }
}

int hold(const QString& path)
{
    sqlite3* db = nullptr;
    if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK ||
        sqlite3_exec(db, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) != SQLITE_OK) {
        std::printf("error %s\n", sqlite3_errmsg(db));
        return 1;
    }
    std::printf("locked\n");
    std::fflush(stdout);
    waitForStdinToClose();
    sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return 0;
}

int exclusive(const QString& path)
{
    try {
        auto db = dao::DBEngine::OpenDatabase(path, true);
        std::printf("locked\n");
        std::fflush(stdout);
        waitForStdinToClose();
        db->Close();
    } catch (const dao::JetError& e) {
        std::printf("error %d\n", e.number());
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args[1] == QLatin1String("hold"))
        return hold(args[2]);
    if (args.size() >= 3 && args[1] == QLatin1String("exclusive"))
        return exclusive(args[2]);
    std::fprintf(stderr, "usage: dao_helper hold|exclusive PATH\n");
    return 2;
}
