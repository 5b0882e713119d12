// Where the program's own paths are on this machine: the chain's folder
// c:\cadenart is a folder c/cadenart in the program's folder.
#include "runtime/app.h"
#include "runtime/paths.h"

#include <gtest/gtest.h>

namespace {

struct ProgramFolder : ::testing::Test {
    void SetUp() override { vb::SetAppPath(QStringLiteral("/opt/velmarinda")); }
    void TearDown() override { vb::SetAppPath(QString()); }
};

TEST_F(ProgramFolder, ADriveLetterIsAFolderOfTheProgram) {
    EXPECT_EQ(vb::NativePath(QStringLiteral("c:\\cadenart")), "/opt/velmarinda/c/cadenart");
    EXPECT_EQ(vb::NativePath(QStringLiteral("C:\\CADENART\\")), "/opt/velmarinda/c/CADENART/");
    EXPECT_EQ(vb::NativePath(QStringLiteral("d:")), "/opt/velmarinda/d");
    EXPECT_EQ(vb::NativePath(QStringLiteral("c:\\")), "/opt/velmarinda/c");
}

TEST_F(ProgramFolder, OtherPathsKeepTheirPlace) {
    EXPECT_EQ(vb::NativePath(QStringLiteral("/srv/cadena")), "/srv/cadena");
    EXPECT_EQ(vb::NativePath(QStringLiteral("cadena\\articulo.dbf")), "cadena/articulo.dbf");
    EXPECT_EQ(vb::NativePath(QString()), QString());
}

} // namespace
