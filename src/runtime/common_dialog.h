// The common dialog control (CommonDialog1 on a window): the open-file dialog
// and the print dialog. Windows fill its properties and call ShowOpen or
// ShowPrinter; the real program shows Qt's dialogs, and tests and the scenario
// driver answer through the DialogService of their environment (environment.h).
//
// Choosing a file to import:
//
//   CommonDialog1->InitDir = vb::AppPath() + "/importacion";
//   CommonDialog1->Filter = "Archivos de Excel(*.xls,*.xlsx)|*.xls;*.xlsx|Todos los archivos(*.*)|*.*";
//   CommonDialog1->FileName = "";
//   CommonDialog1->DialogTitle = "Seleccionar Hoja Excel";
//   CommonDialog1->ShowOpen();
//   if (CommonDialog1->FileName.isEmpty()) return;      // cancelled
//
// Choosing a printer (a cancel raises error 32755 when CancelError is set):
//
//   CommonDialog1->CancelError = true;
//   CommonDialog1->Copies = 1;
//   CommonDialog1->Orientation = vb::cdlPortrait;
//   CommonDialog1->ShowPrinter();
//   const vb::PrinterChoice& impresora = CommonDialog1->Printer();
//   // impresora.applyTo(qprinter) gives a QPrinter the chosen printer (or
//   // file), copies and orientation.
#pragma once
#include <QObject>
#include <QString>
#include <optional>

class QPrinter;

namespace vb {

enum PrinterOrientation { cdlPortrait = 1, cdlLandscape = 2 };
// The runtime's error for a cancelled common dialog with CancelError set.
enum { cdlCancel = 32755 };
QString CancelErrorDescription();

// What the print dialog hands to the printing: the printer, or the file the
// job goes to instead; the copies and the orientation the user left.
struct PrinterChoice {
    QString printerName;  // the chosen printer; empty when printing to a file
    QString outputFile;   // "print to file": the file (PDF); empty for a printer
    int copies = 1;
    int orientation = cdlPortrait;
    // Sets the printer, or the output file, the copies and the orientation of a QPrinter.
    void applyTo(QPrinter& printer) const;
};

// What a window asks of the open dialog.
struct OpenRequest {
    QString title;    // DialogTitle
    QString initDir;  // InitDir
    QString filter;   // Filter, "Description|*.a;*.b|Description|*.*"
    QString fileName; // FileName as the window left it
};

// What a window presets on the print dialog.
struct PrinterRequest {
    int copies = 1;
    int orientation = cdlPortrait;
};

// Who answers the dialogs: the real program shows Qt's; tests script answers.
class DialogService {
public:
    virtual ~DialogService() = default;
    // The path of the chosen file; none when the user cancels.
    virtual std::optional<QString> open(const OpenRequest& request) = 0;
    // The chosen printer; none when the user cancels.
    virtual std::optional<PrinterChoice> printer(const PrinterRequest& request) = 0;
};

// The filter of the common dialog as Qt's name filters:
// "Archivos de Excel(*.xls,*.xlsx)|*.xls;*.xlsx" -> "Archivos de Excel(*.xls,*.xlsx) (*.xls *.xlsx)".
QStringList QtNameFilters(const QString& filter);

class CommonDialog : public QObject {
    Q_OBJECT
public:
    explicit CommonDialog(QObject* parent = nullptr);

    // Open dialog.
    QString DialogTitle;
    QString InitDir;
    QString Filter;
    QString FileName;  // in: the name proposed; out: the full path chosen
    // Print dialog.
    int Copies = 1;
    int Orientation = cdlPortrait;
    // Both: a cancel raises error 32755 instead of returning quietly.
    bool CancelError = false;

    // Shows the open dialog (Action 1). On a choice FileName becomes the chosen
    // file's full path; on a cancel FileName stays as it was.
    void ShowOpen();
    // Shows the print dialog (Action 5) with Copies and Orientation preset. On a
    // choice Copies, Orientation and Printer() take what the user chose.
    void ShowPrinter();
    // Action 1 is ShowOpen, 5 ShowPrinter.
    void SetAction(int action);

    // The printer of the last ShowPrinter that was not cancelled.
    const PrinterChoice& Printer() const { return printer_; }
    // False until a ShowPrinter has chosen a printer.
    bool HasPrinter() const { return hasPrinter_; }

private:
    void cancelled() const;
    PrinterChoice printer_;
    bool hasPrinter_ = false;
};

} // namespace vb
