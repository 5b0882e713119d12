// The list box of long listings: a column of fixed-width text lines, as many
// as a year of account cards gives (hundreds of thousands), shown on a list
// view over a model instead of one widget item per line.
//
// The lines are kept packed, one after the other in one buffer of UTF-8 with
// the start of each, so a line costs its own characters and four bytes; the
// view draws only the lines in sight (all lines are the same height).
//
// It answers as the list box does where the windows use it: AddItem, Clear,
// ListCount, List(i), ListIndex, Text. AddItems adds a whole listing in one
// step, which the view takes as one change instead of one per line.
#pragma once
#include <QAbstractListModel>
#include <QListView>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

namespace vb {

class LineListModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit LineListModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    void append(const QStringList& lines);
    void clear();
    int count() const { return int(starts_.size()); }
    QString line(int index) const;

private:
    std::string text_;                 // every line's UTF-8, one after the other
    std::vector<std::uint32_t> starts_; // where each line starts in text_
};

class LineList : public QListView {
    Q_OBJECT
public:
    explicit LineList(QWidget* parent = nullptr);

    void AddItem(const QString& item);
    void AddItems(const QStringList& items);
    void Clear();
    int ListCount() const { return model_->count(); }
    // The line's text; "" for an index outside the list.
    QString List(int index) const;
    // The chosen line, -1 while none is.
    int ListIndex() const;
    // -1 chooses nothing; an index outside -1..ListCount-1 raises 380.
    void SetListIndex(int index);
    QString Text() const { return List(ListIndex()); }

private:
    LineListModel* model_;
};

} // namespace vb
