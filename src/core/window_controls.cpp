#include "core/window_controls.h"

namespace vel {

namespace {
QString NombreVentana(const QWidget* ventana) {
    if (!ventana) return QStringLiteral("(sin ventana)");
    return ventana->objectName().isEmpty() ? QString::fromLatin1(ventana->metaObject()->className())
                                           : ventana->objectName();
}
} // namespace

ControlFaltante::ControlFaltante(const QWidget* ventana, const QString& control, const char* clase)
    : std::logic_error((NombreVentana(ventana) + QStringLiteral(": falta el control ") + control +
                        QStringLiteral(" (") + QString::fromLatin1(clase) + QStringLiteral(")"))
                           .toStdString()) {}

ControlFaltante::ControlFaltante(const QWidget* ventana, const QString& control, const QString& motivo)
    : std::logic_error((NombreVentana(ventana) + QStringLiteral(": el control ") + control +
                        QStringLiteral(" ") + motivo)
                           .toStdString()) {}

void ExigirControl(const QWidget* ventana, const QWidget* control, const QString& nombre, const char* clase) {
    if (!control) throw ControlFaltante(ventana, nombre, clase);
    if (!ventana->isAncestorOf(control))
        throw ControlFaltante(ventana, nombre, QStringLiteral("no está dentro de la ventana"));
}

} // namespace vel
