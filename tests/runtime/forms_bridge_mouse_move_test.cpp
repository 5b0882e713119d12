// MouseMove: the control under the mouse hears it, with the buttons held, the
// shift keys and the place in twips; the window hears it only over its bare
// area. The windows' help lines hang on it.
#include "runtime/environment.h"
#include "runtime/forms.h"
#include "runtime/listbox.h"
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class HelpForm : public vb::Form {
public:
    QPushButton* Commandaceptar = new QPushButton(QStringLiteral("Aceptar"), this);
    QPushButton* Commandsalir = new QPushButton(QStringLiteral("Salir"), this);
    vb::ListBox* Listarticulos = new vb::ListBox(this);
    QStringList log;

    HelpForm() {
        Commandaceptar->setGeometry(20, 20, 100, 30);
        Commandsalir->setGeometry(20, 60, 100, 30);
        Listarticulos->setGeometry(140, 20, 120, 120);
        Listarticulos->AddItem(QStringLiteral("TORNILLO"));
        OnMouseMove(this, [this](int b, int s, float, float) { log << QStringLiteral("Form %1 %2").arg(b).arg(s); });
        OnMouseMove(Commandaceptar, [this](int b, int s, float x, float y) {
            log << QStringLiteral("Commandaceptar %1 %2 %3 %4").arg(b).arg(s).arg(x).arg(y);
        });
        OnMouseMove(Listarticulos, [this](int, int, float, float) { log << QStringLiteral("Listarticulos"); });
    }
};

class MouseMove : public ::testing::Test {
protected:
    vb::InstalledEnvironment env{{}};
    HelpForm form;
    void SetUp() override {
        form.resize(300, 200);
        form.show();
        form.activateWindow();
        QApplication::processEvents();
    }
    double twips(int pixels) const { return pixels * 1440.0 / form.logicalDpiX(); }
};

TEST_F(MouseMove, TheControlUnderTheMouseHearsItInTwipsFromItsCorner) {
    QTest::mouseMove(&form, QPoint(5, 150));
    form.log.clear();
    QTest::mouseMove(form.Commandaceptar, QPoint(10, 4));
    ASSERT_EQ(form.log.size(), 1);
    EXPECT_EQ(form.log[0], QStringLiteral("Commandaceptar 0 0 %1 %2").arg(float(twips(10))).arg(float(twips(4))));
}

TEST_F(MouseMove, AControlWithoutMouseMoveLetsNothingThroughToTheWindow) {
    QTest::mouseMove(form.Commandsalir, QPoint(10, 10));
    EXPECT_FALSE(form.log.contains(QStringLiteral("Form 0 0")));
}

TEST_F(MouseMove, TheWindowHearsItOverItsBareArea) {
    QTest::mouseMove(form.Commandaceptar, QPoint(10, 10));
    form.log.clear();
    QTest::mouseMove(&form, QPoint(5, 150));
    EXPECT_EQ(form.log, QStringList{QStringLiteral("Form 0 0")});
}

TEST_F(MouseMove, AListHearsItOnItsRows) {
    QTest::mouseMove(form.Listarticulos->viewport(), QPoint(10, 5));
    EXPECT_EQ(form.log, QStringList{QStringLiteral("Listarticulos")});
}

} // namespace
