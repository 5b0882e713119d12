// The window of a short table of code, name and one free line: stores
// (Ftienda), warehouses (Falmacenes) and operators (Foperador) are this one
// window on three tables. It follows the code-list flow of the maintenance
// window with no addition; a window states only its table, columns, caption and third field.
#pragma once
#include "core/code_list_window.h"

namespace Ui {
class CodeNameWindow;
}

namespace vel {

struct CodeNameTable {
    QString ventana;  // the window's name: "Ftienda"
    QString titulo;   // caption: "Mantenimiento de Tiendas"
    QString tabla;    // "tienda"
    QString clave;    // key column, a number of up to 2 digits: "codigo_tienda"
    QString nombre;   // name column, text(20): "nombre_tienda"
    QString tercera;  // third column, text(50): "direccion_tienda"
    QString campo;    // the third field's text box: "Textdireccion"
    QString etiqueta; // its label: "Dirección"
};

class CodeNameWindow : public CodeListWindow {
    Q_OBJECT
public:
    explicit CodeNameWindow(const CodeNameTable& tabla, QWidget* parent = nullptr);
    ~CodeNameWindow() override;

    void Combocodigo_Click() override;

protected:
    QString SentenciaLista() const override;
    QString EntradaCombo(const Recordset& rs) const override;
    QString SentenciaBuscarCodigo(const QString& codigo) const override;
    QString SentenciaInsertar() const override;
    QString SentenciaModificar() const override;
    QString SentenciaEliminar() const override;

    const CodeNameTable T;
    // The third field: Textdireccion or Textobservaciones.
    QLineEdit* Textotercero = nullptr;

private:
    std::unique_ptr<Ui::CodeNameWindow> ui;
};

} // namespace vel
