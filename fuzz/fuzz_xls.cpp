// An .xls workbook, whatever bytes it holds (the reader takes a file: the
// bytes go to a temporary file first): it reads, and every cell of the rows
// the import would walk gives its value, or it fails with a runtime error.
// Never a crash.
#include "fuzz_workbook.h"
#include <QFile>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const QString path = QStringLiteral("/tmp/fuzz_xls_%1.xls").arg(getpid());
    return fuzzworkbook::Read(data, size, [](const QByteArray& b) {
        QFile f(path);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(b);
        f.close();
        return vel::Libro::LeerXls(path);
    });
}
