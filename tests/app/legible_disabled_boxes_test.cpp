// A record shown in Consultar or Borrar sits in disabled text boxes: they must
// still read well (contrast of at least 4.5:1) and still look disabled. Measured
// on the stores window as the program draws it, with the program's own look.
#include "app/program.h"
#include "masterdata/ftienda.h"
#include "runtime/app.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QStyleFactory>
#include <cmath>
#include <gtest/gtest.h>

namespace {

double luminance(QColor c) {
    auto channel = [](int v) {
        const double s = v / 255.0;
        return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c.red()) + 0.7152 * channel(c.green()) + 0.0722 * channel(c.blue());
}

double contrast(QColor a, QColor b) {
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// The box as drawn: its background (to the right, past the text) and the
// darkest pixel of its text.
struct Drawn {
    QColor background, text;
};

Drawn drawn(QLineEdit* box) {
    const QImage img = box->grab().toImage();
    Drawn d;
    d.background = img.pixelColor(img.width() - 6, img.height() / 2);
    d.text = d.background;
    for (int y = 3; y < img.height() - 3; ++y)
        for (int x = 3; x < img.width() / 2; ++x)
            if (luminance(img.pixelColor(x, y)) < luminance(d.text)) d.text = img.pixelColor(x, y);
    return d;
}

class StoresWindowInConsult : public ::testing::Test {
protected:
    void SetUp() override {
        vel::SetUpApplication(*qApp);
        window.Load();
        nombre = window.findChild<QLineEdit*>("Textnombre");
        ASSERT_TRUE(nombre);
        nombre->setText("CENTRAL");
        window.show();
        QApplication::processEvents();
    }
    vel::Ftienda window;
    QLineEdit* nombre = nullptr;
};

TEST_F(StoresWindowInConsult, ADisabledBoxReadsAtLeastFourAndAHalfToOne) {
    ASSERT_FALSE(nombre->isEnabled());
    const QPalette& p = nombre->palette();
    EXPECT_GE(contrast(p.color(QPalette::Disabled, QPalette::Text), p.color(QPalette::Disabled, QPalette::Base)), 4.5);
    const Drawn d = drawn(nombre);
    EXPECT_EQ(d.background, p.color(QPalette::Disabled, QPalette::Base));
    EXPECT_GE(contrast(d.text, d.background), 4.5) << qPrintable(d.text.name()) << " on "
                                                    << qPrintable(d.background.name());
}

TEST_F(StoresWindowInConsult, ADisabledBoxStillLooksDisabled) {
    const Drawn off = drawn(nombre);
    nombre->setEnabled(true);
    QApplication::processEvents();
    const Drawn on = drawn(nombre);
    // Grey box and grey text, where an enabled one is black on white.
    EXPECT_LT(luminance(off.background), luminance(on.background));
    EXPECT_GT(luminance(off.text), luminance(on.text));
}

TEST(ToolkitLook, WithoutTheProgramsLookADisabledBoxWouldNotRead) {
    // The toolkit's own colours for a disabled box, which the program replaces.
    QStyle* fusion = QStyleFactory::create("Fusion");
    const QPalette p = fusion->standardPalette();
    EXPECT_LT(contrast(p.color(QPalette::Disabled, QPalette::Text), p.color(QPalette::Disabled, QPalette::Base)), 4.5);
    delete fusion;
    EXPECT_NE(vb::DisabledTextColor(), p.color(QPalette::Disabled, QPalette::Text));
}

} // namespace
