#include "share/norvexadata.h"

#include "core/assertion.h"

#include <QDate>
#include <QHash>
#include <QLocale>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// Most names of a list differ in their length or at their end, and that is quickly seen.
bool Is_Same(const QString& left, const QString& right)
{
    const int last = left.size() - 1;

    return last == right.size() - 1 && (last < 0 || left.at(last) == right.at(last)) && left == right;
}

/// The first record whose `key` is `text`, null if there is none.
template <typename TRecords, typename TRecord>
auto Find_By(TRecords& records, QString TRecord::*key, const QString& text) -> decltype(records.data())
{
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const TRecord& record) { return Is_Same(record.*key, text); });

    return found == records.end() ? nullptr : &*found;
}

template <typename TRecords>
auto Find_Named(TRecords& records, const QString& name) -> decltype(records.data())
{
    return Find_By(records, &TRecords::value_type::name, name);
}

/// The position of the first record of that name, -1 if there is none.
template <typename TRecord>
int Index_Named(const std::vector<TRecord>& records, const QString& name)
{
    const TRecord* const found = Find_Named(records, name);

    return found ? static_cast<int>(found - records.data()) : -1;
}

/// The first record that belongs to that identifier, null if there is none or `identifier` means the component itself.
template <typename TRecords, typename TRecord>
auto Find_Identified(TRecords& records, QString TRecord::*key, const QString& identifier) -> decltype(records.data())
{
    const bool means_component = identifier.isEmpty() || identifier == TNorvexaData::Default_Identifier();

    return means_component ? nullptr : Find_By(records, key, identifier);
}

/// Erases the first record of each name, and as many as the name is listed for.
template <typename TRecord>
void Erase_Named(std::vector<TRecord>* records, const QStringList& names)
{
    QHash<QString, int> pending;
    for (const QString& name : names) {
        ++pending[name];
    }

    std::vector<TRecord> kept;
    kept.reserve(records->size());
    for (TRecord& record : *records) {
        const auto left = pending.find(record.name);
        if (left != pending.end() && *left > 0) {
            --*left;
        } else {
            kept.push_back(std::move(record));
        }
    }
    *records = std::move(kept);
}

TNorvexaData::TReplacementItem New_Replacement(const QString& identifier, const QString& expression)
{
    TNorvexaData::TReplacementItem replacement;
    replacement.identifier = identifier;
    replacement.expression = expression;
    return replacement;
}

TNorvexaData::TComponentItem New_Item(const QString& name,
                                      const std::vector<TNorvexaData::TComponentInstance>& instances)
{
    TNorvexaData::TComponentItem item;
    item.name = name;
    item.replacement_items.reserve(instances.size());
    for (const TNorvexaData::TComponentInstance& instance : instances) {
        item.replacement_items.push_back(New_Replacement(instance.name, item.expression));
    }
    return item;
}

TNorvexaData::TComponentInstance New_Instance(const QString& name, const TNorvexaData::TComponent& component)
{
    // Qt's text date, with English names also where Qt would take those of the system: a file goes from one to another.
    const QString today = QLocale::c().toString(QDate::currentDate(), "ddd MMM d yyyy");

    TNorvexaData::TComponentInstance instance;
    instance.name = name;
    instance.calibration_date = today;
    instance.calibration_due_date = today;
    instance.length = component.length;
    instance.expansion_coefficient = component.expansion_coefficient;
    return instance;
}

void Rename_Replacements(TNorvexaData::TComponentItem* item, const QString& old_name, const QString& new_name)
{
    for (TNorvexaData::TReplacementItem& replacement : item->replacement_items) {
        if (replacement.identifier == old_name) {
            replacement.identifier = new_name;
        }
    }
}

void Remove_Replacements(TNorvexaData::TComponentItem* item, const QSet<QString>& identifiers)
{
    const auto is_removed = [&](const TNorvexaData::TReplacementItem& replacement) {
        return identifiers.contains(replacement.identifier);
    };
    std::vector<TNorvexaData::TReplacementItem>& replacements = item->replacement_items;

    replacements.erase(std::remove_if(replacements.begin(), replacements.end(), is_removed), replacements.end());
}

} // namespace

QString TNorvexaData::Default_Identifier()
{
    return QStringLiteral("[Default]");
}

// Components

int TNorvexaData::Component_Count() const
{
    return static_cast<int>(d_components.size());
}

QString TNorvexaData::Component_Name(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components.size());

    return d_components[index].name;
}

TNorvexaData::TComponent TNorvexaData::Component(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components.size());

    return d_components[index];
}

int TNorvexaData::Component_Index(const QString& name) const
{
    return Index_Named(d_components, name);
}

bool TNorvexaData::Add_Component(const QString& name)
{
    if (Find_Component(name)) {
        return false;
    }

    TComponent component;
    component.name = name;
    d_components.push_back(std::move(component));
    return true;
}

bool TNorvexaData::Remove_Component(const QString& name)
{
    const int index = Component_Index(name);
    if (index < 0) {
        return false;
    }

    d_components.erase(d_components.begin() + index);
    return true;
}

void TNorvexaData::Remove_Components(const QStringList& names)
{
    Erase_Named(&d_components, names);
}

bool TNorvexaData::Rename_Component(const QString& old_name, const QString& new_name)
{
    TComponent* const component = Find_Named(d_components, old_name);
    if (!component || Find_Component(new_name)) {
        return false;
    }

    component->name = new_name;
    return true;
}

void TNorvexaData::Update_Component(const TComponent& component)
{
    if (TComponent* const found = Find_Named(d_components, component.name)) {
        *found = component;
    }
}

void TNorvexaData::Clear_Components()
{
    d_components.clear();
}

// Component items

int TNorvexaData::Component_Item_Count(int component_id) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());

    return static_cast<int>(d_components[component_id].items.size());
}

QString TNorvexaData::Component_Item_Name(int component_id, int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components[component_id].items.size());

    return d_components[component_id].items[index].name;
}

TNorvexaData::TComponentItem TNorvexaData::Component_Item(int component_id, int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components[component_id].items.size());

    return d_components[component_id].items[index];
}

int TNorvexaData::Component_Item_Index(int component_id, const QString& name) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());

    return Index_Named(d_components[component_id].items, name);
}

TNorvexaData::TComponentItem TNorvexaData::Component_Item(const QString& component, const QString& item) const
{
    const int component_id = Component_Index(component);

    return Component_Item(component_id, Component_Item_Index(component_id, item));
}

bool TNorvexaData::Add_Component_Item(const QString& component, const QString& item)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found || Find_Item(*found, item)) {
        return false;
    }

    found->items.push_back(New_Item(item, found->instances));
    return true;
}

bool TNorvexaData::Rename_Component_Item(const QString& component, const QString& old_name, const QString& new_name)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found || Find_Item(*found, new_name)) {
        return false;
    }

    TComponentItem* const item = Find_Named(found->items, old_name);
    if (!item) {
        return false;
    }

    item->name = new_name;
    return true;
}

bool TNorvexaData::Remove_Component_Items(const QString& component, const QStringList& items)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found) {
        return false;
    }

    Erase_Named(&found->items, items);
    return true;
}

void TNorvexaData::Update_Component_Item(int component_id, const TComponentItem& item)
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());

    if (TComponentItem* const found = Find_Named(d_components[component_id].items, item.name)) {
        *found = item;
    }
}

// Identifiers

int TNorvexaData::Component_Identifier_Count(int component_id) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());

    return static_cast<int>(d_components[component_id].instances.size());
}

QString TNorvexaData::Component_Identifier_Name(int component_id, int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components[component_id].instances.size());

    return d_components[component_id].instances[index].name;
}

TNorvexaData::TComponentInstance TNorvexaData::Component_Instance(int component_id, int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_components[component_id].instances.size());

    return d_components[component_id].instances[index];
}

int TNorvexaData::Component_Instance_Index(int component_id, const QString& name) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());

    return Index_Named(d_components[component_id].instances, name);
}

bool TNorvexaData::Component_Add_Identifier(const QString& component, const QString& identifier)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found || Find_Named(found->instances, identifier)) {
        return false;
    }

    found->instances.push_back(New_Instance(identifier, *found));
    for (TComponentItem& item : found->items) {
        item.replacement_items.push_back(New_Replacement(identifier, item.expression));
    }
    return true;
}

bool TNorvexaData::Rename_Component_Identifier(const QString& component, const QString& old_name,
                                               const QString& new_name)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found) {
        return false;
    }

    for (TComponentInstance& instance : found->instances) {
        if (instance.name == old_name) {
            instance.name = new_name;
        }
    }
    for (TComponentItem& item : found->items) {
        Rename_Replacements(&item, old_name, new_name);
    }
    return true;
}

bool TNorvexaData::Component_Remove_Identifier(const QString& component, const QStringList& identifiers)
{
    TComponent* const found = Find_Named(d_components, component);
    if (!found) {
        return false;
    }

    Erase_Named(&found->instances, identifiers);
    const QSet<QString> removed(identifiers.begin(), identifiers.end());
    for (TComponentItem& item : found->items) {
        Remove_Replacements(&item, removed);
    }
    return true;
}

void TNorvexaData::Update_Component_Identifier(int component_id, const TComponentInstance& instance)
{
    NORVEXA_ASSERT(static_cast<unsigned int>(component_id) < d_components.size());
    TComponent& component = d_components[component_id];

    if (TComponentInstance* const found =
            Find_Identified(component.instances, &TComponentInstance::name, instance.name)) {
        *found = instance;
        return;
    }
    // This is also how the component's own length and expansion coefficient are edited.
    component.length = instance.length;
    component.expansion_coefficient = instance.expansion_coefficient;
}

// Records in place

const TNorvexaData::TComponent* TNorvexaData::Find_Component(const QString& name) const
{
    return Find_Named(d_components, name);
}

const TNorvexaData::TComponentItem* TNorvexaData::Find_Item(const TComponent& component, const QString& name)
{
    return Find_Named(component.items, name);
}

const TNorvexaData::TComponentInstance* TNorvexaData::Find_Instance(const TComponent& component,
                                                                    const QString& identifier)
{
    return Find_Identified(component.instances, &TComponentInstance::name, identifier);
}

const TNorvexaData::TReplacementItem* TNorvexaData::Find_Replacement(const TComponentItem& item,
                                                                     const QString& identifier)
{
    return Find_Identified(item.replacement_items, &TReplacementItem::identifier, identifier);
}

TNorvexaData::TReplacementItem* TNorvexaData::Find_Replacement(TComponentItem& item, const QString& identifier)
{
    return Find_Identified(item.replacement_items, &TReplacementItem::identifier, identifier);
}
