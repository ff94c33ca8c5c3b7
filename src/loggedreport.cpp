#include "src/loggedreport.h"

#include "src/norvexaeditor.h"
#include "src/reportrows.h"

namespace {

QString Assignment_Text(const QString& name, double value)
{
    return QString("%1 = %2").arg(name, Value_Text(value));
}

} // namespace

void TLoggedReport::Record_Started(const TReportRecord& record)
{
    d_window->Write_Log_Text(record.component);
}

void TLoggedReport::Data_Variable_Set(const TReportRecord& /*record*/, const QString& name, double value)
{
    d_window->Write_Log_Text(QString(), Assignment_Text(name, value));
}

void TLoggedReport::Data_Variable_Failed(const TReportRecord& /*record*/, const QString& name)
{
    d_window->Write_Log_Text("ERR:  Variable", name);
}

void TLoggedReport::Local_Variable_Set(const TReportRecord& /*record*/, const QString& name, double value)
{
    d_window->Write_Log_Text(QString(), Assignment_Text(name, value));
}

void TLoggedReport::Units_Mixed()
{
    d_window->Write_Log_Text(
        "ERR:  Cannot mix linear and temperature expressions.  Use a variable to combine un-related items");
}
