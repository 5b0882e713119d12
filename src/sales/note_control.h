// The statements of the delivery-note control: the search of the listed notes
// and the invoice made from a note.
//
// The key of the note comes from the grid's row as it shows it: store T,
// series S, year E and number N ("00017", as the grid formats it; it stands
// bare in a statement and reads as 17).
#pragma once
#include <QString>

namespace vel {

class Recordset;

struct ClaveNota {
    QString tienda, serie, ejercicio, numero;
};

namespace control_albaranes {

// The state word of a search: "P", "E", "0", or "*" for all.
// "SELECT * FROM cabecera_albaran_venta WHERE ..." of the store, year and state.
QString SentenciaBuscar(const QString& tienda, const QString& ejercicio, const QString& estado);

// The note's header and its lines, by key.
QString SentenciaCabeceraNota(const ClaveNota& clave);
QString SentenciaLineasNota(const ClaveNota& clave);

// The invoices' counter: one for all stores, store 0, series 'FD'.
QString SentenciaContadorFacturas(const QString& ejercicio);
// The counter row made when there is none. Its series column receives 'VN',
// not 'FD': the next invoicing of the year does not find it and starts again
// at 1 (the program has always done so, and the invoice table takes it).
QString SentenciaNuevoContadorFacturas(const QString& ejercicio);
QString SentenciaSubirContadorFacturas(const QString& ejercicio, long numero);

// "INSERT INTO cabecera_factura_venta VALUES (" with 42 values from the note's
// header `nota` (a cursor on cabecera_albaran_venta): invoice number M, the
// note's store and number as the document of origin.
QString SentenciaFacturaCabecera(const Recordset& nota, const ClaveNota& clave, long numeroFactura);
// "INSERT INTO detalle_factura_venta VALUES (" with 26 values from one line of
// the note (a cursor on detalle_albaran_venta).
QString SentenciaFacturaLinea(const Recordset& linea, const ClaveNota& clave, long numeroFactura);
// The note marked as invoiced.
QString SentenciaMarcarFacturada(const ClaveNota& clave, long numeroFactura);
// A sent note's mark: its state "E".
QString SentenciaMarcarEnviada(const ClaveNota& clave);

// The counter of a received note's store, year and series: looked up, made
// with the note's number ('AV'), or moved to it, up or down.
QString SentenciaContadorRecibido(const ClaveNota& nota);
QString SentenciaNuevoContadorRecibido(const ClaveNota& nota);
QString SentenciaMoverContadorRecibido(const ClaveNota& nota);

} // namespace control_albaranes
} // namespace vel
