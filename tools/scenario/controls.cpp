#include "scenario/controls.h"
#include "runtime/calendar.h"
#include "runtime/flexgrid.h"
#include "runtime/forms.h"
#include "runtime/line_list.h"
#include "runtime/listbox.h"
#include "runtime/sstab.h"
#include "scenario/script.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

namespace vel::scenario {

// ---- What every kind can't do unless it says otherwise -------------------------

void ControlKind::click(QWidget* w, const QStringList& where) const {
    if (!where.isEmpty()) error(w->objectName() + " no tiene filas ni celdas");
    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, w->rect().center());
}

void ControlKind::dblclick(QWidget* w, const QStringList& where) const {
    if (!where.isEmpty()) error(w->objectName() + " no tiene filas ni celdas");
    DoubleClickAt(w, w->rect().center());
}

void ControlKind::select(QWidget* w, const QString&, bool) const { error(w->objectName() + " no es una lista"); }
void ControlKind::tab(QWidget* w, const QString&, bool) const { error(w->objectName() + " no tiene pestañas"); }
void ControlKind::pick(QWidget* w, const QDate&) const { error(w->objectName() + " no es un calendario"); }

void FocusOn(QWidget* w) {
    QWidget* f = QApplication::focusWidget();
    if (f == w || (w->focusProxy() && f == w->focusProxy())) return;
    if (auto* c = qobject_cast<QComboBox*>(w); c && f && f == c->lineEdit()) return;
    w->setFocus(Qt::MouseFocusReason);
    Settle();
}

void DoubleClickAt(QWidget* w, const QPoint& at) {
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(w, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, at);
}

namespace {

int number(const QString& text, const QString& what) {
    bool ok = false;
    const int n = text.toInt(&ok);
    if (!ok) error(what + " no es un número: " + text);
    return n;
}

// "List(3)" -> 3; none when the property is not of that form.
std::optional<QString> indexed(const QString& prop, const QString& name) {
    if (!prop.startsWith(name + '(') || !prop.endsWith(')')) return std::nullopt;
    return prop.mid(name.size() + 1, prop.size() - name.size() - 2);
}

QString entries(const QStringList& items) {
    QString s;
    for (int i = 0; i < items.size(); ++i) s += QStringLiteral("\n    [%1] %2").arg(i).arg(Quote(items[i]));
    return s;
}

// ---- Text boxes, labels, buttons ---------------------------------------------------

// A text box, one line or several (notes).
class TextBoxKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QLineEdit*>(w) || qobject_cast<QPlainTextEdit*>(w); }
    QStringList state(QWidget* w) const override { return {"Text=" + Quote(text(w))}; }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        if (prop == QLatin1String("Text")) return text(w);
        return std::nullopt;
    }

private:
    static QString text(QWidget* w) {
        if (auto* t = qobject_cast<QLineEdit*>(w)) return t->text();
        return static_cast<QPlainTextEdit*>(w)->toPlainText();
    }
};

class LabelKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QLabel*>(w); }
    QStringList state(QWidget* w) const override { return {"Caption=" + Quote(static_cast<QLabel*>(w)->text())}; }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        if (prop == QLatin1String("Caption") || prop == QLatin1String("Text")) return static_cast<QLabel*>(w)->text();
        return std::nullopt;
    }
};

class ButtonKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QAbstractButton*>(w); }
    QStringList state(QWidget* w) const override {
        auto* b = static_cast<QAbstractButton*>(w);
        QStringList parts{"Caption=" + Quote(b->text())};
        if (qobject_cast<QCheckBox*>(w)) parts << QStringLiteral("Value=%1").arg(b->isChecked() ? 1 : 0);
        if (qobject_cast<QRadioButton*>(w)) parts << "Value=" + BoolText(b->isChecked());
        return parts;
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* b = static_cast<QAbstractButton*>(w);
        if (prop == QLatin1String("Caption") || prop == QLatin1String("Text")) return b->text();
        if (prop == QLatin1String("Value")) {
            if (auto* c = qobject_cast<QCheckBox*>(w)) return QString::number(vb::Value(c));
            if (auto* o = qobject_cast<QRadioButton*>(w)) return BoolText(vb::Value(o));
        }
        return std::nullopt;
    }
};

// ---- Lists -------------------------------------------------------------------------

class ComboKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QComboBox*>(w); }
    QStringList state(QWidget* w) const override {
        auto* c = static_cast<QComboBox*>(w);
        return {"Text=" + Quote(c->currentText()), QStringLiteral("ListIndex=%1").arg(c->currentIndex()),
                QStringLiteral("ListCount=%1").arg(c->count())};
    }
    QString details(QWidget* w) const override {
        auto* c = static_cast<QComboBox*>(w);
        QStringList items;
        for (int i = 0; i < c->count(); ++i) items << c->itemText(i);
        return entries(items);
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* c = static_cast<QComboBox*>(w);
        if (prop == QLatin1String("Text")) return c->currentText();
        if (prop == QLatin1String("ListCount")) return QString::number(c->count());
        if (prop == QLatin1String("ListIndex")) return QString::number(c->currentIndex());
        if (const auto i = indexed(prop, QStringLiteral("List"))) return c->itemText(i->toInt());
        return std::nullopt;
    }
    // A click on a combo puts the focus in it (its list stays closed).
    void click(QWidget* w, const QStringList& where) const override {
        if (!where.isEmpty()) error(w->objectName() + " no tiene filas ni celdas");
        FocusOn(w);
    }
    // As the user does: opens the list, moves to the entry and takes it with
    // Enter. Taking the entry already chosen raises Click again.
    void select(QWidget* w, const QString& entry, bool byText) const override {
        auto* c = static_cast<QComboBox*>(w);
        bool isIndex = false;
        int index = entry.toInt(&isIndex);
        if (!isIndex || byText) index = c->findText(entry, Qt::MatchExactly);
        if (index < 0 || index >= c->count()) error("no hay tal entrada en " + w->objectName() + ": " + entry);
        FocusOn(c);
        c->showPopup();
        QAbstractItemView* view = c->view();
        const QModelIndex item = view->model()->index(index, c->modelColumn(), c->rootModelIndex());
        view->scrollTo(item);
        view->setCurrentIndex(item);
        QTest::keyClick(view, Qt::Key_Return);
    }
};

class ListBoxKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<vb::ListBox*>(w); }
    QStringList state(QWidget* w) const override {
        auto* l = static_cast<vb::ListBox*>(w);
        return {"Text=" + Quote(l->Text()), QStringLiteral("ListIndex=%1").arg(l->ListIndex()),
                QStringLiteral("ListCount=%1").arg(l->ListCount())};
    }
    QString details(QWidget* w) const override {
        auto* l = static_cast<vb::ListBox*>(w);
        QStringList items;
        for (int i = 0; i < l->ListCount(); ++i) items << l->List(i);
        return entries(items);
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* l = static_cast<vb::ListBox*>(w);
        if (prop == QLatin1String("Text")) return l->Text();
        if (prop == QLatin1String("ListCount")) return QString::number(l->ListCount());
        if (prop == QLatin1String("ListIndex")) return QString::number(l->ListIndex());
        if (const auto i = indexed(prop, QStringLiteral("List"))) return l->List(i->toInt());
        return std::nullopt;
    }
    void click(QWidget* w, const QStringList& where) const override {
        if (where.isEmpty()) return ControlKind::click(w, where);
        select(w, where.first(), false);
    }
    void dblclick(QWidget* w, const QStringList& where) const override {
        if (where.isEmpty()) return ControlKind::dblclick(w, where);
        auto* l = static_cast<vb::ListBox*>(w);
        const int row = rowOf(l, where.first(), false);
        DoubleClickAt(l->viewport(), l->visualItemRect(l->item(row)).center());
    }
    // A mouse click on the entry.
    void select(QWidget* w, const QString& entry, bool byText) const override {
        auto* l = static_cast<vb::ListBox*>(w);
        const int row = rowOf(l, entry, byText);
        QTest::mouseClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, l->visualItemRect(l->item(row)).center());
    }

private:
    static int rowOf(vb::ListBox* l, const QString& entry, bool byText) {
        bool isIndex = false;
        int row = entry.toInt(&isIndex);
        if (!isIndex || byText) {
            row = -1;
            for (int i = 0; i < l->ListCount() && row < 0; ++i)
                if (l->List(i) == entry) row = i;
        }
        if (row < 0 || row >= l->ListCount()) error("no hay tal entrada en " + l->objectName() + ": " + entry);
        l->scrollToItem(l->item(row));
        return row;
    }
};

// The list of long listings: its lines, and a click on a line.
class LineListKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<vb::LineList*>(w); }
    QStringList state(QWidget* w) const override {
        auto* l = static_cast<vb::LineList*>(w);
        return {"Text=" + Quote(l->Text()), QStringLiteral("ListIndex=%1").arg(l->ListIndex()),
                QStringLiteral("ListCount=%1").arg(l->ListCount())};
    }
    QString details(QWidget* w) const override {
        auto* l = static_cast<vb::LineList*>(w);
        QStringList items;
        for (int i = 0; i < l->ListCount(); ++i) items << l->List(i);
        return entries(items);
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* l = static_cast<vb::LineList*>(w);
        if (prop == QLatin1String("Text")) return l->Text();
        if (prop == QLatin1String("ListCount")) return QString::number(l->ListCount());
        if (prop == QLatin1String("ListIndex")) return QString::number(l->ListIndex());
        if (const auto i = indexed(prop, QStringLiteral("List"))) return l->List(i->toInt());
        return std::nullopt;
    }
    void click(QWidget* w, const QStringList& where) const override {
        if (where.isEmpty()) return ControlKind::click(w, where);
        select(w, where.first(), false);
    }
    void select(QWidget* w, const QString& entry, bool byText) const override {
        auto* l = static_cast<vb::LineList*>(w);
        bool isIndex = false;
        int row = entry.toInt(&isIndex);
        if (!isIndex || byText) {
            row = -1;
            for (int i = 0; i < l->ListCount() && row < 0; ++i)
                if (l->List(i) == entry) row = i;
        }
        if (row < 0 || row >= l->ListCount()) error("no hay tal entrada en " + l->objectName() + ": " + entry);
        const QModelIndex index = l->model()->index(row, 0);
        l->scrollTo(index);
        QTest::mouseClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, l->visualRect(index).center());
    }
};

// ---- Grids -------------------------------------------------------------------------

class GridKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QTableWidget*>(w); }
    QString details(QWidget* w) const override {
        auto* g = static_cast<QTableWidget*>(w);
        QString s = QStringLiteral(" Rows=%1 Cols=%2").arg(g->rowCount()).arg(g->columnCount());
        for (int r = 0; r < g->rowCount(); ++r) {
            QStringList cells;
            for (int c = 0; c < g->columnCount(); ++c) cells << (g->item(r, c) ? g->item(r, c)->text() : QString());
            s += QStringLiteral("\n    %1: %2").arg(r).arg(cells.join(" | "));
        }
        return s;
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* g = static_cast<QTableWidget*>(w);
        if (prop == QLatin1String("Rows")) return QString::number(g->rowCount());
        if (prop == QLatin1String("Cols")) return QString::number(g->columnCount());
        if (const auto rc = indexed(prop, QStringLiteral("TextMatrix"))) {
            const QStringList p = rc->split(',');
            if (p.size() == 2) {
                auto* item = g->item(p[0].trimmed().toInt(), p[1].trimmed().toInt());
                return item ? item->text() : QString();
            }
        }
        if (auto* f = qobject_cast<vb::FlexGrid*>(w)) {
            if (prop == QLatin1String("Row")) return QString::number(f->Row());
            if (prop == QLatin1String("Col")) return QString::number(f->Col());
            if (prop == QLatin1String("Text")) return f->Text();
        }
        return std::nullopt;
    }
    void click(QWidget* w, const QStringList& where) const override {
        if (where.isEmpty()) return ControlKind::click(w, where);
        auto* g = static_cast<QTableWidget*>(w);
        QTest::mouseClick(g->viewport(), Qt::LeftButton, Qt::NoModifier, cell(g, where));
    }
    void dblclick(QWidget* w, const QStringList& where) const override {
        if (where.isEmpty()) return ControlKind::dblclick(w, where);
        auto* g = static_cast<QTableWidget*>(w);
        DoubleClickAt(g->viewport(), cell(g, where));
    }

private:
    // The middle of a cell in the viewport, scrolled into view.
    static QPoint cell(QTableWidget* g, const QStringList& where) {
        if (where.size() != 2) error(QStringLiteral("una celda es FILA COLUMNA"));
        const int row = number(where[0], QStringLiteral("la fila")), col = number(where[1], QStringLiteral("la columna"));
        if (row < 0 || row >= g->rowCount() || col < 0 || col >= g->columnCount())
            error(QStringLiteral("no hay celda %1 %2 en %3").arg(row).arg(col).arg(g->objectName()));
        const QModelIndex index = g->model()->index(row, col);
        g->scrollTo(index);
        return g->visualRect(index).center();
    }
};

// ---- Tab strips, progress bars, calendars --------------------------------------------

class TabKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<vb::SSTab*>(w); }
    QStringList state(QWidget* w) const override {
        return {QStringLiteral("Tab=%1").arg(static_cast<vb::SSTab*>(w)->Tab())};
    }
    QString details(QWidget* w) const override {
        auto* t = static_cast<vb::SSTab*>(w);
        QStringList captions;
        for (int i = 0; i < t->Tabs(); ++i) captions << t->TabCaption(i);
        return entries(captions);
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* t = static_cast<vb::SSTab*>(w);
        if (prop == QLatin1String("Tab")) return QString::number(t->Tab());
        if (prop == QLatin1String("Tabs")) return QString::number(t->Tabs());
        if (const auto i = indexed(prop, QStringLiteral("TabCaption"))) return t->TabCaption(i->toInt());
        return std::nullopt;
    }
    // A mouse click on the page's tab.
    void tab(QWidget* w, const QString& page, bool byCaption) const override {
        auto* t = static_cast<vb::SSTab*>(w);
        bool isIndex = false;
        int index = page.toInt(&isIndex);
        if (!isIndex || byCaption) index = t->TabByCaption(page);
        if (index < 0 || index >= t->Tabs()) error("no hay tal pestaña en " + w->objectName() + ": " + page);
        QTabBar* bar = t->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }
};

class ProgressKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<QProgressBar*>(w); }
    QStringList state(QWidget* w) const override {
        auto* p = static_cast<QProgressBar*>(w);
        return {QStringLiteral("Min=%1 Max=%2 Value=%3").arg(p->minimum()).arg(p->maximum()).arg(p->value())};
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* p = static_cast<QProgressBar*>(w);
        if (prop == QLatin1String("Min")) return QString::number(p->minimum());
        if (prop == QLatin1String("Max")) return QString::number(p->maximum());
        if (prop == QLatin1String("Value")) return QString::number(p->value());
        return std::nullopt;
    }
};

class CalendarKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<vb::CalendarControl*>(w); }
    QStringList state(QWidget* w) const override {
        return {"Value=" + Quote(static_cast<vb::CalendarControl*>(w)->Value().toString(QStringLiteral("dd/MM/yyyy")))};
    }
    std::optional<QString> property(QWidget* w, const QString& prop) const override {
        auto* c = static_cast<vb::CalendarControl*>(w);
        if (prop == QLatin1String("Value")) return c->Value().toString(QStringLiteral("dd/MM/yyyy"));
        if (prop == QLatin1String("Day")) return QString::number(c->Day());
        if (prop == QLatin1String("Month")) return QString::number(c->Month());
        if (prop == QLatin1String("Year")) return QString::number(c->Year());
        return std::nullopt;
    }
    // As the user does: turns the page with the month arrows, then clicks the day.
    void pick(QWidget* w, const QDate& day) const override {
        QCalendarWidget* page = static_cast<vb::CalendarControl*>(w)->page();
        auto* next = page->findChild<QToolButton*>(QStringLiteral("qt_calendar_nextmonth"));
        auto* previous = page->findChild<QToolButton*>(QStringLiteral("qt_calendar_prevmonth"));
        auto* view = page->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"));
        if (!next || !previous || !view) error(QStringLiteral("el calendario no tiene sus flechas o sus días"));
        for (int turns = 0;; ++turns) {
            const int shown = page->yearShown() * 12 + page->monthShown() - 1;
            const int wanted = day.year() * 12 + day.month() - 1;
            if (shown == wanted) break;
            if (turns > 1200) error(QStringLiteral("no se llega al mes del día"));
            QToolButton* arrow = wanted > shown ? next : previous;
            QTest::mouseClick(arrow, Qt::LeftButton, Qt::NoModifier, arrow->rect().center());
        }
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cellOf(page, view, day)).center());
    }

private:
    // The cell of a day of the month shown: the days run in rows of seven from
    // the cell of the 1st, which is in the first or second row of days.
    static QModelIndex cellOf(QCalendarWidget* page, QTableView* view, const QDate& day) {
        const int top = page->horizontalHeaderFormat() == QCalendarWidget::NoHorizontalHeader ? 0 : 1;
        const int left = page->verticalHeaderFormat() == QCalendarWidget::NoVerticalHeader ? 0 : 1;
        const auto* model = view->model();
        for (int p = 0; p < 14; ++p) {
            if (model->index(top + p / 7, left + p % 7).data().toString() != QLatin1String("1")) continue;
            const int at = p + day.day() - 1;
            const QModelIndex cell = model->index(top + at / 7, left + at % 7);
            if (cell.data().toString() != QString::number(day.day())) break;
            return cell;
        }
        error(QStringLiteral("no se encuentra el día en el calendario"));
    }
};

class FormKind : public ControlKind {
public:
    bool fits(QWidget* w) const override { return qobject_cast<vb::Form*>(w); }
    QStringList state(QWidget* w) const override { return {"Caption=" + Quote(w->windowTitle())}; }
};

class PlainKind : public ControlKind {
public:
    bool fits(QWidget*) const override { return true; }
};

} // namespace

const ControlKind& KindOf(QWidget* w) {
    static const TextBoxKind textBox;
    static const LabelKind label;
    static const ButtonKind button;
    static const ComboKind combo;
    static const ListBoxKind listBox;
    static const LineListKind lineList;
    static const GridKind grid;
    static const TabKind tabStrip;
    static const ProgressKind progress;
    static const CalendarKind calendar;
    static const FormKind form;
    static const PlainKind plain;
    static const ControlKind* const kinds[] = {&textBox, &label,    &button,   &combo, &listBox, &lineList, &grid,
                                               &tabStrip, &progress, &calendar, &form,  &plain};
    for (const ControlKind* k : kinds)
        if (k->fits(w)) return *k;
    return plain;
}

} // namespace vel::scenario
