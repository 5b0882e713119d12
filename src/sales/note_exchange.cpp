#include "sales/note_exchange.h"

#include "core/record_store.h"
#include "core/sql_values.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/variant.h"
#include "runtime/vb.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <zip.h>

#include <set>
#include <sys/stat.h>

namespace vel::intercambio {

namespace {

std::vector<Campo> ConSufijo(const std::vector<std::pair<const char*, Forma>>& campos, const QString& sufijo) {
    std::vector<Campo> c;
    for (const auto& [nombre, forma] : campos) {
        const QString n = QString::fromLatin1(nombre);
        // rec_financ is the one header column with no ending.
        c.push_back({n == QLatin1String("rec_financ") ? n : n + sufijo, forma});
    }
    return c;
}

} // namespace

const std::vector<Campo>& CamposCabecera() {
    using F = Forma;
    static const std::vector<Campo> campos = ConSufijo(
        {
            {"tienda", F::DosCifras},          {"serie", F::Texto},          {"ejercicio", F::Numero},
            {"numero", F::Numero},             {"fecha", F::Texto},          {"operador", F::DosCifras},
            {"nombre_operador", F::Texto},     {"almacen", F::DosCifras},    {"documento_origen", F::Texto},
            {"observaciones", F::Texto},       {"estado", F::Enviado},       {"nif", F::Texto},
            {"nombre_fiscal", F::Texto},       {"domicilio", F::Texto},      {"poblacion", F::Texto},
            {"codigo_postal", F::Texto},       {"provincia", F::Texto},      {"nacionalidad", F::Texto},
            {"forma_pago", F::Texto},          {"recibos", F::Numero},       {"banco", F::Texto},
            {"sucursal", F::Texto},            {"digito_control", F::Texto}, {"numero_cuenta", F::Texto},
            {"pedido", F::Numero},             {"lugar_envio", F::Texto},    {"forma_envio", F::Texto},
            {"tarjeta", F::Texto},             {"nombre_tarjeta", F::Texto}, {"numero_tarjeta", F::Texto},
            {"contado", F::Texto},             {"numero_bultos", F::Numero}, {"peso", F::Numero},
            {"total_bruto", F::NumeroEntreComillas}, {"descuento", F::NumeroEntreComillas},
            {"portes", F::NumeroEntreComillas},      {"rec_financ", F::Texto},
            {"iva", F::Numero},                {"recargo", F::Numero},       {"retencion", F::Numero},
            {"contabilizada", F::SinContabilizar},   {"iban", F::Texto},
        },
        QStringLiteral("_cabecera_albaran_venta"));
    return campos;
}

const std::vector<Campo>& CamposDetalle() {
    using F = Forma;
    static const std::vector<Campo> campos = ConSufijo(
        {
            {"tienda", F::DosCifras},     {"serie", F::Texto},       {"ejercicio", F::Numero},
            {"numero", F::Numero},        {"tipo_linea", F::Texto},  {"referencia", F::Texto},
            {"descripcion", F::Texto},    {"unidades", F::Numero},   {"pvp_neto", F::NumeroEntreComillas},
            {"oferta", F::Texto},         {"kit", F::Texto},         {"importe", F::NumeroEntreComillas},
            {"descuento", F::Numero},     {"descuento_cliente", F::Numero}, {"neto", F::NumeroEntreComillas},
            {"impresion", F::Texto},      {"peso", F::Numero},       {"garantia", F::Numero},
            {"division", F::Texto},       {"gran_familia", F::Texto}, {"familia", F::Texto},
            {"articulo", F::Texto},       {"pedido", F::Numero},     {"almacen", F::DosCifras},
            {"tratado", F::Texto},
        },
        QStringLiteral("_detalle_albaran_venta"));
    return campos;
}

QString TextoEnFichero(const vb::Variant& valor) {
    if (valor.isNull()) return QStringLiteral("Null");
    return valor.str();
}

void EscribirRegistro(QByteArray& salida, const Recordset& rs, const std::vector<Campo>& campos) {
    for (const Campo& c : campos) {
        salida += TextoEnFichero(rs.Fields(c.columna)).toUtf8();
        salida += "\r\n";
    }
}

QString ValorRecibido(const Campo& campo, const QString& linea) {
    switch (campo.forma) {
    case Forma::DosCifras: return sql::NumeroConMascara(linea, sql::kMascaraDosCifras);
    case Forma::Texto: return sql::Comillas(linea);
    case Forma::Numero: return linea;
    case Forma::NumeroEntreComillas: return sql::Comillas(linea);
    case Forma::Enviado: return QStringLiteral("'E'");
    case Forma::SinContabilizar: return QStringLiteral("'0'");
    }
    return linea;
}

QString SentenciaRecepcion(const QString& tabla, const std::vector<Campo>& campos, const QStringList& lineas) {
    QStringList valores;
    for (size_t i = 0; i < campos.size(); ++i) {
        const QString& linea = lineas.at(static_cast<qsizetype>(i));
        try {
            valores << ValorRecibido(campos[i], linea);
        } catch (const vb::RuntimeError& e) {
            // A value the runtime cannot format (a number beyond a Double's
            // range in a two-digit field) keeps the runtime's error, and says
            // which field of the file held it.
            vb::Raise(e.Number, e.Description + QStringLiteral(" en el campo ") + campos[i].columna +
                                    QStringLiteral(": ") + linea.left(40));
        }
    }
    return "INSERT INTO " + tabla + " VALUES (" + sql::Valores(valores) + ")";
}

Recepcion LeerRecepcion(const QByteArray& pedidoC, const QByteArray& pedidoD) {
    Recepcion r;
    vb::InputFile cabeceras = vb::InputFile::fromBytes(pedidoC);
    const auto& cc = CamposCabecera();
    while (!cabeceras.eof()) {
        QStringList lineas;
        for (size_t i = 0; i < cc.size(); ++i) lineas << cabeceras.lineInput();
        r.notas.push_back({SentenciaRecepcion(QStringLiteral("cabecera_albaran_venta"), cc, lineas), lineas[0],
                           lineas[1], lineas[2], lineas[3]});
    }
    vb::InputFile detalles = vb::InputFile::fromBytes(pedidoD);
    const auto& cd = CamposDetalle();
    while (!detalles.eof()) {
        QStringList lineas;
        lineas << detalles.next(); // Input #
        for (size_t i = 1; i < cd.size(); ++i) lineas << detalles.lineInput();
        r.lineas << SentenciaRecepcion(QStringLiteral("detalle_albaran_venta"), cd, lineas);
    }
    return r;
}

// ---- Folders -----------------------------------------------------------------

QString CarpetaCorta(const QString& rutaPrograma, const QString& carpeta) {
    QString cola = rutaPrograma.mid(3);
    if (cola.size() >= 8) cola = cola.left(6) + QStringLiteral("~1");
    return rutaPrograma.left(3) + cola + QLatin1Char('\\') + carpeta + QLatin1Char('\\');
}

QString CarpetaTrabajo(const QString& carpeta) {
    const QString ruta = vb::AppPath() + QLatin1Char('/') + carpeta;
    QDir().mkpath(ruta);
    return ruta + QLatin1Char('/');
}

// ---- Packing -------------------------------------------------------------------

namespace {

[[noreturn]] void FalloFichero(const QString& ruta) {
    vb::Raise(75, QStringLiteral("Error de acceso a la ruta o el archivo: ") + ruta);
}

QByteArray LeerFichero(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly)) FalloFichero(ruta);
    return f.readAll();
}

void GuardarFichero(const QString& ruta, const QByteArray& datos) {
    QSaveFile f(ruta);
    if (!f.open(QIODevice::WriteOnly) || f.write(datos) != datos.size() || !f.commit()) FalloFichero(ruta);
}

} // namespace

QByteArray ComprimirZip(const std::vector<std::pair<QString, QByteArray>>& miembros) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* destino = zip_source_buffer_create(nullptr, 0, 0, &error);
    if (!destino) throw std::bad_alloc();
    zip_source_keep(destino);
    zip_t* za = zip_open_from_source(destino, ZIP_TRUNCATE, &error);
    if (!za) {
        zip_source_free(destino);
        throw std::runtime_error("zip_open_from_source");
    }
    bool bien = true;
    for (const auto& [nombre, datos] : miembros) {
        // The buffer is copied into the source (freep 0 keeps ours); libzip reads it at close.
        zip_source_t* s = zip_source_buffer(za, datos.constData(), static_cast<zip_uint64_t>(datos.size()), 0);
        const zip_int64_t i = s ? zip_file_add(za, nombre.toUtf8().constData(), s, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE) : -1;
        if (i < 0) {
            if (s) zip_source_free(s);
            bien = false;
            break;
        }
        zip_set_file_compression(za, static_cast<zip_uint64_t>(i), ZIP_CM_DEFLATE, 9);
    }
    if (!bien || zip_close(za) != 0) {
        zip_discard(za);
        zip_source_free(destino);
        throw std::runtime_error("zip_close");
    }
    QByteArray salida;
    zip_stat_t st;
    if (zip_source_stat(destino, &st) == 0 && zip_source_open(destino) == 0) {
        salida.resize(static_cast<qsizetype>(st.size));
        const zip_int64_t n = zip_source_read(destino, salida.data(), st.size);
        zip_source_close(destino);
        if (n < 0 || static_cast<zip_uint64_t>(n) != st.size) salida.clear();
    }
    zip_source_free(destino);
    return salida;
}

namespace {

// A member file of the folder packed into an archive of the folder.
void Empaquetar(const QString& carpeta, const QString& archivo, const QStringList& miembros) {
    std::vector<std::pair<QString, QByteArray>> m;
    for (const QString& nombre : miembros) m.emplace_back(nombre, LeerFichero(carpeta + nombre));
    QByteArray zip;
    try {
        zip = ComprimirZip(m);
    } catch (const std::runtime_error&) {
        FalloFichero(carpeta + archivo);
    }
    GuardarFichero(carpeta + archivo, zip);
}

} // namespace

void EmpaquetarPedidoC(const QString& carpeta) {
    Empaquetar(carpeta, QStringLiteral("pedidoC.zip"), {QStringLiteral("pedidoC.txt")});
}

void EmpaquetarPedidoD(const QString& carpeta) {
    Empaquetar(carpeta, QStringLiteral("pedidoD.zip"), {QStringLiteral("pedidoD.txt")});
}

void EmpaquetarPedido(const QString& carpeta) {
    Empaquetar(carpeta, QStringLiteral("pedido.jpg"), {QStringLiteral("pedidoC.zip"), QStringLiteral("pedidoD.zip")});
}

// ---- Unpacking -------------------------------------------------------------------

ArchivoRechazado::ArchivoRechazado(const QString& mensaje)
    : std::runtime_error(mensaje.toStdString()), mensaje_(mensaje) {}

namespace {

const QString kPrefijo = QStringLiteral("No se pueden recibir los albaranes: ");

[[noreturn]] void Rechazar(const QString& motivo) { throw ArchivoRechazado(kPrefijo + motivo); }

// An archive opened from bytes, closed when it goes out of scope.
class Zip {
public:
    Zip(const QByteArray& datos, const QString& nombre) : nombre_(nombre) {
        // Shorter than the archive's closing record: no archive at all (the
        // library would take no bytes for a new, empty archive).
        if (datos.size() < 22) Rechazar("el fichero " + nombre + " está dañado o incompleto.");
        zip_error_t error;
        zip_error_init(&error);
        zip_source_t* s = zip_source_buffer_create(datos.constData(), static_cast<zip_uint64_t>(datos.size()), 0, &error);
        if (!s) throw std::bad_alloc();
        za_ = zip_open_from_source(s, ZIP_CHECKCONS | ZIP_RDONLY, &error);
        zip_error_fini(&error);
        if (!za_) {
            zip_source_free(s);
            Rechazar("el fichero " + nombre + " está dañado o incompleto.");
        }
    }
    ~Zip() {
        if (za_) zip_discard(za_);
    }
    Zip(const Zip&) = delete;
    Zip& operator=(const Zip&) = delete;

    // Each member checked, and the contents of those expected, in the order named.
    std::vector<QByteArray> Miembros(const QStringList& esperados) {
        const zip_int64_t n = zip_get_num_entries(za_, 0);
        std::vector<QByteArray> contenidos(static_cast<size_t>(esperados.size()));
        std::set<QString> vistos;
        for (zip_int64_t i = 0; i < n; ++i) {
            const auto idx = static_cast<zip_uint64_t>(i);
            zip_stat_t st;
            zip_stat_init(&st);
            if (zip_stat_index(za_, idx, 0, &st) != 0 || !(st.valid & ZIP_STAT_NAME))
                Rechazar("el fichero " + nombre_ + " está dañado o incompleto.");
            const QString nombre = QString::fromUtf8(st.name);
            ComprobarNombre(nombre);
            zip_uint8_t sistema = 0;
            zip_uint32_t atributos = 0;
            if (zip_file_get_external_attributes(za_, idx, 0, &sistema, &atributos) == 0 &&
                sistema == ZIP_OPSYS_UNIX && ((atributos >> 16) & S_IFMT) == S_IFLNK)
                Rechazar("el fichero " + nombre_ + " contiene un enlace simbólico: " + nombre);
            if ((st.valid & ZIP_STAT_ENCRYPTION_METHOD) && st.encryption_method != ZIP_EM_NONE)
                Rechazar("el fichero " + nombre_ + " contiene un fichero cifrado: " + nombre);
            const qsizetype cual = esperados.indexOf(nombre);
            if (cual < 0) Rechazar("el fichero " + nombre_ + " contiene un fichero no esperado: " + nombre);
            if (!vistos.insert(nombre).second)
                Rechazar("el fichero " + nombre_ + " contiene repetido el fichero " + nombre + ".");
            if (!(st.valid & ZIP_STAT_SIZE) || !(st.valid & ZIP_STAT_COMP_SIZE))
                Rechazar("el fichero " + nombre_ + " está dañado o incompleto.");
            if (st.size > static_cast<zip_uint64_t>(kTamanoMaximo))
                Rechazar("el fichero " + nombre + " de " + nombre_ + " ocupa más de 64 MB.");
            if (st.size > 0 && (st.comp_size == 0 || st.size / st.comp_size > static_cast<zip_uint64_t>(kProporcionMaxima) ||
                                (st.size / st.comp_size == static_cast<zip_uint64_t>(kProporcionMaxima) &&
                                 st.size % st.comp_size != 0)))
                Rechazar("el fichero " + nombre + " de " + nombre_ +
                         " está comprimido más de 100 veces (posible bomba de compresión).");
            contenidos[static_cast<size_t>(cual)] = Leer(idx, st.size, nombre);
        }
        for (const QString& e : esperados)
            if (!vistos.count(e)) Rechazar("al fichero " + nombre_ + " le falta el fichero " + e + ".");
        return contenidos;
    }

private:
    void ComprobarNombre(const QString& nombre) const {
        if (nombre.size() >= 2 && nombre[1] == u':' && nombre[0].isLetter())
            Rechazar("el fichero " + nombre_ + " contiene un nombre con letra de unidad: " + nombre);
        if (nombre.startsWith(u'/') || nombre.startsWith(u'\\'))
            Rechazar("el fichero " + nombre_ + " contiene un nombre con ruta absoluta: " + nombre);
        if (nombre.contains(QLatin1String("..")))
            Rechazar("el fichero " + nombre_ + " contiene un nombre con \"..\": " + nombre);
    }

    // The member's bytes, no more than its stated size; a short read, a read
    // error or a checksum that doesn't match is a damaged archive.
    QByteArray Leer(zip_uint64_t idx, zip_uint64_t tamano, const QString& nombre) {
        zip_file_t* f = zip_fopen_index(za_, idx, 0);
        if (!f) Rechazar("el fichero " + nombre + " de " + nombre_ + " está dañado o incompleto.");
        QByteArray datos;
        datos.resize(static_cast<qsizetype>(tamano) + 1);
        zip_uint64_t leido = 0;
        bool bien = true;
        while (leido <= tamano) {
            const zip_int64_t n = zip_fread(f, datos.data() + leido, tamano + 1 - leido);
            if (n < 0) { bien = false; break; }
            if (n == 0) break;
            leido += static_cast<zip_uint64_t>(n);
        }
        zip_fclose(f);
        if (!bien || leido != tamano) Rechazar("el fichero " + nombre + " de " + nombre_ + " está dañado o incompleto.");
        datos.resize(static_cast<qsizetype>(tamano));
        return datos;
    }

    QString nombre_;
    zip_t* za_ = nullptr;
};

} // namespace

Recibido DesempaquetarPedido(const QByteArray& pedidoJpg) {
    if (pedidoJpg.size() > kTamanoMaximo) Rechazar("el fichero pedido.jpg ocupa más de 64 MB.");
    Recibido r;
    {
        Zip exterior(pedidoJpg, QStringLiteral("pedido.jpg"));
        auto m = exterior.Miembros({QStringLiteral("pedidoC.zip"), QStringLiteral("pedidoD.zip")});
        r.pedidoCzip = std::move(m[0]);
        r.pedidoDzip = std::move(m[1]);
    }
    {
        Zip c(r.pedidoCzip, QStringLiteral("pedidoC.zip"));
        r.pedidoC = std::move(c.Miembros({QStringLiteral("pedidoC.txt")})[0]);
    }
    {
        Zip d(r.pedidoDzip, QStringLiteral("pedidoD.zip"));
        r.pedidoD = std::move(d.Miembros({QStringLiteral("pedidoD.txt")})[0]);
    }
    return r;
}

Recibido DesempaquetarEnCarpeta(const QString& carpeta) {
    const QString ruta = carpeta + QStringLiteral("pedido.jpg");
    QFileInfo info(ruta);
    if (!info.exists() || info.isSymLink() || !info.isFile())
        Rechazar("no se encuentra el fichero pedido.jpg en la carpeta recibir.");
    if (info.size() > kTamanoMaximo) Rechazar("el fichero pedido.jpg ocupa más de 64 MB.");
    Recibido r = DesempaquetarPedido(LeerFichero(ruta));
    GuardarFichero(carpeta + QStringLiteral("pedidoC.zip"), r.pedidoCzip);
    GuardarFichero(carpeta + QStringLiteral("pedidoD.zip"), r.pedidoDzip);
    GuardarFichero(carpeta + QStringLiteral("pedidoC.txt"), r.pedidoC);
    GuardarFichero(carpeta + QStringLiteral("pedidoD.txt"), r.pedidoD);
    return r;
}

} // namespace vel::intercambio
