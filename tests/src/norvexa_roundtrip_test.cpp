#include "tests/support/qtprinters.h"
#include "tests/support/randombudget.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr quint32 BUDGETS = 500;

QString Content(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString("unreadable");
}

// The file with every escaping undone, however often it was applied. The root's attributes come in any order, and a
// number that was rounded to zero has lost its sign once it was loaded.
QString Without_Escaping(QString text)
{
    int size = 0;

    do {
        size = text.size();
        text.replace("&amp;", "&").replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"");
    } while (text.size() != size);
    text.replace(QRegularExpression(">-(0\\.0+)<"), ">\\1<");
    return text.remove(QRegularExpression("<Norvexa_Data [^>]*>"));
}

} // namespace

class TNorvexa_Round_Trip_Test : public testing::Test
{
protected:
    TBudget Load(const QString& name) const
    {
        QString error;
        const TBudget budget = Loaded_Budget(name, &error);
        EXPECT_EQ(error, "");
        return budget;
    }

    QTemporaryDir d_folder;
    QString d_first = d_folder.filePath("first.norvexa");
    QString d_second = d_folder.filePath("second.norvexa");
};

TEST_F(TNorvexa_Round_Trip_Test, Loads_what_was_saved_but_for_escaping_and_rounding)
{
    for (quint32 seed = 0; seed < BUDGETS; ++seed) {
        const TBudget budget = Random_Budget(seed);

        ASSERT_EQ(Save_Budget(budget, d_first), "") << "seed " << seed;
        ASSERT_EQ(Description(Load(d_first)), Description(As_Saved(budget))) << "seed " << seed;
    }
}

TEST_F(TNorvexa_Round_Trip_Test, Saves_what_was_loaded_but_for_escaping)
{
    for (quint32 seed = 0; seed < BUDGETS; ++seed) {
        ASSERT_EQ(Save_Budget(Random_Budget(seed), d_first), "") << "seed " << seed;
        ASSERT_EQ(Save_Budget(Load(d_first), d_second), "") << "seed " << seed;
        ASSERT_EQ(Without_Escaping(Content(d_second)), Without_Escaping(Content(d_first))) << "seed " << seed;
    }
}

TEST_F(TNorvexa_Round_Trip_Test, Loads_the_longest_expressions_of_equals_signs)
{
    const QString longest(32'767, '='); // what a line editor takes
    TBudget budget;
    budget.components.resize(1);
    budget.components[0].name = "Component";

    for (int count = 1; count <= 3; ++count) {
        TNorvexaData::TComponentItem item;
        item.name = "Item";
        item.expression = longest;
        budget.components[0].items.push_back(item);

        ASSERT_EQ(Save_Budget(budget, d_first), "");
        EXPECT_EQ(Description(Load(d_first)), Description(As_Saved(budget))) << count << " expressions";
    }
}

TEST_F(TNorvexa_Round_Trip_Test, The_budgets_at_random_are_worth_the_trip)
{
    size_t longest = 0;
    bool has_no_component = false;
    QString texts;

    for (quint32 seed = 0; seed < BUDGETS; ++seed) {
        const TBudget budget = Random_Budget(seed);
        has_no_component = has_no_component || budget.components.empty();
        longest = std::max({longest, budget.variables.size(), budget.groups.size()});
        texts += Description(budget).join(' ');
    }
    EXPECT_TRUE(has_no_component);
    EXPECT_EQ(longest, 40U);
    for (const char* character : {"ä", "α", "😀", "&", "<", ">", "\"", "\n"}) {
        EXPECT_TRUE(texts.contains(QString::fromUtf8(character))) << character;
    }
}
