// A shop's database with account cards, the clock pinned, config.ini beside
// the program, message boxes and print dialogs answered, and the recording
// printer: what the listing windows are tested on.
#pragma once
#include "cards/card_listing.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/environment.h"
#include "runtime/forms.h"
#include "runtime/line_list.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"
#include "runtime/printer.h"
#include "support/positional_insert.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace vel::testing {

// Every box shown, as "TITLE|TEXT|STYLE"; the answers queued, else the default.
struct Boxes : vb::MessageBoxService {
    QStringList shown;
    std::deque<int> answers;
    int show(const QString& title, const QString& text, int style) override {
        shown << QStringLiteral("%1|%2|%3").arg(title, text).arg(style);
        if (!answers.empty()) {
            const int a = answers.front();
            answers.pop_front();
            return a;
        }
        if ((style & 7) == vb::vbYesNo) return (style & vb::vbDefaultButton2) ? vb::vbNo : vb::vbYes;
        return vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

// The print dialog: every answer chooses the recording printer's printer.
struct Dialogs : vb::DialogService {
    int shown = 0;
    bool cancel = false;
    bool none = false; // the dialog names neither a printer nor a file
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest& r) override {
        ++shown;
        if (cancel) return std::nullopt;
        vb::PrinterChoice c;
        if (!none) c.printerName = QStringLiteral("Grabadora");
        c.copies = r.copies;
        c.orientation = r.orientation;
        return c;
    }
};

// Pedro, customer C001; Lucía, customer C002.
inline QString Cliente(const QString& codigo, const QString& nif, const QString& comercial, const QString& fiscal) {
    return QStringLiteral(
               "INSERT INTO clientes VALUES ('%1', '%2', 'PEDRO', 'GARCIA LOPEZ', '%3', 'CALLE MAYOR 1', 'PORTELAS', "
               "'VALDEFERRO', 'ESPAÑOLA', 15001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, "
               "'', '0049', '0012', 12, 1234567890, 28, 0, '30', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', '%4', "
               "'01/02/2024', '', 'ES12')")
        .arg(codigo, nif, comercial, fiscal);
}

inline QString Proveedor(const QString& codigo, const QString& nif, const QString& comercial, const QString& fiscal) {
    return QStringLiteral(
               "INSERT INTO proveedores VALUES ('%1', '%2', 'ANA', 'RIOS', '%3', 'RUA NOVA 2', 'RIBAMAR', 'VALDEFERRO', "
               "'ESPAÑOLA', 36001, 986000000, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '0049', '0012', 12, "
               "1234567890, 0, 0, '30', 0, '%4', '01/02/2024', '', 'ES12')")
        .arg(codigo, nif, comercial, fiscal);
}

// One entry of a card: year, NIF, code, number, date, description, the two
// amounts as the engine is given them, and the collected mark.
inline QString Apunte(const QString& tabla, int ejercicio, const QString& nif, const QString& codigo, int numero,
                      const QString& fecha, const QString& descripcion, const QString& debe, const QString& haber,
                      const QString& tipo = QString()) {
    return QStringLiteral("INSERT INTO %1 VALUES (%2, '%3', '%4', %5, '1', 'FC', '', '30', '%6', '%7', %8, %9, '%10')")
        .arg(tabla)
        .arg(ejercicio)
        .arg(nif, codigo)
        .arg(numero)
        .arg(descripcion, fecha, debe, haber, tipo);
}

class ListingTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    Boxes boxes;
    Dialogs dialogs;
    vb::PrintRecorder recorder;
    std::optional<vb::InstalledEnvironment> env;
    std::unique_ptr<ListadoFichas> w;

    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        env.emplace(vb::Environment{.messageBoxes = &boxes,
                                    .dialogs = &dialogs,
                                    .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                                    .programFolder = dir.path(),
                                    .printers = &recorder});
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        schema::CreateEmptyDatabase(path);
        BaseDatos = Database::OpenDatabase(path).release();
        etiqueta("FERROBANDA");
    }
    void TearDown() override {
        w.reset();
        delete BaseDatos;
        BaseDatos = nullptr;
        env.reset();
    }
    void etiqueta(const QString& tag) {
        QFile f(dir.filePath(QStringLiteral("config.ini")));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write((tag + "\r\n1\r\n").toUtf8());
    }
    static void exec(const QString& sql) {
        EXPECT_TRUE(veltest::InsertMatchesSchema(sql)) << sql.toStdString();
        BaseDatos->Execute(sql);
    }
    // The customers' window, loaded and shown.
    void abre(bool proveedores = false) {
        if (proveedores) w = std::make_unique<Faplistado>();
        else w = std::make_unique<Faclistado>();
        w->Load();
        w->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
    }
    template <class T = QWidget>
    T* c(const QString& name) {
        T* x = vb::Control<T>(w.get(), name);
        EXPECT_NE(x, nullptr) << name.toStdString();
        return x;
    }
    vb::LineList* lista() { return c<vb::LineList>("Listapuntes"); }
    QStringList lineas() {
        QStringList l;
        for (int i = 0; i < lista()->ListCount(); ++i) l << lista()->List(i);
        return l;
    }
    void click(const QString& name) {
        auto* b = c<QAbstractButton>(name);
        QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
    }
    // Types into a box as the user does, after taking it with the mouse.
    void teclea(const QString& name, const QString& texto) {
        auto* t = c<QLineEdit>(name);
        t->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(t, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(t, texto);
    }
};

} // namespace vel::testing
