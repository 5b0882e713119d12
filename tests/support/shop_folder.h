// A shop's program folder for a window test: a temporary folder as App.Path
// holding a new datos.mdb open as the session's database, every box recorded
// and answered Yes to a question and OK to the rest, the program's end caught
// instead of quitting, and the clock standing still at the moment given. All
// of it is undone when the folder goes.
//
//   class DeliveryNoteWindow : public ::testing::Test {
//   protected:
//       veltest::ShopFolder shop{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
//   };
//   ...
//   shop.Execute(kPedro);                   // a customer filed beforehand
//   EXPECT_EQ(shop.boxes.texts, QStringList{"Registro duplicado"});
//   EXPECT_FALSE(shop.ended);
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/environment.h"
#include "support/message_boxes.h"
#include <QDateTime>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace veltest {

class ShopFolder {
public:
    QTemporaryDir dir;
    RecordedBoxes boxes{YesToQuestions};
    bool ended = false;

    explicit ShopFolder(const QDateTime& now)
        : env_(std::make_unique<vb::InstalledEnvironment>(vb::Environment{
              .messageBoxes = &boxes, .clock = now, .programFolder = dir.path(), .onEnd = [this] { ended = true; }})) {
        EXPECT_TRUE(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(path);
        vel::BaseDatos = vel::Database::OpenDatabase(path).release();
    }
    ~ShopFolder() {
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
    }
    ShopFolder(const ShopFolder&) = delete;
    ShopFolder& operator=(const ShopFolder&) = delete;

    // A statement on the shop's database, as text in UTF-8.
    static void Execute(const char* sql) { vel::BaseDatos->Execute(QString::fromUtf8(sql)); }
    static void Execute(const QString& sql) { vel::BaseDatos->Execute(sql); }
    QString File(const QString& name) const { return dir.filePath(name); }

private:
    std::unique_ptr<vb::InstalledEnvironment> env_;
};

} // namespace veltest
