#include "database/unitofchange.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"

#include <optional>

namespace {

int g_depth = 0;

class Depth
{
public:
    Depth()
    {
        ++g_depth;
    }
    ~Depth()
    {
        --g_depth;
    }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
};

} // namespace

bool fnInUnit()
{
    return g_depth > 0;
}

bool fnRunUnit(const std::function<void()>& body, const UnitAnswer& answer)
{
    if (fnInUnit()) {
        try {
            const Depth depth;
            dao::Transaction part(fnDatabase());
            body();
            part.Commit();
        } catch (const VbError& e) {
            if (!answer) {
                throw;
            }
            throw PartFailure{e, answer};
        }
        return true;
    }
    for (int attempt = 1;; ++attempt) {
        std::optional<PartFailure> failure;
        try {
            subOpenDatabase();
            const std::shared_ptr<dao::Database> held = gRun.gdbDatabase;
            dao::Transaction unit(fnDatabase());
            if (gRun.gdbDatabase != held) {
                continue; // events during the wait opened the file afresh: begin again on that one
            }
            const Depth depth; // only now: a unit a timer starts during the wait is one of its own
            body();
            unit.Commit();
            return true;
        } catch (const PartFailure& part) {
            failure = part; // the unit is rolled back by now
        } catch (const VbError& e) {
            if (!answer) {
                throw;
            }
            failure = PartFailure{e, answer};
        }
        if (!failure->answer(failure->error, attempt)) {
            return false;
        }
    }
}
