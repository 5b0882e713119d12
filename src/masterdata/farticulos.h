// Farticulos: the products. A product lives at one leaf of the article
// structure; the window works from the top down: the four structure combos,
// the list of the leaf's products, the product's fields. The price kept is the
// retail price with VAT; the window shows the price without VAT beside it and
// keeps the two in step through the VAT combo.
//
// Two tabs of SSTab1: "Datos del Producto" (the product, and the bulk price
// changes: Cambiar on the leaf, Cambiar on every product, Recalcular from 16 to
// 21 % VAT) and "Proveedor" (the chain's catalogue, BaseCatalogo, searched by
// code, name or bar code and copied into the product being entered; for the
// installations FERROBANDA, ULTRAMARINOS and LAPRESA only).
//
// Modes as the maintenance pattern, with these differences: every mode button
// clears the four structure combos and calls Borrar, Texto and Botones (so the
// frames are enabled in all four modes: a product to consult or delete is
// found through the structure and the list); Texto flips the three frames;
// Botones flips the four mode buttons; Modificar also enables the two Cambiar
// buttons. No error trap anywhere but in the bulk price changes.
#pragma once
#include "core/maintenance_window.h"
#include <QString>
#include <functional>
#include <memory>

namespace Ui {
class Farticulos;
}

namespace vel {

class Farticulos : public MaintenanceWindow {
    Q_OBJECT
public:
    explicit Farticulos(QWidget* parent = nullptr);
    ~Farticulos() override;

    // The installation tag, read from config.ini at load.
    QString ClientePrograma;

    // ---- Procedures ----------------------------------------------------------
    // The list and every field of the product, the VAT combo included.
    void Borrar() override;
    // The same fields, the list kept.
    void BorrarReferencias();
    // The products of the chosen leaf into ListArticulos.
    void CargarDatos();
    void Cargardivision();
    void Cargargfamilia();
    void Cargarfamilia();
    void Cargararticulo();
    void CargarIva();
    // The product whose reference is in Textreferencia, into the fields.
    void Cargarreferencias();
    // The chain of the catalogue tab, for the three installations that use it.
    void CargarProveedor();

    // ---- Events ------------------------------------------------------------------
    void Commandnuevo_Click() override;
    void Commandmodificar_Click() override;
    void Commandconsultar_Click() override;
    void Commandborrar_Click() override;
    // CommandAceptar in this window.
    void Commandaceptar_Click() override;

    void Combodivision_GotFocus();
    void Combodivision_LostFocus();
    void Combogfamilia_GotFocus();
    void Combogfamilia_LostFocus();
    void Combofamilia_LostFocus();
    void Comboarticulo_LostFocus();
    void Comboiva_GotFocus();
    void ListArticulos_Click();
    void ListArticulos_DblClick();
    void Textreferencia_LostFocus();
    void Textiva_LostFocus();
    void Textpvp_LostFocus();

    void CommandCambiar_Click();
    void CommandCambiarTodo_Click();
    void CommandRecalcular_Click();

    void ComboCodigoProveedor_Change();
    void CommandBuscarArticuloProveedor_Click();
    void ComboCodigoProducto_Click();
    void CommandCopiarProveedor_Click();

    // A row of ListArticulos: the reference cut to 14 columns, the description
    // to column 65, the brand to 81, then the model, 15 blanks and the price
    // "0.000" right-justified in 10. The model is not cut: a long model pushes
    // the price to the right.
    static QString FilaArticulo(const QString& referencia, const QString& descripcion, const QString& marca,
                                const QString& modelo, double pvp);

protected:
    void Form_Load() override;
    // Cancelar in a mode: Botones, Texto, Borrar, the four combos cleared, and
    // out of "M" the two Cambiar buttons disabled.
    void SalirDelModo() override;

    // The statements of Aceptar, from the fields as they stand.
    QString SentenciaInsertar() const;
    QString SentenciaModificar() const;
    // The query of the leaf chosen in the four combos.
    QString SentenciaCargarDatos() const;
    // Enter in TextCodigoProveedor runs the search; in every other box it
    // moves on.
    void Texto_KeyPress(QLineEdit* caja, int& KeyAscii) override;

private:
    // The four mode buttons share their steps.
    void EntrarEnModo(Modo modo);
    void LimpiarEstructura();
    // The catalogue tab works for three installations only.
    bool UsaCatalogo() const;
    // VAT of the combo as its last two characters read: Val(Right(Comboiva, 2)).
    double PorcentajeIva() const;
    // The leaf's codes: the first two characters of each combo.
    QString Division() const;
    QString Gfamilia() const;
    QString Familia() const;
    QString Articulo() const;
    // Fills a structure or VAT combo from its query: "code/description"
    // entries, the first chosen.
    void LlenarCombo(vb::ComboBox* combo, const QString& sql, const QString& codigo,
                     const QString& descripcion);
    // The walk of the three price buttons, after their question.
    void CambiarPreciosDe(const QString& consulta, const std::function<double(double)>& nuevoPrecio);

    std::unique_ptr<Ui::Farticulos> ui;
};

} // namespace vel
