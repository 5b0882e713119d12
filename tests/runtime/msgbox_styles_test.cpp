// The real message box shows the buttons, icon and default button of each
// style number, with Spanish button texts.
#include "runtime/app.h"
#include "runtime/msgbox.h"
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

struct Seen {
    QStringList buttons;
    QString defaultButton;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString title;
};

// Shows a real box, reads it while it is open, and presses its default button.
Seen look(int style, const QString& title = QString()) {
    Seen seen;
    QTimer::singleShot(0, [&] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(w);
            if (!box || !box->isVisible()) continue;
            for (QAbstractButton* b : box->buttons()) seen.buttons << b->text();
            seen.defaultButton = box->defaultButton() ? box->defaultButton()->text() : QString();
            seen.icon = box->icon();
            seen.title = box->windowTitle();
            box->defaultButton()->click();
        }
    });
    vb::MsgBox("texto", style, title);
    return seen;
}

class RealMessageBox : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        vb::SetMessageBoxService(nullptr);
        vb::InstallSpanish(*qApp);
    }
};

TEST_F(RealMessageBox, Style0IsOneAcceptButtonWithTheProgramNameAsTitle) {
    const Seen s = look(0);
    EXPECT_EQ(s.buttons, QStringList{"Aceptar"});
    EXPECT_EQ(s.icon, QMessageBox::NoIcon);
    EXPECT_EQ(s.title, "Velmarinda");
}

TEST_F(RealMessageBox, Style276IsYesNoCriticalWithNoAsDefault) {
    const Seen s = look(276, "Advertencia");
    EXPECT_EQ(s.buttons.size(), 2);
    EXPECT_TRUE(s.buttons.contains("&Sí"));
    EXPECT_TRUE(s.buttons.contains("&No"));
    EXPECT_EQ(s.defaultButton, "&No");
    EXPECT_EQ(s.icon, QMessageBox::Critical);
    EXPECT_EQ(s.title, "Advertencia");
}

TEST_F(RealMessageBox, EachStyleHasItsIconAndButtons) {
    struct Case {
        int style;
        int buttons;
        QMessageBox::Icon icon;
        QString defaultButton;
    };
    const Case cases[] = {
        {1, 2, QMessageBox::NoIcon, "Aceptar"},       {4, 2, QMessageBox::NoIcon, "&Sí"},
        {16, 1, QMessageBox::Critical, "Aceptar"},    {32, 1, QMessageBox::Question, "Aceptar"},
        {36, 2, QMessageBox::Question, "&Sí"},        {48, 1, QMessageBox::Warning, "Aceptar"},
        {49, 2, QMessageBox::Warning, "Aceptar"},     {64, 1, QMessageBox::Information, "Aceptar"},
        {292, 2, QMessageBox::Question, "&No"},       {304, 1, QMessageBox::Warning, "Aceptar"},
    };
    for (const Case& c : cases) {
        const Seen s = look(c.style);
        EXPECT_EQ(s.buttons.size(), c.buttons) << c.style;
        EXPECT_EQ(s.icon, c.icon) << c.style;
        EXPECT_EQ(s.defaultButton, c.defaultButton) << c.style;
    }
}

} // namespace
