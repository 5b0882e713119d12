// The first worksheet of a spreadsheet workbook, as the invoice's import reads
// it through Cells(row, column): ".xls" through FreeXL, ".xlsx" and ".ods"
// through liborcus. The kind is told by the file's first bytes, not its name.
//
// A cell's value is a number as a number, a text as a text, a formula's cached
// result (number or text), nothing for an empty cell. Dates are given as text
// "dd/mm/yyyy".
//
// A file that isn't a workbook, or is damaged, raises runtime error 1004 with
// a description naming the file; so does a workbook beyond these limits,
// which no sheet of document lines comes near and which keep a hostile file
// from taking the machine's memory: 65,536 rows, 256 columns, 32,767 characters
// in a cell (the spreadsheet programs' own limit), 64 MB for any part of the
// packed file once unpacked, 256 MB for all of them. FreeXL itself refuses,
// as damaged, an .xls whose text in one cell runs beyond two continuation
// records of the file (some 16,400 characters).
#pragma once
#include <QString>
#include <functional>
#include <map>
#include <utility>

namespace vel {

struct Celda {
    enum class Tipo { Vacia, Numero, Texto };
    Tipo tipo = Tipo::Vacia;
    double numero = 0;
    QString texto;

    bool Vacia() const { return tipo == Tipo::Vacia || (tipo == Tipo::Texto && texto.isEmpty()); }
    // The cell as it turns into text when assigned to a text box: a number
    // with all its digits (CStr), a text as it stands, empty as "".
    QString Texto() const;
    // The cell in an addition with a number: a number as it is, empty as 0, a
    // text that reads wholly as a number as that number; any other text is the
    // runtime's type mismatch (13).
    double Sumando() const;
};

class Libro {
public:
    // Opens the workbook and reads its first worksheet.
    static Libro Abrir(const QString& path);
    // Cells(row, column), both from 1.
    Celda Cells(int fila, int columna) const;

    // The limits told above.
    static constexpr int kFilasMaximas = 65536;
    static constexpr int kColumnasMaximas = 256;
    static constexpr int kLongitudMaximaCelda = 32767;
    static constexpr long long kParteMaxima = 64LL << 20;
    static constexpr long long kTotalMaximo = 256LL << 20;

    // The readers by kind, on a file's bytes (the fuzz targets call them).
    static Libro LeerXls(const QString& path);
    static Libro LeerXlsx(const QByteArray& bytes, const QString& path);
    static Libro LeerOds(const QByteArray& bytes, const QString& path);

    // Used by the readers.
    void Poner(int fila0, int columna0, Celda celda);

private:
    // Runs a reader in a child process and takes back its cells (or its error).
    static Libro AParte(const QString& path, const std::function<Libro()>& leer);
    std::map<std::pair<int, int>, Celda> celdas_; // 0-based row, column
};

} // namespace vel
