#include "masterdata/partner_table.h"

#include "core/sql_values.h"
#include "runtime/vb.h"

namespace vel {

namespace {
constexpr auto Upper = PartnerValue::Upper;
constexpr auto AsTyped = PartnerValue::AsTyped;
constexpr auto Number = PartnerValue::Number;
constexpr auto ShowText = PartnerShow::Text;
constexpr auto ShowMask = PartnerShow::Mask;
} // namespace

// The customer record, column by column, as the customer window writes and
// reads it. Numbers go in as Val of the text, and are shown through "#", so a
// stored 0 reads back as an empty box; the account's bank and branch are texts
// shown through "0000"; the control digits and the account number are written
// and shown through their masks.
const std::vector<PartnerField>& PartnerFields() {
    static const std::vector<PartnerField> fields = {
        {"codigo", "Textcodigo", Upper, nullptr, ShowText, nullptr},
        {"nif", "Textnif", Upper, nullptr, ShowText, nullptr},
        {"nombre", "Textnombre", Upper, nullptr, ShowText, nullptr},
        {"apellidos", "Textapellidos", Upper, nullptr, ShowText, nullptr},
        {"nombrecomercial", "Textnombrecomercial", Upper, nullptr, ShowText, nullptr},
        {"domicilio", "Textdomicilio", Upper, nullptr, ShowText, nullptr},
        {"poblacion", "Textpoblacion", Upper, nullptr, ShowText, nullptr},
        {"provincia", "Textprovincia", Upper, nullptr, ShowText, nullptr},
        {"nacionalidad", "Textnacionalidad", Upper, nullptr, ShowText, nullptr},
        {"codigopostal", "Textcodigopostal", Number, nullptr, ShowMask, "#"},
        {"telefono1", "Texttelefono1", Number, nullptr, ShowMask, "#"},
        {"telefono2", "Texttelefono2", Number, nullptr, ShowMask, "#"},
        {"movil1", "Textmovil1", Number, nullptr, ShowMask, "#"},
        {"movil2", "Textmovil2", Number, nullptr, ShowMask, "#"},
        {"web", "Textweb", AsTyped, nullptr, ShowText, nullptr},
        {"email", "Textemail", AsTyped, nullptr, ShowText, nullptr},
        {"fax", "Textfax", Number, nullptr, ShowMask, "#"},
        {"contacto1", "Textcontacto1", Upper, nullptr, ShowText, nullptr},
        {"contacto1telefono", "Textcontacto1telefono", Number, nullptr, ShowMask, "#"},
        {"contacto1email", "Textcontacto1email", AsTyped, nullptr, ShowText, nullptr},
        {"contacto2", "Textcontacto2", Upper, nullptr, ShowText, nullptr},
        {"contacto2telefono", "Textcontacto2telefono", Number, nullptr, ShowMask, "#"},
        {"contacto2email", "Textcontacto2email", AsTyped, nullptr, ShowText, nullptr},
        {"contacto3", "Textcontacto3", Upper, nullptr, ShowText, nullptr},
        {"contacto3telefono", "Textcontacto3telefono", Number, nullptr, ShowMask, "#"},
        {"contacto3email", "Textcontacto3email", AsTyped, nullptr, ShowText, nullptr},
        {"banco", "Textbanco", AsTyped, nullptr, ShowMask, "0000"},
        {"sucursal", "Textsucursal", AsTyped, nullptr, ShowMask, "0000"},
        {"digitocontrol", "Textdigitocontrol", Number, "00", ShowMask, "00"},
        {"numerocuenta", "Textnumerocuenta", Number, "0000000000", ShowMask, "0000000000"},
        {"diacobro1", "Textdiacobro1", Number, nullptr, ShowMask, "#"},
        {"diacobro2", "Textdiacobro2", Number, nullptr, ShowMask, "#"},
        {"formapago", "Textformapago", Upper, nullptr, ShowText, nullptr},
        {"codigotarifa", "Combotarifa", PartnerValue::ListText, nullptr, PartnerShow::ListIndex, nullptr},
        {"descuentoarticulo", "Textdescuentoarticulo", Number, nullptr, ShowMask, "#"},
        {"descuentofactura", "Textdescuentofactura", Number, nullptr, ShowMask, "#"},
        {"codigoiva", "Textcodigoiva", Number, nullptr, ShowMask, "#"},
        {"facturable", "Checkfacturable", PartnerValue::Check, nullptr, PartnerShow::Check, nullptr},
        {"limitefacturacion", "Textlimitefacturacion", AsTyped, nullptr, ShowMask, "#.###"},
        {"mailing", "Checkmailing", PartnerValue::Check, nullptr, PartnerShow::Check, nullptr},
        {"codigotienda", "Textcodigotienda", Number, nullptr, ShowMask, "#"},
        {"codigocomercial", "Textcodigocomercial", Upper, nullptr, ShowText, nullptr},
        {"nombrefiscal", "Textnombrefiscal", Upper, nullptr, ShowText, nullptr},
        // The window fills an empty registration date with today before saving.
        {"alta", "Textalta", AsTyped, nullptr, ShowText, nullptr},
        {"observaciones", "Textobservaciones", AsTyped, nullptr, ShowText, nullptr},
        {"iban", "TextIban", AsTyped, nullptr, ShowText, nullptr},
    };
    return fields;
}

const PartnerTable& Clientes() {
    static const PartnerTable t{.table = QStringLiteral("clientes"),
                                .suffix = QStringLiteral("_cliente"),
                                .notFound = QStringLiteral("No se ha encontrado el Cliente."),
                                .noColumn = {},
                                .numberInInsert = {}};
    return t;
}

// The supplier record has no tariff, discounts, VAT code, "Facturable", billing
// limit, store or sales agent: dropping them from the customer's order leaves
// the supplier's, with the mailing flag straight after the payment term. A new
// supplier's branch code goes in as a number (0012 is stored as 12) and an
// edited one as the quoted text: the two stay different.
const PartnerTable& Proveedores() {
    static const PartnerTable t{
        .table = QStringLiteral("proveedores"),
        .suffix = QStringLiteral("_proveedor"),
        .notFound = QStringLiteral("No se ha encontrado el proveedor."),
        .noColumn = {QStringLiteral("Combotarifa"), QStringLiteral("Textdescuentoarticulo"),
                     QStringLiteral("Textdescuentofactura"), QStringLiteral("Textcodigoiva"),
                     QStringLiteral("Checkfacturable"), QStringLiteral("Textlimitefacturacion"),
                     QStringLiteral("Textcodigotienda"), QStringLiteral("Textcodigocomercial")},
        .numberInInsert = {QStringLiteral("Textsucursal")}};
    return t;
}

std::vector<PartnerField> PartnerTable::Fields() const {
    std::vector<PartnerField> out;
    for (const PartnerField& f : PartnerFields())
        if (!noColumn.contains(QLatin1String(f.control))) out.push_back(f);
    return out;
}

namespace {

// A field's value as it stands in the statement.
QString SqlValue(PartnerValue how, const char* mask, const QString& text) {
    switch (how) {
    case PartnerValue::Upper: return sql::ComillasMayusculas(text);
    case PartnerValue::AsTyped: return sql::Comillas(text);
    case PartnerValue::Number:
    case PartnerValue::ListText: return mask ? sql::NumeroConMascara(text, QLatin1String(mask)) : sql::Numero(text);
    case PartnerValue::Check: return text;
    }
    return text;
}

} // namespace

QString PartnerInsert(const PartnerTable& t, const PartnerReader& value) {
    QStringList values;
    for (const PartnerField& f : t.Fields()) {
        const QString control = QLatin1String(f.control);
        const PartnerValue how = t.numberInInsert.contains(control) ? PartnerValue::Number : f.value;
        values << SqlValue(how, f.valueMask, value(control));
    }
    return "INSERT INTO " + t.table + " VALUES (" + sql::Valores(values) + ")";
}

QString PartnerUpdate(const PartnerTable& t, const PartnerReader& value) {
    QStringList sets;
    for (const PartnerField& f : t.Fields()) {
        if (qstrcmp(f.stem, "nif") == 0) continue;
        sets << t.Column(f.stem) + " = " + SqlValue(f.value, f.valueMask, value(QLatin1String(f.control)));
    }
    return "UPDATE " + t.table + " SET " + sets.join(QStringLiteral(", ")) + " WHERE " + t.Column("nif") +
           " = " + sql::ComillasMayusculas(value(QStringLiteral("Textnif")));
}

QString PartnerDelete(const PartnerTable& t, const QString& nif) {
    return "DELETE FROM " + t.table + " WHERE " + t.Column("nif") + " = " + sql::Comillas(nif);
}

} // namespace vel
