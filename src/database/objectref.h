#pragma once
// The database object and recordsets as VB code uses them: a use of one that was
// never set is VB's run-time error 91, raised like any engine error so that an
// ignoring or trapping procedure answers it the same way.

#include "dao/dao.h"

#include <memory>

// gdbDatabase, or error 91 when no open ever set it.
dao::Database& fnDatabase();
// The recordset, or error 91 when its open failed.
dao::Recordset& fnRecordset(const std::unique_ptr<dao::Recordset>& rs);
