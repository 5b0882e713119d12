#include "core/maintenance_window.h"

#include "core/window_controls.h"
#include "runtime/vb.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace vel {

namespace {

// Empties one control of Borrar's list, by its kind; false for a kind that
// holds nothing to empty.
bool Vaciar(QWidget* w, bool soloComprobar) {
    if (auto* caja = qobject_cast<QLineEdit*>(w)) {
        if (!soloComprobar) caja->setText(QString());
    } else if (auto* texto = qobject_cast<QPlainTextEdit*>(w)) {
        if (!soloComprobar) texto->setPlainText(QString());
    } else if (auto* rico = qobject_cast<QTextEdit*>(w)) {
        if (!soloComprobar) rico->setPlainText(QString());
    } else if (auto* casilla = qobject_cast<QCheckBox*>(w)) {
        if (!soloComprobar) vb::SetValue(casilla, 0);
    } else if (auto* etiqueta = qobject_cast<vb::Label*>(w)) {
        if (!soloComprobar) etiqueta->SetCaption(QString());
    } else if (auto* rotulo = qobject_cast<QLabel*>(w)) {
        if (!soloComprobar) rotulo->setText(QString());
    } else if (auto* combo = qobject_cast<vb::ComboBox*>(w)) {
        if (!soloComprobar) combo->Clear();
    } else if (auto* lista = qobject_cast<QListWidget*>(w)) {
        if (!soloComprobar) lista->clear();
    } else {
        return false;
    }
    return true;
}

QString NombreDe(const QWidget* w) { return w->objectName(); }

} // namespace

MaintenanceWindow::MaintenanceWindow(QWidget* parent) : vb::Form(parent) {}

void MaintenanceWindow::MontarVentana(const ControlesMantenimiento& c) {
    const BotonesMantenimiento& b = c.botones;
    const std::pair<QPushButton*, const char*> botones[] = {
        {b.Commandnuevo, "Commandnuevo"},         {b.Commandmodificar, "Commandmodificar"},
        {b.Commandconsultar, "Commandconsultar"}, {b.Commandborrar, "Commandborrar"},
        {b.Commandaceptar, "Commandaceptar"},     {b.Commandcancelar, "Commandcancelar"},
    };
    for (const auto& [boton, nombre] : botones)
        ExigirControl(this, boton, QString::fromLatin1(nombre), "QPushButton");
    if (c.texto.isEmpty())
        throw ControlFaltante(this, QStringLiteral("de Texto"), QStringLiteral("no tiene ningún control"));
    for (int i = 0; i < c.texto.size(); ++i)
        ExigirControl(this, c.texto[i], QStringLiteral("%1 de Texto").arg(i + 1), "QWidget");
    for (int i = 0; i < c.flipaBotones.size(); ++i)
        ExigirControl(this, c.flipaBotones[i], QStringLiteral("%1 de Botones").arg(i + 1), "QWidget");
    for (int i = 0; i < c.intro.size(); ++i)
        ExigirControl(this, c.intro[i], QStringLiteral("%1 de Intro").arg(i + 1), "QWidget");
    const QList<QWidget*>& borrar = c.borrar.isEmpty() ? c.texto : c.borrar;
    for (int i = 0; i < borrar.size(); ++i) {
        ExigirControl(this, borrar[i], QStringLiteral("%1 de Borrar").arg(i + 1), "QWidget");
        if (!Vaciar(borrar[i], true))
            throw ControlFaltante(this, NombreDe(borrar[i]), QStringLiteral("no se puede vaciar en Borrar"));
    }

    static_cast<BotonesMantenimiento&>(*this) = b;
    texto_ = c.texto;
    borrar_ = borrar;
    botones_ = c.flipaBotones.isEmpty()
                   ? QList<QWidget*>{Commandnuevo, Commandborrar, Commandconsultar, Commandmodificar, Commandaceptar}
                   : c.flipaBotones;

    OnClick(Commandnuevo, [this] { Commandnuevo_Click(); });
    OnClick(Commandmodificar, [this] { Commandmodificar_Click(); });
    OnClick(Commandconsultar, [this] { Commandconsultar_Click(); });
    OnClick(Commandborrar, [this] { Commandborrar_Click(); });
    OnClick(Commandaceptar, [this] { Commandaceptar_Click(); });
    OnClick(Commandcancelar, [this] { Commandcancelar_Click(); });

    // Every text box of the window (not the edit part of a combo): Enter moves
    // on, and the box selects its whole text when it gets the focus.
    for (QLineEdit* caja : findChildren<QLineEdit*>()) {
        if (qobject_cast<QComboBox*>(caja->parentWidget())) continue;
        OnKeyPress(caja, [this, caja](int& KeyAscii) { Texto_KeyPress(caja, KeyAscii); });
        OnGotFocus(caja, [this, caja] { Texto_GotFocus(caja); });
    }
    for (QWidget* control : c.intro) OnKeyPress(control, [](int& KeyAscii) { IntroComoTabulador(KeyAscii); });
}

// ---- The three procedures ---------------------------------------------------

void MaintenanceWindow::Borrar() {
    for (QWidget* control : borrar_) Vaciar(control, false);
}

void MaintenanceWindow::Texto() {
    for (QWidget* control : texto_) vb::ToggleEnabled(control);
}

void MaintenanceWindow::Botones() {
    for (QWidget* boton : botones_) vb::ToggleEnabled(boton);
}

// ---- Idle, modes and Cancelar -------------------------------------------------

QString Letra(Modo modo) {
    switch (modo) {
    case Modo::Ninguno: break;
    case Modo::Nuevo: return QStringLiteral("N");
    case Modo::Modificar: return QStringLiteral("M");
    case Modo::Consultar: return QStringLiteral("O");
    case Modo::Borrar: return QStringLiteral("B");
    }
    return QString();
}

void MaintenanceWindow::Form_Load() {
    Texto();
    ModoVentana = Modo::Ninguno;
}

bool MaintenanceWindow::EnModo() const {
    return !vb::Enabled(Commandnuevo) && !vb::Enabled(Commandmodificar) && !vb::Enabled(Commandconsultar) &&
           !vb::Enabled(Commandborrar);
}

void MaintenanceWindow::SalirDelModo() {
    Botones();
    Texto();
    Borrar();
    // Consult and delete never enabled the fields: flip them back off.
    if (ModoVentana == Modo::Borrar || ModoVentana == Modo::Consultar) Texto();
}

void MaintenanceWindow::Commandcancelar_Click() {
    if (EnModo()) {
        SalirDelModo();
        ModoVentana = Modo::Ninguno;
    } else {
        Unload();
    }
}

// ---- Keyboard ---------------------------------------------------------------------

void MaintenanceWindow::FiltrarTeclas(std::initializer_list<QLineEdit*> cajas, FiltroTeclas filtro) {
    for (QLineEdit* caja : cajas) {
        ExigirControl(this, caja, QStringLiteral("con filtro de teclas"), "QLineEdit");
        filtros_[caja] = filtro;
    }
}

void MaintenanceWindow::Texto_KeyPress(QLineEdit* caja, int& KeyAscii) {
    IntroComoTabulador(KeyAscii);
    if (auto filtro = filtros_.find(caja); filtro != filtros_.end()) filtro->second(KeyAscii);
}

void MaintenanceWindow::Texto_GotFocus(QLineEdit* caja) { vb::SelectAll(caja); }

} // namespace vel
