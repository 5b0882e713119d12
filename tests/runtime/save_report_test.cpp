// The save report of the invoice, delivery-note and supplier-card windows: a
// failing statement of the save shows a box, is written to the report file
// beside the program, and the save goes on.
#include "support/print_to.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/save_report.h"
#include "support/message_boxes.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>

namespace {

const vb::RuntimeError kApostrophe(3134, QString::fromUtf8("Error de sintaxis en la instrucción INSERT INTO."));

vb::DocumentReportValues aCustomerDocument() {
    return {.ejercicio = "2026",
            .numero = "00017",
            .nif = "B12345678",
            .codigo = "430",
            .nombreFiscal = "O'DONNELL SL",
            .nombreComercial = "FERRETERIA O'DONNELL",
            .apellidos = "GARCIA PEREZ",
            .nombre = "JUAN"};
}

class SaveReport : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        env_.emplace(vb::Environment{.messageBoxes = &boxes_,
                                     .clock = QDateTime(QDate(2026, 3, 9), QTime(17, 5, 9)),
                                     .programFolder = dir_.path()});
    }
    void TearDown() override { env_.reset(); }
    QString read(const QString& name) const {
        QFile f(dir_.filePath(name));
        if (!f.open(QIODevice::ReadOnly)) return QString();
        return QString::fromUtf8(f.readAll());
    }
    QTemporaryDir dir_;
    veltest::RecordedBoxes boxes_;
    std::optional<vb::InstalledEnvironment> env_;
};

const char* const kInvoiceReport =
    "\n"
    "Fecha: 09/03/2026\n"
    " Hora: 17:05:09\n"
    "\n"
    "Error: 3134\n"
    " Tipo: Error de sintaxis en la instrucción INSERT INTO.\n"
    "\n"
    " Operación actual: N\n"
    "        Ejercicio: 2026\n"
    "   Número factura: 00017\n"
    "              NIF: B12345678\n"
    "           CODIGO: 430\n"
    "    NOMBRE FISCAL: O'DONNELL SL\n"
    " NOMBRE COMERCIAL: FERRETERIA O'DONNELL\n"
    "        APELLIDOS: GARCIA PEREZ\n"
    "           NOMBRE: JUAN\n"
    "\n"
    "Estado de las variables: \n"
    "\n"
    "         F: 3\n"
    "    buscar: 0\n"
    "\n"
    "\n"
    "********************************************************************************\n";

} // namespace

TEST_F(SaveReport, ShowsTheErrorInABoxTitledError) {
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", vb::InvoiceReportRecord(aCustomerDocument()), "3", "0");
    ASSERT_EQ(boxes_.boxes.size(), 1u);
    EXPECT_EQ(boxes_.boxes[0].title, QStringLiteral("ERROR"));
    EXPECT_EQ(boxes_.boxes[0].style, 48);
    EXPECT_EQ(boxes_.boxes[0].text,
              QString::fromUtf8("Se ha detectado el siguiente error: \n"
                                "\n"
                                "  Error nº: 3134\n"
                                "  Causa  : Error de sintaxis en la instrucción INSERT INTO.\n"
                                "\n"
                                "Es posible que se perdiesen datos o no se guardasen correctamente, \n"
                                "pero el programa continuará ejecutándose ignorando dicho error. \n"
                                "Se generará un registro de errores para su posterior tratamiento. "));
}

TEST_F(SaveReport, AnInvoiceErrorIsWrittenToErrores) {
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", vb::InvoiceReportRecord(aCustomerDocument()), "3", "0");
    EXPECT_EQ(read("errores.txt"), QString::fromUtf8(kInvoiceReport));
    EXPECT_FALSE(QFile::exists(dir_.filePath("erralbar.txt")));
}

TEST_F(SaveReport, ADeliveryNoteErrorIsWrittenToErralbar) {
    vb::ShowSaveReport(kApostrophe, vb::kDeliveryNoteReportFile, "M", vb::DeliveryNoteReportRecord(aCustomerDocument()),
                       "1", "Falso");
    const QString report = read("erralbar.txt");
    EXPECT_TRUE(report.contains(QString::fromUtf8(" Operación actual: M\n        Ejercicio: 2026\n   Número albaran: 00017\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("    buscar: Falso\n")));
    EXPECT_FALSE(QFile::exists(dir_.filePath("errores.txt")));
}

TEST_F(SaveReport, EachErrorIsAppendedAndTheFileGrows) {
    // The same name fails twice in one save: two boxes, two reports.
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", vb::InvoiceReportRecord(aCustomerDocument()), "3", "0");
    vb::clock::pin(QDateTime(QDate(2026, 3, 10), QTime(9, 0, 0)));
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", vb::InvoiceReportRecord(aCustomerDocument()), "3", "0");
    const QString report = read("errores.txt");
    EXPECT_TRUE(report.startsWith(QString::fromUtf8(kInvoiceReport)));
    EXPECT_TRUE(report.contains(QStringLiteral("Fecha: 10/03/2026\n Hora: 09:00:00\n")));
    EXPECT_EQ(report.count(QString(80, u'*')), 2);
    EXPECT_EQ(boxes_.boxes.size(), 2u);
}

TEST_F(SaveReport, AnExistingReportIsKept) {
    QFile old(dir_.filePath("errores.txt"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("informe anterior\n");
    old.close();
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", vb::InvoiceReportRecord(aCustomerDocument()), "3", "0");
    EXPECT_EQ(read("errores.txt"), QStringLiteral("informe anterior\n") + QString::fromUtf8(kInvoiceReport));
}

TEST_F(SaveReport, TheSupplierCardReportsTheEntryAndTheSupplier) {
    const vb::SaveReportRecord record = vb::SupplierCardReportRecord({.ejercicio = "2026",
                                                                      .tienda = "1",
                                                                      .serie = "FC",
                                                                      .documento = "F-2231",
                                                                      .numeroApunte = "4",
                                                                      .fecha = "09/03/2026",
                                                                      .formaPago = "30/60",
                                                                      .nif = "A87654321",
                                                                      .codigo = "400",
                                                                      .nombreFiscal = "SUMINISTROS SA",
                                                                      .nombreComercial = "SUMINISTROS",
                                                                      .apellidos = "",
                                                                      .nombre = ""});
    vb::ShowSaveReport(kApostrophe, vb::kInvoiceReportFile, "N", record, "0", "1", vb::SaveReportLayout::SupplierCard);
    EXPECT_EQ(read("errores.txt"),
              QString::fromUtf8("\n"
                                "Fecha: 09/03/2026\n"
                                " Hora: 17:05:09\n"
                                "\n"
                                "Error: 3134\n"
                                " Tipo: Error de sintaxis en la instrucción INSERT INTO.\n"
                                "\n"
                                " Operación actual: N\n"
                                "        Ejercicio: 2026\n"
                                "           Tienda: 1\n"
                                "            Serie: FC\n"
                                "        Documento: F-2231\n"
                                "    Número apunte: 4\n"
                                "            Fecha: 09/03/2026\n"
                                "       Forma Pago: 30/60\n"
                                "              NIF: A87654321\n"
                                "           CODIGO: 400\n"
                                "    NOMBRE FISCAL: SUMINISTROS SA\n"
                                " NOMBRE COMERCIAL: SUMINISTROS\n"
                                "        APELLIDOS: \n"
                                "           NOMBRE: \n"
                                "\n"
                                "Estado de las variables: \n"
                                "         F: 0\n"
                                "    buscar: 1\n"
                                "\n"
                                "\n"
                                "********************************************************************************\n"
                                "\n"));
}

TEST_F(SaveReport, AllRecordLabelsLineUpOnTheColon) {
    for (const auto& record : {vb::InvoiceReportRecord({}), vb::DeliveryNoteReportRecord({}), vb::SupplierCardReportRecord({})})
        for (const auto& line : record) {
            EXPECT_EQ(line.label.size(), 19) << line.label.toStdString();
            EXPECT_TRUE(line.label.endsWith(QStringLiteral(": "))) << line.label.toStdString();
        }
    EXPECT_EQ(vb::InvoiceReportRecord({}).size(), 8u);
    EXPECT_EQ(vb::SupplierCardReportRecord({}).size(), 13u);
}

TEST_F(SaveReport, TheTrapReportsAndTheSaveGoesOn) {
    // Header, a line that fails, the next line, the counter: all but the failing
    // statement run, and the report shows the line counter of that moment.
    int F = 0;
    bool buscar = false;
    std::vector<QString> written;
    vb::SaveReportTrap trap(vb::kDeliveryNoteReportFile, vb::SaveReportLayout::Document, [&] {
        return vb::SaveReportState{"N", vb::DeliveryNoteReportRecord(aCustomerDocument()), QString::number(F),
                                   buscar ? "Verdadero" : "Falso"};
    });
    for (F = 1; F <= 3; ++F)
        trap([&] {
            if (F == 2) vb::Raise(kApostrophe.Number, kApostrophe.Description);
            written.push_back(QStringLiteral("linea %1").arg(F));
        });
    EXPECT_TRUE(trap([&] { written.push_back(QStringLiteral("cabecera")); }));
    EXPECT_EQ(written, (std::vector<QString>{"linea 1", "linea 3", "cabecera"}));
    EXPECT_EQ(trap.reports(), 1);
    ASSERT_EQ(boxes_.boxes.size(), 1u);
    const QString report = read("erralbar.txt");
    EXPECT_TRUE(report.contains(QStringLiteral("         F: 2\n    buscar: Falso\n")));
    EXPECT_TRUE(report.contains(QString::fromUtf8("   Número albaran: 00017\n")));
}

TEST_F(SaveReport, AReportThatCannotBeWrittenIsNotTrappedFurther) {
    vb::SetAppPath(dir_.filePath("no_existe"));
    vb::SaveReportTrap trap(vb::kInvoiceReportFile, vb::SaveReportLayout::Document, [] { return vb::SaveReportState{}; });
    try {
        trap([] { vb::Raise(3022, "Clave duplicada"); });
        FAIL() << "the failed report went unnoticed";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 76);
    }
    EXPECT_EQ(boxes_.boxes.size(), 1u); // the box came first
}
