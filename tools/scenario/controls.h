// What the scenario driver can do with each kind of control: one adapter a
// kind. An adapter tells the control's state for `show`, its properties for
// `expect`, and drives it with real mouse and key events for `click`,
// `dblclick`, `select`, `tab` and `pick`.
#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

namespace vel::scenario {

class ControlKind {
public:
    virtual ~ControlKind() = default;
    virtual bool fits(QWidget* w) const = 0;

    // `show`: the parts after the name and kind and before Enabled ...
    virtual QStringList state(QWidget*) const { return {}; }
    // ... and what follows the whole line (list entries, grid cells).
    virtual QString details(QWidget*) const { return {}; }
    // `expect CONTROL.Property`: none when the kind has no such property.
    virtual std::optional<QString> property(QWidget*, const QString&) const { return std::nullopt; }

    // `click CONTROL [WHERE...]`, `dblclick CONTROL [WHERE...]`.
    virtual void click(QWidget* w, const QStringList& where) const;
    virtual void dblclick(QWidget* w, const QStringList& where) const;
    // `select CONTROL INDEX|"text"`: byText when the entry is named by its text.
    virtual void select(QWidget* w, const QString& entry, bool byText) const;
    // `tab CONTROL N|"caption"`.
    virtual void tab(QWidget* w, const QString& page, bool byCaption) const;
    // `pick CONTROL DD/MM/YYYY`.
    virtual void pick(QWidget* w, const QDate& day) const;
};

// The adapter for a control (the plain one when no other fits).
const ControlKind& KindOf(QWidget* w);

// Gives the control the focus as clicking into it does (the window is already active).
void FocusOn(QWidget* w);

// A real double click at a point of a widget: press, release, double click, release.
void DoubleClickAt(QWidget* w, const QPoint& at);

} // namespace vel::scenario
