#include "sales/document_window.h"

#include "core/key_filters.h"
#include "core/combo_fill.h"
#include "core/record_store.h"
#include "core/series.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "masterdata/due_dates.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include "ui_document_window.h"

#include <QGridLayout>
#include <QPlainTextEdit>
#include <optional>

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {
const QString kHoy = QStringLiteral("dd/mm/yyyy");
} // namespace

DocumentWindow::DocumentWindow(const TextosDocumento& textos, QWidget* parent)
    : MaintenanceWindow(parent), textos_(textos), ui(std::make_unique<Ui::DocumentWindow>()) {
    ui->setupUi(this);
    ui->Label55->setText(textos_.rotulo);
    CommonDialog1 = new vb::CommonDialog(this);
    CommonDialog1->setObjectName(QStringLiteral("CommonDialog1"));
    Vista.emplace(this, Clientes(), PartnerViewOptions());
    Listas.emplace(this, Clientes(), [this] { muestradatos(); });
    Lineas_ = ui->LineasDocumento;
    Lineas_->SetTituloTotal(textos_.tituloTotal);
    Lineas_->SetVentana({.Commandaceptar = ui->Commandaceptar,
                         .OcultarCalendario = [this] { OcultarCalendario(); },
                         .Labelivaiva = [this] { return ui->Labelivaiva->text(); },
                         .Labelivare = [this] { return ui->Labelivare->text(); },
                         .ProductoEncontrado = {}});

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
        OnClick(lista, [this, p] {
            const bool busca = Listas->CampoBusqueda == p;
            Listas->Lista_Click(p);
            if (busca) ClienteCambiadoEnBorrar();
        });
    }

    OnClick(ui->Comboejerciciofactura, [this] { Comboejerciciofactura_Click(); });
    OnKeyPress(ui->Comboejerciciofactura, [this](int& KeyAscii) { Comboejerciciofactura_KeyPress(KeyAscii); });
    OnClick(ui->Combonumerofactura, [this] { Combonumerofactura_Click(); });
    OnClick(ui->Comboformapagofactura, [this] { Comboformapagofactura_Click(); });
    OnClick(ui->Comborecibosfactura, [this] { Comborecibosfactura_Click(); });
    OnDblClick(ui->Label55, [this] { Label55_DblClick(); });
    OnLostFocus(ui->Textfechafactura, [this] { Textfechafactura_LostFocus(); });
    for (QWidget* w : {static_cast<QWidget*>(ui->Comboejerciciofactura), static_cast<QWidget*>(ui->Combonumerofactura),
                       static_cast<QWidget*>(ui->Comboformapagofactura)})
        OnGotFocus(w, [this] { OcultarCalendario(); });
    OnClick(ui->Calendario, [this] { Calendario_Click(); });
}

DocumentWindow::~DocumentWindow() = default;

void DocumentWindow::PonerControlesPropios(QWidget* piezas, const QList<QWidget*>& introPropios) {
    setObjectName(piezas->objectName());
    setWindowTitle(piezas->windowTitle());
    QWidget* cabecera = piezas->findChild<QWidget*>(QStringLiteral("CabeceraPropia"));
    QWidget* botonera = piezas->findChild<QWidget*>(QStringLiteral("BotoneraPropia"));
    ui->HuecoCabecera->addWidget(cabecera);
    ui->HuecoBotonera->addWidget(botonera);
    delete piezas;
    // Getting the focus in the window's own controls hides the calendar, as
    // anywhere else in the window (its text boxes say it in Texto_GotFocus).
    for (QWidget* w : cabecera->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (!qobject_cast<QLineEdit*>(w)) OnGotFocus(w, [this] { OcultarCalendario(); });

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
                                    ui->Commandaceptar},
                   .intro = QList<QWidget*>{ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal,
                                            ui->Combonombrecomercial, ui->Combonumerofactura,
                                            ui->Comboformapagofactura, ui->Comborecibosfactura} +
                            introPropios});

}

QString DocumentWindow::Tabla(const char* parte) const { return TablaDocumento(textos_.palabra, parte); }

QString DocumentWindow::Columna(const char* campo, const char* parte) const {
    return ColumnaDocumento(textos_.palabra, campo, parte);
}

// ---- Loading ----------------------------------------------------------------------

void DocumentWindow::Form_Load() {
    Borrar();
    borrarfacturas();
    MaintenanceWindow::Form_Load(); // Texto: the customer's tab is shown, never edited
    for (vb::ComboBox* lista : {ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal, ui->Combonombrecomercial})
        lista->Clear();
    OcultarCalendario();

    OcultarListasDeNombres(this);
    vb::SetEnabled(ui->Frame1, false);
    ui->Calendario->SetValue(vb::Date());

    if (!Listas->LlenarYMostrarPrimero()) {
        Commandcancelar_Click();
        return;
    }

    CargarPropio();
}

QString DocumentWindow::LeerConfiguracion() {
    const Configuracion config = LeeConfiguracion(LecturaConfiguracion::ConTrampa);
    ClientePrograma = config.ClientePrograma;
    return config.nombreTienda;
}

// ---- The customer -----------------------------------------------------------------

void DocumentWindow::buscanif() { Listas->buscanif(); }

// The customer's record, and the surcharge of its VAT type into the document.
void DocumentWindow::muestradatos() {
    Vista->muestradatos();
    if (ui->Textcodigoiva->text().isEmpty()) return;
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM iva WHERE codigo_iva = " + ui->Textcodigoiva->text());
    if (!rs->Eof()) Lineas_->Textrecargo->setText(rs->Fields(QStringLiteral("RecargoEquivalencia")).str());
}

// ---- The document ----------------------------------------------------------------------

void DocumentWindow::LimpiarLineasYTotales() {
    Lineas_->ReconstruirGrid();
    Lineas_->LimpiarLinea();
    Lineas_->RestablecerTotales();
}

void DocumentWindow::LimpiarAlElegir() { LimpiarLineasYTotales(); }

// A new document: no lines, no totals, the customer's rates, no date, payment
// term or due dates, and what the window clears of its own.
void DocumentWindow::borrarfacturas() {
    LimpiarLineasYTotales();
    ui->Textfechafactura->setText(QString());
    ui->Comboformapagofactura->Clear();
    ui->Labelformapagofacturadescripcion->setText(QString());
    ui->Labelformapagofacturavencimientos->setText(QString());
    ui->Comborecibosfactura->Clear();
    BorrarPropio();
}

void DocumentWindow::OcultarCalendario() { vb::SetVisible(ui->Calendario, false); }

QString DocumentWindow::ClausulaCliente() const {
    const QString nif = Columna("nif", "cabecera");
    if (ui->Combonif->Text() == QLatin1String("*")) return " WHERE " + nif + " <> '" + "*" + "' ";
    return " WHERE " + nif + " = " + sql::Comillas(ui->Combonif->Text()) + " ";
}

// ---- The mode buttons -----------------------------------------------------------------------

// Each mode button: the mode, no "DSC" amount, the frames, the four mode
// buttons off and Aceptar on; then the window's own buttons of the mode.
void DocumentWindow::EntrarEnModo(bool frame2, bool frame8Apagado) {
    Lineas_->DescuentoDocumento = 0;
    vb::SetEnabled(ui->Frame2, frame2);
    vb::SetEnabled(ui->Frame1, true);
    if (frame8Apagado) vb::SetEnabled(Lineas_->Frame8, false);
    for (QPushButton* b : {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar})
        vb::SetEnabled(b, false);
    vb::SetEnabled(ui->Commandaceptar, true);
    BotonesDelModo();
}

void DocumentWindow::Commandnuevo_Click() {
    ModoVentana = Modo::Nuevo;
    EntrarEnModo(true, false);
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

// The next number of the counter for the calendar's year. The year is chosen
// before the number goes in: choosing a year refills the numbers.
void DocumentWindow::ProponerNumero() {
    const PropuestaNumero p =
        vel::ProponerNumero(*BaseDatos, textos_.serie, TiendaSerie(), QString::number(ui->Calendario->Year()));
    ui->Comboejerciciofactura->AddItem(p.encontrada ? p.ejercicio : QString::number(ui->Calendario->Year()));
    ui->Comboejerciciofactura->SetListIndex(ui->Comboejerciciofactura->ListCount() - 1);
    ui->Combonumerofactura->AddItem(p.numero);
    ui->Combonumerofactura->SetListIndex(ui->Combonumerofactura->ListCount() - 1);
    NumeroPropuesto = p.numero;
}

// Inside the save's transaction, with the writer's lock held: a number left as
// it was proposed follows the counter. When another station has saved that
// number (or a later one) since it was proposed, the document takes the next
// number of the counter, shown in the combo; two stations saving at once never
// take the same number. A number the user typed stays as typed.
void DocumentWindow::SeguirAlContador() {
    if (NumeroPropuesto.isEmpty() || ui->Combonumerofactura->Text() != NumeroPropuesto) return;
    const PropuestaNumero p =
        vel::ProponerNumero(*BaseDatos, textos_.serie, TiendaSerie(), ui->Comboejerciciofactura->Text());
    if (Val(p.numero) <= Val(NumeroPropuesto)) return;
    NumeroPropuesto = p.numero;
    ui->Combonumerofactura->AddItem(p.numero);
    ui->Combonumerofactura->SetListIndex(ui->Combonumerofactura->ListCount() - 1);
}

void DocumentWindow::LlenarFormasDePago() {
    LlenarListaDeTabla(ui->Comboformapagofactura, QStringLiteral("SELECT * FROM formapago ORDER BY codigo_formapago"),
                       QStringLiteral("codigo_formapago"), QStringLiteral("No hay datos de formas de pago disponibles"));
}

// Modificar, Borrar and Consultar open the customer's documents the same way:
// the lists of the chosen customer, its years, and the first document of the
// year shown, with the focus where the mode wants it. False when the customer
// has no document that year.
bool DocumentWindow::MostrarPrimerDocumento(QWidget* foco) {
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

// Where delete mode leaves the customer's lists open (the invoice), another
// customer chosen there refills the years and numbers for that customer and
// shows the first of its documents: the delete then applies to what the lists
// show, never to the previous customer's document under the new one's key.
void DocumentWindow::ClienteCambiadoEnBorrar() {
    if (!textos_.frame2EnBorrar || ModoVentana != Modo::Borrar || !EnModo()) return;
    borrarfacturas();
    CargarDatos();
    Comboejerciciofactura_Click();
    if (ui->Combonumerofactura->ListCount() < 1) return;
    ui->Combonumerofactura->SetListIndex(0);
    Combonumerofactura_Click();
}

void DocumentWindow::Commandmodificar_Click() {
    ModoVentana = Modo::Modificar;
    EntrarEnModo(false, false);
    MostrarPrimerDocumento(ui->Comboejerciciofactura);
}

void DocumentWindow::Commandborrar_Click() {
    ModoVentana = Modo::Borrar;
    EntrarEnModo(textos_.frame2EnBorrar, true);
    MostrarPrimerDocumento(ui->Comboejerciciofactura);
}

void DocumentWindow::Commandconsultar_Click() {
    ModoVentana = Modo::Consultar;
    EntrarEnModo(false, true);
    if (!MostrarPrimerDocumento(ui->Combonumerofactura)) Commandcancelar_Click();
}

// In a mode: back to rest, with the customer read again; ModoVentana keeps its
// letter. At rest: the window closes.
void DocumentWindow::Commandcancelar_Click() {
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
    BotonesPropios();
    if (ModoVentana == Modo::Nuevo) vb::SetEnabled(ui->Combonumerofactura, true);
    if (ModoVentana == Modo::Consultar || ModoVentana == Modo::Borrar) vb::SetEnabled(Lineas_->Frame8, true);
    CancelarPropio();
    // The customer is read again into the tab Borrar has just emptied: the
    // move is a search of the NIF list whichever list was searched last (after
    // a first Cancelar none is, and the tab would stay blank).
    const int cliente = ui->Combonif->ListIndex();
    Listas->CampoBusqueda = QStringLiteral("NIF");
    ui->Combonif->SetListIndex(-1);
    ui->Combonif->SetListIndex(cliente);
    Listas->CampoBusqueda = QString();
}

// ---- The lists of years and numbers -------------------------------------------------------

// The lists for the chosen customer ("*": everybody).
//
// The years. The counters offer the calendar's year even before its first
// document; this list offers only the years that have documents of the
// customer, and chooses none when there are none. The list's way is kept:
// choosing an offered year refills the numbers, so offering the current year
// to a customer without documents would add "no tiene ningún albarán" to the
// one message consulting her must give ("El cliente seleccionado no tiene
// albaranes"), and she must go back to rest with that message alone. The
// counter and the headers below are read for the calendar's year, which is the
// year the counters would have offered, and which is there even when the
// customer's list of years is empty (the year list's text would then be empty,
// and the statements with it).
//
// The buttons. Turning Nuevo on here would make Cancelar close the window
// instead of leaving the mode (Cancelar tells a mode by the four mode buttons
// being off), and a consult that finds nothing could not go back to rest:
// the four mode buttons stay off, as the mode button set them.
void DocumentWindow::CargarDatos() {
    for (QPushButton* b : {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar})
        vb::SetEnabled(b, false);
    vb::SetEnabled(ui->Commandaceptar, true);
    ui->Calendario->SetValue(vb::Date());
    ui->Comboejerciciofactura->Clear();

    const QString cabecera = Tabla("cabecera");
    const QString ejercicio = Columna("ejercicio", "cabecera");
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM " + cabecera + ClausulaCliente() + "ORDER BY " + ejercicio);
    int vistos = 0;
    EjerciciosVistos.fill(QString());
    while (!rs->Eof()) {
        const QString valor = rs->Fields(ejercicio).str();
        bool visto = false;
        for (int i = 0; i < vistos; ++i)
            if (EjerciciosVistos[i] == valor) visto = true;
        if (!visto) {
            // The array has room for 100 years: a 101st stops here.
            if (vistos >= int(EjerciciosVistos.size())) vb::Raise(9, QStringLiteral("Subíndice fuera del intervalo"));
            EjerciciosVistos[vistos++] = valor;
            ui->Comboejerciciofactura->AddItem(valor);
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
    auto serie = BaseDatos->OpenRecordset(SentenciaCargarDatos(textos_.serie, TiendaSerie(), ano));
    if (ModoVentana == Modo::Nuevo) {
        ProponerNumero();
    } else if (serie->Eof()) {
        vb::MsgBox(textos_.sinSerie);
    } else {
        auto cabeceras = BaseDatos->OpenRecordset("SELECT * FROM " + cabecera + ClausulaCliente() + "AND " + ejercicio +
                                                  " = " + ano + " " + "ORDER BY " + ejercicio);
        if (cabeceras->Eof()) {
            vb::MsgBox(textos_.clienteSinDocumentos);
        } else {
            while (!cabeceras->Eof()) {
                ui->Combonumerofactura->AddItem(
                    Format(cabeceras->Fields(Columna("numero", "cabecera")).num(), QStringLiteral("00000")));
                cabeceras->MoveNext();
            }
            ui->Combonumerofactura->SetListIndex(0);
        }
    }

    ui->Textfechafactura->setText(Format(vb::Date(), kHoy));
    LlenarFormasDePago();
    if (ModoVentana == Modo::Nuevo) vb::SetEnabled(ui->Combonumerofactura, false);
}

// The numbers of the chosen year for the customer, the first chosen.
bool DocumentWindow::LlenarNumeros(const QString& orden) {
    ui->Combonumerofactura->Clear();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("cabecera") + ClausulaCliente() + "AND " +
                                       Columna("ejercicio", "cabecera") + " = " + ui->Comboejerciciofactura->Text() +
                                       " " + orden);
    if (rs->Eof()) return false;
    while (!rs->Eof()) {
        ui->Combonumerofactura->AddItem(Format(rs->Fields(Columna("numero", "cabecera")).num(), QStringLiteral("00000")));
        rs->MoveNext();
    }
    ui->Combonumerofactura->SetListIndex(0);
    return true;
}

void DocumentWindow::Comboejerciciofactura_Click() {
    if (ui->Comboejerciciofactura->Text().isEmpty()) return;
    if (!LlenarNumeros("ORDER BY " + Columna("numero", "cabecera")) &&
        (textos_.avisoSinNumerosEnNuevo || ModoVentana != Modo::Nuevo))
        vb::MsgBox(textos_.clienteSinNumeros);
    LimpiarAlElegir();
    if (ModoVentana != Modo::Nuevo) CargarLineas(false);
}

// Only digits and Backspace can be typed into the year; Enter moves on.
void DocumentWindow::Comboejerciciofactura_KeyPress(int& KeyAscii) {
    IntroComoTabulador(KeyAscii);
    SoloDigitos(KeyAscii);
}

void DocumentWindow::CabeceraLeida(Recordset&) {}
void DocumentWindow::LineaLeida(Recordset&, bool) {}
void DocumentWindow::DocumentoMostrado() {}

// The header and the detail of a document are read by year and number alone,
// with neither store nor series.
void DocumentWindow::Combonumerofactura_Click() {
    if (ModoVentana == Modo::Nuevo) return;
    OcultarCalendario();
    LimpiarAlElegir();
    auto rs = BaseDatos->OpenRecordset(SentenciaPorEjercicioYNumero(
        textos_.palabra, "cabecera", QStringLiteral("*"), ui->Comboejerciciofactura->Text(),
        Format(ui->Combonumerofactura->Text(), QStringLiteral("00000"))));
    CabeceraLeida(*rs);
    ui->Textfechafactura->setText(rs->Fields(Columna("fecha", "cabecera")).str());
    ui->Comboformapagofactura->Clear();
    ui->Comboformapagofactura->AddItem(rs->Fields(Columna("forma_pago", "cabecera")).str());
    ui->Comboformapagofactura->SetListIndex(0);
    Lineas_->Textiva->setText(rs->Fields(Columna("iva", "cabecera")).str());
    Lineas_->Textrecargo->setText(rs->Fields(Columna("recargo", "cabecera")).str());
    CargarLineas(true);
    DocumentoMostrado();
}

// Every stored line through the line fields, in the stored order.
void DocumentWindow::CargarLineas(bool desdeNumero) {
    auto rs = BaseDatos->OpenRecordset(SentenciaPorEjercicioYNumero(
        textos_.palabra, "detalle", QStringLiteral("*"), ui->Comboejerciciofactura->Text(),
        Format(ui->Combonumerofactura->Text(), QStringLiteral("00000"))));
    const auto texto = [&](const char* campo) {
        const QString columna = Columna(campo, "detalle");
        return textos_.nuloComoVacio ? TextoCampo(*rs, columna) : rs->Fields(columna).str();
    };
    while (!rs->Eof()) {
        QString precio = texto("pvp_neto");
        if (desdeNumero && textos_.precioNoNumericoACero && !vb::IsNumeric(precio)) precio = QStringLiteral("0");
        Lineas_->ReproducirLinea(texto("referencia"), texto("descripcion"),
                                 rs->Fields(Columna("unidades", "detalle")).str(), precio,
                                 rs->Fields(Columna("descuento", "detalle")).str());
        LineaLeida(*rs, desdeNumero);
        rs->MoveNext();
    }
    Lineas_->DesplazarGridAlFinal();
}

// The owner of the number shown, after a search of everybody's documents.
void DocumentWindow::Label55_DblClick() {
    const QString nif = Columna("nif", "cabecera");
    auto rs = BaseDatos->OpenRecordset(SentenciaPorEjercicioYNumero(textos_.palabra, "cabecera", nif,
                                                                    ui->Comboejerciciofactura->Text(),
                                                                    ui->Combonumerofactura->Text()) +
                                       " ");
    if (rs->Eof()) {
        vb::MsgBox(textos_.sinCliente);
        return;
    }
    const QString dueno = rs->Fields(nif).str();
    for (int i = 0; i < ui->Combonif->ListCount(); ++i) {
        if (ui->Combonif->List(i) == dueno) {
            ui->Combonif->SetListIndex(i);
            break;
        }
    }
}

// ---- Payment term and due dates ---------------------------------------------------------------

void DocumentWindow::Comboformapagofactura_Click() {
    OcultarCalendario();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM formapago WHERE codigo_formapago = " +
                                       sql::Comillas(ui->Comboformapagofactura->Text()));
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
void DocumentWindow::Comborecibosfactura_Click() {
    ui->Calendario->SetValue(vb::CDate(ui->Comborecibosfactura->Text()));
    const QRect caja = ui->Comborecibosfactura->geometry();
    const QPoint bajo = ui->Comborecibosfactura->parentWidget()->mapTo(this, caja.bottomLeft());
    ui->Calendario->move(bajo);
    vb::SetVisible(ui->Calendario, true);
    ui->Calendario->raise();
}

// A day picked on the calendar replaces the chosen due date; the list (of at
// most twelve dates) is built again.
void DocumentWindow::Calendario_Click() {
    const int elegida = ui->Comborecibosfactura->ListIndex();
    std::array<QString, 12> fechas;
    const int n = std::min(ui->Comborecibosfactura->ListCount(), 12);
    for (int i = 0; i < n; ++i) fechas[i] = ui->Comborecibosfactura->List(i);
    if (elegida >= 0 && elegida < 12) fechas[elegida] = Format(ui->Calendario->Value(), kHoy);
    ui->Comborecibosfactura->Clear();
    for (int i = 0; i < n; ++i) ui->Comborecibosfactura->AddItem(fechas[i]);
    if (elegida >= 0) ui->Comborecibosfactura->SetListIndex(elegida);
}

void DocumentWindow::Textfechafactura_LostFocus() {
    ui->Textfechafactura->setText(Format(ui->Textfechafactura->text(), kHoy));
}

// ---- Saving ---------------------------------------------------------------------------------------

void DocumentWindow::AntesDeLasLineas(const Paso&) {}
QString DocumentWindow::DescripcionLarga() const { return QString(); }

// Every grid row from 1, then the header. F counts the rows as the save goes.
void DocumentWindow::GuardarDocumento(const PantallaDocumento& p, const QString& estado, const Paso& paso, int& F) {
    const int filas = int(p.lineas.size());
    for (F = 1; F <= filas; ++F) {
        const CeldasLinea& celdas = p.lineas[F - 1];
        paso([&] { BaseDatos->Execute(SentenciaLinea(textos_.documento, p.clave, celdas, p.descripcionLarga)); });
    }
    DatosCabecera cabecera = p.cabecera;
    cabecera.estado = estado;
    paso([&] { BaseDatos->Execute(SentenciaCabecera(textos_.documento, p.clave, cabecera)); });
}

void DocumentWindow::BorrarDocumento(const Paso& paso) {
    for (const QString& sentencia : SentenciasBorrado()) paso([&] { BaseDatos->Execute(sentencia); });
}

// The one procedure with an error trap: any failing step is reported (the
// "ERROR" box and the report file) and the save goes on with the next step, so
// a failed line is skipped and the header is written all the same.
void DocumentWindow::Commandaceptar_Click() {
    OcultarCalendario();
    int F = 0;
    const bool buscar = false; // the save's lookup flag: no step of these windows sets it
    // The document as it stands when Aceptar is pressed: what is stored and
    // what the report tells.
    PantallaDocumento pantalla = Pantalla();
    vb::SaveReportTrap trap(textos_.ficheroErrores, vb::SaveReportLayout::Document, [&] {
        return vb::SaveReportState{Letra(ModoVentana), textos_.registroErrores(pantalla.informe), QString::number(F),
                                   buscar ? QStringLiteral("Verdadero") : QStringLiteral("Falso")};
    });
    const Paso paso = [&](const std::function<void()>& s) { return trap(s); };

    if (ModoVentana == Modo::Nuevo) {
        if (Lineas_->Gridfacturas->Rows() == 1) {
            paso([&] { Commandcancelar_Click(); });
            return;
        }
        // What the window asks before the rows (the invoice's print
        // questions) comes first, so that no question is open while the save
        // holds the file. Then, in one transaction: the counter, to the number
        // on screen, and the rows. Nothing of it is written until all is.
        AntesDeLasLineas(paso);
        std::optional<Transaccion> guardado;
        if (!paso([&] { guardado.emplace(*BaseDatos); })) return;
        paso([&] { SeguirAlContador(); });
        // The number may have moved on to the counter's: the rows take the one shown.
        pantalla = Pantalla();
        paso([&] {
            GuardarContador(*BaseDatos, textos_.serie, TiendaSerie(), ui->Comboejerciciofactura->Text(),
                            ui->Combonumerofactura->Text());
        });
        GuardarDocumento(pantalla, textos_.estadoNuevo, paso, F);
        // A commit that fails (a full disk) is reported once and the document
        // stays on screen, unsaved, to be saved again.
        if (!paso([&] { guardado->Commit(); })) return;
        paso([&] { Commandnuevo_Click(); });
        paso([&] { vb::SetFocus(ui->Comboejerciciofactura); });
    } else if (ModoVentana == Modo::Borrar) {
        const int respuesta = vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el registro?"),
                                         vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2, QStringLiteral("Advertencia"));
        if (respuesta == vb::vbYes) {
            std::optional<Transaccion> borrado;
            if (!paso([&] { borrado.emplace(*BaseDatos); })) return;
            BorrarDocumento(paso);
            paso([&] { borrado->Commit(); });
            paso([&] { Commandborrar_Click(); });
        } else {
            paso([&] { Commandcancelar_Click(); });
        }
    } else if (ModoVentana == Modo::Consultar) {
        paso([&] { Commandcancelar_Click(); });
    } else if (ModoVentana == Modo::Modificar) {
        const int respuesta = vb::MsgBox(textos_.preguntaModificar, vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2,
                                         QStringLiteral("Advertencia"));
        if (respuesta == vb::vbYes) {
            // A modification is a delete and an insert of the whole document,
            // in one transaction: the document is never seen half-written.
            std::optional<Transaccion> guardado;
            if (paso([&] { guardado.emplace(*BaseDatos); })) {
                const QString estado = EstadoModificado(paso);
                BorrarDocumento(paso);
                GuardarDocumento(pantalla, estado, paso, F);
                paso([&] { guardado->Commit(); });
            }
        }
        paso([&] { Commandmodificar_Click(); });
    }
}

// ---- Printing -----------------------------------------------------------------------------

PantallaDocumento DocumentWindow::Pantalla() const {
    PantallaDocumento p;
    print_layout::Documento& d = p.impreso;
    d.ClientePrograma = ClientePrograma;
    d.Combonombrecomercial = ui->Combonombrecomercial->Text();
    d.Combonombrefiscal = ui->Combonombrefiscal->Text();
    d.Textdomicilio = ui->Textdomicilio->text();
    d.Textcodigopostal = ui->Textcodigopostal->text();
    d.Textpoblacion = ui->Textpoblacion->text();
    d.Textprovincia = ui->Textprovincia->text();
    d.Combonif = ui->Combonif->Text();
    d.Combocodigo = ui->Combocodigo->Text();
    d.Combonumerofactura = ui->Combonumerofactura->Text();
    d.Comboejerciciofactura = ui->Comboejerciciofactura->Text();
    d.Textfechafactura = ui->Textfechafactura->text();
    d.Labelformapagofacturavencimientos = ui->Labelformapagofacturavencimientos->text();
    d.Labelbruto = Lineas_->Labelbruto->text();
    d.Labeldescuento = Lineas_->Labeldescuento->text();
    d.Labelneto = Lineas_->Labelneto->text();
    d.Labelbase = Lineas_->Labelbase->text();
    d.Textiva = Lineas_->Textiva->text();
    d.Labelimporteiva = Lineas_->Labelimporteiva->text();
    d.Textrecargo = Lineas_->Textrecargo->text();
    d.Labelimporterecargo = Lineas_->Labelimporterecargo->text();
    d.Labeltotalfactura = Lineas_->Labeltotalfactura->text();
    d.Comborecibosfactura = ui->Comborecibosfactura->Text();
    d.Labelbanco = ui->Labelbanco->text();
    d.TextIban = ui->TextIban->text();
    d.Textbanco = ui->Textbanco->text();
    d.Textsucursal = ui->Textsucursal->text();
    d.Textdigitocontrol = ui->Textdigitocontrol->text();
    d.Textnumerocuenta = ui->Textnumerocuenta->text();

    // The grid, read once: the rows the statements store and the cells the
    // layouts print (row 0 is the titles).
    vb::FlexGrid* g = Lineas_->Gridfacturas;
    const int filas = g->Rows();
    auto celdas = std::make_shared<std::vector<std::array<QString, 7>>>(filas);
    for (int f = 0; f < filas; ++f)
        for (int c = 0; c < 7; ++c) (*celdas)[f][c] = g->TextMatrix(f, c);
    d.Rows = filas;
    d.TextMatrix = [celdas](int row, int col) { return celdas->at(row).at(col); };
    for (int f = 1; f < filas; ++f) {
        const auto& c = (*celdas)[f];
        p.lineas.push_back({.referencia = c[0], .descripcion = c[1], .unidades = c[2], .precio = c[3],
                            .subtotal = c[4], .descuento = c[5], .total = c[6]});
    }
    p.descripcionLarga = DescripcionLarga();

    p.clave = {.tienda = TiendaDocumentoGuardado(), .ejercicio = d.Comboejerciciofactura,
               .numero = d.Combonumerofactura};
    DatosCabecera& h = p.cabecera;
    h.fecha = d.Textfechafactura;
    h.nif = d.Combonif;
    h.nombre = ui->Textnombre->text();
    h.apellidos = ui->Textapellidos->text();
    h.domicilio = d.Textdomicilio;
    h.poblacion = d.Textpoblacion;
    h.codigoPostal = d.Textcodigopostal;
    h.provincia = d.Textprovincia;
    h.nacionalidad = ui->Textnacionalidad->text();
    h.formaPago = ui->Comboformapagofactura->Text();
    h.recibos = NumeroRecibos;
    h.banco = d.Textbanco;
    h.sucursal = d.Textsucursal;
    h.digitoControl = d.Textdigitocontrol;
    h.numeroCuenta = d.Textnumerocuenta;
    h.bruto = d.Labelbruto;
    h.descuento = d.Labeldescuento;
    h.iva = d.Textiva;
    h.recargo = d.Textrecargo;
    h.iban = d.TextIban;

    p.informe = {.ejercicio = d.Comboejerciciofactura,
                 .numero = d.Combonumerofactura,
                 .nif = ui->Textnif->text(),
                 .codigo = ui->Textcodigo->text(),
                 .nombreFiscal = ui->Textnombrefiscal->text(),
                 .nombreComercial = ui->Textnombrecomercial->text(),
                 .apellidos = h.apellidos,
                 .nombre = h.nombre};
    PantallaPropia(p);
    return p;
}

void DocumentWindow::PantallaPropia(PantallaDocumento&) const {}

// ---- Keys ---------------------------------------------------------------------------------------

void DocumentWindow::Texto_KeyPress(QLineEdit* caja, int& KeyAscii) {
    if (Lineas_->isAncestorOf(caja)) return;
    MaintenanceWindow::Texto_KeyPress(caja, KeyAscii);
}

// Getting the focus in a field hides the calendar (the line area's fields say
// it themselves).
void DocumentWindow::Texto_GotFocus(QLineEdit* caja) {
    MaintenanceWindow::Texto_GotFocus(caja);
    if (!Lineas_->isAncestorOf(caja)) OcultarCalendario();
}

} // namespace vel
