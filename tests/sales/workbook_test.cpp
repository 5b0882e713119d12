// The workbook readers on files the tests write: cell values of each kind, and
// damaged or hostile files that must end in the runtime error the import's
// trap shows, never in a crash or the machine's memory.
#include "runtime/errors.h"
#include "sales/workbook.h"
#include "support/workbook_writer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace veltest;

namespace {

class Workbook : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString file(const QString& name) const { return dir.filePath(name); }

    // The error the reader gives, or 0 when it reads.
    static int ErrorOf(const QString& path) {
        try {
            vel::Libro::Abrir(path);
        } catch (const vb::RuntimeError& e) {
            return e.Number;
        }
        return 0;
    }
};

const Hoja kLineas = {{"Ref", "Desc", "Uds", "Precio", "Dto", "Larga"},
                      {"TORN-6", "tornillo ñ", "10", "1.5", "", "Pedido"},
                      {"'12", "=UPPER(\"b\")|B", "=2*3|6", "12.10", "5", ""}};

void ExpectLineas(const vel::Libro& l) {
    EXPECT_EQ(l.Cells(1, 1).Texto(), "Ref");
    EXPECT_EQ(l.Cells(2, 1).Texto(), "TORN-6");
    EXPECT_EQ(l.Cells(2, 2).Texto(), "tornillo ñ");
    EXPECT_EQ(l.Cells(2, 3).tipo, vel::Celda::Tipo::Numero);
    EXPECT_EQ(l.Cells(2, 3).numero, 10);
    EXPECT_EQ(l.Cells(2, 4).Texto(), "1.5");
    EXPECT_TRUE(l.Cells(2, 5).Vacia());
    EXPECT_EQ(l.Cells(3, 1).tipo, vel::Celda::Tipo::Texto);
    EXPECT_EQ(l.Cells(3, 1).Texto(), "12");
    EXPECT_TRUE(l.Cells(4, 1).Vacia());
}

} // namespace

TEST_F(Workbook, XlsxValuesAndFormulaResults) {
    WriteWorkbook(file("a.xlsx"), kLineas);
    const vel::Libro l = vel::Libro::Abrir(file("a.xlsx"));
    ExpectLineas(l);
    EXPECT_EQ(l.Cells(3, 2).Texto(), "B");
    EXPECT_EQ(l.Cells(3, 3).tipo, vel::Celda::Tipo::Numero);
    EXPECT_EQ(l.Cells(3, 3).numero, 6);
}

TEST_F(Workbook, OdsValuesAndFormulaResults) {
    WriteWorkbook(file("a.ods"), kLineas);
    const vel::Libro l = vel::Libro::Abrir(file("a.ods"));
    ExpectLineas(l);
    // A formula whose result is a text gives that text, as its number result gives the number.
    EXPECT_EQ(l.Cells(3, 2).tipo, vel::Celda::Tipo::Texto);
    EXPECT_EQ(l.Cells(3, 2).Texto(), "B");
    EXPECT_EQ(l.Cells(3, 3).tipo, vel::Celda::Tipo::Numero);
    EXPECT_EQ(l.Cells(3, 3).numero, 6);
}

// A text result kept only as the cell's paragraphs, after repeated columns
// and rows; the second table's formula is not read.
TEST_F(Workbook, OdsTextResultFromParagraphs) {
    WriteOdsTables(file("p.ods"),
                   "<table:table table:name=\"Hoja1\">"
                   "<table:table-row><table:table-cell table:number-columns-repeated=\"2\" office:value-type=\"string\">"
                   "<text:p>x</text:p></table:table-cell>"
                   "<table:table-cell table:formula=\"of:=UPPER(&quot;texto&quot;)\" office:value-type=\"string\">"
                   "<text:p>TEXTO</text:p></table:table-cell></table:table-row>"
                   "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell/></table:table-row>"
                   "<table:table-row><table:table-cell table:formula=\"of:=&quot;A&quot;&amp;CHAR(10)&amp;&quot;B&quot;\" "
                   "office:value-type=\"string\"><text:p>A</text:p><text:p>B</text:p></table:table-cell>"
                   "<table:table-cell table:formula=\"of:=1+1\" office:value-type=\"float\" office:value=\"2\">"
                   "<text:p>2</text:p></table:table-cell></table:table-row>"
                   "</table:table>"
                   "<table:table table:name=\"Hoja2\"><table:table-row>"
                   "<table:table-cell table:formula=\"of:=&quot;no&quot;\" office:value-type=\"string\">"
                   "<text:p>NO</text:p></table:table-cell></table:table-row></table:table>");
    const vel::Libro l = vel::Libro::Abrir(file("p.ods"));
    EXPECT_EQ(l.Cells(1, 1).Texto(), "x");
    EXPECT_EQ(l.Cells(1, 2).Texto(), "x");
    EXPECT_EQ(l.Cells(1, 3).tipo, vel::Celda::Tipo::Texto);
    EXPECT_EQ(l.Cells(1, 3).Texto(), "TEXTO");
    EXPECT_TRUE(l.Cells(2, 1).Vacia());
    EXPECT_EQ(l.Cells(4, 1).Texto(), "A\nB");
    EXPECT_EQ(l.Cells(4, 2).tipo, vel::Celda::Tipo::Numero);
    EXPECT_EQ(l.Cells(4, 2).numero, 2);
}

TEST_F(Workbook, XlsValues) {
    Hoja sinFormulas = kLineas;
    sinFormulas[2] = {"'12", "B", "6", "12.10", "5", ""};
    WriteWorkbook(file("a.xls"), sinFormulas);
    const vel::Libro l = vel::Libro::Abrir(file("a.xls"));
    ExpectLineas(l);
}

TEST_F(Workbook, OnlyTheFirstSheet) {
    WriteWorkbook(file("dos.xlsx"), std::vector<Hoja>{{{"uno"}}, {{"dos"}, {"x"}}});
    const vel::Libro l = vel::Libro::Abrir(file("dos.xlsx"));
    EXPECT_EQ(l.Cells(1, 1).Texto(), "uno");
    EXPECT_TRUE(l.Cells(2, 1).Vacia());
}

TEST_F(Workbook, TextTypedAsUnitsIsATypeMismatchWhenAdded) {
    vel::Celda c{.tipo = vel::Celda::Tipo::Texto, .texto = "muchos"};
    try {
        c.Sumando();
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 13);
    }
    EXPECT_EQ((vel::Celda{.tipo = vel::Celda::Tipo::Texto, .texto = "4"}).Sumando(), 4);
    EXPECT_EQ(vel::Celda().Sumando(), 0);
}

TEST_F(Workbook, TruncatedFilesOfEachKind) {
    for (const QString name : {"t.xlsx", "t.ods", "t.xls"}) {
        WriteWorkbook(file(name), Hoja{{"Ref", "Desc"}, {"A", "B"}});
        QFile f(file(name));
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        const QByteArray all = f.readAll();
        for (qsizetype cut : {qsizetype(10), all.size() / 3, all.size() / 2, all.size() - 30}) {
            QFile g(file("cut_" + name));
            ASSERT_TRUE(g.open(QIODevice::WriteOnly | QIODevice::Truncate));
            g.write(all.left(cut));
            g.close();
            EXPECT_EQ(ErrorOf(file("cut_" + name)), 1004) << name.toStdString() << " cut at " << cut;
        }
    }
}

TEST_F(Workbook, NoWorkbookAtAll) {
    QFile f(file("texto.xlsx"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("Referencia;Descripcion\nA;B\n");
    f.close();
    EXPECT_EQ(ErrorOf(file("texto.xlsx")), 1004);
    EXPECT_EQ(ErrorOf(file("no_existe.xlsx")), 1004);
}

// A sheet part that unpacks to 80 MB from a file of a few hundred KB.
TEST_F(Workbook, ZipBombInsideXlsxAndOds) {
    for (const QString kind : {"xlsx", "ods"}) {
        const QString name = "bomba." + kind;
        WriteWorkbook(file(name), Hoja{{"Ref"}, {"A"}});
        QTemporaryDir d;
        const QString part = kind == "xlsx" ? "xl/worksheets/sheet1.xml" : "content.xml";
        QDir(d.path()).mkpath(QFileInfo(d.filePath(part)).path());
        QFile big(d.filePath(part));
        ASSERT_TRUE(big.open(QIODevice::WriteOnly));
        const QByteArray chunk(1 << 20, ' ');
        for (int i = 0; i < 80; ++i) big.write(chunk);
        big.close();
        workbook_detail::run("zip", {"-q", "-X", "-9", QFileInfo(file(name)).absoluteFilePath(), part}, d.path());
        EXPECT_LT(QFileInfo(file(name)).size(), 2 << 20);
        EXPECT_EQ(ErrorOf(file(name)), 1004) << name.toStdString();
    }
}

// The full height of a sheet: 1,048,576 rows.
TEST_F(Workbook, MillionRows) {
    QTemporaryDir d;
    WriteWorkbook(file("filas.xlsx"), Hoja{{"Ref"}});
    QString rows;
    rows.reserve(50 << 20);
    for (int r = 1; r <= 1048576; ++r) rows += QStringLiteral("<row r=\"%1\"><c r=\"A%1\"><v>%1</v></c></row>").arg(r);
    QDir(d.path()).mkpath("xl/worksheets");
    QFile s(d.filePath("xl/worksheets/sheet1.xml"));
    ASSERT_TRUE(s.open(QIODevice::WriteOnly));
    s.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?><worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>");
    s.write(rows.toUtf8());
    s.write("</sheetData></worksheet>");
    s.close();
    workbook_detail::run("zip", {"-q", "-X", QFileInfo(file("filas.xlsx")).absoluteFilePath(), "xl/worksheets/sheet1.xml"}, d.path());
    EXPECT_EQ(ErrorOf(file("filas.xlsx")), 1004);
}

// A cell of 10 MB, in each kind.
TEST_F(Workbook, TenMegabyteCell) {
    const QString enorme(10 << 20, 'x');
    for (const QString name : {"celda.xlsx", "celda.ods"}) {
        WriteWorkbook(file(name), Hoja{{"Ref"}, {enorme}});
        EXPECT_EQ(ErrorOf(file(name)), 1004) << name.toStdString();
    }
}

// An .xls cell can say no more than 65,535 characters: one that long is
// beyond the reader's limit, and 10 MB of text behind such a cell is a
// damaged file. Both are the trap's error, and the file's size is no crash.
TEST_F(Workbook, TenMegabyteCellInXls) {
    WriteXlsUnchecked(file("larga.xls"), Hoja{{"Ref"}, {QString(65535, 'x')}});
    EXPECT_EQ(ErrorOf(file("larga.xls")), 1004);
    WriteXlsUnchecked(file("enorme.xls"), Hoja{{"Ref"}, {QString(10 << 20, 'x')}, {"ULTIMA"}});
    EXPECT_GE(QFileInfo(file("enorme.xls")).size(), 10 << 20);
    EXPECT_EQ(ErrorOf(file("enorme.xls")), 1004);
    // A long text that FreeXL follows (it gives up on a text beyond two
    // continuation records, some 16,400 characters) reads whole.
    WriteWorkbook(file("larga_sana.xls"), Hoja{{"Ref"}, {QString(16000, 'x')}});
    EXPECT_EQ(vel::Libro::Abrir(file("larga_sana.xls")).Cells(2, 1).Texto().size(), 16000);
}

// Files the fuzzers found: an .xls on which FreeXL reads past its own buffer
// (read in a child process, the program goes on), and an .xlsx and an .ods
// whose part says a packed size of 4 GB in a file of 2 KB. Both are the trap's error.
TEST_F(Workbook, HostileFilesFoundByTheFuzzers) {
    const QString carpeta = QStringLiteral(VEL_TEST_DATA "/sales/hostile_workbooks/");
    EXPECT_EQ(ErrorOf(carpeta + "text_past_its_record.xls"), 1004);
    EXPECT_EQ(ErrorOf(carpeta + "packed_size_past_the_end.xlsx"), 1004);
    EXPECT_EQ(ErrorOf(carpeta + "packed_size_past_the_end.ods"), 1004);
    // Broken XML on which liborcus fails an assertion (in the child that reads it).
    EXPECT_EQ(ErrorOf(carpeta + "broken_xml_assertion.xlsx"), 1004);
    EXPECT_EQ(ErrorOf(carpeta + "broken_xml_assertion.ods"), 1004);
}
