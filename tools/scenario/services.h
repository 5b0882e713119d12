// The message boxes and common dialogs of a scenario: each is written to the
// transcript and answered from the queue of answers the scenario prepared.
#pragma once
#include "runtime/common_dialog.h"
#include "runtime/msgbox.h"
#include <QString>
#include <deque>
#include <optional>

namespace vel::scenario {

// A message box as the program showed it.
struct ShownBox {
    QString title;
    QString text;
    int style = 0;
};

const char* AnswerName(int answer);
int AnswerCode(const QString& name);

class ScriptedBoxes : public vb::MessageBoxService {
public:
    explicit ScriptedBoxes(QString* out) : out_(out) {}
    // The temporary program folder reads as <App.Path> so transcripts stay the same.
    QString folder;
    std::deque<int> answers;
    // Shown and not yet checked by an expectation, oldest first.
    std::deque<ShownBox> unchecked;

    int show(const QString& title, const QString& text, int style) override;
    void about(const QString& application, const QString& notice) override;

private:
    QString* out_;
};

class ScriptedDialogs : public vb::DialogService {
public:
    explicit ScriptedDialogs(QString* out) : out_(out) {}
    QString folder;
    // The file each next open dialog chooses; none cancels it.
    std::deque<std::optional<QString>> openAnswers;
    // The answer each next print dialog gives; none cancels it.
    std::deque<std::optional<vb::PrinterChoice>> printerAnswers;

    std::optional<QString> open(const vb::OpenRequest& request) override;
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest& request) override;

private:
    QString shown(const QString& path) const;
    QString* out_;
};

} // namespace vel::scenario
