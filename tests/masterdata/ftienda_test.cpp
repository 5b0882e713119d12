// Stores, warehouses and operators: one window on three tables. The statements
// differ only by table and columns; the code list lies over the code box.
#include "masterdata/falmacenes.h"
#include "masterdata/foperador.h"
#include "masterdata/ftienda.h"

#include <gtest/gtest.h>

namespace {

template <class W>
class Abierta : public W {
public:
    using W::SentenciaInsertar;
    using W::SentenciaModificar;
    using W::SentenciaEliminar;
    using W::SentenciaBuscarCodigo;
    using W::SentenciaLista;
    QLineEdit* caja(const QString& name) { return vb::Control<QLineEdit>(this, name); }
    void rellenar(const QString& tercero) {
        caja("Textcodigo")->setText("1x");
        caja("Textnombre")->setText("Norte");
        caja(tercero)->setText("Calle Real 4");
    }
};

TEST(Ftienda, StatementsAsTheStoresWindowWritesThem) {
    Abierta<vel::Ftienda> w;
    w.rellenar("Textdireccion");
    EXPECT_EQ(w.SentenciaLista(), "SELECT * FROM tienda ORDER BY codigo_tienda");
    EXPECT_EQ(w.SentenciaBuscarCodigo("1x"), "SELECT * FROM tienda WHERE codigo_tienda = 1");
    // The INSERT takes the code as typed; every other statement reads it with Val.
    EXPECT_EQ(w.SentenciaInsertar(), "INSERT INTO tienda VALUES (1x, 'NORTE', 'CALLE REAL 4')");
    EXPECT_EQ(w.SentenciaModificar(),
              "UPDATE tienda SET  nombre_tienda = 'NORTE', direccion_tienda = 'CALLE REAL 4' WHERE codigo_tienda = 1");
    EXPECT_EQ(w.SentenciaEliminar(), "DELETE FROM tienda WHERE codigo_tienda = 1");
}

TEST(Falmacenes, StatementsOnTheWarehouses) {
    Abierta<vel::Falmacenes> w;
    w.rellenar("Textdireccion");
    EXPECT_EQ(w.SentenciaModificar(),
              "UPDATE almacen SET  nombre_almacen = 'NORTE', direccion_almacen = 'CALLE REAL 4' WHERE codigo_almacen = 1");
    EXPECT_EQ(w.SentenciaEliminar(), "DELETE FROM almacen WHERE codigo_almacen = 1");
}

TEST(Foperador, StatementsOnTheOperatorsNotesColumn) {
    Abierta<vel::Foperador> w;
    w.rellenar("Textobservaciones");
    EXPECT_EQ(w.SentenciaInsertar(), "INSERT INTO operador VALUES (1x, 'NORTE', 'CALLE REAL 4')");
    EXPECT_EQ(w.SentenciaModificar(),
              "UPDATE operador SET  nombre_operador = 'NORTE', observaciones_operador = 'CALLE REAL 4' "
              "WHERE codigo_operador = 1");
    EXPECT_EQ(w.SentenciaLista(), "SELECT * FROM operador ORDER BY codigo_operador");
}

TEST(Ftienda, CodeListCoversTheCodeBoxInAllThreeWindows) {
    vel::Ftienda t;
    vel::Falmacenes a;
    vel::Foperador o;
    for (QWidget* w : {static_cast<QWidget*>(&t), static_cast<QWidget*>(&a), static_cast<QWidget*>(&o)}) {
        w->show();
        auto* lista = vb::Control<vb::ComboBox>(w, "Combocodigo");
        lista->setVisible(true);
        EXPECT_EQ(lista->geometry(), vb::Control<QLineEdit>(w, "Textcodigo")->geometry()) << w->objectName().toStdString();
        EXPECT_GT(lista->width(), 40);
    }
}

} // namespace
