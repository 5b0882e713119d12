// The customer's and the supplier's account cards are one window: the same
// steps, typed with the amount owed in the box each card owes in, leave the
// same rows in the two pairs of tables with DEBE and HABER exchanged. And the
// positional INSERTs of both cards fit their tables.
#include "cards/formfichasclientes.h"
#include "cards/formfichasproveedores.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/flexgrid.h"
#include "runtime/msgbox.h"
#include "support/positional_insert.h"
#include "support/shop_folder.h"
#include "support/widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {


const char* kCliente =
    "INSERT INTO clientes VALUES ('C001', 'B12345678', 'PEDRO', 'GARCIA', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'LUGO', 'LUGO', 'ESPAÑOLA', 27001, 0, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '', '', 00, "
    "0000000000, 0, 0, '', 1, 0, 0, 0, 0, '0', 0, 0, '', 'FERRETERIA PEDRO SL', '01/02/2024', '', '')";
const char* kProveedor =
    "INSERT INTO proveedores VALUES ('C001', 'B12345678', 'PEDRO', 'GARCIA', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'LUGO', 'LUGO', 'ESPAÑOLA', 27001, 0, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '', '', 00, "
    "0000000000, 0, 0, '', 0, 'FERRETERIA PEDRO SL', '01/02/2024', '', '')";

class Cards : public ::testing::Test {
protected:
    veltest::ShopFolder shop{QDateTime(QDate(2026, 1, 15), QTime(10, 0))};
    bool& ended = shop.ended;
    std::unique_ptr<vel::CardWindow> w;

    void SetUp() override {
        shop.Execute(kCliente);
        shop.Execute(kProveedor);
        shop.Execute("INSERT INTO formapago VALUES ('3060', '30 Y 60 DIAS', 2, 30, 60, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)");
    }
    void TearDown() override { w.reset(); }
    void open(vel::CardWindow* window) {
        w.reset(window);
        w->show();
        w->activateWindow();
        w->Load();
        settle();
    }
    static void settle() { veltest::settle(); }
    template <class T> T* control(const char* name) { return veltest::control<T>(w.get(), name); }
    void click(const char* button) {
        QTest::mouseClick(control<QPushButton>(button), Qt::LeftButton);
        settle();
    }
    void type(const char* box, const QString& text) {
        QLineEdit* b = control<QLineEdit>(box);
        b->setFocus();
        settle();
        b->selectAll();
        QTest::keyClicks(b, text);
        settle();
    }
    void dblclickCell(int row, int col) {
        auto* g = control<vb::FlexGrid>("Gridapuntes");
        const QRect r = g->visualRect(g->model()->index(row, col));
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, r.center());
        settle();
    }

    // One shop owner's morning on a card: a schedule of 100 in two terms, a
    // single entry of 40 paid with 15, the first instalment marked, and the
    // single entry changed to 45. `owed` is the box of the amount owed on the
    // card (DEBE for a customer, HABER for a supplier), `pays` the other.
    void Morning(const char* owed, const char* pays) {
        click("Commandnuevo");
        control<vb::ComboBox>("Comboformapagoapunte")->SetListIndex(
            control<vb::ComboBox>("Comboformapagoapunte")->findText(QStringLiteral("3060")));
        QTest::mouseClick(control<QCheckBox>("Checkgenerarapunte"), Qt::LeftButton);
        type("Textdescripcionapunte", QStringLiteral("factura 7"));
        type(owed, QStringLiteral("100"));
        type(pays, QStringLiteral("0"));
        click("Commandaceptar");
        type("Textdescripcionapunte", QStringLiteral("albaran 3"));
        type(owed, QStringLiteral("40"));
        type(pays, QStringLiteral("15"));
        click("Commandaceptar");
        dblclickCell(2, 1); // marks instalment 2 as collected
        click("Commandcancelar");
        click("Commandmodificar");
        dblclickCell(3, 3); // takes entry 3
        type(owed, QStringLiteral("45"));
        click("Commandaceptar");
    }

    // The rows of a card's tables, with the two amounts in the order given.
    static QStringList Rows(const QString& who, const char* first, const char* second) {
        QStringList out;
        const QString d = "_detalle_fichas_" + who;
        auto rs = vel::BaseDatos->OpenRecordset(
            "SELECT * FROM detalle_fichas_" + who + " ORDER BY numero" + d);
        while (!rs->Eof()) {
            QStringList f;
            for (const char* c : {"ejercicio", "nif", "codigo", "numero", "tienda", "serie", "documento", "formapago",
                                  "descripcion", "fecha", first, second, "tipo_linea"})
                f << rs->Fields(QString::fromLatin1(c) + d).str();
            out << f.join(QLatin1Char('|'));
            rs->MoveNext();
        }
        const QString h = "_cabecera_fichas_" + who;
        auto cab = vel::BaseDatos->OpenRecordset("SELECT * FROM cabecera_fichas_" + who);
        while (!cab->Eof()) {
            QStringList f;
            for (const char* c : {"ejercicio", "nif", "codigo", "apuntes", first, second, "anterior", "ultimo"})
                f << cab->Fields(QString::fromLatin1(c) + h).str();
            out << f.join(QLatin1Char('|'));
            cab->MoveNext();
        }
        return out;
    }
};

TEST_F(Cards, TheSameStepsGiveMirroredRowsInTheTwoTables) {
    open(new vel::FormFichasClientes);
    Morning("Textdebeapunte", "Texthaberapunte");
    ASSERT_FALSE(ended);
    w.reset();
    open(new vel::FormFichasProveedores);
    Morning("Texthaberapunte", "Textdebeapunte");
    ASSERT_FALSE(ended);

    const QStringList clientes = Rows(QStringLiteral("clientes"), "debe", "haber");
    const QStringList proveedores = Rows(QStringLiteral("proveedores"), "haber", "debe");
    // Something was written, and what was written is the card's own sum: the
    // changed entry holds the card's total (100 + 45), the head owes 145 and
    // has 50 paid by the one marked instalment.
    EXPECT_EQ(clientes.join('\n').toStdString(),
              (QStringList{"2026|B12345678|C001|1|1|FC||3060|FACTURA 7|16/02/2026|100|50|",
                           "2026|B12345678|C001|2|1|FC||3060|FACTURA 7|16/03/2026|0|50|C",
                           "2026|B12345678|C001|3|1|FC||30|ALBARAN 3|15/01/2026|145|15|",
                           "2026|B12345678|C001|3|145|50|0|15/01/2026"})
                  .join('\n')
                  .toStdString());
    EXPECT_EQ(proveedores.join('\n').toStdString(), clientes.join('\n').toStdString());
}

TEST_F(Cards, TheTwoWindowsDifferOnlyInTheirData) {
    const vel::DatosFicha c = vel::FormFichasClientes::Datos();
    const vel::DatosFicha p = vel::FormFichasProveedores::Datos();
    EXPECT_EQ(c.palabra, "clientes");
    EXPECT_EQ(p.palabra, "proveedores");
    EXPECT_EQ(c.anotado, vel::Importe::Debe);
    EXPECT_EQ(p.anotado, vel::Importe::Haber);
    EXPECT_FALSE(c.informeDeGuardado);
    EXPECT_TRUE(p.informeDeGuardado);
    EXPECT_EQ(c.socio->notFound, "No se ha encontrado el Cliente.");
    EXPECT_EQ(p.socio->notFound, "No se ha encontrado el proveedor.");
    EXPECT_TRUE(c.sinControl.isEmpty());
    EXPECT_TRUE(p.sinControl.contains("Textcodigoiva"));
}

// Every positional INSERT of both cards, checked against the table's columns.
class Statements : public vel::CardWindow {
public:
    using CardWindow::CardWindow;
};

TEST_F(Cards, PositionalInsertsFitTheirTables) {
    for (const vel::DatosFicha& d : {vel::FormFichasClientes::Datos(), vel::FormFichasProveedores::Datos()}) {
        auto* s = new Statements(d);
        open(s);
        click("Commandnuevo");
        EXPECT_TRUE(veltest::InsertMatchesSchema(s->SentenciaApunte(1, QStringLiteral("15/01/2026"), 100, 0)));
        EXPECT_TRUE(veltest::InsertMatchesSchema(s->SentenciaInsertarCabecera(
            QStringLiteral("1"), QStringLiteral("100.00"), QStringLiteral("0.00"), QStringLiteral("0.00"),
            QStringLiteral("15/01/2026"))));
        w.reset();
    }
}

} // namespace
