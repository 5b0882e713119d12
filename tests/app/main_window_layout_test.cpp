// How the main window and its child windows sit on the screen: the main window
// centred at a working size, children opened in a cascade inside it, each child
// a fixed-layout form that a smaller frame cuts off with scroll bars, and the
// program's own icon on every window.
#include "app/program.h"
#include "app/window_table.h"
#include "core/mdi.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "support/widgets.h"

#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// Every window the menu opens today, in menu order.
const char* const kEntries[] = {
    "mnuArchivoItemMantenimientoEstructura", "mnuArchivoItemMantenimientoformapago", "mnuArchivoItemMantenimientoIva",
    "MnuArchivoItemMantenimientoBancos",     "MnuArchivoItemMantenimientosucursales", "MnuArchivoItemMantenimientotiendas",
    "MnuArchivoItemMantenimientoalmacenes",  "MnuArchivoItemMantenimientooperadores"};

class MainWindow : public ::testing::Test {
protected:
    QTemporaryDir dir;
    vel::MDI* mdi = nullptr;

    void SetUp() override {
        vel::SetUpApplication(*qApp);
        vb::SetAppPath(dir.path());
        vel::schema::CreateEmptyDatabase(dir.filePath("datos.mdb"));
        vb::ResetEnded();
        vb::SetEndHandler([] {});
        vel::SetWindowTable(&vel::WindowTable());
        vb::RunEvent([] { vel::Main(); });
        mdi = vel::MainWindow();
        ASSERT_TRUE(mdi);
        settle();
    }
    void TearDown() override {
        vel::CloseSession();
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
        vb::SetAppPath(QString());
    }
    static void settle() { veltest::settle(); }
    QMdiSubWindow* open(const char* entry) {
        vb::Form* form = mdi->Abrir(QString::fromLatin1(entry));
        settle();
        EXPECT_TRUE(form) << entry;
        for (QWidget* p = form; p; p = p->parentWidget())
            if (auto* s = qobject_cast<QMdiSubWindow*>(p)) return s;
        ADD_FAILURE() << entry << " has no frame";
        return nullptr;
    }
    static vb::Form* formIn(QMdiSubWindow* s) { return s->findChild<vb::Form*>(); }
};

TEST_F(MainWindow, OpensCentredAtLeastAtItsWorkingSize) {
    const QRect free = mdi->screen()->availableGeometry();
    EXPECT_GE(mdi->Width(), 12180);
    EXPECT_GE(mdi->Height(), 8250);
    const int left = mdi->x() - free.x(), right = free.right() - mdi->geometry().right();
    if (mdi->width() < free.width()) EXPECT_NEAR(left, right, 2);
    else EXPECT_EQ(mdi->x(), free.x());
    EXPECT_GE(mdi->y(), free.y());
}

TEST_F(MainWindow, ChildrenOpenInACascadeInsideIt) {
    QMdiSubWindow* a = open("MnuArchivoItemMantenimientotiendas");
    QMdiSubWindow* b = open("mnuArchivoItemMantenimientoIva");
    QMdiSubWindow* c = open("mnuArchivoItemMantenimientoformapago");
    const QPoint step = b->pos() - a->pos();
    EXPECT_EQ(a->pos(), QPoint(0, 0));
    EXPECT_GT(step.x(), 0);
    EXPECT_EQ(step.x(), step.y());
    EXPECT_EQ(c->pos() - b->pos(), step);
    const QRect area = mdi->area()->viewport()->rect();
    for (QMdiSubWindow* s : {a, b, c}) EXPECT_TRUE(area.contains(s->geometry().topLeft())) << s->windowTitle().toStdString();
}

TEST_F(MainWindow, TiledChildrenKeepTheirSizeAndShowScrollBars) {
    std::vector<std::pair<QMdiSubWindow*, QSize>> opened;
    for (const char* e : kEntries) {
        QMdiSubWindow* s = open(e);
        opened.emplace_back(s, formIn(s)->size());
    }
    for (int arrangement : {1, 2}) {
        mdi->Arrange(arrangement);
        settle();
        int cut = 0;
        for (const auto& [s, designed] : opened) {
            vb::Form* f = formIn(s);
            EXPECT_EQ(f->size(), designed) << f->objectName().toStdString();
            auto* frame = qobject_cast<QScrollArea*>(s->widget());
            ASSERT_TRUE(frame);
            const QSize shown = frame->viewport()->size();
            if (shown.height() < designed.height()) {
                EXPECT_TRUE(frame->verticalScrollBar()->isVisible()) << f->objectName().toStdString();
                ++cut;
            }
            if (shown.width() < designed.width()) {
                EXPECT_TRUE(frame->horizontalScrollBar()->isVisible()) << f->objectName().toStdString();
                ++cut;
            }
        }
        // Eight windows do not fit side by side or one above the other.
        EXPECT_GT(cut, 0) << "arrangement " << arrangement;
    }
}

TEST_F(MainWindow, AMaximisedChildKeepsItsControlsTogether) {
    QMdiSubWindow* s = open("MnuArchivoItemMantenimientotiendas");
    const QSize designed = formIn(s)->size();
    const QRect nuevo = formIn(s)->findChild<QWidget*>("Commandnuevo")->geometry();
    s->showMaximized();
    settle();
    EXPECT_EQ(formIn(s)->size(), designed);
    EXPECT_EQ(formIn(s)->findChild<QWidget*>("Commandnuevo")->geometry(), nuevo);
    EXPECT_EQ(formIn(s)->pos(), QPoint(0, 0));
}

// On a 1024×768 screen the products window is taller than the work area: the
// area scrolls, and Tab through every control brings each one into sight, the
// buttons at the bottom too.
TEST_F(MainWindow, OnASmallScreenTheWorkAreaFollowsTheFocusThroughATallWindow) {
    QFile config(dir.filePath("config.ini"));
    ASSERT_TRUE(config.open(QIODevice::WriteOnly));
    config.write("ORTA\r\n");
    config.close();
    mdi->resize(1024, 768 - 40);
    settle();
    QMdiSubWindow* s = open("mnuArchivoItemMantenimientoArticulos");
    ASSERT_TRUE(s);
    QWidget* vista = mdi->area()->viewport();
    ASSERT_GT(s->height(), vista->height()) << "the window fits: nothing to scroll";
    EXPECT_GT(mdi->area()->verticalScrollBar()->maximum(), 0);
    vb::Form* form = formIn(s);
    form->activateWindow();
    form->FirstTabStop()->setFocus(Qt::TabFocusReason);
    settle();
    bool lejos = false;
    for (int i = 0; i < 80; ++i) {
        QWidget* foco = QApplication::focusWidget();
        ASSERT_TRUE(foco);
        const QRect r(foco->mapTo(vista, QPoint(0, 0)), foco->size());
        EXPECT_TRUE(vista->rect().contains(r)) << foco->objectName().toStdString() << " out of sight at "
                                               << r.y() << " of " << vista->height();
        if (form->mapTo(vista, QPoint(0, 0)).y() < 0) lejos = true;
        QTest::keyClick(foco, Qt::Key_Tab);
        settle();
    }
    EXPECT_TRUE(lejos) << "Tab never reached the bottom of the window";
}

TEST_F(MainWindow, EveryWindowCarriesTheProgramsIcon) {
    const QIcon icon = vel::ProgramIcon();
    ASSERT_FALSE(icon.isNull());
    ASSERT_FALSE(icon.pixmap(32).isNull());
    const QImage mine = icon.pixmap(32).toImage();
    EXPECT_EQ(mdi->windowIcon().pixmap(32).toImage(), mine);
    QMdiSubWindow* s = open("MnuArchivoItemMantenimientotiendas");
    EXPECT_EQ(s->windowIcon().pixmap(32).toImage(), mine);
}

} // namespace
