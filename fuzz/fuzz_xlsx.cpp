// An .xlsx workbook, whatever bytes it holds: it reads, and every cell of the
// rows the import would walk gives its value, or it fails with a runtime
// error. Never a crash.
#include "fuzz_workbook.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return fuzzworkbook::Read(data, size, [](const QByteArray& b) { return vel::Libro::LeerXlsx(b, "hoja.xlsx"); });
}
