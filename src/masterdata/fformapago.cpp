#include "masterdata/fformapago.h"

#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "runtime/vb.h"
#include "ui_fformapago.h"

namespace vel {

namespace {
// dias01_formapago .. dias12_formapago for the boxes 0 .. 11.
QString ColumnaDias(int i) {
    return QStringLiteral("dias") + vb::Format(i + 1, sql::kMascaraDosCifras) + QStringLiteral("_formapago");
}
} // namespace

Fformapago::Fformapago(QWidget* parent)
    : CodeListWindow(parent), ui(std::make_unique<Ui::Fformapago>()) {
    setObjectName(QStringLiteral("Fformapago"));
    ui->setupUi(this);
    Textvencimientos = ui->Textvencimientos;
    OptionC = ui->OptionC;
    OptionN = ui->OptionN;
    Textven = {ui->Textven_0, ui->Textven_1, ui->Textven_2, ui->Textven_3,
               ui->Textven_4, ui->Textven_5, ui->Textven_6, ui->Textven_7,
               ui->Textven_8, ui->Textven_9, ui->Textven_10, ui->Textven_11};
    for (int i = 0; i < 12; ++i) Textven[i]->setObjectName(QStringLiteral("Textven(%1)").arg(i));

    // Texto flips the code, the name and the number of due dates, not the day
    // boxes: those follow the number of due dates (Textvencimientos_LostFocus).
    // Borrar empties all fifteen boxes.
    MontarListaCodigos({.botones = BotonesDe(*ui),
                        .texto = {ui->Textcodigo, ui->Textnombre, Textvencimientos},
                        .borrar = {ui->Textcodigo, ui->Textnombre, Textvencimientos, Textven[0], Textven[1],
                                   Textven[2], Textven[3], Textven[4], Textven[5], Textven[6], Textven[7],
                                   Textven[8], Textven[9], Textven[10], Textven[11]}},
                       {.Textcodigo = ui->Textcodigo, .Textnombre = ui->Textnombre, .Combocodigo = ui->Combocodigo});
    // The number of due dates and the days take digits only.
    FiltrarTeclas({Textvencimientos, Textven[0], Textven[1], Textven[2], Textven[3], Textven[4], Textven[5],
                   Textven[6], Textven[7], Textven[8], Textven[9], Textven[10], Textven[11]},
                  SoloDigitos);

    OnClick(OptionC, [this] { OptionC_Click(); });
    OnClick(OptionN, [this] { OptionN_Click(); });
    OnLostFocus(Textvencimientos, [this] { Textvencimientos_LostFocus(); });
}

Fformapago::~Fformapago() = default;

void Fformapago::Form_Load() {
    vb::SetEnabled(OptionC, false);
    vb::SetEnabled(OptionN, false);
    Borrar();
    Texto();
    for (QLineEdit* caja : Textven) vb::SetEnabled(caja, false);
    vb::SetVisible(Combocodigo, false);
    ModoVentana = Modo::Ninguno;
}

// Consultar, Borrar and Modificar set the buttons one by one instead of flipping
// them with Botones, so running them again is harmless to the buttons: the
// order options run them again to refill the list.
void Fformapago::BotonesDeModo() {
    vb::SetEnabled(Commandnuevo, false);
    vb::SetEnabled(Commandborrar, false);
    vb::SetEnabled(Commandconsultar, false);
    vb::SetEnabled(Commandmodificar, false);
    vb::SetEnabled(Commandaceptar, true);
    vb::SetEnabled(OptionC, true);
    vb::SetEnabled(OptionN, true);
    vb::SetVisible(Combocodigo, true);
}

// The options run again the button of the current mode; in "N" or idle, nothing.
// Modificar's Texto is still a toggle: a change of order while modifying flips
// the code, name and due-date boxes off (and a second change flips them on).
void Fformapago::RepetirModo() {
    if (ModoVentana == Modo::Consultar) Commandconsultar_Click();
    else if (ModoVentana == Modo::Borrar) Commandborrar_Click();
    else if (ModoVentana == Modo::Modificar) Commandmodificar_Click();
}

void Fformapago::OptionC_Click() { RepetirModo(); }
void Fformapago::OptionN_Click() { RepetirModo(); }

QString Fformapago::SentenciaLista() const {
    if (vb::Value(OptionC)) return QStringLiteral("SELECT * FROM formapago ORDER BY codigo_formapago");
    return QStringLiteral("SELECT * FROM formapago ORDER BY nombre_formapago");
}

// The entries are fixed columns, read back by position in Combocodigo_Click:
//  - by code: the code followed by 54 blanks and cut to its first 3 characters,
//    that is, the code padded with blanks to three characters; then "/" and the
//    name. "CO" gives "CO /CONTADO".
//  - by name: the name padded with blanks to 50 characters, "/" and the code.
QString Fformapago::EntradaCombo(const Recordset& rs) const {
    const QString codigo = rs.Fields(QStringLiteral("codigo_formapago")).str();
    const QString nombre = rs.Fields(QStringLiteral("nombre_formapago")).str();
    if (vb::Value(OptionC)) return vb::Left(codigo + vb::Space(54), 3) + "/" + nombre;
    return vb::Left(nombre + vb::Space(50), 50) + "/" + codigo;
}

// The key is taken by position, padding included: a code of fewer than three
// characters, or a name of fewer than fifty, is searched with its blanks.
QString Fformapago::SentenciaEntradaElegida() const {
    if (vb::Value(OptionC))
        return "SELECT * FROM formapago WHERE codigo_formapago = " + sql::Comillas(vb::Left(Combocodigo->Text(), 3));
    return "SELECT * FROM formapago WHERE nombre_formapago = " + sql::Comillas(vb::Left(Combocodigo->Text(), 50));
}

void Fformapago::Combocodigo_Click() {
    auto Registro = BaseDatos->OpenRecordset(SentenciaEntradaElegida());
    Textcodigo->setText(Registro->Fields(QStringLiteral("codigo_formapago")).str());
    Textnombre->setText(Registro->Fields(QStringLiteral("nombre_formapago")).str());
    Textvencimientos->setText(vb::Format(Registro->Fields(QStringLiteral("vencimientos_formapago")).num(), QStringLiteral("#")));
    for (int i = 0; i < 12; ++i)
        Textven[i]->setText(vb::Format(Registro->Fields(ColumnaDias(i)).num(), QStringLiteral("#")));
    // While modifying, enable the day boxes of the term's due dates.
    if (ModoVentana == Modo::Modificar) Textvencimientos_LostFocus();
}

void Fformapago::Textvencimientos_LostFocus() {
    if (vb::Val(Textvencimientos->text()) <= 0) Textvencimientos->setText(QStringLiteral("1"));
    if (vb::Val(Textvencimientos->text()) > 12) Textvencimientos->setText(QStringLiteral("12"));
    // The text of a disabled box is kept: a term cut from 4 to 2 due dates still
    // stores its old days 3 and 4.
    for (int i = 0; i < 12; ++i) {
        if (i >= vb::Val(Textvencimientos->text())) vb::SetEnabled(Textven[i], false);
        else vb::SetEnabled(Textven[i], true);
    }
}

QString Fformapago::SentenciaBuscarCodigo(const QString& codigo) const {
    return "SELECT * FROM formapago WHERE codigo_formapago = " + sql::Comillas(codigo);
}

QString Fformapago::SentenciaInsertar() const {
    QStringList valores = {sql::ComillasMayusculas(Textcodigo->text()), sql::ComillasMayusculas(Textnombre->text()),
                           sql::Numero(Textvencimientos->text())};
    for (QLineEdit* caja : Textven) valores << sql::Numero(caja->text());
    return "INSERT INTO formapago VALUES (" + sql::Valores(valores) + ")";
}

QString Fformapago::SentenciaModificar() const {
    QString sentencia = "UPDATE formapago SET  nombre_formapago = " + sql::ComillasMayusculas(Textnombre->text()) +
                        ", vencimientos_formapago = " + sql::Numero(Textvencimientos->text());
    for (int i = 0; i < 12; ++i)
        sentencia += ", " + ColumnaDias(i) + " = " + sql::Numero(Textven[i]->text());
    return sentencia + " WHERE codigo_formapago = " + sql::ComillasMayusculas(Textcodigo->text());
}

QString Fformapago::SentenciaEliminar() const {
    return "DELETE FROM formapago WHERE codigo_formapago = " + sql::Comillas(Textcodigo->text());
}

} // namespace vel
