#include "runtime/save_report.h"

#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vb {

namespace {

SaveReportRecord partnerLines(SaveReportRecord lines, const QString& nif, const QString& codigo,
                              const QString& nombreFiscal, const QString& nombreComercial,
                              const QString& apellidos, const QString& nombre) {
    lines.push_back({QStringLiteral("              NIF: "), nif});
    lines.push_back({QStringLiteral("           CODIGO: "), codigo});
    lines.push_back({QStringLiteral("    NOMBRE FISCAL: "), nombreFiscal});
    lines.push_back({QStringLiteral(" NOMBRE COMERCIAL: "), nombreComercial});
    lines.push_back({QStringLiteral("        APELLIDOS: "), apellidos});
    lines.push_back({QStringLiteral("           NOMBRE: "), nombre});
    return lines;
}

SaveReportRecord documentRecord(const QString& numberLabel, const DocumentReportValues& v) {
    return partnerLines({{QStringLiteral("        Ejercicio: "), v.ejercicio}, {numberLabel, v.numero}}, v.nif,
                        v.codigo, v.nombreFiscal, v.nombreComercial, v.apellidos, v.nombre);
}

} // namespace

SaveReportRecord InvoiceReportRecord(const DocumentReportValues& values) {
    return documentRecord(QStringLiteral("   Número factura: "), values);
}

SaveReportRecord DeliveryNoteReportRecord(const DocumentReportValues& values) {
    return documentRecord(QStringLiteral("   Número albaran: "), values);
}

// The entry's own lines come first. The line of the entry's document is
// labelled "        Documento: ", aligned like the others.
SaveReportRecord SupplierCardReportRecord(const SupplierCardReportValues& v) {
    return partnerLines(
        {
            {QStringLiteral("        Ejercicio: "), v.ejercicio},
            {QStringLiteral("           Tienda: "), v.tienda},
            {QStringLiteral("            Serie: "), v.serie},
            {QStringLiteral("        Documento: "), v.documento},
            {QStringLiteral("    Número apunte: "), v.numeroApunte},
            {QStringLiteral("            Fecha: "), v.fecha},
            {QStringLiteral("       Forma Pago: "), v.formaPago},
        },
        v.nif, v.codigo, v.nombreFiscal, v.nombreComercial, v.apellidos, v.nombre);
}

// Each part on a line of its own, with an empty line after the first line and
// after the cause.
QString SaveReportMessage(const RuntimeError& error) {
    return QStringLiteral("Se ha detectado el siguiente error: ") + u'\n' + u'\n' +
           QStringLiteral("  Error nº: ") + QString::number(error.Number) + u'\n' +
           QStringLiteral("  Causa  : ") + error.Description + u'\n' + u'\n' +
           QStringLiteral("Es posible que se perdiesen datos o no se guardasen correctamente, ") + u'\n' +
           QStringLiteral("pero el programa continuará ejecutándose ignorando dicho error. ") + u'\n' +
           QStringLiteral("Se generará un registro de errores para su posterior tratamiento. ");
}

QString SaveReportText(const RuntimeError& error, const QString& operation, const SaveReportRecord& record,
                       const QString& f, const QString& buscar, SaveReportLayout layout,
                       const QDateTime& moment) {
    QStringList lines;
    lines << QString();
    lines << QStringLiteral("Fecha: ") + Format(moment.date(), QStringLiteral("dd/mm/yyyy"));
    lines << QStringLiteral(" Hora: ") + Format(moment.time(), QStringLiteral("hh:mm:ss"));
    lines << QString();
    lines << QStringLiteral("Error: ") + QString::number(error.Number);
    lines << QStringLiteral(" Tipo: ") + error.Description;
    lines << QString();
    lines << QStringLiteral(" Operación actual: ") + operation;
    for (const SaveReportLine& line : record) lines << line.label + line.value;
    lines << QString();
    lines << QStringLiteral("Estado de las variables: ");
    if (layout == SaveReportLayout::Document) lines << QString();
    lines << QStringLiteral("         F: ") + f;
    lines << QStringLiteral("    buscar: ") + buscar;
    lines << QString() << QString();
    lines << QString(80, u'*');
    if (layout == SaveReportLayout::SupplierCard) lines << QString();
    return lines.join(u'\n') + u'\n';
}

void ShowSaveReport(const RuntimeError& error, const QString& fileName, const QString& operation,
                    const SaveReportRecord& record, const QString& f, const QString& buscar,
                    SaveReportLayout layout) {
    MsgBox(SaveReportMessage(error), vbExclamation, QStringLiteral("ERROR"));

    const QString path = AppPath() + u'/' + fileName;
    if (!QFileInfo(QFileInfo(path).absolutePath()).isDir())
        Raise(76, QStringLiteral("No se ha encontrado la ruta de acceso"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo"));
    const QDateTime moment(Date(), Time());
    file.write(SaveReportText(error, operation, record, f, buscar, layout, moment).toUtf8());
    file.close();
}

SaveReportTrap::SaveReportTrap(QString fileName, SaveReportLayout layout, std::function<SaveReportState()> state)
    : fileName_(std::move(fileName)), layout_(layout), state_(std::move(state)) {}

bool SaveReportTrap::operator()(const std::function<void()>& statement) {
    return Trap(statement, [this](const RuntimeError& error) {
        ++reports_;
        const SaveReportState s = state_ ? state_() : SaveReportState{};
        ShowSaveReport(error, fileName_, s.operation, s.record, s.f, s.buscar, layout_);
    });
}

} // namespace vb
