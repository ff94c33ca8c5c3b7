#include "core/number.h"

#include "tests/support/qtprinters.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <limits>

namespace {

struct TNumberCase
{
    const char* case_name;
    QString text;
    bool is_finite;
    double value;
};

void PrintTo(const TNumberCase& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class FiniteNumber : public ::testing::TestWithParam<TNumberCase>
{
protected:
    void TearDown() override { QLocale::setDefault(QLocale::c()); }

    static void Check()
    {
        EXPECT_EQ(Is_Finite_Number(GetParam().text), GetParam().is_finite);
        EXPECT_EQ(Finite_Number(GetParam().text), GetParam().value);
    }
};

TEST_P(FiniteNumber, Is_the_number_that_the_text_stands_for_and_otherwise_0)
{
    Check();
}

TEST_P(FiniteNumber, Is_the_same_where_the_comma_is_the_decimal_separator)
{
    QLocale::setDefault(QLocale(QLocale::German));
    Check();
}

INSTANTIATE_TEST_SUITE_P(
    , FiniteNumber,
    ::testing::Values(TNumberCase{"Whole", "20", true, 20.0}, TNumberCase{"Decimal", "11.5", true, 11.5},
                      TNumberCase{"Negative", "-0.001", true, -0.001}, TNumberCase{"Plus", "+3", true, 3.0},
                      TNumberCase{"Exponent", "1.5e-3", true, 0.0015}, TNumberCase{"Zero", "0.000", true, 0.0},
                      TNumberCase{"Blanks_around", "  7.25 ", true, 7.25},
                      TNumberCase{"No_digits_before", ".5", true, 0.5}, TNumberCase{"Comma", "11,5", false, 0.0},
                      TNumberCase{"Thousands", "1,000", false, 0.0},
                      TNumberCase{"Thousands_and_point", "1,000.5", false, 0.0}, TNumberCase{"Empty", "", false, 0.0},
                      TNumberCase{"Blanks", "  ", false, 0.0}, TNumberCase{"Word", "ten", false, 0.0},
                      TNumberCase{"Unit_behind", "10 mm", false, 0.0}, TNumberCase{"Two_points", "1.2.3", false, 0.0},
                      TNumberCase{"Infinite", "inf", false, 0.0}, TNumberCase{"Negative_infinite", "-inf", false, 0.0},
                      TNumberCase{"Nan", "nan", false, 0.0}, TNumberCase{"Too_large", "1e999", false, 0.0},
                      TNumberCase{"Largest", "1.7976931348623157e308", true, std::numeric_limits<double>::max()}),
    [](const auto& test) { return test.param.case_name; });

struct TFixedCase
{
    const char* case_name;
    double value;
    int decimals;
    QString text;
};

void PrintTo(const TFixedCase& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class FixedText : public ::testing::TestWithParam<TFixedCase>
{
protected:
    void TearDown() override { QLocale::setDefault(QLocale::c()); }
};

TEST_P(FixedText, Has_a_point_and_exactly_the_decimals_asked_for)
{
    EXPECT_EQ(Fixed_Text(GetParam().value, GetParam().decimals), GetParam().text);

    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(Fixed_Text(GetParam().value, GetParam().decimals), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(, FixedText,
                         ::testing::Values(TFixedCase{"Padded", 11.5, 2, "11.50"},
                                           TFixedCase{"Rounded", 0.0015678, 6, "0.001568"},
                                           TFixedCase{"No_decimals", 19.6, 0, "20"},
                                           TFixedCase{"No_thousands_separator", 1234567.0, 3, "1234567.000"},
                                           TFixedCase{"Negative", -0.5, 3, "-0.500"},
                                           TFixedCase{"No_exponent", 1e21, 1, "1000000000000000000000.0"},
                                           TFixedCase{"Small", 1e-12, 9, "0.000000000"}),
                         [](const auto& test) { return test.param.case_name; });

} // namespace
