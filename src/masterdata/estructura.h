// Estructura: the four-level article structure under which products are filed:
// division, gran familia, familia, articulo. The four levels are shown at once,
// one group of like controls each; each group follows the selection of the
// groups above it. Every button works straight on the database.
//
// A level's combo is at once the search field and the field in which a new code
// is typed; the code of an entry is always its first two characters.
#pragma once
#include "runtime/forms.h"
#include <QGroupBox>
#include <array>
#include <map>
#include <memory>

namespace Ui { class Estructura; }

namespace vel {

class Recordset;

class Estructura : public vb::Form {
    Q_OBJECT
public:
    enum Nivel { Division = 0, GranFamilia = 1, Familia = 2, Articulo = 3 };

    explicit Estructura(QWidget* parent = nullptr);
    ~Estructura() override;

    // Refill of each level's combo (also the Click of its two sort options).
    void ActualizaDivisiones() { Actualiza(Division); }
    void ActualizaGrandesFamilias() { Actualiza(GranFamilia); }
    void ActualizaFamilias() { Actualiza(Familia); }
    void ActualizaArticulos() { Actualiza(Articulo); }

    // Selection in a combo; each Change runs the Click.
    void ComboDivisiones_Click() { Combo_Click(Division); }
    void ComboGrandesFamilias_Click() { Combo_Click(GranFamilia); }
    void ComboFamilias_Click() { Combo_Click(Familia); }
    void ComboArticulos_Click() { Combo_Click(Articulo); }

    // Save of a level.
    void BotonAceptarDivisiones_Click() { BotonAceptarNivel_Click(Division); }
    void BotonAceptarGrandesFamilias_Click() { BotonAceptarNivel_Click(GranFamilia); }
    void BotonAceptarFamilias_Click() { BotonAceptarNivel_Click(Familia); }
    void BotonAceptarArticulos_Click() { BotonAceptarNivel_Click(Articulo); }

    // Delete of a level (the control names keep their spelling).
    void BotonBorrarDivsiones_Click() { BotonBorrarNivel_Click(Division); }
    void BotonBorrarGrandesFamlias_Click() { BotonBorrarNivel_Click(GranFamilia); }
    void BotonBorrarFamilias_Click() { BotonBorrarNivel_Click(Familia); }
    void BotonBorrarArticulos_Click() { BotonBorrarNivel_Click(Articulo); }

    // The "&Aceptar" outside the groups: closes the window, saving nothing.
    void BotonAceptar_Click();

protected:
    void Form_Load() override;
    // The new entry of a level, from the combos and the level's description.
    QString SentenciaInsercion(int nivel) const;

private:
    // The controls of one level's group.
    struct Controles {
        vb::ComboBox* combo;
        QLineEdit* texto;
        QPushButton* aceptar;
        QPushButton* borrar;
        QRadioButton* opcionCodigo;
        QRadioButton* opcionNombre;
    };

    void Actualiza(int nivel);
    void Combo_Click(int nivel);
    void BotonAceptarNivel_Click(int nivel);
    void BotonBorrarNivel_Click(int nivel);
    void Texto_GotFocus(int nivel);
    void Texto_LostFocus(int nivel);
    std::map<QString, QString> CodigosDeCombos() const;
    std::map<QString, QString> CodigosDeFila(int nivel, const Recordset& fila) const;

    std::unique_ptr<Ui::Estructura> ui;
    std::array<Controles, 4> nivel_;
};

} // namespace vel
