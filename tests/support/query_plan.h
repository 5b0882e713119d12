// The engine's plan of a statement, and whether it reads a table that grows
// with the shop's business from end to end when the statement wants only a
// few of its rows.
//
// A shop keeps a few stores, operators and VAT types, but its documents,
// lines, cards, tickets, products and customers grow every day: a statement
// that picks some of those rows must find them through an index. A statement
// whose purpose is to read the whole table (a list of every customer, a
// search for text anywhere in a description, the change of every price) may
// read it all, but in the order it asks for, with no sort of the whole table.
//
//   vel::Database& db = ...;   // a database made by the schema
//   if (auto fault = veltest::PlanFault(db, engineSql)) ADD_FAILURE() << *fault;
//
// The statements are those the engine runs (dialect::ToEngine of what a
// window writes, and the cursor's keyed statements). Header only: any test
// program that links vel_core can include it as "support/query_plan.h".
#pragma once
#include "core/record_store.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <sqlite3.h>

#include <optional>

namespace veltest {

// The tables that grow with the shop's business.
inline bool GrowsWithTheBusiness(const QString& table) {
    static const QStringList growing = {
        "cabecera_albaran_venta",     "detalle_albaran_venta",       "cabecera_factura_venta",
        "detalle_factura_venta",      "cabecera_fichas_clientes",    "detalle_fichas_clientes",
        "cabecera_fichas_proveedores", "detalle_fichas_proveedores", "cabecera_diaria_ticket",
        "detalle_diaria_ticket",      "productos",                   "clientes",
        "proveedores"};
    return growing.contains(table, Qt::CaseInsensitive);
}

// The lines of EXPLAIN QUERY PLAN ("SCAN t", "SEARCH t USING INDEX ..."), or
// nothing with the engine's message in *error when the statement can't be
// prepared.
inline QStringList PlanOf(sqlite3* h, const QString& sql, QString* error = nullptr) {
    sqlite3_stmt* st = nullptr;
    const QByteArray q = ("EXPLAIN QUERY PLAN " + sql).toUtf8();
    QStringList plan;
    if (sqlite3_prepare_v2(h, q.constData(), -1, &st, nullptr) != SQLITE_OK) {
        if (error) *error = QString::fromUtf8(sqlite3_errmsg(h));
        sqlite3_finalize(st);
        return plan;
    }
    while (sqlite3_step(st) == SQLITE_ROW)
        plan << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 3)));
    sqlite3_finalize(st);
    return plan;
}

// The conditions of the statement's WHERE, texts in quotes emptied (they say
// nothing of its shape); nothing when it has no WHERE.
inline std::optional<QString> WhereConditions(const QString& sql) {
    QString text = sql;
    static const QRegularExpression quoted(QStringLiteral("'[^']*'"));
    text.replace(quoted, QStringLiteral("''"));
    static const QRegularExpression where(QStringLiteral("\\bWHERE\\b"), QRegularExpression::CaseInsensitiveOption);
    const auto w = where.match(text);
    if (!w.hasMatch()) return std::nullopt;
    QString conditions = text.mid(w.capturedEnd());
    static const QRegularExpression tail(QStringLiteral("\\b(ORDER\\s+BY|LIMIT)\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto t = tail.match(conditions);
    if (t.hasMatch()) conditions.truncate(t.capturedStart());
    return conditions;
}

// True when the statement means to read every row of its table: it has no
// WHERE, or no condition of its WHERE picks rows by a value. Conditions that
// only leave rows out ("nif_cabecera_albaran_venta <> '*'", how all customers
// are chosen; "pvp_neto_productos > 0") or look for text anywhere in a column
// ("descripcion_productos LIKE '*TORN*'") are read against every row
// whatever the indexes.
inline bool ReadsTheWholeTable(const QString& sql) {
    const std::optional<QString> conditions = WhereConditions(sql);
    if (!conditions) return true;
    static const QRegularExpression picks(QStringLiteral("(^|[^<>!=])=|\\bIN\\s*\\(|\\bBETWEEN\\b"),
                                          QRegularExpression::CaseInsensitiveOption);
    return !picks.match(*conditions).hasMatch();
}

// The columns a WHERE made only of AND compares with "=": nothing when the
// WHERE has an OR (the engine then searches each side on its own).
inline QStringList EqualityColumns(const QString& sql) {
    const std::optional<QString> where = WhereConditions(sql);
    if (!where) return {};
    const QString& conditions = *where;
    static const QRegularExpression orWord(QStringLiteral("\\bOR\\b"), QRegularExpression::CaseInsensitiveOption);
    if (orWord.match(conditions).hasMatch()) return {};
    static const QRegularExpression andWord(QStringLiteral("\\bAND\\b"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression equality(QStringLiteral("^\\s*\\(*\\s*(\\w+)\\s*=[^=]"));
    QStringList columns;
    for (const QString& term : conditions.split(andWord)) {
        const auto m = equality.match(term + QLatin1Char(' '));
        if (!m.hasMatch()) continue;
        const QString c = m.captured(1).toLower();
        if (c != QLatin1String("rowid") && !columns.contains(c)) columns << c;
    }
    return columns;
}

// True when the index is unique (a key) and the search uses all its columns:
// it finds one row, whatever else the statement compares.
inline bool FindsOneRow(sqlite3* h, const QString& table, const QString& index, int used) {
    auto number = [&](const QString& sql) {
        sqlite3_stmt* st = nullptr;
        int n = -1;
        if (sqlite3_prepare_v2(h, sql.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK &&
            sqlite3_step(st) == SQLITE_ROW)
            n = sqlite3_column_int(st, 0);
        sqlite3_finalize(st);
        return n;
    };
    const int unique =
        number(QStringLiteral("SELECT \"unique\" FROM pragma_index_list('%1') WHERE name = '%2'").arg(table, index));
    const int columns = number(QStringLiteral("SELECT count(*) FROM pragma_index_info('%1')").arg(index));
    return unique == 1 && columns == used;
}

// What is wrong with the statement's plan, for a message; nothing when it is
// right:
//  - it picks rows of a growing table and the engine reads all of that table;
//  - it picks rows of a growing table by several values and the engine
//    searches an index by only some of them, reading (say) a whole year to
//    find one note, unless that search is by a whole key;
//  - it reads a growing table whole and the engine sorts all of it for its
//    ORDER BY, where an index would give the order;
//  - it names a growing table and can't be planned on the database at all.
inline std::optional<QString> PlanFault(vel::Database& db, const QString& sql) {
    QString error;
    const QStringList plan = PlanOf(db.handle(), sql, &error);
    const QString shown = QStringLiteral("\n  statement: %1\n  plan: %2").arg(sql, plan.join(QStringLiteral(" | ")));
    if (!error.isEmpty()) {
        static const QRegularExpression word(QStringLiteral("\\w+"));
        for (auto it = word.globalMatch(sql); it.hasNext();) {
            if (GrowsWithTheBusiness(it.next().captured()))
                return QStringLiteral("can't be planned (%1)%2").arg(error, shown);
        }
        return std::nullopt;
    }
    static const QRegularExpression scan(QStringLiteral("^SCAN (\\w+)"));
    const bool whole = ReadsTheWholeTable(sql);
    bool sorts = false;
    for (const QString& step : plan) sorts = sorts || step.contains(QLatin1String("TEMP B-TREE FOR ORDER BY"));
    for (const QString& step : plan) {
        const auto m = scan.match(step);
        if (!m.hasMatch() || !GrowsWithTheBusiness(m.captured(1))) continue;
        if (!whole) return QStringLiteral("reads all of %1 to pick some rows%2").arg(m.captured(1), shown);
        if (sorts) return QStringLiteral("sorts all of %1 for its order%2").arg(m.captured(1), shown);
    }
    const QStringList equal = EqualityColumns(sql);
    static const QRegularExpression search(QStringLiteral("^SEARCH (\\w+) USING (?:COVERING )?INDEX (\\w+) \\((.*)\\)"));
    for (const QString& step : plan) {
        const auto m = search.match(step);
        if (!m.hasMatch() || !GrowsWithTheBusiness(m.captured(1))) continue;
        const int used = static_cast<int>(m.captured(3).count(QLatin1String("=?")));
        if (used < equal.size() && !FindsOneRow(db.handle(), m.captured(1), m.captured(2), used))
            return QStringLiteral("searches %1 by %2 of its %3 values (%4)%5")
                .arg(m.captured(1))
                .arg(used)
                .arg(equal.size())
                .arg(equal.join(QStringLiteral(", ")), shown);
    }
    return std::nullopt;
}

} // namespace veltest
