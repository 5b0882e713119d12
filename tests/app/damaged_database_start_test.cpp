// A database the engine's check finds damaged: the start says so and points
// to the repair, and the program starts all the same.
#include "app/program.h"
#include "app/window_table.h"
#include "core/mdi.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

class DamagedStart : public ::testing::Test {
protected:
    QTemporaryDir dir;
    veltest::RecordedBoxes boxes;
    void SetUp() override {
        vel::SetUpApplication(*qApp);
        vb::SetAppPath(dir.path());
        vb::SetMessageBoxService(&boxes);
        vel::schema::CreateEmptyDatabase(dir.filePath("datos.mdb"));
        vb::ResetEnded();
        vb::SetEndHandler([] {});
        vel::SetWindowTable(&vel::WindowTable());
    }
    void TearDown() override {
        vel::CloseSession();
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
        vb::SetMessageBoxService(nullptr);
        vb::SetAppPath(QString());
    }
    void Damage() {
        const QString path = dir.filePath("datos.mdb");
        {
            auto db = vel::Database::OpenDatabase(path);
            for (int i = 0; i < 400; ++i)
                db->Execute(QStringLiteral("INSERT INTO almacen VALUES (%1, 'ALMACEN NUMERO %1 CON UN NOMBRE LARGO', '')").arg(i + 10));
            sqlite3_wal_checkpoint_v2(db->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
        }
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        f.seek(f.size() - 4096 + 8);
        f.write(QByteArray(64, '\xff'));
    }
};

} // namespace

TEST_F(DamagedStart, TheStartWarnsAndPointsToTheRepairThenGoesOn) {
    Damage();
    vb::RunEvent([] { vel::Main(); });
    EXPECT_FALSE(vb::HasEnded());
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], QStringLiteral("Advertencia|") + vel::kAvisoBaseDanada + QStringLiteral("|48"));
    EXPECT_TRUE(vel::kAvisoBaseDanada.contains(QStringLiteral("Reparar base de datos")));
    ASSERT_TRUE(vel::MainWindow());
    EXPECT_TRUE(vel::MainWindow()->isVisible());
}

TEST_F(DamagedStart, AWholeDatabaseStartsWithoutAWord) {
    vb::RunEvent([] { vel::Main(); });
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join('\n').toStdString();
    ASSERT_TRUE(vel::MainWindow());
}
