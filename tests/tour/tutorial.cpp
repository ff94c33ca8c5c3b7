#include "tests/tour/tutorial.h"

#include "tests/tour/dialogs.h"

#include <QAbstractButton>
#include <QAction>
#include <QDateEdit>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

namespace {

const char* const ROOT = "Norvexa Data";

// Of the files, whose suffixes the program adds.
const char* const NAME = "first-budget";

QStringList Report_Rows(const QTreeWidget* table)
{
    QStringList rows;
    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* entry = table->topLevelItem(row);
        const QString value = entry->text(6);
        rows << entry->text(0) + " | " + (value.isEmpty() ? entry->text(1) : value);
    }
    return rows;
}

} // namespace

TTutorial::TTutorial(const QString& chapter, const QString& pictures, const QString& files)
    : TTour(pictures), d_chapter(chapter), d_files(files)
{}

void TTutorial::Follow()
{
    Look_At_Start();
    Add_Height_Gauge();
    Add_Gauge_Items();
    Add_Gauge_Identifier();
    Add_Thermometer();
    Fill_Variables();
    Add_Shaft();
    Add_Group();
    Save();
    Read_Report();
    Choose_Gauge();
    Export();
}

// The steps

void TTutorial::Look_At_Start()
{
    Show_Picture("1-start");
}

void TTutorial::Add_Height_Gauge()
{
    Select("budget_tree", ROOT);
    Add_Entry("Height gauge", "first-budget-2-name");
    Read("pictures/first-budget-2-name.png");
    Show_Picture("3-component");
}

void TTutorial::Add_Gauge_Items()
{
    Add_Entry("Certificate");
    Expect_Label("unit_label", "Uc = f(expression) mm");
    Enter("expression", "0.003/2");
    Show_Picture("4-item");

    Add_Entry("Repeatability");
    Choose("uc_type", "Type A");
    Enter("expression", "0.0016/SQRT(4)");

    Add_Entry("Resolution");
    Choose("distribution", "Rectangular");
    Enter("expression", "Sr/2");
}

void TTutorial::Add_Gauge_Identifier()
{
    Select("budget_tree", "Certificate");
    Add_Name("add_identifier", "Add Identifier", "HG 07");
    Select("identifier_list", "HG 07");
    Expect_Label("item_title", "Identifier: HG 07");
    Enter_Date("calibration_date", "Mar", "16", "2026");
    Enter_Date("calibration_due_date", "Mar", "15", "2027");
    Click_Option("use_default_expression");
    Enter("expression", "0.002/2");
    Show_Picture("5-identifier");
}

void TTutorial::Add_Thermometer()
{
    Select("budget_tree", ROOT);
    Add_Entry("Thermometer");
    Add_Entry("Limits of error");
    Choose("distribution", "Rectangular");
    Enter("expression", "0.3");
    Click_Option("temperature");
    Expect_Label("unit_label", "Uc = f(expression) C");
}

void TTutorial::Fill_Variables()
{
    Turn_To_Page(Qt::Key_V);
    Add_Name("add_variable", "New Variable", "u_temp");
    Read_Named("Thermometer");
    Choose_In_Row("variable_list", "u_temp", "Thermometer");
    Enter("end_position", "500");
    Show_Picture("6-variables");
}

void TTutorial::Add_Shaft()
{
    Turn_To_Page(Qt::Key_C);
    Select("budget_tree", ROOT);
    Add_Entry("Shaft");
    Enter("component_length", "500");
    Enter("component_expansion_coefficient", "11.5");
    Add_Entry("Temperature");
    Enter("expression", "CTEc*u_temp");
    Click_Option("length_dependent");
    Expect_Label("unit_label", "Uc = f(expression) mm/m");
    Show_Picture("7-shaft");
}

void TTutorial::Add_Group()
{
    Turn_To_Page(Qt::Key_G);
    Add_Name("add_group", "Add Report Group", "Shaft length");
    Select("group_list", "Shaft length");
    Select("component_list", "Height gauge");
    Select("component_list", "Shaft");
    Show_Picture("8-group");
}

void TTutorial::Save()
{
    Expect(Find<QAction>("action_save")->isEnabled(), "there is something to save");
    Read_Typed(NAME);
    Dialogs::Choose_File(d_files.absoluteFilePath(NAME));
    QTest::keyClick(Window(), Qt::Key_S, Qt::ControlModifier);
    Expect_Window_Active();
    Expect_File(".norvexa");
    Expect(!Find<QAction>("action_save")->isEnabled(), "nothing is left to save");
}

void TTutorial::Read_Report()
{
    Turn_To_Page(Qt::Key_R);
    Choose("report_group", "Shaft length");
    Expect_Report({"Thermometer | [Default]", "Limits of error | 0.173205", "Height gauge | [Default]",
                   "Certificate | 0.001500", "Repeatability | 0.000800", "Resolution | 0.000289", "Shaft | [Default]",
                   "Temperature | 0.000996"},
                  "Uc at length 500.000 mm: 0.0020 mm");
    Show_Picture("9-report");
}

void TTutorial::Choose_Gauge()
{
    Read_Named("HG 07");
    Choose_In_Row("report_table", "Height gauge", "HG 07");
    Expect_Report({"Thermometer | [Default]", "Limits of error | 0.173205", "Height gauge | HG 07",
                   "Certificate | 0.001000", "Repeatability | 0.000800", "Resolution | 0.000289", "Shaft | [Default]",
                   "Temperature | 0.000996"},
                  "Uc at length 500.000 mm: 0.0016 mm");
    Show_Picture("10-gauge");
}

void TTutorial::Export()
{
    Export_File("export_csv", ".csv");
    Expect_Exported(
        {",,Position (mm),0.000,50.000,100.000,150.000,200.000,250.000,300.000,350.000,400.000,450.000,500.000",
         ",,Combined,0.001312758,0.001316530,0.001327783,0.001346329,0.001371872,0.001404031,0.001442362,"
         "0.001486389,0.001535621,0.001589576,0.001647789",
         ",,Uc(K=1):,0.001310+0.000070L+0.001220L^2 mm  (L is length in meters)",
         ",,Uc(K=2):,0.002621+0.000141L+0.002440L^2 mm  (L is length in meters)"});

    Export_File("export_pdf", ".pdf");
    Read("pictures/first-budget-11-pdf.png");
}

// Acts that the chapter asks for

void TTutorial::Add_Name(const QString& button, const QString& title, const QString& name, const QString& picture)
{
    Read_Named(title);
    Read_Typed(name);
    Dialogs::Enter_Name(name, [this, title, picture](QDialog* dialog) {
        Expect_Text(dialog->windowTitle(), title, "the dialog");
        if (!picture.isEmpty()) {
            Take_Picture_Of(dialog, picture);
        }
    });
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    Expect_Window_Active();
}

void TTutorial::Add_Entry(const QString& name, const QString& picture)
{
    Add_Name("add_budget_item", "New Budget Item", name, picture);
}

void TTutorial::Export_File(const QString& button, const QString& suffix)
{
    Read_Named(Find<QAbstractButton>(button)->text());
    Read_Typed(NAME);
    Dialogs::Choose_File(d_files.absoluteFilePath(NAME));
    Click(button);
    Expect_Window_Active();
    Expect_File(suffix);
}

void TTutorial::Select(const QString& list, const QString& entry)
{
    Read_Named(entry);
    Click_Entry(Find<QAbstractItemView>(list), entry);
}

void TTutorial::Enter(const QString& field, const QString& text)
{
    auto* edit = Find<QLineEdit>(field);
    Read_Label(edit);
    Read_Typed(text);
    Expect(edit->isEnabled(), "the field can be edited: " + field);
    Replace_Text(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void TTutorial::Choose(const QString& box, const QString& entry)
{
    auto* combo = Find<QComboBox>(box);
    Read_Label(combo);
    Read_Named(entry);
    Choose_Entry(combo, entry);
}

void TTutorial::Click_Option(const QString& option)
{
    const auto* button = Find<QAbstractButton>(option);
    const bool was_checked = button->isChecked();

    Read_Named(button->text());
    Click(option);
    Expect(button->isChecked() != was_checked, "the option changes: " + button->text());
}

// Typing goes on from the month to the day and the year by itself.
void TTutorial::Enter_Date(const QString& field, const QString& month, const QString& day, const QString& year)
{
    auto* edit = Find<QDateEdit>(field);
    Read_Label(edit);
    Read_Typed(month + day + year);
    auto* line = edit->findChild<QLineEdit*>();
    const int before_month = line->fontMetrics().horizontalAdvance("Sat M");
    const QPoint place(before_month, line->height() / 2);

    QTest::mouseClick(line, Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(line, Qt::LeftButton, Qt::NoModifier, place);
    QTest::keyClicks(edit, month + day + year);
    QTest::keyClick(edit, Qt::Key_Return);
    Expect_Text(QLocale::c().toString(edit->date(), "MMMddyyyy"), month + day + year, field);
    Read_Named(line->text());
}

// What the chapter says

void TTutorial::Read(const QString& text)
{
    Expect(d_chapter.Read_On(text), "the chapter goes on with: " + text);
}

void TTutorial::Read_Typed(const QString& text)
{
    Read('`' + text + '`');
}

void TTutorial::Read_Named(const QString& text)
{
    Read("**" + text + "**");
}

void TTutorial::Read_Label(const QWidget* field)
{
    for (const QLabel* label : Window()->findChildren<QLabel*>()) {
        if (label->buddy() == field) {
            Read_Named(label->text());
            return;
        }
    }
    Fail_Missing("label of " + field->objectName());
}

void TTutorial::Show_Picture(const QString& name)
{
    Read("pictures/first-budget-" + name + ".png");
    Take_Picture("first-budget-" + name);
}

void TTutorial::Expect_Label(const QString& label, const QString& text)
{
    Read_Named(text);
    Expect_Text(Find<QLabel>(label)->text(), text, label);
}

void TTutorial::Expect_Report(const QStringList& rows, const QString& status)
{
    for (const QString& row : rows) {
        Read("| " + row + " |");
    }
    Read_Named(status);
    Expect_Text(Report_Rows(Find<QTreeWidget>("report_table")).join('\n'), rows.join('\n'), "the report");
    Expect_Text(Find<QLabel>("report_status")->text(), status, "the status line");
}

void TTutorial::Expect_File(const QString& suffix)
{
    Read(NAME + suffix);
    Expect(QFileInfo(d_files.filePath(NAME + suffix)).size() > 0, "the file is written: " + suffix);
}

void TTutorial::Expect_Exported(const QStringList& lines)
{
    QFile source(d_files.filePath("first-budget.csv"));
    Expect(source.open(QIODevice::ReadOnly), "the export can be read");
    const QStringList written = QString::fromUtf8(source.readAll()).split('\n');

    for (const QString& line : lines) {
        Read(line);
        Expect(written.contains(line), "the export has the line: " + line);
    }
}
