// The steps of a print button: the print dialog, then the window's procedures
// on the Printer, each followed by a yield, then the document sent.
#include "support/message_boxes.h"
#include "support/print_to.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include "printing/print_job.h"
#include "printing/membrete_ini.h"
#include "runtime/print_transcript.h"
#include "runtime/vb.h"
#include <QTimer>
#include <deque>
#include <gtest/gtest.h>

namespace {

// Any message box counts: a print job says nothing.
// The print dialog's answers, and what it was shown with.
struct PrintAnswers : vb::DialogService {
    std::deque<std::optional<vb::PrinterChoice>> answers;
    std::vector<vb::PrinterRequest> shown;
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest& r) override {
        shown.push_back(r);
        auto a = answers.front();
        answers.pop_front();
        return a;
    }
};

vb::PrinterChoice mostrador(int copies = 1, int orientation = vb::cdlPortrait) {
    return {.printerName = "Mostrador", .outputFile = {}, .copies = copies, .orientation = orientation};
}

class PrintJobTest : public ::testing::Test {
protected:
    vb::PrintRecorder recorder;
    veltest::RecordedBoxes boxes;
    PrintAnswers dialogs;
    vb::InstalledEnvironment env{{.messageBoxes = &boxes, .dialogs = &dialogs, .printers = &recorder}};
    vb::CommonDialog CommonDialog1;
    QWidget Calendario;

    void SetUp() override { vb::SetVisible(&Calendario, true); }
    void TearDown() override { vb::SetAppTitle("Velmarinda"); }

    bool run(std::vector<std::function<void()>> procedures, std::optional<QString> title = std::nullopt) {
        return vb::RunPrintJob(
            {.dialog = &CommonDialog1, .calendar = &Calendario, .title = title, .procedures = std::move(procedures)});
    }
    static std::function<void()> prints(const QString& text) {
        return [text] { vb::Printer().Print(text); };
    }
};

TEST_F(PrintJobTest, TheProceduresPrintInTurnInCharacterCellsAndTheJobIsSent) {
    dialogs.answers.push_back(mostrador());
    int scaleModeSeen = -1;
    EXPECT_TRUE(run({[&] { scaleModeSeen = vb::Printer().ScaleMode(); }, prints("cabecera"), prints("detalle"),
                     prints("pie")}));
    EXPECT_EQ(scaleModeSeen, 4);
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(recorder.last().lines(), QStringList({"cabecera", "detalle", "pie"}));
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(recorder.last().destination.printer, "Mostrador");
    EXPECT_FALSE(vb::Visible(&Calendario));
    EXPECT_TRUE(CommonDialog1.CancelError);
    EXPECT_TRUE(boxes.shown.isEmpty());
}

TEST_F(PrintJobTest, TheDialogIsPresetWithThePrintersCopiesAndOrientationAndWhatItSetsApplies) {
    vb::Printer().SetColorMode(vb::vbPRCMMonochrome);
    vb::Printer().SetTrackDefault(false);
    vb::Printer().SetCopies(3);
    dialogs.answers.push_back(mostrador(2, vb::cdlLandscape));
    run({prints("x")});
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].copies, 3);
    EXPECT_EQ(dialogs.shown[0].orientation, vb::cdlPortrait);
    const vb::JobSettings& s = recorder.last().settings;
    EXPECT_EQ(s.colorMode, vb::vbPRCMColor);
    EXPECT_TRUE(s.trackDefault);
    EXPECT_EQ(s.copies, 2);
    EXPECT_EQ(s.orientation, vb::vbPRORLandscape);
}

TEST_F(PrintJobTest, PrintingToAFileSendsTheJobToThatFile) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = {}, .outputFile = "/tmp/albaran.pdf"});
    run({prints("x")});
    EXPECT_EQ(recorder.last().destination.kind, vb::PrintDestination::Kind::File);
    EXPECT_EQ(recorder.last().destination.file, "/tmp/albaran.pdf");
}

// The file of one job's dialog is that job's alone: the next document with no
// dialog of its own (the point of sale's ticket) goes to the default printer.
TEST_F(PrintJobTest, TheFileChosenInADialogIsForgottenWhenItsJobEnds) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = {}, .outputFile = "/tmp/albaran.pdf"});
    run({prints("albaran")});
    vb::Printer().Print("ticket");
    vb::Printer().EndDoc();
    ASSERT_EQ(recorder.jobs.size(), 2u);
    EXPECT_EQ(recorder.jobs[0].destination.file, "/tmp/albaran.pdf");
    EXPECT_EQ(recorder.jobs[1].destination.kind, recorder.defaultDestination().kind);
    EXPECT_EQ(recorder.jobs[1].destination.name(), recorder.defaultDestination().name());
    EXPECT_NE(recorder.jobs[1].destination.file, "/tmp/albaran.pdf");
}

// A job whose procedures printed nothing opened no document on the file; the
// file is forgotten all the same.
TEST_F(PrintJobTest, AFileChosenForAJobThatPrintedNothingIsForgottenToo) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = {}, .outputFile = "/tmp/albaran.pdf"});
    run({[] {}});
    EXPECT_TRUE(recorder.jobs.empty());
    vb::Printer().Print("ticket");
    vb::Printer().EndDoc();
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_NE(recorder.jobs[0].destination.file, "/tmp/albaran.pdf");
}

// A printer chosen in the dialog stays the Printer's (the Printer follows the
// chosen printer), only a file is one job's.
TEST_F(PrintJobTest, APrinterChosenInADialogStaysForTheNextDocument) {
    dialogs.answers.push_back(mostrador());
    run({prints("albaran")});
    vb::Printer().Print("ticket");
    vb::Printer().EndDoc();
    ASSERT_EQ(recorder.jobs.size(), 2u);
    EXPECT_EQ(recorder.jobs[1].destination.printer, "Mostrador");
}

// A bad membrete.ini is not passed over as a printer's fault is: the document
// is given up, no later procedure runs, and the error goes on to the window's
// event (whose runtime message names the fault).
TEST_F(PrintJobTest, ABadMembreteGivesUpTheDocumentAndGoesOn) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = {}, .outputFile = "/tmp/factura.pdf"});
    bool pie = false;
    try {
        run({prints("primera"), [] { (void)vel::letterheads::LeeMembrete("fax=1"); }, [&] { pie = true; }});
        FAIL() << "the error was passed over";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 5);
        EXPECT_TRUE(e.Description.contains("membrete.ini"));
    }
    EXPECT_FALSE(pie);
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_FALSE(recorder.last().ended);
    EXPECT_TRUE(recorder.last().aborted);
    EXPECT_FALSE(vb::Printer().DocumentOpen());
    EXPECT_NE(vb::Printer().Destination().file, "/tmp/factura.pdf");
    EXPECT_FALSE(vb::Visible(&Calendario));
}

TEST_F(PrintJobTest, ACancelledDialogPrintsNothingAndSaysNothing) {
    dialogs.answers.push_back(std::nullopt);
    bool ran = false;
    EXPECT_FALSE(run({[&] { ran = true; }, prints("cabecera")}));
    EXPECT_EQ(dialogs.shown.size(), 1u);
    EXPECT_FALSE(ran);
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(vb::Err().Number, 0);
}

// A dialog that names neither a printer nor a file: the system has none.
TEST_F(PrintJobTest, WithNoPrinterAtAllNothingIsPrintedAndNothingSaid) {
    recorder.noPrinter = true;
    dialogs.answers.push_back(vb::PrinterChoice{});
    EXPECT_FALSE(run({prints("cabecera")}));
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(vb::Err().Number, 0);
    try {
        vb::UsePrinterChoice(vb::PrinterChoice{});
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, vb::cdlNoDefaultPrn);
    }
}

// A printer fault leaves what was sent: the failing procedure stops where it
// failed, the next ones run, the document is sent and no error remains.
TEST_F(PrintJobTest, AnErrorInAProcedureIsPassedOver) {
    dialogs.answers.push_back(mostrador());
    EXPECT_TRUE(run({prints("cabecera"),
                     [] {
                         vb::Printer().Print("primera linea");
                         vb::Space(-1);
                         vb::Printer().Print("nunca");
                     },
                     prints("pie")}));
    EXPECT_EQ(recorder.last().lines(), QStringList({"cabecera", "primera linea", "pie"}));
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(vb::Err().Number, 0);
    EXPECT_TRUE(boxes.shown.isEmpty());
}

TEST_F(PrintJobTest, ATitleNamesTheJobAndIsPutBackAfterwards) {
    dialogs.answers.push_back(mostrador());
    QString titleDuring;
    run({[&] { titleDuring = vb::AppTitle(); }, prints("x")}, QString("00027 20261121 - 430001"));
    EXPECT_EQ(titleDuring, "00027 20261121 - 430001");
    EXPECT_EQ(recorder.last().settings.name, "00027 20261121 - 430001");
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_F(PrintJobTest, TheTitleIsPutBackWhenTheDialogIsCancelled) {
    dialogs.answers.push_back(std::nullopt);
    run({prints("x")}, QString("00027 20261121 - 430001"));
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_F(PrintJobTest, WithoutATitleTheJobIsNamedAfterTheProgram) {
    dialogs.answers.push_back(mostrador());
    run({prints("x")});
    EXPECT_EQ(recorder.last().settings.name, "Velmarinda");
}

// The yield after each procedure lets the screen repaint: what is queued runs
// before the next procedure.
TEST_F(PrintJobTest, EachProcedureIsFollowedByAYieldToTheEventQueue) {
    dialogs.answers.push_back(mostrador());
    bool queuedRan = false, seenInSecond = false;
    run({[&] { QTimer::singleShot(0, [&] { queuedRan = true; }); }, [&] { seenInSecond = queuedRan; }});
    EXPECT_TRUE(seenInSecond);
}

TEST_F(PrintJobTest, APrintButtonWithoutItsDialogIsAnError) {
    try {
        vb::RunPrintJob({.procedures = {prints("x")}});
        FAIL() << "ran without a dialog";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 91);
    }
    EXPECT_TRUE(recorder.jobs.empty());
}

// Installing an environment is a fresh run: a document left open is given up.
TEST_F(PrintJobTest, ANewEnvironmentStartsWithAFreshPrinter) {
    vb::Printer().Print("a medias");
    vb::Printer().SetScaleMode(6);
    {
        vb::PrintRecorder other;
        vb::InstalledEnvironment fresh{{.printers = &other}};
        EXPECT_TRUE(recorder.last().aborted);
        EXPECT_EQ(vb::Printer().ScaleMode(), 1);
        vb::Printer().Print("otra");
    }
    EXPECT_FALSE(vb::Printer().DocumentOpen());
}

} // namespace
