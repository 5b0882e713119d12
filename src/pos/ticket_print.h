// The lines of the printed ticket, 40 characters wide, built from what the
// window shows as it charges: the date line, the number, the column titles,
// two lines for each entry of ListTicket, the total and the two closing lines.
// The print procedures of FTpv (CabeceraTicket, DetalleTicket, PieTicket) send
// them to the Printer with their fonts.
//
//     21/11/2026    10:15:30    1 /OPERADOR
//     Nº: 1 /TI/000001
//
//     Referencia          Uni  Importe  Total
//     MARTILLO CARPINTERO 500G
//     MAR500              2      12.50  25.00
#pragma once
#include "pos/ticket_statements.h"
#include "runtime/printer.h"
#include <QString>
#include <QStringList>

namespace vel::ticket {

// The line width the ticket is laid out for.
inline constexpr int kAnchoTicket = 40;

// "  ", the date, four blanks, the time, four blanks, the operator's entry.
QString LineaFecha(const QString& fecha, const QString& hora, const QString& operador);
// "  Nº: ", the store's two characters, "/TI/", the ticket number as shown.
QString LineaNumero(const QString& tienda, const QString& numero);
// "  Referencia", ten blanks, "Uni", two, "Importe", two, "Total".
QString LineaTitulos();

// The two lines of an entry: the description (39 characters from position 15
// of the entry) between "  " and " "; then the reference, the units as a
// number (at most three characters, from column 23), the unit price ending at
// column 32 and the line total ending at column 39. The total is cut in after
// the price, so a total of more than six characters ("14814.00") takes the
// columns it needs from the end of the price: the cutting decides, and the
// columns hold for every total up to 999.99.
QStringList LineasArticulo(const QString& entrada);

// Twenty blanks, "TOTAL: " and the total as the window shows it.
QString LineaTotal(const QString& total);
// Centred on the 40 columns: Int((40 - Len) / 2) blanks before the text.
QString Centrado(const QString& texto);

// ---- The procedures, on the sale as it was read when charged -----------------

// Two lines of a blank, then in "Courier New" 8 the date, time and operator,
// the ticket's number, a blank line, the column titles and two lines for each
// entry of the list.
void ImprimeDetalle(vb::PrinterObject& Printer, const Venta& v);
// The total in "Courier New" 10, the two closing words centred in "Courier New"
// 8, and the ticket goes out.
void ImprimePie(vb::PrinterObject& Printer, const Venta& v);

} // namespace vel::ticket
