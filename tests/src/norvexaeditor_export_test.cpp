#include "core/number.h"
#include "tests/faults/faultycalls.h"
#include "tests/support/exportfixture.h"
#include "tests/support/tinydisk.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>
#include <string>
#include <unistd.h>

namespace {

using TItem = TNorvexaData::TComponentItem;

// Budgets

TItem Item(const QString& name, const QString& expression,
           TNorvexaData::TExpressionType type = TNorvexaData::CONSTANT_LINEAR)
{
    TItem item;
    item.name = name;
    item.expression = expression;
    item.expression_type = type;
    return item;
}

TItem Temperature_Item(const QString& name)
{
    return Item(name, "0.1", TNorvexaData::CONSTANT_TEMPERATURE);
}

void Add(TBudgetFile* budget, const QString& name, const std::vector<TItem>& items)
{
    TNorvexaData::TComponent component;
    component.name = name;
    component.items = items;
    budget->document.Add_Component(name);
    budget->document.Update_Component(component);
}

void Add_Variable(TBudgetFile* budget, const QString& name, const QString& description)
{
    TVariable variable;
    variable.name = name;
    variable.description = description;
    budget->variables.push_back(variable);
}

/// The group "Length" of the component "Probe", from 0 to 100 mm in steps of 50.
TBudgetFile Probe_Budget(const QString& expression = "0.003+L*0.000001")
{
    TBudgetFile budget;
    Add(&budget, "Probe", {Item("Ball", expression)});
    budget.groups = {{"Length", {"Probe"}}};
    budget.input_data.report_end = 100.0;
    return budget;
}

/// The same probe, whose expression uses the variable "Bend", which stands for `description` of the component "Beam".
TBudgetFile Bend_Budget(const QString& beam_expression, const QString& description = "Beam")
{
    TBudgetFile budget = Probe_Budget("0.003+L*0.000001+0*Bend");
    Add(&budget, "Beam", {Item("Load", beam_expression)});
    Add_Variable(&budget, "Bend", description);
    return budget;
}

/// The group "Length" mixes units.
TBudgetFile Mixed_Budget()
{
    TBudgetFile budget = Probe_Budget();
    Add(&budget, "Room", {Temperature_Item("Cycle")});
    budget.groups = {{"Length", {"Probe", "Room"}}};
    return budget;
}

// Texts

const char* const MIXED_UNITS =
    "ERR:  Cannot mix linear and temperature expressions.  Use a variable to combine un-related items";

/// A line of the log of fields that fit into their columns.
QString Line(const QStringList& fields)
{
    QString line;
    for (const QString& field : fields) {
        line += field.leftJustified(20);
    }
    return line;
}

QString Positions_Row(const std::vector<double>& positions)
{
    QString row = ",,Position (mm)";
    for (const double position : positions) {
        row += ',' + Fixed_Text(position, 3);
    }
    return row;
}

// Conditions of the system

/// File permissions bind the process as long as the object lives, also where the tests run as root.
class TPlainUser
{
public:
    TPlainUser() : d_user(geteuid()), d_group(getegid())
    {
        constexpr unsigned NOBODY = 65534;
        d_is_plain = d_user != 0 || (setegid(NOBODY) == 0 && seteuid(NOBODY) == 0);
    }
    ~TPlainUser()
    {
        const bool is_restored = seteuid(d_user) == 0 && setegid(d_group) == 0;
        EXPECT_TRUE(is_restored);
    }
    Q_DISABLE_COPY(TPlainUser)

    bool Is_Plain() const { return d_is_plain; }

private:
    uid_t d_user;
    gid_t d_group;
    bool d_is_plain;
};

/// The most lines that a text has taken at once.
class TLargestPiece
{
public:
    explicit TLargestPiece(const QPlainTextEdit* text)
    {
        QObject::connect(text, &QPlainTextEdit::textChanged, &d_context, [this, text] {
            const int line_count = text->document()->isEmpty() ? 0 : text->blockCount();
            d_size = std::max(d_size, line_count - d_line_count);
            d_line_count = line_count;
        });
    }

    int Size() const { return d_size; }

private:
    QObject d_context;
    int d_line_count = 0;
    int d_size = 0;
};

class TNorvexaEditorExport : public TExportFixture
{
protected:
    void Show(const TBudgetFile& budget)
    {
        Open_Budget(budget);
        Show_Report("Length");
    }

    /// Shows a report with an error, whose export buttons are off, and exports it all the same.
    void Export_With_Error(TBudgetFile budget)
    {
        Add(&budget, "Plain", {Item("Good", "0.001")});
        budget.groups.push_back({"Good", {"Plain"}});
        Open_Budget(budget);
        Choose_CSV("Good");
        Show_Report("Length");
        ASSERT_FALSE(Exports_Are_Enabled());
        d_answer.Choose_File(Path("export.csv"));
        d_editor.Generate_Export_Report("Length");
    }

    /// Makes CSV the kind of file that is asked for, with an export of another group that is cancelled.
    void Choose_CSV(const QString& group)
    {
        Show_Report(group);
        d_answer.Cancel_File();
        Click_Export_CSV();
    }

    /// The lines of the written file, without the empty ones.
    QStringList Written_Lines(const QString& name = "export.csv") const
    {
        return QString::fromLatin1(Bytes(Path(name))).split('\n', Qt::SkipEmptyParts);
    }

    QStringList Rows(const QString& beginning) const
    {
        return Written_Lines().filter(QRegularExpression('^' + QRegularExpression::escape(beginning)));
    }

    /// The folder "locked", which anybody may look into and nobody may write but root.
    void Make_Locked_Folder() const
    {
        const auto look = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
        EXPECT_TRUE(QDir(d_folder.path()).mkdir("locked"));
        EXPECT_TRUE(QFile::setPermissions(Path("locked"), look));
        EXPECT_TRUE(QFile::setPermissions(d_folder.path(), look | QFile::WriteOwner));
    }

    /// Exports into a folder that nobody may write.
    void Export_PDF_Into_A_Locked_Folder(const QString& name)
    {
        Make_Locked_Folder();
        d_answer.Choose_File(Path("locked/" + name));
        const TPlainUser user;
        ASSERT_TRUE(user.Is_Plain());
        Click_Export_PDF();
    }

    /// Exports over a file that is there, where not a byte is left.
    void Export_CSV_On_A_Full_Disk(const QString& name)
    {
        Write_File(name, "old");
        d_answer.Choose_File(Path(name));
        d_answer.Click(QMessageBox::Yes);
        const TFullDisk disk(d_folder.path());
        Click_Export_CSV();
    }

    /// What a folder holds, hidden files and folders included.
    QStringList Entries(const QString& folder) const
    {
        return QDir(Path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QStringList Log_Lines() const { return Log().split('\n'); }

    void Write_File(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly)) {
            Fail_Missing("file to write " + name);
        }
        file.write(bytes);
    }

    bool Exports_Are_Enabled() const
    {
        const bool is_pdf_enabled = Find<QPushButton>("export_pdf")->isEnabled();
        EXPECT_EQ(Find<QPushButton>("export_csv")->isEnabled(), is_pdf_enabled);
        return is_pdf_enabled;
    }
};

} // namespace

// Dialog

TEST_F(TNorvexaEditorExport, Asks_for_the_name_of_a_CSV_file)
{
    Show(Probe_Budget());
    d_answer.Choose_File(Path("export.csv"));

    Click_Export_CSV();

    ASSERT_EQ(d_answer.Seen_Count(), 1);
    const TModalAnswer::TSeen seen = d_answer.Seen(0);
    EXPECT_EQ(seen.title, "Enter the name of the CSV to create");
    EXPECT_EQ(seen.parent, &d_editor);
    EXPECT_EQ(seen.name_filters, QStringList("CSV files (*.csv)"));
    EXPECT_EQ(seen.directory, d_folder.path());
    EXPECT_TRUE(seen.saves);
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, Asks_for_the_name_of_a_PDF_file)
{
    Show(Probe_Budget());
    d_answer.Cancel_File();

    Click_Export_PDF();

    ASSERT_EQ(d_answer.Seen_Count(), 1);
    const TModalAnswer::TSeen seen = d_answer.Seen(0);
    EXPECT_EQ(seen.title, "Enter the name of the PDF to create");
    EXPECT_EQ(seen.parent, &d_editor);
    EXPECT_EQ(seen.name_filters, QStringList("PDF Files (*.pdf)"));
    EXPECT_EQ(seen.directory, d_folder.path());
    EXPECT_TRUE(seen.saves);
}

TEST_F(TNorvexaEditorExport, Ends_silently_when_the_dialog_is_cancelled)
{
    Show(Probe_Budget());
    ASSERT_NE(Log(), "");
    d_answer.Cancel_File();

    Click_Export_CSV();

    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(TNorvexaEditorExport, Ends_silently_when_the_dialog_for_a_PDF_is_cancelled)
{
    Show(Probe_Budget());
    ASSERT_NE(Log(), "");
    d_answer.Cancel_File();

    Click_Export_PDF();

    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(TNorvexaEditorExport, Leaves_the_last_directory_as_it_is)
{
    Show(Probe_Budget());
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("certificates"));
    Export_CSV(Path("certificates/export.csv"));
    d_answer.Cancel_File();

    Click_Export_CSV();

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_EQ(d_answer.Seen(1).directory, d_folder.path());
    EXPECT_EQ(Files(Path("certificates")), QStringList("export.csv"));
}

TEST_F(TNorvexaEditorExport, Is_no_edit)
{
    Show(Probe_Budget());
    const QString saving = Saving();

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Saving(), saving);
}

// Names

struct TName
{
    const char* name;
    const char* typed;
    const char* written;
};

const TName NAMES[] = {
    {"Without_suffix", "export", "export.csv"},          {"With_its_suffix", "export.csv", "export.csv"},
    {"In_capitals", "export.CSV", "export.CSV"},         {"With_another_suffix", "export.txt", "export.txt"},
    {"With_a_number", "Machine 2.5", "Machine 2.5.csv"}, {"With_format_signs", "%1 %2", "%1 %2.csv"},
};

class TNorvexaEditorExportName : public TNorvexaEditorExport, public ::testing::WithParamInterface<TName>
{};

TEST_P(TNorvexaEditorExportName, Gets_the_suffix_that_it_lacks)
{
    Show(Probe_Budget());

    Export_CSV(Path(GetParam().typed));

    QStringList expected({"budget.norvexa", GetParam().written});
    expected.sort(Qt::CaseInsensitive);
    EXPECT_EQ(Files(), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorExportName, ::testing::ValuesIn(NAMES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorExport, Asks_before_an_appended_suffix_meets_a_file)
{
    Show(Probe_Budget());
    Write_File("a<b>.csv", "old");
    d_answer.Choose_File(Path("a<b>"));
    d_answer.Click(QMessageBox::No);

    Click_Export_CSV();

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    const TModalAnswer::TSeen question = d_answer.Seen(1);
    EXPECT_EQ(question.title, "Norvexa Editor");
    EXPECT_EQ(question.text, "File Exists");
    EXPECT_EQ(question.informative_text,
              "The file '" + Path("a<b>.csv").toHtmlEscaped() + "' exists.  Do you want to replace it?");
    EXPECT_EQ(question.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(question.default_button, QMessageBox::No);
    EXPECT_EQ(question.icon, QMessageBox::Question);
    EXPECT_EQ(Bytes(Path("a<b>.csv")), "old");
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, Replaces_the_file_after_a_yes)
{
    Show(Probe_Budget());
    Write_File("export.csv", "old");
    d_answer.Choose_File(Path("export"));
    d_answer.Click(QMessageBox::Yes);

    Click_Export_CSV();

    EXPECT_EQ(Written_Lines().first(), "Budget Definition - Length");
    EXPECT_EQ(Files(), QStringList({"budget.norvexa", "export.csv"}));
}

TEST_F(TNorvexaEditorExport, Asks_before_it_replaces_a_PDF_whose_suffix_was_appended)
{
    Show(Probe_Budget());
    Write_File("export.pdf", "old");
    d_answer.Choose_File(Path("export"));
    d_answer.Click(QMessageBox::No);

    Click_Export_PDF();

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_EQ(d_answer.Seen(1).informative_text,
              "The file '" + Path("export.pdf") + "' exists.  Do you want to replace it?");
    EXPECT_EQ(Bytes(Path("export.pdf")), "old");
}

TEST_F(TNorvexaEditorExport, Leaves_the_question_for_a_full_name_to_the_dialog)
{
    Show(Probe_Budget());
    Write_File("export.csv", "old");
    d_answer.Choose_File(Path("export.csv"));
    d_answer.Click(QMessageBox::Yes);

    Click_Export_CSV();

    ASSERT_EQ(d_answer.Seen_Count(), 2);
    EXPECT_NE(d_answer.Seen(1).text, "File Exists");
    EXPECT_EQ(Written_Lines().first(), "Budget Definition - Length");
}

// Log

TEST_F(TNorvexaEditorExport, Logs_the_collection_and_each_item_at_each_length)
{
    Show(Probe_Budget());

    Export_CSV(Path("export.csv"));

    QStringList expected({"Calculating data for group: Length", Line({"Global variables"}),
                          Line({"Variable", "CTEm", "0.011500"}), Line({"Variable", "Sr", "0.001000"}),
                          Line({"Variable", "Td", "0.000000"}), Line({"Variable", "Tr", "0.000000"}),
                          Line({"Variable", "Tg", "0.000000"}), Line({"Variable", "Sdev", "0.000000"}),
                          Line({"Processing", "Probe"}), Line({"Identifier", "[Default]"})});
    for (const QStringList& length :
         {QStringList({"0", "0.003000"}), QStringList({"50", "0.003050"}), QStringList({"100", "0.003100"})}) {
        expected << Line({""}) << Line({"Position", "Value", "Component", "Component Item"}) << Line({"Probe"})
                 << Line({"", "L = " + length.at(0) + ".000000"})
                 << Line({length.at(0) + ".000 mm", length.at(1), "Probe", "Ball"});
    }
    EXPECT_EQ(Log_Lines(), expected);
}

TEST_F(TNorvexaEditorExport, Logs_the_component_of_a_data_variable_before_the_group)
{
    Show(Bend_Budget("0.02"));

    Export_CSV(Path("export.csv"));

    const QStringList lines = Log_Lines();
    EXPECT_EQ(
        lines.mid(lines.size() - 8),
        QStringList({Line({""}), Line({"Position", "Value", "Component", "Component Item"}), Line({"Beam"}),
                     Line({"", "Bend = 0.020000"}), Line({"100.000 mm", "0.020000", "Beam", "Load"}), Line({"Probe"}),
                     Line({"", "L = 100.000000"}), Line({"100.000 mm", "0.003100", "Probe", "Ball"})}));
}

TEST_F(TNorvexaEditorExport, Takes_no_more_changes_of_the_log_for_more_lengths)
{
    Show(Probe_Budget());
    const QSignalSpy changes(Find<QPlainTextEdit>("log"), &QPlainTextEdit::textChanged);
    Export_CSV(Path("short.csv"));
    const int short_export = changes.count();
    Type_Range("0", "1000", "10");
    const int before = changes.count();

    Export_CSV(Path("long.csv"));

    ASSERT_GT(Log_Lines().size(), 500);
    EXPECT_GT(short_export, 0);
    EXPECT_EQ(changes.count() - before, short_export);
}

TEST_F(TNorvexaEditorExport, Leaves_the_shown_report_and_its_buttons_alone)
{
    Show(Probe_Budget());
    const int rows = Find<QTreeWidget>("report_table")->topLevelItemCount();

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Find<QTreeWidget>("report_table")->topLevelItemCount(), rows);
    EXPECT_EQ(Find<QComboBox>("report_group")->currentText(), "Length");
    EXPECT_TRUE(Exports_Are_Enabled());
}

// Lengths

struct TLengths
{
    const char* name;
    QStringList range; ///< start, end, increment
    std::vector<double> positions;
};

void PrintTo(const TLengths& row, std::ostream* stream)
{
    *stream << row.name;
}

std::vector<double> Steps(int count, double increment, double start = 0.0)
{
    std::vector<double> positions(static_cast<std::size_t>(count));
    int step = 0;
    std::generate(positions.begin(), positions.end(), [&] { return start + increment * step++; });
    return positions;
}

const TLengths LENGTHS[] = {
    {"An_increment_that_ends_before_the_end", {"0", "100", "30"}, {0.0, 30.0, 60.0, 90.0}},
    {"An_increment_that_ends_beyond_the_end", {"0", "100", "40"}, {0.0, 40.0, 80.0, 120.0}},
    {"A_hundred_and_one", {"0", "1000", "10"}, Steps(101, 10.0)},
    {"From_another_start", {"9000", "10000", "500"}, {9000.0, 9500.0, 10000.0}},
    {"Below_zero", {"-100", "100", "100"}, {-100.0, 0.0, 100.0}},
    {"An_increment_as_large_as_the_range", {"0", "100", "100"}, {0.0, 100.0}},
    {"An_increment_larger_than_twice_the_range", {"0", "100", "201"}, {0.0}},
    {"The_end_in_spite_of_rounding", {"0", "0.3", "0.1"}, {0.0, 0.1, 0.2, 0.3}},
    {"A_hundred_and_twenty", {"0", "119", "1"}, Steps(120, 1.0)},
    {"One_more_that_rounding_brings", {"0", "11.95", "0.1"}, Steps(121, 0.1)},
};

class TNorvexaEditorExportLengths : public TNorvexaEditorExport, public ::testing::WithParamInterface<TLengths>
{};

TEST_P(TNorvexaEditorExportLengths, Are_those_of_the_range)
{
    Show(Probe_Budget());
    Type_Range(GetParam().range.at(0), GetParam().range.at(1), GetParam().range.at(2));

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",,Position (mm)"), QStringList(Positions_Row(GetParam().positions)));
    EXPECT_EQ(Rows(",,Combined").value(0).count(','), 2 + static_cast<int>(GetParam().positions.size()));
    EXPECT_EQ(Log().count(" mm "), static_cast<int>(GetParam().positions.size()));
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorExportLengths, ::testing::ValuesIn(LENGTHS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorExport, The_position_is_the_sum_of_the_increments)
{
    Show(Probe_Budget("L"));
    Type_Range("0", "1000000000000", "100000000000.1");

    Export_CSV(Path("export.csv"));

    double position = 0.0;
    for (int step = 0; step < 9; ++step) {
        position += 100000000000.1;
    }
    ASSERT_NE(Fixed_Text(position, 9), Fixed_Text(9 * 100000000000.1, 9));
    EXPECT_EQ(Rows(",Source,Ball").value(0).split(',').at(3 + 9), Fixed_Text(position, 9));
}

TEST_F(TNorvexaEditorExport, Two_lengths_give_no_formula)
{
    Show(Probe_Budget());
    Type_Range("0", "100", "100");

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Written_Lines().mid(Written_Lines().size() - 3),
              QStringList({",,Combined,0.003000000,0.003100000", ",,,Uc(K=1):, ERR", ",,,Uc(K=2):, ERR"}));
    EXPECT_EQ(Page(), "Report");
}

struct TRange
{
    const char* name;
    QStringList range;
    QString message;
};

void PrintTo(const TRange& row, std::ostream* stream)
{
    *stream << row.name;
}

const TRange RANGES[] = {
    {"No_way_to_go", {"50", "50", "10"}, "ERR:  Start and End position invalid.  50.000000  to  50.000000"},
    {"Backwards", {"100", "50", "10"}, "ERR:  Start and End position invalid.  100.000000  to  50.000000"},
    {"No_number", {"0", "abc", "10"}, "ERR:  Start and End position invalid.  0.000000  to  0.000000"},
    {"No_increment", {"0", "100", "0"}, "ERR:  Increment cannot be zero or negative.  0.000000"},
    {"A_negative_increment", {"0", "100", "-5"}, "ERR:  Increment cannot be zero or negative.  -5.000000"},
    {"An_increment_that_is_lost",
     {"1000000000000000000", "1000000000000001000", "1"},
     "ERR:  Increment cannot be zero or negative.  1.000000"},
    {"Too_many_pages", {"0", "1000", "7.5"}, "ERR:  Range and increment will create a 12 page report (maximum is 10)"},
    {"The_first_page_too_many",
     {"0", "120", "1"},
     "ERR:  Range and increment will create a 11 page report (maximum is 10)"},
};

class TNorvexaEditorExportRange : public TNorvexaEditorExport, public ::testing::WithParamInterface<TRange>
{};

TEST_P(TNorvexaEditorExportRange, Is_refused_before_a_file_is_asked_for)
{
    Show(Probe_Budget());
    Type_Range(GetParam().range.at(0), GetParam().range.at(1), GetParam().range.at(2));

    Click_Export_CSV();

    EXPECT_EQ(d_answer.Seen_Count(), 0);
    EXPECT_EQ(Log(), GetParam().message);
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorExportRange, ::testing::ValuesIn(RANGES),
                         [](const auto& row) { return std::string(row.param.name); });

// Variables

TEST_F(TNorvexaEditorExport, A_data_variable_has_one_value_for_each_length)
{
    Show(Bend_Budget("0.02"));

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",Export Variables"), QStringList(",Export Variables,Bend,0.020000000,0.020000000,0.020000000"));
    EXPECT_EQ(Rows(",Bend"), QStringList(",Bend,0.020000"));
    EXPECT_EQ(Log_Lines().filter("Bend ="), QStringList({Line({"", "Bend = 0.020000"}), Line({"", "Bend = 0.020000"}),
                                                         Line({"", "Bend = 0.020000"})}));
}

TEST_F(TNorvexaEditorExport, Nothing_of_one_length_reaches_the_next)
{
    // The beam has no length of its own: what it finds under L is what the probe left there, or the built-in 0.
    Show(Bend_Budget("0.02+L"));

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",Export Variables"), QStringList(",Export Variables,Bend,0.020000000,0.020000000,0.020000000"));
}

TEST_F(TNorvexaEditorExport, A_data_variable_does_not_meet_the_next_one_from_the_length_before)
{
    TBudgetFile budget = Probe_Budget("0.003+0*First+0*Second");
    Add(&budget, "Beam", {Item("Load", "0.02+Second")});
    Add(&budget, "Table", {Item("Sag", "0.5")});
    TNorvexaData::TComponent beam = budget.document.Component(1);
    beam.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    budget.document.Update_Component(beam);
    Add_Variable(&budget, "First", "Beam - Load");
    Add_Variable(&budget, "Second", "Table");

    Export_With_Error(budget);

    EXPECT_EQ(Rows(",Export Variables"), QStringList({",Export Variables,First,0.000000000,0.000000000,0.000000000",
                                                      ",Export Variables,Second,0.500000000,0.500000000,0.500000000"}));
}

TEST_F(TNorvexaEditorExport, A_data_variable_that_fails_is_0)
{
    TBudgetFile budget = Bend_Budget("Nothing", "Beam - Load");
    TNorvexaData::TComponent beam = budget.document.Component(1);
    beam.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    budget.document.Update_Component(beam);

    Export_With_Error(budget);

    EXPECT_EQ(Log_Lines().filter("Variable  ").filter("Bend"),
              QStringList({Line({"ERR:  Variable", "Bend"}), Line({"ERR:  Variable", "Bend"}),
                           Line({"ERR:  Variable", "Bend"})}));
    EXPECT_EQ(Rows(",Export Variables"), QStringList(",Export Variables,Bend,0.000000000,0.000000000,0.000000000"));
    EXPECT_EQ(Rows(",Bend"), QStringList(",Bend,0.000000"));
    EXPECT_EQ(Rows(",Source,Ball"), QStringList(",Source,Ball,0.003000000,0.003050000,0.003100000"));
}

TEST_F(TNorvexaEditorExport, Single_items_of_a_component_share_the_rows_of_their_variables)
{
    TBudgetFile budget;
    Add(&budget, "Probe", {Item("Ball", "L*0.000001"), Item("Stem", "CTEc*L"), Item("Tip", "0.001")});
    TNorvexaData::TComponent probe = budget.document.Component(0);
    probe.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    budget.document.Update_Component(probe);
    budget.groups = {{"Length", {"Probe - Ball", "Probe - Stem", "Probe - Tip"}}};
    budget.input_data.report_end = 100.0;
    Show(budget);

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",Local Variables"), QStringList(",Local Variables,L,0.000000000,50.000000000,100.000000000"));
    EXPECT_EQ(Rows(",,CTEc"), QStringList(",,CTEc,0.010000000,0.010000000,0.010000000"));
    EXPECT_EQ(Rows("Probe Component"), QStringList({"Probe Component ", "Probe Component "}));
}

TEST_F(TNorvexaEditorExport, Two_data_variables_of_one_component_have_its_items_twice_with_one_value_for_each_length)
{
    TBudgetFile budget = Probe_Budget("0.003+0*First+0*Second");
    Add(&budget, "Beam", {Item("Load", "0.02")});
    Add_Variable(&budget, "First", "Beam");
    Add_Variable(&budget, "Second", "Beam");
    Show(budget);

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Written_Lines().filter(",Load,0"), QStringList({",Source,Load,0.020000000,0.020000000,0.020000000",
                                                              ",,Load,0.020000000,0.020000000,0.020000000"}));
    EXPECT_EQ(Rows(",,Position (mm)"), QStringList(Positions_Row({0.0, 50.0, 100.0})));
}

// Items

TEST_F(TNorvexaEditorExport, An_item_that_fails_counts_0)
{
    TBudgetFile budget = Probe_Budget("0.003");
    Add(&budget, "Scale", {Item("Drift", "Nothing"), Item("Wear", "0.004")});
    budget.groups = {{"Length", {"Probe", "Scale"}}};

    Export_With_Error(budget);

    EXPECT_EQ(Rows(",Source,Drift"), QStringList({",Source,Drift,0.000000000,0.000000000,0.000000000"}));
    EXPECT_EQ(Rows(",,Combined"), QStringList(",,Combined,0.005000000,0.005000000,0.005000000"));
    EXPECT_EQ(Log_Lines().filter("Drift").last(), Line({"100.000 mm", "0.000000", "Scale", "Drift"}));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, The_choice_of_an_identifier_stands_in_the_titles)
{
    TBudgetFile budget = Probe_Budget();
    budget.document.Component_Add_Identifier("Probe", "SN 1");
    Show(budget);
    QStringList titles;

    for (const char* identifier : {"SN 1", "[Default]"}) {
        Choose_Identifier("Probe", identifier);
        Export_CSV(Path(QString(identifier) + ".csv"));
        titles << Written_Lines(QString(identifier) + ".csv").filter(QRegularExpression("^Probe"));
    }

    EXPECT_EQ(titles, QStringList({"Probe Component SN 1", "Probe Component SN 1", "Probe Component [Default]",
                                   "Probe Component [Default]"}));
}

TEST_F(TNorvexaEditorExport, An_identifier_that_is_called_otherwise_by_now_is_not_named)
{
    TBudgetFile budget = Probe_Budget("0.003");
    budget.document.Component_Add_Identifier("Probe", "SN 1");
    Change_Item(&budget.document, "Probe", "Ball", [](TItem* item) {
        item->replacement_items.front() = {"SN 1", "0.009", false};
    });
    Show(budget);
    Choose_Identifier("Probe", "SN 1");
    Show_Page("Budget Components");
    Select_Entry("Probe");
    Rename_Identifier("SN 1", "SN 9");
    Show_Page("Report");

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows("Probe"), QStringList({"Probe Component [Default]", "Probe Component [Default]"}));
    EXPECT_EQ(Rows(",Source,Ball"), QStringList(",Source,Ball,0.003000000,0.003000000,0.003000000"));
    EXPECT_EQ(Log_Lines().filter("Identifier"), QStringList(Line({"Identifier", "[Default]"})));
}

TEST_F(TNorvexaEditorExport, A_second_export_takes_the_variables_as_they_are_by_then)
{
    Show(Probe_Budget("Sdev"));
    Export_CSV(Path("first.csv"));
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("standard_deviation"), "0.005");
    Show_Page("Report");

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",Sdev"), QStringList(",Sdev,0.005000"));
    EXPECT_EQ(Rows(",Source,Ball"), QStringList(",Source,Ball,0.005000000,0.005000000,0.005000000"));
}

TEST_F(TNorvexaEditorExport, A_second_export_starts_from_nothing)
{
    Show(Probe_Budget());
    Export_CSV(Path("first.csv"));

    Export_CSV(Path("second.csv"));

    EXPECT_EQ(Bytes(Path("second.csv")), Bytes(Path("first.csv")));
}

TEST_F(TNorvexaEditorExport, A_group_with_a_member_that_is_gone_is_not_exported)
{
    TBudgetFile budget = Probe_Budget();
    Add(&budget, "Scale", {Item("Drift", "0.004")});
    budget.groups = {{"Length", {"Probe", "Gone", "Scale"}}};
    Show(budget);

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Log_Lines().mid(Log_Lines().size() - 2),
              QStringList({"ERR:  Group item cannot be identified.", "ERR:  Cannot generate export data."}));
    EXPECT_EQ(Page(), "Log");
    EXPECT_FALSE(QFile::exists(Path("export.csv")));
}

TEST_F(TNorvexaEditorExport, A_group_whose_member_is_gone_since_the_last_report_is_not_exported)
{
    TBudgetFile budget = Probe_Budget();
    Add(&budget, "Scale", {Item("Drift", "0.004")});
    budget.groups = {{"Length", {"Probe", "Scale"}}};
    Show(budget);
    Show_Page("Budget Components");
    Rename_Entry(Find<QTreeWidget>("budget_tree"), "Scale", "Ruler");
    Show_Page("Report");

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Log_Lines().last(), "ERR:  Cannot generate export data.");
    EXPECT_EQ(Page(), "Log");
    EXPECT_FALSE(QFile::exists(Path("export.csv")));
}

TEST_F(TNorvexaEditorExport, The_log_tells_a_length_to_a_thousandth_of_a_millimetre)
{
    Show(Probe_Budget());
    Type_Range("0.125", "1", "0.5");

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Log_Lines().filter(" mm "), QStringList({Line({"0.125 mm", "0.003000", "Probe", "Ball"}),
                                                       Line({"0.625 mm", "0.003001", "Probe", "Ball"}),
                                                       Line({"1.125 mm", "0.003001", "Probe", "Ball"})}));
}

TEST_F(TNorvexaEditorExport, A_report_with_an_error_or_without_a_group_cannot_be_exported)
{
    TBudgetFile budget = Probe_Budget("Nothing");
    budget.groups.push_back({"Empty", {}});
    Open_Budget(budget);
    EXPECT_FALSE(Exports_Are_Enabled());

    Show_Report("Length");
    EXPECT_FALSE(Exports_Are_Enabled());
    Click_Export_CSV();
    Click_Export_PDF();
    EXPECT_EQ(d_answer.Seen_Count(), 0);

    Show_Report("Empty");
    EXPECT_TRUE(Exports_Are_Enabled());
    Show_Report("<no selection>");
    EXPECT_FALSE(Exports_Are_Enabled());
}

// Failures

TEST_F(TNorvexaEditorExport, Mixed_units_end_the_export)
{
    Open_Budget(Mixed_Budget());
    d_answer.Choose_File(Path("export.pdf"));

    d_editor.Generate_Export_Report("Length");

    EXPECT_EQ(Log_Lines().mid(Log_Lines().size() - 6),
              QStringList({Line({"Probe"}), Line({"", "L = 0.000000"}), Line({"0.000 mm", "0.003000", "Probe", "Ball"}),
                           Line({"Room"}), MIXED_UNITS, "ERR:  Cannot generate export data."}));
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Files(), QStringList("budget.norvexa"));
}

TEST_F(TNorvexaEditorExport, Mixed_units_leave_an_existing_file)
{
    Open_Budget(Mixed_Budget());
    Write_File("export.pdf", "old");
    d_answer.Choose_File(Path("export"));
    d_answer.Click(QMessageBox::Yes);

    d_editor.Generate_Export_Report("Length");

    ASSERT_EQ(Log_Lines().last(), "ERR:  Cannot generate export data.");
    EXPECT_EQ(Bytes(Path("export.pdf")), "old");
}

TEST_F(TNorvexaEditorExport, Temperatures_of_a_data_variable_do_not_mix_with_the_group)
{
    TBudgetFile budget = Probe_Budget("0.003+0*Heat");
    Add(&budget, "Room", {Temperature_Item("Cycle")});
    Add_Variable(&budget, "Heat", "Room");
    Show(budget);

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",,Combined"), QStringList(",,Combined,0.003000000,0.003000000,0.003000000"));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, One_length_can_be_evaluated_on_its_own)
{
    Open_Budget(Probe_Budget());
    d_editor.Create_Report_Data("Length");

    EXPECT_TRUE(d_editor.Update_Export(25.0));

    EXPECT_EQ(Log_Lines().last(), Line({"25.000 mm", "0.003025", "Probe", "Ball"}));
    EXPECT_EQ(Page(), "Budget Components");
}

TEST_F(TNorvexaEditorExport, One_length_of_mixed_units_ends_with_the_message)
{
    Open_Budget(Mixed_Budget());
    d_editor.Create_Report_Data("Length");

    EXPECT_FALSE(d_editor.Update_Export(25.0));

    EXPECT_EQ(Log_Lines().mid(Log_Lines().size() - 2), QStringList({Line({"Room"}), MIXED_UNITS}));
}

TEST_F(TNorvexaEditorExport, One_length_of_mixed_units_fails_without_changing_the_page)
{
    TBudgetFile budget = Probe_Budget();
    Add(&budget, "Room", {Temperature_Item("Cycle")});
    budget.groups.push_back({"Mixed", {"Probe", "Room"}});
    Show(budget);
    d_editor.Create_Report_Data("Mixed");

    EXPECT_FALSE(d_editor.Update_Export(25.0));

    EXPECT_EQ(Page(), "Report");
    EXPECT_TRUE(Exports_Are_Enabled());
    EXPECT_GT(Find<QTreeWidget>("report_table")->topLevelItemCount(), 0);
}

TEST_F(TNorvexaEditorExport, Says_that_a_folder_cannot_be_written)
{
    Show(Probe_Budget());
    Make_Locked_Folder();
    {
        const TPlainUser user;
        ASSERT_TRUE(user.Is_Plain());
        Export_CSV(Path("locked/export.csv"));
    }

    EXPECT_EQ(Log_Lines().last(), "ERR:  Permission denied");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Files(Path("locked")), QStringList());
}

TEST_F(TNorvexaEditorExport, Says_that_a_device_is_full)
{
    Show(Probe_Budget());

    Export_CSV_On_A_Full_Disk("full.csv");

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("full.csv") + "'.  Reason: No space left on device");
    EXPECT_EQ(Page(), "Log");
}

TEST_F(TNorvexaEditorExport, Names_a_CSV_file_that_looks_like_a_format_as_it_is)
{
    Show(Probe_Budget());

    Export_CSV_On_A_Full_Disk("%2 %1.csv");

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("%2 %1.csv") + "'.  Reason: No space left on device");
}

TEST_F(TNorvexaEditorExport, Leaves_no_file_on_a_full_disk)
{
    TBudgetFile budget = Probe_Budget();
    for (int index = 0; index < 100; ++index) {
        Add(&budget, "Scale " + QString::number(index), {Item("Drift", "0.001")});
        budget.groups.front().items << "Scale " + QString::number(index);
    }
    Show(budget);
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("disk"));
    const TTinyDisk disk(Path("disk"));
    if (!disk.Is_Mounted()) {
        GTEST_SKIP() << "Mounting is not allowed here.";
    }

    Export_CSV(Path("disk/export.csv"));

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("disk/export.csv") + "'.  Reason: No space left on device");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Files(Path("disk")), QStringList());
}

// PDF

TEST_F(TNorvexaEditorExport, Writes_a_whole_PDF_document)
{
    Show(Probe_Budget());
    d_answer.Choose_File(Path("export"));

    Click_Export_PDF();

    EXPECT_EQ(Entries("."), QStringList({"budget.norvexa", "export.pdf"}));
    const QByteArray document = Bytes(Path("export.pdf"));
    EXPECT_TRUE(document.startsWith("%PDF-1."));
    EXPECT_TRUE(document.endsWith("%%EOF\n"));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, Makes_a_PDF_beside_its_target)
{
    Show(Probe_Budget());
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", Path("budget.norvexa").toLocal8Bit());
    d_answer.Choose_File(Path("export.pdf"));

    Click_Export_PDF();

    qputenv("TMPDIR", temporary);
    EXPECT_EQ(Entries("."), QStringList({"budget.norvexa", "export.pdf"}));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorExport, Says_that_a_PDF_cannot_be_written)
{
    Show(Probe_Budget());

    Export_PDF_Into_A_Locked_Folder("export.pdf");

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("locked/export.pdf") + "'.  Reason: Permission denied");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Entries("locked"), QStringList());
}

TEST_F(TNorvexaEditorExport, Names_a_PDF_that_looks_like_a_format_as_it_is)
{
    Show(Probe_Budget());

    Export_PDF_Into_A_Locked_Folder("%2 %1.pdf");

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("locked/%2 %1.pdf") + "'.  Reason: Permission denied");
}

TEST_F(TNorvexaEditorExport, Leaves_no_PDF_on_a_full_disk)
{
    Show(Probe_Budget());
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("disk"));
    const TTinyDisk disk(Path("disk"));
    if (!disk.Is_Mounted()) {
        GTEST_SKIP() << "Mounting is not allowed here.";
    }
    d_answer.Choose_File(Path("disk/export.pdf"));

    Click_Export_PDF();

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("disk/export.pdf") + "'.  Reason: No space left on device");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Entries("disk"), QStringList());
}

TEST_F(TNorvexaEditorExport, Keeps_the_old_PDF_on_a_full_disk)
{
    Show(Probe_Budget());
    ASSERT_TRUE(QDir(d_folder.path()).mkdir("disk"));
    const TTinyDisk disk(Path("disk"));
    if (!disk.Is_Mounted()) {
        GTEST_SKIP() << "Mounting is not allowed here.";
    }
    Write_File("disk/export.pdf", "old");
    d_answer.Choose_File(Path("disk/export"));
    d_answer.Click(QMessageBox::Yes);

    Click_Export_PDF();

    EXPECT_EQ(Log_Lines().last(),
              "ERR:  Cannot write file '" + Path("disk/export.pdf") + "'.  Reason: No space left on device");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Entries("disk"), QStringList("export.pdf"));
    EXPECT_EQ(Bytes(Path("disk/export.pdf")), "old");
}

TEST_F(TNorvexaEditorExport, Keeps_the_old_PDF_when_there_is_no_place_to_make_the_new_one)
{
    Show(Probe_Budget());
    Make_Locked_Folder();
    Write_File("locked/export.pdf", "old");
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", Path("budget.norvexa").toLocal8Bit());
    d_answer.Choose_File(Path("locked/export"));
    d_answer.Click(QMessageBox::Yes);
    {
        const TPlainUser user;
        ASSERT_TRUE(user.Is_Plain());
        Click_Export_PDF();
    }
    qputenv("TMPDIR", temporary);

    EXPECT_EQ(Log_Lines().last(), "ERR:  Cannot write file '" + Path("locked/export.pdf") +
                                      "'.  Reason: The document could not be completed.");
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Bytes(Path("locked/export.pdf")), "old");
}

TEST_F(TNorvexaEditorExport, Writes_a_PDF_that_is_there_in_a_folder_that_takes_no_new_files)
{
    Show(Probe_Budget());
    Make_Locked_Folder();
    Write_File("locked/export.pdf", "old");
    ASSERT_TRUE(QFile::setPermissions(Path("locked/export.pdf"), QFile::ReadOther | QFile::WriteOther));
    d_answer.Choose_File(Path("locked/export"));
    d_answer.Click(QMessageBox::Yes);
    {
        const TPlainUser user;
        ASSERT_TRUE(user.Is_Plain());
        Click_Export_PDF();
    }

    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Entries("locked"), QStringList("export.pdf"));
    EXPECT_TRUE(Bytes(Path("locked/export.pdf")).endsWith("%%EOF\n"));
}

// Typed text

TEST_F(TNorvexaEditorExport, Exports_what_was_typed_last)
{
    Open_Budget(Probe_Budget("0.003"));
    Choose_CSV("Length");
    Click_Tool("action_components");
    Select_Entry("Ball");
    Replace_Text(Find<QLineEdit>("expression"), "0.007");
    d_answer.Choose_File(Path("export.csv"));

    d_editor.Generate_Export_Report("Length");

    EXPECT_EQ(Rows(",,Combined"), QStringList(",,Combined,0.007000000,0.007000000,0.007000000"));
}

// Load

TEST_F(TNorvexaEditorExport, Takes_a_thousand_items_at_120_lengths)
{
    constexpr int ITEMS = 1000;
    TBudgetFile budget;
    std::vector<TItem> items;
    items.reserve(ITEMS);
    for (int index = 0; index < ITEMS; ++index) {
        items.push_back(Item("Item " + QString::number(index), "0.001+0*L"));
    }
    Add(&budget, "Probe", items);
    budget.groups = {{"Length", {"Probe"}}};
    budget.input_data.report_end = 119.0;
    budget.input_data.report_increment = 1.0;
    Show(budget);
    const TLargestPiece piece(Find<QPlainTextEdit>("log"));

    Export_CSV(Path("export.csv"));

    EXPECT_EQ(Rows(",,Combined"), QStringList(",,Combined" + QString(",0.031622777").repeated(120)));
    EXPECT_EQ(Log_Lines().size(), 10 + 120 * (4 + ITEMS));
    EXPECT_EQ(Log_Lines().filter(" mm ").size(), 120 * ITEMS);
    EXPECT_EQ(piece.Size(), 100000); // no more lines wait to be shown
    EXPECT_EQ(Log_Lines().last(), Line({"119.000 mm", "0.001000", "Probe", "Item 999"}));
}
