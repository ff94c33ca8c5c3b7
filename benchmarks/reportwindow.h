#pragma once

#include "benchmarks/reportbudget.h"
#include "src/norvexaeditor.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

class QFileDialog;

/// The main window with a budget, shown with the report of its first group in front.
class TReportWindow : public QObject
{
public:
    /// Throws std::runtime_error when the budget cannot be written or read.
    explicit TReportWindow(const TReportBudget& budget = Report_Budget());

    /// Evaluates the report anew and paints it.
    void Show_Report();

    /// Exports the report as the button does. The dialog that asks for the file is answered; `file_is_chosen` is called
    /// when it has closed and the export itself begins.
    void Export_CSV(const std::function<void()>& file_is_chosen);

    /// The file that was exported last.
    QString Exported_File() const { return d_folder.filePath("export.csv"); }

    QString Log_Text() const;

    /// The cells of the report table, row by row.
    QList<QStringList> Report_Texts() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Choose_File(QFileDialog* dialog) const;

    QTemporaryDir d_folder;
    TNorvexaEditor d_window;
    QString d_group;
    std::function<void()> d_file_is_chosen;
};
