#include "support/VendorScreen.h"

#include <QTest>

namespace {

// The YTD purchases and the current unpaid figure stand in the way of a delete from one cent
// on, either side of zero; less than a cent does not.
struct DeleteCase {
    int field;
    const char *value;
    bool refused;
};

void PrintTo(const DeleteCase &c, std::ostream *os)
{
    *os << "field " << c.field << " at " << c.value;
}

class DeleteLimits : public VendorScreen, public ::testing::WithParamInterface<DeleteCase> {};

TEST_P(DeleteLimits, AFigureOfOneCentEitherWayStopsTheDelete)
{
    const DeleteCase k = GetParam();
    lookup(0, "250");
    c().cmdmodify->click();
    c().Text1[13]->setText("0.00");
    c().Text1[14]->setText("0.00");
    c().Text1[k.field]->setText(QString::fromLatin1(k.value));
    module.dialogs.yesNoAnswers = {Dialogs::No};
    c().cmddelete->click();
    ASSERT_EQ(module.dialogs.shown.size(), 1u);
    if (k.refused) {
        EXPECT_EQ(module.dialogs.last()->kind, "message");
        EXPECT_EQ(module.dialogs.last()->title, "Delete Vendor");
    } else {
        EXPECT_EQ(module.dialogs.last()->kind, "yesno");
        EXPECT_EQ(module.dialogs.last()->title, "Delete Vendor?");
    }
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Figures, DeleteLimits,
    ::testing::Values(DeleteCase{13, "0.01", true}, DeleteCase{13, "-0.01", true},
                      DeleteCase{13, "0.004", false}, DeleteCase{13, "-0.004", false},
                      DeleteCase{14, "0.01", true}, DeleteCase{14, "-0.01", true},
                      DeleteCase{14, "0.004", false}, DeleteCase{14, "-0.004", false}));

} // namespace
