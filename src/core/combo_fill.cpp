#include "core/combo_fill.h"

#include "core/record_store.h"
#include "core/session.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"

namespace vel {

void LlenarListaDeTabla(vb::ComboBox* lista, const QString& sentencia, const QString& columna,
                        const QString& mensajeSinDatos) {
    lista->Clear();
    auto rs = BaseDatos->OpenRecordset(sentencia);
    while (!rs->Eof()) {
        lista->AddItem(rs->Fields(columna).str());
        rs->MoveNext();
    }
    if (lista->ListCount() >= 1) lista->SetListIndex(0);
    else vb::MsgBox(mensajeSinDatos);
}

} // namespace vel
