#include "tests/monkey/reporttwin.h"

#include "src/norvexa.h"
#include "tests/monkey/reportpage.h"
#include "tests/monkey/userinput.h"
#include "tests/support/guiacts.h"
#include "tests/support/shownrecord.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSet>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

// Texts of the fresh window are those of the file: they are escaped already.
QString Unescaped(QString text)
{
    return text.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&amp;", "&");
}

} // namespace

TReportTwin::TReportTwin(const QWidget* window, QWidget* fresh) : d_window(window), d_fresh(fresh) {}

QStringList TReportTwin::Differences(bool with_values) const
{
    if (!Report_Page::Is_Shown(d_window)) {
        return {};
    }
    Set_Up();
    const bool can_compare_values = with_values && Is_Complete();
    const QStringList shown = Report(d_window, can_compare_values);
    QStringList expected;
    for (const QString& line : Report(d_fresh, can_compare_values)) {
        expected << Unescaped(line);
    }
    if (shown == expected) {
        return {};
    }
    return {QString("report: shown <%1>, a fresh window has <%2>").arg(shown.join(" | "), expected.join(" | "))};
}

// The rows up to a member that cannot be identified, and a variable without a value, have the variables of the report
// before, which a fresh window has not made.
bool TReportTwin::Is_Complete() const
{
    return !Child<QPlainTextEdit>(d_fresh, "log")->toPlainText().contains("ERR:");
}

// What no file keeps is entered: the standard deviation, the group and the identifiers.
void TReportTwin::Set_Up() const
{
    const int group = Child<QComboBox>(d_window, "report_group")->currentIndex();

    Select_Tab(Child<QTabWidget>(d_fresh, "pages"), "Variables");
    Paste_Text(Child<QLineEdit>(d_fresh, "standard_deviation"),
               Child<QLineEdit>(d_window, "standard_deviation")->text());
    Report_Page::Choose_Group(d_fresh, group);
    Choose_Identifiers();
}

// The first row of a component decides.
void TReportTwin::Choose_Identifiers() const
{
    const std::vector<QStringList> rows = Report_Page::Rows(d_window);
    QSet<QString> chosen;

    for (std::size_t row = 0; row < rows.size(); ++row) {
        const QString& component = rows[row].at(Report_Page::NAME);
        const QString& identifier = rows[row].at(Report_Page::IDENTIFIER);

        if (!identifier.isEmpty() && !chosen.contains(component)) {
            chosen.insert(component);
            if (identifier != TNorvexaData::Default_Identifier()) {
                Choose_Identifier(int(row), identifier);
            }
        }
    }
}

void TReportTwin::Choose_Identifier(int row, const QString& identifier) const
{
    auto* table = Child<QTreeWidget>(d_fresh, "report_table");
    if (row >= table->topLevelItemCount()) {
        return; // The rows differ, which is what counts.
    }
    Click_Entry(table, table->model()->index(row, Report_Page::IDENTIFIER));
    User_Input::Settle();
    auto* choices = Open_Editor<QComboBox>(table);
    if (choices == nullptr) {
        Fail_Missing("identifiers of row " + QString::number(row));
    }
    Choose_Entry(choices, identifier);
    User_Input::Settle();
}

QStringList TReportTwin::Report(const QWidget* window, bool with_values) const
{
    QStringList lines;
    for (const QStringList& row : Report_Page::Rows(window)) {
        const int columns = with_values ? Report_Page::COLUMN_COUNT : Report_Page::SENSITIVITY;
        lines << row.mid(0, columns).join(", ");
    }
    if (with_values) {
        lines << Child<QLabel>(window, "report_status")->text();
    }
    return lines;
}
