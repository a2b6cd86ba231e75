// Waiting for other clients' locks. Only one client writes the file at a time,
// so a write first waits until nobody else holds the write lock. That wait lives
// here only: the engine tries SQLite's BEGIN IMMEDIATE without letting SQLite
// block in it, and between tries pauses a moment and lets timers and repaints
// run, so the screen stays alive while another client finishes. SQLite's own
// busy handler covers the short waits inside a statement (a read meeting another
// client's commit, a commit waiting for readers to finish); it only sleeps and
// never runs anything on the connection.
#include "dao/connection.h"
#include "platform/process.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <sqlite3.h>

namespace dao {

namespace {

// The pause between two tries: short at first, as most locks pass in a few ms,
// then a little longer, so that twenty waiting clients do not hammer the file.
int pauseMs(int tries)
{
    return tries < 4 ? 1 << tries : 16;
}

// SQLite's own waits inside a statement are for another client's commit in
// progress, or for readers to finish before a commit: a few ms each. One that
// lasts longer than this has a stuck client behind it, and is not worth a frozen
// screen: the statement gives up with the lock's Jet number.
constexpr qint64 kStatementWaitLimitMs = 5000;

bool isBusyCode(int rc)
{
    return (rc & 0xFF) == SQLITE_BUSY || (rc & 0xFF) == SQLITE_LOCKED;
}

// Counts a wait under way, so the close timer leaves the file open meanwhile.
class Waiting
{
public:
    explicit Waiting(int& count) : m_count(count)
    {
        ++m_count;
    }
    ~Waiting()
    {
        --m_count;
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    int& m_count;
};

} // namespace

void Connection::installBusyHandler()
{
    sqlite3_busy_handler(m_db, &Connection::onBusy, this);
}

int Connection::onBusy(void* data, int count)
{
    auto* self = static_cast<Connection*>(data);
    if (self->m_acquiring) {
        return 0; // the write lock is waited for in acquireWriteLock, with events running
    }
    const qint64 now =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    if (count == 0) {
        self->m_busySince = now;
    }
    if (now - self->m_busySince >= std::min<qint64>(DBEngine::busyTimeoutMs(), kStatementWaitLimitMs)) {
        return 0;
    }
    sqlite3_sleep(pauseMs(count));
    return 1;
}

void Connection::acquireWriteLock(Activity activity)
{
    const Waiting waiting(m_waiting);
    QElapsedTimer waited;
    waited.start();
    for (int tries = 0;; ++tries) {
        m_acquiring = true;
        const int rc = sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        m_acquiring = false;
        if (rc == SQLITE_OK) {
            return;
        }
        if (!isBusyCode(rc) || waited.elapsed() >= DBEngine::busyTimeoutMs()) {
            raiseSqliteError(m_db, rc, activity, StatementKind::Update);
        }
        QThread::msleep(pauseMs(tries));
        platform::DoEventsExceptInput();
        requireOpen(); // events that ran may have closed the file: 3420
    }
}

} // namespace dao
