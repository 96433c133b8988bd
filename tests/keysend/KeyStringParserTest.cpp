#include "keysend/KeyStringParser.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>

namespace {

// "D9" is code 9 going down, "U65'a'" the key of "a" going up, "/SCA" the modifiers held.
QString describe(const QList<KeyEvent> &events)
{
    QStringList parts;
    for (const KeyEvent &event : events) {
        QString part =
            event.type == KeyEvent::Type::Down ? QStringLiteral("D") : QStringLiteral("U");
        part += QString::number(event.code);
        if (!event.character.isNull())
            part += u'\'' + QString(event.character) + u'\'';
        QString modifiers;
        if (event.modifiers.testFlag(Qt::ShiftModifier))
            modifiers += u'S';
        if (event.modifiers.testFlag(Qt::ControlModifier))
            modifiers += u'C';
        if (event.modifiers.testFlag(Qt::AltModifier))
            modifiers += u'A';
        if (!modifiers.isEmpty())
            part += u'/' + modifiers;
        parts.append(part);
    }
    return parts.join(u' ');
}

struct ParseCase {
    const char *behaviour;
    const char16_t *keys;
    const char *events;
};

void PrintTo(const ParseCase &c, std::ostream *out)
{
    *out << c.behaviour;
}

const ParseCase parseCases[] = {
    {"TabNameSendsCode9", u"{TAB}", "D9 U9"},
    {"TabNameInLowerCaseSendsCode9", u"{tab}", "D9 U9"},
    {"TabNameInMixedCaseSendsCode9", u"{Tab}", "D9 U9"},
    {"PrtscNameSends42", u"{PRTSC}", "D42 U42"},
    {"PrtscrNameSends44", u"{PRTSCR}", "D44 U44"},
    {"BreakNameSends19", u"{BREAK}", "D19 U19"},
    {"UnknownNameSendsNoKey", u"{BOGUS}", ""},
    {"UnknownNameBetweenCharactersSendsNothingForItself", u"a{BOGUS}b",
     "D65'a' U65'a' D66'b' U66'b'"},
    {"SingleLetterInBracesIsAnUnknownName", u"{a}", ""},
    {"TildeIsEnter", u"~", "D13 U13"},
    {"EnterName", u"{ENTER}", "D13 U13"},
    {"PlainLowerCaseLetterIsItsKey", u"a", "D65'a' U65'a'"},
    {"UpperCaseLetterTakesShiftFromTheLayout", u"A", "D65'A'/S U65'A'/S"},
    {"ShiftedPunctuationTakesShiftFromTheLayout", u"!", "D49'!'/S U49'!'/S"},
    {"SpaceIsTheSpaceKey", u" ", "D32' ' U32' '"},
    {"CharacterOffTheLayoutKeepsItsCharacter", u"\u00e9", "D0'\u00e9' U0'\u00e9'"},
    {"ShiftAppliesToTheNextKeyOnly", u"+ab", "D16 D65'a'/S U65'a'/S U16/S D66'b' U66'b'"},
    {"ControlAppliesToTheWholeGroup", u"^(ab)c",
     "D17 D65'a'/C U65'a'/C D66'b'/C U66'b'/C U17/C D67'c' U67'c'"},
    {"AltAppliesToANamedKey", u"%{F4}", "D18 D115/A U115/A U18/A"},
    {"ModifiersCombineAndAreReleasedInReverseOrder", u"+^a",
     "D16 D17/S D65'a'/SC U65'a'/SC U17/SC U16/S"},
    {"NestedGroupAddsItsModifierForItsOwnKeys", u"+(a^(b)c)",
     "D16 D65'a'/S U65'a'/S D17/S D66'b'/SC U66'b'/SC U17/SC D67'c'/S U67'c'/S U16/S"},
    {"ModifierAlreadyHeldIsNotPressedAgain", u"+(+a)", "D16 D65'a'/S U65'a'/S U16/S"},
    {"GroupWithoutModifiersSendsItsKeys", u"(ab)", "D65'a' U65'a' D66'b' U66'b'"},
    {"PlusInBracesIsThePlusCharacter", u"{+}", "D187'+'/S U187'+'/S"},
    {"CaretInBracesIsTheCaretCharacter", u"{^}", "D54'^'/S U54'^'/S"},
    {"PercentInBracesIsThePercentCharacter", u"{%}", "D53'%'/S U53'%'/S"},
    {"TildeInBracesIsTheTildeCharacter", u"{~}", "D192'~'/S U192'~'/S"},
    {"OpeningBraceInBracesIsTheBraceCharacter", u"{{}", "D219'{'/S U219'{'/S"},
    {"ClosingBraceInBracesIsTheBraceCharacter", u"{}}", "D221'}'/S U221'}'/S"},
    {"OpeningParenthesisInBracesIsTheCharacter", u"{(}", "D57'('/S U57'('/S"},
    {"ClosingParenthesisInBracesIsTheCharacter", u"{)}", "D48')'/S U48')'/S"},
    {"RepeatCountSendsTheNamedKeyThatManyTimes", u"{TAB 3}", "D9 U9 D9 U9 D9 U9"},
    {"RepeatCountZeroSendsNothing", u"{TAB 0}", ""},
    {"RepeatCountAppliesToALiteralCharacter", u"{+ 2}", "D187'+'/S U187'+'/S D187'+'/S U187'+'/S"},
    {"ModifierIsHeldAcrossTheRepeats", u"+{TAB 2}", "D16 D9/S U9/S D9/S U9/S U16/S"},
    {"RepeatCountOfAnUnknownNameSendsNothing", u"{BOGUS 3}", ""},
    {"NonNumericCountMakesAnUnknownName", u"{TAB x}", ""},
    {"ModifierBeforeAnUnknownNameIsDropped", u"+{BOGUS}a", "D65'a' U65'a'"},
    {"EmptyStringSendsNothing", u"", ""},
    {"LoneOpeningBraceSendsNothing", u"{", ""},
    {"EmptyBracesSendNothing", u"{}", ""},
    {"UnclosedBraceEndsTheString", u"a{TAB", "D65'a' U65'a'"},
    {"StrayClosingBraceIsIgnored", u"a}b", "D65'a' U65'a' D66'b' U66'b'"},
    {"StrayClosingParenthesisIsIgnored", u"a)b", "D65'a' U65'a' D66'b' U66'b'"},
    {"UnclosedGroupIsReleasedAtTheEnd", u"+(ab", "D16 D65'a'/S U65'a'/S D66'b'/S U66'b'/S U16/S"},
    {"TrailingModifierPressesNothing", u"a+", "D65'a' U65'a'"},
    {"ModifierWithNoKeyInAGroupIsDropped", u"(a+)b", "D65'a' U65'a' D66'b' U66'b'"},
};

class ParsesKeyString : public testing::TestWithParam<ParseCase> {};

TEST_P(ParsesKeyString, IntoKeyEvents)
{
    const QString keys = QString::fromUtf16(GetParam().keys);
    EXPECT_EQ(describe(KeyStringParser::parse(keys)).toStdString(), GetParam().events);
}

INSTANTIATE_TEST_SUITE_P(KeyStringParser, ParsesKeyString, testing::ValuesIn(parseCases),
                         [](const testing::TestParamInfo<ParseCase> &info) {
                             return std::string(info.param.behaviour);
                         });

TEST(KeyStringParser, HugeRepeatCountIsCutToTheMaximum)
{
    const QList<KeyEvent> events = KeyStringParser::parse(u"{TAB 99999999999999999999}");
    EXPECT_EQ(events.size(), 2 * KeyStringParser::maxRepeat);
}

// Every key that goes down comes up, never before it went down, and no modifier is left held.
void expectBalanced(const QList<KeyEvent> &events)
{
    QMap<int, int> down;
    for (const KeyEvent &event : events) {
        const int change = event.type == KeyEvent::Type::Down ? 1 : -1;
        down[event.code] += change;
        ASSERT_GE(down[event.code], 0) << "code " << event.code << " up before down";
    }
    for (auto it = down.cbegin(); it != down.cend(); ++it)
        EXPECT_EQ(it.value(), 0) << "code " << it.key() << " left down";
}

TEST(KeyStringParser, MalformedStringsNeverFailAndReleaseEveryKey)
{
    const char16_t *strings[] = {
        u"{",     u"}",        u"(",       u")",       u"{{",          u"}}",          u"((((a",
        u"))))a", u"+^%",      u"+^%(",    u"{TAB",    u"{TAB 3",      u"{ 3}",        u"{TAB -1}",
        u"{{}}",  u"(+(^(%(a", u"{}}}}}}", u"~{~}~{~", u"%({NUMPAD1}", u"{TAB 00003}",
    };
    for (const char16_t *keys : strings) {
        SCOPED_TRACE(QString::fromUtf16(keys).toStdString());
        expectBalanced(KeyStringParser::parse(QString::fromUtf16(keys)));
    }
}

TEST(KeyStringParser, FiveHundredCharactersOfJunkNeverFailAndReleaseEveryKey)
{
    const char16_t characters[] = u"{}()+^%~ aZ9TABtab3\u00e9\u20ac\t\r\n\0";
    const QString alphabet = QString::fromUtf16(characters, std::size(characters));
    std::mt19937 random(20211201);
    std::uniform_int_distribution<int> pick(0, alphabet.size() - 1);
    for (int round = 0; round < 200; ++round) {
        QString junk;
        for (int i = 0; i < 500; ++i)
            junk += alphabet.at(pick(random));
        SCOPED_TRACE(junk.toStdString());
        expectBalanced(KeyStringParser::parse(junk));
    }
}

} // namespace
