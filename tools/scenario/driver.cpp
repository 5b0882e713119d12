#include "scenario/driver.h"
#include "scenario/file_commands.h"
#include "app/window_table.h"
#include "core/mdi.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/mouse_pointer.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"
#include "scenario/controls.h"
#include "scenario/dbf_table.h"
#include "support/workbook_writer.h"
#include "scenario/fpruebacontroles.h"
#include "scenario/script.h"
#include "scenario/services.h"
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QKeySequence>
#include <QGroupBox>
#include <QMdiArea>
#include <QTabWidget>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>
#include <cmath>
#include <cstring>
#include <map>
#include <set>
#include <memory>
#include <optional>

namespace vel::scenario {

namespace {

// One line of a scenario, split into words; words(0) is the command.
class Line {
public:
    Line(const QString& text, QList<Word> words) : text(text), words_(std::move(words)) {}
    const QString text;
    QString command() const { return words_.value(0).text; }
    int size() const { return int(words_.size()); }
    bool has(int i) const { return i < words_.size(); }
    QString arg(int i) const {
        if (i >= words_.size()) error("falta un argumento en " + command());
        return words_[i].text;
    }
    bool quoted(int i) const { return i < words_.size() && words_[i].quoted; }
    // The words from i on.
    QStringList from(int i) const {
        QStringList out;
        for (int k = i; k < words_.size(); ++k) out << words_[k].text;
        return out;
    }

private:
    QList<Word> words_;
};

// The windows a scenario can open besides the menu's: test fixtures.
const std::map<QString, std::function<vb::Form*()>>& testWindows() {
    static const std::map<QString, std::function<vb::Form*()>> windows = {
        {"Fpruebacontroles", [] { return new Fpruebacontroles; }},
    };
    return windows;
}

class Driver {
public:
    Driver(QString* out, QString origin, QString statementLog)
        : out_(out), origin_(std::move(origin)), statementLog_(std::move(statementLog)), boxes_(out), dialogs_(out) {
        if (!dir_.isValid()) error(QStringLiteral("no se puede crear la carpeta del programa"));
        folder_ = dir_.path();
        boxes_.folder = folder_;
        dialogs_.folder = folder_;
        QDir(folder_).mkpath(QStringLiteral("bin"));
        environment_.emplace(vb::Environment{.messageBoxes = &boxes_,
                                             .dialogs = &dialogs_,
                                             .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0, 0)),
                                             .programFolder = folder_,
                                             .onEnd = [this] { ended_ = true; },
                                             .printers = &printers_,
                                             .beep = [this] { *out_ += QStringLiteral("  beep\n"); }});
        // The program's windows and the test fixtures, each under its own name.
        windows_ = vel::WindowTable();
        for (const auto& [name, create] : testWindows()) windows_[name] = {name, create};
        vel::SetWindowTable(&windows_);
        const QByteArray path = QDir(folder_).filePath(QStringLiteral("bin")).toLocal8Bit() + ':' + qgetenv("PATH");
        qputenv("PATH", path);
        vel::schema::CreateEmptyDatabase(dbPath());
        files_ = std::make_unique<FileCommands>(folder_);
    }
    ~Driver() {
        teardown();
        writeStatementLog();
        vel::SetWindowTable(nullptr);
        environment_.reset();
    }

    Result run(const QString& text) {
        const QStringList lines = text.split('\n');
        lines_ = &lines;
        for (lineNo_ = 0; lineNo_ < lines.size(); ++lineNo_) {
            const QString line = lines[lineNo_].trimmed();
            if (line.isEmpty()) {
                if (lineNo_ + 1 < lines.size()) *out_ += '\n';
                continue;
            }
            if (line.startsWith('#')) {
                *out_ += line + '\n';
                continue;
            }
            *out_ += "> " + line + '\n';
            try {
                command(Line(line, Words(line)));
                Settle();
                if (ended_ && !endReported_) {
                    endReported_ = true;
                    *out_ += QStringLiteral("  el programa ha terminado\n");
                    teardown();
                }
            } catch (const Fail& f) {
                *out_ += QStringLiteral("FALLO en %1:%2: %3\n").arg(origin_).arg(lineNo_ + 1).arg(f.message);
                return ExpectationFailed;
            } catch (const Error& e) {
                *out_ += QStringLiteral("ERROR en %1:%2: %3\n").arg(origin_).arg(lineNo_ + 1).arg(e.message);
                return ScriptError;
            } catch (const vb::RuntimeError& e) {
                *out_ += QStringLiteral("ERROR en %1:%2: error %3 (%4)\n")
                             .arg(origin_)
                             .arg(lineNo_ + 1)
                             .arg(e.Number)
                             .arg(e.Description);
                return ScriptError;
            }
        }
        return Passed;
    }

private:
    using Handler = void (Driver::*)(const Line&);

    // The commands of the language, told in docs/scenarios.md.
    void command(const Line& line) {
        static const std::map<QString, Handler> commands = {
            // Setting up
            {"today", &Driver::today},
            {"file", &Driver::file},
            {"dbf", &Driver::dbf},
            {"workbook", &Driver::workbook},
            {"nodb", &Driver::nodb},
            {"sql", &Driver::sql},
            {"start", &Driver::startCommand},
            {"restart", &Driver::restart},
            {"menu", &Driver::menu},
            {"test-window", &Driver::testWindow},
            {"open", &Driver::open},
            {"env", &Driver::env},
            // Driving controls
            {"click", &Driver::click},
            {"dblclick", &Driver::dblclick},
            {"focus", &Driver::focus},
            {"type", &Driver::type},
            {"paste", &Driver::paste},
            {"key", &Driver::key},
            {"select", &Driver::select},
            {"tab", &Driver::tab},
            {"pick", &Driver::pick},
            {"check", &Driver::check},
            {"option", &Driver::option},
            {"resize", &Driver::resize},
            {"press", &Driver::press},
            {"minimize", &Driver::minimize},
            {"maximize", &Driver::maximize},
            {"restore", &Driver::restore},
            {"close", &Driver::close},
            {"run", &Driver::runShell},
            {"wait", &Driver::wait},
            {"hover", &Driver::hover},
            {"timer", &Driver::timer},
            // Message boxes and dialogs
            {"answer", &Driver::answer},
            {"dialog", &Driver::dialog},
            // The printer
            {"printer", &Driver::printer},
            // Looking
            {"show", &Driver::show},
            {"query", &Driver::query},
            {"cat", &Driver::cat},
            {"screenshot", &Driver::screenshot},
            // Expectations
            {"expect", &Driver::expect},
            {"expect-msg", &Driver::expectMsg},
            {"expect-msgbox", &Driver::expectMsgbox},
            {"expect-no-msg", &Driver::expectNoMsg},
            {"expect-focus", &Driver::expectFocus},
            {"expect-open", &Driver::expectOpen},
            {"expect-closed", &Driver::expectClosed},
            {"expect-query", &Driver::expectQuery},
            {"expect-ended", &Driver::expectEnded},
            {"expect-file", &Driver::expectFile},
            {"expect-pointer", &Driver::expectPointer},
            {"expect-print-line", &Driver::expectPrintLine},
            {"expect-print-lines", &Driver::expectPrintLines},
            {"expect-printed", &Driver::expectPrinted},
            {"remember-sizes", &Driver::rememberSizes},
            {"expect-same-sizes", &Driver::expectSameSizes},
        };
        // The commands on the program folder's files as bytes (file_commands.h).
        QString why;
        switch (files_->run(line.from(0), out_, &why)) {
        case FileCommands::Done: return;
        case FileCommands::Failed: fail(why);
        case FileCommands::Error: error(why);
        case FileCommands::NotMine: break;
        }
        const auto it = commands.find(line.command());
        if (it == commands.end()) error("orden desconocida: " + line.command());
        (this->*(it->second))(line);
    }

    // ---- The program and its windows ----------------------------------------------

    QString dbPath() const { return QDir(folder_).filePath(QStringLiteral("datos.mdb")); }

    void teardown() {
        if (started_) {
            vel::CloseSession();
            started_ = false;
            Settle();
        }
    }

    void start() {
        if (started_) error(QStringLiteral("el programa ya está en marcha"));
        ended_ = endReported_ = false;
        vb::ResetEnded();
        started_ = true;
        vb::RunEvent([] { vel::Main(); });
        watchStatements();
        Settle();
        if (vel::MDI* mdi = vel::MainWindow()) {
            mdi->activateWindow();
            Settle();
        }
    }

    // Each statement the program runs on its database is noted with the
    // pointer it ran under, for `expect-pointer wait "STATEMENT"`: what the
    // user sees while a long job's statements run.
    struct Statement {
        QString sql;
        bool busy;
    };
    static int noteStatement(unsigned, void* ctx, void* stmt, void* text) {
        // A trigger's steps come as comments ("-- ..."); the statement itself
        // is the prepared one.
        if (text && std::strncmp(static_cast<const char*>(text), "--", 2) == 0) return 0;
        const char* sql = sqlite3_sql(static_cast<sqlite3_stmt*>(stmt));
        if (!sql) return 0;
        Driver* d = static_cast<Driver*>(ctx);
        const QString s = QString::fromUtf8(sql);
        d->statements_.push_back({s, vb::MousePointer() == vb::vbHourglass});
        if (!d->scenarioSql_) d->ran_.insert(s);
        return 0;
    }
    void watchStatements() {
        statements_.clear();
        if (vel::BaseDatos) sqlite3_trace_v2(vel::BaseDatos->handle(), SQLITE_TRACE_STMT, &noteStatement, this);
    }
    // One statement a line; a line break inside a statement (a text typed
    // over several lines) is written as a blank, which changes no plan.
    void writeStatementLog() {
        if (statementLog_.isEmpty()) return;
        QFile f(statementLog_);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
        for (QString s : ran_) {
            s.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
            f.write(s.toUtf8() + '\n');
        }
    }

    vel::MDI* mdi() {
        vel::MDI* m = vel::MainWindow();
        if (!m || ended_) error(QStringLiteral("el programa no está en marcha"));
        return m;
    }

    // Keeps the main window the active one, as it is after a message box closes.
    void activate() {
        vel::MDI* m = mdi();
        if (!m->isActiveWindow()) {
            m->activateWindow();
            Settle();
        }
    }

    QWidget* window(const QString& name) {
        vel::MDI* m = mdi();
        if (name == QLatin1String("MDI")) return m;
        for (vb::Form* f : m->openForms())
            if (f->objectName() == name) return f;
        return nullptr;
    }

    QWidget* find(const QString& name) {
        const int dot = int(name.indexOf('.'));
        if (dot > 0 && !name.left(dot).contains('(')) {
            QWidget* w = window(name.left(dot));
            if (!w) error("la ventana " + name.left(dot) + " no está abierta");
            QWidget* c = w->findChild<QWidget*>(name.mid(dot + 1));
            if (!c) error("no hay control " + name);
            return c;
        }
        if (QWidget* w = window(name)) return w;
        vel::MDI* m = mdi();
        const auto forms = m->openForms();
        if (!forms.isEmpty())
            if (QWidget* c = forms.first()->findChild<QWidget*>(name)) return c;
        if (QWidget* c = m->findChild<QWidget*>(name); c && !qobject_cast<QMenu*>(c)) return c;
        for (vb::Form* f : forms)
            if (QWidget* c = f->findChild<QWidget*>(name)) return c;
        error("no hay control " + name);
    }

    // A control the user can reach: it is on screen.
    QWidget* visible(const Line& line, int i) {
        QWidget* c = find(line.arg(i));
        if (!c->isVisible()) error("el control " + line.arg(i) + " no se ve");
        return c;
    }

    QWidget* keyTarget(QWidget* w) {
        if (auto* c = qobject_cast<QComboBox*>(w); c && c->isEditable() && c->lineEdit()) return c;
        return w;
    }

    void giveFocus(QWidget* w) {
        activate();
        FocusOn(w);
    }

    // ---- Setting up -----------------------------------------------------------------

    void today(const Line& line) {
        const QDate d = QDate::fromString(line.arg(1), QStringLiteral("dd/MM/yyyy"));
        const QTime t = line.has(2) ? QTime::fromString(line.arg(2), QStringLiteral("HH:mm:ss")) : QTime(10, 0, 0);
        if (!d.isValid() || !t.isValid()) error(QStringLiteral("fecha u hora no válidas"));
        vb::clock::pin(QDateTime(d, t));
    }

    // file NAME <<END ... END writes the lines as they stand; file NAME "text"
    // writes the text with its escapes (\r\n line ends, for instance).
    // dbf NAME <<END ... END: a dBase table (scenario/dbf_table.h).
    void dbf(const Line& line) {
        const QString name = line.arg(1);
        if (line.arg(2) != QLatin1String("<<END")) error(QStringLiteral("dbf NOMBRE <<END ... END"));
        QStringList body;
        const QStringList& lines = *lines_;
        for (++lineNo_; lineNo_ < lines.size() && lines[lineNo_].trimmed() != QLatin1String("END"); ++lineNo_)
            body << lines[lineNo_];
        if (lineNo_ >= lines.size()) error(QStringLiteral("falta END"));
        const QString why = ::scenario::WriteDbfTable(QDir(folder_).filePath(name), body);
        if (!why.isEmpty()) error(why);
        *out_ += QStringLiteral("  (%1 registros)\n").arg(body.size() - 1);
    }

    // workbook NAME <<END ... END: a spreadsheet workbook of the kind its name
    // ends in (.xls, .xlsx, .ods); each line a row, cells separated by ";",
    // a line "---" starting the next sheet (support/workbook_writer.h).
    void workbook(const Line& line) {
        const QString name = line.arg(1);
        if (line.arg(2) != QLatin1String("<<END")) error(QStringLiteral("workbook NOMBRE <<END ... END"));
        std::vector<veltest::Hoja> hojas(1);
        const QStringList& lines = *lines_;
        int filas = 0;
        for (++lineNo_; lineNo_ < lines.size() && lines[lineNo_].trimmed() != QLatin1String("END"); ++lineNo_) {
            const QString row = lines[lineNo_].trimmed();
            if (row == QLatin1String("---")) {
                hojas.emplace_back();
                continue;
            }
            QStringList cells = row.split(';');
            for (QString& c : cells) c = c.trimmed();
            hojas.back().push_back(cells);
            ++filas;
        }
        if (lineNo_ >= lines.size()) error(QStringLiteral("falta END"));
        try {
            veltest::WriteWorkbook(QDir(folder_).filePath(name), hojas);
        } catch (const std::exception& e) {
            error(QString::fromUtf8(e.what()));
        }
        *out_ += QStringLiteral("  (%1 filas)\n").arg(filas);
    }

    void file(const Line& line) {
        const QString name = line.arg(1);
        QString content;
        if (line.quoted(2)) {
            content = line.arg(2);
            *out_ += QStringLiteral("  (%1 caracteres)\n").arg(content.size());
        } else {
            if (line.arg(2) != QLatin1String("<<END")) error(QStringLiteral("file NOMBRE <<END ... END"));
            QStringList body;
            const QStringList& lines = *lines_;
            for (++lineNo_; lineNo_ < lines.size() && lines[lineNo_].trimmed() != QLatin1String("END"); ++lineNo_)
                body << lines[lineNo_];
            if (lineNo_ >= lines.size()) error(QStringLiteral("falta END"));
            *out_ += QStringLiteral("  (%1 líneas)\n").arg(body.size());
            content = body.join('\n');
            if (!body.isEmpty()) content += '\n';
        }
        const QString path = QDir(folder_).filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly)) error("no se puede escribir " + name);
        f.write(content.toUtf8());
        f.close();
        if (content.startsWith(QLatin1String("#!")))
            f.setPermissions(f.permissions() | QFileDevice::ExeOwner | QFileDevice::ExeUser);
    }

    void nodb(const Line&) { QFile::remove(dbPath()); }

    void env(const Line& line) { qputenv(line.arg(1).toLocal8Bit(), line.arg(2).toLocal8Bit()); }

    void sql(const Line& line) {
        const QString statement = line.arg(1);
        if (vel::BaseDatos) {
            // The scenario's own setting up is not a statement of the program.
            scenarioSql_ = true;
            struct Back { bool& b; ~Back() { b = false; } } back{scenarioSql_};
            vel::BaseDatos->Execute(statement);
        } else {
            auto db = vel::Database::OpenDatabase(dbPath());
            db->Execute(statement);
        }
    }

    void startCommand(const Line&) { start(); }

    void restart(const Line&) {
        teardown();
        start();
    }

    void menu(const Line& line) {
        activate();
        QAction* a = mdi()->menuEntry(line.arg(1));
        if (!a) error("no hay entrada de menú " + line.arg(1));
        if (!a->isEnabled()) {
            *out_ += QStringLiteral("  (la entrada está deshabilitada: no se puede elegir)\n");
            return;
        }
        if (a->menu()) error("la entrada " + line.arg(1) + " es un submenú");
        a->trigger();
    }

    // Opens a window of the program by its name, as its menu entry would, even
    // when that entry is greyed (freparar).
    void open(const Line& line) {
        const QString name = line.arg(1);
        QString entry;
        for (const auto& [key, w] : windows_)
            if (w.window == name) entry = key;
        if (entry.isEmpty()) error("no hay ventana " + name);
        activate();
        vel::MDI* m = mdi();
        vb::RunEvent([m, entry] { m->Abrir(entry); });
    }

    // Opens a test fixture window as the menu opens the program's windows.
    void testWindow(const Line& line) {
        const QString name = line.arg(1);
        if (!testWindows().count(name)) error("no hay ventana de prueba " + name);
        activate();
        vel::MDI* m = mdi();
        vb::RunEvent([m, name] { m->Abrir(name); });
    }

    // ---- Driving controls -----------------------------------------------------------

    void click(const Line& line) {
        QWidget* c = visible(line, 1);
        activate();
        KindOf(c).click(c, line.from(2));
    }

    void dblclick(const Line& line) {
        QWidget* c = visible(line, 1);
        activate();
        KindOf(c).dblclick(c, line.from(2));
    }

    void focus(const Line& line) { giveFocus(visible(line, 1)); }

    // hover CONTROL: the mouse pointer moves onto the middle of the control, or
    // onto a bare point of a window (one no control covers), so the MouseMove
    // of what lies under it runs.
    void hover(const Line& line) {
        QWidget* c = visible(line, 1);
        activate();
        QPoint at = c->rect().center();
        // A window, or a frame or tab strip whose middle is covered by a
        // control inside it, is pointed at on a bare point of its own: that is
        // where its own MouseMove runs.
        if (qobject_cast<vb::Form*>(c) || qobject_cast<vel::MDI*>(c) ||
            ((qobject_cast<QGroupBox*>(c) || qobject_cast<QTabWidget*>(c)) && c->childAt(at))) {
            std::optional<QPoint> bare;
            for (int y = 2; y < c->height() && !bare; y += 4)
                for (int x = 2; x < c->width() && !bare; x += 4)
                    if (!c->childAt(x, y)) bare = QPoint(x, y);
            if (!bare) error("la ventana " + line.arg(1) + " no tiene ningún punto sin controles");
            at = *bare;
        }
        scrollIntoView(c, at);
        // A move from elsewhere, so that the pointer arrives even when it was
        // already there.
        QTest::mouseMove(c->window(), QPoint(0, 0));
        QTest::mouseMove(c, at);
    }

    // A point of a child window that lies outside the visible part of the
    // main window's workspace (a tall window on a small screen) is brought
    // into it with the workspace's scroll bars, as the user would before
    // pointing at it: a pointer only reaches what is on screen.
    static void scrollIntoView(QWidget* c, QPoint at) {
        auto* area = c->window()->findChild<QMdiArea*>();
        if (!area || !area->isAncestorOf(c)) return;
        const QRect visible = area->viewport()->rect().adjusted(2, 2, -2, -2);
        const QPoint p = c->mapTo(area->viewport(), at);
        if (visible.contains(p)) return;
        if (p.y() < visible.top() || p.y() > visible.bottom())
            area->verticalScrollBar()->setValue(area->verticalScrollBar()->value() + p.y() - visible.center().y());
        if (p.x() < visible.left() || p.x() > visible.right())
            area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->value() + p.x() - visible.center().x());
        QCoreApplication::processEvents();
    }

    // The timer of a window by its name (`Timer1`, `Fpruebacontroles.Timer1`):
    // the active window's first, then any open window's.
    vb::Timer* findTimer(const QString& name) {
        const int dot = int(name.indexOf('.'));
        vel::MDI* m = mdi();
        if (dot > 0) {
            QWidget* w = window(name.left(dot));
            if (!w) error("la ventana " + name.left(dot) + " no está abierta");
            if (auto* t = w->findChild<vb::Timer*>(name.mid(dot + 1))) return t;
            return w == m && name.mid(dot + 1) == QLatin1String("Timer1") ? m->Timer1 : nullptr;
        }
        const auto forms = m->openForms();
        for (vb::Form* f : forms)
            if (auto* t = f->findChild<vb::Timer*>(name)) return t;
        if (auto* t = m->findChild<vb::Timer*>(name)) return t;
        return name == QLatin1String("Timer1") ? m->Timer1 : nullptr;
    }

    // A timer by that name, when no control has it.
    vb::Timer* timerNamed(const QString& name) {
        const int dot = int(name.indexOf('.'));
        if (dot > 0 ? !window(name.left(dot)) : false) return nullptr;
        return findTimer(name);
    }

    // timer NAME: the timer's interval has gone by once: its Timer event runs
    // when the timer is enabled, as the clock would raise it; a stopped timer
    // raises nothing and the transcript says so.
    void timer(const Line& line) {
        vb::Timer* t = findTimer(line.arg(1));
        if (!t) error("no hay temporizador " + line.arg(1));
        activate();
        if (!t->Enabled() || t->Interval() <= 0) {
            *out_ += QStringLiteral("  (el temporizador está parado: no salta)\n");
            return;
        }
        emit t->Tick();
    }

    void type(const Line& line) {
        QWidget* c = visible(line, 1);
        giveFocus(c);
        for (const QChar ch : line.arg(2)) {
            QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : keyTarget(c);
            if (ch.unicode() < 128) {
                QTest::keyClick(target, char(ch.unicode()));
            } else {
                // Letters beyond ASCII (ñ, á) are keys that carry their text.
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(ch));
                QApplication::sendEvent(target, &press);
                QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(ch));
                QApplication::sendEvent(target, &release);
            }
            Settle();
        }
    }

    // The text goes on the clipboard and Ctrl+V is pressed in the control: a
    // paste, which raises no KeyPress for the letters it brings.
    void paste(const Line& line) {
        QWidget* c = visible(line, 1);
        giveFocus(c);
        QGuiApplication::clipboard()->setText(line.arg(2));
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : keyTarget(c);
        QTest::keyClick(target, Qt::Key_V, Qt::ControlModifier);
        Settle();
    }

    static Qt::Key keyOf(const QString& name) {
        static const std::map<QString, Qt::Key> keys = {
            {"Enter", Qt::Key_Return},   {"Return", Qt::Key_Return}, {"Tab", Qt::Key_Tab},
            {"Backspace", Qt::Key_Backspace}, {"Escape", Qt::Key_Escape}, {"PageDown", Qt::Key_PageDown},
            {"PageUp", Qt::Key_PageUp}, {"Up", Qt::Key_Up},         {"Down", Qt::Key_Down},
            {"Left", Qt::Key_Left},     {"Right", Qt::Key_Right},   {"Home", Qt::Key_Home},
            {"End", Qt::Key_End},       {"Delete", Qt::Key_Delete}, {"Space", Qt::Key_Space},
            {"F1", Qt::Key_F1},   {"F2", Qt::Key_F2},   {"F3", Qt::Key_F3},   {"F4", Qt::Key_F4},
            {"F5", Qt::Key_F5},   {"F6", Qt::Key_F6},   {"F7", Qt::Key_F7},   {"F8", Qt::Key_F8},
            {"F9", Qt::Key_F9},   {"F10", Qt::Key_F10}, {"F11", Qt::Key_F11}, {"F12", Qt::Key_F12}};
        const auto it = keys.find(name);
        return it == keys.end() ? Qt::Key_unknown : it->second;
    }

    void key(const Line& line) {
        QWidget* c = visible(line, 1);
        giveFocus(c);
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : keyTarget(c);
        const QString name = line.arg(2);
        const Qt::Key k = keyOf(name);
        if (k != Qt::Key_unknown)
            QTest::keyClick(target, k);
        else if (name.size() == 1)
            QTest::keyClick(target, name[0].toLatin1());
        else
            error("tecla desconocida " + name);
    }

    void select(const Line& line) {
        QWidget* c = visible(line, 1);
        activate();
        KindOf(c).select(c, line.arg(2), line.quoted(2));
    }

    void tab(const Line& line) {
        QWidget* c = visible(line, 1);
        activate();
        KindOf(c).tab(c, line.arg(2), line.quoted(2));
    }

    void pick(const Line& line) {
        QWidget* c = visible(line, 1);
        const QDate day = QDate::fromString(line.arg(2), QStringLiteral("dd/MM/yyyy"));
        if (!day.isValid()) error("fecha no válida " + line.arg(2));
        activate();
        KindOf(c).pick(c, day);
    }

    void check(const Line& line) {
        auto* c = qobject_cast<QCheckBox*>(find(line.arg(1)));
        if (!c) error(line.arg(1) + " no es una casilla");
        if (!c->isVisible()) error("el control " + line.arg(1) + " no se ve");
        activate();
        if (vb::Value(c) != line.arg(2).toInt())
            QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, QPoint(8, c->height() / 2));
    }

    void option(const Line& line) {
        auto* o = qobject_cast<QRadioButton*>(find(line.arg(1)));
        if (!o) error(line.arg(1) + " no es una opción");
        if (!o->isVisible()) error("el control " + line.arg(1) + " no se ve");
        activate();
        QTest::mouseClick(o, Qt::LeftButton, Qt::NoModifier, QPoint(8, o->height() / 2));
    }

    void resize(const Line& line) {
        QWidget* win = find(line.arg(1));
        const double tpp = 1440.0 / win->logicalDpiX();
        const int frameW = win->frameGeometry().width() - win->width();
        const int frameH = win->frameGeometry().height() - win->height();
        win->resize(int(line.arg(2).toInt() / tpp + 0.5) - frameW, int(line.arg(3).toInt() / tpp + 0.5) - frameH);
    }

    // A child window's frame inside the main window (or the window itself).
    static QWidget* frameOf(QWidget* win) {
        for (QWidget* p = win; p && !p->isWindow(); p = p->parentWidget())
            if (qobject_cast<QMdiSubWindow*>(p)) return p;
        return win;
    }

    QWidget* openWindow(const Line& line) {
        QWidget* win = window(line.arg(1));
        if (!win) error("la ventana " + line.arg(1) + " no está abierta");
        return win;
    }

    void minimize(const Line& line) { frameOf(find(line.arg(1)))->showMinimized(); }
    void maximize(const Line& line) { frameOf(find(line.arg(1)))->showMaximized(); }
    void restore(const Line& line) { frameOf(find(line.arg(1)))->showNormal(); }

    // Closing by the window's system box: the main window, or a child's frame.
    void close(const Line& line) { frameOf(openWindow(line))->close(); }

    // A key pressed as the user does: it goes where the keyboard goes (an open
    // menu, else the control with the focus, else the active window), through the
    // toolkit's shortcut handling.
    void press(const Line& line) {
        activate();
        const QString name = line.arg(1);
        const QKeySequence seq = QKeySequence::fromString(name, QKeySequence::PortableText);
        if (seq.count() != 1 || seq[0].key() == Qt::Key_unknown) error("tecla desconocida " + name);
        QWidget* target = QApplication::activePopupWidget();
        if (!target) target = QApplication::focusWidget();
        if (!target) target = QApplication::activeWindow();
        if (!target) error(QStringLiteral("ninguna ventana recibe teclas"));
        QTest::keyClick(target, seq[0].key(), seq[0].keyboardModifiers());
    }

    void runShell(const Line& line) {
        QProcess p;
        p.setWorkingDirectory(folder_);
        p.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line.arg(1)});
        p.waitForFinished(30000);
    }

    void wait(const Line& line) {
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < line.arg(1).toInt()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    // ---- Message boxes and dialogs ------------------------------------------------------

    void answer(const Line& line) { boxes_.answers.push_back(AnswerCode(line.arg(1))); }

    // dialog open "PATH"|cancel; dialog printer OK [COPIES [ORIENTATION]]|cancel.
    void dialog(const Line& line) {
        const QString kind = line.arg(1);
        const QString reply = line.arg(2);
        const bool cancel = !line.quoted(2) && reply.compare(QLatin1String("cancel"), Qt::CaseInsensitive) == 0;
        if (kind == QLatin1String("open")) {
            if (cancel) {
                dialogs_.openAnswers.push_back(std::nullopt);
                return;
            }
            QString path = reply;
            path.replace(QLatin1String("<App.Path>"), folder_);
            dialogs_.openAnswers.push_back(QDir(folder_).absoluteFilePath(path));
        } else if (kind == QLatin1String("printer")) {
            if (cancel) {
                dialogs_.printerAnswers.push_back(std::nullopt);
                return;
            }
            if (!line.quoted(2) && reply == QLatin1String("none")) {
                // The system has no printer at all: the dialog names none.
                dialogs_.printerAnswers.push_back(vb::PrinterChoice{.copies = 0, .orientation = 0});
                return;
            }
            if (reply != QLatin1String("OK")) error(QStringLiteral("dialog printer OK|cancel|none"));
            // The job goes to a file of the program folder.
            vb::PrinterChoice choice{.printerName = QString(),
                                     .outputFile = QDir(folder_).filePath(QStringLiteral("impresion.pdf")),
                                     .copies = 0,
                                     .orientation = 0};
            if (line.has(3)) choice.copies = line.arg(3).toInt();
            if (line.has(4)) choice.orientation = line.arg(4).toInt();
            dialogs_.printerAnswers.push_back(choice);
        } else {
            error(QStringLiteral("dialog open \"RUTA\"|cancel, o dialog printer OK|cancel|none"));
        }
    }

    // ---- Looking ------------------------------------------------------------------------

    QString controlState(QWidget* w) {
        const ControlKind& kind = KindOf(w);
        QStringList parts;
        parts << w->objectName() << QString::fromLatin1(w->metaObject()->className()).section("::", -1);
        parts << kind.state(w);
        parts << "Enabled=" + BoolText(vb::Enabled(w)) << "Visible=" + BoolText(vb::Visible(w));
        if (QApplication::focusWidget() == w) parts << QStringLiteral("Focus");
        return parts.join(' ') + kind.details(w);
    }

    void showWindow(QWidget* w) {
        if (auto* m = qobject_cast<vel::MDI*>(w)) {
            *out_ += QStringLiteral("  MDI Caption=%1\n").arg(Quote(m->windowTitle()));
            for (QAction* top : m->menuBar()->actions()) showMenu(top, 1);
            return;
        }
        *out_ += "  " + controlState(w) + '\n';
        // Controls in tab order.
        QWidget* c = w->nextInFocusChain();
        QList<QWidget*> seen;
        while (c && c != w && !seen.contains(c)) {
            seen << c;
            if (w->isAncestorOf(c) && c->focusPolicy() != Qt::NoFocus && !c->objectName().isEmpty() &&
                !c->objectName().startsWith("qt_"))
                *out_ += "    " + controlState(c).replace("\n    ", "\n        ") + '\n';
            c = c->nextInFocusChain();
        }
        // Labels, which take no focus.
        for (QLabel* l : w->findChildren<QLabel*>())
            if (!l->objectName().isEmpty() && !l->objectName().startsWith("qt_"))
                *out_ += "    " + controlState(l) + '\n';
    }

    void showMenu(QAction* a, int depth) {
        const QString pad(depth * 2, ' ');
        if (a->isSeparator()) {
            *out_ += pad + a->objectName() + " -\n";
            return;
        }
        *out_ += pad + a->objectName() + ' ' + Quote(a->text()) + (a->isEnabled() ? "" : " disabled") + '\n';
        if (QMenu* m = a->menu())
            for (QAction* sub : m->actions()) showMenu(sub, depth + 1);
    }

    void show(const Line& line) {
        const QString what = line.arg(1);
        if (what == QLatin1String("session")) {
            vel::MDI* m = mdi();
            *out_ += QStringLiteral("  ClientePrograma=%1 TiendaPrograma=%2 Timer1.Enabled=%3 Timer1.Interval=%4\n")
                         .arg(Quote(m->ClientePrograma), Quote(m->TiendaPrograma), BoolText(m->Timer1->Enabled()))
                         .arg(m->Timer1->Interval());
        } else if (what == QLatin1String("printer")) {
            if (printers_.jobs.empty()) {
                *out_ += QStringLiteral("  (nada impreso)\n");
                return;
            }
            // The temporary program folder reads as <App.Path> so transcripts stay the same.
            QString t = printers_.last().transcript();
            t.replace(folder_, QStringLiteral("<App.Path>"));
            for (const QString& l : t.split('\n', Qt::SkipEmptyParts)) *out_ += "  " + l + '\n';
        } else if (what == QLatin1String("windows")) {
            for (vb::Form* f : mdi()->openForms())
                *out_ += QStringLiteral("  %1 %2\n").arg(f->objectName(), Quote(f->windowTitle()));
        } else {
            QWidget* c = find(what);
            if (qobject_cast<vel::MDI*>(c) || qobject_cast<vb::Form*>(c))
                showWindow(c);
            else
                *out_ += "  " + controlState(c).replace("\n    ", "\n      ") + '\n';
        }
    }

    void query(const Line& line) {
        const QString r = rows(line.arg(1));
        if (r.isEmpty())
            *out_ += QStringLiteral("  (ninguna fila)\n");
        else
            for (const QString& row : r.split(';')) *out_ += "  " + row + '\n';
    }

    void cat(const Line& line) {
        QFile f(QDir(folder_).filePath(line.arg(1)));
        if (!f.open(QIODevice::ReadOnly)) {
            *out_ += QStringLiteral("  (no existe)\n");
        } else {
            for (const QString& l : QString::fromUtf8(f.readAll()).split('\n')) *out_ += "  | " + l + '\n';
        }
    }

    // The file may be named in the program folder as "<App.Path>/name.png".
    void screenshot(const Line& line) {
        QWidget* win = line.has(2) ? find(line.arg(2)) : mdi();
        QString file = line.arg(1);
        file.replace(QLatin1String("<App.Path>"), folder_);
        if (!win->grab().save(file)) error("no se puede guardar " + line.arg(1));
    }

    // The property of a control as `expect` reads it: the kind's own first,
    // then what every control has.
    QString property(QWidget* w, const QString& prop) {
        if (const std::optional<QString> own = KindOf(w).property(w, prop)) return *own;
        if (prop == QLatin1String("Caption") || prop == QLatin1String("Text")) return w->windowTitle();
        if (prop == QLatin1String("Enabled")) return BoolText(vb::Enabled(w));
        if (prop == QLatin1String("Visible")) return BoolText(vb::Visible(w));
        if (prop == QLatin1String("Focus")) return BoolText(QApplication::focusWidget() == w);
        if (prop == QLatin1String("BackColor")) return QString::number(vb::BackColor(w));
        if (prop == QLatin1String("ForeColor")) return QString::number(vb::ForeColor(w));
        if (auto* m = qobject_cast<vel::MDI*>(w)) {
            if (prop == QLatin1String("Width")) return QString::number(m->Width());
            if (prop == QLatin1String("Height")) return QString::number(m->Height());
        }
        if (prop == QLatin1String("Width")) return QString::number(twips(w, w->width()));
        if (prop == QLatin1String("Height")) return QString::number(twips(w, w->height()));
        error("propiedad desconocida " + prop + " en " + w->objectName());
    }

    QString rows(const QString& sql) {
        std::unique_ptr<vel::Database> own;
        vel::Database* db = vel::BaseDatos;
        if (!db) {
            own = vel::Database::OpenDatabase(dbPath());
            db = own.get();
        }
        // The scenario's own look at the tables is not a statement of the program.
        scenarioSql_ = true;
        struct Back { bool& b; ~Back() { b = false; } } back{scenarioSql_};
        auto rs = db->OpenRecordset(sql);
        QStringList out;
        while (!rs->Eof()) {
            out << rowText(*rs, sql);
            rs->MoveNext();
        }
        return out.join(';');
    }

    // The fields of the current row joined by "|": the columns named in the
    // SELECT, or every column of the table for "SELECT *".
    QString rowText(vel::Recordset& rs, const QString& sql) {
        QStringList values;
        for (const QString& c : selectColumns(sql)) {
            const vb::Variant v = rs.Fields(c);
            values << (v.isNull() ? QStringLiteral("Null") : v.str());
        }
        return values.join('|');
    }

    QStringList selectColumns(const QString& sql) {
        const QString s = sql.simplified();
        const int from = int(s.indexOf(QLatin1String(" from "), 0, Qt::CaseInsensitive));
        if (!s.startsWith(QLatin1String("select "), Qt::CaseInsensitive) || from < 0)
            error(QStringLiteral("solo se consulta con SELECT columnas FROM tabla"));
        const QString list = s.mid(7, from - 7).trimmed();
        if (list != QLatin1String("*")) {
            QStringList cols;
            for (const QString& c : list.split(',')) cols << c.trimmed();
            return cols;
        }
        const QString table = s.mid(from + 6).section(' ', 0, 0);
        const auto* t = vel::schema::FindTable(table);
        if (!t) error("tabla desconocida " + table);
        QStringList cols;
        for (const auto& c : t->columns) cols << QString::fromLatin1(c.name);
        return cols;
    }

    // ---- Expectations ---------------------------------------------------------------------

    void expect(const Line& line) {
        const QString name = line.arg(1);
        // The property follows the last dot outside parentheses, so that
        // both Combocodigo.List(0) and an array control, Textven(0).Enabled, work.
        int dot = -1, depth = 0;
        for (int i = 0; i < name.size(); ++i) {
            if (name[i] == '(') ++depth;
            else if (name[i] == ')') --depth;
            else if (name[i] == '.' && depth == 0) dot = i;
        }
        if (name.startsWith(QLatin1String("session."))) dot = 7;
        if (dot <= 0) error(QStringLiteral("expect CONTROL.Propiedad \"valor\""));
        QString got;
        if (name.left(dot) == QLatin1String("session")) {
            const QString prop = name.mid(dot + 1);
            vel::MDI* m = mdi();
            if (prop == QLatin1String("ClientePrograma")) got = m->ClientePrograma;
            else if (prop == QLatin1String("TiendaPrograma")) got = m->TiendaPrograma;
            else if (prop == QLatin1String("Timer1.Enabled")) got = BoolText(m->Timer1->Enabled());
            else error("valor de sesión desconocido " + prop);
        } else if (QAction* a = mdi()->menuEntry(name.left(dot))) {
            // A menu entry: its caption and whether it can be chosen.
            const QString prop = name.mid(dot + 1);
            if (prop == QLatin1String("Enabled")) got = BoolText(a->isEnabled());
            else if (prop == QLatin1String("Caption")) got = a->text();
            else error("propiedad desconocida " + prop + " en " + name.left(dot));
        } else if (vb::Timer* t = timerNamed(name.left(dot))) {
            const QString prop = name.mid(dot + 1);
            if (prop == QLatin1String("Enabled")) got = BoolText(t->Enabled());
            else if (prop == QLatin1String("Interval")) got = QString::number(t->Interval());
            else error("propiedad desconocida " + prop + " en " + name.left(dot));
        } else {
            got = property(find(name.left(dot)), name.mid(dot + 1));
        }
        if (got != line.arg(2)) fail(name + " es " + Quote(got) + ", se esperaba " + Quote(line.arg(2)));
    }

    ShownBox oldestUnchecked(const QString& expected) {
        if (boxes_.unchecked.empty()) fail("no se mostró ningún mensaje; se esperaba " + Quote(expected));
        const ShownBox box = boxes_.unchecked.front();
        boxes_.unchecked.pop_front();
        return box;
    }

    void expectMsg(const Line& line) {
        const QString got = oldestUnchecked(line.arg(1)).text;
        if (got != line.arg(1)) fail("el mensaje fue " + Quote(got) + ", se esperaba " + Quote(line.arg(1)));
    }

    // expect-msgbox "TITLE" "TEXT" STYLE
    void expectMsgbox(const Line& line) {
        const QString title = line.arg(1), text = line.arg(2);
        bool ok = false;
        const int style = line.arg(3).toInt(&ok);
        if (!ok) error("el estilo es un número: " + line.arg(3));
        const ShownBox got = oldestUnchecked(text);
        if (got.title != title || got.text != text || got.style != style)
            fail(QStringLiteral("el mensaje fue %1 %2 style %3, se esperaba %4 %5 style %6")
                     .arg(Quote(got.title), Quote(got.text))
                     .arg(got.style)
                     .arg(Quote(title), Quote(text))
                     .arg(style));
    }

    void expectNoMsg(const Line&) {
        if (!boxes_.unchecked.empty()) fail("hay un mensaje sin comprobar: " + Quote(boxes_.unchecked.front().text));
    }

    void expectFocus(const Line& line) {
        QWidget* c = find(line.arg(1));
        QWidget* f = QApplication::focusWidget();
        if (f != c && !(f && c->isAncestorOf(f) && qobject_cast<QComboBox*>(c)))
            fail("el foco está en " + (f ? f->objectName() : QStringLiteral("ningún control")));
    }

    void expectOpen(const Line& line) {
        if (!window(line.arg(1))) fail(line.arg(1) + " no está abierta");
    }

    void expectClosed(const Line& line) {
        if (window(line.arg(1))) fail(line.arg(1) + " está abierta");
    }

    void expectQuery(const Line& line) {
        const QString got = rows(line.arg(1));
        if (got != line.arg(2)) fail("la consulta dio " + Quote(got) + ", se esperaba " + Quote(line.arg(2)));
    }

    void expectEnded(const Line&) {
        if (!ended_) fail(QStringLiteral("el programa sigue en marcha"));
    }

    void expectFile(const Line& line) {
        QFile f(QDir(folder_).filePath(line.arg(1)));
        const QString got = f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
        if (got != line.arg(2)) fail(line.arg(1) + " tiene " + Quote(got));
    }

    static long twips(const QWidget* w, int pixels) { return std::lround(pixels * 1440.0 / w->logicalDpiX()); }

    // Width and Height of every named control of a window, in twips.
    std::map<QString, QString> sizes(QWidget* win) {
        std::map<QString, QString> out;
        for (QWidget* c : win->findChildren<QWidget*>())
            if (!c->objectName().isEmpty() && !c->objectName().startsWith(QLatin1String("qt_")))
                out[c->objectName()] = QStringLiteral("%1 x %2").arg(twips(c, c->width())).arg(twips(c, c->height()));
        return out;
    }

    void rememberSizes(const Line& line) { remembered_[line.arg(1)] = sizes(openWindow(line)); }

    void expectSameSizes(const Line& line) {
        QWidget* win = openWindow(line);
        const auto it = remembered_.find(line.arg(1));
        if (it == remembered_.end()) error("no se recordaron los tamaños de " + line.arg(1));
        const auto now = sizes(win);
        QStringList changed;
        for (const auto& [control, size] : it->second) {
            const auto n = now.find(control);
            if (n == now.end() || n->second != size)
                changed << control + " " + size + " -> " + (n == now.end() ? QStringLiteral("?") : n->second);
        }
        if (!changed.isEmpty()) fail("cambiaron de tamaño: " + changed.join(", "));
    }

    // ---- The printer ----------------------------------------------------------------

    // printer none: the machine has no printer at all; what prints without a
    // dialog fails.
    void printer(const Line& line) {
        if (line.quoted(1) || line.arg(1) != QLatin1String("none")) error(QStringLiteral("printer none"));
        printers_.noPrinter = true;
    }

    const vb::PrintJobRecord& lastDocument() {
        if (printers_.jobs.empty()) fail(QStringLiteral("no se ha impreso nada"));
        return printers_.last();
    }

    int number(const Line& line, int i, const QString& usage) {
        bool ok = false;
        const int n = line.arg(i).toInt(&ok);
        if (!ok || n < 0) error(usage);
        return n;
    }

    // expect-print-line N "text": the Nth Print, from 1, of the last document.
    void expectPrintLine(const Line& line) {
        const int n = number(line, 1, QStringLiteral("expect-print-line N \"texto\""));
        const QStringList lines = lastDocument().lines();
        if (n < 1 || n > lines.size())
            fail(QStringLiteral("el documento tiene %1 líneas, no hay línea %2").arg(lines.size()).arg(n));
        if (lines[n - 1] != line.arg(2)) fail(QStringLiteral("la línea %1 es %2").arg(n).arg(Quote(lines[n - 1])));
    }

    // expect-print-lines N: the last document has N Prints.
    void expectPrintLines(const Line& line) {
        const int n = number(line, 1, QStringLiteral("expect-print-lines N"));
        const int got = int(lastDocument().lines().size());
        if (got != n) fail(QStringLiteral("el documento tiene %1 líneas").arg(got));
    }

    // expect-printed N: N documents have gone to the printer since the scenario began.
    void expectPrinted(const Line& line) {
        const int n = number(line, 1, QStringLiteral("expect-printed N"));
        const int got = int(printers_.jobs.size());
        if (got != n) fail(QStringLiteral("se han impreso %1 documentos").arg(got));
    }

    // expect-pointer wait|normal: the program's MousePointer, and the pointer on screen.
    // expect-pointer wait|normal "TEXT": every statement holding the text that
    // the program has run since the last such check ran under that pointer
    // (and there was at least one). A query may run in the engine's keyed form,
    // so the text is looked for anywhere in the statement.
    void expectPointer(const Line& line) {
        const QString wanted = line.arg(1);
        if (wanted != QLatin1String("wait") && wanted != QLatin1String("normal"))
            error(QStringLiteral("expect-pointer wait|normal [\"TEXTO\"]"));
        if (line.has(2)) {
            const QString text = line.arg(2);
            int seen = 0;
            std::vector<Statement> rest;
            for (const Statement& s : statements_) {
                if (!s.sql.contains(text)) {
                    rest.push_back(s);
                    continue;
                }
                ++seen;
                if (s.busy != (wanted == QLatin1String("wait")))
                    fail("la sentencia " + Quote(s.sql) + " se ejecutó con el puntero " +
                         (s.busy ? QStringLiteral("wait") : QStringLiteral("normal")));
            }
            if (seen == 0) fail("no se ha ejecutado ninguna sentencia que contenga " + Quote(text));
            statements_ = std::move(rest);
            *out_ += QStringLiteral("  (%1 sentencias)\n").arg(seen);
            return;
        }
        const bool busy = vb::MousePointer() == vb::vbHourglass;
        const QCursor* shown = QGuiApplication::overrideCursor();
        const bool hourglass = shown && shown->shape() == Qt::WaitCursor;
        if (busy != hourglass) fail(QStringLiteral("MousePointer y el puntero de la pantalla no coinciden"));
        const QString got = busy ? QStringLiteral("wait") : QStringLiteral("normal");
        if (got != wanted) fail("el puntero es " + got + ", se esperaba " + wanted);
    }

    QString* out_;
    std::vector<Statement> statements_;
    QString origin_;
    QString statementLog_;
    std::set<QString> ran_;
    bool scenarioSql_ = false;
    ScriptedBoxes boxes_;
    ScriptedDialogs dialogs_;
    vb::PrintRecorder printers_;
    QTemporaryDir dir_;
    QString folder_;
    std::unique_ptr<FileCommands> files_;
    std::optional<vb::InstalledEnvironment> environment_;
    vel::WindowTableMap windows_;
    const QStringList* lines_ = nullptr;
    std::map<QString, std::map<QString, QString>> remembered_;
    int lineNo_ = 0;
    bool started_ = false;
    bool ended_ = false;
    bool endReported_ = false;
};

} // namespace

Result Run(const QString& text, QString* transcript, const QString& origin, const QString& statementLog) {
    try {
        Driver d(transcript, origin, statementLog);
        return d.run(text);
    } catch (const Failure& f) {
        *transcript += "ERROR: " + f.message + '\n';
        return ScriptError;
    }
}

} // namespace vel::scenario
