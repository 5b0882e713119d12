#include "core/series.h"
#include "core/sql_values.h"
#include "runtime/vb.h"
#include <algorithm>

namespace vel {

QString PalabraSerie(Documento documento) {
    switch (documento) {
    case Documento::Albaran: return QStringLiteral("AV");
    case Documento::Factura: return QStringLiteral("FD");
    case Documento::Ticket: return QStringLiteral("TI");
    }
    return QString();
}

static QString mascara(Documento documento) {
    return documento == Documento::Ticket ? QStringLiteral("000000") : QStringLiteral("00000");
}

QString SentenciaPropuesta(Documento documento, const QString& tienda, const QString& ejercicio) {
    switch (documento) {
    case Documento::Albaran:
        return QString("SELECT * FROM series WHERE ") +
               "tipo_series = 'VN' AND tienda_series = " + tienda +
               " AND serie_series = 'AV' AND ejercicio_series=" + ejercicio;
    case Documento::Factura:
        return QString("SELECT * FROM series WHERE ") +
               "tipo_series = 'VN' AND tienda_series = 0 AND serie_series = 'FD' AND ejercicio_series=" + ejercicio;
    case Documento::Ticket:
        // The year is followed by AND with no blank between them, as FTpv has
        // always written it. After the store there is a blank: the ticket
        // window's own listing of the pieces leaves it out, the counter's
        // statement has it, and the counter's form is the one kept here (the
        // row found is the same either way).
        return QString("SELECT tipo_series, ejercicio_series, tienda_series, serie_series, contador_series ") +
               "FROM series " +
               "WHERE tipo_series = 'VN' " +
               "AND ejercicio_series = " + ejercicio +
               "AND tienda_series = " + tienda + " " +
               "AND serie_series = 'TI'";
    }
    return QString();
}

QString SentenciaCargarDatos(Documento documento, const QString& tienda, const QString& ejercicio) {
    if (documento == Documento::Factura)
        return "SELECT * FROM series WHERE ejercicio_series = " + ejercicio +
               " AND tipo_series = 'VN' AND tienda_series = 0 AND serie_series = 'FD'";
    return "SELECT * FROM series WHERE ejercicio_series = " + ejercicio +
           " AND tipo_series = 'VN' AND tienda_series = " + tienda + " AND serie_series = 'AV'";
}

static PropuestaNumero proponer(Database& db, Documento documento, const QString& sql) {
    PropuestaNumero propuesta;
    auto rs = db.OpenRecordset(sql);
    if (rs->Eof()) {
        propuesta.numero = vb::Format(QStringLiteral("1"), mascara(documento));
    } else {
        propuesta.encontrada = true;
        propuesta.numero = vb::Format(rs->Fields("contador_series").num() + 1, mascara(documento));
        propuesta.ejercicio = rs->Fields("ejercicio_series").str();
    }
    return propuesta;
}

PropuestaNumero ProponerNumero(Database& db, Documento documento, const QString& tienda,
                               const QString& ejercicio) {
    return proponer(db, documento, SentenciaPropuesta(documento, tienda, ejercicio));
}

PropuestaNumero ProponerNumeroCargarDatos(Database& db, Documento documento, const QString& tienda,
                                          const QString& ejercicio) {
    return proponer(db, documento, SentenciaCargarDatos(documento, tienda, ejercicio));
}

bool GuardarContador(Database& db, Documento documento, const QString& tienda,
                     const QString& ejercicio, const QString& numero) {
    // The number on screen, not counter + 1: a number typed lower sets the
    // counter back, and one skipped upward stays skipped.
    const QString number = sql::Numero(numero);
    const QString store = documento == Documento::Factura ? QStringLiteral("0") : tienda;
    const QString word = PalabraSerie(documento);
    const QString year = ejercicio;

    // The ticket window reads the row with its own proposal statement.
    const QString select = documento == Documento::Ticket
        ? SentenciaPropuesta(documento, store, year)
        : "SELECT * FROM series WHERE tipo_series = " + sql::Comillas(QString("VN")) + " " +
              "AND ejercicio_series = " + year + " AND " + "tienda_series = " + store + " AND " +
              "serie_series = " + sql::Comillas(word);

    auto rs = db.OpenRecordset(select);
    if (rs->Eof()) {
        // The only place a counter row is born: at the first save in its key.
        db.Execute("INSERT INTO series VALUES (" + sql::Comillas(QString("VN")) + ", " + year + ", " + store + ", " +
                   sql::Comillas(word) + ", " + number + ")");
        return true;
    }
    db.Execute("UPDATE series SET contador_series = " + number + " WHERE " + "tipo_series = " +
               sql::Comillas(QString("VN")) + " AND " + "ejercicio_series = " + year + " AND" + " tienda_series = " +
               store + " AND " + "serie_series = " + sql::Comillas(word));
    return false;
}

int NumeroFacturaDeAlbaran(Database& db, const QString& ejercicio) {
    const QString E = ejercicio;
    auto rs = db.OpenRecordset(QString("SELECT * FROM series WHERE ") + "tipo_series = 'VN' AND " +
                               "tienda_series = 0 AND " + "serie_series = 'FD' AND " +
                               "ejercicio_series = " + E);
    if (rs->Eof()) {
        const int M = 1;
        // 'VN' in the place of 'FD': kept as it is, see the header.
        db.Execute("INSERT INTO series VALUES (" + sql::Comillas(QString("VN")) + ", " + E + ", " + QString::number(0) +
                   ", '" + "VN" + "', " + QString::number(M) + ")");
        return M;
    }
    const int M = static_cast<int>(rs->Fields("contador_series").num()) + 1;
    db.Execute(QString("UPDATE series SET") + " contador_series = " + QString::number(M) +
               " WHERE tipo_series = 'VN'" + " AND ejercicio_series = " + E +
               " AND tienda_series = 0" + " AND serie_series = 'FD'");
    return M;
}

void SeguirContadorRecibido(Database& db, const QString& tienda, const QString& serie,
                            const QString& ejercicio, const QString& numero) {
    auto rs = db.OpenRecordset(QString("SELECT * FROM series ") + "WHERE tipo_series = 'VN' " +
                               "AND tienda_series = " + tienda + " " + "AND serie_series = " + sql::Comillas(serie) +
                               " " + "AND ejercicio_series = " + ejercicio);
    if (rs->Eof()) {
        db.Execute("INSERT INTO series VALUES (" + sql::Comillas(QString("VN")) + ", " + ejercicio + ", " + tienda +
                   ", '" + "AV', " + numero + ")");
        return;
    }
    db.Execute("UPDATE series SET contador_series = " + numero + " WHERE " + "tipo_series = " +
               sql::Comillas(QString("VN")) + " AND " + "ejercicio_series = " + ejercicio + " AND " +
               "tienda_series = " + tienda + " AND " + "serie_series = 'AV'");
}

// The array of years seen has room for 100.
static constexpr int kEjerciciosMaximos = 100;

ListaEjercicios EjerciciosDocumentos(Recordset& cabeceras, const QString& columnaEjercicio,
                                     int anoCalendario) {
    ListaEjercicios lista;
    QStringList vistos;
    while (!cabeceras.Eof()) {
        const QString ano = cabeceras.Fields(columnaEjercicio).str();
        if (!vistos.contains(ano) && vistos.size() < kEjerciciosMaximos) {
            vistos.append(ano);
            lista.ejercicios.append(ano);
        }
        cabeceras.MoveNext();
    }
    // The current year is always on offer, even before its first document.
    const QString actual = QString::number(anoCalendario);
    lista.seleccion = static_cast<int>(lista.ejercicios.indexOf(actual));
    if (lista.seleccion < 0) {
        lista.ejercicios.append(actual);
        lista.seleccion = static_cast<int>(lista.ejercicios.size()) - 1;
    }
    return lista;
}

QString SentenciaEjercicios(Documento documento, const QString& cliente) {
    // A selector holding "*" turns "= '" into "<> '": every customer.
    if (documento == Documento::Factura) {
        if (cliente == QLatin1String("*"))
            return QString("SELECT * FROM cabecera_factura_venta") + " WHERE nif_cabecera_factura_venta <> '" +
                   "*" + "' " + "ORDER BY ejercicio_cabecera_factura_venta";
        return QString("SELECT * FROM cabecera_factura_venta") + " WHERE nif_cabecera_factura_venta = " +
               sql::Comillas(cliente) + " " + "ORDER BY ejercicio_cabecera_factura_venta";
    }
    if (cliente == QLatin1String("*"))
        return QString("SELECT * FROM cabecera_albaran_venta") + " WHERE nif_cabecera_albaran_venta <> '" +
               "*" + "' " + "ORDER BY ejercicio_cabecera_albaran_venta";
    return QString("SELECT * FROM cabecera_albaran_venta") + " WHERE nif_cabecera_albaran_venta = " +
           sql::Comillas(cliente) + " " + "ORDER BY ejercicio_cabecera_albaran_venta";
}

ListaEjercicios CargarEjercicios(Database& db, Documento documento, const QString& cliente,
                                 int anoCalendario) {
    auto rs = db.OpenRecordset(SentenciaEjercicios(documento, cliente));
    const QString columna = documento == Documento::Factura ? QStringLiteral("ejercicio_cabecera_factura_venta")
                                                            : QStringLiteral("ejercicio_cabecera_albaran_venta");
    return EjerciciosDocumentos(*rs, columna, anoCalendario);
}

} // namespace vel
