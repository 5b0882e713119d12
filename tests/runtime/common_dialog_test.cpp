// The common dialog: the open dialog of the import and the print dialog of
// every print button. Tests answer through the environment's DialogService;
// the real program shows Qt's dialogs, which are looked at here too.
#include "support/print_to.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>
#include <deque>
#include <gtest/gtest.h>

namespace {

const QString kFiltroExcel = "Archivos de Excel(*.xls,*.xlsx)|*.xls;*.xlsx|Todos los archivos(*.*)|*.*";

class Answers : public vb::DialogService {
public:
    std::deque<std::optional<QString>> files;
    std::deque<std::optional<vb::PrinterChoice>> printers;
    std::vector<vb::OpenRequest> opened;
    std::vector<vb::PrinterRequest> printed;
    std::optional<QString> open(const vb::OpenRequest& r) override {
        opened.push_back(r);
        auto a = files.front();
        files.pop_front();
        return a;
    }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest& r) override {
        printed.push_back(r);
        auto a = printers.front();
        printers.pop_front();
        return a;
    }
};

class CommonDialogTest : public ::testing::Test {
protected:
    Answers answers;
    vb::InstalledEnvironment env{{.dialogs = &answers}};
    vb::CommonDialog CommonDialog1;

    void prepareImport() {
        CommonDialog1.InitDir = "/tmp/tienda/importacion";
        CommonDialog1.Filter = kFiltroExcel;
        CommonDialog1.FileName = "";
        CommonDialog1.DialogTitle = "Seleccionar Hoja Excel";
    }
    static int cancelErrorOf(const std::function<void()>& f) {
        try {
            f();
        } catch (const vb::RuntimeError& e) {
            EXPECT_EQ(e.Description, "Se ha seleccionado Cancelar.");
            return e.Number;
        }
        return 0;
    }
};

TEST_F(CommonDialogTest, ShowOpenAsksWithTheWindowsSettingsAndGivesTheChosenPath) {
    prepareImport();
    answers.files.push_back("/tmp/tienda/importacion/lineas.xlsx");
    CommonDialog1.ShowOpen();
    ASSERT_EQ(answers.opened.size(), 1u);
    EXPECT_EQ(answers.opened[0].title, "Seleccionar Hoja Excel");
    EXPECT_EQ(answers.opened[0].initDir, "/tmp/tienda/importacion");
    EXPECT_EQ(answers.opened[0].filter, kFiltroExcel);
    EXPECT_EQ(CommonDialog1.FileName, "/tmp/tienda/importacion/lineas.xlsx");
}

TEST_F(CommonDialogTest, ACancelledOpenLeavesTheFileNameEmpty) {
    prepareImport();
    answers.files.push_back(std::nullopt);
    EXPECT_EQ(cancelErrorOf([&] { CommonDialog1.ShowOpen(); }), 0);
    EXPECT_EQ(CommonDialog1.FileName, "");
}

TEST_F(CommonDialogTest, ACancelledOpenWithCancelErrorIsError32755) {
    prepareImport();
    CommonDialog1.CancelError = true;
    answers.files.push_back(std::nullopt);
    EXPECT_EQ(cancelErrorOf([&] { CommonDialog1.ShowOpen(); }), 32755);
}

TEST_F(CommonDialogTest, ShowPrinterPresetsCopiesAndOrientationAndHandsOnTheChoice) {
    CommonDialog1.CancelError = true;
    CommonDialog1.Copies = 1;
    CommonDialog1.Orientation = vb::cdlPortrait;
    answers.printers.push_back(vb::PrinterChoice{.printerName = "Oficina", .copies = 2, .orientation = vb::cdlLandscape});
    CommonDialog1.ShowPrinter();
    ASSERT_EQ(answers.printed.size(), 1u);
    EXPECT_EQ(answers.printed[0].copies, 1);
    EXPECT_EQ(answers.printed[0].orientation, vb::cdlPortrait);
    EXPECT_TRUE(CommonDialog1.HasPrinter());
    EXPECT_EQ(CommonDialog1.Printer().printerName, "Oficina");
    EXPECT_EQ(CommonDialog1.Copies, 2);
    EXPECT_EQ(CommonDialog1.Orientation, vb::cdlLandscape);
}

TEST_F(CommonDialogTest, ACancelledPrintDialogWithCancelErrorPrintsNothing) {
    CommonDialog1.CancelError = true;
    answers.printers.push_back(std::nullopt);
    EXPECT_EQ(cancelErrorOf([&] { CommonDialog1.ShowPrinter(); }), 32755);
    EXPECT_FALSE(CommonDialog1.HasPrinter());
    // Action 5 is the same call.
    answers.printers.push_back(std::nullopt);
    EXPECT_EQ(cancelErrorOf([&] { CommonDialog1.SetAction(5); }), 32755);
}

TEST(CommonDialogFilter, TheFilterBecomesQtNameFilters) {
    EXPECT_EQ(vb::QtNameFilters(kFiltroExcel),
              (QStringList{"Archivos de Excel(*.xls,*.xlsx) (*.xls *.xlsx)", "Todos los archivos(*.*) (*.*)"}));
    EXPECT_EQ(vb::QtNameFilters(""), QStringList{});
}

TEST(PrinterChoice, AFileChoiceMakesAPdfPrinter) {
    QPrinter printer;
    vb::PrinterChoice{.outputFile = "/tmp/impresion.pdf", .copies = 3, .orientation = vb::cdlLandscape}.applyTo(printer);
    EXPECT_EQ(printer.outputFormat(), QPrinter::PdfFormat);
    EXPECT_EQ(printer.outputFileName(), "/tmp/impresion.pdf");
    EXPECT_EQ(printer.copyCount(), 3);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
}

// ---- The real dialogs ---------------------------------------------------------

// While it lives, answers the dialog of type D that is open, every 20 ms
// until it closes: the file dialog lists its folder in the background, and a
// file it does not know yet is answered again once it does. The answer is
// queued: a timer does not fire again inside its own handler, so a box the
// dialog opens from a direct answer would never be seen.
template <class D>
class Answering {
public:
    explicit Answering(std::function<void(D*)> look) {
        QObject::connect(&timer_, &QTimer::timeout, [look] {
            if (auto* d = qobject_cast<D*>(QApplication::activeModalWidget()); d && d->isVisible()) look(d);
            // "File not found" while the folder is still being read.
            else if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->close();
        });
        timer_.start(20);
    }

private:
    QTimer timer_;
};

TEST(RealCommonDialog, TheOpenDialogShowsTitleFolderAndFilterAndTakesTheFile) {
    vb::InstalledEnvironment env({});
    QTemporaryDir dir;
    QFile f(dir.filePath("lineas.xlsx"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    vb::CommonDialog CommonDialog1;
    CommonDialog1.InitDir = dir.path();
    CommonDialog1.Filter = kFiltroExcel;
    CommonDialog1.DialogTitle = "Seleccionar Hoja Excel";
    QString title, folder;
    QStringList filters;
    Answering<QFileDialog> answer([&](QFileDialog* d) {
        title = d->windowTitle();
        folder = d->directory().absolutePath();
        filters = d->nameFilters();
        // Typed into the name box, as the user does.
        if (auto* name = d->findChild<QLineEdit*>("fileNameEdit")) name->setText(dir.filePath("lineas.xlsx"));
        QMetaObject::invokeMethod(d, "accept", Qt::QueuedConnection);
    });
    CommonDialog1.ShowOpen();
    EXPECT_EQ(title, "Seleccionar Hoja Excel");
    EXPECT_EQ(folder, QDir(dir.path()).absolutePath());
    EXPECT_EQ(filters.value(0), "Archivos de Excel(*.xls,*.xlsx) (*.xls *.xlsx)");
    EXPECT_EQ(CommonDialog1.FileName, dir.filePath("lineas.xlsx"));
}

TEST(RealCommonDialog, ClosingThePrintDialogIsACancel) {
    vb::InstalledEnvironment env({});
    vb::CommonDialog CommonDialog1;
    CommonDialog1.CancelError = true;
    CommonDialog1.Copies = 2;
    bool seen = false;
    Answering<QPrintDialog> answer([&](QPrintDialog* d) {
        seen = true;
        QMetaObject::invokeMethod(d, "reject", Qt::QueuedConnection);
    });
    try {
        CommonDialog1.ShowPrinter();
        ADD_FAILURE() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 32755);
    }
    EXPECT_TRUE(seen);
}

TEST(RealCommonDialog, ThePrintDialogStartsWithTheCopiesAndHandsBackWhatWasChosen) {
    vb::InstalledEnvironment env({});
    QTemporaryDir dir;
    vb::CommonDialog CommonDialog1;
    CommonDialog1.Copies = 2;
    CommonDialog1.Orientation = vb::cdlLandscape;
    int copiesShown = -1;
    Answering<QPrintDialog> answer([&](QPrintDialog* d) {
        // The copies box of the dialog starts at the preset.
        for (QSpinBox* s : d->findChildren<QSpinBox*>())
            if (s->objectName() == QLatin1String("copies")) copiesShown = s->value();
        d->printer()->setOutputFileName(dir.filePath("impresion.pdf"));
        QMetaObject::invokeMethod(d, "accept", Qt::QueuedConnection);
    });
    CommonDialog1.ShowPrinter();
    EXPECT_EQ(copiesShown, 2);
    ASSERT_TRUE(CommonDialog1.HasPrinter());
    EXPECT_EQ(CommonDialog1.Copies, 2);
    EXPECT_EQ(CommonDialog1.Orientation, vb::cdlLandscape);
}

} // namespace
