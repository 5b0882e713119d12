#include "sales/note_control.h"

#include "core/record_store.h"
#include "core/sql_values.h"
#include "runtime/variant.h"
#include "runtime/vb.h"

#include <QStringList>

namespace vel::control_albaranes {

namespace {

const QString kMascaraNumero = QStringLiteral("00000");

// A field of the note's header, text as it stands.
QString C(const Recordset& rs, const char* campo) {
    return TextoCampo(rs, QString::fromLatin1(campo) + QStringLiteral("_cabecera_albaran_venta"));
}
QString L(const Recordset& rs, const char* campo) {
    return TextoCampo(rs, QString::fromLatin1(campo) + QStringLiteral("_detalle_albaran_venta"));
}
QString DosCifras(const QString& valor) { return sql::NumeroConMascara(valor, sql::kMascaraDosCifras); }
const QString kVacio = QStringLiteral("''");

// The note's key as the grid shows it: numbers as they stand ("00017"), the
// series quoted.
QString Claves(const ClaveNota& clave, const QString& sufijo) {
    return "tienda" + sufijo + " = " + sql::NumeroTalCual(clave.tienda) + " AND " + "serie" + sufijo + " = " +
           sql::Comillas(clave.serie) + " AND " + "ejercicio" + sufijo + " = " + sql::NumeroTalCual(clave.ejercicio) +
           " AND " + "numero" + sufijo + " = " + sql::NumeroTalCual(clave.numero);
}
QString N(const QString& numero) { return sql::NumeroTalCual(numero); }

} // namespace

QString SentenciaBuscar(const QString& tienda, const QString& ejercicio, const QString& estado) {
    QString s = "SELECT * FROM cabecera_albaran_venta WHERE " + ("tienda_cabecera_albaran_venta = " + N(tienda)) +
                (" AND ejercicio_cabecera_albaran_venta = " + N(ejercicio));
    if (estado == QLatin1String("*"))
        s += QStringLiteral(" AND estado_cabecera_albaran_venta <> '' ");
    else
        s += " AND estado_cabecera_albaran_venta = " + sql::Comillas(estado) + " ";
    return s + QStringLiteral("ORDER BY numero_cabecera_albaran_venta");
}

QString SentenciaCabeceraNota(const ClaveNota& clave) {
    return "SELECT * FROM cabecera_albaran_venta WHERE " + Claves(clave, QStringLiteral("_cabecera_albaran_venta"));
}

QString SentenciaLineasNota(const ClaveNota& clave) {
    return "SELECT * FROM detalle_albaran_venta WHERE " + Claves(clave, QStringLiteral("_detalle_albaran_venta"));
}

QString SentenciaContadorFacturas(const QString& ejercicio) {
    return QStringLiteral("SELECT * FROM series WHERE ") + "tipo_series = 'VN' AND " + "tienda_series = 0 AND " +
           "serie_series = 'FD' AND " + "ejercicio_series = " + N(ejercicio);
}

QString SentenciaNuevoContadorFacturas(const QString& ejercicio) {
    return QStringLiteral("INSERT INTO series VALUES ('") + "VN" + "', " + N(ejercicio) + ", " + "0" + ", '" + "VN" +
           "', " + "1" + ")";
}

QString SentenciaSubirContadorFacturas(const QString& ejercicio, long numero) {
    return QStringLiteral("UPDATE series SET") + " contador_series = " + QString::number(numero) +
           " WHERE tipo_series = 'VN'" + " AND ejercicio_series = " + N(ejercicio) + " AND tienda_series = 0" +
           " AND serie_series = 'FD'";
}

QString SentenciaFacturaCabecera(const Recordset& nota, const ClaveNota& clave, long numeroFactura) {
    const QString M = QString::number(numeroFactura);
    QStringList v;
    v << DosCifras(C(nota, "tienda"))                                            // 1
      << QStringLiteral("'VD'")                                                  // 2
      << N(C(nota, "ejercicio"))                                                 // 3
      << M                                                                       // 4
      << sql::Comillas(C(nota, "fecha"))                                         // 5
      << DosCifras(C(nota, "operador"))                                          // 6
      << sql::Comillas(C(nota, "nombre_operador"))                               // 7
      << DosCifras(C(nota, "almacen"))                                           // 8
      << sql::Comillas(clave.tienda + "/" + vb::Format(vb::Val(clave.numero), kMascaraNumero)) // 9
      << kVacio                                                                  // 10
      << QStringLiteral("'1'");                                                  // 11
    for (const char* c : {"nif", "nombre_fiscal", "domicilio", "poblacion", "codigo_postal", "provincia",
                          "nacionalidad", "forma_pago"})
        v << sql::Comillas(C(nota, c));                                          // 12 to 19
    v << N(C(nota, "recibos"));                                                  // 20
    for (const char* c : {"banco", "sucursal", "digito_control", "numero_cuenta"})
        v << sql::Comillas(C(nota, c));                                          // 21 to 24
    v << N(C(nota, "pedido"));                                                   // 25
    for (int i = 0; i < 6; ++i) v << kVacio;                                     // 26 to 31
    v << QStringLiteral("0") << QStringLiteral("0")                              // 32, 33
      << sql::Comillas(C(nota, "total_bruto")) << sql::Comillas(C(nota, "descuento")) // 34, 35
      << QStringLiteral("'0'")                                                   // 36
      << kVacio                                                                  // 37
      << N(C(nota, "iva")) << N(C(nota, "recargo")) << N(C(nota, "retencion"))   // 38 to 40
      << QStringLiteral("'0'")                                                   // 41
      << sql::Comillas(C(nota, "iban"));                                         // 42
    return "INSERT INTO cabecera_factura_venta VALUES (" + sql::Valores(v) + ")";
}

QString SentenciaFacturaLinea(const Recordset& linea, const ClaveNota& clave, long numeroFactura) {
    const vb::Variant pvp = linea.Fields(QStringLiteral("pvp_neto_detalle_albaran_venta"));
    QStringList v;
    v << DosCifras(L(linea, "tienda"))                                           // 1
      << QStringLiteral("'VD'")                                                  // 2
      << N(L(linea, "ejercicio"))                                                // 3
      << QString::number(numeroFactura)                                          // 4
      << kVacio                                                                  // 5
      << sql::Comillas(L(linea, "referencia")) << sql::Comillas(L(linea, "descripcion")) // 6, 7
      << N(L(linea, "unidades"))                                                 // 8
      << (pvp.isNull() ? QStringLiteral("0") : N(pvp.str()))                     // 9
      << kVacio << kVacio                                                        // 10, 11
      << N(L(linea, "importe")) << N(L(linea, "descuento")) << N(L(linea, "descuento_cliente"))
      << N(L(linea, "neto"))                                                     // 12 to 15
      << QStringLiteral("'1'")                                                   // 16
      << QStringLiteral("0") << QStringLiteral("0");                             // 17, 18
    for (const char* c : {"division", "gran_familia", "familia", "articulo"})
        v << sql::Comillas(L(linea, c));                                         // 19 to 22
    v << N(clave.numero)                                                         // 23
      << vb::Format(1.0, sql::kMascaraDosCifras)                                 // 24
      << QStringLiteral("'1'")                                                   // 25
      << kVacio;                                                                 // 26
    return "INSERT INTO detalle_factura_venta VALUES (" + sql::Valores(v) + ")";
}

// The note's state is set by one Boolean expression, not by two assignments:
// the word joining the two is AND, so the right-hand side reads
// 'F' AND (documento_origen = 'T/MMMMM'). The text 'F' is no true value, the
// expression is false, and a false stored in the text column reads "0"; the
// document of origin is only compared, never written. That "0" is the state
// the program knows as invoiced, which is why the "Facturados" filter looks
// for "0". The record store evaluates the expression the same way (the text
// 'F' as a number is 0, 0 AND anything is 0, and the text column keeps it as
// "0"), so the statement stands as it is; the tests check the row.
QString SentenciaMarcarFacturada(const ClaveNota& clave, long numeroFactura) {
    return QStringLiteral("UPDATE cabecera_albaran_venta") + " SET estado_cabecera_albaran_venta = 'F'" +
           " AND documento_origen_cabecera_albaran_venta = " +
           sql::Comillas(clave.tienda + "/" + vb::Format(static_cast<double>(numeroFactura), kMascaraNumero)) +
           " WHERE " + Claves(clave, QStringLiteral("_cabecera_albaran_venta"));
}

QString SentenciaMarcarEnviada(const ClaveNota& clave) {
    return QStringLiteral("UPDATE cabecera_albaran_venta") + " SET estado_cabecera_albaran_venta = 'E'" + " WHERE " +
           Claves(clave, QStringLiteral("_cabecera_albaran_venta"));
}

QString SentenciaContadorRecibido(const ClaveNota& nota) {
    return QStringLiteral("SELECT * FROM series ") + "WHERE tipo_series = 'VN' " + "AND tienda_series = " +
           N(nota.tienda) + " " + "AND serie_series = " + sql::Comillas(nota.serie) + " " + "AND ejercicio_series = " +
           N(nota.ejercicio);
}

QString SentenciaNuevoContadorRecibido(const ClaveNota& nota) {
    return QStringLiteral("INSERT INTO series VALUES ('") + "VN" + "', " + N(nota.ejercicio) + ", " + N(nota.tienda) +
           ", '" + "AV', " + N(nota.numero) + ")";
}

QString SentenciaMoverContadorRecibido(const ClaveNota& nota) {
    return QStringLiteral("UPDATE series SET contador_series = ") + N(nota.numero) + " WHERE " + "tipo_series = '" +
           "VN" + "' AND " + "ejercicio_series = " + N(nota.ejercicio) + " AND " + "tienda_series = " +
           N(nota.tienda) + " AND " + "serie_series = 'AV'";
}

} // namespace vel::control_albaranes
