#include "sales/document_statements.h"

#include "core/sql_values.h"
#include "runtime/vb.h"
#include <QStringList>

namespace vel {

using sql::Comillas;
using sql::ComillasMayusculas;
using sql::Numero;
using sql::NumeroConMascara;

namespace {

bool EsFactura(DocumentoVenta documento) { return documento == DocumentoVenta::Factura; }

// The store of the rows: the note's own store; invoices are all written as store 1.
QString Tienda(DocumentoVenta documento, const ClaveDocumento& clave) {
    return EsFactura(documento) ? vb::Format(1, sql::kMascaraDosCifras)
                                : NumeroConMascara(clave.tienda, sql::kMascaraDosCifras);
}

QString Serie(DocumentoVenta documento) {
    return Comillas(EsFactura(documento) ? QStringLiteral("VD") : QStringLiteral("AV"));
}

// pedido: the note's number again; an invoice's is 0.
QString Pedido(DocumentoVenta documento, const ClaveDocumento& clave) {
    return EsFactura(documento) ? QStringLiteral("0") : Numero(clave.numero);
}

const QString kVacio = QStringLiteral("''");

} // namespace

QString SentenciaLinea(DocumentoVenta documento, const ClaveDocumento& clave, const CeldasLinea& c,
                       const QString& descripcionLarga) {
    const QString tabla = EsFactura(documento) ? QStringLiteral("detalle_factura_venta")
                                               : QStringLiteral("detalle_albaran_venta");
    QStringList valores = {
        Tienda(documento, clave),                      // tienda
        Serie(documento),                              // serie
        Numero(clave.ejercicio),                       // ejercicio
        Numero(clave.numero),                          // numero
        kVacio,                                        // tipo_linea
        ComillasMayusculas(c.referencia),              // referencia
        ComillasMayusculas(c.descripcion),             // descripcion
        Numero(c.unidades),                            // unidades
        Comillas(c.precio),                            // pvp_neto: the cell as text
        kVacio,                                        // oferta
        kVacio,                                        // kit
        Comillas(Numero(c.subtotal)),                  // importe
        Numero(c.descuento),                           // descuento
        QStringLiteral("0"),                           // descuento_cliente
        Comillas(Numero(c.total)),                     // neto
        Comillas(QStringLiteral("1")),                 // impresion
        QStringLiteral("0"),                           // peso
        QStringLiteral("0"),                           // garantia
        Comillas(QStringLiteral("00")),                // division
        Comillas(QStringLiteral("00")),                // gran_familia
        Comillas(QStringLiteral("00")),                // familia
        Comillas(QStringLiteral("00")),                // articulo
        Pedido(documento, clave),                      // pedido
        vb::Format(1, sql::kMascaraDosCifras),         // almacen
        Comillas(QStringLiteral("1")),                 // tratado
    };
    if (EsFactura(documento)) valores << Comillas(descripcionLarga); // descripcionlarga, as typed
    return "INSERT INTO " + tabla + " VALUES (" + sql::Valores(valores) + ")";
}

QString SentenciaCabecera(DocumentoVenta documento, const ClaveDocumento& clave, const DatosCabecera& d) {
    const QString tabla = EsFactura(documento) ? QStringLiteral("cabecera_factura_venta")
                                               : QStringLiteral("cabecera_albaran_venta");
    const QString estado = EsFactura(documento) ? QStringLiteral("1") : d.estado;
    const QStringList valores = {
        Tienda(documento, clave),                                   // 1 tienda
        Serie(documento),                                           // 2 serie
        Numero(clave.ejercicio),                                    // 3 ejercicio
        Numero(clave.numero),                                       // 4 numero
        Comillas(d.fecha),                                          // 5 fecha
        vb::Format(0, sql::kMascaraDosCifras),                      // 6 operador
        kVacio,                                                     // 7 nombre_operador
        vb::Format(1, sql::kMascaraDosCifras),                      // 8 almacen
        kVacio,                                                     // 9 documento_origen
        kVacio,                                                     // 10 observaciones
        Comillas(estado),                                           // 11 estado
        ComillasMayusculas(d.nif),                                  // 12 nif
        Comillas(vb::UCase(d.nombre) + " " + vb::UCase(d.apellidos)), // 13 nombre_fiscal: name and surnames
        ComillasMayusculas(d.domicilio),                            // 14 domicilio
        ComillasMayusculas(d.poblacion),                            // 15 poblacion
        ComillasMayusculas(d.codigoPostal),                         // 16 codigo_postal
        ComillasMayusculas(d.provincia),                            // 17 provincia
        ComillasMayusculas(d.nacionalidad),                         // 18 nacionalidad
        ComillasMayusculas(d.formaPago),                            // 19 forma_pago
        QString::number(d.recibos),                                 // 20 recibos
        Comillas(d.banco),                                          // 21 banco
        Comillas(d.sucursal),                                       // 22 sucursal
        Comillas(d.digitoControl),                                  // 23 digito_control
        Comillas(d.numeroCuenta),                                   // 24 numero_cuenta
        Pedido(documento, clave),                                   // 25 pedido
        kVacio,                                                     // 26 lugar_envio
        kVacio,                                                     // 27 forma_envio
        kVacio,                                                     // 28 tarjeta
        kVacio,                                                     // 29 nombre_tarjeta
        kVacio,                                                     // 30 numero_tarjeta
        kVacio,                                                     // 31 contado
        QStringLiteral("0"),                                        // 32 numero_bultos
        QStringLiteral("0"),                                        // 33 peso
        Comillas(Numero(d.bruto)),                                  // 34 total_bruto
        Comillas(Numero(d.descuento)),                              // 35 descuento
        Comillas(QStringLiteral("0")),                              // 36 portes
        kVacio,                                                     // 37 rec_financ
        Numero(d.iva),                                              // 38 iva
        Numero(d.recargo),                                          // 39 recargo
        QStringLiteral("0"),                                        // 40 retencion
        Comillas(QStringLiteral("0")),                              // 41 contabilizada
        Comillas(d.iban),                                           // 42 iban
    };
    return "INSERT INTO " + tabla + " VALUES (" + sql::Valores(valores) + ")";
}

// ---- Reading and deleting a document by its key ---------------------------------

QString TablaDocumento(const QString& palabra, const char* parte) {
    return QString::fromLatin1(parte) + "_" + palabra + "_venta";
}

QString ColumnaDocumento(const QString& palabra, const char* campo, const char* parte) {
    return QString::fromLatin1(campo) + "_" + TablaDocumento(palabra, parte);
}

QString SentenciaPorEjercicioYNumero(const QString& palabra, const char* parte, const QString& campos,
                                     const QString& ejercicio, const QString& numero) {
    return "SELECT " + campos + " FROM " + TablaDocumento(palabra, parte) + " WHERE " +
           ColumnaDocumento(palabra, "ejercicio", parte) + " = " + ejercicio + " AND " +
           ColumnaDocumento(palabra, "numero", parte) + " = " + numero;
}

QString SentenciaEstadoAlbaran(const QString& tienda, const QString& ejercicio, const QString& numero) {
    return "SELECT estado_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = " +
           tienda + " AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = " + ejercicio +
           " AND numero_cabecera_albaran_venta = " + numero;
}

QStringList SentenciasBorradoAlbaran(const QString& nif, const QString& tienda, const QString& ejercicio,
                                     const QString& numero) {
    return {"DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = " + sql::Comillas(nif) +
                " AND tienda_cabecera_albaran_venta = " + tienda +
                " AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = " + ejercicio +
                " AND numero_cabecera_albaran_venta = " + numero,
            "DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = " + tienda +
                " AND serie_detalle_albaran_venta = 'AV' AND ejercicio_detalle_albaran_venta = " + ejercicio +
                " AND numero_detalle_albaran_venta = " + numero};
}

QStringList SentenciasBorradoFactura(const QString& nif, const QString& ejercicio, const QString& numero) {
    return {"DELETE FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = " + sql::Comillas(nif) +
                " AND ejercicio_cabecera_factura_venta = " + ejercicio + " AND numero_cabecera_factura_venta = " +
                numero,
            "DELETE FROM detalle_factura_venta WHERE ejercicio_detalle_factura_venta = " + ejercicio +
                " AND numero_detalle_factura_venta = " + numero};
}

} // namespace vel
