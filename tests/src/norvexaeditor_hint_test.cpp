#include "src/componentitemwidget.h"
#include "src/variablewidget.h"
#include "tests/support/componentpages.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <ostream>

namespace {

const QColor ERROR_BASE(255, 224, 220);
const QColor ERROR_TEXT(139, 0, 0);
const char* const INVALID = "The expression cannot be evaluated.";
const char* const EMPTY = "An empty expression is refused: the one before comes back.";

QString Undefined(const QString& names)
{
    return "Nothing defines these variables: " + names;
}

QString Invalid_And_Undefined(const QString& names)
{
    return INVALID + ("\n" + Undefined(names));
}

TVariable User_Variable(const QString& name, const QString& description)
{
    TVariable variable;
    variable.name = name;
    variable.description = description;
    return variable;
}

// The workshop, where "Wear" stands for the probe, "Slope" for the one item of the scale, "Lost" for a component that
// is gone and "Loose" for none.
TBudgetFile Hint_Budget()
{
    TBudgetFile budget = Workshop_Budget();
    budget.variables = {User_Variable("Wear", "Probe"), User_Variable("Slope", "Scale - Drift"),
                        User_Variable("Lost", "Table"), User_Variable("Loose", "")};
    return budget;
}

class TNorvexaEditorHint : public TComponentPagesFixture
{
protected:
    TNorvexaEditorHint() : d_own_tool_tip(Expression()->toolTip()) {}

    void Open_Item(const QString& item, const TBudgetFile& budget = Hint_Budget())
    {
        Open_Budget(budget);
        Select_Entry(item);
    }

    // Opens a budget in which an item has this expression, and selects the item.
    void Open_Expression(const QString& expression)
    {
        TBudgetFile budget = Hint_Budget();
        Change_Item(&budget.document, "Probe", "Repeatability",
                    [&](TNorvexaData::TComponentItem* item) { item->expression = expression; });
        Open_Item("Repeatability", budget);
    }

    QLineEdit* Expression() const { return Find<QLineEdit>("expression"); }

    // What colours and tool tip say: "" for a plain field with its own tool tip, otherwise the error's tool tip.
    QString Hint() const
    {
        const QPalette palette = Expression()->palette();
        const bool is_error =
            palette.color(QPalette::Base) == ERROR_BASE && palette.color(QPalette::Text) == ERROR_TEXT;
        const bool is_plain = palette == QApplication::palette(Expression());

        if (is_plain && Expression()->toolTip() == d_own_tool_tip) {
            return QString();
        }
        return is_error ? Expression()->toolTip() : "neither plain nor an error: " + Expression()->toolTip();
    }

    void Add_Variable(const QString& name)
    {
        d_answer.Type_Name(name);
        QTest::mouseClick(Find<QToolButton>("add_variable"), Qt::LeftButton);
    }

    void Tie_Variable(const QString& name, const QString& component)
    {
        auto* list = Find<QTreeWidget>("variable_list");
        Click_Entry(list, Entry(list, name).siblingAtColumn(1));
        Choose_Entry(Open_Editor<QComboBox>(list), component);
    }

    void Remove_Variable(const QString& name)
    {
        Click_Entry(Find<QTreeWidget>("variable_list"), name);
        QTest::mouseClick(Find<QToolButton>("remove_variable"), Qt::LeftButton);
    }

    const QString d_own_tool_tip;
};

// While it is typed

struct TTyped
{
    const char* name;
    QString expression;
    QString hint;
};

void PrintTo(const TTyped& typed, std::ostream* stream)
{
    *stream << typed.expression.toStdString();
}

class TNorvexaEditorHintTyped : public TNorvexaEditorHint, public ::testing::WithParamInterface<TTyped>
{};

TEST_P(TNorvexaEditorHintTyped, Is_shown_while_the_editor_has_the_focus)
{
    Open_Item("Repeatability");

    Replace_Text(Expression(), GetParam().expression);

    EXPECT_TRUE(Expression()->hasFocus());
    EXPECT_EQ(Hint(), GetParam().hint);
}

TEST_P(TNorvexaEditorHintTyped, Is_the_same_when_the_item_is_shown)
{
    Open_Expression(GetParam().expression);

    EXPECT_EQ(Hint(), GetParam().hint);
}

const TTyped TYPED[] = {
    {"A_number", "0.25", ""},
    {"Built_in_variables", "CTEm+CTEc+CTEd+Sr+Td+Tr+Tg+Sdev+Lc+L", ""},
    {"Built_in_variables_in_another_case", "ctem*SDEV", ""},
    {"A_variable_that_stands_for_a_component", "2*Wear", ""},
    {"The_same_in_another_case", "2*wEAR", ""},
    {"A_variable_that_stands_for_an_item", "sumsq(Slope, 0.1)", ""},
    {"A_variable_whose_component_is_gone", "2*Lost", Invalid_And_Undefined("Lost")},
    {"A_variable_without_a_component", "2*Loose", Invalid_And_Undefined("Loose")},
    {"Unknown_names", "Foo+Td+Bar", Invalid_And_Undefined("Foo, Bar")},
    {"An_unknown_name_that_counts_as_0", "SUMSQ(Foo, 3)", Undefined("Foo")},
    {"An_expression_left_open", "sqrt(2", INVALID},
    {"An_operator_without_its_operand", "Td*", INVALID},
    {"An_unknown_function", "sin(Td)", Invalid_And_Undefined("sin")},
    {"A_decimal_comma", "0,25", INVALID},
};

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorHintTyped, ::testing::ValuesIn(TYPED),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorHint, Follows_every_key)
{
    Open_Item("Repeatability");
    Replace_Text(Expression(), "Wea");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Wea"));

    Type_Text(Expression(), "r");
    EXPECT_EQ(Hint(), "");

    Type_Text(Expression(), "+");
    EXPECT_EQ(Hint(), INVALID);

    QTest::keyClick(Expression(), Qt::Key_Backspace);
    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Typing_changes_nothing_else)
{
    Open_Item("Repeatability");
    const auto* page = d_editor.findChild<TComponentItemWidget*>();
    const QSignalSpy changed(page, &TComponentItemWidget::Component_Item_Changed);
    const QSignalSpy typed(page, &TComponentItemWidget::Expression_Text_Changed);
    const QString log = Log();
    Replace_Text(Expression(), "Td");

    Type_Text(Expression(), "*Foo");

    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(typed.count(), 7); // the old text deleted, six keys
    EXPECT_EQ(Expression()->text(), "Td*Foo");
    EXPECT_TRUE(Expression()->isModified());
    EXPECT_EQ(d_editor.Variable_List("Probe", "Repeatability", QString()), QStringList());
    EXPECT_EQ(Log(), log);
}

TEST_F(TNorvexaEditorHint, An_invalid_expression_is_entered_as_ever)
{
    Open_Item("Repeatability");

    Enter("expression", "2*Foo");

    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));
    TNorvexa document = Hint_Budget().document;
    Change_Item(&document, "Probe", "Repeatability",
                [](TNorvexaData::TComponentItem* item) { item->expression = "2*Foo"; });
    Expect_Modified();
    EXPECT_EQ(Saved_State(), State_Of(document));
}

TEST_F(TNorvexaEditorHint, An_empty_expression_is_shown_as_refused)
{
    Open_Item("Repeatability");

    for (const char* text : {"", "  "}) {
        Replace_Text(Expression(), text);
        EXPECT_EQ(Hint(), EMPTY);
    }
}

TEST_F(TNorvexaEditorHint, An_emptied_editor_is_plain_again_when_its_expression_comes_back)
{
    Open_Item("Repeatability");
    Replace_Text(Expression(), "");
    ASSERT_EQ(Hint(), EMPTY);

    QTest::keyClick(Expression(), Qt::Key_Tab);

    EXPECT_EQ(Expression()->text(), "0.003");
    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Characters_that_are_not_entered_do_not_count)
{
    Open_Item("Repeatability");

    Paste_Text(Expression(), QString("0.2") + QChar(0xfffe) + "5");

    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, A_dark_theme_has_the_same_error_colours)
{
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40), QColor(30, 30, 30)));
    Open_Item("Repeatability");

    Replace_Text(Expression(), "2*Foo");
    const QString error = Hint();
    Replace_Text(Expression(), "2*Td");
    const QString plain = Hint();
    QApplication::setPalette(light);

    EXPECT_EQ(error, Invalid_And_Undefined("Foo"));
    EXPECT_EQ(plain, "");
}

// When an item is shown

TEST_F(TNorvexaEditorHint, Nothing_is_said_before_there_is_an_item)
{
    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Shown_for_an_item_is_no_edit)
{
    Open_Expression("2*Foo");

    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorHint, Is_that_of_the_item_selected)
{
    Open_Expression("2*Foo");

    Select_Entry("Resolution");
    EXPECT_EQ(Hint(), "");

    Select_Entry("Repeatability");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));
}

TEST_F(TNorvexaEditorHint, Goes_when_no_item_is_selected_any_more)
{
    for (const char* entry : {"Probe", "Norvexa Data"}) {
        Open_Expression("2*Foo");
        ASSERT_EQ(Hint(), Invalid_And_Undefined("Foo"));

        Select_Entry(entry);

        EXPECT_EQ(Hint(), "") << entry;
    }
}

TEST_F(TNorvexaEditorHint, Goes_with_the_budget)
{
    Open_Expression("2*Foo");

    Click_Tool("action_new");

    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Is_that_of_the_identifiers_expression)
{
    TBudgetFile budget = Hint_Budget();
    budget.document.Update_Component_Item("Probe", "Repeatability", "SN 1", "2*Foo", false);
    Open_Item("Repeatability", budget);
    ASSERT_EQ(Hint(), "");

    Select_Identifier("SN 1");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));

    Click_Option("use_default_expression");
    EXPECT_EQ(Expression()->text(), "0.003");
    EXPECT_EQ(Hint(), "");

    Click_Option("use_default_expression");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));
}

// The value first in a function is the one whose sign decides whether the function can be read.
TEST_F(TNorvexaEditorHint, Counts_with_the_coefficient_of_component_and_identifier)
{
    TBudgetFile budget = Hint_Budget();
    Change_Item(&budget.document, "Probe", "Resolution",
                [](TNorvexaData::TComponentItem* item) { item->expression = "sqrt(CTEc^2)"; });
    Change_Identifier(&budget.document, "Probe", "SN 1",
                      [](TNorvexaData::TComponentInstance* instance) { instance->expansion_coefficient = -0.001; });
    Open_Item("Resolution", budget);
    ASSERT_EQ(Hint(), "");

    Select_Identifier("SN 1");
    Click_Option("use_default_expression"); // so that the identifier's own text is shown
    Enter("expression", "sqrt(CTEc^2)");
    EXPECT_EQ(Hint(), INVALID);

    Enter("component_expansion_coefficient", "8.5");
    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Counts_with_the_difference_of_the_coefficients_without_its_sign)
{
    TBudgetFile budget = Hint_Budget();
    budget.input_data.machine_expansion_coefficient = 11.5;
    Open_Item("Repeatability", budget);
    Select_Identifier("SN 1"); // 8.5

    Replace_Text(Expression(), "sqrt(CTEd^2)");

    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Counts_with_the_end_of_the_report_range)
{
    Open_Expression("sqrt(L^2)");
    ASSERT_EQ(Hint(), "");
    Click_Tool("action_variables");
    Replace_Text(Find<QLineEdit>("end_position"), "-200");

    Click_Tool("action_components");

    EXPECT_EQ(Hint(), INVALID);
}

// When the variables change

TEST_F(TNorvexaEditorHint, Is_right_again_when_the_page_comes_to_the_front)
{
    Open_Expression("2*Foo");
    Click_Tool("action_variables");
    Add_Variable("Foo");
    Click_Tool("action_components");
    ASSERT_EQ(Hint(), Invalid_And_Undefined("Foo"));

    Click_Tool("action_variables");
    Tie_Variable("Foo", "Probe");
    Press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(Hint(), "");

    Click_Tool("action_variables");
    Remove_Variable("Foo");
    Click_Tool("action_components");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Foo"));
}

TEST_F(TNorvexaEditorHint, Knows_when_the_component_of_a_variable_is_reported_item_by_item)
{
    Open_Expression("2*Wear");
    ASSERT_EQ(Hint(), "");

    Click_Option("mode_single");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Wear"));

    Click_Option("mode_sum");
    EXPECT_EQ(Hint(), "");
}

TEST_F(TNorvexaEditorHint, Knows_when_the_item_of_a_variable_gets_another_name)
{
    TBudgetFile budget = Hint_Budget();
    Change_Item(&budget.document, "Scale", "Drift",
                [](TNorvexaData::TComponentItem* item) { item->expression = "2*Slope"; });
    Open_Item("Drift", budget);
    ASSERT_EQ(Hint(), "");

    Rename("Drift", "Creep");
    EXPECT_EQ(Hint(), Invalid_And_Undefined("Slope"));

    Rename("Creep", "Drift");
    EXPECT_EQ(Hint(), "");
}

} // namespace
