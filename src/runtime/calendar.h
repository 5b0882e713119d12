// The month calendar: a date that is moved one day, one month or one year at a
// time, and that says when its month changes.
//
// `vb::Calendar` is the engine: windows keep one as `Calendario` and the
// due-date walk moves it day by day, counting the NewMonth signals it raises.
// `vb::CalendarControl` is the visible picker that windows place on screen; it
// shows the engine's date and hands the user's clicks back to it.
#pragma once
#include <QDate>
#include <QObject>
#include <QWidget>

class QCalendarWidget;

namespace vb {

class Calendar : public QObject {
    Q_OBJECT
public:
    // A new calendar holds today's date, as the control does when a window opens.
    explicit Calendar(QObject* parent = nullptr);

    QDate Value() const { return value_; }
    // Any valid date; an invalid one is ignored and the calendar keeps its date.
    // Moving to a date of another month (or of another year) raises NewMonth.
    void SetValue(const QDate& date);

    int Day() const { return value_.day(); }
    int Month() const { return value_.month(); }
    int Year() const { return value_.year(); }
    // Day, month and year can be set one by one; a day that the month does not
    // have becomes the month's last day (SetMonth(2) on 31/01 gives 28 or 29/02).
    void SetDay(int day);
    void SetMonth(int month);
    void SetYear(int year);

    void NextDay();
    void PreviousDay();
    // One month forward or back on the same day of the month. When the other
    // month is shorter the day becomes its last day: PreviousMonth on 31/03/2003
    // gives 28/02/2003, on 31/03/2004 gives 29/02/2004; NextMonth on 31/01 gives
    // the end of February. The day lost this way is not restored by a later
    // move: NextMonth from 28/02/2003 gives 28/03/2003.
    void NextMonth();
    void PreviousMonth();
    // One year forward or back; 29/02 becomes 28/02 in a common year.
    void NextYear();
    void PreviousYear();
    // Today's date from the program's clock.
    void Today();

signals:
    // Every change of the date, whatever made it.
    void ValueChanged(const QDate& date);
    // Every change of month, forward or back, by any operation: NextDay on the
    // last day of a month, PreviousDay on the first, the month and year moves,
    // SetValue to another month, Today. A move to the same month of another
    // year is a change of month too.
    void NewMonth();
    // Every change of year (raised after NewMonth).
    void NewYear();

private:
    void moveTo(const QDate& date);
    QDate value_;
};

// The calendar as windows show it: a month page in Spanish, weeks starting on
// Monday. It keeps its engine and the page in step both ways: a change of the
// engine shows on the page, and a date the user picks (click, keys, the month
// arrows) becomes the engine's value. A click on a day raises Click.
class CalendarControl : public QWidget {
    Q_OBJECT
public:
    explicit CalendarControl(QWidget* parent = nullptr);

    Calendar& engine() { return engine_; }
    const Calendar& engine() const { return engine_; }
    QCalendarWidget* page() const { return page_; }

    // The engine's operations, so that a window can write Calendario->NextDay().
    QDate Value() const { return engine_.Value(); }
    void SetValue(const QDate& date) { engine_.SetValue(date); }
    int Day() const { return engine_.Day(); }
    int Month() const { return engine_.Month(); }
    int Year() const { return engine_.Year(); }
    void NextDay() { engine_.NextDay(); }
    void PreviousDay() { engine_.PreviousDay(); }
    void NextMonth() { engine_.NextMonth(); }
    void PreviousMonth() { engine_.PreviousMonth(); }
    void NextYear() { engine_.NextYear(); }
    void PreviousYear() { engine_.PreviousYear(); }
    void Today() { engine_.Today(); }

signals:
    // The user clicked a day; the engine already holds it.
    void Click();
    // Forwarded from the engine.
    void NewMonth();

private:
    void showEngineDate();
    Calendar engine_;
    QCalendarWidget* page_;
    bool syncing_ = false;
};

} // namespace vb
