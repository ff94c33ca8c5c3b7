#include "tests/support/editorfixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <string>

namespace {

using TItem = TNorvexaData::TComponentItem;
using TComponent = TNorvexaData::TComponent;

const char* const NO_GROUP = "<no selection>";

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

TItem Item(const QString& name, const QString& expression, TNorvexaData::TExpressionType type,
           TNorvexaData::TDistribution distribution, double sensitivity = 1.0)
{
    TItem item = Item(name, expression, type);
    item.distribution = distribution;
    item.sensitivity = sensitivity;
    return item;
}

void Add(TBudgetFile* budget, const TComponent& component)
{
    budget->document.Add_Component(component.name);
    budget->document.Update_Component(component);
}

void Add(TBudgetFile* budget, const QString& name, const std::vector<TItem>& items)
{
    TComponent component;
    component.name = name;
    component.items = items;
    Add(budget, component);
}

void Add_Variable(TBudgetFile* budget, const QString& name, const QString& description)
{
    TVariable variable;
    variable.name = name;
    variable.description = description;
    budget->variables.push_back(variable);
}

/// An identifier whose items have expressions of their own, or the default ones.
void Add_Identifier(TComponent* component, const QString& name, double length, double expansion_coefficient,
                    const QStringList& expressions = {})
{
    component->instances.push_back({name, "Nov 15 2026", "Nov 15 2027", length, expansion_coefficient});
    for (TItem& item : component->items) {
        const int index = static_cast<int>(&item - component->items.data());
        item.replacement_items.push_back({name, expressions.value(index, item.expression), expressions.isEmpty()});
    }
}

TComponent Scale()
{
    TComponent scale;
    scale.name = "Scale";
    scale.length = 1000.0;
    scale.items = {
        Item("Resolution", "Sr/2", TNorvexaData::CONSTANT_LINEAR, TNorvexaData::DISTRIBUTION_RECTANGULAR),
        Item("Joints", "Lc*0.0003"),
        Item("Drift", "SQRT(Bend)*0.001", TNorvexaData::LENGTH_DEPENDENT_LINEAR, TNorvexaData::DISTRIBUTION_TRIANGULAR,
             2.0),
    };
    return scale;
}

TComponent Probe()
{
    TComponent probe;
    probe.name = "Probe";
    probe.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    probe.length = 10.0;
    probe.expansion_coefficient = 0.0095;
    probe.items = {
        Item("Repeatability", "0.002"),
        Item("Expansion", "L*CTEd*Td/1000+CTEc*0.1", TNorvexaData::CONSTANT_LINEAR, TNorvexaData::DISTRIBUTION_U),
    };
    probe.items.at(0).uc_type = TNorvexaData::UC_TYPE_A;
    Add_Identifier(&probe, "SN 1", 20.0, 0.0105);
    return probe;
}

TComponent Beam()
{
    TComponent beam;
    beam.name = "Beam";
    beam.items = {Item("Gradient", "Tg*0.06", TNorvexaData::CONSTANT_TEMPERATURE),
                  Item("Load", "0.016", TNorvexaData::LENGTH_DEPENDENT_LINEAR)};
    Add_Identifier(&beam, "B 2", 0.0, 0.01, {"0", "0.064"});
    return beam;
}

/// Group "Length" of the sum component "Scale" and of one item of the individual component "Probe". The variable "Bend"
/// of the scale stands for the component "Beam".
TBudgetFile Workshop_Budget()
{
    TBudgetFile budget;
    Add(&budget, Scale());
    Add(&budget, Probe());
    Add(&budget, Beam());
    Add_Variable(&budget, "Wear", "Probe - Repeatability");
    Add_Variable(&budget, "Bend", "Beam");
    budget.groups = {{"Length", {"Scale", "Probe - Expansion"}}};
    budget.input_data = {11.5, 0.001, 19.0, 22.0, 0.5, 50.0, 2500.0};
    return budget;
}

/// Group "Length" of the component "Scale" alone, with one item "Drift", and a report that ends at 250 mm.
TBudgetFile Budget_Of(const QString& expression)
{
    TBudgetFile budget;
    Add(&budget, "Scale", {Item("Drift", expression)});
    budget.groups = {{"Length", {"Scale"}}};
    budget.input_data.report_end = 250.0;
    return budget;
}

/// The same with a component "Beam", which has one item "Load", and the variable "Bend" for it.
TBudgetFile Budget_With_Beam(const QString& expression, const QString& beam_expression)
{
    TBudgetFile budget = Budget_Of(expression);
    Add(&budget, "Beam", {Item("Load", beam_expression)});
    Add_Variable(&budget, "Bend", "Beam");
    return budget;
}

// Log lines

/// One line of the log whose fields, but for the last one, are shorter than a column.
QString Line(const QStringList& fields)
{
    QString line;
    for (const QString& field : fields) {
        line += field.leftJustified(20);
    }
    return line;
}

QStringList Head_Lines(const QString& group)
{
    return {Line({"Calculating data for group: " + group}), Line({"Global variables"}),
            Line({"Variable", "CTEm", "0.011500"}),         Line({"Variable", "Sr", "0.001000"}),
            Line({"Variable", "Td", "0.000000"}),           Line({"Variable", "Tr", "0.000000"}),
            Line({"Variable", "Tg", "0.000000"}),           Line({"Variable", "Sdev", "0.000000"})};
}

QStringList Table_Head_Lines(const QString& length)
{
    return {
        Line({"Generating report"}), Line({"Reporting length", length}),
        Line({"Name", "Unit Type", "Expression Type", "Value", "Sensitivity", "Distribution", "Divisor", "Source"})};
}

/// The row of an item with the default distribution and sensitivity.
QString Item_Line(const QString& value, const QString& name, const QString& unit = "Linear")
{
    return Line({"", unit, "Constant", value, "1.000000", "Normal", "1.000000", name});
}

QStringList Entry_Lines(const QString& entry, const QString& identifier = "[Default]")
{
    return {Line({"Processing", entry}), Line({"Identifier", identifier})};
}

const char* const MIXED_LINE =
    "ERR:  Cannot mix linear and temperature expressions.  Use a variable to combine un-related items";
const char* const NOT_IDENTIFIED_LINE = "ERR:  Group item cannot be identified.";
const char* const FAILED_LINE = "ERR:  Cannot generate report data.";

class TNorvexaEditorReport : public TEditorFixture
{
protected:
    // What is there

    QTreeWidget* Rows() const { return Find<QTreeWidget>("report_table"); }
    QString Status() const { return Find<QLabel>("report_status")->text(); }
    QString Chosen_Group() const { return Find<QComboBox>("report_group")->currentText(); }
    QStringList Log_Lines() const { return Log().split('\n'); }

    /// The log behind its part on the group and the global variables.
    QStringList Log_Behind_Globals() const
    {
        const QStringList lines = Log_Lines();
        return lines.mid(lines.lastIndexOf(QRegularExpression("Variable .*")) + 1);
    }

    /// The rows of the table; the columns are separated by bars.
    QStringList Table() const
    {
        QStringList rows;
        for (int row = 0; row < Rows()->topLevelItemCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < Rows()->columnCount(); ++column) {
                texts << Rows()->topLevelItem(row)->text(column);
            }
            rows << texts.join("|");
        }
        return rows;
    }

    bool Can_Export() const
    {
        const bool csv = Find<QPushButton>("export_csv")->isEnabled();
        EXPECT_EQ(Find<QPushButton>("export_pdf")->isEnabled(), csv);
        return csv;
    }

    void Expect_Empty_Report() const
    {
        EXPECT_EQ(Page(), "Log");
        EXPECT_EQ(Checked_Pages(), QStringList("Log"));
        EXPECT_EQ(Chosen_Group(), NO_GROUP);
        EXPECT_EQ(Table(), QStringList());
        EXPECT_FALSE(Can_Export());
    }

    // Acts

    void Show_Page(const QString& label) { Select_Tab(Find<QTabWidget>("pages"), label); }

    void Show_Report(const TBudgetFile& budget, const QString& group = "Length")
    {
        Open_Budget(budget);
        Choose_Group(group);
    }

    void Choose_Group(const QString& group)
    {
        Show_Page("Report");
        Choose_Entry(Find<QComboBox>("report_group"), group);
    }

    /// Leaves the report page, types a value on the variables page and comes back.
    void Change_Input(const QString& field, const QString& text)
    {
        Show_Page("Variables");
        Replace_Text(Find<QLineEdit>(field), text);
        Show_Page("Report");
    }

    /// Chooses with the mouse in the row that carries the component's name, in the first one if there are several.
    void Choose_Identifier(const QString& component, const QString& identifier)
    {
        const QModelIndex row = Entry(Rows(), component);
        Click_Entry(Rows(), row.sibling(row.row(), 1));
        auto* combo = Open_Editor<QComboBox>(Rows());
        if (combo == nullptr) {
            Fail_Missing("identifiers of " + component);
        }
        QAbstractItemView* list = combo->view();
        QTest::keyClick(combo, Qt::Key_F4);
        if (!QTest::qWaitFor([list] { return list->isVisible(); })) {
            Fail_Missing("opened list of identifiers");
        }
        // The list may be narrower than its entries. The report that follows takes it away.
        const QRect seen = list->visualRect(Entry(list, identifier)) & list->viewport()->rect();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, seen.center());
    }
};

} // namespace

// The whole report

TEST_F(TNorvexaEditorReport, Logs_every_step)
{
    Show_Report(Workshop_Budget());

    EXPECT_EQ(
        Log_Lines(),
        QStringList({
            Line({"Calculating data for group: Length"}),
            Line({"Global variables"}),
            Line({"Variable", "CTEm", "0.011500"}),
            Line({"Variable", "Sr", "0.001000"}),
            Line({"Variable", "Td", "0.500000"}),
            Line({"Variable", "Tr", "3.000000"}),
            Line({"Variable", "Tg", "0.500000"}),
            Line({"Variable", "Sdev", "0.000000"}),
            Line({"Processing", "Scale"}),
            Line({"Identifier", "[Default]"}),
            Line({"Processing", "Probe - Expansion"}),
            Line({"Identifier", "[Default]"}),
            Line({"Local variable", "CTEd", "0.002000"}),
            Line({"Local variable", "CTEc", "0.009500"}),
            Line({"Processing", "Beam (Bend)"}),
            Line({"Identifier", "[Default]"}),
            Line({"Generating report"}),
            Line({"Reporting length", "2500.000"}),
            Line({"Name", "Unit Type", "Expression Type", "Value", "Sensitivity", "Distribution", "Divisor", "Source"}),
            Line({"Beam"}),
            Line({"", "Bend = 0.050000"}),
            Line({"", "Temperature", "Constant", "0.030000", "1.000000", "Normal", "1.000000", "Gradient"}),
            Line({"", "Linear", "Length Dependent", "0.040000", "1.000000", "Normal", "1.000000", "Load"}),
            Line({"Scale"}),
            Line({"", "Lc = 2.000000"}),
            Line({"", "Linear", "Constant", "0.000289", "1.000000", "Rectangular", "1.732051", "Resolution"}),
            Line({"", "Linear", "Constant", "0.000600", "1.000000", "Normal", "1.000000", "Joints"}),
            Line({"", "Linear", "Length Dependent", "0.000456", "2.000000", "Triangular", "2.449490", "Drift"}),
            Line({"Probe"}),
            Line({"", "CTEd = 0.002000"}),
            Line({"", "CTEc = 0.009500"}),
            Line({"", "L = 2500.000000"}),
            Line({"", "Linear", "Constant", "0.002440", "1.000000", "U", "1.414214", "Expansion"}),
        }));
}

TEST_F(TNorvexaEditorReport, Shows_the_rows_and_the_combined_uncertainty)
{
    Show_Report(Workshop_Budget());

    EXPECT_EQ(Table(),
              QStringList({"Beam|[Default]|||||", "Gradient||Constant|Tg*0.06|1.000000|Normal|0.030000",
                           "Load||Length Dependent|0.016|1.000000|Normal|0.040000", "Scale|[Default]|||||",
                           "Resolution||Constant|Sr/2|1.000000|Rectangular|0.000289",
                           "Joints||Constant|Lc*0.0003|1.000000|Normal|0.000600",
                           "Drift||Length Dependent|SQRT(Bend)*0.001|2.000000|Triangular|0.000456",
                           "Probe|[Default]|||||", "Expansion||Constant|L*CTEd*Td/1000+CTEc*0.1|1.000000|U|0.002440"}));
    EXPECT_EQ(Status(), "Uc at length 2500.000 mm: 0.0026 mm");
    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Chosen_Group(), "Length");
    EXPECT_TRUE(Can_Export());
}

TEST_F(TNorvexaEditorReport, Logs_the_last_report_only)
{
    TBudgetFile budget = Budget_Of("0.003");
    Add(&budget, "Probe", {Item("Tip", "0.004")});
    budget.groups.push_back({"Tip", {"Probe"}});
    Show_Report(budget);

    Choose_Group("Tip");

    EXPECT_EQ(Log_Lines(), Head_Lines("Tip") + Entry_Lines("Probe") + Table_Head_Lines("250.000") +
                               QStringList({Line({"Probe"}), Item_Line("0.004000", "Tip")}));
    EXPECT_EQ(Table(), QStringList({"Probe|[Default]|||||", "Tip||Constant|0.004|1.000000|Normal|0.004000"}));
}

TEST_F(TNorvexaEditorReport, Is_empty_for_a_group_without_members)
{
    TBudgetFile budget = Budget_Of("0.003");
    budget.groups = {{"Length", {}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Lines(), Head_Lines("Length") + Table_Head_Lines("250.000"));
    EXPECT_EQ(Table(), QStringList());
    EXPECT_EQ(Status(), "Uc at length 250.000 mm: 0.0000 mm");
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorReport, Is_empty_for_a_group_that_does_not_exist)
{
    Open_Budget(Budget_Of("0.003"));

    d_editor.Update_Report_View("Height");

    EXPECT_EQ(Log_Lines(), Head_Lines("Height") + Table_Head_Lines("250.000"));
    EXPECT_EQ(Table(), QStringList());
}

TEST_F(TNorvexaEditorReport, Inserts_names_as_they_are)
{
    TBudgetFile budget;
    Add(&budget, "%2", {Item("%3", "V1")});
    Add(&budget, "%1 %2", {Item("Load", "0.5")});
    Add_Variable(&budget, "V1", "%1 %2");
    budget.groups = {{"%1%2", {"%2"}}};
    budget.input_data.report_end = 250.0;

    Show_Report(budget, "%1%2");

    EXPECT_EQ(Log_Lines(), Head_Lines("%1%2") + Entry_Lines("%2") + Entry_Lines("%1 %2 (V1)") +
                               Table_Head_Lines("250.000") +
                               QStringList({Line({"%1 %2"}), Line({"", "V1 = 0.500000"}), Item_Line("0.500000", "Load"),
                                            Line({"%2"}), Item_Line("0.500000", "%3")}));
}

// Coming to the front

TEST_F(TNorvexaEditorReport, Is_made_anew_when_its_page_comes_to_the_front)
{
    Show_Report(Budget_Of("L*Sr"));
    EXPECT_EQ(Status(), "Uc at length 250.000 mm: 0.2500 mm");

    Change_Input("machine_scale", "0.002");
    EXPECT_EQ(Status(), "Uc at length 250.000 mm: 0.5000 mm");

    Change_Input("end_position", "400.1");
    EXPECT_EQ(Table().last(), "Drift||Constant|L*Sr|1.000000|Normal|0.800200");
    EXPECT_EQ(Status(), "Uc at length 400.100 mm: 0.8002 mm");
}

TEST_F(TNorvexaEditorReport, Takes_an_expression_that_was_just_typed)
{
    Show_Report(Budget_Of("0.003"));
    Show_Page("Budget Components");
    Select_Entry("Drift");
    Replace_Text(Find<QLineEdit>("expression"), "0.007");

    Show_Page("Report");

    EXPECT_EQ(Table().last(), "Drift||Constant|0.007|1.000000|Normal|0.007000");
}

TEST_F(TNorvexaEditorReport, Is_made_anew_by_the_tool_button)
{
    Show_Report(Budget_Of("Sr"));
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("machine_scale"), "0.5");

    Click_Tool("action_report");

    EXPECT_EQ(Table().last(), "Drift||Constant|Sr|1.000000|Normal|0.500000");
}

TEST_F(TNorvexaEditorReport, Needs_no_valid_range)
{
    Show_Report(Budget_Of("L/100"));

    Change_Input("end_position", "-50");

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Table_Head_Lines("-50.000") +
                  QStringList({Line({"Scale"}), Line({"", "L = -50.000000"}), Item_Line("-0.500000", "Drift")}));
    EXPECT_EQ(Status(), "Uc at length -50.000 mm: 0.5000 mm");
    EXPECT_EQ(Page(), "Report");
}

// Global variables

TEST_F(TNorvexaEditorReport, Knows_the_built_in_variables_by_their_fields)
{
    Show_Report(Budget_Of("CTEm+Sr+Td+Tr+Tg+Sdev"));
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("machine_expansion_coefficient"), "8.5");
    Replace_Text(Find<QLineEdit>("machine_scale"), "0.25");
    Replace_Text(Find<QLineEdit>("temperature_minimum"), "18");
    Replace_Text(Find<QLineEdit>("temperature_maximum"), "21");
    Replace_Text(Find<QLineEdit>("temperature_gradient"), "-0.125");
    Replace_Text(Find<QLineEdit>("standard_deviation"), "0.0625");

    Show_Page("Report");

    EXPECT_EQ(Log_Lines().mid(1, 7),
              QStringList({Line({"Global variables"}), Line({"Variable", "CTEm", "0.008500"}),
                           Line({"Variable", "Sr", "0.250000"}), Line({"Variable", "Td", "0.500000"}),
                           Line({"Variable", "Tr", "3.000000"}), Line({"Variable", "Tg", "0.125000"}),
                           Line({"Variable", "Sdev", "0.062500"})}));
    EXPECT_EQ(Log_Lines().last(), Item_Line("3.946000", "Drift"));
}

TEST_F(TNorvexaEditorReport, Leaves_out_variables_of_the_user_among_the_globals)
{
    TBudgetFile budget = Budget_Of("0.003");
    Add_Variable(&budget, "Wear", "Scale");

    Show_Report(budget);

    EXPECT_EQ(Log_Lines().filter("Wear"), QStringList());
    EXPECT_EQ(Log_Behind_Globals().size(), 7);
}

// Their names are known in any case, but only the exact ones are supplied by the record.
TEST_F(TNorvexaEditorReport, Knows_the_globals_of_length_and_expansion_as_0_without_logging_them)
{
    Show_Report(Budget_Of("ctec+CTED+lc+l+0.5"));

    EXPECT_EQ(Log_Lines(), Head_Lines("Length") + Entry_Lines("Scale") + Table_Head_Lines("250.000") +
                               QStringList({Line({"Scale"}), Item_Line("0.500000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Finds_global_variables_in_any_case)
{
    Show_Report(Budget_Of("sR*1000"));

    EXPECT_EQ(Log_Behind_Globals(), Entry_Lines("Scale") + Table_Head_Lines("250.000") +
                                        QStringList({Line({"Scale"}), Item_Line("1.000000", "Drift")}));
}

// Local variables

namespace {

struct TLocals
{
    const char* name;
    QString expression;
    QStringList collected; // lines of the log, as the record is collected
    QStringList set;       // and as it is evaluated at 250 mm
};

void PrintTo(const TLocals& test, std::ostream* stream)
{
    *stream << test.name;
}

template <typename TRow>
std::string Row_Name(const ::testing::TestParamInfo<TRow>& row)
{
    return row.param.name;
}

class TNorvexaEditorReportLocals : public TNorvexaEditorReport, public ::testing::WithParamInterface<TLocals>
{};

const QString CTED_LINE = Line({"Local variable", "CTEd", "0.001500"});
const QString CTEC_LINE = Line({"Local variable", "CTEc", "0.010000"});

const TLocals LOCALS[] = {
    {"None", "Sr", {}, {}},
    {"The_difference_of_coefficients", "CTEd", {CTED_LINE}, {Line({"", "CTEd = 0.001500"})}},
    {"The_coefficient", "CTEc", {CTEC_LINE}, {Line({"", "CTEc = 0.010000"})}},
    {"The_length_count", "Lc", {}, {Line({"", "Lc = 2.000000"})}},
    {"The_length", "L", {}, {Line({"", "L = 250.000000"})}},
    {"All_in_their_own_order",
     "L*Lc*CTEc*CTEd",
     {CTED_LINE, CTEC_LINE},
     {Line({"", "CTEd = 0.001500"}), Line({"", "CTEc = 0.010000"}), Line({"", "Lc = 2.000000"}),
      Line({"", "L = 250.000000"})}},
    {"Each_once", "CTEc+CTEc*L-L", {CTEC_LINE}, {Line({"", "CTEc = 0.010000"}), Line({"", "L = 250.000000"})}},
    {"None_in_another_case", "cteD+CTEC+LC+l", {}, {}},
    {"None_as_part_of_a_longer_word", "Sr+0*(CTEcx+xL)", {}, {}},
    {"In_a_function", "sqrt(L)+SumSq(Lc,2)", {}, {Line({"", "Lc = 2.000000"}), Line({"", "L = 250.000000"})}},
};

} // namespace

TEST_P(TNorvexaEditorReportLocals, Are_those_that_the_expression_names)
{
    TBudgetFile budget = Budget_Of(GetParam().expression);
    TComponent scale = budget.document.Component(0);
    scale.length = 100.0;
    budget.document.Update_Component(scale);

    Show_Report(budget);

    EXPECT_EQ(Log_Lines().filter("Local variable"), GetParam().collected);
    EXPECT_EQ(Log_Lines().filter(" = "), GetParam().set);
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorReportLocals, ::testing::ValuesIn(LOCALS), Row_Name<TLocals>);

TEST_F(TNorvexaEditorReport, Takes_the_amount_of_the_difference_of_coefficients)
{
    TBudgetFile budget = Budget_Of("CTEd*1000");
    budget.input_data.machine_expansion_coefficient = 8.0;
    Show_Report(budget);
    EXPECT_EQ(Table().last(), "Drift||Constant|CTEd*1000|1.000000|Normal|2.000000");

    Change_Input("machine_expansion_coefficient", "13");
    EXPECT_EQ(Table().last(), "Drift||Constant|CTEd*1000|1.000000|Normal|3.000000");
}

TEST_F(TNorvexaEditorReport, Collects_the_locals_of_all_items_of_a_sum_component)
{
    TBudgetFile budget;
    Add(&budget, "Scale", {Item("Drift", "L*0"), Item("Heat", "CTEc*0"), Item("Joints", "Lc*0+L*0")});
    budget.groups = {{"Length", {"Scale"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Lines().filter(" = "),
              QStringList({Line({"", "CTEc = 0.010000"}), Line({"", "Lc = 0.000000"}), Line({"", "L = 1000.000000"})}));
}

TEST_F(TNorvexaEditorReport, Collects_the_locals_of_the_reported_item_alone)
{
    TBudgetFile budget;
    TComponent probe;
    probe.name = "Probe";
    probe.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    probe.items = {Item("Tip", "Lc+1"), Item("Drift", "L/1000")};
    Add(&budget, probe);
    budget.groups = {{"Length", {"Probe - Drift", "Probe - Tip"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Probe - Drift") + Entry_Lines("Probe - Tip") + Table_Head_Lines("1000.000") +
                  QStringList({Line({"Probe"}), Line({"", "L = 1000.000000"}), Item_Line("1.000000", "Drift"),
                               Line({"Probe"}), Line({"", "Lc = 0.000000"}), Item_Line("1.000000", "Tip")}));
}

// Identifiers

TEST_F(TNorvexaEditorReport, Follows_an_identifier_chosen_for_a_group_record)
{
    Show_Report(Workshop_Budget());
    const QStringList before = Log_Lines();

    Choose_Identifier("Probe", "SN 1");

    QStringList expected = before;
    expected[11] = Line({"Identifier", "SN 1"});
    expected[12] = Line({"Local variable", "CTEd", "0.001000"});
    expected[13] = Line({"Local variable", "CTEc", "0.010500"});
    expected[29] = Line({"", "CTEd = 0.001000"});
    expected[30] = Line({"", "CTEc = 0.010500"});
    expected[32] = Line({"", "Linear", "Constant", "0.001626", "1.000000", "U", "1.414214", "Expansion"});
    EXPECT_EQ(Log_Lines(), expected);
    EXPECT_EQ(Table().filter("[Default]"), QStringList({"Beam|[Default]|||||", "Scale|[Default]|||||"}));
    EXPECT_EQ(Table().mid(7),
              QStringList({"Probe|SN 1|||||", "Expansion||Constant|L*CTEd*Td/1000+CTEc*0.1|1.000000|U|0.001626"}));
    EXPECT_EQ(Status(), "Uc at length 2500.000 mm: 0.0018 mm");
}

TEST_F(TNorvexaEditorReport, Follows_an_identifier_chosen_for_a_data_variable)
{
    Show_Report(Workshop_Budget());

    Choose_Identifier("Beam", "B 2");

    EXPECT_EQ(Log_Lines().mid(14, 2), Entry_Lines("Beam (Bend)", "B 2"));
    EXPECT_EQ(
        Log_Lines().mid(20, 3),
        QStringList({Line({"", "Bend = 0.160000"}), Item_Line("0.000000", "Gradient", "Temperature"),
                     Line({"", "Linear", "Length Dependent", "0.160000", "1.000000", "Normal", "1.000000", "Load"})}));
    EXPECT_EQ(Table().mid(0, 3), QStringList({"Beam|B 2|||||", "Gradient||Constant|0|1.000000|Normal|0.000000",
                                              "Load||Length Dependent|0.064|1.000000|Normal|0.160000"}));
    EXPECT_EQ(Table().at(6), "Drift||Length Dependent|SQRT(Bend)*0.001|2.000000|Triangular|0.000816");
}

TEST_F(TNorvexaEditorReport, Goes_back_to_the_default_identifier)
{
    Show_Report(Workshop_Budget());
    const QStringList log = Log_Lines();
    const QStringList table = Table();

    Choose_Identifier("Probe", "SN 1");
    ASSERT_NE(Log_Lines(), log);
    Choose_Identifier("Probe", "[Default]");

    EXPECT_EQ(Log_Lines(), log);
    EXPECT_EQ(Table(), table);
}

TEST_F(TNorvexaEditorReport, Keeps_chosen_identifiers_when_it_is_made_anew)
{
    Show_Report(Workshop_Budget());
    Choose_Identifier("Probe", "SN 1");
    Choose_Identifier("Beam", "B 2");
    const QStringList log = Log_Lines();
    const QStringList table = Table();

    Show_Page("Variables");
    Show_Page("Report");

    EXPECT_EQ(Table().filter("|||||"), QStringList({"Beam|B 2|||||", "Scale|[Default]|||||", "Probe|SN 1|||||"}));
    EXPECT_EQ(Table(), table);
    EXPECT_EQ(Log_Lines(), log);
}

TEST_F(TNorvexaEditorReport, Offers_the_default_identifier_and_those_of_the_component)
{
    Show_Report(Workshop_Budget());
    const QModelIndex row = Entry(Rows(), "Beam");
    Click_Entry(Rows(), row.sibling(row.row(), 1));
    const auto* combo = Open_Editor<QComboBox>(Rows());
    ASSERT_NE(combo, nullptr);

    QStringList choices;
    for (int index = 0; index < combo->count(); ++index) {
        choices << combo->itemText(index);
    }
    EXPECT_EQ(choices, QStringList({"[Default]", "B 2"}));
}

TEST_F(TNorvexaEditorReport, Uses_one_identifier_for_all_records_of_a_component)
{
    TBudgetFile budget;
    TComponent probe = Probe();
    probe.items.at(1).expression = "Bend*0";
    Add(&budget, probe);
    Add_Variable(&budget, "Bend", "Probe - Repeatability");
    budget.groups = {{"Length", {"Probe - Repeatability", "Probe - Expansion"}}};
    Show_Report(budget);
    ASSERT_EQ(Table().filter("|||||"),
              QStringList({"Probe|[Default]|||||", "Probe|[Default]|||||", "Probe|[Default]|||||"}));

    Choose_Identifier("Probe", "SN 1");

    EXPECT_EQ(Table().filter("|||||"), QStringList({"Probe|SN 1|||||", "Probe|SN 1|||||", "Probe|SN 1|||||"}));
    EXPECT_EQ(Log_Lines().filter("Identifier"),
              QStringList({Line({"Identifier", "SN 1"}), Line({"Identifier", "SN 1"}), Line({"Identifier", "SN 1"})}));
}

TEST_F(TNorvexaEditorReport, Counts_the_joints_of_the_identifier)
{
    TBudgetFile budget = Budget_Of("Lc");
    TComponent scale = budget.document.Component(0);
    scale.length = 0.0;
    Add_Identifier(&scale, "Short", 100.0, 0.01);
    budget.document.Update_Component(scale);
    Show_Report(budget);
    EXPECT_EQ(Log_Lines().filter(" = "), QStringList(Line({"", "Lc = 0.000000"})));

    Choose_Identifier("Scale", "Short");

    EXPECT_EQ(Log_Lines().filter(" = "), QStringList(Line({"", "Lc = 2.000000"})));
    EXPECT_EQ(Table().last(), "Drift||Constant|Lc|1.000000|Normal|2.000000");
}

TEST_F(TNorvexaEditorReport, Collects_the_locals_of_the_identifiers_expression)
{
    TBudgetFile budget = Budget_Of("L");
    TComponent scale = budget.document.Component(0);
    Add_Identifier(&scale, "Short", 100.0, 0.01, {"CTEc+Lc"});
    budget.document.Update_Component(scale);
    Show_Report(budget);

    Choose_Identifier("Scale", "Short");

    EXPECT_EQ(Log_Lines().filter(" = "), QStringList({Line({"", "CTEc = 0.010000"}), Line({"", "Lc = 2.000000"})}));
}

TEST_F(TNorvexaEditorReport, Takes_the_component_itself_once_the_chosen_identifier_is_gone)
{
    Show_Report(Workshop_Budget());
    const QStringList table = Table();
    Choose_Identifier("Probe", "SN 1");
    Show_Page("Budget Components");
    Select_Entry("Probe");
    Click_Entry(Find<QAbstractItemView>("identifier_list"), "SN 1");
    d_answer.Click(QMessageBox::Yes);
    QTest::mouseClick(Find<QAbstractButton>("remove_identifier"), Qt::LeftButton);

    Show_Page("Report");

    EXPECT_EQ(Table(), table);
    EXPECT_EQ(Status(), "Uc at length 2500.000 mm: 0.0026 mm");
}

TEST_F(TNorvexaEditorReport, Collects_the_locals_of_the_identifiers_expression_of_a_single_item)
{
    TBudgetFile budget = Budget_Of("L");
    TComponent scale = budget.document.Component(0);
    scale.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    Add_Identifier(&scale, "Short", 100.0, 0.01, {"CTEc+Lc"});
    budget.document.Update_Component(scale);
    budget.groups = {{"Length", {"Scale - Drift"}}};
    Show_Report(budget);

    Choose_Identifier("Scale", "Short");

    EXPECT_EQ(Log_Lines().filter(" = "), QStringList({Line({"", "CTEc = 0.010000"}), Line({"", "Lc = 2.000000"})}));
}

// Report data variables

TEST_F(TNorvexaEditorReport, Takes_a_data_variable_from_an_individual_item)
{
    TBudgetFile budget = Budget_Of("Bend*2");
    Add(&budget, Probe());
    Add_Variable(&budget, "Bend", "Probe - Repeatability");

    Show_Report(budget);

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Probe - Repeatability (Bend)") + Table_Head_Lines("250.000") +
                  QStringList({Line({"Probe"}), Line({"", "Bend = 0.002000"}), Item_Line("0.002000", "Repeatability"),
                               Line({"Scale"}), Item_Line("0.004000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Leaves_data_variables_out_of_the_combined_uncertainty)
{
    Show_Report(Budget_With_Beam("0*Bend+0.002", "70"));

    EXPECT_EQ(Status(), "Uc at length 250.000 mm: 0.0020 mm");
}

TEST_F(TNorvexaEditorReport, Takes_each_data_variable_once)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    Add(&budget, "Probe", {Item("Tip", "Bend+Bend"), Item("Wear", "Bend")});
    budget.groups = {{"Length", {"Scale", "Probe"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Lines().filter("Processing"),
              QStringList(
                  {Line({"Processing", "Scale"}), Line({"Processing", "Probe"}), Line({"Processing", "Beam (Bend)"})}));
}

TEST_F(TNorvexaEditorReport, Takes_data_variables_in_the_order_in_which_they_are_named)
{
    TBudgetFile budget = Budget_With_Beam("Wear-Bend", "3");
    Add(&budget, "Probe", {Item("Tip", "4")});
    Add_Variable(&budget, "Wear", "Probe");

    Show_Report(budget);

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Probe (Wear)") + Entry_Lines("Beam (Bend)") +
                  Table_Head_Lines("250.000") +
                  QStringList({Line({"Probe"}), Line({"", "Wear = 4.000000"}), Item_Line("4.000000", "Tip"),
                               Line({"Beam"}), Line({"", "Bend = 3.000000"}), Item_Line("3.000000", "Load"),
                               Line({"Scale"}), Item_Line("1.000000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Does_not_collect_the_variables_of_a_data_variable)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "Wear+CTEc+1");
    Add(&budget, "Probe", {Item("Tip", "3")});
    Add_Variable(&budget, "Wear", "Probe");

    Show_Report(budget);

    // A sum leaves out what does not evaluate.
    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Beam (Bend)") + Table_Head_Lines("250.000") +
                  QStringList({Line({"Beam"}), Line({"", "Bend = 0.000000"}), Item_Line("ERR", "Load"), Line({"Scale"}),
                               Item_Line("0.000000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Finds_the_description_of_a_data_variable_in_any_case)
{
    Show_Report(Budget_With_Beam("bend*2", "3"));

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Beam (bend)") + Table_Head_Lines("250.000") +
                  QStringList({Line({"Beam"}), Line({"", "bend = 3.000000"}), Item_Line("3.000000", "Load"),
                               Line({"Scale"}), Item_Line("6.000000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Goes_on_after_a_data_variable_that_does_not_evaluate)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "0");
    TComponent beam = budget.document.Component(1);
    beam.items.clear();
    budget.document.Update_Component(beam);
    Add(&budget, "Probe", {Item("Tip", "4")});
    budget.groups = {{"Length", {"Scale", "Probe"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Probe") + Entry_Lines("Beam (Bend)") + Table_Head_Lines("250.000") +
                  QStringList({Line({"Beam"}), Line({"ERR:  Variable", "Bend"}), Line({"Scale"}),
                               Item_Line("ERR", "Drift"), Line({"Probe"}), Item_Line("4.000000", "Tip")}));
    EXPECT_EQ(Table(), QStringList({"Scale|[Default]|||||", "Drift||Constant|Bend|1.000000|Normal|ERR",
                                    "Probe|[Default]|||||", "Tip||Constant|4|1.000000|Normal|4.000000"}));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorReport, Shows_ERR_where_an_item_does_not_evaluate)
{
    Show_Report(Budget_Of("2*"));

    EXPECT_EQ(Log_Lines().last(), Item_Line("ERR", "Drift"));
    EXPECT_EQ(Table(), QStringList({"Scale|[Default]|||||", "Drift||Constant|2*|1.000000|Normal|ERR"}));
    EXPECT_EQ(Status(), "Uc at length 250.000 mm: ERR");
    EXPECT_EQ(Page(), "Report");
    EXPECT_FALSE(Can_Export());
}

// Members and variables that cannot be identified

TEST_F(TNorvexaEditorReport, Is_empty_when_the_first_member_cannot_be_identified)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    budget.groups = {{"Length", {"Probe", "Scale"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Lines(), Head_Lines("Length") + QStringList({Line({"Processing", "Probe"}), NOT_IDENTIFIED_LINE}) +
                               Table_Head_Lines("250.000"));
    EXPECT_EQ(Table(), QStringList());
    EXPECT_EQ(Status(), "Uc at length 250.000 mm: 0.0000 mm");
    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Chosen_Group(), "Length");
}

TEST_F(TNorvexaEditorReport, Shows_the_members_before_one_that_cannot_be_identified)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    Add(&budget, "Ball", {Item("Form", "0.5")});
    budget.groups = {{"Length", {"Ball", "Scale", "Probe", "Beam"}}};

    Show_Report(budget);

    // No variable records were collected, so the scale's variable is not known.
    EXPECT_EQ(
        Log_Lines(),
        Head_Lines("Length") + Entry_Lines("Ball") + Entry_Lines("Scale") +
            QStringList({Line({"Processing", "Probe"}), NOT_IDENTIFIED_LINE}) + Table_Head_Lines("250.000") +
            QStringList({Line({"Ball"}), Item_Line("0.500000", "Form"), Line({"Scale"}), Item_Line("ERR", "Drift")}));
    EXPECT_EQ(Table(), QStringList({"Ball|[Default]|||||", "Form||Constant|0.5|1.000000|Normal|0.500000",
                                    "Scale|[Default]|||||", "Drift||Constant|Bend|1.000000|Normal|ERR"}));
}

// The variables are replaced behind the last member only.
TEST_F(TNorvexaEditorReport, Knows_the_variables_of_the_former_report_where_a_member_cannot_be_identified)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    budget.groups.push_back({"Part", {"Scale", "Gone"}});
    Show_Report(budget);
    ASSERT_EQ(Table().last(), "Drift||Constant|Bend|1.000000|Normal|3.000000");

    Choose_Group("Part");

    EXPECT_EQ(Log_Lines(), Head_Lines("Part") + Entry_Lines("Scale") +
                               QStringList({Line({"Processing", "Gone"}), NOT_IDENTIFIED_LINE}) +
                               Table_Head_Lines("250.000") +
                               QStringList({Line({"Scale"}), Item_Line("3.000000", "Drift")}));
    EXPECT_EQ(Table(), QStringList({"Scale|[Default]|||||", "Drift||Constant|Bend|1.000000|Normal|3.000000"}));
}

// Changes by the menu, while the page is in front

TEST_F(TNorvexaEditorReport, Shows_an_item_that_the_menu_adds)
{
    TBudgetFile budget = Budget_With_Beam("0.003", "3");
    budget.groups = {{"Length", {"Beam"}}};
    Open_Budget(budget);
    Select_Entry("Beam");
    Choose_Group("Length");
    const QStringList before = Table();
    d_answer.Type_Name("Wear");

    Choose_In_Menu("Edit", "Add Budget Item");

    EXPECT_EQ(Table(), before + QStringList("Wear||Constant|0.0000|1.000000|Normal|0.000000"));
}

TEST_F(TNorvexaEditorReport, Shows_no_more_what_the_menu_removes)
{
    TBudgetFile budget = Budget_With_Beam("0.003", "3");
    budget.groups = {{"Length", {"Scale", "Beam"}}};
    Open_Budget(budget);
    Select_Entry("Beam");
    Choose_Group("Length");
    d_answer.Click(QMessageBox::Yes);

    Choose_In_Menu("Edit", "Remove Budget Item");

    EXPECT_EQ(Table(), QStringList({"Scale|[Default]|||||", "Drift||Constant|0.003|1.000000|Normal|0.003000"}));
}

TEST_F(TNorvexaEditorReport, Ends_at_a_member_that_the_user_has_removed)
{
    TBudgetFile budget = Budget_With_Beam("0.003", "3");
    budget.groups = {{"Length", {"Scale", "Beam"}}};
    Show_Report(budget);
    Show_Page("Budget Components");
    Select_Entry("Beam");
    d_answer.Click(QMessageBox::Yes);
    QTest::mouseClick(Find<QAbstractButton>("remove_budget_item"), Qt::LeftButton);

    Show_Page("Report");

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + QStringList({Line({"Processing", "Beam"}), NOT_IDENTIFIED_LINE}) +
                  Table_Head_Lines("250.000") + QStringList({Line({"Scale"}), Item_Line("0.003000", "Drift")}));
    EXPECT_EQ(Table(), QStringList({"Scale|[Default]|||||", "Drift||Constant|0.003|1.000000|Normal|0.003000"}));
}

namespace {

struct TUnidentified
{
    const char* name;
    QString expression;
    QString entry;
};

void PrintTo(const TUnidentified& test, std::ostream* stream)
{
    *stream << test.name;
}

class TNorvexaEditorReportUnidentified : public TNorvexaEditorReport,
                                         public ::testing::WithParamInterface<TUnidentified>
{};

} // namespace

TEST_P(TNorvexaEditorReportUnidentified, Variable_ends_the_collection)
{
    TBudgetFile budget = Budget_With_Beam("Sr*0+" + GetParam().expression + "*0+Bend*0+1", "3");
    Add_Variable(&budget, "Empty", "");
    Add_Variable(&budget, "Lost", "Probe");

    Show_Report(budget);

    // What was collected is shown, and the global variables are known.
    EXPECT_EQ(Log_Lines().mid(0, 12), Head_Lines("Length") + Entry_Lines("Scale") +
                                          QStringList({Line({"Processing", GetParam().entry}), NOT_IDENTIFIED_LINE}));
    EXPECT_EQ(Log_Lines().filter("Bend"), QStringList());
    EXPECT_EQ(Table().first(), "Scale|[Default]|||||");
    EXPECT_EQ(Table().size(), 2);
    EXPECT_EQ(Page(), "Report");
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorReportUnidentified,
                         ::testing::Values(TUnidentified{"That_does_not_exist", "unknown", " (unknown)"},
                                           TUnidentified{"Without_a_component", "Empty", " (Empty)"},
                                           TUnidentified{"Whose_component_is_gone", "Lost", "Probe (Lost)"},
                                           // Each global variable is taken out of the names only once.
                                           TUnidentified{"That_is_a_global_one_in_a_second_case", "sr",
                                                         "Scale Resolution (sr)"}),
                         Row_Name<TUnidentified>);

TEST_F(TNorvexaEditorReport, Keeps_the_data_variables_before_one_that_cannot_be_identified)
{
    Show_Report(Budget_With_Beam("Bend*0+unknown", "3"));

    EXPECT_EQ(Log_Behind_Globals(),
              Entry_Lines("Scale") + Entry_Lines("Beam (Bend)") +
                  QStringList({Line({"Processing", " (unknown)"}), NOT_IDENTIFIED_LINE}) + Table_Head_Lines("250.000") +
                  QStringList({Line({"Beam"}), Line({"", "Bend = 3.000000"}), Item_Line("3.000000", "Load"),
                               Line({"Scale"}), Item_Line("ERR", "Drift")}));
}

// Units

TEST_F(TNorvexaEditorReport, Refuses_to_mix_units_in_a_component)
{
    TBudgetFile budget;
    Add(&budget, "Scale",
        {Item("Drift", "0.003"), Item("Heat", "1", TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE), Item("Joints", "2")});
    budget.groups = {{"Length", {"Scale"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Lines(), Head_Lines("Length") + Entry_Lines("Scale") + Table_Head_Lines("1000.000") +
                               QStringList({Line({"Scale"}), Item_Line("0.003000", "Drift"), MIXED_LINE, FAILED_LINE}));
    EXPECT_EQ(Status(), "");
    Expect_Empty_Report();
}

TEST_F(TNorvexaEditorReport, Refuses_to_mix_units_among_the_members)
{
    TBudgetFile budget;
    Add(&budget, "Oven", {Item("Heat", "1", TNorvexaData::CONSTANT_TEMPERATURE)});
    Add(&budget, "Scale", {Item("Drift", "0.003")});
    budget.groups = {{"Length", {"Oven", "Scale"}}};

    Show_Report(budget);

    EXPECT_EQ(Log_Behind_Globals(), Entry_Lines("Oven") + Entry_Lines("Scale") + Table_Head_Lines("1000.000") +
                                        QStringList({Line({"Oven"}), Item_Line("1.000000", "Heat", "Temperature"),
                                                     Line({"Scale"}), MIXED_LINE, FAILED_LINE}));
    Expect_Empty_Report();
}

TEST_F(TNorvexaEditorReport, Shows_temperature_items_alone)
{
    TBudgetFile budget;
    Add(&budget, "Oven",
        {Item("Heat", "1", TNorvexaData::CONSTANT_TEMPERATURE),
         Item("Drift", "2", TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE)});
    budget.groups = {{"Heat", {"Oven"}}};

    Show_Report(budget, "Heat");

    EXPECT_EQ(Table(), QStringList({"Oven|[Default]|||||", "Heat||Constant|1|1.000000|Normal|1.000000",
                                    "Drift||Length Dependent|2|1.000000|Normal|2.000000"}));
    EXPECT_EQ(Page(), "Report");
}

TEST_F(TNorvexaEditorReport, Works_again_after_units_were_mixed)
{
    TBudgetFile budget = Workshop_Budget();
    budget.groups.push_back({"Mixed", {"Scale", "Beam"}});
    Show_Report(budget, "Mixed");
    ASSERT_EQ(Page(), "Log");

    Choose_Group("Length");
    Choose_Identifier("Probe", "SN 1");

    EXPECT_EQ(Status(), "Uc at length 2500.000 mm: 0.0018 mm");
    EXPECT_EQ(Page(), "Report");
    EXPECT_TRUE(Can_Export());
}

TEST_F(TNorvexaEditorReport, Brings_the_log_to_the_front_when_the_report_fails_on_coming_to_the_front)
{
    TBudgetFile budget;
    Add(&budget, "Scale", {Item("Drift", "0.003"), Item("Joints", "0.004")});
    budget.groups = {{"Length", {"Scale"}}};
    Show_Report(budget);
    EXPECT_EQ(Status(), "Uc at length 1000.000 mm: 0.0050 mm");
    Show_Page("Budget Components");
    Select_Entry("Joints");
    auto* temperature = Find<QAbstractButton>("temperature");
    QTest::mouseClick(temperature, Qt::LeftButton, Qt::NoModifier, QPoint(20, temperature->height() / 2));

    Show_Page("Report");

    EXPECT_EQ(Log_Lines().mid(Log_Lines().size() - 2), QStringList({MIXED_LINE, FAILED_LINE}));
    Expect_Empty_Report();
}

// Records and lengths

TEST_F(TNorvexaEditorReport, Evaluates_the_collected_records_at_any_number_of_lengths)
{
    TBudgetFile budget = Budget_With_Beam("Bend+L+Lc", "0");
    TComponent scale = budget.document.Component(0);
    scale.length = 100.0;
    budget.document.Update_Component(scale);
    TComponent beam = budget.document.Component(1);
    beam.items = {Item("Load", "0.008", TNorvexaData::LENGTH_DEPENDENT_LINEAR)};
    budget.document.Update_Component(beam);
    Open_Budget(budget);
    d_editor.Create_Report_Data("Length");

    EXPECT_TRUE(d_editor.Update_Report(250.0));
    EXPECT_TRUE(d_editor.Update_Report(500.0));

    const auto load_line = [](const QString& value) {
        return Line({"", "Linear", "Length Dependent", value, "1.000000", "Normal", "1.000000", "Load"});
    };
    EXPECT_EQ(
        Log_Behind_Globals(),
        Entry_Lines("Scale") + Entry_Lines("Beam (Bend)") + Table_Head_Lines("250.000") +
            QStringList({Line({"Beam"}), Line({"", "Bend = 0.002000"}), load_line("0.002000"), Line({"Scale"}),
                         Line({"", "Lc = 2.000000"}), Line({"", "L = 250.000000"}), Item_Line("252.002000", "Drift")}) +
            Table_Head_Lines("500.000") +
            QStringList({Line({"Beam"}), Line({"", "Bend = 0.004000"}), load_line("0.004000"), Line({"Scale"}),
                         Line({"", "Lc = 4.000000"}), Line({"", "L = 500.000000"}), Item_Line("504.004000", "Drift")}));
}

TEST_F(TNorvexaEditorReport, Succeeds_without_records)
{
    EXPECT_TRUE(d_editor.Update_Report(12.3456));

    EXPECT_EQ(Log_Lines(), Table_Head_Lines("12.346"));
    EXPECT_EQ(Table(), QStringList());
}

TEST_F(TNorvexaEditorReport, Empties_the_page_where_units_are_mixed)
{
    TBudgetFile budget;
    Add(&budget, "Scale", {Item("Drift", "0.003")});
    Add(&budget, "Oven", {Item("Heat", "1", TNorvexaData::CONSTANT_TEMPERATURE)});
    budget.groups = {{"Length", {"Scale", "Oven"}}};
    Open_Budget(budget);
    d_editor.Create_Report_Data("Length");

    EXPECT_FALSE(d_editor.Update_Report(100.0));

    EXPECT_EQ(Log_Lines().last(), MIXED_LINE);
    EXPECT_EQ(Table(), QStringList());
    EXPECT_FALSE(Can_Export());
}

TEST_F(TNorvexaEditorReport, Replaces_the_records_of_the_former_group)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    Add(&budget, "Probe", {Item("Tip", "4")});
    budget.groups.push_back({"Tip", {"Probe"}});
    Open_Budget(budget);
    d_editor.Create_Report_Data("Length");
    ASSERT_EQ(d_editor.Report_Data_Variable_List(), QStringList("Bend"));

    d_editor.Create_Report_Data("Tip");

    EXPECT_EQ(d_editor.Report_Data_Variable_List(), QStringList());
    EXPECT_TRUE(d_editor.Update_Report(250.0));
    EXPECT_EQ(Table(), QStringList({"Probe|[Default]|||||", "Tip||Constant|4|1.000000|Normal|4.000000"}));
}

TEST_F(TNorvexaEditorReport, Forgets_the_data_variables_of_the_former_report)
{
    TBudgetFile budget = Budget_With_Beam("Bend", "3");
    Add(&budget, "Probe", {Item("Tip", "Wear")});
    Add(&budget, "Ball", {Item("Form", "Bend")});
    Add_Variable(&budget, "Wear", "Ball");
    budget.groups.push_back({"Tip", {"Probe"}});
    Show_Report(budget);
    ASSERT_EQ(Table().last(), "Drift||Constant|Bend|1.000000|Normal|3.000000");

    Choose_Group("Tip");

    EXPECT_EQ(Table().mid(0, 2), QStringList({"Ball|[Default]|||||", "Form||Constant|Bend|1.000000|Normal|ERR"}));
}

// Names

TEST_F(TNorvexaEditorReport, Lists_the_names_of_an_items_expression)
{
    Open_Budget(Budget_Of("sqrt(sumsq(a1,b_2)*2)+_x+3y"));

    EXPECT_EQ(d_editor.Variable_List("Scale", "Drift", ""), QStringList({"a1", "b_2"}));
    EXPECT_EQ(d_editor.Variable_List("Scale", "Drift", "[Default]"), QStringList({"a1", "b_2"}));
    EXPECT_EQ(d_editor.Variable_List("Scale", "Joints", ""), QStringList());
    EXPECT_EQ(d_editor.Variable_List("Probe", "Drift", ""), QStringList());
}

TEST_F(TNorvexaEditorReport, Lists_the_names_of_an_identifiers_expression)
{
    Open_Budget(Workshop_Budget());

    EXPECT_EQ(d_editor.Variable_List("Beam", "Gradient", ""), QStringList("Tg"));
    EXPECT_EQ(d_editor.Variable_List("Beam", "Gradient", "B 2"), QStringList());
    EXPECT_EQ(d_editor.Variable_List("Probe", "Expansion", "SN 1"), QStringList({"L", "CTEd", "Td", "CTEc"}));
}

TEST_F(TNorvexaEditorReport, Lists_the_names_of_all_items_of_a_component)
{
    TBudgetFile budget;
    TComponent scale;
    scale.name = "Scale";
    scale.items = {Item("Drift", "b+a"), Item("Joints", "c*a+B")};
    Add_Identifier(&scale, "SN 1", 0.0, 0.01, {"z", "y+z"});
    Add(&budget, scale);
    Open_Budget(budget);

    EXPECT_EQ(d_editor.Variable_List("Scale", ""), QStringList({"b", "a", "c", "B"}));
    EXPECT_EQ(d_editor.Variable_List("Scale", "SN 1"), QStringList({"z", "y"}));
    EXPECT_EQ(d_editor.Variable_List("Probe", ""), QStringList());
}

TEST_F(TNorvexaEditorReport, Lists_the_names_of_the_group_that_are_no_global_variables)
{
    TBudgetFile budget;
    Add(&budget, "Scale", {Item("Drift", "Var+L+Sr"), Item("Joints", "var*sdev+Lc")});
    TComponent probe = Probe();
    probe.items = {Item("Tip", "hidden"), Item("Wear", "Var+CTEm+last")};
    Add(&budget, probe);
    budget.groups = {{"Length", {"Scale", "Probe - Wear"}}};
    Open_Budget(budget);

    EXPECT_EQ(d_editor.Report_Data_Variable_List(), QStringList());
    d_editor.Create_Report_Data("Length");
    EXPECT_EQ(d_editor.Report_Data_Variable_List(), QStringList({"Var", "var", "last"}));
}

TEST_F(TNorvexaEditorReport, Takes_only_the_first_spelling_of_a_global_variable_out_of_the_names)
{
    Open_Budget(Budget_Of("td+Td+TD"));

    d_editor.Create_Report_Data("Length");

    EXPECT_EQ(d_editor.Report_Data_Variable_List(), QStringList({"Td", "TD"}));
}

namespace {

struct TRemoval
{
    const char* name;
    QStringList list;
    QString removed;
    QStringList rest;
};

void PrintTo(const TRemoval& test, std::ostream* stream)
{
    *stream << test.name;
}

class TNorvexaEditorReportRemoval : public TNorvexaEditorReport, public ::testing::WithParamInterface<TRemoval>
{};

} // namespace

TEST_P(TNorvexaEditorReportRemoval, Takes_the_first_equal_name)
{
    QStringList list = GetParam().list;

    d_editor.Remove_From_List(&list, GetParam().removed);

    EXPECT_EQ(list, GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(
    Table, TNorvexaEditorReportRemoval,
    ::testing::Values(
        TRemoval{"The_only_one", {"a"}, "a", {}}, TRemoval{"In_another_case", {"a", "Var", "b"}, "vAR", {"a", "b"}},
        TRemoval{"The_first_of_two", {"Var", "b", "var"}, "var", {"b", "var"}},
        TRemoval{"Of_letters_beyond_ASCII", {QString::fromUtf8("\u00c4x"), "b"}, QString::fromUtf8("\u00e4X"), {"b"}},
        TRemoval{"None_that_contains_it", {"Variable", "Va"}, "Var", {"Variable", "Va"}},
        TRemoval{"None_of_an_empty_list", {}, "Var", {}}),
    Row_Name<TRemoval>);

// Report range

namespace {

struct TRange
{
    const char* name;
    QString start;
    QString end;
    QString increment;
    QString message; // none for a range that is accepted
};

void PrintTo(const TRange& test, std::ostream* stream)
{
    *stream << test.name;
}

class TNorvexaEditorReportRange : public TNorvexaEditorReport, public ::testing::WithParamInterface<TRange>
{
protected:
    void Type_Range()
    {
        Show_Report(Budget_Of("0.003"));
        Show_Page("Variables");
        Replace_Text(Find<QLineEdit>("start_position"), GetParam().start);
        Replace_Text(Find<QLineEdit>("end_position"), GetParam().end);
        Replace_Text(Find<QLineEdit>("increment"), GetParam().increment);
        Show_Page("Report");
    }
};

class TNorvexaEditorAcceptedRange : public TNorvexaEditorReportRange
{};

class TNorvexaEditorRefusedRange : public TNorvexaEditorReportRange
{};

QString Positions_Message(const QString& start, const QString& end)
{
    return QString("ERR:  Start and End position invalid.  %1  to  %2").arg(start, end);
}

QString Increment_Message(const QString& increment)
{
    return "ERR:  Increment cannot be zero or negative.  " + increment;
}

QString Pages_Message(const QString& pages)
{
    return QString("ERR:  Range and increment will create a %1 page report (maximum is 10)").arg(pages);
}

const TRange REFUSED_RANGES[] = {
    {"End_at_start", "100", "100", "10", Positions_Message("100.000000", "100.000000")},
    {"End_before_start", "12.5", "-7.25", "10", Positions_Message("12.500000", "-7.250000")},
    {"End_before_start_comes_first", "2", "1", "0", Positions_Message("2.000000", "1.000000")},
    {"End_that_is_no_number", "0", "nan", "10", Positions_Message("0.000000", "0.000000")},
    {"End_that_is_infinite", "0", "inf", "10", Positions_Message("0.000000", "0.000000")},
    {"End_beyond_all_numbers", "0", "1e999", "10", Positions_Message("0.000000", "0.000000")},
    {"End_with_a_comma", "1", "1000,5", "10", Positions_Message("1.000000", "0.000000")},
    {"Start_that_is_infinite", "-inf", "-1", "10", Positions_Message("0.000000", "-1.000000")},
    {"Nothing_typed", "", "", "", Positions_Message("0.000000", "0.000000")},
    {"Increment_zero", "0", "1000", "0", Increment_Message("0.000000")},
    {"Increment_negative", "0", "1000", "-0.5", Increment_Message("-0.500000")},
    {"Increment_that_is_no_number", "0", "1000", "nan", Increment_Message("0.000000")},
    {"Increment_that_is_infinite", "0", "1000", "inf", Increment_Message("0.000000")},
    {"Increment_with_a_comma", "0", "1000", "50,0", Increment_Message("0.000000")},
    {"Increment_that_is_a_word", "0", "1000", "ten", Increment_Message("0.000000")},
    {"Increment_that_does_not_move_the_end", "0", "1e16", "0.5", Increment_Message("0.500000")},
    {"Increment_that_does_not_move_the_start", "-1e16", "10", "0.5", Increment_Message("0.500000")},
    {"Increment_below_all_digits", "0", "1000", "1e-320", Increment_Message("0.000000")},
    {"Twelve_pages", "0", "1000", "7.5", Pages_Message("12")},
    {"The_first_count_beyond_ten_pages", "0", "1195", "10", Pages_Message("11")},
    {"Pages_from_another_start", "-600", "600", "10", Pages_Message("11")},
    {"Many_pages", "0", "12000000", "0.001", Pages_Message("1000000001")},
    {"The_last_count_before_saturation", "0", "25769803752", "1", Pages_Message("2147483647")},
    {"More_pages_than_can_be_counted", "0", "1e15", "1", Pages_Message("2147483647")},
    {"A_way_beyond_all_numbers", "-1e308", "1e308", "1e300", Pages_Message("2147483647")},
};

const TRange ACCEPTED_RANGES[] = {
    {"The_default", "0.000", "1000.000", "50.000", ""},
    {"Nine_pages", "0", "1000", "10", ""},
    {"The_last_count_of_ten_pages", "0", "1194.9", "10", ""},
    {"One_page", "0", "10", "1000", ""},
    {"Negative_positions", "-20", "-10", "1", ""},
    {"A_start_with_a_comma", "900,5", "1000", "50", ""},
    {"A_start_that_is_infinite", "inf", "1000", "50", ""},
    {"A_huge_range_in_huge_steps", "0", "1e300", "1e299", ""},
};

} // namespace

TEST_P(TNorvexaEditorRefusedRange, Is_logged_when_the_report_is_exported)
{
    Type_Range();

    QTest::mouseClick(Find<QPushButton>("export_csv"), Qt::LeftButton);

    EXPECT_EQ(Log(), GetParam().message);
    EXPECT_EQ(Page(), "Log");
    EXPECT_EQ(Checked_Pages(), QStringList("Log"));
}

TEST_P(TNorvexaEditorAcceptedRange, Leads_to_the_choice_of_a_file)
{
    Type_Range();
    d_answer.Cancel_File();

    QTest::mouseClick(Find<QPushButton>("export_csv"), Qt::LeftButton);

    EXPECT_EQ(d_answer.Seen_Count(), 1);
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Page(), "Report");
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorRefusedRange, ::testing::ValuesIn(REFUSED_RANGES), Row_Name<TRange>);
INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorAcceptedRange, ::testing::ValuesIn(ACCEPTED_RANGES), Row_Name<TRange>);
