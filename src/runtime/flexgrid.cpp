#include "runtime/flexgrid.h"

#include <algorithm>
#include "runtime/errors.h"
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

namespace vb {

FlexGrid::FlexGrid(QWidget* parent) : QTableWidget(2, 2, parent) {
    horizontalHeader()->hide();
    verticalHeader()->hide();
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    // Tab and Shift+Tab leave the grid for the next control in the tab order,
    // as from any other control; the arrows move between its cells.
    setTabKeyNavigation(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    paintFixed();
}

void FlexGrid::checkCell(int row, int col) const {
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount())
        Raise(381, QStringLiteral("Subíndice de matriz de propiedades no válido"));
}

void FlexGrid::SetRows(int rows) {
    if (rows < fixedRows_) Raise(30009, QStringLiteral("Valor de fila no válido"));
    setRowCount(rows);
    if (row_ >= rows) row_ = rows - 1;
    paintFixed();
}

void FlexGrid::SetCols(int cols) {
    if (cols < fixedCols_) Raise(30010, QStringLiteral("Valor de columna no válido"));
    setColumnCount(cols);
    if (col_ >= cols) col_ = cols - 1;
    paintFixed();
}

void FlexGrid::SetFixedRows(int n) {
    fixedRows_ = n;
    paintFixed();
}

void FlexGrid::SetFixedCols(int n) {
    fixedCols_ = n;
    paintFixed();
}

void FlexGrid::SetRow(int row) {
    checkCell(row, col_);
    row_ = row;
}

void FlexGrid::SetCol(int col) {
    checkCell(row_, col);
    col_ = col;
}

QString FlexGrid::TextMatrix(int row, int col) const {
    checkCell(row, col);
    const QTableWidgetItem* it = item(row, col);
    return it ? it->text() : QString();
}

void FlexGrid::SetTextMatrix(int row, int col, const QString& text) {
    checkCell(row, col);
    QTableWidgetItem* it = item(row, col);
    if (!it) {
        // A cell of the fixed rows or columns already has its item: a new one is a plain cell.
        it = new QTableWidgetItem;
        setItem(row, col, it);
        if (row < fixedRows_ || col < fixedCols_) it->setBackground(palette().button());
    }
    it->setText(text);
}

long FlexGrid::ColWidth(int col) const {
    checkCell(0, col);
    return long(columnWidth(col) * 1440.0 / logicalDpiX() + 0.5);
}

void FlexGrid::SetColWidth(int col, long twips) {
    checkCell(0, col);
    setColumnWidth(col, int(twips * logicalDpiX() / 1440.0 + 0.5));
}

void FlexGrid::Clear() {
    for (int r = 0; r < rowCount(); ++r)
        for (int c = 0; c < columnCount(); ++c)
            if (QTableWidgetItem* it = item(r, c)) it->setText(QString());
}

void FlexGrid::ScrollToEnd() {
    if (rowCount() > 0) scrollToItem(item(rowCount() - 1, 0) ? item(rowCount() - 1, 0) : nullptr);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

int FlexGrid::TopRow() const { return rowAt(0) < 0 ? 0 : rowAt(0); }

// Fixed rows and columns look like headings.
// The fixed rows and columns only: a grid of thousands of rows has two or
// three fixed cells a row, and this runs whenever the grid's shape changes.
void FlexGrid::paintFixed() {
    const QBrush fixed = palette().button();
    const int rows = rowCount();
    const int cols = columnCount();
    for (int r = 0; r < rows; ++r) {
        const int hasta = r < fixedRows_ ? cols : std::min(fixedCols_, cols);
        for (int c = 0; c < hasta; ++c) {
            QTableWidgetItem* it = item(r, c);
            if (!it) {
                it = new QTableWidgetItem;
                setItem(r, c, it);
            }
            it->setBackground(fixed);
        }
    }
}

// A click makes the cell under the mouse the current one, then Click.
void FlexGrid::mousePressEvent(QMouseEvent* e) {
    QTableWidget::mousePressEvent(e);
    const QModelIndex index = indexAt(e->position().toPoint());
    if (!index.isValid()) return;
    row_ = index.row();
    col_ = index.column();
    emit Click();
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent* e) {
    QTableWidget::mouseDoubleClickEvent(e);
    const QModelIndex index = indexAt(e->position().toPoint());
    if (index.isValid()) {
        row_ = index.row();
        col_ = index.column();
    }
    emit DblClick();
}

} // namespace vb
