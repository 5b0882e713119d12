// The delivery-note control window: the grid and its lists, and a note
// turned into an invoice, checked row by row against the schema.
#include "core/sql_values.h"
#include "runtime/flexgrid.h"
#include "sales/formcontrolalbaran.h"
#include "sales/note_control.h"
#include "support/positional_insert.h"
#include "note_fixture.h"

#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace {

using namespace vel::control_albaranes;

class NoteControl : public ::testing::Test {
protected:
    veltest::Cajas cajas;
    bool ended = false;
    std::unique_ptr<veltest::Tienda> tienda;
    std::unique_ptr<vel::FormControlAlbaran> w;

    void SetUp() override {
        vb::SetMessageBoxService(&cajas);
        vb::ResetEnded();
        vb::SetEndHandler([this] { ended = true; });
        tienda = std::make_unique<veltest::Tienda>(1);
        tienda->Usar();
    }
    void TearDown() override {
        w.reset();
        tienda.reset();
        vb::SetMessageBoxService(nullptr);
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
    }
    void Abrir() {
        w = std::make_unique<vel::FormControlAlbaran>();
        w->show();
        w->Load();
        veltest::Asentar();
    }
    vb::FlexGrid* Grid() { return w->findChild<vb::FlexGrid*>(QStringLiteral("GridAlbaranes")); }
    vb::ComboBox* Anos() { return w->findChild<vb::ComboBox*>(QStringLiteral("ComboEjercicio")); }
    void Click(const char* nombre) { w->findChild<QAbstractButton*>(QString::fromLatin1(nombre))->click(); }
    QStringList Fila(const char* select, const QStringList& columnas) {
        return veltest::Filas(*tienda->db, QString::fromUtf8(select), columnas);
    }
};

TEST_F(NoteControl, GridHasTwelveTitledColumns) {
    Abrir();
    const QStringList titulos = {"Tienda", "Serie", "Ejercicio", "Número", "Fecha", "Est.",
                                 "Nif", "Nombre Fiscal", "Iva", "Ret.", "Rec.", "Total"};
    ASSERT_EQ(Grid()->Cols(), 12);
    EXPECT_EQ(Grid()->Rows(), 1);
    EXPECT_EQ(Grid()->FixedRows(), 1);
    EXPECT_EQ(Grid()->FixedCols(), 0);
    for (int c = 0; c < 12; ++c) EXPECT_EQ(Grid()->TextMatrix(0, c), titulos[c]);
}

TEST_F(NoteControl, RowShowsTheNoteInItsForms) {
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 17, QStringLiteral("P"), QStringLiteral(" ")));
    Abrir();
    ASSERT_EQ(Grid()->Rows(), 2);
    QStringList fila;
    for (int c = 0; c < 12; ++c) fila << Grid()->TextMatrix(1, c);
    EXPECT_EQ(fila, (QStringList{"1", "AV", "2026", "00017", "21/11/2026", "P", "12345678Z", "", "21", "15", "5.2",
                                 "121.50"}));
}

TEST_F(NoteControl, EachYearOnceTheLastChosen) {
    for (int n = 1; n <= 3; ++n) tienda->db->Execute(veltest::NotaCabecera(1, 2025, n, QStringLiteral("P")));
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 1, QStringLiteral("P")));
    tienda->db->Execute(veltest::NotaCabecera(1, 2024, 1, QStringLiteral("P")));
    Abrir();
    ASSERT_EQ(Anos()->ListCount(), 3);
    EXPECT_EQ(Anos()->List(0), QStringLiteral("2024"));
    EXPECT_EQ(Anos()->List(2), QStringLiteral("2026"));
    EXPECT_EQ(Anos()->ListIndex(), 2);
    EXPECT_TRUE(cajas.shown.isEmpty());
}

TEST_F(NoteControl, AtMostAHundredYears) {
    for (int a = 1900; a < 1905 + 100; ++a) tienda->db->Execute(veltest::NotaCabecera(1, a, 1, QStringLiteral("P")));
    Abrir();
    EXPECT_EQ(Anos()->ListCount(), 100);
    EXPECT_EQ(Anos()->List(99), QStringLiteral("1999"));
}

TEST_F(NoteControl, NoNotesAtAll) {
    Abrir();
    EXPECT_EQ(cajas.shown, QStringList{"Velmarinda|No se encuentran albaranes de venta|0"});
    EXPECT_EQ(Anos()->ListCount(), 0);
    EXPECT_EQ(Grid()->Rows(), 1);
    // The search compares the year with 0.
    EXPECT_EQ(SentenciaBuscar(w->Tienda(), vel::sql::Numero(Anos()->Text()), w->EstadoBusqueda()),
              QStringLiteral("SELECT * FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 1 AND "
                             "ejercicio_cabecera_albaran_venta = 0 AND estado_cabecera_albaran_venta = 'P' ORDER BY "
                             "numero_cabecera_albaran_venta"));
}

TEST_F(NoteControl, SearchStatementForAllStates) {
    EXPECT_EQ(SentenciaBuscar(QStringLiteral("2"), QStringLiteral("2026"), QStringLiteral("*")),
              QStringLiteral("SELECT * FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = 2 AND "
                             "ejercicio_cabecera_albaran_venta = 2026 AND estado_cabecera_albaran_venta <> '' ORDER BY "
                             "numero_cabecera_albaran_venta"));
}

TEST_F(NoteControl, UnknownStoreTakesStoreOne) {
    QFile ini(tienda->Ruta(QStringLiteral("config.ini")));
    ini.open(QIODevice::WriteOnly);
    ini.write("ORTA\r\nNINGUNA\r\n");
    ini.close();
    Abrir();
    EXPECT_EQ(w->Tienda(), QStringLiteral("1"));
    EXPECT_TRUE(cajas.shown.contains(QStringLiteral("Velmarinda|No se encuentra la tienda. Se asigna la 1|0")));
}

// ---- Invoicing -----------------------------------------------------------------

TEST_F(NoteControl, InvoiceStatementsMatchTheSchema) {
    tienda->db->Execute(veltest::NotaCabecera(2, 2026, 17, QStringLiteral("P")));
    tienda->db->Execute(veltest::NotaLinea(2, 2026, 17, 1));
    const vel::ClaveNota clave{"2", "AV", "2026", "00017"};
    auto cabecera = tienda->db->OpenRecordset(SentenciaCabeceraNota(clave));
    ASSERT_FALSE(cabecera->Eof());
    EXPECT_TRUE(veltest::InsertMatchesSchema(SentenciaFacturaCabecera(*cabecera, clave, 8)));
    auto linea = tienda->db->OpenRecordset(SentenciaLineasNota(clave));
    ASSERT_FALSE(linea->Eof());
    EXPECT_TRUE(veltest::InsertMatchesSchema(SentenciaFacturaLinea(*linea, clave, 8)));
}

// The AND in the note's SET leaves "0" in the state and the document of
// origin as it was.
TEST_F(NoteControl, MarkLeavesZeroAndOriginUnchanged) {
    tienda->db->Execute(veltest::NotaCabecera(2, 2026, 17, QStringLiteral("P")));
    const vel::ClaveNota clave{"2", "AV", "2026", "00017"};
    EXPECT_EQ(SentenciaMarcarFacturada(clave, 8),
              QStringLiteral("UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'F' AND "
                             "documento_origen_cabecera_albaran_venta = '2/00008' WHERE tienda_cabecera_albaran_venta = 2 "
                             "AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
                             "numero_cabecera_albaran_venta = 00017"));
    tienda->db->Execute(SentenciaMarcarFacturada(clave, 8));
    EXPECT_EQ(Fila("SELECT * FROM cabecera_albaran_venta",
                   {"estado_cabecera_albaran_venta", "documento_origen_cabecera_albaran_venta"}),
              QStringList{"0|X/9"});
}

TEST_F(NoteControl, InvoiceFromAPendingNote) {
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 17, QStringLiteral("P")));
    tienda->db->Execute(veltest::NotaLinea(1, 2026, 17, 1));
    tienda->db->Execute(veltest::NotaLinea(1, 2026, 17, 2));
    tienda->db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 0, 'FD', 7)"));
    Abrir();
    Grid()->SetRow(1);
    Click("CommandFacturar");
    EXPECT_EQ(cajas.shown, (QStringList{"Pregunta|¿Desea facturar el albarán?|36",
                                        "Facturar Albaranes| Albarán nº 00017 facturado con el nº de factura 8|0"}));
    EXPECT_EQ(Fila("SELECT * FROM series WHERE tienda_series = 0", {"serie_series", "contador_series"}),
              QStringList{"FD|8"});
    // Every column of the invoice's header.
    QStringList columnas;
    for (const auto& c : vel::schema::FindTable(QStringLiteral("cabecera_factura_venta"))->columns) columnas << c.name;
    EXPECT_EQ(Fila("SELECT * FROM cabecera_factura_venta", columnas).join('\n'),
              QStringLiteral("1|VD|2026|8|21/11/2026|2|ANA|3|1/00017||1|12345678Z|PEDRO GARCÍA MUÑOZ|CALLE MAYOR 1|"
                             "MADRID|28001|MADRID|ESPAÑOLA|369|2|0049|0012|12|1234567890|17|||||||0|0|121.5|2.25|0||21|"
                             "5.2|15|0|ES12"));
    QStringList lineas;
    for (const auto& c : vel::schema::FindTable(QStringLiteral("detalle_factura_venta"))->columns) lineas << c.name;
    EXPECT_EQ(Fila("SELECT * FROM detalle_factura_venta ORDER BY unidades_detalle_factura_venta", lineas),
              (QStringList{"1|VD|2026|8||REF1|MARTILLO Nº 1 ÑANDÚ|1|10.5|||21|5|1|19.95|1|0|0|01|02|03|04|17|1|1|",
                           "1|VD|2026|8||REF2|MARTILLO Nº 2 ÑANDÚ|2|10.5|||21|5|1|19.95|1|0|0|01|02|03|04|17|1|1|"}));
    EXPECT_EQ(Fila("SELECT * FROM cabecera_albaran_venta",
                   {"estado_cabecera_albaran_venta", "documento_origen_cabecera_albaran_venta"}),
              QStringList{"0|X/9"});
    // The grid shows the pending notes again: none.
    EXPECT_EQ(Grid()->Rows(), 1);
}

// With no 'FD' counter the number is 1 and the row made says 'VN': the next
// invoicing of the year finds no counter again and takes 1 again.
TEST_F(NoteControl, FirstInvoiceOfTheYearMakesTheVNRow) {
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 1, QStringLiteral("P")));
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 2, QStringLiteral("P")));
    Abrir();
    Grid()->SetRow(1);
    Click("CommandFacturar");
    Grid()->SetRow(1);
    Click("CommandFacturar");
    EXPECT_EQ(Fila("SELECT * FROM series", {"tipo_series", "ejercicio_series", "tienda_series", "serie_series", "contador_series"}),
              (QStringList{"VN|2026|0|VN|1", "VN|2026|0|VN|1"}));
    EXPECT_EQ(Fila("SELECT * FROM cabecera_factura_venta ORDER BY documento_origen_cabecera_factura_venta",
                   {"numero_cabecera_factura_venta", "documento_origen_cabecera_factura_venta"}),
              (QStringList{"1|1/00001", "1|1/00002"}));
}

TEST_F(NoteControl, AnsweringNoDoesNothing) {
    tienda->db->Execute(veltest::NotaCabecera(1, 2026, 1, QStringLiteral("P")));
    Abrir();
    Grid()->SetRow(1);
    cajas.answers.push_back(vb::vbNo);
    Click("CommandFacturar");
    EXPECT_EQ(cajas.shown.size(), 1);
    EXPECT_EQ(Fila("SELECT * FROM cabecera_factura_venta", {"numero_cabecera_factura_venta"}), QStringList{});
}

} // namespace
