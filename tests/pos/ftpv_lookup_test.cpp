// Finding an article: by reference or any of its bar codes, and by a piece of
// its description.
#include "counter_fixture.h"

namespace {

using veltest::Mostrador;

TEST_F(Mostrador, AReferenceFindsTheArticleAndGoesToTheUnits) {
    Abrir();
    Escanea("TOR440");
    EXPECT_EQ(Caja("Textreferencia")->text(), QStringLiteral("TOR440"));
    EXPECT_EQ(Caja("Textdescripcion")->text(), QStringLiteral("TORNILLO 4X40"));
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("0.120"));
    EXPECT_EQ(ventana->ivaactual(), 21.0f);
    EXPECT_EQ(Foco(), Caja("TextUnidades"));
    EXPECT_TRUE(cajas.boxes.empty());
}

// Each of the three bar codes finds the same article as the reference; the
// reference box keeps the code that was scanned.
TEST_F(Mostrador, EachBarCodeFindsWhatTheReferenceFinds) {
    Abrir();
    for (const char* codigo : {"8410000000011", "8410000000028", "8410000000035"}) {
        Escanea(codigo);
        EXPECT_EQ(Caja("Textreferencia")->text(), QString::fromLatin1(codigo));
        EXPECT_EQ(Caja("Textdescripcion")->text(), QStringLiteral("TORNILLO 4X40")) << codigo;
        EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("0.120")) << codigo;
        EXPECT_EQ(ventana->ivaactual(), 21.0f) << codigo;
        EXPECT_EQ(Foco(), Caja("TextUnidades")) << codigo;
        Pulsa("Commandborrar");
    }
    EXPECT_TRUE(cajas.boxes.empty());
}

TEST_F(Mostrador, AScannedCodeThatMatchesNothingAddsNothing) {
    Abrir();
    Escanea("9999999999999");
    EXPECT_EQ(cajas.texts, QStringList{"Código no encontrado"});
    EXPECT_EQ(cajas.boxes[0].title, vb::AppTitle());
    EXPECT_EQ(Caja("Textdescripcion")->text(), QString());
    EXPECT_EQ(Ticket()->count(), 0);
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
}

TEST_F(Mostrador, EnterInAnEmptyReferenceGoesToTheDescription) {
    Abrir();
    Intro();
    EXPECT_EQ(Foco(), Caja("Textdescripcion"));
    EXPECT_TRUE(cajas.boxes.empty());
}

// "TORN" is in two descriptions: the first article stored is the one found,
// and only that one.
TEST_F(Mostrador, ADescriptionFindsTheFirstArticleThatHoldsTheText) {
    Abrir();
    Intro();
    Teclea("Textdescripcion", "ORNILL");
    Intro();
    EXPECT_EQ(Caja("Textreferencia")->text(), QStringLiteral("TOR440"));
    EXPECT_EQ(Caja("Textdescripcion")->text(), QStringLiteral("TORNILLO 4X40"));
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("0.120"));
    EXPECT_EQ(Foco(), Caja("TextUnidades"));
}

TEST_F(Mostrador, TheTextMayStandAnywhereInTheDescription) {
    Abrir();
    Teclea("Textdescripcion", "banco");
    Intro();
    EXPECT_EQ(Caja("Textreferencia")->text(), QStringLiteral("TORBAN"));
    EXPECT_EQ(Caja("TextImporte")->text(), QStringLiteral("45.000"));
}

TEST_F(Mostrador, ADescriptionThatMatchesNothing) {
    Abrir();
    Teclea("Textdescripcion", "DESTORNILLADOR");
    Intro();
    EXPECT_EQ(cajas.texts, QStringList{"Descripción no encontrada"});
    EXPECT_EQ(Caja("Textreferencia")->text(), QString());
}

TEST_F(Mostrador, TheRateComesFromTheVatTypeOfTheArticle) {
    Abrir();
    Escanea("PAN1");
    EXPECT_EQ(ventana->ivaactual(), 10.0f);
    Pulsa("Commandborrar");
    Escanea("LEC1");
    EXPECT_EQ(ventana->ivaactual(), 4.0f);
    Pulsa("Commandborrar");
    Escanea("ANT7");
    EXPECT_EQ(ventana->ivaactual(), 7.0f);
}

TEST_F(Mostrador, AnArticleOfAnUnknownVatTypeIsAt21) {
    Abrir();
    Escanea("SINIVA");
    EXPECT_EQ(ventana->ivaactual(), 21.0f);
}

// A quote in the reference breaks the statement: the program ends with the
// runtime's message, and nothing of the ticket is stored.
TEST_F(Mostrador, AQuoteInTheReferenceEndsTheProgram) {
    Abrir();
    Vende("TOR440", "2");
    Escanea("O'BRIEN");
    EXPECT_TRUE(terminado);
    ASSERT_EQ(cajas.boxes.size(), 1u);
    EXPECT_EQ(cajas.boxes[0].style, vb::vbCritical);
    EXPECT_TRUE(cajas.boxes[0].text.startsWith("Se ha producido el error '3075'")) << cajas.boxes[0].text.toStdString();
    EXPECT_TRUE(Filas("SELECT numero_cabecera_diaria_ticket FROM cabecera_diaria_ticket").isEmpty());
    EXPECT_TRUE(Filas("SELECT numero_detalle_diaria_ticket FROM detalle_diaria_ticket").isEmpty());
    EXPECT_TRUE(Filas("SELECT contador_series FROM series").isEmpty());
}

} // namespace
