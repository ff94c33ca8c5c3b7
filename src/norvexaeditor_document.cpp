#include "src/norvexaeditor.h"

#include "core/messagebox.h"
#include "src/logview.h"
#include "src/reportgroupwidget.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QTabWidget>
#include <QUrl>

#include <utility>

namespace {

const char* const SUFFIX = ".norvexa";
const char* const FILE_FILTER = "Norvexa files (*.norvexa)";
const char* const LOSS_QUESTION = "Current data will be lost.  Do you want to continue?";
const char* const CLOSE_QUESTION = "Current data will be lost.  Are you sure you want to close?";

bool Has_Suffix(const QString& file_name)
{
    return file_name.endsWith(SUFFIX, Qt::CaseInsensitive);
}

} // namespace

// Commands

void TNorvexaEditor::New()
{
    Commit_Focused_Editor();
    if (Is_Loss_Refused(LOSS_QUESTION)) {
        return;
    }
    // The variables, the input block and the file name stay, on purpose: the next budget is often one for the same
    // machine.
    Clear_Selected_Names();
    d_norvexa.Clear_Components();
    d_log->clear();
    Reset_Report_And_Groups();
    Update_BudgetTree();
    Select_BudgetTree_Item(QString(), QString());
    Update_Reportable_Components();

    d_modified = false;
    d_action_save->setEnabled(false);
    d_action_save_as->setEnabled(false);
}

void TNorvexaEditor::Open()
{
    Commit_Focused_Editor();
    if (Is_Loss_Refused(LOSS_QUESTION)) {
        return;
    }
    const QString file_name =
        QFileDialog::getOpenFileName(this, tr("Enter the name of the file to open"), d_last_directory, tr(FILE_FILTER));

    // Whatever the answer was, a cancelled dialog included. The modified flag stays set, so that loading asks once
    // more: both are meant.
    Reset_Report_And_Groups();
    Load_Data(file_name);
}

void TNorvexaEditor::Save()
{
    Commit_Focused_Editor();
    if (d_file_name.isEmpty()) {
        SaveAs();
        return;
    }
    Write_Budget(d_file_name);
}

void TNorvexaEditor::SaveAs()
{
    Commit_Focused_Editor();
    QString file_name =
        QFileDialog::getSaveFileName(this, tr("Enter the name of the file to save"), d_last_directory, tr(FILE_FILTER));
    if (file_name.isEmpty()) {
        return;
    }
    if (!Has_Suffix(file_name)) {
        file_name += SUFFIX;
        if (!Is_Overwriting_Confirmed(file_name)) {
            return;
        }
    }
    Remember_Directory(file_name);
    Write_Budget(file_name);
    d_file_name = file_name;
}

void TNorvexaEditor::Exit()
{
    close();
}

// Loading

void TNorvexaEditor::Load_Data(const QString& file_name)
{
    if (file_name.isEmpty()) {
        return;
    }
    Commit_Focused_Editor();
    if (Is_Loss_Refused(LOSS_QUESTION)) {
        return;
    }
    d_log->clear();

    // A document of its own: a file that breaks off half-way leaves the open budget whole.
    TNorvexa document;
    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;
    input_data.temperature_gradient = 0.0;

    if (!document.Load(file_name, &variables, &groups, &input_data)) {
        Report_Failure(document.Last_Error());
        return;
    }
    Clear_Selected_Names();
    d_norvexa = std::move(document);
    d_file_name = file_name;
    Remember_Directory(file_name);
    Show_Loaded_Budget(variables, groups, input_data);
}

void TNorvexaEditor::Show_Loaded_Budget(const std::vector<TVariable>& variables, const std::vector<TGroup>& groups,
                                        const TInputData& input_data)
{
    d_variable_widget->Set_Input_Data(input_data);
    d_variable_widget->Add_Optional_Variables(variables);
    d_report_group_widget->Set_Groups(groups);

    // The rows shown so far belong to another budget, and so do the identifiers that were chosen in them.
    d_report_widget->Clear_Report();
    Report_Groups_Changed();

    Update_BudgetTree();
    Select_BudgetTree_Item(QString(), QString());

    d_modified = false;
    Update_Reportable_Components();
    d_action_save->setEnabled(d_modified);
    d_action_save_as->setEnabled(true);

    Refresh_Shown_Report();
}

void TNorvexaEditor::Reset_Report_And_Groups()
{
    d_report_widget->Set_Default_Report_Group();
    d_report_widget->Clear_Report();
    d_report_widget->Update_Report_Groups(QStringList());
    d_report_group_widget->Clear_Groups();
}

void TNorvexaEditor::Update_Reportable_Components()
{
    const QStringList components = d_norvexa.Enum_Reportable_Components();

    d_variable_widget->Update_Variable_List(components);
    d_report_group_widget->Update_Reportable_Components(components);
}

// Saving

void TNorvexaEditor::Write_Budget(const QString& file_name)
{
    std::vector<TVariable> variables;
    variables.reserve(static_cast<std::size_t>(d_variable_widget->Variable_Count()));
    for (int index = 0; index < d_variable_widget->Variable_Count(); ++index) {
        variables.push_back(d_variable_widget->Variable(index));
    }
    const bool saved =
        d_norvexa.Save(file_name, variables, d_report_group_widget->Groups(), d_variable_widget->Input_Data());

    // Flag and actions change in either case; the log says when the file was not written.
    d_modified = false;
    d_action_save->setEnabled(false);
    d_action_save_as->setEnabled(true);

    if (!saved) {
        Report_Failure(d_norvexa.Last_Error());
    }
}

void TNorvexaEditor::Remember_Directory(const QString& file_name)
{
    const int slash = file_name.lastIndexOf('/');

    if (slash >= 0) {
        d_last_directory = file_name.left(slash);
    }
}

// Questions

bool TNorvexaEditor::Is_Dialog_Open()
{
    return QApplication::activeModalWidget() != nullptr;
}

bool TNorvexaEditor::Is_Loss_Refused(const QString& question)
{
    return d_modified && !Ask(tr("Data Not Saved"), question);
}

bool TNorvexaEditor::Is_Overwriting_Confirmed(const QString& file_name)
{
    if (!QFileInfo::exists(file_name)) {
        return true;
    }
    return Ask(tr("File Exists"),
               tr("The file '%1' exists.  Do you want to replace it?").arg(file_name.toHtmlEscaped()));
}

bool TNorvexaEditor::Ask(const QString& text, const QString& informative_text)
{
    d_message_box->setText(text);
    d_message_box->setInformativeText(informative_text);
    d_message_box->setDetailedText(QString());
    d_message_box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    d_message_box->setDefaultButton(QMessageBox::No);
    d_message_box->setIcon(QMessageBox::Question);
    return d_message_box->exec() == QMessageBox::Yes;
}

void TNorvexaEditor::Report_Failure(const QString& message)
{
    Write_Log_Text(message);
    View_Log();
}

// Changes

void TNorvexaEditor::Variable_Data_Chanaged()
{
    Set_Modified();
}

void TNorvexaEditor::Report_Groups_Changed()
{
    d_report_widget->Update_Report_Groups(d_report_group_widget->Group_Names());
    Set_Modified();
}

void TNorvexaEditor::Set_Modified()
{
    d_modified = true;
    Enable_Saving();
}

// Events

void TNorvexaEditor::closeEvent(QCloseEvent* event)
{
    Commit_Focused_Editor();
    if (Is_Loss_Refused(CLOSE_QUESTION)) {
        event->ignore();
    } else {
        event->accept();
    }
}

// While a dialog waits for its answer, no file may take the budget away from under it. The window system keeps a drag
// out then, but not one that was over the window before the dialog opened.
void TNorvexaEditor::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasFormat("text/uri-list") && !Is_Dialog_Open()) {
        event->acceptProposedAction();
    }
}

void TNorvexaEditor::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();

    if (urls.size() == 1 && !Is_Dialog_Open()) {
        Load_Data(urls.first().toLocalFile());
    }
}
