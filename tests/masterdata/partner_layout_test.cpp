// Customers and suppliers: one layout for both windows. Four framed groups and
// the frame of the buttons; every field with its limit; each of the ten lists
// over its box and wider than it; the tab order through the frames.
#include "masterdata/fclientes.h"
#include "masterdata/fproveedores.h"
#include "runtime/forms.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

// The limits of the fields, as both windows have them (but the NIF's).
const std::vector<std::pair<const char*, int>> kLimits = {
    {"Textcodigo", 8},          {"Textnombre", 30},           {"Textapellidos", 40},
    {"Textnombrecomercial", 50}, {"Textdomicilio", 50},        {"Textpoblacion", 30},
    {"Textprovincia", 30},      {"Textnacionalidad", 30},     {"Textcodigopostal", 5},
    {"Texttelefono1", 9},       {"Texttelefono2", 9},         {"Textmovil1", 9},
    {"Textmovil2", 9},          {"Textweb", 50},              {"Textemail", 30},
    {"Textfax", 9},             {"Textcontacto1", 50},        {"Textcontacto1telefono", 9},
    {"Textcontacto1email", 30}, {"Textcontacto2", 50},        {"Textcontacto2telefono", 9},
    {"Textcontacto2email", 30}, {"Textcontacto3", 50},        {"Textcontacto3telefono", 9},
    {"Textcontacto3email", 30}, {"Textbanco", 4},             {"Textsucursal", 4},
    {"Textdigitocontrol", 2},   {"Textnumerocuenta", 10},     {"Textdiacobro1", 2},
    {"Textdiacobro2", 2},       {"Textformapago", 3},         {"Textdescuentoarticulo", 2},
    {"Textdescuentofactura", 2}, {"Textcodigoiva", 2},        {"Textlimitefacturacion", 10},
    {"Textcodigotienda", 2},    {"Textcodigocomercial", 8},   {"Textnombrefiscal", 50},
    {"Textalta", 10},           {"TextIban", 4},
};

template <class W>
W* C(QWidget* w, const char* name) {
    W* c = vb::Control<W>(w, QString::fromLatin1(name));
    EXPECT_NE(c, nullptr) << name;
    return c;
}

TEST(PartnerLayout, BothWindowsHaveEveryFieldWithItsLimit) {
    vel::Fclientes clientes;
    vel::Fproveedores proveedores;
    for (QWidget* w : {static_cast<QWidget*>(&clientes), static_cast<QWidget*>(&proveedores)}) {
        for (const auto& [name, limit] : kLimits) {
            auto* box = C<QLineEdit>(w, name);
            if (box) {
                EXPECT_EQ(box->maxLength(), limit) << name;
            }
        }
        C<QPlainTextEdit>(w, "Textobservaciones");
        EXPECT_EQ(C<QCheckBox>(w, "Checkfacturable")->text(), QStringLiteral("Facturable"));
        EXPECT_EQ(C<QCheckBox>(w, "Checkmailing")->text(), QStringLiteral("Mailing"));
        auto* tarifa = C<vb::ComboBox>(w, "Combotarifa");
        EXPECT_FALSE(tarifa->isEditable());
        ASSERT_EQ(tarifa->ListCount(), 5);
        for (int i = 0; i < 5; ++i) EXPECT_EQ(tarifa->List(i), QString::number(i + 1));
    }
}

TEST(PartnerLayout, WhatTellsTheTwoWindowsApart) {
    vel::Fclientes clientes;
    vel::Fproveedores proveedores;
    EXPECT_EQ(clientes.objectName(), QStringLiteral("Fclientes"));
    EXPECT_EQ(clientes.Caption(), QStringLiteral("Mantenimiento de Clientes"));
    EXPECT_EQ(proveedores.objectName(), QStringLiteral("Fproveedores"));
    EXPECT_EQ(proveedores.Caption(), QStringLiteral("Mantenimiento de Proveedores"));
    EXPECT_EQ(C<QLineEdit>(&clientes, "Textnif")->maxLength(), 15);
    EXPECT_EQ(C<QLineEdit>(&proveedores, "Textnif")->maxLength(), 11);
    EXPECT_EQ(C<QLineEdit>(&clientes, "Textnumerocuenta")->text(), QStringLiteral("9999999999"));
    EXPECT_EQ(C<QLineEdit>(&proveedores, "Textnumerocuenta")->text(), QString());
}

// The supplier window keeps the controls of the fields it doesn't save, with
// their labels.
TEST(PartnerLayout, SupplierKeepsTheCustomerOnlyControlsAndTheirLabels) {
    vel::Fproveedores w;
    for (const char* name : {"Labeltarifa", "Labeldescuentoarticulo", "Labeldescuentofactura", "Labelcodigoiva",
                             "Labelre", "Labelret", "Labellimitefacturacion", "Labelcodigotienda",
                             "Labelcodigocomercial", "Labeldiacobro"})
        C<QLabel>(&w, name);
    EXPECT_EQ(C<QLabel>(&w, "Labeldescuentoarticulo")->text(), QStringLiteral("Dto. Artículos"));
    EXPECT_EQ(C<QLabel>(&w, "Labeldescuentofactura")->text(), QStringLiteral("Dto. Facturas"));
    EXPECT_EQ(C<QLabel>(&w, "Labelcodigoiva")->text(), QStringLiteral("IVA"));
    EXPECT_EQ(C<QLabel>(&w, "Labelre")->text(), QStringLiteral("R.E."));
    EXPECT_EQ(C<QLabel>(&w, "Labelret")->text(), QStringLiteral("Ret."));
    EXPECT_EQ(C<QLabel>(&w, "Labeltarifa")->text(), QStringLiteral("Tarifa"));
    EXPECT_EQ(C<QLabel>(&w, "Labellimitefacturacion")->text(), QStringLiteral("Límite facturación"));
    EXPECT_EQ(C<QLabel>(&w, "Labelcodigotienda")->text(), QStringLiteral("Tienda"));
    EXPECT_EQ(C<QLabel>(&w, "Labelcodigocomercial")->text(), QStringLiteral("Comercial"));
    EXPECT_EQ(C<QLabel>(&w, "Labeldiacobro")->text(), QStringLiteral("Días de Cobro"));
}

TEST(PartnerLayout, FourFramedGroupsAndTheButtons) {
    vel::Fclientes w;
    EXPECT_EQ(C<QGroupBox>(&w, "Framepersonales")->title(), QStringLiteral("Datos Personales"));
    EXPECT_EQ(C<QGroupBox>(&w, "Framecontactos")->title(), QStringLiteral("Contactos"));
    EXPECT_EQ(C<QGroupBox>(&w, "Framefacturacion")->title(), QStringLiteral("Datos Facturación"));
    EXPECT_EQ(C<QGroupBox>(&w, "Frameotros")->title(), QStringLiteral("Otros"));
    auto* botones = C<QFrame>(&w, "Framebotones");
    const std::vector<std::pair<const char*, const char*>> captions = {
        {"Commandnuevo", "&Nuevo"},       {"Commandmodificar", "&Modificar"}, {"Commandconsultar", "C&onsultar"},
        {"Commandborrar", "&Borrar"},     {"Commandaceptar", "&Aceptar"},     {"Commandcancelar", "&Cancelar"}};
    for (const auto& [name, caption] : captions) {
        auto* b = C<QPushButton>(botones, name);
        if (b) {
            EXPECT_EQ(b->text(), QString::fromUtf8(caption));
        }
    }
    EXPECT_FALSE(C<QPushButton>(&w, "Commandaceptar")->isEnabled());
    // Each field sits in its frame.
    EXPECT_NE(C<QLineEdit>(C<QGroupBox>(&w, "Framepersonales"), "Textnif"), nullptr);
    EXPECT_NE(C<QLineEdit>(C<QGroupBox>(&w, "Framecontactos"), "Textcontacto3email"), nullptr);
    EXPECT_NE(C<QLineEdit>(C<QGroupBox>(&w, "Framefacturacion"), "Textlimitefacturacion"), nullptr);
    EXPECT_NE(C<QLineEdit>(C<QGroupBox>(&w, "Frameotros"), "Textalta"), nullptr);
}

// Each list starts where its box starts, covers it and is wider; shown or
// hidden, it moves nothing else in the frame.
TEST(PartnerLayout, EachListLiesOverItsBoxAndIsWider) {
    const std::vector<std::pair<const char*, const char*>> pairs = {
        {"Combonif", "Textnif"},           {"Combocodigo", "Textcodigo"},
        {"Combonombrefiscal", "Textnombrefiscal"}, {"Combonombrecomercial", "Textnombrecomercial"},
        {"Combobanco", "Textbanco"},       {"Combosucursal", "Textsucursal"},
        {"Comboformapago", "Textformapago"}, {"Comboiva", "Textcodigoiva"},
        {"Combotienda", "Textcodigotienda"}, {"Combocomercial", "Textcodigocomercial"}};
    vel::Fclientes w;
    w.resize(1000, 660);
    w.show();
    for (const auto& [list, box] : pairs) C<vb::ComboBox>(&w, list)->hide();
    const QRect nif = C<QLineEdit>(&w, "Textnif")->geometry();
    for (const auto& [list, box] : pairs) {
        auto* l = C<vb::ComboBox>(&w, list);
        auto* b = C<QLineEdit>(&w, box);
        l->show();
        const QRect lg = l->geometry();
        const QRect bg = b->geometry();
        EXPECT_EQ(lg.left(), bg.left()) << list;
        EXPECT_TRUE(lg.contains(bg.center())) << list;
        EXPECT_GT(lg.width(), bg.width()) << list;
        EXPECT_EQ(C<QLineEdit>(&w, "Textnif")->geometry(), nif) << list;
        // Drawn over the box: the list comes later among the frame's children.
        const auto siblings = b->parentWidget()->children();
        EXPECT_GT(siblings.indexOf(l), siblings.indexOf(b)) << list;
        l->hide();
        EXPECT_EQ(b->geometry(), bg) << list;
    }
    // The editable lists are the two of names.
    for (const auto& [list, box] : pairs) {
        const bool names = QLatin1String(list) == "Combonombrefiscal" || QLatin1String(list) == "Combonombrecomercial";
        EXPECT_EQ(C<vb::ComboBox>(&w, list)->isEditable(), names) << list;
    }
}

// What a lookup label says, a short name or the invitation to a double click,
// moves no frame.
TEST(PartnerLayout, TheLabelsOfTheLookupsMoveNoFrame) {
    vel::Fclientes w;
    w.resize(1000, 600);
    w.show();
    const QRect personales = C<QGroupBox>(&w, "Framepersonales")->geometry();
    const QRect facturacion = C<QGroupBox>(&w, "Framefacturacion")->geometry();
    for (const char* label : {"Labelbanco", "Labelsucursal", "Labelformapago", "Labeliva", "Labeltienda"})
        C<QLabel>(&w, label)->setText(QStringLiteral("> > > Doble click para seleccionar < < <"));
    w.layout()->activate();
    EXPECT_EQ(C<QGroupBox>(&w, "Framepersonales")->geometry(), personales);
    EXPECT_EQ(C<QGroupBox>(&w, "Framefacturacion")->geometry(), facturacion);
}

// Through the frames in order: personal data, contacts, billing, others; each
// list right after the box it covers; then the buttons.
TEST(PartnerLayout, TabOrderGoesThroughTheFramesInOrder) {
    const QStringList expected = {
        "Textnif", "Combonif", "Textcodigo", "Combocodigo", "Textnombrefiscal", "Combonombrefiscal",
        "Textnombrecomercial", "Combonombrecomercial", "Textnombre", "Textapellidos", "Textdomicilio",
        "Textpoblacion", "Textcodigopostal", "Textprovincia", "Textnacionalidad", "Texttelefono1", "Texttelefono2",
        "Textmovil1", "Textmovil2", "Textfax", "Textweb", "Textemail", "Textcontacto1", "Textcontacto1telefono",
        "Textcontacto1email", "Textcontacto2", "Textcontacto2telefono", "Textcontacto2email", "Textcontacto3",
        "Textcontacto3telefono", "Textcontacto3email", "TextIban", "Textbanco", "Combobanco", "Textsucursal",
        "Combosucursal", "Textdigitocontrol", "Textnumerocuenta", "Textdiacobro1", "Textdiacobro2",
        "Textformapago", "Comboformapago", "Textdescuentoarticulo", "Textdescuentofactura", "Textcodigoiva",
        "Comboiva", "Combotarifa", "Checkfacturable", "Textlimitefacturacion", "Textcodigotienda", "Combotienda",
        "Textcodigocomercial", "Combocomercial", "Textalta", "Checkmailing", "Textobservaciones", "Commandnuevo",
        "Commandmodificar", "Commandconsultar", "Commandborrar", "Commandaceptar", "Commandcancelar"};
    vel::Fproveedores w;
    QStringList order;
    QWidget* c = C<QWidget>(&w, "Textnif");
    for (int i = 0; c && i < 200 && order.size() < expected.size(); ++i, c = c->nextInFocusChain()) {
        if (c->focusPolicy() & Qt::TabFocus && expected.contains(c->objectName())) order << c->objectName();
    }
    EXPECT_EQ(order, expected);
}

} // namespace
