#include "keysend/KeyNames.h"
#include "keysend/KeyboardLayout.h"

#include <QString>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

struct NamedCode {
    const char *name;
    int code;
};

void PrintTo(const NamedCode &c, std::ostream *out)
{
    *out << c.name;
}

const NamedCode everyName[] = {
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
};

class EveryKeyName : public testing::TestWithParam<NamedCode> {};

TEST_P(EveryKeyName, GivesItsCodeInUpperLowerAndMixedCase)
{
    const QString name = QString::fromLatin1(GetParam().name);
    QString mixed = name.toLower();
    mixed[0] = mixed[0].toUpper();
    EXPECT_EQ(KeyNames::code(name), GetParam().code);
    EXPECT_EQ(KeyNames::code(name.toLower()), GetParam().code);
    EXPECT_EQ(KeyNames::code(mixed), GetParam().code);
}

TEST_P(EveryKeyName, MapsToAQtKey)
{
    EXPECT_NE(KeyNames::qtKey(GetParam().code).key, Qt::Key_unknown);
}

INSTANTIATE_TEST_SUITE_P(KeyNames, EveryKeyName, testing::ValuesIn(everyName),
                         [](const testing::TestParamInfo<NamedCode> &info) {
                             return std::string(info.param.name);
                         });

TEST(KeyNames, TableHoldsExactlyTheKnownNames)
{
    const auto table = KeyNames::table();
    ASSERT_EQ(table.size(), std::size(everyName));
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_STREQ(table[i].name, everyName[i].name);
        EXPECT_EQ(table[i].code, everyName[i].code);
    }
}

TEST(KeyNames, AnyOtherNameIsNoKey)
{
    for (const char *name : {"", "BOGUS", "F0", "F17", "NUMPAD10", "PRINT", "A", "TAB ", " TAB",
                             "SHIFT", "CTRL", "ALT"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(KeyNames::code(QString::fromLatin1(name)), KeyNames::NoKey);
    }
}

struct CodeQtKey {
    int code;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
};

TEST(KeyNames, CodesMapToQtKeysWithTheKeypadFlagForTheNumericKeypad)
{
    const CodeQtKey cases[] = {
        {8, Qt::Key_Backspace, {}},
        {9, Qt::Key_Tab, {}},
        {13, Qt::Key_Return, {}},
        {16, Qt::Key_Shift, {}},
        {17, Qt::Key_Control, {}},
        {18, Qt::Key_Alt, {}},
        {19, Qt::Key_Pause, {}},
        {20, Qt::Key_CapsLock, {}},
        {27, Qt::Key_Escape, {}},
        {32, Qt::Key_Space, {}},
        {33, Qt::Key_PageUp, {}},
        {34, Qt::Key_PageDown, {}},
        {35, Qt::Key_End, {}},
        {36, Qt::Key_Home, {}},
        {37, Qt::Key_Left, {}},
        {38, Qt::Key_Up, {}},
        {39, Qt::Key_Right, {}},
        {40, Qt::Key_Down, {}},
        {42, Qt::Key_Printer, {}},
        {44, Qt::Key_Print, {}},
        {45, Qt::Key_Insert, {}},
        {46, Qt::Key_Delete, {}},
        {47, Qt::Key_Help, {}},
        {48, Qt::Key_0, {}},
        {57, Qt::Key_9, {}},
        {65, Qt::Key_A, {}},
        {90, Qt::Key_Z, {}},
        {96, Qt::Key_0, Qt::KeypadModifier},
        {105, Qt::Key_9, Qt::KeypadModifier},
        {112, Qt::Key_F1, {}},
        {127, Qt::Key_F16, {}},
        {144, Qt::Key_NumLock, {}},
        {145, Qt::Key_ScrollLock, {}},
        {186, Qt::Key_Semicolon, {}},
        {222, Qt::Key_Apostrophe, {}},
        {0, Qt::Key_unknown, {}},
        {7, Qt::Key_unknown, {}},
        {300, Qt::Key_unknown, {}},
    };
    for (const CodeQtKey &c : cases) {
        SCOPED_TRACE(c.code);
        const KeyNames::QtKey qtKey = KeyNames::qtKey(c.code);
        EXPECT_EQ(qtKey.key, c.key);
        EXPECT_EQ(qtKey.modifiers, c.modifiers);
    }
}

TEST(KeyboardLayout, EveryPrintableAsciiCharacterHasAKeyThatTypesItBack)
{
    for (char16_t c = 32; c < 127; ++c) {
        SCOPED_TRACE(static_cast<int>(c));
        const KeyboardLayout::CharacterKey key = KeyboardLayout::keyFor(QChar(c));
        ASSERT_NE(key.code, 0);
        EXPECT_EQ(KeyboardLayout::characterFor(key.code, key.shift), QChar(c));
    }
}

struct CharacterCase {
    char16_t character;
    int code;
    bool shift;
};

TEST(KeyboardLayout, CharactersNeedShiftAsTheLayoutTypesThem)
{
    const CharacterCase cases[] = {
        {u'a', 65, false},   {u'A', 65, true},  {u'z', 90, false},    {u'5', 53, false},
        {u'%', 53, true},    {u'+', 187, true}, {u'=', 187, false},   {u'~', 192, true},
        {u'{', 219, true},   {u'}', 221, true}, {u'(', 57, true},     {u')', 48, true},
        {u'^', 54, true},    {u' ', 32, false}, {u'\t', 9, false},    {u'\r', 13, false},
        {u'\n', 13, false},  {u'\b', 8, false}, {u'\x1b', 27, false}, {u'\u00e9', 0, false},
        {u'\x01', 0, false},
    };
    for (const CharacterCase &c : cases) {
        SCOPED_TRACE(static_cast<int>(c.character));
        const KeyboardLayout::CharacterKey key = KeyboardLayout::keyFor(QChar(c.character));
        EXPECT_EQ(key.code, c.code);
        EXPECT_EQ(key.shift, c.shift);
    }
}

} // namespace
