#include "pos/ftpv.h"
#include "ui_ftpv.h"

#include "core/key_filters.h"
#include "core/record_store.h"
#include "core/series.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "pos/ticket_item.h"
#include "pos/ticket_print.h"
#include "pos/ticket_vat.h"
#include "runtime/arithmetic.h"
#include "runtime/beep.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/key_up.h"
#include "runtime/listbox.h"
#include "runtime/msgbox.h"
#include "runtime/printer.h"
#include "runtime/vb.h"
#include "sales/letterheads.h"


namespace vel {

using vb::Format;
using vb::Left;
using vb::Mid;
using vb::Val;

namespace {
constexpr int kIntro = 13;
constexpr int kRetroceso = 8;
const QString kMascaraImporte = sql::kMascaraDosDecimales;
} // namespace

FTpv::FTpv(QWidget* parent) : vb::Form(parent), ui(std::make_unique<Ui::FTpv>()) {
    ui->setupUi(this);

    // Every box selects its whole text on getting the focus.
    for (QLineEdit* caja : {ui->Textreferencia, ui->Textdescripcion, ui->TextUnidades, ui->TextImporte,
                            ui->TextDescuentoPorcien, ui->TextDescuentoTotal})
        OnGotFocus(caja, [caja] { vb::SelectAll(caja); });
    OnGotFocus(ui->TextEntregado, [this] { TextEntregado_GotFocus(); });

    OnKeyPress(ui->Textreferencia, [this](int& k) { Textreferencia_KeyPress(k); });
    OnKeyPress(ui->Textdescripcion, [this](int& k) { Textdescripcion_KeyPress(k); });
    OnKeyPress(ui->TextUnidades, [this](int& k) { TextUnidades_KeyPress(k); });
    OnKeyPress(ui->TextImporte, [this](int& k) { TextImporte_KeyPress(k); });
    OnKeyPress(ui->TextEntregado, [this](int& k) { TextEntregado_KeyPress(k); });
    // The discount boxes take the number keys, and Enter moves on.
    for (QLineEdit* caja : {ui->TextDescuentoPorcien, ui->TextDescuentoTotal})
        OnKeyPress(caja, [](int& k) {
            IntroComoTabulador(k);
            TeclasDeNumero(k);
        });

    OnClick(ui->CommandCobrar, [this] { CommandCobrar_Click(); });
    OnClick(ui->CommandAnular, [this] { CommandAnular_Click(); });
    OnClick(ui->Commandborrar, [this] { Commandborrar_Click(); });
    OnClick(ui->CommandCobros, [this] { CommandCobros_Click(); });
    OnClick(ui->CommandPagos, [this] { CommandPagos_Click(); });
    OnClick(ui->CommandCambio, [this] { CommandCambio_Click(); });
    OnClick(ui->CommandCajon, [this] { CommandCajon_Click(); });
    OnClick(ui->CommandConfig, [this] { CommandConfig_Click(); });
    OnClick(ui->CommandSuspender, [this] { CommandSuspender_Click(); });
    OnClick(ui->ComboTienda, [this] { ComboTienda_Click(); });
    OnDblClick(ui->ListTicket, [this] { ListTicket_DblClick(); });

    // The KeyUp of every control calls Pulsar.
    for (QWidget* control : std::initializer_list<QWidget*>{
             ui->ComboTienda, ui->ComboAlmacen, ui->ComboOperador, ui->ComboTicket, ui->Textreferencia,
             ui->Textdescripcion, ui->TextUnidades, ui->TextImporte, ui->ListTicket, ui->TextDescuentoPorcien,
             ui->TextDescuentoTotal, ui->TextEntregado, ui->CommandCobrar, ui->CommandAnular, ui->Commandborrar,
             ui->CommandCobros, ui->CommandPagos, ui->CommandCambio, ui->CommandCajon, ui->CommandConfig,
             ui->CommandSuspender})
        vb::OnKeyUp(control, [this](int KeyCode, int) { Pulsar(KeyCode); });
}

FTpv::~FTpv() = default;

void FTpv::Form_Load() {
    Borrar();
    ui->Labeltotal->setText("0");
    ui->LabelCambio->setText("0");
    CargarTienda();
    CargarAlmacen();
    CargarOperador();
    CargarNumeroTicket();
    ClientePrograma_ = LeeClientePrograma();
}

// ---- The context ---------------------------------------------------------------

// One procedure three times over: each entry is the code through "!@@", "/" and
// the name, so the code is the first two characters and the name begins at 4.
void FTpv::CargarLista(vb::ComboBox* combo, const QString& sql, const QString& codigo, const QString& nombre) {
    combo->Clear();
    auto rs = BaseDatos->OpenRecordset(sql);
    while (!rs->Eof()) {
        combo->AddItem(Format(rs->Fields(codigo).str(), "!@@") + "/" + TextoCampo(*rs, nombre));
        rs->MoveNext();
    }
    // An empty table leaves its list empty and nothing chosen.
    if (combo->ListCount() >= 1) combo->SetListIndex(0);
}

void FTpv::CargarTienda() {
    CargarLista(ui->ComboTienda,
                QString("SELECT codigo_tienda, nombre_tienda ") + "FROM tienda " + "ORDER BY codigo_tienda",
                "codigo_tienda", "nombre_tienda");
}

void FTpv::CargarAlmacen() {
    CargarLista(ui->ComboAlmacen,
                QString("SELECT codigo_almacen, nombre_almacen ") + "FROM almacen " + "ORDER BY codigo_almacen",
                "codigo_almacen", "nombre_almacen");
}

void FTpv::CargarOperador() {
    CargarLista(ui->ComboOperador,
                QString("SELECT codigo_operador, nombre_operador ") + "FROM operador " + "ORDER BY codigo_operador",
                "codigo_operador", "nombre_operador");
}

QString FTpv::Tienda() const { return sql::Numero(Left(ui->ComboTienda->Text(), 2)); }

QString FTpv::Ejercicio() const { return vb::Right(Format(vb::Date(), "dd/mm/yyyy"), 4); }

QString FTpv::NumeroTicket() const { return sql::Numero(ui->ComboTicket->Text()); }

// The proposal of the ticket counter of the store and year: 000001 when the
// year has no counter yet.
void FTpv::CargarNumeroTicket() {
    const PropuestaNumero propuesta = ProponerNumero(*BaseDatos, Documento::Ticket, Tienda(), Ejercicio());
    ui->ComboTicket->Clear();
    ui->ComboTicket->AddItem(propuesta.numero);
    ui->ComboTicket->SetListIndex(0);
}

// Another store shows the number of its own counter.
void FTpv::ComboTienda_Click() { CargarNumeroTicket(); }

// ---- Finding an article ---------------------------------------------------------

bool FTpv::BuscarProducto(const QString& campo) {
    std::unique_ptr<Recordset> rs;
    if (campo == QLatin1String("REFERENCIA")) {
        const QString texto = ui->Textreferencia->text();
        rs = BaseDatos->OpenRecordset(QString("SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos ") +
                                      "FROM productos " + "WHERE referencia_productos = " + sql::Comillas(texto) + " " +
                                      "OR cod_barras1_productos = " + sql::Comillas(texto) + " " +
                                      "OR cod_barras2_productos = " + sql::Comillas(texto) + " " +
                                      "OR cod_barras3_productos = " + sql::Comillas(texto));
        if (rs->Eof()) {
            vb::MsgBox("Código no encontrado");
            return false;
        }
        // The reference box keeps what was scanned: a bar code stays a bar code.
    } else {
        const QString texto = ui->Textdescripcion->text();
        rs = BaseDatos->OpenRecordset(
            QString("SELECT referencia_productos, descripcion_productos, pvp_neto_productos, codigo_iva_productos ") +
            "FROM productos " + "WHERE descripcion_productos LIKE " + sql::Comillas("*" + texto + "*"));
        if (rs->Eof()) {
            vb::MsgBox("Descripción no encontrada");
            return false;
        }
        // The first article found, and only that one.
        ui->Textreferencia->setText(TextoCampo(*rs, "referencia_productos"));
    }
    ui->Textdescripcion->setText(TextoCampo(*rs, "descripcion_productos"));
    ui->TextImporte->setText(Format(rs->Fields("pvp_neto_productos").num(), sql::kMascaraTresDecimales));

    auto iva = BaseDatos->OpenRecordset(QString("SELECT iva ") + "FROM iva " + "WHERE codigo_iva = " +
                                        rs->Fields("codigo_iva_productos").str());
    ivaactual_ = iva->Eof() ? 21.0f : static_cast<float>(iva->Fields("iva").num());
    return true;
}

// ---- The entry row ---------------------------------------------------------------

void FTpv::Textreferencia_KeyPress(int& KeyAscii) {
    if (KeyAscii != kIntro) return;
    KeyAscii = 0;
    if (!ui->Textreferencia->text().isEmpty()) {
        if (BuscarProducto("REFERENCIA")) vb::SetFocus(ui->TextUnidades);
    } else {
        vb::SetFocus(ui->Textdescripcion);
    }
}

void FTpv::Textdescripcion_KeyPress(int& KeyAscii) {
    if (KeyAscii != kIntro) return;
    KeyAscii = 0;
    if (!ui->Textdescripcion->text().isEmpty()) {
        if (BuscarProducto("DESCRIPCION")) vb::SetFocus(ui->TextUnidades);
    } else {
        vb::SendKeys("{tab}");
    }
}

// Enter with the four boxes filled adds the line; otherwise it moves on.
void FTpv::TextUnidades_KeyPress(int& KeyAscii) {
    if (KeyAscii == kIntro) {
        KeyAscii = 0;
        if (!ui->Textreferencia->text().isEmpty() && !ui->Textdescripcion->text().isEmpty() &&
            !ui->TextUnidades->text().isEmpty() && !ui->TextImporte->text().isEmpty())
            CommandAñadir_Click();
        else
            vb::SendKeys("{tab}");
        return;
    }
    TeclasDeNumero(KeyAscii);
}

// The price box keeps the same keys as the units, and Enter in it adds the line
// as well once the four boxes are filled: a price corrected by hand goes in
// with one key.
void FTpv::TextImporte_KeyPress(int& KeyAscii) { TextUnidades_KeyPress(KeyAscii); }

void FTpv::CommandAñadir_Click() {
    if (ui->Textreferencia->text().isEmpty() || ui->Textdescripcion->text().isEmpty() ||
        ui->TextUnidades->text().isEmpty())
        return;
    // The last sale's total and change stay on view until its next article.
    if (ui->ListTicket->ListCount() == 0) {
        ui->Labeltotal->setText("0");
        ui->LabelCambio->setText("0");
    }
    const double G = Val(ui->TextUnidades->text()) * Val(ui->TextImporte->text());
    ui->ListTicket->AddItem(ticket::Entrada(ui->Textreferencia->text(), ui->Textdescripcion->text(),
                                          ticket::TextoPorcentaje(ivaactual_), ui->TextUnidades->text(),
                                          Format(G, kMascaraImporte)));
    MueveImportes(G, +1);
    Commandborrar_Click();
}

// A double click takes a line back to the entry row and out of the ticket.
void FTpv::ListTicket_DblClick() {
    const int indice = ui->ListTicket->ListIndex();
    if (indice < 0) return; // no line chosen: nothing to take back
    const QString L = ui->ListTicket->List(indice);
    ui->Textreferencia->setText(ticket::Referencia(L));
    ui->Textdescripcion->setText(ticket::Descripcion(L));
    ivaactual_ = static_cast<float>(Val(ticket::Porcentaje(L)));
    ui->TextUnidades->setText(ticket::Unidades(L));
    const double importe = Val(ticket::Importe(L));
    ui->TextImporte->setText(Format(vb::Divide(importe, Val(ui->TextUnidades->text())), kMascaraImporte));
    MueveImportes(importe, -1);
    ui->ListTicket->RemoveItem(indice);
    vb::SetFocus(ui->TextUnidades);
}

void FTpv::MueveImportes(double importe, int signo) {
    ui->LabelImporte->setText(Format(Val(ui->LabelImporte->text()) + signo * importe, kMascaraImporte));
    ui->Labeltotal->setText(Format(Val(ui->Labeltotal->text()) + signo * importe, kMascaraImporte));
    ticket::HuecosIva huecos = {{{ui->LabelIva1->text(), ui->LabelIva1Total->text()},
                                 {ui->LabelIva2->text(), ui->LabelIva2Total->text()},
                                 {ui->LabelIva3->text(), ui->LabelIva3Total->text()}}};
    ticket::MueveIva(huecos, ivaactual_, importe,
                     signo > 0 ? ticket::Movimiento::Anadir : ticket::Movimiento::Quitar);
    ui->LabelIva1->setText(huecos[0].tipo);
    ui->LabelIva1Total->setText(huecos[0].total);
    ui->LabelIva2->setText(huecos[1].tipo);
    ui->LabelIva2Total->setText(huecos[1].total);
    ui->LabelIva3->setText(huecos[2].tipo);
    ui->LabelIva3Total->setText(huecos[2].total);
}

void FTpv::Commandborrar_Click() {
    ui->Textreferencia->setText("");
    ui->Textdescripcion->setText("");
    ui->TextUnidades->setText("");
    ui->TextImporte->setText("");
    vb::SetFocus(ui->Textreferencia);
}

// ---- Taking the money ------------------------------------------------------------

void FTpv::TextEntregado_GotFocus() { vb::SelectAll(ui->TextEntregado); }

void FTpv::TextEntregado_KeyPress(int& KeyAscii) {
    if (KeyAscii == kIntro) {
        KeyAscii = 0;
        if (ui->TextEntregado->text().isEmpty()) {
            // Nothing typed: the sale counts as paid exactly.
            CommandCobrar_Click();
            return;
        }
        const double entregado = Val(ui->TextEntregado->text());
        const double total = Val(ui->Labeltotal->text());
        if (entregado < total) {
            vb::Beep();
            TextEntregado_GotFocus();
            return;
        }
        ui->LabelCambio->setText(Format(entregado - total, kMascaraImporte));
        CommandCobrar_Click();
        return;
    }
    if (KeyAscii != kRetroceso && !(KeyAscii >= '0' && KeyAscii <= '9') && KeyAscii != '.' && KeyAscii != '-') {
        vb::Beep();
        KeyAscii = 0;
    }
}

// The sale is stored before its ticket is printed: the counter first, then the
// header, then the lines, in one transaction that holds the file from the
// reading of the counter to the last line, so two tills never take one number
// and a sale is stored whole or not at all. The ticket goes to the current
// printer with no dialog and no error trap: a printer that fails loses the
// paper, not the sale.
void FTpv::CommandCobrar_Click() {
    if (ui->ListTicket->ListCount() < 1) return;
    {
        Transaccion venta(*BaseDatos);
        CargarNumeroTicket();
        GuardarContador(*BaseDatos, Documento::Ticket, Tienda(), Ejercicio(), ui->ComboTicket->Text());
        BaseDatos->Execute(SentenciaCabecera());
        for (int i = 0; i < ui->ListTicket->ListCount(); ++i)
            BaseDatos->Execute(SentenciaLinea(ui->ListTicket->List(i)));
    }
    vb::Printer().SetPaperKind(vb::Paper::Receipt);
    CabeceraTicket();
    DetalleTicket();
    PieTicket();
    Borrar();
    CargarNumeroTicket();
    vb::SetFocus(ui->Textreferencia);
}

// ---- The printed ticket ------------------------------------------------------------

// "Courier New" 8, then the installation's letterhead in its ticket wording:
// FERROBANDA's register entry in two lines, LAPRESA's own lines, nothing under
// ORTA or a tag the program doesn't know.
void FTpv::CabeceraTicket() { letterheads::ImprimeMembreteTicket(vb::Printer(), ClientePrograma_); }

// Two lines of a blank, then in "Courier New" 8 the date, time and operator,
// the ticket's number, a blank line, the column titles and two lines for each
// entry of the list: its description, then reference, units, unit price (ending
// at column 32) and line total (ending at column 39).
void FTpv::DetalleTicket() {
    vb::PrinterObject& Printer = vb::Printer();
    Printer.Print(" ");
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(8);
    Printer.Print(ticket::LineaFecha(Format(vb::Date(), "dd/mm/yyyy"), Format(vb::Time(), "hh:mm:ss"),
                                     ui->ComboOperador->Text()));
    Printer.Print(ticket::LineaNumero(ui->ComboTienda->Text(), ui->ComboTicket->Text()));
    Printer.Print(" ");
    Printer.Print(ticket::LineaTitulos());
    for (int i = 0; i < ui->ListTicket->ListCount(); ++i)
        for (const QString& linea : ticket::LineasArticulo(ui->ListTicket->List(i))) Printer.Print(linea);
}

// The total in "Courier New" 10, the two closing words centred in "Courier New"
// 8, and the ticket goes out.
void FTpv::PieTicket() {
    vb::PrinterObject& Printer = vb::Printer();
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(10);
    Printer.Print(ticket::LineaTotal(ui->Labeltotal->text()));
    Printer.Print(" ");
    Printer.SetFontName("Courier New");
    Printer.SetFontSize(8);
    Printer.Print(ticket::Centrado("-+ I.V.A. INCLUIDO +-"));
    Printer.Print(ticket::Centrado("GRACIAS POR SU VISITA"));
    Printer.EndDoc();
}

QString FTpv::SentenciaCabecera() const {
    const QString operador = ui->ComboOperador->Text();
    const double iva = Val(ui->LabelIva1Total->text()) + Val(ui->LabelIva2Total->text()) +
                       Val(ui->LabelIva3Total->text());
    return "INSERT INTO cabecera_diaria_ticket VALUES (" +
           sql::Valores({sql::Comillas(Tienda()), "'TI'", Ejercicio(), NumeroTicket(), sql::Comillas(Left(operador, 2)),
                         sql::Comillas(Mid(operador, 4)), sql::Comillas(Format(vb::Date(), "dd/mm/yyyy")),
                         sql::Comillas(Format(vb::Time(), "hh:mm:ss")),
                         sql::NumeroConMascara(ui->Labeltotal->text(), kMascaraImporte),
                         sql::NumeroConMascara(ui->TextDescuentoTotal->text(), kMascaraImporte),
                         Format(iva, kMascaraImporte), "0", "0", "1", "0"}) +
           ")";
}

// A line is stored with seventeen values: the ticket's key, four empty texts,
// the reference, three empty texts, the description, the unit price, the
// units, the line total and the VAT percentage. The table has a column for each
// of them in that order; the older listing of its columns with two and two
// empty texts and no place for the percentage would leave every line unstored.
// Units and percentage are read back through Val, so a text pasted into the
// units box goes in as the number it begins with.
QString FTpv::SentenciaLinea(const QString& entrada) const {
    const double importe = Val(ticket::Importe(entrada));
    return "INSERT INTO detalle_diaria_ticket VALUES (" +
           sql::Valores({sql::Comillas(Tienda()), "'TI'", Ejercicio(), NumeroTicket(), "''", "''", "''", "''",
                         sql::Comillas(ticket::Referencia(entrada)), "''", "''", "''",
                         sql::Comillas(ticket::Descripcion(entrada)),
                         Format(vb::Divide(importe, Val(ticket::Unidades(entrada))), kMascaraImporte),
                         sql::Numero(ticket::Unidades(entrada)), Format(importe, kMascaraImporte),
                         sql::Numero(ticket::Porcentaje(entrada))}) +
           ")";
}

void FTpv::Borrar() {
    for (QLineEdit* caja : {ui->Textreferencia, ui->Textdescripcion, ui->TextUnidades, ui->TextImporte,
                            ui->TextDescuentoPorcien, ui->TextDescuentoTotal, ui->TextEntregado})
        caja->setText("");
    for (QLabel* etiqueta : {ui->LabelImporte, ui->LabelIva1, ui->LabelIva2, ui->LabelIva3, ui->LabelIva1Total,
                             ui->LabelIva2Total, ui->LabelIva3Total})
        etiqueta->setText("");
    ui->ListTicket->Clear();
    // Labeltotal and LabelCambio stay: the last sale remains on view.
}

void FTpv::CommandAnular_Click() {
    if (ui->ListTicket->ListCount() > 0) {
        if (vb::MsgBox(" ¿Desea anular el ticket actual?", vb::vbYesNo, "Advertencia") == vb::vbYes) Borrar();
    }
    vb::SetFocus(ui->Textreferencia);
}

// ---- The keys of the counter -------------------------------------------------------

void FTpv::Pulsar(int KeyCode) {
    switch (KeyCode) {
    case 34: CommandCobrar_Click(); break;  // Page Down
    case 116: CommandCobros_Click(); break; // F5
    case 117: CommandPagos_Click(); break;  // F6
    case 118: CommandCambio_Click(); break; // F7
    case 119: CommandCajon_Click(); break;  // F8
    case 120: CommandConfig_Click(); break; // F9
    default: break;                         // F12 has no key
    }
}

void FTpv::CommandCobros_Click() {}
void FTpv::CommandPagos_Click() {}
void FTpv::CommandCambio_Click() {}
void FTpv::CommandCajon_Click() {}
void FTpv::CommandConfig_Click() {}
void FTpv::CommandSuspender_Click() {}

} // namespace vel
