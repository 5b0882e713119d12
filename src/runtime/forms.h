// The forms runtime bridge: what every window needs from the toolkit, with the
// event semantics the windows rely on.
//
//  - Every window is a vb::Form. Its event procedures are plain methods named
//    Control_Event (Commandaceptar_Click, Textcodigo_LostFocus, Form_Load) wired
//    to the controls with the On... functions below. Each event enters the
//    program through vb::RunEvent: an untrapped runtime error shows the runtime's
//    message and ends the program.
//  - GotFocus/LostFocus fire in the original order (the old control's LostFocus
//    before the new one's GotFocus); focus moves caused by another window being
//    activated (a message box) do not count.
//  - KeyPress gets the key as KeyAscii and may discard it (set 0) or replace it.
//  - SendKeys("{tab}") moves the focus to the next control in tab order once the
//    running procedure has finished, as queued keystrokes do.
//  - Combo boxes are vb::ComboBox: Click when the selection changes by the user
//    or by code (never by Clear or AddItem), and when the user takes the entry
//    already chosen from the open list; Change when the text changes by typing
//    or by code.
//  - Labels are vb::Label when the window has a Change handler on a caption.
//  - List boxes, flex grids, tab strips and calendars have their Click (and
//    DblClick) from real mouse events; list and table views take the mouse on
//    their viewport, and the bridge listens there.
//  - A window that is shown gives the focus to its first control in tab order
//    that can take it (enabled, visible, a tab stop), as the runtime does.
//  - Access keys (Alt+letter) go to the active window's own controls first: a
//    button is pressed, a label moves the focus to its buddy. Only when no
//    enabled, visible control of that window has the letter does the key reach
//    the main window's menu bar.
#pragma once
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace vb {

class CalendarControl;
class FlexGrid;
class ListBox;
class SSTab;

// ---- Controls -------------------------------------------------------------

class ComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ComboBox(QWidget* parent = nullptr);
    void AddItem(const QString& item);
    // AddItem of each entry in order, in one step (lists of thousands).
    void AddItems(const QStringList& items);
    void RemoveItem(int index);
    void Clear();                 // empties the list and the text; no Click
    int ListCount() const { return count(); }
    int ListIndex() const { return currentIndex(); }
    void SetListIndex(int index); // Click whenever an entry is chosen
    QString List(int index) const { return itemText(index); }
    QString Text() const;         // the edit text (editable) or the selected entry
    void SetText(const QString& text); // Change when the text differs
    // Connects the edit box's typing to Change (once the combo is editable).
    void hookEdit();
    void showPopup() override;
    void hidePopup() override;
signals:
    void Click();
    void Change();

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    bool quiet_ = false;
    QLineEdit* hooked_ = nullptr;
    // While the open list is being used: whether the pick changed the entry
    // (Click already raised) or took the one already chosen.
    bool listOpen_ = false;
    bool changedInList_ = false;
};

class Label : public QLabel {
    Q_OBJECT
public:
    explicit Label(QWidget* parent = nullptr) : QLabel(parent) {}
    QString Caption() const { return text(); }
    void SetCaption(const QString& caption); // Change when the caption differs
signals:
    void Change();
};

// A timer control: Interval in milliseconds, Enabled starts and stops it.
class Timer : public QObject {
    Q_OBJECT
public:
    explicit Timer(QObject* parent = nullptr);
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool on);
    int Interval() const { return timer_.interval(); }
    void SetInterval(int ms);
signals:
    void Tick(); // the Timer event

private:
    QTimer timer_;
    bool enabled_ = false;
};

// ---- Properties with the runtime's meaning ------------------------------------

// Enabled and Visible as the control's own property (not inherited from the
// window being shown or not).
bool Enabled(const QWidget* w);
void SetEnabled(QWidget* w, bool on);
// Flips Enabled: the pattern's Texto and Botones are toggles.
void ToggleEnabled(QWidget* w);
bool Visible(const QWidget* w);
void SetVisible(QWidget* w, bool on);
// Gives the control the focus now (LostFocus/GotFocus run before it returns);
// called from a LostFocus, once the focus change under way is over.
void SetFocus(QWidget* w);
// SelStart 0, SelLength the whole text.
void SelectAll(QWidget* w);
// BackColor/ForeColor as the runtime's colour numbers (&HBBGGRR): 255 red,
// 16777215 white, 0 black.
void SetBackColor(QWidget* w, long color);
void SetForeColor(QWidget* w, long color);
long BackColor(const QWidget* w);
long ForeColor(const QWidget* w);
// Check box Value 0/1; option button Value.
int Value(const QCheckBox* c);
void SetValue(QCheckBox* c, int value);
bool Value(const QRadioButton* o);
void SetValue(QRadioButton* o, bool value);

// Queues keystrokes as the runtime's SendKeys; only "{tab}" is used.
void SendKeys(const QString& keys);

// DoEvents: lets the events waiting in the queue run (clicks, timers, paints)
// and comes back. They enter the program as the events of a modal box do.
void DoEvents();

// ---- Windows ------------------------------------------------------------------

class Form : public QWidget {
    Q_OBJECT
public:
    explicit Form(QWidget* parent = nullptr);
    ~Form() override;

    // Load: runs Form_Load (as an event). Called once by whoever opens the window.
    void Load();
    // Unload: the window closes and is destroyed; it starts afresh next time.
    void Unload();
    bool IsUnloaded() const { return unloaded_; }

    // The caption (window title).
    QString Caption() const { return windowTitle(); }
    void SetCaption(const QString& c) { setWindowTitle(c); }

    // The first control in tab order that can take the focus; nullptr when none.
    QWidget* FirstTabStop() const;

signals:
    void unloaded();

protected:
    virtual void Form_Load() {}
    void closeEvent(QCloseEvent* e) override;
    void showEvent(QShowEvent* e) override;

    // Event wiring. Each procedure runs through vb::RunEvent.
    void OnClick(QAbstractButton* b, std::function<void()> proc);
    void OnClick(ComboBox* c, std::function<void()> proc);
    void OnClick(ListBox* l, std::function<void()> proc);
    void OnClick(FlexGrid* g, std::function<void()> proc);
    void OnClick(CalendarControl* c, std::function<void()> proc);
    // The tab strip's Click carries the page that was in front.
    void OnClick(SSTab* t, std::function<void(int PreviousTab)> proc);
    void OnChange(QLineEdit* t, std::function<void()> proc);
    void OnChange(ComboBox* c, std::function<void()> proc);
    void OnChange(Label* l, std::function<void()> proc);
    void OnGotFocus(QWidget* w, std::function<void()> proc);
    void OnLostFocus(QWidget* w, std::function<void()> proc);
    void OnKeyPress(QWidget* w, std::function<void(int& KeyAscii)> proc);
    void OnDblClick(QWidget* w, std::function<void()> proc);
    // After the entry or cell under the mouse has become the chosen one.
    void OnDblClick(ListBox* l, std::function<void()> proc);
    void OnDblClick(FlexGrid* g, std::function<void()> proc);
    void OnTimer(Timer* t, std::function<void()> proc);
    // The mouse moving over the control (or, for the window itself, over its
    // bare area, not over one of its controls), buttons up or down: Button
    // 1 left, 2 right, 4 middle; Shift 1 Shift, 2 Ctrl, 4 Alt; X and Y in twips
    // from the control's corner. The windows show their help lines with it.
    void OnMouseMove(QWidget* w, std::function<void(int Button, int Shift, float X, float Y)> proc);

    bool eventFilter(QObject* o, QEvent* e) override;

private:
    struct Handlers {
        std::function<void()> gotFocus, lostFocus, dblClick;
        std::function<void(int&)> keyPress;
        std::function<void(int, int, float, float)> mouseMove;
    };
    bool mouseMoved(QWidget* w, const Handlers& h, QEvent* e);
    Handlers& handlers(QWidget* w);
    std::map<QObject*, Handlers> handlers_;
    // The viewport of a list or table view -> the view, whose handlers it feeds.
    std::map<QObject*, QWidget*> viewports_;
    bool unloaded_ = false;
};

// Finds a control of a window by its name, e.g. "Textven(3)"; nullptr when absent.
template <class W>
W* Control(QWidget* form, const QString& name) {
    return form->findChild<W*>(name);
}

// The control of the window whose caption has this access key (Alt+key), in
// tab order, among those enabled and visible; nullptr when none has it.
QWidget* AccessKeyControl(const Form* form, int key);

// What the access key of a control does: a button is focused and pressed, a
// label's buddy gets the focus.
void PressAccessKey(QWidget* control);

} // namespace vb
