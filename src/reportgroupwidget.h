#pragma once

#include "share/norvexadata.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

#include <vector>

class QListWidget;
class QListWidgetItem;
class QToolButton;
class TEntryDelegate;

/// The page of the report groups: named sets of reportable components whose uncertainties a report combines.
///
/// The records are the model, and an entry finds its record by name. Names are told apart by case. Whatever the program
/// fills in is no edit: only the user's own changes emit Report_Groups_Changed.
class TReportGroupWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TReportGroupWidget(QWidget* parent = nullptr);
    ~TReportGroupWidget() override;

    const std::vector<TGroup>& Groups() const;
    TGroup Group(int index) const;
    QStringList Group_Names() const;

    /// The members of the group of that name; none if there is no such group.
    QStringList Group_List(const QString& name) const;

    /// Like Group_List.
    QStringList Group_Items(const QString& name) const;

    /// The entry of the available components with that text, nullptr if it is not offered.
    QListWidgetItem* Find_Component_Item(const QString& component) const;

    /// Replaces records and entries. Groups of the same name are all kept.
    void Set_Groups(const std::vector<TGroup>& groups);

    void Clear_Groups();

    /// Replaces the available components. The groups keep their members, offered or not.
    void Update_Reportable_Components(const QStringList& components);

    /// Appends a record. False, and nothing is added, when a group of that name exists.
    bool Add_Group(const TGroup& group);

    /// Takes away the first record of that name, if there is one.
    void Remove_Group(const QString& name);

    /// False, and nothing changes, when `new_name` is blank or in use or when there is no group `old_name`.
    bool Rename_Group(const QString& old_name, const QString& new_name);

    /// Replaces the members of the group of that name, if there is one.
    void Modify_Group(const QString& name, const QStringList& items);

public slots:
    void Create_New_Group();
    void Remove_Selected_Groups();
    void Rename_Current_Group(QWidget* editor);
    void Uc_Item_Selection_Changed();
    void Report_Group_Selection_Changed();

signals:
    /// The user added, removed or renamed a group or changed its members.
    void Report_Groups_Changed();

private:
    void Create_Group_List();
    void Create_Component_List();
    void Create_Layout();
    void Describe_Controls();
    void Connect_Signals();

    int Group_Index(const QString& name) const;
    void Add_Group_Entry(const QString& name);
    void Fill_Component_List(const QStringList& components);
    QStringList Selected_Components() const;
    void Show_Members(const QString& name);

    QListWidget* d_group_list = nullptr;
    TEntryDelegate* d_group_delegate = nullptr;
    QToolButton* d_add_button = nullptr;
    QToolButton* d_remove_button = nullptr;
    QListWidget* d_component_list = nullptr;

    QStringList d_components;            ///< the rows of the component list
    QHash<QString, int> d_component_row; ///< the first of that text

    std::vector<TGroup> d_groups;

    /// The name of the one selected group; empty while none or several are selected.
    QString d_current_group;
};
