// A delivery note printed to a PDF file through the print dialog, then a sale
// charged at the counter on a machine with no printer: the ticket, which has no
// dialog, comes out in a new file in impresos/ and the note's PDF is left as it
// was.
#include "pos/counter_fixture.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "sales/formalbaranventa.h"
#include "support/widgets.h"

#include <QCryptographicHash>
#include <QDir>
#include <QPushButton>

namespace {

// The real PDF files of a machine with no printer at all: its default is a new
// file in impresos/.
struct SinImpresora : vb::PrintEnvironment {
    vb::PrintDestination defaultDestination() override { return {vb::PrintDestination::Kind::File, {}, {}}; }
    vb::PageGeometry geometry(const vb::PrintDestination& d, int orientation, vb::Paper paper) override {
        return vb::RealPrintEnvironment().geometry(d, orientation, paper);
    }
    std::unique_ptr<vb::PrinterBackend> open(const vb::PrintDestination& d, const vb::JobSettings& job) override {
        return vb::RealPrintEnvironment().open(d, job);
    }
};

// The print dialog answers "print to file".
struct AArchivo : vb::DialogService {
    QString archivo;
    int mostrados = 0;
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
        ++mostrados;
        return vb::PrinterChoice{.printerName = {}, .outputFile = archivo};
    }
};

QByteArray Huella(const QString& archivo) {
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

class ArchivoDeUnTrabajo : public veltest::Mostrador {
protected:
    SinImpresora sinImpresora;
    AArchivo dialogo;
    std::unique_ptr<vel::FormAlbaranVenta> albaran;

    void SetUp() override {
        Mostrador::SetUp();
        vb::SetPrintEnvironment(&sinImpresora);
        vb::CurrentEnvironment().dialogs = &dialogo;
        Sql("INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', "
            "'CALLE MAYOR 1', 'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, "
            "'', '', 0, '', '', 0, '', '0049', '0012', 12, 1234567890, 28, 0, '30', 1, 5, 0, 1, 1, '1000', 0, 1, "
            "'COM1', 'FERRETERIA PEDRO SL', '01/02/2024', '', 'ES12')");
        Sql("INSERT INTO series VALUES ('VN', 2026, 1, 'AV', 12)");
        Sql("INSERT INTO cabecera_albaran_venta VALUES (01, 'AV', 2026, 12, '02/11/2026', 00, '', 01, '', '', 'P', "
            "'12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '30', 1, "
            "'0049', '0012', '12', '1234567890', 12, '', '', '', '', '', '', 0, 0, '0', '0', '0', '', 21, 0, 0, '0', "
            "'ES12')");
        Sql("INSERT INTO detalle_albaran_venta VALUES (01, 'AV', 2026, 12, '', 'TORN-6', 'TORNILLO 6MM', 100, "
            "'0.12', '', '', '0', 0, 0, '0', '1', 0, 0, '00', '00', '00', '00', 12, 01, '1')");
    }
    void TearDown() override {
        albaran.reset();
        vb::CurrentEnvironment().dialogs = nullptr;
        Mostrador::TearDown();
    }

    // The note 00012 consulted with clicks and printed with its button.
    void ImprimeAlbaran() {
        albaran = std::make_unique<vel::FormAlbaranVenta>();
        albaran->show();
        albaran->activateWindow();
        albaran->Load();
        veltest::settle();
        QTest::mouseClick(veltest::control<QPushButton>(albaran.get(), "Commandconsultar"), Qt::LeftButton);
        veltest::settle();
        ASSERT_EQ(veltest::control<vb::ComboBox>(albaran.get(), "Combonumerofactura")->Text(), "00012");
        QTest::mouseClick(veltest::control<QPushButton>(albaran.get(), "CommandImprimir"), Qt::LeftButton);
        veltest::settle();
        albaran.reset();
    }
};

TEST_F(ArchivoDeUnTrabajo, TheTicketAfterANotePrintedToAFileGoesToANewFileAndLeavesTheNoteAlone) {
    dialogo.archivo = dir.filePath("albaran 00012.pdf");
    ImprimeAlbaran();
    ASSERT_EQ(dialogo.mostrados, 1);
    ASSERT_TRUE(QFileInfo::exists(dialogo.archivo));
    const QByteArray nota = Huella(dialogo.archivo);
    ASSERT_FALSE(nota.isEmpty());

    Abrir();
    Vende("MAR500", "2");
    Teclea("TextEntregado", "50");
    Intro();
    EXPECT_FALSE(terminado);
    EXPECT_EQ(dialogo.mostrados, 1); // the counter shows no dialog

    EXPECT_EQ(Huella(dialogo.archivo), nota) << "the ticket was written over the note's PDF";
    const QStringList tickets = QDir(dir.filePath("impresos")).entryList({"*.pdf"}, QDir::Files);
    ASSERT_EQ(tickets.size(), 1) << qPrintable(tickets.join(", "));
    const QString ticket = dir.filePath("impresos/" + tickets[0]);
    EXPECT_NE(Huella(ticket), nota);
    EXPECT_GT(QFileInfo(ticket).size(), 0);
}

// Two sales in the same second: each ticket has a file of its own.
TEST_F(ArchivoDeUnTrabajo, TwoTicketsNeverShareAFile) {
    Abrir();
    Vende("MAR500", "1");
    Teclea("TextEntregado", "20");
    Intro();
    Vende("LEC1", "1");
    Teclea("TextEntregado", "5");
    Intro();
    EXPECT_FALSE(terminado);
    EXPECT_EQ(QDir(dir.filePath("impresos")).entryList({"*.pdf"}, QDir::Files).size(), 2);
}

} // namespace
