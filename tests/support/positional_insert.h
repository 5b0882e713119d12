// A positional INSERT checked against the table it writes.
//
// The windows write "INSERT INTO t VALUES (...)" with no column list, so the
// values must be as many as the table's columns, in their order. Counting them
// by eye fails on a missing comma; these helpers count them against the schema:
//
//   EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar()));
//
// and on failure print each column beside the value that lands in it.
// Header only: any test program that links vel_core can include it as
// "support/positional_insert.h".
#pragma once
#include "core/schema.h"

#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

#include <optional>

namespace veltest {

struct PositionalInsert {
    QString table;
    QStringList values; // as written, blanks around each value trimmed
};

// Splits the statement into its table and values: commas inside quotes or
// parentheses do not separate values. Nothing when the text is not of the form
// INSERT INTO <table> VALUES (...), in any case, with any blanks.
inline std::optional<PositionalInsert> ParsePositionalInsert(const QString& sql) {
    const QString text = sql.trimmed();
    const QString upper = text.toUpper();
    if (!upper.startsWith(QLatin1String("INSERT"))) return std::nullopt;
    qsizetype into = upper.indexOf(QLatin1String("INTO"));
    qsizetype values = upper.indexOf(QLatin1String("VALUES"));
    if (into < 0 || values < 0 || values < into) return std::nullopt;
    PositionalInsert insert;
    insert.table = text.mid(into + 4, values - into - 4).trimmed();
    qsizetype open = text.indexOf(QLatin1Char('('), values);
    qsizetype close = text.lastIndexOf(QLatin1Char(')'));
    if (insert.table.isEmpty() || open < 0 || close < open) return std::nullopt;

    QString current;
    bool quoted = false;
    int depth = 0;
    for (qsizetype i = open + 1; i < close; ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('\'')) quoted = !quoted;
        else if (!quoted && c == QLatin1Char('(')) ++depth;
        else if (!quoted && c == QLatin1Char(')')) --depth;
        if (!quoted && depth == 0 && c == QLatin1Char(',')) {
            insert.values << current.trimmed();
            current.clear();
        } else {
            current += c;
        }
    }
    if (quoted || depth != 0) return std::nullopt;
    insert.values << current.trimmed();
    return insert;
}

// Success when the statement is a positional INSERT into a table of the schema
// with one value per column; otherwise a message pairing the columns and values.
inline ::testing::AssertionResult InsertMatchesSchema(const QString& sql) {
    const auto insert = ParsePositionalInsert(sql);
    if (!insert)
        return ::testing::AssertionFailure() << "not a positional INSERT: " << sql.toStdString();
    const vel::schema::Table* table = vel::schema::FindTable(insert->table);
    if (!table)
        return ::testing::AssertionFailure() << "no table " << insert->table.toStdString() << " in the schema";
    const qsizetype columns = static_cast<qsizetype>(table->columns.size());
    if (insert->values.size() == columns) return ::testing::AssertionSuccess();

    auto failure = ::testing::AssertionFailure();
    failure << insert->values.size() << " values for the " << columns << " columns of " << table->name << ":\n";
    for (qsizetype i = 0; i < std::max(columns, insert->values.size()); ++i) {
        failure << "  " << (i + 1) << " " << (i < columns ? table->columns[i].name : "(no column)") << " = "
                << (i < insert->values.size() ? insert->values[i].toStdString() : std::string("(no value)"))
                << "\n";
    }
    return failure;
}

} // namespace veltest
