// A counter with the line area of a document on it: the real piece in a small
// window with an Aceptar button, a shop database with a few products, and
// helpers that type lines key by key as the shop owner does.
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "sales/document_totals.h"
#include "support/message_boxes.h"
#include "support/widgets.h"

#include <QApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace veltest {

// The window around the line area: what the piece reaches through Ventana.
class Counter : public QWidget {
public:
    vel::DocumentTotals* lines = new vel::DocumentTotals(this);
    QPushButton* Commandaceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    QLabel* Labelivaiva = new QLabel(this);
    QLabel* Labelivare = new QLabel(this);
    int calendarHidden = 0;

    Counter() {
        auto* l = new QVBoxLayout(this);
        l->addWidget(lines);
        l->addWidget(Commandaceptar);
        l->addWidget(Labelivaiva);
        l->addWidget(Labelivare);
        Commandaceptar->setObjectName(QStringLiteral("Commandaceptar"));
        lines->SetVentana({.Commandaceptar = Commandaceptar,
                           .OcultarCalendario = [this] { ++calendarHidden; },
                           .Labelivaiva = [this] { return Labelivaiva->text(); },
                           .Labelivare = [this] { return Labelivare->text(); },
                           .ProductoEncontrado = {}});
        resize(900, 600);
    }
};

class LineArea : public ::testing::Test {
protected:
    QTemporaryDir dir;
    std::unique_ptr<vel::Database> db;
    veltest::RecordedBoxes boxes;
    Counter* counter = nullptr;
    vel::DocumentTotals* w = nullptr;
    bool ended = false;

    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(path);
        db = vel::Database::OpenDatabase(path);
        vel::BaseDatos = db.get();
        vb::SetMessageBoxService(&boxes);
        vb::ResetEnded();
        vb::SetEndHandler([this] { ended = true; });
        // A screw sold at 1.21 with VAT, a hammer with a barcode, a tile at 121.
        Product("TORN-6", "TORNILLO 6MM", "1.21", "8412345678901");
        Product("MARTILLO", "MARTILLO DE CARPINTERO", "12.1", "8400000000017", "8400000000024");
        Product("AZULEJO", "AZULEJO BLANCO 20X20 BRILLO EXTRA", "121");
        counter = new Counter;
        w = counter->lines;
        newDocument();
        counter->show();
        counter->activateWindow();
        settle();
    }
    void TearDown() override {
        delete counter;
        vel::BaseDatos = nullptr;
        vb::SetMessageBoxService(nullptr);
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
    }

    // A product row as the products window writes it: 31 values.
    void Product(const QString& ref, const QString& desc, const QString& pvp, const QString& bar1 = {},
                 const QString& bar2 = {}, const QString& bar3 = {}) {
        db->Execute("INSERT INTO productos VALUES ('01', '01', '01', '01', '" + ref + "', '" + desc +
                    "', '', '', '', '', 0, " + pvp + ", 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '" + bar1 +
                    "', '" + bar2 + "', '" + bar3 + "', '', '', 2)");
    }

    // What the window does for a new document: the grid, the line and the foot.
    void newDocument() {
        w->ReconstruirGrid();
        w->LimpiarLinea();
        w->RestablecerTotales();
        w->DescuentoDocumento = 0;
    }

    static void settle() { veltest::settle(); }

    QWidget* focused() const { return QApplication::focusWidget(); }

    // Key by key into a control; letters beyond ASCII are keys carrying their text.
    static void keys(QWidget* target, const QString& text) {
        for (const QChar ch : text) {
            if (ch.unicode() < 128) {
                QTest::keyClick(target, char(ch.unicode()));
            } else {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(ch));
                QApplication::sendEvent(target, &press);
                QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(ch));
                QApplication::sendEvent(target, &release);
            }
        }
    }
    // Clicks into a field, as the user does, and types over what it holds.
    void typeInto(QLineEdit* field, const QString& text) {
        if (focused() != field) {
            field->setFocus(Qt::MouseFocusReason);
            settle();
        }
        EXPECT_EQ(focused(), field) << "the click didn't give the field the focus";
        field->selectAll();
        keys(field, text);
        settle();
    }
    // Types into the field that has the focus.
    void type(const QString& text) {
        keys(focused(), text);
        settle();
    }
    void enter() {
        QTest::keyClick(focused(), Qt::Key_Return);
        settle();
    }

    // A whole line from the keyboard: reference and Enter; the description when
    // the focus went there; then units, price and discount, each with Enter.
    void typeLine(const QString& ref, const QString& desc, const QString& units, const QString& price,
                  const QString& discount) {
        typeInto(w->Textreferencia, ref);
        enter();
        if (focused() == w->Textdescripcion) {
            type(desc);
            enter();
        }
        EXPECT_EQ(focused(), w->Textcantidad) << "units after the description";
        w->Textcantidad->selectAll();
        type(units);
        enter();
        w->Textprecio->selectAll();
        type(price);
        enter();
        EXPECT_EQ(focused(), w->Textdescuento) << "discount after the price";
        w->Textdescuento->selectAll();
        type(discount);
        enter();
    }

    // Every caption of the line and the foot, in one line.
    QString foot() const {
        return QStringLiteral("bruto=%1 dto=%2 neto=%3 base=%4 iva%=%5 iva=%6 rec%=%7 rec=%8 total=%9")
            .arg(w->Labelbruto->text(), w->Labeldescuento->text(), w->Labelneto->text(), w->Labelbase->text(),
                 w->Textiva->text(), w->Labelimporteiva->text(), w->Textrecargo->text(),
                 w->Labelimporterecargo->text(), w->Labeltotalfactura->text());
    }
    QString line() const {
        return QStringLiteral("ref=%1 desc=%2 uds=%3 precio=%4 sub=%5 dto=%6 total=%7")
            .arg(w->Textreferencia->text(), w->Textdescripcion->text(), w->Textcantidad->text(),
                 w->Textprecio->text(), w->Labelsubtotal->text(), w->Textdescuento->text(), w->Labeltotal->text());
    }
    // The cells of a grid row joined by "|".
    QString row(int r) const {
        QStringList cells;
        for (int c = 0; c < w->Gridfacturas->Cols(); ++c) cells << w->Gridfacturas->TextMatrix(r, c);
        return cells.join(QLatin1Char('|'));
    }
    int rows() const { return w->Gridfacturas->Rows(); }

    // A real double click on a cell of the grid.
    void doubleClickRow(int r, int c = 1) {
        QTableWidget* g = w->Gridfacturas;
        const QRect cell = g->visualRect(g->model()->index(r, c));
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        settle();
    }
};

} // namespace veltest
