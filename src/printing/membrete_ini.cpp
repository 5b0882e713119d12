#include "printing/membrete_ini.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <array>

namespace vel::letterheads {

namespace {

[[noreturn]] void Falla(const QString& motivo) {
    throw MembreteNoValido(kErrorMembrete, QStringLiteral("El archivo membrete.ini no es válido: %1.").arg(motivo));
}

[[noreturn]] void FallaEnLinea(int linea, const QString& motivo) {
    Falla(QStringLiteral("línea %1: %2").arg(linea).arg(motivo));
}

struct Clave {
    const char* nombre;
    QString DatosMembrete::*campo;
    qsizetype maximo;
};

const std::array<Clave, 7> kClaves = {{
    {"nombre", &DatosMembrete::nombre, kMaximoValor},
    {"nif", &DatosMembrete::nif, kMaximoValor},
    {"domicilio", &DatosMembrete::domicilio, kMaximoValor},
    {"poblacion", &DatosMembrete::poblacion, kMaximoValor},
    {"telefono", &DatosMembrete::telefono, kMaximoValor},
    {"correo", &DatosMembrete::correo, kMaximoValor},
    {"registro", &DatosMembrete::registro, kMaximoRegistro},
}};

bool EsControl(QChar c) { return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format; }

} // namespace

DatosMembrete LeeMembrete(const QByteArray& bytes) {
    if (bytes.size() > kMaximoBytesMembrete)
        Falla(QStringLiteral("ocupa más de %1 bytes").arg(kMaximoBytesMembrete));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString texto = utf8.decode(bytes);
    if (utf8.hasError()) Falla(QStringLiteral("no está escrito en UTF-8"));
    if (texto.startsWith(QChar(0xFEFF))) texto.remove(0, 1);

    DatosMembrete datos;
    std::array<bool, kClaves.size()> visto{};
    const QStringList lineas = texto.split(QLatin1Char('\n'));
    for (int i = 0; i < lineas.size(); ++i) {
        const int n = i + 1;
        QString linea = lineas[i];
        if (linea.endsWith(QLatin1Char('\r'))) linea.chop(1);
        for (QChar c : linea)
            if (EsControl(c) && c != QLatin1Char('\t')) FallaEnLinea(n, QStringLiteral("tiene un carácter de control"));
        const QString limpia = linea.trimmed();
        if (limpia.isEmpty() || limpia.startsWith(QLatin1Char(';')) || limpia.startsWith(QLatin1Char('#'))) continue;
        if (limpia.startsWith(QLatin1Char('['))) {
            if (limpia.compare(QLatin1String("[membrete]"), Qt::CaseInsensitive) != 0)
                FallaEnLinea(n, QStringLiteral("la única sección admitida es [membrete]"));
            continue;
        }
        const qsizetype igual = limpia.indexOf(QLatin1Char('='));
        if (igual < 0) FallaEnLinea(n, QStringLiteral("falta el signo = entre el nombre y el valor"));
        const QString clave = limpia.left(igual).trimmed();
        const QString valor = limpia.mid(igual + 1).trimmed();
        size_t k = 0;
        while (k < kClaves.size() && clave.compare(QLatin1String(kClaves[k].nombre), Qt::CaseInsensitive) != 0) ++k;
        if (k == kClaves.size())
            FallaEnLinea(n, QStringLiteral("«%1» no es un dato del membrete (nombre, nif, domicilio, poblacion, "
                                           "telefono, correo, registro)")
                                .arg(clave.left(30)));
        if (visto[k]) FallaEnLinea(n, QStringLiteral("«%1» aparece por segunda vez").arg(QLatin1String(kClaves[k].nombre)));
        visto[k] = true;
        if (valor.size() > kClaves[k].maximo)
            FallaEnLinea(n, QStringLiteral("«%1» tiene más de %2 caracteres")
                                .arg(QLatin1String(kClaves[k].nombre))
                                .arg(kClaves[k].maximo));
        datos.*(kClaves[k].campo) = valor;
    }
    if (datos.nombre.isEmpty()) Falla(QStringLiteral("falta el nombre (nombre = ...)"));
    if (datos.nif.isEmpty()) Falla(QStringLiteral("falta el NIF (nif = ...)"));
    return datos;
}

std::optional<DatosMembrete> MembreteDeCarpeta(const QString& carpeta) {
    const QString ruta = QDir(carpeta).filePath(kArchivoMembrete);
    const QFileInfo info(ruta);
    if (!info.exists()) return std::nullopt;
    QFile f(ruta);
    if (!info.isFile() || !f.open(QIODevice::ReadOnly)) Falla(QStringLiteral("no se puede leer"));
    // One byte more than allowed tells a file that is too long without reading it whole.
    return LeeMembrete(f.read(kMaximoBytesMembrete + 1));
}

} // namespace vel::letterheads
