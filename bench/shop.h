// The shop databases the benchmarks run on, made on first use and reused
// while they are there:
//  - the shop: 200,000 products, 50,000 customers, 100,000 delivery notes with
//    1,000,000 lines, in /tmp/velmarinda_bench.mdb (VELMARINDA_BENCH_DB
//    overrides the path);
//  - a large catalogue: 500,000 products and nothing else, beside it.
#pragma once
#include <QString>
#include <cstdint>

struct sqlite3;
namespace vel {
class Database;
}

namespace velbench {

struct ShopSize {
    int products;
    int customers;
    int notes;
    int linesPerNote;
};
inline constexpr ShopSize kShop{200000, 50000, 100000, 10};
inline constexpr ShopSize kLargeCatalogue{500000, 0, 0, 0};

QString ShopPath();
QString LargeCataloguePath();
vel::Database& Shop();
vel::Database& LargeCatalogue();

// The reference of product i ("R0000042") and the NIF of customer i.
QString Reference(int i);
QString Nif(int i);

// Stops the benchmark run when the engine fails (setup, not measurement).
void Check(int rc, sqlite3* db, const char* what);

// A small fixed pseudo-random sequence, the same on every run.
struct Lcg {
    uint64_t s;
    explicit Lcg(uint64_t seed) : s(seed) {}
    uint32_t next() {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(s >> 33);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<uint32_t>(n)); }
};

} // namespace velbench
