#include "tests/support/sequencefixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>

#include <functional>
#include <ostream>
#include <sys/stat.h>

namespace {

/// Another budget than Workshop_Budget().
TBudgetFile Other_Budget()
{
    TBudgetFile budget;
    budget.document.Add_Component("Beam");
    budget.variables = {{"Bend", "Beam", -1, 0.0}};
    budget.groups = {{"Height", {"Beam"}}};
    return budget;
}

/// The components of Workshop_Budget(), with other values in every record of "Probe".
TBudgetFile Namesake_Budget()
{
    TBudgetFile budget;
    budget.document = Workshop_Budget().document;
    Change_Component(&budget.document, "Probe", [](TNorvexaData::TComponent* component) {
        component->mode = TNorvexaData::UC_MODE_INDIVIDUAL;
        component->length = 33.0;
        component->expansion_coefficient = 0.02;
        component->export_equipment = true;
        component->limit_uncertainty_length = true;
    });
    Change_Item(&budget.document, "Probe", "Resolution", [](TNorvexaData::TComponentItem* item) {
        item->expression = "0.9";
        item->sensitivity = 2.0;
        item->expression_type = TNorvexaData::LENGTH_DEPENDENT_LINEAR;
        item->uc_type = TNorvexaData::UC_TYPE_A;
        item->distribution = TNorvexaData::DISTRIBUTION_STEP;
    });
    return budget;
}

struct TField
{
    const char* name;
    const char* entry;
    const char* text;
};

void PrintTo(const TField& row, std::ostream* stream)
{
    *stream << row.name;
}

class TSequenceDrops : public TSequenceFixture
{
protected:
    TSequenceDrops() { Open_Budget(Workshop_Budget()); }

    QString Other_File()
    {
        Write_Budget(Other_Budget(), Path("other.norvexa"));
        return Path("other.norvexa");
    }

    QString Linear_File()
    {
        Write_Budget(Linear_Workshop(), Path("linear.norvexa"));
        return Path("linear.norvexa");
    }

    void Drop_Address(const QString& address)
    {
        QMimeData data;
        data.setUrls({QUrl(address)});
        EXPECT_TRUE(Drop_Data(data));
    }

    /// Drops the file as soon as the question is open that `ask` leads to.
    bool Drop_During_Question(const QString& path, const std::function<void()>& ask)
    {
        bool is_taken = true;
        QTimer::singleShot(0, &d_editor, [&]() {
            EXPECT_NE(qobject_cast<QMessageBox*>(QApplication::activeModalWidget()), nullptr);
            is_taken = Drop_Files({path});
        });
        ask();
        return is_taken;
    }

    QString Namesake_File()
    {
        Write_Budget(Namesake_Budget(), Path("namesake.norvexa"));
        return Path("namesake.norvexa");
    }

    /// Types into a field, where the cursor stays, and saves: there is nothing to be asked about.
    void Save_With_Cursor_In(const TField& field)
    {
        Select_Entry(field.entry);
        Enter(field.name, field.text);
        Click_Tool("action_save");
        ASSERT_EQ(Saving(), "Save As");
        ASSERT_TRUE(Find<QLineEdit>(field.name)->hasFocus());
    }

    void Expect_Untouched()
    {
        EXPECT_EQ(Log(), "");
        EXPECT_EQ(Page(), "Budget Components");
        EXPECT_EQ(Check_Unchanged(), Model_Of(Workshop_Budget()));
    }

    void Expect_Refused(const QString& message)
    {
        EXPECT_EQ(Log(), message);
        EXPECT_EQ(Page(), "Log");
        EXPECT_EQ(Check_Unchanged(), Model_Of(Workshop_Budget()));
    }
};

} // namespace

// What is dropped

TEST_F(TSequenceDrops, A_web_address_changes_nothing)
{
    Drop_Address("https://example.org/budget.norvexa");

    Expect_Untouched();
}

TEST_F(TSequenceDrops, A_folder_is_refused)
{
    Drop_Files({d_folder.path()});

    Expect_Refused(QString("ERR:  Cannot open file: '%1'.  Reason: not a regular file").arg(d_folder.path()));
}

TEST_F(TSequenceDrops, A_pipe_that_nobody_writes_to_is_refused_at_once)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(Path("pipe.norvexa")).constData(), 0600), 0);

    Drop_Files({Path("pipe.norvexa")});

    Expect_Refused(QString("ERR:  Cannot open file: '%1'.  Reason: not a regular file").arg(Path("pipe.norvexa")));
}

TEST_F(TSequenceDrops, An_empty_file_is_refused)
{
    Write_Bytes(Path("empty.norvexa"), "");

    Drop_Files({Path("empty.norvexa")});

    Expect_Refused("ERR:  Reference file XML parse error at line unexpected end of file column 1: 1");
}

TEST_F(TSequenceDrops, Ten_thousand_files_at_once_change_nothing)
{
    QStringList paths;
    for (int index = 0; index < 10000; ++index) {
        paths << Path(QStringLiteral("%1.norvexa").arg(index));
    }

    Drop_Files(paths);

    Expect_Untouched();
}

TEST_F(TSequenceDrops, The_same_file_twice_at_once_changes_nothing)
{
    const QString path = Other_File();

    Drop_Files({path, path});

    Expect_Untouched();
}

TEST_F(TSequenceDrops, The_same_file_twice_in_a_row_gives_its_budget_once)
{
    const QString path = Other_File();

    Drop_Files({path});
    Drop_Files({path});

    EXPECT_EQ(User_Variables(), QStringList("Bend: Beam"));
    EXPECT_EQ(Groups(), QStringList("Height"));
    EXPECT_EQ(Available_Components(), QStringList("Beam"));
    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_file_is_not_loaded_when_its_question_is_left_by_Escape_or_closed)
{
    TBudgetFile expected = Workshop_Budget();
    const QString path = Other_File();
    Select_Entry("Probe");
    Enter("component_length", "7.5");
    d_answer.Press(Qt::Key_Escape);
    d_answer.Close_Message();

    Drop_Files({path});
    Drop_Files({path});

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_EQ(d_answer.Seen(1).text, "Data Not Saved");
    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

// While a question is open

TEST_F(TSequenceDrops, A_file_is_not_taken_while_the_question_of_New_is_open)
{
    TBudgetFile expected = Workshop_Budget();
    Select_Entry("Probe");
    Enter("component_length", "7.5");
    d_answer.Click(QMessageBox::No);

    EXPECT_FALSE(Drop_During_Question(Other_File(), [this]() { Press(Qt::Key_N, Qt::ControlModifier); }));

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDrops, A_file_is_not_taken_while_the_question_of_a_removal_is_open)
{
    TBudgetFile expected = Workshop_Budget();
    Select_Entry("Probe");

    EXPECT_FALSE(Drop_During_Question(Other_File(), [this]() { Remove_Entries(QMessageBox::Yes); }));

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    expected.document.Remove_Component("Probe");
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDrops, A_file_is_not_taken_while_a_name_is_asked_for)
{
    TBudgetFile expected = Workshop_Budget();
    Select_Entry("Norvexa Data");
    const QString path = Other_File();
    bool is_taken = true;
    QTimer::singleShot(0, &d_editor, [&]() { is_taken = Drop_Files({path}); });

    Add_Component("Air");

    EXPECT_FALSE(is_taken);
    expected.document.Add_Component("Air");
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDrops, A_file_is_not_taken_while_the_file_to_save_is_being_named)
{
    const TBudgetFile expected = Workshop_Budget();
    const QString path = Other_File();
    bool is_taken = true;
    QTimer::singleShot(0, &d_editor, [&]() {
        EXPECT_NE(qobject_cast<QFileDialog*>(QApplication::activeModalWidget()), nullptr);
        is_taken = Drop_Files({path});
    });

    Save_As(Path("saved.norvexa"));

    EXPECT_FALSE(is_taken);
    EXPECT_EQ(State_Of(Read_Budget(Path("saved.norvexa")).document), State_Of(expected.document));
    EXPECT_EQ(Check_Unchanged(), Model_Of(expected));
}

TEST_F(TSequenceDrops, A_file_let_go_while_a_question_has_opened_under_the_drag_is_not_taken)
{
    TBudgetFile expected = Workshop_Budget();
    Select_Entry("Probe");
    Enter("component_length", "7.5");
    d_answer.Click(QMessageBox::No);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Other_File())});
    QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&d_editor, &enter);
    ASSERT_TRUE(enter.isAccepted());

    QTimer::singleShot(0, &d_editor, [&]() {
        QDropEvent drop(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&d_editor, &drop);
    });
    EXPECT_FALSE(d_editor.close());

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    Change_Component(&expected.document, "Probe", [](TNorvexaData::TComponent* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

// While a cell editor is open

TEST_F(TSequenceDrops, A_file_dropped_on_the_open_cell_of_a_variable_is_loaded)
{
    Show_Page("Variables");
    QComboBox* cell = Open_Selection("Wear");

    EXPECT_TRUE(Drop_Files({Other_File()}, cell));

    EXPECT_EQ(Open_Editor<QComboBox>(Variables()), nullptr);
    EXPECT_EQ(User_Variables(), QStringList("Bend: Beam"));
    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_choice_in_the_open_cell_of_a_variable_is_asked_about_and_kept_after_a_No)
{
    Show_Page("Variables");
    QComboBox* cell = Open_Selection("Wear");
    QTest::keyClick(cell, Qt::Key_Down);
    d_answer.Click(QMessageBox::No);

    EXPECT_TRUE(Drop_Files({Other_File()}, cell));

    TBudgetFile expected = Workshop_Budget();
    expected.variables.front().description = "Scale - Drift";
    EXPECT_EQ(User_Variables(), QStringList("Wear: Scale - Drift"));
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDrops, A_file_dropped_on_the_open_cell_of_the_report_is_loaded)
{
    Drop_Files({Linear_File()});
    Show_Report("Length");
    Click_Entry(Report_Rows(), Entry(Report_Rows(), "Probe").siblingAtColumn(1));
    auto* cell = Open_Editor<QComboBox>(Report_Rows());
    ASSERT_NE(cell, nullptr);

    EXPECT_TRUE(Drop_Files({Other_File()}, cell));

    EXPECT_EQ(Report_Table(), QStringList());
    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_file_dropped_on_a_name_being_typed_in_the_tree_is_loaded)
{
    Type_In_Entry(Tree(), "Scale", "Ruler");

    // A rename alone is no edit that is asked about, so the file is loaded.
    EXPECT_TRUE(Drop_Files({Other_File()}, Tree()->viewport()));

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Beam())");
    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_file_dropped_on_the_editor_of_a_tree_entry_is_loaded)
{
    QLineEdit* editor = Type_In_Entry(Tree(), "Scale", "Ruler");

    EXPECT_TRUE(Drop_Files({Other_File()}, editor));

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Beam())");
    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_file_dropped_on_the_editor_of_an_identifier_is_loaded)
{
    Select_Entry("Probe");
    QLineEdit* editor = Type_In_Entry(Find<QListWidget>("identifier_list"), "SN 1", "SN 9");
    d_answer.Click(QMessageBox::Yes);

    EXPECT_TRUE(Drop_Files({Other_File()}, editor));

    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

TEST_F(TSequenceDrops, A_file_dropped_on_the_editor_of_a_group_is_loaded)
{
    Show_Page("Report Groups");
    QLineEdit* editor = Type_In_Entry(Find<QListWidget>("group_list"), "Length", "Width");
    d_answer.Click(QMessageBox::Yes);

    EXPECT_TRUE(Drop_Files({Other_File()}, editor));

    EXPECT_EQ(Check_Unchanged(), Model_Of(Other_Budget()));
}

// While the cursor is in a field

class TSequenceDropsField : public TSequenceDrops, public ::testing::WithParamInterface<TField>
{};

TEST_P(TSequenceDropsField, Does_not_reach_the_record_of_that_name_in_the_file)
{
    const QString path = Namesake_File();
    Save_With_Cursor_In(GetParam());

    EXPECT_TRUE(Drop_Files({path}));

    EXPECT_EQ(Check_Unchanged(), Model_Of(Namesake_Budget()));
}

TEST_P(TSequenceDropsField, Is_no_edit_of_a_new_budget)
{
    Save_With_Cursor_In(GetParam());

    Press(Qt::Key_N, Qt::ControlModifier);

    EXPECT_EQ(Saving(), "");
    Expect_Unmodified();
    TBudgetFile expected = Workshop_Budget();
    expected.document = TNorvexa();
    expected.groups.clear();
    EXPECT_EQ(Check_New(), Model_Of(expected));
}

INSTANTIATE_TEST_SUITE_P(TSequenceDrops, TSequenceDropsField,
                         ::testing::Values(TField{"component_length", "Probe", "7.5"},
                                           TField{"component_expansion_coefficient", "Probe", "8.5"},
                                           TField{"expression", "Resolution", "0.7"},
                                           TField{"sensitivity", "Resolution", "0.5"}),
                         [](const auto& row) { return std::string(row.param.name); });
