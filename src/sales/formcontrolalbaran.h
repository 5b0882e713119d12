// FormControlAlbaran: the desk where the delivery notes of a store and year
// are listed by state, turned one at a time into invoices, and exchanged
// between stores (a branch sends all the notes listed; the central store,
// code "1", receives).
#pragma once
#include "runtime/forms.h"
#include "sales/note_control.h"
#include <memory>

namespace Ui { class FormControlAlbaran; }

namespace vel {

class FormControlAlbaran : public vb::Form {
    Q_OBJECT
public:
    explicit FormControlAlbaran(QWidget* parent = nullptr);
    ~FormControlAlbaran() override;

    void Borrar();
    void CommandBuscar_Click();
    void CommandFacturar_Click();
    void CommandEnviar_Click();
    void CommandRecibir_Click();
    void CommandCerrar_Click();
    void ComboTienda_Click();
    void ComboEjercicio_Click();
    void Timer1_Timer();

    // The store of this window (codigo_tienda, as a string) and the state word
    // of the last search: "P", "E", "0" or "*".
    QString Tienda() const { return Tienda_; }
    QString EstadoBusqueda() const { return Estado_; }
    vb::Timer* Timer1 = nullptr;

protected:
    void Form_Load() override;

private:
    // The store whose name ComboTienda or config.ini gives: "No se encuentra
    // la tienda. Se asigna la 1" and store "1" when there is none of that name.
    void BuscarCodigoTienda(const QString& nombre);
    QString LeerConfiguracion();
    ClaveNota ClaveFila(int fila) const;
    void Estado(const QString& texto);
    // The received notes into the tables, all or nothing.
    void GuardarRecibidos(const QByteArray& pedidoC, const QByteArray& pedidoD);

    std::unique_ptr<Ui::FormControlAlbaran> ui;
    QString ClientePrograma;
    QString Tienda_ = QStringLiteral("1");
    QString Estado_ = QStringLiteral("P");
    bool cargando_ = false;
};

} // namespace vel
