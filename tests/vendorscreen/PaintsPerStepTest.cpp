#include "support/VendorScreen.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QGroupBox>
#include <QProcess>
#include <QTest>

#include <array>

namespace {

// What the screen paints while a step runs: each vendor field's text at every paint of it, and
// how many paint events the window's widgets received in all.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(const VendorWindow &window) : m_window(window)
    {
        qApp->installEventFilter(this);
    }
    ~PaintWatch() override { qApp->removeEventFilter(this); }

    // The texts field i showed, one for each time it was painted.
    const QStringList &painted(int i) const { return m_fieldPaints[static_cast<size_t>(i)]; }
    // The texts the status line showed, one for each time it was painted.
    const QStringList &statusPainted() const { return m_statusPaints; }
    int windowPaints() const { return m_windowPaints; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || !watched->isWidgetType())
            return false;
        const auto *widget = static_cast<QWidget *>(watched);
        if (widget->window() == &m_window)
            ++m_windowPaints;
        if (widget == m_window.controls().helpwindow)
            m_statusPaints << m_window.controls().helpwindow->text();
        const auto &fields = m_window.controls().Text1;
        for (size_t i = 0; i < fields.size(); ++i)
            if (widget == fields[i])
                m_fieldPaints[i] << fields[i]->text();
        return false;
    }

private:
    const VendorWindow &m_window;
    std::array<QStringList, 24> m_fieldPaints;
    QStringList m_statusPaints;
    int m_windowPaints = 0;
};

class PaintsPerStep : public VendorScreen {
protected:
    void clickAndSettle(QPushButton *button)
    {
        button->click();
        QCoreApplication::processEvents();
    }
};

// From vendor 100 to vendor 250, these fields change; the others hold the same text for both.
constexpr int changedByNext[] = {0, 1, 2, 4, 5, 6, 7, 9, 11, 12, 13, 16, 17};
constexpr int keptByNext[] = {3, 8, 10, 14, 15, 18, 19, 20, 21, 22, 23};

TEST_F(PaintsPerStep, NextPaintsEachChangedFieldOnceWithItsNewText)
{
    lookup(0, "100");
    QCoreApplication::processEvents();
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdnext);
    ASSERT_EQ(field(0), "250");
    EXPECT_EQ(watch.painted(0), QStringList{"250"});
    EXPECT_EQ(watch.painted(1), QStringList{"O'Brien Catering"});
    EXPECT_EQ(watch.painted(9), QStringList{"Mary"});
    EXPECT_EQ(watch.painted(13), QStringList{"0.00"});
    EXPECT_EQ(watch.painted(16), QStringList{"0"});
    for (int i : changedByNext)
        EXPECT_EQ(watch.painted(i).size(), 1) << "field " << i;
}

TEST_F(PaintsPerStep, NextLeavesTheFieldsThatKeepTheirTextUnpainted)
{
    lookup(0, "100");
    QCoreApplication::processEvents();
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdnext);
    ASSERT_EQ(field(0), "250");
    for (int i : keptByNext)
        EXPECT_EQ(watch.painted(i), QStringList()) << "field " << i;
}

TEST_F(PaintsPerStep, NextCostsAboutOnePaintOfTheWindow)
{
    lookup(0, "100");
    QCoreApplication::processEvents();
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdnext);
    ASSERT_EQ(field(0), "250");
    // The 13 changed fields once each, the 1099 name beside its field and the frame behind it,
    // the Next button (disabled while it works, enabled again) and the status line. Blanking and
    // filling in two paints, and the totals' message painted and taken back, made it 64.
    EXPECT_LE(watch.windowPaints(), 23);
    EXPECT_GE(watch.windowPaints(), 13);
}

// The totals of an ordinary vendor take far less than a frame: their message is never seen, so
// it is not painted, and the status line, whose text stays, is not painted either.
TEST_F(PaintsPerStep, AQuickTotalsMessageIsNotPainted)
{
    lookup(0, "100");
    QCoreApplication::processEvents();
    const QString before = module.window->status();
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdnext);
    ASSERT_EQ(field(0), "250");
    EXPECT_EQ(module.window->status(), before);
    EXPECT_EQ(watch.statusPainted(), QStringList());
}

// After totals that kept the screen waiting longer than a frame (600,000 open invoices of this
// year, each sum reading them all), the next
// computation paints its message at once and puts the old text back; after quick ones it does not.
TEST_F(PaintsPerStep, TheTotalsMessageIsPaintedAfterTotalsThatTookLongerThanAFrame)
{
    folder.exec("ap.mdb",
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 600000) "
                "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) "
                "select 100, 'X' || i, 20260315, 1, 2 from n");
    QElapsedTimer took;
    took.start();
    lookup(0, "100"); // quick totals before: not announced, but slow
    if (took.elapsed() < 40)
        GTEST_SKIP() << "this machine sums 600,000 invoices within a frame";
    QCoreApplication::processEvents();
    ASSERT_EQ(field(14), "600000.00");
    const QString before = module.window->status();
    {
        PaintWatch watch(*module.window);
        clickAndSettle(c().cmdnext);
        ASSERT_EQ(field(0), "250");
        EXPECT_EQ(watch.statusPainted(),
                  (QStringList{"Retrieving open invoices... one moment please...", before}));
    }
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdprevious);
    ASSERT_EQ(field(0), "100");
    EXPECT_FALSE(
        watch.statusPainted().contains("Retrieving open invoices... one moment please..."));
}

TEST_F(PaintsPerStep, CancelFromModifyLocksAndEmptiesEachFieldInOnePaint)
{
    lookup(0, "100");
    clickAndSettle(c().cmdmodify);
    ASSERT_TRUE(c().fravendor->isEnabled());
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdcancel);
    ASSERT_FALSE(c().fravendor->isEnabled());
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(watch.painted(i), QStringList{QString()}) << "field " << i;
}

TEST_F(PaintsPerStep, SaveEndsWithEachFieldPaintedEmptyOnce)
{
    lookup(0, "100");
    clickAndSettle(c().cmdmodify);
    c().Text1[7]->setText("217-555-0111");
    QCoreApplication::processEvents();
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdsave);
    ASSERT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0111");
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(watch.painted(i), QStringList{QString()}) << "field " << i;
}

// When the display keeps the user waiting (here the totals stamp waits for another program's
// write lock), the fields are shown blank meanwhile, then filled.
TEST_F(PaintsPerStep, ADisplayThatWaitsShowsTheFieldsBlankMeanwhile)
{
    SQLITE_FILES_ONLY();
    lookup(0, "100");
    QCoreApplication::processEvents();
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("sqlite3", {"ap.mdb"});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("begin immediate;\nupdate vendors set vendfax = 'x' where vendnumber = 300;\n"
                 ".shell touch locked.flag\n.shell sleep 1\ncommit;\n.quit\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    PaintWatch watch(*module.window);
    clickAndSettle(c().cmdnext);
    ASSERT_EQ(field(0), "250");
    EXPECT_EQ(watch.painted(0), (QStringList{"", "250"}));
    EXPECT_EQ(watch.painted(1), (QStringList{"", "O'Brien Catering"}));
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
}

} // namespace

namespace {

// Go ends with the help line's prompt, painted once with the paint that ends the step.
TEST_F(PaintsPerStep, GoPaintsTheHelpLinePromptOnce)
{
    c().Option1[0]->setChecked(true);
    c().lookupinput->setText("250");
    QCoreApplication::processEvents();
    PaintWatch watch(*module.window);
    QTest::mouseClick(c().cmdgo, Qt::LeftButton);
    QCoreApplication::processEvents();
    ASSERT_EQ(field(0), "250");
    EXPECT_EQ(watch.statusPainted(),
              QStringList{"Select an action button along the top of the screen."});
}

} // namespace
