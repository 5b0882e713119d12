#include "core/dbase_store.h"
#include "core/dbase_file.h"
#include "runtime/errors.h"

#include <shapefil.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace vel {

namespace {

// ---------------------------------------------------------------------------
// The table file as a read-only virtual table of the engine.

struct Table : sqlite3_vtab {
    const DbaseFile* file;
};

// The cursor walks the records from `row` up to `end` (the whole file, or
// the one record of a rowid lookup), skipping the deleted ones.
struct Cursor : sqlite3_vtab_cursor {
    const DbaseFile* file;
    int row;
    int end;
    void skipDeleted() {
        while (row < end && file->IsDeleted(row)) ++row;
    }
};

// The plan that reads one record by its rowid (its place in the file).
constexpr int kByRowid = 1;

// "CREATE TABLE x(...)" with the fields of the file: numbers (N, F) and
// logical fields as numbers, dates as dates, the rest as texts compared as the
// shop compares them. Names that repeat (without regard to case) or are empty
// get a name of their own, so any header makes a table.
QByteArray declaration(const DbaseFile& file) {
    QByteArray sql = "CREATE TABLE x(";
    QSet<QString> seen;
    int i = 0;
    for (const DbaseField& f : file.Fields()) {
        ++i;
        QString name = f.name.trimmed();
        if (name.isEmpty()) name = QStringLiteral("CAMPO%1").arg(i);
        while (seen.contains(name.toUpper())) name += QStringLiteral("_%1").arg(i);
        seen.insert(name.toUpper());
        if (i > 1) sql += ", ";
        sql += '"' + name.toUtf8().replace('"', "\"\"") + "\" ";
        switch (f.type) {
        case 'N': case 'F': case 'L': sql += "REAL"; break;
        case 'D': sql += "TEXT COLLATE FECHA"; break;
        default: sql += "TEXT COLLATE ESPANOL"; break;
        }
    }
    sql += ')';
    return sql;
}

int xConnect(sqlite3* db, void* aux, int, const char* const*, sqlite3_vtab** out, char** err) {
    const auto* file = static_cast<const DbaseFile*>(aux);
    const int rc = sqlite3_declare_vtab(db, declaration(*file).constData());
    if (rc != SQLITE_OK) {
        *err = sqlite3_mprintf("%s", sqlite3_errmsg(db));
        return rc;
    }
    auto* t = new Table{};
    t->file = file;
    *out = t;
    return SQLITE_OK;
}

int xDisconnect(sqlite3_vtab* t) {
    delete static_cast<Table*>(t);
    return SQLITE_OK;
}

// Every query walks the whole file (the catalogue has no index), but for
// "rowid = x": the rowid is the record's place in the file, read at once. A
// cursor reads its rows back by rowid after counting them (MoveLast,
// MoveFirst), so without this each row read would walk the whole file again.
// The engine still checks the constraint itself (omit stays 0), so a value
// that isn't a whole number finds nothing.
int xBestIndex(sqlite3_vtab* t, sqlite3_index_info* info) {
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& c = info->aConstraint[i];
        if (c.usable && c.iColumn == -1 && c.op == SQLITE_INDEX_CONSTRAINT_EQ) {
            info->aConstraintUsage[i].argvIndex = 1;
            info->idxNum = kByRowid;
            info->estimatedCost = 1;
            info->estimatedRows = 1;
            info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
            return SQLITE_OK;
        }
    }
    const double n = static_cast<Table*>(t)->file->RecordCount();
    info->estimatedCost = n + 1;
    info->estimatedRows = sqlite3_int64(n) + 1;
    return SQLITE_OK;
}

int xOpen(sqlite3_vtab* t, sqlite3_vtab_cursor** out) {
    auto* c = new Cursor{};
    c->file = static_cast<Table*>(t)->file;
    c->row = 0;
    *out = c;
    return SQLITE_OK;
}

int xClose(sqlite3_vtab_cursor* c) {
    delete static_cast<Cursor*>(c);
    return SQLITE_OK;
}

int xFilter(sqlite3_vtab_cursor* cur, int idxNum, const char*, int argc, sqlite3_value** argv) {
    auto* c = static_cast<Cursor*>(cur);
    c->row = 0;
    c->end = c->file->RecordCount();
    if (idxNum == kByRowid && argc == 1) {
        const sqlite3_int64 key = sqlite3_value_int64(argv[0]);
        if (key >= 0 && key < c->end) {
            c->row = int(key);
            c->end = int(key) + 1;
        } else {
            c->end = 0;
        }
    }
    c->skipDeleted();
    return SQLITE_OK;
}

int xNext(sqlite3_vtab_cursor* cur) {
    auto* c = static_cast<Cursor*>(cur);
    ++c->row;
    c->skipDeleted();
    return SQLITE_OK;
}

int xEof(sqlite3_vtab_cursor* cur) {
    const auto* c = static_cast<Cursor*>(cur);
    return c->row >= c->end;
}

bool plainAscii(const char* s, size_t& n) {
    n = 0;
    bool ascii = true;
    for (; s[n]; ++n) ascii = ascii && static_cast<unsigned char>(s[n]) < 0x80;
    return ascii;
}

// One field of the current record: each field is read once, and a text of
// plain ASCII goes to the engine as it stands.
int xColumn(sqlite3_vtab_cursor* cur, sqlite3_context* ctx, int i) {
    const auto* c = static_cast<Cursor*>(cur);
    const DbaseFile& file = *c->file;
    const char type = file.Fields()[size_t(i)].type;
    if (type == 'D' || type == 'L') {
        const vb::Variant v = file.Value(c->row, i);
        if (v.isNull()) sqlite3_result_null(ctx);
        else if (v.isNumber()) sqlite3_result_double(ctx, v.num());
        else {
            const QByteArray t = v.str().toUtf8();
            sqlite3_result_text(ctx, t.constData(), int(t.size()), SQLITE_TRANSIENT);
        }
        return SQLITE_OK;
    }
    if (type == 'N' || type == 'F') {
        double v = 0;
        if (file.Number(c->row, i, v)) sqlite3_result_double(ctx, v);
        else sqlite3_result_null(ctx);
        return SQLITE_OK;
    }
    const char* s = file.Raw(c->row, i);
    if (!s) {
        sqlite3_result_null(ctx);
        return SQLITE_OK;
    }
    size_t n = 0;
    if (plainAscii(s, n)) {
        sqlite3_result_text(ctx, s, int(n), SQLITE_TRANSIENT);
        return SQLITE_OK;
    }
    thread_local QByteArray utf8;
    file.Decode(s, utf8);
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    return SQLITE_OK;
}

// The catalogue is read, never written: every INSERT, UPDATE or DELETE fails
// as on a read-only database.
int xUpdate(sqlite3_vtab*, int, sqlite3_value**, sqlite3_int64*) { return SQLITE_READONLY; }

int xRowid(sqlite3_vtab_cursor* cur, sqlite3_int64* rowid) {
    *rowid = static_cast<Cursor*>(cur)->row;
    return SQLITE_OK;
}

const sqlite3_module kModule = {
    /* iVersion */ 0,
    /* xCreate */ xConnect,
    /* xConnect */ xConnect,
    xBestIndex,
    xDisconnect,
    /* xDestroy */ xDisconnect,
    xOpen,
    xClose,
    xFilter,
    xNext,
    xEof,
    xColumn,
    xRowid,
    xUpdate,
    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

// The file in the folder, by name without regard to case.
QString findFile(const QString& folder, const QString& name) {
    const QDir dir(folder);
    if (QFileInfo(dir.filePath(name)).isFile()) return dir.filePath(name);
    for (const QString& entry : dir.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return dir.filePath(entry);
    }
    return QString();
}

} // namespace

std::unique_ptr<Database> OpenDbaseDatabase(const QString& folder, const QString& tableFile) {
    if (!QFileInfo(folder).isDir())
        vb::Raise(3044, QStringLiteral("'%1' no es una ruta válida. Asegúrese de que el nombre de la ruta esté "
                                       "escrito correctamente y que está conectado al servidor en el que reside "
                                       "el archivo.")
                            .arg(QDir::toNativeSeparators(folder)));
    const QString path = findFile(folder, tableFile);
    if (path.isEmpty())
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(QDir(folder).filePath(tableFile)));
    return OpenDbaseTable(DbaseFile::Open(path), QFileInfo(tableFile).completeBaseName());
}

std::unique_ptr<Database> OpenDbaseTable(std::unique_ptr<DbaseFile> file, const QString& table) {
    const QString path = file->path();
    std::unique_ptr<Database> db = Database::CreateInMemory(path);
    sqlite3* h = db->handle();
    // The engine owns the file from here and lets it go with the connection.
    sqlite3_create_module_v2(h, "dbase", &kModule, file.release(),
                             [](void* p) { delete static_cast<DbaseFile*>(p); });
    const QByteArray create = "CREATE VIRTUAL TABLE \"" + table.toUtf8().replace('"', "\"\"") + "\" USING dbase";
    if (sqlite3_exec(h, create.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        vb::Raise(3343, QStringLiteral("Formato de base de datos no reconocido '%1'.").arg(path));
    // Nothing writes to the catalogue.
    sqlite3_exec(h, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
    return db;
}

bool CreateEmptyCatalogue(const QString& path) {
    DBFHandle h = DBFCreateEx(QFile::encodeName(path).constData(), "LDID/2");
    if (!h) return false;
    const bool ok = DBFAddNativeFieldType(h, "CODIGO", 'N', 8, 0) >= 0 &&
                    DBFAddNativeFieldType(h, "NOMBRE", 'C', 40, 0) >= 0 &&
                    DBFAddNativeFieldType(h, "REFPROVE", 'C', 15, 0) >= 0 &&
                    DBFAddNativeFieldType(h, "PVENTA", 'N', 10, 2) >= 0 &&
                    DBFAddNativeFieldType(h, "COLOR", 'C', 10, 0) >= 0 &&
                    DBFAddNativeFieldType(h, "EAN", 'N', 13, 0) >= 0;
    DBFClose(h);
    return ok;
}

} // namespace vel
