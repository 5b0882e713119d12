// The maintenance window: what every window that edits a table through a row of
// mode buttons shares (stores, payment terms, products, customers, documents).
//
// A mode ModoVentana (Modo: idle, new, modify, consult, delete), six buttons, and three procedures with fixed names:
//   Borrar   empties the controls the window lists for it;
//   Texto    FLIPS the Enabled of the widgets the window lists for it: its
//            field boxes (stores, customers) or its frames (products);
//   Botones  FLIPS the Enabled of the buttons the window lists for it, by
//            default Commandnuevo, Commandborrar, Commandconsultar,
//            Commandmodificar and Commandaceptar.
// Texto and Botones are toggles, not setters: every round trip calls them an
// even number of times, and Commandcancelar_Click tells a mode from idle by
// reading the Enabled of the four mode buttons. Don't turn them into setters.
//
// Commandcancelar_Click leaves the mode, or closes the window when idle. Every
// text box selects its whole text on getting the focus and moves on with Enter
// as with Tab; a box may also take a key filter (key_filters.h).
//
// What each mode button does differs from window to window: a window states it
// in its Commandnuevo_Click ... Commandaceptar_Click. The code-list flow of the
// small tables (code_list_window.h) is one such statement.
//
// A window derives from MaintenanceWindow, builds its .ui, and at the end of its
// constructor calls MontarVentana with its controls, typed. A control the pattern
// needs and does not get is a ControlFaltante (window_controls.h) thrown there.
// There is no error trap anywhere in the pattern: a failing statement ends the
// program.
#pragma once
#include "core/key_filters.h"
#include "runtime/forms.h"
#include <QList>
#include <QPushButton>
#include <QString>
#include <map>

namespace vel {

// The mode of a maintenance window. Its letter ("" idle, "N" new, "M" modify,
// "O" consult, "B" delete) is what the save report and the transcripts show.
enum class Modo { Ninguno, Nuevo, Modificar, Consultar, Borrar };
QString Letra(Modo modo);

// The six buttons of the pattern.
struct BotonesMantenimiento {
    QPushButton* Commandnuevo = nullptr;
    QPushButton* Commandmodificar = nullptr;
    QPushButton* Commandconsultar = nullptr;
    QPushButton* Commandborrar = nullptr;
    QPushButton* Commandaceptar = nullptr;
    QPushButton* Commandcancelar = nullptr;
};

// The six buttons of a .ui that names them as the pattern does; a .ui without
// one of them does not compile. A window whose buttons bear other names
// (CommandAceptar) writes the six out with designated initializers.
template <class Ui>
BotonesMantenimiento BotonesDe(const Ui& ui) {
    return {.Commandnuevo = ui.Commandnuevo,
            .Commandmodificar = ui.Commandmodificar,
            .Commandconsultar = ui.Commandconsultar,
            .Commandborrar = ui.Commandborrar,
            .Commandaceptar = ui.Commandaceptar,
            .Commandcancelar = ui.Commandcancelar};
}

// What a window of the pattern hands over from its .ui. Written with designated
// initializers, in this order:
//   MontarVentana({.botones = BotonesDe(*ui),
//                  .texto = {ui->Textcodigo, ui->Textnombre}});
struct ControlesMantenimiento {
    BotonesMantenimiento botones;
    // What Texto flips: field boxes, or the frames that hold them.
    QList<QWidget*> texto;
    // What Borrar empties: text boxes, check boxes (to 0), labels and combos.
    // Left empty, Borrar empties the widgets of `texto`, which must then all be
    // of those kinds.
    QList<QWidget*> borrar;
    // What Botones flips. Left empty: Nuevo, Borrar, Consultar, Modificar and
    // Aceptar.
    QList<QWidget*> flipaBotones;
    // Controls other than text boxes in which Enter moves on as Tab (combos,
    // check boxes). Every text box of the window does so already.
    QList<QWidget*> intro;
};

// The window keeps the six buttons it was handed as its own members
// (Commandnuevo ... Commandcancelar).
class MaintenanceWindow : public vb::Form, protected BotonesMantenimiento {
    Q_OBJECT
public:
    explicit MaintenanceWindow(QWidget* parent = nullptr);

    // The window's mode; Letra(ModoVentana) is its letter where it is shown.
    Modo ModoVentana = Modo::Ninguno;

    // ---- The pattern's procedures -------------------------------------------
    virtual void Borrar();
    void Texto();
    void Botones();

    // ---- Event procedures of the buttons --------------------------------------
    virtual void Commandnuevo_Click() = 0;
    virtual void Commandmodificar_Click() = 0;
    virtual void Commandconsultar_Click() = 0;
    virtual void Commandborrar_Click() = 0;
    virtual void Commandaceptar_Click() = 0;
    // In a mode (the four mode buttons all disabled): SalirDelModo and back to
    // idle. Idle: unloads the window; that is how the window is closed.
    virtual void Commandcancelar_Click();

protected:
    // The fields are designed enabled: the first Texto disables them.
    void Form_Load() override;

    // Checks and keeps the controls, wires the buttons and the keyboard of every
    // text box. Called once, at the end of the derived constructor.
    void MontarVentana(const ControlesMantenimiento& controles);

    // True when a mode is on: Nuevo, Modificar, Consultar and Borrar all disabled.
    bool EnModo() const;
    // What Cancelar does in a mode before ModoVentana is emptied: Botones,
    // Texto, Borrar, and Texto once more after "B" or "O", which never enabled
    // the fields.
    virtual void SalirDelModo();

    // The box takes only the keys the filter lets through; Enter still moves on.
    void FiltrarTeclas(std::initializer_list<QLineEdit*> cajas, FiltroTeclas filtro);
    // KeyPress of every text box: Enter moves on as Tab, then the box's filter.
    virtual void Texto_KeyPress(QLineEdit* caja, int& KeyAscii);
    // GotFocus of every text box: the whole text is selected.
    virtual void Texto_GotFocus(QLineEdit* caja);

private:
    QList<QWidget*> texto_;
    QList<QWidget*> borrar_;
    QList<QWidget*> botones_;
    std::map<QLineEdit*, FiltroTeclas> filtros_;
};

} // namespace vel
