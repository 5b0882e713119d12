// The line area, the grid and the totals of a sales document: one piece held by
// both document windows (the delivery note and the invoice).
//
// A document's amounts exist only as the text of these fields while it is
// edited. Every step reads fields with Val, computes in double precision and
// writes a field back; the change handler of each amount label then rounds its
// own caption with Format. The totals are a running state: accepting a line adds
// it, opening a line again takes it away; nothing ever walks the grid to add it
// up. A stored document is shown by replaying its lines through the same fields
// and procedures, so the totals on screen are always recomputed.
//
// The piece is an event host of its own (a vb::Form that is never loaded by
// itself): it wires its fields' keys, focus and change events to the procedures
// below. What belongs to the window around it (its Aceptar button, its
// calendar, the VAT rates of the customer's tab) it reaches through Ventana.
#pragma once
#include "runtime/flexgrid.h"
#include "runtime/forms.h"
#include <QFrame>
#include <QLineEdit>
#include <functional>
#include <memory>

namespace Ui {
class DocumentTotals;
}

namespace vel {

// What the two documents do differently with a line's amounts. The delivery
// note rounds the price first and multiplies the rounded price; the invoice
// multiplies the price as typed and rounds it afterwards, to two or three places
// by installation.
struct ReglasLineas {
    QString mascaraLinea;  // Labelsubtotal and Labeltotal
    QString mascaraPrecio; // Textprecio once it is left
    bool subtotalAntesDeRedondear = false;
};
// The delivery note: "0.000" everywhere, price rounded before the subtotal.
ReglasLineas ReglasAlbaran();
// The invoice: "0.000" for FERROBANDA and "0.00" for every other tag; the
// subtotal is taken from the price as typed.
ReglasLineas ReglasFactura(const QString& ClientePrograma);

class DocumentTotals : public vb::Form {
    Q_OBJECT
public:
    explicit DocumentTotals(QWidget* parent = nullptr);
    ~DocumentTotals() override;

    // What the piece needs of the window that holds it.
    struct Ventana {
        // Where the focus goes when the entry of lines ends.
        QWidget* Commandaceptar = nullptr;
        // Hides the window's calendar (getting the focus in a line field does).
        std::function<void()> OcultarCalendario;
        // The captions of Labelivaiva and Labelivare: the percentages of the
        // customer's VAT type, which a new document starts from.
        std::function<QString()> Labelivaiva;
        std::function<QString()> Labelivare;
        // Run at the end of BuscarProducto once a product was found (the
        // invoice adds its monthly suffix there). Empty for the delivery note.
        std::function<void()> ProductoEncontrado;
    };
    void SetVentana(Ventana ventana);
    void SetReglas(const ReglasLineas& reglas);
    const ReglasLineas& Reglas() const { return reglas_; }
    // The words beside Labeltotalfactura ("Total Albarán" in the delivery note).
    void SetTituloTotal(const QString& titulo);

    // ---- Values of the window that live outside the fields ----------------------
    // The amount of the document's "DSC" line, taken off the total after VAT.
    double DescuentoDocumento = 0;
    // The grid row open for editing; 0 when none.
    int FilaEditada = 0;

    // ---- Procedures -----------------------------------------------------------------
    // "REFERENCIA" looks the reference up; "DESCRIPCION" and anything else do nothing.
    void BuscarProducto(const QString& tipo);
    void Textreferencia_KeyPress(int& KeyAscii);
    void Textdescripcion_LostFocus();
    void Textprecio_LostFocus();
    void Textdescuento_LostFocus();
    void Textiva_LostFocus();
    void Textrecargo_LostFocus();
    void Gridfacturas_DblClick();
    // The change handlers of the amount labels: each re-rounds its own caption.
    void Labelsubtotal_Change();
    void Labeltotal_Change();
    void Labelbruto_Change();
    void Labeldescuento_Change();
    void Labelimporteiva_Change();
    void Labelimporterecargo_Change();
    void Labeltotalfactura_Change();

    // ---- The document's clearing, as the windows call it ---------------------------
    // Clear, 7 columns, 1 row, and the seven headers with their widths.
    void ReconstruirGrid();
    // Empties the seven line fields (the two line labels then show zero).
    void LimpiarLinea();
    // The rates from the customer's VAT type (21 and 0 when it has none) and
    // every totals label cleared.
    void RestablecerTotales();
    // Replays one stored line through the fields, as a stored document is shown:
    // the price goes in as given (the window decides what a stored price that
    // isn't a number becomes).
    void ReproducirLinea(const QString& referencia, const QString& descripcion, const QString& unidades,
                         const QString& precio, const QString& descuento);
    // Scrolls the grid to its last row.
    void DesplazarGridAlFinal();

    // ---- The controls ------------------------------------------------------------------
    QFrame* Frame7 = nullptr;
    QFrame* Frame8 = nullptr;
    QLineEdit* Textreferencia = nullptr;
    QLineEdit* Textdescripcion = nullptr;
    QLineEdit* Textcantidad = nullptr;
    QLineEdit* Textprecio = nullptr;
    vb::Label* Labelsubtotal = nullptr;
    QLineEdit* Textdescuento = nullptr;
    vb::Label* Labeltotal = nullptr;
    vb::FlexGrid* Gridfacturas = nullptr;
    vb::Label* Labelbruto = nullptr;
    vb::Label* Labeldescuento = nullptr;
    vb::Label* Labelneto = nullptr;
    vb::Label* Labelbase = nullptr;
    QLineEdit* Textiva = nullptr;
    vb::Label* Labelimporteiva = nullptr;
    QLineEdit* Textrecargo = nullptr;
    vb::Label* Labelimporterecargo = nullptr;
    vb::Label* Labeltotalfactura = nullptr;

protected:
    // The piece is no window of its own: showing it gives no focus to its first
    // field (the window around it decides where the focus starts).
    void showEvent(QShowEvent* e) override;

private:
    void Campo_GotFocus(QLineEdit* campo);
    void Campo_KeyPress(QLineEdit* campo, int& KeyAscii);
    // Labeltotalfactura from the VAT, the neto, the surcharge and the "DSC" line.
    void TotalDocumento();
    // Labelneto and Labelbase from bruto and discounts.
    void NetoYBase();

    std::unique_ptr<Ui::DocumentTotals> ui;
    Ventana ventana_;
    ReglasLineas reglas_;
};

} // namespace vel
