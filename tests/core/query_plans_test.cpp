// The reads of a busy shop find their rows through indexes: a delivery note's
// lines by year and number, a customer's notes, the note control's list by
// store, year and state, the card listings by year. Each statement here is
// written as the window writes it; the scenario suite checks every statement
// the program really runs (tests/plans/recorded_statements_test.cpp).
#include "store_fixture.h"
#include "support/query_plan.h"
#include "core/sql_dialect.h"

using namespace veltest;

namespace {

// What the engine runs for a statement: the statement, and for a SELECT the
// cursor's keyed forms.
QStringList EngineForms(const QString& sql) {
    const QString engine = vel::dialect::ToEngine(sql);
    QStringList forms{engine};
    if (auto k = vel::dialect::Keyed(engine)) {
        forms << k->rows << k->row;
        if (!k->keysAfter.isEmpty()) forms << k->keysAfter;
    }
    return forms;
}

const QStringList kNoteWindow = {
    "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = 'B12345678' ORDER BY "
    "ejercicio_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta <> '*' ORDER BY "
    "ejercicio_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = 'B12345678' AND "
    "ejercicio_cabecera_albaran_venta = 2026 ORDER BY numero_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = 'B12345678' AND "
    "ejercicio_cabecera_albaran_venta = 2026 ORDER BY ejercicio_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta <> '*' AND "
    "ejercicio_cabecera_albaran_venta = 2026 ORDER BY numero_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = 2026 AND "
    "numero_cabecera_albaran_venta = 00017",
    "SELECT * FROM detalle_albaran_venta WHERE ejercicio_detalle_albaran_venta = 2026 AND "
    "numero_detalle_albaran_venta = 00017",
    "SELECT nif_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = 2026 "
    "AND numero_cabecera_albaran_venta = 17 ",
    "SELECT estado_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 1 AND "
    "serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
    "numero_cabecera_albaran_venta = 17",
    "DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = 'B12345678' AND "
    "tienda_cabecera_albaran_venta = 01 AND serie_cabecera_albaran_venta = 'AV' AND "
    "ejercicio_cabecera_albaran_venta = 2026 AND numero_cabecera_albaran_venta = 17",
    "DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = 1 AND serie_detalle_albaran_venta = "
    "'AV' AND ejercicio_detalle_albaran_venta = 2026 AND numero_detalle_albaran_venta = 17",
};

const QStringList kInvoiceWindow = {
    "SELECT * FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = 'B12345678' ORDER BY "
    "ejercicio_cabecera_factura_venta",
    "SELECT * FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = 'B12345678' AND "
    "ejercicio_cabecera_factura_venta = 2026 ORDER BY numero_cabecera_factura_venta",
    "SELECT * FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = 'B12345678' AND "
    "ejercicio_cabecera_factura_venta = 2026 ORDER BY ejercicio_cabecera_factura_venta",
    "SELECT * FROM cabecera_factura_venta WHERE ejercicio_cabecera_factura_venta = 2026 AND "
    "numero_cabecera_factura_venta = 00017",
    "SELECT * FROM detalle_factura_venta WHERE ejercicio_detalle_factura_venta = 2026 AND "
    "numero_detalle_factura_venta = 00017",
    "DELETE FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = 'B12345678' AND "
    "ejercicio_cabecera_factura_venta = 2026 AND numero_cabecera_factura_venta = 17",
    "DELETE FROM detalle_factura_venta WHERE ejercicio_detalle_factura_venta = 2026 AND "
    "numero_detalle_factura_venta = 17",
};

// The note control and the exchange of notes between stores.
const QStringList kNoteControl = {
    "SELECT ejercicio_cabecera_albaran_venta FROM cabecera_albaran_venta ORDER BY "
    "ejercicio_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 1 AND "
    "ejercicio_cabecera_albaran_venta = 2026 AND estado_cabecera_albaran_venta = 'P' ORDER BY "
    "numero_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 1 AND "
    "ejercicio_cabecera_albaran_venta = 2026 AND estado_cabecera_albaran_venta <> '' ORDER BY "
    "numero_cabecera_albaran_venta",
    "SELECT * FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 2 AND "
    "serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
    "numero_cabecera_albaran_venta = 5",
    "UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'F' AND "
    "documento_origen_cabecera_albaran_venta = '2/00001' WHERE tienda_cabecera_albaran_venta = 2 AND "
    "serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
    "numero_cabecera_albaran_venta = 5",
    "SELECT * FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = 2 AND serie_detalle_albaran_venta = "
    "'AV' AND ejercicio_detalle_albaran_venta = 2026 AND numero_detalle_albaran_venta = 5",
    "UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'E' WHERE tienda_cabecera_albaran_venta = 2 "
    "AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
    "numero_cabecera_albaran_venta = 5",
};

// The account cards and their listings, of customers and of suppliers.
QStringList Cards(const QString& who) {
    QStringList out;
    for (QString s : {
             QStringLiteral("SELECT * FROM cabecera_fichas_W WHERE nif_cabecera_fichas_W = 'B1' ORDER BY "
                            "ejercicio_cabecera_fichas_W"),
             QStringLiteral("SELECT * FROM cabecera_fichas_W WHERE nif_cabecera_fichas_W = 'B1' AND "
                            "ejercicio_cabecera_fichas_W = 2025"),
             QStringLiteral("SELECT * FROM detalle_fichas_W WHERE nif_detalle_fichas_W = 'B1' AND "
                            "ejercicio_detalle_fichas_W = 2026"),
             QStringLiteral("SELECT * FROM detalle_fichas_W WHERE nif_detalle_fichas_W = 'B1' AND "
                            "ejercicio_detalle_fichas_W = 2026 AND numero_detalle_fichas_W = 3"),
             QStringLiteral("UPDATE detalle_fichas_W SET tipo_linea_detalle_fichas_W = 'C' WHERE nif_detalle_fichas_W "
                            "= 'B1' AND numero_detalle_fichas_W = 3 AND ejercicio_detalle_fichas_W = 2026"),
             QStringLiteral("UPDATE cabecera_fichas_W SET haber_cabecera_fichas_W = 10 WHERE nif_cabecera_fichas_W "
                            "= 'B1' AND ejercicio_cabecera_fichas_W = 2026"),
             QStringLiteral("SELECT * FROM detalle_fichas_W WHERE nif_detalle_fichas_W = 'B1' AND "
                            "ejercicio_detalle_fichas_W = 2026 ORDER BY nif_detalle_fichas_W"),
             QStringLiteral("SELECT * FROM detalle_fichas_W WHERE ejercicio_detalle_fichas_W = 2026 ORDER BY "
                            "nif_detalle_fichas_W"),
         })
        out << s.replace(QLatin1String("_W"), "_" + who);
    return out;
}

const QStringList kCustomersAndProducts = {
    "SELECT * FROM clientes ORDER BY nif_cliente",
    "SELECT * FROM clientes ORDER BY codigo_cliente",
    "SELECT * FROM clientes ORDER BY nombrefiscal_cliente",
    "SELECT * FROM clientes ORDER BY nombrecomercial_cliente",
    "SELECT * FROM clientes WHERE nombrecomercial_cliente = 'PEDRO'",
    "SELECT * FROM proveedores ORDER BY nombrefiscal_proveedor",
    "SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos WHERE "
    "referencia_productos = 'R1' OR cod_barras1_productos = 'R1' OR cod_barras2_productos = 'R1' OR "
    "cod_barras3_productos = 'R1'",
    "SELECT referencia_productos, descripcion_productos FROM productos WHERE descripcion_productos LIKE '*TORN*'",
    "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' AND "
    "pvp_neto_productos > 0 ORDER BY referencia_productos",
};

class QueryPlans : public ShopDatabase {
protected:
    void ExpectIndexed(const QStringList& statements) {
        for (const QString& s : statements)
            for (const QString& form : EngineForms(s))
                if (auto fault = PlanFault(*db, form)) ADD_FAILURE() << fault->toStdString();
    }
    // The faults of the statements once the index of those columns is gone.
    QStringList FaultsWithout(const QString& table, const QString& columns, const QStringList& statements) {
        const QStringList names = Rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'index' AND "
                                                      "tbl_name = '%1'").arg(table), {"name"});
        bool dropped = false;
        for (const QString& name : names) {
            QStringList cols = Rows(QStringLiteral("SELECT name FROM pragma_index_info('%1') ORDER BY seqno").arg(name),
                                    {"name"});
            if (cols.join(QStringLiteral(", ")) == columns) {
                db->Execute("DROP INDEX " + name);
                dropped = true;
            }
        }
        EXPECT_TRUE(dropped) << "no index on " << columns.toStdString();
        QStringList faults;
        for (const QString& s : statements)
            for (const QString& form : EngineForms(s))
                if (auto fault = PlanFault(*db, form)) faults << *fault;
        return faults;
    }
};

TEST_F(QueryPlans, TheDeliveryNoteWindowFindsItsRowsByIndex) { ExpectIndexed(kNoteWindow); }
TEST_F(QueryPlans, TheInvoiceWindowFindsItsRowsByIndex) { ExpectIndexed(kInvoiceWindow); }
TEST_F(QueryPlans, TheNoteControlAndTheExchangeFindTheirRowsByIndex) { ExpectIndexed(kNoteControl); }
TEST_F(QueryPlans, CardsAndTheirListingsFindTheirRowsByIndex) {
    ExpectIndexed(Cards("clientes"));
    ExpectIndexed(Cards("proveedores"));
}
TEST_F(QueryPlans, CustomerListsAndProductSearchesReadInOrder) { ExpectIndexed(kCustomersAndProducts); }

// Each index below is what one of those reads stands on: without it, the
// check names the read that now goes through the whole table or a whole year.
TEST_F(QueryPlans, WithoutTheLinesIndexByYearAndNumberTheNoteReadsEveryLine) {
    const QStringList faults = FaultsWithout(
        "detalle_albaran_venta", "ejercicio_detalle_albaran_venta, numero_detalle_albaran_venta", kNoteWindow);
    ASSERT_FALSE(faults.isEmpty());
    EXPECT_TRUE(faults.join('\n').contains("reads all of detalle_albaran_venta")) << faults.join('\n').toStdString();
}

TEST_F(QueryPlans, WithoutTheHeaderIndexByYearAndNumberTheNoteReadsAWholeYear) {
    const QStringList faults = FaultsWithout(
        "cabecera_albaran_venta", "ejercicio_cabecera_albaran_venta, numero_cabecera_albaran_venta", kNoteWindow);
    EXPECT_TRUE(faults.join('\n').contains("searches cabecera_albaran_venta by 1 of its 2"))
        << faults.join('\n').toStdString();
}

TEST_F(QueryPlans, WithoutTheCustomersIndexByYearTheNumbersOfAYearAreNotFoundByIt) {
    const QStringList faults = FaultsWithout(
        "cabecera_albaran_venta",
        "nif_cabecera_albaran_venta, ejercicio_cabecera_albaran_venta, numero_cabecera_albaran_venta", kNoteWindow);
    EXPECT_FALSE(faults.isEmpty());
}

TEST_F(QueryPlans, WithoutTheIndexByCustomerAndYearTheNumbersOfAYearAreSoughtInTheWholeYear) {
    const QStringList faults = FaultsWithout(
        "cabecera_albaran_venta", "nif_cabecera_albaran_venta, ejercicio_cabecera_albaran_venta", kNoteWindow);
    EXPECT_TRUE(faults.join('\n').contains("searches cabecera_albaran_venta by 1 of its 2"))
        << faults.join('\n').toStdString();
}

TEST_F(QueryPlans, WithoutTheStoreYearStateIndexTheNoteControlReadsAWholeYear) {
    const QStringList faults = FaultsWithout("cabecera_albaran_venta",
                                             "tienda_cabecera_albaran_venta, ejercicio_cabecera_albaran_venta, "
                                             "estado_cabecera_albaran_venta, numero_cabecera_albaran_venta",
                                             kNoteControl);
    EXPECT_FALSE(faults.isEmpty());
}

TEST_F(QueryPlans, WithoutTheStoreYearIndexTheNoteControlsListOfEveryStateReadsAWholeYear) {
    const QStringList faults = FaultsWithout("cabecera_albaran_venta",
                                             "tienda_cabecera_albaran_venta, ejercicio_cabecera_albaran_venta, "
                                             "numero_cabecera_albaran_venta",
                                             kNoteControl);
    EXPECT_FALSE(faults.isEmpty());
}

TEST_F(QueryPlans, WithoutTheInvoicesIndexByCustomerAndYearTheInvoiceWindowReadsMore) {
    const QStringList faults = FaultsWithout(
        "cabecera_factura_venta",
        "nif_cabecera_factura_venta, ejercicio_cabecera_factura_venta, numero_cabecera_factura_venta",
        kInvoiceWindow);
    EXPECT_FALSE(faults.isEmpty());
}

TEST_F(QueryPlans, WithoutTheEntriesIndexByYearTheListingOfAllReadsEveryEntry) {
    const QStringList faults = FaultsWithout(
        "detalle_fichas_clientes", "ejercicio_detalle_fichas_clientes, nif_detalle_fichas_clientes",
        Cards("clientes"));
    EXPECT_TRUE(faults.join('\n').contains("reads all of detalle_fichas_clientes")) << faults.join('\n').toStdString();
}

TEST_F(QueryPlans, AnOldDatabaseGetsTheNewIndexesAtStart) {
    // A database made before the lines and the entries had their indexes by year.
    EXPECT_FALSE(FaultsWithout("detalle_albaran_venta",
                               "ejercicio_detalle_albaran_venta, numero_detalle_albaran_venta", kNoteWindow)
                     .isEmpty());
    EXPECT_FALSE(FaultsWithout("detalle_fichas_proveedores",
                               "ejercicio_detalle_fichas_proveedores, nif_detalle_fichas_proveedores",
                               Cards("proveedores"))
                     .isEmpty());
    vel::schema::CreateMissingIndexes(*db);
    ExpectIndexed(kNoteWindow);
    ExpectIndexed(Cards("proveedores"));
}

// The check itself: what reads a table whole by purpose, and what picks rows.
TEST(PlanCheck, AStatementWithoutAPickingConditionReadsTheWholeTable) {
    EXPECT_TRUE(ReadsTheWholeTable("SELECT * FROM clientes ORDER BY nif_cliente"));
    EXPECT_TRUE(ReadsTheWholeTable("SELECT * FROM productos WHERE descripcion_productos LIKE '*A = B*'"));
    EXPECT_TRUE(ReadsTheWholeTable("SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta <> '*' "
                                   "ORDER BY ejercicio_cabecera_albaran_venta"));
    EXPECT_FALSE(ReadsTheWholeTable("SELECT * FROM clientes WHERE nif_cliente = 'B1'"));
    EXPECT_FALSE(ReadsTheWholeTable("UPDATE productos SET pvp_neto_productos = 2 WHERE referencia_productos = 'R'"));
    EXPECT_TRUE(ReadsTheWholeTable("UPDATE productos SET pvp_neto_productos = 2"));
}

TEST(PlanCheck, TheValuesCompared) {
    EXPECT_EQ(EqualityColumns("SELECT * FROM t WHERE a = 1 AND b <> 'x = y' AND c=2 ORDER BY d"),
              (QStringList{"a", "c"}));
    EXPECT_TRUE(EqualityColumns("SELECT * FROM t WHERE a = 1 OR c = 2").isEmpty());
}

} // namespace
