#pragma once
// Small values the whole program shares.

#include <QString>

// VB's vbCr and vbCrLf: the line breaks inside the boxes' texts.
inline const QString CR = QStringLiteral("\r");
inline const QString CRLF = QStringLiteral("\r\n");

// Sizes kept in twips, as the settings rows hold them; the screen counts pixels.
constexpr int kTwipsPerPixel = 15;
