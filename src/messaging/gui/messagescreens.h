#pragma once
// The message screens as the board, the pop-ups and each other open them:
// frmMessage (write, read, answer, forward), frmMsgsPreview (a person's copies by
// category, one screen per run) and frmMessagesToSelection (the To line picked
// from the people and groups of the site).

#include <QString>
#include <functional>

class QWidget;

// What the next message screen opened is for: "New", "View", "Reply", "Forward",
// or "Edit" (set by a screen on a draft). Shared by every open message screen:
// the last one opened decides what Send does on any of them.
extern QString gstrMessageAction;

// A new, non-modal frmMessage filled for gstrMessageAction from the copy
// messageId (0 for a new message). When the caller is the board, its selected
// people become the To line of a new message.
void subOpenMessage(QWidget* caller, long long messageId);

// Before a forced shutdown ends the run: every open message being written (new,
// reply, forward, a draft being edited) is saved as a draft by its own Save. A
// received copy only being read has nothing to save and is left as it is.
void subSaveOpenMessages();

// frmMsgsPreview: shown (and loaded again when it was closed).
void subShowMsgsPreview();
// Its list read again, when the screen is visible (a message screen closing).
void subRefreshMsgsPreviewIfVisible();

// A new frmMessagesToSelection owned by caller, not modal, holding the names of
// the To line; OK hands the finished line to deliver, Esc hands nothing.
void MessagesToSelectionInitialize(QWidget* caller, const QString& toLine, std::function<void(const QString&)> deliver);
