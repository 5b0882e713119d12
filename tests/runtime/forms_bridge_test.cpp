// The forms bridge behaves as the windows expect of the runtime: the order of
// focus events, KeyPress that discards or replaces keys, Enter sent on as Tab,
// combo Click and Change, and errors that end the program.
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"
#include "support/widgets.h"
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <optional>

#include <string>
#include <utility>
#include <vector>

namespace {

using veltest::settle;

// A small window of the kind the program has: two text boxes, a combo, a button.
class SampleForm : public vb::Form {
public:
    QLineEdit* Text1 = new QLineEdit(this);
    QLineEdit* Text2 = new QLineEdit(this);
    vb::ComboBox* Combo1 = new vb::ComboBox(this);
    QPushButton* Command1 = new QPushButton(QStringLiteral("&Aceptar"), this);
    QStringList log;

    void OnLostFocusOf(QWidget* w, std::function<void()> p) { OnLostFocus(w, std::move(p)); }
    void OnClickOf(QAbstractButton* b, std::function<void()> p) { OnClick(b, std::move(p)); }
    void OnChangeOf(vb::Label* l, std::function<void()> p) { OnChange(l, std::move(p)); }
    void OnGotFocusOf(QWidget* w, std::function<void()> p) { OnGotFocus(w, std::move(p)); }

    SampleForm() {
        auto* l = new QVBoxLayout(this);
        for (QWidget* w : {static_cast<QWidget*>(Text1), static_cast<QWidget*>(Text2),
                           static_cast<QWidget*>(Combo1), static_cast<QWidget*>(Command1)})
            l->addWidget(w);
        Text1->setObjectName("Text1");
        Text2->setObjectName("Text2");
        Combo1->setObjectName("Combo1");
        OnGotFocus(Text1, [this] { log << "Text1_GotFocus"; });
        OnLostFocus(Text1, [this] { log << "Text1_LostFocus"; });
        OnGotFocus(Text2, [this] { log << "Text2_GotFocus"; });
        OnLostFocus(Text2, [this] { log << "Text2_LostFocus"; });
        OnChange(Text2, [this] { log << "Text2_Change:" + Text2->text(); });
        OnClick(Combo1, [this] { log << "Combo1_Click:" + Combo1->Text(); });
        OnChange(Combo1, [this] { log << "Combo1_Change:" + Combo1->Text(); });
        OnKeyPress(Text1, [this](int& KeyAscii) {
            if (KeyAscii == 13) {
                KeyAscii = 0;
                vb::SendKeys("{tab}");
            } else if (KeyAscii == 'x') {
                KeyAscii = 0; // discarded
            } else if (KeyAscii == 'a') {
                KeyAscii = 'b'; // replaced
            }
        });
    }
};

class FormsBridge : public ::testing::Test {
protected:
    veltest::RecordedBoxes boxes;
    SampleForm* form = nullptr;
    bool endedSeen = false;
    std::optional<vb::InstalledEnvironment> env;

    void SetUp() override {
        env.emplace(vb::Environment{.messageBoxes = &boxes, .onEnd = [this] { endedSeen = true; }});
        form = new SampleForm;
        form->show();
        form->activateWindow();
        settle();
    }
    void TearDown() override {
        delete form;
        env.reset();
    }
};

TEST_F(FormsBridge, LostFocusOfTheOldControlComesBeforeGotFocusOfTheNew) {
    vb::SetFocus(form->Text1);
    form->log.clear();
    vb::SetFocus(form->Text2);
    EXPECT_EQ(form->log, (QStringList{"Text1_LostFocus", "Text2_GotFocus"}));
}

TEST_F(FormsBridge, EnterInAFieldMovesToTheNextControlAfterTheProcedure) {
    vb::SetFocus(form->Text1);
    QTest::keyClick(form->Text1, Qt::Key_Return);
    // The tab is queued as a keystroke: it arrives once events run.
    settle();
    EXPECT_EQ(QApplication::focusWidget(), form->Text2);
    EXPECT_EQ(form->Text1->text(), "");
}

TEST_F(FormsBridge, KeyPressDiscardsAndReplacesKeys) {
    vb::SetFocus(form->Text1);
    QTest::keyClicks(form->Text1, "xaz");
    EXPECT_EQ(form->Text1->text(), "bz");
}

TEST_F(FormsBridge, ChangeFiresForTypingAndForCode) {
    form->Text2->setText("12");
    vb::SetFocus(form->Text2);
    form->Text2->selectAll();
    QTest::keyClicks(form->Text2, "7");
    EXPECT_TRUE(form->log.contains("Text2_Change:12"));
    EXPECT_TRUE(form->log.contains("Text2_Change:7"));
}

TEST_F(FormsBridge, ComboClickFiresOnSelectionNotOnAddItemOrClear) {
    form->Combo1->AddItem("01 UNO");
    form->Combo1->AddItem("02 DOS");
    EXPECT_EQ(form->Combo1->ListIndex(), -1);
    form->Combo1->SetListIndex(1);
    form->Combo1->Clear();
    EXPECT_EQ(form->log, (QStringList{"Combo1_Click:02 DOS"}));
    EXPECT_EQ(form->Combo1->ListCount(), 0);
}

// Many entries added in one step are as many AddItem: in order, none chosen,
// no Click.
TEST_F(FormsBridge, AddingEntriesInOneStepChoosesNothing) {
    form->Combo1->AddItem("01 UNO");
    form->Combo1->AddItems({"02 DOS", "03 TRES"});
    EXPECT_EQ(form->Combo1->ListCount(), 3);
    EXPECT_EQ(form->Combo1->List(2), "03 TRES");
    EXPECT_EQ(form->Combo1->ListIndex(), -1);
    form->Combo1->SetListIndex(1);
    form->Combo1->AddItems({"04 CUATRO"});
    EXPECT_EQ(form->Combo1->ListIndex(), 1);
    EXPECT_EQ(form->log, (QStringList{"Combo1_Click:02 DOS"}));
}

TEST_F(FormsBridge, EditableComboChangeFiresForTypingAndForCodeButNotForSelection) {
    form->Combo1->setEditable(true);
    form->Combo1->AddItem("01 UNO");
    form->Combo1->SetText("9");
    form->Combo1->SetListIndex(0);
    vb::SetFocus(form->Combo1);
    form->Combo1->lineEdit()->selectAll();
    QTest::keyClicks(form->Combo1, "4");
    EXPECT_EQ(form->log, (QStringList{"Combo1_Change:9", "Combo1_Click:01 UNO", "Text1_LostFocus", "Combo1_Change:4"}));
}

// Typing the text of an entry into an editable combo and leaving it chooses
// nothing: what is typed stays typed, and no Click runs.
TEST_F(FormsBridge, LeavingAnEditableComboWithAnEntrysTextRaisesNoClick) {
    form->Combo1->setEditable(true);
    form->Combo1->AddItem("01 UNO");
    form->Combo1->AddItem("02 DOS");
    vb::SetFocus(form->Combo1);
    form->Combo1->lineEdit()->selectAll();
    QTest::keyClicks(form->Combo1, "02 DOS");
    vb::SetFocus(form->Text2);
    EXPECT_EQ(form->Combo1->ListIndex(), -1);
    EXPECT_EQ(form->Combo1->Text(), "02 DOS");
    EXPECT_FALSE(form->log.contains("Combo1_Click:02 DOS")) << form->log.join(", ").toStdString();
}

TEST_F(FormsBridge, FocusSentBackFromLostFocusArrivesWithItsGotFocusAndSelection) {
    // As after "Registro duplicado": the field takes the focus back, and its
    // GotFocus selects the text so that typing replaces it.
    form->Text1->setText("17");
    form->OnLostFocusOf(form->Text1, [this] { vb::SetFocus(form->Text1); });
    form->OnGotFocusOf(form->Text1, [this] { vb::SelectAll(form->Text1); });
    vb::SetFocus(form->Text1);
    form->Text1->deselect();
    vb::SetFocus(form->Text2);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), form->Text1);
    EXPECT_EQ(form->Text1->selectedText(), "17");
}

TEST_F(FormsBridge, ChoosingTheChosenEntryAgainRaisesClick) {
    form->Combo1->AddItem("01 UNO");
    form->Combo1->SetListIndex(0);
    form->Combo1->SetListIndex(0);
    EXPECT_EQ(form->log, (QStringList{"Combo1_Click:01 UNO", "Combo1_Click:01 UNO"}));
}

TEST_F(FormsBridge, OptionButtonsRaiseClickWhenChosenByTheUserOrByCode) {
    auto* group = new QWidget(form);
    auto* porCodigo = new QRadioButton(QStringLiteral("Ordenar por Código"), group);
    auto* porNombre = new QRadioButton(QStringLiteral("Ordenar por Nombre"), group);
    porCodigo->move(0, 0);
    porNombre->move(0, 30);
    group->resize(200, 60);
    group->show();
    QStringList clicks;
    form->OnClickOf(porCodigo, [&] { clicks << "OptionC_Click"; });
    form->OnClickOf(porNombre, [&] { clicks << "OptionN_Click"; });
    vb::SetValue(porCodigo, true);
    QTest::mouseClick(porNombre, Qt::LeftButton, Qt::NoModifier, QPoint(8, porNombre->height() / 2));
    EXPECT_EQ(clicks, (QStringList{"OptionC_Click", "OptionN_Click"}));
    // Only one of a group is chosen.
    EXPECT_FALSE(vb::Value(porCodigo));
    EXPECT_TRUE(vb::Value(porNombre));
}

TEST_F(FormsBridge, ACheckBoxIsZeroOrOneAndRaisesClickOnEachChange) {
    auto* check = new QCheckBox(QStringLiteral("Facturable"), form);
    check->show();
    int clicks = 0;
    form->OnClickOf(check, [&] { ++clicks; });
    EXPECT_EQ(vb::Value(check), 0);
    vb::SetValue(check, 1);
    EXPECT_EQ(vb::Value(check), 1);
    QTest::mouseClick(check, Qt::LeftButton, Qt::NoModifier, QPoint(8, check->height() / 2));
    EXPECT_EQ(vb::Value(check), 0);
    EXPECT_EQ(clicks, 2);
}

TEST_F(FormsBridge, ALabelCaptionChangedByCodeRaisesChange) {
    auto* total = new vb::Label(form);
    QStringList changes;
    form->OnChangeOf(total, [&] { changes << total->Caption(); });
    total->SetCaption("12.50");
    total->SetCaption("12.50");
    total->SetCaption("0.00");
    EXPECT_EQ(changes, (QStringList{"12.50", "0.00"}));
}

TEST_F(FormsBridge, ATimerRunsItsEventOnlyWhileEnabled) {
    vb::Timer timer;
    int ticks = 0;
    QObject::connect(&timer, &vb::Timer::Tick, [&] { ++ticks; });
    timer.SetInterval(5);
    QTest::qWait(30);
    EXPECT_EQ(ticks, 0);
    timer.SetEnabled(true);
    QTest::qWait(60);
    timer.SetEnabled(false);
    const int seen = ticks;
    EXPECT_GT(seen, 0);
    QTest::qWait(30);
    EXPECT_EQ(ticks, seen);
}

TEST_F(FormsBridge, TogglingEnabledFlipsEachTime) {
    vb::ToggleEnabled(form->Command1);
    EXPECT_FALSE(vb::Enabled(form->Command1));
    vb::ToggleEnabled(form->Command1);
    EXPECT_TRUE(vb::Enabled(form->Command1));
}

TEST_F(FormsBridge, ColoursReadBackAsTheRuntimeNumbers) {
    vb::SetBackColor(form->Text1, 255);
    vb::SetForeColor(form->Text1, 16777215);
    EXPECT_EQ(vb::BackColor(form->Text1), 255);
    EXPECT_EQ(vb::ForeColor(form->Text1), 16777215);
}

TEST_F(FormsBridge, AnUntrappedErrorShowsTheRuntimeMessageAndEndsTheProgram) {
    bool after = false;
    vb::RunEvent([&] {
        vb::Raise(3134, "Error de sintaxis en la instrucción INSERT INTO.");
        after = true;
    });
    EXPECT_FALSE(after);
    EXPECT_TRUE(endedSeen);
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], "Velmarinda|Se ha producido el error '3134' en tiempo de ejecución:\n\n"
                              "Error de sintaxis en la instrucción INSERT INTO.|16");
}

TEST_F(FormsBridge, AnErrorInAnEventRaisedByCodeReachesTheProcedureThatRaisedIt) {
    form->Combo1->AddItem("01 UNO");
    // The Click raised by setting ListIndex fails; the calling procedure's
    // resume-next trap sees the error, so nothing ends.
    QObject::connect(form->Combo1, &vb::ComboBox::Click, form, [] {
        vb::RunEvent([] { vb::Raise(94, "Uso no válido de Null"); });
    });
    bool trapped = false;
    vb::RunEvent([&] {
        vb::ResumeNext r;
        trapped = !r([&] { form->Combo1->SetListIndex(0); });
    });
    EXPECT_TRUE(trapped);
    EXPECT_FALSE(endedSeen);
    EXPECT_EQ(vb::Err().Number, 94);
}

TEST_F(FormsBridge, AnUntrappedErrorInAClickRaisedByCodeStopsTheProcedureThatRaisedIt) {
    form->Combo1->AddItem("01 UNO");
    form->OnClickOf(form->Command1, [this] {
        form->Combo1->SetListIndex(0);
        form->log << "after SetListIndex";
    });
    QObject::connect(form->Combo1, &vb::ComboBox::Click, form, [] {
        vb::RunEvent([] { vb::Raise(94, "Uso no válido de Null"); });
    });
    QTest::mouseClick(form->Command1, Qt::LeftButton);
    EXPECT_FALSE(form->log.contains("after SetListIndex"));
    EXPECT_TRUE(endedSeen);
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], "Velmarinda|Se ha producido el error '94' en tiempo de ejecución:\n\n"
                              "Uso no válido de Null|16");
}

TEST_F(FormsBridge, ClickingTheChosenEntryAgainCarriesTheClicksErrorBackToo) {
    form->Combo1->AddItem("01 UNO");
    form->Combo1->SetListIndex(0);
    QObject::connect(form->Combo1, &vb::ComboBox::Click, form, [] {
        vb::RunEvent([] { vb::Raise(3021, "No hay un registro activo."); });
    });
    vb::RunEvent([&] {
        vb::ResumeNext r;
        EXPECT_FALSE(r([&] { form->Combo1->SetListIndex(0); }));
    });
    EXPECT_EQ(vb::Err().Number, 3021);
    EXPECT_FALSE(endedSeen);
}

TEST_F(FormsBridge, AChangeRaisedBySettingATextReachesTheTrapOfThatStatement) {
    // The window sets the text straight on the box; the Change fails, and the
    // statement's resume-next trap is the one that sees it.
    QObject::connect(form->Text1, &QLineEdit::textChanged, form, [] {
        vb::RunEvent([] { vb::Raise(13, "No coinciden los tipos"); });
    });
    bool next = false;
    vb::RunEvent([&] {
        vb::ResumeNext r;
        EXPECT_FALSE(r([&] { form->Text1->setText("ABC"); }));
        r([&] { next = true; });
    });
    EXPECT_TRUE(next);
    EXPECT_EQ(vb::Err().Number, 13);
    EXPECT_FALSE(endedSeen);
}

TEST_F(FormsBridge, ALabelChangeErrorReachesTheCodeThatSetTheCaption) {
    auto* total = new vb::Label(form);
    form->OnChangeOf(total, [] { vb::Raise(6, "Desbordamiento"); });
    bool after = false;
    vb::RunEvent([&] {
        vb::ResumeNext r;
        EXPECT_FALSE(r([&] {
            total->SetCaption("1E+400");
            after = true;
        }));
    });
    EXPECT_FALSE(after);
    EXPECT_EQ(vb::Err().Number, 6);
}

TEST_F(FormsBridge, AnIndexPastTheEndOfAListIsTheRuntimesSubscriptError) {
    // std::out_of_range from .at() in a Click the user made: the runtime's
    // message and the end, as any untrapped error; never an abort.
    form->OnClickOf(form->Command1, [] {
        const std::vector<QString> lines;
        (void)lines.at(3);
    });
    QTest::mouseClick(form->Command1, Qt::LeftButton);
    EXPECT_TRUE(endedSeen);
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], "Velmarinda|Se ha producido el error '9' en tiempo de ejecución:\n\n"
                              "El subíndice está fuera del intervalo|16");
}

TEST_F(FormsBridge, AnIndexPastTheEndInAnEventRaisedByCodeIsTrappedLikeAnyError) {
    form->Combo1->AddItem("01 UNO");
    QObject::connect(form->Combo1, &vb::ComboBox::Click, form, [] {
        vb::RunEvent([] { (void)std::vector<int>().at(0); });
    });
    vb::RunEvent([&] {
        vb::ResumeNext r;
        EXPECT_FALSE(r([&] { form->Combo1->SetListIndex(0); }));
        EXPECT_FALSE(r([] { (void)std::string().at(1); }));
    });
    EXPECT_EQ(vb::Err().Number, 9);
    EXPECT_FALSE(endedSeen);
}

TEST_F(FormsBridge, AnErrorHeldForTheCodeWaitsWhileAMessageBoxIsOpen) {
    // An event that arrives while a box is open enters afresh: it neither
    // receives nor raises the error held for the code that opened the box.
    veltest::RecordedBoxes boxWithEvent;
    vb::SetMessageBoxService(&boxWithEvent);
    bool inner = false;
    std::function<void()> event = [&] { vb::RunEvent([&] { inner = true; }); };
    boxWithEvent.whileShown = [&](const veltest::ShownBox&) {
        if (event) std::exchange(event, nullptr)();
    };
    QObject::connect(form->Text1, &QLineEdit::textChanged, form, [] {
        vb::RunEvent([] { vb::Raise(13, "No coinciden los tipos"); });
    });
    vb::RunEvent([&] {
        form->Text1->setText("X");
        vb::MsgBox("Aviso");
    });
    vb::SetMessageBoxService(&boxes);
    EXPECT_TRUE(inner);
    EXPECT_TRUE(endedSeen);
    ASSERT_EQ(boxWithEvent.shown.size(), 2);
    EXPECT_EQ(boxWithEvent.shown[0], "Velmarinda|Aviso|0");
    EXPECT_TRUE(boxWithEvent.shown[1].contains("'13'"));
}

TEST_F(FormsBridge, TheOneLineTrapTellsTheErrorAndGoesOnWithTheNextStatement) {
    vb::OneLineTrap trap(" importando fichero");
    bool second = false;
    vb::RunEvent([&] {
        trap([] { vb::Raise(1004, "No se puede abrir el libro"); });
        trap([&] { second = true; });
    });
    EXPECT_TRUE(second);
    EXPECT_FALSE(endedSeen);
    EXPECT_EQ(boxes.shown, QStringList{"Velmarinda|Error 1004 (No se puede abrir el libro) importando fichero|0"});
}

TEST_F(FormsBridge, EndStopsTheProcedureAndTheProgram) {
    bool after = false;
    vb::RunEvent([&] {
        vb::End();
        after = true;
    });
    EXPECT_FALSE(after);
    EXPECT_TRUE(endedSeen);
    // Events after the end are not run.
    bool ran = false;
    vb::RunEvent([&] { ran = true; });
    EXPECT_FALSE(ran);
}

TEST_F(FormsBridge, AMessageBoxWithNoTitleTakesTheProgramName) {
    vb::MsgBox("No hay datos disponibles");
    vb::MsgBox("Se necesita un Código y un Nombre", vb::vbOKOnly, "Atención");
    EXPECT_EQ(boxes.shown, (QStringList{"Velmarinda|No hay datos disponibles|0",
                                        "Atención|Se necesita un Código y un Nombre|0"}));
}

} // namespace
