#include "cards/formfichasclientes.h"

namespace vel {

DatosFicha FormFichasClientes::Datos() {
    return {.ventana = QStringLiteral("FormFichasClientes"),
            .titulo = QStringLiteral("Fichas de Clientes"),
            .socio = &Clientes(),
            .palabra = QStringLiteral("clientes"),
            .longitudNif = 15,
            .anotado = Importe::Debe,
            .tituloDebePasado = QStringLiteral("Total DEBE ("),
            .tituloHaberPasado = QStringLiteral("Total HABER ("),
            .tituloSaldoPasado = QStringLiteral("Total SALDO ("),
            .importesEnBlanco = QStringLiteral("Los campos DEBE y HABER no pueden quedar en blanco"),
            .sinControl = {},
            .informeDeGuardado = false};
}

FormFichasClientes::FormFichasClientes(QWidget* parent) : CardWindow(Datos(), parent) {}

} // namespace vel
