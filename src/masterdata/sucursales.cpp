#include "masterdata/sucursales.h"
#include "ui_sucursales.h"

#include "core/session.h"
#include "runtime/variant.h"
#include "runtime/vb.h"
#include "core/sql_values.h"

namespace vel {

Sucursales::Sucursales(QWidget* parent) : ModelessWindow(parent), ui(std::make_unique<Ui::Sucursales>()) {
    ui->setupUi(this);
    OnClick(ui->OpcionCodigo, [this] { OpcionCodigo_Click(); });
    OnClick(ui->OpcionNombre, [this] { OpcionNombre_Click(); });
    OnClick(ui->Combobanco, [this] { Combobanco_Click(); });
    OnClick(ui->Combosucursal, [this] { Combosucursal_Click(); });
    OnChange(ui->Combosucursal, [this] { Combosucursal_Change(); });
    OnClick(ui->BotonAceptar, [this] { BotonAceptar_Click(); });
    OnClick(ui->BotonBorrar, [this] { BotonBorrar_Click(); });
    OnClick(ui->BotonCancelar, [this] { BotonCancelar_Click(); });
    CampoConFoco(ui->TextoNombre, ui->BotonAceptar);
    CampoConFoco(ui->TextoDireccion, ui->BotonAceptar);
    // Enter is handled in the two boxes only; the branch combo has none.
    CadenaEnter({ui->TextoNombre, ui->TextoDireccion, ui->BotonAceptar});
}

Sucursales::~Sucursales() = default;

void Sucursales::Form_Load() {
    ActualizaComboBancos();
}

QString Sucursales::Banco() const {
    return vb::Left(ui->Combobanco->Text(), 4);
}

QString Sucursales::Sucursal() const {
    return vb::Format(ui->Combosucursal->Text(), sql::kMascaraCuatroCifras);
}

void Sucursales::ActualizaComboBancos() {
    const QString sql = vb::Value(ui->OpcionCodigo) ? "select * from bancos order by codigo_banco asc"
                                                    : "select * from bancos order by nombre_banco asc";
    LlenaCombo(ui->Combobanco, sql, [](const Recordset& rs) {
        return TextoCampo(rs, "codigo_banco") + " " + TextoCampo(rs, "nombre_banco");
    });
}

void Sucursales::ActualizaComboSucursal() {
    // Always in branch code order, whatever the order of the banks.
    LlenaCombo(ui->Combosucursal,
               "select * from bancos_sucursales where codigo_banco=" + sql::Comillas(Banco()) +
                   " order by codigo_sucursal asc",
               [](const Recordset& rs) { return rs.Fields("codigo_sucursal").str(); });
}

void Sucursales::OpcionCodigo_Click() {
    ActualizaComboBancos();
}

void Sucursales::OpcionNombre_Click() {
    ActualizaComboBancos();
}

void Sucursales::Combobanco_Click() {
    ActualizaComboSucursal();
}

void Sucursales::Combosucursal_Change() {
    Combosucursal_Click();
}

void Sucursales::Combosucursal_Click() {
    if (!CodigoNumerico(ui->Combosucursal))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from bancos_sucursales where codigo_sucursal=" +
                                       sql::Comillas(Sucursal()) + " and codigo_banco=" + sql::Comillas(Banco()));
    if (rs->AbsolutePosition() == -1) {
        ui->TextoNombre->setText("");
        ui->TextoDireccion->setText("");
    } else {
        // A Null leaves its box as it was.
        if (auto nombre = TextoCampoNoNulo(*rs, "nombre_sucursal")) ui->TextoNombre->setText(*nombre);
        if (auto direccion = TextoCampoNoNulo(*rs, "direccion_sucursal")) ui->TextoDireccion->setText(*direccion);
    }
    rs->Close();
}

void Sucursales::BotonAceptar_Click() {
    if (!CodigoNumerico(ui->Combosucursal))
        return;
    const QString banco = Banco();
    const QString sucursal = Sucursal();
    auto rs = BaseDatos->OpenRecordset(
        "select codigo_sucursal,codigo_banco from bancos_sucursales where codigo_banco=" + sql::Comillas(banco) +
        " and codigo_sucursal=" + sql::Comillas(sucursal));
    if (rs->AbsolutePosition() != -1) {
        BaseDatos->Execute("update bancos_sucursales set  codigo_sucursal=" + sql::Comillas(sucursal) + ",codigo_banco=" +
                           sql::Comillas(banco) + ",nombre_sucursal=" + sql::Comillas(ui->TextoNombre->text()) +
                           ",direccion_sucursal=" + sql::Comillas(ui->TextoDireccion->text()) + " where codigo_banco=" +
                           sql::Comillas(rs->Fields("codigo_banco").str()) + " and codigo_sucursal=" +
                           sql::Comillas(vb::Left(sucursal, 4)));
    } else {
        BaseDatos->Execute(SentenciaInsertar(banco, sucursal));
    }
    vb::SetEnabled(ui->BotonAceptar, false);
    ActualizaComboSucursal();
}

QString Sucursales::SentenciaInsertar(const QString& banco, const QString& sucursal) const {
    return "insert into bancos_sucursales values(" + sql::Comillas(sucursal) + "," + sql::Comillas(banco) + "," + sql::Comillas(ui->TextoNombre->text()) +
           "," + sql::Comillas(ui->TextoDireccion->text()) + ")";
}

void Sucursales::BotonBorrar_Click() {
    if (!CodigoNumerico(ui->Combosucursal))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from bancos_sucursales where codigo_banco=" + sql::Comillas(Banco()) +
                                       " and codigo_sucursal=" + sql::Comillas(Sucursal()));
    BorradoConPregunta(*rs, "No existe el codigo de la sucursal",
                       "¿Esta seguro de borrar este codigo de sucursal?", [this](Recordset& fila) {
                           BaseDatos->Execute("delete *  from bancos_sucursales where codigo_banco=" +
                                              sql::Comillas(fila.Fields("codigo_banco").str()) + " and codigo_sucursal=" +
                                              sql::Comillas(fila.Fields("codigo_sucursal").str()));
                           fila.Close();
                           ui->TextoNombre->setText("");
                           ui->TextoDireccion->setText("");
                       });
    ActualizaComboSucursal();
}

} // namespace vel
