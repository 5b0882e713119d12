// A cursor left open while the window writes walks on over the same rows, in
// the same order, each once; rows it reaches after the write are read as they
// stand then.
#include "store_fixture.h"
#include "core/sql_dialect.h"

using veltest::ErrorOf;
using veltest::ShopDatabase;

namespace {

class OpenCursor : public ShopDatabase {
protected:
    void SetUp() override {
        ShopDatabase::SetUp();
        // Warehouses with names that repeat, so that an order by name has ties.
        const char* const names[] = {"NAVE", "SOTANO", "NAVE", "ALTILLO", "SOTANO", "NAVE", "ALTILLO", "PATIO"};
        for (int i = 0; i < 8; ++i)
            db->Execute(QStringLiteral("INSERT INTO almacen VALUES (%1, '%2', '')").arg(8 - i).arg(QLatin1String(names[i])));
    }

    // The codes of a query's rows, walked with no write on the way.
    QStringList Codes(const QString& sql) { return Rows(sql, {QStringLiteral("codigo_almacen")}); }

    // The same walk, writing a row of another table after each row read.
    QStringList CodesWritingOnTheWay(const QString& sql, int firstWriteAfter = 1) {
        QStringList out;
        auto rs = db->OpenRecordset(sql);
        int n = 0;
        while (!rs->Eof()) {
            out << rs->Fields(QStringLiteral("codigo_almacen")).str();
            if (++n >= firstWriteAfter)
                db->Execute(QStringLiteral("INSERT INTO operador VALUES (%1, 'X', '')").arg(++written_ + 100));
            rs->MoveNext();
        }
        return out;
    }

    int written_ = 0;
};

TEST_F(OpenCursor, AWalkWithWritesSeesEveryRowOnceInTheOrderOfTheQuery) {
    for (const QString& sql : {QStringLiteral("SELECT * FROM almacen ORDER BY nombre_almacen"),
                               QStringLiteral("SELECT codigo_almacen, nombre_almacen FROM almacen ORDER BY nombre_almacen DESC"),
                               QStringLiteral("SELECT * FROM almacen WHERE codigo_almacen > 2 ORDER BY nombre_almacen, codigo_almacen"),
                               QStringLiteral("SELECT * FROM almacen"),
                               // an order by a name of the column list: the keys come from the statement
                               QStringLiteral("SELECT codigo_almacen, nombre_almacen AS n FROM almacen ORDER BY n"),
                               QStringLiteral("select * from almacen where nombre_almacen <> 'PATIO' order by nombre_almacen asc;")}) {
        const QStringList quiet = Codes(sql);
        ASSERT_FALSE(quiet.isEmpty()) << qPrintable(sql);
        for (int first = 1; first <= 3; ++first)
            EXPECT_EQ(CodesWritingOnTheWay(sql, first), quiet) << qPrintable(sql) << " first write after " << first;
    }
}

TEST_F(OpenCursor, AQueryOfAnotherKindKeepsItsRowsAcrossAWriteToo) {
    // No window writes these; the store still walks them right.
    for (const QString& sql : {QStringLiteral("SELECT DISTINCT codigo_almacen FROM almacen ORDER BY 1"),
                               QStringLiteral("SELECT codigo_almacen, upper(nombre_almacen) AS n FROM almacen ORDER BY n, 1"),
                               QStringLiteral("SELECT * FROM almacen ORDER BY 2, 1")}) {
        const QStringList quiet = Codes(sql);
        ASSERT_EQ(quiet.size(), 8) << qPrintable(sql);
        EXPECT_EQ(CodesWritingOnTheWay(sql), quiet) << qPrintable(sql);
    }
}

TEST_F(OpenCursor, RowsReachedAfterAWriteAreReadAsTheyStandThen) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 1);
    db->Execute(QStringLiteral("UPDATE almacen SET nombre_almacen = 'NUEVO' WHERE codigo_almacen = 2"));
    // A row changed so that the query would no longer find it is still in the set.
    db->Execute(QStringLiteral("UPDATE almacen SET codigo_almacen = 30 WHERE codigo_almacen = 3"));
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (50, 'NUEVO', '')"));
    rs->MoveNext();
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("NUEVO"));
    rs->MoveNext();
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 30);
    rs->MoveNext();
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 4);
    rs->MoveNext();
    rs->MoveNext();
    rs->MoveNext();
    rs->MoveNext();
    rs->MoveNext();
    // A row written after the cursor let go of its statement is not in the set.
    EXPECT_TRUE(rs->Eof());
}

TEST_F(OpenCursor, ARowDeletedBeforeTheCursorReachesItIsReportedDeleted) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    db->Execute(QStringLiteral("DELETE FROM almacen WHERE codigo_almacen = 2"));
    rs->MoveNext();
    EXPECT_FALSE(rs->Eof());
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("nombre_almacen")); }), 3167);
    rs->MoveNext();
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 3);
}

TEST_F(OpenCursor, MoveFirstGoesBackToTheFirstRowAfterAWalk) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY nombre_almacen, codigo_almacen"));
    const double first = rs->Fields(QStringLiteral("codigo_almacen")).num();
    rs->MoveNext();
    rs->MoveNext();
    db->Execute(QStringLiteral("INSERT INTO operador VALUES (9, 'X', '')"));
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 8);
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("SOTANO"));
    rs->MoveFirst();
    EXPECT_EQ(rs->AbsolutePosition(), 0);
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), first);
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("ALTILLO"));
}

TEST_F(OpenCursor, RecordCountIsTheRowsTheCursorHasBeenOn) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    EXPECT_EQ(rs->RecordCount(), 1);
    db->Execute(QStringLiteral("INSERT INTO operador VALUES (9, 'X', '')"));
    EXPECT_EQ(rs->RecordCount(), 1); // letting go of the statement reads no row
    rs->MoveNext();
    EXPECT_EQ(rs->RecordCount(), 2);
}

TEST_F(OpenCursor, AnEmptySetStaysEmptyAcrossAWrite) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen WHERE codigo_almacen > 100 ORDER BY codigo_almacen"));
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (101, 'NUEVO', '')"));
    EXPECT_TRUE(rs->Eof());
    EXPECT_TRUE(rs->Bof());
    EXPECT_EQ(rs->AbsolutePosition(), -1);
}

TEST_F(OpenCursor, TheKeyOfTheRowsIsNoFieldOfTheCursor) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT codigo_almacen FROM almacen ORDER BY codigo_almacen"));
    EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("rowid")); }), 3265);
    EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("nombre_almacen")); }), 3265);
}

TEST_F(OpenCursor, ABadQueryIsReportedInTheWordsOfTheQueryAsWritten) {
    EXPECT_EQ(veltest::DescriptionOf([&] { db->OpenRecordset(QStringLiteral("SELECT * FROM almacen WHERE codigo_almacen = = 1 ORDER BY codigo_almacen")); }),
              QStringLiteral("Error de sintaxis (falta operador) en la expresión de consulta 'codigo_almacen = = 1'."));
}

// ---- The statements a keyed cursor runs --------------------------------------

TEST(KeyedSelect, TheQueriesOfTheWindowsReadTheirRowsByKey) {
    const auto k = vel::dialect::Keyed(QStringLiteral(
        "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' AND "
        "pvp_neto_productos > 0 ORDER BY referencia_productos"));
    ASSERT_TRUE(k);
    EXPECT_EQ(k->rows, QStringLiteral("SELECT referencia_productos, pvp_neto_productos, rowid FROM productos WHERE "
                                      "referencia_productos <> '' AND pvp_neto_productos > 0 ORDER BY "
                                      "referencia_productos, rowid"));
    EXPECT_EQ(k->keysAfter, QStringLiteral("SELECT rowid FROM productos WHERE referencia_productos <> '' AND "
                                           "pvp_neto_productos > 0 ORDER BY referencia_productos, rowid LIMIT -1 OFFSET ?1"));
    EXPECT_EQ(k->row, QStringLiteral("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE rowid = ?1"));
}

TEST(KeyedSelect, AnOrderDownwardsBreaksItsTiesDownwardsToo) {
    const auto k = vel::dialect::Keyed(QStringLiteral("select * from bancos order by nombre_banco desc;"));
    ASSERT_TRUE(k);
    EXPECT_EQ(k->rows, QStringLiteral("select *, rowid from bancos order by nombre_banco desc, rowid DESC;"));
    EXPECT_EQ(k->row, QStringLiteral("SELECT * FROM bancos WHERE rowid = ?1"));
}

TEST(KeyedSelect, AQueryWithNoOrderHasNoStatementOfKeys) {
    const auto k = vel::dialect::Keyed(QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = '1'"));
    ASSERT_TRUE(k);
    EXPECT_EQ(k->rows, QStringLiteral("SELECT *, rowid FROM clientes WHERE nif_cliente = '1'"));
    EXPECT_TRUE(k->keysAfter.isEmpty());
}

// A product looked up by its reference or any of its bar codes: the engine
// finds the rows column by column, so the first row would be the one found by
// the first column, not the product saved first.
TEST(KeyedSelect, AFilterOfAlternativesIsReadInTheOrderOfSaving) {
    const auto k = vel::dialect::Keyed(QStringLiteral(
        "SELECT * FROM productos WHERE referencia_productos = '84' OR cod_barras1_productos = '84' OR "
        "cod_barras2_productos = '84'"));
    ASSERT_TRUE(k);
    EXPECT_EQ(k->rows, QStringLiteral("SELECT *, rowid FROM productos WHERE referencia_productos = '84' OR "
                                      "cod_barras1_productos = '84' OR cod_barras2_productos = '84' ORDER BY rowid"));
    EXPECT_EQ(k->keysAfter, QStringLiteral("SELECT rowid FROM productos WHERE referencia_productos = '84' OR "
                                           "cod_barras1_productos = '84' OR cod_barras2_productos = '84' ORDER BY "
                                           "rowid LIMIT -1 OFFSET ?1"));
}

TEST(KeyedSelect, QueriesOfOtherKindsAreReadAsTheyCome) {
    for (const char* sql : {"SELECT count(*) FROM clientes", "SELECT DISTINCT nif_cliente FROM clientes",
                            "SELECT * FROM clientes, proveedores", "SELECT * FROM clientes ORDER BY 1",
                            "SELECT * FROM (SELECT * FROM clientes)", "SELECT * FROM clientes LIMIT 3",
                            "SELECT * FROM clientes WHERE rowid > 3", "SELECT * FROM clientes c ORDER BY nif_cliente",
                            "SELECT * FROM clientes; SELECT 1", "UPDATE clientes SET nif_cliente = ''", "SELECT 1",
                            "SELECT * FROM clientes WHERE nif_cliente IN (SELECT nif_proveedor FROM proveedores)"})
        EXPECT_FALSE(vel::dialect::Keyed(QString::fromLatin1(sql))) << sql;
}

TEST(KeyedSelect, QuotedTextThatLooksLikeSqlIsJustText) {
    const auto k = vel::dialect::Keyed(QStringLiteral(
        "SELECT * FROM productos WHERE descripcion_productos LIKE '*ORDER BY 1; SELECT DISTINCT*' ORDER BY referencia_productos"));
    ASSERT_TRUE(k);
    EXPECT_TRUE(k->rows.endsWith(QStringLiteral("ORDER BY referencia_productos, rowid")));
}

} // namespace

// A row the cursor has just stepped to is read field by field as the window
// asks; every field must still read right once the statement has moved on.
TEST_F(OpenCursor, FieldsNotYetReadSurviveAWriteWhileTheCursorStandsOnTheRow) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    rs->MoveNext(); // on 2 ALTILLO, nothing read from it yet
    db->Execute(QStringLiteral("UPDATE almacen SET nombre_almacen = 'CAMBIADO' WHERE codigo_almacen = 2"));
    // The row was read when the cursor stepped to it, before the write.
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("ALTILLO"));
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 2);
}

TEST_F(OpenCursor, ASingleRowReadAgainAfterWalkingPastTheEnd) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen WHERE codigo_almacen = 3"));
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 3); // one field read, not the name
    rs->MoveNext();
    ASSERT_TRUE(rs->Eof());
    rs->MoveFirst();
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("NAVE"));
}

TEST_F(OpenCursor, MoveLastKeepsTheRowsLeftBehindReadable) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    rs->MoveLast();
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("NAVE"));
    rs->MoveFirst();
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("PATIO"));
}
