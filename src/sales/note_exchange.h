// The exchange of delivery notes between stores: the two text files, their
// packing, and the checks a received file passes before it is read.
//
// A branch store writes its listed notes to pedidoC.txt (the headers, 42 lines
// a note) and pedidoD.txt (the lines, 25 lines a note line), one value a line
// with CR LF, packs each into pedidoC.zip and pedidoD.zip and both into
// pedido.jpg. The central store unpacks pedido.jpg and inserts what it reads.
//
// The writer and the reader walk the same field tables (CamposCabecera,
// CamposDetalle): the n-th line of a record is the n-th field, and the same
// entry says how the line stands in the receiving INSERT. A record written and
// read back gives the same row, but for the two fields the reader replaces:
// the state becomes 'E' and `contabilizada` '0'.
#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <stdexcept>
#include <vector>

namespace vb { class Variant; }

namespace vel {

class Recordset;

namespace intercambio {

// How a line of the file stands in the receiving INSERT.
enum class Forma {
    DosCifras,           // Val through "00", bare: stores, operators, warehouses
    Texto,               // between single quotes, as read (no apostrophe doubled)
    Numero,              // bare, as read
    NumeroEntreComillas, // money: the number as read, between quotes
    Enviado,             // the line read is dropped; 'E' takes its place
    SinContabilizar,     // the line read is dropped; '0' takes its place
};

struct Campo {
    QString columna; // the column of the table the field comes from and goes to
    Forma forma;
};

// pedidoC.txt: the 42 fields of a note header, columns of cabecera_albaran_venta.
const std::vector<Campo>& CamposCabecera();
// pedidoD.txt: the 25 fields of a note line, columns of detalle_albaran_venta.
const std::vector<Campo>& CamposDetalle();

// A value as the file holds it: a text as it stands, a number in its plain
// decimal form with a point, a date as it is stored (dd/mm/yyyy), and a null
// as the word Null, which the reader's statement takes as the null value in a
// bare place.
QString TextoEnFichero(const vb::Variant& valor);

// The record the cursor stands on, one line a field, each ended by CR LF.
void EscribirRegistro(QByteArray& salida, const Recordset& rs, const std::vector<Campo>& campos);

// The value of one line in the receiving INSERT.
QString ValorRecibido(const Campo& campo, const QString& linea);
// "INSERT INTO <tabla> VALUES (" and the values of one record's lines, ")".
QString SentenciaRecepcion(const QString& tabla, const std::vector<Campo>& campos, const QStringList& lineas);

// The statements a received pair of files gives, in the order they run:
// each header's INSERT followed by its counter's SELECT and then INSERT or
// UPDATE (decided on the database, so these are given as a callback), then the
// lines' INSERTs. The text is read as the runtime reads a file: Line Input for
// every header field; for a line, Input # for its first field and Line Input
// for the rest. A file that ends inside a record raises error 62; a value
// the receiving statement cannot be made from (a two-digit field holding a
// number beyond a Double's range) raises the runtime's error for it (6),
// naming the field. Either comes before anything is written.
struct Recepcion {
    // One INSERT into cabecera_albaran_venta per note, with its key as read.
    struct Nota {
        QString sentencia;
        QString tienda, serie, ejercicio, numero;
    };
    std::vector<Nota> notas;
    // One INSERT into detalle_albaran_venta per line.
    QStringList lineas;
};
Recepcion LeerRecepcion(const QByteArray& pedidoC, const QByteArray& pedidoD);

// ---- Folders ---------------------------------------------------------------

// The working folder the 16-bit packing tools accept, from the program's path
// in its Windows form: the tail after the first three characters ("C:\") is
// kept when it has fewer than 8 characters, and otherwise cut to its first
// six and "~1"; then "\enviar\" or "\recibir\".
//   C:\gestion    -> C:\gestion\enviar\        (7 characters: used whole)
//   C:\programa01 -> C:\progra~1\enviar\       (whether or not that short name exists)
QString CarpetaCorta(const QString& rutaPrograma, const QString& carpeta);

// On this platform the packing is done by a library, which needs no short
// names: the working folders are enviar/ and recibir/ inside the program
// folder (App.Path), made when missing. Ends with "/".
QString CarpetaTrabajo(const QString& carpeta);

// ---- Packing -----------------------------------------------------------------

// Packs pedidoC.txt into pedidoC.zip, pedidoD.txt into pedidoD.zip and both
// zips into pedido.jpg, all in `carpeta`, with the best compression. Each
// archive replaces the one before. A failure raises error 75 naming the file.
void EmpaquetarPedidoC(const QString& carpeta);
void EmpaquetarPedidoD(const QString& carpeta);
void EmpaquetarPedido(const QString& carpeta);
// One ZIP archive in memory, its members in the order given, best compression.
QByteArray ComprimirZip(const std::vector<std::pair<QString, QByteArray>>& miembros);

// ---- Unpacking ---------------------------------------------------------------

// A received file that must not be read: the message says why, in the user's words.
class ArchivoRechazado : public std::runtime_error {
public:
    explicit ArchivoRechazado(const QString& mensaje);
    QString mensaje() const { return mensaje_; }

private:
    QString mensaje_;
};

// The limits of a received archive member.
inline constexpr qint64 kTamanoMaximo = 64LL * 1024 * 1024; // 64 MB unpacked
inline constexpr qint64 kProporcionMaxima = 100;            // unpacked / packed

// The two texts of a received pedido.jpg, checked. Nothing is written.
struct Recibido {
    QByteArray pedidoCzip, pedidoDzip, pedidoC, pedidoD;
};
// Reads the bytes of a pedido.jpg: the outer archive must hold exactly
// pedidoC.zip and pedidoD.zip, and each of those exactly its .txt. Refuses,
// with ArchivoRechazado, names with "..", absolute paths, drive letters,
// symbolic links, members not expected (or missing, or repeated), encrypted
// members, a member over 64 MB or packed more than 100 to 1, and damaged or
// cut archives.
Recibido DesempaquetarPedido(const QByteArray& pedidoJpg);
// DesempaquetarPedido on `carpeta`/pedido.jpg (refused when it is not there);
// once everything is checked, the two zips and the two texts are written into
// `carpeta`, replacing those before, as unpacking with overwriting leaves them.
// Nothing is written anywhere else.
Recibido DesempaquetarEnCarpeta(const QString& carpeta);

} // namespace intercambio
} // namespace vel
