#include "pos/ticket_statements.h"
#include "core/sql_values.h"
#include "pos/ticket_item.h"
#include "runtime/arithmetic.h"
#include "runtime/vb.h"

namespace vel::ticket {

using vb::Format;
using vb::Left;
using vb::Mid;
using vb::Val;

namespace {
const QString kMascaraImporte = sql::kMascaraDosDecimales;
} // namespace

QString SentenciaCabecera(const Venta& v) {
    const double iva = Val(v.LabelIva1Total) + Val(v.LabelIva2Total) + Val(v.LabelIva3Total);
    return "INSERT INTO cabecera_diaria_ticket VALUES (" +
           sql::Valores({sql::Comillas(v.tienda), "'TI'", v.ejercicio, v.numero, sql::Comillas(Left(v.ComboOperador, 2)),
                         sql::Comillas(Mid(v.ComboOperador, 4)), sql::Comillas(v.fecha), sql::Comillas(v.hora),
                         sql::NumeroConMascara(v.Labeltotal, kMascaraImporte),
                         sql::NumeroConMascara(v.TextDescuentoTotal, kMascaraImporte), Format(iva, kMascaraImporte),
                         "0", "0", "1", "0"}) +
           ")";
}

QString SentenciaLinea(const Venta& v, const QString& entrada) {
    const double importe = Val(Importe(entrada));
    return "INSERT INTO detalle_diaria_ticket VALUES (" +
           sql::Valores({sql::Comillas(v.tienda), "'TI'", v.ejercicio, v.numero, "''", "''", "''", "''",
                         sql::Comillas(Referencia(entrada)), "''", "''", "''", sql::Comillas(Descripcion(entrada)),
                         Format(vb::Divide(importe, Val(Unidades(entrada))), kMascaraImporte),
                         sql::Numero(Unidades(entrada)), Format(importe, kMascaraImporte),
                         sql::Numero(Porcentaje(entrada))}) +
           ")";
}

} // namespace vel::ticket
