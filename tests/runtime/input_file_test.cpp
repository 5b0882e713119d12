// Reading a sequential file value by value, as config.ini and the exchange
// files are read.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
int errorOfNext(vb::InputFile& file) {
    try {
        file.next();
    } catch (const vb::RuntimeError& e) {
        return e.Number;
    }
    return 0;
}
} // namespace

TEST(InputFile, AConfigWithTagAndStoreOnTwoLines) {
    vb::InputFile file(QStringLiteral("ORTA\r\nTIENDA CENTRO\r\n"));
    EXPECT_EQ(file.next(), QStringLiteral("ORTA"));
    EXPECT_FALSE(file.eof());
    EXPECT_EQ(file.next(), QStringLiteral("TIENDA CENTRO"));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, AConfigWithOneWordRunsOutAtTheSecondValue) {
    // One word: the tag is read, the store read fails with error 62.
    vb::InputFile file(QStringLiteral("LAPRESA\r\n"));
    EXPECT_EQ(file.next(), QStringLiteral("LAPRESA"));
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(errorOfNext(file), 62);
}

TEST(InputFile, AnEmptyFileHasNoValue) {
    vb::InputFile file(QString{});
    EXPECT_TRUE(file.eof());
    try {
        file.next();
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 62);
        EXPECT_EQ(e.Description, QString::fromUtf8("Se ha leído más allá del final del archivo"));
    }
}

TEST(InputFile, ACommaEndsAValueLikeALineEnd) {
    vb::InputFile file(QStringLiteral("ORTA,TIENDA CENTRO"));
    EXPECT_EQ(file.next(), QStringLiteral("ORTA"));
    EXPECT_EQ(file.next(), QStringLiteral("TIENDA CENTRO"));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, LeadingBlanksAreSkipped) {
    vb::InputFile file(QStringLiteral("   ORTA  ,\t TIENDA NORTE  \n"));
    EXPECT_EQ(file.next(), QStringLiteral("ORTA"));
    EXPECT_EQ(file.next(), QStringLiteral("TIENDA NORTE"));
}

TEST(InputFile, AQuotedValueKeepsItsCommasAndLosesItsQuotes) {
    vb::InputFile file(QStringLiteral("\"FERROBANDA\",\"PEREZ, HIJOS\"\r\n\"  con blancos  \"\r\n"));
    EXPECT_EQ(file.next(), QStringLiteral("FERROBANDA"));
    EXPECT_EQ(file.next(), QStringLiteral("PEREZ, HIJOS"));
    EXPECT_EQ(file.next(), QStringLiteral("  con blancos  "));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, TextAfterAClosingQuoteIsDropped) {
    vb::InputFile file(QStringLiteral("\"AB\"CD,EF\n"));
    EXPECT_EQ(file.next(), QStringLiteral("AB"));
    EXPECT_EQ(file.next(), QStringLiteral("EF"));
}

TEST(InputFile, EmptyValuesBetweenCommasAndOnEmptyLines) {
    vb::InputFile file(QStringLiteral("A,,B,\n\nC"));
    EXPECT_EQ(file.next(), QStringLiteral("A"));
    EXPECT_EQ(file.next(), QString());
    EXPECT_EQ(file.next(), QStringLiteral("B"));
    EXPECT_EQ(file.next(), QString());
    EXPECT_EQ(file.next(), QString());
    EXPECT_EQ(file.next(), QStringLiteral("C"));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, LineEndsOfEitherKind) {
    vb::InputFile file(QStringLiteral("A\nB\rC\r\nD"));
    EXPECT_EQ(file.next(), QStringLiteral("A"));
    EXPECT_EQ(file.next(), QStringLiteral("B"));
    EXPECT_EQ(file.next(), QStringLiteral("C"));
    EXPECT_EQ(file.next(), QStringLiteral("D"));
}

TEST(InputFile, LineInputTakesTheRestOfTheLineAsItStands) {
    // An exchange record: the first field with Input #, the others whole lines.
    vb::InputFile file(QStringLiteral("01,AV\r\n  'PEREZ, HIJOS'  \r\n\"X\"\r\n"));
    EXPECT_EQ(file.next(), QStringLiteral("01"));
    EXPECT_EQ(file.lineInput(), QStringLiteral("AV"));
    EXPECT_EQ(file.lineInput(), QStringLiteral("  'PEREZ, HIJOS'  "));
    EXPECT_EQ(file.lineInput(), QStringLiteral("\"X\""));
    EXPECT_TRUE(file.eof());
    try {
        file.lineInput();
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 62);
    }
}

TEST(InputFile, OpensAFileFromDisk) {
    QTemporaryDir dir;
    QFile f(dir.filePath("config.ini"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("FERROBANDA\r\nTIENDA PE\xc3\x91" "A\r\n"); // UTF-8
    f.close();
    vb::InputFile file = vb::InputFile::open(dir.filePath("config.ini"));
    EXPECT_EQ(file.next(), QStringLiteral("FERROBANDA"));
    EXPECT_EQ(file.next(), QString::fromUtf8("TIENDA PEÑA"));
}

TEST(InputFile, AFileWrittenInTheWindowsCodePageIsReadToo) {
    QTemporaryDir dir;
    QFile f(dir.filePath("config.ini"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("ORTA\r\nTIENDA PE\xd1" "A\r\n"); // Ñ in Latin-1
    f.close();
    vb::InputFile file = vb::InputFile::open(dir.filePath("config.ini"));
    EXPECT_EQ(file.next(), QStringLiteral("ORTA"));
    EXPECT_EQ(file.next(), QString::fromUtf8("TIENDA PEÑA"));
}

TEST(InputFile, AMissingFileIsError53) {
    QTemporaryDir dir;
    try {
        vb::InputFile::open(dir.filePath("config.ini"));
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 53);
        EXPECT_EQ(e.Description, QStringLiteral("No se ha encontrado el archivo"));
    }
}

namespace {
// The text as Windows Notepad saves it in "Unicode": the byte-order mark, then
// two bytes a character, in the given order.
QByteArray Utf16(const QString& text, bool littleEndian) {
    QByteArray out = littleEndian ? QByteArray("\xFF\xFE") : QByteArray("\xFE\xFF");
    for (QChar c : text) {
        const char lo = char(c.unicode() & 0xFF), hi = char(c.unicode() >> 8);
        out.append(littleEndian ? lo : hi).append(littleEndian ? hi : lo);
    }
    return out;
}
} // namespace

TEST(InputFile, AConfigSavedAsUnicodeIsReadAsText) {
    vb::InputFile file = vb::InputFile::fromBytes(Utf16(QString::fromUtf8("ORTA\r\nTIENDA PEÑA\r\n"), true));
    EXPECT_EQ(file.next(), QStringLiteral("ORTA"));
    EXPECT_EQ(file.next(), QString::fromUtf8("TIENDA PEÑA"));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, AConfigSavedAsBigEndianUnicodeIsReadAsText) {
    vb::InputFile file = vb::InputFile::fromBytes(Utf16(QStringLiteral("LAPRESA,\"PLAZA, 2\"\r\n"), false));
    EXPECT_EQ(file.next(), QStringLiteral("LAPRESA"));
    EXPECT_EQ(file.next(), QStringLiteral("PLAZA, 2"));
    EXPECT_TRUE(file.eof());
}

TEST(InputFile, TwoBytesALetterWithoutTheMarkAreNotTakenForUnicode) {
    // Only the mark says a file is UTF-16: without it the bytes are read as
    // always, and the zero bytes stay in the value.
    QByteArray bytes = Utf16(QStringLiteral("ORTA"), true).mid(2);
    vb::InputFile file = vb::InputFile::fromBytes(bytes);
    EXPECT_EQ(file.next(), QString::fromLatin1("O\0R\0T\0A\0", 8));
}

TEST(InputFile, AUnicodeFileOnDiskIsReadThroughOpen) {
    QTemporaryDir dir;
    QFile f(dir.filePath("config.ini"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(Utf16(QStringLiteral("ULTRAMARINOS\r\nCENTRAL\r\n"), true));
    f.close();
    vb::InputFile file = vb::InputFile::open(dir.filePath("config.ini"));
    EXPECT_EQ(file.next(), QStringLiteral("ULTRAMARINOS"));
    EXPECT_EQ(file.next(), QStringLiteral("CENTRAL"));
}
