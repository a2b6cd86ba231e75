// What each veskor-admin command does. Every change raises the counter it belongs
// to, so the clients notice it at their next refresh.
#include "admin/commands.h"

#include "dao/dao.h"
#include "database/site.h"

namespace admin {

namespace {

using database::openSite;

void runInit(Context& c)
{
    database::SiteOptions options;
    if (c.parser.isSet(QStringLiteral("older-release")))
        options.release = database::SchemaRelease::Older;
    database::createSite(c.args[0], options);
    c.out << "Created the site " << database::siteFolderText(c.args[0]) << "\n";
}

void runDemo(Context& c)
{
    database::createSite(c.args[0]);
    fillDemo(*openSite(c.args[0]));
    c.out << "Created the demo site " << database::siteFolderText(c.args[0]) << "\n";
}

void runUserAdd(Context& c)
{
    auto db = openSite(c.siteDir);
    database::addPerson(*db,
                        {c.args[0], c.parser.value(QStringLiteral("uid")), c.parser.value(QStringLiteral("phone"))});
    database::raiseCounter(*db, QStringLiteral("Counter"));
    c.out << "Added the user \"" << c.args[0].trimmed() << "\".\n";
}

void runGroupAdd(Context& c)
{
    auto db = openSite(c.siteDir);
    database::addGroup(*db, c.args[0]);
    database::raiseCounter(*db, QStringLiteral("GroupCounter"));
    c.out << "Added the group \"" << c.args[0].trimmed() << "\".\n";
}

void runGroupMember(Context& c)
{
    auto db = openSite(c.siteDir);
    const bool manager = c.parser.isSet(QStringLiteral("manager"));
    database::addMember(*db, c.args[0], c.args[1], manager);
    database::raiseCounter(*db, QStringLiteral("GroupCounter"));
    c.out << "Added \"" << c.args[1].trimmed() << "\" to \"" << c.args[0].trimmed() << "\""
          << (manager ? " as a manager" : "") << ".\n";
}

void runStatusTypeAdd(Context& c)
{
    bool ok = false;
    const long long code = c.args[1].toLongLong(&ok);
    if (!ok || code < 0)
        throw UsageError(
            QStringLiteral("the status code must be a whole number of 0 or more, not \"%1\"").arg(c.args[1]));
    // These codes already mean something to every client.
    if (code == 4 || code == 10 || code == 11 || code == 9999)
        throw database::SiteError(QStringLiteral("Code %1 is kept for the clients' own use (4 a status typed by hand, "
                                                 "10 screen saver, 11 locked workstation, 9999 not found).")
                                      .arg(code));
    auto db = openSite(c.siteDir);
    database::addStatusType(
        *db, {c.args[0], code, c.parser.value(QStringLiteral("button")), c.parser.value(QStringLiteral("tooltip")),
              c.parser.isSet(QStringLiteral("protected")), c.parser.isSet(QStringLiteral("toolbar"))});
    database::raiseCounter(*db, QStringLiteral("StatusTypeCounter"));
    c.out << "Added the status type \"" << c.args[0].trimmed() << "\" with code " << code << ".\n";
}

void runColumnAdd(Context& c)
{
    auto db = openSite(c.siteDir);
    database::addExtraColumn(*db, c.args[0], c.parser.isSet(QStringLiteral("read-only")));
    database::raiseCounter(*db, QStringLiteral("ExtraColumnsCounter"));
    c.out << "Added the extra column " << c.args[0] << " (shown as \"" << database::extraColumnCaption(c.args[0])
          << "\").\n";
}

void runSettingsGet(Context& c)
{
    c.out << database::getSetting(*openSite(c.siteDir), c.args[0]) << "\n";
}

void runSettingsSet(Context& c)
{
    auto db = openSite(c.siteDir);
    database::setSetting(*db, c.args[0], c.args[1]);
    QString field = c.args[0].trimmed();
    if (field.startsWith(QLatin1String("GlobalSettingsTable."), Qt::CaseInsensitive))
        field = field.mid(field.indexOf(QLatin1Char('.')) + 1);
    if (field.compare(QLatin1String("SystemSecurityLevel"), Qt::CaseInsensitive) == 0)
        database::raiseCounter(*db, QStringLiteral("SecurityCounter"));
    c.out << c.args[0] << " = " << database::getSetting(*db, c.args[0]) << "\n";
}

void runShutdown(Context& c)
{
    const QString word = c.args[0].toLower();
    if (word != QLatin1String("on") && word != QLatin1String("off"))
        throw UsageError(QStringLiteral("usage: veskor-admin shutdown on|off"));
    database::setForcedShutDown(c.siteDir, word == QLatin1String("on"));
    c.out << "Forced shutdown is " << word << ".\n";
}

void runBoard(Context& c)
{
    const bool csv = c.parser.isSet(QStringLiteral("csv"));
    const bool json = c.parser.isSet(QStringLiteral("json"));
    if (csv && json)
        throw UsageError(QStringLiteral("board takes --csv or --json, not both"));
    const QString group = c.args.isEmpty() ? QStringLiteral("Everyone") : c.args[0];
    const database::Board board = database::readBoard(*openSite(c.siteDir), group);
    c.out << (csv ? boardAsCsv(board) : json ? boardAsJson(board, group) : boardAsText(board));
}

} // namespace

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {{"init"}, "DIR [--older-release]", 1, 1, {"older-release"}, false, runInit},
        {{"demo"}, "DIR", 1, 1, {}, false, runDemo},
        {{"user", "add"}, "NAME [--uid ID] [--phone P]", 1, 1, {"uid", "phone"}, true, runUserAdd},
        {{"group", "add"}, "NAME", 1, 1, {}, true, runGroupAdd},
        {{"group", "member"}, "GROUP NAME [--manager]", 2, 2, {"manager"}, true, runGroupMember},
        {{"status-type", "add"},
         "WORD CODE [--button TEXT] [--tooltip TEXT] [--protected] [--toolbar]",
         2,
         2,
         {"button", "tooltip", "protected", "toolbar"},
         true,
         runStatusTypeAdd},
        {{"column", "add"}, "New_X [--read-only]", 1, 1, {"read-only"}, true, runColumnAdd},
        {{"settings", "get"}, "FIELD (GlobalSettingsTable, or Table.Field)", 1, 1, {}, true, runSettingsGet},
        {{"settings", "set"}, "FIELD VALUE", 2, 2, {}, true, runSettingsSet},
        {{"shutdown"}, "on|off", 1, 1, {}, true, runShutdown},
        {{"board"}, "[GROUP] [--csv|--json]", 0, 1, {"csv", "json"}, true, runBoard},
    };
    return all;
}

} // namespace admin
