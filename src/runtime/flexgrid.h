// The grid of the document windows, with the operations of the runtime's flex
// grid: Rows and Cols count the fixed (heading) rows and columns too; Row and
// Col are the current cell; Text is the current cell's text; TextMatrix any
// cell's; ColWidth in twips; Clear empties every cell and keeps the size.
#pragma once
#include <QTableWidget>

namespace vb {

class FlexGrid : public QTableWidget {
    Q_OBJECT
public:
    explicit FlexGrid(QWidget* parent = nullptr);

    int Rows() const { return rowCount(); }
    void SetRows(int rows);
    int Cols() const { return columnCount(); }
    void SetCols(int cols);
    int FixedRows() const { return fixedRows_; }
    void SetFixedRows(int n);
    int FixedCols() const { return fixedCols_; }
    void SetFixedCols(int n);

    int Row() const { return row_; }
    void SetRow(int row);
    int Col() const { return col_; }
    void SetCol(int col);
    QString Text() const { return TextMatrix(row_, col_); }
    void SetText(const QString& text) { SetTextMatrix(row_, col_, text); }

    QString TextMatrix(int row, int col) const;
    void SetTextMatrix(int row, int col, const QString& text);

    long ColWidth(int col) const;
    void SetColWidth(int col, long twips);

    // Empties every cell, the fixed ones too; the number of rows and columns stays.
    void Clear();
    // Scrolls so that the last row is in view (the list follows what is added).
    void ScrollToEnd();
    int TopRow() const;

signals:
    void Click();
    void DblClick();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    void paintFixed();
    void checkCell(int row, int col) const;
    int fixedRows_ = 1;
    int fixedCols_ = 1;
    int row_ = 1;
    int col_ = 1;
};

} // namespace vb
