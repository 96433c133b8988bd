#include "support/DataFolder.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// apmaster-1099 run as a child process in a company's data folder, on the engine the folder uses.
class Form1099CommandTest : public testing::Test {
protected:
    DataFolder folder;

    void SetUp() override
    {
        folder.exec("config.mdb", "delete from company");
        folder.exec("config.mdb",
                    "insert into company (compname, compaddr1, compaddr2, compcity, compstate, "
                    "compzip, compfederalid) values (' Riverside Members Club ', '12 Elm St', "
                    "'', 'Riverside', 'ca', '92501', '95-7654321')");
        folder.exec("ap.mdb",
                    "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, vendytd, "
                    "vendaddr1, vendcity, vendstate, vendzip) values "
                    "(101, 'Alpha, \"The\" Consulting', '95-1234567', 5, 2500, '1 Main St', "
                    "'Peoria', 'IL', '61602'), "
                    "(102, 'Beta Design', '98-7654321', 5, 1999.99, '2 Oak Ave', 'Peoria', 'IL', "
                    "'61602'), "
                    "(103, 'Zoë Café', '123456789', 5, 3000, '3 Rue Principale', 'Ottawa', 'ON', "
                    "'K1A 0B6'), "
                    "(104, 'Gamma Supplies', '', 0, 2000, '4 Pine Rd', 'Joliet', 'IL', '60431')");
    }

    struct Run {
        int exitCode = -1;
        QString out;
        QString err;
    };
    Run run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(APMASTER_1099_PROGRAM), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        Run result;
        result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        result.out = QString::fromUtf8(process.readAllStandardOutput());
        result.err = QString::fromUtf8(process.readAllStandardError());
        return result;
    }
};

const char *const necCheck2026 =
    "Year-end check: 1099-NEC, tax year 2026, threshold $2,000 or more\n"
    "Payer: RIVERSIDE MEMBERS CLUB, federal id 95-7654321\n"
    "\n"
    "Vendors that get the form: 2\n"
    "Vendor  Name                                Tax id               Amount\n"
    "   101  Alpha, \"The\" Consulting             95-1234567         2,500.00\n"
    "   103  Zoë Café                            123456789          3,000.00\n"
    "Total                                                          5,500.00\n"
    "\n"
    "Problems: 3\n"
    "   103  Zoë Café: the tax id 123456789 does not show whether it is a social security number "
    "(###-##-####) or an employer identification number (##-#######)\n"
    "   103  Zoë Café: not a US address (state \"ON\", ZIP \"K1A 0B6\")\n"
    "   104  Gamma Supplies: paid 2,000.00, at or over the $2,000 threshold of the 1099-NEC, but "
    "its 1099 type is None\n";

TEST_F(Form1099CommandTest, CheckListsTheFormsAndProblemsAndExitsWithOneWhenThereAreProblems)
{
    const Run result = run({"check", "--form", "NEC", "--year", "2026"});
    EXPECT_EQ(result.exitCode, 1) << result.err.toStdString();
    EXPECT_EQ(result.out, QString::fromUtf8(necCheck2026));
}

TEST_F(Form1099CommandTest, CheckOfAnEarlierYearUsesItsThresholdAndExitsWithZeroWhenClean)
{
    folder.exec("ap.mdb", "delete from vendors where vendnumber <> 102");
    const Run result = run({"check", "--form", "nec", "--year", "2025"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.startsWith(
        "Year-end check: 1099-NEC, tax year 2025, threshold $600 or more\n"));
    EXPECT_TRUE(result.out.contains("   102  Beta Design"));
    EXPECT_TRUE(result.out.endsWith("Problems: 0\nNone found.\n"));
}

TEST_F(Form1099CommandTest, OutWritesThePrintableTextToTheFile)
{
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("check.txt");
    const Run result = run({"check", "--form", "NEC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.out.isEmpty());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), QString::fromUtf8(necCheck2026));
}

TEST_F(Form1099CommandTest, TheIndexedAmountOfTheSiteSettingIsUsedForALaterYear)
{
    folder.writeFile("apmaster-1099.ini", "[indexed]\n2027=2600\n");
    const Run result = run({"check", "--form", "NEC", "--year", "2027"});
    EXPECT_TRUE(result.out.startsWith(
        "Year-end check: 1099-NEC, tax year 2027, threshold $2,600 or more\n"))
        << result.out.toStdString();
    EXPECT_TRUE(result.out.contains("Vendors that get the form: 1\n"));
}

TEST_F(Form1099CommandTest, AWrongCommandLineGivesTheUsageAndExitCodeTwo)
{
    for (const QStringList &arguments :
         {QStringList{"check", "--form", "W2", "--year", "2026"},
          QStringList{"check", "--form", "NEC", "--year", "26"},
          QStringList{"check", "--form", "NEC"}, QStringList{"file", "--form", "NEC", "--year",
                                                             "2026"},
          QStringList{"--form", "NEC", "--year", "2026"}}) {
        const Run result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(result.err.startsWith("apmaster-1099: ")) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
}

TEST_F(Form1099CommandTest, HelpNamesTheCommandsAndTheExitCodes)
{
    const Run result = run({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.contains("check"));
    EXPECT_TRUE(result.out.contains("--form <FORM>"));
    EXPECT_TRUE(result.out.contains("Exit codes: 0 done"));
}

TEST_F(Form1099CommandTest, AWrongSettingsFileEndsWithExitCodeThreeAndWritesNothing)
{
    folder.writeFile("apmaster-1099.ini", "[indexed]\n2027=2150\n");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("check.txt");
    const Run result = run({"check", "--form", "NEC", "--year", "2027", "--out", path});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "apmaster-1099: apmaster-1099.ini, line 2 (\"2027=2150\"): an indexed "
                          "threshold is whole dollars, a multiple of 100\n");
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
