#pragma once
// The maintenance lock beside a database: "veskor.ldb" for "veskor.mdb" (the
// messages call it VESKOR.LDB). An exclusive opener creates it and holds a write
// lock on it while it is open; every shared open tests for that lock first and
// fails with 3045 at once. The lock is an open-file-description lock, so it also
// stops a second open in the same process, and it goes with a crashed holder.
// The file itself is left in place on close: its presence means nothing, only
// the lock does, and leaving it avoids a race between unlink and a new locker.

#include <QString>

namespace dao {

class LockFile
{
public:
    LockFile() = default;
    ~LockFile();
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    // The lock file's path for a database path: same folder and base name, ".ldb".
    static QString pathFor(const QString& databasePath);

    // True when some opener holds the file's write lock. A missing file is free.
    static bool isHeld(const QString& lockPath);

    // Creates the file if needed and takes its write lock: 3045 when another
    // opener holds it, 3051 when the folder refuses the file.
    void acquire(const QString& lockPath);
    void release();
    bool isHeld() const
    {
        return m_fd >= 0;
    }

private:
    int m_fd = -1;
};

} // namespace dao
