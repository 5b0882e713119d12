#include "scenario/services.h"
#include "scenario/script.h"
#include <map>

namespace vel::scenario {

const char* AnswerName(int a) {
    switch (a) {
    case vb::vbOK: return "OK";
    case vb::vbCancel: return "Cancel";
    case vb::vbAbort: return "Abort";
    case vb::vbRetry: return "Retry";
    case vb::vbIgnore: return "Ignore";
    case vb::vbYes: return "Yes";
    case vb::vbNo: return "No";
    }
    return "?";
}

int AnswerCode(const QString& name) {
    static const std::map<QString, int> codes = {
        {"OK", vb::vbOK},       {"Cancel", vb::vbCancel}, {"Abort", vb::vbAbort}, {"Retry", vb::vbRetry},
        {"Ignore", vb::vbIgnore}, {"Yes", vb::vbYes},     {"No", vb::vbNo}};
    const auto it = codes.find(name);
    if (it == codes.end()) error("respuesta desconocida: " + name);
    return it->second;
}

namespace {
// The buttons of a style, in order.
std::vector<int> buttonsOf(int style) {
    switch (style & 7) {
    case 1: return {vb::vbOK, vb::vbCancel};
    case 2: return {vb::vbAbort, vb::vbRetry, vb::vbIgnore};
    case 3: return {vb::vbYes, vb::vbNo, vb::vbCancel};
    case 4: return {vb::vbYes, vb::vbNo};
    case 5: return {vb::vbRetry, vb::vbCancel};
    default: return {vb::vbOK};
    }
}
} // namespace

int ScriptedBoxes::show(const QString& title, const QString& shownText, int style) {
    QString text = shownText;
    if (!folder.isEmpty()) text.replace(folder, QStringLiteral("<App.Path>"));
    const auto buttons = buttonsOf(style);
    size_t def = size_t((style & 0x300) >> 8);
    if (def >= buttons.size()) def = 0;
    int answer = buttons[def];
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
        if (std::find(buttons.begin(), buttons.end(), answer) == buttons.end())
            *out_ += QStringLiteral("  (la respuesta %1 no es un botón de este mensaje)\n").arg(AnswerName(answer));
    }
    *out_ += QStringLiteral("  msgbox %1 %2 style %3 -> %4\n")
                 .arg(Quote(title), Quote(text))
                 .arg(style)
                 .arg(AnswerName(answer));
    unchecked.push_back({title, text, style});
    return answer;
}

void ScriptedBoxes::about(const QString& application, const QString& notice) {
    *out_ += QStringLiteral("  about %1 %2\n").arg(Quote(application), Quote(notice));
    unchecked.push_back({QStringLiteral("Acerca de ") + application, application + '\n' + notice, 0});
}

QString ScriptedDialogs::shown(const QString& path) const {
    QString p = path;
    if (!folder.isEmpty()) p.replace(folder, QStringLiteral("<App.Path>"));
    return Quote(p);
}

std::optional<QString> ScriptedDialogs::open(const vb::OpenRequest& r) {
    *out_ += QStringLiteral("  dialog open %1 InitDir=%2 Filter=%3 FileName=%4")
                 .arg(Quote(r.title), shown(r.initDir), Quote(r.filter), shown(r.fileName));
    if (openAnswers.empty()) {
        *out_ += QStringLiteral(" -> Cancel (sin respuesta preparada)\n");
        return std::nullopt;
    }
    const std::optional<QString> answer = openAnswers.front();
    openAnswers.pop_front();
    *out_ += " -> " + (answer ? shown(*answer) : QStringLiteral("Cancel")) + '\n';
    return answer;
}

std::optional<vb::PrinterChoice> ScriptedDialogs::printer(const vb::PrinterRequest& r) {
    *out_ += QStringLiteral("  dialog printer Copies=%1 Orientation=%2").arg(r.copies).arg(r.orientation);
    if (printerAnswers.empty()) {
        *out_ += QStringLiteral(" -> Cancel (sin respuesta preparada)\n");
        return std::nullopt;
    }
    std::optional<vb::PrinterChoice> answer = printerAnswers.front();
    printerAnswers.pop_front();
    if (!answer) {
        *out_ += QStringLiteral(" -> Cancel\n");
        return std::nullopt;
    }
    if (answer->printerName.isEmpty() && answer->outputFile.isEmpty()) {
        *out_ += QStringLiteral(" -> sin impresora\n");
        return answer;
    }
    // What the user leaves untouched is what the window preset.
    if (answer->copies <= 0) answer->copies = r.copies;
    if (answer->orientation <= 0) answer->orientation = r.orientation;
    *out_ += QStringLiteral(" -> OK %1 Copies=%2 Orientation=%3\n")
                 .arg(shown(answer->outputFile.isEmpty() ? answer->printerName : answer->outputFile))
                 .arg(answer->copies)
                 .arg(answer->orientation);
    return answer;
}

} // namespace vel::scenario
