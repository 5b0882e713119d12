#include "scenario/fpruebacontroles.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_job.h"
#include "runtime/shell.h"
#include "runtime/vb.h"
#include "core/mdi.h"
#include "sales/print_layout.h"
#include <QFileInfo>
#include <QGridLayout>
#include <QVBoxLayout>

namespace vel::scenario {

namespace {
template <class W>
W* named(W* w, const char* name) {
    w->setObjectName(QString::fromLatin1(name));
    return w;
}
QPushButton* button(QWidget* parent, const char* name, const QString& caption) {
    return named(new QPushButton(caption, parent), name);
}
} // namespace

Fpruebacontroles::Fpruebacontroles() {
    setWindowTitle(QStringLiteral("Prueba de controles"));
    auto* layout = new QVBoxLayout(this);
    SSTabpruebas = named(new vb::SSTab(this), "SSTabpruebas");
    layout->addWidget(SSTabpruebas);

    // Each page is a frame holding its controls, as on the windows' tab strips.
    auto page = [this](QWidget* control, const QString& caption) {
        auto* frame = new QWidget;
        (new QVBoxLayout(frame))->addWidget(control);
        SSTabpruebas->addTab(frame, caption);
    };
    Listpruebas = named(new vb::ListBox, "Listpruebas");
    page(Listpruebas, QStringLiteral("Lista"));
    Gridpruebas = named(new vb::FlexGrid, "Gridpruebas");
    page(Gridpruebas, QStringLiteral("Rejilla"));
    Calendario = named(new vb::CalendarControl, "Calendario");
    page(Calendario, QStringLiteral("Calendario"));

    auto* otros = new QWidget;
    auto* grid = new QGridLayout(otros);
    ProgressBar1 = named(new vb::ProgressBar(otros), "ProgressBar1");
    CommandProgreso = button(otros, "CommandProgreso", QStringLiteral("&Avanzar"));
    CommandAbrir = button(otros, "CommandAbrir", QStringLiteral("A&brir"));
    CommandImprimir = button(otros, "CommandImprimir", QStringLiteral("&Imprimir"));
    CommandImprimirSinTrampa = button(otros, "CommandImprimirSinTrampa", QStringLiteral("Imprimir &sin trampa"));
    CommandImprimirAlbaran = button(otros, "CommandImprimirAlbaran", QStringLiteral("Imprimir A&lbarán"));
    CommandEsperar = button(otros, "CommandEsperar", QStringLiteral("&Esperar"));
    CommandEjecutar = button(otros, "CommandEjecutar", QStringLiteral("E&jecutar"));
    Checkpruebas = named(new QCheckBox(QStringLiteral("&Marcar"), otros), "Checkpruebas");
    Labelresultado = named(new vb::Label(otros), "Labelresultado");
    grid->addWidget(ProgressBar1, 0, 0, 1, 2);
    grid->addWidget(CommandProgreso, 1, 0);
    grid->addWidget(CommandAbrir, 1, 1);
    grid->addWidget(CommandImprimir, 2, 0);
    grid->addWidget(CommandImprimirSinTrampa, 2, 1);
    grid->addWidget(CommandEsperar, 3, 0);
    grid->addWidget(CommandEjecutar, 3, 1);
    grid->addWidget(CommandImprimirAlbaran, 4, 0);
    grid->addWidget(Checkpruebas, 5, 0, 1, 2);
    grid->addWidget(Labelresultado, 6, 0, 1, 2);
    SSTabpruebas->addTab(otros, QStringLiteral("Otros"));

    Labelsuceso = named(new vb::Label(this), "Labelsuceso");
    layout->addWidget(Labelsuceso);
    Labelayuda = named(new vb::Label(this), "Labelayuda");
    layout->addWidget(Labelayuda);
    CommonDialog1 = named(new vb::CommonDialog(this), "CommonDialog1");
    Timer1 = named(new vb::Timer(this), "Timer1");
    Timeraviso = named(new vb::Timer(this), "Timeraviso");

    OnClick(Listpruebas, [this] { Listpruebas_Click(); });
    OnDblClick(Listpruebas, [this] { Listpruebas_DblClick(); });
    OnClick(SSTabpruebas, [this](int PreviousTab) { SSTabpruebas_Click(PreviousTab); });
    OnClick(Gridpruebas, [this] { Gridpruebas_Click(); });
    OnDblClick(Gridpruebas, [this] { Gridpruebas_DblClick(); });
    OnClick(Calendario, [this] { Calendario_Click(); });
    OnClick(CommandProgreso, [this] { CommandProgreso_Click(); });
    OnClick(CommandAbrir, [this] { CommandAbrir_Click(); });
    OnClick(CommandImprimir, [this] { CommandImprimir_Click(); });
    OnClick(CommandImprimirSinTrampa, [this] { CommandImprimirSinTrampa_Click(); });
    OnClick(CommandImprimirAlbaran, [this] { CommandImprimirAlbaran_Click(); });
    OnClick(CommandEsperar, [this] { CommandEsperar_Click(); });
    OnTimer(Timer1, [this] { Timer1_Timer(); });
    OnClick(CommandEjecutar, [this] { CommandEjecutar_Click(); });
    OnClick(Checkpruebas, [this] { Checkpruebas_Click(); });
    OnTimer(Timeraviso, [this] { Timeraviso_Timer(); });
    OnMouseMove(this, [this](int b, int s, float x, float y) { Form_MouseMove(b, s, x, y); });
    OnMouseMove(Listpruebas, [this](int b, int s, float x, float y) { Listpruebas_MouseMove(b, s, x, y); });
    OnMouseMove(CommandProgreso, [this](int b, int s, float x, float y) { CommandProgreso_MouseMove(b, s, x, y); });
}

void Fpruebacontroles::Form_Load() {
    for (const char* entrada : {"UNO", "DOS", "TRES"}) Listpruebas->AddItem(QString::fromLatin1(entrada));
    Gridpruebas->SetRows(4);
    Gridpruebas->SetCols(3);
    for (int fila = 0; fila < 4; ++fila)
        for (int col = 0; col < 3; ++col)
            Gridpruebas->SetTextMatrix(fila, col, QStringLiteral("F%1C%2").arg(fila).arg(col));
    ProgressBar1->SetVisible(false);
    Timer1->SetInterval(200);
    // A minute: it raises its event in a scenario only when fired.
    Timeraviso->SetInterval(60000);
    Timeraviso->SetEnabled(true);
}

// Raised twice, then it stops itself.
void Fpruebacontroles::Timeraviso_Timer() {
    suceso(QStringLiteral("Timeraviso_Timer"));
    if (++avisos_ == 2) Timeraviso->SetEnabled(false);
}

// Off the controls, the help line is emptied.
void Fpruebacontroles::Form_MouseMove(int, int, float, float) { Labelayuda->SetCaption(QString()); }

void Fpruebacontroles::Listpruebas_MouseMove(int, int, float, float) {
    Labelayuda->SetCaption(QStringLiteral("Elija una entrada de la lista"));
}

void Fpruebacontroles::CommandProgreso_MouseMove(int Button, int, float, float) {
    Labelayuda->SetCaption(QStringLiteral("Avanza la barra de progreso (botón %1)").arg(Button));
}

void Fpruebacontroles::suceso(const QString& texto) {
    Labelsuceso->SetCaption(QStringLiteral("%1: %2").arg(++sucesos_).arg(texto));
}

void Fpruebacontroles::Listpruebas_Click() {
    suceso(QStringLiteral("Listpruebas_Click %1 %2").arg(Listpruebas->ListIndex()).arg(Listpruebas->Text()));
}

void Fpruebacontroles::Listpruebas_DblClick() {
    vb::MsgBox(QStringLiteral("Doble clic en ") + Listpruebas->Text(), vb::vbInformation, QStringLiteral("Lista"));
}

void Fpruebacontroles::SSTabpruebas_Click(int PreviousTab) {
    suceso(QStringLiteral("SSTabpruebas_Click %1 -> %2").arg(PreviousTab).arg(SSTabpruebas->Tab()));
}

void Fpruebacontroles::Gridpruebas_Click() {
    suceso(QStringLiteral("Gridpruebas_Click Row=%1 Col=%2").arg(Gridpruebas->Row()).arg(Gridpruebas->Col()));
}

void Fpruebacontroles::Gridpruebas_DblClick() {
    vb::MsgBox(QStringLiteral("Doble clic en ") + Gridpruebas->Text(), vb::vbQuestion + vb::vbYesNo,
               QStringLiteral("Rejilla"));
}

void Fpruebacontroles::Calendario_Click() {
    suceso(QStringLiteral("Calendario_Click ") + vb::Format(Calendario->Value(), "dd/mm/yyyy"));
}

// Shows the bar the first time and moves it one step a press, up to its end.
void Fpruebacontroles::CommandProgreso_Click() {
    if (!ProgressBar1->Visible()) {
        ProgressBar1->SetMax(3);
        ProgressBar1->SetValue(0);
        ProgressBar1->SetVisible(true);
        return;
    }
    ProgressBar1->SetValue(ProgressBar1->Value() + 1);
}

// The import's choice of a spreadsheet.
void Fpruebacontroles::CommandAbrir_Click() {
    CommonDialog1->InitDir = vb::AppPath() + QStringLiteral("/importacion");
    CommonDialog1->Filter = QStringLiteral("Archivos de Excel(*.xls,*.xlsx)|*.xls;*.xlsx|Todos los archivos(*.*)|*.*");
    CommonDialog1->FileName = QString();
    CommonDialog1->DialogTitle = QStringLiteral("Seleccionar Hoja Excel");
    CommonDialog1->ShowOpen();
    if (CommonDialog1->FileName.isEmpty()) {
        Labelresultado->SetCaption(QStringLiteral("ningún fichero"));
        return;
    }
    Labelresultado->SetCaption(CommonDialog1->FileName.mid(vb::AppPath().size() + 1));
}

// The start of a print job: a cancel is an error the procedure takes and
// prints nothing.
void Fpruebacontroles::CommandImprimir_Click() {
    vb::Err().Clear();
    vb::ResumeNext r;
    CommonDialog1->CancelError = true;
    CommonDialog1->Copies = 2;
    CommonDialog1->Orientation = vb::cdlLandscape;
    r([&] { CommonDialog1->ShowPrinter(); });
    if (vb::Err().Number != 0) {
        Labelresultado->SetCaption(QStringLiteral("%1 %2").arg(vb::Err().Number).arg(vb::Err().Description));
        vb::Err().Clear();
        return;
    }
    const vb::PrinterChoice& impresora = CommonDialog1->Printer();
    Labelresultado->SetCaption(QStringLiteral("%1 copias=%2 orientacion=%3")
                                   .arg(QFileInfo(impresora.outputFile).fileName())
                                   .arg(impresora.copies)
                                   .arg(impresora.orientation));
}

// A delivery note of two lines, as the note window hands its controls to the
// print procedures, printed through the steps of every print button under the
// installation's tag.
void Fpruebacontroles::CommandImprimirAlbaran_Click() {
    print_layout::Documento d;
    d.ClientePrograma = vel::MainWindow() ? vel::MainWindow()->ClientePrograma : QString();
    d.Combonombrecomercial = QStringLiteral("FERRETERIA O CRUCEIRO");
    d.Combonombrefiscal = QStringLiteral("XOSE MANUEL CASAL RIOS");
    d.Textdomicilio = QStringLiteral("RUA DO CRUCEIRO 4");
    d.Textcodigopostal = QStringLiteral("15001");
    d.Textpoblacion = QStringLiteral("PORTELAS");
    d.Textprovincia = QStringLiteral("VALDEFERRO");
    d.Combonif = QStringLiteral("00000014Z");
    d.Combonumerofactura = QStringLiteral("00027");
    d.Comboejerciciofactura = QStringLiteral("2026");
    d.Textfechafactura = QStringLiteral("21/11/2026");
    d.Labelformapagofacturavencimientos = QStringLiteral("1/0,0,0,0,0,0,0,0,0,0,0,0");
    d.ComboProforma = QStringLiteral("Albarán");
    d.Labelbruto = d.Labelneto = d.Labelbase = QStringLiteral("13.5");
    d.Labeldescuento = QStringLiteral("0");
    d.Textiva = QStringLiteral("21");
    d.Labelimporteiva = QStringLiteral("2.84");
    d.Textrecargo = QStringLiteral("0");
    d.Labelimporterecargo = QStringLiteral("0");
    d.Labeltotalfactura = QStringLiteral("16.34");
    d.Rows = 3;
    d.TextMatrix = [](int fila, int col) {
        static const QStringList lineas[] = {
            {"REFERENCIA", "DESCRIPCION", "UNID.", "IMPORTE", "SUBTOTAL", "DTO.", "TOTAL"},
            {"TORN4X40", "TORNILLO 4X40", "10", "0.15", "1.50", "0", "1.50"},
            {"MART300", "MARTILLO CARPINTERO", "1", "12.00", "12.00", "0", "12.00"}};
        return lineas[fila][col];
    };
    print_layout::Contadores contadores;
    const bool impreso = vb::RunPrintJob(
        {.dialog = CommonDialog1,
         .calendar = Calendario,
         .procedures = {[&] { print_layout::cabeceraalbaran(vb::Printer(), d); },
                        [&] { print_layout::detallealbaran(vb::Printer(), d, contadores); },
                        [&] { print_layout::piealbaran(vb::Printer(), d); }}});
    Labelresultado->SetCaption(impreso ? QStringLiteral("albarán impreso") : QStringLiteral("albarán no impreso"));
}

// The same with no trap: a cancel ends the program with the runtime's message.
void Fpruebacontroles::CommandImprimirSinTrampa_Click() {
    CommonDialog1->CancelError = true;
    CommonDialog1->ShowPrinter();
    Labelresultado->SetCaption(QStringLiteral("impreso"));
}

// The hourglass while a job of the timer runs.
void Fpruebacontroles::CommandEsperar_Click() {
    espera_.emplace();
    Timer1->SetEnabled(true);
}

void Fpruebacontroles::Timer1_Timer() {
    Timer1->SetEnabled(false);
    espera_.reset();
}

// Runs the packing tool of the program folder and waits for it to end.
void Fpruebacontroles::CommandEjecutar_Click() {
    vb::WaitPointer espera;
    const QString carpeta = vb::AppPath() + QStringLiteral("/enviar/");
    vb::ShellAndWait(carpeta + QStringLiteral("pkzip -ex ") + carpeta + QStringLiteral("pedido.jpg ") + carpeta +
                     QStringLiteral("pedido?.zip"));
    Labelresultado->SetCaption(QStringLiteral("terminado"));
}

void Fpruebacontroles::Checkpruebas_Click() {
    suceso(QStringLiteral("Checkpruebas_Click Value=%1").arg(vb::Value(Checkpruebas)));
}

} // namespace vel::scenario
