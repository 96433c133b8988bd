#include "common/ScreenFit.h"

#include <QSize>

#include <gtest/gtest.h>

namespace {

struct FitCase {
    const char *what;
    QRect frame;
    QRect area;
    QSize minimum;
    QRect expected;
};

class ScreenFitWithin : public ::testing::TestWithParam<FitCase> {};

TEST_P(ScreenFitWithin, MovesAndShrinksAWindowOntoTheArea)
{
    const FitCase &c = GetParam();
    EXPECT_EQ(ScreenFit::within(c.frame, c.area, c.minimum), c.expected) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ScreenFitWithin,
    ::testing::Values(
        FitCase{"inside stays", {10, 10, 100, 100}, {0, 0, 200, 200}, {}, {10, 10, 100, 100}},
        FitCase{"touching the right edge stays",
                {100, 0, 100, 100},
                {0, 0, 200, 200},
                {},
                {100, 0, 100, 100}},
        FitCase{"one past the right edge comes back by one",
                {101, 0, 100, 100},
                {0, 0, 200, 200},
                {},
                {100, 0, 100, 100}},
        FitCase{"one past the bottom edge comes back by one",
                {0, 101, 100, 100},
                {0, 0, 200, 200},
                {},
                {0, 100, 100, 100}},
        FitCase{"above and left of the area comes onto it",
                {-82, -131, 100, 100},
                {0, 0, 911, 512},
                {},
                {0, 0, 100, 100}},
        FitCase{"centred 1024x740 at 150% on 1366x768 fills the screen",
                {-56, -114, 1024, 740},
                {0, 0, 911, 512},
                {},
                {0, 0, 911, 512}},
        FitCase{"below a top panel", {40, 0, 100, 100}, {0, 27, 1366, 741}, {}, {40, 27, 100, 100}},
        FitCase{"exactly the area's size stays",
                {0, 0, 911, 512},
                {0, 0, 911, 512},
                {},
                {0, 0, 911, 512}},
        FitCase{"never smaller than it can be",
                {0, 0, 1200, 800},
                {0, 0, 911, 512},
                {1000, 600},
                {0, 0, 1000, 600}},
        FitCase{"no screen: as it was", {-5, -5, 10, 10}, {}, {}, {-5, -5, 10, 10}}),
    [](const ::testing::TestParamInfo<FitCase> &info) { return std::to_string(info.index); });

} // namespace
