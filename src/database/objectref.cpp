#include "database/objectref.h"

#include "kernel/err.h"
#include "kernel/globals.h"

dao::Database& fnDatabase()
{
    if (!gRun.gdbDatabase) {
        raiseObjectNotSet();
    }
    return *gRun.gdbDatabase;
}

dao::Recordset& fnRecordset(const std::unique_ptr<dao::Recordset>& rs)
{
    if (!rs) {
        raiseObjectNotSet();
    }
    return *rs;
}

std::unique_ptr<dao::Recordset> fnOpenSQL(QString sql)
{
    gRun.gstrSQL = sql;
    return fnDatabase().OpenRecordset(sql, dao::dbOpenDynaset);
}

void subExecuteSQL(QString sql)
{
    gRun.gstrSQL = sql;
    fnDatabase().Execute(sql);
}
