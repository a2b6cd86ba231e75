#include "platform/process.h"

#include "platform/installed.h"

#include <QCoreApplication>
#include <cstdlib>
#include <vector>

namespace platform {

namespace {

// Ends the process the ordinary way: the registered work (the client's last
// piece takes its windows and the application down), then exit(), so static
// objects are destroyed and open files are flushed and closed.
class RealProcessControl : public ProcessControl
{
public:
    [[noreturn]] void end(int exitCode) override
    {
        runAtEnd();
        std::exit(exitCode);
    }
};

std::vector<std::function<void()>>& atEndWork()
{
    static std::vector<std::function<void()>> work;
    return work;
}

} // namespace

void setProcessControl(std::unique_ptr<ProcessControl> impl)
{
    install(std::move(impl));
}

ProcessControl& processControl()
{
    return installedOr<ProcessControl>([] { return std::make_unique<RealProcessControl>(); });
}

void atEnd(std::function<void()> fn)
{
    atEndWork().push_back(std::move(fn));
}

void clearAtEnd()
{
    atEndWork().clear();
}

void runAtEnd()
{
    // Taken out of the list one by one: work that calls End, or registers more
    // work, finds only what has not run yet.
    auto& work = atEndWork();
    while (!work.empty()) {
        auto fn = std::move(work.back());
        work.pop_back();
        if (fn) {
            fn();
        }
    }
}

void End(int exitCode)
{
    processControl().end(exitCode);
    std::_Exit(exitCode); // not reached: an end() that returned would break the promise of End
}

void DoEvents()
{
    if (QCoreApplication::instance()) {
        QCoreApplication::processEvents();
    }
}

void DoEventsExceptInput()
{
    if (QCoreApplication::instance()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

} // namespace platform
