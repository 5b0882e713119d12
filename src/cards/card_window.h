// The account card window: the customer's (FormFichasClientes) and the
// supplier's (FormFichasProveedores). One window on two pairs of tables,
// cabecera_fichas_<palabra> (one head row for each NIF and year) and
// detalle_fichas_<palabra> (the numbered entries of the year).
//
// The two cards do the same steps with the two amounts mirrored. On the
// customer's card the amount owed is DEBE: the head's debit grows by the amount
// typed, and its credit moves only when an entry is marked as collected. On the
// supplier's card the amount owed is HABER: the head's credit grows by the
// amount typed and its debit moves on marking. Each statement below is written
// once, in terms of those two sides:
//
//   Anotado: the side that grows by what is typed (debe for customers);
//   Marcado: the side that moves only on marking (haber for customers).
//
// What else tells the windows apart is data (DatosFicha): the tables, the
// partner's table and its search, the captions of the year before, the
// message of an empty amount, the partner fields the supplier record has not,
// and the trap: the supplier's Aceptar reports a failing statement to
// errores.txt and goes on; the customer's has no trap, so a failing statement
// ends the program.
//
// Modes, as in the other windows of the pattern:
//
// | ModoVentana | search (Frame2) | card (Frameficha) | entry fields | Nuevo .. Borrar | Aceptar  |
// |-------------|-----------------|-------------------|--------------|-----------------|----------|
// | empty       | enabled         | disabled          | enabled      | enabled         | disabled |
// | "N", "M"    | disabled        | enabled           | enabled      | disabled        | enabled  |
// | "O", "B"    | disabled        | enabled           | disabled     | disabled        | enabled  |
#pragma once
#include "core/maintenance_window.h"
#include "masterdata/partner_search.h"
#include "masterdata/partner_table.h"
#include "runtime/save_report.h"

#include <QStringList>
#include <array>
#include <functional>
#include <memory>

class QLabel;
class QLineEdit;

namespace Ui {
class CardWindow;
}

namespace vel {

class Recordset;

// The two amounts of a card.
enum class Importe { Debe, Haber };

struct DatosFicha {
    QString ventana;               // "FormFichasClientes"
    QString titulo;                // caption
    const PartnerTable* socio;     // Clientes() or Proveedores(): the lists, muestradatos, the failed search
    QString palabra;               // "clientes": cabecera_fichas_clientes, debe_detalle_fichas_clientes ...
    int longitudNif;               // MaxLength of Textnif
    Importe anotado;               // the side that grows by the amount typed
    // Captions of the year before, each followed by the year and ")".
    QString tituloDebePasado;      // "Total DEBE ("
    QString tituloHaberPasado;     // "Total HABER ("
    QString tituloSaldoPasado;     // "Total SALDO ("
    QString importesEnBlanco;      // "Los campos DEBE y HABER no pueden quedar en blanco"
    // Partner controls the window does not have: hidden, never emptied or shown.
    QStringList sinControl;
    // The save report of Aceptar (the supplier's); without it a failing
    // statement ends the program.
    bool informeDeGuardado;
};

class CardWindow : public MaintenanceWindow {
    Q_OBJECT
public:
    CardWindow(const DatosFicha& datos, QWidget* parent = nullptr);
    ~CardWindow() override;

    // ---- Procedures ----------------------------------------------------------
    void buscanif() { Listas.buscanif(); }
    void muestradatos() { Vista.muestradatos(); }
    void CargarDatos();
    void borrarapuntes();

    // ---- Event procedures ----------------------------------------------------
    void Commandnuevo_Click() override;
    void Commandmodificar_Click() override;
    void Commandconsultar_Click() override;
    void Commandborrar_Click() override;
    void Commandaceptar_Click() override;
    void Commandcancelar_Click() override;
    void Comboejercicioapunte_Click();
    void Combotiendaapunte_Click();
    void Comboformapagoapunte_Click();
    void Textfechaapunte_LostFocus();
    void Textdescripcionapunte_LostFocus();
    void Textdebeapunte_LostFocus();
    void Texthaberapunte_LostFocus();
    void Gridapuntes_Click();
    void Gridapuntes_DblClick();

    const DatosFicha& Datos() const { return D; }

    // ---- Statements, as the window writes them ---------------------------------
    QString Tabla(const char* parte) const;                      // "detalle" -> detalle_fichas_clientes
    QString Columna(const char* campo, const char* parte) const; // ("debe", "cabecera") -> debe_cabecera_fichas_clientes
    // The positional INSERT of one entry: amounts through "0.00", texts upper-cased.
    QString SentenciaApunte(int numero, const QString& fecha, double debe, double haber) const;
    // The positional INSERT of the year's head row.
    QString SentenciaInsertarCabecera(const QString& apuntes, const QString& debe, const QString& haber,
                                      const QString& anterior, const QString& ultimo) const;

protected:
    void Form_Load() override;

    const DatosFicha D;
    std::unique_ptr<Ui::CardWindow> ui;
    PartnerView Vista;
    PartnerLists Listas;

    // ---- Window state ------------------------------------------------------------
    // The running balance of the grid fill.
    double SaldoAcumulado = 0;
    // The text of the date cell last clicked.
    QString FechaPulsada;
    // The grid row of that cell.
    int FilaPulsada = 0;

private:
    // One side of the card: its column word, its box, its head total.
    struct Lado {
        const char* columna; // "debe"
        QLineEdit* caja;     // Textdebeapunte
        QLabel* total;       // Labeltotaldebe
    };
    Lado Anotado() const;
    Lado Marcado() const;
    Lado DeImporte(Importe i) const;

    // What Nuevo, Modificar, Consultar and Borrar share.
    void EntrarEnModo(const QString& letra);
    // " WHERE nif_cabecera_fichas_clientes = 'nif' AND ejercicio_cabecera_fichas_clientes = year"
    QString DondeCabecera() const;
    // " WHERE nif_detalle... = 'nif' AND ejercicio_detalle... = year AND numero_detalle... = number"
    QString DondeApunte(const QString& numero) const;
    QString Nif() const;
    QString Ejercicio() const;

    // The saves of each mode; `ejecutar` runs one statement (under the trap,
    // for the supplier).
    using Ejecutar = std::function<void(const QString& sentencia)>;
    void GuardarNuevo(const Ejecutar& ejecutar);
    void GuardarModificado(const Ejecutar& ejecutar);
    void GuardarBorrado(const Ejecutar& ejecutar);
    // The date of an entry changed on the calendar: true when the question was
    // asked (nothing else is saved on that press).
    bool FechaCambiada(const Ejecutar& ejecutar);
    void Marcar(const Ejecutar& ejecutar);
    void ElegirApunte();

    // Walks a list for an entry equal to the text and chooses it.
    static void Posicionar(vb::ComboBox* lista, const QString& texto);
    vb::SaveReportState EstadoInforme(int F, bool buscar) const;
};

} // namespace vel
