// Typed text never changes a statement's shape. Every text a control gives
// goes in through sql::Comillas; a text with an apostrophe breaks the
// statement as it always has (the statement's syntax error), whatever follows
// the apostrophe, and nothing of it runs. A text without one is stored as
// typed, comment markers and all.
#include "store_fixture.h"

#include "core/sql_values.h"

using veltest::DescriptionOf;
using veltest::ErrorOf;
using veltest::ShopDatabase;

namespace {

// What a hostile or careless user may type.
const QStringList kCorpus = {
    QStringLiteral("O'BRIEN"),
    QStringLiteral("X' --"),
    QStringLiteral("X' OR '1'='1' --"),
    QStringLiteral("x' OR '1'='1"),
    QStringLiteral("' OR 1=1 /*"),
    QStringLiteral("'; DELETE FROM tienda; --"),
    QStringLiteral("A' || 'B"),
    QStringLiteral("1' AND codigo_tienda = 2 AND 'a'='a"),
    QStringLiteral("'"),
    QStringLiteral("''"),
    QStringLiteral("Z'), (99, 'Y', '"),
    QStringLiteral("A' WHERE 1=1 --"),
    QStringLiteral("X' */ OR 1=1 /* '"),
    QStringLiteral("X' OR nombre_tienda LIKE '*"),
};

// Harmless texts that look like SQL: stored exactly as typed.
const QStringList kHarmless = {
    QStringLiteral("A -- B"),       QStringLiteral("/* nota */"), QStringLiteral("X; DELETE FROM tienda"),
    QStringLiteral("1 OR 1=1"),     QStringLiteral("\"comillas\""), QStringLiteral("50% * ?"),
    QStringLiteral("ÑANDÚ -- ñ"),   QStringLiteral("a*/b"),
};

class Injection : public ShopDatabase {
protected:
    void SetUp() override {
        ShopDatabase::SetUp();
        db->Execute(QStringLiteral("DELETE FROM tienda"));
        db->Execute(QStringLiteral("INSERT INTO tienda VALUES (1, 'CENTRO', 'CALLE 1')"));
        db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'PUERTO', 'CALLE 2')"));
    }
    QStringList Stores() {
        return Rows(QStringLiteral("SELECT * FROM tienda ORDER BY codigo_tienda"),
                    {QStringLiteral("codigo_tienda"), QStringLiteral("nombre_tienda"), QStringLiteral("direccion_tienda")});
    }
};

// The statement shapes the windows build from a typed text.
struct Shape {
    const char* name;
    int error; // the syntax error of the statement
    std::function<QString(const QString&)> build;
    bool query;
};

const std::vector<Shape>& Shapes() {
    static const std::vector<Shape> shapes = {
        {"insert", 3134, [](const QString& t) { return "INSERT INTO tienda VALUES (3, " + vel::sql::ComillasMayusculas(t) + ", " + vel::sql::Comillas(t) + ")"; }, false},
        {"update", 3144, [](const QString& t) { return "UPDATE tienda SET nombre_tienda = " + vel::sql::Comillas(t) + ", direccion_tienda = '' WHERE codigo_tienda = 1"; }, false},
        {"update by text", 3144, [](const QString& t) { return "UPDATE tienda SET direccion_tienda = 'X' WHERE nombre_tienda = " + vel::sql::Comillas(t); }, false},
        {"delete", 3075, [](const QString& t) { return "DELETE FROM tienda WHERE nombre_tienda = " + vel::sql::Comillas(t) + " AND codigo_tienda = 1"; }, false},
        {"delete *", 3075, [](const QString& t) { return "delete *  from tienda where nombre_tienda=" + vel::sql::Comillas(t); }, false},
        {"select", 3075, [](const QString& t) { return "SELECT * FROM tienda WHERE nombre_tienda = " + vel::sql::Comillas(t) + " ORDER BY codigo_tienda"; }, true},
        {"like", 3075, [](const QString& t) { return "SELECT * FROM tienda WHERE nombre_tienda LIKE " + vel::sql::Comillas("*" + t + "*"); }, true},
    };
    return shapes;
}

} // namespace

TEST_F(Injection, ATextWithAnApostropheFailsAsTheStatementsSyntaxErrorAndChangesNothing) {
    const QStringList before = Stores();
    for (const Shape& shape : Shapes()) {
        for (const QString& texto : kCorpus) {
            const QString sentencia = shape.build(texto);
            const auto run = [&] {
                if (shape.query) db->OpenRecordset(sentencia);
                else db->Execute(sentencia);
            };
            EXPECT_EQ(ErrorOf(run), shape.error) << shape.name << ": " << sentencia.toStdString();
            EXPECT_EQ(Stores(), before) << shape.name << ": " << sentencia.toStdString();
        }
    }
}

// The words are those of a plain apostrophe: the hostile text gets no other
// message than O'BRIEN does.
TEST_F(Injection, TheMessageIsTheSameAsForAPlainApostrophe) {
    const auto insert = [&](const QString& t) {
        return DescriptionOf([&] { db->Execute("INSERT INTO tienda VALUES (3, " + vel::sql::Comillas(t) + ", '')"); });
    };
    EXPECT_EQ(insert(QStringLiteral("x' OR '1'='1")), insert(QStringLiteral("O'BRIEN")));
    EXPECT_EQ(insert(QStringLiteral("x' OR '1'='1")), QStringLiteral("Error de sintaxis en la instrucción INSERT INTO."));
    const QString plain = DescriptionOf([&] {
        db->OpenRecordset("SELECT * FROM tienda WHERE nombre_tienda = " + vel::sql::Comillas(QStringLiteral("O'B")));
    });
    EXPECT_EQ(plain, QStringLiteral("Error de sintaxis (falta operador) en la expresión de consulta 'nombre_tienda = 'O'B''."));
}

TEST_F(Injection, ATextWithoutAnApostropheIsStoredAndFoundAsTyped) {
    for (const QString& texto : kHarmless) {
        db->Execute("DELETE FROM tienda WHERE codigo_tienda = 3");
        db->Execute("INSERT INTO tienda VALUES (3, " + vel::sql::Comillas(texto) + ", '')");
        auto rs = db->OpenRecordset("SELECT * FROM tienda WHERE nombre_tienda = " + vel::sql::Comillas(texto));
        ASSERT_FALSE(rs->Eof()) << texto.toStdString();
        EXPECT_EQ(rs->Fields(QStringLiteral("nombre_tienda")).str(), texto);
        EXPECT_EQ(rs->Fields(QStringLiteral("codigo_tienda")).num(), 3);
        rs->MoveNext();
        EXPECT_TRUE(rs->Eof()) << texto.toStdString();
    }
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tienda"), {QStringLiteral("codigo_tienda")}).size(), 3);
}

// A value quoted by hand, not through sql::Comillas, is still refused when it
// brings a comment marker: the rest of the statement can't be cut off.
TEST_F(Injection, ACommentCannotCutOffTheRestOfAStatement) {
    const QStringList before = Stores();
    EXPECT_EQ(ErrorOf([&] {
                  db->Execute(QStringLiteral("UPDATE tienda SET nombre_tienda = 'X' --', direccion_tienda = '' WHERE codigo_tienda = 1"));
              }),
              3144);
    EXPECT_EQ(Stores(), before);
}
