#include "masterdata/fclientes.h"

namespace vel {

Fclientes::Fclientes(QWidget* parent)
    : PartnerWindow({.ventana = QStringLiteral("Fclientes"),
                     .titulo = QStringLiteral("Mantenimiento de Clientes"),
                     .tabla = &Clientes(),
                     .longitudNif = 15,
                     .textoNumerocuenta = QStringLiteral("9999999999"),
                     .listaIva = {.vatListColumn = QStringLiteral("codigo_iva"),
                                  .vatListRow = QStringLiteral("SELECT * FROM iva WHERE codigo_iva = ")}},
                    parent) {}

} // namespace vel
