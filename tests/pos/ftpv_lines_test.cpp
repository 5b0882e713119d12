// Ringing up lines: Enter in the units adds the line to the list, the totals
// and the VAT slot of its rate; a double click takes a line back.
#include "counter_fixture.h"
#include "pos/ticket_item.h"

namespace {

using veltest::Mostrador;

TEST_F(Mostrador, EnterInTheUnitsAddsTheLine) {
    Abrir();
    Vende("MAR500", "2");
    ASSERT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Ticket()->item(0)->text(),
              vel::ticket::Entrada("MAR500", "MARTILLO CARPINTERO 500G", "21", "2", "25.00"));
    EXPECT_EQ(Etiqueta("LabelImporte")->text(), QStringLiteral("25.00"));
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("25.00"));
    EXPECT_EQ(Etiqueta("LabelIva1")->text(), QStringLiteral("21"));
    EXPECT_EQ(Etiqueta("LabelIva1Total")->text(), QStringLiteral("4.34"));
    // The entry row is empty again, ready for the next scan.
    for (const char* caja : {"Textreferencia", "Textdescripcion", "TextUnidades", "TextImporte"})
        EXPECT_EQ(Caja(caja)->text(), QString()) << caja;
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
}

TEST_F(Mostrador, LinesAddUpAndEachRateHasItsSlot) {
    Abrir();
    Vende("MAR500", "1");  // 12.50 at 21
    Vende("LEC1", "10");   // 10.40 at 4
    Vende("TOR440", "25"); // 3.00 at 21
    EXPECT_EQ(Ticket()->count(), 3);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("25.90"));
    EXPECT_EQ(Etiqueta("LabelIva1")->text(), QStringLiteral("21"));
    EXPECT_EQ(Etiqueta("LabelIva1Total")->text(), QStringLiteral("2.69"));
    EXPECT_EQ(Etiqueta("LabelIva2")->text(), QString());
    EXPECT_EQ(Etiqueta("LabelIva3")->text(), QStringLiteral("4"));
    EXPECT_EQ(Etiqueta("LabelIva3Total")->text(), QStringLiteral("0.40"));
}

TEST_F(Mostrador, AnArticleAtTenPercentAddsNoVatInAnySlot) {
    Abrir();
    Vende("PAN1", "3");
    ASSERT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(vel::ticket::Porcentaje(Ticket()->item(0)->text()), QStringLiteral("10 "));
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("6.60"));
    for (const char* e : {"LabelIva1", "LabelIva2", "LabelIva3", "LabelIva1Total", "LabelIva2Total", "LabelIva3Total"})
        EXPECT_EQ(Etiqueta(e)->text(), QString()) << e;
}

// An article at 7% goes to the second slot, which reads "10".
TEST_F(Mostrador, SevenPercentGoesToTheSlotLabelledTen) {
    Abrir();
    Vende("ANT7", "1");
    EXPECT_EQ(Etiqueta("LabelIva2")->text(), QStringLiteral("10"));
    EXPECT_EQ(Etiqueta("LabelIva2Total")->text(), QStringLiteral("0.70"));
}

TEST_F(Mostrador, EnterInTheUnitsWithoutAPriceMovesOn) {
    Abrir();
    Teclea("Textreferencia", "LIBRE");
    Teclea("Textdescripcion", "ARTICULO SUELTO");
    Teclea("TextUnidades", "1");
    Intro();
    EXPECT_EQ(Ticket()->count(), 0);
    EXPECT_EQ(Foco(), Caja("TextImporte"));
    // The price typed by hand, Enter there adds it.
    Teclea("TextImporte", "3.5");
    Intro();
    ASSERT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(vel::ticket::Importe(Ticket()->item(0)->text()), QStringLiteral("    3.50"));
}

TEST_F(Mostrador, LettersInUnitsAndPriceAreDropped) {
    Abrir();
    Escanea("MAR500");
    Teclea("TextUnidades", "2x,a-.");
    EXPECT_EQ(Caja("TextUnidades")->text(), QStringLiteral("2-."));
    Caja("TextImporte")->clear();
    Teclea("TextImporte", "1O.5e0");
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("1.50"));
}

// A text pasted into the units, past the key filter, is read through Val.
TEST_F(Mostrador, APastedUnitsTextCountsAsTheNumberItBeginsWith) {
    Abrir();
    Escanea("MAR500");
    Caja("TextUnidades")->setText("3 uds");
    Intro();
    ASSERT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("37.50"));
    EXPECT_TRUE(ventana->SentenciaLinea(Ticket()->item(0)->text()).endsWith("'MARTILLO CARPINTERO 500G" +
                                                                            vb::Space(23) + "', 12.50, 3, 37.50, 21)"));
}

TEST_F(Mostrador, ADoubleClickTakesALineBackToTheEntryRow) {
    Abrir();
    Vende("MAR500", "2");
    Vende("LEC1", "5");
    DobleClicEnLinea(0);
    ASSERT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Caja("Textreferencia")->text(), QStringLiteral("MAR500") + vb::Space(7));
    EXPECT_EQ(Caja("Textdescripcion")->text(), QStringLiteral("MARTILLO CARPINTERO 500G") + vb::Space(23));
    EXPECT_EQ(Caja("TextUnidades")->text(), QStringLiteral("2    "));
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("12.50"));
    EXPECT_EQ(ventana->ivaactual(), 21.0f);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("5.20"));
    EXPECT_EQ(Etiqueta("LabelImporte")->text(), QStringLiteral("5.20"));
    EXPECT_EQ(Etiqueta("LabelIva1")->text(), QStringLiteral("21"));
    EXPECT_EQ(Etiqueta("LabelIva1Total")->text(), QStringLiteral("0.00"));
    EXPECT_EQ(Etiqueta("LabelIva3Total")->text(), QStringLiteral("0.20"));
    // Enter in the units puts it back.
    EXPECT_EQ(Foco(), Caja("TextUnidades"));
    Intro();
    EXPECT_EQ(Ticket()->count(), 2);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("30.20"));
}

// The price comes back as the line total over the units, in two decimals.
TEST_F(Mostrador, ThePriceTakenBackIsTheTotalOverTheUnits) {
    Abrir();
    Teclea("Textreferencia", "LIBRE");
    Teclea("Textdescripcion", "TERCIOS");
    Teclea("TextUnidades", "3");
    Teclea("TextImporte", "0.333");
    Intro();
    EXPECT_EQ(vel::ticket::Importe(Ticket()->item(0)->text()), QStringLiteral("    1.00"));
    DobleClicEnLinea(0);
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("0.33"));
}

// Taking out a line whose slot is empty labels the second slot "7".
TEST_F(Mostrador, RemovingALineWhoseSlotIsEmptyLabelsItSeven) {
    Abrir();
    Vende("ANT7", "1");
    EXPECT_EQ(Etiqueta("LabelIva2")->text(), QStringLiteral("10"));
    Etiqueta("LabelIva2")->setText("");
    Etiqueta("LabelIva2Total")->setText("");
    DobleClicEnLinea(0);
    EXPECT_EQ(Etiqueta("LabelIva2")->text(), QStringLiteral("7"));
    EXPECT_EQ(Etiqueta("LabelIva2Total")->text(), QStringLiteral("-0.70"));
}

TEST_F(Mostrador, BorrarClearsTheEntryRowOnly) {
    Abrir();
    Vende("MAR500", "1");
    Escanea("LEC1");
    Teclea("TextUnidades", "4");
    Pulsa("Commandborrar");
    for (const char* caja : {"Textreferencia", "Textdescripcion", "TextUnidades", "TextImporte"})
        EXPECT_EQ(Caja(caja)->text(), QString()) << caja;
    EXPECT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("12.50"));
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
}

TEST_F(Mostrador, EveryBoxSelectsItsTextOnTheFocus) {
    Abrir();
    Escanea("MAR500");
    Teclea("TextUnidades", "2");
    vb::SetFocus(Caja("TextImporte"));
    Asentar();
    EXPECT_EQ(Caja("TextImporte")->selectedText(), QStringLiteral("12.500"));
}

} // namespace
