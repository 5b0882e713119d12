#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/printer.h"

namespace vb {

Environment& CurrentEnvironment() {
    static Environment current;
    return current;
}

InstalledEnvironment::InstalledEnvironment(Environment environment)
    : previous_(std::exchange(CurrentEnvironment(), std::move(environment))) {
    ResetEnded();
    Printer().Reset();
}

InstalledEnvironment::~InstalledEnvironment() {
    Printer().Reset();
    CurrentEnvironment() = std::move(previous_);
    ResetEnded();
}

} // namespace vb
