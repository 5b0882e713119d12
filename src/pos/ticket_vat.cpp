#include "pos/ticket_vat.h"
#include "core/sql_values.h"
#include "runtime/vb.h"

namespace vel::ticket {

int HuecoDe(float ivaactual) {
    if (ivaactual == 21.0f) return 0;
    if (ivaactual == 7.0f) return 1;
    if (ivaactual == 4.0f) return 2;
    return -1;
}

double IvaContenido(double importe, float ivaactual) {
    // p / 100 and 1 + ... stay in single precision, as the rate is a Single;
    // the amount divided by it is a Double.
    const float divisor = 1.0f + ivaactual / 100.0f;
    return importe - importe / static_cast<double>(divisor);
}

void MueveIva(HuecosIva& huecos, float ivaactual, double importe, Movimiento movimiento) {
    const int n = HuecoDe(ivaactual);
    if (n < 0) return;
    static const std::array<QString, 3> alAnadir = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
    static const std::array<QString, 3> alQuitar = {QStringLiteral("21"), QStringLiteral("7"), QStringLiteral("4")};
    HuecoIva& hueco = huecos[static_cast<size_t>(n)];
    if (hueco.tipo.isEmpty())
        hueco.tipo = movimiento == Movimiento::Anadir ? alAnadir[static_cast<size_t>(n)] : alQuitar[static_cast<size_t>(n)];
    const double iva = IvaContenido(importe, ivaactual);
    const double total = vb::Val(hueco.total) + (movimiento == Movimiento::Anadir ? iva : -iva);
    hueco.total = vb::Format(total, sql::kMascaraDosDecimales);
}

} // namespace vel::ticket
