#include "scenario/dbf_table.h"

#include <shapefil.h>
#include <unicode/ucnv.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <vector>

namespace scenario {

namespace {

// The text in the code page of the language driver (ICU's converter).
QByteArray encode(const QString& text, int ldid) {
    const char* name = "ibm-850";
    if (ldid == 0x01) name = "ibm-437";
    else if (ldid == 0x03 || ldid == 0x57 || ldid == 0x58 || ldid == 0x59) name = "windows-1252";
    UErrorCode status = U_ZERO_ERROR;
    UConverter* c = ucnv_open(name, &status);
    if (U_FAILURE(status)) return text.toLatin1();
    std::vector<char> out(size_t(text.size()) * 4 + 4);
    const int n = ucnv_fromUChars(c, out.data(), int(out.size()), reinterpret_cast<const UChar*>(text.utf16()),
                                  int(text.size()), &status);
    ucnv_close(c);
    return QByteArray(out.data(), n);
}

} // namespace

QString WriteDbfTable(const QString& path, QStringList lines) {
    int ldid = 0x02;
    if (!lines.isEmpty() && lines.first().trimmed().startsWith(QLatin1String("LDID "))) {
        ldid = lines.takeFirst().trimmed().mid(5).toInt();
    }
    if (lines.isEmpty()) return QStringLiteral("falta la línea de los campos");
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile::remove(path);
    const QByteArray codePage = "LDID/" + QByteArray::number(ldid);
    DBFHandle h = DBFCreateEx(QFile::encodeName(path).constData(), codePage.constData());
    if (!h) return QStringLiteral("no se puede crear ") + path;
    struct Field {
        char type;
        int width;
    };
    std::vector<Field> fields;
    for (const QString& campo : lines.takeFirst().split(';')) {
        const QStringList p = campo.trimmed().split(QRegularExpression(QStringLiteral("\\s+")));
        if (p.size() < 3) {
            DBFClose(h);
            return QStringLiteral("campo mal descrito: ") + campo;
        }
        const char type = p[1].at(0).toLatin1();
        const int width = p[2].toInt();
        const int decimals = p.value(3).toInt();
        DBFAddNativeFieldType(h, p[0].toLatin1().constData(), type, width, decimals);
        fields.push_back({type, width});
    }
    int record = 0;
    for (QString line : lines) {
        if (line.trimmed().isEmpty()) continue;
        bool deleted = false;
        if (line.trimmed().startsWith('*')) {
            deleted = true;
            line = line.trimmed().mid(1);
        }
        const QStringList values = line.split(';');
        for (size_t f = 0; f < fields.size(); ++f) {
            QByteArray cell = encode(values.value(int(f)).trimmed(), ldid);
            if ((fields[f].type == 'N' || fields[f].type == 'F') && cell.size() < fields[f].width)
                cell = QByteArray(fields[f].width - cell.size(), ' ') + cell;
            if (cell.isEmpty()) cell = " ";
            DBFWriteAttributeDirectly(h, record, int(f), cell.data());
        }
        if (deleted) DBFMarkRecordDeleted(h, record, 1);
        ++record;
    }
    DBFClose(h);
    return QString();
}

} // namespace scenario
