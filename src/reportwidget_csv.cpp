#include "src/reportwidget.h"

#include "core/filewriter.h"
#include "src/csvcells.h"

#include <QComboBox>

namespace {

void Append_Line(const QString& line, QByteArray* bytes)
{
    *bytes += line.toLatin1();
    *bytes += '\n';
}

void Append_Lines(const std::vector<QString>& lines, QByteArray* bytes)
{
    for (const QString& line : lines) {
        Append_Line(line, bytes);
    }
}

void Append_Section(const QString& title, const std::vector<QString>& lines, QByteArray* bytes)
{
    Append_Line(CSV_Cell(title), bytes);
    Append_Line(QString(), bytes);
    Append_Lines(lines, bytes);
}

QString Failure_Text(TFileWrite result, const QString& file, const QString& reason)
{
    switch (result) {
    case TFileWrite::Not_Opened:
        return "ERR:  " + reason;
    case TFileWrite::Not_Written:
        return QString("ERR:  Cannot write file '%1'.  Reason: %2").arg(file, reason);
    default:
        return QString();
    }
}

} // namespace

QStringList TReportWidget::Split_CSV_Data(const QString& line) const
{
    return CSV_Texts(line);
}

bool TReportWidget::Write_Export_CSV_Data(const QString& file) const
{
    QByteArray bytes;
    QString reason;

    Append_Section("Budget Definition - " + d_group_box->currentText(), d_export_lines.budget_definition.csv, &bytes);
    Append_Section("Global Variables", d_export_lines.global_variables.csv, &bytes);
    Append_Section("Budget Data", d_export_lines.budget_data.csv, &bytes);
    Append_Line(QString(), &bytes);
    Append_Lines(d_export_lines.formula.csv, &bytes);

    const TFileWrite result = Write_Whole_File(file, bytes, &reason);
    d_last_error = Failure_Text(result, file, reason);
    return result == TFileWrite::Done;
}
