// The statements a sale is stored with, against the columns of their tables.
#include "counter_fixture.h"
#include "pos/ticket_item.h"
#include "support/positional_insert.h"

namespace {

using veltest::Mostrador;

TEST_F(Mostrador, TheHeaderHasAValueForEachColumn) {
    Abrir();
    Vende("MAR500", "2");
    const QString sql = ventana->SentenciaCabecera();
    EXPECT_TRUE(veltest::InsertMatchesSchema(sql));
    EXPECT_EQ(sql, QStringLiteral("INSERT INTO cabecera_diaria_ticket VALUES ('1', 'TI', 2026, 1, '1 ', 'OPERADOR', "
                                  "'21/11/2026', '10:15:30', 25.00, 0.00, 4.34, 0, 0, 1, 0)"));
}

// Seventeen values: key, four empty texts, reference, three empty texts,
// description, unit price, units, total, percentage.
TEST_F(Mostrador, ALineHasAValueForEachColumn) {
    Abrir();
    const QString entrada = vel::ticket::Entrada("8410000000042", "MARTILLO CARPINTERO 500G", "21", "2", "25.00");
    const QString sql = ventana->SentenciaLinea(entrada);
    EXPECT_TRUE(veltest::InsertMatchesSchema(sql));
    EXPECT_EQ(sql, "INSERT INTO detalle_diaria_ticket VALUES ('1', 'TI', 2026, 1, '', '', '', '', '8410000000042', "
                   "'', '', '', 'MARTILLO CARPINTERO 500G" + vb::Space(23) + "', 12.50, 2, 25.00, 21)");
    const auto valores = veltest::ParsePositionalInsert(sql);
    ASSERT_TRUE(valores);
    EXPECT_EQ(valores->values.size(), 17);
}

TEST_F(Mostrador, ThePercentageOfALineIsReadThroughVal) {
    Abrir();
    const QString sql = ventana->SentenciaLinea(vel::ticket::Entrada("R", "D", "5.25", "4", "10.00"));
    EXPECT_TRUE(sql.endsWith(", 2.50, 4, 10.00, 5.2)")) << sql.toStdString();
}

} // namespace
