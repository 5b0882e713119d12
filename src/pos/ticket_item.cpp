#include "pos/ticket_item.h"
#include "runtime/vb.h"

namespace vel::ticket {

using vb::Left;
using vb::Len;
using vb::Mid;
using vb::Right;
using vb::Space;

QString Entrada(const QString& referencia, const QString& descripcion, const QString& porcentaje,
                const QString& unidades, const QString& importe) {
    QString L = referencia + Space(14);
    L = Left(L, 14) + Left(descripcion, 47) + Space(51);
    L = Left(L, 62) + porcentaje + Space(4);
    L = Left(L, 65) + Left(unidades, 5) + Space(17);
    const QString A = importe;
    L = Left(L, 80 - Len(A)) + A;
    return L;
}

QString Referencia(const QString& entrada) { return Left(entrada, 13); }
QString Descripcion(const QString& entrada) { return Mid(entrada, 15, 47); }
QString Porcentaje(const QString& entrada) { return Mid(entrada, 63, 3); }
QString Unidades(const QString& entrada) { return Mid(entrada, 66, 5); }
QString Importe(const QString& entrada) { return Right(entrada, 8); }

QString TextoPorcentaje(float porcentaje) {
    QString texto = QString::number(static_cast<double>(porcentaje), 'g', 7);
    if (texto.contains(QLatin1Char('e'))) texto.replace(QLatin1Char('e'), QLatin1Char('E'));
    return texto;
}

} // namespace vel::ticket
