// Message boxes with the runtime's styles. Windows never touch QMessageBox: they
// call MsgBox, which the tests and the scenario driver replace by a scripted
// service that records title, text and style and returns queued answers.
#pragma once
#include <QString>

namespace vb {

// Answers.
enum MsgBoxResult { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };
// Style parts: buttons + icon + default button.
enum MsgBoxStyle {
    vbOKOnly = 0, vbOKCancel = 1, vbAbortRetryIgnore = 2, vbYesNoCancel = 3, vbYesNo = 4, vbRetryCancel = 5,
    vbCritical = 16, vbQuestion = 32, vbExclamation = 48, vbInformation = 64,
    vbDefaultButton1 = 0, vbDefaultButton2 = 256, vbDefaultButton3 = 512,
};

// App.Title: the program's name, the title of a message box that is given none
// and the name of a print job. The invoice sets it for the time of its job.
QString AppTitle();
void SetAppTitle(const QString& title);

// Shows a modal message box. An empty title gives AppTitle().
int MsgBox(const QString& prompt, int style = vbOKOnly, const QString& title = QString());

class MessageBoxService {
public:
    virtual ~MessageBoxService() = default;
    // title is already resolved (never empty).
    virtual int show(const QString& title, const QString& text, int style) = 0;
    // The system's about box with the application's text and a second line.
    virtual void about(const QString& application, const QString& notice) = 0;
};

// The about box of the system (ShellAbout): the program's name and a notice line.
void ShellAbout(const QString& application, const QString& notice);
// Shorthand for the message boxes of the environment in force (environment.h);
// nullptr restores the real, on-screen boxes.
void SetMessageBoxService(MessageBoxService* service);

} // namespace vb
