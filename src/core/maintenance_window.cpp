#include "core/maintenance_window.h"

#include "core/record_store.h"
#include "core/session.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"

namespace vel {

MaintenanceWindow::MaintenanceWindow(QWidget* parent) : vb::Form(parent) {}

void MaintenanceWindow::MontarVentana(const QList<QLineEdit*>& campos) {
    Textcodigo = vb::Control<QLineEdit>(this, QStringLiteral("Textcodigo"));
    Textnombre = vb::Control<QLineEdit>(this, QStringLiteral("Textnombre"));
    Combocodigo = vb::Control<vb::ComboBox>(this, QStringLiteral("Combocodigo"));
    Commandnuevo = vb::Control<QPushButton>(this, QStringLiteral("Commandnuevo"));
    Commandmodificar = vb::Control<QPushButton>(this, QStringLiteral("Commandmodificar"));
    Commandconsultar = vb::Control<QPushButton>(this, QStringLiteral("Commandconsultar"));
    Commandborrar = vb::Control<QPushButton>(this, QStringLiteral("Commandborrar"));
    Commandaceptar = vb::Control<QPushButton>(this, QStringLiteral("Commandaceptar"));
    Commandcancelar = vb::Control<QPushButton>(this, QStringLiteral("Commandcancelar"));
    Q_ASSERT(Textcodigo && Textnombre && Combocodigo && Commandnuevo && Commandmodificar &&
             Commandconsultar && Commandborrar && Commandaceptar && Commandcancelar);
    Campos = campos;

    OnClick(Commandnuevo, [this] { Commandnuevo_Click(); });
    OnClick(Commandmodificar, [this] { Commandmodificar_Click(); });
    OnClick(Commandconsultar, [this] { Commandconsultar_Click(); });
    OnClick(Commandborrar, [this] { Commandborrar_Click(); });
    OnClick(Commandaceptar, [this] { Commandaceptar_Click(); });
    OnClick(Commandcancelar, [this] { Commandcancelar_Click(); });
    OnClick(Combocodigo, [this] { Combocodigo_Click(); });
    OnKeyPress(Combocodigo, [this](int& KeyAscii) { Combocodigo_KeyPress(KeyAscii); });
    OnLostFocus(Textcodigo, [this] { Textcodigo_LostFocus(); });
    OnChange(Textcodigo, [this] { Textcodigo_Change(); });

    // Every text box of the window (not the edit part of a combo): Enter moves
    // on, and the box selects its whole text when it gets the focus.
    for (QLineEdit* caja : findChildren<QLineEdit*>()) {
        if (qobject_cast<QComboBox*>(caja->parentWidget())) continue;
        OnKeyPress(caja, [this, caja](int& KeyAscii) { Texto_KeyPress(caja, KeyAscii); });
        OnGotFocus(caja, [caja] { vb::SelectAll(caja); });
    }
}

// ---- The three procedures ---------------------------------------------------

void MaintenanceWindow::Borrar() {
    for (QLineEdit* campo : Campos) campo->setText(QString());
}

void MaintenanceWindow::Texto() {
    for (QLineEdit* campo : Campos) vb::ToggleEnabled(campo);
}

void MaintenanceWindow::Botones() {
    vb::ToggleEnabled(Commandnuevo);
    vb::ToggleEnabled(Commandborrar);
    vb::ToggleEnabled(Commandconsultar);
    vb::ToggleEnabled(Commandmodificar);
    vb::ToggleEnabled(Commandaceptar);
}

// ---- Events ---------------------------------------------------------------------

void MaintenanceWindow::Form_Load() {
    // The fields are built enabled: the first Texto disables them.
    Texto();
    vb::SetVisible(Combocodigo, false);
    ModoVentana = QString();
}

void MaintenanceWindow::Commandnuevo_Click() {
    ModoVentana = QStringLiteral("N");
    Texto();
    Botones();
    vb::SetFocus(Textcodigo);
}

void MaintenanceWindow::Commandmodificar_Click() {
    ModoVentana = QStringLiteral("M");
    Texto();
    BotonesDeModo();
    LlenarCombocodigo();
}

// Consult and delete leave the fields disabled: no Texto here.
void MaintenanceWindow::Commandconsultar_Click() {
    ModoVentana = QStringLiteral("O");
    BotonesDeModo();
    LlenarCombocodigo();
}

void MaintenanceWindow::Commandborrar_Click() {
    ModoVentana = QStringLiteral("B");
    BotonesDeModo();
    LlenarCombocodigo();
}

void MaintenanceWindow::LlenarCombocodigo() {
    vb::SetVisible(Combocodigo, true);
    Combocodigo->Clear();
    auto Registro = BaseDatos->OpenRecordset(SentenciaLista());
    while (!Registro->Eof()) {
        Combocodigo->AddItem(EntradaCombo(*Registro));
        Registro->MoveNext();
    }
    if (Combocodigo->ListCount() >= 1) {
        Combocodigo->SetListIndex(0); // raises Combocodigo_Click
        vb::SetFocus(Combocodigo);
    } else {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
        vb::SetVisible(Combocodigo, false);
        Commandcancelar_Click();
    }
}

void MaintenanceWindow::Commandcancelar_Click() {
    const bool enModo = !vb::Enabled(Commandnuevo) && !vb::Enabled(Commandmodificar) &&
                        !vb::Enabled(Commandconsultar) && !vb::Enabled(Commandborrar);
    if (enModo) {
        Botones();
        Texto();
        Borrar();
        // Consult and delete never enabled the fields: flip them back off.
        if (ModoVentana == QLatin1String("B") || ModoVentana == QLatin1String("O")) Texto();
        vb::SetVisible(Combocodigo, false);
        ModoVentana = QString();
    } else {
        // Idle: Cancelar is how the window is closed.
        Unload();
    }
}

void MaintenanceWindow::Commandaceptar_Click() {
    if (ModoVentana == QLatin1String("N")) {
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
    } else if (ModoVentana == QLatin1String("M")) {
        if (Textcodigo->text() != QString() && Textnombre->text() != QString()) {
            // The statement takes the code box as it stands, not the combo's
            // entry: an overtyped code updates another record, or none.
            BaseDatos->Execute(SentenciaModificar());
            if (Combocodigo->ListCount() >= 1) {
                Combocodigo->SetListIndex(0);
                vb::SetFocus(Combocodigo);
            } else {
                vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
                vb::SetVisible(Combocodigo, false);
                Commandcancelar_Click();
            }
        } else {
            vb::MsgBox(QStringLiteral("Se necesita un Código y un Nombre"), vb::vbOKOnly,
                       QStringLiteral("Atención"));
            vb::SetFocus(Textnombre);
        }
    } else if (ModoVentana == QLatin1String("B")) {
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
    } else if (ModoVentana == QLatin1String("O")) {
        Commandcancelar_Click();
    }
}

void MaintenanceWindow::Textcodigo_LostFocus() {
    // The only guard against a duplicate key, and only as the focus leaves the box.
    if (ModoVentana == QLatin1String("N") && Textcodigo->text() != QString()) {
        auto Registro = BaseDatos->OpenRecordset(SentenciaBuscarCodigo(Textcodigo->text()));
        if (Registro->AbsolutePosition() != -1) {
            vb::MsgBox(QStringLiteral("Registro duplicado"), vb::vbOKOnly);
            vb::SetFocus(Textcodigo);
        }
    }
}

void MaintenanceWindow::Textcodigo_Change() {
    // Meant as a digits-only filter for the code, but it tests a variable of its
    // own that is never the key the user pressed, so it lets every character
    // through: the code box takes any text and Val reduces it in the statements.
    // The windows are used that way; leave it without effect.
    [[maybe_unused]] int KeyAscii = 0;
    if (KeyAscii != 8 && (KeyAscii < 48 || KeyAscii > 57)) {
        KeyAscii = 0;
    }
}

// ---- Keyboard ---------------------------------------------------------------------

void MaintenanceWindow::IntroComoTabulador(int& KeyAscii) {
    if (KeyAscii == 13) {
        KeyAscii = 0;
        vb::SendKeys(QStringLiteral("{tab}"));
    }
}

void MaintenanceWindow::Texto_KeyPress(QLineEdit*, int& KeyAscii) { IntroComoTabulador(KeyAscii); }

void MaintenanceWindow::Combocodigo_KeyPress(int& KeyAscii) { IntroComoTabulador(KeyAscii); }

} // namespace vel
