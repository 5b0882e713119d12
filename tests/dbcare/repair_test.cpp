// Repairing the shop's database: no copy kept, a sound file rebuilt whole, a
// damaged one rebuilt with every row that can still be read.
#include "care_fixture.h"
#include "dbcare/database_care.h"
#include "dbcare/freparar.h"
#include <QFile>
#include <QPushButton>

using namespace veltest;

class Repair : public CareFixture {};

TEST_F(Repair, SoundFileKeepsEveryRowAndNoCopy) {
    Stores(50);
    auto* w = new vel::freparar;
    w->Load();
    EXPECT_EQ(w->windowTitle(), "Reparar base de datos");
    auto* start = w->findChild<QPushButton*>("botonuriniciar");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->text(), "&Iniciar");
    ASSERT_TRUE(w->findChild<QPushButton*>("botonurcerrar"));
    BarValues bar(w->ProgressBar1);
    QPointer<vel::freparar> alive(w);
    w->botonuriniciar_Click();
    settle();
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join("\n").toStdString();
    EXPECT_FALSE(exists("datos.tmp"));
    EXPECT_FALSE(exists("compdatos.mdb"));
    EXPECT_TRUE(alive.isNull());
    EXPECT_EQ(Count("tienda"), 51);
    EXPECT_EQ(bar.values, (std::vector<int>{25, 50, 75, 100}));
    EXPECT_EQ(vel::ComprobarIntegridad(file("datos.mdb")), "ok");
}

// Many rows on many pages, then one page in the middle of the file zeroed.
TEST_F(Repair, DamagedFileIsRecovered) {
    sqlite3* h = vel::BaseDatos->handle();
    sqlite3_exec(h, "CREATE TABLE relleno (id INTEGER PRIMARY KEY, texto TEXT)", nullptr, nullptr, nullptr);
    sqlite3_exec(h,
                 "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < 4000) "
                 "INSERT INTO relleno SELECT x, hex(randomblob(200)) FROM c",
                 nullptr, nullptr, nullptr);
    Stores(10);
    vel::CerrarBaseDatos();
    {
        QFile f(file("datos.mdb"));
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        const qint64 pages = f.size() / 4096;
        ASSERT_GT(pages, 100);
        f.seek((pages / 2) * 4096);
        f.write(QByteArray(4096, '\x55'));
    }
    EXPECT_NE(vel::ComprobarIntegridad(file("datos.mdb")), "ok");
    vel::AbrirBaseDatos();
    auto* w = new vel::freparar;
    w->Load();
    w->botonuriniciar_Click();
    settle();
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join("\n").toStdString();
    EXPECT_EQ(vel::ComprobarIntegridad(file("datos.mdb")), "ok");
    EXPECT_FALSE(exists("datos.tmp"));
    // The program's tables are there, the stores whole; of the big table, the
    // rows on the damaged page are lost and those on both sides of it kept.
    EXPECT_EQ(Count("tienda"), 11);
    const long kept = Count("relleno");
    EXPECT_GT(kept, 3000);
    EXPECT_LT(kept, 4000);
    vel::BaseDatos->Execute("INSERT INTO tienda VALUES (700, 'TRAS REPARAR', '')");
    EXPECT_EQ(Count("tienda"), 12);
}

TEST_F(Repair, NotADatabaseIsLeftAloneWithTheBox) {
    vel::CerrarBaseDatos();
    // The session's file is replaced by a text: the repair refuses it.
    delete vel::BaseDatos;
    vel::BaseDatos = nullptr;
    {
        QFile f(file("datos.mdb"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(QByteArray(8192, 'x'));
    }
    EXPECT_THROW(vel::RepairDatabase(file("datos.mdb"), file("compdatos.mdb")), vb::RuntimeError);
    QFile f(file("datos.mdb"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray(8192, 'x'));
    vel::schema::CreateEmptyDatabase(file("otra.mdb"));
    vel::BaseDatos = vel::Database::OpenDatabase(file("otra.mdb")).release();
}
