#include "sales/document_statements.h"

#include "runtime/vb.h"

namespace vel {

using vb::CStr;
using vb::Format;
using vb::UCase;
using vb::Val;

namespace {

QString q(const QString& text) { return "'" + text + "'"; }

bool EsFactura(DocumentoVenta documento) { return documento == DocumentoVenta::Factura; }

// The store of the rows: the note's own store; invoices are all written as store 1.
QString Tienda(DocumentoVenta documento, const ClaveDocumento& clave) {
    return EsFactura(documento) ? Format(1, QStringLiteral("00")) : Format(Val(clave.tienda), QStringLiteral("00"));
}

QString Serie(DocumentoVenta documento) {
    return EsFactura(documento) ? QStringLiteral("VD") : QStringLiteral("AV");
}

// pedido: the note's number again; an invoice's is 0.
QString Pedido(DocumentoVenta documento, const ClaveDocumento& clave) {
    return EsFactura(documento) ? QStringLiteral("0") : CStr(Val(clave.numero));
}

} // namespace

QString SentenciaLinea(DocumentoVenta documento, const ClaveDocumento& clave, const CeldasLinea& c,
                       const QString& descripcionLarga) {
    const QString tabla = EsFactura(documento) ? QStringLiteral("detalle_factura_venta")
                                               : QStringLiteral("detalle_albaran_venta");
    QString s = "INSERT INTO " + tabla + " VALUES (" +
                Tienda(documento, clave) + ", " +              // tienda
                q(Serie(documento)) + ", " +                   // serie
                CStr(Val(clave.ejercicio)) + ", " +            // ejercicio
                CStr(Val(clave.numero)) + ", " +               // numero
                q(QString()) + ", " +                          // tipo_linea
                q(UCase(c.referencia)) + ", " +                // referencia
                q(UCase(c.descripcion)) + ", " +               // descripcion
                CStr(Val(c.unidades)) + ", " +                 // unidades
                q(c.precio) + ", " +                           // pvp_neto: the cell as text
                q(QString()) + ", " +                          // oferta
                q(QString()) + ", " +                          // kit
                q(CStr(Val(c.subtotal))) + ", " +              // importe
                CStr(Val(c.descuento)) + ", " +                // descuento
                "0, " +                                        // descuento_cliente
                q(CStr(Val(c.total))) + ", " +                 // neto
                q(QStringLiteral("1")) + ", " +                // impresion
                "0, " +                                        // peso
                "0, " +                                        // garantia
                q(QStringLiteral("00")) + ", " +               // division
                q(QStringLiteral("00")) + ", " +               // gran_familia
                q(QStringLiteral("00")) + ", " +               // familia
                q(QStringLiteral("00")) + ", " +               // articulo
                Pedido(documento, clave) + ", " +              // pedido
                Format(1, QStringLiteral("00")) + ", " +       // almacen
                q(QStringLiteral("1"));                        // tratado
    if (EsFactura(documento)) s += ", " + q(descripcionLarga); // descripcionlarga, as typed
    return s + ")";
}

QString SentenciaCabecera(DocumentoVenta documento, const ClaveDocumento& clave, const DatosCabecera& d) {
    const QString tabla = EsFactura(documento) ? QStringLiteral("cabecera_factura_venta")
                                               : QStringLiteral("cabecera_albaran_venta");
    const QString estado = EsFactura(documento) ? QStringLiteral("1") : d.estado;
    return "INSERT INTO " + tabla + " VALUES (" +
           Tienda(documento, clave) + ", " +                              // 1 tienda
           q(Serie(documento)) + ", " +                                   // 2 serie
           CStr(Val(clave.ejercicio)) + ", " +                            // 3 ejercicio
           CStr(Val(clave.numero)) + ", " +                               // 4 numero
           q(d.fecha) + ", " +                                            // 5 fecha
           Format(0, QStringLiteral("00")) + ", " +                       // 6 operador
           q(QString()) + ", " +                                          // 7 nombre_operador
           Format(1, QStringLiteral("00")) + ", " +                       // 8 almacen
           q(QString()) + ", " +                                          // 9 documento_origen
           q(QString()) + ", " +                                          // 10 observaciones
           q(estado) + ", " +                                             // 11 estado
           q(UCase(d.nif)) + ", " +                                       // 12 nif
           q(UCase(d.nombre) + " " + UCase(d.apellidos)) + ", " +         // 13 nombre_fiscal: name and surnames
           q(UCase(d.domicilio)) + ", " +                                 // 14 domicilio
           q(UCase(d.poblacion)) + ", " +                                 // 15 poblacion
           q(UCase(d.codigoPostal)) + ", " +                              // 16 codigo_postal
           q(UCase(d.provincia)) + ", " +                                 // 17 provincia
           q(UCase(d.nacionalidad)) + ", " +                              // 18 nacionalidad
           q(UCase(d.formaPago)) + ", " +                                 // 19 forma_pago
           QString::number(d.recibos) + ", " +                            // 20 recibos
           q(d.banco) + ", " +                                            // 21 banco
           q(d.sucursal) + ", " +                                         // 22 sucursal
           q(d.digitoControl) + ", " +                                    // 23 digito_control
           q(d.numeroCuenta) + ", " +                                     // 24 numero_cuenta
           Pedido(documento, clave) + ", " +                              // 25 pedido
           q(QString()) + ", " + q(QString()) + ", " + q(QString()) + ", " + // 26-28 lugar_envio, forma_envio, tarjeta
           q(QString()) + ", " + q(QString()) + ", " + q(QString()) + ", " + // 29-31 nombre_tarjeta, numero_tarjeta, contado
           "0, 0, " +                                                     // 32-33 numero_bultos, peso
           q(CStr(Val(d.bruto))) + ", " +                                 // 34 total_bruto
           q(CStr(Val(d.descuento))) + ", " +                             // 35 descuento
           q(QStringLiteral("0")) + ", " +                                // 36 portes
           q(QString()) + ", " +                                          // 37 rec_financ
           CStr(Val(d.iva)) + ", " +                                      // 38 iva
           CStr(Val(d.recargo)) + ", " +                                  // 39 recargo
           "0, " +                                                        // 40 retencion
           q(QStringLiteral("0")) + ", " +                                // 41 contabilizada
           q(d.iban) +                                                    // 42 iban
           ")";
}

} // namespace vel
