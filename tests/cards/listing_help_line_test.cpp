// The help line: the pointer moving over a control with a help text puts it
// in Labelayuda; over a box inside a frame (no text of its own) the line
// stays as it was; over the window's bare area it says what the window is.
// Real mouse-move events, as the pointer sends them.
#include "listing_fixture.h"

#include <QGroupBox>
#include <QLabel>
#include <QTabBar>
#include "runtime/sstab.h"

namespace vel::testing {
namespace {

class HelpLine : public ListingTest {
protected:
    QString ayuda() { return c<QLabel>("Labelayuda")->text(); }
    // Moves the pointer onto a point of a widget.
    void sobre(QWidget* w, QPoint p = QPoint(-1, -1)) {
        if (p == QPoint(-1, -1)) p = w->rect().center();
        QTest::mouseMove(w, p);
        QApplication::processEvents();
    }
    // A point of a frame where none of its controls is.
    static QPoint hueco(QWidget* marco) {
        for (int y = marco->height() - 3; y > 0; y -= 2)
            for (int x = 3; x < marco->width(); x += 4)
                if (!marco->childAt(x, y)) return {x, y};
        ADD_FAILURE() << "no bare point in " << marco->objectName().toStdString();
        return {1, 1};
    }
};

TEST_F(HelpLine, EachControlTellsWhatItIsFor) {
    abre();
    EXPECT_EQ(ayuda(), "");
    sobre(c("BotonListadofcl"));
    EXPECT_EQ(ayuda(), "BUSCA LOS DATOS EN LAS FICHAS PARA EL LISTADO");
    sobre(c("Cancelar"));
    EXPECT_EQ(ayuda(), "CANCELA LA IMPRESION");
    sobre(c("Frameseleccion"), hueco(c("Frameseleccion")));
    EXPECT_EQ(ayuda(), "LISTADO DE UN CLIENTE O DE TODOS");
    sobre(c("Framedatosejer"), hueco(c("Framedatosejer")));
    EXPECT_EQ(ayuda(), "INTERVALO DEL LISTADO");
    sobre(c("Frameopciones"), hueco(c("Frameopciones")));
    EXPECT_EQ(ayuda(), "MUESTRA TOTALES Y/O SUBTOTALES DEL LISTADO");
    auto* lista = c<vb::LineList>("Listapuntes");
    sobre(lista->viewport());
    EXPECT_EQ(ayuda(), "EXTRACTO DE FICHAS DE CLIENTES");
    auto* tab = c<vb::SSTab>("SSTab1");
    sobre(tab->tabBar(), tab->tabBar()->tabRect(1).center());
    EXPECT_EQ(ayuda(), "DATOS DE CLIENTES");
    // A box inside a frame has no text: the line stays.
    sobre(c("Textejer"));
    EXPECT_EQ(ayuda(), "DATOS DE CLIENTES");
    // The window's bare area.
    sobre(w.get(), hueco(w.get()));
    EXPECT_EQ(ayuda(), "DATOS DEL LISTADO");
}

TEST_F(HelpLine, TheButtonsOfAListingAndTheSuppliersTexts) {
    abre(true);
    sobre(c("Frameseleccion"), hueco(c("Frameseleccion")));
    EXPECT_EQ(ayuda(), "LISTADO DE UN proENTE O DE TODOS");
    sobre(c<vb::LineList>("Listapuntes")->viewport());
    EXPECT_EQ(ayuda(), "EXTRACTO DE FICHAS DE proveedores");
    click("BotonListadofpr");
    sobre(c("BotonImprimirfpr"));
    EXPECT_EQ(ayuda(), "IMPRIME EL LISTADO");
    sobre(c("BotonCerrarfpr"));
    EXPECT_EQ(ayuda(), "BORRA EL LISTADO");
}

} // namespace
} // namespace vel::testing
