// The printed delivery note and invoice: a stream of whole text lines in a
// fixed-pitch font, every column made of blanks. The window hands over what it shows at the
// moment of printing (its boxes, labels and grid), never what the tables hold,
// so what is printed is what stands on the screen.
//
// A print button reads the window once (Impresion = Pantalla(), document_screen.h)
// and runs the job; the window's print procedures print that reading:
//
//   void FormAlbaranVenta::cabeceraalbaran() { print_layout::cabeceraalbaran(vb::Printer(), Impresion.impreso); }
//   void FormAlbaranVenta::detallealbaran() { print_layout::detallealbaran(vb::Printer(), Impresion.impreso, contadores); }
//   void FormAlbaranVenta::piealbaran() { print_layout::piealbaran(vb::Printer(), Impresion.impreso); }
//
// and the invoice's, with the job named after the invoice:
//
//   void FormFacturaVenta::Commandfactura_Click() {
//       vb::RunPrintJob({.dialog = CommonDialog1, .calendar = Calendario,
//                        .title = print_layout::NombreTrabajoFactura(Impresion.impreso),
//                        .procedures = {[this] { cabecerafactura(); }, [this] { detallefactura(); },
//                                       [this] { piefactura(); }}});
//   }
//   void FormFacturaVenta::cabecerafactura() { print_layout::cabecerafactura(vb::Printer(), Impresion.impreso); }
//   void FormFacturaVenta::detallefactura() { print_layout::detallefactura(vb::Printer(), Impresion.impreso, contadores); }
//   void FormFacturaVenta::piefactura() { print_layout::piefactura(vb::Printer(), Impresion.impreso); }
#pragma once
#include "runtime/printer.h"
#include <QString>
#include <array>
#include <cstdint>
#include <functional>

namespace vel::print_layout {

// The controls of a document window the print procedures read, by their names.
struct Documento {
    QString ClientePrograma;
    QString Combonombrecomercial, Combonombrefiscal, Textdomicilio, Textcodigopostal, Textpoblacion, Textprovincia,
        Combonif;
    QString Combonumerofactura, Comboejerciciofactura, Textfechafactura, Labelformapagofacturavencimientos;
    QString ComboProforma; // the delivery note's kind: "Albarán", "Proforma", "Presupuesto"
    // The invoice's own: the long description, its lines separated by CR LF
    // (vbCrLf) as a multi-line text box keeps them; the "Impr. NCB Empresa" box
    // (1 ticked, 0 not); the customer's code, which names the print job.
    QString TextDescripcionLarga;
    int CheckCuenta = 0;
    QString Combocodigo;
    QString Labelbruto, Labeldescuento, Labelneto, Labelbase, Textiva, Labelimporteiva, Textrecargo,
        Labelimporterecargo, Labeltotalfactura;
    // Gridfacturas: Rows counts the title row 0; columns 0 to 6 are reference,
    // description, units, unit amount, subtotal, discount, total.
    long Rows = 1;
    std::function<QString(int row, int col)> TextMatrix;
    // The receipt's own fields.
    QString Comborecibosfactura, Labelbanco, TextIban, Textbanco, Textsucursal, Textdigitocontrol, Textnumerocuenta;
};

// The three fields the print procedures of one document share, 16-bit signed
// as the window keeps them.
struct Contadores {
    std::int16_t paginas = 0;
    std::int16_t paginaactual = 0; // set, never read
    std::int16_t lineas = 0;
};

// A whole number stored in a 16-bit field: out of its range, runtime error 6
// "Desbordamiento".
std::int16_t Integer16(double value);

// ---- The pieces of the lines ----------------------------------------------------

// The payment term as printed: "1/0," "CONTADO", "1/30" "30 Días", "1/60" "60
// Días", "1/90" "90 Días" by the label's first four characters; any other label
// prints whole.
QString TerminoPago(const QString& Labelformapagofacturavencimientos);

// The seven pieces of a delivery-note line from the grid's seven texts: the
// reference in 14, the description in 27, the units in 7, the unit amount and
// the subtotal in 10, the discount in 3 and the total in 9 columns. An amount
// longer than 9 takes the column before it (see the .cpp).
std::array<QString, 7> PiezasLineaAlbaran(const std::array<QString, 7>& celdas);
QString LineaAlbaran(const std::array<QString, 7>& celdas);

// paginas of a delivery note with a grid of Rows rows (title row included).
std::int16_t PaginasAlbaran(long Rows);

// The totals line of the delivery note's foot, made by repeated cutting.
QString LineaTotalesAlbaran(const Documento& d);

// Format(Round(Val(text), 2), "0.00"), the form of every amount of the feet.
QString Importe(const QString& text);

// The invoice's line: a blank before the reference (15 wide), a discount of 0
// as three blanks; otherwise as the delivery note's, overflow rule included.
std::array<QString, 7> PiezasLineaFactura(const std::array<QString, 7>& celdas);
QString LineaFactura(const std::array<QString, 7>& celdas);

// paginas of an invoice: R the grid's Rows (title row included), U the upper
// bound of the long description split on CR LF (-1 for an empty text).
std::int16_t PaginasFactura(long Rows, const QString& TextDescripcionLarga);

// The totals title of the invoice's foot: with the surcharge columns only when
// the value of Textrecargo isn't 0.
QString TituloTotalesFactura(const QString& Textrecargo);
// The totals line of the invoice's foot, made by repeated cutting; the discount
// and the surcharge only when not 0; the total with " €" ending at column 81.
QString LineaTotalesFactura(const Documento& d);

// The name of the invoice's print job, given to App.Title while it prints:
// Combonumerofactura, a blank, Format(Textfechafactura, "yyyymmdd"), " - ",
// Combocodigo.
QString NombreTrabajoFactura(const Documento& d);

// ---- The procedures ----------------------------------------------------------------

// Steps 1 to 7 of both document headers: the letterhead, the customer block and
// three empty lines.
void CabeceraCliente(vb::PrinterObject& printer, const Documento& d);
void cabeceraalbaran(vb::PrinterObject& printer, const Documento& d);
void detallealbaran(vb::PrinterObject& printer, const Documento& d, Contadores& c);
void piealbaran(vb::PrinterObject& printer, const Documento& d);

// The invoice's procedures. Its rules are drawn with Line and take no vertical
// room; a page of lines continues with NewPage and the whole header again.
void cabecerafactura(vb::PrinterObject& printer, const Documento& d);
void detallefactura(vb::PrinterObject& printer, const Documento& d, Contadores& c);
void piefactura(vb::PrinterObject& printer, const Documento& d);

extern const QString RayaSubrayado; // the 80 underscores of the delivery note's rules

} // namespace vel::print_layout
