// The three VAT slots of the ticket: LabelIva1..3 show the rate of each slot in
// use and LabelIva1Total..3 the VAT contained in the lines of that rate.
//
// The rate of a line (ivaactual, a 32-bit float) is compared with 21, 7 and 4:
// 21 goes to slot 1, 7 to slot 2, 4 to slot 3, any other rate to no slot at
// all, so a line at 10% adds no VAT anywhere. A slot's label, when empty, is
// set as a line goes in to "21", "10" and "4": the label of the second slot was
// raised to the reduced rate of today and its test was left at 7. Taking a line
// out labels an empty second slot "7", as before.
#pragma once
#include <QString>
#include <array>

namespace vel::ticket {

struct HuecoIva {
    QString tipo;  // the caption of LabelIvaN
    QString total; // the caption of LabelIvaNTotal, "0.00"
};
using HuecosIva = std::array<HuecoIva, 3>;

enum class Movimiento { Anadir, Quitar };

// The slot of a rate: 0, 1, 2, or -1 for none.
int HuecoDe(float ivaactual);

// The VAT contained in an amount with VAT included, G - G / (1 + p / 100), with
// the rate in single precision as the window holds it.
double IvaContenido(double importe, float ivaactual);

// A line of amount `importe` at rate `ivaactual` goes into or out of the slots.
void MueveIva(HuecosIva& huecos, float ivaactual, double importe, Movimiento movimiento);

} // namespace vel::ticket
