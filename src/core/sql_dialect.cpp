// The SQL text of the windows, turned into what the engine runs.
#include "core/sql_dialect.h"

#include <QRegularExpression>
#include <QStringView>

#include <vector>

namespace vel::dialect {

namespace {

// A number written straight against the next word, as in
// "ejercicio_series = 2024AND tienda_series = 2" (the ticket window joins the
// year and the AND with no blank): the original engine reads the number and
// then the word; SQLite wants a blank between them, which is put in here.
// Texts in quotes are left alone.
QString separateNumbersFromWords(const QString& sql) {
    auto isWordChar = [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$'); };
    QString out;
    qsizetype copied = 0;
    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            const QChar quote = c;
            ++i;
            while (i < n && sql.at(i) != quote) ++i;
            ++i;
            continue;
        }
        if (c == QLatin1Char('[')) {
            while (i < n && sql.at(i) != QLatin1Char(']')) ++i;
            ++i;
            continue;
        }
        if (isWordChar(c) && !c.isDigit()) {
            while (i < n && isWordChar(sql.at(i))) ++i;
            continue;
        }
        if (c.isDigit() || (c == QLatin1Char('.') && i + 1 < n && sql.at(i + 1).isDigit())) {
            while (i < n && sql.at(i).isDigit()) ++i;
            if (i < n && sql.at(i) == QLatin1Char('.')) {
                ++i;
                while (i < n && sql.at(i).isDigit()) ++i;
            }
            if (i + 1 < n && (sql.at(i) == QLatin1Char('e') || sql.at(i) == QLatin1Char('E'))) {
                qsizetype j = i + 1;
                if (j < n && (sql.at(j) == QLatin1Char('+') || sql.at(j) == QLatin1Char('-'))) ++j;
                if (j < n && sql.at(j).isDigit()) {
                    i = j;
                    while (i < n && sql.at(i).isDigit()) ++i;
                }
            }
            if (i < n && isWordChar(sql.at(i))) {
                out += QStringView(sql).mid(copied, i - copied);
                out += QLatin1Char(' ');
                copied = i;
            }
            continue;
        }
        ++i;
    }
    if (copied == 0) return sql;
    out += QStringView(sql).mid(copied);
    return out;
}

// The statement in the form SQLite takes: "DELETE *  FROM t" (with the star)
// is the same statement as "DELETE FROM t", and numbers stand apart from the
// words after them.
QString toEngine(const QString& text) {
    const QString sql = separateNumbersFromWords(text);
    // Only a DELETE can carry the star.
    qsizetype i = 0;
    while (i < sql.size() && sql.at(i).isSpace()) ++i;
    if (!QStringView(sql).mid(i, 6).startsWith(QLatin1String("DELETE"), Qt::CaseInsensitive)) return sql;
    static const QRegularExpression deleteStar(QStringLiteral("^(\\s*DELETE)\\s+\\*\\s*(FROM\\b)"),
                                               QRegularExpression::CaseInsensitiveOption);
    const auto m = deleteStar.match(sql);
    if (!m.hasMatch()) return sql;
    QString out = sql;
    out.replace(m.capturedStart(), m.capturedLength(), m.captured(1) + QStringLiteral(" ") + m.captured(2));
    return out;
}

// ---------------------------------------------------------------------------
// Keyed cursors.

// A piece of statement text: a word, a number, a quoted text or name, or one
// character of punctuation. Blanks and comments are no pieces.
struct Token {
    enum Kind { Word, Number, Quoted, Punct } kind;
    qsizetype start, end; // [start, end) in the text
    int depth;            // parentheses around it
};

std::vector<Token> tokenize(const QString& sql) {
    std::vector<Token> out;
    const qsizetype n = sql.size();
    qsizetype i = 0;
    int depth = 0;
    auto isWordStart = [](QChar c) { return c.isLetter() || c == QLatin1Char('_'); };
    auto isWordChar = [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$'); };
    while (i < n) {
        const QChar c = sql.at(i);
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (c == QLatin1Char('-') && i + 1 < n && sql.at(i + 1) == QLatin1Char('-')) {
            while (i < n && sql.at(i) != QLatin1Char('\n')) ++i;
            continue;
        }
        if (c == QLatin1Char('/') && i + 1 < n && sql.at(i + 1) == QLatin1Char('*')) {
            const qsizetype close = sql.indexOf(QLatin1String("*/"), i + 2);
            i = close < 0 ? n : close + 2;
            continue;
        }
        const qsizetype start = i;
        if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('[')) {
            const QChar close = c == QLatin1Char('[') ? QLatin1Char(']') : c;
            ++i;
            while (i < n) {
                if (sql.at(i) == close) {
                    // A doubled quote stands for itself inside the text.
                    if (close != QLatin1Char(']') && i + 1 < n && sql.at(i + 1) == close) {
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                ++i;
            }
            out.push_back({Token::Quoted, start, i, depth});
            continue;
        }
        if (isWordStart(c)) {
            while (i < n && isWordChar(sql.at(i))) ++i;
            out.push_back({Token::Word, start, i, depth});
            continue;
        }
        if (c.isDigit() || (c == QLatin1Char('.') && i + 1 < n && sql.at(i + 1).isDigit())) {
            while (i < n && (sql.at(i).isLetterOrNumber() || sql.at(i) == QLatin1Char('.'))) ++i;
            out.push_back({Token::Number, start, i, depth});
            continue;
        }
        if (c == QLatin1Char(')')) --depth;
        out.push_back({Token::Punct, start, i + 1, depth});
        if (c == QLatin1Char('(')) ++depth;
        ++i;
    }
    return out;
}

} // namespace

QString ToEngine(const QString& sql) { return toEngine(sql); }

std::optional<KeyedSelect> Keyed(const QString& sql) {
    std::vector<Token> t = tokenize(sql);
    auto text = [&](const Token& k) { return QStringView(sql).mid(k.start, k.end - k.start); };
    auto is = [&](size_t i, const char* word) {
        return i < t.size() && t[i].kind == Token::Word && text(t[i]).compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    };
    auto isPunct = [&](size_t i, char p) { return i < t.size() && t[i].kind == Token::Punct && sql.at(t[i].start) == QLatin1Char(p); };
    // A statement ends at its last piece: a closing ";" may follow.
    while (!t.empty() && isPunct(t.size() - 1, ';')) t.pop_back();
    if (t.empty() || !is(0, "SELECT")) return std::nullopt;

    // Anything but the columns of one table, filtered and ordered, reads its
    // rows as they come.
    static const char* const kOther[] = {"SELECT", "DISTINCT", "ALL", "GROUP", "HAVING", "UNION", "INTERSECT",
                                         "EXCEPT", "LIMIT", "OFFSET", "JOIN", "TOP", "WINDOW", "OVER", "WITH",
                                         "VALUES", "NATURAL", "INDEXED", "NULLS", "FILTER", "ROWID", "OID", "_ROWID_"};
    size_t from = 0, where = 0, order = 0;
    for (size_t i = 0; i < t.size(); ++i) {
        if (t[i].kind == Token::Punct && (sql.at(t[i].start) == QLatin1Char(';') ||
                                          (sql.at(t[i].start) == QLatin1Char('(') && from == 0)))
            return std::nullopt; // a second statement, or a function among the columns
        if (t[i].kind != Token::Word) continue;
        for (const char* w : kOther)
            if ((i > 0 || qstrcmp(w, "SELECT") != 0) && is(i, w)) return std::nullopt;
        if (t[i].depth != 0) continue;
        if (is(i, "FROM") && from == 0) from = i;
        else if (is(i, "WHERE") && where == 0) where = i;
        else if (is(i, "ORDER") && is(i + 1, "BY") && order == 0) order = i;
        else if (is(i, "FROM") || is(i, "WHERE") || is(i, "ORDER")) return std::nullopt;
    }
    // SELECT <columns> FROM <table> [WHERE ...] [ORDER BY ...]
    if (from < 2 || from + 1 >= t.size()) return std::nullopt;
    const size_t table = from + 1;
    if (t[table].kind != Token::Word && t[table].kind != Token::Quoted) return std::nullopt;
    const size_t afterTable = table + 1;
    if (afterTable < t.size() && afterTable != where && afterTable != order) return std::nullopt;
    if (where != 0 && where < from) return std::nullopt;
    if (order != 0 && (order < from || (where != 0 && order < where))) return std::nullopt;

    QString direction;
    if (order != 0) {
        // Terms of the order: no position numbers (they would name other
        // columns in the statement of the keys), none empty.
        size_t termStart = order + 2;
        for (size_t i = termStart; i <= t.size(); ++i) {
            if (i < t.size() && !(isPunct(i, ',') && t[i].depth == 0)) continue;
            if (i == termStart) return std::nullopt;
            if (i == termStart + 1 && t[termStart].kind == Token::Number) return std::nullopt;
            termStart = i + 1;
        }
        if (is(t.size() - 1, "DESC")) direction = QStringLiteral(" DESC");
    }

    const qsizetype listEnd = t[from - 1].end;
    const qsizetype fromStart = t[from].start;
    const qsizetype end = t.back().end;
    const QString columns = sql.mid(t[1].start, listEnd - t[1].start);
    const QString tableName = text(t[table]).toString();
    const QString body = sql.mid(fromStart, end - fromStart); // FROM ... up to the last term
    const QString tieBreak = QStringLiteral(", rowid") + direction;

    // A filter of terms joined by OR ("referencia_productos = x OR
    // cod_barras1_productos = x OR ...") is answered by one index search per
    // term, and its rows come grouped by the term that found them. The
    // program's lookups take the first row as the product, which must be the
    // first in the table's own order (the order of saving), whichever column
    // matched: such a SELECT with no order of its own is read in the key's.
    bool filterWithOr = false;
    if (order == 0 && where != 0)
        for (size_t i = where + 1; i < t.size(); ++i)
            if (t[i].depth == 0 && is(i, "OR")) filterWithOr = true;
    const QString keyOrder = filterWithOr ? QStringLiteral(" ORDER BY rowid") : QString();

    KeyedSelect k;
    k.rows = sql.left(listEnd) + QStringLiteral(", rowid ") + body + (order != 0 ? tieBreak : keyOrder) + sql.mid(end);
    if (order != 0) k.keysAfter = QStringLiteral("SELECT rowid ") + body + tieBreak + QStringLiteral(" LIMIT -1 OFFSET ?1");
    else if (filterWithOr)
        k.keysAfter = QStringLiteral("SELECT rowid ") + body + keyOrder + QStringLiteral(" LIMIT -1 OFFSET ?1");
    k.row = QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") + tableName + QStringLiteral(" WHERE rowid = ?1");
    return k;
}

} // namespace vel::dialect
