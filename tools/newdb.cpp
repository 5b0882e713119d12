// velmarinda-newdb PATH: makes an empty datos.mdb with every table of the
// program and the first rows a user would enter (store 1, operator 1, the VAT
// types, the payment terms). An existing file is never overwritten.
#include "core/schema.h"
#include "runtime/errors.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "Uso: velmarinda-newdb RUTA\n"
                             "Crea una base de datos vacía (por ejemplo datos.mdb) con sus tablas.\n");
        return 2;
    }
    const QString path = args.at(1);
    if (QFileInfo::exists(path)) {
        std::fprintf(stderr, "velmarinda-newdb: '%s' ya existe; no se sobrescribe.\n", qPrintable(path));
        return 1;
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
