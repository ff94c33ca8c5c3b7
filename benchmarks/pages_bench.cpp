#include "benchmarks/child.h"
#include "benchmarks/largebudget.h"
#include "src/norvexaeditor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace {

constexpr int MANY_COMPONENTS = 2'000;
constexpr int FEW_COMPONENTS = 200;
constexpr int ITEMS = 20;

class TLargeBudgetFile
{
public:
    explicit TLargeBudgetFile(int components)
    {
        const TLargeBudget budget(components, ITEMS);
        if (!budget.Save(Name(), budget.variables, budget.groups, budget.input_data)) {
            throw std::runtime_error("the budget was not saved");
        }
    }

    QString Name() const { return d_folder.filePath("budget.norvexa"); }

private:
    QTemporaryDir d_folder;
};

/// What is due is done, and the widgets are painted.
void Finish()
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

void Press(QWidget* widget, Qt::Key key, const QString& text = QString())
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(widget, &event);
    }
}

/// The main window with a large budget, of which an item of the last component is selected.
class TPages
{
public:
    explicit TPages(int components) : d_file(components)
    {
        window.show();
        window.Load_Data(d_file.Name());
        QApplication::setActiveWindow(&window);
        tree = Child<QTreeWidget>(window, "budget_tree");
        expression = Child<QLineEdit>(window, "expression");
        length = Child<QLineEdit>(window, "component_length");

        if (tree->topLevelItem(0)->childCount() != components) {
            throw std::runtime_error("the budget was not loaded");
        }
        const QTreeWidgetItem* last = Component_Entry(components);
        component = last->text(0);
        item = last->child(1)->text(0);
        Select();
    }

    void Select()
    {
        window.Select_BudgetTree_Item(component, item);
        Finish();
    }

    void Load()
    {
        window.Load_Data(d_file.Name());
        Finish();
    }

    TNorvexaEditor window;
    QTreeWidget* tree = nullptr;
    QLineEdit* expression = nullptr;
    QLineEdit* length = nullptr;
    QString component;
    QString item;

private:
    /// The tree is sorted by the names, which end in the position of the component in the document.
    const QTreeWidgetItem* Component_Entry(int number) const
    {
        const QTreeWidgetItem* root = tree->topLevelItem(0);
        for (int row = 0; row < root->childCount(); ++row) {
            if (root->child(row)->text(0).endsWith(QString(" %1").arg(number))) {
                return root->child(row);
            }
        }
        throw std::runtime_error("no such component");
    }

    TLargeBudgetFile d_file;
};

// Opened once, because opening takes long, and left to the end of the program: they must not outlive the application.

TPages& Many_Pages()
{
    static auto* const pages = new TPages(MANY_COMPONENTS);
    return *pages;
}

TPages& Few_Pages()
{
    static auto* const pages = new TPages(FEW_COMPONENTS);
    return *pages;
}

// Building the tree

void Tree_Rebuild_Program(benchmark::State& state)
{
    TPages& pages = Many_Pages();
    while (state.KeepRunning()) {
        pages.window.Update_BudgetTree();
        pages.Select();
    }
}
BENCHMARK(Tree_Rebuild_Program)->Name("Pages/tree_rebuild/program")->Unit(benchmark::kMillisecond);

struct TBranch
{
    QString name;
    QStringList children;
};

/// The components as the document has them, unsorted.
std::vector<TBranch> Branches()
{
    const TLargeBudget budget(MANY_COMPONENTS, ITEMS);
    std::vector<TBranch> branches;
    for (const QString& component : budget.Enum_Components()) {
        branches.push_back({component, budget.Enum_Component_Items(component)});
    }
    return branches;
}

QTreeWidgetItem* Bare_Entry(const QString& name, const QStringList& children)
{
    QList<QTreeWidgetItem*> entries;
    for (const QString& child : children) {
        entries.append(new QTreeWidgetItem(QStringList(child)));
    }
    auto* entry = new QTreeWidgetItem(QStringList(name));
    entry->addChildren(entries);
    return entry;
}

void Fill(QTreeWidget* tree, const std::vector<TBranch>& branches)
{
    QList<QTreeWidgetItem*> entries;
    for (const TBranch& branch : branches) {
        entries.append(Bare_Entry(branch.name, branch.children));
    }
    auto* root = new QTreeWidgetItem(QStringList("Norvexa Data"));
    root->addChildren(entries);
    tree->clear();
    tree->addTopLevelItem(root);
    tree->expandAll();
    Finish();
}

void Tree_Rebuild_Bare(benchmark::State& state)
{
    const std::vector<TBranch> branches = Branches();
    QTreeWidget tree;
    tree.resize(Many_Pages().tree->size());
    tree.setHeaderHidden(true);
    tree.setSortingEnabled(true);
    tree.sortByColumn(0, Qt::AscendingOrder);
    tree.show();
    Fill(&tree, branches);
    while (state.KeepRunning()) {
        Fill(&tree, branches);
    }
}
BENCHMARK(Tree_Rebuild_Bare)->Name("Pages/tree_rebuild/bare")->Unit(benchmark::kMillisecond);

// Opening a file

void Open_Program(benchmark::State& state)
{
    // A window of its own: one in which something was edited would ask before it opens another budget.
    TPages pages(MANY_COMPONENTS);
    while (state.KeepRunning()) {
        pages.Load();
    }
}
BENCHMARK(Open_Program)->Name("Pages/open/program")->Unit(benchmark::kMillisecond);

void Open_Bare(benchmark::State& state)
{
    const TLargeBudgetFile file(MANY_COMPONENTS);
    while (state.KeepRunning()) {
        TNorvexa document;
        std::vector<TVariable> variables;
        std::vector<TGroup> groups;
        TInputData input_data;
        if (!document.Load(file.Name(), &variables, &groups, &input_data)) {
            state.SkipWithError("the budget was not loaded");
        }
    }
}
BENCHMARK(Open_Bare)->Name("Pages/open/bare")->Unit(benchmark::kMillisecond);

// What the user does, in a large budget and in one of a tenth of its size

void Select_Neighbours(TPages* pages)
{
    Press(pages->tree, Qt::Key_Down);
    Finish();
    Press(pages->tree, Qt::Key_Up);
    Finish();
}

/// A digit behind the text, and away with it.
void Type(QLineEdit* editor)
{
    Press(editor, Qt::Key_1, "1");
    Finish();
    Press(editor, Qt::Key_Backspace);
    Finish();
}

/// The same, each time into the record.
void Edit(QLineEdit* editor)
{
    Press(editor, Qt::Key_1, "1");
    Press(editor, Qt::Key_Return);
    Finish();
    Press(editor, Qt::Key_Backspace);
    Press(editor, Qt::Key_Return);
    Finish();
}

void Work_On(TPages* pages, QWidget* widget, benchmark::State& state, const std::function<void()>& work)
{
    QApplication::setActiveWindow(&pages->window);
    pages->Select();
    widget->setFocus();
    Finish();
    if (!widget->hasFocus()) {
        state.SkipWithError("the widget takes no keys");
    }
    while (state.KeepRunning()) {
        work();
    }
}

void Select(benchmark::State& state, TPages& (*open)())
{
    TPages& pages = open();
    Work_On(&pages, pages.tree, state, [&pages] { Select_Neighbours(&pages); });
}
BENCHMARK_CAPTURE(Select, many, Many_Pages)->Name("Pages/select/program")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Select, few, Few_Pages)->Name("Pages/select/bare")->Unit(benchmark::kMicrosecond);

void Type_Expression(benchmark::State& state, TPages& (*open)())
{
    TPages& pages = open();
    Work_On(&pages, pages.expression, state, [&pages] { Type(pages.expression); });
}
BENCHMARK_CAPTURE(Type_Expression, many, Many_Pages)->Name("Pages/type/program")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Type_Expression, few, Few_Pages)->Name("Pages/type/bare")->Unit(benchmark::kMicrosecond);

void Edit_Expression(benchmark::State& state, TPages& (*open)())
{
    TPages& pages = open();
    Work_On(&pages, pages.expression, state, [&pages] { Edit(pages.expression); });
}
BENCHMARK_CAPTURE(Edit_Expression, many, Many_Pages)->Name("Pages/edit/program")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Edit_Expression, few, Few_Pages)->Name("Pages/edit/bare")->Unit(benchmark::kMicrosecond);

} // namespace
