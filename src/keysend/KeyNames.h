#pragma once

#include <QStringView>
#include <Qt>

#include <span>

// The names a key string may give in braces, and the virtual-key codes they stand for.
namespace KeyNames {

// Virtual-key codes the sender itself needs.
inline constexpr int NoKey = 0;
inline constexpr int Backspace = 8;
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Shift = 16;
inline constexpr int Control = 17;
inline constexpr int Alt = 18;
inline constexpr int CapsLock = 20;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int Numpad0 = 96;
inline constexpr int Numpad9 = 105;
inline constexpr int NumLock = 144;
inline constexpr int ScrollLock = 145;

struct Entry {
    const char *name; // upper case
    int code;
};

// Every name the lookup knows, with its code.
std::span<const Entry> table();

// The code of a key name, compared in upper case; 0 (no key) for a name not in the table.
int code(QStringView name);

// The modifier flag of SHIFT, CONTROL or ALT; no flag for any other code.
Qt::KeyboardModifier modifierOf(int code);

struct QtKey {
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers; // Qt::KeypadModifier for the numeric keypad
};

// The Qt key for a virtual-key code: the named keys, the modifiers, the letters, digits and
// space, and the punctuation keys of the layout (unshifted). Key_unknown for any other code.
QtKey qtKey(int code);

} // namespace KeyNames
