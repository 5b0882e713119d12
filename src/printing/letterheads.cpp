#include "printing/letterheads.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/vb.h"

#ifndef VEL_CORREO_FERROBANDA
#error "VEL_CORREO_FERROBANDA is set by CMake"
#endif

namespace vel::letterheads {

namespace {

const QString CN = QStringLiteral("Courier New");
const QString VE = QStringLiteral("Verdana");
constexpr long Rojo = vb::vbRed;
constexpr long Verde = vb::vbGreen;
constexpr long TextoVentana = vb::vbWindowText;

Linea L(const QString& fuente, double tamano, const QString& texto) { return {fuente, tamano, std::nullopt, texto}; }
Linea L(const QString& fuente, double tamano, long color, const QString& texto) { return {fuente, tamano, color, texto}; }

// The lines FERROBANDA prints under either block.
Membrete comunesFerrobanda() {
    return {
        L(VE, 10, QStringLiteral(" Calle del Faro 12, Bajo Drch")),
        L(VE, 10, QStringLiteral("     15.000 - Portelas (Valdeferro)")),
        L(VE, 9, QStringLiteral("                 Tlf. 900 00 00 01")),
        L(VE, 9, vb::Space(13) + CorreoFerrobanda()),
    };
}

Membrete operator+(Membrete a, const Membrete& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const QString RegistroFerrobanda =
    QStringLiteral("Ins. en el Reg. Mercantil de Valdeferro, Tomo 1000, Folio 100, Hoja 10000");

Membrete ferrobandaAnterior() {
    return Membrete{
               L(CN, 8, QString()),
               L(CN, 8, QString()),
               L(CN, 12, QString()),
               L(VE, 12, QStringLiteral(" SUMINISTROS INDUSTRIALES")),
               L(VE, 12, QStringLiteral("               PORTELAS")),
               L(VE, 8, TextoVentana, QStringLiteral("            PILAR VIDAL OTERO 00000000T")),
           } +
           comunesFerrobanda();
}

Membrete ferrobandaPosterior() {
    return Membrete{
               L(CN, 8, vb::Space(20) + RegistroFerrobanda),
               L(CN, 8, QString()),
               L(CN, 12, QString()),
               L(VE, 12, Rojo, QStringLiteral("SUMINISTROS INDUSTRIALES")),
               L(VE, 12, Rojo, QStringLiteral("     PORTELAS, S.L.")),
               L(VE, 8, TextoVentana, QStringLiteral("            C.I.F.- B-00.000.001")),
           } +
           comunesFerrobanda();
}

Membrete ultramarinos() {
    return {
        L(CN, 8, vb::Space(18)),
        L(CN, 8, QString()),
        L(CN, 12, QString()),
        L(VE, 12, Verde, QStringLiteral("           OS VIEIROS")),
        L(VE, 12, Verde, QStringLiteral("      Comestibles Finos")),
        L(VE, 10, Verde, QStringLiteral("     Manuel T. Rey Pardo")),
        L(VE, 8, TextoVentana, QStringLiteral("                NIF:00.000.002-W")),
        L(VE, 10, QStringLiteral("          Rúa Os Vieiros, 10")),
        L(VE, 10, QStringLiteral(" 15.000 - Portelas (Valdeferro)")),
        L(VE, 9, QStringLiteral("  Tlf. 900 00 00 02 / 600 00 00 02")),
    };
}

Membrete lapresa() {
    return {
        L(CN, 8, vb::Space(40) + QStringLiteral("Lucía Castro Nieto   -   00.000.003-A")),
        L(CN, 8, QString()),
        L(CN, 12, QString()),
        L(VE, 12, QStringLiteral("    ESTABLECIMIENTOS")),
        L(VE, 12, QStringLiteral("           LA PRESA")),
        L(VE, 8, TextoVentana, QString()),
        L(VE, 10, QStringLiteral("     Avda. del Puerto, Nº 20")),
        L(VE, 10, QStringLiteral("15.000 - Portelas (Valdeferro)")),
        L(VE, 9, QStringLiteral("          Tlf. - 900 00 00 03 ")),
        L(VE, 9, QString()),
    };
}

Membrete orta() {
    return {
        L(CN, 8,
          vb::Space(15) + QStringLiteral("Ins. en el Reg. Mercantil de Valdeferro, Tomo 2000, Libro 2000, Folio 20, "
                                         "Hoja VF-20000, Insc. 1")),
        L(CN, 8, QString()),
        L(CN, 12, QString()),
        L(VE, 12, QStringLiteral("              Sistemas")),
        L(VE, 12, QStringLiteral("               Orta, S.L.")),
        L(VE, 8, QStringLiteral("                  C.I.F.- B-00.000.004")),
        L(VE, 10, QStringLiteral("              C/Mayor 20, 2C")),
        L(VE, 9, QStringLiteral("         36.000 - Ribamar (Valdeferro)")),
        L(VE, 9, QString()),
        L(VE, 9, QString()),
    };
}

const QString AperturaAviso =
    QStringLiteral("A los efectos de lo establecido en la Ley Orgánica 15/99, de 13 de diciembre, de Protección de "
                   "Datos de Carácter Personal y el Real Decreto 1720/2007, ");

const QString PostalFerrobanda =
    QStringLiteral("a través de un medio gratuito en la siguiente dirección de correo postal: C/ del Faro Nº 12 Bajo "
                   "dcha. 15000 Portelas, Valdeferro.");

void imprime(vb::PrinterObject& printer, const Membrete& lineas) {
    for (const Linea& l : lineas) {
        printer.SetFontName(l.fuente);
        printer.SetFontSize(l.tamano);
        if (l.color) printer.SetForeColor(*l.color);
        printer.Print(l.texto);
    }
}


// Words joined into lines of at most `ancho` characters (a longer word stands
// alone on its line).
QStringList Parte(const QString& texto, int ancho) {
    QStringList lineas;
    QString actual;
    for (const QString& palabra : texto.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (!actual.isEmpty() && actual.size() + 1 + palabra.size() > ancho) {
            lineas << actual;
            actual.clear();
        }
        actual += (actual.isEmpty() ? QString() : QStringLiteral(" ")) + palabra;
    }
    if (!actual.isEmpty()) lineas << actual;
    return lineas;
}

QString SiHay(const QString& prefijo, const QString& valor) { return valor.isEmpty() ? QString() : prefijo + valor; }

// The notice's lines fit a sheet in "Courier New" 6 with the invoice's margin
// of three blanks: 150 characters.
constexpr int kAnchoAviso = 150;
// The ticket's paper takes 40 characters of "Courier New" 8.
constexpr int kAnchoTicket = 40;

} // namespace

QString CorreoFerrobanda() { return QStringLiteral(VEL_CORREO_FERROBANDA); }

// The date test: "31/03/2019" is greater than today.
Bloque BloqueDe(const QString& ClientePrograma, const QDate& hoy) {
    if (ClientePrograma == QLatin1String("FERROBANDA"))
        return vb::CDate(QStringLiteral("31/03/2019")) > hoy ? Bloque::FerrobandaAnterior : Bloque::FerrobandaPosterior;
    if (ClientePrograma == QLatin1String("ULTRAMARINOS")) return Bloque::Ultramarinos;
    if (ClientePrograma == QLatin1String("LAPRESA")) return Bloque::Lapresa;
    if (ClientePrograma == QLatin1String("ORTA")) return Bloque::Orta;
    return Bloque::Ninguno;
}

Bloque BloqueDeHoy(const QString& ClientePrograma) { return BloqueDe(ClientePrograma, vb::Date()); }

const Membrete& MembreteDocumento(Bloque bloque) {
    static const Membrete ninguno;
    static const Membrete anterior = ferrobandaAnterior();
    static const Membrete posterior = ferrobandaPosterior();
    static const Membrete ultra = ultramarinos();
    static const Membrete presa = lapresa();
    static const Membrete ort = orta();
    switch (bloque) {
    case Bloque::FerrobandaAnterior: return anterior;
    case Bloque::FerrobandaPosterior: return posterior;
    case Bloque::Ultramarinos: return ultra;
    case Bloque::Lapresa: return presa;
    case Bloque::Orta: return ort;
    case Bloque::Ninguno: break;
    }
    return ninguno;
}

Membrete MembreteTicket(Bloque bloque) {
    switch (bloque) {
    case Bloque::FerrobandaPosterior: {
        // The register entry in two lines, to fit the narrow paper.
        Membrete m = MembreteDocumento(bloque);
        m[0].texto = QStringLiteral("Ins. en el Reg. Mercantil de Valdeferro,");
        m.insert(m.begin() + 1, L(CN, 8, QStringLiteral("Tomo 1000, Folio 100, Hoja 10000")));
        return m;
    }
    case Bloque::Lapresa:
        // The same sizes as the document's lines of the same kind.
        return {
            L(VE, 8, QStringLiteral(" ")),
            L(VE, 8, QStringLiteral("  Lucía Castro Nieto-00.000.003A")),
            L(VE, 12, QStringLiteral("          ESTABLECIMIENTOS")),
            L(VE, 12, QStringLiteral("                LA PRESA")),
            L(VE, 10, QStringLiteral("            Avda. del Puerto, Nº 20")),
            L(VE, 10, QStringLiteral("       15.000 - Portelas (Valdeferro)")),
            L(VE, 9, QStringLiteral("           Tlf./FAX - 900 00 00 03 ")),
        };
    case Bloque::Orta: return {};
    default: return MembreteDocumento(bloque);
    }
}

QStringList AvisoLegal(Bloque bloque) {
    switch (bloque) {
    case Bloque::FerrobandaAnterior:
        return {AperturaAviso,
                QStringLiteral("Suministros Industriales Portelas le comunica que sus datos de Carácter Personal forman "
                               "parte de una base de datos gestionada bajo la responsabilidad "),
                QStringLiteral("de Pilar Vidal Otero, con la finalidad de ser incorporado al fichero CLIENTES,  el cual "
                               "se encuentra registrado en la AEPD, tal y como establece la"),
                QStringLiteral("normativa legal, a este respecto."),
                QStringLiteral("Suministros Industriales Portelas como Responsable del Fichero, le permite ejercitar sus "
                               "Derechos ARCO, (acceso, rectificación, cancelación y oposición), "),
                PostalFerrobanda};
    case Bloque::FerrobandaPosterior:
        return {AperturaAviso,
                QStringLiteral("Suministros Industriales Portelas S.L le comunica que sus datos de Carácter Personal "
                               "forman parte de una base de datos gestionada bajo la responsabilidad "),
                QStringLiteral("de Suministros Industriales Portelas S.L, con la finalidad de ser incorporado al fichero "
                               "CLIENTES,  el cual se encuentra registrado en la AEPD, tal y como "),
                QStringLiteral("establece la normativa legal, a este respecto."),
                QStringLiteral("Suministros Industriales Portelas S.L como Responsable del Fichero, le permite ejercitar "
                               "sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), "),
                PostalFerrobanda};
    case Bloque::Ultramarinos:
        return {AperturaAviso,
                QStringLiteral("le informamos que sus datos de Carácter Personal forman parte de una base de datos "
                               "gestionada bajo la responsabilidad de MANUEL TOMAS REY PARDO"),
                QStringLiteral("con la finalidad de ser incorporado al fichero CLIENTES, el cual se encuentra registrado "
                               "en la AEPD, tal y como establece la normativa legal, a este respecto."),
                QStringLiteral("Puede ejercer sus Derechos ARCO, (acceso, rectificación, cancelación y oposición), a "
                               "través de un medio gratuito en la siguiente dirección de correo postal:"),
                QStringLiteral("Rua/ Os Vieiros Nº10, 15000 Portelas (Valdeferro).")};
    case Bloque::Orta:
        return {AperturaAviso,
                QStringLiteral("Sistemas Orta S.L le comunica que sus datos de Carácter Personal forman parte de una "
                               "base de datos gestionada bajo la responsabilidad de Sistemas"),
                QStringLiteral("Orta S.L, con la finalidad de ser incorporado al fichero CLIENTES,  el cual se encuentra "
                               "registrado en la AEPD, tal y como establece la normativa"),
                QStringLiteral("legal, a este respecto."),
                QStringLiteral("Sistemas Orta S.L como Responsable del Fichero, le permite ejercitar sus Derechos ARCO, "
                               "(acceso, rectificación, cancelación y oposición), a través"),
                QStringLiteral("de un medio gratuito en la siguiente dirección de correo postal: C/Mayor 20 2ºC, 36000 "
                               "Ribamar (Valdeferro)")};
    case Bloque::Lapresa:
    case Bloque::Ninguno: break;
    }
    return {};
}

QString LineaCuentaBancaria(Bloque bloque) {
    if (bloque != Bloque::Orta) return QString();
    return vb::Space(int(vb::Int(37 / 2.0))) +
           QStringLiteral("Nº Cuenta: MAREESMMXXX ES91 2100 0000 11 0200000000 - Banco Mareiro Corporación Bancaria "
                          "S.A.");
}

std::optional<CabeceraListado> CabeceraListadoDe(const QString& ClientePrograma) {
    if (ClientePrograma == QLatin1String("FERROBANDA"))
        return CabeceraListado{QStringLiteral("Suministros Industriales"), QStringLiteral("     ______________"),
                               QStringLiteral("        PORTELAS"), 33, 45};
    if (ClientePrograma == QLatin1String("ULTRAMARINOS"))
        return CabeceraListado{QStringLiteral("  Panadería Bollería Os Vieiros"), QStringLiteral("      _______________"),
                               QStringLiteral("      PORTELAS"), 29, 45};
    if (ClientePrograma == QLatin1String("LAPRESA"))
        return CabeceraListado{QStringLiteral("      ESTABLECIMIENTOS"), QStringLiteral("   ______________"),
                               QStringLiteral("      LA PRESA"), 35, 47};
    if (ClientePrograma == QLatin1String("ORTA"))
        return CabeceraListado{QStringLiteral("      TECNOLOGIA"), QStringLiteral("      __________"),
                               QStringLiteral("         ORTA"), 35, 47};
    if (const auto propio = MembretePropio(ClientePrograma)) return CabeceraListadoPropia(*propio);
    return std::nullopt;
}

CabeceraListado CabeceraListadoSinMembrete() { return CabeceraListado{QString(), QString(), QString(), 57, 64}; }

std::optional<DatosMembrete> MembretePropio(const QString& ClientePrograma) {
    if (BloqueDe(ClientePrograma, QDate(2000, 1, 1)) != Bloque::Ninguno) return std::nullopt;
    return MembreteDeCarpeta(vb::AppPath());
}

// FERROBANDA's later block line for line: the register line after 20 blanks
// (an empty line without one), two empty lines, the name in "Verdana" 12 and
// an empty line of the same size where FERROBANDA's name takes two, the tax
// number in 8, address and town in 10, phone and e-mail in 9. All in black: the
// colour is set on the first line of the block, as the known blocks set theirs.
Membrete MembreteDocumentoPropio(const DatosMembrete& d) {
    return {
        L(CN, 8, vb::vbBlack, SiHay(vb::Space(20), d.registro)),
        L(CN, 8, QString()),
        L(CN, 12, QString()),
        L(VE, 12, QLatin1Char(' ') + d.nombre),
        L(VE, 12, QString()),
        L(VE, 8, QStringLiteral(" NIF: ") + d.nif),
        L(VE, 10, SiHay(QStringLiteral(" "), d.domicilio)),
        L(VE, 10, SiHay(QStringLiteral(" "), d.poblacion)),
        L(VE, 9, SiHay(QStringLiteral(" Tlf. "), d.telefono)),
        L(VE, 9, SiHay(QStringLiteral(" "), d.correo)),
    };
}

// The same block, the register entry cut into lines of the ticket's width, as
// FERROBANDA's is cut in two on its tickets.
Membrete MembreteTicketPropio(const DatosMembrete& d) {
    Membrete m = MembreteDocumentoPropio(d);
    const QStringList registro = Parte(d.registro, kAnchoTicket);
    if (registro.isEmpty()) return m;
    m[0].texto = registro[0];
    for (int i = 1; i < registro.size(); ++i) m.insert(m.begin() + i, L(CN, 8, registro[i]));
    return m;
}

// The data-protection notice of the laws in force: the Regulation (EU)
// 2016/679 and the Ley Orgánica 3/2018, naming the shop as the one responsible
// and where to exercise the rights.
QStringList AvisoLegalPropio(const DatosMembrete& d) {
    QString donde;
    if (!d.domicilio.isEmpty() || !d.poblacion.isEmpty()) {
        QStringList partes;
        if (!d.domicilio.isEmpty()) partes << d.domicilio;
        if (!d.poblacion.isEmpty()) partes << d.poblacion;
        donde = QStringLiteral(" por escrito en ") + partes.join(QStringLiteral(", "));
    }
    if (!d.correo.isEmpty()) donde += (donde.isEmpty() ? QStringLiteral(" en ") : QStringLiteral(" o en ")) + d.correo;
    const QString texto =
        QStringLiteral("De acuerdo con el Reglamento (UE) 2016/679, General de Protección de Datos, y la Ley Orgánica "
                       "3/2018, de 5 de diciembre, de Protección de Datos Personales y garantía de los derechos "
                       "digitales, le informamos de que el responsable del tratamiento de sus datos personales es ") +
        d.nombre + QStringLiteral(" (NIF ") + d.nif +
        QStringLiteral("), que los trata para gestionar la relación comercial y cumplir sus obligaciones legales, "
                       "durante los plazos que estas fijan, y no los cede a terceros salvo obligación legal. Puede "
                       "ejercer sus derechos de acceso, rectificación, supresión, oposición, limitación del "
                       "tratamiento y portabilidad") +
        donde +
        QStringLiteral(", y presentar una reclamación ante la Agencia Española de Protección de Datos (www.aepd.es).");
    return Parte(texto, kAnchoAviso);
}

// The shop's name where the known tags have theirs, a rule as long under it and
// its town; the date of issue and the sheet number no further left than a tag
// with no head has them, and always a blank after the name.
CabeceraListado CabeceraListadoPropia(const DatosMembrete& d) {
    const QString titulo = QLatin1Char(' ') + d.nombre;
    const QString raya = QLatin1Char(' ') + QString(d.nombre.size(), QLatin1Char('_'));
    const CabeceraListado sin = CabeceraListadoSinMembrete();
    return CabeceraListado{titulo, raya, SiHay(QStringLiteral(" "), d.poblacion),
                           int(std::max<qsizetype>(1, sin.sangriaFecha - titulo.size())),
                           int(std::max<qsizetype>(1, sin.sangriaHoja - raya.size()))};
}

bool ImprimeMembrete(vb::PrinterObject& printer, const QString& ClientePrograma) {
    printer.SetFontName(CN);
    printer.SetFontSize(8);
    if (const auto propio = MembretePropio(ClientePrograma)) {
        imprime(printer, MembreteDocumentoPropio(*propio));
        return true;
    }
    const Membrete& m = MembreteDocumento(BloqueDeHoy(ClientePrograma));
    imprime(printer, m);
    return !m.empty();
}

bool ImprimeMembreteTicket(vb::PrinterObject& printer, const QString& ClientePrograma) {
    printer.SetFontName(CN);
    printer.SetFontSize(8);
    if (const auto propio = MembretePropio(ClientePrograma)) {
        imprime(printer, MembreteTicketPropio(*propio));
        return true;
    }
    const Membrete m = MembreteTicket(BloqueDeHoy(ClientePrograma));
    imprime(printer, m);
    return !m.empty();
}

void ImprimeAvisoLegal(vb::PrinterObject& printer, const QString& ClientePrograma, const QString& margen) {
    printer.SetFontName(CN);
    printer.SetFontSize(6);
    const auto propio = MembretePropio(ClientePrograma);
    const QStringList aviso = propio ? AvisoLegalPropio(*propio) : AvisoLegal(BloqueDeHoy(ClientePrograma));
    for (const QString& linea : aviso) printer.Print(margen + linea);
}

void ImprimeCuentaBancaria(vb::PrinterObject& printer, const QString& ClientePrograma) {
    printer.SetFontName(CN);
    printer.SetFontSize(8);
    const QString linea = LineaCuentaBancaria(BloqueDeHoy(ClientePrograma));
    if (linea.isEmpty()) return;
    printer.Print(linea);
    printer.Print();
}

} // namespace vel::letterheads
