// The sale of the point of sale as it stands on screen when it is charged,
// read once, and the statements that store it: the header into
// cabecera_diaria_ticket and one line a list entry into detalle_diaria_ticket.
// The printed ticket (ticket_print.h) reads the same reading.
#pragma once
#include <QString>
#include <QStringList>

namespace vel::ticket {

struct Venta {
    QString tienda;       // Val of the first two characters of ComboTienda
    QString ejercicio;    // the last four characters of today's date
    QString numero;       // Val of ComboTicket
    QString ComboTienda;  // the store's entry as shown ("1 TIENDA CENTRO")
    QString ComboTicket;  // the ticket's number as shown ("000001")
    QString ComboOperador; // "01 OPERADOR": the code is its first two characters, the name from the fourth
    QString fecha, hora;  // today's date "dd/mm/yyyy" and the time "hh:mm:ss"
    QString Labeltotal, TextDescuentoTotal;
    QString LabelIva1Total, LabelIva2Total, LabelIva3Total;
    QStringList ListTicket; // the list's entries, in order
};

// "INSERT INTO cabecera_diaria_ticket VALUES (" and its fifteen values.
QString SentenciaCabecera(const Venta& v);

// A line is stored with seventeen values: the ticket's key, four empty texts,
// the reference, three empty texts, the description, the unit price, the
// units, the line total and the VAT percentage. The table has a column for each
// of them in that order; the older listing of its columns with two and two
// empty texts and no place for the percentage would leave every line unstored.
// Units and percentage are read back through Val, so a text pasted into the
// units box goes in as the number it begins with.
QString SentenciaLinea(const Venta& v, const QString& entrada);

} // namespace vel::ticket
