// What the three workbook targets share: read, then walk the cells as the
// import does (rows from 2 until column 1 is empty, six columns).
#pragma once
#include "runtime/errors.h"
#include "sales/workbook.h"
#include <QByteArray>
#include <cstddef>
#include <cstdint>

namespace fuzzworkbook {

template <class Reader>
int Read(const uint8_t* data, size_t size, Reader read) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        const vel::Libro libro = read(bytes);
        for (int fila = 2; !libro.Cells(fila, 1).Vacia() && fila < 100000; ++fila)
            for (int c = 1; c <= 6; ++c) {
                const vel::Celda celda = libro.Cells(fila, c);
                (void)celda.Texto();
                try {
                    (void)celda.Sumando();
                } catch (const vb::RuntimeError&) {
                }
            }
    } catch (const vb::RuntimeError&) {
    }
    return 0;
}

} // namespace fuzzworkbook
