#include "EditorWindow.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

// The editor's window with its questions answered by the test.
struct Editor {
    explicit Editor(const QString &path) :
        window(path, {.unsavedChanges =
                          [this](const QString &text) {
                              asked << text;
                              return answer;
                          },
                      .problem = [this](const QString &text) { problems << text; }})
    {
    }

    EditorWindow window;
    EditorWindow::Answer answer = EditorWindow::Answer::Cancel;
    QStringList asked;
    QStringList problems;
};

TEST(EditorWindow, TheHelpTextIsShownAndSaveWritesWhatWasTyped)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "QUICK HELP\r\nLine two\r\n");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    EXPECT_EQ(editor.window.text()->toPlainText(), "QUICK HELP\nLine two\n");
    EXPECT_EQ(editor.window.windowTitle(), "vendor1.txt - Velmora Office text editor");
    editor.window.text()->moveCursor(QTextCursor::End);
    QTest::keyClicks(editor.window.text(), "Call Anne first.");
    EXPECT_EQ(editor.window.windowTitle(), "vendor1.txt * - Velmora Office text editor");
    QTest::mouseClick(editor.window.saveButton(), Qt::LeftButton);
    EXPECT_EQ(readBytes(path), "QUICK HELP\nLine two\nCall Anne first.");
    EXPECT_EQ(editor.window.status()->text(), "Saved.");
    EXPECT_FALSE(editor.window.isModified());
    // Nothing but the file itself is left in the folder: the work file became the file.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"vendor1.txt"});
    EXPECT_TRUE(editor.problems.isEmpty());
}

TEST(EditorWindow, CtrlSSavesToo)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("notes.txt");
    writeBytes(path, "a");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    editor.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor.window));
    QTest::keyClicks(editor.window.text(), "b");
    QTest::keyClick(editor.window.text(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(readBytes(path), "ba");
}

TEST(EditorWindow, AFileNotThereYetOpensEmptyAndSaveCreatesIt)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    EXPECT_EQ(editor.window.text()->toPlainText(), "");
    EXPECT_EQ(editor.window.status()->text(), "New file: Save creates it.");
    QTest::keyClicks(editor.window.text(), "First line");
    ASSERT_TRUE(editor.window.save());
    EXPECT_EQ(readBytes(path), "First line");
}

TEST(EditorWindow, AFolderWithoutItsOwnHelpTextShowsTheInstalledOneAndWritesNothingUnsaved)
{
    QTemporaryDir folder;
    QTemporaryDir share;
    const QString path = folder.filePath("vendor1.txt");
    const QString installed = share.filePath("vendor1.txt");
    writeBytes(installed, "F5 finds a vendor.\r\nEsc closes.\r\n");
    {
        Editor editor(path);
        ASSERT_TRUE(editor.window.load(installed));
        EXPECT_EQ(editor.window.text()->toPlainText(), "F5 finds a vendor.\nEsc closes.\n");
        EXPECT_EQ(editor.window.status()->text(),
                  "The installed text is shown: Save makes this folder's own vendor1.txt.");
        EXPECT_TRUE(editor.window.close());
        EXPECT_TRUE(editor.asked.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(path));
    // Save makes the folder's own copy; the installed one stays as it was.
    Editor editor(path);
    ASSERT_TRUE(editor.window.load(installed));
    QTest::keyClicks(editor.window.text(), "Our own line. ");
    ASSERT_TRUE(editor.window.save());
    EXPECT_EQ(readBytes(path), "Our own line. F5 finds a vendor.\nEsc closes.\n");
    EXPECT_EQ(readBytes(installed), "F5 finds a vendor.\r\nEsc closes.\r\n");
}

TEST(EditorWindow, AFolderWithItsOwnHelpTextShowsItsOwn)
{
    QTemporaryDir folder;
    QTemporaryDir share;
    writeBytes(folder.filePath("vendor1.txt"), "Ours.");
    writeBytes(share.filePath("vendor1.txt"), "Installed.");
    Editor editor(folder.filePath("vendor1.txt"));
    ASSERT_TRUE(editor.window.load(share.filePath("vendor1.txt")));
    EXPECT_EQ(editor.window.text()->toPlainText(), "Ours.");
}

TEST(EditorWindow, AnOlderTextInTheWindowsCodePageReads)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "Caf\xe9 supplier\n");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    EXPECT_EQ(editor.window.text()->toPlainText(), QString::fromUtf8("Café supplier\n"));
}

TEST(EditorWindow, ABinaryFileIsRefusedAndLeftAsItIs)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("ap.mdb");
    writeBytes(path, QByteArray("SQLite format 3\0\0\1", 19));
    Editor editor(path);
    EXPECT_FALSE(editor.window.load());
    EXPECT_EQ(editor.problems, QStringList{path + " is not a text file; it is left as it is."});
    EXPECT_EQ(readBytes(path), QByteArray("SQLite format 3\0\0\1", 19));
}

TEST(EditorWindow, ASaveThatCannotBeWrittenKeepsTheTextAndSaysSo)
{
    QTemporaryDir dir;
    const QString folder = dir.filePath("help");
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/vendor1.txt");
    writeBytes(path, "old");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    QTest::keyClicks(editor.window.text(), "typed ");
    // The folder went away (a network folder no longer there, say).
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_FALSE(editor.window.save());
    ASSERT_EQ(editor.problems.size(), 1);
    EXPECT_TRUE(editor.problems.first().startsWith(path + " could not be saved: "));
    EXPECT_TRUE(editor.problems.first().endsWith(". The text is still here."));
    EXPECT_EQ(editor.window.text()->toPlainText(), "typed old");
    EXPECT_TRUE(editor.window.isModified());
}

TEST(EditorWindow, ClosingWithChangesAsksAndCancelKeepsTheWindowOpen)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "old");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    QTest::keyClicks(editor.window.text(), "new ");
    editor.answer = EditorWindow::Answer::Cancel;
    QTest::mouseClick(editor.window.closeButton(), Qt::LeftButton);
    EXPECT_EQ(editor.asked, QStringList{"Save the changes to vendor1.txt?"});
    EXPECT_TRUE(editor.window.isVisible());
    EXPECT_EQ(readBytes(path), "old");
}

TEST(EditorWindow, ClosingWithChangesAndSaveWritesThem)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "old");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    QTest::keyClicks(editor.window.text(), "new ");
    editor.answer = EditorWindow::Answer::Save;
    QTest::mouseClick(editor.window.closeButton(), Qt::LeftButton);
    EXPECT_FALSE(editor.window.isVisible());
    EXPECT_EQ(readBytes(path), "new old");
}

TEST(EditorWindow, ClosingWithChangesAndDiscardLeavesTheFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "old");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    QTest::keyClicks(editor.window.text(), "new ");
    editor.answer = EditorWindow::Answer::Discard;
    QTest::mouseClick(editor.window.closeButton(), Qt::LeftButton);
    EXPECT_FALSE(editor.window.isVisible());
    EXPECT_EQ(readBytes(path), "old");
}

TEST(EditorWindow, ClosingUnchangedAsksNothing)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("vendor1.txt");
    writeBytes(path, "old");
    Editor editor(path);
    ASSERT_TRUE(editor.window.load());
    editor.window.show();
    QTest::mouseClick(editor.window.closeButton(), Qt::LeftButton);
    EXPECT_TRUE(editor.asked.isEmpty());
    EXPECT_FALSE(editor.window.isVisible());
}

} // namespace
