#include "runtime/beep.h"
#include <QApplication>

namespace vb {

namespace {
BeepListener& listener() {
    static BeepListener l;
    return l;
}
} // namespace

void Beep() {
    if (listener()) {
        listener()();
        return;
    }
    QApplication::beep();
}

void SetBeepListener(BeepListener l) { listener() = std::move(l); }

} // namespace vb
