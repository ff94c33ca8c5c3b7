#include "tests/support/consistency.h"

#include "tests/support/guiacts.h"
#include "tests/support/heldrecords.h"
#include "tests/support/numberfields.h"
#include "tests/support/shownrecord.h"

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

namespace {

const QString DEFAULT_IDENTIFIER = TNorvexaData::Default_Identifier();
const QString NO_SELECTION = QStringLiteral("[no selection]");
const QString NO_GROUP = QStringLiteral("<no selection>");

QStringList Sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

QString Nested(const QString& name, const QStringList& items)
{
    return QString("%1(%2)").arg(name, Sorted(items).join(", "));
}

// As the page reads a date of a file: in the form that it writes, or as new identifiers carry it, both with English
// names. Today for others.
QDate Read_Date(const QString& text)
{
    const QLocale english = QLocale::c();
    const QDate date = QDate::fromString(text, Qt::TextDate);
    const bool is_english = text.split(' ').contains(english.toString(date, "MMM"));

    for (const QDate& read :
         {is_english ? date : QDate(), english.toDate(text, "ddd MMM d yyyy"), english.toDate(text, "MMM d yyyy")}) {
        if (read.isValid()) {
            return read;
        }
    }
    return QDate::currentDate();
}

QString Date_Text(const QDate& date)
{
    return QLocale::c().toString(date, "ddd MMM d yyyy");
}

} // namespace

TConsistency::TConsistency(const QWidget* window, const TBudget& held, bool lists_are_stale)
    : d_window(window), d_held(held), d_shown(Shown_Record(window)), d_lists_are_stale(lists_are_stale)
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
    const TComponent* component = Named(d_held.components, d_shown.component);
    if (component == nullptr) {
        return; // The tree tells it.
    }
    Compare("component title", Escaped(title->text()), component->name);
    Check_Identifiers(*component);
    Check_Dates(Named(component->instances, d_shown.identifier));
    Compare_Number("component_length");
    Compare_Number("component_expansion_coefficient");
    Check_Options(*component);
}

void TConsistency::Check_Identifiers(const TComponent& component)
{
    const auto* list = Child<QListWidget>(d_window, "identifier_list");

    Compare("identifiers", Sorted(Escaped_Texts(list)), Sorted(Names_Of(component.instances)));
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
    const TItem* item = Held_Item(d_held, d_shown);
    if (item != nullptr) {
        Check_Item(*item);
        Check_Expression(*item);
    }
}

void TConsistency::Check_Item(const TItem& item)
{
    const TNorvexa texts;
    const bool is_dependent = Is_Length_Dependent(item);
    const bool is_temperature = Is_Temperature(item);

    Compare("uncertainty type", Child<QComboBox>(d_window, "uc_type")->currentText(), texts.UCType(item.uc_type));
    Compare("distribution", Child<QComboBox>(d_window, "distribution")->currentText(),
            texts.Distribution_Type(item.distribution));
    Compare_Number("sensitivity");
    Compare_Box("length_dependent", is_dependent);
    Compare_Box("length_independent", !is_dependent);
    Compare_Box("temperature", is_temperature);
    Compare_Box("linear", !is_temperature);
    Compare("unit", Child<QLabel>(d_window, "unit_label")->text(),
            QString("Uc = f(expression) %1%2").arg(is_temperature ? "C" : "mm", is_dependent ? "/m" : ""));
}

void TConsistency::Check_Expression(const TItem& item)
{
    const QString& identifier = d_shown.identifier;
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
    for (const QString& field : Number_Fields::Of_Inputs()) {
        Compare_Number(field);
    }
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
    const QStringList available = Escaped_Texts(Child<QListWidget>(d_window, "component_list"));
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
    Compare("groups", Sorted(Escaped_Texts(list)), Sorted(Names_Of(d_held.groups)));
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
    const QStringList offered = Escaped_Texts(list);
    QStringList members;

    for (const QString& member : held == nullptr ? QStringList() : held->items) {
        if (offered.contains(member)) {
            members << member;
        }
    }
    QStringList shown = Escaped_Texts(list, true);
    shown.removeDuplicates();
    members.removeDuplicates();
    Compare("members of " + group, Sorted(shown), Sorted(members));
}

void TConsistency::Check_Offers()
{
    const auto* box = Child<QComboBox>(d_window, "report_group");
    const QStringList available = Escaped_Texts(Child<QListWidget>(d_window, "component_list"));
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

void TConsistency::Compare_Number(const QString& field)
{
    const QString text = Child<QLineEdit>(d_window, field)->text();
    const double held = Held_Number(d_held, d_shown, field);

    if (!Number_Fields::Agree(field, text, held)) {
        d_differences << QString("%1: shown <%2>, held <%3>").arg(field, text.left(50), QString::number(held, 'g', 17));
    }
}

void TConsistency::Compare_Box(const char* box, bool held)
{
    Compare(box, Yes_No(Child<QAbstractButton>(d_window, box)->isChecked()), Yes_No(held));
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
