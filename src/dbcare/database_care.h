// The file operations of the database care windows (compact and repair), on
// the database file of the running session.
//
// Every operation raises vb::RuntimeError with the runtime's or the engine's
// number and description, so the windows' trap can tell it. Whatever fails,
// datos.mdb is at every instant a complete database, the old one or the new
// one: the new file is written beside it under another name, made durable
// (fsync), then renamed over it, and the folder is made durable in turn.
#pragma once
#include <QString>

namespace vel {

// Closes BaseDatos (after writing what its log holds into the file, so the file
// alone is the whole database). Windows left open on its cursors fail on their
// next read with a runtime error.
void CerrarBaseDatos();
// Opens App.Path + "/datos.mdb" into BaseDatos again; the closed object is let go.
void AbrirBaseDatos();

// FileCopy: a byte copy of a file, overwriting the destination, made durable.
// 53 "No se ha encontrado el archivo" when the source is missing; 75 on a
// destination that can't be written.
void FileCopy(const QString& origen, const QString& destino);
// Kill: removes a file; 53 when it doesn't exist.
void Kill(const QString& fichero);

// CompactDatabase: rebuilds the database `origen` without its dead space into
// the new file `destino` (the engine's VACUUM INTO). A destination left by an
// interrupted compacting (never a complete database: a complete one has been
// renamed away) is removed first. A log of `origen` still held by another
// program (a -wal that closing didn't empty) fails with 3045, the file in use.
void CompactDatabase(const QString& origen, const QString& destino);
// Makes a file's content durable (fsync); 75 when it can't be opened.
void AsegurarEnDisco(const QString& fichero);
// Name, crash-safe: renames `nuevo` over `destino` in one step (the old file
// is replaced, never absent) and makes the folder durable.
void SustituirFichero(const QString& nuevo, const QString& destino);
// The engine's lock and log files of the databases of the folder (datos.mdb
// and compdatos.mdb): -wal, -shm and -journal. True when any was found.
bool HayFicherosDeBloqueo(const QString& carpeta);
void BorrarFicherosDeBloqueo(const QString& carpeta);

// The engine's integrity check of a database file: "ok", or the first
// problems it finds.
QString ComprobarIntegridad(const QString& fichero);
// RepairDatabase: checks the file; rebuilds it into `temporal` (VACUUM INTO
// when the check passes, otherwise a recovery that copies table by table every
// row still readable into a fresh database of the same tables), and puts the
// result in place of `fichero` as SustituirFichero does.
void RepairDatabase(const QString& fichero, const QString& temporal);

} // namespace vel
