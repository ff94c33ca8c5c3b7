#include "src/norvexaeditor.h"

#include "core/number.h"
#include "src/exporttarget.h"
#include "src/loggedreport.h"
#include "src/logview.h"
#include "src/pdffile.h"
#include "src/reportrows.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"

#include <QFileDialog>
#include <QPair>
#include <QScopedValueRollback>
#include <QSet>

namespace {

constexpr int POSITION_DECIMALS = 3;

/// What a range of ten pages holds, and the one length more that rounding may bring.
constexpr int MAXIMUM_LENGTHS = 121;

} // namespace

// Writes a walk to the log and hands its variables and rows to the export records of the report page.
class TNorvexaEditor::TExportReport : public TLoggedReport
{
public:
    TExportReport(TNorvexaEditor* window, double length) : TLoggedReport(window), d_length(length) {}

    // Several items of one component bring the same variables; their rows take one value for each length.
    void Add_Variable(const QString& source, const QString& name, double value)
    {
        const QPair<QString, QString> names(source, name);

        if (!d_added.contains(names)) {
            d_added.insert(names);
            Window()->d_report_widget->Add_Export_Variable_Data({source, name, {value}});
        }
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
        Window()->d_norvexa.Add_Expression_Variable(name, 0.0);
        Add_Variable(record.component, name, 0.0);
    }

    void Local_Variable_Set(const TReportRecord& record, const QString& name, double value) override
    {
        TLoggedReport::Local_Variable_Set(record, name, value);
        Add_Variable(record.component, name, value);
    }

    void Item_Evaluated(const TReportRecord& record, const TReportRow& row) override
    {
        Window()->Write_Log_Text(QString("%1 mm").arg(Fixed_Text(d_length, POSITION_DECIMALS)), Value_Text(row.value),
                                 record.component, row.name);
    }

    void Record_Finished(const TReportRecord& record, bool is_variable, const std::vector<TReportRow>& rows) override
    {
        Window()->d_report_widget->Add_Export_Data(Page_Record(record, is_variable, rows), d_length);
    }

private:
    double d_length;
    QSet<QPair<QString, QString>> d_added;
};

void TNorvexaEditor::Generate_Export_Report(const QString& group)
{
    Commit_Focused_Editor();
    d_log->clear();
    const double start = d_variable_widget->Start_Position();
    const double end = d_variable_widget->End_Position();
    const double increment = d_variable_widget->Increment();

    if (!Is_Report_Range_Valid(start, end, increment)) {
        return;
    }
    const QString file_name = Ask_For_Export_File();
    if (file_name.isEmpty()) {
        return;
    }
    Create_Report_Data(group);
    d_report_widget->Clear_Export();
    // A part of a group would pass for the whole on a certificate.
    if (!d_group_is_complete || !Update_Exports(start, end, increment)) {
        Report_Failure("ERR:  Cannot generate export data.");
        return;
    }
    d_report_widget->Update_Export_Uncertainty_Data();
    d_report_widget->Format_Export_Data();
    Write_Export(file_name);
}

// Empty when the user does not want to export after all.
QString TNorvexaEditor::Ask_For_Export_File()
{
    const TExportTarget target = Export_Target(d_report_widget->Output_Mode());
    QString file_name = QFileDialog::getSaveFileName(this, target.caption, d_last_directory, target.filter);

    if (file_name.isEmpty() || Has_File_Suffix(file_name)) {
        return file_name;
    }
    file_name += target.suffix;
    return Is_Overwriting_Confirmed(file_name) ? file_name : QString();
}

// The position accumulates, as rounded sums of the increment; half an increment of margin keeps the end in the range.
bool TNorvexaEditor::Update_Exports(double start, double end, double increment)
{
    double position = start;

    for (int count = 0; position <= end + increment * 0.5 && count < MAXIMUM_LENGTHS; ++count) {
        if (!Update_Export(position)) {
            return false;
        }
        position += increment;
    }
    return true;
}

bool TNorvexaEditor::Update_Export(const double& length)
{
    bool is_complete = false;
    {
        const QScopedValueRollback<bool> collect_log(d_log_is_collected, true);
        TExportReport report(this, length);

        // Nothing of the length before is left.
        d_norvexa.Reset_Expression_Variables();
        for (const TVariable& variable : d_global_variables) {
            d_norvexa.Add_Expression_Variable(variable.name, variable.value);
            report.Add_Variable(QString(), variable.name, variable.value);
        }
        Write_Log_Text(QString());
        Write_Log_Text("Position", "Value", "Component", "Component Item");
        is_complete = Walk_Report(&d_norvexa, d_variable_records, d_group_records, length, &report);
    }
    Flush_Log();
    return is_complete;
}

void TNorvexaEditor::Write_Export(const QString& file_name)
{
    QString reason;

    switch (d_report_widget->Output_Mode()) {
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
