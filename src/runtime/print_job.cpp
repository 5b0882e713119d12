#include "runtime/print_job.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include <QCoreApplication>

namespace vb {

int EventDepthSave();
void EventDepthRestore(int d);

namespace {
PrintDialogFunction& dialogOverride() {
    static PrintDialogFunction f;
    return f;
}

// Until the common dialog stands, the runtime's own print dialog has no
// printer to offer.
PrinterChoice noDialog(int copies, int orientation) {
    PrinterChoice c;
    c.outcome = PrinterChoice::Outcome::NoPrinter;
    c.copies = copies;
    c.orientation = orientation;
    return c;
}
} // namespace

void SetPrintDialog(PrintDialogFunction dialog) { dialogOverride() = std::move(dialog); }

PrinterChoice ShowPrintDialog(int copies, int orientation) {
    int saved = EventDepthSave();
    struct Restore {
        int d;
        ~Restore() { EventDepthRestore(d); }
    } restore{saved};
    return dialogOverride() ? dialogOverride()(copies, orientation) : noDialog(copies, orientation);
}

// Events that arrive while the queue runs enter the program afresh, as they do
// while a modal box is open.
void YieldToEvents() {
    int saved = EventDepthSave();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    EventDepthRestore(saved);
}

bool RunPrintJob(const PrintJobSteps& steps) {
    PrinterObject& printer = Printer();
    Err().Clear();
    ResumeNext next;

    const QString keptTitle = AppTitle();
    struct PutTitleBack {
        bool active;
        QString title;
        ~PutTitleBack() {
            if (active) SetAppTitle(title);
        }
    } putBack{steps.title.has_value(), keptTitle};
    if (steps.title) next([&] { SetAppTitle(*steps.title); });

    // Step 2, CancelError, is the error the dialog's answer raises below.
    next([&] {
        if (steps.calendar) SetVisible(steps.calendar, false);
    });
    next([&] { printer.SetColorMode(vbPRCMColor); });
    next([&] { printer.SetTrackDefault(true); });
    next([&] {
        const PrinterChoice choice = ShowPrintDialog(printer.Copies(), printer.Orientation());
        switch (choice.outcome) {
        case PrinterChoice::Outcome::Cancelled: Raise(cdlCancel, QStringLiteral("Se ha seleccionado Cancelar."));
        case PrinterChoice::Outcome::NoPrinter:
            Raise(cdlNoDefaultPrn, QStringLiteral("No hay ninguna impresora predeterminada."));
        case PrinterChoice::Outcome::Chosen: break;
        }
        printer.SetDestination(choice.destination);
        printer.SetCopies(choice.copies);
        printer.SetOrientation(choice.orientation);
    });

    bool printed = false;
    if (Err().Number == 0) {
        printed = true;
        next([&] { printer.SetScaleMode(4); });
        for (const auto& procedure : steps.procedures) {
            next(procedure);
            YieldToEvents();
        }
        next([&] { printer.EndDoc(); });
    }
    Err().Clear();
    return printed;
}

} // namespace vb
