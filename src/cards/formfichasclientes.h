// The customer's account card: DEBE is what the customer owes, HABER what
// pays it. No trap on Aceptar: a failing statement ends the program.
#pragma once
#include "cards/card_window.h"

namespace vel {

class FormFichasClientes : public CardWindow {
    Q_OBJECT
public:
    explicit FormFichasClientes(QWidget* parent = nullptr);
    // What this window is, as data (the tests compare it with the supplier's).
    static DatosFicha Datos();
};

} // namespace vel
