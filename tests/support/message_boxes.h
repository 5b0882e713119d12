// A message-box service for tests: it records every box shown and answers it
// from a queue of answers, then by a rule, then with OK.
//
//   veltest::RecordedBoxes boxes;                       // every box answered OK
//   boxes.rule = veltest::YesToQuestions;                // Yes to a Yes/No question
//   boxes.answers = {vb::vbNo};                          // the next box says No
//   vb::InstalledEnvironment env({.messageBoxes = &boxes});
//   ...
//   EXPECT_EQ(boxes.shown, QStringList{"Velmarinda|Registro duplicado|0"});
//   EXPECT_EQ(boxes.texts, QStringList{"Registro duplicado"});
#pragma once
#include "runtime/msgbox.h"
#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

namespace veltest {

struct ShownBox {
    QString title, text;
    int style = 0;
};

class RecordedBoxes : public vb::MessageBoxService {
public:
    explicit RecordedBoxes(std::function<int(const ShownBox&)> rule = {}) : rule(std::move(rule)) {}

    // Every box, in the order shown.
    std::vector<ShownBox> boxes;
    // The same as "TITLE|TEXT|STYLE", and an About box as "APP|NOTE".
    QStringList shown;
    // The text of each box.
    QStringList texts;
    // Answers given in order to the next boxes.
    std::deque<int> answers;
    // The answer once the queue is empty (none: OK).
    std::function<int(const ShownBox&)> rule;
    // Runs while the box is up, as an event arriving meanwhile would.
    std::function<void(const ShownBox&)> whileShown;

    int show(const QString& title, const QString& text, int style) override {
        const ShownBox box{title, text, style};
        boxes.push_back(box);
        shown << QStringLiteral("%1|%2|%3").arg(title, text).arg(style);
        texts << text;
        if (whileShown) whileShown(box);
        if (!answers.empty()) {
            const int a = answers.front();
            answers.pop_front();
            return a;
        }
        return rule ? rule(box) : vb::vbOK;
    }
    void about(const QString& app, const QString& note) override { shown << app + QLatin1Char('|') + note; }
};

// Yes to every Yes/No question, OK to the rest.
inline int YesToQuestions(const ShownBox& box) { return (box.style & 7) == vb::vbYesNo ? vb::vbYes : vb::vbOK; }
// Yes to everything (the question's Yes is all that is read).
inline int YesToAll(const ShownBox&) { return vb::vbYes; }
// The question's default button: No when it is the second (vbDefaultButton2),
// else Yes; OK to the rest.
inline int DefaultButton(const ShownBox& box) {
    if ((box.style & 7) == vb::vbYesNo) return (box.style & vb::vbDefaultButton2) ? vb::vbNo : vb::vbYes;
    return vb::vbOK;
}
// No to everything.
inline int NoToAll(const ShownBox&) { return vb::vbNo; }

} // namespace veltest
