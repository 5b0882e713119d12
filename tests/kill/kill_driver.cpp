// velkill: the real windows saving documents over and over on a shop's
// database, killed with SIGKILL at random moments of their saves, and the
// check of the database after each kill.
//
//   velkill prepare FOLDER PRODUCTS    a shop as the program makes a new one
//                                      (catalogue folder, config.ini), with
//                                      Pedro, PRODUCTS products at 1.000 and one
//                                      stored note of 200 lines
//   velkill note-new FOLDER [N]        saves notes of 200 lines, N of them or for ever
//   velkill note-modify FOLDER         saves the stored note again and again (Modificar)
//   velkill invoice FOLDER             saves invoices of 200 lines
//   velkill ticket FOLDER              charges tickets of 100 lines at the till
//   velkill bulk FOLDER                raises every price by 10 % with the button
//   velkill notes FOLDER N LINES       saves N notes of LINES lines (two of these
//                                      run at once on one file)
//   velkill kills FOLDER KIND N [SEED] runs `velkill KIND FOLDER` N times, each
//                                      killed at a random moment of a save,
//                                      and checks the shop after each kill
//   velkill check FOLDER               0 when the database is whole; otherwise
//                                      one line for each thing wrong, starting
//                                      CORRUPT (the file) or TORN (a document)
//   velkill check FOLDER KIND SAVED BEFORE
//                                      the same, and the shop must be the one in
//                                      BEFORE moved on by SAVED whole saves of
//                                      KIND, or by one more (a kill after the
//                                      commit and before the mark)
//   velkill tear FOLDER HOW            damages a shop as a save without a
//                                      transaction would (for the test of the check)
//   velkill full-disk FOLDER KIND FREE the window ready, the disk filled up, then the save
//
// Each save runs as the event a click is (vb::RunEvent), so it is an action
// of the store exactly as in the program. Message boxes print on stdout as
// "BOX: text", questions as "ASK: text", answered No to printing and Yes
// otherwise.
#include "app/program.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "dbcare/database_care.h"
#include "masterdata/farticulos.h"
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
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <sqlite3.h>

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

class Cajas : public vb::MessageBoxService {
public:
    int show(const QString&, const QString& text, int style) override {
        const bool pregunta = (style & 7) == vb::vbYesNo;
        std::printf("%s: %s\n", pregunta ? "ASK" : "BOX", qPrintable(QString(text).replace('\n', ' ')));
        std::fflush(stdout);
        if (!pregunta) return vb::vbOK;
        return text.contains(QStringLiteral("imprimir")) ? vb::vbNo : vb::vbYes;
    }
    void about(const QString&, const QString&) override {}
};

const QString kPedro = QStringLiteral(
    "INSERT INTO clientes VALUES ('C001', '12345678Z', 'PEDRO', 'GARCIA LOPEZ', 'FERRETERIA PEDRO', 'CALLE MAYOR 1', "
    "'MADRID', 'MADRID', 'ESPAÑOLA', 28001, 911111111, 0, 600000000, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', "
    "'0049', '0012', 12, 1234567890, 28, 0, '369', 1, 5, 0, 1, 1, '1000', 0, 1, 'COM1', 'FERRETERIA PEDRO SL', "
    "'01/02/2024', '', 'ES12')");

// The lines each document is saved with.
constexpr int kLineasNota = 200;
constexpr int kLineasFactura = 200;
constexpr int kLineasTicket = 100;
// The bulk change: every price times (10 / 100 + 1), as the button computes it.
constexpr double kAumento = 10;

QString Ruta(const QString& carpeta) { return carpeta + QStringLiteral("/datos.mdb"); }

void Ejecutar(sqlite3* h, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const QString texto = QString::fromUtf8(error ? error : "?");
        sqlite3_free(error);
        vb::Raise(1, texto);
    }
}

// The shop's folder as the program makes a new one (the exchange folders, the
// chain's catalogue folder the products window opens, config.ini naming the
// default installation and store 1), then its data.
int Preparar(const QString& carpeta, int productos) {
    QDir(carpeta).removeRecursively();
    vel::PrepareUserFolder(carpeta);
    auto db = vel::Database::OpenDatabase(Ruta(carpeta));
    sqlite3* h = db->handle();
    Ejecutar(h, QStringLiteral("BEGIN"));
    db->Execute(kPedro);
    // One statement of the program's own form checks the column order; the
    // rest are the engine's copies of it.
    db->Execute(QStringLiteral("INSERT INTO productos VALUES ('01', '01', '01', '01', 'R0000000', 'ARTICULO 0', "
                               "'', '', '', '', 0, 1, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '', '', '', "
                               "'', '', 1)"));
    QStringList columnas;
    {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(h, "PRAGMA table_info(productos)", -1, &st, nullptr);
        while (sqlite3_step(st) == SQLITE_ROW) {
            const QString c = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)));
            if (c == QLatin1String("referencia_productos")) columnas << QStringLiteral("printf('R%07d', i)");
            else if (c == QLatin1String("descripcion_productos")) columnas << QStringLiteral("'ARTICULO ' || i");
            else columnas << c;
        }
        sqlite3_finalize(st);
    }
    Ejecutar(h, QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                               "INSERT INTO productos SELECT %2 FROM n, productos WHERE referencia_productos = 'R0000000'")
                    .arg(productos - 1)
                    .arg(columnas.join(QStringLiteral(", "))));
    // The stored note the modification saves again: number 1 of 2026 of store
    // 1 (the store config.ini names), with its counter, 200 lines.
    db->Execute(QStringLiteral("INSERT INTO series VALUES ('VN', 2026, 1, 'AV', 1)"));
    const QString clave = QStringLiteral("01, 'AV', 2026, 1");
    db->Execute("INSERT INTO cabecera_albaran_venta VALUES (" + clave +
                ", '02/03/2026', 00, '', 01, '', '', 'P', '12345678Z', 'PEDRO GARCIA LOPEZ', 'CALLE MAYOR 1', "
                "'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '369', 3, '0049', '0012', '12', '1234567890', 1, '', '', "
                "'', '', '', '', 0, 0, '100', '0', '0', '', 21, 5.2, 0, '0', 'ES12')");
    for (int i = 0; i < kLineasNota; ++i)
        db->Execute("INSERT INTO detalle_albaran_venta VALUES (" + clave + ", '', 'REF" + QString::number(i) +
                    "', 'ARTICULO " + QString::number(i) + "', 1, '2.5', '', '', '10', 0, 0, '9', '1', 0, 0, "
                    "'00', '00', '00', '00', 1, 01, '1')");
    Ejecutar(h, QStringLiteral("COMMIT"));
    return 0;
}

// The save under way, for the marks.
int guardadoEnCurso = 0;
QElapsedTimer relojGuardado;
long long sentenciasGuardado = 0; // statements the engine has begun in it

// Where the run that kills this one wants it to wait for the kill
// (VELKILL_AT="SAVE WHERE N"): at the door of save SAVE (stopped by SIGSTOP
// just after its SAVING mark, to be let go and killed a random time later),
// at the start of its Nth statement, or as its transaction begins to commit.
// It waits with a PAUSED mark.
struct Parada {
    int guardado = 0;
    enum { Ninguna, Puerta, Sentencia, Confirmar } donde = Ninguna;
    long long sentencia = 0;
};
Parada parada;

void LeerParada() {
    const QStringList p = qEnvironmentVariable("VELKILL_AT").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (p.size() < 2) return;
    parada.guardado = p[0].toInt();
    if (p[1] == QLatin1String("door")) parada.donde = Parada::Puerta;
    if (p[1] == QLatin1String("commit")) parada.donde = Parada::Confirmar;
    if (p[1] == QLatin1String("statement") && p.size() > 2) {
        parada.donde = Parada::Sentencia;
        parada.sentencia = p[2].toLongLong();
    }
}

[[noreturn]] void Esperar(const char* donde) {
    std::printf("PAUSED %d %s %lld\n", guardadoEnCurso, donde, sentenciasGuardado);
    std::fflush(stdout);
    for (;;) ::pause();
}

// The engine calls this as a transaction begins to commit.
int AlConfirmar(void*) {
    if (guardadoEnCurso > 0) {
        std::printf("COMMIT %d %lld\n", guardadoEnCurso, relojGuardado.nsecsElapsed() / 1000);
        std::fflush(stdout);
        if (parada.donde == Parada::Confirmar && parada.guardado == guardadoEnCurso) Esperar("commit");
    }
    return 0;
}

// ... and this as each statement begins.
int AlEmpezarSentencia(unsigned, void*, void*, void*) {
    if (guardadoEnCurso > 0) {
        ++sentenciasGuardado;
        if (parada.donde == Parada::Sentencia && parada.guardado == guardadoEnCurso &&
            parada.sentencia == sentenciasGuardado)
            Esperar("statement");
    }
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
        LeerParada();
        sqlite3_commit_hook(vel::BaseDatos->handle(), &AlConfirmar, nullptr);
        sqlite3_trace_v2(vel::BaseDatos->handle(), SQLITE_TRACE_STMT, &AlEmpezarSentencia, nullptr);
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

// The save itself, between marks: SAVING as it starts, COMMIT as its
// transaction begins to commit, SAVED when it is over, each with the
// microseconds since SAVING (and SAVED with the statements the save ran). A
// kill between SAVING and COMMIT fell inside the save's transaction.
void EmpezarGuardado(int n) {
    std::printf("SAVING %d\n", n);
    std::fflush(stdout);
    if (parada.donde == Parada::Puerta && parada.guardado == n) ::raise(SIGSTOP);
    guardadoEnCurso = n;
    sentenciasGuardado = 0;
    relojGuardado.start();
}

void TerminarGuardado() {
    std::printf("SAVED %d %lld %lld\n", guardadoEnCurso, relojGuardado.nsecsElapsed() / 1000, sentenciasGuardado);
    std::fflush(stdout);
    guardadoEnCurso = 0;
}

void Guardar(const std::function<void()>& procedimiento, int n) {
    EmpezarGuardado(n);
    vb::RunEvent(procedimiento);
    TerminarGuardado();
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

// The same note written as the program wrote it before its saves were whole:
// the counter, each line and the header, each statement on its own, with no
// transaction. Only for the test of the kill test itself, which must find
// such saves torn.
int NotasSinTransaccion(const QString& carpeta) {
    Sesion s(carpeta);
    auto rs = vel::BaseDatos->OpenRecordset(QStringLiteral(
        "SELECT contador_series FROM series WHERE tipo_series = 'VN' AND serie_series = 'AV' AND tienda_series = 1"));
    int numero = rs->Fields(QStringLiteral("contador_series")).num();
    rs.reset();
    for (int n = 0;; ++n) {
        ++numero;
        EmpezarGuardado(n + 1);
        const QString clave = QStringLiteral("01, 'AV', 2026, %1").arg(numero);
        vel::BaseDatos->Execute(QStringLiteral("UPDATE series SET contador_series = %1 WHERE tipo_series = 'VN' AND "
                                               "serie_series = 'AV' AND tienda_series = 1")
                                    .arg(numero));
        for (int i = 0; i < kLineasNota; ++i)
            vel::BaseDatos->Execute("INSERT INTO detalle_albaran_venta VALUES (" + clave + ", '', 'REF" +
                                    QString::number(i) + "', 'ARTICULO " + QString::number(i) +
                                    "', 1, '2.5', '', '', '10', 0, 0, '9', '1', 0, 0, '00', '00', '00', '00', 1, 01, '1')");
        vel::BaseDatos->Execute("INSERT INTO cabecera_albaran_venta VALUES (" + clave +
                                ", '02/03/2026', 00, '', 01, '', '', 'P', '12345678Z', 'PEDRO GARCIA LOPEZ', "
                                "'CALLE MAYOR 1', 'MADRID', '28001', 'MADRID', 'ESPAÑOLA', '369', 3, '0049', '0012', "
                                "'12', '1234567890', 1, '', '', '', '', '', '', 0, 0, '100', '0', '0', '', 21, 5.2, 0, "
                                "'0', 'ES12')");
        TerminarGuardado();
    }
}

int Modificar(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::FormAlbaranVenta>();
    for (int n = 0;; ++n) {
        Clic([&] { w->Commandmodificar_Click(); });
        auto* numeros = w->findChild<vb::ComboBox*>(QStringLiteral("Combonumerofactura"));
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
        Lineas(*w, kLineasFactura, n);
        Guardar([&] { w->Commandaceptar_Click(); }, n + 1);
    }
}

void LineasTicket(vel::FTpv& w, int lineas) {
    auto* ref = w.findChild<QLineEdit*>(QStringLiteral("Textreferencia"));
    auto* desc = w.findChild<QLineEdit*>(QStringLiteral("Textdescripcion"));
    auto* uds = w.findChild<QLineEdit*>(QStringLiteral("TextUnidades"));
    auto* imp = w.findChild<QLineEdit*>(QStringLiteral("TextImporte"));
    for (int i = 0; i < lineas; ++i) {
        ref->setText(QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')));
        desc->setText(QStringLiteral("ARTICULO %1").arg(i));
        uds->setText(QString::number(1 + i % 3));
        imp->setText(QStringLiteral("1.000"));
        Clic([&] { w.CommandAñadir_Click(); });
    }
}

int Tickets(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::FTpv>();
    for (int n = 0;; ++n) {
        LineasTicket(*w, kLineasTicket);
        Guardar([&] { w->CommandCobrar_Click(); }, n + 1);
    }
}

int Precios(const QString& carpeta) {
    Sesion s(carpeta);
    auto w = Abrir<vel::Farticulos>();
    auto* caja = w->findChild<QLineEdit*>(QStringLiteral("TextAumentarTodo"));
    if (!caja) return 4;
    for (int n = 0;; ++n) {
        caja->setText(QString::number(kAumento));
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
        if (!numeros || numeros->ListCount() == 0) return 4;
        Clic([&] { numeros->SetListIndex(0); });
        guardar = [w] { w->Commandaceptar_Click(); };
    } else if (que == QLatin1String("ticket")) {
        auto v = Abrir<vel::FTpv>();
        vel::FTpv* w = v.get();
        ventana = std::move(v);
        LineasTicket(*w, kLineasTicket);
        guardar = [w] { w->CommandCobrar_Click(); };
    } else if (que == QLatin1String("bulk")) {
        auto v = Abrir<vel::Farticulos>();
        vel::Farticulos* w = v.get();
        ventana = std::move(v);
        w->findChild<QLineEdit*>(QStringLiteral("TextAumentarTodo"))->setText(QString::number(kAumento));
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

// The database opened as the program opens it (its collations and functions,
// the log of a killed program taken in), for reading with the engine's own SQL.
class Tienda {
public:
    explicit Tienda(const QString& carpeta) : db_(vel::Database::OpenDatabase(Ruta(carpeta))) {}
    sqlite3* h() const { return db_->handle(); }

    // The first column of the first row; a statement the engine can't run is
    // an error with the engine's words.
    double Uno(const QString& sql) const {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(h(), sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK) {
            const QString error = QString::fromUtf8(sqlite3_errmsg(h()));
            sqlite3_finalize(st);
            vb::Raise(1, error + QStringLiteral(" en: ") + sql);
        }
        const int rc = sqlite3_step(st);
        const double v = rc == SQLITE_ROW ? sqlite3_column_double(st, 0) : 0;
        const QString error = QString::fromUtf8(sqlite3_errmsg(h()));
        sqlite3_finalize(st);
        if (rc != SQLITE_ROW && rc != SQLITE_DONE) vb::Raise(1, error + QStringLiteral(" en: ") + sql);
        return v;
    }

private:
    std::unique_ptr<vel::Database> db_;
};

// The lines of each new note (the stored note 1 has 200): --note-lines=N.
int lineasNotasNuevas = kLineasNota;
// Exactly SAVED saves, not one more: --exact.
bool exacto = false;

// The kinds of document, with the lines each header must have.
struct Clase {
    const char* nombre;
    QString cabecera, detalle;
    const char* serieContador; // the counter's series word
    int lineas;
};

QString Cab(const char* t) { return QStringLiteral("cabecera_%1").arg(QLatin1String(t)); }
QString Det(const char* t) { return QStringLiteral("detalle_%1").arg(QLatin1String(t)); }

const std::vector<Clase>& Clases() {
    static const std::vector<Clase> c = {
        {"albaranes", Cab("albaran_venta"), Det("albaran_venta"), "AV", kLineasNota},
        {"facturas", Cab("factura_venta"), Det("factura_venta"), "FD", kLineasFactura},
        {"tickets", Cab("diaria_ticket"), Det("diaria_ticket"), "TI", kLineasTicket},
    };
    return c;
}

// A line belongs to the header with its key: store, series, year and number.
QString MismaClave(const QString& a, const QString& ta, const QString& b, const QString& tb) {
    QStringList t;
    for (const char* k : {"tienda", "serie", "ejercicio", "numero"})
        t << QStringLiteral("%1.%2_%3 = %4.%2_%5").arg(a, QLatin1String(k), ta, b, tb);
    return t.join(QStringLiteral(" AND "));
}

// What a run moves: the documents of each kind, the products and their prices.
struct Foto {
    long long documentos[3] = {0, 0, 0};
    long long productos = 0;
    double precioMin = 0, precioMax = 0;
};

Foto Fotografiar(const Tienda& t) {
    Foto f;
    for (size_t i = 0; i < Clases().size(); ++i)
        f.documentos[i] = static_cast<long long>(t.Uno("SELECT count(*) FROM " + Clases()[i].cabecera));
    f.productos = static_cast<long long>(t.Uno(QStringLiteral("SELECT count(*) FROM productos")));
    f.precioMin = t.Uno(QStringLiteral("SELECT min(pvp_neto_productos) FROM productos"));
    f.precioMax = t.Uno(QStringLiteral("SELECT max(pvp_neto_productos) FROM productos"));
    return f;
}

// What is wrong with the shop, one line each: CORRUPT for the file, TORN for
// its documents and prices. Nothing when it is whole.
// The engine's whole check reads every index against its table; on a shop of
// 200,000 products that is most of the time a kill costs. The quick check
// reads every page but not the indexes against the tables.
bool comprobacionRapida = false;

QString ComprobacionRapida(const QString& carpeta) {
    Tienda t(carpeta);
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(t.h(), "PRAGMA quick_check", -1, &st, nullptr) != SQLITE_OK) {
        sqlite3_finalize(st);
        return QString::fromUtf8(sqlite3_errmsg(t.h()));
    }
    QStringList lineas;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        lineas << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE) lineas << QString::fromUtf8(sqlite3_errstr(rc));
    return lineas.join('\n');
}

QStringList Comprobar(const QString& carpeta) {
    QStringList mal;
    QString integridad;
    try {
        integridad = comprobacionRapida ? ComprobacionRapida(carpeta) : vel::ComprobarIntegridad(Ruta(carpeta));
    } catch (const vb::RuntimeError& e) {
        integridad = QStringLiteral("no se abre: error %1 %2").arg(e.Number).arg(e.Description);
    }
    if (integridad != QLatin1String("ok")) {
        mal << QStringLiteral("CORRUPT: %1").arg(QString(integridad).replace('\n', QStringLiteral("; ")));
        return mal;
    }
    try {
        Tienda t(carpeta);
        const auto debe = [&](const QString& que, const QString& sql, double esperado) {
            const double v = t.Uno(sql);
            if (v != esperado) mal << QStringLiteral("TORN: %1: %2 (debe ser %3)").arg(que).arg(v).arg(esperado);
        };
        for (const Clase& c : Clases()) {
            const QString nombre = QLatin1String(c.nombre);
            debe(nombre + QStringLiteral(": líneas sin su cabecera"),
                 QStringLiteral("SELECT count(*) FROM %1 l WHERE NOT EXISTS (SELECT 1 FROM %2 c WHERE %3)")
                     .arg(c.detalle, c.cabecera, MismaClave("c", c.cabecera, "l", c.detalle)),
                 0);
            // The stored note 1 keeps its 200 lines; new notes have theirs.
            const QString lineas = QLatin1String(c.serieContador) == QLatin1String("AV")
                                       ? QStringLiteral("CASE WHEN c.numero_%1 = 1 THEN %2 ELSE %3 END")
                                             .arg(c.cabecera)
                                             .arg(c.lineas)
                                             .arg(lineasNotasNuevas)
                                       : QString::number(c.lineas);
            debe(nombre + QStringLiteral(": cabeceras sin todas sus líneas"),
                 QStringLiteral("SELECT count(*) FROM %1 c WHERE (SELECT count(*) FROM %2 l WHERE %3) <> %4")
                     .arg(c.cabecera, c.detalle, MismaClave("c", c.cabecera, "l", c.detalle), lineas),
                 0);
            debe(nombre + QStringLiteral(": números repetidos"),
                 QStringLiteral("SELECT count(*) - count(DISTINCT tienda_%1 || '/' || serie_%1 || '/' || ejercicio_%1 || "
                                "'/' || numero_%1) FROM %1")
                     .arg(c.cabecera),
                 0);
            // Each counter of the kind stands at the last number saved under it
            // (a counter moved with no document is torn). Invoices count on
            // store 0 whatever the store of the invoice.
            const QString tienda = QLatin1String(c.serieContador) == QLatin1String("FD")
                                       ? QStringLiteral("0 = s.tienda_series")
                                       : QStringLiteral("CAST(d.tienda_%1 AS REAL) = s.tienda_series").arg(c.cabecera);
            debe(nombre + QStringLiteral(": contadores que no están en su último documento"),
                 QStringLiteral("SELECT count(*) FROM series s WHERE s.tipo_series = 'VN' AND s.serie_series = '%1' AND "
                                "s.contador_series <> (SELECT coalesce(max(d.numero_%2), -1) FROM %2 d WHERE "
                                "d.ejercicio_%2 = s.ejercicio_series AND %3)")
                     .arg(QLatin1String(c.serieContador), c.cabecera, tienda),
                 0);
        }
        debe(QStringLiteral("la nota guardada (número 1)"),
             QStringLiteral("SELECT count(*) FROM cabecera_albaran_venta WHERE numero_cabecera_albaran_venta = 1"), 1);
        debe(QStringLiteral("precios distintos (todos cambiados o ninguno)"),
             QStringLiteral("SELECT count(DISTINCT pvp_neto_productos) FROM productos"),
             t.Uno(QStringLiteral("SELECT count(*) FROM productos")) > 0 ? 1 : 0);
    } catch (const vb::RuntimeError& e) {
        mal << QStringLiteral("CORRUPT: no se puede leer: %1").arg(e.Description);
    }
    return mal;
}

// A price after n changes, computed as the button computes it.
double PrecioTras(double precio, int n) {
    for (int i = 0; i < n; ++i) precio = precio * (kAumento / 100 + 1);
    return precio;
}

bool Cerca(double a, double b) { return std::fabs(a - b) <= 1e-9 * std::max(std::fabs(a), std::fabs(b)); }

// The shop must be `antes` moved on by `guardados` whole saves of `clase`, or
// by one more: a save whose commit was done when the kill came, before its mark.
QStringList ComprobarAvance(const QString& carpeta, const QString& clase, int guardados, const Foto& antes) {
    QStringList mal = Comprobar(carpeta);
    if (!mal.isEmpty()) return mal;
    Foto ahora;
    try {
        Tienda t(carpeta);
        ahora = Fotografiar(t);
    } catch (const vb::RuntimeError& e) {
        return {QStringLiteral("CORRUPT: no se puede leer: %1").arg(e.Description)};
    }
    int mueve = -1; // the kind of document the run saves
    if (clase == QLatin1String("note-new")) mueve = 0;
    if (clase == QLatin1String("invoice")) mueve = 1;
    if (clase == QLatin1String("ticket")) mueve = 2;
    for (int i = 0; i < 3; ++i) {
        const long long a = antes.documentos[i], d = ahora.documentos[i];
        const bool bien = i == mueve ? (d == a + guardados || (!exacto && d == a + guardados + 1)) : d == a;
        if (!bien)
            mal << QStringLiteral("TORN: %1: %2 documentos; había %3 y se guardaron %4%5")
                       .arg(QLatin1String(Clases()[i].nombre))
                       .arg(d)
                       .arg(a)
                       .arg(i == mueve ? guardados : 0)
                       .arg(i == mueve && !exacto ? QStringLiteral(" (o uno más)") : QString());
    }
    if (ahora.productos != antes.productos)
        mal << QStringLiteral("TORN: %1 productos; había %2").arg(ahora.productos).arg(antes.productos);
    const int cambios = clase == QLatin1String("bulk") ? guardados : 0;
    const bool precioBien =
        Cerca(ahora.precioMin, PrecioTras(antes.precioMin, cambios)) ||
        (clase == QLatin1String("bulk") && !exacto && Cerca(ahora.precioMin, PrecioTras(antes.precioMin, cambios + 1)));
    if (!precioBien)
        mal << QStringLiteral("TORN: precio %1; era %2 y se cambió %3 veces%4")
                   .arg(ahora.precioMin, 0, 'g', 17)
                   .arg(antes.precioMin, 0, 'g', 17)
                   .arg(cambios)
                   .arg(clase == QLatin1String("bulk") ? QStringLiteral(" (o una más)") : QString());
    return mal;
}

int Informar(const QStringList& mal) {
    for (const QString& m : mal) std::printf("%s\n", qPrintable(m));
    if (!mal.isEmpty()) return 1;
    std::printf("OK\n");
    return 0;
}

// ---- A torn shop, for the test of the check ---------------------------------------

// What a save without a transaction leaves when it is cut short.
int Romper(const QString& carpeta, const QString& como) {
    if (como == QLatin1String("file")) {
        // Garbage over the first page of the products' table: the engine's
        // check finds it.
        qint64 raiz = 0, pagina = 0;
        {
            Tienda t(carpeta);
            raiz = static_cast<qint64>(
                t.Uno(QStringLiteral("SELECT rootpage FROM sqlite_schema WHERE name = 'productos'")));
            pagina = static_cast<qint64>(t.Uno(QStringLiteral("PRAGMA page_size")));
        }
        QFile f(Ruta(carpeta));
        if (raiz < 2 || !f.open(QIODevice::ReadWrite)) return 2;
        f.seek((raiz - 1) * pagina);
        std::mt19937 azar(7);
        QByteArray basura(pagina, '\0');
        for (char& c : basura) c = static_cast<char>(azar());
        f.write(basura);
        return 0;
    }
    Tienda t(carpeta);
    QString sql;
    if (como == QLatin1String("header")) // the lines written, the header not
        sql = QStringLiteral("DELETE FROM cabecera_albaran_venta WHERE numero_cabecera_albaran_venta = 1");
    else if (como == QLatin1String("lines")) // the header and part of its lines
        sql = QStringLiteral("DELETE FROM detalle_albaran_venta WHERE rowid IN (SELECT rowid FROM "
                             "detalle_albaran_venta WHERE numero_detalle_albaran_venta = 1 LIMIT 15)");
    else if (como == QLatin1String("counter")) // the counter moved, no document
        sql = QStringLiteral("UPDATE series SET contador_series = contador_series + 1 WHERE serie_series = 'AV'");
    else if (como == QLatin1String("prices")) // a bulk change cut half-way
        sql = QStringLiteral("UPDATE productos SET pvp_neto_productos = pvp_neto_productos * 1.1 WHERE rowid IN "
                             "(SELECT rowid FROM productos LIMIT (SELECT count(*) / 2 FROM productos))");
    else
        return 2;
    Ejecutar(t.h(), sql);
    return 0;
}

// ---- Kills ---------------------------------------------------------------------------

using Reloj = std::chrono::steady_clock;

// The child's output, line by line, as it comes.
class Salida {
public:
    explicit Salida(int fd) : fd_(fd) {}
    // Reads what has come until `hasta`; false at the end of the output.
    bool Leer(Reloj::time_point hasta) {
        while (!fin_) {
            const auto falta = std::max(Reloj::duration::zero(), hasta - Reloj::now());
            const long long ns = std::chrono::duration_cast<std::chrono::nanoseconds>(falta).count();
            const timespec espera{static_cast<time_t>(ns / 1000000000), static_cast<long>(ns % 1000000000)};
            pollfd p{fd_, POLLIN, 0};
            const int r = ::ppoll(&p, 1, &espera, nullptr);
            if (r <= 0) return true;
            char buf[4096];
            const ssize_t n = ::read(fd_, buf, sizeof buf);
            if (n <= 0) {
                fin_ = true;
                return false;
            }
            resto_.append(buf, n);
            qsizetype fin;
            while ((fin = resto_.indexOf('\n')) >= 0) {
                lineas.push_back({QString::fromUtf8(resto_.left(fin)), Reloj::now()});
                resto_.remove(0, fin + 1);
            }
            if (hasta <= Reloj::now()) return true;
        }
        return false;
    }
    // Waits for a line that starts with one of `textos`; false when the
    // output ends or the time runs out first.
    bool Esperar(const QStringList& textos, Reloj::time_point limite) {
        for (;;) {
            for (size_t i = visto_; i < lineas.size(); ++i)
                for (const QString& texto : textos)
                    if (lineas[i].texto.startsWith(texto)) {
                        visto_ = i + 1;
                        return true;
                    }
            visto_ = lineas.size();
            if (fin_ || Reloj::now() >= limite) return false;
            Leer(std::min(limite, Reloj::now() + std::chrono::milliseconds(50)));
        }
    }
    void Agotar() {
        const auto limite = Reloj::now() + std::chrono::seconds(5);
        while (!fin_ && Reloj::now() < limite) Leer(limite);
    }
    struct Linea {
        QString texto;
        Reloj::time_point cuando;
    };
    std::vector<Linea> lineas;

private:
    int fd_;
    bool fin_ = false;
    QByteArray resto_;
    size_t visto_ = 0;
};

// `velkill KIND FOLDER` as a child, its output on a pipe; `parada` is where
// it waits for the kill (VELKILL_AT), or empty.
pid_t Lanzar(const QString& clase, const QString& carpeta, const QString& parada, int* fd) {
    int p[2];
    if (::pipe(p) != 0) return -1;
    const QByteArray yo = QCoreApplication::applicationFilePath().toUtf8();
    const QByteArray c = clase.toUtf8(), f = carpeta.toUtf8(), en = parada.toUtf8();
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(p[1], 1);
        ::dup2(p[1], 2);
        ::close(p[0]);
        ::close(p[1]);
        if (en.isEmpty()) ::unsetenv("VELKILL_AT");
        else ::setenv("VELKILL_AT", en.constData(), 1);
        ::execl(yo.constData(), yo.constData(), c.constData(), f.constData(), static_cast<char*>(nullptr));
        std::_Exit(127);
    }
    ::close(p[1]);
    *fd = p[0];
    return pid;
}

double Segundos(Reloj::duration d) { return std::chrono::duration<double>(d).count(); }

// What a run's marks say of the moment it was killed.
struct Marcas {
    int guardados = 0;           // saves finished (SAVED)
    bool enTransaccion = false;  // after SAVING, before the COMMIT of that save
    bool enConfirmacion = false; // after COMMIT, before SAVED
    double arranque = -1;        // seconds from the start to the first SAVING
    std::vector<double> aConfirmar, duraciones, sentencias; // of each save finished
};

Marcas LeerMarcas(const std::vector<Salida::Linea>& lineas, Reloj::time_point inicio) {
    Marcas m;
    double confirmado = -1;
    for (const auto& l : lineas) {
        const double us = l.texto.section(QLatin1Char(' '), 2, 2).toDouble() / 1e6;
        if (l.texto.startsWith(QLatin1String("SAVING "))) {
            if (m.arranque < 0) m.arranque = Segundos(l.cuando - inicio);
            m.enTransaccion = true;
            m.enConfirmacion = false;
            confirmado = -1;
        } else if (l.texto.startsWith(QLatin1String("COMMIT ")) && m.enTransaccion) {
            m.enTransaccion = false;
            m.enConfirmacion = true;
            confirmado = us;
        } else if (l.texto.startsWith(QLatin1String("SAVED "))) {
            m.enTransaccion = m.enConfirmacion = false;
            ++m.guardados;
            m.duraciones.push_back(us);
            m.sentencias.push_back(l.texto.section(QLatin1Char(' '), 3, 3).toDouble());
            if (confirmado >= 0) m.aConfirmar.push_back(confirmado);
        }
    }
    return m;
}

void Dormir(double segundos) {
    const long long ns = static_cast<long long>(segundos * 1e9);
    const timespec t{static_cast<time_t>(ns / 1000000000), static_cast<long>(ns % 1000000000)};
    ::clock_nanosleep(CLOCK_MONOTONIC, 0, &t, nullptr);
}

// N runs of `velkill KIND FOLDER`, each killed with SIGKILL, and the shop
// checked after each kill. The moments, in the first save of the run or (one
// time in three) the second:
//  - 4 in 10: as a random statement of the save begins (the run waits there);
//  - 1 in 10: as its transaction begins to commit (the same);
//  - 3 in 10: a random time after the save's start, up to a little past the
//    moment its commit began in the runs before (the run is stopped at the
//    save's door, let go, and killed that time later);
//  - 1 in 10: a random time in the whole save;
//  - 1 in 10: a random time from the program's start.
// The shop goes on from run to run, as a shop killed again and again would.
// Prints what is wrong after each kill that left the shop wrong, and a
// summary line.
int Matar(const QString& carpeta, const QString& clase, int veces, unsigned semilla) {
    std::mt19937 azar(semilla);
    std::uniform_real_distribution<double> u(0, 1);
    // Measured as runs go: seconds to the first save, to a save's commit, of
    // a whole save, and the statements of a save (the fewest seen).
    double arranque = -1, aConfirmar = -1, duracion = -1, sentencias = -1;
    const auto media = [](double& m, double v) { m = m < 0 ? v : 0.7 * m + 0.3 * v; };
    int enTransaccion = 0, enConfirmacion = 0, corruptas = 0, rotas = 0, fallos = 0;
    for (int i = 0; i < veces; ++i) {
        Foto antes;
        try {
            Tienda t(carpeta);
            antes = Fotografiar(t);
        } catch (const vb::RuntimeError& e) {
            std::printf("%s: la tienda no se lee antes de la vuelta %d: %s\n", qPrintable(clase), i + 1,
                        qPrintable(e.Description));
            return 1;
        }
        const bool midiendo = sentencias < 0;
        const double suerte = u(azar);
        // The second save (after one that committed in the same run) for one
        // kill in three, where a save is short; a long save (the bulk change)
        // is always the first, so that a kill costs one save at the most.
        const int cual = duracion < 1.0 && u(azar) >= 2.0 / 3 ? 2 : 1;
        QString parada, momento;
        if (midiendo) {
            momento = QStringLiteral("tras un guardado");
        } else if (suerte < 0.4) {
            const long long k = 1 + static_cast<long long>(u(azar) * sentencias);
            parada = QStringLiteral("%1 statement %2").arg(cual).arg(k);
            momento = QStringLiteral("al empezar la sentencia %1 del guardado %2").arg(k).arg(cual);
        } else if (suerte < 0.5) {
            parada = QStringLiteral("%1 commit").arg(cual);
            momento = QStringLiteral("al empezar a confirmar el guardado %1").arg(cual);
        } else if (suerte < 0.9) {
            parada = QStringLiteral("%1 door").arg(cual);
        }
        int fd = -1;
        const auto inicio = Reloj::now();
        const pid_t pid = Lanzar(clase, carpeta, parada, &fd);
        if (pid < 0) return 1;
        Salida salida(fd);
        const auto limite = inicio + std::chrono::seconds(120);
        bool llego = true;
        if (midiendo) {
            llego = salida.Esperar({QStringLiteral("SAVED 1 ")}, limite);
        } else if (suerte < 0.5) {
            // Waits at the statement or the commit; a save with fewer
            // statements than that ends without waiting, and is killed then.
            llego = salida.Esperar({QStringLiteral("PAUSED"), QStringLiteral("SAVED %1 ").arg(cual)}, limite);
        } else if (suerte < 0.9) {
            llego = salida.Esperar({QStringLiteral("SAVING %1").arg(cual)}, limite);
            int estado = 0;
            if (llego) llego = ::waitpid(pid, &estado, WUNTRACED) == pid && WIFSTOPPED(estado);
            const double s = suerte < 0.8 ? u(azar) * (1.1 * aConfirmar + 0.003) : u(azar) * duracion;
            ::kill(pid, SIGCONT);
            Dormir(s);
            momento = QStringLiteral("%1 s dentro del guardado %2").arg(s, 0, 'f', 4).arg(cual);
        } else {
            const double s = u(azar) * (arranque + 2 * duracion);
            Dormir(s);
            momento = QStringLiteral("%1 s desde el inicio").arg(s, 0, 'f', 3);
        }
        ::kill(pid, SIGKILL);
        int estado = 0;
        ::waitpid(pid, &estado, 0);
        salida.Agotar();
        ::close(fd);
        const Marcas m = LeerMarcas(salida.lineas, inicio);
        if (m.arranque >= 0) media(arranque, m.arranque);
        for (double d : m.aConfirmar) media(aConfirmar, d);
        for (double d : m.duraciones) media(duracion, d);
        for (double d : m.sentencias) sentencias = sentencias < 0 ? d : std::min(sentencias, d);
        if (m.enTransaccion) ++enTransaccion;
        if (m.enConfirmacion) ++enConfirmacion;
        const bool muerto = WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL;
        if (!llego || !muerto) {
            ++fallos;
            std::printf("%s, vuelta %d: el programa %s antes del momento de matarlo:\n", qPrintable(clase), i + 1,
                        muerto ? "no llegó" : "terminó solo");
            for (size_t k = 0; k < salida.lineas.size() && k < 12; ++k)
                std::printf("  %s\n", qPrintable(salida.lineas[k].texto));
        }
        // On a large shop the quick check, and the whole one every fifth kill
        // and after the last.
        comprobacionRapida = antes.productos > 50000 && (i + 1) % 5 != 0 && i + 1 < veces;
        const QStringList mal = ComprobarAvance(carpeta, clase, m.guardados, antes);
        if (!mal.isEmpty()) {
            if (mal.first().startsWith(QLatin1String("CORRUPT"))) ++corruptas;
            else ++rotas;
            std::printf("%s, vuelta %d, muerto %s (%d guardados enteros):\n", qPrintable(clase), i + 1,
                        qPrintable(momento), m.guardados);
            for (const QString& l : mal) std::printf("  %s\n", qPrintable(l));
        }
        std::fflush(stdout);
    }
    std::printf("%s: %d kills, %d inside a save's transaction, %d as its commit began or just after; corrupt: %d, "
                "torn: %d, runs that failed: %d (a save: %.3f s, %.0f statements, its commit begins at %.3f s)\n",
                qPrintable(clase), veces, enTransaccion, enConfirmacion, corruptas, rotas, fallos, duracion,
                sentencias, aConfirmar);
    return corruptas + rotas + fallos == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    QStringList a;
    for (const QString& x : app.arguments()) {
        if (x.startsWith(QLatin1String("--note-lines="))) lineasNotasNuevas = x.section(QLatin1Char('='), 1).toInt();
        else if (x == QLatin1String("--exact")) exacto = true;
        else a << x;
    }
    if (a.size() < 3) {
        std::fprintf(stderr, "velkill ORDEN CARPETA ...\n");
        return 2;
    }
    const QString orden = a[1];
    const QString carpeta = a[2];
    const auto num = [&](int i, int porDefecto) { return a.size() > i ? a[i].toInt() : porDefecto; };
    try {
        if (orden == QLatin1String("prepare")) return Preparar(carpeta, num(3, 1000));
        if (orden == QLatin1String("note-new")) return NotasNuevas(carpeta, num(3, 0), kLineasNota);
        if (orden == QLatin1String("note-modify")) return Modificar(carpeta);
        if (orden == QLatin1String("note-untransacted")) return NotasSinTransaccion(carpeta);
        if (orden == QLatin1String("invoice")) return Facturas(carpeta);
        if (orden == QLatin1String("ticket")) return Tickets(carpeta);
        if (orden == QLatin1String("bulk")) return Precios(carpeta);
        if (orden == QLatin1String("notes")) return NotasNuevas(carpeta, num(3, 500), num(4, 3));
        if (orden == QLatin1String("kills"))
            return Matar(carpeta, a.value(3), num(4, 10),
                         a.size() > 5 ? a[5].toUInt() : static_cast<unsigned>(std::random_device{}()));
        if (orden == QLatin1String("check")) {
            if (a.size() < 6) return Informar(Comprobar(carpeta));
            Foto antes;
            {
                Tienda t(a[5]);
                antes = Fotografiar(t);
            }
            return Informar(ComprobarAvance(carpeta, a[3], a[4].toInt(), antes));
        }
        if (orden == QLatin1String("tear")) return Romper(carpeta, a.value(3));
        if (orden == QLatin1String("full-disk")) return DiscoLleno(carpeta, a.value(3), num(4, 8192));
    } catch (const vb::RuntimeError& e) {
        std::printf("ERROR %d %s\n", e.Number, qPrintable(e.Description));
        return 1;
    }
    std::fprintf(stderr, "orden desconocida\n");
    return 2;
}
