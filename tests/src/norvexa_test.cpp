#include "src/norvexa.h"

#include "tests/support/budgettext.h"
#include "tests/support/qtprinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <type_traits>

namespace {

using ::testing::HasSubstr;

TNorvexaData::TComponentItem Item(const QString& name, const QString& expression,
                                  const std::vector<TNorvexaData::TReplacementItem>& replacements = {})
{
    TNorvexaData::TComponentItem item;
    item.name = name;
    item.expression = expression;
    item.replacement_items = replacements;
    return item;
}

TNorvexaData::TComponentInstance Instance(const QString& name, double length, double expansion_coefficient)
{
    return {name, "Jan 2 2024", "Jan 2 2025", length, expansion_coefficient};
}

TNorvexaData::TComponent Component(const QString& name, TNorvexaData::TUCMode mode,
                                   const std::vector<TNorvexaData::TComponentItem>& items)
{
    TNorvexaData::TComponent component;
    component.name = name;
    component.mode = mode;
    component.items = items;
    return component;
}

void Add(TNorvexa* budget, const TNorvexaData::TComponent& component)
{
    budget->Add_Component(component.name);
    budget->Update_Component(component);
}

TNorvexaData::TComponent Laser()
{
    TNorvexaData::TComponent laser = Component("Laser", TNorvexaData::UC_MODE_SUM,
                                               {Item("Noise", "0.1", {{"A", "0.5", false}, {"B", "0.6", true}}),
                                                Item("Drift", "0.2*L", {{"A", "0.7", true}})});
    laser.length = 500.0;
    laser.expansion_coefficient = 0.0115;
    laser.instances = {Instance("A", 300.0, 0.008), Instance("B", 400.0, 0.009)};
    return laser;
}

TNorvexaData::TComponent Probe()
{
    return Component("Probe", TNorvexaData::UC_MODE_INDIVIDUAL, {Item("Repeatability", "0.3"), Item("Lobing", "0.4")});
}

/// The sum component "Laser" with two items and two identifiers, the individual component "Probe" with two items.
class TDocument : public ::testing::Test
{
protected:
    TDocument()
    {
        Add(&d_budget, Laser());
        Add(&d_budget, Probe());
    }

    TNorvexa d_budget;
};

using TNorvexaTest = TDocument;

template <typename TRow>
std::string Title(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.title;
}

} // namespace

// Texts of the enumerations

namespace {

/// The two conversions of one enumeration, with its values as plain numbers.
struct TConversion
{
    QString (*text)(int value);
    int (*value)(const QString& text);
};

const TConversion DISTRIBUTION = {
    [](int value) { return TNorvexa().Distribution_Type(static_cast<TNorvexaData::TDistribution>(value)); },
    [](const QString& text) { return static_cast<int>(TNorvexa().Distribution_Type(text)); }};

const TConversion UC_TYPE = {[](int value) { return TNorvexa().UCType(static_cast<TNorvexaData::TUCType>(value)); },
                             [](const QString& text) { return static_cast<int>(TNorvexa().UCType(text)); }};

const TConversion UC_MODE = {[](int value) { return TNorvexa().UCMode(static_cast<TNorvexaData::TUCMode>(value)); },
                             [](const QString& text) { return static_cast<int>(TNorvexa().UCMode(text)); }};

const TConversion EXPRESSION_TYPE = {
    [](int value) { return TNorvexa().Expression_Type(static_cast<TNorvexaData::TExpressionType>(value)); },
    [](const QString& text) { return static_cast<int>(TNorvexa().Expression_Type(text)); }};

struct TTextRow
{
    const char* title;
    const TConversion* conversion;
    int value;
    const char* text;
};

class TEnumerationText : public ::testing::TestWithParam<TTextRow>
{};
class TUnknownText : public ::testing::TestWithParam<TTextRow>
{};
class TUnknownValue : public ::testing::TestWithParam<TTextRow>
{};

} // namespace

TEST_P(TEnumerationText, Is_converted_both_ways)
{
    EXPECT_EQ(GetParam().conversion->text(GetParam().value), QString(GetParam().text));
    EXPECT_EQ(GetParam().conversion->value(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TEnumerationText,
    ::testing::Values(TTextRow{"Normal", &DISTRIBUTION, 0, "Normal"},
                      TTextRow{"Rectangular", &DISTRIBUTION, 1, "Rectangular"},
                      TTextRow{"Triangular", &DISTRIBUTION, 2, "Triangular"}, TTextRow{"U", &DISTRIBUTION, 3, "U"},
                      TTextRow{"Step", &DISTRIBUTION, 4, "Step"}, TTextRow{"Type_A", &UC_TYPE, 0, "Type A"},
                      TTextRow{"Type_B", &UC_TYPE, 1, "Type B"}, TTextRow{"Sum", &UC_MODE, 0, "Sum"},
                      TTextRow{"Individual", &UC_MODE, 1, "Individual"},
                      TTextRow{"Constant_linear", &EXPRESSION_TYPE, 0, "Constant Linear"},
                      TTextRow{"Constant_temperature", &EXPRESSION_TYPE, 1, "Constant Temperature"},
                      TTextRow{"Length_linear", &EXPRESSION_TYPE, 2, "Length Dependent Linear"},
                      TTextRow{"Length_temperature", &EXPRESSION_TYPE, 3, "Length Dependent Temperature"}),
    Title<TTextRow>);

TEST_P(TUnknownText, Counts_as_the_first_value)
{
    EXPECT_EQ(GetParam().conversion->value(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TUnknownText,
    ::testing::Values(TTextRow{"Distribution_empty", &DISTRIBUTION, 0, ""},
                      TTextRow{"Distribution_normal_in_lower_case", &DISTRIBUTION, 0, "normal"},
                      TTextRow{"Distribution_u_in_lower_case", &DISTRIBUTION, 0, "u"},
                      TTextRow{"Distribution_in_upper_case", &DISTRIBUTION, 0, "STEP"},
                      TTextRow{"Distribution_with_a_blank", &DISTRIBUTION, 0, "Rectangular "},
                      TTextRow{"Distribution_foreign", &DISTRIBUTION, 0, "Gaussian"},
                      TTextRow{"Type_empty", &UC_TYPE, 0, ""}, TTextRow{"Type_in_lower_case", &UC_TYPE, 0, "type b"},
                      TTextRow{"Type_letter_alone", &UC_TYPE, 0, "B"}, TTextRow{"Mode_empty", &UC_MODE, 0, ""},
                      TTextRow{"Mode_in_lower_case", &UC_MODE, 0, "individual"},
                      TTextRow{"Mode_foreign", &UC_MODE, 0, "Both"},
                      TTextRow{"Expression_type_empty", &EXPRESSION_TYPE, 0, ""},
                      TTextRow{"Expression_type_in_lower_case", &EXPRESSION_TYPE, 0, "length dependent linear"},
                      TTextRow{"Expression_type_cut", &EXPRESSION_TYPE, 0, "Length Dependent"}),
    Title<TTextRow>);

TEST_P(TUnknownValue, Has_the_text_of_the_first)
{
    EXPECT_EQ(GetParam().conversion->text(GetParam().value), QString(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TUnknownValue,
    ::testing::Values(TTextRow{"Distribution_below", &DISTRIBUTION, -1, "Normal"},
                      TTextRow{"Distribution_above", &DISTRIBUTION, 5, "Normal"},
                      TTextRow{"Distribution_far_below", &DISTRIBUTION, std::numeric_limits<int>::min(), "Normal"},
                      TTextRow{"Distribution_far_above", &DISTRIBUTION, std::numeric_limits<int>::max(), "Normal"},
                      TTextRow{"Type_below", &UC_TYPE, -1, "Type A"}, TTextRow{"Type_above", &UC_TYPE, 2, "Type A"},
                      TTextRow{"Mode_below", &UC_MODE, -1, "Sum"}, TTextRow{"Mode_above", &UC_MODE, 2, "Sum"},
                      TTextRow{"Expression_type_below", &EXPRESSION_TYPE, -1, "Constant Linear"},
                      TTextRow{"Expression_type_above", &EXPRESSION_TYPE, 4, "Constant Linear"}),
    Title<TTextRow>);

TEST(TNorvexa, Booleans_read_Yes_and_No)
{
    EXPECT_EQ(TNorvexa().Boolean_Type(true), QString("Yes"));
    EXPECT_EQ(TNorvexa().Boolean_Type(false), QString("No"));
}

TEST(TNorvexa, Only_exactly_Yes_is_true)
{
    const TNorvexa budget;

    EXPECT_TRUE(budget.Boolean_Type(QString("Yes")));
    for (const char* text : {"No", "", "yes", "YES", "Yes ", " Yes", "Y", "true", "1"}) {
        EXPECT_FALSE(budget.Boolean_Type(QString(text))) << text;
    }
}

TEST(TNorvexa, Lists_of_texts_stand_in_the_order_of_the_values)
{
    EXPECT_EQ(TNorvexa().Distribution_Type_List(), QStringList({"Normal", "Rectangular", "Triangular", "U", "Step"}));
    EXPECT_EQ(TNorvexa().Uncertainty_Type_List(), QStringList({"Type A", "Type B"}));
}

namespace {

struct TDivisorRow
{
    const char* title;
    int distribution;
    double divisor;
};

class TDivisor : public ::testing::TestWithParam<TDivisorRow>
{};

} // namespace

TEST_P(TDivisor, Is_this_literal_to_the_last_digit)
{
    const auto distribution = static_cast<TNorvexaData::TDistribution>(GetParam().distribution);

    EXPECT_EQ(TNorvexa().Distribution_Divisor(distribution), GetParam().divisor);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TDivisor,
    ::testing::Values(TDivisorRow{"Normal", 0, 1.0}, TDivisorRow{"Rectangular", 1, 1.732050807568877},
                      TDivisorRow{"Triangular", 2, 2.449489742783178}, TDivisorRow{"U", 3, 1.414213562373095},
                      TDivisorRow{"Step", 4, 3.46410161513775}, TDivisorRow{"Below", -1, 1.0},
                      TDivisorRow{"Above", 5, 1.0}, TDivisorRow{"Far_below", std::numeric_limits<int>::min(), 1.0},
                      TDivisorRow{"Far_above", std::numeric_limits<int>::max(), 1.0}),
    Title<TDivisorRow>);

// The document

TEST(TNorvexa, A_fresh_document_is_empty_and_without_error)
{
    const TNorvexa budget;

    EXPECT_EQ(budget.Enum_Components(), QStringList());
    EXPECT_EQ(budget.Enum_Reportable_Components(), QStringList());
    EXPECT_EQ(budget.Last_Error(), QString());
}

TEST_F(TNorvexaTest, A_fresh_document_is_taken_over_whole)
{
    const QStringList before = Budget_Text(d_budget);
    TNorvexa taken;
    taken = std::move(d_budget);

    EXPECT_EQ(Budget_Text(taken), before);
    EXPECT_TRUE(std::is_copy_constructible<TNorvexa>::value);
    EXPECT_TRUE(std::is_copy_assignable<TNorvexa>::value);
    EXPECT_TRUE(std::is_nothrow_move_constructible<TNorvexa>::value);
    EXPECT_TRUE(std::is_nothrow_move_assignable<TNorvexa>::value);
}

// Names

TEST_F(TNorvexaTest, Enum_Components_lists_all_names_in_order)
{
    EXPECT_EQ(d_budget.Enum_Components(), QStringList({"Laser", "Probe"}));
}

TEST_F(TNorvexaTest, Enum_Component_Items_lists_all_names_in_order)
{
    EXPECT_EQ(d_budget.Enum_Component_Items("Laser"), QStringList({"Noise", "Drift"}));
    EXPECT_EQ(d_budget.Enum_Component_Items("Probe"), QStringList({"Repeatability", "Lobing"}));
    EXPECT_EQ(d_budget.Enum_Component_Items("laser"), QStringList());
}

TEST_F(TNorvexaTest, Enum_Component_Identifiers_lists_all_names_in_order)
{
    EXPECT_EQ(d_budget.Enum_Component_Identifiers("Laser"), QStringList({"A", "B"}));
    EXPECT_EQ(d_budget.Enum_Component_Identifiers("Probe"), QStringList());
    EXPECT_EQ(d_budget.Enum_Component_Identifiers("Unknown"), QStringList());
}

TEST_F(TNorvexaTest, Reportable_names_are_those_of_sum_components_and_of_individual_items)
{
    Add(&d_budget, Component("Empty", TNorvexaData::UC_MODE_INDIVIDUAL, {}));
    Add(&d_budget, Component("Artefact", TNorvexaData::UC_MODE_SUM, {}));

    EXPECT_EQ(d_budget.Enum_Reportable_Components(),
              QStringList({"Laser", "Probe - Repeatability", "Probe - Lobing", "Artefact"}));
}

TEST(TNorvexa, Percent_signs_in_names_are_no_place_markers)
{
    TNorvexa budget;
    Add(&budget, Component("%2", TNorvexaData::UC_MODE_INDIVIDUAL, {Item("%1", "1"), Item("100 %", "1")}));
    QString component;
    QString item;

    EXPECT_EQ(budget.Enum_Reportable_Components(), QStringList({"%2 - %1", "%2 - 100 %"}));
    EXPECT_TRUE(budget.Convert_From_Reportable("%2 - %1", &component, &item));
    EXPECT_EQ(component, QString("%2"));
    EXPECT_EQ(item, QString("%1"));
}

namespace {

struct TReportableRow
{
    const char* title;
    const char* reportable;
    bool found;
    const char* component;
    const char* item;
};

class TReportableName : public TDocument, public ::testing::WithParamInterface<TReportableRow>
{};

} // namespace

TEST_P(TReportableName, Is_split_or_leaves_the_names_alone)
{
    QString component = "component before";
    QString item = "item before";

    EXPECT_EQ(d_budget.Convert_From_Reportable(GetParam().reportable, &component, &item), GetParam().found);
    EXPECT_EQ(component, QString(GetParam().component));
    EXPECT_EQ(item, QString(GetParam().item));
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TReportableName,
    ::testing::Values(TReportableRow{"Sum_component", "Laser", true, "Laser", ""},
                      TReportableRow{"First_item", "Probe - Repeatability", true, "Probe", "Repeatability"},
                      TReportableRow{"Second_item", "Probe - Lobing", true, "Probe", "Lobing"},
                      TReportableRow{"Individual_component", "Probe", false, "component before", "item before"},
                      TReportableRow{"Item_of_a_sum_component", "Laser - Noise", false, "component before",
                                     "item before"},
                      TReportableRow{"Other_case", "laser", false, "component before", "item before"},
                      TReportableRow{"Other_blanks", "Probe-Lobing", false, "component before", "item before"},
                      TReportableRow{"Other_separator", "Probe + Lobing", false, "component before", "item before"},
                      TReportableRow{"Other_component", "Prope - Lobing", false, "component before", "item before"},
                      TReportableRow{"Other_item", "Probe - Robing", false, "component before", "item before"},
                      TReportableRow{"More_between", "Probe - old Lobing", false, "component before", "item before"},
                      TReportableRow{"Empty", "", false, "component before", "item before"},
                      TReportableRow{"Unknown", "Unknown", false, "component before", "item before"}),
    Title<TReportableRow>);

TEST_F(TNorvexaTest, Every_reportable_name_is_split_back)
{
    QStringList parts;
    for (const QString& reportable : d_budget.Enum_Reportable_Components()) {
        QString component;
        QString item;
        EXPECT_TRUE(d_budget.Convert_From_Reportable(reportable, &component, &item));
        parts << component << item;
    }

    EXPECT_EQ(parts, QStringList({"Laser", "", "Probe", "Repeatability", "Probe", "Lobing"}));
}

TEST_F(TNorvexaTest, A_sum_component_named_like_an_earlier_individual_item_is_never_reached)
{
    Add(&d_budget, Component("Probe - Lobing", TNorvexaData::UC_MODE_SUM, {Item("X", "1")}));
    QString component;
    QString item;

    EXPECT_TRUE(d_budget.Convert_From_Reportable("Probe - Lobing", &component, &item));
    EXPECT_EQ(component, QString("Probe"));
    EXPECT_EQ(item, QString("Lobing"));
}

TEST(TNorvexa, A_sum_component_wins_over_a_later_individual_item_of_that_name)
{
    TNorvexa budget;
    Add(&budget, Component("Probe - Lobing", TNorvexaData::UC_MODE_SUM, {Item("X", "1")}));
    Add(&budget, Probe());
    QString component;
    QString item = "before";

    EXPECT_TRUE(budget.Convert_From_Reportable("Probe - Lobing", &component, &item));
    EXPECT_EQ(component, QString("Probe - Lobing"));
    EXPECT_EQ(item, QString());
}

TEST(TNorvexa, The_first_of_two_individual_components_with_one_reportable_name_wins)
{
    TNorvexa budget;
    Add(&budget, Component("A", TNorvexaData::UC_MODE_INDIVIDUAL, {Item("B - C", "1")}));
    Add(&budget, Component("A - B", TNorvexaData::UC_MODE_INDIVIDUAL, {Item("C", "2")}));
    QString component;
    QString item;

    EXPECT_TRUE(budget.Convert_From_Reportable("A - B - C", &component, &item));
    EXPECT_EQ(component, QString("A"));
    EXPECT_EQ(item, QString("B - C"));
}

// Expressions, lengths and expansion coefficients that apply to an identifier

TEST_F(TNorvexaTest, Component_Item_Default_Expression_is_the_items_own)
{
    QString expression;

    EXPECT_TRUE(d_budget.Component_Item_Default_Expression("Laser", "Drift", &expression));
    EXPECT_EQ(expression, QString("0.2*L"));
}

TEST_F(TNorvexaTest, Component_Item_Default_Expression_leaves_the_output_alone_on_failure)
{
    QString expression = "before";

    EXPECT_FALSE(d_budget.Component_Item_Default_Expression("Unknown", "Drift", &expression));
    EXPECT_FALSE(d_budget.Component_Item_Default_Expression("Laser", "Unknown", &expression));
    EXPECT_EQ(expression, QString("before"));
}

namespace {

struct TExpressionRow
{
    const char* title;
    const char* item;
    const char* identifier;
    bool use_default;
    const char* replacement;
    const char* applicable;
};

class TIdentifierExpression : public TDocument, public ::testing::WithParamInterface<TExpressionRow>
{};

} // namespace

TEST_P(TIdentifierExpression, Is_the_replacement_entry)
{
    bool use_default = !GetParam().use_default;
    QString expression = "before";

    EXPECT_TRUE(
        d_budget.Component_Item_Expression("Laser", GetParam().item, GetParam().identifier, &use_default, &expression));
    EXPECT_EQ(use_default, GetParam().use_default);
    EXPECT_EQ(expression, QString(GetParam().replacement));
}

TEST_P(TIdentifierExpression, Applies_to_the_identifier)
{
    bool valid = false;

    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", GetParam().item, GetParam().identifier, &valid),
              QString(GetParam().applicable));
    EXPECT_TRUE(valid);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TIdentifierExpression,
    ::testing::Values(TExpressionRow{"Replacement_in_use", "Noise", "A", false, "0.5", "0.5"},
                      TExpressionRow{"Default_in_use", "Noise", "B", true, "0.6", "0.1"},
                      TExpressionRow{"Default_in_use_of_another_item", "Drift", "A", true, "0.7", "0.2*L"},
                      TExpressionRow{"Identifier_without_entry", "Drift", "B", false, "0.2*L", "0.2*L"},
                      TExpressionRow{"Unknown_identifier", "Noise", "Z", false, "0.1", "0.1"},
                      TExpressionRow{"Empty_identifier", "Noise", "", false, "0.1", "0.1"},
                      TExpressionRow{"Default_identifier", "Noise", "[Default]", false, "0.1", "0.1"}),
    Title<TExpressionRow>);

TEST_F(TNorvexaTest, Component_Item_Expression_leaves_the_outputs_alone_without_component_or_item)
{
    bool use_default = true;
    QString expression = "before";

    EXPECT_FALSE(d_budget.Component_Item_Expression("Unknown", "Noise", "A", &use_default, &expression));
    EXPECT_FALSE(d_budget.Component_Item_Expression("Laser", "Unknown", "A", &use_default, &expression));
    EXPECT_TRUE(use_default);
    EXPECT_EQ(expression, QString("before"));
}

TEST_F(TNorvexaTest, Component_Item_Expression_is_empty_and_invalid_without_component_or_item)
{
    bool valid = true;
    EXPECT_EQ(d_budget.Component_Item_Expression("Unknown", "Noise", "A", &valid), QString());
    EXPECT_FALSE(valid);

    valid = true;
    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", "Unknown", "A", &valid), QString());
    EXPECT_FALSE(valid);
}

TEST_F(TNorvexaTest, Component_Item_Expression_works_without_a_flag)
{
    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", "Noise", "A", nullptr), QString("0.5"));
    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", "Unknown", "A", nullptr), QString());
}

TEST_F(TNorvexaTest, The_first_replacement_entry_of_an_identifier_counts)
{
    TNorvexaData::TComponent laser = Laser();
    laser.items[0].replacement_items = {{"A", "1", false}, {"A", "2", true}};
    d_budget.Update_Component(laser);

    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", "Noise", "A", nullptr), QString("1"));
}

namespace {

/// Two components of one name, as only a file can hold.
class TRepeatedComponent : public TNorvexa
{
public:
    TRepeatedComponent()
    {
        d_components = {::Component("Laser", UC_MODE_SUM, {::Item("Noise", "1")}),
                        ::Component("Laser", UC_MODE_SUM, {::Item("Noise", "2"), ::Item("Drift", "3")})};
    }
};

/// The component "Laser" with two items "Noise", as only a file can hold.
TNorvexaData::TComponent Laser_With_Repeated_Item()
{
    TNorvexaData::TComponent laser =
        Component("Laser", TNorvexaData::UC_MODE_SUM, {Item("Noise", "1"), Item("Noise", "2")});
    laser.items[0].sensitivity = 2.5;
    return laser;
}

} // namespace

TEST(TNorvexa, The_first_component_of_a_repeated_name_is_meant)
{
    const TRepeatedComponent budget;

    EXPECT_EQ(budget.Enum_Component_Items("Laser"), QStringList("Noise"));
    EXPECT_EQ(budget.Component_Item_Expression("Laser", "Noise", QString(), nullptr), QString("1"));
    EXPECT_EQ(budget.Component_Item_Expression("Laser", "Drift", QString(), nullptr), QString());
}

TEST(TNorvexa, The_first_item_of_a_repeated_name_is_meant)
{
    TNorvexa budget;
    Add(&budget, Laser_With_Repeated_Item());

    EXPECT_EQ(budget.Component_Item_Expression("Laser", "Noise", QString(), nullptr), QString("1"));
}

TEST(TNorvexa, Update_Component_Item_changes_the_expression_alone_of_the_first_item_of_a_repeated_name)
{
    TNorvexa budget;
    TNorvexaData::TComponent laser = Laser_With_Repeated_Item();
    Add(&budget, laser);

    EXPECT_TRUE(budget.Update_Component_Item("Laser", "Noise", QString(), "0.9", false));

    laser.items[0].expression = "0.9";
    EXPECT_EQ(Record_Text(budget.Component(0)), Record_Text(laser));
}

namespace {

struct TInstanceRow
{
    const char* title;
    const char* identifier;
    double length;
    double expansion_coefficient;
};

class TIdentifierValues : public TDocument, public ::testing::WithParamInterface<TInstanceRow>
{};

} // namespace

TEST_P(TIdentifierValues, Are_those_of_the_identifier_or_else_of_the_component)
{
    EXPECT_EQ(d_budget.Component_Length("Laser", GetParam().identifier), GetParam().length);
    EXPECT_EQ(d_budget.Component_Expansion_Coefficient("Laser", GetParam().identifier),
              GetParam().expansion_coefficient);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TIdentifierValues,
    ::testing::Values(TInstanceRow{"First", "A", 300.0, 0.008}, TInstanceRow{"Second", "B", 400.0, 0.009},
                      TInstanceRow{"Empty", "", 500.0, 0.0115}, TInstanceRow{"Default", "[Default]", 500.0, 0.0115},
                      TInstanceRow{"Unknown", "Z", 500.0, 0.0115}, TInstanceRow{"Other_case", "a", 500.0, 0.0115}),
    Title<TInstanceRow>);

TEST_F(TNorvexaTest, The_first_identifier_of_a_name_counts)
{
    d_budget.Rename_Component_Identifier("Laser", "A", "B");

    EXPECT_EQ(d_budget.Component_Length("Laser", "B"), 300.0);
    EXPECT_EQ(d_budget.Component_Expansion_Coefficient("Laser", "B"), 0.008);
}

namespace {

struct TReservedRow
{
    const char* title;
    const char* identifier;
};

class TReservedIdentifier : public TDocument, public ::testing::WithParamInterface<TReservedRow>
{
protected:
    TReservedIdentifier() { d_budget.Rename_Component_Identifier("Laser", "A", GetParam().identifier); }
};

} // namespace

TEST_P(TReservedIdentifier, Means_the_component_even_beside_an_entry_of_that_name)
{
    EXPECT_EQ(d_budget.Component_Length("Laser", GetParam().identifier), 500.0);
    EXPECT_EQ(d_budget.Component_Expansion_Coefficient("Laser", GetParam().identifier), 0.0115);
}

TEST_P(TReservedIdentifier, Means_the_items_own_expression_even_beside_an_entry_of_that_name)
{
    bool use_default = true;
    QString replacement;

    EXPECT_TRUE(
        d_budget.Component_Item_Expression("Laser", "Noise", GetParam().identifier, &use_default, &replacement));
    EXPECT_FALSE(use_default);
    EXPECT_EQ(replacement, QString("0.1"));
    EXPECT_EQ(d_budget.Component_Item_Expression("Laser", "Noise", GetParam().identifier, nullptr), QString("0.1"));
}

TEST_P(TReservedIdentifier, Updates_the_items_own_expression_even_beside_an_entry_of_that_name)
{
    TNorvexaData::TComponentItem expected = d_budget.Component_Item("Laser", "Noise");
    expected.expression = "0.9";

    EXPECT_TRUE(d_budget.Update_Component_Item("Laser", "Noise", GetParam().identifier, "0.9", true));
    EXPECT_EQ(Record_Text(d_budget.Component_Item("Laser", "Noise")), Record_Text(expected));
}

INSTANTIATE_TEST_SUITE_P(TNorvexa, TReservedIdentifier,
                         ::testing::Values(TReservedRow{"Empty", ""}, TReservedRow{"Default", "[Default]"}),
                         Title<TReservedRow>);

TEST_F(TNorvexaTest, Update_Component_Item_changes_the_replacement_entry)
{
    TNorvexa expected;
    TNorvexaData::TComponent laser = Laser();
    laser.items[0].replacement_items[0] = {"A", "0.9", true};
    Add(&expected, laser);
    Add(&expected, Probe());

    EXPECT_TRUE(d_budget.Update_Component_Item("Laser", "Noise", "A", "0.9", true));
    EXPECT_EQ(Budget_Text(d_budget), Budget_Text(expected));
}

TEST_F(TNorvexaTest, Update_Component_Item_changes_the_first_replacement_entry_of_an_identifier)
{
    TNorvexaData::TComponent laser = Laser();
    laser.items[0].replacement_items = {{"A", "1", true}, {"A", "2", true}};
    d_budget.Update_Component(laser);

    EXPECT_TRUE(d_budget.Update_Component_Item("Laser", "Noise", "A", "0.9", false));
    laser.items[0].replacement_items[0] = {"A", "0.9", false};
    EXPECT_EQ(Record_Text(d_budget.Component(0)), Record_Text(laser));
}

namespace {

struct TDefaultExpressionRow
{
    const char* title;
    const char* identifier;
    bool use_default;
};

class TDefaultExpression : public TDocument, public ::testing::WithParamInterface<TDefaultExpressionRow>
{};

} // namespace

TEST_P(TDefaultExpression, Is_changed_for_an_identifier_without_replacement_entry)
{
    TNorvexa expected;
    TNorvexaData::TComponent laser = Laser();
    laser.items[1].expression = "0.9";
    Add(&expected, laser);
    Add(&expected, Probe());

    EXPECT_TRUE(d_budget.Update_Component_Item("Laser", "Drift", GetParam().identifier, "0.9", GetParam().use_default));
    EXPECT_EQ(Budget_Text(d_budget), Budget_Text(expected));
}

INSTANTIATE_TEST_SUITE_P(TNorvexa, TDefaultExpression,
                         ::testing::Values(TDefaultExpressionRow{"Empty", "", false},
                                           TDefaultExpressionRow{"Empty_use_default", "", true},
                                           TDefaultExpressionRow{"Default", "[Default]", false},
                                           TDefaultExpressionRow{"Default_use_default", "[Default]", true},
                                           TDefaultExpressionRow{"Without_entry", "B", false},
                                           TDefaultExpressionRow{"Without_entry_use_default", "B", true},
                                           TDefaultExpressionRow{"Unknown", "Z", false}),
                         Title<TDefaultExpressionRow>);

TEST_F(TNorvexaTest, Update_Component_Item_refuses_an_unknown_component_or_item)
{
    const QStringList before = Budget_Text(d_budget);

    EXPECT_FALSE(d_budget.Update_Component_Item("Unknown", "Noise", "A", "0.9", true));
    EXPECT_FALSE(d_budget.Update_Component_Item("Laser", "Unknown", "A", "0.9", true));
    EXPECT_FALSE(d_budget.Update_Component_Item("Laser", "Repeatability", "A", "0.9", true));
    EXPECT_EQ(Budget_Text(d_budget), before);
}

TEST_F(TNorvexaTest, The_operations_of_the_data_model_are_operations_of_the_document)
{
    TNorvexaData::TComponentItem item = d_budget.Component_Item("Laser", "Noise");
    item.sensitivity = 2.5;
    d_budget.Update_Component_Item(0, item);

    EXPECT_EQ(Record_Text(d_budget.Component_Item(0, 0)), Record_Text(item));
}

// Null pointers and unknown components

namespace {

struct TAbortRow
{
    const char* title;
    const char* line;
    std::function<void(const TNorvexa&)> act;
};

class TProgrammingErrorDeathTest : public TDocument, public ::testing::WithParamInterface<TAbortRow>
{};

} // namespace

TEST_P(TProgrammingErrorDeathTest, Aborts_with_source_function_and_condition)
{
    EXPECT_DEATH(GetParam().act(d_budget), HasSubstr(std::string(GetParam().line) + "\n"));
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexa, TProgrammingErrorDeathTest,
    ::testing::Values(
        TAbortRow{"Default_expression", "../src/norvexa.cpp: Component_Item_Default_Expression: default_expression",
                  [](const TNorvexa& b) { b.Component_Item_Default_Expression("Laser", "Noise", nullptr); }},
        TAbortRow{"Use_default", "../src/norvexa.cpp: Component_Item_Expression: use_default",
                  [](const TNorvexa& b) {
                      QString text;
                      b.Component_Item_Expression("Laser", "Noise", "A", nullptr, &text);
                  }},
        TAbortRow{"Replacement_expression", "../src/norvexa.cpp: Component_Item_Expression: replacement_expression",
                  [](const TNorvexa& b) {
                      bool use_default = false;
                      b.Component_Item_Expression("Laser", "Noise", "A", &use_default, nullptr);
                  }},
        TAbortRow{"Component_name", "../src/norvexa.cpp: Convert_From_Reportable: component_name",
                  [](const TNorvexa& b) {
                      QString text;
                      b.Convert_From_Reportable("Laser", nullptr, &text);
                  }},
        TAbortRow{"Component_item_name", "../src/norvexa.cpp: Convert_From_Reportable: component_item_name",
                  [](const TNorvexa& b) {
                      QString text;
                      b.Convert_From_Reportable("Laser", &text, nullptr);
                  }},
        TAbortRow{"Length_of_an_unknown_component",
                  "../share/norvexadata.cpp: Component: static_cast<unsigned int>(index) < d_components.size()",
                  [](const TNorvexa& b) { b.Component_Length("Unknown", "A"); }},
        TAbortRow{"Coefficient_of_an_unknown_component",
                  "../share/norvexadata.cpp: Component: static_cast<unsigned int>(index) < d_components.size()",
                  [](const TNorvexa& b) { b.Component_Expansion_Coefficient("Unknown", ""); }}),
    Title<TAbortRow>);
