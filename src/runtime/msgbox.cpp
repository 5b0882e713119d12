#include "runtime/msgbox.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace vb {

namespace {
QString& title() {
    static QString t = QStringLiteral("Velmarinda");
    return t;
}
} // namespace

QString AppTitle() { return title(); }
void SetAppTitle(const QString& t) { title() = t; }

namespace {
MessageBoxService* service() { return CurrentEnvironment().messageBoxes; }

struct ButtonSpec {
    QMessageBox::StandardButton button;
    int result;
};

std::vector<ButtonSpec> buttonsFor(int style) {
    switch (style & 7) {
    case vbOKCancel: return {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
    case vbAbortRetryIgnore:
        return {{QMessageBox::Abort, vbAbort}, {QMessageBox::Retry, vbRetry}, {QMessageBox::Ignore, vbIgnore}};
    case vbYesNoCancel: return {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
    case vbYesNo: return {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
    case vbRetryCancel: return {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}};
    default: return {{QMessageBox::Ok, vbOK}};
    }
}

int showReal(const QString& title, const QString& text, int style) {
    // The window that was active gets the activation back when the box closes:
    // a display without a window manager gives it to no one.
    QPointer<QWidget> previous = QApplication::activeWindow();
    struct Reactivate {
        QPointer<QWidget>& w;
        ~Reactivate() {
            if (w) w->activateWindow();
        }
    } reactivate{previous};
    QMessageBox box(previous);
    box.setWindowTitle(title);
    box.setText(text);
    switch (style & 0x70) {
    case vbCritical: box.setIcon(QMessageBox::Critical); break;
    case vbQuestion: box.setIcon(QMessageBox::Question); break;
    case vbExclamation: box.setIcon(QMessageBox::Warning); break;
    case vbInformation: box.setIcon(QMessageBox::Information); break;
    default: box.setIcon(QMessageBox::NoIcon); break;
    }
    auto buttonSpecs = buttonsFor(style);
    std::vector<QPushButton*> buttons;
    for (const auto& s : buttonSpecs) buttons.push_back(box.addButton(s.button));
    size_t def = (style & 0x300) >> 8;
    if (def >= buttons.size()) def = 0;
    box.setDefaultButton(buttons[def]);
    // Escape answers Cancel where there is one, else the only button.
    for (size_t i = 0; i < buttonSpecs.size(); ++i)
        if (buttonSpecs[i].result == vbCancel || buttonSpecs.size() == 1) box.setEscapeButton(buttons[i]);
    box.exec();
    for (size_t i = 0; i < buttons.size(); ++i)
        if (box.clickedButton() == buttons[i]) return buttonSpecs[i].result;
    return buttonSpecs[def].result;
}
} // namespace

int MsgBox(const QString& prompt, int style, const QString& title) {
    const QString t = title.isEmpty() ? AppTitle() : title;
    return RunModal([&] {
        if (MessageBoxService* s = service()) return s->show(t, prompt, style);
        return showReal(t, prompt, style);
    });
}

void SetMessageBoxService(MessageBoxService* s) { CurrentEnvironment().messageBoxes = s; }

void ShellAbout(const QString& application, const QString& notice) {
    RunModal([&] {
        if (MessageBoxService* s = service())
            s->about(application, notice);
        else
            QMessageBox::about(QApplication::activeWindow(), QStringLiteral("Acerca de %1").arg(application),
                               application + QStringLiteral("\n") + notice);
    });
}

} // namespace vb
