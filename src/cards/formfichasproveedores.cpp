#include "cards/formfichasproveedores.h"

namespace vel {

// The supplier record has no discounts, VAT, tariff, billing limit, store,
// sales agent or date of entry: those fields and their labels are not on this
// card. Its NIF is of 11 characters.
DatosFicha FormFichasProveedores::Datos() {
    return {.ventana = QStringLiteral("FormFichasProveedores"),
            .titulo = QStringLiteral("Fichas de Proveedores"),
            .socio = &Proveedores(),
            .palabra = QStringLiteral("proveedores"),
            .longitudNif = 11,
            .anotado = Importe::Haber,
            .tituloDebePasado = QStringLiteral("Total debe ("),
            .tituloHaberPasado = QStringLiteral("Total haber ("),
            .tituloSaldoPasado = QStringLiteral("Total SALDO ("),
            .importesEnBlanco = QStringLiteral("Los campos haber y debe no pueden quedar en blanco"),
            .sinControl = {QStringLiteral("Labeldescuentoarticulo"), QStringLiteral("Textdescuentoarticulo"),
                           QStringLiteral("Labeldescuentofactura"), QStringLiteral("Textdescuentofactura"),
                           QStringLiteral("Labelcodigoiva"), QStringLiteral("Textcodigoiva"),
                           QStringLiteral("Porcentajesiva"), QStringLiteral("Labeliva"), QStringLiteral("Comboiva"),
                           QStringLiteral("Labeltarifa"), QStringLiteral("Combotarifa"),
                           QStringLiteral("Checkfacturable"), QStringLiteral("Labellimitefacturacion"),
                           QStringLiteral("Textlimitefacturacion"), QStringLiteral("Labelcodigotienda"),
                           QStringLiteral("Textcodigotienda"), QStringLiteral("Labeltienda"),
                           QStringLiteral("Combotienda"), QStringLiteral("Labelcodigocomercial"),
                           QStringLiteral("Textcodigocomercial"), QStringLiteral("Labelcomercial"),
                           QStringLiteral("Combocomercial"), QStringLiteral("Labelalta"), QStringLiteral("Textalta")},
            .informeDeGuardado = true};
}

FormFichasProveedores::FormFichasProveedores(QWidget* parent) : CardWindow(Datos(), parent) {}

} // namespace vel
