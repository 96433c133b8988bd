// The server's tests without a server: a plain ctest reports them as skipped for one reason, a
// run that requires the server (scripts/run-tests.sh) fails them. Checked on this very program,
// started again as a child process the way CTest starts a pg: test.
#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include <string>

namespace {

struct ChildRun {
    int exitCode;
    std::string out;
};

ChildRun runAsServerTest(bool requireServer)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("APMASTER_TEST_ENGINE"), QStringLiteral("postgres"));
    env.remove(QStringLiteral("APMASTER_TEST_POSTGRES_HOST"));
    env.remove(QStringLiteral("APMASTER_TEST_REQUIRE_SERVER"));
    if (requireServer)
        env.insert(QStringLiteral("APMASTER_TEST_REQUIRE_SERVER"), QStringLiteral("1"));
    QProcess process;
    process.setProcessEnvironment(env);
    // No test of the child's is chosen: what it prints comes from the check before them.
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_filter=-*")});
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput().toStdString()};
}

// CTest takes any output holding gtest's skip marker for a skip, a failure's message too: the
// child's output is compared whole and shown with the marker spelt apart.
std::string shown(std::string out)
{
    for (std::size_t at = out.find("SKIPPED"); at != std::string::npos; at = out.find("SKIPPED"))
        out.replace(at, 7, "S-K-I-P-P-E-D");
    return out;
}

TEST(ServerChoice, WithoutAServerTheServerTestsAreSkippedWithTheReason)
{
    const ChildRun run = runAsServerTest(false);
    EXPECT_EQ(run.exitCode, 0);
    const std::string expected = "[  SKIPPED ] No PostgreSQL server for the server's tests: "
                                 "APMASTER_TEST_POSTGRES_HOST is not set (scripts/run-tests.sh "
                                 "starts one).\n";
    EXPECT_TRUE(run.out == expected) << "the child printed: " << shown(run.out);
}

TEST(ServerChoice, WhenTheRunRequiresTheServerAMissingOneFails)
{
    const ChildRun run = runAsServerTest(true);
    EXPECT_EQ(run.exitCode, 1);
    const std::string expected = "[  FAILED  ] This run requires the PostgreSQL server, but "
                                 "APMASTER_TEST_POSTGRES_HOST names none.\n";
    EXPECT_TRUE(run.out == expected) << "the child printed: " << shown(run.out);
}

} // namespace
