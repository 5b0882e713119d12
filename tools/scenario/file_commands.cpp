#include "scenario/file_commands.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <chrono>
#include <thread>

namespace vel::scenario {

// Another program's hold on a file: an engine connection of its own in
// exclusive locking mode, inside an exclusive transaction that has written
// (so it holds the file's write lock) and that is rolled back at the end,
// leaving the file as it was.
struct FileCommands::Lock {
    sqlite3* connection = nullptr;
    std::thread releaser;

    void release() {
        if (!connection) return;
        sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(connection);
        connection = nullptr;
    }
    ~Lock() {
        if (releaser.joinable()) releaser.join();
        release();
    }
};

FileCommands::FileCommands(QString folder) : folder_(std::move(folder)) {}
FileCommands::~FileCommands() = default;

QString FileCommands::path(const QString& name) const { return QDir(folder_).filePath(name); }

// The files (not folders) a name with wildcards matches, relative to the
// program folder; the wildcards stand in the file's name only.
QStringList FileCommands::matching(const QString& pattern) const {
    const QFileInfo where(path(pattern));
    QDir dir = where.dir();
    QStringList out;
    const QString prefix = QDir(folder_).relativeFilePath(dir.path());
    for (const QString& f : dir.entryList({where.fileName()}, QDir::Files | QDir::Hidden, QDir::Name))
        out << (prefix == QLatin1String(".") ? f : prefix + '/' + f);
    return out;
}

QStringList FileCommands::filesIn(const QString& folder) const {
    return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

namespace {
QString sha256(const QByteArray& bytes) {
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

// A file's text: UTF-8 when its bytes are UTF-8, else Windows-1252, as the
// program's exchange files and the chain's files are written.
QString textOf(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    if (!utf8.hasError()) return text;
    auto cp1252 = QStringDecoder("windows-1252");
    return cp1252.isValid() ? QString(cp1252(bytes)) : QString::fromLatin1(bytes);
}
} // namespace

FileCommands::Outcome FileCommands::run(const QStringList& w, QString* out, QString* why) {
    const QString cmd = w.value(0);
    auto needs = [&](int n) {
        if (w.size() > n) return true;
        *why = QStringLiteral("faltan argumentos en ") + cmd;
        return false;
    };
    if (cmd == QLatin1String("checksum")) {
        if (!needs(1)) return Error;
        QFile f(path(w[1]));
        if (!f.open(QIODevice::ReadOnly)) {
            *why = QStringLiteral("no existe ") + w[1];
            return Error;
        }
        const QByteArray bytes = f.readAll();
        remembered_[w[1]] = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
        *out += QStringLiteral("  %1: suma tomada\n").arg(w[1]);
        return Done;
    }
    if (cmd == QLatin1String("expect-checksum") && w.size() > 2) {
        QFile f(path(w[1]));
        if (!f.open(QIODevice::ReadOnly)) {
            *why = QStringLiteral("no existe ") + w[1];
            return Failed;
        }
        const QByteArray bytes = f.readAll();
        const QString got = sha256(bytes);
        if (got != w[2].toLower()) {
            *why = QStringLiteral("la suma de %1 (%2 bytes) es %3").arg(w[1]).arg(bytes.size()).arg(got);
            return Failed;
        }
        *out += QStringLiteral("  %1: suma esperada\n").arg(w[1]);
        return Done;
    }
    if (cmd == QLatin1String("files")) {
        if (!needs(1)) return Error;
        if (!QFileInfo(path(w[1])).isDir()) {
            *out += QStringLiteral("  (no existe la carpeta)\n");
            return Done;
        }
        const QStringList names = filesIn(w[1]);
        if (names.isEmpty()) *out += QStringLiteral("  (ningún fichero)\n");
        for (const QString& n : names)
            *out += QStringLiteral("  %1 %2 bytes\n").arg(n).arg(QFileInfo(path(w[1] + '/' + n)).size());
        return Done;
    }
    if (cmd == QLatin1String("expect-exists")) {
        if (!needs(1)) return Error;
        if (matching(w[1]).isEmpty()) {
            *why = QStringLiteral("no existe ") + w[1];
            return Failed;
        }
        return Done;
    }
    if (cmd == QLatin1String("expect-absent")) {
        if (!needs(1)) return Error;
        const QStringList found = matching(w[1]);
        if (!found.isEmpty()) {
            *why = QStringLiteral("existe ") + found.join(QStringLiteral(", "));
            return Failed;
        }
        return Done;
    }
    if (cmd == QLatin1String("expect-files")) {
        if (!needs(2)) return Error;
        const QString got = filesIn(w[1]).join('|');
        if (got != w[2]) {
            *why = QStringLiteral("la carpeta %1 tiene \"%2\"").arg(w[1], got);
            return Failed;
        }
        return Done;
    }
    if (cmd == QLatin1String("expect-text")) {
        if (!needs(2)) return Error;
        QFile f(path(w[1]));
        if (!f.open(QIODevice::ReadOnly)) {
            *why = QStringLiteral("no existe ") + w[1];
            return Failed;
        }
        if (!textOf(f.readAll()).contains(w[2])) {
            *why = QStringLiteral("%1 no contiene \"%2\"").arg(w[1], w[2]);
            return Failed;
        }
        return Done;
    }
    if (cmd == QLatin1String("expect-checksum")) {
        if (!needs(1)) return Error;
        if (!remembered_.contains(w[1])) {
            *why = QStringLiteral("no se tomó la suma de ") + w[1];
            return Error;
        }
        QFile f(path(w[1]));
        if (!f.open(QIODevice::ReadOnly)) {
            *why = w[1] + QStringLiteral(" ya no existe");
            return Failed;
        }
        const QByteArray bytes = f.readAll();
        if (QCryptographicHash::hash(bytes, QCryptographicHash::Sha256) != remembered_[w[1]]) {
            *why = QStringLiteral("%1 ha cambiado (%2 bytes)").arg(w[1]).arg(bytes.size());
            return Failed;
        }
        *out += QStringLiteral("  %1: sin cambios\n").arg(w[1]);
        return Done;
    }
    if (cmd == QLatin1String("engine-sql")) {
        if (!needs(2)) return Error;
        sqlite3* h = nullptr;
        const int rc = sqlite3_open(path(w[1]).toUtf8().constData(), &h);
        char* message = nullptr;
        if (rc == SQLITE_OK) sqlite3_exec(h, w[2].toUtf8().constData(), nullptr, nullptr, &message);
        const QString failure = message ? QString::fromUtf8(message) : rc != SQLITE_OK ? QString::fromUtf8(sqlite3_errmsg(h)) : QString();
        sqlite3_free(message);
        sqlite3_close(h);
        if (!failure.isEmpty()) {
            *why = QStringLiteral("el motor no acepta la instrucción: ") + failure;
            return Error;
        }
        return Done;
    }
    if (cmd == QLatin1String("recode")) {
        if (!needs(2)) return Error;
        const bool little = w[2] == QLatin1String("utf16le");
        if (!little && w[2] != QLatin1String("utf16be")) {
            *why = QStringLiteral("recode NOMBRE utf16le|utf16be");
            return Error;
        }
        QFile f(path(w[1]));
        if (!f.open(QIODevice::ReadOnly)) {
            *why = QStringLiteral("no existe ") + w[1];
            return Error;
        }
        const QString text = QString::fromUtf8(f.readAll());
        f.close();
        QByteArray bytes = little ? QByteArray("\xFF\xFE") : QByteArray("\xFE\xFF");
        for (const QChar c : text) {
            const char lo = char(c.unicode() & 0xFF), hi = char(c.unicode() >> 8);
            bytes.append(little ? lo : hi).append(little ? hi : lo);
        }
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            *why = QStringLiteral("no se puede escribir ") + w[1];
            return Error;
        }
        f.write(bytes);
        *out += QStringLiteral("  %1: %2 bytes en UTF-16%3\n").arg(w[1]).arg(bytes.size()).arg(little ? "LE" : "BE");
        return Done;
    }
    if (cmd == QLatin1String("lock")) {
        if (!needs(1)) return Error;
        if (locks_.contains(w[1])) {
            *why = w[1] + QStringLiteral(" ya está bloqueado");
            return Error;
        }
        auto lock = std::make_shared<Lock>();
        const int rc = sqlite3_open_v2(path(w[1]).toUtf8().constData(), &lock->connection,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX, nullptr);
        if (rc != SQLITE_OK ||
            sqlite3_exec(lock->connection, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; CREATE TABLE bloqueo (a)",
                         nullptr, nullptr, nullptr) != SQLITE_OK) {
            *why = QStringLiteral("no se puede bloquear ") + w[1] + QStringLiteral(": ") +
                   QString::fromUtf8(sqlite3_errmsg(lock->connection));
            return Error;
        }
        if (w.size() > 2) {
            const int ms = w[2].toInt();
            Lock* l = lock.get();
            lock->releaser = std::thread([l, ms] {
                std::this_thread::sleep_for(std::chrono::milliseconds(ms));
                l->release();
            });
            *out += QStringLiteral("  %1 bloqueado por otro programa durante %2 ms\n").arg(w[1]).arg(ms);
        } else {
            *out += QStringLiteral("  %1 bloqueado por otro programa\n").arg(w[1]);
        }
        locks_[w[1]] = std::move(lock);
        return Done;
    }
    if (cmd == QLatin1String("unlock")) {
        if (!needs(1)) return Error;
        if (!locks_.contains(w[1])) {
            *why = w[1] + QStringLiteral(" no está bloqueado");
            return Error;
        }
        locks_.remove(w[1]);
        return Done;
    }
    return NotMine;
}

} // namespace vel::scenario
