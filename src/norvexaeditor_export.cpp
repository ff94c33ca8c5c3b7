#include "src/norvexaeditor.h"

#include "core/number.h"
#include "src/exportprogress.h"
#include "src/exporttarget.h"
#include "src/loggedreport.h"
#include "src/logview.h"
#include "src/pdffile.h"
#include "src/reportrows.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"

#include <QActionGroup>
#include <QFileDialog>
#include <QPair>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSet>

namespace {

constexpr int POSITION_DECIMALS = 3;

/// What a range of ten pages holds, and the one length more that rounding may bring.
constexpr std::size_t MAXIMUM_LENGTHS = 121;

// The position accumulates, as rounded sums of the increment; half an increment of margin keeps the end in the range.
std::vector<double> Export_Lengths(double start, double end, double increment)
{
    std::vector<double> lengths;
    double position = start;

    while (position <= end + increment * 0.5 && lengths.size() < MAXIMUM_LENGTHS) {
        lengths.push_back(position);
        position += increment;
    }
    return lengths;
}

} // namespace

// Writes a walk to the log and hands its variables and rows to the export records of the report page.
class TNorvexaEditor::TExportReport : public TLoggedReport
{
public:
    // What the window has collected is copied, because it may collect anew before the export ends.
    TExportReport(TNorvexaEditor* window, TNorvexa* document)
        : TLoggedReport(window), d_document(document), d_global_variables(window->d_global_variables),
          d_variable_records(window->d_variable_records), d_group_records(window->d_group_records),
          d_walk(document, d_variable_records, d_group_records)
    {}

    // False, after Units_Mixed, when the group mixes linear and temperature items.
    bool Evaluate(double length)
    {
        d_length = length;
        d_length_text = QString("%1 mm").arg(Fixed_Text(length, POSITION_DECIMALS));
        d_added.clear();
        d_page_record = 0;
        Set_Global_Variables();
        Window()->Write_Log_Text(QString());
        Window()->Write_Log_Text("Position", "Value", "Component", "Component Item");
        return d_walk.Evaluate(length, this);
    }

    void Data_Variable_Set(const TReportRecord& record, const QString& name, double value) override
    {
        TLoggedReport::Data_Variable_Set(record, name, value);
        Add_Variable(record.component, name, value);
    }

    // On screen the variable keeps its value; here that would be the value of another length.
    void Data_Variable_Failed(const TReportRecord& record, const QString& name) override
    {
        TLoggedReport::Data_Variable_Failed(record, name);
        d_document->Add_Expression_Variable(name, 0.0);
        Add_Variable(record.component, name, 0.0);
    }

    void Local_Variable_Set(const TReportRecord& record, const QString& name, double value) override
    {
        TLoggedReport::Local_Variable_Set(record, name, value);
        Add_Variable(record.component, name, value);
    }

    void Item_Evaluated(const TReportRecord& record, const TReportRow& row) override
    {
        Window()->Write_Log_Text(d_length_text, Value_Text(row.value), record.component, row.name);
    }

    void Record_Finished(const TReportRecord& record, bool is_variable, const std::vector<TReportRow>& rows) override
    {
        if (d_page_record == d_page_records.size()) {
            d_page_records.push_back(Page_Record(record, is_variable, rows));
        }
        TReportWidget::TReportData& page_record = d_page_records[d_page_record];
        for (std::size_t index = 0; index < rows.size(); ++index) {
            page_record.items[index].value = rows[index].value;
        }
        Window()->d_report_widget->Add_Export_Data(page_record, d_length);
        ++d_page_record;
    }

private:
    // Nothing of the length before is left.
    void Set_Global_Variables()
    {
        d_document->Reset_Expression_Variables();
        for (const TVariable& variable : d_global_variables) {
            d_document->Add_Expression_Variable(variable.name, variable.value);
            Add_Variable(QString(), variable.name, variable.value);
        }
    }

    // Several items of one component bring the same variables; their rows take one value for each length.
    void Add_Variable(const QString& source, const QString& name, double value)
    {
        const QPair<QString, QString> names(source, name);

        if (!d_added.contains(names)) {
            d_added.insert(names);
            Window()->d_report_widget->Add_Export_Variable_Data({source, name, {value}});
        }
    }

    TNorvexa* d_document;
    const std::vector<TVariable> d_global_variables;
    const std::vector<TReportData> d_variable_records;
    const std::vector<TReportData> d_group_records;
    TReportWalk d_walk;
    double d_length = 0.0;
    QString d_length_text;
    QSet<QPair<QString, QString>> d_added; ///< at this length

    // The records in the form of the page, made at the first length: an export takes nothing but the values of later
    // ones.
    std::vector<TReportWidget::TReportData> d_page_records;
    std::size_t d_page_record = 0; ///< the next one of this length
};

void TNorvexaEditor::Generate_Export_Report(const QString& group)
{
    // A screen reader presses a button past a dialog, be it the progress of an export.
    if (Is_Dialog_Open()) {
        return;
    }
    Commit_Focused_Editor();
    d_log->clear();
    const double start = d_variable_widget->Start_Position();
    const double end = d_variable_widget->End_Position();
    const double increment = d_variable_widget->Increment();

    if (!Is_Report_Range_Valid(start, end, increment)) {
        return;
    }
    const int output_mode = d_report_widget->Output_Mode();
    const QString file_name = Ask_For_Export_File(output_mode);
    if (file_name.isEmpty()) {
        return;
    }
    switch (Collect_Export(group, Export_Lengths(start, end, increment))) {
    case TExportEnd::Complete:
        Write_Export(output_mode, file_name);
        break;
    case TExportEnd::Failed:
        Report_Failure("ERR:  Cannot generate export data.");
        break;
    case TExportEnd::Cancelled:
        d_report_widget->Clear_Export();
        Write_Log_Text("Export cancelled.");
        break;
    }
}

// Empty when the user does not want to export after all.
QString TNorvexaEditor::Ask_For_Export_File(int output_mode)
{
    const TExportTarget target = Export_Target(output_mode);
    QString file_name = QFileDialog::getSaveFileName(this, target.caption, d_last_directory, target.filter);

    if (file_name.isEmpty() || Has_File_Suffix(file_name)) {
        return file_name;
    }
    file_name += target.suffix;
    return Is_Overwriting_Confirmed(file_name) ? file_name : QString();
}

// Fills the export records of the report page. The log gets its lines in large pieces, as they are many. The actions of
// the window are disabled meanwhile, as a screen reader would trigger them past the progress.
TNorvexaEditor::TExportEnd TNorvexaEditor::Collect_Export(const QString& group, const std::vector<double>& lengths)
{
    TExportEnd end = TExportEnd::Failed;
    {
        const QScopedValueRollback<bool> collect_log(d_log_is_collected, true);
        const auto enable_actions = qScopeGuard([this] { d_actions->setEnabled(true); });
        d_actions->setEnabled(false);
        TExportProgress progress(static_cast<int>(lengths.size()), this);

        Create_Report_Data(group);
        d_report_widget->Clear_Export();
        // A part of a group would pass for the whole on a certificate.
        if (d_group_is_complete) {
            end = Update_Exports(lengths, &progress);
        }
    }
    Flush_Log();
    return end;
}

TNorvexaEditor::TExportEnd TNorvexaEditor::Update_Exports(const std::vector<double>& lengths, TExportProgress* progress)
{
    // A copy of the budget: past the progress, a screen reader can still change the one that is open.
    TNorvexa document = d_norvexa;
    TExportReport report(this, &document);

    for (std::size_t index = 0; index < lengths.size(); ++index) {
        if (!progress->Go_On(static_cast<int>(index))) {
            return TExportEnd::Cancelled;
        }
        if (!report.Evaluate(lengths[index])) {
            return TExportEnd::Failed;
        }
    }
    return progress->Go_On(static_cast<int>(lengths.size())) ? TExportEnd::Complete : TExportEnd::Cancelled;
}

bool TNorvexaEditor::Update_Export(const double& length)
{
    bool is_complete = false;
    {
        const QScopedValueRollback<bool> collect_log(d_log_is_collected, true);
        is_complete = TExportReport(this, &d_norvexa).Evaluate(length);
    }
    Flush_Log();
    return is_complete;
}

void TNorvexaEditor::Write_Export(int output_mode, const QString& file_name)
{
    QString reason;

    d_report_widget->Update_Export_Uncertainty_Data();
    d_report_widget->Format_Export_Data();
    switch (output_mode) {
    case TReportWidget::OUTPUT_PDF:
        if (!Write_PDF_File(*d_report_widget, file_name, &reason)) {
            Report_Failure(QString("ERR:  Cannot write file '%1'.  Reason: %2").arg(file_name, reason));
        }
        break;
    case TReportWidget::OUTPUT_CSV:
        if (!d_report_widget->Write_Export_CSV_Data(file_name)) {
            Report_Failure(d_report_widget->Last_Error());
        }
        break;
    default:
        break;
    }
}
