#include "runtime/line_list.h"
#include "runtime/errors.h"

namespace vb {

int LineListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count(); }

QVariant LineListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= count()) return {};
    return line(index.row());
}

QString LineListModel::line(int index) const {
    if (index < 0 || index >= count()) return {};
    const std::size_t start = starts_[std::size_t(index)];
    const std::size_t end = std::size_t(index) + 1 < starts_.size() ? starts_[std::size_t(index) + 1] : text_.size();
    return QString::fromUtf8(text_.data() + start, qsizetype(end - start));
}

void LineListModel::append(const QStringList& lines) {
    if (lines.isEmpty()) return;
    beginInsertRows(QModelIndex(), count(), count() + int(lines.size()) - 1);
    starts_.reserve(starts_.size() + std::size_t(lines.size()));
    for (const QString& l : lines) {
        starts_.push_back(std::uint32_t(text_.size()));
        const QByteArray utf8 = l.toUtf8();
        text_.append(utf8.constData(), std::size_t(utf8.size()));
    }
    endInsertRows();
}

void LineListModel::clear() {
    beginResetModel();
    std::string().swap(text_);
    std::vector<std::uint32_t>().swap(starts_);
    endResetModel();
}

LineList::LineList(QWidget* parent) : QListView(parent), model_(new LineListModel(this)) {
    setModel(model_);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Lines are padded with blanks to their columns: no wrapping, no eliding.
    setWordWrap(false);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void LineList::AddItem(const QString& item) { model_->append({item}); }
void LineList::AddItems(const QStringList& items) { model_->append(items); }
void LineList::Clear() { model_->clear(); }
QString LineList::List(int index) const { return model_->line(index); }

int LineList::ListIndex() const {
    const QModelIndexList chosen = selectionModel()->selectedRows();
    return chosen.isEmpty() ? -1 : chosen.first().row();
}

void LineList::SetListIndex(int index) {
    if (index < -1 || index >= ListCount()) Raise(380, QStringLiteral("Valor de propiedad no válido"));
    if (index < 0) {
        clearSelection();
        return;
    }
    const QModelIndex at = model_->index(index);
    selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect);
    scrollTo(at);
}

} // namespace vb
