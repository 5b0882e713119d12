// Letterheads and legal notices of the installations. One build serves a few
// shops; the installation tag (ClientePrograma) chooses, when a document is
// printed, the block at its top and the data-protection notice at its foot.
// Everything here is a table of literals: lines with their font, size, colour
// and text, leading blanks included, since the blanks place each line.
//
// The tags are compared exactly, upper case, in this order: FERROBANDA,
// ULTRAMARINOS, LAPRESA, ORTA. Any other tag (a lower-case "ferrobanda" too)
// has no letterhead and no notice.
//
// FERROBANDA became a limited company on 31/03/2019: on the machine's date
// 30/03/2019 and before, its papers carry the sole trader's block and notice;
// from 31/03/2019 the company's. The document's own date plays no part, so a
// reprint shows the block of the day it is printed on.
//
// FERROBANDA's e-mail address is set when the program is built: the CMake
// setting VEL_CORREO_FERROBANDA (see docs/printing.md).
//
// A shop under any other tag may put its own identity on paper with a
// membrete.ini in the program folder (membrete_ini.h): its letterhead is laid
// out as FERROBANDA's (the register line, the name in "Verdana" 12, the tax
// number in 8, the address in 10, phone and e-mail in 9), in black, and its
// notice cites the data-protection laws in force. Without the file such a tag
// keeps printing no seller at all. The four known tags never read the file.
#pragma once
#include "printing/membrete_ini.h"
#include "runtime/printer.h"
#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vel::letterheads {

// One printed line of a block. The colour, where the table gives one, stays in
// force for the lines after it.
struct Linea {
    QString fuente;
    double tamano = 0;
    std::optional<long> color;
    QString texto;
};
using Membrete = std::vector<Linea>;

enum class Bloque { Ninguno, FerrobandaAnterior, FerrobandaPosterior, Ultramarinos, Lapresa, Orta };

// The block of a tag on a day (the machine's date).
Bloque BloqueDe(const QString& ClientePrograma, const QDate& hoy);
// The same on today's date, through the runtime's clock.
Bloque BloqueDeHoy(const QString& ClientePrograma);

QString CorreoFerrobanda();

// The letterhead of invoices and delivery notes (empty for Ninguno).
const Membrete& MembreteDocumento(Bloque bloque);
// The ticket's: the same with its differences of wording (FERROBANDA's register
// entry in two lines, LAPRESA's own lines, none for ORTA).
Membrete MembreteTicket(Bloque bloque);
// The data-protection notice, line by line, without margin (empty for LAPRESA
// and for Ninguno).
QStringList AvisoLegal(Bloque bloque);
// The bank line of the invoice, ORTA's alone ("" for the others).
QString LineaCuentaBancaria(Bloque bloque);

// The shop's own identity for a tag the program doesn't know: membrete.ini of
// the program folder, none when the tag is a known one or the file isn't
// there. A bad file raises runtime error 5 (MembreteNoValido).
std::optional<DatosMembrete> MembretePropio(const QString& ClientePrograma);
// The blocks of that identity: the document's letterhead, the ticket's (the
// register line cut for the narrow paper) and the notice.
Membrete MembreteDocumentoPropio(const DatosMembrete& d);
Membrete MembreteTicketPropio(const DatosMembrete& d);
QStringList AvisoLegalPropio(const DatosMembrete& d);

// The first lines of an account listing's page head.
struct CabeceraListado {
    QString titulo;      // line 1
    QString raya;        // line 2, the rule under it
    QString lugar;       // line 3, the place or name
    int sangriaFecha = 0; // blanks before "Fecha de emisión: " beside line 1
    int sangriaHoja = 0;  // blanks before "Hoja Nº: " beside line 2
};
std::optional<CabeceraListado> CabeceraListadoDe(const QString& ClientePrograma);
// A tag with no head: no title, rule or place, the date and the sheet number
// further right (57 and 64 blanks).
CabeceraListado CabeceraListadoSinMembrete();
// The head of membrete.ini's shop: its name, a rule as long, its town; the date
// and sheet number where a tag with no head has them.
CabeceraListado CabeceraListadoPropia(const DatosMembrete& d);

// Printing. Each starts by setting the font every letterhead starts from before the tag is
// looked at, so that a tag with no block leaves that font in force.

// "Courier New" 8, then the letterhead of the tag on today's date. True when a
// block was printed.
bool ImprimeMembrete(vb::PrinterObject& printer, const QString& ClientePrograma);
bool ImprimeMembreteTicket(vb::PrinterObject& printer, const QString& ClientePrograma);
// "Courier New" 6, then the notice with each line after the margin: three blanks
// on invoices, none on delivery notes.
void ImprimeAvisoLegal(vb::PrinterObject& printer, const QString& ClientePrograma, const QString& margen);
// "Courier New" 8, then the bank line and an empty line under ORTA only.
void ImprimeCuentaBancaria(vb::PrinterObject& printer, const QString& ClientePrograma);

} // namespace vel::letterheads
