#include "app/window_table.h"
#include "cards/card_listing.h"
#include "cards/formfichasclientes.h"
#include "cards/formfichasproveedores.h"
#include "masterdata/bancos.h"
#include "masterdata/estructura.h"
#include "masterdata/farticulos.h"
#include "masterdata/falmacenes.h"
#include "masterdata/fclientes.h"
#include "masterdata/fformapago.h"
#include "masterdata/foperador.h"
#include "masterdata/fproveedores.h"
#include "masterdata/ftienda.h"
#include "masterdata/sucursales.h"
#include "masterdata/tipoiva.h"
#include "pos/ftpv.h"
#include "sales/formalbaranventa.h"
#include "sales/formfacturaventa.h"

// Windows, one include and one line each.

namespace vel {

const std::map<QString, WindowEntry>& WindowTable() {
    static const std::map<QString, WindowEntry> table = {
        {"mnuArchivoItemMantenimientoIva", {"TipoIva", [] { return new TipoIva; }}},
        {"MnuArchivoItemMantenimientoBancos", {"Bancos", [] { return new Bancos; }}},
        {"MnuArchivoItemMantenimientosucursales", {"Sucursales", [] { return new Sucursales; }}},
        {"mnuArchivoItemMantenimientoEstructura", {"Estructura", [] { return new Estructura; }}},
        {"mnuArchivoItemMantenimientoArticulos", {"Farticulos", [] { return new Farticulos; }}},
        {"MnuArchivoItemMantenimientotiendas", {"Ftienda", [] { return new Ftienda; }}},
        {"MnuArchivoItemMantenimientoalmacenes", {"Falmacenes", [] { return new Falmacenes; }}},
        {"MnuArchivoItemMantenimientooperadores", {"Foperador", [] { return new Foperador; }}},
        {"mnuArchivoItemMantenimientoformapago", {"Fformapago", [] { return new Fformapago; }}},
        {"mnuArchivoItemClientesMantenimiento", {"Fclientes", [] { return new Fclientes; }}},
        {"mnuArchivoItemProveedoresMantenimiento", {"Fproveedores", [] { return new Fproveedores; }}},
        {"mnuArchivoItemClientesFichas", {"FormFichasClientes", [] { return new FormFichasClientes; }}},
        {"mnuArchivoItemProveedoresFichas", {"FormFichasProveedores", [] { return new FormFichasProveedores; }}},
        {"mnuArchivoItemClientesListado", {"Faclistado", [] { return new Faclistado; }}},
        {"mnuArchivoItemProveedoresListado", {"Faplistado", [] { return new Faplistado; }}},
        {"MnuTpvVenta", {"FTpv", [] { return new FTpv; }}},
        {"MnuventasItemalbarandirecto", {"FormAlbaranVenta", [] { return new FormAlbaranVenta; }}},
        {"MnuventasItemfacturadirecta", {"FormFacturaVenta", [] { return new FormFacturaVenta; }}},
    };
    return table;
}

} // namespace vel
