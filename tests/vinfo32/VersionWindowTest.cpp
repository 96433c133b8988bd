// The window on the offscreen platform: Copy puts the shown text on the clipboard, Close and
// Escape close it.
#include "VersionWindow.h"
#include "VersionInfo.h"

#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

VersionInfo info(const QString &folder)
{
    return VersionInfo({"anne", "apmaster", "21.12.28a", 3}, folder,
                       [] { return QStringLiteral("21.12.28-1"); });
}

TEST(VersionWindow, CopyPutsTheShownTextOnTheClipboard)
{
    QTemporaryDir data;
    QGuiApplication::clipboard()->setText("before");
    VersionWindow window(info(data.path()));
    window.show();
    QTest::mouseClick(window.copyButton(), Qt::LeftButton);
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_EQ(copied, window.findChild<QPlainTextEdit *>("versionText")->toPlainText());
    EXPECT_TRUE(copied.startsWith("User:               anne\nProgram:            apmaster\n"
                                  "Version:            21.12.28a\nSystem user:        3\n"
                                  "Package:            apmaster 21.12.28-1\n"))
        << copied.toStdString();
}

TEST(VersionWindow, CopyToOfTheInfoPutsItsText)
{
    QTemporaryDir data;
    QGuiApplication::clipboard()->setText("before");
    const VersionInfo shown = info(data.path());
    shown.copyTo(QGuiApplication::clipboard());
    EXPECT_TRUE(
        QGuiApplication::clipboard()->text().contains("Engine:             SQLite files\n"));
}

TEST(VersionWindow, EscapeClosesTheWindow)
{
    QTemporaryDir data;
    VersionWindow window(info(data.path()));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_VERIFY(!window.isVisible());
}

TEST(VersionWindow, CloseClosesTheWindow)
{
    QTemporaryDir data;
    VersionWindow window(info(data.path()));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(window.closeButton(), Qt::LeftButton);
    QTRY_VERIFY(!window.isVisible());
}

} // namespace
