// Fclientes: the customers.
#pragma once
#include "masterdata/partner_window.h"

namespace vel {

class Fclientes : public PartnerWindow {
    Q_OBJECT
public:
    explicit Fclientes(QWidget* parent = nullptr);
};

} // namespace vel
