#include "share/norvexadata.h"

#include "tests/support/budgettext.h"
#include "tests/support/qtprinters.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

QString Today()
{
    return QDate::currentDate().toString(Qt::TextDate);
}

TNorvexaData::TReplacementItem Replacement(const QString& identifier, const QString& expression, bool use_default)
{
    return {identifier, expression, use_default};
}

TNorvexaData::TComponentInstance Instance(const QString& name, double length, double expansion_coefficient)
{
    return {name, "Jan 2 2024", "Jan 2 2025", length, expansion_coefficient};
}

TNorvexaData::TComponentItem Item(const QString& name, const QString& expression)
{
    TNorvexaData::TComponentItem item;
    item.name = name;
    item.expression = expression;
    item.distribution = TNorvexaData::DISTRIBUTION_U;
    item.expression_type = TNorvexaData::LENGTH_DEPENDENT_LINEAR;
    item.uc_type = TNorvexaData::UC_TYPE_A;
    item.sensitivity = 0.5;
    item.replacement_items = {Replacement("A", "1.5", false), Replacement("B", "2.5", true)};
    return item;
}

TNorvexaData::TComponent Laser()
{
    TNorvexaData::TComponent laser;
    laser.name = "Laser";
    laser.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    laser.length = 500.0;
    laser.expansion_coefficient = 0.0115;
    laser.export_equipment = true;
    laser.limit_uncertainty_length = true;
    laser.items = {Item("Noise", "0.1"), Item("Drift", "0.2*L")};
    laser.instances = {Instance("A", 300.0, 0.008), Instance("B", 400.0, 0.009)};
    return laser;
}

/// Two components, "Laser" with two items and two identifiers, and "Probe" with none.
class TBudget : public ::testing::Test
{
protected:
    TBudget()
    {
        d_budget.Add_Component("Laser");
        d_budget.Add_Component("Probe");
        d_budget.Update_Component(Laser());
    }

    QStringList Text() const { return Budget_Text(d_budget); }

    /// What the budget is expected to be once "Laser" looks like `laser`.
    static QStringList Text_With(const TNorvexaData::TComponent& laser)
    {
        TNorvexaData::TComponent probe;
        probe.name = "Probe";
        return Record_Text(laser) + Record_Text(probe);
    }

    TNorvexaData d_budget;
};

using TNorvexaDataTest = TBudget;

} // namespace

// Records

TEST(TNorvexaData, A_fresh_budget_is_empty)
{
    const TNorvexaData budget;

    EXPECT_EQ(budget.Component_Count(), 0);
    EXPECT_EQ(Budget_Text(budget), QStringList());
}

TEST(TNorvexaData, Values_of_the_enumerations_are_fixed)
{
    EXPECT_EQ(TNorvexaData::DISTRIBUTION_NORMAL, 0);
    EXPECT_EQ(TNorvexaData::DISTRIBUTION_RECTANGULAR, 1);
    EXPECT_EQ(TNorvexaData::DISTRIBUTION_TRIANGULAR, 2);
    EXPECT_EQ(TNorvexaData::DISTRIBUTION_U, 3);
    EXPECT_EQ(TNorvexaData::DISTRIBUTION_STEP, 4);
    EXPECT_EQ(TNorvexaData::UC_TYPE_A, 0);
    EXPECT_EQ(TNorvexaData::UC_TYPE_B, 1);
    EXPECT_EQ(TNorvexaData::UC_MODE_SUM, 0);
    EXPECT_EQ(TNorvexaData::UC_MODE_INDIVIDUAL, 1);
    EXPECT_EQ(TNorvexaData::CONSTANT_LINEAR, 0);
    EXPECT_EQ(TNorvexaData::CONSTANT_TEMPERATURE, 1);
    EXPECT_EQ(TNorvexaData::LENGTH_DEPENDENT_LINEAR, 2);
    EXPECT_EQ(TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE, 3);
}

TEST(TNorvexaData, The_enumerations_are_32_bits_wide)
{
    EXPECT_EQ(sizeof(TNorvexaData::TDistribution), 4U);
    EXPECT_EQ(sizeof(TNorvexaData::TUCType), 4U);
    EXPECT_EQ(sizeof(TNorvexaData::TUCMode), 4U);
    EXPECT_EQ(sizeof(TNorvexaData::TExpressionType), 4U);
}

TEST(TVariable, Fields_stand_in_order_and_have_their_defaults)
{
    const auto [name, description, index, value] = TVariable();

    EXPECT_EQ(name, QString());
    EXPECT_EQ(description, QString());
    EXPECT_EQ(index, -1);
    EXPECT_EQ(value, 0.0);
}

TEST(TGroup, Fields_stand_in_order_and_are_empty)
{
    const auto [name, items] = TGroup();

    EXPECT_EQ(name, QString());
    EXPECT_EQ(items, QStringList());
}

TEST(TInputData, Fields_stand_in_order_and_have_the_values_of_the_variables_page_at_start)
{
    const auto [machine_expansion_coefficient, machine_scale, temperature_minimum, temperature_maximum,
                temperature_gradient, report_increment, report_end] = TInputData();

    EXPECT_EQ(machine_expansion_coefficient, 11.5);
    EXPECT_EQ(machine_scale, 0.001);
    EXPECT_EQ(temperature_minimum, 20.0);
    EXPECT_EQ(temperature_maximum, 20.0);
    EXPECT_EQ(temperature_gradient, 0.0);
    EXPECT_EQ(report_increment, 50.0);
    EXPECT_EQ(report_end, 1000.0);
}

TEST(TNorvexaData, Fields_of_a_component_stand_in_order_and_have_their_defaults)
{
    const auto [name, mode, length, expansion_coefficient, export_equipment, limit_uncertainty_length, items,
                instances] = TNorvexaData::TComponent();

    EXPECT_EQ(name, QString());
    EXPECT_EQ(mode, TNorvexaData::UC_MODE_SUM);
    EXPECT_EQ(length, 0.0);
    EXPECT_EQ(expansion_coefficient, 0.01);
    EXPECT_FALSE(export_equipment);
    EXPECT_FALSE(limit_uncertainty_length);
    EXPECT_TRUE(items.empty());
    EXPECT_TRUE(instances.empty());
}

TEST(TNorvexaData, Fields_of_an_item_stand_in_order_and_have_their_defaults)
{
    const auto [name, expression, distribution, expression_type, uc_type, sensitivity, replacement_items] =
        TNorvexaData::TComponentItem();

    EXPECT_EQ(name, QString());
    EXPECT_EQ(expression, QString("0.0000"));
    EXPECT_EQ(distribution, TNorvexaData::DISTRIBUTION_NORMAL);
    EXPECT_EQ(expression_type, TNorvexaData::CONSTANT_LINEAR);
    EXPECT_EQ(uc_type, TNorvexaData::UC_TYPE_B);
    EXPECT_EQ(sensitivity, 1.0);
    EXPECT_TRUE(replacement_items.empty());
}

TEST(TNorvexaData, Fields_of_an_identifier_stand_in_order_and_have_their_defaults)
{
    const auto [name, calibration_date, calibration_due_date, length, expansion_coefficient] =
        TNorvexaData::TComponentInstance();

    EXPECT_EQ(name, QString());
    EXPECT_EQ(calibration_date, QString());
    EXPECT_EQ(calibration_due_date, QString());
    EXPECT_EQ(length, 0.0);
    EXPECT_EQ(expansion_coefficient, 0.01);
}

TEST(TNorvexaData, Fields_of_a_replacement_item_stand_in_order_and_have_their_defaults)
{
    const auto [identifier, expression, use_default_expression] = TNorvexaData::TReplacementItem();

    EXPECT_EQ(identifier, QString());
    EXPECT_EQ(expression, QString());
    EXPECT_TRUE(use_default_expression);
}

TEST(TNorvexaData, Fields_of_one_type_stand_in_order)
{
    const TVariable variable = {"V", "Probe", 3, 0.5};
    const TInputData input = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    const TNorvexaData::TComponent component = {"Laser", TNorvexaData::UC_MODE_SUM, 1.0, 2.0, true, false, {}, {}};
    const TNorvexaData::TComponentInstance instance = {"A", "calibrated", "due", 1.0, 2.0};
    const TNorvexaData::TReplacementItem replacement = {"A", "0.1", false};

    EXPECT_EQ(QStringList({variable.name, variable.description}), QStringList({"V", "Probe"}));
    EXPECT_THAT(std::vector<double>({input.machine_expansion_coefficient, input.machine_scale,
                                     input.temperature_minimum, input.temperature_maximum, input.temperature_gradient,
                                     input.report_increment, input.report_end}),
                ElementsAre(1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0));
    EXPECT_EQ(Record_Text(component), QStringList("component <Laser> mode=0 length=1 expansion=2 equipment=1 limit=0"));
    EXPECT_EQ(Record_Text(instance), QString("  identifier <A> <calibrated> <due> length=1 expansion=2"));
    EXPECT_EQ(Record_Text(replacement), QString("    replacement <A> <0.1> default=0"));
}

TEST(TNorvexaData, The_default_identifier_has_a_text_of_its_own)
{
    EXPECT_EQ(TNorvexaData::Default_Identifier(), QString("[Default]"));
}

TEST_F(TNorvexaDataTest, A_copy_is_independent)
{
    TNorvexaData copy = d_budget;
    copy.Rename_Component("Laser", "Copy");
    copy.Component_Add_Identifier("Copy", "C");

    EXPECT_EQ(Text(), Text_With(Laser()));
    EXPECT_EQ(copy.Component_Name(0), QString("Copy"));
}

TEST_F(TNorvexaDataTest, A_move_takes_the_budget_over)
{
    const QStringList before = Text();
    const TNorvexaData taken = std::move(d_budget);

    EXPECT_EQ(Budget_Text(taken), before);
    EXPECT_TRUE(std::is_nothrow_move_constructible<TNorvexaData>::value);
    EXPECT_TRUE(std::is_nothrow_move_assignable<TNorvexaData>::value);
}

// Components

TEST(TNorvexaData, A_new_component_has_length_0_and_expansion_coefficient_0_01)
{
    TNorvexaData budget;

    EXPECT_TRUE(budget.Add_Component("Laser"));
    EXPECT_EQ(Budget_Text(budget), QStringList("component <Laser> mode=0 length=0 expansion=0.01 equipment=0 limit=0"));
    EXPECT_EQ(budget.Component(0).length, 0.0);
    EXPECT_EQ(budget.Component(0).expansion_coefficient, 0.01);
}

TEST_F(TNorvexaDataTest, New_components_are_appended)
{
    EXPECT_TRUE(d_budget.Add_Component("Artefact"));

    EXPECT_EQ(d_budget.Component_Count(), 3);
    EXPECT_EQ(d_budget.Component_Name(0), QString("Laser"));
    EXPECT_EQ(d_budget.Component_Name(1), QString("Probe"));
    EXPECT_EQ(d_budget.Component_Name(2), QString("Artefact"));
}

TEST_F(TNorvexaDataTest, Adding_a_component_refuses_a_name_in_use)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Add_Component("Probe"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Component_names_that_differ_in_case_or_blanks_are_different_names)
{
    EXPECT_TRUE(d_budget.Add_Component("laser"));
    EXPECT_TRUE(d_budget.Add_Component("Laser "));

    EXPECT_EQ(d_budget.Component_Index("Laser"), 0);
    EXPECT_EQ(d_budget.Component_Index("laser"), 2);
    EXPECT_EQ(d_budget.Component_Index("Laser "), 3);
}

TEST_F(TNorvexaDataTest, Component_returns_a_copy_of_the_whole_record)
{
    TNorvexaData::TComponent copy = d_budget.Component(0);
    EXPECT_EQ(Record_Text(copy), Record_Text(Laser()));

    copy.name = "Changed";
    EXPECT_EQ(Text(), Text_With(Laser()));
}

TEST_F(TNorvexaDataTest, Component_Index_of_an_unknown_name_is_minus_1)
{
    EXPECT_EQ(d_budget.Component_Index("Probe"), 1);
    EXPECT_EQ(d_budget.Component_Index("Unknown"), -1);
    EXPECT_EQ(d_budget.Component_Index(""), -1);
}

TEST_F(TNorvexaDataTest, Remove_Component_keeps_the_others)
{
    EXPECT_TRUE(d_budget.Remove_Component("Laser"));
    EXPECT_EQ(Text(), QStringList("component <Probe> mode=0 length=0 expansion=0.01 equipment=0 limit=0"));
}

TEST_F(TNorvexaDataTest, Remove_Component_of_an_unknown_name_changes_nothing)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Remove_Component("probe"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Remove_Components_keeps_the_others_and_skips_unknown_names)
{
    d_budget.Remove_Components({"Unknown", "Laser"});

    EXPECT_EQ(Text(), QStringList("component <Probe> mode=0 length=0 expansion=0.01 equipment=0 limit=0"));
}

TEST_F(TNorvexaDataTest, Rename_Component_changes_the_name_alone)
{
    TNorvexaData::TComponent renamed = Laser();
    renamed.name = "Interferometer";

    EXPECT_TRUE(d_budget.Rename_Component("Laser", "Interferometer"));
    EXPECT_EQ(Text(), Text_With(renamed));
}

TEST_F(TNorvexaDataTest, Rename_Component_accepts_a_name_that_differs_in_case)
{
    TNorvexaData::TComponent renamed = Laser();
    renamed.name = "laser";

    EXPECT_TRUE(d_budget.Rename_Component("Laser", "laser"));
    EXPECT_EQ(Text(), Text_With(renamed));
}

TEST_F(TNorvexaDataTest, Rename_Component_refuses_a_name_in_use)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Rename_Component("Laser", "Probe"));
    EXPECT_FALSE(d_budget.Rename_Component("Unknown", "Probe"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Rename_Component_refuses_its_own_name)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Rename_Component("Laser", "Laser"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Rename_Component_refuses_an_unknown_name)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Rename_Component("Unknown", "New"));
    EXPECT_EQ(Text(), before);
}

TEST(TNorvexaData, Rename_Component_refuses_in_an_empty_budget)
{
    TNorvexaData budget;

    EXPECT_FALSE(budget.Rename_Component("Laser", "New"));
    EXPECT_EQ(Budget_Text(budget), QStringList());
}

TEST_F(TNorvexaDataTest, Update_Component_replaces_all_fields)
{
    TNorvexaData::TComponent changed = Laser();
    changed.mode = TNorvexaData::UC_MODE_SUM;
    changed.length = -1.5;
    changed.expansion_coefficient = 0.0085;
    changed.export_equipment = false;
    changed.limit_uncertainty_length = false;
    changed.items = {Item("Other", "9")};
    changed.instances = {Instance("C", 1.0, 0.5)};
    d_budget.Update_Component(changed);

    EXPECT_EQ(Text(), Text_With(changed));
}

TEST_F(TNorvexaDataTest, Update_Component_of_an_unknown_name_changes_nothing)
{
    const QStringList before = Text();
    TNorvexaData::TComponent unknown = Laser();
    unknown.name = "Unknown";
    d_budget.Update_Component(unknown);

    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Clear_Components_empties_the_budget)
{
    d_budget.Clear_Components();

    EXPECT_EQ(d_budget.Component_Count(), 0);
    EXPECT_EQ(d_budget.Component_Index("Laser"), -1);
}

namespace {

/// A budget with two components of one name, as only a file can hold.
class TRepeatedNames : public TNorvexaData
{
public:
    TRepeatedNames()
    {
        d_components.resize(3);
        d_components[0].name = "Probe";
        d_components[1] = Laser();
        d_components[2].name = "Laser";
    }
};

} // namespace

TEST(TNorvexaData, The_first_component_of_a_repeated_name_is_found)
{
    EXPECT_EQ(TRepeatedNames().Component_Index("Laser"), 1);
}

TEST(TNorvexaData, Remove_Component_erases_the_first_of_a_repeated_name)
{
    TRepeatedNames budget;

    EXPECT_TRUE(budget.Remove_Component("Laser"));
    EXPECT_EQ(Budget_Text(budget),
              QStringList({"component <Probe> mode=0 length=0 expansion=0.01 equipment=0 limit=0",
                           "component <Laser> mode=0 length=0 expansion=0.01 equipment=0 limit=0"}));
}

TEST(TNorvexaData, Rename_Component_renames_the_first_of_a_repeated_name)
{
    TRepeatedNames budget;

    EXPECT_TRUE(budget.Rename_Component("Laser", "Interferometer"));
    EXPECT_EQ(budget.Component_Name(0), QString("Probe"));
    EXPECT_EQ(budget.Component_Name(1), QString("Interferometer"));
    EXPECT_EQ(budget.Component_Name(2), QString("Laser"));
}

TEST(TNorvexaData, Update_Component_replaces_the_first_of_a_repeated_name)
{
    TRepeatedNames budget;
    TNorvexaData::TComponent changed;
    changed.name = "Laser";
    changed.length = 2.0;
    budget.Update_Component(changed);

    EXPECT_EQ(Budget_Text(budget),
              QStringList({"component <Probe> mode=0 length=0 expansion=0.01 equipment=0 limit=0",
                           "component <Laser> mode=0 length=2 expansion=0.01 equipment=0 limit=0",
                           "component <Laser> mode=0 length=0 expansion=0.01 equipment=0 limit=0"}));
}

// Component items

TEST_F(TNorvexaDataTest, Items_are_found_by_position_and_by_name)
{
    EXPECT_EQ(d_budget.Component_Item_Count(0), 2);
    EXPECT_EQ(d_budget.Component_Item_Count(1), 0);
    EXPECT_EQ(d_budget.Component_Item_Name(0, 0), QString("Noise"));
    EXPECT_EQ(d_budget.Component_Item_Name(0, 1), QString("Drift"));
    EXPECT_EQ(d_budget.Component_Item_Index(0, "Drift"), 1);
    EXPECT_EQ(d_budget.Component_Item_Index(0, "drift"), -1);
    EXPECT_EQ(d_budget.Component_Item_Index(1, "Drift"), -1);
    EXPECT_EQ(Record_Text(d_budget.Component_Item(0, 1)), Record_Text(Item("Drift", "0.2*L")));
    EXPECT_EQ(Record_Text(d_budget.Component_Item("Laser", "Noise")), Record_Text(Item("Noise", "0.1")));
}

TEST_F(TNorvexaDataTest, Component_Item_returns_a_copy)
{
    TNorvexaData::TComponentItem copy = d_budget.Component_Item(0, 0);
    copy.expression = "changed";

    EXPECT_EQ(Text(), Text_With(Laser()));
}

TEST_F(TNorvexaDataTest, A_new_item_gets_a_replacement_item_for_each_identifier)
{
    TNorvexaData::TComponentItem added;
    added.name = "Scale";
    added.replacement_items = {Replacement("A", "0.0000", true), Replacement("B", "0.0000", true)};
    TNorvexaData::TComponent laser = Laser();
    laser.items.push_back(added);

    EXPECT_TRUE(d_budget.Add_Component_Item("Laser", "Scale"));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, A_new_item_of_a_component_without_identifiers_has_default_values)
{
    EXPECT_TRUE(d_budget.Add_Component_Item("Probe", "Repeatability"));
    EXPECT_EQ(Record_Text(d_budget.Component_Item(1, 0)),
              QStringList("  item <Repeatability> <0.0000> distribution=0 expression=0 type=1 sensitivity=1"));
}

TEST_F(TNorvexaDataTest, Adding_an_item_refuses_an_unknown_component_and_a_name_in_use)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Add_Component_Item("Unknown", "Scale"));
    EXPECT_FALSE(d_budget.Add_Component_Item("Laser", "Drift"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Item_names_that_differ_in_case_and_those_of_other_components_are_free)
{
    EXPECT_TRUE(d_budget.Add_Component_Item("Laser", "drift"));
    EXPECT_TRUE(d_budget.Add_Component_Item("Probe", "Drift"));

    EXPECT_EQ(d_budget.Component_Item_Name(0, 2), QString("drift"));
    EXPECT_EQ(d_budget.Component_Item_Name(1, 0), QString("Drift"));
}

TEST_F(TNorvexaDataTest, Rename_Component_Item_changes_the_name_alone)
{
    TNorvexaData::TComponent laser = Laser();
    laser.items[1].name = "Stability";

    EXPECT_TRUE(d_budget.Rename_Component_Item("Laser", "Drift", "Stability"));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Rename_Component_Item_accepts_other_case_and_a_name_of_another_component)
{
    d_budget.Add_Component_Item("Probe", "Lobing");
    EXPECT_TRUE(d_budget.Rename_Component_Item("Laser", "Noise", "noise"));
    EXPECT_TRUE(d_budget.Rename_Component_Item("Laser", "Drift", "Lobing"));

    EXPECT_EQ(d_budget.Component_Item_Name(0, 0), QString("noise"));
    EXPECT_EQ(d_budget.Component_Item_Name(0, 1), QString("Lobing"));
}

TEST_F(TNorvexaDataTest, Rename_Component_Item_leaves_replacement_items_of_that_name_alone)
{
    EXPECT_TRUE(d_budget.Rename_Component_Item("Laser", "Noise", "A"));
    EXPECT_TRUE(d_budget.Rename_Component_Item("Laser", "A", "Z"));

    TNorvexaData::TComponent laser = Laser();
    laser.items[0].name = "Z";
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Remove_Component_Items_refuses_an_unknown_component)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Remove_Component_Items("Unknown", {"Noise"}));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Update_Component_Item_replaces_all_fields)
{
    TNorvexaData::TComponentItem changed = Item("Drift", "3*L");
    changed.distribution = TNorvexaData::DISTRIBUTION_STEP;
    changed.expression_type = TNorvexaData::CONSTANT_TEMPERATURE;
    changed.uc_type = TNorvexaData::UC_TYPE_B;
    changed.sensitivity = -2.0;
    changed.replacement_items = {Replacement("B", "x", false)};
    TNorvexaData::TComponent laser = Laser();
    laser.items[1] = changed;
    d_budget.Update_Component_Item(0, changed);

    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Update_Component_Item_of_an_unknown_name_changes_nothing)
{
    const QStringList before = Text();
    d_budget.Update_Component_Item(0, Item("Unknown", "1"));
    d_budget.Update_Component_Item(1, Item("Noise", "1"));

    EXPECT_EQ(Text(), before);
}

namespace {

struct TRenameItemRow
{
    const char* title;
    const char* component;
    const char* old_name;
    const char* new_name;
};

class TRefusedItemRename : public TBudget, public ::testing::WithParamInterface<TRenameItemRow>
{};

} // namespace

TEST_P(TRefusedItemRename, Changes_nothing)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Rename_Component_Item(GetParam().component, GetParam().old_name, GetParam().new_name));
    EXPECT_EQ(Text(), before);
}

INSTANTIATE_TEST_SUITE_P(TNorvexaData, TRefusedItemRename,
                         ::testing::Values(TRenameItemRow{"Unknown_component", "Unknown", "Noise", "New"},
                                           TRenameItemRow{"Component_without_items", "Probe", "Noise", "New"},
                                           TRenameItemRow{"Name_in_use", "Laser", "Noise", "Drift"},
                                           TRenameItemRow{"Own_name", "Laser", "Noise", "Noise"},
                                           TRenameItemRow{"Unknown_item", "Laser", "noise", "New"}),
                         [](const auto& row) { return std::string(row.param.title); });

namespace {

struct TRemoveRow
{
    const char* title;
    QStringList present;
    QStringList removed;
    QStringList kept;
};

class TRemovedNames : public ::testing::TestWithParam<TRemoveRow>
{};

QStringList Item_Names(const TNorvexaData& budget)
{
    QStringList names;
    for (int index = 0; index < budget.Component_Item_Count(0); ++index) {
        names.append(budget.Component_Item_Name(0, index));
    }
    return names;
}

QStringList Identifier_Names(const TNorvexaData& budget)
{
    QStringList names;
    for (int index = 0; index < budget.Component_Identifier_Count(0); ++index) {
        names.append(budget.Component_Identifier_Name(0, index));
    }
    return names;
}

/// One component whose items and identifiers carry these names, repeated ones included.
TNorvexaData Budget_With(const QStringList& names)
{
    TNorvexaData::TComponent component;
    component.name = "Laser";
    for (const QString& name : names) {
        component.items.push_back(Item(name, "1"));
        component.instances.push_back(Instance(name, 1.0, 0.01));
    }

    TNorvexaData budget;
    budget.Add_Component("Laser");
    budget.Update_Component(component);
    return budget;
}

} // namespace

TEST_P(TRemovedNames, Leave_the_other_items_in_order)
{
    TNorvexaData budget = Budget_With(GetParam().present);

    EXPECT_TRUE(budget.Remove_Component_Items("Laser", GetParam().removed));
    EXPECT_EQ(Item_Names(budget), GetParam().kept);
    EXPECT_EQ(Identifier_Names(budget), GetParam().present);
}

TEST_P(TRemovedNames, Leave_the_other_identifiers_in_order)
{
    TNorvexaData budget = Budget_With(GetParam().present);

    EXPECT_TRUE(budget.Component_Remove_Identifier("Laser", GetParam().removed));
    EXPECT_EQ(Identifier_Names(budget), GetParam().kept);
    EXPECT_EQ(Item_Names(budget), GetParam().present);
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaData, TRemovedNames,
    ::testing::Values(TRemoveRow{"One", {"P", "Q", "R"}, {"Q"}, {"P", "R"}},
                      TRemoveRow{"Several_in_another_order", {"P", "Q", "R", "S"}, {"S", "P"}, {"Q", "R"}},
                      TRemoveRow{"All", {"P", "Q"}, {"P", "Q"}, {}}, TRemoveRow{"None", {"P", "Q"}, {}, {"P", "Q"}},
                      TRemoveRow{"Absent_names_are_skipped", {"P", "Q"}, {"X", "Q", "p"}, {"P"}},
                      TRemoveRow{"Only_the_first_of_a_name", {"P", "Q", "P", "R"}, {"P"}, {"Q", "P", "R"}},
                      TRemoveRow{"A_name_listed_twice_goes_twice", {"P", "Q", "P", "P"}, {"P", "P"}, {"Q", "P"}},
                      TRemoveRow{"From_nothing", {}, {"P"}, {}}),
    [](const auto& row) { return std::string(row.param.title); });

TEST(TNorvexaData, The_first_item_and_the_first_identifier_of_a_repeated_name_are_found)
{
    const TNorvexaData budget = Budget_With({"P", "Q", "Q"});

    EXPECT_EQ(budget.Component_Item_Index(0, "Q"), 1);
    EXPECT_EQ(budget.Component_Instance_Index(0, "Q"), 1);
}

TEST(TNorvexaData, Item_operations_change_the_first_of_a_repeated_name)
{
    TNorvexaData budget = Budget_With({"P", "Q", "Q"});
    budget.Update_Component_Item(0, Item("Q", "7"));
    EXPECT_TRUE(budget.Rename_Component_Item("Laser", "Q", "R"));

    EXPECT_EQ(Item_Names(budget), QStringList({"P", "R", "Q"}));
    EXPECT_EQ(Record_Text(budget.Component_Item(0, 1)), Record_Text(Item("R", "7")));
    EXPECT_EQ(Record_Text(budget.Component_Item(0, 2)), Record_Text(Item("Q", "1")));
}

// Identifiers

TEST_F(TNorvexaDataTest, Identifiers_are_found_by_position_and_by_name)
{
    EXPECT_EQ(d_budget.Component_Identifier_Count(0), 2);
    EXPECT_EQ(d_budget.Component_Identifier_Count(1), 0);
    EXPECT_EQ(d_budget.Component_Identifier_Name(0, 0), QString("A"));
    EXPECT_EQ(d_budget.Component_Identifier_Name(0, 1), QString("B"));
    EXPECT_EQ(d_budget.Component_Instance_Index(0, "B"), 1);
    EXPECT_EQ(d_budget.Component_Instance_Index(0, "b"), -1);
    EXPECT_EQ(d_budget.Component_Instance_Index(0, ""), -1);
    EXPECT_EQ(d_budget.Component_Instance_Index(1, "B"), -1);
    EXPECT_EQ(Record_Text(d_budget.Component_Instance(0, 1)), Record_Text(Instance("B", 400.0, 0.009)));
}

TEST_F(TNorvexaDataTest, A_new_identifier_is_calibrated_today_and_takes_over_the_component)
{
    const QString before = Today();
    EXPECT_TRUE(d_budget.Component_Add_Identifier("Laser", "C"));
    const QString after = Today();

    const TNorvexaData::TComponentInstance added = d_budget.Component_Instance(0, 2);
    EXPECT_EQ(added.name, QString("C"));
    EXPECT_THAT(added.calibration_date, AnyOf(before, after));
    EXPECT_EQ(added.calibration_due_date, added.calibration_date);
    EXPECT_EQ(added.length, 500.0);
    EXPECT_EQ(added.expansion_coefficient, 0.0115);
}

TEST_F(TNorvexaDataTest, The_dates_of_a_new_identifier_are_English_and_without_leading_zeros)
{
    const QRegularExpression text_date("^(Mon|Tue|Wed|Thu|Fri|Sat|Sun) "
                                       "(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [1-9][0-9]? [0-9]{4}$");
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    d_budget.Component_Add_Identifier("Laser", "C");
    QLocale::setDefault(before);

    const QString date = d_budget.Component_Instance(0, 2).calibration_date;
    EXPECT_TRUE(text_date.match(date).hasMatch()) << date.toStdString();
}

TEST_F(TNorvexaDataTest, A_new_identifier_gives_each_item_a_replacement_item_with_its_expression)
{
    EXPECT_TRUE(d_budget.Component_Add_Identifier("Laser", "C"));

    TNorvexaData::TComponent laser = Laser();
    laser.items[0].replacement_items.push_back(Replacement("C", "0.1", true));
    laser.items[1].replacement_items.push_back(Replacement("C", "0.2*L", true));
    laser.instances.push_back(d_budget.Component_Instance(0, 2));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, A_replacement_item_keeps_its_expression_when_the_item_gets_another_one)
{
    d_budget.Component_Add_Identifier("Laser", "C");
    TNorvexaData::TComponentItem item = d_budget.Component_Item("Laser", "Noise");
    item.expression = "0.7";
    d_budget.Update_Component_Item(0, item);

    EXPECT_EQ(Record_Text(d_budget.Component_Item("Laser", "Noise").replacement_items[2]),
              Record_Text(Replacement("C", "0.1", true)));
}

TEST_F(TNorvexaDataTest, Adding_an_identifier_refuses_an_unknown_component_and_a_name_in_use)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Component_Add_Identifier("Unknown", "C"));
    EXPECT_FALSE(d_budget.Component_Add_Identifier("Laser", "B"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Identifier_names_that_differ_in_case_are_different_names)
{
    EXPECT_TRUE(d_budget.Component_Add_Identifier("Laser", "a"));
    EXPECT_EQ(Identifier_Names(d_budget), QStringList({"A", "B", "a"}));
}

TEST_F(TNorvexaDataTest, Rename_Component_Identifier_renames_its_replacement_items_too)
{
    TNorvexaData::TComponent laser = Laser();
    laser.instances[0].name = "SN 7";
    laser.items[0].replacement_items[0].identifier = "SN 7";
    laser.items[1].replacement_items[0].identifier = "SN 7";

    EXPECT_TRUE(d_budget.Rename_Component_Identifier("Laser", "A", "SN 7"));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Rename_Component_Identifier_accepts_a_name_in_use)
{
    TNorvexaData::TComponent laser = Laser();
    laser.instances[0].name = "B";
    laser.items[0].replacement_items[0].identifier = "B";
    laser.items[1].replacement_items[0].identifier = "B";

    EXPECT_TRUE(d_budget.Rename_Component_Identifier("Laser", "A", "B"));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Rename_Component_Identifier_renames_all_of_that_name)
{
    d_budget.Rename_Component_Identifier("Laser", "A", "B");
    TNorvexaData::TComponent laser = Laser();
    for (TNorvexaData::TComponentInstance& instance : laser.instances) {
        instance.name = "C";
    }
    for (TNorvexaData::TComponentItem& item : laser.items) {
        item.replacement_items[0].identifier = "C";
        item.replacement_items[1].identifier = "C";
    }

    EXPECT_TRUE(d_budget.Rename_Component_Identifier("Laser", "B", "C"));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Rename_Component_Identifier_of_an_unknown_name_succeeds_and_changes_nothing)
{
    const QStringList before = Text();

    EXPECT_TRUE(d_budget.Rename_Component_Identifier("Laser", "Unknown", "C"));
    EXPECT_TRUE(d_budget.Rename_Component_Identifier("Laser", "A", "A"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Rename_Component_Identifier_refuses_an_unknown_component)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Rename_Component_Identifier("Unknown", "A", "C"));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Removing_an_identifier_removes_its_replacement_items_from_every_item)
{
    TNorvexaData::TComponent laser = Laser();
    laser.instances = {Instance("B", 400.0, 0.009)};
    laser.items[0].replacement_items = {Replacement("B", "2.5", true)};
    laser.items[1].replacement_items = {Replacement("B", "2.5", true)};

    EXPECT_TRUE(d_budget.Component_Remove_Identifier("Laser", {"A"}));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Removing_one_of_two_identifiers_of_a_name_removes_the_replacement_items_of_both)
{
    d_budget.Rename_Component_Identifier("Laser", "A", "B");
    TNorvexaData::TComponent laser = Laser();
    laser.instances = {Instance("B", 400.0, 0.009)};
    laser.items[0].replacement_items.clear();
    laser.items[1].replacement_items.clear();

    EXPECT_TRUE(d_budget.Component_Remove_Identifier("Laser", {"B"}));
    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Component_Remove_Identifier_refuses_an_unknown_component)
{
    const QStringList before = Text();

    EXPECT_FALSE(d_budget.Component_Remove_Identifier("Unknown", {"A"}));
    EXPECT_EQ(Text(), before);
}

TEST_F(TNorvexaDataTest, Update_Component_Identifier_replaces_all_fields_of_the_identifier)
{
    TNorvexaData::TComponent laser = Laser();
    laser.instances[1] = {"B", "yesterday", "soon", 450.0, 0.0123};
    d_budget.Update_Component_Identifier(0, laser.instances[1]);

    EXPECT_EQ(Text(), Text_With(laser));
}

TEST_F(TNorvexaDataTest, Update_Component_Identifier_changes_the_first_of_a_name)
{
    d_budget.Rename_Component_Identifier("Laser", "A", "B");
    d_budget.Update_Component_Identifier(0, Instance("B", 1.0, 2.0));

    EXPECT_EQ(Record_Text(d_budget.Component_Instance(0, 0)), Record_Text(Instance("B", 1.0, 2.0)));
    EXPECT_EQ(Record_Text(d_budget.Component_Instance(0, 1)), Record_Text(Instance("B", 400.0, 0.009)));
}

namespace {

struct TComponentIdentifierRow
{
    const char* title;
    const char* identifier;
};

class TComponentIdentifier : public TBudget, public ::testing::WithParamInterface<TComponentIdentifierRow>
{};

} // namespace

TEST_P(TComponentIdentifier, Update_Component_Identifier_changes_length_and_coefficient_of_the_component_alone)
{
    TNorvexaData::TComponent laser = Laser();
    laser.length = 750.0;
    laser.expansion_coefficient = 0.017;
    d_budget.Update_Component_Identifier(0, Instance(GetParam().identifier, 750.0, 0.017));

    EXPECT_EQ(Text(), Text_With(laser));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaData, TComponentIdentifier,
                         ::testing::Values(TComponentIdentifierRow{"Empty", ""},
                                           TComponentIdentifierRow{"Default", "[Default]"},
                                           TComponentIdentifierRow{"Unknown", "Z"},
                                           TComponentIdentifierRow{"Other_case", "a"}),
                         [](const auto& row) { return std::string(row.param.title); });

namespace {

class TReservedIdentifier : public TBudget, public ::testing::WithParamInterface<TComponentIdentifierRow>
{};

} // namespace

TEST_P(TReservedIdentifier, Means_the_component_even_beside_an_entry_of_that_name)
{
    TNorvexaData::TComponent laser = Laser();
    laser.instances[0].name = GetParam().identifier;
    d_budget.Update_Component(laser);
    d_budget.Update_Component_Identifier(0, Instance(GetParam().identifier, 750.0, 0.017));

    laser.length = 750.0;
    laser.expansion_coefficient = 0.017;
    EXPECT_EQ(Text(), Text_With(laser));
}

INSTANTIATE_TEST_SUITE_P(TNorvexaData, TReservedIdentifier,
                         ::testing::Values(TComponentIdentifierRow{"Empty", ""},
                                           TComponentIdentifierRow{"Default", "[Default]"}),
                         [](const auto& row) { return std::string(row.param.title); });

TEST_F(TNorvexaDataTest, Edits_leave_records_of_the_same_name_in_other_components_alone)
{
    TNorvexaData::TComponent probe = Laser();
    probe.name = "Probe";
    d_budget.Update_Component(probe);

    d_budget.Component_Add_Identifier("Laser", "C");
    d_budget.Rename_Component_Identifier("Laser", "A", "D");
    d_budget.Component_Remove_Identifier("Laser", {"B"});
    d_budget.Update_Component_Identifier(0, Instance("D", 1.0, 1.0));
    d_budget.Update_Component_Item(0, Item("Noise", "9"));
    d_budget.Rename_Component_Item("Laser", "Noise", "Scale");
    d_budget.Remove_Component_Items("Laser", {"Drift"});

    EXPECT_EQ(Record_Text(d_budget.Component(1)), Record_Text(probe));
}

// Indices out of range

namespace {

constexpr const char* COMPONENT_BY_INDEX = "static_cast<unsigned int>(index) < d_components.size()";
constexpr const char* COMPONENT_BY_ID = "static_cast<unsigned int>(component_id) < d_components.size()";
constexpr const char* ITEM_BY_INDEX = "static_cast<unsigned int>(index) < d_components[component_id].items.size()";
constexpr const char* INSTANCE_BY_INDEX =
    "static_cast<unsigned int>(index) < d_components[component_id].instances.size()";

struct TAbortRow
{
    const char* title;
    const char* function;
    const char* condition;
    std::function<void(TNorvexaData&)> act;
};

class TIndexOutOfRange : public TBudget, public ::testing::WithParamInterface<TAbortRow>
{};

using TIndexOutOfRangeDeathTest = TIndexOutOfRange;

} // namespace

TEST_P(TIndexOutOfRangeDeathTest, Aborts_with_source_function_and_condition)
{
    const std::string line =
        std::string("../share/norvexadata.cpp: ") + GetParam().function + ": " + GetParam().condition + "\n";

    EXPECT_DEATH(GetParam().act(d_budget), HasSubstr(line));
}

INSTANTIATE_TEST_SUITE_P(
    TNorvexaData, TIndexOutOfRangeDeathTest,
    ::testing::Values(
        TAbortRow{"Name_below", "Component_Name", COMPONENT_BY_INDEX, [](auto& b) { b.Component_Name(-1); }},
        TAbortRow{"Name_above", "Component_Name", COMPONENT_BY_INDEX, [](auto& b) { b.Component_Name(2); }},
        TAbortRow{"Component_below", "Component", COMPONENT_BY_INDEX, [](auto& b) { b.Component(-1); }},
        TAbortRow{"Component_above", "Component", COMPONENT_BY_INDEX, [](auto& b) { b.Component(2); }},
        TAbortRow{"Item_count_below", "Component_Item_Count", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Item_Count(-1); }},
        TAbortRow{"Item_count_above", "Component_Item_Count", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Item_Count(2); }},
        TAbortRow{"Item_name_component_first", "Component_Item_Name", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Item_Name(-1, -1); }},
        TAbortRow{"Item_name_below", "Component_Item_Name", ITEM_BY_INDEX,
                  [](auto& b) { b.Component_Item_Name(0, -1); }},
        TAbortRow{"Item_name_above", "Component_Item_Name", ITEM_BY_INDEX,
                  [](auto& b) { b.Component_Item_Name(0, 2); }},
        TAbortRow{"Item_component_first", "Component_Item", COMPONENT_BY_ID, [](auto& b) { b.Component_Item(2, 0); }},
        TAbortRow{"Item_below", "Component_Item", ITEM_BY_INDEX, [](auto& b) { b.Component_Item(0, -1); }},
        TAbortRow{"Item_above", "Component_Item", ITEM_BY_INDEX, [](auto& b) { b.Component_Item(1, 0); }},
        TAbortRow{"Item_index", "Component_Item_Index", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Item_Index(2, "Noise"); }},
        TAbortRow{"Item_of_an_unknown_component", "Component_Item_Index", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Item("Unknown", "Noise"); }},
        TAbortRow{"Item_of_an_unknown_name", "Component_Item", ITEM_BY_INDEX,
                  [](auto& b) { b.Component_Item("Laser", "Unknown"); }},
        TAbortRow{"Update_item_below", "Update_Component_Item", COMPONENT_BY_ID,
                  [](auto& b) { b.Update_Component_Item(-1, Item("Noise", "1")); }},
        TAbortRow{"Update_item_above", "Update_Component_Item", COMPONENT_BY_ID,
                  [](auto& b) { b.Update_Component_Item(2, Item("Noise", "1")); }},
        TAbortRow{"Identifier_count", "Component_Identifier_Count", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Identifier_Count(2); }},
        TAbortRow{"Identifier_name_component_first", "Component_Identifier_Name", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Identifier_Name(-1, -1); }},
        TAbortRow{"Identifier_name_below", "Component_Identifier_Name", INSTANCE_BY_INDEX,
                  [](auto& b) { b.Component_Identifier_Name(0, -1); }},
        TAbortRow{"Identifier_name_above", "Component_Identifier_Name", INSTANCE_BY_INDEX,
                  [](auto& b) { b.Component_Identifier_Name(0, 2); }},
        TAbortRow{"Instance_component_first", "Component_Instance", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Instance(2, 0); }},
        TAbortRow{"Instance_below", "Component_Instance", INSTANCE_BY_INDEX,
                  [](auto& b) { b.Component_Instance(0, -1); }},
        TAbortRow{"Instance_above", "Component_Instance", INSTANCE_BY_INDEX,
                  [](auto& b) { b.Component_Instance(1, 0); }},
        TAbortRow{"Instance_index", "Component_Instance_Index", COMPONENT_BY_ID,
                  [](auto& b) { b.Component_Instance_Index(-1, "A"); }},
        TAbortRow{"Update_identifier_below", "Update_Component_Identifier", COMPONENT_BY_ID,
                  [](auto& b) { b.Update_Component_Identifier(-1, Instance("A", 1.0, 1.0)); }},
        TAbortRow{"Update_identifier_above", "Update_Component_Identifier", COMPONENT_BY_ID,
                  [](auto& b) { b.Update_Component_Identifier(2, Instance("A", 1.0, 1.0)); }}),
    [](const auto& row) { return std::string(row.param.title); });
