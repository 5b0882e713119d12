// The window of customers (Fclientes) and suppliers (Fproveedores): one window
// on two tables. They have the same controls in the same places and the same
// procedures; a window states its table and the few things that are its own
// (caption, the length of the NIF, the design-time text of the account box,
// what the VAT list shows).
//
// It follows the maintenance window pattern with a record found through the
// four search lists (partner_search.h) instead of a code list:
//
// | ModoVentana | Fields                                 | Nuevo, Borrar, Consultar, Modificar | Aceptar  | Search lists |
// |-------------|----------------------------------------|-------------------------------------|----------|--------------|
// | empty       | disabled                               | enabled                             | disabled | hidden       |
// | "N"         | enabled                                | disabled                            | enabled  | hidden       |
// | "O", "B"    | disabled, Textobservaciones enabled    | disabled                            | enabled  | shown        |
// | "M"         | enabled                                | disabled                            | enabled  | shown        |
#pragma once
#include "core/maintenance_window.h"
#include "masterdata/partner_search.h"
#include "masterdata/partner_table.h"

#include <memory>

class QPlainTextEdit;

namespace Ui {
class PartnerWindow;
}

namespace vel {

struct PartnerWindowData {
    QString ventana;               // the window's name: "Fclientes"
    QString titulo;                // caption: "Mantenimiento de Clientes"
    const PartnerTable* tabla;     // Clientes() or Proveedores()
    int longitudNif;               // MaxLength of Textnif
    QString textoNumerocuenta;     // design-time text of Textnumerocuenta
    PartnerViewOptions listaIva;   // what the VAT list shows and how its choice is found
};

class PartnerWindow : public MaintenanceWindow {
    Q_OBJECT
public:
    PartnerWindow(const PartnerWindowData& data, QWidget* parent = nullptr);
    ~PartnerWindow() override;

    void Commandnuevo_Click() override;
    void Commandmodificar_Click() override;
    void Commandconsultar_Click() override;
    void Commandborrar_Click() override;
    void Commandaceptar_Click() override;
    void Commandcancelar_Click() override;

    void buscanif() { Listas.buscanif(); }
    void muestradatos() { Vista.muestradatos(); }

    // Names in modify mode: the list covers its box, so a name is changed by
    // typing it into the list, which adds it as a new entry when left.
    void Combonombrefiscal_LostFocus();
    void Combonombrecomercial_LostFocus();
    // In "O" and "B" the notes can be scrolled but not written in.
    void Textobservaciones_GotFocus();
    void Textalta_LostFocus();

    const PartnerWindowData& Data() const { return D; }

protected:
    void Form_Load() override;
    void SalirDelModo() override;
    void Texto_GotFocus(QLineEdit* caja) override;

    const PartnerWindowData D;
    std::unique_ptr<Ui::PartnerWindow> ui;
    PartnerView Vista;
    PartnerLists Listas;

private:
    // Consultar, Borrar and Modificar: the mode letter, the buttons set one by
    // one, the search lists filled and the first record shown.
    void ModoDeBusqueda(Modo modo);
    // Names changed in modify mode, for either name list.
    void NombreModificado(vb::ComboBox* lista, QLineEdit* caja);
    // An empty registration date is today's when the record is saved.
    void FechaDeAlta();
    QString Valor(const QString& control) const { return Vista.Valor(control); }
};

} // namespace vel
