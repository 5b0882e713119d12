// config.ini (and any file read with Input #) from any bytes: UTF-8, Latin-1,
// UTF-16 with either mark, quotes left open, no line end... Reading values one
// after another ends with the runtime's error 62 past the end, never a crash,
// and every value is read from the text in order.
//
// The first byte chooses, value by value, between Input # and Line Input #.
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const uint8_t pattern = data[0];
    vb::InputFile file = vb::InputFile::fromBytes(QByteArray(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1)));
    int values = 0;
    try {
        for (;; ++values) {
            const bool eof = file.eof();
            if (pattern & (1u << (values % 8))) (void)file.lineInput();
            else (void)file.next();
            if (eof) __builtin_trap(); // a value read past the end
            if (values > int(size) + 1) __builtin_trap(); // each value takes at least one character
        }
    } catch (const vb::RuntimeError& e) {
        if (e.Number != 62 || !file.eof()) __builtin_trap();
    }
    return 0;
}
