#include "masterdata/fproveedores.h"

namespace vel {

// A NIF of 11 characters; no design-time account number; the VAT list shows
// the percentages and finds the type by its percentage.
Fproveedores::Fproveedores(QWidget* parent)
    : PartnerWindow({.ventana = QStringLiteral("Fproveedores"),
                     .titulo = QStringLiteral("Mantenimiento de Proveedores"),
                     .tabla = &Proveedores(),
                     .longitudNif = 11,
                     .textoNumerocuenta = QString(),
                     .listaIva = {.vatListColumn = QStringLiteral("iva"),
                                  .vatListRow = QStringLiteral("SELECT * FROM iva WHERE iva = ")}},
                    parent) {}

} // namespace vel
