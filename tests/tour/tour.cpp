#include "tests/tour/tour.h"

#include "src/norvexaeditor.h"
#include "tests/tour/screen.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTextStream>
#include <QToolBar>
#include <QTreeWidget>

namespace {

QModelIndex Index_Of(const QTreeWidget* tree, const QTreeWidgetItem* entry)
{
    QModelIndex parent;
    if (entry->parent() != nullptr) {
        parent = Index_Of(tree, entry->parent());
    }
    const int row = entry->parent() != nullptr ? entry->parent()->indexOfChild(const_cast<QTreeWidgetItem*>(entry)) : 0;
    return tree->model()->index(row, 0, parent);
}

} // namespace

TTour::TTour(const QString& examples, const QString& results) : d_examples(examples), d_results(results) {}

bool TTour::Run()
{
    TNorvexaEditor window;
    d_window = &window;
    window.show();
    window.raise();
    window.activateWindow();
    Expect(QTest::qWaitForWindowActive(&window), "the window becomes active");
    Take_Picture("start");

    const QStringList files = d_examples.entryList({"*.norvexa"}, QDir::Files, QDir::Name);
    Expect(!files.isEmpty(), "there are examples in " + d_examples.path());
    for (const QString& file : files) {
        Visit_Example(file);
    }
    Write_Figures();
    Look_At_Maximised_Window(files.value(0));
    return d_succeeded;
}

void TTour::Look_At_Maximised_Window(const QString& file)
{
    d_example = "maximised";
    d_window->showMaximized();
    Open_File(d_examples.absoluteFilePath(file));
    Look_At_Components();
    Look_At_Page(Qt::Key_V, "variables");
    Look_At_Groups();
    Look_At_Reports();
    Look_At_Page(Qt::Key_L, "log");
}

void TTour::Visit_Example(const QString& file)
{
    d_example = file.section('.', 0, 0);
    d_figures << d_example << QString(d_example.size(), '=') << QString();

    Open_File(d_examples.absoluteFilePath(file));
    Look_At_Components();
    Look_At_Page(Qt::Key_V, "variables");
    Look_At_Groups();
    Look_At_Reports();
    Look_At_Page(Qt::Key_L, "log");
}

void TTour::Open_File(const QString& path)
{
    QAction* open = Find<QAction>("action_open");

    Screen::Answer_File_Dialog(path);
    Screen::Click(Find<QToolBar>("tool_bar")->widgetForAction(open));
    Expect(QTest::qWaitForWindowActive(d_window), "the window is active again behind the dialog");
}

void TTour::Look_At_Components()
{
    auto* tree = Find<QTreeWidget>("budget_tree");
    Turn_To_Page(Qt::Key_C, "components");

    QTreeWidgetItem* root = tree->topLevelItem(0);
    Expect(root->childCount() > 0, "the tree shows components");
    for (int index = 0; index < root->childCount(); ++index) {
        QTreeWidgetItem* component = root->child(index);
        Screen::Click_Entry(tree, Index_Of(tree, component));
        if (component->childCount() > 0) {
            Screen::Click_Entry(tree, Index_Of(tree, component->child(0)));
        }
        Take_Picture(QString("components_%1").arg(index + 1));
    }
}

void TTour::Look_At_Page(Qt::Key key, const QString& name)
{
    Turn_To_Page(key, name);
    Take_Picture(name);
}

void TTour::Turn_To_Page(Qt::Key key, const QString& name)
{
    QTest::keyClick(d_window, key, Qt::AltModifier);
    Expect(Find<QAction>(("action_" + name).toUtf8().constData())->isChecked(), "the page is in front: " + name);
}

void TTour::Look_At_Groups()
{
    Turn_To_Page(Qt::Key_G, "groups");

    auto* groups = Find<QListWidget>("group_list");
    Expect(groups->count() > 0, "the groups page shows groups");
    if (groups->count() > 0) {
        Screen::Click_Entry(groups, groups->model()->index(0, 0));
    }
    Take_Picture("groups");
}

void TTour::Look_At_Reports()
{
    Turn_To_Page(Qt::Key_R, "report");

    auto* groups = Find<QComboBox>("report_group");
    Expect(groups->count() > 1, "the report page offers groups");
    for (int index = 1; index < groups->count(); ++index) {
        Screen::Choose_Entry(groups, index);
        Expect(groups->currentIndex() == index, "the group is chosen: " + groups->itemText(index));
        Read_Report(groups->currentText());
        Take_Picture(QString("report_%1").arg(index));
        Export("export_csv", QString("report_%1.csv").arg(index));
        Export("export_pdf", QString("report_%1.pdf").arg(index));
    }
}

void TTour::Export(const char* button, const QString& name)
{
    const QString file = d_results.absoluteFilePath(d_example + '_' + name);

    Screen::Answer_File_Dialog(file);
    Screen::Click(Find<QPushButton>(button));
    Expect(QTest::qWaitForWindowActive(d_window), "the window is active again behind the dialog");
    Expect(QFileInfo(file).size() > 0, "the export is written: " + file);
}

void TTour::Read_Report(const QString& group)
{
    const auto* table = Find<QTreeWidget>("report_table");
    const QString status = Find<QLabel>("report_status")->text();

    Expect(table->topLevelItemCount() > 0, "the report has rows: " + group);
    Expect(status.startsWith("Uc at length ") && !status.contains("ERR"), "the report has a result: " + group);

    d_figures << "Group: " + group;
    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* entry = table->topLevelItem(row);
        d_figures << QString("    %1 %2  %3")
                         .arg(entry->text(0), -40)
                         .arg(entry->text(6), 12)
                         .arg(entry->text(2))
                         .trimmed()
                         .prepend("    ");
    }
    d_figures << "    " + status << QString();
}

void TTour::Take_Picture(const QString& name)
{
    const QString file = d_results.filePath((d_example.isEmpty() ? name : d_example + '_' + name) + ".png");

    Expect(Screen::Take_Picture(d_window, file), "the picture is written: " + file);
}

void TTour::Write_Figures()
{
    QFile file(d_results.filePath("figures.txt"));
    Expect(file.open(QIODevice::WriteOnly | QIODevice::Text), "the figures are written: " + file.fileName());

    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << d_figures.join('\n') << '\n';
}

void TTour::Expect(bool condition, const QString& what)
{
    if (!condition) {
        d_succeeded = false;
        QTextStream(stderr) << "Not as expected: " << what << '\n';
    }
}

template <typename TWidget>
TWidget* TTour::Find(const char* object_name) const
{
    auto* found = d_window->findChild<TWidget*>(object_name);
    if (found == nullptr) {
        qFatal("The window has no %s", object_name);
    }
    return found;
}
