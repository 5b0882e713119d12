// The steps every print button of the program goes through: the print dialog,
// then the window's print procedures one after the other on the Printer.
//
//   vb::RunPrintJob({.dialog = CommonDialog1,
//                    .calendar = Calendario,
//                    .procedures = {[this] { cabeceraalbaran(); },
//                                   [this] { detallealbaran(); },
//                                   [this] { piealbaran(); }}});
//
// In order, with errors passed over (kept in Err for step 6):
//  1. with a title: App.Title is kept and set to it, so that it names the job;
//  2. CancelError is set on the dialog;
//  3. the calendar is hidden;
//  4. the two fixed settings: ColorMode 2 (colour, for the red and green
//     letterheads) and TrackDefault on (the Printer follows the chosen printer);
//  5. the print dialog is shown with the Printer's copies and orientation
//     preset, and what it chose is given to the Printer: the printer or the PDF
//     file, the copies, the orientation;
//  6. with no error pending (not cancelled, a printer exists): ScaleMode 4, each
//     procedure in turn with a yield to the event queue after it, and EndDoc;
//  7. the error is cleared; App.Title is put back whatever happened.
// A cancelled dialog, or a system with no printer at all, prints nothing and
// shows nothing.
// A file chosen in the dialog is this job's alone: it is forgotten at the end,
// so a later document without a dialog never goes over it. A bad membrete.ini
// is the one error not passed over: the document is given up (KillDoc) and the
// error goes on to the window's event, whose runtime message names the fault.
#pragma once
#include "runtime/common_dialog.h"
#include "runtime/printer.h"
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

namespace vb {

// The error of a print dialog that has no printer to offer.
constexpr int cdlNoDefaultPrn = 28663;

struct PrintJobSteps {
    CommonDialog* dialog = nullptr;  // the window's CommonDialog1
    QWidget* calendar = nullptr;     // hidden before the dialog
    std::optional<QString> title;    // names the job; App.Title is put back after
    std::vector<std::function<void()>> procedures;
};

// Runs the job; true when the procedures were run (the dialog chose a printer).
bool RunPrintJob(const PrintJobSteps& steps);

// Gives the Printer what a print dialog chose. A choice with neither a printer
// nor a file is no printer at all: error 28663.
void UsePrinterChoice(const PrinterChoice& choice);

} // namespace vb
