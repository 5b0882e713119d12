// A failing statement raises the number and words of the original engine, so
// the runtime's message and the save reports read as the shop knows them.
#include "store_fixture.h"

using veltest::DescriptionOf;
using veltest::ErrorOf;
using veltest::ShopDatabase;

using EngineErrors = ShopDatabase;

TEST_F(EngineErrors, AnApostropheInANameBreaksTheInsertAsASyntaxError) {
    const auto insert = [&] { db->Execute(QStringLiteral("INSERT INTO tienda VALUES (5, 'O'BRIEN', 'X')")); };
    EXPECT_EQ(ErrorOf(insert), 3134);
    EXPECT_EQ(DescriptionOf(insert), QStringLiteral("Error de sintaxis en la instrucción INSERT INTO."));
    EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM tienda WHERE codigo_tienda = 5"), {QStringLiteral("codigo_tienda")}).isEmpty());
}

TEST_F(EngineErrors, AnApostropheInACustomerInsertIsASyntaxErrorToo) {
    QStringList values = veltest::Customer(QStringLiteral("C1"), QStringLiteral("11111111H"));
    values[3] = QStringLiteral("'D'ANGELO'");
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO clientes VALUES (%1)").arg(values.join(QStringLiteral(", ")))); }), 3134);
}

TEST_F(EngineErrors, AnApostropheInAnUpdateIsASyntaxErrorOfTheUpdate) {
    const auto update = [&] {
        db->Execute(QStringLiteral("UPDATE tienda SET  nombre_tienda = 'L'ESTANY', direccion_tienda = '' WHERE codigo_tienda = 1"));
    };
    EXPECT_EQ(ErrorOf(update), 3144);
    EXPECT_EQ(DescriptionOf(update), QStringLiteral("Error de sintaxis en la instrucción UPDATE."));
}

TEST_F(EngineErrors, AnApostropheInAQueryIsASyntaxErrorOfItsExpression) {
    const auto query = [&] { db->OpenRecordset(QStringLiteral("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = 'O'BRIEN'")); };
    EXPECT_EQ(ErrorOf(query), 3075);
    EXPECT_EQ(DescriptionOf(query),
              QStringLiteral("Error de sintaxis (falta operador) en la expresión de consulta 'nombre_tienda = 'O'BRIEN''."));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("DELETE FROM clientes WHERE nif_cliente = 'O'B'")); }), 3075);
}

TEST_F(EngineErrors, AnUnknownStatementIsNotValid) {
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERTAR INTO tienda VALUES (1)")); }), 3129);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QString()); }), 3129);
}

TEST_F(EngineErrors, ASecondCustomerWithTheSameNifIsADuplicateKey) {
    const QString insert = QStringLiteral("INSERT INTO clientes VALUES (%1)")
                               .arg(veltest::Customer(QStringLiteral("C1"), QStringLiteral("11111111H")).join(QStringLiteral(", ")));
    db->Execute(insert);
    EXPECT_EQ(ErrorOf([&] { db->Execute(insert); }), 3022);
    EXPECT_TRUE(DescriptionOf([&] { db->Execute(insert); }).startsWith(QStringLiteral("Los cambios solicitados en la tabla no se realizaron")));
}

TEST_F(EngineErrors, TheWrongNumberOfValuesIsReported) {
    const auto insert = [&] { db->Execute(QStringLiteral("insert into iva values(5,1,5,0,0) ")); };
    // A percentage typed with a decimal comma becomes two values.
    EXPECT_EQ(ErrorOf(insert), 3346);
    EXPECT_EQ(DescriptionOf(insert),
              QStringLiteral("El número de valores de consulta y el número de campos de destino son diferentes."));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO tienda VALUES (5, 'X')")); }), 3346);
}

TEST_F(EngineErrors, ATextThatIsNotANumberInANumericColumnIsATypeMismatch) {
    const auto insert = [&] {
        db->Execute(QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (01, 'AV', 2024, 1, '', 'REF1', 'X', 3, "
                                   "'abc', '', '', '37.5', 0, 0, '37.5', '1', 0, 0, '00', '00', '00', '00', 1, 01, '1')"));
    };
    EXPECT_EQ(ErrorOf(insert), 3464);
    EXPECT_EQ(DescriptionOf(insert), QStringLiteral("No coinciden los tipos de datos en la expresión de criterios."));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = '12,5'")); }), 0); // no rows
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','R','D','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = '12,5'")); }), 3464);
}

TEST_F(EngineErrors, AnUnknownTableCannotBeFound) {
    const auto query = [&] { db->OpenRecordset(QStringLiteral("SELECT * FROM clientess")); };
    EXPECT_EQ(ErrorOf(query), 3078);
    EXPECT_TRUE(DescriptionOf(query).contains(QStringLiteral("'clientess'")));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO tiendas VALUES (1, 'A', 'B')")); }), 3078);
}

TEST_F(EngineErrors, AnUnknownColumnIsAParameterWithoutValue) {
    const auto query = [&] { db->OpenRecordset(QStringLiteral("SELECT * FROM tienda WHERE codigo = 1")); };
    EXPECT_EQ(ErrorOf(query), 3061);
    EXPECT_EQ(DescriptionOf(query), QStringLiteral("Pocos parámetros. Se esperaba 1."));
}

TEST_F(EngineErrors, AQueryGivenToExecuteAndAWriteGivenToOpenRecordsetAreRefused) {
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("SELECT * FROM iva")); }), 3065);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset(QStringLiteral("DELETE FROM iva WHERE codigo_iva = 9")); }), 3219);
}

TEST_F(EngineErrors, AFailedStatementLeavesWhatWasWrittenBefore) {
    // No transaction: the counter moved, the failing line is lost, the header
    // after it is still written.
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 1, 'AV', 1)"));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (01, 'AV', 2024, 1, '', 'O'NEIL')")); }), 3134);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM series"), {QStringLiteral("contador_series")}), QStringList{QStringLiteral("1")});
}
