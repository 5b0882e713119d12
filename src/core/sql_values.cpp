#include "core/sql_values.h"

#include "core/record_store.h"
#include "runtime/vb.h"

#include <QRegularExpression>

namespace vel {

namespace sql {

namespace {
// The quoted values with an apostrophe built lately. A statement is built from
// its values right before it runs, so the last few are all the store needs to
// recognise; older ones drop out.
constexpr int kValoresRecordados = 64;
QStringList& ValoresRotos() {
    static QStringList valores;
    return valores;
}
// Remembers a value that breaks any statement it stands in.
void Romper(const QString& valor) {
    QStringList& rotos = ValoresRotos();
    rotos.removeAll(valor);
    rotos.append(valor);
    if (rotos.size() > kValoresRecordados) rotos.removeFirst();
}
} // namespace

QString Comillas(const QString& texto) {
    const QString valor = QLatin1Char('\'') + texto + QLatin1Char('\'');
    if (texto.contains(QLatin1Char('\''))) Romper(valor);
    return valor;
}

QString NumeroTalCual(const QString& texto) {
    static const QRegularExpression numero(
        QStringLiteral("^\\s*[-+]?(\\d+\\.?\\d*|\\.\\d+)([eE][-+]?\\d+)?\\s*$"));
    if (texto.isEmpty() || numero.match(texto).hasMatch()) return texto;
    // Not a number: it stands quoted with a stray apostrophe, as a value the
    // store refuses, so that nothing it holds is read as SQL (and the same
    // text quoted as a text elsewhere is not taken for it).
    const QString valor = QLatin1Char('\'') + texto + QStringLiteral("''");
    Romper(valor);
    return valor;
}

bool LlevaValorRoto(const QString& sentencia) {
    for (const QString& valor : ValoresRotos())
        if (sentencia.contains(valor)) return true;
    return false;
}

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
