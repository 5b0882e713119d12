#include "sales/formcontrolalbaran.h"
#include "ui_formcontrolalbaran.h"

#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/variant.h"
#include "runtime/vb.h"
#include "sales/note_exchange.h"

#include <QFile>
#include <QSaveFile>
#include <array>
#include <exception>
#include <optional>
#include <sqlite3.h>

namespace vel {

namespace {

const QString kFacturar = QStringLiteral("Facturar Albaranes");
const QString kEnviar = QStringLiteral("Enviar Albaranes");
const QString kRecibir = QStringLiteral("Recibir Albaranes");
const QString kConectado = QStringLiteral(" Asegurese de estar conectado a Internet antes de continuar");
const QString kListo = QStringLiteral("Listo");

// The grid's columns: title, width in twips.
struct Columna {
    const char* titulo;
    long ancho;
};
const Columna kColumnas[12] = {
    {"Tienda", 700},  {"Serie", 600},        {"Ejercicio", 900}, {"Número", 900},
    {"Fecha", 1100},  {"Est.", 500},         {"Nif", 1300},      {"Nombre Fiscal", 3200},
    {"Iva", 600},     {"Ret.", 600},         {"Rec.", 600},      {"Total", 1100},
};

QString CampoCabecera(const Recordset& rs, const char* campo) {
    return TextoCampo(rs, QString::fromLatin1(campo) + QStringLiteral("_cabecera_albaran_venta"));
}

void GuardarTexto(const QString& ruta, const QByteArray& datos) {
    QSaveFile f(ruta);
    if (!f.open(QIODevice::WriteOnly) || f.write(datos) != datos.size() || !f.commit())
        vb::Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo: ") + ruta);
}

// Several statements as one: the store's Transaccion (record_store.h), which
// joins the transaction of the click that runs them.

} // namespace

FormControlAlbaran::FormControlAlbaran(QWidget* parent)
    : vb::Form(parent), ui(std::make_unique<Ui::FormControlAlbaran>()) {
    ui->setupUi(this);
    Timer1 = new vb::Timer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->SetInterval(1000);
    OnTimer(Timer1, [this] { Timer1_Timer(); });
    OnClick(ui->CommandBuscar, [this] { CommandBuscar_Click(); });
    OnClick(ui->CommandFacturar, [this] { CommandFacturar_Click(); });
    OnClick(ui->CommandEnviar, [this] { CommandEnviar_Click(); });
    OnClick(ui->CommandRecibir, [this] { CommandRecibir_Click(); });
    OnClick(ui->CommandCerrar, [this] { CommandCerrar_Click(); });
    OnClick(ui->ComboTienda, [this] { ComboTienda_Click(); });
    OnClick(ui->ComboEjercicio, [this] { ComboEjercicio_Click(); });
    // A click on an option changes the filter and searches again.
    for (QRadioButton* o : {ui->OptionPendientes, ui->OptionEnviados, ui->OptionFacturados, ui->OptionTodos})
        OnClick(o, [this] { CommandBuscar_Click(); });
}

FormControlAlbaran::~FormControlAlbaran() = default;

void FormControlAlbaran::Form_Load() {
    cargando_ = true;
    ui->OptionPendientes->setChecked(true);
    Borrar();

    // The years of the notes, each once, at most 100, the last one chosen.
    ui->ComboEjercicio->Clear();
    {
        auto rs = BaseDatos->OpenRecordset(QStringLiteral(
            "SELECT ejercicio_cabecera_albaran_venta FROM cabecera_albaran_venta ORDER BY ejercicio_cabecera_albaran_venta"));
        if (rs->Eof()) {
            vb::MsgBox(QStringLiteral("No se encuentran albaranes de venta"));
        } else {
            QStringList anos;
            while (!rs->Eof()) {
                const QString ano = rs->Fields(QStringLiteral("ejercicio_cabecera_albaran_venta")).str();
                if (!anos.contains(ano) && anos.size() < 100) anos << ano;
                rs->MoveNext();
            }
            ui->ComboEjercicio->AddItems(anos);
            ui->ComboEjercicio->SetListIndex(ui->ComboEjercicio->ListCount() - 1);
        }
    }

    ui->ComboTienda->Clear();
    {
        auto rs = BaseDatos->OpenRecordset(QStringLiteral("SELECT nombre_tienda FROM tienda ORDER BY codigo_tienda"));
        if (rs->Eof()) vb::MsgBox(QStringLiteral("No se ha creado ninguna tienda."));
        QStringList nombres;
        for (; !rs->Eof(); rs->MoveNext()) nombres << TextoCampo(*rs, QStringLiteral("nombre_tienda"));
        ui->ComboTienda->AddItems(nombres);
    }

    const QString nombreTienda = LeerConfiguracion();
    if (nombreTienda.isEmpty()) {
        // No store named: the store "1", shown by its name when it exists.
        Tienda_ = QStringLiteral("1");
        auto rs = BaseDatos->OpenRecordset(QStringLiteral("SELECT nombre_tienda FROM tienda WHERE codigo_tienda = 1"));
        if (!rs->Eof()) ui->ComboTienda->SetListIndex(ui->ComboTienda->findText(TextoCampo(*rs, "nombre_tienda")));
    } else {
        ui->ComboTienda->SetListIndex(ui->ComboTienda->findText(nombreTienda));
        BuscarCodigoTienda(nombreTienda);
    }
    cargando_ = false;
    // The window opens on the pending notes of its store and last year.
    CommandBuscar_Click();
}

// config.ini under On Error Resume Next: the tag (empty: FERROBANDA), and the
// store's name, returned.
QString FormControlAlbaran::LeerConfiguracion() {
    const Configuracion config = LeeConfiguracion(LecturaConfiguracion::ConTrampa);
    ClientePrograma = config.ClientePrograma;
    return config.nombreTienda;
}

void FormControlAlbaran::BuscarCodigoTienda(const QString& nombre) {
    auto rs = BaseDatos->OpenRecordset("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = " + sql::Comillas(nombre));
    if (rs->Eof()) {
        vb::MsgBox(QStringLiteral("No se encuentra la tienda. Se asigna la 1"));
        Tienda_ = QStringLiteral("1");
    } else {
        Tienda_ = rs->Fields(QStringLiteral("codigo_tienda")).str();
    }
}

// The grid emptied: 12 columns, the title row and no fixed column.
void FormControlAlbaran::Borrar() {
    vb::FlexGrid* g = ui->GridAlbaranes;
    g->Clear();
    g->SetRows(1);
    g->SetCols(12);
    g->SetFixedRows(1);
    g->SetFixedCols(0);
    for (int c = 0; c < 12; ++c) {
        g->SetTextMatrix(0, c, QString::fromUtf8(kColumnas[c].titulo));
        g->SetColWidth(c, kColumnas[c].ancho);
    }
    g->SetRow(0);
    g->SetCol(0);
}

void FormControlAlbaran::ComboTienda_Click() {
    if (cargando_) return;
    BuscarCodigoTienda(ui->ComboTienda->Text());
    CommandBuscar_Click();
}

void FormControlAlbaran::ComboEjercicio_Click() {
    if (cargando_) return;
    vb::SendKeys(QStringLiteral("{tab}"));
}

void FormControlAlbaran::CommandBuscar_Click() {
    if (ui->OptionPendientes->isChecked())
        Estado_ = QStringLiteral("P");
    else if (ui->OptionEnviados->isChecked())
        Estado_ = QStringLiteral("E");
    else if (ui->OptionFacturados->isChecked())
        Estado_ = QStringLiteral("0");
    else
        Estado_ = QStringLiteral("*");
    Borrar();
    auto rs = BaseDatos->OpenRecordset(
        control_albaranes::SentenciaBuscar(Tienda_, sql::Numero(ui->ComboEjercicio->Text()), Estado_));
    // The rows are gathered first and the grid sized once: a year may hold
    // tens of thousands of notes.
    std::vector<std::array<QString, 12>> filas;
    for (; !rs->Eof(); rs->MoveNext()) {
        std::array<QString, 12> f;
        f[0] = CampoCabecera(*rs, "tienda");
        f[1] = CampoCabecera(*rs, "serie");
        f[2] = CampoCabecera(*rs, "ejercicio");
        f[3] = vb::Format(vb::Val(CampoCabecera(*rs, "numero")), QStringLiteral("00000"));
        f[4] = CampoCabecera(*rs, "fecha");
        f[5] = CampoCabecera(*rs, "estado");
        f[6] = CampoCabecera(*rs, "nif");
        // A customer with no names is stored as one blank: shown empty.
        const QString nombre = CampoCabecera(*rs, "nombre_fiscal");
        f[7] = nombre == QLatin1String(" ") ? QString() : nombre;
        f[8] = CampoCabecera(*rs, "iva");
        f[9] = CampoCabecera(*rs, "retencion");
        f[10] = CampoCabecera(*rs, "recargo");
        f[11] = vb::Format(vb::Val(CampoCabecera(*rs, "total_bruto")), QStringLiteral("0.00"));
        filas.push_back(std::move(f));
    }
    vb::FlexGrid* g = ui->GridAlbaranes;
    g->setUpdatesEnabled(false);
    g->SetRows(1 + static_cast<int>(filas.size()));
    for (size_t i = 0; i < filas.size(); ++i)
        for (int c = 0; c < 12; ++c) g->SetTextMatrix(static_cast<int>(i) + 1, c, filas[i][static_cast<size_t>(c)]);
    g->setUpdatesEnabled(true);
}

ClaveNota FormControlAlbaran::ClaveFila(int fila) const {
    const vb::FlexGrid* g = ui->GridAlbaranes;
    return {g->TextMatrix(fila, 0), g->TextMatrix(fila, 1), g->TextMatrix(fila, 2), g->TextMatrix(fila, 3)};
}

void FormControlAlbaran::CommandFacturar_Click() {
    using namespace control_albaranes;
    if (vb::MsgBox(QStringLiteral("¿Desea facturar el albarán?"), vb::vbYesNo + vb::vbQuestion,
                   QStringLiteral("Pregunta")) == vb::vbNo)
        return;
    const vb::FlexGrid* g = ui->GridAlbaranes;
    const int fila = g->Row();
    if (!(fila > 0 && (g->TextMatrix(fila, 5) == QLatin1String("P") || ui->OptionEnviados->isChecked()))) {
        if (fila > 0 && g->TextMatrix(fila, 5) == QLatin1String("0"))
            vb::MsgBox(QStringLiteral(" No se puede facturar nada porque el albarán seleccionado ya está facturado. Revise el filtro."),
                       vb::vbOKOnly, kFacturar);
        else if (fila == 0)
            vb::MsgBox(QStringLiteral(" Debe seleccionar el albarán que desea facturar."), vb::vbOKOnly, kFacturar);
        else
            vb::MsgBox(QStringLiteral(" No se puede facturar nada. Revise el filtro. Debe seleccionar el albarán que desea facturar."),
                       vb::vbOKOnly, kFacturar);
        return;
    }
    const ClaveNota clave = ClaveFila(fila);
    long M = 1;
    {
        // The counter, the invoice and the note's mark are one transaction.
        Transaccion t(*BaseDatos);
        {
            auto rs = BaseDatos->OpenRecordset(SentenciaContadorFacturas(clave.ejercicio));
            if (rs->Eof()) {
                M = 1;
                BaseDatos->Execute(SentenciaNuevoContadorFacturas(clave.ejercicio));
            } else {
                M = static_cast<long>(rs->Fields(QStringLiteral("contador_series")).num()) + 1;
                BaseDatos->Execute(SentenciaSubirContadorFacturas(clave.ejercicio, M));
            }
        }
        auto cabecera = BaseDatos->OpenRecordset(SentenciaCabeceraNota(clave));
        if (!cabecera->Eof()) {
            BaseDatos->Execute(SentenciaFacturaCabecera(*cabecera, clave, M));
            BaseDatos->Execute(SentenciaMarcarFacturada(clave, M));
            auto lineas = BaseDatos->OpenRecordset(SentenciaLineasNota(clave));
            for (; !lineas->Eof(); lineas->MoveNext()) BaseDatos->Execute(SentenciaFacturaLinea(*lineas, clave, M));
        }
    }
    vb::MsgBox(" Albarán nº " + clave.numero + " facturado con el nº de factura " + QString::number(M), vb::vbOKOnly,
               kFacturar);
    CommandBuscar_Click();
}

void FormControlAlbaran::Estado(const QString& texto) { ui->LabelEstado->SetCaption(texto); }

void FormControlAlbaran::CommandEnviar_Click() {
    using namespace control_albaranes;
    if (Estado_ != QLatin1String("P")) {
        // The "Facturados" filter's word is "0", which none of these is: under
        // it the button does nothing and says nothing.
        if (Estado_ == QLatin1String("E"))
            vb::MsgBox(QStringLiteral(" Los albaranes seleccionados ya han sido enviados anteriormente. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kEnviar);
        else if (Estado_ == QLatin1String("F"))
            vb::MsgBox(QStringLiteral(" Los albaranes seleccionados ya han sido facturados anteriormente. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kEnviar);
        else if (Estado_ == QLatin1String("*"))
            vb::MsgBox(QStringLiteral(" Entre los albaranes seleccionados se encuentran albaranes enviados anteriormente y facturados. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kEnviar);
        return;
    }
    Estado(QStringLiteral("Iniciando proceso de datos ..."));
    vb::DoEvents();
    // The central store sends nothing: the first label stays.
    if (Tienda_ == QLatin1String("1")) return;
    if (vb::MsgBox(kConectado, vb::vbOKCancel + vb::vbExclamation, kEnviar) == vb::vbCancel) return;
    Estado(QStringLiteral("Comprimiendo datos para el envío ..."));

    const QString carpeta = intercambio::CarpetaTrabajo(QStringLiteral("enviar"));
    const vb::FlexGrid* g = ui->GridAlbaranes;
    // Every note listed: the filter is the choice.
    QByteArray cabeceras;
    for (int fila = 1; fila < g->Rows(); ++fila) {
        auto rs = BaseDatos->OpenRecordset(SentenciaCabeceraNota(ClaveFila(fila)));
        if (!rs->Eof()) intercambio::EscribirRegistro(cabeceras, *rs, intercambio::CamposCabecera());
    }
    GuardarTexto(carpeta + QStringLiteral("pedidoC.txt"), cabeceras);
    intercambio::EmpaquetarPedidoC(carpeta);

    QByteArray detalles;
    for (int fila = 1; fila < g->Rows(); ++fila) {
        auto rs = BaseDatos->OpenRecordset(SentenciaLineasNota(ClaveFila(fila)));
        for (; !rs->Eof(); rs->MoveNext()) intercambio::EscribirRegistro(detalles, *rs, intercambio::CamposDetalle());
    }
    GuardarTexto(carpeta + QStringLiteral("pedidoD.txt"), detalles);
    intercambio::EmpaquetarPedidoD(carpeta);

    {
        Transaccion t(*BaseDatos);
        for (int fila = 1; fila < g->Rows(); ++fila) {
            const ClaveNota c = ClaveFila(fila);
            auto rs = BaseDatos->OpenRecordset(SentenciaCabeceraNota(c));
            BaseDatos->Execute(SentenciaMarcarEnviada(c));
        }
    }
    intercambio::EmpaquetarPedido(carpeta);

    CommandBuscar_Click();
    Estado(kListo);
    Timer1->SetEnabled(true);
}

void FormControlAlbaran::CommandRecibir_Click() {
    if (Estado_ != QLatin1String("E")) {
        if (Estado_ == QLatin1String("P"))
            vb::MsgBox(QStringLiteral(" Los albaranes seleccionados no se pueden enviar a si mismos. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kRecibir);
        else if (Estado_ == QLatin1String("F"))
            vb::MsgBox(QStringLiteral(" Los albaranes seleccionados ya han sido facturados anteriormente. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kRecibir);
        else if (Estado_ == QLatin1String("*"))
            vb::MsgBox(QStringLiteral(" Entre los albaranes seleccionados se encuentran albaranes enviados anteriormente y facturados. Por favor, revise las condiciones del filtro"),
                       vb::vbOKOnly, kRecibir);
        return;
    }
    Estado(QStringLiteral("Iniciando descarga de datos ..."));
    vb::DoEvents();
    // Only the central store receives.
    if (Tienda_ != QLatin1String("1")) return;
    if (vb::MsgBox(kConectado, 49, kRecibir) == vb::vbCancel) return;
    // The file is saved into recibir/ by hand: no mail is read.
    Estado(QStringLiteral("Leyendo datos del correo ..."));
    Estado(QStringLiteral("Descomprimiendo los datos recibidos ..."));
    intercambio::Recibido recibido;
    try {
        recibido = intercambio::DesempaquetarEnCarpeta(intercambio::CarpetaTrabajo(QStringLiteral("recibir")));
    } catch (const intercambio::ArchivoRechazado& e) {
        Estado(QString());
        vb::MsgBox(e.mensaje(), vb::vbExclamation, kRecibir);
        return;
    }
    Estado(QStringLiteral("Guardando los datos de los albaranes recibidos ..."));
    GuardarRecibidos(recibido.pedidoC, recibido.pedidoD);
    CommandBuscar_Click();
    Estado(kListo);
    Timer1->SetEnabled(true);
}

// Every note with its counter, then every line, in one transaction: a note
// that is already here makes its INSERT fail, which stops the command with the
// store's message and ends the program as any untrapped error does, and the
// rollback leaves the tables as they were before the reception. A file that
// ends inside a record, or holds a value that cannot be read, is refused
// before anything is written.
void FormControlAlbaran::GuardarRecibidos(const QByteArray& pedidoC, const QByteArray& pedidoD) {
    intercambio::Recepcion r;
    try {
        r = intercambio::LeerRecepcion(pedidoC, pedidoD);
    } catch (const vb::RuntimeError& e) {
        // Nothing is written yet: a file that cannot be read is refused here
        // with the reason, rather than ending the program half-way.
        Estado(QString());
        vb::MsgBox(e.Number == 62
                       ? QStringLiteral("No se pueden recibir los albaranes: los ficheros recibidos terminan a mitad de un albarán.")
                       : QStringLiteral("No se pueden recibir los albaranes: los ficheros recibidos tienen un valor que no se puede leer (") +
                             e.Description + QStringLiteral(")."),
                   vb::vbExclamation, kRecibir);
        return;
    }
    using namespace control_albaranes;
    Transaccion t(*BaseDatos);
    for (const auto& nota : r.notas) {
        BaseDatos->Execute(nota.sentencia);
        // The counter of the sending store follows the number just read, up or down.
        const ClaveNota clave{nota.tienda, nota.serie, nota.ejercicio, nota.numero};
        auto rs = BaseDatos->OpenRecordset(SentenciaContadorRecibido(clave));
        if (rs->Eof())
            BaseDatos->Execute(SentenciaNuevoContadorRecibido(clave));
        else
            BaseDatos->Execute(SentenciaMoverContadorRecibido(clave));
    }
    for (const QString& linea : r.lineas) BaseDatos->Execute(linea);
}

void FormControlAlbaran::Timer1_Timer() {
    if (ui->LabelEstado->Caption() == kListo) {
        Estado(QString());
        Timer1->SetEnabled(false);
    }
}

void FormControlAlbaran::CommandCerrar_Click() { Unload(); }

} // namespace vel
