// A recording printer, the clock pinned to a working day and a delivery note as
// it stands on screen, for the tests of what goes on paper.
#pragma once
#include "runtime/clock.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/print_transcript.h"
#include "runtime/printer.h"
#include "sales/print_layout.h"
#include "support/print_to.h"
#include <gtest/gtest.h>
#include <ostream>
#include <array>
#include <deque>
#include <memory>
#include <vector>


namespace vel::testing {

// The print dialog's answers, in order; none is a cancel.
struct PrintDialogAnswers : vb::DialogService {
    std::deque<std::optional<vb::PrinterChoice>> answers;
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
        auto a = answers.front();
        answers.pop_front();
        return a;
    }
};

class PrintTest : public ::testing::Test {
protected:
    vb::PrintRecorder recorder;
    PrintDialogAnswers dialogs;
    vb::InstalledEnvironment env{{.dialogs = &dialogs,
                                  .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0, 0)),
                                  .printers = &recorder}};
    vb::PrinterObject& printer = vb::Printer();

    static void today(int day, int month, int year) {
        vb::clock::pin(QDateTime(QDate(year, month, day), QTime(10, 0, 0)));
    }
    // The texts of the last document's Print operations.
    QStringList lines() const { return recorder.last().lines(); }
};

// The grid of a delivery note: rows of seven texts after the title row.
struct Rejilla {
    std::vector<std::array<QString, 7>> filas;
    void set(print_layout::Documento& d) const {
        d.Rows = long(filas.size()) + 1;
        d.TextMatrix = [this](int row, int col) {
            static const std::array<QString, 7> titulo = {"Referencia", "Descripción", "Unid.", "Importe",
                                                          "Subtotal",   "Dto.",        "Total"};
            return row == 0 ? titulo[col] : filas[size_t(row - 1)][size_t(col)];
        };
    }
};

// A delivery note of the Ferretería O Cruceiro with n lines of 2 screws at 1.50.
inline print_layout::Documento NotaDeEntrega(const std::shared_ptr<Rejilla>& rejilla, int n,
                                             const QString& tag = "FERROBANDA") {
    print_layout::Documento d;
    d.ClientePrograma = tag;
    d.Combonombrecomercial = "FERRETERIA O CRUCEIRO";
    d.Combonombrefiscal = "XOSE MANUEL CASAL RIOS";
    d.Textdomicilio = "RUA DO CRUCEIRO 4";
    d.Textcodigopostal = "15001";
    d.Textpoblacion = "PORTELAS";
    d.Textprovincia = "VALDEFERRO";
    d.Combonif = "00000014Z";
    d.Combonumerofactura = "00027";
    d.Comboejerciciofactura = "2026";
    d.Textfechafactura = "21/11/2026";
    d.Labelformapagofacturavencimientos = "1/30";
    d.ComboProforma = "Albarán";
    d.Labelbruto = QString::number(3 * n) + ".00";
    d.Labeldescuento = "0";
    d.Labelneto = QString::number(3 * n) + ".00";
    d.Labelbase = QString::number(3 * n) + ".00";
    d.Textiva = "21";
    d.Labelimporteiva = QString::number(0.63 * n, 'f', 2);
    d.Textrecargo = "0";
    d.Labelimporterecargo = "0";
    d.Labeltotalfactura = QString::number(3.63 * n, 'f', 2);
    d.Comborecibosfactura = "21/12/2026";
    d.Labelbanco = "BANCO MAREIRO";
    d.TextIban = "ES91";
    d.Textbanco = "2100";
    d.Textsucursal = "0000";
    d.Textdigitocontrol = "11";
    d.Textnumerocuenta = "0200000000";
    rejilla->filas.clear();
    for (int i = 1; i <= n; ++i)
        rejilla->filas.push_back({QStringLiteral("TORN%1").arg(i, 3, 10, QLatin1Char('0')), "TORNILLO 4X40", "2", "1.50",
                                  "3.00", "0", "3.00"});
    rejilla->set(d);
    return d;
}

} // namespace vel::testing
