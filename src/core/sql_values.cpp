#include "core/sql_values.h"

#include "core/record_store.h"
#include "runtime/vb.h"

namespace vel {

namespace sql {

QString Comillas(const QString& texto) { return QLatin1Char('\'') + texto + QLatin1Char('\''); }

QString ComillasMayusculas(const QString& texto) { return Comillas(vb::UCase(texto)); }

QString Numero(const QString& texto) { return vb::CStr(vb::Val(texto)); }

QString NumeroConMascara(const QString& texto, const QString& mascara) {
    return vb::Format(vb::Val(texto), mascara);
}

QString Valores(const QStringList& valores) { return valores.join(QStringLiteral(", ")); }

} // namespace sql

QString TextoCampo(const Recordset& rs, const QString& columna) {
    return TextoCampoNoNulo(rs, columna).value_or(QString());
}

std::optional<QString> TextoCampoNoNulo(const Recordset& rs, const QString& columna) {
    const vb::Variant valor = rs.Fields(columna);
    if (vb::IsNull(valor)) return std::nullopt;
    return valor.str();
}

} // namespace vel
