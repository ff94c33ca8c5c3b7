#include "src/norvexaeditor.h"

#include "src/variablewidget.h"

#include <QPlainTextEdit>

void TNorvexaEditor::Generate_Export_Report(const QString& group)
{
    Q_UNUSED(group)

    Commit_Focused_Editor();
    d_log->clear();
    const bool is_valid = Is_Report_Range_Valid(d_variable_widget->Start_Position(), d_variable_widget->End_Position(),
                                                d_variable_widget->Increment());
    if (is_valid) {
        Report_Failure("ERR:  This version does not write export files.");
    }
}
