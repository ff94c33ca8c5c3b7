#pragma once

#include "core/expression.h"
#include "src/logline.h"
#include "src/norvexa.h"
#include "src/reportwalk.h"

#include <QList>
#include <QMainWindow>
#include <QStringList>

#include <vector>

class QAction;
class QActionGroup;
class QGridLayout;
class QKeySequence;
class QLabel;
class QTabWidget;
class QToolButton;
class QTreeWidgetItem;

class TBudgetTree;
class TComponentItemWidget;
class TComponentWidget;
class TEntryDelegate;
class TExportProgress;
class TLogView;
class TMessageBox;
class TReportGroupWidget;
class TReportWidget;
class TVariableWidget;

/// The main window: owns the budget document and all pages, carries out the life of a document (new, open, save, close,
/// drop), keeps the one modified flag of the program, and joins the pages' signals to the document and to the report.
///
/// An edit goes one way: page signal, window slot, document (variables and groups stay in their pages), modified flag.
/// A report goes the other: the report page asks, the window collects the records and evaluates them through the
/// document, the page receives the rows.
class TNorvexaEditor : public QMainWindow
{
    Q_OBJECT

public:
    using TReportData = TReportRecord;

    explicit TNorvexaEditor(QWidget* parent = nullptr);
    ~TNorvexaEditor() override;

    TNorvexaEditor(const TNorvexaEditor&) = delete;
    TNorvexaEditor& operator=(const TNorvexaEditor&) = delete;

    // Log (norvexaeditor)

    /// Appends one line to the log (see Log_Line).
    void Write_Log_Text(const QString& field_1, const QString& field_2 = QString(), const QString& field_3 = QString(),
                        const QString& field_4 = QString(), const QString& field_5 = QString(),
                        const QString& field_6 = QString(), const QString& field_7 = QString(),
                        const QString& field_8 = QString());

    // Document (norvexaeditor_document)

    /// Opens a budget, after a question when the present one has changes. A file that cannot be read changes nothing
    /// but the log, which then comes to the front. Does nothing for an empty name.
    void Load_Data(const QString& file_name);

    // Budget tree (norvexaeditor_tree)

    /// Builds the tree anew from the document, with nothing selected.
    void Update_BudgetTree();

    /// Makes the entry of a component, or of one of its items, the current one. The root becomes current when the
    /// component is empty or unknown, the component when the item is.
    void Select_BudgetTree_Item(const QString& component, const QString& item);

    // Report (norvexaeditor_report)

    /// Collects what does not depend on the length: the global variables, one record for each member of the group, and
    /// one for each variable that stands for a component. A member that cannot be identified is logged and ends the
    /// collection; what was collected so far stays.
    void Create_Report_Data(const QString& group);

    /// Shows the collected records, evaluated at `length` (mm), on the report page. False when the group mixes linear
    /// and temperature items; the page is empty then.
    bool Update_Report(const double& length);

    /// The names that the expression of one item uses for an identifier.
    QStringList Variable_List(const QString& component, const QString& item, const QString& identifier) const;

    /// The names that the expressions of all items of a component use for an identifier.
    QStringList Variable_List(const QString& component, const QString& identifier) const;

    /// Removes the first entry that equals `name` without regard to case.
    void Remove_From_List(QStringList* list, const QString& name) const;

    /// The names that the collected group records use and that are no global variables.
    QStringList Report_Data_Variable_List() const;

    // Export (norvexaeditor_export)

    /// Adds the collected records, evaluated at `length` (mm), to the export records of the report page. False when the
    /// group mixes linear and temperature items.
    bool Update_Export(const double& length);

public slots:
    // Tabs (norvexaeditor)
    void View_Budget_Data();
    void View_Variables();
    void View_Groups();
    void View_Report();
    void View_Log();
    void Tab_Selection_Changed(int index);

    // Document (norvexaeditor_document)
    void New();
    void Open();
    void Save();
    void SaveAs();
    void Exit();
    void Variable_Data_Chanaged(); // spelled so on purpose: the slot's name is established
    void Report_Groups_Changed();

    // Budget tree and component pages (norvexaeditor_tree)
    void BudgetTree_Selection_Changed();
    void BudgetTree_Add_Item();
    void BudgetTree_Remove_Item();
    void BudgetTree_Rename_Item(QWidget* editor);
    void Component_Add_Identifier(const QString& name);
    void Component_Rename_Identifier(const QString& old_name, const QString& new_name);
    void Component_Remove_Identifiers(const QStringList& names);
    void Component_Data_Changed();
    void Component_Identifier_Selected(const QString& identifier);
    void Component_Item_Data_Changed();

    // Report (norvexaeditor_report)
    void Update_Report_View(const QString& group);

    // Export (norvexaeditor_export)
    void Generate_Export_Report(const QString& group);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class TScreenReport;
    class TExportReport;

    /// How the evaluation at the lengths of an export ended.
    enum class TExportEnd
    {
        Complete,
        Failed,
        Cancelled
    };

    static constexpr int BUDGET_PAGE = 0;
    static constexpr int REPORT_PAGE = 3;

    // Tabs and log (norvexaeditor)
    void Show_Page(int index);
    QList<QAction*> Page_Actions() const;
    void Flush_Log();

    // Layout (norvexaeditor_layout)
    void Create_Pages();
    QWidget* Create_Budget_Page();
    QWidget* Create_Tree_Column();
    void Create_Budget_Tree();
    void Create_Log();
    void Create_Central_Widget();
    void Create_Actions();
    void Group_Actions();
    void Create_Tool_Bar();
    void Create_Menus();
    void Describe_Tabs();
    void Describe_Tree_And_Log();
    void Set_Initial_State();
    void Connect_Signals();
    void Connect_Actions();
    void Connect_Budget_Tree();
    void Connect_Pages();

    // Document (norvexaeditor_document)
    static bool Is_Dialog_Open();
    bool Is_Loss_Refused(const QString& question);
    bool Is_Overwriting_Confirmed(const QString& file_name);
    bool Ask(const QString& text, const QString& informative_text);
    void Reset_Report_And_Groups();
    void Show_Loaded_Budget(const std::vector<TVariable>& variables, const std::vector<TGroup>& groups,
                            const TInputData& input_data);
    void Write_Budget(const QString& file_name);
    void Remember_Directory(const QString& file_name);
    void Set_Modified();
    void Report_Failure(const QString& message);
    void Update_Reportable_Components();

    // Typed text (norvexaeditor_commit)
    void Commit_Focused_Editor();
    void Watch_Focused_Editor(QWidget* old, QWidget* now);
    void Enable_Saving();

    // Budget tree and component pages (norvexaeditor_tree)
    void Add_Tree_Entry(const QString& name);
    void Remove_Selected_Entries();
    bool Rename_Component_Entry(const QString& old_name, const QString& new_name);
    bool Rename_Item_Entry(const QString& component, const QString& old_name, const QString& new_name);
    void Clear_Selected_Names();
    void Enable_Add(bool enabled);
    void Enable_Remove(bool enabled);
    void Show_Component(const QString& component);

    /// The position of the current component in the document, -1 if it is not there.
    int Current_Component() const;
    bool Is_Identifier(int component, const QString& identifier) const;
    TNorvexaData::TComponentInstance Edited_Instance(int component) const;
    TNorvexaData::TComponentInstance Current_Instance(int component) const;
    bool Has_Known_Expression_Type(const QString& component, const QString& item) const;
    void Show_Component_Item(const QString& component, const QString& item);
    void Show_Item_Expression();
    void Update_Item_Expression();

    // Expression hint (norvexaeditor_hint)

    /// Lets the item page show whether a report could evaluate the expression as it stands there.
    void Update_Expression_Hint();

    /// What a report defines for an expression that uses these names: the built-in variables, and those of the names
    /// that stand for a component.
    std::vector<TExpression::TVariable> Report_Variables(const QStringList& names) const;

    /// The value that a record supplies for a component or an identifier with these values.
    double Record_Variable_Value(const QString& name, const TNorvexaData::TComponentInstance& instance) const;
    bool Stands_For_Component(const QString& variable) const;

    // Report (norvexaeditor_report)
    void Collect_Global_Variables();
    bool Collect_Group_Record(const QString& entry);
    bool Collect_Variable_Record(const QString& name);
    bool Identify(const QString& reportable, TReportData* record);
    QStringList Names_In_Use(const TReportData& record) const;
    void Collect_Local_Variables(TReportData* record);
    QStringList Offered_Identifiers(const QString& component) const;
    QString Reported_Identifier(const QString& component) const;
    void Refresh_Shown_Report();
    bool Is_Report_Range_Valid(double start, double end, double increment);

    // Export (norvexaeditor_export)
    QString Ask_For_Export_File(int output_mode);
    TExportEnd Collect_Export(const QString& group, const std::vector<double>& lengths);
    TExportEnd Update_Exports(const std::vector<double>& lengths, TExportProgress* progress);
    void Write_Export(int output_mode, const QString& file_name);

    QTabWidget* d_tab_widget = nullptr;
    TBudgetTree* d_budget_tree = nullptr;
    TEntryDelegate* d_budget_tree_delegate = nullptr;
    TComponentWidget* d_component_widget = nullptr;
    TComponentItemWidget* d_component_item_widget = nullptr;
    TVariableWidget* d_variable_widget = nullptr;
    TReportGroupWidget* d_report_group_widget = nullptr;
    TReportWidget* d_report_widget = nullptr;
    TLogView* d_log = nullptr;
    TMessageBox* d_message_box = nullptr;

    QActionGroup* d_actions = nullptr; ///< all of them, to be disabled at once
    QAction* d_action_new = nullptr;
    QAction* d_action_open = nullptr;
    QAction* d_action_save = nullptr;
    QAction* d_action_save_as = nullptr;
    QAction* d_action_exit = nullptr;
    QAction* d_action_add_item = nullptr;
    QAction* d_action_remove_item = nullptr;
    QToolButton* d_add_button = nullptr;
    QToolButton* d_remove_button = nullptr;
    QAction* d_action_components = nullptr;
    QAction* d_action_variables = nullptr;
    QAction* d_action_groups = nullptr;
    QAction* d_action_report = nullptr;
    QAction* d_action_log = nullptr;

    bool d_modified = false;
    QString d_file_name;
    QString d_last_directory;
    QString d_component;
    int d_component_position = -1; ///< where it stood when it was selected
    QString d_component_item;
    QString d_default_identifier = TNorvexa::Default_Identifier();
    QString d_identifier = d_default_identifier;
    int d_tree_depth = -1;
    std::vector<TLogLine> d_log_lines;
    bool d_log_is_collected = false;

    TNorvexa d_norvexa;
    std::vector<TVariable> d_global_variables;
    std::vector<TReportData> d_group_records;
    std::vector<TReportData> d_variable_records;
    bool d_group_is_complete = false;
};
