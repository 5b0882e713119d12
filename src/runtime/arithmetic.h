// The runtime's division of two numbers, with its two errors: a number divided
// by zero is error 11, and zero divided by zero is error 6 (the result does not
// fit). The windows divide amounts read from their own controls, so a zero
// typed where a quantity belongs reaches here.
#pragma once

namespace vb {

double Divide(double dividend, double divisor);

} // namespace vb
