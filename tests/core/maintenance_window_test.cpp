// The maintenance window shared by the windows that edit a table: a window
// hands over its controls typed, and one that lacks a control the pattern
// needs does not get built. These checks are plain code, not assertions, so
// they hold in the program's optimised build (NDEBUG) as in any other.
#include "core/code_list_window.h"
#include "core/window_controls.h"
#include "runtime/forms.h"
#include "ui_ventana_de_marcos.h"
#include "ui_ventana_sin_lista.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// How the window below hands over its code list and its accept button.
enum class Entrega {
    Completa,         // a code list of its own, every control as uic gives it
    ListaPorNombre,   // looks its code list up by name: the .ui has none
    ListaNula,        // hands over no code list at all
    AceptarPorNombre, // looks its accept button up by the pattern's spelling
    AceptarAjeno,     // hands over another window's button
};

class VentanaSinLista : public vel::CodeListWindow {
public:
    explicit VentanaSinLista(Entrega entrega) {
        ui.setupUi(this);
        QPushButton* aceptar = ui.CommandAceptar;
        vb::ComboBox* lista = nullptr;
        switch (entrega) {
        case Entrega::Completa: break;
        case Entrega::ListaPorNombre: lista = vel::ControlRequerido<vb::ComboBox>(this, "Combocodigo"); break;
        case Entrega::ListaNula: break;
        case Entrega::AceptarPorNombre: aceptar = vel::ControlRequerido<QPushButton>(this, "Commandaceptar"); break;
        case Entrega::AceptarAjeno: aceptar = &otra; break;
        }
        if (entrega != Entrega::ListaPorNombre && entrega != Entrega::ListaNula) lista = new vb::ComboBox(this);
        MontarListaCodigos({.botones = {.Commandnuevo = ui.Commandnuevo,
                                        .Commandmodificar = ui.Commandmodificar,
                                        .Commandconsultar = ui.Commandconsultar,
                                        .Commandborrar = ui.Commandborrar,
                                        .Commandaceptar = aceptar,
                                        .Commandcancelar = ui.Commandcancelar},
                            .texto = {ui.Textcodigo, ui.Textnombre}},
                           {.Textcodigo = ui.Textcodigo, .Textnombre = ui.Textnombre, .Combocodigo = lista});
    }
    void Combocodigo_Click() override {}

protected:
    QString SentenciaLista() const override { return {}; }
    QString EntradaCombo(const vel::Recordset&) const override { return {}; }
    QString SentenciaBuscarCodigo(const QString&) const override { return {}; }
    QString SentenciaInsertar() const override { return {}; }
    QString SentenciaModificar() const override { return {}; }
    QString SentenciaEliminar() const override { return {}; }

private:
    Ui::VentanaSinLista ui;
    QPushButton otra;
};

// The message of the error that building the window raises; empty when it builds.
std::string ErrorAlMontar(Entrega entrega) {
    try {
        VentanaSinLista ventana(entrega);
    } catch (const vel::ControlFaltante& e) {
        return e.what();
    }
    return {};
}

TEST(MaintenanceWindowBuild, AWindowWithEveryControlHandedOverIsBuilt) {
    // The accept button is spelt CommandAceptar in this .ui: handed over typed,
    // its name does not matter.
    EXPECT_EQ(ErrorAlMontar(Entrega::Completa), "");
}

TEST(MaintenanceWindowBuild, AWindowWhoseUiLacksTheCodeListFailsNamingIt) {
    EXPECT_EQ(ErrorAlMontar(Entrega::ListaPorNombre),
              "VentanaSinLista: falta el control Combocodigo (vb::ComboBox)");
}

TEST(MaintenanceWindowBuild, AWindowThatHandsOverNoCodeListFailsNamingIt) {
    EXPECT_EQ(ErrorAlMontar(Entrega::ListaNula), "VentanaSinLista: falta el control Combocodigo (vb::ComboBox)");
}

TEST(MaintenanceWindowBuild, AMisspeltButtonLookedUpByNameFailsNamingIt) {
    EXPECT_EQ(ErrorAlMontar(Entrega::AceptarPorNombre),
              "VentanaSinLista: falta el control Commandaceptar (QPushButton)");
}

TEST(MaintenanceWindowBuild, AButtonOfAnotherWindowIsRefused) {
    EXPECT_EQ(ErrorAlMontar(Entrega::AceptarAjeno),
              "VentanaSinLista: el control Commandaceptar no está dentro de la ventana");
}

TEST(MaintenanceWindowBuild, AControlOfAnotherKindIsMissingToo) {
    QWidget ventana;
    ventana.setObjectName("Fprueba");
    auto* caja = new QLineEdit(&ventana);
    caja->setObjectName("Commandnuevo");
    try {
        vel::ControlRequerido<QPushButton>(&ventana, "Commandnuevo");
        FAIL() << "a text box was taken for a button";
    } catch (const vel::ControlFaltante& e) {
        EXPECT_STREQ(e.what(), "Fprueba: falta el control Commandnuevo (QPushButton)");
    }
}

// A window whose Texto flips its two frames and whose Botones flips the four
// mode buttons only, as the products window states them; its mode buttons
// call Borrar, Texto and Botones.
class VentanaDeMarcos : public vel::MaintenanceWindow {
public:
    Ui::VentanaDeMarcos ui;
    VentanaDeMarcos() {
        ui.setupUi(this);
        MontarVentana({.botones = {.Commandnuevo = ui.Commandnuevo,
                                   .Commandmodificar = ui.Commandmodificar,
                                   .Commandconsultar = ui.Commandconsultar,
                                   .Commandborrar = ui.Commandborrar,
                                   .Commandaceptar = ui.CommandAceptar,
                                   .Commandcancelar = ui.Commandcancelar},
                       .texto = {ui.FrameArticulos, ui.FrameDatos},
                       .borrar = {ui.Textbuscar, ui.Textreferencia, ui.Textcoste, ui.Textgarantia, ui.Checkoferta},
                       .flipaBotones = {ui.Commandnuevo, ui.Commandborrar, ui.Commandconsultar, ui.Commandmodificar},
                       .intro = {ui.Checkoferta}});
        FiltrarTeclas({ui.Textcoste}, vel::TeclasDeNumero);
        FiltrarTeclas({ui.Textgarantia}, vel::SoloDigitos);
    }
    void Commandnuevo_Click() override { EntrarEnModo(vel::Modo::Nuevo); }
    void Commandmodificar_Click() override { EntrarEnModo(vel::Modo::Modificar); }
    void Commandconsultar_Click() override { EntrarEnModo(vel::Modo::Consultar); }
    void Commandborrar_Click() override { EntrarEnModo(vel::Modo::Borrar); }
    void Commandaceptar_Click() override {}

protected:
    // Every mode enabled the frames, so leaving any of them flips them once.
    void SalirDelModo() override {
        Botones();
        Texto();
        Borrar();
    }

private:
    void EntrarEnModo(vel::Modo modo) {
        ModoVentana = modo;
        Borrar();
        Texto();
        Botones();
    }
};

class MaintenanceWindowKeys : public ::testing::Test {
protected:
    VentanaDeMarcos* w = new VentanaDeMarcos;
    void SetUp() override {
        w->show();
        w->activateWindow();
        w->Load();
        asentar();
    }
    void TearDown() override {
        if (!w->IsUnloaded()) delete w;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void asentar() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
    static void pulsar(QWidget* control) {
        QTest::mouseClick(control, Qt::LeftButton);
        asentar();
    }
};

TEST_F(MaintenanceWindowKeys, TextoFlipsTheFramesTheWindowNames) {
    EXPECT_FALSE(w->ui.FrameDatos->isEnabled());
    EXPECT_FALSE(w->ui.FrameArticulos->isEnabled());
    // The boxes keep their own Enabled: only their frame is off.
    EXPECT_TRUE(vb::Enabled(w->ui.Textcoste));
    EXPECT_FALSE(w->ui.Textcoste->isEnabled());
    pulsar(w->ui.Commandnuevo);
    EXPECT_EQ(Letra(w->ModoVentana), "N");
    EXPECT_TRUE(w->ui.FrameDatos->isEnabled());
    EXPECT_TRUE(w->ui.Textcoste->isEnabled());
}

TEST_F(MaintenanceWindowKeys, BotonesFlipsOnlyTheButtonsTheWindowNames) {
    pulsar(w->ui.Commandmodificar);
    EXPECT_FALSE(w->ui.Commandnuevo->isEnabled());
    EXPECT_FALSE(w->ui.Commandmodificar->isEnabled());
    EXPECT_FALSE(w->ui.Commandconsultar->isEnabled());
    EXPECT_FALSE(w->ui.Commandborrar->isEnabled());
    // Aceptar is not in this window's list.
    EXPECT_TRUE(w->ui.CommandAceptar->isEnabled());
}

TEST_F(MaintenanceWindowKeys, CancelarLeavesTheModeAndThenClosesTheWindow) {
    pulsar(w->ui.Commandnuevo);
    QTest::keyClicks(w->ui.Textreferencia, "ab12");
    vb::SetValue(w->ui.Checkoferta, 1);
    pulsar(w->ui.Commandcancelar);
    EXPECT_EQ(Letra(w->ModoVentana), "");
    EXPECT_FALSE(w->IsUnloaded());
    EXPECT_TRUE(w->ui.Commandnuevo->isEnabled());
    EXPECT_FALSE(w->ui.FrameDatos->isEnabled());
    EXPECT_EQ(w->ui.Textreferencia->text(), "");
    EXPECT_EQ(vb::Value(w->ui.Checkoferta), 0);
    pulsar(w->ui.Commandcancelar);
    EXPECT_TRUE(w->IsUnloaded());
}

TEST_F(MaintenanceWindowKeys, EnterMovesOnAndTheNextBoxSelectsItsText) {
    pulsar(w->ui.Commandnuevo);
    w->ui.Textcoste->setText("12.50");
    vb::SetFocus(w->ui.Textreferencia);
    QTest::keyClick(w->ui.Textreferencia, Qt::Key_Return);
    asentar();
    EXPECT_EQ(QApplication::focusWidget(), w->ui.Textcoste);
    EXPECT_EQ(w->ui.Textcoste->selectedText(), "12.50");
    EXPECT_EQ(w->ui.Textreferencia->text(), "");
}

TEST_F(MaintenanceWindowKeys, EnterOnANamedCheckBoxMovesOnToo) {
    pulsar(w->ui.Commandnuevo);
    vb::SetFocus(w->ui.Checkoferta);
    QTest::keyClick(w->ui.Checkoferta, Qt::Key_Return);
    asentar();
    // The mode buttons are off in "N": the next control is Aceptar.
    EXPECT_EQ(QApplication::focusWidget(), w->ui.CommandAceptar);
}

TEST_F(MaintenanceWindowKeys, APriceTakesTheNumberKeysOnly) {
    pulsar(w->ui.Commandnuevo);
    vb::SetFocus(w->ui.Textcoste);
    QTest::keyClicks(w->ui.Textcoste, "-12,5x.75 $");
    EXPECT_EQ(w->ui.Textcoste->text(), "-125.75");
    QTest::keyClick(w->ui.Textcoste, Qt::Key_Backspace);
    EXPECT_EQ(w->ui.Textcoste->text(), "-125.7");
}

TEST_F(MaintenanceWindowKeys, AGuaranteeTakesDigitsOnly) {
    pulsar(w->ui.Commandnuevo);
    vb::SetFocus(w->ui.Textgarantia);
    QTest::keyClicks(w->ui.Textgarantia, "1-2.a3");
    EXPECT_EQ(w->ui.Textgarantia->text(), "123");
}

TEST(KeyFilters, DigitsAndBackspaceOnly) {
    for (int k : std::initializer_list<int>{'0', '5', '9', 8}) {
        int key = k;
        vel::SoloDigitos(key);
        EXPECT_EQ(key, k);
    }
    for (int k : std::initializer_list<int>{'.', '-', 'a', ' ', ',', 13}) {
        int key = k;
        vel::SoloDigitos(key);
        EXPECT_EQ(key, 0) << k;
    }
}

TEST(KeyFilters, NumberKeysAddPointAndMinus) {
    for (int k : std::initializer_list<int>{'0', '9', '.', '-', 8}) {
        int key = k;
        vel::TeclasDeNumero(key);
        EXPECT_EQ(key, k);
    }
    for (int k : std::initializer_list<int>{',', '+', 'e', ' '}) {
        int key = k;
        vel::TeclasDeNumero(key);
        EXPECT_EQ(key, 0) << k;
    }
}

} // namespace
