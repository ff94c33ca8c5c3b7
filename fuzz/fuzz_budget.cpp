// Opens the input as a budget. One that is refused has a message; one that loads can be saved, and what was saved loads
// as the same budget, twice over.

#include "fuzz/budgetfile.h"
#include "fuzz/require.h"
#include "tests/support/hostilefiles.h"
#include "tests/support/randombudget.h"

#include <QDomImplementation>

#include <cstddef>
#include <cstdint>

namespace {

constexpr int GENERATIONS = 2;

/// Saves the budget and returns what loads from the file.
TBudget Next_Generation(const TBudget& budget)
{
    QString error = Save_Budget(budget, Budget_File());
    Require(error.isEmpty(), "Does not save: " + error);

    const TBudget next = Loaded_Budget(Budget_File(), &error);
    Require(error.isEmpty(), "Does not load again: " + error);
    return next;
}

void Check_Generations(TBudget budget)
{
    for (int generation = 0; generation < GENERATIONS; ++generation) {
        const QStringList expected = Description(As_Saved(budget));

        budget = Next_Generation(budget);
        const QStringList found = Description(budget);
        Require(found == expected, "Saved:\n" + expected.join('\n') + "\n\nLoaded:\n" + found.join('\n'));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString error;

    Write_Budget_File(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    const TBudget budget = Loaded_Budget(Budget_File(), &error);

    Require(QDomImplementation::invalidDataPolicy() == QDomImplementation::ReturnNullNode, "The policy has changed.");
    if (error.isEmpty()) {
        Check_Generations(budget);
    } else {
        Require(Is_Refusal(error), "No message: " + error);
    }
    return 0;
}
