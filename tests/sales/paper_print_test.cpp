// A delivery note on real paper: printed to a PDF file, and through a real CUPS
// queue (the virtual PDF printer), then read back with pdftotext. The lines in
// "Courier New" 12 must come back column for column as the recording printer
// saw them.
#include "pdf_files.h"
#include "print_fixture.h"
#include "runtime/app.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vel::testing {
namespace {

using pdf::expectInOrder;
using pdf::run;
using Ran = pdf::Ran;

int pdfPages(const QString& file) { return pdf::info(file, "Pages").toInt(); }

class PaperPrint : public PrintTest {
protected:
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();
    print_layout::Documento note = NotaDeEntrega(rejilla, 41);

    void printNote() {
        print_layout::Contadores c;
        vb::Printer().SetScaleMode(4);
        print_layout::cabeceraalbaran(vb::Printer(), note);
        print_layout::detallealbaran(vb::Printer(), note, c);
        print_layout::piealbaran(vb::Printer(), note);
        vb::Printer().EndDoc();
    }
    // The non-empty lines the recording printer got in "Courier New" 12.
    QStringList expectedLines() {
        printNote();
        QStringList out;
        for (const auto& e : recorder.last().prints())
            if (e.font == vb::PrintFont{"Courier New", 12, false, false} && !e.text.trimmed().isEmpty())
                out << vb::RTrim(e.text);
        return out;
    }
    void TearDown() override {
        vb::SetAppTitle("Velmarinda");
        PrintTest::TearDown();
    }
};

TEST_F(PaperPrint, ANoteOf41LinesToAPdfFileIsTwoA4PagesWithTheSameLines) {
    const QStringList expected = expectedLines();
    QTemporaryDir dir;
    const QString file = dir.filePath("albaran 00027.pdf");
    vb::SetPrintEnvironment(nullptr);
    vb::SetAppTitle("00027 20261121 - 430001");
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, file});
    printNote();
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_EQ(pdfPages(file), 2);
    EXPECT_TRUE(pdf::info(file, "Page size").contains("(A4)")) << qPrintable(pdf::info(file, "Page size"));
    EXPECT_EQ(pdf::info(file, "Title"), "00027 20261121 - 430001");
    expectInOrder(expected, pdf::lines(file));
}

// The receipt's rules are em dashes: they come back as U+2014.
TEST_F(PaperPrint, TheReceiptsDashesReachThePdf) {
    QTemporaryDir dir;
    const QString file = dir.filePath("recibo.pdf");
    vb::SetPrintEnvironment(nullptr);
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, file});
    vb::Printer().SetFontName("Courier New");
    vb::Printer().SetFontSize(12);
    vb::Printer().Print(vb::Space(13) + QString(59, QChar(0x2014)));
    vb::Printer().EndDoc();
    const QStringList l = pdf::lines(file);
    EXPECT_TRUE(std::any_of(l.begin(), l.end(), [](const QString& s) { return s.contains(QString(59, QChar(0x2014))); }));
}

// A job sent to a file with no name (what a system with no printer gets) lands
// in "impresos" beside the program, named by the job and the time; a second
// one in the same second does not overwrite the first.
TEST_F(PaperPrint, AJobToAnUnnamedFileGoesToTheImpresosFolder) {
    QTemporaryDir dir;
    const QString keptPath = vb::AppPath();
    vb::SetAppPath(dir.path());
    vb::SetPrintEnvironment(nullptr);
    vb::SetAppTitle("Ticket 000123");
    for (int i = 0; i < 2; ++i) {
        vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, {}});
        vb::Printer().Print("GRACIAS POR SU VISITA");
        vb::Printer().EndDoc();
    }
    vb::SetAppPath(keptPath);
    const QString first = dir.filePath("impresos/Ticket 000123 20261121-100000.pdf");
    const QString second = dir.filePath("impresos/Ticket 000123 20261121-100000 (2).pdf");
    ASSERT_TRUE(QFile::exists(first));
    ASSERT_TRUE(QFile::exists(second));
    EXPECT_TRUE(pdf::lines(first).join('\n').contains("GRACIAS POR SU VISITA"));
}

// A real job through the CUPS scheduler to its virtual PDF printer. Skipped,
// saying why, where the scheduler or the queue can't be had.
TEST_F(PaperPrint, ANoteThroughARealCupsQueueComesBackLineForLine) {
    const QString queue = "VelmarindaPDF";
    const Ran setup = run("bash", {QStringLiteral(VEL_TEST_DATA "/../scripts/cups_pdf_queue.sh")});
    if (setup.exitCode != 0) GTEST_SKIP() << "no CUPS queue: " << qPrintable(setup.err.trimmed());

    const QStringList expected = expectedLines();
    vb::SetPrintEnvironment(nullptr);
    const QString stem = QStringLiteral("velmarinda-prueba-%1-%2")
                             .arg(QCoreApplication::applicationPid())
                             .arg(QDateTime::currentMSecsSinceEpoch());
    vb::SetAppTitle(stem);
    vb::Printer().SetDestination({vb::PrintDestination::Kind::Printer, queue, {}});
    EXPECT_EQ(vb::Printer().DeviceName(), queue);
    const QDateTime since = QDateTime::currentDateTime().addSecs(-2);
    printNote();

    const QString archivo = pdf::waitForCupsPdf(stem, since);
    ASSERT_FALSE(archivo.isEmpty()) << "cups-pdf wrote no file for " << qPrintable(stem) << " in "
                                << qPrintable(pdf::cupsPdfFolder())
                                << "; lpstat: " << qPrintable(run("lpstat", {"-W", "all", "-o"}).out);
    EXPECT_EQ(pdfPages(archivo), 2);
    expectInOrder(expected, pdf::lines(archivo));
    if (!HasFailure()) QFile::remove(archivo); // kept to be looked at when it fails
}

} // namespace
} // namespace vel::testing
