// FormFacturaVenta: sales invoices typed directly, with no delivery note behind
// them. The window is the shared document window (document_window.h), the
// delivery note's twin, with every "albaran" of a table or column read as
// "factura". What is its own:
//   - its controls: the two print buttons (Commandfactura, Commandrecibos), the
//     account tick of the printed foot (CheckCuenta, tag ORTA only), the import
//     button (CommandImportar, tag ORTA only), the long description with its
//     "+"/"-" button, and the letterhead logo;
//   - invoices belong to no store: one counter 'FD' of store 0 numbers them all
//     per fiscal year, and their rows are written as store 01, series 'VD';
//   - the line amounts by installation: the subtotal from the price as typed,
//     then the price rounded to "0.000" for FERROBANDA and "0.00" for the
//     others; the "MS" line of ORTA gets the year and month and the name of
//     the month before;
//   - the new invoice is numbered, then offered to print (invoice, receipts),
//     and only then stored, from what the window shows;
//   - no state: the header holds '1', and no warning is given on opening;
//   - in delete mode the customer can still be chosen;
//   - the save report goes into errores.txt.
#pragma once
#include "sales/document_window.h"

namespace Ui {
class FormFacturaVenta;
}

namespace vel {

class FormFacturaVenta : public DocumentWindow {
    Q_OBJECT
public:
    explicit FormFacturaVenta(QWidget* parent = nullptr);
    ~FormFacturaVenta() override;

    // ---- Procedures ------------------------------------------------------------------
    // The grid rebuilt; date, payment term, its labels and due dates, the line
    // and the totals cleared; the customer's rates back.
    void LimpiarDatosFactura();

    // ---- Event procedures ---------------------------------------------------------------
    void CommandDescripcionLarga_Click();
    void TextDescripcionLarga_LostFocus();
    // ORTA: the lines of a spreadsheet (importacion folder), each row played
    // through the line fields as a typist would.
    void CommandImportar_Click();
    // The print dialog, then the invoice (the job named after it) or its
    // receipts, printed from what the window shows.
    void Commandfactura_Click();
    void Commandrecibos_Click();
    // The print procedures: the invoice's header, lines and foot, and the
    // receipt of the due date chosen.
    void cabecerafactura();
    void detallefactura();
    void piefactura();
    void recibo();

protected:
    void CargarPropio() override;
    void BotonesDelModo() override;
    void CancelarPropio() override;
    void BotonesPropios() override;
    void BorrarPropio() override;
    void LimpiarAlElegir() override;
    void LineaLeida(Recordset& linea, bool desdeNumero) override;
    void DocumentoMostrado() override;
    QString TiendaSerie() const override;
    QString TiendaDocumentoGuardado() const override;
    void AntesDeLasLineas(const Paso& paso) override;
    QString DescripcionLarga() const override;
    QString EstadoModificado(const Paso& paso) override;
    QStringList SentenciasBorrado() const override;

private:
    bool EsOrta() const;
    // One row of the sheet through the line fields: reference, the question
    // when the sheet and the program differ, description, units, price,
    // discount (which accepts the line), long description.
    void ImportarFila(const class Libro& libro, int Fila);
    // The "MS" line of ORTA, once the product is found: the reference takes
    // the year and month, the description the name of the month before.
    void LineaMensual();

    // The invoice's own part of the screen's reading: the long description as
    // its lines joined by CR LF, and the account tick.
    void PantallaPropia(PantallaDocumento& p) const override;

    std::unique_ptr<Ui::FormFacturaVenta> propio;
};

} // namespace vel
