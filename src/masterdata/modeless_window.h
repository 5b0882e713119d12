// The small mode-less maintenance windows (VAT types, banks, branches): a code
// combo in which the user picks or types a code, a few boxes, and "&Aceptar",
// which inserts or updates according to whether the code exists, "&Borrar" with
// its question, "&Cancelar", which unloads. No modes, no draft state: every
// button works straight on the database.
//
// What they share is written here once:
//  - the box with the focus stands out white on red, and entering any box
//    enables "&Aceptar" (it starts disabled and each save disables it again);
//  - Enter moves along a fixed chain of controls by SetFocus, not by tab order;
//  - the delete question and its "Se ha cancelado el borrado de datos" answer;
//  - the refill of a code combo from a statement.
// The article structure window uses the same colouring, refill and delete
// question through the free functions below.
#pragma once
#include "core/record_store.h"
#include "core/sql_values.h"
#include "runtime/forms.h"
#include <QString>
#include <functional>
#include <initializer_list>

namespace vel {

// Colours of a box with and without the focus (the runtime's colour numbers).
inline constexpr long kFondoConFoco = 255;        // red
inline constexpr long kLetraConFoco = 16777215;   // white
inline constexpr long kFondoSinFoco = 16777215;   // white
inline constexpr long kLetraSinFoco = 0;          // black

// Titles and texts shared by every delete question of these windows.
inline const QString kTituloError = QStringLiteral("Error");
inline const QString kTituloConfirmacion = QStringLiteral("Confirmacion de borrado de datos");
inline const QString kTituloInformacion = QStringLiteral("Información");
inline const QString kBorradoCancelado = QStringLiteral("Se ha cancelado el borrado de datos");

// A box takes the focus: white on red.
void PintaConFoco(QWidget* box);
// A box loses the focus: black on white.
void PintaSinFoco(QWidget* box);

// Clears the combo, adds one entry per row of the statement (when there is any
// row; the cursor is closed only then) and selects the first entry, which runs
// the combo's Click.
void LlenaCombo(vb::ComboBox* combo, const QString& sql,
                const std::function<QString(const Recordset&)>& entrada);

// The delete flow on a looked-up row:
//  - no row: noExiste under "Error", information icon;
//  - a row: pregunta under "Confirmacion de borrado de datos", Yes/No; on Yes
//    borrar(rs) runs (it executes the DELETE with the row's keys, closes the
//    cursor and empties the boxes); on No, "Se ha cancelado el borrado de datos"
//    under "Información", information icon.
// The caller refreshes its lists afterwards in every case.
void BorradoConPregunta(Recordset& rs, const QString& noExiste, const QString& pregunta,
                        const std::function<void(Recordset&)>& borrar);

class ModelessWindow : public vb::Form {
    Q_OBJECT
public:
    explicit ModelessWindow(QWidget* parent = nullptr);

    // "&Cancelar": unloads the window, saving nothing.
    void BotonCancelar_Click();

protected:
    // Gives a box the shared focus behaviour: GotFocus enables the save button,
    // paints the box white on red and selects its text; LostFocus paints it
    // back black on white.
    void CampoConFoco(QLineEdit* box, QPushButton* botonAceptar);
    // Enter (KeyAscii 13) in each control but the last moves the focus to the
    // next one of the chain.
    void CadenaEnter(std::initializer_list<QWidget*> cadena);
    // The precondition of every handler: the code combo holds a number.
    static bool CodigoNumerico(const vb::ComboBox* combo);

    void Campo_GotFocus(QLineEdit* box, QPushButton* botonAceptar);
    void Campo_LostFocus(QLineEdit* box);
};

} // namespace vel
