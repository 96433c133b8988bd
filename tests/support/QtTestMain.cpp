#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

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
