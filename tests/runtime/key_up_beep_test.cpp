// KeyUp with the runtime's key codes, the bell, and the division's errors.
#include "runtime/arithmetic.h"
#include "runtime/beep.h"
#include "runtime/errors.h"
#include "runtime/key_up.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

int CodigoDe(Qt::Key key, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QKeyEvent e(QEvent::KeyRelease, key, m);
    return vb::KeyCode(&e);
}

TEST(KeyCodes, AsTheRuntimeNumbersThem) {
    EXPECT_EQ(CodigoDe(Qt::Key_PageDown), 34);
    EXPECT_EQ(CodigoDe(Qt::Key_PageUp), 33);
    EXPECT_EQ(CodigoDe(Qt::Key_F5), 116);
    EXPECT_EQ(CodigoDe(Qt::Key_F9), 120);
    EXPECT_EQ(CodigoDe(Qt::Key_F12), 123);
    EXPECT_EQ(CodigoDe(Qt::Key_Return), 13);
    EXPECT_EQ(CodigoDe(Qt::Key_A), 65);
    EXPECT_EQ(CodigoDe(Qt::Key_7), 55);
    EXPECT_EQ(CodigoDe(Qt::Key_Down), 40);
    QKeyEvent e(QEvent::KeyRelease, Qt::Key_F5, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(vb::ShiftState(&e), vb::vbShiftMask | vb::vbCtrlMask);
}

class KeyUpWindow : public ::testing::Test {
protected:
    QWidget window;
    QLineEdit* box = new QLineEdit(&window);
    QComboBox* combo = new QComboBox(&window);
    QList<int> codes;

    void SetUp() override {
        auto* l = new QVBoxLayout(&window);
        l->addWidget(box);
        l->addWidget(combo);
        combo->setEditable(true);
        for (QWidget* w : {static_cast<QWidget*>(box), static_cast<QWidget*>(combo), &window})
            vb::OnKeyUp(w, [this](int code, int) { codes << code; });
        window.show();
        window.activateWindow();
        QApplication::setActiveWindow(&window);
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
};

// One KeyUp for each key released, in the control with the focus only, even
// though the release goes on to the window that holds it.
TEST_F(KeyUpWindow, OneKeyUpForEachRelease) {
    box->setFocus();
    QTest::keyClick(box, Qt::Key_PageDown);
    QTest::keyClick(box, Qt::Key_F7);
    EXPECT_EQ(codes, (QList<int>{34, 118}));
}

TEST_F(KeyUpWindow, AnEditableComboHasItsKeyUpOnce) {
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_F5);
    EXPECT_EQ(codes, QList<int>{116});
}

TEST_F(KeyUpWindow, AKeyHeldDownHasOneKeyUp) {
    box->setFocus();
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_PageDown, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(box, &repeated);
    EXPECT_TRUE(codes.isEmpty());
}

TEST(Beep, AListenerHearsEachBeep) {
    int beeps = 0;
    vb::SetBeepListener([&] { ++beeps; });
    vb::Beep();
    vb::Beep();
    vb::SetBeepListener(nullptr);
    EXPECT_EQ(beeps, 2);
    vb::Beep(); // the platform's bell, heard by nobody here
    EXPECT_EQ(beeps, 2);
}

TEST(Divide, ByZeroIsError11AndZeroByZeroError6) {
    EXPECT_DOUBLE_EQ(vb::Divide(25, 2), 12.5);
    try {
        vb::Divide(3, 0);
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 11);
    }
    try {
        vb::Divide(0, 0);
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 6);
    }
}

} // namespace
