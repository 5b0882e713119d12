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

// config.ini, read in one place: its two values, the installation tag and the
// name of the store, an empty tag meaning FERROBANDA.
struct Configuracion {
    QString ClientePrograma;
    QString nombreTienda; // as written; empty when the file has no second value
};
// How a window reads it:
//  - SoloEtiqueta: only the tag, with no trap around the read: a missing
//    config.ini is an untrapped error and ends the program (the products
//    window, the point of sale);
//  - ConTrampa: both values under On Error Resume Next, as one Input #
//    statement: the values are assigned as they are read, so a file with one
//    value keeps it and a missing file leaves both empty (the main window, the
//    delivery note and the invoice).
enum class LecturaConfiguracion { SoloEtiqueta, ConTrampa };
Configuracion LeeConfiguracion(LecturaConfiguracion lectura);

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
