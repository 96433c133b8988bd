#include <QApplication>

#include <gtest/gtest.h>

// Widgets need an application object; every test program of the project starts with one.
int main(int argc, char **argv)
{
    // Tests run on the offscreen platform unless told otherwise (a screenshot run uses xcb).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
