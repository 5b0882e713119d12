#include "masterdata/partner_window.h"

#include "core/record_store.h"
#include "core/session.h"
#include "runtime/clock.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"
#include "ui_partner_window.h"

namespace vel {

namespace {
const QString kDobleClick = QStringLiteral("> > > Doble click para seleccionar < < <");

// The ui builds its controls before the pieces that find them by name.
QWidget* Construida(QWidget* window, Ui::PartnerWindow& ui, const PartnerWindowData& d) {
    window->setObjectName(d.ventana);
    ui.setupUi(window);
    return window;
}
} // namespace

PartnerWindow::PartnerWindow(const PartnerWindowData& data, QWidget* parent)
    : MaintenanceWindow(parent),
      D(data),
      ui(std::make_unique<Ui::PartnerWindow>()),
      Vista(Construida(this, *ui, D), *D.tabla, D.listaIva),
      Listas(this, *D.tabla, [this] { muestradatos(); }) {
    SetCaption(D.titulo);
    ui->Textnif->setMaxLength(D.longitudNif);
    ui->Textnumerocuenta->setText(D.textoNumerocuenta);
    // The tariff list is designed with its five entries and none chosen: "N"
    // chooses the first.
    ui->Combotarifa->setCurrentIndex(-1);

    // Every data field, in the order of the customer record: what Texto flips.
    QList<QWidget*> campos;
    for (const PartnerField& f : PartnerFields()) campos << Vista.Control(QLatin1String(f.control));
    // Borrar empties them all but the tariff list, and the names of bank,
    // branch, payment term and store, and two of the VAT percentages.
    QList<QWidget*> borrar;
    for (QWidget* c : campos)
        if (c != ui->Combotarifa) borrar << c;
    borrar << ui->Labelbanco << ui->Labelsucursal << ui->Labelformapago << ui->Labeltienda << ui->Labelivare
           << ui->Labelivaret;
    const QList<vb::ComboBox*> listas = {ui->Combonif,    ui->Combocodigo,    ui->Combonombrefiscal,
                                         ui->Combonombrecomercial, ui->Combobanco, ui->Combosucursal,
                                         ui->Comboformapago, ui->Comboiva, ui->Combotienda, ui->Combocomercial};
    QList<QWidget*> intro = {ui->Combotarifa, ui->Checkfacturable, ui->Checkmailing, ui->Textobservaciones};
    for (vb::ComboBox* l : listas) intro << l;
    MontarVentana({.botones = BotonesDe(*ui), .texto = campos, .borrar = borrar, .flipaBotones = {}, .intro = intro});

    // Digits and Backspace alone in the number boxes; the billing limit also
    // takes "-" and ".".
    FiltrarTeclas({ui->Textbanco, ui->Textsucursal, ui->Textdigitocontrol, ui->Textnumerocuenta, ui->Textdiacobro1,
                   ui->Textdiacobro2, ui->Textcodigopostal, ui->Texttelefono1, ui->Texttelefono2, ui->Textmovil1,
                   ui->Textmovil2, ui->Textfax, ui->Textcontacto1telefono, ui->Textcontacto2telefono,
                   ui->Textcontacto3telefono, ui->Textdescuentoarticulo, ui->Textdescuentofactura,
                   ui->Textcodigoiva, ui->Textcodigotienda},
                  SoloDigitos);
    FiltrarTeclas({ui->Textlimitefacturacion}, TeclasDeNumero);

    // A list keeps its place in the frame while it is hidden, so that showing
    // it over its box moves nothing else.
    ConservarSitioDeLasListas(this);

    // The search lists.
    const std::pair<vb::ComboBox*, const char*> busqueda[] = {{ui->Combonif, "NIF"},
                                                              {ui->Combocodigo, "CODIGO"},
                                                              {ui->Combonombrefiscal, "FISCAL"},
                                                              {ui->Combonombrecomercial, "COMERCIAL"}};
    for (const auto& [lista, palabra] : busqueda) {
        const QString p = QLatin1String(palabra);
        OnGotFocus(lista, [this, p] { Listas.Lista_GotFocus(p); });
        OnClick(lista, [this, p] { Listas.Lista_Click(p); });
    }
    OnLostFocus(ui->Combonombrefiscal, [this] { Combonombrefiscal_LostFocus(); });
    OnLostFocus(ui->Combonombrecomercial, [this] { Combonombrecomercial_LostFocus(); });

    // The lookups of bank, branch, payment term, VAT and store.
    for (const PartnerLookup& l : PartnerView::Lookups()) {
        const PartnerLookup* p = &l;
        OnLostFocus(Vista.Control(QLatin1String(l.box)), [this, p] { Vista.Codigo_LostFocus(*p); });
        OnDblClick(Vista.Control(QLatin1String(l.label)), [this, p] { Vista.Etiqueta_DblClick(*p); });
        OnLostFocus(Vista.Control(QLatin1String(l.list)), [this, p] { Vista.Lista_LostFocus(*p); });
    }

    OnGotFocus(ui->Textobservaciones, [this] { Textobservaciones_GotFocus(); });
    OnLostFocus(ui->Textalta, [this] { Textalta_LostFocus(); });
}

PartnerWindow::~PartnerWindow() = default;

// ---- Load, modes and Cancelar ---------------------------------------------------

void PartnerWindow::Form_Load() {
    Borrar();
    MaintenanceWindow::Form_Load(); // Texto: the fields become disabled
    Listas.SetVisible(false);
    for (QWidget* w : QList<QWidget*>{ui->Combobanco, ui->Combosucursal, ui->Comboformapago, ui->Comboiva,
                                      ui->Labeliva, ui->Combotienda, ui->Combocomercial})
        vb::SetVisible(w, false);
}

void PartnerWindow::Commandnuevo_Click() {
    ModoVentana = Modo::Nuevo;
    Borrar();
    Texto();
    Botones();
    for (QLabel* etiqueta : {ui->Labelbanco, ui->Labelsucursal, ui->Labelformapago, ui->Labeliva, ui->Labeltienda})
        etiqueta->setText(kDobleClick);
    ui->Combotarifa->SetListIndex(0);
    vb::SetFocus(ui->Textnif);
}

void PartnerWindow::Commandconsultar_Click() { ModoDeBusqueda(Modo::Consultar); }
void PartnerWindow::Commandborrar_Click() { ModoDeBusqueda(Modo::Borrar); }
void PartnerWindow::Commandmodificar_Click() { ModoDeBusqueda(Modo::Modificar); }

void PartnerWindow::ModoDeBusqueda(Modo modo) {
    ModoVentana = modo;
    // The buttons are set one by one, not flipped: Borrar runs this again after
    // each delete.
    vb::SetEnabled(Commandnuevo, false);
    vb::SetEnabled(Commandborrar, false);
    vb::SetEnabled(Commandconsultar, false);
    vb::SetEnabled(Commandmodificar, false);
    vb::SetEnabled(Commandaceptar, true);
    // The notes can be scrolled while a record is looked at or deleted.
    if (modo == Modo::Consultar || modo == Modo::Borrar) vb::SetEnabled(ui->Textobservaciones, true);
    Listas.SetVisible(true);
    if (modo == Modo::Modificar) {
        Borrar();
        Texto();
    }
    Listas.Llenar();
    if (Listas.Combonif->ListCount() >= 1) {
        Listas.CampoBusqueda = QStringLiteral("NIF");
        Listas.Combonif->SetListIndex(0); // Combonif_Click: buscanif
        vb::SetFocus(Listas.Combonif);
    } else {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
        Commandcancelar_Click();
    }
}

// Idle, Cancelar closes the window; in a mode it goes back to idle.
void PartnerWindow::Commandcancelar_Click() {
    if (!EnModo()) vb::SetEnabled(ui->Textobservaciones, false);
    MaintenanceWindow::Commandcancelar_Click();
}

// Leaving a mode: the lists hide, and the fields go back through Botones, Texto
// and Borrar (and Texto again after "O" and "B").
//
// The notes box is turned off after those flips, not before them. "O" and "B"
// enable it on its own for scrolling; turned off before the flips, it would
// come out of "N" and "M" enabled at idle, and the next "N" would flip it off
// while every other field turns on. Turned off last, it is disabled at idle
// after every mode, as every other field is.
void PartnerWindow::SalirDelModo() {
    Listas.SetVisible(false);
    MaintenanceWindow::SalirDelModo();
    vb::SetEnabled(ui->Textobservaciones, false);
}

// ---- Aceptar ----------------------------------------------------------------------

void PartnerWindow::FechaDeAlta() {
    if (ui->Textalta->text() == QString()) ui->Textalta->setText(vb::Format(vb::Date(), QStringLiteral("dd/mm/yyyy")));
}

void PartnerWindow::Commandaceptar_Click() {
    const PartnerReader valor = [this](const QString& control) { return Valor(control); };
    if (ModoVentana == Modo::Nuevo) {
        if (ui->Textcodigo->text() != QString() && ui->Textnif->text() != QString()) {
            FechaDeAlta();
            BaseDatos->Execute(PartnerInsert(*D.tabla, valor));
            // The window stays in "N" for the next one.
            Borrar();
            ui->Combotarifa->SetListIndex(0);
            vb::SetFocus(ui->Textnif);
        } else {
            // The words say "Nombre"; what is tested is the NIF.
            vb::MsgBox(QStringLiteral("Se necesita un Código y un Nombre"), vb::vbOKOnly, QStringLiteral("Atención"));
            vb::SetFocus(ui->Textcodigo);
        }
    } else if (ModoVentana == Modo::Modificar) {
        if (ui->Textcodigo->text() != QString() && ui->Textnif->text() != QString()) {
            FechaDeAlta();
            BaseDatos->Execute(PartnerUpdate(*D.tabla, valor));
            if (Listas.Combonif->ListCount() >= 1) {
                Listas.Combonif->SetListIndex(0);
                vb::SetFocus(Listas.Combonif);
            } else {
                vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
                vb::SetVisible(Listas.Combonif, false);
                Commandcancelar_Click();
            }
        } else {
            vb::MsgBox(QStringLiteral("Se necesita un Código y un Nif"), vb::vbOKOnly, QStringLiteral("Atención"));
            vb::SetFocus(ui->Textnombre);
        }
        // After a save the tariff list shows "1", whatever the record has.
        ui->Combotarifa->SetListIndex(0);
    } else if (ModoVentana == Modo::Borrar) {
        // 276: Yes and No, critical icon, No the default.
        if (vb::MsgBox(QStringLiteral(" ¿Desea eliminar definitivamente el registro?"), 276,
                       QStringLiteral("Advertencia")) == vb::vbYes) {
            BaseDatos->Execute(PartnerDelete(*D.tabla, ui->Textnif->text()));
            // Reloads the lists and stays in "B" on the first record.
            Commandborrar_Click();
        }
    } else if (ModoVentana == Modo::Consultar) {
        Commandcancelar_Click();
    }
}

// ---- Fields ---------------------------------------------------------------------------

void PartnerWindow::NombreModificado(vb::ComboBox* lista, QLineEdit* caja) {
    if (ModoVentana != Modo::Modificar) return;
    caja->setText(lista->Text());
    Listas.AddItem(lista, lista->Text());
}

void PartnerWindow::Combonombrefiscal_LostFocus() { NombreModificado(ui->Combonombrefiscal, ui->Textnombrefiscal); }
void PartnerWindow::Combonombrecomercial_LostFocus() {
    NombreModificado(ui->Combonombrecomercial, ui->Textnombrecomercial);
}

void PartnerWindow::Textobservaciones_GotFocus() {
    ui->Textobservaciones->selectAll();
    if (ModoVentana == Modo::Borrar || ModoVentana == Modo::Consultar) vb::SendKeys(QStringLiteral("{tab}"));
}

void PartnerWindow::Textalta_LostFocus() {
    ui->Textalta->setText(vb::Format(ui->Textalta->text(), QStringLiteral("dd/mm/yyyy")));
}

void PartnerWindow::Texto_GotFocus(QLineEdit* caja) {
    if (caja == ui->Textcodigoiva) Vista.Textcodigoiva_GotFocus();
    MaintenanceWindow::Texto_GotFocus(caja);
}

} // namespace vel
