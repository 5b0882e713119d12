// The exchange reader of delivery notes from any bytes: as a received
// pedido.jpg (outer archive, inner archives, texts) and as the two texts
// themselves. Every input is either read or refused (ArchivoRechazado for an
// archive, the runtime's error 62 for a text cut inside a record, its error 6
// naming the field for a number beyond range), never a
// crash, and what is read gives well-formed statements: one INSERT per record
// with the table's count of values.
//
// The first byte chooses: even, the rest is a pedido.jpg; odd, the rest is
// pedidoC.txt and pedidoD.txt, split at the first NUL byte.
#include "runtime/errors.h"
#include "sales/note_exchange.h"

#include <cstdint>

namespace {

using namespace vel::intercambio;

void Leer(const QByteArray& c, const QByteArray& d) {
    try {
        const Recepcion r = LeerRecepcion(c, d);
        for (const auto& n : r.notas)
            if (!n.sentencia.startsWith(QLatin1String("INSERT INTO cabecera_albaran_venta VALUES ("))) __builtin_trap();
        for (const QString& l : r.lineas)
            if (!l.startsWith(QLatin1String("INSERT INTO detalle_albaran_venta VALUES ("))) __builtin_trap();
    } catch (const vb::RuntimeError& e) {
        // 62: a text cut inside a record; 6: a number beyond range, naming its field.
        if (e.Number != 62 && !(e.Number == 6 && e.Description.contains(QLatin1String(" en el campo ")))) __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const QByteArray resto(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    if ((data[0] & 1) == 0) {
        try {
            const Recibido r = DesempaquetarPedido(resto);
            if (r.pedidoC.size() > kTamanoMaximo || r.pedidoD.size() > kTamanoMaximo) __builtin_trap();
            Leer(r.pedidoC, r.pedidoD);
        } catch (const ArchivoRechazado& e) {
            if (e.mensaje().isEmpty()) __builtin_trap();
        }
    } else {
        const qsizetype nul = resto.indexOf('\0');
        Leer(nul < 0 ? resto : resto.left(nul), nul < 0 ? QByteArray() : resto.mid(nul + 1));
    }
    return 0;
}
