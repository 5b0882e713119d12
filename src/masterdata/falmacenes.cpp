#include "masterdata/falmacenes.h"

namespace vel {

Falmacenes::Falmacenes(QWidget* parent)
    : CodeNameWindow({.ventana = QStringLiteral("Falmacenes"),
                      .titulo = QStringLiteral("Mantenimiento de Almacenes"),
                      .tabla = QStringLiteral("almacen"),
                      .clave = QStringLiteral("codigo_almacen"),
                      .nombre = QStringLiteral("nombre_almacen"),
                      .tercera = QStringLiteral("direccion_almacen"),
                      .campo = QStringLiteral("Textdireccion"),
                      .etiqueta = QStringLiteral("Dirección")},
                     parent) {}

} // namespace vel
