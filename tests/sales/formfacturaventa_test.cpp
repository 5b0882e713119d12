// The invoice window on a shop's database: the controls it has and those of the
// delivery note it lacks, and the moment the invoice goes to the print dialog
// while it is saved: numbered, named, and not yet stored.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include "sales/formfacturaventa.h"
#include "support/message_boxes.h"
#include "support/widgets.h"

#include <QCheckBox>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The invoice question is answered Yes, the receipts question No.
int YesToTheInvoiceOnly(const veltest::ShownBox& box) {
    if ((box.style & 7) != vb::vbYesNo) return vb::vbOK;
    return box.text.contains(QStringLiteral("factura")) ? vb::vbYes : vb::vbNo;
}

// The print dialog: what the tables and App.Title held when it was shown; the
// machine has no printer to offer.
class Dialogs : public vb::DialogService {
public:
    int shownTimes = 0;
    QString titleWhileShown;
    QString counterWhileShown;
    int headersWhileShown = -1;
    int linesWhileShown = -1;
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
        ++shownTimes;
        titleWhileShown = vb::AppTitle();
        auto series = vel::BaseDatos->OpenRecordset(QStringLiteral("SELECT contador_series FROM series"));
        counterWhileShown = series->Eof() ? QString() : series->Fields(QStringLiteral("contador_series")).str();
        headersWhileShown = count(QStringLiteral("cabecera_factura_venta"));
        linesWhileShown = count(QStringLiteral("detalle_factura_venta"));
        return vb::PrinterChoice{}; // neither a printer nor a file
    }
    static int count(const QString& table) {
        auto rs = vel::BaseDatos->OpenRecordset("SELECT * FROM " + table);
        int n = 0;
        for (; !rs->Eof(); rs->MoveNext()) ++n;
        return n;
    }
};

const char* kPedro =
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')";

class InvoiceWindow : public ::testing::Test {
protected:
    QTemporaryDir dir;
    veltest::RecordedBoxes boxes{YesToTheInvoiceOnly};
    Dialogs dialogs;
    std::unique_ptr<vb::InstalledEnvironment> env;
    std::unique_ptr<vel::FormFacturaVenta> w;

    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        env = std::make_unique<vb::InstalledEnvironment>(
            vb::Environment{.messageBoxes = &boxes,
                            .dialogs = &dialogs,
                            .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                            .programFolder = dir.path(),
                            .onEnd = [] {}});
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(path);
        vel::BaseDatos = vel::Database::OpenDatabase(path).release();
        vel::BaseDatos->Execute(QString::fromUtf8(kPedro));
        // The window reads config.ini with no trap: a shop always has one.
        QFile config(dir.filePath(QStringLiteral("config.ini")));
        ASSERT_TRUE(config.open(QIODevice::WriteOnly));
        config.write("FERROBANDA,CENTRAL\r\n");
        config.close();
        w = std::make_unique<vel::FormFacturaVenta>();
        w->show();
        w->Load();
    }
    void TearDown() override {
        w.reset();
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        env.reset();
    }
    template <class T> T* control(const char* name) { return veltest::control<T>(w.get(), name); }
};

TEST_F(InvoiceWindow, HasItsOwnControlsAndNoneOfTheDeliveryNotesOwn) {
    EXPECT_EQ(w->objectName(), "FormFacturaVenta");
    const std::pair<const char*, const char*> buttons[] = {{"Commandfactura", "Impr &Factura"},
                                                           {"Commandrecibos", "Impr &Recibos"},
                                                           {"CommandImportar", "&Importar"},
                                                           {"CommandDescripcionLarga", "+"}};
    for (const auto& [name, caption] : buttons) {
        ASSERT_NE(control<QPushButton>(name), nullptr) << name;
        EXPECT_EQ(control<QPushButton>(name)->text(), QString::fromUtf8(caption));
    }
    ASSERT_NE(control<QCheckBox>("CheckCuenta"), nullptr);
    EXPECT_EQ(control<QCheckBox>("CheckCuenta")->text(), "Impr. NCB Empresa");
    ASSERT_NE(control<QPlainTextEdit>("TextDescripcionLarga"), nullptr);
    EXPECT_FALSE(vb::Visible(control<QWidget>("TextDescripcionLarga")));
    EXPECT_NE(control<QWidget>("ImageLogo"), nullptr);
    EXPECT_NE(control<QObject>("CommonDialog1"), nullptr);
    for (const char* name : {"LabelEstado", "ComboProforma", "CheckProforma", "CommandEnviar", "CommandImprimir"})
        EXPECT_EQ(w->findChild<QObject*>(QString::fromLatin1(name)), nullptr) << name;
    EXPECT_EQ(control<QLabel>("Label55")->text(), "Factura");
    EXPECT_EQ(control<QLabel>("Titulototalfactura")->text(), "Total Factura");
}

// The invoice goes to the print dialog from the question before its save
// begins: the number shown is the one it will take, but nothing of it is
// written yet, not even the counter, so no other station waits on the save
// while the dialog is open. The job bears its name
// while it prints, and App.Title comes back after. With no printer nothing
// is printed and the save goes on.
TEST_F(InvoiceWindow, IsNumberedAndNamedButNotStoredWhenItGoesToPrint) {
    vb::SetAppTitle(QStringLiteral("velmarinda"));
    w->Commandnuevo_Click();
    w->Lineas()->ReproducirLinea(QStringLiteral("TORN-6"), QStringLiteral("TORNILLO"), QStringLiteral("10"),
                                 QStringLiteral("1"), QString());
    w->Commandaceptar_Click();

    EXPECT_EQ(dialogs.shownTimes, 1);
    EXPECT_EQ(dialogs.titleWhileShown, "00001 20261121 - C001");
    EXPECT_EQ(dialogs.counterWhileShown, "");
    EXPECT_EQ(dialogs.headersWhileShown, 0);
    EXPECT_EQ(dialogs.linesWhileShown, 0);
    EXPECT_EQ(vb::AppTitle(), "velmarinda");
    ASSERT_EQ(boxes.shown.size(), 2);
    EXPECT_EQ(boxes.shown[0], "Pregunta|¿Desea imprimir ahora la factura?|36");
    EXPECT_EQ(boxes.shown[1], "Pregunta|¿Desea imprimir ahora los recibos?|36");
    EXPECT_EQ(Dialogs::count(QStringLiteral("cabecera_factura_venta")), 1);
    EXPECT_EQ(Dialogs::count(QStringLiteral("detalle_factura_venta")), 1);
}

// ORTA's monthly fee: the reference takes "yymm" of today and the
// description the name of the month before, December for January.
TEST_F(InvoiceWindow, TheMonthlyLineOfOrtaNamesTheMonthBefore) {
    QFile config(dir.filePath(QStringLiteral("config.ini")));
    ASSERT_TRUE(config.open(QIODevice::WriteOnly));
    config.write("ORTA,NORTE\r\n");
    config.close();
    vel::BaseDatos->Execute(QStringLiteral(
        "INSERT INTO productos VALUES ('01', '01', '01', '09', 'MS', 'CUOTA', '', '', '', '', 0, 121, 0, 0, 0, 0, 0, "
        "0, 0, '', '', 0, 0, '', '', '', '', '', '', '', 1)"));
    w = std::make_unique<vel::FormFacturaVenta>();
    w->show();
    w->Load();
    ASSERT_EQ(w->ClientePrograma, "ORTA");
    const char* meses[12] = {"DICIEMBRE", "ENERO", "FEBRERO", "MARZO",      "ABRIL",   "MAYO",
                             "JUNIO",     "JULIO", "AGOSTO",  "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE"};
    for (int mes = 1; mes <= 12; ++mes) {
        vb::clock::pin(QDateTime(QDate(2027, mes, 10), QTime(10, 0)));
        w->Lineas()->Textreferencia->setText(QStringLiteral("MS"));
        w->Lineas()->Textdescripcion->setText(QString());
        w->Lineas()->BuscarProducto(QStringLiteral("REFERENCIA"));
        EXPECT_EQ(w->Lineas()->Textreferencia->text(), QStringLiteral("MS27%1").arg(mes, 2, 10, QLatin1Char('0')));
        EXPECT_EQ(w->Lineas()->Textdescripcion->text(), QStringLiteral("CUOTA ") + QString::fromLatin1(meses[mes - 1]));
    }
    // Only "MS" exactly takes the month: "ms" stays as typed, whether the
    // catalogue finds it or not.
    w->Lineas()->Textreferencia->setText(QStringLiteral("ms"));
    w->Lineas()->Textdescripcion->setText(QString());
    w->Lineas()->BuscarProducto(QStringLiteral("REFERENCIA"));
    EXPECT_EQ(w->Lineas()->Textreferencia->text(), "ms");
    EXPECT_FALSE(w->Lineas()->Textdescripcion->text().contains(QStringLiteral("NOVIEMBRE")));
}

// A stored ORTA invoice of 45 lines and a long description, consulted and
// printed from its buttons on the real printing path to PDF files: two pages,
// the letterhead on both, the bank line of the ticked account box at the
// foot, and the receipt on a page of its own. With VEL_KEEP_PDF set to a
// folder, the files are left there to be looked at.
class PdfDialogs : public vb::DialogService {
public:
    QString file;
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
        return vb::PrinterChoice{.printerName = {}, .outputFile = file};
    }
};

QString Salida(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitCode() != 0) {
        ADD_FAILURE() << qPrintable(program) << " failed";
        return QString();
    }
    return QString::fromUtf8(p.readAllStandardOutput());
}

TEST_F(InvoiceWindow, PrintsATwoPageOrtaInvoiceAndItsReceiptToPdf) {
    QFile config(dir.filePath(QStringLiteral("config.ini")));
    ASSERT_TRUE(config.open(QIODevice::WriteOnly));
    config.write("ORTA\r\n");
    config.close();
    vel::BaseDatos->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 0, 'FD', 1)"));
    vel::BaseDatos->Execute(QString::fromUtf8(
        "INSERT INTO cabecera_factura_venta VALUES (01, 'VD', 2026, 1, '02/11/2026', 00, '', 01, '', '', '1', "
        "'12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '369', 3, "
        "'0049', '0012', '12', '1234567890', 0, '', '', '', '', '', '', 0, 0, '26', '0', '0', '', 21, 5.2, 0, '0', "
        "'ES12')"));
    for (int i = 1; i <= 45; ++i)
        vel::BaseDatos->Execute(QString::fromUtf8(
            "INSERT INTO detalle_factura_venta VALUES (01, 'VD', 2026, 1, '', 'TORN%1', 'TORNILLO 4X40', 2, '1.5', "
            "'', '', '3', 0, 0, '3', '1', 0, 0, '00', '00', '00', '00', 0, 01, '1', "
            "'Instalación del equipo\r\nSegunda fase de la obra')").arg(i, 3, 10, QLatin1Char('0')));
    PdfDialogs pdf;
    const QString keep = qEnvironmentVariable("VEL_KEEP_PDF");
    const QString folder = keep.isEmpty() ? dir.path() : keep;
    vb::Environment& e = vb::CurrentEnvironment();
    e.dialogs = &pdf;
    e.printers = nullptr;
    w = std::make_unique<vel::FormFacturaVenta>();
    w->show();
    w->Load();
    w->Commandconsultar_Click();
    control<QCheckBox>("CheckCuenta")->setChecked(true);

    pdf.file = folder + "/factura_orta.pdf";
    w->Commandfactura_Click();
    EXPECT_TRUE(Salida("pdfinfo", {pdf.file}).contains(QRegularExpression("Pages:\\s+2\\b")));
    const QString first = Salida("pdftotext", {"-layout", "-f", "1", "-l", "1", pdf.file, "-"});
    const QString second = Salida("pdftotext", {"-layout", "-f", "2", "-l", "2", pdf.file, "-"});
    EXPECT_TRUE(first.contains("Orta, S.L."));
    EXPECT_TRUE(first.contains("> > > CONTINUA > > >"));
    EXPECT_TRUE(first.contains("TORN001"));
    EXPECT_TRUE(second.contains("Orta, S.L."));
    EXPECT_TRUE(second.contains("TORN045"));
    EXPECT_TRUE(second.contains(QString::fromUtf8("Segunda fase de la obra")));
    EXPECT_TRUE(second.contains(QString::fromUtf8("Nº Cuenta: MAREESMMXXX ES91 2100 0000 11 0200000000")));

    pdf.file = folder + "/recibo_orta.pdf";
    w->Commandrecibos_Click();
    EXPECT_TRUE(Salida("pdfinfo", {pdf.file}).contains(QRegularExpression("Pages:\\s+1\\b")));
    const QString recibo = Salida("pdftotext", {"-layout", pdf.file, "-"});
    for (const char* text : {"RECIBO Nº:", "PORTELAS", "00001", "28/12/2026", "FERRETERIA PEDRO SL"})
        EXPECT_TRUE(recibo.contains(QString::fromUtf8(text))) << text << "\n" << qPrintable(recibo);
}

} // namespace
