// membrete.ini: a shop whose installation tag is none of the four known ones
// names itself on paper from this file of the program folder. Its letterhead is
// laid out as the known ones are, its notice cites the laws in force, and a bad
// file is refused with a clear runtime error, never printed in part.
#include "printing/letterheads.h"
#include "printing/membrete_ini.h"
#include "runtime/app.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/print_transcript.h"
#include "runtime/vb.h"
#include "support/print_to.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace vel::letterheads;

const QByteArray kCompleto =
    "; Membrete de la tienda\n"
    "[membrete]\n"
    "nombre    = Ferretería Nova, S.L.\n"
    "nif       = B-12.345.678\n"
    "domicilio = Rúa Nova 5, bajo\n"
    "poblacion = 15001 Portelas (Valdeferro)\n"
    "telefono  = 900 00 00 09\n"
    "correo    = info@ferreterianova.es\n"
    "registro  = Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000\n";

// The description of the error a file gives, or "" when it is read.
QString Error(const QByteArray& bytes) {
    try {
        (void)LeeMembrete(bytes);
    } catch (const MembreteNoValido& e) {
        EXPECT_EQ(e.Number, 5);
        return e.Description;
    }
    return QString();
}

TEST(MembreteIni, AWholeFileGivesEveryValue) {
    const DatosMembrete d = LeeMembrete(kCompleto);
    EXPECT_EQ(d.nombre, "Ferretería Nova, S.L.");
    EXPECT_EQ(d.nif, "B-12.345.678");
    EXPECT_EQ(d.domicilio, "Rúa Nova 5, bajo");
    EXPECT_EQ(d.poblacion, "15001 Portelas (Valdeferro)");
    EXPECT_EQ(d.telefono, "900 00 00 09");
    EXPECT_EQ(d.correo, "info@ferreterianova.es");
    EXPECT_EQ(d.registro, "Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000");
}

// As Windows Notepad saves UTF-8: a byte-order mark, CR LF, keys in any case,
// no end of line on the last one.
TEST(MembreteIni, ANotepadFileWithItsMarkAndCrLfIsRead) {
    const DatosMembrete d = LeeMembrete("\xEF\xBB\xBFNOMBRE = Droguería Sol\r\nNif=00000000T\r\n# nota\r\n\r\nCorreo = sol@example.es");
    EXPECT_EQ(d.nombre, "Droguería Sol");
    EXPECT_EQ(d.nif, "00000000T");
    EXPECT_EQ(d.correo, "sol@example.es");
    EXPECT_TRUE(d.domicilio.isEmpty());
}

TEST(MembreteIni, EachFaultIsNamedWithItsLine) {
    EXPECT_EQ(Error("nombre=T\nnif=X\n"), "");
    EXPECT_EQ(Error("nombre=Caf\xE9\nnif=X\n"), "El archivo membrete.ini no es válido: no está escrito en UTF-8.");
    EXPECT_EQ(Error("nombre Tienda\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 1: falta el signo = entre el nombre y el valor.");
    EXPECT_EQ(Error("nombre=T\nfax=1\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 2: «fax» no es un dato del membrete (nombre, nif, "
              "domicilio, poblacion, telefono, correo, registro).");
    EXPECT_EQ(Error("nombre=T\nnombre=U\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 2: «nombre» aparece por segunda vez.");
    EXPECT_EQ(Error("[otra]\nnombre=T\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 1: la única sección admitida es [membrete].");
    EXPECT_EQ(Error("nombre=T\x01\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 1: tiene un carácter de control.");
    EXPECT_EQ(Error("domicilio=Rua\nnif=X\n"), "El archivo membrete.ini no es válido: falta el nombre (nombre = ...).");
    EXPECT_EQ(Error("nombre=T\nnif=\n"), "El archivo membrete.ini no es válido: falta el NIF (nif = ...).");
    EXPECT_EQ(Error(""), "El archivo membrete.ini no es válido: falta el nombre (nombre = ...).");
}

// Each value is printed on one line, never wrapped: 60 characters, the register
// line 100; and the file is small.
TEST(MembreteIni, ValuesAndTheFileHaveTheirLengths) {
    EXPECT_EQ(Error("nombre=" + QByteArray(60, 'N') + "\nnif=X\n"), "");
    EXPECT_EQ(Error("nombre=" + QByteArray(61, 'N') + "\nnif=X\n"),
              "El archivo membrete.ini no es válido: línea 1: «nombre» tiene más de 60 caracteres.");
    EXPECT_EQ(Error("nombre=T\nnif=X\nregistro=" + QByteArray(100, 'R') + "\n"), "");
    EXPECT_EQ(Error("nombre=T\nnif=X\nregistro=" + QByteArray(101, 'R') + "\n"),
              "El archivo membrete.ini no es válido: línea 3: «registro» tiene más de 100 caracteres.");
    // 60 letters of two bytes each are 60 characters.
    EXPECT_EQ(Error("nombre=" + QString(60, QChar(0xD1)).toUtf8() + "\nnif=X\n"), "");
    EXPECT_EQ(Error("nombre=T\nnif=X\n" + QByteArray(5000, '\n')),
              "El archivo membrete.ini no es válido: ocupa más de 4096 bytes.");
}

// The letterheads and notices print from the program folder.
class MembreteImpreso : public ::testing::Test {
protected:
    QTemporaryDir dir;
    vb::PrintRecorder recorder;
    vb::InstalledEnvironment env{{.clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                                  .programFolder = dir.path(),
                                  .printers = &recorder}};
    vb::PrinterObject& printer = vb::Printer();

    void membrete(const QByteArray& bytes) {
        QFile f(dir.filePath("membrete.ini"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QStringList lines() const { return recorder.last().lines(); }
};

TEST_F(MembreteImpreso, AnUnknownTagPrintsTheShopsLetterheadLaidOutAsTheKnownOnes) {
    membrete(kCompleto);
    EXPECT_TRUE(ImprimeMembrete(printer, "NOVA"));
    printer.EndDoc();
    const QStringList expected = {
        vb::Space(20) + "Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000",
        "",
        "",
        " Ferretería Nova, S.L.",
        "",
        " NIF: B-12.345.678",
        " Rúa Nova 5, bajo",
        " 15001 Portelas (Valdeferro)",
        " Tlf. 900 00 00 09",
        " info@ferreterianova.es"};
    EXPECT_EQ(lines(), expected);
    // The sizes and fonts of FERROBANDA's block, line for line, in black.
    const auto& ferro = MembreteDocumento(Bloque::FerrobandaPosterior);
    const auto prints = recorder.last().prints();
    ASSERT_EQ(prints.size(), ferro.size());
    for (size_t i = 0; i < ferro.size(); ++i) {
        EXPECT_EQ(prints[i].font.name, ferro[i].fuente) << "line " << i + 1;
        EXPECT_EQ(prints[i].font.size, ferro[i].tamano) << "line " << i + 1;
        EXPECT_EQ(prints[i].color, vb::vbBlack) << "line " << i + 1;
    }
}

// Left out, a value leaves its line empty: the block keeps its height.
TEST_F(MembreteImpreso, AShortFileKeepsTheBlocksTenLines) {
    membrete("nombre=Tienda Sol\nnif=00000000T\n");
    printer.SetForeColor(vb::vbRed); // a colour left over from another paper
    EXPECT_TRUE(ImprimeMembrete(printer, "SOL"));
    printer.EndDoc();
    EXPECT_EQ(lines(), QStringList({"", "", "", " Tienda Sol", "", " NIF: 00000000T", "", "", "", ""}));
    for (const auto& p : recorder.last().prints()) EXPECT_EQ(p.color, vb::vbBlack);
}

TEST_F(MembreteImpreso, WithoutTheFileAnUnknownTagStillPrintsNoSeller) {
    EXPECT_FALSE(ImprimeMembrete(printer, "NOVA"));
    ImprimeAvisoLegal(printer, "NOVA", "   ");
    EXPECT_FALSE(ImprimeMembreteTicket(printer, "NOVA"));
    EXPECT_FALSE(CabeceraListadoDe("NOVA").has_value());
    printer.EndDoc();
    EXPECT_TRUE(recorder.jobs.empty());
}

// The four known tags never read the file, even a bad one.
TEST_F(MembreteImpreso, TheKnownTagsIgnoreTheFile) {
    membrete("esto no es un membrete");
    for (const char* tag : {"FERROBANDA", "ULTRAMARINOS", "LAPRESA", "ORTA"}) {
        recorder.clear();
        EXPECT_TRUE(ImprimeMembrete(printer, tag));
        ImprimeAvisoLegal(printer, tag, "");
        printer.EndDoc();
        QStringList expected;
        for (const auto& l : MembreteDocumento(BloqueDeHoy(tag))) expected << l.texto;
        expected << AvisoLegal(BloqueDeHoy(tag));
        EXPECT_EQ(lines(), expected) << tag;
        EXPECT_FALSE(MembretePropio(tag).has_value());
    }
    // A lower-case "ferrobanda" is not a known tag: the file is read.
    EXPECT_THROW(ImprimeMembrete(printer, "ferrobanda"), MembreteNoValido);
    printer.KillDoc();
}

TEST_F(MembreteImpreso, TheNoticeCitesTheLawsInForceAndFitsTheSheet) {
    membrete(kCompleto);
    const QStringList aviso = AvisoLegalPropio(*MembretePropio("NOVA"));
    const QString todo = aviso.join(' ');
    EXPECT_TRUE(todo.contains("Reglamento (UE) 2016/679")) << qPrintable(todo);
    EXPECT_TRUE(todo.contains("Ley Orgánica 3/2018"));
    EXPECT_TRUE(todo.contains("Ferretería Nova, S.L. (NIF B-12.345.678)"));
    EXPECT_TRUE(todo.contains("Rúa Nova 5, bajo, 15001 Portelas (Valdeferro) o en info@ferreterianova.es"));
    EXPECT_FALSE(todo.contains("15/99"));
    // 150 characters and the invoice's three blanks of "Courier New" 6 fit the
    // printable width of the sheet.
    for (const QString& l : aviso) EXPECT_LE(l.size(), 150) << qPrintable(l);
    EXPECT_LE((150 + 3) * 72.0, vb::SheetGeometry().printable.width());

    ImprimeAvisoLegal(printer, "NOVA", "   ");
    printer.EndDoc();
    QStringList expected;
    for (const QString& l : aviso) expected << "   " + l;
    EXPECT_EQ(lines(), expected);
    for (const auto& p : recorder.last().prints()) EXPECT_EQ(p.font, (vb::PrintFont{"Courier New", 6, false, false}));
}

// On the ticket the register line is cut to the paper's 40 characters.
TEST_F(MembreteImpreso, TheTicketsRegisterLineIsCutToItsPaper) {
    membrete(kCompleto);
    EXPECT_TRUE(ImprimeMembreteTicket(printer, "NOVA"));
    printer.EndDoc();
    const QStringList l = lines();
    // The document's ten lines, one more for the register's second half.
    ASSERT_EQ(l.size(), 11);
    EXPECT_EQ(l[0], "Ins. en el Reg. Mercantil de Valdeferro,");
    EXPECT_EQ(l[1], "Tomo 3000, Folio 30, Hoja VF-30000");
    EXPECT_EQ(l[4], " Ferretería Nova, S.L.");
    for (int i = 0; i < 2; ++i) EXPECT_LE(l[i].size(), 40);
}

TEST_F(MembreteImpreso, TheListingHeadCarriesTheNameItsRuleAndTown) {
    membrete(kCompleto);
    const auto c = CabeceraListadoDe("NOVA");
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->titulo, " Ferretería Nova, S.L.");
    EXPECT_EQ(c->raya, " _____________________");
    EXPECT_EQ(c->lugar, " 15001 Portelas (Valdeferro)");
    // "Fecha de emisión" and "Hoja Nº" where a tag with no head has them.
    EXPECT_EQ(c->titulo.size() + c->sangriaFecha, 57);
    EXPECT_EQ(c->raya.size() + c->sangriaHoja, 64);
}

TEST_F(MembreteImpreso, ABadFileIsARuntimeErrorAndNothingOfItPrints) {
    membrete("nombre=Tienda\nnif=X\nfax=1\n");
    try {
        ImprimeMembrete(printer, "NOVA");
        FAIL() << "a bad file was read";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 5);
        EXPECT_TRUE(e.Description.startsWith("El archivo membrete.ini no es válido: línea 3:")) << qPrintable(e.Description);
    }
    printer.KillDoc();
    EXPECT_TRUE(recorder.jobs.empty() || recorder.last().lines().isEmpty());
}

// A folder by the name of the file is no file to read.
TEST_F(MembreteImpreso, AFolderNamedMembreteIniIsRefused) {
    ASSERT_TRUE(QDir(dir.path()).mkdir("membrete.ini"));
    EXPECT_THROW(MembretePropio("NOVA"), MembreteNoValido);
}

} // namespace
