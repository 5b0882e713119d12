#include "runtime/progressbar.h"
#include "runtime/errors.h"

namespace vb {

namespace {
[[noreturn]] void invalid() { Raise(380, QStringLiteral("Valor de propiedad no válido")); }
} // namespace

ProgressBar::ProgressBar(QWidget* parent) : QProgressBar(parent) {
    setTextVisible(false);
    setRange(0, 100);
    setValue(0);
}

void ProgressBar::SetMin(int min) {
    if (min >= maximum()) invalid();
    const int v = value() < min ? min : value();
    setMinimum(min);
    setValue(v);
}

void ProgressBar::SetMax(int max) {
    if (max <= minimum()) invalid();
    const int v = value() > max ? max : value();
    setMaximum(max);
    setValue(v);
}

void ProgressBar::SetValue(int v) {
    if (v < minimum() || v > maximum()) invalid();
    setValue(v);
}

} // namespace vb
