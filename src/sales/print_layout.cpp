#include "sales/print_layout.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include "sales/letterheads.h"

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

// The line count at which a page of lines is full, and the line the filling
// reaches so that the foot always falls at the same height.
constexpr int LineasPorPagina = 39;
constexpr int LineasRelleno = 38;
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

// An amount longer than its 9 columns doesn't break the alignment: the piece
// before it gives up its last character, and the amount takes its last 10
// characters, after a blank for the unit amount and the subtotal and with none
// for the total. References over 13 and descriptions over 26 are not cut: the
// pad would be negative, which Space refuses, and the line entry keeps them short.
std::array<QString, 7> PiezasLineaAlbaran(const std::array<QString, 7>& c) {
    std::array<QString, 7> p;
    p[0] = c[0] + Space(13 - Len(c[0])) + QLatin1Char(' ');
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
    p[5] = Space(2 - Len(c[5])) + c[5] + QLatin1Char(' ');
    if (Len(c[6]) > 9) {
        p[5] = Left(p[5], Len(p[5]) - 1);
        p[6] = Right(c[6], 10);
    } else {
        p[6] = Space(9 - Len(c[6])) + c[6];
    }
    return p;
}

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
    QString L = Space(4) + Importe(d.Labelbruto) + Space(80);
    const auto corta = [&L](int n, const QString& valor) { L = Left(L, n) + valor + Space(80); };
    corta(14, Importe(d.Labeldescuento));
    corta(22, Importe(d.Labelneto));
    corta(32, Importe(d.Labelbase));
    corta(42, d.Textiva);
    corta(45, Importe(d.Labelimporteiva));
    corta(56, d.Textrecargo);
    corta(61, Importe(d.Labelimporterecargo));
    corta(71, Importe(d.Labeltotalfactura));
    return L;
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

} // namespace vel::print_layout
