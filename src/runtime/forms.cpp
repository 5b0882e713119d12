#include "runtime/forms.h"
#include "runtime/calendar.h"
#include "runtime/errors.h"
#include "runtime/flexgrid.h"
#include "runtime/listbox.h"
#include "runtime/sstab.h"
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QKeySequence>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QPushButton>

namespace vb {

// ---- ComboBox -------------------------------------------------------------------

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    setInsertPolicy(QComboBox::NoInsert);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        changedInList_ = true;
        if (!quiet_ && index >= 0) emit Click();
    });
    // Taking the chosen entry again from the open list is a Click too.
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (listOpen_ && !changedInList_ && !quiet_ && index >= 0) emit Click();
        listOpen_ = false;
    });
}

void ComboBox::showPopup() {
    listOpen_ = true;
    changedInList_ = false;
    QComboBox::showPopup();
}

// The list closes before the pick is announced: the pick still belongs to it.
void ComboBox::hidePopup() {
    QComboBox::hidePopup();
    QTimer::singleShot(0, this, [this] { listOpen_ = false; });
}

void ComboBox::hookEdit() {
    if (!isEditable() || hooked_ == lineEdit()) return;
    hooked_ = lineEdit();
    // The runtime's combo completes nothing by itself: what is typed stays typed.
    setCompleter(nullptr);
    // Nor does it choose an entry when the typing ends: a text that equals an
    // entry, left by the focus, raises no Click (a name added to the list as the
    // list loses the focus is not chosen, and searched, by that).
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
        if (!quiet_) emit Change();
    });
}

void ComboBox::AddItem(const QString& item) {
    hookEdit();
    quiet_ = true;
    const int index = currentIndex();
    const QString text = isEditable() ? currentText() : QString();
    addItem(item);
    if (index < 0 && currentIndex() >= 0) {
        // Adding to a list selects nothing.
        setCurrentIndex(-1);
        if (isEditable()) lineEdit()->setText(text);
    }
    quiet_ = false;
}

void ComboBox::AddItems(const QStringList& items) {
    hookEdit();
    quiet_ = true;
    const int index = currentIndex();
    const QString text = isEditable() ? currentText() : QString();
    addItems(items);
    if (index < 0 && currentIndex() >= 0) {
        setCurrentIndex(-1);
        if (isEditable()) lineEdit()->setText(text);
    }
    quiet_ = false;
}

void ComboBox::RemoveItem(int index) {
    quiet_ = true;
    removeItem(index);
    quiet_ = false;
}

void ComboBox::Clear() {
    hookEdit();
    quiet_ = true;
    clear();
    if (isEditable()) clearEditText();
    quiet_ = false;
}

// Setting ListIndex raises Click whenever it chooses an entry, also the one
// already chosen: the windows re-read their record that way. An error of the
// Click reaches the procedure that set ListIndex, once the toolkit has returned.
void ComboBox::SetListIndex(int index) {
    hookEdit();
    if (index >= 0 && index == currentIndex())
        emit Click();
    else
        setCurrentIndex(index);
    RaiseHeld();
}

QString ComboBox::Text() const { return currentText(); }

void ComboBox::SetText(const QString& text) {
    hookEdit();
    if (isEditable()) {
        if (currentText() == text) return;
        quiet_ = true;
        lineEdit()->setText(text);
        quiet_ = false;
        emit Change();
        RaiseHeld();
        return;
    }
    const int index = findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (index < 0) Raise(383, QStringLiteral("La propiedad 'Text' es de sólo lectura"));
    setCurrentIndex(index);
    RaiseHeld();
}

void ComboBox::keyPressEvent(QKeyEvent* e) {
    // Enter in a combo does nothing by itself (it never picks an entry).
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        e->ignore();
        return;
    }
    QComboBox::keyPressEvent(e);
}

void ComboBox::showEvent(QShowEvent* e) {
    hookEdit();
    QComboBox::showEvent(e);
}

// ---- Label, Timer ------------------------------------------------------------------

void Label::SetCaption(const QString& caption) {
    if (text() == caption) return;
    setText(caption);
    emit Change();
    RaiseHeld();
}

Timer::Timer(QObject* parent) : QObject(parent) {
    connect(&timer_, &QTimer::timeout, this, [this] { emit Tick(); });
}

void Timer::SetEnabled(bool on) {
    enabled_ = on;
    if (on && timer_.interval() > 0)
        timer_.start();
    else
        timer_.stop();
}

void Timer::SetInterval(int ms) {
    timer_.setInterval(ms);
    SetEnabled(enabled_);
}

// ---- Properties -----------------------------------------------------------------------

bool Enabled(const QWidget* w) { return !w->testAttribute(Qt::WA_ForceDisabled); }
void SetEnabled(QWidget* w, bool on) { w->setEnabled(on); }
void ToggleEnabled(QWidget* w) { w->setEnabled(!Enabled(w)); }
bool Visible(const QWidget* w) { return !w->isHidden(); }
void SetVisible(QWidget* w, bool on) { w->setVisible(on); }

namespace {
// Set while a LostFocus procedure runs: the focus is on its way elsewhere.
int losingFocus = 0;
} // namespace

// A SetFocus from inside a LostFocus happens once the focus change under way is
// over, as the runtime's focus events come one after the other: the control
// the focus was going to gets it and loses it again, and the one named here
// then gets its GotFocus (and so selects its text).
void SetFocus(QWidget* w) {
    if (losingFocus > 0) {
        QTimer::singleShot(0, w, [w] { w->setFocus(Qt::OtherFocusReason); });
        return;
    }
    w->setFocus(Qt::OtherFocusReason);
    RaiseHeld();
}

void SelectAll(QWidget* w) {
    if (auto* t = qobject_cast<QLineEdit*>(w))
        t->selectAll();
    else if (auto* c = qobject_cast<QComboBox*>(w); c && c->lineEdit())
        c->lineEdit()->selectAll();
}

namespace {
QColor toColor(long c) { return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)); }
long fromColor(const QColor& c) { return long(c.red()) | (long(c.green()) << 8) | (long(c.blue()) << 16); }
QPalette::ColorRole backRole(const QWidget* w) {
    return (qobject_cast<const QLineEdit*>(w) || qobject_cast<const QComboBox*>(w)) ? QPalette::Base
                                                                                      : QPalette::Window;
}
QPalette::ColorRole foreRole(const QWidget* w) {
    return (qobject_cast<const QLineEdit*>(w) || qobject_cast<const QComboBox*>(w)) ? QPalette::Text
                                                                                      : QPalette::WindowText;
}
} // namespace

void SetBackColor(QWidget* w, long color) {
    QPalette p = w->palette();
    p.setColor(backRole(w), toColor(color));
    w->setPalette(p);
    if (backRole(w) == QPalette::Window) w->setAutoFillBackground(true);
}

void SetForeColor(QWidget* w, long color) {
    QPalette p = w->palette();
    p.setColor(foreRole(w), toColor(color));
    w->setPalette(p);
}

long BackColor(const QWidget* w) { return fromColor(w->palette().color(backRole(w))); }
long ForeColor(const QWidget* w) { return fromColor(w->palette().color(foreRole(w))); }

int Value(const QCheckBox* c) { return c->isChecked() ? 1 : 0; }
void SetValue(QCheckBox* c, int value) {
    c->setChecked(value != 0);
    RaiseHeld();
}
bool Value(const QRadioButton* o) { return o->isChecked(); }
void SetValue(QRadioButton* o, bool value) {
    o->setChecked(value);
    RaiseHeld();
}

void SendKeys(const QString& keys) {
    if (keys.compare(QStringLiteral("{tab}"), Qt::CaseInsensitive) != 0) return;
    // Queued: the keystroke reaches whatever has the focus once the running
    // procedure is over.
    QTimer::singleShot(0, qApp, [] {
        QWidget* f = QApplication::focusWidget();
        if (!f) return;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        QApplication::sendEvent(f, &press);
        if (QWidget* g = QApplication::focusWidget()) {
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
            QApplication::sendEvent(g, &release);
        }
    });
}

void DoEvents() {
    RunModal([] { QCoreApplication::processEvents(QEventLoop::AllEvents); }, false);
}

// ---- Access keys ---------------------------------------------------------------------------

namespace {
// Alt+letter or Alt+digit, nothing else held: the key, or 0.
int accessKey(const QKeyEvent* k) {
    if ((k->modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier) return 0;
    const int key = k->key();
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) return key;
    // Ñ, Ç and the accented capitals.
    if (key >= Qt::Key_Agrave && key <= Qt::Key_THORN && key != Qt::Key_multiply) return key;
    return 0;
}

// The window an access key is meant for: the one holding the control that has
// the focus or, when the focus is on the main window itself, its active child.
Form* formFor(QObject* receiver) {
    auto* w = qobject_cast<QWidget*>(receiver);
    // Keys on an open menu or on the menu bar belong to the menus.
    if (!w || qobject_cast<QMenuBar*>(w) || qobject_cast<QMenu*>(w)) return nullptr;
    for (QWidget* p = w; p; p = p->parentWidget()) {
        if (auto* f = qobject_cast<Form*>(p)) return f;
        if (p->isWindow()) break;
    }
    if (auto* area = w->window()->findChild<QMdiArea*>())
        if (QMdiSubWindow* active = area->activeSubWindow()) return active->findChild<Form*>();
    return nullptr;
}

// Enter on a command button of a window that has the focus presses it, as the
// space bar does.
bool pressFocusedButton(QObject* o, const QKeyEvent* k) {
    if (k->key() != Qt::Key_Return && k->key() != Qt::Key_Enter) return false;
    if ((k->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    auto* b = qobject_cast<QPushButton*>(o);
    if (!b || b != QApplication::focusWidget() || !b->isEnabled() || !b->isVisible()) return false;
    if (!formFor(b)) return false;
    b->click();
    return true;
}

// Sees every key before the shortcut map does: an access key of a control of
// the active window is taken from the menu bar (the override is accepted, so the
// key arrives as a key press) and carried out on that key press.
class AccessKeys : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() != QEvent::ShortcutOverride && e->type() != QEvent::KeyPress) return false;
        if (e->type() == QEvent::KeyPress && pressFocusedButton(o, static_cast<QKeyEvent*>(e))) return true;
        const int key = accessKey(static_cast<QKeyEvent*>(e));
        if (key == 0) return false;
        Form* form = formFor(o);
        QWidget* control = form ? AccessKeyControl(form, key) : nullptr;
        if (!control) return false;
        if (e->type() == QEvent::ShortcutOverride) {
            e->accept();
            return true;
        }
        PressAccessKey(control);
        return true;
    }
};

void installAccessKeys() {
    static AccessKeys* keys = [] {
        auto* k = new AccessKeys(qApp);
        qApp->installEventFilter(k);
        return k;
    }();
    (void)keys;
}

bool hasAccessKey(const QString& caption, int key) {
    const QKeySequence mnemonic = QKeySequence::mnemonic(caption);
    return !mnemonic.isEmpty() && mnemonic[0] == QKeyCombination(Qt::AltModifier, Qt::Key(key));
}

bool canTakeFocus(const QWidget* w) {
    return w && (w->focusPolicy() & Qt::TabFocus) && w->isEnabled() && w->isVisible();
}
} // namespace

QWidget* AccessKeyControl(const Form* form, int key) {
    for (QWidget* w = form->nextInFocusChain(); w && w != form; w = w->nextInFocusChain()) {
        if (!form->isAncestorOf(w) || !w->isVisible() || !w->isEnabled()) continue;
        if (auto* b = qobject_cast<QAbstractButton*>(w); b && hasAccessKey(b->text(), key)) return b;
        if (auto* l = qobject_cast<QLabel*>(w); l && canTakeFocus(l->buddy()) && hasAccessKey(l->text(), key))
            return l;
    }
    return nullptr;
}

void PressAccessKey(QWidget* control) {
    if (auto* l = qobject_cast<QLabel*>(control)) {
        l->buddy()->setFocus(Qt::ShortcutFocusReason);
        return;
    }
    auto* b = qobject_cast<QAbstractButton*>(control);
    if (!b) return;
    // The button takes the focus first (the control that had it runs its
    // LostFocus), then it is pressed.
    if (canTakeFocus(b)) b->setFocus(Qt::ShortcutFocusReason);
    if (b->isEnabled() && b->isVisible()) b->click();
}

// ---- Form ----------------------------------------------------------------------------------

Form::Form(QWidget* parent) : QWidget(parent) { installAccessKeys(); }
Form::~Form() = default;

QWidget* Form::FirstTabStop() const {
    for (QWidget* w = nextInFocusChain(); w && w != this; w = w->nextInFocusChain())
        if (isAncestorOf(w) && canTakeFocus(w)) return w;
    return nullptr;
}

// Once the window is on screen (and its frame has been activated), the first
// control in tab order gets the focus, unless one of the window's controls
// already has it.
void Form::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    QTimer::singleShot(0, this, [this] {
        if (unloaded_ || !isVisible()) return;
        if (QWidget* f = focusWidget(); f && isAncestorOf(f) && canTakeFocus(f)) return;
        if (QWidget* first = FirstTabStop()) first->setFocus(Qt::TabFocusReason);
    });
}

void Form::Load() {
    RunEvent([this] { Form_Load(); });
    RaiseHeld();
}

void Form::Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    emit unloaded();
    // The frame of a child window (with whatever holds the window inside it)
    // closes and goes with it.
    QMdiSubWindow* sub = nullptr;
    for (QWidget* p = parentWidget(); p && !sub; p = p->isWindow() ? nullptr : p->parentWidget())
        sub = qobject_cast<QMdiSubWindow*>(p);
    if (sub) {
        sub->setAttribute(Qt::WA_DeleteOnClose);
        sub->close();
    } else {
        close();
        deleteLater();
    }
}

void Form::closeEvent(QCloseEvent* e) {
    if (!unloaded_) {
        unloaded_ = true;
        emit unloaded();
    }
    QWidget::closeEvent(e);
}

Form::Handlers& Form::handlers(QWidget* w) {
    auto it = handlers_.find(w);
    if (it == handlers_.end()) {
        w->installEventFilter(this);
        if (auto* c = qobject_cast<QComboBox*>(w); c && c->lineEdit()) c->lineEdit()->installEventFilter(this);
        // A list or table view takes the mouse on its viewport.
        if (auto* a = qobject_cast<QAbstractScrollArea*>(w)) {
            a->viewport()->installEventFilter(this);
            viewports_[a->viewport()] = w;
        }
        it = handlers_.emplace(w, Handlers{}).first;
    }
    return it->second;
}

void Form::OnClick(QAbstractButton* b, std::function<void()> proc) {
    if (auto* o = qobject_cast<QRadioButton*>(b)) {
        // An option button's Click: it becomes the chosen one, by the user or by code.
        connect(o, &QRadioButton::toggled, this, [proc](bool on) {
            if (on) RunEvent(proc);
        });
    } else if (auto* c = qobject_cast<QCheckBox*>(b)) {
        connect(c, &QCheckBox::stateChanged, this, [proc](int) { RunEvent(proc); });
    } else {
        connect(b, &QAbstractButton::clicked, this, [proc] { RunEvent(proc); });
    }
}

void Form::OnClick(ComboBox* c, std::function<void()> proc) {
    connect(c, &ComboBox::Click, this, [proc] { RunEvent(proc); });
}

void Form::OnClick(ListBox* l, std::function<void()> proc) {
    connect(l, &ListBox::Click, this, [proc] { RunEvent(proc); });
}

void Form::OnClick(FlexGrid* g, std::function<void()> proc) {
    connect(g, &FlexGrid::Click, this, [proc] { RunEvent(proc); });
}

void Form::OnClick(CalendarControl* c, std::function<void()> proc) {
    connect(c, &CalendarControl::Click, this, [proc] { RunEvent(proc); });
}

void Form::OnClick(SSTab* t, std::function<void(int)> proc) {
    connect(t, &SSTab::Click, this, [proc](int previous) { RunEvent([&] { proc(previous); }); });
}

void Form::OnDblClick(ListBox* l, std::function<void()> proc) {
    connect(l, &ListBox::DblClick, this, [proc] { RunEvent(proc); });
}

void Form::OnDblClick(FlexGrid* g, std::function<void()> proc) {
    connect(g, &FlexGrid::DblClick, this, [proc] { RunEvent(proc); });
}

void Form::OnChange(QLineEdit* t, std::function<void()> proc) {
    connect(t, &QLineEdit::textChanged, this, [proc] { RunEvent(proc); });
}

void Form::OnChange(ComboBox* c, std::function<void()> proc) {
    c->hookEdit();
    connect(c, &ComboBox::Change, this, [proc] { RunEvent(proc); });
}

void Form::OnChange(Label* l, std::function<void()> proc) {
    connect(l, &Label::Change, this, [proc] { RunEvent(proc); });
}

void Form::OnGotFocus(QWidget* w, std::function<void()> proc) { handlers(w).gotFocus = std::move(proc); }
void Form::OnLostFocus(QWidget* w, std::function<void()> proc) { handlers(w).lostFocus = std::move(proc); }
void Form::OnKeyPress(QWidget* w, std::function<void(int&)> proc) { handlers(w).keyPress = std::move(proc); }
void Form::OnDblClick(QWidget* w, std::function<void()> proc) { handlers(w).dblClick = std::move(proc); }

void Form::OnTimer(Timer* t, std::function<void()> proc) {
    connect(t, &Timer::Tick, this, [proc] { RunEvent(proc); });
}

void Form::OnMouseMove(QWidget* w, std::function<void(int, int, float, float)> proc) {
    handlers(w).mouseMove = std::move(proc);
    // Moves with no button down reach only a widget that tracks the mouse.
    w->setMouseTracking(true);
    if (auto* a = qobject_cast<QAbstractScrollArea*>(w)) a->viewport()->setMouseTracking(true);
}

// Runs the control's MouseMove for a move event that reached it; true when it
// ran (the move then goes no further up, as the runtime raises MouseMove on
// the control under the mouse only).
bool Form::mouseMoved(QWidget* w, const Handlers& h, QEvent* e) {
    if (e->type() != QEvent::MouseMove || !h.mouseMove) return false;
    auto* m = static_cast<QMouseEvent*>(e);
    const QPoint at = m->position().toPoint();
    // The window's own MouseMove is for its bare area: over a control, the
    // control's (or none).
    if (w == this && childAt(at)) return false;
    int button = 0;
    if (m->buttons() & Qt::LeftButton) button |= 1;
    if (m->buttons() & Qt::RightButton) button |= 2;
    if (m->buttons() & Qt::MiddleButton) button |= 4;
    int shift = 0;
    if (m->modifiers() & Qt::ShiftModifier) shift |= 1;
    if (m->modifiers() & Qt::ControlModifier) shift |= 2;
    if (m->modifiers() & Qt::AltModifier) shift |= 4;
    const double twipsPerPixel = 1440.0 / w->logicalDpiX();
    const float x = float(at.x() * twipsPerPixel), y = float(at.y() * twipsPerPixel);
    RunEvent([&] { h.mouseMove(button, shift, x, y); });
    return true;
}

namespace {
// The key as the runtime's KeyPress sees it; 0 for keys that raise no KeyPress.
int keyAscii(const QKeyEvent* k) {
    switch (k->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 0;
    default: break;
    }
    if (k->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return 0;
    const QString t = k->text();
    if (t.isEmpty()) return 0;
    const ushort u = t.at(0).unicode();
    return u >= 32 ? int(u) : 0;
}
bool replaying = false;
} // namespace

bool Form::eventFilter(QObject* o, QEvent* e) {
    if (const auto v = viewports_.find(o); v != viewports_.end()) {
        // Only the mouse reaches a view through its viewport; its focus and keys
        // come to the view itself.
        if (e->type() == QEvent::MouseMove) {
            const auto it = handlers_.find(v->second);
            if (it != handlers_.end() && mouseMoved(v->second, it->second, e)) return true;
            return QWidget::eventFilter(o, e);
        }
        if (e->type() != QEvent::MouseButtonDblClick) return QWidget::eventFilter(o, e);
        const auto it = handlers_.find(v->second);
        if (it != handlers_.end() && it->second.dblClick) {
            RunEvent(it->second.dblClick);
            return true;
        }
        return QWidget::eventFilter(o, e);
    }
    QObject* target = o;
    // An editable combo's edit box speaks for its combo.
    if (auto* le = qobject_cast<QLineEdit*>(o); le && qobject_cast<QComboBox*>(le->parentWidget()) &&
                                                 handlers_.count(le->parentWidget()))
        target = le->parentWidget();
    auto it = handlers_.find(target);
    if (it == handlers_.end()) return QWidget::eventFilter(o, e);
    Handlers& h = it->second;
    switch (e->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        auto* f = static_cast<QFocusEvent*>(e);
        // Another window taking or giving back the activation (a message box) is
        // no change of focus inside the window.
        if (f->reason() == Qt::ActiveWindowFocusReason || f->reason() == Qt::PopupFocusReason) break;
        // The combo and its edit box both hear it: act once, for the combo.
        if (target != o && qobject_cast<QComboBox*>(target)) break;
        // A combo opening its own drop-down hands the focus to the list inside
        // it (the toolkit says so twice, the second time as any other change):
        // the focus has not left the control, and no LostFocus runs.
        if (auto* c = qobject_cast<QComboBox*>(target);
            c && e->type() == QEvent::FocusOut && c->view() && c->view()->isVisible())
            break;
        if (e->type() == QEvent::FocusIn) {
            if (h.gotFocus) RunEvent(h.gotFocus);
        } else if (h.lostFocus) {
            ++losingFocus;
            RunEvent(h.lostFocus);
            --losingFocus;
        }
        break;
    }
    case QEvent::KeyPress: {
        if (replaying || !h.keyPress) break;
        auto* k = static_cast<QKeyEvent*>(e);
        // Only the control with the focus presses keys; the same event offered to
        // its parents is no new keystroke.
        if (o != QApplication::focusWidget()) break;
        int ascii = keyAscii(k);
        if (ascii == 0) break;
        const int original = ascii;
        RunEvent([&] { h.keyPress(ascii); });
        if (ascii == 0) return true;
        if (ascii != original) {
            const QString text = QString(QChar(ascii));
            QKeyEvent replaced(QEvent::KeyPress, ascii == 13 ? Qt::Key_Return : ascii == 8 ? Qt::Key_Backspace : 0,
                               Qt::NoModifier, text);
            replaying = true;
            QApplication::sendEvent(o, &replaced);
            replaying = false;
            return true;
        }
        break;
    }
    case QEvent::MouseButtonDblClick:
        if (h.dblClick) {
            RunEvent(h.dblClick);
            return true;
        }
        break;
    case QEvent::MouseMove:
        if (o == target && mouseMoved(static_cast<QWidget*>(o), h, e)) return true;
        break;
    default: break;
    }
    return QWidget::eventFilter(o, e);
}

} // namespace vb
