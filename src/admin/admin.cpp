// The command line of veskor-admin: parsing, finding the site, and running one
// command. The commands themselves are in commands.cpp.
#include "admin/admin.h"

#include "admin/commands.h"
#include "dao/dao.h"
#include "database/site.h"
#include "platform/profile.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace admin {

namespace {

const QList<QCommandLineOption>& options()
{
    static const QList<QCommandLineOption> all = {
        {"site", "The site folder (default: the folder named by ./veskor.ini, else the current folder).", "DIR"},
        {"older-release", "init: make the file as an older release had it, for trying the client's upgrade."},
        {"uid", "user add: the person's login ID.", "ID"},
        {"phone", "user add: the person's telephone.", "P"},
        {"manager", "group member: the person manages the group."},
        {"button", "status-type add: the toolbar button's caption.", "TEXT"},
        {"tooltip", "status-type add: the toolbar button's tool tip.", "TEXT"},
        {"protected", "status-type add: the automatic Out at the end of a run leaves this status alone."},
        {"toolbar", "status-type add: the status gets a toolbar button."},
        {"read-only", "column add: people cannot change the column on their status screens."},
        {"csv", "board: print comma-separated values."},
        {"json", "board: print JSON."},
        {QStringList{"h", "help"}, "Show this help."},
    };
    return all;
}

QString description()
{
    QString text = QStringLiteral("Creates and maintains a VESK-OR Pro site: the shared file veskor.mdb and the "
                                  "settings files beside it.\n\nCommands:\n");
    for (const Command& command : commands())
        text += QStringLiteral("  %1 %2\n").arg(command.words.join(QLatin1Char(' ')), command.synopsis);
    text += QStringLiteral("\nExit status: 0 on success, 1 when a command fails, 2 for a wrong command line.");
    return text;
}

// The command whose words open the positional arguments (the longest match wins).
const Command* findCommand(const QStringList& positional)
{
    const Command* best = nullptr;
    for (const Command& command : commands()) {
        if (positional.mid(0, command.words.size()) == command.words &&
            (!best || command.words.size() > best->words.size()))
            best = &command;
    }
    return best;
}

void checkUsage(const Command& command, const QCommandLineParser& parser, const QStringList& args)
{
    const QString name = command.words.join(QLatin1Char(' '));
    if (args.size() < command.minArgs || args.size() > command.maxArgs)
        throw UsageError(QStringLiteral("usage: veskor-admin %1 %2").arg(name, command.synopsis));
    for (const QString& option : parser.optionNames()) {
        const bool allowed = command.options.contains(option) || (option == QLatin1String("site") && command.usesSite);
        if (!allowed)
            throw UsageError(QStringLiteral("--%1 does not apply to %2").arg(option, name));
    }
}

// --site, else the folder named by ./veskor.ini, else the current folder.
QString findSite(const QCommandLineParser& parser)
{
    QString dir = parser.value(QStringLiteral("site"));
    if (dir.isEmpty())
        dir = platform::GetPrivateProfileString(QStringLiteral("DataPath"), QStringLiteral("DataPath"), QString(), 1024,
                                                database::kSettingsFileName);
    if (dir.isEmpty())
        dir = QDir::currentPath();
    if (!QFileInfo::exists(QDir(dir).filePath(database::kDatabaseFileName)))
        throw database::SiteError(QStringLiteral("There is no site database %1 (name the site with --site DIR, or "
                                                 "make one with init DIR).")
                                      .arg(QDir(dir).filePath(database::kDatabaseFileName)));
    return dir;
}

} // namespace

int runAdmin(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addOptions(options());
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("One of the commands above."),
                                 QStringLiteral("command [arguments...]"));
    const QString program = QStringLiteral("veskor-admin");
    if (!parser.parse(QStringList{program} + args)) {
        err << program << ": " << parser.errorText() << "\n";
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        // The first line names the program as it was started; name it plainly.
        const QString help = parser.helpText();
        out << "Usage: " << program << " [options] command [arguments...]" << help.mid(help.indexOf(QLatin1Char('\n')));
        return 0;
    }
    const QStringList positional = parser.positionalArguments();
    const Command* command = findCommand(positional);
    try {
        if (!command)
            throw UsageError(
                positional.isEmpty()
                    ? QStringLiteral("no command given; see --help")
                    : QStringLiteral("unknown command \"%1\"; see --help").arg(positional.join(QLatin1Char(' '))));
        Context context{parser, positional.mid(command->words.size()), out, QString()};
        checkUsage(*command, parser, context.args);
        if (command->usesSite)
            context.siteDir = findSite(parser);
        command->run(context);
        return 0;
    } catch (const UsageError& e) {
        err << program << ": " << e.message() << "\n";
        return 2;
    } catch (const database::SiteError& e) {
        err << program << ": " << e.message() << "\n";
    } catch (const VbError& e) {
        err << program << ": database error " << e.number() << ": " << e.description() << "\n";
    }
    return 1;
}

} // namespace admin
