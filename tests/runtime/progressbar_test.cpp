// The progress bar of the catalogue search and the database care.
#include "runtime/errors.h"
#include "runtime/progressbar.h"
#include <gtest/gtest.h>

namespace {

int errorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const vb::RuntimeError& e) {
        return e.Number;
    }
    return 0;
}

TEST(ProgressBar, StartsFromZeroToAHundredWithNoText) {
    vb::ProgressBar ProgressBar1;
    EXPECT_EQ(ProgressBar1.Min(), 0);
    EXPECT_EQ(ProgressBar1.Max(), 100);
    EXPECT_EQ(ProgressBar1.Value(), 0);
    EXPECT_FALSE(ProgressBar1.isTextVisible());
}

TEST(ProgressBar, TheSearchSetsMaxAndWalksValue) {
    vb::ProgressBar ProgressBar1;
    ProgressBar1.SetVisible(false);
    // Records 0..4: Max is the last position plus one.
    ProgressBar1.SetMax(5);
    ProgressBar1.SetVisible(true);
    for (int i = 0; i < 5; ++i) ProgressBar1.SetValue(i);
    EXPECT_EQ(ProgressBar1.Value(), 4);
    EXPECT_TRUE(ProgressBar1.Visible());
    ProgressBar1.SetVisible(false);
    ProgressBar1.SetValue(0);
    EXPECT_FALSE(ProgressBar1.Visible());
}

TEST(ProgressBar, AValueOutsideMinAndMaxIsError380) {
    vb::ProgressBar ProgressBar1;
    ProgressBar1.SetMax(3);
    EXPECT_EQ(errorOf([&] { ProgressBar1.SetValue(4); }), 380);
    EXPECT_EQ(errorOf([&] { ProgressBar1.SetValue(-1); }), 380);
    EXPECT_EQ(errorOf([&] { ProgressBar1.SetMax(0); }), 380);
    EXPECT_EQ(errorOf([&] { ProgressBar1.SetMin(3); }), 380);
}

TEST(ProgressBar, MovingMaxBelowTheValueBringsTheValueAlong) {
    vb::ProgressBar ProgressBar1;
    ProgressBar1.SetValue(80);
    ProgressBar1.SetMax(10);
    EXPECT_EQ(ProgressBar1.Value(), 10);
    ProgressBar1.SetMin(5);
    EXPECT_EQ(ProgressBar1.Value(), 10);
}

} // namespace
