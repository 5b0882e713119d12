// The chain's catalogue file: what is read from a sound file, and the clear
// error a damaged one gives when it is opened.
#include "catalogue_files.h"
#include "core/dbase_file.h"
#include "store_fixture.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <clocale>

using namespace veltest;
using vel::DbaseFile;

namespace {

class CatalogueFile : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("articulo.dbf"));
    }
    QTemporaryDir dir;
    QString path;
};

QString text(const vb::Variant& v) { return v.isNull() ? QStringLiteral("<null>") : v.str(); }

TEST_F(CatalogueFile, ReadsTheFieldsOfTheChainsTable) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles()));
    auto f = DbaseFile::Open(path);
    ASSERT_EQ(f->Fields().size(), 6u);
    EXPECT_EQ(f->Fields()[0].name, "CODIGO");
    EXPECT_EQ(f->Fields()[0].type, 'N');
    EXPECT_EQ(f->Fields()[1].name, "NOMBRE");
    EXPECT_EQ(f->Fields()[1].type, 'C');
    EXPECT_EQ(f->Fields()[1].width, 40);
    EXPECT_EQ(f->Fields()[3].decimals, 2);
    EXPECT_EQ(f->RecordCount(), 7);
}

TEST_F(CatalogueFile, NumbersAreNumbersAndTextsLoseTheirPadding) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles()));
    auto f = DbaseFile::Open(path);
    const vb::Variant codigo = f->Value(1, 0);
    ASSERT_TRUE(codigo.isNumber());
    EXPECT_EQ(codigo.num(), 2);
    const vb::Variant price = f->Value(1, 3);
    ASSERT_TRUE(price.isNumber());
    EXPECT_DOUBLE_EQ(price.num(), 12.5);
    const vb::Variant ean = f->Value(1, 5);
    ASSERT_TRUE(ean.isNumber());
    EXPECT_EQ(ean.str(), "8412345000028");
    EXPECT_EQ(text(f->Value(1, 1)), "MARTILLO CARPINTERO");
    EXPECT_EQ(text(f->Value(1, 2)), "M300");
}

TEST_F(CatalogueFile, BlankFieldsAreNull) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles()));
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(text(f->Value(4, 5)), "<null>"); // blank barcode
    EXPECT_EQ(text(f->Value(3, 4)), "<null>"); // blank colour
    EXPECT_EQ(text(f->Value(2, 5)), "0");      // a barcode of 0 is a number
}

TEST_F(CatalogueFile, TextsAreDecodedFromDosCodePage850) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles(), 0x02));
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(f->CodePage(), 850);
    EXPECT_EQ(text(f->Value(3, 1)), QStringLiteral("CAÑA DE PESCAR"));
    EXPECT_EQ(text(f->Value(4, 1)), QStringLiteral("TORNILLO LATÓN 3X20"));
    EXPECT_EQ(text(f->Value(6, 1)), QStringLiteral("ÁNGULO DE TORNILLERÍA"));
}

TEST_F(CatalogueFile, NoLanguageDriverMeansCodePage850) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles(), -1));
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(f->LanguageDriver(), 0);
    EXPECT_EQ(f->CodePage(), 850);
    EXPECT_EQ(text(f->Value(3, 1)), QStringLiteral("CAÑA DE PESCAR"));
}

TEST_F(CatalogueFile, TheLanguageDriverByteNamesTheCodePage) {
    // The same bytes read in the Windows page: 0xA5 is ¥ there, 0xD1 is Ñ.
    std::vector<ChainArticle> a = {{"1", "CA\xD1" "A", "", "1", "", ""}};
    ASSERT_TRUE(WriteCatalogue(path, a, 0x57));
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(f->CodePage(), 1252);
    EXPECT_EQ(text(f->Value(0, 1)), QStringLiteral("CAÑA"));
    // And in the US DOS page 437, 0xB5 is a box-drawing character, not Á.
    a = {{"1", "\xB5" "RBOL \xA5", "", "1", "", ""}};
    ASSERT_TRUE(WriteCatalogue(path, a, 0x01));
    f = DbaseFile::Open(path);
    EXPECT_EQ(f->CodePage(), 437);
    EXPECT_EQ(text(f->Value(0, 1)), QStringLiteral("╡RBOL Ñ"));
}

TEST_F(CatalogueFile, EveryKnownLanguageDriverHasAConverter) {
    // Letters of every code page decode to characters, never to the
    // replacement mark that a missing converter would give (two bytes: one
    // character of the Asian double-byte pages, two of the others).
    for (int ldid : {0x01, 0x02, 0x03, 0x04, 0x08, 0x13, 0x1C, 0x1F, 0x24, 0x26, 0x4D, 0x4E, 0x4F, 0x50, 0x57,
                     0x64, 0x67, 0x6A, 0x6B, 0x96, 0x97, 0x98, 0xC8, 0xC9, 0xCA, 0xCB, 0xCC}) {
        std::vector<ChainArticle> a = {{"1", "A\xE9\xE0", "", "1", "", ""}};
        ASSERT_TRUE(WriteCatalogue(path, a, ldid));
        auto f = DbaseFile::Open(path);
        EXPECT_NE(f->CodePage(), 0);
        const QString name = text(f->Value(0, 1));
        EXPECT_TRUE(name.startsWith(QLatin1Char('A'))) << ldid;
        EXPECT_FALSE(name.contains(QChar(0xFFFD))) << "language driver " << ldid << " code page " << f->CodePage();
    }
}

TEST_F(CatalogueFile, DeletedRecordsAreMarked) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles()));
    auto f = DbaseFile::Open(path);
    EXPECT_FALSE(f->IsDeleted(4));
    EXPECT_TRUE(f->IsDeleted(5));
}

TEST_F(CatalogueFile, NumbersKeepTheirPointUnderSpanishRegionalSettings) {
    ASSERT_TRUE(WriteCatalogue(path, SomeArticles()));
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "es_ES.UTF-8")) GTEST_SKIP() << "no Spanish locale";
    auto f = DbaseFile::Open(path);
    const double price = f->Value(1, 3).num();
    std::setlocale(LC_NUMERIC, before.c_str());
    EXPECT_DOUBLE_EQ(price, 12.5);
}

TEST_F(CatalogueFile, DatesAndLogicalFields) {
    DBFHandle h = DBFCreateEx(path.toLocal8Bit().constData(), "LDID/2");
    DBFAddNativeFieldType(h, "ALTA", 'D', 8, 0);
    DBFAddNativeFieldType(h, "ACTIVO", 'L', 1, 0);
    PutField(h, 0, 0, "20240131");
    PutField(h, 0, 1, "T");
    PutField(h, 1, 0, "00000000");
    PutField(h, 1, 1, "F");
    PutField(h, 2, 0, " ");
    PutField(h, 2, 1, "?");
    DBFClose(h);
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(text(f->Value(0, 0)), "31/01/2024");
    EXPECT_EQ(text(f->Value(0, 1)), "-1");
    EXPECT_EQ(text(f->Value(1, 0)), "<null>");
    EXPECT_EQ(text(f->Value(1, 1)), "0");
    EXPECT_EQ(text(f->Value(2, 0)), "<null>");
    EXPECT_EQ(text(f->Value(2, 1)), "<null>");
}

TEST_F(CatalogueFile, AnEmptyTableOpens) {
    ASSERT_TRUE(WriteCatalogue(path, {}));
    auto f = DbaseFile::Open(path);
    EXPECT_EQ(f->RecordCount(), 0);
    EXPECT_EQ(f->Fields().size(), 6u);
}

// ---- Damaged files: a runtime error that says what is wrong --------------------

class DamagedCatalogue : public CatalogueFile {
protected:
    QByteArray sound() {
        EXPECT_TRUE(WriteCatalogue(path, SomeArticles()));
        return ReadBytes(path);
    }
    // The error number and description of opening these bytes.
    std::pair<int, QString> open(const QByteArray& bytes) {
        WriteBytes(path, bytes);
        try {
            DbaseFile::Open(path);
        } catch (const vb::RuntimeError& e) {
            return {e.Number, e.Description};
        }
        return {0, QString()};
    }
};

TEST_F(DamagedCatalogue, ATruncatedFile) {
    const QByteArray b = sound();
    const auto [number, why] = open(b.left(b.size() - 150));
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("declara 7 registros"))) << why.toStdString();
    EXPECT_TRUE(why.contains(QStringLiteral("truncado"))) << why.toStdString();
    EXPECT_TRUE(why.contains(path)) << why.toStdString();
}

TEST_F(DamagedCatalogue, AFileCutInsideItsHeader) {
    const QByteArray b = sound();
    const auto [number, why] = open(b.left(100));
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("truncado"))) << why.toStdString();
    EXPECT_EQ(open(b.left(20)).first, 3343);
    EXPECT_EQ(open(QByteArray()).first, 3343);
}

TEST_F(DamagedCatalogue, ARecordCountLargerThanTheFile) {
    QByteArray b = sound();
    b[4] = char(0x10); // 7 records become 159760, which the file cannot hold
    b[5] = char(0x70);
    b[6] = char(0x02);
    auto [number, why] = open(b);
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("solo caben 7"))) << why.toStdString();
    // The largest count the header can say.
    b[4] = b[5] = b[6] = b[7] = char(0xFF);
    std::tie(number, why) = open(b);
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("4294967295"))) << why.toStdString();
}

TEST_F(DamagedCatalogue, NotADbaseFile) {
    auto [number, why] = open(QByteArray("CODIGO;NOMBRE;PVENTA\n1;TORNILLO;0.12\n2;MARTILLO;12.50\n"
                                         "3;ALICATE;9.95\n4;CAÑA;21.00\n5;BROCA;3.40\n"));
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("no es una tabla dBase"))) << why.toStdString();
    // A database of the program is no catalogue either.
    QByteArray sqlite("SQLite format 3");
    sqlite.append(char(0));
    sqlite.append(QByteArray(4096, '\0'));
    EXPECT_EQ(open(sqlite).first, 3343);
}

TEST_F(DamagedCatalogue, AHeaderLongerThanTheFile) {
    QByteArray b = sound();
    b[8] = char(0xFF);
    b[9] = char(0xFF);
    const auto [number, why] = open(b);
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("65535"))) << why.toStdString();
}

TEST_F(DamagedCatalogue, FieldsWiderThanTheRecord) {
    QByteArray b = sound();
    b[32 + 16] = char(200); // CODIGO 200 wide
    const auto [number, why] = open(b);
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("los campos suman"))) << why.toStdString();
}

TEST_F(DamagedCatalogue, NoEndOfHeaderMark) {
    QByteArray b = sound();
    b[32 + 32 * 6] = 'X';
    EXPECT_EQ(open(b).first, 3343);
}

TEST_F(DamagedCatalogue, AFieldOfNoKnownType) {
    QByteArray b = sound();
    b[32 + 11] = char(0x01);
    const auto [number, why] = open(b);
    EXPECT_EQ(number, 3343);
    EXPECT_TRUE(why.contains(QStringLiteral("tipo"))) << why.toStdString();
}

TEST_F(DamagedCatalogue, AMissingFile) {
    const auto [number, why] = open(QByteArray("x"));
    EXPECT_EQ(number, 3343);
    QFile::remove(path);
    EXPECT_EQ(ErrorOf([&] { DbaseFile::Open(path); }), 3024);
}

TEST_F(DamagedCatalogue, RecordsWithGarbageReadAsWhatTheyHold) {
    // The header is sound, the records are noise: values come out, nothing fails.
    QByteArray b = sound();
    const int header = int(quint8(b[8])) | int(quint8(b[9])) << 8;
    for (int i = header; i < b.size(); ++i) b[i] = char((i * 37) & 0xFF);
    WriteBytes(path, b);
    auto f = DbaseFile::Open(path);
    for (int r = 0; r < f->RecordCount(); ++r)
        for (int c = 0; c < int(f->Fields().size()); ++c) (void)f->Value(r, c);
    SUCCEED();
}

} // namespace
