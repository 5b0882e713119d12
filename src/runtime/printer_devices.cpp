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
#include <functional>
#include <map>
#include <vector>

namespace vb {

namespace {

QPageLayout pdfLayout(int orientation, Paper paper) {
    const QMarginsF borde(kBordePuntos, kBordePuntos, kBordePuntos, kBordePuntos);
    if (paper == Paper::Receipt)
        return QPageLayout(QPageSize(QSizeF(kRolloAnchoMm, kRolloAltoMm), QPageSize::Millimeter,
                                     QStringLiteral("Rollo 80 mm")),
                           QPageLayout::Portrait, borde, QPageLayout::Point);
    return QPageLayout(QPageSize(QSizeF(kA4AnchoMm, kA4AltoMm), QPageSize::Millimeter),
                       orientation == vbPRORLandscape ? QPageLayout::Landscape : QPageLayout::Portrait, borde,
                       QPageLayout::Point);
}

PageGeometry geometryOf(const QPageLayout& layout) {
    // Millimetres are exact for the ISO sizes; points are rounded by QPageSize.
    const QRectF full = layout.fullRect(QPageLayout::Millimeter);
    const QRectF paint = layout.paintRect(QPageLayout::Millimeter);
    const double k = kTwipsPerMm;
    return PageGeometry{QSizeF(full.width() * k, full.height() * k),
                        QRectF(paint.left() * k, paint.top() * k, paint.width() * k, paint.height() * k)};
}

QColor colorOf(long color) {
    if (color < 0) return Qt::black; // system colours: the window text is black on paper
    return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
}

// One painted document, on a PDF file or on a system printer: the device is
// set up before, and drawn on with a painter whose unit is the twip.
//
// Fit to page. The layouts are composed for a sheet as wide as 81 columns of
// 12-point "Courier New" (11,664 twips), wider than the printable part of an A4
// sheet on most office printers (11,425 twips with a border of 12 points). A
// document is therefore kept, operation by operation, until its EndDoc; then,
// when what it drew reaches past the printable width, every page is drawn
// scaled down by one factor, the printable width over the widest extent, as a
// printer driver's "fit to page" does. The composition itself (the lines,
// their places, the page breaks) is the Printer's and does not change: only the
// drawing on the device is smaller. The extent of a text is that of its ink:
// trailing blanks draw nothing and do not count.
class PaintedDocument : public PrinterBackend {
public:
    // onAbort: what the device does when the document is given up (a printer
    // cancels its job), before the painter ends.
    PaintedDocument(std::unique_ptr<QPagedPaintDevice> device, double dotsPerInch,
                    std::function<void()> onAbort = {})
        : device_(std::move(device)), dotsPerInch_(dotsPerInch), onAbort_(std::move(onAbort)) {
        if (!painter_.begin(device_.get())) Raise(482, QStringLiteral("Error de impresora"));
        painter_.setRenderHint(QPainter::TextAntialiasing);
    }
    void text(double x, double y, const QString& text, const PrintFont& font, long color) override {
        ops_.push_back(Op{Op::Text, x, y, 0, 0, color, text, font});
        const PrintFace& f = FaceOf(font);
        qsizetype n = text.size();
        while (n > 0 && text.at(n - 1).isSpace()) --n;
        if (n > 0) extend(x + QFontMetricsF(f.font).horizontalAdvance(text.left(n)));
    }
    void line(double x1, double y1, double x2, double y2, long color) override {
        ops_.push_back(Op{Op::Line, x1, y1, x2, y2, color, {}, {}});
        extend(std::max(x1, x2));
    }
    void newPage(bool) override { ops_.push_back(Op{Op::Page, 0, 0, 0, 0, 0, {}, {}}); }
    void endDoc() override {
        draw();
        painter_.end();
    }
    void abort() override {
        if (onAbort_) onAbort_();
        painter_.end();
    }

    // The printable width of the device, in twips.
    double printableWidth() const { return device_->width() * kTwipsPerInch / dotsPerInch_; }
    // The factor the pages are drawn at: 1 when the composition fits.
    double fitScale() const {
        const double width = printableWidth();
        return widest_ > width && widest_ > 0 ? width / widest_ : 1.0;
    }

private:
    struct Op {
        enum Kind { Text, Line, Page } kind;
        double x1, y1, x2, y2;
        long color;
        QString text;
        PrintFont font;
    };
    void extend(double x) { widest_ = std::max(widest_, x); }
    void draw() {
        const double k = dotsPerInch_ / kTwipsPerInch * fitScale();
        painter_.scale(k, k);
        for (const Op& op : ops_) {
            switch (op.kind) {
            case Op::Text: {
                const PrintFace& f = FaceOf(op.font);
                painter_.setFont(f.font);
                painter_.setPen(colorOf(op.color));
                painter_.drawText(QPointF(op.x1, op.y1 + f.baseline), op.text);
                break;
            }
            case Op::Line:
                painter_.setPen(QPen(colorOf(op.color), kTwipsPerPoint / 2)); // half a point
                painter_.drawLine(QPointF(op.x1, op.y1), QPointF(op.x2, op.y2));
                break;
            case Op::Page: device_->newPage(); break;
            }
        }
        ops_.clear();
    }

    // Declared first, destroyed last: the painter ends before its device goes.
    std::unique_ptr<QPagedPaintDevice> device_;
    double dotsPerInch_;
    std::function<void()> onAbort_;
    QPainter painter_;
    std::vector<Op> ops_;
    double widest_ = 0;
};

std::unique_ptr<PrinterBackend> openPdf(const QString& file, const JobSettings& job) {
    QDir().mkpath(QFileInfo(file).absolutePath());
    constexpr int kPuntosPorPulgada = 1200;
    auto writer = std::make_unique<QPdfWriter>(file);
    writer->setResolution(kPuntosPorPulgada);
    writer->setPageLayout(pdfLayout(job.orientation, job.paper));
    writer->setTitle(job.name);
    writer->setCreator(QStringLiteral("Velmarinda"));
    return std::make_unique<PaintedDocument>(std::move(writer), kPuntosPorPulgada);
}

void setUp(QPrinter& printer, const QString& queue, int orientation) {
    printer.setPrinterName(queue);
    printer.setFullPage(false);
    printer.setPageOrientation(orientation == vbPRORLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

std::unique_ptr<PrinterBackend> openPrinter(const QString& queue, const JobSettings& job) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    setUp(*printer, queue, job.orientation);
    if (!printer->isValid()) Raise(482, QStringLiteral("Error de impresora"));
    printer->setDocName(job.name);
    printer->setCreator(QStringLiteral("Velmarinda"));
    printer->setCopyCount(job.copies);
    printer->setColorMode(job.colorMode == vbPRCMColor ? QPrinter::Color : QPrinter::GrayScale);
    QPrinter* p = printer.get();
    const double dotsPerInch = p->resolution();
    return std::make_unique<PaintedDocument>(std::move(printer), dotsPerInch, [p] { p->abort(); });
}

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
            return openPrinter(where.printer, job);
        QString file = where.file;
        if (file.isEmpty()) {
            const QString stem = QDir(AppPath()).filePath(QStringLiteral("impresos/") + fileNameFor(job.name) +
                                                          QLatin1Char(' ') +
                                                          Now().toString(QStringLiteral("yyyyMMdd-hhmmss")));
            file = stem + QStringLiteral(".pdf");
            for (int n = 2; QFileInfo::exists(file); ++n) file = stem + QStringLiteral(" (%1).pdf").arg(n);
        }
        return openPdf(file, job);
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
