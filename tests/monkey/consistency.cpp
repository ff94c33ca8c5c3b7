#include "tests/monkey/consistency.h"

#include "core/number.h"
#include "tests/support/guiacts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>

namespace {

const QString DEFAULT_IDENTIFIER = TNorvexaData::Default_Identifier();
const QString NO_SELECTION = QStringLiteral("[no selection]");
const QString NO_GROUP = QStringLiteral("<no selection>");

const int IDENTIFIER_COLUMN = 1;
const int VALUE_COLUMN = 6;

template <typename TRecords>
auto Named(const TRecords& records, const QString& name) -> decltype(records.data())
{
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const auto& record) { return record.name == name; });

    return found == records.end() ? nullptr : &*found;
}

template <typename TRecords>
QStringList Names_Of(const TRecords& records)
{
    QStringList names;
    for (const auto& record : records) {
        names << record.name;
    }
    return names;
}

QStringList Sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

QString Escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString Nested(const QString& name, const QStringList& items)
{
    return QString("%1(%2)").arg(name, Sorted(items).join(", "));
}

QString Yes_No(bool value)
{
    return value ? "yes" : "no";
}

// As the page reads a date of a file: in the form that it writes, or as new identifiers carry it. Today for others.
QDate Read_Date(const QString& text)
{
    const QLocale english = QLocale::c();

    for (const QDate& date : {QDate::fromString(text, Qt::TextDate), english.toDate(text, "ddd MMM d yyyy"),
                              english.toDate(text, "MMM d yyyy")}) {
        if (date.isValid()) {
            return date;
        }
    }
    return QDate::currentDate();
}

QString Date_Text(const QDate& date)
{
    return QLocale::c().toString(date, "ddd MMM d yyyy");
}

const TNorvexaData::TReplacementItem* Replacement(const TNorvexaData::TComponentItem& item, const QString& identifier)
{
    const auto& replacements = item.replacement_items;
    const auto found = std::find_if(replacements.begin(), replacements.end(),
                                    [&](const auto& candidate) { return candidate.identifier == identifier; });

    return found == replacements.end() || identifier.isEmpty() ? nullptr : &*found;
}

QString Applied_Expression(const TNorvexaData::TComponentItem& item, const QString& identifier)
{
    const TNorvexaData::TReplacementItem* replacement = Replacement(item, identifier);

    return replacement == nullptr || replacement->use_default_expression ? item.expression : replacement->expression;
}

const QTreeWidgetItem* Sole_Selection(const QWidget* window)
{
    const QList<QTreeWidgetItem*> selected = Child<QTreeWidget>(window, "budget_tree")->selectedItems();

    return selected.size() == 1 ? selected.first() : nullptr;
}

} // namespace

TConsistency::TConsistency(const QWidget* window, const TBudget& held, bool lists_are_stale)
    : d_window(window), d_held(held), d_lists_are_stale(lists_are_stale)
{}

QStringList TConsistency::Differences()
{
    d_differences.clear();
    Check_Tree();
    Check_Component_Page();
    Check_Item_Page();
    Check_Inputs();
    Check_Variables();
    Check_Groups();
    Check_Offers();
    Check_Report();
    return d_differences;
}

// Budget page

void TConsistency::Check_Tree()
{
    const QTreeWidgetItem* root = Child<QTreeWidget>(d_window, "budget_tree")->topLevelItem(0);
    QStringList shown;
    QStringList held;

    for (int row = 0; row < root->childCount(); ++row) {
        QStringList items;
        for (int item = 0; item < root->child(row)->childCount(); ++item) {
            items << Escaped(root->child(row)->child(item)->text(0));
        }
        shown << Nested(Escaped(root->child(row)->text(0)), items);
    }
    for (const TComponent& component : d_held.components) {
        held << Nested(component.name, Names_Of(Named(d_held.components, component.name)->items));
    }
    Compare("tree", Sorted(shown), Sorted(held));
}

void TConsistency::Check_Component_Page()
{
    const auto* title = Child<QLabel>(d_window, "component_title");
    const QTreeWidgetItem* selected = Sole_Selection(d_window);
    const bool is_enabled = Child<QListWidget>(d_window, "identifier_list")->isEnabled();
    const bool is_record_selected = selected != nullptr && selected->parent() != nullptr;

    Compare("component page enabled", Yes_No(is_enabled), Yes_No(is_record_selected));
    const TComponent* component = Shown_Component();
    if (component == nullptr) {
        return;
    }
    Compare("component title", Escaped(title->text()), component->name);
    Check_Identifiers(*component);
    Check_Dates(Shown_Instance());
    const TInstance* instance = Shown_Instance();
    Compare_Number("component_length", instance == nullptr ? component->length : instance->length, 5);
    Compare_Number("component_expansion_coefficient",
                   (instance == nullptr ? component->expansion_coefficient : instance->expansion_coefficient) * 1000.0,
                   2);
    Check_Options(*component);
}

void TConsistency::Check_Identifiers(const TComponent& component)
{
    const auto* list = Child<QListWidget>(d_window, "identifier_list");

    Compare("identifiers", Sorted(Texts(list)), Sorted(Names_Of(component.instances)));
    Compare("identifiers can be removed", Yes_No(Child<QToolButton>(d_window, "remove_identifier")->isEnabled()),
            Yes_No(!list->selectedItems().isEmpty()));
}

void TConsistency::Check_Dates(const TInstance* instance)
{
    const auto* calibration = Child<QDateEdit>(d_window, "calibration_date");
    const auto* due = Child<QDateEdit>(d_window, "calibration_due_date");

    Compare("calibration date", calibration->text(),
            instance == nullptr ? QString() : Date_Text(Read_Date(instance->calibration_date)));
    Compare("due date", due->text(),
            instance == nullptr ? QString() : Date_Text(Read_Date(instance->calibration_due_date)));
}

void TConsistency::Check_Options(const TComponent& component)
{
    Compare_Box("mode_single", component.mode == TNorvexaData::UC_MODE_INDIVIDUAL);
    Compare_Box("mode_sum", component.mode == TNorvexaData::UC_MODE_SUM);
    Compare_Box("mode_export_equipment", component.export_equipment);
    Compare_Box("mode_limit_length", component.limit_uncertainty_length);
}

void TConsistency::Check_Item_Page()
{
    const QTreeWidgetItem* selected = Sole_Selection(d_window);
    const bool is_item_selected =
        selected != nullptr && selected->parent() != nullptr && selected->parent()->parent() != nullptr;

    Compare("item page enabled", Yes_No(Child<QComboBox>(d_window, "uc_type")->isEnabled()), Yes_No(is_item_selected));
    const TItem* item = Shown_Item();
    if (is_item_selected && item != nullptr) {
        Check_Item(*item);
        Check_Expression(*item);
    }
}

void TConsistency::Check_Item(const TItem& item)
{
    const TNorvexa texts;
    const bool is_dependent = item.expression_type >= TNorvexaData::LENGTH_DEPENDENT_LINEAR;
    const bool is_temperature = item.expression_type == TNorvexaData::CONSTANT_TEMPERATURE ||
                                item.expression_type == TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;

    Compare("uncertainty type", Child<QComboBox>(d_window, "uc_type")->currentText(), texts.UCType(item.uc_type));
    Compare("distribution", Child<QComboBox>(d_window, "distribution")->currentText(),
            texts.Distribution_Type(item.distribution));
    Compare_Number("sensitivity", item.sensitivity, 6);
    Compare_Box("length_dependent", is_dependent);
    Compare_Box("length_independent", !is_dependent);
    Compare_Box("temperature", is_temperature);
    Compare_Box("linear", !is_temperature);
    Compare("unit", Child<QLabel>(d_window, "unit_label")->text(),
            QString("Uc = f(expression) %1%2").arg(is_temperature ? "C" : "mm", is_dependent ? "/m" : ""));
}

void TConsistency::Check_Expression(const TItem& item)
{
    const QString identifier = Shown_Identifier();
    const TNorvexaData::TReplacementItem* replacement = Replacement(item, identifier);
    const bool uses_default = replacement != nullptr && replacement->use_default_expression;

    Compare("item title", Escaped(Child<QLabel>(d_window, "item_title")->text()),
            "Identifier: " + (identifier.isEmpty() ? DEFAULT_IDENTIFIER : identifier));
    Compare("expression", Escaped(Child<QLineEdit>(d_window, "expression")->text()),
            Applied_Expression(item, identifier));
    Compare_Box("use_default_expression", uses_default);
    Compare("expression can be edited", Yes_No(Child<QLineEdit>(d_window, "expression")->isEnabled()),
            Yes_No(!uses_default));
    Compare("default can be chosen", Yes_No(Child<QAbstractButton>(d_window, "use_default_expression")->isEnabled()),
            Yes_No(!identifier.isEmpty()));
}

// Variables page

void TConsistency::Check_Inputs()
{
    const TInputData& input = d_held.input_data;

    Compare_Number("machine_expansion_coefficient", input.machine_expansion_coefficient, 2);
    Compare_Number("machine_scale", input.machine_scale, 6);
    Compare_Number("temperature_minimum", input.temperature_minimum, 2);
    Compare_Number("temperature_maximum", input.temperature_maximum, 2);
    Compare_Number("temperature_gradient", input.temperature_gradient, 2);
    Compare_Number("increment", input.report_increment, 3);
    Compare_Number("end_position", input.report_end, 3);
}

void TConsistency::Check_Variables()
{
    const auto* list = Child<QTreeWidget>(d_window, "variable_list");
    QStringList names;

    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        names << Escaped(list->topLevelItem(row)->text(0));
    }
    Compare("variables", names, Names_Of(d_held.variables));
    if (names.size() == int(d_held.variables.size())) {
        for (int row = 0; row < names.size(); ++row) {
            Check_Variable(row, d_held.variables[std::size_t(row)]);
        }
    }
}

void TConsistency::Check_Variable(int row, const TVariable& variable)
{
    const QTreeWidgetItem* entry = Child<QTreeWidget>(d_window, "variable_list")->topLevelItem(row);
    const QString what = QString("description of variable %1").arg(row);
    const QVariant kind = entry->data(1, Qt::UserRole);

    if (kind.type() != QVariant::StringList) {
        Compare(what, Escaped(entry->text(1)), variable.description);
        return;
    }
    const QStringList available = Texts(Child<QListWidget>(d_window, "component_list"));
    Compare("choices of variable " + variable.name, Escaped(kind.toStringList().join(" | ")),
            (QStringList(NO_SELECTION) + available).join(" | "));
    Compare(what, Escaped(entry->text(1)),
            available.contains(variable.description) ? variable.description : NO_SELECTION);
}

// Groups and report pages

void TConsistency::Check_Groups()
{
    const auto* list = Child<QListWidget>(d_window, "group_list");
    const QList<QListWidgetItem*> selected = list->selectedItems();

    // Of namesakes the first record is renamed, whichever entry was.
    Compare("groups", Sorted(Texts(list)), Sorted(Names_Of(d_held.groups)));
    Compare("groups can be removed", Yes_No(Child<QToolButton>(d_window, "remove_group")->isEnabled()),
            Yes_No(!selected.isEmpty()));
    Compare("members can be chosen", Yes_No(Child<QListWidget>(d_window, "component_list")->isEnabled()),
            Yes_No(selected.size() == 1));
    if (selected.size() == 1) {
        Check_Members(Escaped(selected.first()->text()));
    }
}

void TConsistency::Check_Members(const QString& group)
{
    const auto* list = Child<QListWidget>(d_window, "component_list");
    const TGroup* held = Named(d_held.groups, group);
    const QStringList offered = Texts(list);
    QStringList members;

    for (const QString& member : held == nullptr ? QStringList() : held->items) {
        if (offered.contains(member)) {
            members << member;
        }
    }
    QStringList shown = Texts(list, true);
    shown.removeDuplicates();
    members.removeDuplicates();
    Compare("members of " + group, Sorted(shown), Sorted(members));
}

void TConsistency::Check_Offers()
{
    const auto* box = Child<QComboBox>(d_window, "report_group");
    const QStringList available = Texts(Child<QListWidget>(d_window, "component_list"));
    QStringList groups;

    for (int index = 0; index < box->count(); ++index) {
        groups << (index == 0 ? box->itemText(index) : Escaped(box->itemText(index)));
    }
    Compare("offered groups", groups, QStringList(NO_GROUP) + Names_Of(d_held.groups));
    if (d_lists_are_stale) {
        Compare("number of available components", QString::number(available.size()),
                QString::number(Reportable().size()));
    } else {
        Compare("available components", available, Reportable());
    }
}

// A report is brought up to date when its page comes to the front. What its variables stand for comes before the rows
// of its group; a member that is gone ends it.
void TConsistency::Check_Report()
{
    const auto* box = Child<QComboBox>(d_window, "report_group");
    if (!box->isVisible() || box->currentIndex() <= 0) {
        return;
    }
    const QStringList shown = Shown_Report();
    const QStringList held = Held_Report(Escaped(box->currentText()));

    Compare("report", shown.mid(std::max(0, shown.size() - held.size())), held);
}

// Comparing

void TConsistency::Compare(const QString& what, const QString& shown, const QString& held)
{
    if (shown != held) {
        d_differences << QString("%1: shown <%2>, held <%3>").arg(what, shown, held);
    }
}

void TConsistency::Compare(const QString& what, const QStringList& shown, const QStringList& held)
{
    Compare(what, shown.join(" | "), held.join(" | "));
}

// The field may still show more digits than the file keeps, or a text that counts as 0.
void TConsistency::Compare_Number(const char* field, double held, int decimals)
{
    const QString text = Child<QLineEdit>(d_window, field)->text();
    const double shown = Finite_Number(text);

    if (std::fabs(shown - held) > std::pow(10.0, -decimals) + std::fabs(held) * 1e-12) {
        d_differences << QString("%1: shown <%2>, held <%3>").arg(field, text.left(50), QString::number(held, 'g', 17));
    }
}

void TConsistency::Compare_Box(const char* box, bool held)
{
    Compare(box, Yes_No(Child<QAbstractButton>(d_window, box)->isChecked()), Yes_No(held));
}

// What is shown

// Null where the page shows none. A component that the budget does not have is told by the tree.
const TConsistency::TComponent* TConsistency::Shown_Component() const
{
    const QTreeWidgetItem* entry = Sole_Selection(d_window);

    while (entry != nullptr && entry->parent() != nullptr && entry->parent()->parent() != nullptr) {
        entry = entry->parent();
    }
    return entry == nullptr || entry->parent() == nullptr ? nullptr : Named(d_held.components, Escaped(entry->text(0)));
}

const TConsistency::TItem* TConsistency::Shown_Item() const
{
    const TComponent* component = Shown_Component();

    return component == nullptr ? nullptr : Named(component->items, Escaped(Sole_Selection(d_window)->text(0)));
}

QString TConsistency::Shown_Identifier() const
{
    const QStringList selected = Texts(Child<QListWidget>(d_window, "identifier_list"), true);
    const bool is_one = selected.size() == 1 && selected.first() != DEFAULT_IDENTIFIER;

    return is_one ? selected.first() : QString();
}

const TConsistency::TInstance* TConsistency::Shown_Instance() const
{
    const TComponent* component = Shown_Component();

    return component == nullptr ? nullptr : Named(component->instances, Shown_Identifier());
}

QStringList TConsistency::Reportable() const
{
    QStringList names;
    for (const TComponent& component : d_held.components) {
        if (component.mode == TNorvexaData::UC_MODE_SUM) {
            names << component.name;
            continue;
        }
        for (const TItem& item : component.items) {
            names << component.name + " - " + item.name;
        }
    }
    return names;
}

QStringList TConsistency::Shown_Report() const
{
    const auto* table = Child<QTreeWidget>(d_window, "report_table");
    QStringList rows;

    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* entry = table->topLevelItem(row);
        QStringList texts;
        for (int column = 0; column < VALUE_COLUMN; ++column) {
            texts << Escaped(entry->text(column));
        }
        rows << texts.join(", ");
    }
    return rows;
}

QStringList TConsistency::Held_Report(const QString& group) const
{
    const TGroup* held = Named(d_held.groups, group);
    QStringList rows;

    for (const QString& member : held == nullptr ? QStringList() : held->items) {
        QString component;
        QString item;
        if (!Find_Member(member, &component, &item)) {
            break;
        }
        rows << Held_Rows(component, item);
    }
    return rows;
}

// The first of that name; `item` is empty for a whole component.
bool TConsistency::Find_Member(const QString& member, QString* component, QString* item) const
{
    for (const TComponent& record : d_held.components) {
        *component = record.name;
        *item = QString();
        if (record.mode == TNorvexaData::UC_MODE_SUM) {
            if (record.name == member) {
                return true;
            }
            continue;
        }
        for (const TItem& candidate : record.items) {
            *item = candidate.name;
            if (record.name + " - " + candidate.name == member) {
                return true;
            }
        }
    }
    return false;
}

QStringList TConsistency::Held_Rows(const QString& component, const QString& item) const
{
    const TNorvexa texts;
    const QString identifier = Reported_Identifier(component);
    const std::vector<TItem>& items = Named(d_held.components, component)->items;
    QStringList rows;

    for (const TItem& record : items) {
        if (item.isEmpty() || record.name == item) {
            const bool is_dependent = record.expression_type >= TNorvexaData::LENGTH_DEPENDENT_LINEAR;
            rows << QStringList({record.name, QString(), is_dependent ? "Length Dependent" : "Constant",
                                 Applied_Expression(*Named(items, record.name), identifier),
                                 Fixed_Text(record.sensitivity, 6), texts.Distribution_Type(record.distribution)})
                        .join(", ");
        }
    }
    if (!rows.isEmpty()) {
        rows.prepend(QStringList({component, identifier, QString(), QString(), QString(), QString()}).join(", "));
    }
    return rows;
}

// As the component's first row shows it.
QString TConsistency::Reported_Identifier(const QString& component) const
{
    const auto* table = Child<QTreeWidget>(d_window, "report_table");

    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        const QString identifier = Escaped(table->topLevelItem(row)->text(IDENTIFIER_COLUMN));
        if (Escaped(table->topLevelItem(row)->text(0)) == component && !identifier.isEmpty()) {
            return identifier;
        }
    }
    return QString();
}

// Escaped, as the file has them.
QStringList TConsistency::Texts(const QListWidget* list, bool selected_only) const
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        if (!selected_only || list->item(row)->isSelected()) {
            texts << Escaped(list->item(row)->text());
        }
    }
    return texts;
}
