#include <QApplication>
#include <QtGlobal>

#include <gtest/gtest.h>

// Runs the tests inside a QApplication. Without a platform chosen, the offscreen one is used,
// so that listing the tests at build time needs no display.
int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
