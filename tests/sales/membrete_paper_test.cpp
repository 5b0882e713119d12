// A shop of its own tag (NOVA) with a membrete.ini: its invoice and the
// invoice's receipt on PDF files, read back with pdftotext. The letterhead and
// the notice are on the invoice's page, the issuer on the receipt.
// With VEL_KEEP_PDF set to a folder, the files are left there to be looked at.
#include "invoice_fixture.h"
#include "pdf_files.h"
#include "runtime/app.h"
#include "sales/receipts.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vel::testing {
namespace {

class MembretePaper : public InvoicePrintTest {
protected:
    QTemporaryDir programa, tmp;
    void SetUp() override {
        vb::SetAppPath(programa.path());
        QFile f(programa.filePath("membrete.ini"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[membrete]\r\n"
                "nombre    = Ferretería Nova, S.L.\r\n"
                "nif       = B-12.345.678\r\n"
                "domicilio = Rúa Nova 5, bajo\r\n"
                "poblacion = 15001 Portelas (Valdeferro)\r\n"
                "telefono  = 900 00 00 09\r\n"
                "correo    = info@ferreterianova.es\r\n"
                "registro  = Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000\r\n");
    }
    void TearDown() override { vb::SetPrintEnvironment(nullptr); }
    QString folder() const {
        const QString keep = qEnvironmentVariable("VEL_KEEP_PDF");
        if (!keep.isEmpty()) QDir().mkpath(keep);
        return keep.isEmpty() ? tmp.path() : keep;
    }
    static QString text(const QString& pdf) {
        const pdf::Ran r = pdf::run("pdftotext", {"-layout", pdf, "-"});
        EXPECT_EQ(r.exitCode, 0) << qPrintable(r.err);
        return r.out;
    }
};

TEST_F(MembretePaper, TheInvoiceAndItsReceiptNameTheShop) {
    const auto d = Factura(rejilla, 3, "NOVA");
    vb::SetPrintEnvironment(nullptr);
    const QString factura = folder() + "/factura_membrete.pdf";
    const QString recibo = folder() + "/recibo_membrete.pdf";
    QFile::remove(factura);
    QFile::remove(recibo);

    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, factura});
    print(d);
    const QString f = text(factura);
    for (const char* s : {"Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000", "Ferretería Nova, S.L.",
                          "NIF: B-12.345.678", "Rúa Nova 5, bajo", "Tlf. 900 00 00 09", "info@ferreterianova.es",
                          "FERRETERIA O CRUCEIRO", "Reglamento (UE) 2016/679", "Ley Orgánica 3/2018"})
        EXPECT_TRUE(f.contains(QString::fromUtf8(s))) << s << "\n" << qPrintable(f);
    EXPECT_FALSE(f.contains("15/99"));

    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, recibo});
    printer.SetScaleMode(4);
    receipts::ReciboFactura(printer, d);
    printer.EndDoc();
    const QString r = text(recibo);
    for (const char* s : {"RECIBO Nº:", "PORTELAS", "EMISOR: Ferretería Nova, S.L.", "NIF: B-12.345.678",
                          "15001 Portelas (Valdeferro)"})
        EXPECT_TRUE(r.contains(QString::fromUtf8(s))) << s << "\n" << qPrintable(r);
}

} // namespace
} // namespace vel::testing
