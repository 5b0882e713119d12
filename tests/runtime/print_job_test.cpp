// The steps of a print button: the dialog, then the window's procedures on the
// Printer, each followed by a yield, then the document sent.
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include "runtime/print_job.h"
#include "runtime/print_transcript.h"
#include "runtime/vb.h"
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Any message box is a failure: a print job says nothing.
struct NoBoxes : vb::MessageBoxService {
    int shown = 0;
    int show(const QString&, const QString&, int) override {
        ++shown;
        return vb::vbOK;
    }
    void about(const QString&, const QString&) override { ++shown; }
};

class PrintJobTest : public ::testing::Test {
protected:
    vb::PrintRecorder recorder;
    NoBoxes boxes;
    QWidget calendario;
    // What the dialog was shown with, and what it answers.
    int presetCopies = -1, presetOrientation = -1, dialogsShown = 0;
    vb::PrinterChoice answer;

    void SetUp() override {
        vb::SetPrintEnvironment(&recorder);
        vb::SetMessageBoxService(&boxes);
        vb::SetPrintDialog([this](int copies, int orientation) {
            ++dialogsShown;
            presetCopies = copies;
            presetOrientation = orientation;
            return answer;
        });
        answer.outcome = vb::PrinterChoice::Outcome::Chosen;
        answer.destination = {vb::PrintDestination::Kind::Printer, "Mostrador", {}};
        calendario.setObjectName("Calendario");
        vb::SetVisible(&calendario, true);
    }
    void TearDown() override {
        vb::SetPrintDialog(nullptr);
        vb::SetMessageBoxService(nullptr);
        vb::SetPrintEnvironment(nullptr);
        vb::SetAppTitle("Velmarinda");
    }
    bool run(std::vector<std::function<void()>> procedures, std::optional<QString> title = std::nullopt) {
        return vb::RunPrintJob({.calendar = &calendario, .title = title, .procedures = std::move(procedures)});
    }
    static std::function<void()> prints(const QString& text) {
        return [text] { vb::Printer().Print(text); };
    }
};

TEST_F(PrintJobTest, TheProceduresPrintInTurnInCharacterCellsAndTheJobIsSent) {
    double scaleModeSeen = -1;
    EXPECT_TRUE(run({[&] { scaleModeSeen = vb::Printer().ScaleMode(); }, prints("cabecera"), prints("detalle"),
                     prints("pie")}));
    EXPECT_EQ(scaleModeSeen, 4);
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(recorder.last().lines(), QStringList({"cabecera", "detalle", "pie"}));
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(recorder.last().destination.printer, "Mostrador");
    EXPECT_FALSE(vb::Visible(&calendario));
    EXPECT_EQ(boxes.shown, 0);
}

TEST_F(PrintJobTest, TheJobCarriesTheTwoFixedSettingsAndWhatTheDialogSet) {
    vb::Printer().SetColorMode(vb::vbPRCMMonochrome);
    vb::Printer().SetTrackDefault(false);
    vb::Printer().SetCopies(3);
    answer.copies = 2;
    answer.orientation = vb::vbPRORLandscape;
    run({prints("x")});
    EXPECT_EQ(presetCopies, 3);
    EXPECT_EQ(presetOrientation, vb::vbPRORPortrait);
    const vb::JobSettings& s = recorder.last().settings;
    EXPECT_EQ(s.colorMode, vb::vbPRCMColor);
    EXPECT_TRUE(s.trackDefault);
    EXPECT_EQ(s.copies, 2);
    EXPECT_EQ(s.orientation, vb::vbPRORLandscape);
}

TEST_F(PrintJobTest, ACancelledDialogPrintsNothingAndSaysNothing) {
    answer.outcome = vb::PrinterChoice::Outcome::Cancelled;
    bool ran = false;
    EXPECT_FALSE(run({[&] { ran = true; }, prints("cabecera")}));
    EXPECT_EQ(dialogsShown, 1);
    EXPECT_FALSE(ran);
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_EQ(boxes.shown, 0);
    EXPECT_EQ(vb::Err().Number, 0);
}

TEST_F(PrintJobTest, WithNoPrinterAtAllNothingIsPrintedAndNothingSaid) {
    recorder.noPrinter = true;
    answer.outcome = vb::PrinterChoice::Outcome::NoPrinter;
    answer.destination = {};
    EXPECT_FALSE(run({prints("cabecera")}));
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_EQ(boxes.shown, 0);
    EXPECT_EQ(vb::Err().Number, 0);
}

// A printer fault leaves what was sent: the failing procedure stops where it
// failed, the next ones run, the document is sent and no error remains.
TEST_F(PrintJobTest, AnErrorInAProcedureIsPassedOver) {
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
    EXPECT_EQ(boxes.shown, 0);
}

TEST_F(PrintJobTest, ATitleNamesTheJobAndIsPutBackAfterwards) {
    vb::SetAppTitle("Velmarinda");
    QString titleDuring;
    run({[&] { titleDuring = vb::AppTitle(); }, prints("x")}, QString("00027 20261121 - 430001"));
    EXPECT_EQ(titleDuring, "00027 20261121 - 430001");
    EXPECT_EQ(recorder.last().settings.name, "00027 20261121 - 430001");
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_F(PrintJobTest, TheTitleIsPutBackWhenTheDialogIsCancelled) {
    answer.outcome = vb::PrinterChoice::Outcome::Cancelled;
    run({prints("x")}, QString("00027 20261121 - 430001"));
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_F(PrintJobTest, WithoutATitleTheJobIsNamedAfterTheProgram) {
    run({prints("x")});
    EXPECT_EQ(recorder.last().settings.name, "Velmarinda");
}

// The yield after each procedure lets the screen repaint: what is queued runs
// before the next procedure.
TEST_F(PrintJobTest, EachProcedureIsFollowedByAYieldToTheEventQueue) {
    bool queuedRan = false, seenInSecond = false;
    run({[&] { QTimer::singleShot(0, [&] { queuedRan = true; }); },
         [&] { seenInSecond = queuedRan; }});
    EXPECT_TRUE(seenInSecond);
}

} // namespace
