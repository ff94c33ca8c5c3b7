#include "src/norvexaeditor.h"

#include "core/expressionnames.h"
#include "core/number.h"
#include "src/loggedreport.h"
#include "src/logview.h"
#include "src/reportgroupwidget.h"
#include "src/reportrows.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"

#include <QScopedValueRollback>
#include <QTabWidget>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const int POSITION_DECIMALS = 3;

const int LENGTHS_PER_PAGE = 12;
const int MAXIMUM_PAGES = 10;

TVariable Local_Variable(const QString& name, double value)
{
    TVariable variable;
    variable.name = name;
    variable.value = value;
    return variable;
}

// The pages that the lengths of a range fill, in double so that no range overflows.
double Page_Count(double start, double end, double increment)
{
    return std::floor(std::trunc((end - start) / increment + 0.5) / LENGTHS_PER_PAGE) + 1.0;
}

// An increment of half the way to the next number, or less, is rounded away: at exactly half at every other position.
bool Moves(double position, double increment)
{
    const double next = std::nextafter(position, std::numeric_limits<double>::infinity());

    return increment > (next - position) / 2.0;
}

// Numbers lie furthest apart at the ends of what the positions may reach. An end beyond all numbers moves no further.
bool Makes_Progress(double start, double end, double increment)
{
    return Moves(start, increment) && Moves(end + increment * 0.5, increment);
}

} // namespace

// Writes a walk to the log and its rows to the report page.
class TNorvexaEditor::TScreenReport : public TLoggedReport
{
public:
    using TLoggedReport::TLoggedReport;

    void Item_Evaluated(const TReportRecord& /*record*/, const TReportRow& row) override
    {
        const TReportWidget::TReportItemData item = Page_Item(row);
        Window()->Write_Log_Text(QString(), row.unit_kind, item.expression_type, item.value_text, item.sensitivity,
                                 item.distribution, Value_Text(item.divisor), item.name);
    }

    void Record_Finished(const TReportRecord& record, bool is_variable, const std::vector<TReportRow>& rows) override
    {
        TReportWidget::TReportData page_record = Page_Record(record, is_variable, rows);
        page_record.identifiers = Window()->Offered_Identifiers(record.component);
        Window()->d_report_widget->Add_Report_Data(page_record);
    }
};

// Collection

void TNorvexaEditor::Create_Report_Data(const QString& group)
{
    d_group_is_complete = false;
    Write_Log_Text(QString("Calculating data for group: %1").arg(group));
    Collect_Global_Variables();
    d_group_records.clear();
    d_variable_records.clear();

    for (const QString& entry : d_report_group_widget->Group_List(group)) {
        if (!Collect_Group_Record(entry)) {
            return;
        }
    }
    d_group_is_complete = true;
    d_norvexa.Reset_Expression_Variables();
    for (const TVariable& variable : d_global_variables) {
        d_norvexa.Add_Expression_Variable(variable.name, variable.value);
    }
    for (const QString& name : Report_Data_Variable_List()) {
        if (!Collect_Variable_Record(name)) {
            return;
        }
    }
}

void TNorvexaEditor::Collect_Global_Variables()
{
    Write_Log_Text("Global variables");
    d_global_variables.clear();

    for (int index = 0; index < d_variable_widget->Variable_Count(); ++index) {
        bool ok = false;
        TVariable variable = d_variable_widget->Variable(index);
        variable.value = d_variable_widget->Variable_Value(index, &ok);
        if (!ok) {
            continue;
        }
        if (!Is_Record_Variable(variable.name)) {
            Write_Log_Text("Variable", variable.name, Value_Text(variable.value));
        }
        d_global_variables.push_back(variable);
    }
}

bool TNorvexaEditor::Collect_Group_Record(const QString& entry)
{
    TReportData record;

    Write_Log_Text("Processing", entry);
    if (!Identify(entry, &record)) {
        return false;
    }
    record.length = d_norvexa.Component_Length(record.component, record.identifier);
    Collect_Local_Variables(&record);
    d_group_records.push_back(record);
    return true;
}

// A variable that the group's expressions use and whose description names a reportable component stands for the
// uncertainty of that component.
bool TNorvexaEditor::Collect_Variable_Record(const QString& name)
{
    const QString description = d_variable_widget->Variable_Description(name);
    TReportData record;

    Write_Log_Text("Processing", QString("%1 (%2)").arg(description, name));
    if (!Identify(description, &record)) {
        return false;
    }
    TVariable variable = Local_Variable(name, 0.0);
    variable.description = description;
    record.local_variables.push_back(variable);
    d_variable_records.push_back(record);
    return true;
}

bool TNorvexaEditor::Identify(const QString& reportable, TReportData* record)
{
    if (!d_norvexa.Convert_From_Reportable(reportable, &record->component, &record->item)) {
        Write_Log_Text("ERR:  Group item cannot be identified.");
        return false;
    }
    record->identifier = Reported_Identifier(record->component);
    Write_Log_Text("Identifier", record->identifier.isEmpty() ? d_default_identifier : record->identifier);
    return true;
}

// The identifier chosen on the report page. Once it is renamed or removed, the component itself is reported, and
// neither the page nor an export may name it any more.
QString TNorvexaEditor::Reported_Identifier(const QString& component) const
{
    const QString chosen = d_report_widget->Current_Identifier(component);
    const bool is_offered = chosen.isEmpty() || Offered_Identifiers(component).contains(chosen);

    return is_offered ? chosen : d_default_identifier;
}

void TNorvexaEditor::Collect_Local_Variables(TReportData* record)
{
    const QStringList names = Names_In_Use(*record);
    const double coefficient = d_norvexa.Component_Expansion_Coefficient(record->component, record->identifier);
    const double difference = std::fabs(coefficient - d_variable_widget->Machine_Expansion_Coefficient());

    if (names.contains("CTEd")) {
        record->local_variables.push_back(Local_Variable("CTEd", difference));
        Write_Log_Text("Local variable", "CTEd", Value_Text(difference));
    }
    if (names.contains("CTEc")) {
        record->local_variables.push_back(Local_Variable("CTEc", coefficient));
        Write_Log_Text("Local variable", "CTEc", Value_Text(coefficient));
    }
    // These two follow from the length; the walk sets them.
    for (const QString& name : {QString("Lc"), QString("L")}) {
        if (names.contains(name)) {
            record->local_variables.push_back(Local_Variable(name, 0.0));
        }
    }
}

QStringList TNorvexaEditor::Names_In_Use(const TReportData& record) const
{
    return record.item.isEmpty() ? Variable_List(record.component, record.identifier)
                                 : Variable_List(record.component, record.item, record.identifier);
}

QStringList TNorvexaEditor::Variable_List(const QString& component, const QString& item,
                                          const QString& identifier) const
{
    return Expression_Names(d_norvexa.Component_Item_Expression(component, item, identifier, nullptr));
}

QStringList TNorvexaEditor::Variable_List(const QString& component, const QString& identifier) const
{
    QStringList names;
    for (const TNorvexa::TListedItem& listed : d_norvexa.Bind_Items(component, QString(), identifier)) {
        names += Expression_Names(*listed.evaluated.expression);
    }
    names.removeDuplicates();
    return names;
}

QStringList TNorvexaEditor::Report_Data_Variable_List() const
{
    QStringList names;
    for (const TReportData& record : d_group_records) {
        names += Names_In_Use(record);
    }
    names.removeDuplicates();
    for (const TVariable& variable : d_global_variables) {
        Remove_From_List(&names, variable.name);
    }
    return names;
}

void TNorvexaEditor::Remove_From_List(QStringList* list, const QString& name) const
{
    const auto found = std::find_if(list->begin(), list->end(), [&name](const QString& entry) {
        return entry.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found != list->end()) {
        list->erase(found);
    }
}

QStringList TNorvexaEditor::Offered_Identifiers(const QString& component) const
{
    return QStringList(d_default_identifier) + d_norvexa.Enum_Component_Identifiers(component);
}

// On-screen report

bool TNorvexaEditor::Update_Report(const double& length)
{
    d_report_widget->Start_Report_Update();
    Write_Log_Text("Generating report");
    Write_Log_Text("Reporting length", Fixed_Text(length, POSITION_DECIMALS));
    Write_Log_Text("Name", "Unit Type", "Expression Type", "Value", "Sensitivity", "Distribution", "Divisor", "Source");

    TScreenReport report(this);
    const bool is_complete = Walk_Report(&d_norvexa, d_variable_records, d_group_records, length, &report);

    d_report_widget->End_Report_Update();
    if (!is_complete) {
        d_report_widget->Clear_Report();
    }
    return is_complete;
}

void TNorvexaEditor::Update_Report_View(const QString& group)
{
    d_log->clear();
    const double length = d_variable_widget->End_Position();
    bool is_complete = false;
    {
        const QScopedValueRollback<bool> collect_log(d_log_is_collected, true);

        // The data first: they take the identifiers that are chosen on the page, and clearing the page forgets them.
        Create_Report_Data(group);
        d_report_widget->Clear_Report();
        is_complete = Update_Report(length);
    }
    Flush_Log();

    if (is_complete) {
        d_report_widget->Update_Status_Display(length);
    } else {
        Report_Failure("ERR:  Cannot generate report data.");
        d_report_widget->Set_Default_Report_Group();
    }
}

// The page is made anew when it comes to the front. The menus change the budget behind it.
void TNorvexaEditor::Refresh_Shown_Report()
{
    if (d_tab_widget->currentIndex() == REPORT_PAGE) {
        d_report_widget->Refresh();
    }
}

// Report range

bool TNorvexaEditor::Is_Report_Range_Valid(double start, double end, double increment)
{
    if (!(end > start)) {
        Report_Failure(
            QString("ERR:  Start and End position invalid.  %1  to  %2").arg(Value_Text(start), Value_Text(end)));
        return false;
    }
    if (!(increment > 0.0) || !Makes_Progress(start, end, increment)) {
        Report_Failure(QString("ERR:  Increment cannot be zero or negative.  %1").arg(Value_Text(increment)));
        return false;
    }
    const double pages = Page_Count(start, end, increment);
    if (!(pages <= MAXIMUM_PAGES)) {
        const double shown_pages = std::min(pages, static_cast<double>(std::numeric_limits<int>::max()));
        Report_Failure(QString("ERR:  Range and increment will create a %1 page report (maximum is 10)")
                           .arg(static_cast<int>(shown_pages)));
        return false;
    }
    return true;
}
