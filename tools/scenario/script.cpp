#include "scenario/script.h"
#include <QCoreApplication>

namespace vel::scenario {

void fail(const QString& m) { throw Fail{{m}}; }
void error(const QString& m) { throw Error{{m}}; }

QString Quote(const QString& s) {
    QString q = s;
    q.replace('\\', QLatin1String("\\\\")).replace('"', QLatin1String("\\\"")).replace('\r', QLatin1String("\\r"))
        .replace('\n', QLatin1String("\\n")).replace('\t', QLatin1String("\\t"));
    return '"' + q + '"';
}

QList<Word> Words(const QString& line) {
    QList<Word> out;
    int i = 0;
    const int n = int(line.size());
    while (i < n) {
        while (i < n && line[i].isSpace()) ++i;
        if (i >= n) break;
        Word w;
        if (line[i] == '"') {
            w.quoted = true;
            ++i;
            while (i < n && line[i] != '"') {
                if (line[i] == '\\' && i + 1 < n) {
                    const QChar c = line[i + 1];
                    w.text += c == 'n' ? QChar('\n') : c == 't' ? QChar('\t') : c == 'r' ? QChar('\r') : c;
                    i += 2;
                    continue;
                }
                w.text += line[i++];
            }
            if (i >= n) error(QStringLiteral("comillas sin cerrar"));
            ++i;
        } else {
            while (i < n && !line[i].isSpace()) w.text += line[i++];
        }
        out << w;
    }
    return out;
}

QString BoolText(bool b) { return b ? QStringLiteral("True") : QStringLiteral("False"); }

void Settle() {
    for (int i = 0; i < 8; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace vel::scenario
