// App.Path: the folder of the program, where datos.mdb, config.ini, the error
// reports and the exchange folders live. The scenario driver and the tests point
// it at a temporary folder through their environment (environment.h).
#pragma once
#include <QString>
class QApplication;

namespace vb {

QString AppPath();
// Shorthand for the program folder of the environment in force.
void SetAppPath(const QString& folder);

// The toolkit speaks Spanish: button texts ("&Sí", "Aceptar", "Cancelar") and
// calendar names. Numbers are never formatted by the locale (see vb.h).
void InstallSpanish(QApplication& app);

} // namespace vb
