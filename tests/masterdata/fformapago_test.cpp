// Payment terms window: the fixed-column list entries, read back by position
// with their padding, and the statements written from the boxes.
#include "masterdata/fformapago.h"
#include "runtime/vb.h"

#include <QSignalBlocker>
#include <gtest/gtest.h>

namespace {

class FormaPagoAbierta : public vel::Fformapago {
public:
    using vel::Fformapago::SentenciaEntradaElegida;
    using vel::Fformapago::SentenciaInsertar;
    using vel::Fformapago::SentenciaModificar;
    using vel::Fformapago::SentenciaEliminar;
    QLineEdit* caja(const char* name) { return vb::Control<QLineEdit>(this, QString::fromLatin1(name)); }
    vb::ComboBox* lista() { return vb::Control<vb::ComboBox>(this, QStringLiteral("Combocodigo")); }
    // Chooses an entry without reading its record (no database here).
    void elegir(const QString& entrada) {
        lista()->AddItem(entrada);
        QSignalBlocker quieto(lista());
        lista()->setCurrentIndex(lista()->ListCount() - 1);
    }
    QRadioButton* opcion(const char* name) { return vb::Control<QRadioButton>(this, QString::fromLatin1(name)); }
};

// By code, "30 /30 DIAS": the first three characters, blank included.
TEST(Fformapago, ByCodeTheEntryIsSearchedWithItsThirdColumnBlank) {
    FormaPagoAbierta w;
    w.elegir(vb::Left(QStringLiteral("30") + vb::Space(54), 3) + "/30 DIAS");
    EXPECT_EQ(w.lista()->Text(), QStringLiteral("30 /30 DIAS"));
    EXPECT_EQ(w.SentenciaEntradaElegida(), QStringLiteral("SELECT * FROM formapago WHERE codigo_formapago = '30 '"));
}

// By name, "CONTADO" and 43 blanks, "/CON": the name is searched padded to 50.
TEST(Fformapago, ByNameTheEntryIsSearchedWithItsPadding) {
    FormaPagoAbierta w;
    vb::SetValue(w.opcion("OptionN"), true);
    w.elegir(QStringLiteral("CONTADO") + vb::Space(43) + "/CON");
    EXPECT_EQ(w.SentenciaEntradaElegida(),
              QStringLiteral("SELECT * FROM formapago WHERE nombre_formapago = 'CONTADO") + vb::Space(43) + "'");
}

TEST(Fformapago, NewTermWritesTheTwelveDaysInOrder) {
    FormaPagoAbierta w;
    w.caja("Textcodigo")->setText("r3");
    w.caja("Textnombre")->setText("Tres recibos");
    w.caja("Textvencimientos")->setText("3");
    w.caja("Textven(0)")->setText("30");
    w.caja("Textven(1)")->setText("60");
    w.caja("Textven(2)")->setText("90");
    // An old day left in a box beyond the due dates still goes in.
    w.caja("Textven(4)")->setText("150");
    EXPECT_EQ(w.SentenciaInsertar(),
              QStringLiteral("INSERT INTO formapago VALUES ('R3', 'TRES RECIBOS', 3, 30, 60, 90, 0, 150, 0, 0, 0, 0, 0, 0, 0)"));
    EXPECT_EQ(w.SentenciaModificar(),
              QStringLiteral("UPDATE formapago SET  nombre_formapago = 'TRES RECIBOS', vencimientos_formapago = 3, "
                             "dias01_formapago = 30, dias02_formapago = 60, dias03_formapago = 90, "
                             "dias04_formapago = 0, dias05_formapago = 150, dias06_formapago = 0, "
                             "dias07_formapago = 0, dias08_formapago = 0, dias09_formapago = 0, "
                             "dias10_formapago = 0, dias11_formapago = 0, dias12_formapago = 0 "
                             "WHERE codigo_formapago = 'R3'"));
    // The delete takes the code as it stands, not upper-cased.
    EXPECT_EQ(w.SentenciaEliminar(), QStringLiteral("DELETE FROM formapago WHERE codigo_formapago = 'r3'"));
}

// The code list lies exactly over the code box.
TEST(Fformapago, CodeListCoversTheCodeBox) {
    FormaPagoAbierta w;
    w.show();
    w.lista()->setVisible(true);
    EXPECT_EQ(w.lista()->geometry(), w.caja("Textcodigo")->geometry());
    EXPECT_GT(w.lista()->width(), 200);
}

} // namespace
