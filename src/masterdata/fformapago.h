// Fformapago: the payment terms. A term is a number of due dates and, for each,
// the days from the document's date. The window follows the maintenance window
// pattern's code-list flow, with twelve day boxes Textven(0) .. Textven(11), an
// order option for its code combo, and these differences: Consultar, Borrar and
// Modificar set the buttons directly instead of flipping them, the combo entries
// are fixed-column texts read back by position, and the number boxes take
// digits only.
#pragma once
#include "core/code_list_window.h"
#include <QRadioButton>
#include <array>

namespace Ui {
class Fformapago;
}

namespace vel {

class Fformapago : public CodeListWindow {
    Q_OBJECT
public:
    explicit Fformapago(QWidget* parent = nullptr);
    ~Fformapago() override;

    void Combocodigo_Click() override;
    void OptionC_Click();
    void OptionN_Click();
    void Textvencimientos_LostFocus();

protected:
    void Form_Load() override;

    QString SentenciaLista() const override;
    QString EntradaCombo(const Recordset& rs) const override;
    QString SentenciaBuscarCodigo(const QString& codigo) const override;
    QString SentenciaInsertar() const override;
    QString SentenciaModificar() const override;
    QString SentenciaEliminar() const override;
    // The record of the entry chosen in Combocodigo, read back by position.
    QString SentenciaEntradaElegida() const;

    QLineEdit* Textvencimientos = nullptr;
    std::array<QLineEdit*, 12> Textven{};
    QRadioButton* OptionC = nullptr;
    QRadioButton* OptionN = nullptr;

private:
    // Sets the buttons of the modes that pick a record from the combo.
    void BotonesDeModo() override;
    // The order options run again the button of the current mode.
    void RepetirModo();
    std::unique_ptr<Ui::Fformapago> ui;
};

} // namespace vel
