// The two windows of database care, Fcompactar and freparar: a progress bar,
// its label, a start button and a close button. Both work on the file of the
// running session on the same scheme: close BaseDatos, do the work stage by
// stage under a trap (each stage moves the bar and lets the window paint), tell
// an error in one line, and open BaseDatos again whatever happened. What tells
// the windows apart is their texts and the stages of their start button.
#pragma once
#include "runtime/forms.h"
#include <functional>
#include <memory>

class QPushButton;
namespace Ui { class CareWindow; }
namespace vb { class ProgressBar; }

namespace vel {

struct TextosCuidado {
    QString ventana;      // the window's name
    QString caption;
    QString etiqueta;     // the label over the bar
    QString botonIniciar; // the start button's name
    QString botonCerrar;  // the close button's name
};

class CareWindow : public vb::Form {
    Q_OBJECT
public:
    ~CareWindow() override;
    vb::ProgressBar* ProgressBar1 = nullptr;

protected:
    CareWindow(const TextosCuidado& textos, QWidget* parent);
    QPushButton* BotonIniciar() const;
    QPushButton* BotonCerrar() const;
    // The scheme of the start button: BaseDatos closed (a failure there is
    // ignored); `trabajo` run under the trap in `etapas` stages, each ended by
    // Etapa(); on an error the message "Error " estado ": " number "-"
    // description, title "ERROR", style 16, where estado is the stage that
    // failed (from 1); then BaseDatos opened again and the close button's Click.
    void Cuidar(int etapas, const std::function<void()>& trabajo);
    // The end of a stage: the bar moves one step and the window system runs.
    void Etapa();
    // A file of the program folder.
    static QString Ruta(const QString& nombre);
    virtual void CerrarVentana_Click() = 0;

private:
    std::unique_ptr<Ui::CareWindow> ui;
    int estado_ = 0;
    int etapas_ = 1;
    int minimo_ = 0, maximo_ = 0;
};

} // namespace vel
