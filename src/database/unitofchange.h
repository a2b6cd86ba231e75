#pragma once
// Units of change: a status change (the row, the tracking mirror, the counter and
// the log row), a group change, a counter raise. Each runs in one short write
// transaction on gdbDatabase and is committed once, so other clients see all of
// it or none of it, and a process killed half-way leaves the old state.

#include "dao/dao.h"

#include <functional>

// What a unit answers to a failure of its own: a box, a question, a pause. It
// runs once the unit is rolled back, so no box ever shows while the write lock is
// held, and tells whether the whole unit is to be tried again. attempt counts the
// unit's runs from 1.
using UnitAnswer = std::function<bool(const VbError& error, int attempt)>;

// A part's failure on its way up to the outermost unit, with the part's answer.
struct PartFailure
{
    VbError error;
    UnitAnswer answer;
};

// Runs body as one unit of change and returns true when it was committed, false
// when an answer gave it up. The outermost unit opens the database
// (subOpenDatabase) for each run and rolls everything back on any failure; then
// a failure of a part, or of its own with an answer given, is answered, and any
// other failure goes on up to the caller. Inside another unit, body is a part of
// that one: its failures roll the outer unit back, and its answer runs there.
bool fnRunUnit(const std::function<void()>& body, const UnitAnswer& answer = {});
// True while a unit runs.
bool fnInUnit();
