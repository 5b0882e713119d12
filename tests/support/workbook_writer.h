// Writes small spreadsheet workbooks for the import's tests: ".xlsx" and
// ".ods" as their zipped XML parts (packed by the zip tool), ".xls" through
// Python's xlwt. One sheet, or more when asked.
//
// A cell is given as text:
//   ""            an empty cell (nothing written);
//   "12.5"        a number (anything that reads wholly as a number);
//   "'12"         a text, the apostrophe dropped ("'" alone: an empty text);
//   "=A1*2|7.5"   a formula with its cached result (a number, or a text);
//   anything else a text.
#pragma once
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <stdexcept>
#include <vector>

namespace veltest {

using Fila = QStringList;
using Hoja = std::vector<Fila>;

namespace workbook_detail {

inline QString esc(QString s) {
    s.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;").replace('"', "&quot;");
    return s;
}

inline bool isNumber(const QString& s, double* n = nullptr) {
    bool ok = false;
    const double v = s.toDouble(&ok);
    if (n) *n = v;
    return ok && !s.isEmpty();
}

struct Parsed {
    enum Kind { Empty, Number, Text, Formula } kind = Empty;
    QString text, formula, cached;
};

inline Parsed parse(const QString& c) {
    if (c.isEmpty()) return {};
    if (c.startsWith('=')) {
        const int bar = c.lastIndexOf('|');
        return {Parsed::Formula, {}, c.mid(1, bar < 0 ? -1 : bar - 1), bar < 0 ? QString() : c.mid(bar + 1)};
    }
    if (c.startsWith('\'')) return {Parsed::Text, c.mid(1)};
    if (isNumber(c)) return {Parsed::Number, c};
    return {Parsed::Text, c};
}

inline QString column(int c) {
    QString s;
    for (++c; c > 0; c = (c - 1) / 26) s.prepend(QChar('A' + (c - 1) % 26));
    return s;
}

inline void write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) throw std::runtime_error("cannot write " + path.toStdString());
    f.write(bytes);
}

inline void run(const QString& program, const QStringList& args, const QString& dir) {
    QProcess p;
    p.setWorkingDirectory(dir);
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        throw std::runtime_error((program + " " + args.join(' ') + ": " + QString::number(p.exitCode()) + " " + p.errorString() + " " + p.readAllStandardError() + p.readAllStandardOutput()).toStdString());
}

// Texts go to the shared strings, as the spreadsheet programs write them.
inline QString sheetXlsx(const Hoja& hoja, QStringList& shared) {
    QString x = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>";
    for (size_t r = 0; r < hoja.size(); ++r) {
        x += QString("<row r=\"%1\">").arg(r + 1);
        for (int c = 0; c < hoja[r].size(); ++c) {
            const Parsed p = parse(hoja[r][c]);
            const QString ref = column(c) + QString::number(r + 1);
            switch (p.kind) {
            case Parsed::Empty: break;
            case Parsed::Number: x += QString("<c r=\"%1\"><v>%2</v></c>").arg(ref, p.text); break;
            case Parsed::Text:
                x += QString("<c r=\"%1\" t=\"s\"><v>%2</v></c>").arg(ref).arg(shared.size());
                shared << p.text;
                break;
            case Parsed::Formula:
                if (isNumber(p.cached))
                    x += QString("<c r=\"%1\"><f>%2</f><v>%3</v></c>").arg(ref, esc(p.formula), p.cached);
                else
                    x += QString("<c r=\"%1\" t=\"str\"><f>%2</f><v>%3</v></c>").arg(ref, esc(p.formula), esc(p.cached));
                break;
            }
        }
        x += "</row>";
    }
    return x + "</sheetData></worksheet>";
}

inline void xlsx(const QString& path, const std::vector<Hoja>& hojas) {
    QTemporaryDir d;
    const QString b = d.path();
    QString types = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
                    "<Override PartName=\"/xl/workbook.xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>";
    QString sheets, rels;
    QStringList shared;
    for (size_t i = 0; i < hojas.size(); ++i) {
        types += QString("<Override PartName=\"/xl/worksheets/sheet%1.xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>").arg(i + 1);
        sheets += QString("<sheet name=\"Hoja%1\" sheetId=\"%1\" r:id=\"rId%1\"/>").arg(i + 1);
        rels += QString("<Relationship Id=\"rId%1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" Target=\"worksheets/sheet%1.xml\"/>").arg(i + 1);
        write(b + QString("/xl/worksheets/sheet%1.xml").arg(i + 1), sheetXlsx(hojas[i], shared).toUtf8());
    }
    types += "<Override PartName=\"/xl/sharedStrings.xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml\"/>";
    rels += "<Relationship Id=\"rIdSS\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings\" Target=\"sharedStrings.xml\"/>";
    QString sst = QString("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                          "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" count=\"%1\" uniqueCount=\"%1\">")
                      .arg(shared.size());
    for (const QString& t : shared) sst += "<si><t xml:space=\"preserve\">" + esc(t) + "</t></si>";
    write(b + "/xl/sharedStrings.xml", (sst + "</sst>").toUtf8());
    write(b + "/[Content_Types].xml", (types + "</Types>").toUtf8());
    write(b + "/_rels/.rels",
          "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
          "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
          "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" Target=\"xl/workbook.xml\"/>"
          "</Relationships>");
    write(b + "/xl/workbook.xml",
          ("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
           "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>" +
           sheets + "</sheets></workbook>")
              .toUtf8());
    write(b + "/xl/_rels/workbook.xml.rels",
          ("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
           rels + "</Relationships>")
              .toUtf8());
    const QString out = QFileInfo(path).absoluteFilePath();
    QDir().mkpath(QFileInfo(out).absolutePath());
    QFile::remove(out);
    run("zip", {"-q", "-X", "-r", out, "[Content_Types].xml", "_rels", "xl"}, b);
}

inline QString sheetOds(const Hoja& hoja, int n) {
    QString x = QString("<table:table table:name=\"Hoja%1\">").arg(n);
    for (const Fila& fila : hoja) {
        x += "<table:table-row>";
        for (const QString& c : fila) {
            const Parsed p = parse(c);
            switch (p.kind) {
            case Parsed::Empty: x += "<table:table-cell/>"; break;
            case Parsed::Number:
                x += QString("<table:table-cell office:value-type=\"float\" office:value=\"%1\"><text:p>%1</text:p></table:table-cell>").arg(p.text);
                break;
            case Parsed::Text:
                x += QString("<table:table-cell office:value-type=\"string\"><text:p>%1</text:p></table:table-cell>").arg(esc(p.text));
                break;
            case Parsed::Formula:
                if (isNumber(p.cached))
                    x += QString("<table:table-cell table:formula=\"of:=%1\" office:value-type=\"float\" office:value=\"%2\"><text:p>%2</text:p></table:table-cell>")
                             .arg(esc(p.formula), p.cached);
                else
                    x += QString("<table:table-cell table:formula=\"of:=%1\" office:value-type=\"string\" office:string-value=\"%2\"><text:p>%2</text:p></table:table-cell>")
                             .arg(esc(p.formula), esc(p.cached));
                break;
            }
        }
        x += "</table:table-row>";
    }
    return x + "</table:table>";
}

// An .ods whose tables are given as they stand in content.xml.
inline void odsTablas(const QString& path, const QString& tablas) {
    QTemporaryDir d;
    const QString b = d.path();
    write(b + "/mimetype", "application/vnd.oasis.opendocument.spreadsheet");
    write(b + "/META-INF/manifest.xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<manifest:manifest xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" manifest:version=\"1.2\">"
          "<manifest:file-entry manifest:full-path=\"/\" manifest:media-type=\"application/vnd.oasis.opendocument.spreadsheet\"/>"
          "<manifest:file-entry manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/>"
          "</manifest:manifest>");
    QString content = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<office:document-content xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
                      "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
                      "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" office:version=\"1.2\">"
                      "<office:body><office:spreadsheet>";
    write(b + "/content.xml", (content + tablas + "</office:spreadsheet></office:body></office:document-content>").toUtf8());
    const QString out = QFileInfo(path).absoluteFilePath();
    QDir().mkpath(QFileInfo(out).absolutePath());
    QFile::remove(out);
    run("zip", {"-q", "-X", "-0", out, "mimetype"}, b);
    run("zip", {"-q", "-X", "-r", out, "META-INF", "content.xml"}, b);
}

inline void ods(const QString& path, const std::vector<Hoja>& hojas) {
    QString tablas;
    for (size_t i = 0; i < hojas.size(); ++i) tablas += sheetOds(hojas[i], int(i) + 1);
    odsTablas(path, tablas);
}

// The old binary workbook, written by xlwt from a small script fed the cells.
// With sinLimite, the writer's own length check is lifted: a text of any
// length is written whole, its length field saying at most 65,535 characters
// (the format's most), as a damaged or hostile file may.
inline void xls(const QString& path, const std::vector<Hoja>& hojas, bool sinLimite = false) {
    QString script = "import sys, xlwt\nwb = xlwt.Workbook(encoding='utf-8')\n";
    if (sinLimite)
        script += "import xlwt.BIFFRecords as B\nfrom struct import pack\n"
                  "def upack2(s, encoding='ascii'):\n"
                  "    e = s.encode('latin1')\n"
                  "    return pack('<HB', min(len(e), 0xFFFF), 0) + e\n"
                  "B.upack2 = upack2\n";
    for (size_t i = 0; i < hojas.size(); ++i) {
        script += QString("ws = wb.add_sheet('Hoja%1')\n").arg(i + 1);
        for (size_t r = 0; r < hojas[i].size(); ++r)
            for (int c = 0; c < hojas[i][r].size(); ++c) {
                const Parsed p = parse(hojas[i][r][c]);
                QString v;
                if (p.kind == Parsed::Number) v = p.text;
                else if (p.kind == Parsed::Text) v = "bytes.fromhex('" + QString::fromLatin1(p.text.toUtf8().toHex()) + "').decode('utf-8')";
                else if (p.kind == Parsed::Formula) throw std::runtime_error("xlwt writes no cached results");
                else continue;
                script += QString("ws.write(%1, %2, %3)\n").arg(r).arg(c).arg(v);
            }
    }
    script += "wb.save(sys.argv[1])\n";
    QDir().mkpath(QFileInfo(path).absolutePath());
    // The script goes through a file: a long text is more than a command line holds.
    QTemporaryDir d;
    write(d.filePath("xls.py"), script.toUtf8());
    run("/usr/bin/python3", {d.filePath("xls.py"), QFileInfo(path).absoluteFilePath()}, QDir::currentPath());
}

} // namespace workbook_detail

// Writes the workbook of the kind its name ends in.
inline void WriteWorkbook(const QString& path, const std::vector<Hoja>& hojas) {
    if (path.endsWith(".xlsx", Qt::CaseInsensitive)) workbook_detail::xlsx(path, hojas);
    else if (path.endsWith(".ods", Qt::CaseInsensitive)) workbook_detail::ods(path, hojas);
    else if (path.endsWith(".xls", Qt::CaseInsensitive)) workbook_detail::xls(path, hojas);
    else throw std::runtime_error("no workbook kind for " + path.toStdString());
}
inline void WriteWorkbook(const QString& path, const Hoja& hoja) { WriteWorkbook(path, std::vector<Hoja>{hoja}); }
// An .xls whose texts may pass the format's length (see xls above).
inline void WriteXlsUnchecked(const QString& path, const Hoja& hoja) { workbook_detail::xls(path, {hoja}, true); }
// An .ods of tables written by hand (repeated rows and columns, paragraphs).
inline void WriteOdsTables(const QString& path, const QString& tablesXml) { workbook_detail::odsTablas(path, tablesXml); }

} // namespace veltest
