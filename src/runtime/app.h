// App.Path: the folder of the program, where datos.mdb, config.ini, the error
// reports and the exchange folders live. The scenario driver and the tests point
// it at a temporary folder through their environment (environment.h).
#pragma once
#include <QString>
class QApplication;
class QColor;

namespace vb {

QString AppPath();
// Shorthand for the program folder of the environment in force.
void SetAppPath(const QString& folder);

// The toolkit speaks Spanish: button texts ("&Sí", "Aceptar", "Cancelar") and
// calendar names. Numbers are never formatted by the locale (see vb.h).
void InstallSpanish(QApplication& app);

// The look of the controls: one style everywhere (the windows are laid out for
// it), with disabled text boxes that stay legible. A disabled box keeps the grey
// background that tells it is disabled, and its text is a dark grey with a
// contrast of more than 4.5:1 on it, so a record shown in Consultar or Borrar
// can be read.
void InstallLook(QApplication& app);
// The text colour of a disabled text box.
QColor DisabledTextColor();

} // namespace vb
