#include "masterdata/foperador.h"

namespace vel {

Foperador::Foperador(QWidget* parent)
    : CodeNameWindow({.ventana = QStringLiteral("Foperador"),
                      .titulo = QStringLiteral("Mantenimiento de Operadores"),
                      .tabla = QStringLiteral("operador"),
                      .clave = QStringLiteral("codigo_operador"),
                      .nombre = QStringLiteral("nombre_operador"),
                      .tercera = QStringLiteral("observaciones_operador"),
                      .campo = QStringLiteral("Textobservaciones"),
                      .etiqueta = QStringLiteral("Observaciones")},
                     parent) {}

} // namespace vel
