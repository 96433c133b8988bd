#include "support/DataFolder.h"
#include "support/PdfWords.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
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
        // Qt's own note about a test machine without a user runtime folder is not the program's.
        const QStringList lines = QString::fromUtf8(process.readAllStandardError()).split('\n');
        for (int n = 0; n < lines.size(); ++n)
            if (!lines[n].startsWith("QStandardPaths: "))
                result.err += lines[n] + (n + 1 < lines.size() ? "\n" : "");
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
    EXPECT_TRUE(
        result.out.startsWith("Year-end check: 1099-NEC, tax year 2025, threshold $600 or more\n"));
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
    for (const QStringList &arguments : {QStringList{"check", "--form", "W2", "--year", "2026"},
                                         QStringList{"check", "--form", "NEC", "--year", "26"},
                                         QStringList{"check", "--form", "NEC"},
                                         QStringList{"file", "--form", "NEC", "--year", "2026"},
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

QString readAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("(missing: %1)").arg(path);
    return QString::fromUtf8(file.readAll());
}

const char *const irisHeader =
    "Tax Year,Payer TIN Type,Payer TIN,Payer Name Line 1,Payer Address Line 1,Payer Address Line "
    "2,Payer City,Payer State,Payer ZIP Code,Recipient TIN Type,Recipient TIN,Recipient Name Line "
    "1,Recipient Address Line 1,Recipient Address Line 2,Recipient City,Recipient State,Recipient "
    "ZIP Code,Account Number,";

TEST_F(Form1099CommandTest, IrisWritesTheNecUploadWithQuotedNamesTinTypesAndAmounts)
{
    // The check flags vendor 103's tax id; corrected on the vendor screen to its SSN form.
    folder.exec("ap.mdb", "update vendors set vendtaxid = '123-45-6789', vendaddr2 = 'Suite 4, "
                          "Rear' where vendnumber = 103");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("nec.csv");
    const Run result = run({"iris", "--form", "NEC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "2 1099-NEC returns for 2026 written to " + path + ".\n");
    EXPECT_EQ(readAll(path),
              QString::fromUtf8(irisHeader) +
                  "Box 1 Nonemployee Compensation\r\n"
                  "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,92501,EIN,"
                  "951234567,\"Alpha, \"\"The\"\" Consulting\",1 Main St,,Peoria,IL,61602,101,"
                  "2500.00\r\n"
                  "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,92501,SSN,"
                  "123456789,Zoë Café,3 Rue Principale,\"Suite 4, Rear\",Ottawa,ON,K1A 0B6,103,"
                  "3000.00\r\n");
}

TEST_F(Form1099CommandTest, IrisPutsEachMiscTypeInItsOwnBox)
{
    folder.exec("ap.mdb", "delete from vendors");
    folder.exec("ap.mdb",
                "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, vendytd, "
                "vendaddr1, vendcity, vendstate, vendzip) values "
                "(11, 'Landlord LLC', '20-1234567', 1, 24000, '5 Bay St', 'Quincy', 'IL', "
                "'62301'), (12, 'Prize Co', '587-65-4321', 4, 2000.5, '6 Bay St', 'Quincy', "
                "'il', '62301-0001'), (13, 'Small Rent', '20-7654321', 1, 1999.99, '7 Bay St', "
                "'Quincy', 'IL', '62301')");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("misc.csv");
    const Run result = run({"iris", "--form", "MISC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(readAll(path),
              QString::fromUtf8(irisHeader) +
                  "Box 1 Rents,Box 3 Other Income\r\n"
                  "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,92501,EIN,"
                  "201234567,Landlord LLC,5 Bay St,,Quincy,IL,62301,11,24000.00,\r\n"
                  "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,92501,SSN,"
                  "587654321,Prize Co,6 Bay St,,Quincy,IL,62301-0001,12,,2000.50\r\n");
}

TEST_F(Form1099CommandTest, IrisSplitsTheVendorsIntoFilesOfAHundred)
{
    folder.exec("ap.mdb", "delete from vendors");
    QString values;
    for (int n = 1; n <= 101; ++n)
        values += QStringLiteral("%1(%2, 'Contractor %2', '10-%3', 5, %4, '%2 Elm', 'Alton', "
                                 "'IL', '62002')")
                      .arg(n == 1 ? "" : ", ")
                      .arg(n)
                      .arg(1000000 + n)
                      .arg(2000 + n);
    folder.exec("ap.mdb", "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, "
                          "vendytd, vendaddr1, vendcity, vendstate, vendzip) values " +
                              values);
    QTemporaryDir elsewhere;
    const Run result =
        run({"iris", "--form", "NEC", "--year", "2026", "--out", elsewhere.filePath("nec.csv")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_FALSE(QFile::exists(elsewhere.filePath("nec.csv")));
    const QStringList first = readAll(elsewhere.filePath("nec-1.csv")).split("\r\n");
    const QStringList second = readAll(elsewhere.filePath("nec-2.csv")).split("\r\n");
    ASSERT_EQ(first.size(), 102); // the header, 100 rows and the empty text after the last end
    ASSERT_EQ(second.size(), 3);
    EXPECT_TRUE(first[0].startsWith("Tax Year,"));
    EXPECT_EQ(first[100], "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,"
                          "92501,EIN,101000100,Contractor 100,100 Elm,,Alton,IL,62002,100,"
                          "2100.00");
    EXPECT_EQ(second[0], first[0]);
    EXPECT_EQ(second[1], "2026,EIN,957654321,RIVERSIDE MEMBERS CLUB,12 ELM ST,,RIVERSIDE,CA,"
                         "92501,EIN,101000101,Contractor 101,101 Elm,,Alton,IL,62002,101,"
                         "2101.00");
    EXPECT_FALSE(QFile::exists(elsewhere.filePath("nec-3.csv")));
}

TEST_F(Form1099CommandTest, IrisRefusesACompanyWithoutAFederalIdBeforeWritingAnything)
{
    folder.exec("ap.mdb", "update vendors set vendtaxid = '123-45-6789' where vendnumber = 103");
    folder.exec("config.mdb", "update company set compfederalid = '  '");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("nec.csv");
    const Run result = run({"iris", "--form", "NEC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "apmaster-1099: no IRIS file was written.\nThe company record has no "
                          "federal id: enter the company's employer identification number "
                          "(compfederalid in config.mdb).\n");
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
}

TEST_F(Form1099CommandTest, IrisRefusesVendorsWhoseTaxIdsCannotBeFiled)
{
    folder.exec("ap.mdb", "update vendors set vendtaxid = '12-34567' where vendnumber = 101");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("nec.csv");
    const Run result = run({"iris", "--form", "NEC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err,
              "apmaster-1099: no IRIS file was written.\n"
              "Vendor 101 (Alpha, \"The\" Consulting): the tax id \"12-34567\" is not 9 digits.\n"
              "Vendor 103 (Zoë Café): the tax id 123456789 does not show whether it is a social "
              "security number (###-##-####) or an employer identification number (##-#######)."
              "\n");
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(Form1099CommandTest, IrisHasNoLayoutForInterest)
{
    const Run result = run({"iris", "--form", "INT", "--year", "2026"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(result.err.contains("There is no IRIS upload layout for the 1099-INT of tax year "
                                    "2026"));
    EXPECT_FALSE(QFile::exists(folder.file("iris-1099-int-2026.csv")));
}

// A word of the PDF lies inside a box of the form (inches from the form's corner at 0.6, 0.5
// inches on the page; the PDF's words are in points).
::testing::AssertionResult inBox(const PdfWords &words, int page, const QString &text, double x,
                                 double y, double w, double h)
{
    const double left = (0.6 + x) * 72, top = (0.5 + y) * 72;
    const double right = left + w * 72, bottom = top + h * 72;
    for (const PdfWord *word : words.find(page, text))
        if (word->xMin >= left && word->xMax <= right && word->yMin >= top && word->yMax <= bottom)
            return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << text.toStdString() << " not inside (" << left << "," << top << ")-(" << right << ","
           << bottom << ") on page " << page << "; page reads "
           << words.pageText(page).toStdString();
}

TEST_F(Form1099CommandTest, CopyBDrawsOneFormAPageWithEachItemInItsBox)
{
    folder.exec("ap.mdb", "update vendors set vendtaxid = '123-45-6789' where vendnumber = 103");
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("copyb.pdf");
    const Run result = run({"copyb", "--form", "NEC", "--year", "2026", "--out", path});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "2 1099-NEC Copy B pages for 2026 written to " + path + ".\n");
    const PdfWords words(path);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 2);
    // Page 1: vendor 101. The payer's block and TIN, whole.
    EXPECT_TRUE(inBox(words, 0, "RIVERSIDE", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "ELM", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "92501", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "95-7654321", 0.0, 1.0, 1.8, 0.4));
    // The recipient's TIN by its last four digits only.
    EXPECT_TRUE(inBox(words, 0, "**-***4567", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(words.find(0, "95-1234567").empty());
    EXPECT_FALSE(words.pageText(0).contains("951234567"));
    EXPECT_TRUE(inBox(words, 0, "Consulting", 0.0, 1.4, 3.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "Main", 0.0, 1.9, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Peoria,", 0.0, 2.3, 3.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "61602", 0.0, 2.3, 3.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "101", 0.0, 2.75, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "2500.00", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "2026", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "1099-NEC", 3.6, 0.0, 1.6, 1.0));
    // The copy's name and its notice in the right-hand column.
    EXPECT_TRUE(inBox(words, 0, "Recipient", 5.2, 1.0, 2.1, 0.5));
    EXPECT_TRUE(inBox(words, 0, "important", 5.2, 1.4, 2.1, 1.4));
    EXPECT_TRUE(words.pageText(0).contains("This is important tax information and is being "
                                           "furnished to the IRS."));
    EXPECT_TRUE(words.pageText(0).contains("Nonemployee Compensation"));
    // The form's other boxes are drawn with their captions.
    EXPECT_TRUE(inBox(words, 0, "withheld", 3.6, 2.3, 1.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "parachute", 3.6, 1.9, 1.6, 0.4));
    // Page 2: vendor 103, its SSN masked.
    EXPECT_TRUE(inBox(words, 1, "***-**-6789", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(inBox(words, 1, "3000.00", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 1, "103", 0.0, 2.75, 3.6, 0.4));
    EXPECT_FALSE(words.pageText(1).contains("Consulting"));
}

TEST_F(Form1099CommandTest, CopyBIsRefusedForAVendorWithoutATaxIdAndWritesNothing)
{
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("copyb.pdf");
    const Run result = run({"copyb", "--form", "NEC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(result.err.startsWith("apmaster-1099: no Copy B was written.\nVendor 103"))
        << result.err.toStdString();
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
}

// Vendors of the MISC, INT and DIV forms beside the NEC vendors of the fixture.
void addInvestmentVendors(DataFolder &folder)
{
    folder.exec("ap.mdb",
                "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, vendytd, "
                "vendaddr1, vendcity, vendstate, vendzip) values "
                "(11, 'Landlord LLC', '20-1234567', 1, 24000, '5 Bay St', 'Quincy', 'IL', "
                "'62301'), (12, 'Prize Co', '587-65-4321', 4, 2000.5, '6 Bay St', 'Quincy', "
                "'il', '62301'), (21, 'First Savings', '36-1111222', 2, 10, '7 Bank St', "
                "'Aurora', 'IL', '60505'), (22, 'Tiny Interest', '36-3333444', 2, 9.99, "
                "'8 Bank St', 'Aurora', 'IL', '60505'), (31, 'Acme Shares', '41-5556667', 3, "
                "812.34, '9 Stock Way', 'Elgin', 'IL', '60120')");
}

TEST_F(Form1099CommandTest, CopyBOfTheMiscPutsRentsInBox1AndOtherIncomeInBox3)
{
    folder.exec("ap.mdb", "delete from vendors");
    addInvestmentVendors(folder);
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("misc.pdf");
    const Run result = run({"copyb", "--form", "MISC", "--year", "2026", "--out", path});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "2 1099-MISC Copy B pages for 2026 written to " + path + ".\n");
    const PdfWords words(path);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 2);
    // Page 1: vendor 11, type 1: rents in box 1, nothing in box 3.
    EXPECT_TRUE(inBox(words, 0, "RIVERSIDE", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "95-7654321", 0.0, 1.0, 1.8, 0.4));
    EXPECT_TRUE(inBox(words, 0, "**-***4567", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(words.find(0, "20-1234567").empty());
    EXPECT_TRUE(inBox(words, 0, "Landlord", 0.0, 1.4, 3.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "Bay", 0.0, 1.9, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Quincy,", 0.0, 2.3, 3.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "11", 0.0, 2.75, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "24000.00", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Rents", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Other", 3.6, 1.9, 1.6, 0.4));
    EXPECT_EQ(words.find(0, "$").size(), 1u); // the one amount, in box 1
    EXPECT_TRUE(inBox(words, 0, "1099-MISC", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "2026", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "1545-0115", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "Recipient", 5.2, 1.0, 2.1, 0.5));
    EXPECT_TRUE(inBox(words, 0, "important", 5.2, 1.4, 2.1, 1.4));
    EXPECT_TRUE(words.pageText(0).contains("This is important tax information and is being "
                                           "furnished to the IRS."));
    EXPECT_TRUE(words.pageText(0).contains("Miscellaneous Information"));
    // The other boxes with their captions, down to the state boxes of the last row.
    EXPECT_TRUE(inBox(words, 0, "Royalties", 3.6, 1.4, 1.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "attorney", 5.45, 3.15, 1.85, 0.45));
    EXPECT_TRUE(inBox(words, 0, "409A", 1.8, 3.6, 1.8, 0.45));
    EXPECT_TRUE(inBox(words, 0, "income", 5.45, 4.05, 1.85, 0.45));
    EXPECT_TRUE(inBox(words, 0, "(Rev.", 0.0, 4.5, 7.3, 0.3));
    // Page 2: vendor 12, type 4: other income in box 3, nothing in box 1.
    EXPECT_TRUE(inBox(words, 1, "***-**-4321", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(inBox(words, 1, "2000.50", 3.6, 1.9, 1.6, 0.4));
    EXPECT_EQ(words.find(1, "$").size(), 1u);
    EXPECT_TRUE(inBox(words, 1, "12", 0.0, 2.75, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 1, "IL", 0.0, 2.3, 3.6, 0.45)); // the state in capitals
    EXPECT_FALSE(words.pageText(1).contains("Landlord"));
}

TEST_F(Form1099CommandTest, CopyBOfTheIntPutsTheInterestInBox1ForVendorsFrom10Dollars)
{
    folder.exec("ap.mdb", "delete from vendors");
    addInvestmentVendors(folder);
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("int.pdf");
    const Run result = run({"copyb", "--form", "INT", "--year", "2026", "--out", path});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "1 1099-INT Copy B pages for 2026 written to " + path + ".\n");
    const PdfWords words(path);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 1); // 9.99 is under the $10 threshold
    EXPECT_TRUE(inBox(words, 0, "RIVERSIDE", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "95-7654321", 0.0, 1.0, 1.8, 0.4));
    EXPECT_TRUE(inBox(words, 0, "**-***1222", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(words.find(0, "36-1111222").empty());
    EXPECT_TRUE(inBox(words, 0, "Savings", 0.0, 1.4, 3.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "Bank", 0.0, 1.9, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Aurora,", 0.0, 2.3, 3.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "21", 0.0, 2.75, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "10.00", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Interest", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "1099-INT", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "2026", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "1545-0112", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "Recipient", 5.2, 1.0, 2.1, 0.5));
    EXPECT_TRUE(inBox(words, 0, "important", 5.2, 1.4, 2.1, 1.4));
    EXPECT_TRUE(words.pageText(0).contains("This is important tax information and is being "
                                           "furnished to the IRS."));
    EXPECT_TRUE(words.pageText(0).contains("Interest Income"));
    EXPECT_TRUE(inBox(words, 0, "penalty", 3.6, 1.4, 1.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "Savings", 3.6, 1.9, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "CUSIP", 5.45, 3.6, 1.85, 0.45));
    EXPECT_TRUE(inBox(words, 0, "State", 1.8, 4.05, 1.8, 0.45));
    EXPECT_TRUE(inBox(words, 0, "withheld", 5.45, 4.05, 1.85, 0.45));
}

TEST_F(Form1099CommandTest, CopyBOfTheDivPutsTheDividendsInBox1a)
{
    folder.exec("ap.mdb", "delete from vendors");
    addInvestmentVendors(folder);
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("div.pdf");
    const Run result = run({"copyb", "--form", "DIV", "--year", "2026", "--out", path});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "1 1099-DIV Copy B pages for 2026 written to " + path + ".\n");
    const PdfWords words(path);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 1);
    EXPECT_TRUE(inBox(words, 0, "RIVERSIDE", 0.0, 0.0, 3.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "95-7654321", 0.0, 1.0, 1.8, 0.4));
    EXPECT_TRUE(inBox(words, 0, "**-***6667", 1.8, 1.0, 1.8, 0.4));
    EXPECT_TRUE(words.find(0, "41-5556667").empty());
    EXPECT_TRUE(inBox(words, 0, "Acme", 0.0, 1.4, 3.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "Stock", 0.0, 1.9, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "Elgin,", 0.0, 2.3, 3.6, 0.45));
    EXPECT_TRUE(inBox(words, 0, "31", 0.0, 2.75, 3.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "812.34", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "1a", 3.6, 1.0, 1.6, 0.4));
    EXPECT_TRUE(inBox(words, 0, "1099-DIV", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "2026", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "1545-0110", 3.6, 0.0, 1.6, 1.0));
    EXPECT_TRUE(inBox(words, 0, "Recipient", 5.2, 1.0, 2.1, 0.5));
    EXPECT_TRUE(inBox(words, 0, "important", 5.2, 1.4, 2.1, 1.4));
    EXPECT_TRUE(words.pageText(0).contains("This is important tax information and is being "
                                           "furnished to the IRS."));
    EXPECT_TRUE(words.pageText(0).contains("Dividends and Distributions"));
    EXPECT_TRUE(inBox(words, 0, "1b", 3.6, 1.4, 1.6, 0.5));
    EXPECT_TRUE(inBox(words, 0, "199A", 0.0, 3.6, 1.8, 0.45));
    EXPECT_TRUE(inBox(words, 0, "Exempt-interest", 5.45, 4.05, 1.85, 0.45));
    EXPECT_TRUE(inBox(words, 0, "withheld", 5.45, 4.5, 1.85, 0.45));
    EXPECT_TRUE(inBox(words, 0, "(Rev.", 0.0, 4.95, 7.3, 0.3));
}

TEST_F(Form1099CommandTest, CopyBOfAFormWithoutVendorsIsRefusedAndWritesNothing)
{
    // The fixture's vendors are all NEC or none: the MISC has a layout but no recipient.
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath("misc.pdf");
    const Run result = run({"copyb", "--form", "MISC", "--year", "2026", "--out", path});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(
        result.err.contains("No vendor gets the 1099-MISC for 2026; no Copy B was written."))
        << result.err.toStdString();
    EXPECT_FALSE(result.err.contains("There is no plain-paper Copy B"));
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
}

// Every file of the data folder by name, with a digest of its bytes.
QMap<QString, QByteArray> contents(const QString &folder)
{
    QMap<QString, QByteArray> digests;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden); it.hasNext();) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            digests[it.fileName()] =
                QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
    }
    return digests;
}

TEST_F(Form1099CommandTest, AnOutputNamingADatabaseAFolderOrADeviceIsRefusedAndChangesNothing)
{
    folder.exec("ap.mdb", "delete from vendors where vendnumber = 103"); // iris and copyb can run
    const QString data = QDir(folder.path()).absolutePath();
    const QStringList targets{"ap.mdb", "gl.mdb", "../" + QDir(data).dirName() + "/ap.mdb", data,
                              "/dev/null"};
    for (const char *command : {"check", "iris", "copyb"}) {
        for (const QString &target : targets) {
            SCOPED_TRACE(std::string(command) + " --out " + target.toStdString());
            const QMap<QString, QByteArray> before = contents(data);
            const Run result = run({command, "--form", "NEC", "--year", "2026", "--out", target});
            EXPECT_EQ(result.exitCode, 3);
            EXPECT_TRUE(result.err.contains("The output file " + target + " is a"))
                << result.err.toStdString();
            EXPECT_EQ(contents(data), before);
        }
    }
}

} // namespace
