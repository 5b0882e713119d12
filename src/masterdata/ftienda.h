// Ftienda: the stores. config.ini names the current store by nombre_tienda.
#pragma once
#include "masterdata/code_name_window.h"

namespace vel {

class Ftienda : public CodeNameWindow {
    Q_OBJECT
public:
    explicit Ftienda(QWidget* parent = nullptr);
};

} // namespace vel
