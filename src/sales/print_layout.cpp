#include "sales/print_layout.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include "printing/letterheads.h"
#include "printing/line_cut.h"

namespace vel::print_layout {

using vb::Left;
using vb::Len;
using vb::Right;
using vb::Space;

const QString RayaSubrayado = QString(80, QLatin1Char('_'));

namespace {
const QString TituloDetalleAlbaran =
    QStringLiteral("REFERENCIA    DESCRIPCION                 UNID. IMPORTE SUBTOTAL  DTO.  TOTAL  ");
const QString TituloPieAlbaran =
    QStringLiteral("Importe Bruto Dtos.   Imp. Neto Base    %IVA Cuota IVA %Rec Cuota Rec. Total");
const QString Continua = QStringLiteral("> > > CONTINUA > > >");
const QString TituloDetalleFactura =
    QStringLiteral(" REFERENCIA    DESCRIPCION                 UNID.   IMPORTE  SUBTOTAL DTO.   TOTAL");
const QString TituloPieFactura =
    QStringLiteral(" Importe Bruto Dtos.   Imp. Neto Base     IVA Cuota IVA                 Total");
const QString TituloPieFacturaRecargo =
    QStringLiteral(" Importe Bruto Dtos.   Imp. Neto Base     IVA Cuota IVA %Rec Cuota Rec. Total");
const QString vbCrLf = QStringLiteral("\r\n");

// The line count at which a page of lines is full, and the line the filling
// reaches so that the foot always falls at the same height.
constexpr int LineasPorPagina = 39;
constexpr int LineasRelleno = 38;
constexpr int LineasRellenoFactura = 39;
} // namespace

std::int16_t Integer16(double value) {
    const double v = vb::Round(value);
    if (v < -32768 || v > 32767) vb::Raise(6, QStringLiteral("Desbordamiento"));
    return static_cast<std::int16_t>(v);
}

QString TerminoPago(const QString& label) {
    const QString clave = Left(label, 4);
    if (clave == QLatin1String("1/0,")) return QStringLiteral("CONTADO");
    if (clave == QLatin1String("1/30")) return QStringLiteral("30 Días");
    if (clave == QLatin1String("1/60")) return QStringLiteral("60 Días");
    if (clave == QLatin1String("1/90")) return QStringLiteral("90 Días");
    return label;
}

QString Importe(const QString& text) { return vb::Format(vb::Round(vb::Val(text), 2), QStringLiteral("0.00")); }

// The seven pieces of a line, cut the same way in both documents. The
// invoice puts a blank before the reference (15 wide in all) and prints a
// discount whose value is 0 as three blanks; the overflow rule comes after the
// discount is made, so a long total takes the last column of the discount's
// piece, blank or figure.
//
// An amount longer than its 9 columns doesn't break the alignment: the piece
// before it gives up its last character, and the amount takes its last 10
// characters, after a blank for the unit amount and the subtotal and with none
// for the total. References over 13 and descriptions over 26 are not cut: the
// pad would be negative, which Space refuses, and the line entry keeps them short.
static std::array<QString, 7> PiezasLinea(const std::array<QString, 7>& c, bool factura) {
    std::array<QString, 7> p;
    p[0] = (factura ? QStringLiteral(" ") : QString()) + c[0] + Space(13 - Len(c[0])) + QLatin1Char(' ');
    p[1] = c[1] + Space(26 - Len(c[1])) + QLatin1Char(' ');
    p[2] = Space(6 - Len(c[2])) + c[2] + QLatin1Char(' ');
    for (int i : {3, 4}) {
        if (Len(c[i]) > 9) {
            p[i - 1] = Left(p[i - 1], Len(p[i - 1]) - 1);
            p[i] = QLatin1Char(' ') + Right(c[i], 10);
        } else {
            p[i] = Space(9 - Len(c[i])) + c[i] + QLatin1Char(' ');
        }
    }
    p[5] = factura && vb::Val(c[5]) == 0 ? Space(3) : Space(2 - Len(c[5])) + c[5] + QLatin1Char(' ');
    if (Len(c[6]) > 9) {
        p[5] = Left(p[5], Len(p[5]) - 1);
        p[6] = Right(c[6], 10);
    } else {
        p[6] = Space(9 - Len(c[6])) + c[6];
    }
    return p;
}

std::array<QString, 7> PiezasLineaAlbaran(const std::array<QString, 7>& c) { return PiezasLinea(c, false); }

QString LineaAlbaran(const std::array<QString, 7>& celdas) {
    const auto p = PiezasLineaAlbaran(celdas);
    return p[0] + p[1] + p[2] + p[3] + p[4] + p[5] + p[6];
}

std::int16_t PaginasAlbaran(long Rows) {
    if (Rows > 40) return Integer16(vb::Int(double(Rows - 1) / 39) + 1);
    return 1;
}

// L = Left(L, n), the value, Space(80), stop after stop; every column printed,
// zeros too.
QString LineaTotalesAlbaran(const Documento& d) {
    printing::LineaCortada L(Space(4) + Importe(d.Labelbruto));
    L.corta(14, Importe(d.Labeldescuento));
    L.corta(22, Importe(d.Labelneto));
    L.corta(32, Importe(d.Labelbase));
    L.corta(42, d.Textiva);
    L.corta(45, Importe(d.Labelimporteiva));
    L.corta(56, d.Textrecargo);
    L.corta(61, Importe(d.Labelimporterecargo));
    L.corta(71, Importe(d.Labeltotalfactura));
    return L.texto();
}

// Under a known tag the letterhead ends in Verdana and the customer block starts
// in "Courier New" 12. A tag with no letterhead prints the block in the font in
// force, the "Courier New" 8 set before the tag was looked at: the block goes
// out smaller, as it always has under such a tag.
void CabeceraCliente(vb::PrinterObject& printer, const Documento& d) {
    if (letterheads::ImprimeMembrete(printer, d.ClientePrograma)) {
        printer.SetFontName(QStringLiteral("Courier New"));
        printer.SetFontSize(12);
    }
    printer.Print(Space(40) + d.Combonombrecomercial);
    printer.Print(Space(40) + d.Combonombrefiscal);
    printer.Print(Space(40) + d.Textdomicilio);
    printer.Print(Space(40) + d.Textcodigopostal + QLatin1Char(' ') + d.Textpoblacion + QLatin1Char('-') +
                  d.Textprovincia);
    printer.Print(Space(40) + QStringLiteral("CIF/NIF: ") + d.Combonif);
    printer.Print();
    printer.Print();
    printer.Print();
}

void cabeceraalbaran(vb::PrinterObject& printer, const Documento& d) {
    CabeceraCliente(printer, d);
    printer.Print(QStringLiteral(" Nº ") + d.ComboProforma + QStringLiteral(": ") + d.Combonumerofactura +
                  QLatin1Char('/') + d.Comboejerciciofactura + QStringLiteral("  Fecha ") + d.ComboProforma +
                  QStringLiteral(": ") + d.Textfechafactura + QStringLiteral("      Forma de Pago: ") +
                  TerminoPago(d.Labelformapagofacturavencimientos));
    printer.Print(RayaSubrayado);
    printer.Print(TituloDetalleAlbaran);
    printer.Print(RayaSubrayado);
}

// A page holds 39 lines. A note of more than one page marks the end of each
// full page with the continuation, four line feeds and the whole header again,
// without a new page: on a continuous form the next header comes after a gap.
// The test knows no last page, so a note whose last page ends on line 39 still
// gets the mark and one more header.
void detallealbaran(vb::PrinterObject& printer, const Documento& d, Contadores& c) {
    c.paginas = PaginasAlbaran(d.Rows);
    c.paginaactual = 1;
    c.lineas = 1;
    for (long fila = 1; fila <= d.Rows - 1; ++fila) {
        std::array<QString, 7> celdas;
        for (int col = 0; col < 7; ++col) celdas[col] = d.TextMatrix(int(fila), col);
        printer.Print(LineaAlbaran(celdas));
        if (c.lineas == LineasPorPagina && c.paginas >= 2) {
            printer.Print(Space(60) + Continua);
            for (int i = 0; i < 4; ++i) printer.Print();
            cabeceraalbaran(printer, d);
            c.lineas = 0;
        }
        c.lineas = Integer16(c.lineas + 1);
    }
    while (c.lineas < LineasRelleno) {
        printer.Print();
        c.lineas = Integer16(c.lineas + 1);
    }
}

void piealbaran(vb::PrinterObject& printer, const Documento& d) {
    printer.Print(RayaSubrayado);
    printer.Print(TituloPieAlbaran);
    printer.Print(LineaTotalesAlbaran(d));
    printer.Print(RayaSubrayado);
    letterheads::ImprimeAvisoLegal(printer, d.ClientePrograma, QString());
    printer.Print(QString());
}

// ---- The invoice ------------------------------------------------------------------

std::array<QString, 7> PiezasLineaFactura(const std::array<QString, 7>& c) { return PiezasLinea(c, true); }

QString LineaFactura(const std::array<QString, 7>& celdas) {
    const auto p = PiezasLineaFactura(celdas);
    return p[0] + p[1] + p[2] + p[3] + p[4] + p[5] + p[6];
}

// R + U + 1 is the grid's Rows, title row included, plus the lines of the long
// description: with a description, every line the detail prints (grid lines,
// the empty line, the description's lines); without one, the grid lines and
// one more. Above 40 the invoice has more than one page.
std::int16_t PaginasFactura(long Rows, const QString& TextDescripcionLarga) {
    const long U = long(vb::Split(TextDescripcionLarga, vbCrLf).size()) - 1;
    if (Rows + U + 1 > 40) return Integer16(vb::Int(double(Rows + U) / 39) + 1);
    return 1;
}

QString TituloTotalesFactura(const QString& Textrecargo) {
    return vb::Val(Textrecargo) == 0 ? TituloPieFactura : TituloPieFacturaRecargo;
}

// L = Left(L, n), the value, Space(80), stop after stop. A discount and a
// surcharge of 0 leave their columns blank; the total with its euro sign is
// placed so that the sign is the 81st character.
QString LineaTotalesFactura(const Documento& d) {
    printing::LineaCortada L(QLatin1Char(' ') + Importe(d.Labelbruto));
    if (vb::Val(d.Labeldescuento) != 0) L.corta(15, Importe(d.Labeldescuento));
    L.corta(23, Importe(d.Labelneto));
    L.corta(33, Importe(d.Labelbase));
    L.corta(42, d.Textiva);
    L.corta(46, Importe(d.Labelimporteiva));
    if (vb::Val(d.Textrecargo) != 0) {
        L.corta(56, d.Textrecargo);
        L.corta(61, Importe(d.Labelimporterecargo));
    }
    const QString total = Importe(d.Labeltotalfactura);
    L.corta(81 - (Len(total) + 2), total + QStringLiteral(" €"));
    return L.texto();
}

QString NombreTrabajoFactura(const Documento& d) {
    return d.Combonumerofactura + QLatin1Char(' ') + vb::Format(d.Textfechafactura, QStringLiteral("yyyymmdd")) +
           QStringLiteral(" - ") + d.Combocodigo;
}

namespace {
// A rule across the page at the current height, in black. The empty Print and
// the return to the height read before make it take no room: the next line
// prints where the rule is.
void Regla(vb::PrinterObject& printer) {
    const double y = printer.CurrentY();
    printer.Line(1, y, printer.ScaleWidth() - 2, y, vb::vbBlack);
    printer.Print();
    printer.SetCurrentY(y);
}
} // namespace

void cabecerafactura(vb::PrinterObject& printer, const Documento& d) {
    CabeceraCliente(printer, d);
    printer.Print(QStringLiteral(" Nº Factura: ") + d.Combonumerofactura + QLatin1Char('/') + d.Comboejerciciofactura +
                  QStringLiteral("  Fecha Factura: ") + d.Textfechafactura + QStringLiteral("     Forma de Pago: ") +
                  TerminoPago(d.Labelformapagofacturavencimientos));
    Regla(printer);
    printer.Print(TituloDetalleFactura);
    Regla(printer);
}

// A page holds 39 lines. An invoice of more than one page marks the end of each
// full page with the continuation, starts a new sheet and prints the whole
// header again, letterhead included. The test knows no last page, so an invoice
// whose last page ends on line 39 still gets the mark and one more header.
//
// The long description follows the grid after one empty line, each of its
// lines after 15 blanks, counted and tested like grid lines. The empty line is
// counted but not tested: should it be the 39th of a page, the count runs past
// 39 and that page is not continued by the program (the printer starts the next
// sheet by itself when the paper is full).
void detallefactura(vb::PrinterObject& printer, const Documento& d, Contadores& c) {
    c.paginas = PaginasFactura(d.Rows, d.TextDescripcionLarga);
    c.paginaactual = 1;
    c.lineas = 1;
    const auto trasLinea = [&] {
        if (c.lineas == LineasPorPagina && c.paginas >= 2) {
            printer.Print(Space(60) + Continua);
            printer.NewPage();
            cabecerafactura(printer, d);
            c.lineas = 0;
        }
        c.lineas = Integer16(c.lineas + 1);
    };
    for (long fila = 1; fila <= d.Rows - 1; ++fila) {
        std::array<QString, 7> celdas;
        for (int col = 0; col < 7; ++col) celdas[col] = d.TextMatrix(int(fila), col);
        printer.Print(LineaFactura(celdas));
        trasLinea();
    }
    if (!d.TextDescripcionLarga.isEmpty()) {
        printer.Print();
        c.lineas = Integer16(c.lineas + 1);
        for (const QString& linea : vb::Split(d.TextDescripcionLarga, vbCrLf)) {
            printer.Print(Space(15) + linea);
            trasLinea();
        }
    }
    while (c.lineas < LineasRellenoFactura) {
        printer.Print();
        c.lineas = Integer16(c.lineas + 1);
    }
}

// The bank line goes out only with CheckCuenta ticked, and then only under the
// tag that has one; under the others the box just sets the font.
void piefactura(vb::PrinterObject& printer, const Documento& d) {
    Regla(printer);
    printer.Print(TituloTotalesFactura(d.Textrecargo));
    printer.Print(LineaTotalesFactura(d));
    Regla(printer);
    if (d.CheckCuenta == 1) letterheads::ImprimeCuentaBancaria(printer, d.ClientePrograma);
    letterheads::ImprimeAvisoLegal(printer, d.ClientePrograma, Space(3));
    printer.Print(QString());
}

} // namespace vel::print_layout
