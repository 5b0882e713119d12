// A cursor left open while the window writes must not make the database's log
// grow without end (the bulk price change walks thousands of products and
// updates each one while its query is still open).
#include "store_fixture.h"

#include <QFileInfo>
#include <sqlite3.h>

using veltest::ShopDatabase;

namespace {

class OpenCursorWhileWriting : public ShopDatabase {
protected:
    static constexpr int kProducts = 20000;
    static constexpr int kUpdates = 4000;

    void SetUp() override {
        ShopDatabase::SetUp();
        // Loaded in one transaction straight through the engine: this is the
        // test's setup, not what it measures.
        sqlite3* h = db->handle();
        sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr);
        sqlite3_stmt* ins = nullptr;
        sqlite3_prepare_v2(h,
                           "INSERT INTO productos VALUES ('01','01','01','01', ?, 'TORNILLO', '', 'MARCA', 'MODELO', '',"
                           " 1, 2, 0, 0,0,0,0,0, 0, '', '', 0, 0, '', '', '', '', '', '', '', 1)",
                           -1, &ins, nullptr);
        for (int i = 0; i < kProducts; ++i) {
            const QByteArray ref = QStringLiteral("REF%1").arg(i, 6, 10, QLatin1Char('0')).toUtf8();
            sqlite3_bind_text(ins, 1, ref.constData(), static_cast<int>(ref.size()), SQLITE_TRANSIENT);
            sqlite3_step(ins);
            sqlite3_reset(ins);
        }
        sqlite3_finalize(ins);
        sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_wal_checkpoint_v2(h, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }

    qint64 walSize() const { return QFileInfo(path + QStringLiteral("-wal")).size(); }
};

} // namespace

TEST_F(OpenCursorWhileWriting, TheLogStaysSmallThroughTheRecordStore) {
    auto rs = db->OpenRecordset(QStringLiteral(
        "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' "
        "AND pvp_neto_productos > 0 ORDER BY referencia_productos"));
    int updates = 0;
    qint64 largest = 0;
    while (!rs->Eof() && updates < kUpdates) {
        const QString ref = rs->Fields(QStringLiteral("referencia_productos")).str();
        db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = 2.42 WHERE referencia_productos = '%1'").arg(ref));
        ++updates;
        largest = std::max(largest, walSize());
        rs->MoveNext();
    }
    EXPECT_EQ(updates, kUpdates);
    // Checkpoints keep reusing the log: a few megabytes at most.
    EXPECT_LT(largest, 8LL * 1024 * 1024) << "largest log " << largest;
    RecordProperty("largest_wal_bytes", static_cast<int>(largest));
    std::printf("largest WAL with a record-store cursor open over %d updates: %lld bytes\n", kUpdates,
                static_cast<long long>(largest));
}

TEST_F(OpenCursorWhileWriting, AStatementKeptOpenInTheEngineWouldPinTheLog) {
    // The same walk with the engine's own statement held open: this is what
    // the record store avoids, and shows that the size limit above can fail.
    sqlite3* h = db->handle();
    sqlite3_stmt* sel = nullptr;
    sqlite3_prepare_v2(h, "SELECT referencia_productos FROM productos ORDER BY referencia_productos", -1, &sel, nullptr);
    int updates = 0;
    while (updates < kUpdates && sqlite3_step(sel) == SQLITE_ROW) {
        const QString ref = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(sel, 0)));
        db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = 2.42 WHERE referencia_productos = '%1'").arg(ref));
        ++updates;
    }
    const qint64 pinned = walSize();
    sqlite3_finalize(sel);
    std::printf("WAL with an engine statement held open over %d updates: %lld bytes\n", updates,
                static_cast<long long>(pinned));
    EXPECT_GT(pinned, 8LL * 1024 * 1024);
}
