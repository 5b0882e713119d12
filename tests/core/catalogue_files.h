// Chain catalogues written by the tests themselves with shapelib: the table
// articulo with the columns the products window reads, in the DOS code page
// of the chain, and files damaged in the ways a copied file gets damaged.
#pragma once
#include <QByteArray>
#include <QFile>
#include <QString>
#include <shapefil.h>

#include <string>
#include <vector>

namespace veltest {

// One article of the chain. Texts are bytes in the file's code page (a chain's
// DOS program writes code page 850: "\xA5" is Ñ, "\xB5" is Á); numbers are
// written as the dBase program writes them, right-aligned, with a point.
struct ChainArticle {
    std::string codigo;   // "" for a blank field
    std::string nombre;
    std::string refprove;
    std::string pventa;
    std::string color;
    std::string ean;
    bool deleted = false;
};

// The header of a catalogue: CODIGO N(8), NOMBRE C(40), REFPROVE C(15),
// PVENTA N(10,2), COLOR C(10), EAN N(13).
inline void AddCatalogueFields(DBFHandle h) {
    DBFAddNativeFieldType(h, "CODIGO", 'N', 8, 0);
    DBFAddNativeFieldType(h, "NOMBRE", 'C', 40, 0);
    DBFAddNativeFieldType(h, "REFPROVE", 'C', 15, 0);
    DBFAddNativeFieldType(h, "PVENTA", 'N', 10, 2);
    DBFAddNativeFieldType(h, "COLOR", 'C', 10, 0);
    DBFAddNativeFieldType(h, "EAN", 'N', 13, 0);
}

// Writes a field as its bytes, numbers right-aligned in their width.
inline void PutField(DBFHandle h, int record, int field, const std::string& value) {
    int width = 0, decimals = 0;
    DBFGetFieldInfo(h, field, nullptr, &width, &decimals);
    std::string cell = value;
    const char type = DBFGetNativeFieldType(h, field);
    if ((type == 'N' || type == 'F') && int(cell.size()) < width) cell.insert(0, size_t(width) - cell.size(), ' ');
    if (cell.empty()) cell = " ";
    DBFWriteAttributeDirectly(h, record, field, cell.data());
}

// Writes articulo.dbf (or any name) with the articles. `ldid` is the
// language-driver byte; -1 leaves it 0 (no code page named).
inline bool WriteCatalogue(const QString& path, const std::vector<ChainArticle>& articles, int ldid = 0x02) {
    const std::string codePage = "LDID/" + std::to_string(ldid < 0 ? 0 : ldid);
    DBFHandle h = DBFCreateEx(path.toLocal8Bit().constData(), codePage.c_str());
    if (!h) return false;
    AddCatalogueFields(h);
    int r = 0;
    for (const ChainArticle& a : articles) {
        PutField(h, r, 0, a.codigo);
        PutField(h, r, 1, a.nombre);
        PutField(h, r, 2, a.refprove);
        PutField(h, r, 3, a.pventa);
        PutField(h, r, 4, a.color);
        PutField(h, r, 5, a.ean);
        if (a.deleted) DBFMarkRecordDeleted(h, r, 1);
        ++r;
    }
    DBFClose(h);
    return true;
}

inline QByteArray ReadBytes(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return f.readAll();
}

inline void WriteBytes(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(bytes);
}

// A few articles of an ironmonger's chain.
inline std::vector<ChainArticle> SomeArticles() {
    return {
        {"1", "TORNILLO ACERO 4X40", "T440", "0.12", "GRIS", "8412345000011"},
        {"2", "MARTILLO CARPINTERO", "M300", "12.50", "NEGRO", "8412345000028"},
        {"3", "ALICATE UNIVERSAL", "A180", "9.95", "ROJO", "0"},
        {"4", "CA\xA5" "A DE PESCAR", "C200", "21.00", "", "8412345000042"},
        {"5", "TORNILLO LAT\xE0N 3X20", "T320", "0.08", "DORADO", ""},
        {"6", "BROCA PARA HORMIG\xE0N", "B008", "3.40", "", "8412345000066", true},
        {"7", "\xB5NGULO DE TORNILLER\xD6" "A", "AN10", "1.75", "", "8412345000073"},
    };
}

} // namespace veltest
