#pragma once
// The selected people of the board as addressees of a new mail in the desktop's
// mail program. The names themselves are the addresses: the mail program has to
// resolve them.

#include <QString>
#include <QStringList>

namespace reports {

// "mailto:" and the names, each trimmed, joined by "; ".
QString fnMailtoText(const QStringList& names);

// The selected rows' names, in list order, to the mail program; a box when the
// desktop cannot open it.
void subSendMail();

// The board's sub-item that holds the person's name: the recorded name column, 1 while it is 0.
int fnNameSubItem();

} // namespace reports
