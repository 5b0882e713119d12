// Val, IsNumeric, CDbl, CStr and Format on any text and any mask: each either
// gives a text or raises a runtime error, never reads out of bounds; and the
// text CStr gives of a number reads back through Val as the same number.
//
// Input: a selector byte, then the text and the mask separated by a zero byte
// (UTF-8, malformed bytes replaced), or 8 bytes of a double for the number forms.
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

void numberChecks(double d, const QString& mask) {
    const QString text = vb::CStr(d);
    if (std::isfinite(d) && std::fabs(d) >= DBL_MIN && vb::Val(text) != d) __builtin_trap();
    try {
        (void)vb::Format(d, mask);
    } catch (const vb::RuntimeError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const uint8_t selector = data[0];
    ++data;
    --size;
    if (selector & 1) {
        // A number given as its eight bytes, and a mask.
        double d = 0;
        if (size < sizeof d) return 0;
        std::memcpy(&d, data, sizeof d);
        const QString mask = QString::fromUtf8(reinterpret_cast<const char*>(data + sizeof d), qsizetype(size - sizeof d));
        numberChecks(d, mask);
        return 0;
    }
    const char* bytes = reinterpret_cast<const char*>(data);
    const void* zero = std::memchr(bytes, 0, size);
    const size_t textSize = zero ? size_t(static_cast<const char*>(zero) - bytes) : size;
    const QString text = QString::fromUtf8(bytes, qsizetype(textSize));
    const QString mask = zero ? QString::fromUtf8(bytes + textSize + 1, qsizetype(size - textSize - 1)) : QString();
    try {
        const double v = vb::Val(text);
        numberChecks(v, mask);
    } catch (const vb::RuntimeError&) {
    }
    const bool numeric = vb::IsNumeric(text);
    try {
        (void)vb::CDbl(text);
        if (!numeric) __builtin_trap(); // CDbl takes only what IsNumeric takes
    } catch (const vb::RuntimeError& e) {
        if (e.Number == 13 && numeric) __builtin_trap();
    }
    try {
        (void)vb::Format(text, mask);
    } catch (const vb::RuntimeError&) {
    }
    try {
        (void)vb::Format(vb::CDate(text), mask);
    } catch (const vb::RuntimeError&) {
    }
    return 0;
}
