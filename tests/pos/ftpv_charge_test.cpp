// Taking the money and storing the sale: TextEntregado, CommandCobrar and the
// keys that charge; Anular.
#include "counter_fixture.h"
#include "pos/ticket_item.h"

namespace {

using veltest::Mostrador;

const QString kCabecera = QStringLiteral(
    "SELECT tienda_cabecera_diaria_ticket, serie_cabecera_diaria_ticket, ejercicio_cabecera_diaria_ticket, "
    "numero_cabecera_diaria_ticket, operador_cabecera_diaria_ticket, nombre_operador_cabecera_diaria_ticket, "
    "fecha_cabecera_diaria_ticket, hora_cabecera_diaria_ticket, total_cabecera_diaria_ticket, "
    "descuento_cabecera_diaria_ticket, iva_cabecera_diaria_ticket, cobro1_cabecera_diaria_ticket, "
    "cobro2_cabecera_diaria_ticket, cobro3_cabecera_diaria_ticket, cobro4_cabecera_diaria_ticket "
    "FROM cabecera_diaria_ticket");
const QString kLineas = QStringLiteral(
    "SELECT tienda_detalle_diaria_ticket, serie_detalle_diaria_ticket, ejercicio_detalle_diaria_ticket, "
    "numero_detalle_diaria_ticket, reservado1_detalle_diaria_ticket, reservado4_detalle_diaria_ticket, "
    "referencia_detalle_diaria_ticket, reservado7_detalle_diaria_ticket, descripcion_detalle_diaria_ticket, "
    "pvp_detalle_diaria_ticket, unidades_detalle_diaria_ticket, importe_detalle_diaria_ticket, "
    "neto_detalle_diaria_ticket FROM detalle_diaria_ticket");
const QString kContador = QStringLiteral(
    "SELECT tipo_series, ejercicio_series, tienda_series, serie_series, contador_series FROM series");

TEST_F(Mostrador, MoneyThatCoversTheTotalGivesChangeAndStoresTheSale) {
    Abrir();
    Vende("MAR500", "2");
    Vende("LEC1", "5");
    Teclea("TextEntregado", "50");
    Intro();
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("19.80"));
    EXPECT_EQ(Filas(kContador), QStringList{"VN|2026|1|TI|1"});
    EXPECT_EQ(Filas(kCabecera),
              QStringList{"1|TI|2026|1|1 |OPERADOR|21/11/2026|10:15:30|30.2|0|4.54|0|0|1|0"});
    EXPECT_EQ(Filas(kLineas),
              (QStringList{"1|TI|2026|1|||MAR500       ||MARTILLO CARPINTERO 500G" + vb::Space(23) + "|12.5|2|25|21",
                           "1|TI|2026|1|||LEC1         ||LECHE ENTERA" + vb::Space(35) + "|1.04|5|5.2|4"}));
    // The window is ready for the next customer, the last figures on view.
    EXPECT_EQ(Ticket()->count(), 0);
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("30.20"));
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("19.80"));
    EXPECT_EQ(Etiqueta("LabelImporte")->text(), QString());
    EXPECT_EQ(Etiqueta("LabelIva1")->text(), QString());
    EXPECT_EQ(Caja("TextEntregado")->text(), QString());
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000002"));
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
    EXPECT_EQ(pitidos, 0);
    EXPECT_TRUE(cajas.boxes.empty());
}

TEST_F(Mostrador, TheNextArticleClearsTheLastSaleFromView) {
    Abrir();
    Vende("MAR500", "1");
    Teclea("TextEntregado", "20");
    Intro();
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("7.50"));
    Vende("LEC1", "1");
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("1.04"));
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("0"));
}

TEST_F(Mostrador, MoneyShortOfTheTotalBeepsAndClosesNothing) {
    Abrir();
    Vende("MAR500", "2");
    Teclea("TextEntregado", "20");
    Intro();
    EXPECT_EQ(pitidos, 1);
    EXPECT_EQ(Caja("TextEntregado")->selectedText(), QStringLiteral("20"));
    EXPECT_EQ(Foco(), Caja("TextEntregado"));
    EXPECT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("0"));
    EXPECT_TRUE(Filas(kCabecera).isEmpty());
    EXPECT_TRUE(Filas(kContador).isEmpty());
    // Typed again over the selection: enough now.
    QTest::keyClicks(Caja("TextEntregado"), "30");
    Intro();
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("5.00"));
    EXPECT_EQ(Filas(kCabecera).size(), 1);
}

TEST_F(Mostrador, EnterInAnEmptyMoneyBoxChargesTheExactAmount) {
    Abrir();
    Vende("MAR500", "1");
    vb::SetFocus(Caja("TextEntregado"));
    Intro();
    EXPECT_EQ(Filas(kCabecera).size(), 1);
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("0"));
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("12.50"));
}

TEST_F(Mostrador, OtherKeysInTheMoneyBoxBeepAndAreDropped) {
    Abrir();
    Teclea("TextEntregado", "2a0,5.");
    EXPECT_EQ(Caja("TextEntregado")->text(), QStringLiteral("205."));
    EXPECT_EQ(pitidos, 2);
}

TEST_F(Mostrador, TheExactAmountTypedGivesNoChange) {
    Abrir();
    Vende("MAR500", "1");
    Teclea("TextEntregado", "12.5");
    Intro();
    EXPECT_EQ(Etiqueta("LabelCambio")->text(), QStringLiteral("0.00"));
    EXPECT_EQ(Filas(kCabecera).size(), 1);
}

TEST_F(Mostrador, PageDownChargesFromAnyBox) {
    Abrir();
    Vende("MAR500", "1");
    Escanea("LEC1");
    Tecla(Qt::Key_PageDown);
    EXPECT_EQ(Filas(kCabecera).size(), 1);
    EXPECT_EQ(Filas(kLineas).size(), 1);
    EXPECT_EQ(Ticket()->count(), 0);
}

// With no lines, charging does nothing, by the button or by Page Down.
TEST_F(Mostrador, WithNoLinesChargingDoesNothing) {
    Abrir();
    Tecla(Qt::Key_PageDown);
    Pulsa("CommandCobrar");
    vb::SetFocus(Caja("TextEntregado"));
    Intro();
    EXPECT_TRUE(Filas(kContador).isEmpty());
    EXPECT_TRUE(Filas(kCabecera).isEmpty());
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000001"));
}

TEST_F(Mostrador, FunctionKeysFiveToNineAndTwelveDoNothingVisible) {
    Abrir();
    Vende("MAR500", "1");
    Escanea("LEC1");
    const auto antes = Ticket()->item(0)->text();
    for (Qt::Key f : {Qt::Key_F5, Qt::Key_F6, Qt::Key_F7, Qt::Key_F8, Qt::Key_F9, Qt::Key_F12}) Tecla(f);
    for (const char* b : {"CommandCobros", "CommandPagos", "CommandCambio", "CommandCajon", "CommandConfig",
                          "CommandSuspender"})
        Pulsa(b);
    EXPECT_EQ(Ticket()->count(), 1);
    EXPECT_EQ(Ticket()->item(0)->text(), antes);
    EXPECT_EQ(Caja("Textreferencia")->text(), QStringLiteral("LEC1"));
    EXPECT_EQ(Etiqueta("Labeltotal")->text(), QStringLiteral("12.50"));
    EXPECT_TRUE(Filas(kCabecera).isEmpty());
    EXPECT_TRUE(cajas.boxes.empty());
    EXPECT_EQ(pitidos, 0);
    EXPECT_FALSE(terminado);
}

TEST_F(Mostrador, TicketsOfTheDayTakeConsecutiveNumbers) {
    Abrir();
    for (int i = 0; i < 3; ++i) {
        Vende("TOR440", "10");
        Tecla(Qt::Key_PageDown);
    }
    EXPECT_EQ(Filas("SELECT numero_cabecera_diaria_ticket FROM cabecera_diaria_ticket"),
              (QStringList{"1", "2", "3"}));
    EXPECT_EQ(Filas(kContador), QStringList{"VN|2026|1|TI|3"});
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000004"));
}

// The number is taken afresh when charging: a number typed over the proposal
// is not the one stored.
TEST_F(Mostrador, TheNumberIsTakenAfreshWhenCharging) {
    Abrir();
    Vende("TOR440", "10");
    Lista("ComboTicket")->SetText("000050");
    Sql("INSERT INTO series VALUES ('VN', 2026, 1, 'TI', 8)");
    Tecla(Qt::Key_PageDown);
    EXPECT_EQ(Filas("SELECT numero_cabecera_diaria_ticket FROM cabecera_diaria_ticket"), QStringList{"9"});
    EXPECT_EQ(Filas(kContador), QStringList{"VN|2026|1|TI|9"});
}

TEST_F(Mostrador, DiscountAndVatGoIntoTheHeader) {
    Abrir();
    Vende("MAR500", "1");
    Vende("ANT7", "1");
    Vende("LEC1", "1");
    Teclea("TextDescuentoTotal", "1.5");
    Tecla(Qt::Key_PageDown);
    // The discount is stored, not taken off the total.
    EXPECT_EQ(Filas("SELECT total_cabecera_diaria_ticket, descuento_cabecera_diaria_ticket, "
                    "iva_cabecera_diaria_ticket FROM cabecera_diaria_ticket"),
              QStringList{"24.24|1.5|2.91"});
}

// A sale is stored whole or not at all: a line whose description breaks its
// statement ends the program, and the end rolls the sale back, so neither the
// counter nor the header nor the lines before it stay behind.
TEST_F(Mostrador, ALineThatFailsLeavesNothingOfTheSale) {
    Sql(veltest::Producto("DOB", "LLAVE D''ORO", "3", 1));
    Abrir();
    Vende("TOR440", "1");
    Vende("DOB", "1");
    Tecla(Qt::Key_PageDown);
    EXPECT_TRUE(terminado);
    EXPECT_EQ(Filas(kContador), QStringList{});
    EXPECT_EQ(Filas("SELECT numero_cabecera_diaria_ticket FROM cabecera_diaria_ticket"), QStringList{});
    EXPECT_EQ(Filas("SELECT referencia_detalle_diaria_ticket FROM detalle_diaria_ticket"), QStringList{});
}

TEST_F(Mostrador, AnularAsksAndOnYesDropsTheTicket) {
    Abrir();
    Vende("MAR500", "1");
    cajas.answers = {vb::vbNo};
    Pulsa("CommandAnular");
    ASSERT_EQ(cajas.boxes.size(), 1u);
    EXPECT_EQ(cajas.boxes[0].text, QStringLiteral(" ¿Desea anular el ticket actual?"));
    EXPECT_EQ(cajas.boxes[0].title, QStringLiteral("Advertencia"));
    EXPECT_EQ(cajas.boxes[0].style, vb::vbYesNo);
    EXPECT_EQ(Ticket()->count(), 1);
    cajas.answers = {vb::vbYes};
    Pulsa("CommandAnular");
    EXPECT_EQ(Ticket()->count(), 0);
    EXPECT_EQ(Etiqueta("LabelImporte")->text(), QString());
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
    // Nothing reaches the database and the number is not used.
    EXPECT_TRUE(Filas(kContador).isEmpty());
    EXPECT_TRUE(Filas(kCabecera).isEmpty());
    EXPECT_EQ(Lista("ComboTicket")->Text(), QStringLiteral("000001"));
}

TEST_F(Mostrador, AnularWithNoLinesAsksNothing) {
    Abrir();
    Pulsa("CommandAnular");
    EXPECT_TRUE(cajas.boxes.empty());
    EXPECT_EQ(Foco(), Caja("Textreferencia"));
}

} // namespace
