#include "core/code_list_window.h"

#include "core/record_store.h"
#include "core/session.h"
#include "core/window_controls.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"

namespace vel {

CodeListWindow::CodeListWindow(QWidget* parent) : MaintenanceWindow(parent) {}

void CodeListWindow::MontarListaCodigos(const ControlesMantenimiento& patron, const ControlesListaCodigos& lista) {
    ExigirControl(this, lista.Textcodigo, QStringLiteral("Textcodigo"), "QLineEdit");
    ExigirControl(this, lista.Textnombre, QStringLiteral("Textnombre"), "QLineEdit");
    ExigirControl(this, lista.Combocodigo, QStringLiteral("Combocodigo"), "vb::ComboBox");
    ControlesMantenimiento controles = patron;
    // Enter in the combo moves on as in the boxes.
    controles.intro.append(lista.Combocodigo);
    MontarVentana(controles);

    Textcodigo = lista.Textcodigo;
    Textnombre = lista.Textnombre;
    Combocodigo = lista.Combocodigo;
    OnClick(Combocodigo, [this] { Combocodigo_Click(); });
    OnLostFocus(Textcodigo, [this] { Textcodigo_LostFocus(); });
    OnChange(Textcodigo, [this] { Textcodigo_Change(); });
}

void CodeListWindow::Form_Load() {
    MaintenanceWindow::Form_Load();
    vb::SetVisible(Combocodigo, false);
}

void CodeListWindow::SalirDelModo() {
    MaintenanceWindow::SalirDelModo();
    vb::SetVisible(Combocodigo, false);
}

void CodeListWindow::Commandnuevo_Click() {
    ModoVentana = Modo::Nuevo;
    Texto();
    Botones();
    vb::SetFocus(Textcodigo);
}

void CodeListWindow::Commandmodificar_Click() {
    ModoVentana = Modo::Modificar;
    Texto();
    BotonesDeModo();
    LlenarCombocodigo();
}

// Consult and delete leave the fields disabled: no Texto here.
void CodeListWindow::Commandconsultar_Click() {
    ModoVentana = Modo::Consultar;
    BotonesDeModo();
    LlenarCombocodigo();
}

void CodeListWindow::Commandborrar_Click() {
    ModoVentana = Modo::Borrar;
    BotonesDeModo();
    LlenarCombocodigo();
}

void CodeListWindow::LlenarCombocodigo() {
    vb::SetVisible(Combocodigo, true);
    Combocodigo->Clear();
    auto Registro = BaseDatos->OpenRecordset(SentenciaLista());
    while (!Registro->Eof()) {
        Combocodigo->AddItem(EntradaCombo(*Registro));
        Registro->MoveNext();
    }
    PrimeraEntradaOReposo();
}

void CodeListWindow::PrimeraEntradaOReposo() {
    if (Combocodigo->ListCount() >= 1) {
        Combocodigo->SetListIndex(0); // raises Combocodigo_Click
        vb::SetFocus(Combocodigo);
    } else {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
        vb::SetVisible(Combocodigo, false);
        Commandcancelar_Click();
    }
}

void CodeListWindow::Commandaceptar_Click() {
    if (ModoVentana == Modo::Nuevo) {
        if (Textcodigo->text() != QString() && Textnombre->text() != QString()) {
            BaseDatos->Execute(SentenciaInsertar());
            // The window stays in "N", ready for the next record.
            Borrar();
            vb::SetFocus(Textcodigo);
        } else {
            vb::MsgBox(QStringLiteral("Se necesita un Código y un Nombre"), vb::vbOKOnly,
                       QStringLiteral("Atención"));
            vb::SetFocus(Textcodigo);
        }
    } else if (ModoVentana == Modo::Modificar) {
        if (Textcodigo->text() != QString() && Textnombre->text() != QString()) {
            // The statement takes the code box as it stands, not the combo's
            // entry: an overtyped code updates another record, or none.
            BaseDatos->Execute(SentenciaModificar());
            PrimeraEntradaOReposo();
        } else {
            vb::MsgBox(QStringLiteral("Se necesita un Código y un Nombre"), vb::vbOKOnly,
                       QStringLiteral("Atención"));
            vb::SetFocus(Textnombre);
        }
    } else if (ModoVentana == Modo::Borrar) {
        // 276 = Yes/No + critical icon + second button (No) default.
        if (vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el registro?"), 276,
                       QStringLiteral("Advertencia")) == vb::vbYes) {
            BaseDatos->Execute(SentenciaEliminar());
            // Botones puts the buttons back as idle, and Commandborrar_Click flips
            // them into "B" again and refills the list: the window stays in "B"
            // on the next record.
            Botones();
            Commandborrar_Click();
        }
    } else if (ModoVentana == Modo::Consultar) {
        Commandcancelar_Click();
    }
}

void CodeListWindow::Textcodigo_LostFocus() {
    // The only guard against a duplicate key, and only as the focus leaves the box.
    if (ModoVentana == Modo::Nuevo && Textcodigo->text() != QString()) {
        auto Registro = BaseDatos->OpenRecordset(SentenciaBuscarCodigo(Textcodigo->text()));
        if (Registro->AbsolutePosition() != -1) {
            vb::MsgBox(QStringLiteral("Registro duplicado"), vb::vbOKOnly);
            vb::SetFocus(Textcodigo);
        }
    }
}

void CodeListWindow::Textcodigo_Change() {
    // Meant as a digits-only filter for the code, but it tests a variable of its
    // own that is never the key the user pressed, so it lets every character
    // through: the code box takes any text and Val reduces it in the statements.
    // The windows are used that way; leave it without effect.
    [[maybe_unused]] int KeyAscii = 0;
    if (KeyAscii != 8 && (KeyAscii < 48 || KeyAscii > 57)) {
        KeyAscii = 0;
    }
}

} // namespace vel
