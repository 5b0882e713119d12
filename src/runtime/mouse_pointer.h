// Screen.MousePointer: the hourglass while the program is busy (11), the arrow
// otherwise (0). A procedure never sets it by hand; it holds a guard for the
// busy stretch, and the pointer comes back however the procedure is left (an
// error included):
//
//   void CargarDatos() {
//       vb::WaitPointer espera;   // MousePointer = 11
//       ... fill the list ...
//   }                             // MousePointer = 0
//
// Guards nest: the arrow comes back when the last one ends.
#pragma once

namespace vb {

enum MousePointerValue { vbDefault = 0, vbHourglass = 11 };

// The pointer the program shows now: vbHourglass while any guard lives.
int MousePointer();

class WaitPointer {
public:
    WaitPointer();
    ~WaitPointer();
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

} // namespace vb
