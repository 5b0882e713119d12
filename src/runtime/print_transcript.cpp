#include "runtime/print_transcript.h"

namespace vb {

namespace {

// Twips with one decimal at most: whole positions print as whole numbers.
QString num(double v) {
    const double r = std::round(v * 10) / 10;
    if (r == std::floor(r)) return QString::number(qint64(r));
    return QString::number(r, 'f', 1);
}

QString quoted(const QString& s) {
    QString q = s;
    q.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + q + QLatin1Char('"');
}

QString fontText(const PrintFont& f) {
    QString s = quoted(f.name) + QLatin1Char(' ') + num(f.size);
    if (f.bold) s += QStringLiteral(" bold");
    if (f.italic) s += QStringLiteral(" italic");
    return s;
}

// Appends to its job record; the record lives in the recorder's list.
class RecordingBackend : public PrinterBackend {
public:
    RecordingBackend(std::vector<PrintJobRecord>& jobs, size_t index) : jobs_(jobs), index_(index) {}
    void text(double x, double y, const QString& text, const PrintFont& font, long color) override {
        add({PrintEvent::Kind::Print, page_, x, y, 0, 0, font, color, text, false});
    }
    void feed(double x, double y, const PrintFont& font, long color) override {
        add({PrintEvent::Kind::Print, page_, x, y, 0, 0, font, color, QString(), false});
    }
    void line(double x1, double y1, double x2, double y2, long color) override {
        add({PrintEvent::Kind::Line, page_, x1, y1, x2, y2, PrintFont(), color, QString(), false});
    }
    void newPage(bool automatic) override {
        ++page_;
        add({PrintEvent::Kind::NewPage, page_, 0, 0, 0, 0, PrintFont(), 0, QString(), automatic});
    }
    void endDoc() override {
        if (index_ < jobs_.size()) jobs_[index_].ended = true;
    }
    void abort() override {
        if (index_ < jobs_.size()) jobs_[index_].aborted = true;
    }

private:
    // A recording cleared while a document was open loses the rest of it.
    void add(PrintEvent e) {
        if (index_ < jobs_.size()) jobs_[index_].events.push_back(std::move(e));
    }
    std::vector<PrintJobRecord>& jobs_;
    size_t index_;
    int page_ = 1;
};

} // namespace

QString ColorName(long color) {
    if (color == vbWindowText) return QStringLiteral("windowtext");
    return QString::number(color);
}

int PrintJobRecord::pages() const {
    int n = events.empty() ? 0 : 1;
    for (const PrintEvent& e : events)
        if (e.kind == PrintEvent::Kind::NewPage) n = e.page;
    return n;
}

std::vector<PrintEvent> PrintJobRecord::prints() const {
    std::vector<PrintEvent> out;
    for (const PrintEvent& e : events)
        if (e.kind == PrintEvent::Kind::Print) out.push_back(e);
    return out;
}

QStringList PrintJobRecord::lines() const {
    QStringList out;
    for (const PrintEvent& e : events)
        if (e.kind == PrintEvent::Kind::Print) out << e.text;
    return out;
}

QStringList PrintJobRecord::linesOfPage(int page) const {
    QStringList out;
    for (const PrintEvent& e : events)
        if (e.kind == PrintEvent::Kind::Print && e.page == page) out << e.text;
    return out;
}

QString PrintJobRecord::transcript() const {
    QString t = QStringLiteral("job %1 printer %2 copies %3 orientation %4 colormode %5 trackdefault %6\n")
                    .arg(quoted(settings.name), quoted(destination.name()))
                    .arg(settings.copies)
                    .arg(settings.orientation)
                    .arg(settings.colorMode)
                    .arg(settings.trackDefault ? QStringLiteral("True") : QStringLiteral("False"));
    // Sheets are the rule; only a document on the receipt roll says its paper.
    if (settings.paper == Paper::Receipt) t.insert(t.size() - 1, QStringLiteral(" paper receipt"));
    if (!events.empty() || ended) t += QStringLiteral("page 1\n");
    for (const PrintEvent& e : events) {
        switch (e.kind) {
        case PrintEvent::Kind::Print:
            t += QStringLiteral("  print x=%1 y=%2 %3 color=%4 %5\n")
                     .arg(num(e.x), num(e.y), fontText(e.font), ColorName(e.color), quoted(e.text));
            break;
        case PrintEvent::Kind::Line:
            t += QStringLiteral("  line (%1,%2)-(%3,%4) color=%5\n")
                     .arg(num(e.x), num(e.y), num(e.x2), num(e.y2), ColorName(e.color));
            break;
        case PrintEvent::Kind::NewPage:
            t += QStringLiteral("page %1%2\n").arg(e.page).arg(e.automatic ? QStringLiteral(" auto") : QString());
            break;
        }
    }
    if (ended) t += QStringLiteral("enddoc\n");
    if (aborted) t += QStringLiteral("killdoc\n");
    return t;
}

PrintRecorder::PrintRecorder() {
    portrait = SheetGeometry();
}

PrintRecorder::~PrintRecorder() {
    if (Printer().DocumentEnvironment() == this) Printer().KillDoc();
}

const PrintJobRecord& PrintRecorder::last() const {
    static const PrintJobRecord none;
    return jobs.empty() ? none : jobs.back();
}

QString PrintRecorder::transcript() const {
    QString t;
    for (const PrintJobRecord& j : jobs) t += j.transcript();
    return t;
}

PrintDestination PrintRecorder::defaultDestination() {
    PrintDestination d;
    if (!noPrinter) {
        d.kind = PrintDestination::Kind::Printer;
        d.printer = printerName;
    }
    return d;
}

PageGeometry PrintRecorder::geometry(const PrintDestination&, int orientation, Paper paper) {
    if (paper == Paper::Receipt) return ReceiptGeometry();
    if (orientation != vbPRORLandscape) return portrait;
    PageGeometry g;
    g.sheet = portrait.sheet.transposed();
    g.printable = QRectF(portrait.printable.top(), portrait.printable.left(), portrait.printable.height(),
                         portrait.printable.width());
    return g;
}

std::unique_ptr<PrinterBackend> PrintRecorder::open(const PrintDestination& destination, const JobSettings& job) {
    PrintJobRecord r;
    r.settings = job;
    r.destination = destination;
    jobs.push_back(std::move(r));
    return std::make_unique<RecordingBackend>(jobs, jobs.size() - 1);
}

} // namespace vb
