#include "printing/print_job.h"
#include "printing/membrete_ini.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"

namespace vb {

void UsePrinterChoice(const PrinterChoice& choice) {
    PrintDestination where;
    if (!choice.outputFile.isEmpty()) {
        where.kind = PrintDestination::Kind::File;
        where.file = choice.outputFile;
    } else if (!choice.printerName.isEmpty()) {
        where.kind = PrintDestination::Kind::Printer;
        where.printer = choice.printerName;
    } else {
        Raise(cdlNoDefaultPrn, QStringLiteral("No hay ninguna impresora predeterminada."));
    }
    Printer().SetDestination(where);
    Printer().SetCopies(choice.copies);
    Printer().SetOrientation(choice.orientation);
}

bool RunPrintJob(const PrintJobSteps& steps) {
    PrinterObject& printer = Printer();
    CommonDialog* dialog = steps.dialog;
    if (!dialog) Raise(91, QStringLiteral("Variable de objeto o bloque With no establecido"));
    Err().Clear();
    ResumeNext next;

    struct PutTitleBack {
        bool active;
        QString title;
        ~PutTitleBack() {
            if (active) SetAppTitle(title);
        }
    } putBack{steps.title.has_value(), AppTitle()};
    if (steps.title) next([&] { SetAppTitle(*steps.title); });

    next([&] { dialog->CancelError = true; });
    next([&] {
        if (steps.calendar) SetVisible(steps.calendar, false);
    });
    next([&] { printer.SetColorMode(vbPRCMColor); });
    next([&] { printer.SetTrackDefault(true); });
    next([&] {
        dialog->Copies = printer.Copies();
        dialog->Orientation = printer.Orientation();
        dialog->ShowPrinter();
        UsePrinterChoice(dialog->Printer());
    });

    bool printed = false;
    if (Err().Number == 0) {
        printed = true;
        next([&] { printer.SetScaleMode(4); });
        // A bad membrete.ini is not passed over: the document is given up and
        // the error goes on to the window's event, whose runtime message tells
        // what is wrong with the file.
        std::exception_ptr membrete;
        for (const auto& procedure : steps.procedures) {
            next([&] {
                try {
                    procedure();
                } catch (const vel::letterheads::MembreteNoValido&) {
                    membrete = std::current_exception();
                    throw;
                }
            });
            if (membrete) {
                printer.KillDoc();
                printer.ForgetChosenFile();
                Err().Clear();
                std::rethrow_exception(membrete);
            }
            DoEvents();
        }
        next([&] { printer.EndDoc(); });
    }
    // The file of this job's dialog is this job's alone, even when it printed
    // nothing on it.
    printer.ForgetChosenFile();
    Err().Clear();
    return printed;
}

} // namespace vb
