#include "pos/ticket_print.h"
#include "pos/ticket_item.h"
#include "core/sql_values.h"
#include "runtime/arithmetic.h"
#include "runtime/vb.h"

namespace vel::ticket {

using vb::Left;
using vb::Len;
using vb::Space;
using vb::Val;

QString LineaFecha(const QString& fecha, const QString& hora, const QString& operador) {
    return "  " + fecha + Space(4) + hora + Space(4) + operador;
}

QString LineaNumero(const QString& tienda, const QString& numero) {
    return "  Nº: " + Left(tienda, 2) + "/" + "TI" + "/" + numero;
}

QString LineaTitulos() { return "  Referencia" + Space(10) + "Uni" + Space(2) + "Importe" + Space(2) + "Total"; }

QStringList LineasArticulo(const QString& entrada) {
    const QString descripcion = "  " + vb::Mid(entrada, 15, 39) + " ";

    const double unidades = Val(Unidades(entrada));
    const double importe = Val(Importe(entrada));
    QString L = "  " + Left(entrada, 13) + Space(7);
    L = L + vb::CStr(unidades) + Space(5);
    L = Left(L, 25) + Space(7);
    const QString P = vb::Format(vb::Divide(importe, unidades), sql::kMascaraDosDecimales);
    L = Left(L, 32 - Len(P)) + P + " " + Space(7);
    const QString T = vb::Format(importe, sql::kMascaraDosDecimales);
    L = Left(L, 39 - Len(T)) + T;
    return {descripcion, L};
}

QString LineaTotal(const QString& total) { return Space(20) + "TOTAL: " + total; }

QString Centrado(const QString& texto) {
    return Space(static_cast<int>(vb::Int((kAnchoTicket - Len(texto)) / 2.0))) + texto;
}

void ImprimeDetalle(vb::PrinterObject& Printer, const Venta& v) {
    Printer.Print(" ");
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(8);
    Printer.Print(LineaFecha(v.fecha, v.hora, v.ComboOperador));
    Printer.Print(LineaNumero(v.ComboTienda, v.ComboTicket));
    Printer.Print(" ");
    Printer.Print(LineaTitulos());
    for (const QString& entrada : v.ListTicket)
        for (const QString& linea : LineasArticulo(entrada)) Printer.Print(linea);
}

void ImprimePie(vb::PrinterObject& Printer, const Venta& v) {
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(10);
    Printer.Print(LineaTotal(v.Labeltotal));
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(8);
    Printer.Print(Centrado("-+ I.V.A. INCLUIDO +-"));
    Printer.Print(Centrado("GRACIAS POR SU VISITA"));
    Printer.EndDoc();
}

} // namespace vel::ticket
