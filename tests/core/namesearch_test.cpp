#include "core/namesearch.h"
#include "tests/support/qtprinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QRegularExpression>

#include <random>
#include <vector>

namespace {

/// Where the name begins, each time behind the one before.
std::vector<int> Found(const QString& name, const QString& text)
{
    const TNameSearch search(name);
    std::vector<int> found;

    for (int index = search.Index_In(text, 0); index >= 0; index = search.Index_In(text, index + name.size())) {
        found.push_back(index);
    }
    return found;
}

/// The same by a regular expression.
std::vector<int> Matched(const QString& name, const QString& text)
{
    const QRegularExpression pattern(QString("\\b%1\\b").arg(QRegularExpression::escape(name)));
    QRegularExpressionMatchIterator matches = pattern.globalMatch(text);
    std::vector<int> matched;

    while (matches.hasNext()) {
        matched.push_back(matches.next().capturedStart());
    }
    return matched;
}

QString Random_Text(std::mt19937* random, std::size_t longest)
{
    const QString characters = "AB-";
    QString text;

    for (auto left = 1 + (*random)() % longest; left > 0; --left) {
        text += characters.at(static_cast<int>((*random)() % 3));
    }
    return text;
}

struct TSearchCase
{
    const char* title;
    QString name;
    QString text;
    std::vector<int> found;
};

class TNameSearch_Cases : public ::testing::TestWithParam<TSearchCase>
{};

} // namespace

TEST_P(TNameSearch_Cases, Find)
{
    EXPECT_EQ(Found(GetParam().name, GetParam().text), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(TNameSearch, TNameSearch_Cases,
                         ::testing::Values(TSearchCase{"Whole_text", "AB", "AB", {0}},
                                           TSearchCase{"Each_of_several", "A", "A+A*A", {0, 2, 4}},
                                           TSearchCase{"Nothing_in_an_empty_text", "A", "", {}},
                                           TSearchCase{"Nothing_in_a_text_that_ends_too_early", "AB", "B+A", {}},
                                           TSearchCase{"No_beginning_of_a_word", "A", "AB", {}},
                                           TSearchCase{"No_end_of_a_word", "B", "AB", {}},
                                           TSearchCase{"No_part_of_a_word_with_underscore", "A", "A_1+_A", {}},
                                           TSearchCase{
                                               "No_part_of_a_word_with_an_umlaut", "A", QString::fromUtf8("ÄA+AÄ"), {}},
                                           TSearchCase{"A_sign_between_words", "-", "A-B", {1}},
                                           TSearchCase{"No_sign_at_a_border_of_the_text", "-", "-A-", {}},
                                           TSearchCase{"A_name_inside_which_it_begins_again", "A-A-B", "A-A-A-B", {2}},
                                           TSearchCase{"A_name_inside_one_that_stands_in_a_word", "A-A", "BA-A-A", {3}},
                                           TSearchCase{"Overlapping_ones_once", "A-A", "A-A-A-A-A", {0, 4}},
                                           TSearchCase{"Capitals_as_they_are", "A", "a+A", {2}}),
                         [](const auto& row) { return row.param.title; });

TEST(TNameSearch, Begins_where_it_is_told)
{
    const TNameSearch search("A-A");

    EXPECT_EQ(search.Index_In("A-A-A", 0), 0);
    EXPECT_EQ(search.Index_In("A-A-A", 1), 2);
    EXPECT_EQ(search.Index_In("A-A-A", 3), -1);
    EXPECT_EQ(search.Index_In("A-A-A", 5), -1);
}

TEST(TNameSearch, Finds_what_a_regular_expression_finds)
{
    std::mt19937 random(1);

    for (int round = 0; round < 20'000; ++round) {
        const QString name = Random_Text(&random, 6);
        const QString text = Random_Text(&random, 30);

        ASSERT_EQ(Found(name, text), Matched(name, text)) << qPrintable(name) << " in " << qPrintable(text);
    }
}

// A search that compares the name anew at each place would take minutes.
TEST(TNameSearch, Ends_for_a_long_name_that_the_text_nearly_repeats)
{
    const QString name = QString("A-").repeated(200'000) + "B";
    const QString text = QString("A-").repeated(1'000'000);

    EXPECT_EQ(Found(name, text), std::vector<int>());
    EXPECT_EQ(Found(name, text + "B"), std::vector<int>{text.size() + 1 - name.size()});
}
