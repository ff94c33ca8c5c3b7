#pragma once

#include "core/expression.h"
#include "share/norvexadata.h"

#include <QString>
#include <QStringList>

#include <vector>

class TXmlFile;

/// The budget document: the budget with its file format, the text forms of its enumerations, look-ups by name and the
/// evaluation of items and components at a length.
///
/// Wherever an identifier is asked for, an empty name, the default identifier and a name that the component does not
/// have all mean the component itself.
class TNorvexa : public TNorvexaData
{
public:
    // File

    /// Replaces the components by those of the file and fills the three records. On failure the document and the
    /// records may be partly filled and Last_Error() says why: load into a fresh document and take it over on success.
    bool Load(const QString& file_name, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
              TInputData* input_data);

    /// Writes the newest version of the format, as Write_Whole_File does. On failure Last_Error() says why; a budget
    /// that is too large to be loaded again is such a failure, and nothing is written then.
    bool Save(const QString& file_name, const std::vector<TVariable>& variables, const std::vector<TGroup>& groups,
              const TInputData& input_data) const;

    // The readers of the file versions, for a file that is open; they throw TXmlFileException.

    void LoadV1(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                TInputData* input_data);
    void LoadV2(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                TInputData* input_data);
    void LoadV3(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                TInputData* input_data);

    /// The message of the last load or save that failed; empty if none did.
    QString Last_Error() const { return d_last_error; }

    // Texts of the enumerations: an unknown text is the first value, an unknown value has the first text

    QString Distribution_Type(TDistribution distribution) const;
    TDistribution Distribution_Type(const QString& text) const;
    QString UCType(TUCType type) const;
    TUCType UCType(const QString& text) const;
    QString UCMode(TUCMode mode) const;
    TUCMode UCMode(const QString& text) const;
    QString Expression_Type(TExpressionType type) const;
    TExpressionType Expression_Type(const QString& text) const;

    /// "Yes" or "No".
    QString Boolean_Type(bool value) const;

    /// True only for exactly "Yes".
    bool Boolean_Type(const QString& text) const;

    /// In the order of the enumeration.
    QStringList Distribution_Type_List() const;
    QStringList Uncertainty_Type_List() const;

    /// What the stated value of an item is divided by to become a standard uncertainty.
    double Distribution_Divisor(TDistribution distribution) const;

    // Names

    QStringList Enum_Components() const;

    /// Empty for an unknown component.
    QStringList Enum_Component_Items(const QString& component) const;

    /// Empty for an unknown component.
    QStringList Enum_Component_Identifiers(const QString& component) const;

    /// The names under which the components can be reported: of a sum component its name, of an individual one
    /// "<component> - <item>" for each item.
    QStringList Enum_Reportable_Components() const;

    /// Splits a reportable name; the item name is empty for a sum component. The first match in component order wins.
    /// False, and both names are left alone, if nothing is reported under that name.
    bool Convert_From_Reportable(const QString& reportable, QString* component_name,
                                 QString* component_item_name) const;

    // Expressions, lengths and expansion coefficients that apply to an identifier

    /// The item's own expression. False if the component or the item does not exist.
    bool Component_Item_Default_Expression(const QString& component, const QString& item,
                                           QString* default_expression) const;

    /// The identifier's replacement item, or the item's own expression with `use_default` false if it has none. False,
    /// and the outputs are left alone, if the component or the item does not exist.
    bool Component_Item_Expression(const QString& component, const QString& item, const QString& identifier,
                                   bool* use_default, QString* replacement_expression) const;

    /// The expression that applies. Empty, and `valid` (may be null) is false, if the component or the item does not
    /// exist.
    QString Component_Item_Expression(const QString& component, const QString& item, const QString& identifier,
                                      bool* valid) const;

    /// In mm. Aborts if the component does not exist.
    double Component_Length(const QString& component, const QString& identifier) const;

    /// One thousandth of the value shown. Aborts if the component does not exist.
    double Component_Expansion_Coefficient(const QString& component, const QString& identifier) const;

    using TNorvexaData::Update_Component_Item;

    /// Changes the identifier's replacement item, or the item's own expression (ignoring `use_default`) if it has none.
    /// False if the component or the item does not exist.
    bool Update_Component_Item(const QString& component, const QString& item, const QString& identifier,
                               const QString& expression, bool use_default);

    // Evaluation: reset the variables, add those that the expressions use, then evaluate at any number of lengths

    void Reset_Expression_Variables();

    /// Adds a variable or replaces its value.
    void Add_Expression_Variable(const QString& name, const double& value);

    /// The signed standard uncertainty of one item in mm at `length` (mm). 0.0, and `valid` is false, if the item does
    /// not exist or its expression cannot be evaluated.
    double Evaluate_Component_Item(const QString& component, const QString& item, const QString& identifier,
                                   const double& length, bool* valid) const;

    /// The combined standard uncertainty of a reportable component in mm at `length` (mm). Items of a sum component
    /// that cannot be evaluated are left out; a sum component without items is not valid.
    double Evaluate_Reportable_Component(const QString& reportable, const QString& identifier, const double& length,
                                         bool* valid) const;

    // Evaluation at many lengths: the names are looked up once

    /// An item together with what applies to an identifier. Valid until the budget changes.
    struct TBoundItem
    {
        const TComponent* component = nullptr;
        const TComponentItem* item = nullptr; ///< null if the component or the item does not exist
        const QString* expression = nullptr;
        double component_length = 0.0; ///< mm
    };

    /// An item with what is evaluated under its name: of items of the same name the first. Valid until the budget
    /// changes.
    struct TListedItem
    {
        const TComponentItem* item = nullptr;
        TBoundItem evaluated;
    };

    /// What is reported under one name, for one identifier. Valid until the budget changes.
    struct TBoundReportable
    {
        std::vector<TBoundItem> items; ///< empty if nothing is reported under the name
        bool is_sum = false;
    };

    TBoundItem Bind_Item(const QString& component, const QString& item, const QString& identifier) const;

    /// The items of that name, or all of the component if `item` is empty, in order. Empty if the component does not
    /// exist.
    std::vector<TListedItem> Bind_Items(const QString& component, const QString& item, const QString& identifier) const;
    TBoundReportable Bind_Reportable(const QString& reportable, const QString& identifier) const;

    /// Like Evaluate_Component_Item.
    double Evaluate(const TBoundItem& item, double length, bool* valid) const;

    /// Like Evaluate_Reportable_Component.
    double Evaluate(const TBoundReportable& reportable, double length, bool* valid) const;

private:
    // What applies to an identifier

    /// Null if the component or the item does not exist.
    const TComponentItem* Find_Component_Item(const QString& component, const QString& item) const;

    /// Aborts if the component does not exist.
    const TComponent& Existing_Component(const QString& component) const;
    static const QString& Applicable_Expression(const TComponentItem& item, const QString& identifier);
    static double Applicable_Length(const TComponent& component, const QString& identifier);

    // Evaluation

    /// The signed standard uncertainty of an item, per metre if it is length-dependent. False if its expression cannot
    /// be evaluated.
    bool Evaluate_Item(const TBoundItem& bound, double* uncertainty) const;
    double Evaluate_Sum(const std::vector<TBoundItem>& items, double length) const;

    /// The part of `length` (mm) up to which a length-dependent item grows.
    static double Effective_Length(const TBoundItem& bound, double length);

    TExpression d_expression;

    // Written by the const Save, too.
    mutable QString d_last_error;
};
