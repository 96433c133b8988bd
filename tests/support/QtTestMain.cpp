#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace {
// The tests of the PostgreSQL engine need the throwaway server that scripts/run-tests.sh starts.
// Without one (a plain ctest), each is reported as skipped for that one reason; where the run
// asks for the server (APMASTER_TEST_REQUIRE_SERVER, set by scripts/run-tests.sh and so by CI),
// a missing one is a failure.
int serverMissing(int argc, char **argv)
{
    // Listing the tests (CTest's discovery at build time) needs no server.
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--gtest_list_tests") == 0)
            return -1;
    if (qEnvironmentVariable("APMASTER_TEST_ENGINE") != QLatin1String("postgres") ||
        !qEnvironmentVariableIsEmpty("APMASTER_TEST_POSTGRES_HOST"))
        return -1;
    if (!qEnvironmentVariableIsEmpty("APMASTER_TEST_REQUIRE_SERVER")) {
        std::printf("[  FAILED  ] This run requires the PostgreSQL server, but "
                    "APMASTER_TEST_POSTGRES_HOST names none.\n");
        return 1;
    }
    std::printf("[  SKIPPED ] No PostgreSQL server for the server's tests: "
                "APMASTER_TEST_POSTGRES_HOST is not set (scripts/run-tests.sh starts one).\n");
    return 0;
}
} // namespace

// Widgets need an application object; every test program of the project starts with one.
int main(int argc, char **argv)
{
    if (const int missing = serverMissing(argc, argv); missing >= 0)
        return missing;
    // Tests run on the offscreen platform unless told otherwise (a screenshot run uses xcb).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
