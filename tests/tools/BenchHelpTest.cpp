// Every benchmark program, started as a child process with --help, prints its usage on standard
// output and ends at once with exit code 0, without touching a data folder. (Standard error may
// carry the platform's own notes, such as a missing XDG_RUNTIME_DIR.)
#include <QProcess>
#include <QString>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

struct Program {
    const char *name;
    const char *path;
    const char *usage; // the start of the first line printed
};

void PrintTo(const Program &p, std::ostream *os)
{
    *os << p.name;
}

class BenchHelpTest : public ::testing::TestWithParam<Program> {};

TEST_P(BenchHelpTest, HelpPrintsTheUsageAndEndsWithExitCodeZero)
{
    const Program &program = GetParam();
    QProcess process;
    process.start(QString::fromUtf8(program.path), {QStringLiteral("--help")});
    ASSERT_TRUE(process.waitForStarted()) << program.path;
    ASSERT_TRUE(process.waitForFinished(60000)) << program.name << " did not end";
    const std::string out = process.readAllStandardOutput().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(out.rfind(program.usage, 0), 0u) << "standard output: " << out;
}

// The same program asked for something it cannot do still fails: --help is not a way to pass.
TEST(BenchHelpTest, AFolderThatIsNotThereIsStillAnError)
{
    QProcess process;
    process.start(QStringLiteral(APMASTER_BENCH_RUNNER), {QStringLiteral("/nonexistent/folder")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_THAT(process.readAllStandardError().toStdString(),
                ::testing::EndsWith("/nonexistent/folder is not a folder.\n"));
}

INSTANTIATE_TEST_SUITE_P(
    EveryBenchmark, BenchHelpTest,
    ::testing::Values(
        Program{"vendor", APMASTER_BENCH_VENDOR,
                "Usage: apmaster-bench-vendor [DATA_FOLDER [RUNS]]"},
        Program{"lists", APMASTER_BENCH_LISTS, "Usage: " APMASTER_BENCH_LISTS " [options] DIR"},
        Program{"forms", APMASTER_BENCH_FORMS,
                "Usage: apmaster-bench-forms DATA_FOLDER [--make-nec N]"},
        Program{"passes", APMASTER_BENCH_PASSES, "Usage: apmaster-bench-passes DATA_FOLDER [YEAR]"},
        Program{"runner", APMASTER_BENCH_RUNNER,
                "Usage: apmaster-bench-runner DATA_FOLDER [FROM TO] [--csv | --preview [--print]] "
                "[--report FILE]"},
        Program{"import", APMASTER_BENCH_IMPORT,
                "Usage: apmaster-bench-import [--rows N] [--table NAME] [--folder SOURCE]"},
        Program{"makejet", APMASTER_BENCH_MAKE_JET,
                "Usage: apmaster-bench-make-jet SOURCE.mdb TARGET.mdb TABLE ROWS"},
        Program{"picker", APMASTER_BENCH_PICKER,
                "Usage: apmaster-bench-picker DATA_FOLDER [--rounds N]"}),
    [](const ::testing::TestParamInfo<Program> &info) { return std::string(info.param.name); });

} // namespace
