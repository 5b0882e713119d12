#include "runtime/clock.h"
#include "runtime/environment.h"

namespace vb {

namespace {
// The runtime's clock has whole seconds.
QDateTime wholeSeconds(const QDateTime& m) {
    const QTime t = m.time();
    return QDateTime(m.date(), QTime(t.hour(), t.minute(), t.second()));
}
} // namespace

QDateTime Now() {
    const std::optional<QDateTime>& pinned = CurrentEnvironment().clock;
    if (pinned) return wholeSeconds(*pinned);
    return wholeSeconds(QDateTime::currentDateTime());
}

QDate Date() { return Now().date(); }

QTime Time() { return Now().time(); }

namespace clock {

void pin(const QDateTime& moment) { CurrentEnvironment().clock = wholeSeconds(moment); }
void unpin() { CurrentEnvironment().clock.reset(); }
bool pinned() { return CurrentEnvironment().clock.has_value(); }

} // namespace clock

} // namespace vb
