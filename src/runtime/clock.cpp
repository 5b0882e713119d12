#include "runtime/clock.h"

namespace vb {

namespace {
struct ClockState {
    bool pinned = false;
    QDateTime moment;
};

ClockState& state() {
    static ClockState s;
    return s;
}

// The runtime's clock has whole seconds.
QDateTime wholeSeconds(const QDateTime& m) {
    const QTime t = m.time();
    return QDateTime(m.date(), QTime(t.hour(), t.minute(), t.second()));
}
} // namespace

QDateTime Now() {
    if (state().pinned) return state().moment;
    return wholeSeconds(QDateTime::currentDateTime());
}

QDate Date() { return Now().date(); }

QTime Time() { return Now().time(); }

namespace clock {

void pin(const QDateTime& moment) {
    state().pinned = true;
    state().moment = wholeSeconds(moment);
}

void unpin() {
    state().pinned = false;
    state().moment = QDateTime();
}

bool pinned() { return state().pinned; }

} // namespace clock

} // namespace vb
