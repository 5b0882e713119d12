// A delivery note on real paper: printed to a PDF file, and through a real CUPS
// queue (the virtual PDF printer), then read back with pdftotext. The lines in
// "Courier New" 12 must come back column for column as the recording printer
// saw them.
#include "print_fixture.h"
#include "runtime/app.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

namespace vel::testing {
namespace {

struct Ran {
    int exitCode = -1;
    QString out, err;
};

Ran run(const QString& program, const QStringList& args, int timeoutMs = 60000) {
    QProcess p;
    p.start(program, args);
    Ran r;
    if (!p.waitForStarted(10000)) {
        r.err = program + " did not start";
        return r;
    }
    p.waitForFinished(timeoutMs);
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

// The text of a PDF, read as fixed-pitch text of 7.2 points a character (the
// width of "Courier New" 12), so that blanks come back as columns.
QStringList pdfLines(const QString& pdf) {
    const Ran r = run("pdftotext", {"-layout", "-fixed", "7.2", pdf, "-"});
    EXPECT_EQ(r.exitCode, 0) << qPrintable(r.err);
    return r.out.split('\n');
}

int pdfPages(const QString& pdf) {
    const Ran r = run("pdfinfo", {pdf});
    for (const QString& l : r.out.split('\n'))
        if (l.startsWith("Pages:")) return l.mid(6).trimmed().toInt();
    return -1;
}

QString pdfInfo(const QString& pdf, const QString& key) {
    const Ran r = run("pdfinfo", {pdf});
    for (const QString& l : r.out.split('\n'))
        if (l.startsWith(key + ":")) return l.mid(key.size() + 1).trimmed();
    return QString();
}

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
    // Every expected line, in order, among the PDF's lines, the PDF's left
    // border taken off (found from the first rule of underscores).
    static void expectInOrder(const QStringList& expected, const QStringList& pdf) {
        int margin = -1;
        for (const QString& l : pdf)
            if (l.contains(print_layout::RayaSubrayado)) {
                margin = int(l.indexOf(print_layout::RayaSubrayado));
                break;
            }
        ASSERT_GE(margin, 0) << "no rule in the PDF";
        int at = 0;
        for (const QString& want : expected) {
            while (at < pdf.size() && vb::RTrim(pdf[at].mid(margin)) != want) ++at;
            ASSERT_LT(at, pdf.size()) << "not in the PDF: \"" << qPrintable(want) << "\"";
            ++at;
        }
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
    EXPECT_TRUE(pdfInfo(file, "Page size").contains("(A4)")) << qPrintable(pdfInfo(file, "Page size"));
    EXPECT_EQ(pdfInfo(file, "Title"), "00027 20261121 - 430001");
    expectInOrder(expected, pdfLines(file));
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
    const QStringList l = pdfLines(file);
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
    EXPECT_TRUE(pdfLines(first).join('\n').contains("GRACIAS POR SU VISITA"));
}

// Where cups-pdf puts the jobs of this user: its "Out" setting, ${HOME}/PDF
// unless changed.
QString cupsPdfFolder() {
    QString out = QStringLiteral("${HOME}/PDF");
    QFile conf("/etc/cups/cups-pdf.conf");
    if (conf.open(QIODevice::ReadOnly))
        for (const QString& l : QString::fromUtf8(conf.readAll()).split('\n'))
            if (l.startsWith("Out ")) out = l.mid(4).trimmed();
    return out.replace("${HOME}", QDir::homePath());
}

QString newestPdfNamed(const QString& folder, const QString& stem, const QDateTime& since) {
    QString best;
    QDateTime bestTime;
    QDirIterator it(folder, {"*.pdf"}, QDir::Files);
    while (it.hasNext()) {
        it.next();
        const QFileInfo fi = it.fileInfo();
        if (!fi.fileName().contains(stem) || fi.lastModified() < since) continue;
        if (best.isEmpty() || fi.lastModified() > bestTime) {
            best = fi.filePath();
            bestTime = fi.lastModified();
        }
    }
    return best;
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

    const QString folder = cupsPdfFolder();
    QString pdf;
    QElapsedTimer waited;
    waited.start();
    while (pdf.isEmpty() && waited.elapsed() < 60000) {
        QThread::msleep(250);
        pdf = newestPdfNamed(folder, stem, since);
    }
    ASSERT_FALSE(pdf.isEmpty()) << "cups-pdf wrote no file for " << qPrintable(stem) << " in " << qPrintable(folder)
                                << "; lpstat: " << qPrintable(run("lpstat", {"-W", "all", "-o"}).out);
    // cups-pdf writes the file while the job runs: wait until it is whole.
    qint64 size = -1;
    while (QFileInfo(pdf).size() != size && waited.elapsed() < 60000) {
        size = QFileInfo(pdf).size();
        QThread::msleep(500);
    }
    EXPECT_EQ(pdfPages(pdf), 2);
    expectInOrder(expected, pdfLines(pdf));
    if (!HasFailure()) QFile::remove(pdf); // kept to be looked at when it fails
}

} // namespace
} // namespace vel::testing
