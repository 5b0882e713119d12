// The loop shared by the three bulk price changes of the products window
// (Cambiar on a leaf, Cambiar on every product, Recalcular): each product of
// the query gets a new retail price computed from its own, written by one
// UPDATE of its own.
//
// The loop runs with errors ignored (On Error Resume Next): a statement that
// fails is passed over and the walk goes on with the next product, which
// keeps the price it had. The whole walk is one transaction: a kill half-way
// changes no price, so running the change again raises each product once.
// The new price is written with
// all its digits (CStr), never rounded: 121 recalculated from 16 % to 21 %
// VAT is stored as 126.21551724137932; only the lists round it, through
// "0.000".
#pragma once
#include <QString>
#include <functional>

namespace vel {

class Database;
class Recordset;

// Walks the cursor (referencia_productos, pvp_neto_productos) from its
// current row to its end, running for each product
// "UPDATE productos SET pvp_neto_productos = " new " WHERE referencia_productos = '" reference "'".
void CambiarPrecios(Database& db, Recordset& Registro, const std::function<double(double)>& NuevoPrecio);

} // namespace vel
