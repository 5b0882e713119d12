// The Printer object on the recording printer: where each Print lands, what a
// font, a colour, a rule or a page break records, and the scale modes the
// layouts count in.
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"
#include "runtime/printer.h"
#include <gtest/gtest.h>

namespace {

class PrinterTest : public ::testing::Test {
protected:
    vb::PrintRecorder recorder;
    vb::InstalledEnvironment env{{.printers = &recorder}};
    vb::PrinterObject& printer = vb::Printer();
    const vb::PrintJobRecord& job() const { return recorder.last(); }
};

// A4 less the printer's border of 240 twips on every side.
constexpr double kPrintableWidth = 210 * 1440 / 25.4 - 480;
constexpr double kPrintableHeight = 297 * 1440 / 25.4 - 480;

TEST_F(PrinterTest, PrintMovesToTheStartOfTheNextLineByTheFontSize) {
    printer.SetFontName("Courier New");
    printer.SetFontSize(12);
    printer.SetCurrentX(600);
    printer.Print("CABECERA");
    EXPECT_DOUBLE_EQ(printer.CurrentX(), 0);
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 240);
    printer.SetFontSize(8);
    printer.Print("pie");
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 400);
    const auto prints = job().prints();
    ASSERT_EQ(prints.size(), 2u);
    EXPECT_EQ(prints[0].x, 600);
    EXPECT_EQ(prints[0].y, 0);
    EXPECT_EQ(prints[1].x, 0);
    EXPECT_EQ(prints[1].y, 240);
}

TEST_F(PrinterTest, AnEmptyPrintOnlyFeedsALineInTheFontInForce) {
    printer.SetFontName("Courier New");
    printer.SetFontSize(6);
    printer.Print();
    printer.Print("");
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 240);
    EXPECT_EQ(job().lines(), QStringList({"", ""}));
    EXPECT_EQ(job().prints()[1].font.size, 6);
}

TEST_F(PrinterTest, EachTextKeepsItsOwnFontBoldAndColour) {
    printer.Font().SetName("Verdana");
    printer.Font().SetSize(12);
    printer.SetForeColor(vb::vbRed);
    printer.Print("SUMINISTROS INDUSTRIALES");
    printer.SetFontName("Courier New");
    printer.SetFontSize(10);
    printer.SetFontBold(true);
    printer.SetForeColor(vb::vbWindowText);
    printer.Print("EXTRACTO");
    const auto prints = job().prints();
    EXPECT_EQ(prints[0].font, (vb::PrintFont{"Verdana", 12, false, false}));
    EXPECT_EQ(prints[0].color, 255);
    EXPECT_EQ(prints[1].font, (vb::PrintFont{"Courier New", 10, true, false}));
    EXPECT_EQ(prints[1].color, vb::vbWindowText);
    EXPECT_EQ(printer.Font().Name(), "Courier New");
}

TEST_F(PrinterTest, ScaleModeFourCountsCellsOf120By240Twips) {
    printer.SetScaleMode(4);
    EXPECT_NEAR(printer.ScaleWidth(), kPrintableWidth / 120, 1e-9);
    EXPECT_NEAR(printer.ScaleHeight(), kPrintableHeight / 240, 1e-9);
    printer.SetFontName("Courier New");
    printer.SetFontSize(12);
    printer.Print("una");
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 1); // a twelve-point line is one cell high
    printer.SetCurrentX(10);
    printer.Print("dos");
    EXPECT_EQ(job().prints()[1].x, 1200);
    EXPECT_EQ(job().prints()[1].y, 240);
}

TEST_F(PrinterTest, ScaleModeSixCountsMillimetres) {
    printer.SetScaleMode(6);
    EXPECT_NEAR(printer.ScaleWidth(), kPrintableWidth / 1440 * 25.4, 1e-9);
    printer.SetCurrentX(25.4);
    printer.SetCurrentY(10);
    printer.Print("RECIBO");
    EXPECT_NEAR(job().prints()[0].x, 1440, 1e-9);
    EXPECT_NEAR(job().prints()[0].y, 566.93, 0.01);
}

// The invoice's receipt sets 210 by 297 after ScaleMode 6: the printable area
// is then that many units wide and high.
TEST_F(PrinterTest, SettingScaleWidthAndHeightMakesTheScaleTheUsersOwn) {
    printer.SetScaleMode(6);
    printer.SetScaleWidth(210);
    printer.SetScaleHeight(297);
    EXPECT_EQ(printer.ScaleMode(), 0);
    EXPECT_DOUBLE_EQ(printer.ScaleWidth(), 210);
    EXPECT_DOUBLE_EQ(printer.ScaleHeight(), 297);
    printer.Line(32, 7, 184, 7);
    const auto& e = job().events.at(0);
    EXPECT_EQ(e.kind, vb::PrintEvent::Kind::Line);
    EXPECT_NEAR(e.x, 32 * kPrintableWidth / 210, 1e-6);
    EXPECT_NEAR(e.y, 7 * kPrintableHeight / 297, 1e-6);
    EXPECT_NEAR(e.x2, 184 * kPrintableWidth / 210, 1e-6);
}

TEST_F(PrinterTest, ALineRecordsItsEndsAndColourAndEndsWhereItEnds) {
    printer.SetScaleMode(4);
    printer.SetCurrentY(3);
    const double y = printer.CurrentY();
    printer.Line(1, y, printer.ScaleWidth() - 2, y, 0);
    EXPECT_DOUBLE_EQ(printer.CurrentX(), printer.ScaleWidth() - 2);
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 3);
    printer.SetForeColor(vb::vbGreen);
    printer.Line(0, 4, 5, 4);
    const auto& events = job().events;
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].x, 120);
    EXPECT_EQ(events[0].y, 720);
    EXPECT_EQ(events[0].color, 0);
    EXPECT_EQ(events[1].color, vb::vbGreen);
}

TEST_F(PrinterTest, NewPageStartsAPageAtTheTopAndEndDocSendsTheJob) {
    printer.Print("primera");
    EXPECT_EQ(printer.Page(), 1);
    printer.NewPage();
    EXPECT_EQ(printer.Page(), 2);
    EXPECT_DOUBLE_EQ(printer.CurrentY(), 0);
    printer.Print("segunda");
    EXPECT_FALSE(job().ended);
    printer.EndDoc();
    EXPECT_TRUE(job().ended);
    EXPECT_EQ(job().pages(), 2);
    EXPECT_EQ(job().linesOfPage(2), QStringList({"segunda"}));
    EXPECT_EQ(printer.Page(), 1);
    EXPECT_FALSE(printer.DocumentOpen());
}

TEST_F(PrinterTest, ALineThatDoesNotFitStartsANewPageByItself) {
    printer.SetFontName("Courier New");
    printer.SetFontSize(12);
    const int perPage = int(kPrintableHeight / 240); // 68 lines of twelve points
    for (int i = 1; i <= perPage + 1; ++i) printer.Print(QString::number(i));
    const auto prints = job().prints();
    EXPECT_EQ(prints[size_t(perPage - 1)].page, 1);
    EXPECT_EQ(prints[size_t(perPage)].page, 2);
    EXPECT_EQ(prints[size_t(perPage)].y, 0);
    EXPECT_EQ(printer.Page(), 2);
    EXPECT_TRUE(job().transcript().contains("page 2 auto\n"));
}

TEST_F(PrinterTest, TheJobIsNamedByTheApplicationTitleWhenTheDocumentOpens) {
    vb::SetAppTitle("00027 20261121 - 430001");
    printer.SetCopies(2);
    printer.SetOrientation(vb::vbPRORPortrait);
    printer.Print("x");
    vb::SetAppTitle("Velmarinda");
    printer.EndDoc();
    EXPECT_EQ(job().settings.name, "00027 20261121 - 430001");
    EXPECT_EQ(job().settings.copies, 2);
    EXPECT_EQ(job().destination.name(), "Grabadora");
}

TEST_F(PrinterTest, LandscapeTurnsThePage) {
    printer.SetOrientation(vb::vbPRORLandscape);
    EXPECT_NEAR(printer.Width(), 16837.8, 0.1);
    EXPECT_NEAR(printer.Height(), 11905.5, 0.1);
    EXPECT_NEAR(printer.ScaleWidth(), kPrintableHeight, 0.1);
}

// A ticket asks for the receipt roll: 80 mm wide with the same border, for
// that one document; the Printer is back on the sheet after its EndDoc.
TEST_F(PrinterTest, TheReceiptRollHoldsForOneDocument) {
    constexpr double kRollo = 80 * 1440 / 25.4;
    printer.SetPaperKind(vb::Paper::Receipt);
    EXPECT_NEAR(printer.Width(), kRollo, 0.01);
    EXPECT_NEAR(printer.ScaleWidth(), kRollo - 480, 0.01);
    printer.Print("  Nº: 1 /TI/000001");
    // The paper can't change under an open document.
    printer.SetPaperKind(vb::Paper::Sheet);
    EXPECT_EQ(printer.PaperKind(), vb::Paper::Receipt);
    printer.EndDoc();
    EXPECT_EQ(job().settings.paper, vb::Paper::Receipt);
    EXPECT_TRUE(job().transcript().section('\n', 0, 0).endsWith(" trackdefault True paper receipt"))
        << job().transcript().toStdString();
    EXPECT_EQ(printer.PaperKind(), vb::Paper::Sheet);
    EXPECT_NEAR(printer.ScaleWidth(), kPrintableWidth, 0.01);
    printer.Print("ALBARAN");
    printer.EndDoc();
    EXPECT_EQ(recorder.jobs.size(), 2u);
    EXPECT_EQ(job().settings.paper, vb::Paper::Sheet);
    EXPECT_FALSE(job().transcript().contains("paper"));
}

// A page of the roll is cut after 297 mm, as a sheet is.
TEST_F(PrinterTest, ALongTicketRunsOnToTheNextPieceOfTheRoll) {
    printer.SetPaperKind(vb::Paper::Receipt);
    printer.SetFontName("Courier New");
    printer.SetFontSize(8);
    const int porPagina = int((297 * 1440 / 25.4 - 480) / 160);
    for (int i = 0; i <= porPagina; ++i) printer.Print("linea");
    printer.EndDoc();
    EXPECT_EQ(job().pages(), 2);
    EXPECT_EQ(job().linesOfPage(2).size(), 1);
}

TEST_F(PrinterTest, WithNoPrinterAtAllTheFirstOutputFails) {
    recorder.noPrinter = true;
    try {
        printer.Print("x");
        FAIL() << "printed with no printer";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 484);
    }
    EXPECT_TRUE(recorder.jobs.empty());
}

TEST_F(PrinterTest, TextHeightFollowsTheFontSizeAndTextWidthTheFont) {
    printer.SetFontName("Courier New");
    printer.SetFontSize(12);
    EXPECT_DOUBLE_EQ(printer.TextHeight("Hoja"), 240);
    EXPECT_DOUBLE_EQ(printer.TextHeight("a\r\nb"), 480);
    // Courier New is 0.6 of its size wide: 7.2 points, 144 twips a character.
    EXPECT_NEAR(printer.TextWidth("ABCDEFGHIJ"), 1440, 1);
    printer.SetScaleMode(4);
    EXPECT_DOUBLE_EQ(printer.TextHeight("Hoja"), 1);
    EXPECT_NEAR(printer.TextWidth("ABCDEFGHIJ"), 12, 0.01);
}

TEST_F(PrinterTest, AWrongPropertyValueIsTheRuntimesError380) {
    for (auto bad : std::initializer_list<std::function<void()>>{
             [&] { printer.SetOrientation(3); }, [&] { printer.SetScaleMode(8); }, [&] { printer.SetCopies(0); },
             [&] { printer.SetFontSize(0); }}) {
        try {
            bad();
            ADD_FAILURE() << "accepted";
        } catch (const vb::RuntimeError& e) {
            EXPECT_EQ(e.Number, 380);
        }
    }
}

TEST_F(PrinterTest, TheTranscriptWritesEveryOperationInOrder) {
    printer.SetScaleMode(4);
    printer.SetFontName("Verdana");
    printer.SetFontSize(12);
    printer.SetForeColor(vb::vbRed);
    printer.Print("SUMINISTROS \"INDUSTRIALES\"");
    printer.SetForeColor(vb::vbWindowText);
    printer.SetFontBold(true);
    printer.Print();
    printer.Line(1, 2, 10, 2, 0);
    printer.NewPage();
    printer.EndDoc();
    EXPECT_EQ(recorder.transcript(),
              "job \"Velmarinda\" printer \"Grabadora\" copies 1 orientation 1 colormode 2 trackdefault True\n"
              "page 1\n"
              "  print x=0 y=0 \"Verdana\" 12 color=255 \"SUMINISTROS \\\"INDUSTRIALES\\\"\"\n"
              "  print x=0 y=240 \"Verdana\" 12 bold color=windowtext \"\"\n"
              "  line (120,480)-(1200,480) color=0\n"
              "page 2\n"
              "enddoc\n");
}

TEST_F(PrinterTest, ChangingTheEnvironmentGivesAFreshPrinter) {
    printer.SetScaleMode(6);
    printer.SetFontSize(20);
    printer.Print("a medias");
    vb::PrintRecorder other;
    vb::SetPrintEnvironment(&other);
    EXPECT_EQ(printer.ScaleMode(), 1);
    EXPECT_EQ(printer.FontName(), "Courier New");
    EXPECT_EQ(printer.FontSize(), 10);
    EXPECT_FALSE(printer.DocumentOpen());
    EXPECT_TRUE(recorder.last().aborted);
    vb::SetPrintEnvironment(&recorder);
}

} // namespace
