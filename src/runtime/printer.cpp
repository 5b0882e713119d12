#include "runtime/printer.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include <QFont>
#include <QFontMetricsF>
#include <map>
#include <tuple>

namespace vb {

namespace {
// Twips per unit of each ScaleMode (3, pixels, as a 600 dpi printer's dots).
double twipsPerUnit(int mode, bool vertical) {
    switch (mode) {
    case 1: return 1;
    case 2: return kTwipsPerPoint;
    case 3: return kTwipsPerInch / 600;
    case 4: return vertical ? 240 : 120;
    case 5: return kTwipsPerInch;
    case 6: return kTwipsPerMm;
    case 7: return kTwipsPerMm * 10;
    default: return 1;
    }
}

[[noreturn]] void invalidProperty() { Raise(380, QStringLiteral("El valor de la propiedad no es válido")); }
} // namespace

QString PrintDestination::name() const {
    switch (kind) {
    case Kind::Printer: return printer;
    case Kind::File: return file;
    case Kind::None: break;
    }
    return QString();
}

void SetPrintEnvironment(PrintEnvironment* e) {
    CurrentEnvironment().printers = e;
    Printer().Reset();
}

PrintEnvironment& CurrentPrintEnvironment() {
    PrintEnvironment* e = CurrentEnvironment().printers;
    return e ? *e : RealPrintEnvironment();
}

QString PrintFontFamily(const QString& name) {
    if (name.compare(QLatin1String("Courier New"), Qt::CaseInsensitive) == 0) return QStringLiteral("Liberation Mono");
    if (name.compare(QLatin1String("Verdana"), Qt::CaseInsensitive) == 0) return QStringLiteral("DejaVu Sans");
    return name;
}

void InstallPrintFontSubstitutes() {
    static const bool done = [] {
        for (const char* name : {"Courier New", "Verdana"}) {
            const QString n = QString::fromLatin1(name);
            QFont::insertSubstitution(n, PrintFontFamily(n));
        }
        return true;
    }();
    (void)done;
}

const PrintFace& FaceOf(const PrintFont& pf) {
    // Kept for the life of the program: the faces outlive every document.
    static auto* faces = new std::map<std::tuple<QString, double, bool, bool>, PrintFace>;
    const auto key = std::make_tuple(pf.name, pf.size, pf.bold, pf.italic);
    const auto it = faces->find(key);
    if (it != faces->end()) return it->second;
    InstallPrintFontSubstitutes();
    QFont f(PrintFontFamily(pf.name));
    f.setPixelSize(std::max(1, qRound(pf.size * kTwipsPerPoint)));
    f.setBold(pf.bold);
    f.setItalic(pf.italic);
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setKerning(false);
    const QFontMetricsF m(f);
    const double box = pf.size * kTwipsPerPoint;
    const double baseline = m.height() > 0 ? box * m.ascent() / m.height() : box * 0.8;
    return faces->emplace(key, PrintFace{f, baseline}).first->second;
}

// ---- The Printer ----------------------------------------------------------------

PrinterObject::PrinterObject() { Reset(); }

PrinterObject::~PrinterObject() = default;

void PrinterObject::Reset() {
    if (backend_) backend_->abort();
    backend_.reset();
    openedBy_ = nullptr;
    font_ = PrintFont{QStringLiteral("Courier New"), 10, false, false};
    foreColor_ = vbBlack;
    scaleMode_ = 1;
    userUnitX_ = userUnitY_ = 1;
    x_ = y_ = 0;
    page_ = 1;
    copies_ = 1;
    orientation_ = vbPRORPortrait;
    colorMode_ = vbPRCMColor;
    trackDefault_ = true;
    paper_ = Paper::Sheet;
    destinationSet_ = false;
    destination_ = PrintDestination();
}

namespace {
PageGeometry withBorder(const QSizeF& sheet) {
    const double borde = kBordePuntos * kTwipsPerPoint;
    return PageGeometry{sheet, QRectF(borde, borde, sheet.width() - 2 * borde, sheet.height() - 2 * borde)};
}
} // namespace

PageGeometry SheetGeometry() { return withBorder(QSizeF(kA4AnchoMm * kTwipsPerMm, kA4AltoMm * kTwipsPerMm)); }

PageGeometry ReceiptGeometry() {
    return withBorder(QSizeF(kRolloAnchoMm * kTwipsPerMm, kRolloAltoMm * kTwipsPerMm));
}

// The paper can't change under an open document: the job has its page.
void PrinterObject::SetPaperKind(Paper paper) {
    if (backend_) return;
    paper_ = paper;
}

void PrinterObject::SetFontName(const QString& name) { font_.name = name; }

void PrinterObject::SetFontSize(double size) {
    if (size <= 0 || size > 2160) invalidProperty();
    font_.size = size;
}

void PrinterObject::SetFontBold(bool bold) { font_.bold = bold; }
void PrinterObject::SetFontItalic(bool italic) { font_.italic = italic; }
void PrinterObject::SetForeColor(long color) { foreColor_ = color; }

void PrinterObject::SetScaleMode(int mode) {
    if (mode < 0 || mode > 7) invalidProperty();
    scaleMode_ = mode;
}

double PrinterObject::unitX() const { return scaleMode_ == 0 ? userUnitX_ : twipsPerUnit(scaleMode_, false); }
double PrinterObject::unitY() const { return scaleMode_ == 0 ? userUnitY_ : twipsPerUnit(scaleMode_, true); }

double PrinterObject::ScaleWidth() const { return geometry().printable.width() / unitX(); }
double PrinterObject::ScaleHeight() const { return geometry().printable.height() / unitY(); }

// Setting the width (height) keeps the other axis's unit as it is and makes the
// scale the user's own.
void PrinterObject::SetScaleWidth(double width) {
    if (width == 0) invalidProperty();
    const double y = unitY();
    userUnitX_ = geometry().printable.width() / width;
    userUnitY_ = y;
    scaleMode_ = 0;
}

void PrinterObject::SetScaleHeight(double height) {
    if (height == 0) invalidProperty();
    const double x = unitX();
    userUnitY_ = geometry().printable.height() / height;
    userUnitX_ = x;
    scaleMode_ = 0;
}

double PrinterObject::CurrentX() const { return x_ / unitX(); }
void PrinterObject::SetCurrentX(double x) { x_ = x * unitX(); }
double PrinterObject::CurrentY() const { return y_ / unitY(); }
void PrinterObject::SetCurrentY(double y) { y_ = y * unitY(); }
double PrinterObject::Width() const { return geometry().sheet.width(); }
double PrinterObject::Height() const { return geometry().sheet.height(); }

double PrinterObject::lineHeight() const { return font_.size * kTwipsPerPoint; }

double PrinterObject::TextHeight(const QString& text) const {
    const int lines = 1 + int(text.count(QLatin1Char('\n')));
    return lines * lineHeight() / unitY();
}

double PrinterObject::TextWidth(const QString& text) const {
    // Measured at one pixel per twip, so the advance is in twips.
    const QFontMetricsF m(FaceOf(font_).font);
    double widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) widest = std::max(widest, m.horizontalAdvance(line));
    return widest / unitX();
}

PageGeometry PrinterObject::geometry() const {
    if (backend_) return openGeometry_;
    return CurrentPrintEnvironment().geometry(Destination(), orientation_, paper_);
}

PrintDestination PrinterObject::Destination() const {
    if (destinationSet_) return destination_;
    return CurrentPrintEnvironment().defaultDestination();
}

void PrinterObject::SetDestination(const PrintDestination& destination) {
    destination_ = destination;
    destinationSet_ = true;
}

void PrinterObject::ForgetChosenFile() {
    if (destinationSet_ && destination_.kind == PrintDestination::Kind::File && !destination_.file.isEmpty()) {
        destinationSet_ = false;
        destination_ = PrintDestination();
    }
}

QString PrinterObject::DeviceName() const { return Destination().name(); }

PrinterBackend& PrinterObject::document() {
    if (backend_) return *backend_;
    const PrintDestination where = Destination();
    if (where.kind == PrintDestination::Kind::None)
        Raise(484, QStringLiteral("Problema al obtener información de la impresora del sistema. Asegúrese de que "
                                  "la impresora está configurada correctamente"));
    PrintEnvironment& env = CurrentPrintEnvironment();
    const PageGeometry g = env.geometry(where, orientation_, paper_);
    backend_ = env.open(where, JobSettings{AppTitle(), copies_, orientation_, colorMode_, trackDefault_, paper_});
    openedBy_ = &env;
    openGeometry_ = g;
    page_ = 1;
    return *backend_;
}

void PrinterObject::Print() { Print(QString()); }

void PrinterObject::Print(const QString& text) {
    PrinterBackend& doc = document();
    const double h = lineHeight();
    if (y_ > 0 && y_ + h > openGeometry_.printable.height()) {
        doc.newPage(true);
        ++page_;
        y_ = 0;
    }
    if (text.isEmpty())
        doc.feed(x_, y_, font_, foreColor_);
    else
        doc.text(x_, y_, text, font_, foreColor_);
    x_ = 0;
    y_ += h;
}

void PrinterObject::Line(double x1, double y1, double x2, double y2) { Line(x1, y1, x2, y2, foreColor_); }

void PrinterObject::Line(double x1, double y1, double x2, double y2, long color) {
    PrinterBackend& doc = document();
    doc.line(x1 * unitX(), y1 * unitY(), x2 * unitX(), y2 * unitY(), color);
    x_ = x2 * unitX();
    y_ = y2 * unitY();
}

void PrinterObject::NewPage() {
    document().newPage(false);
    ++page_;
    x_ = y_ = 0;
}

void PrinterObject::closeDocument() {
    backend_.reset();
    ForgetChosenFile();
    paper_ = Paper::Sheet;
    openedBy_ = nullptr;
    page_ = 1;
    x_ = y_ = 0;
}

void PrinterObject::EndDoc() {
    if (!backend_) return ForgetChosenFile();
    std::unique_ptr<PrinterBackend> doc = std::move(backend_);
    closeDocument();
    doc->endDoc();
}

void PrinterObject::KillDoc() {
    if (!backend_) return ForgetChosenFile();
    backend_->abort();
    closeDocument();
}

void PrinterObject::SetCopies(int copies) {
    if (copies < 1) invalidProperty();
    copies_ = copies;
}

void PrinterObject::SetOrientation(int orientation) {
    if (orientation != vbPRORPortrait && orientation != vbPRORLandscape) invalidProperty();
    orientation_ = orientation;
}

void PrinterObject::SetColorMode(int mode) {
    if (mode != vbPRCMMonochrome && mode != vbPRCMColor) invalidProperty();
    colorMode_ = mode;
}

PrinterObject& Printer() {
    static PrinterObject printer;
    return printer;
}

} // namespace vb
