// The delivery note window on a shop's database: its controls by their
// names and captions, the bound of the years list, the date box, the year box's keys
// and a due date changed on the calendar.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "support/print_to.h"
#include "sales/formalbaranventa.h"
#include "support/shop_folder.h"
#include "support/widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using veltest::settle;

const char* kPedro =
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')";

class DeliveryNoteWindow : public ::testing::Test {
protected:
    veltest::ShopFolder shop{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    veltest::RecordedBoxes& boxes = shop.boxes;
    bool& ended = shop.ended;
    std::unique_ptr<vel::FormAlbaranVenta> w;

    void SetUp() override { shop.Execute(kPedro); }
    void TearDown() override { w.reset(); }
    void open() {
        w = std::make_unique<vel::FormAlbaranVenta>();
        w->show();
        w->activateWindow();
        w->Load();
        settle();
    }
    template <class T> T* control(const char* name) { return veltest::control<T>(w.get(), name); }
    // A note of Pedro's in the given year.
    void note(int year, int number) {
        vel::BaseDatos->Execute(QStringLiteral(
            "INSERT INTO cabecera_albaran_venta VALUES (01, 'AV', %1, %2, '02/03/%1', 00, '', 01, '', '', 'P', "
            "'12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '30', 1, "
            "'0049', '0012', '12', '1234567890', %2, '', '', '', '', '', '', 0, 0, '10', '0', '0', '', 21, 5.2, 0, "
            "'0', 'ES12')").arg(year).arg(number));
    }
};

TEST_F(DeliveryNoteWindow, HasTheControlsOfTheDesignWithTheirCaptions) {
    open();
    const std::pair<const char*, const char*> buttons[] = {
        {"Commandnuevo", "&Nuevo"},           {"Commandborrar", "&Borrar"},     {"Commandconsultar", "C&onsultar"},
        {"Commandmodificar", "&Modificar"},   {"Commandaceptar", "&Aceptar"},   {"Commandcancelar", "&Cancelar"},
        {"CommandImprimir", "Imprimir A&lbarán"}, {"CommandEnviar", "&Enviar Albarán"}};
    for (const auto& [name, caption] : buttons) EXPECT_EQ(control<QPushButton>(name)->text(), QString::fromUtf8(caption));
    for (const char* combo : {"Combonif", "Combocodigo", "Combonombrefiscal", "Combonombrecomercial",
                              "Comboejerciciofactura", "Combonumerofactura", "Comboformapagofactura",
                              "Comborecibosfactura", "ComboProforma"})
        control<vb::ComboBox>(combo);
    EXPECT_EQ(control<QLabel>("Label55")->text(), "Albarán");
    EXPECT_EQ(control<QLabel>("Label85")->text(), "F.Pago");
    EXPECT_EQ(control<QCheckBox>("CheckProforma")->text(), "Imprimir Proforma");
    EXPECT_EQ(control<QLineEdit>("Textfechafactura")->maxLength(), 10);
    auto* tabs = control<QTabWidget>("SSTabclientes");
    ASSERT_EQ(tabs->count(), 4);
    EXPECT_EQ(tabs->tabText(0), "Datos Personales");
    EXPECT_EQ(tabs->tabText(1), "Contactos");
    EXPECT_EQ(tabs->tabText(2), "Datos Facturación");
    EXPECT_EQ(tabs->tabText(3), "Datos Comerciales");
    for (const char* frame : {"Frame1", "Frame2", "Frame3", "Frame4", "Frame5", "Frame7", "Frame8"})
        control<QFrame>(frame);
    // The four customer lists are in Frame2, the lines in Frame7, the foot in Frame8.
    EXPECT_TRUE(control<QFrame>("Frame2")->isAncestorOf(control<QWidget>("Combonif")));
    EXPECT_TRUE(control<QFrame>("Frame7")->isAncestorOf(control<QWidget>("Textreferencia")));
    EXPECT_TRUE(control<QFrame>("Frame8")->isAncestorOf(control<QWidget>("Textiva")));
    auto* proforma = control<vb::ComboBox>("ComboProforma");
    EXPECT_EQ(proforma->ListCount(), 3);
    EXPECT_EQ(proforma->List(0), "Albarán");
    EXPECT_EQ(proforma->List(1), "Proforma");
    EXPECT_EQ(proforma->List(2), "Presupuesto");
    EXPECT_EQ(proforma->ListIndex(), 0);
    EXPECT_FALSE(vb::Enabled(proforma));
    EXPECT_FALSE(vb::Visible(control<QWidget>("Calendario")));
    EXPECT_EQ(control<QLabel>("Titulototalfactura")->text(), "Total Albarán");
    EXPECT_EQ(w->TiendaDocumento, "1");
    EXPECT_EQ(w->ClientePrograma, "FERROBANDA");
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join('\n').toStdString();
}

TEST_F(DeliveryNoteWindow, AnEmptyCustomerTableClosesTheWindowAtOnce) {
    vel::BaseDatos->Execute(QStringLiteral("DELETE FROM clientes"));
    open();
    EXPECT_EQ(boxes.shown, QStringList{"Velmarinda|No hay datos disponibles|0"});
    EXPECT_TRUE(w->IsUnloaded());
}

TEST_F(DeliveryNoteWindow, AHundredYearsOfNotesAreOfferedAndTheHundredAndFirstStops) {
    for (int year = 1927; year <= 2026; ++year) note(year, 1);
    open();
    vb::RunEvent([this] { w->Commandconsultar_Click(); });
    EXPECT_FALSE(ended);
    EXPECT_EQ(control<vb::ComboBox>("Comboejerciciofactura")->ListCount(), 100);
    vb::RunEvent([this] { w->Commandcancelar_Click(); });

    note(1926, 1);
    vb::RunEvent([this] { w->Commandconsultar_Click(); });
    EXPECT_TRUE(ended);
    ASSERT_FALSE(boxes.shown.isEmpty());
    EXPECT_TRUE(boxes.shown.last().contains("'9'")) << boxes.shown.last().toStdString();
}

TEST_F(DeliveryNoteWindow, TheDateIsRewrittenAsDayMonthYearWhenLeft) {
    open();
    vb::RunEvent([this] { w->Commandnuevo_Click(); });
    settle();
    auto* fecha = control<QLineEdit>("Textfechafactura");
    fecha->setFocus(Qt::MouseFocusReason);
    settle();
    fecha->selectAll();
    QTest::keyClicks(fecha, "1/2/27");
    control<QWidget>("Textreferencia")->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(fecha->text(), "01/02/2027");
}

TEST_F(DeliveryNoteWindow, OnlyDigitsAndBackspaceGoIntoTheYear) {
    open();
    vb::RunEvent([this] { w->Commandnuevo_Click(); });
    settle();
    auto* ano = control<vb::ComboBox>("Comboejerciciofactura");
    ano->setFocus(Qt::MouseFocusReason);
    settle();
    ano->lineEdit()->selectAll();
    QTest::keyClicks(ano, "2a0-2.5");
    EXPECT_EQ(ano->Text(), "2025");
    QTest::keyClick(ano, Qt::Key_Backspace);
    EXPECT_EQ(ano->Text(), "202");
}

TEST_F(DeliveryNoteWindow, ADayPickedOnTheCalendarReplacesTheChosenDueDate) {
    open();
    vb::RunEvent([this] { w->Commandnuevo_Click(); });
    auto* formas = control<vb::ComboBox>("Comboformapagofactura");
    formas->SetListIndex(formas->findText("369"));
    auto* recibos = control<vb::ComboBox>("Comborecibosfactura");
    ASSERT_EQ(recibos->ListCount(), 3);
    recibos->SetListIndex(1);
    auto* calendario = control<vb::CalendarControl>("Calendario");
    EXPECT_TRUE(vb::Visible(calendario));
    EXPECT_EQ(calendario->Value(), QDate(2027, 1, 28));
    calendario->SetValue(QDate(2027, 2, 1));
    w->Calendario_Click();
    EXPECT_EQ(recibos->ListCount(), 3);
    EXPECT_EQ(recibos->List(0), "28/12/2026");
    EXPECT_EQ(recibos->List(1), "01/02/2027");
    EXPECT_EQ(recibos->List(2), "26/02/2027");
    EXPECT_EQ(recibos->ListIndex(), 1);
    // Getting the focus in another field hides it.
    control<QWidget>("Textreferencia")->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_FALSE(vb::Visible(calendario));
}

} // namespace
