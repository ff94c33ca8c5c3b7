#include "tests/support/editorfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <functional>
#include <string>
#include <vector>

namespace {

// Typing that leaves the editor open. All of it happens on the sample budget; `line` is what its file says once the
// text has arrived.
struct TTyping
{
    const char* name;
    std::function<void(TNorvexaEditor*)> type;
    const char* line;
    bool sets_modified_flag;
};

void Select_In_Tree(const TNorvexaEditor* window, const QString& name)
{
    Click_Entry(Child<QTreeWidget>(window, "budget_tree"), name);
}

void Select_Identifier(const TNorvexaEditor* window)
{
    Select_In_Tree(window, "Probe");
    Click_Entry(Child<QListWidget>(window, "identifier_list"), "SN 1");
}

void Show_Page(const TNorvexaEditor* window, const QString& label)
{
    Select_Tab(Child<QTabWidget>(window, "pages"), label);
}

void Type_In_Field(const TNorvexaEditor* window, const QString& field, const QString& text)
{
    Replace_Text(Child<QLineEdit>(window, field), text);
}

void Type_Year(const TNorvexaEditor* window, const QString& date, const QString& year)
{
    Select_Identifier(window);
    auto* edit = Child<QDateEdit>(window, date);
    QTest::mouseClick(edit, Qt::LeftButton);
    edit->setSelectedSection(QDateTimeEdit::YearSection);
    Type_Text(edit, year);
}

// The cell of the variable "Wear", whose list is opened and left on "Scale".
void Choose_In_Cell(const TNorvexaEditor* window)
{
    Show_Page(window, "Variables");
    auto* list = Child<QTreeWidget>(window, "variable_list");
    Click_Entry(list, list->model()->index(list->topLevelItemCount() - 1, 1));
    auto* combo = Open_Editor<QComboBox>(list);
    if (combo == nullptr) {
        Fail_Missing("opened cell");
    }
    QTest::keyClick(combo, Qt::Key_Down);
}

const TTyping TYPINGS[] = {
    {"The_length_of_a_component",
     [](TNorvexaEditor* window) {
         Select_In_Tree(window, "Scale");
         Type_In_Field(window, "component_length", "7.25");
     },
     "component <Scale> mode=0 length=7.25 expansion=0.01 equipment=0 limit=0", true},
    {"The_length_of_an_identifier",
     [](TNorvexaEditor* window) {
         Select_Identifier(window);
         Type_In_Field(window, "component_length", "7.25");
     },
     "length=7.25", true},
    {"An_expansion_coefficient",
     [](TNorvexaEditor* window) {
         Select_In_Tree(window, "Scale");
         Type_In_Field(window, "component_expansion_coefficient", "8");
     },
     "component <Scale> mode=0 length=0 expansion=0.0080000000000000002", true},
    {"A_calibration_date", [](TNorvexaEditor* window) { Type_Year(window, "calibration_date", "2031"); }, " 2031> <",
     true},
    {"A_calibration_due_date", [](TNorvexaEditor* window) { Type_Year(window, "calibration_due_date", "2032"); },
     " 2032> length", true},
    {"A_sensitivity",
     [](TNorvexaEditor* window) {
         Select_In_Tree(window, "Drift");
         Type_In_Field(window, "sensitivity", "0.5");
     },
     "item <Drift> <0.0000> distribution=0 expression=0 type=1 sensitivity=0.5", true},
    {"An_expression",
     [](TNorvexaEditor* window) {
         Select_In_Tree(window, "Drift");
         Type_In_Field(window, "expression", "Sr * 2");
     },
     "item <Drift> <Sr * 2>", true},
    {"An_input",
     [](TNorvexaEditor* window) {
         Show_Page(window, "Variables");
         Type_In_Field(window, "end_position", "640");
     },
     "input 640", true},
    {"A_component_in_the_tree",
     [](TNorvexaEditor* window) { Type_In_Entry(Child<QTreeWidget>(window, "budget_tree"), "Scale", "Ruler"); },
     "component <Ruler>", false},
    {"An_item_in_the_tree",
     [](TNorvexaEditor* window) { Type_In_Entry(Child<QTreeWidget>(window, "budget_tree"), "Drift", "Wear"); },
     "item <Wear>", false},
    {"An_identifier_in_its_list",
     [](TNorvexaEditor* window) {
         Select_Identifier(window);
         Type_In_Entry(Child<QListWidget>(window, "identifier_list"), "SN 1", "SN 9");
     },
     "identifier <SN 9>", true},
    {"A_group_in_its_list",
     [](TNorvexaEditor* window) {
         Show_Page(window, "Report Groups");
         Type_In_Entry(Child<QListWidget>(window, "group_list"), "Length", "Height");
     },
     "group <Height>", true},
    {"A_cell_of_the_variables", Choose_In_Cell, "variable <Wear> <Scale>", true},
};

std::string Typing_Name(const ::testing::TestParamInfo<TTyping>& row)
{
    return row.param.name;
}

class TNorvexaEditorTyping : public TEditorFixture, public ::testing::WithParamInterface<TTyping>
{
protected:
    void SetUp() override
    {
        d_path = Open_Budget(Sample_Budget());
        ASSERT_EQ(Lines_With(d_path, GetParam().line), QStringList());
        GetParam().type(&d_editor);
    }

    QStringList Lines_With(const QString& path, const QString& text) const
    {
        return Budget_File_Text(Read_Budget(path)).filter(text);
    }

    void Expect_Saved(const QString& path)
    {
        EXPECT_EQ(Lines_With(path, GetParam().line).size(), 1)
            << Budget_File_Text(Read_Budget(path)).join('\n').toStdString();
    }

    QString d_path;
};

TEST_P(TNorvexaEditorTyping, Enables_saving_at_once)
{
    EXPECT_EQ(Saving(), "Save, Save As");
}

TEST_P(TNorvexaEditorTyping, Is_saved_by_the_tool_button)
{
    Click_Tool("action_save");

    Expect_Saved(d_path);
    EXPECT_EQ(Saving(), "Save As");
}

TEST_P(TNorvexaEditorTyping, Is_saved_by_the_menu)
{
    Choose_In_Menu("File", "Save");

    Expect_Saved(d_path);
}

TEST_P(TNorvexaEditorTyping, Is_saved_by_the_key)
{
    Press(Qt::Key_S, Qt::ControlModifier);

    Expect_Saved(d_path);
    EXPECT_EQ(Saving(), "Save As");
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_P(TNorvexaEditorTyping, Is_saved_under_another_name)
{
    Save_As(Path("other.norvexa"));

    Expect_Saved(Path("other.norvexa"));
}

TEST_P(TNorvexaEditorTyping, Is_there_after_a_drop_that_fails)
{
    if (GetParam().sets_modified_flag) {
        d_answer.Click(QMessageBox::Yes);
    }

    Drop_Files({Path("missing.norvexa")});

    // Whatever is in the document now came with the drop: no editor is open any more.
    EXPECT_EQ(Page(), "Log");
    Save_As(Path("other.norvexa"));
    Expect_Saved(Path("other.norvexa"));
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorTyping, ::testing::ValuesIn(TYPINGS), Typing_Name);

// What was typed makes the budget a modified one before a command looks at it.
class TNorvexaEditorTypingAtRisk : public TNorvexaEditorTyping
{
protected:
    void Expect_Question(const QString& informative_text)
    {
        ASSERT_EQ(d_answer.Seen_Count(), 1);
        EXPECT_EQ(d_answer.Seen(0).text, "Data Not Saved");
        EXPECT_EQ(d_answer.Seen(0).informative_text, informative_text);
        EXPECT_EQ(Saving(), "Save, Save As");
    }

    void Expect_Continue_Question() { Expect_Question("Current data will be lost.  Do you want to continue?"); }
};

TEST_P(TNorvexaEditorTypingAtRisk, Is_asked_about_by_New)
{
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_new");

    Expect_Continue_Question();
}

TEST_P(TNorvexaEditorTypingAtRisk, Is_asked_about_by_Open)
{
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_open");

    Expect_Continue_Question();
}

TEST_P(TNorvexaEditorTypingAtRisk, Is_asked_about_by_the_keys)
{
    d_answer.Click(QMessageBox::No);

    Press(Qt::Key_N, Qt::ControlModifier);

    Expect_Continue_Question();
}

TEST_P(TNorvexaEditorTypingAtRisk, Is_asked_about_by_a_drop)
{
    d_answer.Click(QMessageBox::No);

    Drop_Files({d_path});

    Expect_Continue_Question();
}

TEST_P(TNorvexaEditorTypingAtRisk, Is_asked_about_on_closing)
{
    d_answer.Click(QMessageBox::No);

    EXPECT_FALSE(d_editor.close());

    Expect_Question("Current data will be lost.  Are you sure you want to close?");
}

std::vector<TTyping> Typings_That_Modify()
{
    std::vector<TTyping> typings;
    for (const TTyping& typing : TYPINGS) {
        if (typing.sets_modified_flag) {
            typings.push_back(typing);
        }
    }
    return typings;
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorTypingAtRisk, ::testing::ValuesIn(Typings_That_Modify()), Typing_Name);

class TNorvexaEditorCommit : public TEditorFixture
{
protected:
    QStringList Components(const QString& path) const { return Read_Budget(path).document.Enum_Components(); }
};

// The user goes on typing after a Save in the middle of a text.
TEST_F(TNorvexaEditorCommit, The_focus_stays_in_the_field_that_is_saved)
{
    const QString path = Open_Budget(Sample_Budget());
    Select_Entry("Drift");
    auto* field = Find<QLineEdit>("expression");
    Replace_Text(field, "0.1");
    QTest::keyClick(field, Qt::Key_Left);
    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(QApplication::focusWidget(), field);
    Type_Text(field, "0");
    EXPECT_EQ(field->text(), "0.01");
    EXPECT_EQ(Saving(), "Save, Save As");
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(Read_Budget(path).document.Component_Item("Scale", "Drift").expression, "0.01");
}

TEST_F(TNorvexaEditorCommit, A_field_without_typed_text_is_no_edit)
{
    Open_Budget(Sample_Budget());
    Select_Entry("Scale");
    QTest::mouseClick(Find<QLineEdit>("component_length"), Qt::LeftButton);

    EXPECT_TRUE(d_editor.close());
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorCommit, Typing_in_the_first_budget_enables_both)
{
    Find<QTabWidget>("pages")->setCurrentIndex(1);

    Replace_Text(Find<QLineEdit>("start_position"), "1");

    EXPECT_EQ(Saving(), "Save, Save As");
}

TEST_F(TNorvexaEditorCommit, Typing_in_a_dialog_enables_nothing)
{
    d_answer.Type_Name_And_Cancel("Probe");

    QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton);

    EXPECT_EQ(Saving(), "");
}

// A refused rename must not be in the file either.
TEST_F(TNorvexaEditorCommit, A_name_in_use_is_refused_before_saving)
{
    Open_Budget(Sample_Budget());
    Type_In_Entry(Tree(), "Scale", "Probe");

    Save_As(Path("other.norvexa"));

    EXPECT_EQ(Components(Path("other.norvexa")), QStringList({"Probe", "Scale"}));
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))");
}

TEST_F(TNorvexaEditorCommit, A_blank_expression_is_back_to_the_one_before_in_the_file)
{
    const QString path = Open_Budget(Sample_Budget());
    Select_Entry("Repeatability");
    Replace_Text(Find<QLineEdit>("expression"), " ");

    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(Read_Budget(path).document.Component_Item("Probe", "Repeatability").expression, "0.003");
}

// A file may come from another program, whose window is the active one.
TEST_F(TNorvexaEditorCommit, A_drop_on_an_inactive_window_commits)
{
    const QString path = Open_Budget(Sample_Budget());
    Select_Entry("Drift");
    QWidget other;
    Show_Active(&other);
    auto* field = Find<QLineEdit>("expression");
    Replace_Text(field, "0.7");
    ASSERT_FALSE(field->hasFocus());
    d_answer.Click(QMessageBox::No);

    Drop_Files({path});

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_FALSE(field->isModified());
}

// The button does not take the focus from the name being typed.
TEST_F(TNorvexaEditorCommit, An_item_is_added_to_the_component_whose_name_is_being_typed)
{
    Open_Budget(Sample_Budget());
    Type_In_Entry(Tree(), "Scale", "Ruler");
    d_answer.Type_Name("Wear");

    QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton);

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Ruler(Drift, Wear))");
    EXPECT_EQ(Selected_Entries(), QStringList("Wear"));
}

TEST_F(TNorvexaEditorCommit, An_export_commits_what_was_typed)
{
    TBudgetFile budget = Sample_Budget();
    budget.input_data.report_end = 0.0; // refused, so that no file is asked for
    Open_Budget(budget);
    Select_Entry("Drift");
    auto* field = Find<QLineEdit>("expression");
    Replace_Text(field, "0.7");
    ASSERT_TRUE(field->isModified());

    d_editor.Generate_Export_Report("Length");

    EXPECT_FALSE(field->isModified());
    Save_As(Path("other.norvexa"));
    EXPECT_EQ(Read_Budget(Path("other.norvexa")).document.Component_Item("Scale", "Drift").expression, "0.7");
}

// Ctrl+S is the shortcut of Save and of Save As.

TEST_F(TNorvexaEditorCommit, The_key_does_nothing_while_there_is_nothing_to_save)
{
    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorCommit, The_key_saves_while_both_are_enabled)
{
    const QString path = Open_Budget(Sample_Budget());
    Add_Component("Wire");

    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(Components(path), QStringList({"Probe", "Scale", "Wire"}));
    EXPECT_EQ(d_answer.Seen_Count(), 1);
}

TEST_F(TNorvexaEditorCommit, The_key_asks_for_a_name_once_while_there_is_none)
{
    Add_Component("Probe");
    d_answer.Choose_File(Path("a.norvexa"));

    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_EQ(Components(Path("a.norvexa")), QStringList("Probe"));
}

TEST_F(TNorvexaEditorCommit, The_key_saves_under_a_name_while_only_that_is_enabled)
{
    Open_Budget(Sample_Budget());
    ASSERT_EQ(Saving(), "Save As");
    d_answer.Choose_File(Path("copy.norvexa"));

    Press(Qt::Key_S, Qt::ControlModifier);

    EXPECT_EQ(Components(Path("copy.norvexa")), QStringList({"Probe", "Scale"}));
}

TEST_F(TNorvexaEditorCommit, The_key_works_every_time)
{
    const QString path = Open_Budget(Sample_Budget());
    for (const char* name : {"Wire", "Anvil", "Bench"}) {
        Add_Component(name);
        Press(Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(Components(path).last(), name);
    }
}

TEST_F(TNorvexaEditorCommit, The_key_works_from_every_page)
{
    const QString path = Open_Budget(Sample_Budget());
    for (int index = 0; index < 5; ++index) {
        Find<QTabWidget>("pages")->setCurrentIndex(0);
        Add_Component(QString("New %1").arg(index));
        Find<QTabWidget>("pages")->setCurrentIndex(index);

        Press(Qt::Key_S, Qt::ControlModifier);

        EXPECT_EQ(Components(path).last(), QString("New %1").arg(index));
    }
}

} // namespace
