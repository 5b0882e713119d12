// A shop's database in a fresh temporary folder, for the record store tests.
#pragma once
#include "core/record_store.h"
#include "core/schema.h"
#include "runtime/errors.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace veltest {

// The error number a statement raises; 0 when it runs.
inline int ErrorOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const vb::RuntimeError& e) {
        return e.Number;
    }
    return 0;
}

// The description of the error a statement raises; empty when it runs.
inline QString DescriptionOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const vb::RuntimeError& e) {
        return e.Description;
    }
    return {};
}

// A customer as the customer window writes it: texts quoted, numbers bare.
inline QStringList Customer(const QString& code, const QString& nif) {
    return {QStringLiteral("'%1'").arg(code), QStringLiteral("'%1'").arg(nif),
            "'PEDRO'", "'GARCÍA LÓPEZ'", "'FERRETERÍA PEDRO'", "'CALLE MAYOR 1'", "'MADRID'", "'MADRID'", "'ESPAÑOLA'",
            "28001", "911111111", "0", "600000000", "0", "'www.pedro.es'", "'pedro@correo.es'", "0",
            "'JUAN'", "0", "''", "''", "0", "''", "''", "0", "''",
            "'0049'", "'0012'", "12", "1234567890", "5", "20", "'CON'",
            "1", "5", "0", "1", "1", "'1000'", "0", "1", "'COM1'", "'FERRETERIA PEDRO SL'", "'01/02/2024'",
            "'Cliente de siempre'", "'ES12'"};
}

class ShopDatabase : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("datos.mdb"));
        vel::schema::CreateEmptyDatabase(path);
        db = vel::Database::OpenDatabase(path);
    }

    // The rows of a query as "a|b|c" lines, read through the cursor.
    QStringList Rows(const QString& sql, const QStringList& columns) {
        QStringList out;
        auto rs = db->OpenRecordset(sql);
        while (!rs->Eof()) {
            QStringList cells;
            for (const QString& c : columns) cells << Text(rs->Fields(c));
            out << cells.join(QLatin1Char('|'));
            rs->MoveNext();
        }
        return out;
    }

    // One value of the first row.
    vb::Variant First(const QString& sql, const QString& column) {
        auto rs = db->OpenRecordset(sql);
        return rs->Fields(column);
    }

    static QString Text(const vb::Variant& v) {
        if (v.isNull()) return QStringLiteral("<null>");
        return v.str();
    }

    QTemporaryDir dir;
    QString path;
    std::unique_ptr<vel::Database> db;
};

} // namespace veltest
