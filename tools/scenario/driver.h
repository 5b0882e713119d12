// The scenario driver: runs a plain-text scenario against the real program in a
// temporary program folder, headless, and writes a transcript. The language is
// told in docs/scenarios.md.
#pragma once
#include <QString>

namespace vel::scenario {

enum Result { Passed = 0, Mismatch = 1, ExpectationFailed = 2, ScriptError = 3 };

// Runs the scenario text; the transcript is appended to *transcript. `origin`
// names the scenario in messages (a file name).
Result Run(const QString& text, QString* transcript, const QString& origin = QStringLiteral("scenario"));

} // namespace vel::scenario
