#pragma once

#include "core/vector2.h"

#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstddef>
#include <vector>

class QComboBox;
class QLabel;
class QLayout;
class QPushButton;
class TReportTable;

/// The report page: shows the items of a report group with their values at one length and their combined standard
/// uncertainty, lets the user choose the identifier of each component, and starts the exports. Everything but the
/// combined uncertainty is computed by the receiver of Create_Report, which fills the page in one cycle:
/// Clear_Report, Start_Report_Update, Add_Report_Data for each record, End_Report_Update, Update_Status_Display.
///
/// An export is filled in the same way by the receiver of Create_Export_Report: Clear_Export, then for each length
/// Add_Export_Variable_Data and Add_Export_Data, at the end Update_Export_Uncertainty_Data, Format_Export_Data and one
/// of the writers.
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

    /// One item of a reported component over all lengths of an export.
    struct TExportData
    {
        QString component;
        TReportItemData item; ///< as it was at the first length
        QString identifier;
        bool is_variable = false; ///< belongs to a report data variable, not to an entry of the group
        std::vector<double> values;
        std::vector<double> positions; ///< the lengths in mm, parallel to the values
    };

    /// One variable over all lengths of an export.
    struct TExportVariableData
    {
        QString source; ///< the component that the variable belongs to or stands for; empty for a global variable
        QString name;
        std::vector<double> values; ///< one for each length
    };

    /// Comma-separated lines. Both copies have the same lines and cells; the numbers of the second are rounded to what
    /// fits into the columns of a page.
    struct TFormattedLines
    {
        std::vector<QString> csv;
        std::vector<QString> pdf;
    };

    /// The sections of an export, in the order in which they are written.
    struct TExportLines
    {
        TFormattedLines budget_definition;
        TFormattedLines global_variables;
        TFormattedLines budget_data; ///< with the combined uncertainty as its last line
        TFormattedLines formula;     ///< two lines, for K = 1 and K = 2
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

    /// Forgets everything that was collected, calculated and formatted.
    void Clear_Export();

    /// Adds the items of `record`, evaluated at `length` (mm).
    void Add_Export_Data(const TReportData& record, const double& length);

    /// Adds the value of the item at `length` (mm) to the record of the same component, item and variable flag that has
    /// no value at this length yet, or to a copy of `added` where there is none.
    void Add_Export_Data(const TExportData& added, const double& length);

    /// Adds the values to the record of the same source and name, or a copy of `added` where there is none.
    void Add_Export_Variable_Data(const TExportVariableData& added);

    /// Calculates the combined standard uncertainty of the group's records at each length of the first record.
    void Update_Export_Uncertainty_Data();

    /// Makes the lines that the writers write, the fitted formula included.
    void Format_Export_Data();

    /// The cells of one formatted line, without the quotes that enclose a cell.
    QStringList Split_CSV_Data(const QString& line) const;

    /// Replaces `file` in one step by the formatted lines in Latin-1. On failure Last_Error has the reason and the old
    /// file is still there.
    bool Write_Export_CSV_Data(const QString& file) const;

    /// Prints the formatted lines into `file`, directly and silently: what cannot be created or not be written whole
    /// is missing or cut, and the caller looks.
    void Write_Export_PDF_Data(const QString& file) const;

    /// Why the last CSV file was not written; empty if it was.
    QString Last_Error() const;

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
    using TNames = QPair<QString, QString>;

    void Create_Group_Box();
    void Create_Table();
    void Create_Status();
    void Create_Export_Buttons();
    void Create_Layout();
    QLayout* Create_Output_Layout() const;
    void Describe_Controls();
    void Connect_Signals();

    void Make_Groups_Readable();
    void Fit_Columns();
    void Make_Identifiers_Readable();
    int Add_Selection_Row(const TReportData& record);
    void Choose_Identifier(const QString& component, const QString& identifier);
    void Return_To_Row(int index, const QString& component);
    void Enable_Exports(bool enabled);

    TExportData* Record_To_Grow(bool is_variable, const TNames& names, double length);
    void Pass_Grown_Records(double length);
    TExportData* Add_Export_Record(const TExportData& added);

    QComboBox* d_group_box;
    TReportTable* d_table;
    QLabel* d_status;
    QPushButton* d_export_pdf;
    QPushButton* d_export_csv;

    std::vector<TReportData> d_records;
    bool d_is_updating = false;
    bool d_table_was_blocked = false;
    int d_output_mode = OUTPUT_PDF;

    // Each length looks up all records. Those of the items are found at the first one that has no value yet, and by the
    // hash only where a length brings them in another order.
    std::vector<TExportData> d_export_records;
    QHash<QPair<bool, TNames>, std::vector<std::size_t>> d_export_record_positions;
    double d_growing_length = 0.0;          ///< mm, of the last item
    std::size_t d_grown_export_records = 0; ///< records at the front that have a value at that length
    std::vector<TExportVariableData> d_export_variables;
    QHash<TNames, std::size_t> d_export_variable_positions;
    std::vector<TVector2> d_uncertainty_points; ///< x: length in mm, y: combined standard uncertainty in mm
    TExportLines d_export_lines;
    mutable QString d_last_error;
};
