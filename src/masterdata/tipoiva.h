// TipoIva: the VAT types (table iva). A code per type with three percentages:
// VAT, retention and equivalence surcharge. Mode-less: the code is picked or
// typed in the combo and "&Aceptar" inserts or updates by existence.
#pragma once
#include "masterdata/modeless_window.h"
#include <memory>

namespace Ui { class TipoIva; }

namespace vel {

class TipoIva : public ModelessWindow {
    Q_OBJECT
public:
    explicit TipoIva(QWidget* parent = nullptr);
    ~TipoIva() override;

    void ActualizaCombo();
    void Comboiva_Click();
    void Comboiva_Change();
    void BotonAceptar_Click();
    void BotonBorrar_Click();
    // Change of each percentage box.
    void Texto_Change(QLineEdit* box);

protected:
    void Form_Load() override;
    // The new type: the code as Val gives it, the percentages as they stand.
    QString SentenciaInsertar(const QString& codigo) const;

private:
    void VaciaCampos();
    std::unique_ptr<Ui::TipoIva> ui;
};

} // namespace vel
