#pragma once
// The launchers that start the client for one person: "VESK-OR [name].desktop"
// on the desktop or in the autostart folder, starting the program beside this
// one's folder with "-UID:" and the person's UID, so the same program file
// serves everyone.

#include "platform/launcher.h"

#include <QString>
#include <QStringList>

// The launcher's file name for a person.
QString fnLinkFileName(const QString& name);
// Its full path in the folder; "" when the folder cannot be had.
QString fnLinkPath(platform::cShellLinkA::SystemFolder folder, const QString& name);

// Writes the person's launcher in the folder, their UID read from EmployeeTable
// by Name. False when no row has the name or the file could not be written.
bool fnCreatePersonLink(platform::cShellLinkA::SystemFolder folder, const QString& name);
// Removes the person's launcher from the folder; an absent one is no failure.
void subRemovePersonLink(platform::cShellLinkA::SystemFolder folder, const QString& name);

// A field of the first row of a statement, a failure passed over: true when there
// is a row, with the field's text in value.
bool fnFirstRowText(const QString& sql, const QString& field, QString& value);

// The board's person's own desktop launcher (gstrDefaultUser).
void subCreateDeskTopIcon();
// The board's "New Icon for Selected User(s)": after a Yes, a desktop launcher
// for each name given, each failure in a box of its own, then a closing box.
void subNewDesktopIconsFor(const QStringList& names);
// The board's "Uninstall": after a Yes, both launchers of the board's person go.
void subUninstallIcons();
