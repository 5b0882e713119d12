// Fcompactar: rebuilds datos.mdb without its dead space. The safety copy
// datos.tmp stays after the work (each compacting overwrites it).
#pragma once
#include "dbcare/care_window.h"

namespace vel {

class Fcompactar : public CareWindow {
    Q_OBJECT
public:
    explicit Fcompactar(QWidget* parent = nullptr);
    void botonuciniciar_Click();
    void botonuccerrar_Click();

protected:
    void CerrarVentana_Click() override { botonuccerrar_Click(); }
};

} // namespace vel
