// A two-page ORTA invoice with its bank line, and its receipt, printed to PDF
// files through the real environment and read back with poppler's tools.
// With VEL_KEEP_PDF set to a folder, the files are left there to be looked at.
#include "invoice_fixture.h"
#include "runtime/msgbox.h"
#include "sales/receipts.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace vel::testing {
namespace {

QString output(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitCode() != 0) {
        ADD_FAILURE() << qPrintable(program) << " failed: " << p.readAllStandardError().toStdString();
        return QString();
    }
    return QString::fromUtf8(p.readAllStandardOutput());
}

int pages(const QString& pdf) {
    for (const QString& l : output("pdfinfo", {pdf}).split('\n'))
        if (l.startsWith("Pages:")) return l.mid(6).trimmed().toInt();
    return -1;
}

QString pageText(const QString& pdf, int page) {
    return output("pdftotext", {"-layout", "-f", QString::number(page), "-l", QString::number(page), pdf, "-"});
}

class InvoicePaper : public InvoicePrintTest {
protected:
    QTemporaryDir tmp;
    QString folder() const {
        const QString keep = qEnvironmentVariable("VEL_KEEP_PDF");
        if (!keep.isEmpty()) QDir().mkpath(keep);
        return keep.isEmpty() ? tmp.path() : keep;
    }
    print_layout::Documento invoice() {
        QStringList descripcion;
        for (int i = 1; i <= 6; ++i) descripcion << QStringLiteral("Instalación do equipo, partida %1").arg(i);
        auto d = Factura(rejilla, 45, "ORTA", descripcion);
        d.CheckCuenta = 1;
        d.Labelbruto = d.Labelneto = d.Labelbase = "135";
        d.Labelimporteiva = "28.35";
        d.Labeltotalfactura = "163.35";
        return d;
    }
    void TearDown() override { vb::SetAppTitle("Velmarinda"); }
};

TEST_F(InvoicePaper, ATwoPageOrtaInvoiceWithItsBankLineAndItsReceipt) {
    const auto d = invoice();
    vb::SetPrintEnvironment(nullptr);
    const QString factura = folder() + "/factura_orta.pdf";
    const QString recibo = folder() + "/recibo_orta.pdf";

    vb::SetAppTitle(print_layout::NombreTrabajoFactura(d));
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, factura});
    print(d);
    vb::SetAppTitle("Velmarinda");
    EXPECT_EQ(contadores.paginas, 2);
    ASSERT_EQ(pages(factura), 2);
    const QString first = pageText(factura, 1), second = pageText(factura, 2);
    EXPECT_TRUE(first.contains("Orta, S.L."));
    EXPECT_TRUE(first.contains("> > > CONTINUA > > >"));
    EXPECT_TRUE(first.contains("TORN039"));
    EXPECT_FALSE(first.contains("TORN040"));
    EXPECT_TRUE(second.contains("Orta, S.L."));
    EXPECT_TRUE(second.contains("TORN045"));
    EXPECT_TRUE(second.contains("Instalación do equipo, partida 6"));
    EXPECT_TRUE(second.contains("163.35 €"));
    EXPECT_TRUE(second.contains("Nº Cuenta: MAREESMMXXX ES91 2100 0000 11 0200000000"));
    EXPECT_TRUE(second.contains("Sistemas Orta S.L le comunica"));

    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, recibo});
    printer.SetScaleMode(4);
    receipts::ReciboFactura(printer, d);
    printer.EndDoc();
    ASSERT_EQ(pages(recibo), 1);
    const QString r = pageText(recibo, 1);
    for (const char* text : {"RECIBO Nº:", "PORTELAS", "163.35", "21/12/2026", "DOMICILIACIÓN BANCARIA:",
                             "BANCO MAREIRO / ES91 2100 0000 11 0200000000", "15001 PORTELAS-VALDEFERRO"})
        EXPECT_TRUE(r.contains(QString::fromUtf8(text))) << text << "\n" << qPrintable(r);
}

} // namespace
} // namespace vel::testing
