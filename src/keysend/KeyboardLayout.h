#pragma once

#include <QChar>

// The keyboard layout plain characters are typed with: the United States layout, which the
// module's key strings are written for.
namespace KeyboardLayout {

struct CharacterKey {
    int code = 0;       // virtual-key code; 0 when no key of the layout types the character
    bool shift = false; // the key types the character only with Shift
};

// The key that types ch. Backspace, tab, carriage return, line feed and escape are the
// BACKSPACE, TAB, ENTER (both line ends) and ESC keys.
CharacterKey keyFor(QChar ch);

// The character a key types, with or without Shift and with CapsLock off; a null character
// for a key that types none.
QChar characterFor(int code, bool shift);

} // namespace KeyboardLayout
