// membrete.ini from any bytes: a file is either read whole, with the name and
// the tax number there and every value within its length, or refused with the
// membrete's runtime error 5 and a description that names membrete.ini; never
// a crash, never another error.
#include "printing/membrete_ini.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vel::letterheads;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        const DatosMembrete d = LeeMembrete(bytes);
        if (d.nombre.isEmpty() || d.nif.isEmpty()) __builtin_trap();
        for (const QString* v : {&d.nombre, &d.nif, &d.domicilio, &d.poblacion, &d.telefono, &d.correo})
            if (v->size() > kMaximoValor || v->contains(QLatin1Char('\n'))) __builtin_trap();
        if (d.registro.size() > kMaximoRegistro) __builtin_trap();
        if (bytes.size() > kMaximoBytesMembrete) __builtin_trap();
    } catch (const MembreteNoValido& e) {
        if (e.Number != kErrorMembrete || !e.Description.contains(QLatin1String("membrete.ini"))) __builtin_trap();
    }
    return 0;
}
