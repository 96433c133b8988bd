#include "keysend/KeyboardLayout.h"

#include "keysend/KeyNames.h"

#include <array>

namespace KeyboardLayout {

namespace {

struct LayoutKey {
    int code;
    char16_t plain;
    char16_t shifted;
};

constexpr auto layoutKeys = std::to_array<LayoutKey>({
    {'0', u'0', u')'},  {'1', u'1', u'!'},
    {'2', u'2', u'@'},  {'3', u'3', u'#'},
    {'4', u'4', u'$'},  {'5', u'5', u'%'},
    {'6', u'6', u'^'},  {'7', u'7', u'&'},
    {'8', u'8', u'*'},  {'9', u'9', u'('},
    {186, u';', u':'},  {187, u'=', u'+'},
    {188, u',', u'<'},  {189, u'-', u'_'},
    {190, u'.', u'>'},  {191, u'/', u'?'},
    {192, u'`', u'~'},  {219, u'[', u'{'},
    {220, u'\\', u'|'}, {221, u']', u'}'},
    {222, u'\'', u'"'}, {KeyNames::Space, u' ', u' '},
});

struct ControlKey {
    char16_t character;
    int code;
};

constexpr auto controlKeys = std::to_array<ControlKey>({
    {u'\b', KeyNames::Backspace},
    {u'\t', KeyNames::Tab},
    {u'\r', KeyNames::Enter},
    {u'\n', KeyNames::Enter},
    {u'\x1b', KeyNames::Escape},
});

} // namespace

CharacterKey keyFor(QChar ch)
{
    const char16_t c = ch.unicode();
    if (c >= u'a' && c <= u'z')
        return {'A' + (c - u'a'), false};
    if (c >= u'A' && c <= u'Z')
        return {'A' + (c - u'A'), true};
    for (const ControlKey &key : controlKeys) {
        if (key.character == c)
            return {key.code, false};
    }
    for (const LayoutKey &key : layoutKeys) {
        if (key.plain == c)
            return {key.code, false};
        if (key.shifted == c)
            return {key.code, true};
    }
    return {};
}

QChar characterFor(int code, bool shift)
{
    if (code >= 'A' && code <= 'Z')
        return QChar(shift ? code : code - 'A' + 'a');
    for (const ControlKey &key : controlKeys) {
        if (key.code == code)
            return QChar(key.character);
    }
    for (const LayoutKey &key : layoutKeys) {
        if (key.code == code)
            return QChar(shift ? key.shifted : key.plain);
    }
    return {};
}

} // namespace KeyboardLayout
