// The SQL text of the windows, turned into what the engine runs.
//
// The windows write the original engine's dialect; the engine takes almost all
// of it as it stands. What needs a hand:
//  - "DELETE *  FROM t" (with the star) is the same statement as "DELETE FROM t";
//  - a number written straight against the next word ("2024AND") is read as
//    the number and then the word;
//  - a cursor over a SELECT of one table reads its rows by their keys, so that
//    it can let go of the engine's statement before a write (record_store.cpp
//    says why): the SELECT gets the key of each row as one more column and an
//    order with no ties, and two companion statements read the keys of the
//    rows still to come and one row by its key.
#pragma once
#include <QString>
#include <optional>

namespace vel::dialect {

// The statement in the form the engine takes.
QString ToEngine(const QString& sql);

// The statements of a cursor that reads its rows by key.
struct KeyedSelect {
    // The SELECT with the row's key (rowid) as the last column, and, when it
    // has an ORDER BY, the key as the last term of the order, so that two runs
    // give the rows in the same order.
    QString rows;
    // The keys of the same rows in the same order, after the first ?1 of them;
    // empty when the SELECT has no order (the rows then come as the engine
    // finds them, and only the running statement knows that order).
    QString keysAfter;
    // The columns of one row, by its key ?1.
    QString row;
};

// The keyed statements of a SELECT of the columns of one table with a WHERE
// and an ORDER BY, the only kind of query the windows write. Nothing for any
// other statement (joins, sub-queries, aggregates, DISTINCT, functions in the
// column list): such a cursor reads its rows as they come.
std::optional<KeyedSelect> Keyed(const QString& engineSql);

} // namespace vel::dialect
