#include "runtime/arithmetic.h"
#include "runtime/errors.h"
#include <QString>

namespace vb {

double Divide(double dividend, double divisor) {
    if (divisor == 0) {
        if (dividend == 0) Raise(6, QStringLiteral("Desbordamiento"));
        Raise(11, QStringLiteral("División por cero"));
    }
    return dividend / divisor;
}

} // namespace vb
