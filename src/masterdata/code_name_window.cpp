#include "masterdata/code_name_window.h"

#include "core/record_store.h"
#include "core/session.h"
#include "core/sql_values.h"
#include "ui_code_name_window.h"

namespace vel {

CodeNameWindow::CodeNameWindow(const CodeNameTable& tabla, QWidget* parent)
    : CodeListWindow(parent), T(tabla), ui(std::make_unique<Ui::CodeNameWindow>()) {
    setObjectName(T.ventana);
    ui->setupUi(this);
    SetCaption(T.titulo);
    // The third field bears the name and label of its table.
    Textotercero = ui->Textdireccion;
    Textotercero->setObjectName(T.campo);
    ui->Labeldireccion->setObjectName(QStringLiteral("Label") + T.campo.mid(4).toLower());
    ui->Labeldireccion->setText(T.etiqueta);
    MontarListaCodigos({.botones = BotonesDe(*ui),
                        .texto = {ui->Textcodigo, ui->Textnombre, Textotercero}},
                       {.Textcodigo = ui->Textcodigo, .Textnombre = ui->Textnombre, .Combocodigo = ui->Combocodigo});
}

CodeNameWindow::~CodeNameWindow() = default;

// With the stores' table, the statements read:
//   SELECT * FROM tienda ORDER BY codigo_tienda
//   SELECT * FROM tienda WHERE codigo_tienda = <Val of the code>
//   INSERT INTO tienda VALUES (<code as typed>, '<NAME>', '<ADDRESS>')
//   UPDATE tienda SET  nombre_tienda = '<NAME>', direccion_tienda = '<ADDRESS>' WHERE codigo_tienda = <Val>
//   DELETE FROM tienda WHERE codigo_tienda = <Val>
// Nothing is checked against any other table: a store, warehouse or operator
// still named by documents or by config.ini can be deleted.

QString CodeNameWindow::SentenciaLista() const {
    return "SELECT * FROM " + T.tabla + " ORDER BY " + T.clave;
}

QString CodeNameWindow::EntradaCombo(const Recordset& rs) const {
    return rs.Fields(T.clave).str();
}

QString CodeNameWindow::SentenciaBuscarCodigo(const QString& codigo) const {
    return "SELECT * FROM " + T.tabla + " WHERE " + T.clave + " = " + sql::Numero(codigo);
}

QString CodeNameWindow::SentenciaInsertar() const {
    // The code goes in as typed, where every other statement passes it through Val.
    return "INSERT INTO " + T.tabla + " VALUES (" +
           sql::Valores({Textcodigo->text(), sql::ComillasMayusculas(Textnombre->text()),
                         sql::ComillasMayusculas(Textotercero->text())}) +
           ")";
}

QString CodeNameWindow::SentenciaModificar() const {
    // Two blanks after SET, as the statement has always been written.
    return "UPDATE " + T.tabla + " SET  " + T.nombre + " = " + sql::ComillasMayusculas(Textnombre->text()) +
           ", " + T.tercera + " = " + sql::ComillasMayusculas(Textotercero->text()) + " WHERE " + T.clave +
           " = " + sql::Numero(Textcodigo->text());
}

QString CodeNameWindow::SentenciaEliminar() const {
    return "DELETE FROM " + T.tabla + " WHERE " + T.clave + " = " + sql::Numero(Textcodigo->text());
}

void CodeNameWindow::Combocodigo_Click() {
    auto Registro = BaseDatos->OpenRecordset(SentenciaBuscarCodigo(Combocodigo->Text()));
    Textcodigo->setText(Registro->Fields(T.clave).str());
    Textnombre->setText(Registro->Fields(T.nombre).str());
    Textotercero->setText(Registro->Fields(T.tercera).str());
}

} // namespace vel
