#include "masterdata/due_dates.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include <QObject>

namespace vel {

namespace {

// The weekday digit as the runtime writes it: "1" Sunday .. "7" Saturday.
QString digitoSemana(const vb::Calendar& Calendario) {
    return vb::Left(vb::Format(Calendario.Value(), QStringLiteral("w dd/mm/yyyy")), 1);
}

// Counting NewMonth is only for the length of one walk.
struct Escucha {
    QMetaObject::Connection conexion;
    ~Escucha() { QObject::disconnect(conexion); }
};

} // namespace

void RecorrerVencimientos(vb::Calendar& Calendario, int N, const std::array<int, 12>& dias,
                          int D1, int D2, const AccionVencimiento& accion) {
    if (N > 12)
        vb::Raise(9, QStringLiteral("Subíndice fuera del intervalo"));

    // The collection days: 0 takes the day of the month of the start date.
    // D2 is made ready the same way and the walk has no use for it.
    if (D1 == 0)
        D1 = Calendario.Day();
    if (D2 == 0)
        D2 = Calendario.Day();
    (void)D2;

    // C counts every change of month the calendar reports during the walk, in
    // either direction, including the moves back made below.
    int C = 0;
    Escucha escucha{QObject::connect(&Calendario, &vb::Calendar::NewMonth, [&C] { ++C; })};

    // Each due date is reached from the one before: the counts become differences.
    std::array<int, 12> cuentas = dias;
    for (int i = 1; i <= N - 1; ++i)
        cuentas[i] = dias[i] - dias[i - 1];

    // A, M and S live for the whole walk. S is set only when a count is walked:
    // a term with a count of 0 or less after a shifted term finds the old S
    // still standing and steps back by it once more.
    int A = 0;
    int M = 0;
    int S = 0;

    for (int i = 0; i <= N - 1; ++i) {
        int cuenta = cuentas[i];
        if (cuenta > 0) {
            // 30 days mean one calendar month, judged by the month we start from.
            if (cuenta == 30) {
                const int mes = Calendario.Month();
                if (mes == 1 || mes == 3 || mes == 5 || mes == 7 || mes == 8 || mes == 10 || mes == 12)
                    cuenta = 31;
                else if (mes == 2)
                    cuenta = 28;
            }

            A = C;
            for (int k = 0; k < cuenta; ++k)
                Calendario.NextDay();

            // Up to the collection day...
            while (Calendario.Day() < D1 && Calendario.Month() != 2 && cuenta == 30)
                Calendario.NextDay();
            // ...in February no further than its last day...
            if (Calendario.Day() < D1 && Calendario.Month() == 2 && cuenta == 30) {
                while (!(Calendario.Day() == D1 || Calendario.Month() == 3))
                    Calendario.NextDay();
                if (Calendario.Month() == 3)
                    Calendario.PreviousDay();
            }
            // ...and back down to it from a later day.
            while (Calendario.Day() > D1 && Calendario.Month() != 2 && cuenta > 27)
                Calendario.PreviousDay();

            // A Sunday moves to the Monday, a Saturday too.
            M = Calendario.Month();
            S = 0;
            const QString w = digitoSemana(Calendario);
            if (w == QLatin1String("1")) {
                S = 1;
                Calendario.NextDay();
            } else if (w == QLatin1String("7")) {
                S = 2;
                Calendario.NextDay();
                Calendario.NextDay();
            }

            // A Monday in the next month is not taken: back to the last working
            // day of the month the date fell in.
            if (Calendario.Month() != M) {
                while (Calendario.Month() != M)
                    Calendario.PreviousDay();
                if (S != 0) {
                    for (;;) {
                        const QString d = digitoSemana(Calendario);
                        if (d != QLatin1String("1") && d != QLatin1String("7"))
                            break;
                        Calendario.PreviousDay();
                    }
                }
            }

            // A walk that ran one month too far into March goes back a month.
            // PreviousMonth raises NewMonth itself, so C ends one lower.
            while (Calendario.Month() == 3 && cuenta / 30 >= 1 && C > cuenta / 30 + A) {
                Calendario.PreviousMonth();
                C -= 2;
            }
        }

        if (accion)
            accion(i, Calendario.Value());

        // The next term counts from the date before the shift.
        if (S != 0)
            for (int k = 0; k < S; ++k)
                Calendario.PreviousDay();
    }
}

} // namespace vel
