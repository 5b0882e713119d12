// The INSERT statements that store a sales document: one per grid row into the
// detail table, then one for the header. Written with no column list, so the
// order of the values is the order of the table's columns.
//
// Both document windows write the same values with a few differences:
//
//                     delivery note            invoice
//   store             the note's store, "00"   always 01
//   series            'AV'                     'VD' (the counter's word is 'FD')
//   pedido            the document's number    0
//   state (header)    'P', or the kept one     '1', also when modified
//   long description  (no such column)         the 26th value of each line
//
// Numbers go bare, texts between single quotes, exactly as the controls hold
// them: no apostrophe is doubled, so a quote in a description breaks its
// statement (and the save report tells it).
#pragma once
#include <QString>

namespace vel {

enum class DocumentoVenta { Albaran, Factura };

// What the window holds of the document's key.
struct ClaveDocumento {
    QString tienda;    // TiendaDocumento (delivery note); the invoice's is 1
    QString ejercicio; // Comboejerciciofactura's text
    QString numero;    // Combonumerofactura's text ("00017")
};

// The seven cells of a grid row, columns 0 to 6.
struct CeldasLinea {
    QString referencia, descripcion, unidades, precio, subtotal, descuento, total;
};

// "INSERT INTO detalle_albaran_venta VALUES (" and its 25 values; for an invoice
// detalle_factura_venta with 26, the last the long description as it stands.
QString SentenciaLinea(DocumentoVenta documento, const ClaveDocumento& clave, const CeldasLinea& celdas,
                       const QString& descripcionLarga = QString());

// The header's values as the window shows them.
struct DatosCabecera {
    QString fecha;          // Textfechafactura
    QString estado;         // "P" for a new note, the kept state when modified
    QString nif;            // Combonif's text ("*" stays "*")
    QString nombre, apellidos, domicilio, poblacion, codigoPostal, provincia, nacionalidad;
    QString formaPago;      // Comboformapagofactura's text
    int recibos = 0;        // NumeroRecibos
    QString banco, sucursal, digitoControl, numeroCuenta;
    QString bruto;          // Labelbruto's caption
    QString descuento;      // Labeldescuento's caption
    QString iva;            // Textiva
    QString recargo;        // Textrecargo
    QString iban;           // TextIban
};

// "INSERT INTO cabecera_albaran_venta VALUES (" and its 42 values (or
// cabecera_factura_venta).
QString SentenciaCabecera(DocumentoVenta documento, const ClaveDocumento& clave, const DatosCabecera& datos);

} // namespace vel
