// How Qt values read in a failed expectation: a QString as its text in quotes,
// a QStringList one entry a line, a QDate as DD/MM/YYYY.
#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& list, std::ostream* os) {
    *os << "{\n";
    for (const QString& s : list) *os << "  \"" << s.toStdString() << "\"\n";
    *os << "}";
}
inline void PrintTo(const QDate& day, std::ostream* os) {
    *os << (day.isValid() ? day.toString(QStringLiteral("dd/MM/yyyy")).toStdString() : std::string("(sin fecha)"));
}
QT_END_NAMESPACE
