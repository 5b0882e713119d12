// The product lookups the counter and the sales windows make on every scan,
// and the leaf listing of the products window, are answered by indexes; a
// database made without them gets them at start-up.
#include "store_fixture.h"

#include <sqlite3.h>

using namespace veltest;

namespace {

class ProductIndexes : public ShopDatabase {
protected:
    QString Plan(const QString& sql) {
        sqlite3_stmt* st = nullptr;
        const QByteArray q = ("EXPLAIN QUERY PLAN " + sql).toUtf8();
        EXPECT_EQ(sqlite3_prepare_v2(db->handle(), q.constData(), -1, &st, nullptr), SQLITE_OK) << q.constData();
        QStringList plan;
        while (sqlite3_step(st) == SQLITE_ROW)
            plan << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 3)));
        sqlite3_finalize(st);
        return plan.join(QLatin1Char('\n'));
    }
    QStringList ProductIndexNames() {
        return Rows("SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = 'productos' ORDER BY name",
                    {"name"});
    }
};

// The statement of the document lines, as the delivery note window sends it.
const QString kLookup = QStringLiteral(
    "SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos WHERE "
    "referencia_productos = '8412345000011' OR cod_barras1_productos = '8412345000011' OR "
    "cod_barras2_productos = '8412345000011' OR cod_barras3_productos = '8412345000011'");

const QString kLeaf = QStringLiteral(
    "SELECT referencia_productos, descripcion_productos, marca_productos, modelo_productos, pvp_neto_productos "
    "FROM productos WHERE division_productos = '01' AND gfamilia_productos = '02' AND familia_productos = '03' "
    "AND articulo_productos = '04' ORDER BY referencia_productos");

TEST_F(ProductIndexes, TheLookupByReferenceOrBarcodeSearchesFourIndexes) {
    const QString plan = Plan(kLookup);
    EXPECT_TRUE(plan.contains("MULTI-INDEX OR")) << plan.toStdString();
    EXPECT_EQ(plan.count("USING INDEX"), 4) << plan.toStdString();
    EXPECT_FALSE(plan.contains("SCAN")) << plan.toStdString();
}

TEST_F(ProductIndexes, TheLeafIsListedInReferenceOrderWithoutASort) {
    const QString plan = Plan(kLeaf);
    EXPECT_TRUE(plan.contains("USING INDEX")) << plan.toStdString();
    EXPECT_FALSE(plan.contains("TEMP B-TREE")) << plan.toStdString();
}

TEST_F(ProductIndexes, AnOldDatabaseGetsThemOnceAndOnlyOnce) {
    for (const QString& name : ProductIndexNames()) {
        if (!name.startsWith("sqlite_autoindex")) db->Execute("DROP INDEX " + name);
    }
    EXPECT_TRUE(Plan(kLookup).contains("SCAN")) << "without its indexes the lookup reads the table";
    vel::schema::CreateMissingIndexes(*db);
    const QStringList after = ProductIndexNames();
    EXPECT_EQ(after.size(), 5) << after.join(',').toStdString(); // the key's own and four
    EXPECT_FALSE(Plan(kLookup).contains("SCAN"));
    vel::schema::CreateMissingIndexes(*db);
    EXPECT_EQ(ProductIndexNames(), after);
}

TEST_F(ProductIndexes, AnOlderLeafIndexUnderTheSameNameIsKeptAndANewOneMade) {
    // A database whose leaf index had the four codes only, under the name the
    // leaf index has now.
    const QString leafName = ProductIndexNames().filter("ix_productos_4").value(0);
    ASSERT_FALSE(leafName.isEmpty());
    db->Execute("DROP INDEX ix_productos_4");
    db->Execute("CREATE INDEX ix_productos_4 ON productos (division_productos, gfamilia_productos, "
                "familia_productos, articulo_productos)");
    vel::schema::CreateMissingIndexes(*db);
    EXPECT_TRUE(ProductIndexNames().contains("ix_productos_4_2")) << ProductIndexNames().join(',').toStdString();
    EXPECT_FALSE(Plan(kLeaf).contains("TEMP B-TREE")) << Plan(kLeaf).toStdString();
}

TEST_F(ProductIndexes, ADatabaseThatLacksATableIsLeftAsItIs) {
    db->Execute("DROP TABLE productos");
    vel::schema::CreateMissingIndexes(*db);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset("SELECT * FROM productos"); }), 3078);
    EXPECT_EQ(Rows("SELECT * FROM iva", {"iva"}).size(), 3);
}

} // namespace
