#include "tests/support/childprocess.h"
#include "tests/support/hostilefiles.h"
#include "tests/support/qtprinters.h"
#include "tests/support/randombudget.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>

#include <sys/resource.h>

namespace {

constexpr unsigned int SEED = 20240229;
constexpr int MUTATIONS = 3000;

QString Opened(const QByteArray& bytes)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("budget.norvexa");
    QFile file(name);
    QString error = "not written";

    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) {
        file.close();
        Loaded_Budget(name, &error);
    }
    return error;
}

/// The sanitizers keep far more memory than the program.
void Limit_Memory()
{
#ifndef __SANITIZE_ADDRESS__
    constexpr rlim_t GIGABYTE = 1U << 30U;
    const rlimit limit = {GIGABYTE, GIGABYTE};

    setrlimit(RLIMIT_DATA, &limit);
#endif
}

/// The memory that the bytes themselves need is not the program's.
QString Opened_In_Child(const THostileFile& file)
{
    return In_Child([&] {
        const QByteArray bytes = file.bytes();
        Limit_Memory();
        return Opened(bytes).left(1000);
    });
}

/// "loaded" or "refused"; any other message as it stands.
QString Outcome(const QString& error)
{
    if (error.isEmpty()) {
        return "loaded";
    }
    return Is_Refusal(error) ? "refused" : error;
}

QString Expected_Outcome(TOpening expected, const QString& outcome)
{
    switch (expected) {
    case TOpening::Loads:
        return "loaded";
    case TOpening::Refused:
        return "refused";
    default:
        return outcome == "loaded" ? "loaded" : "refused";
    }
}

} // namespace

void PrintTo(const THostileFile& file, std::ostream* stream)
{
    *stream << file.name.toStdString();
}

class TNorvexa_Hostile_Test : public testing::TestWithParam<THostileFile>
{};

TEST_P(TNorvexa_Hostile_Test, Loads_or_is_refused_with_a_message)
{
    const QString outcome = Outcome(Opened_In_Child(GetParam()));

    EXPECT_EQ(outcome, Expected_Outcome(GetParam().expected, outcome));
}

INSTANTIATE_TEST_SUITE_P(Files, TNorvexa_Hostile_Test, testing::ValuesIn(Hostile_Files(SEED)),
                         [](const auto& file) { return file.param.name.toStdString(); });

TEST(TNorvexa_Damaged_Test, Hostile_files_are_many_and_of_all_kinds)
{
    std::multiset<TOpening> expected;
    for (const THostileFile& file : Hostile_Files(SEED)) {
        expected.insert(file.expected);
    }

    EXPECT_GT(expected.count(TOpening::Loads), 50U);
    EXPECT_GT(expected.count(TOpening::Refused), 150U);
}

TEST(TNorvexa_Damaged_Test, A_budget_that_is_cut_off_anywhere_is_refused_with_a_message)
{
    const QByteArray budget = Small_Budget();

    for (int size = 0; size < budget.size() - 1; ++size) {
        ASSERT_EQ(Outcome(Opened(budget.left(size))), "refused") << "after " << size << " bytes";
    }
    EXPECT_EQ(Outcome(Opened(budget)), "loaded");
}

TEST(TNorvexa_Damaged_Test, A_budget_that_is_changed_anyhow_loads_or_is_refused_with_a_message)
{
    std::mt19937 random(SEED);
    int loaded = 0;

    for (int count = 0; count < MUTATIONS; ++count) {
        const QByteArray bytes = Mutated_Bytes(Small_Budget(), &random);
        const QString outcome = Outcome(Opened(bytes));
        ASSERT_EQ(outcome, Expected_Outcome(TOpening::Either, outcome)) << bytes.toStdString();
        loaded += outcome == "loaded" ? 1 : 0;
    }
    EXPECT_GT(loaded, MUTATIONS / 20);
    EXPECT_LT(loaded, MUTATIONS / 2);
}
