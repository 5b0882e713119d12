// Controls a window hands over to the code shared between windows.
//
// A window builds its controls from its .ui and hands them over typed (the
// uic-generated members, ui->Textcodigo). Shared code that needs a control
// checks it here when the window is built, in every build type: a control that
// is missing, of another kind, or not inside the window is a ControlFaltante
// naming the window and the control, thrown from the window's constructor.
#pragma once
#include <QString>
#include <QWidget>
#include <stdexcept>

namespace vel {

class ControlFaltante : public std::logic_error {
public:
    // "Ftienda: falta el control Combocodigo (vb::ComboBox)"
    ControlFaltante(const QWidget* ventana, const QString& control, const char* clase);
    ControlFaltante(const QWidget* ventana, const QString& control, const QString& motivo);
};

// A control handed over by the window: it must be there and inside the window.
// `nombre` is the control's name in the shared code ("Commandaceptar"), which
// is what the message names when the window handed over nothing.
void ExigirControl(const QWidget* ventana, const QWidget* control, const QString& nombre, const char* clase);

// A control of the window found by its name and kind, for controls uic does not
// give as members (array elements renamed to "Textven(3)", controls of a
// window built by hand).
template <class W>
W* ControlRequerido(QWidget* ventana, const QString& nombre) {
    W* control = ventana->findChild<W*>(nombre);
    ExigirControl(ventana, control, nombre, W::staticMetaObject.className());
    return control;
}

} // namespace vel
