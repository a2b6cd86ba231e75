#pragma once
// The client's application object: the last line of defence for failures that
// no procedure handles, and the take-down at the end of a run.

#include <QApplication>

class ClientApplication : public QApplication
{
public:
    using QApplication::QApplication;

    // An engine failure that reaches the event loop ends the run as VB's run time
    // does ("Run-time error '3218':" and the text); any other failure (out of
    // memory, a broken promise of the standard library) gets the general error
    // box naming the window and object the event was for. Either way the run
    // ends through End with code 1; nothing is repaired.
    bool notify(QObject* receiver, QEvent* event) override;
};

// The last work of every end: the program's screens go (frmMain with its
// single-instance socket and lock file), then the application, so that nothing
// of Qt is left for the static objects' destruction that follows.
void takeDownApplication(QApplication* app);
