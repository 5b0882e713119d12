// The record store: one open database reached by SQL text.
//
// Windows build their statements by concatenation, in the dialect of the
// original engine, and hand them to the one open database BaseDatos (session.h).
// This store accepts that dialect exactly as the windows write it:
//  - "DELETE *  FROM t WHERE ..." as well as "DELETE FROM t WHERE ...";
//  - LIKE with * and ? as wild cards (a % or _ in the pattern is literal);
//  - keywords and table names in any case, <>, "order by ... asc";
//  - money written in quotes into numeric columns, numbers into text columns;
//  - text compared and ordered without regard to case or accents, in Spanish
//    order (Ñ after N);
//  - exactly one statement per call (a trailing ";" or comment is allowed).
// A failing statement raises vb::RuntimeError with the number and description
// the original engine gives (3134 syntax error in INSERT, 3022 duplicate key,
// 3346 wrong number of values, 3464 type mismatch, 3078 unknown table...).
#pragma once
#include "runtime/variant.h"
#include <QString>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace vel {

class Database;

// A cursor on the rows of a SELECT, positioned on the first row (or at end of
// file when the set is empty). Rows are read from the engine as the cursor
// moves; before any write on the same database the rest of the rows are read
// in, so an open cursor never holds the engine's log.
class Recordset {
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // True past the last row, and at once on an empty set. (The runtime calls it
    // EOF; that name is a C macro.)
    bool Eof() const;
    bool Bof() const;
    void MoveNext();
    void MoveFirst();
    void MoveLast();
    // 0-based position of the current row; -1 when the set is empty.
    long AbsolutePosition() const;
    // Rows read so far (all of them after MoveLast).
    long RecordCount() const;
    // The value of a column of the current row, by name (any case). Raises 3265
    // for an unknown column and 3021 when there is no current row.
    vb::Variant Fields(const QString& column) const;
    void Close();

private:
    friend class Database;
    Recordset(Database* db, sqlite3_stmt* stmt);
    bool fetch();       // reads one more row into rows_; false at the end
    void drain();       // reads every remaining row and releases the statement
    int columnIndex(const QString& column) const;

    Database* db_;
    sqlite3_stmt* stmt_;
    std::vector<QString> names_;
    std::vector<std::vector<vb::Variant>> rows_;
    long pos_ = 0;
    bool closed_ = false;
};

class Database {
public:
    // Opens the file shared, read-write. A missing or unreadable file raises
    // 3024 "No se encuentra el archivo '...'".
    static std::unique_ptr<Database> OpenDatabase(const QString& path);
    // Creates a new, empty database file (used by the empty-database maker and tests).
    static std::unique_ptr<Database> CreateDatabase(const QString& path);
    // A database that lives in memory only, with the same dialect; `path`
    // names it in messages. The chain's catalogue is one (dbase_store.h).
    static std::unique_ptr<Database> CreateInMemory(const QString& path);
    ~Database();

    std::unique_ptr<Recordset> OpenRecordset(const QString& sql);
    void Execute(const QString& sql);

    QString path() const { return path_; }
    sqlite3* handle() const { return db_; }

private:
    friend class Recordset;
    Database(sqlite3* db, QString path);
    sqlite3_stmt* prepare(const QString& sql);
    void detachCursors();
    std::vector<Recordset*> open_;
    sqlite3* db_;
    QString path_;
};

} // namespace vel
