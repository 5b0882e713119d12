// Writes the seed corpora of the workbook targets: sound workbooks of each
// kind (texts, numbers, formulas, a second sheet), written as the tests write
// them.
//   workbook_seeds DIR   ->  DIR/fuzz_xls, DIR/fuzz_xlsx, DIR/fuzz_ods
#include "support/workbook_writer.h"
#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc < 2) return 2;
    const QString dir = QString::fromLocal8Bit(argv[1]);
    using veltest::Hoja;
    const Hoja lineas = {{"Ref", "Desc", "Uds", "Precio", "Dto", "Larga"},
                         {"TORN-6", "TORNILLO 6MM", "10", "1.5", "5", "Pedido"},
                         {"'12", "MARTILLO", "2", "12.10", "", ""},
                         {"MS", "ñandú ÁÉÍ", "-3", "0.001", "99", "x"}};
    const Hoja formulas = {{"Ref"}, {"A", "=LOWER(\"B\")|b", "=2*3|6", "=1/3|0.333333333333333"}};
    try {
        for (const char* kind : {"xlsx", "ods"}) {
            const QString sub = dir + "/fuzz_" + kind + "/";
            veltest::WriteWorkbook(sub + "lineas." + kind, lineas);
            veltest::WriteWorkbook(sub + "formulas." + kind, formulas);
            veltest::WriteWorkbook(sub + "dos." + kind, std::vector<Hoja>{lineas, formulas});
        }
        veltest::WriteWorkbook(dir + "/fuzz_xls/lineas.xls", lineas);
        veltest::WriteWorkbook(dir + "/fuzz_xls/dos.xls", std::vector<Hoja>{lineas, lineas});
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}
