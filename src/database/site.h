#pragma once
// A site: a folder holding the shared file "veskor.mdb" and the settings file
// "veskor.ini" that names it. Creating one, and the small changes the site
// administration tool and the tests make to it. Each function does its work in
// plain statements on an open database; raising the change counter that a change
// belongs to is the caller's business (raiseCounter), so a batch raises it once.
//
// Failures: dao::JetError from the engine (a duplicate name is 3022), SiteError
// for what the engine cannot know (an unknown group, a malformed column name).

#include "database/schema.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace dao {
class Database;
}

namespace database {

class SiteError : public std::runtime_error
{
public:
    explicit SiteError(const QString& message);
    QString message() const;
};

inline const QString kDatabaseFileName = QStringLiteral("veskor.mdb");
inline const QString kSettingsFileName = QStringLiteral("veskor.ini");
inline const QString kShutDownFileName = QStringLiteral("forceshutdown.ini");

struct SiteOptions
{
    SchemaRelease release = SchemaRelease::Present;
};

// Makes dir (if needed), dir/veskor.mdb with the schema and its standing rows, and
// dir/veskor.ini pointing at dir. Refuses (SiteError) when the database exists.
void createSite(const QString& dir, const SiteOptions& options = {});
// Writes dir/veskor.ini: "[DataPath]" with "DataPath=" and the folder.
void writeSettingsFile(const QString& dir);
// Opens dir/veskor.mdb, shared and read-write.
std::shared_ptr<dao::Database> openSite(const QString& dir);
// The folder as the settings file writes it: absolute, with a closing separator.
QString siteFolderText(const QString& dir);

struct NewPerson
{
    QString name = {};
    QString uid = {};
    QString phone = {};
};

// The EmployeeTable row (with the New_ columns' defaults) and the
// EmployeeSettingsTable row from NewUserDefaultsTable.
void addPerson(dao::Database& db, const NewPerson& person);
void addGroup(dao::Database& db, const QString& group);
void addMember(dao::Database& db, const QString& group, const QString& name, bool manager = false);

struct StatusTypeRow
{
    QString status = {};
    long long code = 0;
    QString buttonText = {};
    QString toolTip = {};
    bool isProtected = false;
    bool onToolBar = false;
};
void addStatusType(dao::Database& db, const StatusTypeRow& type);

// An extra column "New_X": a text column in EmployeeTable and NewUserDefaultsTable
// with its yes/no companion "New_XReadOnly", and the person's layout of it,
// "New_XColumnOrder" and "New_XColumnWidth", in EmployeeSettingsTable.
void addExtraColumn(dao::Database& db, const QString& column, bool readOnly = false);
// What a person sees of an extra column: its name from the fifth character on.
QString extraColumnCaption(const QString& column);

// The one-row settings tables: "Field" means GlobalSettingsTable.Field; "Table.Field"
// names NewUserDefaultsTable or AdminSettingsTable. Values are given as text and
// stored by the field's type (True/False/Yes/No/1/0 for a yes/no field).
QString getSetting(dao::Database& db, const QString& field);
void setSetting(dao::Database& db, const QString& field, const QString& value);

// Adds one to a counter of StatusCounterTable (a Null counts as 0); returns the new value.
long long raiseCounter(dao::Database& db, const QString& counter);
long long readCounter(dao::Database& db, const QString& counter);

// Writes dir/forceshutdown.ini: section and key "ForceShutDown", "TRUE" or "FALSE".
void setForcedShutDown(const QString& dir, bool on);

struct PersonStatus
{
    QString status = {};
    QString dueBack = {};
    QString comments = {};
    QString lastModified = {};          // left as it is when empty
    std::optional<long long> code = {}; // by default the code of the status word, or 4
};
void setStatus(dao::Database& db, const QString& name, const PersonStatus& status);

struct TrackingRow
{
    QString tracker = {};
    QString trackee = {};
    QString trackeeStatus = {};
    double lastUpdated = 0; // a DateTimeNum
};
void addTracking(dao::Database& db, const TrackingRow& row);

struct MessageRow
{
    QString owner = {}; // whose copy
    QString category = QStringLiteral("New");
    QString fromName = {};
    QString fromLine = {}; // the From line; the sender's name when empty
    QString toName = {};
    QString subject = {};
    QString body = {};
    double sent = 0;     // a DateTimeNum
    double lastUsed = 0; // a DateTimeNum; 0 means the same as sent
    QString fromRemoteUNC = {};
};
// Returns the new MessageID.
long long addMessage(dao::Database& db, const MessageRow& message);

// The board of a group ("Everyone" is all rows): Name, Status, Phone, DueBack,
// Comments, LastModified and the extra columns, rows ordered by Name, names
// beginning "~" left out. Values are trimmed text, a Null read as "".
struct Board
{
    QStringList columns = {};
    std::vector<QStringList> rows = {};
};
Board readBoard(dao::Database& db, const QString& group = QStringLiteral("Everyone"));

} // namespace database
