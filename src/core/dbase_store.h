// The chain's catalogue as a second database: a folder is the database and a
// dBase table file in it (articulo.dbf) is its table (articulo).
//
// It is a Database like BaseDatos, so a window reads it with the same
// OpenRecordset and the same cursor (EOF, MoveNext, MoveFirst, MoveLast,
// AbsolutePosition, Fields), in the same dialect: "WHERE codigo = 12",
// "WHERE nombre LIKE '*TORN*'", "ORDER BY nombre", no WHERE at all. It is
// read-only: a statement that would write fails with 3027.
//
// The table is the checked file of dbase_file.h, seen by the engine as a
// virtual table: every query walks the records of the file (skipping the
// deleted ones) and reads only the fields it names. Nothing is copied into
// another store, so opening costs one read of the file.
#pragma once
#include "core/record_store.h"
#include <QString>
#include <memory>

namespace vel {

// Opens the folder (a native path) with the table file named in it (found
// without regard to case: a DOS program may have written ARTICULO.DBF).
// A folder that doesn't exist raises 3044; a missing file 3024; a file that is
// not a sound dBase table 3343 with the reason (dbase_file.h).
std::unique_ptr<Database> OpenDbaseDatabase(const QString& folder, const QString& tableFile);

// Writes an empty chain catalogue (no articles) with the columns the products
// window reads: CODIGO N(8), NOMBRE C(40), REFPROVE C(15), PVENTA N(10,2),
// COLOR C(10), EAN N(13), in DOS code page 850. A new installation gets one,
// so that the window opens before the chain's own file is put in its place.
// Returns false when the file can't be written.
bool CreateEmptyCatalogue(const QString& path);

class DbaseFile;
// The database of one table file already read and checked, as `table`.
std::unique_ptr<Database> OpenDbaseTable(std::unique_ptr<DbaseFile> file, const QString& table);

} // namespace vel
