// Document numbering: the counters of the table `series`.
//
// One counter row per kind of document, store and fiscal year; contador_series
// holds the last number used. The number a window shows is only a proposal:
// nothing is reserved, and the counter moves when the document is saved, to the
// number the document bears (typed higher, lower or as proposed).
//
//   Document       tipo   tienda_series              serie_series  in the document  mask
//   delivery note  'VN'   the current store          'AV'          'AV'             "00000"
//   invoice        'VN'   always 0                   'FD'          'VD'             "00000"
//   ticket         'VN'   the store of ComboTienda   'TI'          'TI'             "000000"
//
// Store, year and number go into the statements as the windows join them: the
// store and year as text (the Val of the store's text, the calendar's year, the
// year combo's text), the number as Val of what the number combo holds.
#pragma once
#include "core/record_store.h"
#include <QString>
#include <QStringList>

namespace vel {

enum class Documento { Albaran, Factura, Ticket };

// The counter word of a kind of document: "AV", "FD" or "TI".
QString PalabraSerie(Documento documento);

// The proposal of a new number.
struct PropuestaNumero {
    QString numero;          // through the mask: "00001", "00008", "000001"
    bool encontrada = false; // a counter row exists for the key
    QString ejercicio;       // ejercicio_series of the row found (the windows put
                             // it in Comboejerciciofactura); empty when none
};

// The statement that reads the counter for a proposal (Commandnuevo_Click of the
// document windows, CargarNumeroTicket of FTpv). For an invoice the store is
// always 0 and `tienda` is not used.
QString SentenciaPropuesta(Documento documento, const QString& tienda, const QString& ejercicio);
// The same counter read by CargarDatos of the document windows, with the year
// first. Not used for tickets (FTpv has no CargarDatos).
QString SentenciaCargarDatos(Documento documento, const QString& tienda, const QString& ejercicio);

// Runs the proposal statement: no row gives 1, a row gives contador_series + 1,
// through "00000" (documents) or "000000" (tickets).
PropuestaNumero ProponerNumero(Database& db, Documento documento, const QString& tienda,
                               const QString& ejercicio);
// The same from the CargarDatos form of the statement.
PropuestaNumero ProponerNumeroCargarDatos(Database& db, Documento documento, const QString& tienda,
                                          const QString& ejercicio);

// The save step of a new document, run before its rows are written: the counter
// row is selected, inserted with the number when missing, else its counter is
// set to the number. `numero` is the number combo's text, taken through Val.
// Returns true when the row was born here. For an invoice the store is 0.
bool GuardarContador(Database& db, Documento documento, const QString& tienda,
                     const QString& ejercicio, const QString& numero);

// Invoicing a delivery note (FormControlAlbaran): the invoice number for the
// note's year from the 'FD' counter of store 0, which moves to it. With no such
// row the number is 1 and the row written is ('VN', year, 0, 'VN', 1): the word
// 'VN' where 'FD' belongs. That row is never found by this select, so the next
// note of the year gets 1 again, until a direct invoice creates the 'FD' row.
int NumeroFacturaDeAlbaran(Database& db, const QString& ejercicio);

// Receiving a delivery note from another store: that store's counter follows the
// received number, up or down. The row is looked up with the received series
// word; it is written and updated with 'AV'.
void SeguirContadorRecibido(Database& db, const QString& tienda, const QString& serie,
                            const QString& ejercicio, const QString& numero);

// The fiscal years offered in Comboejerciciofactura.
struct ListaEjercicios {
    QStringList ejercicios; // ascending as the rows came, the calendar's year last if new
    int seleccion = -1;     // the entry to select: the calendar's year
};

// Walks a cursor of document headers sorted by year and keeps each year not seen
// before, in an array of at most 100 years: once 100 different years are kept,
// a further year is not offered. Then the calendar's year is looked for among
// the entries and appended when missing.
ListaEjercicios EjerciciosDocumentos(Recordset& cabeceras, const QString& columnaEjercicio,
                                     int anoCalendario);

// The statement that reads a customer's headers for the year list ("*" is every
// customer). Only for delivery notes and invoices.
QString SentenciaEjercicios(Documento documento, const QString& cliente);

// Runs that statement and builds the list.
ListaEjercicios CargarEjercicios(Database& db, Documento documento, const QString& cliente,
                                 int anoCalendario);

} // namespace vel
