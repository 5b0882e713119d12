// The wait pointer is a guard: the hourglass while it lives, the arrow again
// however the procedure ends.
#include "runtime/errors.h"
#include "runtime/mouse_pointer.h"
#include <QGuiApplication>
#include <gtest/gtest.h>

namespace {

bool hourglassOnScreen() {
    const QCursor* c = QGuiApplication::overrideCursor();
    return c && c->shape() == Qt::WaitCursor;
}

TEST(WaitPointer, HourglassWhileTheGuardLives) {
    EXPECT_EQ(vb::MousePointer(), vb::vbDefault);
    {
        vb::WaitPointer espera;
        EXPECT_EQ(vb::MousePointer(), vb::vbHourglass);
        EXPECT_TRUE(hourglassOnScreen());
    }
    EXPECT_EQ(vb::MousePointer(), vb::vbDefault);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(WaitPointer, NestedGuardsKeepItUntilTheLastEnds) {
    auto outer = std::make_unique<vb::WaitPointer>();
    {
        vb::WaitPointer inner;
    }
    EXPECT_EQ(vb::MousePointer(), vb::vbHourglass);
    EXPECT_TRUE(hourglassOnScreen());
    outer.reset();
    EXPECT_EQ(vb::MousePointer(), vb::vbDefault);
}

TEST(WaitPointer, AnErrorInTheBusyStretchGivesTheArrowBack) {
    const bool ok = vb::Trap(
        [] {
            vb::WaitPointer espera;
            vb::Raise(3022, QStringLiteral("valores duplicados"));
        },
        nullptr);
    EXPECT_FALSE(ok);
    EXPECT_EQ(vb::MousePointer(), vb::vbDefault);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
