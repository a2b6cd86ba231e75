#pragma once
// What screen readers say for the controls: a caption as shown, and a control
// named at once for scripts (its object name) and for readers.

#include <QString>

// The caption as shown: without its access key's marker ("&&" shows one "&").
QString spokenCaption(const QString& caption);

// Gives control its object name and, as the name a screen reader says, the
// caption as shown.
template <typename Control> Control* named(Control* control, const QString& objectName, const QString& caption)
{
    control->setObjectName(objectName);
    control->setAccessibleName(spokenCaption(caption));
    return control;
}
