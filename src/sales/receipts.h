// Receipts: the bank-style payment slip of a document, for the due date chosen
// in Comborecibosfactura, carrying the amount of the whole document. The place
// of issue is always "PORTELAS", whatever the installation.
//
// The delivery note's receipt is drawn in text lines whose boxes are made of
// dashes (the em dash, character 151 of the Windows-1252 set) and bars. The
// invoice's is drawn on an A4 sheet in millimetres: boxes of Line, and each
// field printed at its place.
#pragma once
#include "printing/membrete_ini.h"
#include "runtime/printer.h"
#include "sales/print_layout.h"
#include <QStringList>
#include <vector>

namespace vel::receipts {

// Character 151 of Windows-1252, the dash of the receipt's rules.
QString Raya();
// Space(13) and 59 dashes.
QString ReglaRecibo();

// A shop whose identity comes from membrete.ini (letterheads.h) is named on its
// receipts too, under the debtor's box: "EMISOR: " and the name, "NIF: " and
// the tax number, the address, the postal code and town. No receipt of the
// four known tags carries its issuer, and none changes.
QStringList LineasEmisor(const letterheads::DatosMembrete& m);

// The 19 lines of the delivery note's receipt.
QStringList LineasReciboAlbaran(const print_layout::Documento& d);
// The delivery note's recibo: "Courier New" 12 and its 19 lines; with a
// membrete.ini, an empty line and the issuer's lines after 13 blanks.
void ReciboAlbaran(vb::PrinterObject& printer, const print_layout::Documento& d);

// A stroke of the invoice's receipt, (x1,y1)-(x2,y2) in millimetres.
struct Trazo {
    double x1, y1, x2, y2;
};
// A text of the invoice's receipt printed with its top left corner at (x, y).
struct Campo {
    double x, y;
    QString texto;
};
// The strokes of the four boxes in the order they are drawn: receipt, place and
// amount; dates; bank; debtor.
const std::vector<Trazo>& CajasReciboFactura();
// The titles and the fields, in the order they are printed.
std::vector<Campo> CamposReciboFactura(const print_layout::Documento& d);
// The invoice's recibo: "Courier New" 12, ScaleMode 6 with a scale of 210 by
// 297, the boxes in the default colour, then the fields; with a membrete.ini,
// the issuer's lines at x 36 from y 97, 4 mm apart.
//
//   void FormFacturaVenta::Commandrecibos_Click() {
//       vb::RunPrintJob({.dialog = CommonDialog1, .calendar = Calendario,
//                        .procedures = {[this] { recibo(); }}});
//   }
//   void FormFacturaVenta::recibo() { receipts::ReciboFactura(vb::Printer(), Impresion.impreso); }
void ReciboFactura(vb::PrinterObject& printer, const print_layout::Documento& d);

} // namespace vel::receipts
