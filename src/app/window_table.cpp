#include "app/window_table.h"

// Windows, one include and one line each.

namespace vel {

const std::map<QString, WindowEntry>& WindowTable() {
    static const std::map<QString, WindowEntry> table = {
        // {"MnuArchivoItemMantenimientotiendas", {"Ftienda", [] { return new Ftienda; }}},
    };
    return table;
}

} // namespace vel
