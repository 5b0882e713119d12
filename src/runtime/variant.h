// The value of a database field as the runtime sees it: Null, a number or a text.
// Dates are stored and read as text "dd/mm/yyyy".
#pragma once
#include <QString>

namespace vb {

class Variant {
public:
    enum class Kind { Null, Number, Text };

    Variant() = default;                       // Null
    Variant(double n) : kind_(Kind::Number), number_(n) {}
    Variant(const QString& t) : kind_(Kind::Text), text_(t) {}

    Kind kind() const { return kind_; }
    bool isNull() const { return kind_ == Kind::Null; }
    bool isNumber() const { return kind_ == Kind::Number; }
    bool isText() const { return kind_ == Kind::Text; }

    // The value as the runtime turns it into text when it is assigned to a
    // control or joined to a string: a number with all its digits (CStr), a text
    // as it stands. Null raises runtime error 94 "Uso no válido de Null".
    QString str() const;
    // The value as a number: a number as it is, a text through Val.
    // Null raises runtime error 94.
    double num() const;

private:
    Kind kind_ = Kind::Null;
    double number_ = 0;
    QString text_;
};

inline bool IsNull(const Variant& v) { return v.isNull(); }

} // namespace vb
