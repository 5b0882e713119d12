// The runtime's Beep statement: the platform's bell.
//
// A window beeps where the operator must notice something without a box in
// the way (a key that a money box refuses, money given short of the total).
// Tests and the scenario driver hear it through the environment's `beep`
// (environment.h) instead of the speaker.
#pragma once
#include <functional>

namespace vb {

void Beep();

// Shorthand for the environment's `beep`: while set, each Beep calls it and the
// bell stays silent; an empty listener gives back the bell.
using BeepListener = std::function<void()>;
void SetBeepListener(BeepListener listener);

} // namespace vb
