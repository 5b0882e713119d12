// velkill: the real windows saving documents over and over on a shop's
// database, for the tests that kill the program at random moments of a save
// (kill_test.sh) and for the check that follows each kill.
//
//   velkill prepare FOLDER PRODUCTS    a shop: Pedro, PRODUCTS products at 1.000,
//                                      one stored note of 200 lines
//   velkill note-new FOLDER [N]        saves notes of 200 lines, N of them or for ever
//   velkill note-modify FOLDER         saves the stored note again and again (Modificar)
//   velkill invoice FOLDER             saves invoices of 200 lines
//   velkill ticket FOLDER              charges tickets of 100 lines at the till
//   velkill bulk FOLDER                raises every price by 10 % with the button
//   velkill notes FOLDER N LINES       saves N notes of LINES lines (two of these
//                                      run at once on one file)
//   velkill check FOLDER               0 when the database is whole; otherwise
//                                      what is wrong, one line each
//
// Each save runs as the event a click is (vb::RunEvent), so it is an action
// of the store exactly as in the program. Message boxes print on stdout as
// "BOX: text" and are answered: No to printing, Yes otherwise.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "masterdata/farticulos.h"
#include "masterdata/price_changes.h"
#include "pos/ftpv.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"
#include "runtime/vb.h"
#include "sales/document_totals.h"
#include "sales/formalbaranventa.h"
#include "sales/formfacturaventa.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>

namespace {

class Cajas : public vb::MessageBoxService {
public:
    int show(const QString&, const QString& text, int style) override {
        std::printf("BOX: %s\n", qPrintable(QString(text).replace('\n', ' ')));
        std::fflush(stdout);
        if ((style & 7) != vb::vbYesNo) return vb::vbOK;
        return text.contains(QStringLiteral("imprimir")) ? vb::vbNo : vb::vbYes;
    }
    void about(const QString&, const QString&) override {}
};

const QString kPedro = QStringLiteral(
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')");

QString Ruta(const QString& carpeta) { return carpeta + QStringLiteral("/datos.mdb"); }

int Preparar(const QString& carpeta, int productos) {
    QDir().mkpath(carpeta);
    QFile::remove(Ruta(carpeta));
    vel::schema::CreateEmptyDatabase(Ruta(carpeta));
    auto db = vel::Database::OpenDatabase(Ruta(carpeta));
    QFile config(carpeta + QStringLiteral("/config.ini"));
    if (!config.open(QIODevice::WriteOnly)) return 2;
    config.write("FERROBANDA\n");
    config.close();
    sqlite3* h = db->handle();
    sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr);
    db->Execute(kPedro);
    for (int i = 0; i < productos; ++i)
        db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01', '01', '01', '01', 'R%1', 'ARTICULO %1', "
                                   "'', '', '', '', 0, 1, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '', '', '', "
                                   "'', '', 1)")
                        .arg(i, 7, 10, QLatin1Char('0')));
    // The stored note the modification saves again: number 1 of 2026, 200 lines.
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 0, 'AV', 1)"));
    const QString clave = QStringLiteral("01, 'AV', 2026, 1");
    db->Execute("INSERT INTO cabecera_albaran_venta VALUES (" + clave +
                ", '02/03/2026', 00, '', 01, '', '', 'P', '12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', "
                "'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '369', 3, '0049', '0012', '12', '1234567890', 1, '', '', "
                "'', '', '', '', 0, 0, '100', '0', '0', '', 21, 5.2, 0, '0', 'ES12')");
    for (int i = 0; i < 200; ++i)
        db->Execute("INSERT INTO detalle_albaran_venta VALUES (" + clave + ", '', 'REF" + QString::number(i) +
                    "', 'ARTICULO " + QString::number(i) + "', 1, '2.5', '', '', '10', 0, 0, '9', '1', 0, 0, "
                    "'00', '00', '00', '00', 1, 01, '1')");
    sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr);
    return 0;
}

// The session of the program on the folder's database, as Main opens it.
struct Sesion {
    Cajas cajas;
    vb::PrintRecorder impresora;
    explicit Sesion(const QString& carpeta) {
        vb::SetAppPath(carpeta);
        vb::SetMessageBoxService(&cajas);
        vb::SetPrintEnvironment(&impresora);
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
        vb::SetEndHandler([] {
            std::printf("END\n");
            std::fflush(stdout);
            std::_Exit(3);
        });
        vel::BaseDatos = vel::Database::OpenDatabase(Ruta(carpeta)).release();
    }
};

template <class W>
std::unique_ptr<W> Abrir() {
    auto w = std::make_unique<W>();
    w->resize(1000, 760);
    w->show();
    w->Load();
    return w;
}

void Lineas(vel::DocumentWindow& w, int lineas, int vuelta) {
    for (int i = 0; i < lineas; ++i)
        w.Lineas()->ReproducirLinea(QStringLiteral("REF%1").arg(i), QStringLiteral("ARTICULO %1").arg(i),
                                    QString::number(1 + vuelta % 5), QStringLiteral("%1.5").arg(i % 90),
                                    QString::number(i % 20));
}

void Clic(const std::function<void()>& procedimiento) { vb::RunEvent(procedimiento); }

// The save itself, between two marks: a kill after SAVING and before SAVED
// fell in the middle of a save.
void Guardar(const std::function<void()>& procedimiento, int n) {
    std::printf("SAVING %d\n", n);
    std::fflush(stdout);
    vb::RunEvent(procedimiento);
    std::printf("SAVED %d\n", n);
    std::fflush(stdout);
}

int NotasNuevas(const QString& carpeta, int cuantas, int lineas) {
    Sesion s(carpeta);
    auto w = Abrir<vel::FormAlbaranVenta>();
    for (int n = 0; cuantas <= 0 || n < cuantas; ++n) {
        Clic([&] { w->Commandnuevo_Click(); });
        Lineas(*w, lineas, n);
        Guardar([&] { w->Commandaceptar_Click(); }, n + 1);
    }
    return 0;
}

template <class W>
int Modificar(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<W>();
    for (int n = 0;; ++n) {
        Clic([&] { w->Commandmodificar_Click(); });
        auto* numeros = w->template findChild<vb::ComboBox*>(QStringLiteral("Combonumerofactura"));
        if (!numeros || numeros->ListCount() == 0) return 4;
        Clic([&] { numeros->SetListIndex(0); });
        Guardar([&] { w->Commandaceptar_Click(); }, n + 1);
        Clic([&] { w->Commandcancelar_Click(); });
    }
}

int Facturas(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::FormFacturaVenta>();
    for (int n = 0;; ++n) {
        Clic([&] { w->Commandnuevo_Click(); });
        Lineas(*w, 200, n);
        Guardar([&] { w->Commandaceptar_Click(); }, n + 1);
    }
}

int Tickets(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::FTpv>();
    auto* ref = w->findChild<QLineEdit*>(QStringLiteral("Textreferencia"));
    auto* desc = w->findChild<QLineEdit*>(QStringLiteral("Textdescripcion"));
    auto* uds = w->findChild<QLineEdit*>(QStringLiteral("TextUnidades"));
    auto* imp = w->findChild<QLineEdit*>(QStringLiteral("TextImporte"));
    for (int n = 0;; ++n) {
        for (int i = 0; i < 100; ++i) {
            ref->setText(QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')));
            desc->setText(QStringLiteral("ARTICULO %1").arg(i));
            uds->setText(QString::number(1 + i % 3));
            imp->setText(QStringLiteral("1.000"));
            Clic([&] { w->CommandAñadir_Click(); });
        }
        Guardar([&] { w->CommandCobrar_Click(); }, n + 1);
    }
}

int Precios(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::Farticulos>();
    auto* caja = w->findChild<QLineEdit*>(QStringLiteral("TextAumentarTodo"));
    if (!caja) return 4;
    for (int n = 0;; ++n) {
        caja->setText(QStringLiteral("10"));
        Guardar([&] { w->CommandCambiarTodo_Click(); }, n + 1);
    }
}

// ---- A full disk ------------------------------------------------------------------

// Fills the folder's filesystem with a file, leaving `libre` bytes.
void Llenar(const QString& carpeta, qint64 libre) {
    QFile relleno(carpeta + QStringLiteral("/relleno"));
    if (!relleno.open(QIODevice::WriteOnly)) return;
    const QByteArray trozo(64 * 1024, 'x');
    while (relleno.write(trozo) == trozo.size() && relleno.flush()) {
    }
    relleno.close();
    relleno.resize(std::max<qint64>(0, relleno.size() - libre));
}

// The window opened and the document typed, then the disk fills up, then the
// save. What the user sees prints as BOX lines.
int DiscoLleno(const QString& carpeta, const QString& que, qint64 libre) {
    Sesion s(carpeta);
    std::function<void()> guardar;
    std::unique_ptr<QWidget> ventana;
    if (que == QLatin1String("note-new") || que == QLatin1String("invoice")) {
        vel::DocumentWindow* w = nullptr;
        if (que == QLatin1String("note-new")) {
            auto v = Abrir<vel::FormAlbaranVenta>();
            w = v.get();
            ventana = std::move(v);
        } else {
            auto v = Abrir<vel::FormFacturaVenta>();
            w = v.get();
            ventana = std::move(v);
        }
        Clic([&] { w->Commandnuevo_Click(); });
        Lineas(*w, 200, 1);
        guardar = [w] { w->Commandaceptar_Click(); };
    } else if (que == QLatin1String("note-modify")) {
        auto v = Abrir<vel::FormAlbaranVenta>();
        vel::FormAlbaranVenta* w = v.get();
        ventana = std::move(v);
        Clic([&] { w->Commandmodificar_Click(); });
        auto* numeros = w->findChild<vb::ComboBox*>(QStringLiteral("Combonumerofactura"));
        Clic([&] { numeros->SetListIndex(0); });
        guardar = [w] { w->Commandaceptar_Click(); };
    } else if (que == QLatin1String("ticket")) {
        auto v = Abrir<vel::FTpv>();
        vel::FTpv* w = v.get();
        ventana = std::move(v);
        for (int i = 0; i < 100; ++i) {
            w->findChild<QLineEdit*>(QStringLiteral("Textreferencia"))->setText(QStringLiteral("R%1").arg(i));
            w->findChild<QLineEdit*>(QStringLiteral("Textdescripcion"))->setText(QStringLiteral("ARTICULO %1").arg(i));
            w->findChild<QLineEdit*>(QStringLiteral("TextUnidades"))->setText(QStringLiteral("1"));
            w->findChild<QLineEdit*>(QStringLiteral("TextImporte"))->setText(QStringLiteral("1.000"));
            Clic([&] { w->CommandAñadir_Click(); });
        }
        guardar = [w] { w->CommandCobrar_Click(); };
    } else if (que == QLatin1String("bulk")) {
        auto v = Abrir<vel::Farticulos>();
        vel::Farticulos* w = v.get();
        ventana = std::move(v);
        w->findChild<QLineEdit*>(QStringLiteral("TextAumentarTodo"))->setText(QStringLiteral("10"));
        guardar = [w] { w->CommandCambiarTodo_Click(); };
    } else {
        return 2;
    }
    Llenar(carpeta, libre);
    std::printf("FULL\n");
    std::fflush(stdout);
    // The end of the program (an untrapped error) leaves through the end handler.
    vb::SetEndHandler([carpeta] {
        QFile::remove(carpeta + QStringLiteral("/relleno"));
        std::printf("END\n");
        std::fflush(stdout);
        std::_Exit(3);
    });
    Clic(guardar);
    QFile::remove(carpeta + QStringLiteral("/relleno"));
    std::printf("DONE\n");
    std::fflush(stdout);
    return 0;
}

// ---- The check after a kill -------------------------------------------------------

QStringList Mal;

long long Uno(sqlite3* h, const char* sql) {
    sqlite3_stmt* st = nullptr;
    long long v = -1;
    if (sqlite3_prepare_v2(h, sql, -1, &st, nullptr) == SQLITE_OK && sqlite3_step(st) == SQLITE_ROW)
        v = sqlite3_column_int64(st, 0);
    sqlite3_finalize(st);
    return v;
}

void Debe(sqlite3* h, const char* que, const char* sql, long long esperado) {
    const long long v = Uno(h, sql);
    if (v != esperado) Mal << QStringLiteral("%1: %2 (esperado %3)").arg(que).arg(v).arg(esperado);
}

// Every header with exactly `lineas` lines (0: any number, but at least one),
// no line without its header, and the counter at the highest number.
void Documentos(sqlite3* h, const char* cab, const char* det, const char* c, const char* d, int lineas,
                const char* contador) {
    const QByteArray sinCabecera =
        QStringLiteral("SELECT count(*) FROM %1 l WHERE NOT EXISTS (SELECT 1 FROM %2 c WHERE "
                       "c.ejercicio_%3 = l.ejercicio_%4 AND c.numero_%3 = l.numero_%4)")
            .arg(det, cab, c, d)
            .toUtf8();
    Debe(h, "líneas sin cabecera", sinCabecera.constData(), 0);
    const QByteArray malas =
        (lineas > 0 ? QStringLiteral("SELECT count(*) FROM %1 c WHERE (SELECT count(*) FROM %2 l WHERE "
                                     "l.ejercicio_%4 = c.ejercicio_%3 AND l.numero_%4 = c.numero_%3) <> %5")
                    : QStringLiteral("SELECT count(*) FROM %1 c WHERE (SELECT count(*) FROM %2 l WHERE "
                                     "l.ejercicio_%4 = c.ejercicio_%3 AND l.numero_%4 = c.numero_%3) = %5"))
            .arg(cab, det, c, d)
            .arg(lineas)
            .toUtf8();
    Debe(h, "cabeceras sin todas sus líneas", malas.constData(), 0);
    const QByteArray tope = QStringLiteral("SELECT coalesce(max(numero_%1), 0) FROM %2").arg(c, cab).toUtf8();
    const long long maximo = Uno(h, tope.constData());
    if (maximo > 0) Debe(h, "contador", contador, maximo);
}

int Comprobar(const QString& carpeta, int lineasNota) {
    sqlite3* h = nullptr;
    if (sqlite3_open_v2(Ruta(carpeta).toUtf8().constData(), &h, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        std::printf("CORRUPT: no abre\n");
        return 1;
    }
    sqlite3_stmt* st = nullptr;
    QString integridad;
    if (sqlite3_prepare_v2(h, "PRAGMA integrity_check", -1, &st, nullptr) == SQLITE_OK)
        while (sqlite3_step(st) == SQLITE_ROW) integridad += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    if (integridad != QLatin1String("ok")) {
        std::printf("CORRUPT: %s\n", qPrintable(integridad));
        sqlite3_close(h);
        return 1;
    }
    Documentos(h, "cabecera_albaran_venta", "detalle_albaran_venta", "cabecera_albaran_venta", "detalle_albaran_venta",
               lineasNota, "SELECT contador_series FROM series WHERE tipo_series = 'VN' AND serie_series = 'AV'");
    Documentos(h, "cabecera_factura_venta", "detalle_factura_venta", "cabecera_factura_venta", "detalle_factura_venta",
               200, "SELECT contador_series FROM series WHERE tipo_series = 'VN' AND serie_series = 'FD'");
    Documentos(h, "cabecera_diaria_ticket", "detalle_diaria_ticket", "cabecera_diaria_ticket", "detalle_diaria_ticket",
               100, "SELECT contador_series FROM series WHERE tipo_series = 'VN' AND serie_series = 'TI'");
    // The stored note is always there, whole.
    Debe(h, "la nota guardada", "SELECT count(*) FROM cabecera_albaran_venta WHERE numero_cabecera_albaran_venta = 1", 1);
    // Prices: all changed or none.
    Debe(h, "precios distintos", "SELECT count(DISTINCT pvp_neto_productos) FROM productos WHERE pvp_neto_productos > 0",
         Uno(h, "SELECT count(*) FROM productos") > 0 ? 1 : 0);
    // Numbers: never two notes with one number.
    Debe(h, "números repetidos",
         "SELECT count(*) - count(DISTINCT ejercicio_cabecera_albaran_venta || '/' || numero_cabecera_albaran_venta) "
         "FROM cabecera_albaran_venta",
         0);
    sqlite3_close(h);
    for (const QString& m : Mal) std::printf("TORN: %s\n", qPrintable(m));
    if (!Mal.isEmpty()) return 1;
    std::printf("OK\n");
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    const QStringList a = app.arguments();
    if (a.size() < 3) {
        std::fprintf(stderr, "velkill ORDEN CARPETA ...\n");
        return 2;
    }
    const QString orden = a[1];
    const QString carpeta = a[2];
    const auto num = [&](int i, int porDefecto) { return a.size() > i ? a[i].toInt() : porDefecto; };
    try {
        if (orden == QLatin1String("prepare")) return Preparar(carpeta, num(3, 1000));
        if (orden == QLatin1String("note-new")) return NotasNuevas(carpeta, num(3, 0), 200);
        if (orden == QLatin1String("note-modify")) return Modificar<vel::FormAlbaranVenta>(carpeta);
        if (orden == QLatin1String("invoice")) return Facturas(carpeta);
        if (orden == QLatin1String("ticket")) return Tickets(carpeta);
        if (orden == QLatin1String("bulk")) return Precios(carpeta);
        if (orden == QLatin1String("notes")) return NotasNuevas(carpeta, num(3, 500), num(4, 3));
        if (orden == QLatin1String("check")) return Comprobar(carpeta, num(3, 0));
        if (orden == QLatin1String("full-disk")) return DiscoLleno(carpeta, a.value(3), num(4, 8192));
    } catch (const vb::RuntimeError& e) {
        std::printf("ERROR %d %s\n", e.Number, qPrintable(e.Description));
        return 1;
    }
    std::fprintf(stderr, "orden desconocida\n");
    return 2;
}
