// The cursor and the opening of the database, as the windows use them.
#include "store_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using veltest::ErrorOf;
using veltest::ShopDatabase;

using RecordStore = ShopDatabase;

TEST_F(RecordStore, AnEmptySetIsAtEndOfFileAtOnceAndHasNoPosition) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM clientes"));
    EXPECT_TRUE(rs->Eof());
    EXPECT_TRUE(rs->Bof());
    // The maintenance windows test "found" this way.
    EXPECT_EQ(rs->AbsolutePosition(), -1);
    EXPECT_EQ(rs->RecordCount(), 0);
}

TEST_F(RecordStore, ACursorStartsOnTheFirstRowAndWalksToTheEnd) {
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (3, 'TRASTIENDA', '')"));
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (1, 'NAVE', '')"));
    db->Execute(QStringLiteral("INSERT INTO almacen VALUES (2, 'SOTANO', '')"));
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    ASSERT_FALSE(rs->Eof());
    EXPECT_EQ(rs->AbsolutePosition(), 0);
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_almacen")).str(), QStringLiteral("NAVE"));
    rs->MoveNext();
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 2);
    rs->MoveNext();
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(rs->AbsolutePosition(), -1);
    // Past the end there is no current record.
    EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("nombre_almacen")); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
}

TEST_F(RecordStore, MoveLastAndMoveFirstCountTheRowsOfASearch) {
    for (int i = 1; i <= 7; ++i)
        db->Execute(QStringLiteral("INSERT INTO almacen VALUES (%1, 'ALMACEN %1', '')").arg(i));
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    EXPECT_EQ(rs->RecordCount(), 1); // rows are read as the cursor moves
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 7);
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 7);
    rs->MoveFirst();
    EXPECT_EQ(rs->AbsolutePosition(), 0);
    EXPECT_EQ(rs->Fields(QStringLiteral("codigo_almacen")).num(), 1);
}

TEST_F(RecordStore, MoveFirstOnAnEmptySetHasNoCurrentRecord) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen"));
    EXPECT_EQ(ErrorOf([&] { rs->MoveFirst(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rs->MoveLast(); }), 3021);
}

TEST_F(RecordStore, FieldsAreFoundByNameInAnyCase) {
    auto rs = db->OpenRecordset(QStringLiteral("select * from iva where codigo_iva=1"));
    EXPECT_EQ(rs->Fields(QStringLiteral("RecargoEquivalencia")).num(), 5.2);
    EXPECT_EQ(rs->Fields(QStringLiteral("recargoequivalencia")).num(), 5.2);
    EXPECT_EQ(rs->Fields(QStringLiteral("IVA")).num(), 21);
}

TEST_F(RecordStore, AnUnknownFieldIsNotInTheCollection) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT codigo_iva FROM iva"));
    EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("iva")); }), 3265);
}

TEST_F(RecordStore, NumbersReadAsNumbersAndTextsAsTexts) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM tienda WHERE codigo_tienda = 1"));
    EXPECT_TRUE(rs->Fields(QStringLiteral("codigo_tienda")).isNumber());
    EXPECT_TRUE(rs->Fields(QStringLiteral("nombre_tienda")).isText());
    EXPECT_EQ(rs->Fields(QStringLiteral("direccion_tienda")).str(), QString());
}

TEST_F(RecordStore, AClosedCursorCanNoLongerBeRead) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM iva"));
    rs->Close();
    EXPECT_NE(ErrorOf([&] { rs->Eof(); }), 0);
    EXPECT_NE(ErrorOf([&] { rs->Fields(QStringLiteral("iva")); }), 0);
}

TEST_F(RecordStore, ACursorLeftOpenKeepsItsRowsWhileTheWindowWrites) {
    // The bulk price change walks its query and updates row by row.
    for (int i = 1; i <= 50; ++i)
        db->Execute(QStringLiteral("INSERT INTO almacen VALUES (%1, 'A', '')").arg(i));
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM almacen ORDER BY codigo_almacen"));
    int seen = 0;
    while (!rs->Eof()) {
        const double code = rs->Fields(QStringLiteral("codigo_almacen")).num();
        db->Execute(QStringLiteral("UPDATE almacen SET nombre_almacen = 'B' WHERE codigo_almacen = %1").arg(code));
        ++seen;
        rs->MoveNext();
    }
    EXPECT_EQ(seen, 50);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM almacen WHERE nombre_almacen = 'B'"), {QStringLiteral("codigo_almacen")}).size(), 50);
}

TEST_F(RecordStore, ACursorOutlivingItsDatabaseFailsToRead) {
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM iva"));
    db.reset(); // compacting closes the shared database under open windows
    EXPECT_NE(ErrorOf([&] { rs->Fields(QStringLiteral("iva")); }), 0);
}

TEST_F(RecordStore, AMissingFileIsNotFoundAndIsNotCreated) {
    const QString missing = dir.filePath(QStringLiteral("otra.mdb"));
    try {
        vel::Database::OpenDatabase(missing);
        FAIL() << "opened a missing file";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 3024);
        EXPECT_EQ(e.Description, QStringLiteral("No se encuentra el archivo '%1'.").arg(missing));
    }
    EXPECT_FALSE(QFileInfo::exists(missing));
}

TEST_F(RecordStore, AFileInAMissingFolderIsNotAValidPath) {
    const QString missing = dir.filePath(QStringLiteral("no_existe/datos.mdb"));
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(missing); }), 3044);
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("no_existe"))));
}

TEST_F(RecordStore, AFileThatIsNotADatabaseIsNotRecognised) {
    const QString other = dir.filePath(QStringLiteral("config.ini"));
    QFile f(other);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("FERROBANDA\r\nCENTRAL\r\n and some more text to fill a page of the file .......\r\n");
    f.close();
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(other); }), 3343);
}

TEST_F(RecordStore, AnExistingDatabaseIsNeverCreatedAgain) {
    EXPECT_EQ(ErrorOf([&] { vel::Database::CreateDatabase(path); }), 3204);
    EXPECT_EQ(ErrorOf([&] { vel::schema::CreateEmptyDatabase(path); }), 3204);
    // and its rows are still there
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM tienda"), QStringLiteral("nombre_tienda")).str(), QStringLiteral("CENTRAL"));
}

TEST_F(RecordStore, TwoOpeningsOfTheSameFileSeeEachOthersWrites) {
    // The customer card window opens datos.mdb again for itself.
    auto second = vel::Database::OpenDatabase(path);
    second->Execute(QStringLiteral("INSERT INTO operador VALUES (2, 'LUCIA', '')"));
    EXPECT_EQ(First(QStringLiteral("SELECT * FROM operador WHERE codigo_operador = 2"), QStringLiteral("nombre_operador")).str(),
              QStringLiteral("LUCIA"));
}
