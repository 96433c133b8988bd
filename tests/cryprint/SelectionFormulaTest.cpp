#include "SelectionFormula.h"
#include "RunnerCalls.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

// The parser's answers, its NumberedError turned into a message for the checks.
std::optional<SqlCondition> parsed(const QString &formula, const FieldResolver &resolve,
                                   QString &error)
{
    std::optional<SqlCondition> condition;
    error = failureOf([&] { condition = SelectionFormula::parse(formula, resolve); });
    return condition;
}

std::optional<QString> sorted(const QString &text, const FieldResolver &resolve, QString &error)
{
    std::optional<QString> column;
    error = failureOf([&] { column = SelectionFormula::sortField(text, resolve); });
    return column;
}

// The report's tables as a resolver sees them: invoices, checks and vendors with a few fields.
FieldAnswer resolve(const QString &table, const QString &field)
{
    static const QHash<QString, QStringList> tables = {
        {"invoices", {"vendnumber", "invstatus", "invdate", "invcheckdate", "invnumber"}},
        {"checks", {"chkpayeenum", "chkdate"}},
        {"vendors", {"vendnumber", "vendname"}}};
    const auto t = tables.constFind(table.toLower());
    if (t == tables.constEnd())
        return {{}, QStringLiteral("there is no table %1 in this report").arg(table)};
    if (!t->contains(field.toLower()))
        return {{}, QStringLiteral("table %1 has no field %2").arg(table, field)};
    return {QStringLiteral("\"%1\".\"%2\"").arg(table.toLower(), field.toLower()), {}};
}

struct Formula {
    const char *name;
    const char *formula;
    const char *sql;
    QVariantList values;
};

class ModuleFormula : public ::testing::TestWithParam<Formula> {};

// Every formula shape the report menu writes, for vendor 12 and the dates of 2024 (a cancelled
// date prompt gives 0 and 0).
TEST_P(ModuleFormula, BecomesAConditionWithBoundValues)
{
    QString error;
    const auto condition = parsed(QString::fromUtf8(GetParam().formula), resolve, error);
    ASSERT_TRUE(condition) << error.toStdString();
    EXPECT_EQ(condition->sql.toStdString(), GetParam().sql);
    EXPECT_EQ(condition->values, GetParam().values);
}

INSTANTIATE_TEST_SUITE_P(
    Menu, ModuleFormula,
    ::testing::Values(
        Formula{"OpenInvoices",
                "{invoices.vendnumber} = 12 and {invoices.invstatus} >= 1 and "
                "{invoices.invstatus} <= 3",
                "(((\"invoices\".\"vendnumber\" = ?) AND (\"invoices\".\"invstatus\" >= ?)) AND "
                "(\"invoices\".\"invstatus\" <= ?))",
                {12LL, 1LL, 3LL}},
        Formula{"PaidInvoicesWithNoBlankAfterTheEqualsSign",
                "{invoices.vendnumber} =12 and {invoices.invstatus} = 4 and "
                "{invoices.invcheckdate} >= 20240101 and {invoices.invcheckdate} <= 20241231",
                "((((\"invoices\".\"vendnumber\" = ?) AND (\"invoices\".\"invstatus\" = ?)) AND "
                "(\"invoices\".\"invcheckdate\" >= ?)) AND (\"invoices\".\"invcheckdate\" <= ?))",
                {12LL, 4LL, 20240101LL, 20241231LL}},
        Formula{"PaidInvoicesAllDates",
                "{invoices.vendnumber} =12 and {invoices.invstatus} = 4",
                "((\"invoices\".\"vendnumber\" = ?) AND (\"invoices\".\"invstatus\" = ?))",
                {12LL, 4LL}},
        Formula{"ChecksAllDates",
                "{checks.chkpayeenum} = 12",
                "(\"checks\".\"chkpayeenum\" = ?)",
                {12LL}},
        Formula{"ChecksInARange",
                "{checks.chkpayeenum} = 12 and {checks.chkdate} >= 20240101 and "
                "{checks.chkdate} <= 20241231",
                "(((\"checks\".\"chkpayeenum\" = ?) AND (\"checks\".\"chkdate\" >= ?)) AND "
                "(\"checks\".\"chkdate\" <= ?))",
                {12LL, 20240101LL, 20241231LL}},
        Formula{"AllInvoicesCancelled",
                "{invoices.invdate} >= 0 and {invoices.invdate} <= 0",
                "((\"invoices\".\"invdate\" >= ?) AND (\"invoices\".\"invdate\" <= ?))",
                {0LL, 0LL}},
        Formula{"Payments1099",
                "{invoices.invcheckdate} >= 20240101 and {invoices.invcheckdate} <= 20241231",
                "((\"invoices\".\"invcheckdate\" >= ?) AND (\"invoices\".\"invcheckdate\" <= ?))",
                {20240101LL, 20241231LL}},
        Formula{"VendorDateRange",
                "{invoices.vendnumber} = 12 and {invoices.invdate} >= 20240101 and "
                "{invoices.invdate} <= 20241231",
                "(((\"invoices\".\"vendnumber\" = ?) AND (\"invoices\".\"invdate\" >= ?)) AND "
                "(\"invoices\".\"invdate\" <= ?))",
                {12LL, 20240101LL, 20241231LL}}),
    [](const auto &info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Language, ModuleFormula,
    ::testing::Values(
        Formula{"OrBindsLooserThanAnd",
                "{invoices.invstatus} = 1 or {invoices.invstatus} = 2 and {invoices.invdate} > 5",
                "((\"invoices\".\"invstatus\" = ?) OR ((\"invoices\".\"invstatus\" = ?) AND "
                "(\"invoices\".\"invdate\" > ?)))",
                {1LL, 2LL, 5LL}},
        Formula{
            "ParenthesesAndNot",
            "not ({invoices.invstatus} <> 4) AND NOT {invoices.invdate} < 3",
            "((NOT (\"invoices\".\"invstatus\" <> ?)) AND (NOT (\"invoices\".\"invdate\" < ?)))",
            {4LL, 3LL}},
        Formula{"QuotedTextWithADoubledQuote",
                "{vendors.vendname} = 'O''Brien; drop table x'",
                "(\"vendors\".\"vendname\" = ?)",
                {QString("O'Brien; drop table x")}},
        Formula{"DoubleQuotedText",
                "{vendors.vendname} >= \"M\"",
                "(\"vendors\".\"vendname\" >= ?)",
                {QString("M")}},
        Formula{"DecimalAndNegativeNumbers",
                "{invoices.invstatus} > -1.5",
                "(\"invoices\".\"invstatus\" > ?)",
                {-1.5}},
        Formula{"FieldAgainstField",
                "{invoices.vendnumber} = {vendors.vendnumber}",
                "(\"invoices\".\"vendnumber\" = \"vendors\".\"vendnumber\")",
                {}},
        Formula{"TableAndFieldInAnyCase",
                "{Invoices.VendNumber}=7",
                "(\"invoices\".\"vendnumber\" = ?)",
                {7LL}}),
    [](const auto &info) { return std::string(info.param.name); });

struct BadFormula {
    const char *name;
    const char *formula;
    const char *message;
};

class BadSelectionFormula : public ::testing::TestWithParam<BadFormula> {};

TEST_P(BadSelectionFormula, IsAMessageNamingThePosition)
{
    QString error;
    EXPECT_FALSE(parsed(QString::fromUtf8(GetParam().formula), resolve, error));
    EXPECT_EQ(error.toStdString(), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, BadSelectionFormula,
    ::testing::Values(
        BadFormula{"UnknownTable", "{invoices.invstatus} = 1 and {vendorz.vendname} = 'A'",
                   "Selection formula, position 30: there is no table vendorz in this report."},
        BadFormula{"UnknownField", "{invoices.vendnumbr} = 12",
                   "Selection formula, position 1: table invoices has no field vendnumbr."},
        BadFormula{"MissingValue", "{invoices.vendnumber} = ",
                   "Selection formula, position 25: the formula ends where a field, number or "
                   "text is needed."},
        BadFormula{"MissingComparison", "{invoices.vendnumber} 12",
                   "Selection formula, position 23: a comparison (=, <>, <, <=, >, >=) is "
                   "needed, not \"12\"."},
        BadFormula{"UnclosedParenthesis", "({invoices.vendnumber} = 1",
                   "Selection formula, position 1: this \"(\" is never closed."},
        BadFormula{"UnclosedText", "{vendors.vendname} = 'abc",
                   "Selection formula, position 22: the text has no closing '."},
        BadFormula{"UnclosedField", "{vendors.vendname = 1",
                   "Selection formula, position 1: the field reference has no closing \"}\"."},
        BadFormula{"FieldOfThreeParts", "{a.b.c} = 1",
                   "Selection formula, position 1: \"{a.b.c}\" is not of the form {table.field}."},
        BadFormula{"SqlInjectedAsAWord", "{invoices.vendnumber} = 1; drop table invoices",
                   "Selection formula, position 26: the character \";\" is not understood."},
        BadFormula{"UnknownWord", "{invoices.vendnumber} = 1 xor 2",
                   "Selection formula, position 27: unknown word \"xor\"."},
        BadFormula{"TrailingClose", "{invoices.vendnumber} = 1)",
                   "Selection formula, position 26: \")\" was not expected here."},
        BadFormula{"NumberGluedToAWord", "{invoices.vendnumber} = 12abc",
                   "Selection formula, position 25: \"12a\" is not a number."},
        BadFormula{"OnlyAField", "{invoices.vendnumber}",
                   "Selection formula, position 22: the formula ends where a comparison (=, <>, "
                   "<, <=, >, >=) is needed."}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(SelectionFormulaTest, SortFieldsAscendAndDescend)
{
    QString error;
    EXPECT_EQ(sorted("+{vendors.vendname}", resolve, error).value_or("?"),
              "\"vendors\".\"vendname\" ASC");
    EXPECT_EQ(sorted("-{vendors.vendnumber}", resolve, error).value_or("?"),
              "\"vendors\".\"vendnumber\" DESC");
}

TEST(SelectionFormulaTest, ASortFieldWithoutSignOrWithMoreIsRefused)
{
    QString error;
    EXPECT_FALSE(sorted("{vendors.vendname}", resolve, error));
    EXPECT_EQ(error, "Sort field \"{vendors.vendname}\" must start with + (ascending) or - "
                     "(descending).");
    EXPECT_FALSE(sorted("+{vendors.vendname} {vendors.vendnumber}", resolve, error));
    EXPECT_TRUE(error.contains("was not expected here")) << error.toStdString();
    EXPECT_FALSE(sorted("+{vendors.vendnam}", resolve, error));
    EXPECT_TRUE(error.contains("table vendors has no field vendnam")) << error.toStdString();
}

TEST(SelectionFormulaTest, DeepNestingIsAMessageNotACrash)
{
    QString error;
    const QString formula = QString(5000, '(') + "{invoices.vendnumber} = 1" + QString(5000, ')');
    EXPECT_FALSE(parsed(formula, resolve, error));
    EXPECT_TRUE(error.contains("the formula nests too deeply")) << error.toStdString();
    const QString nots = QString("not ").repeated(5000) + "{invoices.vendnumber} = 1";
    EXPECT_FALSE(parsed(nots, resolve, error));
    EXPECT_TRUE(error.contains("the formula nests too deeply")) << error.toStdString();
}

// The statement's text may hold only resolved columns, placeholders, the six comparisons,
// AND, OR, NOT and parentheses, whatever the input.
bool onlyStructure(const QString &sql)
{
    static const QRegularExpression pieces(QStringLiteral(
        "\"(invoices|checks|vendors)\"\\.\"[a-z]+\"|\\?|<=|>=|<>|=|<|>|\\(|\\)|AND|OR|NOT|\\s"));
    QString rest = sql;
    rest.remove(pieces);
    return rest.isEmpty();
}

TEST(SelectionFormulaTest, HostileRandomInputNeverChangesTheStatementsStructure)
{
    const QStringList atoms = {"{invoices.vendnumber}",
                               "{vendors.vendname}",
                               "{checks.chkdate}",
                               "{nosuch.field}",
                               "{invoices.nosuch}",
                               "12",
                               "-3",
                               "1.5",
                               "'a''b'",
                               "\"x\"",
                               "'--'",
                               "'; drop table x'",
                               "=",
                               "<>",
                               "<",
                               "<=",
                               ">",
                               ">=",
                               "and",
                               "or",
                               "not",
                               "(",
                               ")",
                               "{",
                               "}",
                               "'",
                               "\"",
                               ";",
                               "--",
                               "/*",
                               "*/",
                               "select",
                               "union",
                               ".",
                               ",",
                               "\\",
                               "\n",
                               "~",
                               "0x1F",
                               "1e9",
                               "{invoices.vendnumber",
                               "{.}",
                               "{a.b.c}",
                               QString(QChar(0)),
                               QString(QChar(0x263A))};
    QRandomGenerator random(20240101);
    int parsedCount = 0;
    for (int round = 0; round < 20000; ++round) {
        QString formula;
        // Half the rounds are comparisons joined by and, or and not, with a hostile piece put
        // in at random in some of them; the other half are pieces at random.
        if (round % 2 == 0) {
            const QStringList fields = {"{invoices.vendnumber}", "{vendors.vendname}",
                                        "{checks.chkdate}"};
            const QStringList ops = {"=", "<>", "<", "<=", ">", ">="};
            const QStringList values = {"12",
                                        "-3",
                                        "1.5",
                                        "'O''Brien'",
                                        "\"x\"",
                                        "'; drop table x --'",
                                        "'a'' or ''1''=''1'"};
            const int parts = random.bounded(1, 5);
            for (int i = 0; i < parts; ++i) {
                if (i > 0)
                    formula += random.bounded(2) ? " and " : " or ";
                if (random.bounded(4) == 0)
                    formula += "not ";
                formula += fields[random.bounded(int(fields.size()))] + " " +
                           ops[random.bounded(int(ops.size()))] + " " +
                           values[random.bounded(int(values.size()))];
            }
            if (random.bounded(3) == 0)
                formula.insert(random.bounded(int(formula.size()) + 1),
                               atoms[random.bounded(int(atoms.size()))]);
        }
        const int count = round % 2 == 0 ? 0 : random.bounded(1, 12);
        for (int i = 0; i < count; ++i) {
            if (random.bounded(8) == 0)
                formula += QChar(char16_t(random.bounded(1, 0x3000)));
            else
                formula += atoms[random.bounded(int(atoms.size()))];
            if (random.bounded(2))
                formula += ' ';
        }
        QString error;
        const auto condition = parsed(formula, resolve, error);
        if (!condition) {
            ASSERT_TRUE(error.startsWith("Selection formula, position ")) << error.toStdString();
            continue;
        }
        ++parsedCount;
        ASSERT_TRUE(onlyStructure(condition->sql))
            << formula.toStdString() << " -> " << condition->sql.toStdString();
        ASSERT_EQ(condition->sql.count('?'), condition->values.size()) << formula.toStdString();
    }
    // The random formulas include valid ones, so the check above is not empty.
    EXPECT_GT(parsedCount, 5000);
}

} // namespace
