// FTpv: the point of sale. The operator of a store and warehouse scans or types
// articles into a ticket, takes the customer's money, and the ticket is stored
// in the day's tables (cabecera_diaria_ticket, detalle_diaria_ticket) and
// printed on the receipt printer. Prices carry their VAT throughout.
//
// The ticket being made lives only in ListTicket, one fixed-column entry a
// line (ticket_item.h); the totals live as text in the labels, the VAT by rate
// in three slots (ticket_vat.h). The one number outside the list is ivaactual,
// the rate of the article just found, a 32-bit float.
//
// The keyboard is the counter's: Enter after a scanned code finds the article
// and goes to the units; Enter in the units adds the line; Enter in
// TextEntregado charges. Releasing Page Down in any control charges too, F5 to
// F9 run the buttons of the same names (which do nothing), F12 nothing.
//
// No step of a sale is in a transaction, and no statement has an error trap: a
// statement that fails ends the program with the runtime's message, leaving
// what was already written (a counter moved, a header without its lines).
#pragma once
#include "pos/ticket_statements.h"
#include "runtime/forms.h"
#include <QString>
#include <memory>

namespace Ui { class FTpv; }

namespace vel {

class FTpv : public vb::Form {
    Q_OBJECT
public:
    explicit FTpv(QWidget* parent = nullptr);
    ~FTpv() override;

    void Borrar();
    void CargarTienda();
    void CargarAlmacen();
    void CargarOperador();
    void CargarNumeroTicket();
    // "REFERENCIA" or "DESCRIPCION"; true when an article was found.
    bool BuscarProducto(const QString& campo);
    void Pulsar(int KeyCode);

    // The ticket, printed at the end of CommandCobrar with no dialog on the
    // current printer, on the receipt roll: the letterhead of the installation,
    // the date, number and lines, and the total with the closing words.
    void CabeceraTicket();
    void DetalleTicket(const ticket::Venta& venta);
    void PieTicket(const ticket::Venta& venta);

    void CommandAñadir_Click();
    void CommandCobrar_Click();
    void CommandAnular_Click();
    void Commandborrar_Click();
    // The touch buttons F5 to F9 and F12: shown and callable, they do nothing.
    void CommandCobros_Click();
    void CommandPagos_Click();
    void CommandCambio_Click();
    void CommandCajon_Click();
    void CommandConfig_Click();
    void CommandSuspender_Click();

    void ComboTienda_Click();
    void ListTicket_DblClick();
    void Textreferencia_KeyPress(int& KeyAscii);
    void Textdescripcion_KeyPress(int& KeyAscii);
    void TextUnidades_KeyPress(int& KeyAscii);
    void TextImporte_KeyPress(int& KeyAscii);
    void TextEntregado_KeyPress(int& KeyAscii);
    void TextEntregado_GotFocus();

    float ivaactual() const { return ivaactual_; }
    QString ClientePrograma() const { return ClientePrograma_; }

protected:
    void Form_Load() override;

    // The values a sale is stored with, as the window holds them.
    QString Tienda() const;    // Val of the first two characters of ComboTienda
    QString Ejercicio() const; // the last four characters of today's date
    QString NumeroTicket() const; // Val of ComboTicket
    // The sale as the window shows it, read once when it is charged.
    ticket::Venta Venta() const;
    // The statements of CommandCobrar on the window as it stands: the header,
    // and one line of the list.
    QString SentenciaCabecera() const;
    QString SentenciaLinea(const QString& entrada) const;

private:
    void CargarLista(vb::ComboBox* combo, const QString& sql, const QString& codigo, const QString& nombre);
    // The money of a line goes into (+1) or out of (-1) LabelImporte, Labeltotal
    // and the VAT slot of its rate.
    void MueveImportes(double importe, int signo);

    std::unique_ptr<Ui::FTpv> ui;
    float ivaactual_ = 0;
    QString ClientePrograma_;
};

} // namespace vel
