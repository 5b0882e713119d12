#include "masterdata/farticulos.h"

#include "core/dbase_store.h"
#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "masterdata/price_changes.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/mouse_pointer.h"
#include "runtime/msgbox.h"
#include "runtime/paths.h"
#include "runtime/vb.h"
#include "ui_farticulos.h"

#include <algorithm>

namespace vel {

namespace {

// The questions of this window are the pattern's delete question: Yes and No,
// critical icon, No by default, under the title "Advertencia".
constexpr int kPregunta = vb::vbYesNo + vb::vbCritical + vb::vbDefaultButton2;
const QString kAdvertencia = QStringLiteral("Advertencia");

// Two line ends, as the price questions separate their pieces.
const QString kDosLineas = QStringLiteral("\n\n");

// The chain of the catalogue tab.
const QString kCadena = QStringLiteral("COSERVAL");

// Every product with a reference and a price: what Cambiar on all products and
// Recalcular walk. A price of 0 or less is left out.
const QString kTodosConPrecio = QStringLiteral(
    "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' AND "
    "pvp_neto_productos > 0 ORDER BY referencia_productos");

// The code at the head of a combo entry, two columns left-aligned: "1 /21",
// "01/TORNILLERIA".
QString CodigoDeEntrada(const vb::Variant& codigo) {
    if (codigo.isNumber()) return vb::Format(codigo.num(), QStringLiteral("!@@"));
    return vb::Format(codigo.isNull() ? QString() : codigo.str(), QStringLiteral("!@@"));
}

} // namespace

Farticulos::Farticulos(QWidget* parent) : MaintenanceWindow(parent), ui(std::make_unique<Ui::Farticulos>()) {
    ui->setupUi(this);
    // Botones flips the four mode buttons only, so CommandAceptar is never
    // flipped by it: it is built enabled and does nothing while no mode is on
    // (its procedure has a branch for each of the four modes and none for
    // idle). Were it built disabled as in the pattern's other windows, no
    // product could ever be saved.
    MontarVentana({.botones = {.Commandnuevo = ui->Commandnuevo,
                               .Commandmodificar = ui->Commandmodificar,
                               .Commandconsultar = ui->Commandconsultar,
                               .Commandborrar = ui->Commandborrar,
                               .Commandaceptar = ui->CommandAceptar,
                               .Commandcancelar = ui->Commandcancelar},
                   .texto = {ui->FrameEstructura, ui->FrameArticulos, ui->FrameDatos},
                   .borrar = {ui->Textreferencia, ui->Textdescripcion, ui->Textmarca, ui->Textmodelo,
                              ui->Textcoste, ui->Comboiva, ui->Textiva, ui->Textpvp, ui->Textgarantia,
                              ui->Textdto1, ui->Textdto2, ui->Textdto3, ui->Textdto4, ui->Textdto5,
                              ui->Textpvpoferta, ui->Textinioferta, ui->Textfinoferta, ui->Textunioferta,
                              ui->Textpeso, ui->Textbarras1, ui->Textbarras2, ui->Textbarras3,
                              ui->Textcoleccion, ui->Texttemporada, ui->Comboproveedor, ui->Textproveedor},
                   .flipaBotones = {ui->Commandnuevo, ui->Commandborrar, ui->Commandconsultar,
                                    ui->Commandmodificar},
                   .intro = {ui->Combodivision, ui->Combogfamilia, ui->Combofamilia, ui->Comboarticulo,
                             ui->Comboiva, ui->Comboproveedor}});
    FiltrarTeclas({ui->Textcoste, ui->Textpvp, ui->Textgarantia, ui->Textdto1, ui->Textdto2, ui->Textdto3,
                   ui->Textdto4, ui->Textdto5, ui->Textpvpoferta, ui->Textunioferta, ui->Textpeso,
                   ui->TextAumentar, ui->TextAumentarTodo},
                  TeclasDeNumero);

    OnGotFocus(ui->Combodivision, [this] { Combodivision_GotFocus(); });
    OnLostFocus(ui->Combodivision, [this] { Combodivision_LostFocus(); });
    OnGotFocus(ui->Combogfamilia, [this] { Combogfamilia_GotFocus(); });
    OnLostFocus(ui->Combogfamilia, [this] { Combogfamilia_LostFocus(); });
    OnLostFocus(ui->Combofamilia, [this] { Combofamilia_LostFocus(); });
    OnLostFocus(ui->Comboarticulo, [this] { Comboarticulo_LostFocus(); });
    OnGotFocus(ui->Comboiva, [this] { Comboiva_GotFocus(); });
    OnClick(ui->ListArticulos, [this] { ListArticulos_Click(); });
    OnDblClick(ui->ListArticulos, [this] { ListArticulos_DblClick(); });
    OnLostFocus(ui->Textreferencia, [this] { Textreferencia_LostFocus(); });
    OnLostFocus(ui->Textiva, [this] { Textiva_LostFocus(); });
    OnLostFocus(ui->Textpvp, [this] { Textpvp_LostFocus(); });

    OnClick(ui->CommandCambiar, [this] { CommandCambiar_Click(); });
    OnClick(ui->CommandCambiarTodo, [this] { CommandCambiarTodo_Click(); });
    OnClick(ui->CommandRecalcular, [this] { CommandRecalcular_Click(); });

    OnClick(ui->CommandBuscarArticuloProveedor, [this] { CommandBuscarArticuloProveedor_Click(); });
    OnClick(ui->ComboCodigoProducto, [this] { ComboCodigoProducto_Click(); });
    OnClick(ui->CommandCopiarProveedor, [this] { CommandCopiarProveedor_Click(); });

    ui->ProgressBar1->SetVisible(false);
}

Farticulos::~Farticulos() = default;

// ---- Load, modes and Cancelar ----------------------------------------------------

void Farticulos::Form_Load() {
    Borrar();
    // The three frames are built enabled: this Texto disables them.
    Texto();
    ModoVentana = Modo::Ninguno;
    // The tag, the first value of config.ini, read with no trap: without the
    // file the window's load fails and the program ends.
    ClientePrograma = LeeConfiguracion(LecturaConfiguracion::SoloEtiqueta).ClientePrograma;
    CargarProveedor();
}

void Farticulos::LimpiarEstructura() {
    ui->Combodivision->Clear();
    ui->Combogfamilia->Clear();
    ui->Combofamilia->Clear();
    ui->Comboarticulo->Clear();
}

// Every mode turns on the same way; the frames are enabled in all four, since
// a product is reached through the structure and the list in each of them.
void Farticulos::EntrarEnModo(Modo modo) {
    ModoVentana = modo;
    LimpiarEstructura();
    Borrar();
    Texto();
    Botones();
    // The mode button has just turned itself off: the focus goes to the first
    // field of the mode, the top of the article structure, and not on to
    // whatever control follows the button.
    vb::SetFocus(ui->Combodivision);
}

void Farticulos::Commandnuevo_Click() { EntrarEnModo(Modo::Nuevo); }

void Farticulos::Commandmodificar_Click() {
    EntrarEnModo(Modo::Modificar);
    vb::SetEnabled(ui->CommandCambiar, true);
    vb::SetEnabled(ui->CommandCambiarTodo, true);
}

void Farticulos::Commandconsultar_Click() { EntrarEnModo(Modo::Consultar); }

void Farticulos::Commandborrar_Click() { EntrarEnModo(Modo::Borrar); }

void Farticulos::SalirDelModo() {
    Botones();
    Texto();
    Borrar();
    LimpiarEstructura();
    if (ModoVentana == Modo::Modificar) {
        vb::SetEnabled(ui->CommandCambiar, false);
        vb::SetEnabled(ui->CommandCambiarTodo, false);
    }
}

// ---- Borrar ------------------------------------------------------------------------

void Farticulos::Borrar() {
    ui->ListArticulos->Clear();
    BorrarReferencias();
}

void Farticulos::BorrarReferencias() { MaintenanceWindow::Borrar(); }

// ---- The structure, top down ------------------------------------------------------

QString Farticulos::Division() const { return vb::Left(ui->Combodivision->Text(), 2); }
QString Farticulos::Gfamilia() const { return vb::Left(ui->Combogfamilia->Text(), 2); }
QString Farticulos::Familia() const { return vb::Left(ui->Combofamilia->Text(), 2); }
QString Farticulos::Articulo() const { return vb::Left(ui->Comboarticulo->Text(), 2); }

void Farticulos::LlenarCombo(vb::ComboBox* combo, const QString& sql, const QString& codigo,
                             const QString& descripcion) {
    combo->Clear();
    auto Registro = BaseDatos->OpenRecordset(sql);
    while (!Registro->Eof()) {
        combo->AddItem(CodigoDeEntrada(Registro->Fields(codigo)) + QStringLiteral("/") +
                       TextoCampo(*Registro, descripcion));
        Registro->MoveNext();
    }
    if (combo->ListCount() >= 1) combo->SetListIndex(0);
}

void Farticulos::Cargardivision() {
    LlenarCombo(ui->Combodivision,
                QStringLiteral("SELECT codigo_division, descripcion_division FROM divisiones ORDER BY "
                               "descripcion_division"),
                QStringLiteral("codigo_division"), QStringLiteral("descripcion_division"));
}

void Farticulos::Cargargfamilia() {
    LlenarCombo(ui->Combogfamilia,
                "SELECT codigo_granfamilia, descripcion_granfamilia FROM grandes_familias WHERE codigo_division = " +
                    sql::Comillas(Division()) + " ORDER BY descripcion_granfamilia",
                QStringLiteral("codigo_granfamilia"), QStringLiteral("descripcion_granfamilia"));
}

void Farticulos::Cargarfamilia() {
    LlenarCombo(ui->Combofamilia,
                "SELECT codigo_familia, descripcion_familia FROM familias WHERE codigo_division = " + sql::Comillas(Division()) +
                    " AND codigo_granfamilia = " + sql::Comillas(Gfamilia()) + " ORDER BY descripcion_familia",
                QStringLiteral("codigo_familia"), QStringLiteral("descripcion_familia"));
}

void Farticulos::Cargararticulo() {
    LlenarCombo(ui->Comboarticulo,
                "SELECT codigo_articulo, descripcion_articulo FROM articulos WHERE codigo_division = " + sql::Comillas(Division()) +
                    " AND codigo_granfamilia = " + sql::Comillas(Gfamilia()) + " AND codigo_familia = " + sql::Comillas(Familia()) +
                    " ORDER BY descripcion_articulo",
                QStringLiteral("codigo_articulo"), QStringLiteral("descripcion_articulo"));
}

void Farticulos::CargarIva() {
    LlenarCombo(ui->Comboiva, QStringLiteral("SELECT codigo_iva, iva FROM iva ORDER BY codigo_iva"),
                QStringLiteral("codigo_iva"), QStringLiteral("iva"));
}

void Farticulos::Combodivision_GotFocus() {
    if (ui->Combodivision->ListCount() == 0) Cargardivision();
    ui->Combogfamilia->Clear();
    ui->Combofamilia->Clear();
    ui->Comboarticulo->Clear();
}

void Farticulos::Combodivision_LostFocus() {
    ui->Combogfamilia->Clear();
    ui->Combofamilia->Clear();
    ui->Comboarticulo->Clear();
    Cargargfamilia();
}

void Farticulos::Combogfamilia_GotFocus() {
    ui->Combofamilia->Clear();
    ui->Comboarticulo->Clear();
}

void Farticulos::Combogfamilia_LostFocus() {
    ui->Combofamilia->Clear();
    ui->Comboarticulo->Clear();
    Cargarfamilia();
}

void Farticulos::Combofamilia_LostFocus() { Cargararticulo(); }

void Farticulos::Comboarticulo_LostFocus() { CargarDatos(); }

void Farticulos::Comboiva_GotFocus() {
    if (ui->Comboiva->ListCount() == 0) CargarIva();
}

// ---- The list of the leaf ------------------------------------------------------------

QString Farticulos::FilaArticulo(const QString& referencia, const QString& descripcion, const QString& marca,
                                 const QString& modelo, double pvp) {
    QString fila = vb::Left(referencia + vb::Space(13), 14);
    fila = vb::Left(fila + descripcion + vb::Space(50), 65);
    fila = vb::Left(fila + marca + vb::Space(15), 81);
    fila = fila + modelo + vb::Space(15);
    const QString precio = vb::Format(pvp, sql::kMascaraTresDecimales);
    // A price of a million or more (the eight-character box takes 99999999,
    // and a bulk change can raise a price past it) is wider than its column:
    // it stands as it is, one character further right, so that a product the
    // window saved always shows again in its leaf.
    return fila + vb::Left(vb::Space(10), std::max(0, 10 - vb::Len(precio))) + precio;
}

QString Farticulos::SentenciaCargarDatos() const {
    return "SELECT referencia_productos, descripcion_productos, marca_productos, modelo_productos, "
           "pvp_neto_productos FROM productos WHERE division_productos = " +
           sql::Comillas(Division()) + " AND gfamilia_productos = " + sql::Comillas(Gfamilia()) + " AND familia_productos = " + sql::Comillas(Familia()) +
           " AND articulo_productos = " + sql::Comillas(Articulo()) + " ORDER BY referencia_productos";
}

void Farticulos::CargarDatos() {
    ui->ListArticulos->Clear();
    {
        vb::WaitPointer espera;
        auto Registro = BaseDatos->OpenRecordset(SentenciaCargarDatos());
        while (!Registro->Eof()) {
            const vb::Variant pvp = Registro->Fields(QStringLiteral("pvp_neto_productos"));
            ui->ListArticulos->AddItem(FilaArticulo(TextoCampo(*Registro, QStringLiteral("referencia_productos")),
                                                    TextoCampo(*Registro, QStringLiteral("descripcion_productos")),
                                                    TextoCampo(*Registro, QStringLiteral("marca_productos")),
                                                    TextoCampo(*Registro, QStringLiteral("modelo_productos")),
                                                    pvp.isNull() ? 0.0 : pvp.num()));
            Registro->MoveNext();
        }
    }
    // The last entry, then the first: each choice is a Click of the list.
    if (ui->ListArticulos->ListCount() > 0) {
        ui->ListArticulos->SetListIndex(ui->ListArticulos->ListCount() - 1);
        ui->ListArticulos->SetListIndex(0);
    }
}

void Farticulos::ListArticulos_Click() {
    if (ModoVentana != Modo::Nuevo) BorrarReferencias();
}

void Farticulos::ListArticulos_DblClick() {
    if (ModoVentana != Modo::Nuevo) {
        ui->Textreferencia->setText(vb::Left(ui->ListArticulos->Text(), 13));
        Textreferencia_LostFocus();
    }
}

// ---- The product ------------------------------------------------------------------------

void Farticulos::Textreferencia_LostFocus() {
    auto Registro = BaseDatos->OpenRecordset(
        "SELECT referencia_productos, descripcion_productos FROM productos WHERE referencia_productos = " +
        sql::Comillas(ui->Textreferencia->text()) + " ");
    const bool encontrado = Registro->AbsolutePosition() != -1;
    if (ModoVentana == Modo::Nuevo) {
        if (encontrado) {
            vb::MsgBox(QStringLiteral("Ya existe un artículo con esa REFERENCIA:") + u'\n' +
                       TextoCampo(*Registro, QStringLiteral("referencia_productos")) + u' ' +
                       TextoCampo(*Registro, QStringLiteral("descripcion_productos")) + u'\n' +
                       QStringLiteral("Revise el código"));
            vb::SetFocus(ui->Textreferencia);
        }
    } else if (encontrado) {
        Cargarreferencias();
    } else if (ui->Textreferencia->text() != QString()) {
        vb::MsgBox(QStringLiteral("No existe el artículo. Revise el código"));
        vb::SetFocus(ui->Textreferencia);
    }
}

void Farticulos::Cargarreferencias() {
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM productos WHERE referencia_productos = " +
                                             sql::Comillas(ui->Textreferencia->text()) + " ");
    if (Registro->AbsolutePosition() == -1) return;
    const std::pair<QLineEdit*, const char*> campos[] = {
        {ui->Textreferencia, "referencia_productos"},   {ui->Textdescripcion, "descripcion_productos"},
        {ui->Textmarca, "marca_productos"},             {ui->Textmodelo, "modelo_productos"},
        {ui->Textcoste, "coste_productos"},             {ui->Textgarantia, "garantia_productos"},
        {ui->Textdto1, "dtotar1_productos"},            {ui->Textdto2, "dtotar2_productos"},
        {ui->Textdto3, "dtotar3_productos"},            {ui->Textdto4, "dtotar4_productos"},
        {ui->Textdto5, "dtotar5_productos"},            {ui->Textpvpoferta, "pvp_oferta_productos"},
        {ui->Textinioferta, "inicio_oferta_productos"}, {ui->Textfinoferta, "fin_oferta_productos"},
        {ui->Textunioferta, "unidades_oferta_productos"}, {ui->Textpeso, "peso_productos"},
        {ui->Textbarras1, "cod_barras1_productos"},     {ui->Textbarras2, "cod_barras2_productos"},
        {ui->Textbarras3, "cod_barras3_productos"},     {ui->Textcoleccion, "coleccion_productos"},
        {ui->Texttemporada, "temporada_productos"}};
    for (const auto& [caja, columna] : campos) caja->setText(TextoCampo(*Registro, QLatin1String(columna)));
    const vb::Variant pvp = Registro->Fields(QStringLiteral("pvp_neto_productos"));
    ui->Textpvp->setText(pvp.isNull() ? QString() : vb::Format(pvp.num(), sql::kMascaraTresDecimales));
    // The VAT combo, refilled and walked to the product's VAT code: the entry
    // whose first two characters read as that code. With no such entry it
    // stays on the first.
    const vb::Variant iva = Registro->Fields(QStringLiteral("codigo_iva_productos"));
    ui->Comboiva->Clear();
    CargarIva();
    for (int i = 0; i < ui->Comboiva->ListCount(); ++i) {
        if (!iva.isNull() && vb::Val(vb::Left(ui->Comboiva->List(i), 2)) == iva.num()) {
            ui->Comboiva->SetListIndex(i);
            break;
        }
    }
    Textpvp_LostFocus();
}

// The two prices, each from the other at the VAT of the combo: the percent is
// the combo entry's last two characters ("1 /21" gives 21). Each is rounded to
// three places, so passing through one box rewrites the other.
double Farticulos::PorcentajeIva() const { return vb::Val(vb::Right(ui->Comboiva->Text(), 2)); }

void Farticulos::Textiva_LostFocus() {
    const double r = PorcentajeIva();
    ui->Textpvp->setText(vb::Format(vb::Val(ui->Textiva->text()) * (r / 100 + 1), sql::kMascaraTresDecimales));
}

void Farticulos::Textpvp_LostFocus() {
    const double r = PorcentajeIva();
    ui->Textiva->setText(vb::Format(vb::Val(ui->Textpvp->text()) / (r / 100 + 1), sql::kMascaraTresDecimales));
}

// ---- Aceptar -------------------------------------------------------------------------------

// The 31 values in the order of productos' columns: the leaf, the reference
// and the texts upper-cased, three reserved columns always empty, numbers as
// Val of their boxes, the offer dates and bar codes as typed.
//
// The offer dates go in as they stand, empty ones too. Only a modified
// product has its empty offer dates filled with today (its UPDATE says so):
// a rule that would fill them on every save would contradict the INSERT as
// the window writes it, and the two readings agree if the filling is the
// UPDATE's own step.
QString Farticulos::SentenciaInsertar() const {
    using namespace sql;
    return "INSERT INTO productos VALUES (" +
           Valores({Comillas(Division()), Comillas(Gfamilia()), Comillas(Familia()), Comillas(Articulo()),
                    ComillasMayusculas(ui->Textreferencia->text()), ComillasMayusculas(ui->Textdescripcion->text()),
                    Comillas(QString()), ComillasMayusculas(ui->Textmarca->text()),
                    ComillasMayusculas(ui->Textmodelo->text()), Comillas(QString()), Numero(ui->Textcoste->text()),
                    Numero(ui->Textpvp->text()), Numero(ui->Textgarantia->text()), Numero(ui->Textdto1->text()),
                    Numero(ui->Textdto2->text()), Numero(ui->Textdto3->text()), Numero(ui->Textdto4->text()),
                    Numero(ui->Textdto5->text()), Numero(ui->Textpvpoferta->text()),
                    Comillas(ui->Textinioferta->text()), Comillas(ui->Textfinoferta->text()),
                    Numero(ui->Textunioferta->text()), Numero(ui->Textpeso->text()), Comillas(QString()),
                    Comillas(QString()), Comillas(ui->Textbarras1->text()), Comillas(ui->Textbarras2->text()),
                    Comillas(ui->Textbarras3->text()), ComillasMayusculas(ui->Textcoleccion->text()),
                    ComillasMayusculas(ui->Texttemporada->text()), Numero(vb::Left(ui->Comboiva->Text(), 2))}) +
           ")";
}

// Neither the reference, nor the leaf, nor the offer units change: a product
// can't move to another leaf.
QString Farticulos::SentenciaModificar() const {
    using namespace sql;
    return "UPDATE productos SET descripcion_productos = " + ComillasMayusculas(ui->Textdescripcion->text()) +
           ", marca_productos = " + ComillasMayusculas(ui->Textmarca->text()) +
           ", modelo_productos = " + ComillasMayusculas(ui->Textmodelo->text()) +
           ", coste_productos = " + Numero(ui->Textcoste->text()) +
           ", pvp_neto_productos = " + Numero(ui->Textpvp->text()) +
           ", garantia_productos = " + Numero(ui->Textgarantia->text()) +
           ", dtotar1_productos = " + Numero(ui->Textdto1->text()) +
           ", dtotar2_productos = " + Numero(ui->Textdto2->text()) +
           ", dtotar3_productos = " + Numero(ui->Textdto3->text()) +
           ", dtotar4_productos = " + Numero(ui->Textdto4->text()) +
           ", dtotar5_productos = " + Numero(ui->Textdto5->text()) +
           ", pvp_oferta_productos = " + Numero(ui->Textpvpoferta->text()) +
           ", inicio_oferta_productos = " + Comillas(ui->Textinioferta->text()) +
           ", fin_oferta_productos = " + Comillas(ui->Textfinoferta->text()) +
           ", peso_productos = " + Numero(ui->Textpeso->text()) +
           ", cod_barras1_productos = " + Comillas(ui->Textbarras1->text()) +
           ", cod_barras2_productos = " + Comillas(ui->Textbarras2->text()) +
           ", cod_barras3_productos = " + Comillas(ui->Textbarras3->text()) +
           ", coleccion_productos = " + ComillasMayusculas(ui->Textcoleccion->text()) +
           ", temporada_productos = " + ComillasMayusculas(ui->Texttemporada->text()) +
           ", codigo_iva_productos = " + Numero(vb::Left(ui->Comboiva->Text(), 2)) +
           " WHERE referencia_productos = " + sql::Comillas(ui->Textreferencia->text());
}

void Farticulos::Commandaceptar_Click() {
    if (ModoVentana == Modo::Nuevo) {
        if (ui->Textreferencia->text() == QString()) {
            vb::MsgBox(QStringLiteral("El campo REFERENCIA no contiene ningun dato. Por favor, revíselo."));
            vb::SetFocus(ui->Textreferencia);
            return;
        }
        BaseDatos->Execute(SentenciaInsertar());
        // Ready for the next product of the same leaf, its list refilled.
        Borrar();
        Comboarticulo_LostFocus();
        vb::SetFocus(ui->Textreferencia);
    } else if (ModoVentana == Modo::Borrar) {
        if (ui->Textreferencia->text() == QString()) {
            Commandcancelar_Click();
            return;
        }
        if (vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el artículo?"), kPregunta, kAdvertencia) ==
            vb::vbYes) {
            BaseDatos->Execute("DELETE FROM productos WHERE referencia_productos = " + sql::Comillas(ui->Textreferencia->text()));
            BorrarReferencias();
            CargarDatos();
        }
    } else if (ModoVentana == Modo::Consultar) {
        Commandcancelar_Click();
    } else if (ModoVentana == Modo::Modificar) {
        if (ui->Textreferencia->text() == QString()) {
            Commandcancelar_Click();
            return;
        }
        if (vb::MsgBox(QStringLiteral(" ¿Desea modificar los datos del artículo?"), kPregunta, kAdvertencia) ==
            vb::vbYes) {
            // A product saved here gets offer dates even when it has no offer.
            const QString hoy = vb::Format(vb::Date(), QStringLiteral("dd/mm/yyyy"));
            if (ui->Textinioferta->text() == QString()) ui->Textinioferta->setText(hoy);
            if (ui->Textfinoferta->text() == QString()) ui->Textfinoferta->setText(hoy);
            BaseDatos->Execute(SentenciaModificar());
            BorrarReferencias();
            CargarDatos();
        }
    }
}

// ---- Bulk price changes ------------------------------------------------------------------------

// On Yes: the wait pointer, the query, the walk (errors passed over product by
// product), the product cleared and the list refilled; the pointer comes back
// at the end.
void Farticulos::CambiarPreciosDe(const QString& consulta, const std::function<double(double)>& nuevoPrecio) {
    vb::WaitPointer espera;
    vb::ResumeNext r;
    std::unique_ptr<Recordset> Registro;
    r([&] { Registro = BaseDatos->OpenRecordset(consulta); });
    if (Registro) CambiarPrecios(*BaseDatos, *Registro, nuevoPrecio);
    r([&] { BorrarReferencias(); });
    r([&] { CargarDatos(); });
}

void Farticulos::CommandCambiar_Click() {
    if (ui->TextAumentar->text() == QString()) {
        Commandcancelar_Click();
        return;
    }
    const QString pregunta =
        QStringLiteral(" ¿Desea modificar el precio de TODOS los artículos?") + kDosLineas +
        QStringLiteral("Se AUMENTARÁ el importe en ") + ui->TextAumentar->text() +
        QStringLiteral(" % a TODOS los artículos del grupo:") + kDosLineas + QStringLiteral("   División:        ") +
        ui->Combodivision->Text() + kDosLineas + QStringLiteral("   Gran Familia: ") + ui->Combogfamilia->Text() +
        kDosLineas + QStringLiteral("   Familia:          ") + ui->Combofamilia->Text() + kDosLineas +
        QStringLiteral("   Artículo:         ") + ui->Comboarticulo->Text() + kDosLineas;
    if (vb::MsgBox(pregunta, kPregunta, kAdvertencia) != vb::vbYes) return;
    const double aumento = vb::Val(ui->TextAumentar->text());
    // The group query takes every product of the leaf, also those of price 0.
    CambiarPreciosDe("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE division_productos = " +
                         sql::Comillas(Division()) + " AND gfamilia_productos = " + sql::Comillas(Gfamilia()) + " AND familia_productos = " +
                         sql::Comillas(Familia()) + " AND articulo_productos = " + sql::Comillas(Articulo()) +
                         " ORDER BY referencia_productos",
                     [aumento](double pvp) { return pvp * (aumento / 100 + 1); });
}

void Farticulos::CommandCambiarTodo_Click() {
    if (ui->TextAumentarTodo->text() == QString()) {
        Commandcancelar_Click();
        return;
    }
    // The question shows TextAumentar, the other box, not the one the prices
    // take: it has always read so.
    const QString pregunta = QStringLiteral(" ¿Desea modificar el precio de TODOS los artículos del programa?") +
                             kDosLineas + QStringLiteral("Se AUMENTARÁ el importe en ") + ui->TextAumentar->text() +
                             QStringLiteral(" % a TODOS los artículos del programa.");
    if (vb::MsgBox(pregunta, kPregunta, kAdvertencia) != vb::vbYes) return;
    const double aumento = vb::Val(ui->TextAumentarTodo->text());
    CambiarPreciosDe(kTodosConPrecio, [aumento](double pvp) { return pvp * (aumento / 100 + 1); });
}

// From 16 % to 21 % VAT, each press once more.
void Farticulos::CommandRecalcular_Click() {
    const QString pregunta =
        QStringLiteral(" ¿Desea recalcular el precio de TODOS los artículos del programa?") + kDosLineas +
        QStringLiteral("Se RECALCULARA EL PRECIO A TODOS los artículos del programa.");
    if (vb::MsgBox(pregunta, kPregunta, kAdvertencia) != vb::vbYes) return;
    CambiarPreciosDe(kTodosConPrecio, [](double pvp) { return pvp / 1.16 * 1.21; });
}

// ---- The chain's catalogue -------------------------------------------------------------------------

bool Farticulos::UsaCatalogo() const {
    return ClientePrograma == QLatin1String("FERROBANDA") || ClientePrograma == QLatin1String("ULTRAMARINOS") ||
           ClientePrograma == QLatin1String("LAPRESA");
}

void Farticulos::CargarProveedor() {
    if (!UsaCatalogo()) return;
    ui->ComboCodigoProveedor->Clear();
    ui->LabelNombreProveedor->setText(QString());
    ui->TextDirectorio->setText(QString());
    ui->TextNombreTabla->setText(QString());
    ui->ComboCodigoProveedor->AddItem(kCadena);
    ui->ComboCodigoProveedor->SetListIndex(0);
    ComboCodigoProveedor_Change();
}

// Opens the catalogue, with no trap: a missing folder or file, or a damaged
// file, ends the program with the runtime's message at the window's load. The
// folder is written as the chain's DOS program wrote it; its place here is
// given by vb::NativePath (c:\cadenart is the folder c/cadenart of the
// program).
void Farticulos::ComboCodigoProveedor_Change() {
    if (!UsaCatalogo() || ui->ComboCodigoProveedor->Text() != kCadena) return;
    ui->LabelNombreProveedor->setText(QStringLiteral("Cadena COSERVAL"));
    ui->TextDirectorio->setText(QStringLiteral("c:\\cadenart"));
    ui->TextNombreTabla->setText(QStringLiteral("articulo.dbf"));
    std::unique_ptr<Database> catalogo =
        OpenDbaseDatabase(vb::NativePath(ui->TextDirectorio->text()), ui->TextNombreTabla->text());
    delete BaseCatalogo;
    BaseCatalogo = catalogo.release();
}

void Farticulos::CommandBuscarArticuloProveedor_Click() {
    if (!UsaCatalogo()) return;
    vb::ProgressBar* barra = ui->ProgressBar1;
    barra->SetVisible(false);
    // The first search field that holds something decides.
    QString consulta = QStringLiteral("SELECT codigo, nombre, refprove, pventa, ean FROM articulo ");
    if (ui->TextCodigoProveedor->text() != QString()) {
        consulta += "WHERE codigo = " + vb::CStr(vb::Val(ui->TextCodigoProveedor->text())) + " ORDER BY codigo";
    } else if (ui->TextDescripcionProveedor->text() != QString()) {
        consulta += "WHERE nombre LIKE " + sql::Comillas("*" + vb::UCase(ui->TextDescripcionProveedor->text()) + "*") + " ORDER BY nombre";
    } else if (ui->TextCodigoBarrasProveedor->text() != QString()) {
        consulta += "WHERE ean = " + vb::CStr(vb::Val(ui->TextCodigoBarrasProveedor->text())) + " ORDER BY ean";
    }
    auto Registro = BaseCatalogo->OpenRecordset(consulta);
    ui->ComboCodigoProducto->Clear();
    if (Registro->AbsolutePosition() != -1) {
        Registro->MoveLast();
        barra->SetMax(int(Registro->AbsolutePosition()) + 1);
        Registro->MoveFirst();
        barra->SetVisible(true);
    }
    while (!Registro->Eof()) {
        ui->ComboCodigoProducto->AddItem(TextoCampo(*Registro, QStringLiteral("codigo")));
        barra->SetValue(int(Registro->AbsolutePosition()));
        Registro->MoveNext();
        vb::DoEvents();
    }
    if (ui->ComboCodigoProducto->ListCount() >= 1) {
        ui->ComboCodigoProducto->SetListIndex(0);
        vb::SetFocus(ui->ComboCodigoProducto);
    } else {
        vb::MsgBox("No se ha encontrado el artículo buscado en el proveedor " + ui->ComboCodigoProveedor->Text());
        vb::SetFocus(ui->TextCodigoProveedor);
        vb::SelectAll(ui->TextCodigoProveedor);
    }
    barra->SetVisible(false);
    barra->SetValue(0);
}

void Farticulos::ComboCodigoProducto_Click() {
    if (!UsaCatalogo()) return;
    auto Registro = BaseCatalogo->OpenRecordset(
        "SELECT codigo, nombre, refprove, pventa, color, ean FROM articulo WHERE codigo = " +
        ui->ComboCodigoProducto->Text() + " ORDER BY codigo");
    if (Registro->AbsolutePosition() != -1) {
        ui->LabelReferenciaProducto->setText(TextoCampo(*Registro, QStringLiteral("refprove")));
        ui->LabelDescripcionProducto->setText(TextoCampo(*Registro, QStringLiteral("nombre")));
        const QString ean = TextoCampo(*Registro, QStringLiteral("ean"));
        ui->LabelCodigoBarrasProducto->setText(vb::Val(ean) == 0 ? QString() : ean);
        const vb::Variant pventa = Registro->Fields(QStringLiteral("pventa"));
        ui->LabelPVPProducto->setText(pventa.isNull() ? QString()
                                                      : vb::Format(pventa.num(), sql::kMascaraDosDecimales));
    } else {
        vb::MsgBox("No se han encontrado los datos del artículo buscado en el proveedor " +
                   ui->ComboCodigoProveedor->Text());
    }
}

// The chain's article becomes the product being entered: its supplier
// reference the product's reference, its retail price the price with VAT.
// The focus on Textreferencia makes its LostFocus test for a duplicate as the
// user goes on; the product's tab is brought to the front, where that box is.
void Farticulos::CommandCopiarProveedor_Click() {
    if (!UsaCatalogo()) return;
    ui->Textreferencia->setText(ui->LabelReferenciaProducto->text());
    ui->Textdescripcion->setText(ui->LabelDescripcionProducto->text());
    ui->Textpvp->setText(ui->LabelPVPProducto->text());
    ui->Textbarras1->setText(ui->LabelCodigoBarrasProducto->text());
    ui->SSTab1->SetTab(0);
    vb::SetFocus(ui->Textreferencia);
}

// Enter in the code search field runs the search; the other fields move on.
void Farticulos::Texto_KeyPress(QLineEdit* caja, int& KeyAscii) {
    if (caja == ui->TextCodigoProveedor && KeyAscii == 13) {
        KeyAscii = 0;
        CommandBuscarArticuloProveedor_Click();
        return;
    }
    MaintenanceWindow::Texto_KeyPress(caja, KeyAscii);
}

} // namespace vel
