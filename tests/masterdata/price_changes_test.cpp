// The walk of the bulk price changes: every product of the query gets its
// new price unrounded, one UPDATE each, and a product whose UPDATE fails is
// passed over while the others change.
#include "core/store_fixture.h"
#include "masterdata/price_changes.h"
#include "runtime/vb.h"

using namespace veltest;

namespace {

class PriceChanges : public ShopDatabase {
protected:
    void Product(const QString& ref, const QString& leaf, const QString& price) {
        const QStringList l = leaf.split('/');
        db->Execute(QStringLiteral("INSERT INTO productos VALUES ('%1', '%2', '%3', '%4', '%5', 'ARTICULO %5', '', "
                                   "'', '', '', 0, %6, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '', '', '', '', '', 1)")
                        .arg(l[0], l[1], l[2], l[3], ref, price));
    }
    double Price(const QString& ref) {
        return First(QStringLiteral("SELECT pvp_neto_productos FROM productos WHERE referencia_productos = '%1'").arg(ref),
                     QStringLiteral("pvp_neto_productos"))
            .num();
    }
    void Change(const QString& query, const std::function<double(double)>& rule) {
        auto rs = db->OpenRecordset(query);
        vel::CambiarPrecios(*db, *rs, rule);
    }
    static QString All() {
        return QStringLiteral("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos "
                              "<> '' AND pvp_neto_productos > 0 ORDER BY referencia_productos");
    }
};

TEST_F(PriceChanges, RecalculatedFrom16To21PercentWithAllItsDecimals) {
    Product("P1", "01/01/01/01", "121");
    Change(All(), [](double p) { return p / 1.16 * 1.21; });
    EXPECT_EQ(vb::CStr(Price("P1")), "126.21551724137932");
    EXPECT_EQ(vb::Format(Price("P1"), "0.000"), "126.216");
}

TEST_F(PriceChanges, APercentageRaisesAndANegativeOneLowers) {
    Product("P1", "01/01/01/01", "10");
    Product("P2", "01/01/01/01", "20");
    Change(All(), [](double p) { return p * (vb::Val("10") / 100 + 1); });
    EXPECT_DOUBLE_EQ(Price("P1"), 11);
    EXPECT_DOUBLE_EQ(Price("P2"), 22);
    Change(All(), [](double p) { return p * (vb::Val("-50") / 100 + 1); });
    EXPECT_DOUBLE_EQ(Price("P1"), 5.5);
    EXPECT_DOUBLE_EQ(Price("P2"), 11);
}

TEST_F(PriceChanges, AProductWhoseUpdateFailsKeepsItsPriceAndTheOthersChange) {
    // A reference with an apostrophe breaks its UPDATE; the walk goes on.
    Product("A1", "01/01/01/01", "10");
    db->Execute("INSERT INTO productos VALUES ('01', '01', '01', '01', 'B''2', 'X', '', '', '', '', 0, 10, 0, 0, 0, 0, "
                "0, 0, 0, '', '', 0, 0, '', '', '', '', '', '', '', 1)");
    Product("C3", "01/01/01/01", "10");
    Change(All(), [](double p) { return p * 2; });
    EXPECT_DOUBLE_EQ(Price("A1"), 20);
    EXPECT_DOUBLE_EQ(First("SELECT pvp_neto_productos FROM productos WHERE referencia_productos LIKE 'B*'",
                           "pvp_neto_productos")
                         .num(),
                     10);
    EXPECT_DOUBLE_EQ(Price("C3"), 20);
}

TEST_F(PriceChanges, RepeatingTheChangeAppliesItAgain) {
    Product("P1", "01/01/01/01", "100");
    Change(All(), [](double p) { return p * 1.1; });
    Change(All(), [](double p) { return p * 1.1; });
    EXPECT_EQ(vb::CStr(Price("P1")), vb::CStr(100 * 1.1 * 1.1));
}

TEST_F(PriceChanges, AnEmptyQueryChangesNothing) {
    Product("P1", "01/01/01/01", "100");
    Change("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE division_productos = '09'",
           [](double p) { return p * 3; });
    EXPECT_DOUBLE_EQ(Price("P1"), 100);
}

} // namespace
