// A printed line built by cutting, as the feet of the documents build their
// totals: the line starts with its first value and 80 blanks; each next value
// is put at its column by cutting the line there (Left(L, n)), adding the value
// and 80 blanks again. A value longer than the room to the next column pushes
// the later ones right; the trailing blanks stay part of the line.
//
//   LineaCortada L(Space(4) + Importe(d.Labelbruto));
//   L.corta(14, Importe(d.Labeldescuento));
//   return L.texto();
#pragma once
#include "runtime/vb.h"
#include <QString>

namespace vel::printing {

class LineaCortada {
public:
    explicit LineaCortada(const QString& inicio) : L_(inicio + vb::Space(80)) {}
    // L = Left(L, n) & valor & Space(80)
    void corta(int n, const QString& valor) { L_ = vb::Left(L_, n) + valor + vb::Space(80); }
    const QString& texto() const { return L_; }

private:
    QString L_;
};

} // namespace vel::printing
