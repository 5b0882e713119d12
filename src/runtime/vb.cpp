// The runtime's text and number functions.
//
// Numbers are turned into text and back with std::to_chars / std::from_chars
// only: they never look at the C locale nor at QLocale, so the decimal mark is
// the point on any machine (a shop PC set to Spanish included).
#include "runtime/vb.h"

#include "runtime/clock.h"
#include "runtime/errors.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace vb {

namespace {

const QString kInvalidCall = QStringLiteral("Llamada a procedimiento o argumento no válidos");

bool isValBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\n'; }
bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool isHexDigit(QChar c) {
    return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}
int hexValue(QChar c) {
    if (isDigit(c)) return c.unicode() - u'0';
    if (c >= u'a' && c <= u'f') return c.unicode() - u'a' + 10;
    return c.unicode() - u'A' + 10;
}

// "&H..." and "&O..." (or "&" and octal digits) as Val reads them. Like the
// original runtime, a value that fits 16 bits is an Integer and one that fits 32
// bits a Long, so "&HFFFF" is -1 and "&HFFFFF" is 1048575.
double radixValue(const QString& digits, int radix) {
    long double acc = 0;
    for (QChar c : digits) acc = acc * radix + hexValue(c);
    if (acc <= 0xFFFF) return static_cast<std::int16_t>(static_cast<std::uint16_t>(acc));
    if (acc <= 0xFFFFFFFFL) return static_cast<std::int32_t>(static_cast<std::uint32_t>(acc));
    return static_cast<double>(acc);
}

// Parses a plain ASCII number "[-]ddd[.ddd][e[-]ddd]" made by Val.
double parseAscii(const std::string& text, bool mantissaHasNonZero, long long magnitude) {
    double result = 0;
    const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), result);
    (void)ptr;
    if (ec == std::errc::result_out_of_range) {
        if (mantissaHasNonZero && magnitude > 0) Raise(6, QStringLiteral("Desbordamiento"));
        return 0; // too small to hold: reads as zero
    }
    if (ec != std::errc()) return 0;
    return result;
}

// Lays out the digits of a decimal number: `digits` with the point after
// `pointPos` digits (pointPos may be <= 0 or beyond the digits).
struct Decimal {
    std::string intPart;  // no leading zeros; empty for 0
    std::string fracPart;
};

Decimal layout(const std::string& digits, int pointPos) {
    Decimal d;
    const int n = static_cast<int>(digits.size());
    if (pointPos <= 0) {
        d.fracPart = std::string(static_cast<size_t>(-pointPos), '0') + digits;
    } else if (pointPos >= n) {
        d.intPart = digits + std::string(static_cast<size_t>(pointPos - n), '0');
    } else {
        d.intPart = digits.substr(0, static_cast<size_t>(pointPos));
        d.fracPart = digits.substr(static_cast<size_t>(pointPos));
    }
    const auto nz = d.intPart.find_first_not_of('0');
    d.intPart = nz == std::string::npos ? std::string() : d.intPart.substr(nz);
    return d;
}

// Splits the text of std::to_chars in scientific form ("1.2345e+02") into its
// significant digits and decimal exponent.
void splitScientific(const char* begin, const char* end, std::string& digits, int& exponent) {
    digits.clear();
    const char* p = begin;
    for (; p < end && *p != 'e'; ++p)
        if (*p >= '0' && *p <= '9') digits.push_back(*p);
    exponent = 0;
    if (p < end) std::from_chars(p + 1 + (p[1] == '+' ? 1 : 0), end, exponent);
}

// |value| as decimal text rounded to `decimals` places, half away from zero.
//
// The rounding is done on the value as written with 15 significant digits, the
// precision a Double holds for sure, and not on the exact binary fraction: 1.005
// is stored as 1.00499999999999989..., but it is the 1.005 the user typed, and
// Format(1.005, "0.00") gives "1.01" as the shop expects; 0.125 gives "0.13",
// 2.675 gives "2.68". (Round works on the binary value instead: see Round.)
Decimal roundedDecimal(double value, int decimals) {
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific, 14);
    std::string digits;
    int exponent = 0;
    splitScientific(buf, r.ptr, digits, exponent);
    Decimal d = layout(digits, exponent + 1);
    if (static_cast<int>(d.fracPart.size()) > decimals) {
        const bool up = d.fracPart[static_cast<size_t>(decimals)] >= '5';
        d.fracPart.resize(static_cast<size_t>(decimals));
        if (up) {
            std::string all = d.intPart + d.fracPart;
            int i = static_cast<int>(all.size()) - 1;
            for (; i >= 0; --i) {
                if (all[static_cast<size_t>(i)] == '9') {
                    all[static_cast<size_t>(i)] = '0';
                } else {
                    ++all[static_cast<size_t>(i)];
                    break;
                }
            }
            if (i < 0) all.insert(all.begin(), '1');
            const size_t intLen = all.size() - static_cast<size_t>(decimals);
            d.intPart = all.substr(0, intLen);
            d.fracPart = all.substr(intLen);
            const auto nz = d.intPart.find_first_not_of('0');
            d.intPart = nz == std::string::npos ? std::string() : d.intPart.substr(nz);
        }
    }
    d.fracPart.resize(static_cast<size_t>(decimals), '0');
    return d;
}

// ---------------------------------------------------------------- masks ----

// A literal of a mask at position i: a character after "\\" or a text in
// double quotes. When there is one, its text is added to *literal (if given), i
// is left on the literal's last character, and the answer is true.
bool maskLiteral(const QString& mask, int& i, QString* literal) {
    if (mask[i] == u'\\') {
        if (literal && i + 1 < mask.size()) *literal += mask[i + 1];
        ++i;
        return true;
    }
    if (mask[i] == u'"') {
        const int close = mask.indexOf(u'"', i + 1);
        const int end = close < 0 ? mask.size() : close;
        if (literal) *literal += mask.mid(i + 1, end - i - 1);
        i = end;
        return true;
    }
    return false;
}

enum class MaskKind { Number, Date, Text };

// A mask is a text mask when it has character placeholders, a number mask when
// it has digit placeholders, a date mask when it has date/time letters.
MaskKind maskKind(const QString& mask) {
    bool digit = false, date = false;
    for (int i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        if (maskLiteral(mask, i, nullptr)) continue;
        if (c == u'@' || c == u'&' || c == u'!' || c == u'<' || c == u'>') return MaskKind::Text;
        if (c == u'0' || c == u'#') digit = true;
        switch (c.toLower().unicode()) {
        case u'd': case u'm': case u'y': case u'h': case u'n': case u's': case u'w': case u'q':
            date = true;
            break;
        default:
            break;
        }
    }
    if (digit) return MaskKind::Number;
    if (date) return MaskKind::Date;
    return MaskKind::Number;
}

QString fromAscii(const std::string& s) { return QString::fromLatin1(s.data(), static_cast<qsizetype>(s.size())); }

// One section of a number mask, e.g. "#,##0.00".
QString formatNumberSection(double value, const QString& section, bool showMinus) {
    // First pass: count placeholders and find the decimal point.
    int intPlaceholders = 0, firstIntZero = -1, decPlaceholders = 0, lastDecZero = -1;
    bool seenPoint = false, grouping = false, percent = false;
    for (int i = 0; i < section.size(); ++i) {
        const QChar c = section[i];
        if (maskLiteral(section, i, nullptr)) continue;
        if (c == u'0' || c == u'#') {
            if (!seenPoint) {
                if (c == u'0' && firstIntZero < 0) firstIntZero = intPlaceholders;
                ++intPlaceholders;
            } else {
                if (c == u'0') lastDecZero = decPlaceholders;
                ++decPlaceholders;
            }
        } else if (c == u'.' && !seenPoint) {
            seenPoint = true;
        } else if (c == u',' && !seenPoint && intPlaceholders > 0) {
            grouping = true;
        } else if (c == u'%') {
            percent = true;
        }
    }
    if (percent) value *= 100;

    const Decimal d = roundedDecimal(value, decPlaceholders);
    std::string intDigits = d.intPart;
    const int minInt = firstIntZero < 0 ? 0 : intPlaceholders - firstIntZero;
    if (static_cast<int>(intDigits.size()) < minInt)
        intDigits.insert(0, static_cast<size_t>(minInt) - intDigits.size(), '0');
    int fracShown = decPlaceholders;
    while (fracShown > lastDecZero + 1 && d.fracPart[static_cast<size_t>(fracShown - 1)] == '0') --fracShown;

    const int intLen = static_cast<int>(intDigits.size());
    auto emitIntDigit = [&](QString& out, int index) {
        out += QLatin1Char(intDigits[static_cast<size_t>(index)]);
        const int fromRight = intLen - 1 - index;
        if (grouping && fromRight > 0 && fromRight % 3 == 0) out += u',';
    };

    QString out;
    if (showMinus) out += u'-';
    int intSeen = 0, decSeen = 0;
    seenPoint = false;
    const int extra = intLen - intPlaceholders; // digits beyond the placeholders go at the first one
    for (int i = 0; i < section.size(); ++i) {
        const QChar c = section[i];
        if (maskLiteral(section, i, &out)) continue;
        if (c == u'0' || c == u'#') {
            if (!seenPoint) {
                if (intSeen == 0)
                    for (int k = 0; k < extra; ++k) emitIntDigit(out, k);
                const int index = intSeen + extra;
                if (index >= 0) emitIntDigit(out, index);
                ++intSeen;
            } else {
                if (decSeen < fracShown) out += QLatin1Char(d.fracPart[static_cast<size_t>(decSeen)]);
                ++decSeen;
            }
            continue;
        }
        if (c == u'.' && !seenPoint) {
            if (intSeen == 0 && extra > 0)
                for (int k = 0; k < extra; ++k) emitIntDigit(out, k);
            seenPoint = true;
            out += u'.';
            continue;
        }
        if (c == u',' && !seenPoint) continue; // the grouping mark, placed with the digits
        out += c;
    }
    return out;
}

QStringList splitSections(const QString& mask) {
    QStringList sections;
    QString current;
    for (int i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        if (c == u'\\' && i + 1 < mask.size()) {
            current += c;
            current += mask[++i];
        } else if (c == u'"') {
            const int close = mask.indexOf(u'"', i + 1);
            const int end = close < 0 ? mask.size() - 1 : close;
            current += mask.mid(i, end - i + 1);
            i = end;
        } else if (c == u';') {
            sections << current;
            current.clear();
        } else {
            current += c;
        }
    }
    sections << current;
    return sections;
}

QString formatNumber(double value, const QString& mask) {
    const QStringList sections = splitSections(mask);
    if (sections.size() >= 3 && value == 0 && !sections[2].isEmpty())
        return formatNumberSection(0, sections[2], false);
    if (value < 0 && sections.size() >= 2 && !sections[1].isEmpty())
        return formatNumberSection(-value, sections[1], false);
    // A negative number takes a leading "-", even when it rounds to nothing:
    // Format(-0.001, "0.00") is "-0.00", as the original runtime shows it.
    return formatNumberSection(value, sections[0], value < 0);
}

const char* const kDayShort[] = {"dom", "lun", "mar", "mié", "jue", "vie", "sáb"};
const char* const kDayLong[] = {"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"};
const char* const kMonthShort[] = {"ene", "feb", "mar", "abr", "may", "jun", "jul", "ago", "sep", "oct", "nov", "dic"};
const char* const kMonthLong[] = {"enero",  "febrero", "marzo",     "abril",   "mayo",      "junio",
                                  "julio",  "agosto",  "septiembre", "octubre", "noviembre", "diciembre"};

QString pad2(int n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); }

// Weekday digit: 1 Sunday .. 7 Saturday.
int weekdayDigit(const QDate& d) { return d.dayOfWeek() % 7 + 1; }

// A date outside the runtime's calendar (no date at all, or a year before 100
// or after 9999) is an invalid argument: error 5. The tables of names are only
// ever indexed with the month and weekday of a valid date.
QString formatDate(const QDateTime& moment, const QString& mask) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    if (!date.isValid() || date.year() < 100 || date.year() > 9999 || !time.isValid()) Raise(5, kInvalidCall);
    QString out;
    bool lastWasHour = false;
    auto run = [&](int i, QChar letter) {
        int n = 0;
        while (i + n < mask.size() && mask[i + n].toLower() == letter) ++n;
        return n;
    };
    // "m" right after an hour, or right before seconds, means minutes.
    auto minuteContext = [&](int after) {
        for (int j = after; j < mask.size(); ++j) {
            const QChar c = mask[j].toLower();
            if (c == u's') return true;
            if (c == u'd' || c == u'm' || c == u'y' || c == u'h' || c == u'w' || c == u'q' || c == u'n') return false;
        }
        return false;
    };
    for (int i = 0; i < mask.size();) {
        const QChar c = mask[i];
        const QChar lc = c.toLower();
        if (maskLiteral(mask, i, &out)) {
            ++i;
            continue;
        }
        if (lc == u'd') {
            const int n = run(i, u'd');
            if (n == 1) out += QString::number(date.day());
            else if (n == 2) out += pad2(date.day());
            else if (n == 3) out += QString::fromUtf8(kDayShort[date.dayOfWeek() % 7]);
            else if (n == 4) out += QString::fromUtf8(kDayLong[date.dayOfWeek() % 7]);
            else out += pad2(date.day()) + u'/' + pad2(date.month()) + u'/' + QString::number(date.year());
            i += n;
            lastWasHour = false;
            continue;
        }
        if (lc == u'm') {
            const int n = run(i, u'm');
            if (n <= 2 && (lastWasHour || minuteContext(i + n))) {
                out += n == 1 ? QString::number(time.minute()) : pad2(time.minute());
            } else if (n == 1) {
                out += QString::number(date.month());
            } else if (n == 2) {
                out += pad2(date.month());
            } else if (n == 3) {
                out += QString::fromUtf8(kMonthShort[date.month() - 1]);
            } else {
                out += QString::fromUtf8(kMonthLong[date.month() - 1]);
            }
            i += n;
            lastWasHour = false;
            continue;
        }
        if (lc == u'y') {
            int n = run(i, u'y');
            int used = 0;
            while (n - used >= 4) { out += QStringLiteral("%1").arg(date.year(), 4, 10, QLatin1Char('0')); used += 4; }
            while (n - used >= 2) { out += pad2(date.year() % 100); used += 2; }
            if (n - used == 1) out += QString::number(date.dayOfYear());
            i += n;
            lastWasHour = false;
            continue;
        }
        if (lc == u'h' || lc == u'n' || lc == u's') {
            // Hours, minutes, seconds: one letter the bare number, two or more padded.
            const int value = lc == u'h' ? time.hour() : lc == u'n' ? time.minute() : time.second();
            const int n = run(i, lc);
            out += n == 1 ? QString::number(value) : pad2(value);
            i += n;
            lastWasHour = lc == u'h';
            continue;
        }
        if (lc == u'w') {
            const int n = run(i, u'w');
            if (n == 1) {
                out += QString::number(weekdayDigit(date));
            } else {
                // Week of the year, weeks starting on Sunday, the week of 1 January first.
                const QDate jan1(date.year(), 1, 1);
                out += QString::number((date.dayOfYear() - 1 + weekdayDigit(jan1) - 1) / 7 + 1);
            }
            i += n;
            lastWasHour = false;
            continue;
        }
        if (lc == u'q') {
            out += QString::number((date.month() - 1) / 3 + 1);
            ++i;
            continue;
        }
        out += c; // "/" and ":" are always themselves, whatever the machine's settings
        ++i;
    }
    return out;
}

// Character masks: "@" shows a character or a blank, "&" a character or
// nothing, "!" fills the placeholders from the left, "<" and ">" change case.
QString formatText(const QString& text, const QString& mask) {
    int placeholders = 0;
    bool leftToRight = false, lower = false, upper = false;
    for (int i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        if (maskLiteral(mask, i, nullptr)) continue;
        if (c == u'@' || c == u'&') ++placeholders;
        else if (c == u'!') leftToRight = true;
        else if (c == u'<') lower = true;
        else if (c == u'>') upper = true;
    }
    QString s = upper ? UCase(text) : lower ? LCase(text) : text;
    QString overflow;
    if (s.size() > placeholders) {
        // Left to right: the characters that do not fit are cut from the left,
        // so Format("123", "!@@") is "23". Right to left: they are shown in front.
        if (!leftToRight) overflow = s.left(s.size() - placeholders);
        s = s.right(placeholders);
    }
    // Which character each placeholder takes.
    const int missing = placeholders - static_cast<int>(s.size());
    QString out = overflow;
    int ph = 0;
    for (int i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        if (maskLiteral(mask, i, &out)) continue;
        if (c == u'@' || c == u'&') {
            const int index = leftToRight ? ph : ph - missing;
            if (index >= 0 && index < s.size()) out += s[index];
            else if (c == u'@') out += u' ';
            ++ph;
            continue;
        }
        if (c == u'!' || c == u'<' || c == u'>') continue;
        out += c;
    }
    return out;
}

const QDate kDayZero(1899, 12, 30);

// The runtime's dates run from 1 January 100 to 31 December 9999: as day
// serials, from -657434 up to (not including) 2958466. A number outside them,
// or one that is no number at all (NaN, infinity), can't be a date, and turning
// it into one is the runtime's overflow error 6, as Format(1E+13, "mmm") and
// Format(1E+308, "dd/mm/yyyy") raise it.
constexpr double kFirstSerial = -657434.0;
constexpr double kPastLastSerial = 2958466.0;

QDateTime serialToMoment(double serial) {
    if (!(serial >= kFirstSerial && serial < kPastLastSerial)) Raise(6, QStringLiteral("Desbordamiento"));
    const double days = std::floor(serial);
    const long long seconds = std::llround((serial - days) * 86400.0);
    // A day serial has no time zone: counted in UTC, no summer-time gap moves its hour.
    const QDateTime m = QDateTime(kDayZero.addDays(static_cast<qint64>(days)), QTime(0, 0), Qt::UTC).addSecs(seconds);
    if (m.date().year() > 9999) Raise(6, QStringLiteral("Desbordamiento")); // the last second rounded up
    return m;
}

double momentToSerial(const QDate& date) { return static_cast<double>(kDayZero.daysTo(date)); }

int twoDigitYear(int y) { return y < 30 ? 2000 + y : 1900 + y; }

bool allDigits(const QString& s) {
    if (s.isEmpty() || s.size() > 4) return false;
    for (QChar c : s)
        if (!isDigit(c)) return false;
    return true;
}

int yearOf(const QString& part) {
    const int y = part.toInt();
    return part.size() <= 2 ? twoDigitYear(y) : y;
}

} // namespace

// ---------------------------------------------------------------- numbers ---

double Val(const QString& text) {
    int i = 0;
    const int n = static_cast<int>(text.size());
    auto skip = [&] { while (i < n && isValBlank(text[i])) ++i; };
    skip();
    if (i < n && text[i] == u'&') {
        ++i;
        skip();
        int radix = 8;
        if (i < n && (text[i] == u'H' || text[i] == u'h')) { radix = 16; ++i; }
        else if (i < n && (text[i] == u'O' || text[i] == u'o')) { ++i; }
        QString digits;
        for (;; ++i) {
            skip();
            if (i >= n) break;
            const QChar c = text[i];
            if (radix == 16 ? isHexDigit(c) : (c >= u'0' && c <= u'7')) digits += c;
            else break;
        }
        return radixValue(digits, radix);
    }

    std::string number;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        if (text[i] == u'-') number += '-';
        ++i;
    }
    std::string intDigits, fracDigits;
    bool point = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (isValBlank(c)) continue;
        if (isDigit(c)) {
            (point ? fracDigits : intDigits) += static_cast<char>(c.unicode());
        } else if (c == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (intDigits.empty() && fracDigits.empty()) return 0;

    long long exponent = 0;
    if (i < n) {
        const QChar e = text[i].toUpper();
        if (e == u'E' || e == u'D') {
            int j = i + 1;
            while (j < n && isValBlank(text[j])) ++j;
            bool negative = false;
            if (j < n && (text[j] == u'+' || text[j] == u'-')) { negative = text[j] == u'-'; ++j; }
            bool any = false;
            for (; j < n; ++j) {
                if (isValBlank(text[j])) continue;
                if (!isDigit(text[j])) break;
                any = true;
                if (exponent < 100000) exponent = exponent * 10 + (text[j].unicode() - u'0');
            }
            if (any && negative) exponent = -exponent;
            if (!any) exponent = 0;
        }
    }

    number += intDigits.empty() ? std::string("0") : intDigits;
    if (!fracDigits.empty()) number += '.' + fracDigits;
    if (exponent != 0) number += 'e' + std::to_string(exponent);

    // Rough decimal magnitude, to tell an overflow from an underflow.
    const auto intNz = intDigits.find_first_not_of('0');
    const auto fracNz = fracDigits.find_first_not_of('0');
    const bool nonZero = intNz != std::string::npos || fracNz != std::string::npos;
    long long magnitude = exponent;
    if (intNz != std::string::npos) magnitude += static_cast<long long>(intDigits.size() - intNz);
    else if (fracNz != std::string::npos) magnitude -= static_cast<long long>(fracNz);
    return parseAscii(number, nonZero, magnitude);
}

// Commas are taken as the grouping mark of the point-decimal setting, so
// "12,5" counts as numeric: such a text then reads through Val as 12, the one
// way this program reads numbers.
bool IsNumeric(const QString& text) {
    int i = 0, n = static_cast<int>(text.size());
    while (i < n && (text[i] == u' ' || text[i] == u'\t')) ++i;
    while (n > i && (text[n - 1] == u' ' || text[n - 1] == u'\t')) --n;
    if (i >= n) return false;
    if (text[i] == u'&') {
        ++i;
        bool hex = false;
        if (i < n && (text[i] == u'H' || text[i] == u'h')) { hex = true; ++i; }
        else if (i < n && (text[i] == u'O' || text[i] == u'o')) { ++i; }
        if (i >= n) return false;
        for (; i < n; ++i)
            if (!(hex ? isHexDigit(text[i]) : (text[i] >= u'0' && text[i] <= u'7'))) return false;
        return true;
    }
    if (text[i] == u'+' || text[i] == u'-') ++i;
    bool digits = false, point = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (isDigit(c)) digits = true;
        else if (c == u',' && digits && !point) continue;
        else if (c == u'.' && !point) point = true;
        else break;
    }
    if (!digits) return false;
    if (i < n && (text[i].toUpper() == u'E' || text[i].toUpper() == u'D')) {
        ++i;
        if (i < n && (text[i] == u'+' || text[i] == u'-')) ++i;
        bool expDigits = false;
        for (; i < n && isDigit(text[i]); ++i) expDigits = true;
        if (!expDigits) return false;
    }
    return i == n;
}

double CDbl(const QString& text) {
    if (!IsNumeric(text)) Raise(13, QStringLiteral("No coinciden los tipos"));
    return Val(text);
}

// Plain decimal text from 0.0001 up to below 1E15; outside that range the
// runtime's exponent form, "1E+15", "1.5E-05", with at least two exponent digits.
QString CStr(double value) {
    if (std::isnan(value)) return QStringLiteral("NaN");
    if (std::isinf(value)) return value < 0 ? QStringLiteral("-Infinito") : QStringLiteral("Infinito");
    if (value == 0) return QStringLiteral("0");
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific);
    std::string digits;
    int exponent = 0;
    splitScientific(buf, r.ptr, digits, exponent);
    while (digits.size() > 1 && digits.back() == '0') digits.pop_back();

    std::string out = value < 0 ? "-" : "";
    const double a = std::fabs(value);
    if (a >= 1e-4 && a < 1e15) {
        const Decimal d = layout(digits, exponent + 1);
        std::string frac = d.fracPart;
        while (!frac.empty() && frac.back() == '0') frac.pop_back();
        out += d.intPart.empty() ? std::string("0") : d.intPart;
        if (!frac.empty()) out += '.' + frac;
    } else {
        out += digits.substr(0, 1);
        if (digits.size() > 1) out += '.' + digits.substr(1);
        out += exponent < 0 ? "E-" : "E+";
        std::string e = std::to_string(std::abs(exponent));
        if (e.size() < 2) e.insert(0, 1, '0');
        out += e;
    }
    return fromAscii(out);
}

QString Format(double value, const QString& mask) {
    if (mask.isEmpty()) return CStr(value);
    switch (maskKind(mask)) {
    case MaskKind::Text:
        return formatText(CStr(value), mask);
    case MaskKind::Date:
        return formatDate(serialToMoment(value), mask);
    case MaskKind::Number:
        break;
    }
    return formatNumber(value, mask);
}

QString Format(const QDateTime& moment, const QString& mask) {
    if (mask.isEmpty()) {
        if (moment.time() == QTime(0, 0)) return formatDate(moment, QStringLiteral("dd/mm/yyyy"));
        return formatDate(moment, QStringLiteral("dd/mm/yyyy hh:mm:ss"));
    }
    switch (maskKind(mask)) {
    case MaskKind::Date:
        return formatDate(moment, mask);
    case MaskKind::Number: {
        const double serial = momentToSerial(moment.date()) + moment.time().msecsSinceStartOfDay() / 86400000.0;
        return formatNumber(serial, mask);
    }
    case MaskKind::Text:
        break;
    }
    return formatText(Format(moment, QString()), mask);
}

QString Format(const QDate& day, const QString& mask) {
    if (mask.isEmpty()) return formatDate(QDateTime(day, QTime(0, 0)), QStringLiteral("dd/mm/yyyy"));
    return Format(QDateTime(day, QTime(0, 0)), mask);
}

QString Format(const QTime& time, const QString& mask) {
    if (mask.isEmpty()) return formatDate(QDateTime(kDayZero, time), QStringLiteral("hh:mm:ss"));
    return Format(QDateTime(kDayZero, time), mask);
}

QString Format(const QString& text, const QString& mask) {
    if (mask.isEmpty()) return text;
    const MaskKind kind = maskKind(mask);
    if (kind == MaskKind::Text) return formatText(text, mask);
    if (IsNumeric(text)) return Format(Val(text), mask);
    const QDate date = CDate(text);
    if (date.isValid()) return Format(date, mask);
    return text; // neither a number nor a date: shown as it stands
}

// Round works on the binary value, scaled by the power of ten and rounded to
// even: Round(2.5) is 2, Round(0.125, 2) is 0.12, and Round(1.005, 2) is 1
// because 1.005 is held as 1.00499999999999989... (Format gives 1.01 there).
double Round(double value, int digits) {
    if (digits < 0) Raise(5, kInvalidCall);
    if (!std::isfinite(value)) return value;
    const double scale = std::pow(10.0, digits);
    const double scaled = value * scale;
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0) return value; // no fraction left
    const double whole = std::floor(scaled);
    const double frac = scaled - whole;
    double r = whole;
    if (frac > 0.5 || (frac == 0.5 && std::fmod(whole, 2.0) != 0)) r = whole + 1;
    return digits == 0 ? r : r / scale;
}

double Int(double value) { return std::floor(value); }
double Fix(double value) { return std::trunc(value); }

// ------------------------------------------------------------------ text ---

QString UCase(const QString& text) {
    QString out = text;
    for (QChar& c : out)
        if (!c.isSurrogate()) c = c.toUpper(); // one character for one: "ß" stays, lengths never change
    return out;
}

QString LCase(const QString& text) {
    QString out = text;
    for (QChar& c : out)
        if (!c.isSurrogate()) c = c.toLower();
    return out;
}

// Trim, LTrim and RTrim take off blanks only, not tabs or line ends.
QString LTrim(const QString& text) {
    int i = 0;
    while (i < text.size() && text[i] == u' ') ++i;
    return text.mid(i);
}

QString RTrim(const QString& text) {
    qsizetype n = text.size();
    while (n > 0 && text[n - 1] == u' ') --n;
    return text.left(n);
}

QString Trim(const QString& text) { return LTrim(RTrim(text)); }

QString Left(const QString& text, int length) {
    if (length < 0) Raise(5, kInvalidCall);
    return text.left(length);
}

QString Right(const QString& text, int length) {
    if (length < 0) Raise(5, kInvalidCall);
    return text.right(length);
}

// A length of -1 stands for the length left out; other negative lengths and a
// start below 1 are invalid calls, as in the runtime.
QString Mid(const QString& text, int start, int length) {
    if (start < 1 || length < -1) Raise(5, kInvalidCall);
    if (start > text.size()) return QString();
    return length < 0 ? text.mid(start - 1) : text.mid(start - 1, length);
}

QString Space(int count) {
    if (count < 0) Raise(5, kInvalidCall);
    return QString(count, u' ');
}

int Len(const QString& text) { return static_cast<int>(text.size()); }

int InStr(const QString& text, const QString& what, int start) {
    if (start < 1) Raise(5, kInvalidCall);
    if (text.isEmpty() || start > text.size()) return 0;
    if (what.isEmpty()) return start;
    const qsizetype at = text.indexOf(what, start - 1, Qt::CaseSensitive);
    return at < 0 ? 0 : static_cast<int>(at) + 1;
}

// An empty text gives no parts at all (upper bound -1), not one empty part.
QStringList Split(const QString& text, const QString& delimiter) {
    if (text.isEmpty()) return {};
    if (delimiter.isEmpty()) return {text};
    return text.split(delimiter, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

int StrComp(const QString& a, const QString& b) {
    const int c = QString::compare(a, b, Qt::CaseSensitive);
    return c < 0 ? -1 : c > 0 ? 1 : 0;
}

// ----------------------------------------------------------------- dates ---

// Day/month/year with "/" or "-" between, a two-digit year 00-29 in this
// century and 30-99 in the last. Like the runtime it is lenient: when the
// day/month order gives no date but month/day does ("12/31/2003"), that is
// taken; "31/12" is in the current year; "12/2003" is the 1st of that month.
QDate CDate(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty()) return {};
    QChar sep;
    for (QChar c : t)
        if (c == u'/' || c == u'-') { sep = c; break; }
    if (sep.isNull()) return {};
    const QStringList parts = t.split(sep);
    for (const QString& p : parts)
        if (!allDigits(p)) return {};
    auto valid = [](int y, int m, int d) {
        const QDate date(y, m, d);
        return date.isValid() && y >= 100 && y <= 9999 ? date : QDate();
    };
    const int a = parts[0].toInt();
    if (parts.size() == 3) {
        const int b = parts[1].toInt();
        const int y = yearOf(parts[2]);
        QDate d = valid(y, b, a);
        if (!d.isValid()) d = valid(y, a, b);
        return d;
    }
    if (parts.size() == 2) {
        const int b = parts[1].toInt();
        if (parts[1].size() <= 2) {
            const int y = vb::Date().year();
            QDate d = valid(y, b, a);
            if (!d.isValid()) d = valid(y, a, b);
            if (d.isValid()) return d;
        }
        return valid(yearOf(parts[1]), a, 1);
    }
    return {};
}

bool IsDate(const QString& text) { return CDate(text).isValid(); }

// ------------------------------------------------------------- Input # ----

InputFile::InputFile(const QString& contents) : data_(contents) {}

InputFile InputFile::open(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile()) Raise(53, QStringLiteral("No se ha encontrado el archivo"));
    if (!file.open(QIODevice::ReadOnly)) Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo"));
    return fromBytes(file.readAll());
}

// A file that starts with the UTF-16 byte-order mark (what Windows Notepad
// saves as "Unicode", little- or big-endian) is read as UTF-16. Any other file
// is read as UTF-8, and one that is not valid UTF-8 (written by a Windows
// editor in its 8-bit code page) as Latin-1.
InputFile InputFile::fromBytes(const QByteArray& bytes) {
    const bool littleEndian = bytes.startsWith("\xFF\xFE");
    const bool bigEndian = bytes.startsWith("\xFE\xFF");
    QString text;
    if (littleEndian || bigEndian) {
        QStringDecoder utf16(littleEndian ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        text = utf16(bytes.mid(2));
    } else {
        QStringDecoder utf8(QStringDecoder::Utf8);
        text = utf8(bytes);
        if (utf8.hasError()) text = QString::fromLatin1(bytes);
    }
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    return InputFile(text);
}

bool InputFile::eof() const { return pos_ >= data_.size(); }

namespace {
[[noreturn]] void pastEnd() { Raise(62, QStringLiteral("Se ha leído más allá del final del archivo")); }
} // namespace

// Unquoted values lose their trailing blanks as well; anything after the
// closing quote of a quoted value, up to the comma or line end, is dropped.
QString InputFile::next() {
    const int n = static_cast<int>(data_.size());
    if (pos_ >= n) pastEnd();
    while (pos_ < n && (data_[pos_] == u' ' || data_[pos_] == u'\t')) ++pos_;
    QString value;
    if (pos_ < n && data_[pos_] == u'"') {
        const int close = static_cast<int>(data_.indexOf(u'"', pos_ + 1));
        const int end = close < 0 ? n : close;
        value = data_.mid(pos_ + 1, end - pos_ - 1);
        pos_ = close < 0 ? n : close + 1;
        while (pos_ < n && data_[pos_] != u',' && data_[pos_] != u'\r' && data_[pos_] != u'\n') ++pos_;
    } else {
        const int begin = pos_;
        while (pos_ < n && data_[pos_] != u',' && data_[pos_] != u'\r' && data_[pos_] != u'\n') ++pos_;
        value = data_.mid(begin, pos_ - begin);
        qsizetype len = value.size();
        while (len > 0 && (value[len - 1] == u' ' || value[len - 1] == u'\t')) --len;
        value.truncate(len);
    }
    if (pos_ < n) {
        if (data_[pos_] == u',') {
            ++pos_;
        } else if (data_[pos_] == u'\r') {
            ++pos_;
            if (pos_ < n && data_[pos_] == u'\n') ++pos_;
        } else if (data_[pos_] == u'\n') {
            ++pos_;
        }
    }
    return value;
}

QString InputFile::lineInput() {
    const int n = static_cast<int>(data_.size());
    if (pos_ >= n) pastEnd();
    const int begin = pos_;
    while (pos_ < n && data_[pos_] != u'\r' && data_[pos_] != u'\n') ++pos_;
    const QString line = data_.mid(begin, pos_ - begin);
    if (pos_ < n && data_[pos_] == u'\r') ++pos_;
    if (pos_ < n && data_[pos_] == u'\n') ++pos_;
    return line;
}

} // namespace vb
