#include "benchmarks/reportwindow.h"

#include "benchmarks/child.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

TReportWindow::TReportWindow(const TReportBudget& budget)
{
    const QString file_name = d_folder.filePath("budget.norvexa");

    d_group = budget.groups.front().name;
    Save(budget, file_name);
    d_window.Load_Data(file_name);
    d_window.show();
    d_window.View_Report();
    Child<QComboBox>(d_window, "report_group")->setCurrentText(d_group);
    Show_Report();
    qApp->installEventFilter(this);
}

void TReportWindow::Show_Report()
{
    d_window.Update_Report_View(d_group);
    QApplication::processEvents();
}

void TReportWindow::Export_CSV(const std::function<void()>& file_is_chosen)
{
    QFile::remove(Exported_File());
    d_file_is_chosen = file_is_chosen;
    Child<QPushButton>(d_window, "export_csv")->click();
}

QString TReportWindow::Log_Text() const
{
    return Child<QPlainTextEdit>(d_window, "log")->toPlainText();
}

QList<QStringList> TReportWindow::Report_Texts() const
{
    const auto* table = Child<QTreeWidget>(d_window, "report_table");
    QList<QStringList> texts;
    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        QStringList row_texts;
        for (int column = 0; column < table->columnCount(); ++column) {
            row_texts << table->topLevelItem(row)->text(column);
        }
        texts << row_texts;
    }
    return texts;
}

// The dialog is answered from its own event loop, once it is there.
bool TReportWindow::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        if (auto* dialog = qobject_cast<QFileDialog*>(object)) {
            QMetaObject::invokeMethod(
                dialog, [this, dialog] { Choose_File(dialog); }, Qt::QueuedConnection);
        }
    }
    return false;
}

void TReportWindow::Choose_File(QFileDialog* dialog) const
{
    connect(dialog, &QDialog::finished, this, [this] { d_file_is_chosen(); });
    Child<QLineEdit>(*dialog, "fileNameEdit")->setText(Exported_File());
    QMetaObject::invokeMethod(dialog, "accept");
}
