// Bancos: the banks (table bancos), a four-digit code and a name. The same
// mode-less design as the VAT types window.
#pragma once
#include "masterdata/modeless_window.h"
#include <memory>

namespace Ui { class Bancos; }

namespace vel {

class Bancos : public ModelessWindow {
    Q_OBJECT
public:
    explicit Bancos(QWidget* parent = nullptr);
    ~Bancos() override;

    void ActualizaCombo();
    void Combobanco_Click();
    void Combobanco_Change();
    void BotonAceptar_Click();
    void BotonBorrar_Click();

protected:
    void Form_Load() override;
    // The new bank: the code typed, with four digits, and the name as typed.
    QString SentenciaInsertar() const;

private:
    std::unique_ptr<Ui::Bancos> ui;
};

} // namespace vel
