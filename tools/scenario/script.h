// The scenario language's words, and the failures a line can meet.
#pragma once
#include <QString>
#include <QStringList>

namespace vel::scenario {

struct Failure {
    QString message;
};
struct Fail : Failure {};  // an expectation that does not hold
struct Error : Failure {}; // a scenario line the driver can't carry out

[[noreturn]] void fail(const QString& message);
[[noreturn]] void error(const QString& message);

// A word of a line; `quoted` when it was written in double quotes.
struct Word {
    QString text;
    bool quoted = false;
};

// Splits a line into words. Double-quoted words may hold blanks and the escapes
// \" (quote), \\ (backslash), \r, \n and \t.
QList<Word> Words(const QString& line);

// A text as the transcript shows it: in double quotes, with the same escapes.
QString Quote(const QString& text);

QString BoolText(bool b);

// Lets the posted events and the event loop run until the program is at rest.
void Settle();

} // namespace vel::scenario
