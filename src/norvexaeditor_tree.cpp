#include "src/norvexaeditor.h"

#include "core/assertion.h"
#include "core/entrydelegate.h"
#include "core/number.h"
#include "core/xmltext.h"
#include "src/budgettree.h"
#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "src/enablecontrol.h"
#include "src/namedialog.h"

#include <QAction>
#include <QDate>
#include <QHash>
#include <QLocale>
#include <QSignalBlocker>
#include <QToolButton>
#include <QTreeWidget>

namespace {

// The model holds expansion coefficients at one thousandth of the value shown.
const double COEFFICIENT_SCALE = 1000.0;
const int COEFFICIENT_DECIMALS = 2;
const int LENGTH_DECIMALS = 5;
const int SENSITIVITY_DECIMALS = 6;

QTreeWidgetItem* Create_Tree_Item(const QString& name, Qt::ItemFlags further_flags)
{
    auto* item = new QTreeWidgetItem;
    item->setText(0, name);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | further_flags);
    return item;
}

void Add_Item_Entries(QTreeWidgetItem* component_entry, const QStringList& items)
{
    QList<QTreeWidgetItem*> entries;
    entries.reserve(items.size());
    for (const QString& item : items) {
        entries.append(Create_Tree_Item(item, Qt::ItemIsEditable | Qt::ItemNeverHasChildren));
    }
    component_entry->addChildren(entries);
}

void Refill_Component_Entry(QTreeWidgetItem* entry, const QStringList& items)
{
    qDeleteAll(entry->takeChildren());
    Add_Item_Entries(entry, items);
    entry->setExpanded(true);
}

QStringList Item_Names(const TNorvexaData& budget, int component)
{
    const int count = budget.Component_Item_Count(component);
    QStringList names;
    names.reserve(count);
    for (int index = 0; index < count; ++index) {
        names.append(budget.Component_Item_Name(component, index));
    }
    return names;
}

// A file may carry a component name twice, and the entries of both show the items of the first.
QList<QTreeWidgetItem*> Create_Component_Entries(const TNorvexaData& budget)
{
    QHash<QString, int> first_of_name;
    for (int index = budget.Component_Count() - 1; index >= 0; --index) {
        first_of_name.insert(budget.Component_Name(index), index);
    }

    QList<QTreeWidgetItem*> entries;
    entries.reserve(budget.Component_Count());
    for (int index = 0; index < budget.Component_Count(); ++index) {
        const QString name = budget.Component_Name(index);
        QTreeWidgetItem* entry = Create_Tree_Item(name, Qt::ItemIsEditable);
        Add_Item_Entries(entry, Item_Names(budget, first_of_name.value(name)));
        entries.append(entry);
    }
    return entries;
}

// A rename in one of two components of the same name is a change in the other.
void Refill_Namesakes(const QTreeWidgetItem* root, int edited_row, const QString& component, const QStringList& items)
{
    for (int row = 0; row < root->childCount(); ++row) {
        if (row != edited_row && root->child(row)->text(0) == component) {
            Refill_Component_Entry(root->child(row), items);
        }
    }
}

int Depth(QModelIndex index)
{
    int depth = -1;
    while (index.isValid()) {
        ++depth;
        index = index.parent();
    }
    return depth;
}

int Depth(const QTreeWidgetItem* item)
{
    int depth = -1;
    while (item != nullptr) {
        ++depth;
        item = item->parent();
    }
    return depth;
}

QTreeWidgetItem* Find_Child(const QTreeWidgetItem* parent, const QString& name)
{
    for (int index = 0; index < parent->childCount(); ++index) {
        if (parent->child(index)->text(0) == name) {
            return parent->child(index);
        }
    }
    return nullptr;
}

// What a field says for a record: the record's own number as long as the field shows that number's text, so that
// editing one field never rounds another.
double Edited_Number(const QString& text, double recorded, double scale, int decimals)
{
    return text == Fixed_Text(recorded * scale, decimals) ? recorded : Finite_Number(text) / scale;
}

// New identifiers carry their dates in Qt's text form; the page reads "MMM d yyyy" with English names.
QString Page_Date(const QString& text)
{
    const QLocale english = QLocale::c();
    QDate date = QDate::fromString(text, Qt::TextDate);

    // Qt's text form is also read with the names of the system's language.
    if (!date.isValid() || !text.split(' ').contains(english.toString(date, "MMM"))) {
        date = english.toDate(text, "ddd MMM d yyyy");
    }
    return date.isValid() ? english.toString(date, "MMM d yyyy") : text;
}

} // namespace

// Tree

void TNorvexaEditor::Update_BudgetTree()
{
    d_budget_tree->clear();

    QTreeWidgetItem* root = Create_Tree_Item("Norvexa Data", Qt::NoItemFlags);
    root->addChildren(Create_Component_Entries(d_norvexa));
    d_budget_tree->Add_Expanded(root);
}

void TNorvexaEditor::Select_BudgetTree_Item(const QString& component, const QString& item)
{
    d_tree_depth = -1;
    if (d_budget_tree->topLevelItemCount() != 1) {
        return;
    }
    QTreeWidgetItem* root = d_budget_tree->topLevelItem(0);
    QTreeWidgetItem* component_entry = component.isEmpty() ? nullptr : Find_Child(root, component);
    QTreeWidgetItem* item_entry =
        component_entry == nullptr || item.isEmpty() ? nullptr : Find_Child(component_entry, item);
    QTreeWidgetItem* entry = item_entry != nullptr ? item_entry : component_entry != nullptr ? component_entry : root;

    // Whatever keys are held: with Ctrl or Shift the view would extend the selection.
    d_budget_tree->setCurrentItem(entry, 0, QItemSelectionModel::ClearAndSelect);
    d_budget_tree->scrollToItem(entry);
    d_tree_depth = Depth(entry);
}

void TNorvexaEditor::BudgetTree_Selection_Changed()
{
    const QList<QTreeWidgetItem*> selected = d_budget_tree->selectedItems();

    Enable_Add(selected.size() == 1);
    Enable_Remove(!selected.isEmpty());
    d_component_widget->setEnabled(false);
    d_component_item_widget->setEnabled(false);
    Update_Expression_Hint();
    if (selected.size() != 1) {
        return;
    }

    const QTreeWidgetItem* entry = selected.first();
    d_tree_depth = Depth(entry);
    switch (d_tree_depth) {
    case 1:
        Show_Component(entry->text(0));
        break;
    case 2:
        NORVEXA_ASSERT_TEXT(Has_Known_Expression_Type(entry->parent()->text(0), entry->text(0)), "false");
        Show_Component_Item(entry->parent()->text(0), entry->text(0));
        break;
    default:
        Enable_Remove(false);
        break;
    }
}

void TNorvexaEditor::BudgetTree_Add_Item()
{
    Commit_Focused_Editor();
    if (d_budget_tree->selectedItems().size() != 1) {
        return;
    }
    TNameDialog dialog(this);
    dialog.Set_Title(tr("New Budget Item"));
    if (dialog.exec() == QDialog::Accepted && !Xml_Is_Blank(dialog.Name())) {
        Add_Tree_Entry(dialog.Name());
    }
}

void TNorvexaEditor::Add_Tree_Entry(const QString& name)
{
    const bool is_component = d_tree_depth == 0;
    const bool added = is_component ? d_norvexa.Add_Component(name) : d_norvexa.Add_Component_Item(d_component, name);
    if (!added) {
        return;
    }
    Update_BudgetTree();
    Update_Reportable_Components();
    Select_BudgetTree_Item(is_component ? name : d_component, is_component ? QString() : name);
    Set_Modified();
    Refresh_Shown_Report();
}

void TNorvexaEditor::BudgetTree_Remove_Item()
{
    Commit_Focused_Editor();
    if (!Ask(tr("Delete Components"), tr("Are you sure you want to delete the selected components?"))) {
        return;
    }
    d_modified = true;
    Clear_Selected_Names();
    Remove_Selected_Entries();
    Update_BudgetTree();
    Select_BudgetTree_Item(QString(), QString());
    Update_Reportable_Components();
    Enable_Saving();
    Refresh_Shown_Report();
}

// The entries are told apart before the first record goes, because a component takes its items with it. The root is no
// record and stays.
void TNorvexaEditor::Remove_Selected_Entries()
{
    QList<const QTreeWidgetItem*> components;
    QHash<const QTreeWidgetItem*, QStringList> items; // by the entry of their component
    for (const QTreeWidgetItem* entry : d_budget_tree->selectedItems()) {
        const int depth = Depth(entry);
        if (depth == 1) {
            components.append(entry);
        } else if (depth == 2) {
            items[entry->parent()].append(entry->text(0));
        }
    }
    QStringList component_names;
    for (const QTreeWidgetItem* component : components) {
        items.remove(component);
        component_names.append(component->text(0));
    }
    for (auto part = items.cbegin(); part != items.cend(); ++part) {
        d_norvexa.Remove_Component_Items(part.key()->text(0), part.value());
    }
    d_norvexa.Remove_Components(component_names);
}

// Renames set neither the modified flag nor the Save actions, and leave the component lists of the other pages as they
// are, on purpose.
void TNorvexaEditor::BudgetTree_Rename_Item(QWidget* editor)
{
    Q_UNUSED(editor)

    const QModelIndex entry = d_budget_tree_delegate->Edited_Index();
    const QString old_name = d_budget_tree_delegate->Edited_Name();
    const QString new_name = d_budget_tree_delegate->Entered_Name();
    const int depth = Depth(entry);
    const QModelIndex component_entry = depth == 2 ? entry.parent() : entry;
    const QString component = depth == 2 ? component_entry.data().toString() : old_name;

    const bool renamed = !Xml_Is_Blank(new_name) && ((depth == 1 && Rename_Component_Entry(component, new_name)) ||
                                                     (depth == 2 && Rename_Item_Entry(component, old_name, new_name)));
    if (!renamed) {
        d_budget_tree_delegate->Refuse_Rename();
        return;
    }
    d_budget_tree_delegate->Accept_Rename();
    Refill_Namesakes(d_budget_tree->topLevelItem(0), component_entry.row(), component,
                     d_norvexa.Enum_Component_Items(component));
    // A variable may stand for what has another name now.
    Update_Expression_Hint();
}

bool TNorvexaEditor::Rename_Component_Entry(const QString& old_name, const QString& new_name)
{
    if (!d_norvexa.Rename_Component(old_name, new_name)) {
        return false;
    }
    if (d_component == old_name) {
        d_component = new_name;
        d_component_widget->Set_Title(new_name);
    }
    return true;
}

bool TNorvexaEditor::Rename_Item_Entry(const QString& component, const QString& old_name, const QString& new_name)
{
    if (!d_norvexa.Rename_Component_Item(component, old_name, new_name)) {
        return false;
    }
    if (d_component == component && d_component_item == old_name) {
        d_component_item = new_name;
    }
    return true;
}

// To be done before other records take the place of those on show: a field that loses the focus on the way commits what
// it shows, and no record of the same name may take that.
void TNorvexaEditor::Clear_Selected_Names()
{
    d_component.clear();
    d_component_item.clear();
    d_identifier = d_default_identifier;
}

void TNorvexaEditor::Enable_Add(bool enabled)
{
    d_action_add_item->setEnabled(enabled);
    Enable_Control(d_add_button, enabled, d_budget_tree);
}

void TNorvexaEditor::Enable_Remove(bool enabled)
{
    d_action_remove_item->setEnabled(enabled);
    Enable_Control(d_remove_button, enabled, d_budget_tree);
}

// Component page

void TNorvexaEditor::Show_Component(const QString& component)
{
    d_component = component;
    d_component_item.clear();

    const int index = d_norvexa.Component_Index(component);
    d_component_position = index;
    if (index < 0) {
        return;
    }
    const TNorvexaData::TComponent record = d_norvexa.Component(index);

    d_component_widget->Set_Title(component);
    d_component_widget->Set_Identifiers(d_norvexa.Enum_Component_Identifiers(component));
    Component_Identifier_Selected(QString());
    if (record.mode == TNorvexaData::UC_MODE_INDIVIDUAL) {
        d_component_widget->Set_Mode_Single();
    } else {
        d_component_widget->Set_Mode_Sum();
    }
    d_component_widget->Set_Mode_Export_Equipment(record.export_equipment);
    d_component_widget->Set_Mode_Limit_Uncertainty_Length(record.limit_uncertainty_length);
    d_component_widget->setEnabled(true);
}

// A component keeps its place while it is selected. The name says whether this is still so.
int TNorvexaEditor::Current_Component() const
{
    const bool has_kept_its_place = d_component_position >= 0 && d_component_position < d_norvexa.Component_Count() &&
                                    d_norvexa.Component_Name(d_component_position) == d_component;

    return has_kept_its_place ? d_component_position : d_norvexa.Component_Index(d_component);
}

void TNorvexaEditor::Component_Data_Changed()
{
    const int index = Current_Component();
    if (index < 0) {
        return;
    }
    TNorvexaData::TComponent record = d_norvexa.Component(index);
    record.mode = d_component_widget->Mode_Single() ? TNorvexaData::UC_MODE_INDIVIDUAL : TNorvexaData::UC_MODE_SUM;
    record.export_equipment = d_component_widget->Mode_Export_Equipment();
    record.limit_uncertainty_length = d_component_widget->Mode_Limit_Uncertainty_Length();
    d_norvexa.Update_Component(record);

    // Without an identifier of that name this sets length and coefficient of the component itself.
    d_norvexa.Update_Component_Identifier(index, Edited_Instance(index));

    Update_Reportable_Components();
    Update_Expression_Hint();
    Set_Modified();
}

TNorvexaData::TComponentInstance TNorvexaEditor::Edited_Instance(int component) const
{
    TNorvexaData::TComponentInstance instance = Current_Instance(component);

    instance.length = Edited_Number(d_component_widget->Length_Text(), instance.length, 1.0, LENGTH_DECIMALS);
    instance.expansion_coefficient =
        Edited_Number(d_component_widget->Expansion_Coefficient_Text(), instance.expansion_coefficient,
                      COEFFICIENT_SCALE, COEFFICIENT_DECIMALS);
    if (d_component_widget->Calibration_Date_Edited()) {
        instance.calibration_date = d_component_widget->Calibration_Date();
    }
    if (d_component_widget->Calibration_Due_Date_Edited()) {
        instance.calibration_due_date = d_component_widget->Calibration_Due_Date();
    }
    return instance;
}

TNorvexaData::TComponentInstance TNorvexaEditor::Current_Instance(int component) const
{
    if (Is_Identifier(component, d_identifier)) {
        return d_norvexa.Component_Instance(component, d_norvexa.Component_Instance_Index(component, d_identifier));
    }
    const TNorvexaData::TComponent record = d_norvexa.Component(component);
    TNorvexaData::TComponentInstance instance;
    instance.length = record.length;
    instance.expansion_coefficient = record.expansion_coefficient;
    return instance;
}

// Identifiers

// "[Default]", an empty name and a name that the component does not have all mean the component itself.
bool TNorvexaEditor::Is_Identifier(int component, const QString& identifier) const
{
    return !identifier.isEmpty() && identifier != d_default_identifier &&
           d_norvexa.Component_Instance_Index(component, identifier) >= 0;
}

void TNorvexaEditor::Component_Identifier_Selected(const QString& identifier)
{
    const int component = Current_Component();
    if (component < 0) {
        d_component_item_widget->Set_Option_Use_Default(false);
        d_component_item_widget->Enable_Option_Use_Default(false);
        d_component_widget->Clear_Dates();
        return;
    }
    const bool is_known = Is_Identifier(component, identifier);
    d_identifier = is_known ? identifier : d_default_identifier;

    const TNorvexaData::TComponentInstance instance = Current_Instance(component);
    if (is_known) {
        d_component_widget->Set_Dates(Page_Date(instance.calibration_date), Page_Date(instance.calibration_due_date));
    } else {
        d_component_widget->Clear_Dates();
    }
    d_component_widget->Set_Length(instance.length);
    d_component_widget->Set_Expansion_Coefficient(instance.expansion_coefficient * COEFFICIENT_SCALE);
    d_component_item_widget->Enable_Option_Use_Default(is_known);
    d_component_item_widget->Set_Idenfitier_Name(d_identifier);
    Show_Item_Expression();
}

void TNorvexaEditor::Component_Add_Identifier(const QString& name)
{
    d_norvexa.Component_Add_Identifier(d_component, name);
    Set_Modified();
}

void TNorvexaEditor::Component_Rename_Identifier(const QString& old_name, const QString& new_name)
{
    d_norvexa.Rename_Component_Identifier(d_component, old_name, new_name);
    if (d_identifier == old_name) {
        d_identifier = new_name;
    }
    Set_Modified();
}

void TNorvexaEditor::Component_Remove_Identifiers(const QStringList& names)
{
    d_norvexa.Component_Remove_Identifier(d_component, names);
    // The fields may still show an identifier that is gone; its values must not become the component's.
    Component_Identifier_Selected(d_component_widget->Current_Identifier());
    Set_Modified();
}

// Item page

bool TNorvexaEditor::Has_Known_Expression_Type(const QString& component, const QString& item) const
{
    const int component_index = d_norvexa.Component_Index(component);
    const int index = component_index < 0 ? -1 : d_norvexa.Component_Item_Index(component_index, item);
    if (index < 0) {
        return true;
    }
    const int type = d_norvexa.Component_Item(component_index, index).expression_type;
    return type >= TNorvexaData::CONSTANT_LINEAR && type <= TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
}

void TNorvexaEditor::Show_Component_Item(const QString& component, const QString& item)
{
    if (component != d_component) {
        Show_Component(component);
    }
    d_component_item = item;

    const int component_index = d_norvexa.Component_Index(component);
    const int index = component_index < 0 ? -1 : d_norvexa.Component_Item_Index(component_index, item);
    if (index < 0) {
        return;
    }
    const TNorvexaData::TComponentItem record = d_norvexa.Component_Item(component_index, index);

    // Expression types and radio options have the same four values.
    d_component_item_widget->Set_Radio_Options(
        static_cast<TComponentItemWidget::TRadioOptions>(static_cast<int>(record.expression_type)));
    d_component_item_widget->Set_Distribution_Type(d_norvexa.Distribution_Type(record.distribution));
    d_component_item_widget->Set_UCType(d_norvexa.UCType(record.uc_type));
    d_component_item_widget->Set_Sensitivity(record.sensitivity);
    Component_Identifier_Selected(d_identifier);
    d_component_widget->setEnabled(true);
    d_component_item_widget->setEnabled(true);
    Update_Expression_Hint();
}

void TNorvexaEditor::Show_Item_Expression()
{
    QString default_expression;
    if (!d_norvexa.Component_Item_Default_Expression(d_component, d_component_item, &default_expression)) {
        return;
    }
    bool use_default = false;
    QString replacement = default_expression;
    d_norvexa.Component_Item_Expression(d_component, d_component_item, d_identifier, &use_default, &replacement);

    d_component_item_widget->Set_Expression(use_default ? default_expression : replacement);
    d_component_item_widget->Set_Option_Use_Default(use_default);
    Update_Expression_Hint();
}

void TNorvexaEditor::Component_Item_Data_Changed()
{
    const int component = Current_Component();
    const int index = component < 0 ? -1 : d_norvexa.Component_Item_Index(component, d_component_item);
    if (index < 0) {
        return;
    }
    TNorvexaData::TComponentItem record = d_norvexa.Component_Item(component, index);
    record.uc_type = d_norvexa.UCType(d_component_item_widget->UCType());
    record.distribution = d_norvexa.Distribution_Type(d_component_item_widget->Distribution_Type());
    record.sensitivity =
        Edited_Number(d_component_item_widget->Sensitivity_Text(), record.sensitivity, 1.0, SENSITIVITY_DECIMALS);
    record.expression_type =
        static_cast<TNorvexaData::TExpressionType>(static_cast<int>(d_component_item_widget->Radio_Options()));
    d_norvexa.Update_Component_Item(component, record);

    Update_Item_Expression();
    Set_Modified();
}

// While the default expression is in use the editor shows it and not the replacement's own text, which is kept and
// shown again when the box is cleared.
void TNorvexaEditor::Update_Item_Expression()
{
    bool used_default = false;
    QString expression;
    d_norvexa.Component_Item_Expression(d_component, d_component_item, d_identifier, &used_default, &expression);

    const bool use_default = d_component_item_widget->Use_Default_Expression();
    if (!used_default) {
        expression = d_component_item_widget->Expression();
    }
    d_norvexa.Update_Component_Item(d_component, d_component_item, d_identifier, expression, use_default);
    if (use_default != used_default) {
        Show_Item_Expression();
    }
}
