// The program's folder (App.Path): beside the program as built, the shop's
// folder it is started from once installed, or the user's own folder, made with
// an empty database the first time.
#include "app/program.h"
#include "core/dbase_store.h"
#include "core/record_store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class ProgramFolder : public ::testing::Test {
protected:
    QTemporaryDir tmp;
    QString programDir, shop, elsewhere, home;

    void SetUp() override {
        QDir root(tmp.path());
        for (const char* d : {"usr/bin", "tienda", "otra", "casa"}) root.mkpath(QString::fromLatin1(d));
        programDir = root.filePath("usr/bin");
        shop = root.filePath("tienda");
        elsewhere = root.filePath("otra");
        home = root.filePath("casa");
        touch(shop + "/datos.mdb");
    }
    static void touch(const QString& path) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
};

TEST_F(ProgramFolder, AsBuiltTheDatabaseLivesBesideTheProgram) {
    // The run command's build tree: bin/ under the folder holding CMakeCache.txt.
    QDir(tmp.path()).mkpath("build/bin");
    touch(tmp.path() + "/build/CMakeCache.txt");
    const QString bin = tmp.path() + "/build/bin";
    EXPECT_EQ(vel::ProgramFolder(bin, shop, home), bin);
}

TEST_F(ProgramFolder, AProgramWithADatabaseBesideItKeepsItsOwnFolder) {
    touch(programDir + "/datos.mdb");
    EXPECT_EQ(vel::ProgramFolder(programDir, shop, home), programDir);
}

TEST_F(ProgramFolder, InstalledItWorksOnTheShopFolderItIsStartedFrom) {
    EXPECT_EQ(vel::ProgramFolder(programDir, shop, home), shop);
}

TEST_F(ProgramFolder, InstalledAndStartedElsewhereItUsesTheUsersOwnFolder) {
    EXPECT_EQ(vel::ProgramFolder(programDir, elsewhere, home), home + "/Velmarinda");
    EXPECT_EQ(vel::UserFolder(home), home + "/Velmarinda");
}

TEST_F(ProgramFolder, TheFirstRunMakesTheUsersFolderWithAnEmptyDatabase) {
    const QString folder = vel::UserFolder(home);
    vel::PrepareUserFolder(folder);
    for (const char* f : {"enviar", "recibir", "importacion"}) EXPECT_TRUE(QDir(folder).exists(f)) << f;
    auto db = vel::Database::OpenDatabase(folder + "/datos.mdb");
    auto rs = db->OpenRecordset("SELECT codigo_tienda FROM tienda");
    EXPECT_FALSE(rs->Eof());
    // And an empty chain catalogue where the products window looks for it.
    auto catalogo = vel::OpenDbaseDatabase(folder + "/c/cadenart", "articulo.dbf");
    EXPECT_TRUE(catalogo->OpenRecordset("SELECT codigo, nombre FROM articulo")->Eof());
}

// A new shop can open every window at once: config.ini names the default
// installation and the store the empty database holds.
TEST_F(ProgramFolder, TheFirstRunWritesConfigWithTheDefaultInstallationAndStore) {
    const QString folder = vel::UserFolder(home);
    vel::PrepareUserFolder(folder);
    QFile config(folder + "/config.ini");
    ASSERT_TRUE(config.open(QIODevice::ReadOnly));
    EXPECT_EQ(config.readAll(), QByteArray("FERROBANDA,CENTRAL\r\n"));
    auto db = vel::Database::OpenDatabase(folder + "/datos.mdb");
    auto rs = db->OpenRecordset("SELECT codigo_tienda FROM tienda WHERE nombre_tienda = 'CENTRAL'");
    ASSERT_FALSE(rs->Eof());
    EXPECT_EQ(rs->Fields("codigo_tienda").num(), 1);
}

TEST_F(ProgramFolder, AnExistingUsersFolderIsLeftAsItIs) {
    // A database deleted by hand is not made again: the start stops, as it does
    // anywhere a datos.mdb is missing.
    const QString folder = vel::UserFolder(home);
    QDir().mkpath(folder);
    vel::PrepareUserFolder(folder);
    EXPECT_FALSE(QFile::exists(folder + "/datos.mdb"));
    EXPECT_FALSE(QDir(folder).exists("enviar"));
    EXPECT_FALSE(QFile::exists(folder + "/config.ini"));
}

} // namespace
