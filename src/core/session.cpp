#include "core/session.h"
#include "core/mdi.h"
#include "core/schema.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include <sqlite3.h>

namespace vel {

Database* BaseDatos = nullptr;
Database* BaseCatalogo = nullptr;

// Sub Main, with no error trap: a database that can't be opened is an untrapped
// error and no window is shown.
void Main() {
    const QString path = vb::AppPath() + QStringLiteral("/datos.mdb");
    BaseDatos = Database::OpenDatabase(path).release();
    // A damaged file still opens: the user is told, and pointed to the repair.
    if (!BaseDatos->QuickCheck()) vb::MsgBox(kAvisoBaseDanada, vb::vbExclamation, QStringLiteral("Advertencia"));
    // A database made before the product lookups had their indexes gets them
    // now, once.
    schema::CreateMissingIndexes(*BaseDatos);
    auto* mdi = new MDI;
    // Show loads the window first: MDIForm_Load runs before it appears.
    mdi->MDIForm_Load();
    mdi->show();
}

Configuracion LeeConfiguracion(LecturaConfiguracion lectura) {
    const QString path = vb::AppPath() + QStringLiteral("/config.ini");
    Configuracion c;
    if (lectura == LecturaConfiguracion::SoloEtiqueta) {
        vb::InputFile config = vb::InputFile::open(path);
        c.ClientePrograma = config.next();
    } else {
        vb::ResumeNext r;
        std::optional<vb::InputFile> fichero;
        r([&] { fichero = vb::InputFile::open(path); });
        r([&] {
            if (!fichero) vb::Raise(52, QStringLiteral("Nombre o número de archivo incorrecto"));
            c.ClientePrograma = fichero->next();
            c.nombreTienda = fichero->next();
        });
    }
    if (c.ClientePrograma.isEmpty()) c.ClientePrograma = kClienteProgramaPorDefecto;
    return c;
}

void CloseSession() {
    if (MDI* mdi = MainWindow()) {
        mdi->hide();
        delete mdi;
    }
    delete BaseCatalogo;
    BaseCatalogo = nullptr;
    // A clean exit leaves datos.mdb whole: what the log holds is written into it
    // first, and closing the last connection then removes the log files.
    if (BaseDatos && BaseDatos->IsOpen())
        sqlite3_wal_checkpoint_v2(BaseDatos->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    delete BaseDatos;
    BaseDatos = nullptr;
}

} // namespace vel
