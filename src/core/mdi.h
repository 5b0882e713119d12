// The main window "Principal": the multiple-document parent with the menu.
#pragma once
#include "runtime/forms.h"
#include <QMainWindow>
#include <QMdiArea>
#include <functional>
#include <map>

class QAction;
class QMdiSubWindow;

namespace vel {

// A window the menu opens: its name (objectName, "Ftienda") and how to make it.
struct WindowEntry {
    QString window;
    std::function<vb::Form*()> create;
};
using WindowTableMap = std::map<QString, WindowEntry>;

// The calculators a Linux desktop may have, in order of preference: Calculadora
// starts the first one found (the setup installs xcalc).
const QStringList& Calculadoras();

// The menu entries -> windows table the main window opens from.
void SetWindowTable(const WindowTableMap* table);

class MDI : public QMainWindow {
    Q_OBJECT
public:
    MDI();
    ~MDI() override;

    // The main window's own pair of session values (no other window reads them).
    QString ClientePrograma;
    QString TiendaPrograma;
    // Task id of the calculator it started, 0 when none.
    long IdCalculadora = 0;
    vb::Timer* Timer1;

    void MDIForm_Load();
    void MDIForm_Resize();
    void MnuUtilidadesCalculadora_Click();
    void MnuAyudaAcerca_Click();
    void mnuSalir_Click();
    void Timer1_Timer();
    // MDI.Arrange: 0 cascade, 1 tile horizontally, 2 tile vertically, 3 arrange icons.
    void Arrange(int arrangement);

    // Opens the window of a menu entry: brought to the front (created and loaded
    // the first time), then shown modeless. Returns it, or nullptr for an entry
    // that opens no window.
    vb::Form* Abrir(const QString& entry);

    // Size in twips, the whole window with its frame.
    long Width() const;
    long Height() const;
    void SetWidth(long twips);
    void SetHeight(long twips);

    QMdiArea* area() const { return area_; }
    QAction* menuEntry(const QString& name) const;
    // The open windows, the active one first.
    QList<vb::Form*> openForms() const;

protected:
    void resizeEvent(QResizeEvent* e) override;
    void changeEvent(QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    void buildMenu();
    void placeOnScreen();
    QPoint cascadePosition(const QMdiSubWindow* sub) const;
    void CerrarVentanaActiva();
    void MostrarControl(QWidget* w);
    double twipsPerPixel() const;
    QMdiArea* area_;
};

// The main window while the program runs; nullptr before the start and after the end.
MDI* MainWindow();

} // namespace vel
