// The SQL text exactly as the windows write it.
#include "store_fixture.h"

using veltest::ErrorOf;
using veltest::ShopDatabase;

using Dialect = ShopDatabase;

namespace {
const QStringList kCode{QStringLiteral("codigo_banco")};
}

TEST_F(Dialect, DeleteWithStarAndTwoBlanksIsAccepted) {
    // The windows of banks, VAT and article structure write it so.
    db->Execute(QStringLiteral("insert into bancos values('0049','BANCO UNO')"));
    db->Execute(QStringLiteral("insert into bancos values('0081','BANCO DOS')"));
    db->Execute(QStringLiteral("delete *  from bancos where codigo_banco='0049'"));
    db->Execute(QStringLiteral("DELETE *  FROM bancos WHERE codigo_banco='0081'"));
    EXPECT_TRUE(Rows(QStringLiteral("select * from bancos"), kCode).isEmpty());
    db->Execute(QStringLiteral("delete *  from iva where codigo_iva=3 "));
    EXPECT_TRUE(Rows(QStringLiteral("select * from iva where codigo_iva=3"), {QStringLiteral("iva")}).isEmpty());
}

TEST_F(Dialect, PlainDeleteIsAcceptedToo) {
    db->Execute(QStringLiteral("DELETE FROM tienda WHERE codigo_tienda = 1"));
    EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM tienda"), {QStringLiteral("codigo_tienda")}).isEmpty());
}

TEST_F(Dialect, DeletingAKeyThatDoesNotExistIsSilent) {
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("DELETE FROM clientes WHERE nif_cliente = 'X0000000'")); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("delete *  from iva where codigo_iva=99 ")); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE tienda SET  nombre_tienda = 'X', direccion_tienda = '' WHERE codigo_tienda = 42")); }), 0);
}

TEST_F(Dialect, KeywordsAndTableNamesInAnyCase) {
    db->Execute(QStringLiteral("insert into divisiones values('01','FERRETERIA')"));
    EXPECT_EQ(Rows(QStringLiteral("select * from Divisiones order by codigo_division asc"), {QStringLiteral("descripcion_division")}),
              QStringList{QStringLiteral("FERRETERIA")});
    EXPECT_EQ(Rows(QStringLiteral("SeLeCt * FROM DIVISIONES"), {QStringLiteral("codigo_division")}), QStringList{QStringLiteral("01")});
}

TEST_F(Dialect, OrderByAscAndTheOddSpacingOfTheWindows) {
    db->Execute(QStringLiteral("insert into bancos_sucursales values('0002','0049','SUR','')"));
    db->Execute(QStringLiteral("insert into bancos_sucursales values('0001','0049','NORTE','')"));
    // "set  codigo" with two blanks, "'and" with none
    db->Execute(QStringLiteral("update bancos_sucursales set  codigo_sucursal='0001',codigo_banco='0049',nombre_sucursal='CENTRO',"
                               "direccion_sucursal='' where codigo_banco='0049' and codigo_sucursal='0001'"));
    EXPECT_EQ(Rows(QStringLiteral("select * from bancos_sucursales where codigo_banco='0049'order by codigo_sucursal asc"),
                   {QStringLiteral("codigo_sucursal"), QStringLiteral("nombre_sucursal")}),
              (QStringList{QStringLiteral("0001|CENTRO"), QStringLiteral("0002|SUR")}));
}

TEST_F(Dialect, NotEqualToStarSelectsEveryCustomersNotes) {
    const QString head = QStringLiteral(
        "INSERT INTO cabecera_albaran_venta VALUES (01, 'AV', 2024, %1, '02/01/2024', 00, '', 01, '', '', 'P', '%2', "
        "'NOMBRE', '', '', '', '', '', 'CON', 0, '', '', '', '', %1, '', '', '', '', '', '', 0, 0, '10', '0', '0', '', 21, "
        "0, 0, '0', '')");
    db->Execute(head.arg(1).arg(QStringLiteral("11111111H")));
    db->Execute(head.arg(2).arg(QStringLiteral("22222222J")));
    db->Execute(head.arg(3).arg(QStringLiteral("33333333P")));
    const QStringList all = Rows(QStringLiteral("SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta <> '*' "
                                                "ORDER BY ejercicio_cabecera_albaran_venta"),
                                 {QStringLiteral("numero_cabecera_albaran_venta")});
    EXPECT_EQ(all.size(), 3);
}

TEST_F(Dialect, AMoneyAmountInQuotesIsStoredAsANumber) {
    db->Execute(QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (01, 'AV', 2024, 1, '', 'REF1', 'TORNILLO', 3, "
                               "'12.5', '', '', '37.5', 0, 0, '37.5', '1', 0, 0, '00', '00', '00', '00', 1, 01, '1')"));
    const vb::Variant price = First(QStringLiteral("SELECT * FROM detalle_albaran_venta"), QStringLiteral("pvp_neto_detalle_albaran_venta"));
    ASSERT_TRUE(price.isNumber());
    EXPECT_EQ(price.num(), 12.5);
    // and it compares as a number
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM detalle_albaran_venta WHERE importe_detalle_albaran_venta > 30"),
                   {QStringLiteral("referencia_detalle_albaran_venta")}),
              QStringList{QStringLiteral("REF1")});
}

TEST_F(Dialect, ANumberWrittenIntoATextColumnIsStoredAsItsText) {
    // A bank code written bare loses its leading zeros and is kept as text.
    db->Execute(QStringLiteral("insert into bancos values(0049,'BANCO')"));
    const vb::Variant code = First(QStringLiteral("select * from bancos"), QStringLiteral("codigo_banco"));
    ASSERT_TRUE(code.isText());
    EXPECT_EQ(code.str(), QStringLiteral("49"));
}

TEST_F(Dialect, AnEmptyNumericFieldIsWrittenAsZeroAndReadAsZero) {
    // Val of an empty box gives 0; the VAT window sets empty boxes to "0".
    db->Execute(QStringLiteral("insert into iva values(7,0,0,0) "));
    const vb::Variant v = First(QStringLiteral("select * from iva where codigo_iva=7"), QStringLiteral("iva"));
    ASSERT_TRUE(v.isNumber());
    EXPECT_EQ(v.num(), 0);
}

TEST_F(Dialect, LikeTakesTheStarAsTheWildCard) {
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','A1','TORNILLO DE 5 MM','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','A2','TUERCA','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    const QStringList ref{QStringLiteral("referencia_productos")};
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*NILL*'"), ref), QStringList{QStringLiteral("A1")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE 'T*'"), ref).size(), 2);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE 'TUERC?'"), ref), QStringList{QStringLiteral("A2")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*DE # MM'"), ref), QStringList{QStringLiteral("A1")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '[S-U]UERCA'"), ref), QStringList{QStringLiteral("A2")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '[!T]*'"), ref).size(), 0);
    // The empty search text of a window: '**' finds everything.
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '**'"), ref).size(), 2);
    // Without a wild card LIKE is a whole comparison.
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE 'TUERC'"), ref).size(), 0);
}

TEST_F(Dialect, PercentAndUnderscoreInALikePatternAreOrdinaryCharacters) {
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','P1','DESCUENTO 10% ABC','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','P2','DESCUENTO 10 ABC','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','P3','CABLE_ABC','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    const QStringList ref{QStringLiteral("referencia_productos")};
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*abc*' ORDER BY referencia_productos"), ref).size(), 3);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*10%*'"), ref), QStringList{QStringLiteral("P1")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '%ABC'"), ref).size(), 0);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*E_A*'"), ref), QStringList{QStringLiteral("P3")});
}

TEST_F(Dialect, LikeIgnoresCaseAndAccentsButNotTheEnye) {
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','N1','CAÑA DE PESCAR','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','N2','CANA ROJA','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','N3','CAMIÓN','','','','',1,2,0,0,0,0,0,0,0,'','',0,0,'','','','','','','',1)"));
    const QStringList ref{QStringLiteral("referencia_productos")};
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*caña*'"), ref), QStringList{QStringLiteral("N1")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*cana*'"), ref), QStringList{QStringLiteral("N2")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM productos WHERE descripcion_productos LIKE '*camion*'"), ref), QStringList{QStringLiteral("N3")});
}

TEST_F(Dialect, ASemicolonOrBlanksAfterTheStatementAreAccepted) {
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset(QStringLiteral("SELECT * FROM iva;")); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset(QStringLiteral("SELECT * FROM iva ;  \r\n")); }), 0);
}

// The program's statements never hold a comment: a comment marker outside a
// quoted text can only come from a value that reshaped the statement, and it
// is that statement's syntax error. Inside quotes it is text like any other.
TEST_F(Dialect, ACommentMarkerIsASyntaxErrorOfTheStatement) {
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE iva SET iva = 21 WHERE codigo_iva = 1 -- tipo general")); }), 3144);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE iva SET iva = 21 WHERE codigo_iva = 1; /* fin */")); }), 3144);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("DELETE FROM iva WHERE codigo_iva = 1 /* y */ OR 1=1")); }), 3075);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO tienda VALUES (7, 'A', '') --")); }), 3134);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset(QStringLiteral("SELECT * FROM iva WHERE codigo_iva = 1 --")); }), 3075);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM iva"), {QStringLiteral("codigo_iva")}).size(), 3);
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM iva WHERE codigo_iva = 1"), QStringLiteral("iva")).num(), 21);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO tienda VALUES (7, 'A -- B /* C */', '')")); }), 0);
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM tienda WHERE codigo_tienda = 7"), QStringLiteral("nombre_tienda")).str(),
              QStringLiteral("A -- B /* C */"));
}

TEST_F(Dialect, ASecondStatementIsRejectedAndNothingOfItRuns) {
    const int n = ErrorOf([&] { db->Execute(QStringLiteral("DELETE FROM iva WHERE codigo_iva = 1; DELETE FROM iva")); });
    EXPECT_EQ(n, 3142);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM iva"), {QStringLiteral("codigo_iva")}).size(), 3);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset(QStringLiteral("SELECT * FROM iva; SELECT * FROM tienda")); }), 3142);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("UPDATE iva SET iva = 22 WHERE codigo_iva = 1; garbage")); }), 3142);
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM iva WHERE codigo_iva = 1"), QStringLiteral("iva")).num(), 21);
}

TEST_F(Dialect, AnAndInsteadOfACommaLeavesZeroInTheStateOfTheNote) {
    // Invoicing a delivery note joins its two assignments with AND: the whole
    // right-hand side is one Boolean, stored as '0', and the origin is not set.
    db->Execute(QStringLiteral(
        "INSERT INTO cabecera_albaran_venta VALUES (02, 'AV', 2024, 5, '02/01/2024', 00, '', 01, '', '', 'P', '11111111H', "
        "'NOMBRE', '', '', '', '', '', 'CON', 0, '', '', '', '', 5, '', '', '', '', '', '', 0, 0, '10', '0', '0', '', 21, "
        "0, 0, '0', '')"));
    db->Execute(QStringLiteral("UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'F' AND "
                               "documento_origen_cabecera_albaran_venta = '2/00001' WHERE tienda_cabecera_albaran_venta = 2 "
                               "AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2024 AND "
                               "numero_cabecera_albaran_venta = 5"));
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM cabecera_albaran_venta"));
    EXPECT_EQ(rs->Fields(QStringLiteral("estado_cabecera_albaran_venta")).str(), QStringLiteral("0"));
    EXPECT_EQ(rs->Fields(QStringLiteral("documento_origen_cabecera_albaran_venta")).str(), QString());
}

TEST_F(Dialect, ANumberWithLeadingZerosInAWhereIsTheNumber) {
    // Numbers are written through masks such as "00000".
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 01, 'AV', 00017)"));
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM series WHERE tipo_series = 'VN' AND tienda_series = 1 AND "
                                   "serie_series = 'AV' AND ejercicio_series=2024"),
                    QStringLiteral("contador_series"))
                  .num(),
              17);
}

TEST_F(Dialect, AYearWrittenAgainstTheNextAndIsStillRead) {
    // The ticket sale joins the year and the following AND with no blank.
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 2, 'TI', 99)"));
    EXPECT_EQ(First(QStringLiteral("SELECT tipo_series, ejercicio_series, tienda_series, serie_series, contador_series "
                                   "FROM series WHERE tipo_series = 'VN' AND ejercicio_series = 2024AND tienda_series = 2 "
                                   "AND serie_series = 'TI'"),
                    QStringLiteral("contador_series"))
                  .num(),
              99);
    // A text in quotes is never touched, and names with digits stay whole.
    db->Execute(QStringLiteral("INSERT INTO formapago VALUES ('2X', '30AND60 DIAS', 2, 30, 60, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM formapago WHERE dias02_formapago = 60AND codigo_formapago = '2X'"),
                    QStringLiteral("nombre_formapago"))
                  .str(),
              QStringLiteral("30AND60 DIAS"));
}
