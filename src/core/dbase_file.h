// A dBase III table file (.dbf), read-only, through shapelib.
//
// The chain's catalogue comes as such a file, written by a program we don't
// control. Before shapelib is given the file, the whole of it is read into
// memory and its header is checked against its size: a file that is not a
// dBase table, a truncated one, or one whose header promises more records or
// wider fields than the file holds raises a runtime error that says what is
// wrong, and nothing is read past its end. shapelib then reads the records
// from that checked copy (its file hooks are pointed at the memory), so the
// file can't change between the check and the reading.
//
// Values come as the runtime sees database fields:
//  - character fields decoded from the file's code page, named by the
//    language-driver byte of the header (DOS code page 850 when the byte is 0
//    or unknown: the usual code page of a Spanish chain's DOS programs),
//    trailing and leading blanks removed;
//  - numeric fields (N, F) as numbers, read with a decimal point whatever the
//    machine's regional settings;
//  - dates (D, yyyymmdd) as the text dd/mm/yyyy the program uses for dates;
//  - logical fields (L) as -1 (true) or 0 (false);
//  - a blank field (and a numeric field of asterisks, an empty date "00000000"
//    or a logical "?") as Null.
// Records marked deleted ('*' in their first byte) are there, and IsDeleted
// tells them; the catalogue database skips them.
#pragma once
#include "runtime/variant.h"
#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

namespace vel {

struct DbaseField {
    QString name;   // as in the header (dBase writes it in capitals)
    char type;      // 'C', 'N', 'F', 'D', 'L', 'M'...
    int width;
    int decimals;
};

class DbaseFile {
public:
    // Reads and checks the file. Raises 3024 when it can't be read, 3343 with
    // the reason when it is not a sound dBase table.
    static std::unique_ptr<DbaseFile> Open(const QString& path);
    // The same from bytes already in memory; `path` only names the file in
    // messages.
    static std::unique_ptr<DbaseFile> FromBytes(QByteArray bytes, const QString& path);
    ~DbaseFile();
    DbaseFile(const DbaseFile&) = delete;
    DbaseFile& operator=(const DbaseFile&) = delete;

    const QString& path() const { return path_; }
    const std::vector<DbaseField>& Fields() const { return fields_; }
    // Records in the file, deleted ones included.
    int RecordCount() const { return records_; }
    bool IsDeleted(int record) const;
    // The value of a field of a record (both 0-based), as told above.
    vb::Variant Value(int record, int field) const;
    // The bytes of a field as the file holds them, blanks trimmed, in the
    // file's code page; nullptr when the field is Null. Valid until the next
    // read of a field.
    const char* Raw(int record, int field) const;
    bool IsNull(int record, int field) const { return Raw(record, field) == nullptr; }
    // The text of a field in UTF-8, decoded from the code page; empty when Null.
    QByteArray TextUtf8(int record, int field) const;
    // Bytes of the file's code page in UTF-8, into `out` (replacing it).
    void Decode(const char* bytes, QByteArray& out) const;
    // The field as a number, or false when it holds none.
    bool Number(int record, int field, double& out) const;

    // The language-driver byte and the code page it names.
    int LanguageDriver() const { return languageDriver_; }
    int CodePage() const { return codePage_; }
    // The code page of a language-driver byte; 850 for 0 and unknown bytes.
    static int CodePageOf(int languageDriver);

private:
    DbaseFile() = default;
    void check();     // raises on a bad header
    void openShapelib();

    QString path_;
    QByteArray bytes_;
    std::vector<DbaseField> fields_;
    int records_ = 0;
    int headerLength_ = 0;
    int recordLength_ = 0;
    int languageDriver_ = 0;
    int codePage_ = 850;
    struct Decoder;
    std::unique_ptr<Decoder> decoder_;
    struct Shapelib;
    std::unique_ptr<Shapelib> dbf_;
};

} // namespace vel
