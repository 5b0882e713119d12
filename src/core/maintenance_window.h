// The maintenance window: the shape shared by the windows that keep one table
// (stores, warehouses, operators, payment terms and the windows built later on
// the same lines).
//
// A row of mode buttons, a mode letter ModoVentana, a code combo that appears
// exactly over the code box in the modes that pick an existing record, and three
// procedures with fixed names:
//   Borrar   empties every field text box;
//   Texto    FLIPS the Enabled of every field text box;
//   Botones  FLIPS the Enabled of Commandnuevo, Commandborrar, Commandconsultar,
//            Commandmodificar and Commandaceptar.
// Texto and Botones are toggles, not setters: every round trip calls them an even
// number of times, and Commandcancelar_Click tells a mode from idle by reading
// the Enabled of the mode buttons. Don't turn them into setters.
//
// States (buttons = Nuevo, Modificar, Consultar, Borrar):
//   idle  buttons on,  Aceptar off, Cancelar closes,  fields off, combo hidden
//   "N"   buttons off, Aceptar on,  Cancelar to idle, fields on,  combo hidden
//   "M"   buttons off, Aceptar on,  Cancelar to idle, fields on,  combo shown
//   "O"   buttons off, Aceptar on,  Cancelar to idle, fields off, combo shown
//   "B"   buttons off, Aceptar on,  Cancelar to idle, fields off, combo shown
//
// A window of the pattern derives from MaintenanceWindow, builds its controls
// (with the pattern's control names), calls MontarVentana() with its field text
// boxes, and gives its statements and the reading of a record. There is no error
// trap anywhere in the pattern: a failing statement ends the program.
#pragma once
#include "runtime/forms.h"
#include <QList>
#include <QPushButton>
#include <QString>

namespace vel {

class Recordset;

class MaintenanceWindow : public vb::Form {
    Q_OBJECT
public:
    explicit MaintenanceWindow(QWidget* parent = nullptr);

    // The window's mode: "" idle, "N" new, "M" modify, "O" consult, "B" delete.
    QString ModoVentana;

    // ---- The pattern's procedures -------------------------------------------
    virtual void Borrar();
    virtual void Texto();
    virtual void Botones();
    // How Modificar, Consultar and Borrar turn the buttons to their mode: by
    // flipping them with Botones. A window that sets them directly says so here.
    virtual void BotonesDeModo() { Botones(); }

    // ---- Event procedures ------------------------------------------------------
    virtual void Commandnuevo_Click();
    virtual void Commandmodificar_Click();
    virtual void Commandconsultar_Click();
    virtual void Commandborrar_Click();
    virtual void Commandaceptar_Click();
    virtual void Commandcancelar_Click();
    // Reads the record of the chosen entry into the text boxes.
    virtual void Combocodigo_Click() = 0;
    virtual void Textcodigo_LostFocus();
    virtual void Textcodigo_Change();

protected:
    void Form_Load() override;

    // Finds the pattern's controls by name in the window built by the derived
    // class, takes the field text boxes (those Texto flips and Borrar empties)
    // and wires the events. Called once, at the end of the derived constructor.
    void MontarVentana(const QList<QLineEdit*>& campos);

    // Shows the combo, fills it with the keys of the table and selects the first
    // entry; with an empty table, "No hay datos disponibles" and back to idle.
    virtual void LlenarCombocodigo();

    // KeyPress of every text box of the window: Enter moves on as Tab.
    virtual void Texto_KeyPress(QLineEdit* caja, int& KeyAscii);
    // KeyPress of the combo.
    virtual void Combocodigo_KeyPress(int& KeyAscii);
    // Enter (13) is discarded and a Tab is sent to the window.
    static void IntroComoTabulador(int& KeyAscii);

    // ---- What a window of the pattern states ------------------------------------
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

    // The pattern's controls.
    QLineEdit* Textcodigo = nullptr;
    QLineEdit* Textnombre = nullptr;
    vb::ComboBox* Combocodigo = nullptr;
    QPushButton* Commandnuevo = nullptr;
    QPushButton* Commandmodificar = nullptr;
    QPushButton* Commandconsultar = nullptr;
    QPushButton* Commandborrar = nullptr;
    QPushButton* Commandaceptar = nullptr;
    QPushButton* Commandcancelar = nullptr;
    // The field text boxes of Borrar and Texto, Textcodigo first.
    QList<QLineEdit*> Campos;
};

} // namespace vel
