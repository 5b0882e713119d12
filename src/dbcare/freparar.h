// freparar: checks datos.mdb and rebuilds it, recovering what can be read when
// the check fails. No copy is kept after a repair.
#pragma once
#include "dbcare/care_window.h"

namespace vel {

class freparar : public CareWindow {
    Q_OBJECT
public:
    explicit freparar(QWidget* parent = nullptr);
    void botonuriniciar_Click();
    void botonurcerrar_Click();

protected:
    void CerrarVentana_Click() override { botonurcerrar_Click(); }
};

} // namespace vel
