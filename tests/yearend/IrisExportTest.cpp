#include "yearend/IrisExport.h"
#include "yearend/IrisTemplates.h"

#include <gtest/gtest.h>

namespace {

struct Field {
    const char *value;
    const char *written;
};

class CsvField : public testing::TestWithParam<Field> {};

TEST_P(CsvField, AFieldIsQuotedOnlyWhenItHoldsACommaAQuoteOrALineEnd)
{
    EXPECT_EQ(IrisExport::csvField(QString::fromUtf8(GetParam().value)),
              QString::fromUtf8(GetParam().written));
}

INSTANTIATE_TEST_SUITE_P(EachCase, CsvField,
                         testing::Values(Field{"Plain Name", "Plain Name"}, Field{"", ""},
                                         Field{"Smith, Jones", "\"Smith, Jones\""},
                                         Field{"The \"Best\" Co", "\"The \"\"Best\"\" Co\""},
                                         Field{"O'Brien", "O'Brien"}, Field{"Zoë Café", "Zoë Café"},
                                         Field{"Line\nTwo", "\"Line\nTwo\""},
                                         Field{"Line\rTwo", "\"Line\rTwo\""}));

TEST(IrisExport, ASplitUploadNumbersItsFilesBeforeTheExtension)
{
    EXPECT_EQ(IrisExport::fileNames("out/nec.csv", 1), QStringList{"out/nec.csv"});
    EXPECT_EQ(IrisExport::fileNames("out/nec.csv", 2),
              (QStringList{"out/nec-1.csv", "out/nec-2.csv"}));
    EXPECT_EQ(IrisExport::fileNames("nec", 2), (QStringList{"nec-1", "nec-2"}));
    EXPECT_EQ(IrisExport::defaultPath(TaxForm::Nonemployee, 2026), "iris-1099-nec-2026.csv");
}

TEST(IrisTemplates, NecAndMiscHaveLayoutsFrom2026AndIntAndDivNone)
{
    EXPECT_NE(IrisTemplates::find(TaxForm::Nonemployee, 2026), nullptr);
    EXPECT_NE(IrisTemplates::find(TaxForm::Nonemployee, 2030), nullptr);
    EXPECT_NE(IrisTemplates::find(TaxForm::Misc, 2026), nullptr);
    EXPECT_EQ(IrisTemplates::find(TaxForm::Nonemployee, 2025), nullptr);
    EXPECT_EQ(IrisTemplates::find(TaxForm::Interest, 2026), nullptr);
    EXPECT_EQ(IrisTemplates::find(TaxForm::Dividends, 2026), nullptr);
    EXPECT_EQ(IrisTemplates::rowLimit(), 100);
}

} // namespace
