#include "src/textwrap.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

int Width(const QString& text)
{
    return 10 * text.size();
}

struct TWrapping
{
    std::string name;
    QString text;
    QStringList lines; ///< of at most 10 characters
};

void PrintTo(const TWrapping& wrapping, std::ostream* stream)
{
    *stream << wrapping.text.toStdString();
}

class TWrappedText : public ::testing::TestWithParam<TWrapping>
{};

const QString E_ACUTE = QString("e") + QChar(0x301);
const QString CLEF = QString::fromUtf8("\xF0\x9D\x84\x9E");

const std::vector<TWrapping> WRAPPINGS = {
    {"empty", "", {""}},
    {"that_fits", "Scale drift", {"Scale", "drift"}},
    {"as_wide_as_the_room", "0123456789", {"0123456789"}},
    {"blanks_within_a_line", "a  b", {"a  b"}},
    {"blanks_at_an_end_of_line_are_left_out", "Thermo-   meter  block", {"Thermo-", "meter", "block"}},
    {"blanks_beyond_the_room", "0123456789   ", {"0123456789   "}},
    {"words", "one two three four", {"one two", "three four"}},
    {"name_with_underscores", "Drift_of_the_scale", {"Drift_of_", "the_scale"}},
    {"expression", "0.0017+L/1000000*Td", {"0.0017+L/", "1000000*Td"}},
    {"number_stays_whole", "12345*0.00005", {"12345*", "0.00005"}},
    {"sign_stays_with_its_number", "SQRT((-5.25)+1)", {"SQRT((", "-5.25)+1)"}},
    {"sign_behind_a_bracket", "12345*(-1.5)", {"12345*", "(-1.5)"}},
    {"function_keeps_its_bracket", "1234567*SQRT(2)", {"1234567*", "SQRT(2)"}},
    {"long_word", "abcdefghijklmnop", {"abcdefghij", "klmnop"}},
    {"long_word_behind_a_short_one", "one abcdefghijklmnop", {"one abcdef", "ghijklmnop"}},
    {"accent_stays_on_its_letter", "abcdefghi" + E_ACUTE + "k", {"abcdefghi", E_ACUTE + "k"}},
    {"character_of_two_halves", "abcdefghi" + CLEF + "k", {"abcdefghi", CLEF + "k"}},
};

} // namespace

TEST_P(TWrappedText, Is_wrapped_as_in_the_table)
{
    EXPECT_EQ(Wrapped_Text(GetParam().text, 100, Width), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Table, TWrappedText, ::testing::ValuesIn(WRAPPINGS),
                         [](const ::testing::TestParamInfo<TWrapping>& row) { return row.param.name; });

TEST(TWrappedText, One_character_stands_in_every_line_however_narrow_the_room)
{
    EXPECT_EQ(Wrapped_Text("abc", 5, Width), QStringList({"a", "b", "c"}));
}

TEST(TWrappedText, Never_asks_for_the_width_of_a_text_that_fonts_cannot_measure)
{
    int longest = 0;
    const QString text(1000000, 'x');
    const QStringList lines = Wrapped_Text(text, 1000, [&longest](const QString& part) {
        longest = std::max(longest, part.size());
        return 10 * part.size();
    });
    EXPECT_EQ(lines.size(), 10000);
    EXPECT_EQ(lines.join(QString()), text);
    EXPECT_LE(longest, 10000);
}
