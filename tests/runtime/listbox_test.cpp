// The list box as the products window uses its list of articles: entries
// added and removed, ListIndex, and Click and DblClick from real mouse and
// key events.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/listbox.h"
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class ListBoxTest : public ::testing::Test {
protected:
    vb::ListBox ListArticulos;
    QStringList events;

    void SetUp() override {
        for (const char* r : {"0001          TORNILLO", "0002          TUERCA", "0003          ARANDELA"})
            ListArticulos.AddItem(r);
        QObject::connect(&ListArticulos, &vb::ListBox::Click, [this] {
            events << QStringLiteral("Click %1").arg(ListArticulos.ListIndex());
        });
        QObject::connect(&ListArticulos, &vb::ListBox::DblClick, [this] {
            events << QStringLiteral("DblClick %1").arg(ListArticulos.ListIndex());
        });
        ListArticulos.resize(300, 200);
        ListArticulos.show();
        ListArticulos.activateWindow();
        QApplication::processEvents();
    }
    QPoint row(int i) { return ListArticulos.visualItemRect(ListArticulos.item(i)).center(); }
    void doubleClick(int i) {
        QWidget* v = ListArticulos.viewport();
        QTest::mousePress(v, Qt::LeftButton, Qt::NoModifier, row(i));
        QTest::mouseRelease(v, Qt::LeftButton, Qt::NoModifier, row(i));
        QTest::mouseDClick(v, Qt::LeftButton, Qt::NoModifier, row(i));
        QTest::mouseRelease(v, Qt::LeftButton, Qt::NoModifier, row(i));
    }
};

TEST_F(ListBoxTest, EntriesAreAddedAtTheEndAndNoneIsChosen) {
    EXPECT_EQ(ListArticulos.ListCount(), 3);
    EXPECT_EQ(ListArticulos.List(1), "0002          TUERCA");
    EXPECT_EQ(ListArticulos.List(7), "");
    EXPECT_EQ(ListArticulos.ListIndex(), -1);
    EXPECT_EQ(ListArticulos.Text(), "");
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(ListBoxTest, GettingTheFocusChoosesNothing) {
    ListArticulos.setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    EXPECT_EQ(ListArticulos.ListIndex(), -1);
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(ListBoxTest, AClickOnARowChoosesItAndRaisesClickAlsoOnTheChosenRow) {
    QTest::mouseClick(ListArticulos.viewport(), Qt::LeftButton, Qt::NoModifier, row(1));
    EXPECT_EQ(ListArticulos.ListIndex(), 1);
    EXPECT_EQ(ListArticulos.Text(), "0002          TUERCA");
    QTest::mouseClick(ListArticulos.viewport(), Qt::LeftButton, Qt::NoModifier, row(1));
    EXPECT_EQ(events, (QStringList{"Click 1", "Click 1"}));
}

TEST_F(ListBoxTest, ADoubleClickRaisesClickThenDblClickOnTheRow) {
    doubleClick(2);
    EXPECT_EQ(events, (QStringList{"Click 2", "DblClick 2"}));
    // Left(row, 13) is how the window takes the reference back.
    EXPECT_EQ(ListArticulos.Text().left(13).trimmed(), "0003");
}

TEST_F(ListBoxTest, TheArrowKeysChooseAndRaiseClick) {
    ListArticulos.SetListIndex(0);
    events.clear();
    ListArticulos.setFocus();
    QTest::keyClick(&ListArticulos, Qt::Key_Down);
    EXPECT_EQ(ListArticulos.ListIndex(), 1);
    EXPECT_EQ(events, QStringList{"Click 1"});
}

TEST_F(ListBoxTest, SettingListIndexRaisesClickEvenForTheChosenEntry) {
    // "Choose the last and then the first".
    ListArticulos.SetListIndex(2);
    ListArticulos.SetListIndex(0);
    ListArticulos.SetListIndex(0);
    EXPECT_EQ(events, (QStringList{"Click 2", "Click 0", "Click 0"}));
    ListArticulos.SetListIndex(-1);
    EXPECT_EQ(ListArticulos.ListIndex(), -1);
    EXPECT_EQ(events.size(), 3);
}

TEST_F(ListBoxTest, RemoveItemAndClearRaiseNoClick) {
    ListArticulos.SetListIndex(1);
    events.clear();
    ListArticulos.RemoveItem(1);
    EXPECT_EQ(ListArticulos.ListCount(), 2);
    EXPECT_EQ(ListArticulos.ListIndex(), -1);
    EXPECT_EQ(ListArticulos.List(1), "0003          ARANDELA");
    ListArticulos.Clear();
    EXPECT_EQ(ListArticulos.ListCount(), 0);
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(ListBoxTest, IndexesOutsideTheListAreRuntimeErrors) {
    auto number = [](const std::function<void()>& f) {
        try {
            f();
        } catch (const vb::RuntimeError& e) {
            return e.Number;
        }
        return 0;
    };
    EXPECT_EQ(number([&] { ListArticulos.RemoveItem(3); }), 5);
    EXPECT_EQ(number([&] { ListArticulos.SetListIndex(3); }), 380);
    EXPECT_EQ(number([&] { ListArticulos.SetListIndex(-2); }), 380);
}

} // namespace
