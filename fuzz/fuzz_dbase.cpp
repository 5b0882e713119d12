// The chain's catalogue file, whatever bytes it holds: it either opens and
// every field of every record reads, and the queries of the supplier tab run
// on it, or it fails with a runtime error. Never a crash, never a read out of
// the file's bytes.
#include "core/dbase_file.h"
#include "core/dbase_store.h"
#include "runtime/errors.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    std::unique_ptr<vel::DbaseFile> file;
    try {
        file = vel::DbaseFile::FromBytes(bytes, QStringLiteral("articulo.dbf"));
    } catch (const vb::RuntimeError&) {
        return 0;
    }
    for (int r = 0; r < file->RecordCount(); ++r) {
        (void)file->IsDeleted(r);
        for (int c = 0; c < int(file->Fields().size()); ++c) {
            (void)file->Value(r, c);
            (void)file->TextUtf8(r, c);
        }
    }
    try {
        auto db = vel::OpenDbaseTable(std::move(file), QStringLiteral("articulo"));
        // The queries of the supplier tab (which fail on a table without
        // those columns), and some that read every column whatever they are.
        for (const char* sql : {"SELECT * FROM articulo", "SELECT * FROM articulo ORDER BY 2",
                                "SELECT * FROM articulo WHERE 1 = 1 ORDER BY 1 DESC",
                                "SELECT codigo, nombre, refprove, pventa, ean FROM articulo ",
                                "SELECT codigo, nombre, refprove, pventa, ean FROM articulo WHERE codigo = 2 ORDER BY codigo",
                                "SELECT codigo, nombre, refprove, pventa, ean FROM articulo WHERE nombre LIKE '*A*' "
                                "ORDER BY nombre",
                                "SELECT codigo, nombre, refprove, pventa, ean FROM articulo WHERE ean = 8412345000011 "
                                "ORDER BY ean",
                                "SELECT codigo, nombre, refprove, pventa, color, ean FROM articulo WHERE codigo = 1 "
                                "ORDER BY codigo"}) {
            try {
                auto rs = db->OpenRecordset(QString::fromLatin1(sql));
                if (rs->AbsolutePosition() != -1) {
                    rs->MoveLast();
                    rs->MoveFirst();
                }
                while (!rs->Eof()) rs->MoveNext();
            } catch (const vb::RuntimeError&) {
            }
        }
    } catch (const vb::RuntimeError&) {
    }
    return 0;
}
