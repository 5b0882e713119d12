// Every window that writes a positional INSERT: its values, one per column of
// the table, in the table's order. A missing comma or a column left out shows
// here, with each column beside the value that would land in it.
#include "masterdata/bancos.h"
#include "masterdata/estructura.h"
#include "masterdata/falmacenes.h"
#include "masterdata/fformapago.h"
#include "masterdata/foperador.h"
#include "masterdata/ftienda.h"
#include "masterdata/sucursales.h"
#include "masterdata/tipoiva.h"
#include "support/positional_insert.h"

#include <QSignalBlocker>
#include <gtest/gtest.h>

namespace {

// The statements of a window, built from its boxes as they stand.
template <class W>
class Sentencias : public W {
public:
    using W::SentenciaInsertar;
    QLineEdit* caja(const QString& nombre) { return vb::Control<QLineEdit>(this, nombre); }
    // Puts a text in a combo without its Click or Change: there is no database here.
    void escribir(const QString& combo, const QString& texto) {
        auto* lista = vb::Control<vb::ComboBox>(this, combo);
        QSignalBlocker quieto(lista);
        lista->SetText(texto);
    }
};

template <class W>
void ExpectCodeNameInsertFillsItsTable(const QString& tercero) {
    Sentencias<W> w;
    w.caja("Textcodigo")->setText("3");
    w.caja("Textnombre")->setText("Norte, sur");
    w.caja(tercero)->setText("Calle Real, 4");
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar()));
}

TEST(PositionalInserts, StoresWarehousesAndOperators) {
    ExpectCodeNameInsertFillsItsTable<vel::Ftienda>("Textdireccion");
    ExpectCodeNameInsertFillsItsTable<vel::Falmacenes>("Textdireccion");
    ExpectCodeNameInsertFillsItsTable<vel::Foperador>("Textobservaciones");
}

TEST(PositionalInserts, PaymentTerms) {
    Sentencias<vel::Fformapago> w;
    w.caja("Textcodigo")->setText("60");
    w.caja("Textnombre")->setText("60 dias");
    w.caja("Textvencimientos")->setText("2");
    w.caja("Textven(0)")->setText("30");
    w.caja("Textven(1)")->setText("60");
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar()));
}

TEST(PositionalInserts, VatTypes) {
    Sentencias<vel::TipoIva> w;
    w.caja("TextoIva")->setText("21");
    w.caja("TextoRetencion")->setText("0");
    w.caja("TextoRecargoEquivalencia")->setText("5.2");
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar("3")));
}

TEST(PositionalInserts, Banks) {
    Sentencias<vel::Bancos> w;
    w.escribir("Combobanco", "49");
    w.caja("TextoNombre")->setText("Santander");
    EXPECT_EQ(w.SentenciaInsertar(), "insert into bancos values('0049','Santander')");
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar()));
}

TEST(PositionalInserts, Branches) {
    Sentencias<vel::Sucursales> w;
    w.caja("TextoNombre")->setText("Centro");
    w.caja("TextoDireccion")->setText("Plaza Mayor 1");
    EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsertar("0049", "0012")));
}

class Estructura : public vel::Estructura {
public:
    using vel::Estructura::SentenciaInsercion;
    void escribir(const QString& combo, const QString& texto) {
        auto* lista = vb::Control<vb::ComboBox>(this, combo);
        QSignalBlocker quieto(lista);
        lista->SetText(texto);
    }
};

TEST(PositionalInserts, TheFourLevelsOfTheArticleStructure) {
    Estructura w;
    w.escribir("ComboDivisiones", "01 FERRETERIA");
    w.escribir("ComboGrandesFamilias", "02 HERRAMIENTA");
    w.escribir("ComboFamilias", "03 MANUAL");
    w.escribir("ComboArticulos", "04 MARTILLOS");
    vb::Control<QLineEdit>(&w, "TextoArticulos")->setText("Martillos");
    for (int nivel = vel::Estructura::Division; nivel <= vel::Estructura::Articulo; ++nivel)
        EXPECT_TRUE(veltest::InsertMatchesSchema(w.SentenciaInsercion(nivel))) << "level " << nivel;
    EXPECT_EQ(w.SentenciaInsercion(vel::Estructura::Articulo),
              "insert into articulos values('04','03','02','01','Martillos')");
}

} // namespace
