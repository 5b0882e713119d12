#include "sales/document_totals.h"

#include "core/key_filters.h"
#include "core/record_store.h"
#include "core/session.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include "ui_document_totals.h"
#include "core/sql_values.h"

namespace vel {

using vb::CStr;
using vb::Format;
using vb::Val;

ReglasLineas ReglasAlbaran() {
    return {.mascaraLinea = QStringLiteral("0.000"),
            .mascaraPrecio = QStringLiteral("0.000"),
            .subtotalAntesDeRedondear = false};
}

ReglasLineas ReglasFactura(const QString& ClientePrograma) {
    const QString mascara =
        ClientePrograma == QLatin1String("FERROBANDA") ? QStringLiteral("0.000") : QStringLiteral("0.00");
    return {.mascaraLinea = mascara, .mascaraPrecio = mascara, .subtotalAntesDeRedondear = true};
}

namespace {

// The grid's layout: header and width in twips of each column, and the field
// each column is written from.
struct ColumnaGrid {
    const char* cabecera;
    long ancho;
};
constexpr ColumnaGrid kColumnas[7] = {
    {"Referencia", 1500}, {"Descripción", 4400}, {"Unidades", 1000}, {"Precio", 1150},
    {"Subtotal", 1150},   {"Descuento", 400},    {"Total", 1300},
};

} // namespace

DocumentTotals::DocumentTotals(QWidget* parent)
    : vb::Form(parent), ui(std::make_unique<Ui::DocumentTotals>()), reglas_(ReglasAlbaran()) {
    ui->setupUi(this);
    Frame7 = ui->Frame7;
    Frame8 = ui->Frame8;
    Textreferencia = ui->Textreferencia;
    Textdescripcion = ui->Textdescripcion;
    Textcantidad = ui->Textcantidad;
    Textprecio = ui->Textprecio;
    Labelsubtotal = ui->Labelsubtotal;
    Textdescuento = ui->Textdescuento;
    Labeltotal = ui->Labeltotal;
    Gridfacturas = ui->Gridfacturas;
    Labelbruto = ui->Labelbruto;
    Labeldescuento = ui->Labeldescuento;
    Labelneto = ui->Labelneto;
    Labelbase = ui->Labelbase;
    Textiva = ui->Textiva;
    Labelimporteiva = ui->Labelimporteiva;
    Textrecargo = ui->Textrecargo;
    Labelimporterecargo = ui->Labelimporterecargo;
    Labeltotalfactura = ui->Labeltotalfactura;

    // The grid has one fixed row of headers and no fixed column.
    Gridfacturas->SetFixedCols(0);
    Gridfacturas->SetFixedRows(1);
    ReconstruirGrid();

    for (QLineEdit* campo : {Textreferencia, Textdescripcion, Textcantidad, Textprecio, Textdescuento, Textiva,
                             Textrecargo}) {
        OnGotFocus(campo, [this, campo] { Campo_GotFocus(campo); });
        OnKeyPress(campo, [this, campo](int& KeyAscii) { Campo_KeyPress(campo, KeyAscii); });
    }
    OnLostFocus(Textdescripcion, [this] { Textdescripcion_LostFocus(); });
    OnLostFocus(Textprecio, [this] { Textprecio_LostFocus(); });
    OnLostFocus(Textdescuento, [this] { Textdescuento_LostFocus(); });
    OnLostFocus(Textiva, [this] { Textiva_LostFocus(); });
    OnLostFocus(Textrecargo, [this] { Textrecargo_LostFocus(); });
    OnDblClick(Gridfacturas, [this] { Gridfacturas_DblClick(); });

    OnChange(Labelsubtotal, [this] { Labelsubtotal_Change(); });
    OnChange(Labeltotal, [this] { Labeltotal_Change(); });
    OnChange(Labelbruto, [this] { Labelbruto_Change(); });
    OnChange(Labeldescuento, [this] { Labeldescuento_Change(); });
    OnChange(Labelimporteiva, [this] { Labelimporteiva_Change(); });
    OnChange(Labelimporterecargo, [this] { Labelimporterecargo_Change(); });
    OnChange(Labeltotalfactura, [this] { Labeltotalfactura_Change(); });
}

DocumentTotals::~DocumentTotals() = default;

void DocumentTotals::showEvent(QShowEvent* e) { QWidget::showEvent(e); }

void DocumentTotals::SetVentana(Ventana ventana) { ventana_ = std::move(ventana); }
void DocumentTotals::SetReglas(const ReglasLineas& reglas) { reglas_ = reglas; }
void DocumentTotals::SetTituloTotal(const QString& titulo) { ui->Titulototalfactura->setText(titulo); }

// ---- Keys and focus -----------------------------------------------------------------

// Getting the focus selects the whole text and hides the calendar; the price
// and the line discount leave the calendar as it is.
void DocumentTotals::Campo_GotFocus(QLineEdit* campo) {
    vb::SelectAll(campo);
    if (campo != Textprecio && campo != Textdescuento && ventana_.OcultarCalendario) ventana_.OcultarCalendario();
}

void DocumentTotals::Campo_KeyPress(QLineEdit* campo, int& KeyAscii) {
    if (campo == Textreferencia) return Textreferencia_KeyPress(KeyAscii);
    // Units, line discount and VAT are whole positive numbers; price and
    // surcharge also take the point and the minus sign.
    IntroComoTabulador(KeyAscii);
    if (campo == Textcantidad || campo == Textdescuento || campo == Textiva) SoloDigitos(KeyAscii);
    else if (campo == Textprecio || campo == Textrecargo) TeclasDeNumero(KeyAscii);
}

// Enter on a reference looks it up: a known product (or a line already in the
// grid) goes on to the units, an unknown reference to the description, as a
// free line. Enter on an empty reference moves on.
void DocumentTotals::Textreferencia_KeyPress(int& KeyAscii) {
    if (KeyAscii != 13) return;
    KeyAscii = 0;
    if (!Textreferencia->text().isEmpty()) {
        BuscarProducto(QStringLiteral("REFERENCIA"));
        if (!Textdescripcion->text().isEmpty()) vb::SetFocus(Textcantidad);
        else vb::SetFocus(Textdescripcion);
    } else {
        vb::SendKeys(QStringLiteral("{tab}"));
    }
}

// An empty reference and an empty description end the entry of lines.
void DocumentTotals::Textdescripcion_LostFocus() {
    if (Textreferencia->text().isEmpty() && Textdescripcion->text().isEmpty() && ventana_.Commandaceptar)
        vb::SetFocus(ventana_.Commandaceptar);
}

// ---- The product ---------------------------------------------------------------------

void DocumentTotals::BuscarProducto(const QString& tipo) {
    if (tipo != QLatin1String("REFERENCIA")) return; // "DESCRIPCION" is known and does nothing

    // A reference already in the grid opens that line again: the same product
    // twice is an edit, never a second line. The comparison is exact, case
    // included. The opened line keeps what it holds; the catalogue isn't read.
    if (Gridfacturas->Rows() > 1) {
        Gridfacturas->SetCol(0);
        for (int i = 1; i <= Gridfacturas->Rows() - 1; ++i) {
            Gridfacturas->SetRow(i);
            if (Gridfacturas->Text() == Textreferencia->text()) {
                Gridfacturas_DblClick();
                return;
            }
        }
    }

    const QString referencia = Textreferencia->text();
    auto rs = BaseDatos->OpenRecordset(
        "SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos WHERE "
        "referencia_productos = " + sql::Comillas(referencia) + " OR cod_barras1_productos = " + sql::Comillas(referencia) +
        " OR cod_barras2_productos = " + sql::Comillas(referencia) + " OR cod_barras3_productos = " + sql::Comillas(referencia));
    if (rs->Eof()) return; // unknown: the fields stay as they are

    // The product's price holds VAT; it is taken out at the document's rate, not
    // the product's own (codigo_iva_productos is read and left unused). The
    // reference stays as typed: a barcode stays the line's reference.
    Textdescripcion->setText(rs->Fields(QStringLiteral("descripcion_productos")).str());
    Textprecio->setText(Format(rs->Fields(QStringLiteral("pvp_neto_productos")).num() /
                                   (vb::CDbl(Textiva->text()) / 100 + 1),
                               QStringLiteral("0.000")));
    if (ventana_.ProductoEncontrado) ventana_.ProductoEncontrado();
}

// ---- The line --------------------------------------------------------------------------

// The delivery note rounds the price, then multiplies; the invoice multiplies
// the price as typed, then rounds it. No test for an empty field in either.
void DocumentTotals::Textprecio_LostFocus() {
    if (reglas_.subtotalAntesDeRedondear) {
        Labelsubtotal->SetCaption(CStr(Val(Textprecio->text()) * Val(Textcantidad->text())));
        Textprecio->setText(Format(Textprecio->text(), reglas_.mascaraPrecio));
    } else {
        Textprecio->setText(Format(Textprecio->text(), reglas_.mascaraPrecio));
        Labelsubtotal->SetCaption(CStr(Val(Textprecio->text()) * Val(Textcantidad->text())));
    }
}

// Leaving the line discount accepts the line, whatever the fields hold.
void DocumentTotals::Textdescuento_LostFocus() {
    Labeltotal->SetCaption(CStr(Val(Labelsubtotal->Caption()) -
                                Val(Textdescuento->text()) / 100 * Val(Labelsubtotal->Caption())));

    if (vb::UCase(Textreferencia->text()) != QLatin1String("DSC")) {
        // The surcharge first, still on the neto before this line.
        Labelimporterecargo->SetCaption(
            Format(Val(Textrecargo->text()) / 100 * Val(Labelneto->Caption()), QStringLiteral("0.00")));
        Labelbruto->SetCaption(CStr(Val(Labelsubtotal->Caption()) + Val(Labelbruto->Caption())));
        Labeldescuento->SetCaption(CStr(Val(Labeldescuento->Caption()) +
                                        Val(Textdescuento->text()) / 100 * Val(Labelsubtotal->Caption())));
        NetoYBase();
    } else {
        // A discount in money on the whole document, after VAT. Assigned, not
        // added: of two "DSC" lines only the last counts.
        DescuentoDocumento = vb::CDbl(Labeltotal->Caption());
    }

    Textiva_LostFocus();
    Textrecargo_LostFocus();

    if (FilaEditada == 0) {
        Gridfacturas->SetRows(Gridfacturas->Rows() + 1);
        Gridfacturas->SetRow(Gridfacturas->Rows() - 1);
    } else {
        Gridfacturas->SetRow(FilaEditada);
        FilaEditada = 0;
    }
    const QString celdas[7] = {Textreferencia->text(), Textdescripcion->text(), Textcantidad->text(),
                               Textprecio->text(),     Labelsubtotal->Caption(), Textdescuento->text(),
                               Labeltotal->Caption()};
    for (int col = 0; col < 7; ++col) {
        Gridfacturas->SetCol(col);
        Gridfacturas->SetText(celdas[col]);
    }

    LimpiarLinea();
    DesplazarGridAlFinal();
    vb::SetFocus(Textreferencia);
}

// Opens a line again: its amounts leave the totals until it is accepted again,
// which overwrites its row. There is no test for "DSC" here: opening a "DSC"
// line takes from bruto and discounts what it never added, and accepting it
// again doesn't put it back. DescuentoDocumento is left as it is.
void DocumentTotals::Gridfacturas_DblClick() {
    if (Gridfacturas->Row() == 0) return;
    FilaEditada = Gridfacturas->Row();
    Gridfacturas->SetCol(0);
    Textreferencia->setText(Gridfacturas->Text());
    Gridfacturas->SetCol(1);
    Textdescripcion->setText(Gridfacturas->Text());
    Gridfacturas->SetCol(2);
    Textcantidad->setText(Gridfacturas->Text());
    Gridfacturas->SetCol(3);
    Textprecio->setText(Gridfacturas->Text());
    Textprecio_LostFocus();
    Gridfacturas->SetCol(5);
    Textdescuento->setText(Gridfacturas->Text());

    Labeltotal->SetCaption(CStr(Val(Labelsubtotal->Caption()) -
                                Val(Textdescuento->text()) / 100 * Val(Labelsubtotal->Caption())));
    Labelbruto->SetCaption(CStr(Val(Labelbruto->Caption()) - Val(Labelsubtotal->Caption())));
    Labeldescuento->SetCaption(CStr(Val(Labeldescuento->Caption()) -
                                    Val(Textdescuento->text()) / 100 * Val(Labelsubtotal->Caption())));
    NetoYBase();

    Textiva_LostFocus();
    Textrecargo_LostFocus();
    vb::SetFocus(Textreferencia);
}

// ---- The foot -----------------------------------------------------------------------------

// VAT and surcharge are percentages of the rounded neto of the whole document,
// computed once on the total, not line by line.
void DocumentTotals::Textiva_LostFocus() {
    Labelimporteiva->SetCaption(
        Format(Val(Textiva->text()) / 100 * Val(Labelneto->Caption()), QStringLiteral("0.00")));
    TotalDocumento();
}

void DocumentTotals::Textrecargo_LostFocus() {
    Labelimporterecargo->SetCaption(
        Format(Val(Textrecargo->text()) / 100 * Val(Labelneto->Caption()), QStringLiteral("0.00")));
    TotalDocumento();
}

// Summed in this order, the "DSC" line taken off last.
void DocumentTotals::TotalDocumento() {
    Labeltotalfactura->SetCaption(Format(Val(Labelimporteiva->Caption()) + Val(Labelneto->Caption()) +
                                             Val(Labelimporterecargo->Caption()) - DescuentoDocumento,
                                         QStringLiteral("0.00")));
}

// Labelneto and Labelbase have no change handler: they are written formatted.
void DocumentTotals::NetoYBase() {
    Labelneto->SetCaption(Format(Val(Labelbruto->Caption()) - Val(Labeldescuento->Caption()), QStringLiteral("0.00")));
    Labelbase->SetCaption(Format(Val(Labelneto->Caption()), QStringLiteral("0.00")));
}

// ---- Change handlers: whatever is written, the caption is rounded at once ------------------

void DocumentTotals::Labelsubtotal_Change() {
    Labelsubtotal->SetCaption(Format(Val(Labelsubtotal->Caption()), reglas_.mascaraLinea));
}
void DocumentTotals::Labeltotal_Change() {
    Labeltotal->SetCaption(Format(Val(Labeltotal->Caption()), reglas_.mascaraLinea));
}
void DocumentTotals::Labelbruto_Change() {
    Labelbruto->SetCaption(Format(Val(Labelbruto->Caption()), QStringLiteral("0.00")));
}
void DocumentTotals::Labeldescuento_Change() {
    Labeldescuento->SetCaption(Format(Val(Labeldescuento->Caption()), QStringLiteral("0.00")));
}
void DocumentTotals::Labelimporteiva_Change() {
    Labelimporteiva->SetCaption(Format(Val(Labelimporteiva->Caption()), QStringLiteral("0.00")));
}
void DocumentTotals::Labelimporterecargo_Change() {
    Labelimporterecargo->SetCaption(Format(Val(Labelimporterecargo->Caption()), QStringLiteral("0.00")));
}
void DocumentTotals::Labeltotalfactura_Change() {
    Labeltotalfactura->SetCaption(Format(Val(Labeltotalfactura->Caption()), QStringLiteral("0.00")));
}

// ---- Clearing and replay ---------------------------------------------------------------------

void DocumentTotals::ReconstruirGrid() {
    Gridfacturas->Clear();
    Gridfacturas->SetCols(7);
    Gridfacturas->SetRows(1);
    Gridfacturas->SetRow(0);
    for (int col = 0; col < 7; ++col) {
        Gridfacturas->SetCol(col);
        Gridfacturas->SetColWidth(col, kColumnas[col].ancho);
        Gridfacturas->SetText(QString::fromUtf8(kColumnas[col].cabecera));
    }
}

void DocumentTotals::LimpiarLinea() {
    Textreferencia->setText(QString());
    Textdescripcion->setText(QString());
    Textcantidad->setText(QString());
    Textprecio->setText(QString());
    Labelsubtotal->SetCaption(QString());
    Textdescuento->setText(QString());
    Labeltotal->SetCaption(QString());
}

// A customer whose VAT type can't be found is charged 21 percent: a rate fixed
// here in the program.
void DocumentTotals::RestablecerTotales() {
    const QString iva = ventana_.Labelivaiva ? ventana_.Labelivaiva() : QString();
    const QString recargo = ventana_.Labelivare ? ventana_.Labelivare() : QString();
    Textiva->setText(iva.isEmpty() ? QStringLiteral("21") : iva);
    Textrecargo->setText(recargo.isEmpty() ? QStringLiteral("0") : recargo);
    for (vb::Label* total : {Labelbruto, Labeldescuento, Labelneto, Labelbase, Labelimporteiva,
                             Labelimporterecargo, Labeltotalfactura})
        total->SetCaption(QString());
}

void DocumentTotals::ReproducirLinea(const QString& referencia, const QString& descripcion,
                                     const QString& unidades, const QString& precio, const QString& descuento) {
    Textreferencia->setText(referencia);
    Gridfacturas->SetCol(1);
    Textdescripcion->setText(descripcion);
    Textcantidad->setText(unidades);
    Textprecio->setText(precio);
    Textprecio_LostFocus();
    Textdescuento->setText(descuento);
    Textdescuento_LostFocus();
}

void DocumentTotals::DesplazarGridAlFinal() { Gridfacturas->ScrollToEnd(); }

} // namespace vel
