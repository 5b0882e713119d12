#include "scenario/driver.h"
#include "app/window_table.h"
#include "core/mdi.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include "runtime/msgbox.h"
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QKeySequence>
#include <QTest>
#include <cmath>
#include <deque>
#include <memory>

namespace vel::scenario {

namespace {

struct Failure {
    QString message;
};
struct Fail : Failure {};   // an expectation that does not hold
struct Error : Failure {};  // a scenario line the driver can't carry out

[[noreturn]] void fail(const QString& m) { throw Fail{{m}}; }
[[noreturn]] void error(const QString& m) { throw Error{{m}}; }

QString quote(const QString& s) {
    QString q = s;
    q.replace('\\', QLatin1String("\\\\")).replace('"', QLatin1String("\\\"")).replace('\r', QLatin1String("\\r"))
        .replace('\n', QLatin1String("\\n")).replace('\t', QLatin1String("\\t"));
    return '"' + q + '"';
}

// Splits a line into words; double-quoted words may hold blanks (\" and \\ escape).
QStringList words(const QString& line) {
    QStringList out;
    int i = 0;
    const int n = int(line.size());
    while (i < n) {
        while (i < n && line[i].isSpace()) ++i;
        if (i >= n) break;
        QString w;
        if (line[i] == '"') {
            ++i;
            while (i < n && line[i] != '"') {
                if (line[i] == '\\' && i + 1 < n) {
                    const QChar c = line[i + 1];
                    w += c == 'n' ? QChar('\n') : c == 't' ? QChar('\t') : c;
                    i += 2;
                    continue;
                }
                w += line[i++];
            }
            if (i >= n) error(QStringLiteral("comillas sin cerrar"));
            ++i;
        } else {
            while (i < n && !line[i].isSpace()) w += line[i++];
        }
        out << w;
    }
    return out;
}

const char* answerName(int a) {
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

int answerCode(const QString& name) {
    static const std::map<QString, int> codes = {
        {"OK", vb::vbOK},       {"Cancel", vb::vbCancel}, {"Abort", vb::vbAbort}, {"Retry", vb::vbRetry},
        {"Ignore", vb::vbIgnore}, {"Yes", vb::vbYes},     {"No", vb::vbNo}};
    const auto it = codes.find(name);
    if (it == codes.end()) error("respuesta desconocida: " + name);
    return it->second;
}

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

class ScriptedBoxes : public vb::MessageBoxService {
public:
    explicit ScriptedBoxes(QString* out) : out_(out) {}
    // The temporary program folder reads as <App.Path> so transcripts stay the same.
    QString folder;
    std::deque<int> answers;
    std::deque<QString> unchecked;

    int show(const QString& title, const QString& shownText, int style) override {
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
                *out_ += QStringLiteral("  (la respuesta %1 no es un botón de este mensaje)\n").arg(answerName(answer));
        }
        *out_ += QStringLiteral("  msgbox %1 %2 style %3 -> %4\n")
                     .arg(quote(title), quote(text))
                     .arg(style)
                     .arg(answerName(answer));
        unchecked.push_back(text);
        return answer;
    }
    void about(const QString& application, const QString& notice) override {
        *out_ += QStringLiteral("  about %1 %2\n").arg(quote(application), quote(notice));
        unchecked.push_back(application + '\n' + notice);
    }

private:
    QString* out_;
};

QString boolText(bool b) { return b ? QStringLiteral("True") : QStringLiteral("False"); }

class Driver {
public:
    Driver(QString* out, QString origin) : out_(out), origin_(std::move(origin)), boxes_(out) {
        if (!dir_.isValid()) error(QStringLiteral("no se puede crear la carpeta del programa"));
        folder_ = dir_.path();
        boxes_.folder = folder_;
        QDir(folder_).mkpath(QStringLiteral("bin"));
        vb::SetAppPath(folder_);
        vb::SetMessageBoxService(&boxes_);
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0, 0)));
        vb::ResetEnded();
        vb::SetEndHandler([this] { ended_ = true; });
        vel::SetWindowTable(&vel::WindowTable());
        const QByteArray path = QDir(folder_).filePath(QStringLiteral("bin")).toLocal8Bit() + ':' + qgetenv("PATH");
        qputenv("PATH", path);
        vel::schema::CreateEmptyDatabase(dbPath());
    }
    ~Driver() {
        teardown();
        vb::SetMessageBoxService(nullptr);
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
        vb::clock::unpin();
    }

    Result run(const QString& text) {
        const QStringList lines = text.split('\n');
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
                command(line, lines);
                settle();
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
    QString dbPath() const { return QDir(folder_).filePath(QStringLiteral("datos.mdb")); }

    void settle() {
        for (int i = 0; i < 8; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void teardown() {
        if (started_) {
            vel::CloseSession();
            started_ = false;
            settle();
        }
    }

    void start() {
        if (started_) error(QStringLiteral("el programa ya está en marcha"));
        ended_ = endReported_ = false;
        vb::ResetEnded();
        started_ = true;
        vb::RunEvent([] { vel::Main(); });
        settle();
        if (vel::MDI* mdi = vel::MainWindow()) {
            mdi->activateWindow();
            settle();
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
            settle();
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

    void needVisible(QWidget* w, const QString& name) {
        if (!w->isVisible()) error("el control " + name + " no se ve");
    }

    QWidget* keyTarget(QWidget* w) {
        if (auto* c = qobject_cast<QComboBox*>(w); c && c->isEditable() && c->lineEdit()) return c;
        return w;
    }

    void giveFocus(QWidget* w) {
        activate();
        if (QApplication::focusWidget() == w || (w->focusProxy() && QApplication::focusWidget() == w->focusProxy()))
            return;
        if (auto* c = qobject_cast<QComboBox*>(w); c && QApplication::focusWidget() == c->lineEdit()) return;
        w->setFocus(Qt::MouseFocusReason);
        settle();
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

    QString controlState(QWidget* w) {
        QStringList parts;
        const QString kind = QString::fromLatin1(w->metaObject()->className()).section("::", -1);
        parts << w->objectName() << kind;
        if (auto* t = qobject_cast<QLineEdit*>(w)) parts << "Text=" + quote(t->text());
        else if (auto* l = qobject_cast<QLabel*>(w)) parts << "Caption=" + quote(l->text());
        else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            parts << "Caption=" + quote(b->text());
            if (qobject_cast<QCheckBox*>(w)) parts << QStringLiteral("Value=%1").arg(b->isChecked() ? 1 : 0);
            if (qobject_cast<QRadioButton*>(w)) parts << "Value=" + boolText(b->isChecked());
        } else if (auto* c = qobject_cast<QComboBox*>(w)) {
            parts << "Text=" + quote(c->currentText()) << QStringLiteral("ListIndex=%1").arg(c->currentIndex())
                  << QStringLiteral("ListCount=%1").arg(c->count());
        } else if (auto* f = qobject_cast<vb::Form*>(w)) parts << "Caption=" + quote(f->windowTitle());
        parts << "Enabled=" + boolText(vb::Enabled(w)) << "Visible=" + boolText(vb::Visible(w));
        if (QApplication::focusWidget() == w) parts << QStringLiteral("Focus");
        QString s = parts.join(' ');
        if (auto* c = qobject_cast<QComboBox*>(w))
            for (int i = 0; i < c->count(); ++i) s += QStringLiteral("\n    [%1] %2").arg(i).arg(quote(c->itemText(i)));
        if (auto* g = qobject_cast<QTableWidget*>(w)) {
            s += QStringLiteral(" Rows=%1 Cols=%2").arg(g->rowCount()).arg(g->columnCount());
            for (int r = 0; r < g->rowCount(); ++r) {
                QStringList cells;
                for (int c = 0; c < g->columnCount(); ++c)
                    cells << (g->item(r, c) ? g->item(r, c)->text() : QString());
                s += QStringLiteral("\n    %1: %2").arg(r).arg(cells.join(" | "));
            }
        }
        return s;
    }

    void showWindow(QWidget* w) {
        if (auto* m = qobject_cast<vel::MDI*>(w)) {
            *out_ += QStringLiteral("  MDI Caption=%1\n").arg(quote(m->windowTitle()));
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
        *out_ += pad + a->objectName() + ' ' + quote(a->text()) + (a->isEnabled() ? "" : " disabled") + '\n';
        if (QMenu* m = a->menu())
            for (QAction* sub : m->actions()) showMenu(sub, depth + 1);
    }

    QString property(QWidget* w, const QString& prop) {
        if (prop == QLatin1String("Text")) {
            if (auto* t = qobject_cast<QLineEdit*>(w)) return t->text();
            if (auto* c = qobject_cast<QComboBox*>(w)) return c->currentText();
        }
        if (prop == QLatin1String("Caption") || prop == QLatin1String("Text")) {
            if (auto* l = qobject_cast<QLabel*>(w)) return l->text();
            if (auto* b = qobject_cast<QAbstractButton*>(w)) return b->text();
            return w->windowTitle();
        }
        if (prop == QLatin1String("Enabled")) return boolText(vb::Enabled(w));
        if (prop == QLatin1String("Visible")) return boolText(vb::Visible(w));
        if (prop == QLatin1String("Focus")) return boolText(QApplication::focusWidget() == w);
        if (prop == QLatin1String("BackColor")) return QString::number(vb::BackColor(w));
        if (prop == QLatin1String("ForeColor")) return QString::number(vb::ForeColor(w));
        if (prop == QLatin1String("Value")) {
            if (auto* c = qobject_cast<QCheckBox*>(w)) return QString::number(vb::Value(c));
            if (auto* o = qobject_cast<QRadioButton*>(w)) return boolText(vb::Value(o));
        }
        if (auto* m = qobject_cast<vel::MDI*>(w)) {
            if (prop == QLatin1String("Width")) return QString::number(m->Width());
            if (prop == QLatin1String("Height")) return QString::number(m->Height());
        }
        if (prop == QLatin1String("Width")) return QString::number(twips(w, w->width()));
        if (prop == QLatin1String("Height")) return QString::number(twips(w, w->height()));
        if (auto* c = qobject_cast<QComboBox*>(w)) {
            if (prop == QLatin1String("ListCount")) return QString::number(c->count());
            if (prop == QLatin1String("ListIndex")) return QString::number(c->currentIndex());
            if (prop.startsWith(QLatin1String("List("))) {
                const int i = prop.mid(5, prop.size() - 6).toInt();
                return c->itemText(i);
            }
        }
        if (auto* g = qobject_cast<QTableWidget*>(w)) {
            if (prop == QLatin1String("Rows")) return QString::number(g->rowCount());
            if (prop == QLatin1String("Cols")) return QString::number(g->columnCount());
            if (prop.startsWith(QLatin1String("TextMatrix("))) {
                const QStringList rc = prop.mid(11, prop.size() - 12).split(',');
                if (rc.size() == 2) {
                    auto* item = g->item(rc[0].trimmed().toInt(), rc[1].trimmed().toInt());
                    return item ? item->text() : QString();
                }
            }
        }
        error("propiedad desconocida " + prop + " en " + w->objectName());
    }

    // A child window's frame inside the main window (or the window itself).
    static QWidget* frameOf(QWidget* win) {
        for (QWidget* p = win; p && !p->isWindow(); p = p->parentWidget())
            if (qobject_cast<QMdiSubWindow*>(p)) return p;
        return win;
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

    // A key pressed as the user does: it goes where the keyboard goes (an open
    // menu, else the control with the focus, else the active window), through the
    // toolkit's shortcut handling.
    void press(const QString& name) {
        const QKeySequence seq = QKeySequence::fromString(name, QKeySequence::PortableText);
        if (seq.count() != 1 || seq[0].key() == Qt::Key_unknown) error("tecla desconocida " + name);
        QWidget* target = QApplication::activePopupWidget();
        if (!target) target = QApplication::focusWidget();
        if (!target) target = QApplication::activeWindow();
        if (!target) error(QStringLiteral("ninguna ventana recibe teclas"));
        QTest::keyClick(target, seq[0].key(), seq[0].keyboardModifiers());
    }

    QString rows(const QString& sql) {
        std::unique_ptr<vel::Database> own;
        vel::Database* db = vel::BaseDatos;
        if (!db) {
            own = vel::Database::OpenDatabase(dbPath());
            db = own.get();
        }
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
        QStringList cols = selectColumns(sql);
        QStringList values;
        for (const QString& c : cols) {
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

    void command(const QString& line, const QStringList& lines) {
        const QStringList w = words(line);
        const QString cmd = w.value(0);
        auto arg = [&](int i) {
            if (i >= w.size()) error("falta un argumento en " + cmd);
            return w[i];
        };
        if (cmd == QLatin1String("today")) {
            const QDate d = QDate::fromString(arg(1), QStringLiteral("dd/MM/yyyy"));
            const QTime t = w.size() > 2 ? QTime::fromString(w[2], QStringLiteral("HH:mm:ss")) : QTime(10, 0, 0);
            if (!d.isValid() || !t.isValid()) error(QStringLiteral("fecha u hora no válidas"));
            vb::clock::pin(QDateTime(d, t));
        } else if (cmd == QLatin1String("file")) {
            const QString name = arg(1);
            if (w.value(2) != QLatin1String("<<END")) error(QStringLiteral("file NOMBRE <<END ... END"));
            QStringList body;
            for (++lineNo_; lineNo_ < lines.size() && lines[lineNo_].trimmed() != QLatin1String("END"); ++lineNo_)
                body << lines[lineNo_];
            if (lineNo_ >= lines.size()) error(QStringLiteral("falta END"));
            *out_ += QStringLiteral("  (%1 líneas)\n").arg(body.size());
            const QString path = QDir(folder_).filePath(name);
            QDir().mkpath(QFileInfo(path).path());
            QFile f(path);
            if (!f.open(QIODevice::WriteOnly)) error("no se puede escribir " + name);
            QString content = body.join('\n');
            if (!body.isEmpty()) content += '\n';
            f.write(content.toUtf8());
            f.close();
            if (content.startsWith(QLatin1String("#!")))
                f.setPermissions(f.permissions() | QFileDevice::ExeOwner | QFileDevice::ExeUser);
        } else if (cmd == QLatin1String("nodb")) {
            QFile::remove(dbPath());
        } else if (cmd == QLatin1String("sql")) {
            const QString sql = arg(1);
            if (vel::BaseDatos) {
                vel::BaseDatos->Execute(sql);
            } else {
                auto db = vel::Database::OpenDatabase(dbPath());
                db->Execute(sql);
            }
        } else if (cmd == QLatin1String("start")) {
            start();
        } else if (cmd == QLatin1String("restart")) {
            teardown();
            start();
        } else if (cmd == QLatin1String("menu")) {
            activate();
            QAction* a = mdi()->menuEntry(arg(1));
            if (!a) error("no hay entrada de menú " + w[1]);
            if (!a->isEnabled()) {
                *out_ += QStringLiteral("  (la entrada está deshabilitada: no se puede elegir)\n");
                return;
            }
            if (a->menu()) error("la entrada " + w[1] + " es un submenú");
            a->trigger();
        } else if (cmd == QLatin1String("click")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            activate();
            if (qobject_cast<QComboBox*>(c)) {
                giveFocus(c);
            } else {
                QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, c->rect().center());
            }
        } else if (cmd == QLatin1String("dblclick")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            activate();
            if (auto* v = qobject_cast<QAbstractItemView*>(c); v && w.size() > 3) {
                const QModelIndex index = v->model()->index(w[2].toInt(), w[3].toInt());
                const QRect r = v->visualRect(index);
                QTest::mouseClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
                QTest::mouseDClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
            } else {
                QTest::mouseDClick(c, Qt::LeftButton, Qt::NoModifier, c->rect().center());
            }
        } else if (cmd == QLatin1String("focus")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            giveFocus(c);
        } else if (cmd == QLatin1String("type")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            giveFocus(c);
            for (const QChar ch : arg(2)) {
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
                settle();
            }
        } else if (cmd == QLatin1String("key")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            giveFocus(c);
            QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : keyTarget(c);
            const Qt::Key k = keyOf(arg(2));
            if (k != Qt::Key_unknown)
                QTest::keyClick(target, k);
            else if (w[2].size() == 1)
                QTest::keyClick(target, w[2][0].toLatin1());
            else
                error("tecla desconocida " + w[2]);
        } else if (cmd == QLatin1String("select")) {
            QWidget* c = find(arg(1));
            needVisible(c, w[1]);
            auto* combo = qobject_cast<QComboBox*>(c);
            if (!combo) error(w[1] + " no es una lista");
            bool isIndex = false;
            int index = arg(2).toInt(&isIndex);
            if (!isIndex || line.contains('"')) index = combo->findText(w[2], Qt::MatchExactly);
            if (index < 0 || index >= combo->count()) error("no hay tal entrada en " + w[1] + ": " + w[2]);
            giveFocus(combo);
            combo->setCurrentIndex(index);
            emit combo->activated(index);
        } else if (cmd == QLatin1String("check")) {
            auto* c = qobject_cast<QCheckBox*>(find(arg(1)));
            if (!c) error(w[1] + " no es una casilla");
            needVisible(c, w[1]);
            activate();
            if (vb::Value(c) != arg(2).toInt()) QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, QPoint(8, c->height() / 2));
        } else if (cmd == QLatin1String("option")) {
            auto* o = qobject_cast<QRadioButton*>(find(arg(1)));
            if (!o) error(w[1] + " no es una opción");
            needVisible(o, w[1]);
            activate();
            QTest::mouseClick(o, Qt::LeftButton, Qt::NoModifier, QPoint(8, o->height() / 2));
        } else if (cmd == QLatin1String("resize")) {
            QWidget* win = find(arg(1));
            const double tpp = 1440.0 / win->logicalDpiX();
            const int frameW = win->frameGeometry().width() - win->width();
            const int frameH = win->frameGeometry().height() - win->height();
            win->resize(int(arg(2).toInt() / tpp + 0.5) - frameW, int(arg(3).toInt() / tpp + 0.5) - frameH);
        } else if (cmd == QLatin1String("press")) {
            activate();
            press(arg(1));
        } else if (cmd == QLatin1String("close")) {
            // Closing by the window's system box: the main window, or a child's frame.
            QWidget* win = window(arg(1));
            if (!win) error("la ventana " + w[1] + " no está abierta");
            frameOf(win)->close();
        } else if (cmd == QLatin1String("env")) {
            qputenv(arg(1).toLocal8Bit(), arg(2).toLocal8Bit());
        } else if (cmd == QLatin1String("remember-sizes")) {
            QWidget* win = window(arg(1));
            if (!win) error("la ventana " + w[1] + " no está abierta");
            remembered_[w[1]] = sizes(win);
        } else if (cmd == QLatin1String("expect-same-sizes")) {
            QWidget* win = window(arg(1));
            if (!win) error("la ventana " + w[1] + " no está abierta");
            const auto it = remembered_.find(w[1]);
            if (it == remembered_.end()) error("no se recordaron los tamaños de " + w[1]);
            const auto now = sizes(win);
            QStringList changed;
            for (const auto& [control, size] : it->second) {
                const auto n = now.find(control);
                if (n == now.end() || n->second != size)
                    changed << control + " " + size + " -> " + (n == now.end() ? QStringLiteral("?") : n->second);
            }
            if (!changed.isEmpty()) fail("cambiaron de tamaño: " + changed.join(", "));
        } else if (cmd == QLatin1String("minimize")) {
            frameOf(find(arg(1)))->showMinimized();
        } else if (cmd == QLatin1String("maximize")) {
            frameOf(find(arg(1)))->showMaximized();
        } else if (cmd == QLatin1String("restore")) {
            frameOf(find(arg(1)))->showNormal();
        } else if (cmd == QLatin1String("run")) {
            QProcess p;
            p.setWorkingDirectory(folder_);
            p.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), arg(1)});
            p.waitForFinished(30000);
        } else if (cmd == QLatin1String("wait")) {
            QElapsedTimer t;
            t.start();
            while (t.elapsed() < arg(1).toInt()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        } else if (cmd == QLatin1String("answer")) {
            boxes_.answers.push_back(answerCode(arg(1)));
        } else if (cmd == QLatin1String("show")) {
            const QString what = arg(1);
            if (what == QLatin1String("session")) {
                vel::MDI* m = mdi();
                *out_ += QStringLiteral("  ClientePrograma=%1 TiendaPrograma=%2 Timer1.Enabled=%3 Timer1.Interval=%4\n")
                             .arg(quote(m->ClientePrograma), quote(m->TiendaPrograma), boolText(m->Timer1->Enabled()))
                             .arg(m->Timer1->Interval());
            } else if (what == QLatin1String("windows")) {
                for (vb::Form* f : mdi()->openForms())
                    *out_ += QStringLiteral("  %1 %2\n").arg(f->objectName(), quote(f->windowTitle()));
            } else {
                QWidget* c = find(what);
                if (qobject_cast<vel::MDI*>(c) || qobject_cast<vb::Form*>(c))
                    showWindow(c);
                else
                    *out_ += "  " + controlState(c).replace("\n    ", "\n      ") + '\n';
            }
        } else if (cmd == QLatin1String("query")) {
            const QString r = rows(arg(1));
            if (r.isEmpty())
                *out_ += QStringLiteral("  (ninguna fila)\n");
            else
                for (const QString& row : r.split(';')) *out_ += "  " + row + '\n';
        } else if (cmd == QLatin1String("cat")) {
            QFile f(QDir(folder_).filePath(arg(1)));
            if (!f.open(QIODevice::ReadOnly)) {
                *out_ += QStringLiteral("  (no existe)\n");
            } else {
                for (const QString& l : QString::fromUtf8(f.readAll()).split('\n')) *out_ += "  | " + l + '\n';
            }
        } else if (cmd == QLatin1String("screenshot")) {
            QWidget* win = w.size() > 2 ? find(w[2]) : mdi();
            win->grab().save(arg(1));
        } else if (cmd == QLatin1String("expect")) {
            const QString name = arg(1);
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
                else if (prop == QLatin1String("Timer1.Enabled")) got = boolText(m->Timer1->Enabled());
                else error("valor de sesión desconocido " + prop);
            } else if (QAction* a = mdi()->menuEntry(name.left(dot))) {
                // A menu entry: its caption and whether it can be chosen.
                const QString prop = name.mid(dot + 1);
                if (prop == QLatin1String("Enabled")) got = boolText(a->isEnabled());
                else if (prop == QLatin1String("Caption")) got = a->text();
                else error("propiedad desconocida " + prop + " en " + name.left(dot));
            } else {
                got = property(find(name.left(dot)), name.mid(dot + 1));
            }
            if (got != arg(2)) fail(name + " es " + quote(got) + ", se esperaba " + quote(w[2]));
        } else if (cmd == QLatin1String("expect-msg")) {
            if (boxes_.unchecked.empty()) fail("no se mostró ningún mensaje; se esperaba " + quote(arg(1)));
            const QString got = boxes_.unchecked.front();
            boxes_.unchecked.pop_front();
            if (got != arg(1)) fail("el mensaje fue " + quote(got) + ", se esperaba " + quote(w[1]));
        } else if (cmd == QLatin1String("expect-no-msg")) {
            if (!boxes_.unchecked.empty()) fail("hay un mensaje sin comprobar: " + quote(boxes_.unchecked.front()));
        } else if (cmd == QLatin1String("expect-focus")) {
            QWidget* c = find(arg(1));
            QWidget* f = QApplication::focusWidget();
            if (f != c && !(f && c->isAncestorOf(f) && qobject_cast<QComboBox*>(c)))
                fail("el foco está en " + (f ? f->objectName() : QStringLiteral("ningún control")));
        } else if (cmd == QLatin1String("expect-open")) {
            if (!window(arg(1))) fail(w[1] + " no está abierta");
        } else if (cmd == QLatin1String("expect-closed")) {
            if (window(arg(1))) fail(w[1] + " está abierta");
        } else if (cmd == QLatin1String("expect-query")) {
            const QString got = rows(arg(1));
            if (got != arg(2)) fail("la consulta dio " + quote(got) + ", se esperaba " + quote(w[2]));
        } else if (cmd == QLatin1String("expect-ended")) {
            if (!ended_) fail(QStringLiteral("el programa sigue en marcha"));
        } else if (cmd == QLatin1String("expect-file")) {
            QFile f(QDir(folder_).filePath(arg(1)));
            const QString got = f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
            if (got != arg(2)) fail(w[1] + " tiene " + quote(got));
        } else {
            error("orden desconocida: " + cmd);
        }
    }

    QString* out_;
    QString origin_;
    ScriptedBoxes boxes_;
    QTemporaryDir dir_;
    QString folder_;
    int lineNo_ = 0;
    std::map<QString, std::map<QString, QString>> remembered_;
    bool started_ = false;
    bool ended_ = false;
    bool endReported_ = false;
};

} // namespace

Result Run(const QString& text, QString* transcript, const QString& origin) {
    try {
        Driver d(transcript, origin);
        return d.run(text);
    } catch (const Failure& f) {
        *transcript += "ERROR: " + f.message + '\n';
        return ScriptError;
    }
}

} // namespace vel::scenario
