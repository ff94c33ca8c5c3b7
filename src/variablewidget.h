#pragma once

#include "share/norvexadata.h"

#include <QStringList>
#include <QWidget>

#include <vector>

class QGridLayout;
class QToolButton;
class TNumberEdit;
class TOptionEditorWidget;

/// The page of the machine and environment inputs and of the variables that expressions may use.
///
/// Variables are of two kinds. The built-in ones stand first; their values follow from the input fields. The user's
/// stand behind them; each names in its description the reportable component whose uncertainty it carries. Whatever
/// the program fills in is no edit: only the user's own changes emit Variable_Changed.
class TVariableWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TVariableWidget(QWidget* parent = nullptr);

    /// The fields that a budget keeps, unscaled. A text that is no finite number counts as 0.
    TInputData Input_Data() const;

    /// The first position of the report range (mm).
    double Start_Position() const;

    /// The last position of the report range (mm).
    double End_Position() const;

    /// The distance between two positions of the report range (mm).
    double Increment() const;

    /// One thousandth of the value shown: the value that expressions use (mm/m/C).
    double Machine_Expansion_Coefficient() const;

    /// The built-in variables and the user's.
    int Variable_Count() const;

    TVariable Variable(int index) const;
    QString Variable_Name(int index) const;

    /// The value of a built-in variable, computed from the fields as they are. `valid` tells whether the page knows a
    /// value: for a user's variable it is false, and 0.0 is returned. "CTEc", "CTEd", "Lc" and "L" are 0.0 and valid:
    /// they depend on component and length, so the report supplies them.
    double Variable_Value(int index, bool* valid) const;

    /// The description of the variable of that name; if none is spelled so, of the first whose name differs only in
    /// case, as expressions find it. Empty if there is none.
    QString Variable_Description(const QString& name) const;

    /// Whether a variable has that name, without regard to case.
    bool Variable_Exists(const QString& name) const;

    /// Shows the fields that a budget keeps. Start position and mean standard deviation stay as they are.
    void Set_Input_Data(const TInputData& input_data);

    /// Replaces the user's variables. Those that are called like a built-in one are skipped. Descriptions are kept even
    /// while no component of that name is offered.
    void Add_Optional_Variables(const std::vector<TVariable>& variables);

    /// Offers `components` in the selection lists of the user's variables.
    void Update_Variable_List(const QStringList& components);

public slots:
    void Add_Variable();
    void Rename_Variable();
    void Remove_Variable();
    void Variable_Selection_Changed();
    void Variable_Selection_List_Changed(int row, const QString& text);
    void Variable_Value_Changed();

signals:
    /// The user changed a field or a variable.
    void Variable_Changed();

private:
    void Create_Value_Fields();
    void Create_Variable_List();
    void Create_Buttons();
    void Create_Layout();
    void Describe_Machine();
    void Describe_Report_Range();
    void Describe_Variable_List();
    void Connect_Signals();

    TNumberEdit* Create_Value_Field(const QString& object_name, const QString& label, const QString& unit,
                                    const QString& text);

    void Initialize_Option_Editor();
    void Update_Option_Editor();
    void Add_Variable_Entry(TVariable* variable);
    void Rename_Variable_Entry(int row, const QString& name);
    void Remove_Variable_Entry(int row);
    int Current_Row() const;
    int Selected_Row() const;

    QGridLayout* d_value_layout = nullptr;
    TNumberEdit* d_machine_expansion_coefficient = nullptr;
    TNumberEdit* d_machine_scale = nullptr;
    TNumberEdit* d_temperature_minimum = nullptr;
    TNumberEdit* d_temperature_maximum = nullptr;
    TNumberEdit* d_temperature_gradient = nullptr;
    TNumberEdit* d_standard_deviation = nullptr;
    TNumberEdit* d_start_position = nullptr;
    TNumberEdit* d_end_position = nullptr;
    TNumberEdit* d_increment = nullptr;

    TOptionEditorWidget* d_variable_list = nullptr;
    QToolButton* d_add_button = nullptr;
    QToolButton* d_rename_button = nullptr;
    QToolButton* d_remove_button = nullptr;

    /// A variable's position is its row in the list: the built-in ones first.
    std::vector<TVariable> d_variables;

    /// What the selection lists offer: "[no selection]" and the reportable components.
    QStringList d_components;
};
