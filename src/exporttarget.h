#pragma once

#include <QString>

/// What the user is asked for before an export.
struct TExportTarget
{
    QString caption;
    QString filter;
    QString suffix; ///< ".pdf" or ".csv"; empty where the kind of file is open
};

/// For a TReportWidget::TOutputMode; any other mode leaves the kind of file open.
TExportTarget Export_Target(int output_mode);

/// Whether the name of the file ends in a suffix of any kind. A number after the last point, as in "Machine 2.5" or in
/// a date, is none, and neither is something with a blank in it.
bool Has_File_Suffix(const QString& file_name);
