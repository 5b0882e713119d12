// The window of customers (Fclientes) and suppliers (Fproveedores): one window
// on two tables. They have the same controls in the same places and the same
// procedures; a window states its table and the few things that are its own
// (caption, the length of the NIF, the design-time text of the account box,
// what the VAT list shows).
#pragma once
#include "masterdata/partner_search.h"
#include "masterdata/partner_table.h"
#include "runtime/forms.h"

#include <memory>

namespace Ui {
class PartnerWindow;
}

namespace vel {

struct PartnerWindowData {
    QString ventana;           // the window's name: "Fclientes"
    QString titulo;            // caption: "Mantenimiento de Clientes"
    const PartnerTable* tabla; // Clientes() or Proveedores()
    int longitudNif;           // MaxLength of Textnif
    QString textoNumerocuenta; // design-time text of Textnumerocuenta
    PartnerViewOptions listaIva; // what the VAT list shows and how its choice is found
};

class PartnerWindow : public vb::Form {
    Q_OBJECT
public:
    PartnerWindow(const PartnerWindowData& data, QWidget* parent = nullptr);
    ~PartnerWindow() override;

    const PartnerWindowData& Data() const { return D; }

protected:
    const PartnerWindowData D;
    std::unique_ptr<Ui::PartnerWindow> ui;
    PartnerView Vista;
    PartnerLists Listas;

    virtual void muestradatos();
};

} // namespace vel
