#include "core/numberedit.h"
#include "core/optioneditor.h"
#include "src/variablewidget.h"
#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;

const int BUILT_IN_COUNT = 10;

testing::Matcher<const TVariable&> Is_Variable(const QString& name, const QString& description)
{
    return AllOf(Field("name", &TVariable::name, name), Field("description", &TVariable::description, description));
}

class VariableWidget : public ::testing::Test
{
protected:
    VariableWidget()
    {
        d_page.resize(1077, 640);
        Show_Active(&d_page);
    }

    TNumberEdit* Number_Field(const QString& name) const { return Child<TNumberEdit>(&d_page, name); }

    QToolButton* Button(const QString& name) const { return Child<QToolButton>(&d_page, name); }

    TOptionEditorWidget* List() const { return Child<TOptionEditorWidget>(&d_page, "variable_list"); }

    QList<QLabel*> Labels() const { return d_page.findChildren<QLabel*>(); }

    QLabel* Label(const QString& text) const
    {
        for (QLabel* label : Labels()) {
            if (label->text() == text) {
                return label;
            }
        }
        return nullptr;
    }

    // Where the user sees it on the page.
    QRect Place(const QWidget* widget) const { return {widget->mapTo(&d_page, QPoint()), widget->size()}; }

    void Type(const QString& field, const QString& text) { Replace_Text(Number_Field(field), text); }

    void Click(const QString& button) { QTest::mouseClick(Button(button), Qt::LeftButton); }

    // Clicks `button`, whose name dialog then gets `name` and Return.
    void Enter(const QString& button, const QString& name)
    {
        TModalAnswer answer;

        answer.Type_Name(name);
        Click(button);
    }

    void Click_Cell(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Click_Entry(List(), List()->model()->index(row, column), modifiers);
    }

    QComboBox* Open_Combo() const { return Open_Editor<QComboBox>(List()); }

    // Opens the selection list of `row` and steps with the arrow keys to its entry `choice`.
    void Choose(int row, const QString& choice)
    {
        Click_Cell(row, 1);
        QComboBox* const combo = Open_Combo();
        ASSERT_NE(combo, nullptr);
        QTest::keyClick(combo, Qt::Key_Home);
        for (int step = 0; step < combo->findText(choice); ++step) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
        ASSERT_EQ(combo->currentText(), choice);
    }

    std::vector<TVariable> Variables() const
    {
        std::vector<TVariable> variables(static_cast<unsigned int>(d_page.Variable_Count()));

        std::generate(variables.begin(), variables.end(),
                      [this, index = 0]() mutable { return d_page.Variable(index++); });
        return variables;
    }

    std::vector<TVariable> User_Variables() const
    {
        const std::vector<TVariable> variables = Variables();

        return {variables.begin() + BUILT_IN_COUNT, variables.end()};
    }

    QStringList Row(int row) const { return {List()->OptionName(row), List()->OptionResult(row)}; }

    int Changes() const { return d_changes.count(); }

    // No dialog may open unless a test expects it.
    TModalAnswer d_watchdog;

    TVariableWidget d_page;
    QSignalSpy d_changes{&d_page, &TVariableWidget::Variable_Changed};
};

const std::vector<TVariable> TWO_VARIABLES = {{"Air", "Thermometer", -1, 0.0}, {"Force", "Probe", -1, 0.0}};

// Input fields

struct TFieldRow
{
    const char* object_name;
    const char* label;
    const char* unit;
    const char* text;
};

void PrintTo(const TFieldRow& row, std::ostream* stream)
{
    *stream << row.object_name;
}

const TFieldRow FIELD_ROWS[] = {
    {"machine_expansion_coefficient", "Machine Expansion Coefficient:", "um/m/\u02DAC", "11.5"},
    {"machine_scale", "Machine Scale Resolution:", "mm", "0.001"},
    {"temperature_minimum", "Minimum Temperature:", "C", "20.0"},
    {"temperature_maximum", "Maximum Temperature:", "C", "20.0"},
    {"temperature_gradient", "Temperature Gradient:", "C", "0.0"},
    {"standard_deviation", "Mean Standard Deviation:", "mm", "0.000"},
    {"start_position", "Start Position:", "mm", "0.000"},
    {"end_position", "End Position:", "mm", "1000.000"},
    {"increment", "Increment:", "mm", "50.000"},
};

class VariableWidgetField : public VariableWidget, public ::testing::WithParamInterface<TFieldRow>
{};

TEST_P(VariableWidgetField, Stands_in_its_row_between_label_and_unit)
{
    const TNumberEdit* field = Number_Field(GetParam().object_name);
    const QLabel* label = Label(GetParam().label);
    QStringList units;

    ASSERT_NE(label, nullptr);
    for (const QLabel* candidate : Labels()) {
        const bool is_in_row = Place(candidate).center().y() >= Place(field).top() &&
                               Place(candidate).center().y() <= Place(field).bottom();
        if (is_in_row && Place(candidate).left() > Place(field).right()) {
            units.append(candidate->text());
        }
    }

    EXPECT_EQ(field->text(), GetParam().text);
    EXPECT_EQ(label->buddy(), field);
    EXPECT_LT(Place(label).right(), Place(field).left());
    EXPECT_EQ(units, QStringList(GetParam().unit));
    EXPECT_EQ(field->accessibleDescription(), GetParam().unit);
}

TEST_P(VariableWidgetField, Is_reported_as_changed_while_it_is_typed_and_keeps_the_text_as_typed)
{
    Type(GetParam().object_name, "7.25000");

    EXPECT_EQ(Number_Field(GetParam().object_name)->text(), "7.25000");
    EXPECT_EQ(Changes(), 8); // the old text taken away, then each key
}

TEST_P(VariableWidgetField, Is_silent_when_the_program_fills_it)
{
    Number_Field(GetParam().object_name)->setText("7.25");

    EXPECT_EQ(Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(, VariableWidgetField, ::testing::ValuesIn(FIELD_ROWS),
                         [](const auto& row) { return row.param.object_name; });

TEST_F(VariableWidget, Aligns_the_fields_in_one_narrow_column_under_their_heading)
{
    const QRect first = Place(Number_Field("machine_expansion_coefficient"));
    int above = Place(Label("Variable Values:")).bottom();

    for (const TFieldRow& row : FIELD_ROWS) {
        const QRect field = Place(Number_Field(row.object_name));
        EXPECT_GT(field.top(), above) << row.object_name;
        EXPECT_EQ(field.left(), first.left()) << row.object_name;
        EXPECT_EQ(field.width(), first.width()) << row.object_name;
        above = field.bottom();
    }
    EXPECT_LT(first.width(), d_page.width() / 3);
}

TEST_F(VariableWidget, Returns_the_fields_unscaled_as_the_input_block)
{
    Type("machine_expansion_coefficient", "10.75");
    Type("machine_scale", "0.0005");
    Type("temperature_minimum", "18.5");
    Type("temperature_maximum", "21.5");
    Type("temperature_gradient", "-0.25");
    Type("standard_deviation", "0.003");
    Type("start_position", "10");
    Type("end_position", "500");
    Type("increment", "12.5");

    const TInputData input_data = d_page.Input_Data();

    EXPECT_DOUBLE_EQ(input_data.machine_expansion_coefficient, 10.75);
    EXPECT_DOUBLE_EQ(input_data.machine_scale, 0.0005);
    EXPECT_DOUBLE_EQ(input_data.temperature_minimum, 18.5);
    EXPECT_DOUBLE_EQ(input_data.temperature_maximum, 21.5);
    EXPECT_DOUBLE_EQ(input_data.temperature_gradient, -0.25);
    EXPECT_DOUBLE_EQ(input_data.report_increment, 12.5);
    EXPECT_DOUBLE_EQ(input_data.report_end, 500.0);
}

TEST_F(VariableWidget, Returns_the_report_range_and_the_coefficient_that_expressions_use)
{
    Type("machine_expansion_coefficient", "12");
    Type("start_position", "10");
    Type("end_position", "500");
    Type("increment", "12.5");

    EXPECT_DOUBLE_EQ(d_page.Start_Position(), 10.0);
    EXPECT_DOUBLE_EQ(d_page.End_Position(), 500.0);
    EXPECT_DOUBLE_EQ(d_page.Increment(), 12.5);
    EXPECT_DOUBLE_EQ(d_page.Machine_Expansion_Coefficient(), 0.012);
}

TEST_F(VariableWidget, Starts_with_the_defaults_of_a_fresh_input_block)
{
    const TInputData fresh;
    const TInputData shown = d_page.Input_Data();

    EXPECT_DOUBLE_EQ(shown.machine_expansion_coefficient, fresh.machine_expansion_coefficient);
    EXPECT_DOUBLE_EQ(shown.machine_scale, fresh.machine_scale);
    EXPECT_DOUBLE_EQ(shown.temperature_minimum, fresh.temperature_minimum);
    EXPECT_DOUBLE_EQ(shown.temperature_maximum, fresh.temperature_maximum);
    EXPECT_DOUBLE_EQ(shown.temperature_gradient, fresh.temperature_gradient);
    EXPECT_DOUBLE_EQ(shown.report_increment, fresh.report_increment);
    EXPECT_DOUBLE_EQ(shown.report_end, fresh.report_end);
}

TEST_F(VariableWidget, Shows_an_input_block_in_fixed_formats_and_leaves_the_other_two_fields)
{
    Type("standard_deviation", "0.7");
    Type("start_position", "5");
    const int changes = Changes();

    TInputData input_data;
    input_data.machine_expansion_coefficient = 10.5;
    input_data.machine_scale = 0.0001;
    input_data.temperature_minimum = 19.0;
    input_data.temperature_maximum = 21.255;
    input_data.temperature_gradient = 0.5;
    input_data.report_increment = 25.0;
    input_data.report_end = 1500.1254;
    d_page.Set_Input_Data(input_data);

    EXPECT_EQ(Number_Field("machine_expansion_coefficient")->text(), "10.50");
    EXPECT_EQ(Number_Field("machine_scale")->text(), "0.000100");
    EXPECT_EQ(Number_Field("temperature_minimum")->text(), "19.00");
    EXPECT_EQ(Number_Field("temperature_maximum")->text(), "21.25");
    EXPECT_EQ(Number_Field("temperature_gradient")->text(), "0.50");
    EXPECT_EQ(Number_Field("standard_deviation")->text(), "0.7");
    EXPECT_EQ(Number_Field("start_position")->text(), "5");
    EXPECT_EQ(Number_Field("end_position")->text(), "1500.125");
    EXPECT_EQ(Number_Field("increment")->text(), "25.000");
    EXPECT_EQ(Changes(), changes);
}

// Built-in variables

struct TBuiltInRow
{
    int index;
    const char* name;
    const char* description;
    double start_value;
};

void PrintTo(const TBuiltInRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class VariableWidgetBuiltIn : public VariableWidget, public ::testing::WithParamInterface<TBuiltInRow>
{};

TEST_P(VariableWidgetBuiltIn, Is_shown_in_its_row_and_kept_as_a_record)
{
    const TVariable variable = d_page.Variable(GetParam().index);

    EXPECT_EQ(Row(GetParam().index), QStringList({GetParam().name, GetParam().description}));
    EXPECT_THAT(variable, Is_Variable(GetParam().name, GetParam().description));
    EXPECT_EQ(variable.index, -1);
    EXPECT_EQ(d_page.Variable_Name(GetParam().index), GetParam().name);
    EXPECT_EQ(d_page.Variable_Description(GetParam().name), GetParam().description);
}

TEST_P(VariableWidgetBuiltIn, Has_its_value_at_start)
{
    bool valid = false;

    EXPECT_DOUBLE_EQ(d_page.Variable_Value(GetParam().index, &valid), GetParam().start_value);
    EXPECT_TRUE(valid);
}

TEST_P(VariableWidgetBuiltIn, Cannot_be_edited_renamed_or_removed)
{
    Click_Cell(GetParam().index, 1);
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       List()->visualRect(List()->currentIndex()).center());

    EXPECT_EQ(List()->currentIndex(), List()->model()->index(GetParam().index, 1));
    EXPECT_EQ(List()->viewport()->findChild<QWidget*>(), nullptr);
    EXPECT_FALSE(Button("rename_variable")->isEnabled());
    EXPECT_FALSE(Button("remove_variable")->isEnabled());

    d_page.Rename_Variable();
    d_page.Remove_Variable();

    EXPECT_EQ(d_page.Variable_Name(GetParam().index), GetParam().name);
    EXPECT_EQ(d_page.Variable_Count(), BUILT_IN_COUNT);
    EXPECT_EQ(Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(, VariableWidgetBuiltIn,
                         ::testing::Values(TBuiltInRow{0, "CTEm", "Machine Expansion Coefficient", 0.0115},
                                           TBuiltInRow{1, "CTEc", "Component Expansion Coefficient", 0.0},
                                           TBuiltInRow{2, "CTEd", "Expansion Coefficient Difference", 0.0},
                                           TBuiltInRow{3, "Sr", "Scale Resolution", 0.001},
                                           TBuiltInRow{4, "Td", "Temperature Deviation from 20 C", 0.0},
                                           TBuiltInRow{5, "Tr", "Temperature Range", 0.0},
                                           TBuiltInRow{6, "Tg", "Temperature Gradient", 0.0},
                                           TBuiltInRow{7, "Sdev", "Standard Deviation", 0.0},
                                           TBuiltInRow{8, "Lc", "Length Count", 0.0},
                                           TBuiltInRow{9, "L", "Test Length", 0.0}),
                         [](const auto& row) { return row.param.name; });

TEST_F(VariableWidget, Starts_with_the_built_in_variables_alone)
{
    EXPECT_EQ(d_page.Variable_Count(), BUILT_IN_COUNT);
    EXPECT_EQ(List()->topLevelItemCount(), BUILT_IN_COUNT);
}

struct TValueRow
{
    const char* case_name;
    std::vector<std::pair<const char*, const char*>> typed;
    const char* variable;
    double value;
};

void PrintTo(const TValueRow& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class VariableWidgetValue : public VariableWidget, public ::testing::WithParamInterface<TValueRow>
{};

TEST_P(VariableWidgetValue, Follows_from_the_fields)
{
    for (const auto& [field, text] : GetParam().typed) {
        Type(field, text);
    }
    int index = 0;
    while (d_page.Variable_Name(index) != GetParam().variable) {
        ++index;
    }
    bool valid = false;

    EXPECT_DOUBLE_EQ(d_page.Variable_Value(index, &valid), GetParam().value);
    EXPECT_TRUE(valid);
}

const TValueRow VALUE_ROWS[] = {
    {"CTEm_is_a_thousandth_of_the_field", {{"machine_expansion_coefficient", "12"}}, "CTEm", 0.012},
    {"CTEm_keeps_its_sign", {{"machine_expansion_coefficient", "-12"}}, "CTEm", -0.012},
    {"Sr_is_taken_as_entered", {{"machine_scale", "0.0005"}}, "Sr", 0.0005},
    {"Sr_keeps_its_sign", {{"machine_scale", "-0.0005"}}, "Sr", -0.0005},
    {"Td_of_18_and_24", {{"temperature_minimum", "18"}, {"temperature_maximum", "24"}}, "Td", 1.0},
    {"Tr_of_18_and_24", {{"temperature_minimum", "18"}, {"temperature_maximum", "24"}}, "Tr", 6.0},
    {"Td_of_24_and_18", {{"temperature_minimum", "24"}, {"temperature_maximum", "18"}}, "Td", 1.0},
    {"Tr_of_24_and_18", {{"temperature_minimum", "24"}, {"temperature_maximum", "18"}}, "Tr", 6.0},
    {"Td_below_20_is_positive", {{"temperature_minimum", "16"}, {"temperature_maximum", "18"}}, "Td", 3.0},
    {"Tg_of_a_gradient", {{"temperature_gradient", "0.5"}}, "Tg", 0.5},
    {"Tg_of_a_negative_gradient", {{"temperature_gradient", "-0.5"}}, "Tg", 0.5},
    {"Sdev_of_a_deviation", {{"standard_deviation", "0.002"}}, "Sdev", 0.002},
    {"Sdev_of_a_negative_deviation", {{"standard_deviation", "-0.002"}}, "Sdev", 0.002},
    {"CTEc_is_left_to_the_report", {{"machine_expansion_coefficient", "12"}}, "CTEc", 0.0},
    {"CTEd_is_left_to_the_report", {{"machine_expansion_coefficient", "12"}}, "CTEd", 0.0},
    {"Lc_is_left_to_the_report", {{"end_position", "500"}}, "Lc", 0.0},
    {"L_is_left_to_the_report", {{"end_position", "500"}}, "L", 0.0},
    {"Text_counts_as_0", {{"temperature_gradient", "warm"}}, "Tg", 0.0},
    {"Decimal_comma_counts_as_0", {{"temperature_gradient", "0,5"}}, "Tg", 0.0},
    {"Infinity_counts_as_0", {{"temperature_gradient", "inf"}}, "Tg", 0.0},
    {"Overflow_counts_as_0", {{"temperature_gradient", "1e999"}}, "Tg", 0.0},
    {"Not_a_number_counts_as_0", {{"temperature_gradient", "nan"}}, "Tg", 0.0},
};

INSTANTIATE_TEST_SUITE_P(, VariableWidgetValue, ::testing::ValuesIn(VALUE_ROWS),
                         [](const auto& row) { return row.param.case_name; });

TEST_F(VariableWidget, Has_no_value_for_a_variable_of_the_user)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    bool valid = true;

    EXPECT_EQ(d_page.Variable_Value(10, &valid), 0.0);
    EXPECT_FALSE(valid);
}

// Programming errors

using VariableWidgetDeathTest = VariableWidget;

const char* const INDEX_FAILURE = "static_cast<unsigned int>\\(index\\) < d_variables.size\\(\\)";

TEST_F(VariableWidgetDeathTest, Value_of_an_index_out_of_range)
{
    bool valid = false;

    EXPECT_DEATH(d_page.Variable_Value(-1, &valid),
                 QString("\\.\\./src/variablewidget\\.cpp: Variable_Value: %1").arg(INDEX_FAILURE).toStdString());
    EXPECT_DEATH(d_page.Variable_Value(10, &valid), INDEX_FAILURE);
}

TEST_F(VariableWidgetDeathTest, Value_without_a_place_for_its_validity)
{
    EXPECT_DEATH(d_page.Variable_Value(0, nullptr), "\\.\\./src/variablewidget\\.cpp: Variable_Value: valid\n");
}

TEST_F(VariableWidgetDeathTest, Value_of_an_index_out_of_range_without_a_place_for_its_validity)
{
    EXPECT_DEATH(d_page.Variable_Value(10, nullptr), INDEX_FAILURE);
}

TEST_F(VariableWidgetDeathTest, Variable_of_an_index_out_of_range)
{
    EXPECT_DEATH(d_page.Variable(-1), INDEX_FAILURE);
    EXPECT_DEATH(d_page.Variable(10), INDEX_FAILURE);
}

TEST_F(VariableWidgetDeathTest, Name_of_an_index_out_of_range)
{
    EXPECT_DEATH(d_page.Variable_Name(-1), INDEX_FAILURE);
    EXPECT_DEATH(d_page.Variable_Name(10), INDEX_FAILURE);
}

// Look-ups by name

TEST_F(VariableWidget, Describes_the_variable_that_is_spelled_exactly_so_before_one_in_other_case)
{
    d_page.Add_Optional_Variables({{"air", "Thermometer", -1, 0.0}, {"Air", "Barometer", -1, 0.0}});

    EXPECT_EQ(d_page.Variable_Description("air"), "Thermometer");
    EXPECT_EQ(d_page.Variable_Description("Air"), "Barometer");
    EXPECT_EQ(d_page.Variable_Description("AIR"), "Thermometer");
    EXPECT_EQ(d_page.Variable_Description("sdev"), "Standard Deviation");
    EXPECT_EQ(d_page.Variable_Description("Water"), QString());
}

TEST_F(VariableWidget, Finds_names_without_regard_to_case)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);

    EXPECT_TRUE(d_page.Variable_Exists("Air"));
    EXPECT_TRUE(d_page.Variable_Exists("aIR"));
    EXPECT_TRUE(d_page.Variable_Exists("ctem"));
    EXPECT_FALSE(d_page.Variable_Exists("Ai"));
    EXPECT_FALSE(d_page.Variable_Exists(""));
}

// The list and its buttons

TEST_F(VariableWidget, Lists_variables_in_two_columns_wide_enough_for_their_texts)
{
    const QTreeWidgetItem* header = List()->headerItem();
    d_page.Add_Optional_Variables({{QString("Air_Temperature"), QString(), -1, 0.0}});
    QApplication::processEvents();

    EXPECT_EQ(List()->columnCount(), 2);
    EXPECT_EQ(QStringList({header->text(0), header->text(1)}), QStringList({"Variable", "Description"}));
    EXPECT_EQ(Label("Variable Entries:")->buddy(), List());
    EXPECT_LT(Place(Label("Variable Entries:")).bottom(), Place(List()).top());
    for (int column = 0; column < 2; ++column) {
        for (int row = 0; row <= BUILT_IN_COUNT; ++row) {
            const QString text = List()->topLevelItem(row)->text(column);
            EXPECT_GT(List()->columnWidth(column), List()->fontMetrics().horizontalAdvance(text));
        }
    }
}

struct TButtonRow
{
    const char* object_name;
    const char* icon;
    const char* text;
};

void PrintTo(const TButtonRow& row, std::ostream* stream)
{
    *stream << row.object_name;
}

class VariableWidgetButton : public VariableWidget, public ::testing::WithParamInterface<TButtonRow>
{};

TEST_P(VariableWidgetButton, Is_a_small_icon_under_the_list_that_says_what_it_does)
{
    const QToolButton* button = Button(GetParam().object_name);
    const QImage picture = QIcon(GetParam().icon).pixmap(16, 16).toImage();

    EXPECT_EQ(button->size(), QSize(16, 16));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(button->icon().pixmap(16, 16).toImage(), picture);
    EXPECT_EQ(button->toolTip(), GetParam().text);
    EXPECT_EQ(button->accessibleName(), GetParam().text);
    EXPECT_GT(Place(button).top(), Place(List()).bottom());
}

INSTANTIATE_TEST_SUITE_P(, VariableWidgetButton,
                         ::testing::Values(TButtonRow{"add_variable", ":/gui/add.png", "Add variable"},
                                           TButtonRow{"rename_variable", ":/gui/edit.png", "Rename variable"},
                                           TButtonRow{"remove_variable", ":/gui/remove.png", "Remove variable"}),
                         [](const auto& row) { return row.param.object_name; });

TEST_F(VariableWidget, Enables_rename_and_remove_while_one_variable_of_the_user_is_selected)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    const auto Enabled = [this] {
        return std::vector<bool>{Button("add_variable")->isEnabled(), Button("rename_variable")->isEnabled(),
                                 Button("remove_variable")->isEnabled()};
    };

    EXPECT_THAT(Enabled(), ElementsAre(true, false, false));
    Click_Cell(10, 0);
    EXPECT_THAT(Enabled(), ElementsAre(true, true, true));
    Click_Cell(9, 0);
    EXPECT_THAT(Enabled(), ElementsAre(true, false, false));
    Click_Cell(11, 0);
    EXPECT_THAT(Enabled(), ElementsAre(true, true, true));
    Click_Cell(11, 0, Qt::ControlModifier);
    EXPECT_THAT(Enabled(), ElementsAre(true, false, false));
}

// Adding

TEST_F(VariableWidget, Adds_a_variable_with_underscores_for_blanks)
{
    Enter("add_variable", "  Air  Pressure\u00A0b ");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air__Pressure_b", "")));
    EXPECT_EQ(d_page.Variable(10).index, 10);
    EXPECT_EQ(d_page.Variable(10).value, 0.0);
    EXPECT_EQ(List()->topLevelItemCount(), 11);
    EXPECT_EQ(Row(10), QStringList({"Air__Pressure_b", "[no selection]"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Asks_for_the_name_of_a_new_variable)
{
    TModalAnswer answer;

    answer.Cancel_Name();
    Click("add_variable");

    EXPECT_EQ(answer.Seen(0).title, "New Variable");
    EXPECT_EQ(answer.Seen(0).text, "");
}

TEST_F(VariableWidget, Appends_a_variable_behind_the_others_and_offers_it_the_components)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Enter("add_variable", "Aaa");
    Choose(12, "Probe");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Probe"),
                                              Is_Variable("Aaa", "Probe")));
}

TEST_F(VariableWidget, Scrolls_to_a_new_variable)
{
    d_page.Add_Optional_Variables(std::vector<TVariable>(50, {"Air", "Thermometer", -1, 0.0}));

    Enter("add_variable", "Force");

    EXPECT_TRUE(List()->viewport()->rect().contains(List()->visualItemRect(List()->topLevelItem(60)).center()));
}

TEST_F(VariableWidget, Adds_nothing_when_the_dialog_is_cancelled)
{
    TModalAnswer answer;

    answer.Type_Name_And_Cancel("Air");
    Click("add_variable");

    EXPECT_EQ(d_page.Variable_Count(), BUILT_IN_COUNT);
    EXPECT_EQ(Changes(), 0);
}

struct TRefusedName
{
    const char* case_name;
    const char* typed;
};

void PrintTo(const TRefusedName& row, std::ostream* stream)
{
    *stream << '"' << row.typed << '"';
}

class VariableWidgetRefusedName : public VariableWidget, public ::testing::WithParamInterface<TRefusedName>
{};

TEST_P(VariableWidgetRefusedName, Adds_nothing)
{
    d_page.Add_Optional_Variables({{"Air_Pressure", "Barometer", -1, 0.0}});

    Enter("add_variable", GetParam().typed);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air_Pressure", "Barometer")));
    EXPECT_EQ(List()->topLevelItemCount(), 11);
    EXPECT_EQ(Changes(), 0);
}

TEST_P(VariableWidgetRefusedName, Renames_nothing)
{
    d_page.Add_Optional_Variables({{"Air_Pressure", "Barometer", -1, 0.0}});
    Click_Cell(10, 0);

    Enter("rename_variable", GetParam().typed);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air_Pressure", "Barometer")));
    EXPECT_EQ(List()->OptionName(10), "Air_Pressure");
    EXPECT_EQ(Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(, VariableWidgetRefusedName,
                         ::testing::Values(TRefusedName{"in_use", "Air_Pressure"},
                                           TRefusedName{"in_use_in_other_case", "air_pressure"},
                                           TRefusedName{"in_use_with_blanks_and_in_other_case", "AIR PRESSURE"},
                                           TRefusedName{"built_in", "CTEm"},
                                           TRefusedName{"built_in_in_other_case", "ctem"},
                                           TRefusedName{"last_built_in_in_other_case", "l"},
                                           TRefusedName{"blanks", "   "}, TRefusedName{"no_break_space", "\u00A0"}),
                         [](const auto& row) { return row.param.case_name; });

// Renaming

TEST_F(VariableWidget, Renames_the_current_variable_and_keeps_all_else)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);

    Enter("rename_variable", "Air temperature");

    EXPECT_THAT(User_Variables(),
                ElementsAre(Is_Variable("Air_temperature", "Thermometer"), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Row(10), QStringList({"Air_temperature", "Thermometer"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Asks_for_the_new_name_starting_from_the_old_one)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(11, 0);

    TModalAnswer answer;
    answer.Cancel_Name();
    Click("rename_variable");

    EXPECT_EQ(answer.Seen(0).title, "Rename Variable");
    EXPECT_EQ(answer.Seen(0).text, "Force");
}

TEST_F(VariableWidget, Renames_nothing_when_the_dialog_is_cancelled)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);

    TModalAnswer answer;
    answer.Type_Name_And_Cancel("Water");
    Click("rename_variable");

    EXPECT_EQ(d_page.Variable_Name(10), "Air");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Renames_the_current_variable_also_while_it_is_not_selected)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);
    Click_Cell(10, 0, Qt::ControlModifier);
    ASSERT_TRUE(List()->selectedItems().isEmpty());

    TModalAnswer answer;
    answer.Type_Name("Water");
    d_page.Rename_Variable();

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Water", "Thermometer"), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Renames_nothing_while_no_row_is_current)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);

    d_page.Rename_Variable();

    EXPECT_EQ(d_page.Variable_Name(10), "Air");
    EXPECT_EQ(Changes(), 0);
}

// Removing

TEST_F(VariableWidget, Removes_the_selected_variable)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);

    Click("remove_variable");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Force", "Probe")));
    EXPECT_EQ(List()->topLevelItemCount(), 11);
    EXPECT_EQ(List()->OptionName(10), "Force");
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Selects_the_variable_that_takes_the_place_of_the_removed_one)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);

    Click("remove_variable");

    EXPECT_EQ(List()->selectedItems(), QList<QTreeWidgetItem*>{List()->topLevelItem(10)});
    EXPECT_TRUE(Button("rename_variable")->isEnabled());
    EXPECT_TRUE(Button("remove_variable")->isEnabled());
}

TEST_F(VariableWidget, Stores_choices_in_the_right_variable_after_a_removal)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);
    Click("remove_variable");

    Choose(10, "Thermometer");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Force", "Thermometer")));
}

TEST_F(VariableWidget, Removes_a_variable_whose_selection_list_is_open)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    Click("remove_variable");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Force", "Probe")));
    EXPECT_EQ(Row(10), QStringList({"Force", "Probe"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Has_nothing_selected_once_the_last_variable_is_removed)
{
    d_page.Add_Optional_Variables({TWO_VARIABLES.front()});
    Click_Cell(10, 0);

    Click("remove_variable");

    EXPECT_EQ(d_page.Variable_Count(), BUILT_IN_COUNT);
    EXPECT_EQ(List()->topLevelItemCount(), BUILT_IN_COUNT);
    EXPECT_TRUE(List()->selectedItems().isEmpty());
    EXPECT_FALSE(Button("rename_variable")->isEnabled());
    EXPECT_FALSE(Button("remove_variable")->isEnabled());
}

TEST_F(VariableWidget, Removes_nothing_while_no_row_is_selected)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);
    Click_Cell(10, 0, Qt::ControlModifier);
    ASSERT_EQ(List()->currentItem(), List()->topLevelItem(10));

    d_page.Remove_Variable();

    EXPECT_EQ(d_page.Variable_Count(), 12);
    EXPECT_EQ(Changes(), 0);
}

// Components

TEST_F(VariableWidget, Offers_no_selection_and_the_components)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    d_page.Update_Variable_List({"Probe", "Scale - Error", "Thermometer"});
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);
    QStringList offered;

    for (int index = 0; index < Open_Combo()->count(); ++index) {
        offered.append(Open_Combo()->itemText(index));
    }
    EXPECT_EQ(offered, QStringList({"[no selection]", "Probe", "Scale - Error", "Thermometer"}));
}

TEST_F(VariableWidget, Stores_the_chosen_component_of_the_row_and_reports_it)
{
    d_page.Update_Variable_List({"Probe", "Scale - Error", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);

    Click_Cell(11, 1);
    ASSERT_NE(Open_Combo(), nullptr);
    QTest::keyClick(Open_Combo(), Qt::Key_Down);

    EXPECT_THAT(User_Variables(),
                ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Scale - Error")));
    EXPECT_EQ(Row(11), QStringList({"Force", "Scale - Error"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Stores_an_empty_description_when_no_selection_is_chosen)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);

    Choose(11, "[no selection]");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "")));
    EXPECT_EQ(Row(11), QStringList({"Force", "[no selection]"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Ignores_a_choice_in_a_row_without_a_selection_list)
{
    for (const int row : {-1, 0, 3, 9, 10}) {
        d_page.Variable_Selection_List_Changed(row, "Probe");
    }

    EXPECT_EQ(d_page.Variable(0).description, "Machine Expansion Coefficient");
    EXPECT_EQ(d_page.Variable(3).description, "Scale Resolution");
    EXPECT_EQ(d_page.Variable(9).description, "Test Length");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Chooses_a_component_from_the_keyboard)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    List()->setFocus();

    QTest::keyClick(List(), Qt::Key_End);
    QTest::keyClick(List(), Qt::Key_Right);
    QTRY_VERIFY(Open_Combo() != nullptr && Open_Combo()->hasFocus());
    QTest::keyClick(Open_Combo(), Qt::Key_Down);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Thermometer")));
}

TEST_F(VariableWidget, Keeps_a_description_that_is_not_offered_and_shows_it_once_it_is)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    EXPECT_EQ(Row(10), QStringList({"Air", "[no selection]"}));
    EXPECT_EQ(d_page.Variable(10).description, "Thermometer");

    d_page.Update_Variable_List({"Probe", "Thermometer"});
    EXPECT_EQ(Row(10), QStringList({"Air", "Thermometer"}));

    d_page.Update_Variable_List({"Probe"});
    EXPECT_EQ(Row(10), QStringList({"Air", "[no selection]"}));
    EXPECT_EQ(d_page.Variable(10).description, "Thermometer");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Keeps_a_description_that_is_not_offered_while_its_selection_list_is_merely_opened)
{
    d_page.Update_Variable_List({"Probe"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    Click_Cell(11, 0);

    EXPECT_EQ(d_page.Variable(10).description, "Thermometer");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Forgets_a_description_that_is_not_offered_when_the_shown_no_selection_is_chosen_by_mouse)
{
    d_page.Update_Variable_List({"Probe"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    Choose_Entry(Open_Combo(), "[no selection]");

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", ""), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Row(10), QStringList({"Air", "[no selection]"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Forgets_a_description_that_is_not_offered_when_the_shown_no_selection_is_chosen_by_Return)
{
    d_page.Update_Variable_List({"Probe"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    QTest::keyClick(Open_Combo(), Qt::Key_F4);
    QAbstractItemView* const choices = Open_Combo()->view();
    ASSERT_TRUE(QTest::qWaitFor([choices]() { return choices->hasFocus(); }));
    QTest::keyClick(choices, Qt::Key_Return);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", ""), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Row(10), QStringList({"Air", "[no selection]"}));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Is_silent_when_the_component_that_a_variable_has_is_chosen_again)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    const QSignalSpy choices(List(), &TOptionEditorWidget::SelectionListItemChanged);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    Choose_Entry(Open_Combo(), "Thermometer");

    EXPECT_EQ(choices.count(), 1);
    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Is_silent_when_the_components_change_while_a_selection_list_is_open)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    d_page.Update_Variable_List({"Zeiss", "Thermometer"});
    QApplication::processEvents();

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Row(10), QStringList({"Air", "Thermometer"}));
    EXPECT_EQ(Row(11), QStringList({"Force", "[no selection]"}));
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Leaves_an_open_selection_list_open_when_the_same_components_come_again)
{
    d_page.Update_Variable_List({"Probe", "Thermometer"});
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 1);
    ASSERT_NE(Open_Combo(), nullptr);

    d_page.Update_Variable_List({"Probe", "Thermometer"});
    QApplication::processEvents();

    ASSERT_NE(Open_Combo(), nullptr);
    Choose_Entry(Open_Combo(), "Probe");
    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Probe"), Is_Variable("Force", "Probe")));
    EXPECT_EQ(Changes(), 1);
}

TEST_F(VariableWidget, Keeps_the_selected_row_when_the_components_change)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(11, 0);

    d_page.Update_Variable_List({"Probe", "Thermometer"});

    EXPECT_EQ(List()->selectedItems(), QList<QTreeWidgetItem*>{List()->topLevelItem(11)});
    EXPECT_EQ(List()->currentItem(), List()->topLevelItem(11));
    EXPECT_TRUE(Button("rename_variable")->isEnabled());
    EXPECT_TRUE(Button("remove_variable")->isEnabled());
}

TEST_F(VariableWidget, Selects_nothing_when_the_selected_row_is_gone)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(11, 0);

    d_page.Add_Optional_Variables({TWO_VARIABLES.front()});

    EXPECT_TRUE(List()->selectedItems().isEmpty());
    EXPECT_FALSE(Button("rename_variable")->isEnabled());
    EXPECT_FALSE(Button("remove_variable")->isEnabled());
}

// Loading

TEST_F(VariableWidget, Replaces_the_variables_of_the_user_silently)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    d_page.Add_Optional_Variables({{"Humidity", "Hygrometer", -1, 0.0}, {"Air", "Barometer", -1, 0.0}});

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Humidity", "Hygrometer"), Is_Variable("Air", "Barometer")));
    EXPECT_EQ(List()->topLevelItemCount(), 12);
    EXPECT_EQ(List()->OptionName(10), "Humidity");
    EXPECT_EQ(d_page.Variable(10).index, 10);
    EXPECT_EQ(d_page.Variable(11).index, 11);
    EXPECT_EQ(Changes(), 0);
}

TEST_F(VariableWidget, Skips_loaded_variables_called_exactly_like_a_built_in_one)
{
    d_page.Add_Optional_Variables(
        {{"CTEm", "Other", -1, 0.0}, {"ctem", "Probe", -1, 0.0}, {"L", "", -1, 0.0}, {"Air", "", -1, 0.0}});

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("ctem", "Probe"), Is_Variable("Air", "")));
    EXPECT_EQ(d_page.Variable(0).description, "Machine Expansion Coefficient");
}

TEST_F(VariableWidget, Gives_the_same_variables_when_its_own_are_loaded_again)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);

    d_page.Add_Optional_Variables(Variables());

    EXPECT_EQ(d_page.Variable_Count(), 12);
    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Force", "Probe")));
}

// Keyboard

TEST_F(VariableWidget, Is_walked_down_with_the_tab_key)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    Click_Cell(10, 0);
    Number_Field("machine_expansion_coefficient")->setFocus();
    QStringList walked;

    for (int step = 0; step < 13; ++step) {
        walked.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(walked, QStringList({"machine_expansion_coefficient", "machine_scale", "temperature_minimum",
                                   "temperature_maximum", "temperature_gradient", "standard_deviation",
                                   "start_position", "end_position", "increment", "variable_list", "add_variable",
                                   "rename_variable", "remove_variable"}));
    EXPECT_EQ(QApplication::focusWidget(), Number_Field("machine_expansion_coefficient"));
}

TEST_F(VariableWidget, Adds_a_variable_from_the_keyboard)
{
    TModalAnswer answer;

    answer.Type_Name("Air");
    Button("add_variable")->setFocus();
    QTest::keyClick(Button("add_variable"), Qt::Key_Space);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "")));
}

TEST_F(VariableWidget, Renames_a_variable_from_the_keyboard)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_End);
    Button("rename_variable")->setFocus();
    TModalAnswer answer;

    answer.Type_Name("Water");
    QTest::keyClick(Button("rename_variable"), Qt::Key_Space);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer"), Is_Variable("Water", "Probe")));
}

TEST_F(VariableWidget, Removes_a_variable_from_the_keyboard_and_then_has_the_focus_in_the_list)
{
    d_page.Add_Optional_Variables(TWO_VARIABLES);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_End);
    Button("remove_variable")->setFocus();

    QTest::keyClick(Button("remove_variable"), Qt::Key_Space);

    EXPECT_THAT(User_Variables(), ElementsAre(Is_Variable("Air", "Thermometer")));
    EXPECT_EQ(QApplication::focusWidget(), List());
}

} // namespace
