#pragma once
// The commands of veskor-admin and what they share.

#include <QCommandLineParser>
#include <QStringList>
#include <QTextStream>
#include <memory>
#include <stdexcept>
#include <vector>

namespace dao {
class Database;
}
namespace database {
struct Board;
}

namespace admin {

// A wrong command line (exit status 2), as against a command that failed.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& message) : std::runtime_error(message.toStdString())
    {
    }
    QString message() const
    {
        return QString::fromUtf8(what());
    }
};

struct Context
{
    const QCommandLineParser& parser;
    QStringList args; // the arguments after the command's words
    QTextStream& out;
    QString siteDir; // set for the commands that work on an existing site
};

struct Command
{
    QStringList words; // e.g. {"group", "member"}
    QString synopsis;  // the arguments and options, for the help and usage lines
    qsizetype minArgs;
    qsizetype maxArgs;
    QStringList options; // the options it takes, besides --site
    bool usesSite;       // works on an existing site found by --site
    void (*run)(Context&);
};

const std::vector<Command>& commands();

// The board printed three ways: a text table (extra columns headed by their
// captions), comma-separated values and JSON (both with the field names).
QString boardAsText(const database::Board& board);
QString boardAsCsv(const database::Board& board);
QString boardAsJson(const database::Board& board, const QString& group);

// The demo office: people, groups, statuses, an extra column, tracking rows and messages.
void fillDemo(dao::Database& db);

} // namespace admin
