// The fonts the layouts name are drawn with fonts of this system that keep
// their measures: "Courier New" with Liberation Mono (the same widths, fixed
// pitch, so that the columns of blanks hold), "Verdana" with DejaVu Sans.
#include "runtime/printer.h"
#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

// What fontconfig itself gives for a family name.
QString fcMatch(const QString& name) {
    QProcess p;
    p.start(QStringLiteral("fc-match"), {QStringLiteral("-f"), QStringLiteral("%{family[0]}"), name});
    if (!p.waitForFinished(10000)) return QStringLiteral("(fc-match did not run)");
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

QFontInfo resolved(const QString& name) {
    vb::InstallPrintFontSubstitutes();
    QFont f(name);
    f.setPixelSize(240);
    return QFontInfo(f);
}

TEST(PrintFonts, CourierNewIsLiberationMonoForFontconfigAndForTheProgram) {
    EXPECT_EQ(fcMatch("Courier New"), "Liberation Mono");
    EXPECT_EQ(vb::PrintFontFamily("Courier New"), "Liberation Mono");
    const QFontInfo info = resolved("Courier New");
    EXPECT_EQ(info.family(), "Liberation Mono");
    EXPECT_TRUE(info.fixedPitch());
}

TEST(PrintFonts, VerdanaIsDejaVuSansForFontconfigAndForTheProgram) {
    EXPECT_EQ(fcMatch("Verdana"), "DejaVu Sans");
    EXPECT_EQ(vb::PrintFontFamily("Verdana"), "DejaVu Sans");
    EXPECT_EQ(resolved("Verdana").family(), "DejaVu Sans");
}

// Courier New is 1229 units of 2048 wide: 0.6 of its size for every character,
// blanks included.
TEST(PrintFonts, TheFixedPitchFontHasCourierNewsWidth) {
    vb::InstallPrintFontSubstitutes();
    QFont f(vb::PrintFontFamily("Courier New"));
    f.setPixelSize(2048);
    f.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF m(f);
    for (const QString& s : {QStringLiteral("W"), QStringLiteral(" "), QStringLiteral("i"), QStringLiteral("—")})
        EXPECT_NEAR(m.horizontalAdvance(s), 1229, 1) << qPrintable(s);
}

} // namespace
