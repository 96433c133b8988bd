#include "keysend/ExtendedCharacters.h"
#include "keysend/CodePages.h"
#include "keysend/PlatformFamily.h"

#include <QString>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

struct ExpansionCase {
    const char *behaviour;
    const char16_t *text;
    const char16_t *expanded;
};

void PrintTo(const ExpansionCase &c, std::ostream *out)
{
    *out << c.behaviour;
}

const ExpansionCase expansionCases[] = {
    {"EAcuteBecomesAltWithKeypad130", u"\u00e9",
     u"{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}"},
    {"EmptyTextStaysEmpty", u"", u""},
    {"AsciiIsKept", u"Smith & Sons, 12 Main St.", u"Smith & Sons, 12 Main St."},
    {"KeyStringNotationIsKept", u"{TAB}+a", u"{TAB}+a"},
    {"EachExtendedCharacterIsExpandedInPlace", u"caf\u00e9s",
     u"caf{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}s"},
    {"CapitalCCedillaIsOem128", u"\u00c7", u"{NUMLOCK}%({NUMPAD1}{NUMPAD2}{NUMPAD8}){NUMLOCK}"},
    {"NTildeIsOem164", u"\u00f1", u"{NUMLOCK}%({NUMPAD1}{NUMPAD6}{NUMPAD4}){NUMLOCK}"},
    {"PoundSignIsOem156", u"\u00a3", u"{NUMLOCK}%({NUMPAD1}{NUMPAD5}{NUMPAD6}){NUMLOCK}"},
    {"DegreeSignIsOem248", u"\u00b0", u"{NUMLOCK}%({NUMPAD2}{NUMPAD4}{NUMPAD8}){NUMLOCK}"},
    {"NoBreakSpaceIsOem255", u"\u00a0", u"{NUMLOCK}%({NUMPAD2}{NUMPAD5}{NUMPAD5}){NUMLOCK}"},
    {"FlorinFromTheAnsiUpperRangeIsOem159", u"\u0192",
     u"{NUMLOCK}%({NUMPAD1}{NUMPAD5}{NUMPAD9}){NUMLOCK}"},
    {"AGraveWithoutOemCodeIsTypedAsPlainA", u"\u00c0", u"{NUMLOCK}%({NUMPAD6}{NUMPAD5}){NUMLOCK}"},
    {"RightQuoteWithoutOemCodeIsTypedAsApostrophe", u"\u2019",
     u"{NUMLOCK}%({NUMPAD3}{NUMPAD9}){NUMLOCK}"},
    {"EuroSignWithoutOemCodeIsTypedAsQuestionMark", u"\u20ac",
     u"{NUMLOCK}%({NUMPAD6}{NUMPAD3}){NUMLOCK}"},
    {"CharacterOutsideTheAnsiCodePageIsKept", u"\u03b1", u"\u03b1"},
};

class ExpandsExtendedCharacters : public testing::TestWithParam<ExpansionCase> {};

TEST_P(ExpandsExtendedCharacters, IntoAltKeypadSequences)
{
    const QString text = QString::fromUtf16(GetParam().text);
    EXPECT_EQ(expandExtendedCharacters(text), QString::fromUtf16(GetParam().expanded));
}

INSTANTIATE_TEST_SUITE_P(ExtendedCharacters, ExpandsExtendedCharacters,
                         testing::ValuesIn(expansionCases),
                         [](const testing::TestParamInfo<ExpansionCase> &info) {
                             return std::string(info.param.behaviour);
                         });

TEST(CodePages, EveryOemCodeAbove127ComesBackFromItsCharacter)
{
    for (int code = 128; code < 256; ++code) {
        SCOPED_TRACE(code);
        const QChar ch = CodePages::fromOem(code);
        ASSERT_FALSE(ch.isNull());
        EXPECT_EQ(CodePages::oemCode(ch), code);
    }
}

TEST(CodePages, EveryAnsiCodeComesBackFromItsCharacter)
{
    for (int code = 0; code < 256; ++code) {
        SCOPED_TRACE(code);
        EXPECT_EQ(CodePages::ansiCode(CodePages::fromAnsi(code)), code);
    }
}

TEST(CodePages, EuroSignIsAnsi128AndCharactersOutsideTheCodePageHaveNone)
{
    EXPECT_EQ(CodePages::ansiCode(QChar(0x20AC)), 128);
    EXPECT_EQ(CodePages::fromAnsi(128), QChar(0x20AC));
    EXPECT_EQ(CodePages::ansiCode(QChar(0x03B1)), -1);
    EXPECT_TRUE(CodePages::fromAnsi(256).isNull());
    EXPECT_TRUE(CodePages::fromOem(-1).isNull());
}

TEST(PlatformFamily, IsNtOnThisPlatform)
{
    EXPECT_EQ(platformFamily(), QStringLiteral("NT"));
}

TEST(PlatformFamily, Identifier1Is9xAndAnyOtherIsNt)
{
    EXPECT_EQ(platformFamilyOf(1), QStringLiteral("9x"));
    EXPECT_EQ(platformFamilyOf(2), QStringLiteral("NT"));
    EXPECT_EQ(platformFamilyOf(0), QStringLiteral("NT"));
}

} // namespace
