// The code-list flow: the maintenance window of a small table whose records are
// picked from a code combo lying exactly over the code box (stores, warehouses,
// operators, payment terms).
//
// States (buttons = Nuevo, Modificar, Consultar, Borrar):
//   idle  buttons on,  Aceptar off, Cancelar closes,  fields off, combo hidden
//   "N"   buttons off, Aceptar on,  Cancelar to idle, fields on,  combo hidden
//   "M"   buttons off, Aceptar on,  Cancelar to idle, fields on,  combo shown
//   "O"   buttons off, Aceptar on,  Cancelar to idle, fields off, combo shown
//   "B"   buttons off, Aceptar on,  Cancelar to idle, fields off, combo shown
//
// A window of the flow hands over its pattern controls and the three of the
// flow, and states its statements and the reading of a record:
//   MontarListaCodigos({.botones = BotonesDe(*ui),
//                       .texto = {ui->Textcodigo, ui->Textnombre, ui->Textdireccion}},
//                      {.Textcodigo = ui->Textcodigo, .Textnombre = ui->Textnombre,
//                       .Combocodigo = ui->Combocodigo});
#pragma once
#include "core/maintenance_window.h"

namespace vel {

class Recordset;

struct ControlesListaCodigos {
    QLineEdit* Textcodigo = nullptr;  // the key
    QLineEdit* Textnombre = nullptr;  // the name, required with the key on Aceptar
    vb::ComboBox* Combocodigo = nullptr; // the list of keys, over Textcodigo
};

class CodeListWindow : public MaintenanceWindow {
    Q_OBJECT
public:
    explicit CodeListWindow(QWidget* parent = nullptr);

    // ---- Event procedures ------------------------------------------------------
    void Commandnuevo_Click() override;
    void Commandmodificar_Click() override;
    void Commandconsultar_Click() override;
    void Commandborrar_Click() override;
    void Commandaceptar_Click() override;
    // Reads the record of the chosen entry into the text boxes.
    virtual void Combocodigo_Click() = 0;
    virtual void Textcodigo_LostFocus();
    virtual void Textcodigo_Change();

protected:
    void Form_Load() override;
    void SalirDelModo() override;

    void MontarListaCodigos(const ControlesMantenimiento& patron, const ControlesListaCodigos& lista);

    // How Modificar, Consultar and Borrar turn the buttons to their mode: by
    // flipping them with Botones. A window that sets them directly says so here.
    virtual void BotonesDeModo() { Botones(); }

    // Shows the combo, fills it with the keys of the table and selects the first
    // entry; with an empty table, "No hay datos disponibles" and back to idle.
    virtual void LlenarCombocodigo();

    // ---- What a window of the flow states ---------------------------------------
    // The list of keys: "SELECT * FROM tienda ORDER BY codigo_tienda".
    virtual QString SentenciaLista() const = 0;
    // The combo entry of the current row of that list: the key text.
    virtual QString EntradaCombo(const Recordset& rs) const = 0;
    // The record with the key typed in the code box, for the duplicate test:
    // "SELECT * FROM tienda WHERE codigo_tienda = " + Val of the text.
    virtual QString SentenciaBuscarCodigo(const QString& codigo) const = 0;
    // The statements of Aceptar, built from the text boxes as they stand.
    virtual QString SentenciaInsertar() const = 0;
    virtual QString SentenciaModificar() const = 0;
    virtual QString SentenciaEliminar() const = 0;

    QLineEdit* Textcodigo = nullptr;
    QLineEdit* Textnombre = nullptr;
    vb::ComboBox* Combocodigo = nullptr;

private:
    // After a save in "M": the first entry again, or back to idle when the list is empty.
    void PrimeraEntradaOReposo();
};

} // namespace vel
