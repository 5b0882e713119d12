// What the program takes from the machine it runs on, in one place: the message
// boxes and dialogs it shows, the clock, the program folder (App.Path) and what
// happens when the program ends.
//
// The real program runs with the default environment: boxes and dialogs on
// screen, the machine's clock, the folder of the executable, and an end that
// quits the event loop (main.cpp sets it). A test or the scenario driver
// installs its own for as long as it runs:
//
//   vb::InstalledEnvironment env({.messageBoxes = &boxes, .dialogs = &dialogs,
//                                 .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
//                                 .programFolder = dir.path(),
//                                 .onEnd = [&] { ended = true; }});
//
// and the one before comes back when `env` goes out of scope.
#pragma once
#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

namespace vb {

class MessageBoxService;
class DialogService;
class PrintEnvironment;

struct Environment {
    // Where message boxes go; nullptr shows real boxes.
    MessageBoxService* messageBoxes = nullptr;
    // Who answers the common dialog (open and print); nullptr shows real dialogs.
    DialogService* dialogs = nullptr;
    // A pinned clock stands still at this moment; none follows the machine's clock.
    std::optional<QDateTime> clock;
    // App.Path; empty is the folder of the executable.
    QString programFolder;
    // Called once when the program ends (End, or an untrapped error).
    std::function<void()> onEnd;
    // Where printed pages go; nullptr sends them to the system's printers and
    // PDF files (printer.h). Tests put the recording printer here.
    PrintEnvironment* printers = nullptr;
};

// The environment in force. The runtime reads it; the shorthands SetAppPath,
// SetMessageBoxService, clock::pin, SetEndHandler and SetPrintEnvironment
// change one part of it.
Environment& CurrentEnvironment();

// Installs an environment while it lives and gives back the one before at its
// end. Each installation is a fresh run of the program: the end of a previous
// run is forgotten and the Printer starts afresh with no document open, both
// when it is installed and when it is removed.
class InstalledEnvironment {
public:
    explicit InstalledEnvironment(Environment environment);
    ~InstalledEnvironment();
    InstalledEnvironment(const InstalledEnvironment&) = delete;
    InstalledEnvironment& operator=(const InstalledEnvironment&) = delete;

    Environment& operator*() { return CurrentEnvironment(); }
    Environment* operator->() { return &CurrentEnvironment(); }

private:
    Environment previous_;
};

} // namespace vb
