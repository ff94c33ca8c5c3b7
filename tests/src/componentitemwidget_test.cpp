#include "src/componentitemwidget.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

using TOptions = TComponentItemWidget::TRadioOptions;

class TComponentItemWidgetTest : public ::testing::Test
{
protected:
    TComponentItemWidgetTest()
    {
        d_page.Reset_Uncertainty_Types({"Type A", "Type B"});
        d_page.Reset_Distribution_Types({"Normal", "Rectangular", "U"});
    }

    void Show() { Show_Active(&d_page); }

    // How often the page has signalled a change since the last call.
    int Take_Changes()
    {
        const int changes = d_changes.size();
        d_changes.clear();
        return changes;
    }

    QGridLayout* Grid() const { return qobject_cast<QGridLayout*>(d_page.layout()); }

    QWidget* Widget_At(int row, int column) const
    {
        QLayoutItem* item = Grid()->itemAtPosition(row, column);
        return item == nullptr ? nullptr : item->widget();
    }

    QLabel* Title() const { return Child<QLabel>(&d_page, "item_title"); }
    QComboBox* UC_Type() const { return Child<QComboBox>(&d_page, "uc_type"); }
    QComboBox* Distribution() const { return Child<QComboBox>(&d_page, "distribution"); }
    QLineEdit* Sensitivity() const { return Child<QLineEdit>(&d_page, "sensitivity"); }
    QLineEdit* Expression() const { return Child<QLineEdit>(&d_page, "expression"); }
    QLabel* Unit() const { return Child<QLabel>(&d_page, "unit_label"); }
    QCheckBox* Use_Default() const { return Child<QCheckBox>(&d_page, "use_default_expression"); }
    QRadioButton* Independent() const { return Child<QRadioButton>(&d_page, "length_independent"); }
    QRadioButton* Dependent() const { return Child<QRadioButton>(&d_page, "length_dependent"); }
    QRadioButton* Linear() const { return Child<QRadioButton>(&d_page, "linear"); }
    QRadioButton* Temperature() const { return Child<QRadioButton>(&d_page, "temperature"); }

    TComponentItemWidget d_page;
    QSignalSpy d_changes{&d_page, &TComponentItemWidget::Component_Item_Changed};
};

// A click on the text of a box or radio button; beside it a click does nothing.
void Click_Option(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(20, button->height() / 2));
}

// --- Layout -------------------------------------------------------------------------------------------------------

TEST_F(TComponentItemWidgetTest, Is_at_least_300_pixels_wide_and_has_four_columns)
{
    EXPECT_EQ(d_page.minimumWidth(), 300);
    EXPECT_EQ(Grid()->columnCount(), 4);
}

TEST_F(TComponentItemWidgetTest, Has_a_title_of_18_points_underlined_over_the_whole_row)
{
    EXPECT_EQ(Title()->text(), "[Default]");
    EXPECT_EQ(Title()->font().pointSize(), 18);
    EXPECT_TRUE(Title()->font().underline());
    EXPECT_EQ(Title()->textFormat(), Qt::PlainText);
    EXPECT_EQ(Widget_At(0, 0), Title());
    EXPECT_EQ(Widget_At(0, 3), Title());
}

struct TLabelRow
{
    const char* name;
    int row;
    const char* label;
    const char* editor;
};

class TComponentItemWidgetRow : public TComponentItemWidgetTest, public ::testing::WithParamInterface<TLabelRow>
{};

TEST_P(TComponentItemWidgetRow, Has_label_and_editor)
{
    const auto* label = qobject_cast<QLabel*>(Widget_At(GetParam().row, 0));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), GetParam().label);
    ASSERT_NE(label->buddy(), nullptr);
    EXPECT_EQ(label->buddy()->objectName(), GetParam().editor);
    EXPECT_EQ(Widget_At(GetParam().row, 1), label->buddy());
    EXPECT_EQ(Widget_At(GetParam().row, 3), label->buddy());
}

INSTANTIATE_TEST_SUITE_P(TComponentItemWidget, TComponentItemWidgetRow,
                         ::testing::Values(TLabelRow{"uc_type", 1, "UC Type:", "uc_type"},
                                           TLabelRow{"distribution", 2, "Distribution:", "distribution"},
                                           TLabelRow{"sensitivity", 3, "Sensitivity:", "sensitivity"},
                                           TLabelRow{"expression", 4, "Expression:", "expression"}),
                         [](const ::testing::TestParamInfo<TLabelRow>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, Has_the_unit_under_the_expression)
{
    EXPECT_EQ(Widget_At(5, 1), Unit());
    EXPECT_EQ(Widget_At(5, 3), Unit());

    const TComponentItemWidget fresh_page;
    EXPECT_EQ(Child<QLabel>(&fresh_page, "unit_label")->text(), "Uc = f(exp) mm");
}

TEST_F(TComponentItemWidgetTest, Has_a_sunken_line_and_a_section_label_above_the_options)
{
    const auto* line = qobject_cast<QFrame*>(Widget_At(6, 0));
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->frameShape(), QFrame::HLine);
    EXPECT_EQ(line->frameShadow(), QFrame::Sunken);
    EXPECT_EQ(Widget_At(6, 3), line);

    const auto* section = qobject_cast<QLabel*>(Widget_At(7, 0));
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->text(), "Options:");
    EXPECT_EQ(section->font().pointSize(), 18);
    EXPECT_TRUE(section->font().underline());
}

TEST_F(TComponentItemWidgetTest, Has_a_box_for_the_default_expression_that_starts_clear)
{
    EXPECT_EQ(Widget_At(8, 0), Use_Default());
    EXPECT_EQ(Use_Default()->text(), "Use Default Expression");
    EXPECT_FALSE(d_page.Use_Default_Expression());
    EXPECT_TRUE(Expression()->isEnabled());
}

TEST_F(TComponentItemWidgetTest, Has_two_pairs_of_radio_buttons_of_which_the_first_are_checked)
{
    const QLayout* length_pair = Grid()->itemAtPosition(9, 0)->layout();
    ASSERT_EQ(length_pair->count(), 2);
    EXPECT_EQ(length_pair->itemAt(0)->widget(), Independent());
    EXPECT_EQ(length_pair->itemAt(1)->widget(), Dependent());
    EXPECT_EQ(Independent()->text(), "Expression result is independent of length");
    EXPECT_EQ(Dependent()->text(), "Expression result is length dependent");

    const QLayout* kind_pair = Grid()->itemAtPosition(10, 0)->layout();
    ASSERT_EQ(kind_pair->count(), 2);
    EXPECT_EQ(kind_pair->itemAt(0)->widget(), Linear());
    EXPECT_EQ(kind_pair->itemAt(1)->widget(), Temperature());
    EXPECT_EQ(Linear()->text(), "Expression describes a linear dimension");
    EXPECT_EQ(Temperature()->text(), "Expression describes temperature");

    EXPECT_TRUE(Independent()->isChecked());
    EXPECT_TRUE(Linear()->isChecked());
    EXPECT_EQ(d_page.Radio_Options(), TComponentItemWidget::INDEPENDENT_LINEAR);
}

TEST_F(TComponentItemWidgetTest, The_Tab_key_walks_down_the_page)
{
    Show();
    UC_Type()->setFocus();
    QStringList walk;
    for (int i = 0; i < 8; ++i) {
        walk.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    // A pair of radio buttons is one stop.
    EXPECT_EQ(walk, QStringList({"uc_type", "distribution", "sensitivity", "expression", "use_default_expression",
                                 "length_independent", "linear", "uc_type"}));
}

TEST_F(TComponentItemWidgetTest, Its_labels_have_no_mnemonics)
{
    for (const QLabel* label : d_page.findChildren<QLabel*>()) {
        EXPECT_FALSE(label->text().contains('&')) << label->text().toStdString();
    }
    for (const QAbstractButton* button : d_page.findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(button->text().contains('&')) << button->text().toStdString();
    }
}

// --- Title --------------------------------------------------------------------------------------------------------

struct TIdentifierRow
{
    const char* name;
    const char* identifier;
    const char* title;
};

class TComponentItemWidgetTitle : public TComponentItemWidgetTest, public ::testing::WithParamInterface<TIdentifierRow>
{};

TEST_P(TComponentItemWidgetTitle, Names_the_identifier_letter_by_letter)
{
    d_page.Set_Idenfitier_Name(GetParam().identifier);
    EXPECT_EQ(Title()->text(), GetParam().title);
    EXPECT_EQ(Take_Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(TComponentItemWidget, TComponentItemWidgetTitle,
                         ::testing::Values(TIdentifierRow{"plain", "SN 100", "Identifier: SN 100"},
                                           TIdentifierRow{"default", "[Default]", "Identifier: [Default]"},
                                           TIdentifierRow{"empty", "", "Identifier: "},
                                           TIdentifierRow{"place_holder", "%1 %2", "Identifier: %1 %2"},
                                           TIdentifierRow{"markup", "<b>x</b> & y", "Identifier: <b>x</b> & y"}),
                         [](const ::testing::TestParamInfo<TIdentifierRow>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, A_long_title_does_not_widen_the_page)
{
    const int width = d_page.minimumSizeHint().width();

    d_page.Set_Idenfitier_Name(QString("x").repeated(100));
    EXPECT_EQ(d_page.minimumSizeHint().width(), width);
}

// --- Types --------------------------------------------------------------------------------------------------------

TEST_F(TComponentItemWidgetTest, Filled_lists_show_their_first_entries_without_a_signal)
{
    EXPECT_EQ(d_page.UCType(), "Type A");
    EXPECT_EQ(d_page.Distribution_Type(), "Normal");

    d_page.Reset_Uncertainty_Types({"Type B", "Type C"});
    d_page.Reset_Distribution_Types({"Step"});
    EXPECT_EQ(d_page.UCType(), "Type B");
    EXPECT_EQ(UC_Type()->count(), 2);
    EXPECT_EQ(d_page.Distribution_Type(), "Step");
    EXPECT_EQ(Distribution()->count(), 1);
    EXPECT_EQ(Take_Changes(), 0);
}

TEST_F(TComponentItemWidgetTest, A_type_set_by_the_program_is_selected_without_a_signal)
{
    d_page.Set_UCType("Type B");
    d_page.Set_Distribution_Type("U");
    EXPECT_EQ(d_page.UCType(), "Type B");
    EXPECT_EQ(d_page.Distribution_Type(), "U");
    EXPECT_EQ(Take_Changes(), 0);
}

struct TUnknownType
{
    const char* name;
    const char* uc_type;
    const char* distribution;
};

class TComponentItemWidgetUnknownType : public TComponentItemWidgetTest,
                                        public ::testing::WithParamInterface<TUnknownType>
{};

TEST_P(TComponentItemWidgetUnknownType, Leaves_the_selection_alone)
{
    d_page.Set_UCType("Type B");
    d_page.Set_Distribution_Type("U");
    d_page.Set_UCType(GetParam().uc_type);
    d_page.Set_Distribution_Type(GetParam().distribution);
    EXPECT_EQ(d_page.UCType(), "Type B");
    EXPECT_EQ(d_page.Distribution_Type(), "U");
}

INSTANTIATE_TEST_SUITE_P(TComponentItemWidget, TComponentItemWidgetUnknownType,
                         ::testing::Values(TUnknownType{"other_case", "type a", "normal"},
                                           TUnknownType{"part", "Type", "Norm"}, TUnknownType{"empty", "", ""},
                                           TUnknownType{"longer", "Type A ", "Normal "}),
                         [](const ::testing::TestParamInfo<TUnknownType>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, A_type_chosen_by_the_user_is_signalled)
{
    Show();
    Choose_Entry(UC_Type(), "Type B");
    EXPECT_EQ(d_page.UCType(), "Type B");
    EXPECT_EQ(Take_Changes(), 1);

    Distribution()->setFocus();
    QTest::keyClick(Distribution(), Qt::Key_Down);
    EXPECT_EQ(d_page.Distribution_Type(), "Rectangular");
    EXPECT_EQ(Take_Changes(), 1);
}

// --- Sensitivity --------------------------------------------------------------------------------------------------

struct TSensitivityRow
{
    const char* name;
    double value;
    const char* text;
};

class TComponentItemWidgetSensitivity : public TComponentItemWidgetTest,
                                        public ::testing::WithParamInterface<TSensitivityRow>
{};

TEST_P(TComponentItemWidgetSensitivity, Is_shown_with_six_decimals)
{
    d_page.Set_Sensitivity(GetParam().value);
    EXPECT_EQ(Sensitivity()->text(), GetParam().text);
    EXPECT_EQ(d_page.Sensitivity_Text(), GetParam().text);
    EXPECT_EQ(d_page.Sensitivity(), QString(GetParam().text).toDouble());
    EXPECT_EQ(Take_Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(TComponentItemWidget, TComponentItemWidgetSensitivity,
                         ::testing::Values(TSensitivityRow{"one", 1.0, "1.000000"},
                                           TSensitivityRow{"rounded", 0.12345678, "0.123457"},
                                           TSensitivityRow{"negative", -2.5, "-2.500000"},
                                           TSensitivityRow{"small", 0.0000001, "0.000000"}),
                         [](const ::testing::TestParamInfo<TSensitivityRow>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, A_typed_sensitivity_is_signalled_when_editing_is_finished)
{
    Show();
    Replace_Text(Sensitivity(), "0.5");
    EXPECT_TRUE(Sensitivity()->isModified());
    EXPECT_EQ(Take_Changes(), 0);

    QTest::keyClick(Sensitivity(), Qt::Key_Tab);
    EXPECT_EQ(Take_Changes(), 1);
    EXPECT_EQ(d_page.Sensitivity(), 0.5);
    EXPECT_EQ(d_page.Sensitivity_Text(), "0.5");
    EXPECT_FALSE(Sensitivity()->isModified());
}

TEST_F(TComponentItemWidgetTest, A_sensitivity_that_is_no_number_counts_as_0_and_is_explained)
{
    Show();
    Replace_Text(Sensitivity(), "0,5");
    QTest::keyClick(Sensitivity(), Qt::Key_Tab);
    EXPECT_EQ(d_page.Sensitivity(), 0.0);
    EXPECT_EQ(d_page.Sensitivity_Text(), "0,5");
    EXPECT_EQ(Sensitivity()->toolTip(), "Not a number, counts as 0: use a point as decimal separator, not a comma.");
}

// --- Expression ---------------------------------------------------------------------------------------------------

TEST_F(TComponentItemWidgetTest, An_expression_set_by_the_program_is_shown_without_a_signal)
{
    d_page.Set_Expression("0.001 + L * CTEd");
    EXPECT_EQ(Expression()->text(), "0.001 + L * CTEd");
    EXPECT_EQ(d_page.Expression(), "0.001 + L * CTEd");
    EXPECT_EQ(Take_Changes(), 0);
}

TEST_F(TComponentItemWidgetTest, A_typed_expression_is_signalled_when_editing_is_finished)
{
    Show();
    d_page.Set_Expression("0.001");
    Replace_Text(Expression(), "2 * L");
    EXPECT_TRUE(Expression()->isModified());
    EXPECT_EQ(Take_Changes(), 0);

    QTest::keyClick(Expression(), Qt::Key_Tab);
    EXPECT_EQ(Take_Changes(), 1);
    EXPECT_EQ(d_page.Expression(), "2 * L");
    EXPECT_FALSE(Expression()->isModified());
}

TEST_F(TComponentItemWidgetTest, The_cursor_stays_when_the_Return_key_finishes_an_expression)
{
    Show();
    d_page.Set_Expression("0.001");
    Replace_Text(Expression(), "2 * L");
    Expression()->setCursorPosition(1);
    QTest::keyClick(Expression(), Qt::Key_Return);
    EXPECT_EQ(Take_Changes(), 1);
    EXPECT_EQ(Expression()->cursorPosition(), 1);
}

struct TBlankRow
{
    const char* name;
    QString text;
};

class TComponentItemWidgetBlankExpression : public TComponentItemWidgetTest,
                                            public ::testing::WithParamInterface<TBlankRow>
{};

TEST_P(TComponentItemWidgetBlankExpression, Goes_back_to_the_one_before_without_a_signal)
{
    Show();
    d_page.Set_Expression("0.001");
    Paste_Text(Expression(), GetParam().text);
    QTest::keyClick(Expression(), Qt::Key_Tab);
    EXPECT_EQ(d_page.Expression(), "0.001");
    EXPECT_FALSE(Expression()->isModified());
    EXPECT_EQ(Take_Changes(), 0);

    // The one before is also one that the user has typed.
    Replace_Text(Expression(), "2 * L");
    QTest::keyClick(Expression(), Qt::Key_Tab);
    EXPECT_EQ(Take_Changes(), 1);
    Paste_Text(Expression(), GetParam().text);
    QTest::keyClick(Expression(), Qt::Key_Return);
    EXPECT_EQ(d_page.Expression(), "2 * L");
    EXPECT_EQ(Take_Changes(), 0);
}

INSTANTIATE_TEST_SUITE_P(TComponentItemWidget, TComponentItemWidgetBlankExpression,
                         ::testing::Values(TBlankRow{"blanks", "   "}, TBlankRow{"no_break_space", QChar(0xA0)},
                                           TBlankRow{"tab", "\t"}, TBlankRow{"control_characters", QChar(0x1)}),
                         [](const ::testing::TestParamInfo<TBlankRow>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, An_expression_deleted_by_keyboard_goes_back_to_the_one_before)
{
    Show();
    d_page.Set_Expression("0.001");
    Replace_Text(Expression(), "");
    EXPECT_EQ(d_page.Expression(), "");

    QTest::keyClick(Expression(), Qt::Key_Tab);
    EXPECT_EQ(d_page.Expression(), "0.001");
    EXPECT_EQ(Take_Changes(), 0);
}

TEST_F(TComponentItemWidgetTest, Control_characters_are_taken_out_of_an_expression)
{
    Show();
    d_page.Set_Expression("0.001");
    Paste_Text(Expression(), QString("1") + QChar(0x2) + "+ 2");
    QTest::keyClick(Expression(), Qt::Key_Tab);
    EXPECT_EQ(d_page.Expression(), "1+ 2");
    EXPECT_EQ(Take_Changes(), 1);
}

TEST_F(TComponentItemWidgetTest, A_page_that_goes_while_an_expression_is_typed_signals_nothing)
{
    auto page = std::make_unique<TComponentItemWidget>();
    int changes = 0;
    QObject::connect(page.get(), &TComponentItemWidget::Component_Item_Changed, &d_page, [&changes] { ++changes; });
    Show_Active(page.get());
    Replace_Text(Child<QLineEdit>(page.get(), "expression"), "2 * L");

    page.reset();
    EXPECT_EQ(changes, 0);
}

// --- The default expression ---------------------------------------------------------------------------------------

TEST_F(TComponentItemWidgetTest, The_expression_can_be_edited_while_the_default_is_not_used)
{
    Show();
    Click_Option(Use_Default());
    EXPECT_TRUE(d_page.Use_Default_Expression());
    EXPECT_FALSE(Expression()->isEnabled());
    EXPECT_EQ(Take_Changes(), 1);

    Use_Default()->setFocus();
    QTest::keyClick(Use_Default(), Qt::Key_Space);
    EXPECT_FALSE(d_page.Use_Default_Expression());
    EXPECT_TRUE(Expression()->isEnabled());
    EXPECT_EQ(Take_Changes(), 1);
}

TEST_F(TComponentItemWidgetTest, The_editor_has_followed_the_box_when_the_change_is_signalled)
{
    Show();
    QList<bool> enabled;
    QObject::connect(&d_page, &TComponentItemWidget::Component_Item_Changed, &d_page,
                     [&] { enabled.append(Expression()->isEnabled()); });
    Click_Option(Use_Default());
    Click_Option(Use_Default());
    EXPECT_EQ(enabled, QList<bool>({false, true}));
}

TEST_F(TComponentItemWidgetTest, The_editor_follows_the_box_when_the_program_sets_it_without_a_signal)
{
    d_page.Set_Option_Use_Default(true);
    EXPECT_TRUE(d_page.Use_Default_Expression());
    EXPECT_FALSE(Expression()->isEnabled());

    d_page.Set_Option_Use_Default(false);
    EXPECT_FALSE(d_page.Use_Default_Expression());
    EXPECT_TRUE(Expression()->isEnabled());
    EXPECT_EQ(Take_Changes(), 0);
}

TEST_F(TComponentItemWidgetTest, A_disabled_box_cannot_be_clicked)
{
    Show();
    d_page.Enable_Option_Use_Default(false);
    Click_Option(Use_Default());
    EXPECT_FALSE(Use_Default()->isEnabled());
    EXPECT_FALSE(d_page.Use_Default_Expression());
    EXPECT_TRUE(Expression()->isEnabled());
    EXPECT_EQ(Take_Changes(), 0);

    d_page.Enable_Option_Use_Default(true);
    Click_Option(Use_Default());
    EXPECT_TRUE(d_page.Use_Default_Expression());
    EXPECT_EQ(Take_Changes(), 1);
}

TEST_F(TComponentItemWidgetTest, Its_slots_signal_a_change_when_they_are_called)
{
    d_page.Expression_Changed();
    EXPECT_EQ(Take_Changes(), 1);
    d_page.Item_Modified();
    EXPECT_EQ(Take_Changes(), 1);
    d_page.Use_Default_Toggled(true);
    EXPECT_FALSE(Expression()->isEnabled());
    EXPECT_EQ(Take_Changes(), 0);
}

// --- The radio pairs ----------------------------------------------------------------------------------------------

struct TOptionsRow
{
    const char* name;
    int value;
    bool is_length_dependent;
    bool is_temperature;
    const char* unit;
};

class TComponentItemWidgetOptions : public TComponentItemWidgetTest, public ::testing::WithParamInterface<TOptionsRow>
{
protected:
    void Expect_Shown() const
    {
        EXPECT_EQ(d_page.Radio_Options(), static_cast<TOptions>(GetParam().value));
        EXPECT_EQ(Independent()->isChecked(), !GetParam().is_length_dependent);
        EXPECT_EQ(Dependent()->isChecked(), GetParam().is_length_dependent);
        EXPECT_EQ(Linear()->isChecked(), !GetParam().is_temperature);
        EXPECT_EQ(Temperature()->isChecked(), GetParam().is_temperature);
        EXPECT_EQ(Unit()->text(), GetParam().unit);
    }
};

TEST_P(TComponentItemWidgetOptions, Set_by_the_program_are_shown_without_a_signal)
{
    d_page.Set_Radio_Options(static_cast<TOptions>(GetParam().value));
    Expect_Shown();
    EXPECT_EQ(Take_Changes(), 0);
}

TEST_P(TComponentItemWidgetOptions, Clicked_by_the_user_are_shown_and_signalled)
{
    Show();
    d_page.Set_Radio_Options(static_cast<TOptions>(3 - GetParam().value));
    Click_Option(GetParam().is_length_dependent ? Dependent() : Independent());
    // One of the pair goes off, the other on.
    EXPECT_EQ(Take_Changes(), 2);
    Click_Option(GetParam().is_temperature ? Temperature() : Linear());
    EXPECT_EQ(Take_Changes(), 2);
    Expect_Shown();
}

TEST_P(TComponentItemWidgetOptions, Have_settled_when_a_change_is_signalled)
{
    Show();
    d_page.Set_Radio_Options(static_cast<TOptions>(GetParam().value ^ 1));
    QList<int> options;
    QStringList units;
    QObject::connect(&d_page, &TComponentItemWidget::Component_Item_Changed, &d_page, [&] {
        options.append(d_page.Radio_Options());
        units.append(Unit()->text());
    });
    Click_Option(GetParam().is_temperature ? Temperature() : Linear());
    EXPECT_EQ(options, QList<int>({GetParam().value, GetParam().value}));
    EXPECT_EQ(units, QStringList({GetParam().unit, GetParam().unit}));
}

INSTANTIATE_TEST_SUITE_P(
    TComponentItemWidget, TComponentItemWidgetOptions,
    ::testing::Values(TOptionsRow{"independent_linear", 0, false, false, "Uc = f(expression) mm"},
                      TOptionsRow{"independent_temperature", 1, false, true, "Uc = f(expression) C"},
                      TOptionsRow{"length_dependent_linear", 2, true, false, "Uc = f(expression) mm/m"},
                      TOptionsRow{"length_dependent_temperature", 3, true, true, "Uc = f(expression) C/m"}),
    [](const ::testing::TestParamInfo<TOptionsRow>& row) { return row.param.name; });

TEST_F(TComponentItemWidgetTest, The_arrow_keys_choose_within_a_pair)
{
    Show();
    Linear()->setFocus();
    QTest::keyClick(Linear(), Qt::Key_Down);
    EXPECT_EQ(d_page.Radio_Options(), TComponentItemWidget::INDEPENDENT_TEMPERATURE);
    EXPECT_EQ(Unit()->text(), "Uc = f(expression) C");
    EXPECT_EQ(Take_Changes(), 2);
}

} // namespace
