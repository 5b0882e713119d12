#include "masterdata/partner_window.h"

#include "ui_partner_window.h"

namespace vel {

namespace {
// The ui builds its controls before the members that find them by name.
QWidget* Construida(QWidget* window, Ui::PartnerWindow& ui, const PartnerWindowData& d) {
    window->setObjectName(d.ventana);
    ui.setupUi(window);
    return window;
}
} // namespace

PartnerWindow::PartnerWindow(const PartnerWindowData& data, QWidget* parent)
    : vb::Form(parent),
      D(data),
      ui(std::make_unique<Ui::PartnerWindow>()),
      Vista(Construida(this, *ui, D), *D.tabla, D.listaIva),
      Listas(this, *D.tabla, [this] { muestradatos(); }) {
    SetCaption(D.titulo);
    ui->Textnif->setMaxLength(D.longitudNif);
    ui->Textnumerocuenta->setText(D.textoNumerocuenta);
    // A list keeps its place in the frame while it is hidden, so that showing
    // it over its box moves nothing else.
    for (vb::ComboBox* lista : {ui->Combonif, ui->Combocodigo, ui->Combonombrefiscal, ui->Combonombrecomercial,
                                ui->Combobanco, ui->Combosucursal, ui->Comboformapago, ui->Comboiva,
                                ui->Combotienda, ui->Combocomercial}) {
        QSizePolicy p = lista->sizePolicy();
        p.setRetainSizeWhenHidden(true);
        lista->setSizePolicy(p);
    }
    QSizePolicy p = ui->Labeliva->sizePolicy();
    p.setRetainSizeWhenHidden(true);
    ui->Labeliva->setSizePolicy(p);
}

PartnerWindow::~PartnerWindow() = default;

void PartnerWindow::muestradatos() { Vista.muestradatos(); }

} // namespace vel
