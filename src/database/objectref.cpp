#include "database/objectref.h"

#include "kernel/err.h"
#include "kernel/globals.h"

dao::Database& fnDatabase()
{
    if (!gdbDatabase) {
        raiseObjectNotSet();
    }
    return *gdbDatabase;
}

dao::Recordset& fnRecordset(const std::unique_ptr<dao::Recordset>& rs)
{
    if (!rs) {
        raiseObjectNotSet();
    }
    return *rs;
}
