// The clock: today's date and the time. Dates are everywhere in this program,
// so tests pin the clock to a fixed moment.
#pragma once
#include <QDate>
#include <QDateTime>
#include <QTime>

namespace vb {

QDateTime Now();
QDate Date();
QTime Time();

// Shorthands for the clock of the environment in force (environment.h).
namespace clock {
// Pins the clock to a moment; the time does not move while pinned.
void pin(const QDateTime& moment);
void unpin();
bool pinned();
} // namespace clock

} // namespace vb
