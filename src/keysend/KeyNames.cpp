#include "keysend/KeyNames.h"

#include <QLatin1StringView>
#include <QString>

#include <array>

namespace KeyNames {

namespace {

constexpr auto entries = std::to_array<Entry>({
    {"BACKSPACE", 8}, {"BS", 8},           {"BKSP", 8},      {"BREAK", 19},    {"CAPSLOCK", 20},
    {"DELETE", 46},   {"DEL", 46},         {"DOWN", 40},     {"END", 35},      {"ENTER", 13},
    {"ESC", 27},      {"HELP", 47},        {"HOME", 36},     {"INS", 45},      {"INSERT", 45},
    {"LEFT", 37},     {"NUMLOCK", 144},    {"PGDN", 34},     {"PGUP", 33},     {"PRTSC", 42},
    {"RIGHT", 39},    {"SCROLLLOCK", 145}, {"TAB", 9},       {"UP", 38},       {"F1", 112},
    {"F2", 113},      {"F3", 114},         {"F4", 115},      {"F5", 116},      {"F6", 117},
    {"F7", 118},      {"F8", 119},         {"F9", 120},      {"F10", 121},     {"F11", 122},
    {"F12", 123},     {"F13", 124},        {"F14", 125},     {"F15", 126},     {"F16", 127},
    {"NUMPAD0", 96},  {"NUMPAD1", 97},     {"NUMPAD2", 98},  {"NUMPAD3", 99},  {"NUMPAD4", 100},
    {"NUMPAD5", 101}, {"NUMPAD6", 102},    {"NUMPAD7", 103}, {"NUMPAD8", 104}, {"NUMPAD9", 105},
    {"PRTSCR", 44},
    // The modifiers are reached through "+", "^" and "%", never by name.
});

struct CodeKey {
    int code;
    Qt::Key key;
};

// Named keys and the modifiers. 42 and 44 are different keys: 44 is the print-screen key,
// 42 the separate print key of some keyboards.
constexpr auto namedKeys = std::to_array<CodeKey>({
    {8, Qt::Key_Backspace},
    {9, Qt::Key_Tab},
    {13, Qt::Key_Return},
    {16, Qt::Key_Shift},
    {17, Qt::Key_Control},
    {18, Qt::Key_Alt},
    {19, Qt::Key_Pause},
    {20, Qt::Key_CapsLock},
    {27, Qt::Key_Escape},
    {32, Qt::Key_Space},
    {33, Qt::Key_PageUp},
    {34, Qt::Key_PageDown},
    {35, Qt::Key_End},
    {36, Qt::Key_Home},
    {37, Qt::Key_Left},
    {38, Qt::Key_Up},
    {39, Qt::Key_Right},
    {40, Qt::Key_Down},
    {42, Qt::Key_Printer},
    {44, Qt::Key_Print},
    {45, Qt::Key_Insert},
    {46, Qt::Key_Delete},
    {47, Qt::Key_Help},
    {144, Qt::Key_NumLock},
    {145, Qt::Key_ScrollLock},
    // The punctuation keys of the layout, by their unshifted character.
    {186, Qt::Key_Semicolon},
    {187, Qt::Key_Equal},
    {188, Qt::Key_Comma},
    {189, Qt::Key_Minus},
    {190, Qt::Key_Period},
    {191, Qt::Key_Slash},
    {192, Qt::Key_QuoteLeft},
    {219, Qt::Key_BracketLeft},
    {220, Qt::Key_Backslash},
    {221, Qt::Key_BracketRight},
    {222, Qt::Key_Apostrophe},
});

} // namespace

std::span<const Entry> table()
{
    return entries;
}

int code(QStringView name)
{
    const QString upper = name.toString().toUpper();
    for (const Entry &entry : entries) {
        if (upper == QLatin1StringView(entry.name))
            return entry.code;
    }
    return NoKey;
}

Qt::KeyboardModifier modifierOf(int code)
{
    switch (code) {
    case Shift:
        return Qt::ShiftModifier;
    case Control:
        return Qt::ControlModifier;
    case Alt:
        return Qt::AltModifier;
    default:
        return Qt::NoModifier;
    }
}

QtKey qtKey(int code)
{
    if (code >= 'A' && code <= 'Z')
        return {static_cast<Qt::Key>(Qt::Key_A + (code - 'A')), {}};
    if (code >= '0' && code <= '9')
        return {static_cast<Qt::Key>(Qt::Key_0 + (code - '0')), {}};
    if (code >= Numpad0 && code <= Numpad9)
        return {static_cast<Qt::Key>(Qt::Key_0 + (code - Numpad0)), Qt::KeypadModifier};
    if (code >= 112 && code <= 127)
        return {static_cast<Qt::Key>(Qt::Key_F1 + (code - 112)), {}};
    for (const CodeKey &named : namedKeys) {
        if (named.code == code)
            return {named.key, {}};
    }
    return {};
}

} // namespace KeyNames
