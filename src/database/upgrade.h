#pragma once
// The test that a file is a database of this system, and bringing an older file
// up to the present shape.

#include <QString>

// True when path & "veskor.mdb" opens and its DatabaseVersion reads "2005".
bool fnIsValidDatabase(const QString& path);
// Once per run: tries every change of an older release, passing over those made.
void subUpdateDatabaseStructure();
// Before each read of the counters: the row, its ExtraColumnsCounter, no Null counter.
void subTestStatusCounterTable();
