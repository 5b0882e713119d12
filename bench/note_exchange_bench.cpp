// The delivery-note control on a year's worth of notes: a branch store
// sending 2,000 notes of 20 lines (written, packed, marked), the central store
// receiving them, and the grid listing 20,000 notes of one year.
#include "bench_app.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/flexgrid.h"
#include "runtime/msgbox.h"
#include "sales/formcontrolalbaran.h"

#include <QDir>
#include <QFile>
#include <QRadioButton>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

class Aceptar : public vb::MessageBoxService {
public:
    int show(const QString&, const QString&, int style) override {
        return (style & 7) == vb::vbYesNo ? vb::vbYes : vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

const char* kNombres[] = {"PEDRO GARCIA", "ANA LOPEZ", "FERRETERIA DEL NORTE SL", "LUIS MARTIN", "MARIA RUIZ"};
const char* kArticulos[] = {"MARTILLO", "DESTORNILLADOR", "TORNILLO 4X40", "LLAVE INGLESA", "CINTA AISLANTE",
                            "BROCA 6MM", "TACO NYLON", "PINTURA BLANCA 4L", "BROCHA 50MM", "GUANTES"};

// A folder with a database of `notas` notes of store `tienda`, each of `lineas` lines.
struct Carpeta {
    QTemporaryDir dir;
    vel::Database* db = nullptr;
    Carpeta(int tienda, int notas, int lineas) {
        const QString ruta = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(ruta);
        db = vel::Database::OpenDatabase(ruta).release();
        if (tienda != 1) db->Execute(QStringLiteral("INSERT INTO tienda VALUES (%1, 'SUCURSAL', '')").arg(tienda));
        QFile ini(dir.filePath(QStringLiteral("config.ini")));
        ini.open(QIODevice::WriteOnly);
        ini.write(tienda == 1 ? "FERROBANDA\r\nCENTRAL\r\n" : "FERROBANDA\r\nSUCURSAL\r\n");
        sqlite3_exec(db->handle(), "BEGIN", nullptr, nullptr, nullptr);
        for (int n = 1; n <= notas; ++n) {
            db->Execute(QStringLiteral("INSERT INTO cabecera_albaran_venta VALUES (%1, 'AV', 2026, %2, '%3/%4/2026', 00, "
                                       "'', 01, '', '', 'P', '%5Z', '%6', 'CALLE MAYOR %7', 'MADRID', '280%8', 'MADRID', "
                                       "'ESPAÑOLA', '369', 0, '0049', '0012', '12', '1234567890', %2, '', '', '', '', '', '', "
                                       "0, 0, '%9', '0', '0', '', 21, 5.2, 0, '0', 'ES12')")
                            .arg(tienda)
                            .arg(n)
                            .arg(1 + n % 28)
                            .arg(1 + n % 12)
                            .arg(10000000 + n * 37)
                            .arg(QString::fromLatin1(kNombres[n % 5]))
                            .arg(n % 97)
                            .arg(n % 50, 2, 10, QLatin1Char('0'))
                            .arg(n * 13.7, 0, 'f', 2));
            for (int l = 1; l <= lineas; ++l) {
                const int u = 1 + (n + l) % 9;
                const double p = 0.35 + ((n * 7 + l * 13) % 400) / 10.0;
                db->Execute(QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (%1, 'AV', 2026, %2, '', 'R%3', "
                                           "'%4', %5, '%6', '', '', '%7', %8, 0, '%7', '1', 0, 0, '00', '00', '00', '00', "
                                           "%2, 01, '1')")
                                .arg(tienda)
                                .arg(n)
                                .arg(100000 + (n * 31 + l * 17) % 90000)
                                .arg(QString::fromLatin1(kArticulos[(n + l) % 10]))
                                .arg(u)
                                .arg(p, 0, 'f', 2)
                                .arg(u * p, 0, 'f', 2)
                                .arg((n + l) % 3 * 5));
            }
        }
        sqlite3_exec(db->handle(), "COMMIT", nullptr, nullptr, nullptr);
    }
    ~Carpeta() {
        if (vel::BaseDatos == db) vel::BaseDatos = nullptr;
        delete db;
    }
    void Usar() {
        vb::SetAppPath(dir.path());
        vel::BaseDatos = db;
    }
};

std::unique_ptr<vel::FormControlAlbaran> Abrir() {
    auto w = std::make_unique<vel::FormControlAlbaran>();
    w->resize(1000, 700);
    w->show();
    w->Load();
    return w;
}

void BM_Enviar2000AlbaranesDe20Lineas(benchmark::State& state) {
    velbench::App();
    Aceptar cajas;
    vb::SetMessageBoxService(&cajas);
    Carpeta sucursal(2, 2000, 20);
    sucursal.Usar();
    auto w = Abrir();
    for (auto _ : state) {
        state.PauseTiming();
        vel::BaseDatos->Execute(QStringLiteral("UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'P'"));
        w->CommandBuscar_Click();
        state.ResumeTiming();
        w->CommandEnviar_Click();
    }
    state.counters["bytes_pedido_jpg"] = double(QFile(sucursal.dir.filePath(QStringLiteral("enviar/pedido.jpg"))).size());
    w.reset();
    vb::SetMessageBoxService(nullptr);
}
BENCHMARK(BM_Enviar2000AlbaranesDe20Lineas)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Recibir2000AlbaranesDe20Lineas(benchmark::State& state) {
    velbench::App();
    Aceptar cajas;
    vb::SetMessageBoxService(&cajas);
    Carpeta sucursal(2, 2000, 20);
    sucursal.Usar();
    {
        auto w = Abrir();
        w->CommandEnviar_Click();
    }
    Carpeta central(1, 0, 0);
    QDir().mkpath(central.dir.filePath(QStringLiteral("recibir")));
    QFile::copy(sucursal.dir.filePath(QStringLiteral("enviar/pedido.jpg")), central.dir.filePath(QStringLiteral("recibir/pedido.jpg")));
    central.Usar();
    auto w = Abrir();
    w->findChild<QRadioButton*>(QStringLiteral("OptionEnviados"))->setChecked(true);
    w->CommandBuscar_Click();
    for (auto _ : state) {
        state.PauseTiming();
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM detalle_albaran_venta"));
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM cabecera_albaran_venta"));
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM series"));
        state.ResumeTiming();
        w->CommandRecibir_Click();
    }
    auto rs = vel::BaseDatos->OpenRecordset(QStringLiteral("SELECT * FROM detalle_albaran_venta"));
    rs->MoveLast();
    state.counters["lineas_recibidas"] = double(rs->RecordCount());
    w.reset();
    vb::SetMessageBoxService(nullptr);
}
BENCHMARK(BM_Recibir2000AlbaranesDe20Lineas)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Listar20000AlbaranesDeUnAno(benchmark::State& state) {
    velbench::App();
    Aceptar cajas;
    vb::SetMessageBoxService(&cajas);
    Carpeta central(1, 20000, 0);
    central.Usar();
    auto w = Abrir();
    for (auto _ : state) w->CommandBuscar_Click();
    state.counters["filas"] = double(w->findChild<vb::FlexGrid*>(QStringLiteral("GridAlbaranes"))->Rows() - 1);
    w.reset();
    vb::SetMessageBoxService(nullptr);
}
BENCHMARK(BM_Listar20000AlbaranesDeUnAno)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
