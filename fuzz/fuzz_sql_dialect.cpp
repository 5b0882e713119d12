// The SQL dialect of the windows, from any text: the store's rewriting of the
// statement (DELETE *, numbers against words, the keyed form of a cursor's
// SELECT) and the statement run on a shop database, with a cursor walked
// across a write. Each either works or raises a runtime error.
//
// Input: up to three statements, one a line. The first is opened as a cursor
// (or executed when it is no query); after its first row the second is
// executed, then the walk goes on to the end and back to the first row; the
// third is executed last.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/sql_dialect.h"
#include "runtime/errors.h"

#include <sqlite3.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<vel::Database> db;
QString folder;
int runs = 0;

// What a statement may do in the fuzz database: read and change rows of its
// tables. Not: other files (ATTACH), settings (PRAGMA), schema changes, or an
// endless recursive query.
int authorize(void*, int action, const char*, const char*, const char*, const char*) {
    switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
    case SQLITE_FUNCTION:
        return SQLITE_OK;
    default:
        return SQLITE_DENY;
    }
}

// A statement that runs for long is stopped: no timeouts from a cross join.
int progress(void*) { return 1; }

void freshDatabase() {
    db.reset();
    const QString path = folder + QStringLiteral("/datos.mdb");
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-wal"));
    QFile::remove(path + QStringLiteral("-shm"));
    vel::schema::CreateEmptyDatabase(path);
    db = vel::Database::OpenDatabase(path);
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (1, 'NAVE', ''), (2, 'SOTANO', ''), (3, 'NAVE', '')"));
    sqlite3_set_authorizer(db->handle(), authorize, nullptr);
    sqlite3_progress_handler(db->handle(), 200000, progress, nullptr);
}

const char* const kFields[] = {"codigo_almacen", "nombre_almacen", "codigo_tienda", "nombre_tienda",
                               "codigo_iva",     "iva",            "rowid",         "x"};

void readRow(vel::Recordset& rs) {
    for (const char* f : kFields) {
        try {
            (void)rs.Fields(QString::fromLatin1(f)).str();
        } catch (const vb::RuntimeError&) {
        }
    }
}

void run(const QString& first, const QString& second, const QString& third) {
    std::unique_ptr<vel::Recordset> rs;
    try {
        rs = db->OpenRecordset(first);
    } catch (const vb::RuntimeError&) {
        try {
            db->Execute(first);
        } catch (const vb::RuntimeError&) {
        }
    }
    if (rs) {
        try {
            readRow(*rs);
            if (!second.isEmpty()) db->Execute(second);
        } catch (const vb::RuntimeError&) {
        }
        try {
            for (int n = 0; !rs->Eof() && n < 1000; ++n) {
                readRow(*rs);
                rs->MoveNext();
            }
            rs->MoveFirst();
            readRow(*rs);
            rs->MoveLast();
        } catch (const vb::RuntimeError&) {
        }
    }
    try {
        if (!third.isEmpty()) db->Execute(third);
    } catch (const vb::RuntimeError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    folder = QDir::tempPath() + QStringLiteral("/velmarinda_fuzz_sql_%1").arg(QCoreApplication::applicationPid());
    QDir().mkpath(folder);
    std::atexit([] {
        db.reset();
        QDir(folder).removeRecursively();
    });
    freshDatabase();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QStringList lines = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)).split(QLatin1Char('\n'));
    // The rewriting alone: what it makes of the text is still one statement
    // the store can prepare or refuse.
    const QString engine = vel::dialect::ToEngine(lines.value(0));
    if (const auto keyed = vel::dialect::Keyed(engine)) {
        if (!keyed->rows.contains(QLatin1String("rowid")) || !keyed->row.endsWith(QLatin1String("rowid = ?1")))
            __builtin_trap();
    }
    if (++runs % 5000 == 0) freshDatabase(); // the rows written so far go
    run(lines.value(0), lines.value(1), lines.value(2));
    return 0;
}
