#include "core/key_filters.h"

#include "runtime/forms.h"

namespace vel {

namespace {
constexpr int kIntro = 13;
constexpr int kRetroceso = 8;
bool EsDigito(int KeyAscii) { return KeyAscii >= '0' && KeyAscii <= '9'; }
} // namespace

void IntroComoTabulador(int& KeyAscii) {
    if (KeyAscii == kIntro) {
        KeyAscii = 0;
        vb::SendKeys(QStringLiteral("{tab}"));
    }
}

void SoloDigitos(int& KeyAscii) {
    if (KeyAscii != kRetroceso && !EsDigito(KeyAscii)) KeyAscii = 0;
}

void TeclasDeNumero(int& KeyAscii) {
    if (KeyAscii != kRetroceso && !EsDigito(KeyAscii) && KeyAscii != '.' && KeyAscii != '-') KeyAscii = 0;
}

} // namespace vel
