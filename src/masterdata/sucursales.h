// Sucursales: the branches of the banks (table bancos_sucursales), keyed by the
// bank and the branch code together. The mode-less design of the VAT types
// window, with a bank list above the branch code combo.
#pragma once
#include "masterdata/modeless_window.h"
#include <memory>

namespace Ui { class Sucursales; }

namespace vel {

class Sucursales : public ModelessWindow {
    Q_OBJECT
public:
    explicit Sucursales(QWidget* parent = nullptr);
    ~Sucursales() override;

    void ActualizaComboBancos();
    void ActualizaComboSucursal();
    void OpcionCodigo_Click();
    void OpcionNombre_Click();
    void Combobanco_Click();
    void Combosucursal_Click();
    void Combosucursal_Change();
    void BotonAceptar_Click();
    void BotonBorrar_Click();

protected:
    void Form_Load() override;
    // The new branch: the branch code first, then the bank, name and address.
    QString SentenciaInsertar(const QString& banco, const QString& sucursal) const;

private:
    // The bank: the first four characters of the bank entry ("0001 NOMBRE").
    QString Banco() const;
    // The branch: the typed or chosen code with four digits.
    QString Sucursal() const;
    std::unique_ptr<Ui::Sucursales> ui;
};

} // namespace vel
