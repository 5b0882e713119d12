#include "runtime/errors.h"
#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include <QGuiApplication>

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
bool Trap(const std::function<void()>& statement, const std::function<void(const RuntimeError&)>& onError) {
    try {
        statement();
        return true;
    } catch (const RuntimeError& e) {
        Err().Number = e.Number;
        Err().Description = e.Description;
        if (onError) onError(e);
        return false;
    }
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
} // namespace

// An event entering the program from the event loop is the boundary where an
// untrapped error or End stops. An event raised by the program's own code (a
// Click fired by setting ListIndex) runs inside the procedure that raised it, and
// its errors travel up to that procedure as they would in the runtime.
void RunEvent(const std::function<void()>& procedure) {
    if (ended) return;
    if (depth > 0) {
        procedure();
        return;
    }
    ++depth;
    try {
        try {
            procedure();
        } catch (const RuntimeError& e) {
            Untrapped(e);
        }
    } catch (const EndProgram&) {
        --depth;
        ProgramEnded();
        return;
    }
    --depth;
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
}

ModalScope::ModalScope(bool arrowPointer) : savedDepth_(depth), endedBefore_(ended), arrow_(false) {
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
}

bool ModalScope::programEndedInside() const { return ended && !endedBefore_; }

} // namespace vb
