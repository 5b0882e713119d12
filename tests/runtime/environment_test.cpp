// The environment a test or the scenario driver installs: message boxes,
// dialogs, clock, program folder and the end of the program in one object,
// and the one before back when it is removed.
#include "support/print_to.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"
#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

const QDateTime kMorning(QDate(2026, 11, 21), QTime(10, 0, 0));

TEST(Environment, InstalledItGivesTheBoxesClockFolderAndEnd) {
    veltest::RecordedBoxes boxes{veltest::NoToAll};
    bool ended = false;
    {
        vb::InstalledEnvironment env(
            {.messageBoxes = &boxes, .clock = kMorning, .programFolder = "/tmp/tienda", .onEnd = [&] { ended = true; }});
        EXPECT_EQ(vb::MsgBox("¿Seguro?", vb::vbYesNo), vb::vbNo);
        EXPECT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(vb::Now(), kMorning);
        EXPECT_TRUE(vb::clock::pinned());
        EXPECT_EQ(vb::AppPath(), "/tmp/tienda");
        vb::RunEvent([] { vb::End(); });
        EXPECT_TRUE(ended);
        EXPECT_TRUE(vb::HasEnded());
    }
    // Removed: the machine's clock, the executable's folder, and a fresh run.
    EXPECT_FALSE(vb::clock::pinned());
    EXPECT_EQ(vb::AppPath(), QCoreApplication::applicationDirPath());
    EXPECT_FALSE(vb::HasEnded());
    EXPECT_EQ(vb::CurrentEnvironment().messageBoxes, nullptr);
}

TEST(Environment, TheShorthandsChangeTheEnvironmentInForce) {
    vb::InstalledEnvironment env({});
    vb::SetAppPath("/tmp/otra");
    vb::clock::pin(QDateTime(QDate(2003, 3, 31), QTime(9, 30, 15, 500)));
    EXPECT_EQ(env->programFolder, "/tmp/otra");
    ASSERT_TRUE(env->clock.has_value());
    // The clock keeps whole seconds.
    EXPECT_EQ(vb::Time(), QTime(9, 30, 15));
    vb::clock::unpin();
    EXPECT_FALSE(env->clock.has_value());
}

TEST(Environment, AnInnerEnvironmentGivesBackTheOuterOne) {
    veltest::RecordedBoxes outer{veltest::NoToAll}, inner{veltest::NoToAll};
    vb::InstalledEnvironment a({.messageBoxes = &outer, .programFolder = "/tmp/a"});
    {
        vb::InstalledEnvironment b({.messageBoxes = &inner, .programFolder = "/tmp/b"});
        vb::MsgBox("uno");
        EXPECT_EQ(vb::AppPath(), "/tmp/b");
    }
    vb::MsgBox("dos");
    EXPECT_EQ(inner.shown.size(), 1);
    EXPECT_EQ(outer.shown.size(), 1);
    EXPECT_EQ(vb::AppPath(), "/tmp/a");
}

} // namespace
