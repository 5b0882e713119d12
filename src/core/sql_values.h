// How a value stands in the text of a statement, and how a field is read back.
//
// Statements are built by concatenation, with no parameters and no escaping:
//   text       between single quotes, as it stands         'Calle Real'
//   upper case between single quotes, upper-cased first    'CALLE REAL'
//   number     Val of the text, turned to text: Val reads the longest leading
//              number with a point as decimal mark, so "12A" gives 12, "12,5"
//              gives 12 and an empty box gives 0
//   masked     Val of the text through Format with a mask   "7" with "00": 07
// An apostrophe inside a text is not handled: it breaks the statement, which is
// how the program has always behaved.
#pragma once
#include <QString>
#include <QStringList>
#include <optional>

namespace vel {

class Recordset;

namespace sql {

// The masks statements and boxes use for numbers.
inline const QString kMascaraDosCifras = QStringLiteral("00");        // control digits, months
inline const QString kMascaraCuatroCifras = QStringLiteral("0000");   // banks, branches
inline const QString kMascaraDosDecimales = QStringLiteral("0.00");   // amounts
inline const QString kMascaraTresDecimales = QStringLiteral("0.000"); // prices

// 'text'. A text with an apostrophe breaks the statement it is put in, as it
// always has: the store raises the statement's syntax error (3134 for an
// INSERT, 3144 for an UPDATE, 3075 for a query or a DELETE) whatever follows
// the apostrophe, and never runs a statement such a value has reshaped
// (X' OR '1'='1 would otherwise turn a WHERE into one that every row meets).
QString Comillas(const QString& texto);
// 'TEXT'
QString ComillasMayusculas(const QString& texto);
// A number typed in a box becomes Val of it in the statement.
QString Numero(const QString& texto);
// A number that stands in the statement as it is written ("00017", "2026",
// "5.2"): a number taken from a grid cell, a list or a stored field, whose
// text the statement keeps. A text that is not a plain number would change
// the statement's shape ("2026 OR 1=1"): it breaks the statement as an
// apostrophe does, and the store refuses it with the statement's syntax
// error. An empty text stands as nothing, as it always has (the statement
// then fails on its own syntax).
QString NumeroTalCual(const QString& texto);
// Val of the text, formatted with the mask.
QString NumeroConMascara(const QString& texto, const QString& mascara);
// The values of a positional INSERT, in order, joined by ", ".
QString Valores(const QStringList& valores);

// True when the statement holds a quoted value built above whose apostrophe
// breaks it, or a number above that is none (the store asks before running
// any statement).
bool LlevaValorRoto(const QString& sentencia);

} // namespace sql

// The text of a field as a box shows it, a Null read as empty (the field
// joined to an empty string). One read of the field.
QString TextoCampo(const Recordset& rs, const QString& columna);
// The text of a field, or nothing when it is Null: for the windows in which a
// Null leaves the box as it was.
std::optional<QString> TextoCampoNoNulo(const Recordset& rs, const QString& columna);

} // namespace vel
