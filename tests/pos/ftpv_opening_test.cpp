// Opening the counter: the context lists, the ticket number, the figures at 0.
#include "counter_fixture.h"

namespace {

using veltest::Mostrador;

TEST_F(Mostrador, OpeningShowsStoreOperatorAndTheFirstTicketOfTheYear) {
    Abrir();
    EXPECT_EQ(Lista("ComboTienda")->Text(), QStringLiteral("1 /CENTRAL"));
    EXPECT_EQ(Lista("ComboOperador")->Text(), QStringLiteral("1 /OPERADOR"));
    // No warehouse yet: the list stays empty.
    EXPECT_EQ(Lista("ComboAlmacen")->ListCount(), 0);
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000001"));
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("0"));
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("0"));
    EXPECT_EQ(Etiqueta("LabelImporte")->text(), QString());
    EXPECT_EQ(ventana->ClientePrograma(), QStringLiteral("FERROBANDA"));
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
    EXPECT_FALSE(terminado);
}

TEST_F(Mostrador, EveryListEntryIsTheCodeInTwoPlacesASlashAndTheName) {
    Sql("INSERT INTO tienda VALUES (12, 'NORTE', '')");
    Sql("INSERT INTO almacen VALUES (3, 'TRASTIENDA', '')");
    Sql("INSERT INTO almacen VALUES (1, 'PRINCIPAL', '')");
    Abrir();
    auto* tiendas = Lista("ComboTienda");
    ASSERT_EQ(tiendas->ListCount(), 2);
    EXPECT_EQ(tiendas->List(1), QStringLiteral("12/NORTE"));
    auto* almacenes = Lista("ComboAlmacen");
    ASSERT_EQ(almacenes->ListCount(), 2);
    EXPECT_EQ(almacenes->List(0), QStringLiteral("1 /PRINCIPAL"));
    EXPECT_EQ(almacenes->Text(), QStringLiteral("1 /PRINCIPAL"));
}

TEST_F(Mostrador, TheNumberFollowsTheCounterOfTheStoreAndYear) {
    Sql("INSERT INTO series VALUES ('VN', 2026, 1, 'TI', 7)");
    Sql("INSERT INTO series VALUES ('VN', 2025, 1, 'TI', 90)");
    Sql("INSERT INTO series VALUES ('VN', 2026, 2, 'TI', 40)");
    Sql("INSERT INTO series VALUES ('VN', 2026, 1, 'AV', 300)");
    Sql("INSERT INTO tienda VALUES (2, 'NORTE', '')");
    Abrir();
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000008"));
    // Another store shows its own counter.
    Lista("ComboTienda")->SetListIndex(1);
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000041"));
}

TEST_F(Mostrador, AnEmptyTagInConfigMeansFerrobanda) {
    Config("\"\",\"CENTRAL\"\n");
    Abrir();
    EXPECT_EQ(ventana->ClientePrograma(), QStringLiteral("FERROBANDA"));
}

TEST_F(Mostrador, TheTagIsTheFirstValueOfConfig) {
    Config("LAPRESA,CENTRAL\n");
    Abrir();
    EXPECT_EQ(ventana->ClientePrograma(), QStringLiteral("LAPRESA"));
}

// The counter reads config.ini with no trap: without it the program ends.
TEST_F(Mostrador, WithoutConfigTheProgramEnds) {
    QFile::remove(dir.filePath("config.ini"));
    Abrir();
    EXPECT_TRUE(terminado);
    ASSERT_EQ(cajas.boxes.size(), 1u);
    EXPECT_TRUE(cajas.boxes[0].text.contains("53"));
}

} // namespace
