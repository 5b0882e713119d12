// The tables of datos.mdb.
//
// Kinds: numbers, money and flags are REAL; texts are TEXT compared with the
// collation ESPANOL (no regard to case or accents, Ñ after N); dates are TEXT
// dd/mm/yyyy with the collation FECHA, which orders them by day. Tables are
// STRICT, so a quoted number written into a numeric column is stored as the
// number ('12.5' -> 12.5), a bare number written into a text column is stored
// as its text (0012 -> '12'), and a text that is not a number in a numeric
// column fails with the type error. No column has a width limit: the windows
// limit what is typed. Whole numbers are REAL too, because a window may write
// a number with decimals where a whole one is expected, and that is no error.
//
// Keys. The windows test for a duplicate with a SELECT before they INSERT, so
// a key rarely has work to do. It matters where a statement can still repeat a
// key; each table says below how it was decided:
//  - PRIMARY KEY where a second INSERT with the same key must fail;
//  - a plain index (not unique) where the program writes the same key twice and
//    must be allowed to.
// Every key has an index either way, so the WHERE of every UPDATE and DELETE
// finds its row without reading the table.
#include "core/schema.h"
#include "core/record_store.h"
#include "runtime/errors.h"

#include <QFileInfo>
#include <sqlite3.h>

#include <algorithm>

namespace vel::schema {

namespace {

constexpr Kind N = Kind::Number;
constexpr Kind T = Kind::Text;
constexpr Kind D = Kind::Date;

// Column names of the document tables carry the table's name as a suffix; the
// list below gives the stems. Strings live as long as the program.
const char* keep(const std::string& s) {
    static std::vector<std::unique_ptr<std::string>> store;
    store.push_back(std::make_unique<std::string>(s));
    return store.back()->c_str();
}

std::vector<Column> suffixed(const std::vector<std::pair<const char*, Kind>>& stems, const std::string& suffix) {
    std::vector<Column> out;
    for (const auto& [stem, kind] : stems) out.push_back({keep(std::string(stem) + suffix), kind});
    return out;
}

// The 42 columns of a document header (delivery note and invoice alike).
std::vector<Column> documentHeader(const std::string& suffix) {
    std::vector<Column> c = suffixed({{"tienda", N},
                                      {"serie", T},
                                      {"ejercicio", N},
                                      {"numero", N},
                                      {"fecha", D},
                                      {"operador", N},
                                      {"nombre_operador", T},
                                      {"almacen", N},
                                      {"documento_origen", T},
                                      {"observaciones", T},
                                      {"estado", T},
                                      {"nif", T},
                                      {"nombre_fiscal", T},
                                      {"domicilio", T},
                                      {"poblacion", T},
                                      {"codigo_postal", T},
                                      {"provincia", T},
                                      {"nacionalidad", T},
                                      {"forma_pago", T},
                                      {"recibos", N},
                                      {"banco", T},
                                      {"sucursal", T},
                                      {"digito_control", T},
                                      {"numero_cuenta", T},
                                      {"pedido", N},
                                      {"lugar_envio", T},
                                      {"forma_envio", T},
                                      {"tarjeta", T},
                                      {"nombre_tarjeta", T},
                                      {"numero_tarjeta", T},
                                      {"contado", T},
                                      {"numero_bultos", N},
                                      {"peso", N},
                                      {"total_bruto", N},
                                      {"descuento", N},
                                      {"portes", N}},
                                     suffix);
    c.push_back({"rec_financ", T}); // the one column without the suffix
    const auto tail = suffixed({{"iva", N}, {"recargo", N}, {"retencion", N}, {"contabilizada", T}, {"iban", T}},
                               suffix);
    c.insert(c.end(), tail.begin(), tail.end());
    return c;
}

// The 25 columns of a document line.
std::vector<Column> documentLine(const std::string& suffix) {
    return suffixed({{"tienda", N},       {"serie", T},         {"ejercicio", N},    {"numero", N},
                     {"tipo_linea", T},   {"referencia", T},    {"descripcion", T},  {"unidades", N},
                     {"pvp_neto", N},     {"oferta", T},        {"kit", T},          {"importe", N},
                     {"descuento", N},    {"descuento_cliente", N}, {"neto", N},     {"impresion", T},
                     {"peso", N},         {"garantia", N},      {"division", T},     {"gran_familia", T},
                     {"familia", T},      {"articulo", T},      {"pedido", N},       {"almacen", N},
                     {"tratado", T}},
                    suffix);
}

std::vector<const char*> documentKey(const std::string& suffix) {
    return {keep("tienda" + suffix), keep("serie" + suffix), keep("ejercicio" + suffix), keep("numero" + suffix)};
}

// Customers and suppliers share columns 1 to 33.
std::vector<Column> partnerStart(const std::string& s) {
    return suffixed({{"codigo", T},          {"nif", T},
                     {"nombre", T},          {"apellidos", T},
                     {"nombrecomercial", T}, {"domicilio", T},
                     {"poblacion", T},       {"provincia", T},
                     {"nacionalidad", T},    {"codigopostal", N},
                     {"telefono1", N},       {"telefono2", N},
                     {"movil1", N},          {"movil2", N},
                     {"web", T},             {"email", T},
                     {"fax", N},             {"contacto1", T},
                     {"contacto1telefono", N}, {"contacto1email", T},
                     {"contacto2", T},       {"contacto2telefono", N},
                     {"contacto2email", T},  {"contacto3", T},
                     {"contacto3telefono", N}, {"contacto3email", T},
                     {"banco", T},           {"sucursal", T},
                     {"digitocontrol", N},   {"numerocuenta", N},
                     {"diacobro1", N},       {"diacobro2", N},
                     {"formapago", T}},
                    s);
}

std::vector<Column> cardHeader(const std::string& s) {
    return suffixed({{"ejercicio", N}, {"nif", T}, {"codigo", T}, {"apuntes", N}, {"debe", N}, {"haber", N},
                     {"anterior", N}, {"ultimo", D}},
                    s);
}

std::vector<Column> cardEntry(const std::string& s) {
    return suffixed({{"ejercicio", N}, {"nif", T}, {"codigo", T}, {"numero", N}, {"tienda", T}, {"serie", T},
                     {"documento", T}, {"formapago", T}, {"descripcion", T}, {"fecha", D}, {"debe", N},
                     {"haber", N}, {"tipo_linea", T}},
                    s);
}

std::vector<Table> buildTables() {
    std::vector<Table> t;

    // Stores, warehouses and operators: a code typed by the user is the
    // record. The code box warns "Registro duplicado" as it is left, and that is
    // the only guard the window has: if a repeated code still reaches the
    // INSERT, the engine refuses it rather than keep two stores of one code.
    t.push_back({"tienda",
                 {{"codigo_tienda", N}, {"nombre_tienda", T}, {"direccion_tienda", T}},
                 {"codigo_tienda"},
                 {{"nombre_tienda"}}});
    t.push_back({"almacen",
                 {{"codigo_almacen", N}, {"nombre_almacen", T}, {"direccion_almacen", T}},
                 {"codigo_almacen"},
                 {}});
    t.push_back({"operador",
                 {{"codigo_operador", N}, {"nombre_operador", T}, {"observaciones_operador", T}},
                 {"codigo_operador"},
                 {}});

    // VAT types: the window looks the code up as a number and inserts only when
    // it is not found, with the same number: the key never repeats.
    t.push_back({"iva", {{"codigo_iva", N}, {"iva", N}, {"retencion", N}, {"RecargoEquivalencia", N}}, {"codigo_iva"}, {}});

    // Banks: the window looks the code up as typed ('1') and inserts it masked
    // ('0001'), so a bank typed "1" is inserted as '0001' even when '0001' is
    // already there. That second row must be accepted: a plain index only.
    t.push_back({"bancos", {{"codigo_banco", T}, {"nombre_banco", T}}, {}, {{"codigo_banco"}}});

    // Branches: the key is the pair of bank and branch (two banks may have a
    // branch of the same code). The lookup and the INSERT use the same masked
    // values, so the pair never repeats.
    t.push_back({"bancos_sucursales",
                 {{"codigo_sucursal", T}, {"codigo_banco", T}, {"nombre_sucursal", T}, {"direccion_sucursal", T}},
                 {"codigo_banco", "codigo_sucursal"},
                 {}});

    // Payment terms: a code of the maintenance pattern, tested as it is left.
    {
        std::vector<Column> c{{"codigo_formapago", T}, {"nombre_formapago", T}, {"vencimientos_formapago", N}};
        for (int i = 1; i <= 12; ++i) c.push_back({keep(QStringLiteral("dias%1_formapago").arg(i, 2, 10, QLatin1Char('0')).toStdString()), N});
        t.push_back({"formapago", c, {"codigo_formapago"}, {{"nombre_formapago"}}});
    }

    // The article structure: each level looks its key up with the same first
    // two characters that its INSERT writes, so the key never repeats.
    //
    // Column order of the three lower levels: the structure window writes them
    // with no column list as its own code, then the codes of the levels above
    // going up, then the description ("insert into grandes_familias values('"
    // granfamilia "','" division "','" description "')"). The tables follow
    // that order, since an INSERT with no column list is what decides where each
    // value lands; with the division first, a gran familia 10 of division 01
    // would be stored as division 10 and never be listed under its division, and
    // a child saved with an empty parent box would not get the empty parent
    // code. Every SELECT, UPDATE and DELETE names its columns, so only the
    // INSERTs depend on this order.
    t.push_back({"divisiones", {{"codigo_division", T}, {"descripcion_division", T}}, {"codigo_division"}, {}});
    t.push_back({"grandes_familias",
                 {{"codigo_granfamilia", T}, {"codigo_division", T}, {"descripcion_granfamilia", T}},
                 {"codigo_division", "codigo_granfamilia"},
                 {}});
    t.push_back({"familias",
                 {{"codigo_familia", T}, {"codigo_granfamilia", T}, {"codigo_division", T}, {"descripcion_familia", T}},
                 {"codigo_division", "codigo_granfamilia", "codigo_familia"},
                 {}});
    t.push_back({"articulos",
                 {{"codigo_articulo", T},
                  {"codigo_familia", T},
                  {"codigo_granfamilia", T},
                  {"codigo_division", T},
                  {"descripcion_articulo", T}},
                 {"codigo_division", "codigo_granfamilia", "codigo_familia", "codigo_articulo"},
                 {}});

    // Products: the reference is the product ("Ya existe un artículo con esa
    // REFERENCIA" in the window). Bar codes are not unique (two products may
    // share one). The counter and the sales windows look a product up by
    // "referencia_productos = x OR cod_barras1_productos = x OR ... = x", which
    // the engine answers with one index search for each of the four columns:
    // the key, and an index on each bar code. The products window lists a leaf
    // of the article structure "ORDER BY referencia_productos": the leaf's
    // index ends with the reference, so the rows come in order with no sort.
    t.push_back({"productos",
                 {{"division_productos", T},     {"gfamilia_productos", T},      {"familia_productos", T},
                  {"articulo_productos", T},     {"referencia_productos", T},    {"descripcion_productos", T},
                  {"reservado1_productos", T},   {"marca_productos", T},         {"modelo_productos", T},
                  {"reservado2_productos", T},   {"coste_productos", N},         {"pvp_neto_productos", N},
                  {"garantia_productos", N},     {"dtotar1_productos", N},       {"dtotar2_productos", N},
                  {"dtotar3_productos", N},      {"dtotar4_productos", N},       {"dtotar5_productos", N},
                  {"pvp_oferta_productos", N},   {"inicio_oferta_productos", D}, {"fin_oferta_productos", D},
                  {"unidades_oferta_productos", N}, {"peso_productos", N},       {"reservado3_productos", T},
                  {"reservado4_productos", T},   {"cod_barras1_productos", T},   {"cod_barras2_productos", T},
                  {"cod_barras3_productos", T},  {"coleccion_productos", T},     {"temporada_productos", T},
                  {"codigo_iva_productos", N}},
                 {"referencia_productos"},
                 {{"cod_barras1_productos"},
                  {"cod_barras2_productos"},
                  {"cod_barras3_productos"},
                  {"division_productos", "gfamilia_productos", "familia_productos", "articulo_productos",
                   "referencia_productos"}}});

    // Customers: the NIF is the record (every UPDATE and DELETE names it), and
    // the window leaves a repeated NIF to the engine: a second customer with
    // the same NIF fails as a duplicate key. The customer code is a second,
    // searchable code that two customers may share: a plain index. The fiscal
    // and commercial names are searched too, and every window that finds a
    // customer lists all of them in the order of each of the four: a plain
    // index on each name, so that those lists are read in order, not sorted.
    {
        std::vector<Column> c = partnerStart("_cliente");
        const auto rest = suffixed({{"codigotarifa", N},
                                    {"descuentoarticulo", N},
                                    {"descuentofactura", N},
                                    {"codigoiva", N},
                                    {"facturable", N},
                                    {"limitefacturacion", T},
                                    {"mailing", N},
                                    {"codigotienda", N},
                                    {"codigocomercial", T},
                                    {"nombrefiscal", T},
                                    {"alta", D},
                                    {"observaciones", T},
                                    {"iban", T}},
                                   "_cliente");
        c.insert(c.end(), rest.begin(), rest.end());
        t.push_back({"clientes",
                     c,
                     {"nif_cliente"},
                     {{"codigo_cliente"}, {"nombrefiscal_cliente"}, {"nombrecomercial_cliente"}}});
    }
    // Suppliers: as customers. The branch code is a text column; a new
    // supplier's INSERT writes it as a bare number (0012 is stored as '12') and
    // the UPDATE in quotes ('0012').
    {
        std::vector<Column> c = partnerStart("_proveedor");
        const auto rest = suffixed(
            {{"mailing", N}, {"nombrefiscal", T}, {"alta", D}, {"observaciones", T}, {"iban", T}}, "_proveedor");
        c.insert(c.end(), rest.begin(), rest.end());
        t.push_back({"proveedores",
                     c,
                     {"nif_proveedor"},
                     {{"codigo_proveedor"}, {"nombrefiscal_proveedor"}, {"nombrecomercial_proveedor"}}});
    }

    // Document counters: invoicing delivery notes, when the year has no 'FD'
    // counter yet, inserts the row ('VN', year, 0, 'VN', 1); that row is never
    // found again, so the next note of the year inserts the very same row once
    // more and its invoice restarts at 1. Those repeated rows must be accepted:
    // a plain index on the counter's key.
    t.push_back({"series",
                 {{"tipo_series", T}, {"ejercicio_series", N}, {"tienda_series", N}, {"serie_series", T}, {"contador_series", N}},
                 {},
                 {{"tipo_series", "ejercicio_series", "tienda_series", "serie_series"}}});

    // Delivery notes: store, series, year and number. Two stations that took
    // the same number, or a note received twice from a branch store, make the
    // second INSERT fail: the key decides.
    //
    // Indexes, for the reads of the windows (new indexes go at the end of a
    // list: a database made earlier keeps the names it has):
    //  - the note window reads a note by year and number alone, without store
    //    or series, and lists a customer's years ("nif = ... ORDER BY
    //    ejercicio", and "nif = ... AND ejercicio = ... ORDER BY ejercicio":
    //    the customer and year, whose index entries stand in the order of the
    //    cursor's rows) and a year's numbers ("nif = ... AND ejercicio = ...
    //    ORDER BY numero", or "nif <> '*' AND ejercicio = ..." for all
    //    customers);
    //  - the list of years of the note control walks every note in year
    //    order (the index on the year alone gives that order with no sort);
    //  - the note control lists a store's notes of a year in one state, by
    //    number, or in every state ("estado <> ''"): the store's year in
    //    number order; the exchange reads each note by its key.
    t.push_back({"cabecera_albaran_venta",
                 documentHeader("_cabecera_albaran_venta"),
                 documentKey("_cabecera_albaran_venta"),
                 {{"nif_cabecera_albaran_venta", "ejercicio_cabecera_albaran_venta"},
                  {"ejercicio_cabecera_albaran_venta"},
                  {"ejercicio_cabecera_albaran_venta", "numero_cabecera_albaran_venta"},
                  {"nif_cabecera_albaran_venta", "ejercicio_cabecera_albaran_venta", "numero_cabecera_albaran_venta"},
                  {"tienda_cabecera_albaran_venta", "ejercicio_cabecera_albaran_venta",
                   "estado_cabecera_albaran_venta", "numero_cabecera_albaran_venta"},
                  {"tienda_cabecera_albaran_venta", "ejercicio_cabecera_albaran_venta",
                   "numero_cabecera_albaran_venta"}}});
    // Lines: several rows for each note. The note window reads them by year
    // and number, the delete, the invoicing and the exchange by the key.
    t.push_back({"detalle_albaran_venta",
                 documentLine("_detalle_albaran_venta"),
                 {},
                 {documentKey("_detalle_albaran_venta"),
                  {"ejercicio_detalle_albaran_venta", "numero_detalle_albaran_venta"}}});

    // Invoices: invoicing a delivery note takes number 1 again for as long as
    // the year has no 'FD' counter (see series), so several invoices of a store
    // and year may carry number 1: the program keeps that trap on purpose and
    // the second one is written all the same, so the key has a plain index.
    t.push_back({"cabecera_factura_venta",
                 documentHeader("_cabecera_factura_venta"),
                 {},
                 {documentKey("_cabecera_factura_venta"),
                  {"nif_cabecera_factura_venta", "ejercicio_cabecera_factura_venta"},
                  {"ejercicio_cabecera_factura_venta", "numero_cabecera_factura_venta"},
                  // a customer's years and each year's numbers, as for notes
                  {"nif_cabecera_factura_venta", "ejercicio_cabecera_factura_venta",
                   "numero_cabecera_factura_venta"}}});
    {
        std::vector<Column> c = documentLine("_detalle_factura_venta");
        c.push_back({"descripcionlarga_detalle_factura_venta", T});
        t.push_back({"detalle_factura_venta",
                     c,
                     {},
                     {documentKey("_detalle_factura_venta"),
                      {"ejercicio_detalle_factura_venta", "numero_detalle_factura_venta"}}});
    }

    // Account cards. The head of a customer's year is looked up before it is
    // inserted, with the same NIF and year: one head per customer and year.
    // The entries are numbered from the head's count of entries, which nothing
    // tests; an entry saved while its head failed to save would hand its
    // number out again, and the entry is kept rather than refused: a plain
    // index. The listing of every customer's entries of a year reads them by
    // year in NIF order: a second index, on the year and the NIF.
    for (const char* w : {"clientes", "proveedores"}) {
        const std::string who = w;
        const std::string head = "_cabecera_fichas_" + who;
        const std::string entry = "_detalle_fichas_" + who;
        t.push_back({keep("cabecera_fichas_" + who), cardHeader(head), {keep("nif" + head), keep("ejercicio" + head)}, {}});
        t.push_back({keep("detalle_fichas_" + who),
                     cardEntry(entry),
                     {},
                     {{keep("nif" + entry), keep("ejercicio" + entry), keep("numero" + entry)},
                      {keep("ejercicio" + entry), keep("nif" + entry)}}});
    }

    // Tickets: written by position only and read by no window. Two counters
    // may hand out the same number; nothing may stop a sale being written.
    t.push_back({"cabecera_diaria_ticket",
                 suffixed({{"tienda", T}, {"serie", T}, {"ejercicio", N}, {"numero", N}, {"operador", T},
                           {"nombre_operador", T}, {"fecha", D}, {"hora", T}, {"total", N}, {"descuento", N},
                           {"iva", N}, {"cobro1", N}, {"cobro2", N}, {"cobro3", N}, {"cobro4", N}},
                          "_cabecera_diaria_ticket"),
                 {},
                 {documentKey("_cabecera_diaria_ticket")}});
    // The ticket sale writes each line as: store, 'TI', year, number, four
    // empty texts, the reference, three empty texts, the description, the
    // price, the units, the amount and the VAT percentage: 17 values. The
    // table has those 17 columns, with the reserved texts numbered 1 to 7 in
    // their places, so that every sale's lines are stored.
    t.push_back({"detalle_diaria_ticket",
                 suffixed({{"tienda", T},      {"serie", T},      {"ejercicio", N},  {"numero", N},
                           {"reservado1", T},  {"reservado2", T}, {"reservado3", T}, {"reservado4", T},
                           {"referencia", T},  {"reservado5", T}, {"reservado6", T}, {"reservado7", T},
                           {"descripcion", T}, {"pvp", N},        {"unidades", N},   {"importe", N},
                           {"neto", N}},
                          "_detalle_diaria_ticket"),
                 {},
                 {documentKey("_detalle_diaria_ticket")}});
    return t;
}

const char* declaredType(Kind kind) {
    switch (kind) {
    case Kind::Number: return "REAL";
    case Kind::Text: return "TEXT COLLATE ESPANOL";
    case Kind::Date: return "TEXT COLLATE FECHA";
    }
    return "ANY";
}

} // namespace

const std::vector<Table>& Tables() {
    static const std::vector<Table> tables = buildTables();
    return tables;
}

const Table* FindTable(const QString& name) {
    for (const Table& t : Tables()) {
        if (name.compare(QLatin1String(t.name), Qt::CaseInsensitive) == 0) return &t;
    }
    return nullptr;
}

QString CreateTableSql(const Table& table) {
    QStringList parts;
    for (const Column& c : table.columns)
        parts << QStringLiteral("%1 %2").arg(QLatin1String(c.name), QLatin1String(declaredType(c.kind)));
    if (!table.primaryKey.empty()) {
        QStringList key;
        for (const char* k : table.primaryKey) key << QLatin1String(k);
        parts << QStringLiteral("PRIMARY KEY (%1)").arg(key.join(QStringLiteral(", ")));
    }
    return QStringLiteral("CREATE TABLE %1 (%2) STRICT").arg(QLatin1String(table.name), parts.join(QStringLiteral(", ")));
}

std::vector<QString> CreateIndexSql(const Table& table) {
    std::vector<QString> out;
    int n = 0;
    for (const auto& index : table.indexes) {
        QStringList cols;
        for (const char* c : index) cols << QLatin1String(c);
        out.push_back(QStringLiteral("CREATE INDEX ix_%1_%2 ON %1 (%3)")
                          .arg(QLatin1String(table.name))
                          .arg(++n)
                          .arg(cols.join(QStringLiteral(", "))));
    }
    return out;
}

void CreateTables(Database& db) {
    for (const Table& t : Tables()) {
        db.Execute(CreateTableSql(t));
        for (const QString& sql : CreateIndexSql(t)) db.Execute(sql);
    }
}

namespace {

// The indexes a table has: name and columns (lower-cased), the key's own
// included.
std::vector<std::pair<QString, QStringList>> existingIndexes(sqlite3* h, const QString& table) {
    std::vector<std::pair<QString, QStringList>> out;
    sqlite3_stmt* st = nullptr;
    const QByteArray list = QStringLiteral("PRAGMA index_list(\"%1\")").arg(table).toUtf8();
    if (sqlite3_prepare_v2(h, list.constData(), -1, &st, nullptr) == SQLITE_OK) {
        while (sqlite3_step(st) == SQLITE_ROW)
            out.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))), {}});
    }
    sqlite3_finalize(st);
    for (auto& [name, cols] : out) {
        const QByteArray info = QStringLiteral("PRAGMA index_info(\"%1\")").arg(name).toUtf8();
        if (sqlite3_prepare_v2(h, info.constData(), -1, &st, nullptr) == SQLITE_OK) {
            while (sqlite3_step(st) == SQLITE_ROW)
                cols << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 2))).toLower();
        }
        sqlite3_finalize(st);
    }
    return out;
}

bool tableExists(sqlite3* h, const char* table) {
    sqlite3_stmt* st = nullptr;
    bool found = false;
    if (sqlite3_prepare_v2(h, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE", -1,
                           &st, nullptr) == SQLITE_OK) {
        sqlite3_bind_text(st, 1, table, -1, SQLITE_STATIC);
        found = sqlite3_step(st) == SQLITE_ROW;
    }
    sqlite3_finalize(st);
    return found;
}

} // namespace

void CreateMissingIndexes(Database& db) {
    sqlite3* h = db.handle();
    for (const Table& t : Tables()) {
        if (!tableExists(h, t.name)) continue;
        const auto have = existingIndexes(h, QLatin1String(t.name));
        auto taken = [&](const QString& name) {
            for (const auto& [n, c] : have)
                if (n.compare(name, Qt::CaseInsensitive) == 0) return true;
            return false;
        };
        const std::vector<QString> create = CreateIndexSql(t);
        for (size_t i = 0; i < t.indexes.size(); ++i) {
            QStringList cols;
            for (const char* c : t.indexes[i]) cols << QString::fromLatin1(c).toLower();
            bool present = false;
            for (const auto& [n, c] : have) present = present || c == cols;
            if (present) continue;
            // The name may belong to an index of other columns (the leaf
            // index before it ended with the reference): then a new name.
            const QString name = QStringLiteral("ix_%1_%2").arg(QLatin1String(t.name)).arg(i + 1);
            QString fresh = name;
            for (int k = 2; taken(fresh); ++k) fresh = QStringLiteral("%1_%2").arg(name).arg(k);
            QString sql = create[i];
            sql.replace(QStringLiteral("CREATE INDEX %1 ").arg(name), QStringLiteral("CREATE INDEX %1 ").arg(fresh));
            sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
        }
    }
}

void CreateFirstRows(Database& db) {
    // The central store and the one person at the counter.
    db.Execute(QStringLiteral("INSERT INTO tienda VALUES (1, 'CENTRAL', '')"));
    db.Execute(QStringLiteral("INSERT INTO operador VALUES (1, 'OPERADOR', '')"));
    // VAT: general, reduced and super-reduced rates, each with its
    // equivalence surcharge; no retention.
    db.Execute(QStringLiteral("INSERT INTO iva VALUES (1, 21, 0, 5.2)"));
    db.Execute(QStringLiteral("INSERT INTO iva VALUES (2, 10, 0, 1.4)"));
    db.Execute(QStringLiteral("INSERT INTO iva VALUES (3, 4, 0, 0.5)"));
    // Payment terms: cash (one due date, 0 days) and 30/60/90 days.
    db.Execute(QStringLiteral("INSERT INTO formapago VALUES ('CON', 'CONTADO', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
    db.Execute(QStringLiteral("INSERT INTO formapago VALUES ('30', '30 DIAS', 1, 30, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
    db.Execute(QStringLiteral(
        "INSERT INTO formapago VALUES ('369', '30, 60 Y 90 DIAS', 3, 30, 60, 90, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
}

void CreateEmptyDatabase(const QString& path) {
    if (QFileInfo::exists(path)) vb::Raise(3204, QStringLiteral("La base de datos ya existe."));
    auto db = Database::CreateDatabase(path);
    CreateTables(*db);
    CreateFirstRows(*db);
}

} // namespace vel::schema
