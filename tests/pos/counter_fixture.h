// A shop counter for the point-of-sale tests: a fresh database with a few
// articles, config.ini, the clock pinned to a Saturday morning, message boxes
// answered from a queue, the bell, the end of the program and the printed
// tickets recorded (the recording printer), and the window FTpv open and
// active, driven with real keys and clicks.
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "pos/ftpv.h"
#include "runtime/app.h"
#include "runtime/beep.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"
#include "runtime/vb.h"
#include "support/message_boxes.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <deque>
#include <memory>

namespace veltest {

// The window with its protected parts in reach of the tests.
class VentanaTpv : public vel::FTpv {
public:
    using vel::FTpv::SentenciaCabecera;
    using vel::FTpv::SentenciaLinea;
};


// A product as the products window writes it, with what the counter reads:
// reference, description, price with VAT, VAT code and three bar codes.
inline QString Producto(const QString& referencia, const QString& descripcion, const QString& pvp, int codigoIva,
                        const QString& barras1 = {}, const QString& barras2 = {}, const QString& barras3 = {}) {
    return QStringLiteral("INSERT INTO productos VALUES ('01', '01', '01', '01', '%1', '%2', '', '', '', '', 0, %3, "
                          "0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '%4', '%5', '%6', '', '', %7)")
        .arg(referencia, descripcion, pvp, barras1, barras2, barras3)
        .arg(codigoIva);
}

class Mostrador : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        vel::schema::CreateEmptyDatabase(dir.filePath("datos.mdb"));
        vel::BaseDatos = vel::Database::OpenDatabase(dir.filePath("datos.mdb")).release();
        vb::SetAppPath(dir.path());
        Config("FERROBANDA\n");
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 15, 30)));
        vb::SetMessageBoxService(&cajas);
        vb::SetBeepListener([this] { ++pitidos; });
        vb::ResetEnded();
        vb::SetEndHandler([this] { terminado = true; });
        vb::SetPrintEnvironment(&impresora);
        // The shop: a 7% rate besides the three of a new database.
        Sql("INSERT INTO iva VALUES (4, 7, 0, 1)");
        Sql(Producto("TOR440", "TORNILLO 4X40", "0.12", 1, "8410000000011", "8410000000028", "8410000000035"));
        Sql(Producto("MAR500", "MARTILLO CARPINTERO 500G", "12.5", 1, "8410000000042"));
        Sql(Producto("TORBAN", "TORNILLO BANCO", "45", 1));
        Sql(Producto("PAN1", "PAN DE MOLDE", "2.2", 2));
        Sql(Producto("LEC1", "LECHE ENTERA", "1.04", 3));
        Sql(Producto("ANT7", "ANTIGUO REDUCIDO", "10.7", 4));
        Sql(Producto("SINIVA", "ARTICULO SIN TIPO", "12.1", 9));
    }

    void TearDown() override {
        ventana.reset();
        vb::SetMessageBoxService(nullptr);
        vb::SetBeepListener(nullptr);
        vb::SetEndHandler(nullptr);
        vb::SetPrintEnvironment(nullptr);
        vb::ResetEnded();
        vb::clock::unpin();
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
    }

    void Config(const QByteArray& contenido) {
        QFile f(dir.filePath("config.ini"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(contenido);
    }

    void Sql(const QString& sentencia) { vel::BaseDatos->Execute(sentencia); }

    // The rows of a query, fields joined by "|", rows in the order they come.
    QStringList Filas(const QString& sql) {
        QStringList filas;
        auto rs = vel::BaseDatos->OpenRecordset(sql);
        while (!rs->Eof()) {
            QStringList campos;
            for (const QString& c : columnas(sql)) campos << rs->Fields(c).str();
            filas << campos.join('|');
            rs->MoveNext();
        }
        return filas;
    }

    // Opens the window as the menu does: built, loaded, shown and active.
    void Abrir() {
        ventana = std::make_unique<VentanaTpv>();
        ventana->Load();
        ventana->show();
        ventana->activateWindow();
        QApplication::setActiveWindow(ventana.get());
        Asentar();
        vb::SetFocus(Caja("Textreferencia"));
        Asentar();
    }

    static void Asentar() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }

    QLineEdit* Caja(const char* nombre) { return ventana->findChild<QLineEdit*>(nombre); }
    QLabel* Etiqueta(const char* nombre) { return ventana->findChild<QLabel*>(nombre); }
    QPushButton* Boton(const char* nombre) { return ventana->findChild<QPushButton*>(nombre); }
    vb::ComboBox* Lista(const char* nombre) { return ventana->findChild<vb::ComboBox*>(nombre); }
    QListWidget* Ticket() { return ventana->findChild<QListWidget*>("ListTicket"); }
    QWidget* Foco() { return QApplication::focusWidget(); }

    // Types into a box key by key, as the operator or the scanner does.
    void Teclea(const char* nombre, const QString& texto) {
        QLineEdit* caja = Caja(nombre);
        if (Foco() != caja) vb::SetFocus(caja);
        Asentar();
        QTest::keyClicks(caja, texto);
        Asentar();
    }
    // One key, pressed and released on the control with the focus.
    void Tecla(Qt::Key tecla) {
        QWidget* w = Foco();
        ASSERT_NE(w, nullptr);
        QTest::keyClick(w, tecla);
        Asentar();
    }
    void Intro() { Tecla(Qt::Key_Return); }
    void Pulsa(const char* boton) {
        QTest::mouseClick(Boton(boton), Qt::LeftButton);
        Asentar();
    }
    // A scanner: the code and Enter in the reference box.
    void Escanea(const QString& codigo) {
        Teclea("Textreferencia", codigo);
        Intro();
    }
    // A whole line: scan, units, Enter.
    void Vende(const QString& codigo, const QString& unidades) {
        Escanea(codigo);
        Teclea("TextUnidades", unidades);
        Intro();
    }
    void DobleClicEnLinea(int fila) {
        QListWidget* l = Ticket();
        const QRect r = l->visualItemRect(l->item(fila));
        QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, r.center());
        QTest::mouseDClick(l->viewport(), Qt::LeftButton, {}, r.center());
        Asentar();
    }

    QTemporaryDir dir;
    veltest::RecordedBoxes cajas{veltest::YesToQuestions};
    vb::PrintRecorder impresora;
    int pitidos = 0;
    bool terminado = false;
    std::unique_ptr<VentanaTpv> ventana;

private:
    // The columns named between SELECT and FROM.
    static QStringList columnas(const QString& sql) {
        const qsizetype desde = sql.indexOf("SELECT ", 0, Qt::CaseInsensitive) + 7;
        const qsizetype hasta = sql.indexOf(" FROM ", 0, Qt::CaseInsensitive);
        QStringList c = sql.mid(desde, hasta - desde).split(',');
        for (QString& s : c) s = s.trimmed();
        return c;
    }
};

} // namespace veltest
