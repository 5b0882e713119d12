// The supplier's account card: the customer's card with the amounts mirrored.
// HABER is what the shop owes the supplier, DEBE what pays it. Aceptar runs
// under the save report (errores.txt) and goes on past a failing statement.
#pragma once
#include "cards/card_window.h"

namespace vel {

class FormFichasProveedores : public CardWindow {
    Q_OBJECT
public:
    explicit FormFichasProveedores(QWidget* parent = nullptr);
    static DatosFicha Datos();
};

} // namespace vel
