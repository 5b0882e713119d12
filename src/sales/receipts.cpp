#include "sales/receipts.h"
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

    QString linea3 = Space(12) + bar + Space(4) + d.Combonumerofactura + Space(80);
    linea3 = Left(linea3, 25) + bar + QStringLiteral("  PORTELAS") + Space(80);
    linea3 = Left(linea3, 54) + bar + Space(4) + print_layout::Importe(d.Labeltotalfactura) + Space(6) + bar;

    QString linea6 = Space(12) + bar + Space(12) + d.Textfechafactura + Space(6) + bar + Space(80);
    linea6 = Left(linea6, 50) + d.Comborecibosfactura + Space(12) + bar;

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

void ReciboAlbaran(vb::PrinterObject& printer, const print_layout::Documento& d) {
    printer.SetFontName(QStringLiteral("Courier New"));
    printer.SetFontSize(12);
    for (const QString& linea : LineasReciboAlbaran(d)) printer.Print(linea);
}

} // namespace vel::receipts
