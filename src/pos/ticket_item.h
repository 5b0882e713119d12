// A line of the ticket being rung up, as the list ListTicket holds it.
//
// The ticket has no other copy than the entries of ListTicket: each entry is a
// fixed-column string of 80 characters, built by padding and cutting, and the
// window reads its data back from it by position (counting from 1):
//
//   1-14   reference, cut to 14 (the box takes 13)
//   15-61  description, cut to 47; 62 is a blank
//   63-65  VAT percentage, up to three positions
//   66-70  units, cut to 5
//   ..80   line total, right-aligned to 80, read back as the last 8 characters
//
//   "7501031311309 TORNILLO 4X40                                     21 3              3.60"
//
// A line total longer than 8 characters is read back without its first
// figures: the entry has room for amounts up to 99999.99.
#pragma once
#include <QString>

namespace vel::ticket {

// The entry of a line: reference and description as they stand in their boxes,
// the percentage as its text, units as typed, and the line total already
// formatted ("0.00" of units * price).
QString Entrada(const QString& referencia, const QString& descripcion, const QString& porcentaje,
                const QString& unidades, const QString& importe);

// The pieces of an entry, as the window cuts them back out.
QString Referencia(const QString& entrada);  // the first 13 characters
QString Descripcion(const QString& entrada); // 47 characters from 15
QString Porcentaje(const QString& entrada);  // 3 characters from 63
QString Unidades(const QString& entrada);    // 5 characters from 66
QString Importe(const QString& entrada);     // the last 8 characters

// The text of the VAT percentage held as a 32-bit float, as the runtime turns a
// Single into text: at most 7 significant figures, no trailing zeros (21, 10,
// 5.2).
QString TextoPorcentaje(float porcentaje);

} // namespace vel::ticket
