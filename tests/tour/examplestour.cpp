#include "tests/tour/examplestour.h"

#include "tests/tour/dialogs.h"

#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTextStream>
#include <QTreeWidget>

namespace {

QString Figure_Line(const QTreeWidgetItem* row)
{
    const QString line = QString("%1 %2  %3").arg(row->text(0), -40).arg(row->text(6), 12).arg(row->text(2));

    return line.trimmed().prepend("    ");
}

} // namespace

TExamplesTour::TExamplesTour(const QString& examples, const QString& results)
    : TTour(results), d_examples(examples), d_results(results)
{}

void TExamplesTour::Follow()
{
    Take_Picture("start");

    const QStringList files = d_examples.entryList({"*.norvexa"}, QDir::Files, QDir::Name);
    Expect(!files.isEmpty(), "there are examples in " + d_examples.path());
    for (const QString& file : files) {
        Visit_Example(file);
    }
    Write_Figures();
    Look_At_Maximised_Window(files.value(0));
}

void TExamplesTour::Visit_Example(const QString& file)
{
    d_example = file.section('.', 0, 0);
    d_figures << d_example << QString(d_example.size(), '=') << QString();

    Open_File(d_examples.absoluteFilePath(file));
    Look_At_Pages();
}

void TExamplesTour::Look_At_Maximised_Window(const QString& file)
{
    d_example = "maximised";
    Window()->showMaximized();
    Open_File(d_examples.absoluteFilePath(file));
    Look_At_Pages();
}

void TExamplesTour::Look_At_Pages()
{
    Look_At_Components();
    Look_At_Page(Qt::Key_V, "variables");
    Look_At_Groups();
    Look_At_Reports();
    Look_At_Page(Qt::Key_L, "log");
}

void TExamplesTour::Look_At_Components()
{
    auto* tree = Find<QTreeWidget>("budget_tree");
    Turn_To_Page(Qt::Key_C);

    const QModelIndex root = tree->model()->index(0, 0);
    const int count = tree->model()->rowCount(root);
    Expect(count > 0, "the tree shows components");
    for (int row = 0; row < count; ++row) {
        const QModelIndex component = tree->model()->index(row, 0, root);
        Click_Entry(tree, component);
        if (tree->model()->rowCount(component) > 0) {
            Click_Entry(tree, tree->model()->index(0, 0, component));
        }
        Take_Example_Picture(QString("components_%1").arg(row + 1));
    }
}

void TExamplesTour::Look_At_Page(Qt::Key key, const QString& name)
{
    Turn_To_Page(key);
    Take_Example_Picture(name);
}

void TExamplesTour::Look_At_Groups()
{
    Turn_To_Page(Qt::Key_G);

    auto* groups = Find<QListWidget>("group_list");
    Expect(groups->count() > 0, "the groups page shows groups");
    if (groups->count() > 0) {
        Click_Entry(groups, groups->model()->index(0, 0));
    }
    Take_Example_Picture("groups");
}

void TExamplesTour::Look_At_Reports()
{
    Turn_To_Page(Qt::Key_R);

    auto* groups = Find<QComboBox>("report_group");
    Expect(groups->count() > 1, "the report page offers groups");
    for (int index = 1; index < groups->count(); ++index) {
        const QString group = groups->itemText(index);
        Choose_Group(group);
        Expect_Text(groups->currentText(), group, "the choice of groups");
        Read_Report(group);
        Take_Example_Picture(QString("report_%1").arg(index));
        Export("export_csv", QString("report_%1.csv").arg(index));
        Export("export_pdf", QString("report_%1.pdf").arg(index));
    }
}

void TExamplesTour::Read_Report(const QString& group)
{
    const auto* table = Find<QTreeWidget>("report_table");
    const QString status = Find<QLabel>("report_status")->text();

    Expect(table->topLevelItemCount() > 0, "the report has rows: " + group);
    Expect(status.startsWith("Uc at length ") && !status.contains("ERR"), "the report has a result: " + group);

    d_figures << "Group: " + group;
    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        d_figures << Figure_Line(table->topLevelItem(row));
    }
    d_figures << "    " + status << QString();
}

void TExamplesTour::Export(const QString& button, const QString& name)
{
    const QString file = d_results.absoluteFilePath(d_example + '_' + name);

    Dialogs::Choose_File(file);
    Click(button);
    Expect_Window_Active();
    Expect(QFileInfo(file).size() > 0, "the export is written: " + file);
}

void TExamplesTour::Take_Example_Picture(const QString& name)
{
    Take_Picture(d_example + '_' + name);
}

void TExamplesTour::Write_Figures()
{
    QFile file(d_results.filePath("figures.txt"));
    Expect(file.open(QIODevice::WriteOnly | QIODevice::Text), "the figures are written: " + file.fileName());

    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << d_figures.join('\n') << '\n';
}
