#include "masterdata/ftienda.h"

namespace vel {

Ftienda::Ftienda(QWidget* parent)
    : CodeNameWindow({.ventana = QStringLiteral("Ftienda"),
                      .titulo = QStringLiteral("Mantenimiento de Tiendas"),
                      .tabla = QStringLiteral("tienda"),
                      .clave = QStringLiteral("codigo_tienda"),
                      .nombre = QStringLiteral("nombre_tienda"),
                      .tercera = QStringLiteral("direccion_tienda"),
                      .campo = QStringLiteral("Textdireccion"),
                      .etiqueta = QStringLiteral("Dirección")},
                     parent) {}

} // namespace vel
