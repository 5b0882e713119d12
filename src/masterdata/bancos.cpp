#include "masterdata/bancos.h"
#include "ui_bancos.h"

#include "core/session.h"
#include "runtime/variant.h"
#include "runtime/vb.h"
#include "core/sql_values.h"

namespace vel {

Bancos::Bancos(QWidget* parent) : ModelessWindow(parent), ui(std::make_unique<Ui::Bancos>()) {
    ui->setupUi(this);
    OnClick(ui->Combobanco, [this] { Combobanco_Click(); });
    OnChange(ui->Combobanco, [this] { Combobanco_Change(); });
    OnClick(ui->BotonAceptar, [this] { BotonAceptar_Click(); });
    OnClick(ui->BotonBorrar, [this] { BotonBorrar_Click(); });
    OnClick(ui->BotonCancelar, [this] { BotonCancelar_Click(); });
    // The name is taken as typed: no upper-casing in this window.
    CampoConFoco(ui->TextoNombre, ui->BotonAceptar);
    CadenaEnter({ui->Combobanco, ui->TextoNombre, ui->BotonAceptar});
}

Bancos::~Bancos() = default;

void Bancos::Form_Load() {
    ActualizaCombo();
}

void Bancos::ActualizaCombo() {
    LlenaCombo(ui->Combobanco, "select * from bancos order by codigo_banco",
               [](const Recordset& rs) { return rs.Fields("codigo_banco").str(); });
}

void Bancos::Combobanco_Change() {
    Combobanco_Click();
}

void Bancos::Combobanco_Click() {
    if (!CodigoNumerico(ui->Combobanco))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from bancos where codigo_banco=" +
                                       sql::Comillas(ui->Combobanco->Text()));
    if (rs->AbsolutePosition() == -1) {
        ui->TextoNombre->setText("");
    } else {
        // A Null name leaves the box as it was.
        if (auto nombre = TextoCampoNoNulo(*rs, "nombre_banco")) ui->TextoNombre->setText(*nombre);
    }
    rs->Close();
}

void Bancos::BotonAceptar_Click() {
    if (!CodigoNumerico(ui->Combobanco))
        return;
    // The search takes the code as typed and the insert the code with four
    // digits: "1" is looked for as '1' and inserted as '0001', even when '0001'
    // is already there.
    auto rs = BaseDatos->OpenRecordset("select codigo_banco from bancos where codigo_banco= " +
                                       sql::Comillas(ui->Combobanco->Text()));
    if (rs->AbsolutePosition() != -1) {
        BaseDatos->Execute("update bancos set nombre_banco=" + sql::Comillas(ui->TextoNombre->text()) +
                           " where codigo_banco= " + sql::Comillas(rs->Fields("codigo_banco").str()) + " ");
    } else {
        BaseDatos->Execute(SentenciaInsertar());
    }
    vb::SetEnabled(ui->BotonAceptar, false);
    ActualizaCombo();
}

QString Bancos::SentenciaInsertar() const {
    return "insert into bancos values(" + sql::Comillas(vb::Format(ui->Combobanco->Text(), sql::kMascaraCuatroCifras)) + "," +
           sql::Comillas(ui->TextoNombre->text()) + ")";
}

void Bancos::BotonBorrar_Click() {
    if (!CodigoNumerico(ui->Combobanco))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from bancos where codigo_banco=" +
                                       sql::Comillas(ui->Combobanco->Text()));
    // Only the bank goes: its branches stay in bancos_sucursales.
    BorradoConPregunta(*rs, "No existe el codigo del banco", "¿Esta seguro de borrar este codigo de banco?",
                       [this](Recordset& fila) {
                           BaseDatos->Execute("delete *  from bancos where codigo_banco=" +
                                              sql::Comillas(fila.Fields("codigo_banco").str()));
                           fila.Close();
                           ui->TextoNombre->setText("");
                       });
    ActualizaCombo();
}

} // namespace vel
