// The delivery note window's print procedures on a shop's database: the note
// consulted on screen goes to paper as it stands there, and its receipt
// ("Enviar Albarán") is drawn from the same controls.
//
// The receipt's button is never enabled by the window (each mode turns it off,
// and so does Cancelar), so a click can't reach it: these tests consult a note
// with real clicks and then run the button's event procedure, which is what
// the button would run.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "pdf_files.h"
#include "print_fixture.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include "sales/formalbaranventa.h"
#include "sales/receipts.h"
#include "support/message_boxes.h"
#include "support/widgets.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace vel::testing {
namespace {

using veltest::settle;

// Pedro, who banks with the Banco del Norte, and the note 00012 of 2026 with
// three lines.
const char* kPedro =
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'%1', '%2', %3, %4, 28, 0, '30', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', '%5', '01/02/2024', '', '%6')";

class DeliveryNoteWindowPrint : public ::testing::Test {
protected:
    QTemporaryDir dir;
    veltest::RecordedBoxes boxes;
    vb::PrintRecorder recorder;
    PrintDialogAnswers dialogs;
    std::optional<vb::InstalledEnvironment> env;
    std::unique_ptr<FormAlbaranVenta> w;

    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        env.emplace(vb::Environment{.messageBoxes = &boxes,
                                    .dialogs = &dialogs,
                                    .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                                    .programFolder = dir.path(),
                                    .printers = &recorder});
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        schema::CreateEmptyDatabase(path);
        BaseDatos = Database::OpenDatabase(path).release();
        exec("INSERT INTO bancos VALUES ('0049', 'BANCO DEL NORTE')");

        exec("INSERT INTO series VALUES ('VN', 2026, 1, 'AV', 12)");
        nota(12);
        linea(12, "TORN-6", "TORNILLO 6MM", "100", "0.12", "0");
        linea(12, "MARTILLO", "MARTILLO DE CARPINTERO", "2", "10", "10");
        linea(12, "CINTA-50", "CINTA METRICA 5M", "3", "6.198", "5");
    }
    void TearDown() override {
        w.reset();
        delete BaseDatos;
        BaseDatos = nullptr;
        env.reset();
    }
    static void exec(const QString& sql) { BaseDatos->Execute(sql); }
    void cliente(const QString& banco = "0049", const QString& sucursal = "0012", const QString& dc = "12",
                 const QString& cuenta = "1234567890", const QString& fiscal = "FERRETERIA PEDRO SL",
                 const QString& iban = "ES12") {
        exec(QString::fromUtf8(kPedro).arg(banco, sucursal, dc, cuenta, fiscal, iban));
    }
    static void nota(int numero, const QString& formaPago = "30") {
        exec(QStringLiteral("INSERT INTO cabecera_albaran_venta VALUES (01, 'AV', 2026, %1, '02/11/2026', 00, '', "
                            "01, '', '', 'P', '12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', "
                            "'MADRID', 'ESPAÑOLA', '%2', 1, '0049', '0012', '12', '1234567890', %1, '', '', '', '', "
                            "'', '', 0, 0, '0', '0', '0', '', 21, 0, 0, '0', 'ES12')")
                 .arg(numero)
                 .arg(formaPago));
    }
    static void linea(int numero, const QString& ref, const QString& desc, const QString& unidades,
                      const QString& precio, const QString& dto) {
        exec(QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (01, 'AV', 2026, %1, '', '%2', '%3', %4, '%5', "
                            "'', '', '0', %6, 0, '0', '1', 0, 0, '00', '00', '00', '00', %1, 01, '1')")
                 .arg(numero)
                 .arg(ref, desc, unidades, precio, dto));
    }
    void config(const QString& tag) {
        QFile f(dir.filePath(QStringLiteral("config.ini")));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write((tag + "\r\n").toLatin1());
    }
    template <class T> T* control(const char* name) { return veltest::control<T>(w.get(), name); }
    void click(const char* name) {
        QTest::mouseClick(control<QPushButton>(name), Qt::LeftButton);
        settle();
    }
    // The window opened and the customer's first note consulted, by clicks.
    void consultar() {
        w = std::make_unique<FormAlbaranVenta>();
        w->show();
        w->activateWindow();
        w->Load();
        settle();
        click("Commandconsultar");
        ASSERT_EQ(control<vb::ComboBox>("Combonumerofactura")->Text(), "00012");
    }
    void ok() { dialogs.answers.push_back(vb::PrinterChoice{.printerName = "Grabadora"}); }
    void enviar() {
        vb::RunEvent([this] { w->CommandEnviar_Click(); });
        settle();
    }
    QStringList lines() const { return recorder.last().lines(); }
};

TEST_F(DeliveryNoteWindowPrint, TheReceiptButtonIsNeverEnabledSoAClickPrintsNothing) {
    cliente();
    consultar();
    auto* enviarBoton = control<QPushButton>("CommandEnviar");
    EXPECT_FALSE(enviarBoton->isEnabled());
    ok();
    QTest::mouseClick(enviarBoton, Qt::LeftButton);
    settle();
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_EQ(dialogs.answers.size(), 1u); // no dialog was shown
}

TEST_F(DeliveryNoteWindowPrint, TheReceiptOfTheNoteOnScreenHasItsNineteenLines) {
    cliente();
    consultar();
    const QString total = control<vb::Label>("Labeltotalfactura")->text();
    const QString vence = control<vb::ComboBox>("Comborecibosfactura")->Text();
    ASSERT_EQ(total, "57.67");
    ASSERT_EQ(vence, "28/12/2026");
    ok();
    enviar();
    ASSERT_EQ(recorder.jobs.size(), 1u);
    const QString regla = vb::Space(13) + QString(59, QChar(0x2014));
    const QStringList expected = {
        regla,
        "            | RECIBO Nº: | LOCALIDAD DE EXPEDICIÓN:   | IMPORTE:        |",
        "            |    00012   |  PORTELAS                  |    57.67      |",
        regla,
        "            | FECHA DE EXPEDICIÓN:       | VENCIMIENTO:                 |",
        "            |            02/11/2026      |        28/12/2026            |",
        regla,
        "",
        "",
        regla,
        "            | DOMICILIACIÓN BANCARIA:                                   |",
        "            |  BANCO DEL NORTE / ES12 0049 0012 12 1234567890                        |",
        regla,
        regla,
        "            |   FERRETERIA PEDRO                                        |",
        "            |   FERRETERIA PEDRO SL                                     |",
        "            |   CALLE MAYOR 1                                           |",
        "            |   28001 MADRID-MADRID                                     |",
        regla};
    EXPECT_EQ(lines(), expected);
    // The account is not cut: its bar stands 13 columns right of the box's.
    EXPECT_EQ(lines()[11].lastIndexOf('|') - lines()[10].lastIndexOf('|'), 13);
    // Every line in "Courier New" 12, one page.
    for (const auto& e : recorder.last().prints()) EXPECT_EQ(e.font, (vb::PrintFont{"Courier New", 12, false, false}));
    EXPECT_EQ(recorder.last().pages(), 1);
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join('\n').toStdString();
}

TEST_F(DeliveryNoteWindowPrint, TheRulesAreEmDashesCharacter151) {
    cliente();
    consultar();
    ok();
    enviar();
    ASSERT_EQ(lines().size(), 19);
    for (int i : {0, 3, 6, 9, 12, 13, 18}) {
        EXPECT_EQ(lines()[i], vb::Space(13) + receipts::Raya().repeated(59)) << "line " << i + 1;
        EXPECT_EQ(lines()[i].right(1), QString(QChar(0x2014)));
    }
}

// Line 3's last bar follows the amount; line 12's follows the account.
TEST_F(DeliveryNoteWindowPrint, TheAmountsBarMovesWithTheFigure) {
    cliente();
    nota(13);
    linea(13, "GRUPO-1", "GRUPO ELECTROGENO", "1", "123456.789", "0");
    consultar();
    ok();
    enviar();
    const int corto = int(lines()[2].lastIndexOf('|'));
    auto* numeros = control<vb::ComboBox>("Combonumerofactura");
    numeros->SetListIndex(numeros->findText("00013"));
    settle();
    ASSERT_EQ(control<vb::Label>("Labeltotalfactura")->text(), "149382.72");
    ok();
    enviar();
    EXPECT_EQ(lines()[2], "            |    00013   |  PORTELAS                  |    149382.72      |");
    EXPECT_EQ(lines()[2].lastIndexOf('|') - corto, 4); // "57.67" to "149382.72"
}

// A note paid at 30, 60 and 90 days: one receipt, for the due date chosen, with
// the whole note's amount.
TEST_F(DeliveryNoteWindowPrint, OneReceiptForTheChosenDueDateWithTheWholeAmount) {
    exec("DELETE FROM cabecera_albaran_venta");
    nota(12, "369");
    cliente();
    consultar();
    auto* recibos = control<vb::ComboBox>("Comborecibosfactura");
    ASSERT_EQ(recibos->ListCount(), 3);
    EXPECT_EQ(recibos->List(0), "28/12/2026");
    EXPECT_EQ(recibos->List(1), "28/01/2027");
    recibos->SetListIndex(1);
    settle();
    ok();
    enviar();
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(lines().size(), 19);
    EXPECT_EQ(lines()[2], "            |    00012   |  PORTELAS                  |    57.67      |");
    EXPECT_EQ(lines()[5], "            |            02/11/2026      |        28/01/2027            |");
}

TEST_F(DeliveryNoteWindowPrint, WithNoBankAccountTheBankLineKeepsItsSeparators) {
    cliente("", "", "0", "0", "FERRETERIA PEDRO SL", "");
    consultar();
    ok();
    enviar();
    // No bank name, no IBAN, no bank, no branch: the separators and their
    // blanks. The control digits and the account are numbers kept as 0, which
    // the customer's tab shows through their masks "00" and "0000000000".
    EXPECT_EQ(control<QLabel>("Labelbanco")->text(), "");
    EXPECT_EQ(lines()[11], "            |   /    00 0000000000                        |");
}

TEST_F(DeliveryNoteWindowPrint, ALongFiscalNameIsCutAtTheRightBar) {
    cliente("0049", "0012", "12", "1234567890", "SUMINISTROS Y FERRETERIA INDUSTRIAL PEDRO GARCIA LOPEZ Y HERMANOS SL");
    consultar();
    ok();
    enviar();
    EXPECT_EQ(lines()[15], "            |   SUMINISTROS Y FERRETERIA INDUSTRIAL PEDRO GARCIA LOPEZ Y|");
    EXPECT_EQ(lines()[15].size(), 73);
}

TEST_F(DeliveryNoteWindowPrint, ThePlaceOfIssueIsPortelasUnderOrta) {
    config("ORTA");
    cliente();
    consultar();
    ASSERT_EQ(w->ClientePrograma, "ORTA");
    ok();
    enviar();
    EXPECT_TRUE(lines()[2].contains("|  PORTELAS ")) << lines()[2].toStdString();
    EXPECT_EQ(lines().size(), 19); // no letterhead, no notice
}

TEST_F(DeliveryNoteWindowPrint, ACancelledDialogPrintsNoReceipt) {
    cliente();
    consultar();
    dialogs.answers.push_back(std::nullopt);
    enviar();
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_TRUE(boxes.shown.isEmpty());
}

// The lines in "Courier New" 12 of the last document recorded, without their
// trailing blanks: what must come back from a PDF, column for column.
QStringList lineasDeCuerpo(const vb::PrintRecorder& recorder) {
    QStringList out;
    for (const auto& e : recorder.last().prints())
        if (e.font == vb::PrintFont{"Courier New", 12, false, false} && !e.text.trimmed().isEmpty())
            out << vb::RTrim(e.text);
    return out;
}

// The note of 41 lines on screen, printed from the real window to PDF files by
// the print dialog's "print to file": two A4 pages with the lines the
// recording printer got, and the receipt on one. VEL_KEEP_PDF names a folder
// to keep the files in, to look at them.
TEST_F(DeliveryNoteWindowPrint, TheNoteAndItsReceiptToPdfFiles) {
    cliente();
    for (int i = 4; i <= 41; ++i)
        linea(12, QStringLiteral("TORN-%1").arg(i), "TORNILLO DE 6 MM", QString::number(i), "0.5", "0");
    consultar();
    ok();
    click("CommandImprimir");
    const QStringList esperadas = lineasDeCuerpo(recorder);
    ASSERT_GT(esperadas.size(), 41);

    vb::SetPrintEnvironment(nullptr);
    const QString nota = dir.filePath("albaran.pdf");
    const QString recibo = dir.filePath("recibo.pdf");
    dialogs.answers.push_back(vb::PrinterChoice{.outputFile = nota});
    click("CommandImprimir");
    dialogs.answers.push_back(vb::PrinterChoice{.outputFile = recibo});
    enviar();
    ASSERT_TRUE(QFile::exists(nota));
    ASSERT_TRUE(QFile::exists(recibo));
    EXPECT_EQ(pdf::info(nota, "Pages"), "2");
    EXPECT_EQ(pdf::info(recibo, "Pages"), "1");
    EXPECT_TRUE(pdf::info(nota, "Page size").contains("(A4)")) << qPrintable(pdf::info(nota, "Page size"));
    pdf::expectInOrder(esperadas, pdf::lines(nota));
    const QStringList texto = pdf::lines(recibo);
    EXPECT_TRUE(std::any_of(texto.begin(), texto.end(), [](const QString& l) {
        return l.contains(QString(59, QChar(0x2014)));
    })) << "no rule of 59 em dashes in the receipt";
    const QString keep = qEnvironmentVariable("VEL_KEEP_PDF");
    if (!keep.isEmpty())
        for (const QString& f : {nota, recibo}) QFile::copy(f, keep + "/" + QFileInfo(f).fileName());
}

// The same note through a real CUPS queue, the cups-pdf virtual printer chosen
// in the print dialog: the PDF it writes has the lines of the screen. Skipped,
// saying why, where the queue can't be had.
TEST_F(DeliveryNoteWindowPrint, TheNoteThroughARealCupsQueue) {
    const pdf::Ran setup = pdf::run("bash", {QStringLiteral(VEL_TEST_DATA "/../scripts/cups_pdf_queue.sh")});
    if (setup.exitCode != 0) GTEST_SKIP() << "no CUPS queue: " << qPrintable(setup.err.trimmed());
    cliente();
    for (int i = 4; i <= 41; ++i)
        linea(12, QStringLiteral("TORN-%1").arg(i), "TORNILLO DE 6 MM", QString::number(i), "0.5", "0");
    consultar();
    ok();
    click("CommandImprimir");
    const QStringList esperadas = lineasDeCuerpo(recorder);

    vb::SetPrintEnvironment(nullptr);
    const QString titulo = vb::AppTitle();
    // The job is named by the application's title: a name of its own finds
    // the file cups-pdf writes for it.
    const QString stem = QStringLiteral("velmarinda-albaran-%1-%2")
                             .arg(QCoreApplication::applicationPid())
                             .arg(QDateTime::currentMSecsSinceEpoch());
    vb::SetAppTitle(stem);
    const QDateTime since = QDateTime::currentDateTime().addSecs(-2);
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = "VelmarindaPDF"});
    click("CommandImprimir");
    vb::SetAppTitle(titulo);
    const QString file = pdf::waitForCupsPdf(stem, since);
    ASSERT_FALSE(file.isEmpty()) << "cups-pdf wrote no file for " << qPrintable(stem) << " in "
                                 << qPrintable(pdf::cupsPdfFolder());
    EXPECT_EQ(pdf::info(file, "Pages"), "2");
    pdf::expectInOrder(esperadas, pdf::lines(file));
    if (!HasFailure()) QFile::remove(file); // kept to be looked at when it fails
}

} // namespace
} // namespace vel::testing
