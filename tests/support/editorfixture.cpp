#include "tests/support/editorfixture.h"

#include "tests/support/budgettext.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>

#include <stdexcept>

namespace {

QString Plain_Text(const QAction* action)
{
    return action->text().remove('&');
}

QAction* Find_Action(const QList<QAction*>& actions, const QString& text)
{
    for (QAction* action : actions) {
        if (Plain_Text(action) == text) {
            return action;
        }
    }
    Fail_Missing("menu entry " + text);
}

QString Nested_Names(const QTreeWidgetItem* entry)
{
    QStringList children;
    for (int index = 0; index < entry->childCount(); ++index) {
        children << Nested_Names(entry->child(index));
    }
    const bool is_item = entry->parent() != nullptr && entry->parent()->parent() != nullptr;
    return is_item ? entry->text(0) : QStringLiteral("%1(%2)").arg(entry->text(0), children.join(", "));
}

QStringList Entries(const QListWidget* list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        texts << list->item(row)->text();
    }
    return texts;
}

void Require(bool done, const TNorvexa& document)
{
    if (!done) {
        throw std::runtime_error(document.Last_Error().toStdString());
    }
}

void Set_Expression(TNorvexa* document, const QString& component, const QString& item, const QString& expression)
{
    document->Update_Component_Item(component, item, QString(), expression, false);
}

} // namespace

// Files

TBudgetFile Sample_Budget()
{
    TBudgetFile budget;
    budget.document.Add_Component("Probe");
    budget.document.Add_Component_Item("Probe", "Repeatability");
    budget.document.Add_Component_Item("Probe", "Resolution");
    Set_Expression(&budget.document, "Probe", "Repeatability", "0.003");
    Set_Expression(&budget.document, "Probe", "Resolution", "0.004");
    budget.document.Component_Add_Identifier("Probe", "SN 1");
    budget.document.Add_Component("Scale");
    budget.document.Add_Component_Item("Scale", "Drift");

    TVariable wear;
    wear.name = "Wear";
    wear.description = "Probe";
    budget.variables = {wear};
    budget.groups = {{"Length", {"Probe", "Scale"}}};
    budget.input_data.report_end = 500.0;
    return budget;
}

QStringList Budget_File_Text(const TBudgetFile& budget)
{
    QStringList lines = Budget_Text(budget.document);
    for (const TVariable& variable : budget.variables) {
        lines << QStringLiteral("variable <%1> <%2>").arg(variable.name, variable.description);
    }
    for (const TGroup& group : budget.groups) {
        lines << QStringLiteral("group <%1> (%2)").arg(group.name, group.items.join(", "));
    }
    const TInputData& input = budget.input_data;
    for (const double value :
         {input.machine_expansion_coefficient, input.machine_scale, input.temperature_minimum,
          input.temperature_maximum, input.temperature_gradient, input.report_increment, input.report_end}) {
        lines << "input " + Exact_Text(value);
    }
    return lines;
}

void Write_Budget(const TBudgetFile& budget, const QString& path)
{
    Require(budget.document.Save(path, budget.variables, budget.groups, budget.input_data), budget.document);
}

TBudgetFile Read_Budget(const QString& path)
{
    TBudgetFile budget;
    Require(budget.document.Load(path, &budget.variables, &budget.groups, &budget.input_data), budget.document);
    return budget;
}

// Window

TEditorFixture::TEditorFixture()
{
    // A test may close the window; dialogs that open later need an application that goes on.
    QApplication::setQuitOnLastWindowClosed(false);
    Show_Active(&d_editor);
}

QAction* TEditorFixture::Action(const QString& object_name) const
{
    auto* action = d_editor.findChild<QAction*>(object_name);
    if (action == nullptr) {
        Fail_Missing("action " + object_name);
    }
    return action;
}

QTreeWidget* TEditorFixture::Tree() const
{
    return Find<QTreeWidget>("budget_tree");
}

QString TEditorFixture::Tree_Text() const
{
    QStringList names;
    for (int index = 0; index < Tree()->topLevelItemCount(); ++index) {
        names << Nested_Names(Tree()->topLevelItem(index));
    }
    return names.join(", ");
}

QStringList TEditorFixture::Selected_Entries() const
{
    QStringList names;
    for (const QTreeWidgetItem* entry : Tree()->selectedItems()) {
        names << entry->text(0);
    }
    return names;
}

QString TEditorFixture::Page() const
{
    const auto* pages = Find<QTabWidget>("pages");
    return pages->tabText(pages->currentIndex());
}

QStringList TEditorFixture::Checked_Pages() const
{
    QStringList names;
    for (const char* name : {"action_components", "action_variables", "action_groups", "action_report", "action_log"}) {
        if (Action(name)->isChecked()) {
            names << Plain_Text(Action(name));
        }
    }
    return names;
}

QString TEditorFixture::Log() const
{
    return Find<QPlainTextEdit>("log")->toPlainText();
}

QString TEditorFixture::Saving() const
{
    QStringList names;
    for (const char* name : {"action_save", "action_save_as"}) {
        if (Action(name)->isEnabled()) {
            names << Plain_Text(Action(name));
        }
    }
    return names.join(", ");
}

QStringList TEditorFixture::Groups() const
{
    return Entries(Find<QListWidget>("group_list"));
}

QStringList TEditorFixture::Offered_Groups() const
{
    const auto* box = Find<QComboBox>("report_group");
    QStringList names;
    for (int index = 0; index < box->count(); ++index) {
        names << box->itemText(index);
    }
    return names;
}

QStringList TEditorFixture::Available_Components() const
{
    return Entries(Find<QListWidget>("component_list"));
}

QString TEditorFixture::Path(const QString& name) const
{
    return d_folder.filePath(name);
}

// Acts

void TEditorFixture::Click_Tool(const QString& action)
{
    QWidget* button = Find<QToolBar>("tool_bar")->widgetForAction(Action(action));
    if (button == nullptr) {
        Fail_Missing("tool button of " + action);
    }
    QTest::mouseClick(button, Qt::LeftButton);
}

void TEditorFixture::Choose_In_Menu(const QString& menu, const QString& entry)
{
    QMenuBar* bar = d_editor.menuBar();
    QAction* title = Find_Action(bar->actions(), menu);
    QAction* action = Find_Action(title->menu()->actions(), entry);

    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(title).center());
    QTest::mouseClick(title->menu(), Qt::LeftButton, Qt::NoModifier, title->menu()->actionGeometry(action).center());
}

void TEditorFixture::Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    // The offscreen platform may leave no window active where a dialog has closed.
    if (QApplication::activeWindow() == nullptr) {
        Show_Active(&d_editor);
    }
    QWidget* focused = QApplication::focusWidget();
    QTest::keyClick(focused == nullptr ? &d_editor : focused, key, modifiers);
}

void TEditorFixture::Select_Entry(const QString& name)
{
    Click_Entry(Tree(), name);
}

void TEditorFixture::Add_Component(const QString& name)
{
    Add_Item("Norvexa Data", name);
}

void TEditorFixture::Add_Item(const QString& component, const QString& name)
{
    Select_Entry(component);
    d_answer.Type_Name(name);
    QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton);
}

bool TEditorFixture::Drop_Files(const QStringList& paths, QWidget* target)
{
    QMimeData data;
    QList<QUrl> urls;
    QStringList texts;
    for (const QString& path : paths) {
        urls << QUrl::fromLocalFile(path);
        texts << urls.last().toString();
    }
    data.setUrls(urls);
    // As file managers do it: a text editor that takes drops would take this one.
    data.setText(texts.join('\n'));
    return Drop_Data(data, target);
}

// The window system tells the widget under the cursor; Qt offers the drag to its parents and remembers who took it.
bool TEditorFixture::Drop_Data(const QMimeData& data, QWidget* target)
{
    QWidget* under_cursor = target == nullptr ? &d_editor : target;
    const QPoint position = under_cursor->rect().center();

    QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(under_cursor, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent drop(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(under_cursor, &drop);
    return true;
}

QString TEditorFixture::Open_Budget(const TBudgetFile& budget, const QString& name)
{
    Write_Budget(budget, Path(name));
    Drop_Files({Path(name)});
    return Path(name);
}

void TEditorFixture::Save_As(const QString& path)
{
    d_answer.Choose_File(path);
    Click_Tool("action_save_as");
}
