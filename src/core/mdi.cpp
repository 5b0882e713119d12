#include "core/mdi.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/shell.h"
#include "runtime/vb.h"
#include "core/sql_values.h"
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QKeyEvent>
#include <functional>
#include <QStyle>
#include <optional>

namespace vel {

namespace {
const WindowTableMap* windowTable = nullptr;
MDI* mainWindow = nullptr;

// The whole menu, in order. Level 0 is a top-level menu, level 1 its entries,
// level 2 the entries of a submenu. "-" is a separator line.
struct MenuLine {
    int level;
    const char* name;
    const char* caption;
    bool submenu = false;
    bool enabled = true;
};
const MenuLine kMenu[] = {
    {0, "MnuArchivo", "&Archivo"},
    {1, "mnuArchivoItemClientes", "&Clientes", true},
    {2, "mnuArchivoItemClientesMantenimiento", "&Mantenimiento"},
    {2, "mnuArchivoItemClientesFichas", "&Fichas"},
    {2, "mnuArchivoItemClientesListado", "&Listado"},
    {1, "mnuArchivoItemProveedores", "&Proveedores", true},
    {2, "mnuArchivoItemProveedoresMantenimiento", "&Mantenimiento"},
    {2, "mnuArchivoItemProveedoresFichas", "&Fichas"},
    {2, "mnuArchivoItemProveedoresListado", "&Listado"},
    {1, "barra1", "-"},
    {1, "mnuArchivoItemMantenimientoEstructura", "&Estructura"},
    {1, "mnuArchivoItemMantenimientoArticulos", "&Artículos"},
    {1, "mnuArchivoItemMantenimientoformapago", "&Formas de Pago"},
    {1, "mnuArchivoItemMantenimientoIva", "&I.V.A."},
    {1, "barra2", "-"},
    {1, "MnuArchivoItemMantenimientoBancos", "&Bancos"},
    {1, "MnuArchivoItemMantenimientosucursales", "S&ucursales"},
    {1, "barra3", "-"},
    {1, "MnuArchivoItemMantenimientotiendas", "&Tiendas"},
    {1, "MnuArchivoItemMantenimientoalmacenes", "A&lmacenes"},
    {1, "MnuArchivoItemMantenimientooperadores", "&Operadores"},
    {1, "barra4", "-"},
    {1, "mnuSalir", "&Salir"},
    {0, "MnuTpv", "&T.P.V."},
    {1, "MnuTpvVenta", "&Venta TPV"},
    {1, "barra6", "-"},
    // A deliberate stub: greyed at design, never enabled, no handler.
    {1, "MnuTpvArqueo", "&Arqueo", false, false},
    {0, "Mnuventas", "&Ventas"},
    {1, "MnuventasItemalbarandirecto", "&Albarán Directo"},
    {1, "MnuventasItemcontrolalbaran", "&Control de Albaranes"},
    {1, "barra8", "-"},
    {1, "MnuventasItemfacturadirecta", "&Factura Directa"},
    {0, "MnuUtilidades", "&Utilidades"},
    {1, "MnuUtilidadesCompactar", "&Compactar"},
    // Greyed at design and never enabled, although its handler would open freparar.
    {1, "MnuUtilidadesReparar", "&Reparar", false, false},
    {1, "barra7", "-"},
    {1, "MnuUtilidadesCalculadora", "Ca&lculadora"},
    {0, "MnuVentana", "Ve&ntana"},
    {1, "MnuVentanaHorizontal", "Mosaico &horizontal"},
    {1, "MnuVentanaVertical", "Mosaico &vertical"},
    {1, "MnuVentanaCascada", "&Cascada"},
    {1, "MnuVentanaOrganizar", "&Organizar iconos"},
    {0, "MnuAyuda", "A&yuda"},
    {1, "MnuAyudaAcerca", "&Acerca de ..."},
};

// What a child window's frame holds: the window at its designed size and
// arrangement, whatever the frame's size. These are fixed-layout forms: a frame
// smaller than the window (tiled, or sized by the user) cuts it off and shows
// scroll bars; a larger one (maximised) leaves the rest empty.
class MarcoFijo : public QScrollArea {
public:
    explicit MarcoFijo(vb::Form* form) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(false);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
        setWidget(form);
    }
    vb::Form* form() const { return qobject_cast<vb::Form*>(widget()); }
    // The frame asks for the whole window, however large.
    QSize sizeHint() const override { return widget() ? widget()->size() : QScrollArea::sizeHint(); }

protected:
    // Closing the frame by its system box closes the window it holds.
    void closeEvent(QCloseEvent* e) override {
        if (widget() && !widget()->close())
            e->ignore();
        else
            e->accept();
    }
};

vb::Form* formOf(const QMdiSubWindow* s) {
    auto* marco = dynamic_cast<MarcoFijo*>(s->widget());
    return marco ? marco->form() : nullptr;
}
} // namespace

const QStringList& Calculadoras() {
    static const QStringList list = {QStringLiteral("gnome-calculator"), QStringLiteral("kcalc"),
                                     QStringLiteral("galculator"),       QStringLiteral("mate-calc"),
                                     QStringLiteral("qalculate-gtk"),    QStringLiteral("xcalc")};
    return list;
}

void SetWindowTable(const WindowTableMap* table) { windowTable = table; }
MDI* MainWindow() { return mainWindow; }

namespace {
// Sees Ctrl+F4 pressed in any widget of the main window (the shortcut stage of
// the key, before the key itself is delivered) and runs the close instead.
class CtrlF4 : public QObject {
public:
    CtrlF4(QWidget* ventana, std::function<void()> cerrar)
        : QObject(ventana), ventana_(ventana), cerrar_(std::move(cerrar)) {}
    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() != QEvent::ShortcutOverride || !o->isWidgetType()) return false;
        auto* k = static_cast<QKeyEvent*>(e);
        if (k->key() != Qt::Key_F4 || (k->modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier) return false;
        if (static_cast<QWidget*>(o)->window() != ventana_) return false;
        k->accept();
        cerrar_();
        return true;
    }

private:
    QWidget* ventana_;
    std::function<void()> cerrar_;
};
}  // namespace

MDI::MDI() : Timer1(new vb::Timer(this)), area_(new QMdiArea(this)) {
    setObjectName(QStringLiteral("MDI"));
    setWindowTitle(QStringLiteral("Principal"));
    setCentralWidget(area_);
    area_->setBackground(palette().dark());
    // A child window larger than the work area (a tall form on a small screen)
    // is reached by the area's scroll bars, and the area follows the focus to
    // any control out of sight.
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { MostrarControl(now); });
    // Ctrl+F4 closes the active child window, as its system box does. It is
    // taken before any shortcut is looked for: each child's frame has a Ctrl+F4
    // of its own, which only works while the focus is inside that child and
    // makes a shortcut of the main window ambiguous.
    qApp->installEventFilter(new CtrlF4(this, [this] { CerrarVentanaActiva(); }));
    Timer1->SetInterval(60000);
    Timer1->SetEnabled(false);
    connect(Timer1, &vb::Timer::Tick, this, [this] { vb::RunEvent([this] { Timer1_Timer(); }); });
    buildMenu();
    placeOnScreen();
    mainWindow = this;
}

MDI::~MDI() {
    if (mainWindow == this) mainWindow = nullptr;
}

void MDI::buildMenu() {
    QMenu* top = nullptr;
    QMenu* sub = nullptr;
    for (const MenuLine& m : kMenu) {
        const QString name = QString::fromLatin1(m.name);
        const QString caption = QString::fromUtf8(m.caption);
        if (m.level == 0) {
            top = menuBar()->addMenu(caption);
            top->setObjectName(name);
            top->menuAction()->setObjectName(name);
            sub = nullptr;
            continue;
        }
        QMenu* parent = m.level == 2 ? sub : top;
        if (m.level == 1) sub = nullptr;
        QAction* action;
        if (caption == QLatin1String("-")) {
            action = parent->addSeparator();
        } else if (m.submenu) {
            sub = parent->addMenu(caption);
            sub->setObjectName(name);
            action = sub->menuAction();
        } else {
            action = parent->addAction(caption);
            connect(action, &QAction::triggered, this, [this, name] {
                vb::RunEvent([this, name] {
                    if (name == QLatin1String("mnuSalir")) mnuSalir_Click();
                    else if (name == QLatin1String("MnuUtilidadesCalculadora")) MnuUtilidadesCalculadora_Click();
                    else if (name == QLatin1String("MnuAyudaAcerca")) MnuAyudaAcerca_Click();
                    else if (name == QLatin1String("MnuVentanaHorizontal")) Arrange(1);
                    else if (name == QLatin1String("MnuVentanaVertical")) Arrange(2);
                    else if (name == QLatin1String("MnuVentanaCascada")) Arrange(0);
                    else if (name == QLatin1String("MnuVentanaOrganizar")) Arrange(3);
                    else Abrir(name);
                });
            });
        }
        action->setObjectName(name);
        action->setEnabled(m.enabled);
    }
}

QAction* MDI::menuEntry(const QString& name) const { return findChild<QAction*>(name); }

// Start of the main window: the two session values from config.ini, under
// On Error Resume Next from the open of the file to the end.
void MDI::MDIForm_Load() {
    const Configuracion config = LeeConfiguracion(LecturaConfiguracion::ConTrampa);
    ClientePrograma = config.ClientePrograma;
    TiendaPrograma = config.nombreTienda;
    vb::ResumeNext r;
    if (TiendaPrograma.isEmpty()) {
        TiendaPrograma = kTiendaProgramaPorDefecto;
    } else {
        std::unique_ptr<Recordset> rs;
        r([&] {
            rs = BaseDatos->OpenRecordset("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = " +
                                          sql::Comillas(TiendaPrograma));
        });
        r([&] {
            if (!rs) vb::Raise(91, QStringLiteral("Variable de tipo Object o de bloque With no establecida"));
            if (rs->Eof())
                TiendaPrograma = "1";
            else
                TiendaPrograma = rs->Fields("codigo_tienda").str();
        });
    }
    // A left-over hook that stays: store 1 runs an idle one-minute timer.
    if (TiendaPrograma == "1") Timer1->SetEnabled(true);
}

void MDI::Timer1_Timer() {}

double MDI::twipsPerPixel() const { return 1440.0 / logicalDpiX(); }

// The main window opens centred on the screen: at its working size, or at four
// fifths of a larger screen. On a screen smaller than the working size its top
// left corner stays on the screen, so the menu can be reached.
void MDI::placeOnScreen() {
    const QSize working(int(12280 / twipsPerPixel()), int(8550 / twipsPerPixel()));
    const QScreen* s = screen();
    if (!s) {
        resize(working);
        return;
    }
    const QRect free = s->availableGeometry();
    const QSize size = working.expandedTo(QSize(free.width() * 4 / 5, free.height() * 4 / 5));
    resize(size);
    move(free.x() + std::max(0, (free.width() - size.width()) / 2),
         free.y() + std::max(0, (free.height() - size.height()) / 2));
}

// A minimised window reports the size of its caption bar, which is what the
// resize rule takes for the minimised state.
long MDI::Width() const {
    if (isMinimized()) return 2400;
    return long(frameGeometry().width() * twipsPerPixel() + 0.5);
}

long MDI::Height() const {
    if (isMinimized()) return 405;
    return long(frameGeometry().height() * twipsPerPixel() + 0.5);
}

namespace {
[[noreturn]] void cannotSize() {
    vb::Raise(384, QStringLiteral("No se puede mover ni cambiar el tamaño de un formulario minimizado o maximizado"));
}
} // namespace

void MDI::SetWidth(long twips) {
    if (isMinimized() || isMaximized()) cannotSize();
    const int frame = frameGeometry().width() - width();
    resize(int(twips / twipsPerPixel() + 0.5) - frame, height());
}

void MDI::SetHeight(long twips) {
    if (isMinimized() || isMaximized()) cannotSize();
    const int frame = frameGeometry().height() - height();
    resize(width(), int(twips / twipsPerPixel() + 0.5) - frame);
}

// Keeps the main window from being used smaller than its working size, but lets
// it be minimised. Each statement is trapped: the error is shown in one line and
// the next statement runs (so a window that can't be sized, maximised on a small
// screen, says why and the other dimension is still seen to).
void MDI::MDIForm_Resize() {
    vb::OneLineTrap trap(" in procedure MDIForm_Resize of Formulario MDI");
    trap([this] {
        if (Width() > 2400 && Width() < 12180) SetWidth(12280);
    });
    trap([this] {
        if (Height() > 405 && Height() < 8250) SetHeight(8550);
    });
}

void MDI::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    if (mainWindow == this) vb::RunEvent([this] { MDIForm_Resize(); });
}

void MDI::changeEvent(QEvent* e) {
    QMainWindow::changeEvent(e);
    if (e->type() == QEvent::WindowStateChange && mainWindow == this)
        vb::RunEvent([this] { MDIForm_Resize(); });
}

// Activates the calculator started before, or starts one. Any error clears the
// task id and goes on with the next statement; there is never a message.
void MDI::MnuUtilidadesCalculadora_Click() {
    auto onError = [this](const std::function<void()>& statement) {
        vb::Trap(statement, [this](const vb::RuntimeError&) { IdCalculadora = 0; });
    };
    onError([this] {
        if (IdCalculadora != 0) vb::AppActivate(IdCalculadora);
    });
    onError([this] {
        if (IdCalculadora == 0) {
            const QString calc = vb::FindProgram(Calculadoras());
            IdCalculadora = vb::Shell(calc.isEmpty() ? Calculadoras().first() : calc, 1);
        }
    });
}

void MDI::MnuAyudaAcerca_Click() {
    vb::ShellAbout(QStringLiteral("Velmarinda"),
                   QStringLiteral("Programa de gestión comercial. Copyright © 2000 Velmarinda."));
}

// Ends the program at once: no question to any open window.
void MDI::mnuSalir_Click() { vb::End(); }

void MDI::Arrange(int arrangement) {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* s : area_->subWindowList())
        if (s->isVisible() && !s->isMinimized()) windows << s;
    const QRect r = area_->viewport()->rect();
    switch (arrangement) {
    case 0: area_->cascadeSubWindows(); break;
    case 1: // one above the other, each the whole width
        for (int i = 0; i < windows.size(); ++i) {
            const int h = r.height() / int(windows.size());
            windows[i]->setGeometry(0, i * h, r.width(), h);
        }
        break;
    case 2: // side by side, each the whole height
        for (int i = 0; i < windows.size(); ++i) {
            const int w = r.width() / int(windows.size());
            windows[i]->setGeometry(i * w, 0, w, r.height());
        }
        break;
    case 3: { // the minimised windows in a row along the bottom
        int x = 0;
        for (QMdiSubWindow* s : area_->subWindowList()) {
            if (!s->isMinimized()) continue;
            s->move(x, r.height() - s->height());
            x += s->width();
        }
        break;
    }
    default: break;
    }
}

QList<vb::Form*> MDI::openForms() const {
    QList<vb::Form*> forms;
    const QMdiSubWindow* active = area_->activeSubWindow();
    for (QMdiSubWindow* s : area_->subWindowList(QMdiArea::StackingOrder)) {
        vb::Form* f = formOf(s);
        if (!f || f->IsUnloaded()) continue;
        if (s == active)
            forms.prepend(f);
        else
            forms.append(f);
    }
    return forms;
}

// The active child, or, when none is (the one closed last had it), the one on
// top: the window the user sees in front.
void MDI::CerrarVentanaActiva() {
    QMdiSubWindow* s = area_->activeSubWindow();
    if (!s) s = area_->currentSubWindow();
    if (!s) {
        const QList<QMdiSubWindow*> orden = area_->subWindowList(QMdiArea::StackingOrder);
        for (auto it = orden.rbegin(); it != orden.rend() && !s; ++it)
            if ((*it)->isVisible()) s = *it;
    }
    if (s) s->close();
}

// Scrolls the child's own frame, then the work area, so that the control with
// the focus is in sight.
void MDI::MostrarControl(QWidget* w) {
    if (!w || !area_->viewport()->isAncestorOf(w)) return;
    for (QWidget* p = w->parentWidget(); p && p != area_; p = p->parentWidget())
        if (auto* marco = dynamic_cast<MarcoFijo*>(p)) {
            marco->ensureWidgetVisible(w, 8, 8);
            break;
        }
    QWidget* vista = area_->viewport();
    const QRect r(w->mapTo(vista, QPoint(0, 0)), w->size());
    const QRect visible = vista->rect();
    const int margen = 8;
    const auto seguir = [margen](QScrollBar* barra, int inicio, int fin, int desde, int hasta) {
        if (fin > hasta) barra->setValue(barra->value() + std::min(fin - hasta + margen, inicio - desde));
        else if (inicio < desde) barra->setValue(barra->value() - (desde - inicio + margen));
    };
    seguir(area_->verticalScrollBar(), r.top(), r.bottom(), visible.top(), visible.bottom());
    seguir(area_->horizontalScrollBar(), r.left(), r.right(), visible.left(), visible.right());
}

vb::Form* MDI::Abrir(const QString& entry) {
    if (!windowTable) return nullptr;
    const auto it = windowTable->find(entry);
    if (it == windowTable->end()) return nullptr;
    for (QMdiSubWindow* s : area_->subWindowList()) {
        vb::Form* f = formOf(s);
        if (f && !f->IsUnloaded() && f->objectName() == it->second.window) {
            s->show();
            area_->setActiveSubWindow(s);
            s->raise();
            return f;
        }
    }
    vb::Form* form = it->second.create();
    form->setObjectName(it->second.window);
    auto* marco = new MarcoFijo(form);
    QMdiSubWindow* sub = area_->addSubWindow(marco);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    // A click on a label or a frame of the window leaves the focus where it is,
    // as in the forms runtime: the frame of a child window takes no focus of its
    // own, so no LostFocus runs for a box the user merely clicked away from.
    sub->setFocusPolicy(Qt::NoFocus);
    sub->setWindowTitle(form->windowTitle());
    connect(form, &QWidget::windowTitleChanged, sub, &QWidget::setWindowTitle);
    form->Load();
    if (form->IsUnloaded() || vb::HasEnded()) return nullptr;
    // The window keeps the size it is laid out at, whatever its frame does later.
    form->setFixedSize(form->sizeHint().expandedTo(form->minimumSizeHint()));
    sub->adjustSize();
    sub->move(cascadePosition(sub));
    sub->show();
    area_->setActiveSubWindow(sub);
    return form;
}

// A new child window opens one step below and to the right of the last one, as
// in a cascade, starting again at the top left when it would leave the area.
QPoint MDI::cascadePosition(const QMdiSubWindow* sub) const {
    int open = 0;
    for (const QMdiSubWindow* s : area_->subWindowList())
        if (s != sub && s->isVisible() && !s->isMinimized()) ++open;
    const int step = std::max(sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, sub), 16);
    const QSize room = area_->viewport()->size() - sub->size();
    const int places = std::max(1, std::min(room.width(), room.height()) / step + 1);
    const int n = open % places;
    return {n * step, n * step};
}

void MDI::closeEvent(QCloseEvent* e) {
    // Closing by the system box unloads the child windows and ends the program.
    area_->closeAllSubWindows();
    QMainWindow::closeEvent(e);
    if (mainWindow == this) vb::ProgramEnded();
}

} // namespace vel
