#pragma once
// A person who walks away shows as such on every board: while the screen saver
// runs, or the session is locked, the client marks its own row by StatusCode
// alone (10 for the screen saver, 11 for a lock), which changes the row's icon
// and leaves the status word as it was. When the person is back, the code is
// worked out from the word again. With UpdateStatusOnLock a lock also writes the
// status "Out", and the unlock "In".
//
// The board's two timers call the ticks; each asks the presence gateway, and a
// tick that finds nothing changed touches neither the database nor the screen.

namespace presence {

constexpr long long kScreenSaverMark = 10;
constexpr long long kLockedMark = 11;

// tmrScreenSaver, every second: the screen saver's mark, and its end. A locked
// mark is left alone: the lock wins over the screen saver.
void tmrScreenSaver_Timer();
// tmrDetectLockedWorkStation, every three seconds: the lock and the unlock.
void tmrDetectLockedWorkStation_Timer();

// True while the session is locked.
bool CheckForLockedWorkStation();
// Marks the own row locked, once.
void UpdateIconToReflectLockedWorkStation();
// With UpdateStatusOnLock: the status "Out", once per lock.
void UpdateUserStatusForLockedWorkStation();
// The whole of an unlock: the status "In" owed by the lock, or the own code restored.
void UpdateIconAndUserStatusToUnLockedWorkStation();
// Works the own row's StatusCode out from its status word again (4 for a word
// with no StatusTypesTable row) and writes it.
void subRestoreOwnStatusCode();

} // namespace presence
