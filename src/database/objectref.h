#pragma once
// The database object and recordsets as VB code uses them: a use of one that was
// never set is VB's run-time error 91, raised like any engine error so that an
// ignoring or trapping procedure answers it the same way.

#include "dao/dao.h"

#include <QString>
#include <memory>

// gdbDatabase, or error 91 when no open ever set it.
dao::Database& fnDatabase();
// The recordset, or error 91 when its open failed.
dao::Recordset& fnRecordset(const std::unique_ptr<dao::Recordset>& rs);

// Keeps the statement as the last one built (gstrSQL, which the board's error
// report quotes) and opens it as a dynaset, or runs it. The statement is held
// here, never read back from gstrSQL: opening may wait for the file while
// timers run, and they build statements of their own.
std::unique_ptr<dao::Recordset> fnOpenSQL(QString sql);
void subExecuteSQL(QString sql);
