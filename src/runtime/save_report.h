// The save report: the error trap of the "Aceptar" button of the invoice, the
// delivery note and the supplier card. On any runtime error during the save it
// shows a box titled "ERROR" with the error, appends a report to errores.txt or
// erralbar.txt beside the program, and the save goes on with the next statement.
//
//   vb::SaveReportTrap trap(vb::kInvoiceReportFile, vb::SaveReportLayout::Document, [&] {
//       return vb::SaveReportState{ModoVentana, vb::InvoiceReportRecord({.ejercicio = ..., ...}),
//                                  QString::number(F), buscar};
//   });
//   trap([&] { BaseDatos().Execute(...); });   // a failing statement is reported and skipped
//   trap([&] { ... });
#pragma once
#include "runtime/errors.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <vector>

namespace vb {

inline const QString kInvoiceReportFile = QStringLiteral("errores.txt");      // invoices and supplier cards
inline const QString kDeliveryNoteReportFile = QStringLiteral("erralbar.txt"); // delivery notes

// One line of the record's data in the report: the label, right-aligned to 19
// characters with its colon, and the value of the matching control.
struct SaveReportLine {
    QString label; // e.g. "        Ejercicio: "
    QString value; // e.g. "2026"
};
using SaveReportRecord = std::vector<SaveReportLine>;

// The values a document window gives: those of its header controls.
struct DocumentReportValues {
    QString ejercicio;
    QString numero;
    QString nif;
    QString codigo;
    QString nombreFiscal;
    QString nombreComercial;
    QString apellidos;
    QString nombre;
};
SaveReportRecord InvoiceReportRecord(const DocumentReportValues& values);      // "   Número factura: "
SaveReportRecord DeliveryNoteReportRecord(const DocumentReportValues& values); // "   Número albaran: "

// The values of the supplier card: the entry being saved, then the supplier.
struct SupplierCardReportValues {
    QString ejercicio;
    QString tienda;
    QString serie;
    QString documento;
    QString numeroApunte;
    QString fecha;
    QString formaPago;
    QString nif;
    QString codigo;
    QString nombreFiscal;
    QString nombreComercial;
    QString apellidos;
    QString nombre;
};
SaveReportRecord SupplierCardReportRecord(const SupplierCardReportValues& values);

// The two windows write the end of the report a little differently:
//  Document:     empty line, "Estado de las variables: ", empty line, F, buscar,
//                two empty lines, the asterisks (and nothing after them);
//  SupplierCard: empty line, "Estado de las variables: ", F, buscar, two empty
//                lines, the asterisks, an empty line.
enum class SaveReportLayout { Document, SupplierCard };

// The text of the box (title "ERROR", style vbExclamation).
QString SaveReportMessage(const RuntimeError& error);

// The text appended to the report file for one error, at the given moment.
// Lines end in "\n": the program runs on Linux and writes plain Linux text files
// (the Windows program wrote "\r\n").
QString SaveReportText(const RuntimeError& error, const QString& operation, const SaveReportRecord& record,
                       const QString& f, const QString& buscar, SaveReportLayout layout,
                       const QDateTime& moment);

// Shows the box and appends the report, dated by the clock, to AppPath() + "/" +
// fileName (created when missing, UTF-8). A report that cannot be written raises
// the runtime's file error (75, or 76 when the folder is missing), which nothing
// traps further.
void ShowSaveReport(const RuntimeError& error, const QString& fileName, const QString& operation,
                    const SaveReportRecord& record, const QString& f, const QString& buscar,
                    SaveReportLayout layout = SaveReportLayout::Document);

// What the trap reads from the window at the moment of an error.
struct SaveReportState {
    QString operation; // the window's mode letter (ModoVentana)
    SaveReportRecord record;
    QString f;      // the save procedure's line counter
    QString buscar; // the save procedure's lookup flag
};

// The trap around the statements of one save: each call runs one statement; a
// runtime error in it is reported (box and file) and the next statement runs,
// as "Resume Next" does after the report. The state is read at each error, so
// the report shows the values of that moment.
class SaveReportTrap {
public:
    SaveReportTrap(QString fileName, SaveReportLayout layout, std::function<SaveReportState()> state);
    // Returns false when the statement failed and was reported.
    bool operator()(const std::function<void()>& statement);
    int reports() const { return reports_; }

private:
    QString fileName_;
    SaveReportLayout layout_;
    std::function<SaveReportState()> state_;
    int reports_ = 0;
};

} // namespace vb
