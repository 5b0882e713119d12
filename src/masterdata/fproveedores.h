// Fproveedores: the suppliers. The customers' window on the suppliers' table,
// with its differences kept as they are.
#pragma once
#include "masterdata/partner_window.h"

namespace vel {

class Fproveedores : public PartnerWindow {
    Q_OBJECT
public:
    explicit Fproveedores(QWidget* parent = nullptr);
};

} // namespace vel
