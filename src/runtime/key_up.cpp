#include "runtime/key_up.h"
#include "runtime/errors.h"
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>

namespace vb {

int KeyCode(const QKeyEvent* event) {
    const int key = event->key();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 65 + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 48 + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return vbKeyF1 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace: return vbKeyBack;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return vbKeyTab;
    case Qt::Key_Return:
    case Qt::Key_Enter: return vbKeyReturn;
    case Qt::Key_Escape: return vbKeyEscape;
    case Qt::Key_Space: return vbKeySpace;
    case Qt::Key_PageUp: return vbKeyPageUp;
    case Qt::Key_PageDown: return vbKeyPageDown;
    case Qt::Key_End: return vbKeyEnd;
    case Qt::Key_Home: return vbKeyHome;
    case Qt::Key_Left: return vbKeyLeft;
    case Qt::Key_Up: return vbKeyUp;
    case Qt::Key_Right: return vbKeyRight;
    case Qt::Key_Down: return vbKeyDown;
    case Qt::Key_Insert: return vbKeyInsert;
    case Qt::Key_Delete: return vbKeyDelete;
    default: return 0;
    }
}

int ShiftState(const QKeyEvent* event) {
    const Qt::KeyboardModifiers m = event->modifiers();
    return (m & Qt::ShiftModifier ? vbShiftMask : 0) | (m & Qt::ControlModifier ? vbCtrlMask : 0) |
           (m & Qt::AltModifier ? vbAltMask : 0);
}

namespace {

class KeyUpFilter : public QObject {
public:
    KeyUpFilter(QWidget* control, std::function<void(int, int)> proc)
        : QObject(control), control_(control), proc_(std::move(proc)) {}

    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() != QEvent::KeyRelease) return false;
        auto* k = static_cast<QKeyEvent*>(e);
        if (k->isAutoRepeat()) return false;
        // The control's own release, not one passed up from a child: the edit
        // box of a combo speaks for the combo.
        QWidget* focus = QApplication::focusWidget();
        if (focus != control_ && !(focus && focus->parentWidget() == control_ &&
                                   qobject_cast<QComboBox*>(control_)))
            return false;
        if (o != focus) return false;
        const int code = KeyCode(k);
        const int shift = ShiftState(k);
        RunEvent([&] { proc_(code, shift); });
        return false;
    }

private:
    QWidget* control_;
    std::function<void(int, int)> proc_;
};

} // namespace

void OnKeyUp(QWidget* control, std::function<void(int KeyCode, int Shift)> proc) {
    auto* filter = new KeyUpFilter(control, std::move(proc));
    control->installEventFilter(filter);
    if (auto* c = qobject_cast<QComboBox*>(control); c && c->lineEdit()) c->lineEdit()->installEventFilter(filter);
}

} // namespace vb
