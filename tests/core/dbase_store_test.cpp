// The chain's catalogue as a database: the queries of the supplier tab, read
// through the same cursor as the shop's own database.
#include "catalogue_files.h"
#include "core/dbase_store.h"
#include "store_fixture.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace veltest;

namespace {

class Catalogue : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        folder = dir.filePath(QStringLiteral("cadenart"));
        QDir().mkpath(folder);
        ASSERT_TRUE(WriteCatalogue(folder + QStringLiteral("/articulo.dbf"), SomeArticles()));
        db = vel::OpenDbaseDatabase(folder, QStringLiteral("articulo.dbf"));
    }

    // The codes of a query, walked as the window walks them.
    QStringList Codes(const QString& sql) {
        QStringList out;
        auto rs = db->OpenRecordset(sql);
        while (!rs->Eof()) {
            out << rs->Fields(QStringLiteral("codigo")).str();
            rs->MoveNext();
        }
        return out;
    }

    static QString Head() { return QStringLiteral("SELECT codigo, nombre, refprove, pventa, ean FROM articulo "); }

    QTemporaryDir dir;
    QString folder;
    std::unique_ptr<vel::Database> db;
};

TEST_F(Catalogue, SearchByCode) {
    EXPECT_EQ(Codes(Head() + "WHERE codigo = 2 ORDER BY codigo"), QStringList{"2"});
    EXPECT_EQ(Codes(Head() + "WHERE codigo = 99 ORDER BY codigo"), QStringList{});
}

TEST_F(Catalogue, SearchByNameWithTheStarWildCard) {
    EXPECT_EQ(Codes(Head() + "WHERE nombre LIKE '*TORNILL*' ORDER BY nombre"), (QStringList{"7", "1", "5"}));
    // Spanish order: Á among the A's.
    EXPECT_EQ(Codes(Head() + "WHERE nombre LIKE '*A*' ORDER BY nombre"),
              (QStringList{"3", "7", "4", "2", "1", "5"}));
    EXPECT_EQ(Codes(Head() + "WHERE nombre LIKE '*CAÑA*' ORDER BY nombre"), QStringList{"4"});
}

TEST_F(Catalogue, SearchByBarcode) {
    EXPECT_EQ(Codes(Head() + "WHERE ean = 8412345000028 ORDER BY ean"), QStringList{"2"});
    EXPECT_EQ(Codes(Head() + "WHERE ean = 0 ORDER BY ean"), QStringList{"3"});
}

TEST_F(Catalogue, NoWhereListsTheWholeCatalogueButTheDeletedArticle) {
    EXPECT_EQ(Codes(Head()), (QStringList{"1", "2", "3", "4", "5", "7"}));
    EXPECT_EQ(Codes(Head() + "WHERE codigo = 6 ORDER BY codigo"), QStringList{});
}

TEST_F(Catalogue, TheCursorCountsAsTheSearchCountsIt) {
    // AbsolutePosition shows records, MoveLast gives the count, MoveFirst goes back.
    auto rs = db->OpenRecordset(Head() + "WHERE nombre LIKE '*TORNILL*' ORDER BY nombre");
    EXPECT_EQ(rs->AbsolutePosition(), 0);
    rs->MoveLast();
    EXPECT_EQ(rs->AbsolutePosition() + 1, 3);
    rs->MoveFirst();
    EXPECT_EQ(rs->AbsolutePosition(), 0);
    EXPECT_EQ(rs->Fields("codigo").str(), "7"); // ÁNGULO DE TORNILLERÍA comes first
    auto none = db->OpenRecordset(Head() + "WHERE codigo = 99 ORDER BY codigo");
    EXPECT_EQ(none->AbsolutePosition(), -1);
    EXPECT_TRUE(none->Eof());
}

// A cursor reads its rows back by rowid (the record's place in the file)
// after counting them: that reads the one record, a deleted one or a place
// outside the file reads nothing, and the engine takes the record directly
// rather than walking the file.
TEST_F(Catalogue, ARowIsReadBackByItsPlaceInTheFile) {
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 1"), QStringList{"2"});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 6"), QStringList{"7"});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 5"), QStringList{}); // deleted
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 7"), QStringList{});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = -1"), QStringList{});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 1.5"), QStringList{});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 2 AND nombre LIKE '*PESCAR*'"), QStringList{});
    EXPECT_EQ(Codes("SELECT codigo FROM articulo WHERE rowid = 3 AND nombre LIKE '*PESCAR*'"), QStringList{"4"});
    sqlite3_stmt* plan = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db->handle(), "EXPLAIN QUERY PLAN SELECT codigo FROM articulo WHERE rowid = ?1", -1,
                                 &plan, nullptr),
              SQLITE_OK);
    QString detail;
    while (sqlite3_step(plan) == SQLITE_ROW)
        detail += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(plan, 3)));
    sqlite3_finalize(plan);
    EXPECT_TRUE(detail.contains(QStringLiteral("INDEX 1:"))) << detail.toStdString();
}

TEST_F(Catalogue, FieldsAsTheArticleTabReadsThem) {
    auto rs = db->OpenRecordset(
        "SELECT codigo, nombre, refprove, pventa, color, ean FROM articulo WHERE codigo = 4 ORDER BY codigo");
    EXPECT_EQ(rs->Fields("refprove").str(), "C200");
    EXPECT_EQ(rs->Fields("nombre").str(), QStringLiteral("CAÑA DE PESCAR"));
    EXPECT_TRUE(rs->Fields("pventa").isNumber());
    EXPECT_DOUBLE_EQ(rs->Fields("pventa").num(), 21.0);
    EXPECT_TRUE(rs->Fields("color").isNull());
    EXPECT_EQ(rs->Fields("ean").str(), "8412345000042");
}

TEST_F(Catalogue, ItIsReadOnly) {
    const QByteArray before = ReadBytes(folder + "/articulo.dbf");
    EXPECT_EQ(ErrorOf([&] { db->Execute("DELETE FROM articulo WHERE codigo = 1"); }), 3027);
    EXPECT_EQ(ErrorOf([&] { db->Execute("INSERT INTO articulo VALUES (9, 'X', 'X', 1, 'X', 1)"); }), 3027);
    EXPECT_EQ(ErrorOf([&] { db->Execute("UPDATE articulo SET pventa = 0"); }), 3027);
    EXPECT_EQ(ReadBytes(folder + "/articulo.dbf"), before);
    EXPECT_EQ(Codes(Head()).size(), 6);
}

TEST_F(Catalogue, AnUnknownTableOrColumnFailsAsInTheShopsDatabase) {
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset("SELECT * FROM clientes"); }), 3078);
    EXPECT_EQ(ErrorOf([&] { db->OpenRecordset("SELECT codigo FROM articulo WHERE talla = 3"); }), 3061);
}

TEST_F(Catalogue, TheFileIsFoundWhateverTheCaseOfItsName) {
    const QString upper = dir.filePath(QStringLiteral("DOS"));
    QDir().mkpath(upper);
    ASSERT_TRUE(WriteCatalogue(upper + "/ARTICULO.DBF", SomeArticles()));
    auto dos = vel::OpenDbaseDatabase(upper, QStringLiteral("articulo.dbf"));
    auto rs = dos->OpenRecordset(Head() + "WHERE codigo = 7 ORDER BY codigo");
    EXPECT_EQ(rs->Fields("nombre").str(), QStringLiteral("ÁNGULO DE TORNILLERÍA"));
}

TEST_F(Catalogue, AMissingFolderOrFileFailsAtTheOpen) {
    EXPECT_EQ(ErrorOf([&] { vel::OpenDbaseDatabase(dir.filePath("nada"), "articulo.dbf"); }), 3044);
    const QString empty = dir.filePath(QStringLiteral("vacia"));
    QDir().mkpath(empty);
    EXPECT_EQ(ErrorOf([&] { vel::OpenDbaseDatabase(empty, "articulo.dbf"); }), 3024);
    EXPECT_TRUE(DescriptionOf([&] { vel::OpenDbaseDatabase(empty, "articulo.dbf"); }).contains("articulo.dbf"));
}

TEST_F(Catalogue, ADamagedFileFailsAtTheOpen) {
    QByteArray b = ReadBytes(folder + "/articulo.dbf");
    WriteBytes(folder + "/articulo.dbf", b.left(b.size() / 2));
    EXPECT_EQ(ErrorOf([&] { vel::OpenDbaseDatabase(folder, "articulo.dbf"); }), 3343);
}

TEST_F(Catalogue, AnEmptyCatalogueAnswersWithNoRows) {
    const QString empty = dir.filePath(QStringLiteral("nueva"));
    QDir().mkpath(empty);
    ASSERT_TRUE(WriteCatalogue(empty + "/articulo.dbf", {}));
    auto none = vel::OpenDbaseDatabase(empty, "articulo.dbf");
    auto rs = none->OpenRecordset(Head());
    EXPECT_EQ(rs->AbsolutePosition(), -1);
    EXPECT_TRUE(rs->Eof());
}

TEST_F(Catalogue, TheShopsDatabaseAndTheCatalogueAreReadAlike) {
    // The same reading code serves both: a function of a Database.
    auto count = [](vel::Database& d, const QString& sql) {
        auto rs = d.OpenRecordset(sql);
        if (rs->AbsolutePosition() == -1) return 0L;
        rs->MoveLast();
        return rs->AbsolutePosition() + 1;
    };
    QTemporaryDir shop;
    vel::schema::CreateEmptyDatabase(shop.filePath("datos.mdb"));
    auto datos = vel::Database::OpenDatabase(shop.filePath("datos.mdb"));
    EXPECT_EQ(count(*datos, "SELECT * FROM iva"), 3);
    EXPECT_EQ(count(*db, Head()), 6);
}

} // namespace

namespace {

TEST(NewInstallation, TheEmptyCatalogueAnswersTheSupplierTabsQueries) {
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("c/cadenart"));
    QDir().mkpath(folder);
    ASSERT_TRUE(vel::CreateEmptyCatalogue(folder + QStringLiteral("/articulo.dbf")));
    auto db = vel::OpenDbaseDatabase(folder, QStringLiteral("articulo.dbf"));
    auto rs = db->OpenRecordset(
        QStringLiteral("SELECT codigo, nombre, refprove, pventa, color, ean FROM articulo WHERE codigo = 1 ORDER BY codigo"));
    EXPECT_EQ(rs->AbsolutePosition(), -1);
    EXPECT_TRUE(db->OpenRecordset(QStringLiteral("SELECT codigo, nombre, refprove, pventa, ean FROM articulo "))->Eof());
}

} // namespace
