// FormAlbaranVenta: the delivery notes of the current store. A note belongs to
// a customer chosen first in the window's customer tab (shown, never edited),
// is numbered from the counter 'AV' of the store and year, and is written as a
// header and its lines, one statement at a time; a modification deletes the
// note and writes it again, keeping its state.
//
// The window follows the maintenance window pattern with these differences:
// Texto flips the customer tab's fields; Botones flips the print buttons and
// the print choice too; each mode button sets the buttons and frames of its
// mode by itself; Cancelar from a mode leaves ModoVentana as it was. The line
// area, the grid and the totals are the piece both document windows hold
// (document_totals.h). Commandaceptar_Click alone has an error trap: the save
// report, into erralbar.txt, after which the save goes on.
//
// Printing reads what the window shows, saved or not: CommandImprimir prints
// the note (cabeceraalbaran, detallealbaran, piealbaran), CommandEnviar its
// receipt (recibo), each procedure handing the shared layout code the
// controls as they stand (Ventana). The window never turns CommandEnviar on.
#pragma once
#include "core/maintenance_window.h"
#include "masterdata/partner_search.h"
#include "runtime/calendar.h"
#include "sales/document_statements.h"
#include "sales/document_totals.h"
#include "sales/print_layout.h"

#include <QCheckBox>
#include <QFrame>
#include <array>
#include <memory>
#include <optional>

namespace vb {
class CommonDialog;
}

namespace Ui {
class FormAlbaranVenta;
}

namespace vel {

class FormAlbaranVenta : public MaintenanceWindow {
    Q_OBJECT
public:
    explicit FormAlbaranVenta(QWidget* parent = nullptr);
    ~FormAlbaranVenta() override;

    // ---- Values of the window ---------------------------------------------------
    // The store of the notes made here: config.ini's store at load; the store of
    // a stored note's last line once it is opened.
    QString TiendaDocumento;
    QString ClientePrograma;
    // vencimientos_formapago and the twelve day counts of the chosen term.
    int NumeroRecibos = 0;
    std::array<int, 12> DiasVencimiento{};
    // The fiscal years already put in Comboejerciciofactura: room for 100.
    std::array<QString, 100> EjerciciosVistos;

    // ---- Procedures ------------------------------------------------------------------
    void CargarDatos();
    void buscanif();
    void muestradatos();
    void borrarfacturas();
    bool MostrarPrimerAlbaran(QWidget* foco);

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
    // The print buttons: the note, and (in spite of its caption) its receipt.
    void CommandImprimir_Click();
    void CommandEnviar_Click();

    // ---- Print procedures: they read what the window shows now ----------------------
    void cabeceraalbaran();
    void detallealbaran();
    void piealbaran();
    void recibo();
    // The fields the three procedures of a printed note share.
    print_layout::Contadores contadores;

    DocumentTotals* Lineas() const { return Lineas_; }

protected:
    void Form_Load() override;
    // The line area's boxes have their own keys (document_totals.h).
    void Texto_KeyPress(QLineEdit* caja, int& KeyAscii) override;
    void Texto_GotFocus(QLineEdit* caja) override;

private:
    // The mode's buttons and frames, as each mode button sets them.
    struct EstadoModo {
        const char* modo;
        bool frame2, frame8Apagado, imprimir, proforma;
    };
    void EntrarEnModo(const EstadoModo& estado);
    // The grid rebuilt, the line emptied, the rates of the customer and the
    // totals cleared: what the year and number lists do before showing a note.
    void LimpiarLineasYTotales();
    // " WHERE nif_cabecera_albaran_venta = '" nif "' ", or "<> '*'" for everybody.
    QString ClausulaCliente() const;
    // Every numero of the year's headers of the customer into Combonumerofactura,
    // the first chosen; false when there was none.
    bool LlenarNumeros(const QString& orden);
    void LlenarFormasDePago();
    void ProponerNumero();
    // The lines of the note of the year and number shown, replayed.
    void CargarLineas(bool desdeNumero);
    void OcultarCalendario();
    ClaveDocumento Clave() const;
    DatosCabecera Cabecera(const QString& estado) const;
    // The save: every grid row, then the header.
    void GuardarAlbaran(const QString& estado, const std::function<bool(const std::function<void()>&)>& trap,
                        int& F);
    void BorrarAlbaran(const std::function<bool(const std::function<void()>&)>& trap);
    void LeerConfiguracion();
    // The controls the print procedures read, as they stand at this moment.
    print_layout::Documento Ventana() const;

    std::unique_ptr<Ui::FormAlbaranVenta> ui;
    std::optional<PartnerView> Vista;
    std::optional<PartnerLists> Listas;
    DocumentTotals* Lineas_ = nullptr;
    vb::CommonDialog* CommonDialog1 = nullptr;
};

} // namespace vel
