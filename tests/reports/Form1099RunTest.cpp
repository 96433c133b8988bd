#include "reports/Form1099Run.h"
#include "reports/ReportMenu.h"
#include "support/PdfWords.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QFile>
#include <QTemporaryDir>

namespace {

// A layout whose element N sits at an exact place: x = 0.5 + (N % 5) * 1.25 inches,
// y = 0.25 * N inches; the origin is (0.25, 0.5) inches. Forms printed two to a page are 3.5
// inches apart, three to a page 3.25.
QByteArray layoutFile(const char *caption, const char *spacingInches, const QStringList &texts = {})
{
    QByteArray text = QByteArray("\"") + caption + "\",0.25,0.5," + spacingInches + ",0\n";
    for (int n = 1; n <= 25; ++n) {
        const QString own = n - 1 < texts.size() ? texts[n - 1] : QStringLiteral("BOX%1").arg(n);
        text += QStringLiteral("\"%1\",%2,%3\n")
                    .arg(own)
                    .arg(0.5 + (n % 5) * 1.25)
                    .arg(0.25 * n)
                    .toLatin1();
    }
    return text;
}

constexpr int originX = 360;   // 0.25 inch
constexpr int originY = 720;   // 0.5 inch
constexpr int spacing = 5040;  // 3.5 inches, two forms a page
constexpr int spacing3 = 4680; // 3.25 inches, three forms a page
int elementX(int n)
{
    return originX + static_cast<int>((0.5 + (n % 5) * 1.25) * 1440);
}
int elementY(int n)
{
    return originY + 360 * n;
}

class Form1099RunTest : public VendorScreen {
protected:
    QTemporaryDir output;
    QString pdf = output.filePath("forms.pdf");

    void SetUp() override
    {
        qputenv("APMASTER_PRINT_PDF", pdf.toLocal8Bit());
        VendorScreen::SetUp();
        folder.exec("config.mdb", "delete from company");
        folder.exec("config.mdb",
                    "insert into company (compname, compaddr1, compaddr2, compcity, compstate, "
                    "compzip, compfederalid) values (' Riverside Members Club ', '12 Elm St', "
                    "'Floor 2', 'Riverside', 'ca', '92501', '95-1234567')");
        folder.writeFile("1099misc.lof", layoutFile("MISC 2026", "3.5"));
        folder.writeFile("1099div.lof", layoutFile("DIV 2026", "3.5"));
        folder.writeFile("1099nec.lof", layoutFile("NEC 2026", "3.25"));
        folder.writeFile("1099int.lof", layoutFile("INT 2026", "3.25"));
    }
    void TearDown() override { qunsetenv("APMASTER_PRINT_PDF"); }

    void addVendors() override
    {
        folder.exec("ap.mdb",
                    "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, vendytd, "
                    "vendaddr1, vendaddr2, vendcity, vendstate, vendzip) values "
                    "(101, ' Alpha Consulting ', '12-345-6789', 1, 1500, '1 Main St', 'Suite 5', "
                    "'Springfield', 'il', '62704'), "
                    "(102, 'Beta Design', '98-7654321', 1, 700.5, '2 Oak Ave', '', 'Peoria', 'IL', "
                    "'61602'), "
                    "(103, 'Gamma Rentals', '11-1111111', 4, 600, '3 Pine Rd', null, 'Joliet', "
                    "'IL', '60431'), "
                    "(104, 'Delta Small', '22-2222222', 1, 50, '4 Ash Ln', '', 'Normal', 'IL', "
                    "'61761'), "
                    "(105, 'Epsilon Zero', '33-3333333', 1, 0, '', '', '', '', ''), "
                    "(201, 'Fund Exactly', '44-4444444', 3, 600, '5 Bay St', '', 'Quincy', 'IL', "
                    "'62301'), "
                    "(202, 'Fund Over', '55-5555555', 3, 1200, '6 Bay St', '', 'Quincy', 'IL', "
                    "'62301'), "
                    "(301, 'Nec One', '66-0000001', 5, 1000, '7 Elm', 'Unit 1', 'Alton', 'IL', "
                    "'62002'), "
                    "(302, 'Nec Two', '66-0000002', 5, 2000, '8 Elm', '', 'Alton', 'IL', '62002'), "
                    "(303, 'Nec Three', '66-0000003', 5, 3000, '9 Elm', '', 'Alton', 'IL', "
                    "'62002'), "
                    "(304, 'Nec Four', '66-0000004', 5, 4000.25, '10 Elm', '', 'Alton', 'IL', "
                    "'62002'), "
                    "(401, 'Bank One', '77-0000001', 2, 900, '11 Elm', 'Vault 9', 'Galena', 'IL', "
                    "'61036'), "
                    "(402, 'Bank Two', '77-0000002', 2, 950, '12 Elm', '', 'Galena', 'IL', "
                    "'61036'), "
                    "(403, 'Bank Three', '77-0000003', 2, 1000, '13 Elm', '', 'Galena', 'IL', "
                    "'61036'), "
                    "(404, 'Bank Four', '77-0000004', 2, 1100, '14 Elm', '', 'Galena', 'IL', "
                    "'61036')");
    }
    // The answers: $600 or more?, restart?, [restart number], single vendor?, [number], print?
    void answers(std::initializer_list<int> yesNo, QStringList inputs = {})
    {
        module.dialogs.yesNoAnswers.assign(yesNo.begin(), yesNo.end());
        module.dialogs.inputAnswers.assign(inputs.begin(), inputs.end());
    }
    void menu(const char *name)
    {
        module.window->action(QString::fromLatin1(name))->trigger();
        QCoreApplication::processEvents();
    }
    int kind() { return module.window->reports().form1099Kind(); }
    // A printed item: its first word at the position (twips), and its whole text on the page.
    void expectItem(const PdfWords &words, int page, const QString &text, int x, int y)
    {
        const QString first = text.section(' ', 0, 0, QString::SectionSkipEmpty);
        EXPECT_NE(words.at(page, first, x / 20.0, y / 20.0), nullptr)
            << text.toStdString() << " at " << x << "," << y << " on page " << page
            << "; page reads: " << words.pageText(page).toStdString();
        EXPECT_TRUE(words.pageText(page).contains(text.simplified())) << text.toStdString();
    }
    static constexpr int Yes = Dialogs::Yes;
    static constexpr int No = Dialogs::No;
};

TEST_F(Form1099RunTest, MiscPrintsTwoFormsAPageWithTheAmountWhereTheTypeAndPlaceSay)
{
    answers({Yes, No, No, Yes});
    menu("rpt1099");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 2);
    // Page 1, first form: vendor 101, type 1, amount at element 3.
    expectItem(words, 0, "RIVERSIDE MEMBERS CLUB", elementX(19), elementY(19));
    expectItem(words, 0, "12 ELM ST", elementX(19), elementY(19) + 200);
    expectItem(words, 0, "FLOOR 2", elementX(19), elementY(19) + 400);
    expectItem(words, 0, "RIVERSIDE   CA   92501", elementX(19), elementY(19) + 600);
    expectItem(words, 0, "95-1234567", elementX(20), elementY(20));
    expectItem(words, 0, "123456789", elementX(21), elementY(21));
    expectItem(words, 0, "ALPHA CONSULTING", elementX(22), elementY(22));
    expectItem(words, 0, "1 MAIN ST", elementX(23), elementY(23));
    expectItem(words, 0, "SUITE 5", elementX(23), elementY(23) + 180);
    expectItem(words, 0, "SPRINGFIELD   IL   62704", elementX(24), elementY(24));
    expectItem(words, 0, "101", elementX(25), elementY(25));
    expectItem(words, 0, "1500.00", elementX(3), elementY(3));
    // Page 1, second form: vendor 102, type 1, amount at element 7, everything a spacing lower.
    expectItem(words, 0, "BETA DESIGN", elementX(22), elementY(22) + spacing);
    expectItem(words, 0, "RIVERSIDE MEMBERS CLUB", elementX(19), elementY(19) + spacing);
    expectItem(words, 0, "700.50", elementX(7), elementY(7) + spacing);
    EXPECT_TRUE(words.find(0, "700.50").size() == 1);
    // No second address line for 102: nothing printed 180 twips under its first line.
    EXPECT_EQ(words.find(0, "SUITE").size(), 1u);
    // Page 2: vendor 103, type 4, amount at element 14, first form again.
    expectItem(words, 1, "GAMMA RENTALS", elementX(22), elementY(22));
    expectItem(words, 1, "600.00", elementX(14), elementY(14));
    EXPECT_FALSE(words.pageText(1).contains("DELTA"));
    EXPECT_EQ(module.window->status(), "1099 printing complete");
    EXPECT_EQ(kind(), 0);
}

TEST_F(Form1099RunTest, TheFirstQuestionCountsTheVendorsAndIsTitledWithTheLayoutsCaption)
{
    answers({Yes, No, No, No});
    menu("rpt1099");
    ASSERT_GE(module.dialogs.shown.size(), 1u);
    EXPECT_EQ(module.dialogs.shown[0].title, "Federal 1099-MISC Selection - MISC 2026");
    EXPECT_EQ(module.dialogs.shown[0].text,
              "By default, the system will print 1099's for all vendors whose YTD\nbalance is "
              "greater than zero. (4 vendors). Would you like to print\n1099's for only vendors "
              "who are $600 or more instead? (3 vendors).");
    EXPECT_EQ(module.dialogs.shown[1].title, "Restart printing?");
    EXPECT_EQ(module.dialogs.shown[1].text, "Click YES to RESTART from a specific vendor number.");
    EXPECT_EQ(module.dialogs.shown[2].title, "Print 1099 for a single vendor?");
    EXPECT_EQ(module.dialogs.shown[2].text,
              "Click YES to print a 1099 for a single vendor. Click NO to print all vendors.");
    EXPECT_EQ(module.dialogs.shown[3].title, "Print 1099 for a single vendor?");
    EXPECT_EQ(module.dialogs.shown[3].text,
              "Click YES to print the 1099's; click NO to cancel printing.");
}

TEST_F(Form1099RunTest, NoAtTheFinalQuestionPrintsNothingAndEndsTheKind)
{
    module.session.messageText = "left over";
    answers({Yes, No, No, No});
    menu("rpt1099nec");
    EXPECT_FALSE(QFile::exists(pdf));
    EXPECT_EQ(kind(), 0);
    EXPECT_TRUE(module.session.messageText.isEmpty());
}

TEST_F(Form1099RunTest, NoAtTheSixHundredQuestionPrintsEveryVendorFromOneCent)
{
    answers({No, No, No, Yes});
    menu("rpt1099");
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 2);
    EXPECT_TRUE(words.pageText(1).contains("DELTA SMALL"));
    EXPECT_TRUE(words.pageText(1).contains("50.00"));
    for (int page = 0; page < 2; ++page)
        EXPECT_FALSE(words.pageText(page).contains("EPSILON"));
}

TEST_F(Form1099RunTest, NoAtTheSixHundredQuestionPrintsAVendorAtExactlyOneCent)
{
    folder.exec("ap.mdb",
                "insert into vendors (vendnumber, vendname, vendtaxid, vend1099type, vendytd, "
                "vendaddr1, vendaddr2, vendcity, vendstate, vendzip) values "
                "(106, 'Penny Vendor', '88-0000001', 1, 0.01, '1 Cent St', '', 'Cairo', 'IL', "
                "'62914'), "
                "(107, 'Under A Penny', '88-0000002', 1, 0.0099, '2 Cent St', '', 'Cairo', 'IL', "
                "'62914')");
    answers({No, No, No, Yes});
    menu("rpt1099");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    // 101, 102 | 103, 104 | 106: the penny vendor alone on the third page, first form.
    ASSERT_EQ(words.pages(), 3);
    expectItem(words, 2, "PENNY VENDOR", elementX(22), elementY(22));
    expectItem(words, 2, "0.01", elementX(3), elementY(3));
    for (int page = 0; page < 3; ++page)
        EXPECT_FALSE(words.pageText(page).contains("UNDER A PENNY")) << page;
}

// Each address line lies exactly its stated distance under the first, at the same left edge.
TEST_F(Form1099RunTest, AddressLinesLieTheirOffsetsUnderTheFirstLineToWithinFiveTwips)
{
    answers({Yes, No, No, Yes});
    menu("rpt1099");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    struct Line {
        const char *word;
        int element;
        int offset;
    };
    const Line payer[] = {{"12", 19, 200}, {"FLOOR", 19, 400}, {"RIVERSIDE", 19, 600}};
    const Line recipient[] = {{"SUITE", 23, 180}};
    auto check = [&](const char *firstWord, int element, int formOffset, const Line *lines,
                     size_t count) {
        const PdfWord *first = words.at(0, QString::fromLatin1(firstWord), elementX(element) / 20.0,
                                        (elementY(element) + formOffset) / 20.0);
        ASSERT_NE(first, nullptr) << firstWord;
        for (size_t i = 0; i < count; ++i) {
            const Line &l = lines[i];
            const PdfWord *w = words.at(0, QString::fromLatin1(l.word), elementX(l.element) / 20.0,
                                        (elementY(l.element) + formOffset + l.offset) / 20.0);
            ASSERT_NE(w, nullptr) << l.word;
            EXPECT_NEAR((w->yMin - first->yMin) * 20, l.offset, 5) << l.word;
            EXPECT_NEAR((w->xMin - first->xMin) * 20, 0, 5) << l.word;
        }
    };
    check("RIVERSIDE", 19, 0, payer, 3);
    check("RIVERSIDE", 19, spacing, payer, 3);
    check("1", 23, 0, recipient, 1);
    // And the second form lies one form spacing under the first.
    const PdfWord *top = words.at(0, "RIVERSIDE", elementX(19) / 20.0, elementY(19) / 20.0);
    const PdfWord *second =
        words.at(0, "RIVERSIDE", elementX(19) / 20.0, (elementY(19) + spacing) / 20.0);
    ASSERT_NE(top, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NEAR((second->yMin - top->yMin) * 20, spacing, 5);
}

TEST_F(Form1099RunTest, DividendsAtExactlySixHundredArePrintedButNotCounted)
{
    answers({Yes, No, No, Yes});
    menu("rpt1099div");
    EXPECT_EQ(module.dialogs.shown[0].title, "Federal 1099-DIV Selection - DIV 2026");
    EXPECT_TRUE(module.dialogs.shown[0].text.contains("zero. (2 vendors)"));
    EXPECT_TRUE(module.dialogs.shown[0].text.contains("instead? (1 vendors)."));
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 1);
    expectItem(words, 0, "FUND EXACTLY", elementX(22), elementY(22));
    expectItem(words, 0, "600.00", elementX(1), elementY(1));
    expectItem(words, 0, "FUND OVER", elementX(22), elementY(22) + spacing);
    expectItem(words, 0, "1200.00", elementX(1), elementY(1) + spacing);
    EXPECT_EQ(kind(), 0);
}

TEST_F(Form1099RunTest, NecPrintsThreeFormsAPageWithItsFourteenElements)
{
    folder.writeFile("1099nec.lof",
                     layoutFile("NEC 2026", "3.25",
                                {"X1", "BOX-TWO", "X3", "X4", "X5", "X6", "X7", "BOX-EIGHT"}));
    answers({Yes, No, No, Yes});
    menu("rpt1099nec");
    EXPECT_EQ(module.dialogs.shown[0].title, "Federal 1099-NEC Selection ");
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 2);
    for (int form = 0; form < 3; ++form) {
        const int down = form * spacing3;
        const QString name = QStringList{"NEC ONE", "NEC TWO", "NEC THREE"}[form];
        expectItem(words, 0, QStringList{"1000.00", "2000.00", "3000.00"}[form], elementX(1),
                   elementY(1) + down);
        expectItem(words, 0, "BOX-TWO", elementX(2), elementY(2) + down);
        expectItem(words, 0, "BOX-EIGHT", elementX(8), elementY(8) + down);
        expectItem(words, 0, "95-1234567", elementX(9), elementY(9) + down);
        expectItem(words, 0, QStringLiteral("66000000%1").arg(form + 1), elementX(10),
                   elementY(10) + down);
        expectItem(words, 0, name, elementX(11), elementY(11) + down);
        expectItem(words, 0, "ALTON   IL   62002", elementX(13), elementY(13) + down);
        expectItem(words, 0, QString::number(301 + form), elementX(14), elementY(14) + down);
    }
    // Street and second address line on one line.
    expectItem(words, 0, "7 ELM UNIT 1", elementX(12), elementY(12));
    expectItem(words, 0, "8 ELM", elementX(12), elementY(12) + spacing3);
    // The fourth vendor starts the second page.
    expectItem(words, 1, "NEC FOUR", elementX(11), elementY(11));
    expectItem(words, 1, "4000.25", elementX(1), elementY(1));
    EXPECT_EQ(module.window->status(), "1099 printing complete");
}

TEST_F(Form1099RunTest, InterestPrintsThreeFormsAPageAtItsOwnElementsWithoutAddressTwo)
{
    answers({Yes, No, No, Yes});
    menu("rpt1099int");
    EXPECT_EQ(module.dialogs.shown[0].title, "Federal 1099-INT Selection - INT 2026");
    EXPECT_TRUE(module.dialogs.shown[0].text.contains("zero. (4 vendors)"));
    EXPECT_TRUE(module.dialogs.shown[0].text.contains("instead? (4 vendors)."));
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 2);
    expectItem(words, 0, "RIVERSIDE MEMBERS CLUB", elementX(8), elementY(8));
    expectItem(words, 0, "RIVERSIDE   CA   92501", elementX(8), elementY(8) + 600);
    expectItem(words, 0, "95-1234567", elementX(9), elementY(9));
    expectItem(words, 0, "770000001", elementX(10), elementY(10));
    expectItem(words, 0, "BANK ONE", elementX(11), elementY(11));
    expectItem(words, 0, "11 ELM", elementX(12), elementY(12));
    expectItem(words, 0, "GALENA   IL   61036", elementX(13), elementY(13));
    expectItem(words, 0, "401", elementX(14), elementY(14));
    expectItem(words, 0, "900.00", elementX(1), elementY(1));
    expectItem(words, 0, "BANK THREE", elementX(11), elementY(11) + 2 * spacing3);
    EXPECT_FALSE(words.pageText(0).contains("VAULT"));
    expectItem(words, 1, "BANK FOUR", elementX(11), elementY(11));
    EXPECT_EQ(module.window->status(), "1099-INT printing complete");
    EXPECT_EQ(kind(), 0);
}

TEST_F(Form1099RunTest, RestartPrintsFromThatVendorOnAndNeverAsksForASingleVendor)
{
    answers({Yes, Yes, Yes}, {"102"});
    menu("rpt1099");
    ASSERT_EQ(module.dialogs.count("yesno"), 3);
    EXPECT_EQ(module.dialogs.shown[2].title, "Restart at Vendor #");
    EXPECT_EQ(module.dialogs.shown[2].text,
              "Type the vendor number to restart from and click OK\n\nClick CANCEL to cancel "
              "printing.");
    for (const auto &shown : module.dialogs.shown)
        EXPECT_NE(shown.title, "Print 1099 for a single vendor?");
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 1);
    EXPECT_FALSE(words.pageText(0).contains("ALPHA"));
    expectItem(words, 0, "BETA DESIGN", elementX(22), elementY(22));
    expectItem(words, 0, "GAMMA RENTALS", elementX(22), elementY(22) + spacing);
    expectItem(words, 0, "600.00", elementX(14), elementY(14) + spacing);
}

TEST_F(Form1099RunTest, ASingleVendorRunPrintsThatVendorAlone)
{
    answers({Yes, No, Yes, Yes}, {"302"});
    menu("rpt1099nec");
    EXPECT_EQ(module.dialogs.shown[3].title, "Vendor #");
    EXPECT_EQ(module.dialogs.shown[3].text,
              "Type the vendor number to print and click OK\nClick CANCEL to cancel printing.");
    const PdfWords words(pdf);
    ASSERT_EQ(words.pages(), 1);
    expectItem(words, 0, "NEC TWO", elementX(11), elementY(11));
    EXPECT_FALSE(words.pageText(0).contains("NEC ONE"));
    EXPECT_FALSE(words.pageText(0).contains("NEC THREE"));
}

TEST_F(Form1099RunTest, WhenNoVendorQualifiesTheJobIsEmptyAndTheRunEnds)
{
    folder.exec("ap.mdb", "update vendors set vendytd = 0 where vend1099type = 3");
    answers({Yes, No, No, Yes});
    menu("rpt1099div");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok());
    EXPECT_TRUE(words.words().empty());
    EXPECT_EQ(module.window->status(), "1099 printing complete");
    EXPECT_EQ(kind(), 0);
}

TEST_F(Form1099RunTest, VendorNumber99999IsTakenAnd100000IsRefusedWithAMessage)
{
    answers({Yes, No, Yes, Yes}, {"99999"});
    menu("rpt1099");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok());
    EXPECT_TRUE(words.words().empty());
    EXPECT_EQ(module.window->status(), "1099 printing complete");
    EXPECT_EQ(kind(), 0);
    QFile::remove(pdf);
    module.dialogs.shown.clear();
    answers({Yes, Yes}, {"100000"});
    menu("rpt1099");
    EXPECT_FALSE(QFile::exists(pdf));
    ASSERT_EQ(module.dialogs.count("message"), 1);
    EXPECT_EQ(module.dialogs.last()->text,
              "Vendor numbers go up to 99999; there is no vendor 100000. Nothing was printed.");
    EXPECT_EQ(module.dialogs.last()->title, "Restart at Vendor #");
    EXPECT_EQ(kind(), 1); // left as a run ended at a vendor-number question leaves it
}

TEST_F(Form1099RunTest, TheMessageGivesTheFileTheFormsWereWrittenTo)
{
    answers({Yes, No, No, Yes});
    menu("rpt1099div");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "The forms were written to " + pdf + ".");
}

TEST_F(Form1099RunTest, BadVendorNumbersEndTheRunAndPrintNothing)
{
    for (const char *typed : {"", "abc", "-1", "0", "0.5"}) {
        module.dialogs.shown.clear();
        answers({Yes, No, Yes, Yes}, {QString::fromLatin1(typed)});
        menu("rpt1099");
        EXPECT_FALSE(QFile::exists(pdf)) << typed;
        EXPECT_EQ(module.dialogs.count("yesno"), 3) << typed;
        EXPECT_EQ(module.dialogs.count("message"), 0) << typed;
    }
    module.dialogs.shown.clear();
    answers({Yes, Yes, Yes}, {"1234567890"});
    menu("rpt1099");
    EXPECT_FALSE(QFile::exists(pdf));
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "Vendor numbers go up to 99999; there is no vendor 1234567890. Nothing was printed.");
}

TEST_F(Form1099RunTest, AnNecRunCancelledAtAVendorNumberMakesTheNextMiscCommandNec)
{
    answers({Yes, No, Yes}, {""});
    menu("rpt1099nec");
    EXPECT_EQ(kind(), 5);
    module.dialogs.shown.clear();
    answers({Yes, No, No, Yes});
    menu("rpt1099");
    EXPECT_EQ(module.dialogs.shown[0].title, "Federal 1099-NEC Selection ");
    EXPECT_TRUE(PdfWords(pdf).pageText(0).contains("NEC ONE"));
}

TEST_F(Form1099RunTest, AMissingLayoutIsReportedAndNothingIsAsked)
{
    QFile::remove(folder.file("1099div.lof"));
    menu("rpt1099div");
    ASSERT_EQ(module.dialogs.shown.size(), 1u);
    EXPECT_EQ(module.dialogs.shown[0].text,
              "The 1099div.lof layout file is missing.\r\nUse the Adjust 1099 Forms printing "
              "option \r\nto create a new file from the SYStem file.");
    EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(Form1099RunTest, AMalformedLayoutStopsTheRunAndKeepsThePreviousLayout)
{
    answers({Yes, No, No, No});
    menu("rpt1099nec");
    ASSERT_EQ(module.window->reports().layout().text[0], "NEC 2026");
    folder.writeFile("1099nec.lof", "\"NEW\",1,1,3,0\n\"A\",x,1\n");
    module.dialogs.shown.clear();
    menu("rpt1099nec");
    ASSERT_EQ(module.dialogs.shown.size(), 1u);
    EXPECT_TRUE(module.dialogs.shown[0].text.contains("where a number belongs"));
    EXPECT_EQ(module.window->reports().layout().text[0], "NEC 2026");
}

} // namespace
