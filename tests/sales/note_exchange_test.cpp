// The exchange files of delivery notes: one field table for the writer and the
// reader, the short working folder of the packing tools, the received
// statements checked against the schema, and the round trip from a branch
// store's folder to the central store's.
#include "sales/formcontrolalbaran.h"
#include "sales/note_exchange.h"
#include "support/positional_insert.h"
#include "note_fixture.h"

#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace {

using namespace vel::intercambio;

QStringList Columnas(const char* tabla) {
    QStringList c;
    for (const auto& col : vel::schema::FindTable(QString::fromLatin1(tabla))->columns) c << QString::fromLatin1(col.name);
    return c;
}

QStringList ColumnasDe(const std::vector<Campo>& campos) {
    QStringList c;
    for (const Campo& campo : campos) c << campo.columna;
    return c;
}

// The file's lines are the table's columns in their order: the reader's
// positional INSERT takes the n-th line into the n-th column.
TEST(ExchangeFields, HeaderFileIsTheHeaderTableInOrder) {
    EXPECT_EQ(CamposCabecera().size(), 42u);
    EXPECT_EQ(ColumnasDe(CamposCabecera()), Columnas("cabecera_albaran_venta"));
    EXPECT_EQ(CamposCabecera()[36].columna, QStringLiteral("rec_financ"));
}

TEST(ExchangeFields, LineFileIsTheLineTableInOrder) {
    EXPECT_EQ(CamposDetalle().size(), 25u);
    EXPECT_EQ(ColumnasDe(CamposDetalle()), Columnas("detalle_albaran_venta"));
}

// The tools' folder from a Windows path: a tail of 7 characters is used whole,
// one of 8 or more is cut to six and "~1", whatever the system's short name.
TEST(ExchangeFolder, ShortTailIsUsedWhole) {
    EXPECT_EQ(CarpetaCorta(QStringLiteral("C:\\gestion"), QStringLiteral("enviar")), QStringLiteral("C:\\gestion\\enviar\\"));
    EXPECT_EQ(CarpetaCorta(QStringLiteral("C:\\gestion"), QStringLiteral("recibir")), QStringLiteral("C:\\gestion\\recibir\\"));
}

TEST(ExchangeFolder, LongTailIsCutToSixAndTilde) {
    EXPECT_EQ(CarpetaCorta(QStringLiteral("C:\\programa01"), QStringLiteral("enviar")), QStringLiteral("C:\\progra~1\\enviar\\"));
    EXPECT_EQ(CarpetaCorta(QStringLiteral("C:\\cadenart"), QStringLiteral("recibir")), QStringLiteral("C:\\cadena~1\\recibir\\"));
    // Exactly 8 characters is already cut.
    EXPECT_EQ(CarpetaCorta(QStringLiteral("D:\\abcdefgh"), QStringLiteral("enviar")), QStringLiteral("D:\\abcdef~1\\enviar\\"));
}

TEST(ExchangeFolder, WorkingFoldersLiveInTheProgramFolder) {
    QTemporaryDir dir;
    vb::SetAppPath(dir.path());
    EXPECT_EQ(CarpetaTrabajo(QStringLiteral("enviar")), dir.path() + QStringLiteral("/enviar/"));
    EXPECT_TRUE(QDir(dir.filePath(QStringLiteral("enviar"))).exists());
}

// The values a received record gives, as the receiving statement writes them.
TEST(ExchangeReader, HeaderStatementMatchesTheTable) {
    QByteArray c;
    for (const QString& l : {"2", "AV", "2026", "17", "21/11/2026", "2", "ANA", "3", "X/9", "OBS", "P", "NIF",
                             "NOMBRE", "DOM", "POB", "28001", "PROV", "NAC", "369", "2", "0049", "0012", "12",
                             "1234567890", "17", "LUG", "FOR", "TAR", "NOM", "NUM", "S", "3", "12.5", "121.5",
                             "2.25", "7", "RF", "21", "5.2", "15", "1", "ES12"})
        c += l.toUtf8() + "\r\n";
    const Recepcion r = LeerRecepcion(c, QByteArray());
    ASSERT_EQ(r.notas.size(), 1u);
    EXPECT_TRUE(veltest::InsertMatchesSchema(r.notas[0].sentencia));
    EXPECT_EQ(r.notas[0].sentencia,
              QStringLiteral("INSERT INTO cabecera_albaran_venta VALUES (02, 'AV', 2026, 17, '21/11/2026', 02, 'ANA', 03, "
                             "'X/9', 'OBS', 'E', 'NIF', 'NOMBRE', 'DOM', 'POB', '28001', 'PROV', 'NAC', '369', 2, "
                             "'0049', '0012', '12', '1234567890', 17, 'LUG', 'FOR', 'TAR', 'NOM', 'NUM', 'S', 3, 12.5, "
                             "'121.5', '2.25', '7', 'RF', 21, 5.2, 15, '0', 'ES12')"));
    EXPECT_EQ(r.notas[0].tienda, QStringLiteral("2"));
    EXPECT_EQ(r.notas[0].numero, QStringLiteral("17"));
}

TEST(ExchangeReader, LineStatementMatchesTheTable) {
    QByteArray d;
    for (const QString& l : {"2", "AV", "2026", "17", "T", "REF", "DESC", "4", "10.5", "OF", "K", "42", "5", "1",
                             "39.9", "1", "0.3", "2", "01", "02", "03", "04", "17", "1", "1"})
        d += l.toUtf8() + "\r\n";
    const Recepcion r = LeerRecepcion(QByteArray(), d);
    ASSERT_EQ(r.lineas.size(), 1);
    EXPECT_TRUE(veltest::InsertMatchesSchema(r.lineas[0]));
    EXPECT_EQ(r.lineas[0], QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (02, 'AV', 2026, 17, 'T', 'REF', "
                                          "'DESC', 4, '10.5', 'OF', 'K', '42', 5, 1, '39.9', '1', 0.3, 2, '01', '02', "
                                          "'03', '04', 17, 01, '1')"));
}

// A file cut inside a record is the runtime's "past the end of the file".
TEST(ExchangeReader, FileCutInsideARecordRaises62) {
    try {
        LeerRecepcion(QByteArray("2\r\nAV\r\n2026\r\n"), QByteArray());
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 62);
    }
}

// A store code far beyond a Double's range cannot be formatted "00": the
// runtime's overflow, naming the field, before any statement is given.
TEST(ExchangeReader, ANumberBeyondRangeRaisesOverflowNamingTheField) {
    QByteArray c = "4444444444444e4444444444\r\n";
    for (int i = 1; i < 42; ++i) c += "1\r\n";
    try {
        LeerRecepcion(c, QByteArray());
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 6);
        EXPECT_TRUE(e.Description.contains(QStringLiteral("tienda_cabecera_albaran_venta"))) << e.Description.toStdString();
    }
}

TEST(ExchangeReader, EmptyFilesGiveNothing) {
    const Recepcion r = LeerRecepcion(QByteArray(), QByteArray());
    EXPECT_TRUE(r.notas.empty());
    EXPECT_TRUE(r.lineas.isEmpty());
}

TEST(ExchangeWriter, NullIsWrittenAsNull) {
    EXPECT_EQ(TextoEnFichero(vb::Variant()), QStringLiteral("Null"));
    EXPECT_EQ(TextoEnFichero(vb::Variant(12.5)), QStringLiteral("12.5"));
    EXPECT_EQ(TextoEnFichero(vb::Variant(QStringLiteral("21/11/2026"))), QStringLiteral("21/11/2026"));
}

// ---- The round trip: store 2 sends, store 1 receives ------------------------------

class RoundTrip : public ::testing::Test {
protected:
    veltest::Cajas cajas;
    bool ended = false;
    void SetUp() override {
        vb::SetMessageBoxService(&cajas);
        vb::ResetEnded();
        vb::SetEndHandler([this] { ended = true; });
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    }
    void TearDown() override {
        vel::BaseDatos = nullptr;
        vb::SetMessageBoxService(nullptr);
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
        vb::clock::unpin();
    }
    static std::unique_ptr<vel::FormControlAlbaran> Abrir() {
        auto w = std::make_unique<vel::FormControlAlbaran>();
        w->show();
        w->Load();
        veltest::Asentar();
        return w;
    }
};

TEST_F(RoundTrip, SameRowsButStateAndAccounted) {
    veltest::Tienda sucursal(2), central(1);
    sucursal.Usar();
    for (int n = 1; n <= 3; ++n) {
        sucursal.db->Execute(veltest::NotaCabecera(2, 2026, n, QStringLiteral("P")));
        for (int l = 1; l <= n; ++l) sucursal.db->Execute(veltest::NotaLinea(2, 2026, n, l));
    }
    // A note of another year is not listed, and not sent.
    sucursal.db->Execute(veltest::NotaCabecera(2, 2025, 9, QStringLiteral("P")));
    const QStringList cabecera = Columnas("cabecera_albaran_venta");
    const QStringList detalle = Columnas("detalle_albaran_venta");
    const QString todas = QStringLiteral("SELECT * FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = 2026 ORDER BY numero_cabecera_albaran_venta");
    const QString lineas = QStringLiteral("SELECT * FROM detalle_albaran_venta ORDER BY numero_detalle_albaran_venta, unidades_detalle_albaran_venta");
    const QStringList enviadas = veltest::Filas(*sucursal.db, todas, cabecera);
    const QStringList lineasEnviadas = veltest::Filas(*sucursal.db, lineas, detalle);

    {
        auto w = Abrir();
        EXPECT_EQ(w->Tienda(), QStringLiteral("2"));
        w->findChild<QPushButton*>(QStringLiteral("CommandEnviar"))->click();
        veltest::Asentar();
    }
    ASSERT_TRUE(QFile::exists(sucursal.Ruta(QStringLiteral("enviar/pedido.jpg"))));
    // The branch's notes are now sent.
    EXPECT_EQ(veltest::Filas(*sucursal.db, QStringLiteral("SELECT estado_cabecera_albaran_venta FROM cabecera_albaran_venta ORDER BY ejercicio_cabecera_albaran_venta, numero_cabecera_albaran_venta"),
                             {QStringLiteral("estado_cabecera_albaran_venta")}),
              (QStringList{"P", "E", "E", "E"}));

    central.Usar();
    QDir().mkpath(central.Ruta(QStringLiteral("recibir")));
    ASSERT_TRUE(QFile::copy(sucursal.Ruta(QStringLiteral("enviar/pedido.jpg")), central.Ruta(QStringLiteral("recibir/pedido.jpg"))));
    {
        auto w = Abrir();
        w->findChild<QRadioButton*>(QStringLiteral("OptionEnviados"))->click();
        w->findChild<QPushButton*>(QStringLiteral("CommandRecibir"))->click();
        veltest::Asentar();
    }
    EXPECT_FALSE(ended) << cajas.shown.join('\n').toStdString();

    const QStringList recibidas = veltest::Filas(*central.db, todas, cabecera);
    ASSERT_EQ(recibidas.size(), enviadas.size());
    for (qsizetype n = 0; n < enviadas.size(); ++n) {
        const QStringList a = enviadas[n].split('|'), b = recibidas[n].split('|');
        for (qsizetype c = 0; c < cabecera.size(); ++c) {
            if (cabecera[c] == QLatin1String("estado_cabecera_albaran_venta"))
                EXPECT_EQ(b[c], QStringLiteral("E"));
            else if (cabecera[c] == QLatin1String("contabilizada_cabecera_albaran_venta"))
                EXPECT_EQ(b[c], QStringLiteral("0"));
            else
                EXPECT_EQ(b[c], a[c]) << "note " << n << ", column " << cabecera[c].toStdString();
        }
    }
    const QStringList lineasRecibidas = veltest::Filas(*central.db, lineas, detalle);
    EXPECT_EQ(lineasRecibidas.size(), 6);
    for (qsizetype n = 0; n < lineasEnviadas.size() && n < lineasRecibidas.size(); ++n) {
        const QStringList a = lineasEnviadas[n].split('|'), b = lineasRecibidas[n].split('|');
        for (qsizetype c = 0; c < detalle.size(); ++c) EXPECT_EQ(b[c], a[c]) << "line " << n << ", column " << detalle[c].toStdString();
    }
    // The counter of the branch at the central store follows the last note read.
    EXPECT_EQ(veltest::Filas(*central.db, QStringLiteral("SELECT * FROM series WHERE tienda_series = 2"),
                             {QStringLiteral("tipo_series"), QStringLiteral("ejercicio_series"), QStringLiteral("serie_series"),
                              QStringLiteral("contador_series")}),
              (QStringList{"VN|2026|AV|3"}));
}

} // namespace
