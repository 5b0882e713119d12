#include "cards/card_window.h"

#include "core/combo_fill.h"
#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "masterdata/due_dates.h"
#include "runtime/calendar.h"
#include "runtime/clock.h"
#include "runtime/flexgrid.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include "ui_card_window.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QScrollBar>
#include <QPlainTextEdit>
#include <optional>

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {
const QString kFecha = QStringLiteral("dd/mm/yyyy");
const QString kDosDecimales = sql::kMascaraDosDecimales;
const QString kCuatroCifras = sql::kMascaraCuatroCifras;

// The ui builds its controls before the pieces that find them by name.
QWidget* Construida(QWidget* window, Ui::CardWindow& ui, const DatosFicha& d) {
    window->setObjectName(d.ventana);
    ui.setupUi(window);
    return window;
}

QString Amount(double v) { return Format(v, kDosDecimales); }
} // namespace

CardWindow::CardWindow(const DatosFicha& datos, QWidget* parent)
    : MaintenanceWindow(parent),
      D(datos),
      ui(std::make_unique<Ui::CardWindow>()),
      Vista(Construida(this, *ui, D), *D.socio, PartnerViewOptions()),
      Listas(this, *D.socio, [this] { muestradatos(); }) {
    SetCaption(D.titulo);
    ui->Textnif->setMaxLength(D.longitudNif);

    // The partner fields this window has not are not shown at all.
    for (const QString& nombre : D.sinControl)
        if (QWidget* w = findChild<QWidget*>(nombre)) {
            w->hide();
            w->setProperty("vel_ausente", true);
        }
    auto presente = [](QWidget* w) { return !w->property("vel_ausente").toBool(); };

    // The partner's fields: shown, never edited. What Texto flips and Borrar
    // empties, with the labels of the names looked up.
    QList<QWidget*> campos;
    for (QFrame* marco : {ui->Frame2, ui->Frame3, ui->Frame4, ui->Frame5})
        for (QLineEdit* caja : marco->findChildren<QLineEdit*>())
            if (!qobject_cast<QComboBox*>(caja->parentWidget()) && presente(caja)) campos << caja;
    campos << ui->Textobservaciones << ui->Checkmailing;
    if (presente(ui->Checkfacturable)) campos << ui->Checkfacturable;
    QList<QWidget*> borrar = campos;
    for (QLabel* etiqueta : {ui->Labelbanco, ui->Labelsucursal, ui->Labelformapago, ui->Labeliva, ui->Labeltienda,
                             ui->Labelcomercial, ui->Labelivaiva, ui->Labelivare, ui->Labelivaret})
        if (presente(etiqueta) && presente(etiqueta->parentWidget())) borrar << etiqueta;

    MontarVentana({.botones = BotonesDe(*ui),
                   .texto = campos,
                   .borrar = borrar,
                   .flipaBotones = {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar, ui->Commandmodificar,
                                    ui->Commandaceptar},
                   .intro = {ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal, ui->Combonombrecomercial,
                             ui->Comboejercicioapunte, ui->Combotiendaapunte, ui->Comboserieapunte,
                             ui->Comboformapagoapunte, ui->Checkgenerarapunte}});
    FiltrarTeclas({ui->Textdebeapunte, ui->Texthaberapunte}, TeclasDeNumero);

    // A list keeps its place while hidden, so that showing it moves nothing.
    ConservarSitioDeLasListas(this);
    // The calendar keeps its place beside the grid while hidden.
    QSizePolicy p = ui->Calendario->sizePolicy();
    p.setRetainSizeWhenHidden(true);
    ui->Calendario->setSizePolicy(p);

    // The search lists: the one with the focus is the one searched.
    const std::pair<vb::ComboBox*, const char*> listas[] = {{ui->Combonif, "NIF"},
                                                            {ui->Combocodigo, "CODIGO"},
                                                            {ui->Combonombrefiscal, "FISCAL"},
                                                            {ui->Combonombrecomercial, "COMERCIAL"}};
    for (const auto& [lista, palabra] : listas) {
        const QString w = QString::fromLatin1(palabra);
        OnGotFocus(lista, [this, w] { Listas.Lista_GotFocus(w); });
        OnClick(lista, [this, w] { Listas.Lista_Click(w); });
    }

    OnClick(ui->Comboejercicioapunte, [this] { Comboejercicioapunte_Click(); });
    OnClick(ui->Combotiendaapunte, [this] { Combotiendaapunte_Click(); });
    OnClick(ui->Comboformapagoapunte, [this] { Comboformapagoapunte_Click(); });
    OnLostFocus(ui->Textfechaapunte, [this] { Textfechaapunte_LostFocus(); });
    OnLostFocus(ui->Textdescripcionapunte, [this] { Textdescripcionapunte_LostFocus(); });
    OnLostFocus(ui->Textdebeapunte, [this] { Textdebeapunte_LostFocus(); });
    OnLostFocus(ui->Texthaberapunte, [this] { Texthaberapunte_LostFocus(); });
    OnClick(ui->Gridapuntes, [this] { Gridapuntes_Click(); });
    OnDblClick(ui->Gridapuntes, [this] { Gridapuntes_DblClick(); });
    // The window is laid out for the grid's seven columns.
    ColumnasRejilla();
}

CardWindow::~CardWindow() = default;

// ---- Names --------------------------------------------------------------------------

QString CardWindow::Tabla(const char* parte) const { return QString::fromLatin1(parte) + "_fichas_" + D.palabra; }

QString CardWindow::Columna(const char* campo, const char* parte) const {
    return QString::fromLatin1(campo) + "_" + Tabla(parte);
}

CardWindow::Lado CardWindow::DeImporte(Importe i) const {
    if (i == Importe::Debe) return {"debe", ui->Textdebeapunte, ui->Labeltotaldebe};
    return {"haber", ui->Texthaberapunte, ui->Labeltotalhaber};
}
CardWindow::Lado CardWindow::Anotado() const { return DeImporte(D.anotado); }
CardWindow::Lado CardWindow::Marcado() const {
    return DeImporte(D.anotado == Importe::Debe ? Importe::Haber : Importe::Debe);
}

// The card is the partner's of the search lists: the boxes below them are
// emptied by Borrar when a mode is left, the lists keep the partner chosen.
QString CardWindow::Nif() const { return ui->Combonif->Text(); }
QString CardWindow::Ejercicio() const { return ui->Comboejercicioapunte->Text(); }

QString CardWindow::DondeCabecera() const {
    return " WHERE " + Columna("nif", "cabecera") + " = " + sql::Comillas(Nif()) + " AND " + Columna("ejercicio", "cabecera") +
           " = " + Ejercicio();
}

QString CardWindow::DondeApunte(const QString& numero) const {
    return " WHERE " + Columna("nif", "detalle") + " = " + sql::Comillas(Nif()) + " AND " + Columna("ejercicio", "detalle") +
           " = " + Ejercicio() + " AND " + Columna("numero", "detalle") + " = " + numero;
}

QString CardWindow::SentenciaApunte(int numero, const QString& fecha, double debe, double haber) const {
    return "INSERT INTO " + Tabla("detalle") + " VALUES (" + Ejercicio() + ", " + sql::Comillas(vb::UCase(Nif())) + ", " +
           sql::Comillas(vb::UCase(ui->Combocodigo->Text())) + ", " + CStr(numero) + ", " +
           sql::Comillas(vb::UCase(ui->Combotiendaapunte->Text())) + ", " + sql::Comillas(vb::UCase(ui->Comboserieapunte->Text())) + ", " +
           sql::Comillas(QString()) + ", " + sql::Comillas(vb::UCase(ui->Comboformapagoapunte->Text())) + ", " +
           sql::Comillas(vb::UCase(ui->Textdescripcionapunte->text())) + ", " + sql::Comillas(fecha) + ", " + Amount(debe) + ", " +
           Amount(haber) + ", " + sql::Comillas(QString()) + ")";
}

QString CardWindow::SentenciaInsertarCabecera(const QString& apuntes, const QString& debe, const QString& haber,
                                              const QString& anterior, const QString& ultimo) const {
    return "INSERT INTO " + Tabla("cabecera") + " VALUES (" + Ejercicio() + ", " + sql::Comillas(vb::UCase(Nif())) + ", " +
           sql::Comillas(vb::UCase(ui->Combocodigo->Text())) + ", " + apuntes + ", " + debe + ", " + haber + ", " + anterior +
           ", " + sql::Comillas(ultimo) + ")";
}

// ---- Loading -------------------------------------------------------------------------------

void CardWindow::Form_Load() {
    Borrar();
    MaintenanceWindow::Form_Load(); // Texto: the partner's fields are shown, never edited
    OcultarListasDeNombres(this);
    vb::SetVisible(ui->Calendario, false);
    ui->Calendario->SetValue(vb::Date());
    vb::SetEnabled(ui->Frameficha, false);
    borrarapuntes();

    if (Listas.LlenarYMostrarPrimero()) vb::SetFocus(ui->Combonif);
}

// The years of the partner's card, with the current one; then the lists of
// the entry fields.
void CardWindow::CargarDatos() {
    ui->Comboejercicioapunte->Clear();
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("cabecera") + " WHERE " + Columna("nif", "cabecera") +
                                       " = " + sql::Comillas(Nif()) + " ORDER BY " + Columna("ejercicio", "cabecera"));
    const QString actual = CStr(vb::Date().year());
    int elegido = -1;
    while (!rs->Eof()) {
        const QString ejercicio = rs->Fields(Columna("ejercicio", "cabecera")).str();
        if (ejercicio == actual && elegido < 0) elegido = ui->Comboejercicioapunte->ListCount();
        ui->Comboejercicioapunte->AddItem(ejercicio);
        rs->MoveNext();
    }
    if (elegido < 0) {
        ui->Comboejercicioapunte->AddItem(actual);
        elegido = ui->Comboejercicioapunte->ListCount() - 1;
    }
    ui->Comboejercicioapunte->SetListIndex(elegido);

    LlenarListaDeTabla(ui->Combotiendaapunte, QStringLiteral("SELECT * FROM tienda ORDER BY nombre_tienda"),
                       QStringLiteral("codigo_tienda"), QStringLiteral("No hay datos de tiendas disponibles"));

    ui->Comboserieapunte->Clear();
    ui->Comboserieapunte->AddItem(QStringLiteral("FC"));
    ui->Comboserieapunte->SetListIndex(0);
    ui->Textfechaapunte->setText(Format(vb::Date(), kFecha));

    LlenarListaDeTabla(ui->Comboformapagoapunte, QStringLiteral("SELECT * FROM formapago ORDER BY codigo_formapago"),
                       QStringLiteral("codigo_formapago"), QStringLiteral("No hay datos de fromas de pago disponibles"));
}

// No totals, no entry, and the grid with its header row alone.
void CardWindow::borrarapuntes() {
    for (QLabel* l : {ui->Labeltotalapuntes, ui->Labeltotalcobrados, ui->Labelultimamodificacion, ui->Labeltotaldebe,
                      ui->Labeltotalhaber, ui->Labeltotalsaldo, ui->Labeldebepasadoapunte, ui->Labelhaberpasadoapunte,
                      ui->Labeltotalsaldopasado, ui->Labelinicioejercicio, ui->Labelfinejercicio,
                      ui->Labelapunteapunte, ui->Labelsaldoapunte, ui->Labeltiendaapunte,
                      ui->Labelformapagoapuntedescripcion, ui->Labelformapagoapuntevencimientos})
        l->setText(QString());
    for (QLineEdit* t : {ui->Textfechaapunte, ui->Textdescripcionapunte, ui->Textdebeapunte, ui->Texthaberapunte})
        t->setText(QString());
    ui->Combotiendaapunte->Clear();
    ui->Comboserieapunte->Clear();
    ui->Comboformapagoapunte->Clear();
    vb::SetValue(ui->Checkgenerarapunte, 0);
    ui->Comboejercicioapunte->Clear();

    vb::FlexGrid* g = ui->Gridapuntes;
    g->Clear();
    g->SetCols(7);
    g->SetRows(1);
    const char* cabecera[] = {"Número", "Cobr", "Fecha", "Descripción", "Debe", "Haber", "Saldo"};
    for (int c = 0; c < 7; ++c) g->SetTextMatrix(0, c, QString::fromUtf8(cabecera[c]));
}

// ---- The year -------------------------------------------------------------------------------

// Seven columns under one fixed row, with their headings and widths.
void CardWindow::ColumnasRejilla() {
    vb::FlexGrid* g = ui->Gridapuntes;
    g->Clear();
    g->SetRows(1);
    g->SetCols(7);
    g->SetFixedRows(1);
    const char* cabecera[] = {"Número", "Cob", "Fecha", "Descripción", "Debe", "Haber", "Saldo"};
    const long anchos[] = {600, 400, 1215, 4900, 1300, 1300, 1300};
    // The widths are the card's own; a heading wider than its column in the
    // screen's font ("Número", "Cob") widens it, so that every heading reads.
    const QFontMetrics letra(g->font());
    int ancho = 0;
    for (int c = 0; c < 7; ++c) {
        g->SetTextMatrix(0, c, QString::fromUtf8(cabecera[c]));
        g->SetColWidth(c, anchos[c]);
        const int titulo = letra.horizontalAdvance(QString::fromUtf8(cabecera[c])) + 2 * letra.averageCharWidth();
        if (g->columnWidth(c) < titulo) g->setColumnWidth(c, titulo);
        ancho += g->columnWidth(c);
    }
    // The grid shows its seven columns whole.
    g->setMinimumWidth(ancho + g->verticalScrollBar()->sizeHint().width() + 2 * g->frameWidth());
}

void CardWindow::Comboejercicioapunte_Click() {
    if (ui->Comboejercicioapunte->Text().isEmpty()) return;
    const int Y = int(Val(Ejercicio()));
    const QString pasado = CStr(Y - 1);

    // 1. The grid: seven columns under one fixed row.
    ColumnasRejilla();

    // 2. The year's dates and the captions of the year before.
    ui->Labelinicioejercicio->setText("01/01/" + CStr(Y));
    ui->Labelfinejercicio->setText("31/12/" + CStr(Y));
    ui->Labeltitulodebepasado->setText(D.tituloDebePasado + pasado + ")");
    ui->Labeltitulohaberpasado->setText(D.tituloHaberPasado + pasado + ")");
    ui->Labeltitulosaldopasado->setText(D.tituloSaldoPasado + pasado + ")");

    // 3. The balance carried: read from the head row of the year before on
    //    every display, stored in this year's row only when an entry is added.
    auto anterior = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("cabecera") + " WHERE " +
                                             Columna("nif", "cabecera") + " = " + sql::Comillas(Nif()) + " AND " +
                                             Columna("ejercicio", "cabecera") + " = " + pasado);
    if (anterior->Eof()) {
        ui->Labeldebepasadoapunte->setText(Amount(0));
        ui->Labelhaberpasadoapunte->setText(Amount(0));
        ui->Labeltotalsaldopasado->setText(Amount(0));
    } else {
        const double debe = anterior->Fields(Columna("debe", "cabecera")).num();
        const double haber = anterior->Fields(Columna("haber", "cabecera")).num();
        ui->Labeldebepasadoapunte->setText(Amount(debe));
        ui->Labelhaberpasadoapunte->setText(Amount(haber));
        ui->Labeltotalsaldopasado->setText(Amount(debe - haber));
    }

    // 4. The year's head row.
    auto cabeza = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("cabecera") + " WHERE " +
                                           Columna("nif", "cabecera") + " = " + sql::Comillas(Nif()) + " AND " +
                                           Columna("ejercicio", "cabecera") + " = " + CStr(Y));
    if (cabeza->Eof()) {
        for (QLabel* l : {ui->Labeltotalapuntes, ui->Labeltotalcobrados, ui->Labelultimamodificacion,
                          ui->Labeltotaldebe, ui->Labeltotalhaber, ui->Labeltotalsaldo})
            l->setText(QString());
        ui->Labelapunteapunte->setText(Format(1, kCuatroCifras));
        return;
    }
    const double apuntes = cabeza->Fields(Columna("apuntes", "cabecera")).num();
    const double debe = cabeza->Fields(Columna("debe", "cabecera")).num();
    const double haber = cabeza->Fields(Columna("haber", "cabecera")).num();
    ui->Labeltotalapuntes->setText(CStr(apuntes));
    ui->Labelultimamodificacion->setText(Format(cabeza->Fields(Columna("ultimo", "cabecera")).str(), kFecha));
    ui->Labeltotaldebe->setText(Amount(debe));
    ui->Labeltotalhaber->setText(Amount(haber));
    ui->Labeltotalsaldo->setText(Amount(debe - haber));
    ui->Labelapunteapunte->setText(Format(apuntes + 1, kCuatroCifras));

    // 5. The entries, with the running balance of the year alone.
    auto apunte = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("detalle") + " WHERE " +
                                           Columna("nif", "detalle") + " = " + sql::Comillas(Nif()) + " AND " +
                                           Columna("ejercicio", "detalle") + " = " + CStr(Y));
    vb::FlexGrid* g = ui->Gridapuntes;
    SaldoAcumulado = 0;
    int cobrados = 0;
    const QString numero = Columna("numero", "detalle"), tipo = Columna("tipo_linea", "detalle"),
                  fecha = Columna("fecha", "detalle"), descripcion = Columna("descripcion", "detalle"),
                  cdebe = Columna("debe", "detalle"), chaber = Columna("haber", "detalle");
    g->setUpdatesEnabled(false);
    while (!apunte->Eof()) {
        const int fila = g->Rows();
        g->SetRows(fila + 1);
        const double d = apunte->Fields(cdebe).num();
        const double h = apunte->Fields(chaber).num();
        g->SetTextMatrix(fila, 0, Format(apunte->Fields(numero).num(), kCuatroCifras));
        if (apunte->Fields(tipo).str() == QLatin1String("C")) {
            g->SetTextMatrix(fila, 1, QStringLiteral("*"));
            ++cobrados;
        }
        g->SetTextMatrix(fila, 2, apunte->Fields(fecha).str());
        g->SetTextMatrix(fila, 3, apunte->Fields(descripcion).str());
        g->SetTextMatrix(fila, 4, Amount(d));
        g->SetTextMatrix(fila, 5, Amount(h));
        SaldoAcumulado = SaldoAcumulado + d - h;
        g->SetTextMatrix(fila, 6, Amount(SaldoAcumulado));
        apunte->MoveNext();
    }
    g->setUpdatesEnabled(true);

    // 6. The collected count; in the modes that pick an entry, no number yet.
    ui->Labeltotalcobrados->setText(CStr(cobrados));
    if (ModoVentana == Modo::Consultar || ModoVentana == Modo::Borrar || ModoVentana == Modo::Modificar)
        ui->Labelapunteapunte->setText(QString());
}

// ---- Entry fields -------------------------------------------------------------------------

void CardWindow::Combotiendaapunte_Click() {
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM tienda WHERE codigo_tienda = " + ui->Combotiendaapunte->Text());
    ui->Labeltiendaapunte->setText(rs->Eof() ? QString() : rs->Fields(QStringLiteral("nombre_tienda")).str());
}

void CardWindow::Comboformapagoapunte_Click() {
    auto rs = BaseDatos->OpenRecordset("SELECT * FROM formapago WHERE codigo_formapago = " +
                                       sql::Comillas(ui->Comboformapagoapunte->Text()));
    if (rs->Eof()) {
        ui->Labelformapagoapuntedescripcion->setText(QString());
        ui->Labelformapagoapuntevencimientos->setText(QString());
        return;
    }
    ui->Labelformapagoapuntedescripcion->setText(rs->Fields(QStringLiteral("nombre_formapago")).str());
    QStringList dias;
    for (int i = 1; i <= 12; ++i) dias << rs->Fields("dias" + Format(i, QStringLiteral("00")) + "_formapago").str();
    ui->Labelformapagoapuntevencimientos->setText(rs->Fields(QStringLiteral("vencimientos_formapago")).str() + "/" +
                                                  dias.join(QLatin1Char(',')));
}

void CardWindow::Textfechaapunte_LostFocus() {
    ui->Textfechaapunte->setText(Format(ui->Textfechaapunte->text(), kFecha));
}

// An empty description becomes store\series\date\term.
void CardWindow::Textdescripcionapunte_LostFocus() {
    if (!ui->Textdescripcionapunte->text().isEmpty()) return;
    ui->Textdescripcionapunte->setText(ui->Combotiendaapunte->Text() + "\\" + ui->Comboserieapunte->Text() + "\\" +
                                       ui->Textfechaapunte->text() + "\\" + ui->Comboformapagoapunte->Text());
}

// The entry's balance: what is owed less what pays it (DEBE less HABER on the
// customer's card, HABER less DEBE on the supplier's).
void CardWindow::Textdebeapunte_LostFocus() {
    ui->Labelsaldoapunte->setText(Amount(Val(Anotado().caja->text()) - Val(Marcado().caja->text())));
}
void CardWindow::Texthaberapunte_LostFocus() { Textdebeapunte_LostFocus(); }

// ---- Buttons ---------------------------------------------------------------------------------

void CardWindow::EntrarEnModo(Modo modo) {
    ModoVentana = modo;
    vb::SetEnabled(ui->Frame2, false);
    vb::SetEnabled(ui->Frameficha, true);
    borrarapuntes();
    for (QPushButton* b : {ui->Commandnuevo, ui->Commandmodificar, ui->Commandconsultar, ui->Commandborrar})
        vb::SetEnabled(b, false);
    vb::SetEnabled(ui->Commandaceptar, true);
    if (modo == Modo::Borrar || modo == Modo::Consultar) vb::SetEnabled(ui->Frameapunte, false);
    CargarDatos();
    vb::SetFocus(ui->Comboejercicioapunte);
}

void CardWindow::Commandnuevo_Click() { EntrarEnModo(Modo::Nuevo); }
void CardWindow::Commandmodificar_Click() { EntrarEnModo(Modo::Modificar); }
void CardWindow::Commandconsultar_Click() { EntrarEnModo(Modo::Consultar); }
void CardWindow::Commandborrar_Click() { EntrarEnModo(Modo::Borrar); }

void CardWindow::Commandcancelar_Click() {
    vb::SetVisible(ui->Calendario, false);
    if (vb::Enabled(ui->Commandnuevo) || vb::Enabled(ui->Commandborrar) || vb::Enabled(ui->Commandconsultar) ||
        vb::Enabled(ui->Commandmodificar)) {
        Unload();
        return;
    }
    vb::SetEnabled(ui->Frame2, true);
    vb::SetEnabled(ui->Frameficha, false);
    borrarapuntes();
    Borrar();
    Botones();
    if (ModoVentana == Modo::Consultar || ModoVentana == Modo::Borrar) vb::SetEnabled(ui->Frameapunte, true);
    ModoVentana = Modo::Ninguno;
}

// ---- Aceptar -------------------------------------------------------------------------------------

vb::SaveReportState CardWindow::EstadoInforme(int F, bool buscar) const {
    return vb::SaveReportState{
        Letra(ModoVentana),
        vb::SupplierCardReportRecord({.ejercicio = Ejercicio(),
                                      .tienda = ui->Combotiendaapunte->Text(),
                                      .serie = ui->Comboserieapunte->Text(),
                                      .documento = QString(),
                                      .numeroApunte = ui->Labelapunteapunte->text(),
                                      .fecha = ui->Textfechaapunte->text(),
                                      .formaPago = ui->Comboformapagoapunte->Text(),
                                      .nif = ui->Textnif->text(),
                                      .codigo = ui->Textcodigo->text(),
                                      .nombreFiscal = ui->Textnombrefiscal->text(),
                                      .nombreComercial = ui->Textnombrecomercial->text(),
                                      .apellidos = ui->Textapellidos->text(),
                                      .nombre = ui->Textnombre->text()}),
        CStr(F), buscar ? QStringLiteral("Verdadero") : QStringLiteral("Falso")};
}

// All the statements of one press go in one transaction. On the supplier's
// card each statement runs under the save report: a failing one is reported
// (box and errores.txt) and the save goes on with the next. The customer's card
// has no trap: a failing statement ends the program, and its transaction
// writes nothing.
void CardWindow::Commandaceptar_Click() {
    int F = 0;
    const bool buscar = false; // the save's lookup flag: no step of this window sets it
    std::optional<vb::SaveReportTrap> trap;
    if (D.informeDeGuardado)
        trap.emplace(vb::kInvoiceReportFile, vb::SaveReportLayout::SupplierCard,
                     [this, &F, buscar] { return EstadoInforme(F, buscar); });
    const Ejecutar ejecutar = [&](const QString& sentencia) {
        ++F;
        if (trap) (*trap)([&] { BaseDatos->Execute(sentencia); });
        else BaseDatos->Execute(sentencia);
    };

    // Opening the transaction (the file held by another station) and its
    // commit (a full disk) fail under the same trap as the statements: on the
    // supplier's card one report, and nothing written.
    const auto paso = [&](const std::function<void()>& s) {
        if (!trap) {
            s();
            return true;
        }
        return (*trap)(s);
    };
    std::optional<Transaccion> transaccion;
    if (!paso([&] { transaccion.emplace(*BaseDatos); })) return;
    if (!FechaCambiada(ejecutar)) {
        if (ModoVentana == Modo::Nuevo) GuardarNuevo(ejecutar);
        else if (ModoVentana == Modo::Modificar) GuardarModificado(ejecutar);
        else if (ModoVentana == Modo::Borrar) GuardarBorrado(ejecutar);
        else if (ModoVentana == Modo::Consultar) Commandcancelar_Click();
    }
    paso([&] { transaccion->Commit(); });
}

// A date changed on the calendar is saved alone, after a question.
bool CardWindow::FechaCambiada(const Ejecutar& ejecutar) {
    const bool editando = ModoVentana == Modo::Nuevo || ModoVentana == Modo::Modificar;
    if (!editando || !vb::Visible(ui->Calendario) ||
        ui->Calendario->Value() == vb::CDate(Format(FechaPulsada, kFecha))) {
        vb::SetVisible(ui->Calendario, false);
        return false;
    }
    // 36: Yes and No, question icon.
    if (vb::MsgBox(QStringLiteral("La fecha del apunte ha cambiado. ¿Desea guardar los cambios?"),
                   vb::vbYesNo + vb::vbQuestion, QStringLiteral("Pregunta")) == vb::vbYes) {
        const QString valor = Format(ui->Calendario->Value(), kFecha);
        const QString numero = CStr(Val(ui->Gridapuntes->TextMatrix(FilaPulsada, 0)));
        ejecutar("UPDATE " + Tabla("detalle") + " SET " + Columna("fecha", "detalle") + " = " + sql::Comillas(valor) +
                 DondeApunte(numero));
        ejecutar("UPDATE " + Tabla("cabecera") + " SET " + Columna("ultimo", "cabecera") + " = " + sql::Comillas(valor) +
                 DondeCabecera());
        if (ModoVentana == Modo::Nuevo) Commandnuevo_Click();
        else Commandmodificar_Click();
    }
    vb::SetVisible(ui->Calendario, false);
    return true;
}

void CardWindow::GuardarNuevo(const Ejecutar& ejecutar) {
    // 1. The default description; both amounts must be filled (a 0 will do).
    Textdescripcionapunte_LostFocus();
    if (ui->Textdebeapunte->text().isEmpty() || ui->Texthaberapunte->text().isEmpty()) {
        vb::MsgBox(D.importesEnBlanco, vb::vbOKOnly, QStringLiteral("Atención"));
        vb::SetFocus(ui->Textdebeapunte);
        return;
    }
    // 2. The payment term's number of due dates and their day counts.
    auto forma = BaseDatos->OpenRecordset("SELECT * FROM formapago WHERE  codigo_formapago = " +
                                          sql::Comillas(ui->Comboformapagoapunte->Text()));
    const int N = int(forma->Fields(QStringLiteral("vencimientos_formapago")).num());
    std::array<int, 12> dias{};
    for (int i = 0; i < 12; ++i) dias[i] = int(forma->Fields("dias" + Format(i + 1, QStringLiteral("00")) + "_formapago").num());

    // 3. The date into the calendar, and the partner's collection days.
    if (ui->Textfechaapunte->text().isEmpty()) ui->Textfechaapunte->setText(Format(vb::Date(), kFecha));
    ui->Calendario->SetValue(vb::CDate(ui->Textfechaapunte->text()));
    int D1 = int(Val(ui->Textdiacobro1->text()));
    int D2 = int(Val(ui->Textdiacobro2->text()));
    if (D1 == 0) D1 = ui->Calendario->Day();
    if (D2 == 0) D2 = ui->Calendario->Day();

    const int numero = int(Val(ui->Labelapunteapunte->text()));
    if (vb::Value(ui->Checkgenerarapunte) == 0) {
        // 4. One entry.
        ejecutar(SentenciaApunte(numero, Format(ui->Calendario->Value(), kFecha), Val(ui->Textdebeapunte->text()),
                                 Val(ui->Texthaberapunte->text())));
        ui->Labelapunteapunte->setText(Format(numero + 1, kCuatroCifras));
    } else {
        // 5. The schedule: the whole amount owed on the first line, and one
        //    line for each due date paying an N-th of it, unrounded.
        const double T = Val(Anotado().caja->text());
        const bool debeAnotado = D.anotado == Importe::Debe;
        RecorrerVencimientos(ui->Calendario->engine(), N, dias, D1, D2, [&](int i, const QDate& fecha) {
            const double total = i == 0 ? T : 0;
            const double plazo = T / N;
            ejecutar(SentenciaApunte(numero + i, Format(fecha, kFecha), debeAnotado ? total : plazo,
                                     debeAnotado ? plazo : total));
        });
        ui->Labelapunteapunte->setText(Format(numero + N, kCuatroCifras));
    }

    // 6-8. The head row: the side owed grows by the amount typed, the other
    //      keeps its total (an entry's payment counts once it is marked), and
    //      the balance of the year before is stored as it shows now.
    const Lado a = Anotado(), m = Marcado();
    const QString apuntes = CStr(Val(ui->Labelapunteapunte->text()) - 1);
    const QString anotado = Amount(Val(a.caja->text()) + Val(a.total->text()));
    const QString marcado = Amount(Val(m.total->text()));
    const QString anterior = Amount(Val(ui->Labeltotalsaldopasado->text()));
    const QString ultimo = Format(ui->Calendario->Value(), kFecha);
    auto cabeza = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("cabecera") + " WHERE  " +
                                           Columna("nif", "cabecera") + " = " + sql::Comillas(Nif()) + " AND " +
                                           Columna("ejercicio", "cabecera") + " = " + Ejercicio());
    if (!cabeza->Eof()) {
        ejecutar("UPDATE " + Tabla("cabecera") + " SET " + Columna("apuntes", "cabecera") + " = " + apuntes + ", " +
                 Columna(a.columna, "cabecera") + " = " + anotado + ", " + Columna(m.columna, "cabecera") + " = " +
                 marcado + ", " + Columna("anterior", "cabecera") + " = " + anterior + ", " +
                 Columna("ultimo", "cabecera") + " = " + sql::Comillas(ultimo) + DondeCabecera());
    } else {
        // The table's order: debe, then haber.
        const bool debeAnotado = D.anotado == Importe::Debe;
        ejecutar(SentenciaInsertarCabecera(apuntes, debeAnotado ? anotado : marcado, debeAnotado ? marcado : anotado,
                                           anterior, ultimo));
    }
    // 9. Shown again, ready for the next entry.
    Commandnuevo_Click();
    vb::SetFocus(ui->Combotiendaapunte);
}

void CardWindow::GuardarModificado(const Ejecutar& ejecutar) {
    if (ui->Labelapunteapunte->text().isEmpty() || ui->Textdescripcionapunte->text().isEmpty()) {
        Commandcancelar_Click();
        return;
    }
    if (ui->Textdebeapunte->text().isEmpty() || ui->Texthaberapunte->text().isEmpty()) {
        vb::MsgBox(D.importesEnBlanco, vb::vbOKOnly, QStringLiteral("Atención"));
        vb::SetFocus(ui->Textdebeapunte);
        return;
    }
    const Lado a = Anotado(), m = Marcado();
    const QString numero = CStr(Val(ui->Labelapunteapunte->text()));
    // 1-2. The stored entry: its amount owed leaves the card's total.
    auto apunte = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("detalle") + DondeApunte(numero));
    const double guardado = apunte->Fields(Columna(a.columna, "detalle")).num();
    if (guardado != 0) a.total->setText(CStr(Val(a.total->text()) - guardado));
    const QString documento = apunte->Fields(Columna("documento", "detalle")).str();
    const QString tipo = apunte->Fields(Columna("tipo_linea", "detalle")).str();
    // 3. The entry. Its amount owed becomes the card's total plus the amount
    //    typed, not the amount typed: with other entries on the card it holds
    //    their sum as well. That is how the card has always saved a change.
    ejecutar("UPDATE " + Tabla("detalle") + " SET " + Columna(a.columna, "detalle") + " = " +
             CStr(Val(a.total->text()) + Val(a.caja->text())) + ", " + Columna("tienda", "detalle") + " = " +
             sql::Comillas(ui->Combotiendaapunte->Text()) + ", " + Columna("serie", "detalle") + " = " +
             sql::Comillas(ui->Comboserieapunte->Text()) + ", " + Columna("documento", "detalle") + " = " + sql::Comillas(documento) + ", " +
             Columna("formapago", "detalle") + " = " + sql::Comillas(ui->Comboformapagoapunte->Text()) + ", " +
             Columna("descripcion", "detalle") + " = " + sql::Comillas(vb::UCase(ui->Textdescripcionapunte->text())) + ", " +
             Columna("fecha", "detalle") + " = " + sql::Comillas(ui->Textfechaapunte->text()) + ", " +
             Columna(m.columna, "detalle") + " = " + Amount(Val(m.caja->text())) + ", " +
             Columna("tipo_linea", "detalle") + " = " + sql::Comillas(tipo) + DondeApunte(numero));
    // 4. The head: the side owed only; the other side is not touched.
    ejecutar("UPDATE " + Tabla("cabecera") + " SET " + Columna(a.columna, "cabecera") + " = " +
             Amount(Val(a.caja->text()) + Val(a.total->text())) + ", " + Columna("ultimo", "cabecera") + " = " +
             sql::Comillas(ui->Textfechaapunte->text()) + DondeCabecera());
    // 5.
    Commandmodificar_Click();
}

// The head's side owed falls by the entry's amount; the other side stays, and
// the count of entries is not lowered: numbers are not given again.
void CardWindow::GuardarBorrado(const Ejecutar& ejecutar) {
    if (ui->Textdescripcionapunte->text().isEmpty()) {
        Commandcancelar_Click();
        return;
    }
    // 276: Yes and No, critical icon, No the default.
    if (vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el registro?"),
                   vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2, QStringLiteral("Advertencia")) != vb::vbYes)
        return;
    const Lado a = Anotado();
    if (Val(a.caja->text()) != 0) a.total->setText(CStr(Val(a.total->text()) - Val(a.caja->text())));
    ejecutar("UPDATE " + Tabla("cabecera") + " SET " + Columna(a.columna, "cabecera") + " = " + a.total->text() +
             ", " + Columna("ultimo", "cabecera") + " = " + sql::Comillas(ui->Textfechaapunte->text()) + DondeCabecera());
    ejecutar("DELETE FROM " + Tabla("detalle") + DondeApunte(CStr(Val(ui->Labelapunteapunte->text()))));
    Commandborrar_Click();
}

// ---- The grid -----------------------------------------------------------------------------------

// A click on a date shows the calendar on it (a second click hides it).
void CardWindow::Gridapuntes_Click() {
    vb::FlexGrid* g = ui->Gridapuntes;
    if (g->Col() != 2 || g->Row() < 1) return;
    FechaPulsada = g->Text();
    FilaPulsada = g->Row();
    ui->Calendario->SetValue(vb::CDate(FechaPulsada));
    vb::SetVisible(ui->Calendario, !vb::Visible(ui->Calendario));
}

void CardWindow::Gridapuntes_DblClick() {
    vb::FlexGrid* g = ui->Gridapuntes;
    if (g->Row() < 1) return;
    const bool editando = ModoVentana == Modo::Nuevo || ModoVentana == Modo::Modificar;
    if (editando && g->Col() == 1) {
        // 292: Yes and No, question icon, No the default.
        if (vb::MsgBox(QStringLiteral("¿Desea marcar/desmarcar como cobrado el apunte?"),
                       vb::vbYesNo + vb::vbQuestion + vb::vbDefaultButton2, QStringLiteral("Pregunta")) != vb::vbYes)
            return;
        Transaccion transaccion(*BaseDatos);
        Marcar([](const QString& sentencia) { BaseDatos->Execute(sentencia); });
        transaccion.Commit();
        return;
    }
    ElegirApunte();
}

// Collected or not: the mark of the entry, and the head's side that moves on
// marking (HABER on the customer's card, DEBE on the supplier's).
void CardWindow::Marcar(const Ejecutar& ejecutar) {
    vb::FlexGrid* g = ui->Gridapuntes;
    const QString numero = CStr(Val(g->TextMatrix(g->Row(), 0)));
    auto apunte = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("detalle") + DondeApunte(numero));
    const bool cobrar = apunte->Fields(Columna("tipo_linea", "detalle")).str().isEmpty();
    ui->Labelultimamodificacion->setText(apunte->Fields(Columna("fecha", "detalle")).str());
    const Lado m = Marcado();
    const double importe = apunte->Fields(Columna(m.columna, "detalle")).num();
    QString sentencia;
    if (cobrar) {
        m.total->setText(CStr(Val(m.total->text()) + importe));
        sentencia = "UPDATE " + Tabla("detalle") + " SET " + Columna("tipo_linea", "detalle") + " = 'C'";
    } else {
        m.total->setText(CStr(Val(m.total->text()) - importe));
        sentencia = "UPDATE " + Tabla("detalle") + " SET " + Columna("tipo_linea", "detalle") + " = ''";
    }
    ejecutar(sentencia + " WHERE " + Columna("nif", "detalle") + " = " + sql::Comillas(Nif()) + " AND " +
             Columna("numero", "detalle") + " = " + numero + " AND " + Columna("ejercicio", "detalle") + " = " +
             Ejercicio());
    ejecutar("UPDATE " + Tabla("cabecera") + " SET " + Columna("ultimo", "cabecera") + " = " +
             sql::Comillas(ui->Labelultimamodificacion->text()) + ", " + Columna(m.columna, "cabecera") + " = " + m.total->text() +
             DondeCabecera());
    if (ModoVentana == Modo::Nuevo) Commandnuevo_Click();
    else Commandmodificar_Click();
}

void CardWindow::Posicionar(vb::ComboBox* lista, const QString& texto) {
    for (int i = 0; i < lista->ListCount(); ++i) {
        if (lista->List(i) == texto) {
            lista->SetListIndex(i);
            return;
        }
    }
}

// The entry of the row into the fields; a collected one can't be changed or
// deleted until it is unmarked.
void CardWindow::ElegirApunte() {
    vb::FlexGrid* g = ui->Gridapuntes;
    if ((ModoVentana == Modo::Borrar || ModoVentana == Modo::Modificar) &&
        g->TextMatrix(g->Row(), 1) == QLatin1String("*")) {
        vb::MsgBox(QStringLiteral("No se puede eliminar/modificar un apunte que tenga la marca de cobrado"),
                   vb::vbOKOnly, QStringLiteral("Atención"));
        return;
    }
    const QString numero = CStr(Val(g->TextMatrix(g->Row(), 0)));
    auto apunte = BaseDatos->OpenRecordset("SELECT * FROM " + Tabla("detalle") + DondeApunte(numero));
    if (apunte->Eof()) return;
    Posicionar(ui->Combotiendaapunte, apunte->Fields(Columna("tienda", "detalle")).str());
    Posicionar(ui->Comboserieapunte, apunte->Fields(Columna("serie", "detalle")).str());
    Posicionar(ui->Comboformapagoapunte, apunte->Fields(Columna("formapago", "detalle")).str());
    ui->Labelapunteapunte->setText(Format(apunte->Fields(Columna("numero", "detalle")).num(), kCuatroCifras));
    ui->Textfechaapunte->setText(apunte->Fields(Columna("fecha", "detalle")).str());
    ui->Textdescripcionapunte->setText(apunte->Fields(Columna("descripcion", "detalle")).str());
    ui->Textdebeapunte->setText(Amount(apunte->Fields(Columna("debe", "detalle")).num()));
    ui->Texthaberapunte->setText(Amount(apunte->Fields(Columna("haber", "detalle")).num()));
    Texthaberapunte_LostFocus();
}

} // namespace vel
