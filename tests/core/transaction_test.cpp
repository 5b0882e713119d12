// A save is whole or absent: the statements of one action commit together, an
// action that ends the program leaves nothing, and what a save reads stays as
// read until it commits.
#include "store_fixture.h"

#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include "support/message_boxes.h"

#include <sqlite3.h>

using veltest::DescriptionOf;
using veltest::ErrorOf;
using veltest::ShopDatabase;

namespace {

class Transactions : public ShopDatabase {
protected:
    // A new database has store 1: the tests start with none.
    void SetUp() override {
        ShopDatabase::SetUp();
        db->Execute(QStringLiteral("DELETE FROM tienda"));
    }
    // The stores as another program on the same file sees them.
    QStringList StoresSeenFromOutside() {
        auto other = vel::Database::OpenDatabase(path);
        QStringList out;
        auto rs = other->OpenRecordset(QStringLiteral("SELECT * FROM tienda ORDER BY codigo_tienda"));
        while (!rs->Eof()) {
            out << rs->Fields(QStringLiteral("nombre_tienda")).str();
            rs->MoveNext();
        }
        return out;
    }
    void AddStore(int code, const QString& name) {
        db->Execute(QStringLiteral("INSERT INTO tienda VALUES (%1, '%2', '')").arg(code).arg(name));
    }
};

} // namespace

TEST_F(Transactions, AScopeCommitsItsStatementsTogetherAtItsEnd) {
    {
        vel::Transaccion t(*db);
        AddStore(1, QStringLiteral("CENTRO"));
        AddStore(2, QStringLiteral("PUERTO"));
        // Another program sees nothing of a save still under way.
        EXPECT_TRUE(StoresSeenFromOutside().isEmpty());
        EXPECT_TRUE(db->InTransaction());
    }
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(StoresSeenFromOutside(), (QStringList{"CENTRO", "PUERTO"}));
}

TEST_F(Transactions, AScopeLeftByAnErrorLeavesNothing) {
    try {
        vel::Transaccion t(*db);
        AddStore(1, QStringLiteral("CENTRO"));
        db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'O'BRIEN', '')"));
        FAIL() << "the apostrophe should have broken the insert";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 3134);
    }
    EXPECT_FALSE(db->InTransaction());
    EXPECT_TRUE(StoresSeenFromOutside().isEmpty());
}

TEST_F(Transactions, AnErrorTrappedInsideGoesOnAndCommitsAtTheEnd) {
    {
        vel::Transaccion t(*db);
        AddStore(1, QStringLiteral("CENTRO"));
        vb::ResumeNext r;
        r([&] { db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'O'BRIEN', '')")); });
        AddStore(3, QStringLiteral("PUERTO"));
    }
    EXPECT_EQ(StoresSeenFromOutside(), (QStringList{"CENTRO", "PUERTO"}));
}

TEST_F(Transactions, AnInnerScopeJoinsTheOuterOne) {
    {
        vel::Transaccion outer(*db);
        AddStore(1, QStringLiteral("CENTRO"));
        {
            vel::Transaccion inner(*db);
            AddStore(2, QStringLiteral("PUERTO"));
        }
        // The inner end commits nothing: the outer save is still under way.
        EXPECT_TRUE(StoresSeenFromOutside().isEmpty());
        // An inner scope left by an error the outer code traps changes nothing
        // for the outer one.
        vb::ResumeNext r;
        r([&] {
            vel::Transaccion inner(*db);
            AddStore(3, QStringLiteral("PLAYA"));
            vb::Raise(5, QStringLiteral("Llamada a procedimiento o argumento no válidos"));
        });
        EXPECT_TRUE(db->InTransaction());
        AddStore(4, QStringLiteral("SIERRA"));
    }
    EXPECT_EQ(StoresSeenFromOutside(), (QStringList{"CENTRO", "PUERTO", "PLAYA", "SIERRA"}));
}

TEST_F(Transactions, CommitInsideTheScopeCommitsThereAndTheEndHasNothingLeft) {
    vel::Transaccion t(*db);
    AddStore(1, QStringLiteral("CENTRO"));
    t.Commit();
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(StoresSeenFromOutside(), QStringList{"CENTRO"});
}

TEST_F(Transactions, WhileAScopeIsOpenAnotherProgramCannotWrite) {
    vel::Database::SetLockWait(200);
    auto other = vel::Database::OpenDatabase(path);
    {
        vel::Transaccion t(*db);
        // The writer's lock is taken at the start: what the scope reads (a
        // counter) can't move under it.
        EXPECT_EQ(ErrorOf([&] { other->Execute(QStringLiteral("INSERT INTO tienda VALUES (9, 'OTRA', '')")); }), 3218);
        AddStore(1, QStringLiteral("CENTRO"));
    }
    EXPECT_EQ(ErrorOf([&] { other->Execute(QStringLiteral("INSERT INTO tienda VALUES (9, 'OTRA', '')")); }), 0);
    vel::Database::SetLockWait(5000);
    EXPECT_EQ(StoresSeenFromOutside(), (QStringList{"CENTRO", "OTRA"}));
}

TEST_F(Transactions, AFullDiskGivesOneErrorAtTheCommitAndChangesNothing) {
    AddStore(1, QStringLiteral("CENTRO"));
    // The file may not grow by more than a few pages: the disk is full.
    auto rs = db->OpenRecordset(QStringLiteral("SELECT * FROM tienda"));
    rs.reset();
    sqlite3_exec(db->handle(), "PRAGMA max_page_count = 1", nullptr, nullptr, nullptr);
    int errorsSeen = 0;
    const auto failure = [&] {
        vel::Transaccion t(*db);
        for (int i = 2; i < 400; ++i) {
            // The statements of the save report none of their own.
            vb::ResumeNext r;
            if (!r([&] { AddStore(i, QStringLiteral("TIENDA CON UN NOMBRE LARGO PARA LLENAR PÁGINAS %1").arg(i)); }))
                ++errorsSeen;
        }
    };
    EXPECT_EQ(ErrorOf(failure), 3026);
    EXPECT_EQ(errorsSeen, 0);
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(StoresSeenFromOutside(), QStringList{"CENTRO"});
}

TEST_F(Transactions, AnEventIsOneActionThatCommitsWhenItReturns) {
    veltest::RecordedBoxes boxes;
    bool ended = false;
    vb::InstalledEnvironment env({.messageBoxes = &boxes, .onEnd = [&] { ended = true; }});
    vb::RunEvent([&] {
        AddStore(1, QStringLiteral("CENTRO"));
        AddStore(2, QStringLiteral("PUERTO"));
        EXPECT_TRUE(db->InTransaction());
        EXPECT_TRUE(StoresSeenFromOutside().isEmpty());
    });
    EXPECT_FALSE(ended);
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(StoresSeenFromOutside(), (QStringList{"CENTRO", "PUERTO"}));
}

TEST_F(Transactions, AnEventThatEndsTheProgramByAnUntrappedErrorLeavesNothing) {
    bool ended = false;
    bool rolledBackBeforeTheMessage = false;
    veltest::RecordedBoxes watching;
    watching.whileShown = [&](const veltest::ShownBox&) { rolledBackBeforeTheMessage = !db->InTransaction(); };
    vb::InstalledEnvironment env({.messageBoxes = &watching, .onEnd = [&] { ended = true; }});
    vb::RunEvent([&] {
        AddStore(1, QStringLiteral("CENTRO"));
        db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'O'BRIEN', '')"));
    });
    EXPECT_TRUE(ended);
    EXPECT_EQ(watching.shown.size(), 1);
    EXPECT_TRUE(watching.shown.value(0).contains(QStringLiteral("3134")));
    EXPECT_TRUE(rolledBackBeforeTheMessage);
    EXPECT_TRUE(StoresSeenFromOutside().isEmpty());
    vb::ResetEnded();
}

TEST_F(Transactions, AnEventOnAFullDiskShowsOneMessageAndChangesNothing) {
    veltest::RecordedBoxes boxes;
    bool ended = false;
    vb::InstalledEnvironment env({.messageBoxes = &boxes, .onEnd = [&] { ended = true; }});
    AddStore(1, QStringLiteral("CENTRO"));
    sqlite3_exec(db->handle(), "PRAGMA max_page_count = 1", nullptr, nullptr, nullptr);
    vb::RunEvent([&] {
        for (int i = 2; i < 400; ++i)
            AddStore(i, QStringLiteral("TIENDA CON UN NOMBRE LARGO PARA LLENAR PÁGINAS %1").arg(i));
    });
    EXPECT_TRUE(ended);
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_TRUE(boxes.shown[0].contains(QStringLiteral("No hay suficiente espacio en disco.")));
    EXPECT_EQ(StoresSeenFromOutside(), QStringList{"CENTRO"});
    vb::ResetEnded();
}
