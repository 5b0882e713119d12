#include "sales/receipts.h"
#include "printing/letterheads.h"
#include "printing/line_cut.h"
#include "runtime/vb.h"
#include <QStringDecoder>

namespace vel::receipts {

using vb::Left;
using vb::Space;

QString Raya() {
    static const QString raya = QStringDecoder("windows-1252").decode(QByteArray(1, char(151)));
    return raya;
}

QString ReglaRecibo() { return Space(13) + Raya().repeated(59); }

// Lines 3 and 12 are not cut, so their closing bar moves with the amount and
// with the account; lines 15 to 18 are cut at the bar.
QStringList LineasReciboAlbaran(const print_layout::Documento& d) {
    const QString bar = QStringLiteral("|");
    const QString regla = ReglaRecibo();
    const auto cortada = [&](const QString& texto) {
        return Left(Space(12) + bar + Space(3) + texto + Space(80), 72) + bar;
    };

    printing::LineaCortada corte3(Space(12) + bar + Space(4) + d.Combonumerofactura);
    corte3.corta(25, bar + QStringLiteral("  PORTELAS"));
    const QString linea3 =
        Left(corte3.texto(), 54) + bar + Space(4) + print_layout::Importe(d.Labeltotalfactura) + Space(6) + bar;

    const QString linea6 = Left(Space(12) + bar + Space(12) + d.Textfechafactura + Space(6) + bar + Space(80), 50) +
                           d.Comborecibosfactura + Space(12) + bar;

    return {
        regla,
        Space(12) + bar + QStringLiteral(" RECIBO Nº: ") + bar + QStringLiteral(" LOCALIDAD DE EXPEDICIÓN:   ") + bar +
            QStringLiteral(" IMPORTE:        ") + bar,
        linea3,
        regla,
        Space(12) + bar + QStringLiteral(" FECHA DE EXPEDICIÓN:       ") + bar +
            QStringLiteral(" VENCIMIENTO:                 ") + bar,
        linea6,
        regla,
        QString(),
        QString(),
        regla,
        Space(12) + bar + QStringLiteral(" DOMICILIACIÓN BANCARIA:") + Space(35) + bar,
        Space(12) + bar + Space(2) + d.Labelbanco + QStringLiteral(" / ") + d.TextIban + QLatin1Char(' ') +
            d.Textbanco + QLatin1Char(' ') + d.Textsucursal + QLatin1Char(' ') + d.Textdigitocontrol +
            QLatin1Char(' ') + d.Textnumerocuenta + Space(24) + bar,
        regla,
        regla,
        cortada(d.Combonombrecomercial),
        cortada(d.Combonombrefiscal),
        cortada(d.Textdomicilio),
        cortada(d.Textcodigopostal + QLatin1Char(' ') + d.Textpoblacion + QLatin1Char('-') + d.Textprovincia),
        regla,
    };
}

QStringList LineasEmisor(const letterheads::DatosMembrete& m) {
    return {QStringLiteral("EMISOR: ") + m.nombre, QStringLiteral("NIF: ") + m.nif, m.domicilio, m.poblacion};
}

void ReciboAlbaran(vb::PrinterObject& printer, const print_layout::Documento& d) {
    printer.SetFontName(QStringLiteral("Courier New"));
    printer.SetFontSize(12);
    const auto emisor = letterheads::MembretePropio(d.ClientePrograma);
    for (const QString& linea : LineasReciboAlbaran(d)) printer.Print(linea);
    if (!emisor) return;
    printer.Print();
    for (const QString& linea : LineasEmisor(*emisor)) printer.Print(linea.isEmpty() ? linea : Space(13) + linea);
}

// The invoice's receipt. The scale is set after ScaleMode 6, so that the
// printable width and height of the sheet count 210 and 297: the millimetres of
// an A4 sheet, whatever border the printer keeps.
const std::vector<Trazo>& CajasReciboFactura() {
    static const std::vector<Trazo> cajas = {
        // receipt number, place and amount
        {32, 7, 184, 7}, {184, 7, 184, 21}, {184, 21, 32, 21}, {32, 21, 32, 7}, {66, 7, 66, 21}, {140, 7, 140, 21},
        // dates of issue and due
        {32, 21, 32, 35}, {32, 35, 184, 35}, {184, 35, 184, 21}, {107, 21, 107, 35},
        // bank
        {32, 49, 184, 49}, {184, 49, 184, 63}, {184, 63, 32, 63}, {32, 63, 32, 49},
        // debtor
        {32, 68, 184, 68}, {184, 68, 184, 91}, {184, 91, 32, 91}, {32, 91, 32, 68},
    };
    return cajas;
}

std::vector<Campo> CamposReciboFactura(const print_layout::Documento& d) {
    const QChar b = QLatin1Char(' ');
    return {
        {36, 10, QStringLiteral("RECIBO Nº:   LOCALIDAD DE EXPEDICIÓN:     IMPORTE:")},
        {44, 14, d.Combonumerofactura},
        {72, 14, QStringLiteral("PORTELAS")},
        {147, 14, print_layout::Importe(d.Labeltotalfactura)},
        {36, 24, QStringLiteral("FECHA DE EXPEDICIÓN:         VENCIMIENTO:")},
        {67, 28, d.Textfechafactura},
        {131, 28, d.Comborecibosfactura},
        {36, 52, QStringLiteral("DOMICILIACIÓN BANCARIA:")},
        {38, 56,
         d.Labelbanco + QStringLiteral(" / ") + d.TextIban + b + d.Textbanco + b + d.Textsucursal + b +
             d.Textdigitocontrol + b + d.Textnumerocuenta},
        {41, 71, d.Combonombrecomercial},
        {41, 75, d.Combonombrefiscal},
        {41, 79, d.Textdomicilio},
        {41, 83, d.Textcodigopostal + b + d.Textpoblacion + QLatin1Char('-') + d.Textprovincia},
    };
}

void ReciboFactura(vb::PrinterObject& printer, const print_layout::Documento& d) {
    printer.SetFontName(QStringLiteral("Courier New"));
    printer.SetFontSize(12);
    printer.SetScaleMode(6);
    printer.SetScaleWidth(210);
    printer.SetScaleHeight(297);
    for (const Trazo& t : CajasReciboFactura()) printer.Line(t.x1, t.y1, t.x2, t.y2);
    const auto emisor = letterheads::MembretePropio(d.ClientePrograma);
    std::vector<Campo> campos = CamposReciboFactura(d);
    if (emisor) {
        double y = 97;
        for (const QString& linea : LineasEmisor(*emisor)) {
            campos.push_back({36, y, linea});
            y += 4;
        }
    }
    for (const Campo& c : campos) {
        printer.SetCurrentX(c.x);
        printer.SetCurrentY(c.y);
        printer.Print(c.texto);
    }
}

} // namespace vel::receipts
