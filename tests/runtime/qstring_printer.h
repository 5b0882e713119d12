// Shows QString and QDate values as readable text in test failures.
#pragma once
#include <QDate>
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QDate& day, std::ostream* os) {
    *os << (day.isValid() ? day.toString(QStringLiteral("dd/MM/yyyy")).toStdString() : std::string("(sin fecha)"));
}
