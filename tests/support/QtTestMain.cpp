#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

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

// A laptop's 1366x768 screen for Qt's offscreen platform (its own default is 800x600).
QByteArray laptopScreen(const QTemporaryDir &dir)
{
    const QString config = dir.filePath(QStringLiteral("screen.json"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly))
        return QByteArray("offscreen");
    file.write(R"({"screens": [{"name": "laptop", "x": 0, "y": 0, "width": 1366, "height": 768,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    return "offscreen:configfile=" + config.toLocal8Bit();
}

} // namespace

// Widgets need an application object; every test program of the project starts with one.
int main(int argc, char **argv)
{
    if (const int missing = serverMissing(argc, argv); missing >= 0)
        return missing;
    QTemporaryDir dir;
    // Tests run on the offscreen platform unless told otherwise (a screenshot run uses xcb), on
    // a 1366x768 screen, at the scaling APMASTER_TEST_SCALE names as QT_SCALE_FACTOR would.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty() || platform == "offscreen")
        qputenv("QT_QPA_PLATFORM", laptopScreen(dir));
    const QByteArray scale = qgetenv("APMASTER_TEST_SCALE");
    if (!scale.isEmpty())
        qputenv("QT_SCALE_FACTOR", scale);
    // Windows remember their size and place in the user's settings: the tests' own go to a
    // folder of their own (also for the programs they start), never to the user's.
    qputenv("XDG_CONFIG_HOME", dir.path().toLocal8Bit());
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
