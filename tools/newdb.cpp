// velmarinda-newdb PATH: makes an empty datos.mdb with every table of the
// program and the first rows a user would enter (store 1, operator 1, the VAT
// types, the payment terms).
// velmarinda-newdb --catalogo PATH: makes an empty chain catalogue
// (articulo.dbf) with the columns the products window reads.
// An existing file is never overwritten.
#include "core/dbase_store.h"
#include "core/schema.h"
#include "runtime/errors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const bool catalogue = args.size() == 3 && args.at(1) == QLatin1String("--catalogo");
    if (args.size() != 2 && !catalogue) {
        std::fprintf(stderr, "Uso: velmarinda-newdb RUTA\n"
                             "Crea una base de datos vacía (por ejemplo datos.mdb) con sus tablas.\n"
                             "     velmarinda-newdb --catalogo RUTA\n"
                             "Crea un catálogo de la cadena vacío (articulo.dbf).\n");
        return 2;
    }
    const QString path = args.last();
    if (QFileInfo::exists(path)) {
        std::fprintf(stderr, "velmarinda-newdb: '%s' ya existe; no se sobrescribe.\n", qPrintable(path));
        return 1;
    }
    if (catalogue) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!vel::CreateEmptyCatalogue(path)) {
            std::fprintf(stderr, "velmarinda-newdb: no se puede crear '%s'.\n", qPrintable(path));
            return 1;
        }
        std::printf("Creado %s\n", qPrintable(path));
        return 0;
    }
    try {
        vel::schema::CreateEmptyDatabase(path);
    } catch (const vb::RuntimeError& e) {
        std::fprintf(stderr, "velmarinda-newdb: error %d: %s\n", e.Number, qPrintable(e.Description));
        return 1;
    }
    std::printf("Creada %s\n", qPrintable(path));
    return 0;
}
