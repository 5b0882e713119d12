#include "sales/workbook.h"

#include "runtime/errors.h"
#include "runtime/vb.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <freexl.h>
#include <orcus/orcus_ods.hpp>
#include <orcus/orcus_xlsx.hpp>
#include <orcus/spreadsheet/document.hpp>
#include <orcus/spreadsheet/factory.hpp>
#include <orcus/spreadsheet/import_interface.hpp>
#include <orcus/spreadsheet/shared_strings.hpp>
#include <orcus/zip_archive.hpp>
#include <orcus/zip_archive_stream.hpp>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEL_HAS_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(VEL_HAS_ASAN)
#include <sanitizer/common_interface_defs.h>
#endif

namespace vel {

namespace ss = orcus::spreadsheet;

QString Celda::Texto() const {
    switch (tipo) {
    case Tipo::Numero: return vb::CStr(numero);
    case Tipo::Texto: return texto;
    default: return QString();
    }
}

double Celda::Sumando() const {
    switch (tipo) {
    case Tipo::Numero: return numero;
    case Tipo::Vacia: return 0;
    default: break;
    }
    if (texto.isEmpty()) return 0;
    bool ok = false;
    const double n = texto.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(n)) vb::Raise(13, QStringLiteral("No coinciden los tipos"));
    return n;
}

namespace {

// What the user reads when a file can't be read as a workbook.
[[noreturn]] void noEsUnLibro(const QString& path) {
    vb::Raise(1004, QStringLiteral("No se puede abrir el archivo '%1': el formato o la extensión no son válidos, "
                                   "o el archivo está dañado.")
                        .arg(QFileInfo(path).fileName()));
}

[[noreturn]] void demasiado(const QString& path) {
    vb::Raise(1004, QStringLiteral("El archivo '%1' es demasiado grande para importarlo.").arg(QFileInfo(path).fileName()));
}

// A limit passed while reading: unwinds through the library.
struct LimiteSuperado : std::exception {
    const char* what() const noexcept override { return "limit"; }
};

void comprobarCelda(int fila0, int columna0) {
    if (fila0 < 0 || columna0 < 0 || fila0 >= Libro::kFilasMaximas || columna0 >= Libro::kColumnasMaximas)
        throw LimiteSuperado();
}

Celda texto(std::string_view s) {
    if (s.size() > static_cast<size_t>(Libro::kLongitudMaximaCelda) * 4) throw LimiteSuperado();
    Celda c{.tipo = Celda::Tipo::Texto, .texto = QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()))};
    if (c.texto.size() > Libro::kLongitudMaximaCelda) throw LimiteSuperado();
    return c;
}

Celda numero(double n) { return Celda{.tipo = Celda::Tipo::Numero, .numero = n}; }

// ---- The packed formats: the sizes the packed file declares ------------------------
//
// liborcus unpacks each part of an .xlsx or .ods into memory at the size the
// packed file's directory declares. That directory is read here first (its
// fixed records only: the end record and one record per part), so that a
// bomb is refused before anything is unpacked.
quint32 le32(const uchar* p) { return p[0] | (p[1] << 8) | (p[2] << 16) | (quint32(p[3]) << 24); }
quint16 le16(const uchar* p) { return quint16(p[0] | (p[1] << 8)); }

void comprobarTamanos(const QByteArray& bytes, const QString& path) {
    const auto* d = reinterpret_cast<const uchar*>(bytes.constData());
    const qsizetype n = bytes.size();
    if (n < 22) noEsUnLibro(path);
    // The end record: within the last 64 KB + 22 bytes.
    qsizetype fin = -1;
    for (qsizetype i = n - 22; i >= 0 && i >= n - 22 - 65535; --i)
        if (le32(d + i) == 0x06054b50) {
            fin = i;
            break;
        }
    if (fin < 0) noEsUnLibro(path);
    const quint16 entradas = le16(d + fin + 10);
    const quint32 tamano = le32(d + fin + 12);
    const quint32 inicio = le32(d + fin + 16);
    if (inicio > static_cast<quint64>(n) || static_cast<quint64>(inicio) + tamano > static_cast<quint64>(n))
        noEsUnLibro(path);
    qsizetype p = inicio;
    long long total = 0;
    for (int e = 0; e < entradas; ++e) {
        if (p + 46 > n || le32(d + p) != 0x02014b50) noEsUnLibro(path);
        const quint32 empaquetado = le32(d + p + 20);
        const quint32 desempaquetado = le32(d + p + 24);
        const quint32 local = le32(d + p + 42);
        // The part's own header says its sizes again, and the library reads
        // them too: a packed size past the file's end is a damaged file, an
        // unpacked one past the limit a bomb, wherever it is said.
        if (empaquetado > static_cast<quint64>(n) || static_cast<quint64>(local) + 30 > static_cast<quint64>(n))
            noEsUnLibro(path);
        if (le32(d + local) != 0x04034b50 || le32(d + local + 18) > static_cast<quint64>(n)) noEsUnLibro(path);
        if (desempaquetado > Libro::kParteMaxima || le32(d + local + 22) > Libro::kParteMaxima) demasiado(path);
        total += desempaquetado;
        if (total > Libro::kTotalMaximo) demasiado(path);
        p += 46 + le16(d + p + 28) + le16(d + p + 30) + le16(d + p + 32);
    }
}

// ---- liborcus: the first sheet's cells, kept as they are read ------------------------

class HojaIgnorada : public ss::iface::import_sheet {
public:
    void set_auto(ss::row_t, ss::col_t, std::string_view) override {}
    void set_string(ss::row_t, ss::col_t, ss::string_id_t) override {}
    void set_value(ss::row_t, ss::col_t, double) override {}
    void set_bool(ss::row_t, ss::col_t, bool) override {}
    void set_date_time(ss::row_t, ss::col_t, int, int, int, int, int, double) override {}
    void set_format(ss::row_t, ss::col_t, size_t) override {}
    void set_format(ss::row_t, ss::col_t, ss::row_t, ss::col_t, size_t) override {}
    void fill_down_cells(ss::row_t, ss::col_t, ss::row_t) override {}
    ss::range_size_t get_sheet_size() const override { return {1048576, 16384}; }
};

class Formula : public ss::iface::import_formula {
public:
    explicit Formula(Libro& libro) : libro_(libro) {}
    void set_position(ss::row_t row, ss::col_t col) override {
        fila_ = row;
        columna_ = col;
        resultado_ = Celda();
    }
    void set_formula(ss::formula_grammar_t, std::string_view) override {}
    void set_shared_formula_index(size_t) override {}
    void set_result_string(std::string_view value) override { resultado_ = texto(value); }
    void set_result_value(double value) override { resultado_ = numero(value); }
    void set_result_bool(bool value) override { resultado_ = numero(value ? -1 : 0); }
    void set_result_empty() override { resultado_ = Celda(); }
    void commit() override {
        comprobarCelda(fila_, columna_);
        libro_.Poner(fila_, columna_, resultado_);
    }

private:
    Libro& libro_;
    int fila_ = 0, columna_ = 0;
    Celda resultado_;
};

class PrimeraHoja : public HojaIgnorada {
public:
    PrimeraHoja(Libro& libro, const ss::document& doc) : libro_(libro), doc_(doc), formula_(libro) {}
    void set_auto(ss::row_t row, ss::col_t col, std::string_view s) override {
        comprobarCelda(row, col);
        // A value typed into a cell: a number when it reads wholly as one.
        bool ok = false;
        const double n = QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())).toDouble(&ok);
        libro_.Poner(row, col, ok ? numero(n) : texto(s));
    }
    void set_string(ss::row_t row, ss::col_t col, ss::string_id_t id) override {
        comprobarCelda(row, col);
        const std::string* s = doc_.get_shared_strings()->get_string(id);
        libro_.Poner(row, col, s ? texto(*s) : Celda());
    }
    void set_value(ss::row_t row, ss::col_t col, double value) override {
        comprobarCelda(row, col);
        libro_.Poner(row, col, numero(value));
    }
    void set_bool(ss::row_t row, ss::col_t col, bool value) override {
        comprobarCelda(row, col);
        libro_.Poner(row, col, numero(value ? -1 : 0));
    }
    void set_date_time(ss::row_t row, ss::col_t col, int year, int month, int day, int, int, double) override {
        comprobarCelda(row, col);
        const QDate dia(year, month, day);
        libro_.Poner(row, col, Celda{.tipo = Celda::Tipo::Texto, .texto = dia.isValid() ? dia.toString("dd/MM/yyyy") : QString()});
    }
    void fill_down_cells(ss::row_t row, ss::col_t col, ss::row_t n) override {
        comprobarCelda(row, col);
        comprobarCelda(row + n, col);
        const Celda c = libro_.Cells(row + 1, col + 1);
        for (ss::row_t r = row + 1; r <= row + n; ++r) libro_.Poner(r, col, c);
    }
    ss::iface::import_formula* get_formula() override { return &formula_; }

private:
    Libro& libro_;
    const ss::document& doc_;
    Formula formula_;
};

// The model's factory keeps the shared strings and styles the formats need;
// the sheets are ours: the first one keeps its cells, the others nothing.
class Fabrica : public ss::import_factory {
public:
    Fabrica(ss::document& doc, Libro& libro) : ss::import_factory(doc), primera_(libro, doc) {}
    ss::iface::import_sheet* append_sheet(ss::sheet_t index, std::string_view name) override {
        if (index == 0) primeraNombre_ = std::string(name);
        else if (nombres_.size() < 1024) nombres_.emplace_back(name);
        return index == 0 ? static_cast<ss::iface::import_sheet*>(&primera_) : &otras_;
    }
    ss::iface::import_sheet* get_sheet(std::string_view name) override {
        if (name == primeraNombre_) return &primera_;
        for (const std::string& n : nombres_)
            if (n == name) return &otras_;
        return nullptr;
    }
    ss::iface::import_sheet* get_sheet(ss::sheet_t index) override { return index == 0 ? &primera_ : &otras_; }
    void finalize() override {}

private:
    PrimeraHoja primera_;
    HojaIgnorada otras_;
    std::string primeraNombre_;
    std::vector<std::string> nombres_;
};

// An .ods formula whose cached result is a text: liborcus passes on a
// formula's number result but gives nothing for a text result. So the first
// table of content.xml (unpacked by liborcus's own zip reader, read by Qt's
// XML reader) is walked once more for those cells alone: rows and columns
// counted with their repeats, and a formula cell of value type "string" that
// is still empty takes its office:string-value, or else its paragraphs' text.
void resultadosDeTexto(const QByteArray& bytes, Libro& libro) {
    orcus::zip_archive_stream_blob flujo(reinterpret_cast<const uint8_t*>(bytes.constData()),
                                         static_cast<size_t>(bytes.size()));
    orcus::zip_archive zip(&flujo);
    zip.load();
    std::vector<unsigned char> contenido;
    if (!zip.read_file_entry("content.xml", contenido)) return;
    const QString ns_table = QStringLiteral("urn:oasis:names:tc:opendocument:xmlns:table:1.0");
    const QString ns_office = QStringLiteral("urn:oasis:names:tc:opendocument:xmlns:office:1.0");
    const QString ns_text = QStringLiteral("urn:oasis:names:tc:opendocument:xmlns:text:1.0");
    QXmlStreamReader xml(QByteArray::fromRawData(reinterpret_cast<const char*>(contenido.data()),
                                                 static_cast<qsizetype>(contenido.size())));
    auto repeticiones = [&](const QString& atributo) {
        bool ok = false;
        const long long n = xml.attributes().value(ns_table, atributo).toLongLong(&ok);
        return ok && n > 0 ? n : 1LL;
    };
    int tablas = 0;
    long long fila = 0, columna = 0, repetidas = 1;
    bool enCelda = false, enParrafo = false;
    long long columnasCelda = 1;
    QString resultado;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const auto nombre = xml.name();
            if (xml.namespaceUri() == ns_table && nombre == QLatin1String("table")) {
                if (++tablas > 1) return;
            } else if (tablas != 1) {
                continue;
            } else if (xml.namespaceUri() == ns_table && nombre == QLatin1String("table-row")) {
                columna = 0;
                repetidas = repeticiones(QStringLiteral("number-rows-repeated"));
            } else if (xml.namespaceUri() == ns_table &&
                       (nombre == QLatin1String("table-cell") || nombre == QLatin1String("covered-table-cell"))) {
                columnasCelda = repeticiones(QStringLiteral("number-columns-repeated"));
                const auto a = xml.attributes();
                enCelda = nombre == QLatin1String("table-cell") && a.hasAttribute(ns_table, QStringLiteral("formula")) &&
                          a.value(ns_office, QStringLiteral("value-type")) == QLatin1String("string") &&
                          fila < Libro::kFilasMaximas && columna < Libro::kColumnasMaximas &&
                          libro.Cells(int(fila) + 1, int(columna) + 1).tipo == Celda::Tipo::Vacia;
                resultado.clear();
                if (enCelda && a.hasAttribute(ns_office, QStringLiteral("string-value"))) {
                    resultado = a.value(ns_office, QStringLiteral("string-value")).toString();
                    libro.Poner(int(fila), int(columna), texto(resultado.toStdString()));
                    enCelda = false;
                }
            } else if (enCelda && xml.namespaceUri() == ns_text && nombre == QLatin1String("p")) {
                if (enParrafo || !resultado.isEmpty()) resultado += QLatin1Char('\n');
                enParrafo = true;
            }
        } else if (token == QXmlStreamReader::Characters && enCelda && enParrafo) {
            resultado += xml.text();
            if (resultado.size() > Libro::kLongitudMaximaCelda) throw LimiteSuperado();
        } else if (token == QXmlStreamReader::EndElement && tablas == 1) {
            const auto nombre = xml.name();
            if (xml.namespaceUri() == ns_text && nombre == QLatin1String("p")) {
                enParrafo = false;
            } else if (xml.namespaceUri() == ns_table &&
                       (nombre == QLatin1String("table-cell") || nombre == QLatin1String("covered-table-cell"))) {
                if (enCelda && !resultado.isEmpty()) libro.Poner(int(fila), int(columna), texto(resultado.toStdString()));
                enCelda = false;
                columna += columnasCelda;
            } else if (xml.namespaceUri() == ns_table && nombre == QLatin1String("table-row")) {
                fila += repetidas;
            } else if (xml.namespaceUri() == ns_table && nombre == QLatin1String("table")) {
                return;
            }
        }
    }
}

template <class Filtro>
Libro leerConOrcus(const QByteArray& bytes, const QString& path) {
    comprobarTamanos(bytes, path);
    Libro libro;
    try {
        ss::document doc({1048576, 16384});
        Fabrica fabrica(doc, libro);
        Filtro filtro(&fabrica);
        filtro.read_stream(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
        if constexpr (std::is_same_v<Filtro, orcus::orcus_ods>) resultadosDeTexto(bytes, libro);
    } catch (const LimiteSuperado&) {
        demasiado(path);
    } catch (const vb::RuntimeError&) {
        throw;
    } catch (const std::bad_alloc&) {
        demasiado(path);
    } catch (const std::exception&) {
        noEsUnLibro(path);
    }
    return libro;
}

QByteArray leerFichero(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) noEsUnLibro(path);
    if (f.size() > Libro::kTotalMaximo) demasiado(path);
    return f.readAll();
}

} // namespace

void Libro::Poner(int fila0, int columna0, Celda celda) {
    if (celda.tipo == Celda::Tipo::Vacia) celdas_.erase({fila0, columna0});
    else celdas_[{fila0, columna0}] = std::move(celda);
}

Celda Libro::Cells(int fila, int columna) const {
    const auto it = celdas_.find({fila - 1, columna - 1});
    return it == celdas_.end() ? Celda() : it->second;
}

Libro Libro::LeerXlsx(const QByteArray& bytes, const QString& path) {
    return AParte(path, [&] { return leerConOrcus<orcus::orcus_xlsx>(bytes, path); });
}

Libro Libro::LeerOds(const QByteArray& bytes, const QString& path) {
    return AParte(path, [&] { return leerConOrcus<orcus::orcus_ods>(bytes, path); });
}

namespace {

Libro leerXlsAqui(const QString& path) {
    if (QFileInfo(path).size() > Libro::kTotalMaximo) demasiado(path);
    const void* h = nullptr;
    if (freexl_open(QFile::encodeName(path).constData(), &h) != FREEXL_OK) {
        if (h) freexl_close(h);
        noEsUnLibro(path);
    }
    std::unique_ptr<const void, int (*)(const void*)> guard(h, freexl_close);
    unsigned int filas = 0;
    unsigned short columnas = 0;
    if (freexl_select_active_worksheet(h, 0) != FREEXL_OK || freexl_worksheet_dimensions(h, &filas, &columnas) != FREEXL_OK)
        noEsUnLibro(path);
    if (filas > static_cast<unsigned>(Libro::kFilasMaximas) || columnas > Libro::kColumnasMaximas) demasiado(path);
    Libro libro;
    try {
        for (unsigned r = 0; r < filas; ++r)
            for (unsigned short c = 0; c < columnas; ++c) {
                FreeXL_CellValue v;
                if (freexl_get_cell_value(h, r, c, &v) != FREEXL_OK) noEsUnLibro(path);
                switch (v.type) {
                case FREEXL_CELL_INT: libro.Poner(r, c, numero(v.value.int_value)); break;
                case FREEXL_CELL_DOUBLE: libro.Poner(r, c, numero(v.value.double_value)); break;
                case FREEXL_CELL_TEXT:
                case FREEXL_CELL_SST_TEXT:
                case FREEXL_CELL_TIME:
                    if (v.value.text_value) libro.Poner(r, c, texto(v.value.text_value));
                    break;
                case FREEXL_CELL_DATE:
                case FREEXL_CELL_DATETIME:
                    if (v.value.text_value) {
                        const QDate dia = QDate::fromString(QString::fromLatin1(v.value.text_value).left(10), "yyyy-MM-dd");
                        libro.Poner(r, c, dia.isValid() ? Celda{.tipo = Celda::Tipo::Texto, .texto = dia.toString("dd/MM/yyyy")}
                                                        : texto(v.value.text_value));
                    }
                    break;
                default: break;
                }
            }
    } catch (const LimiteSuperado&) {
        demasiado(path);
    }
    return libro;
}

// What the child process sends back: a status byte, then each cell as its
// row, column, kind and value.
enum : char { kLeido = 0, kDanado = 1, kGrande = 2 };

void escribirTodo(int fd, const char* p, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, n);
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) ::_exit(3);
        p += w;
        n -= static_cast<size_t>(w);
    }
}

template <class T> void anadir(QByteArray& b, T v) { b.append(reinterpret_cast<const char*>(&v), sizeof v); }

template <class T> bool tomar(const QByteArray& b, qsizetype& at, T& v) {
    if (at + qsizetype(sizeof v) > b.size()) return false;
    std::memcpy(&v, b.constData() + at, sizeof v);
    at += sizeof v;
    return true;
}

} // namespace

// The libraries are not safe on every damaged file: FreeXL reads beyond its
// own buffers on some (a text whose length runs past its record), liborcus
// stops the process on an assertion on some broken XML. So a workbook is read
// in a child process of its own: the cells come back through a pipe, and a
// child that fails, or dies on the file, means a damaged file; the program
// goes on.
Libro Libro::AParte(const QString& path, const std::function<Libro()>& leer) {
    int tubo[2];
    if (::pipe(tubo) != 0) noEsUnLibro(path);
    const pid_t hijo = ::fork();
    if (hijo < 0) {
        ::close(tubo[0]);
        ::close(tubo[1]);
        noEsUnLibro(path);
    }
    if (hijo == 0) {
        ::close(tubo[0]);
#if defined(__SANITIZE_ADDRESS__) || defined(VEL_HAS_ASAN)
        // Under the sanitizers the child's report is its own: whoever runs
        // the program (a fuzzer) is not ended by it.
        __sanitizer_set_death_callback(nullptr);
#endif
        // A fault in the child ends it quietly, whatever handlers the program
        // (or a fuzzer) set before the fork.
        for (int senal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL}) ::signal(senal, SIG_DFL);
        QByteArray salida;
        try {
            const Libro libro = leer();
            salida.append(kLeido);
            for (const auto& [clave, celda] : libro.celdas_) {
                anadir<qint32>(salida, clave.first);
                anadir<qint32>(salida, clave.second);
                anadir<char>(salida, static_cast<char>(celda.tipo));
                if (celda.tipo == Celda::Tipo::Numero) anadir<double>(salida, celda.numero);
                else {
                    anadir<qint32>(salida, static_cast<qint32>(celda.texto.size()));
                    salida.append(reinterpret_cast<const char*>(celda.texto.utf16()), celda.texto.size() * 2);
                }
                if (salida.size() > kTotalMaximo) {
                    salida = QByteArray(1, kGrande);
                    break;
                }
            }
        } catch (const vb::RuntimeError& e) {
            salida = QByteArray(1, e.Description.contains(QLatin1String("demasiado grande")) ? kGrande : kDanado);
        } catch (...) {
            salida = QByteArray(1, kDanado);
        }
        escribirTodo(tubo[1], salida.constData(), static_cast<size_t>(salida.size()));
        ::_exit(0);
    }
    ::close(tubo[1]);
    QByteArray entrada;
    char bloque[65536];
    bool grande = false;
    for (;;) {
        const ssize_t r = ::read(tubo[0], bloque, sizeof bloque);
        if (r < 0 && errno == EINTR) continue;
        if (r <= 0) break;
        if (entrada.size() + r > kTotalMaximo + 1) grande = true;
        else entrada.append(bloque, r);
    }
    ::close(tubo[0]);
    int estado = 0;
    while (::waitpid(hijo, &estado, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0 || entrada.isEmpty()) noEsUnLibro(path);
    if (grande || entrada[0] == kGrande) demasiado(path);
    if (entrada[0] != kLeido) noEsUnLibro(path);
    Libro libro;
    qsizetype at = 1;
    while (at < entrada.size()) {
        qint32 fila = 0, columna = 0;
        char tipo = 0;
        if (!tomar(entrada, at, fila) || !tomar(entrada, at, columna) || !tomar(entrada, at, tipo)) noEsUnLibro(path);
        if (tipo != char(Celda::Tipo::Numero) && tipo != char(Celda::Tipo::Texto)) noEsUnLibro(path);
        Celda c;
        c.tipo = static_cast<Celda::Tipo>(tipo);
        if (c.tipo == Celda::Tipo::Numero) {
            if (!tomar(entrada, at, c.numero)) noEsUnLibro(path);
        } else {
            qint32 largo = 0;
            if (!tomar(entrada, at, largo) || largo < 0 || at + qsizetype(largo) * 2 > entrada.size()) noEsUnLibro(path);
            c.texto = QString(reinterpret_cast<const QChar*>(entrada.constData() + at), largo);
            at += qsizetype(largo) * 2;
        }
        libro.Poner(fila, columna, std::move(c));
    }
    return libro;
}

Libro Libro::LeerXls(const QString& path) {
    if (QFileInfo(path).size() > kTotalMaximo) demasiado(path);
    return AParte(path, [&] { return leerXlsAqui(path); });
}

Libro Libro::Abrir(const QString& path) {
    if (!QFileInfo(path).isFile()) vb::Raise(1004, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) noEsUnLibro(path);
    const QByteArray cabecera = f.read(8);
    f.close();
    // The old binary workbook lives in a compound file; the new ones are packed.
    if (cabecera.startsWith(QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8))) return LeerXls(path);
    if (!cabecera.startsWith("PK")) noEsUnLibro(path);
    const QByteArray bytes = leerFichero(path);
    // An OpenDocument package names its kind in its first part, stored unpacked.
    if (bytes.left(100).contains("mimetypeapplication/vnd.oasis.opendocument")) return LeerOds(bytes, path);
    return LeerXlsx(bytes, path);
}

} // namespace vel
