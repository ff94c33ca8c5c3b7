#include "src/exportlines.h"

#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using TExportData = TReportWidget::TExportData;
using TExportVariableData = TReportWidget::TExportVariableData;
using TLines = std::vector<QString>;
using TPoints = std::vector<TVector2>;

// Records

TExportData Record(const QString& component, const QString& item, const std::vector<double>& values = {0.001})
{
    TExportData record;
    record.component = component;
    record.item.name = item;
    record.item.expression_type = "Constant";
    record.item.expression = "0.001";
    record.item.sensitivity = "1.000000";
    record.item.distribution = "Normal";
    record.item.uc_type = "Type B";
    record.values = values;
    for (std::size_t index = 0; index < values.size(); ++index) {
        record.positions.push_back(50.0 * static_cast<double>(index));
    }
    return record;
}

TExportData Chosen(TExportData record, const QString& identifier)
{
    record.identifier = identifier;
    return record;
}

TExportData For_Variable(TExportData record)
{
    record.is_variable = true;
    return record;
}

TLines Definition(const std::vector<TExportData>& records)
{
    return Export_Lines(records, {}, {}).budget_definition.csv;
}

TLines Globals(const std::vector<TExportVariableData>& variables)
{
    return Export_Lines({}, variables, {}).global_variables.csv;
}

TReportWidget::TFormattedLines Data(const std::vector<TExportData>& records,
                                    const std::vector<TExportVariableData>& variables = {}, const TPoints& points = {})
{
    return Export_Lines(records, variables, points).budget_data;
}

TPoints Quadratic(double a, double b, double c)
{
    TPoints points;
    for (int index = 0; index <= 20; ++index) {
        const double x = 50.0 * index;
        points.emplace_back(x, a * x * x + b * x + c);
    }
    return points;
}

TReportWidget::TFormattedLines Formula(const TPoints& points)
{
    return Export_Lines({}, {}, points).formula;
}

} // namespace

// Budget definition

TEST(TExportLines, The_definition_has_a_title_a_header_a_row_and_an_empty_line)
{
    TExportData record = Chosen(Record("Probe", "Repeatability"), "SN 1");
    record.item.expression_type = "Length Dependent";
    record.item.expression = "SUMSQ(MSD,2)";
    record.item.uc_type = "Type A";
    record.item.sensitivity = "0.500000";
    record.item.distribution = "Rectangular";
    record.item.divisor = 1.732050807568877;

    EXPECT_EQ(
        Definition({record}),
        TLines({"Probe Component SN 1", ",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor",
                R"csv(,Repeatability,Length Dependent,"SUMSQ(MSD,2)",Type A,0.500000,Rectangular,1.732051)csv", ""}));
}

TEST(TExportLines, The_definition_starts_a_block_whenever_the_title_changes)
{
    const QString header = ",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor";
    const QString values = R"(,Constant,"0.001",Type B,1.000000,Normal,1.000000)";

    EXPECT_EQ(Definition({For_Variable(Record("Beam", "Load")), Record("Beam", "Load"), Record("Beam", "Drift"),
                          Chosen(Record("Beam", "Wear"), "B 2"), Record("Scale", "Wear"), Record("Beam", "Sag")}),
              TLines({"Beam Component  Variable",
                      header,
                      ",Load" + values,
                      "", //
                      "Beam Component ",
                      header,
                      ",Load" + values,
                      ",Drift" + values,
                      "", //
                      "Beam Component B 2",
                      header,
                      ",Wear" + values,
                      "", //
                      "Scale Component ",
                      header,
                      ",Wear" + values,
                      "", //
                      "Beam Component ",
                      header,
                      ",Sag" + values,
                      ""}));
}

TEST(TExportLines, The_definition_of_nothing_is_empty)
{
    EXPECT_EQ(Definition({}), TLines());
}

TEST(TExportLines, The_definition_prints_the_identifier_as_it_is)
{
    EXPECT_EQ(Definition({Record("Probe", "A")}).front(), "Probe Component ");
    EXPECT_EQ(Definition({Chosen(Record("Probe", "A"), "[Default]")}).front(), "Probe Component [Default]");
    EXPECT_EQ(Definition({Chosen(For_Variable(Record("Probe", "A")), "SN 1")}).front(),
              "Probe Component SN 1 Variable");
}

TEST(TExportLines, Cells_with_commas_and_quotes_are_enclosed)
{
    TExportData record = Chosen(Record("Probe, long", "5\" ball"), "SN \"1\"");
    record.item.expression = "0.001\"";

    const TReportWidget::TExportLines lines = Export_Lines({record}, {{"Probe, long", "a,b", {1.0}}}, {});

    EXPECT_EQ(
        lines.budget_definition.csv,
        TLines({R"("Probe, long Component SN ""1""")", ",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor",
                R"(,"5"" ball",Constant,"0.001""",Type B,1.000000,Normal,1.000000)", ""}));
    EXPECT_EQ(lines.global_variables.csv, TLines({R"(,"a,b",1.000000)", ""}));
    EXPECT_EQ(lines.budget_data.csv, TLines({",,Position (mm),0.000", "", R"("Probe, long Component SN ""1""")",
                                             R"(,Local Variables,"a,b",1.000000000)",
                                             R"(,Source,"5"" ball",0.001000000)", "", "Uncertainty", ",,Combined"}));
}

TEST(TExportLines, Names_never_act_as_format_strings)
{
    const TExportData record = Chosen(Record("%2 %1", "%1"), "%1 %3");

    const TReportWidget::TExportLines lines = Export_Lines({record}, {{"%2 %1", "%2", {1.0}}}, {});

    EXPECT_EQ(lines.budget_definition.csv.front(), "%2 %1 Component %1 %3");
    EXPECT_EQ(lines.budget_definition.csv.at(2), R"(,%1,Constant,"0.001",Type B,1.000000,Normal,1.000000)");
    EXPECT_EQ(lines.global_variables.csv.front(), ",%2,1.000000");
    EXPECT_EQ(lines.budget_data.csv.at(3), ",Local Variables,%2,1.000000000");
    EXPECT_EQ(lines.budget_data.csv.at(4), ",Source,%1,0.001000000");
}

TEST(TExportLines, Both_copies_of_definition_and_global_variables_are_the_same)
{
    const auto lines = Export_Lines({Record("Probe", "A")}, {{"", "Td", {0.5}}}, {});

    EXPECT_EQ(lines.budget_definition.pdf, lines.budget_definition.csv);
    EXPECT_EQ(lines.global_variables.pdf, lines.global_variables.csv);
}

// Global variables

TEST(TExportLines, Global_variables_have_their_first_value_with_6_decimals_and_an_empty_line_at_the_end)
{
    EXPECT_EQ(Globals({{"", "CTEm", {0.0115, 0.02}}, {"", "Sdev", {-1.2345678}}}),
              TLines({",CTEm,0.011500", ",Sdev,-1.234568", ""}));
}

TEST(TExportLines, Global_variables_leave_out_the_four_that_depend_on_component_and_length)
{
    EXPECT_EQ(Globals({{"", "CTEc", {1.0}}, {"", "CTEd", {1.0}}, {"", "Lc", {1.0}}, {"", "L", {1.0}}}), TLines({""}));
    EXPECT_EQ(Globals({{"", "ctec", {1.0}}, {"", "l", {2.0}}}), TLines({",ctec,1.000000", ",l,2.000000", ""}));
}

TEST(TExportLines, Global_variables_have_those_with_a_source_too)
{
    EXPECT_EQ(Globals({{"", "Td", {0.5}}, {"Beam", "Bend", {0.25}}, {"Beam", "L", {0.0}}}),
              TLines({",Td,0.500000", ",Bend,0.250000", ""}));
}

TEST(TExportLines, A_global_variable_without_values_has_an_empty_cell)
{
    EXPECT_EQ(Globals({{"", "Td", {}}}), TLines({",Td,", ""}));
}

// Budget data

TEST(TExportLines, The_data_show_positions_blocks_and_the_combined_uncertainty)
{
    const std::vector<TExportData> records = {
        For_Variable(Record("Beam", "Load", {0.5, 0.6})), For_Variable(Record("Beam", "Heat", {0.7, 0.8})),
        Chosen(Record("Scale", "Wear", {0.001, 0.002}), "S 1"), Record("Scale", "Drift", {0.0, 0.0001})};
    const std::vector<TExportVariableData> variables = {{"", "Td", {9.0, 9.0}},
                                                        {"Beam", "Bend", {0.86, 1.0}},
                                                        {"Scale", "CTEd", {0.0015, 0.0015}},
                                                        {"Scale", "L", {0.0, 50.0}}};

    const TReportWidget::TFormattedLines lines = Data(records, variables, {{0.0, 0.001}, {50.0, 0.0020025}});

    EXPECT_EQ(lines.csv, TLines({",,Position (mm),0.000,50.000",                   //
                                 "",                                               //
                                 "Beam Component  Variable",                       //
                                 ",Export Variables,Bend,0.860000000,1.000000000", //
                                 ",Source,Load,0.500000000,0.600000000",           //
                                 ",,Heat,0.700000000,0.800000000",                 //
                                 "",                                               //
                                 "Scale Component S 1",                            //
                                 ",Local Variables,CTEd,0.001500000,0.001500000",  //
                                 ",,L,0.000000000,50.000000000",                   //
                                 ",Source,Wear,0.001000000,0.002000000",           //
                                 ",,Drift,0.000000000,0.000100000",                //
                                 "",                                               //
                                 "Uncertainty",                                    //
                                 ",,Combined,0.001000000,0.002002500"}));
    EXPECT_EQ(lines.pdf, TLines({",,Position (mm),0.0,50.0",               //
                                 "",                                       //
                                 "Beam Component  Variable",               //
                                 ",Export Variables,Bend,0.86000,1.00000", //
                                 ",Source,Load,0.50000,0.60000",           //
                                 ",,Heat,0.70000,0.80000",                 //
                                 "",                                       //
                                 "Scale Component S 1",                    //
                                 ",Local Variables,CTEd,0.00150,0.00150",  //
                                 ",,L,0.00000,50.0000",                    //
                                 ",Source,Wear,0.00100,0.00200",           //
                                 ",,Drift,0.00000,0.00010",                //
                                 "",                                       //
                                 "Uncertainty",                            //
                                 ",,Combined,0.00100,0.00200"}));
}

TEST(TExportLines, The_data_of_nothing_have_their_frame)
{
    const TReportWidget::TFormattedLines lines = Data({});

    EXPECT_EQ(lines.csv, TLines({",,Position (mm)", "", "Uncertainty", ",,Combined"}));
    EXPECT_EQ(lines.pdf, lines.csv);
}

TEST(TExportLines, A_block_starts_only_when_the_component_differs_from_the_record_before)
{
    const TLines lines = Data({For_Variable(Record("Beam", "Load")), Record("Beam", "Drift"),
                               Chosen(Record("Beam", "Wear"), "B 2"), Record("Scale", "Wear"), Record("Beam", "Sag")},
                              {{"Beam", "Bend", {1.0}}})
                             .csv;

    EXPECT_EQ(lines, TLines({",,Position (mm),0.000",              //
                             "",                                   //
                             "Beam Component  Variable",           //
                             ",Export Variables,Bend,1.000000000", //
                             ",Source,Load,0.001000000",           //
                             ",,Drift,0.001000000",                //
                             ",,Wear,0.001000000",                 //
                             "",                                   //
                             "Scale Component ",                   //
                             ",Source,Wear,0.001000000",           //
                             "",                                   //
                             "Beam Component ",                    //
                             ",Local Variables,Bend,1.000000000",  //
                             ",Source,Sag,0.001000000",            //
                             "",                                   //
                             "Uncertainty",                        //
                             ",,Combined"}));
}

TEST(TExportLines, The_variables_of_a_component_stand_in_their_order_whatever_stands_between_them)
{
    const std::vector<TExportVariableData> variables = {{"Scale", "Lc", {1.0}},   {"Beam", "Lc", {2.0}},
                                                        {"Scale", "CTEc", {3.0}}, {"", "Td", {4.0}},
                                                        {"Beam", "CTEd", {5.0}},  {"Scale", "L", {6.0}}};

    const TLines lines = Data({Record("Beam", "Sag"), Record("Scale", "Wear")}, variables).csv;

    EXPECT_EQ(lines, TLines({",,Position (mm),0.000",           //
                             "",                                //
                             "Beam Component ",                 //
                             ",Local Variables,Lc,2.000000000", //
                             ",,CTEd,5.000000000",              //
                             ",Source,Sag,0.001000000",         //
                             "",                                //
                             "Scale Component ",                //
                             ",Local Variables,Lc,1.000000000", //
                             ",,CTEc,3.000000000",              //
                             ",,L,6.000000000",                 //
                             ",Source,Wear,0.001000000",        //
                             "",                                //
                             "Uncertainty",                     //
                             ",,Combined"}));
}

TEST(TExportLines, Positions_are_those_of_the_first_record)
{
    TExportData first = Record("Probe", "A", {1.0, 2.0});
    first.positions = {0.0626, 12345.6789};

    EXPECT_EQ(Data({first, Record("Probe", "B")}).csv.front(), ",,Position (mm),0.063,12345.679");
    EXPECT_EQ(Data({first, Record("Probe", "B")}).pdf.front(), ",,Position (mm),0.1,12345.7");
}

struct TNumberRow
{
    const char* name;
    double value;
    const char* csv;
    const char* pdf;
};

const TNumberRow NUMBERS[] = {
    {"Zero", 0.0, "0.000000000", "0.00000"},
    {"Below_10", 9.9999999999, "10.000000000", "10.00000"},
    {"From_10_on", 10.0, "10.000000000", "10.0000"},
    {"Below_100", 99.999, "99.999000000", "99.9990"},
    {"From_100_on", 100.0, "100.000000000", "100.000"},
    {"Below_1000", 999.9994, "999.999400000", "999.999"},
    {"From_1000_on", 1000.0, "1000.000000000", "1000.00"},
    {"Great", 123456.789, "123456.789000000", "123456.79"},
    {"Negative", -0.0000125, "-0.000012500", "-0.00001"},
    {"Negative_below_10", -9.5, "-9.500000000", "-9.50000"},
    {"Negative_from_10_on", -10.0, "-10.000000000", "-10.0000"},
    {"Negative_from_1000_on", -1000.0, "-1000.000000000", "-1000.00"},
    {"Infinite", std::numeric_limits<double>::infinity(), "inf", "inf"},
};

class TExportLinesNumber : public ::testing::TestWithParam<TNumberRow>
{};

TEST_P(TExportLinesNumber, Has_9_decimals_and_on_paper_what_its_magnitude_leaves)
{
    const double value = GetParam().value;
    const TReportWidget::TFormattedLines lines = Data({Record("Probe", "A", {value})}, {{"Probe", "V", {value}}});

    EXPECT_EQ(lines.csv.at(3), QString(",Local Variables,V,") + GetParam().csv);
    EXPECT_EQ(lines.csv.at(4), QString(",Source,A,") + GetParam().csv);
    EXPECT_EQ(lines.pdf.at(3), QString(",Local Variables,V,") + GetParam().pdf);
    EXPECT_EQ(lines.pdf.at(4), QString(",Source,A,") + GetParam().pdf);
}

INSTANTIATE_TEST_SUITE_P(Table, TExportLinesNumber, ::testing::ValuesIn(NUMBERS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TExportLines, The_combined_uncertainty_has_5_decimals_on_paper_whatever_its_magnitude)
{
    const TReportWidget::TFormattedLines lines = Data({}, {}, {{0.0, 0.0000049}, {50.0, 12.5}, {100.0, 1234.0}});

    EXPECT_EQ(lines.csv.back(), ",,Combined,0.000004900,12.500000000,1234.000000000");
    EXPECT_EQ(lines.pdf.back(), ",,Combined,0.00000,12.50000,1234.00000");
}

// Formula

struct TFormulaRow
{
    const char* name;
    double a;
    double b;
    double c;
    TLines csv;
    TLines pdf;
};

const TFormulaRow FORMULAS[] = {
    {"The_worked_example",
     1e-9,
     2e-6,
     0.0005,
     {",,Uc(K=1):,0.000500+0.002000L+0.001000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.001000+0.004000L+0.002000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,0.00050+0.00200L+0.00100L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.00100+0.00400L+0.00200L^2 mm  (L is length in meters)"}},
    {"A_negative_linear_coefficient_without_plus_sign",
     1e-9,
     -2e-6,
     0.0005,
     {",,Uc(K=1):,0.000500-0.002000L+0.001000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.001000-0.004000L+0.002000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,0.00050-0.00200L+0.00100L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.00100-0.00400L+0.00200L^2 mm  (L is length in meters)"}},
    {"A_negative_square_coefficient_without_plus_sign",
     -1e-9,
     2e-6,
     0.0005,
     {",,Uc(K=1):,0.000500+0.002000L-0.001000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.001000+0.004000L-0.002000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,0.00050+0.00200L-0.00100L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.00100+0.00400L-0.00200L^2 mm  (L is length in meters)"}},
    {"Negative_coefficients_that_round_to_0_without_plus_sign",
     -1e-16,
     -1e-12,
     0.0005,
     {",,Uc(K=1):,0.000500-0.000000L-0.000000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.001000-0.000000L-0.000000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,0.00050-0.00000L-0.00000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,0.00100-0.00000L-0.00000L^2 mm  (L is length in meters)"}},
    {"A_negative_constant",
     0.0,
     0.0,
     -0.25,
     {",,Uc(K=1):,-0.250000+0.000000L+0.000000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,-0.500000+0.000000L+0.000000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,-0.25000+0.00000L+0.00000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,-0.50000+0.00000L+0.00000L^2 mm  (L is length in meters)"}},
    {"A_constant_uncertainty",
     0.0,
     0.0,
     0.5,
     {",,Uc(K=1):,0.500000+0.000000L+0.000000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,1.000000+0.000000L+0.000000L^2 mm  (L is length in meters)"},
     {",,Uc(K=1):,0.50000+0.00000L+0.00000L^2 mm  (L is length in meters)",
      ",,Uc(K=2):,1.00000+0.00000L+0.00000L^2 mm  (L is length in meters)"}},
};

void PrintTo(const TFormulaRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TExportLinesFormula : public ::testing::TestWithParam<TFormulaRow>
{};

TEST_P(TExportLinesFormula, Has_6_decimals_and_5_on_paper)
{
    const TReportWidget::TFormattedLines lines = Formula(Quadratic(GetParam().a, GetParam().b, GetParam().c));

    EXPECT_EQ(lines.csv, GetParam().csv);
    EXPECT_EQ(lines.pdf, GetParam().pdf);
}

INSTANTIATE_TEST_SUITE_P(Table, TExportLinesFormula, ::testing::ValuesIn(FORMULAS),
                         [](const auto& row) { return std::string(row.param.name); });

struct TErrorRow
{
    const char* name;
    TPoints points;
};

const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

const TErrorRow ERRORS[] = {
    {"No_points", {}},
    {"Two_points", {{0.0, 1.0}, {50.0, 2.0}}},
    {"Points_of_one_length", {{50.0, 1.0}, {50.0, 2.0}, {50.0, 3.0}}},
    {"A_point_that_is_no_number", {{0.0, 1.0}, {50.0, NOT_A_NUMBER}, {100.0, 3.0}}},
};

void PrintTo(const TErrorRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class TExportLinesError : public ::testing::TestWithParam<TErrorRow>
{};

TEST_P(TExportLinesError, Stands_in_place_of_a_formula)
{
    const TLines expected({",,,Uc(K=1):, ERR", ",,,Uc(K=2):, ERR"});

    EXPECT_EQ(Formula(GetParam().points).csv, expected);
    EXPECT_EQ(Formula(GetParam().points).pdf, expected);
}

INSTANTIATE_TEST_SUITE_P(Table, TExportLinesError, ::testing::ValuesIn(ERRORS),
                         [](const auto& row) { return std::string(row.param.name); });
