#include "runtime/calendar.h"
#include "runtime/clock.h"
#include <QCalendarWidget>
#include <QLocale>
#include <QVBoxLayout>

namespace vb {

Calendar::Calendar(QObject* parent) : QObject(parent), value_(vb::Date()) {}

void Calendar::moveTo(const QDate& date) {
    if (!date.isValid() || date == value_)
        return;
    const bool otherMonth = date.year() != value_.year() || date.month() != value_.month();
    const bool otherYear = date.year() != value_.year();
    value_ = date;
    emit ValueChanged(value_);
    if (otherMonth)
        emit NewMonth();
    if (otherYear)
        emit NewYear();
}

void Calendar::SetValue(const QDate& date) { moveTo(date); }

// The day kept when the month or year changes under it: the same day, or the
// last day of the new month when it is shorter.
static QDate clampedDate(int year, int month, int day) {
    const int last = QDate(year, month, 1).daysInMonth();
    return QDate(year, month, day > last ? last : day);
}

void Calendar::SetDay(int day) {
    if (day < 1)
        return;
    moveTo(clampedDate(value_.year(), value_.month(), day));
}

void Calendar::SetMonth(int month) {
    if (month < 1 || month > 12)
        return;
    moveTo(clampedDate(value_.year(), month, value_.day()));
}

void Calendar::SetYear(int year) { moveTo(clampedDate(year, value_.month(), value_.day())); }

void Calendar::NextDay() { moveTo(value_.addDays(1)); }
void Calendar::PreviousDay() { moveTo(value_.addDays(-1)); }
void Calendar::NextMonth() { moveTo(value_.addMonths(1)); }       // addMonths keeps the day or clamps it
void Calendar::PreviousMonth() { moveTo(value_.addMonths(-1)); }
void Calendar::NextYear() { moveTo(value_.addYears(1)); }
void Calendar::PreviousYear() { moveTo(value_.addYears(-1)); }
void Calendar::Today() { moveTo(vb::Date()); }

CalendarControl::CalendarControl(QWidget* parent)
    : QWidget(parent), engine_(this), page_(new QCalendarWidget(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page_);
    page_->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
    page_->setFirstDayOfWeek(Qt::Monday);
    page_->setGridVisible(true);
    showEngineDate();

    connect(&engine_, &Calendar::ValueChanged, this, [this] { showEngineDate(); });
    connect(&engine_, &Calendar::NewMonth, this, &CalendarControl::NewMonth);

    // A day chosen on the page, by mouse or keys, becomes the engine's date.
    connect(page_, &QCalendarWidget::selectionChanged, this, [this] {
        if (!syncing_)
            engine_.SetValue(page_->selectedDate());
    });
    // The month arrows and lists move the date to the same day of the shown
    // month. A day picked in another month turns the page first: then the
    // picked day is the one taken.
    connect(page_, &QCalendarWidget::currentPageChanged, this, [this](int year, int month) {
        if (syncing_)
            return;
        const QDate picked = page_->selectedDate();
        if (picked.year() == year && picked.month() == month)
            engine_.SetValue(picked);
        else
            engine_.SetValue(clampedDate(year, month, engine_.Day()));
    });
    connect(page_, &QCalendarWidget::clicked, this, [this](const QDate& date) {
        engine_.SetValue(date);
        emit Click();
    });
}

void CalendarControl::showEngineDate() {
    syncing_ = true;
    page_->setSelectedDate(engine_.Value());
    page_->setCurrentPage(engine_.Year(), engine_.Month());
    syncing_ = false;
}

} // namespace vb
