// A ticket on real paper: charged at the counter with the Printer on a PDF file
// (what a machine with no receipt printer gets), then read back with pdfinfo
// and pdftotext. The page is the 80 mm receipt roll and the lines in "Courier
// New" 8 come back column for column.
//
// VELMARINDA_TICKET_PDF=/some/file.pdf keeps a copy of the ticket to look at.
#include "counter_fixture.h"
#include <QProcess>

namespace {

using veltest::Mostrador;

QString run(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    if (!p.waitForStarted(10000) || !p.waitForFinished(60000)) return QString();
    EXPECT_EQ(p.exitCode(), 0) << qPrintable(QString::fromUtf8(p.readAllStandardError()));
    return QString::fromUtf8(p.readAllStandardOutput());
}

QString pdfInfo(const QString& pdf, const QString& key) {
    for (const QString& l : run("pdfinfo", {pdf}).split('\n'))
        if (l.startsWith(key + ":")) return l.mid(key.size() + 1).trimmed();
    return QString();
}

TEST_F(Mostrador, ATicketOnPaperIsEightyMillimetresWideAndKeepsItsColumns) {
    vb::SetPrintEnvironment(nullptr); // the real one: PDF files and CUPS queues
    const QString pdf = dir.filePath("ticket.pdf");
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, QString(), pdf});
    Abrir();
    Vende("MAR500", "2");
    Vende("LEC1", "5");
    Teclea("TextEntregado", "50");
    Intro();
    ASSERT_TRUE(QFileInfo::exists(pdf));
    if (const char* keep = std::getenv("VELMARINDA_TICKET_PDF")) {
        QFile::remove(QString::fromLocal8Bit(keep));
        QFile::copy(pdf, QString::fromLocal8Bit(keep));
    }

    // 80 by 297 mm: 226.77 by 841.89 points, which the PDF writes rounded.
    EXPECT_TRUE(pdfInfo(pdf, "Page size").startsWith("227 x 842 pts")) << qPrintable(pdfInfo(pdf, "Page size"));
    EXPECT_EQ(pdfInfo(pdf, "Pages"), "1");

    // Read as fixed-pitch text of 4.8 points a character, the width of "Courier
    // New" 8, so that blanks come back as columns.
    QStringList lineas;
    for (const QString& l : run("pdftotext", {"-layout", "-fixed", "4.8", pdf, "-"}).split('\n'))
        if (!l.trimmed().isEmpty()) lineas << l;
    const auto tiene = [&](const QString& linea) {
        for (const QString& l : lineas)
            if (l.trimmed() == linea.trimmed()) return true;
        return false;
    };
    // The 12-point border is 2.5 characters: pdftotext shows each line two
    // columns to the right of the printable corner, the same for all of them.
    EXPECT_TRUE(tiene("  21/11/2026    10:15:30    1 /OPERADOR")) << qPrintable(lineas.join('\n'));
    EXPECT_TRUE(tiene("  Nº: 1 /TI/000001"));
    EXPECT_TRUE(tiene("  Referencia          Uni  Importe  Total"));
    EXPECT_TRUE(tiene("  MAR500              2    12.50  25.00"));
    EXPECT_TRUE(tiene("  LEC1                5     1.04   5.20"));
    EXPECT_TRUE(tiene("GRACIAS POR SU VISITA"));
    // Column for column: the units, price and total of both articles line up.
    qsizetype mar = -1, lec = -1;
    for (const QString& l : lineas) {
        if (l.contains("MAR500")) mar = lineas.indexOf(l);
        if (l.contains("LEC1 ")) lec = lineas.indexOf(l);
    }
    ASSERT_GE(mar, 0);
    ASSERT_GE(lec, 0);
    EXPECT_EQ(lineas[mar].indexOf("25.00") + 5, lineas[lec].indexOf("5.20") + 4);
    EXPECT_EQ(lineas[mar].indexOf("12.50") + 5, lineas[lec].indexOf("1.04") + 4);
    EXPECT_EQ(lineas[mar].indexOf("12.50") + 5 - lineas[mar].indexOf("MAR500"), 32 - 2);
}

} // namespace
