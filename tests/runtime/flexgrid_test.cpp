// The document grid behaves as the runtime's flex grid: the heading row counts
// in Rows, cells are read and written by position, Clear keeps the size.
#include "runtime/errors.h"
#include "runtime/flexgrid.h"
#include <QTest>
#include <gtest/gtest.h>

TEST(FlexGrid, TheHeadingRowCountsInRows) {
    vb::FlexGrid g;
    g.SetCols(5);
    g.SetRows(1);
    g.SetTextMatrix(0, 1, "Referencia");
    g.SetRows(g.Rows() + 1);
    g.SetTextMatrix(g.Rows() - 1, 1, "TORN-12");
    EXPECT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.TextMatrix(0, 1), "Referencia");
    EXPECT_EQ(g.TextMatrix(1, 1), "TORN-12");
    EXPECT_EQ(g.TextMatrix(1, 2), "");
}

TEST(FlexGrid, TextIsTheCurrentCell) {
    vb::FlexGrid g;
    g.SetRows(3);
    g.SetCols(3);
    g.SetRow(2);
    g.SetCol(1);
    g.SetText("5.40");
    EXPECT_EQ(g.TextMatrix(2, 1), "5.40");
    EXPECT_EQ(g.Text(), "5.40");
}

TEST(FlexGrid, ClearEmptiesEveryCellAndKeepsTheSize) {
    vb::FlexGrid g;
    g.SetRows(3);
    g.SetCols(2);
    g.SetTextMatrix(0, 0, "Cab");
    g.SetTextMatrix(2, 1, "x");
    g.Clear();
    EXPECT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.TextMatrix(0, 0), "");
    EXPECT_EQ(g.TextMatrix(2, 1), "");
}

TEST(FlexGrid, ACellOutsideTheGridIsARuntimeError) {
    vb::FlexGrid g;
    g.SetRows(2);
    g.SetCols(2);
    try {
        g.TextMatrix(5, 0);
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 381);
    }
}

TEST(FlexGrid, ColumnWidthsAreInTwips) {
    vb::FlexGrid g;
    g.SetCols(3);
    g.SetColWidth(1, 1500);
    EXPECT_EQ(g.ColWidth(1), 1500);
}

TEST(FlexGrid, AClickMakesTheCellUnderTheMouseCurrent) {
    vb::FlexGrid g;
    g.SetRows(4);
    g.SetCols(3);
    g.resize(400, 300);
    g.show();
    int clicks = 0;
    QObject::connect(&g, &vb::FlexGrid::Click, [&] { ++clicks; });
    const QRect r = g.visualRect(g.model()->index(2, 1));
    QTest::mouseClick(g.viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(g.Row(), 2);
    EXPECT_EQ(g.Col(), 1);
}

TEST(FlexGrid, ADoubleClickOnACellRaisesClickThenDblClickWithRowAndColOnIt) {
    vb::FlexGrid g;
    g.SetRows(5);
    g.SetCols(4);
    g.resize(400, 300);
    g.show();
    QStringList events;
    QObject::connect(&g, &vb::FlexGrid::Click, [&] { events << QStringLiteral("Click %1,%2").arg(g.Row()).arg(g.Col()); });
    QObject::connect(&g, &vb::FlexGrid::DblClick,
                     [&] { events << QStringLiteral("DblClick %1,%2").arg(g.Row()).arg(g.Col()); });
    const QPoint at = g.visualRect(g.model()->index(3, 2)).center();
    QTest::mousePress(g.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(g.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(g.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(g.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    EXPECT_EQ(events, (QStringList{"Click 3,2", "DblClick 3,2"}));
}

TEST(FlexGrid, ScrollingToTheEndShowsTheLastRow) {
    vb::FlexGrid g;
    g.SetCols(2);
    g.SetRows(200);
    g.resize(300, 150);
    g.show();
    g.ScrollToEnd();
    EXPECT_GT(g.TopRow(), 150);
}
