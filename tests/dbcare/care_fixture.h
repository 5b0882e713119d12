// A program folder with datos.mdb open in BaseDatos, the message boxes
// recorded, and the care windows built on it.
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/progressbar.h"
#include "support/message_boxes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <optional>

namespace veltest {

class CareFixture : public ::testing::Test {
protected:
    QTemporaryDir dir;
    RecordedBoxes boxes;
    bool ended = false;
    std::optional<vb::InstalledEnvironment> env;

    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        env.emplace(vb::Environment{.messageBoxes = &boxes, .programFolder = dir.path(), .onEnd = [this] { ended = true; }});
        vel::schema::CreateEmptyDatabase(file("datos.mdb"));
        vel::BaseDatos = vel::Database::OpenDatabase(file("datos.mdb")).release();
    }
    void TearDown() override {
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        env.reset();
    }

    QString file(const QString& name) const { return dir.filePath(name); }
    bool exists(const QString& name) const { return QFileInfo::exists(file(name)); }

    // `n` stores in tienda, codes from 10: rows any compacting must keep.
    void Stores(int n) {
        for (int i = 0; i < n; ++i)
            vel::BaseDatos->Execute(QStringLiteral("INSERT INTO tienda VALUES (%1, 'TIENDA %1', 'CALLE %1')").arg(10 + i));
    }
    long Count(const QString& table) {
        auto rs = vel::BaseDatos->OpenRecordset("SELECT * FROM " + table);
        long n = 0;
        while (!rs->Eof()) {
            ++n;
            rs->MoveNext();
        }
        return n;
    }

    static void settle() {
        for (int i = 0; i < 4; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
    }
};

// Every value the bar takes while the window works.
struct BarValues {
    std::vector<int> values;
    explicit BarValues(vb::ProgressBar* bar) {
        QObject::connect(bar, &QProgressBar::valueChanged, [this](int v) { values.push_back(v); });
    }
};

} // namespace veltest
