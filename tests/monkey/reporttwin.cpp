#include "tests/monkey/reporttwin.h"

#include "tests/monkey/reportpage.h"
#include "tests/monkey/userinput.h"
#include "tests/support/guiacts.h"
#include "tests/support/shownrecord.h"

#include <QComboBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
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

QStringList TReportTwin::Differences(bool with_values)
{
    if (!Report_Page::Is_Shown(d_window)) {
        return {};
    }
    Set_Up();
    d_has_values = with_values && Is_Complete();
    const QStringList shown = Report(d_window, d_has_values);
    QStringList expected;
    for (const QString& line : Report(d_fresh, d_has_values)) {
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

// The first row of a component decides. With each choice another expression may count, which may bring the rows of
// variables, with components of their own.
void TReportTwin::Choose_Identifiers() const
{
    QHash<QString, QString> wanted;
    for (const QStringList& row : Report_Page::Rows(d_window)) {
        const QString& component = row.at(Report_Page::NAME);
        if (!row.at(Report_Page::IDENTIFIER).isEmpty() && !wanted.contains(component)) {
            wanted.insert(component, row.at(Report_Page::IDENTIFIER));
        }
    }
    bool has_chosen = true;
    for (int pass = 0; has_chosen && pass < wanted.size(); ++pass) {
        has_chosen = false;
        for (auto choice = wanted.begin(); choice != wanted.end(); ++choice) {
            has_chosen = Choose_Identifier(choice.key(), choice.value()) || has_chosen;
        }
    }
}

// False if there is nothing to choose: the component has that identifier already, or has no row yet.
bool TReportTwin::Choose_Identifier(const QString& component, const QString& identifier) const
{
    auto* table = Child<QTreeWidget>(d_fresh, "report_table");
    int row = 0;
    const auto is_other = [&](const QTreeWidgetItem* entry) {
        return entry->text(Report_Page::NAME) != component || entry->text(Report_Page::IDENTIFIER).isEmpty();
    };
    while (row < table->topLevelItemCount() && is_other(table->topLevelItem(row))) {
        ++row;
    }
    if (row == table->topLevelItemCount() || table->topLevelItem(row)->text(Report_Page::IDENTIFIER) == identifier) {
        return false;
    }
    Click_Entry(table, table->model()->index(row, Report_Page::IDENTIFIER));
    User_Input::Settle();
    auto* choices = Open_Editor<QComboBox>(table);
    if (choices == nullptr) {
        Fail_Missing("identifiers of " + component);
    }
    Choose_Entry(choices, identifier);
    User_Input::Settle();
    return true;
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
