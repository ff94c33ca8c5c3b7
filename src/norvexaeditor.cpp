#include "src/norvexaeditor.h"

#include "core/teardown.h"
#include "src/logview.h"
#include "src/reportwidget.h"

#include <QAction>
#include <QApplication>
#include <QTabWidget>

#include <cstddef>
#include <utility>

namespace {

constexpr std::size_t LARGEST_LOG_PIECE = 100000; // lines

} // namespace

// Construction

TNorvexaEditor::TNorvexaEditor(QWidget* parent) : QMainWindow(parent)
{
    Create_Pages();
    Create_Central_Widget();
    Create_Actions();
    Group_Actions();
    Create_Tool_Bar();
    Create_Menus();
    Describe_Tabs();
    Describe_Tree_And_Log();
    Set_Initial_State();
    Connect_Signals();
}

TNorvexaEditor::~TNorvexaEditor()
{
    Disconnect_Children(this);
    qApp->disconnect(this);
}

// Tabs

void TNorvexaEditor::View_Budget_Data()
{
    Show_Page(BUDGET_PAGE);
}

void TNorvexaEditor::View_Variables()
{
    Show_Page(1);
}

void TNorvexaEditor::View_Groups()
{
    Show_Page(2);
}

void TNorvexaEditor::View_Report()
{
    Show_Page(REPORT_PAGE);
}

void TNorvexaEditor::View_Log()
{
    Show_Page(4);
}

// The action of the page in front has just been unchecked by the user's click, and no change of page follows.
void TNorvexaEditor::Show_Page(int index)
{
    d_tab_widget->setCurrentIndex(index);
    Page_Actions().at(index)->setChecked(true);
}

QList<QAction*> TNorvexaEditor::Page_Actions() const
{
    return {d_action_components, d_action_variables, d_action_groups, d_action_report, d_action_log};
}

void TNorvexaEditor::Tab_Selection_Changed(int index)
{
    const QList<QAction*> actions = Page_Actions();

    // An index one past the pages unchecks all of them.
    if (index < 0 || index > actions.size()) {
        return;
    }
    for (int page = 0; page < actions.size(); ++page) {
        actions.at(page)->setChecked(page == index);
    }
    if (index == BUDGET_PAGE) {
        // The variables may have changed on their page.
        Update_Expression_Hint();
    }
    if (index == REPORT_PAGE) {
        d_report_widget->Refresh();
    }
}

// Log

void TNorvexaEditor::Write_Log_Text(const QString& field_1, const QString& field_2, const QString& field_3,
                                    const QString& field_4, const QString& field_5, const QString& field_6,
                                    const QString& field_7, const QString& field_8)
{
    d_log_lines.push_back(Log_Line({field_1, field_2, field_3, field_4, field_5, field_6, field_7, field_8}));
    Flush_Log();
}

// What is collected goes in one piece at the end, or in several where it would take too much memory until then.
void TNorvexaEditor::Flush_Log()
{
    const bool waits = d_log_is_collected && d_log_lines.size() < LARGEST_LOG_PIECE;

    if (!waits && !d_log_lines.empty()) {
        d_log->Append(std::exchange(d_log_lines, {}));
    }
}
