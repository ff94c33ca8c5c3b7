#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <vector>

class QComboBox;
class QLabel;
class QLayout;
class QPushButton;
class TOptionEditorWidget;

/// The report page: shows the items of a report group with their values at one length and their combined standard
/// uncertainty, lets the user choose the identifier of each component, and starts the exports. Everything but the
/// combined uncertainty is computed by the receiver of Create_Report, which fills the page in one cycle:
/// Clear_Report, Start_Report_Update, Add_Report_Data for each record, End_Report_Update, Update_Status_Display.
class TReportWidget : public QWidget
{
    Q_OBJECT

public:
    /// What the last pressed export button asks for.
    enum TOutputMode
    {
        OUTPUT_PDF = 0,
        OUTPUT_CSV = 1
    };

    /// One item of a reported component.
    struct TReportItemData
    {
        QString name;
        QString expression_type; ///< "Constant" or "Length Dependent"
        QString expression;
        QString sensitivity; ///< 6 decimals
        QString distribution;
        QString uc_type;
        double divisor = 1.0;
        QString value_text; ///< 6 decimals, or "ERR" for an item that does not evaluate
        double value = 0.0; ///< 0 for an item that does not evaluate
    };

    struct TReportVariable
    {
        QString name;
        double value = 0.0;
    };

    /// One reported component.
    struct TReportData
    {
        QString name;
        QString identifier;       ///< empty or "[Default]": the component itself
        QStringList identifiers;  ///< the choices, "[Default]" first; not empty if the record has items
        int selection_index = -1; ///< the table row that chooses the identifier; set by Add_Report_Data
        bool is_variable = false; ///< stands for a report data variable, not for an entry of the group
        std::vector<TReportItemData> items;
        std::vector<TReportVariable> variables;
    };

    explicit TReportWidget(QWidget* parent = nullptr);

    // Report groups

    /// Offers `groups` and keeps the chosen one if it is still among them. Asks for no report.
    void Update_Report_Groups(const QStringList& groups);

    /// Chooses "<no selection>" and leaves the table as it is.
    void Set_Default_Report_Group();

    // Report

    /// The identifier of the first record named `component`, empty if there is none.
    QString Current_Identifier(const QString& component) const;

    /// Empties the table and the records and disables the exports. The status line stays.
    void Clear_Report();

    /// Enables the exports. Until End_Report_Update the table emits nothing.
    void Start_Report_Update();
    void End_Report_Update();

    /// Adds a copy of `record` and its rows: one that chooses the identifier and one for each item. A record without
    /// items is kept but has no rows. An item that does not evaluate disables the exports.
    void Add_Report_Data(const TReportData& record);

    /// Shows the combined standard uncertainty of the group's records at `length` (mm).
    void Update_Status_Display(const double& length);

    // Export

    /// A TOutputMode.
    int Output_Mode() const;

public slots:
    /// Asks for the report of the chosen group, or clears the page if none is chosen.
    void Generate_Report();
    void Refresh();
    void Generate_PDF();
    void Generate_CSV();

    /// Takes over the identifier chosen in row `index` of the table, for every record of that row's component, and
    /// asks for the report anew.
    void Identifier_Selection_Changed(int index, const QString& text);

signals:
    void Create_Report(const QString& group);
    void Create_Export_Report(const QString& group);

private:
    void Create_Group_Box();
    void Create_Table();
    void Create_Status();
    void Create_Export_Buttons();
    void Create_Layout();
    QLayout* Create_Output_Layout() const;
    void Connect_Signals();

    void Make_Groups_Readable();
    void Make_Identifiers_Readable();
    int Add_Selection_Row(const TReportData& record);
    void Choose_Identifier(const QString& component, const QString& identifier);
    void Return_To_Row(int index, const QString& component);
    void Enable_Exports(bool enabled);

    QComboBox* d_group_box;
    TOptionEditorWidget* d_table;
    QLabel* d_status;
    QPushButton* d_export_pdf;
    QPushButton* d_export_csv;

    std::vector<TReportData> d_records;
    bool d_is_updating = false;
    bool d_table_was_blocked = false;
    int d_output_mode = OUTPUT_PDF;
};
