// Writes the seed corpus of the catalogue fuzz target into a folder: sound
// tables written with shapelib (the chain's columns in code pages 850 and 1252,
// deleted records, an empty table, dates and logical fields) and the same
// files cut short or with a record count the file can't hold.
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <shapefil.h>

#include <cstdio>
#include <string>

namespace {

void put(DBFHandle h, int r, int f, std::string v) {
    if (v.empty()) v = " ";
    DBFWriteAttributeDirectly(h, r, f, v.data());
}

QByteArray read(const QString& path) {
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

void write(const QString& path, const QByteArray& b) {
    QFile f(path);
    f.open(QIODevice::WriteOnly | QIODevice::Truncate);
    f.write(b);
}

QString catalogue(const QString& dir, const char* name, const char* ldid, int records, bool withDeleted) {
    const QString path = dir + "/" + name;
    DBFHandle h = DBFCreateEx(path.toLocal8Bit().constData(), ldid);
    DBFAddNativeFieldType(h, "CODIGO", 'N', 8, 0);
    DBFAddNativeFieldType(h, "NOMBRE", 'C', 40, 0);
    DBFAddNativeFieldType(h, "REFPROVE", 'C', 15, 0);
    DBFAddNativeFieldType(h, "PVENTA", 'N', 10, 2);
    DBFAddNativeFieldType(h, "COLOR", 'C', 10, 0);
    DBFAddNativeFieldType(h, "EAN", 'N', 13, 0);
    const char* names[] = {"TORNILLO ACERO", ("CA\xA5" "A DE PESCAR"), "\xB5NGULO", "MARTILLO", ""};
    for (int r = 0; r < records; ++r) {
        put(h, r, 0, std::to_string(r + 1));
        put(h, r, 1, names[r % 5]);
        put(h, r, 2, "R" + std::to_string(r));
        put(h, r, 3, r % 3 ? "     12.50" : "**********");
        put(h, r, 4, r % 2 ? "ROJO" : "");
        put(h, r, 5, r % 4 ? "8412345000011" : "0");
        if (withDeleted && r % 3 == 2) DBFMarkRecordDeleted(h, r, 1);
    }
    DBFClose(h);
    return path;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "uso: %s CARPETA\n", argv[0]);
        return 2;
    }
    const QString dir = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(dir);
    const QString a = catalogue(dir, "a850.dbf", "LDID/2", 6, true);
    catalogue(dir, "b1252.dbf", "LDID/87", 4, false);
    catalogue(dir, "c_empty.dbf", "LDID/0", 0, false);
    {
        DBFHandle h = DBFCreateEx((dir + "/d_dates.dbf").toLocal8Bit().constData(), "LDID/1");
        DBFAddNativeFieldType(h, "ALTA", 'D', 8, 0);
        DBFAddNativeFieldType(h, "ACTIVO", 'L', 1, 0);
        DBFAddNativeFieldType(h, "NOTA", 'M', 10, 0);
        DBFAddNativeFieldType(h, "PESO", 'F', 12, 3);
        put(h, 0, 0, "20240131");
        put(h, 0, 1, "T");
        put(h, 0, 2, "         1");
        put(h, 0, 3, "  -1.250e+02");
        put(h, 1, 0, "00000000");
        put(h, 1, 1, "?");
        DBFClose(h);
    }
    const QByteArray sound = read(a);
    write(dir + "/e_truncated.dbf", sound.left(sound.size() - 40));
    QByteArray many = sound;
    many[6] = char(0x7F);
    write(dir + "/f_count.dbf", many);
    write(dir + "/g_header_only.dbf", sound.left(32));
    return 0;
}
