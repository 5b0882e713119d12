// The tab strip of the products and customers windows: pages by caption, Tab,
// and Click with the page that was in front, from a real click on a tab.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/sstab.h"
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class SSTabTest : public ::testing::Test {
protected:
    vb::SSTab SSTab1;
    QLineEdit* Textreferencia = nullptr;
    QList<int> clicks;

    void SetUp() override {
        auto* datos = new QWidget;
        Textreferencia = new QLineEdit(datos);
        (new QVBoxLayout(datos))->addWidget(Textreferencia);
        SSTab1.addTab(datos, "Datos del Producto");
        SSTab1.addTab(new QWidget, "&Proveedor");
        QObject::connect(&SSTab1, &vb::SSTab::Click, [this](int previous) { clicks << previous; });
        SSTab1.resize(400, 300);
        SSTab1.show();
    }
};

TEST_F(SSTabTest, PagesAreFoundByCaption) {
    EXPECT_EQ(SSTab1.Tabs(), 2);
    EXPECT_EQ(SSTab1.TabByCaption("Proveedor"), 1);
    EXPECT_EQ(SSTab1.TabByCaption("Datos del Producto"), 0);
    EXPECT_EQ(SSTab1.TabByCaption("Clientes"), -1);
    EXPECT_EQ(SSTab1.TabCaption(1), "&Proveedor");
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(SSTabTest, AClickOnATabBringsItsPageAndRaisesClickWithThePreviousPage) {
    QTabBar* bar = SSTab1.tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(1).center());
    EXPECT_EQ(SSTab1.Tab(), 1);
    EXPECT_EQ(clicks, QList<int>{0});
    // The box on the page out of sight keeps its own Visible.
    EXPECT_FALSE(Textreferencia->isVisible());
    EXPECT_FALSE(Textreferencia->isHidden());
}

TEST_F(SSTabTest, SettingTabChangesThePageAndRaisesClick) {
    SSTab1.SetTab(1);
    SSTab1.SetTab(1);
    SSTab1.SetTab(0);
    EXPECT_EQ(clicks, (QList<int>{0, 1}));
    try {
        SSTab1.SetTab(2);
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 380);
    }
}

} // namespace
