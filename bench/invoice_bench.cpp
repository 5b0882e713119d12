// The invoice window on a shop's database: saving an invoice of 1,000 lines
// that carries a long description of 200 lines (every line receives it), with
// both print questions answered No.
#include "bench_app.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/msgbox.h"
#include "sales/formfacturaventa.h"

#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// Every question is answered No (nothing goes to paper); other boxes OK.
class SinImprimir : public vb::MessageBoxService {
public:
    int show(const QString&, const QString&, int style) override {
        return (style & 7) == vb::vbYesNo ? vb::vbNo : vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

const QString kPedro = QStringLiteral(
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')");

void BM_GuardarFacturaDe1000Lineas(benchmark::State& state) {
    velbench::App();
    QTemporaryDir carpeta;
    SinImprimir cajas;
    vb::SetAppPath(carpeta.path());
    vb::SetMessageBoxService(&cajas);
    vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    const QString ruta = carpeta.filePath(QStringLiteral("datos.mdb"));
    vel::schema::CreateEmptyDatabase(ruta);
    vel::BaseDatos = vel::Database::OpenDatabase(ruta).release();
    vel::BaseDatos->Execute(kPedro);
    {
        auto w = std::make_unique<vel::FormFacturaVenta>();
        w->resize(1000, 760);
        w->show();
        w->Load();
        QStringList descripcion;
        for (int i = 0; i < 200; ++i) descripcion << QStringLiteral("Linea %1 de la descripcion larga de la obra").arg(i);
        auto* larga = w->findChild<QPlainTextEdit*>(QStringLiteral("TextDescripcionLarga"));
        for (auto _ : state) {
            state.PauseTiming();
            vel::BaseDatos->Execute(QStringLiteral("DELETE FROM cabecera_factura_venta"));
            vel::BaseDatos->Execute(QStringLiteral("DELETE FROM detalle_factura_venta"));
            vel::BaseDatos->Execute(QStringLiteral("DELETE FROM series"));
            w->Commandnuevo_Click();
            for (int i = 0; i < 1000; ++i)
                w->Lineas()->ReproducirLinea(QStringLiteral("REF%1").arg(i), QStringLiteral("ARTICULO %1").arg(i),
                                             QString::number(1 + i % 7), QStringLiteral("%1.5").arg(i % 90),
                                             QString::number(i % 20));
            larga->setPlainText(descripcion.join(QLatin1Char('\n')));
            state.ResumeTiming();
            w->Commandaceptar_Click();
        }
        auto rs = vel::BaseDatos->OpenRecordset(QStringLiteral("SELECT * FROM detalle_factura_venta"));
        rs->MoveLast();
        state.counters["lineas_guardadas"] = double(rs->RecordCount());
    }
    delete vel::BaseDatos;
    vel::BaseDatos = nullptr;
    vb::SetMessageBoxService(nullptr);
    vb::clock::unpin();
}
BENCHMARK(BM_GuardarFacturaDe1000Lineas)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
