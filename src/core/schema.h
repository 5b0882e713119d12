// The tables of datos.mdb: their columns in order, kinds and keys, and the
// making of an empty database with the first rows a user would enter.
//
// The order of the columns is part of the program: every INSERT is written with
// no column list, so a table with its columns in another order breaks the
// windows that write it.
#pragma once
#include <QString>
#include <vector>

namespace vel {

class Database;

namespace schema {

// How a column is stored: numbers (also money and flags), texts, and dates,
// which are texts dd/mm/yyyy ordered as dates.
enum class Kind { Number, Text, Date };

struct Column {
    const char* name;
    Kind kind;
};

struct Table {
    const char* name;
    std::vector<Column> columns;
    // Columns of the primary key: a second INSERT with the same key fails with
    // the duplicate-key error. Empty when the table accepts repeated keys.
    std::vector<const char*> primaryKey;
    // Plain (not unique) indexes, one list of columns each.
    std::vector<std::vector<const char*>> indexes;
};

// Every table of the database, in the order of their dependence.
const std::vector<Table>& Tables();
// The table of that name (any case), or nullptr.
const Table* FindTable(const QString& name);

// The CREATE TABLE statement of a table, and those of its indexes.
QString CreateTableSql(const Table& table);
std::vector<QString> CreateIndexSql(const Table& table);

// Creates every table and index on an open, empty database.
void CreateTables(Database& db);
// Creates, on an existing database, the indexes of the list above that it
// lacks (a file made before they were part of it): the product lookups of the
// counter and the sales windows, the reads of notes, invoices and their lines
// by year and number, the note control's lists and the card listings depend
// on them. An index counts as there when
// one of the same columns exists, whatever its name. Run once after the open;
// an index that can't be made is passed over, since the program works without
// it, only slower.
void CreateMissingIndexes(Database& db);
// Writes the rows a user enters first: store 1, operator 1, the three VAT
// types with their equivalence surcharges, and the payment terms for cash and
// for 30, 60 and 90 days.
void CreateFirstRows(Database& db);
// A new database file with the tables and the first rows. Raises 3204 when the
// file already exists: an existing database is never overwritten.
void CreateEmptyDatabase(const QString& path);

} // namespace schema
} // namespace vel
