// One reading of a document window's screen. An action (a save, a print job)
// reads the window once, at its start, and hands the reading to the statements
// (document_statements.h), the print layouts (print_layout.h) and the save
// report, so that the three see the same document.
#pragma once
#include "runtime/save_report.h"
#include "sales/document_statements.h"
#include "sales/print_layout.h"
#include <vector>

namespace vel {

struct PantallaDocumento {
    // What the print procedures read: the boxes, labels and the grid's cells
    // (copied, with Rows counting the title row 0).
    print_layout::Documento impreso;
    // The key written to the rows: the store of the document, year and number.
    ClaveDocumento clave;
    // The header's values; its state is the save's to give.
    DatosCabecera cabecera;
    // The grid's rows from 1, and the long description every line receives.
    std::vector<CeldasLinea> lineas;
    QString descripcionLarga;
    // What the save report writes of the window.
    vb::DocumentReportValues informe;
};

} // namespace vel
