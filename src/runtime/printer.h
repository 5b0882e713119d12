// The runtime's Printer object: the page is a stream of text lines and rules
// drawn at a current position, in a font by name and point size.
//
//  - Print draws its text at (CurrentX, CurrentY) in the font in force and moves
//    to the start of the next line: CurrentX goes back to 0 and CurrentY down by
//    the line height. Print with no text, or with "", only feeds the line.
//  - The line height follows the font size in force: one line of a font of N
//    points is N points high (TextHeight), so twelve-point lines run at six to
//    the inch, the height of a character cell of ScaleMode 4.
//  - A line that would not fit above the foot of the printable area starts a new
//    page first, as the printer does by itself.
//  - Coordinates are those of the ScaleMode in force: 1 twips, 2 points, 4
//    character cells of 120 by 240 twips, 5 inches, 6 millimetres, 7
//    centimetres. Setting ScaleWidth or ScaleHeight makes ScaleMode 0 (user):
//    the printable width (height) is then that many units.
//  - The first output of a document opens it on the printer chosen last (the
//    print dialog chooses it), with App.Title as the job's name. EndDoc sends it.
//
// Where the pages go is the print environment's business: the real one sends
// them to a CUPS printer or to a PDF file; tests install a recording one that
// writes the print transcript (print_transcript.h).
#pragma once
#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <memory>

namespace vb {

// Colours as the runtime numbers them (&HBBGGRR), and the system's colour for
// normal text.
constexpr long vbRed = 255;
constexpr long vbGreen = 32768; // &H8000&: the dark green of the letterheads
constexpr long vbBlack = 0;
constexpr long vbWindowText = -2147483640; // &H80000008
// Orientation.
constexpr int vbPRORPortrait = 1;
constexpr int vbPRORLandscape = 2;
// ColorMode.
constexpr int vbPRCMMonochrome = 1;
constexpr int vbPRCMColor = 2;

// Which printer a document goes to.
struct PrintDestination {
    enum class Kind { None, Printer, File };
    Kind kind = Kind::None;
    QString printer; // the queue's name (Kind::Printer)
    QString file;    // the PDF file (Kind::File)
    QString name() const;
};

// The page of a printer, in twips: the whole sheet and the part the printer can
// print on, relative to the sheet's corner. Positions on the page are counted
// from the printable area's corner, as the printer counts them.
struct PageGeometry {
    QSizeF sheet;
    QRectF printable;
};

// The paper a document is laid out on: the office sheet (A4), or the roll of a
// narrow receipt printer, 80 mm wide, on which 40 characters of "Courier New" 8
// fit. A real printer prints on the paper it has and reports its own page; the
// PDF files and the recording printer take the paper the document asks for.
enum class Paper { Sheet, Receipt };

// The units of a printed page and its papers, stated once. A point is 20
// twips, an inch 1440.
constexpr double kTwipsPerInch = 1440;
constexpr double kTwipsPerPoint = 20;
constexpr double kTwipsPerMm = kTwipsPerInch / 25.4;
// The A4 sheet and the receipt roll, in millimetres, and the border of a
// quarter of a sixth of an inch (12 points, 4.23 mm) most office printers
// cannot print on, given to the PDF pages and to the recording printer's pages
// so that a file looks as the paper would.
constexpr double kA4AnchoMm = 210;
constexpr double kA4AltoMm = 297;
constexpr double kRolloAnchoMm = 80;
constexpr double kRolloAltoMm = 297;
constexpr double kBordePuntos = 12;

// The A4 sheet upright with that border, in twips.
PageGeometry SheetGeometry();
// The receipt roll of PDF files and of the recording printer: 80 mm wide, cut
// every 297 mm, with the same 12-point border as the sheets (a printable width
// of 71.5 mm; 40 characters of "Courier New" 8 take 67.7 mm).
PageGeometry ReceiptGeometry();

// The font and colour a piece of text is drawn in.
struct PrintFont {
    QString name;
    double size = 0;
    bool bold = false;
    bool italic = false;
    bool operator==(const PrintFont&) const = default;
};

// What a job is started with.
struct JobSettings {
    QString name; // App.Title at the start of the document
    int copies = 1;
    int orientation = vbPRORPortrait;
    int colorMode = vbPRCMColor;
    bool trackDefault = true;
    Paper paper = Paper::Sheet;
};

// One open document on a device. Positions are twips from the printable corner.
class PrinterBackend {
public:
    virtual ~PrinterBackend() = default;
    // Draws a text whose line box has its top left corner at (x, y).
    virtual void text(double x, double y, const QString& text, const PrintFont& font, long color) = 0;
    // Records a line feed that draws nothing (an empty Print). Devices ignore it.
    virtual void feed(double /*x*/, double /*y*/, const PrintFont& /*font*/, long /*color*/) {}
    virtual void line(double x1, double y1, double x2, double y2, long color) = 0;
    // automatic: the page was full, not asked for by NewPage.
    virtual void newPage(bool automatic) = 0;
    virtual void endDoc() = 0;
    // The document is given up unsent (KillDoc, or an error that ends the program).
    virtual void abort() {}
};

// Where documents go: the system's printers, or a recording.
class PrintEnvironment {
public:
    virtual ~PrintEnvironment() = default;
    // The printer the runtime's Printer stands for before any dialog chose one.
    virtual PrintDestination defaultDestination() = 0;
    virtual PageGeometry geometry(const PrintDestination& destination, int orientation, Paper paper) = 0;
    // Opens a document; raises a runtime error when the device refuses it.
    virtual std::unique_ptr<PrinterBackend> open(const PrintDestination& destination, const JobSettings& job) = 0;
};

// The print environment is part of the runtime's environment (environment.h,
// its `printers`); this is the shorthand that sets it, and gives a fresh
// Printer. nullptr gives back the real one (CUPS printers, PDF files).
void SetPrintEnvironment(PrintEnvironment* environment);
PrintEnvironment& CurrentPrintEnvironment();
// The real one, whatever is installed (a test may wrap it).
PrintEnvironment& RealPrintEnvironment();

// The family a font name of the program is drawn with on this system: "Courier
// New" is drawn with Liberation Mono (same widths, fixed pitch), "Verdana" with
// DejaVu Sans. Other names are left to the font matching.
QString PrintFontFamily(const QString& name);
// Registers those replacements with the toolkit, once.
void InstallPrintFontSubstitutes();

// The face a print font is drawn and measured with, built once for each font:
// the family of PrintFontFamily at one pixel per twip (so that advances are in
// twips), unhinted, without kerning. A line box is the font's size high; the
// baseline divides it as the font's ascent and descent divide its own height.
struct PrintFace {
    QFont font;
    double baseline; // twips from the top of the line box
};
const PrintFace& FaceOf(const PrintFont& font);

class PrinterObject {
public:
    PrinterObject();
    ~PrinterObject();
    PrinterObject(const PrinterObject&) = delete;
    PrinterObject& operator=(const PrinterObject&) = delete;

    // Font.Name, Font.Size, Font.Bold are the same properties as FontName,
    // FontSize, FontBold.
    class FontProperty {
    public:
        explicit FontProperty(PrinterObject& p) : p_(p) {}
        QString Name() const { return p_.FontName(); }
        void SetName(const QString& name) { p_.SetFontName(name); }
        double Size() const { return p_.FontSize(); }
        void SetSize(double size) { p_.SetFontSize(size); }
        bool Bold() const { return p_.FontBold(); }
        void SetBold(bool bold) { p_.SetFontBold(bold); }

    private:
        PrinterObject& p_;
    };
    FontProperty Font() { return FontProperty(*this); }

    QString FontName() const { return font_.name; }
    void SetFontName(const QString& name);
    double FontSize() const { return font_.size; }
    void SetFontSize(double size);
    bool FontBold() const { return font_.bold; }
    void SetFontBold(bool bold);
    bool FontItalic() const { return font_.italic; }
    void SetFontItalic(bool italic);
    long ForeColor() const { return foreColor_; }
    void SetForeColor(long color);

    int ScaleMode() const { return scaleMode_; }
    void SetScaleMode(int mode);
    double ScaleWidth() const;
    void SetScaleWidth(double width);
    double ScaleHeight() const;
    void SetScaleHeight(double height);
    double CurrentX() const;
    void SetCurrentX(double x);
    double CurrentY() const;
    void SetCurrentY(double y);
    // The sheet's size in twips.
    double Width() const;
    double Height() const;
    // The height and width of a text in the font in force, in the scale's units.
    double TextHeight(const QString& text) const;
    double TextWidth(const QString& text) const;

    void Print();
    void Print(const QString& text);
    // A rule from (x1,y1) to (x2,y2) in a colour (the ForeColor when left out);
    // the current position becomes its end.
    void Line(double x1, double y1, double x2, double y2);
    void Line(double x1, double y1, double x2, double y2, long color);
    void NewPage();
    void EndDoc();
    void KillDoc();
    // The page being printed, from 1.
    int Page() const { return page_; }

    int Copies() const { return copies_; }
    void SetCopies(int copies);
    int Orientation() const { return orientation_; }
    void SetOrientation(int orientation);
    int ColorMode() const { return colorMode_; }
    void SetColorMode(int mode);
    bool TrackDefault() const { return trackDefault_; }
    void SetTrackDefault(bool on) { trackDefault_ = on; }
    QString DeviceName() const;
    // The paper of the next document (the sheet unless asked): a document that
    // asks for the receipt roll gets it until its EndDoc or KillDoc, after which
    // the Printer is back on the sheet.
    Paper PaperKind() const { return paper_; }
    void SetPaperKind(Paper paper);

    // The printer the next document goes to (what the print dialog chose). An
    // unset destination stands for the environment's default printer. A named
    // file holds for one document only: its EndDoc or KillDoc (or
    // ForgetChosenFile, for a job that opened none) forgets it, so the next
    // document without a dialog of its own (the ticket) goes to the default
    // printer, or to a new file, and never over the file of another job.
    void SetDestination(const PrintDestination& destination);
    void ForgetChosenFile();
    PrintDestination Destination() const;
    bool DocumentOpen() const { return backend_ != nullptr; }
    // The environment the open document went to (nullptr with none open).
    const PrintEnvironment* DocumentEnvironment() const { return openedBy_; }

    // Back to a fresh Printer: no document, default font, twips, page 1, the
    // default printer. The runtime does it when the environment changes.
    void Reset();

private:
    PageGeometry geometry() const;
    double unitX() const; // twips per unit of the scale
    double unitY() const;
    double lineHeight() const; // twips
    PrinterBackend& document();
    void closeDocument();

    PrintFont font_;
    long foreColor_ = vbBlack;
    int scaleMode_ = 1;
    double userUnitX_ = 1, userUnitY_ = 1; // twips per unit for ScaleMode 0
    double x_ = 0, y_ = 0;                  // twips from the printable corner
    int page_ = 1;
    int copies_ = 1;
    int orientation_ = vbPRORPortrait;
    int colorMode_ = vbPRCMColor;
    bool trackDefault_ = true;
    Paper paper_ = Paper::Sheet;
    bool destinationSet_ = false;
    PrintDestination destination_;
    std::unique_ptr<PrinterBackend> backend_;
    const PrintEnvironment* openedBy_ = nullptr;
    PageGeometry openGeometry_;
};

// The Printer of the program.
PrinterObject& Printer();

} // namespace vb
