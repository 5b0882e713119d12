// Finding a customer or a supplier by any of the four lists, and showing it:
// the piece the customer and supplier windows share with the account cards and
// the sales documents. Driven here on the customer and supplier windows, on a
// real database, without opening them (no Form_Load).
#include "core/session.h"
#include "core/store_fixture.h"
#include "masterdata/fclientes.h"
#include "masterdata/fproveedores.h"
#include "masterdata/partner_search.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

// Records every message box and answers OK.
// The window with its piece within reach.
template <class W>
class Open : public W {
public:
    using W::Listas;
    using W::Vista;
    QString Text(const char* name) {
        if (auto* t = vb::Control<QLineEdit>(this, QLatin1String(name))) return t->text();
        if (auto* l = vb::Control<QLabel>(this, QLatin1String(name))) return l->text();
        ADD_FAILURE() << name;
        return {};
    }
    void SetText(const char* name, const QString& text) { vb::Control<QLineEdit>(this, QLatin1String(name))->setText(text); }
    vb::ComboBox* List(const char* name) { return vb::Control<vb::ComboBox>(this, QLatin1String(name)); }
    QStringList Entries(const char* name) {
        QStringList out;
        for (int i = 0; i < List(name)->ListCount(); ++i) out << List(name)->List(i);
        return out;
    }
};

class PartnerSearch : public veltest::ShopDatabase {
protected:
    void SetUp() override {
        ShopDatabase::SetUp();
        vel::BaseDatos = db.get();
        vb::SetMessageBoxService(&boxes);
        db->Execute("INSERT INTO bancos VALUES ('0049', 'BANCO DEL NORTE')");
        db->Execute("INSERT INTO bancos_sucursales VALUES ('0012', '0049', 'OFICINA PORTELAS', 'RUA NOVA 1')");
    }
    void TearDown() override {
        vb::SetMessageBoxService(nullptr);
        vel::BaseDatos = nullptr;
    }
    // A customer row as the window writes it, with a few fields set.
    void Customer(const QString& table, const QString& code, const QString& nif, const QString& fiscal,
                  const QString& comercial, const QHash<QString, QString>& more = {}) {
        const vel::PartnerTable& t = table == "clientes" ? vel::Clientes() : vel::Proveedores();
        QHash<QString, QString> boxes{{"Textcodigo", code}, {"Textnif", nif}, {"Textnombrefiscal", fiscal},
                                      {"Textnombrecomercial", comercial}, {"Checkfacturable", "0"},
                                      {"Checkmailing", "0"}, {"Combotarifa", "1"}};
        for (auto it = more.begin(); it != more.end(); ++it) boxes[it.key()] = it.value();
        db->Execute(vel::PartnerInsert(t, [&](const QString& c) { return boxes.value(c); }));
    }
    veltest::RecordedBoxes boxes;
};

TEST_F(PartnerSearch, FourListsEachInItsOrderAndOneEmptyNameAtTheEnd) {
    Customer("clientes", "C2", "B222", "ZAPATERIA SUR SL", "");
    Customer("clientes", "C1", "A111", "FERRETERIA NORTE SL", "FERRETERIA");
    Customer("clientes", "C3", "C333", "ALMACENES ESTE SA", "");
    Open<vel::Fclientes> w;
    w.Listas.Llenar();
    EXPECT_EQ(w.Entries("Combonif"), (QStringList{"A111", "B222", "C333"}));
    EXPECT_EQ(w.Entries("Combocodigo"), (QStringList{"C1", "C2", "C3"}));
    EXPECT_EQ(w.Entries("Combonombrefiscal"), (QStringList{"ALMACENES ESTE SA", "FERRETERIA NORTE SL", "ZAPATERIA SUR SL"}));
    // Two customers with no commercial name: one empty entry, after the others.
    EXPECT_EQ(w.Entries("Combonombrecomercial"), (QStringList{"FERRETERIA", ""}));
}

TEST_F(PartnerSearch, EachListFindsTheRecordAndSetsTheOtherThree) {
    Customer("clientes", "C1", "A111", "FERRETERIA NORTE SL", "FERRETERIA");
    Customer("clientes", "C2", "B222", "ZAPATERIA SUR SL", "ZAPATOS");
    Open<vel::Fclientes> w;
    w.Listas.Llenar();
    struct Case { const char* word; const char* list; int index; };
    for (const Case& c : {Case{"NIF", "Combonif", 1}, Case{"CODIGO", "Combocodigo", 1},
                          Case{"FISCAL", "Combonombrefiscal", 1}, Case{"COMERCIAL", "Combonombrecomercial", 1}}) {
        // Start from the first customer, then choose the second in the list:
        // choosing an entry raises the list's Click.
        w.Listas.CampoBusqueda = "NIF";
        w.List("Combonif")->SetListIndex(0);
        EXPECT_EQ(w.Text("Textnif"), "A111") << c.word;
        w.Listas.Lista_GotFocus(c.word);
        w.List(c.list)->SetListIndex(c.index);
        EXPECT_EQ(w.Text("Textnif"), "B222") << c.word;
        EXPECT_EQ(w.Text("Textcodigo"), "C2") << c.word;
        EXPECT_EQ(w.Text("Textnombrefiscal"), "ZAPATERIA SUR SL") << c.word;
        EXPECT_EQ(w.Text("Textnombrecomercial"), "ZAPATOS") << c.word;
        for (const char* list : {"Combonif", "Combocodigo", "Combonombrefiscal", "Combonombrecomercial"})
            EXPECT_EQ(w.List(list)->ListIndex(), 1) << c.word << " " << list;
    }
    EXPECT_TRUE(boxes.texts.isEmpty());
}

// A list chosen while another list is in use searches nothing.
TEST_F(PartnerSearch, AListNotInUseSearchesNothing) {
    Customer("clientes", "C1", "A111", "UNO", "UNO");
    Customer("clientes", "C2", "B222", "DOS", "DOS");
    Open<vel::Fclientes> w;
    w.Listas.Llenar();
    w.Listas.CampoBusqueda = "CODIGO";
    w.List("Combonif")->SetListIndex(1);
    EXPECT_EQ(w.Text("Textnif"), "");
    w.Listas.Lista_GotFocus("NIF");
    EXPECT_EQ(w.Listas.CampoBusqueda, "NIF");
}

// The other lists are set on the first entry equal to the record's column, as
// a walk from entry 0 finds it, also after entries are added to a list.
TEST_F(PartnerSearch, TheOtherListsAreSetOnTheFirstEqualEntry) {
    Customer("clientes", "C1", "A111", "LA MISMA SL", "UNO");
    Customer("clientes", "C2", "B222", "LA MISMA SL", "DOS");
    Customer("clientes", "C3", "C333", "OTRA SL", "TRES");
    Open<vel::Fclientes> w;
    w.Listas.Llenar();
    w.Listas.CampoBusqueda = "NIF";
    w.List("Combonif")->SetListIndex(1);
    EXPECT_EQ(w.List("Combonombrefiscal")->ListIndex(), 0);
    // A name added at the end (a name changed while modifying) is found there.
    w.Listas.AddItem(w.List("Combonombrefiscal"), "NUEVA SL");
    db->Execute("UPDATE clientes SET nombrefiscal_cliente = 'NUEVA SL' WHERE nif_cliente = 'C333'");
    w.List("Combonif")->SetListIndex(2);
    EXPECT_EQ(w.List("Combonombrefiscal")->ListIndex(), 3);
    // An entry added to a list by other means is seen too.
    w.List("Combocodigo")->AddItem("C9");
    db->Execute("UPDATE clientes SET codigo_cliente = 'C9' WHERE nif_cliente = 'C333'");
    w.List("Combonif")->SetListIndex(2);
    EXPECT_EQ(w.List("Combocodigo")->ListIndex(), 3);
    EXPECT_EQ(w.Text("Textcodigo"), "C9");
    // A column no entry equals: the first entry is chosen.
    db->Execute("UPDATE clientes SET nombrecomercial_cliente = 'NINGUNO' WHERE nif_cliente = 'C333'");
    w.List("Combonif")->SetListIndex(2);
    EXPECT_EQ(w.List("Combonombrecomercial")->ListIndex(), 0);
}

TEST_F(PartnerSearch, ATextNotFoundIsReportedInTheTablesWords) {
    Customer("clientes", "C1", "A111", "UNO", "UNO");
    Customer("proveedores", "P1", "A111", "UNO", "UNO");
    Open<vel::Fclientes> clientes;
    clientes.Listas.Llenar();
    clientes.Listas.CampoBusqueda = "FISCAL";
    clientes.List("Combonombrefiscal")->SetText("NADIE");
    clientes.Listas.buscanif();
    Open<vel::Fproveedores> proveedores;
    proveedores.Listas.Llenar();
    proveedores.Listas.CampoBusqueda = "FISCAL";
    proveedores.List("Combonombrefiscal")->SetText("NADIE");
    proveedores.Listas.buscanif();
    EXPECT_EQ(boxes.texts, (QStringList{"No se ha encontrado el Cliente.", "No se ha encontrado el proveedor."}));
    // Nothing else happened: the box took the text, the other lists stayed.
    EXPECT_EQ(clientes.Text("Textnombrefiscal"), "NADIE");
    EXPECT_EQ(clientes.Text("Textnif"), "");
    EXPECT_EQ(clientes.Listas.SentenciaBusqueda("COMERCIAL", "X"),
              "SELECT * FROM clientes WHERE nombrecomercial_cliente = 'X'");
    EXPECT_EQ(proveedores.Listas.SentenciaBusqueda("CODIGO", "X"),
              "SELECT * FROM proveedores WHERE codigo_proveedor = 'X'");
}

// Each field through its mask: 0 shows as empty through "#", the bank and the
// branch through "0000", the control digits "00", the billing limit "#.###".
TEST_F(PartnerSearch, TheRecordIsShownThroughTheMasks) {
    Customer("clientes", "C1", "A111", "UNO", "UNO",
             {{"Textcodigopostal", "01234"}, {"Texttelefono1", ""}, {"Textbanco", "49"}, {"Textsucursal", "12"},
              {"Textdigitocontrol", "5"}, {"Textnumerocuenta", "77"}, {"Textlimitefacturacion", "1500"},
              {"Combotarifa", "3"}, {"Checkfacturable", "1"}, {"Textformapago", "CON"},
              {"Textcodigoiva", "1"}, {"Textcodigotienda", "1"}, {"Textalta", "02/03/2024"}});
    Open<vel::Fclientes> w;
    w.SetText("Textnif", "a111");
    w.Vista.muestradatos();
    EXPECT_EQ(w.Text("Textcodigopostal"), "1234");
    EXPECT_EQ(w.Text("Texttelefono1"), "");
    EXPECT_EQ(w.Text("Textbanco"), "0049");
    EXPECT_EQ(w.Text("Textsucursal"), "0012");
    EXPECT_EQ(w.Text("Textdigitocontrol"), "05");
    EXPECT_EQ(w.Text("Textnumerocuenta"), "0000000077");
    EXPECT_EQ(w.Text("Textlimitefacturacion"), "1500.");
    EXPECT_EQ(w.Text("Textalta"), "02/03/2024");
    EXPECT_EQ(w.List("Combotarifa")->ListIndex(), 2);
    EXPECT_TRUE(vb::Control<QCheckBox>(&w, "Checkfacturable")->isChecked());
    // The names of the codes.
    EXPECT_EQ(w.Text("Labelbanco"), "BANCO DEL NORTE");
    EXPECT_EQ(w.Text("Labelsucursal"), "OFICINA PORTELAS");
    EXPECT_EQ(w.Text("Labelformapago"), "CONTADO");
    EXPECT_EQ(w.Text("Labeltienda"), "CENTRAL");
    EXPECT_EQ(w.Text("Labelivaiva"), "21");
    EXPECT_EQ(w.Text("Labelivare"), "5.2");
    EXPECT_EQ(w.Text("Labelivaret"), "0");
    EXPECT_TRUE(vb::Control<QLabel>(&w, "Labeliva")->isHidden());
}

TEST_F(PartnerSearch, CodesWithNoRowSayItInTheirLabels) {
    Customer("clientes", "C1", "A111", "UNO", "UNO",
             {{"Textbanco", "1"}, {"Textsucursal", "1"}, {"Textformapago", "ZZ"}, {"Textcodigoiva", "9"},
              {"Textcodigotienda", "7"}, {"Combotarifa", "0"}});
    Open<vel::Fclientes> w;
    w.SetText("Textnif", "A111");
    w.Vista.muestradatos();
    EXPECT_EQ(w.Text("Labelbanco"), "No existe el banco. Por favor, revíselo");
    EXPECT_EQ(w.Text("Labelsucursal"), "No existe la sucursal. Por favor, revíselo");
    EXPECT_EQ(w.Text("Labelformapago"), "No existe la forma de pago. Por favor, revíselo");
    EXPECT_EQ(w.Text("Labeliva"), "No existe el IVA. Por favor, revíselo");
    EXPECT_EQ(w.Text("Labeltienda"), "No existe esa tienda. Por favor, revíselo");
    // A tariff of 0 leaves the list with nothing chosen.
    EXPECT_EQ(w.List("Combotarifa")->ListIndex(), -1);
    EXPECT_TRUE(boxes.texts.isEmpty());
}

// The supplier has no VAT, store, tariff or discounts: what the user left in
// those boxes stays, and only then are VAT and store looked up.
TEST_F(PartnerSearch, SupplierShowsWhatItsRecordHas) {
    Customer("proveedores", "P1", "B1", "UNO", "UNO", {{"Textsucursal", "0012"}, {"Textbanco", "0049"}});
    Open<vel::Fproveedores> w;
    w.SetText("Textnif", "B1");
    w.SetText("Textdescuentoarticulo", "7");
    w.SetText("Textcodigotienda", "1");
    w.Vista.muestradatos();
    EXPECT_EQ(w.Text("Textsucursal"), "0012"); // stored as 12, shown through "0000"
    EXPECT_EQ(w.Text("Labelsucursal"), "OFICINA PORTELAS");
    EXPECT_EQ(w.Text("Textdescuentoarticulo"), "7");
    EXPECT_EQ(w.Text("Textcodigoiva"), "");
    EXPECT_EQ(w.Text("Labeliva"), "");
    EXPECT_EQ(w.Text("Labeltienda"), "CENTRAL");
}

TEST_F(PartnerSearch, TheLookupStatementsAsTheWindowsSendThem) {
    Open<vel::Fclientes> c;
    Open<vel::Fproveedores> p;
    const auto& l = vel::PartnerView::Lookups();
    c.SetText("Textbanco", "0049");
    c.SetText("Textsucursal", "0012");
    c.SetText("Textcodigotienda", "2a");
    c.SetText("Textcodigoiva", "1");
    EXPECT_EQ(c.Vista.SentenciaCodigo(l[0]), "SELECT * FROM bancos WHERE codigo_banco = '0049'");
    EXPECT_EQ(c.Vista.SentenciaCodigo(l[1]),
              "SELECT * FROM bancos_sucursales WHERE codigo_sucursal = '0012' AND codigo_banco = '0049'");
    EXPECT_EQ(c.Vista.SentenciaCodigo(l[3]), "SELECT * FROM iva WHERE codigo_iva = 1");
    EXPECT_EQ(c.Vista.SentenciaCodigo(l[4]), "SELECT * FROM tienda WHERE codigo_tienda = 2");
    EXPECT_EQ(c.Vista.SentenciaLista(l[1]),
              "SELECT * FROM bancos_sucursales WHERE codigo_banco = '0049' ORDER BY nombre_sucursal");
    EXPECT_EQ(c.Vista.SentenciaNombre(l[4], "CENTRAL"), "SELECT * FROM tienda WHERE nombre_tienda= 'CENTRAL'");
    // The VAT list: the customer window lists the codes, the supplier window
    // the percentages, and each finds its row by what it lists.
    EXPECT_EQ(c.Vista.SentenciaNombre(l[3], "2"), "SELECT * FROM iva WHERE codigo_iva = 2");
    EXPECT_EQ(p.Vista.SentenciaNombre(l[3], "21"), "SELECT * FROM iva WHERE iva = 21");
    EXPECT_EQ(p.Vista.SentenciaLista(l[3]), "SELECT * FROM iva ORDER BY iva");
}

} // namespace
