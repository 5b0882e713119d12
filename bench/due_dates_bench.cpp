// The due-date walk under load: 100,000 schedules of 12 monthly terms, each from
// another start date and collection day, on one calendar as a window keeps it.
#include "masterdata/due_dates.h"
#include "runtime/calendar.h"
#include <benchmark/benchmark.h>

namespace {

constexpr int kCalendarios = 100000;
const std::array<int, 12> kDoceMeses = {30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330, 360};

void BM_CienMilCalendariosDeDocePlazos(benchmark::State& state) {
    vb::Calendar calendario;
    const QDate primero(2000, 1, 1);
    long long fechas = 0;
    for (auto _ : state) {
        for (int i = 0; i < kCalendarios; ++i) {
            calendario.SetValue(primero.addDays(i % 9000));  // start dates over about 25 years
            const int diaCobro = i % 32;                      // 0 (the start day) to 31
            vel::RecorrerVencimientos(calendario, 12, kDoceMeses, diaCobro, 0,
                                      [&](int, const QDate& fecha) {
                                          fechas += fecha.day();
                                      });
        }
    }
    benchmark::DoNotOptimize(fechas);
    state.SetItemsProcessed(state.iterations() * kCalendarios);
    state.counters["calendario"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * kCalendarios,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_CienMilCalendariosDeDocePlazos)->Unit(benchmark::kMillisecond);

} // namespace
