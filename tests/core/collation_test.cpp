// Names compared and ordered as a Spanish shop expects: no regard to case or
// accents, and Ñ as a letter of its own after N.
#include "store_fixture.h"

using veltest::ShopDatabase;

using SpanishText = ShopDatabase;

namespace {
const QStringList kName{QStringLiteral("nombre_operador")};
}

TEST_F(SpanishText, EqualityIgnoresCaseAlsoForEnyeAndAccents) {
    db->Execute(QStringLiteral("INSERT INTO operador VALUES (2, 'ÑANDÚ', '')"));
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM operador WHERE nombre_operador = 'ñandú'"), kName), QStringList{QStringLiteral("ÑANDÚ")});
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM operador WHERE nombre_operador = 'Ñandu'"), kName), QStringList{QStringLiteral("ÑANDÚ")});
    // N and Ñ are different letters.
    EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM operador WHERE nombre_operador = 'NANDU'"), kName).isEmpty());
}

TEST_F(SpanishText, ANifTypedInLowerCaseFindsTheCustomer) {
    db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'PEÑÍSCOLA', '')"));
    EXPECT_EQ(Rows(QStringLiteral("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = 'peñiscola'"), {QStringLiteral("codigo_tienda")}),
              QStringList{QStringLiteral("2")});
}

TEST_F(SpanishText, NotEqualIgnoresCaseToo) {
    db->Execute(QStringLiteral("INSERT INTO operador VALUES (2, 'josé', '')"));
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM operador WHERE nombre_operador <> 'JOSE' ORDER BY codigo_operador"), kName),
              QStringList{QStringLiteral("OPERADOR")});
}

TEST_F(SpanishText, OrderPutsEnyeAfterNAndIgnoresCaseAndAccents) {
    db->Execute(QStringLiteral("DELETE FROM operador"));
    int code = 1;
    for (const char* name : {"OSO", "ñu", "NUBE", "ábaco", "Zorro", "ÑANDÚ", "nata", "ACEITE", "Óleo"})
        db->Execute(QStringLiteral("INSERT INTO operador VALUES (%1, '%2', '')").arg(code++).arg(QString::fromUtf8(name)));
    const QStringList expected{QStringLiteral("ábaco"), QStringLiteral("ACEITE"), QStringLiteral("nata"), QStringLiteral("NUBE"),
                               QStringLiteral("ÑANDÚ"), QStringLiteral("ñu"),     QStringLiteral("Óleo"), QStringLiteral("OSO"),
                               QStringLiteral("Zorro")};
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM operador ORDER BY nombre_operador"), kName), expected);
    // Lower-case keywords and "asc" give the same order.
    EXPECT_EQ(Rows(QStringLiteral("select * from operador order by nombre_operador asc"), kName), expected);
}

TEST_F(SpanishText, PlainCodesOrderAsTheCollatorOrdersThem) {
    // Codes of letters, digits and blanks take a quick road; it must agree
    // with the full comparison of names that carry other characters.
    db->Execute(QStringLiteral("DELETE FROM operador"));
    const QStringList names{QStringLiteral("a 1"), QStringLiteral("A1"),  QStringLiteral("a-1"), QStringLiteral("B"),
                            QStringLiteral("0012"), QStringLiteral("12"), QStringLiteral("ab"),  QStringLiteral("Ab c"),
                            QStringLiteral("ábc"), QStringLiteral("AÑO"), QStringLiteral("ANO"), QStringLiteral("a.1")};
    int code = 1;
    for (const QString& n : names) db->Execute(QStringLiteral("INSERT INTO operador VALUES (%1, '%2', '')").arg(code++).arg(n));
    const QStringList ordered = Rows(QStringLiteral("SELECT * FROM operador ORDER BY nombre_operador, codigo_operador"), kName);
    const QStringList expected{QStringLiteral("0012"), QStringLiteral("12"),  QStringLiteral("a 1"), QStringLiteral("a-1"),
                               QStringLiteral("a.1"),  QStringLiteral("A1"),  QStringLiteral("ab"),  QStringLiteral("Ab c"),
                               QStringLiteral("ábc"),  QStringLiteral("ANO"), QStringLiteral("AÑO"), QStringLiteral("B")};
    EXPECT_EQ(ordered, expected);
}

TEST_F(SpanishText, DatesOrderByTheCalendar) {
    const QString entry = QStringLiteral(
        "INSERT INTO detalle_fichas_clientes VALUES (2024, '11111111H', 'C1', %1, '1', 'AV', '', 'CON', 'APUNTE', '%2', 10.00, 0.00, '')");
    db->Execute(entry.arg(1).arg(QStringLiteral("15/03/2024")));
    db->Execute(entry.arg(2).arg(QStringLiteral("02/11/2023")));
    db->Execute(entry.arg(3).arg(QStringLiteral("01/04/2024")));
    db->Execute(entry.arg(4).arg(QStringLiteral("31/01/2024")));
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM detalle_fichas_clientes ORDER BY fecha_detalle_fichas_clientes"),
                   {QStringLiteral("numero_detalle_fichas_clientes")}),
              (QStringList{QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("1"), QStringLiteral("3")}));
    // Text order would put 31/01/2024 last.
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM detalle_fichas_clientes WHERE fecha_detalle_fichas_clientes > '01/01/2024' "
                                  "ORDER BY numero_detalle_fichas_clientes"),
                   {QStringLiteral("numero_detalle_fichas_clientes")}),
              (QStringList{QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("4")}));
}

TEST_F(SpanishText, AKeyIsUniqueWithoutRegardToCase) {
    db->Execute(QStringLiteral("INSERT INTO formapago VALUES ('abc', 'UNO', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
    EXPECT_EQ(veltest::ErrorOf([&] {
                  db->Execute(QStringLiteral("INSERT INTO formapago VALUES ('ABC', 'DOS', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
              }),
              3022);
}

// The payment-term list reads its entries back with their padding: the code of
// "30 /30 DIAS" is looked for as '30 ', and a name as padded to 50 characters.
TEST_F(SpanishText, BlanksAtTheEndOfATextDoNotCount) {
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM formapago WHERE codigo_formapago = '30 '"), {QStringLiteral("codigo_formapago")}),
              QStringList{QStringLiteral("30")});
    const QString padded = QStringLiteral("CONTADO") + QString(43, QLatin1Char(' '));
    EXPECT_EQ(Rows("SELECT * FROM formapago WHERE nombre_formapago = '" + padded + "'", {QStringLiteral("codigo_formapago")}),
              QStringList{QStringLiteral("CON")});
    // Blanks in front still count.
    EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM formapago WHERE codigo_formapago = ' 30'"), {QStringLiteral("codigo_formapago")}).isEmpty());
}
