#include "PgTraceReader.h"

#include <gtest/gtest.h>

namespace {

using Kind = RanStatement::Kind;

// The client library's trace of a statement whose text holds a line break and of a second one,
// as PQtrace writes it (length of a Query: 4 + the text's bytes + its closing zero).
const QByteArray twoStatements =
    "2026-11-24 08:42:05.081888\tF\t29\tQuery\t \"select name\nfrom vendors\"\n"
    "2026-11-24 08:42:05.091300\tB\t30\tRowDescription\t 1 \"name\" 0 0 25 65535 -1 0\n"
    "2026-11-24 08:42:05.091329\tB\t14\tDataRow\t 1 4 'Anne'\n"
    "2026-11-24 08:42:05.091330\tB\t21\tDataRow\t 1 11 'two\\x0alines'\n"
    "2026-11-24 08:42:05.091340\tB\t13\tCommandComplete\t \"SELECT 2\"\n"
    "2026-11-24 08:42:05.091356\tB\t5\tReadyForQuery\t I\n"
    "2026-11-24 08:42:05.091369\tF\t11\tQuery\t \"commit\"\n"
    "2026-11-24 08:42:05.096243\tB\t11\tCommandComplete\t \"COMMIT\"\n"
    "2026-11-24 08:42:05.096247\tB\t5\tReadyForQuery\t I\n";

TEST(PgTraceReader, AStatementTextWithALineBreakIsReadWhole)
{
    const auto queries = PgTraceReader::queries(twoStatements);
    ASSERT_EQ(queries.size(), 2u);
    EXPECT_EQ(queries[0].text, QStringLiteral("select name\nfrom vendors"));
    EXPECT_EQ(queries[0].sentAt, QByteArray("2026-11-24 08:42:05.081888"));
    EXPECT_EQ(queries[1].text, QStringLiteral("commit"));
}

TEST(PgTraceReader, RowsCountForTheStatementTheyAnswer)
{
    const auto queries = PgTraceReader::queries(twoStatements);
    ASSERT_EQ(queries.size(), 2u);
    EXPECT_EQ(queries[0].rows, 2);
    EXPECT_EQ(queries[1].rows, 0);
}

TEST(PgTraceReader, AStatementTextHoldingAQuoteAndATraceLikeLineIsReadWhole)
{
    // The length, not the closing quote or the next line, says where the text ends.
    const QByteArray trace = "2026-11-24 08:42:05.000001\tF\t46\tQuery\t \"select '\"'\n"
                             "2026-11-24 08:42:05.000002\tB\t5\"\n"
                             "2026-11-24 08:42:05.000003\tF\t11\tQuery\t \"commit\"\n";
    const auto queries = PgTraceReader::queries(trace);
    ASSERT_EQ(queries.size(), 2u);
    EXPECT_EQ(queries[0].text, QStringLiteral("select '\"'\n2026-11-24 08:42:05.000002\tB\t5"));
    EXPECT_EQ(queries[1].text, QStringLiteral("commit"));
}

TEST(PgTraceReader, AnEmptyTraceHasNoStatements)
{
    EXPECT_TRUE(PgTraceReader::queries(QByteArray()).empty());
}

TEST(PgTraceReader, APrepareGivesItsNameAndText)
{
    const auto c = PgTraceReader::command(
        QStringLiteral("PREPARE qpsqlpstmt_1a AS select * from vendors where vendnumber = $1"));
    EXPECT_EQ(c.kind, Kind::Prepare);
    EXPECT_EQ(c.name, QStringLiteral("qpsqlpstmt_1a"));
    EXPECT_EQ(c.text, QStringLiteral("select * from vendors where vendnumber = $1"));
}

TEST(PgTraceReader, AnExecuteGivesItsNameAndValues)
{
    const auto c = PgTraceReader::command(QStringLiteral("EXECUTE qpsqlpstmt_1a (42, 'x')"));
    EXPECT_EQ(c.kind, Kind::Execute);
    EXPECT_EQ(c.name, QStringLiteral("qpsqlpstmt_1a"));
    EXPECT_EQ(c.values, (QStringList{QStringLiteral("42"), QStringLiteral("x")}));
}

TEST(PgTraceReader, AnExecuteWithoutValuesHasNone)
{
    const auto c = PgTraceReader::command(QStringLiteral("EXECUTE qpsqlpstmt_2"));
    EXPECT_EQ(c.kind, Kind::Execute);
    EXPECT_EQ(c.name, QStringLiteral("qpsqlpstmt_2"));
    EXPECT_TRUE(c.values.isEmpty());
}

TEST(PgTraceReader, ADeallocateAndAnyOtherStatementAreToldApart)
{
    EXPECT_EQ(PgTraceReader::command(QStringLiteral("DEALLOCATE qpsqlpstmt_2")).kind,
              Kind::Deallocate);
    const auto plain = PgTraceReader::command(QStringLiteral("select 'EXECUTE x'"));
    EXPECT_EQ(plain.kind, Kind::Plain);
    EXPECT_EQ(plain.text, QStringLiteral("select 'EXECUTE x'"));
}

TEST(PgTraceReader, ValuesAreReadAsTheServerReadsThem)
{
    const QStringList values = PgTraceReader::values(
        QStringLiteral("'O''Brien', 42, NULL, TRUE, FALSE, '', -1.5, 'a, b', "
                       "TIMESTAMP WITH TIME ZONE '2025-01-02T03:04:05.000Z', 'x'::bytea"));
    ASSERT_EQ(values.size(), 10);
    EXPECT_EQ(values[0], QStringLiteral("O'Brien"));
    EXPECT_EQ(values[1], QStringLiteral("42"));
    EXPECT_TRUE(values[2].isNull());
    EXPECT_EQ(values[3], QStringLiteral("true"));
    EXPECT_EQ(values[4], QStringLiteral("false"));
    EXPECT_FALSE(values[5].isNull());
    EXPECT_EQ(values[5], QStringLiteral(""));
    EXPECT_EQ(values[6], QStringLiteral("-1.5"));
    EXPECT_EQ(values[7], QStringLiteral("a, b"));
    EXPECT_EQ(values[8], QStringLiteral("2025-01-02T03:04:05.000Z"));
    EXPECT_EQ(values[9], QStringLiteral("x"));
}

} // namespace
