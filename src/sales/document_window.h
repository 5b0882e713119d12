// DocumentWindow: what the two sales document windows share, the delivery note
// (FormAlbaranVenta) and the invoice typed directly (FormFacturaVenta).
//
// Both are one window: the customer's tab (shown, never edited) with the
// four-key customer search, the modes, the lists of years and numbers, the date,
// the payment term with its due dates on the calendar, the line area with its
// grid and totals (document_totals.h), the save with its error trap and report,
// and the delete. Every table and column of the one ("cabecera_albaran_venta")
// is the other's with "factura" in the place of "albaran". What tells them apart
// is stated twice only:
//   - as data, in TextosDocumento (tables, words, messages, the report file);
//   - as the few steps each window does its own way, the virtual procedures
//     below, each named for the moment it is called at.
//
// The window follows the maintenance window pattern with these differences:
// Texto flips the customer tab's fields; Botones flips the document window's own
// buttons too (BotonesPropios); each mode button sets the buttons and frames of
// its mode by itself; Cancelar from a mode leaves ModoVentana as it was.
// Commandaceptar_Click alone has an error trap: the save report, after which
// the save goes on with the next step.
//
// Each window's own controls come from its own small .ui (formalbaranventa.ui,
// formfacturaventa.ui): a CabeceraPropia laid beside the due dates and a
// BotoneraPropia among the buttons (PonerControlesPropios).
#pragma once
#include "core/maintenance_window.h"
#include "core/series.h"
#include "masterdata/partner_search.h"
#include "runtime/calendar.h"
#include "runtime/common_dialog.h"
#include "runtime/save_report.h"
#include "sales/document_screen.h"
#include "sales/document_statements.h"
#include "sales/document_totals.h"
#include "sales/print_layout.h"

#include <QCheckBox>
#include <QFrame>
#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class DocumentWindow;
}

namespace vel {

class Recordset;

// What a document window is, as data.
struct TextosDocumento {
    DocumentoVenta documento;    // whose INSERT statements
    Documento serie;             // whose counter
    QString palabra;             // "albaran" or "factura": cabecera_<palabra>_venta, ...
    QString rotulo;              // Label55: "Albarán", "Factura"
    QString tituloTotal;         // beside Labeltotalfactura
    QString sinSerie;            // CargarDatos, no counter for the year
    QString clienteSinDocumentos;// CargarDatos, no header of the customer that year
    QString clienteSinNumeros;   // Comboejerciciofactura_Click, no header of the customer that year
    bool avisoSinNumerosEnNuevo; // ... also said in mode "N"
    QString sinCliente;          // Label55_DblClick, no header for the number
    QString preguntaModificar;   // mode "M"
    bool frame2EnBorrar;         // the customer can still be chosen in mode "B"
    bool precioNoNumericoACero;  // a stored price that isn't a number shows "0" (from the number)
    bool nuloComoVacio;          // a stored reference, description or price that is Null reads as empty
    QString estadoNuevo;         // the state of a new document's header
    QString ficheroErrores;      // the save report's file
    vb::SaveReportRecord (*registroErrores)(const vb::DocumentReportValues&);
};

class DocumentWindow : public MaintenanceWindow {
    Q_OBJECT
public:
    DocumentWindow(const TextosDocumento& textos, QWidget* parent = nullptr);
    ~DocumentWindow() override;

    // ---- Values of the window ---------------------------------------------------
    QString ClientePrograma;
    // vencimientos_formapago and the twelve day counts of the chosen term.
    int NumeroRecibos = 0;
    std::array<int, 12> DiasVencimiento{};
    // The fiscal years already put in Comboejerciciofactura: room for 100.
    std::array<QString, 100> EjerciciosVistos;
    // The page and line counts the three procedures of a printed document share.
    print_layout::Contadores contadores;

    // ---- Procedures ------------------------------------------------------------------
    void CargarDatos();
    void buscanif();
    void muestradatos();
    void borrarfacturas();
    bool MostrarPrimerDocumento(QWidget* foco);
    void ClienteCambiadoEnBorrar();

    // ---- Event procedures ---------------------------------------------------------------
    void Commandnuevo_Click() override;
    void Commandmodificar_Click() override;
    void Commandconsultar_Click() override;
    void Commandborrar_Click() override;
    void Commandaceptar_Click() override;
    void Commandcancelar_Click() override;
    void Comboejerciciofactura_Click();
    void Comboejerciciofactura_KeyPress(int& KeyAscii);
    void Combonumerofactura_Click();
    void Label55_DblClick();
    void Comboformapagofactura_Click();
    void Comborecibosfactura_Click();
    void Calendario_Click();
    void Textfechafactura_LostFocus();

    DocumentTotals* Lineas() const { return Lineas_; }

protected:
    // One step of the save under its error trap: false when it failed.
    using Paso = std::function<bool(const std::function<void()>&)>;

    void Form_Load() override;
    // The line area's boxes have their own keys (document_totals.h).
    void Texto_KeyPress(QLineEdit* caja, int& KeyAscii) override;
    void Texto_GotFocus(QLineEdit* caja) override;

    // Lays the window's own CabeceraPropia and BotoneraPropia (built by its .ui
    // on `piezas`) into the shared window, takes its name and caption, and sets
    // the pattern up (MontarVentana) with the window's own controls in which
    // Enter moves on. Called once, at the end of the derived constructor.
    void PonerControlesPropios(QWidget* piezas, const QList<QWidget*>& introPropios);

    // ---- What each window does its own way ---------------------------------------
    // The end of Form_Load, once the customer lists are filled: config.ini and
    // what the installation tag shows.
    virtual void CargarPropio() = 0;
    // A mode button's own buttons (ModoVentana is set).
    virtual void BotonesDelModo() = 0;
    // Cancelar from a mode: its own buttons (ModoVentana still holds the mode left).
    virtual void CancelarPropio() = 0;
    // Botones flips these too.
    virtual void BotonesPropios() = 0;
    // borrarfacturas clears these too.
    virtual void BorrarPropio() = 0;
    // What choosing a year or a number clears before a document is shown.
    virtual void LimpiarAlElegir();
    // A stored header read by Combonumerofactura_Click, before the date and rates.
    virtual void CabeceraLeida(Recordset& cabecera);
    // Each stored line as it is replayed.
    virtual void LineaLeida(Recordset& linea, bool desdeNumero);
    // Combonumerofactura_Click, after the grid has scrolled to its end.
    virtual void DocumentoMostrado();
    // The store of the counter.
    virtual QString TiendaSerie() const = 0;
    // The store of the key written to the rows.
    virtual QString TiendaDocumentoGuardado() const = 0;
    // Mode "N", between the counter and the rows.
    virtual void AntesDeLasLineas(const Paso& paso);
    // The long description every line receives (the invoice's).
    virtual QString DescripcionLarga() const;
    // The state written by a modification, read before the delete.
    virtual QString EstadoModificado(const Paso& paso) = 0;
    // The two DELETE statements of mode "B" and "M", header first.
    virtual QStringList SentenciasBorrado() const = 0;

    // Table and column names of this document: Tabla("cabecera") is
    // "cabecera_albaran_venta", Columna("nif", "cabecera") "nif_cabecera_albaran_venta".
    QString Tabla(const char* parte) const;
    QString Columna(const char* campo, const char* parte) const;

    // config.ini under On Error Resume Next: its first value is the
    // installation tag (an empty one, or no file, takes FERROBANDA); the second,
    // the store's name, is returned.
    QString LeerConfiguracion();
    // The window as it stands on screen, read once by an action: what both
    // documents show; the window adds its own (PantallaPropia).
    PantallaDocumento Pantalla() const;
    virtual void PantallaPropia(PantallaDocumento& p) const;
    // The reading of the print job under way, which its procedures print: a
    // print button reads the screen once, then runs the job.
    PantallaDocumento Impresion;
    void OcultarCalendario();
    void LimpiarLineasYTotales();
    void LlenarFormasDePago();

    const TextosDocumento textos_;
    std::unique_ptr<Ui::DocumentWindow> ui;
    vb::CommonDialog* CommonDialog1 = nullptr;
    std::optional<PartnerView> Vista;
    std::optional<PartnerLists> Listas;
    DocumentTotals* Lineas_ = nullptr;

private:
    void EntrarEnModo(bool frame2, bool frame8Apagado);
    // " WHERE nif_cabecera_albaran_venta = '" nif "' ", or "<> '*'" for everybody.
    QString ClausulaCliente() const;
    bool LlenarNumeros(const QString& orden);
    void ProponerNumero();
    void SeguirAlContador();
    QString NumeroPropuesto; // the last number proposed, as shown
    void CargarLineas(bool desdeNumero);
    void GuardarDocumento(const PantallaDocumento& p, const QString& estado, const Paso& paso, int& F);
    void BorrarDocumento(const Paso& paso);
};

} // namespace vel
