#include "src/reportwalk.h"

#include "src/norvexa.h"
#include "tests/support/budgettext.h"
#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using TRecords = std::vector<TReportRecord>;
using TItem = TNorvexaData::TComponentItem;
using TComponent = TNorvexaData::TComponent;

constexpr double ROOT_2 = 1.414213562373095;
constexpr double ROOT_3 = 1.732050807568877;
constexpr double ROOT_6 = 2.449489742783178;
constexpr double ROOT_12 = 3.46410161513775;

QString Number(double value)
{
    return QString::number(value, 'g', 12);
}

// Budgets

TItem Item(const QString& name, const QString& expression,
           TNorvexaData::TExpressionType type = TNorvexaData::CONSTANT_LINEAR)
{
    TItem item;
    item.name = name;
    item.expression = expression;
    item.expression_type = type;
    return item;
}

TItem Temperature_Item(const QString& name, const QString& expression = "0.001")
{
    return Item(name, expression, TNorvexaData::CONSTANT_TEMPERATURE);
}

TComponent Component(const QString& name, const std::vector<TItem>& items)
{
    TComponent component;
    component.name = name;
    component.items = items;
    return component;
}

TNorvexa Document(const std::vector<TComponent>& components)
{
    TNorvexa document;
    for (const TComponent& component : components) {
        document.Add_Component(component.name);
        document.Update_Component(component);
    }
    return document;
}

// Records

TVariable Variable(const QString& name, double value = 0.0)
{
    TVariable variable;
    variable.name = name;
    variable.value = value;
    return variable;
}

TReportRecord Record(const QString& component, const std::vector<TVariable>& variables = {})
{
    TReportRecord record;
    record.component = component;
    record.local_variables = variables;
    return record;
}

TReportRecord Item_Record(const QString& component, const QString& item)
{
    TReportRecord record = Record(component);
    record.item = item;
    return record;
}

TReportRecord Identifier_Record(const QString& component, const QString& identifier)
{
    TReportRecord record = Record(component);
    record.identifier = identifier;
    return record;
}

// The variable `name` stands for the uncertainty of `component`, or of its item.
TReportRecord Variable_Record(const QString& name, const QString& component, const QString& item = QString())
{
    TReportRecord record = Item_Record(component, item);
    TVariable variable = Variable(name);
    variable.description = item.isEmpty() ? component : component + " - " + item;
    record.local_variables = {variable};
    return record;
}

// What a walk tells

QString Row_Text(const TReportRow& row)
{
    return QStringList({row.name, row.unit_kind, row.expression_type, row.expression, Number(row.sensitivity),
                        row.distribution, row.uc_type, Number(row.divisor), Number(row.value),
                        row.is_valid ? "valid" : "not valid"})
        .join(" | ");
}

class TRecorder : public TReportListener
{
public:
    void Record_Started(const TReportRecord& record) override { Add(record, "starts"); }

    void Data_Variable_Set(const TReportRecord& record, const QString& name, double value) override
    {
        Add(record, "data variable " + name + " = " + Number(value));
    }

    void Data_Variable_Failed(const TReportRecord& record, const QString& name) override
    {
        Add(record, "data variable " + name + " fails");
    }

    void Local_Variable_Set(const TReportRecord& record, const QString& name, double value) override
    {
        Add(record, name + " = " + Number(value));
    }

    void Item_Evaluated(const TReportRecord& record, const TReportRow& row) override
    {
        Add(record, "item " + row.name + (row.is_valid ? " = " + Number(row.value) : QString(" fails")));
        rows << Row_Text(row);
    }

    void Units_Mixed() override { events << "units are mixed"; }

    void Record_Finished(const TReportRecord& record, bool is_variable,
                         const std::vector<TReportRow>& record_rows) override
    {
        Add(record, is_variable ? "ends for a variable" : "ends for the group");
        for (const TReportRow& row : record_rows) {
            finished_rows << Row_Text(row);
        }
    }

    QStringList events;
    QStringList rows;          // as their items were evaluated
    QStringList finished_rows; // as their records ended

private:
    void Add(const TReportRecord& record, const QString& event)
    {
        const QString item = record.item.isEmpty() ? QString() : "." + record.item;
        const QString identifier = record.identifier.isEmpty() ? QString() : "[" + record.identifier + "]";
        events << record.component + item + identifier + ": " + event;
    }
};

class ReportWalk : public ::testing::Test
{
protected:
    // Forgets what was told before.
    bool Walk(const TRecords& variable_records, const TRecords& group_records, double length = 500.0)
    {
        told = TRecorder();
        return Walk_Report(&document, variable_records, group_records, length, &told);
    }

    bool Walk_Group(const TRecords& records, double length = 500.0) { return Walk({}, records, length); }

    TNorvexa document;
    TRecorder told;
};

} // namespace

// Order

TEST_F(ReportWalk, Evaluates_the_variable_records_and_then_the_group_records)
{
    document = Document({Component("Scale", {Item("Drift", "Bend*2"), Item("Joint", "L+1")}),
                         Component("Beam", {Item("Load", "3"), Item("Tilt", "4")}),
                         Component("Probe", {Item("Tip", "Wear")}), Component("Ball", {Item("Form", "7")})});

    EXPECT_TRUE(Walk({Variable_Record("Bend", "Beam"), Variable_Record("Wear", "Ball")},
                     {Record("Scale", {Variable("CTEc", 9.0), Variable("L")}), Record("Probe")}));

    EXPECT_EQ(
        told.events,
        QStringList({"Beam: starts", "Beam: data variable Bend = 5", "Beam: item Load = 3", "Beam: item Tilt = 4",
                     "Beam: ends for a variable", "Ball: starts", "Ball: data variable Wear = 7", "Ball: item Form = 7",
                     "Ball: ends for a variable", "Scale: starts", "Scale: CTEc = 9", "Scale: L = 500",
                     "Scale: item Drift = 10", "Scale: item Joint = 501", "Scale: ends for the group", "Probe: starts",
                     "Probe: item Tip = 7", "Probe: ends for the group"}));
}

TEST_F(ReportWalk, Hands_over_the_rows_of_a_record_at_its_end_as_they_were_evaluated)
{
    document = Document(
        {Component("Scale", {Item("Drift", "0.003"), Item("Joint", "(")}), Component("Beam", {Item("Load", "3")})});

    Walk({Variable_Record("Bend", "Beam")}, {Record("Scale")});

    EXPECT_EQ(told.rows, QStringList({"Load | Linear | Constant | 3 | 1 | Normal | Type B | 1 | 3 | valid",
                                      "Drift | Linear | Constant | 0.003 | 1 | Normal | Type B | 1 | 0.003 | valid",
                                      "Joint | Linear | Constant | ( | 1 | Normal | Type B | 1 | 0 | not valid"}));
    EXPECT_EQ(told.finished_rows, told.rows);
}

TEST_F(ReportWalk, Tells_nothing_without_records)
{
    EXPECT_TRUE(Walk({}, {}));

    EXPECT_EQ(told.events, QStringList());
}

TEST_F(ReportWalk, Evaluates_variable_records_alone)
{
    document = Document({Component("Beam", {Item("Load", "3")})});

    EXPECT_TRUE(Walk({Variable_Record("Bend", "Beam")}, {}));

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend = 3", "Beam: item Load = 3",
                                        "Beam: ends for a variable"}));
}

TEST_F(ReportWalk, Starts_and_ends_a_component_without_items)
{
    document = Document({Component("Scale", {})});

    EXPECT_TRUE(Walk_Group({Record("Scale", {Variable("L")})}));

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: L = 500", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Starts_and_ends_a_component_that_the_budget_does_not_have)
{
    EXPECT_TRUE(Walk({Variable_Record("Bend", "Beam")}, {Record("Scale")}));

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend fails", "Beam: ends for a variable",
                                        "Scale: starts", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Leaves_the_budget_as_it_is)
{
    document = Document({Component("Scale", {Item("Drift", "Bend")}), Component("Beam", {Item("Load", "3")})});
    const QStringList before = Budget_Text(document);

    Walk({Variable_Record("Bend", "Beam")}, {Record("Scale", {Variable("L")})});

    EXPECT_EQ(Budget_Text(document), before);
}

// Items

TEST_F(ReportWalk, Evaluates_all_items_in_their_order)
{
    document = Document({Component("Scale", {Item("c", "1"), Item("a", "2"), Item("b", "3")})});

    Walk_Group({Record("Scale")});

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: item c = 1", "Scale: item a = 2", "Scale: item b = 3",
                                        "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Evaluates_the_one_item_of_a_record_in_group_and_variable_records)
{
    document = Document({Component("Scale", {Item("a", "1"), Item("A", "2"), Item("b", "3")})});
    TComponent scale = document.Component(0);
    scale.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    document.Update_Component(scale);

    Walk({Variable_Record("Wear", "Scale", "b")}, {Item_Record("Scale", "A")});

    EXPECT_EQ(told.events, QStringList({"Scale.b: starts", "Scale.b: data variable Wear = 3", "Scale.b: item b = 3",
                                        "Scale.b: ends for a variable", "Scale.A: starts", "Scale.A: item A = 2",
                                        "Scale.A: ends for the group"}));
}

TEST_F(ReportWalk, Evaluates_each_of_the_items_of_one_name_as_the_first)
{
    TItem first = Item("Drift", "3");
    TItem second = Item("Drift", "4", TNorvexaData::LENGTH_DEPENDENT_LINEAR);
    second.sensitivity = 2.0;
    second.distribution = TNorvexaData::DISTRIBUTION_U;
    document = Document({Component("Scale", {first, Item("Joint", "5"), second})});
    const QString first_row = "Drift | Linear | Constant | 3 | 1 | Normal | Type B | 1 | 3 | valid";
    const QString second_row = "Drift | Linear | Length Dependent | 3 | 2 | U | Type B | 1.41421356237 | 3 | valid";

    Walk_Group({Record("Scale")});
    EXPECT_EQ(told.rows, QStringList({first_row, "Joint | Linear | Constant | 5 | 1 | Normal | Type B | 1 | 5 | valid",
                                      second_row}));

    Walk_Group({Item_Record("Scale", "Drift")});
    EXPECT_EQ(told.rows, QStringList({first_row, second_row}));
}

TEST_F(ReportWalk, Has_no_row_for_an_item_that_the_component_does_not_have)
{
    document = Document({Component("Scale", {Item("Drift", "1")})});

    EXPECT_TRUE(Walk_Group({Item_Record("Scale", "drift")}));

    EXPECT_EQ(told.events, QStringList({"Scale.drift: starts", "Scale.drift: ends for the group"}));
}

TEST_F(ReportWalk, Goes_on_after_an_item_that_does_not_evaluate)
{
    document = Document(
        {Component("Scale", {Item("Drift", "nothing"), Item("Joint", "2")}), Component("Probe", {Item("Tip", "3")})});

    EXPECT_TRUE(Walk_Group({Record("Scale"), Record("Probe")}));

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: item Drift fails", "Scale: item Joint = 2",
                                        "Scale: ends for the group", "Probe: starts", "Probe: item Tip = 3",
                                        "Probe: ends for the group"}));
    EXPECT_EQ(told.rows.first(), "Drift | Linear | Constant | nothing | 1 | Normal | Type B | 1 | 0 | not valid");
}

namespace {

struct TIdentifierRow
{
    const char* name;
    const char* identifier;
    const char* row;
};

class ReportWalkIdentifier : public ReportWalk, public ::testing::WithParamInterface<TIdentifierRow>
{};

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.name;
}

} // namespace

TEST_P(ReportWalkIdentifier, Selects_the_expression)
{
    TItem drift = Item("Drift", "0.003");
    drift.replacement_items = {{"SN 1", "0.001", false}, {"SN 2", "0.002", true}};
    TComponent scale = Component("Scale", {drift});
    scale.instances = {{"SN 1", "", "", 0.0, 0.01}, {"SN 2", "", "", 0.0, 0.01}};
    document = Document({scale});

    Walk_Group({Identifier_Record("Scale", GetParam().identifier)});

    EXPECT_EQ(told.rows, QStringList(GetParam().row));
}

INSTANTIATE_TEST_SUITE_P(
    Table, ReportWalkIdentifier,
    ::testing::Values(TIdentifierRow{"None", "",
                                     "Drift | Linear | Constant | 0.003 | 1 | Normal | Type B | 1 | 0.003 | valid"},
                      TIdentifierRow{"With_an_expression_of_its_own", "SN 1",
                                     "Drift | Linear | Constant | 0.001 | 1 | Normal | Type B | 1 | 0.001 | valid"},
                      TIdentifierRow{"With_the_default_expression", "SN 2",
                                     "Drift | Linear | Constant | 0.003 | 1 | Normal | Type B | 1 | 0.003 | valid"},
                      TIdentifierRow{"The_default_identifier", "[Default]",
                                     "Drift | Linear | Constant | 0.003 | 1 | Normal | Type B | 1 | 0.003 | valid"},
                      TIdentifierRow{"An_unknown_one", "SN 9",
                                     "Drift | Linear | Constant | 0.003 | 1 | Normal | Type B | 1 | 0.003 | valid"}),
    Row_Name<TIdentifierRow>);

// Rows

namespace {

struct TItemRow
{
    const char* name;
    TItem item;
    QString row;
};

TItem Typed_Item(TNorvexaData::TExpressionType type)
{
    return Item("Drift", "0.004", type);
}

TItem Distributed_Item(TNorvexaData::TDistribution distribution)
{
    TItem item = Item("Drift", "0.004");
    item.distribution = distribution;
    return item;
}

TItem Item_With_Sensitivity(double sensitivity)
{
    TItem item = Item("Drift", "0.004");
    item.sensitivity = sensitivity;
    return item;
}

TItem Type_A_Item()
{
    TItem item = Item("Drift", "0.004");
    item.uc_type = TNorvexaData::UC_TYPE_A;
    return item;
}

QString Distribution_Row(const QString& distribution, double divisor)
{
    return QString("Drift | Linear | Constant | 0.004 | 1 | %1 | Type B | %2 | %3 | valid")
        .arg(distribution, Number(divisor), Number(0.004 / divisor));
}

void PrintTo(const TItemRow& test, std::ostream* stream)
{
    *stream << test.name;
}

class ReportWalkItem : public ReportWalk, public ::testing::WithParamInterface<TItemRow>
{};

} // namespace

TEST_P(ReportWalkItem, Has_a_row_at_500_mm)
{
    document = Document({Component("Scale", {GetParam().item})});

    Walk_Group({Record("Scale")});

    EXPECT_EQ(told.rows, QStringList(GetParam().row));
}

INSTANTIATE_TEST_SUITE_P(
    Table, ReportWalkItem,
    ::testing::Values(
        TItemRow{"Constant_linear", Typed_Item(TNorvexaData::CONSTANT_LINEAR),
                 "Drift | Linear | Constant | 0.004 | 1 | Normal | Type B | 1 | 0.004 | valid"},
        TItemRow{"Constant_temperature", Typed_Item(TNorvexaData::CONSTANT_TEMPERATURE),
                 "Drift | Temperature | Constant | 0.004 | 1 | Normal | Type B | 1 | 0.004 | valid"},
        TItemRow{"Length_dependent_linear", Typed_Item(TNorvexaData::LENGTH_DEPENDENT_LINEAR),
                 "Drift | Linear | Length Dependent | 0.004 | 1 | Normal | Type B | 1 | 0.002 | valid"},
        TItemRow{"Length_dependent_temperature", Typed_Item(TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE),
                 "Drift | Temperature | Length Dependent | 0.004 | 1 | Normal | Type B | 1 | 0.002 | valid"},
        TItemRow{"Normal", Distributed_Item(TNorvexaData::DISTRIBUTION_NORMAL), Distribution_Row("Normal", 1.0)},
        TItemRow{"Rectangular", Distributed_Item(TNorvexaData::DISTRIBUTION_RECTANGULAR),
                 Distribution_Row("Rectangular", ROOT_3)},
        TItemRow{"Triangular", Distributed_Item(TNorvexaData::DISTRIBUTION_TRIANGULAR),
                 Distribution_Row("Triangular", ROOT_6)},
        TItemRow{"U", Distributed_Item(TNorvexaData::DISTRIBUTION_U), Distribution_Row("U", ROOT_2)},
        TItemRow{"Step", Distributed_Item(TNorvexaData::DISTRIBUTION_STEP), Distribution_Row("Step", ROOT_12)},
        TItemRow{"Sensitivity", Item_With_Sensitivity(2.5),
                 "Drift | Linear | Constant | 0.004 | 2.5 | Normal | Type B | 1 | 0.01 | valid"},
        TItemRow{"Negative_sensitivity", Item_With_Sensitivity(-0.5),
                 "Drift | Linear | Constant | 0.004 | -0.5 | Normal | Type B | 1 | -0.002 | valid"},
        TItemRow{"Type_A", Type_A_Item(),
                 "Drift | Linear | Constant | 0.004 | 1 | Normal | Type A | 1 | 0.004 | valid"},
        TItemRow{"Infinite_value", Item("Drift", "1/0"),
                 "Drift | Linear | Constant | 1/0 | 1 | Normal | Type B | 1 | inf | valid"}),
    Row_Name<TItemRow>);

TEST_F(ReportWalk, Gives_the_value_0_to_every_item_that_does_not_evaluate)
{
    document = Document({Component("Scale", {Item("Drift", "5+", TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE)})});

    Walk_Group({Record("Scale")});

    EXPECT_EQ(told.rows, QStringList("Drift | Temperature | Length Dependent | 5+ | 1 | Normal | Type B | 1 | 0 | "
                                     "not valid"));
}

// Units

TEST_F(ReportWalk, Ends_at_an_item_of_the_other_unit_in_a_record)
{
    document = Document({Component("Scale", {Item("Drift", "1"), Temperature_Item("Heat"), Item("Joint", "2")}),
                         Component("Probe", {})});

    EXPECT_FALSE(Walk_Group({Record("Scale"), Record("Probe")}));

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: item Drift = 1", "units are mixed"}));
}

TEST_F(ReportWalk, Ends_at_an_item_of_the_other_unit_in_a_later_record)
{
    document = Document({Component("Oven", {Temperature_Item("Heat", "3")}), Component("Void", {}),
                         Component("Scale", {Item("Drift", "1")}), Component("Probe", {Temperature_Item("Tip")})});

    EXPECT_FALSE(Walk_Group({Record("Oven"), Record("Void"), Record("Scale", {Variable("L")}), Record("Probe")}));

    EXPECT_EQ(told.events,
              QStringList({"Oven: starts", "Oven: item Heat = 3", "Oven: ends for the group", "Void: starts",
                           "Void: ends for the group", "Scale: starts", "Scale: L = 500", "units are mixed"}));
}

TEST_F(ReportWalk, Mixes_no_units_where_an_item_does_not_evaluate)
{
    document = Document({Component("Scale", {Item("Drift", "nothing"), Temperature_Item("Heat")})});

    EXPECT_FALSE(Walk_Group({Record("Scale")}));

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: item Drift fails", "units are mixed"}));
}

TEST_F(ReportWalk, Mixes_constant_and_length_dependent_items_of_one_unit)
{
    document = Document(
        {Component("Scale", {Temperature_Item("a", "1"), Item("b", "2", TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE)})});

    EXPECT_TRUE(Walk_Group({Record("Scale")}));

    EXPECT_EQ(told.events,
              QStringList({"Scale: starts", "Scale: item a = 1", "Scale: item b = 1", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Does_not_look_at_the_units_of_items_that_are_not_reported)
{
    document = Document({Component("Scale", {Temperature_Item("Heat"), Item("Drift", "1")})});

    EXPECT_TRUE(Walk_Group({Item_Record("Scale", "Drift")}));

    EXPECT_EQ(told.events,
              QStringList({"Scale.Drift: starts", "Scale.Drift: item Drift = 1", "Scale.Drift: ends for the group"}));
}

TEST_F(ReportWalk, Lets_variable_records_mix_units)
{
    document = Document({Component("Beam", {Temperature_Item("Heat", "3"), Item("Load", "4")}),
                         Component("Scale", {Item("Drift", "Bend")})});

    EXPECT_TRUE(Walk({Variable_Record("Bend", "Beam")}, {Record("Scale")}));

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend = 5", "Beam: item Heat = 3",
                                        "Beam: item Load = 4", "Beam: ends for a variable", "Scale: starts",
                                        "Scale: item Drift = 5", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Looks_at_the_units_of_each_walk_alone)
{
    document = Document({Component("Oven", {Temperature_Item("Heat")}), Component("Scale", {Item("Drift", "1")})});

    EXPECT_TRUE(Walk_Group({Record("Oven")}));
    EXPECT_TRUE(Walk_Group({Record("Scale")}));
}

// Local variables

namespace {

struct TLengthCount
{
    const char* name;
    double component_length;
    double length;
    double count;
};

class ReportWalkLengthCount : public ReportWalk, public ::testing::WithParamInterface<TLengthCount>
{};

const TLengthCount LENGTH_COUNTS[] = {
    {"Component_without_length", 0.0, 1000.0, 0.0},
    {"Component_with_negative_length", -100.0, 1000.0, 0.0},
    {"Equal_lengths", 100.0, 100.0, 0.0},
    {"Twice_the_length", 100.0, 200.0, 1.0},
    {"Two_and_a_half_lengths", 100.0, 250.0, 2.0},
    {"The_longer_component_once", 1000.0, 1000.0, 0.0},
    {"The_longer_component_twice_and_a_half", 1000.0, 2500.0, 2.0},
    {"Just_below_the_margin", 1000.0, 1000.9, 0.0},
    {"Just_above_the_margin", 1000.0, 1001.1, 1.0},
    {"A_multiple_beyond_the_reach_of_the_margin", 1.0, 2000.0, 1998.0},
    {"No_length", 100.0, 0.0, 0.0},
    {"Truncated_towards_zero", 100.0, -250.0, -2.0},
    {"More_than_an_integer_holds", 0.001, 1e9, 999000999000.0},
};

} // namespace

TEST_P(ReportWalkLengthCount, Is_the_whole_part)
{
    document = Document({Component("Scale", {Item("Joints", "Lc")})});
    TReportRecord record = Record("Scale", {Variable("Lc", 77.0)});
    record.length = GetParam().component_length;

    Walk_Group({record}, GetParam().length);

    EXPECT_EQ(Local_Variable_Value(record, Variable("Lc", 77.0), GetParam().length), GetParam().count);
    EXPECT_EQ(told.events.value(1), "Scale: Lc = " + Number(GetParam().count));
    EXPECT_EQ(told.events.value(2), "Scale: item Joints = " + Number(GetParam().count));
}

INSTANTIATE_TEST_SUITE_P(Table, ReportWalkLengthCount, ::testing::ValuesIn(LENGTH_COUNTS), Row_Name<TLengthCount>);

TEST_F(ReportWalk, Counts_no_negative_zero)
{
    TReportRecord record = Record("Scale");
    record.length = 100.0;

    const double count = Local_Variable_Value(record, Variable("Lc"), -50.0);

    EXPECT_EQ(count, 0.0);
    EXPECT_FALSE(std::signbit(count));
}

TEST_F(ReportWalk, Knows_the_length_as_L)
{
    document = Document({Component("Scale", {Item("Drift", "L/4")})});

    Walk_Group({Record("Scale", {Variable("L", 77.0)})}, 1000.0);

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: L = 1000", "Scale: item Drift = 250",
                                        "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Gives_the_other_variables_the_value_that_they_have)
{
    document = Document({Component("Scale", {Item("Drift", "CTEc*CTEd")})});

    Walk_Group({Record("Scale", {Variable("CTEd", 3.0), Variable("CTEc", 5.0)})});

    EXPECT_EQ(told.events, QStringList({"Scale: starts", "Scale: CTEd = 3", "Scale: CTEc = 5", "Scale: item Drift = 15",
                                        "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Tells_the_names_of_local_variables_apart_by_case)
{
    TReportRecord record = Record("Scale");
    record.length = 100.0;

    EXPECT_EQ(Local_Variable_Value(record, Variable("l", 7.0), 500.0), 7.0);
    EXPECT_EQ(Local_Variable_Value(record, Variable("LC", 8.0), 500.0), 8.0);
}

TEST_F(ReportWalk, Sets_the_variables_of_a_record_in_its_items_only_from_then_on)
{
    document = Document({Component("Probe", {Item("Tip", "L")}), Component("Scale", {Item("Drift", "L")})});

    Walk_Group({Record("Probe"), Record("Scale", {Variable("L")})});

    EXPECT_EQ(told.events,
              QStringList({"Probe: starts", "Probe: item Tip fails", "Probe: ends for the group", "Scale: starts",
                           "Scale: L = 500", "Scale: item Drift = 500", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Keeps_variables_set_for_the_records_that_follow)
{
    document = Document({Component("Scale", {Item("Drift", "CTEc")}), Component("Probe", {Item("Tip", "CTEc")})});

    Walk_Group({Record("Scale", {Variable("CTEc", 4.0)}), Record("Probe")});

    EXPECT_EQ(told.events,
              QStringList({"Scale: starts", "Scale: CTEc = 4", "Scale: item Drift = 4", "Scale: ends for the group",
                           "Probe: starts", "Probe: item Tip = 4", "Probe: ends for the group"}));
}

TEST_F(ReportWalk, Replaces_a_variable_in_each_record_that_has_it)
{
    document = Document({Component("Scale", {Item("Drift", "CTEc")}), Component("Probe", {Item("Tip", "CTEc")})});

    Walk_Group({Record("Scale", {Variable("CTEc", 4.0)}), Record("Probe", {Variable("CTEc", 6.0)})});

    EXPECT_EQ(told.events,
              QStringList({"Scale: starts", "Scale: CTEc = 4", "Scale: item Drift = 4", "Scale: ends for the group",
                           "Probe: starts", "Probe: CTEc = 6", "Probe: item Tip = 6", "Probe: ends for the group"}));
}

TEST_F(ReportWalk, Keeps_variables_set_for_the_next_walk)
{
    document = Document({Component("Beam", {Item("Load", "L")}), Component("Scale", {Item("Drift", "Bend")})});
    document.Add_Expression_Variable("L", 0.0);
    const TRecords variables = {Variable_Record("Bend", "Beam")};
    const TRecords group = {Record("Scale", {Variable("L")})};

    Walk(variables, group, 100.0);
    EXPECT_EQ(told.events.filter("data variable"), QStringList("Beam: data variable Bend = 0"));

    Walk(variables, group, 200.0);
    EXPECT_EQ(told.events.filter("data variable"), QStringList("Beam: data variable Bend = 100"));
}

TEST_F(ReportWalk, Sets_everything_anew_at_each_length)
{
    document = Document({Component("Beam", {Item("Load", "0.008", TNorvexaData::LENGTH_DEPENDENT_LINEAR)}),
                         Component("Scale", {Item("Drift", "Bend+L+Lc")})});
    TReportRecord scale = Record("Scale", {Variable("Lc"), Variable("L")});
    scale.length = 100.0;

    for (const double length : {250.0, 500.0}) {
        Walk({Variable_Record("Bend", "Beam")}, {scale}, length);

        const double bend = 0.008 * length / 1000.0;
        const double count = length == 250.0 ? 2.0 : 4.0;
        EXPECT_EQ(told.events,
                  QStringList({"Beam: starts", "Beam: data variable Bend = " + Number(bend),
                               "Beam: item Load = " + Number(bend), "Beam: ends for a variable", "Scale: starts",
                               "Scale: Lc = " + Number(count), "Scale: L = " + Number(length),
                               "Scale: item Drift = " + Number(bend + length + count), "Scale: ends for the group"}));
    }
}

// Report data variables

TEST_F(ReportWalk, Knows_a_data_variable_as_the_combined_uncertainty_of_its_component)
{
    document =
        Document({Component("Beam", {Item("Load", "3"), Item("Tilt", "8", TNorvexaData::LENGTH_DEPENDENT_LINEAR)})});

    Walk({Variable_Record("Bend", "Beam")}, {});

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend = 5", "Beam: item Load = 3",
                                        "Beam: item Tilt = 4", "Beam: ends for a variable"}));
}

TEST_F(ReportWalk, Evaluates_a_data_variable_for_the_identifier_of_its_record)
{
    TItem load = Item("Load", "3");
    load.replacement_items = {{"SN 1", "7", false}};
    TComponent beam = Component("Beam", {load});
    beam.instances = {{"SN 1", "", "", 0.0, 0.01}};
    document = Document({beam});
    TReportRecord record = Variable_Record("Bend", "Beam");
    record.identifier = "SN 1";

    Walk({record}, {});

    EXPECT_EQ(told.events, QStringList({"Beam[SN 1]: starts", "Beam[SN 1]: data variable Bend = 7",
                                        "Beam[SN 1]: item Load = 7", "Beam[SN 1]: ends for a variable"}));
}

TEST_F(ReportWalk, Knows_a_data_variable_in_the_variable_records_that_follow)
{
    document = Document({Component("Beam", {Item("Load", "3")}), Component("Ball", {Item("Form", "Bend*2")})});

    Walk({Variable_Record("Bend", "Beam"), Variable_Record("Wear", "Ball")}, {});

    EXPECT_EQ(told.events.filter("data variable"),
              QStringList({"Beam: data variable Bend = 3", "Ball: data variable Wear = 6"}));
}

TEST_F(ReportWalk, Goes_on_after_a_data_variable_that_fails)
{
    document = Document({Component("Beam", {}), Component("Ball", {Item("Form", "4")}),
                         Component("Scale", {Item("Drift", "Bend"), Item("Joint", "Wear")})});

    EXPECT_TRUE(Walk({Variable_Record("Bend", "Beam"), Variable_Record("Wear", "Ball")}, {Record("Scale")}));

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend fails", "Beam: ends for a variable",
                                        "Ball: starts", "Ball: data variable Wear = 4", "Ball: item Form = 4",
                                        "Ball: ends for a variable", "Scale: starts", "Scale: item Drift fails",
                                        "Scale: item Joint = 4", "Scale: ends for the group"}));
}

TEST_F(ReportWalk, Has_the_rows_of_a_data_variable_that_fails)
{
    document = Document({Component("Beam", {Item("Load", "nothing")})});
    TComponent beam = document.Component(0);
    beam.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    document.Update_Component(beam);

    Walk({Variable_Record("Bend", "Beam", "Load")}, {});

    EXPECT_EQ(told.events, QStringList({"Beam.Load: starts", "Beam.Load: data variable Bend fails",
                                        "Beam.Load: item Load fails", "Beam.Load: ends for a variable"}));
}

TEST_F(ReportWalk, Keeps_the_former_value_of_a_data_variable_that_fails)
{
    document = Document({Component("Beam", {}), Component("Scale", {Item("Drift", "Bend")})});
    document.Add_Expression_Variable("Bend", 9.0);

    Walk({Variable_Record("Bend", "Beam")}, {Record("Scale")});

    EXPECT_EQ(told.events, QStringList({"Beam: starts", "Beam: data variable Bend fails", "Beam: ends for a variable",
                                        "Scale: starts", "Scale: item Drift = 9", "Scale: ends for the group"}));
}

namespace {

// Puts 0 in the place of every data variable that fails.
class TReplacer : public TRecorder
{
public:
    explicit TReplacer(TNorvexa* document) : d_document(document) {}

    void Data_Variable_Failed(const TReportRecord& /*record*/, const QString& name) override
    {
        d_document->Add_Expression_Variable(name, 0.0);
    }

private:
    TNorvexa* d_document;
};

} // namespace

TEST_F(ReportWalk, Lets_the_listener_replace_a_data_variable_that_fails)
{
    document = Document({Component("Beam", {}), Component("Scale", {Item("Drift", "Bend+1")})});
    document.Add_Expression_Variable("Bend", 9.0);
    TReplacer replacer(&document);

    EXPECT_TRUE(Walk_Report(&document, {Variable_Record("Bend", "Beam")}, {Record("Scale")}, 500.0, &replacer));

    EXPECT_EQ(replacer.events.filter("Drift"), QStringList("Scale: item Drift = 1"));
}

// Several lengths

TEST_F(ReportWalk, Yields_over_several_lengths_what_a_walk_of_its_own_yields_at_each)
{
    document = Document({Component("Scale", {Item("Drift", "Bend*L"), Item("Joint", "L*0+Late")}),
                         Component("Beam", {Item("Load", "3", TNorvexaData::LENGTH_DEPENDENT_LINEAR)})});
    const TRecords variables = {Variable_Record("Bend", "Beam")};
    const TRecords groups = {Record("Scale", {Variable("L")})};
    TReportWalk walk(&document, variables, groups);

    for (const double length : {100.0, 200.0, 300.0}) {
        TRecorder over_several;
        EXPECT_TRUE(walk.Evaluate(length, &over_several));
        EXPECT_TRUE(Walk(variables, groups, length));

        EXPECT_EQ(over_several.events, told.events);
        EXPECT_EQ(over_several.rows, told.rows);
        EXPECT_EQ(over_several.finished_rows, told.finished_rows);
        document.Add_Expression_Variable("Late", 5.0); // an item that failed at the first length has a value now
    }
    EXPECT_EQ(told.events.filter("Bend"), QStringList("Beam: data variable Bend = 0.9"));
}

TEST_F(ReportWalk, Finds_mixed_units_anew_at_each_length)
{
    document = Document({Component("Scale", {Item("Drift", "1")}), Component("Room", {Temperature_Item("Cycle")})});
    const TRecords variables;
    const TRecords groups = {Record("Scale"), Record("Room")};
    TReportWalk walk(&document, variables, groups);

    for (const double length : {100.0, 200.0}) {
        TRecorder over_several;
        EXPECT_FALSE(walk.Evaluate(length, &over_several));
        EXPECT_EQ(over_several.events, QStringList({"Scale: starts", "Scale: item Drift = 1",
                                                    "Scale: ends for the group", "Room: starts", "units are mixed"}));
    }
}
