#pragma once
// The tables of the shared file, for the site administration tool and the tests.
// The client itself never creates tables; it only brings an older file up to
// date. One description of the tables drives both releases this module makes:
// the present one, and the older one that lacks what the client's upgrade adds.

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace database {

enum class SchemaRelease
{
    Present,
    Older
};

// Every table with its keys and indexes, as the release has them: the older one
// lacks the columns the client's upgrade adds, and has the old
// `TrackeeLastUpdate` column in EmployeeStatusTracking and MessagesTable.
void createSchema(dao::Database& db, SchemaRelease release);

// The indexes on the case fold of the columns a person is looked up by with
// LIKE (EmployeeTable's Name and UID, EmployeeSettingsTable's Name), made
// unless they are there. Part of a new site; the upgrade brings them to older files.
void createCaseBlindIndexes(dao::Database& db);

// The indexes of the present release that the file lacks, made where their table
// has the columns: a file of the older release has no index on MessageOwner, which
// a person's list of copies is read by.
void createMissingIndexes(dao::Database& db);

// The tables in the order they are created.
QStringList schemaTables();
// The Jet statements that make the schema of a release: CREATE TABLE, then CREATE INDEX.
QStringList schemaStatements(SchemaRelease release);

} // namespace database
