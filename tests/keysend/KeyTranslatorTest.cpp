#include "keysend/KeyTranslator.h"
#include "keysend/KeyNames.h"
#include "keysend/KeyStringParser.h"
#include "keysend/LockKeys.h"

#include <QString>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

QList<QtKeyStroke> translate(const QString &keys, LockKeys &locks)
{
    KeyTranslator translator(locks);
    for (const KeyEvent &event : KeyStringParser::parse(keys))
        translator.add(event);
    return translator.strokes();
}

QString typedText(const QList<QtKeyStroke> &strokes)
{
    QString text;
    for (const QtKeyStroke &stroke : strokes) {
        if (stroke.press)
            text += stroke.text;
    }
    return text;
}

struct TypingCase {
    const char *behaviour;
    const char16_t *keys;
    bool capsLock;
    bool numLock;
    const char16_t *typed;
    bool capsLockAfter;
    bool numLockAfter;
};

void PrintTo(const TypingCase &c, std::ostream *out)
{
    *out << c.behaviour;
}

const TypingCase typingCases[] = {
    {"LettersTypeAsWritten", u"aBc", false, false, u"aBc", false, false},
    {"CapsLockTurnsLettersUpperCase", u"abc", true, false, u"ABC", true, false},
    {"CapsLockWithShiftTypesLowerCase", u"+a", true, false, u"a", true, false},
    {"CapsLockLeavesDigitsAndPunctuation", u"1!", true, false, u"1!", true, false},
    {"ShiftTypesTheShiftedCharacterOfTheKey", u"+1+a", false, false, u"!A", false, false},
    {"ControlAndAltTypeNoText", u"^a%b", false, false, u"", false, false},
    {"CapsLockNameTogglesCapsLock", u"{CAPSLOCK}a", false, false, u"A", true, false},
    {"KeypadDigitTypesOnlyWithNumLock", u"{NUMPAD5}", false, false, u"", false, false},
    {"KeypadDigitTypesItsDigitWithNumLock", u"{NUMPAD5}", false, true, u"5", false, true},
    {"TabEnterBackspaceAndEscTypeTheirControlCharacters", u"{TAB}~{BS}{ESC}", false, false,
     u"\t\r\b\x1b", false, false},
    {"AltKeypadSequenceTypesTheOemCharacter", u"{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}",
     false, false, u"\u00e9", false, false},
    {"AltKeypadSequenceWithLeadingZeroTypesTheAnsiCharacter",
     u"%({NUMPAD0}{NUMPAD2}{NUMPAD3}{NUMPAD3})", false, true, u"\u00e9", false, true},
    {"AltKeypadSequenceBelow128TypesAscii", u"%({NUMPAD6}{NUMPAD5})", false, true, u"A", false,
     true},
    {"AltKeypadCodeIsTakenModulo256", u"%({NUMPAD3}{NUMPAD2}{NUMPAD1})", false, true, u"A", false,
     true},
    {"AltKeypadSequenceWithoutNumLockTypesNothing", u"%({NUMPAD6}{NUMPAD5})", false, false, u"",
     false, false},
    {"OtherKeyInsideAltKeypadSequenceCancelsIt", u"%({NUMPAD6}a{NUMPAD5})", false, true, u"", false,
     true},
    {"AltKeypadZeroTypesNothing", u"%({NUMPAD0})", false, true, u"", false, true},
    {"AltWithAnotherModifierDoesNotCompose", u"^%({NUMPAD6}{NUMPAD5})", false, true, u"", false,
     true},
};

class TranslatesKeys : public testing::TestWithParam<TypingCase> {};

TEST_P(TranslatesKeys, AsAKeyboardTypesThem)
{
    const TypingCase &c = GetParam();
    RememberedLockKeys locks;
    locks.setOn(KeyNames::CapsLock, c.capsLock);
    locks.setOn(KeyNames::NumLock, c.numLock);
    EXPECT_EQ(typedText(translate(QString::fromUtf16(c.keys), locks)), QString::fromUtf16(c.typed));
    EXPECT_EQ(locks.isOn(KeyNames::CapsLock), c.capsLockAfter);
    EXPECT_EQ(locks.isOn(KeyNames::NumLock), c.numLockAfter);
}

INSTANTIATE_TEST_SUITE_P(KeyTranslator, TranslatesKeys, testing::ValuesIn(typingCases),
                         [](const testing::TestParamInfo<TypingCase> &info) {
                             return std::string(info.param.behaviour);
                         });

TEST(KeyTranslator, ShiftedCharacterIsItsQtKeyWithShift)
{
    RememberedLockKeys locks;
    const QList<QtKeyStroke> strokes = translate(QStringLiteral("!"), locks);
    const QList<QtKeyStroke> expected{
        {true, Qt::Key_Exclam, Qt::ShiftModifier, QStringLiteral("!")},
        {false, Qt::Key_Exclam, Qt::ShiftModifier, QStringLiteral("!")},
    };
    EXPECT_EQ(strokes, expected);
}

TEST(KeyTranslator, ControlLetterIsTheLetterKeyWithControlAndNoText)
{
    RememberedLockKeys locks;
    const QList<QtKeyStroke> expected{
        {true, Qt::Key_Control, {}, {}},
        {true, Qt::Key_A, Qt::ControlModifier, {}},
        {false, Qt::Key_A, Qt::ControlModifier, {}},
        {false, Qt::Key_Control, Qt::ControlModifier, {}},
    };
    EXPECT_EQ(translate(QStringLiteral("^a"), locks), expected);
}

TEST(KeyTranslator, KeypadDigitCarriesTheKeypadFlag)
{
    RememberedLockKeys locks;
    locks.setOn(KeyNames::NumLock, true);
    const QList<QtKeyStroke> expected{
        {true, Qt::Key_7, Qt::KeypadModifier, QStringLiteral("7")},
        {false, Qt::Key_7, Qt::KeypadModifier, QStringLiteral("7")},
    };
    EXPECT_EQ(translate(QStringLiteral("{NUMPAD7}"), locks), expected);
}

TEST(KeyTranslator, ComposedCharacterFollowsTheAltRelease)
{
    RememberedLockKeys locks;
    locks.setOn(KeyNames::NumLock, true);
    const QList<QtKeyStroke> strokes = translate(QStringLiteral("%({NUMPAD6}{NUMPAD5})"), locks);
    ASSERT_EQ(strokes.size(), 8);
    EXPECT_EQ(strokes[5], (QtKeyStroke{false, Qt::Key_Alt, Qt::AltModifier, {}}));
    EXPECT_EQ(strokes[6], (QtKeyStroke{true, Qt::Key_A, {}, QStringLiteral("A")}));
    EXPECT_EQ(strokes[7], (QtKeyStroke{false, Qt::Key_A, {}, QStringLiteral("A")}));
}

TEST(KeyTranslator, TapSendsTheKeyDownAndUpWithoutModifiers)
{
    RememberedLockKeys locks;
    KeyTranslator translator(locks);
    translator.tap(KeyNames::ScrollLock);
    const QList<QtKeyStroke> expected{
        {true, Qt::Key_ScrollLock, {}, {}},
        {false, Qt::Key_ScrollLock, {}, {}},
    };
    EXPECT_EQ(translator.strokes(), expected);
    EXPECT_TRUE(locks.isOn(KeyNames::ScrollLock));
}

TEST(RememberedLockKeys, StartsOffTogglesAndIgnoresOtherCodes)
{
    RememberedLockKeys locks;
    for (int code : {KeyNames::CapsLock, KeyNames::NumLock, KeyNames::ScrollLock}) {
        SCOPED_TRACE(code);
        EXPECT_FALSE(locks.isOn(code));
        locks.toggle(code);
        EXPECT_TRUE(locks.isOn(code));
        locks.toggle(code);
        EXPECT_FALSE(locks.isOn(code));
    }
    locks.toggle(KeyNames::Tab);
    EXPECT_FALSE(locks.isOn(KeyNames::Tab));
}

} // namespace
