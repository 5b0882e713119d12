// The calendar the windows call Calendario: moves by day, month and year, and a
// NewMonth for every change of month, which the due-date walk counts.
#include "runtime/calendar.h"
#include "runtime/clock.h"
#include <QCalendarWidget>
#include <QApplication>
#include <QMouseEvent>
#include <QTableView>
#include <QLocale>
#include <gtest/gtest.h>

namespace {

QDate d(int day, int month, int year) { return QDate(year, month, day); }

// Counts the NewMonth (and NewYear) signals of a calendar.
struct Cambios {
    int meses = 0;
    int anos = 0;
    explicit Cambios(vb::Calendar& c) {
        QObject::connect(&c, &vb::Calendar::NewMonth, [this] { ++meses; });
        QObject::connect(&c, &vb::Calendar::NewYear, [this] { ++anos; });
    }
};

TEST(Calendario, DiaMesYAnoDeLaFecha) {
    vb::Calendar c;
    c.SetValue(d(31, 12, 2003));
    EXPECT_EQ(c.Day(), 31);
    EXPECT_EQ(c.Month(), 12);
    EXPECT_EQ(c.Year(), 2003);
}

TEST(Calendario, AbreConLaFechaDeHoyYTodayVuelveAElla) {
    vb::clock::pin(QDateTime(d(14, 3, 2024), QTime(10, 0)));
    vb::Calendar c;
    EXPECT_EQ(c.Value(), d(14, 3, 2024));
    c.SetValue(d(1, 1, 2020));
    c.Today();
    EXPECT_EQ(c.Value(), d(14, 3, 2024));
    vb::clock::unpin();
}

TEST(Calendario, DiaSiguienteDentroDelMesNoCambiaDeMes) {
    vb::Calendar c;
    c.SetValue(d(10, 5, 2003));
    Cambios cambios(c);
    c.NextDay();
    c.PreviousDay();
    c.NextDay();
    EXPECT_EQ(c.Value(), d(11, 5, 2003));
    EXPECT_EQ(cambios.meses, 0);
}

TEST(Calendario, DiaSiguienteAlFinalDelMesAvisaDeMesNuevo) {
    vb::Calendar c;
    c.SetValue(d(28, 2, 2003));
    Cambios cambios(c);
    c.NextDay();
    EXPECT_EQ(c.Value(), d(1, 3, 2003));
    EXPECT_EQ(cambios.meses, 1);
}

TEST(Calendario, DiaAnteriorAlPrimeroDelMesTambienAvisa) {
    vb::Calendar c;
    c.SetValue(d(1, 3, 2004));
    Cambios cambios(c);
    c.PreviousDay();
    EXPECT_EQ(c.Value(), d(29, 2, 2004));
    EXPECT_EQ(cambios.meses, 1);
}

TEST(Calendario, UnAnoEnteroDiaADiaSonDoceMesesNuevos) {
    // From 15/11/2003 day by day to 15/11/2004: 12 changes of month, one of year.
    vb::Calendar c;
    c.SetValue(d(15, 11, 2003));
    Cambios cambios(c);
    while (c.Value() != d(15, 11, 2004))
        c.NextDay();
    EXPECT_EQ(cambios.meses, 12);
    EXPECT_EQ(cambios.anos, 1);
}

TEST(Calendario, HaciaAtrasPorFinDeAnoTambienCuentaCadaMes) {
    // From 10/02/2004 back day by day to 10/11/2003: Feb->Jan, Jan->Dec, Dec->Nov.
    vb::Calendar c;
    c.SetValue(d(10, 2, 2004));
    Cambios cambios(c);
    while (c.Value() != d(10, 11, 2003))
        c.PreviousDay();
    EXPECT_EQ(cambios.meses, 3);
    EXPECT_EQ(cambios.anos, 1);
}

TEST(Calendario, MesSiguienteYAnteriorCruzandoElAno) {
    vb::Calendar c;
    c.SetValue(d(15, 12, 2003));
    Cambios cambios(c);
    c.NextMonth();
    EXPECT_EQ(c.Value(), d(15, 1, 2004));
    c.PreviousMonth();
    c.PreviousMonth();
    EXPECT_EQ(c.Value(), d(15, 11, 2003));
    EXPECT_EQ(cambios.meses, 3);
    EXPECT_EQ(cambios.anos, 2);
}

TEST(Calendario, MesAnteriorDesdeElTreintaYUnoDeMarzoVaAlUltimoDeFebrero) {
    vb::Calendar c;
    c.SetValue(d(31, 3, 2003));
    c.PreviousMonth();
    EXPECT_EQ(c.Value(), d(28, 2, 2003));
    c.SetValue(d(31, 3, 2004));
    c.PreviousMonth();
    EXPECT_EQ(c.Value(), d(29, 2, 2004));
}

TEST(Calendario, ElDiaPerdidoAlAcortarElMesNoSeRecupera) {
    vb::Calendar c;
    c.SetValue(d(31, 1, 2003));
    c.NextMonth();
    EXPECT_EQ(c.Value(), d(28, 2, 2003));
    c.NextMonth();
    EXPECT_EQ(c.Value(), d(28, 3, 2003));
}

TEST(Calendario, AnoSiguienteYAnteriorAvisanDeMesNuevo) {
    vb::Calendar c;
    c.SetValue(d(29, 2, 2004));
    Cambios cambios(c);
    c.NextYear();
    EXPECT_EQ(c.Value(), d(28, 2, 2005));
    c.PreviousYear();
    EXPECT_EQ(c.Value(), d(28, 2, 2004));
    EXPECT_EQ(cambios.meses, 2);
    EXPECT_EQ(cambios.anos, 2);
}

TEST(Calendario, PonerUnaFechaDeOtroMesAvisaYDelMismoMesNo) {
    vb::Calendar c;
    c.SetValue(d(10, 6, 2003));
    Cambios cambios(c);
    c.SetValue(d(25, 6, 2003));
    EXPECT_EQ(cambios.meses, 0);
    c.SetValue(d(25, 9, 2003));
    EXPECT_EQ(cambios.meses, 1);
    c.SetValue(d(25, 9, 2003));  // the same date: no change at all
    EXPECT_EQ(cambios.meses, 1);
    c.SetValue(d(1, 9, 2004));   // September again, but of another year
    EXPECT_EQ(cambios.meses, 2);
}

TEST(Calendario, UnaFechaNoValidaSeIgnora) {
    vb::Calendar c;
    c.SetValue(d(10, 6, 2003));
    c.SetValue(QDate());
    EXPECT_EQ(c.Value(), d(10, 6, 2003));
}

TEST(Calendario, DiaMesYAnoSueltosAjustanElDiaAlMes) {
    vb::Calendar c;
    c.SetValue(d(31, 1, 2004));
    Cambios cambios(c);
    c.SetMonth(2);
    EXPECT_EQ(c.Value(), d(29, 2, 2004));
    c.SetYear(2003);
    EXPECT_EQ(c.Value(), d(28, 2, 2003));
    c.SetDay(31);
    EXPECT_EQ(c.Value(), d(28, 2, 2003));
    c.SetDay(3);
    EXPECT_EQ(c.Value(), d(3, 2, 2003));
    EXPECT_EQ(cambios.meses, 2);
}

TEST(Calendario, NewMonthLlegaConLaFechaYaCambiada) {
    // The walk reads the calendar inside its NewMonth handler count; the value
    // must already be the new one.
    vb::Calendar c;
    c.SetValue(d(30, 4, 2003));
    QDate vista;
    QObject::connect(&c, &vb::Calendar::NewMonth, [&] { vista = c.Value(); });
    c.NextDay();
    EXPECT_EQ(vista, d(1, 5, 2003));
}

// ---- The visible control ----

TEST(ControlCalendario, EnEspanolYEmpezandoEnLunes) {
    vb::CalendarControl control;
    EXPECT_EQ(control.page()->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(control.page()->locale().language(), QLocale::Spanish);
    EXPECT_EQ(control.page()->locale().monthName(3), QStringLiteral("marzo"));
}

TEST(ControlCalendario, LaPaginaMuestraLaFechaDelMotor) {
    vb::CalendarControl control;
    control.SetValue(d(17, 2, 2003));
    EXPECT_EQ(control.page()->selectedDate(), d(17, 2, 2003));
    EXPECT_EQ(control.page()->monthShown(), 2);
    EXPECT_EQ(control.page()->yearShown(), 2003);
    control.engine().NextMonth();
    EXPECT_EQ(control.page()->selectedDate(), d(17, 3, 2003));
    EXPECT_EQ(control.page()->monthShown(), 3);
}

TEST(ControlCalendario, ElegirUnDiaEnLaPaginaLoPasaAlMotor) {
    vb::CalendarControl control;
    control.SetValue(d(17, 2, 2003));
    int meses = 0;
    QObject::connect(&control, &vb::CalendarControl::NewMonth, [&] { ++meses; });
    control.page()->setSelectedDate(d(5, 4, 2003));  // as the keys do
    EXPECT_EQ(control.Value(), d(5, 4, 2003));
    EXPECT_EQ(meses, 1);
}

TEST(ControlCalendario, LasFlechasDeMesMuevenLaFecha) {
    vb::CalendarControl control;
    control.SetValue(d(31, 1, 2003));
    control.page()->showNextMonth();
    EXPECT_EQ(control.Value(), d(28, 2, 2003));
}

TEST(ControlCalendario, UnClicEnUnDiaLoGuardaYAvisa) {
    vb::CalendarControl control;
    control.SetValue(d(17, 2, 2003));
    int clics = 0;
    QDate enElClic;
    QObject::connect(&control, &vb::CalendarControl::Click, [&] {
        ++clics;
        enElClic = control.Value();
    });
    // The page's own click signal, as a mouse click on 20/02 raises it.
    QMetaObject::invokeMethod(control.page(), "clicked", Q_ARG(QDate, d(20, 2, 2003)));
    EXPECT_EQ(clics, 1);
    EXPECT_EQ(enElClic, d(20, 2, 2003));
}

TEST(ControlCalendario, UnClicConElRatonEnLaPagina) {
    vb::CalendarControl control;
    control.resize(400, 300);
    control.show();
    control.SetValue(d(17, 2, 2003));
    int clics = 0;
    QObject::connect(&control, &vb::CalendarControl::Click, [&] { ++clics; });
    auto* vista = control.page()->findChild<QTableView*>();
    ASSERT_NE(vista, nullptr);
    // The cell showing day 20 of February (below the row of day names).
    QModelIndex celda;
    for (int fila = 1; fila < vista->model()->rowCount() && !celda.isValid(); ++fila)
        for (int col = 0; col < vista->model()->columnCount(); ++col) {
            QModelIndex i = vista->model()->index(fila, col);
            if (i.data().toString() == QLatin1String("20") && fila < 5) {
                celda = i;
                break;
            }
        }
    ASSERT_TRUE(celda.isValid());
    const QPoint punto = vista->visualRect(celda).center();
    QMouseEvent pulsa(QEvent::MouseButtonPress, punto, vista->viewport()->mapToGlobal(punto),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent suelta(QEvent::MouseButtonRelease, punto, vista->viewport()->mapToGlobal(punto),
                       Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(vista->viewport(), &pulsa);
    QApplication::sendEvent(vista->viewport(), &suelta);
    EXPECT_EQ(control.Value(), d(20, 2, 2003));
    EXPECT_EQ(clics, 1);
}

TEST(ControlCalendario, LosCambiosDelMotorNoSeTomanPorClics) {
    vb::CalendarControl control;
    int clics = 0;
    QObject::connect(&control, &vb::CalendarControl::Click, [&] { ++clics; });
    control.SetValue(d(1, 1, 2003));
    for (int i = 0; i < 40; ++i)
        control.NextDay();
    EXPECT_EQ(clics, 0);
    EXPECT_EQ(control.Value(), d(10, 2, 2003));
}

} // namespace
