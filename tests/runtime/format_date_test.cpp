// Format of dates and times: document dates, the clock in reports and tickets,
// the weekday digit of the due-date walk.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

using vb::Format;

TEST(FormatDate, DocumentDates) {
    EXPECT_EQ(Format(QDate(2003, 12, 31), "dd/mm/yyyy"), QStringLiteral("31/12/2003"));
    EXPECT_EQ(Format(QDate(2026, 2, 1), "dd/mm/yyyy"), QStringLiteral("01/02/2026"));
    EXPECT_EQ(Format(QDate(2026, 2, 1), "d/m/yy"), QStringLiteral("1/2/26"));
}

TEST(FormatDate, TheInvoiceNameOfAPrintJob) {
    EXPECT_EQ(Format(QDate(2003, 12, 31), "yyyymmdd"), QStringLiteral("20031231"));
}

TEST(FormatDate, YearAndMonthForTheMonthlyReference) {
    // A reference "MS" gets yymm of today appended; the month picks the name.
    EXPECT_EQ(Format(QDate(2026, 6, 15), "yymm"), QStringLiteral("2606"));
    EXPECT_EQ(Format(QDate(2026, 6, 15), "mm"), QStringLiteral("06"));
    EXPECT_EQ(Format(QDate(2005, 11, 2), "yymm"), QStringLiteral("0511"));
}

TEST(FormatDate, TimeOfDay) {
    const QDateTime moment(QDate(2026, 3, 9), QTime(8, 5, 3));
    EXPECT_EQ(Format(moment, "hh:mm:ss"), QStringLiteral("08:05:03"));
    EXPECT_EQ(Format(QTime(23, 59, 59), "hh:mm:ss"), QStringLiteral("23:59:59"));
    EXPECT_EQ(Format(moment, "dd/mm/yyyy hh:mm"), QStringLiteral("09/03/2026 08:05"));
    EXPECT_EQ(Format(moment, "h:nn"), QStringLiteral("8:05"));
    EXPECT_EQ(Format(QDate(2026, 3, 9), "hh:mm:ss"), QStringLiteral("00:00:00"));
}

TEST(FormatDate, TheWeekdayDigitStartsOnSunday) {
    // The due-date walk looks at the first character: "1" Sunday, "7" Saturday.
    EXPECT_EQ(Format(QDate(2026, 3, 8), "w dd/mm/yyyy"), QStringLiteral("1 08/03/2026")); // Sunday
    EXPECT_EQ(Format(QDate(2026, 3, 9), "w dd/mm/yyyy"), QStringLiteral("2 09/03/2026")); // Monday
    EXPECT_EQ(Format(QDate(2026, 3, 14), "w dd/mm/yyyy"), QStringLiteral("7 14/03/2026")); // Saturday
    EXPECT_EQ(Format(QDate(2026, 3, 13), "w"), QStringLiteral("6"));                        // Friday
}

TEST(FormatDate, SpanishNamesOfDaysAndMonths) {
    EXPECT_EQ(Format(QDate(2026, 3, 8), "dddd d \"de\" mmmm"), QStringLiteral("domingo 8 de marzo"));
    EXPECT_EQ(Format(QDate(2026, 3, 11), "ddd mmm"), QString::fromUtf8("mié mar"));
}

TEST(FormatDate, ANumberWithADateMaskIsADaySerial) {
    // The runtime counts days from 30/12/1899.
    EXPECT_EQ(Format(1.0, "dd/mm/yyyy"), QStringLiteral("31/12/1899"));
    EXPECT_EQ(Format(37986.5, "dd/mm/yyyy hh:mm:ss"), QStringLiteral("31/12/2003 12:00:00"));
    EXPECT_EQ(Format(QDate(2003, 12, 31), "0"), QStringLiteral("37986"));
}

namespace {
// The number of the runtime error a Format raises; 0 when it gives a text.
int FormatError(const std::function<QString()>& format) {
    try {
        format();
    } catch (const vb::RuntimeError& e) {
        return e.Number;
    }
    return 0;
}
} // namespace

TEST(FormatDate, TheCalendarEndsOn31December9999AndStartsOn1January100) {
    EXPECT_EQ(Format(2958465.5, "dd/mm/yyyy hh:mm:ss"), QStringLiteral("31/12/9999 12:00:00"));
    EXPECT_EQ(Format(-657434.0, "dd/mm"), QStringLiteral("01/01"));
    EXPECT_EQ(FormatError([] { return Format(2958466.0, "dd/mm/yyyy"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(-657435.0, "dd/mm/yyyy"); }), 6);
}

TEST(FormatDate, ANumberOutsideTheCalendarIsAnOverflowNotAMonthName) {
    // A price or a code given a date mask by mistake: the runtime's overflow,
    // never a month read from outside the table.
    EXPECT_EQ(FormatError([] { return Format(1e13, "mmm"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(-1e13, "mmmm"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(1e308, "dd/mm/yyyy"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(std::nan(""), "dd/mm/yyyy"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(HUGE_VAL, "dddd"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(-HUGE_VAL, "yyyy"); }), 6);
}

TEST(FormatDate, ANumericTextOutsideTheCalendarIsAnOverflowToo) {
    EXPECT_EQ(FormatError([] { return Format(QStringLiteral("1e308"), "dd/mm/yyyy"); }), 6);
    EXPECT_EQ(FormatError([] { return Format(QStringLiteral("2737926000910"), "dd/mm/yyyy"); }), 6);
}

TEST(FormatDate, NoDateAtAllIsAnInvalidArgument) {
    EXPECT_EQ(FormatError([] { return Format(QDate(), "mmm"); }), 5);
    EXPECT_EQ(FormatError([] { return Format(QDate(10000, 1, 1), "dd/mm/yyyy"); }), 5);
    EXPECT_EQ(FormatError([] { return Format(QDateTime(), "dddd"); }), 5);
}
