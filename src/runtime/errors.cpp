#include "runtime/errors.h"
#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include <QGuiApplication>

#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vb {

const char* RuntimeError::what() const noexcept {
    if (what_.empty()) what_ = QStringLiteral("%1: %2").arg(Number).arg(Description).toStdString();
    return what_.c_str();
}

void Raise(int number, const QString& description) { throw RuntimeError(number, description); }

ErrObject& Err() {
    static ErrObject err;
    return err;
}

// Runs one statement under a trap: a runtime error is recorded in Err, handed
// to the trap's own handling, and the statement is over.
// An error of an event the statement raised through the toolkit (a text box's
// Change after code set its text) belongs to the statement too.
bool Trap(const std::function<void()>& statement, const std::function<void(const RuntimeError&)>& onError) {
    try {
        try {
            statement();
            RaiseHeld();
        } catch (const RuntimeError&) {
            throw;
        } catch (const std::exception& e) {
            throw AsRuntimeError(e);
        }
        return true;
    } catch (const RuntimeError& e) {
        Err().Number = e.Number;
        Err().Description = e.Description;
        if (onError) onError(e);
        return false;
    }
}

// The runtime's own errors for what the standard library raises: an index
// past the end of a list (.at()) is the runtime's subscript error, a failed
// allocation its out-of-memory error, anything else an internal error.
RuntimeError AsRuntimeError(const std::exception& e) {
    if (dynamic_cast<const std::out_of_range*>(&e) || dynamic_cast<const std::length_error*>(&e))
        return RuntimeError(9, QStringLiteral("El subíndice está fuera del intervalo"));
    if (dynamic_cast<const std::bad_alloc*>(&e)) return RuntimeError(7, QStringLiteral("Memoria insuficiente"));
    return RuntimeError(51, QStringLiteral("Error interno"));
}

bool ResumeNext::operator()(const std::function<void()>& statement) { return Trap(statement, nullptr); }

QString OneLineTrap::Message(const RuntimeError& e, const QString& where) {
    return "Error " + QString::number(e.Number) + " (" + e.Description + ")" + where;
}

bool OneLineTrap::operator()(const std::function<void()>& statement) {
    return Trap(statement, [this](const RuntimeError& e) { MsgBox(Message(e, where_)); });
}

void End() { throw EndProgram{}; }

QString UntrappedMessage(const RuntimeError& error) {
    return QStringLiteral("Se ha producido el error '%1' en tiempo de ejecución:\n\n%2")
        .arg(error.Number)
        .arg(error.Description);
}

void Untrapped(const RuntimeError& error) {
    MsgBox(UntrappedMessage(error), vbCritical);
    End();
}

namespace {
int depth = 0;
bool ended = false;
// The error (or End) of an event raised by code, on its way back to that code.
std::exception_ptr held;
ActionHooks actionHooks;
} // namespace

// An event entering the program from the event loop is the boundary where an
// untrapped error or End stops. An event raised by the program's own code (a
// Click fired by setting ListIndex) runs inside the procedure that raised it, and
// its errors travel up to that procedure as they would in the runtime.
//
// Between the two stands the toolkit's signal emission, which no exception may
// cross. So the nested event's error is caught here, held, and raised again by
// RaiseHeld once the toolkit has returned: the runtime's setters (ListIndex,
// Text, Caption, Value, SetFocus, Load) do that as they return, a trap does it
// at the end of its statement, and the event boundary at the end of the
// procedure. Until then, further events raised by code do not run: the
// procedure that raised the first one is on its way out.
void RunEvent(const std::function<void()>& procedure) {
    if (ended) return;
    if (depth > 0) {
        if (held) return;
        try {
            procedure();
        } catch (...) {
            held = std::current_exception();
        }
        return;
    }
    ++depth;
    const ActionHooks hooks = actionHooks;
    auto abandon = [&hooks] {
        if (hooks.abandon) hooks.abandon();
    };
    try {
        try {
            if (hooks.begin) hooks.begin();
            try {
                procedure();
                RaiseHeld();
            } catch (...) {
                abandon();
                throw;
            }
            if (hooks.end) hooks.end();
        } catch (const RuntimeError& e) {
            held = nullptr;
            abandon();
            Untrapped(e);
        } catch (const std::exception& e) {
            held = nullptr;
            abandon();
            Untrapped(AsRuntimeError(e));
        }
    } catch (const EndProgram&) {
        held = nullptr;
        abandon();
        --depth;
        ProgramEnded();
        return;
    }
    --depth;
}

void SetActionHooks(ActionHooks hooks) { actionHooks = std::move(hooks); }

void RaiseHeld() {
    if (!held) return;
    std::exception_ptr e = std::exchange(held, nullptr);
    std::rethrow_exception(e);
}

void SetEndHandler(EndHandler handler) { CurrentEnvironment().onEnd = std::move(handler); }

void ProgramEnded() {
    if (ended) return;
    ended = true;
    // A copy: the handler may install another environment.
    const EndHandler onEnd = CurrentEnvironment().onEnd;
    if (onEnd) onEnd();
}

bool HasEnded() { return ended; }
void ResetEnded() {
    ended = false;
    depth = 0;
    held = nullptr;
}

// A modal box runs its own event loop: events that arrive while it is open enter
// the program afresh, and an error held for the code that opened the box waits
// until the box is closed.
ModalScope::ModalScope(bool arrowPointer)
    : savedDepth_(depth), endedBefore_(ended), arrow_(false), savedHeld_(std::exchange(held, nullptr)) {
    depth = 0;
    // The hourglass stays over the window that is busy; the box takes the arrow.
    if (arrowPointer && qobject_cast<QGuiApplication*>(QCoreApplication::instance()) && QGuiApplication::overrideCursor()) {
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        arrow_ = true;
    }
}

ModalScope::~ModalScope() {
    if (arrow_) QGuiApplication::restoreOverrideCursor();
    depth = savedDepth_;
    if (savedHeld_) held = std::exchange(savedHeld_, nullptr);
}

bool ModalScope::programEndedInside() const { return ended && !endedBefore_; }

} // namespace vb
