// The real print environment: documents go to a printer of the system (CUPS,
// through Qt Print Support) or to a PDF file. Both draw the same way, with a
// painter whose unit is the twip and whose origin is the printable corner.
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/printer.h"
#include <QDir>
#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <map>

namespace vb {

namespace {

constexpr double kTwipsPerPoint = 20;

// A PDF page: A4 with the quarter-of-a-sixth-inch (4.23 mm) border most office
// printers cannot print on, so that a file looks as the sheet would.
constexpr double kPdfMarginPoints = 12;

QPageLayout pdfLayout(int orientation, Paper paper) {
    if (paper == Paper::Receipt)
        return QPageLayout(QPageSize(QSizeF(80, 297), QPageSize::Millimeter, QStringLiteral("Rollo 80 mm")),
                           QPageLayout::Portrait,
                           QMarginsF(kPdfMarginPoints, kPdfMarginPoints, kPdfMarginPoints, kPdfMarginPoints),
                           QPageLayout::Point);
    return QPageLayout(QPageSize(QPageSize::A4),
                       orientation == vbPRORLandscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(kPdfMarginPoints, kPdfMarginPoints, kPdfMarginPoints, kPdfMarginPoints),
                       QPageLayout::Point);
}

PageGeometry geometryOf(const QPageLayout& layout) {
    // Millimetres are exact for the ISO sizes; points are rounded by QPageSize.
    const QRectF full = layout.fullRect(QPageLayout::Millimeter);
    const QRectF paint = layout.paintRect(QPageLayout::Millimeter);
    const double k = 1440 / 25.4;
    return PageGeometry{QSizeF(full.width() * k, full.height() * k),
                        QRectF(paint.left() * k, paint.top() * k, paint.width() * k, paint.height() * k)};
}

QColor colorOf(long color) {
    if (color < 0) return Qt::black; // system colours: the window text is black on paper
    return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
}

// Draws on a paged device. The painter's unit is the twip.
class PainterBackend : public PrinterBackend {
public:
    PainterBackend(QPagedPaintDevice* device, double dotsPerInch) : device_(device) {
        if (!painter_.begin(device)) Raise(482, QStringLiteral("Error de impresora"));
        painter_.scale(dotsPerInch / 1440, dotsPerInch / 1440);
        painter_.setRenderHint(QPainter::TextAntialiasing);
    }
    void text(double x, double y, const QString& text, const PrintFont& font, long color) override {
        const Face& f = face(font);
        painter_.setFont(f.font);
        painter_.setPen(colorOf(color));
        painter_.drawText(QPointF(x, y + f.baseline), text);
    }
    void line(double x1, double y1, double x2, double y2, long color) override {
        painter_.setPen(QPen(colorOf(color), 10)); // half a point
        painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
    }
    void newPage(bool) override { device_->newPage(); }
    void endDoc() override { painter_.end(); }
    void abort() override { painter_.end(); }

private:
    struct Face {
        QFont font;
        double baseline; // from the top of the line box
    };
    // The line box is the font's size high; the baseline divides it as the
    // font's ascent and descent divide its own height.
    const Face& face(const PrintFont& pf) {
        auto key = std::make_tuple(pf.name, pf.size, pf.bold, pf.italic);
        auto it = faces_.find(key);
        if (it != faces_.end()) return it->second;
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
        return faces_.emplace(key, Face{f, baseline}).first->second;
    }

    QPagedPaintDevice* device_;
    QPainter painter_;
    std::map<std::tuple<QString, double, bool, bool>, Face> faces_;
};

class PdfBackend : public PrinterBackend {
public:
    PdfBackend(const QString& file, const JobSettings& job) : writer_(file) {
        QDir().mkpath(QFileInfo(file).absolutePath());
        writer_.setResolution(1200);
        writer_.setPageLayout(pdfLayout(job.orientation, job.paper));
        writer_.setTitle(job.name);
        writer_.setCreator(QStringLiteral("Velmarinda"));
        painter_ = std::make_unique<PainterBackend>(&writer_, 1200);
    }
    void text(double x, double y, const QString& t, const PrintFont& f, long c) override { painter_->text(x, y, t, f, c); }
    void line(double x1, double y1, double x2, double y2, long c) override { painter_->line(x1, y1, x2, y2, c); }
    void newPage(bool a) override { painter_->newPage(a); }
    void endDoc() override { painter_->endDoc(); }
    void abort() override { painter_->abort(); }

private:
    QPdfWriter writer_;
    std::unique_ptr<PainterBackend> painter_;
};

void setUp(QPrinter& printer, const QString& queue, int orientation) {
    printer.setPrinterName(queue);
    printer.setFullPage(false);
    printer.setPageOrientation(orientation == vbPRORLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

class SystemPrinterBackend : public PrinterBackend {
public:
    SystemPrinterBackend(const QString& queue, const JobSettings& job) : printer_(QPrinter::HighResolution) {
        setUp(printer_, queue, job.orientation);
        if (!printer_.isValid()) Raise(482, QStringLiteral("Error de impresora"));
        printer_.setDocName(job.name);
        printer_.setCreator(QStringLiteral("Velmarinda"));
        printer_.setCopyCount(job.copies);
        printer_.setColorMode(job.colorMode == vbPRCMColor ? QPrinter::Color : QPrinter::GrayScale);
        painter_ = std::make_unique<PainterBackend>(&printer_, printer_.resolution());
    }
    void text(double x, double y, const QString& t, const PrintFont& f, long c) override { painter_->text(x, y, t, f, c); }
    void line(double x1, double y1, double x2, double y2, long c) override { painter_->line(x1, y1, x2, y2, c); }
    void newPage(bool a) override { painter_->newPage(a); }
    void endDoc() override { painter_->endDoc(); }
    void abort() override {
        printer_.abort();
        painter_->abort();
    }

private:
    QPrinter printer_;
    std::unique_ptr<PainterBackend> painter_;
};

// A name that a file system takes: the job's name without path separators.
QString fileNameFor(const QString& job) {
    QString n = job;
    for (QChar& c : n)
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':')) c = QLatin1Char('_');
    return n.trimmed().isEmpty() ? QStringLiteral("Velmarinda") : n.trimmed();
}

class RealEnvironment : public PrintEnvironment {
public:
    // The system's default printer; any printer when none is the default; with no
    // printer at all, a PDF file in the folder "impresos" beside the program.
    PrintDestination defaultDestination() override {
        PrintDestination d;
        QPrinterInfo info = QPrinterInfo::defaultPrinter();
        if (info.isNull()) {
            const QList<QPrinterInfo> all = QPrinterInfo::availablePrinters();
            if (!all.isEmpty()) info = all.first();
        }
        if (!info.isNull()) {
            d.kind = PrintDestination::Kind::Printer;
            d.printer = info.printerName();
        } else {
            d.kind = PrintDestination::Kind::File;
            d.file = QString(); // named when the document opens
        }
        return d;
    }

    // A printer's page is the one it reports, whatever the document asked for:
    // a receipt printer reports its roll.
    PageGeometry geometry(const PrintDestination& where, int orientation, Paper paper) override {
        if (where.kind != PrintDestination::Kind::Printer) return geometryOf(pdfLayout(orientation, paper));
        auto key = std::make_pair(where.printer, orientation);
        auto it = cache_.find(key);
        if (it != cache_.end()) return it->second;
        QPrinter printer(QPrinter::HighResolution);
        setUp(printer, where.printer, orientation);
        const PageGeometry g = geometryOf(printer.pageLayout());
        cache_[key] = g;
        return g;
    }

    std::unique_ptr<PrinterBackend> open(const PrintDestination& where, const JobSettings& job) override {
        if (where.kind == PrintDestination::Kind::Printer)
            return std::make_unique<SystemPrinterBackend>(where.printer, job);
        QString file = where.file;
        if (file.isEmpty()) {
            const QString stem = QDir(AppPath()).filePath(QStringLiteral("impresos/") + fileNameFor(job.name) +
                                                          QLatin1Char(' ') +
                                                          Now().toString(QStringLiteral("yyyyMMdd-hhmmss")));
            file = stem + QStringLiteral(".pdf");
            for (int n = 2; QFileInfo::exists(file); ++n) file = stem + QStringLiteral(" (%1).pdf").arg(n);
        }
        return std::make_unique<PdfBackend>(file, job);
    }

private:
    std::map<std::pair<QString, int>, PageGeometry> cache_;
};

} // namespace

PrintEnvironment& RealPrintEnvironment() {
    static RealEnvironment env;
    return env;
}

} // namespace vb
