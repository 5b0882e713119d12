// The delivery note window on a shop's database: saving a note of 500 lines,
// opening it again (its 500 lines replayed), and Consultar for a customer with
// 2,000 notes over ten years.
#include "bench_app.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/msgbox.h"
#include "sales/formalbaranventa.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// Every box answers with its default button.
class Silencio : public vb::MessageBoxService {
public:
    int show(const QString&, const QString&, int style) override {
        return (style & 7) == vb::vbYesNo ? ((style & vb::vbDefaultButton2) ? vb::vbNo : vb::vbYes) : vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

const QString kPedro = QStringLiteral(
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')");

// A shop in a temporary folder with Pedro as its customer, and the window open.
struct Tienda {
    QTemporaryDir carpeta;
    Silencio cajas;
    std::unique_ptr<vel::FormAlbaranVenta> ventana;

    Tienda() {
        velbench::App();
        vb::SetAppPath(carpeta.path());
        vb::SetMessageBoxService(&cajas);
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
        const QString ruta = carpeta.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(ruta);
        vel::BaseDatos = vel::Database::OpenDatabase(ruta).release();
        vel::BaseDatos->Execute(kPedro);
    }
    void Abrir() {
        ventana = std::make_unique<vel::FormAlbaranVenta>();
        ventana->resize(1000, 760);
        ventana->show();
        ventana->Load();
    }
    ~Tienda() {
        ventana.reset();
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        vb::SetMessageBoxService(nullptr);
        vb::clock::unpin();
    }
    // A stored note of the given year and number with `lineas` lines.
    void Nota(int ejercicio, int numero, int lineas) {
        const QString clave = QStringLiteral("01, 'AV', %1, %2").arg(ejercicio).arg(numero);
        vel::BaseDatos->Execute(
            "INSERT INTO cabecera_albaran_venta VALUES (" + clave +
            ", '02/03/" + QString::number(ejercicio) +
            "', 00, '', 01, '', '', 'P', '12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', "
            "'MADRID', 'ESPAÑOLA', '369', 3, '0049', '0012', '12', '1234567890', " + QString::number(numero) +
            ", '', '', '', '', '', '', 0, 0, '100', '0', '0', '', 21, 5.2, 0, '0', 'ES12')");
        for (int i = 0; i < lineas; ++i)
            vel::BaseDatos->Execute("INSERT INTO detalle_albaran_venta VALUES (" + clave + ", '', 'REF" +
                                    QString::number(i) + "', 'ARTICULO " + QString::number(i) + "', " +
                                    QString::number(1 + i % 7) + ", '" + QString::number(i % 90) + ".5', '', '', '10', " +
                                    QString::number(i % 20) + ", 0, '9', '1', 0, 0, '00', '00', '00', '00', " +
                                    QString::number(numero) + ", 01, '1')");
    }
};

void BM_GuardarAlbaranDe500Lineas(benchmark::State& state) {
    Tienda tienda;
    tienda.Abrir();
    vel::FormAlbaranVenta& w = *tienda.ventana;
    for (auto _ : state) {
        state.PauseTiming();
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM cabecera_albaran_venta"));
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM detalle_albaran_venta"));
        vel::BaseDatos->Execute(QStringLiteral("DELETE FROM series"));
        w.Commandnuevo_Click();
        for (int i = 0; i < 500; ++i)
            w.Lineas()->ReproducirLinea(QStringLiteral("REF%1").arg(i), QStringLiteral("ARTICULO %1").arg(i),
                                        QString::number(1 + i % 7), QStringLiteral("%1.5").arg(i % 90),
                                        QString::number(i % 20));
        state.ResumeTiming();
        w.Commandaceptar_Click();
    }
    auto rs = vel::BaseDatos->OpenRecordset(QStringLiteral("SELECT * FROM detalle_albaran_venta"));
    rs->MoveLast();
    state.counters["lineas_guardadas"] = double(rs->RecordCount());
}
BENCHMARK(BM_GuardarAlbaranDe500Lineas)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_AbrirAlbaranDe500Lineas(benchmark::State& state) {
    Tienda tienda;
    vel::BaseDatos->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 1, 'AV', 1)"));
    tienda.Nota(2026, 1, 500);
    tienda.Abrir();
    vel::FormAlbaranVenta& w = *tienda.ventana;
    for (auto _ : state) {
        w.Commandconsultar_Click();
        state.PauseTiming();
        benchmark::DoNotOptimize(w.Lineas()->Gridfacturas->Rows());
        w.Commandcancelar_Click();
        state.ResumeTiming();
    }
    state.counters["filas"] = 501;
}
BENCHMARK(BM_AbrirAlbaranDe500Lineas)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ConsultarClienteCon2000Albaranes(benchmark::State& state) {
    Tienda tienda;
    for (int ano = 2017; ano <= 2026; ++ano) {
        vel::BaseDatos->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', %1, 1, 'AV', 200)").arg(ano));
        for (int n = 1; n <= 200; ++n) tienda.Nota(ano, n, 3);
    }
    tienda.Abrir();
    vel::FormAlbaranVenta& w = *tienda.ventana;
    for (auto _ : state) {
        w.Commandconsultar_Click();
        state.PauseTiming();
        w.Commandcancelar_Click();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_ConsultarClienteCon2000Albaranes)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace
