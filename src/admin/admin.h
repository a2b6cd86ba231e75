#pragma once
// veskor-admin: creates and maintains a site (the shared file and its settings
// files). runAdmin does the whole work of one command line, so tests can run
// commands in-process; main() only calls it.

#include <QStringList>
#include <QTextStream>

namespace admin {

// args: the command line without the program name, e.g. {"user", "add", "Ann Lee"}.
// Returns 0 on success, 1 when the command failed, 2 when the command line is wrong.
int runAdmin(const QStringList& args, QTextStream& out, QTextStream& err);

} // namespace admin
