#pragma once
// System settings (GlobalSettingsTable), the person's settings
// (EmployeeSettingsTable) and the groups, read into run-wide values.

#include <QString>

void subReadOptions();
void subReadUserSettings(const QString& name);
void subSaveUserSettings(const QString& name);
void subReadGroups();
