// Customers and suppliers: two tables of one design.
//
// The customer record (clientes, 46 columns) and the supplier record
// (proveedores, 38 columns) are kept by two windows with the same controls in
// the same places, and are searched by the same four lists in the account
// cards, the listings and the sales documents. What tells one table from the
// other is stated here, as data, once:
//
//  - PartnerFields(): every field of the customer record in the order of the
//    customer INSERT, with the control that feeds it, how its value stands in
//    the SQL text and how a stored value is shown again;
//  - PartnerTable: a table's name and column suffix, the fields it has no
//    column for (they stay on the window, neither saved nor shown), the fields
//    written otherwise in its INSERT, and the words of a failed search.
//
// The statements of both windows are built from these by the functions below,
// so that the supplier INSERT of 38 values is the customer INSERT of 46 with
// eight fields left out and the branch code unquoted, and nothing else.
#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace vel {

// How a field's value stands in the INSERT and UPDATE text.
enum class PartnerValue {
    Upper,    // quoted, upper case: 'LA TIENDA SL'
    AsTyped,  // quoted, exactly as typed: 'www.tienda.es'
    Number,   // Val of the text, unquoted; with a mask, Format(Val, mask): 05
    Check,    // a check box's value, 0 or 1
    ListText, // Val of the list's text, unquoted (the tariff)
};

// How a stored value is shown again by muestradatos.
enum class PartnerShow {
    Text,      // the column joined to an empty text: Null shows as empty
    Mask,      // Format of the column with the field's mask: "#" shows 0 as empty
    Check,     // the check box takes the column as a number
    ListIndex, // the list's ListIndex is Val of the column less one
};

struct PartnerField {
    const char* stem;    // the column without its suffix: "codigo" -> codigo_cliente
    const char* control; // the control that feeds it: "Textcodigo"
    PartnerValue value;
    const char* valueMask; // Format mask of a Number in the SQL text ("00"), or nullptr
    PartnerShow show;
    const char* showMask;  // Format mask of PartnerShow::Mask, or nullptr
};

// The fields of the customer record in the order of its INSERT: 46.
const std::vector<PartnerField>& PartnerFields();

struct PartnerTable {
    QString table;        // "clientes"
    QString suffix;       // "_cliente": nif_cliente, codigo_cliente ...
    QString notFound;     // what a failed search says
    // Controls of the window with no column in this table: neither saved nor
    // shown.
    QStringList noColumn;
    // Controls whose INSERT value is Val of the text, unquoted, while the UPDATE
    // writes it as the customer table does.
    QStringList numberInInsert;

    QString Column(const char* stem) const { return QString::fromLatin1(stem) + suffix; }
    // The fields of this table, in the order of its INSERT.
    std::vector<PartnerField> Fields() const;
};

const PartnerTable& Clientes();
const PartnerTable& Proveedores();

// What a statement needs of the window: the value of a control by its name,
// as it stands (the text of a box or a list, "0" or "1" of a check box).
using PartnerReader = std::function<QString(const QString& control)>;

// "INSERT INTO clientes VALUES ('" ... "')": the fields of the table in order,
// joined by ", ".
QString PartnerInsert(const PartnerTable& t, const PartnerReader& value);
// "UPDATE clientes SET codigo_cliente = '" ... " WHERE nif_cliente = '" NIF "'":
// every field but the NIF, in order, and the NIF upper-cased in the WHERE.
QString PartnerUpdate(const PartnerTable& t, const PartnerReader& value);
// "DELETE FROM clientes WHERE nif_cliente = '" NIF as it stands "'".
QString PartnerDelete(const PartnerTable& t, const QString& nif);

} // namespace vel
