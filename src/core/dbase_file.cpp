#include "core/dbase_file.h"
#include "runtime/errors.h"

#include <shapefil.h>
#include <unicode/ucnv.h>

#include <QFile>
#include <QFileInfo>

#include <array>
#include <charconv>
#include <cstring>

namespace vel {

namespace {

// The versions (first byte) of the dBase family whose records this reader
// takes: dBase III with and without memo, dBase IV and V, FoxBASE and FoxPro
// 2. (A text file starts with a letter or a digit: none of these.)
bool knownVersion(unsigned char v) {
    switch (v) {
    case 0x02: case 0x03: case 0x04: case 0x05: case 0x83: case 0x8B: case 0xCB: case 0xE5: case 0xF5: case 0xFB:
        return true;
    default:
        return false;
    }
}

// A catalogue larger than this is not a catalogue: refuse it before reading it
// into memory.
constexpr qint64 kLargestFile = qint64(1) << 30;

unsigned le16(const unsigned char* p) { return unsigned(p[0]) | unsigned(p[1]) << 8; }
quint32 le32(const unsigned char* p) {
    return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

[[noreturn]] void notADbaseTable(const QString& path, const QString& why) {
    vb::Raise(3343, QStringLiteral("Formato de base de datos no reconocido '%1': %2").arg(path, why));
}

// ---------------------------------------------------------------------------
// shapelib reads the checked copy in memory through its file hooks.

struct MemoryFile {
    const QByteArray* bytes;
    qint64 pos = 0;
};

// The copy the next DBFOpenLL is to open (one thread: the program has one).
thread_local const QByteArray* pendingBytes = nullptr;

MemoryFile* asMemory(SAFile f) { return reinterpret_cast<MemoryFile*>(f); }

SAFile memOpen(const char* name, const char*) {
    // shapelib asks for the table as "<name>.dbf" (then ".DBF"), and for a
    // code-page file "<name>.cpg": only the table exists here.
    const size_t n = std::strlen(name);
    if (!pendingBytes || n < 4 || std::strcmp(name + n - 4, ".dbf") != 0) return nullptr;
    auto* f = new MemoryFile{pendingBytes};
    return reinterpret_cast<SAFile>(f);
}

SAOffset memRead(void* p, SAOffset size, SAOffset nmemb, SAFile file) {
    MemoryFile* f = asMemory(file);
    if (size == 0 || nmemb == 0) return 0;
    const qint64 total = f->bytes->size();
    if (f->pos >= total) return 0;
    const SAOffset available = SAOffset(total - f->pos) / size;
    const SAOffset items = std::min(available, nmemb);
    std::memcpy(p, f->bytes->constData() + f->pos, items * size);
    f->pos += qint64(items * size);
    return items;
}

SAOffset memWrite(void*, SAOffset, SAOffset, SAFile) { return 0; } // read-only

SAOffset memSeek(SAFile file, SAOffset offset, int whence) {
    MemoryFile* f = asMemory(file);
    qint64 base = 0;
    if (whence == SEEK_CUR) base = f->pos;
    else if (whence == SEEK_END) base = f->bytes->size();
    const qint64 target = base + qint64(offset);
    if (target < 0) return SAOffset(-1);
    f->pos = target;
    return 0;
}

SAOffset memTell(SAFile file) { return SAOffset(asMemory(file)->pos); }
int memFlush(SAFile) { return 0; }
int memClose(SAFile file) {
    delete asMemory(file);
    return 0;
}
int memRemove(const char*) { return -1; }
void memError(const char*) {}

// Numbers are written with a decimal point, whatever the regional settings of
// the machine (atof would follow them).
double atofPoint(const char* s) {
    while (*s == ' ') ++s;
    if (*s == '+') ++s;
    double v = 0;
    std::from_chars(s, s + std::strlen(s), v);
    return v;
}

SAHooks memoryHooks() {
    SAHooks h;
    SASetupDefaultHooks(&h);
    h.FOpen = memOpen;
    h.FRead = memRead;
    h.FWrite = memWrite;
    h.FSeek = memSeek;
    h.FTell = memTell;
    h.FFlush = memFlush;
    h.FClose = memClose;
    h.Remove = memRemove;
    h.Error = memError;
    h.Atof = atofPoint;
    return h;
}

// ICU's name of a code page.
const char* converterName(int codePage) {
    switch (codePage) {
    case 10000: return "macintosh";
    case 10006: return "x-mac-greek";
    case 10007: return "x-mac-cyrillic";
    case 10029: return "x-mac-centraleurroman";
    case 874: return "windows-874";
    case 932: return "windows-932";
    case 936: return "windows-936";
    case 949: return "windows-949";
    case 950: return "windows-950";
    default: return nullptr;
    }
}

UConverter* openConverter(int codePage) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* c = nullptr;
    if (const char* known = converterName(codePage)) {
        c = ucnv_open(known, &status);
    } else {
        const QByteArray name = QByteArray(codePage >= 1250 && codePage <= 1258 ? "windows-" : "ibm-") +
                                QByteArray::number(codePage);
        c = ucnv_open(name.constData(), &status);
    }
    if (U_FAILURE(status)) {
        if (c) ucnv_close(c);
        return nullptr;
    }
    return c;
}

void appendUtf8(QByteArray& out, char32_t cp) {
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | (cp >> 18));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

} // namespace

// ---------------------------------------------------------------------------
// Decoding text from the file's code page.

struct DbaseFile::Decoder {
    // Single-byte code pages (all the DOS and Windows pages of Europe): each
    // byte's character, in UTF-8, from a table made once.
    bool singleByte = true;
    std::array<QByteArray, 256> table;
    UConverter* converter = nullptr; // the multi-byte pages

    explicit Decoder(int codePage) {
        converter = openConverter(codePage);
        if (!converter) converter = openConverter(850);
        if (converter && ucnv_getMaxCharSize(converter) > 1) {
            singleByte = false;
            return;
        }
        for (int b = 0; b < 256; ++b) {
            char in = char(b);
            UChar out[4];
            UErrorCode status = U_ZERO_ERROR;
            int n = 0;
            if (converter) {
                ucnv_reset(converter);
                n = ucnv_toUChars(converter, out, 4, &in, 1, &status);
            }
            char32_t cp = (U_FAILURE(status) || n < 1) ? U'\uFFFD' : char32_t(out[0]);
            if (b < 0x80 && (U_FAILURE(status) || n < 1)) cp = char32_t(b);
            appendUtf8(table[size_t(b)], cp);
        }
    }
    ~Decoder() {
        if (converter) ucnv_close(converter);
    }

    QByteArray utf8(const char* s) const {
        QByteArray out;
        const size_t n = std::strlen(s);
        if (singleByte) {
            out.reserve(qsizetype(n));
            for (size_t i = 0; i < n; ++i) {
                const auto b = static_cast<unsigned char>(s[i]);
                if (b < 0x80) out += char(b);
                else out += table[b];
            }
            return out;
        }
        std::vector<UChar> buf(n * 2 + 2);
        UErrorCode status = U_ZERO_ERROR;
        ucnv_reset(converter);
        const int len = ucnv_toUChars(converter, buf.data(), int(buf.size()), s, int(n), &status);
        if (U_FAILURE(status)) return QByteArray(s, qsizetype(n));
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(buf.data()), len).toUtf8();
    }
};

struct DbaseFile::Shapelib {
    DBFHandle handle = nullptr;
    ~Shapelib() {
        if (handle) DBFClose(handle);
    }
};

// ---------------------------------------------------------------------------

int DbaseFile::CodePageOf(int ldid) {
    switch (ldid) {
    case 0x01: case 0x09: case 0x0B: case 0x0D: case 0x0F: case 0x11: case 0x15: case 0x18: case 0x19: case 0x1B:
        return 437;
    case 0x02: case 0x0A: case 0x0E: case 0x10: case 0x12: case 0x14: case 0x16: case 0x1A: case 0x1D: case 0x25:
    case 0x37:
        return 850;
    case 0x03: case 0x57: case 0x58: case 0x59: return 1252;
    case 0x04: return 10000;
    case 0x08: case 0x17: case 0x66: return 865;
    case 0x13: case 0x7B: return 932;
    case 0x1C: case 0x6C: return 863;
    case 0x1F: case 0x22: case 0x23: case 0x40: case 0x64: case 0x87: return 852;
    case 0x24: return 860;
    case 0x26: case 0x65: return 866;
    case 0x4D: case 0x7A: return 936;
    case 0x4E: case 0x79: return 949;
    case 0x4F: case 0x78: return 950;
    case 0x50: case 0x7C: return 874;
    case 0x67: return 861;
    case 0x6A: case 0x86: return 737;
    case 0x6B: case 0x88: return 857;
    case 0x96: return 10007;
    case 0x97: return 10029;
    case 0x98: return 10006;
    case 0xC8: return 1250;
    case 0xC9: return 1251;
    case 0xCA: return 1254;
    case 0xCB: return 1253;
    case 0xCC: return 1257;
    default: return 850; // none given: the DOS page of a Spanish chain
    }
}

std::unique_ptr<DbaseFile> DbaseFile::Open(const QString& path) {
    QFile file(path);
    const QFileInfo info(path);
    if (!info.exists() || info.isDir() || !file.open(QIODevice::ReadOnly))
        vb::Raise(3024, QStringLiteral("No se encuentra el archivo '%1'.").arg(path));
    if (file.size() > kLargestFile)
        notADbaseTable(path, QStringLiteral("el archivo tiene %1 bytes, más de lo que puede ser un catálogo.")
                                 .arg(file.size()));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        vb::Raise(3043, QStringLiteral("Error en el disco o en la red."));
    return FromBytes(std::move(bytes), path);
}

std::unique_ptr<DbaseFile> DbaseFile::FromBytes(QByteArray bytes, const QString& path) {
    std::unique_ptr<DbaseFile> f(new DbaseFile);
    f->path_ = path;
    f->bytes_ = std::move(bytes);
    f->check();
    f->decoder_ = std::make_unique<Decoder>(f->codePage_);
    f->openShapelib();
    return f;
}

DbaseFile::~DbaseFile() = default;

// The header, checked against the size of the file before anything trusts it.
void DbaseFile::check() {
    const qint64 size = bytes_.size();
    const auto* b = reinterpret_cast<const unsigned char*>(bytes_.constData());
    if (size < 32)
        notADbaseTable(path_, QStringLiteral("el archivo tiene %1 bytes y la cabecera de una tabla dBase ocupa 32; "
                                             "no es una tabla dBase o está truncado.")
                                  .arg(size));
    if (!knownVersion(b[0]))
        notADbaseTable(path_, QStringLiteral("no es una tabla dBase (su primer byte, %1, no es el de ninguna "
                                             "versión de dBase).")
                                  .arg(b[0]));
    const quint32 records = le32(b + 4);
    headerLength_ = int(le16(b + 8));
    recordLength_ = int(le16(b + 10));
    languageDriver_ = b[29];
    codePage_ = CodePageOf(languageDriver_);
    if (headerLength_ < 32 + 32 + 1)
        notADbaseTable(path_, QStringLiteral("la cabecera dice medir %1 bytes, menos de lo que ocupa un solo campo; "
                                             "no es una tabla dBase.")
                                  .arg(headerLength_));
    if (headerLength_ > size)
        notADbaseTable(path_, QStringLiteral("el archivo está truncado o no es una tabla dBase: la cabecera dice "
                                             "medir %1 bytes y el archivo tiene %2.")
                                  .arg(headerLength_)
                                  .arg(size));
    // Field descriptors, 32 bytes each, up to the terminator 0x0D.
    const int room = (headerLength_ - 32) / 32;
    int n = 0;
    qint64 width = 1; // the deletion mark
    for (; n < room; ++n) {
        const unsigned char* d = b + 32 + 32 * n;
        if (d[0] == 0x0D) break;
        char name[12] = {};
        std::memcpy(name, d, 11);
        const char type = char(d[11]);
        const int w = d[16];
        if (!((type >= 'A' && type <= 'Z') || type == '@' || type == '+'))
            notADbaseTable(path_, QStringLiteral("el campo %1 tiene un tipo (%2) que no es de dBase.")
                                      .arg(n + 1)
                                      .arg(int(static_cast<unsigned char>(type))));
        if (w == 0) notADbaseTable(path_, QStringLiteral("el campo %1 tiene ancho 0.").arg(n + 1));
        fields_.push_back({QString(), type, w, (type == 'N' || type == 'F') ? int(d[17]) : 0});
        fields_.back().name = QString::fromLatin1(name); // decoded below, once the code page is known
        width += w;
    }
    if (n == 0) notADbaseTable(path_, QStringLiteral("la cabecera no describe ningún campo."));
    if (32 + 32 * n >= headerLength_ || b[32 + 32 * n] != 0x0D)
        notADbaseTable(path_, QStringLiteral("la descripción de los campos no termina donde debe (falta la marca "
                                             "de fin de cabecera); no es una tabla dBase o está dañada."));
    if (width > recordLength_)
        notADbaseTable(path_, QStringLiteral("los campos suman %1 bytes y la cabecera da a cada registro %2.")
                                  .arg(width)
                                  .arg(recordLength_));
    const qint64 needed = qint64(headerLength_) + qint64(records) * qint64(recordLength_);
    if (needed > size) {
        const qint64 fit = (size - headerLength_) / recordLength_;
        notADbaseTable(path_, QStringLiteral("la cabecera declara %1 registros de %2 bytes, pero en el archivo "
                                             "(%3 bytes) solo caben %4: está truncado o su cabecera está dañada.")
                                  .arg(records)
                                  .arg(recordLength_)
                                  .arg(size)
                                  .arg(fit));
    }
    records_ = int(records);
}

void DbaseFile::openShapelib() {
    for (DbaseField& f : fields_) f.name = QString::fromUtf8(decoder_->utf8(f.name.toLatin1().constData()));
    SAHooks hooks = memoryHooks();
    pendingBytes = &bytes_;
    DBFHandle h = DBFOpenLL("catalogo.dbf", "rb", &hooks);
    pendingBytes = nullptr;
    dbf_ = std::make_unique<Shapelib>();
    dbf_->handle = h;
    // shapelib must see the table as it was checked above.
    bool same = h && DBFGetRecordCount(h) == records_ && DBFGetFieldCount(h) == int(fields_.size());
    for (int i = 0; same && i < int(fields_.size()); ++i) {
        int w = 0, d = 0;
        DBFGetFieldInfo(h, i, nullptr, &w, &d);
        same = w == fields_[size_t(i)].width && DBFGetNativeFieldType(h, i) == fields_[size_t(i)].type;
    }
    if (!same) notADbaseTable(path_, QStringLiteral("la cabecera no se puede leer como la de una tabla dBase."));
}

// shapelib reads the field (from the record it holds, or after loading the
// record from the checked copy) with its blanks trimmed. What counts as Null:
// a blank field of any kind, a number of asterisks (dBase's overflow mark), an
// empty date ("00000000" or "0") and an unknown logical value ("?").
const char* DbaseFile::Raw(int record, int field) const {
    if (record < 0 || record >= records_ || field < 0 || field >= int(fields_.size())) return nullptr;
    const char* s = DBFReadStringAttribute(dbf_->handle, record, field);
    if (!s || *s == '\0') return nullptr;
    switch (fields_[size_t(field)].type) {
    case 'N':
    case 'F':
        if (*s == '*') return nullptr;
        break;
    case 'D':
        if (std::strcmp(s, "00000000") == 0 || std::strcmp(s, "0") == 0) return nullptr;
        break;
    case 'L':
        if (*s == '?') return nullptr;
        break;
    default:
        break;
    }
    return s;
}

bool DbaseFile::IsDeleted(int record) const {
    if (record < 0 || record >= records_) return false;
    return DBFIsRecordDeleted(dbf_->handle, record) != 0;
}

void DbaseFile::Decode(const char* bytes, QByteArray& out) const { out = decoder_->utf8(bytes); }

QByteArray DbaseFile::TextUtf8(int record, int field) const {
    const char* s = Raw(record, field);
    if (!s) return QByteArray();
    return decoder_->utf8(s);
}

bool DbaseFile::Number(int record, int field, double& out) const {
    const char* s = Raw(record, field);
    if (!s) return false;
    if (*s == '+') ++s;
    const char* end = s + std::strlen(s);
    const auto r = std::from_chars(s, end, out);
    return r.ec == std::errc() && r.ptr != s;
}

vb::Variant DbaseFile::Value(int record, int field) const {
    if (IsNull(record, field)) return vb::Variant();
    const char type = fields_[size_t(field)].type;
    switch (type) {
    case 'N':
    case 'F': {
        double v = 0;
        if (!Number(record, field, v)) return vb::Variant();
        return vb::Variant(v);
    }
    case 'L': {
        const char* s = Raw(record, field);
        if (!s) return vb::Variant();
        if (*s && std::strchr("TtYy", *s)) return vb::Variant(-1.0);
        if (*s && std::strchr("FfNn", *s)) return vb::Variant(0.0);
        return vb::Variant();
    }
    case 'D': {
        const char* s = Raw(record, field);
        if (!s) return vb::Variant();
        bool digits = std::strlen(s) == 8;
        for (int i = 0; digits && i < 8; ++i) digits = s[i] >= '0' && s[i] <= '9';
        if (digits)
            return vb::Variant(QStringLiteral("%1/%2/%3")
                                   .arg(QLatin1String(s + 6, 2), QLatin1String(s + 4, 2), QLatin1String(s, 4)));
        return vb::Variant(QString::fromUtf8(decoder_->utf8(s)));
    }
    default:
        return vb::Variant(QString::fromUtf8(TextUtf8(record, field)));
    }
}

} // namespace vel
