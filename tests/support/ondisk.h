#pragma once
// What lies on disk, read and written around the engine under test: plain files,
// and SQLite's own statements on a database file, with the engine's SQL functions
// (as anything that writes our files must have them).

#include <QByteArray>
#include <QString>
#include <QStringList>

// The file's bytes; empty when it cannot be read.
QByteArray readFile(const QString& path);
// Writes the file anew; true when every byte went.
bool writeFile(const QString& path, const QByteArray& bytes);
// SQLite's own statements on a file, made when missing; true when they all ran.
bool sqliteExec(const QString& path, const QString& sql);
// One column of every row of a statement, as text (Null as ""). The file is opened
// read-write, as a client opens it, so a change a killed client left half-done in
// the journal is rolled back on the way; a busy file is waited on for five seconds.
QStringList sqliteColumn(const QString& path, const QString& sql, int column = 0);
// The first column of the first row; "<no row>" when there is none.
QString sqliteValue(const QString& path, const QString& sql);
