// Document numbering as the shop sees it: the number proposed for a new delivery
// note, invoice or ticket, and where the counter stands after saving.
#include "core/series.h"
#include "core/record_store.h"
#include "core/schema.h"
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using vel::Documento;

class Series : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        db = vel::Database::CreateDatabase(dir.filePath("datos.mdb"));
        vel::schema::CreateTables(*db);
    }

    // A document header of a customer, as the delivery note or invoice window
    // writes it (42 values, store 1).
    void cabecera(const QString& tabla, const QString& serie, const QString& nif, int ano, int numero) {
        const QString a = QString::number(ano), n = QString::number(numero);
        db->Execute("INSERT INTO " + tabla + " VALUES (1, '" + serie + "', " + a + ", " + n + ", '01/01/" + a +
                    "', 0, '', 1, '', '', 'P', '" + nif + "', 'PEDRO GARCIA', 'CALLE MAYOR 1', 'MADRID', "
                    "'28001', 'MADRID', 'ESPAÑOLA', 'CON', 0, '', '', '', '', " + n +
                    ", '', '', '', '', '', '', 0, 0, '10', '0', '0', '', 21, 0, 0, '0', 'ES12')");
    }

    // Every counter row as "tipo/year/store/word/counter", in the order written.
    QStringList filas() {
        QStringList out;
        auto rs = db->OpenRecordset("SELECT * FROM series");
        while (!rs->Eof()) {
            out << rs->Fields("tipo_series").str() + "/" + rs->Fields("ejercicio_series").str() + "/" +
                       rs->Fields("tienda_series").str() + "/" + rs->Fields("serie_series").str() + "/" +
                       rs->Fields("contador_series").str();
            rs->MoveNext();
        }
        return out;
    }

    QTemporaryDir dir;
    std::unique_ptr<vel::Database> db;
};

// ---- Delivery notes ----

TEST_F(Series, ElPrimerAlbaranDelAnoEsEl00001YAlGuardarloNaceElContador) {
    auto p = vel::ProponerNumero(*db, Documento::Albaran, "1", "2024");
    EXPECT_EQ(p.numero, "00001");
    EXPECT_FALSE(p.encontrada);
    EXPECT_TRUE(filas().isEmpty());  // a proposal reserves nothing

    EXPECT_TRUE(vel::GuardarContador(*db, Documento::Albaran, "1", "2024", p.numero));
    EXPECT_EQ(filas(), QStringList{"VN/2024/1/AV/1"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2024").numero, "00002");
}

TEST_F(Series, ConElContadorEnSieteSeProponeEl00008YDaElAnoDeLaFila) {
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 1, 'AV', 7)");
    auto p = vel::ProponerNumero(*db, Documento::Albaran, "1", "2024");
    EXPECT_EQ(p.numero, "00008");
    EXPECT_TRUE(p.encontrada);
    EXPECT_EQ(p.ejercicio, "2024");
}

TEST_F(Series, UnNumeroTecleadoMasAltoDejaElContadorAhiYLosSaltadosSePierden) {
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 1, 'AV', 7)");
    EXPECT_FALSE(vel::GuardarContador(*db, Documento::Albaran, "1", "2024", "20"));
    EXPECT_EQ(filas(), QStringList{"VN/2024/1/AV/20"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2024").numero, "00021");
}

TEST_F(Series, UnNumeroTecleadoMasBajoHaceRetrocederElContador) {
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 1, 'AV', 20)");
    vel::GuardarContador(*db, Documento::Albaran, "1", "2024", "3");
    EXPECT_EQ(filas(), QStringList{"VN/2024/1/AV/3"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2024").numero, "00004");
}

TEST_F(Series, ElNumeroSeGuardaComoLoLeeVal) {
    // The combo holds the masked proposal or what the user typed.
    vel::GuardarContador(*db, Documento::Albaran, "1", "2024", "00012");
    vel::GuardarContador(*db, Documento::Albaran, "2", "2024", "15A");
    EXPECT_EQ(filas(), (QStringList{"VN/2024/1/AV/12", "VN/2024/2/AV/15"}));
}

TEST_F(Series, BorrarUnAlbaranNoTocaElContador) {
    vel::GuardarContador(*db, Documento::Albaran, "1", "2024", "00005");
    cabecera("cabecera_albaran_venta", "AV", "12345678Z", 2024, 5);
    db->Execute("DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = '12345678Z' "
                "AND ejercicio_cabecera_albaran_venta = 2024 AND numero_cabecera_albaran_venta = 5");
    EXPECT_EQ(filas(), QStringList{"VN/2024/1/AV/5"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2024").numero, "00006");
}

TEST_F(Series, CadaTiendaYCadaAnoLlevanSuPropioContador) {
    vel::GuardarContador(*db, Documento::Albaran, "1", "2024", "9");
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "2", "2024").numero, "00001");
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2025").numero, "00001");
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "1", "2024").numero, "00010");
}

TEST_F(Series, CargarDatosLeeElMismoContadorConOtraSentencia) {
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 3, 'AV', 41)");
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 0, 'FD', 9)");
    EXPECT_EQ(vel::SentenciaCargarDatos(Documento::Albaran, "3", "2024"),
              "SELECT * FROM series WHERE ejercicio_series = 2024 AND tipo_series = 'VN' AND "
              "tienda_series = 3 AND serie_series = 'AV'");
    EXPECT_EQ(vel::ProponerNumeroCargarDatos(*db, Documento::Albaran, "3", "2024").numero, "00042");
    EXPECT_EQ(vel::ProponerNumeroCargarDatos(*db, Documento::Factura, "3", "2024").numero, "00010");
}

// ---- Invoices ----

TEST_F(Series, LasFacturasDeTodasLasTiendasCompartenElContadorDeLaTiendaCero) {
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Factura, "1", "2024").numero, "00001");
    vel::GuardarContador(*db, Documento::Factura, "1", "2024", "00001");
    EXPECT_EQ(filas(), QStringList{"VN/2024/0/FD/1"});
    // Another store's invoice follows on from it.
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Factura, "3", "2024").numero, "00002");
    vel::GuardarContador(*db, Documento::Factura, "3", "2024", "00002");
    EXPECT_EQ(filas(), QStringList{"VN/2024/0/FD/2"});
}

TEST_F(Series, ElContadorDeFacturasEsFDAunqueLaFacturaDigaVD) {
    EXPECT_EQ(vel::PalabraSerie(Documento::Factura), "FD");
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 0, 'VD', 50)");  // no such counter is read
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Factura, "0", "2024").numero, "00001");
}

// ---- Tickets ----

TEST_F(Series, ElPrimerTicketDelAnoEsEl000001) {
    auto p = vel::ProponerNumero(*db, Documento::Ticket, "2", "2024");
    EXPECT_EQ(p.numero, "000001");
    vel::GuardarContador(*db, Documento::Ticket, "2", "2024", p.numero);
    EXPECT_EQ(filas(), QStringList{"VN/2024/2/TI/1"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Ticket, "2", "2024").numero, "000002");
}

TEST_F(Series, LaConsultaDelTicketLlevaElAnoPegadoAlAnd) {
    // So FTpv writes it: no blank between the year and the AND after it.
    EXPECT_EQ(vel::SentenciaPropuesta(Documento::Ticket, "2", "2024"),
              "SELECT tipo_series, ejercicio_series, tienda_series, serie_series, contador_series "
              "FROM series WHERE tipo_series = 'VN' AND ejercicio_series = 2024AND tienda_series = 2 "
              "AND serie_series = 'TI'");
    db->Execute("INSERT INTO series VALUES ('VN', 2024, 2, 'TI', 99)");
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Ticket, "2", "2024").numero, "000100");
}

// ---- Invoicing delivery notes ----

TEST_F(Series, FacturarUnAlbaranSinContadorDaEl1YEscribeLaFilaConVN) {
    EXPECT_EQ(vel::NumeroFacturaDeAlbaran(*db, "2024"), 1);
    EXPECT_EQ(filas(), QStringList{"VN/2024/0/VN/1"});
}

TEST_F(Series, LaFilaConVNNoSeVuelveAEncontrarYElSiguienteAlbaranTambienEsEl1) {
    EXPECT_EQ(vel::NumeroFacturaDeAlbaran(*db, "2024"), 1);
    EXPECT_EQ(vel::NumeroFacturaDeAlbaran(*db, "2024"), 1);
    EXPECT_EQ(filas(), (QStringList{"VN/2024/0/VN/1", "VN/2024/0/VN/1"}));
    // Nor does a direct invoice see it.
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Factura, "1", "2024").numero, "00001");
}

TEST_F(Series, TrasUnaFacturaDirectaLaFacturacionSigueElContadorFD) {
    vel::GuardarContador(*db, Documento::Factura, "1", "2024", "5");
    EXPECT_EQ(vel::NumeroFacturaDeAlbaran(*db, "2024"), 6);
    EXPECT_EQ(vel::NumeroFacturaDeAlbaran(*db, "2024"), 7);
    EXPECT_EQ(filas(), QStringList{"VN/2024/0/FD/7"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Factura, "1", "2024").numero, "00008");
}

// ---- Receiving notes from another store ----

TEST_F(Series, RecibirAlbaranesCreaElContadorDeLaOtraTienda) {
    vel::SeguirContadorRecibido(*db, "2", "AV", "2024", "14");
    EXPECT_EQ(filas(), QStringList{"VN/2024/2/AV/14"});
}

TEST_F(Series, ElContadorDeLaOtraTiendaSigueLoRecibidoHaciaArribaYHaciaAbajo) {
    vel::SeguirContadorRecibido(*db, "2", "AV", "2024", "14");
    vel::SeguirContadorRecibido(*db, "2", "AV", "2024", "30");
    EXPECT_EQ(filas(), QStringList{"VN/2024/2/AV/30"});
    vel::SeguirContadorRecibido(*db, "2", "AV", "2024", "8");
    EXPECT_EQ(filas(), QStringList{"VN/2024/2/AV/8"});
    EXPECT_EQ(vel::ProponerNumero(*db, Documento::Albaran, "2", "2024").numero, "00009");
}

// ---- The years offered for a customer's documents ----

class Ejercicios : public Series {
protected:
    void albaran(const QString& nif, int ano, int numero) {
        cabecera("cabecera_albaran_venta", "AV", nif, ano, numero);
    }
};

TEST_F(Ejercicios, LosAnosDelClienteEnOrdenYSinRepetir) {
    albaran("11111111H", 2023, 2);
    albaran("11111111H", 2021, 1);
    albaran("11111111H", 2023, 1);
    albaran("22222222J", 2022, 1);  // another customer's year is not offered
    albaran("11111111H", 2024, 3);
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "11111111H", 2024);
    EXPECT_EQ(lista.ejercicios, (QStringList{"2021", "2023", "2024"}));
    EXPECT_EQ(lista.seleccion, 2);
}

TEST_F(Ejercicios, ElAnoEnCursoSeOfreceAunqueNoTengaDocumentos) {
    albaran("11111111H", 2022, 1);
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "11111111H", 2024);
    EXPECT_EQ(lista.ejercicios, (QStringList{"2022", "2024"}));
    EXPECT_EQ(lista.seleccion, 1);
}

TEST_F(Ejercicios, ElAnoEnCursoSeEligeDondeEste) {
    albaran("11111111H", 2022, 1);
    albaran("11111111H", 2023, 1);
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "11111111H", 2022);
    EXPECT_EQ(lista.ejercicios, (QStringList{"2022", "2023"}));
    EXPECT_EQ(lista.seleccion, 0);
}

TEST_F(Ejercicios, UnClienteSinDocumentosSoloVeElAnoEnCurso) {
    auto lista = vel::CargarEjercicios(*db, Documento::Factura, "33333333P", 2024);
    EXPECT_EQ(lista.ejercicios, QStringList{"2024"});
    EXPECT_EQ(lista.seleccion, 0);
}

TEST_F(Ejercicios, ConAsteriscoSeVenLosAnosDeTodosLosClientes) {
    albaran("11111111H", 2023, 1);
    albaran("22222222J", 2021, 1);
    EXPECT_EQ(vel::SentenciaEjercicios(Documento::Albaran, "*"),
              "SELECT * FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta <> '*' "
              "ORDER BY ejercicio_cabecera_albaran_venta");
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "*", 2023);
    EXPECT_EQ(lista.ejercicios, (QStringList{"2021", "2023"}));
    EXPECT_EQ(lista.seleccion, 1);
}

TEST_F(Ejercicios, LasFacturasLeenSuPropiaTabla) {
    cabecera("cabecera_factura_venta", "VD", "11111111H", 2020, 1);
    albaran("11111111H", 2019, 1);
    auto lista = vel::CargarEjercicios(*db, Documento::Factura, "11111111H", 2024);
    EXPECT_EQ(lista.ejercicios, (QStringList{"2020", "2024"}));
}

TEST_F(Ejercicios, NoSeGuardanMasDeCienAnosDistintos) {
    // 120 different years: only the first 100 are kept; the calendar's year
    // (one of the lost ones) is still offered at the end.
    for (int ano = 1901; ano <= 2020; ++ano)
        albaran("11111111H", ano, 1);
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "11111111H", 2010);
    ASSERT_EQ(lista.ejercicios.size(), 101);
    EXPECT_EQ(lista.ejercicios.front(), "1901");
    EXPECT_EQ(lista.ejercicios[99], "2000");
    EXPECT_EQ(lista.ejercicios.back(), "2010");
    EXPECT_EQ(lista.seleccion, 100);
}

TEST_F(Ejercicios, ConCienAnosElAnoEnCursoGuardadoSeElige) {
    for (int ano = 1901; ano <= 2020; ++ano)
        albaran("11111111H", ano, 1);
    auto lista = vel::CargarEjercicios(*db, Documento::Albaran, "11111111H", 1950);
    EXPECT_EQ(lista.ejercicios.size(), 100);
    EXPECT_EQ(lista.seleccion, 49);
}

} // namespace
