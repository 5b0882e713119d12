#include "runtime/listbox.h"
#include "runtime/errors.h"
#include <QMouseEvent>

namespace vb {

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Keys that choose another entry raise Click; mouse presses raise their own.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        if (!quiet_ && ListIndex() >= 0) emit Click();
    });
}

void ListBox::AddItem(const QString& item) {
    quiet_ = true;
    addItem(item);
    quiet_ = false;
}

void ListBox::RemoveItem(int index) {
    if (index < 0 || index >= count()) Raise(5, QStringLiteral("Llamada a procedimiento o argumento no válido"));
    quiet_ = true;
    const bool wasChosen = index == ListIndex();
    delete takeItem(index);
    if (wasChosen) clearSelection();
    quiet_ = false;
}

void ListBox::Clear() {
    quiet_ = true;
    clear();
    quiet_ = false;
}

QString ListBox::List(int index) const {
    const QListWidgetItem* it = item(index);
    return it ? it->text() : QString();
}

int ListBox::ListIndex() const {
    const QList<QListWidgetItem*> chosen = selectedItems();
    return chosen.isEmpty() ? -1 : row(chosen.first());
}

void ListBox::SetListIndex(int index) {
    if (index < -1 || index >= count()) Raise(380, QStringLiteral("Valor de propiedad no válido"));
    quiet_ = true;
    if (index < 0) {
        clearSelection();
        setCurrentRow(-1);
    } else {
        setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
        scrollToItem(item(index));
    }
    quiet_ = false;
    if (index >= 0) emit Click();
}

QString ListBox::Text() const { return List(ListIndex()); }

void ListBox::mousePressEvent(QMouseEvent* e) {
    quiet_ = true;
    QListWidget::mousePressEvent(e);
    quiet_ = false;
    if (e->button() == Qt::LeftButton && itemAt(e->position().toPoint()) && ListIndex() >= 0) emit Click();
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* e) {
    quiet_ = true;
    QListWidget::mouseDoubleClickEvent(e);
    quiet_ = false;
    if (e->button() == Qt::LeftButton) emit DblClick();
}

} // namespace vb
