// The ticket of a shop of its own tag (NOVA) with a membrete.ini, charged at
// the counter on a PDF file of the 80 mm roll: its letterhead heads the ticket.
// VELMARINDA_TICKET_PDF=/some/file.pdf keeps a copy to look at.
#include "counter_fixture.h"
#include <QProcess>

namespace {

using veltest::Mostrador;

TEST_F(Mostrador, AShopsOwnLetterheadHeadsItsTicketOnPaper) {
    Config("NOVA\n");
    QFile f(dir.filePath("membrete.ini"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("nombre = Droguería Sol\nnif = 00000000T\npoblacion = 15001 Portelas\n"
            "registro = Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000\n");
    f.close();
    vb::SetPrintEnvironment(nullptr);
    const QString pdf = dir.filePath("ticket.pdf");
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, QString(), pdf});
    Abrir();
    Vende("MAR500", "2");
    Teclea("TextEntregado", "50");
    Intro();
    EXPECT_FALSE(terminado);
    ASSERT_TRUE(QFileInfo::exists(pdf));
    if (const char* keep = std::getenv("VELMARINDA_TICKET_PDF")) {
        QFile::remove(QString::fromLocal8Bit(keep));
        QFile::copy(pdf, QString::fromLocal8Bit(keep));
    }
    QProcess p;
    p.start("pdftotext", {"-layout", pdf, "-"});
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString texto = QString::fromUtf8(p.readAllStandardOutput());
    for (const char* s : {"Ins. en el Reg. Mercantil de Valdeferro,", "Tomo 3000, Folio 30, Hoja VF-30000",
                          "Droguería Sol", "NIF: 00000000T", "15001 Portelas", "MAR500", "GRACIAS POR SU VISITA"})
        EXPECT_TRUE(texto.contains(QString::fromUtf8(s))) << s << "\n" << qPrintable(texto);
}

} // namespace
