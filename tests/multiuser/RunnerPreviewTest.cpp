#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// Reports > Vendor list by name on a virtual display, as a user would: the module puts the
// request on the clipboard and starts cryprint.exe, here the project's runner behind a script
// that notes the title of the window it opens and closes it with Escape.
TEST(RunnerPreview, VendorListByNameOpensTheRunnersPreview)
{
    for (const char *tool : {"xvfb-run", "xdotool"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
            GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
    DataFolder folder;
    folder.addVendor(12, QStringLiteral("Paper Co"));
    folder.addVendor(3, QStringLiteral("Zebra Supplies"));
    const QString definition = QStringLiteral(CRYPRINT_DEFINITIONS "/rap001.rpt");
    ASSERT_TRUE(QFile::copy(definition, folder.file("rap001.rpt")));
    folder.writeProgram(
        "cryprint.exe",
        QStringLiteral("\"%1\" &\n"
                       "for i in $(seq 1 150); do\n"
                       "  w=$(xdotool search --name '^Vendor List$' 2>/dev/null | head -n 1)\n"
                       "  [ -n \"$w\" ] && break; sleep 0.2\n"
                       "done\n"
                       "[ -n \"$w\" ] && xdotool getwindowname \"$w\" > title.part\n"
                       "sleep 1; [ -n \"$w\" ] && xdotool key --window \"$w\" Escape\n"
                       "wait; echo \"exit $?\" >> title.part; mv title.part title.txt\n")
            .arg(QStringLiteral(CRYPRINT_PROGRAM)));
    QTemporaryDir locks;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    ModuleCopy copy(folder.path(), locks.path(), QStringLiteral("VDR99DEMO"), env,
                    {QStringLiteral("xvfb-run"), QStringLiteral("-a")});
    ASSERT_TRUE(copy.started()) << copy.startLines().join(" | ").toStdString();
    EXPECT_EQ(copy.send(QStringLiteral("menu rptbasica")), QStringList{});
    EXPECT_EQ(copy.send(QStringLiteral("wait title.txt")), QStringList{"found"});
    // The preview's caption, and the runner ended normally when Escape closed it.
    EXPECT_EQ(folder.readFile("title.txt"), "Vendor List\nexit 0\n");
    EXPECT_EQ(copy.quit(), 0);
}

} // namespace
