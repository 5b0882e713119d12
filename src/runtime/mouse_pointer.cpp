#include "runtime/mouse_pointer.h"
#include <QGuiApplication>

namespace vb {

namespace {
int busy = 0;
bool onScreen() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }
} // namespace

int MousePointer() { return busy > 0 ? vbHourglass : vbDefault; }

WaitPointer::WaitPointer() {
    if (busy++ == 0 && onScreen()) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitPointer::~WaitPointer() {
    if (--busy == 0 && onScreen()) QGuiApplication::restoreOverrideCursor();
}

} // namespace vb
