#include "tests/support/sequencefixture.h"

#include "tests/support/randombudget.h"

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

// Names as the window shows them. What a file of its own escapes on the way out is escaped here.
class TShownNames
{
public:
    TShownNames(const TNorvexaEditor* window, bool is_escaped) : d_window(window), d_is_escaped(is_escaped) {}

    QStringList Tree() const
    {
        const auto* tree = Child<QTreeWidget>(d_window, "budget_tree");
        QStringList components;
        for (int root = 0; root < tree->topLevelItemCount(); ++root) {
            for (int row = 0; row < tree->topLevelItem(root)->childCount(); ++row) {
                components << Component(tree->topLevelItem(root)->child(row));
            }
        }
        components.sort();
        return components;
    }

    QStringList Variables() const
    {
        const auto* list = Child<QTreeWidget>(d_window, "variable_list");
        QStringList names;
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            names << Text(list->topLevelItem(row)->text(0));
        }
        return names;
    }

    QStringList Groups() const
    {
        const auto* list = Child<QListWidget>(d_window, "group_list");
        QStringList names;
        for (int row = 0; row < list->count(); ++row) {
            names << Text(list->item(row)->text());
        }
        return names;
    }

private:
    QString Text(const QString& text) const { return d_is_escaped ? text.toHtmlEscaped() : text; }

    QString Component(const QTreeWidgetItem* entry) const
    {
        QStringList items;
        for (int row = 0; row < entry->childCount(); ++row) {
            items << Text(entry->child(row)->text(0));
        }
        items.sort();
        return Text(entry->text(0)) + "(" + items.join(", ") + ")";
    }

    const TNorvexaEditor* d_window;
    bool d_is_escaped;
};

QStringList Component_Names(const TNorvexa& document)
{
    QStringList components;
    for (const QString& component : document.Enum_Components()) {
        QStringList items = document.Enum_Component_Items(component);
        items.sort();
        components << component + "(" + items.join(", ") + ")";
    }
    components.sort();
    return components;
}

template <typename TRecord>
QStringList Names(const std::vector<TRecord>& records)
{
    QStringList names;
    for (const TRecord& record : records) {
        names << record.name;
    }
    return names;
}

TBudget Loaded(const QString& path)
{
    QString error;
    const TBudget budget = Loaded_Budget(path, &error);
    EXPECT_EQ(error, "");
    return budget;
}

QStringList Selected_Texts(const QListWidget* list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        if (list->item(row)->isSelected()) {
            texts << list->item(row)->text();
        }
    }
    return texts;
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

QStringList TSequenceFixture::Check()
{
    EXPECT_TRUE(d_editor.isVisible());
    if (!Action("action_save_as")->isEnabled()) {
        // Nothing to save yet: a field that no file keeps makes it an edited budget.
        Show_Page("Variables");
        Replace_Text(Find<QLineEdit>("start_position"), "0.000");
    }
    const QString path = Save_A_Copy(&d_editor, QStringLiteral("checked %1.norvexa").arg(++d_checks));
    Expect_Shown(&d_editor, path, true);

    TNorvexaEditor fresh;
    Show_Active(&fresh);
    Drop_Files({path}, &fresh);
    Expect_Shown(&fresh, path, false);
    EXPECT_EQ(Description(Loaded(Save_A_Copy(&fresh, QStringLiteral("checked %1 again.norvexa").arg(d_checks)))),
              Description(As_Saved(Loaded(path))));
    EXPECT_TRUE(fresh.close());
    Show_Active(&d_editor);

    TBudgetFile saved = Read_Budget(path);
    saved.variables.erase(saved.variables.begin(), saved.variables.begin() + BUILT_IN_COUNT);
    return Budget_File_Text(saved);
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
    return Selected_Texts(Find<QListWidget>("group_list")).join(", ") + " | " +
           Selected_Texts(Find<QListWidget>("component_list")).join(", ");
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

void TSequenceFixture::Expect_Shown(const TNorvexaEditor* window, const QString& path, bool is_escaped) const
{
    const TBudgetFile saved = Read_Budget(path);
    const TShownNames shown(window, is_escaped);

    EXPECT_EQ(shown.Tree(), Component_Names(saved.document));
    EXPECT_EQ(shown.Variables(), Names(saved.variables));
    EXPECT_EQ(shown.Groups(), Names(saved.groups));
}
