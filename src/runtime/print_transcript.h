// The recording printer: a print environment that keeps every document as a
// print transcript instead of sending it anywhere. Tests and the scenario
// driver install it with vb::SetPrintEnvironment and read what was printed,
// line by line, with its font, colour and place on the page.
//
// Transcript text, one operation a line (positions in twips from the
// printable corner, y first being the top of the line):
//
//   job "Velmarinda" printer "Grabadora" copies 1 orientation 1 colormode 2 trackdefault True
//   (a document on the receipt roll ends that line with " paper receipt")
//   page 1
//     print x=0 y=0 "Courier New" 8 color=0 "text"
//     print x=0 y=160 "Verdana" 12 bold color=255 "SUMINISTROS INDUSTRIALES"
//     line (120,3360)-(11400,3360) color=0
//   page 2 auto          (the printer started it: the page was full)
//   enddoc
#pragma once
#include "runtime/printer.h"
#include <QStringList>
#include <vector>

namespace vb {

struct PrintEvent {
    enum class Kind { Print, Line, NewPage };
    Kind kind = Kind::Print;
    int page = 1;      // the page it is on (NewPage: the page it starts)
    double x = 0, y = 0; // Print: top left of the line; Line: start
    double x2 = 0, y2 = 0; // Line: end
    PrintFont font;
    long color = 0;
    QString text;
    bool automatic = false; // NewPage: started by the printer, the page being full
};

struct PrintJobRecord {
    JobSettings settings;
    PrintDestination destination;
    std::vector<PrintEvent> events;
    bool ended = false;   // sent by EndDoc
    bool aborted = false; // given up

    int pages() const;
    // The text of every Print in order, an empty one for a line feed.
    QStringList lines() const;
    QStringList linesOfPage(int page) const;
    // The Print operations alone.
    std::vector<PrintEvent> prints() const;
    QString transcript() const;
};

class PrintRecorder : public PrintEnvironment {
public:
    PrintRecorder();
    // A document still open on it is given up.
    ~PrintRecorder() override;

    // The printer it stands for: its name and its page (A4 with the borders of
    // the PDF pages; the receipt roll of ReceiptGeometry for a document that
    // asks for it). With noPrinter, the system has no printer at all.
    QString printerName = QStringLiteral("Grabadora");
    PageGeometry portrait;
    bool noPrinter = false;

    std::vector<PrintJobRecord> jobs;
    // The last document (an empty one when none was printed).
    const PrintJobRecord& last() const;
    // Every document's transcript, one after the other.
    QString transcript() const;
    void clear() { jobs.clear(); }

    PrintDestination defaultDestination() override;
    PageGeometry geometry(const PrintDestination& destination, int orientation, Paper paper) override;
    std::unique_ptr<PrinterBackend> open(const PrintDestination& destination, const JobSettings& job) override;
};

// A colour as the transcript writes it: its number, "windowtext" for the
// system's text colour.
QString ColorName(long color);

} // namespace vb
