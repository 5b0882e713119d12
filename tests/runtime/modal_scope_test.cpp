// Every modal box, dialog and yield to the event queue is one modal scope:
// an event that comes in meanwhile enters the program afresh, an untrapped
// error in it ends the program there, and the procedure that opened the box
// goes no further.
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/mouse_pointer.h"
#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include <QGuiApplication>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// A box during which the user does something that fails: an event procedure
// raises an untrapped error while the box is open.
class BoxWithAFailingEvent : public vb::MessageBoxService {
public:
    QStringList shown;
    bool failInside = true;
    Qt::CursorShape pointerSeen = Qt::BlankCursor;
    int show(const QString&, const QString& text, int) override {
        shown << text;
        if (const QCursor* c = QGuiApplication::overrideCursor()) pointerSeen = c->shape();
        if (failInside && shown.size() == 1)
            vb::RunEvent([] { vb::Raise(3022, QStringLiteral("valores duplicados")); });
        return vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

class ModalScopeTest : public ::testing::Test {
protected:
    BoxWithAFailingEvent boxes;
    bool ended = false;
    vb::InstalledEnvironment env{{.messageBoxes = &boxes, .onEnd = [this] { ended = true; }}};
};

TEST_F(ModalScopeTest, AnErrorInAnEventDuringABoxEndsTheProgramAndStopsTheOpener) {
    QStringList steps;
    vb::RunEvent([&] {
        steps << "antes";
        vb::MsgBox("primer mensaje");
        steps << "despues";
    });
    EXPECT_TRUE(ended);
    // The untrapped error's own message, then nothing more of the opener.
    ASSERT_EQ(boxes.shown.size(), 2);
    EXPECT_TRUE(boxes.shown[1].startsWith("Se ha producido el error '3022'"));
    EXPECT_EQ(steps, QStringList{"antes"});
}

TEST_F(ModalScopeTest, WithoutTroubleTheOpenerGoesOn) {
    boxes.failInside = false;
    QStringList steps;
    vb::RunEvent([&] {
        vb::MsgBox("uno");
        steps << "despues";
    });
    EXPECT_FALSE(ended);
    EXPECT_EQ(steps, QStringList{"despues"});
}

TEST_F(ModalScopeTest, AFailingEventDuringDoEventsEndsTheProgramThere) {
    boxes.failInside = false;
    QStringList steps;
    vb::RunEvent([&] {
        QTimer::singleShot(0, [] { vb::RunEvent([] { vb::Raise(5, QStringLiteral("argumento no válido")); }); });
        steps << "antes";
        vb::DoEvents();
        steps << "despues";
    });
    EXPECT_TRUE(ended);
    EXPECT_EQ(steps, QStringList{"antes"});
}

TEST_F(ModalScopeTest, TheBoxShowsTheArrowOverTheWaitPointer) {
    boxes.failInside = false;
    vb::WaitPointer espera;
    vb::MsgBox("mientras espera");
    EXPECT_EQ(boxes.pointerSeen, Qt::ArrowCursor);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

} // namespace
