// Every statement the program ran while the scenario suite ran finds its rows
// through an index, unless it means to read the whole table, and then reads
// it in the order it asks for (support/query_plan.h says what counts).
//
// The scenarios write the statements they saw into the folder named by
// VEL_STATEMENT_LOGS, one file a scenario (velscenario does it when
// VELSCENARIO_SQL_LOG names a file); CTest runs this check after them. The
// plans are those of a database made by the schema, as the program makes it.
#include "support/query_plan.h"
#include "core/schema.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>

namespace {

// statement -> the first scenario that ran it
std::map<QString, QString> Recorded() {
    const QString folder = qEnvironmentVariable("VEL_STATEMENT_LOGS");
    std::map<QString, QString> statements;
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name);
    for (const QString& name : files) {
        QFile f(QDir(folder).filePath(name));
        if (!f.open(QIODevice::ReadOnly)) ADD_FAILURE() << "can't read " << name.toStdString();
        for (const QByteArray& line : f.readAll().split('\n')) {
            const QString s = QString::fromUtf8(line).trimmed();
            if (!s.isEmpty()) statements.emplace(s, name);
        }
    }
    return statements;
}

std::unique_ptr<vel::Database> Shop() {
    auto db = vel::Database::CreateInMemory(QStringLiteral("datos.mdb"));
    vel::schema::CreateTables(*db);
    return db;
}

QStringList Faults(vel::Database& db, const std::map<QString, QString>& statements) {
    QStringList faults;
    for (const auto& [sql, scenario] : statements)
        if (auto fault = veltest::PlanFault(db, sql)) faults << "in " + scenario + ": " + *fault;
    return faults;
}

TEST(RecordedStatements, EveryStatementOfTheScenariosFindsItsRowsByIndex) {
    const QString folder = qEnvironmentVariable("VEL_STATEMENT_LOGS");
    ASSERT_FALSE(folder.isEmpty()) << "VEL_STATEMENT_LOGS names the folder of the scenarios' statements";
    const auto statements = Recorded();
    // The suite runs a few hundred different statements; a handful means the
    // scenarios wrote nothing.
    ASSERT_GT(QDir(folder).entryList({QStringLiteral("*.sql")}, QDir::Files).size(), 50) << folder.toStdString();
    ASSERT_GT(statements.size(), 300u);
    auto db = Shop();
    const QStringList faults = Faults(*db, statements);
    for (const QString& f : faults) ADD_FAILURE() << f.toStdString();
    std::printf("%zu statements checked, %lld faults\n", statements.size(), static_cast<long long>(faults.size()));
}

// The check sees what a missing index does to the same statements: the
// delivery note's lines read by year and number go through every line.
TEST(RecordedStatements, WithoutTheLinesIndexByYearAndNumberTheCheckFails) {
    auto db = Shop();
    db->Execute(QStringLiteral("DROP INDEX ix_detalle_albaran_venta_2"));
    const QStringList faults = Faults(*db, Recorded());
    EXPECT_TRUE(faults.join('\n').contains("reads all of detalle_albaran_venta")) << faults.join('\n').toStdString();
}

TEST(RecordedStatements, WithoutTheIndexByCustomerAndYearTheCheckFails) {
    auto db = Shop();
    db->Execute(QStringLiteral("DROP INDEX ix_cabecera_albaran_venta_1"));
    EXPECT_FALSE(Faults(*db, Recorded()).isEmpty());
}

} // namespace
