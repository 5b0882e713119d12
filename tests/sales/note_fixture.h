// A shop folder with its database for the delivery-note control tests, and
// notes put straight into the tables, as the delivery note window stores them
// but with a different value in every column, so that a value landing in the
// wrong column shows.
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>

namespace veltest {

// A note header with 42 values; `extra` replaces the customer's name.
inline QString NotaCabecera(int tienda, int ejercicio, int numero, const QString& estado,
                            const QString& nombre = QStringLiteral("PEDRO GARCÍA MUÑOZ")) {
    return QStringLiteral(
               "INSERT INTO cabecera_albaran_venta VALUES (%1, 'AV', %2, %3, '21/11/%2', 02, 'ANA', 03, 'X/9', "
               "'SIN PRISA', '%4', '12345678Z', '%5', 'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', 'ESPAÑOLA', "
               "'369', 2, '0049', '0012', '12', '1234567890', %3, 'ALMACEN', 'AGENCIA', 'VISA', 'PEDRO', '4111', "
               "'S', 3, 12.5, '121.5', '2.25', '7', 'RF', 21, 5.2, 15, '1', 'ES12')")
        .arg(tienda)
        .arg(ejercicio)
        .arg(numero)
        .arg(estado, nombre);
}

// One line of a note, 25 values.
inline QString NotaLinea(int tienda, int ejercicio, int numero, int linea) {
    return QStringLiteral(
               "INSERT INTO detalle_albaran_venta VALUES (%1, 'AV', %2, %3, 'T', 'REF%4', 'MARTILLO Nº %4 ÑANDÚ', "
               "%4, '10.5', 'OF', 'K', '21', 5, 1, '19.95', '1', 0.3, 2, '01', '02', '03', '04', %3, 01, '1')")
        .arg(tienda)
        .arg(ejercicio)
        .arg(numero)
        .arg(linea);
}

// The boxes of a shop's day: replies to come in order, then Yes to a
// question and OK to the rest.
struct Cajas : RecordedBoxes {
    Cajas() : RecordedBoxes(YesToQuestions) {}
};

// A program folder: datos.mdb made by the schema, config.ini naming a store.
class Tienda {
public:
    QTemporaryDir dir;
    vel::Database* db = nullptr;

    // The folder is made inside `dentro` when given.
    explicit Tienda(int codigo, const QString& dentro = QString())
        : dir(dentro.isEmpty() ? QDir::tempPath() + QStringLiteral("/velmarinda-XXXXXX")
                               : dentro + QStringLiteral("/tienda-XXXXXX")) {
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(path);
        db = vel::Database::OpenDatabase(path).release();
        if (codigo != 1) db->Execute(QStringLiteral("INSERT INTO tienda VALUES (%1, 'SUCURSAL', '')").arg(codigo));
        QFile ini(dir.filePath(QStringLiteral("config.ini")));
        ini.open(QIODevice::WriteOnly);
        ini.write(codigo == 1 ? "FERROBANDA\r\nCENTRAL\r\n" : "FERROBANDA\r\nSUCURSAL\r\n");
    }
    ~Tienda() {
        if (vel::BaseDatos == db) vel::BaseDatos = nullptr;
        delete db;
    }
    // The program runs in this folder from now on.
    void Usar() {
        vb::SetAppPath(dir.path());
        vel::BaseDatos = db;
    }
    QString Ruta(const QString& nombre) const { return dir.filePath(nombre); }
};

inline void Asentar() {
    for (int i = 0; i < 6; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

// Every row of a table, every column, as text.
inline QStringList Filas(vel::Database& db, const QString& select, const QStringList& columnas) {
    QStringList filas;
    auto rs = db.OpenRecordset(select);
    for (; !rs->Eof(); rs->MoveNext()) {
        QStringList f;
        for (const QString& c : columnas) {
            const vb::Variant v = rs->Fields(c);
            f << (v.isNull() ? QStringLiteral("<Null>") : v.str());
        }
        filas << f.join(QLatin1Char('|'));
    }
    return filas;
}

} // namespace veltest
