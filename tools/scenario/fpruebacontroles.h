// Fpruebacontroles: a test fixture, not a window of the program. It puts on
// screen one of each control the big windows use (list box, tab strip, flex
// grid, calendar, progress bar, common dialog, wait pointer, run-and-wait, a
// print button that prints a small delivery note, help lines shown as the
// mouse moves over controls, a timer that raises its event) so
// that scenarios drive them with real mouse and key events before any window
// of the program has them. Only the scenario driver knows it (`test-window`);
// the program's menu never opens it.
#pragma once
#include "runtime/calendar.h"
#include "runtime/common_dialog.h"
#include "runtime/flexgrid.h"
#include "runtime/forms.h"
#include "runtime/listbox.h"
#include "runtime/mouse_pointer.h"
#include "runtime/progressbar.h"
#include "runtime/sstab.h"
#include <optional>

namespace vel::scenario {

class Fpruebacontroles : public vb::Form {
    Q_OBJECT
public:
    Fpruebacontroles();

    vb::SSTab* SSTabpruebas;
    vb::ListBox* Listpruebas;
    vb::FlexGrid* Gridpruebas;
    vb::CalendarControl* Calendario;
    vb::ProgressBar* ProgressBar1;
    vb::CommonDialog* CommonDialog1;
    vb::Timer* Timer1;
    vb::Timer* Timeraviso;
    QPushButton* CommandProgreso;
    QPushButton* CommandAbrir;
    QPushButton* CommandImprimir;
    QPushButton* CommandImprimirSinTrampa;
    QPushButton* CommandImprimirAlbaran;
    QPushButton* CommandEsperar;
    QPushButton* CommandEjecutar;
    QCheckBox* Checkpruebas;
    // The last event seen ("3: Listpruebas_Click 1 DOS"), and what the buttons found.
    vb::Label* Labelsuceso;
    vb::Label* Labelresultado;
    // The help line of the control under the mouse.
    vb::Label* Labelayuda;

protected:
    void Form_Load() override;

private:
    void Listpruebas_Click();
    void Listpruebas_DblClick();
    void SSTabpruebas_Click(int PreviousTab);
    void Gridpruebas_Click();
    void Gridpruebas_DblClick();
    void Calendario_Click();
    void CommandProgreso_Click();
    void CommandAbrir_Click();
    void CommandImprimir_Click();
    void CommandImprimirSinTrampa_Click();
    void CommandImprimirAlbaran_Click();
    void CommandEsperar_Click();
    void Timer1_Timer();
    void CommandEjecutar_Click();
    void Checkpruebas_Click();
    void Timeraviso_Timer();
    void Form_MouseMove(int Button, int Shift, float X, float Y);
    void Listpruebas_MouseMove(int Button, int Shift, float X, float Y);
    void CommandProgreso_MouseMove(int Button, int Shift, float X, float Y);

    // Numbers each event in Labelsuceso, so that a repeated one shows.
    void suceso(const QString& texto);
    int sucesos_ = 0;
    int avisos_ = 0;
    std::optional<vb::WaitPointer> espera_;
};

} // namespace vel::scenario
