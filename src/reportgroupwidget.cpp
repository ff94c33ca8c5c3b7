#include "src/reportgroupwidget.h"

#include "core/assertion.h"
#include "core/describe.h"
#include "core/entrydelegate.h"
#include "core/teardown.h"
#include "core/xmltext.h"
#include "src/enablecontrol.h"
#include "src/iconbutton.h"
#include "src/memberlist.h"
#include "src/namedialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListWidget>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <set>

namespace {

/// Empty when the user thought better of it.
QString Ask_Group_Name(QWidget* parent)
{
    TNameDialog dialog(parent);

    dialog.Set_Title(QObject::tr("Add Report Group"));
    return dialog.exec() == QDialog::Accepted ? dialog.Name() : QString();
}

QLabel* Create_List_Label(const QString& text, QListWidget* list)
{
    auto* label = new QLabel(text, list->parentWidget());

    label->setBuddy(list);
    return label;
}

/// Rows that follow each other make one range: what a selection costs grows with its ranges.
QItemSelection Selection_Of(const std::set<int>& rows, const QAbstractItemModel* model)
{
    QItemSelection selection;

    for (const int row : rows) {
        const QModelIndex entry = model->index(row, 0);

        if (!selection.isEmpty() && selection.last().bottom() == row - 1) {
            selection.last() = QItemSelectionRange(selection.last().topLeft(), entry);
        } else {
            selection.append(QItemSelectionRange(entry));
        }
    }
    return selection;
}

} // namespace

// Construction

TReportGroupWidget::TReportGroupWidget(QWidget* parent) : QWidget(parent)
{
    Create_Group_List();
    Create_Component_List();
    Create_Layout();
    Describe_Controls();
    Report_Group_Selection_Changed();
    Connect_Signals();
}

TReportGroupWidget::~TReportGroupWidget()
{
    Disconnect_Children(this);
}

void TReportGroupWidget::Create_Group_List()
{
    d_group_list = new QListWidget(this);
    d_group_list->setObjectName("group_list");
    d_group_list->setAccessibleName(tr("Current Report Groups"));
    d_group_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    d_group_delegate = new TEntryDelegate(d_group_list);

    d_add_button = Create_Icon_Button("add_group", ":/gui/add.png", tr("Add report group"), this);
    d_remove_button = Create_Icon_Button("remove_group", ":/gui/remove.png", tr("Remove selected report groups"), this);
}

void TReportGroupWidget::Create_Component_List()
{
    d_component_list = new TMemberList(this);
    d_component_list->setObjectName("component_list");
    d_component_list->setAccessibleName(tr("Available Budget Components"));
}

void TReportGroupWidget::Create_Layout()
{
    auto* buttons = new QHBoxLayout;
    auto* page = new QGridLayout(this);

    buttons->addWidget(d_add_button);
    buttons->addWidget(d_remove_button);
    buttons->addStretch();

    page->addWidget(Create_List_Label(tr("Current Report Groups:"), d_group_list), 0, 0);
    page->addWidget(Create_List_Label(tr("Available Budget Components:"), d_component_list), 0, 1);
    page->addWidget(d_group_list, 1, 0);
    page->addWidget(d_component_list, 1, 1);
    page->addLayout(buttons, 2, 0);
    page->setColumnStretch(0, 1);
    page->setColumnStretch(1, 1);
}

void TReportGroupWidget::Describe_Controls()
{
    Describe(d_group_list, tr("The report groups of the budget"),
             tr("The report groups of the budget: each is a measurement, whose uncertainty is combined from its "
                "components. Select one to choose its components in the list beside it. F2 renames the selected group. "
                "The buttons below the list add a group and remove the selected ones."));
    d_add_button->setWhatsThis(
        tr("Asks for a name and adds a group of the components that are selected in the list beside it. A name in "
           "use is refused."));
    d_remove_button->setWhatsThis(tr("Removes the selected groups. Their components stay in the budget."));
    Describe(
        d_component_list, tr("Select the components of the group"),
        tr("What a group can combine: components, and single items of those that are reported as individual items. "
           "While exactly one group is selected, the selected entries are its members; a click or the space bar adds "
           "an entry or takes it out."));
}

void TReportGroupWidget::Connect_Signals()
{
    connect(d_add_button, &QToolButton::clicked, this, &TReportGroupWidget::Create_New_Group);
    connect(d_remove_button, &QToolButton::clicked, this, &TReportGroupWidget::Remove_Selected_Groups);
    connect(d_group_delegate, &QAbstractItemDelegate::commitData, this, &TReportGroupWidget::Rename_Current_Group);
    connect(d_group_list, &QListWidget::itemSelectionChanged, this,
            &TReportGroupWidget::Report_Group_Selection_Changed);
    connect(d_component_list, &QListWidget::itemSelectionChanged, this, &TReportGroupWidget::Uc_Item_Selection_Changed);
}

// Records

const std::vector<TGroup>& TReportGroupWidget::Groups() const
{
    return d_groups;
}

TGroup TReportGroupWidget::Group(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_groups.size());

    return d_groups[static_cast<unsigned int>(index)];
}

QStringList TReportGroupWidget::Group_Names() const
{
    QStringList names;

    for (const TGroup& group : d_groups) {
        names.append(group.name);
    }
    return names;
}

QStringList TReportGroupWidget::Group_List(const QString& name) const
{
    const int index = Group_Index(name);

    return index < 0 ? QStringList() : Group(index).items;
}

QStringList TReportGroupWidget::Group_Items(const QString& name) const
{
    return Group_List(name);
}

int TReportGroupWidget::Group_Index(const QString& name) const
{
    const auto found =
        std::find_if(d_groups.begin(), d_groups.end(), [&name](const TGroup& group) { return group.name == name; });

    return found == d_groups.end() ? -1 : static_cast<int>(found - d_groups.begin());
}

bool TReportGroupWidget::Add_Group(const TGroup& group)
{
    if (Group_Index(group.name) >= 0) {
        return false;
    }
    d_groups.push_back(group);
    return true;
}

void TReportGroupWidget::Remove_Group(const QString& name)
{
    const int index = Group_Index(name);

    if (index >= 0) {
        d_groups.erase(d_groups.begin() + index);
    }
}

bool TReportGroupWidget::Rename_Group(const QString& old_name, const QString& new_name)
{
    const int index = Group_Index(old_name);

    if (index < 0 || Xml_Is_Blank(new_name) || Group_Index(new_name) >= 0) {
        return false;
    }
    d_groups[static_cast<unsigned int>(index)].name = new_name;
    return true;
}

void TReportGroupWidget::Modify_Group(const QString& name, const QStringList& items)
{
    const int index = Group_Index(name);

    if (index >= 0) {
        d_groups[static_cast<unsigned int>(index)].items = items;
    }
}

// Filled by the program

void TReportGroupWidget::Set_Groups(const std::vector<TGroup>& groups)
{
    Clear_Groups();
    d_groups = groups;
    for (const TGroup& group : d_groups) {
        Add_Group_Entry(group.name);
    }
}

void TReportGroupWidget::Clear_Groups()
{
    const QSignalBlocker blocker(d_group_list);

    d_groups.clear();
    d_group_list->clear();
    Report_Group_Selection_Changed();
}

void TReportGroupWidget::Update_Reportable_Components(const QStringList& components)
{
    // Most changes of a component leave the names as they are.
    if (components != d_components) {
        Fill_Component_List(components);
    }
    Show_Members(d_current_group);
}

// The user's changes

void TReportGroupWidget::Create_New_Group()
{
    const QString name = Ask_Group_Name(this);

    if (name.isEmpty() || !Add_Group({name, Selected_Components()})) {
        return;
    }
    Add_Group_Entry(name);
    d_group_list->scrollToBottom();
    emit Report_Groups_Changed();
}

void TReportGroupWidget::Remove_Selected_Groups()
{
    const QList<QListWidgetItem*> entries = d_group_list->selectedItems();

    if (entries.isEmpty()) {
        return;
    }
    {
        // The selection is looked at once all are gone, not while it shrinks.
        const QSignalBlocker blocker(d_group_list);
        for (QListWidgetItem* entry : entries) {
            Remove_Group(entry->text());
            delete entry;
        }
    }
    Report_Group_Selection_Changed();
    emit Report_Groups_Changed();
}

void TReportGroupWidget::Rename_Current_Group(QWidget* /*editor*/)
{
    const QString old_name = d_group_delegate->Edited_Name();
    const QString new_name = d_group_delegate->Entered_Name();

    if (new_name == old_name) {
        return;
    }
    if (!Rename_Group(old_name, new_name)) {
        d_group_delegate->Refuse_Rename();
        return;
    }
    d_group_delegate->Accept_Rename();
    // A key may have led to another entry by now.
    if (d_current_group == old_name) {
        d_current_group = new_name;
    }
    emit Report_Groups_Changed();
}

void TReportGroupWidget::Uc_Item_Selection_Changed()
{
    const int selected_groups = d_group_list->selectedItems().size();

    if (selected_groups == 0) {
        const QSignalBlocker blocker(d_component_list);
        d_component_list->clearSelection();
    } else if (selected_groups == 1) {
        Modify_Group(d_current_group, Selected_Components());
        emit Report_Groups_Changed();
    }
}

void TReportGroupWidget::Report_Group_Selection_Changed()
{
    const QList<QListWidgetItem*> entries = d_group_list->selectedItems();

    d_current_group = entries.size() == 1 ? entries.first()->text() : QString();
    Enable_Control(d_remove_button, !entries.isEmpty(), d_group_list);
    Enable_Control(d_component_list, entries.size() == 1, d_group_list);
    if (entries.size() == 1) {
        Show_Members(d_current_group);
    }
}

// Entries

QListWidgetItem* TReportGroupWidget::Find_Component_Item(const QString& component) const
{
    // The list's own search reads a text with line breaks or wild cards in ways of its own.
    return d_component_list->item(d_component_row.value(component, -1));
}

void TReportGroupWidget::Fill_Component_List(const QStringList& components)
{
    const QSignalBlocker blocker(d_component_list);

    d_component_list->clear();
    d_component_list->addItems(components);
    d_components = components;
    d_component_row.clear();
    for (int row = components.size() - 1; row >= 0; --row) {
        d_component_row.insert(components.at(row), row);
    }
}

void TReportGroupWidget::Add_Group_Entry(const QString& name)
{
    auto* entry = new QListWidgetItem(name, d_group_list);

    entry->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled);
}

QStringList TReportGroupWidget::Selected_Components() const
{
    QModelIndexList rows = d_component_list->selectionModel()->selectedIndexes();
    QStringList components;

    std::sort(rows.begin(), rows.end());
    for (const QModelIndex& row : rows) {
        components.append(row.data().toString());
    }
    components.removeDuplicates();
    return components;
}

void TReportGroupWidget::Show_Members(const QString& name)
{
    const QSignalBlocker blocker(d_component_list);
    std::set<int> rows;

    for (const QString& component : Group_Items(name)) {
        const auto row = d_component_row.constFind(component);

        if (row != d_component_row.constEnd()) {
            rows.insert(*row);
        }
    }
    // At once, because a selection that grows entry by entry is gone through for each of them.
    d_component_list->selectionModel()->select(Selection_Of(rows, d_component_list->model()),
                                               QItemSelectionModel::ClearAndSelect);
}
