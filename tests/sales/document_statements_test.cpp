// The statements that store a document, written into a real database and read
// back column by column: the store's column list checks the count and order.
#include "core/store_fixture.h"
#include "support/print_to.h"
#include "sales/document_statements.h"
#include "support/positional_insert.h"

namespace veltest {
namespace {

using vel::DocumentoVenta;

const vel::ClaveDocumento kNota{.tienda = "3", .ejercicio = "2026", .numero = "00017"};

vel::CeldasLinea Taco() {
    return {.referencia = "x1", .descripcion = "taco de 8", .unidades = "3", .precio = "1.999",
            .subtotal = "5.997", .descuento = "10", .total = "5.397"};
}

vel::DatosCabecera Pedro() {
    vel::DatosCabecera d;
    d.fecha = "21/11/2026";
    d.estado = "P";
    d.nif = "12345678z";
    d.nombre = "Pedro";
    d.apellidos = "García López";
    d.domicilio = "Calle Mayor 1";
    d.poblacion = "Madrid";
    d.codigoPostal = "28001";
    d.provincia = "Madrid";
    d.nacionalidad = "Española";
    d.formaPago = "r3";
    d.recibos = 3;
    d.banco = "0049";
    d.sucursal = "0012";
    d.digitoControl = "12";
    d.numeroCuenta = "1234567890";
    d.bruto = "6.00";
    d.descuento = "0.60";
    d.iva = "21";
    d.recargo = "5.2";
    d.iban = "ES12";
    return d;
}

using DocumentStatements = ShopDatabase;

TEST_F(DocumentStatements, ADeliveryNoteLineHasItsTwentyFiveValues) {
    const QString sql = vel::SentenciaLinea(DocumentoVenta::Albaran, kNota, Taco());
    EXPECT_EQ(sql, "INSERT INTO detalle_albaran_venta VALUES (03, 'AV', 2026, 17, '', 'X1', 'TACO DE 8', 3, "
                   "'1.999', '', '', '5.997', 10, 0, '5.397', '1', 0, 0, '00', '00', '00', '00', 17, 01, '1')");
    EXPECT_TRUE(InsertMatchesSchema(sql));
    db->Execute(sql);
    const QStringList columns = {
        "tienda", "serie", "ejercicio", "numero", "tipo_linea", "referencia", "descripcion", "unidades", "pvp_neto",
        "oferta", "kit", "importe", "descuento", "descuento_cliente", "neto", "impresion", "peso", "garantia",
        "division", "gran_familia", "familia", "articulo", "pedido", "almacen", "tratado"};
    QStringList named;
    for (const QString& c : columns) named << c + "_detalle_albaran_venta";
    EXPECT_EQ(Rows("SELECT * FROM detalle_albaran_venta", named),
              QStringList{"3|AV|2026|17||X1|TACO DE 8|3|1.999|||5.997|10|0|5.397|1|0|0|00|00|00|00|17|1|1"});
}

TEST_F(DocumentStatements, ADeliveryNoteHeaderHasItsFortyTwoValues) {
    const QString sql = vel::SentenciaCabecera(DocumentoVenta::Albaran, kNota, Pedro());
    EXPECT_EQ(sql, "INSERT INTO cabecera_albaran_venta VALUES (03, 'AV', 2026, 17, '21/11/2026', 00, '', 01, '', '', "
                   "'P', '12345678Z', 'PEDRO GARCÍA LÓPEZ', 'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', "
                   "'ESPAÑOLA', 'R3', 3, '0049', '0012', '12', '1234567890', 17, '', '', '', '', '', '', 0, 0, "
                   "'6', '0.6', '0', '', 21, 5.2, 0, '0', 'ES12')");
    EXPECT_TRUE(InsertMatchesSchema(sql));
    db->Execute(sql);
    const QStringList columns = {
        "tienda", "serie", "ejercicio", "numero", "fecha", "operador", "nombre_operador", "almacen",
        "documento_origen", "observaciones", "estado", "nif", "nombre_fiscal", "domicilio", "poblacion",
        "codigo_postal", "provincia", "nacionalidad", "forma_pago", "recibos", "banco", "sucursal",
        "digito_control", "numero_cuenta", "pedido", "lugar_envio", "forma_envio", "tarjeta", "nombre_tarjeta",
        "numero_tarjeta", "contado", "numero_bultos", "peso", "total_bruto", "descuento", "portes"};
    QStringList named;
    for (const QString& c : columns) named << c + "_cabecera_albaran_venta";
    named << "rec_financ";
    for (const char* c : {"iva", "recargo", "retencion", "contabilizada", "iban"})
        named << QString::fromLatin1(c) + "_cabecera_albaran_venta";
    ASSERT_EQ(named.size(), 42);
    EXPECT_EQ(Rows("SELECT * FROM cabecera_albaran_venta", named),
              QStringList{"3|AV|2026|17|21/11/2026|0||1|||P|12345678Z|PEDRO GARCÍA LÓPEZ|CALLE MAYOR 1|MADRID|28001|"
                          "MADRID|ESPAÑOLA|R3|3|0049|0012|12|1234567890|17|||||||0|0|6|0.6|0||21|5.2|0|0|ES12"});
}

TEST_F(DocumentStatements, TheKeptStateAndTheNifOfEverybodyGoAsTheyStand) {
    vel::DatosCabecera d = Pedro();
    d.estado = "E";
    d.nif = "*";
    db->Execute(vel::SentenciaCabecera(DocumentoVenta::Albaran, kNota, d));
    EXPECT_EQ(Rows("SELECT * FROM cabecera_albaran_venta", {"estado_cabecera_albaran_venta", "nif_cabecera_albaran_venta"}),
              QStringList{"E|*"});
}

TEST_F(DocumentStatements, AnInvoiceIsStoreOneSeriesVdWithNoOrderAndItsLongDescription) {
    const vel::ClaveDocumento factura{.tienda = "3", .ejercicio = "2026", .numero = "00005"};
    const QString linea = vel::SentenciaLinea(DocumentoVenta::Factura, factura, Taco(), "Entrega en obra");
    EXPECT_EQ(linea, "INSERT INTO detalle_factura_venta VALUES (01, 'VD', 2026, 5, '', 'X1', 'TACO DE 8', 3, "
                     "'1.999', '', '', '5.997', 10, 0, '5.397', '1', 0, 0, '00', '00', '00', '00', 0, 01, '1', "
                     "'Entrega en obra')");
    EXPECT_TRUE(InsertMatchesSchema(linea));
    EXPECT_TRUE(InsertMatchesSchema(vel::SentenciaCabecera(DocumentoVenta::Factura, factura, Pedro())));
    db->Execute(linea);
    db->Execute(vel::SentenciaCabecera(DocumentoVenta::Factura, factura, Pedro()));
    EXPECT_EQ(Rows("SELECT * FROM detalle_factura_venta",
                   {"tienda_detalle_factura_venta", "serie_detalle_factura_venta", "pedido_detalle_factura_venta",
                    "descripcionlarga_detalle_factura_venta"}),
              QStringList{"1|VD|0|Entrega en obra"});
    EXPECT_EQ(Rows("SELECT * FROM cabecera_factura_venta",
                   {"tienda_cabecera_factura_venta", "serie_cabecera_factura_venta", "estado_cabecera_factura_venta",
                    "pedido_cabecera_factura_venta"}),
              QStringList{"1|VD|1|0"});
}

TEST_F(DocumentStatements, AQuoteInADescriptionBreaksTheLinesStatement) {
    vel::CeldasLinea c = Taco();
    c.descripcion = "TUBO 1/2'";
    const QString sql = vel::SentenciaLinea(DocumentoVenta::Albaran, kNota, c);
    EXPECT_TRUE(sql.contains("'TUBO 1/2''"));
    EXPECT_NE(ErrorOf([&] { db->Execute(sql); }), 0);
    EXPECT_TRUE(Rows("SELECT * FROM detalle_albaran_venta", {"numero_detalle_albaran_venta"}).isEmpty());
}

TEST_F(DocumentStatements, TextInNumberCellsGoesThroughVal) {
    vel::CeldasLinea c{.referencia = "", .descripcion = "", .unidades = "2uds", .precio = "3abc",
                       .subtotal = "", .descuento = "", .total = "0.000"};
    const QString sql = vel::SentenciaLinea(DocumentoVenta::Albaran, kNota, c);
    EXPECT_TRUE(sql.contains("'', '', 2, '3abc', '', '', '0', 0, 0, '0', '1'")) << sql.toStdString();
}

// A document is read by year and number alone; the number goes as the caller
// gives it (five digits for the header and its lines, as typed for its owner).
TEST(DocumentKeyStatements, ReadByYearAndNumber) {
    EXPECT_EQ(vel::SentenciaPorEjercicioYNumero("albaran", "cabecera", "*", "2026", "00017"),
              "SELECT * FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = 2026 AND "
              "numero_cabecera_albaran_venta = 00017");
    EXPECT_EQ(vel::SentenciaPorEjercicioYNumero("factura", "detalle", "*", "2026", "00003"),
              "SELECT * FROM detalle_factura_venta WHERE ejercicio_detalle_factura_venta = 2026 AND "
              "numero_detalle_factura_venta = 00003");
    EXPECT_EQ(vel::SentenciaPorEjercicioYNumero("albaran", "cabecera", "nif_cabecera_albaran_venta", "2026", "17"),
              "SELECT nif_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE "
              "ejercicio_cabecera_albaran_venta = 2026 AND numero_cabecera_albaran_venta = 17");
}

TEST(DocumentKeyStatements, TheDeliveryNotesStateAndDeletesNameItsStoreAndSeries) {
    EXPECT_EQ(vel::SentenciaEstadoAlbaran("03", "2026", "17"),
              "SELECT estado_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = "
              "03 AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = 2026 AND "
              "numero_cabecera_albaran_venta = 17");
    EXPECT_EQ(vel::SentenciasBorradoAlbaran("12345678Z", "03", "2026", "17"),
              (QStringList{"DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = '12345678Z' AND "
                           "tienda_cabecera_albaran_venta = 03 AND serie_cabecera_albaran_venta = 'AV' AND "
                           "ejercicio_cabecera_albaran_venta = 2026 AND numero_cabecera_albaran_venta = 17",
                           "DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = 03 AND "
                           "serie_detalle_albaran_venta = 'AV' AND ejercicio_detalle_albaran_venta = 2026 AND "
                           "numero_detalle_albaran_venta = 17"}));
}

TEST(DocumentKeyStatements, TheInvoicesDeletesAreByYearAndNumber) {
    EXPECT_EQ(vel::SentenciasBorradoFactura("12345678Z", "2026", "3"),
              (QStringList{"DELETE FROM cabecera_factura_venta WHERE nif_cabecera_factura_venta = '12345678Z' AND "
                           "ejercicio_cabecera_factura_venta = 2026 AND numero_cabecera_factura_venta = 3",
                           "DELETE FROM detalle_factura_venta WHERE ejercicio_detalle_factura_venta = 2026 AND "
                           "numero_detalle_factura_venta = 3"}));
}

} // namespace
} // namespace veltest
