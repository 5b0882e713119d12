// FormAlbaranVenta: the delivery notes of the current store. A note belongs to
// a customer chosen first in the window's customer tab, is numbered from the
// counter 'AV' of the store and year, and is written as a header and its lines,
// one statement at a time; a modification deletes the note and writes it again,
// keeping its state.
//
// The window is the shared document window (document_window.h) with its own
// controls: the state of the note (LabelEstado), the print choice
// (ComboProforma, CheckProforma) and the two print buttons (CommandImprimir,
// CommandEnviar). Its own ways: the store of the documents (TiendaDocumento),
// the state warnings on opening a note, the state kept by a modification, and
// the save report into erralbar.txt.
//
// Printing reads what the window shows, saved or not: CommandImprimir prints
// the note (cabeceraalbaran, detallealbaran, piealbaran), CommandEnviar its
// receipt (recibo), each procedure handing the shared layout code the
// controls as they stand (Ventana). The window never turns CommandEnviar on.
#pragma once
#include "sales/document_window.h"

namespace Ui {
class FormAlbaranVenta;
}

namespace vel {

class FormAlbaranVenta : public DocumentWindow {
    Q_OBJECT
public:
    explicit FormAlbaranVenta(QWidget* parent = nullptr);
    ~FormAlbaranVenta() override;

    // The store of the notes made here: config.ini's store at load; the store of
    // a stored note's last line once it is opened.
    QString TiendaDocumento;

    // The print buttons: the note, and (in spite of its caption) its receipt.
    void CommandImprimir_Click();
    void CommandEnviar_Click();

    // ---- Print procedures: they read what the window shows now ----------------------
    void cabeceraalbaran();
    void detallealbaran();
    void piealbaran();
    void recibo();

protected:
    void CargarPropio() override;
    void BotonesDelModo() override;
    void CancelarPropio() override;
    void BotonesPropios() override;
    void BorrarPropio() override;
    void CabeceraLeida(Recordset& cabecera) override;
    void LineaLeida(Recordset& linea, bool desdeNumero) override;
    QString TiendaSerie() const override;
    QString TiendaDocumentoGuardado() const override;
    QString EstadoModificado(const Paso& paso) override;
    QStringList SentenciasBorrado() const override;

private:
    void BuscarTienda(const QString& nombreTienda);
    // The note's own word for the document in the screen's reading.
    void PantallaPropia(PantallaDocumento& p) const override;

    std::unique_ptr<Ui::FormAlbaranVenta> propio;
};

} // namespace vel
