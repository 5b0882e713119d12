#include "masterdata/price_changes.h"

#include "core/record_store.h"
#include "core/sql_values.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

namespace vel {

// The whole change is one transaction: every price changes or none does (a
// kill half-way leaves the prices as they were, and running the change again
// raises each product once). A disk that fills up is told once, at the end.
void CambiarPrecios(Database& db, Recordset& Registro, const std::function<double(double)>& NuevoPrecio) {
    Transaccion cambio(db);
    vb::ResumeNext r;
    // The procedure's variable: a price that fails to compute leaves the one
    // of the product before, and that is what the UPDATE then writes.
    double Nuevo = 0;
    while (!Registro.Eof()) {
        r([&] { Nuevo = NuevoPrecio(Registro.Fields(QStringLiteral("pvp_neto_productos")).num()); });
        r([&] {
            db.Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = ") + vb::CStr(Nuevo) +
                       QStringLiteral(" WHERE referencia_productos = ") +
                       sql::Comillas(Registro.Fields(QStringLiteral("referencia_productos")).str()));
        });
        // A cursor that can't move on would hold the walk on one product
        // for ever: the walk ends there.
        if (!r([&] { Registro.MoveNext(); })) break;
    }
}

} // namespace vel
