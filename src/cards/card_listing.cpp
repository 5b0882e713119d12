#include "cards/card_listing.h"
#include "ui_card_listing.h"

#include "core/key_filters.h"
#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/line_list.h"
#include "runtime/msgbox.h"
#include "runtime/print_job.h"
#include "runtime/printer.h"
#include "runtime/sstab.h"
#include "runtime/variant.h"
#include "runtime/vb.h"

#include <QCloseEvent>
#include <QTabBar>
#include <QMouseEvent>
#include <optional>

namespace vel {

const TextosListado& TextosFaclistado() {
    static const TextosListado t{
        .ventana = QStringLiteral("Faclistado"),
        .titulo = QStringLiteral("Listado de Fichas de Clientes"),
        .finLista = QStringLiteral("cli"),
        .finBoton = QStringLiteral("fcl"),
        .tabla = QStringLiteral("clientes"),
        .sufijo = QStringLiteral("_cliente"),
        .detalle = QStringLiteral("detalle_fichas_clientes"),
        .primerImporte = QStringLiteral("debe"),
        .segundoImporte = QStringLiteral("haber"),
        .opcionUno = QStringLiteral("Un cliente"),
        .tituloExtracto = QStringLiteral("EXTRACTO DE FICHAS DE CLIENTES"),
        .codigoCabecera = QStringLiteral("Cód. Cliente: "),
        .ayudaSeleccion = QStringLiteral("LISTADO DE UN CLIENTE O DE TODOS"),
        .etiquetaCodigo = QStringLiteral("Código de Cliente:"),
        .paginaDatos = QStringLiteral("DATOS DE CLIENTES"),
        .datosDeVenta = true,
    };
    return t;
}

// The supplier's window: its texts were made from the customer's by replacing
// words, and keep the misprints that left ("proveedordor", "proENTE").
const TextosListado& TextosFaplistado() {
    static const TextosListado t{
        .ventana = QStringLiteral("Faplistado"),
        .titulo = QStringLiteral("Listado de Fichas de Proveedores"),
        .finLista = QStringLiteral("pro"),
        .finBoton = QStringLiteral("fpr"),
        .tabla = QStringLiteral("proveedores"),
        .sufijo = QStringLiteral("_proveedor"),
        .detalle = QStringLiteral("detalle_fichas_proveedores"),
        .primerImporte = QStringLiteral("haber"),
        .segundoImporte = QStringLiteral("debe"),
        .opcionUno = QStringLiteral("Un proveedor"),
        .tituloExtracto = QStringLiteral("EXTRACTO DE FICHAS DE proveedores"),
        .codigoCabecera = QStringLiteral("Cód. proveedordor: "),
        .ayudaSeleccion = QStringLiteral("LISTADO DE UN proENTE O DE TODOS"),
        .etiquetaCodigo = QStringLiteral("Código de Proveedor:"),
        .paginaDatos = QStringLiteral("DATOS DE PROVEEDORES"),
        .datosDeVenta = false,
    };
    return t;
}

namespace {

// Lines of a page of the printed extract.
constexpr int kLineasPorPagina = 37;
const QString kRaya80 = QString(80, QLatin1Char('_'));

// A Single kept "through 0.00": the sum rounded to cents as the text the
// format gives, read back into a Single.
float PorCentimos(float valor) { return float(vb::Val(vb::Format(double(valor), QStringLiteral("0.00")))); }

// A Single as the runtime writes it into a string: seven significant digits.
QString TextoSingle(float valor) { return vb::CStr(QString::number(double(valor), 'g', 7).toDouble()); }

QString DosDecimales(double valor) { return vb::Format(valor, QStringLiteral("0.00")); }

} // namespace

ListadoFichas::ListadoFichas(const TextosListado& textos, QWidget* parent)
    : vb::Form(parent), CommonDialog2(new vb::CommonDialog(this)), T(textos), ui(std::make_unique<Ui::CardListing>()) {
    ui->setupUi(this);
    setObjectName(T.ventana);
    SetCaption(T.titulo);
    // The supplier's window names its lists and buttons with its own endings.
    if (T.finLista != QLatin1String("cli"))
        for (QWidget* w : {static_cast<QWidget*>(ui->Combonifcli), static_cast<QWidget*>(ui->Combocodcli),
                           static_cast<QWidget*>(ui->Combonomfiscli), static_cast<QWidget*>(ui->Combonomcomcli)})
            w->setObjectName(w->objectName().chopped(3) + T.finLista);
    if (T.finBoton != QLatin1String("fcl"))
        for (QWidget* w : {ui->BotonListadofcl, ui->BotonImprimirfcl, ui->BotonCerrarfcl})
            w->setObjectName(w->objectName().chopped(3) + T.finBoton);
    ui->Optionuno->setText(T.opcionUno);
    ui->Labelcodigo->setText(T.etiquetaCodigo);
    ui->SSTab1->SetTabCaption(1, T.paginaDatos);
    for (QWidget* w : {static_cast<QWidget*>(ui->Labelcodigoiva), static_cast<QWidget*>(ui->Textcodigoiva),
                       static_cast<QWidget*>(ui->Labeliva), static_cast<QWidget*>(ui->Labelcodigotienda),
                       static_cast<QWidget*>(ui->Textcodigotienda), static_cast<QWidget*>(ui->Labeltienda),
                       static_cast<QWidget*>(ui->Labelcodigocomercial), static_cast<QWidget*>(ui->Textcodigocomercial)})
        vb::SetVisible(w, T.datosDeVenta);

    QFont fija(QStringLiteral("Courier New"));
    fija.setStyleHint(QFont::TypeWriter);
    ui->Listapuntes->setFont(fija);

    OnClick(ui->Optiontodos, [this] { Optiontodos_Click(); });
    OnClick(ui->Optionuno, [this] { Optionuno_Click(); });
    OnChange(ui->Textejer, [this] { Textejer_Change(); });
    OnClick(ui->Combonifcli, [this] { Combonifcli_Click(); });
    for (vb::ComboBox* lista : {ui->Combocodcli, ui->Combonomfiscli, ui->Combonomcomcli})
        OnClick(lista, [this, lista] { Lista_Click(lista); });
    for (QLineEdit* caja : {ui->Textdiaini, ui->Textmesini, ui->Textdiafin, ui->Textmesfin})
        OnLostFocus(caja, [this, caja] { DosCifras_LostFocus(caja); });
    OnClick(ui->BotonListadofcl, [this] { BotonListadofcl_Click(); });
    OnClick(ui->BotonImprimirfcl, [this] { BotonImprimirfcl_Click(); });
    OnClick(ui->BotonCerrarfcl, [this] { BotonCerrarfcl_Click(); });
    OnClick(ui->Cancelar, [this] { Cancelar_Click(); });

    // Keys: Enter moves on in every field; days and months take digits only;
    // a box selects its whole text on getting the focus.
    const QList<QLineEdit*> cajas = {ui->Textejer,   ui->Textdiaini, ui->Textmesini, ui->Texta_oini,
                                     ui->Textdiafin, ui->Textmesfin, ui->Texta_ofin};
    for (QLineEdit* caja : cajas) {
        const bool soloDigitos = caja == ui->Textdiaini || caja == ui->Textmesini || caja == ui->Textdiafin ||
                                 caja == ui->Textmesfin;
        OnKeyPress(caja, [soloDigitos](int& KeyAscii) {
            IntroComoTabulador(KeyAscii);
            if (soloDigitos) SoloDigitos(KeyAscii);
        });
        OnGotFocus(caja, [caja] { vb::SelectAll(caja); });
    }
    for (QWidget* campo : {static_cast<QWidget*>(ui->Combonifcli), static_cast<QWidget*>(ui->Combocodcli),
                           static_cast<QWidget*>(ui->Combonomfiscli), static_cast<QWidget*>(ui->Combonomcomcli),
                           static_cast<QWidget*>(ui->Optiontodos), static_cast<QWidget*>(ui->Optionuno),
                           static_cast<QWidget*>(ui->Optionnoysi), static_cast<QWidget*>(ui->Optionsipagado),
                           static_cast<QWidget*>(ui->Optionnopagado), static_cast<QWidget*>(ui->Checksubtotal),
                           static_cast<QWidget*>(ui->Checktotal)})
        OnKeyPress(campo, [](int& KeyAscii) { IntroComoTabulador(KeyAscii); });

    AyudasDeRaton();
}

ListadoFichas::~ListadoFichas() = default;

// ---- Opening -------------------------------------------------------------------------

void ListadoFichas::Form_Load() {
    const QString a_o = vb::Format(vb::Date(), QStringLiteral("yyyy"));
    ui->Textejer->setText(a_o);
    ui->Textdiaini->setText(QStringLiteral("01"));
    ui->Textmesini->setText(QStringLiteral("01"));
    ui->Textdiafin->setText(QStringLiteral("31"));
    ui->Textmesfin->setText(QStringLiteral("12"));
    Textejer_Change();

    // One statement fills the four lists in the same row order, so the same
    // index is the same customer in each.
    QStringList codigos, nifs, comerciales, fiscales;
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM " + T.tabla + " ORDER BY nif" + T.sufijo);
    while (!Registro->Eof()) {
        codigos << TextoCampo(*Registro, "codigo" + T.sufijo);
        nifs << TextoCampo(*Registro, "nif" + T.sufijo);
        comerciales << TextoCampo(*Registro, "nombrecomercial" + T.sufijo);
        fiscales << TextoCampo(*Registro, "nombrefiscal" + T.sufijo);
        Registro->MoveNext();
    }
    ui->Combocodcli->AddItems(codigos);
    ui->Combonifcli->AddItems(nifs);
    ui->Combonomcomcli->AddItems(comerciales);
    ui->Combonomfiscli->AddItems(fiscales);

    ClientePrograma = LeeClientePrograma();

    vb::SetVisible(ui->BotonImprimirfcl, false);
    vb::SetVisible(ui->BotonCerrarfcl, false);
    Optiontodos_Click();
}

// ---- Options and boxes -------------------------------------------------------------------

void ListadoFichas::Optiontodos_Click() {
    for (QWidget* lista : {ui->Combonifcli, ui->Combocodcli, ui->Combonomfiscli, ui->Combonomcomcli})
        vb::SetEnabled(lista, false);
}

void ListadoFichas::Optionuno_Click() {
    for (QWidget* lista : {ui->Combonifcli, ui->Combocodcli, ui->Combonomfiscli, ui->Combonomcomcli})
        vb::SetEnabled(lista, true);
}

void ListadoFichas::Textejer_Change() {
    ui->Texta_oini->setText(ui->Textejer->text());
    ui->Texta_ofin->setText(ui->Textejer->text());
}

void ListadoFichas::DosCifras_LostFocus(QLineEdit* caja) {
    caja->setText(vb::Format(caja->text(), QStringLiteral("00")));
}

void ListadoFichas::Lista_Click(vb::ComboBox* lista) {
    if (ui->Combonifcli->ListIndex() != lista->ListIndex()) ui->Combonifcli->SetListIndex(lista->ListIndex());
}

void ListadoFichas::Combonifcli_Click() {
    const int indice = ui->Combonifcli->ListIndex();
    for (vb::ComboBox* lista : {ui->Combocodcli, ui->Combonomfiscli, ui->Combonomcomcli})
        if (lista->ListIndex() != indice && indice < lista->ListCount()) lista->SetListIndex(indice);

    // The page of data: the record and the names of its codes, read-only.
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM " + T.tabla + " WHERE nif" + T.sufijo + " = " +
                                             sql::Comillas(ui->Combonifcli->Text()));
    if (Registro->Eof()) return;
    const auto campo = [&](const char* raiz) { return TextoCampo(*Registro, QLatin1String(raiz) + T.sufijo); };
    ui->Textcodigo->setText(campo("codigo"));
    ui->Textnif->setText(campo("nif"));
    ui->Textnombrefiscal->setText(campo("nombrefiscal"));
    ui->Textnombrecomercial->setText(campo("nombrecomercial"));
    ui->Textdomicilio->setText(campo("domicilio"));
    ui->Textcodigopostal->setText(vb::Format(campo("codigopostal"), QStringLiteral("#")));
    ui->Textpoblacion->setText(campo("poblacion"));
    ui->Textprovincia->setText(campo("provincia"));
    ui->Texttelefono1->setText(vb::Format(campo("telefono1"), QStringLiteral("#")));
    ui->Textbanco->setText(vb::Format(campo("banco"), QStringLiteral("0000")));
    ui->Textsucursal->setText(vb::Format(campo("sucursal"), QStringLiteral("0000")));
    ui->Textformapago->setText(campo("formapago"));
    if (T.datosDeVenta) {
        ui->Textcodigoiva->setText(vb::Format(campo("codigoiva"), QStringLiteral("#")));
        ui->Textcodigotienda->setText(vb::Format(campo("codigotienda"), QStringLiteral("#")));
        ui->Textcodigocomercial->setText(campo("codigocomercial"));
    }
    Registro->Close();

    // A name found by its code, or empty.
    const auto nombre = [](const QString& sentencia, const QString& columna) {
        auto rs = BaseDatos->OpenRecordset(sentencia);
        return rs->Eof() ? QString() : TextoCampo(*rs, columna);
    };
    ui->Labelbanco->setText(nombre("SELECT * FROM bancos WHERE codigo_banco = " + sql::Comillas(ui->Textbanco->text()),
                                   QStringLiteral("nombre_banco")));
    ui->Labelsucursal->setText(nombre("SELECT * FROM bancos_sucursales WHERE codigo_sucursal = " +
                                          sql::Comillas(ui->Textsucursal->text()) +
                                          " AND codigo_banco = " + sql::Comillas(ui->Textbanco->text()),
                                      QStringLiteral("nombre_sucursal")));
    ui->Labelformapago->setText(nombre("SELECT * FROM formapago WHERE codigo_formapago = " +
                                           sql::Comillas(ui->Textformapago->text()),
                                       QStringLiteral("nombre_formapago")));
    if (T.datosDeVenta) {
        ui->Labeliva->setText(nombre("SELECT * FROM iva WHERE codigo_iva = " + sql::Numero(ui->Textcodigoiva->text()),
                                     QStringLiteral("iva")));
        ui->Labeltienda->setText(nombre("SELECT * FROM tienda WHERE codigo_tienda = " +
                                            sql::Numero(ui->Textcodigotienda->text()),
                                        QStringLiteral("nombre_tienda")));
    }
}

// ---- The listing ---------------------------------------------------------------------------

QString ListadoFichas::SentenciaApuntes() const {
    const QString cola = T.detalle.mid(QStringLiteral("detalle").size()); // "_fichas_clientes"
    const QString ejercicio = "ejercicio_detalle" + cola + " = " + sql::Numero(ui->Textejer->text()) +
                              " ORDER BY nif_detalle" + cola;
    if (ui->Optionuno->isChecked())
        return "SELECT * FROM " + T.detalle + " WHERE nif_detalle" + cola + " = " +
               sql::Comillas(ui->Combonifcli->Text()) + " AND " + ejercicio;
    return "SELECT * FROM " + T.detalle + " WHERE " + ejercicio;
}

double ListadoFichas::FechaNumero(const QString& fecha) {
    return vb::Val(vb::Right(fecha, 4) + vb::Mid(fecha, 4, 2) + vb::Left(fecha, 2));
}

double ListadoFichas::InicioIntervalo() const {
    return vb::Val(ui->Texta_oini->text() + ui->Textmesini->text() + ui->Textdiaini->text());
}

double ListadoFichas::FinIntervalo() const {
    return vb::Val(ui->Texta_ofin->text() + ui->Textmesfin->text() + ui->Textdiafin->text());
}

QString ListadoFichas::Rellena(const QString& linea) { return linea + vb::Space(90 - vb::Len(linea)); }

QString ListadoFichas::Coloca(const QString& linea, int columna, const QString& bruto, const QString& importe) {
    return Rellena(vb::Left(linea, columna - vb::Len(bruto)) + importe);
}

QString ListadoFichas::LineaDeSumas(const QString& rotulo, float debe, float haber, float saldo) {
    QString linea = Rellena(rotulo);
    linea = Coloca(linea, 60, TextoSingle(debe), DosDecimales(debe));
    linea = Coloca(linea, 70, TextoSingle(haber), DosDecimales(haber));
    const QString s = DosDecimales(saldo);
    return vb::Left(linea, 81 - vb::Len(s)) + s;
}

// "Space(10) code / commercial name" of a customer.
QString ListadoFichas::LineaDeCliente(const QString& nif, const QString& codigo) const {
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM " + T.tabla + " WHERE nif" + T.sufijo + " = " +
                                             sql::Comillas(nif));
    const QString nombre = Registro->Eof() ? QString() : TextoCampo(*Registro, "nombrecomercial" + T.sufijo);
    return vb::Space(10) + codigo + " / " + nombre;
}

void ListadoFichas::BotonListadofcl_Click() {
    vb::SetVisible(ui->BotonListadofcl, false);
    vb::SetVisible(ui->BotonImprimirfcl, true);
    vb::SetVisible(ui->BotonCerrarfcl, true);
    Habilita(false);

    const QString cola = T.detalle.mid(QStringLiteral("detalle").size());
    const QString nifCol = "nif_detalle" + cola, codigoCol = "codigo_detalle" + cola,
                  numeroCol = "numero_detalle" + cola, fechaCol = "fecha_detalle" + cola,
                  descripcionCol = "descripcion_detalle" + cola, tipoCol = "tipo_linea_detalle" + cola,
                  primeroCol = T.primerImporte + "_detalle" + cola, segundoCol = T.segundoImporte + "_detalle" + cola;

    const double inicio = InicioIntervalo(), fin = FinIntervalo();
    const bool soloNoPagados = ui->Optionnopagado->isChecked(), soloPagados = ui->Optionsipagado->isChecked();
    const bool subtotales = vb::Value(ui->Checksubtotal) == 1, totales = vb::Value(ui->Checktotal) == 1;

    // The lines are gathered and given to the list in one step.
    QStringList lineas;
    float subDebe = 0, subHaber = 0, subtotal = 0;
    totalDebe_ = totalHaber_ = total_ = 0;
    QString nifAnterior, codigoAnterior;
    // A customer is closed by its subtotal only when some entry of it entered
    // the list: a customer whose entries all fall outside the interval or the
    // option leaves no line, so that an interval with no entry is "nada".
    int lineasDelCliente = 0;

    auto Registro = BaseDatos->OpenRecordset(SentenciaApuntes());
    while (!Registro->Eof()) {
        const QString nif = Registro->Fields(nifCol).str();
        if (nif != nifAnterior) {
            if (subtotales && lineasDelCliente > 0) {
                lineas << LineaDeSumas(vb::Space(10) + "Subtotal... " + vb::Space(30), subDebe, subHaber, subtotal);
                lineas << LineaDeCliente(nifAnterior, codigoAnterior);
            }
            subDebe = subHaber = subtotal = 0;
            lineasDelCliente = 0;
            nifAnterior = nif;
            codigoAnterior = Registro->Fields(codigoCol).str();
        }

        const QString fecha = Registro->Fields(fechaCol).str();
        const double dia = FechaNumero(fecha);
        const QString tipo = Registro->Fields(tipoCol).str();
        const bool entra = dia >= inicio && dia <= fin &&
                           (soloNoPagados ? tipo != QLatin1String("C") : soloPagados ? tipo == QLatin1String("C") : true);
        if (entra) {
            const vb::Variant primero = Registro->Fields(primeroCol), segundo = Registro->Fields(segundoCol);
            QString linea = Rellena(Registro->Fields(numeroCol).str() + "   " + fecha);
            linea = Rellena(vb::Left(linea, 18) + vb::Left(Registro->Fields(descripcionCol).str(), 30));
            if (tipo == QLatin1String("C")) linea = Rellena(vb::Left(linea, 49) + "C");
            linea = Coloca(linea, 60, primero.str(), DosDecimales(primero.num()));
            linea = Coloca(linea, 70, segundo.str(), DosDecimales(segundo.num()));

            // The running subtotal of the customer, shown in the SALDO column,
            // and the grand total grow by the second amount (HABER).
            subDebe = PorCentimos(subDebe + float(primero.num()));
            subHaber = PorCentimos(subHaber + float(segundo.num()));
            subtotal = PorCentimos(subtotal + float(segundo.num()));
            totalDebe_ = PorCentimos(totalDebe_ + float(primero.num()));
            totalHaber_ = PorCentimos(totalHaber_ + float(segundo.num()));
            total_ = PorCentimos(total_ + float(segundo.num()));

            const QString saldo = DosDecimales(subtotal);
            lineas << vb::Left(linea, 81 - vb::Len(saldo)) + saldo;
            ++lineasDelCliente;
        }
        Registro->MoveNext();
    }
    Registro->Close();

    // The last customer's subtotal, then the total.
    if (subtotales && lineasDelCliente > 0) {
        lineas << LineaDeSumas(vb::Space(10) + "Subtotal... " + vb::Space(30), subDebe, subHaber, subtotal);
        lineas << LineaDeCliente(nifAnterior, codigoAnterior);
    }
    if (totales && !lineas.isEmpty())
        lineas << LineaDeSumas(vb::Space(10) + "Total...... " + vb::Space(30), totalDebe_, totalHaber_, total_);

    ui->Listapuntes->AddItems(lineas);
    if (ui->Listapuntes->ListCount() == 0) vb::MsgBox(QStringLiteral("nada"));
}

void ListadoFichas::Habilita(bool on) {
    for (QWidget* w : {static_cast<QWidget*>(ui->Frameseleccion), static_cast<QWidget*>(ui->Framedatosejer),
                       static_cast<QWidget*>(ui->Frameopciones)})
        vb::SetEnabled(w, on);
    // The lists come back as the option leaves them.
    const bool listas = on && ui->Optionuno->isChecked();
    for (QWidget* lista : {ui->Combonifcli, ui->Combocodcli, ui->Combonomfiscli, ui->Combonomcomcli})
        vb::SetEnabled(lista, listas);
}

void ListadoFichas::BotonCerrarfcl_Click() {
    ui->Listapuntes->Clear();
    vb::SetVisible(ui->BotonImprimirfcl, false);
    vb::SetVisible(ui->BotonCerrarfcl, false);
    vb::SetVisible(ui->BotonListadofcl, true);
    vb::SetEnabled(ui->BotonListadofcl, true);
    Habilita(true);
}

void ListadoFichas::closeEvent(QCloseEvent* e) {
    if (vb::Visible(ui->BotonCerrarfcl)) {
        vb::RunEvent([] {
            vb::MsgBox(QStringLiteral(" Para cerrar la ventana debe finalizar la tarea actual"),
                       vb::vbExclamation + vb::vbDefaultButton2, QStringLiteral("TRAMPEL ") + QStringLiteral(" - Aviso"));
        });
        e->ignore();
        return;
    }
    vb::Form::closeEvent(e);
}

// ---- Printing ---------------------------------------------------------------------------------

int ListadoFichas::Paginas(int lineas) {
    return lineas / kLineasPorPagina + (lineas % kLineasPorPagina ? 1 : 0);
}

void ListadoFichas::Cancelar_Click() { cancelado_ = true; }

void ListadoFichas::BotonImprimirfcl_Click() {
    paginas_ = Paginas(ui->Listapuntes->ListCount());
    if (vb::MsgBox("¿Desea imprimir el extracto de la ficha? (" + QString::number(paginas_) + " Pág.)",
                   vb::vbYesNo + vb::vbQuestion + vb::vbDefaultButton2, QStringLiteral("Pregunta")) == vb::vbNo)
        return;
    ui->Labelayuda->setText(QStringLiteral("IMPRIMIENDO..."));
    imprimiendo_ = true;
    cancelado_ = false;
    // The printer's own error trap: a fault of the printer is told in a box
    // and the window goes on. A cancelled print dialog prints nothing.
    vb::Trap([this] { ImprimeListado(); },
             [this](const vb::RuntimeError& error) {
                 vb::Printer().KillDoc();
                 if (error.Number != vb::cdlCancel)
                     vb::MsgBox(error.Description, vb::vbOKOnly, QStringLiteral("ERROR"));
             });
    ui->Labelayuda->setText(QString());
    imprimiendo_ = false;
}

void ListadoFichas::ImprimeListado() {
    vb::PrinterObject& printer = vb::Printer();
    CommonDialog2->CancelError = true;
    CommonDialog2->Copies = printer.Copies();
    CommonDialog2->Orientation = printer.Orientation();
    CommonDialog2->ShowPrinter();
    vb::UsePrinterChoice(CommonDialog2->Printer());
    printer.SetFontName(QStringLiteral("Courier New"));

    int pagina = 1;
    ImprimeCabeceraPagina(printer, pagina, paginas_);
    const int total = ui->Listapuntes->ListCount();
    int enPagina = 0;
    for (int i = 0; i < total; ++i) {
        printer.Print(ui->Listapuntes->List(i));
        if (++enPagina < kLineasPorPagina || i + 1 == total) continue;
        // A full page with more to come: the continuation, the foot, and the
        // next page's head. Cancelar is heard here, at the end of a page.
        printer.Print(vb::Space(20) + "... Continúa ...->");
        printer.Print(kRaya80);
        printer.Print();
        vb::DoEvents();
        if (cancelado_) {
            printer.EndDoc();
            return;
        }
        ImprimePie(printer);
        printer.NewPage();
        ImprimeCabeceraPagina(printer, ++pagina, paginas_);
        enPagina = 0;
    }
    if (vb::Value(ui->Checktotal) == 1) {
        printer.Print();
        printer.Print(kRaya80);
        // The title fills the 80 columns; the sums take their places over its
        // blanks by the rule of 60, 70 and 81, as in the list.
        printer.Print(LineaDeSumas(vb::Space(32) + "T O T A L E S ..." + vb::Space(31), totalDebe_, totalHaber_, total_));
    }
    ImprimePie(printer);
    printer.EndDoc();
}

void ListadoFichas::ImprimeCabeceraPagina(vb::PrinterObject& printer, int pagina, int paginas) {
    // The letterhead of the listings by installation: the title beside the
    // date of issue, its rule beside the sheet number, the place. A tag with
    // none keeps the date and sheet number where FERROBANDA has them.
    struct Membrete {
        QString titulo, raya, lugar;
        int sangriaFecha, sangriaHoja;
    };
    std::optional<Membrete> m;
    if (ClientePrograma == QLatin1String("FERROBANDA"))
        m = Membrete{"Suministros Industriales", "     ______________", "        PORTELAS", 33, 45};
    else if (ClientePrograma == QLatin1String("ULTRAMARINOS"))
        m = Membrete{"  Panadería Bollería Os Vieiros", "      _______________", "      PORTELAS", 29, 45};
    else if (ClientePrograma == QLatin1String("LAPRESA"))
        m = Membrete{"      ESTABLECIMIENTOS", "   ______________", "      LA PRESA", 35, 47};
    else if (ClientePrograma == QLatin1String("ORTA"))
        m = Membrete{"      TECNOLOGIA", "      __________", "         ORTA", 35, 47};
    const Membrete mm = m.value_or(Membrete{QString(), QString(), QString(), 57, 64});

    printer.Print(mm.titulo + vb::Space(mm.sangriaFecha) + "Fecha de emisión: " +
                  vb::Format(vb::Date(), QStringLiteral("dd/mm/yyyy")));
    printer.Print(mm.raya + vb::Space(mm.sangriaHoja) + "Hoja Nº: " + QString::number(pagina) + "/" +
                  QString::number(paginas));
    if (m) printer.Print(mm.lugar);
    printer.Print(vb::Space(59) + "Ejercicio: " + ui->Textejer->text());
    printer.Print();
    printer.Print();
    printer.Print(vb::Space(25) + T.tituloExtracto);
    printer.Print();
    printer.Print();
    const bool uno = ui->Optionuno->isChecked();
    printer.Print(vb::Space(42) + T.codigoCabecera + (uno ? ui->Combocodcli->Text() : QStringLiteral("TODOS")));
    printer.Print(QStringLiteral("PERIODO:"));
    printer.Print(vb::Space(10) + "DEL " + ui->Textdiaini->text() + "/" + ui->Textmesini->text() + "/" +
                  ui->Texta_oini->text());
    printer.Print(vb::Space(10) + " AL " + ui->Textdiafin->text() + "/" + ui->Textmesfin->text() + "/" +
                  ui->Texta_ofin->text());
    if (uno) {
        printer.Print(vb::Space(17) + ui->Textnombrefiscal->text());
        printer.Print(vb::Space(42) + ui->Textdomicilio->text());
        printer.Print(vb::Space(42) + ui->Textcodigopostal->text() + "   " + ui->Textpoblacion->text());
        printer.Print(vb::Space(42) + ui->Textprovincia->text());
    }
    printer.Print();
    printer.Print(QStringLiteral("APUNTE FECHA      DESCRIPCION                   EST.    DEBE     HABER     SALDO"));
    printer.Print(kRaya80);
}

void ListadoFichas::ImprimeCabecera(vb::PrinterObject& printer) {
    printer.SetFontBold(true);
    printer.Print(T.tituloExtracto);
    printer.Line(0, printer.CurrentY(), printer.Width(), printer.CurrentY());
    printer.SetFontBold(false);
}

void ListadoFichas::HaySaltoPagina(vb::PrinterObject& printer, const QString& texto) {
    const double H = printer.TextHeight(texto);
    if (printer.ScaleHeight() < printer.CurrentY() + 5 * H) {
        ImprimePie(printer);
        printer.NewPage();
        ImprimeCabecera(printer);
    }
}

void ListadoFichas::ImprimePie(vb::PrinterObject& printer) {
    const double H = printer.TextHeight(T.tituloExtracto);
    printer.SetCurrentY(printer.ScaleHeight() - 3 * H);
    printer.SetFontBold(true);
    printer.Print(T.tituloExtracto + "   Página : " + QString::number(printer.Page()));
    printer.SetFontBold(false);
    printer.Line(0, printer.CurrentY(), printer.ScaleWidth(), printer.CurrentY());
}

// ---- Help line -------------------------------------------------------------------------------

namespace {

// The help line of the window: moving the pointer over a control that has a
// text puts it in Labelayuda; over one that has none (a box inside a frame,
// a label) the line stays as it was. The window's bare area has its own text.
// The pages of a tab strip and its tabs are the tab strip's own area.
class AyudaRaton : public QObject {
public:
    AyudaRaton(QLabel* linea, QObject* parent) : QObject(parent), linea_(linea) {}
    void Pon(QWidget* w, const QString& texto) {
        textos_[w] = texto;
        w->setMouseTracking(true);
        w->installEventFilter(this);
        if (auto* a = qobject_cast<QAbstractScrollArea*>(w)) Pon(a->viewport(), texto);
        if (auto* t = qobject_cast<QTabWidget*>(w)) {
            Pon(t->tabBar(), texto);
            for (int i = 0; i < t->count(); ++i) Pon(t->widget(i), texto);
            if (QWidget* pila = t->widget(0) ? t->widget(0)->parentWidget() : nullptr; pila && pila != t)
                Pon(pila, texto);
        }
    }

protected:
    // Every widget the move passes through on its way up finds the same
    // control under the pointer.
    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() != QEvent::MouseMove) return false;
        auto* w = static_cast<QWidget*>(o);
        QWidget* debajo = w->childAt(static_cast<QMouseEvent*>(e)->position().toPoint());
        if (auto it = textos_.find(debajo ? debajo : w); it != textos_.end()) linea_->setText(it->second);
        return false;
    }

private:
    QLabel* linea_;
    std::map<QObject*, QString> textos_;
};

} // namespace

void ListadoFichas::AyudasDeRaton() {
    auto* ayuda = new AyudaRaton(ui->Labelayuda, this);
    ayuda->Pon(this, QStringLiteral("DATOS DEL LISTADO"));
    ayuda->Pon(ui->BotonListadofcl, QStringLiteral("BUSCA LOS DATOS EN LAS FICHAS PARA EL LISTADO"));
    ayuda->Pon(ui->BotonImprimirfcl, QStringLiteral("IMPRIME EL LISTADO"));
    ayuda->Pon(ui->BotonCerrarfcl, QStringLiteral("BORRA EL LISTADO"));
    ayuda->Pon(ui->Cancelar, QStringLiteral("CANCELA LA IMPRESION"));
    ayuda->Pon(ui->Frameseleccion, T.ayudaSeleccion);
    ayuda->Pon(ui->Framedatosejer, QStringLiteral("INTERVALO DEL LISTADO"));
    ayuda->Pon(ui->Frameopciones, QStringLiteral("MUESTRA TOTALES Y/O SUBTOTALES DEL LISTADO"));
    ayuda->Pon(ui->Listapuntes, T.tituloExtracto);
    ayuda->Pon(ui->SSTab1, QStringLiteral("DATOS DE CLIENTES"));
}

} // namespace vel
