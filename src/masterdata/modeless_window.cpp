#include "masterdata/modeless_window.h"

#include "core/session.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"

namespace vel {

void PintaConFoco(QWidget* box) {
    vb::SetBackColor(box, kFondoConFoco);
    vb::SetForeColor(box, kLetraConFoco);
}

void PintaSinFoco(QWidget* box) {
    vb::SetBackColor(box, kFondoSinFoco);
    vb::SetForeColor(box, kLetraSinFoco);
}

void LlenaCombo(vb::ComboBox* combo, const QString& sql,
                const std::function<QString(const Recordset&)>& entrada) {
    combo->Clear();
    auto rs = BaseDatos->OpenRecordset(sql);
    if (rs->AbsolutePosition() > -1) {
        while (!rs->Eof()) {
            combo->AddItem(entrada(*rs));
            rs->MoveNext();
        }
        rs->Close();
    }
    if (combo->ListCount() >= 1)
        combo->SetListIndex(0);
}

void BorradoConPregunta(Recordset& rs, const QString& noExiste, const QString& pregunta,
                        const std::function<void(Recordset&)>& borrar) {
    if (rs.AbsolutePosition() == -1) {
        vb::MsgBox(noExiste, vb::vbInformation, kTituloError);
        return;
    }
    if (vb::MsgBox(pregunta, vb::vbYesNo, kTituloConfirmacion) == vb::vbYes)
        borrar(rs);
    else
        vb::MsgBox(kBorradoCancelado, vb::vbInformation, kTituloInformacion);
}

ModelessWindow::ModelessWindow(QWidget* parent) : vb::Form(parent) {}

void ModelessWindow::BotonCancelar_Click() {
    Unload();
}

void ModelessWindow::CampoConFoco(QLineEdit* box, QPushButton* botonAceptar) {
    OnGotFocus(box, [this, box, botonAceptar] { Campo_GotFocus(box, botonAceptar); });
    OnLostFocus(box, [this, box] { Campo_LostFocus(box); });
}

void ModelessWindow::Campo_GotFocus(QLineEdit* box, QPushButton* botonAceptar) {
    vb::SetEnabled(botonAceptar, true);
    PintaConFoco(box);
    vb::SelectAll(box);
}

void ModelessWindow::Campo_LostFocus(QLineEdit* box) {
    PintaSinFoco(box);
}

void ModelessWindow::CadenaEnter(std::initializer_list<QWidget*> cadena) {
    const std::vector<QWidget*> controles(cadena);
    for (size_t i = 0; i + 1 < controles.size(); ++i) {
        QWidget* siguiente = controles[i + 1];
        OnKeyPress(controles[i], [siguiente](int& KeyAscii) {
            if (KeyAscii == 13)
                vb::SetFocus(siguiente);
        });
    }
}

bool ModelessWindow::CodigoNumerico(const vb::ComboBox* combo) {
    const QString text = combo->Text();
    return !text.isEmpty() && vb::IsNumeric(text);
}

} // namespace vel
