// The record store on SQLite.
//
// What the engine is asked to do, and why:
//
//  * Settings. Every window writes one statement at a time with no transaction,
//    so each statement is its own commit. With the rollback journal and full sync
//    a commit costs about 0.6 ms (two fsyncs); with the write-ahead log and
//    synchronous=NORMAL it costs a few microseconds, because the log is synced
//    only at checkpoints. The file cannot be corrupted by a crash in that mode: on
//    power loss the last few commits may be rolled back, and that is all. So the
//    database runs in WAL mode with synchronous=NORMAL (measured by the
//    record-store benchmark, see bench/record_store_bench.cpp). The write-ahead
//    log needs every program that shares the file to run on the same machine.
//
//  * Text. Every text column is declared with the collation ESPANOL: comparison
//    without regard to case, accents or trailing blanks, and Spanish order (Ñ
//    after N), as the
//    shop's users expect from "=", "<>", ORDER BY and the keys. Date columns hold
//    text dd/mm/yyyy and use the collation FECHA, which orders them by day in the
//    calendar (texts that are not dates go after every date, in ESPANOL order).
//
//  * LIKE. The windows write * and ? as wild cards (also # for a digit and
//    [list] / [!list]); % and _ are plain characters. SQLite's LIKE operator is
//    routed to our own like() function, which understands that form and compares
//    letters as the collation does.
//
//  * Kinds. Tables are STRICT, numbers REAL and texts TEXT: a number written in
//    quotes into a numeric column ('12.5', the money columns of documents) is
//    stored as the number, a number written bare into a text column is stored as
//    its text (0012 -> '12'), and a text that is not a number in a numeric column
//    fails with the type error 3464.
//
//  * Cursors read rows as they move and hold the current row and the keys of
//    the rows met. Before any statement that writes, every open cursor of every
//    open database takes the keys of the rows still to come and releases its
//    statement: an open cursor then never holds a read snapshot while the
//    windows write, and the write-ahead log can be checkpointed and stays small
//    (the bulk price change walks a cursor and updates row by row). See
//    "How a cursor holds its rows" below.
//
//  * A file is opened only when it is a database of this program, and nothing
//    is written to it before that is known (see "Telling a database of this
//    program from any other file" below).
//
//  * Exactly one statement per call; errors come back with the numbers and the
//    Spanish descriptions of the original engine.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/sql_dialect.h"
#include "core/sql_values.h"
#include "runtime/errors.h"

#include <sqlite3.h>
#include <unicode/ucol.h>
#include <unicode/uchar.h>

#include <QChar>
#include <QFile>
#include <QFileInfo>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>
#include <string>

#include <unistd.h>


namespace vel {

namespace {

// ---------------------------------------------------------------------------
// Letters as the shop compares them.

// Folds a code point to the letter it is compared as: upper case, without
// accent, except Ñ, which is a letter of its own.
char32_t foldOther(char32_t cp);
inline char32_t foldLetter(char32_t cp) {
    if (cp < 0x80) return (cp >= U'a' && cp <= U'z') ? cp - 32 : cp;
    return foldOther(cp);
}
char32_t foldOther(char32_t cp) {
    static const std::vector<char32_t> table = [] {
        std::vector<char32_t> t(0x250);
        for (char32_t c = 0; c < t.size(); ++c) {
            QChar ch(static_cast<char16_t>(c));
            char32_t out = c;
            if (c == U'ñ' || c == U'Ñ') {
                out = U'Ñ';
            } else if (ch.decompositionTag() == QChar::Canonical) {
                const QString d = ch.decomposition();
                if (!d.isEmpty()) out = d.at(0).unicode();
            }
            out = QChar::toUpper(out);
            t[c] = out;
        }
        return t;
    }();
    if (cp < table.size()) return table[cp];
    return static_cast<char32_t>(u_toupper(static_cast<UChar32>(cp)));
}

// Reads one code point of UTF-8 text; malformed bytes are taken one by one.
char32_t nextCodePoint(const unsigned char*& p, const unsigned char* end) {
    const unsigned char c = *p++;
    if (c < 0x80) return c;
    int extra = 0;
    char32_t cp = 0;
    if ((c & 0xE0) == 0xC0) { extra = 1; cp = c & 0x1F; }
    else if ((c & 0xF0) == 0xE0) { extra = 2; cp = c & 0x0F; }
    else if ((c & 0xF8) == 0xF0) { extra = 3; cp = c & 0x07; }
    else return c;
    if (end - p < extra) return c;
    for (int i = 0; i < extra; ++i) {
        if ((p[i] & 0xC0) != 0x80) return c;
    }
    for (int i = 0; i < extra; ++i) cp = (cp << 6) | (*p++ & 0x3F);
    return cp;
}

UCollator* spanishCollator() {
    static UCollator* collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        UCollator* c = ucol_open("es", &status);
        if (U_FAILURE(status) || !c) {
            status = U_ZERO_ERROR;
            c = ucol_open("", &status);
        }
        // Primary strength: case and accents make no difference; Ñ stays a
        // letter of its own after N.
        ucol_setStrength(c, UCOL_PRIMARY);
        return c;
    }();
    return collator;
}

bool isPlainAscii(const unsigned char* s, int n) {
    for (int i = 0; i < n; ++i) {
        const unsigned char c = s[i];
        if (!((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' '))
            return false;
    }
    return true;
}

// Most keys and names are plain letters, digits and blanks; for those the
// Spanish order is the order of the upper-cased bytes, and the collator is not
// needed. Anything else goes through the collator.
int compareSpanish(const unsigned char* a, int na, const unsigned char* b, int nb) {
    // Blanks at the end of a text don't count: the payment-term list pads its
    // entries ("30 /30 DIAS", a name padded to 50) and reads the key back with
    // its padding, "WHERE codigo_formapago = '30 '", which must find term 30.
    while (na > 0 && a[na - 1] == ' ') --na;
    while (nb > 0 && b[nb - 1] == ' ') --nb;
    if (isPlainAscii(a, na) && isPlainAscii(b, nb)) {
        const int n = std::min(na, nb);
        for (int i = 0; i < n; ++i) {
            int ca = a[i], cb = b[i];
            if (ca >= 'a' && ca <= 'z') ca -= 32;
            if (cb >= 'a' && cb <= 'z') cb -= 32;
            if (ca != cb) return ca < cb ? -1 : 1;
        }
        return na == nb ? 0 : (na < nb ? -1 : 1);
    }
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult r = ucol_strcollUTF8(spanishCollator(), reinterpret_cast<const char*>(a), na,
                                                reinterpret_cast<const char*>(b), nb, &status);
    if (U_FAILURE(status)) {
        const int c = std::memcmp(a, b, static_cast<size_t>(std::min(na, nb)));
        if (c != 0) return c < 0 ? -1 : 1;
        return na == nb ? 0 : (na < nb ? -1 : 1);
    }
    return r == UCOL_LESS ? -1 : (r == UCOL_GREATER ? 1 : 0);
}

int collateSpanish(void*, int na, const void* a, int nb, const void* b) {
    return compareSpanish(static_cast<const unsigned char*>(a), na, static_cast<const unsigned char*>(b), nb);
}

// A date written d/m/yyyy (one or two digits for day and month) as yyyymmdd;
// -1 when the text is not such a date.
long dateKey(const unsigned char* s, int n) {
    int i = 0;
    auto number = [&](int minDigits, int maxDigits, long& out) {
        int digits = 0;
        out = 0;
        while (i < n && s[i] >= '0' && s[i] <= '9' && digits < maxDigits) {
            out = out * 10 + (s[i] - '0');
            ++i;
            ++digits;
        }
        return digits >= minDigits;
    };
    long d, m, y;
    if (!number(1, 2, d) || i >= n || s[i++] != '/') return -1;
    if (!number(1, 2, m) || i >= n || s[i++] != '/') return -1;
    if (!number(4, 4, y) || i != n) return -1;
    return y * 10000 + m * 100 + d;
}

int collateDate(void*, int na, const void* a, int nb, const void* b) {
    const auto* sa = static_cast<const unsigned char*>(a);
    const auto* sb = static_cast<const unsigned char*>(b);
    const long ka = dateKey(sa, na), kb = dateKey(sb, nb);
    if (ka >= 0 && kb >= 0) return ka == kb ? 0 : (ka < kb ? -1 : 1);
    if (ka >= 0) return -1;
    if (kb >= 0) return 1;
    return compareSpanish(sa, na, sb, nb);
}

// ---------------------------------------------------------------------------
// LIKE with the wild cards the windows write.

struct PatternItem {
    enum Type { Char, AnyOne, AnyMany, Digit, Set } type;
    char32_t ch = 0;                                   // Char
    std::vector<std::pair<char32_t, char32_t>> ranges; // Set
    bool negated = false;                              // Set
};
using Pattern = std::vector<PatternItem>;

Pattern compilePattern(const unsigned char* p, int n, char32_t escape, bool hasEscape) {
    Pattern out;
    const unsigned char* end = p + n;
    while (p < end) {
        char32_t c = nextCodePoint(p, end);
        PatternItem item;
        if (hasEscape && c == escape && p < end) {
            item.type = PatternItem::Char;
            item.ch = foldLetter(nextCodePoint(p, end));
        } else if (c == U'*') {
            if (!out.empty() && out.back().type == PatternItem::AnyMany) continue;
            item.type = PatternItem::AnyMany;
        } else if (c == U'?') {
            item.type = PatternItem::AnyOne;
        } else if (c == U'#') {
            item.type = PatternItem::Digit;
        } else if (c == U'[') {
            // A list up to the closing bracket; an opening bracket with no
            // closing one stands for itself.
            const unsigned char* q = p;
            std::vector<char32_t> chars;
            bool closed = false;
            while (q < end) {
                char32_t k = nextCodePoint(q, end);
                if (k == U']' && !chars.empty()) { closed = true; break; }
                if (k == U']' && chars.empty()) { closed = true; break; }
                chars.push_back(k);
            }
            if (!closed) {
                item.type = PatternItem::Char;
                item.ch = U'[';
            } else {
                p = q;
                item.type = PatternItem::Set;
                size_t i = 0;
                if (!chars.empty() && chars[0] == U'!') { item.negated = true; i = 1; }
                for (; i < chars.size(); ++i) {
                    char32_t lo = foldLetter(chars[i]), hi = lo;
                    if (i + 2 < chars.size() && chars[i + 1] == U'-') {
                        hi = foldLetter(chars[i + 2]);
                        i += 2;
                    }
                    item.ranges.emplace_back(lo, hi);
                }
            }
        } else {
            item.type = PatternItem::Char;
            item.ch = foldLetter(c);
        }
        out.push_back(std::move(item));
    }
    return out;
}

bool itemMatches(const PatternItem& item, char32_t folded, char32_t raw) {
    switch (item.type) {
    case PatternItem::Char: return item.ch == folded;
    case PatternItem::AnyOne: return true;
    case PatternItem::Digit: return raw >= U'0' && raw <= U'9';
    case PatternItem::Set: {
        bool in = false;
        for (const auto& [lo, hi] : item.ranges) {
            if (folded >= lo && folded <= hi) { in = true; break; }
        }
        return in != item.negated;
    }
    case PatternItem::AnyMany: return false;
    }
    return false;
}

bool patternMatches(const Pattern& pattern, const unsigned char* s, int n) {
    // The text as folded letters, kept on the stack for ordinary lengths.
    char32_t small[256], smallRaw[256];
    std::vector<char32_t> big, bigRaw;
    char32_t* text = small;
    char32_t* raw = smallRaw;
    size_t len = 0;
    if (n > 256) {
        big.resize(static_cast<size_t>(n));
        bigRaw.resize(static_cast<size_t>(n));
        text = big.data();
        raw = bigRaw.data();
    }
    const unsigned char* p = s;
    const unsigned char* end = s + n;
    while (p < end) {
        const char32_t c = nextCodePoint(p, end);
        raw[len] = c;
        text[len] = foldLetter(c);
        ++len;
    }
    const size_t m = pattern.size();
    size_t pi = 0, ti = 0, starP = SIZE_MAX, starT = 0;
    while (ti < len) {
        if (pi < m && pattern[pi].type == PatternItem::AnyMany) {
            starP = pi++;
            starT = ti;
            continue;
        }
        if (pi < m && itemMatches(pattern[pi], text[ti], raw[ti])) {
            ++pi;
            ++ti;
            continue;
        }
        if (starP != SIZE_MAX) {
            pi = starP + 1;
            ti = ++starT;
            continue;
        }
        return false;
    }
    while (pi < m && pattern[pi].type == PatternItem::AnyMany) ++pi;
    return pi == m;
}

void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    // SQLite calls like(pattern, text[, escape]) for "text LIKE pattern".
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    char32_t escape = 0;
    bool hasEscape = false;
    if (argc == 3) {
        if (sqlite3_value_type(argv[2]) == SQLITE_NULL) {
            sqlite3_result_null(ctx);
            return;
        }
        const auto* e = sqlite3_value_text(argv[2]);
        const int en = sqlite3_value_bytes(argv[2]);
        if (en > 0) {
            const unsigned char* q = e;
            escape = nextCodePoint(q, e + en);
            hasEscape = true;
        }
    }
    auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
    if (!pattern) {
        const auto* pt = sqlite3_value_text(argv[0]);
        const int pn = sqlite3_value_bytes(argv[0]);
        pattern = new Pattern(compilePattern(pt, pn, escape, hasEscape));
        sqlite3_set_auxdata(ctx, 0, pattern, [](void* p) { delete static_cast<Pattern*>(p); });
        // SQLite may drop the cached pattern at once; fetch it back to know.
        pattern = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
        if (!pattern) {
            const Pattern once = compilePattern(pt, pn, escape, hasEscape);
            const auto* tt = sqlite3_value_text(argv[1]);
            sqlite3_result_int(ctx, patternMatches(once, tt, sqlite3_value_bytes(argv[1])) ? 1 : 0);
            return;
        }
    }
    const auto* t = sqlite3_value_text(argv[1]);
    const int tn = sqlite3_value_bytes(argv[1]);
    sqlite3_result_int(ctx, patternMatches(*pattern, t, tn) ? 1 : 0);
}

void registerFunctions(sqlite3* db) {
    sqlite3_create_collation_v2(db, "ESPANOL", SQLITE_UTF8, nullptr, collateSpanish, nullptr);
    sqlite3_create_collation_v2(db, "FECHA", SQLITE_UTF8, nullptr, collateDate, nullptr);
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function(db, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr);
    sqlite3_create_function(db, "like", 3, flags, nullptr, likeFunction, nullptr, nullptr);
}

// ---------------------------------------------------------------------------
// Statements and errors.

// Every open database of the program: a write through one of them first
// releases the cursors of all of them (a window may open the file again for
// itself). The list runs through the databases: a plain pointer, with nothing
// to destroy at the program's exit, so a database closed then (one held by a
// static) never reads a list that is already gone.
constinit Database* firstOpen = nullptr;
// Events of the program running now as actions (Database::BeginAction).
int actionDepth = 0;

// The first word of a statement, upper-cased.
QString firstWord(const QString& sql) {
    static const QRegularExpression re(QStringLiteral("^[\\s(]*([A-Za-z]+)"));
    const auto m = re.match(sql);
    return m.hasMatch() ? m.captured(1).toUpper() : QString();
}

// The expression the engine names in its message about a query: the WHERE
// clause up to ORDER BY, or the select list.
QString queryExpression(const QString& sql) {
    static const QRegularExpression where(QStringLiteral("\\bWHERE\\b"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression orderBy(QStringLiteral("\\bORDER\\s+BY\\b"),
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression from(QStringLiteral("\\bFROM\\b"), QRegularExpression::CaseInsensitiveOption);
    const auto w = where.match(sql);
    if (w.hasMatch()) {
        QString rest = sql.mid(w.capturedEnd());
        const auto o = orderBy.match(rest);
        if (o.hasMatch()) rest = rest.left(o.capturedStart());
        return rest.trimmed();
    }
    const auto f = from.match(sql);
    QString list = f.hasMatch() ? sql.left(f.capturedStart()) : sql;
    static const QRegularExpression select(QStringLiteral("^\\s*SELECT\\b"), QRegularExpression::CaseInsensitiveOption);
    list.remove(select);
    return list.trimmed();
}

[[noreturn]] void raiseSyntax(const QString& sql) {
    const QString word = firstWord(sql);
    if (word == QLatin1String("INSERT"))
        vb::Raise(3134, QStringLiteral("Error de sintaxis en la instrucción INSERT INTO."));
    if (word == QLatin1String("UPDATE"))
        vb::Raise(3144, QStringLiteral("Error de sintaxis en la instrucción UPDATE."));
    if (word == QLatin1String("SELECT") || word == QLatin1String("DELETE"))
        vb::Raise(3075, QStringLiteral("Error de sintaxis (falta operador) en la expresión de consulta '%1'.")
                            .arg(queryExpression(sql)));
    if (word == QLatin1String("CREATE"))
        vb::Raise(3290, QStringLiteral("Error de sintaxis en la instrucción CREATE TABLE."));
    vb::Raise(3129, QStringLiteral("Instrucción SQL no válida; se esperaba 'DELETE', 'INSERT', 'PROCEDURE', "
                                   "'SELECT' o 'UPDATE'."));
}

// Turns the engine's failure into the original engine's number and words.
[[noreturn]] void raiseEngineError(sqlite3* db, int rc, const QString& sql, const QString& path) {
    const int extended = db ? sqlite3_extended_errcode(db) : rc;
    const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
    switch (rc & 0xFF) {
    case SQLITE_CONSTRAINT:
        if (extended == SQLITE_CONSTRAINT_DATATYPE)
            vb::Raise(3464, QStringLiteral("No coinciden los tipos de datos en la expresión de criterios."));
        if (extended == SQLITE_CONSTRAINT_NOTNULL)
            vb::Raise(3314, QStringLiteral("El campo no puede contener un valor nulo porque su propiedad "
                                           "Requerido está establecida en True. Escriba un valor en este campo."));
        vb::Raise(3022, QStringLiteral(
                            "Los cambios solicitados en la tabla no se realizaron correctamente porque crearían "
                            "valores duplicados en el índice, clave principal o relación. Cambie los datos en el "
                            "campo o los campos que contienen datos duplicados, quite el índice o vuelva a definir "
                            "el índice para permitir entradas duplicadas e inténtelo de nuevo."));
    case SQLITE_MISMATCH:
        vb::Raise(3464, QStringLiteral("No coinciden los tipos de datos en la expresión de criterios."));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        vb::Raise(3218, QStringLiteral("No se pudo actualizar; actualmente bloqueado."));
    case SQLITE_READONLY:
        vb::Raise(3027, QStringLiteral("No se puede actualizar. La base de datos o el objeto es de sólo lectura."));
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        vb::Raise(3343, QStringLiteral("Formato de base de datos no reconocido '%1'.").arg(path));
    case SQLITE_FULL:
        vb::Raise(3026, QStringLiteral("No hay suficiente espacio en disco."));
    case SQLITE_IOERR:
        vb::Raise(3043, QStringLiteral("Error en el disco o en la red."));
    case SQLITE_ERROR:
        break;
    default:
        vb::Raise(3000, QStringLiteral("Error reservado (%1); no hay mensaje para este error.").arg(rc));
    }
    static const QRegularExpression noTable(QStringLiteral("^no such table: (?:\\w+\\.)?(.+)$"));
    static const QRegularExpression valueCount(QStringLiteral("(has \\d+ columns but \\d+ values were supplied)|"
                                                              "(\\d+ values for \\d+ columns)"));
    static const QRegularExpression noFunction(QStringLiteral("^no such function: (.+)$"));
    if (const auto m = noTable.match(message); m.hasMatch())
        vb::Raise(3078, QStringLiteral("El motor de base de datos Microsoft Jet no puede encontrar la tabla o "
                                       "consulta de entrada '%1'. Asegúrese de que existe y que su nombre está "
                                       "escrito correctamente.")
                            .arg(m.captured(1)));
    if (message.startsWith(QLatin1String("no such column:")))
        vb::Raise(3061, QStringLiteral("Pocos parámetros. Se esperaba 1."));
    if (valueCount.match(message).hasMatch())
        vb::Raise(3346, QStringLiteral("El número de valores de consulta y el número de campos de destino son "
                                       "diferentes."));
    if (const auto m = noFunction.match(message); m.hasMatch())
        vb::Raise(3085, QStringLiteral("Función '%1' no definida en la expresión.").arg(m.captured(1)));
    raiseSyntax(sql);
}

[[noreturn]] void raiseNoCurrentRecord() {
    vb::Raise(3021, QStringLiteral("No hay un registro activo."));
}

[[noreturn]] void raiseClosed() {
    vb::Raise(3420, QStringLiteral("El objeto no es válido o ya no está establecido."));
}

vb::Variant columnValue(sqlite3_stmt* stmt, int i) {
    switch (sqlite3_column_type(stmt, i)) {
    case SQLITE_INTEGER: return vb::Variant(static_cast<double>(sqlite3_column_int64(stmt, i)));
    case SQLITE_FLOAT: return vb::Variant(sqlite3_column_double(stmt, i));
    case SQLITE_NULL: return vb::Variant();
    default: {
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(stmt, i));
        const int n = sqlite3_column_bytes(stmt, i);
        // Many columns hold an empty text: no allocation for those.
        static const QString empty = QString::fromLatin1("");
        if (n == 0) return vb::Variant(empty);
        return vb::Variant(QString::fromUtf8(t, n));
    }
    }
}

// The names of the columns of a statement. The windows run the same few
// queries again and again, so the names of the last statements are kept and
// reused when the engine gives the same names again: no text is converted and
// nothing is allocated for them.
std::vector<QString> columnNames(sqlite3_stmt* stmt) {
    struct Entry {
        std::vector<std::string> raw;
        std::vector<QString> names;
    };
    static std::vector<Entry> recent; // most recent first
    const int n = sqlite3_column_count(stmt);
    for (size_t e = 0; e < recent.size(); ++e) {
        Entry& entry = recent[e];
        if (static_cast<int>(entry.raw.size()) != n) continue;
        bool same = true;
        for (int i = 0; i < n && same; ++i) same = entry.raw[size_t(i)] == sqlite3_column_name(stmt, i);
        if (!same) continue;
        if (e != 0) std::rotate(recent.begin(), recent.begin() + static_cast<long>(e), recent.begin() + static_cast<long>(e) + 1);
        return recent.front().names;
    }
    Entry entry;
    entry.raw.reserve(size_t(n));
    entry.names.reserve(size_t(n));
    for (int i = 0; i < n; ++i) {
        const char* name = sqlite3_column_name(stmt, i);
        entry.raw.emplace_back(name);
        entry.names.push_back(QString::fromUtf8(name));
    }
    recent.insert(recent.begin(), std::move(entry));
    if (recent.size() > 32) recent.pop_back();
    return recent.front().names;
}

// The program has one thread: the engine need not lock the connection on each
// call, nor count its memory under a lock. Set once, before the first open.
int openFlags(int flags) {
    static const bool configured = [] {
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
        return true;
    }();
    (void)configured;
    return flags | SQLITE_OPEN_NOMUTEX;
}

int lockWait = 5000;

void applySettings(sqlite3* db) {
    // See the head of this file: write-ahead log, synced at checkpoints.
    sqlite3_exec(db, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
}

// ---------------------------------------------------------------------------
// Telling a database of this program from any other file.
//
// Every database the program makes carries the program's mark in the engine's
// header: the application id, four bytes at offset 68, "VLMR". A database made
// before the mark existed has none (zero) and is known by its tables: all the
// program's tables must be there. Anything else is not ours, and the check
// changes nothing in it: the header is read as plain bytes, and the engine
// only reads the file's list of tables before the store's settings (the
// write-ahead log above all, which would rewrite the header for good) are
// applied to a file known to be ours.

constexpr quint32 kProgramMark = 0x564C4D52; // "VLMR"

enum class Header { NotADatabase, Ours, Unmarked, Foreign };

Header readHeader(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Header::NotADatabase;
    const QByteArray h = file.read(100);
    static const QByteArray magic("SQLite format 3\0", 16);
    if (h.size() < 100 || !h.startsWith(magic)) return Header::NotADatabase;
    const auto* b = reinterpret_cast<const unsigned char*>(h.constData()) + 68;
    const quint32 id = quint32(b[0]) << 24 | quint32(b[1]) << 16 | quint32(b[2]) << 8 | quint32(b[3]);
    if (id == kProgramMark) return Header::Ours;
    return id == 0 ? Header::Unmarked : Header::Foreign;
}

[[noreturn]] void raiseNotRecognised(const QString& path) {
    vb::Raise(3343, QStringLiteral("Formato de base de datos no reconocido '%1'.").arg(path));
}

[[noreturn]] void raiseReadOnly(const QString& path) {
    vb::Raise(3051, QStringLiteral("No se puede abrir el archivo '%1': el archivo o la carpeta que lo contiene "
                                   "es de sólo lectura. El programa necesita poder escribir en los dos.")
                        .arg(path));
}

[[noreturn]] void raiseInUse(const QString& path) {
    vb::Raise(3045, QStringLiteral("No se pudo usar '%1'; el archivo ya está en uso.").arg(path));
}

// The first read of the file, through the engine: the names of its tables. A
// lock held by another program is waited for here (the wait is set before),
// and reported as the file being in use.
QStringList readTableNames(sqlite3* db, const QString& path) {
    sqlite3_stmt* st = nullptr;
    int rc = sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type = 'table'", -1, &st, nullptr);
    QStringList names;
    if (rc == SQLITE_OK) {
        while ((rc = sqlite3_step(st)) == SQLITE_ROW)
            names << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    }
    sqlite3_finalize(st);
    if (rc == SQLITE_DONE) return names;
    switch (rc & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: raiseInUse(path);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_IOERR: vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    default: raiseNotRecognised(path); // a file the engine can't read as a database
    }
}

bool holdsTheProgramsTables(const QStringList& names) {
    for (const schema::Table& t : schema::Tables())
        if (!names.contains(QLatin1String(t.name), Qt::CaseInsensitive)) return false;
    return true;
}

} // namespace

// ---------------------------------------------------------------------------
// Recordset
//
// How a cursor holds its rows, and why.
//
// A cursor must never hold the engine's read snapshot while the program
// writes: the bulk price change walks all products and updates each one with
// its cursor still open, and an open snapshot stops the write-ahead log from
// being checkpointed, so it would grow by every page written. So before any
// write, every open cursor lets go of its statement.
//
// What it keeps to go on is the question. Keeping every row (as read, or read
// in at the write) costs memory in proportion to the whole set: walking 50,000
// customers with SELECT * held 160 MB, and one UPDATE after a SELECT of
// 500,000 products read them all in first, 2.3 s and 0.9 GB. Re-running the
// query from where it stood on each write costs the rows already walked again
// at every write: quadratic over a bulk change. What the cursor keeps instead
// is the key (rowid) of each row:
//  - while no write comes, the SELECT runs as the windows wrote it, with the
//    key added as one more column; the cursor holds the current row and the
//    keys met so far (8 bytes a row: MoveFirst goes back through them);
//  - at a write, the keys of the rows still to come are read in one statement
//    of keys only, on the same snapshot, after as many as were already read,
//    in the same order (the key is made the last term of the ORDER BY, so the
//    order has no ties); then the SELECT is let go. That statement walks the
//    index and touches no row when the order is the key's, as in the
//    products' price changes;
//  - rows after that are read one by one by key as the cursor reaches them.
//    They are read as they stand at that moment, as the original engine's
//    dynaset reads them, and a row deleted meanwhile reports 3167.
// A SELECT with no ORDER BY has no order another statement could repeat: its
// keys are read from its own statement at the write (the values are not
// converted). A statement of another kind (join, aggregate, DISTINCT: none of
// the windows writes one) keeps its rows as it reads them, and reads the rest
// in at a write.
//
// Measured with bench/cursor_bench.cpp (figures in its head).

Recordset::Recordset(Database* db, sqlite3_stmt* stmt, QString text, bool keyed, QString keysAfter, QString row)
    : db_(db), stmt_(stmt), text_(std::move(text)), keyed_(keyed), keysAfterSql_(std::move(keysAfter)),
      rowSql_(std::move(row)) {
    names_ = columnNames(stmt);
    if (keyed_ && !names_.empty()) names_.pop_back(); // the key is no field
}

Recordset::~Recordset() {
    if (stmt_) sqlite3_finalize(stmt_);
    if (rowStmt_) sqlite3_finalize(rowStmt_);
    if (db_) {
        auto& open = db_->open_;
        open.erase(std::remove(open.begin(), open.end(), this), open.end());
    }
}

long Recordset::count() const {
    return static_cast<long>(keyed_ ? keys_.size() : rows_.size());
}

bool Recordset::step(bool withValues) {
    if (!stmt_) return false;
    // The row the cursor stands on lives in the statement: keep what it holds
    // when the statement moves on without taking the cursor along.
    if (!withValues) keepLiveRow();
    else if (rowLive_) rowAt_ = -1; // the cursor moves on: a way back reads the row by key
    rowLive_ = false;
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) {
        const int n = static_cast<int>(names_.size());
        if (keyed_) {
            keys_.push_back(sqlite3_column_int64(stmt_, n));
            if (withValues) {
                row_.assign(static_cast<size_t>(n), vb::Variant());
                readCol_.assign(static_cast<size_t>(n), 0);
                rowLive_ = true;
                rowAt_ = count() - 1;
                rowGone_ = false;
            }
        } else {
            std::vector<vb::Variant> row;
            row.reserve(static_cast<size_t>(n));
            for (int i = 0; i < n; ++i) row.push_back(columnValue(stmt_, i));
            rows_.push_back(std::move(row));
        }
        return true;
    }
    // The end, or a failure: either way the statement is released now.
    sqlite3* handle = sqlite3_db_handle(stmt_);
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
    if (rc != SQLITE_DONE) raiseEngineError(handle, rc, text_, db_ ? db_->path() : QString());
    return false;
}

void Recordset::keepLiveRow() {
    if (!rowLive_) return;
    for (size_t i = 0; i < row_.size(); ++i)
        if (!readCol_[i]) row_[i] = columnValue(stmt_, static_cast<int>(i));
    rowLive_ = false;
}

void Recordset::release() {
    if (!stmt_) return;
    keepLiveRow();
    if (keyed_ && !keysAfterSql_.isEmpty()) {
        // The keys still to come, on the snapshot the statement reads (it is
        // still running), after those already met.
        sqlite3* h = sqlite3_db_handle(stmt_);
        const QByteArray sql = keysAfterSql_.toUtf8();
        sqlite3_stmt* keys = nullptr;
        if (sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &keys, nullptr) == SQLITE_OK && keys) {
            sqlite3_bind_int64(keys, 1, static_cast<sqlite3_int64>(keys_.size()));
            const size_t before = keys_.size();
            int rc;
            while ((rc = sqlite3_step(keys)) == SQLITE_ROW) keys_.push_back(sqlite3_column_int64(keys, 0));
            sqlite3_finalize(keys);
            if (rc == SQLITE_DONE) {
                sqlite3_finalize(stmt_);
                stmt_ = nullptr;
                return;
            }
            keys_.resize(before); // no keys that way: from the statement itself, below
        } else if (keys) {
            sqlite3_finalize(keys);
        }
    }
    while (step(false)) {
    }
}

void Recordset::load() const {
    if (rowAt_ == pos_) return;
    if (!rowStmt_) {
        const QByteArray sql = rowSql_.toUtf8();
        const int rc = sqlite3_prepare_v2(db_->handle(), sql.constData(), static_cast<int>(sql.size()), &rowStmt_, nullptr);
        if (rc != SQLITE_OK) {
            if (rowStmt_) sqlite3_finalize(rowStmt_);
            rowStmt_ = nullptr;
            raiseEngineError(db_->handle(), rc, rowSql_, db_->path());
        }
    }
    sqlite3_bind_int64(rowStmt_, 1, static_cast<sqlite3_int64>(keys_[static_cast<size_t>(pos_)]));
    const int rc = sqlite3_step(rowStmt_);
    row_.clear();
    rowLive_ = false;
    rowGone_ = rc != SQLITE_ROW;
    if (rc == SQLITE_ROW)
        for (int i = 0; i < static_cast<int>(names_.size()); ++i) row_.push_back(columnValue(rowStmt_, i));
    // Reset at once: the statement holds no snapshot between rows.
    sqlite3_reset(rowStmt_);
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) {
        rowAt_ = -1;
        raiseEngineError(db_->handle(), rc, rowSql_, db_->path());
    }
    rowAt_ = pos_;
}

bool Recordset::Eof() const {
    if (closed_) raiseClosed();
    return pos_ >= count();
}

bool Recordset::Bof() const {
    if (closed_) raiseClosed();
    return count() == 0;
}

void Recordset::MoveNext() {
    if (closed_) raiseClosed();
    if (pos_ >= count()) raiseNoCurrentRecord();
    ++pos_;
    if (pos_ == count()) step(true);
    if (pos_ < count()) read_ = std::max(read_, pos_ + 1);
}

void Recordset::MoveFirst() {
    if (closed_) raiseClosed();
    if (count() == 0) raiseNoCurrentRecord();
    pos_ = 0;
}

void Recordset::MoveLast() {
    if (closed_) raiseClosed();
    while (step(!keyed_)) {
    }
    if (count() == 0) raiseNoCurrentRecord();
    pos_ = count() - 1;
    read_ = count();
}

long Recordset::AbsolutePosition() const {
    if (closed_) raiseClosed();
    return pos_ < count() ? pos_ : -1;
}

long Recordset::RecordCount() const {
    if (closed_) raiseClosed();
    return read_;
}

int Recordset::columnIndex(const QString& column) const {
    // Windows read the fields of a row mostly in the order of the columns and
    // with the names as declared: look for the exact name from the column
    // after the last one found, then without regard to case.
    const size_t n = names_.size();
    static thread_local const Recordset* lastSet = nullptr;
    static thread_local size_t lastFound = 0;
    const size_t start = (lastSet == this) ? lastFound + 1 : 0;
    for (size_t k = 0; k < n; ++k) {
        const size_t i = (start + k) % n;
        if (names_[i] == column) {
            lastSet = this;
            lastFound = i;
            return static_cast<int>(i);
        }
    }
    for (size_t i = 0; i < n; ++i) {
        if (names_[i].compare(column, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    }
    return -1;
}

vb::Variant Recordset::Fields(const QString& column) const {
    if (closed_) raiseClosed();
    const int i = columnIndex(column);
    if (i < 0) vb::Raise(3265, QStringLiteral("Elemento no encontrado en esta colección."));
    if (pos_ >= count()) raiseNoCurrentRecord();
    if (!keyed_) return rows_[static_cast<size_t>(pos_)][static_cast<size_t>(i)];
    load();
    if (rowGone_) vb::Raise(3167, QStringLiteral("El registro se ha eliminado."));
    const auto c = static_cast<size_t>(i);
    if (rowLive_ && !readCol_[c]) {
        row_[c] = columnValue(stmt_, i);
        readCol_[c] = 1;
    }
    return row_[c];
}

void Recordset::Close() {
    if (closed_) raiseClosed();
    if (stmt_) {
        sqlite3_finalize(stmt_);
        stmt_ = nullptr;
    }
    if (rowStmt_) {
        sqlite3_finalize(rowStmt_);
        rowStmt_ = nullptr;
    }
    rows_.clear();
    keys_.clear();
    row_.clear();
    rowLive_ = false;
    rowAt_ = -1;
    closed_ = true;
    if (db_) {
        auto& open = db_->open_;
        open.erase(std::remove(open.begin(), open.end(), this), open.end());
        db_ = nullptr;
    }
}

// ---------------------------------------------------------------------------
// Database

int Database::LockWait() { return lockWait; }
void Database::SetLockWait(int milliseconds) { lockWait = milliseconds; }

Database::Database(sqlite3* db, QString path) : db_(db), path_(std::move(path)) {
    // From the first database opened on, each event of the program is an action.
    static const bool actions = [] {
        vb::SetActionHooks({.begin = &Database::BeginAction,
                            .end = &Database::EndAction,
                            .abandon = &Database::AbandonAction});
        return true;
    }();
    (void)actions;
    nextOpen_ = firstOpen;
    if (firstOpen) firstOpen->prevOpen_ = this;
    firstOpen = this;
}

Database::~Database() {
    Close();
    if (prevOpen_) prevOpen_->nextOpen_ = nextOpen_;
    else if (firstOpen == this) firstOpen = nextOpen_;
    if (nextOpen_) nextOpen_->prevOpen_ = prevOpen_;
}

void Database::Close() {
    // Cursors still held by windows stop working: their reads fail from now on.
    for (Recordset* r : open_) {
        if (r->stmt_) {
            sqlite3_finalize(r->stmt_);
            r->stmt_ = nullptr;
        }
        if (r->rowStmt_) {
            sqlite3_finalize(r->rowStmt_);
            r->rowStmt_ = nullptr;
        }
        r->rows_.clear();
        r->keys_.clear();
        r->row_.clear();
        r->closed_ = true;
        r->db_ = nullptr;
    }
    open_.clear();
    // Closed by the program in the middle of an action (the session's end, the
    // compact window): what the action wrote stands. A scope still open is
    // rolled back by the engine as the file closes.
    if (db_ && byAction_ && scopes_ == 0 && !broken_ && !sqlite3_get_autocommit(db_))
        sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
    if (db_) sqlite3_close_v2(db_);
    db_ = nullptr;
}

std::unique_ptr<Database> Database::OpenDatabase(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) {
        if (!info.absoluteDir().exists())
            vb::Raise(3044, QStringLiteral("'%1' no es una ruta válida. Asegúrese de que el nombre de la ruta esté "
                                           "escrito correctamente y que está conectado al servidor en el que "
                                           "reside el archivo.")
                                .arg(QDir::toNativeSeparators(info.absolutePath())));
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    }
    if (info.isDir() || !info.isReadable())
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    // The database and its folder must be writable: the store keeps its log
    // beside the file. Said plainly, instead of the engine failing later on
    // the log as if the file were not a database.
    if (::access(QFile::encodeName(path).constData(), W_OK) != 0 ||
        ::access(QFile::encodeName(info.absolutePath()).constData(), W_OK) != 0)
        raiseReadOnly(path);
    // An empty file, or one that is no database of the engine, or a database
    // that another program marked as its own: not ours, untouched.
    const Header header = readHeader(path);
    if (header == Header::NotADatabase || header == Header::Foreign) raiseNotRecognised(path);
    sqlite3* db = nullptr;
    // Never creates the file: a missing database is an error for the program.
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db, openFlags(SQLITE_OPEN_READWRITE), nullptr);
    if (rc != SQLITE_OK) {
        if (db) sqlite3_close_v2(db);
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    }
    // The wait for a lock holds from the first read on; the collations are
    // there before the engine reads the tables that name them.
    sqlite3_busy_timeout(db, lockWait);
    registerFunctions(db);
    try {
        const QStringList tables = readTableNames(db, path);
        if (header == Header::Unmarked && !holdsTheProgramsTables(tables)) raiseNotRecognised(path);
    } catch (...) {
        sqlite3_close_v2(db);
        throw;
    }
    applySettings(db);
    return std::unique_ptr<Database>(new Database(db, path));
}

bool Database::QuickCheck() {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db_, "PRAGMA quick_check", -1, &st, nullptr) != SQLITE_OK) {
        if (st) sqlite3_finalize(st);
        return false;
    }
    bool whole = false;
    int rows = 0;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
        ++rows;
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
        whole = rows == 1 && t && std::strcmp(t, "ok") == 0;
    }
    sqlite3_finalize(st);
    return rc == SQLITE_DONE && whole;
}

std::unique_ptr<Database> Database::CreateDatabase(const QString& path) {
    if (QFileInfo::exists(path)) vb::Raise(3204, QStringLiteral("La base de datos ya existe."));
    const QFileInfo info(path);
    if (!info.absoluteDir().exists())
        vb::Raise(3044, QStringLiteral("'%1' no es una ruta válida. Asegúrese de que el nombre de la ruta esté "
                                       "escrito correctamente y que está conectado al servidor en el que reside "
                                       "el archivo.")
                            .arg(QDir::toNativeSeparators(info.absolutePath())));
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db,
                                   openFlags(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE), nullptr);
    if (rc != SQLITE_OK) {
        if (db) sqlite3_close_v2(db);
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    }
    sqlite3_busy_timeout(db, lockWait);
    // The program's mark, first thing in the new file.
    sqlite3_exec(db, QStringLiteral("PRAGMA application_id = %1").arg(kProgramMark).toUtf8().constData(), nullptr,
                 nullptr, nullptr);
    registerFunctions(db);
    applySettings(db);
    return std::unique_ptr<Database>(new Database(db, path));
}

std::unique_ptr<Database> Database::CreateInMemory(const QString& path) {
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(":memory:", &db, openFlags(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE), nullptr);
    if (rc != SQLITE_OK) {
        if (db) sqlite3_close_v2(db);
        vb::Raise(7, QStringLiteral("Memoria insuficiente"));
    }
    registerFunctions(db);
    return std::unique_ptr<Database>(new Database(db, path));
}

namespace {

// A comment marker (-- or /*) outside the quoted texts of a statement. The
// windows never write one: it can only come from a value that broke out of its
// quotes.
bool hasCommentMarker(const QString& sql) {
    bool quoted = false;
    const qsizetype n = sql.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = sql[i];
        if (c == QLatin1Char('\'')) {
            quoted = !quoted; // a doubled '' inside a text turns twice
            continue;
        }
        if (quoted || i + 1 >= n) continue;
        const QChar d = sql[i + 1];
        if ((c == QLatin1Char('-') && d == QLatin1Char('-')) || (c == QLatin1Char('/') && d == QLatin1Char('*')))
            return true;
    }
    return false;
}

} // namespace

// A statement that a value has reshaped never runs: one holding a quoted value
// whose apostrophe broke out of its quotes (sql_values.h), or a comment
// marker, fails as the statement's syntax error, the error an apostrophe has
// always given, whatever followed the apostrophe.
void Database::refuseReshaped(const QString& engineSql) {
    if (sql::LlevaValorRoto(engineSql) || hasCommentMarker(engineSql)) raiseSyntax(engineSql);
}

// `reportErrors` false: a statement the engine does not take gives nullptr.
sqlite3_stmt* Database::prepare(const QString& sql, bool reportErrors) {
    // A closed database takes no statement (a window that outlived its Close).
    if (!db_) raiseClosed();
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    const char* tail = nullptr;
    const int rc = sqlite3_prepare_v2(db_, utf8.constData(), static_cast<int>(utf8.size()), &stmt, &tail);
    if (rc != SQLITE_OK || !stmt) {
        if (stmt) sqlite3_finalize(stmt);
        if (!reportErrors) return nullptr;
        if (rc != SQLITE_OK) raiseEngineError(db_, rc, sql, path_);
        raiseSyntax(sql); // nothing but blanks or a comment
    }
    // Exactly one statement: what follows may only be blanks, ";" and comments.
    const char* end = utf8.constData() + utf8.size();
    while (tail && tail < end) {
        sqlite3_stmt* next = nullptr;
        const char* nextTail = nullptr;
        const int rc2 = sqlite3_prepare_v2(db_, tail, static_cast<int>(end - tail), &next, &nextTail);
        if (rc2 != SQLITE_OK || next) {
            if (next) sqlite3_finalize(next);
            sqlite3_finalize(stmt);
            if (!reportErrors) return nullptr;
            vb::Raise(3142, QStringLiteral("Caracteres encontrados después del final de la instrucción SQL."));
        }
        if (nextTail == tail) break;
        tail = nextTail;
    }
    return stmt;
}

void Database::detachCursors() {
    for (Database* db = firstOpen; db; db = db->nextOpen_) {
        for (Recordset* r : db->open_) {
            if (r->stmt_) r->release();
        }
    }
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& sql) {
    const QString text = dialect::ToEngine(sql);
    refuseReshaped(text);
    // The keyed form of the query when it has one and the engine takes it;
    // otherwise (and for the engine's own message on a bad query) as written.
    const auto keyed = dialect::Keyed(text);
    sqlite3_stmt* stmt = keyed ? prepare(keyed->rows, false) : nullptr;
    const bool isKeyed = stmt != nullptr;
    if (!stmt) stmt = prepare(text);
    if (sqlite3_column_count(stmt) == 0) {
        sqlite3_finalize(stmt);
        vb::Raise(3219, QStringLiteral("Operación no válida."));
    }
    std::unique_ptr<Recordset> rs(isKeyed ? new Recordset(this, stmt, text, true, keyed->keysAfter, keyed->row)
                                          : new Recordset(this, stmt, text, false, QString(), QString()));
    // Positioned on the first row: read it now (a failing query fails here).
    rs->step(true);
    rs->read_ = rs->count() > 0 ? 1 : 0;
    open_.push_back(rs.get());
    return rs;
}

void Database::Execute(const QString& sql) {
    const QString text = dialect::ToEngine(sql);
    refuseReshaped(text);
    detachCursors();
    sqlite3_stmt* stmt = prepare(text);
    if (sqlite3_column_count(stmt) > 0) {
        sqlite3_finalize(stmt);
        vb::Raise(3065, QStringLiteral("No se puede ejecutar una consulta de selección."));
    }
    // A transaction that broke on the disk: the rest of its writes are skipped.
    if (broken_) {
        sqlite3_finalize(stmt);
        return;
    }
    if (actionDepth > 0 && sqlite3_get_autocommit(db_)) {
        try {
            begin();
        } catch (...) {
            sqlite3_finalize(stmt);
            throw;
        }
        byAction_ = true;
    }
    const bool inTransaction = !sqlite3_get_autocommit(db_);
    const int rc = sqlite3_step(stmt);
    if (rc != SQLITE_DONE && rc != SQLITE_ROW) {
        const QString text = QString::fromUtf8(sqlite3_sql(stmt));
        // Keep the error of the step: finalize would report it again anyway.
        const int extended = sqlite3_extended_errcode(db_);
        sqlite3_finalize(stmt);
        if (inTransaction && breakOnDiskError(extended)) return;
        raiseEngineError(db_, extended, text, path_);
    }
    sqlite3_finalize(stmt);
}

// ---------------------------------------------------------------------------
// Transactions.
//
// A transaction is opened with BEGIN IMMEDIATE: the writer's lock is taken at
// once (waiting LockWait for another program to finish its own), so whatever
// the transaction reads stays as read until it commits. The write-ahead log
// makes a commit whole: a kill or a power cut before it leaves nothing of the
// transaction, after it everything.

bool Database::InTransaction() const { return !sqlite3_get_autocommit(db_); }

void Database::begin() {
    detachCursors();
    const int rc = sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) raiseEngineError(db_, sqlite3_extended_errcode(db_), QStringLiteral("BEGIN"), path_);
    broken_ = false;
}

void Database::commit() {
    byAction_ = false;
    if (broken_) {
        broken_ = false;
        if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        vb::Raise(brokenNumber_, brokenDescription_);
    }
    if (sqlite3_get_autocommit(db_)) return;
    detachCursors();
    const int rc = sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        const int extended = sqlite3_extended_errcode(db_);
        if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        raiseEngineError(db_, extended, QStringLiteral("COMMIT"), path_);
    }
}

void Database::rollback() {
    byAction_ = false;
    broken_ = false;
    if (sqlite3_get_autocommit(db_)) return;
    detachCursors();
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool Database::breakOnDiskError(int rc) {
    const int primary = rc & 0xFF;
    if (primary != SQLITE_FULL && primary != SQLITE_IOERR) return false;
    if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    broken_ = true;
    if (primary == SQLITE_FULL) {
        brokenNumber_ = 3026;
        brokenDescription_ = QStringLiteral("No hay suficiente espacio en disco.");
    } else {
        brokenNumber_ = 3043;
        brokenDescription_ = QStringLiteral("Error en el disco o en la red.");
    }
    return true;
}

void Database::BeginAction() { ++actionDepth; }

void Database::EndAction() {
    if (actionDepth > 0) --actionDepth;
    if (actionDepth > 0) return;
    // Commit every database the action wrote to; the first failure is raised
    // once the others are settled.
    std::exception_ptr failure;
    for (Database* db = firstOpen; db; db = db->nextOpen_) {
        if (!db->byAction_ && !db->broken_) continue;
        if (db->scopes_ > 0) continue; // a scope still open (a box of it) commits it
        try {
            db->commit();
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
}

void Database::AbandonAction() {
    actionDepth = 0;
    for (Database* db = firstOpen; db; db = db->nextOpen_) {
        db->scopes_ = 0;
        db->rollback();
    }
}

Transaccion::Transaccion(Database& db) : db_(&db), outer_(db.scopes_ == 0), exceptions_(std::uncaught_exceptions()) {
    if (outer_ && sqlite3_get_autocommit(db.db_)) db.begin();
    ++db.scopes_;
}

Transaccion::~Transaccion() noexcept(false) {
    if (done_ || db_->scopes_ == 0) return; // committed, or abandoned with the action
    --db_->scopes_;
    if (!outer_) return;
    if (std::uncaught_exceptions() > exceptions_) {
        db_->rollback();
        return;
    }
    db_->commit();
}

void Transaccion::Commit() {
    if (done_ || !outer_ || db_->scopes_ == 0) return;
    done_ = true;
    --db_->scopes_;
    db_->commit();
}

} // namespace vel
