#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// A variable that the expressions of a budget may use.
struct TVariable
{
    QString name;

    /// For a user variable the reportable component whose uncertainty it stands for; may be empty.
    QString description;

    /// Key of the variable's selection list on the variables page; -1 while it has none. Not stored in files.
    int index = -1;

    /// Working value. Not stored in files.
    double value = 0.0;
};

/// A report group: the reportable components that are reported together, in order.
struct TGroup
{
    QString name;
    QStringList items;
};

/// The machine, its environment and the report range, which always starts at 0. Unscaled, as entered.
struct TInputData
{
    double machine_expansion_coefficient = 11.5; ///< um/m/C
    double machine_scale = 0.001;                ///< Resolution of the scale in mm.
    double temperature_minimum = 20.0;           ///< C
    double temperature_maximum = 20.0;           ///< C
    double temperature_gradient = 0.0;           ///< C
    double report_increment = 50.0;              ///< mm
    double report_end = 1000.0;                  ///< mm
};

/// The uncertainty budget of one length-measuring machine: components, each with its items (the contributors) and its
/// identifiers (the physical instances of the component, which may replace the expressions of the items).
///
/// All names compare exactly. Every list keeps the order of insertion. Operations by name report failure through their
/// result, or -1 for an index, and then leave the budget as it was; an index out of range is a programming error and
/// aborts. Records are copied in and out: edits go back through the Update operations.
class TNorvexaData
{
public:
    // The values are fixed: 2 and above of TExpressionType are the length-dependent ones.
    enum TDistribution : int
    {
        DISTRIBUTION_NORMAL = 0,
        DISTRIBUTION_RECTANGULAR = 1,
        DISTRIBUTION_TRIANGULAR = 2,
        DISTRIBUTION_U = 3,
        DISTRIBUTION_STEP = 4
    };

    enum TUCType : int
    {
        UC_TYPE_A = 0,
        UC_TYPE_B = 1
    };

    /// How a component is reported: as one sum, or each of its items on its own.
    enum TUCMode : int
    {
        UC_MODE_SUM = 0,
        UC_MODE_INDIVIDUAL = 1
    };

    enum TExpressionType : int
    {
        CONSTANT_LINEAR = 0,
        CONSTANT_TEMPERATURE = 1,
        LENGTH_DEPENDENT_LINEAR = 2,
        LENGTH_DEPENDENT_TEMPERATURE = 3
    };

    /// The expression that one identifier may use instead of the item's own.
    struct TReplacementItem
    {
        QString identifier;
        QString expression;
        bool use_default_expression = true;
    };

    /// One uncertainty contributor.
    struct TComponentItem
    {
        QString name;

        /// In mm; in mm per metre of measured length if the expression type is length-dependent.
        QString expression = QStringLiteral("0.0000");

        TDistribution distribution = DISTRIBUTION_NORMAL;
        TExpressionType expression_type = CONSTANT_LINEAR;
        TUCType uc_type = UC_TYPE_B;
        double sensitivity = 1.0;

        /// One for each identifier of the component.
        std::vector<TReplacementItem> replacement_items;
    };

    /// An identifier: one physical instance of a component.
    struct TComponentInstance
    {
        QString name;
        QString calibration_date;     ///< Free text.
        QString calibration_due_date; ///< Free text.
        double length = 0.0;          ///< mm

        /// One thousandth of the value that is shown and stored in files.
        double expansion_coefficient = 0.01;
    };

    struct TComponent
    {
        QString name;
        TUCMode mode = UC_MODE_SUM;

        /// In mm; applies wherever no identifier does.
        double length = 0.0;

        /// One thousandth of the value that is shown and stored in files; applies wherever no identifier does.
        double expansion_coefficient = 0.01;

        /// Whether the component is hinted at in reports.
        bool export_equipment = false;

        /// Whether length-dependent items grow no further than the length of the component or identifier.
        bool limit_uncertainty_length = false;

        std::vector<TComponentItem> items;
        std::vector<TComponentInstance> instances;
    };

    /// The text that heads every list of identifiers and stands for no particular one.
    static QString Default_Identifier();

    // Components

    int Component_Count() const;
    QString Component_Name(int index) const;
    TComponent Component(int index) const;
    int Component_Index(const QString& name) const;

    /// Appends an empty component with default values. Refuses a name in use.
    bool Add_Component(const QString& name);

    bool Remove_Component(const QString& name);

    /// For each name erases the first component of that name; names that no component has are skipped.
    void Remove_Components(const QStringList& names);

    /// Refuses a name in use, the old name included.
    bool Rename_Component(const QString& old_name, const QString& new_name);

    /// Replaces the component of the same name, its items and identifiers included; nothing happens if there is none.
    void Update_Component(const TComponent& component);

    /// Empties the budget.
    void Clear_Components();

    // Component items

    int Component_Item_Count(int component_id) const;
    QString Component_Item_Name(int component_id, int index) const;
    TComponentItem Component_Item(int component_id, int index) const;
    int Component_Item_Index(int component_id, const QString& name) const;

    /// Aborts if the component or the item does not exist.
    TComponentItem Component_Item(const QString& component, const QString& item) const;

    /// Appends an item with default values and a replacement item for each identifier. Refuses a name in use.
    bool Add_Component_Item(const QString& component, const QString& item);

    /// Refuses a name in use, the old name included.
    bool Rename_Component_Item(const QString& component, const QString& old_name, const QString& new_name);

    /// For each name erases the first item of that name; names that no item has are skipped. False only if the
    /// component does not exist.
    bool Remove_Component_Items(const QString& component, const QStringList& items);

    /// Replaces the item of the same name; nothing happens if there is none.
    void Update_Component_Item(int component_id, const TComponentItem& item);

    // Identifiers

    int Component_Identifier_Count(int component_id) const;
    QString Component_Identifier_Name(int component_id, int index) const;
    TComponentInstance Component_Instance(int component_id, int index) const;
    int Component_Instance_Index(int component_id, const QString& name) const;

    /// Appends an identifier calibrated and due today, with the component's length and expansion coefficient, and gives
    /// each item a replacement item for it that holds the item's expression. Refuses a name in use.
    bool Component_Add_Identifier(const QString& component, const QString& identifier);

    /// Renames every identifier of the old name and its replacement items. False only if the component does not exist:
    /// unlike the other renames this one deliberately accepts a name in use.
    bool Rename_Component_Identifier(const QString& component, const QString& old_name, const QString& new_name);

    /// For each name erases the first identifier of that name and all its replacement items. False only if the
    /// component does not exist.
    bool Component_Remove_Identifier(const QString& component, const QStringList& identifiers);

    /// Replaces the identifier of the same name. If the component has none, or the name is empty or the default
    /// identifier, the component itself takes the length and the expansion coefficient.
    void Update_Component_Identifier(int component_id, const TComponentInstance& instance);

protected:
    // Records in place, null if there is none; valid until the budget changes.

    const TComponent* Find_Component(const QString& name) const;
    static const TComponentItem* Find_Item(const TComponent& component, const QString& name);

    /// Null wherever `identifier` means the component itself: if it is empty, the default identifier or unknown.
    static const TComponentInstance* Find_Instance(const TComponent& component, const QString& identifier);

    /// Null wherever the item's own expression applies because `identifier` means the component itself.
    static const TReplacementItem* Find_Replacement(const TComponentItem& item, const QString& identifier);
    static TReplacementItem* Find_Replacement(TComponentItem& item, const QString& identifier);

    std::vector<TComponent> d_components;
};
