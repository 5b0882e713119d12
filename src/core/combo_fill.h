// Filling a list from a table, the way every window does it: the list
// emptied, the statement walked to its end with one entry for each row (the
// text of one column), then the first entry chosen, or, with no row, the
// window's own message (no title, OK button).
#pragma once
#include <QString>

namespace vb {
class ComboBox;
}

namespace vel {

void LlenarListaDeTabla(vb::ComboBox* lista, const QString& sentencia, const QString& columna,
                        const QString& mensajeSinDatos);

} // namespace vel
