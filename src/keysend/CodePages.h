#pragma once

#include <QChar>

// The two single-byte code pages typed characters pass through: the Windows ANSI code page
// 1252 (Western) and the OEM code page 437 (United States), whose codes Alt with the numeric
// keypad types.
namespace CodePages {

// The character's code in code page 1252; -1 when the code page has no such character.
int ansiCode(QChar ch);

// The character of a code in code page 1252; a null character for a code outside 0-255.
QChar fromAnsi(int code);

// The character's code in code page 437. A character the code page lacks gets the code of its
// unaccented letter when it has one ("À" gives 65, "A"); the curly quotes, the long dashes,
// the single angle quotes and the spacing circumflex and tilde give their plain ASCII look-alike;
// anything else ("€", "©", "Œ") gives 63, "?".
int oemCode(QChar ch);

// The character of a code in code page 437; a null character for a code outside 0-255.
// Codes below 128 are ASCII.
QChar fromOem(int code);

} // namespace CodePages
