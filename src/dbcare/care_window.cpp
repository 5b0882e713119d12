#include "dbcare/care_window.h"
#include "dbcare/database_care.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/progressbar.h"
#include "ui_care_window.h"
#include <cmath>

namespace vel {

CareWindow::CareWindow(const TextosCuidado& textos, QWidget* parent)
    : vb::Form(parent), ui(std::make_unique<Ui::CareWindow>()) {
    ui->setupUi(this);
    setObjectName(textos.ventana);
    SetCaption(textos.caption);
    ui->Label1->setText(textos.etiqueta);
    ui->BotonIniciar->setObjectName(textos.botonIniciar);
    ui->BotonCerrar->setObjectName(textos.botonCerrar);
    ProgressBar1 = ui->ProgressBar1;
    OnClick(ui->BotonCerrar, [this] { CerrarVentana_Click(); });
}

CareWindow::~CareWindow() = default;

QPushButton* CareWindow::BotonIniciar() const { return ui->BotonIniciar; }
QPushButton* CareWindow::BotonCerrar() const { return ui->BotonCerrar; }

QString CareWindow::Ruta(const QString& nombre) { return vb::AppPath() + '/' + nombre; }

void CareWindow::Cuidar(int etapas, const std::function<void()>& trabajo) {
    {
        vb::ResumeNext r;
        r([] { CerrarBaseDatos(); });
        vb::Err().Clear();
    }
    estado_ = 0;
    vb::Trap(
        [&] {
            // The bar's limits, and an equal step for each stage.
            minimo_ = ProgressBar1->Min();
            maximo_ = ProgressBar1->Max();
            etapas_ = etapas;
            ProgressBar1->SetValue(minimo_);
            estado_ = 1;
            trabajo();
        },
        [&](const vb::RuntimeError& e) {
            vb::MsgBox(QStringLiteral("Error %1: %2-%3").arg(estado_).arg(e.Number).arg(e.Description), 16,
                       QStringLiteral("ERROR"));
            vb::Err().Clear();
        });
    AbrirBaseDatos();
    CerrarVentana_Click();
}

void CareWindow::Etapa() {
    // Stage k of n ends at Min + k/n of the way, so the last one reaches Max.
    const double paso = static_cast<double>(maximo_ - minimo_) / etapas_;
    ProgressBar1->SetValue(std::min(maximo_, minimo_ + static_cast<int>(std::lround(estado_ * paso))));
    ++estado_;
    vb::DoEvents();
}

} // namespace vel
