// The scenario driver: runs a plain-text scenario against the real program in a
// temporary program folder, headless, and writes a transcript. The language is
// told in docs/scenarios.md.
#pragma once
#include <QString>

namespace vel::scenario {

enum Result { Passed = 0, Mismatch = 1, ExpectationFailed = 2, ScriptError = 3 };

// Runs the scenario text; the transcript is appended to *transcript. `origin`
// names the scenario in messages (a file name). With a `statementLog` path,
// every distinct statement the program ran on its database (not those of the
// scenario's own `sql` lines) is written there, one a line, as the engine got
// it: the query-plan check reads these files (tests/core/query_plans_test.cpp).
Result Run(const QString& text, QString* transcript, const QString& origin = QStringLiteral("scenario"),
           const QString& statementLog = {});

} // namespace vel::scenario
