// The line area of a delivery note of 500 lines: accepting one more line (the
// running totals mean no pass over the grid) and replaying a stored note of 500
// lines through the fields, as opening it does.
#include "bench_app.h"
#include "sales/document_totals.h"
#include <benchmark/benchmark.h>

namespace {

constexpr int kLineas = 500;

void AceptarLinea(vel::DocumentTotals& w, int i) {
    w.Textreferencia->setText(QStringLiteral("REF%1").arg(i));
    w.Textdescripcion->setText(QStringLiteral("ARTICULO %1").arg(i));
    w.Textcantidad->setText(QString::number(1 + i % 7));
    w.Textprecio->setText(QStringLiteral("%1.%2").arg(i % 90).arg(i % 1000));
    w.Textprecio_LostFocus();
    w.Textdescuento->setText(QString::number(i % 20));
    w.Textdescuento_LostFocus();
}

void NotaDeLineas(vel::DocumentTotals& w, int lineas) {
    w.ReconstruirGrid();
    w.LimpiarLinea();
    w.RestablecerTotales();
    for (int i = 0; i < lineas; ++i) AceptarLinea(w, i);
}

// One more line on a note that already has 500: the line is taken away again
// (outside the timing) so that every round starts from 500.
void BM_UnaLineaMasEnUnAlbaranDe500(benchmark::State& state) {
    velbench::App();
    vel::DocumentTotals w;
    w.resize(900, 400);
    w.show();
    NotaDeLineas(w, kLineas);
    int i = kLineas;
    for (auto _ : state) {
        AceptarLinea(w, i++);
        state.PauseTiming();
        w.Gridfacturas->SetRows(kLineas + 1);
        state.ResumeTiming();
    }
    benchmark::DoNotOptimize(w.Labeltotalfactura->text());
}
BENCHMARK(BM_UnaLineaMasEnUnAlbaranDe500)->Unit(benchmark::kMillisecond);

// Replaying a stored note of 500 lines into a cleared line area.
void BM_ReproducirAlbaranDe500Lineas(benchmark::State& state) {
    velbench::App();
    vel::DocumentTotals w;
    w.resize(900, 400);
    w.show();
    for (auto _ : state) {
        w.ReconstruirGrid();
        w.LimpiarLinea();
        w.RestablecerTotales();
        for (int i = 0; i < kLineas; ++i)
            w.ReproducirLinea(QStringLiteral("REF%1").arg(i), QStringLiteral("ARTICULO %1").arg(i),
                              QString::number(1 + i % 7), QStringLiteral("%1.%2").arg(i % 90).arg(i % 1000),
                              QString::number(i % 20));
        w.DesplazarGridAlFinal();
    }
    benchmark::DoNotOptimize(w.Labeltotalfactura->text());
}
BENCHMARK(BM_ReproducirAlbaranDe500Lineas)->Unit(benchmark::kMillisecond);

} // namespace
