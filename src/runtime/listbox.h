// The list box: a column of text entries, one of which may be chosen.
//
//  - Click: whenever an entry is chosen, by a mouse press on an entry (also the
//    one already chosen), by the arrow keys, or by setting ListIndex in code
//    (also to the entry already chosen). Never by AddItem, RemoveItem or Clear.
//  - DblClick: a double click in the list, after the Click of its first press.
//  - ListIndex is -1 while nothing is chosen; getting the focus chooses nothing.
#pragma once
#include <QListWidget>

namespace vb {

class ListBox : public QListWidget {
    Q_OBJECT
public:
    explicit ListBox(QWidget* parent = nullptr);

    void AddItem(const QString& item);
    // Raises 5 "Llamada a procedimiento o argumento no válido" for an index
    // outside the list. Removing the chosen entry leaves nothing chosen.
    void RemoveItem(int index);
    void Clear();
    int ListCount() const { return count(); }
    // The entry's text; "" for an index outside the list.
    QString List(int index) const;
    int ListIndex() const;
    // -1 chooses nothing (no Click); an index outside -1..ListCount-1 raises
    // 380 "Valor de propiedad no válido".
    void SetListIndex(int index);
    // The chosen entry's text, "" when none.
    QString Text() const;

signals:
    void Click();
    void DblClick();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    bool quiet_ = false;
};

} // namespace vb
