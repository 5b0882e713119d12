// membrete.ini: the identity of a shop whose installation tag is none of the
// four the program knows, printed where a known tag prints its letterhead.
//
// The file is UTF-8 text (a byte-order mark is allowed), lines ended by LF or
// CR LF, one value a line as "key = value":
//
//   ; Membrete de la tienda
//   [membrete]
//   nombre    = Ferretería Nova, S.L.
//   nif       = B-12.345.678
//   domicilio = Rúa Nova 5, bajo
//   poblacion = 15001 Portelas (Valdeferro)
//   telefono  = 900 00 00 09
//   correo    = info@ferreterianova.es
//   registro  = Ins. en el Reg. Mercantil de Valdeferro, Tomo 3000, Folio 30, Hoja VF-30000
//
// Keys in any case; blanks around keys and values are dropped; empty lines and
// lines starting with ";" or "#" are comments; a section line "[membrete]" may
// stand anywhere. `nombre` and `nif` are required (an invoice must carry the
// seller's name and tax number); the others may be left out. Each value fits
// the line it is printed on: at most 60 characters, the register line 100.
//
// A file that breaks any of this is refused as a whole with runtime error 5
// and a description that names the file, the line and the fault; nothing of it
// is printed.
#pragma once
#include "runtime/errors.h"
#include <QByteArray>
#include <QString>
#include <optional>

namespace vel::letterheads {

// The error of a bad membrete.ini: a runtime error the print job does not pass
// over (print_job.h), so the document is given up and the message reaches the
// user instead of a paper without its seller.
struct MembreteNoValido : vb::RuntimeError {
    using vb::RuntimeError::RuntimeError;
};

struct DatosMembrete {
    QString nombre;
    QString nif;
    QString domicilio;
    QString poblacion; // postal code and town
    QString telefono;
    QString correo;
    QString registro; // the entry in the companies' register
};

inline const QString kArchivoMembrete = QStringLiteral("membrete.ini");
constexpr int kErrorMembrete = 5;
constexpr qsizetype kMaximoBytesMembrete = 4096;
constexpr qsizetype kMaximoValor = 60;
constexpr qsizetype kMaximoRegistro = 100;

// Reads the file's bytes; raises runtime error kErrorMembrete on a bad file.
DatosMembrete LeeMembrete(const QByteArray& bytes);
// membrete.ini in a folder: none when the file isn't there; raises on a bad
// file (or one that can't be read).
std::optional<DatosMembrete> MembreteDeCarpeta(const QString& carpeta);

} // namespace vel::letterheads
