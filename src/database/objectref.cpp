#include "database/objectref.h"

#include "kernel/err.h"
#include "kernel/globals.h"

namespace {

[[noreturn]] void raiseNotSet()
{
    Err.Raise(kErrObjectNotSet, QStringLiteral("Object variable or With block variable not set"));
}

} // namespace

dao::Database& fnDatabase()
{
    if (!gdbDatabase) {
        raiseNotSet();
    }
    return *gdbDatabase;
}

dao::Recordset& fnRecordset(const std::unique_ptr<dao::Recordset>& rs)
{
    if (!rs) {
        raiseNotSet();
    }
    return *rs;
}
