// Receipts: the bank-style payment slip of a document, for the due date chosen
// in Comborecibosfactura, carrying the amount of the whole document. The place
// of issue is always "PORTELAS", whatever the installation.
//
// The delivery note's receipt is drawn in text lines whose boxes are made of
// dashes (the em dash, character 151 of the Windows-1252 set) and bars.
#pragma once
#include "runtime/printer.h"
#include "sales/print_layout.h"
#include <QStringList>

namespace vel::receipts {

// Character 151 of Windows-1252, the dash of the receipt's rules.
QString Raya();
// Space(13) and 59 dashes.
QString ReglaRecibo();

// The 19 lines of the delivery note's receipt.
QStringList LineasReciboAlbaran(const print_layout::Documento& d);
// The delivery note's recibo: "Courier New" 12 and its 19 lines.
void ReciboAlbaran(vb::PrinterObject& printer, const print_layout::Documento& d);

} // namespace vel::receipts
