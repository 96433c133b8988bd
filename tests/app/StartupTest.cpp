#include "app/PracticeColour.h"
#include "common/Colours.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"
#include "support/LogCapture.h"
#include "support/Module.h"
#include "support/SharedTestData.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSysInfo>

#include <gtest/gtest.h>

namespace {

class StartupTest : public ::testing::Test {
protected:
    DataFolder folder;
    Module module{folder.path()};

    QString staffLocation(const QString &user = QStringLiteral("ANNE"))
    {
        return folder
            .scalar("user.mdb", "select location from staff where username = '" + user + "'")
            .toString();
    }
    void setAccess(int a0, int a1, int a2, int a3)
    {
        folder.exec("config.mdb", QStringLiteral("update ap set apaccess0 = %1, apaccess1 = %2, "
                                                 "apaccess2 = %3, apaccess3 = %4")
                                      .arg(a0)
                                      .arg(a1)
                                      .arg(a2)
                                      .arg(a3));
    }
    QAction *entry(const char *name) { return module.window->action(QString::fromLatin1(name)); }
};

TEST_F(StartupTest, NoArgumentShowsCannotRunByItselfAndEnds)
{
    EXPECT_EQ(module.start(QString()), Startup::NotFromLauncher);
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "This module cannot be run by itself.\nClick OK to exit...");
    EXPECT_EQ(module.dialogs.last()->title, "Velmora Office Message");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_EQ(module.databases.openCount(), 0);
    EXPECT_FALSE(module.window->isVisible());
}

TEST_F(StartupTest, HashModuleCodeIsAcceptedAsVdr)
{
    EXPECT_EQ(module.start("#DR10ANNE"), std::nullopt);
    EXPECT_EQ(module.session.moduleCode, "VDR");
    EXPECT_EQ(module.session.userLevel, 10);
    EXPECT_EQ(module.session.userName, "ANNE");
}

TEST_F(StartupTest, ArgumentWithoutUserNameCannotRunByItself)
{
    EXPECT_EQ(module.start("VDR99"), Startup::NotFromLauncher);
    EXPECT_EQ(module.dialogs.last()->text,
              "This module cannot be run by itself.\nClick OK to exit...");
}

TEST_F(StartupTest, AnotherModulesCodeCannotRunByItself)
{
    EXPECT_EQ(module.start("APM99ANNE"), Startup::NotFromLauncher);
    EXPECT_EQ(module.dialogs.last()->text,
              "This module cannot be run by itself.\nClick OK to exit...");
}

TEST_F(StartupTest, LevelBelowFirstAccessLevelIsDenied)
{
    setAccess(20, 0, 0, 0);
    EXPECT_EQ(module.start("VDR19ANNE"), Startup::AccessDenied);
    EXPECT_EQ(module.dialogs.last()->text,
              "Access denied. See system administrator.\nClick OK to exit...");
    EXPECT_EQ(module.dialogs.last()->title, "Velmora Office Message");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Information);
    EXPECT_EQ(staffLocation(), "Main menu");
}

TEST_F(StartupTest, LevelEqualToFirstAccessLevelRuns)
{
    setAccess(20, 0, 0, 0);
    EXPECT_EQ(module.start("VDR20ANNE"), std::nullopt);
    EXPECT_TRUE(module.window->isVisible());
}

TEST_F(StartupTest, NonDigitLevelReadsAsZero)
{
    EXPECT_EQ(module.start("VDRxxANNE"), std::nullopt);
    EXPECT_EQ(module.session.userLevel, 0);
}

TEST_F(StartupTest, ArgumentTooShortToSplitEndsWithAnError)
{
    EXPECT_EQ(module.start("VDR9"), Startup::DatabaseError);
    EXPECT_EQ(module.dialogs.count(), 1);
    EXPECT_FALSE(module.window->isVisible());
}

TEST_F(StartupTest, LowerCaseYInPnetIsReadAsYAndActedOnAsN)
{
    folder.exec("config.mdb", "update ap set pnetyesno = 'y'");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.session.pnetYesNoRead, "Y");
    EXPECT_EQ(module.session.pnetYesNo, "N");
}

TEST_F(StartupTest, NullPnetReadsAsY)
{
    folder.exec("config.mdb", "update ap set pnetyesno = null");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.session.pnetYesNoRead, "Y");
    EXPECT_EQ(module.session.pnetYesNo, "N");
}

TEST_F(StartupTest, FunctionKeyTextsAreRead)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.session.functionKeyText[1], "Springfield");
    EXPECT_EQ(module.session.functionKeyText[6], "555-");
    EXPECT_EQ(module.session.functionKeyText[12], "");
}

TEST_F(StartupTest, EmptySettingsTableEndsTheProgram)
{
    folder.exec("config.mdb", "delete from ap");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_EQ(module.dialogs.count(), 1);
}

TEST_F(StartupTest, NullAccessLevelEndsTheProgram)
{
    folder.exec("config.mdb", "update ap set apaccess2 = null");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_TRUE(module.dialogs.last()->text.contains("Null"));
}

TEST_F(StartupTest, MissingConfigDatabaseEndsTheProgram)
{
    folder.removeDatabase("config.mdb");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_TRUE(module.dialogs.last()->text.contains("config.mdb"));
    EXPECT_FALSE(QFile::exists(folder.file("config.mdb")));
}

TEST_F(StartupTest, CanadianCompanyCaptionsProvinceAndCode)
{
    folder.createDatabase("canada.mdb");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_TRUE(module.window->canadianAddresses());
    EXPECT_EQ(module.window->controls().label1[5]->text(), "Province");
    EXPECT_EQ(module.window->controls().label1[6]->text(), "Code");
}

TEST_F(StartupTest, UsCompanyKeepsStateAndZipCaptions)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_FALSE(module.window->canadianAddresses());
    EXPECT_EQ(module.window->controls().label1[5]->text(), "State");
    EXPECT_EQ(module.window->controls().label1[6]->text(), "Zip");
}

TEST_F(StartupTest, CaptionIsUserNameAtVendors)
{
    ASSERT_EQ(module.start("VDR99DEMO"), std::nullopt);
    EXPECT_EQ(module.window->windowTitle(), "DEMO @ Vendors");
}

TEST_F(StartupTest, WindowStaysOnTopAndIsCentred)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_TRUE(module.window->isTopmost());
    const QRect screen = module.window->screen()->geometry();
    EXPECT_EQ(module.window->x(), screen.left() + (screen.width() - module.window->width()) / 2);
    EXPECT_EQ(module.window->y(), screen.top() + (screen.height() - module.window->height()) / 2);
}

TEST_F(StartupTest, Level99EnablesMergeVendors)
{
    ASSERT_EQ(module.start("VDR99DEMO"), std::nullopt);
    EXPECT_TRUE(entry("mnumergevendor")->isEnabled());
}

TEST_F(StartupTest, Level98DoesNotEnableMergeEvenAboveEveryAccessLevel)
{
    setAccess(1, 1, 1, 1);
    ASSERT_EQ(module.start("VDR98ANNE"), std::nullopt);
    EXPECT_FALSE(entry("mnumergevendor")->isEnabled());
}

TEST_F(StartupTest, BelowRecalculationLevelDisablesRecalcAndHidesYearEnd)
{
    setAccess(0, 0, 0, 50);
    ASSERT_EQ(module.start("VDR49ANNE"), std::nullopt);
    EXPECT_FALSE(entry("mnurecalc")->isEnabled());
    EXPECT_FALSE(module.window->menu("eoy")->menuAction()->isVisible());
}

TEST_F(StartupTest, AtRecalculationLevelEnablesRecalcAndShowsYearEnd)
{
    setAccess(0, 0, 0, 50);
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_TRUE(entry("mnurecalc")->isEnabled());
    EXPECT_TRUE(module.window->menu("eoy")->menuAction()->isVisible());
}

TEST_F(StartupTest, BelowSecondAccessLevelHidesChangeVendorNumber)
{
    setAccess(0, 60, 0, 0);
    ASSERT_EQ(module.start("VDR59ANNE"), std::nullopt);
    EXPECT_FALSE(entry("mnuchavennumber")->isVisible());
}

TEST_F(StartupTest, AtSecondAccessLevelShowsChangeVendorNumber)
{
    setAccess(0, 60, 0, 0);
    ASSERT_EQ(module.start("VDR60ANNE"), std::nullopt);
    EXPECT_TRUE(entry("mnuchavennumber")->isVisible());
}

TEST_F(StartupTest, StaffRowReadsVendorsWhileRunningAndAPMasterAfterClosing)
{
    ASSERT_EQ(module.start("VDR50anne"), std::nullopt);
    EXPECT_EQ(staffLocation(), "Vendors");
    EXPECT_EQ(module.session.userName, "ANNE");
    EXPECT_EQ(module.session.sysUser, 3);
    module.window->close();
    EXPECT_EQ(staffLocation(), "A/P Master");
}

TEST_F(StartupTest, StartsOnTheLookupPanelWithVendorNumberPreset)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    const auto &c = module.window->controls();
    EXPECT_TRUE(c.fralookup->isVisible());
    EXPECT_EQ(c.fralookup->title(), "Lookup by...");
    EXPECT_TRUE(c.Option1[0]->isChecked());
    EXPECT_TRUE(c.cmdlookup->isEnabled());
    EXPECT_TRUE(c.lookupinput->hasFocus() || QApplication::focusWidget() == c.lookupinput ||
                c.lookupinput->window()->focusWidget() == c.lookupinput);
}

TEST_F(StartupTest, LookupByNameCheckedPresetsVendorName)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    entry("byname")->trigger();
    EXPECT_TRUE(entry("byname")->isChecked());
    EXPECT_FALSE(entry("bynumber")->isChecked());
    module.window->openLookup();
    EXPECT_TRUE(module.window->controls().Option1[1]->isChecked());
}

TEST_F(StartupTest, OpensApAndGlAndKeepsThemOpen)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_TRUE(module.databases.isOpen("ap.mdb"));
    EXPECT_TRUE(module.databases.isOpen("gl.mdb"));
    EXPECT_FALSE(module.databases.isOpen("config.mdb"));
    EXPECT_FALSE(module.databases.isOpen("user.mdb"));
    EXPECT_TRUE(module.window->glaccounts().hasRecords());
}

TEST_F(StartupTest, StepsRunInOrder)
{
    LogCapture log;
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    QStringList numbers;
    for (const QString &line : log.lines("vendor.startup"))
        numbers << line.section(' ', 1, 1);
    EXPECT_EQ(numbers.join(','), "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15");
}

TEST_F(StartupTest, MissingApDatabaseShowsTheEngineErrorAndEnds)
{
    folder.removeDatabase("ap.mdb");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_TRUE(module.dialogs.last()->text.contains("ap.mdb"));
    EXPECT_FALSE(QFile::exists(folder.file("ap.mdb")));
}

TEST_F(StartupTest, EmptyApFileIsRefusedByNameAndLeftEmpty)
{
    SQLITE_FILES_ONLY();
    folder.removeDatabase("ap.mdb");
    folder.writeFile("ap.mdb", "");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text,
              "The file '" + folder.file("ap.mdb") +
                  "' is empty: it holds no company data. A company file is never empty; restore "
                  "it from a backup. The file was left as it is.");
    EXPECT_EQ(QFileInfo(folder.file("ap.mdb")).size(), 0);
    EXPECT_FALSE(QFile::exists(folder.file("ap.mdb-wal")));
}

TEST_F(StartupTest, FailedStartAfterTheLocationWasWrittenPutsTheUserBack)
{
    folder.removeDatabase("gl.mdb");
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_EQ(staffLocation(), "A/P Master");
}

TEST_F(StartupTest, MissingColumnOfACurrentFileIsCreatedAgain)
{
    folder.exec("ap.mdb", "alter table vendors drop column vcontact2email");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_TRUE(folder.hasColumn("ap.mdb", "vendors", "vcontact2email"));
}

TEST_F(StartupTest, AccessFileInPlaceOfGlIsNamedAndLeftAlone)
{
    const QString sample = SharedTestData::find("access/DateTestDatabase.mdb");
    SKIP_WITHOUT_SHARED_FILE(sample, "access/DateTestDatabase.mdb");
    SQLITE_FILES_ONLY();
    folder.removeDatabase("gl.mdb");
    ASSERT_TRUE(QFile::copy(sample, folder.file("gl.mdb")));
    const QByteArray before = folder.readFile("gl.mdb").toLatin1();
    EXPECT_EQ(module.start("VDR50ANNE"), Startup::DatabaseError);
    EXPECT_TRUE(module.dialogs.last()->text.contains("gl.mdb"));
    EXPECT_TRUE(module.dialogs.last()->text.contains("Microsoft Access"));
    EXPECT_EQ(folder.readFile("gl.mdb").toLatin1(), before);
}

// The practice colour comes from the first line of practice.dat.
struct PracticeCase {
    const char *line;
    int colour;
};

void PrintTo(const PracticeCase &c, std::ostream *os)
{
    *os << '"' << c.line << "\" -> " << std::hex << c.colour;
}

class PracticeColourTest : public ::testing::TestWithParam<PracticeCase> {};

TEST_P(PracticeColourTest, FirstLineChoosesTheColour)
{
    EXPECT_EQ(PracticeColour::fromLine(QString::fromLatin1(GetParam().line)), GetParam().colour);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, PracticeColourTest,
    ::testing::Values(PracticeCase{"  green  ", 0x00FF00}, PracticeCase{"GREEN", 0x00FF00},
                      PracticeCase{"&HFF&", 0x0000FF}, PracticeCase{"&H00C0C0C0&", 0xC0C0C0},
                      PracticeCase{"pink", 0x0000FF}, PracticeCase{"", 0x0000FF},
                      PracticeCase{"black", 0x000000}, PracticeCase{"Blue", 0xFF0000},
                      PracticeCase{"magenta", 0xFF00FF}, PracticeCase{"cyan", 0xFFFF00},
                      PracticeCase{"white", 0xFFFFFF}, PracticeCase{"yellow", 0x00FFFF},
                      PracticeCase{"&Hzz&", 0x0000FF}));

TEST_F(StartupTest, PracticeFileTurnsWindowAndPictureStripGreen)
{
    folder.writeFile("practice.dat", "  green  \nsecond line\n");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.window->backgroundColour(), 0x00FF00);
    EXPECT_EQ(module.window->controls().Picture1->palette().color(QPalette::Window),
              QColor(0, 255, 0));
}

TEST_F(StartupTest, EmptyPracticeFileKeepsRed)
{
    folder.writeFile("practice.dat", "");
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.window->backgroundColour(), 0x0000FF);
    EXPECT_EQ(module.window->palette().color(QPalette::Window), QColor(255, 0, 0));
}

TEST_F(StartupTest, WithoutPracticeFileTheDesignedColourStays)
{
    const QColor designed = module.window->palette().color(QPalette::Window);
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.window->palette().color(QPalette::Window), designed);
}

// Every caption of the screen in the text colour it is drawn with, against the window's
// background: the vendor frame's (locked and unlocked), the lookup panel's, the list options'.
class PracticeContrastTest : public ::testing::TestWithParam<const char *> {
protected:
    DataFolder folder;
    Module module{folder.path()};
};

TEST_P(PracticeContrastTest, CaptionsAreReadableOnThePracticeColour)
{
    folder.writeFile("practice.dat", GetParam());
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    const auto &c = module.window->controls();
    const QColor background = module.window->palette().color(QPalette::Window);
    std::vector<QWidget *> captions(c.label1.begin(), c.label1.end());
    captions.insert(captions.end(), c.Option1.begin(), c.Option1.end());
    captions.insert(captions.end(), c.optsort.begin(), c.optsort.end());
    for (bool locked : {true, false}) {
        c.fravendor->setEnabled(!locked);
        for (QWidget *caption : captions) {
            const QPalette::ColorGroup group =
                caption->isEnabled() ? QPalette::Active : QPalette::Disabled;
            const QColor text = caption->palette().color(group, QPalette::WindowText);
            EXPECT_GE(Colours::contrast(text, background), 4.5)
                << GetParam() << " " << caption->objectName().toStdString()
                << (locked ? " locked" : "");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Colours, PracticeContrastTest,
                         ::testing::Values("Blue", "black", "magenta", "red", "green", "yellow",
                                           "cyan", "white", "&H00800000&"));

TEST(ColourContrast, WhiteOnBlueAndBlackOnYellow)
{
    EXPECT_EQ(Colours::textOn(QColor(0, 0, 255)), QColor(Qt::white));
    EXPECT_EQ(Colours::textOn(QColor(255, 255, 0)), QColor(Qt::black));
    // Pure red reads slightly better in black (5.3) than in white (4.0).
    EXPECT_EQ(Colours::textOn(QColor(255, 0, 0)), QColor(Qt::black));
    EXPECT_NEAR(Colours::contrast(Qt::black, Qt::white), 21.0, 0.01);
    EXPECT_NEAR(Colours::contrast(Qt::white, QColor(0, 0, 255)), 8.59, 0.01);
}

TEST_F(StartupTest, SecondCopyShowsAlreadyRunningAndLeavesFirstCopyAndStaffAlone)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    folder.exec("user.mdb", "update staff set location = 'Checked' where username = 'ANNE'");
    {
        Module second(folder.path());
        EXPECT_EQ(second.start("VDR50ANNE"), Startup::AlreadyRunning);
        ASSERT_NE(second.dialogs.last(), nullptr);
        EXPECT_EQ(second.dialogs.last()->text, "The module is already running.");
        EXPECT_EQ(second.dialogs.last()->title, "Uh-oh...");
        EXPECT_EQ(second.dialogs.last()->icon, Dialogs::Icon::Information);
        EXPECT_EQ(second.databases.openCount(), 0);
    } // the refused copy goes away
    EXPECT_EQ(staffLocation(), "Checked");
    EXPECT_TRUE(module.window->isVisible());
    EXPECT_TRUE(module.databases.isOpen("ap.mdb"));
}

TEST_F(StartupTest, ACrashedCopysLockIsTakenOver)
{
    // What a copy that died leaves behind: a lock file naming a process that is gone.
    folder.writeFile("velmora-VDR.lock",
                     "2147483646\napmaster\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    EXPECT_EQ(module.start("VDR50ANNE"), std::nullopt);
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(StartupTest, ClosingWritesAPMasterEvenWhenNothingWasDone)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    folder.exec("user.mdb", "update staff set location = 'elsewhere'");
    module.window->close();
    EXPECT_EQ(staffLocation(), "A/P Master");
    EXPECT_EQ(
        folder.scalar("user.mdb", "select work from staff where username = 'ANNE'").toString(), "");
}

TEST_F(StartupTest, ClosingStepsRunInOrderAndLetGoOfEveryDatabase)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    LogCapture log;
    module.window->close();
    QStringList numbers;
    for (const QString &line : log.lines("vendor.closing"))
        numbers << line.section(' ', 1, 1);
    EXPECT_EQ(numbers.join(','), "1,2,3,4,5,6,7");
    EXPECT_FALSE(module.databases.isOpen("ap.mdb"));
    EXPECT_FALSE(module.databases.isOpen("gl.mdb"));
    EXPECT_FALSE(module.window->datavendor().isBound());
    EXPECT_TRUE(module.window->datavendor().recordSource().isEmpty());
    EXPECT_TRUE(module.window->datachecks().databaseName().isEmpty());
    EXPECT_TRUE(module.window->datainvoice().databaseName().isEmpty());
}

TEST_F(StartupTest, ClosingGoesOnWhenTheStaffFileIsGone)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    folder.removeDatabase("user.mdb");
    LogCapture log;
    module.window->close();
    EXPECT_EQ(log.lines("vendor.closing").filter("step 7").size(), 1);
    EXPECT_FALSE(module.databases.isOpen("ap.mdb"));
}

TEST_F(StartupTest, ExitButtonClosesThroughTheClosingSteps)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    module.window->controls().cmdexit->click();
    EXPECT_FALSE(module.window->isVisible());
    EXPECT_EQ(staffLocation(), "A/P Master");
}

TEST_F(StartupTest, FileMenuExitClosesThroughTheClosingSteps)
{
    ASSERT_EQ(module.start("VDR50ANNE"), std::nullopt);
    entry("exit")->trigger();
    EXPECT_FALSE(module.window->isVisible());
    EXPECT_EQ(staffLocation(), "A/P Master");
}

} // namespace

namespace {

// Every menu entry the module names exists, in the menu a bookkeeper looks for it in.
TEST(VendorMenus, EveryNamedEntryIsInItsMenu)
{
    DataFolder folder;
    Module module(folder.path());
    const std::pair<const char *, std::vector<const char *>> menus[] = {
        {"mnufile", {"exit"}},
        {"mnulookup", {"bynumber", "byname"}},
        {"mnureports",
         {"rptbasic", "rptbasica", "rptmaster", "rptmastera", "rptmail", "rptmaila", "rptfilelabel",
          "rptfilelabel67", "rpttopay", "rptunpaid", "rptpaid", "rptchecks", "mnudaterange",
          "mnuallinvoices", "pv1099", "prtsetup", "mnuprintmargins"}},
        {"mnu1099", {"rpt1099", "rpt1099int", "rpt1099div", "rpt1099nec", "mnueditprintspec"}},
        {"mnuutilities", {"mnurecalc", "mnuchavennumber", "mnumergevendor", "mnuversion"}},
        {"eoy", {"eoyzero"}},
    };
    for (const auto &[menuName, entries] : menus) {
        QMenu *menu = module.window->menu(QString::fromLatin1(menuName));
        ASSERT_NE(menu, nullptr) << menuName;
        for (const char *entry : entries) {
            QAction *action = module.window->action(QString::fromLatin1(entry));
            ASSERT_NE(action, nullptr) << entry;
            EXPECT_TRUE(menu->actions().contains(action)) << entry << " in " << menuName;
        }
    }
    EXPECT_FALSE(module.window->action("mnumergevendor")->isEnabled());
    EXPECT_FALSE(module.window->menu("eoy")->menuAction()->isVisible());
}

// Every control the module names exists under its own name.
TEST(VendorControls, EveryNamedControlExists)
{
    DataFolder folder;
    Module module(folder.path());
    const char *names[] = {
        "cmdadd",      "cmdmodify",   "cmdsave",  "cmddelete",       "cmdcancel",  "cmdlookup",
        "cmdprevious", "cmdnext",     "cmdudf",   "cmdhelp",         "cmdexit",    "fravendor",
        "fralookup",   "lookupinput", "cmdgo",    "cmdcancellookup", "cmdunpaid",  "cmdpaid",
        "cmdchecks",   "cmdnotes",    "cmdsplit", "grid1",           "grid2",      "notes",
        "frasplit",    "List1",       "List2",    "List3",           "helpwindow", "Picture1",
        "optsort_0",   "optsort_1"};
    for (const char *name : names)
        EXPECT_NE(module.window->findChild<QWidget *>(QString::fromLatin1(name)), nullptr) << name;
    for (int i = 0; i < 24; ++i) {
        EXPECT_NE(module.window->findChild<QLineEdit *>(QStringLiteral("Text1_%1").arg(i)),
                  nullptr);
        EXPECT_NE(module.window->findChild<QLabel *>(QStringLiteral("label1_%1").arg(i)), nullptr);
    }
    for (int i = 0; i < 7; ++i)
        EXPECT_NE(module.window->findChild<QRadioButton *>(QStringLiteral("Option1_%1").arg(i)),
                  nullptr);
    const char *captions[] = {"Vendor #", "Vendor Name", "Contact",   "Invoice #",
                              "Check #",  "Product",     "G/L Number"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(module.window->controls().Option1[i]->text(), QString::fromLatin1(captions[i]));
    const char *fields[24] = {"Vendor #",
                              "Name",
                              "Address 1",
                              "Address 2",
                              "City",
                              "State",
                              "Zip",
                              "Telephone",
                              "Fax",
                              "Contact-1",
                              "Tax ID",
                              "1099 Type",
                              "G/L Acct",
                              "YTD Purchases",
                              "Current unpaid $:",
                              "YTD Orders",
                              "90+ day balance",
                              "Terms",
                              "Our account #",
                              "Email-1",
                              "Cell/other-1",
                              "Contact-2",
                              "Email-2",
                              "Cell/other-2"};
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(module.window->controls().label1[i]->text(), QString::fromLatin1(fields[i]));
    EXPECT_EQ(module.window->controls().optsort[0]->text(), "Old to new");
    EXPECT_EQ(module.window->controls().optsort[1]->text(), "New to old");
}

} // namespace
