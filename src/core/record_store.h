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
//  - exactly one statement per call (a trailing ";" is allowed);
//  - no comment (-- or /* */), which the original engine never had: a
//    statement with one fails as its syntax error, and so does a statement a
//    quoted value with an apostrophe broke (sql_values.h), whatever followed
//    the apostrophe.
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
// moves, and only the current row is held, with the key of every row met so
// far. Before any write on the database the cursor lets go of the engine's
// statement, keeping just the keys of the rows still to come, so an open
// cursor never holds the engine's log; the rows after that are read by key as
// the cursor reaches them, as they stand then.
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
    // for an unknown column, 3021 when there is no current row and 3167 when
    // the row was deleted after the cursor let go of its statement.
    vb::Variant Fields(const QString& column) const;
    void Close();

private:
    friend class Database;
    // `keyed`: the statement gives each row's key as its last column, and
    // keysAfter/row (see sql_dialect.h) read the keys to come and a row by key.
    Recordset(Database* db, sqlite3_stmt* stmt, QString text, bool keyed, QString keysAfter, QString row);
    long count() const;
    bool step(bool withValues); // reads the statement's next row; false at the end
    void release();             // before a write: the rest of the keys, and no statement
    void load() const;          // the current row's values into row_
    void keepLiveRow();         // the live row's values copied out before the statement moves
    int columnIndex(const QString& column) const;

    Database* db_;
    sqlite3_stmt* stmt_;  // the running SELECT, until the end or a write
    QString text_;        // the SELECT as the window wrote it, for the engine's messages
    bool keyed_;
    QString keysAfterSql_, rowSql_;
    mutable sqlite3_stmt* rowStmt_ = nullptr;
    std::vector<QString> names_;
    // Keyed: the key of every row met so far (all of them once released).
    std::vector<long long> keys_;
    // Not keyed (a statement of another kind): every row read, as read.
    std::vector<std::vector<vb::Variant>> rows_;
    // Keyed: the values of the row at rowAt_; rowGone_ when it was deleted.
    mutable std::vector<vb::Variant> row_;
    // A row just stepped to is read from the statement column by column as the
    // window asks for fields (a list fill reads one of 46): rowLive_ while the
    // statement still stands on it, readCol_ marking the columns converted.
    mutable std::vector<char> readCol_;
    mutable bool rowLive_ = false;
    mutable long rowAt_ = -1;
    mutable bool rowGone_ = false;
    long pos_ = 0;
    long read_ = 0; // rows the cursor has been on (RecordCount)
    bool closed_ = false;
};

class Database {
public:
    // Opens the file shared, read-write. A missing or unreadable file raises
    // 3024 "No se encuentra el archivo '...'"; a file or folder the program
    // can't write to 3051, which says so; a file that is not a database
    // of this program 3343 "Formato de base de datos no reconocido", and it is
    // left as it was; a file another program holds locked for longer than
    // LockWait 3045 "No se pudo usar '...'; el archivo ya está en uso.".
    static std::unique_ptr<Database> OpenDatabase(const QString& path);
    // Creates a new, empty database file (used by the empty-database maker and tests).
    static std::unique_ptr<Database> CreateDatabase(const QString& path);
    // A database that lives in memory only, with the same dialect; `path`
    // names it in messages. The chain's catalogue is one (dbase_store.h).
    static std::unique_ptr<Database> CreateInMemory(const QString& path);
    ~Database();

    // The engine's quick check of the whole file: false when it finds damage
    // (or can't read the file through).
    bool QuickCheck();

    std::unique_ptr<Recordset> OpenRecordset(const QString& sql);
    void Execute(const QString& sql);

    QString path() const { return path_; }
    // The engine's connection; nullptr once closed.
    sqlite3* handle() const { return db_; }
    // Closes the file, as the database care windows do before working on it:
    // cursors still open stop working (a read raises 3420), and so does every
    // later statement on this object. The object stays valid until deleted.
    void Close();
    bool IsOpen() const { return db_ != nullptr; }

    // How long a statement waits for a lock another program holds on the file
    // before it fails, in milliseconds: 5000. Tests make it shorter.
    static int LockWait();
    static void SetLockWait(int milliseconds);

    // True while a transaction is open on this database (a Transaccion, or an
    // action that has written).
    bool InTransaction() const;

    // Every event that enters the program from the event loop is one action:
    // its first write opens a transaction (BEGIN IMMEDIATE) on the database it
    // writes to, and the end of the event commits it. An event that ends the
    // program by an untrapped error or End leaves no write behind: its
    // transaction is rolled back before the message is shown. Events that
    // arrive while a box of the action is open join the action. The commit
    // raises the store's error when it fails (after rolling back).
    static void BeginAction();
    static void EndAction();
    static void AbandonAction();

private:
    friend class Recordset;
    friend class Transaccion;
    void begin();    // BEGIN IMMEDIATE, cursors let go first
    void commit();   // COMMIT, or the error of a transaction that broke
    void rollback(); // ROLLBACK of whatever is open
    // Inside a transaction, a write that fails because the disk is full or
    // failed breaks the transaction: it is rolled back at once, the later
    // writes of the same transaction are skipped, and the error is raised once,
    // by the commit. So a save on a full disk gives one message, not one for
    // each of its statements, and changes nothing.
    bool breakOnDiskError(int rc);
    int scopes_ = 0;      // Transaccion scopes open on this database
    bool byAction_ = false; // the open transaction was begun by an action's write
    bool broken_ = false;
    int brokenNumber_ = 0;
    QString brokenDescription_;
    Database(sqlite3* db, QString path);
    sqlite3_stmt* prepare(const QString& sql, bool reportErrors = true);
    void refuseReshaped(const QString& engineSql);
    void detachCursors();
    std::vector<Recordset*> open_;
    sqlite3* db_;
    QString path_;
    // The list of open databases runs through the databases themselves.
    Database* prevOpen_ = nullptr;
    Database* nextOpen_ = nullptr;
};

// A transaction over the statements of one action, as a scope:
//
//   {
//       Transaccion t(*BaseDatos);  // BEGIN IMMEDIATE: the writer's lock, now
//       ... reads and writes ...
//   }                               // COMMIT
//
// Leaving the scope by an exception (an untrapped error, End) rolls back;
// leaving it normally commits, and a failing commit rolls back and raises the
// store's error (3026 for a full disk). Commit() commits earlier, inside a
// trap, for the windows whose save report must tell a failure of the commit
// too. A scope opened while another is open on the same database joins it:
// only the outermost commits or rolls back, and an error trapped inside an
// inner scope changes nothing for the outer one. A scope joins the
// transaction an action has already begun with its writes, and commits it.
// Because the writer's lock is taken at the start, what the scope reads (a
// document counter) cannot be changed by another program before the scope
// commits: two programs saving on one file never take the same number.
class Transaccion {
public:
    explicit Transaccion(Database& db);
    ~Transaccion() noexcept(false);
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    // Commits now (outermost scope only; an inner scope leaves it to the outer).
    void Commit();

private:
    Database* db_;
    bool outer_;
    bool done_ = false;
    int exceptions_;
};

} // namespace vel
