#include "dbcare/database_care.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>
#include <vector>

namespace vel {
namespace {

const char* const kLogSuffixes[] = {"-wal", "-shm", "-journal"};
const char* const kCareDatabases[] = {"datos.mdb", "compdatos.mdb"};

[[noreturn]] void raiseNotFound() { vb::Raise(53, QStringLiteral("No se ha encontrado el archivo")); }
[[noreturn]] void raisePathError() { vb::Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo")); }

// The engine's failure in the words of the program's database errors.
[[noreturn]] void raiseEngine(int rc, const QString& path) {
    switch (rc & 0xff) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        vb::Raise(3049, QStringLiteral("No se puede abrir la base de datos '%1'. Puede que no sea una base de datos "
                                       "que su aplicación reconozca o que el archivo esté dañado.")
                            .arg(path));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        vb::Raise(3045, QStringLiteral("No se pudo usar '%1'; el archivo ya está en uso.").arg(path));
    case SQLITE_FULL: vb::Raise(61, QStringLiteral("Disco lleno"));
    default: vb::Raise(3043, QStringLiteral("Error de disco o de red."));
    }
}

QString quoted(const QString& text, QChar q) {
    QString t = text;
    t.replace(q, QString(q) + q);
    return q + t + q;
}

bool fsyncPath(const QString& path, bool directory) {
    const int fd = ::open(QFile::encodeName(path).constData(), directory ? O_RDONLY | O_DIRECTORY : O_RDONLY);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

void fsyncFolderOf(const QString& path) { fsyncPath(QFileInfo(path).absolutePath(), true); }

// A log of the file still holding pages: another program has the database open.
bool logInUse(const QString& database) {
    const QFileInfo wal(database + QStringLiteral("-wal"));
    return wal.exists() && wal.size() > 0;
}

int exec(sqlite3* h, const QString& sql) {
    return sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
}

// Every rowid of a table that a scan can reach, forwards and then backwards
// from the end, so that rows on both sides of a damaged page are found.
std::vector<long long> readableRowids(sqlite3* h, const QString& table) {
    std::vector<long long> ids;
    for (const char* order : {"ASC", "DESC"}) {
        sqlite3_stmt* st = nullptr;
        const QString sql = QStringLiteral("SELECT rowid FROM %1 ORDER BY rowid %2").arg(quoted(table, '"'), QLatin1String(order));
        if (sqlite3_prepare_v2(h, sql.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK)
            while (sqlite3_step(st) == SQLITE_ROW) ids.push_back(sqlite3_column_int64(st, 0));
        sqlite3_finalize(st);
    }
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

QStringList columnsOf(sqlite3* h, const QString& table) {
    QStringList cols;
    sqlite3_stmt* info = nullptr;
    if (sqlite3_prepare_v2(h, QStringLiteral("PRAGMA table_info(%1)").arg(quoted(table, '"')).toUtf8().constData(), -1,
                           &info, nullptr) == SQLITE_OK)
        while (sqlite3_step(info) == SQLITE_ROW)
            cols << quoted(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(info, 1))), '"');
    sqlite3_finalize(info);
    return cols;
}

// Copies, row by row and by rowid, every row of a table that can still be
// read from the damaged file into the new one.
void copiarTabla(sqlite3* viejo, sqlite3* nuevo, const QString& table, const QString& temporal) {
    const QStringList cols = columnsOf(viejo, table);
    if (cols.isEmpty()) return;
    const QString t = quoted(table, '"');
    const QString list = cols.join(QStringLiteral(", "));
    QStringList marks;
    for (int i = 0; i <= cols.size(); ++i) marks << QStringLiteral("?");
    sqlite3_stmt* leer = nullptr;
    sqlite3_stmt* escribir = nullptr;
    const QByteArray sel = QStringLiteral("SELECT rowid, %2 FROM %1 WHERE rowid = ?").arg(t, list).toUtf8();
    const QByteArray ins = QStringLiteral("INSERT OR IGNORE INTO %1 (rowid, %2) VALUES (%3)").arg(t, list, marks.join(", ")).toUtf8();
    if (sqlite3_prepare_v2(viejo, sel.constData(), -1, &leer, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(nuevo, ins.constData(), -1, &escribir, nullptr) != SQLITE_OK) {
        sqlite3_finalize(leer);
        sqlite3_finalize(escribir);
        return;
    }
    exec(nuevo, QStringLiteral("BEGIN"));
    for (long long id : readableRowids(viejo, table)) {
        sqlite3_bind_int64(leer, 1, id);
        if (sqlite3_step(leer) == SQLITE_ROW) { // a row that can't be read is left behind
            for (int i = 0; i <= cols.size(); ++i) sqlite3_bind_value(escribir, i + 1, sqlite3_column_value(leer, i));
            sqlite3_step(escribir);
            sqlite3_reset(escribir);
        }
        sqlite3_reset(leer);
    }
    sqlite3_finalize(leer);
    sqlite3_finalize(escribir);
    const int rc = exec(nuevo, QStringLiteral("COMMIT"));
    if (rc != SQLITE_OK) raiseEngine(rc, temporal);
}

// The recovery of a damaged file: a fresh database with the old one's tables,
// each row that can still be read copied over by its rowid, then the indexes.
void recuperar(const QString& fichero, const QString& temporal) {
    std::unique_ptr<Database> viejo = Database::OpenDatabase(fichero);
    std::unique_ptr<Database> nuevo = Database::CreateDatabase(temporal);
    sqlite3* h = nuevo->handle();
    exec(h, QStringLiteral("PRAGMA journal_mode=DELETE"));
    struct Entry { QString type, name, sql; };
    std::vector<Entry> entries;
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(viejo->handle(), "SELECT type, name, sql FROM sqlite_master WHERE sql IS NOT NULL "
                                            "AND name NOT LIKE 'sqlite_%'", -1, &st, nullptr) == SQLITE_OK) {
        while (sqlite3_step(st) == SQLITE_ROW) {
            auto text = [st](int i) { return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, i))); };
            entries.push_back({text(0), text(1), text(2)});
        }
    }
    sqlite3_finalize(st);
    bool anyTable = false;
    for (const Entry& e : entries)
        if (e.type == QLatin1String("table") && exec(h, e.sql) == SQLITE_OK) anyTable = true;
    // A catalogue that can't be read at all: the program's own tables, empty.
    if (!anyTable) {
        schema::CreateTables(*nuevo);
        return;
    }
    for (const Entry& e : entries)
        if (e.type == QLatin1String("table")) copiarTabla(viejo->handle(), h, e.name, temporal);
    for (const Entry& e : entries)
        if (e.type != QLatin1String("table")) exec(h, e.sql); // an index that can't be made is left out
}

} // namespace

void CerrarBaseDatos() {
    if (!BaseDatos) return;
    if (BaseDatos->IsOpen())
        sqlite3_wal_checkpoint_v2(BaseDatos->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    BaseDatos->Close();
}

void AbrirBaseDatos() {
    Database* cerrada = BaseDatos;
    BaseDatos = Database::OpenDatabase(vb::AppPath() + QStringLiteral("/datos.mdb")).release();
    delete cerrada;
}

void FileCopy(const QString& origen, const QString& destino) {
    QFile from(origen);
    if (!QFileInfo(origen).isFile()) raiseNotFound();
    // A database whose log another program still holds is a file in use.
    if (logInUse(origen)) vb::Raise(70, QStringLiteral("Permiso denegado"));
    if (!from.open(QIODevice::ReadOnly)) vb::Raise(70, QStringLiteral("Permiso denegado"));
    QFile to(destino);
    if (!to.open(QIODevice::WriteOnly | QIODevice::Truncate)) raisePathError();
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const qint64 n = from.read(buffer.data(), static_cast<qint64>(buffer.size()));
        if (n < 0) raisePathError();
        if (n == 0) break;
        if (to.write(buffer.data(), n) != n) vb::Raise(61, QStringLiteral("Disco lleno"));
    }
    if (!to.flush() || ::fsync(to.handle()) != 0) raisePathError();
    to.close();
    fsyncFolderOf(destino);
}

void Kill(const QString& fichero) {
    if (!QFileInfo(fichero).isFile()) raiseNotFound();
    if (!QFile::remove(fichero)) raisePathError();
}

void CompactDatabase(const QString& origen, const QString& destino) {
    if (logInUse(origen)) vb::Raise(3045, QStringLiteral("No se pudo usar '%1'; el archivo ya está en uso.").arg(origen));
    for (const char* suffix : kLogSuffixes) QFile::remove(destino + QLatin1String(suffix));
    if (QFileInfo::exists(destino) && !QFile::remove(destino)) raisePathError();
    // The program's own database, with its collations: the rebuild writes the
    // indexes again, and they sort by them.
    std::unique_ptr<Database> db = Database::OpenDatabase(origen);
    const int rc = exec(db->handle(), QStringLiteral("VACUUM INTO %1").arg(quoted(destino, '\'')));
    if (rc != SQLITE_OK) {
        db.reset();
        QFile::remove(destino);
        raiseEngine(rc, origen);
    }
    db.reset();
}

void AsegurarEnDisco(const QString& fichero) {
    if (!QFileInfo(fichero).isFile()) raiseNotFound();
    if (!fsyncPath(fichero, false)) raisePathError();
}

void SustituirFichero(const QString& nuevo, const QString& destino) {
    if (!QFileInfo(nuevo).isFile()) raiseNotFound();
    if (std::rename(QFile::encodeName(nuevo).constData(), QFile::encodeName(destino).constData()) != 0)
        raisePathError();
    fsyncFolderOf(destino);
}

bool HayFicherosDeBloqueo(const QString& carpeta) {
    for (const char* db : kCareDatabases)
        for (const char* suffix : kLogSuffixes)
            if (QFileInfo::exists(carpeta + '/' + QLatin1String(db) + QLatin1String(suffix))) return true;
    return false;
}

void BorrarFicherosDeBloqueo(const QString& carpeta) {
    for (const char* db : kCareDatabases)
        for (const char* suffix : kLogSuffixes) {
            const QString f = carpeta + '/' + QLatin1String(db) + QLatin1String(suffix);
            if (QFileInfo::exists(f) && !QFile::remove(f)) raisePathError();
        }
}

QString ComprobarIntegridad(const QString& fichero) {
    std::unique_ptr<Database> db = Database::OpenDatabase(fichero);
    sqlite3_stmt* st = nullptr;
    int rc = sqlite3_prepare_v2(db->handle(), "PRAGMA integrity_check", -1, &st, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_finalize(st);
        return QStringLiteral("no se puede comprobar");
    }
    QStringList lines;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        lines << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE) lines << QString::fromUtf8(sqlite3_errstr(rc));
    return lines.join('\n');
}

void RepairDatabase(const QString& fichero, const QString& temporal) {
    if (logInUse(fichero)) vb::Raise(3045, QStringLiteral("No se pudo usar '%1'; el archivo ya está en uso.").arg(fichero));
    for (const char* suffix : kLogSuffixes) QFile::remove(temporal + QLatin1String(suffix));
    if (QFileInfo::exists(temporal) && !QFile::remove(temporal)) raisePathError();
    QString informe;
    // A file whose catalogue can't even be read fails the check too; a file
    // that is no database of the program is not touched.
    vb::Trap([&] { informe = ComprobarIntegridad(fichero); }, [&](const vb::RuntimeError& e) {
        if (e.Number == 3343 || e.Number == 3024 || e.Number == 3045) throw e;
        informe = QStringLiteral("no se puede abrir");
    });
    bool rebuilt = false;
    if (informe == QLatin1String("ok")) {
        rebuilt = vb::Trap([&] { CompactDatabase(fichero, temporal); }, {});
        vb::Err().Clear();
    }
    if (!rebuilt) {
        QFile::remove(temporal);
        // The file must at least be one of the program's databases.
        if (!QFileInfo(fichero).isFile()) raiseNotFound();
        recuperar(fichero, temporal);
    }
    AsegurarEnDisco(temporal);
    SustituirFichero(temporal, fichero);
}

} // namespace vel
