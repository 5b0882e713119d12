// The forms runtime's text and number functions, with exactly the behaviour the
// program relies on. Every window computes with these on text: amounts live as
// text in labels and grid cells, are read with Val and written back with Format.
//
// The decimal mark is always the point, whatever the machine's locale.
#pragma once
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTime>

namespace vb {

// Longest leading number of the text: blanks (space, tab, line feed) anywhere are
// skipped, an optional sign, digits, one point and digits, an optional exponent
// (E or D). Reading stops at the first other character; nothing gives 0.
// "12A" -> 12, "12,5" -> 12, " 1 2 " -> 12, "" -> 0. "&H"/"&O" prefixes are read
// as hexadecimal/octal whole numbers.
double Val(const QString& text);

// True when the whole text (blanks around it allowed) is a number: sign, digits,
// at most one decimal point, optional exponent; "&H"/"&O" numbers too. Commas
// among the whole digits are taken as grouping marks, so "12,5" is numeric (and
// then reads as 12 through Val). Empty text is not numeric.
bool IsNumeric(const QString& text);

// Conversion of a text to a Double; raises the runtime error 13 "No coinciden los
// tipos" when the text is not numeric. The value is read as Val reads it.
double CDbl(const QString& text);

// The plain text of a Double with all its digits: the shortest text that reads
// back as the same Double, point as decimal mark, no trailing zeros, no exponent
// for ordinary magnitudes. 126.21551724137932, 12.5, 3, -0.25.
QString CStr(double value);

// Format of a number with a mask. Masks in use: "0.00", "0.000", "00", "0000",
// "00000", "000000", "0000000000", "#", "#.###". Rounds half away from zero.
// "#" turns 0 into an empty text.
QString Format(double value, const QString& mask);
// Format of a date/time: "dd/mm/yyyy", "yyyymmdd", "yymm", "mm", "hh:mm:ss",
// "w dd/mm/yyyy" (w: weekday digit, 1 Sunday .. 7 Saturday).
QString Format(const QDateTime& moment, const QString& mask);
QString Format(const QDate& day, const QString& mask);
// Format of a time of day, as Format(Time, "hh:mm:ss").
QString Format(const QTime& time, const QString& mask);
// Format applied to a text: a numeric text is formatted as its number, a text
// holding a date (day/month/year order) as that date, and any other text goes
// through the character masks ("!@@": left-aligned, padded with blanks to the
// width of the @s, cut to it from the left) or is returned as it stands.
QString Format(const QString& text, const QString& mask);

// Round as the runtime rounds: to even on a tie ("banker's rounding").
double Round(double value, int digits = 0);
// Largest whole number not above the value.
double Int(double value);
// Whole part toward zero.
double Fix(double value);

// Upper case including the Spanish letters (ñ -> Ñ, á -> Á, ü -> Ü).
QString UCase(const QString& text);
QString LCase(const QString& text);
QString Trim(const QString& text);
QString LTrim(const QString& text);
QString RTrim(const QString& text);
// Left(s, n): the first n characters (all of them when n is past the end).
QString Left(const QString& text, int length);
QString Right(const QString& text, int length);
// Mid(s, start, length): 1-based; a start past the end gives ""; a length past
// the end or negative (left out) takes the rest.
QString Mid(const QString& text, int start, int length = -1);
QString Space(int count);
int Len(const QString& text);
// Position (1-based) of what in text from start, 0 when absent.
int InStr(const QString& text, const QString& what, int start = 1);
QStringList Split(const QString& text, const QString& delimiter = QStringLiteral(" "));
// Binary comparison by character codes: -1, 0, 1.
int StrComp(const QString& a, const QString& b);

// Reads text as a date in day/month/year order ("31/12/2003", "1/2/03").
// An invalid QDate when the text is no date.
QDate CDate(const QString& text);
bool IsDate(const QString& text);

// Reads the values of a sequential file as the runtime's "Input #" statement
// does on string variables: a value ends at a comma or at the end of a line;
// leading blanks are skipped; a value in double quotes may hold commas and loses
// its quotes. Reading past the last value raises runtime error 62
// "Se ha leído más allá del final del archivo".
class InputFile {
public:
    explicit InputFile(const QString& contents);
    // Opens a file for input; raises error 53 "No se ha encontrado el archivo" when missing.
    static InputFile open(const QString& path);
    // The values of a file's bytes, decoded as open decodes them.
    static InputFile fromBytes(const QByteArray& bytes);
    QString next();
    // The runtime's "Line Input #": the rest of the current line as it stands
    // (blanks, commas and quotes kept). Past the end raises error 62 too.
    QString lineInput();
    bool eof() const;

private:
    QString data_;
    int pos_ = 0;
};

} // namespace vb
