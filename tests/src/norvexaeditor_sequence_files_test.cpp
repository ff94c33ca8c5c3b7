#include "tests/support/sequencefixture.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <functional>
#include <string>

namespace {

class TSequenceFiles : public TSequenceFixture
{
protected:
    /// A budget of four components whose third has no length.
    void Write_File_That_Breaks_Off(const QString& name)
    {
        TBudgetFile budget;
        for (const char* component : {"One", "Two", "Three", "Four"}) {
            budget.document.Add_Component(component);
        }
        budget.variables = {{"Other", "One", -1, 0.0}};
        budget.groups = {{"Others", {"One"}}};
        Write_Budget(budget, Path(name));

        QByteArray bytes = Bytes(Path(name));
        const int length = bytes.indexOf("<Length>", bytes.indexOf("<Name>Three</Name>"));
        const int end = bytes.indexOf("</Length>", length) + static_cast<int>(qstrlen("</Length>"));
        Write_Bytes(Path(name), bytes.remove(length, end - length));
    }
};

/// What a variable's name keeps of white space.
QString With_Underscores(QString name)
{
    return name.replace('\n', '_').replace('\r', '_');
}

} // namespace

// Opening

TEST_F(TSequenceFiles, A_file_that_fails_in_its_third_component_leaves_the_open_budget_to_every_click)
{
    TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Write_File_That_Breaks_Off("bad.norvexa");

    Drop_Files({Path("bad.norvexa")});
    EXPECT_EQ(Log(), "ERR:  Node 'Length' is missing from node 'Component' and not optional.");
    EXPECT_EQ(Page(), "Log");
    Click_Everything();
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))");
    EXPECT_EQ(User_Variables(), QStringList("Wear: Probe"));
    Show_Page("Budget Components");
    Select_Entry("Probe");
    Enter("component_length", "7.5");

    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceFiles, A_cancelled_Open_leaves_the_components_to_be_edited_and_saved)
{
    TBudgetFile expected = Workshop_Budget();
    const QString path = Open_Budget(expected);
    d_answer.Cancel_File();

    Click_Tool("action_open");
    Select_Entry("Probe");
    Enter("component_length", "7.5");
    Click_Tool("action_save");

    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    expected.groups.clear(); // the command empties them before it asks for the file
    EXPECT_EQ(State_Of(Read_Budget(path).document), State_Of(expected.document));
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

// Odd characters

TEST_F(TSequenceFiles, Names_and_expressions_pasted_with_odd_characters_are_saved_and_opened)
{
    const QString pasted = QString::fromUcs4(U"a\U0001D462b\u0001c\nd\r\ne");
    const QString kept = QString::fromUcs4(U"a\U0001D462bc\nd\r\ne");
    d_answer.Paste_Name(pasted);
    QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton);
    ASSERT_EQ(Tree_Text(), QString("Norvexa Data(%1())").arg(kept));
    Add_Item(kept, "Wear");
    auto* editor = Type_In_Entry(Tree(), "Wear", "");
    Paste_Text(editor, pasted);
    QTest::keyClick(editor, Qt::Key_Return);
    Paste_Text(Find<QLineEdit>("expression"), pasted);
    Press(Qt::Key_Return);
    Save_As(Path("odd.norvexa"));

    d_answer.Choose_File(Path("odd.norvexa"));
    Click_Tool("action_open");

    TBudgetFile expected;
    expected.document.Add_Component(kept);
    expected.document.Add_Component_Item(kept, kept);
    expected.document.Update_Component_Item(kept, kept, QString(), kept, false);
    EXPECT_EQ(Tree_Text(), QString("Norvexa Data(%1(%1))").arg(kept));
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceFiles, Identifiers_variables_and_groups_pasted_with_odd_characters_are_saved_and_opened)
{
    const QString pasted = QString::fromUcs4(U"a\U0001D462b\u0001c\nd\r\ne");
    const QString kept = QString::fromUcs4(U"a\U0001D462bc\nd\r\ne");
    Add_Component("Probe");
    d_answer.Paste_Name(pasted);
    QTest::mouseClick(Find<QToolButton>("add_identifier"), Qt::LeftButton);
    Show_Page("Variables");
    d_answer.Paste_Name(pasted);
    QTest::mouseClick(Find<QToolButton>("add_variable"), Qt::LeftButton);
    Show_Page("Report Groups");
    d_answer.Paste_Name(pasted);
    QTest::mouseClick(Find<QToolButton>("add_group"), Qt::LeftButton);

    TBudgetFile expected;
    expected.document.Add_Component("Probe");
    expected.document.Component_Add_Identifier("Probe", kept);
    expected.variables = {{With_Underscores(kept), QString(), -1, 0.0}};
    expected.groups = {{kept, {}}};
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceFiles, Names_with_the_signs_of_markup_gain_one_escape_in_the_file)
{
    const QString name = "<b>&\"";
    const QString saved = "&lt;b&gt;&amp;&quot;";
    Add_Component(name);
    Add_Item(name, name);
    Enter("expression", name);
    Add_Identifier(name);

    TBudgetFile expected;
    expected.document.Add_Component(saved);
    expected.document.Add_Component_Item(saved, saved);
    expected.document.Update_Component_Item(saved, saved, QString(), saved, false);
    expected.document.Component_Add_Identifier(saved, saved);
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Questions

struct TQuestion
{
    const char* name;
    const char* text;
    std::function<void(TNorvexaEditor*)> ask;
};

void PrintTo(const TQuestion& row, std::ostream* stream)
{
    *stream << row.name;
}

void Click_Button(const TNorvexaEditor* window, const char* button)
{
    QTest::mouseClick(Child<QToolButton>(window, button), Qt::LeftButton);
}

const TQuestion QUESTIONS[] = {
    {"New", "Data Not Saved", [](TNorvexaEditor* window) { QTest::keyClick(window, Qt::Key_N, Qt::ControlModifier); }},
    {"Open", "Data Not Saved", [](TNorvexaEditor* window) { QTest::keyClick(window, Qt::Key_O, Qt::ControlModifier); }},
    {"Close", "Data Not Saved", [](TNorvexaEditor* window) { window->close(); }},
    {"Removing_a_component", "Delete Components",
     [](TNorvexaEditor* window) { Click_Button(window, "remove_budget_item"); }},
    {"Removing_an_identifier", "Delete Selected Component Identifiers",
     [](TNorvexaEditor* window) { Click_Button(window, "remove_identifier"); }},
};

class TSequenceQuestion : public TSequenceFiles, public ::testing::WithParamInterface<TQuestion>
{
protected:
    /// A change that is not saved, and a component and an identifier that are selected.
    TBudgetFile Open_And_Change()
    {
        TBudgetFile budget = Workshop_Budget();
        Open_Budget(budget);
        Select_Entry("Probe");
        Select_Identifier("SN 1");
        Enter("component_length", "7.5");
        Change_Identifier(&budget.document, "Probe", "SN 1",
                          [](TNorvexaData::TComponentInstance* record) { record->length = 7.5; });
        return budget;
    }

    void Expect_Asked_And_Unchanged(const TBudgetFile& expected)
    {
        ASSERT_EQ(d_answer.Seen_Count(), 1);
        EXPECT_EQ(d_answer.Seen(0).text, GetParam().text);
        EXPECT_TRUE(d_editor.isVisible());
        EXPECT_EQ(Saving(), "Save, Save As");
        EXPECT_TRUE(Component_Page().startsWith("Probe: SN 1*, SN 2; ")) << Component_Page().toStdString();
        EXPECT_EQ(Check(), Model_Of(expected));
    }
};

TEST_P(TSequenceQuestion, Left_by_Escape_changes_nothing)
{
    const TBudgetFile expected = Open_And_Change();
    d_answer.Press(Qt::Key_Escape);

    GetParam().ask(&d_editor);

    Expect_Asked_And_Unchanged(expected);
}

TEST_P(TSequenceQuestion, Closed_by_its_frame_changes_nothing)
{
    const TBudgetFile expected = Open_And_Change();
    d_answer.Close_Message();

    GetParam().ask(&d_editor);

    Expect_Asked_And_Unchanged(expected);
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceQuestion, ::testing::ValuesIn(QUESTIONS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TSequenceFiles, The_question_whether_to_replace_a_file_left_by_Escape_or_closed_leaves_the_file)
{
    const TBudgetFile expected = Workshop_Budget();
    Open_Budget(expected);
    Write_Bytes(Path("old.norvexa"), "old");
    d_answer.Choose_File(Path("old"));
    d_answer.Press(Qt::Key_Escape);
    d_answer.Choose_File(Path("old"));
    d_answer.Close_Message();

    Click_Tool("action_save_as");
    Click_Tool("action_save_as");

    EXPECT_EQ(d_answer.Seen(1).text, "File Exists");
    EXPECT_EQ(d_answer.Seen(3).text, "File Exists");
    EXPECT_EQ(Bytes(Path("old.norvexa")), "old");
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}
