#include "runtime/beep.h"
#include "runtime/environment.h"
#include <QApplication>

namespace vb {

void Beep() {
    if (const auto& listener = CurrentEnvironment().beep) {
        listener();
        return;
    }
    QApplication::beep();
}

void SetBeepListener(BeepListener listener) { CurrentEnvironment().beep = std::move(listener); }

} // namespace vb
