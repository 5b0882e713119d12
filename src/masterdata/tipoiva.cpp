#include "masterdata/tipoiva.h"
#include "ui_tipoiva.h"

#include "core/session.h"
#include "runtime/msgbox.h"
#include "runtime/variant.h"
#include "runtime/vb.h"

namespace vel {

TipoIva::TipoIva(QWidget* parent) : ModelessWindow(parent), ui(std::make_unique<Ui::TipoIva>()) {
    ui->setupUi(this);
    OnClick(ui->Comboiva, [this] { Comboiva_Click(); });
    OnChange(ui->Comboiva, [this] { Comboiva_Change(); });
    OnClick(ui->BotonAceptar, [this] { BotonAceptar_Click(); });
    OnClick(ui->BotonBorrar, [this] { BotonBorrar_Click(); });
    OnClick(ui->BotonCancelar, [this] { BotonCancelar_Click(); });
    for (QLineEdit* box : {ui->TextoIva, ui->TextoRetencion, ui->TextoRecargoEquivalencia}) {
        OnChange(box, [this, box] { Texto_Change(box); });
        CampoConFoco(box, ui->BotonAceptar);
    }
    CadenaEnter({ui->Comboiva, ui->TextoIva, ui->TextoRetencion, ui->TextoRecargoEquivalencia,
                 ui->BotonAceptar});
}

TipoIva::~TipoIva() = default;

void TipoIva::Form_Load() {
    ActualizaCombo();
}

void TipoIva::ActualizaCombo() {
    LlenaCombo(ui->Comboiva, "select * from iva order by codigo_iva asc",
               [](const Recordset& rs) { return rs.Fields("codigo_iva").str(); });
}

void TipoIva::Comboiva_Change() {
    Comboiva_Click();
}

void TipoIva::Comboiva_Click() {
    if (!CodigoNumerico(ui->Comboiva))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from iva where codigo_iva=" +
                                       sql::Numero(ui->Comboiva->Text()));
    if (rs->AbsolutePosition() == -1) {
        VaciaCampos();
    } else {
        // A Null leaves its box as it was.
        if (auto iva = TextoCampoNoNulo(*rs, "iva")) ui->TextoIva->setText(*iva);
        if (auto retencion = TextoCampoNoNulo(*rs, "retencion")) ui->TextoRetencion->setText(*retencion);
        if (auto recargo = TextoCampoNoNulo(*rs, "RecargoEquivalencia"))
            ui->TextoRecargoEquivalencia->setText(*recargo);
    }
    rs->Close();
}

void TipoIva::BotonAceptar_Click() {
    if (!CodigoNumerico(ui->Comboiva))
        return;   // a code that is not a number: nothing at all happens
    const QString codigo = sql::Numero(ui->Comboiva->Text());
    for (QLineEdit* box : {ui->TextoIva, ui->TextoRetencion, ui->TextoRecargoEquivalencia})
        if (box->text().isEmpty())
            box->setText("0");

    auto rs = BaseDatos->OpenRecordset("select codigo_iva from iva where codigo_iva= " + codigo);
    if (rs->AbsolutePosition() != -1) {
        // The update turns each value into a number and back into text...
        BaseDatos->Execute("update iva set iva=" + sql::Numero(ui->TextoIva->text()) +
                           ",retencion=" + sql::Numero(ui->TextoRetencion->text()) +
                           ",RecargoEquivalencia=" + sql::Numero(ui->TextoRecargoEquivalencia->text()) +
                           " where codigo_iva= " + rs->Fields("codigo_iva").str());
    } else {
        // ...while the insert takes them as they stand in the boxes.
        BaseDatos->Execute(SentenciaInsertar(codigo));
    }
    vb::SetEnabled(ui->BotonAceptar, false);
    ActualizaCombo();
}

void TipoIva::BotonBorrar_Click() {
    if (!CodigoNumerico(ui->Comboiva))
        return;
    auto rs = BaseDatos->OpenRecordset("select * from iva where codigo_iva=" +
                                       sql::Numero(ui->Comboiva->Text()) + " ");
    BorradoConPregunta(*rs, "No existe el codigo de iva", "¿Esta seguro de borrar este codigo de iva?",
                       [this](Recordset& fila) {
                           BaseDatos->Execute("delete *  from iva where codigo_iva=" +
                                              fila.Fields("codigo_iva").str() + " ");
                           fila.Close();
                           VaciaCampos();
                       });
    ActualizaCombo();
}

QString TipoIva::SentenciaInsertar(const QString& codigo) const {
    return "insert into iva values(" + codigo + "," + ui->TextoIva->text() + "," + ui->TextoRetencion->text() + "," +
           ui->TextoRecargoEquivalencia->text() + ") ";
}

void TipoIva::Texto_Change(QLineEdit* box) {
    if (!box->text().isEmpty() && !vb::IsNumeric(box->text())) {
        vb::MsgBox("Solo valores númericos", vb::vbCritical, kTituloError);
        box->setText("");
    }
}

void TipoIva::VaciaCampos() {
    ui->TextoIva->setText("");
    ui->TextoRetencion->setText("");
    ui->TextoRecargoEquivalencia->setText("");
}

} // namespace vel
