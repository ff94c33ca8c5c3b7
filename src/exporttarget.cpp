#include "src/exporttarget.h"

#include "src/reportwidget.h"

#include <QRegularExpression>

TExportTarget Export_Target(int output_mode)
{
    switch (output_mode) {
    case TReportWidget::OUTPUT_PDF:
        return {"Enter the name of the PDF to create", "PDF Files (*.pdf)", ".pdf"};
    case TReportWidget::OUTPUT_CSV:
        return {"Enter the name of the CSV to create", "CSV files (*.csv)", ".csv"};
    default:
        return {"Enter the name of the file to create", "PDF Files (*.pdf);;CSV files (*.csv)", QString()};
    }
}

bool Has_File_Suffix(const QString& file_name)
{
    static const QRegularExpression SUFFIX("\\.[A-Za-z][A-Za-z0-9]*$");
    return file_name.contains(SUFFIX);
}
