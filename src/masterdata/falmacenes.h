// Falmacenes: the warehouses.
#pragma once
#include "masterdata/code_name_window.h"

namespace vel {

class Falmacenes : public CodeNameWindow {
    Q_OBJECT
public:
    explicit Falmacenes(QWidget* parent = nullptr);
};

} // namespace vel
