#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "src/reportgroupwidget.h"
#include "tests/support/editorfixture.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>

#include <functional>
#include <string>

namespace {

const char* const SAMPLE_TREE = "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift))";

void Write_Text(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        Fail_Missing("writable file " + path);
    }
}

QByteArray Read_Text(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail_Missing("readable file " + path);
    }
    return file.readAll();
}

class TNorvexaEditorDocument : public TEditorFixture
{
protected:
    // The sample, opened from "budget.norvexa", with a change that is not saved: the component "Wire".
    QString Open_And_Change_Sample()
    {
        const QString path = Open_Budget(Sample_Budget());
        Add_Component("Wire");
        return path;
    }

    // A file that no document can read, and what the log says about it.
    QString Write_Bad_File(const QString& name = "bad.norvexa")
    {
        Write_Text(Path(name), "no budget");
        return Path(name);
    }

    bool Is_Bad_File_Reported()
    {
        return Log() ==
                   "ERR:  Reference file XML parse error at line error occurred while parsing element column 1: 1" &&
               Page() == "Log";
    }

    // Tries to leave, and stays: modified data are asked about, others not.
    void Expect_Modified()
    {
        TModalAnswer answer;
        answer.Click(QMessageBox::No);
        EXPECT_FALSE(d_editor.close());
    }

    void Expect_Unmodified()
    {
        const TModalAnswer watchdog;
        EXPECT_TRUE(d_editor.close());
        Show_Active(&d_editor);
    }

    void Expect_Loss_Question(int index, const QString& informative_text)
    {
        const TModalAnswer::TSeen seen = d_answer.Seen(index);
        EXPECT_EQ(seen.title, "Norvexa Editor");
        EXPECT_EQ(seen.text, "Data Not Saved");
        EXPECT_EQ(seen.informative_text, informative_text);
        EXPECT_EQ(seen.detailed_text, "");
        EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(seen.default_button, QMessageBox::No);
        EXPECT_EQ(seen.icon, QMessageBox::Question);
    }

    void Expect_Continue_Question(int index)
    {
        Expect_Loss_Question(index, "Current data will be lost.  Do you want to continue?");
    }

    void Open_Through_Dialog(const QString& path)
    {
        d_answer.Choose_File(path);
        Click_Tool("action_open");
    }

    void Show_Report()
    {
        Click_Tool("action_report");
        Choose_Entry(Find<QComboBox>("report_group"), "Length");
    }

    int Report_Rows() const { return Find<QTreeWidget>("report_table")->topLevelItemCount(); }
    QString Report_Group() const { return Find<QComboBox>("report_group")->currentText(); }

    // Name and shown choice of the last variable.
    QString Last_Variable() const
    {
        const auto* list = Find<QTreeWidget>("variable_list");
        const QTreeWidgetItem* row = list->topLevelItem(list->topLevelItemCount() - 1);
        return row->text(0) + " = " + row->text(1);
    }

    QStringList Files() const { return QDir(d_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    bool Is_Report_And_Groups_Reset() const
    {
        return Groups().isEmpty() && Offered_Groups() == QStringList("<no selection>") &&
               Report_Group() == "<no selection>" && Report_Rows() == 0;
    }
};

// New

TEST_F(TNorvexaEditorDocument, New_asks_nothing_while_nothing_is_modified)
{
    Open_Budget(Sample_Budget());

    Click_Tool("action_new");

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorDocument, New_asks_while_data_are_modified)
{
    Add_Component("Probe");
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_new");

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    Expect_Continue_Question(1);
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

TEST_F(TNorvexaEditorDocument, New_answered_No_changes_nothing)
{
    Open_And_Change_Sample();
    d_editor.Write_Log_Text("Line");
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_new");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift), Wire())");
    EXPECT_EQ(Groups(), QStringList("Length"));
    EXPECT_EQ(Log(), "Line                ");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, New_left_by_Escape_changes_nothing)
{
    Add_Component("Probe");
    d_answer.Press(Qt::Key_Escape);

    Click_Tool("action_new");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
}

TEST_F(TNorvexaEditorDocument, New_left_by_Return_takes_No)
{
    Add_Component("Probe");
    d_answer.Press(Qt::Key_Return);

    Click_Tool("action_new");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
}

TEST_F(TNorvexaEditorDocument, New_empties_tree_groups_report_and_log)
{
    Open_Budget(Sample_Budget());
    Show_Report();
    ASSERT_GT(Report_Rows(), 0);
    ASSERT_NE(Log(), "");

    Click_Tool("action_new");

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(Available_Components(), QStringList());
    EXPECT_TRUE(Is_Report_And_Groups_Reset());
    EXPECT_FALSE(Find<QPushButton>("export_csv")->isEnabled());
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorDocument, New_leaves_nothing_to_save)
{
    Open_And_Change_Sample();
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_new");

    EXPECT_EQ(Saving(), "");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorDocument, New_selects_the_root_and_disables_the_component_pages)
{
    Open_Budget(Sample_Budget());
    Select_Entry("Drift");
    ASSERT_TRUE(d_editor.findChild<TComponentItemWidget*>()->isEnabled());

    Click_Tool("action_new");

    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_FALSE(d_editor.findChild<TComponentWidget*>()->isEnabled());
    EXPECT_FALSE(d_editor.findChild<TComponentItemWidget*>()->isEnabled());
    EXPECT_TRUE(Action("action_add_budget_item")->isEnabled());
    EXPECT_FALSE(Action("action_remove_budget_item")->isEnabled());
}

TEST_F(TNorvexaEditorDocument, New_keeps_the_variables_but_offers_no_components_to_them)
{
    Open_Budget(Sample_Budget());
    ASSERT_EQ(Last_Variable(), "Wear = Probe");

    Click_Tool("action_new");

    EXPECT_EQ(Last_Variable(), "Wear = [no selection]");
}

TEST_F(TNorvexaEditorDocument, New_keeps_the_inputs)
{
    Open_Budget(Sample_Budget());

    Click_Tool("action_new");

    EXPECT_EQ(Find<QLineEdit>("end_position")->text(), "500.000");
}

TEST_F(TNorvexaEditorDocument, Saving_after_New_writes_to_the_file_last_opened)
{
    const QString path = Open_Budget(Sample_Budget());
    Click_Tool("action_new");
    Add_Component("Anvil");

    Click_Tool("action_save");

    EXPECT_EQ(Read_Budget(path).document.Enum_Components(), QStringList("Anvil"));
}

TEST_F(TNorvexaEditorDocument, Saving_after_New_writes_to_the_file_last_saved)
{
    Add_Component("Probe");
    Save_As(Path("mine.norvexa"));
    Click_Tool("action_new");
    Add_Component("Anvil");

    Click_Tool("action_save");

    EXPECT_EQ(Read_Budget(Path("mine.norvexa")).document.Enum_Components(), QStringList("Anvil"));
}

TEST_F(TNorvexaEditorDocument, Ctrl_N_and_the_menu_start_a_new_budget)
{
    Open_Budget(Sample_Budget());
    Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");

    Open_Budget(Sample_Budget());
    Choose_In_Menu("File", "New...");
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

// Open

TEST_F(TNorvexaEditorDocument, The_open_dialog_starts_in_the_home_directory)
{
    d_answer.Cancel_File();

    Click_Tool("action_open");

    const TModalAnswer::TSeen seen = d_answer.Seen(0);
    EXPECT_EQ(seen.title, "Enter the name of the file to open");
    EXPECT_EQ(seen.directory, QDir::homePath());
    EXPECT_EQ(seen.name_filters, QStringList("Norvexa files (*.norvexa)"));
    EXPECT_FALSE(seen.saves);
}

TEST_F(TNorvexaEditorDocument, Ctrl_O_opens)
{
    Write_Budget(Sample_Budget(), Path("a.norvexa"));
    d_answer.Choose_File(Path("a.norvexa"));

    Press(Qt::Key_O, Qt::ControlModifier);

    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
}

TEST_F(TNorvexaEditorDocument, Opening_fills_every_page)
{
    Write_Budget(Sample_Budget(), Path("a.norvexa"));

    Open_Through_Dialog(Path("a.norvexa"));

    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(Groups(), QStringList("Length"));
    EXPECT_EQ(Offered_Groups(), QStringList({"<no selection>", "Length"}));
    EXPECT_EQ(Available_Components(), QStringList({"Probe", "Scale"}));
    EXPECT_EQ(Last_Variable(), "Wear = Probe");
    EXPECT_EQ(Find<QLineEdit>("end_position")->text(), "500.000");
    EXPECT_EQ(Find<QLineEdit>("machine_expansion_coefficient")->text(), "11.50");
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Budget Components");
}

TEST_F(TNorvexaEditorDocument, Opening_leaves_only_Save_As_to_use)
{
    Add_Component("Anvil");
    Save_As(Path("anvil.norvexa"));

    Open_Budget(Sample_Budget());

    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorDocument, Opening_selects_the_root_and_disables_the_component_pages)
{
    Open_Budget(Sample_Budget());
    Select_Entry("Drift");

    Open_Through_Dialog(Path("budget.norvexa"));

    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_FALSE(d_editor.findChild<TComponentWidget*>()->isEnabled());
    EXPECT_FALSE(d_editor.findChild<TComponentItemWidget*>()->isEnabled());
}

// The record that was selected in the budget before must not receive what its page still shows.
TEST_F(TNorvexaEditorDocument, After_opening_no_component_is_the_current_one)
{
    Open_Budget(Sample_Budget());
    Select_Entry("Drift");
    Open_Through_Dialog(Path("budget.norvexa"));

    d_editor.Component_Data_Changed();
    d_editor.Component_Item_Data_Changed();

    EXPECT_EQ(Saving(), "Save As");
}

TEST_F(TNorvexaEditorDocument, Opening_replaces_the_user_variables)
{
    TBudgetFile other = Sample_Budget();
    other.variables.front().name = "Other";
    Open_Budget(Sample_Budget(), "a.norvexa");

    Open_Budget(other, "b.norvexa");

    EXPECT_EQ(Last_Variable(), "Other = Probe");
    EXPECT_EQ(Find<QTreeWidget>("variable_list")->topLevelItemCount(), 11);
}

TEST_F(TNorvexaEditorDocument, Opening_the_same_file_twice_gives_the_same_state_once)
{
    const QString path = Open_Budget(Sample_Budget());
    Open_Through_Dialog(path);
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(Groups(), QStringList("Length"));
    EXPECT_EQ(Available_Components(), QStringList({"Probe", "Scale"}));

    Save_As(Path("copy.norvexa"));

    TBudgetFile expected = Read_Budget(path);
    const TBudgetFile saved = Read_Budget(Path("copy.norvexa"));
    EXPECT_EQ(Budget_File_Text(saved).filter("component"), Budget_File_Text(expected).filter("component"));
    EXPECT_EQ(Budget_File_Text(saved).filter("Wear"), Budget_File_Text(expected).filter("Wear"));
    EXPECT_EQ(Budget_File_Text(saved).filter("group"), Budget_File_Text(expected).filter("group"));
}

TEST_F(TNorvexaEditorDocument, Opening_makes_its_folder_the_last_directory)
{
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("sub"));
    Open_Budget(Sample_Budget(), "sub/a.norvexa");
    d_answer.Cancel_File();
    d_answer.Cancel_File();

    Click_Tool("action_open");
    Click_Tool("action_save_as");

    EXPECT_EQ(d_answer.Seen(0).directory, Path("sub"));
    EXPECT_EQ(d_answer.Seen(1).directory, Path("sub"));
}

TEST_F(TNorvexaEditorDocument, Cancelling_Open_resets_report_and_groups_and_keeps_the_budget)
{
    Open_Budget(Sample_Budget());
    Show_Report();
    ASSERT_GT(Report_Rows(), 0);
    const QString log = Log();
    d_answer.Cancel_File();

    Click_Tool("action_open");

    EXPECT_TRUE(Is_Report_And_Groups_Reset());
    EXPECT_FALSE(Find<QPushButton>("export_pdf")->isEnabled());
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(Last_Variable(), "Wear = Probe");
    EXPECT_EQ(Log(), log);
    EXPECT_EQ(Saving(), "Save As");
}

TEST_F(TNorvexaEditorDocument, Open_answered_No_shows_no_dialog_and_changes_nothing)
{
    Open_And_Change_Sample();
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_open");

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    Expect_Continue_Question(1);
    EXPECT_EQ(Groups(), QStringList("Length"));
    EXPECT_EQ(Saving(), "Save, Save As");
}

// The question comes before the dialog and once more before loading, on purpose.
TEST_F(TNorvexaEditorDocument, Open_asks_twice_while_data_are_modified)
{
    Open_And_Change_Sample();
    TBudgetFile other;
    other.document.Add_Component("Other");
    Write_Budget(other, Path("other.norvexa"));
    d_answer.Click(QMessageBox::Yes);
    d_answer.Choose_File(Path("other.norvexa"));
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_open");

    ASSERT_EQ(d_answer.Seen_Count(), 4);
    Expect_Continue_Question(1);
    Expect_Continue_Question(3);
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Other())");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorDocument, Open_answered_No_the_second_time_keeps_the_budget_but_resets_report_and_groups)
{
    Open_And_Change_Sample();
    Show_Report();
    const QString log = Log();
    d_answer.Click(QMessageBox::Yes);
    d_answer.Choose_File(Path("budget.norvexa"));
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_open");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift), Wire())");
    EXPECT_TRUE(Is_Report_And_Groups_Reset());
    EXPECT_EQ(Log(), log);
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, Cancelling_Open_while_data_are_modified_asks_once)
{
    Open_And_Change_Sample();
    d_answer.Click(QMessageBox::Yes);
    d_answer.Cancel_File();

    Click_Tool("action_open");

    EXPECT_EQ(d_answer.Seen_Count(), 3);
    Expect_Modified();
}

// Loading

TEST_F(TNorvexaEditorDocument, Loading_without_a_name_does_nothing)
{
    Open_And_Change_Sample();
    d_editor.Write_Log_Text("Line");

    d_editor.Load_Data(QString());

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_EQ(Log(), "Line                ");
    EXPECT_EQ(Groups(), QStringList("Length"));
}

TEST_F(TNorvexaEditorDocument, Loading_asks_while_data_are_modified)
{
    const QString path = Open_And_Change_Sample();
    d_editor.Write_Log_Text("Line");
    d_answer.Click(QMessageBox::No);

    d_editor.Load_Data(path);

    Expect_Continue_Question(1);
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift), Wire())");
    EXPECT_EQ(Log(), "Line                ");
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, Loading_clears_the_log_and_stays_on_its_page)
{
    Click_Tool("action_log");
    d_editor.Write_Log_Text("Line");

    Open_Budget(Sample_Budget());

    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Log");
}

TEST_F(TNorvexaEditorDocument, A_failed_load_shows_its_error_in_the_log)
{
    d_editor.Write_Log_Text("Line");

    d_editor.Load_Data(Path("missing.norvexa"));

    EXPECT_EQ(Log(), QString("ERR:  Cannot open file '%1' for reading.").arg(Path("missing.norvexa")));
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Checked_Pages(), QStringList("Log"));
}

TEST_F(TNorvexaEditorDocument, A_failed_load_changes_nothing_but_the_log)
{
    const QString path = Open_Budget(Sample_Budget());
    const QString bad_file = Write_Bad_File();
    Show_Report();
    const int report_rows = Report_Rows();

    Drop_Files({bad_file});

    EXPECT_TRUE(Is_Bad_File_Reported()) << Log().toStdString();
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(Groups(), QStringList("Length"));
    EXPECT_EQ(Report_Group(), "Length");
    EXPECT_EQ(Report_Rows(), report_rows);
    EXPECT_EQ(Last_Variable(), "Wear = Probe");
    EXPECT_EQ(Saving(), "Save As");
}

// A file that breaks off after its first component must not leave that component behind.
TEST_F(TNorvexaEditorDocument, A_load_that_fails_half_way_leaves_a_budget_that_can_be_edited_and_saved)
{
    const QString path = Open_Budget(Sample_Budget());
    const QStringList before = Budget_File_Text(Read_Budget(path));
    QByteArray half = Read_Text(path).replace("Probe", "Other");
    const int last = half.lastIndexOf("<Sensitivity>");
    ASSERT_GT(last, 0);
    Write_Text(Path("half.norvexa"), half.replace(last, int(qstrlen("<Sensitivity>1.000000</Sensitivity>")), ""));

    Drop_Files({Path("half.norvexa")});
    EXPECT_TRUE(Log().startsWith("ERR:  Node 'Sensitivity' is missing")) << Log().toStdString();
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);

    Click_Tool("action_components");
    Select_Entry("Drift");
    Replace_Text(Find<QLineEdit>("expression"), "0.7");
    Click_Tool("action_save");

    QStringList expected = before;
    expected.replaceInStrings("<Drift> <0.0000>", "<Drift> <0.7>");
    const QStringList saved = Budget_File_Text(Read_Budget(path));
    EXPECT_EQ(saved.filter(QRegExp("^( |component|group|input)")),
              expected.filter(QRegExp("^( |component|group|input)")));
}

TEST_F(TNorvexaEditorDocument, A_failed_load_keeps_the_modified_flag)
{
    Open_And_Change_Sample();
    d_answer.Click(QMessageBox::Yes);

    Drop_Files({Write_Bad_File()});

    EXPECT_TRUE(Is_Bad_File_Reported());
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, A_failed_load_keeps_file_name_and_last_directory)
{
    const QString path = Open_Budget(Sample_Budget());
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("sub"));
    Drop_Files({Write_Bad_File("sub/bad.norvexa")});
    Click_Tool("action_components");
    Add_Component("Wire");
    d_answer.Cancel_File();

    Click_Tool("action_save");
    Click_Tool("action_save_as");

    EXPECT_EQ(Read_Budget(path).document.Enum_Components(), QStringList({"Probe", "Scale", "Wire"}));
    EXPECT_EQ(d_answer.Seen(1).directory, d_folder.path());
}

TEST_F(TNorvexaEditorDocument, Opening_a_bad_file_resets_report_and_groups_and_keeps_the_budget)
{
    Open_Budget(Sample_Budget());

    Open_Through_Dialog(Write_Bad_File());

    EXPECT_TRUE(Is_Bad_File_Reported());
    EXPECT_TRUE(Is_Report_And_Groups_Reset());
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
}

TEST_F(TNorvexaEditorDocument, A_folder_cannot_be_loaded)
{
    Drop_Files({d_folder.path()});

    EXPECT_TRUE(Log().startsWith("ERR:  Cannot open file: '" + d_folder.path() + "'.  Reason: "))
        << Log().toStdString();
    EXPECT_EQ(Page(), "Log");
}

TEST_F(TNorvexaEditorDocument, Budgets_of_old_versions_show_no_gradient)
{
    for (const char* name : {"budget_v1.norvexa", "budget_v2.norvexa"}) {
        Click_Tool("action_variables");
        Replace_Text(Find<QLineEdit>("temperature_gradient"), "0.5");
        d_answer.Click(QMessageBox::Yes);

        Drop_Files({QString(NORVEXA_TEST_DATA) + "/" + name});

        EXPECT_EQ(Log(), "");
        EXPECT_EQ(Find<QLineEdit>("temperature_gradient")->text(), "0.00") << name;
    }
}

TEST_F(TNorvexaEditorDocument, Loading_makes_the_report_anew_while_its_page_is_in_front)
{
    Open_Budget(Sample_Budget());
    Show_Report();
    ASSERT_EQ(Find<QLabel>("report_status")->text(), "Uc at length 500.000 mm: 0.0050 mm");
    TBudgetFile other = Sample_Budget();
    other.input_data.report_end = 250.0;

    Open_Budget(other, "other.norvexa");

    EXPECT_EQ(Report_Group(), "Length");
    EXPECT_EQ(Find<QLabel>("report_status")->text(), "Uc at length 250.000 mm: 0.0050 mm");
}

TEST_F(TNorvexaEditorDocument, Loading_takes_the_rows_of_the_budget_before_off_the_report_page)
{
    Open_Budget(Sample_Budget());
    Show_Report();
    Click_Tool("action_variables");

    Open_Budget(Sample_Budget(), "other.norvexa");

    EXPECT_EQ(Report_Rows(), 0);
    EXPECT_FALSE(Find<QPushButton>("export_csv")->isEnabled());
}

// Save

TEST_F(TNorvexaEditorDocument, Save_without_a_file_name_asks_for_one)
{
    Add_Component("Probe");
    d_answer.Choose_File(Path("first.norvexa"));

    Click_Tool("action_save");

    EXPECT_EQ(d_answer.Seen(1).title, "Enter the name of the file to save");
    EXPECT_EQ(Read_Budget(Path("first.norvexa")).document.Enum_Components(), QStringList("Probe"));
}

TEST_F(TNorvexaEditorDocument, Save_writes_to_the_file_that_was_opened)
{
    const QString path = Open_And_Change_Sample();

    Click_Tool("action_save");

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_EQ(Read_Budget(path).document.Enum_Components(), QStringList({"Probe", "Scale", "Wire"}));
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(TNorvexaEditorDocument, Save_is_in_the_menu)
{
    const QString path = Open_And_Change_Sample();

    Choose_In_Menu("File", "Save");

    EXPECT_EQ(Read_Budget(path).document.Enum_Components(), QStringList({"Probe", "Scale", "Wire"}));
}

TEST_F(TNorvexaEditorDocument, Saving_writes_components_variables_groups_and_inputs)
{
    const QString path = Open_Budget(Sample_Budget());

    Save_As(Path("copy.norvexa"));

    QStringList expected = Budget_File_Text(Sample_Budget());
    // The built-in variables are written before the user's.
    const QStringList built_in = {"variable <CTEm> <Machine Expansion Coefficient>",
                                  "variable <CTEc> <Component Expansion Coefficient>",
                                  "variable <CTEd> <Expansion Coefficient Difference>",
                                  "variable <Sr> <Scale Resolution>",
                                  "variable <Td> <Temperature Deviation from 20 C>",
                                  "variable <Tr> <Temperature Range>",
                                  "variable <Tg> <Temperature Gradient>",
                                  "variable <Sdev> <Standard Deviation>",
                                  "variable <Lc> <Length Count>",
                                  "variable <L> <Test Length>"};
    int index = expected.indexOf("variable <Wear> <Probe>");
    for (const QString& line : built_in) {
        expected.insert(index++, line);
    }
    EXPECT_EQ(Budget_File_Text(Read_Budget(Path("copy.norvexa"))), expected);
}

TEST_F(TNorvexaEditorDocument, Saving_leaves_only_Save_As_to_use)
{
    Open_And_Change_Sample();
    ASSERT_EQ(Saving(), "Save, Save As");

    Click_Tool("action_save");

    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
}

// Where a folder of that name stands in the way nothing can be written, whoever tries.
TEST_F(TNorvexaEditorDocument, A_failed_save_says_so_in_the_log_and_clears_the_flag_all_the_same)
{
    const QString path = Open_And_Change_Sample();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));

    Click_Tool("action_save");

    EXPECT_TRUE(Log().startsWith("ERR:  Cannot ")) << Log().toStdString();
    EXPECT_TRUE(Log().contains("'" + path + "'")) << Log().toStdString();
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Checked_Pages(), QStringList("Log"));
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorDocument, A_failed_save_can_be_repeated_under_another_name)
{
    const QString path = Open_And_Change_Sample();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));
    Click_Tool("action_save");

    Save_As(Path("other.norvexa"));

    EXPECT_EQ(Read_Budget(Path("other.norvexa")).document.Enum_Components(), QStringList({"Probe", "Scale", "Wire"}));
}

TEST_F(TNorvexaEditorDocument, A_failed_save_appends_to_the_log)
{
    const QString path = Open_And_Change_Sample();
    d_editor.Write_Log_Text("Line");
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));

    Click_Tool("action_save");

    EXPECT_EQ(Log().split('\n').value(0), "Line                ");
    EXPECT_EQ(Log().split('\n').size(), 2);
}

// Save As

TEST_F(TNorvexaEditorDocument, The_save_dialog_starts_in_the_home_directory)
{
    Add_Component("Probe");
    d_answer.Cancel_File();

    Click_Tool("action_save_as");

    const TModalAnswer::TSeen seen = d_answer.Seen(1);
    EXPECT_EQ(seen.title, "Enter the name of the file to save");
    EXPECT_EQ(seen.directory, QDir::homePath());
    EXPECT_EQ(seen.name_filters, QStringList("Norvexa files (*.norvexa)"));
    EXPECT_TRUE(seen.saves);
}

TEST_F(TNorvexaEditorDocument, A_cancelled_Save_As_changes_nothing)
{
    Add_Component("Probe");
    d_answer.Cancel_File();

    Choose_In_Menu("File", "Save As");

    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, Save_As_gives_the_budget_its_file_name)
{
    Add_Component("Probe");
    Save_As(Path("mine"));
    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();

    Add_Component("Scale");
    Click_Tool("action_save");

    EXPECT_EQ(Files(), QStringList("mine.norvexa"));
    EXPECT_EQ(Read_Budget(Path("mine.norvexa")).document.Enum_Components(), QStringList({"Probe", "Scale"}));
}

TEST_F(TNorvexaEditorDocument, A_failed_Save_As_gives_the_budget_its_file_name_all_the_same)
{
    Add_Component("Probe");
    Save_As(Path("missing/mine.norvexa"));
    const QString message = Log();
    ASSERT_TRUE(message.contains("'" + Path("missing/mine.norvexa") + "'")) << message.toStdString();
    Click_Tool("action_components");
    Add_Component("Scale");
    const int dialogs = d_answer.Seen_Count();

    Click_Tool("action_save");

    EXPECT_EQ(d_answer.Seen_Count(), dialogs);
    EXPECT_EQ(Log(), message + "\n" + message);
}

TEST_F(TNorvexaEditorDocument, Save_As_leaves_the_file_that_was_opened_alone)
{
    const QString path = Open_And_Change_Sample();
    const QByteArray before = Read_Text(path);

    Save_As(Path("other.norvexa"));

    EXPECT_EQ(Read_Text(path), before);
}

TEST_F(TNorvexaEditorDocument, Save_As_makes_its_folder_the_last_directory)
{
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("sub"));
    Add_Component("Probe");
    Save_As(Path("sub/a.norvexa"));
    d_answer.Cancel_File();

    Click_Tool("action_open");

    EXPECT_EQ(d_answer.Seen(2).directory, Path("sub"));
}

struct TSuffixRow
{
    const char* name;
    const char* entered;
    const char* written;
};

class TNorvexaEditorSuffix : public TNorvexaEditorDocument, public ::testing::WithParamInterface<TSuffixRow>
{};

TEST_P(TNorvexaEditorSuffix, Is_appended_where_it_is_missing)
{
    Add_Component("Probe");

    Save_As(Path(GetParam().entered));

    EXPECT_EQ(Files(), QStringList(GetParam().written));
}

const TSuffixRow SUFFIXES[] = {
    {"Without_a_suffix", "budget", "budget.norvexa"},
    {"With_the_suffix", "budget.norvexa", "budget.norvexa"},
    {"With_the_suffix_in_capitals", "budget.NORVEXA", "budget.NORVEXA"},
    {"With_the_suffix_in_mixed_case", "budget.NorVexa", "budget.NorVexa"},
    {"With_another_suffix", "budget.txt", "budget.txt.norvexa"},
    {"With_a_dot_at_the_end", "budget.", "budget..norvexa"},
    {"With_the_suffix_in_the_middle", "budget.norvexa.bak", "budget.norvexa.bak.norvexa"},
    {"With_the_suffix_without_its_dot", "mynorvexa", "mynorvexa.norvexa"},
    {"With_letters_beyond_ASCII", "Ma\u00df", "Ma\u00df.norvexa"},
};

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorSuffix, ::testing::ValuesIn(SUFFIXES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorDocument, Save_As_asks_before_an_appended_suffix_hits_a_file)
{
    Write_Text(Path("mine.norvexa"), "old");
    Add_Component("Probe");
    d_answer.Choose_File(Path("mine"));
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_save_as");

    const TModalAnswer::TSeen seen = d_answer.Seen(2);
    EXPECT_EQ(seen.title, "Norvexa Editor");
    EXPECT_EQ(seen.text, "File Exists");
    EXPECT_EQ(seen.informative_text,
              QString("The file '%1' exists.  Do you want to replace it?").arg(Path("mine.norvexa")));
    EXPECT_EQ(seen.detailed_text, "");
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(seen.default_button, QMessageBox::No);
    EXPECT_EQ(seen.icon, QMessageBox::Question);
}

TEST_F(TNorvexaEditorDocument, Refusing_to_overwrite_ends_Save_As)
{
    const QString path = Open_And_Change_Sample();
    Write_Text(Path("mine.norvexa"), "old");
    d_answer.Choose_File(Path("mine"));
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_save_as");

    EXPECT_EQ(Read_Text(Path("mine.norvexa")), "old");
    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
    Click_Tool("action_save");
    EXPECT_EQ(Read_Text(Path("mine.norvexa")), "old");
    EXPECT_EQ(Read_Budget(path).document.Component_Count(), 3);
}

TEST_F(TNorvexaEditorDocument, Agreeing_to_overwrite_replaces_the_file)
{
    Write_Text(Path("mine.norvexa"), "old");
    Add_Component("Probe");
    d_answer.Choose_File(Path("mine"));
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_save_as");

    EXPECT_EQ(Read_Budget(Path("mine.norvexa")).document.Enum_Components(), QStringList("Probe"));
    EXPECT_EQ(Saving(), "Save As");
}

TEST_F(TNorvexaEditorDocument, The_name_in_the_question_is_no_markup)
{
    Write_Text(Path("a<b>&c.norvexa"), "old");
    Add_Component("Probe");
    d_answer.Choose_File(Path("a<b>&c"));
    d_answer.Click(QMessageBox::No);

    Click_Tool("action_save_as");

    EXPECT_EQ(d_answer.Seen(2).informative_text,
              QString("The file '%1' exists.  Do you want to replace it?").arg(Path("a&lt;b&gt;&amp;c.norvexa")));
}

// A name that the user chose whole has been asked about by the dialog.
TEST_F(TNorvexaEditorDocument, A_name_with_suffix_is_asked_about_once)
{
    Write_Text(Path("mine.norvexa"), "old");
    Add_Component("Probe");
    d_answer.Choose_File(Path("mine.norvexa"));
    d_answer.Click(QMessageBox::Yes);

    Click_Tool("action_save_as");

    EXPECT_EQ(d_answer.Seen_Count(), 3);
    EXPECT_NE(d_answer.Seen(2).text, "File Exists");
    EXPECT_EQ(Read_Budget(Path("mine.norvexa")).document.Enum_Components(), QStringList("Probe"));
}

// Close

TEST_F(TNorvexaEditorDocument, Exit_closes_without_a_question_while_nothing_is_modified)
{
    Open_Budget(Sample_Budget());

    Choose_In_Menu("File", "Exit Program");

    EXPECT_FALSE(d_editor.isVisible());
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorDocument, Exit_asks_while_data_are_modified)
{
    Add_Component("Probe");
    d_answer.Click(QMessageBox::No);

    Choose_In_Menu("File", "Exit Program");

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    Expect_Loss_Question(1, "Current data will be lost.  Are you sure you want to close?");
    EXPECT_TRUE(d_editor.isVisible());
    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
    EXPECT_EQ(Saving(), "Save, Save As");
}

TEST_F(TNorvexaEditorDocument, Exit_answered_Yes_closes)
{
    Add_Component("Probe");
    d_answer.Click(QMessageBox::Yes);

    Choose_In_Menu("File", "Exit Program");

    EXPECT_FALSE(d_editor.isVisible());
}

TEST_F(TNorvexaEditorDocument, Closing_the_window_asks_like_Exit)
{
    Add_Component("Probe");
    d_answer.Press(Qt::Key_Escape);

    EXPECT_FALSE(d_editor.close());

    Expect_Loss_Question(1, "Current data will be lost.  Are you sure you want to close?");
    EXPECT_TRUE(d_editor.isVisible());
}

// Drop

TEST_F(TNorvexaEditorDocument, A_dropped_file_is_loaded)
{
    Write_Budget(Sample_Budget(), Path("a.norvexa"));

    EXPECT_TRUE(Drop_Files({Path("a.norvexa")}));

    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorDocument, A_drop_asks_once_while_data_are_modified)
{
    const QString path = Open_And_Change_Sample();
    d_answer.Click(QMessageBox::Yes);

    Drop_Files({path});

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    Expect_Continue_Question(1);
    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
}

TEST_F(TNorvexaEditorDocument, A_drop_answered_No_changes_nothing)
{
    const QString path = Open_And_Change_Sample();
    d_answer.Click(QMessageBox::No);

    Drop_Files({path});

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Scale(Drift), Wire())");
    EXPECT_EQ(Groups(), QStringList("Length"));
    Expect_Modified();
}

TEST_F(TNorvexaEditorDocument, A_file_of_any_suffix_is_loaded)
{
    Write_Budget(Sample_Budget(), Path("a.txt"));

    Drop_Files({Path("a.txt")});

    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
}

TEST_F(TNorvexaEditorDocument, A_dropped_file_that_is_no_budget_ends_in_the_log)
{
    EXPECT_TRUE(Drop_Files({Write_Bad_File("picture.png")}));

    EXPECT_TRUE(Is_Bad_File_Reported());
}

TEST_F(TNorvexaEditorDocument, Two_dropped_files_do_nothing)
{
    Write_Budget(Sample_Budget(), Path("a.norvexa"));
    d_editor.Write_Log_Text("Line");

    EXPECT_TRUE(Drop_Files({Path("a.norvexa"), Path("a.norvexa")}));

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(Log(), "Line                ");
    EXPECT_EQ(Page(), "Budget Components");
}

TEST_F(TNorvexaEditorDocument, A_dropped_address_that_is_no_local_file_does_nothing)
{
    d_editor.Write_Log_Text("Line");
    QMimeData data;
    data.setUrls({QUrl("https://example.org/a.norvexa")});

    EXPECT_TRUE(Drop_Data(data));

    EXPECT_EQ(Log(), "Line                ");
}

TEST_F(TNorvexaEditorDocument, An_empty_list_of_files_does_nothing)
{
    d_editor.Write_Log_Text("Line");
    QMimeData data;
    data.setData("text/uri-list", "");

    Drop_Data(data);

    EXPECT_EQ(Log(), "Line                ");
}

TEST_F(TNorvexaEditorDocument, Only_a_list_of_files_may_be_dropped)
{
    QMimeData text;
    text.setText(Path("a.norvexa"));
    QMimeData colour;
    colour.setColorData(QColor(Qt::red));

    EXPECT_FALSE(Drop_Data(text));
    EXPECT_FALSE(Drop_Data(colour));
}

TEST_F(TNorvexaEditorDocument, A_file_may_be_dropped_on_every_page)
{
    const char* const targets[] = {"budget_tree", "variable_list", "group_list", "report_table", "log"};
    for (int index = 0; index < 5; ++index) {
        Write_Budget(Sample_Budget(), Path("a.norvexa"));
        Find<QTabWidget>("pages")->setCurrentIndex(index);
        Click_Tool("action_new");

        EXPECT_TRUE(Drop_Files({Path("a.norvexa")}, Find<QAbstractScrollArea>(targets[index])->viewport()));

        EXPECT_EQ(Tree_Text(), SAMPLE_TREE) << targets[index];
    }
}

// File managers also offer the file's name as text, which a line editor would take.
TEST_F(TNorvexaEditorDocument, A_file_may_be_dropped_on_an_editor)
{
    Write_Budget(Sample_Budget(), Path("a.norvexa"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Path("a.norvexa"))});
    data.setText(Path("a.norvexa"));
    Click_Tool("action_variables");

    EXPECT_TRUE(Drop_Data(data, Find<QLineEdit>("end_position")));

    EXPECT_EQ(Tree_Text(), SAMPLE_TREE);
    EXPECT_EQ(Find<QLineEdit>("end_position")->text(), "500.000");
}

// The modified flag

struct TEdit
{
    const char* name;
    std::function<void(TNorvexaEditor*, TModalAnswer*)> act;
};

class TNorvexaEditorEdit : public TNorvexaEditorDocument, public ::testing::WithParamInterface<TEdit>
{
protected:
    void SetUp() override
    {
        Open_Budget(Sample_Budget());
        ASSERT_EQ(Saving(), "Save As");
    }
};

void Click_Button(const TNorvexaEditor* window, const QString& name)
{
    auto* button = Child<QAbstractButton>(window, name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void Click_Tree(const TNorvexaEditor* window, const QString& name)
{
    Click_Entry(Child<QTreeWidget>(window, "budget_tree"), name);
}

void Show_Page(const TNorvexaEditor* window, const QString& label)
{
    Select_Tab(Child<QTabWidget>(window, "pages"), label);
}

TEST_P(TNorvexaEditorEdit, Sets_the_modified_flag_and_enables_saving)
{
    GetParam().act(&d_editor, &d_answer);

    EXPECT_EQ(Saving(), "Save, Save As");
    Expect_Modified();
}

const TEdit EDITS[] = {
    {"Adding_a_component",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         answer->Type_Name("Wire");
         Click_Button(window, "add_budget_item");
     }},
    {"Adding_an_item",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Click_Tree(window, "Scale");
         answer->Type_Name("Wear");
         Click_Button(window, "add_budget_item");
     }},
    {"Removing_a_component",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Click_Tree(window, "Scale");
         answer->Click(QMessageBox::Yes);
         Click_Button(window, "remove_budget_item");
     }},
    {"Removing_an_item",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Click_Tree(window, "Drift");
         answer->Click(QMessageBox::Yes);
         Click_Button(window, "remove_budget_item");
     }},
    {"Changing_a_mode_of_a_component",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Click_Tree(window, "Scale");
         Click_Button(window, "mode_export_equipment");
     }},
    {"Changing_a_length_of_a_component",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Click_Tree(window, "Scale");
         Replace_Text(Child<QLineEdit>(window, "component_length"), "7");
         QTest::keyClick(Child<QLineEdit>(window, "component_length"), Qt::Key_Return);
     }},
    {"Changing_the_distribution_of_an_item",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Click_Tree(window, "Drift");
         Choose_Entry(Child<QComboBox>(window, "distribution"), "Rectangular");
     }},
    {"Adding_an_identifier",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Click_Tree(window, "Scale");
         answer->Type_Name("SN 7");
         Click_Button(window, "add_identifier");
     }},
    {"Renaming_an_identifier",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Click_Tree(window, "Probe");
         Rename_Entry(Child<QListWidget>(window, "identifier_list"), "SN 1", "SN 2");
     }},
    {"Removing_an_identifier",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Click_Tree(window, "Probe");
         Click_Entry(Child<QListWidget>(window, "identifier_list"), "SN 1");
         answer->Click(QMessageBox::Yes);
         Click_Button(window, "remove_identifier");
     }},
    {"Changing_an_input",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Show_Page(window, "Variables");
         Replace_Text(Child<QLineEdit>(window, "machine_scale"), "0.01");
     }},
    {"Adding_a_variable",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Show_Page(window, "Variables");
         answer->Type_Name("Flex");
         Click_Button(window, "add_variable");
     }},
    {"Adding_a_group",
     [](TNorvexaEditor* window, TModalAnswer* answer) {
         Show_Page(window, "Report Groups");
         answer->Type_Name("Width");
         Click_Button(window, "add_group");
     }},
    {"Renaming_a_group",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Show_Page(window, "Report Groups");
         Rename_Entry(Child<QListWidget>(window, "group_list"), "Length", "Width");
     }},
    {"Changing_the_members_of_a_group",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Show_Page(window, "Report Groups");
         Click_Entry(Child<QListWidget>(window, "group_list"), "Length");
         Click_Entry(Child<QListWidget>(window, "component_list"), "Scale");
     }},
    {"Removing_a_group",
     [](TNorvexaEditor* window, TModalAnswer* /*answer*/) {
         Show_Page(window, "Report Groups");
         Click_Entry(Child<QListWidget>(window, "group_list"), "Length");
         Click_Button(window, "remove_group");
     }},
};

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorEdit, ::testing::ValuesIn(EDITS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorDocument, Renaming_a_tree_entry_leaves_the_modified_flag_alone)
{
    Open_Budget(Sample_Budget());

    Rename_Entry(Tree(), "Scale", "Ruler");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe(Repeatability, Resolution), Ruler(Drift))");
    EXPECT_TRUE(d_editor.close());
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

// Only looking at things is no edit.
TEST_F(TNorvexaEditorDocument, Selecting_and_reporting_is_no_edit)
{
    Open_Budget(Sample_Budget());
    Select_Entry("Probe");
    Click_Entry(Find<QListWidget>("identifier_list"), "SN 1");
    Select_Entry("Drift");
    Show_Report();
    Click_Tool("action_groups");
    Click_Entry(Find<QListWidget>("group_list"), "Length");
    Click_Tool("action_variables");

    EXPECT_EQ(Saving(), "Save As");
    Expect_Unmodified();
}

TEST_F(TNorvexaEditorDocument, A_change_of_the_groups_reaches_the_report_page)
{
    Open_Budget(Sample_Budget());
    Click_Tool("action_groups");
    d_answer.Type_Name("Width");

    QTest::mouseClick(Find<QToolButton>("add_group"), Qt::LeftButton);
    EXPECT_EQ(Offered_Groups(), QStringList({"<no selection>", "Length", "Width"}));
    Rename_Entry(Find<QListWidget>("group_list"), "Length", "Height");
    EXPECT_EQ(Offered_Groups(), QStringList({"<no selection>", "Height", "Width"}));
}

} // namespace
