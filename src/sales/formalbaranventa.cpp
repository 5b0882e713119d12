#include "sales/formalbaranventa.h"

#include "core/key_filters.h"
#include "core/record_store.h"
#include "core/series.h"
#include "core/session.h"
#include "masterdata/due_dates.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/common_dialog.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_job.h"
#include "runtime/save_report.h"
#include "runtime/vb.h"
#include "sales/receipts.h"
#include "ui_formalbaranventa.h"

#include <QPlainTextEdit>
#include <optional>

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {

const QString kHoy = QStringLiteral("dd/mm/yyyy");

// The mode buttons set their mode's buttons and frames (EstadoModo):
//   mode  Frame2  Frame8        Imprimir  Proforma   (Enviar always off,
//   "N"   on      as it stands  on        on          Aceptar on, the four
//   "M"   off     as it stands  on        on          mode buttons off,
//   "O"   off     off           on        on          Frame1 on)
//   "B"   off     off           off       off

} // namespace

FormAlbaranVenta::FormAlbaranVenta(QWidget* parent)
    : MaintenanceWindow(parent), ui(std::make_unique<Ui::FormAlbaranVenta>()) {
    setObjectName(QStringLiteral("FormAlbaranVenta"));
    ui->setupUi(this);
    Vista.emplace(this, Clientes(), PartnerViewOptions());
    Listas.emplace(this, Clientes(), [this] { muestradatos(); });
    Lineas_ = ui->LineasDocumento;
    Lineas_->SetReglas(ReglasAlbaran());
    Lineas_->SetTituloTotal(QStringLiteral("Total Albarán"));
    Lineas_->SetVentana({.Commandaceptar = ui->Commandaceptar,
                         .OcultarCalendario = [this] { OcultarCalendario(); },
                         .Labelivaiva = [this] { return ui->Labelivaiva->text(); },
                         .Labelivare = [this] { return ui->Labelivare->text(); },
                         .ProductoEncontrado = {}});

    // The customer's tab: every field Texto flips and Borrar empties, with the
    // labels of the names looked up.
    QList<QWidget*> campos;
    for (QFrame* marco : {ui->Frame2, ui->Frame3, ui->Frame4, ui->Frame5}) {
        for (QLineEdit* caja : marco->findChildren<QLineEdit*>())
            if (!qobject_cast<QComboBox*>(caja->parentWidget())) campos << caja;
    }
    campos << ui->Textobservaciones << ui->Checkmailing << ui->Checkfacturable;
    QList<QWidget*> borrar = campos;
    for (QLabel* etiqueta : {ui->Labelbanco, ui->Labelsucursal, ui->Labelformapago, ui->Labeliva, ui->Labeltienda,
                             ui->Labelcomercial, ui->Labelivaiva, ui->Labelivare, ui->Labelivaret})
        borrar << etiqueta;

    MontarVentana({.botones = BotonesDe(*ui),
                   .texto = campos,
                   .borrar = borrar,
                   .flipaBotones = {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar,
                               ui->CommandImprimir, ui->CommandEnviar, ui->Commandaceptar, ui->ComboProforma},
                   .intro = {ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal, ui->Combonombrecomercial,
                             ui->Combonumerofactura, ui->Comboformapagofactura, ui->Comborecibosfactura,
                             ui->ComboProforma, ui->CheckProforma}});

    // The four customer lists: the one with the focus is the one searched.
    const std::pair<vb::ComboBox*, const char*> listas[] = {{ui->Combonif, "NIF"},
                                                            {ui->Combocodigo, "CODIGO"},
                                                            {ui->Combonombrefiscal, "FISCAL"},
                                                            {ui->Combonombrecomercial, "COMERCIAL"}};
    for (const auto& [lista, palabra] : listas) {
        const QString p = QString::fromLatin1(palabra);
        OnGotFocus(lista, [this, p] {
            OcultarCalendario();
            Listas->Lista_GotFocus(p);
        });
        OnClick(lista, [this, p] { Listas->Lista_Click(p); });
    }

    OnClick(ui->Comboejerciciofactura, [this] { Comboejerciciofactura_Click(); });
    OnKeyPress(ui->Comboejerciciofactura, [this](int& KeyAscii) { Comboejerciciofactura_KeyPress(KeyAscii); });
    OnClick(ui->Combonumerofactura, [this] { Combonumerofactura_Click(); });
    OnClick(ui->Comboformapagofactura, [this] { Comboformapagofactura_Click(); });
    OnClick(ui->Comborecibosfactura, [this] { Comborecibosfactura_Click(); });
    OnDblClick(ui->Label55, [this] { Label55_DblClick(); });
    OnLostFocus(ui->Textfechafactura, [this] { Textfechafactura_LostFocus(); });
    for (QWidget* w : {static_cast<QWidget*>(ui->Comboejerciciofactura), static_cast<QWidget*>(ui->Combonumerofactura),
                       static_cast<QWidget*>(ui->Comboformapagofactura), static_cast<QWidget*>(ui->ComboProforma)})
        OnGotFocus(w, [this] { OcultarCalendario(); });
    OnClick(ui->Calendario, [this] { Calendario_Click(); });

    CommonDialog1 = new vb::CommonDialog(this);
    CommonDialog1->setObjectName(QStringLiteral("CommonDialog1"));
    OnClick(ui->CommandImprimir, [this] { CommandImprimir_Click(); });
    OnClick(ui->CommandEnviar, [this] { CommandEnviar_Click(); });
}

FormAlbaranVenta::~FormAlbaranVenta() = default;

// ---- Loading ----------------------------------------------------------------------

void FormAlbaranVenta::Form_Load() {
    Borrar();
    borrarfacturas();
    MaintenanceWindow::Form_Load(); // Texto: the customer's tab is shown, never edited
    for (vb::ComboBox* lista : {ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal, ui->Combonombrecomercial})
        lista->Clear();
    ui->ComboProforma->Clear();
    ui->ComboProforma->AddItem(QStringLiteral("Albarán"));
    ui->ComboProforma->AddItem(QStringLiteral("Proforma"));
    ui->ComboProforma->AddItem(QStringLiteral("Presupuesto"));
    ui->ComboProforma->SetListIndex(0);
    vb::SetEnabled(ui->ComboProforma, false);
    OcultarCalendario();

    for (QWidget* w : {static_cast<QWidget*>(ui->Combobanco), static_cast<QWidget*>(ui->Combosucursal),
                       static_cast<QWidget*>(ui->Comboformapago), static_cast<QWidget*>(ui->Comboiva),
                       static_cast<QWidget*>(ui->Labeliva), static_cast<QWidget*>(ui->Combotienda),
                       static_cast<QWidget*>(ui->Combocomercial)})
        vb::SetVisible(w, false);
    vb::SetEnabled(ui->Combotarifa, false);
    vb::SetEnabled(ui->Frame1, false);
    ui->Calendario->SetValue(vb::Date());

    Listas->Llenar();
    if (ui->Combonif->ListCount() >= 1) {
        Listas->CampoBusqueda = QStringLiteral("NIF");
        ui->Combonif->SetListIndex(0);
    } else {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"));
        Commandcancelar_Click();
        return;
    }

    LeerConfiguracion();
}

// config.ini under On Error Resume Next: a missing file leaves the defaults. A
// store name that names no store is said, and store 1 is taken.
void FormAlbaranVenta::LeerConfiguracion() {
    vb::ResumeNext r;
    std::optional<vb::InputFile> fichero;
    QString nombreTienda;
    r([&] { fichero = vb::InputFile::open(vb::AppPath() + QStringLiteral("/config.ini")); });
    r([&] {
        if (!fichero) vb::Raise(52, QStringLiteral("Nombre o número de archivo incorrecto"));
        ClientePrograma = fichero->next();
        nombreTienda = fichero->next();
    });
    if (ClientePrograma.isEmpty()) ClientePrograma = kClienteProgramaPorDefecto;
    if (nombreTienda.isEmpty()) {
        TiendaDocumento = QStringLiteral("1");
        return;
    }
    r([&] {
        auto rs = BaseDatos->OpenRecordset("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = '" + nombreTienda + "'");
        if (!rs->Eof()) {
            TiendaDocumento = rs->Fields(QStringLiteral("codigo_tienda")).str();
        } else {
            vb::MsgBox(QStringLiteral("No se encuentra la tienda. Se asigna la 1"));
            TiendaDocumento = QStringLiteral("1");
        }
    });
}

// ---- The customer -----------------------------------------------------------------

void FormAlbaranVenta::buscanif() { Listas->buscanif(); }

// The customer's record, and the surcharge of its VAT type into the document.
void FormAlbaranVenta::muestradatos() {
    Vista->muestradatos();
    if (ui->Textcodigoiva->text().isEmpty()) return;
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM iva WHERE codigo_iva = " + ui->Textcodigoiva->text());
    if (!rs->Eof()) Lineas_->Textrecargo->setText(rs->Fields(QStringLiteral("RecargoEquivalencia")).str());
}

// ---- The document ----------------------------------------------------------------------

void FormAlbaranVenta::LimpiarLineasYTotales() {
    Lineas_->ReconstruirGrid();
    Lineas_->LimpiarLinea();
    Lineas_->RestablecerTotales();
}

// A new document: no lines, no totals, the customer's rates, no date, payment
// term or due dates, no state.
void FormAlbaranVenta::borrarfacturas() {
    LimpiarLineasYTotales();
    ui->Textfechafactura->setText(QString());
    ui->Comboformapagofactura->Clear();
    ui->Labelformapagofacturadescripcion->setText(QString());
    ui->Labelformapagofacturavencimientos->setText(QString());
    ui->Comborecibosfactura->Clear();
    ui->LabelEstado->setText(QString());
}

void FormAlbaranVenta::OcultarCalendario() { vb::SetVisible(ui->Calendario, false); }

QString FormAlbaranVenta::ClausulaCliente() const {
    if (ui->Combonif->Text() == QLatin1String("*"))
        return QString(" WHERE nif_cabecera_albaran_venta <> '") + "*" + "' ";
    return " WHERE nif_cabecera_albaran_venta = '" + ui->Combonif->Text() + "' ";
}

// ---- The mode buttons -----------------------------------------------------------------------

void FormAlbaranVenta::EntrarEnModo(const EstadoModo& m) {
    ModoVentana = QString::fromLatin1(m.modo);
    Lineas_->DescuentoDocumento = 0;
    vb::SetEnabled(ui->Frame2, m.frame2);
    vb::SetEnabled(ui->Frame1, true);
    if (m.frame8Apagado) vb::SetEnabled(Lineas_->Frame8, false);
    for (QPushButton* b : {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar})
        vb::SetEnabled(b, false);
    vb::SetEnabled(ui->CommandImprimir, m.imprimir);
    vb::SetEnabled(ui->CommandEnviar, false);
    vb::SetEnabled(ui->Commandaceptar, true);
    vb::SetEnabled(ui->ComboProforma, m.proforma);
}

void FormAlbaranVenta::Commandnuevo_Click() {
    EntrarEnModo({"N", true, false, true, true});
    borrarfacturas();
    Listas->Lista_Click(QStringLiteral("CODIGO"));
    ui->Calendario->SetValue(vb::Date());
    ui->Comboejerciciofactura->Clear();
    ui->Combonumerofactura->Clear();
    ProponerNumero();
    ui->Textfechafactura->setText(Format(vb::Date(), kHoy));
    LlenarFormasDePago();
    vb::SetEnabled(ui->Combonumerofactura, false);
    vb::SetFocus(ui->Comboejerciciofactura);
}

// The next number of the store's counter for the calendar's year. The year is
// chosen before the number goes in: choosing a year refills the numbers.
void FormAlbaranVenta::ProponerNumero() {
    const PropuestaNumero p = vel::ProponerNumero(*BaseDatos, Documento::Albaran, CStr(Val(TiendaDocumento)),
                                                  QString::number(ui->Calendario->Year()));
    ui->Comboejerciciofactura->AddItem(p.encontrada ? p.ejercicio : QString::number(ui->Calendario->Year()));
    ui->Comboejerciciofactura->SetListIndex(ui->Comboejerciciofactura->ListCount() - 1);
    ui->Combonumerofactura->AddItem(p.numero);
    ui->Combonumerofactura->SetListIndex(ui->Combonumerofactura->ListCount() - 1);
}

void FormAlbaranVenta::LlenarFormasDePago() {
    ui->Comboformapagofactura->Clear();
    auto rs = BaseDatos->OpenRecordset(QStringLiteral("SELECT * FROM formapago ORDER BY codigo_formapago"));
    while (!rs->Eof()) {
        ui->Comboformapagofactura->AddItem(rs->Fields(QStringLiteral("codigo_formapago")).str());
        rs->MoveNext();
    }
    if (ui->Comboformapagofactura->ListCount() >= 1) ui->Comboformapagofactura->SetListIndex(0);
    else vb::MsgBox(QStringLiteral("No hay datos de formas de pago disponibles"));
}

// Modificar, Borrar and Consultar open the customer's notes the same way: the
// lists of the chosen customer, its years, and the first note of the year
// shown, with the focus where the mode wants it. False when the customer has
// no note that year.
bool FormAlbaranVenta::MostrarPrimerAlbaran(QWidget* foco) {
    borrarfacturas();
    Listas->Lista_Click(QStringLiteral("CODIGO"));
    CargarDatos();
    Comboejerciciofactura_Click();
    if (ui->Combonumerofactura->ListCount() < 1) return false;
    ui->Combonumerofactura->SetListIndex(0);
    Combonumerofactura_Click();
    vb::SetFocus(foco);
    return true;
}

void FormAlbaranVenta::Commandmodificar_Click() {
    EntrarEnModo({"M", false, false, true, true});
    MostrarPrimerAlbaran(ui->Comboejerciciofactura);
}

void FormAlbaranVenta::Commandborrar_Click() {
    EntrarEnModo({"B", false, true, false, false});
    MostrarPrimerAlbaran(ui->Comboejerciciofactura);
}

void FormAlbaranVenta::Commandconsultar_Click() {
    EntrarEnModo({"O", false, true, true, true});
    if (!MostrarPrimerAlbaran(ui->Combonumerofactura)) Commandcancelar_Click();
}

// In a mode: back to rest, with the customer read again; ModoVentana keeps its
// letter. At rest: the window closes.
void FormAlbaranVenta::Commandcancelar_Click() {
    OcultarCalendario();
    Lineas_->DescuentoDocumento = 0;
    if (!EnModo()) {
        Unload();
        return;
    }
    vb::SetEnabled(ui->Frame2, true);
    vb::SetEnabled(ui->Frame1, false);
    borrarfacturas();
    Borrar();
    Botones();
    vb::SetEnabled(ui->CommandEnviar, false);
    if (ModoVentana == QLatin1String("N")) vb::SetEnabled(ui->Combonumerofactura, true);
    if (ModoVentana == QLatin1String("O") || ModoVentana == QLatin1String("B")) {
        vb::SetEnabled(Lineas_->Frame8, true);
        vb::SetEnabled(ui->CommandImprimir, false);
        vb::SetEnabled(ui->CommandEnviar, false);
        vb::SetEnabled(ui->ComboProforma, false);
    }
    const int cliente = ui->Combonif->ListIndex();
    ui->Combonif->SetListIndex(-1);
    ui->Combonif->SetListIndex(cliente);
    Listas->CampoBusqueda = QString();
}

// ---- The lists of years and numbers -------------------------------------------------------

// The lists for the chosen customer ("*": everybody).
//
// The years. The counters offer the calendar's year even before its first
// document; this list offers only the years that have notes of the customer,
// and chooses none when there are none. The list's way is kept: choosing an
// offered year refills the numbers, so offering the current year to a customer
// without notes would add "no tiene ningún albarán" to the one message
// consulting her must give ("El cliente seleccionado no tiene albaranes"),
// and she must go back to rest with that message alone. The counter and the
// headers below are read for the calendar's year, which is the year the
// counters would have offered, and which is there even when the customer's
// list of years is empty (the year list's text would then be empty, and the
// statements with it).
//
// The buttons. Turning Nuevo on here would make Cancelar close the window
// instead of leaving the mode (Cancelar tells a mode by the four mode buttons
// being off), and a consult that finds nothing could not go back to rest:
// the four mode buttons stay off, as the mode button set them.
void FormAlbaranVenta::CargarDatos() {
    for (QPushButton* b : {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar})
        vb::SetEnabled(b, false);
    vb::SetEnabled(ui->Commandaceptar, true);
    ui->Calendario->SetValue(vb::Date());
    ui->Comboejerciciofactura->Clear();

    auto rs = BaseDatos->OpenRecordset("SELECT * FROM cabecera_albaran_venta" + ClausulaCliente() +
                                       "ORDER BY ejercicio_cabecera_albaran_venta");
    int vistos = 0;
    EjerciciosVistos.fill(QString());
    while (!rs->Eof()) {
        const QString ejercicio = rs->Fields(QStringLiteral("ejercicio_cabecera_albaran_venta")).str();
        bool visto = false;
        for (int i = 0; i < vistos; ++i)
            if (EjerciciosVistos[i] == ejercicio) visto = true;
        if (!visto) {
            // The array has room for 100 years: a 101st stops here.
            if (vistos >= int(EjerciciosVistos.size())) vb::Raise(9, QStringLiteral("Subíndice fuera del intervalo"));
            EjerciciosVistos[vistos++] = ejercicio;
            ui->Comboejerciciofactura->AddItem(ejercicio);
        }
        rs->MoveNext();
    }

    const QString ano = QString::number(ui->Calendario->Year());
    int elegido = -1;
    for (int i = 0; i < ui->Comboejerciciofactura->ListCount(); ++i)
        if (ui->Comboejerciciofactura->List(i) == ano) elegido = i;
    if (elegido < 0) elegido = ui->Comboejerciciofactura->ListCount() - 1;
    if (elegido >= 0) ui->Comboejerciciofactura->SetListIndex(elegido);

    ui->Combonumerofactura->Clear();
    auto serie = BaseDatos->OpenRecordset(SentenciaCargarDatos(Documento::Albaran, CStr(Val(TiendaDocumento)), ano));
    if (ModoVentana == QLatin1String("N")) {
        ProponerNumero();
    } else if (serie->Eof()) {
        vb::MsgBox(QStringLiteral("No se encuentran albaranes disponibles"));
    } else {
        auto cabeceras = BaseDatos->OpenRecordset("SELECT * FROM cabecera_albaran_venta" + ClausulaCliente() +
                                                  "AND ejercicio_cabecera_albaran_venta = " + ano + " " +
                                                  "ORDER BY ejercicio_cabecera_albaran_venta");
        if (cabeceras->Eof()) {
            vb::MsgBox(QStringLiteral("El cliente seleccionado no tiene albaranes"));
        } else {
            while (!cabeceras->Eof()) {
                ui->Combonumerofactura->AddItem(
                    Format(cabeceras->Fields(QStringLiteral("numero_cabecera_albaran_venta")).num(), QStringLiteral("00000")));
                cabeceras->MoveNext();
            }
            ui->Combonumerofactura->SetListIndex(0);
        }
    }

    ui->Textfechafactura->setText(Format(vb::Date(), kHoy));
    LlenarFormasDePago();
    if (ModoVentana == QLatin1String("N")) vb::SetEnabled(ui->Combonumerofactura, false);
}

// The numbers of the chosen year for the customer, the first chosen.
bool FormAlbaranVenta::LlenarNumeros(const QString& orden) {
    ui->Combonumerofactura->Clear();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM cabecera_albaran_venta" + ClausulaCliente() +
                                       "AND ejercicio_cabecera_albaran_venta = " + ui->Comboejerciciofactura->Text() +
                                       " " + orden);
    if (rs->Eof()) return false;
    while (!rs->Eof()) {
        ui->Combonumerofactura->AddItem(
            Format(rs->Fields(QStringLiteral("numero_cabecera_albaran_venta")).num(), QStringLiteral("00000")));
        rs->MoveNext();
    }
    ui->Combonumerofactura->SetListIndex(0);
    return true;
}

void FormAlbaranVenta::Comboejerciciofactura_Click() {
    if (ui->Comboejerciciofactura->Text().isEmpty()) return;
    if (!LlenarNumeros(QStringLiteral("ORDER BY numero_cabecera_albaran_venta")))
        vb::MsgBox(QStringLiteral("El cliente seleccionado no tiene ningún albarán"));
    LimpiarLineasYTotales();
    if (ModoVentana != QLatin1String("N")) CargarLineas(false);
}

// Only digits and Backspace can be typed into the year; Enter moves on.
void FormAlbaranVenta::Comboejerciciofactura_KeyPress(int& KeyAscii) {
    IntroComoTabulador(KeyAscii);
    SoloDigitos(KeyAscii);
}

// The header and the detail of a note are read by year and number alone, with
// neither store nor series.
void FormAlbaranVenta::Combonumerofactura_Click() {
    if (ModoVentana == QLatin1String("N")) return;
    OcultarCalendario();
    LimpiarLineasYTotales();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = " +
                                       ui->Comboejerciciofactura->Text() + " AND numero_cabecera_albaran_venta = " +
                                       Format(ui->Combonumerofactura->Text(), QStringLiteral("00000")));
    // Warnings only: the user may go on. An invoiced note holds "0", which no
    // branch names: the label stays as it was.
    const QString estado = rs->Fields(QStringLiteral("estado_cabecera_albaran_venta")).str();
    const bool cambia = ModoVentana == QLatin1String("B") || ModoVentana == QLatin1String("M");
    if (estado == QLatin1String("P")) {
        ui->LabelEstado->setText(QStringLiteral("PENDIENTE"));
    } else if (estado == QLatin1String("E")) {
        ui->LabelEstado->setText(QStringLiteral("ENVIADO"));
        if (cambia) vb::MsgBox(QStringLiteral("El pedido está preparándose en el almacén. No debería modificarlo."));
    } else if (estado == QLatin1String("F")) {
        ui->LabelEstado->setText(QStringLiteral("FACTURADO"));
        if (cambia) vb::MsgBox(QStringLiteral("El pedido ya está facturado. No debería modificarlo."));
    }
    ui->Textfechafactura->setText(rs->Fields(QStringLiteral("fecha_cabecera_albaran_venta")).str());
    ui->Comboformapagofactura->Clear();
    ui->Comboformapagofactura->AddItem(rs->Fields(QStringLiteral("forma_pago_cabecera_albaran_venta")).str());
    ui->Comboformapagofactura->SetListIndex(0);
    Lineas_->Textiva->setText(rs->Fields(QStringLiteral("iva_cabecera_albaran_venta")).str());
    Lineas_->Textrecargo->setText(rs->Fields(QStringLiteral("recargo_cabecera_albaran_venta")).str());
    CargarLineas(true);
}

// Every stored line through the line fields, in the stored order. Opened from
// the number, a price that isn't a number gives "0", and the store of the
// document follows its lines, so a modified note keeps its store.
void FormAlbaranVenta::CargarLineas(bool desdeNumero) {
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM detalle_albaran_venta WHERE ejercicio_detalle_albaran_venta = " +
                                       ui->Comboejerciciofactura->Text() + " AND numero_detalle_albaran_venta = " +
                                       Format(ui->Combonumerofactura->Text(), QStringLiteral("00000")));
    while (!rs->Eof()) {
        QString precio = rs->Fields(QStringLiteral("pvp_neto_detalle_albaran_venta")).str();
        if (desdeNumero && !vb::IsNumeric(precio)) precio = QStringLiteral("0");
        Lineas_->ReproducirLinea(rs->Fields(QStringLiteral("referencia_detalle_albaran_venta")).str(),
                                 rs->Fields(QStringLiteral("descripcion_detalle_albaran_venta")).str(),
                                 rs->Fields(QStringLiteral("unidades_detalle_albaran_venta")).str(), precio,
                                 rs->Fields(QStringLiteral("descuento_detalle_albaran_venta")).str());
        if (desdeNumero) TiendaDocumento = rs->Fields(QStringLiteral("tienda_detalle_albaran_venta")).str();
        rs->MoveNext();
    }
    Lineas_->DesplazarGridAlFinal();
}

// The owner of the number shown, after a search of everybody's notes.
void FormAlbaranVenta::Label55_DblClick() {
    auto rs = BaseDatos->OpenRecordset(
        "SELECT nif_cabecera_albaran_venta FROM cabecera_albaran_venta WHERE ejercicio_cabecera_albaran_venta = " +
        ui->Comboejerciciofactura->Text() + " AND numero_cabecera_albaran_venta = " + ui->Combonumerofactura->Text() + " ");
    if (rs->Eof()) {
        vb::MsgBox(QStringLiteral("No se encuentra el cliente del albarán"));
        return;
    }
    const QString nif = rs->Fields(QStringLiteral("nif_cabecera_albaran_venta")).str();
    for (int i = 0; i < ui->Combonif->ListCount(); ++i) {
        if (ui->Combonif->List(i) == nif) {
            ui->Combonif->SetListIndex(i);
            break;
        }
    }
}

// ---- Payment term and due dates ---------------------------------------------------------------

void FormAlbaranVenta::Comboformapagofactura_Click() {
    OcultarCalendario();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM formapago WHERE codigo_formapago = '" +
                                       ui->Comboformapagofactura->Text() + "'");
    if (rs->Eof()) {
        vb::MsgBox(QStringLiteral("No se ha encontrado la forma de pago seleccionada. Por favor, revise el código"),
                   vb::vbExclamation, QStringLiteral("Aviso"));
        return;
    }
    ui->Labelformapagofacturadescripcion->setText(rs->Fields(QStringLiteral("nombre_formapago")).str());
    NumeroRecibos = int(rs->Fields(QStringLiteral("vencimientos_formapago")).num());
    QStringList dias;
    for (int i = 0; i < 12; ++i) {
        const QString columna = "dias" + Format(i + 1, QStringLiteral("00")) + "_formapago";
        DiasVencimiento[i] = int(rs->Fields(columna).num());
        dias << rs->Fields(columna).str();
    }
    ui->Labelformapagofacturavencimientos->setText(rs->Fields(QStringLiteral("vencimientos_formapago")).str() + "/" +
                                                   dias.join(QLatin1Char(',')));
    ui->Comborecibosfactura->Clear();
    if (ui->Textfechafactura->text().isEmpty()) ui->Textfechafactura->setText(Format(vb::Date(), kHoy));

    // The walk of the term on the calendar, from the document's date, with the
    // customer's collection days.
    ui->Calendario->SetValue(vb::CDate(ui->Textfechafactura->text()));
    RecorrerVencimientos(ui->Calendario->engine(), NumeroRecibos, DiasVencimiento,
                         int(Val(ui->Textdiacobro1->text())), int(Val(ui->Textdiacobro2->text())),
                         [this](int, const QDate& fecha) { ui->Comborecibosfactura->AddItem(Format(fecha, kHoy)); });
    if (ui->Comborecibosfactura->ListCount() >= 1) ui->Comborecibosfactura->SetListIndex(0);
}

// The calendar shows the chosen due date, so that it can be changed.
void FormAlbaranVenta::Comborecibosfactura_Click() {
    ui->Calendario->SetValue(vb::CDate(ui->Comborecibosfactura->Text()));
    const QRect caja = ui->Comborecibosfactura->geometry();
    const QPoint bajo = ui->Comborecibosfactura->parentWidget()->mapTo(this, caja.bottomLeft());
    ui->Calendario->move(bajo);
    vb::SetVisible(ui->Calendario, true);
    ui->Calendario->raise();
}

// A day picked on the calendar replaces the chosen due date; the list (of at
// most twelve dates) is built again.
void FormAlbaranVenta::Calendario_Click() {
    const int elegida = ui->Comborecibosfactura->ListIndex();
    std::array<QString, 12> fechas;
    const int n = std::min(ui->Comborecibosfactura->ListCount(), 12);
    for (int i = 0; i < n; ++i) fechas[i] = ui->Comborecibosfactura->List(i);
    if (elegida >= 0 && elegida < 12) fechas[elegida] = Format(ui->Calendario->Value(), kHoy);
    ui->Comborecibosfactura->Clear();
    for (int i = 0; i < n; ++i) ui->Comborecibosfactura->AddItem(fechas[i]);
    if (elegida >= 0) ui->Comborecibosfactura->SetListIndex(elegida);
}

void FormAlbaranVenta::Textfechafactura_LostFocus() {
    ui->Textfechafactura->setText(Format(ui->Textfechafactura->text(), kHoy));
}

// ---- Saving ---------------------------------------------------------------------------------------

ClaveDocumento FormAlbaranVenta::Clave() const {
    return {.tienda = TiendaDocumento, .ejercicio = ui->Comboejerciciofactura->Text(),
            .numero = ui->Combonumerofactura->Text()};
}

DatosCabecera FormAlbaranVenta::Cabecera(const QString& estado) const {
    DatosCabecera d;
    d.fecha = ui->Textfechafactura->text();
    d.estado = estado;
    d.nif = ui->Combonif->Text();
    d.nombre = ui->Textnombre->text();
    d.apellidos = ui->Textapellidos->text();
    d.domicilio = ui->Textdomicilio->text();
    d.poblacion = ui->Textpoblacion->text();
    d.codigoPostal = ui->Textcodigopostal->text();
    d.provincia = ui->Textprovincia->text();
    d.nacionalidad = ui->Textnacionalidad->text();
    d.formaPago = ui->Comboformapagofactura->Text();
    d.recibos = NumeroRecibos;
    d.banco = ui->Textbanco->text();
    d.sucursal = ui->Textsucursal->text();
    d.digitoControl = ui->Textdigitocontrol->text();
    d.numeroCuenta = ui->Textnumerocuenta->text();
    d.bruto = Lineas_->Labelbruto->text();
    d.descuento = Lineas_->Labeldescuento->text();
    d.iva = Lineas_->Textiva->text();
    d.recargo = Lineas_->Textrecargo->text();
    d.iban = ui->TextIban->text();
    return d;
}

// Every grid row from 1, then the header. F counts the rows as the save goes.
void FormAlbaranVenta::GuardarAlbaran(const QString& estado,
                                      const std::function<bool(const std::function<void()>&)>& trap, int& F) {
    vb::FlexGrid* g = Lineas_->Gridfacturas;
    for (F = 1; F <= g->Rows() - 1; ++F) {
        const CeldasLinea celdas{.referencia = g->TextMatrix(F, 0), .descripcion = g->TextMatrix(F, 1),
                                 .unidades = g->TextMatrix(F, 2), .precio = g->TextMatrix(F, 3),
                                 .subtotal = g->TextMatrix(F, 4), .descuento = g->TextMatrix(F, 5),
                                 .total = g->TextMatrix(F, 6)};
        trap([&] { BaseDatos->Execute(SentenciaLinea(DocumentoVenta::Albaran, Clave(), celdas)); });
    }
    trap([&] { BaseDatos->Execute(SentenciaCabecera(DocumentoVenta::Albaran, Clave(), Cabecera(estado))); });
}

void FormAlbaranVenta::BorrarAlbaran(const std::function<bool(const std::function<void()>&)>& trap) {
    const QString tienda = Format(Val(TiendaDocumento), QStringLiteral("00"));
    const QString ano = ui->Comboejerciciofactura->Text();
    const QString numero = CStr(Val(ui->Combonumerofactura->Text()));
    trap([&] {
        BaseDatos->Execute("DELETE FROM cabecera_albaran_venta WHERE nif_cabecera_albaran_venta = '" +
                           ui->Combonif->Text() + "' AND tienda_cabecera_albaran_venta = " + tienda +
                           " AND serie_cabecera_albaran_venta = 'AV' AND ejercicio_cabecera_albaran_venta = " + ano +
                           " AND numero_cabecera_albaran_venta = " + numero);
    });
    trap([&] {
        BaseDatos->Execute("DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = " + tienda +
                           " AND serie_detalle_albaran_venta = 'AV' AND ejercicio_detalle_albaran_venta = " + ano +
                           " AND numero_detalle_albaran_venta = " + numero);
    });
}

// The one procedure with an error trap: any failing step is reported (the
// "ERROR" box and erralbar.txt) and the save goes on with the next step, so a
// failed line is skipped and the header is written all the same.
void FormAlbaranVenta::Commandaceptar_Click() {
    OcultarCalendario();
    int F = 0;
    const bool buscar = false; // the save's lookup flag: no step of this window sets it
    vb::SaveReportTrap trap(vb::kDeliveryNoteReportFile, vb::SaveReportLayout::Document, [&] {
        return vb::SaveReportState{
            ModoVentana,
            vb::DeliveryNoteReportRecord({.ejercicio = ui->Comboejerciciofactura->Text(),
                                          .numero = ui->Combonumerofactura->Text(),
                                          .nif = ui->Textnif->text(),
                                          .codigo = ui->Textcodigo->text(),
                                          .nombreFiscal = ui->Textnombrefiscal->text(),
                                          .nombreComercial = ui->Textnombrecomercial->text(),
                                          .apellidos = ui->Textapellidos->text(),
                                          .nombre = ui->Textnombre->text()}),
            QString::number(F), buscar ? QStringLiteral("Verdadero") : QStringLiteral("Falso")};
    });
    const auto paso = [&](const std::function<void()>& s) { return trap(s); };

    if (ModoVentana == QLatin1String("N")) {
        if (Lineas_->Gridfacturas->Rows() == 1) {
            paso([&] { Commandcancelar_Click(); });
            return;
        }
        // The counter first, to the number on screen, then the rows.
        paso([&] {
            GuardarContador(*BaseDatos, Documento::Albaran, CStr(Val(TiendaDocumento)),
                            ui->Comboejerciciofactura->Text(), ui->Combonumerofactura->Text());
        });
        GuardarAlbaran(QStringLiteral("P"), paso, F);
        paso([&] { Commandnuevo_Click(); });
        paso([&] { vb::SetFocus(ui->Comboejerciciofactura); });
    } else if (ModoVentana == QLatin1String("B")) {
        const int respuesta = vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el registro?"),
                                         vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2, QStringLiteral("Advertencia"));
        if (respuesta == vb::vbYes) {
            BorrarAlbaran(paso);
            paso([&] { Commandborrar_Click(); });
        } else {
            paso([&] { Commandcancelar_Click(); });
        }
    } else if (ModoVentana == QLatin1String("O")) {
        paso([&] { Commandcancelar_Click(); });
    } else if (ModoVentana == QLatin1String("M")) {
        const int respuesta =
            vb::MsgBox(QStringLiteral(" ¿Desea guardar las modificaciones efectuadas en el albarán?"),
                       vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2, QStringLiteral("Advertencia"));
        if (respuesta == vb::vbYes) {
            // A modification is a delete and an insert of the whole note, which
            // keeps the state it had.
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
            BorrarAlbaran(paso);
            GuardarAlbaran(estado, paso, F);
        }
        paso([&] { Commandmodificar_Click(); });
    }
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

// What is printed is what stands on the screen: the customer's boxes, the
// document's combos and labels, the totals and the grid's cells, read when a
// print procedure runs.
print_layout::Documento FormAlbaranVenta::Ventana() const {
    vb::FlexGrid* grid = Lineas_->Gridfacturas;
    print_layout::Documento d;
    d.ClientePrograma = ClientePrograma;
    d.Combonombrecomercial = ui->Combonombrecomercial->Text();
    d.Combonombrefiscal = ui->Combonombrefiscal->Text();
    d.Textdomicilio = ui->Textdomicilio->text();
    d.Textcodigopostal = ui->Textcodigopostal->text();
    d.Textpoblacion = ui->Textpoblacion->text();
    d.Textprovincia = ui->Textprovincia->text();
    d.Combonif = ui->Combonif->Text();
    d.Combonumerofactura = ui->Combonumerofactura->Text();
    d.Comboejerciciofactura = ui->Comboejerciciofactura->Text();
    d.Textfechafactura = ui->Textfechafactura->text();
    d.Labelformapagofacturavencimientos = ui->Labelformapagofacturavencimientos->text();
    d.ComboProforma = ui->ComboProforma->Text();
    d.Labelbruto = Lineas_->Labelbruto->text();
    d.Labeldescuento = Lineas_->Labeldescuento->text();
    d.Labelneto = Lineas_->Labelneto->text();
    d.Labelbase = Lineas_->Labelbase->text();
    d.Textiva = Lineas_->Textiva->text();
    d.Labelimporteiva = Lineas_->Labelimporteiva->text();
    d.Textrecargo = Lineas_->Textrecargo->text();
    d.Labelimporterecargo = Lineas_->Labelimporterecargo->text();
    d.Labeltotalfactura = Lineas_->Labeltotalfactura->text();
    d.Rows = grid->Rows();
    d.TextMatrix = [grid](int fila, int col) { return grid->TextMatrix(fila, col); };
    d.Comborecibosfactura = ui->Comborecibosfactura->Text();
    d.Labelbanco = ui->Labelbanco->text();
    d.TextIban = ui->TextIban->text();
    d.Textbanco = ui->Textbanco->text();
    d.Textsucursal = ui->Textsucursal->text();
    d.Textdigitocontrol = ui->Textdigitocontrol->text();
    d.Textnumerocuenta = ui->Textnumerocuenta->text();
    return d;
}

// ---- Keys ---------------------------------------------------------------------------------------

void FormAlbaranVenta::Texto_KeyPress(QLineEdit* caja, int& KeyAscii) {
    if (Lineas_->isAncestorOf(caja)) return;
    MaintenanceWindow::Texto_KeyPress(caja, KeyAscii);
}

// Getting the focus in a field hides the calendar (the line area's fields say
// it themselves).
void FormAlbaranVenta::Texto_GotFocus(QLineEdit* caja) {
    MaintenanceWindow::Texto_GotFocus(caja);
    if (!Lineas_->isAncestorOf(caja)) OcultarCalendario();
}

} // namespace vel
