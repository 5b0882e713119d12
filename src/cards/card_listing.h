// The account card listings: Faclistado (customers) and Faplistado
// (suppliers), one window on two tables. The user picks one customer or all,
// a year and an interval of dates, and which entries enter (all, collected,
// not collected); BotonListadofcl builds the extract of the cards as lines of
// fixed width in Listapuntes, the preview, and BotonImprimirfcl sends those
// lines to the printer, 37 to a page under a head of the installation.
//
// What tells the two windows apart is data (TextosListado): the tables, the
// order in which the two amounts of an entry are read (the supplier's card
// keeps them mirrored), the control names' endings and the texts, misprints
// included ("Cód. proveedordor: ", "LISTADO DE UN proENTE O DE TODOS").
#pragma once
#include "runtime/common_dialog.h"
#include "runtime/forms.h"
#include <QDate>
#include <QStringList>
#include <memory>

namespace Ui { class CardListing; }

namespace vb { class LineList; class PrinterObject; }

namespace vel {

class Recordset;

struct TextosListado {
    QString ventana;           // "Faclistado"
    QString titulo;            // the window's caption
    QString finLista;          // "cli": Combonifcli, Combocodcli ...
    QString finBoton;          // "fcl": BotonListadofcl ...
    QString tabla;             // "clientes"
    QString sufijo;            // "_cliente": nif_cliente ...
    QString detalle;           // "detalle_fichas_clientes"
    // The two amounts of a line, in the order the DEBE and HABER columns of
    // the extract read them: the supplier's card stores them the other way
    // round, so its extract reads haber first.
    QString primerImporte;     // "debe"
    QString segundoImporte;    // "haber"
    QString opcionUno;         // "Un cliente"
    QString tituloExtracto;    // "EXTRACTO DE FICHAS DE CLIENTES"
    QString codigoCabecera;    // "Cód. Cliente: "
    QString ayudaSeleccion;    // "LISTADO DE UN CLIENTE O DE TODOS"
    QString etiquetaCodigo;    // "Código de Cliente:"
    QString paginaDatos;       // caption of the data page
    // The customer's page shows VAT, store and sales agent; the supplier's has none.
    bool datosDeVenta = true;
};

const TextosListado& TextosFaclistado();
const TextosListado& TextosFaplistado();

class ListadoFichas : public vb::Form {
    Q_OBJECT
public:
    explicit ListadoFichas(const TextosListado& textos, QWidget* parent = nullptr);
    ~ListadoFichas() override;

    const TextosListado& Textos() const { return T; }

    // The procedures of the window (the supplier's bear "pro" and "fpr" in
    // its control names; the procedures are the same).
    void Optiontodos_Click();
    void Optionuno_Click();
    void Textejer_Change();
    void Combonifcli_Click();
    // Click of Combocodcli, Combonomfiscli, Combonomcomcli: the same ListIndex to Combonifcli.
    void Lista_Click(vb::ComboBox* lista);
    // Days and months are rewritten through "00" on leaving the box.
    void DosCifras_LostFocus(QLineEdit* caja);
    void BotonListadofcl_Click();
    void BotonImprimirfcl_Click();
    void BotonCerrarfcl_Click();
    void Cancelar_Click();

    // The statement of the entries: one customer, or all.
    QString SentenciaApuntes() const;
    // The date of an entry ("dd/mm/yyyy") and of an end of the interval, as yyyymmdd.
    static double FechaNumero(const QString& fecha);
    double InicioIntervalo() const;
    double FinIntervalo() const;

    // The 90-wide working string: the line is cut at `columna` less the length
    // of `bruto` (the amount as the engine gives it) and `importe` follows;
    // then it is padded to 90 again.
    static QString Coloca(const QString& linea, int columna, const QString& bruto, const QString& importe);
    static QString Rellena(const QString& linea);
    // The three sums of a subtotal or total line, placed by the rule of 60, 70, 81.
    static QString LineaDeSumas(const QString& rotulo, float debe, float haber, float saldo);

    // Printing, as the window's own procedures.
    void ImprimeCabeceraPagina(vb::PrinterObject& printer, int pagina, int paginas);
    void ImprimeCabecera(vb::PrinterObject& printer);
    void HaySaltoPagina(vb::PrinterObject& printer, const QString& texto);
    void ImprimePie(vb::PrinterObject& printer);
    static int Paginas(int lineas);

    // The sums of the last listing: DEBE, HABER and the running total.
    float TotalDebe() const { return totalDebe_; }
    float TotalHaber() const { return totalHaber_; }
    float Total() const { return total_; }

    vb::CommonDialog* CommonDialog2;

protected:
    void Form_Load() override;
    // Form_QueryUnload: refused while a listing stands.
    void closeEvent(QCloseEvent* e) override;

private:
    QWidget* Nombrado(const QString& nombreCliente) const;
    void Habilita(bool on);
    void MuestraDatosDeVenta();
    QString LineaDeCliente(const QString& nif, const QString& codigo) const;
    void ImprimeListado();
    void AyudasDeRaton();

    const TextosListado& T;
    std::unique_ptr<Ui::CardListing> ui;
    QString ClientePrograma;
    bool imprimiendo_ = false;
    bool cancelado_ = false;
    int paginas_ = 0;
    float totalDebe_ = 0, totalHaber_ = 0, total_ = 0;
};

// The two windows the menu opens.
class Faclistado : public ListadoFichas {
    Q_OBJECT
public:
    explicit Faclistado(QWidget* parent = nullptr) : ListadoFichas(TextosFaclistado(), parent) {}
};

class Faplistado : public ListadoFichas {
    Q_OBJECT
public:
    explicit Faplistado(QWidget* parent = nullptr) : ListadoFichas(TextosFaplistado(), parent) {}
};

} // namespace vel
