#include "LaunchWindow.h"
#include "PreviewWindow.h"
#include "common/QtDialogs.h"
#include "frmmisc/UserFieldsWindow.h"
#include "support/VendorScreen.h"

#include <QApplication>
#include <QDir>
#include <QInputDialog>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>

namespace {

double scale()
{
    const QByteArray set = qgetenv("APMASTER_TEST_SCALE");
    return set.isEmpty() ? 1.0 : set.toDouble();
}

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// The whole window, its frame included, on the free part of the screen, also in the screen's
// own 1366x768 pixels: the device pixels a rectangle covers are its place and its size each
// scaled and rounded.
::testing::AssertionResult onScreen(const QWidget *w)
{
    const QRect frame = w->frameGeometry();
    const int right = qRound(frame.x() * scale()) + qRound(frame.width() * scale());
    const int bottom = qRound(frame.y() * scale()) + qRound(frame.height() * scale());
    if (available().contains(frame) && right <= 1366 && bottom <= 768)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << w->objectName().toStdString() << " at " << frame.x() << "," << frame.y() << " "
           << frame.width() << "x" << frame.height() << " on " << available().width() << "x"
           << available().height() << ", to device pixel " << right << "," << bottom;
}

void clearRememberedPlaces()
{
    QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "apmaster").clear();
}

TEST(Screen, TheTestScreenIs1366x768AtTheScalingSet)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    // 1366 / 1.5 is 910.67, rounded to 911 device-independent pixels.
    EXPECT_NEAR(screen->geometry().width() * scale(), 1366, 1);
    EXPECT_NEAR(screen->geometry().height() * scale(), 768, 1);
}

// The vendor screen as the launcher starts it.
class MainWindowFit : public VendorScreen {};

TEST_F(MainWindowFit, TheMainWindowLiesWhollyOnTheScreen)
{
    EXPECT_TRUE(onScreen(module.window));
    EXPECT_TRUE(module.window->isTopmost());
}

TEST_F(MainWindowFit, TheMainWindowIsCentredWhereItFitsAndOtherwiseFillsTheScreen)
{
    const QRect frame = module.window->frameGeometry();
    const QRect area = available();
    if (scale() == 1.0) {
        // 1024x740 fits: centred on the screen as the module always placed it,
        // ((1366 - 1024) / 2, (768 - 740) / 2).
        EXPECT_EQ(module.window->size(), QSize(1024, 740));
        EXPECT_EQ(frame.topLeft(), QPoint(171, 14));
        return;
    }
    // Too tall for the screen at every larger scaling: as tall as the screen, from its top (at
    // a fractional scaling less the last pixel, which covers part of a device pixel only).
    EXPECT_EQ(frame.top(), area.top());
    EXPECT_TRUE(onScreen(module.window));
    EXPECT_GE(frame.height(), area.height() - 1);
    if (frame.width() < area.width()) { // wide enough still at 125%: centred across
        EXPECT_LE(std::abs(frame.center().x() - area.center().x()), 1);
    } else {
        EXPECT_EQ(frame.left(), area.left());
    }
}

TEST_F(MainWindowFit, TheMenusAndButtonsOfTheMainWindowAreOnTheScreen)
{
    for (QWidget *w : {static_cast<QWidget *>(module.window->menuWidget()),
                       static_cast<QWidget *>(c().cmdadd)}) {
        const QRect global(w->mapToGlobal(QPoint(0, 0)), w->size());
        EXPECT_TRUE(available().contains(global)) << w->objectName().toStdString();
    }
}

TEST_F(MainWindowFit, EveryButtonOfTheStripIsInSightWithoutScrollingUpTo150Percent)
{
    if (scale() > 1.5)
        GTEST_SKIP() << "at 200% the strip is wider than the screen; it scrolls";
    const auto *scroller = module.window->findChild<QScrollArea *>("centralscroller");
    ASSERT_NE(scroller, nullptr);
    const QRect seen(scroller->viewport()->mapToGlobal(QPoint(0, 0)), scroller->viewport()->size());
    for (QPushButton *b :
         {c().cmdadd, c().cmdmodify, c().cmdsave, c().cmddelete, c().cmdcancel, c().cmdlookup,
          c().cmdprevious, c().cmdnext, c().cmdudf, c().cmdhelp, c().cmdexit}) {
        const QRect global(b->mapToGlobal(QPoint(0, 0)), b->size());
        EXPECT_TRUE(seen.contains(global)) << b->objectName().toStdString();
        const QString text = b->text().remove('&');
        EXPECT_GE(b->width(), b->fontMetrics().horizontalAdvance(text))
            << b->objectName().toStdString();
    }
}

TEST_F(MainWindowFit, TheUserFieldsWindowLiesWhollyOnTheScreen)
{
    clearRememberedPlaces();
    c().Text1[0]->setText(QStringLiteral("100"));
    c().cmdudf->click();
    UserFieldsWindow *w = module.window->userFields();
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(onScreen(w));
    // Resized larger than the screen by the user, it is brought back onto it.
    w->resize(available().size() * 2);
    EXPECT_TRUE(onScreen(w));
    clearRememberedPlaces();
}

// The module's dialogs over the vendor screen.
class DialogsFit : public VendorScreen {
protected:
    QtDialogs dialogs{nullptr};
    QRect shownFrame;
    int titleWidth = 0;

    void SetUp() override
    {
        VendorScreen::SetUp();
        dialogs.setParent(module.window);
    }
    // Notes where the next dialog lies once it is up, then closes it.
    void measureNextDialog()
    {
        QTimer::singleShot(0, [this] {
            ASSERT_TRUE(QTest::qWaitFor(
                [] {
                    QWidget *d = QApplication::activeModalWidget();
                    return d && d->isVisible();
                },
                5000));
            QWidget *dialog = QApplication::activeModalWidget();
            QCoreApplication::processEvents();
            shownFrame = dialog->frameGeometry();
            titleWidth = dialog->fontMetrics().horizontalAdvance(dialog->windowTitle());
            EXPECT_TRUE(dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                box->defaultButton() ? box->defaultButton()->click()
                                     : box->buttons().first()->click();
            else
                qobject_cast<QDialog *>(dialog)->reject();
        });
    }
};

TEST_F(DialogsFit, AShortMessageUnderALongTitleIsWideEnoughForTheWholeTitle)
{
    measureNextDialog();
    dialogs.message(QStringLiteral("Invalid."), Dialogs::Icon::Exclamation,
                    QStringLiteral("Invalid General Ledger account number for this vendor"));
    EXPECT_GT(titleWidth, 0);
    EXPECT_GE(shownFrame.width(), titleWidth + 96);
    EXPECT_TRUE(available().contains(shownFrame));
}

TEST_F(DialogsFit, AYesNoQuestionUnderALongTitleIsWideEnoughForTheWholeTitle)
{
    measureNextDialog();
    dialogs.yesNo(QStringLiteral("Save?"),
                  QStringLiteral("Multi-User concern... another user changed this vendor"));
    EXPECT_GE(shownFrame.width(), titleWidth + 96);
    EXPECT_TRUE(available().contains(shownFrame));
}

TEST_F(DialogsFit, TheLongestMessagesOfTheModuleLieWhollyOnTheScreen)
{
    measureNextDialog();
    dialogs.message(QStringLiteral("The database does not have the required fields \r\n"
                                   "to store the miscellaneous data. Please download \r\n"
                                   "the most recent DBUPDATE.DAT file and update your \r\n"
                                   "databases. Then you may use this module. Click EXIT. "),
                    Dialogs::Icon::Critical, QStringLiteral("Cannot Continue"));
    EXPECT_TRUE(available().contains(shownFrame)) << shownFrame.y() << " " << shownFrame.height();

    // An engine's error of a few hundred characters on one line is wrapped, not cut.
    measureNextDialog();
    dialogs.message(
        QStringLiteral("Error 3260: ") +
            QStringLiteral("database table is locked by another connection; ").repeated(8) +
            QStringLiteral("\nIf this keeps happening, call Velmora Data."),
        Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
    EXPECT_TRUE(available().contains(shownFrame))
        << shownFrame.x() << " " << shownFrame.width() << " " << shownFrame.height();
}

TEST_F(DialogsFit, AnInputBoxLiesWhollyOnTheScreen)
{
    measureNextDialog();
    dialogs.input(QStringLiteral("Type the new description for this data field and click OK."),
                  QStringLiteral("Misc field# 1"), QStringLiteral("Insurance expiry"));
    EXPECT_FALSE(shownFrame.isEmpty());
    EXPECT_TRUE(available().contains(shownFrame));
}

// The report preview on a few vendors.
class PreviewFit : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        m_previous = QDir::currentPath();
        QDir::setCurrent(folder.path());
        clearRememberedPlaces();
    }
    void TearDown() override
    {
        QDir::setCurrent(m_previous);
        clearRememberedPlaces();
    }
    std::unique_ptr<PreviewWindow> preview()
    {
        const auto def = ReportDefinition::load(QStringLiteral(CRYPRINT_DEFINITIONS "/rap001.rpt"));
        RunnerRequest request;
        request.reportFileName = QStringLiteral("rap001.rpt");
        auto window = std::make_unique<PreviewWindow>(def, request);
        window->show();
        return window;
    }
    QString m_previous;
};

TEST_F(PreviewFit, ThePreviewOpensWhollyOnTheScreenAsTallAsItHasRoomFor)
{
    auto window = preview();
    EXPECT_TRUE(onScreen(window.get()));
    // A page is taller: as tall as the screen (at a fractional scaling less its last pixel).
    EXPECT_GE(window->frameGeometry().height(), available().height() - 1);
    if (scale() == 1.0) {
        EXPECT_EQ(window->width(), 900);
    }
}

TEST_F(PreviewFit, ThePreviewComesBackWithTheSizeAndPlaceTheUserLeftItAt)
{
    {
        auto window = preview();
        window->resize(500, 300);
        window->move(20, 10);
        window->close();
    }
    auto window = preview();
    EXPECT_EQ(window->size(), QSize(500, 300));
    EXPECT_EQ(window->pos(), QPoint(20, 10));
}

TEST(LauncherFit, TheLauncherLiesWhollyOnTheScreen)
{
    QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("launch.ini")), QSettings::IniFormat);
    LaunchServices services;
    services.settings = &settings;
    services.loginName = QStringLiteral("somebody");
    services.chooseFolder = [](QWidget *, const QString &) { return QString(); };
    LaunchWindow window(services);
    window.show();
    EXPECT_TRUE(onScreen(&window));
    window.resize(3000, 3000);
    EXPECT_TRUE(onScreen(&window));
}

} // namespace
