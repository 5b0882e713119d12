#include "dbcare/freparar.h"
#include "dbcare/database_care.h"
#include "runtime/app.h"

namespace vel {

freparar::freparar(QWidget* parent)
    : CareWindow({.ventana = QStringLiteral("freparar"),
                  .caption = QStringLiteral("Reparar base de datos"),
                  .etiqueta = QStringLiteral("Progreso de la reparación"),
                  .botonIniciar = QStringLiteral("botonuriniciar"),
                  .botonCerrar = QStringLiteral("botonurcerrar")},
                 parent) {
    OnClick(BotonIniciar(), [this] { botonuriniciar_Click(); });
}

void freparar::botonuriniciar_Click() {
    Cuidar(4, [this] {
        const QString Base = QStringLiteral("datos");
        FileCopy(Ruta(Base + ".mdb"), Ruta(Base + ".tmp"));
        Etapa();
        // The check, and the rebuild put in place by one rename.
        RepairDatabase(Ruta(Base + ".mdb"), Ruta("comp" + Base + ".mdb"));
        Etapa();
        if (HayFicherosDeBloqueo(vb::AppPath())) BorrarFicherosDeBloqueo(vb::AppPath());
        Etapa();
        // Unlike compacting, a repair keeps no copy.
        Kill(Ruta(Base + ".tmp"));
        Etapa();
    });
}

void freparar::botonurcerrar_Click() { Unload(); }

} // namespace vel
