// The due-date walk as a shop sees it: a payment term, a document date and the
// customer's collection day give the dates of the receipts.
//
// Every expected date below was worked out by hand on a printed calendar,
// following the walk step by step: counts made relative, 30 days as one month
// (31 from a 31-day month, 28 from February), the collection-day loops, the
// weekend shift and the way back into the month, the March correction with C.
#include "masterdata/due_dates.h"
#include "support/print_to.h"
#include "runtime/calendar.h"
#include "runtime/errors.h"
#include <gtest/gtest.h>
#include <cctype>
#include <vector>

namespace {

struct Plazos {
    std::vector<QDate> fechas;
    std::vector<int> terminos;
};

// Runs the walk from a start date and keeps what each term hands to the caller.
Plazos recorrer(const QDate& inicio, int n, std::array<int, 12> dias, int d1, int d2 = 0) {
    vb::Calendar calendario;
    calendario.SetValue(inicio);
    Plazos plazos;
    vel::RecorrerVencimientos(calendario, n, dias, d1, d2, [&](int plazo, const QDate& fecha) {
        plazos.terminos.push_back(plazo);
        plazos.fechas.push_back(fecha);
    });
    return plazos;
}

QDate d(int day, int month, int year) { return QDate(year, month, day); }

std::vector<QDate> fechas(std::initializer_list<QDate> l) { return l; }

// ---- The cases a shop owner raises first ----

TEST(Vencimientos, TreintaDiasDesdeQuinceDeEneroCaenElQuinceDeFebrero) {
    // 2006: January counts 31 days, 15/02/2006 is a Wednesday.
    EXPECT_EQ(recorrer(d(15, 1, 2006), 1, {30}, 15).fechas, fechas({d(15, 2, 2006)}));
}

TEST(Vencimientos, TreintaDiasDesdeQuinceDeFebreroNoBisiestoCaenElQuinceDeMarzo) {
    // 2006 is no leap year: February counts 28 days; 15/03/2006 is a Wednesday.
    EXPECT_EQ(recorrer(d(15, 2, 2006), 1, {30}, 15).fechas, fechas({d(15, 3, 2006)}));
}

TEST(Vencimientos, UnSabadoPasaAlLunes) {
    // 10/04/2003 + 30 days = Saturday 10/05/2003 -> Monday 12/05/2003.
    EXPECT_EQ(recorrer(d(10, 4, 2003), 1, {30}, 10).fechas, fechas({d(12, 5, 2003)}));
}

TEST(Vencimientos, UnSabadoAFinDeMesVuelveAlUltimoDiaLaborableDelMes) {
    // 01/04/2003, collection day 31: 01/05, then up to Saturday 31/05; Monday
    // 02/06 is in June, so back to Saturday 31/05 and on to Friday 30/05.
    EXPECT_EQ(recorrer(d(1, 4, 2003), 1, {30}, 31).fechas, fechas({d(30, 5, 2003)}));
}

TEST(Vencimientos, ElPlazoSiguienteCuentaDesdeLaFechaSinDesplazar) {
    // Term "15,30" from 07/03/2003: Saturday 22/03 shows as Monday 24/03; the
    // second 15 days count from 22/03 and reach Sunday 06/04 -> Monday 07/04
    // (from the Monday they would have reached 08/04).
    EXPECT_EQ(recorrer(d(7, 3, 2003), 2, {15, 30}, 7).fechas, fechas({d(24, 3, 2003), d(7, 4, 2003)}));
}

TEST(Vencimientos, AlContadoDaLaFechaDelDocumentoAunqueSeaSabado) {
    // Term "1/0," on Saturday 15/03/2003: no days to walk, no shift.
    EXPECT_EQ(recorrer(d(15, 3, 2003), 1, {0}, 0).fechas, fechas({d(15, 3, 2003)}));
}

TEST(Vencimientos, AlContadoEnDomingoTampocoSeDesplaza) {
    EXPECT_EQ(recorrer(d(1, 6, 2003), 1, {0}, 0).fechas, fechas({d(1, 6, 2003)}));
}

TEST(Vencimientos, SinPlazosNoSeLlamaALaAccion) {
    EXPECT_TRUE(recorrer(d(15, 3, 2003), 0, {30, 60}, 0).fechas.empty());
}

TEST(Vencimientos, CadaPlazoLlegaConSuNumeroDeOrden) {
    auto p = recorrer(d(10, 1, 2003), 3, {30, 60, 90}, 10);
    EXPECT_EQ(p.terminos, (std::vector<int>{0, 1, 2}));
}

TEST(Vencimientos, MasDeDocePlazosEsUnErrorDeSubindice) {
    try {
        recorrer(d(10, 1, 2003), 13, {30}, 10);
        FAIL() << "13 terms must not be walked";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 9);
    }
}

TEST(Vencimientos, ElDiaDeCobroCeroTomaElDiaDeLaFechaInicial) {
    // 20/04/2003 with collection day 0 -> 20: 20/05/2003 (Tuesday), nothing pulled back.
    EXPECT_EQ(recorrer(d(20, 4, 2003), 1, {30}, 0).fechas, fechas({d(20, 5, 2003)}));
    // With collection day 15 the same walk comes back to 15/05/2003 (Thursday).
    EXPECT_EQ(recorrer(d(20, 4, 2003), 1, {30}, 15).fechas, fechas({d(15, 5, 2003)}));
}

TEST(Vencimientos, ElSegundoDiaDeCobroNoCambiaNada) {
    const auto sin = recorrer(d(20, 4, 2003), 2, {30, 60}, 15, 0).fechas;
    EXPECT_EQ(recorrer(d(20, 4, 2003), 2, {30, 60}, 15, 5).fechas, sin);
    EXPECT_EQ(recorrer(d(20, 4, 2003), 2, {30, 60}, 15, 28).fechas, sin);
}

TEST(Vencimientos, ElCalendarioQuedaEnLaUltimaFechaRecorrida) {
    // 15/03/2003 + 15 = Sunday 30/03 -> Monday 31/03; after the term the shift
    // is undone and the calendar is back on 30/03.
    vb::Calendar calendario;
    calendario.SetValue(d(15, 3, 2003));
    vel::RecorrerVencimientos(calendario, 1, {15}, 15, 0, [](int, const QDate&) {});
    EXPECT_EQ(calendario.Value(), d(30, 3, 2003));
}

TEST(Vencimientos, ElCalendarioSeQuedaEnLaFechaSiLaAccionVieneVacia) {
    vb::Calendar calendario;
    calendario.SetValue(d(1, 1, 2003));
    vel::RecorrerVencimientos(calendario, 1, {30}, 1, 0, {});
    EXPECT_EQ(calendario.Value(), d(1, 2, 2003));  // Saturday 01/02 shown as 03/02, then undone
}

// ---- The odd corners the walk keeps ----

TEST(Vencimientos, UnPlazoDeCeroTrasUnPlazoDesplazadoVuelveAtrasOtraVez) {
    // Term "30,30,60" from 15/01/2003, collection 15: counts 30, 0, 30.
    // 1st: 31 days -> Saturday 15/02 -> Monday 17/02, then back to 15/02.
    // 2nd: nothing to walk -> 15/02; the shift of the 1st is still set, so the
    //      calendar steps back two days more, to 13/02.
    // 3rd: from February 28 days -> 13/03/2003, Thursday.
    EXPECT_EQ(recorrer(d(15, 1, 2003), 3, {30, 30, 60}, 15).fechas,
              fechas({d(17, 2, 2003), d(15, 2, 2003), d(13, 3, 2003)}));
}

TEST(Vencimientos, UnPlazoMenorQueElAnteriorRepiteLaFechaSinMoverla) {
    // Term "60,30" from 01/01/2003, collection 1: 60 days -> 02/03, down to
    // Saturday 01/03 -> Monday 03/03 (C is 2, not above 2: stays in March).
    // Then a count of -30: the date is 01/03 as it stands.
    EXPECT_EQ(recorrer(d(1, 1, 2003), 2, {60, 30}, 1).fechas, fechas({d(3, 3, 2003), d(1, 3, 2003)}));
}

TEST(Vencimientos, TreintaYUnDiasDesdeFinDeEneroVuelvenAFebrero) {
    // 31/01/2003, collection 31: 31 days reach Monday 03/03 after two changes
    // of month; C 2 is above 31/30 = 1, so PreviousMonth: 03/02/2003.
    EXPECT_EQ(recorrer(d(31, 1, 2003), 1, {30}, 31).fechas, fechas({d(3, 2, 2003)}));
}

TEST(Vencimientos, LaVueltaAtrasDeMarzoAjustaElDiaAlFinalDeFebrero) {
    // 14/02/2013 + 45 = Sunday 31/03 (C 1) -> Monday 01/04 (C 2) -> back to
    // 31/03 (C 3) -> Saturday 30/03 -> Friday 29/03. C 3 is above 45/30 = 1:
    // PreviousMonth from 29/03/2013 gives the last day of February, 28/02/2013.
    EXPECT_EQ(recorrer(d(14, 2, 2013), 1, {45}, 31).fechas, fechas({d(28, 2, 2013)}));
}

TEST(Vencimientos, EnFebreroNoSeBuscaElDiaDeCobro) {
    // 20/01/2003 + 31 = 20/02/2003 (Thursday): above collection day 15, but in
    // February nothing is pulled back.
    EXPECT_EQ(recorrer(d(20, 1, 2003), 1, {30}, 15).fechas, fechas({d(20, 2, 2003)}));
}

// ---- The table ----

struct Caso {
    const char* nombre;
    QDate inicio;
    int n;
    std::array<int, 12> dias;
    int d1;
    std::vector<QDate> esperadas;
};

// Group 1: 30 days from the first of every month of 2003, collection day 0 (-> 1).
// The count is 31 from Jan, Mar, May, Jul, Aug, Oct, Dec, 28 from Feb, 30 from
// Apr, Jun, Sep, Nov, so each lands on the 1st of the next month; the 1st is
// never above the collection day. A Saturday 1st (Feb, Mar, Nov 2003) moves to
// Monday the 3rd, Sunday 01/06/2003 to Monday the 2nd.
const std::vector<Caso> kPrimeroDeMes = {
    {"01/01/2003", d(1, 1, 2003), 1, {30}, 0, {d(3, 2, 2003)}},
    {"01/02/2003", d(1, 2, 2003), 1, {30}, 0, {d(3, 3, 2003)}},  // 28 days; 28/30 = 0, no March correction
    {"01/03/2003", d(1, 3, 2003), 1, {30}, 0, {d(1, 4, 2003)}},
    {"01/04/2003", d(1, 4, 2003), 1, {30}, 0, {d(1, 5, 2003)}},
    {"01/05/2003", d(1, 5, 2003), 1, {30}, 0, {d(2, 6, 2003)}},
    {"01/06/2003", d(1, 6, 2003), 1, {30}, 0, {d(1, 7, 2003)}},
    {"01/07/2003", d(1, 7, 2003), 1, {30}, 0, {d(1, 8, 2003)}},
    {"01/08/2003", d(1, 8, 2003), 1, {30}, 0, {d(1, 9, 2003)}},
    {"01/09/2003", d(1, 9, 2003), 1, {30}, 0, {d(1, 10, 2003)}},
    {"01/10/2003", d(1, 10, 2003), 1, {30}, 0, {d(3, 11, 2003)}},
    {"01/11/2003", d(1, 11, 2003), 1, {30}, 0, {d(1, 12, 2003)}},
    {"01/12/2003", d(1, 12, 2003), 1, {30}, 0, {d(1, 1, 2004)}},
};

// Group 2: 30 days from the last day of a month, collection day 0 (-> that day).
// From a 31-day month 31 days are walked. Past February that overshoots into
// March, which the March correction pulls back a month (31/30 = 1, C = 2).
// A landing on a weekend at a month end goes to Monday, leaves the month, and
// comes back to the Friday before.
const std::vector<Caso> kFinDeMes = {
    {"31/01/2003 -> 03/03 -> back to February", d(31, 1, 2003), 1, {30}, 0, {d(3, 2, 2003)}},
    {"31/01/2004 -> Tue 02/03 -> back to February", d(31, 1, 2004), 1, {30}, 0, {d(2, 2, 2004)}},
    {"28/02/2003 -> 28 days -> Fri 28/03", d(28, 2, 2003), 1, {30}, 0, {d(28, 3, 2003)}},
    {"29/02/2004 -> 28 days -> Sun 28/03 -> Mon 29/03", d(29, 2, 2004), 1, {30}, 0, {d(29, 3, 2004)}},
    {"31/03/2003 -> 31 days -> Thu 01/05", d(31, 3, 2003), 1, {30}, 0, {d(1, 5, 2003)}},
    {"30/04/2003 -> Fri 30/05", d(30, 4, 2003), 1, {30}, 0, {d(30, 5, 2003)}},
    {"31/05/2003 -> Tue 01/07", d(31, 5, 2003), 1, {30}, 0, {d(1, 7, 2003)}},
    {"30/06/2003 -> Wed 30/07", d(30, 6, 2003), 1, {30}, 0, {d(30, 7, 2003)}},
    {"31/07/2003 -> Sun 31/08 -> back to Fri 29/08", d(31, 7, 2003), 1, {30}, 0, {d(29, 8, 2003)}},
    {"31/08/2003 -> Wed 01/10", d(31, 8, 2003), 1, {30}, 0, {d(1, 10, 2003)}},
    {"30/09/2003 -> Thu 30/10", d(30, 9, 2003), 1, {30}, 0, {d(30, 10, 2003)}},
    {"31/10/2003 -> Mon 01/12", d(31, 10, 2003), 1, {30}, 0, {d(1, 12, 2003)}},
    {"30/11/2003 -> Tue 30/12", d(30, 11, 2003), 1, {30}, 0, {d(30, 12, 2003)}},
    {"31/12/2003 -> Sat 31/01 -> back to Fri 30/01", d(31, 12, 2003), 1, {30}, 0, {d(30, 1, 2004)}},
};

// Group 3: leap years. 2000 and 2004 have a 29 February, 2100 has not. From
// February 30 days are always 28, so in a leap year they end a day short of
// the month; at the end of January 31 days overshoot into March and come back.
const std::vector<Caso> kBisiestos = {
    {"01/02/2000 -> 28 days -> Tue 29/02", d(1, 2, 2000), 1, {30}, 0, {d(29, 2, 2000)}},
    {"01/02/2004 -> Sun 29/02 -> Mon 01/03 -> back to Fri 27/02", d(1, 2, 2004), 1, {30}, 0, {d(27, 2, 2004)}},
    {"01/02/2100 -> Mon 01/03", d(1, 2, 2100), 1, {30}, 0, {d(1, 3, 2100)}},
    {"15/02/2000 -> Tue 14/03, below the collection day", d(15, 2, 2000), 1, {30}, 15, {d(14, 3, 2000)}},
    {"15/02/2004 -> Sun 14/03 -> Mon 15/03", d(15, 2, 2004), 1, {30}, 15, {d(15, 3, 2004)}},
    {"15/02/2100 -> Mon 15/03", d(15, 2, 2100), 1, {30}, 15, {d(15, 3, 2100)}},
    {"15/01/2100 -> 31 days -> Mon 15/02", d(15, 1, 2100), 1, {30}, 15, {d(15, 2, 2100)}},
    {"31/01/2000 -> Thu 02/03 -> back to 02/02", d(31, 1, 2000), 1, {30}, 31, {d(2, 2, 2000)}},
    {"31/01/2100 -> Wed 03/03 -> back to 03/02", d(31, 1, 2100), 1, {30}, 31, {d(3, 2, 2100)}},
    {"29/01/2000 -> Tue 29/02, one change of month only", d(29, 1, 2000), 1, {30}, 29, {d(29, 2, 2000)}},
    {"29/01/2100 -> Mon 01/03 -> back to 01/02", d(29, 1, 2100), 1, {30}, 29, {d(1, 2, 2100)}},
    {"31/12/2003, 60 days -> Sun 29/02/2004 -> back to Fri 27/02", d(31, 12, 2003), 1, {60}, 31, {d(27, 2, 2004)}},
};

// Group 4: collection days 1, 15, 28, 31. A 30 from April, June, September or
// November stays 30 and climbs to the collection day; any count above 27 comes
// down to it from a later day (not in February); a 31 (from a 31-day month)
// never climbs.
const std::vector<Caso> kDiaDeCobro = {
    {"10/04 day 15: Sat 10/05 up to Thu 15/05", d(10, 4, 2003), 1, {30}, 15, {d(15, 5, 2003)}},
    {"20/04 day 15: Tue 20/05 down to Thu 15/05", d(20, 4, 2003), 1, {30}, 15, {d(15, 5, 2003)}},
    {"05/06 day 28: Sat 05/07 up to Mon 28/07", d(5, 6, 2003), 1, {30}, 28, {d(28, 7, 2003)}},
    {"01/09 day 31: 01/10 up to Fri 31/10", d(1, 9, 2003), 1, {30}, 31, {d(31, 10, 2003)}},
    {"30/09 day 31: 30/10 up to Fri 31/10", d(30, 9, 2003), 1, {30}, 31, {d(31, 10, 2003)}},
    {"01/11 day 31: 01/12 up to Wed 31/12", d(1, 11, 2003), 1, {30}, 31, {d(31, 12, 2003)}},
    {"10/06 day 31: 10/07 up to Thu 31/07", d(10, 6, 2003), 1, {30}, 31, {d(31, 7, 2003)}},
    {"10/11 day 28: 10/12 up to Sun 28/12 -> Mon 29/12", d(10, 11, 2003), 1, {30}, 28, {d(29, 12, 2003)}},
    {"15/06 day 1: 15/07 down to Tue 01/07", d(15, 6, 2003), 1, {30}, 1, {d(1, 7, 2003)}},
    {"10/01 day 15: 31 days to Mon 10/02, no climbing", d(10, 1, 2003), 1, {30}, 15, {d(10, 2, 2003)}},
    {"20/03 day 15: 31 days to Sun 20/04, down to Tue 15/04", d(20, 3, 2003), 1, {30}, 15, {d(15, 4, 2003)}},
    {"10/03 day 15: 31 days to Thu 10/04, no climbing", d(10, 3, 2003), 1, {30}, 15, {d(10, 4, 2003)}},
    {"15/12 day 15: 31 days to Thu 15/01/2004", d(15, 12, 2003), 1, {30}, 15, {d(15, 1, 2004)}},
};

// Group 5: other counts: 0, 15, 45, 60, 90, 120. Counts of 27 or less never meet
// the collection day; above 27 they come down to it. A landing in March after
// more changes of month than count/30 is pulled back a month.
const std::vector<Caso> kOtrasCuentas = {
    {"0 on Saturday 15/03", d(15, 3, 2003), 1, {0}, 0, {d(15, 3, 2003)}},
    {"15 from 03/03 -> Tue 18/03", d(3, 3, 2003), 1, {15}, 0, {d(18, 3, 2003)}},
    {"15 from 07/03 -> Sat 22/03 -> Mon 24/03", d(7, 3, 2003), 1, {15}, 0, {d(24, 3, 2003)}},
    {"15 from 16/08 -> Sun 31/08 -> back to Fri 29/08", d(16, 8, 2003), 1, {15}, 0, {d(29, 8, 2003)}},
    {"15 from 15/03 with day 1: Sun 30/03 -> Mon 31/03", d(15, 3, 2003), 1, {15}, 1, {d(31, 3, 2003)}},
    {"45 from 01/01 -> Sat 15/02 -> Mon 17/02", d(1, 1, 2003), 1, {45}, 0, {d(17, 2, 2003)}},
    {"45 from 15/01 -> Sat 01/03 -> Mon 03/03 -> back to 03/02", d(15, 1, 2003), 1, {45}, 0, {d(3, 2, 2003)}},
    {"45 from 10/04 -> Sun 25/05 down to Sat 10/05 -> Mon 12/05", d(10, 4, 2003), 1, {45}, 0, {d(12, 5, 2003)}},
    {"60 from 15/01 -> 16/03 down to Sat 15/03 -> Mon 17/03", d(15, 1, 2003), 1, {60}, 0, {d(17, 3, 2003)}},
    {"60 from 01/01 -> 02/03 down to Sat 01/03 -> Mon 03/03", d(1, 1, 2003), 1, {60}, 0, {d(3, 3, 2003)}},
    {"90 from 01/01 -> Tue 01/04", d(1, 1, 2003), 1, {90}, 0, {d(1, 4, 2003)}},
    {"90 from 01/12/2002 -> Sat 01/03 -> Mon 03/03, C 3 not above 3", d(1, 12, 2002), 1, {90}, 0, {d(3, 3, 2003)}},
    {"90 from 15/12/2003 -> Sun 14/03/2004 -> Mon 15/03", d(15, 12, 2003), 1, {90}, 0, {d(15, 3, 2004)}},
    {"120 from 01/01 -> Thu 01/05", d(1, 1, 2003), 1, {120}, 0, {d(1, 5, 2003)}},
    {"120 from 30/11/2003 -> Mon 29/03/2004, C 4 not above 4", d(30, 11, 2003), 1, {120}, 0, {d(29, 3, 2004)}},
};

// Group 6: terms of several due dates, each counted from the one before.
// 30/60/90 from 15/01/2003: 31 days to Sat 15/02 -> Mon 17/02 (back to 15/02);
// 28 days (from February) to Sat 15/03 -> Mon 17/03 (back to 15/03); 31 days
// to Tue 15/04.
// Twelve months from 10/01/2003, collection 10: each 30 becomes the month's
// length, so the 10th of every month; Sat 10/05 -> 12/05, Sun 10/08 -> 11/08,
// Sat 10/01/2004 -> 12/01.
// 30/60 from 31/03/2003 (collection 31): 31 days to Thu 01/05; from May 31
// more to Sun 01/06 -> Mon 02/06.
const std::vector<Caso> kVariosPlazos = {
    {"30/60/90 from 15/01/2003", d(15, 1, 2003), 3, {30, 60, 90}, 15,
     {d(17, 2, 2003), d(17, 3, 2003), d(15, 4, 2003)}},
    {"twelve monthly terms from 10/01/2003", d(10, 1, 2003), 12,
     {30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330, 360}, 10,
     {d(10, 2, 2003), d(10, 3, 2003), d(10, 4, 2003), d(12, 5, 2003), d(10, 6, 2003), d(10, 7, 2003),
      d(11, 8, 2003), d(10, 9, 2003), d(10, 10, 2003), d(10, 11, 2003), d(10, 12, 2003), d(12, 1, 2004)}},
    {"30/60 from 31/03/2003", d(31, 3, 2003), 2, {30, 60}, 0, {d(1, 5, 2003), d(2, 6, 2003)}},
    {"only the first N counts are walked", d(10, 1, 2003), 2, {30, 60, 90, 120}, 10,
     {d(10, 2, 2003), d(10, 3, 2003)}},
};

class TablaVencimientos : public ::testing::TestWithParam<Caso> {};

TEST_P(TablaVencimientos, FechaCalculadaAMano) {
    const Caso& c = GetParam();
    EXPECT_EQ(recorrer(c.inicio, c.n, c.dias, c.d1).fechas, c.esperadas) << c.nombre;
}

// A failing case shows as it reads in the table, not as a dump of bytes.
void PrintTo(const Caso& c, std::ostream* os) {
    *os << '"' << c.nombre << "\" desde ";
    PrintTo(c.inicio, os);
    *os << ", " << c.n << " plazos (";
    for (int i = 0; i < c.n && i < 12; ++i) *os << (i ? "," : "") << c.dias[size_t(i)];
    *os << "), dia de cobro " << c.d1;
}

// The test's name carries the case: "c03_01_04_2003" for "01/04/2003".
std::string nombreCaso(const ::testing::TestParamInfo<Caso>& info) {
    std::string name = "c" + std::string(info.index < 10 ? "0" : "") + std::to_string(info.index);
    bool gap = true;
    for (const char* p = info.param.nombre; *p; ++p) {
        const bool word = std::isalnum(static_cast<unsigned char>(*p));
        if (word) {
            if (gap) name += '_';
            name += *p;
        }
        gap = !word;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(PrimeroDeMes, TablaVencimientos, ::testing::ValuesIn(kPrimeroDeMes), nombreCaso);
INSTANTIATE_TEST_SUITE_P(FinDeMes, TablaVencimientos, ::testing::ValuesIn(kFinDeMes), nombreCaso);
INSTANTIATE_TEST_SUITE_P(Bisiestos, TablaVencimientos, ::testing::ValuesIn(kBisiestos), nombreCaso);
INSTANTIATE_TEST_SUITE_P(DiaDeCobro, TablaVencimientos, ::testing::ValuesIn(kDiaDeCobro), nombreCaso);
INSTANTIATE_TEST_SUITE_P(OtrasCuentas, TablaVencimientos, ::testing::ValuesIn(kOtrasCuentas), nombreCaso);
INSTANTIATE_TEST_SUITE_P(VariosPlazos, TablaVencimientos, ::testing::ValuesIn(kVariosPlazos), nombreCaso);

TEST(TablaVencimientos, TieneAlMenosSesentaCasos) {
    const size_t total = kPrimeroDeMes.size() + kFinDeMes.size() + kBisiestos.size() +
                         kDiaDeCobro.size() + kOtrasCuentas.size() + kVariosPlazos.size();
    EXPECT_GE(total, 60u);
}

} // namespace
