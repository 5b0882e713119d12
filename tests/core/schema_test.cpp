// The tables of datos.mdb take the rows exactly as the windows write them:
// no column list, values in the order of the columns.
#include "store_fixture.h"

#include <sqlite3.h>

using veltest::ErrorOf;
using veltest::ShopDatabase;

using Schema = ShopDatabase;

namespace {

QString Insert(const QString& table, const QStringList& values) {
    return QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, values.join(QStringLiteral(", ")));
}

// A supplier as the supplier window's INSERT writes it: the branch bare.
QStringList Supplier(const QString& branch) {
    return {"'P001'", "'B12345678'", "'ANA'", "'RUIZ'", "'SUMINISTROS ANA'", "'POLIGONO 3'", "'GETAFE'", "'MADRID'",
            "'ESPAÑOLA'", "28901", "916666666", "0", "0", "0", "''", "''", "0", "''", "0", "''", "''", "0", "''", "''",
            "0", "''", "'0081'", branch, "34", "1111111111", "0", "0", "'369'",
            "0", "'SUMINISTROS ANA SL'", "'03/01/2024'", "''", "''"};
}

QStringList NoteHeader(const QString& serie, int number) {
    return {"01", QStringLiteral("'%1'").arg(serie), "2024", QString::number(number), "'15/01/2024'", "00", "''", "01",
            "''", "''", "'P'", "'12345678Z'", "'PEDRO GARCIA'", "'CALLE MAYOR 1'", "'MADRID'", "'28001'", "'MADRID'",
            "'ESPAÑOLA'", "'CON'", "0", "''", "''", "''", "''", QString::number(number), "''", "''", "''", "''", "''",
            "''", "0", "0", "'121.5'", "'0'", "'0'", "''", "21", "5.2", "0", "'0'", "''"};
}

QStringList NoteLine(const QString& serie, int number) {
    return {"01", QStringLiteral("'%1'").arg(serie), "2024", QString::number(number), "''", "'REF001'", "'TORNILLO'",
            "3", "'33.5'", "''", "''", "'100.5'", "0", "0", "'100.5'", "'1'", "0", "0", "'00'", "'00'", "'00'", "'00'",
            QString::number(number), "01", "'1'"};
}

QStringList Product(const QString& ref) {
    return {"'01'", "'02'", "'03'", "'04'", QStringLiteral("'%1'").arg(ref), "'TORNILLO DE 5 MM'", "''", "'ACME'",
            "'T5'", "''", "0.5", "1.21", "2", "0", "0", "0", "0", "0", "0", "''", "''", "0", "0.01", "''", "''",
            "'8412345678905'", "''", "''", "''", "''", "1"};
}

} // namespace

TEST_F(Schema, EveryTableTakesTheInsertOfItsWindow) {
    const std::vector<std::pair<QString, int>> statements = {
        {QStringLiteral("INSERT INTO tienda VALUES (2, 'SUCURSAL NORTE', 'CALLE MAYOR 1')"), 3},
        {QStringLiteral("INSERT INTO almacen VALUES (2, 'NAVE', 'POLIGONO')"), 3},
        {QStringLiteral("INSERT INTO operador VALUES (2, 'LUCIA', 'TARDES')"), 3},
        {QStringLiteral("insert into iva values(4,7,1,1) "), 4},
        {QStringLiteral("insert into bancos values('0049','BANCO DEL NORTE')"), 2},
        {QStringLiteral("insert into bancos_sucursales values('0012','0049','OFICINA CENTRO','PLAZA MAYOR')"), 4},
        {QStringLiteral("INSERT INTO formapago VALUES ('R60', 'RECIBO 60', 2, 30, 60, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"), 15},
        {QStringLiteral("insert into divisiones values('01','FERRETERIA')"), 2},
        {QStringLiteral("insert into grandes_familias values('01','02','TORNILLERIA')"), 3},
        {QStringLiteral("insert into familias values('01','02','03','TORNILLOS')"), 4},
        {QStringLiteral("insert into articulos values('01','02','03','04','ROSCA CHAPA')"), 5},
        {Insert(QStringLiteral("productos"), Product(QStringLiteral("REF001"))), 31},
        {Insert(QStringLiteral("clientes"), veltest::Customer(QStringLiteral("C0001"), QStringLiteral("12345678Z"))), 46},
        {Insert(QStringLiteral("proveedores"), Supplier(QStringLiteral("0012"))), 38},
        {QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 1, 'AV', 1)"), 5},
        {Insert(QStringLiteral("cabecera_albaran_venta"), NoteHeader(QStringLiteral("AV"), 1)), 42},
        {Insert(QStringLiteral("detalle_albaran_venta"), NoteLine(QStringLiteral("AV"), 1)), 25},
        {Insert(QStringLiteral("cabecera_factura_venta"), NoteHeader(QStringLiteral("VD"), 1)), 42},
        {Insert(QStringLiteral("detalle_factura_venta"), NoteLine(QStringLiteral("VD"), 1) << "'TORNILLO DE ROSCA CHAPA'"), 26},
        {QStringLiteral("INSERT INTO cabecera_fichas_clientes VALUES (2024, '12345678Z', 'C0001', 1, 100.00, 0.00, 0.00, '15/01/2024')"), 8},
        {QStringLiteral("INSERT INTO detalle_fichas_clientes VALUES (2024, '12345678Z', 'C0001', 1, '1', 'AV', '', 'CON', "
                        "'1\\AV\\15/01/2024\\CON', '15/01/2024', 100.00, 0.00, '')"),
         13},
        {QStringLiteral("INSERT INTO cabecera_fichas_proveedores VALUES (2024, 'B12345678', 'P001', 1, 0.00, 100.00, 0.00, '15/01/2024')"), 8},
        {QStringLiteral("INSERT INTO detalle_fichas_proveedores VALUES (2024, 'B12345678', 'P001', 1, '1', 'FC', '77', 'CON', "
                        "'FACTURA 77', '15/01/2024', 0.00, 100.00, '')"),
         13},
        {QStringLiteral("INSERT INTO cabecera_diaria_ticket VALUES ('1', 'TI', 2024, 1, '01', 'OPERADOR', '15/01/2024', "
                        "'10:30:00', 12.10, 0, 2.10, 0, 0, 1, 0)"),
         15},
        {QStringLiteral("INSERT INTO detalle_diaria_ticket VALUES ('1', 'TI', 2024, 1, '', '', '', '', 'REF001', '', '', '', "
                        "'TORNILLO DE 5 MM', 1.21, 10, 12.10, 21)"),
         17},
    };
    for (const auto& [sql, count] : statements) {
        EXPECT_EQ(ErrorOf([&] { db->Execute(sql); }), 0) << qPrintable(sql);
        const QString table = sql.section(QLatin1Char(' '), 2, 2);
        const vel::schema::Table* t = vel::schema::FindTable(table);
        ASSERT_NE(t, nullptr) << qPrintable(table);
        EXPECT_EQ(static_cast<int>(t->columns.size()), count) << qPrintable(table);
    }
    EXPECT_EQ(statements.size(), vel::schema::Tables().size());
}

TEST_F(Schema, TheTablesInTheFileHaveTheColumnsInTheirOrder) {
    for (const auto& t : vel::schema::Tables()) {
        sqlite3_stmt* st = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(db->handle(), QStringLiteral("SELECT * FROM %1").arg(QLatin1String(t.name)).toUtf8().constData(),
                                     -1, &st, nullptr),
                  SQLITE_OK);
        ASSERT_EQ(sqlite3_column_count(st), static_cast<int>(t.columns.size())) << t.name;
        for (int i = 0; i < sqlite3_column_count(st); ++i) EXPECT_STREQ(sqlite3_column_name(st, i), t.columns[size_t(i)].name);
        sqlite3_finalize(st);
    }
}

TEST_F(Schema, ColumnsStandWhereTheWindowsPutThem) {
    const auto* clientes = vel::schema::FindTable(QStringLiteral("CLIENTES"));
    ASSERT_NE(clientes, nullptr);
    EXPECT_STREQ(clientes->columns[1].name, "nif_cliente");
    EXPECT_STREQ(clientes->columns[26].name, "banco_cliente");
    EXPECT_STREQ(clientes->columns[38].name, "limitefacturacion_cliente");
    EXPECT_STREQ(clientes->columns[45].name, "iban_cliente");
    const auto* proveedores = vel::schema::FindTable(QStringLiteral("proveedores"));
    EXPECT_STREQ(proveedores->columns[32].name, "formapago_proveedor");
    EXPECT_STREQ(proveedores->columns[33].name, "mailing_proveedor");
    EXPECT_STREQ(proveedores->columns[37].name, "iban_proveedor");
    const auto* cabecera = vel::schema::FindTable(QStringLiteral("cabecera_factura_venta"));
    EXPECT_STREQ(cabecera->columns[36].name, "rec_financ");
    EXPECT_STREQ(cabecera->columns[41].name, "iban_cabecera_factura_venta");
    const auto* detalle = vel::schema::FindTable(QStringLiteral("detalle_factura_venta"));
    EXPECT_STREQ(detalle->columns[25].name, "descripcionlarga_detalle_factura_venta");
    const auto* iva = vel::schema::FindTable(QStringLiteral("iva"));
    EXPECT_STREQ(iva->columns[3].name, "RecargoEquivalencia");
}

TEST_F(Schema, AnInvoiceRowSaysVDWhileItsCounterSaysFD) {
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 0, 'FD', 1)"));
    db->Execute(Insert(QStringLiteral("cabecera_factura_venta"), NoteHeader(QStringLiteral("VD"), 1)));
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM series WHERE tipo_series = 'VN' AND tienda_series = 0 AND serie_series = 'FD' "
                                  "AND ejercicio_series=2024"),
                   {QStringLiteral("contador_series")}),
              QStringList{QStringLiteral("1")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM cabecera_factura_venta WHERE ejercicio_cabecera_factura_venta = 2024"),
                   {QStringLiteral("serie_cabecera_factura_venta")}),
              QStringList{QStringLiteral("VD")});
    EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM cabecera_factura_venta WHERE serie_cabecera_factura_venta = 'FD'"),
                     {QStringLiteral("serie_cabecera_factura_venta")})
                    .isEmpty());
}

TEST_F(Schema, ASupplierBranchLosesItsZerosOnCreationAndKeepsThemAfterAnEdit) {
    db->Execute(Insert(QStringLiteral("proveedores"), Supplier(QStringLiteral("0012"))));
    const QString find = QStringLiteral("SELECT * FROM proveedores WHERE nif_proveedor = 'B12345678'");
    const vb::Variant created = First(find, QStringLiteral("sucursal_proveedor"));
    ASSERT_TRUE(created.isText());
    EXPECT_EQ(created.str(), QStringLiteral("12"));
    db->Execute(QStringLiteral("UPDATE proveedores SET codigo_proveedor = 'P001', banco_proveedor = '0081', "
                               "sucursal_proveedor = '0012' WHERE nif_proveedor = 'B12345678'"));
    EXPECT_EQ(First(find, QStringLiteral("sucursal_proveedor")).str(), QStringLiteral("0012"));
}

TEST_F(Schema, APostcodeWithALeadingZeroIsStoredAsANumber) {
    QStringList c = veltest::Customer(QStringLiteral("C2"), QStringLiteral("X1"));
    c[9] = QStringLiteral("01234");
    db->Execute(Insert(QStringLiteral("clientes"), c));
    const vb::Variant pc = First(QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = 'x1'"), QStringLiteral("codigopostal_cliente"));
    ASSERT_TRUE(pc.isNumber());
    EXPECT_EQ(pc.num(), 1234);
}

TEST_F(Schema, ABankTypedAsOneIsInsertedAgainAsItsMaskedCode) {
    // The bank window looks '1' up and inserts '0001' even if '0001' exists.
    db->Execute(QStringLiteral("insert into bancos values('0001','PRIMERO')"));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("insert into bancos values('0001','SEGUNDO')")); }), 0);
    EXPECT_EQ(Rows(QStringLiteral("select * from bancos where codigo_banco='0001'"), {QStringLiteral("nombre_banco")}).size(), 2);
}

TEST_F(Schema, TwoBanksMayHaveABranchOfTheSameCodeButABankOnlyOne) {
    db->Execute(QStringLiteral("insert into bancos_sucursales values('0012','0049','A','')"));
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("insert into bancos_sucursales values('0012','0081','B','')")); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("insert into bancos_sucursales values('0012','0049','C','')")); }), 3022);
}

TEST_F(Schema, InvoicingNotesWithoutACounterRepeatsTheSeriesRowAndInvoiceNumberOne) {
    // With no 'FD' counter for the year each note inserts ('VN', year, 0,
    // 'VN', 1) and becomes invoice 1: all of it is accepted.
    for (int note = 1; note <= 3; ++note) {
        EXPECT_EQ(ErrorOf([&] { db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2024, 0, 'VN', 1)")); }), 0);
        EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("cabecera_factura_venta"), NoteHeader(QStringLiteral("VD"), 1))); }), 0);
    }
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM series WHERE serie_series = 'VN'"), {QStringLiteral("contador_series")}).size(), 3);
}

TEST_F(Schema, ADeliveryNoteReceivedTwiceFailsAsADuplicate) {
    db->Execute(Insert(QStringLiteral("cabecera_albaran_venta"), NoteHeader(QStringLiteral("AV"), 7)));
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("cabecera_albaran_venta"), NoteHeader(QStringLiteral("AV"), 7))); }), 3022);
    // Its lines are several rows of the same key.
    db->Execute(Insert(QStringLiteral("detalle_albaran_venta"), NoteLine(QStringLiteral("AV"), 7)));
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("detalle_albaran_venta"), NoteLine(QStringLiteral("AV"), 7))); }), 0);
}

TEST_F(Schema, ASecondCustomerWithTheSameCodeAndAnotherNifIsAccepted) {
    db->Execute(Insert(QStringLiteral("clientes"), veltest::Customer(QStringLiteral("C1"), QStringLiteral("11111111H"))));
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("clientes"), veltest::Customer(QStringLiteral("C1"), QStringLiteral("22222222J")))); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("clientes"), veltest::Customer(QStringLiteral("C9"), QStringLiteral("11111111h")))); }), 3022);
}

TEST_F(Schema, TwoProductsMayShareABarcodeButNotAReference) {
    db->Execute(Insert(QStringLiteral("productos"), Product(QStringLiteral("R1"))));
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("productos"), Product(QStringLiteral("R2")))); }), 0);
    EXPECT_EQ(ErrorOf([&] { db->Execute(Insert(QStringLiteral("productos"), Product(QStringLiteral("r1")))); }), 3022);
    // The lookup by reference or barcode finds both by the barcode.
    EXPECT_EQ(Rows(QStringLiteral("SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos WHERE "
                                  "referencia_productos = '8412345678905' OR cod_barras1_productos = '8412345678905' OR "
                                  "cod_barras2_productos = '8412345678905' OR cod_barras3_productos = '8412345678905'"),
                   {QStringLiteral("pvp_neto_productos")})
                  .size(),
              2);
}

TEST_F(Schema, TheEmptyDatabaseHoldsTheFirstRowsAUserEnters) {
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tienda"), {QStringLiteral("codigo_tienda"), QStringLiteral("nombre_tienda")}),
              QStringList{QStringLiteral("1|CENTRAL")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM operador"), {QStringLiteral("codigo_operador")}), QStringList{QStringLiteral("1")});
    EXPECT_EQ(Rows(QStringLiteral("select * from iva order by codigo_iva asc"),
                   {QStringLiteral("iva"), QStringLiteral("retencion"), QStringLiteral("RecargoEquivalencia")}),
              (QStringList{QStringLiteral("21|0|5.2"), QStringLiteral("10|0|1.4"), QStringLiteral("4|0|0.5")}));
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM formapago WHERE vencimientos_formapago = 1 AND dias01_formapago = 0"),
                   {QStringLiteral("codigo_formapago")}),
              QStringList{QStringLiteral("CON")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM formapago WHERE vencimientos_formapago = 3"),
                   {QStringLiteral("dias01_formapago"), QStringLiteral("dias02_formapago"), QStringLiteral("dias03_formapago")}),
              QStringList{QStringLiteral("30|60|90")});
    // Nothing else: no documents, no counters, no customers.
    for (const char* empty : {"clientes", "proveedores", "productos", "series", "cabecera_albaran_venta", "bancos"})
        EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM %1").arg(QLatin1String(empty)), {}).isEmpty()) << empty;
}

TEST_F(Schema, EveryKeyHasAnIndex) {
    // UPDATE and DELETE by key must not read the whole table.
    for (const auto& t : vel::schema::Tables()) {
        QString where;
        const std::vector<const char*> key = !t.primaryKey.empty() ? t.primaryKey : t.indexes.front();
        for (const char* k : key) where += QStringLiteral("%1%2 = 1").arg(where.isEmpty() ? QString() : QStringLiteral(" AND "), QLatin1String(k));
        sqlite3_stmt* st = nullptr;
        const QString sql = QStringLiteral("EXPLAIN QUERY PLAN SELECT * FROM %1 WHERE %2").arg(QLatin1String(t.name), where);
        ASSERT_EQ(sqlite3_prepare_v2(db->handle(), sql.toUtf8().constData(), -1, &st, nullptr), SQLITE_OK) << qPrintable(sql);
        QString plan;
        while (sqlite3_step(st) == SQLITE_ROW) plan += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 3)));
        sqlite3_finalize(st);
        EXPECT_TRUE(plan.contains(QStringLiteral("USING"))) << t.name << ": " << qPrintable(plan);
    }
}

// The structure window writes a level's own code first, then the codes above
// it going up: a gran familia saved that way is found under its division.
TEST_F(Schema, AStructureLevelWrittenAsTheWindowWritesItIsFoundUnderItsParents) {
    db->Execute(QStringLiteral("insert into divisiones values('01','FERRETERIA')"));
    db->Execute(QStringLiteral("insert into grandes_familias values('10','01','TORNILLERIA')"));
    db->Execute(QStringLiteral("insert into familias values('20','10','01','TORNILLOS')"));
    db->Execute(QStringLiteral("insert into articulos values('30','20','10','01','ROSCA CHAPA')"));
    EXPECT_EQ(Rows(QStringLiteral("select * from grandes_familias where codigo_division='01' order by codigo_granfamilia asc"),
                   {QStringLiteral("codigo_granfamilia"), QStringLiteral("descripcion_granfamilia")}),
              QStringList{QStringLiteral("10|TORNILLERIA")});
    EXPECT_EQ(Rows(QStringLiteral("select * from articulos where  codigo_familia='20' and codigo_granfamilia='10' and "
                                  "codigo_division='01' order by codigo_articulo asc"),
                   {QStringLiteral("codigo_articulo"), QStringLiteral("descripcion_articulo")}),
              QStringList{QStringLiteral("30|ROSCA CHAPA")});
}
