// What the store says about a database it can't work with: a folder it can't
// write to, and a file the engine's check finds damaged (which still opens).
#include "store_fixture.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

using veltest::DescriptionOf;
using veltest::ErrorOf;

namespace {

// A folder the program can't write to: a read-only mount where the test may
// mount one (root), otherwise a folder without write permission.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString& path) : path_(path) {
        if (getuid() == 0) {
            if (QProcess::execute(QStringLiteral("mount"), {"-t", "tmpfs", "-o", "size=4m", "tmpfs", path}) != 0)
                return;
            mounted_ = true;
        }
        vel::schema::CreateEmptyDatabase(path + QStringLiteral("/datos.mdb"));
        if (mounted_) {
            ok_ = QProcess::execute(QStringLiteral("mount"), {"-o", "remount,ro", path}) == 0;
        } else {
            ok_ = ::chmod(path.toUtf8().constData(), 0555) == 0;
        }
    }
    ~ReadOnlyFolder() {
        if (mounted_) QProcess::execute(QStringLiteral("umount"), {path_});
        else ::chmod(path_.toUtf8().constData(), 0755);
    }
    bool ok() const { return ok_; }

private:
    QString path_;
    bool mounted_ = false;
    bool ok_ = false;
};

} // namespace

TEST(StartChecks, ADatabaseInAReadOnlyFolderSaysSo) {
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("solo_lectura"));
    QDir().mkpath(folder);
    ReadOnlyFolder ro(folder);
    if (!ro.ok()) GTEST_SKIP() << "no read-only folder can be made here (no permission to mount)";
    const QString path = folder + QStringLiteral("/datos.mdb");
    const auto open = [&] { vel::Database::OpenDatabase(path); };
    EXPECT_EQ(ErrorOf(open), 3051);
    EXPECT_EQ(DescriptionOf(open),
              QStringLiteral("No se puede abrir el archivo '%1': el archivo o la carpeta que lo contiene es de sólo "
                             "lectura. El programa necesita poder escribir en los dos.")
                  .arg(path));
}

TEST(StartChecks, AWholeDatabasePassesTheQuickCheck) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("datos.mdb"));
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    EXPECT_TRUE(db->QuickCheck());
}

TEST(StartChecks, ADamagedDatabaseStillOpensAndFailsTheQuickCheck) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("datos.mdb"));
    vel::schema::CreateEmptyDatabase(path);
    {
        auto db = vel::Database::OpenDatabase(path);
        for (int i = 0; i < 400; ++i)
            db->Execute(QStringLiteral("INSERT INTO almacen VALUES (%1, 'ALMACEN NUMERO %1 CON UN NOMBRE LARGO', '')").arg(i + 10));
        sqlite3_wal_checkpoint_v2(db->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
    // The last page of the file, a page of the warehouses' rows, overwritten
    // in the middle: the table's structure no longer holds.
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    const qint64 size = f.size();
    ASSERT_GT(size, 8192);
    f.seek(size - 4096 + 8);
    f.write(QByteArray(64, '\xff'));
    f.close();
    std::unique_ptr<vel::Database> db;
    EXPECT_EQ(ErrorOf([&] { db = vel::Database::OpenDatabase(path); }), 0);
    ASSERT_TRUE(db);
    EXPECT_FALSE(db->QuickCheck());
}
