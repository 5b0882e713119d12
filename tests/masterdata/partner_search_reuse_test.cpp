// The search piece on a window other than the customer and supplier windows:
// a supplier's data shown read-only, as on the account card, with the four
// lists and no VAT, store, tariff, discount or sales-agent controls at all.
// The piece needs the controls of its table's fields and of the lookups the
// window has, and nothing more.
#include "core/session.h"
#include "core/store_fixture.h"
#include "core/window_controls.h"
#include "masterdata/partner_search.h"
#include "runtime/msgbox.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// A window built by hand: a control for each field of the supplier's record,
// the four lists, and the labels of bank, branch and payment term.
class FichaProveedor : public QWidget {
public:
    FichaProveedor() {
        setObjectName(QStringLiteral("FormFichasProveedores"));
        auto* layout = new QVBoxLayout(this);
        for (const vel::PartnerField& f : vel::Proveedores().Fields()) {
            const QString name = QLatin1String(f.control);
            QWidget* w = nullptr;
            if (name.startsWith(QLatin1String("Check"))) w = new QCheckBox(this);
            else if (name == QLatin1String("Textobservaciones")) w = new QPlainTextEdit(this);
            else w = new QLineEdit(this);
            w->setObjectName(name);
            layout->addWidget(w);
        }
        for (const char* name : {"Combonif", "Combocodigo", "Combonombrefiscal", "Combonombrecomercial"}) {
            auto* c = new vb::ComboBox(this);
            c->setObjectName(QLatin1String(name));
            layout->addWidget(c);
        }
        for (const char* name : {"Labelbanco", "Labelsucursal", "Labelformapago"}) {
            auto* l = new QLabel(this);
            l->setObjectName(QLatin1String(name));
            layout->addWidget(l);
        }
    }
    QString Text(const char* name) { return findChild<QLineEdit*>(QLatin1String(name))->text(); }
    QString Caption(const char* name) { return findChild<QLabel*>(QLatin1String(name))->text(); }
};

class PartnerSearchReused : public veltest::ShopDatabase {
protected:
    void SetUp() override {
        ShopDatabase::SetUp();
        vel::BaseDatos = db.get();
        db->Execute("INSERT INTO bancos VALUES ('0049', 'BANCO DEL NORTE')");
        db->Execute("INSERT INTO bancos_sucursales VALUES ('0012', '0049', 'OFICINA PORTELAS', 'RUA NOVA 1')");
        db->Execute("INSERT INTO proveedores VALUES ('P1', 'B111', 'LUIS', 'OTERO', 'NORTE', '', 'LUGO', '', '', "
                    "27003, 0, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '0049', 12, 07, 0000000099, "
                    "10, 0, '30', 1, 'SUMINISTROS NORTE SL', '01/02/2024', '', 'ES91')");
        db->Execute("INSERT INTO proveedores VALUES ('P2', 'C222', 'ANA', '', 'SUR', '', '', '', '', "
                    "0, 0, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '', '', 00, 0000000000, "
                    "0, 0, 'ZZ', 0, 'SUR SL', '02/02/2024', '', '')");
    }
    void TearDown() override { vel::BaseDatos = nullptr; }
};

TEST_F(PartnerSearchReused, AWindowWithoutVatOrStoreFindsAndShowsTheSupplier) {
    FichaProveedor w;
    vel::PartnerView vista(&w, vel::Proveedores(), {});
    vel::PartnerLists listas(&w, vel::Proveedores(), [&] { vista.muestradatos(); });
    QObject::connect(listas.Combocodigo, &vb::ComboBox::Click, [&] { listas.Lista_Click("CODIGO"); });
    listas.Llenar();
    listas.Lista_GotFocus("CODIGO");
    listas.Combocodigo->SetListIndex(0);
    EXPECT_EQ(w.Text("Textnif"), "B111");
    EXPECT_EQ(listas.Combonif->Text(), "B111");
    EXPECT_EQ(w.Text("Textnombrefiscal"), "SUMINISTROS NORTE SL");
    EXPECT_EQ(w.Text("Textsucursal"), "0012");
    EXPECT_EQ(w.Text("Textdigitocontrol"), "07");
    EXPECT_EQ(w.Text("Textnumerocuenta"), "0000000099");
    EXPECT_EQ(w.Caption("Labelbanco"), "BANCO DEL NORTE");
    EXPECT_EQ(w.Caption("Labelsucursal"), "OFICINA PORTELAS");
    EXPECT_EQ(w.Caption("Labelformapago"), "30 DIAS");
    EXPECT_TRUE(w.findChild<QCheckBox*>("Checkmailing")->isChecked());
    listas.Combocodigo->SetListIndex(1);
    EXPECT_EQ(w.Text("Textnif"), "C222");
    EXPECT_EQ(w.Caption("Labelbanco"), "");
    EXPECT_EQ(w.Caption("Labelformapago"), "No existe la forma de pago. Por favor, revíselo");
}

// The piece says which control a window lacks, by name, when it is made.
TEST_F(PartnerSearchReused, AMissingControlIsNamedWhenThePieceIsMade) {
    FichaProveedor w;
    delete w.findChild<QLineEdit*>("Textsucursal");
    try {
        vel::PartnerView vista(&w, vel::Proveedores(), {});
        FAIL() << "no error";
    } catch (const vel::ControlFaltante& e) {
        EXPECT_NE(std::string(e.what()).find("Textsucursal"), std::string::npos) << e.what();
    }
    // A code box without the label its name goes to.
    FichaProveedor otra;
    delete otra.findChild<QLabel*>("Labelformapago");
    try {
        vel::PartnerView vista(&otra, vel::Proveedores(), {});
        FAIL() << "no error";
    } catch (const vel::ControlFaltante& e) {
        EXPECT_NE(std::string(e.what()).find("Labelformapago"), std::string::npos) << e.what();
    }
    delete w.findChild<vb::ComboBox*>("Combonombrecomercial");
    try {
        vel::PartnerLists listas(&w, vel::Proveedores(), [] {});
        FAIL() << "no error";
    } catch (const vel::ControlFaltante& e) {
        EXPECT_NE(std::string(e.what()).find("Combonombrecomercial"), std::string::npos) << e.what();
    }
}

} // namespace
