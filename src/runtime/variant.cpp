#include "runtime/variant.h"

#include "runtime/errors.h"
#include "runtime/vb.h"

namespace vb {

namespace {
[[noreturn]] void invalidUseOfNull() { Raise(94, QStringLiteral("Uso no válido de Null")); }
} // namespace

QString Variant::str() const {
    switch (kind_) {
    case Kind::Number:
        return CStr(number_);
    case Kind::Text:
        return text_;
    case Kind::Null:
        break;
    }
    invalidUseOfNull();
}

double Variant::num() const {
    switch (kind_) {
    case Kind::Number:
        return number_;
    case Kind::Text:
        return Val(text_);
    case Kind::Null:
        break;
    }
    invalidUseOfNull();
}

} // namespace vb
