// A shop PC set to Spanish still writes and reads amounts with a point: the
// SQL text and the labels depend on it.
#include "support/print_to.h"
#include "runtime/vb.h"

#include <QLocale>
#include <clocale>
#include <gtest/gtest.h>
#include <string>

namespace {
class SpanishMachine : public ::testing::Test {
protected:
    void SetUp() override {
        saved_ = std::setlocale(LC_ALL, nullptr);
        savedQt_ = QLocale();
        ASSERT_NE(std::setlocale(LC_ALL, "es_ES.UTF-8"), nullptr)
            << "the es_ES.UTF-8 locale is missing (scripts/setup.sh installs it)";
        ASSERT_EQ(std::string(std::localeconv()->decimal_point), ",");
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        ASSERT_EQ(QLocale().decimalPoint(), QStringLiteral(","));
    }
    void TearDown() override {
        std::setlocale(LC_ALL, saved_.c_str());
        QLocale::setDefault(savedQt_);
    }
    std::string saved_;
    QLocale savedQt_;
};
} // namespace

TEST_F(SpanishMachine, FormatStillWritesAPoint) {
    EXPECT_EQ(vb::Format(12.5, "0.00"), QStringLiteral("12.50"));
    EXPECT_EQ(vb::Format(1.999, "0.000"), QStringLiteral("1.999"));
    EXPECT_EQ(vb::Format(1500, "#.###"), QStringLiteral("1500."));
    EXPECT_EQ(vb::Format(QStringLiteral("2.5"), "0.00"), QStringLiteral("2.50"));
}

TEST_F(SpanishMachine, CStrStillWritesAPoint) {
    EXPECT_EQ(vb::CStr(126.21551724137932), QStringLiteral("126.21551724137932"));
    EXPECT_EQ(vb::CStr(1.5e-5), QStringLiteral("1.5E-05"));
}

TEST_F(SpanishMachine, ValStillReadsOnlyAPoint) {
    EXPECT_EQ(vb::Val("12.5"), 12.5);
    EXPECT_EQ(vb::Val("12,5"), 12);
    EXPECT_EQ(vb::CDbl("1.5"), 1.5);
    EXPECT_TRUE(vb::IsNumeric("1.5"));
}
