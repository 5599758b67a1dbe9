#pragma once

#include <QString>

class QTranslator;

/// Japanese for a program with windows, whatever the desktop speaks: the toolkit's own texts, the locale and
/// the interface font. Called once, right after the QApplication is made.
/// @param translator holds the toolkit's texts; it has to live as long as the program
void speakJapanese(QTranslator &translator);

/// The font family that the interface is written in. The desktop's own stays when it is a font with Japanese
/// signs. A mere alias ("Sans Serif") may stand for anything, by the machine and its locale, and a Latin font
/// borrows signs that are taller than its lines: then a Japanese family of this machine is taken by name.
/// @return the desktop's when the machine has none
QString interfaceFamily(const QString &desktops);
