#include "sales/formfacturaventa.h"

#include "core/record_store.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/common_dialog.h"
#include "runtime/errors.h"
#include "runtime/mouse_pointer.h"
#include "runtime/msgbox.h"
#include "printing/print_job.h"
#include "runtime/printer.h"
#include "sales/receipts.h"
#include "sales/workbook.h"
#include "runtime/vb.h"
#include "ui_document_window.h"
#include "ui_formfacturaventa.h"
#include "core/sql_values.h"

#include <QDir>
#include <QPlainTextEdit>

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {

const TextosDocumento kFactura{
    .documento = DocumentoVenta::Factura,
    .serie = Documento::Factura,
    .palabra = QStringLiteral("factura"),
    .rotulo = QStringLiteral("Factura"),
    .tituloTotal = QStringLiteral("Total Factura"),
    .sinSerie = QStringLiteral("No se encuentran facturas disponibles"),
    .clienteSinDocumentos = QStringLiteral("El cliente seleccionado no tiene nada facturado"),
    .clienteSinNumeros = QStringLiteral("El cliente seleccionado no tiene nada facturado"),
    .avisoSinNumerosEnNuevo = false,
    .sinCliente = QStringLiteral("No se encuentra el cliente de la factura"),
    .preguntaModificar = QStringLiteral(" ¿Desea guardar las modificaciones efectuadas en la factura?"),
    .frame2EnBorrar = true,
    .precioNoNumericoACero = false,
    .nuloComoVacio = true,
    .estadoNuevo = QStringLiteral("1"),
    .ficheroErrores = vb::kInvoiceReportFile,
    .registroErrores = &vb::InvoiceReportRecord,
};

// The month before the current one, by Format(today, "mm").
const char* const kMesAnterior[12] = {" DICIEMBRE", " ENERO", " FEBRERO", " MARZO",   " ABRIL",   " MAYO",
                                      " JUNIO",     " JULIO", " AGOSTO",  " SEPTIEMBRE", " OCTUBRE", " NOVIEMBRE"};

} // namespace

FormFacturaVenta::FormFacturaVenta(QWidget* parent)
    : DocumentWindow(kFactura, parent), propio(std::make_unique<Ui::FormFacturaVenta>()) {
    // Until config.ini is read the tag is empty, which is not FERROBANDA.
    Lineas_->SetReglas(ReglasFactura(ClientePrograma));
    auto* piezas = new QWidget;
    propio->setupUi(piezas);
    PonerControlesPropios(piezas, {propio->CheckCuenta});
    vb::SetVisible(propio->CommandImportar, false); // hidden by design; ORTA shows it
    vb::SetVisible(propio->TextDescripcionLarga, false);

    Lineas_->SetVentana({.Commandaceptar = ui->Commandaceptar,
                         .OcultarCalendario = [this] { OcultarCalendario(); },
                         .Labelivaiva = [this] { return ui->Labelivaiva->text(); },
                         .Labelivare = [this] { return ui->Labelivare->text(); },
                         .ProductoEncontrado = [this] { LineaMensual(); }});
    OnClick(propio->Commandfactura, [this] { Commandfactura_Click(); });
    OnClick(propio->Commandrecibos, [this] { Commandrecibos_Click(); });
    OnClick(propio->CommandDescripcionLarga, [this] { CommandDescripcionLarga_Click(); });
    OnLostFocus(propio->TextDescripcionLarga, [this] { TextDescripcionLarga_LostFocus(); });
    OnClick(propio->CommandImportar, [this] { CommandImportar_Click(); });
}

FormFacturaVenta::~FormFacturaVenta() = default;

bool FormFacturaVenta::EsOrta() const { return ClientePrograma == QLatin1String("ORTA"); }

// Only the tag of config.ini, read with no trap (unlike the delivery note's
// read): without the file the window's load fails and the program ends, as the
// products window and the counter do. The store name isn't looked up. The
// account tick is ORTA's; so is the import button, shown and off until a mode.
void FormFacturaVenta::CargarPropio() {
    ClientePrograma = LeeConfiguracion(LecturaConfiguracion::SoloEtiqueta).ClientePrograma;
    if (ClientePrograma.isEmpty()) ClientePrograma = kClienteProgramaPorDefecto;
    Lineas_->SetReglas(ReglasFactura(ClientePrograma));
    if (!EsOrta()) vb::SetVisible(propio->CheckCuenta, false);
    if (EsOrta()) {
        vb::SetVisible(propio->CommandImportar, true);
        vb::SetEnabled(propio->CommandImportar, false);
    }
}

// The print buttons and the account tick of each mode: on in "N", "M" and "O"
// (the import too in "N", for ORTA); "B" leaves them as they are.
void FormFacturaVenta::BotonesDelModo() {
    if (ModoVentana == Modo::Borrar) return;
    for (QWidget* w : {static_cast<QWidget*>(propio->Commandfactura), static_cast<QWidget*>(propio->Commandrecibos),
                       static_cast<QWidget*>(propio->CheckCuenta)})
        vb::SetEnabled(w, true);
    if (ModoVentana == Modo::Nuevo && EsOrta()) vb::SetEnabled(propio->CommandImportar, true);
}

// Botones flips the print buttons and the tick, and the import only for ORTA.
// A flip, not a setting: Nuevo alone turns the import on, so leaving Modificar,
// Consultar or Borrar flips it on at rest, and the next Cancelar off again.
void FormFacturaVenta::BotonesPropios() {
    QList<QWidget*> propios = {propio->Commandfactura, propio->Commandrecibos, propio->CheckCuenta};
    if (EsOrta()) propios << propio->CommandImportar;
    for (QWidget* w : propios) vb::ToggleEnabled(w);
}

void FormFacturaVenta::CancelarPropio() {
    if (ModoVentana == Modo::Consultar || ModoVentana == Modo::Borrar) {
        vb::SetEnabled(propio->Commandfactura, false);
        vb::SetEnabled(propio->Commandrecibos, false);
        vb::SetEnabled(propio->CheckCuenta, false);
    }
}

void FormFacturaVenta::BorrarPropio() { propio->TextDescripcionLarga->setPlainText(QString()); }

void FormFacturaVenta::LimpiarDatosFactura() {
    Lineas_->ReconstruirGrid();
    ui->Textfechafactura->setText(QString());
    ui->Comboformapagofactura->Clear();
    ui->Labelformapagofacturadescripcion->setText(QString());
    ui->Labelformapagofacturavencimientos->setText(QString());
    ui->Comborecibosfactura->Clear();
    Lineas_->LimpiarLinea();
    Lineas_->RestablecerTotales();
}

void FormFacturaVenta::LimpiarAlElegir() { LimpiarDatosFactura(); }

// Opened from the number, each line's long description goes into the one box:
// the last line's is what remains.
void FormFacturaVenta::LineaLeida(Recordset& rs, bool desdeNumero) {
    if (desdeNumero)
        propio->TextDescripcionLarga->setPlainText(
            rs.Fields(QStringLiteral("descripcionlarga_detalle_factura_venta")).str().replace(QStringLiteral("\r\n"),
                                                                                              QStringLiteral("\n")));
}

void FormFacturaVenta::DocumentoMostrado() {
    if (ui->Combonumerofactura->ListIndex() != -1) vb::SetFocus(ui->Combonumerofactura);
}

QString FormFacturaVenta::TiendaSerie() const { return QStringLiteral("0"); }
QString FormFacturaVenta::TiendaDocumentoGuardado() const { return QStringLiteral("1"); }

// Between the counter and the rows: the invoice and its receipts may go to
// paper now, printed from the window, before any row of it exists.
//
// What a failed print leaves. The order says that a print that fails leaves
// the number used and no invoice; the save's error trap says that a failing
// step is reported and the save goes on with the next. Both hold here: while
// the invoice prints, the counter is at its number and not one row of it is
// stored, and a program stopped there (a printer that never answers, the
// machine switched off) leaves exactly that. A print job that merely fails
// (no printer, a cancelled dialog) passes its error over inside the job, as
// every print button does, so the questions end normally and the save goes
// on: the invoice is stored, unprinted, with its number.
void FormFacturaVenta::AntesDeLasLineas(const Paso& paso) {
    paso([&] {
        if (vb::MsgBox(QStringLiteral("¿Desea imprimir ahora la factura?"), vb::vbYesNo + vb::vbQuestion,
                       QStringLiteral("Pregunta")) == vb::vbYes)
            Commandfactura_Click();
    });
    paso([&] {
        if (vb::MsgBox(QStringLiteral("¿Desea imprimir ahora los recibos?"), vb::vbYesNo + vb::vbQuestion,
                       QStringLiteral("Pregunta")) == vb::vbYes)
            Commandrecibos_Click();
    });
}

// The one long text, as it stands (no upper case), on every line. Its lines
// are joined by CR LF, as a multi-line text box holds them: so they are stored
// and so the printed invoice splits them.
QString FormFacturaVenta::DescripcionLarga() const {
    return propio->TextDescripcionLarga->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
}

// An invoice has no life cycle: its header holds '1', also when modified, and
// nothing is read before the delete.
QString FormFacturaVenta::EstadoModificado(const Paso&) { return QStringLiteral("1"); }

// By fiscal year and number alone: neither store nor series.
QStringList FormFacturaVenta::SentenciasBorrado() const {
    return SentenciasBorradoFactura(ui->Combonif->Text(), ui->Comboejerciciofactura->Text(),
                                    CStr(Val(ui->Combonumerofactura->Text())));
}

// ---- Printing -----------------------------------------------------------------------------

// The job bears the invoice's name: number, date as "yyyymmdd", " - " and the
// customer's code (App.Title while it prints, put back afterwards).
void FormFacturaVenta::Commandfactura_Click() {
    Impresion = Pantalla();
    vb::RunPrintJob({.dialog = CommonDialog1,
                     .calendar = ui->Calendario,
                     .title = print_layout::NombreTrabajoFactura(Impresion.impreso),
                     .procedures = {[this] { cabecerafactura(); }, [this] { detallefactura(); },
                                    [this] { piefactura(); }}});
}

void FormFacturaVenta::Commandrecibos_Click() {
    Impresion = Pantalla();
    vb::RunPrintJob({.dialog = CommonDialog1, .calendar = ui->Calendario, .title = std::nullopt,
                     .procedures = {[this] { recibo(); }}});
}

void FormFacturaVenta::cabecerafactura() { print_layout::cabecerafactura(vb::Printer(), Impresion.impreso); }
void FormFacturaVenta::detallefactura() {
    print_layout::detallefactura(vb::Printer(), Impresion.impreso, contadores);
}
void FormFacturaVenta::piefactura() { print_layout::piefactura(vb::Printer(), Impresion.impreso); }
void FormFacturaVenta::recibo() { receipts::ReciboFactura(vb::Printer(), Impresion.impreso); }

void FormFacturaVenta::PantallaPropia(PantallaDocumento& p) const {
    p.impreso.TextDescripcionLarga = p.descripcionLarga;
    p.impreso.CheckCuenta = propio->CheckCuenta->isChecked() ? 1 : 0;
}

// ---- The long description -------------------------------------------------------------

void FormFacturaVenta::CommandDescripcionLarga_Click() {
    if (propio->CommandDescripcionLarga->text() != QLatin1String("+")) return;
    vb::SetVisible(propio->TextDescripcionLarga, true);
    propio->CommandDescripcionLarga->setText(QStringLiteral("-"));
    vb::SetFocus(propio->TextDescripcionLarga);
}

void FormFacturaVenta::TextDescripcionLarga_LostFocus() {
    vb::SetVisible(propio->TextDescripcionLarga, false);
    propio->CommandDescripcionLarga->setText(QStringLiteral("+"));
}

// ---- The lines ---------------------------------------------------------------------------

void FormFacturaVenta::LineaMensual() {
    if (!EsOrta() || Lineas_->Textreferencia->text() != QLatin1String("MS")) return;
    const QDateTime hoy = vb::Now();
    Lineas_->Textreferencia->setText(Lineas_->Textreferencia->text() + Format(hoy, QStringLiteral("yymm")));
    const int mes = int(Val(Format(hoy, QStringLiteral("mm"))));
    Lineas_->Textdescripcion->setText(Lineas_->Textdescripcion->text() + QString::fromUtf8(kMesAnterior[mes - 1]));
}

// ---- The import of lines from a spreadsheet ----------------------------------------------

// The dialog lists .ods with the Excel workbooks: the same lines, as
// LibreOffice saves them. A workbook is read whole before the first row is
// played; the rows then go through the very handlers the keyboard runs (Enter
// in the reference, leaving the description, the price and the discount), in
// the typist's order, and the events run after each row.
void FormFacturaVenta::CommandImportar_Click() {
    vb::OneLineTrap trap(QStringLiteral(" importando fichero"));
    trap([&] {
        const QString carpeta = vb::AppPath() + QStringLiteral("/importacion");
        if (!QDir(carpeta).exists() && !QDir().mkpath(carpeta))
            vb::Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo"));
        CommonDialog1->InitDir = carpeta;
        CommonDialog1->Filter = QStringLiteral(
            "Archivos de Excel(*.xls,*.xlsx,*.ods)|*.xls;*.xlsx;*.ods|Todos los archivos(*.*)|*.*");
        CommonDialog1->FileName = QString();
        CommonDialog1->DialogTitle = QStringLiteral("Seleccionar Hoja Excel");
        CommonDialog1->ShowOpen();
        if (CommonDialog1->FileName.isEmpty()) return;

        vb::WaitPointer espera;
        const Libro libro = Libro::Abrir(CommonDialog1->FileName);
        for (int Fila = 2; !libro.Cells(Fila, 1).Vacia(); ++Fila) {
            ImportarFila(libro, Fila);
            vb::DoEvents();
        }
    });
}

void FormFacturaVenta::ImportarFila(const Libro& libro, int Fila) {
    DocumentTotals& l = *Lineas_;
    const auto Cells = [&](int columna) { return libro.Cells(Fila, columna); };

    // 1. The reference, and Enter on it: BuscarProducto, or the line already
    //    in the grid opened again.
    l.Textreferencia->setText(vb::UCase(Cells(1).Texto()));
    int KeyAscii = 13;
    l.Textreferencia_KeyPress(KeyAscii);

    // 2-5. The question when the sheet and the program differ; nothing in the
    //      test asks whether the product is known.
    int Respuesta = 0;
    const QString descripcionHoja = vb::UCase(Cells(2).Texto());
    const bool conflicto = l.Textdescripcion->text() != descripcionHoja ||
                           Val(Cells(4).Texto()) != Val(l.Textprecio->text());
    if (conflicto) {
        const QString precioHoja = Cells(4).tipo == Celda::Tipo::Numero
                                       ? Format(Cells(4).numero, QStringLiteral("0.000"))
                                       : Format(Cells(4).Texto(), QStringLiteral("0.000"));
        Respuesta = vb::MsgBox(
            QStringLiteral("Atención, ya existe un producto con la referencia ") + l.Textreferencia->text() +
                QStringLiteral(" \n\n¿Desea utilizar los datos del programa y descartar los del fichero de "
                               "importación?\n\n") +
                vb::Space(5) + QStringLiteral("Si: ") + vb::Space(5) + l.Textdescripcion->text() + vb::Space(5) +
                QStringLiteral("Importe: ") + l.Textprecio->text() + QStringLiteral("\n") + vb::Space(5) +
                QStringLiteral("No: ") + vb::Space(3) + descripcionHoja + vb::Space(5) + QStringLiteral("Importe: ") +
                precioHoja,
            vb::vbYesNo, QStringLiteral("Advertencia"));
        if (Respuesta == vb::vbNo) l.Textdescripcion->setText(descripcionHoja);
    } else if (!(!l.Textdescripcion->text().isEmpty() && Cells(2).Vacia())) {
        l.Textdescripcion->setText(descripcionHoja);
    }

    // 6. Enter on the description.
    l.Textdescripcion_LostFocus();

    // 7. Units: rows of a reference already in the grid add up to one line.
    if (Val(l.Textcantidad->text()) != 0)
        l.Textcantidad->setText(CStr(Val(l.Textcantidad->text()) + Cells(3).Sumando()));
    else
        l.Textcantidad->setText(Cells(3).Texto());

    // 8. The sheet's price, without VAT as it stands, unless the program's was kept.
    if (Respuesta != vb::vbYes) l.Textprecio->setText(Cells(4).Texto());
    l.Textprecio_LostFocus();

    // 9. The discount, and leaving it: the line is accepted.
    l.Textdescuento->setText(Cells(5).Texto());
    l.Textdescuento_LostFocus();

    // 10. The long description, appended: one text for the whole invoice.
    if (!Cells(6).Vacia())
        propio->TextDescripcionLarga->setPlainText(propio->TextDescripcionLarga->toPlainText() + Cells(6).Texto());
}

} // namespace vel
