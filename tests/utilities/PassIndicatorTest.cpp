#include "vendorscreen/PassIndicator.h"
#include "utilities/UtilitiesFixture.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QTest>

namespace {

class PassIndicatorTest : public UtilitiesFixture {};

TEST_F(PassIndicatorTest, ThePassShowsTheNumberDoneOfTheNumberToDo)
{
    module.window->show();
    PassIndicator &pass = module.window->pass();
    pass.begin(200);
    EXPECT_TRUE(c().passprogress->isVisible());
    EXPECT_EQ(c().passprogress->maximum(), 200);
    // The bar shows the count when a paint is due, a few times a second.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            pass.advance(57);
            return c().passprogress->value() == 57;
        },
        2000));
    EXPECT_EQ(c().passprogress->text(), "57 of 200");
    pass.end();
    EXPECT_FALSE(c().passprogress->isVisible());
}

TEST_F(PassIndicatorTest, KeysAndClicksAreHeldOffDuringAPassAndTheWindowStays)
{
    module.window->show();
    PassIndicator &pass = module.window->pass();
    pass.begin(10);
    QTest::keyClicks(c().lookupinput, "12");
    EXPECT_EQ(c().lookupinput->text(), "");
    QTest::mouseClick(c().cmdexit, Qt::LeftButton);
    EXPECT_FALSE(module.window->close());
    EXPECT_TRUE(module.window->isVisible());
    pass.end();
    QTest::keyClicks(c().lookupinput, "12");
    EXPECT_EQ(c().lookupinput->text(), "12");
}

} // namespace
