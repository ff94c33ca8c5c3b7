#include "src/norvexaeditor.h"

#include "core/teardown.h"
#include "src/reportwidget.h"

#include <QAction>
#include <QApplication>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextCursor>

namespace {

const int LOG_STOP = 20;

int Overflow(const QString& column)
{
    return qMax(0, column.size() - LOG_STOP);
}

QString Log_Line(const QString& first, const QStringList& others)
{
    QString line = QString("%1").arg(first, -LOG_STOP);
    int overflow = Overflow(line);

    for (const QString& field : others) {
        if (field.isEmpty()) {
            continue;
        }
        const QString column = QString("%1").arg(field, overflow - LOG_STOP);
        line += column;
        overflow = Overflow(column);
    }
    return line;
}

} // namespace

// Construction

TNorvexaEditor::TNorvexaEditor(QWidget* parent) : QMainWindow(parent)
{
    Create_Pages();
    Create_Central_Widget();
    Create_Actions();
    Create_Tool_Bar();
    Create_Menus();
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
    Show_Page(0);
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
    if (index == REPORT_PAGE) {
        d_report_widget->Refresh();
    }
}

// Log

void TNorvexaEditor::Write_Log_Text(const QString& field_1, const QString& field_2, const QString& field_3,
                                    const QString& field_4, const QString& field_5, const QString& field_6,
                                    const QString& field_7, const QString& field_8)
{
    d_log_lines.append(Log_Line(field_1, {field_2, field_3, field_4, field_5, field_6, field_7, field_8}));
    if (!d_log_is_collected) {
        Flush_Log();
    }
}

// Lines appended one by one cost the text view far more than the same lines in one piece. The cursor goes to the
// beginning of the last line, because the view keeps its cursor in sight and would hide the first columns.
void TNorvexaEditor::Flush_Log()
{
    if (!d_log_lines.isEmpty()) {
        d_log->appendPlainText(d_log_lines.join('\n'));
        d_log->moveCursor(QTextCursor::End);
        d_log->moveCursor(QTextCursor::StartOfBlock);
        d_log_lines.clear();
    }
}
