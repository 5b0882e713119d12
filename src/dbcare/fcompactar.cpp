#include "dbcare/fcompactar.h"
#include "dbcare/database_care.h"
#include "runtime/app.h"

namespace vel {

Fcompactar::Fcompactar(QWidget* parent)
    : CareWindow({.ventana = QStringLiteral("Fcompactar"),
                  .caption = QStringLiteral("Compactar base de datos"),
                  .etiqueta = QStringLiteral("Progreso de la compactación"),
                  .botonIniciar = QStringLiteral("botonuciniciar"),
                  .botonCerrar = QStringLiteral("botonuccerrar")},
                 parent) {
    OnClick(BotonIniciar(), [this] { botonuciniciar_Click(); });
}

// Six stages. The rebuilt file takes the place of datos.mdb by one rename,
// after it is on disk: where a removal of datos.mdb and a rename would leave a
// moment with no database at all, the stage that made that removal here makes
// the new file durable, and datos.mdb is always a whole database, old or new.
void Fcompactar::botonuciniciar_Click() {
    Cuidar(6, [this] {
        const QString Base = QStringLiteral("datos");
        FileCopy(Ruta(Base + ".mdb"), Ruta(Base + ".tmp"));
        Etapa();
        CompactDatabase(Ruta(Base + ".mdb"), Ruta("comp" + Base + ".mdb"));
        Etapa();
        AsegurarEnDisco(Ruta("comp" + Base + ".mdb"));
        Etapa();
        SustituirFichero(Ruta("comp" + Base + ".mdb"), Ruta(Base + ".mdb"));
        Etapa();
        // The engine's lock and log files (what *.ldb were to the old engine).
        if (HayFicherosDeBloqueo(vb::AppPath())) BorrarFicherosDeBloqueo(vb::AppPath());
        Etapa();
        Etapa();
    });
}

void Fcompactar::botonuccerrar_Click() { Unload(); }

} // namespace vel
