// The steps every print button of the program goes through: the print dialog,
// then the window's print procedures one after the other on the Printer.
//
//   vb::RunPrintJob({.calendar = Calendario,
//                    .procedures = {[this] { cabeceraalbaran(); },
//                                   [this] { detallealbaran(); },
//                                   [this] { piealbaran(); }}});
//
// In order, with errors passed over (kept in Err for step 6):
//  1. with a title: App.Title is kept and set to it, so that it names the job;
//  2. the dialog will raise an error when cancelled (CancelError on);
//  3. the calendar is hidden;
//  4. the two fixed settings: ColorMode 2 (colour, for the red and green
//     letterheads) and TrackDefault on (the Printer follows the chosen printer);
//  5. the print dialog is shown, preset with the Printer's copies and
//     orientation, and what it sets is given to the Printer;
//  6. with no error pending (not cancelled, a printer exists): ScaleMode 4, each
//     procedure in turn with a yield to the event queue after it, and EndDoc;
//  7. the error is cleared; App.Title is put back whatever happened.
// A cancelled dialog, or a system with no printer at all, prints nothing and
// shows nothing.
#pragma once
#include "runtime/printer.h"
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

namespace vb {

// What the print dialog answers.
struct PrinterChoice {
    enum class Outcome { Chosen, Cancelled, NoPrinter };
    Outcome outcome = Outcome::Cancelled;
    PrintDestination destination;
    int copies = 1;
    int orientation = vbPRORPortrait;
};

// The print dialog as a print job shows it, preset with copies and orientation.
using PrintDialogFunction = std::function<PrinterChoice(int copies, int orientation)>;
// Replaces the print dialog the jobs show; an empty function gives back the
// runtime's own.
void SetPrintDialog(PrintDialogFunction dialog);
PrinterChoice ShowPrintDialog(int copies, int orientation);

// The errors the dialog raises when CancelError is on: cancelled, and no printer.
constexpr int cdlCancel = 32755;
constexpr int cdlNoDefaultPrn = 28663;

struct PrintJobSteps {
    QWidget* calendar = nullptr;     // hidden before the dialog
    std::optional<QString> title;    // names the job; App.Title is put back after
    std::vector<std::function<void()>> procedures;
};

// Runs the job; true when the procedures were run (the dialog chose a printer).
bool RunPrintJob(const PrintJobSteps& steps);

// Lets the event queue run, as the runtime's DoEvents.
void YieldToEvents();

} // namespace vb
