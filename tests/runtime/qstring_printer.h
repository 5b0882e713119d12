// Shows QString values as readable text in test failures.
#pragma once
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
