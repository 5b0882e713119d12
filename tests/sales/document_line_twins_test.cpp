// What the delivery note and the invoice print alike, written once and run for
// both: a line's seven pieces when an amount outgrows its column, a line that
// can't be built, and a page count that overflows its 16-bit field. Each
// document brings its own line function and the lines it prints.
#include "runtime/errors.h"
#include "sales/print_layout.h"
#include "support/print_to.h"
#include <gtest/gtest.h>
#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace vel::testing {
namespace {

using Celdas = std::array<QString, 7>;

struct Documento {
    const char* nombre;
    std::function<std::array<QString, 7>(const Celdas&)> piezas;
    std::function<QString(const Celdas&)> linea;
    // The page count of a grid of so many rows (an invoice with no long description).
    std::function<std::int16_t(long)> paginas;
    // TORN001 / TORNILLO 4X40 / 2 at 1.50, 10 off: the seven pieces, the
    // reference's the widest by the invoice's leading blank.
    QString lineaNormal;
    int anchoReferencia;
    // ROLLO / CABLE / 0.5 at 1234567.50: the unit amount runs into the subtotal's column.
    QString lineaImporteLargo;
    int ancho;
    // ROLLO / CABLE / 200 at 12.50 with a subtotal of 1234567.50, 10 off, 1111110.75.
    QString lineaSubtotalYTotalLargos;
    // The same with no discount, when the document prints it blank.
    std::optional<QString> lineaTotalLargoSinDescuento;
    // Cells the document refuses to make a line of: a pad would be negative.
    std::vector<Celdas> celdasImposibles;
};

std::ostream& operator<<(std::ostream& os, const Documento& d) { return os << d.nombre; }

const Documento kAlbaran{
    .nombre = "albaran",
    .piezas = print_layout::PiezasLineaAlbaran,
    .linea = print_layout::LineaAlbaran,
    .paginas = print_layout::PaginasAlbaran,
    .lineaNormal = "TORN001       TORNILLO 4X40                   2      1.50      3.00 10      2.70",
    .anchoReferencia = 14,
    .lineaImporteLargo = "ROLLO         CABLE                         0.5 1234567.50617283.75  0 617283.75",
    .ancho = 80,
    .lineaSubtotalYTotalLargos = "ROLLO         CABLE                         200     12.50 1234567.50101111110.75",
    .lineaTotalLargoSinDescuento = std::nullopt,
    .celdasImposibles = {{"REFERENCIA-14C", "D", "1", "1", "1", "0", "1"},
                         {"R", QString(27, 'D'), "1", "1", "1", "0", "1"},
                         {"R", "D", "1234567", "1", "1", "0", "1"},
                         {"R", "D", "1", "1", "1", "100", "1"}},
};

const Documento kFactura{
    .nombre = "factura",
    .piezas = print_layout::PiezasLineaFactura,
    .linea = print_layout::LineaFactura,
    .paginas = [](long rows) { return print_layout::PaginasFactura(rows, ""); },
    .lineaNormal = " TORN001       TORNILLO 4X40                   2      1.50      3.00 10      2.70",
    .anchoReferencia = 15,
    .lineaImporteLargo = " ROLLO         CABLE                         0.5 1234567.50617283.75    617283.75",
    .ancho = 81,
    .lineaSubtotalYTotalLargos = " ROLLO         CABLE                         200     12.50 1234567.50101111110.75",
    .lineaTotalLargoSinDescuento = " ROLLO         CABLE                         200     12.50 1234567.50  1234567.50",
    .celdasImposibles = {{"REFERENCIA-14C", "D", "1", "1", "1", "0", "1"}},
};

class DocumentLine : public ::testing::TestWithParam<Documento> {};

TEST_P(DocumentLine, ALineIsMadeOfSevenFixedPieces) {
    const Documento& d = GetParam();
    const Celdas cells = {"TORN001", "TORNILLO 4X40", "2", "1.50", "3.00", "10", "2.70"};
    EXPECT_EQ(d.linea(cells), d.lineaNormal);
    const auto p = d.piezas(cells);
    EXPECT_EQ(p[0], d.lineaNormal.left(d.anchoReferencia));
    EXPECT_EQ(p[0].size(), d.anchoReferencia);
    EXPECT_EQ(p[1].size(), 27);
    EXPECT_EQ(p[2].size(), 7);
    EXPECT_EQ(p[3].size(), 10);
    EXPECT_EQ(p[4].size(), 10);
    EXPECT_EQ(p[5].size(), 3);
    EXPECT_EQ(p[6].size(), 9);
}

TEST_P(DocumentLine, AUnitAmountOfTenCharactersShiftsTheUnitsPieceOneColumnShorter) {
    const Documento& d = GetParam();
    const Celdas cells = {"ROLLO", "CABLE", "0.5", "1234567.50", "617283.75", "0", "617283.75"};
    const auto p = d.piezas(cells);
    EXPECT_EQ(p[2], "   0.5");
    EXPECT_EQ(p[3], " 1234567.50");
    // The figure runs into the subtotal's column; what follows keeps its place.
    EXPECT_EQ(d.linea(cells), d.lineaImporteLargo);
    EXPECT_EQ(d.linea(cells).size(), d.ancho);
}

// A total of ten characters takes the last column of the discount's piece,
// blank or figure.
TEST_P(DocumentLine, ASubtotalAndATotalOfTenCharactersTakeTheColumnBeforeThem) {
    const Documento& d = GetParam();
    const QString line = d.linea({"ROLLO", "CABLE", "200", "12.50", "1234567.50", "10", "1111110.75"});
    EXPECT_EQ(line, d.lineaSubtotalYTotalLargos);
    EXPECT_EQ(line.size(), d.ancho);
    if (d.lineaTotalLargoSinDescuento) {
        EXPECT_EQ(d.linea({"ROLLO", "CABLE", "200", "12.50", "1234567.50", "0", "1234567.50"}),
                  *d.lineaTotalLargoSinDescuento);
    }
    // Longer than ten: the last ten characters.
    EXPECT_EQ(d.piezas({"R", "D", "1", "1", "1", "0", "12345678.901"})[6], "345678.901");
}

// A reference or description longer than its column is no line at all: the
// pad would be negative, and the runtime refuses it.
TEST_P(DocumentLine, AReferenceLongerThanThirteenIsAnInvalidCall) {
    for (const Celdas& cells : GetParam().celdasImposibles) {
        try {
            GetParam().linea(cells);
            ADD_FAILURE() << "built " << qPrintable(cells[0]);
        } catch (const vb::RuntimeError& e) {
            EXPECT_EQ(e.Number, 5);
        }
    }
}

TEST_P(DocumentLine, APageCountBeyondSixteenBitsOverflows) {
    const Documento& d = GetParam();
    EXPECT_EQ(d.paginas(39 * 32766 + 1), 32767);
    EXPECT_EQ(d.paginas(39 * 32767), 32767);
    try {
        d.paginas(39 * 32767 + 1);
        FAIL() << "no overflow";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 6);
        EXPECT_EQ(e.Description, "Desbordamiento");
    }
    EXPECT_EQ(print_layout::Integer16(-32768), -32768);
    EXPECT_THROW(print_layout::Integer16(32768), vb::RuntimeError);
}

INSTANTIATE_TEST_SUITE_P(BothDocuments, DocumentLine, ::testing::Values(kAlbaran, kFactura),
                         [](const ::testing::TestParamInfo<Documento>& i) { return std::string(i.param.nombre); });

} // namespace
} // namespace vel::testing
