// The keyboard rules the windows share, as pieces a window gives its controls.
// Each takes the key of a KeyPress as KeyAscii and discards it by setting 0.
#pragma once

namespace vel {

using FiltroTeclas = void (*)(int& KeyAscii);

// Enter (13) is discarded and a Tab is sent to the window, so Enter moves on to
// the next control in tab order.
void IntroComoTabulador(int& KeyAscii);

// Only the digits 0-9 and Backspace get through (codes, days, telephones).
void SoloDigitos(int& KeyAscii);

// The number keys: the digits, ".", "-" and Backspace (prices, discounts).
void TeclasDeNumero(int& KeyAscii);

} // namespace vel
