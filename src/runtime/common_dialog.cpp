#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include <QApplication>
#include <QFileDialog>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>

namespace vb {

QString CancelErrorDescription() { return QStringLiteral("Se ha seleccionado Cancelar."); }

void PrinterChoice::applyTo(QPrinter& printer) const {
    if (!outputFile.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(outputFile);
    } else {
        printer.setOutputFormat(QPrinter::NativeFormat);
        printer.setPrinterName(printerName);
    }
    printer.setCopyCount(copies);
    printer.setPageOrientation(orientation == cdlLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

QStringList QtNameFilters(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts).join(QLatin1Char(' '));
        out << parts[i] + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    return out;
}

namespace {

// The dialogs on screen, over the window that is active.
std::optional<QString> openOnScreen(const OpenRequest& r) {
    QFileDialog dialog(QApplication::activeWindow(),
                       r.title.isEmpty() ? QStringLiteral("Abrir") : r.title, r.initDir);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    const QStringList filters = QtNameFilters(r.filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (!r.fileName.isEmpty()) dialog.selectFile(r.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<PrinterChoice> printerOnScreen(const PrinterRequest& r) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setCopyCount(r.copies);
    printer.setPageOrientation(r.orientation == cdlLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    PrinterChoice choice;
    if (printer.outputFormat() == QPrinter::PdfFormat || !printer.outputFileName().isEmpty())
        choice.outputFile = printer.outputFileName();
    else
        choice.printerName = printer.printerName();
    choice.copies = printer.copyCount();
    choice.orientation =
        printer.pageLayout().orientation() == QPageLayout::Landscape ? cdlLandscape : cdlPortrait;
    return choice;
}

} // namespace

CommonDialog::CommonDialog(QObject* parent) : QObject(parent) {}

void CommonDialog::cancelled() const {
    if (CancelError) Raise(cdlCancel, CancelErrorDescription());
}

void CommonDialog::ShowOpen() {
    const OpenRequest request{.title = DialogTitle, .initDir = InitDir, .filter = Filter, .fileName = FileName};
    const std::optional<QString> chosen = RunModal([&] {
        if (DialogService* s = CurrentEnvironment().dialogs) return s->open(request);
        return openOnScreen(request);
    });
    if (!chosen) return cancelled();
    FileName = *chosen;
}

void CommonDialog::ShowPrinter() {
    const PrinterRequest request{.copies = Copies, .orientation = Orientation};
    const std::optional<PrinterChoice> chosen = RunModal([&] {
        if (DialogService* s = CurrentEnvironment().dialogs) return s->printer(request);
        return printerOnScreen(request);
    });
    if (!chosen) return cancelled();
    printer_ = *chosen;
    hasPrinter_ = true;
    Copies = printer_.copies;
    Orientation = printer_.orientation;
}

void CommonDialog::SetAction(int action) {
    if (action == 1)
        ShowOpen();
    else if (action == 5)
        ShowPrinter();
    else
        Raise(380, QStringLiteral("Valor de propiedad no válido"));
}

} // namespace vb
