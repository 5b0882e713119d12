// The delivery-note control builds its statements from the grid's cells, the
// store list and the received files. Whatever those hold, a value never
// changes a statement's shape: a hostile key fails as the statement's syntax
// error and changes no row; the ordinary keys keep their text ("00017").
#include "core/record_store.h"
#include "core/sql_values.h"
#include "runtime/errors.h"
#include "sales/note_control.h"
#include "note_fixture.h"

#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace vel::control_albaranes;

// What a damaged or hand-made exchange file, or a store named by hand, may
// put where the statements expect a number or a series.
const QStringList kHostil = {
    QStringLiteral("1 OR 1=1"),  QStringLiteral("2026 --"),    QStringLiteral("17) OR (1=1"),
    QStringLiteral("X' OR '1'='1"), QStringLiteral("0; DELETE FROM series"), QStringLiteral("1 /* */"),
    QStringLiteral("AV' --"),    QStringLiteral("17 OR numero_cabecera_albaran_venta > 0"),
};

class NoteControlHostile : public ::testing::Test {
protected:
    std::unique_ptr<veltest::Tienda> tienda;
    void SetUp() override {
        tienda = std::make_unique<veltest::Tienda>(1);
        tienda->Usar();
        tienda->db->Execute(veltest::NotaCabecera(2, 2026, 17, QStringLiteral("P")));
        tienda->db->Execute(veltest::NotaCabecera(2, 2026, 18, QStringLiteral("P")));
        tienda->db->Execute(veltest::NotaLinea(2, 2026, 17, 1));
        tienda->db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 2, 'AV', 18)"));
    }
    QStringList Todo() {
        return veltest::Filas(*tienda->db, QStringLiteral("SELECT * FROM cabecera_albaran_venta"),
                              {"numero_cabecera_albaran_venta", "estado_cabecera_albaran_venta"}) +
               veltest::Filas(*tienda->db, QStringLiteral("SELECT * FROM series"),
                              {"tienda_series", "serie_series", "contador_series"});
    }
    // Runs the statement; the error number it fails with, 0 when it runs.
    int Error(const QString& sentencia) {
        try {
            if (sentencia.startsWith(QLatin1String("SELECT"))) tienda->db->OpenRecordset(sentencia);
            else tienda->db->Execute(sentencia);
        } catch (const vb::RuntimeError& e) {
            return e.Number;
        }
        return 0;
    }
};

// Each builder with one part of the key hostile: the syntax error of its kind
// of statement, and not a row changed.
TEST_F(NoteControlHostile, EveryBuilderRefusesAHostileKey) {
    struct Constructor {
        const char* nombre;
        int error;
        std::function<QString(const vel::ClaveNota&)> sentencia;
    };
    const std::vector<Constructor> constructores = {
        {"cabecera", 3075, [](const vel::ClaveNota& c) { return SentenciaCabeceraNota(c); }},
        {"líneas", 3075, [](const vel::ClaveNota& c) { return SentenciaLineasNota(c); }},
        {"facturada", 3144, [](const vel::ClaveNota& c) { return SentenciaMarcarFacturada(c, 8); }},
        {"enviada", 3144, [](const vel::ClaveNota& c) { return SentenciaMarcarEnviada(c); }},
        {"contador recibido", 3075, [](const vel::ClaveNota& c) { return SentenciaContadorRecibido(c); }},
        {"contador nuevo", 3134, [](const vel::ClaveNota& c) { return SentenciaNuevoContadorRecibido(c); }},
        {"contador movido", 3144, [](const vel::ClaveNota& c) { return SentenciaMoverContadorRecibido(c); }},
        {"búsqueda", 3075, [](const vel::ClaveNota& c) { return SentenciaBuscar(c.tienda, c.ejercicio, c.serie); }},
        {"contador de facturas", 3075, [](const vel::ClaveNota& c) { return SentenciaContadorFacturas(c.ejercicio); }},
        {"contador de facturas nuevo", 3134,
         [](const vel::ClaveNota& c) { return SentenciaNuevoContadorFacturas(c.ejercicio); }},
        {"contador de facturas subido", 3144,
         [](const vel::ClaveNota& c) { return SentenciaSubirContadorFacturas(c.ejercicio, 9); }},
    };
    const QStringList antes = Todo();
    for (const Constructor& k : constructores) {
        for (const QString& h : kHostil) {
            for (int parte = 0; parte < 4; ++parte) {
                vel::ClaveNota c{"2", "AV", "2026", "00017"};
                (parte == 0 ? c.tienda : parte == 1 ? c.serie : parte == 2 ? c.ejercicio : c.numero) = h;
                const QString s = k.sentencia(c);
                // A builder that doesn't use this part of the key is not at stake.
                if (!s.contains(h)) continue;
                // The series is a text: a hostile series without an apostrophe is
                // just a series that no note has.
                if (parte == 1 && !h.contains(QLatin1Char('\''))) {
                    EXPECT_EQ(Error(s), 0) << k.nombre << ": " << qPrintable(s);
                    continue;
                }
                EXPECT_EQ(Error(s), k.error) << k.nombre << ", parte " << parte << ": " << qPrintable(s);
            }
        }
        EXPECT_EQ(Todo(), antes) << k.nombre;
    }
}

// The ordinary keys keep the text the grid shows, and still find the note.
TEST_F(NoteControlHostile, OrdinaryKeysStandAsTheyAre) {
    const vel::ClaveNota c{"2", "AV", "2026", "00017"};
    EXPECT_EQ(SentenciaMarcarEnviada(c),
              QStringLiteral("UPDATE cabecera_albaran_venta SET estado_cabecera_albaran_venta = 'E' WHERE "
                             "tienda_cabecera_albaran_venta = 2 AND serie_cabecera_albaran_venta = 'AV' AND "
                             "ejercicio_cabecera_albaran_venta = 2026 AND numero_cabecera_albaran_venta = 00017"));
    tienda->db->Execute(SentenciaMarcarEnviada(c));
    EXPECT_EQ(veltest::Filas(*tienda->db, QStringLiteral("SELECT * FROM cabecera_albaran_venta ORDER BY numero_cabecera_albaran_venta"),
                             {"numero_cabecera_albaran_venta", "estado_cabecera_albaran_venta"}),
              (QStringList{"17|E", "18|P"}));
    EXPECT_EQ(SentenciaNuevoContadorRecibido({"03", "AV", "2026", "00005"}),
              QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 03, 'AV', 00005)"));
    EXPECT_EQ(SentenciaMoverContadorRecibido({"2", "AV", "2026", "20"}),
              QStringLiteral("UPDATE series SET contador_series = 20 WHERE tipo_series = 'VN' AND ejercicio_series = "
                             "2026 AND tienda_series = 2 AND serie_series = 'AV'"));
}

} // namespace
