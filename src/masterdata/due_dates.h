// The due-date walk: from a payment term's day counts to the dates a customer or
// supplier pays on.
//
// It is not a date computation. The walk moves the calendar `Calendario` one day
// at a time and watches the months it reports, so its results are those of the
// steps in due_dates.cpp and nothing else: collection day, month ends and weekends are
// handled the way these steps handle them, odd corners included. The account
// cards and both sales windows walk their terms through here.
#pragma once
#include "runtime/calendar.h"
#include <QDate>
#include <array>
#include <functional>

namespace vel {

// What the caller does with each due date: term index (0-based) and its date.
// The account card inserts an entry; the sales windows add "dd/mm/yyyy" to
// Comborecibosfactura.
using AccionVencimiento = std::function<void(int plazo, const QDate& fecha)>;

// Walks the N first day counts of `dias` (dias01_formapago .. dias12_formapago)
// from the date Calendario holds, with the collection days D1 and D2 (Val of
// Textdiacobro1 and Textdiacobro2; 0 means the day of the month of the start
// date). D2 is prepared like D1 and then not used. The calendar is left on the
// last date walked. An N above 12 raises runtime error 9; N of 0 or less walks
// nothing.
void RecorrerVencimientos(vb::Calendar& Calendario, int N, const std::array<int, 12>& dias,
                          int D1, int D2, const AccionVencimiento& accion);

} // namespace vel
