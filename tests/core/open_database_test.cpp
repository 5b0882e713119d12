// Opening datos.mdb: a file that is not a database of this program is refused
// and left byte for byte as it was; a file another program holds locked is
// waited for, and reported as in use when the lock stays.
#include "store_fixture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

#include <chrono>
#include <thread>

using veltest::DescriptionOf;
using veltest::ErrorOf;

namespace {

class OpeningAFile : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("datos.mdb"));
    }
    void TearDown() override { vel::Database::SetLockWait(5000); }

    QByteArray bytes() const {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void write(const QByteArray& content) const {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    // Runs statements on the file straight through the engine, as another
    // program would.
    void engine(const char* sql) const {
        sqlite3* h = nullptr;
        ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &h), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(h, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(h);
        sqlite3_close(h);
    }
    // Nothing was made beside the file either: no log, no shared memory.
    bool nothingBeside() const {
        return !QFileInfo::exists(path + QStringLiteral("-wal")) && !QFileInfo::exists(path + QStringLiteral("-shm")) &&
               !QFileInfo::exists(path + QStringLiteral("-journal"));
    }

    QTemporaryDir dir;
    QString path;
};

TEST_F(OpeningAFile, AnEmptyFileIsNoDatabaseAndStaysEmpty) {
    write(QByteArray());
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3343);
    EXPECT_EQ(DescriptionOf([&] { vel::Database::OpenDatabase(path); }),
              QStringLiteral("Formato de base de datos no reconocido '%1'.").arg(path));
    EXPECT_EQ(QFileInfo(path).size(), 0);
    EXPECT_TRUE(nothingBeside());
}

TEST_F(OpeningAFile, ADatabaseOfAnotherProgramIsRefusedAndLeftAsItWas) {
    engine("CREATE TABLE agenda (nombre TEXT, telefono TEXT); INSERT INTO agenda VALUES ('PEPE', '600000000')");
    const QByteArray before = bytes();
    ASSERT_FALSE(before.isEmpty());
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3343);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(before.at(18), 1) << "still in the rollback-journal mode it was made in";
    EXPECT_TRUE(nothingBeside());
}

TEST_F(OpeningAFile, ADatabaseWithSomeOfTheProgramsTablesIsNotOurs) {
    engine("CREATE TABLE tienda (codigo_tienda REAL, nombre_tienda TEXT, direccion_tienda TEXT)");
    const QByteArray before = bytes();
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3343);
    EXPECT_EQ(bytes(), before);
}

TEST_F(OpeningAFile, ADatabaseMarkedByAnotherProgramIsNotOursWhateverItHolds) {
    vel::schema::CreateEmptyDatabase(path);
    engine("PRAGMA journal_mode=DELETE; PRAGMA application_id = 42");
    const QByteArray before = bytes();
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3343);
    EXPECT_EQ(bytes(), before);
}

TEST_F(OpeningAFile, ADatabaseMadeByTheProgramCarriesItsMark) {
    vel::schema::CreateEmptyDatabase(path);
    const QByteArray header = bytes().left(100);
    EXPECT_EQ(header.mid(68, 4), QByteArray("VLMR"));
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 0);
}

TEST_F(OpeningAFile, AnUnmarkedDatabaseWithEveryTableOfTheProgramIsOurs) {
    // A database made before the mark: known by its tables.
    vel::schema::CreateEmptyDatabase(path);
    engine("PRAGMA application_id = 0");
    auto db = vel::Database::OpenDatabase(path);
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM tienda"));
    EXPECT_EQ(rs->Fields(QStringLiteral("nombre_tienda")).str(), QStringLiteral("CENTRAL"));
}

TEST_F(OpeningAFile, ADatabaseOfAnotherProgramInUTF16IsRefusedToo) {
    engine("PRAGMA encoding = 'UTF-16le'; CREATE TABLE x (a)");
    const QByteArray before = bytes();
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3343);
    EXPECT_EQ(bytes(), before);
}

// Another program holds the file: an exclusive lock on a connection of its
// own, released after `heldFor` (never when zero).
class LockedFile : public OpeningAFile {
protected:
    void SetUp() override {
        OpeningAFile::SetUp();
        vel::schema::CreateEmptyDatabase(path);
    }
    void TearDown() override {
        if (holder_.joinable()) holder_.join();
        if (other_) sqlite3_close(other_);
        OpeningAFile::TearDown();
    }
    void lock(std::chrono::milliseconds heldFor = std::chrono::milliseconds(0)) {
        ASSERT_EQ(sqlite3_open_v2(path.toUtf8().constData(), &other_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX,
                                  nullptr),
                  SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other_, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; "
                                       "CREATE TABLE otra_cosa (a); ",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(other_);
        if (heldFor.count() > 0)
            holder_ = std::thread([this, heldFor] {
                std::this_thread::sleep_for(heldFor);
                sqlite3_exec(other_, "ROLLBACK", nullptr, nullptr, nullptr);
                sqlite3_close(other_);
                other_ = nullptr;
            });
    }

    sqlite3* other_ = nullptr;
    std::thread holder_;
};

TEST_F(LockedFile, ALockThatStaysIsReportedAsTheFileInUse) {
    vel::Database::SetLockWait(300);
    lock();
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(DescriptionOf([&] { vel::Database::OpenDatabase(path); }),
              QStringLiteral("No se pudo usar '%1'; el archivo ya está en uso.").arg(path));
    EXPECT_GE(waited.elapsed(), 250) << "the lock is waited for before it is reported";
    EXPECT_EQ(ErrorOf([&] { vel::Database::OpenDatabase(path); }), 3045);
}

TEST_F(LockedFile, ALockReleasedWhileTheProgramWaitsIsNoError) {
    vel::Database::SetLockWait(5000);
    lock(std::chrono::milliseconds(300));
    QElapsedTimer waited;
    waited.start();
    std::unique_ptr<vel::Database> db;
    EXPECT_EQ(ErrorOf([&] { db = vel::Database::OpenDatabase(path); }), 0);
    EXPECT_GE(waited.elapsed(), 250);
    ASSERT_TRUE(db);
    EXPECT_EQ(db->OpenRecordset(QStringLiteral("SELECT * FROM tienda"))->Fields(QStringLiteral("codigo_tienda")).num(), 1);
}

TEST_F(LockedFile, TheWaitIsFiveSecondsUnlessSetOtherwise) { EXPECT_EQ(vel::Database::LockWait(), 5000); }

// A database held by a static is closed during the program's exit, after
// everything made later is gone: it must not read anything already freed. Run
// in a child process that exits normally; under the address sanitizer a read
// of freed memory ends it with an error instead.
std::unique_ptr<vel::Database> heldByAStatic;

TEST(DatabaseAtExit, ADatabaseHeldByAStaticClosesCleanlyAtExit) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            QTemporaryDir d;
            const QString p = d.filePath(QStringLiteral("datos.mdb"));
            vel::schema::CreateEmptyDatabase(p);
            auto second = vel::Database::OpenDatabase(p);
            heldByAStatic = vel::Database::OpenDatabase(p);
            second.reset();
            d.remove(); // the open file lives on until the exit closes it
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
