// The KeyUp event of a control: the key released, as the runtime's key code
// (vbKeyPageDown 34, vbKeyF5 116, ...), with the state of Shift, Ctrl and Alt.
//
// KeyUp comes once for each release of a key in the control that has the
// focus: a key held down repeats its KeyPress, not its KeyUp. The same release
// passed on to the parents of the control is no second KeyUp.
#pragma once
#include <QWidget>
#include <functional>

class QKeyEvent;

namespace vb {

// Key codes of the keys the windows test.
constexpr int vbKeyBack = 8;
constexpr int vbKeyTab = 9;
constexpr int vbKeyReturn = 13;
constexpr int vbKeyEscape = 27;
constexpr int vbKeySpace = 32;
constexpr int vbKeyPageUp = 33;
constexpr int vbKeyPageDown = 34;
constexpr int vbKeyEnd = 35;
constexpr int vbKeyHome = 36;
constexpr int vbKeyLeft = 37;
constexpr int vbKeyUp = 38;
constexpr int vbKeyRight = 39;
constexpr int vbKeyDown = 40;
constexpr int vbKeyInsert = 45;
constexpr int vbKeyDelete = 46;
constexpr int vbKeyF1 = 112; // F1 to F12 are 112 to 123
constexpr int vbKeyF12 = 123;

// Shift argument: 1 Shift, 2 Ctrl, 4 Alt.
constexpr int vbShiftMask = 1;
constexpr int vbCtrlMask = 2;
constexpr int vbAltMask = 4;

// The key code of a key event: letters as their capital (65 to 90), digits
// 48 to 57, the keys above; 0 for a key the runtime has no code for.
int KeyCode(const QKeyEvent* event);
int ShiftState(const QKeyEvent* event);

// Runs proc, as an event of the program (vb::RunEvent), on each KeyUp of the
// control.
void OnKeyUp(QWidget* control, std::function<void(int KeyCode, int Shift)> proc);

} // namespace vb
