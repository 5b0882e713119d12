// Runtime errors and the four ways the program meets them:
//  1. no trap: the error reaches the event loop, the runtime shows its message and
//     the program ends (Untrapped);
//  2. On Error Resume Next over a region: each statement that fails is skipped
//     (ResumeNext);
//  3. a trap that shows the number and description in one line and goes on;
//  4. the save report of the document windows (save_report.h).
#pragma once
#include <QString>
#include <exception>
#include <functional>
#include <type_traits>

namespace vb {

// A runtime error with its number and description, as the database engine and
// the runtime raise them (3134 "Error de sintaxis en la instrucción INSERT INTO.",
// 3022 duplicate key, 3346 wrong number of values, 13 type mismatch...).
struct RuntimeError : std::exception {
    int Number;
    QString Description;
    RuntimeError(int number, QString description)
        : Number(number), Description(std::move(description)) {}
    const char* what() const noexcept override;

private:
    mutable std::string what_;
};

[[noreturn]] void Raise(int number, const QString& description);

// The runtime error that stands for an exception of the standard library
// escaping a procedure: 9 for an index out of range, 7 for memory, 51 otherwise.
RuntimeError AsRuntimeError(const std::exception& e);

// The runtime's Err object: the last error seen by a trap (ResumeNext, Try).
struct ErrObject {
    int Number = 0;
    QString Description;
    void Clear() { Number = 0; Description.clear(); }
};
ErrObject& Err();

// Runs one statement under an error trap: a runtime error is recorded in Err()
// and given to onError (which may be empty); returns false when it failed.
bool Trap(const std::function<void()>& statement, const std::function<void(const RuntimeError&)>& onError);

// "On Error Resume Next" over a region: each call runs one statement; a runtime
// error in it is recorded in Err() and the next statement runs.
//   vb::ResumeNext r;  r([&]{ ... });  r([&]{ ... });
class ResumeNext {
public:
    // Runs one statement; returns false when it failed (and was skipped).
    bool operator()(const std::function<void()>& statement);
};

// The trap that tells the error in one line and goes on with the next
// statement: "Error " + number + " (" + description + ")" + where, in a plain
// message box. `where` is the trap's own ending, as ") in procedure
// MDIForm_Resize of Formulario MDI" or ") importando fichero" without the
// parenthesis: " in procedure MDIForm_Resize of Formulario MDI".
class OneLineTrap {
public:
    explicit OneLineTrap(QString where) : where_(std::move(where)) {}
    // Runs one statement; returns false when it failed and was reported.
    bool operator()(const std::function<void()>& statement);
    static QString Message(const RuntimeError& e, const QString& where);

private:
    QString where_;
};

// The runtime's End statement: thrown, unwinds whatever event procedure is
// running, and is caught where the event entered the program, which then ends.
struct EndProgram {};
[[noreturn]] void End();

// What happens with an error no procedure traps: the runtime's own message box
// (title "Velmarinda", critical icon), then the program ends.
[[noreturn]] void Untrapped(const RuntimeError& error);
// The text of that message.
QString UntrappedMessage(const RuntimeError& error);

// Runs an event procedure as the runtime does: an untrapped error shows its
// message and ends the program; End ends it. Every event that enters a window
// goes through here.
void RunEvent(const std::function<void()>& procedure);

// What the store does around each event that enters the program from the event
// loop (the session installs it): `begin` before the procedure, `end` after it
// returned (an error it raises is the event's untrapped error), `abandon` when
// the event ends the program (an untrapped error, End), before the message.
struct ActionHooks {
    std::function<void()> begin;
    std::function<void()> end;
    std::function<void()> abandon;
};
void SetActionHooks(ActionHooks hooks);

// Every modal box or dialog runs an event loop of its own, and so does a yield
// to the event queue (DoEvents): events that arrive meanwhile enter the program
// afresh, so that an untrapped error in one of them ends the program where it
// entered instead of travelling into the procedure that opened the box. The
// wait pointer gives way to the arrow over the box while it is open.
//
//   int answer = vb::RunModal([&] { return box.exec(); });
//
// If the program ended while the box was open, the procedure that opened it
// goes no further: End unwinds it once the box has closed.
class ModalScope {
public:
    // A yield to the event queue keeps the pointer as it is (arrowPointer false).
    explicit ModalScope(bool arrowPointer = true);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    // True when the program ended while the scope was open (and not before).
    bool programEndedInside() const;

private:
    int savedDepth_;
    bool endedBefore_;
    bool arrow_;
    std::exception_ptr savedHeld_;
};

template <class F>
auto RunModal(F&& body, bool arrowPointer = true) {
    bool ended = false;
    auto finish = [&ended] {
        if (ended) throw EndProgram{};
    };
    if constexpr (std::is_void_v<decltype(body())>) {
        {
            ModalScope scope(arrowPointer);
            body();
            ended = scope.programEndedInside();
        }
        finish();
    } else {
        auto result = [&] {
            ModalScope scope(arrowPointer);
            auto r = body();
            ended = scope.programEndedInside();
            return r;
        }();
        finish();
        return result;
    }
}

// Raises again the error of an event that code raised through the toolkit
// (held by RunEvent at the signal boundary); nothing when there is none. The
// runtime calls it as soon as control is back from the toolkit.
void RaiseHeld();

// How the program ends. The real program quits its event loop and exits; tests
// and the scenario driver install a handler that records the end instead
// (shorthand for the onEnd of the environment in force, environment.h).
using EndHandler = std::function<void()>;
void SetEndHandler(EndHandler handler);
// Called once the end has unwound to the event boundary.
void ProgramEnded();
bool HasEnded();
void ResetEnded();

} // namespace vb
