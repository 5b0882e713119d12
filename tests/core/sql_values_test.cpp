// Values in the text of a statement, as every window writes them, and a field
// read back with a Null as empty.
#include "core/sql_values.h"
#include "store_fixture.h"
#include "support/positional_insert.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace {

TEST(SqlValues, TextGoesBetweenQuotesAsItStands) {
    EXPECT_EQ(vel::sql::Comillas("Calle Real 4"), "'Calle Real 4'");
    EXPECT_EQ(vel::sql::Comillas(""), "''");
    // An apostrophe is not doubled: the statement breaks, as it always has.
    EXPECT_EQ(vel::sql::Comillas("O'Donnell"), "'O'Donnell'");
}

TEST(SqlValues, NamesAreUpperCasedWhenWritten) {
    EXPECT_EQ(vel::sql::ComillasMayusculas("ferretería ñandú"), "'FERRETERÍA ÑANDÚ'");
}

TEST(SqlValues, ANumberTypedInABoxBecomesValOfIt) {
    EXPECT_EQ(vel::sql::Numero("12A"), "12");
    EXPECT_EQ(vel::sql::Numero(""), "0");
    // A comma is not a decimal mark for Val: 12,5 is stored as 12.
    EXPECT_EQ(vel::sql::Numero("12,5"), "12");
    EXPECT_EQ(vel::sql::Numero("12.5"), "12.5");
    EXPECT_EQ(vel::sql::Numero(" 7"), "7");
}

TEST(SqlValues, ANumberFromAGridStandsAsWritten) {
    EXPECT_EQ(vel::sql::NumeroTalCual("00017"), "00017");
    EXPECT_EQ(vel::sql::NumeroTalCual("2026"), "2026");
    EXPECT_EQ(vel::sql::NumeroTalCual("5.2"), "5.2");
    EXPECT_EQ(vel::sql::NumeroTalCual("-3"), "-3");
    EXPECT_EQ(vel::sql::NumeroTalCual(""), "");
    // What is no plain number never stands bare: the statement holding it is
    // one the store refuses.
    for (const char* hostil : {"2026 OR 1=1", "17) OR (1=1", "1; DELETE FROM series", "12A", "1 --"}) {
        const QString valor = vel::sql::NumeroTalCual(QString::fromLatin1(hostil));
        EXPECT_NE(valor, QString::fromLatin1(hostil));
        EXPECT_TRUE(vel::sql::LlevaValorRoto("SELECT * FROM series WHERE ejercicio_series = " + valor)) << hostil;
    }
    EXPECT_FALSE(vel::sql::LlevaValorRoto("SELECT * FROM series WHERE ejercicio_series = 2026"));
}

TEST(SqlValues, MaskedNumbersGoThroughValAndFormat) {
    EXPECT_EQ(vel::sql::NumeroConMascara("7", vel::sql::kMascaraDosCifras), "07");
    EXPECT_EQ(vel::sql::NumeroConMascara("1", vel::sql::kMascaraCuatroCifras), "0001");
    EXPECT_EQ(vel::sql::NumeroConMascara("12.5", vel::sql::kMascaraDosDecimales), "12.50");
    EXPECT_EQ(vel::sql::NumeroConMascara("3.14159", vel::sql::kMascaraTresDecimales), "3.142");
    EXPECT_EQ(vel::sql::NumeroConMascara("", vel::sql::kMascaraDosDecimales), "0.00");
}

TEST(SqlValues, PositionalValuesAreJoinedByCommaAndBlank) {
    EXPECT_EQ(vel::sql::Valores({"1", "'NORTE'", "''"}), "1, 'NORTE', ''");
}

class FieldRead : public veltest::ShopDatabase {};

TEST_F(FieldRead, ANullFieldReadsAsEmpty) {
    db->Execute("insert into bancos values ('0049', 'SANTANDER')");
    db->Execute("insert into bancos values ('0050', NULL)");
    auto rs = db->OpenRecordset("select * from bancos order by codigo_banco");
    EXPECT_EQ(vel::TextoCampo(*rs, "nombre_banco"), "SANTANDER");
    EXPECT_EQ(vel::TextoCampoNoNulo(*rs, "nombre_banco"), std::optional<QString>("SANTANDER"));
    rs->MoveNext();
    EXPECT_EQ(vel::TextoCampo(*rs, "codigo_banco"), "0050");
    EXPECT_EQ(vel::TextoCampo(*rs, "nombre_banco"), "");
    EXPECT_EQ(vel::TextoCampoNoNulo(*rs, "nombre_banco"), std::nullopt);
}

TEST_F(FieldRead, ANumberFieldReadsAsItsDigits) {
    auto rs = db->OpenRecordset("SELECT * FROM tienda WHERE codigo_tienda = 1");
    EXPECT_EQ(vel::TextoCampo(*rs, "codigo_tienda"), "1");
}

// The checker the window tests use on their positional INSERTs.
TEST(PositionalInsert, CountsQuotedValuesWithCommasInsideAsOne) {
    const auto insert = veltest::ParsePositionalInsert("INSERT INTO tienda VALUES (1, 'NORTE, S.L.', 'C/ REAL (4)')");
    ASSERT_TRUE(insert.has_value());
    EXPECT_EQ(insert->table, "tienda");
    EXPECT_EQ(insert->values, (QStringList{"1", "'NORTE, S.L.'", "'C/ REAL (4)'"}));
    EXPECT_TRUE(veltest::InsertMatchesSchema("INSERT INTO tienda VALUES (1, 'NORTE, S.L.', 'C/ REAL (4)')"));
    EXPECT_TRUE(veltest::InsertMatchesSchema("insert into bancos values('0001','CAJA')"));
}

TEST(PositionalInsert, AMissingCommaIsCaught) {
    const auto result = veltest::InsertMatchesSchema("INSERT INTO tienda VALUES (1, 'NORTE' 'C/ REAL')");
    EXPECT_FALSE(result);
    EXPECT_NE(std::string(result.message()).find("2 values for the 3 columns of tienda"), std::string::npos)
        << result.message();
    EXPECT_NE(std::string(result.message()).find("3 direccion_tienda = (no value)"), std::string::npos)
        << result.message();
}

TEST(PositionalInsert, AnExtraValueAndAnUnknownTableAreCaught) {
    EXPECT_FALSE(veltest::InsertMatchesSchema("INSERT INTO tienda VALUES (1, 'NORTE', '', 0)"));
    EXPECT_FALSE(veltest::InsertMatchesSchema("INSERT INTO tiendas VALUES (1, 'NORTE', '')"));
    EXPECT_FALSE(veltest::InsertMatchesSchema("UPDATE tienda SET nombre_tienda = 'X'"));
}

TEST(PositionalInsert, TheCustomersRowOfTheStoreTestsFillsTheTable) {
    EXPECT_TRUE(veltest::InsertMatchesSchema("INSERT INTO clientes VALUES (" +
                                             veltest::Customer("C1", "12345678Z").join(", ") + ")"));
}

} // namespace
