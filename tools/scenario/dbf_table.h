// A dBase table written by a scenario, as a chain's program would write it:
//
//   dbf c/cadenart/articulo.dbf <<END
//   CODIGO N 8; NOMBRE C 40; REFPROVE C 15; PVENTA N 10 2; COLOR C 10; EAN N 13
//   1; TORNILLO ACERO 4X40; T440; 0.12; GRIS; 8412345000011
//   *6; BROCA PARA HORMIGÓN; B008; 3.40; ; 8412345000066
//   END
//
// The first line gives the fields (name, type, width and, for numbers, the
// decimals); each line after it is a record, its values separated by ";"
// and trimmed. A record starting with "*" is marked deleted. Texts are
// written in DOS code page 850 with its language-driver byte (a first line
// "LDID 87" before the fields names another code page by its byte); numbers
// are right-aligned in their width, as dBase writes them.
#pragma once
#include <QString>
#include <QStringList>

namespace scenario {

// Writes the table; returns an empty text, or what is wrong with the lines.
QString WriteDbfTable(const QString& path, QStringList lines);

} // namespace scenario
