#include "src/variablewidget.h"

#include "core/assertion.h"
#include "core/describe.h"
#include "core/numberedit.h"
#include "core/optioneditor.h"
#include "src/enablecontrol.h"
#include "src/iconbutton.h"
#include "src/namedialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

const char* const NO_SELECTION = "[no selection]";
const double REFERENCE_TEMPERATURE = 20.0;

/// Sets the list apart from the fields and their units, in pixels.
const int GAP_WIDTH = 16;

/// What the values of the built-in variables follow from.
struct TFieldValues
{
    TInputData input;
    double standard_deviation;
};

double Supplied_By_Report(const TFieldValues& /*fields*/)
{
    return 0.0;
}

double Temperature_Deviation(const TFieldValues& fields)
{
    const double mean = (fields.input.temperature_minimum + fields.input.temperature_maximum) * 0.5;

    return std::abs(mean - REFERENCE_TEMPERATURE);
}

struct TBuiltInVariable
{
    const char* name;
    const char* description;
    double (*value)(const TFieldValues& fields);
};

const TBuiltInVariable BUILT_IN_VARIABLES[] = {
    {"CTEm", "Machine Expansion Coefficient",
     [](const TFieldValues& fields) { return fields.input.machine_expansion_coefficient / 1000.0; }},
    {"CTEc", "Component Expansion Coefficient", Supplied_By_Report},
    {"CTEd", "Expansion Coefficient Difference", Supplied_By_Report},
    {"Sr", "Scale Resolution", [](const TFieldValues& fields) { return fields.input.machine_scale; }},
    {"Td", "Temperature Deviation from 20 C", Temperature_Deviation},
    {"Tr", "Temperature Range",
     [](const TFieldValues& fields) {
         return std::abs(fields.input.temperature_maximum - fields.input.temperature_minimum);
     }},
    {"Tg", "Temperature Gradient",
     [](const TFieldValues& fields) { return std::abs(fields.input.temperature_gradient); }},
    {"Sdev", "Standard Deviation", [](const TFieldValues& fields) { return std::abs(fields.standard_deviation); }},
    {"Lc", "Length Count", Supplied_By_Report},
    {"L", "Test Length", Supplied_By_Report},
};

const int BUILT_IN_COUNT = static_cast<int>(std::size(BUILT_IN_VARIABLES));

/// nullptr if no built-in variable has exactly that name.
const TBuiltInVariable* Built_In_Variable(const QString& name)
{
    const auto* const found = std::find_if(std::begin(BUILT_IN_VARIABLES), std::end(BUILT_IN_VARIABLES),
                                           [&name](const TBuiltInVariable& variable) { return name == variable.name; });

    return found == std::end(BUILT_IN_VARIABLES) ? nullptr : found;
}

bool Is_User_Row(int row)
{
    return row >= BUILT_IN_COUNT;
}

/// Expressions end a name at a blank, so a name has underscores instead.
QString With_Underscores(QString name)
{
    std::replace_if(
        name.begin(), name.end(), [](QChar character) { return character.isSpace(); }, QChar('_'));
    return name;
}

/// Lets the user enter a variable's name, starting from `name`. Empty when the user thought better of it.
QString Ask_Name(QWidget* parent, const QString& title, const QString& name)
{
    TNameDialog dialog(parent);

    dialog.Set_Title(title);
    dialog.Set_Name(name);
    return dialog.exec() == QDialog::Accepted ? With_Underscores(dialog.Name()) : QString();
}

} // namespace

// Construction

TVariableWidget::TVariableWidget(QWidget* parent) : QWidget(parent), d_components(NO_SELECTION)
{
    Create_Value_Fields();
    Create_Variable_List();
    Create_Buttons();
    Create_Layout();
    Describe_Machine();
    Describe_Report_Range();
    Describe_Variable_List();
    Initialize_Option_Editor();
    Variable_Selection_Changed();
    Connect_Signals();
}

void TVariableWidget::Create_Value_Fields()
{
    d_value_layout = new QGridLayout;

    d_machine_expansion_coefficient = Create_Value_Field("machine_expansion_coefficient",
                                                         tr("Machine Expansion Coefficient:"), "um/m/\u02DAC", "11.5");
    d_machine_scale = Create_Value_Field("machine_scale", tr("Machine Scale Resolution:"), "mm", "0.001");
    d_temperature_minimum = Create_Value_Field("temperature_minimum", tr("Minimum Temperature:"), "C", "20.0");
    d_temperature_maximum = Create_Value_Field("temperature_maximum", tr("Maximum Temperature:"), "C", "20.0");
    d_temperature_gradient = Create_Value_Field("temperature_gradient", tr("Temperature Gradient:"), "C", "0.0");
    d_standard_deviation = Create_Value_Field("standard_deviation", tr("Mean Standard Deviation:"), "mm", "0.000");
    d_start_position = Create_Value_Field("start_position", tr("Start Position:"), "mm", "0.000");
    d_end_position = Create_Value_Field("end_position", tr("End Position:"), "mm", "1000.000");
    d_increment = Create_Value_Field("increment", tr("Increment:"), "mm", "50.000");
}

TNumberEdit* TVariableWidget::Create_Value_Field(const QString& object_name, const QString& label, const QString& unit,
                                                 const QString& text)
{
    const int row = d_value_layout->rowCount();
    auto* field_label = new QLabel(label, this);
    auto* field = new TNumberEdit(this);

    field->setObjectName(object_name);
    field->setText(text);
    field->setAccessibleDescription(unit);
    field_label->setBuddy(field);

    d_value_layout->addWidget(field_label, row, 0);
    d_value_layout->addWidget(field, row, 1);
    d_value_layout->addWidget(new QLabel(unit, this), row, 2);

    // Only the user's own typing counts: textEdited, unlike textChanged, is silent when the program fills the field.
    connect(field, &QLineEdit::textEdited, this, &TVariableWidget::Variable_Value_Changed);
    return field;
}

void TVariableWidget::Create_Variable_List()
{
    d_variable_list = new TOptionEditorWidget(this);
    d_variable_list->setObjectName("variable_list");
    d_variable_list->setAccessibleName(tr("Variable Entries"));
    d_variable_list->setHeaderLabels({tr("Variable"), tr("Description")});
    d_variable_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
}

void TVariableWidget::Create_Buttons()
{
    d_add_button = Create_Icon_Button("add_variable", ":/gui/add.png", tr("Add variable"), this);
    d_rename_button = Create_Icon_Button("rename_variable", ":/gui/edit.png", tr("Rename variable"), this);
    d_remove_button = Create_Icon_Button("remove_variable", ":/gui/remove.png", tr("Remove variable"), this);
}

void TVariableWidget::Create_Layout()
{
    auto* list_label = new QLabel(tr("Variable Entries:"), this);
    auto* buttons = new QHBoxLayout;
    auto* page = new QGridLayout(this);

    list_label->setBuddy(d_variable_list);
    buttons->addWidget(d_add_button);
    buttons->addWidget(d_rename_button);
    buttons->addWidget(d_remove_button);
    buttons->addStretch();

    page->addWidget(new QLabel(tr("Variable Values:"), this), 0, 0);
    page->addLayout(d_value_layout, 1, 0, Qt::AlignTop);
    page->setColumnMinimumWidth(1, GAP_WIDTH);
    page->addWidget(list_label, 0, 2);
    page->addWidget(d_variable_list, 1, 2);
    page->addLayout(buttons, 2, 2);
    page->setColumnStretch(2, 1);
}

void TVariableWidget::Describe_Machine()
{
    Describe(
        d_machine_expansion_coefficient, tr("Coefficient of linear thermal expansion of the machine's scale in um/m/C"),
        tr("The coefficient of linear thermal expansion of the machine's scale, in um/m/C (micrometres per metre and "
           "degree Celsius). Expressions use it through the variables CTEm, in mm/m/C, and CTEd."));
    Describe(d_machine_scale, tr("Resolution of the machine's scale in mm"),
             tr("The resolution of the machine's scale, in mm: the smallest step that it indicates. Expressions use "
                "it through the variable Sr."));
    Describe(d_temperature_minimum, tr("Lowest temperature during a measurement in C"),
             tr("The lowest temperature during a measurement, in C. Expressions use it through the variables Td, the "
                "deviation of the mean temperature from 20 C, and Tr, the temperature range."));
    Describe(d_temperature_maximum, tr("Highest temperature during a measurement in C"),
             tr("The highest temperature during a measurement, in C. Expressions use it through the variables Td, "
                "the deviation of the mean temperature from 20 C, and Tr, the temperature range."));
    Describe(d_temperature_gradient, tr("Temperature gradient in C"),
             tr("The temperature gradient, in C: the difference of temperature between places in the measuring "
                "volume. Expressions use it through the variable Tg."));
    Describe(d_standard_deviation, tr("Standard deviation of the mean in mm"),
             tr("The standard deviation of the mean of repeated measurements, in mm. Expressions use it through the "
                "variable Sdev. It is not kept in the file."));
}

void TVariableWidget::Describe_Report_Range()
{
    Describe(d_start_position, tr("First length of an export in mm"),
             tr("The first length at which an export evaluates the report group, in mm. It is not kept in the file."));
    Describe(d_end_position, tr("Last length of an export, and the length of the report page, in mm"),
             tr("The last length at which an export evaluates the report group, in mm. The report page shows the "
                "contributions at this length."));
    Describe(d_increment, tr("Step from one length of an export to the next in mm"),
             tr("The step from one length of an export to the next, in mm. An export has at most 120 lengths, or 121 "
                "where rounding brings one more."));
}

void TVariableWidget::Describe_Variable_List()
{
    Describe(
        d_variable_list, tr("The names that expressions may use"),
        tr("The names that expressions may use. The built-in variables at the top follow from the fields and from "
           "the report. A variable of your own stands for the standard uncertainty of the component that is chosen "
           "as its description: go there with the arrow keys or click it, and the choices open in its place. The "
           "buttons below the list add a variable, rename the selected one and remove it."));
    d_add_button->setWhatsThis(tr("Asks for a name and adds a variable. Blanks become underscores; a name in use, in "
                                  "whatever case, is refused."));
    d_rename_button->setWhatsThis(
        tr("Asks for a new name of the selected variable. Expressions that use the old name keep it."));
    d_remove_button->setWhatsThis(
        tr("Removes the selected variable. Nothing defines its name any more in the expressions that use it."));
}

void TVariableWidget::Connect_Signals()
{
    connect(d_add_button, &QToolButton::clicked, this, &TVariableWidget::Add_Variable);
    connect(d_rename_button, &QToolButton::clicked, this, &TVariableWidget::Rename_Variable);
    connect(d_remove_button, &QToolButton::clicked, this, &TVariableWidget::Remove_Variable);
    connect(d_variable_list, &QTreeWidget::itemSelectionChanged, this, &TVariableWidget::Variable_Selection_Changed);
    connect(d_variable_list, &TOptionEditorWidget::SelectionListItemChanged, this,
            &TVariableWidget::Variable_Selection_List_Changed);
}

// Input fields

TInputData TVariableWidget::Input_Data() const
{
    TInputData input_data;

    input_data.machine_expansion_coefficient = d_machine_expansion_coefficient->Value();
    input_data.machine_scale = d_machine_scale->Value();
    input_data.temperature_minimum = d_temperature_minimum->Value();
    input_data.temperature_maximum = d_temperature_maximum->Value();
    input_data.temperature_gradient = d_temperature_gradient->Value();
    input_data.report_increment = d_increment->Value();
    input_data.report_end = d_end_position->Value();
    return input_data;
}

void TVariableWidget::Set_Input_Data(const TInputData& input_data)
{
    d_machine_expansion_coefficient->Set_Value(input_data.machine_expansion_coefficient, 2);
    d_machine_scale->Set_Value(input_data.machine_scale, 6);
    d_temperature_minimum->Set_Value(input_data.temperature_minimum, 2);
    d_temperature_maximum->Set_Value(input_data.temperature_maximum, 2);
    d_temperature_gradient->Set_Value(input_data.temperature_gradient, 2);
    d_increment->Set_Value(input_data.report_increment, 3);
    d_end_position->Set_Value(input_data.report_end, 3);
}

double TVariableWidget::Start_Position() const
{
    return d_start_position->Value();
}

double TVariableWidget::End_Position() const
{
    return d_end_position->Value();
}

double TVariableWidget::Increment() const
{
    return d_increment->Value();
}

double TVariableWidget::Machine_Expansion_Coefficient() const
{
    return d_machine_expansion_coefficient->Value() / 1000.0;
}

void TVariableWidget::Variable_Value_Changed()
{
    emit Variable_Changed();
}

// Variables

int TVariableWidget::Variable_Count() const
{
    return static_cast<int>(d_variables.size());
}

TVariable TVariableWidget::Variable(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());

    return d_variables[static_cast<unsigned int>(index)];
}

QString TVariableWidget::Variable_Name(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());

    return d_variables[static_cast<unsigned int>(index)].name;
}

double TVariableWidget::Variable_Value(int index, bool* valid) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());
    NORVEXA_ASSERT(valid);

    const TBuiltInVariable* const variable = Built_In_Variable(Variable_Name(index));

    *valid = variable != nullptr;
    return *valid ? variable->value({Input_Data(), d_standard_deviation->Value()}) : 0.0;
}

QString TVariableWidget::Variable_Description(const QString& name) const
{
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        for (const TVariable& variable : d_variables) {
            if (variable.name.compare(name, sensitivity) == 0) {
                return variable.description;
            }
        }
    }
    return QString();
}

bool TVariableWidget::Variable_Exists(const QString& name) const
{
    return std::any_of(d_variables.begin(), d_variables.end(), [&name](const TVariable& variable) {
        return variable.name.compare(name, Qt::CaseInsensitive) == 0;
    });
}

void TVariableWidget::Add_Optional_Variables(const std::vector<TVariable>& variables)
{
    d_variables.erase(d_variables.begin() + BUILT_IN_COUNT, d_variables.end());
    std::copy_if(variables.begin(), variables.end(), std::back_inserter(d_variables),
                 [](const TVariable& variable) { return Built_In_Variable(variable.name) == nullptr; });
    Update_Option_Editor();
}

void TVariableWidget::Update_Variable_List(const QStringList& components)
{
    const QStringList offered = QStringList(NO_SELECTION) + components;

    // Most changes of a component leave the names as they are.
    if (offered != d_components) {
        d_components = offered;
        Update_Option_Editor();
    }
}

// The user's changes of the list

void TVariableWidget::Add_Variable()
{
    const QString name = Ask_Name(this, tr("New Variable"), QString());

    if (name.isEmpty() || Variable_Exists(name)) {
        return;
    }
    d_variables.push_back({name, QString(), -1, 0.0});
    Add_Variable_Entry(&d_variables.back());
    d_variable_list->scrollToItem(d_variable_list->topLevelItem(d_variables.back().index));
    emit Variable_Changed();
}

void TVariableWidget::Rename_Variable()
{
    const int row = Current_Row();

    if (!Is_User_Row(row)) {
        return;
    }
    const QString name = Ask_Name(this, tr("Rename Variable"), Variable_Name(row));

    if (name.isEmpty() || Variable_Exists(name)) {
        return;
    }
    Rename_Variable_Entry(row, name);
    emit Variable_Changed();
}

void TVariableWidget::Remove_Variable()
{
    const int row = Selected_Row();

    if (!Is_User_Row(row)) {
        return;
    }
    Remove_Variable_Entry(row);
    emit Variable_Changed();
}

void TVariableWidget::Variable_Selection_Changed()
{
    const bool is_user_variable = Is_User_Row(Selected_Row());

    Enable_Control(d_rename_button, is_user_variable, d_variable_list);
    Enable_Control(d_remove_button, is_user_variable, d_variable_list);
}

void TVariableWidget::Variable_Selection_List_Changed(int row, const QString& text)
{
    const QString description = text == NO_SELECTION ? QString() : text;
    const auto variable = std::find_if(d_variables.begin() + BUILT_IN_COUNT, d_variables.end(),
                                       [row](const TVariable& candidate) { return candidate.index == row; });

    // Choosing the entry shown is a change only where it stands for a description that is not offered.
    if (variable == d_variables.end() || variable->description == description) {
        return;
    }
    variable->description = description;
    emit Variable_Changed();
}

// Rows of the list

void TVariableWidget::Initialize_Option_Editor()
{
    for (const TBuiltInVariable& variable : BUILT_IN_VARIABLES) {
        const int row = d_variable_list->AddLineEditorOption(variable.name, variable.description);
        QTreeWidgetItem* const item = d_variable_list->topLevelItem(row);

        item->setFlags(item->flags() & ~Qt::ItemIsEditable);
        d_variables.push_back({variable.name, variable.description, -1, 0.0});
    }
}

void TVariableWidget::Update_Option_Editor()
{
    const QSignalBlocker blocker(d_variable_list);
    const int row = Current_Row();
    const bool is_selected = row >= 0 && row == Selected_Row();

    // With no current row the view has none to move on to, and so to edit, while the rows vanish.
    d_variable_list->selectionModel()->clear();
    while (d_variable_list->topLevelItemCount() > BUILT_IN_COUNT) {
        delete d_variable_list->takeTopLevelItem(BUILT_IN_COUNT);
    }
    std::for_each(d_variables.begin() + BUILT_IN_COUNT, d_variables.end(),
                  [this](TVariable& variable) { Add_Variable_Entry(&variable); });

    if (is_selected && row < Variable_Count()) {
        d_variable_list->setCurrentItem(d_variable_list->topLevelItem(row));
    }
    Variable_Selection_Changed();
}

void TVariableWidget::Add_Variable_Entry(TVariable* variable)
{
    // A description that is not offered stays in the record, while its row shows that nothing is selected.
    const int choice = std::max(0, d_components.indexOf(variable->description));

    variable->index = d_variable_list->AddSelectionList(variable->name, d_components, choice);
}

void TVariableWidget::Rename_Variable_Entry(int row, const QString& name)
{
    d_variables[static_cast<unsigned int>(row)].name = name;
    d_variable_list->topLevelItem(row)->setText(0, name);
}

void TVariableWidget::Remove_Variable_Entry(int row)
{
    d_variables.erase(d_variables.begin() + row);
    Update_Option_Editor();
}

int TVariableWidget::Current_Row() const
{
    return d_variable_list->indexOfTopLevelItem(d_variable_list->currentItem());
}

int TVariableWidget::Selected_Row() const
{
    const QList<QTreeWidgetItem*> selected = d_variable_list->selectedItems();

    return selected.size() == 1 ? d_variable_list->indexOfTopLevelItem(selected.first()) : -1;
}
