#include "masterdata/estructura.h"
#include "ui_estructura.h"

#include "core/session.h"
#include "masterdata/modeless_window.h"
#include "runtime/msgbox.h"
#include "runtime/variant.h"
#include "runtime/vb.h"

#include <map>

namespace vel {

namespace {

// What tells the four levels apart. Statements are written as the program sends
// them, with the values in braces: {division}, {granfamilia}, {familia},
// {articulo} stand for codes, {descripcion} for the description box's text.
// The odd blanks and the keys left out stay as they are: the familia and
// articulo selections look up the group and not the entry, so the description
// shown is the group's first one, whichever entry is picked.
//
// The INSERTs name no columns, so the three lower tables must hold their
// columns in the order written here: the level's own code first, then the
// codes of the levels above it going up, then the description
// (grandes_familias: codigo_granfamilia, codigo_division, ...). Only so does a
// saved entry land under its parents, and a save with an empty parent box
// store an empty parent code.
struct TextosNivel {
    const char* clave;              // the code's name in the statements
    const char* columnaCodigo;
    const char* columnaDescripcion;

    // Refill, by the sort option of the level.
    const char* listaPorCodigo;
    const char* listaPorDescripcion;

    // Selection: the save button it disables, how many combos from the top must
    // hold a text, the statement.
    int botonQueDesactiva;
    int combosExigidos;
    const char* eleccion;
    bool enterEnCombo;              // Enter in the combo moves to the description

    // Save.
    const char* mensajeVacio;
    const char* existencia;
    const char* actualizacion;
    const char* insercion;

    // Delete, and the last level refilled after it (from the level's own down).
    const char* consultaBorrado;
    const char* noExiste;
    const char* pregunta;
    bool preguntaConDescripcion;
    const char* borrado;
    int refrescaHasta;
};

const TextosNivel kNiveles[4] = {
    {"division", "codigo_division", "descripcion_division",
     "select * from Divisiones order by codigo_division asc",
     "select * from Divisiones order by descripcion_division asc",
     Estructura::Division, 1,
     "select * from divisiones where codigo_division='{division}'",
     true,
     "Necesita un código válido para esta division",
     "select codigo_division from divisiones where codigo_division='{division}'",
     "update divisiones set descripcion_division='{descripcion}' where codigo_division= '{division}' ",
     "insert into divisiones values('{division}','{descripcion}')",
     "select * from divisiones where codigo_division='{division}' ",
     "No existe el codigo de la División",
     "¿Esta seguro de borrar este codigo de Division?, tenga en cuenta que se eliminaran las Grandes "
     "Familias,Familias y articulos relacionadas con la divison ",
     true,
     "delete *  from divisiones where codigo_division='{division}' ",
     Estructura::Division},

    {"granfamilia", "codigo_granfamilia", "descripcion_granfamilia",
     "select * from grandes_familias where codigo_division='{division}' order by codigo_granfamilia asc",
     "select * from grandes_familias where codigo_division='{division}' order by descripcion_granfamilia asc",
     Estructura::GranFamilia, 1,
     "select * from grandes_familias where codigo_granfamilia='{granfamilia}'  and codigo_division='{division}'",
     false,
     "Necesita un código válido para esta Gran Familia",
     "select codigo_granfamilia,codigo_division from grandes_familias where codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}'",
     "update grandes_familias set descripcion_granfamilia='{descripcion}' where codigo_granfamilia= "
     "'{granfamilia}' and codigo_division='{division}' ",
     "insert into grandes_familias values('{granfamilia}','{division}','{descripcion}')",
     "select * from grandes_familias where codigo_granfamilia='{granfamilia}' and codigo_division='{division}' ",
     "No existe el codigo de la Gran Familia",
     "¿Esta seguro de borrar este codigo de Grandes Familias?, tenga en cuenta que se eliminaran las "
     "Familias y articulos relacionadas con la divison ",
     true,
     "delete *  from grandes_familias where codigo_granfamilia='{granfamilia}'and codigo_division='{division}' ",
     Estructura::GranFamilia},

    {"familia", "codigo_familia", "descripcion_familia",
     "select * from familias where codigo_granfamilia='{granfamilia}' and codigo_division='{division}' "
     "order by codigo_familia asc",
     "select * from familias where codigo_granfamilia='{granfamilia}' and codigo_division='{division}' "
     "order by descripcion_familia asc",
     Estructura::Familia, 2,
     "select * from familias where codigo_granfamilia='{granfamilia}' and codigo_division='{division}'",
     false,
     "Necesita un código válido para esta Familia",
     "select * from familias where codigo_familia='{familia}'and codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}'",
     "update familias set descripcion_familia='{descripcion}' where codigo_familia= '{familia}' "
     "and codigo_granfamilia='{granfamilia}'  and codigo_division='{division}'",
     "insert into familias values('{familia}','{granfamilia}','{division}','{descripcion}')",
     "select * from familias where codigo_familia='{familia}'and codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}' ",
     "No existe el codigo de la Familia",
     "¿Esta seguro de borrar este codigo de Familia?, tenga en cuenta que se eliminaran las Articulos "
     "relacionadas con la Familia ",
     true,
     "delete *  from familias where codigo_familia='{familia}' and codigo_granfamilia='{granfamilia}'"
     "and codigo_division='{division}' ",
     Estructura::Articulo},

    {"articulo", "codigo_articulo", "descripcion_articulo",
     "select * from articulos where  codigo_familia='{familia}' and codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}' order by codigo_articulo asc",
     "select * from articulos where codigo_familia='{familia}' and codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}' order by descripcion_articulo asc",
     // A selection here disables the familia's save button, not its own.
     Estructura::Familia, 3,
     "select * from articulos where codigo_familia='{familia}' and codigo_granfamilia='{granfamilia}' "
     "and codigo_division='{division}'",
     false,
     "Necesita un código válido para este Artículo",
     "select * from articulos where codigo_articulo='{articulo}' and codigo_familia='{familia}'"
     "and codigo_granfamilia='{granfamilia}' and codigo_division='{division}'",
     "update articulos set descripcion_articulo='{descripcion}' where codigo_articulo='{articulo}' "
     "and codigo_granfamilia='{granfamilia}' and codigo_familia= '{familia}' and codigo_division='{division}'",
     "insert into articulos values('{articulo}','{familia}','{granfamilia}','{division}','{descripcion}')",
     "select * from articulos where codigo_articulo='{articulo}' and codigo_familia='{familia}'"
     "and codigo_granfamilia='{granfamilia}' and codigo_division='{division}' ",
     "No existe el codigo del Artículo",
     "¿Esta seguro de borrar este codigo de Artículo?",
     false,
     "delete *  from articulos where codigo_articulo='{articulo}' and codigo_familia='{familia}' "
     "and codigo_granfamilia='{granfamilia}'and codigo_division='{division}' ",
     Estructura::Articulo},
};

const QString kDemasiadoLargo = QStringLiteral(
    "El código es demasiado largo sólo se permite una longitud de dos caracteres.¿Desea continuar? "
    ",solo se guardara/actualizara los 2 primeros caracteres");

using Valores = std::map<QString, QString>;

// The statement with each {name} replaced by its value, in one pass (a value
// is never read again for names).
QString Sentencia(const char* plantilla, const Valores& valores) {
    const QString texto = QString::fromUtf8(plantilla);
    QString sql;
    qsizetype i = 0;
    while (i < texto.size()) {
        const qsizetype abre = texto.indexOf('{', i);
        if (abre < 0) {
            sql += texto.mid(i);
            break;
        }
        const qsizetype cierra = texto.indexOf('}', abre);
        sql += texto.mid(i, abre - i);
        sql += valores.at(texto.mid(abre + 1, cierra - abre - 1));
        i = cierra + 1;
    }
    return sql;
}

} // namespace

Estructura::Estructura(QWidget* parent) : vb::Form(parent), ui(std::make_unique<Ui::Estructura>()) {
    ui->setupUi(this);
    nivel_ = {{
        {ui->ComboDivisiones, ui->TextoDivisiones, ui->BotonAceptarDivisiones, ui->BotonBorrarDivsiones,
         ui->OpcionCodigoDivisiones, ui->OpcionNombreDivisiones},
        {ui->ComboGrandesFamilias, ui->TextoGrandesFamilias, ui->BotonAceptarGrandesFamilias,
         ui->BotonBorrarGrandesFamlias, ui->OpcionCodigoGrandesFamilias, ui->OpcionNombreGrandesFamilias},
        {ui->ComboFamilias, ui->TextoFamilias, ui->BotonAceptarFamilias, ui->BotonBorrarFamilias,
         ui->OpcionCodigoFamilias, ui->OpcionNombreFamilias},
        {ui->ComboArticulos, ui->TextoArticulos, ui->BotonAceptarArticulos, ui->BotonBorrarArticulos,
         ui->OpcionCodigoArticulos, ui->OpcionNombreArticulos},
    }};
    for (int n = Division; n <= Articulo; ++n) {
        const Controles& c = nivel_[n];
        OnClick(c.combo, [this, n] { Combo_Click(n); });
        OnChange(c.combo, [this, n] { Combo_Click(n); });
        // The sort options refill their own level only.
        OnClick(c.opcionCodigo, [this, n] { Actualiza(n); });
        OnClick(c.opcionNombre, [this, n] { Actualiza(n); });
        OnClick(c.aceptar, [this, n] { BotonAceptarNivel_Click(n); });
        OnClick(c.borrar, [this, n] { BotonBorrarNivel_Click(n); });
        OnGotFocus(c.texto, [this, n] { Texto_GotFocus(n); });
        OnLostFocus(c.texto, [this, n] { Texto_LostFocus(n); });
        OnKeyPress(c.texto, [c](int& KeyAscii) {
            if (KeyAscii == 13) vb::SetFocus(c.aceptar);
        });
        if (kNiveles[n].enterEnCombo)
            OnKeyPress(c.combo, [c](int& KeyAscii) {
                if (KeyAscii == 13) vb::SetFocus(c.texto);
            });
    }
    OnClick(ui->BotonAceptar, [this] { BotonAceptar_Click(); });
}

Estructura::~Estructura() = default;

void Estructura::Form_Load() {
    ActualizaDivisiones();
    ActualizaGrandesFamilias();
    ActualizaFamilias();
    ActualizaArticulos();
}

void Estructura::BotonAceptar_Click() {
    Unload();
}

void Estructura::Actualiza(int n) {
    const TextosNivel& t = kNiveles[n];
    const Controles& c = nivel_[n];
    const Valores codigos = CodigosDeCombos();

    c.combo->Clear();
    c.texto->setText("");
    const char* plantilla = vb::Value(c.opcionCodigo) ? t.listaPorCodigo : t.listaPorDescripcion;
    auto rs = BaseDatos->OpenRecordset(Sentencia(plantilla, codigos));
    // An empty set stops here: nothing selected, the lower levels keep what they show.
    if (rs->AbsolutePosition() == -1)
        return;
    while (!rs->Eof()) {
        c.combo->AddItem(TextoCampo(*rs, t.columnaCodigo) + " " + TextoCampo(*rs, t.columnaDescripcion));
        rs->MoveNext();
    }
    rs->Close();
    if (c.combo->ListCount() >= 1)
        c.combo->SetListIndex(0);   // runs the Click, which refills the levels below
}

// The codes as the combos give them: the first two characters of each text.
// A one-character code picked from the list comes with the blank behind it.
std::map<QString, QString> Estructura::CodigosDeCombos() const {
    Valores codigos;
    for (int k = Division; k <= Articulo; ++k)
        codigos[kNiveles[k].clave] = vb::Mid(nivel_[k].combo->Text(), 1, 2);
    return codigos;
}

// The codes of a row just read, for this level and the ones above it.
std::map<QString, QString> Estructura::CodigosDeFila(int n, const Recordset& fila) const {
    Valores codigos;
    for (int k = Division; k <= n; ++k)
        codigos[kNiveles[k].clave] = fila.Fields(kNiveles[k].columnaCodigo).str();
    return codigos;
}

void Estructura::Combo_Click(int n) {
    const TextosNivel& t = kNiveles[n];
    vb::SetEnabled(nivel_[t.botonQueDesactiva].aceptar, false);
    for (int k = Division; k < t.combosExigidos; ++k)
        if (nivel_[k].combo->Text().isEmpty())
            return;
    auto rs = BaseDatos->OpenRecordset(Sentencia(t.eleccion, CodigosDeCombos()));
    if (rs->AbsolutePosition() == -1) {
        nivel_[n].texto->setText("");
    } else {
        // A Null leaves the box as it was.
        if (auto descripcion = TextoCampoNoNulo(*rs, t.columnaDescripcion)) nivel_[n].texto->setText(*descripcion);
        rs->Close();
    }
    for (int k = n + 1; k <= Articulo; ++k)
        Actualiza(k);
}

void Estructura::BotonAceptarNivel_Click(int n) {
    const TextosNivel& t = kNiveles[n];
    const Controles& c = nivel_[n];
    if (c.combo->Text().isEmpty()) {
        vb::MsgBox(t.mensajeVacio, vb::vbCritical, kTituloError);
        return;
    }
    // A picked entry ("01 NOMBRE") is always longer than two characters, so each
    // change of an existing description passes through this question; its title
    // is the one of the delete questions.
    int respuesta = vb::vbYes;
    if (c.combo->Text().size() > 2)
        respuesta = vb::MsgBox(kDemasiadoLargo, vb::vbYesNo, kTituloConfirmacion);
    if (respuesta == vb::vbNo)
        return;

    Valores codigos = CodigosDeCombos();
    auto rs = BaseDatos->OpenRecordset(Sentencia(t.existencia, codigos));
    if (rs->AbsolutePosition() != -1) {
        Valores claves = CodigosDeFila(n, *rs);
        claves["descripcion"] = c.texto->text();
        BaseDatos->Execute(Sentencia(t.actualizacion, claves));
        rs->Close();
    } else {
        BaseDatos->Execute(SentenciaInsercion(n));
    }
    vb::SetEnabled(c.aceptar, false);
    Actualiza(n);
}

// No test that the parents hold a code: an empty parent box stores an empty
// parent code.
QString Estructura::SentenciaInsercion(int n) const {
    Valores codigos = CodigosDeCombos();
    codigos["descripcion"] = nivel_[n].texto->text();
    return Sentencia(kNiveles[n].insercion, codigos);
}

void Estructura::BotonBorrarNivel_Click(int n) {
    const TextosNivel& t = kNiveles[n];
    const Controles& c = nivel_[n];
    if (c.combo->Text().isEmpty())
        return;
    auto rs = BaseDatos->OpenRecordset(Sentencia(t.consultaBorrado, CodigosDeCombos()));
    QString pregunta = QString::fromUtf8(t.pregunta);
    if (t.preguntaConDescripcion && rs->AbsolutePosition() != -1)
        pregunta += TextoCampo(*rs, t.columnaDescripcion);
    // The question speaks of the levels below, but only the level's own row is
    // deleted: the lower rows stay and come back with a parent of the same code.
    BorradoConPregunta(*rs, t.noExiste, pregunta, [this, n, &t, &c](Recordset& fila) {
        BaseDatos->Execute(Sentencia(t.borrado, CodigosDeFila(n, fila)));
        fila.Close();
        c.texto->setText("");
    });
    for (int k = n; k <= t.refrescaHasta; ++k)
        Actualiza(k);
}

void Estructura::Texto_GotFocus(int n) {
    vb::SetEnabled(nivel_[n].aceptar, true);
    PintaConFoco(nivel_[n].texto);
}

void Estructura::Texto_LostFocus(int n) {
    PintaSinFoco(nivel_[n].texto);
}

} // namespace vel
