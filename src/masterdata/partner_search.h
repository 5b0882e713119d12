// Finding a customer or a supplier, and showing it: the piece that the
// customer and supplier windows, the account cards, the card listings and the
// sales documents share.
//
// PartnerLists: the four parallel lists Combonif, Combocodigo,
// Combonombrefiscal and Combonombrecomercial, each over its text box, and the
// word CampoBusqueda ("NIF", "CODIGO", "FISCAL", "COMERCIAL") of the list in
// use. Llenar fills them from four statements; buscanif finds the record of
// the list in use, sets the other three lists on it and calls the window's
// muestradatos.
//
// PartnerView: the fields of the record on the window. muestradatos reads the
// record of the NIF in Textnif and fills every field of the table, then looks
// up the names of bank, branch, payment term, VAT type and store into their
// labels. The same lookups run while a code box is edited (Codigo_LostFocus),
// and a double click on a label opens the list of names it looks up in
// (Etiqueta_DblClick, Lista_LostFocus).
//
// Both work on the controls of the window they are given, found by their
// names; which table they read (clientes or proveedores) is a PartnerTable.
// The window wires the events to them and keeps its own procedures: a
// window's muestradatos may do more than PartnerView's (a document also shows
// the VAT surcharge beside its totals).
#pragma once
#include "masterdata/partner_table.h"
#include "runtime/forms.h"

#include <QHash>
#include <QString>
#include <functional>
#include <vector>

class QLabel;
class QPlainTextEdit;

namespace vel {

class Recordset;

// The names of a window's four lists (the listings name them otherwise).
struct PartnerListNames {
    QString nif = QStringLiteral("Combonif");
    QString codigo = QStringLiteral("Combocodigo");
    QString fiscal = QStringLiteral("Combonombrefiscal");
    QString comercial = QStringLiteral("Combonombrecomercial");
};

class PartnerLists {
public:
    PartnerLists(QWidget* window, const PartnerTable& table, std::function<void()> muestradatos,
                 const PartnerListNames& names = PartnerListNames());

    // "NIF", "CODIGO", "FISCAL" or "COMERCIAL": the list the user is working in.
    QString CampoBusqueda;

    vb::ComboBox* Combonif;
    vb::ComboBox* Combocodigo;
    vb::ComboBox* Combonombrefiscal;
    vb::ComboBox* Combonombrecomercial;

    // Clears the four lists and fills them, each from its own statement walked
    // to the end:
    //   "SELECT * FROM clientes ORDER BY nif_cliente" into Combonif, and so on
    //   by codigo_cliente, nombrefiscal_cliente and nombrecomercial_cliente.
    // A row with an empty name adds nothing to a name list; after the walk one
    // empty entry is added if any such row was met.
    void Llenar();
    // Llenar, then the record of the first NIF shown (a search of the NIF
    // list); an empty table says "No hay datos disponibles" and gives false.
    bool LlenarYMostrarPrimero();
    void SetVisible(bool on);

    // GotFocus of a list: CampoBusqueda takes its word; the list's text is
    // selected.
    void Lista_GotFocus(const QString& palabra);
    // Click of a list: buscanif, only when CampoBusqueda is the list's word, so
    // that the positions buscanif gives the other lists start no search.
    void Lista_Click(const QString& palabra);

    // Copies the text of the list in use into its box, finds the record by that
    // box's text in upper case (exactly: no wild card, no partial match), sets
    // each other list on the first entry equal to the record's column and
    // copies it into its box, then calls muestradatos. With no record:
    // PartnerTable::notFound, and nothing else.
    void buscanif();

    // The statement of a search word and the text it looks for.
    QString SentenciaBusqueda(const QString& palabra, const QString& texto) const;

    // Adds an entry at the end of a list (a name changed in modify mode).
    void AddItem(vb::ComboBox* lista, const QString& entrada);

private:
    struct List {
        QString palabra;     // "NIF"
        const char* stem;    // "nif" -> nif_cliente
        vb::ComboBox* combo; // Combonif
        QWidget* box;        // Textnif
        bool name;           // a name list: empty names make one empty entry at the end
        // The position of the first entry of each text: what walking the list
        // from entry 0 finds, without walking 50,000 entries on every search.
        // It stands for the list while it has as many entries as it knows of.
        QHash<QString, int> first;
        int known = 0;
    };
    void Fill(List& l);
    static void Index(List& l, const QString& entrada);
    // The first entry equal to the text, or -1.
    static int FirstEntry(List& l, const QString& texto);
    List* Find(const QString& palabra);
    const List* Find(const QString& palabra) const;

    const PartnerTable& T;
    std::function<void()> muestradatos_;
    std::vector<List> lists_;
};

// The names looked up for the codes of the record: bank, branch, payment term,
// VAT type and store. One row a code box, as the windows list them; the
// statements of each are written out in PartnerView.
struct PartnerLookup {
    enum What { Banco, Sucursal, FormaPago, Iva, Tienda } what;
    const char* box;        // the code box: "Textbanco"
    const char* label;      // where the name goes: "Labelbanco"
    const char* nameColumn; // the name of the row: "nombre_banco" (the VAT row shows its percentages)
    const char* notFound;   // the label's text when the code has no row
    const char* next;       // the field the focus moves to after an edit
    const char* list;       // the list of names the label opens: "Combobanco"
    const char* codeColumn; // the code the list's row gives back: "codigo_banco"
};

// What tells the windows apart in their lookups: the column the VAT list
// shows, and the statement that finds the row of the entry chosen in it (the
// entry is joined to its end).
struct PartnerViewOptions {
    QString vatListColumn = QStringLiteral("codigo_iva");
    QString vatListRow = QStringLiteral("SELECT * FROM iva WHERE codigo_iva = ");
};

class PartnerView {
public:
    PartnerView(QWidget* window, const PartnerTable& table, const PartnerViewOptions& options);

    // The five lookups, in the order muestradatos runs them.
    static const std::vector<PartnerLookup>& Lookups();

    // Reads the record of the NIF in Textnif (upper-cased) and fills every field
    // of the table, each from its column as the field shows it; then the names
    // of the codes. An absent record is the engine's error: nothing traps it.
    void muestradatos();
    // The lookup of one code box into its label, as muestradatos runs it: the
    // label is emptied; with an empty box nothing else happens; with no row the
    // label says so; with a row the label takes the name.
    void BuscarNombre(const PartnerLookup& l);

    // LostFocus of a code box while editing: with an empty box nothing; with no
    // row "No existe ese código. Por favor, revíselo", the label invites to a
    // double click and the focus moves on (the VAT box keeps it); with a row the
    // label takes the name and the focus moves on.
    void Codigo_LostFocus(const PartnerLookup& l);
    // GotFocus of the VAT box: Labeliva shows.
    void Textcodigoiva_GotFocus();
    // DblClick of a lookup's label: with its code box enabled, the box is
    // emptied and the list of names shown, filled and its first entry chosen,
    // with the focus in it; an empty list says "No hay datos disponibles" and
    // hides again.
    void Etiqueta_DblClick(const PartnerLookup& l);
    // LostFocus of a list of names: the row of the chosen name gives its code to
    // the box, the name goes to the label, the list hides and the focus moves on.
    void Lista_LostFocus(const PartnerLookup& l);

    // The statements of a lookup, as they stand.
    QString SentenciaCodigo(const PartnerLookup& l) const;
    QString SentenciaLista(const PartnerLookup& l) const;
    QString EntradaLista(const PartnerLookup& l, const Recordset& rs) const;
    QString SentenciaNombre(const PartnerLookup& l, const QString& nombre) const;

    // A field's control and its value as it stands ("0"/"1" for a check box).
    QWidget* Control(const QString& name) const;
    QString Valor(const QString& name) const;
    void SetTexto(const QString& name, const QString& text) const;

    const PartnerTable& Table() const { return T; }

private:
    // The VAT row: its code into the box, the three percentages into their
    // labels, and Labeliva hidden.
    void MostrarIva(const Recordset& rs);
    QLabel* Etiqueta(const PartnerLookup& l) const;

    QWidget* window_;
    const PartnerTable& T;
    PartnerViewOptions options_;
};

// The lists a partner's record lays over its boxes: the four search lists,
// the lists of names of the lookups (bank, branch, payment term, VAT, store),
// the sales agent's list and Labeliva. Each keeps its place in the window
// while hidden, so that showing one moves nothing else.
void ConservarSitioDeLasListas(QWidget* window);
// A window that only shows the record (the account cards, the documents):
// the lists of names, the sales agent's list and Labeliva hidden, the tariff
// list off.
void OcultarListasDeNombres(QWidget* window);

} // namespace vel
