// The version window run as the module runs it: a child process in the company's data folder.
// --print writes the text instead of showing the window; dpkg-query is a stand-in on PATH.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int exitCode = -1;
    QStringList lines;
    QString error;
};

class VersionProgram : public ::testing::Test {
protected:
    QTemporaryDir data, fakes, config;

    // The stand-in dpkg-query answers as dpkg does for the package in the given state.
    void packageState(const QString &script)
    {
        QFile file(fakes.filePath("dpkg-query"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(("#!/bin/sh\n" + script + "\n").toUtf8());
        file.close();
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
    }

    void writeEngineFile(const QByteArray &text)
    {
        QFile file(data.filePath("database.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    Outcome runProgram(const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("PATH", fakes.path() + ":" + env.value("PATH"));
        env.insert("XDG_CONFIG_HOME", config.path());
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(data.path());
        process.start(QStringLiteral(VINFO32_PROGRAM), arguments);
        Outcome result;
        if (!process.waitForFinished(30000))
            return result;
        result.exitCode = process.exitCode();
        result.lines =
            QString::fromLocal8Bit(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        result.error = QString::fromLocal8Bit(process.readAllStandardError());
        return result;
    }

    // The module's command line, split as the module's process starter splits it.
    static QStringList printModuleLine()
    {
        return QStringList{"--print"} +
               QProcess::splitCommand(QStringLiteral("anne@apmaster 21.12.28a     SysUser: 3"));
    }

    void SetUp() override { packageState("exit 1"); }
};

TEST_F(VersionProgram, PrintShowsWhatTheModulePassesAndWhatASupportCallNeeds)
{
    const Outcome r = runProgram(printModuleLine());
    ASSERT_EQ(r.exitCode, 0) << r.error.toStdString();
    ASSERT_EQ(r.lines.size(), 11) << r.lines.join('\n').toStdString();
    EXPECT_EQ(r.lines[0], "User:               anne");
    EXPECT_EQ(r.lines[1], "Program:            apmaster");
    EXPECT_EQ(r.lines[2], "Version:            21.12.28a");
    EXPECT_EQ(r.lines[3], "System user:        3");
    EXPECT_EQ(r.lines[4], "Package:            not installed (built from source)");
    EXPECT_TRUE(r.lines[5].startsWith("Qt:                 Qt 6.")) << r.lines[5].toStdString();
    EXPECT_TRUE(QRegularExpression(
                    R"(^SQLite:             SQLite 3\.\d+\.\d+, Qt's SQLite driver available$)")
                    .match(r.lines[6])
                    .hasMatch())
        << r.lines[6].toStdString();
    EXPECT_TRUE(QRegularExpression(R"(^PostgreSQL client:  libpq \d+\.\d+(\.\d+)?$)")
                    .match(r.lines[7])
                    .hasMatch())
        << r.lines[7].toStdString();
    EXPECT_EQ(r.lines[8], "Data folder:        " + QFileInfo(data.path()).canonicalFilePath());
    EXPECT_EQ(r.lines[9], "Engine:             SQLite files");
    EXPECT_EQ(r.lines[10], "Settings file:      " + config.path() + "/Velmora/apmaster.conf");
}

TEST_F(VersionProgram, AnInstalledPackageShowsItsVersion)
{
    packageState("printf 'installed\\t21.12.28-1'");
    const Outcome r = runProgram(printModuleLine());
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.lines.contains("Package:            apmaster 21.12.28-1"));
}

TEST_F(VersionProgram, APackageRemovedWithItsConfigurationLeftCountsAsNotInstalled)
{
    packageState("printf 'config-files\\t21.12.28-1'");
    const Outcome r = runProgram(printModuleLine());
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.lines.contains("Package:            not installed (built from source)"));
}

TEST_F(VersionProgram, AFolderOnAServerNamesTheServerDatabaseAndUser)
{
    writeEngineFile("[postgresql]\nhost=db.office.lan\nport=5433\ndatabase=velmora\nuser=anne\n");
    const Outcome r = runProgram(printModuleLine());
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.lines.contains("Engine:             PostgreSQL server db.office.lan port 5433, "
                                 "database velmora, user anne"))
        << r.lines.join('\n').toStdString();
}

TEST_F(VersionProgram, AnUnusableEngineFileIsNamedWithItsFault)
{
    writeEngineFile("[postgresql]\nhost=db.office.lan\n");
    const Outcome r = runProgram(printModuleLine());
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.lines.contains("Engine:             database.ini cannot be used: database.ini "
                                 "names no host or no database."))
        << r.lines.join('\n').toStdString();
}

TEST_F(VersionProgram, TheWholeLineAsOneWordIsReadTheSame)
{
    const Outcome r = runProgram({"--print", "bob@apmaster 21.12.28a     SysUser: 12"});
    ASSERT_EQ(r.exitCode, 0) << r.error.toStdString();
    EXPECT_EQ(r.lines.value(0), "User:               bob");
    EXPECT_EQ(r.lines.value(3), "System user:        12");
}

TEST_F(VersionProgram, AnArgumentWithoutTheUserAndProgramIsRefusedWithTheExpectedForm)
{
    const Outcome r = runProgram({"--print", "anne", "21.12.28a", "SysUser:", "3"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.lines.isEmpty());
    EXPECT_EQ(r.error, "vinfo32: The version window expects \"USER@PROGRAM VERSION SysUser: "
                       "NUMBER\", not \"anne 21.12.28a SysUser: 3\".\n");
}

TEST_F(VersionProgram, ASystemUserThatIsNotANumberIsRefused)
{
    const Outcome r = runProgram({"--print", "anne@apmaster", "21.12.28a", "SysUser:", "x3"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.error.contains("not \"anne@apmaster 21.12.28a SysUser: x3\""))
        << r.error.toStdString();
}

TEST_F(VersionProgram, MissingTheSystemUserIsRefused)
{
    const Outcome r = runProgram({"--print", "anne@apmaster", "21.12.28a"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.lines.isEmpty());
}

} // namespace
