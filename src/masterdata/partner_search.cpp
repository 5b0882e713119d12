#include "masterdata/partner_search.h"

#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "core/window_controls.h"
#include "runtime/msgbox.h"
#include "runtime/vb.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace vel {

namespace {

const QString kDobleClick = QStringLiteral("> > > Doble click para seleccionar < < <");

template <class W>
W* Required(QWidget* window, const QString& name) {
    return ControlRequerido<W>(window, name);
}

void SetText(QWidget* w, const QString& text) {
    if (auto* t = qobject_cast<QLineEdit*>(w)) t->setText(text);
    else if (auto* p = qobject_cast<QPlainTextEdit*>(w)) p->setPlainText(text);
    else if (auto* l = qobject_cast<QLabel*>(w)) l->setText(text);
    else if (auto* c = qobject_cast<vb::ComboBox*>(w)) c->SetText(text);
}

QString Text(const QWidget* w) {
    if (auto* t = qobject_cast<const QLineEdit*>(w)) return t->text();
    if (auto* p = qobject_cast<const QPlainTextEdit*>(w)) return p->toPlainText();
    if (auto* c = qobject_cast<const QCheckBox*>(w)) return QString::number(vb::Value(c));
    if (auto* c = qobject_cast<const vb::ComboBox*>(w)) return c->Text();
    if (auto* l = qobject_cast<const QLabel*>(w)) return l->text();
    return QString();
}

} // namespace

// ---- The four lists ----------------------------------------------------------------

PartnerLists::PartnerLists(QWidget* window, const PartnerTable& table, std::function<void()> muestradatos,
                           const PartnerListNames& names)
    : Combonif(Required<vb::ComboBox>(window, names.nif)),
      Combocodigo(Required<vb::ComboBox>(window, names.codigo)),
      Combonombrefiscal(Required<vb::ComboBox>(window, names.fiscal)),
      Combonombrecomercial(Required<vb::ComboBox>(window, names.comercial)),
      T(table),
      muestradatos_(std::move(muestradatos)) {
    // Each list over its box, in the order buscanif sets them.
    lists_ = {
        {QStringLiteral("NIF"), "nif", Combonif, Required<QWidget>(window, QStringLiteral("Textnif")), false, {}, 0},
        {QStringLiteral("CODIGO"), "codigo", Combocodigo, Required<QWidget>(window, QStringLiteral("Textcodigo")), false, {}, 0},
        {QStringLiteral("FISCAL"), "nombrefiscal", Combonombrefiscal,
         Required<QWidget>(window, QStringLiteral("Textnombrefiscal")), true, {}, 0},
        {QStringLiteral("COMERCIAL"), "nombrecomercial", Combonombrecomercial,
         Required<QWidget>(window, QStringLiteral("Textnombrecomercial")), true, {}, 0},
    };
}

const PartnerLists::List* PartnerLists::Find(const QString& palabra) const {
    for (const List& l : lists_)
        if (l.palabra == palabra) return &l;
    return nullptr;
}

PartnerLists::List* PartnerLists::Find(const QString& palabra) {
    for (List& l : lists_)
        if (l.palabra == palabra) return &l;
    return nullptr;
}

void PartnerLists::Index(List& l, const QString& entrada) {
    // A repeated text keeps the position of its first entry.
    if (!l.first.contains(entrada)) l.first.insert(entrada, l.known);
    ++l.known;
}

int PartnerLists::FirstEntry(List& l, const QString& texto) {
    if (l.known != l.combo->ListCount()) {
        l.first.clear();
        l.known = 0;
        for (int i = 0; i < l.combo->ListCount(); ++i) Index(l, l.combo->List(i));
    }
    return l.first.value(texto, -1);
}

void PartnerLists::AddItem(vb::ComboBox* lista, const QString& entrada) {
    lista->AddItem(entrada);
    for (List& l : lists_)
        if (l.combo == lista && l.known == lista->ListCount() - 1) Index(l, entrada);
}

void PartnerLists::SetVisible(bool on) {
    for (const List& l : lists_) vb::SetVisible(l.combo, on);
}

bool PartnerLists::LlenarYMostrarPrimero() {
    Llenar();
    if (Combonif->ListCount() < 1) {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"));
        return false;
    }
    CampoBusqueda = QStringLiteral("NIF");
    Combonif->SetListIndex(0);
    return true;
}

namespace {
// The lists of names over the record's boxes, by their names in the window.
const char* const kListasDeNombres[] = {"Combobanco", "Combosucursal", "Comboformapago", "Comboiva",
                                        "Labeliva",   "Combotienda",   "Combocomercial"};
const char* const kListasDeBusqueda[] = {"Combonif", "Combocodigo", "Combonombrefiscal", "Combonombrecomercial"};
} // namespace

void ConservarSitioDeLasListas(QWidget* window) {
    QList<QWidget*> listas;
    for (const char* n : kListasDeBusqueda) listas << ControlRequerido<QWidget>(window, QString::fromLatin1(n));
    for (const char* n : kListasDeNombres) listas << ControlRequerido<QWidget>(window, QString::fromLatin1(n));
    for (QWidget* w : listas) {
        QSizePolicy p = w->sizePolicy();
        p.setRetainSizeWhenHidden(true);
        w->setSizePolicy(p);
    }
}

void OcultarListasDeNombres(QWidget* window) {
    for (const char* n : kListasDeNombres) vb::SetVisible(ControlRequerido<QWidget>(window, QString::fromLatin1(n)), false);
    vb::SetEnabled(ControlRequerido<QWidget>(window, QStringLiteral("Combotarifa")), false);
}

void PartnerLists::Llenar() {
    for (List& l : lists_) {
        l.combo->Clear();
        l.first.clear();
        l.known = 0;
    }
    for (List& l : lists_) Fill(l);
}

void PartnerLists::Fill(List& l) {
    const QString columna = T.Column(l.stem);
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM " + T.table + " ORDER BY " + columna);
    bool nombreVacio = false;
    QStringList entradas;
    while (!Registro->Eof()) {
        const QString valor = TextoCampo(*Registro, columna);
        if (l.name && valor.isEmpty()) nombreVacio = true;
        else entradas << valor;
        Registro->MoveNext();
    }
    // However many rows have no name, the list has one empty entry, at the end.
    if (nombreVacio) entradas << QString();
    l.combo->AddItems(entradas);
    for (const QString& e : entradas) Index(l, e);
}

// The list takes the search; as any field, it selects its whole text, so that a
// name typed into an editable list replaces the one shown.
void PartnerLists::Lista_GotFocus(const QString& palabra) {
    CampoBusqueda = palabra;
    if (const List* l = Find(palabra)) vb::SelectAll(l->combo);
}

void PartnerLists::Lista_Click(const QString& palabra) {
    if (CampoBusqueda == palabra) buscanif();
}

QString PartnerLists::SentenciaBusqueda(const QString& palabra, const QString& texto) const {
    const List* l = Find(palabra);
    return "SELECT * FROM " + T.table + " WHERE " + T.Column(l->stem) + " = " + sql::Comillas(texto);
}

void PartnerLists::buscanif() {
    List* enUso = Find(CampoBusqueda);
    if (!enUso) return;
    SetText(enUso->box, enUso->combo->Text());
    auto Registro = BaseDatos->OpenRecordset(SentenciaBusqueda(enUso->palabra, vb::UCase(Text(enUso->box))));
    if (Registro->Eof()) {
        vb::MsgBox(T.notFound, vb::vbOKOnly);
        return;
    }
    // Two records of the same name: the first row the engine gives is the one
    // shown, and the other lists follow it.
    for (List& otra : lists_) {
        if (&otra == enUso) continue;
        // The first entry equal to the record's column; the first of the list
        // when none is.
        int posicion = FirstEntry(otra, TextoCampo(*Registro, T.Column(otra.stem)));
        if (posicion < 0) posicion = 0;
        otra.combo->SetListIndex(posicion);
        SetText(otra.box, otra.combo->Text());
    }
    muestradatos_();
}

// ---- The record shown ----------------------------------------------------------------

const std::vector<PartnerLookup>& PartnerView::Lookups() {
    static const std::vector<PartnerLookup> lookups = {
        {PartnerLookup::Banco, "Textbanco", "Labelbanco", "nombre_banco",
         "No existe el banco. Por favor, revíselo", "Textsucursal", "Combobanco", "codigo_banco"},
        {PartnerLookup::Sucursal, "Textsucursal", "Labelsucursal", "nombre_sucursal",
         "No existe la sucursal. Por favor, revíselo", "Textdigitocontrol", "Combosucursal", "codigo_sucursal"},
        {PartnerLookup::FormaPago, "Textformapago", "Labelformapago", "nombre_formapago",
         "No existe la forma de pago. Por favor, revíselo", "Textdescuentoarticulo", "Comboformapago",
         "codigo_formapago"},
        // A VAT code found shows the type's three percentages; one not found
        // keeps the focus in its box. Its list leads to the tariff.
        {PartnerLookup::Iva, "Textcodigoiva", "Labeliva", nullptr, "No existe el IVA. Por favor, revíselo",
         "Combotarifa", "Comboiva", "codigo_iva"},
        {PartnerLookup::Tienda, "Textcodigotienda", "Labeltienda", "nombre_tienda",
         "No existe esa tienda. Por favor, revíselo", "Textcodigocomercial", "Combotienda", "codigo_tienda"},
    };
    return lookups;
}

PartnerView::PartnerView(QWidget* window, const PartnerTable& table, const PartnerViewOptions& options)
    : window_(window), T(table), options_(options) {
    for (const PartnerField& f : T.Fields()) Required<QWidget>(window_, QLatin1String(f.control));
    // A window has the lookups whose code box it has; each needs its label.
    for (const PartnerLookup& l : Lookups())
        if (window_->findChild<QWidget*>(QLatin1String(l.box))) Etiqueta(l);
}

QWidget* PartnerView::Control(const QString& name) const { return Required<QWidget>(window_, name); }
QString PartnerView::Valor(const QString& name) const { return Text(Control(name)); }
void PartnerView::SetTexto(const QString& name, const QString& text) const { SetText(Control(name), text); }
QLabel* PartnerView::Etiqueta(const PartnerLookup& l) const {
    return Required<QLabel>(window_, QLatin1String(l.label));
}

// The statements of the lookups, by code and by name, as the window sends them.
QString PartnerView::SentenciaCodigo(const PartnerLookup& l) const {
    const QString codigo = Valor(QLatin1String(l.box));
    switch (l.what) {
    case PartnerLookup::Banco: return "SELECT * FROM bancos WHERE codigo_banco = " + sql::Comillas(codigo);
    case PartnerLookup::Sucursal:
        return "SELECT * FROM bancos_sucursales WHERE codigo_sucursal = " + sql::Comillas(codigo) + " AND codigo_banco = " +
               sql::Comillas(Valor(QStringLiteral("Textbanco")));
    case PartnerLookup::FormaPago: return "SELECT * FROM formapago WHERE codigo_formapago = " + sql::Comillas(codigo);
    case PartnerLookup::Iva: return "SELECT * FROM iva WHERE codigo_iva = " + codigo;
    case PartnerLookup::Tienda: return "SELECT * FROM tienda WHERE codigo_tienda = " + vb::CStr(vb::Val(codigo));
    }
    return QString();
}

QString PartnerView::SentenciaLista(const PartnerLookup& l) const {
    switch (l.what) {
    case PartnerLookup::Banco: return QStringLiteral("SELECT * FROM bancos ORDER BY nombre_banco");
    case PartnerLookup::Sucursal:
        return "SELECT * FROM bancos_sucursales WHERE codigo_banco = " + sql::Comillas(Valor(QStringLiteral("Textbanco"))) +
               " ORDER BY nombre_sucursal";
    case PartnerLookup::FormaPago: return QStringLiteral("SELECT * FROM formapago ORDER BY nombre_formapago");
    case PartnerLookup::Iva: return QStringLiteral("SELECT * FROM iva ORDER BY iva");
    case PartnerLookup::Tienda: return QStringLiteral("SELECT * FROM tienda ORDER BY nombre_tienda");
    }
    return QString();
}

QString PartnerView::EntradaLista(const PartnerLookup& l, const Recordset& rs) const {
    if (l.what == PartnerLookup::Iva) return TextoCampo(rs, options_.vatListColumn);
    return TextoCampo(rs, QLatin1String(l.nameColumn));
}

// The branch is found by its name alone: a name under two banks finds the
// first of them.
QString PartnerView::SentenciaNombre(const PartnerLookup& l, const QString& nombre) const {
    switch (l.what) {
    case PartnerLookup::Banco: return "SELECT * FROM bancos WHERE nombre_banco = " + sql::Comillas(nombre);
    case PartnerLookup::Sucursal: return "SELECT * FROM bancos_sucursales WHERE nombre_sucursal = " + sql::Comillas(nombre);
    case PartnerLookup::FormaPago: return "SELECT * FROM formapago WHERE nombre_formapago = " + sql::Comillas(nombre);
    case PartnerLookup::Iva: return options_.vatListRow + nombre;
    case PartnerLookup::Tienda: return "SELECT * FROM tienda WHERE nombre_tienda= " + sql::Comillas(nombre);
    }
    return QString();
}

void PartnerView::muestradatos() {
    auto Registro = BaseDatos->OpenRecordset("SELECT * FROM " + T.table + " WHERE " + T.Column("nif") + " = " +
                                             sql::Comillas(vb::UCase(Valor(QStringLiteral("Textnif")))));
    for (const PartnerField& f : T.Fields()) {
        const QString columna = T.Column(f.stem);
        QWidget* control = Control(QLatin1String(f.control));
        switch (f.show) {
        case PartnerShow::Text: SetText(control, TextoCampo(*Registro, columna)); break;
        case PartnerShow::Mask:
            SetText(control, vb::Format(TextoCampo(*Registro, columna), QLatin1String(f.showMask)));
            break;
        case PartnerShow::Check:
            vb::SetValue(static_cast<QCheckBox*>(control), int(Registro->Fields(columna).num()));
            break;
        case PartnerShow::ListIndex:
            // A tariff of 0 leaves the list with no entry chosen.
            static_cast<vb::ComboBox*>(control)->SetListIndex(int(vb::Val(TextoCampo(*Registro, columna))) - 1);
            break;
        }
    }
    // The sales agent has a label but no lookup: it is only emptied.
    if (auto* comercial = window_->findChild<QLabel*>(QStringLiteral("Labelcomercial"))) comercial->setText(QString());
    for (const PartnerLookup& l : Lookups())
        if (window_->findChild<QWidget*>(QLatin1String(l.box))) BuscarNombre(l);
}

void PartnerView::BuscarNombre(const PartnerLookup& l) {
    QLabel* etiqueta = Etiqueta(l);
    etiqueta->setText(QString());
    if (Valor(QLatin1String(l.box)).isEmpty()) return;
    auto Registro = BaseDatos->OpenRecordset(SentenciaCodigo(l));
    if (Registro->Eof()) {
        etiqueta->setText(QString::fromUtf8(l.notFound));
        return;
    }
    if (l.what == PartnerLookup::Iva) MostrarIva(*Registro);
    else etiqueta->setText(TextoCampo(*Registro, QLatin1String(l.nameColumn)));
}

void PartnerView::MostrarIva(const Recordset& rs) {
    SetTexto(QStringLiteral("Textcodigoiva"), TextoCampo(rs, QStringLiteral("codigo_iva")));
    Required<QLabel>(window_, QStringLiteral("Labelivaiva"))->setText(TextoCampo(rs, QStringLiteral("iva")));
    Required<QLabel>(window_, QStringLiteral("Labelivare"))->setText(TextoCampo(rs, QStringLiteral("RecargoEquivalencia")));
    Required<QLabel>(window_, QStringLiteral("Labelivaret"))->setText(TextoCampo(rs, QStringLiteral("retencion")));
    vb::SetVisible(Required<QLabel>(window_, QStringLiteral("Labeliva")), false);
}

void PartnerView::Codigo_LostFocus(const PartnerLookup& l) {
    if (Valor(QLatin1String(l.box)).isEmpty()) return;
    auto Registro = BaseDatos->OpenRecordset(SentenciaCodigo(l));
    if (Registro->Eof()) {
        vb::MsgBox(QStringLiteral("No existe ese código. Por favor, revíselo"), vb::vbOKOnly);
        Etiqueta(l)->setText(kDobleClick);
        vb::SetFocus(Control(QLatin1String(l.what == PartnerLookup::Iva ? l.box : l.next)));
        return;
    }
    if (l.what == PartnerLookup::Iva) MostrarIva(*Registro);
    else Etiqueta(l)->setText(TextoCampo(*Registro, QLatin1String(l.nameColumn)));
    vb::SetFocus(Control(QLatin1String(l.next)));
}

void PartnerView::Textcodigoiva_GotFocus() { vb::SetVisible(Required<QLabel>(window_, QStringLiteral("Labeliva")), true); }

void PartnerView::Etiqueta_DblClick(const PartnerLookup& l) {
    QWidget* caja = Control(QLatin1String(l.box));
    if (!vb::Enabled(caja)) return;
    SetText(caja, QString());
    auto* lista = Required<vb::ComboBox>(window_, QLatin1String(l.list));
    vb::SetVisible(lista, true);
    lista->Clear();
    auto Registro = BaseDatos->OpenRecordset(SentenciaLista(l));
    while (!Registro->Eof()) {
        lista->AddItem(EntradaLista(l, *Registro));
        Registro->MoveNext();
    }
    if (lista->ListCount() >= 1) {
        lista->SetListIndex(0);
        vb::SetFocus(lista);
    } else {
        vb::MsgBox(QStringLiteral("No hay datos disponibles"), vb::vbOKOnly);
        vb::SetVisible(lista, false);
    }
}

void PartnerView::Lista_LostFocus(const PartnerLookup& l) {
    auto* lista = Required<vb::ComboBox>(window_, QLatin1String(l.list));
    auto Registro = BaseDatos->OpenRecordset(SentenciaNombre(l, lista->Text()));
    SetTexto(QLatin1String(l.box), TextoCampo(*Registro, QLatin1String(l.codeColumn)));
    Etiqueta(l)->setText(lista->Text());
    if (l.what == PartnerLookup::Iva) MostrarIva(*Registro);
    vb::SetVisible(lista, false);
    vb::SetFocus(Control(QLatin1String(l.next)));
}

} // namespace vel
