// The session: the one open database and the program's start.
#pragma once
#include "core/record_store.h"
#include <QString>

namespace vel {

// The open database datos.mdb, set once by Main and used by every window for all
// its SQL. Never closed while the program runs.
extern Database* BaseDatos;
// The chain's catalogue, opened by the products window. Empty until then.
extern Database* BaseCatalogo;

// Sub Main: opens App.Path + "/datos.mdb" into BaseDatos (an untrapped error when
// it is missing or unreadable: no window is shown) and shows the main window.
void Main();
// Ends the session: closes every window and the database (the scenario driver's
// restart, and the real program's exit).
void CloseSession();

// The installation tag as the windows that read only it take it in their
// Form_Load (products, invoices, the point of sale): the first value of
// config.ini, an empty value meaning FERROBANDA. There is no trap around the
// read: a missing config.ini is an untrapped error and ends the program.
QString LeeClientePrograma();

// What the start says when the engine's check finds datos.mdb damaged. The
// program starts all the same.
inline const QString kAvisoBaseDanada = QStringLiteral(
    "La comprobación de la base de datos datos.mdb ha encontrado daños en el archivo.\n\n"
    "El programa se abre igualmente, pero algunos datos pueden no leerse o no guardarse bien. "
    "Haga una copia de datos.mdb y repárela con la ventana \"Reparar base de datos\" "
    "(menú Utilidades, Reparar) antes de seguir trabajando.");

// Default installation tag and store.
inline const QString kClienteProgramaPorDefecto = QStringLiteral("FERROBANDA");
inline const QString kTiendaProgramaPorDefecto = QStringLiteral("1");

} // namespace vel
