// The bridge hands the mouse events of lists, grids, tab strips and calendars
// to the window's event procedures: list and table views take the mouse on
// their viewport, and a double click there reaches DblClick. A combo's entry
// taken again from its open list is a Click.
#include "runtime/calendar.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/flexgrid.h"
#include "runtime/forms.h"
#include "runtime/listbox.h"
#include "runtime/msgbox.h"
#include "runtime/sstab.h"
#include "support/message_boxes.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QListWidget>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class MouseForm : public vb::Form {
public:
    vb::ListBox* ListArticulos = new vb::ListBox(this);
    QListWidget* Listaplana = new QListWidget(this);
    vb::FlexGrid* Gridfacturas = new vb::FlexGrid(this);
    vb::SSTab* SSTab1 = new vb::SSTab(this);
    vb::CalendarControl* Calendario = new vb::CalendarControl(this);
    vb::ComboBox* Combocodigo = new vb::ComboBox(this);
    QStringList log;
    bool failOnDblClick = false;

    MouseForm() {
        auto* l = new QVBoxLayout(this);
        for (QWidget* w : std::initializer_list<QWidget*>{ListArticulos, Listaplana, Gridfacturas, SSTab1, Calendario,
                                                        Combocodigo})
            l->addWidget(w);
        ListArticulos->AddItem("0001 TORNILLO");
        ListArticulos->AddItem("0002 TUERCA");
        Listaplana->addItem("uno");
        Gridfacturas->SetRows(3);
        Gridfacturas->SetCols(3);
        SSTab1->addTab(new QWidget, "Datos del Producto");
        SSTab1->addTab(new QWidget, "Proveedor");
        Combocodigo->AddItem("1");
        Combocodigo->AddItem("2");
        OnClick(ListArticulos, [this] { log << "ListArticulos_Click " + ListArticulos->Text(); });
        OnDblClick(ListArticulos, [this] {
            log << "ListArticulos_DblClick " + ListArticulos->Text();
            if (failOnDblClick) vb::Raise(13, QStringLiteral("No coinciden los tipos"));
        });
        OnDblClick(Listaplana, [this] { log << "Listaplana_DblClick"; });
        OnClick(Gridfacturas, [this] {
            log << QStringLiteral("Gridfacturas_Click %1 %2").arg(Gridfacturas->Row()).arg(Gridfacturas->Col());
        });
        OnDblClick(Gridfacturas, [this] {
            log << QStringLiteral("Gridfacturas_DblClick %1 %2").arg(Gridfacturas->Row()).arg(Gridfacturas->Col());
        });
        OnClick(SSTab1, [this](int PreviousTab) { log << QStringLiteral("SSTab1_Click %1").arg(PreviousTab); });
        OnClick(Calendario, [this] { log << "Calendario_Click " + Calendario->Value().toString("dd/MM/yyyy"); });
        OnClick(Combocodigo, [this] { log << "Combocodigo_Click " + Combocodigo->Text(); });
    }
};

void doubleClick(QWidget* w, const QPoint& at) {
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, at);
}

class BridgeMouse : public ::testing::Test {
protected:
    veltest::RecordedBoxes boxes;
    bool ended = false;
    vb::InstalledEnvironment env{{.messageBoxes = &boxes, .onEnd = [this] { ended = true; }}};
    MouseForm form;

    void SetUp() override {
        form.resize(500, 900);
        form.show();
        form.activateWindow();
        QApplication::processEvents();
    }
};

TEST_F(BridgeMouse, ARealDoubleClickOnAListRowReachesDblClickAfterClick) {
    auto* l = form.ListArticulos;
    doubleClick(l->viewport(), l->visualItemRect(l->item(1)).center());
    EXPECT_EQ(form.log, (QStringList{"ListArticulos_Click 0002 TUERCA", "ListArticulos_DblClick 0002 TUERCA"}));
}

TEST_F(BridgeMouse, ADoubleClickOnAPlainListsViewportReachesItsDblClick) {
    auto* l = form.Listaplana;
    doubleClick(l->viewport(), l->visualItemRect(l->item(0)).center());
    EXPECT_EQ(form.log, QStringList{"Listaplana_DblClick"});
}

TEST_F(BridgeMouse, AnErrorInDblClickEndsTheProgramWithItsMessage) {
    form.failOnDblClick = true;
    auto* l = form.ListArticulos;
    doubleClick(l->viewport(), l->visualItemRect(l->item(0)).center());
    EXPECT_TRUE(ended);
    ASSERT_EQ(boxes.texts.size(), 1);
    EXPECT_TRUE(boxes.texts[0].contains("No coinciden los tipos"));
}

TEST_F(BridgeMouse, GridClickAndDoubleClickCarryTheCell) {
    auto* g = form.Gridfacturas;
    const QPoint at = g->visualRect(g->model()->index(2, 1)).center();
    doubleClick(g->viewport(), at);
    EXPECT_EQ(form.log, (QStringList{"Gridfacturas_Click 2 1", "Gridfacturas_DblClick 2 1"}));
}

TEST_F(BridgeMouse, ATabClickCarriesThePreviousPage) {
    QTabBar* bar = form.SSTab1->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(1).center());
    EXPECT_EQ(form.log, QStringList{"SSTab1_Click 0"});
}

TEST_F(BridgeMouse, AClickOnACalendarDayReachesItsClick) {
    form.Calendario->SetValue(QDate(2003, 2, 17));
    auto* view = form.Calendario->page()->findChild<QTableView*>("qt_calendar_calendarview");
    ASSERT_NE(view, nullptr);
    // Row 0 is the day names, column 0 the week numbers; 01/02/2003 is a Saturday.
    QModelIndex twentieth;
    for (int r = 1; r < 7 && !twentieth.isValid(); ++r)
        for (int c = 1; c < 8; ++c)
            if (view->model()->index(r, c).data().toString() == "20") twentieth = view->model()->index(r, c);
    ASSERT_TRUE(twentieth.isValid());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(twentieth).center());
    EXPECT_EQ(form.log, QStringList{"Calendario_Click 20/02/2003"});
}

TEST_F(BridgeMouse, TakingTheChosenComboEntryAgainFromItsListIsAClick) {
    form.Combocodigo->SetListIndex(0);
    form.log.clear();
    auto take = [&](int i) {
        form.Combocodigo->showPopup();
        QAbstractItemView* v = form.Combocodigo->view();
        v->setCurrentIndex(v->model()->index(i, 0));
        QTest::keyClick(v, Qt::Key_Return);
        QApplication::processEvents();
    };
    take(0);
    take(1);
    take(1);
    EXPECT_EQ(form.log, (QStringList{"Combocodigo_Click 1", "Combocodigo_Click 2", "Combocodigo_Click 2"}));
}

} // namespace
