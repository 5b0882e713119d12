// Customers and suppliers: the statements of the two windows, written from the
// same list of fields. The positional INSERTs are checked against the schema's
// column lists rather than counted by eye, and run on a real empty database.
#include "core/schema.h"
#include "core/store_fixture.h"
#include "masterdata/partner_table.h"
#include "runtime/vb.h"
#include "support/positional_insert.h"

#include <QHash>
#include <gtest/gtest.h>

namespace {

using vel::Clientes;
using vel::PartnerDelete;
using vel::PartnerInsert;
using vel::PartnerUpdate;
using vel::Proveedores;

// The values of a positional INSERT, as the schema check splits them.
QStringList InsertValues(const QString& sql) { return veltest::ParsePositionalInsert(sql)->values; }

// The window's controls as a shop owner would fill them for a new customer.
QHash<QString, QString> Pedro() {
    return {
        {"Textcodigo", "c0001"},         {"Textnif", "12345678z"},          {"Textnombre", "Pedro"},
        {"Textapellidos", "García López"}, {"Textnombrecomercial", "Ferretería Pedro"},
        {"Textdomicilio", "Calle Mayor 1"}, {"Textpoblacion", "Portelas"},   {"Textprovincia", "Lugo"},
        {"Textnacionalidad", "Española"}, {"Textcodigopostal", "01234"},    {"Texttelefono1", "982111111"},
        {"Texttelefono2", ""},           {"Textmovil1", "600000000"},       {"Textmovil2", ""},
        {"Textweb", "www.Pedro.es"},     {"Textemail", "Pedro@correo.es"},  {"Textfax", "12ab"},
        {"Textcontacto1", "Juan"},       {"Textcontacto1telefono", "982222222"},
        {"Textcontacto1email", "Juan@correo.es"},
        {"Textcontacto2", ""},           {"Textcontacto2telefono", ""},     {"Textcontacto2email", ""},
        {"Textcontacto3", ""},           {"Textcontacto3telefono", ""},     {"Textcontacto3email", ""},
        {"Textbanco", "1"},              {"Textsucursal", "0012"},          {"Textdigitocontrol", "5"},
        {"Textnumerocuenta", "1234"},    {"Textdiacobro1", "5"},            {"Textdiacobro2", "20"},
        {"Textformapago", "con"},        {"Combotarifa", "2"},              {"Textdescuentoarticulo", "5"},
        {"Textdescuentofactura", ""},    {"Textcodigoiva", "1"},            {"Checkfacturable", "1"},
        {"Textlimitefacturacion", "1.000"}, {"Checkmailing", "0"},          {"Textcodigotienda", "1"},
        {"Textcodigocomercial", "com1"}, {"Textnombrefiscal", "Ferretería Pedro SL"},
        {"Textalta", "01/02/2024"},      {"Textobservaciones", "Paga a 30 días"}, {"TextIban", "ES12"},
    };
}

vel::PartnerReader From(const QHash<QString, QString>& boxes) {
    return [boxes](const QString& control) {
        EXPECT_TRUE(boxes.contains(control)) << control.toStdString();
        return boxes.value(control);
    };
}

// The INSERT names no column: its values land by position, so the order of the
// fields must be the order of the table's columns, one for one.
TEST(PartnerStatements, FieldsFollowTheColumnsOfEachTable) {
    for (const vel::PartnerTable* t : {&Clientes(), &Proveedores()}) {
        const auto* table = vel::schema::FindTable(t->table);
        ASSERT_NE(table, nullptr);
        QStringList columns, fields;
        for (const auto& c : table->columns) columns << QLatin1String(c.name);
        for (const auto& f : t->Fields()) fields << t->Column(f.stem);
        EXPECT_EQ(fields, columns) << t->table.toStdString();
    }
}

TEST(PartnerStatements, CustomerInsertHasTheTablesFortySixValues) {
    const QString sql = PartnerInsert(Clientes(), From(Pedro()));
    EXPECT_TRUE(veltest::InsertMatchesSchema(sql));
    EXPECT_EQ(InsertValues(sql).size(), 46);
}

TEST(PartnerStatements, SupplierInsertHasTheTablesThirtyEightValues) {
    const QString sql = PartnerInsert(Proveedores(), From(Pedro()));
    EXPECT_TRUE(veltest::InsertMatchesSchema(sql));
    EXPECT_EQ(InsertValues(sql).size(), 38);
}

// Each value as the customer window writes it: names upper-cased in quotes,
// web, mails, bank, branch, billing limit, date, notes and IBAN as typed, numbers
// through Val (01234 is 1234, an empty box 0, 12ab 12), the control digits and
// the account through their masks and unquoted, the check boxes as 0 or 1.
TEST(PartnerStatements, CustomerInsertWritesEachValueAsTheWindowDoes) {
    EXPECT_EQ(PartnerInsert(Clientes(), From(Pedro())),
              QStringLiteral("INSERT INTO clientes VALUES ('C0001', '12345678Z', 'PEDRO', 'GARCÍA LÓPEZ', "
                             "'FERRETERÍA PEDRO', 'CALLE MAYOR 1', 'PORTELAS', 'LUGO', 'ESPAÑOLA', 1234, "
                             "982111111, 0, 600000000, 0, 'www.Pedro.es', 'Pedro@correo.es', 12, "
                             "'JUAN', 982222222, 'Juan@correo.es', '', 0, '', '', 0, '', "
                             "'1', '0012', 05, 0000001234, 5, 20, 'CON', 2, 5, 0, 1, 1, '1.000', 0, 1, "
                             "'COM1', 'FERRETERÍA PEDRO SL', '01/02/2024', 'Paga a 30 días', 'ES12')"));
}

TEST(PartnerStatements, CustomerUpdateGoesThroughEveryColumnButTheNif) {
    const QString sql = PartnerUpdate(Clientes(), From(Pedro()));
    EXPECT_TRUE(sql.startsWith(QStringLiteral("UPDATE clientes SET codigo_cliente = 'C0001', nombre_cliente = 'PEDRO', "
                                              "apellidos_cliente = 'GARCÍA LÓPEZ', nombrecomercial_cliente = ")))
        << sql.toStdString();
    EXPECT_TRUE(sql.contains(QLatin1String(
        ", banco_cliente = '1', sucursal_cliente = '0012', digitocontrol_cliente = 05, numerocuenta_cliente = 0000001234, ")));
    EXPECT_TRUE(sql.endsWith(QStringLiteral(
        ", observaciones_cliente = 'Paga a 30 días', iban_cliente = 'ES12' WHERE nif_cliente = '12345678Z'")))
        << sql.toStdString();
    EXPECT_FALSE(sql.contains(QLatin1String("nif_cliente = '12345678Z',")));
    // 45 assignments: every column of the table but the NIF.
    EXPECT_EQ(sql.count(QLatin1String(" = ")), 46);
}

// The supplier writes its branch code as a number in the INSERT and as the
// typed text in the UPDATE; everything else as the customer window.
TEST(PartnerStatements, SupplierBranchIsANumberInTheInsertAndATextInTheUpdate) {
    const QStringList values = InsertValues(PartnerInsert(Proveedores(), From(Pedro())));
    EXPECT_EQ(values.at(26), QStringLiteral("'1'"));
    EXPECT_EQ(values.at(27), QStringLiteral("12"));
    EXPECT_EQ(PartnerInsert(Proveedores(), From(Pedro())),
              QStringLiteral("INSERT INTO proveedores VALUES ('C0001', '12345678Z', 'PEDRO', 'GARCÍA LÓPEZ', "
                             "'FERRETERÍA PEDRO', 'CALLE MAYOR 1', 'PORTELAS', 'LUGO', 'ESPAÑOLA', 1234, "
                             "982111111, 0, 600000000, 0, 'www.Pedro.es', 'Pedro@correo.es', 12, "
                             "'JUAN', 982222222, 'Juan@correo.es', '', 0, '', '', 0, '', "
                             "'1', 12, 05, 0000001234, 5, 20, 'CON', 0, "
                             "'FERRETERÍA PEDRO SL', '01/02/2024', 'Paga a 30 días', 'ES12')"));
    const QString update = PartnerUpdate(Proveedores(), From(Pedro()));
    EXPECT_TRUE(update.startsWith(QLatin1String("UPDATE proveedores SET codigo_proveedor = 'C0001', ")));
    EXPECT_TRUE(update.contains(QLatin1String(", sucursal_proveedor = '0012', ")));
    EXPECT_TRUE(update.contains(QLatin1String(", formapago_proveedor = 'CON', mailing_proveedor = 0, ")));
    EXPECT_TRUE(update.endsWith(QLatin1String(" WHERE nif_proveedor = '12345678Z'")));
    // Tariff, discounts, VAT, store, billing limit and sales agent have no column.
    for (const char* none : {"tarifa", "descuento", "iva", "tienda", "limite", "codigocomercial"})
        EXPECT_FALSE(update.contains(QLatin1String(none))) << none;
}

// The NIF of the delete goes as it stands, the one of the update upper-cased.
TEST(PartnerStatements, DeleteTakesTheNifAsItStands) {
    EXPECT_EQ(PartnerDelete(Clientes(), "12345678z"), "DELETE FROM clientes WHERE nif_cliente = '12345678z'");
    EXPECT_EQ(PartnerDelete(Proveedores(), "B1"), "DELETE FROM proveedores WHERE nif_proveedor = 'B1'");
}

// On the real schema: both statements run, and the values land in their columns.
class PartnerStatementsOnTheStore : public veltest::ShopDatabase {};

TEST_F(PartnerStatementsOnTheStore, CustomerRowReadsBackColumnByColumn) {
    db->Execute(PartnerInsert(Clientes(), From(Pedro())));
    EXPECT_EQ(Rows("SELECT * FROM clientes",
                   {"codigo_cliente", "nif_cliente", "codigopostal_cliente", "banco_cliente", "sucursal_cliente",
                    "digitocontrol_cliente", "numerocuenta_cliente", "codigotarifa_cliente",
                    "limitefacturacion_cliente", "mailing_cliente", "codigotienda_cliente", "alta_cliente",
                    "iban_cliente"}),
              QStringList{"C0001|12345678Z|1234|1|0012|5|1234|2|1.000|0|1|01/02/2024|ES12"});
    auto changed = Pedro();
    changed["Textnombre"] = "Pedro José";
    changed["Textsucursal"] = "77";
    db->Execute(PartnerUpdate(Clientes(), From(changed)));
    EXPECT_EQ(Rows("SELECT * FROM clientes", {"nombre_cliente", "sucursal_cliente"}), QStringList{"PEDRO JOSÉ|77"});
}

TEST_F(PartnerStatementsOnTheStore, SupplierBranchLosesItsZerosOnlyWhenNew) {
    db->Execute(PartnerInsert(Proveedores(), From(Pedro())));
    EXPECT_EQ(Rows("SELECT * FROM proveedores", {"sucursal_proveedor", "mailing_proveedor", "iban_proveedor"}),
              QStringList{"12|0|ES12"});
    db->Execute(PartnerUpdate(Proveedores(), From(Pedro())));
    EXPECT_EQ(Rows("SELECT * FROM proveedores", {"sucursal_proveedor"}), QStringList{"0012"});
}

} // namespace
