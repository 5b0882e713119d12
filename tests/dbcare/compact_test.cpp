// Compacting the shop's database from its window: the bar, the files left
// behind, the rows kept, the error box, and BaseDatos usable whatever happens.
#include "care_fixture.h"
#include "dbcare/database_care.h"
#include "dbcare/fcompactar.h"
#include <QDir>
#include <QPushButton>

using namespace veltest;

class Compact : public CareFixture {};

TEST_F(Compact, RowsKeptCopyLeftAndNoRebuiltFileLeft) {
    Stores(300);
    vel::BaseDatos->Execute("DELETE FROM tienda WHERE codigo_tienda > 100");
    auto* w = new vel::Fcompactar;
    w->Load();
    EXPECT_EQ(w->windowTitle(), "Compactar base de datos");
    BarValues bar(w->ProgressBar1);
    QPointer<vel::Fcompactar> alive(w);
    w->botonuciniciar_Click();
    settle();
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join("\n").toStdString();
    EXPECT_TRUE(exists("datos.tmp"));
    EXPECT_FALSE(exists("compdatos.mdb"));
    EXPECT_FALSE(exists("datos.mdb-journal"));
    // The close button's Click ran: the window is gone.
    EXPECT_TRUE(alive.isNull());
    // BaseDatos is open again on the compacted file, with every row.
    ASSERT_TRUE(vel::BaseDatos->IsOpen());
    EXPECT_EQ(Count("tienda"), 1 + 91);
    vel::BaseDatos->Execute("INSERT INTO tienda VALUES (500, 'NUEVA', '')");
    EXPECT_EQ(Count("tienda"), 93);
    // Six stages, equal steps, the last at the bar's end (0 to 100).
    EXPECT_EQ(bar.values, (std::vector<int>{17, 33, 50, 67, 83, 100}));
}

TEST_F(Compact, TheCopyIsTheDatabaseAsItWas) {
    Stores(20);
    auto* w = new vel::Fcompactar;
    w->Load();
    w->botonuciniciar_Click();
    settle();
    auto copy = vel::Database::OpenDatabase(file("datos.tmp"));
    auto rs = copy->OpenRecordset("SELECT * FROM tienda WHERE codigo_tienda = 29");
    ASSERT_FALSE(rs->Eof());
    EXPECT_EQ(rs->Fields("nombre_tienda").str(), "TIENDA 29");
}

TEST_F(Compact, DeadSpaceGoes) {
    Stores(2000);
    vel::BaseDatos->Execute("DELETE FROM tienda WHERE codigo_tienda > 50");
    vel::CerrarBaseDatos();
    const qint64 before = QFileInfo(file("datos.mdb")).size();
    vel::AbrirBaseDatos();
    auto* w = new vel::Fcompactar;
    w->Load();
    w->botonuciniciar_Click();
    settle();
    EXPECT_LT(QFileInfo(file("datos.mdb")).size(), before);
    EXPECT_EQ(Count("tienda"), 42);
}

TEST_F(Compact, ErrorInTheRebuildShowsTheBoxAndLeavesTheDatabase) {
    Stores(5);
    // Something that is no file stands where the rebuilt database goes.
    ASSERT_TRUE(QDir(dir.path()).mkpath("compdatos.mdb/dentro"));
    auto* w = new vel::Fcompactar;
    w->Load();
    QPointer<vel::Fcompactar> alive(w);
    w->botonuciniciar_Click();
    settle();
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], "ERROR|Error 2: 75-Error de acceso a la ruta o el archivo|16");
    EXPECT_TRUE(alive.isNull());
    ASSERT_TRUE(vel::BaseDatos->IsOpen());
    EXPECT_EQ(Count("tienda"), 6);
    vel::BaseDatos->Execute("INSERT INTO tienda VALUES (600, 'OTRA', '')");
    EXPECT_EQ(Count("tienda"), 7);
}

TEST_F(Compact, CursorLeftOpenFailsWithARuntimeError) {
    Stores(3);
    auto rs = vel::BaseDatos->OpenRecordset("SELECT * FROM tienda");
    ASSERT_FALSE(rs->Eof());
    auto* w = new vel::Fcompactar;
    w->Load();
    w->botonuciniciar_Click();
    settle();
    try {
        rs->MoveNext();
        rs->Fields("nombre_tienda");
        FAIL() << "a read through a dead cursor must fail";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 3420);
    }
    // The database itself works.
    EXPECT_EQ(Count("tienda"), 4);
}

TEST_F(Compact, StatementsWhileClosedFailAndDoNotCrash) {
    vel::CerrarBaseDatos();
    try {
        vel::BaseDatos->OpenRecordset("SELECT * FROM tienda");
        FAIL() << "a closed database takes no statement";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 3420);
    }
    EXPECT_THROW(vel::BaseDatos->Execute("DELETE FROM tienda"), vb::RuntimeError);
    vel::AbrirBaseDatos();
    EXPECT_EQ(Count("tienda"), 1);
}

TEST_F(Compact, ARebuildLeftByAnInterruptedRunIsReplaced) {
    Stores(4);
    {
        QFile f(file("compdatos.mdb"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("medio fichero");
    }
    auto* w = new vel::Fcompactar;
    w->Load();
    w->botonuciniciar_Click();
    settle();
    EXPECT_TRUE(boxes.shown.isEmpty()) << boxes.shown.join("\n").toStdString();
    EXPECT_FALSE(exists("compdatos.mdb"));
    EXPECT_EQ(Count("tienda"), 5);
}

TEST_F(Compact, ControlsBearTheirNames) {
    auto* w = new vel::Fcompactar;
    w->Load();
    auto* start = w->findChild<QPushButton*>("botonuciniciar");
    auto* close = w->findChild<QPushButton*>("botonuccerrar");
    ASSERT_TRUE(start && close);
    EXPECT_EQ(close->text(), "&Cerrar");
    close->click();
    settle();
}
