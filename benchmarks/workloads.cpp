#include "benchmarks/workloads.h"

const std::vector<TWorkload>& Workloads()
{
    static const std::vector<TWorkload> workloads = {
        {"Expressions/20_variables", "60 expressions over 20 variables, from text", "muParser", 0.04},
        {"Expressions/60_variables", "the same over 60 variables", "over 20 variables", 2.5},
        {"Expressions/10000_terms", "a text of 10,000 terms", "10 texts of 1,000 terms", 1.3},
        {"Expressions/100000_groups", "100,000 nested groups", "10 texts of 10,000 nested groups", 1.3},
        {"Report/screen_1000_items", "the report of 1,000 items on screen", "a bare table of the same texts", 0.2,
         TWorkload::TLimit::SECONDS},
        {"Report/individual_1000", "the report of 1,000 items, each on its own", "10 times that of 100 items", 1.0},
        {"Export/csv_1000_items", "1,000 items at 120 lengths, as CSV",
         "evaluations, number texts, one append to a text edit, one write", 3.0},
        {"Files/load", "a budget of 200 components and 4,000 items loaded, safety pass included",
         "QDomDocument::setContent of the same bytes", 2.0},
        {"Files/save", "the same budget saved", "the same QDomDocument built and written through a QTextStream", 0.8},
        {"Files/load_10000", "10,000 components loaded", "10 times 1,000 components", 1.2},
        {"Files/save_10000", "10,000 components saved", "10 times 1,000 components", 1.2},
        {"Pages/tree_rebuild", "the tree of 2,000 components and 40,000 items",
         "a bare QTreeWidget of the same entries", 1.5},
        {"Pages/open", "such a budget opened in the window", "the document's load alone", 2.0},
        {"Pages/select", "another entry selected, among 2,000 components", "among 200 components", 1.2},
        {"Pages/type", "an expression typed, in a budget of 2,000 components", "of 200 components", 1.2},
        {"Pages/edit", "an expression entered, in a budget of 2,000 components", "of 200 components", 1.2},
        {"Start/first_paint", "start to the first painted window", "an empty Qt window of the same size", 2.5},
        {"Pdf/1000_items", "1,000 items at 120 lengths, as PDF", "as many bare cells through QPrinter", 1.2},
    };
    return workloads;
}
