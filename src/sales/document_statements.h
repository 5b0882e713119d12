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
#include <QStringList>

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

// ---- Reading and deleting a document by its key ---------------------------------

// The tables and columns of a document by the word of its window: "cabecera"
// of "albaran" is cabecera_albaran_venta, its "nif" nif_cabecera_albaran_venta.
QString TablaDocumento(const QString& palabra, const char* parte);
QString ColumnaDocumento(const QString& palabra, const char* campo, const char* parte);

// "SELECT <campos> FROM <parte> WHERE ejercicio_<parte> = <ejercicio> AND
// numero_<parte> = <numero>": a header or a detail by year and number alone,
// with neither store nor series; the year and the number go as given.
QString SentenciaPorEjercicioYNumero(const QString& palabra, const char* parte, const QString& campos,
                                     const QString& ejercicio, const QString& numero);

// The kept state of a delivery note, read before a modification deletes it:
// by its store (two digits), series 'AV', year and number.
QString SentenciaEstadoAlbaran(const QString& tienda, const QString& ejercicio, const QString& numero);

// The two DELETE statements of a document, header first. The delivery note's
// by the customer's NIF, its store (two digits), series 'AV', year and number
// (the detail without the NIF); the invoice's by the NIF, year and number (the
// detail by year and number alone).
QStringList SentenciasBorradoAlbaran(const QString& nif, const QString& tienda, const QString& ejercicio,
                                     const QString& numero);
QStringList SentenciasBorradoFactura(const QString& nif, const QString& ejercicio, const QString& numero);

} // namespace vel
