// The letterhead at the top of a delivery note and the notice at its foot, for
// each installation, as they come out of the printer: font, size, colour, text.
#include "print_fixture.h"
#include "runtime/vb.h"
#include "printing/letterheads.h"

namespace vel::testing {
namespace {

using letterheads::Bloque;

// A printed line as `"font" size color=C "text"`.
QString run(const vb::PrintEvent& e) {
    return QStringLiteral("\"%1\" %2 color=%3 \"%4\"").arg(e.font.name).arg(e.font.size).arg(vb::ColorName(e.color), e.text);
}

class Letterheads : public PrintTest {
protected:
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();

    // The runs of a whole delivery note of one line under a tag.
    std::vector<vb::PrintEvent> printNote(const QString& tag) {
        const auto d = NotaDeEntrega(rejilla, 1, tag);
        print_layout::Contadores c;
        print_layout::cabeceraalbaran(printer, d);
        print_layout::detallealbaran(printer, d, c);
        print_layout::piealbaran(printer, d);
        printer.EndDoc();
        return recorder.last().prints();
    }
    // The runs before the customer's name.
    QStringList head(const QString& tag) {
        QStringList out;
        for (const auto& e : printNote(tag)) {
            if (e.text.contains("FERRETERIA O CRUCEIRO")) break;
            out << run(e);
        }
        return out;
    }
    // The runs of the foot after its last rule of underscores.
    QStringList notice(const QString& tag) {
        QStringList out;
        const auto prints = printNote(tag);
        int lastRule = 0;
        for (int i = 0; i < int(prints.size()); ++i)
            if (prints[size_t(i)].text == print_layout::RayaSubrayado) lastRule = i;
        for (size_t i = size_t(lastRule) + 1; i < prints.size(); ++i) out << run(prints[i]);
        return out;
    }
};

const QString customerLine = R"~("Courier New" 12 color=%1 "                                        FERRETERIA O CRUCEIRO")~";

TEST_F(Letterheads, FerrobandaOnThe30thOfMarch2019PrintsTheSoleTradersBlock) {
    today(30, 3, 2019);
    EXPECT_EQ(head("FERROBANDA"),
              QStringList({
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 12 color=0 "")~",
                  R"~("Verdana" 12 color=0 " SUMINISTROS INDUSTRIALES")~",
                  R"~("Verdana" 12 color=0 "               PORTELAS")~",
                  R"~("Verdana" 8 color=windowtext "            PILAR VIDAL OTERO 00000000T")~",
                  R"~("Verdana" 10 color=windowtext " Calle del Faro 12, Bajo Drch")~",
                  R"~("Verdana" 10 color=windowtext "     15.000 - Portelas (Valdeferro)")~",
                  R"~("Verdana" 9 color=windowtext "                 Tlf. 900 00 00 01")~",
                  R"~("Verdana" 9 color=windowtext "             )~" + letterheads::CorreoFerrobanda() + "\"",
              }));
}

TEST_F(Letterheads, FerrobandaOnThe31stOfMarch2019PrintsTheLimitedCompanyInRed) {
    today(31, 3, 2019);
    EXPECT_EQ(head("FERROBANDA"),
              QStringList({
                  R"~("Courier New" 8 color=0 "                    Ins. en el Reg. Mercantil de Valdeferro, Tomo 1000, Folio 100, Hoja 10000")~",
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 12 color=0 "")~",
                  R"~("Verdana" 12 color=255 "SUMINISTROS INDUSTRIALES")~",
                  R"~("Verdana" 12 color=255 "     PORTELAS, S.L.")~",
                  R"~("Verdana" 8 color=windowtext "            C.I.F.- B-00.000.001")~",
                  R"~("Verdana" 10 color=windowtext " Calle del Faro 12, Bajo Drch")~",
                  R"~("Verdana" 10 color=windowtext "     15.000 - Portelas (Valdeferro)")~",
                  R"~("Verdana" 9 color=windowtext "                 Tlf. 900 00 00 01")~",
                  R"~("Verdana" 9 color=windowtext "             )~" + letterheads::CorreoFerrobanda() + "\"",
              }));
}

TEST_F(Letterheads, TheCustomerBlockFollowsAKnownLetterheadInCourierNew12) {
    const auto prints = printNote("ORTA");
    const auto it = std::find_if(prints.begin(), prints.end(),
                                 [](const auto& e) { return e.text.contains("FERRETERIA O CRUCEIRO"); });
    ASSERT_NE(it, prints.end());
    EXPECT_EQ(run(*it), customerLine.arg(0));
}

TEST_F(Letterheads, TheFerrobandaSwitchLooksAtTheMachinesDateNeverTheDocuments) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Textfechafactura = "15/01/2019";
    today(31, 3, 2019);
    print_layout::cabeceraalbaran(printer, d);
    printer.EndDoc();
    EXPECT_TRUE(lines().contains("     PORTELAS, S.L."));
    d.Textfechafactura = "01/06/2020";
    today(30, 3, 2019);
    print_layout::cabeceraalbaran(printer, d);
    printer.EndDoc();
    EXPECT_TRUE(lines().contains("               PORTELAS"));
    EXPECT_FALSE(lines().contains("     PORTELAS, S.L."));
}

TEST_F(Letterheads, UltramarinosPrintsItsShopInGreen) {
    EXPECT_EQ(head("ULTRAMARINOS"),
              QStringList({
                  R"~("Courier New" 8 color=0 "                  ")~",
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 12 color=0 "")~",
                  R"~("Verdana" 12 color=32768 "           OS VIEIROS")~",
                  R"~("Verdana" 12 color=32768 "      Comestibles Finos")~",
                  R"~("Verdana" 10 color=32768 "     Manuel T. Rey Pardo")~",
                  R"~("Verdana" 8 color=windowtext "                NIF:00.000.002-W")~",
                  R"~("Verdana" 10 color=windowtext "          Rúa Os Vieiros, 10")~",
                  R"~("Verdana" 10 color=windowtext " 15.000 - Portelas (Valdeferro)")~",
                  R"~("Verdana" 9 color=windowtext "  Tlf. 900 00 00 02 / 600 00 00 02")~",
              }));
}

TEST_F(Letterheads, LapresaPrintsALetterheadAndNoNoticeAtAll) {
    EXPECT_EQ(head("LAPRESA"),
              QStringList({
                  R"~("Courier New" 8 color=0 "                                        Lucía Castro Nieto   -   00.000.003-A")~",
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 12 color=0 "")~",
                  R"~("Verdana" 12 color=0 "    ESTABLECIMIENTOS")~",
                  R"~("Verdana" 12 color=0 "           LA PRESA")~",
                  R"~("Verdana" 8 color=windowtext "")~",
                  R"~("Verdana" 10 color=windowtext "     Avda. del Puerto, Nº 20")~",
                  R"~("Verdana" 10 color=windowtext "15.000 - Portelas (Valdeferro)")~",
                  R"~("Verdana" 9 color=windowtext "          Tlf. - 900 00 00 03 ")~",
                  R"~("Verdana" 9 color=windowtext "")~",
              }));
    EXPECT_EQ(notice("LAPRESA"), QStringList({R"~("Courier New" 6 color=windowtext "")~"}));
}

TEST_F(Letterheads, OrtaPrintsItsRegisterEntryAndBlock) {
    EXPECT_EQ(head("ORTA"),
              QStringList({
                  R"~("Courier New" 8 color=0 "               Ins. en el Reg. Mercantil de Valdeferro, Tomo 2000, Libro 2000, Folio 20, Hoja VF-20000, Insc. 1")~",
                  R"~("Courier New" 8 color=0 "")~",
                  R"~("Courier New" 12 color=0 "")~",
                  R"~("Verdana" 12 color=0 "              Sistemas")~",
                  R"~("Verdana" 12 color=0 "               Orta, S.L.")~",
                  R"~("Verdana" 8 color=0 "                  C.I.F.- B-00.000.004")~",
                  R"~("Verdana" 10 color=0 "              C/Mayor 20, 2C")~",
                  R"~("Verdana" 9 color=0 "         36.000 - Ribamar (Valdeferro)")~",
                  R"~("Verdana" 9 color=0 "")~",
                  R"~("Verdana" 9 color=0 "")~",
              }));
}

// The comparison is exact: a tag in lower case is a tag nobody knows.
TEST_F(Letterheads, ALowerCaseTagPrintsNoLetterheadAndNoNotice) {
    today(31, 3, 2019);
    EXPECT_EQ(head("ferrobanda"), QStringList());
    EXPECT_EQ(notice("ferrobanda"), QStringList({R"~("Courier New" 6 color=0 "")~"}));
}

// With no letterhead the note starts with the customer block, in the font in
// force: the "Courier New" 8 set before the tag was looked at.
TEST_F(Letterheads, AnUnknownTagStartsWithTheCustomerBlockInTheFontInForce) {
    const auto prints = printNote("TRAMPEL");
    ASSERT_FALSE(prints.empty());
    EXPECT_EQ(run(prints[0]), R"~("Courier New" 8 color=0 "                                        FERRETERIA O CRUCEIRO")~");
    EXPECT_EQ(notice("TRAMPEL"), QStringList({R"~("Courier New" 6 color=0 "")~"}));
    for (const char* tag : {"", "Ferrobanda", "FERROBANDA ", "ORTA S.L."})
        EXPECT_EQ(letterheads::BloqueDeHoy(tag), Bloque::Ninguno) << tag;
}

TEST_F(Letterheads, TheDeliveryNoteNoticeHasNoMargin) {
    today(31, 3, 2019);
    const QStringList n = notice("FERROBANDA");
    ASSERT_EQ(n.size(), 7);
    EXPECT_EQ(n[0], R"~("Courier New" 6 color=windowtext "A los efectos de lo establecido en la Ley Orgánica 15/99, de 13 de diciembre, de Protección de Datos de Carácter Personal y el Real Decreto 1720/2007, ")~");
    EXPECT_EQ(n[1], R"~("Courier New" 6 color=windowtext "Suministros Industriales Portelas S.L le comunica que sus datos de Carácter Personal forman parte de una base de datos gestionada bajo la responsabilidad ")~");
    EXPECT_EQ(n[2], R"~("Courier New" 6 color=windowtext "de Suministros Industriales Portelas S.L, con la finalidad de ser incorporado al fichero CLIENTES,  el cual se encuentra registrado en la AEPD, tal y como ")~");
    EXPECT_EQ(n[3], R"~("Courier New" 6 color=windowtext "establece la normativa legal, a este respecto.")~");
    EXPECT_EQ(n[4], R"~("Courier New" 6 color=windowtext "Suministros Industriales Portelas S.L como Responsable del Fichero, le permite ejercitar sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), ")~");
    EXPECT_EQ(n[5], R"~("Courier New" 6 color=windowtext "a través de un medio gratuito en la siguiente dirección de correo postal: C/ del Faro Nº 12 Bajo dcha. 15000 Portelas, Valdeferro.")~");
    EXPECT_EQ(n[6], R"~("Courier New" 6 color=windowtext "")~");
}

TEST_F(Letterheads, TheSoleTradersNoticeNamesPilarVidalOtero) {
    today(30, 3, 2019);
    EXPECT_EQ(letterheads::AvisoLegal(Bloque::FerrobandaAnterior),
              QStringList({
                  "A los efectos de lo establecido en la Ley Orgánica 15/99, de 13 de diciembre, de Protección de Datos de Carácter Personal y el Real Decreto 1720/2007, ",
                  "Suministros Industriales Portelas le comunica que sus datos de Carácter Personal forman parte de una base de datos gestionada bajo la responsabilidad ",
                  "de Pilar Vidal Otero, con la finalidad de ser incorporado al fichero CLIENTES,  el cual se encuentra registrado en la AEPD, tal y como establece la",
                  "normativa legal, a este respecto.",
                  "Suministros Industriales Portelas como Responsable del Fichero, le permite ejercitar sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), ",
                  "a través de un medio gratuito en la siguiente dirección de correo postal: C/ del Faro Nº 12 Bajo dcha. 15000 Portelas, Valdeferro.",
              }));
    EXPECT_EQ(notice("FERROBANDA").size(), 7);
    EXPECT_TRUE(notice("FERROBANDA")[2].contains("de Pilar Vidal Otero"));
}

TEST_F(Letterheads, UltramarinosAndOrtaNotices) {
    EXPECT_EQ(notice("ULTRAMARINOS"),
              QStringList({
                  R"~("Courier New" 6 color=windowtext "A los efectos de lo establecido en la Ley Orgánica 15/99, de 13 de diciembre, de Protección de Datos de Carácter Personal y el Real Decreto 1720/2007, ")~",
                  R"~("Courier New" 6 color=windowtext "le informamos que sus datos de Carácter Personal forman parte de una base de datos gestionada bajo la responsabilidad de MANUEL TOMAS REY PARDO")~",
                  R"~("Courier New" 6 color=windowtext "con la finalidad de ser incorporado al fichero CLIENTES, el cual se encuentra registrado en la AEPD, tal y como establece la normativa legal, a este respecto.")~",
                  R"~("Courier New" 6 color=windowtext "Puede ejercer sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), a través de un medio gratuito en la siguiente dirección de correo postal:")~",
                  R"~("Courier New" 6 color=windowtext "Rua/ Os Vieiros Nº10, 15000 Portelas (Valdeferro).")~",
                  R"~("Courier New" 6 color=windowtext "")~",
              }));
    EXPECT_EQ(letterheads::AvisoLegal(Bloque::Orta),
              QStringList({
                  "A los efectos de lo establecido en la Ley Orgánica 15/99, de 13 de diciembre, de Protección de Datos de Carácter Personal y el Real Decreto 1720/2007, ",
                  "Sistemas Orta S.L le comunica que sus datos de Carácter Personal forman parte de una base de datos gestionada bajo la responsabilidad de Sistemas",
                  "Orta S.L, con la finalidad de ser incorporado al fichero CLIENTES,  el cual se encuentra registrado en la AEPD, tal y como establece la normativa",
                  "legal, a este respecto.",
                  "Sistemas Orta S.L como Responsable del Fichero, le permite ejercitar sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), a través",
                  "de un medio gratuito en la siguiente dirección de correo postal: C/Mayor 20 2ºC, 36000 Ribamar (Valdeferro)",
              }));
}

TEST_F(Letterheads, TheInvoiceNoticeHasThreeBlanksBeforeEachLine) {
    letterheads::ImprimeAvisoLegal(printer, "ORTA", "   ");
    printer.EndDoc();
    ASSERT_EQ(lines().size(), 6);
    for (const QString& l : lines()) EXPECT_TRUE(l.startsWith("   ") && !l.startsWith("    ")) << qPrintable(l);
    EXPECT_EQ(lines()[3], "   legal, a este respecto.");
}

TEST_F(Letterheads, TheBankLineIsOrtasAloneAndTheBoxElseOnlyChangesTheFont) {
    printer.SetFontName("Verdana");
    printer.SetFontSize(12);
    letterheads::ImprimeCuentaBancaria(printer, "ULTRAMARINOS");
    EXPECT_FALSE(printer.DocumentOpen());
    EXPECT_EQ(printer.FontName(), "Courier New");
    EXPECT_EQ(printer.FontSize(), 8);
    letterheads::ImprimeCuentaBancaria(printer, "ORTA");
    printer.EndDoc();
    EXPECT_EQ(lines(), QStringList({"                  Nº Cuenta: MAREESMMXXX ES91 2100 0000 11 0200000000 - Banco Mareiro Corporación Bancaria S.A.",
                                    ""}));
    EXPECT_EQ(recorder.last().prints()[0].font.size, 8);
}

TEST_F(Letterheads, TheEmailLineIsThirteenBlanksAndTheConfiguredAddress) {
    EXPECT_FALSE(letterheads::CorreoFerrobanda().isEmpty());
    const auto& m = letterheads::MembreteDocumento(Bloque::FerrobandaPosterior);
    EXPECT_EQ(m.back().texto, vb::Space(13) + letterheads::CorreoFerrobanda());
    EXPECT_EQ(m.back().fuente, "Verdana");
    EXPECT_EQ(m.back().tamano, 9);
}

TEST_F(Letterheads, TheTicketsWordingDiffersForFerrobandaLapresaAndOrta) {
    const auto ferro = letterheads::MembreteTicket(Bloque::FerrobandaPosterior);
    ASSERT_GE(ferro.size(), 2u);
    EXPECT_EQ(ferro[0].texto, "Ins. en el Reg. Mercantil de Valdeferro,");
    EXPECT_EQ(ferro[1].texto, "Tomo 1000, Folio 100, Hoja 10000");
    EXPECT_EQ(ferro.size(), letterheads::MembreteDocumento(Bloque::FerrobandaPosterior).size() + 1);
    EXPECT_TRUE(letterheads::MembreteTicket(Bloque::Orta).empty());
    const auto presa = letterheads::MembreteTicket(Bloque::Lapresa);
    ASSERT_EQ(presa.size(), 7u);
    EXPECT_EQ(presa[1].texto, "  Lucía Castro Nieto-00.000.003A");
    EXPECT_EQ(presa[6].texto, "           Tlf./FAX - 900 00 00 03 ");
    EXPECT_EQ(letterheads::MembreteTicket(Bloque::Ultramarinos).size(),
              letterheads::MembreteDocumento(Bloque::Ultramarinos).size());
    EXPECT_FALSE(letterheads::ImprimeMembreteTicket(printer, "ORTA"));
    EXPECT_EQ(printer.FontSize(), 8);
}

TEST_F(Letterheads, TheListingHeadsByTag) {
    const auto ferro = letterheads::CabeceraListadoDe("FERROBANDA");
    ASSERT_TRUE(ferro);
    EXPECT_EQ(ferro->titulo, "Suministros Industriales");
    EXPECT_EQ(ferro->raya, "     ______________");
    EXPECT_EQ(ferro->lugar, "        PORTELAS");
    EXPECT_EQ(ferro->sangriaFecha, 33);
    EXPECT_EQ(letterheads::CabeceraListadoDe("ULTRAMARINOS")->titulo, "  Panadería Bollería Os Vieiros");
    EXPECT_EQ(letterheads::CabeceraListadoDe("LAPRESA")->lugar, "      LA PRESA");
    EXPECT_EQ(letterheads::CabeceraListadoDe("ORTA")->raya, "      __________");
    EXPECT_FALSE(letterheads::CabeceraListadoDe("orta"));
    EXPECT_EQ(ferro->sangriaHoja, 45);
    EXPECT_EQ(letterheads::CabeceraListadoDe("ORTA")->sangriaHoja, 47);
    EXPECT_EQ(letterheads::CabeceraListadoSinMembrete().sangriaFecha, 57);
    EXPECT_EQ(letterheads::CabeceraListadoSinMembrete().sangriaHoja, 64);
}

} // namespace
} // namespace vel::testing
