// Foperador: the operators, the people who sell at the counter.
#pragma once
#include "masterdata/code_name_window.h"

namespace vel {

class Foperador : public CodeNameWindow {
    Q_OBJECT
public:
    explicit Foperador(QWidget* parent = nullptr);
};

} // namespace vel
