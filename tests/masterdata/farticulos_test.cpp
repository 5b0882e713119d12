// The products window's statements, its list rows, and what the rest of the
// program finds of a product saved here.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "masterdata/farticulos.h"
#include "runtime/mouse_pointer.h"
#include "runtime/msgbox.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include "support/positional_insert.h"

#include <QSignalBlocker>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

// Message boxes answered Yes, and remembered.
class SiATodo : public vb::MessageBoxService {
public:
    int show(const QString&, const QString& text, int) override {
        textos << text;
        return vb::vbYes;
    }
    void about(const QString&, const QString&) override {}
    QStringList textos;
};

class Abierta : public vel::Farticulos {
public:
    using vel::Farticulos::SentenciaCargarDatos;
    using vel::Farticulos::SentenciaInsertar;
    using vel::Farticulos::SentenciaModificar;
    QLineEdit* caja(const QString& nombre) { return vb::Control<QLineEdit>(this, nombre); }
    // An entry chosen in a combo without its events: no database needed.
    void elegir(const QString& combo, const QString& entrada) {
        auto* c = vb::Control<vb::ComboBox>(this, combo);
        QSignalBlocker quieto(c);
        c->Clear();
        c->AddItem(entrada);
        c->SetListIndex(0);
    }
    // A product of leaf 01/02/03/04 with every box filled.
    void rellenar() {
        elegir("Combodivision", "01/FERRETERIA");
        elegir("Combogfamilia", "02/TORNILLERIA");
        elegir("Combofamilia", "03/TORNILLOS");
        elegir("Comboarticulo", "04/ROSCA CHAPA");
        elegir("Comboiva", "1 /21");
        const std::pair<const char*, const char*> valores[] = {
            {"Textreferencia", "t440"},       {"Textdescripcion", "tornillo acero"}, {"Textmarca", "spit"},
            {"Textmodelo", "m4"},             {"Textcoste", "0.05"},                {"Textpvp", "0.121"},
            {"Textgarantia", "2"},            {"Textdto1", "5"},                    {"Textdto2", "10"},
            {"Textdto3", "12,5"},             {"Textdto4", ""},                     {"Textdto5", "20"},
            {"Textpvpoferta", "0.10"},        {"Textinioferta", "01/12/2026"},      {"Textfinoferta", ""},
            {"Textunioferta", "100"},         {"Textpeso", "0.004"},                {"Textbarras1", "8412345000011"},
            {"Textbarras2", "8412345000028"}, {"Textbarras3", "ab-1"},              {"Textcoleccion", "otoño"},
            {"Texttemporada", "invierno"}};
        for (const auto& [nombre, valor] : valores) caja(nombre)->setText(QString::fromUtf8(valor));
    }
};

TEST(Farticulos, TheInsertHasOneValueForEachColumnOfProductos) {
    Abierta w;
    w.rellenar();
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar()));
}

TEST(Farticulos, TheInsertAsTheWindowWritesIt) {
    Abierta w;
    w.rellenar();
    EXPECT_EQ(w.SentenciaInsertar(),
              QStringLiteral("INSERT INTO productos VALUES ('01', '02', '03', '04', 'T440', 'TORNILLO ACERO', '', "
                             "'SPIT', 'M4', '', 0.05, 0.121, 2, 5, 10, 12, 0, 20, 0.1, '01/12/2026', '', 100, "
                             "0.004, '', '', '8412345000011', '8412345000028', 'ab-1', 'OTOÑO', 'INVIERNO', 1)"));
}

TEST(Farticulos, TheUpdateLeavesReferenceLeafAndOfferUnitsAlone) {
    Abierta w;
    w.rellenar();
    EXPECT_EQ(w.SentenciaModificar(),
              QStringLiteral("UPDATE productos SET descripcion_productos = 'TORNILLO ACERO', marca_productos = 'SPIT', "
                             "modelo_productos = 'M4', coste_productos = 0.05, pvp_neto_productos = 0.121, "
                             "garantia_productos = 2, dtotar1_productos = 5, dtotar2_productos = 10, "
                             "dtotar3_productos = 12, dtotar4_productos = 0, dtotar5_productos = 20, "
                             "pvp_oferta_productos = 0.1, inicio_oferta_productos = '01/12/2026', "
                             "fin_oferta_productos = '', peso_productos = 0.004, cod_barras1_productos = "
                             "'8412345000011', cod_barras2_productos = '8412345000028', cod_barras3_productos = "
                             "'ab-1', coleccion_productos = 'OTOÑO', temporada_productos = 'INVIERNO', "
                             "codigo_iva_productos = 1 WHERE referencia_productos = 't440'"));
    for (const char* fijo : {"division_productos", "gfamilia_productos", "familia_productos", "articulo_productos",
                             "unidades_oferta_productos", "referencia_productos ="})
        EXPECT_FALSE(w.SentenciaModificar().section(" WHERE ", 0, 0).contains(QLatin1String(fijo))) << fijo;
}

TEST(Farticulos, TheLeafIsListedByReference) {
    Abierta w;
    w.rellenar();
    EXPECT_EQ(w.SentenciaCargarDatos(),
              QStringLiteral("SELECT referencia_productos, descripcion_productos, marca_productos, "
                             "modelo_productos, pvp_neto_productos FROM productos WHERE division_productos = '01' "
                             "AND gfamilia_productos = '02' AND familia_productos = '03' AND articulo_productos = "
                             "'04' ORDER BY referencia_productos"));
}

TEST(Farticulos, ListRowsHaveFixedColumns) {
    const QString fila = vel::Farticulos::FilaArticulo("T440", "TORNILLO ACERO", "SPIT", "M4", 0.121);
    EXPECT_EQ(fila.left(14), QStringLiteral("T440          "));
    EXPECT_EQ(fila.mid(14, 51), QStringLiteral("TORNILLO ACERO").leftJustified(51));
    EXPECT_EQ(fila.mid(65, 16), QStringLiteral("SPIT").leftJustified(16));
    EXPECT_EQ(fila.mid(81), QStringLiteral("M4") + QString(15, ' ') + QStringLiteral("     0.121"));
    // The reference comes back from the first 13 columns.
    EXPECT_EQ(vb::Left(fila, 13).trimmed(), QStringLiteral("T440"));
    // A full reference fills 13 columns and one blank follows it; long texts are cut.
    const QString llena = vel::Farticulos::FilaArticulo("ABCDEFGHIJKLM", QString(60, 'D'), QString(20, 'B'), "", 1);
    EXPECT_EQ(vb::Left(llena, 13), QStringLiteral("ABCDEFGHIJKLM"));
    EXPECT_EQ(llena.at(13), QLatin1Char(' '));
    EXPECT_EQ(llena.mid(14, 51), QString(51, 'D'));
    EXPECT_EQ(llena.mid(65, 16), QString(16, 'B'));
    EXPECT_EQ(llena.right(10), QStringLiteral("     1.000"));
}

TEST(Farticulos, ALongModelPushesThePriceRight) {
    const QString corto = vel::Farticulos::FilaArticulo("R1", "D", "B", "M", 12.5);
    const QString largo = vel::Farticulos::FilaArticulo("R1", "D", "B", "MODELO LARGO", 12.5);
    EXPECT_EQ(largo.size() - corto.size(), 11);
    EXPECT_EQ(largo.right(10), QStringLiteral("    12.500"));
    EXPECT_EQ(vel::Farticulos::FilaArticulo("R", "D", "B", "M", 123456.5).right(10), QStringLiteral("123456.500"));
}

// The price box takes eight characters: 99999999 is a price the window saves,
// so its leaf must open again. A price wider than its column stands as it is.
TEST(Farticulos, APriceOfAMillionOrMoreStandsWiderThanItsColumn) {
    const QString corto = vel::Farticulos::FilaArticulo("R", "D", "B", "M", 12.5);
    const QString millon = vel::Farticulos::FilaArticulo("R", "D", "B", "M", 1234567.5);
    EXPECT_EQ(millon.size(), corto.size() + 1);
    EXPECT_TRUE(millon.endsWith(QStringLiteral("M               1234567.500")));
    EXPECT_TRUE(vel::Farticulos::FilaArticulo("R", "D", "B", "M", 99999999).endsWith(QStringLiteral(" 99999999.000")));
}

// ---- With the shop's database ---------------------------------------------------------

class Tienda : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        vel::schema::CreateEmptyDatabase(dir.filePath("datos.mdb"));
        db = vel::Database::OpenDatabase(dir.filePath("datos.mdb"));
        vel::BaseDatos = db.get();
    }
    void TearDown() override { vel::BaseDatos = nullptr; }

    QStringList Buscar(const QString& x) {
        // The statement of the document lines and the counter: a reference or
        // any of the three bar codes in the one box.
        auto rs = db->OpenRecordset(
            "SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos WHERE "
            "referencia_productos = '" + x + "' OR cod_barras1_productos = '" + x + "' OR cod_barras2_productos = '" +
            x + "' OR cod_barras3_productos = '" + x + "'");
        QStringList out;
        while (!rs->Eof()) {
            out << rs->Fields("descripcion_productos").str() + "|" + rs->Fields("pvp_neto_productos").str() + "|" +
                       rs->Fields("codigo_iva_productos").str();
            rs->MoveNext();
        }
        return out;
    }

    QTemporaryDir dir;
    std::unique_ptr<vel::Database> db;
};

TEST_F(Tienda, AProductSavedHereIsFoundByReferenceAndByEachBarcode) {
    Abierta w;
    w.rellenar();
    db->Execute(w.SentenciaInsertar());
    const QStringList uno = {QStringLiteral("TORNILLO ACERO|0.121|1")};
    EXPECT_EQ(Buscar("T440"), uno);
    EXPECT_EQ(Buscar("8412345000011"), uno);
    EXPECT_EQ(Buscar("8412345000028"), uno);
    EXPECT_EQ(Buscar("ab-1"), uno);
    EXPECT_EQ(Buscar("8400000000000"), QStringList{});
}

TEST_F(Tienda, TwoProductsWithTheSameBarcodeAreFoundFirstTheOneSavedFirst) {
    Abierta w;
    w.rellenar();
    db->Execute(w.SentenciaInsertar());
    w.caja("Textreferencia")->setText("T441");
    w.caja("Textdescripcion")->setText("tornillo inox");
    db->Execute(w.SentenciaInsertar());
    const QStringList hallados = Buscar("8412345000011");
    ASSERT_EQ(hallados.size(), 2);
    EXPECT_EQ(hallados.first(), QStringLiteral("TORNILLO ACERO|0.121|1"));
}

// The bulk change runs its UPDATEs under the wait pointer, and gives the arrow
// back at the end.
TEST_F(Tienda, PricesChangeUnderTheWaitPointer) {
    Abierta w;
    w.rellenar();
    db->Execute(w.SentenciaInsertar());
    std::vector<int> punteros;
    sqlite3_trace_v2(
        db->handle(), SQLITE_TRACE_STMT,
        [](unsigned, void* ctx, void* p, void*) {
            const char* sql = sqlite3_sql(static_cast<sqlite3_stmt*>(p));
            if (sql && QByteArray(sql).startsWith("UPDATE productos SET pvp_neto_productos"))
                static_cast<std::vector<int>*>(ctx)->push_back(vb::MousePointer());
            return 0;
        },
        &punteros);
    SiATodo cajas;
    vb::SetMessageBoxService(&cajas);
    w.CommandRecalcular_Click();
    vb::SetMessageBoxService(nullptr);
    EXPECT_EQ(cajas.textos.size(), 1);
    sqlite3_trace_v2(db->handle(), 0, nullptr, nullptr);
    EXPECT_EQ(punteros, std::vector<int>{vb::vbHourglass});
    EXPECT_EQ(vb::MousePointer(), vb::vbDefault);
}

} // namespace
