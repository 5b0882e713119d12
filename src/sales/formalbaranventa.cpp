#include "sales/formalbaranventa.h"

#include "core/record_store.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_job.h"
#include "runtime/vb.h"
#include "sales/receipts.h"
#include "ui_document_window.h"
#include "ui_formalbaranventa.h"
#include "core/sql_values.h"

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {

const TextosDocumento kAlbaran{
    .documento = DocumentoVenta::Albaran,
    .serie = Documento::Albaran,
    .palabra = QStringLiteral("albaran"),
    .rotulo = QStringLiteral("Albarán"),
    .tituloTotal = QStringLiteral("Total Albarán"),
    .sinSerie = QStringLiteral("No se encuentran albaranes disponibles"),
    .clienteSinDocumentos = QStringLiteral("El cliente seleccionado no tiene albaranes"),
    .clienteSinNumeros = QStringLiteral("El cliente seleccionado no tiene ningún albarán"),
    .avisoSinNumerosEnNuevo = true,
    .sinCliente = QStringLiteral("No se encuentra el cliente del albarán"),
    .preguntaModificar = QStringLiteral(" ¿Desea guardar las modificaciones efectuadas en el albarán?"),
    .frame2EnBorrar = false,
    .precioNoNumericoACero = true,
    .nuloComoVacio = false,
    .estadoNuevo = QStringLiteral("P"),
    .ficheroErrores = vb::kDeliveryNoteReportFile,
    .registroErrores = &vb::DeliveryNoteReportRecord,
};

} // namespace

FormAlbaranVenta::FormAlbaranVenta(QWidget* parent)
    : DocumentWindow(kAlbaran, parent), propio(std::make_unique<Ui::FormAlbaranVenta>()) {
    Lineas_->SetReglas(ReglasAlbaran());
    auto* piezas = new QWidget;
    propio->setupUi(piezas);
    PonerControlesPropios(piezas, {propio->ComboProforma, propio->CheckProforma});
    OnGotFocus(propio->ComboProforma, [this] { OcultarCalendario(); });
    OnClick(propio->CommandImprimir, [this] { CommandImprimir_Click(); });
    OnClick(propio->CommandEnviar, [this] { CommandEnviar_Click(); });
}

FormAlbaranVenta::~FormAlbaranVenta() = default;

// The print choice, first entry chosen and off; then the store of config.ini.
void FormAlbaranVenta::CargarPropio() {
    propio->ComboProforma->Clear();
    propio->ComboProforma->AddItem(QStringLiteral("Albarán"));
    propio->ComboProforma->AddItem(QStringLiteral("Proforma"));
    propio->ComboProforma->AddItem(QStringLiteral("Presupuesto"));
    propio->ComboProforma->SetListIndex(0);
    vb::SetEnabled(propio->ComboProforma, false);
    BuscarTienda(LeerConfiguracion());
}

// The store of config.ini: a name that names no store is said, and store 1 is
// taken; no name takes store 1.
void FormAlbaranVenta::BuscarTienda(const QString& nombreTienda) {
    if (nombreTienda.isEmpty()) {
        TiendaDocumento = QStringLiteral("1");
        return;
    }
    vb::ResumeNext r;
    r([&] {
        auto rs = BaseDatos->OpenRecordset("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = " + sql::Comillas(nombreTienda));
        if (!rs->Eof()) {
            TiendaDocumento = rs->Fields(QStringLiteral("codigo_tienda")).str();
        } else {
            vb::MsgBox(QStringLiteral("No se encuentra la tienda. Se asigna la 1"));
            TiendaDocumento = QStringLiteral("1");
        }
    });
}

// The print buttons of each mode:
//   mode  Imprimir  Proforma   (Enviar always off)
//   "N"   on        on
//   "M"   on        on
//   "O"   on        on
//   "B"   off       off
void FormAlbaranVenta::BotonesDelModo() {
    const bool imprime = ModoVentana != QLatin1String("B");
    vb::SetEnabled(propio->CommandImprimir, imprime);
    vb::SetEnabled(propio->CommandEnviar, false);
    vb::SetEnabled(propio->ComboProforma, imprime);
}

void FormAlbaranVenta::BotonesPropios() {
    for (QWidget* w : {static_cast<QWidget*>(propio->CommandImprimir), static_cast<QWidget*>(propio->CommandEnviar),
                       static_cast<QWidget*>(propio->ComboProforma)})
        vb::ToggleEnabled(w);
}

void FormAlbaranVenta::CancelarPropio() {
    vb::SetEnabled(propio->CommandEnviar, false);
    if (ModoVentana == QLatin1String("O") || ModoVentana == QLatin1String("B")) {
        vb::SetEnabled(propio->CommandImprimir, false);
        vb::SetEnabled(propio->CommandEnviar, false);
        vb::SetEnabled(propio->ComboProforma, false);
    }
}

void FormAlbaranVenta::BorrarPropio() { propio->LabelEstado->setText(QString()); }

// The state of the note opened. Warnings only: the user may go on. An invoiced
// note holds "0", which no branch names: the label stays as it was.
void FormAlbaranVenta::CabeceraLeida(Recordset& rs) {
    const QString estado = rs.Fields(QStringLiteral("estado_cabecera_albaran_venta")).str();
    const bool cambia = ModoVentana == QLatin1String("B") || ModoVentana == QLatin1String("M");
    if (estado == QLatin1String("P")) {
        propio->LabelEstado->setText(QStringLiteral("PENDIENTE"));
    } else if (estado == QLatin1String("E")) {
        propio->LabelEstado->setText(QStringLiteral("ENVIADO"));
        if (cambia) vb::MsgBox(QStringLiteral("El pedido está preparándose en el almacén. No debería modificarlo."));
    } else if (estado == QLatin1String("F")) {
        propio->LabelEstado->setText(QStringLiteral("FACTURADO"));
        if (cambia) vb::MsgBox(QStringLiteral("El pedido ya está facturado. No debería modificarlo."));
    }
}

// Opened from the number, the store of the note follows its lines, so a
// modified note keeps its store.
void FormAlbaranVenta::LineaLeida(Recordset& rs, bool desdeNumero) {
    if (desdeNumero) TiendaDocumento = rs.Fields(QStringLiteral("tienda_detalle_albaran_venta")).str();
}

QString FormAlbaranVenta::TiendaSerie() const { return CStr(Val(TiendaDocumento)); }
QString FormAlbaranVenta::TiendaDocumentoGuardado() const { return TiendaDocumento; }

// A modification keeps the state the note had.
QString FormAlbaranVenta::EstadoModificado(const Paso& paso) {
    QString estado;
    paso([&] {
        auto rs = BaseDatos->OpenRecordset(
            "SELECT estado_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE tienda_cabecera_albaran_venta = " +
            Format(Val(TiendaDocumento), QStringLiteral("00")) +
            " AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = " +
            ui->Comboejerciciofactura->Text() + " AND numero_cabecera_albaran_venta = " +
            CStr(Val(ui->Combonumerofactura->Text())));
        estado = rs->Fields(QStringLiteral("estado_cabecera_albaran_venta")).str();
    });
    return estado;
}

// The note of the store and series 'AV' with the year and number shown.
QStringList FormAlbaranVenta::SentenciasBorrado() const {
    const QString tienda = Format(Val(TiendaDocumento), QStringLiteral("00"));
    const QString ano = ui->Comboejerciciofactura->Text();
    const QString numero = CStr(Val(ui->Combonumerofactura->Text()));
    return {"DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = " + sql::Comillas(ui->Combonif->Text()) +
                " AND tienda_cabecera_albaran_venta = " + tienda +
                " AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = " + ano +
                " AND numero_cabecera_albaran_venta = " + numero,
            "DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = " + tienda +
                " AND serie_detalle_albaran_venta = 'AV' AND ejercicio_detalle_albaran_venta = " + ano +
                " AND numero_detalle_albaran_venta = " + numero};
}

// ---- Printing --------------------------------------------------------------------------------------

// The note on paper: the print dialog, then the header, the lines and the foot,
// each reading the window as it stands. A cancelled dialog, or no printer at
// all, prints nothing and says nothing.
void FormAlbaranVenta::CommandImprimir_Click() {
    vb::RunPrintJob({.dialog = CommonDialog1,
                     .calendar = ui->Calendario,
                     .procedures = {[this] { cabeceraalbaran(); }, [this] { detallealbaran(); },
                                    [this] { piealbaran(); }}});
}

// "Enviar Albarán" sends nothing: it prints the note's receipt, for the due
// date chosen in Comborecibosfactura. The mode buttons and Cancelar keep this
// button disabled; its procedure prints whenever it is run.
void FormAlbaranVenta::CommandEnviar_Click() {
    vb::RunPrintJob({.dialog = CommonDialog1, .calendar = ui->Calendario, .procedures = {[this] { recibo(); }}});
}

void FormAlbaranVenta::cabeceraalbaran() { print_layout::cabeceraalbaran(vb::Printer(), Ventana()); }

void FormAlbaranVenta::detallealbaran() { print_layout::detallealbaran(vb::Printer(), Ventana(), contadores); }

void FormAlbaranVenta::piealbaran() { print_layout::piealbaran(vb::Printer(), Ventana()); }

void FormAlbaranVenta::recibo() { receipts::ReciboAlbaran(vb::Printer(), Ventana()); }

// What is printed is what stands on the screen, the note's kind included.
print_layout::Documento FormAlbaranVenta::Ventana() const {
    print_layout::Documento d = DocumentWindow::Ventana();
    d.ComboProforma = propio->ComboProforma->Text();
    return d;
}

} // namespace vel
