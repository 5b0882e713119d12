#include "runtime/environment.h"
#include "runtime/errors.h"

namespace vb {

Environment& CurrentEnvironment() {
    static Environment current;
    return current;
}

InstalledEnvironment::InstalledEnvironment(Environment environment)
    : previous_(std::exchange(CurrentEnvironment(), std::move(environment))) {
    ResetEnded();
}

InstalledEnvironment::~InstalledEnvironment() {
    CurrentEnvironment() = std::move(previous_);
    ResetEnded();
}

} // namespace vb
