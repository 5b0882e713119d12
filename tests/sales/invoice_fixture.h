// An invoice as it stands on screen, and the printing of it, for the tests of
// the printed invoice and its receipt.
#pragma once
#include "print_fixture.h"
#include "runtime/vb.h"

namespace vel::testing {

// An invoice to the Ferretería O Cruceiro (customer 430001) with n lines of 2
// screws at 1.50, and a long description of the given lines.
inline print_layout::Documento Factura(const std::shared_ptr<Rejilla>& rejilla, int n,
                                       const QString& tag = "FERROBANDA", const QStringList& descripcion = {}) {
    print_layout::Documento d = NotaDeEntrega(rejilla, n, tag);
    d.ComboProforma.clear();
    d.Combocodigo = "430001";
    d.TextDescripcionLarga = descripcion.join("\r\n");
    return d;
}

class InvoicePrintTest : public PrintTest {
protected:
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();
    print_layout::Contadores contadores;

    // The three procedures in a document of character cells, as the job runs them.
    void print(const print_layout::Documento& d) {
        printer.SetScaleMode(4);
        print_layout::cabecerafactura(printer, d);
        print_layout::detallefactura(printer, d, contadores);
        print_layout::piefactura(printer, d);
        printer.EndDoc();
    }
    QStringList printLines(int n, const QStringList& descripcion = {}, const QString& tag = "FERROBANDA") {
        print(Factura(rejilla, n, tag, descripcion));
        return lines();
    }
    // The printed grid line of the i-th screw.
    static QString row(int i) {
        return print_layout::LineaFactura({QStringLiteral("TORN%1").arg(i, 3, 10, QLatin1Char('0')), "TORNILLO 4X40",
                                           "2", "1.50", "3.00", "0", "3.00"});
    }
    // The first Print whose text is this one.
    const vb::PrintEvent& printed(const QString& text, int from = 0) const {
        const auto& events = recorder.last().events;
        for (size_t i = size_t(from); i < events.size(); ++i)
            if (events[i].kind == vb::PrintEvent::Kind::Print && events[i].text == text) return events[i];
        static const vb::PrintEvent none{.text = "(not printed)"};
        ADD_FAILURE() << "not printed: \"" << qPrintable(text) << "\"";
        return none;
    }
};

inline const QString ContinuationMark = vb::Space(60) + "> > > CONTINUA > > >";
inline const QString InvoiceDetailTitle =
    " REFERENCIA    DESCRIPCION                 UNID.   IMPORTE  SUBTOTAL DTO.   TOTAL";
inline const QString InvoiceFootTitle =
    " Importe Bruto Dtos.   Imp. Neto Base     IVA Cuota IVA                 Total";
inline const QString InvoiceFootTitleWithSurcharge =
    " Importe Bruto Dtos.   Imp. Neto Base     IVA Cuota IVA %Rec Cuota Rec. Total";

} // namespace vel::testing
