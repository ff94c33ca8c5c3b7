#include "tests/support/sequencefixture.h"

#include "tests/support/consistency.h"
#include "tests/support/heldrecords.h"
#include "tests/support/randombudget.h"
#include "tests/support/shownrecord.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

#include <functional>

namespace {

const int BUILT_IN_COUNT = 10;

TBudget Loaded(const QString& path)
{
    QString error;
    const TBudget budget = Loaded_Budget(path, &error);
    EXPECT_EQ(error, "");
    return budget;
}

/// Clicks each entry and, after each, does `then`.
void Click_All(QAbstractItemView* view, const std::function<void()>& then, const QModelIndex& parent = QModelIndex())
{
    for (int row = 0; row < view->model()->rowCount(parent); ++row) {
        const QModelIndex index = view->model()->index(row, 0, parent);
        Click_Entry(view, index);
        then();
        Click_All(view, then, index);
    }
}

void Click_All(QAbstractItemView* view)
{
    Click_All(view, []() {});
}

} // namespace

void Write_Bytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        Fail_Missing("writable file " + path);
    }
}

// What is there

QStringList TSequenceFixture::Check(TLists lists)
{
    EXPECT_EQ(Saving(), "Save, Save As");
    return Checked(lists);
}

QStringList TSequenceFixture::Check_Unchanged(TLists lists)
{
    EXPECT_EQ(Saving(), "Save As");
    return Checked(lists);
}

QStringList TSequenceFixture::Check_New()
{
    EXPECT_EQ(Saving(), "");
    // A field that no file keeps makes it an edited budget, which can be saved.
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("start_position"), "0.000");
    return Checked(TLists::Filled);
}

QStringList TSequenceFixture::Model_Of(const TBudgetFile& budget)
{
    return Budget_File_Text(budget);
}

TBudgetFile TSequenceFixture::Linear_Workshop()
{
    TBudgetFile budget = Workshop_Budget();
    budget.groups = {{"Length", {"Probe"}}};
    return budget;
}

QTreeWidget* TSequenceFixture::Variables() const
{
    return Find<QTreeWidget>("variable_list");
}

QTreeWidget* TSequenceFixture::Report_Rows() const
{
    return Find<QTreeWidget>("report_table");
}

QStringList TSequenceFixture::User_Variables() const
{
    QStringList rows;
    for (int row = BUILT_IN_COUNT; row < Variables()->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* variable = Variables()->topLevelItem(row);
        rows << variable->text(0) + ": " + variable->text(1);
    }
    return rows;
}

QStringList TSequenceFixture::Report_Table() const
{
    QStringList rows;
    for (int row = 0; row < Report_Rows()->topLevelItemCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < Report_Rows()->columnCount(); ++column) {
            texts << Report_Rows()->topLevelItem(row)->text(column);
        }
        rows << texts.join("|");
    }
    return rows;
}

QString TSequenceFixture::Selected_On_Groups_Page() const
{
    return Entry_Texts(Find<QListWidget>("group_list"), true).join(", ") + " | " +
           Entry_Texts(Find<QListWidget>("component_list"), true).join(", ");
}

// Acts

void TSequenceFixture::Add_Variable(const QString& name)
{
    d_answer.Type_Name(name);
    QTest::mouseClick(Find<QToolButton>("add_variable"), Qt::LeftButton);
}

void TSequenceFixture::Rename_Variable(const QString& name, const QString& new_name)
{
    Click_Entry(Variables(), name);
    d_answer.Type_Name(new_name);
    QTest::mouseClick(Find<QToolButton>("rename_variable"), Qt::LeftButton);
}

void TSequenceFixture::Remove_Variable(const QString& name)
{
    Click_Entry(Variables(), name);
    QTest::mouseClick(Find<QToolButton>("remove_variable"), Qt::LeftButton);
}

QComboBox* TSequenceFixture::Open_Selection(const QString& variable)
{
    const QModelIndex row = Entry(Variables(), variable);
    Click_Entry(Variables(), row.siblingAtColumn(1));
    // Where the row was selected before, the editor waits for a second click to be ruled out.
    if (!QTest::qWaitFor([this]() { return Open_Editor<QComboBox>(Variables()) != nullptr; })) {
        Fail_Missing("selection list of " + variable);
    }
    return Open_Editor<QComboBox>(Variables());
}

void TSequenceFixture::Choose_Component(const QString& variable, const QString& component)
{
    Choose_Entry(Open_Selection(variable), component);
}

void TSequenceFixture::Add_Group(const QString& name)
{
    d_answer.Type_Name(name);
    QTest::mouseClick(Find<QToolButton>("add_group"), Qt::LeftButton);
}

void TSequenceFixture::Select_Group(const QString& name)
{
    Show_Page("Report Groups");
    Click_Entry(Find<QListWidget>("group_list"), name);
}

void TSequenceFixture::Click_Everything()
{
    Show_Page("Budget Components");
    auto* identifiers = Find<QListWidget>("identifier_list");
    Click_All(Tree(), [identifiers]() {
        if (identifiers->isEnabled()) {
            Click_All(identifiers);
        }
    });
    Show_Page("Variables");
    Click_All(Variables());
    Show_Page("Report Groups");
    Click_All(Find<QListWidget>("group_list"));
    Show_Page("Report");
    Show_Page("Log");
}

// Saving and loading

QString TSequenceFixture::Save_A_Copy(TNorvexaEditor* window, const QString& name)
{
    QWidget* button = Child<QToolBar>(window, "tool_bar")->widgetForAction(Child<QAction>(window, "action_save_as"));
    d_answer.Choose_File(Path(name));
    QTest::mouseClick(button, Qt::LeftButton);
    return Path(name);
}

void TSequenceFixture::Expect_Shown(const TNorvexaEditor* window, const TBudget& saved, TLists lists)
{
    EXPECT_EQ(TConsistency(window, saved, lists == TLists::Stale).Differences().join('\n').toStdString(), "");
}

QStringList TSequenceFixture::Checked(TLists lists)
{
    EXPECT_TRUE(d_editor.isVisible());
    const QString path = Save_A_Copy(&d_editor, QStringLiteral("checked %1.norvexa").arg(++d_checks));
    const TBudget saved = Loaded(path);
    Expect_Shown(&d_editor, saved, lists);
    EXPECT_EQ(Escaped_Texts(Find<QListWidget>("group_list")), Names_Of(saved.groups));

    TNorvexaEditor fresh;
    Show_Active(&fresh);
    Drop_Files({path}, &fresh);
    const TBudget saved_again = Loaded(Save_A_Copy(&fresh, QStringLiteral("checked %1 again.norvexa").arg(d_checks)));
    Expect_Shown(&fresh, saved_again, TLists::Filled);
    EXPECT_EQ(Description(saved_again), Description(As_Saved(saved)));
    EXPECT_TRUE(fresh.close());
    Show_Active(&d_editor);

    TBudgetFile file = Read_Budget(path);
    file.variables.erase(file.variables.begin(), file.variables.begin() + BUILT_IN_COUNT);
    return Budget_File_Text(file);
}
